// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "data/rowpages.h"

#include <QHash>
#include <QRandomGenerator>
#include <QTest>

#include <algorithm>

namespace {

DataRow numbered(int number)
{
    return {{qlonglong(number)}, {QStringLiteral("n%1").arg(number)}};
}

//! A table of whole numbers, which answers what a database would.
class Numbers
{
public:
    explicit Numbers(QList<int> numbers)
        : all(std::move(numbers))
    {
    }

    QList<DataRow> read(const RowPages::Fetch &fetch) const
    {
        const auto number = [](const RowKey &key) { return key.first().toInt(); };
        const RowRange &range = fetch.range;
        QList<DataRow> rows;
        QList<int> sought = all;
        if (fetch.kind == RowPages::Fetch::Kind::Backward)
            std::reverse(sought.begin(), sought.end());
        int left = fetch.offset;
        for (const int each : std::as_const(sought)) {
            const bool isIn = (range.after.isEmpty() || each > number(range.after))
                && (range.from.isEmpty() || each >= number(range.from))
                && (range.before.isEmpty() || each < number(range.before))
                && (range.upTo.isEmpty() || each <= number(range.upTo));
            if (isIn && left-- <= 0 && rows.size() < fetch.limit)
                rows.append(numbered(each));
        }
        return rows;
    }

    QList<int> all;
};

QList<int> counted(int count, int step = 1)
{
    QList<int> numbers;
    for (int i = 0; i < count; ++i)
        numbers.append(i * step);
    return numbers;
}

//! Follows rows as a view does: what it has looked at stays what it is.
class Follower : public RowPages::Listener
{
public:
    void aboutToInsert(int first, int last) override
    {
        ++changes;
        if (first <= top)
            top += last - first + 1;
        rows += last - first + 1;
    }
    void inserted() override { }
    void aboutToRemove(int first, int last) override
    {
        ++changes;
        if (last < top)
            top -= last - first + 1;
        rows -= last - first + 1;
    }
    void removed() override { }
    void changed(int first, int last) override
    {
        firstChanged = first;
        lastChanged = last;
    }

    int rows = 0;
    int top = 0;
    int changes = 0;
    int firstChanged = -1;
    int lastChanged = -1;
};

} // namespace

class tst_RowPages : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void readsFromTheTop();
    void readsFromTheEnd();
    void jumpsByOneQuery();
    void jumpsByAHistogram();
    void survivesAWrongHistogram();
    void correctsTheNumberOfRows_data();
    void correctsTheNumberOfRows();
    void staysWhereItLooksWhenRowsWereMissing();
    void learnsOfChangedRows();
    void fillsAGapOfOnePage();
    void forgetsWhatIsNotSeen();
    void refusesLateAnswers();
    void appendsWhatComesAtTheEnd();
    void placesRowsThatWereCounted();
    void waitsWhereNobodyKnows();
    void keepsFewPages();
    void walksAnywhere();

private:
    void look(RowPages *pages, const Numbers &numbers, int first, int last);
};

//! Reads until the rows are known.
void tst_RowPages::look(RowPages *pages, const Numbers &numbers, int first, int last)
{
    for (int i = 0; i < 20; ++i) {
        const auto fetch = pages->wanted(first, last);
        if (!fetch)
            return;
        QVERIFY(pages->take(*fetch, numbers.read(*fetch)));
        pages->touch(first, last);
    }
    QFAIL("It never ends.");
}

void tst_RowPages::readsFromTheTop()
{
    Follower follower;
    RowPages pages(&follower);
    const Numbers numbers(counted(1000));
    pages.reset(1000, true);
    const auto fetch = pages.wanted(0, 49);
    QVERIFY(fetch);
    QCOMPARE(fetch->kind, RowPages::Fetch::Kind::Forward);
    QVERIFY(fetch->range == RowRange());
    look(&pages, numbers, 0, 49);
    QCOMPARE(pages.row(0)->cells, QStringList("n0"));
    QCOMPARE(pages.row(255)->cells, QStringList("n255"));
    QVERIFY(!pages.row(256));
    look(&pages, numbers, 240, 290);
    QCOMPARE(pages.row(290)->cells, QStringList("n290"));
    QCOMPARE(pages.rowCount(), 1000);
    QCOMPARE(pages.rowOf({qlonglong(290)}), 290);
    QCOMPARE(pages.rowOf({qlonglong(900)}), -1);
}

void tst_RowPages::readsFromTheEnd()
{
    Follower follower;
    RowPages pages(&follower);
    const Numbers numbers(counted(1000));
    pages.reset(1000, true);
    QVERIFY(!pages.isEndKnown());
    const RowPages::Fetch fetch = pages.lastPage();
    QCOMPARE(fetch.kind, RowPages::Fetch::Kind::Backward);
    QVERIFY(pages.take(fetch, numbers.read(fetch)));
    QVERIFY(pages.isEndKnown());
    QCOMPARE(pages.row(999)->cells, QStringList("n999"));
    QCOMPARE(pages.row(744)->cells, QStringList("n744"));
    QVERIFY(!pages.row(743));
}

void tst_RowPages::jumpsByOneQuery()
{
    Follower follower;
    RowPages pages(&follower);
    const int many = 1000000000;
    pages.reset(many, true);
    QVERIFY(pages.take(*pages.wanted(0, 49), Numbers(counted(300)).read({})));
    const auto last = pages.lastPage();
    QList<DataRow> rows;
    for (int i = 0; i < RowPages::pageRows; ++i)
        rows.append(numbered(many - 1 - i));
    QVERIFY(pages.take(last, rows));
    const auto jump = pages.wanted(many / 2, many / 2 + 50);
    QVERIFY(jump);
    QCOMPARE(jump->kind, RowPages::Fetch::Kind::Jump);
    QCOMPARE(jump->offset, 0);
    // Keys are as dense as rows are: the guess is right.
    QCOMPARE(jump->range.from.first().toInt(), jump->row);
    QList<DataRow> middle;
    for (int i = 0; i < RowPages::pageRows; ++i)
        middle.append(numbered(jump->row + i));
    QVERIFY(pages.take(*jump, middle));
    QVERIFY(!pages.wanted(many / 2, many / 2 + 50));
    QCOMPARE(pages.rowCount(), many);
    QCOMPARE(pages.row(many / 2)->key.first().toInt(), many / 2);
}

//! Keys that are no numbers can be guessed as well, where somebody knows how they are spread.
void tst_RowPages::jumpsByAHistogram()
{
    Follower follower;
    RowPages pages(&follower);
    const Numbers numbers(counted(50000));
    pages.reset(40000, false); // an estimate
    follower.rows = pages.rowCount();
    QVERIFY(pages.take(*pages.wanted(0, 49), numbers.read({})));
    QVERIFY(!pages.wanted(20000, 20050));
    pages.setHistogram({0, 10000, 20000, 30000, 49999});
    const auto jump = pages.wanted(20000, 20050);
    QVERIFY(jump);
    QCOMPARE(jump->kind, RowPages::Fetch::Kind::Jump);
    QCOMPARE(jump->offset, 0);
    QCOMPARE(jump->range.from, RowKey {QVariant(20000)});
    QVERIFY(pages.take(*jump, numbers.read(*jump)));
    QVERIFY(!pages.wanted(20000, 20050));
    QCOMPARE(pages.row(jump->row)->key, RowKey {QVariant(20000)});
    pages.reset(40000, false);
    QVERIFY(!pages.wanted(20000, 20050));
}

//! Where the guess is a row that is known already.
void tst_RowPages::survivesAWrongHistogram()
{
    Follower follower;
    RowPages pages(&follower);
    const Numbers numbers(counted(3000));
    pages.reset(9000, false);
    follower.rows = pages.rowCount();
    pages.setHistogram({0, 1, 2});
    QVERIFY(pages.take(*pages.wanted(0, 49), numbers.read({})));
    for (int row : {4500, 8000, 2000}) {
        while (const auto fetch = pages.wanted(row, qMin(row + 50, pages.rowCount() - 1)))
            QVERIFY(pages.take(*fetch, numbers.read(*fetch)));
    }
    while (const auto fetch = pages.wanted(0, pages.rowCount() - 1))
        QVERIFY(pages.take(*fetch, numbers.read(*fetch)));
    QCOMPARE(pages.rowCount(), 3000);
    QCOMPARE(follower.rows, 3000);
}

void tst_RowPages::correctsTheNumberOfRows_data()
{
    QTest::addColumn<int>("estimate");
    QTest::addColumn<int>("rows");
    QTest::newRow("too many") << 5000 << 700;
    QTest::newRow("too few") << 1 << 700;
    QTest::newRow("none") << 100 << 0;
    QTest::newRow("one page") << 100 << RowPages::pageRows;
    QTest::newRow("right") << 700 << 700;
}

void tst_RowPages::correctsTheNumberOfRows()
{
    QFETCH(int, estimate);
    QFETCH(int, rows);
    Follower follower;
    RowPages pages(&follower);
    const Numbers numbers(counted(rows));
    pages.reset(estimate, false);
    follower.rows = estimate;
    for (int row = 0; row < pages.rowCount(); ++row)
        look(&pages, numbers, row, row);
    QCOMPARE(pages.rowCount(), rows);
    QCOMPARE(follower.rows, rows);
    QVERIFY(pages.isEndKnown());
    for (int row = 0; row < rows; ++row)
        QCOMPARE(pages.row(row)->key.first().toInt(), row);
}

void tst_RowPages::staysWhereItLooksWhenRowsWereMissing()
{
    Follower follower;
    RowPages pages(&follower);
    // Twice as many rows as there are keys of the second half: the guess is wrong.
    QList<int> all = counted(3000);
    for (int i = 0; i < 3000; ++i)
        all.append(10000 + 50 * i);
    const Numbers numbers(all);
    pages.reset(20000, true);
    look(&pages, numbers, 0, 40);
    const RowPages::Fetch last = pages.lastPage();
    QVERIFY(pages.take(last, numbers.read(last)));
    look(&pages, numbers, 10000, 10040);
    QVERIFY(pages.row(10000));
    const RowKey seen = pages.row(10000)->key;
    follower.top = 10000;
    follower.rows = pages.rowCount();
    while (pages.rowOf(numbered(0).key) >= 0 && pages.row(follower.top)->key == seen) {
        int above = follower.top;
        while (above > 0 && pages.row(above - 1))
            --above;
        if (above == 0)
            break;
        look(&pages, numbers, above - 1, above - 1);
        QCOMPARE(pages.row(follower.top)->key, seen);
    }
    QCOMPARE(pages.row(follower.top)->key, seen);
    QCOMPARE(follower.top, all.indexOf(seen.first().toInt()));
}

void tst_RowPages::learnsOfChangedRows()
{
    Follower follower;
    RowPages pages(&follower);
    Numbers numbers(counted(1000));
    pages.reset(1000, true);
    look(&pages, numbers, 0, 600);
    follower.rows = 1000;
    follower.top = 300;
    numbers.all.removeAll(10);
    numbers.all.removeAll(299);
    auto fetch = pages.again(0, 600);
    QVERIFY(fetch);
    QList<DataRow> rows = numbers.read(*fetch);
    rows[400].cells = QStringList("other");
    QVERIFY(pages.take(*fetch, rows));
    QCOMPARE(pages.rowCount(), 998);
    QCOMPARE(follower.rows, 998);
    QCOMPARE(follower.top, 298);
    QCOMPARE(pages.row(298)->key.first().toInt(), 300);
    QCOMPARE(follower.firstChanged, 400);
    QCOMPARE(follower.lastChanged, 400);
    numbers.all.insert(5, 1000000);
    QVERIFY(!pages.wanted(0, 600));
}

void tst_RowPages::fillsAGapOfOnePage()
{
    Follower follower;
    RowPages pages(&follower);
    const int rows = 3 * RowPages::pageRows;
    const Numbers numbers(counted(rows));
    pages.reset(rows, true);
    const RowPages::Fetch last = pages.lastPage();
    QVERIFY(pages.take(last, numbers.read(last)));
    look(&pages, numbers, 0, 10);
    follower.changes = 0;
    look(&pages, numbers, rows / 2, rows / 2 + 10);
    QCOMPARE(follower.changes, 0);
    QCOMPARE(pages.rowCount(), rows);
}

void tst_RowPages::forgetsWhatIsNotSeen()
{
    Follower follower;
    RowPages pages(&follower);
    const Numbers numbers(counted(5000));
    pages.reset(5000, true);
    look(&pages, numbers, 0, 40);
    look(&pages, numbers, 2000, 2040);
    const RowPages::Fetch last = pages.lastPage();
    QVERIFY(pages.take(last, numbers.read(last)));
    pages.forget(2010, 2030);
    QVERIFY(!pages.row(0));
    QVERIFY(!pages.isEndKnown());
    QVERIFY(pages.row(2020));
    QCOMPARE(pages.rowCount(), 5000);
}

void tst_RowPages::refusesLateAnswers()
{
    Follower follower;
    RowPages pages(&follower);
    const Numbers numbers(counted(1000));
    pages.reset(1000, true);
    const auto early = pages.wanted(0, 10);
    look(&pages, numbers, 0, 10);
    QVERIFY(!pages.take(*early, numbers.read(*early)));
    QCOMPARE(pages.pages(), 1);
}

void tst_RowPages::appendsWhatComesAtTheEnd()
{
    Follower follower;
    RowPages pages(&follower);
    Numbers numbers({});
    pages.reset(1, true);
    look(&pages, numbers, 0, 10);
    QCOMPARE(pages.rowCount(), 0);
    numbers.all = counted(10);
    QVERIFY(pages.take(pages.beyond(), numbers.read(pages.beyond())));
    QCOMPARE(pages.rowCount(), 10);
    numbers.all = counted(12);
    QVERIFY(pages.take(pages.beyond(), numbers.read(pages.beyond())));
    QCOMPARE(pages.rowCount(), 12);
    QCOMPARE(pages.row(11)->cells, QStringList("n11"));
    numbers.all = counted(1000);
    QVERIFY(pages.take(pages.beyond(), numbers.read(pages.beyond())));
    QVERIFY(!pages.isEndKnown());
    QVERIFY(pages.rowCount() > 12 + RowPages::pageRows);
}

void tst_RowPages::placesRowsThatWereCounted()
{
    Follower follower;
    RowPages pages(&follower);
    const Numbers numbers(counted(6000, 3));
    pages.reset(18000, true);
    look(&pages, numbers, 0, 40);
    const RowPages::Fetch last = pages.lastPage();
    QVERIFY(pages.take(last, numbers.read(last)));
    look(&pages, numbers, 9000, 9040);
    const RowKey seen = pages.row(9000)->key;
    follower.top = 9000;
    QVERIFY(!pages.place({qlonglong(1)}, 3, 6000));
    const int row = int(numbers.all.indexOf(seen.first().toInt()));
    QVERIFY(pages.place(seen, row, 6000));
    QCOMPARE(pages.rowCount(), 6000);
    QCOMPARE(follower.top, row);
    QCOMPARE(pages.row(row)->key, seen);
    QCOMPARE(pages.row(5999)->key.first().toInt(), 17997);
    QCOMPARE(pages.row(0)->key.first().toInt(), 0);
}

void tst_RowPages::waitsWhereNobodyKnows()
{
    Follower follower;
    RowPages pages(&follower);
    const Numbers numbers(counted(100000));
    pages.reset(100000, false);
    look(&pages, numbers, 0, 10);
    QVERIFY(!pages.wanted(50000, 50010));
    QList<RowPages::Anchor> anchors;
    for (int row = 1023; row < 100000; row += 1024)
        anchors.append(RowPages::Anchor {row, {qlonglong(row)}});
    pages.setAnchors(anchors, 1024);
    const auto fetch = pages.wanted(50000, 50010);
    QVERIFY(fetch);
    QVERIFY(fetch->offset <= RowPages::mostSkipped);
    look(&pages, numbers, 50000, 50010);
    QCOMPARE(pages.row(50000)->key.first().toInt(), 50000);
}

void tst_RowPages::keepsFewPages()
{
    Follower follower;
    RowPages pages(&follower);
    const int rows = RowPages::pageRows * (RowPages::mostPages + 20);
    const Numbers numbers(counted(rows));
    pages.reset(rows, true);
    for (int row = 0; row < rows; row += RowPages::pageRows / 2)
        look(&pages, numbers, row, qMin(row + 50, rows - 1));
    QVERIFY(pages.pages() <= RowPages::mostPages);
    QVERIFY(pages.row(0)); // the first one stays
    QVERIFY(!pages.row(1000));
    look(&pages, numbers, 1000, 1050);
    QCOMPARE(pages.row(1000)->key.first().toInt(), 1000);
    look(&pages, numbers, rows - 10, rows); // a full last page tells nothing of the end
    QCOMPARE(pages.rowCount(), rows);
}

//! Any looks, any estimates: what is known is always right among its neighbours.
void tst_RowPages::walksAnywhere()
{
    QRandomGenerator random(7);
    for (int round = 0; round < 10; ++round) {
        QList<int> all;
        int number = 0;
        for (int i = 0; i < 4000; ++i)
            all.append(number += 1 + (random.bounded(20) == 0 ? random.bounded(2000) : 0));
        const Numbers numbers(all);
        QHash<int, int> places;
        for (int i = 0; i < all.size(); ++i)
            places.insert(all.at(i), i);
        Follower follower;
        RowPages pages(&follower);
        pages.reset(1 + random.bounded(20000), true);
        follower.rows = pages.rowCount();
        for (int step = 0; step < 60; ++step) {
            const int first = random.bounded(qMax(1, pages.rowCount()));
            const auto fetch = random.bounded(4) == 0 && !pages.isEndKnown()
                ? std::optional(pages.lastPage())
                : pages.wanted(first, first + 50);
            if (fetch)
                QVERIFY(pages.take(*fetch, numbers.read(*fetch)));
            pages.touch(first, first + 50);
            QCOMPARE(follower.rows, pages.rowCount());
            for (int row = 1; row < pages.rowCount(); ++row) {
                if (!pages.row(row) || !pages.row(row - 1))
                    continue;
                const int above = pages.row(row - 1)->key.first().toInt();
                const int below = pages.row(row)->key.first().toInt();
                if (places.value(below) != places.value(above) + 1)
                    QFAIL("Two rows stand together that do not.");
            }
        }
    }
}

QTEST_GUILESS_MAIN(tst_RowPages)
#include "tst_rowpages.moc"
