// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

// The members of QTableFastView about where rows are, and how high.

#include "qtablefastview.h"
#include "tableparts_p.h"

#include "rowheight_p.h"

#include <QHeaderView>
#include <QScrollBar>
#include <QStyleOptionViewItem>

#include <algorithm>

// Row geometry

int QTableFastViewPrivate::rowCount() const
{
    return q_ptr->m_model ? q_ptr->m_model->rowCount(QModelIndex()) : 0;
}

bool QTableFastViewPrivate::isPerPixel() const
{
    return q_ptr->verticalScrollMode() == QAbstractItemView::ScrollPerPixel;
}

RowScale QTableFastViewPrivate::scale() const
{
    return {q_ptr->m_itemHeight, q_ptr->verticalScrollBar()->value(), isPerPixel()};
}

RowGeometry QTableFastViewPrivate::rows() const
{
    return {scale(), rowCount(), q_ptr->viewport()->height()};
}

QRect QTableFastViewPrivate::rowStrip(int row) const
{
    return {0, q_ptr->coordinateForItem(row), q_ptr->viewport()->width(), q_ptr->m_itemHeight};
}

void QTableFastViewPrivate::updateRowStrip(int row)
{
    pixels->update(rowStrip(row));
}

int QTableFastView::rowAt(int y) const
{
    return itemAtCoordinate(y);
}

int QTableFastView::rowViewportPosition(int row) const
{
    return row >= 0 && row < d_ptr->rowCount() ? coordinateForItem(row) : -1;
}

int QTableFastView::itemAtCoordinate(int y) const
{
    return d_ptr->scale().rowAt(y, d_ptr->rowCount());
}

int QTableFastView::coordinateForItem(int row) const
{
    return d_ptr->scale().top(row);
}

int QTableFastView::getFirstVisibleItem(int *offset) const
{
    return m_model ? d_ptr->scale().firstRow(d_ptr->rowCount(), offset) : -1;
}

QModelIndex QTableFastView::indexAt(const QPoint &p) const
{
    const int row = itemAtCoordinate(p.y());
    const int column = m_header ? m_header->logicalIndexAt(p.x()) : -1;
    return row == -1 || column == -1 ? QModelIndex() : m_model->index(row, column);
}

QRect QTableFastView::visualRect(const QModelIndex &index) const
{
    if (!index.isValid() || index.model() != m_model || isIndexHidden(index))
        return {};
    const int column = index.column();
    return {columnViewportPosition(column), coordinateForItem(index.row()), columnWidth(column),
            m_itemHeight};
}

bool QTableFastView::isIndexHidden(const QModelIndex &index) const
{
    // Deliberate: an index out of range does not count as hidden.
    if (!m_model || !m_header || index.row() >= d_ptr->rowCount()
        || index.column() >= m_model->columnCount()) {
        return false;
    }
    return m_header->isSectionHidden(index.column());
}

int QTableFastView::horizontalOffset() const
{
    return m_header ? m_header->offset() : 0;
}

int QTableFastView::verticalOffset() const
{
    return verticalScrollBar()->value();
}

// Row height

int QTableFastView::updatedItemHeight(const QStyleOptionViewItem &option) const
{
    return neededRowHeight(*this, m_model, option);
}

void QTableFastView::updateItemHeight()
{
    QStyleOptionViewItem option;
    if (d_ptr->rowHeightFollowsFont)
        initViewItemOption(&option); // the view's font and style sheet, too
    else
        option.initFrom(this);
    const int height =
        d_ptr->fixedRowHeight > 0 ? d_ptr->fixedRowHeight : updatedItemHeight(option);
    if (height == m_itemHeight)
        return;
    const int top = d_ptr->scale().topRow();
    QScrollBar *bar = verticalScrollBar();
    const bool isAtEnd = bar->value() == bar->maximum() && bar->maximum() > bar->minimum();
    m_itemHeight = height;
    d_ptr->buffer->clear();
    updateScrollBars(0);
    if (isAtEnd)
        bar->setValue(bar->maximum());
    else if (d_ptr->isPerPixel())
        bar->setValue(d_ptr->scale().valueOfTopRow(top));
    d_ptr->pixels->update();
    d_ptr->placeEditors();
    emit rowHeightChanged();
}

int QTableFastView::rowHeight() const
{
    return m_itemHeight;
}

int QTableFastView::rowHeight(int row) const
{
    return row >= 0 && row < d_ptr->rowCount() ? m_itemHeight : 0;
}

void QTableFastView::setRowHeight(int height)
{
    d_ptr->fixedRowHeight = std::clamp(height, 0, QWIDGETSIZE_MAX);
    updateItemHeight();
}

void QTableFastView::resetRowHeight()
{
    setRowHeight(0);
}

bool QTableFastView::rowHeightFollowsFont() const
{
    return d_ptr->rowHeightFollowsFont;
}

void QTableFastView::setRowHeightFollowsFont(bool on)
{
    if (on == d_ptr->rowHeightFollowsFont)
        return;
    d_ptr->rowHeightFollowsFont = on;
    updateItemHeight();
}

int QTableFastView::pageUp(int row) const
{
    return d_ptr->rows().pageUp(row);
}

int QTableFastView::pageDown(int row) const
{
    return d_ptr->rows().pageDown(row);
}
