// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "selecting_p.h"

#include "selectedcells_p.h"
#include "shownplaces_p.h"

#include "qtablefastview.h"

#include <QItemSelectionModel>

namespace Accessible {

namespace {

//! Rows, or columns, of a view: what can be selected is the same of both.
struct Lines
{
    QTableFastView *view;
    Qt::Orientation orientation; //!< Qt::Vertical: rows

    bool areRows() const { return orientation == Qt::Vertical; }
    QModelIndex cell(int line) const;
    bool isSelected(int line) const;
    int selectedCount() const;
    bool isSingle() const;
    bool mayBeSelected() const;
    bool isLoneAllowed() const;
    QItemSelectionModel::SelectionFlags command() const;
    bool select(int line) const;
    bool unselect(int line) const;
    QItemSelection unselected(int line) const;
};

//! The first cell of a row or column.
QModelIndex Lines::cell(int line) const
{
    const QList<int> columns = shownColumns(*view);
    const int column = areRows() ? columns.value(0, -1) : columns.value(line, -1);
    return view->model() ? view->model()->index(areRows() ? line : 0, column) : QModelIndex();
}

bool Lines::isSelected(int line) const
{
    const SelectedCells selected(*view);
    return areRows() ? selected.isRowSelected(line) : selected.isColumnSelected(line);
}

int Lines::selectedCount() const
{
    const SelectedCells selected(*view);
    return areRows() ? selected.rowCount() : int(selected.columns().size());
}

//! Whether a cell is all of it.
bool Lines::isSingle() const
{
    return areRows() ? shownColumns(*view).size() <= 1 : view->model()->rowCount() <= 1;
}

bool Lines::mayBeSelected() const
{
    const auto others =
        areRows() ? QAbstractItemView::SelectColumns : QAbstractItemView::SelectRows;
    return view->selectionModel() && view->selectionBehavior() != others
        && view->selectionMode() != QAbstractItemView::NoSelection;
}

//! Whether a mode that allows one thing to be selected allows a whole row, or column.
bool Lines::isLoneAllowed() const
{
    const auto these = areRows() ? QAbstractItemView::SelectRows : QAbstractItemView::SelectColumns;
    return view->selectionBehavior() == these || isSingle();
}

QItemSelectionModel::SelectionFlags Lines::command() const
{
    return areRows() ? QItemSelectionModel::Rows : QItemSelectionModel::Columns;
}

bool Lines::select(int line) const
{
    const QModelIndex index = cell(line);
    if (!index.isValid() || !mayBeSelected())
        return false;
    switch (view->selectionMode()) {
    case QAbstractItemView::SingleSelection:
        if (!isLoneAllowed())
            return false;
        view->clearSelection();
        break;
    case QAbstractItemView::ContiguousSelection:
        if (!isSelected(line - 1) && !isSelected(line + 1))
            view->clearSelection();
        break;
    default:
        break;
    }
    view->selectionModel()->select(index, QItemSelectionModel::Select | command());
    return true;
}

bool Lines::unselect(int line) const
{
    const QModelIndex index = cell(line);
    if (!index.isValid() || !view->selectionModel())
        return false;
    const bool isOneKept = view->selectionMode() == QAbstractItemView::SingleSelection
        || view->selectionMode() == QAbstractItemView::ContiguousSelection;
    if (isOneKept && selectedCount() == 1)
        return false;
    view->selectionModel()->select(unselected(line), QItemSelectionModel::Deselect | command());
    return true;
}

//! Amid neighbours all that follow, so that those left are neighbours.
QItemSelection Lines::unselected(int line) const
{
    const QModelIndex from = cell(line);
    if (view->selectionMode() != QAbstractItemView::ContiguousSelection || !isSelected(line - 1)
        || !isSelected(line + 1)) {
        return {from, from};
    }
    if (areRows())
        return {from, cell(view->model()->rowCount() - 1)};
    QItemSelection columns;
    for (int column = line; cell(column).isValid(); ++column)
        columns.select(cell(column), cell(column));
    return columns;
}

} // namespace

bool selectRow(QTableFastView *view, int row)
{
    return Lines {view, Qt::Vertical}.select(row);
}

bool selectColumn(QTableFastView *view, int column)
{
    return Lines {view, Qt::Horizontal}.select(column);
}

bool unselectRow(QTableFastView *view, int row)
{
    return Lines {view, Qt::Vertical}.unselect(row);
}

bool unselectColumn(QTableFastView *view, int column)
{
    return Lines {view, Qt::Horizontal}.unselect(column);
}

static QItemSelectionModel::SelectionFlags behaviour(const QTableFastView &view)
{
    switch (view.selectionBehavior()) {
    case QAbstractItemView::SelectRows:
        return QItemSelectionModel::Rows;
    case QAbstractItemView::SelectColumns:
        return QItemSelectionModel::Columns;
    case QAbstractItemView::SelectItems:
        break;
    }
    return QItemSelectionModel::NoUpdate;
}

static bool mayHaveSeveral(const QTableFastView &view)
{
    return view.selectionMode() == QAbstractItemView::MultiSelection
        || view.selectionMode() == QAbstractItemView::ExtendedSelection;
}

bool selectCell(QTableFastView *view, const QModelIndex &index)
{
    QItemSelectionModel *selection = view->selectionModel();
    if (!selection || !index.isValid() || !(index.flags() & Qt::ItemIsSelectable)
        || view->selectionMode() == QAbstractItemView::NoSelection) {
        return false;
    }
    const QItemSelectionModel::SelectionFlags command =
        mayHaveSeveral(*view) ? QItemSelectionModel::Select : QItemSelectionModel::ClearAndSelect;
    selection->select(index, command | behaviour(*view));
    return true;
}

bool unselectCell(QTableFastView *view, const QModelIndex &index)
{
    QItemSelectionModel *selection = view->selectionModel();
    if (!selection || !selection->isSelected(index) || !mayHaveSeveral(*view))
        return false;
    selection->select(index, QItemSelectionModel::Deselect | behaviour(*view));
    return true;
}

} // namespace Accessible
