// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "pixmapcacheindexed.h"

#include <QItemSelection>
#include <QPixmap>
#include <QRandomGenerator>
#include <QStandardItemModel>
#include <QTest>

#include <algorithm>

namespace {

// Tells how many pixmaps live, so that both leaks and early deletions show.
class CountedPixmap : public QPixmap
{
public:
    explicit CountedPixmap(int number = 0)
        : QPixmap(2, 2)
        , number(number)
    {
        ++alive;
    }
    ~CountedPixmap() override { --alive; }

    int number;
    static inline int alive = 0;
};

QPixmap *put(PixmapCacheIndexed *cache, int row, int column, int number = 0)
{
    auto *pixmap = new CountedPixmap(number);
    cache->insertPixmap(row, column, pixmap);
    return pixmap;
}

int numberAt(const PixmapCacheIndexed &cache, int row, int column)
{
    const auto *pixmap = static_cast<CountedPixmap *>(cache.pixmap(row, column));
    return pixmap ? pixmap->number : -1;
}

// Cells (row, column) for rows × columns, numbered 100 × row + column.
void fill(PixmapCacheIndexed *cache, int rows, int columns)
{
    for (int row = 0; row < rows; ++row) {
        for (int column = 0; column < columns; ++column)
            put(cache, row, column, 100 * row + column);
    }
}

// The rows that have a pixmap in column 0, by what they were filled with.
QList<int> rowsOf(const PixmapCacheIndexed &cache, int column = 0, int limit = 40)
{
    QList<int> rows;
    for (int row = 0; row < limit; ++row) {
        if (const int number = numberAt(cache, row, column); number >= 0)
            rows.append(row * 1000 + number / 100);
    }
    return rows;
}

// Row r shows what row r was filled with.
QList<int> kept(const QList<int> &rows)
{
    QList<int> list;
    for (int row : rows)
        list.append(row * 1000 + row);
    return list;
}

using Cells = QList<std::pair<int, int>>;

Cells cellsOf(const PixmapCacheIndexed &cache, int rows, int columns)
{
    Cells cells;
    for (int row = 0; row < rows; ++row) {
        for (int column = 0; column < columns; ++column) {
            if (cache.pixmap(row, column))
                cells.append({row, column});
        }
    }
    return cells;
}

} // namespace

class TestPixmapCacheIndexed : public QObject
{
    Q_OBJECT

private slots:
    void init() { CountedPixmap::alive = 0; }
    void cleanup() { QCOMPARE(CountedPixmap::alive, 0); }

    void isEmptyAtFirst();
    void takesOwnership();
    void replacesAnOccupiedCell();
    void refusesBadCells();
    void clearsAll();
    void clearsRectangle_data();
    void clearsRectangle();
    void clearsSelection();
    void skipsInvalidRanges();
    void clearsRows();
    void clearsRowsWithinBoundsOnly();
    void clearsColumns();
    void clearsColumnsWithinBoundsOnly();
    void clearsExcluded_data();
    void clearsExcluded();
    void setsVisibleBounds();
    void ignoresNegativeBounds();
    void setsSingleBounds();
    void growsWithoutEvicting();
    void invalidatesBounds();
    void insertsAtTheTopByOffset();
    void dropsWhatWasSeen_data();
    void dropsWhatWasSeen();
    void insertsInTheMiddle();
    void insertsBelowBounds();
    void insertsIntoNothing();
    void insertsAboveTheOffset();
    void insertsWithoutLimits();
    void removesRows();
    void removesBelowBounds();
    void removesWithinTheOffset();
    void removesAcrossTheOffset();
    void removesMoreThanTheOffset();
    void removesFromNothing();
    void movesDown();
    void movesUp();
    void dropsOverlappingMoves();
    void ignoresMovesElsewhere();
    void looksUpAndStoresWithOppositeSigns();
    void clearRowsIgnoresTheOffset();
    void rangesKnowTheOffset();
    void rebases();
    void assigns();
    void assignsItself();
    void followsRowsAtRandom();
    void boundsAtTheFirstCell();
};

void TestPixmapCacheIndexed::isEmptyAtFirst()
{
    const PixmapCacheIndexed cache(nullptr);
    QVERIFY(!cache.pixmap(0, 0));
    QVERIFY(!cache.pixmap(-1, -1));
}

void TestPixmapCacheIndexed::takesOwnership()
{
    {
        PixmapCacheIndexed cache(nullptr);
        const QPixmap *pixmap = put(&cache, 3, 4);
        QCOMPARE(cache.pixmap(3, 4), pixmap);
        QVERIFY(!cache.pixmap(4, 3));
        QCOMPARE(CountedPixmap::alive, 1);
    }
    QCOMPARE(CountedPixmap::alive, 0);
}

void TestPixmapCacheIndexed::replacesAnOccupiedCell()
{
    PixmapCacheIndexed cache(nullptr);
    put(&cache, 1, 1, 7);
    put(&cache, 1, 1, 8);
    QCOMPARE(CountedPixmap::alive, 1);
    QCOMPARE(numberAt(cache, 1, 1), 8);
}

void TestPixmapCacheIndexed::refusesBadCells()
{
    PixmapCacheIndexed cache(nullptr);
    CountedPixmap mine;
    cache.insertPixmap(-1, 0, &mine);
    cache.insertPixmap(0, -1, &mine);
    cache.insertPixmap(0, 0, nullptr);
    QVERIFY(!cache.pixmap(-1, 0));
    QVERIFY(!cache.pixmap(0, -1));
    QVERIFY(!cache.pixmap(0, 0));
    QCOMPARE(CountedPixmap::alive, 1);
}

void TestPixmapCacheIndexed::clearsAll()
{
    PixmapCacheIndexed cache(nullptr);
    fill(&cache, 3, 3);
    cache.setVisibleBounds(0, 1, 0, 5);
    cache.clear();
    QCOMPARE(CountedPixmap::alive, 0);
    fill(&cache, 3, 1);
    cache.clearRows({2});
    QVERIFY2(cache.pixmap(2, 0), "the bounds stay");
}

void TestPixmapCacheIndexed::clearsRectangle_data()
{
    QTest::addColumn<QList<int>>("rectangle");
    QTest::addColumn<Cells>("left");
    QTest::newRow("one cell") << QList<int> {1, 1, 1, 1}
                              << Cells {{0, 0}, {0, 1}, {1, 0}, {2, 0}, {2, 1}};
    QTest::newRow("row 2 and after")
        << QList<int> {2, -1, -1, -1} << Cells {{0, 0}, {0, 1}, {1, 0}, {1, 1}};
    QTest::newRow("column 1 in all rows")
        << QList<int> {-1, -1, 1, 1} << Cells {{0, 0}, {1, 0}, {2, 0}};
    QTest::newRow("rows up to 1") << QList<int> {-1, 1, -1, -1} << Cells {{2, 0}, {2, 1}};
    QTest::newRow("columns from 1 on")
        << QList<int> {0, 2, 1, -1} << Cells {{0, 0}, {1, 0}, {2, 0}};
    QTest::newRow("nothing there")
        << QList<int> {3, 9, 0, 9} << Cells {{0, 0}, {0, 1}, {1, 0}, {1, 1}, {2, 0}, {2, 1}};
}

void TestPixmapCacheIndexed::clearsRectangle()
{
    QFETCH(QList<int>, rectangle);
    QFETCH(Cells, left);
    PixmapCacheIndexed cache(nullptr);
    cache.clear(0, 1, 0, 1); // an empty cache has nothing to say
    fill(&cache, 3, 2);
    cache.clear(rectangle.at(0), rectangle.at(1), rectangle.at(2), rectangle.at(3));
    QCOMPARE(cellsOf(cache, 4, 4), left);
    QCOMPARE(CountedPixmap::alive, int(left.size()));
}

void TestPixmapCacheIndexed::clearsSelection()
{
    QStandardItemModel model(10, 3);
    PixmapCacheIndexed cache(nullptr);
    fill(&cache, 5, 3);
    QItemSelection selection(model.index(1, 0), model.index(2, 1));
    selection.select(model.index(4, 2), model.index(4, 2));
    cache.clear(selection);
    QCOMPARE(
        cellsOf(cache, 5, 3),
        (Cells {{0, 0}, {0, 1}, {0, 2}, {1, 2}, {2, 2}, {3, 0}, {3, 1}, {3, 2}, {4, 0}, {4, 1}}));
    PixmapCacheIndexed empty(nullptr);
    empty.clear(selection);
}

void TestPixmapCacheIndexed::skipsInvalidRanges()
{
    QStandardItemModel model(10, 3);
    PixmapCacheIndexed cache(nullptr);
    fill(&cache, 5, 3);
    QItemSelection selection;
    selection.append(QItemSelectionRange());
    selection.append(QItemSelectionRange(model.index(3, 0), model.index(1, 2)));
    selection.append(QItemSelectionRange(model.index(1, 2), model.index(3, 0)));
    cache.clear(selection);
    QCOMPARE(CountedPixmap::alive, 15);
}

void TestPixmapCacheIndexed::clearsRows()
{
    PixmapCacheIndexed cache(nullptr);
    fill(&cache, 5, 2);
    cache.clearRows({});
    QCOMPARE(CountedPixmap::alive, 10);
    cache.clearRows({3, 1, 3, 77});
    QCOMPARE(rowsOf(cache, 0), kept({0, 2, 4}));
    QCOMPARE(rowsOf(cache, 1), kept({0, 2, 4}));
    QCOMPARE(CountedPixmap::alive, 6);
}

void TestPixmapCacheIndexed::clearsRowsWithinBoundsOnly()
{
    PixmapCacheIndexed cache(nullptr);
    cache.setVisibleBounds(0, 5, 0, 5);
    fill(&cache, 8, 1);
    cache.clearRows({7});
    QVERIFY(cache.pixmap(7, 0));
    cache.clearRows({7, 5});
    QVERIFY(cache.pixmap(7, 0));
    QVERIFY(!cache.pixmap(5, 0));
}

void TestPixmapCacheIndexed::clearsColumns()
{
    PixmapCacheIndexed cache(nullptr);
    fill(&cache, 2, 4);
    cache.clearColumns({2, 0, 2});
    QCOMPARE(cellsOf(cache, 2, 4), (Cells {{0, 1}, {0, 3}, {1, 1}, {1, 3}}));
}

void TestPixmapCacheIndexed::clearsColumnsWithinBoundsOnly()
{
    PixmapCacheIndexed cache(nullptr);
    cache.setVisibleBounds(0, 9, 1, 2);
    fill(&cache, 1, 4);
    cache.clearColumns({0, 3, -1});
    QCOMPARE(CountedPixmap::alive, 4);
    cache.clearColumns({0, 1, 2, 3});
    QCOMPARE(cellsOf(cache, 1, 4), (Cells {{0, 0}, {0, 3}}));
}

void TestPixmapCacheIndexed::clearsExcluded_data()
{
    QTest::addColumn<QList<int>>("rectangle");
    QTest::addColumn<Cells>("left");
    QTest::newRow("inner") << QList<int> {1, 1, 1, 1} << Cells {{1, 1}};
    QTest::newRow("no upper column")
        << QList<int> {1, 2, 1, -1} << Cells {{1, 1}, {1, 2}, {2, 1}, {2, 2}};
    QTest::newRow("no lower row") << QList<int> {-1, 0, 0, 0} << Cells {{0, 0}};
    QTest::newRow("no upper row") << QList<int> {2, -1, 0, 9} << Cells {{2, 0}, {2, 1}, {2, 2}};
    QTest::newRow("no lower column") << QList<int> {0, 0, -1, 1} << Cells {{0, 0}, {0, 1}};
    QTest::newRow("no limits") << QList<int> {-1, -1, -1, -1}
                               << Cells {{0, 0}, {0, 1}, {0, 2}, {1, 0}, {1, 1},
                                         {1, 2}, {2, 0}, {2, 1}, {2, 2}};
}

void TestPixmapCacheIndexed::clearsExcluded()
{
    QFETCH(QList<int>, rectangle);
    QFETCH(Cells, left);
    PixmapCacheIndexed cache(nullptr);
    cache.clearExcluded(0, 0, 0, 0);
    fill(&cache, 3, 3);
    for (int i = 0; i < 2; ++i) { // the second time there is nothing left to do
        cache.clearExcluded(rectangle.at(0), rectangle.at(1), rectangle.at(2), rectangle.at(3));
        QCOMPARE(cellsOf(cache, 4, 4), left);
    }
    // What is inserted afterwards is seen again.
    put(&cache, 2, 3);
    cache.clearExcluded(2, 2, 3, 3);
    QCOMPARE(cellsOf(cache, 4, 4), (Cells {{2, 3}}));
}

void TestPixmapCacheIndexed::setsVisibleBounds()
{
    PixmapCacheIndexed cache(nullptr);
    fill(&cache, 5, 3);
    cache.setVisibleBounds(1, 3, 0, 1);
    QCOMPARE(rowsOf(cache), kept({1, 2, 3}));
    QVERIFY(!cache.pixmap(1, 2));
    put(&cache, 9, 9);
    cache.setVisibleBounds(1, 3, 0, 1); // nothing new: nothing happens
    QVERIFY(cache.pixmap(9, 9));
}

void TestPixmapCacheIndexed::ignoresNegativeBounds()
{
    PixmapCacheIndexed cache(nullptr);
    fill(&cache, 5, 3);
    cache.setVisibleBounds(0, 2, 0, -1);
    cache.setVisibleBounds(-1, 2, 0, 2);
    cache.setVisibleBounds(0, -1, 0, 2);
    cache.setVisibleBounds(0, 2, -1, 2);
    cache.setRowFirstVisibleBound(-1);
    cache.setRowLastVisibleBound(-1);
    cache.setColFirstVisibleBound(-1);
    cache.setColLastVisibleBound(-1);
    QCOMPARE(CountedPixmap::alive, 15);
    cache.clearRows({4});
    QVERIFY2(!cache.pixmap(4, 0), "the bounds are still open");
}

void TestPixmapCacheIndexed::setsSingleBounds()
{
    PixmapCacheIndexed cache(nullptr);
    fill(&cache, 20, 6);
    cache.setRowLastVisibleBound(10);
    QCOMPARE(rowsOf(cache).size(), 11);
    cache.setRowFirstVisibleBound(5);
    QCOMPARE(rowsOf(cache), kept({5, 6, 7, 8, 9, 10}));
    cache.setColFirstVisibleBound(1);
    cache.setColLastVisibleBound(3);
    for (int column = 0; column < 6; ++column)
        QCOMPARE(cache.pixmap(7, column) != nullptr, column >= 1 && column <= 3);
    cache.setRowFirstVisibleBound(7);
    put(&cache, 2, 2);
    cache.setRowFirstVisibleBound(8); // from row 0 on, not from row 7
    QVERIFY(!cache.pixmap(2, 2));
    QVERIFY(!cache.pixmap(7, 2));
}

void TestPixmapCacheIndexed::growsWithoutEvicting()
{
    PixmapCacheIndexed cache(nullptr);
    cache.setVisibleBounds(4, 6, 1, 2);
    fill(&cache, 10, 4);
    cache.setRowFirstVisibleBound(3);
    cache.setRowLastVisibleBound(7);
    cache.setColFirstVisibleBound(0);
    cache.setColLastVisibleBound(3);
    cache.setColLastVisibleBound(3);
    QCOMPARE(CountedPixmap::alive, 40);
    cache.clearRows({3, 7});
    QCOMPARE(CountedPixmap::alive, 32);
}

void TestPixmapCacheIndexed::invalidatesBounds()
{
    PixmapCacheIndexed cache(nullptr);
    cache.setVisibleBounds(0, 2, 0, 0);
    fill(&cache, 6, 2);
    cache.invalidateVisibleBounds();
    QCOMPARE(CountedPixmap::alive, 12);
    cache.clearRows({5});
    cache.clearColumns({1});
    QCOMPARE(rowsOf(cache), kept({0, 1, 2, 3, 4}));
    QVERIFY(!cache.pixmap(0, 1));
}

void TestPixmapCacheIndexed::insertsAtTheTopByOffset()
{
    PixmapCacheIndexed cache(nullptr);
    fill(&cache, 3, 1);
    cache.indexInsert(0, 1);
    // No key moved: what is looked up is row + 2.
    QCOMPARE(numberAt(cache, 0, 0), 200);
    cache.rebase();
    QCOMPARE(rowsOf(cache), (QList<int> {2000, 3001, 4002}));
}

void TestPixmapCacheIndexed::dropsWhatWasSeen_data()
{
    QTest::addColumn<int>("offset");
    for (int offset : {0, 1, 2, 3})
        QTest::addRow("%d", offset) << offset;
}

//! The cell is looked up elsewhere than a new picture of it is stored: the old one must go.
void TestPixmapCacheIndexed::dropsWhatWasSeen()
{
    QFETCH(int, offset);
    PixmapCacheIndexed cache(nullptr);
    fill(&cache, 12, 1);
    if (offset > 0)
        cache.indexInsert(0, offset - 1);
    QCOMPARE(numberAt(cache, 5, 0), 100 * (5 + offset));
    put(&cache, 5, 0, 7);
    QCOMPARE(numberAt(cache, 5, 0), offset == 0 ? 7 : -1);
    QCOMPARE(numberAt(cache, 6, 0), 100 * (6 + offset));
    cache.rebase();
    QCOMPARE(numberAt(cache, 5, 0), 7);
}

void TestPixmapCacheIndexed::insertsInTheMiddle()
{
    PixmapCacheIndexed cache(nullptr);
    fill(&cache, 4, 2);
    cache.indexInsert(2, 4);
    QCOMPARE(rowsOf(cache, 1), (QList<int> {0, 1001, 5002, 6003}));
    QCOMPARE(CountedPixmap::alive, 8);
}

void TestPixmapCacheIndexed::insertsBelowBounds()
{
    PixmapCacheIndexed cache(nullptr);
    cache.setVisibleBounds(0, 3, 0, 3);
    fill(&cache, 6, 1);
    cache.indexInsert(4, 5);
    QCOMPARE(rowsOf(cache), kept({0, 1, 2, 3, 4, 5}));
    cache.indexInsert(3, 3);
    QCOMPARE(rowsOf(cache), (QList<int> {0, 1001, 2002, 4003, 5004, 6005}));
}

void TestPixmapCacheIndexed::insertsIntoNothing()
{
    PixmapCacheIndexed cache(nullptr);
    cache.indexInsert(0, 4);
    put(&cache, 1, 0);
    QVERIFY2(cache.pixmap(1, 0), "there is no offset");
}

void TestPixmapCacheIndexed::insertsAboveTheOffset()
{
    PixmapCacheIndexed cache(nullptr);
    fill(&cache, 3, 1);
    cache.indexInsert(0, 4); // rows are now 5 to 7
    cache.indexInsert(5, 6); // on the first of them: the offset grows
    cache.indexInsert(8, 8); // between the first and the second: keys move
    cache.rebase();
    QCOMPARE(rowsOf(cache), (QList<int> {7000, 9001, 10002}));
}

void TestPixmapCacheIndexed::insertsWithoutLimits()
{
    constexpr int largest = std::numeric_limits<int>::max();
    PixmapCacheIndexed cache(nullptr);
    put(&cache, 5, 0);
    cache.indexInsert(0, largest);
    cache.indexInsert(0, largest);
    cache.rebase();
    QVERIFY(cache.pixmap(largest, 0));
}

void TestPixmapCacheIndexed::removesRows()
{
    PixmapCacheIndexed cache(nullptr);
    fill(&cache, 7, 2);
    cache.indexRemove(3, 4);
    QCOMPARE(rowsOf(cache, 1), (QList<int> {0, 1001, 2002, 3005, 4006}));
    QCOMPARE(CountedPixmap::alive, 10);
    cache.indexRemove(0, 0);
    QCOMPARE(rowsOf(cache), (QList<int> {1, 1002, 2005, 3006}));
}

void TestPixmapCacheIndexed::removesBelowBounds()
{
    PixmapCacheIndexed cache(nullptr);
    cache.setVisibleBounds(0, 3, 0, 3);
    fill(&cache, 6, 1);
    cache.indexRemove(4, 4);
    QCOMPARE(rowsOf(cache), kept({0, 1, 2, 3, 4, 5}));
}

void TestPixmapCacheIndexed::removesWithinTheOffset()
{
    PixmapCacheIndexed cache(nullptr);
    fill(&cache, 3, 1);
    cache.indexInsert(0, 4); // rows 5 to 7
    cache.indexRemove(1, 2);
    cache.rebase();
    QCOMPARE(rowsOf(cache), (QList<int> {3000, 4001, 5002}));
}

void TestPixmapCacheIndexed::removesAcrossTheOffset()
{
    PixmapCacheIndexed cache(nullptr);
    fill(&cache, 4, 1);
    cache.indexInsert(0, 4); // rows 5 to 8
    cache.indexRemove(4, 6); // takes the first two away
    QCOMPARE(CountedPixmap::alive, 2);
    cache.rebase();
    QCOMPARE(rowsOf(cache), (QList<int> {4002, 5003}));
}

void TestPixmapCacheIndexed::removesMoreThanTheOffset()
{
    PixmapCacheIndexed cache(nullptr);
    fill(&cache, 6, 1);
    cache.indexInsert(0, 1); // rows 2 to 7
    cache.indexRemove(1, 4);
    QCOMPARE(rowsOf(cache), (QList<int> {1003, 2004, 3005}));
    QCOMPARE(CountedPixmap::alive, 3);
}

void TestPixmapCacheIndexed::removesFromNothing()
{
    PixmapCacheIndexed cache(nullptr);
    put(&cache, 0, 0);
    cache.indexInsert(0, 4);
    cache.clear();
    cache.indexRemove(0, 2); // the offset falls although there is nothing
    put(&cache, 5, 0, 9);    // stored as row 3 with the offset 2
    QCOMPARE(numberAt(cache, 1, 0), 9);
    cache.rebase();
    QCOMPARE(numberAt(cache, 5, 0), 9);
    cache.clear();
    cache.indexRemove(3, 4);
}

void TestPixmapCacheIndexed::movesDown()
{
    PixmapCacheIndexed cache(nullptr);
    fill(&cache, 8, 2);
    cache.indexMove(1, 2, 5);
    QCOMPARE(rowsOf(cache, 1), (QList<int> {0, 1003, 2004, 3005, 4006, 5001, 6002, 7007}));
    QCOMPARE(CountedPixmap::alive, 16);
}

void TestPixmapCacheIndexed::movesUp()
{
    PixmapCacheIndexed cache(nullptr);
    fill(&cache, 8, 2);
    cache.indexMove(5, 6, 1);
    QCOMPARE(rowsOf(cache), (QList<int> {0, 1005, 2006, 3001, 4002, 5003, 6004, 7007}));
    QCOMPARE(CountedPixmap::alive, 16);
}

void TestPixmapCacheIndexed::dropsOverlappingMoves()
{
    PixmapCacheIndexed cache(nullptr);
    fill(&cache, 8, 1);
    cache.indexMove(2, 4, 3);
    QCOMPARE(rowsOf(cache), kept({0, 1, 6, 7}));
}

void TestPixmapCacheIndexed::ignoresMovesElsewhere()
{
    PixmapCacheIndexed cache(nullptr);
    cache.setVisibleBounds(4, 6, 0, 0);
    fill(&cache, 10, 1);
    const QList<int> all = kept({0, 1, 2, 3, 4, 5, 6, 7, 8, 9});
    cache.indexMove(7, 7, 9); // below
    QCOMPARE(rowsOf(cache), all);
    cache.indexMove(0, 0, 2); // above: the last row concerned is 2
    QCOMPARE(rowsOf(cache), all);
    cache.indexMove(5, 6, 5); // nowhere
    QCOMPARE(rowsOf(cache), all);
    cache.indexMove(0, 0, 3); // reaches the first visible row by the rule
    QCOMPARE(numberAt(cache, 3, 0), 0);
}

void TestPixmapCacheIndexed::looksUpAndStoresWithOppositeSigns()
{
    PixmapCacheIndexed cache(nullptr);
    put(&cache, 0, 0, 1);
    cache.indexInsert(0, 2); // the offset is 3
    put(&cache, 10, 0, 2);   // stored as row 7
    QCOMPARE(numberAt(cache, 4, 0), 2);
    put(&cache, 4, 0, 3); // drops what row 4 shows, stored as row 1
    QVERIFY(!cache.pixmap(4, 0));
    QCOMPARE(CountedPixmap::alive, 2);
    cache.rebase();
    QCOMPARE(numberAt(cache, 3, 0), 1);
    QCOMPARE(numberAt(cache, 4, 0), 3);
}

void TestPixmapCacheIndexed::clearRowsIgnoresTheOffset()
{
    PixmapCacheIndexed cache(nullptr);
    fill(&cache, 5, 1);
    cache.indexInsert(0, 1);
    cache.clearRows({3}); // the key, which is model row 5
    cache.rebase();
    QCOMPARE(rowsOf(cache), (QList<int> {2000, 3001, 4002, 6004}));
}

void TestPixmapCacheIndexed::rangesKnowTheOffset()
{
    PixmapCacheIndexed cache(nullptr);
    fill(&cache, 6, 1);
    cache.indexInsert(0, 1); // rows 2 to 7
    cache.clear(3, 3, -1, -1);
    cache.clearExcluded(2, 6, 0, 0);
    cache.indexMove(2, 2, 5);
    cache.rebase();
    QCOMPARE(rowsOf(cache), (QList<int> {3002, 4003, 5000, 6004}));
}

void TestPixmapCacheIndexed::rebases()
{
    PixmapCacheIndexed cache(nullptr);
    cache.rebase();
    fill(&cache, 2, 2);
    cache.rebase();
    QCOMPARE(rowsOf(cache), kept({0, 1}));
    for (int i = 0; i < 3; ++i)
        cache.indexInsert(0, 0);
    cache.rebase();
    QCOMPARE(rowsOf(cache), (QList<int> {3000, 4001}));
    QCOMPARE(CountedPixmap::alive, 4);
}

void TestPixmapCacheIndexed::assigns()
{
    PixmapCacheIndexed source(nullptr);
    source.setVisibleBounds(0, 3, 0, 0);
    QPixmap *original = put(&source, 1, 0);
    original->fill(Qt::red);
    PixmapCacheIndexed target(nullptr);
    QPixmap *left = put(&target, 7, 0);
    target = source;
    QVERIFY(!target.pixmap(7, 0));
    QVERIFY(target.pixmap(1, 0) && target.pixmap(1, 0) != original);
    QCOMPARE(target.pixmap(1, 0)->cacheKey(), original->cacheKey());
    target.indexInsert(4, 4); // below the bounds that were copied
    QVERIFY(target.pixmap(1, 0));
    source.clear();
    QCOMPARE(target.pixmap(1, 0)->toImage().pixelColor(0, 0), QColor(Qt::red));
    delete left; // left to whoever held it
}

void TestPixmapCacheIndexed::assignsItself()
{
    PixmapCacheIndexed cache(nullptr);
    QPixmap *pixmap = put(&cache, 1, 0);
    PixmapCacheIndexed &same = cache;
    cache = same;
    QCOMPARE(cache.pixmap(1, 0), pixmap);
}

// Whatever happens to rows, a pixmap shows the row that it was painted for.
void TestPixmapCacheIndexed::followsRowsAtRandom()
{
    for (quint32 seed = 1; seed <= 40; ++seed) {
        QRandomGenerator random(seed);
        PixmapCacheIndexed cache(nullptr);
        QList<int> rows;
        int next = 0;
        for (int i = 0; i < 30; ++i)
            rows.append(next++);
        for (int step = 0; step < 200; ++step) {
            const int count = 1 + int(random.bounded(3));
            const int row = int(random.bounded(int(rows.size()) + 1));
            switch (random.bounded(5)) {
            case 0:
                for (int i = 0; i < count; ++i)
                    rows.insert(row, next++);
                cache.indexInsert(row, row + count - 1);
                break;
            case 1:
                if (row + count > rows.size() || rows.size() < 10)
                    break;
                rows.remove(row, count);
                cache.indexRemove(row, row + count - 1);
                break;
            case 2: {
                const int to = int(random.bounded(int(rows.size()) - count));
                if (row + count > rows.size())
                    break;
                const QList<int> block = rows.mid(row, count);
                rows.remove(row, count);
                rows = rows.mid(0, to) + block + rows.mid(to);
                cache.indexMove(row, row + count - 1, to);
                break;
            }
            default:
                cache.rebase();
                if (row < rows.size())
                    put(&cache, row, 0, rows.at(row));
            }
            if (step % 3)
                continue;
            cache.rebase();
            for (int i = 0; i < rows.size() + 5; ++i) {
                const int number = numberAt(cache, i, 0);
                const QByteArray where = QByteArray("seed ") + QByteArray::number(seed) + " step "
                    + QByteArray::number(step);
                QVERIFY2(number == -1 || (i < rows.size() && number == rows.at(i)),
                         where.constData());
            }
        }
    }
}

void TestPixmapCacheIndexed::boundsAtTheFirstCell()
{
    PixmapCacheIndexed cache(nullptr);
    fill(&cache, 3, 3);
    cache.setVisibleBounds(0, 2, 0, 2);
    cache.setColLastVisibleBound(0);
    QCOMPARE(cellsOf(cache, 3, 3), Cells({{0, 0}, {1, 0}, {2, 0}}));
    cache.setRowLastVisibleBound(0);
    QCOMPARE(cellsOf(cache, 3, 3), Cells({{0, 0}}));
    cache.setRowFirstVisibleBound(1);
    QCOMPARE(cellsOf(cache, 3, 3), Cells());
    put(&cache, 0, 0);
    cache.setRowFirstVisibleBound(0);
    cache.setColFirstVisibleBound(1);
    QCOMPARE(cellsOf(cache, 3, 3), Cells());
    put(&cache, 0, 0);
    cache.setColFirstVisibleBound(0); // nothing goes as it grows
    QCOMPARE(cellsOf(cache, 3, 3), Cells({{0, 0}}));
}

QTEST_MAIN(TestPixmapCacheIndexed)
#include "tst_pixmapcacheindexed.moc"
