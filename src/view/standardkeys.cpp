// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

// What makes keys and ranges those of QTableView: off until a program asks for it.

#include "qtablefastview.h"
#include "qtablefastview_p.h"

#include <QHeaderView>
#include <QItemSelectionModel>
#include <QKeyEvent>

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
    const QHeaderView *header = q_ptr->m_header;
    const int count = header ? header->count() : 0;
    for (int visual = step > 0 ? 0 : count - 1; visual >= 0 && visual < count; visual += step) {
        const int column = header->logicalIndex(visual);
        if (!header->isSectionHidden(column))
            return q_ptr->m_model->index(row, column);
    }
    return {};
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

//! Where a key moves the current index, which is valid; \a action is one that goes elsewhere
//! than without standard keys.
QModelIndex QTableFastViewPrivate::standardMove(int action, Qt::KeyboardModifiers modifiers) const
{
    const QModelIndex current = q_ptr->currentIndex();
    const bool isWholeTable = modifiers & Qt::ControlModifier;
    const int direction = q_ptr->isRightToLeft() ? -1 : 1;
    QModelIndex target;
    switch (action) {
    case QAbstractItemView::MoveHome:
        q_ptr->currentFirst = q_ptr->currentFirst || isWholeTable;
        target = endOfRow(isWholeTable ? 0 : current.row(), 1);
        break;
    case QAbstractItemView::MoveEnd:
        q_ptr->currentLast = q_ptr->currentLast || isWholeTable;
        target = endOfRow(isWholeTable ? rowCount() - 1 : current.row(), -1);
        break;
    case QAbstractItemView::MovePageUp: // to where page down leads back from
        target = q_ptr->m_model->index(std::max(current.row() - wholeRows(), 0), current.column());
        break;
    case QAbstractItemView::MoveLeft:
        target = neighbourInRow(current, -direction);
        break;
    case QAbstractItemView::MoveRight:
        target = neighbourInRow(current, direction);
        break;
    case QAbstractItemView::MoveNext:
        target = neighbourCell(current, 1);
        break;
    case QAbstractItemView::MovePrevious:
        target = neighbourCell(current, -1);
        break;
    default:
        break;
    }
    return target.isValid() ? target : current;
}

//! The cells between two corners, as they lie on screen if that is wanted.
QItemSelection QTableFastViewPrivate::rangeBetween(const QModelIndex &a, const QModelIndex &b) const
{
    const QHeaderView *header = q_ptr->m_header;
    if (!selectsVisualRanges || !header || !header->sectionsMoved())
        return {a, b};
    const auto [first, last] =
        std::minmax({header->visualIndex(a.column()), header->visualIndex(b.column())});
    QList<int> columns;
    for (int visual = first; visual <= last; ++visual)
        columns.append(header->logicalIndex(visual));
    std::sort(columns.begin(), columns.end());

    const auto [top, bottom] = std::minmax({a.row(), b.row()});
    QItemSelection selection;
    for (qsizetype from = 0, to = 0; from < columns.size(); from = to) {
        for (to = from + 1; to < columns.size() && columns.at(to) == columns.at(to - 1) + 1;)
            ++to;
        selection.select(q_ptr->m_model->index(top, columns.at(from)),
                         q_ptr->m_model->index(bottom, columns.at(to - 1)));
    }
    return selection;
}

//! The cell at a corner of a range, in viewport pixels. A row too far away for pixels is the
//! one where the range began.
QModelIndex QTableFastViewPrivate::cornerAt(const QPoint &point) const
{
    if (std::abs(qint64(point.y())) < farAway || !anchor.isValid())
        return q_ptr->indexAt(point);
    const int column = q_ptr->columnAt(point.x());
    return column < 0 ? QModelIndex() : q_ptr->m_model->index(anchor.row(), column);
}

//! Keeps track of where a range that Shift extends begins, as the base class does. Called
//! before and after it handles \a event.
void QTableFastViewPrivate::moveAnchor(const QInputEvent &event, bool isBefore)
{
    const bool isExtending = event.modifiers() & Qt::ShiftModifier;
    if (isBefore ? isExtending && !anchor.isValid() : !isExtending)
        anchor = q_ptr->currentIndex();
}

void QTableFastView::selectColumn(int column)
{
    const int rows = d_ptr->rowCount();
    if (!m_selectionModel || rows == 0 || column < 0 || column >= m_model->columnCount()
        || selectionBehavior() == SelectRows || selectionMode() == NoSelection
        || (selectionMode() == SingleSelection && selectionBehavior() == SelectItems)) {
        return;
    }
    const QModelIndex current = m_model->index(std::clamp(d_ptr->topRow(), 0, rows - 1), column);
    const QItemSelectionModel::SelectionFlags command = selectionCommand(current);
    m_selectionModel->setCurrentIndex(current, QItemSelectionModel::NoUpdate);
    m_selectionModel->select(
        QItemSelection(m_model->index(0, column), m_model->index(rows - 1, column)), command);
}
