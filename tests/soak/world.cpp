// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "world.h"

#include <QApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QPainter>
#include <QScrollBar>

#include <algorithm>

namespace {

void settle()
{
    for (int i = 0; i < 3; ++i) {
        QCoreApplication::sendPostedEvents();
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
}

QString place(const QPoint &p)
{
    return QStringLiteral("(%1, %2)").arg(p.x()).arg(p.y());
}

// The antialiased line of a focus frame comes out a level lighter or darker when it
// is painted through a clip. Cells differ by far more.
bool isSameColor(QRgb a, QRgb b)
{
    return std::abs(qRed(a) - qRed(b)) <= 2 && std::abs(qGreen(a) - qGreen(b)) <= 2
        && std::abs(qBlue(a) - qBlue(b)) <= 2;
}

} // namespace

QList<Combination> Combination::all()
{
    QList<Combination> list;
    for (int bits = 0; bits < 16; ++bits)
        list.append({bool(bits & 1), bool(bits & 2), bool(bits & 4), bool(bits & 8)});
    return list;
}

QString Combination::name() const
{
    return QStringLiteral("%1-%2-%3-%4")
        .arg(isBuffered ? QStringLiteral("buffer") : QStringLiteral("direct"),
             isPerPixel ? QStringLiteral("pixel") : QStringLiteral("row"),
             isRightToLeft ? QStringLiteral("rtl") : QStringLiteral("ltr"),
             isAlternating ? QStringLiteral("alternating") : QStringLiteral("plain"));
}

World::World(const Combination &combination, quint64 seed, bool hasCells)
    : m_random(quint32(seed))
    , m_seed(seed * 16 + quint64(Combination::all().indexOf(combination)))
    , m_hasCells(hasCells)
    , m_model(new SoakModel(60))
    , m_other(new QWidget)
    , m_window(new QWidget)
    , m_view(new SoakView(m_window.get()))
{
    m_view->setLayoutDirection(combination.isRightToLeft ? Qt::RightToLeft : Qt::LeftToRight);
    m_view->setVerticalScrollMode(combination.isPerPixel ? QAbstractItemView::ScrollPerPixel
                                                         : QAbstractItemView::ScrollPerItem);
    m_view->setAlternatingRowColors(combination.isAlternating);
    m_view->setSelectionMode(QAbstractItemView::ExtendedSelection);
    m_view->setItemDelegate(newDelegate(1));
    m_view->setPaintBufferEnabled(combination.isBuffered);
    m_view->updateItemHeight();
    listen();
    m_view->setModel(m_model.get());
    listen();
    m_view->header()->resizeSections(QHeaderView::Interactive);
    for (int column = 0; column < 5; ++column)
        m_view->header()->resizeSection(column, 60 + 10 * column);
    m_view->resize(260, 190);
    m_other->resize(20, 20);
    m_other->show();
    m_window->resize(420, 300);
    m_window->show();
    m_view->activateWindow();
    settle();
}

World::~World()
{
    m_view.reset();
}

const QList<World::Choice> &World::modelChoices()
{
    static const QList<Choice> choices {
        {8, &World::insertAtTop},     {8, &World::insertAtEnd},  {6, &World::insertAnywhere},
        {10, &World::insertNearView}, {5, &World::removeAtTop},  {5, &World::removeAnywhere},
        {8, &World::removeNearView},  {3, &World::moveAnywhere}, {5, &World::moveNearView},
        {8, &World::changeCell},      {4, &World::changeBlock},  {1, &World::changeUnsaid},
        {1, &World::restart},         {1, &World::sortRows},     {1, &World::turnRound},
        {1, &World::insertColumn},    {1, &World::removeColumn},
    };
    return choices;
}

const QList<World::Choice> &World::viewChoices()
{
    static const QList<Choice> choices {
        {10, &World::scrollALittle},     {5, &World::scrollFar},
        {4, &World::scrollToTop},        {6, &World::scrollToEnd},
        {6, &World::scrollColumns},      {5, &World::scrollToCell},
        {4, &World::resizeView},         {5, &World::resizeColumn},
        {3, &World::moveColumn},         {2, &World::hideColumn},
        {2, &World::showColumns},        {8, &World::selectSomething},
        {3, &World::clearSelection},     {8, &World::makeCurrent},
        {8, &World::pressKey},           {2, &World::toggleEnabled},
        {2, &World::toggleAlternating},  {1, &World::toggleDirection},
        {1, &World::changePalette},      {1, &World::changeFont},
        {1, &World::replaceDelegate},    {1, &World::replaceColumnDelegate},
        {1, &World::replaceRowDelegate}, {1, &World::replaceModel},
        {1, &World::toggleBuffer},       {1, &World::toggleScrollMode},
        {1, &World::activateOther},      {2, &World::activateView},
        {1, &World::openEditor},         {1, &World::focusEditor},
        {2, &World::closeEditors},       {10, &World::changeHeader},
        {1, &World::replaceHeader},      {1, &World::changeSheet},
    };
    return choices;
}

QString World::step(int number)
{
    m_random.seed(quint32(qHashMulti(size_t(m_seed), number)));
    m_said.clear();
    m_broken.clear();
    switch (below(10)) {
    case 0:
        storm();
        break;
    case 1:
    case 2:
    case 3:
    case 4:
        act(viewChoices());
        break;
    default:
        act(modelChoices());
    }
    settle();
    return check();
}

void World::act(const QList<Choice> &choices)
{
    int total = 0;
    for (const Choice &choice : choices)
        total += choice.weight;
    int left = below(total);
    for (const Choice &choice : choices) {
        left -= choice.weight;
        if (left < 0) {
            (this->*choice.action)();
            return;
        }
    }
}

//! Several things before one paint.
void World::storm()
{
    const int count = 2 + below(12);
    for (int i = 0; i < count; ++i)
        act(chance(75) ? modelChoices() : viewChoices());
}

void World::say(const QString &what)
{
    m_said += (m_said.isEmpty() ? QString() : QStringLiteral("; ")) + what;
}

int World::below(int limit)
{
    return limit <= 0 ? 0 : int(m_random.bounded(limit));
}

//! A cell of one of the rows from first on; decided in this order, whatever the compiler.
QModelIndex World::anyCell(int first, int rows)
{
    const int row = first + below(rows);
    return m_model->index(row, below(m_model->columnCount()));
}

int World::topRow() const
{
    const int value = m_view->verticalScrollBar()->value();
    return m_view->verticalScrollMode() == QAbstractItemView::ScrollPerPixel
        ? value / m_view->itemHeight()
        : value;
}

// The model

void World::insertRows(int row, int count)
{
    say(QStringLiteral("insert %1 rows at %2").arg(count).arg(row));
    const QScrollBar *bar = m_view->verticalScrollBar();
    const int value = bar->value();
    const bool isAtTop = value == bar->minimum();
    const bool isAtEnd = value == bar->maximum();
    const int top = topRow();
    const qint64 identity = m_model->identity(top);
    const int y = m_view->coordinateForItem(top);
    m_isDisturbed = false;
    m_model->insert(row, count);
    // Columns that are shown may give the header, and the viewport, another height.
    if (m_isDisturbed)
        return;

    if (isAtEnd && !isAtTop && bar->value() != bar->maximum())
        m_broken = QStringLiteral("no longer at the end");
    if (isAtTop && !isAtEnd && bar->value() != bar->minimum())
        m_broken = QStringLiteral("no longer at the top");
    if (isAtTop || isAtEnd)
        return;
    if (m_model->identity(topRow()) != identity || m_view->coordinateForItem(topRow()) != y)
        m_broken = QStringLiteral("not the same rows in view");
}

void World::removeRows(int row, int count)
{
    say(QStringLiteral("remove %1 rows at %2").arg(count).arg(row));
    const QScrollBar *bar = m_view->verticalScrollBar();
    const bool isAtEnd = bar->value() == bar->maximum() && bar->value() > 0;
    const int top = topRow();
    const qint64 identity = m_model->identity(top);
    const int y = m_view->coordinateForItem(top);
    m_isDisturbed = false;
    m_model->remove(row, count);
    if (m_isDisturbed)
        return;
    if (isAtEnd && bar->value() != bar->maximum())
        m_broken = QStringLiteral("no longer at the end");
    if (row + count <= top
        && (m_model->identity(topRow()) != identity || m_view->coordinateForItem(topRow()) != y)) {
        m_broken = QStringLiteral("not the same rows in view");
    }
}

void World::insertAtTop()
{
    insertRows(0, 1 + below(chance(20) ? 30 : 3));
}

void World::insertAtEnd()
{
    insertRows(m_model->rowCount(), 1 + below(chance(20) ? 30 : 3));
}

void World::insertAnywhere()
{
    const int first = below(m_model->rowCount() + 1);
    insertRows(first, 1 + below(6));
}

void World::insertNearView()
{
    const int row = topRow() - 3 + below(16);
    insertRows(std::clamp(row, 0, m_model->rowCount()), 1 + below(4));
}

void World::removeAtTop()
{
    const int count = std::min(1 + below(chance(20) ? 40 : 3), m_model->rowCount());
    if (count > 0)
        removeRows(0, count);
}

void World::removeAnywhere()
{
    if (m_model->rowCount() == 0)
        return;
    const int row = below(m_model->rowCount());
    removeRows(row, 1 + below(std::min(m_model->rowCount() - row, 8)));
}

void World::removeNearView()
{
    if (m_model->rowCount() == 0)
        return;
    const int row = std::clamp(topRow() - 3 + below(16), 0, m_model->rowCount() - 1);
    removeRows(row, 1 + below(std::min(m_model->rowCount() - row, 4)));
}

void World::moveAnywhere()
{
    const int rows = m_model->rowCount();
    if (rows < 2)
        return;
    const int row = below(rows);
    const int count = 1 + below(std::min(rows - row, 6));
    const int to = below(rows + 1);
    say(QStringLiteral("move %1 rows at %2 before %3").arg(count).arg(row).arg(to));
    m_model->move(row, count, to);
}

void World::moveNearView()
{
    const int rows = m_model->rowCount();
    if (rows < 2)
        return;
    const int row = std::clamp(topRow() - 5 + below(20), 0, rows - 1);
    const int count = 1 + below(std::min(rows - row, 6));
    const int to = std::clamp(topRow() - 5 + below(20), 0, rows);
    say(QStringLiteral("move %1 rows at %2 before %3").arg(count).arg(row).arg(to));
    m_model->move(row, count, to);
}

void World::changeCell()
{
    if (m_model->rowCount() == 0 || m_model->columnCount() == 0)
        return;
    const int row = std::clamp(topRow() - 1 + below(14), 0, m_model->rowCount() - 1);
    const int column = below(m_model->columnCount());
    say(QStringLiteral("change cell (%1, %2)").arg(row).arg(column));
    m_model->change(row, row, column, column);
}

void World::changeBlock()
{
    if (m_model->rowCount() == 0 || m_model->columnCount() == 0)
        return;
    const int row = below(m_model->rowCount());
    const int last = row + below(std::min(m_model->rowCount() - row, 40));
    const int left = below(m_model->columnCount());
    const int right = left + below(m_model->columnCount() - left);
    say(QStringLiteral("change (%1, %2) to (%3, %4)").arg(row).arg(left).arg(last).arg(right));
    m_model->change(row, last, left, right);
}

void World::changeUnsaid()
{
    say(QStringLiteral("change all with invalid corners"));
    m_model->changeUnsaid();
}

void World::restart()
{
    const int rows = chance(20) ? 0 : below(120);
    say(QStringLiteral("reset to %1 rows").arg(rows));
    m_model->restart(rows);
}

void World::sortRows()
{
    say(QStringLiteral("sort"));
    m_view->sortByColumn(below(m_model->columnCount()),
                         chance(50) ? Qt::AscendingOrder : Qt::DescendingOrder);
}

void World::turnRound()
{
    say(QStringLiteral("reverse rows"));
    m_model->turnRound(chance(50) ? QAbstractItemModel::NoLayoutChangeHint
                                  : QAbstractItemModel::VerticalSortHint);
}

void World::insertColumn()
{
    if (m_model->columnCount() >= 7)
        return;
    say(QStringLiteral("insert a column"));
    m_model->insertColumn(below(m_model->columnCount() + 1));
}

void World::removeColumn()
{
    if (m_model->columnCount() < 2)
        return;
    say(QStringLiteral("remove a column"));
    m_model->removeColumn(below(m_model->columnCount()));
}

// The view

void World::scrollALittle()
{
    QScrollBar *bar = m_view->verticalScrollBar();
    const int by = below(9) - 4;
    say(QStringLiteral("scroll by %1").arg(by));
    bar->setValue(bar->value() + by);
}

void World::scrollFar()
{
    QScrollBar *bar = m_view->verticalScrollBar();
    const int to = below(bar->maximum() + 1);
    say(QStringLiteral("scroll to %1").arg(to));
    bar->setValue(to);
}

void World::scrollToTop()
{
    say(QStringLiteral("scroll to the top"));
    m_view->verticalScrollBar()->setValue(0);
}

void World::scrollToEnd()
{
    say(QStringLiteral("scroll to the end"));
    m_view->verticalScrollBar()->setValue(m_view->verticalScrollBar()->maximum());
}

void World::scrollColumns()
{
    QScrollBar *bar = m_view->horizontalScrollBar();
    if (chance(10)) {
        say(QStringLiteral("other horizontal scroll mode"));
        m_view->setHorizontalScrollMode(m_view->horizontalScrollMode()
                                                == QAbstractItemView::ScrollPerItem
                                            ? QAbstractItemView::ScrollPerPixel
                                            : QAbstractItemView::ScrollPerItem);
        return;
    }
    const int to = below(bar->maximum() + 1);
    say(QStringLiteral("scroll columns to %1").arg(to));
    bar->setValue(to);
}

void World::scrollToCell()
{
    const QModelIndex index = anyCell(0, m_model->rowCount());
    const auto hint = QAbstractItemView::ScrollHint(below(4));
    say(QStringLiteral("scrollTo row %1, hint %2").arg(index.row()).arg(hint));
    if (chance(50))
        m_view->scrollTo(index, hint);
    else
        m_view->scrollToRow(index, hint);
}

void World::resizeView()
{
    const QScrollBar *bar = m_view->verticalScrollBar();
    const bool isLastCurrent = m_model->rowCount() > 0 && m_view->isCurrentLast();
    const QSize before = m_view->size();
    const QSize size {120 + below(260), 60 + below(200)};
    say(QStringLiteral("resize to %1 x %2").arg(size.width()).arg(size.height()));
    m_view->resize(size);
    if (isLastCurrent && size != before && bar->value() != bar->maximum())
        m_broken = QStringLiteral("no longer at the end");
}

void World::resizeColumn()
{
    const int column = below(m_view->header()->count());
    const int size = chance(10) ? 0 : 5 + below(150);
    say(QStringLiteral("resize column %1 to %2").arg(column).arg(size));
    m_view->header()->resizeSection(column, size);
}

void World::moveColumn()
{
    const int count = m_view->header()->count();
    const int from = below(count);
    const int to = below(count);
    say(QStringLiteral("move section %1 to %2").arg(from).arg(to));
    m_view->header()->moveSection(from, to);
}

void World::hideColumn()
{
    const int column = below(m_view->header()->count());
    say(QStringLiteral("hide column %1").arg(column));
    m_view->hideColumn(column);
}

void World::showColumns()
{
    say(QStringLiteral("show all columns"));
    for (int column = 0; column < m_view->header()->count(); ++column)
        m_view->header()->showSection(column);
    // One that keeps its width is shown without a word, and the header does not even paint it.
    m_view->header()->viewport()->update();
}

void World::selectSomething()
{
    const int rows = m_model->rowCount();
    if (rows == 0)
        return;
    static const QItemSelectionModel::SelectionFlags flags[] = {
        QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows,
        QItemSelectionModel::Select | QItemSelectionModel::Rows,
        QItemSelectionModel::Toggle | QItemSelectionModel::Rows,
        QItemSelectionModel::Deselect | QItemSelectionModel::Rows,
        QItemSelectionModel::Select,
        QItemSelectionModel::Toggle,
        QItemSelectionModel::ClearAndSelect,
    };
    const int flag = below(int(std::size(flags)));
    const int top = std::clamp(topRow() - 3 + below(16), 0, rows - 1);
    const int bottom = std::min(top + below(6), rows - 1);
    const int left = below(m_model->columnCount());
    const int right = left + below(m_model->columnCount() - left);
    say(QStringLiteral("select (%1, %2) to (%3, %4), flags %5")
            .arg(top)
            .arg(left)
            .arg(bottom)
            .arg(right)
            .arg(int(flags[flag])));
    m_view->selectionModel()->select(
        QItemSelection(m_model->index(top, left), m_model->index(bottom, right)), flags[flag]);
}

void World::clearSelection()
{
    say(QStringLiteral("clear the selection"));
    if (chance(50))
        m_view->selectionModel()->clearSelection();
    else
        m_view->selectionModel()->clear();
}

void World::makeCurrent()
{
    const int rows = m_model->rowCount();
    const int row = chance(20) ? rows - 1 : chance(20) ? 0 : topRow() - 2 + below(14);
    const QModelIndex index = m_model->index(row, below(m_model->columnCount()));
    say(QStringLiteral("make row %1 current").arg(row));
    if (chance(50))
        m_view->selectionModel()->setCurrentIndex(index, QItemSelectionModel::NoUpdate);
    else
        m_view->setCurrentIndex(index);
}

void World::pressKey()
{
    static const Qt::Key keys[] = {Qt::Key_Up,       Qt::Key_Down,   Qt::Key_Left,
                                   Qt::Key_Right,    Qt::Key_Home,   Qt::Key_End,
                                   Qt::Key_PageDown, Qt::Key_PageUp, Qt::Key_Space};
    const Qt::Key key = keys[below(int(std::size(keys)))];
    say(QStringLiteral("press key 0x%1").arg(int(key), 0, 16));
    QKeyEvent press(QEvent::KeyPress, key, chance(20) ? Qt::ShiftModifier : Qt::NoModifier);
    QCoreApplication::sendEvent(m_view.get(), &press);
}

void World::toggleEnabled()
{
    say(QStringLiteral("toggle enabled"));
    m_view->setEnabled(!m_view->isEnabled());
}

void World::toggleAlternating()
{
    say(QStringLiteral("toggle alternating colours"));
    m_view->setAlternatingRowColors(!m_view->alternatingRowColors());
}

void World::toggleDirection()
{
    say(QStringLiteral("toggle the layout direction"));
    m_view->setLayoutDirection(m_view->isRightToLeft() ? Qt::LeftToRight : Qt::RightToLeft);
}

void World::changePalette()
{
    say(QStringLiteral("change the palette"));
    QPalette palette = m_view->palette();
    palette.setColor(QPalette::Text, QColor::fromRgb(m_random.generate() & 0xffffff));
    palette.setColor(QPalette::Base, QColor::fromRgb(m_random.generate() | 0xffc0c0c0));
    if (chance(10)) {
        QLinearGradient gradient(0, 0, 0, 300);
        gradient.setColorAt(1, Qt::darkCyan);
        palette.setBrush(chance(50) ? QPalette::Base : QPalette::AlternateBase, gradient);
    }
    m_view->setPalette(palette);
}

void World::changeSheet()
{
    static const char *const sheets[] = {
        "",
        "",
        "",
        "QTableFastView { background: #ddeeff; }",
        "QTableFastView { background: transparent; }",
        "QTableFastView { background: rgba(0, 80, 160, 40%); }",
        "QTableFastView { background: qlineargradient(x1:0, y1:0, x2:0, y2:1, stop:0 #fff, stop:1 "
        "#8ac); }",
        "QTableFastView { alternate-background-color: rgba(200, 100, 0, 30%); }",
        "QTableFastView::item { background: rgba(0, 160, 0, 20%); padding: 2px; }",
        "QTableFastView::item:selected { background: qlineargradient(x1:0, y1:0, x2:1, y2:0, "
        "stop:0 "
        "red, stop:1 yellow); color: black; } QTableFastView::item:last { color: blue; }",
    };
    const int which = below(int(std::size(sheets)));
    say(QStringLiteral("style sheet %1").arg(which));
    m_view->setStyleSheet(QString::fromLatin1(sheets[which]));
}

void World::changeFont()
{
    QFont font = m_view->font();
    font.setPixelSize(8 + below(14));
    say(QStringLiteral("change the font to %1 px").arg(font.pixelSize()));
    m_view->setFont(font);
    if (chance(70))
        m_view->updateItemHeight();
}

void World::replaceDelegate()
{
    say(QStringLiteral("replace the delegate"));
    delete m_view->itemDelegate();
    m_view->setItemDelegate(newDelegate(m_random.generate()));
}

void World::replaceColumnDelegate()
{
    const int column = below(m_model->columnCount());
    say(QStringLiteral("replace the delegate of column %1").arg(column));
    m_view->setItemDelegateForColumn(column,
                                     chance(50) ? nullptr : newDelegate(m_random.generate()));
}

void World::replaceRowDelegate()
{
    const int row = topRow() + below(10);
    say(QStringLiteral("replace the delegate of row %1").arg(row));
    for (int other = 0; other < 200; ++other) {
        if (m_view->itemDelegateForRow(other))
            m_view->setItemDelegateForRow(other, nullptr);
    }
    if (chance(50))
        m_view->setItemDelegateForRow(row, newDelegate(m_random.generate()));
}

void World::replaceModel()
{
    // A header that takes another model forgets its hidden sections by halves:
    // isSectionHidden() and visualIndexAt() would disagree.
    showColumns();
    m_editors.clear();
    std::unique_ptr<SoakModel> next(new SoakModel(below(100)));
    switch (below(3)) {
    case 0:
        say(QStringLiteral("replace the model"));
        m_model.swap(next);
        listen();
        m_view->setModel(m_model.get());
        break;
    case 1:
        say(QStringLiteral("set no model, then another"));
        m_view->setModel(nullptr);
        m_model = std::move(next);
        m_view->setModel(m_model.get());
        listen();
        break;
    default:
        say(QStringLiteral("destroy the model, set another"));
        m_model.reset();
        m_view->verticalScrollBar()->setValue(3);
        settle();
        m_model = std::move(next);
        m_view->setModel(m_model.get());
        listen();
    }
}

void World::toggleBuffer()
{
    say(QStringLiteral("switch the buffer off and on"));
    m_view->setPaintBufferEnabled(!m_view->isPaintBufferEnabled());
    settle();
    m_view->setPaintBufferEnabled(!m_view->isPaintBufferEnabled());
}

void World::toggleScrollMode()
{
    say(QStringLiteral("the other scroll mode and back"));
    const auto mode = m_view->verticalScrollMode();
    m_view->setVerticalScrollMode(mode == QAbstractItemView::ScrollPerItem
                                      ? QAbstractItemView::ScrollPerPixel
                                      : QAbstractItemView::ScrollPerItem);
    if (chance(50))
        settle();
    m_view->setVerticalScrollMode(mode);
}

void World::activateOther()
{
    say(QStringLiteral("activate another window"));
    m_other->activateWindow();
}

void World::activateView()
{
    say(QStringLiteral("activate the view"));
    m_view->activateWindow();
    m_view->setFocus();
}

void World::openEditor()
{
    const QModelIndex index = anyCell(topRow(), 10);
    say(QStringLiteral("open an editor in row %1").arg(index.row()));
    if (!index.isValid())
        return;
    m_view->openPersistentEditor(index);
    m_editors.append(index);
}

void World::focusEditor()
{
    say(QStringLiteral("focus an editor"));
    if (m_editors.isEmpty())
        return;
    QPersistentModelIndex index = m_editors.last();
    QWidget *editor = index.isValid() ? m_view->indexWidget(index) : nullptr;
    if (!editor)
        return;
    m_view->selectionModel()->setCurrentIndex(index, QItemSelectionModel::NoUpdate);
    editor->setFocus();
}

void World::closeEditors()
{
    say(QStringLiteral("close the editors"));
    for (const QPersistentModelIndex &index : std::as_const(m_editors)) {
        if (index.isValid())
            m_view->closePersistentEditor(index);
    }
    m_editors.clear();
}

// What must hold

QString World::check()
{
    if (!m_broken.isEmpty())
        return m_broken;
    if (m_view->header()->count() != m_model->columnCount())
        return QStringLiteral("the header has %1 columns").arg(m_view->header()->count());
    QString wrong = checkRange();
    if (wrong.isEmpty())
        wrong = checkPicture();
    if (wrong.isEmpty())
        wrong = checkBar();
    if (wrong.isEmpty())
        wrong = checkEditors();
    return wrong;
}

QString World::checkRange()
{
    const QScrollBar *bar = m_view->verticalScrollBar();
    const int height = m_view->viewport()->height();
    const int rows = m_model->rowCount();
    const int wanted = m_view->verticalScrollMode() == QAbstractItemView::ScrollPerPixel
        ? rows * m_view->itemHeight() - height
        : rows - std::max(height / m_view->itemHeight(), 1);
    if (bar->minimum() == 0 && bar->maximum() == std::max(wanted, 0))
        return {};
    return QStringLiteral("range is %1 to %2, not 0 to %3")
        .arg(bar->minimum())
        .arg(bar->maximum())
        .arg(std::max(wanted, 0));
}

QString World::checkBar()
{
    // The pixels of a window begin where the bar's do only at whole ratios. With more than
    // two of them, the style leaves some at the edges as they were. With a style sheet there
    // is no picture.
    const double ratio = m_view->devicePixelRatioF();
    if ((ratio != 1 && ratio != 2) || m_view->verticalScrollBar()->underMouse()
        || !m_view->styleSheet().isEmpty() || m_view->maintainedBar() == m_view->plainBar()) {
        return {};
    }
    return QStringLiteral("the scroll bar looks otherwise");
}

QString World::checkPicture()
{
    QImage maintained = m_view->maintainedPicture();
    const QWidget *viewport = m_view->viewport();
    const bool isPlain = viewport->devicePixelRatioF() == 1 && m_view->styleSheet().isEmpty()
        && viewport->palette().brush(QPalette::Base).style() == Qt::SolidPattern
        && m_view->palette().brush(QPalette::AlternateBase).style() == Qt::SolidPattern;
    QImage plain = isPlain ? m_view->plainPicture() : m_view->renderedPicture();
    for (QObject *child : m_view->viewport()->children()) {
        const auto *editor = qobject_cast<QWidget *>(child);
        if (!editor || !editor->isVisible())
            continue;
        const double ratio = viewport->devicePixelRatioF();
        const QRectF place(QPointF(editor->pos()) * ratio, QSizeF(editor->size()) * ratio);
        QPainter(&maintained).fillRect(place.toAlignedRect(), Qt::red);
        QPainter(&plain).fillRect(place.toAlignedRect(), Qt::red);
    }
    if (maintained == plain)
        return {};
    int count = 0;
    QPoint first;
    for (int y = plain.height() - 1; y >= 0; --y) {
        for (int x = plain.width() - 1; x >= 0; --x) {
            if (isSameColor(plain.pixel(x, y), maintained.pixel(x, y)))
                continue;
            ++count;
            first = QPoint(x, y);
        }
    }
    if (count == 0)
        return {};
    const QString folder = qEnvironmentVariable("VANTIX_SOAK_PICTURES"); // of the last failure
    if (!folder.isEmpty()) {
        maintained.save(folder + QStringLiteral("/shown.png"));
        plain.save(folder + QStringLiteral("/expected.png"));
    }
    return QStringLiteral("%1 wrong pixels, the first at %2 of %3 x %4")
        .arg(count)
        .arg(place(first))
        .arg(plain.width())
        .arg(plain.height());
}

QAbstractItemDelegate *World::newDelegate(uint salt) const
{
    if (m_hasCells)
        return new CellDelegate(salt, m_view.get());
    return new ColorDelegate(salt, m_view.get());
}

//! The cell, or what is right of a mark. A mark that came later, with the data or with
//! another delegate, does not move the editor.
QList<QRect> World::editorPlaces(const QModelIndex &index) const
{
    const QRect rect = m_view->visualRect(index);
    if (!m_hasCells)
        return {rect};
    QStyleOptionViewItem option;
    m_view->initViewItemOption(&option);
    option.rect = rect;
    QRect beside = rect;
    beside.setLeft(Vantix::ItemDelegate::indicatorRectByStyle(option).right() + 1);
    return {rect, beside};
}

QString World::checkEditors()
{
    for (const QPersistentModelIndex &index : std::as_const(m_editors)) {
        const QWidget *editor = index.isValid() ? m_view->indexWidget(index) : nullptr;
        const QRect rect = m_view->visualRect(index);
        if (!editor || editor->isHidden() || rect.width() < 2
            || !rect.intersects(m_view->viewport()->rect())) {
            continue;
        }
        if (!editorPlaces(index).contains(editor->geometry())) {
            return QStringLiteral("the editor of row %1 is at %2, not %3")
                .arg(index.row())
                .arg(place(editor->pos()), place(rect.topLeft()));
        }
    }
    return {};
}
