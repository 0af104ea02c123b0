// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "table_p.h"

#include "cell_p.h"
#include "factory_p.h"
#include "headercell_p.h"
#include "install_p.h"
#include "selectedcells_p.h"
#include "selecting_p.h"
#include "shownplaces_p.h"

#include "qtablefastview.h"

#include <QHeaderView>

#include <algorithm>
#include <limits>

namespace Accessible {

void installTableFactory()
{
    static const Factory factory(made<QTableFastView, Table>);
}

void watchModels(const QTableFastView *view)
{
    if (Table *table = QAccessible::isActive() ? Table::of(view) : nullptr)
        table->watch();
}

Table::Table(QTableFastView *view)
    : QAccessibleWidget(view, QAccessible::Table)
    , m_cells(view)
    , m_watch(view)
{
    QAccessible::installActivationObserver(this);
    if (QAccessible::isActive())
        m_watch.start();
}

Table::~Table()
{
    QAccessible::removeActivationObserver(this);
}

void Table::accessibilityActiveChanged(bool active)
{
    if (!view())
        return;
    if (active) {
        m_watch.start();
    } else {
        m_watch.stop();
        m_cells.clear();
    }
}

Table *Table::of(const QTableFastView *view)
{
    auto *object = const_cast<QTableFastView *>(view); // NOLINT: Qt asks for no const objects
    return dynamic_cast<Table *>(QAccessible::queryAccessibleInterface(object));
}

//! Null while the view is destroyed.
QTableFastView *Table::view() const
{
    return qobject_cast<QTableFastView *>(object());
}

// Cells and titles

QAccessibleInterface *Table::cell(const QModelIndex &index) const
{
    const QTableFastView *view = this->view();
    if (!view || !index.isValid() || index.model() != view->model() || index.parent().isValid())
        return nullptr;
    const QModelIndex shown = shownCell(*view, index);
    return shown.isValid() ? m_cells.cell(shown) : nullptr;
}

QAccessibleInterface *Table::knownCell(const QModelIndex &index) const
{
    return index.isValid() ? m_cells.knownCell(index) : nullptr;
}

QAccessibleInterface *Table::headerCell(int column) const
{
    const int logical = view() ? shownColumns(*view()).value(column, -1) : -1;
    return logical == -1 ? nullptr : m_cells.headerCell(logical);
}

QAccessibleInterface *Table::cellAt(int row, int column) const
{
    const int logical = view() ? shownColumns(*view()).value(column, -1) : -1;
    if (logical == -1 || row < 0 || row >= rowCount())
        return nullptr;
    return cell(view()->model()->index(row, logical));
}

int Table::columnCount() const
{
    return view() ? int(shownColumns(*view()).size()) : 0;
}

int Table::rowCount() const
{
    return view() && view()->model() ? view()->model()->rowCount() : 0;
}

// Children: the titles, and the cells row by row

bool Table::hasTitles() const
{
    const QHeaderView *header = view() ? view()->header() : nullptr;
    return header && !header->isHidden();
}

int Table::childCount() const
{
    const qint64 count = (qint64(rowCount()) + int(hasTitles())) * columnCount();
    return int(std::min<qint64>(count, std::numeric_limits<int>::max()));
}

QAccessibleInterface *Table::child(int index) const
{
    const int columns = columnCount();
    if (index < 0 || columns == 0)
        return nullptr;
    const int row = index / columns - int(hasTitles());
    return row < 0 ? headerCell(index % columns) : cellAt(row, index % columns);
}

int Table::indexOfChild(const QAccessibleInterface *child) const
{
    if (!child || !child->isValid() || child->parent() != this)
        return -1;
    if (const auto *title = dynamic_cast<const HeaderCell *>(child))
        return hasTitles() ? shownPosition(*view(), title->column()) : -1;
    const auto *cell = dynamic_cast<const Cell *>(child);
    const int column = cell ? cell->columnIndex() : -1;
    if (column == -1)
        return -1;
    const qint64 row = qint64(cell->rowIndex()) + int(hasTitles());
    const qint64 index = row * columnCount() + column;
    return index < std::numeric_limits<int>::max() ? int(index) : -1;
}

QAccessibleInterface *Table::childAt(int x, int y) const
{
    const QTableFastView *view = this->view();
    if (!view)
        return nullptr;
    const QPoint point(x, y);
    const QPoint inViewport = view->viewport()->mapFromGlobal(point);
    if (view->viewport()->rect().contains(inViewport))
        return cell(view->indexAt(inViewport));
    const QWidget *titles = hasTitles() ? view->header()->viewport() : nullptr;
    const QPoint inTitles = titles ? titles->mapFromGlobal(point) : QPoint();
    if (!titles || !titles->rect().contains(inTitles))
        return nullptr;
    return headerCell(shownPosition(*view, view->header()->logicalIndexAt(inTitles)));
}

QAccessibleInterface *Table::focusChild() const
{
    const QTableFastView *view = this->view();
    return view && view->hasFocus() ? cell(view->currentIndex()) : QAccessibleWidget::focusChild();
}

void *Table::interface_cast(QAccessible::InterfaceType type)
{
    if (type == QAccessible::TableInterface)
        return static_cast<QAccessibleTableInterface *>(this);
#if QT_VERSION >= QT_VERSION_CHECK(6, 5, 0)
    if (type == QAccessible::SelectionInterface)
        return static_cast<QAccessibleSelectionInterface *>(this);
#endif
    return QAccessibleWidget::interface_cast(type);
}

// Descriptions

QString Table::columnDescription(int column) const
{
    const int logical = view() ? shownColumns(*view()).value(column, -1) : -1;
    return logical == -1 ? QString() : headerText(*view(), logical, QAccessible::Name);
}

QString Table::rowDescription(int row) const
{
    if (row < 0 || row >= rowCount())
        return {};
    return view()->model()->headerData(row, Qt::Vertical, Qt::DisplayRole).toString();
}

// Selection

int Table::selectedCellCount() const
{
    return view() ? SelectedCells(*view()).cellCount() : 0;
}

QList<QAccessibleInterface *> Table::selectedCells() const
{
    QList<QAccessibleInterface *> cells;
    if (!view())
        return cells;
    for (const QModelIndex &index : SelectedCells(*view()).cells())
        cells.append(cell(index));
    return cells;
}

int Table::selectedColumnCount() const
{
    return int(selectedColumns().size());
}

int Table::selectedRowCount() const
{
    return view() ? SelectedCells(*view()).rowCount() : 0;
}

QList<int> Table::selectedColumns() const
{
    return view() ? SelectedCells(*view()).columns() : QList<int>();
}

QList<int> Table::selectedRows() const
{
    return view() ? SelectedCells(*view()).rows() : QList<int>();
}

bool Table::isColumnSelected(int column) const
{
    return view() && SelectedCells(*view()).isColumnSelected(column);
}

bool Table::isRowSelected(int row) const
{
    return view() && SelectedCells(*view()).isRowSelected(row);
}

bool Table::selectRow(int row)
{
    return view() && Accessible::selectRow(view(), row);
}

bool Table::selectColumn(int column)
{
    return view() && Accessible::selectColumn(view(), column);
}

bool Table::unselectRow(int row)
{
    return view() && Accessible::unselectRow(view(), row);
}

bool Table::unselectColumn(int column)
{
    return view() && Accessible::unselectColumn(view(), column);
}

#if QT_VERSION >= QT_VERSION_CHECK(6, 5, 0)
static QModelIndex indexOf(const QAccessibleInterface *item)
{
    const auto *cell = dynamic_cast<const Cell *>(item);
    return cell && cell->isValid() ? cell->index() : QModelIndex();
}

bool Table::isSelected(QAccessibleInterface *item) const
{
    const auto *cell = dynamic_cast<const Cell *>(item);
    return cell && cell->isSelected();
}

bool Table::select(QAccessibleInterface *item)
{
    return view() && selectCell(view(), indexOf(item));
}

bool Table::unselect(QAccessibleInterface *item)
{
    return view() && unselectCell(view(), indexOf(item));
}

bool Table::selectAll()
{
    if (!view() || view()->selectionMode() < QAbstractItemView::MultiSelection)
        return false;
    view()->selectAll();
    return true;
}

bool Table::clear()
{
    if (!view())
        return false;
    view()->clearSelection();
    return true;
}
#endif

// Changes

void Table::modelChange(QAccessibleTableModelChangeEvent *event)
{
    switch (event->modelChangeType()) {
    case QAccessibleTableModelChangeEvent::ModelReset:
    case QAccessibleTableModelChangeEvent::ColumnsInserted: // titles are kept by number
    case QAccessibleTableModelChangeEvent::ColumnsRemoved:
        m_cells.clear();
        break;
    case QAccessibleTableModelChangeEvent::RowsRemoved:
        m_cells.dropGone();
        break;
    case QAccessibleTableModelChangeEvent::RowsInserted:
    case QAccessibleTableModelChangeEvent::DataChanged:
        break;
    }
}

} // namespace Accessible
