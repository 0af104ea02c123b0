// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

// Rows of 10 pixels, if nothing else is said, in a viewport of 45: four whole ones and half of
// one more.

#include "view/rowgeometry_p.h"

#include <QTest>

namespace {

constexpr int height = 10;
constexpr int room = 45;
constexpr qint64 farAway = RowScale::farAway;
constexpr int manyRows = 2'000'000'000;

RowGeometry byRow(int value, int rows = 100)
{
    return {{height, value, false}, rows, room};
}

RowGeometry byPixel(int value, int rows = 100)
{
    return {{height, value, true}, rows, room};
}

using Hint = QAbstractItemView::ScrollHint;
constexpr Hint ensure = QAbstractItemView::EnsureVisible;
constexpr Hint atTop = QAbstractItemView::PositionAtTop;
constexpr Hint atBottom = QAbstractItemView::PositionAtBottom;
constexpr Hint centre = QAbstractItemView::PositionAtCenter;

} // namespace

Q_DECLARE_METATYPE(RowGeometry)
Q_DECLARE_METATYPE(Hint)

class TestRowGeometry : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void saturates();
    void roundsDown_data();
    void roundsDown();
    void places_data();
    void places();
    void rowAt_data();
    void rowAt();
    void seenRows_data();
    void seenRows();
    void isSeen_data();
    void isSeen();
    void scrollBar_data();
    void scrollBar();
    void valueFor_data();
    void valueFor();
    void ensuredRowIsSeen();
    void movedValues_data();
    void movedValues();
    void scrolledPixels_data();
    void scrolledPixels();
    void insertion_data();
    void insertion();
    void topRowShift_data();
    void topRowShift();
    void pages_data();
    void pages();
};

void TestRowGeometry::saturates()
{
    constexpr qint64 most = std::numeric_limits<int>::max();
    constexpr qint64 least = std::numeric_limits<int>::min();
    QCOMPARE(saturated(0), 0);
    QCOMPARE(qint64(saturated(most)), most);
    QCOMPARE(qint64(saturated(most + 1)), most);
    QCOMPARE(qint64(saturated(least)), least);
    QCOMPARE(qint64(saturated(least - 1)), least);
    QCOMPARE(qint64(saturated(std::numeric_limits<qint64>::max())), most);
}

void TestRowGeometry::roundsDown_data()
{
    QTest::addColumn<int>("y");
    QTest::addColumn<int>("row");
    QTest::newRow("zero") << 0 << 0;
    QTest::newRow("last of the first") << 9 << 0;
    QTest::newRow("second") << 10 << 1;
    QTest::newRow("just above") << -1 << -1;
    QTest::newRow("first above") << -10 << -1;
    QTest::newRow("second above") << -11 << -2;
}

void TestRowGeometry::roundsDown()
{
    QFETCH(int, y);
    QFETCH(int, row);
    QCOMPARE(floorDiv(y, height), row);
    QCOMPARE(floorDiv<qint64>(y, height), qint64(row));
}

void TestRowGeometry::places_data()
{
    QTest::addColumn<RowGeometry>("rows");
    QTest::addColumn<int>("row");
    QTest::addColumn<int>("top");
    QTest::addColumn<int>("topRow");
    QTest::newRow("at the top") << byRow(0) << 3 << 30 << 0;
    QTest::newRow("scrolled") << byRow(7) << 8 << 10 << 7;
    QTest::newRow("above") << byRow(7) << 5 << -20 << 7;
    QTest::newRow("by pixels") << byPixel(73) << 8 << 7 << 7;
    QTest::newRow("by pixels, cut off") << byPixel(73) << 7 << -3 << 7;
    QTest::newRow("far below") << byRow(0, manyRows) << manyRows - 1 << int(farAway) << 0;
    QTest::newRow("far above") << byRow(manyRows - 1, manyRows) << 0 << int(-farAway)
                               << manyRows - 1;
}

void TestRowGeometry::places()
{
    QFETCH(RowGeometry, rows);
    QFETCH(int, row);
    QTEST(rows.top(row), "top");
    QTEST(rows.topRow(), "topRow");
    QCOMPARE(rows.contentTop(), rows.isPerPixel ? -rows.value : -qint64(rows.value) * height);
}

void TestRowGeometry::rowAt_data()
{
    QTest::addColumn<RowGeometry>("rows");
    QTest::addColumn<int>("y");
    QTest::addColumn<int>("row");
    QTest::newRow("first pixel") << byRow(7) << 0 << 7;
    QTest::newRow("last pixel of a row") << byRow(7) << 9 << 7;
    QTest::newRow("next row") << byRow(7) << 10 << 8;
    QTest::newRow("just above") << byRow(7) << -1 << 6;
    QTest::newRow("a row above") << byRow(7) << -10 << 6;
    QTest::newRow("above row 0") << byRow(0) << -1 << -1;
    QTest::newRow("last row") << byRow(96) << 39 << 99;
    QTest::newRow("below the last") << byRow(96) << 40 << -1;
    QTest::newRow("no rows") << byRow(0, 0) << 0 << -1;
    QTest::newRow("far above") << byRow(manyRows - 1, manyRows) << std::numeric_limits<int>::min()
                               << manyRows - 1 - int((farAway + height - 1) / height);
    QTest::newRow("far below") << byRow(0, manyRows) << std::numeric_limits<int>::max()
                               << std::numeric_limits<int>::max() / height;
    QTest::newRow("by pixels") << byPixel(73) << 0 << 7;
    QTest::newRow("by pixels, next row") << byPixel(73) << 7 << 8;
    QTest::newRow("by pixels, above") << byPixel(73) << -4 << 6;
    QTest::newRow("by pixels, above row 0 by less than a row") << byPixel(0) << -9 << 0;
    QTest::newRow("by pixels, above row 0") << byPixel(0) << -10 << -1;
    QTest::newRow("by pixels, below the last") << byPixel(960) << 40 << -1;
}

void TestRowGeometry::rowAt()
{
    QFETCH(RowGeometry, rows);
    QFETCH(int, y);
    QTEST(rows.rowAt(y), "row");
}

void TestRowGeometry::seenRows_data()
{
    QTest::addColumn<RowGeometry>("rows");
    QTest::addColumn<int>("first");
    QTest::addColumn<int>("offset");
    QTest::addColumn<int>("last");
    QTest::addColumn<int>("whole");
    QTest::newRow("at the top") << byRow(0) << 0 << 0 << 4 << 4;
    QTest::newRow("scrolled") << byRow(7) << 7 << 0 << 11 << 4;
    QTest::newRow("none") << byRow(0, 0) << -1 << 0 << 4 << 4;
    QTest::newRow("value beyond") << byRow(100) << -1 << 0 << 104 << 4;
    QTest::newRow("value below 0") << byRow(-1) << -1 << 0 << 3 << 4;
    QTest::newRow("by pixels") << byPixel(70) << 7 << 0 << 11 << 4;
    QTest::newRow("by pixels, cut off") << byPixel(75) << 7 << -5 << 11 << 4;
    QTest::newRow("by pixels, one more") << byPixel(76) << 7 << -6 << 12 << 4;
    QTest::newRow("no height") << RowGeometry {{height, 7, false}, 100, 0} << 7 << 0 << 6 << 0;
    QTest::newRow("whole rows") << RowGeometry {{height, 7, false}, 100, 40} << 7 << 0 << 10 << 4;
    QTest::newRow("higher than all")
        << RowGeometry {{100, 7, false}, 100, room} << 7 << 0 << 7 << 0;
}

void TestRowGeometry::seenRows()
{
    QFETCH(RowGeometry, rows);
    QFETCH(int, offset);
    int seen = 99;
    QTEST(rows.firstRow(&seen), "first");
    QCOMPARE(seen, offset);
    QCOMPARE(rows.firstRow(nullptr), rows.firstRow(&seen));
    QTEST(rows.lastSeenRow(), "last");
    QTEST(rows.wholeRows(), "whole");
}

void TestRowGeometry::isSeen_data()
{
    QTest::addColumn<int>("first");
    QTest::addColumn<int>("last");
    QTest::addColumn<bool>("isSeen");
    QTest::newRow("above") << 0 << 6 << false;
    QTest::newRow("touches the top") << 0 << 7 << true;
    QTest::newRow("within") << 8 << 9 << true;
    QTest::newRow("around") << 0 << 99 << true;
    QTest::newRow("touches the end") << 11 << 20 << true;
    QTest::newRow("below") << 12 << 20 << false;
}

void TestRowGeometry::isSeen()
{
    QFETCH(int, first);
    QFETCH(int, last);
    QTEST(byRow(7).isSeen(first, last), "isSeen");
    QTEST(byPixel(73).isSeen(first, last), "isSeen");
}

void TestRowGeometry::scrollBar_data()
{
    QTest::addColumn<RowGeometry>("rows");
    QTest::addColumn<int>("maximum");
    QTest::addColumn<int>("singleStep");
    QTest::addColumn<int>("pageStep");
    QTest::addColumn<int>("page");
    QTest::newRow("rows") << byRow(0) << 96 << 1 << 4 << 4;
    QTest::newRow("few rows") << byRow(0, 3) << -1 << 1 << 4 << 3;
    QTest::newRow("none") << byRow(0, 0) << -4 << 1 << 4 << 0;
    QTest::newRow("many rows") << byRow(0, manyRows) << manyRows - 4 << 1 << 4 << 4;
    QTest::newRow("higher than all")
        << RowGeometry {{100, 0, false}, 100, room} << 99 << 1 << 1 << 0;
    QTest::newRow("pixels") << byPixel(0) << 955 << 9 << 45 << 40;
    QTest::newRow("pixels, few rows") << byPixel(0, 3) << -15 << 9 << 45 << 30;
    QTest::newRow("pixels, many rows")
        << byPixel(0, manyRows) << std::numeric_limits<int>::max() << 9 << 45 << 40;
    QTest::newRow("pixels, low") << RowGeometry {{height, 0, true}, 100, 3} << 997 << 3 << 3 << 0;
    QTest::newRow("pixels, at least two")
        << RowGeometry {{1, 0, true}, 100, 50} << 50 << 2 << 50 << 50;
}

void TestRowGeometry::scrollBar()
{
    QFETCH(RowGeometry, rows);
    QTEST(rows.maximum(), "maximum");
    QTEST(rows.singleStep(), "singleStep");
    QTEST(rows.pageStep(), "pageStep");
    QTEST(rows.page(), "page");
}

void TestRowGeometry::valueFor_data()
{
    QTest::addColumn<RowGeometry>("rows");
    QTest::addColumn<int>("row");
    QTest::addColumn<Hint>("hint");
    QTest::addColumn<qint64>("value");
    const auto add = [](const char *name, const RowGeometry &rows, int row, Hint hint,
                        qint64 value) { QTest::newRow(name) << rows << row << hint << value; };
    add("rows, above", byRow(20), 19, ensure, 19);
    add("rows, top row", byRow(20), 20, ensure, 20);
    add("rows, last whole one", byRow(20), 23, ensure, 20);
    add("rows, cut off", byRow(20), 24, ensure, 21);
    add("rows, below", byRow(20), 50, ensure, 47);
    add("rows, to the top", byRow(20), 50, atTop, 50);
    add("rows, to the bottom", byRow(20), 50, atBottom, 47);
    add("rows, to the bottom, none above", byRow(20), 3, atBottom, -1);
    add("rows, to the bottom, one above", byRow(20), 4, atBottom, 1);
    add("rows, to the centre", byRow(20), 50, centre, 48);
    add("rows, to the centre, none above", byRow(20), 2, centre, -1);
    add("rows, to the centre of three", {{height, 20, false}, 100, 60}, 50, centre, 48);
    add("rows, to the centre of a little more", {{height, 20, false}, 100, 62}, 50, centre, 47);
    const RowGeometry high {{100, 20, false}, 100, room};
    add("rows higher than all, to the bottom", high, 50, atBottom, 50);
    add("rows higher than all, below", high, 21, ensure, 21);

    add("pixels, seen", byPixel(200), 22, ensure, 200);
    add("pixels, above", byPixel(200), 19, ensure, 190);
    add("pixels, cut off above", byPixel(205), 20, ensure, 200);
    add("pixels, last line seen", byPixel(205), 24, ensure, 205);
    add("pixels, cut off below", byPixel(204), 24, ensure, 204);
    add("pixels, to the top", byPixel(200), 50, atTop, 500);
    // One pixel short of the row's end.
    add("pixels, below", byPixel(200), 50, ensure, 464);
    add("pixels, to the bottom", byPixel(200), 50, atBottom, 464);
    add("pixels, to the centre", byPixel(200), 50, centre, 483);
    const RowGeometry highPixels {{100, 200, true}, 100, room};
    add("pixels, higher than all, below", highPixels, 3, ensure, 300);
    const RowGeometry exact {{room, 20, true}, 100, room};
    add("pixels, as high as all, below", exact, 3, ensure, 20);
}

void TestRowGeometry::valueFor()
{
    QFETCH(RowGeometry, rows);
    QFETCH(int, row);
    QFETCH(Hint, hint);
    QTEST(rows.valueFor(row, hint, rows.pageStep()), "value");
}

void TestRowGeometry::ensuredRowIsSeen()
{
    // Whatever page step the application gave the bar, what lies within it stays.
    QCOMPARE(byRow(20).valueFor(29, ensure, 10), qint64(20));
    QCOMPARE(byRow(20).valueFor(30, ensure, 10), qint64(27));
}

void TestRowGeometry::movedValues_data()
{
    QTest::addColumn<RowGeometry>("rows");
    QTest::addColumn<qint64>("count");
    QTest::addColumn<qint64>("value");
    QTest::newRow("rows") << byRow(20) << qint64(3) << qint64(23);
    QTest::newRow("rows, up") << byRow(20) << qint64(-3) << qint64(17);
    QTest::newRow("pixels") << byPixel(205) << qint64(3) << qint64(235);
    QTest::newRow("pixels, many") << byPixel(0) << qint64(manyRows) << qint64(manyRows) * height;
}

void TestRowGeometry::movedValues()
{
    QFETCH(RowGeometry, rows);
    QFETCH(qint64, count);
    QTEST(rows.valueMovedBy(count), "value");
    QCOMPARE(rows.valueOfTopRow(7), rows.isPerPixel ? 70 : 7);
    QCOMPARE(byPixel(0).valueOfTopRow(manyRows), std::numeric_limits<int>::max());
}

void TestRowGeometry::scrolledPixels_data()
{
    QTest::addColumn<RowGeometry>("rows");
    QTest::addColumn<int>("dy");
    QTest::addColumn<int>("pixels");
    QTest::newRow("none") << byRow(20) << 0 << 0;
    QTest::newRow("down") << byRow(20) << -3 << -30;
    QTest::newRow("up") << byRow(20) << 2 << 20;
    QTest::newRow("one down") << byRow(20) << -1 << -10;
    QTest::newRow("one up") << byRow(20) << 1 << 10;
    QTest::newRow("beyond the end") << byRow(103) << -5 << -20;
    QTest::newRow("all beyond the end") << byRow(103) << -2 << 0;
    QTest::newRow("back from beyond") << byRow(98) << 7 << 20;
    QTest::newRow("pixels") << byPixel(20) << -7 << -7;
}

void TestRowGeometry::scrolledPixels()
{
    QFETCH(RowGeometry, rows);
    QFETCH(int, dy);
    QTEST(rows.scrolledPixels(dy), "pixels");
}

void TestRowGeometry::insertion_data()
{
    QTest::addColumn<RowGeometry>("rows");
    QTest::addColumn<int>("oldValue");
    QTest::addColumn<int>("start");
    QTest::addColumn<int>("count");
    QTest::addColumn<int>("seam");
    QTest::addColumn<qint64>("above"); // 0: not moved
    QTest::addColumn<qint64>("below");
    const auto add = [](const char *name, const RowGeometry &rows, int oldValue, int start,
                        int count, int seam, qint64 above, qint64 below) {
        QTest::newRow(name) << rows << oldValue << start << count << seam << above << below;
    };
    add("above, rows stay", byRow(23), 20, 5, 3, 0, 0, 0);
    add("at the pinned top", byRow(0), 0, 0, 3, 0, 0, 30);
    add("in view", byRow(20), 20, 22, 3, 20, 0, 30);
    add("below", byRow(20), 20, 25, 3, room, 0, 0);
    add("last line in view", byRow(20), 20, 24, 3, 40, 0, 30);
    add("at the pinned end", byRow(23), 20, 24, 3, 40, -30, 0);
    add("in view of the pinned end", byRow(23), 20, 22, 3, 20, -30, 0);
    add("pixels, in view", byPixel(205), 205, 22, 1, 15, 0, 10);
    add("pixels, but one line above", byPixel(199), 209, 21, 1, 1, 10, 20);
    add("pixels, above, rows stay", byPixel(235), 205, 20, 3, 0, 0, 0);
    add("many above, pinned to the top", byRow(0), 0, 0, manyRows, 0, 0, qint64(manyRows) * height);
}

void TestRowGeometry::insertion()
{
    QFETCH(RowGeometry, rows);
    QFETCH(int, oldValue);
    QFETCH(int, start);
    QFETCH(int, count);
    QFETCH(qint64, above);
    QFETCH(qint64, below);
    RowGeometry old = rows;
    old.value = oldValue;
    const RowShift shift = rows.insertion(old.contentTop(), start, count);
    QTEST(shift.seam, "seam");
    QCOMPARE(shift.isAboveMoved, above != 0);
    QCOMPARE(shift.isBelowMoved, below != 0);
    if (above != 0)
        QCOMPARE(shift.above, above);
    if (below != 0)
        QCOMPARE(shift.below, below);
}

void TestRowGeometry::topRowShift_data()
{
    QTest::addColumn<int>("start");
    QTest::addColumn<int>("end");
    QTest::addColumn<int>("row");
    QTest::addColumn<int>("shift");
    // The top row is 20.
    QTest::newRow("from above to above") << 3 << 5 << 10 << 0;
    QTest::newRow("from above to just above") << 3 << 5 << 20 << 0;
    QTest::newRow("from above to below") << 3 << 5 << 30 << -3;
    QTest::newRow("from below to above") << 30 << 32 << 3 << 3;
    QTest::newRow("from below to the top row") << 30 << 32 << 20 << 3;
    QTest::newRow("from below to below") << 30 << 32 << 40 << 0;
    QTest::newRow("the top row, down") << 19 << 21 << 30 << 3;
    QTest::newRow("the top row, up") << 19 << 21 << 3 << -3;
    QTest::newRow("first of the moved") << 20 << 21 << 30 << 2;
    QTest::newRow("last of the moved") << 18 << 20 << 30 << 3;
}

void TestRowGeometry::topRowShift()
{
    QFETCH(int, start);
    QFETCH(int, end);
    QFETCH(int, row);
    QTEST(byRow(20).topRowShift(start, end, row), "shift");
    QTEST(byPixel(205).topRowShift(start, end, row), "shift");
}

void TestRowGeometry::pages_data()
{
    QTest::addColumn<RowGeometry>("rows");
    QTest::addColumn<int>("row");
    QTest::addColumn<int>("up");
    QTest::addColumn<int>("down");
    QTest::newRow("amid") << byRow(20) << 50 << 45 << 54;
    QTest::newRow("near the top") << byRow(0) << 3 << 0 << 7;
    QTest::newRow("near the end") << byRow(90) << 97 << 92 << 99;
    QTest::newRow("pixels") << byPixel(205) << 50 << 45 << 54;
    QTest::newRow("as far as pixels reach")
        << byRow(0, manyRows) << manyRows - 1 << int((farAway - room) / height)
        << int((farAway + room) / height);
}

void TestRowGeometry::pages()
{
    QFETCH(RowGeometry, rows);
    QFETCH(int, row);
    QTEST(rows.pageUp(row), "up");
    QTEST(rows.pageDown(row), "down");
}

QTEST_APPLESS_MAIN(TestRowGeometry)
#include "tst_rowgeometry.moc"
