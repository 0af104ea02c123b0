// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "order/orderjob.h"
#include "order/rowsorter.h"
#include "order/slicedsort.h"
#include "order/sortvalue.h"

#include <QRandomGenerator>
#include <QTest>

#include <algorithm>
#include <numeric>

class tst_RowSorter : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void ordersValues_data();
    void ordersValues();
    void tellsNumbers_data();
    void tellsNumbers();
    void sortsAnyNumberOfItems_data();
    void sortsAnyNumberOfItems();
    void sortsRows_data();
    void sortsRows();
    void readsSharedBeginningsOnce();
    void putsRowsAmongOthers_data();
    void putsRowsAmongOthers();
};

namespace {

using Texts = QStringList;

//! As slow as can be understood.
std::vector<int> sorted(const Texts &texts, std::vector<int> rows, Qt::SortOrder order)
{
    std::stable_sort(rows.begin(), rows.end(), [&](int a, int b) {
        return SortValue(texts[a]).compare(SortValue(texts[b]), order) < 0;
    });
    return rows;
}

std::vector<int> allRows(const Texts &texts)
{
    std::vector<int> rows(static_cast<std::size_t>(texts.size()));
    std::iota(rows.begin(), rows.end(), 0);
    return rows;
}

QString anyText(const QString &kind, QRandomGenerator *random)
{
    const auto number = [random](int below) { return QString::number(random->bounded(below)); };
    if (kind == QLatin1String("few"))
        return number(3);
    if (kind == QLatin1String("numbers"))
        return QString::number(random->bounded(2000) - 1000) + u'.' + number(100);
    if (kind == QLatin1String("long numbers"))
        return (random->bounded(2) != 0 ? QStringLiteral("-") : QString())
            + QStringLiteral("1234567890123456") + number(3) + u'.' + number(30);
    if (kind == QLatin1String("times"))
        return QStringLiteral("2026-01-02 03:") + number(60) + u':' + number(60);
    if (kind == QLatin1String("equal"))
        return QStringLiteral("all the same, and longer than a key");
    if (kind == QLatin1String("beginnings"))
        return QStringLiteral("aaaaaaaaaaaa").left(random->bounded(13));
    if (kind == QLatin1String("letters"))
        return QString(random->bounded(4), QChar(u'a' + random->bounded(3)))
            + QChar(u'A' + random->bounded(3));
    static const Texts mixed {"",
                              " ",
                              "0",
                              "-0",
                              "00.0",
                              "1e5",
                              "+7",
                              "7,0",
                              "7.00",
                              "Äpfel",
                              "apfel",
                              "Zebra",
                              "-",
                              "1.2.3",
                              "10",
                              "9",
                              "é",
                              "E",
                              "f",
                              "\u0001",
                              QString(QChar(0)),
                              QString(3, QChar(0xffff))};
    return mixed[random->bounded(int(mixed.size()))];
}

Texts anyTexts(const QString &kind, int count, quint32 seed)
{
    QRandomGenerator random(seed);
    Texts texts;
    for (int row = 0; row < count; ++row)
        texts.append(anyText(kind, &random));
    return texts;
}

} // namespace

void tst_RowSorter::ordersValues_data()
{
    QTest::addColumn<QString>("first");
    QTest::addColumn<QString>("second");
    QTest::addColumn<int>("ascending");
    QTest::addColumn<int>("descending");
    const auto add = [](const char *name, const char *first, const char *second, int ascending,
                        int descending) {
        QTest::newRow(name) << QString::fromUtf8(first) << QString::fromUtf8(second) << ascending
                            << descending;
    };
    add("numbers by value", "9", "10", -1, 1);
    add("below zero", "-10", "-9", -1, 1);
    add("below zero, longer", "-1.25", "-1.2", -1, 1);
    add("sign", "-1", "1", -1, 1);
    add("fractions", "1.5", "1.25", 1, -1);
    add("comma", "1,5", "1.25", 1, -1);
    add("zeros", "007.10", "7.1", 0, 0);
    add("no zero below zero", "-0", "0", 0, 0);
    add("fraction of zero", "-.5", "0", -1, 1);
    add("plus", "+3", "3", 0, 0);
    add("spaces", " 3 ", "3", 0, 0);
    add("more digits than a double has", "12345678901234567890", "12345678901234567891", -1, 1);
    add("the same below zero", "-12345678901234567890", "-12345678901234567891", 1, -1);
    add("fraction behind many digits", "-12345678901234567890.1", "-12345678901234567890", -1, 1);
    add("numbers before texts", "9", "a", -1, 1);
    add("a point is no number", ".", "5", 1, -1);
    add("a minus is none", "-", "5", 1, -1);
    add("two points are none", "1.2.3", "9", 1, -1);
    add("nor are exponents", "1e3", "5000", 1, -1);
    add("nor is a word", "inf", "5", 1, -1);
    add("nothing behind texts", "", "a", 1, 1);
    add("nothing behind numbers", "", "1", 1, 1);
    add("something before nothing", "1", " ", -1, -1);
    add("nothing as nothing", "", "\t", 0, 0);
    add("case", "Abc", "aBC", 0, 0);
    add("accents", "Äpfel", "apfelb", -1, 1);
    add("accents, equal", "résumé", "RESUME", 0, 0);
    add("shorter first", "ab", "abc", -1, 1);
    add("other letters", "Жук", "жаба", 1, -1);
}

void tst_RowSorter::ordersValues()
{
    QFETCH(QString, first);
    QFETCH(QString, second);
    const SortValue a(first);
    const SortValue b(second);
    const auto sign = [](int result) { return (result > 0) - (result < 0); };
    QTEST(sign(a.compare(b, Qt::AscendingOrder)), "ascending");
    QTEST(sign(a.compare(b, Qt::DescendingOrder)), "descending");
    QCOMPARE(sign(b.compare(a, Qt::AscendingOrder)),
             a.kind() == b.kind() || first.trimmed().size() * second.trimmed().size() > 0
                 ? -sign(a.compare(b, Qt::AscendingOrder))
                 : -sign(a.compare(b, Qt::DescendingOrder)));
}

void tst_RowSorter::tellsNumbers_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("isExact");
    QTest::newRow("short") << "123.45" << true;
    QTest::newRow("fifteen digits") << "123456789012345" << true;
    QTest::newRow("sixteen digits") << "1234567890123456" << false;
    QTest::newRow("zeros do not count") << "000123456789012345.000" << true;
    QTest::newRow("three hundred digits") << QString(300, u'9') << false;
}

void tst_RowSorter::tellsNumbers()
{
    QFETCH(QString, text);
    const SortValue value(text);
    QCOMPARE(value.kind(), SortValue::Kind::Number);
    QTEST(value.isExact(), "isExact");
    QCOMPARE(value.number(), text.toDouble());
    QCOMPARE(SortValue(text + QString(300, u'9')).kind(), SortValue::Kind::Text);
}

void tst_RowSorter::sortsAnyNumberOfItems_data()
{
    QTest::addColumn<int>("count");
    const int step = int(SlicedSort<int>::stepLength);
    for (const int count : {0, 1, 2, 1000, step - 1, step, step + 1, 2 * step, 2 * step + 1,
                            3 * step + 5, 4 * step, 5 * step - 1, 9 * step + 77})
        QTest::addRow("%d", count) << count;
}

void tst_RowSorter::sortsAnyNumberOfItems()
{
    QFETCH(int, count);
    QRandomGenerator random(7);
    std::vector<int> items;
    for (int at = 0; at < count; ++at)
        items.push_back(int(random.bounded(100000)));
    std::vector<int> expected = items;
    std::sort(expected.begin(), expected.end());
    SlicedSort<int> sort {std::span<int>(items)};
    while (!sort.isDone())
        sort.step();
    QCOMPARE(items, expected);
}

void tst_RowSorter::sortsRows_data()
{
    QTest::addColumn<QString>("kind");
    QTest::addColumn<Qt::SortOrder>("order");
    for (const char *kind :
         {"few", "numbers", "long numbers", "times", "equal", "beginnings", "letters", "mixed"}) {
        QTest::addRow("%s", kind) << QString::fromLatin1(kind) << Qt::AscendingOrder;
        QTest::addRow("%s, descending", kind) << QString::fromLatin1(kind) << Qt::DescendingOrder;
    }
}

void tst_RowSorter::sortsRows()
{
    QFETCH(QString, kind);
    QFETCH(Qt::SortOrder, order);
    for (const int count : {0, 1, 3, 700, 6000}) {
        const Texts texts = anyTexts(kind, count, quint32(count));
        RowSorter sorter([&](int row) { return texts[row]; }, allRows(texts), order);
        double progress = 0;
        while (!sorter.isDone()) {
            sorter.step();
            QVERIFY(sorter.progress() >= progress);
            progress = sorter.progress();
        }
        QCOMPARE(progress, 1.0);
        QCOMPARE(sorter.takeRows(), sorted(texts, allRows(texts), order));
    }
}

//! Of whatever length they are, all rows share them.
void tst_RowSorter::readsSharedBeginningsOnce()
{
    const QString beginning(1000, u'x');
    constexpr int count = 3000;
    int reads = 0;
    const auto read = [&](int row) {
        ++reads;
        return beginning + QString::number(count - row).rightJustified(4, u'0');
    };
    std::vector<int> rows(count);
    std::iota(rows.begin(), rows.end(), 0);
    RowSorter sorter(read, rows, Qt::AscendingOrder);
    while (!sorter.isDone())
        sorter.step();
    std::reverse(rows.begin(), rows.end());
    QCOMPARE(sorter.takeRows(), rows);
    QVERIFY2(reads <= 4 * count, qPrintable(QString::number(reads)));
}

void tst_RowSorter::putsRowsAmongOthers_data()
{
    sortsRows_data();
}

void tst_RowSorter::putsRowsAmongOthers()
{
    QFETCH(QString, kind);
    QFETCH(Qt::SortOrder, order);
    const Texts texts = anyTexts(kind, 900, 11);
    for (const int part : {0, 1, 5, 450, 900}) {
        std::vector<int> staying;
        std::vector<int> rows;
        for (const int row : allRows(texts))
            (row * 7 % 900 < part ? rows : staying).push_back(row);
        OrderJob job([&](int row) { return texts[row]; }, order, rows,
                     sorted(texts, staying, order));
        while (!job.isDone())
            job.step();
        QCOMPARE(job.takeOrder(), sorted(texts, allRows(texts), order));
    }
}

QTEST_APPLESS_MAIN(tst_RowSorter)

#include "tst_rowsorter.moc"
