// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

// What makes keys and ranges those of QTableView: off until a program asks for it.

#include "qtablefastview.h"
#include "tableparts_p.h"

#include <QHeaderView>
#include <QItemSelectionModel>
#include <QKeyEvent>
#include <QMouseEvent>
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

//! Where a key moves the current index; to the first cell on screen where there is none.
QModelIndex QTableFastViewPrivate::standardMove(int action, Qt::KeyboardModifiers modifiers) const
{
    const CursorMoves moves = cursorMoves();
    const QModelIndex current = q_ptr->currentIndex();
    if (!current.isValid())
        return rowCount() > 0 ? moves.endOfRow(0, 1) : QModelIndex();
    const bool isWholeTable = modifiers & Qt::ControlModifier;
    switch (action) {
    case QTableFastView::MoveUp:
        return moves.inRows(current, -1);
    case QTableFastView::MoveDown:
        return moves.inRows(current, 1);
    case QTableFastView::MovePageUp:
        return moves.inRows(current, -rows().wholeRows());
    case QTableFastView::MovePageDown:
        return moves.inRows(current, rows().wholeRows());
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

//! Where a key that has to do with columns leads; invalid if nowhere.
QModelIndex QTableFastViewPrivate::moveAmongColumns(const QModelIndex &current, int action,
                                                    bool isWholeTable) const
{
    const CursorMoves moves = cursorMoves();
    const int direction = q_ptr->isRightToLeft() ? -1 : 1;
    switch (action) {
    case QTableFastView::MoveHome:
        return isWholeTable ? moves.endOfTable(1) : moves.endOfRow(current.row(), 1);
    case QTableFastView::MoveEnd:
        return isWholeTable ? moves.endOfTable(-1) : moves.endOfRow(current.row(), -1);
    case QTableFastView::MoveLeft:
        return moves.beside(current, -direction);
    case QTableFastView::MoveRight:
        return moves.beside(current, direction);
    case QTableFastView::MoveNext:
        return moves.next(current, 1);
    case QTableFastView::MovePrevious:
        return moves.next(current, -1);
    default:
        return {};
    }
}

//! What moveCursor() says while keys are as they are: programs ask for rows.
QModelIndex QTableFastViewPrivate::moveByRows(int action)
{
    const QScopedValueRollback<bool> asTheyAre(hasStandardKeys, false);
    return q_ptr->moveCursor(QTableFastView::CursorAction(action), Qt::NoModifier);
}

//! Selects from the cell where the mouse was pressed, wherever that has been scrolled to, to
//! where it is now. False if that is not wanted, or not known.
bool QTableFastViewPrivate::selectDragged(const QRect &rect,
                                          QItemSelectionModel::SelectionFlags command)
{
    const QModelIndex from = anchor->index();
    if (!selectsVisualRanges || q_ptr->state() != QTableFastView::DragSelectingState
        || q_ptr->selectionMode() == QAbstractItemView::SingleSelection || !from.isValid()) {
        return false;
    }
    const QModelIndex to = q_ptr->indexAt(rect.bottomRight());
    if (to.isValid() && (from.flags() & Qt::ItemIsEnabled) && (to.flags() & Qt::ItemIsEnabled))
        q_ptr->m_selectionModel->select(anchor->range(from, to, true), command);
    return true;
}

//! QAbstractItemView::keyPressEvent(); keeps track of where it has ranges begin.
void QTableFastViewPrivate::baseKeyPress(QKeyEvent *event)
{
    const QPointer<QTableFastViewPrivate> alive = this; // a key may do anything
    const QPersistentModelIndex before = q_ptr->currentIndex();
    const QPersistentModelIndex known = anchor->beginKey(before);
    const bool isMove = (event->key() >= Qt::Key_Home && event->key() <= Qt::Key_PageDown)
        || event->key() == Qt::Key_Tab || event->key() == Qt::Key_Backtab;
    q_ptr->QAbstractItemView::keyPressEvent(event);
    if (!alive)
        return;
    const QModelIndex now = q_ptr->currentIndex();
    if (!isMove || now == before)
        anchor->endKey(known);
    else
        anchor->endKey(now, q_ptr->selectionCommand(now, event));
}

//! The same for a press, which the base class has not seen yet.
void QTableFastViewPrivate::noticePress(const QMouseEvent &event)
{
    const QModelIndex pressed = q_ptr->indexAt(event.position().toPoint());
    anchor->press(pressed, q_ptr->selectionCommand(pressed, &event));
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
