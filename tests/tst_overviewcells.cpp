// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "overview/rowcells.h"
#include "overview/rowranges.h"

#include <QList>
#include <QTest>

#include <limits>

class tst_OverviewCells : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void countsFewRowsExactly();
    void countsManyRows_data();
    void countsManyRows();
    void takesBack();
    void findsNothingElsewhere();
    void goesThroughRanges_data();
    void goesThroughRanges();
    void knowsWhatIsLeft();
};

void tst_OverviewCells::countsFewRowsExactly()
{
    RowCells cells;
    for (int row = 0; row < RowCells::most; row += 3)
        cells.add(row);
    for (int row = 0; row < RowCells::most; ++row)
        QCOMPARE(cells.between(row, row + 1), row % 3 == 0 ? 1 : 0);
    QCOMPARE(cells.between(0, 10), 4);
    QCOMPARE(cells.between(1, 3), 0);
    QCOMPARE(cells.between(5, 5), 0);
}

void tst_OverviewCells::countsManyRows_data()
{
    QTest::addColumn<QList<int>>("rows");
    QTest::newRow("upwards") << QList<int> {5, 5000, 100000, 2000000000};
    QTest::newRow("downwards") << QList<int> {2000000000, 100000, 5000, 5};
    QTest::newRow("the last") << QList<int> {0, std::numeric_limits<int>::max()};
    QTest::newRow("odd cells") << QList<int> {4094, 4095, 4096, 8191, 8192, 16384};
}

void tst_OverviewCells::countsManyRows()
{
    QFETCH(QList<int>, rows);
    RowCells cells;
    for (const int row : rows)
        cells.add(row);
    QCOMPARE(cells.total(), int(rows.size()));
    QCOMPARE(cells.between(0, std::numeric_limits<int>::max()), cells.total());
    for (const int row : rows)
        QVERIFY(cells.between(row - (row == std::numeric_limits<int>::max() ? 1 : 0),
                              row == std::numeric_limits<int>::max() ? row : row + 1)
                > 0);
}

void tst_OverviewCells::takesBack()
{
    RowCells cells;
    cells.add(7);
    cells.add(9000);
    cells.add(7, -1);
    QCOMPARE(cells.total(), 1);
    QCOMPARE(cells.between(0, 100), 0);
    cells.clear();
    QCOMPARE(cells.total(), 0);
    cells.add(3);
    QCOMPARE(cells.between(3, 4), 1); // rows do not share any more
    QCOMPARE(cells.between(2, 3), 0);
}

void tst_OverviewCells::findsNothingElsewhere()
{
    RowCells cells;
    QCOMPARE(cells.between(0, 100), 0);
    cells.add(1000000);
    QCOMPARE(cells.between(0, 999000), 0);
    QCOMPARE(cells.between(1001000, 2000000), 0);
}

void tst_OverviewCells::goesThroughRanges_data()
{
    QTest::addColumn<int>("first");
    QTest::addColumn<int>("count");
    QTest::addColumn<int>("more");
    QTest::addColumn<int>("step");
    QTest::addColumn<QList<int>>("expected");
    QTest::newRow("from the top") << 0 << 4 << 0 << 1 << QList<int> {0, 1, 2, 3};
    QTest::newRow("from the middle") << 2 << 4 << 0 << 1 << QList<int> {2, 3, 0, 1};
    QTest::newRow("more at the end") << 0 << 2 << 2 << 1 << QList<int> {0, 1, 2, 3};
    QTest::newRow("more, from the middle") << 1 << 2 << 2 << 1 << QList<int> {1, 0, 2, 3};
    QTest::newRow("in steps") << 1 << 6 << 0 << 2 << QList<int> {1, 3, 5, 0};
    QTest::newRow("none") << 0 << 0 << 0 << 1 << QList<int> {};
    QTest::newRow("none at first") << 0 << 0 << 2 << 1 << QList<int> {0, 1};
}

void tst_OverviewCells::goesThroughRanges()
{
    QFETCH(int, first);
    QFETCH(int, count);
    QFETCH(int, more);
    QFETCH(int, step);
    RowRanges ranges;
    ranges.append(0, 100); // forgotten
    ranges.begin(first, count);
    ranges.append(count, count + more);
    QList<int> seen;
    while (!ranges.isEmpty()) {
        seen.append(ranges.next());
        ranges.goOn(qMin(ranges.next() + step, ranges.end()));
    }
    QTEST(seen, "expected");
}

void tst_OverviewCells::knowsWhatIsLeft()
{
    RowRanges ranges;
    ranges.begin(5, 10);
    ranges.goOn(7);
    QVERIFY(!ranges.contains(6));
    QVERIFY(ranges.contains(7));
    QVERIFY(ranges.contains(0));
    QVERIFY(!ranges.contains(10));
    ranges.clear();
    QVERIFY(!ranges.contains(7));
}

QTEST_GUILESS_MAIN(tst_OverviewCells)
#include "tst_overviewcells.moc"
