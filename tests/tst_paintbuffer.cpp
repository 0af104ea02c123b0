// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

// Holds the paint buffer against a plain model of a table, of which every cell has one colour
// until something makes it look otherwise. There is no window.

#include "view/paintbuffer_p.h"

#include <QItemSelection>
#include <QPixmap>
#include <QStandardItemModel>
#include <QStyledItemDelegate>
#include <QTest>

#include <algorithm>
#include <random>

namespace {

constexpr int columns = 3;
constexpr int seenRows = 8;
constexpr QSize cellSize(4, 2);

/*!
 * A table whose cells are numbers, a new one whenever a cell has to look otherwise, and the
 * buffer that is told of it.
 */
class Table
{
public:
    explicit Table(quint32 seed)
        : m_random(seed)
        , m_model(0, columns)
    {
        insert(0, 40);
        scrollTo(10);
    }

    int below(int limit) { return std::uniform_int_distribution<int>(0, limit - 1)(m_random); }
    int rows() const { return int(m_cells.size()); }
    int top() const { return m_top; }
    int hits() const { return m_hits; }

    void insert(int first, int count)
    {
        m_model.insertRows(first, count);
        for (int row = 0; row < count; ++row)
            m_cells.insert(first, QList<int>(columns));
        repaintRows(first, count);
        m_buffer.rowsInserted(first, first + count - 1);
        if (first <= m_top)
            m_top += count;
        settle();
    }
    void remove(int first, int count)
    {
        m_model.removeRows(first, count);
        m_cells.remove(first, count);
        m_buffer.rowsRemoved(first, first + count - 1);
        if (first + count - 1 < m_top)
            m_top -= count;
        settle();
    }
    //! \a row counts as rows do before the move.
    void move(int first, int count, int row)
    {
        const QList<QList<int>> moved = m_cells.mid(first, count);
        QList<QList<QStandardItem *>> items;
        for (int i = 0; i < count; ++i)
            items.append(m_model.takeRow(first));
        m_cells.remove(first, count);
        const int target = row > first ? row - count : row;
        for (int i = 0; i < count; ++i) {
            m_cells.insert(target + i, moved.at(i));
            m_model.insertRow(target + i, items.at(i));
        }
        m_buffer.rowsMoved(first, first + count - 1, row);
        settle();
    }
    void change(int row, int column)
    {
        m_cells[row][column] = ++m_last;
        m_buffer.cellsChanged(row, row, column, column);
    }
    void changeRows(int first, int count)
    {
        repaintRows(first, count);
        m_buffer.rowsChanged(first, first + count - 1);
    }
    void changeRows(const QList<int> &rows)
    {
        for (int row : rows)
            repaintRows(row, 1);
        m_buffer.rowsChanged(rows);
    }
    void select(int first, int count)
    {
        repaintRows(first, count);
        m_buffer.selectionChanged(
            QItemSelection(m_model.index(first, 0), m_model.index(first + count - 1, columns - 1)));
    }
    void changeColumn(int column)
    {
        repaintColumn(column);
        m_buffer.columnsChanged({column});
    }
    void changeDelegate(int column)
    {
        m_looks[column].position = (m_looks[column].position + 1) % 4;
    }
    void changeLook()
    {
        repaintRows(0, rows());
        m_look.columnCount = ++m_last;
    }
    void changeCurrent(int row) { m_current = m_model.index(row, 0); }
    void scrollTo(int row)
    {
        m_top = std::clamp(row, 0, std::max(rows() - seenRows, 0));
        settle();
    }
    void turn(bool on)
    {
        m_isOn = on;
        if (!on)
            m_buffer.clear();
        else
            setBounds();
    }
    void forgetColumns()
    {
        for (int column = 0; column < columns; ++column)
            repaintColumn(column);
        m_buffer.forgetColumns();
        m_buffer.clear();
    }

    //! What a view does when it paints; tells of the first wrong picture.
    QString paint()
    {
        m_buffer.noticeLook(m_look);
        for (int column = 0; column < columns; ++column)
            m_buffer.noticeColumn(column, m_looks[column]);
        if (!m_isOn)
            return {};
        setBounds();
        m_buffer.prepare();
        m_buffer.noticeCurrentRow(m_model, m_current.row(), -1);
        for (int row = m_top; row < std::min(m_top + seenRows, rows()); ++row) {
            for (int column = 0; column < columns; ++column) {
                const QString wrong = paintCell(row, column);
                if (!wrong.isEmpty())
                    return wrong;
            }
        }
        return {};
    }

private:
    QString paintCell(int row, int column)
    {
        const int number = m_cells.at(row).at(column) * 4 + m_looks[column].position;
        const QRgb wanted = qRgb(0, 0, 0) + QRgb(number * 2 + (row == m_current.row() ? 1 : 0));
        if (const QPixmap *picture = m_buffer.cell(row, column, cellSize)) {
            ++m_hits;
            const QRgb shown = picture->toImage().pixel(1, 1);
            return shown == wanted ? QString()
                                   : QStringLiteral("row %1, column %2 shows %3, not %4")
                                         .arg(row)
                                         .arg(column)
                                         .arg(shown & 0xffffff)
                                         .arg(wanted & 0xffffff);
        }
        auto *picture = new QPixmap(cellSize);
        picture->fill(QColor(wanted));
        m_buffer.keep(row, column, picture);
        return {};
    }
    void repaintRows(int first, int count)
    {
        for (int row = first; row < first + count; ++row) {
            for (int &cell : m_cells[row])
                cell = ++m_last;
        }
    }
    void repaintColumn(int column)
    {
        for (QList<int> &row : m_cells)
            row[column] = ++m_last;
    }
    void setBounds() { m_buffer.setBounds({m_top, m_top + seenRows + 1, 0, columns - 1}); }
    void settle()
    {
        if (!m_isOn)
            return;
        setBounds();
        m_buffer.dropOutside();
    }

    std::mt19937 m_random;
    QStandardItemModel m_model;
    QList<QList<int>> m_cells; //!< what each cell has to show
    int m_last = 0;            //!< the newest number
    int m_top = 0;
    int m_hits = 0; //!< cells that were not painted
    bool m_isOn = true;
    CellLook m_look;
    ColumnLook m_looks[columns];
    QPersistentModelIndex m_current;
    PixmapCacheIndexed m_cache {nullptr};
    PaintBuffer m_buffer {&m_cache, &m_isOn};
};

//! One random change.
void act(Table &table)
{
    const int rows = table.rows();
    const int at = table.below(rows);
    const int count = 1 + table.below(std::min(4, rows - at));
    switch (table.below(16)) {
    case 0:
        return table.insert(0, count);
    case 1:
        return table.insert(table.below(rows + 1), count);
    case 2:
        return table.insert(rows, count);
    case 3:
        return rows > 20 ? table.remove(0, count) : table.insert(rows, 10);
    case 4:
        return rows > 20 ? table.remove(at, count) : table.insert(0, 10);
    case 5: {
        const int target = table.below(rows - count + 1);
        return table.move(at, count, target >= at ? target + count : target);
    }
    case 6:
        return table.change(at, table.below(columns));
    case 7:
        return table.changeRows(at, count);
    case 8:
        return table.changeRows(QList<int> {at, table.below(rows)});
    case 9:
        return table.select(at, count);
    case 10:
        return table.changeCurrent(at);
    case 11:
        return table.scrollTo(table.below(rows));
    case 12:
        return table.scrollTo(table.top() + table.below(5) - 2);
    case 13:
        return table.below(5) == 0 ? table.changeColumn(table.below(columns))
                                   : table.changeDelegate(table.below(columns));
    case 14:
        return table.below(5) == 0 ? table.changeLook() : table.insert(0, 1);
    default:
        if (table.below(5) == 0)
            table.forgetColumns();
        else
            table.turn(table.below(4) > 0);
    }
}

} // namespace

class TestPaintBuffer : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void showsWhatIsThere_data();
    void showsWhatIsThere();
    void keepsWhatStays_data();
    void keepsWhatStays();
    void sizeMatters();
    void changesOutOfSight();
    void rowDelegates();
    void delegateAtTheSameAddress();
    void farShift();
    void offKeepsNothing();
    void currentRowOfOneColumn();
    void firstCoveredRowIsRemoved();
};

void TestPaintBuffer::showsWhatIsThere_data()
{
    QTest::addColumn<int>("changesBetweenPaints");
    QTest::newRow("one change") << 1;
    QTest::newRow("three changes") << 3;
    QTest::newRow("many changes") << 9;
}

void TestPaintBuffer::showsWhatIsThere()
{
    QFETCH(int, changesBetweenPaints);
    int hits = 0;
    for (quint32 seed = 1; seed <= 60; ++seed) {
        Table table(seed);
        for (int step = 0; step < 100; ++step) {
            const QString wrong = table.paint();
            QVERIFY2(
                wrong.isEmpty(),
                qPrintable(QStringLiteral("seed %1, step %2: %3").arg(seed).arg(step).arg(wrong)));
            for (int change = 0; change < changesBetweenPaints; ++change)
                act(table);
        }
        hits += table.hits();
    }
    QVERIFY(hits > 3000); // else nothing was looked at
}

using Change = void (*)(Table &);
Q_DECLARE_METATYPE(Change)

void TestPaintBuffer::keepsWhatStays_data()
{
    QTest::addColumn<Change>("change");
    QTest::addColumn<int>("hits");
    constexpr int all = seenRows * columns;
    const auto add = [](const char *name, Change change, int hits) {
        QTest::newRow(name) << change << hits;
    };
    // Rows 10 to 17 are seen.
    add(
        "nothing", [](Table &) {}, all);
    add(
        "rows above", [](Table &table) { table.insert(3, 5); }, all);
    add(
        "a burst above",
        [](Table &table) {
            for (int i = 0; i < 100; ++i)
                table.insert(0, 3);
            for (int i = 0; i < 50; ++i)
                table.remove(1, 2);
        },
        all);
    add(
        "rows in view", [](Table &table) { table.insert(12, 2); }, all - 2 * columns);
    add(
        "rows below", [](Table &table) { table.insert(30, 2); }, all);
    add(
        "rows gone above", [](Table &table) { table.remove(0, 4); }, all);
    add(
        "rows gone in view", [](Table &table) { table.remove(12, 2); }, all - 2 * columns);
    add(
        "a cell", [](Table &table) { table.change(12, 1); }, all - 1);
    add(
        "a cell out of sight", [](Table &table) { table.change(3, 1); }, all);
    add(
        "two rows", [](Table &table) { table.changeRows(12, 2); }, all - 2 * columns);
    add(
        "a list of rows",
        [](Table &table) {
            table.changeRows(QList<int> {12, 17, 30});
        },
        all - 2 * columns);
    add(
        "selected rows", [](Table &table) { table.select(9, 3); }, all - 2 * columns);
    add(
        "a column", [](Table &table) { table.changeColumn(1); }, all - seenRows);
    add(
        "a delegate", [](Table &table) { table.changeDelegate(1); }, all - seenRows);
    add(
        "the look", [](Table &table) { table.changeLook(); }, 0);
    add(
        "the current row", [](Table &table) { table.changeCurrent(12); }, all - columns);
    add(
        "a move in view", [](Table &table) { table.move(11, 2, 16); }, all);
    add(
        "one row further", [](Table &table) { table.scrollTo(11); }, all - columns);
    add(
        "switched off and on",
        [](Table &table) {
            table.turn(false);
            table.turn(true);
        },
        0);
}

void TestPaintBuffer::keepsWhatStays()
{
    QFETCH(Change, change);
    QFETCH(int, hits);
    Table table(1);
    QVERIFY(table.paint().isEmpty());
    QCOMPARE(table.hits(), 0);
    change(table);
    const QString wrong = table.paint();
    QVERIFY2(wrong.isEmpty(), qPrintable(wrong));
    QCOMPARE(table.hits(), hits);
}

void TestPaintBuffer::sizeMatters()
{
    bool isOn = true;
    PixmapCacheIndexed cache(nullptr);
    PaintBuffer buffer(&cache, &isOn);
    buffer.setBounds({0, 9, 0, 2});
    auto *picture = new QPixmap(cellSize);
    buffer.keep(3, 1, picture);
    QCOMPARE(buffer.cell(3, 1, cellSize), picture);
    QVERIFY(!buffer.cell(3, 1, cellSize + QSize(1, 0)));
    QVERIFY(!buffer.cell(3, 2, cellSize));
}

void TestPaintBuffer::changesOutOfSight()
{
    // A row that was pushed out of sight changes there, and comes back.
    Table table(1);
    QVERIFY(table.paint().isEmpty());
    table.insert(12, 20);
    table.change(35, 1);
    table.remove(12, 20);
    const QString wrong = table.paint();
    QVERIFY2(wrong.isEmpty(), qPrintable(wrong));
}

void TestPaintBuffer::rowDelegates()
{
    bool isOn = true;
    PixmapCacheIndexed cache(nullptr);
    PaintBuffer buffer(&cache, &isOn);
    buffer.setBounds({0, 9, 0, 2});
    QVERIFY(!buffer.hasRowDelegates());
    buffer.keep(3, 1, new QPixmap(cellSize));
    buffer.noticeRowDelegates({});
    QVERIFY(buffer.cell(3, 1, cellSize));

    QStyledItemDelegate delegate;
    buffer.noticeRowDelegates({{3, &delegate}});
    QVERIFY(buffer.hasRowDelegates());
    QVERIFY(!buffer.cell(3, 1, cellSize));
    buffer.keep(3, 1, new QPixmap(cellSize));
    buffer.noticeRowDelegates({{3, &delegate}});
    QVERIFY(buffer.cell(3, 1, cellSize));
    buffer.noticeRowDelegates({{4, &delegate}});
    QVERIFY(!buffer.cell(3, 1, cellSize));
}

void TestPaintBuffer::delegateAtTheSameAddress()
{
    alignas(QStyledItemDelegate) unsigned char place[sizeof(QStyledItemDelegate)];
    auto *first = new (place) QStyledItemDelegate;
    const DelegateMark mark(first);
    QCOMPARE(mark, DelegateMark(first));
    QVERIFY(mark != DelegateMark());
    first->~QStyledItemDelegate();
    QVERIFY(mark != DelegateMark()); // one that is gone is not none
    auto *second = new (place) QStyledItemDelegate;
    QVERIFY(mark != DelegateMark(second));
    second->~QStyledItemDelegate();
}

void TestPaintBuffer::farShift()
{
    bool isOn = true;
    PixmapCacheIndexed cache(nullptr);
    PaintBuffer buffer(&cache, &isOn);
    constexpr int far = 1'500'000'000;
    buffer.setBounds({far, far + 9, 0, 2});
    auto *picture = new QPixmap(cellSize);
    buffer.keep(far + 3, 1, picture);
    // Sums of rows that an int does not hold, there and back.
    for (int i = 0; i < 3; ++i)
        buffer.rowsRemoved(0, 499'999'999);
    buffer.setBounds({0, 9, 0, 2});
    buffer.prepare();
    QCOMPARE(buffer.cell(3, 1, cellSize), picture);
    buffer.rowsInserted(0, far - 1);
    buffer.setBounds({far, far + 9, 0, 2});
    buffer.prepare();
    QCOMPARE(buffer.cell(far + 3, 1, cellSize), picture);
}

void TestPaintBuffer::offKeepsNothing()
{
    bool isOn = true;
    PixmapCacheIndexed cache(nullptr);
    PaintBuffer buffer(&cache, &isOn);
    buffer.setBounds({5, 9, 0, 2});
    auto *picture = new QPixmap(cellSize);
    buffer.keep(6, 1, picture);
    // What it hears while it is off is not about what it keeps.
    isOn = false;
    QVERIFY(!buffer.isOn());
    buffer.rowsInserted(0, 3);
    buffer.rowsInserted(6, 7);
    buffer.rowsRemoved(0, 3);
    buffer.rowsRemoved(6, 6);
    buffer.rowsMoved(6, 6, 9);
    buffer.cellsChanged(6, 6, 1, 1);
    buffer.rowsChanged(QList<int> {6});
    buffer.columnsChanged({1});
    buffer.selectionChanged({});
    QCOMPARE(buffer.cell(6, 1, cellSize), picture);
    buffer.clear();
    QVERIFY(!buffer.cell(6, 1, cellSize));
}

void TestPaintBuffer::currentRowOfOneColumn()
{
    const bool isOn = true;
    PixmapCacheIndexed cache(nullptr);
    PaintBuffer buffer(&cache, &isOn);
    QStandardItemModel model(5, 1);
    buffer.setBounds({0, 4, 0, 0});
    buffer.prepare();
    buffer.noticeCurrentRow(model, 2, 2);
    buffer.keep(2, 0, new QPixmap(3, 3));
    buffer.noticeCurrentRow(model, 2, 2);
    QVERIFY(buffer.cell(2, 0, QSize(3, 3)));
    buffer.noticeCurrentRow(model, 2, -1);
    QVERIFY(!buffer.cell(2, 0, QSize(3, 3)));
}

void TestPaintBuffer::firstCoveredRowIsRemoved()
{
    const bool isOn = true;
    PixmapCacheIndexed cache(nullptr);
    PaintBuffer buffer(&cache, &isOn);
    buffer.setBounds({5, 9, 0, 0});
    buffer.prepare();
    for (int row = 5; row <= 9; ++row)
        buffer.keep(row, 0, new QPixmap(row, 3));
    buffer.rowsRemoved(5, 5);
    buffer.setBounds({4, 9, 0, 0});
    buffer.prepare();
    QVERIFY(!buffer.cell(4, 0, QSize(5, 3)));
    for (int row = 5; row <= 8; ++row)
        QVERIFY(buffer.cell(row, 0, QSize(row + 1, 3)));
}

QTEST_MAIN(TestPaintBuffer)
#include "tst_paintbuffer.moc"
