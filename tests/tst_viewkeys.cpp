// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

// Keys and mouse beside QTableView: the same cell is current and the same cells are selected
// after each of them.

#include "activation.h"
#include "qtablefastview.h"

#include <QAbstractTableModel>
#include <QHeaderView>
#include <QLoggingCategory>
#include <QMouseEvent>
#include <QScrollBar>
#include <QTableView>
#include <QTest>

#include <functional>
#include <random>

namespace {

constexpr int columns = 6;
constexpr int rowHeight = 20;

//! Rows of numbers; nothing is kept.
class NumberModel : public QAbstractTableModel
{
public:
    explicit NumberModel(int rows)
        : m_rows(rows)
    {
    }
    int rowCount(const QModelIndex &parent = {}) const override
    {
        return parent.isValid() ? 0 : m_rows;
    }
    int columnCount(const QModelIndex &parent = {}) const override
    {
        return parent.isValid() ? 0 : columns;
    }
    QVariant data(const QModelIndex &index, int role) const override
    {
        return role == Qt::DisplayRole ? QVariant(index.row()) : QVariant();
    }

private:
    int m_rows;
};

//! Which columns are seen, and where.
struct Arrangement
{
    const char *name;
    bool isMoved;
    bool isHidden;
};

constexpr Arrangement arrangements[] = {
    {"columns as they are", false, false},
    {"hidden columns", false, true},
    {"moved columns", true, false},
    {"moved and hidden columns", true, true},
};

void arrange(QHeaderView *header, const Arrangement &arrangement)
{
    for (int column = 0; column < columns; ++column)
        header->resizeSection(column, 40);
    if (arrangement.isMoved) {
        header->moveSection(4, 0);
        header->moveSection(2, 5);
    }
    if (arrangement.isHidden) {
        header->hideSection(header->logicalIndex(0));
        header->hideSection(header->logicalIndex(3));
        header->hideSection(header->logicalIndex(5));
    }
}

//! A window with both views of one model, each with \a viewportSize of room.
struct Stage
{
    explicit Stage(int rows = 40, const Arrangement &arrangement = arrangements[0],
                   Qt::LayoutDirection direction = Qt::LeftToRight,
                   int height = 7 * rowHeight + rowHeight / 2)
        : model(rows)
    {
        const bool isLarge = rows > 1000000; // QTableView counts rows in pixels
        fast = new QTableFastView(&window);
        fast->setStandardKeys(true);
        fast->setSelectsVisualRanges(true);
        fast->setRowHeight(rowHeight);
        table = new QTableView(&window);
        table->verticalHeader()->hide();
        table->verticalHeader()->setMinimumSectionSize(1);
        table->verticalHeader()->setDefaultSectionSize(rowHeight);
        table->setShowGrid(false);
        table->setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
        table->horizontalHeader()->setSectionsMovable(true);
        for (QAbstractItemView *view :
             {static_cast<QAbstractItemView *>(fast), static_cast<QAbstractItemView *>(table)}) {
            view->setModel(isLarge && view == table ? nullptr : &model);
            view->setFrameShape(QFrame::NoFrame);
            view->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
            view->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
            view->setLayoutDirection(direction);
        }
        arrange(fast->header(), arrangement);
        if (!isLarge)
            arrange(table->horizontalHeader(), arrangement);
        fast->header()->hide();
        table->horizontalHeader()->hide();
        // A row is cut off, and so is a column.
        fast->setGeometry(0, 0, 170, height);
        table->setGeometry(200, 0, 170, height);
        window.resize(400, 300);
        window.show();
        activate(&window);
    }

    void setModes(QAbstractItemView::SelectionMode mode,
                  QAbstractItemView::SelectionBehavior behavior) const
    {
        for (QAbstractItemView *view : views()) {
            view->setSelectionMode(mode);
            view->setSelectionBehavior(behavior);
        }
    }
    QList<QAbstractItemView *> views() const { return {fast, table}; }

    NumberModel model;
    QWidget window;
    QTableFastView *fast;
    QTableView *table;
};

using Cell = std::pair<int, int>;

Cell currentCell(const QAbstractItemView &view)
{
    return {view.currentIndex().row(), view.currentIndex().column()};
}

QList<Cell> selectedCells(const QAbstractItemView &view)
{
    QList<Cell> cells;
    for (const QModelIndex &index : view.selectionModel()->selectedIndexes())
        cells.append({index.row(), index.column()});
    std::sort(cells.begin(), cells.end());
    return cells;
}

QByteArray text(const Cell &cell)
{
    return QByteArray::number(cell.first) + ',' + QByteArray::number(cell.second);
}

//! What differs; empty if nothing does.
QByteArray difference(const Stage &stage)
{
    const Cell ours = currentCell(*stage.fast);
    const Cell theirs = currentCell(*stage.table);
    if (ours != theirs)
        return "current " + text(ours) + " instead of " + text(theirs);
    const QList<Cell> selected = selectedCells(*stage.fast);
    const QList<Cell> wanted = selectedCells(*stage.table);
    if (selected == wanted)
        return {};
    QByteArray cells;
    for (const Cell &cell : selected) {
        if (!wanted.contains(cell))
            cells += " +" + text(cell);
    }
    for (const Cell &cell : wanted) {
        if (!selected.contains(cell))
            cells += " -" + text(cell);
    }
    return "selected" + cells.left(200);
}

constexpr int farRows = 500000000;

using Step = std::function<void(Stage &)>;

constexpr Qt::Key keys[] = {
    Qt::Key_Left, Qt::Key_Right,  Qt::Key_Up,       Qt::Key_Down, Qt::Key_Home,
    Qt::Key_End,  Qt::Key_PageUp, Qt::Key_PageDown, Qt::Key_Tab,  Qt::Key_Backtab,
};

const Qt::KeyboardModifiers modifiers[] = {
    Qt::NoModifier,
    Qt::ShiftModifier,
    Qt::ControlModifier,
    Qt::ControlModifier | Qt::ShiftModifier,
};

struct Mode
{
    QAbstractItemView::SelectionMode mode;
    const char *name;
};

constexpr Mode modes[] = {
    {QAbstractItemView::NoSelection, "no selection"},
    {QAbstractItemView::SingleSelection, "single"},
    {QAbstractItemView::MultiSelection, "multi"},
    {QAbstractItemView::ExtendedSelection, "extended"},
    {QAbstractItemView::ContiguousSelection, "contiguous"},
};

struct Behavior
{
    QAbstractItemView::SelectionBehavior behavior;
    const char *name;
};

constexpr Behavior behaviors[] = {
    {QAbstractItemView::SelectItems, "items"},
    {QAbstractItemView::SelectRows, "rows"},
    {QAbstractItemView::SelectColumns, "columns"},
};

//! The last one on screen.
bool isLastCell(const QTableView &table)
{
    const QModelIndex current = table.currentIndex();
    const QHeaderView *header = table.horizontalHeader();
    int last = header->count() - 1;
    while (header->isSectionHidden(header->logicalIndex(last)))
        --last;
    return current.row() == table.model()->rowCount() - 1
        && header->visualIndex(current.column()) == last;
}

//! All ways to select in all arrangements of columns.
void addSelectionRows()
{
    QTest::addColumn<int>("arrangement");
    QTest::addColumn<QAbstractItemView::SelectionMode>("mode");
    QTest::addColumn<QAbstractItemView::SelectionBehavior>("behavior");
    QTest::addColumn<Qt::LayoutDirection>("direction");
    for (int i = 0; i < int(std::size(arrangements)); ++i) {
        for (const Mode &mode : modes) {
            for (const Behavior &behavior : behaviors) {
                for (Qt::LayoutDirection direction : {Qt::LeftToRight, Qt::RightToLeft}) {
                    QTest::addRow("%s, %s, %s, %s", mode.name, behavior.name, arrangements[i].name,
                                  direction == Qt::LeftToRight ? "left to right" : "right to left")
                        << i << mode.mode << behavior.behavior << direction;
                }
            }
        }
    }
}

QByteArray text(Qt::Key key, Qt::KeyboardModifiers held)
{
    const QString name = QKeySequence(int(held.toInt()) | int(key)).toString();
    return name.toLatin1();
}

QPoint randomPoint(std::mt19937 &random, const QWidget &widget)
{
    return {int(random() % uint(widget.width())), int(random() % uint(widget.height()))};
}

QPoint pointInCell(std::mt19937 &random, const QAbstractItemView &view)
{
    for (;;) {
        const QPoint point = randomPoint(random, *view.viewport());
        if (view.indexAt(point).isValid())
            return point;
    }
}

//! Moves with the left button held.
void moveMouse(QWidget *viewport, Qt::KeyboardModifiers held, const QPoint &to)
{
    const QPoint global = viewport->mapToGlobal(to);
    QMouseEvent move(QEvent::MouseMove, to, global, Qt::NoButton, Qt::LeftButton, held);
    QCoreApplication::sendEvent(viewport, &move);
}

void drag(QWidget *viewport, Qt::KeyboardModifiers held, const QPoint &from, const QPoint &to)
{
    QTest::mousePress(viewport, Qt::LeftButton, held, from);
    moveMouse(viewport, held, to);
    QTest::mouseRelease(viewport, Qt::LeftButton, held, to);
}

void press(QAbstractItemView *view, Qt::Key key, Qt::KeyboardModifiers held)
{
    view->setFocus();
    QTest::keyClick(view, key, held);
}

} // namespace

class TestViewKeys : public QObject
{
    Q_OBJECT

private slots:
    void cleanup();
    void standardKeys_data();
    void standardKeys();
    void mouse_data();
    void mouse();
    void dragsThatScroll_data();
    void dragsThatScroll();
    void farRanges_data();
    void farRanges();
    void rowsStayRowsWithStandardKeys_data();
    void rowsStayRowsWithStandardKeys();
    void keysAsTheyAre_data();
    void keysAsTheyAre();
    void tabAsItIs();
    void standardKeysSwitchTab_data();
    void standardKeysSwitchTab();
    void logicalRanges();
    void searchedRowIsNoBeginning();
    void columnsThatAreNearlySelected();
    void columnWithoutSelectionModel();
};

void TestViewKeys::cleanup()
{
    QLoggingCategory::setFilterRules({});
}

void TestViewKeys::standardKeys_data()
{
    addSelectionRows();
}

//! Keys in random order, with clicks between.
void TestViewKeys::standardKeys()
{
    QFETCH(int, arrangement);
    QFETCH(QAbstractItemView::SelectionMode, mode);
    QFETCH(QAbstractItemView::SelectionBehavior, behavior);
    QFETCH(Qt::LayoutDirection, direction);
    Stage stage(40, arrangements[arrangement], direction);
    stage.setModes(mode, behavior);
    std::mt19937 random(1);
    QByteArray steps;
    for (int step = 0; step < 300; ++step) {
        const Qt::KeyboardModifiers held = modifiers[random() % std::size(modifiers)];
        const Qt::Key key = keys[random() % std::size(keys)];
        if (key == Qt::Key_Tab && isLastCell(*stage.table))
            continue; // QTableView does not always find the first one
        steps += text(key, held) + ' ';
        for (QAbstractItemView *view : stage.views())
            press(view, key, held);
        const QByteArray found = difference(stage);
        if (!found.isEmpty())
            QFAIL(steps.right(150) + ": " + found);
    }
}

void TestViewKeys::mouse_data()
{
    addSelectionRows();
}

//! Clicks, drags and keys in random order.
void TestViewKeys::mouse()
{
    QFETCH(int, arrangement);
    QFETCH(QAbstractItemView::SelectionMode, mode);
    QFETCH(QAbstractItemView::SelectionBehavior, behavior);
    QFETCH(Qt::LayoutDirection, direction);
    QLoggingCategory::setFilterRules(QStringLiteral("default.warning=false")); // of corners
    // Without a row that is cut off: at the end, it is the last one here, the first one there.
    Stage stage(40, arrangements[arrangement], direction, 7 * rowHeight);
    stage.setModes(mode, behavior);
    std::mt19937 random(1);
    QByteArray steps;
    for (int step = 0; step < 150; ++step) {
        const Qt::KeyboardModifiers held = modifiers[random() % std::size(modifiers)];
        const QPoint from = randomPoint(random, *stage.fast->viewport());
        const QPoint to = randomPoint(random, *stage.fast->viewport());
        const QPoint cell = pointInCell(random, *stage.fast);
        const auto how = random() % 3;
        const Qt::Key key = keys[random() % std::size(keys)];
        if (how == 0)
            steps += "press " + text(key, held);
        else
            steps += (how == 1 ? "click " : "drag ") + text(Qt::Key_unknown, held)
                + text(Cell(from.x(), from.y())) + " to " + text(Cell(to.x(), to.y()));
        steps += "; ";
        for (QAbstractItemView *view : stage.views()) {
            view->setFocus();
            // Else QTableView begins where the mouse was last pressed, whatever keys did.
            if (how == 2 && held != Qt::NoModifier)
                QTest::mouseClick(view->viewport(), Qt::LeftButton, Qt::NoModifier, cell);
            if (how == 0)
                press(view, key, held);
            else if (how == 1)
                QTest::mouseClick(view->viewport(), Qt::LeftButton, held, from);
            else
                drag(view->viewport(), held, from, to);
        }
        const QByteArray found = difference(stage);
        if (!found.isEmpty())
            QFAIL(steps.right(150) + ": " + found);
    }
}

void TestViewKeys::dragsThatScroll_data()
{
    QTest::addColumn<QAbstractItemView::SelectionMode>("mode");
    QTest::addColumn<int>("arrangement");
    QTest::addColumn<int>("from");
    QTest::addColumn<int>("to");
    for (const Mode &mode : modes) {
        for (int i : {0, 3}) {
            QTest::addRow("%s, %s, down", mode.name, arrangements[i].name)
                << mode.mode << i << 0 << 20;
            QTest::addRow("%s, %s, up", mode.name, arrangements[i].name)
                << mode.mode << i << 20 << 3;
        }
    }
}

//! The button is pressed and held while the view scrolls, by the wheel for one.
void TestViewKeys::dragsThatScroll()
{
    QFETCH(QAbstractItemView::SelectionMode, mode);
    QFETCH(int, arrangement);
    QFETCH(int, from);
    QFETCH(int, to);
    Stage stage(40, arrangements[arrangement], Qt::LeftToRight, 7 * rowHeight);
    stage.setModes(mode, QAbstractItemView::SelectItems);
    const QPoint pressed(10, 2 * rowHeight + 5);
    const QPoint released(70, 4 * rowHeight + 5);
    for (QAbstractItemView *view : stage.views()) {
        view->setFocus();
        view->verticalScrollBar()->setValue(from);
        QTest::mousePress(view->viewport(), Qt::LeftButton, Qt::NoModifier, pressed);
        moveMouse(view->viewport(), Qt::NoModifier, pressed + QPoint(0, rowHeight));
        view->verticalScrollBar()->setValue(to);
        moveMouse(view->viewport(), Qt::NoModifier, released);
        QTest::mouseRelease(view->viewport(), Qt::LeftButton, Qt::NoModifier, released);
    }
    QCOMPARE(difference(stage), QByteArray());
}

void TestViewKeys::farRanges_data()
{
    constexpr int last = farRows - 1;
    const auto key = [](QKeyCombination key) -> Step {
        return [key](Stage &s) { press(s.fast, key.key(), key.keyboardModifiers()); };
    };
    const auto scroll = [](int row) -> Step {
        return [row](Stage &s) { s.fast->verticalScrollBar()->setValue(row); };
    };
    const auto click = [](int row, Qt::KeyboardModifiers held = Qt::NoModifier) -> Step {
        return [row, held](Stage &s) {
            const QPoint point(10, row * rowHeight + 1);
            QTest::mouseClick(s.fast->viewport(), Qt::LeftButton, held, point);
        };
    };
    QTest::addColumn<bool>("hasStandardKeys");
    QTest::addColumn<QList<Step>>("steps");
    QTest::addColumn<QRect>("selected"); // x counts columns, y rows
    QTest::addColumn<Cell>("current");
    const auto cells = [](int top, int left, int bottom, int right) {
        return QRect(QPoint(left, top), QPoint(right, bottom));
    };
    const auto add = [&](const char *name, bool hasStandardKeys, const QList<Step> &steps,
                         const QRect &selected, const Cell &current) {
        QTest::newRow(name) << hasStandardKeys << steps << selected << current;
    };
    const Step toEnd = key(Qt::CTRL | Qt::Key_End);
    const Step toHome = key(Qt::CTRL | Qt::Key_Home);

    add("Shift+End", false, {click(2), key(Qt::SHIFT | Qt::Key_End)}, cells(2, 0, last, 0),
        {last, 0});
    add("Shift+Home", false, {scroll(last), click(2), key(Qt::SHIFT | Qt::Key_Home)},
        cells(0, 0, last - 4, 0), {0, 0});
    add("Page down, Shift+End", false,
        {click(2), key(Qt::Key_PageDown), key(Qt::SHIFT | Qt::Key_End)}, cells(9, 0, last, 0),
        {last, 0});
    add("End, Shift+Home", false, {click(2), key(Qt::Key_End), key(Qt::SHIFT | Qt::Key_Home)},
        cells(0, 0, last, 0), {0, 0});
    add("Shift+End, Shift+Home", false,
        {click(2), key(Qt::SHIFT | Qt::Key_End), key(Qt::SHIFT | Qt::Key_Home)}, cells(0, 0, 2, 0),
        {0, 0});
    add("no click, Shift+End", false, {key(Qt::SHIFT | Qt::Key_End)}, cells(0, 0, last, 0),
        {last, 0});
    add("click far away with Shift", false, {click(2), scroll(last), click(2, Qt::ShiftModifier)},
        cells(2, 0, last - 4, 0), {last - 4, 0});
    add("Down, then click far away with Shift", false,
        {click(2), key(Qt::Key_Down), scroll(last), click(2, Qt::ShiftModifier)},
        cells(2, 0, last - 4, 0), {last - 4, 0});

    add("standard, Shift+End", true, {click(2), key(Qt::SHIFT | Qt::Key_End)}, cells(2, 0, 2, 5),
        {2, 5});
    add("standard, all of a column to the end", true,
        {click(2), toEnd, key(Qt::SHIFT | Qt::Key_Home)}, cells(last, 0, last, 5), {last, 0});
    add("standard, click far away with Shift", true,
        {click(2), scroll(last), click(2, Qt::ShiftModifier)}, cells(2, 0, last - 4, 0),
        {last - 4, 0});
    add("standard, click far above with Shift", true,
        {scroll(last), click(2), scroll(0), click(2, Qt::ShiftModifier)}, cells(2, 0, last - 4, 0),
        {2, 0});
    add("standard, Down, then click far away with Shift", true,
        {click(2), key(Qt::Key_Down), scroll(last), click(2, Qt::ShiftModifier)},
        cells(3, 0, last - 4, 0), {last - 4, 0});
    add("standard, Down that moves nothing", true,
        {toEnd, click(6), key(Qt::SHIFT | Qt::Key_Down), key(Qt::Key_Down), scroll(0),
         click(2, Qt::ShiftModifier)},
        cells(2, 2, last, 2), {2, 2});
    add("standard, keys after a range far away", true,
        {click(2), scroll(last), click(2, Qt::ShiftModifier), key(Qt::SHIFT | Qt::Key_Right)},
        cells(2, 0, last - 4, 1), {last - 4, 1});
    add("standard, from the end to the start", true,
        {click(2), toEnd, toHome, scroll(last), click(2, Qt::ShiftModifier)},
        cells(0, 0, last - 4, 0), {last - 4, 0});
    add("standard, Page up far out of sight", true, {toEnd, scroll(0), key(Qt::Key_PageUp)},
        cells(last - 7, 5, last - 7, 5), {last - 7, 5});
}

//! Rows too far away for pixels.
void TestViewKeys::farRanges()
{
    QFETCH(bool, hasStandardKeys);
    QFETCH(QList<Step>, steps);
    QFETCH(QRect, selected);
    QFETCH(Cell, current);
    Stage stage(farRows);
    stage.fast->setStandardKeys(hasStandardKeys);
    stage.fast->setSelectionMode(QAbstractItemView::ExtendedSelection);
    stage.fast->setSelectionBehavior(QAbstractItemView::SelectItems);
    stage.fast->setFocus();
    for (const Step &step : std::as_const(steps))
        step(stage);
    QCOMPARE(currentCell(*stage.fast), current);
    const QItemSelection selection = stage.fast->selectionModel()->selection();
    QCOMPARE(selection.size(), 1);
    const QItemSelectionRange &range = selection.constFirst();
    QCOMPARE(QRect(QPoint(range.left(), range.top()), QPoint(range.right(), range.bottom())),
             selected);
}

void TestViewKeys::rowsStayRowsWithStandardKeys_data()
{
    QTest::addColumn<bool>("hasStandardKeys");
    QTest::addColumn<Step>("step");
    QTest::addColumn<Cell>("current");
    for (bool on : {false, true}) {
        const auto add = [on](const char *name, const Step &step, const Cell &current) {
            QTest::addRow("%s, %s", name, on ? "standard keys" : "as they are")
                << on << step << current;
        };
        add("first", [](Stage &s) { s.fast->setCurrentFirst(); }, {0, 2});
        add("last", [](Stage &s) { s.fast->setCurrentLast(); }, {39, 0});
        const auto move = [](Qt::Key key) -> Step {
            return [key](Stage &s) { s.fast->moveCurrentIndex(s.model.index(10, 2), key); };
        };
        add("up", move(Qt::Key_Up), {9, 2});
        add("down", move(Qt::Key_Down), {11, 2});
        add("left", move(Qt::Key_Left), {10, 1});
        add("right", move(Qt::Key_Right), {10, 3});
    }
}

//! What a program calls does not depend on what keys do.
void TestViewKeys::rowsStayRowsWithStandardKeys()
{
    QFETCH(bool, hasStandardKeys);
    QFETCH(Step, step);
    QFETCH(Cell, current);
    Stage stage;
    stage.fast->setStandardKeys(hasStandardKeys);
    stage.fast->setCurrentIndex(stage.model.index(20, 2));
    step(stage);
    QCOMPARE(currentCell(*stage.fast), current);
}

void TestViewKeys::keysAsTheyAre_data()
{
    QTest::addColumn<QKeyCombination>("key");
    QTest::addColumn<Cell>("current"); // from 20, 2
    QTest::addColumn<QList<int>>("rows");
    const QList<int> above {0,  1,  2,  3,  4,  5,  6,  7,  8,  9, 10,
                            11, 12, 13, 14, 15, 16, 17, 18, 19, 20};
    const QList<int> below {20, 21, 22, 23, 24, 25, 26, 27, 28, 29,
                            30, 31, 32, 33, 34, 35, 36, 37, 38, 39};
    const auto add = [](QKeyCombination key, const Cell &current, const QList<int> &rows) {
        QTest::addRow("%s", text(key.key(), key.keyboardModifiers()).constData())
            << key << current << rows;
    };
    for (Qt::KeyboardModifiers held : modifiers) {
        add(held | Qt::Key_Left, {20, 1}, {20});
        add(held | Qt::Key_Right, {20, 3}, {20});
        add(held | Qt::Key_Up, {19, 2}, {19});
        add(held | Qt::Key_Down, {21, 2}, {21});
    }
    add(Qt::Key_Home, {0, 2}, {0});
    add(Qt::Key_End, {39, 2}, {39});
    add(Qt::Key_PageUp, {12, 2}, {12}); // seven rows and a half
    add(Qt::Key_PageDown, {27, 2}, {27});
    add(Qt::SHIFT | Qt::Key_Home, {0, 2}, above);
    add(Qt::SHIFT | Qt::Key_End, {39, 2}, below);
    add(Qt::SHIFT | Qt::Key_PageUp, {12, 2}, above.mid(12));
    add(Qt::SHIFT | Qt::Key_PageDown, {27, 2}, below.mid(0, 8));
    for (Qt::KeyboardModifiers held : {modifiers[2], modifiers[3]}) {
        add(held | Qt::Key_Home, {0, 2}, {20});
        add(held | Qt::Key_End, {39, 2}, {20});
        add(held | Qt::Key_PageUp, {12, 2}, {20});
        add(held | Qt::Key_PageDown, {27, 2}, {20});
    }
}

void TestViewKeys::keysAsTheyAre()
{
    QFETCH(QKeyCombination, key);
    QFETCH(Cell, current);
    QFETCH(QList<int>, rows);
    Stage stage;
    stage.fast->setStandardKeys(false);
    stage.fast->setSelectsVisualRanges(false);
    stage.fast->setSelectionMode(QAbstractItemView::ExtendedSelection);
    const QPoint cell(2 * 40 + 5, 3 * rowHeight + 1);
    stage.fast->verticalScrollBar()->setValue(17);
    QTest::mouseClick(stage.fast->viewport(), Qt::LeftButton, Qt::NoModifier, cell);
    QCOMPARE(currentCell(*stage.fast), Cell(20, 2));
    press(stage.fast, key.key(), key.keyboardModifiers());
    QCOMPARE(currentCell(*stage.fast), current);
    QList<int> selected;
    for (const QModelIndex &index : stage.fast->selectionModel()->selectedRows())
        selected.append(index.row());
    std::sort(selected.begin(), selected.end());
    QCOMPARE(selected, rows);
}

void TestViewKeys::tabAsItIs()
{
    Stage stage;
    stage.fast->setStandardKeys(false);
    stage.fast->setCurrentIndex(stage.model.index(3, 3));
    press(stage.fast, Qt::Key_Tab, Qt::NoModifier);
    QVERIFY(stage.table->hasFocus());
    QCOMPARE(currentCell(*stage.fast), Cell(3, 3));
}

void TestViewKeys::standardKeysSwitchTab_data()
{
    QTest::addColumn<bool>("before");
    QTest::newRow("off before") << false;
    QTest::newRow("on before") << true;
}

void TestViewKeys::standardKeysSwitchTab()
{
    QFETCH(bool, before);
    QTableFastView view;
    QVERIFY(!view.tabKeyNavigation());
    view.setTabKeyNavigation(before);
    view.setStandardKeys(true);
    QVERIFY(view.tabKeyNavigation());
    view.setStandardKeys(true);
    view.setStandardKeys(false);
    QCOMPARE(view.tabKeyNavigation(), before);
}

//! Ranges are those of logical columns until something else is asked for.
void TestViewKeys::logicalRanges()
{
    Stage stage(40, arrangements[2]); // 4, 0, 2, 3, 5, 1
    stage.fast->setSelectsVisualRanges(false);
    stage.setModes(QAbstractItemView::ExtendedSelection, QAbstractItemView::SelectItems);
    const QList<Cell> logical {{0, 2}, {0, 3}, {0, 4}, {1, 2}, {1, 3}, {1, 4}};
    const QList<Cell> visual {{0, 0}, {0, 2}, {0, 4}, {1, 0}, {1, 2}, {1, 4}};
    const QPoint from(5, 5);
    const QPoint to(85, rowHeight + 5);
    drag(stage.fast->viewport(), Qt::NoModifier, from, to);
    QCOMPARE(selectedCells(*stage.fast), logical);
    stage.fast->setSelectsVisualRanges(true);
    drag(stage.fast->viewport(), Qt::NoModifier, from, to);
    QCOMPARE(selectedCells(*stage.fast), visual);
}

//! A range begins where keys moved to or the mouse was pressed, not where a search ended.
void TestViewKeys::searchedRowIsNoBeginning()
{
    Stage stage(40, arrangements[0]);
    stage.setModes(QAbstractItemView::ExtendedSelection, QAbstractItemView::SelectRows);
    QTableFastView *view = stage.fast;
    const auto middle = [&](int row) {
        return QPoint(5, view->rowViewportPosition(row) + rowHeight / 2);
    };
    QTest::mouseClick(view->viewport(), Qt::LeftButton, Qt::NoModifier, middle(1));
    press(view, Qt::Key_Down, Qt::NoModifier);
    press(view, Qt::Key_4, Qt::NoModifier);
    QCOMPARE(view->currentIndex().row(), 4);
    drag(view->viewport(), Qt::ShiftModifier, middle(5), middle(6));
    QList<int> rows;
    for (const QModelIndex &index : view->selectionModel()->selectedRows())
        rows.append(index.row());
    std::sort(rows.begin(), rows.end());
    QCOMPARE(rows, QList<int>({2, 3, 4, 5, 6}));
}

void TestViewKeys::columnsThatAreNearlySelected()
{
    NumberModel model(10);
    QTableFastView view;
    view.setModel(&model);
    view.setSelectionMode(QAbstractItemView::MultiSelection);
    view.setSelectionBehavior(QAbstractItemView::SelectItems);
    view.selectionModel()->select(QItemSelection(model.index(0, 1), model.index(8, 1)),
                                  QItemSelectionModel::Select);
    view.selectColumn(1);
    QCOMPARE(view.selectionModel()->selectedIndexes().size(), 10);
    view.selectColumn(1);
    QCOMPARE(view.selectionModel()->selectedIndexes().size(), 0);
}

void TestViewKeys::columnWithoutSelectionModel()
{
    NumberModel model(10);
    QTableFastView view;
    view.setModel(&model);
    view.setSelectionBehavior(QAbstractItemView::SelectColumns);
    auto *selection = new QItemSelectionModel(&model);
    view.setSelectionModel(selection);
    delete selection;
    view.selectColumn(1);
    QVERIFY(!view.currentIndex().isValid());
}

QTEST_MAIN(TestViewKeys)

#include "tst_viewkeys.moc"
