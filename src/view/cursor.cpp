// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

// The members of QTableFastView about the current index, the keyboard and the selection.

#include "qtablefastview.h"
#include "tableparts_p.h"

#include <QHeaderView>
#include <QItemSelectionModel>
#include <QKeyEvent>
#include <QScrollBar>
#include <QStyle>

#include <algorithm>
#include <utility>

// Current index and keyboard

bool QTableFastView::isCurrentFirst() const
{
    const QModelIndex current = currentIndex();
    return current.isValid() && current.row() == 0;
}

bool QTableFastView::isCurrentLast() const
{
    const QModelIndex current = currentIndex();
    if (!current.isValid())
        return false;
    const int rows = d_ptr->rowCount();
    return rows == 0 || current.row() == rows - 1;
}

bool QTableFastView::followsCurrentRow() const
{
    return d_ptr->edges->followsCurrent();
}

void QTableFastView::setFollowsCurrentRow(bool on)
{
    d_ptr->edges->setFollowsCurrent(on);
    if (!on)
        d_ptr->resetTarget = QPersistentModelIndex();
}

void QTableFastView::setCurrentFirst()
{
    currentFirst = true;
    currentLast = false;
    setCurrentIndex(d_ptr->moveByRows(MoveHome));
}

void QTableFastView::setCurrentLast()
{
    currentFirst = false;
    currentLast = true;
    if (!m_model)
        return;
    setCurrentIndex(m_model->index(0, 0));
    setCurrentIndex(d_ptr->moveByRows(MoveEnd));
}

void QTableFastView::selectRow(int row)
{
    if (row < 0 || row >= d_ptr->rowCount())
        return;
    for (int column = 0; column < m_model->columnCount(); ++column) {
        const QModelIndex index = m_model->index(row, column);
        if (!isColumnHidden(column) && index.isValid()) {
            setCurrentIndex(index);
            return;
        }
    }
}

void QTableFastView::keyboardSearch(const QString &search)
{
    d_ptr->keyboardSearch->type(search);
}

void QTableFastView::keyPressEvent(QKeyEvent *event)
{
    if (d_ptr->keyboardSearch->isRunning()) {
        d_ptr->keyboardSearch->end();
        if (event->key() == Qt::Key_Escape) {
            event->accept();
            return;
        }
    }
    if (d_ptr->hasStandardKeys) {
        d_ptr->baseKeyPress(event);
        return;
    }
    switch (event->key()) {
    case Qt::Key_Left:
    case Qt::Key_Up:
    case Qt::Key_Right:
    case Qt::Key_Down:
        moveCurrentIndex(currentIndex(), event->key());
        break;
    default:
        d_ptr->baseKeyPress(event);
    }
}

void QTableFastView::moveCurrentIndex(const QModelIndex &index, int key)
{
    if (!index.isValid())
        return;
    setCurrentIndex(index);
    CursorAction action = MoveLeft;
    switch (key) {
    case Qt::Key_Left:
        break;
    case Qt::Key_Up:
        action = MovePrevious;
        break;
    case Qt::Key_Right:
        action = MoveRight;
        break;
    case Qt::Key_Down:
        action = MoveNext;
        break;
    default:
        qDebug("void QTableFastView::moveCurrentIndex(const QModelIndex&, int) "
               "Unknown key pressed to move current index");
        return;
    }
    setCurrentIndex(d_ptr->moveByRows(action));
}

QModelIndex QTableFastView::moveCursor(CursorAction cursorAction, Qt::KeyboardModifiers modifiers)
{
    if (!m_model)
        return {};
    if (d_ptr->hasStandardKeys)
        return d_ptr->standardMove(cursorAction, modifiers);
    const QModelIndex current = currentIndex();
    const int rows = d_ptr->rowCount();
    if (!current.isValid()) {
        const int column = d_ptr->columns().first();
        return rows > 0 && column >= 0 ? m_model->index(0, column) : QModelIndex();
    }

    const int row = current.row();
    const int column = current.column();
    switch (cursorAction) {
    case MoveUp:
    case MovePrevious:
        return m_model->index(std::max(row - 1, 0), column);
    case MoveDown:
    case MoveNext:
        return m_model->index(row + 1 < rows ? row + 1 : row, column);
    case MoveHome:
        currentFirst = true;
        return m_model->index(0, column);
    case MoveEnd:
        currentLast = true;
        return m_model->index(rows - 1, column);
    case MovePageUp:
        return m_model->index(pageUp(row), column);
    case MovePageDown:
        return m_model->index(pageDown(row), column);
    case MoveLeft:
        return isRightToLeft() ? d_ptr->moveRight(current) : d_ptr->moveLeft(current);
    case MoveRight:
        return isRightToLeft() ? d_ptr->moveLeft(current) : d_ptr->moveRight(current);
    }
    return current;
}

CursorMoves QTableFastViewPrivate::cursorMoves() const
{
    return {q_ptr->m_model, q_ptr->m_header};
}

QModelIndex QTableFastViewPrivate::moveRight(const QModelIndex &current)
{
    if (q_ptr->style()->styleHint(QStyle::SH_ItemView_ArrowKeysNavigateIntoChildren, nullptr,
                                  q_ptr)) {
        const int next = current.row() + 1 < rowCount() ? current.row() + 1 : current.row();
        const QModelIndex candidate = q_ptr->m_model->index(next, 0);
        if (candidate.parent() == current)
            return candidate;
    }
    const QModelIndex next = cursorMoves().beside(current, 1);
    if (next.isValid())
        return next;
    QScrollBar *bar = q_ptr->horizontalScrollBar();
    bar->setValue(bar->value() + bar->singleStep());
    return endHorizontalMove(current);
}

QModelIndex QTableFastViewPrivate::moveLeft(const QModelIndex &current)
{
    if (current.row() >= rowCount())
        return endHorizontalMove(current);
    if (q_ptr->style()->styleHint(QStyle::SH_ItemView_ArrowKeysNavigateIntoChildren, nullptr,
                                  q_ptr)) {
        const QModelIndex parent = current.parent();
        if (parent.isValid() && parent != q_ptr->rootIndex())
            return parent;
    }
    const QModelIndex previous = cursorMoves().beside(current, -1);
    if (previous.isValid())
        return previous;
    QScrollBar *bar = q_ptr->horizontalScrollBar();
    if (bar->value() > bar->minimum())
        bar->setValue(bar->value() - bar->singleStep());
    return endHorizontalMove(current);
}

QModelIndex QTableFastViewPrivate::endHorizontalMove(const QModelIndex &current)
{
    q_ptr->updateGeometries();
    pixels->update();
    return current;
}

// Selection

void QTableFastView::setSelection(const QRect &rect, QItemSelectionModel::SelectionFlags command)
{
    if (!m_selectionModel || !m_model || rect.isNull() || d_ptr->selectDragged(rect, command))
        return;
    const int top = std::min(rect.top(), rect.bottom());
    const int bottom = std::max(rect.top(), rect.bottom());
    int left = std::min(rect.left(), rect.right());
    int right = std::max(rect.left(), rect.right());
    if (isRightToLeft())
        std::swap(left, right);
    const QModelIndex topLeft = d_ptr->anchor->cornerAt(QPoint(left, top));
    const QModelIndex bottomRight = d_ptr->anchor->cornerAt(QPoint(right, bottom));

    if (!topLeft.isValid() && !bottomRight.isValid()) {
        if (command & QItemSelectionModel::Clear)
            m_selectionModel->clear();
    } else if (!topLeft.isValid()) {
        // Deliberate: a rubber band that leaves the rows selects nothing.
        qWarning("TODO: !topLeft.isValid()");
    } else if (!bottomRight.isValid()) {
        qWarning("TODO: !bottomRight.isValid()");
    } else if ((m_model->flags(topLeft) & Qt::ItemIsEnabled)
               && (m_model->flags(bottomRight) & Qt::ItemIsEnabled)) {
        m_selectionModel->select(
            d_ptr->anchor->range(topLeft, bottomRight, d_ptr->selectsVisualRanges), command);
    }
}

QRegion QTableFastView::visualRegionForSelection(const QItemSelection &selection) const
{
    QRegion region;
    const QRect area = viewport()->rect();
    const RowScale scale = d_ptr->scale();
    const HeaderColumns columns = d_ptr->columns();
    for (const QItemSelectionRange &range : selection) {
        if (!range.isValid() || range.model() != m_model)
            continue;
        const int top = scale.top(range.top());
        const int bottom = scale.top(range.bottom()) + m_itemHeight - 1;
        if (top > area.bottom() || bottom < area.top())
            continue;
        const QRect span = columns.span(range.left(), range.right(), area.height());
        region += QRect(QPoint(span.left(), top), QPoint(span.right(), bottom)) & area;
    }
    return region;
}

void QTableFastView::selectionChanged(const QItemSelection &selected,
                                      const QItemSelection &deselected)
{
    d_ptr->repaintSelection(selected);
    d_ptr->repaintSelection(deselected);
}

void QTableFastViewPrivate::repaintSelection(const QItemSelection &selection)
{
    if (selection.isEmpty() || !q_ptr->m_model)
        return;
    noticeUntoldRows();
    buffer->selectionChanged(selection);
    QRegion region = q_ptr->visualRegionForSelection(selection);

    // The whole row looks selected when its cell in column 0 is.
    const int lastColumn = q_ptr->m_model->columnCount() - 1;
    for (const QItemSelectionRange &range : selection) {
        if (range.left() > 0 || range.right() >= lastColumn || !range.isValid())
            continue;
        buffer->rowsChanged(range.top(), range.bottom());
        region +=
            rowStrip(range.top()).united(rowStrip(range.bottom())) & q_ptr->viewport()->rect();
    }
    pixels->update(region);
}

void QTableFastView::currentChanged(const QModelIndex &current, const QModelIndex &previous)
{
    d_ptr->edges->currentChanged();
    d_ptr->baseCurrentChanged(current, previous);
    // Rows, not cells: the column of the index may be hidden.
    if (previous.isValid())
        d_ptr->updateRowStrip(previous.row());
    if (current.isValid())
        d_ptr->updateRowStrip(current.row());
}
