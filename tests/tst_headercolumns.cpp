// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

// Compares what is told of a header's columns with what each of its pixels says, for headers
// whose columns were moved, hidden, resized and scrolled.

#include "view/columnscroll_p.h"
#include "view/cursormoves_p.h"
#include "view/headercolumns_p.h"

#include <QHeaderView>
#include <QScrollBar>
#include <QStandardItemModel>
#include <QTest>

#include <algorithm>
#include <random>

namespace {

constexpr int width = 200;

//! A header of random columns.
struct Header
{
    explicit Header(quint32 seed)
        : random(seed)
        , model(3, 1 + below(6))
        , header(Qt::Horizontal)
    {
        header.setLayoutDirection(seed % 2 ? Qt::LeftToRight : Qt::RightToLeft);
        header.setMinimumSectionSize(1);
        header.setModel(&model);
        header.resize(width, 20);
        for (int column = 0; column < model.columnCount(); ++column)
            header.resizeSection(column, 10 + below(80));
        for (int i = below(4); i > 0; --i)
            header.moveSection(below(header.count()), below(header.count()));
        for (int column = 0; column < model.columnCount(); ++column)
            header.setSectionHidden(column, below(4) == 0);
        header.setOffset(below(std::max(header.length() - width, 1)));
    }
    int below(int limit) { return std::uniform_int_distribution<int>(0, limit - 1)(random); }
    //! Non-hidden columns in visual order.
    QList<int> shown() const
    {
        QList<int> columns;
        for (int visual = 0; visual < header.count(); ++visual) {
            if (!header.isSectionHidden(header.logicalIndex(visual)))
                columns.append(header.logicalIndex(visual));
        }
        return columns;
    }
    QPair<int, int> visible() const
    {
        return HeaderColumns(&header).crossing(QRect(0, 0, width, 5), header.isRightToLeft());
    }

    std::mt19937 random;
    QStandardItemModel model;
    QHeaderView header;
};

//! A header of five columns of 90 pixels.
struct FiveColumns
{
    FiveColumns()
    {
        header.setModel(&model);
        header.resize(width, 20);
        resize(90);
    }
    void resize(int size)
    {
        for (int column = 0; column < model.columnCount(); ++column)
            header.resizeSection(column, size);
    }

    QStandardItemModel model {1, 5};
    QHeaderView header {Qt::Horizontal};
};

} // namespace

class TestHeaderColumns : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void noHeader();
    void strips();
    void positions_data();
    void positions();
    void bounds();
    void spans();
    void between();
    void neighbours();
    void cursorMoves();
    void scrollByPixel();
    void scrollBySection();
    void sectionScrollsTo();
    void rangeOfOneWideColumn();
    void rangeOfNoColumn();
    void rangeWithoutTheBar_data();
    void rangeWithoutTheBar();
};

void TestHeaderColumns::noHeader()
{
    const HeaderColumns columns(nullptr);
    QCOMPARE(columns.crossing(QRect(0, 0, 9, 9), false), qMakePair(0, -1));
    QCOMPARE(columns.bounds({0, -1}), qMakePair(0, -1));
    QCOMPARE(columns.span(0, 3, 9), QRect());
    QCOMPARE(columns.first(), -1);
    QCOMPARE(columns.end(1), -1);
    QCOMPARE(columns.end(-1), -1);
    QCOMPARE(columns.neighbour(0, 1), -1);
}

void TestHeaderColumns::strips()
{
    for (quint32 seed = 1; seed <= 200; ++seed) {
        const Header test(seed);
        const ColumnStrip strip = HeaderColumns(&test.header).strip(test.visible());
        for (int x = 0; x < width; ++x) {
            const int wanted = test.header.logicalIndexAt(x);
            const auto covers = [x](const ColumnSlot &slot) {
                return slot.x <= x && x < slot.x + slot.width;
            };
            const auto found = std::find_if(strip.cbegin(), strip.cend(), covers);
            QCOMPARE(found == strip.cend() ? -1 : found->column, wanted);
        }
        for (const ColumnSlot &slot : strip)
            QVERIFY(!test.header.isSectionHidden(slot.column));
    }
}

void TestHeaderColumns::positions_data()
{
    using Position = QStyleOptionViewItem::ViewItemPosition;
    QTest::addColumn<int>("count");
    QTest::addColumn<QList<int>>("hidden");
    QTest::addColumn<int>("offset");
    QTest::addColumn<QList<int>>("positions");
    const auto add = [](const char *name, int count, const QList<int> &hidden, int offset,
                        const QList<Position> &positions) {
        QList<int> numbers;
        for (Position position : positions)
            numbers.append(position);
        QTest::newRow(name) << count << hidden << offset << numbers;
    };
    constexpr Position beginning = QStyleOptionViewItem::Beginning;
    constexpr Position middle = QStyleOptionViewItem::Middle;
    constexpr Position end = QStyleOptionViewItem::End;
    constexpr Position onlyOne = QStyleOptionViewItem::OnlyOne;
    // Columns of 100 pixels in a viewport of 200.
    add("one", 1, {}, 0, {onlyOne});
    add("two", 2, {}, 0, {beginning, end});
    add("more than are seen", 4, {}, 0, {beginning, end});
    add("scrolled by half a column", 4, {}, 50, {beginning, middle, end});
    add("scrolled", 4, {}, 100, {middle, end});
    add("the first hidden", 4, {0}, 0, {beginning, end});
    add("but one hidden", 3, {1, 2}, 0, {onlyOne});
    add("the first ones hidden, one left", 3, {0, 1}, 0, {beginning});
}

void TestHeaderColumns::positions()
{
    QFETCH(int, count);
    QFETCH(QList<int>, hidden);
    QFETCH(int, offset);
    QStandardItemModel model(1, count);
    QHeaderView header(Qt::Horizontal);
    header.setModel(&model);
    header.resize(width, 20);
    for (int column = 0; column < count; ++column)
        header.resizeSection(column, 100);
    for (int column : hidden)
        header.hideSection(column);
    header.setOffset(offset);
    const HeaderColumns columns(&header);
    QList<int> positions;
    for (const ColumnSlot &slot : columns.strip(columns.crossing(QRect(0, 0, width, 5), false)))
        positions.append(slot.position);
    QTEST(positions, "positions");
}

void TestHeaderColumns::bounds()
{
    for (quint32 seed = 1; seed <= 200; ++seed) {
        Header test(seed);
        const int a = test.below(test.header.count());
        const int b = test.below(test.header.count());
        QList<int> columns;
        for (int visual = std::min(a, b); visual <= std::max(a, b); ++visual)
            columns.append(test.header.logicalIndex(visual));
        const auto [low, high] = std::minmax_element(columns.cbegin(), columns.cend());
        QCOMPARE(HeaderColumns(&test.header).bounds({std::min(a, b), std::max(a, b)}),
                 qMakePair(*low, *high));
    }
}

void TestHeaderColumns::spans()
{
    for (quint32 seed = 1; seed <= 200; ++seed) {
        Header test(seed);
        const int left = test.below(test.header.count());
        const int right = left + test.below(4); // may be beyond the last
        int from = std::numeric_limits<int>::max();
        int to = std::numeric_limits<int>::min();
        for (int column = left; column <= std::min(right, test.header.count() - 1); ++column) {
            if (test.header.isSectionHidden(column))
                continue;
            const int x = test.header.sectionViewportPosition(column);
            from = std::min(from, x);
            to = std::max(to, x + test.header.sectionSize(column));
        }
        const QRect wanted = from > to ? QRect() : QRect(from, 0, to - from, 7);
        QCOMPARE(HeaderColumns(&test.header).span(left, right, 7), wanted);
    }
}

void TestHeaderColumns::between()
{
    for (quint32 seed = 1; seed <= 100; ++seed) {
        Header test(seed);
        const int a = test.below(test.header.count());
        const int b = test.below(test.header.count());
        const int first = std::min(test.header.visualIndex(a), test.header.visualIndex(b));
        const int last = std::max(test.header.visualIndex(a), test.header.visualIndex(b));
        QList<int> wanted;
        for (int column = 0; column < test.header.count(); ++column) {
            const int visual = test.header.visualIndex(column);
            if (first <= visual && visual <= last)
                wanted.append(column);
        }
        QCOMPARE(HeaderColumns(&test.header).between(a, b), wanted);
    }
}

void TestHeaderColumns::neighbours()
{
    for (quint32 seed = 1; seed <= 100; ++seed) {
        const Header test(seed);
        const HeaderColumns columns(&test.header);
        const QList<int> shown = test.shown();
        QCOMPARE(columns.end(1), shown.isEmpty() ? -1 : shown.first());
        QCOMPARE(columns.end(-1), shown.isEmpty() ? -1 : shown.last());
        QCOMPARE(columns.first(),
                 shown.isEmpty() ? -1 : *std::min_element(shown.cbegin(), shown.cend()));
        for (qsizetype i = 0; i < shown.size(); ++i) {
            QCOMPARE(columns.neighbour(shown.at(i), 1), shown.value(i + 1, -1));
            QCOMPARE(columns.neighbour(shown.at(i), -1), i == 0 ? -1 : shown.at(i - 1));
        }
    }
}

void TestHeaderColumns::cursorMoves()
{
    for (quint32 seed = 1; seed <= 100; ++seed) {
        const Header test(seed);
        const CursorMoves moves(&test.model, &test.header);
        const QList<int> shown = test.shown();
        const auto cell = [&test](int row, int column) { return test.model.index(row, column); };
        if (shown.isEmpty()) {
            QVERIFY(!moves.endOfRow(1, 1).isValid());
            QVERIFY(!moves.endOfTable(-1).isValid());
            continue;
        }
        const int first = shown.first();
        const int last = shown.last();
        QCOMPARE(moves.endOfRow(1, 1), cell(1, first));
        QCOMPARE(moves.endOfRow(1, -1), cell(1, last));
        QCOMPARE(moves.endOfTable(1), cell(0, first));
        QCOMPARE(moves.endOfTable(-1), cell(2, last));
        QCOMPARE(moves.inRows(cell(1, first), 1), cell(2, first));
        QCOMPARE(moves.inRows(cell(1, first), 5), cell(2, first));
        QCOMPARE(moves.inRows(cell(1, first), -5), cell(0, first));
        QVERIFY(!moves.beside(cell(1, last), 1).isValid());
        QCOMPARE(moves.next(cell(1, last), 1), cell(2, first));
        QCOMPARE(moves.next(cell(1, first), -1), cell(0, last));
        QCOMPARE(moves.next(cell(2, last), 1), cell(0, first));
        QCOMPARE(moves.next(cell(0, first), -1), cell(2, last));
        if (shown.size() > 1) {
            QCOMPARE(moves.beside(cell(1, first), 1), cell(1, shown.at(1)));
            QCOMPARE(moves.next(cell(1, first), 1), cell(1, shown.at(1)));
        }
    }
}

void TestHeaderColumns::scrollByPixel()
{
    for (quint32 seed = 1; seed <= 50; ++seed) {
        Header test(seed);
        QScrollBar bar;
        const ColumnScroll scroll(&test.header, &bar, false);
        scroll.setRange(width, width);
        QCOMPARE(bar.minimum(), 0);
        QCOMPARE(bar.maximum(), std::max(test.header.length() - width, 0));
        QCOMPARE(bar.pageStep(), width);
        const int before = test.header.offset();
        scroll.scrollTo(7);
        QCOMPARE(bar.value(), std::min(7, bar.maximum()));
        QCOMPARE(scroll.apply(), before - bar.value());
        QCOMPARE(test.header.offset(), bar.value());
    }
    // Where all would fit without the other bar, none is needed.
    QStandardItemModel model(1, 2);
    QHeaderView header(Qt::Horizontal);
    header.setModel(&model);
    header.resizeSection(0, 100);
    header.resizeSection(1, 110);
    QScrollBar bar;
    bar.setRange(0, 0);
    ColumnScroll(&header, &bar, false).setRange(width, 215);
    QCOMPARE(bar.maximum(), 0);
    QCOMPARE(bar.pageStep(), 215);
    QCOMPARE(bar.singleStep(), 107); // one section fits
    bar.setRange(0, 5);
    ColumnScroll(&header, &bar, false).setRange(width, 215);
    QCOMPARE(bar.maximum(), 10);
    QCOMPARE(bar.singleStep(), 100);
}

void TestHeaderColumns::scrollBySection()
{
    FiveColumns five;
    QHeaderView &header = five.header;
    QScrollBar bar;
    const ColumnScroll scroll(&header, &bar, true);
    scroll.setRange(width, width);
    QCOMPARE(bar.maximum(), 3);
    QCOMPARE(bar.pageStep(), 2);
    QCOMPARE(bar.singleStep(), 1);
    bar.setValue(2);
    QCOMPARE(scroll.apply(), -180);
    QCOMPARE(header.offset(), 180);
    bar.setValue(3); // the end: no room is left behind the last section
    scroll.apply();
    QCOMPARE(header.offset(), 250);
    bar.setValue(0);
    QCOMPARE(scroll.apply(), 250);

    five.resize(100);
    scroll.setRange(width, width); // two of them fill it
    QCOMPARE(bar.pageStep(), 2);
    QCOMPARE(bar.maximum(), 3);
    five.resize(90);

    header.resizeSection(4, 300); // does not fit, and is one page all the same
    scroll.setRange(width, width);
    QCOMPARE(bar.pageStep(), 1);
    QCOMPARE(bar.maximum(), 4);

    // The range counts hidden sections, positions do not.
    header.resizeSection(4, 90);
    header.hideSection(1);
    scroll.setRange(width, width);
    QCOMPARE(bar.maximum(), 3);
    bar.setValue(2);
    scroll.apply();
    QCOMPARE(header.offset(), 180);
    bar.setValue(3);
    scroll.apply();
    QCOMPARE(header.offset(), 160);
}

void TestHeaderColumns::sectionScrollsTo()
{
    FiveColumns five;
    QHeaderView &header = five.header;
    header.hideSection(1);
    QScrollBar bar;
    bar.setRange(0, 9);
    const ColumnScroll scroll(&header, &bar, true);
    for (const auto &[offset, section] :
         {std::pair(0, 0), std::pair(1, 1), std::pair(90, 1), std::pair(91, 2), std::pair(180, 2),
          std::pair(1000, 4)}) {
        scroll.scrollTo(offset);
        QCOMPARE(bar.value(), section);
    }
}

void TestHeaderColumns::rangeOfOneWideColumn()
{
    QStandardItemModel model(1, 1);
    QHeaderView header(Qt::Horizontal);
    header.setModel(&model);
    header.resizeSection(0, 3 * width);
    QScrollBar bar(Qt::Horizontal);
    ColumnScroll(&header, &bar, true).setRange(width, width);
    QCOMPARE(bar.maximum(), 0);
    QCOMPARE(bar.pageStep(), 1);
    ColumnScroll(&header, &bar, false).setRange(width, width);
    QCOMPARE(bar.maximum(), 2 * width);
    QCOMPARE(bar.singleStep(), width / 2);
}

void TestHeaderColumns::rangeOfNoColumn()
{
    QHeaderView header(Qt::Horizontal);
    QScrollBar bar(Qt::Horizontal);
    ColumnScroll(&header, &bar, false).setRange(width, width);
    QCOMPARE(bar.maximum(), 0);
    QCOMPARE(bar.singleStep(), width);
}

void TestHeaderColumns::rangeWithoutTheBar_data()
{
    QTest::addColumn<int>("length");
    QTest::addColumn<int>("before"); // the largest value of the bar
    QTest::addColumn<int>("after");
    // The widest that the viewport may be is 215.
    QTest::newRow("fits") << width << 0 << 0;
    QTest::newRow("fits without the bar") << 210 << 0 << 0;
    QTest::newRow("just fits without the bar") << 215 << 0 << 0;
    QTest::newRow("does not") << 216 << 0 << 216 - width;
    QTest::newRow("there is a bar") << 210 << 1 << 210 - width;
}

void TestHeaderColumns::rangeWithoutTheBar()
{
    QFETCH(int, length);
    QFETCH(int, before);
    QStandardItemModel model(1, 1);
    QHeaderView header(Qt::Horizontal);
    header.setModel(&model);
    header.resizeSection(0, length);
    QScrollBar bar(Qt::Horizontal);
    bar.setRange(0, before);
    ColumnScroll(&header, &bar, false).setRange(width, 215);
    QTEST(bar.maximum(), "after");
}

QTEST_MAIN(TestHeaderColumns)
#include "tst_headercolumns.moc"
