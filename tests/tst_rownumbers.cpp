// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "search/rownumbers.h"

#include <QRandomGenerator>
#include <QTest>

#include <algorithm>
#include <numeric>

namespace {

using Rows = std::vector<int>;

constexpr int chunkLength = 16384;

//! From \a first on, every \a step.
Rows rowsFrom(int first, int count, int step = 1)
{
    Rows rows;
    for (int i = 0; i < count; ++i)
        rows.push_back(first + i * step);
    return rows;
}

Rows allOf(const RowNumbers &numbers)
{
    Rows rows;
    for (int place = 0; place < numbers.size(); ++place)
        rows.push_back(numbers.at(place));
    return rows;
}

//! The same by a plain vector, and every way to ask.
void compare(const RowNumbers &numbers, const Rows &expected)
{
    QCOMPARE(numbers.size(), int(expected.size()));
    QVERIFY(allOf(numbers) == expected);
    for (std::size_t i = 0; i < expected.size(); i += 1 + expected.size() / 64) {
        const int row = expected[i];
        QCOMPARE(numbers.placeOf(row), int(i));
        QCOMPARE(numbers.placeOf(row + 1), int(i) + 1);
        QVERIFY(numbers.contains(row));
        const bool isNext = i + 1 < expected.size() && expected[i + 1] == row + 1;
        QCOMPARE(numbers.contains(row + 1), isNext);
    }
    QCOMPARE(numbers.placeOf(expected.empty() ? 0 : expected.front()), 0);
    QCOMPARE(numbers.placeOf(expected.empty() ? 7 : expected.back() + 1), numbers.size());
}

} // namespace

class tst_RowNumbers : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void isEmptyAtFirst();
    void appends_data();
    void appends();
    void goesToItsPlace_data();
    void goesToItsPlace();
    void takesFourBytes_data();
    void takesFourBytes();
    void doesWhatAVectorDoes_data();
    void doesWhatAVectorDoes();
};

void tst_RowNumbers::isEmptyAtFirst()
{
    RowNumbers numbers;
    compare(numbers, {});
    numbers.shift(0, 5);
    numbers.remove(0, 0);
    numbers.insert(0, {});
    compare(numbers, {});
    QCOMPARE(numbers.memory(), size_t(0));
}

void tst_RowNumbers::appends_data()
{
    QTest::addColumn<int>("first");
    QTest::addColumn<int>("second");

    for (const int first : {1, chunkLength - 1, chunkLength, 3 * chunkLength + 5}) {
        for (const int second : {1, chunkLength, 2 * chunkLength + 1})
            QTest::addRow("%d, then %d", first, second) << first << second;
    }
}

void tst_RowNumbers::appends()
{
    QFETCH(int, first);
    QFETCH(int, second);
    RowNumbers numbers;
    numbers.insert(0, rowsFrom(3, first, 2));
    numbers.insert(first, rowsFrom(3 + 2 * first, second, 2));
    compare(numbers, rowsFrom(3, first + second, 2));
    numbers.clear();
    compare(numbers, {});
}

void tst_RowNumbers::goesToItsPlace_data()
{
    QTest::addColumn<int>("there");
    QTest::addColumn<int>("place");
    QTest::addColumn<int>("added");

    for (const int there : {1, 100, chunkLength, 3 * chunkLength}) {
        for (const int place : {0, there / 2, there - 1, there}) {
            for (const int added : {1, 50, chunkLength, 2 * chunkLength + 3})
                QTest::addRow("%d, at %d %d", there, place, added) << there << place << added;
        }
    }
}

//! Between others, and away from there again.
void tst_RowNumbers::goesToItsPlace()
{
    QFETCH(int, there);
    QFETCH(int, place);
    QFETCH(int, added);
    const Rows before = rowsFrom(0, there);
    RowNumbers numbers;
    numbers.insert(0, before);
    numbers.shift(place, added);
    numbers.insert(place, rowsFrom(place, added));
    compare(numbers, rowsFrom(0, there + added));
    numbers.remove(place, added);
    numbers.shift(place, -added);
    compare(numbers, before);
}

void tst_RowNumbers::takesFourBytes_data()
{
    QTest::addColumn<bool>("atTheTop");
    QTest::addColumn<int>("rows"); // at once

    for (const bool atTheTop : {false, true}) {
        for (const int rows : {7, 100, 5000})
            QTest::addRow("%s, %d", atTheTop ? "at the top" : "at the end", rows)
                << atTheTop << rows;
    }
}

//! But for one or two chunks, which are still to be filled.
void tst_RowNumbers::takesFourBytes()
{
    QFETCH(bool, atTheTop);
    QFETCH(int, rows);
    constexpr int total = 200'000;
    RowNumbers numbers;
    for (int added = 0; added < total; added += rows) {
        if (atTheTop)
            numbers.shift(0, rows);
        numbers.insert(atTheTop ? 0 : added, rowsFrom(atTheTop ? 0 : added, rows));
    }
    const auto size = size_t(numbers.size());
    compare(numbers, rowsFrom(0, int(size)));
    // Whole insertions have to fit into a chunk.
    const size_t unused = atTheTop && rows == 5000 ? size / 10 * sizeof(int) : 0;
    QVERIFY(numbers.memory() <= size * sizeof(int) + unused + 3 * chunkLength * sizeof(int));
}

void tst_RowNumbers::doesWhatAVectorDoes_data()
{
    QTest::addColumn<quint32>("seed");
    for (quint32 seed = 1; seed <= 4; ++seed)
        QTest::addRow("seed %u", seed) << seed;
}

void tst_RowNumbers::doesWhatAVectorDoes()
{
    QFETCH(quint32, seed);
    QRandomGenerator random(seed);
    RowNumbers numbers;
    Rows expected;
    for (int round = 0; round < 300; ++round) {
        const int most = random.bounded(8) == 0 ? 40'000 : 400;
        const int size = int(expected.size());
        const int place = random.bounded(size + 1);
        const auto at = expected.begin() + place;
        if (random.bounded(5) < 3) {
            const int count = random.bounded(1, most);
            const int step = random.bounded(1, 4);
            const int first = place > 0 ? expected[size_t(place) - 1] + 1 : 0;
            numbers.shift(first, count * step);
            std::for_each(at, expected.end(), [&](int &row) { row += count * step; });
            const Rows rows = rowsFrom(first, count, step);
            numbers.insert(place, rows);
            expected.insert(at, rows.begin(), rows.end());
        } else {
            const int count = qMin(size - place, random.bounded(most));
            numbers.remove(place, count);
            expected.erase(at, at + count);
        }
        if (round % 10 == 9)
            compare(numbers, expected);
        if (QTest::currentTestFailed())
            return;
    }
    QVERIFY(expected.size() > chunkLength);
}

QTEST_APPLESS_MAIN(tst_RowNumbers)

#include "tst_rownumbers.moc"
