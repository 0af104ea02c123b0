// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

// What makes keys and ranges those of QTableView: off until a program asks for it.

#include "qtablefastview.h"
#include "qtablefastview_p.h"

#include <QHeaderView>
#include <QItemSelectionModel>
#include <QKeyEvent>
#include <QScopedValueRollback>

#include <algorithm>

bool QTableFastView::hasStandardKeys() const
{
    return d_ptr->hasStandardKeys;
}

void QTableFastView::setStandardKeys(bool on)
{
    if (on == d_ptr->hasStandardKeys)
        return;
    d_ptr->hasStandardKeys = on;
    if (on)
        d_ptr->savedTabKeyNavigation = tabKeyNavigation();
    setTabKeyNavigation(on || d_ptr->savedTabKeyNavigation);
}

bool QTableFastView::selectsVisualRanges() const
{
    return d_ptr->selectsVisualRanges;
}

void QTableFastView::setSelectsVisualRanges(bool on)
{
    d_ptr->selectsVisualRanges = on;
}

//! The first (\a step 1) or last (−1) cell of \a row on screen.
QModelIndex QTableFastViewPrivate::endOfRow(int row, int step) const
{
    const int column = columns().end(step);
    return column < 0 ? QModelIndex() : q_ptr->m_model->index(row, column);
}

//! The next (\a step 1) or former (−1) cell; from the last one the first, and back.
QModelIndex QTableFastViewPrivate::neighbourCell(const QModelIndex &current, int step) const
{
    const QModelIndex inRow = neighbourInRow(current, step);
    if (inRow.isValid())
        return inRow;
    const int row = current.row() + step;
    const int rows = rowCount();
    return endOfRow(row < 0 ? rows - 1 : row >= rows ? 0 : row, step);
}

//! The cell \a rows rows below, or above, as far as there are any.
QModelIndex QTableFastViewPrivate::cellInRows(const QModelIndex &current, int rows) const
{
    const qint64 row = std::clamp<qint64>(qint64(current.row()) + rows, 0, rowCount() - 1);
    return q_ptr->m_model->index(int(row), current.column());
}

//! Where a key moves the current index; to the first cell on screen where there is none.
QModelIndex QTableFastViewPrivate::standardMove(int action, Qt::KeyboardModifiers modifiers) const
{
    const QModelIndex current = q_ptr->currentIndex();
    if (!current.isValid())
        return rowCount() > 0 ? endOfRow(0, 1) : QModelIndex();
    const bool isWholeTable = modifiers & Qt::ControlModifier;
    switch (action) {
    case QTableFastView::MoveUp:
        return cellInRows(current, -1);
    case QTableFastView::MoveDown:
        return cellInRows(current, 1);
    case QTableFastView::MovePageUp:
        return cellInRows(current, -rows().wholeRows());
    case QTableFastView::MovePageDown:
        return cellInRows(current, rows().wholeRows());
    case QTableFastView::MoveHome:
        q_ptr->currentFirst = q_ptr->currentFirst || isWholeTable;
        break;
    case QTableFastView::MoveEnd:
        q_ptr->currentLast = q_ptr->currentLast || isWholeTable;
        break;
    default:
        break;
    }
    const QModelIndex target = moveAmongColumns(current, action, isWholeTable);
    return target.isValid() ? target : current;
}

//! What moveCursor() says while keys are as they are: programs ask for rows.
QModelIndex QTableFastViewPrivate::moveByRows(int action)
{
    const QScopedValueRollback<bool> asTheyAre(hasStandardKeys, false);
    return q_ptr->moveCursor(QTableFastView::CursorAction(action), Qt::NoModifier);
}

//! Where a key that has to do with columns leads; invalid if nowhere.
QModelIndex QTableFastViewPrivate::moveAmongColumns(const QModelIndex &current, int action,
                                                    bool isWholeTable) const
{
    const int direction = q_ptr->isRightToLeft() ? -1 : 1;
    switch (action) {
    case QTableFastView::MoveHome:
        return endOfRow(isWholeTable ? 0 : current.row(), 1);
    case QTableFastView::MoveEnd:
        return endOfRow(isWholeTable ? rowCount() - 1 : current.row(), -1);
    case QTableFastView::MoveLeft:
        return neighbourInRow(current, -direction);
    case QTableFastView::MoveRight:
        return neighbourInRow(current, direction);
    case QTableFastView::MoveNext:
        return neighbourCell(current, 1);
    case QTableFastView::MovePrevious:
        return neighbourCell(current, -1);
    default:
        return {};
    }
}

//! The cells between two corners, as they lie on screen if that is wanted.
QItemSelection QTableFastViewPrivate::rangeBetween(const QModelIndex &a, const QModelIndex &b) const
{
    const QHeaderView *header = q_ptr->m_header;
    if (!selectsVisualRanges || !header || !header->sectionsMoved())
        return {a, b};
    const QList<int> seen = columns().between(a.column(), b.column());
    const auto [top, bottom] = std::minmax({a.row(), b.row()});
    QItemSelection selection;
    for (qsizetype from = 0, to = 0; from < seen.size(); from = to) {
        for (to = from + 1; to < seen.size() && seen.at(to) == seen.at(to - 1) + 1;)
            ++to;
        selection.select(q_ptr->m_model->index(top, seen.at(from)),
                         q_ptr->m_model->index(bottom, seen.at(to - 1)));
    }
    return selection;
}

//! The cell at a corner of a range, in viewport pixels. A row too far away for pixels is the
//! one where the range began.
QModelIndex QTableFastViewPrivate::cornerAt(const QPoint &point) const
{
    // The centre of a cell at the upper limit is less far away.
    const qint64 limit = RowScale::farAway - q_ptr->m_itemHeight;
    if (std::abs(qint64(point.y())) < limit || !anchor.isValid())
        return q_ptr->indexAt(point);
    const int column = q_ptr->columnAt(point.x());
    return column < 0 ? QModelIndex() : q_ptr->m_model->index(anchor.row(), column);
}

//! Selects from the cell where the mouse was pressed, wherever that has been scrolled to, to
//! where it is now. False if that is not wanted, or not known.
bool QTableFastViewPrivate::selectDragged(const QRect &rect,
                                          QItemSelectionModel::SelectionFlags command)
{
    if (!selectsVisualRanges || q_ptr->state() != QTableFastView::DragSelectingState
        || q_ptr->selectionMode() == QAbstractItemView::SingleSelection || !anchor.isValid()) {
        return false;
    }
    const QModelIndex corner = q_ptr->indexAt(rect.bottomRight());
    if (corner.isValid() && (anchor.flags() & Qt::ItemIsEnabled)
        && (corner.flags() & Qt::ItemIsEnabled)) {
        q_ptr->m_selectionModel->select(rangeBetween(anchor, corner), command);
    }
    return true;
}

//! QAbstractItemView::keyPressEvent(); keeps track of where it has ranges begin.
void QTableFastViewPrivate::baseKeyPress(QKeyEvent *event)
{
    const QPointer<QTableFastViewPrivate> alive = this; // a key may do anything
    const QPersistentModelIndex before = q_ptr->currentIndex();
    const QPersistentModelIndex known = anchor;
    const bool isMove = (event->key() >= Qt::Key_Home && event->key() <= Qt::Key_PageDown)
        || event->key() == Qt::Key_Tab || event->key() == Qt::Key_Backtab;
    if (!anchor.isValid())
        anchor = before;
    q_ptr->QAbstractItemView::keyPressEvent(event);
    if (!alive)
        return;
    const QModelIndex now = q_ptr->currentIndex();
    if (!isMove || now == before)
        anchor = known;
    else if (!(q_ptr->selectionCommand(now, event) & QItemSelectionModel::Current))
        anchor = now;
}

//! The same for a press, which the base class has not seen yet.
void QTableFastViewPrivate::noticePress(const QMouseEvent &event)
{
    const QModelIndex pressed = q_ptr->indexAt(event.position().toPoint());
    if (!(q_ptr->selectionCommand(pressed, &event) & QItemSelectionModel::Current))
        anchor = pressed;
    else if (!anchor.isValid())
        anchor = q_ptr->currentIndex();
}

//! Whether all cells of a column are selected. Counts ranges, not rows.
bool QTableFastViewPrivate::isWholeColumnSelected(int column) const
{
    qint64 selected = 0;
    const QItemSelection selection = q_ptr->m_selectionModel->selection();
    for (const QItemSelectionRange &range : selection) {
        if (range.left() <= column && column <= range.right())
            selected += range.height();
    }
    return selected >= rowCount();
}

void QTableFastView::selectColumn(int column)
{
    const int rows = d_ptr->rowCount();
    if (!m_selectionModel || rows == 0 || column < 0 || column >= m_model->columnCount()
        || selectionBehavior() == SelectRows
        || (selectionMode() == SingleSelection && selectionBehavior() == SelectItems)) {
        return;
    }
    const QModelIndex current =
        m_model->index(std::clamp(d_ptr->scale().topRow(), 0, rows - 1), column);
    QItemSelectionModel::SelectionFlags command = selectionCommand(current);
    if (command & QItemSelectionModel::Toggle) { // the column, not each of its cells
        command &= ~QItemSelectionModel::Toggle;
        command |= d_ptr->isWholeColumnSelected(column) ? QItemSelectionModel::Deselect
                                                        : QItemSelectionModel::Select;
    }
    m_selectionModel->setCurrentIndex(current, QItemSelectionModel::NoUpdate);
    m_selectionModel->select(
        QItemSelection(m_model->index(0, column), m_model->index(rows - 1, column)), command);
}
