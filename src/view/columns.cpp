// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

// The members of QTableFastView about columns: as the header has them, how wide they are, and
// sorting by them.

#include "qtablefastview.h"
#include "tableparts_p.h"

#include <QAbstractItemDelegate>
#include <QFontMetrics>
#include <QHeaderView>
#include <QScrollBar>

#include <algorithm>

// Columns, as the header has them

HeaderColumns QTableFastViewPrivate::columns() const
{
    return HeaderColumns(q_ptr->m_header);
}

//! The columns that are on screen, and where.
ColumnStrip QTableFastViewPrivate::seenColumns() const
{
    return columns().strip(q_ptr->startAndEndColumns(q_ptr->viewport()->rect()));
}

ColumnScroll QTableFastViewPrivate::columnScroll() const
{
    return {q_ptr->m_header, q_ptr->horizontalScrollBar(),
            q_ptr->horizontalScrollMode() == QAbstractItemView::ScrollPerItem};
}

bool QTableFastView::isColumnHidden(int column) const
{
    return m_header && m_header->isSectionHidden(column);
}

int QTableFastView::columnWidth(int column) const
{
    return m_header ? m_header->sectionSize(column) : 0;
}

int QTableFastView::columnViewportPosition(int column) const
{
    return m_header ? m_header->sectionViewportPosition(column) : -1;
}

void QTableFastView::hideColumn(int column)
{
    setColumnHidden(column, true);
}

void QTableFastView::showColumn(int column)
{
    setColumnHidden(column, false);
}

void QTableFastView::setColumnHidden(int column, bool hide)
{
    if (m_header && column >= 0 && column < m_header->count())
        m_header->setSectionHidden(column, hide);
}

void QTableFastView::setColumnWidth(int column, int width)
{
    if (m_header && column >= 0 && column < m_header->count() && width >= 0)
        m_header->resizeSection(column, width);
}

int QTableFastView::columnAt(int x) const
{
    return m_header ? m_header->logicalIndexAt(x) : -1;
}

int QTableFastView::frozenColumnWidth() const
{
    return 0;
}

QPair<int, int> QTableFastView::startAndEndColumns(const QRect &rect) const
{
    return d_ptr->columns().crossing(rect, isRightToLeft());
}

// Sorting

bool QTableFastView::isSortingEnabled() const
{
    return m_sortingEnabled;
}

void QTableFastView::setSortingEnabled(bool enable)
{
    if (m_header) {
        m_header->setSortIndicatorShown(enable);
        m_header->setSectionsClickable(enable);
        if (enable)
            sortByColumn(m_header->sortIndicatorSection(), m_header->sortIndicatorOrder());
        d_ptr->connections->connectSorting(m_header, enable);
    }
    m_sortingEnabled = enable;
}

void QTableFastView::sortByColumn(int column, Qt::SortOrder order)
{
    if (m_header)
        m_header->setSortIndicator(column, order);
    if (!m_sortingEnabled && m_model)
        m_model->sort(column, order);
}

void QTableFastView::sortByColumn(int column)
{
    sortByColumn(column, m_header ? m_header->sortIndicatorOrder() : Qt::AscendingOrder);
}

void QTableFastView::sortIndicatorChanged(int column, Qt::SortOrder order)
{
    if (m_model)
        m_model->sort(column, order);
}

// Columns

void QTableFastView::columnCountChanged(int /*oldCount*/, int /*newCount*/)
{
    adjustViewportMargins();
    updateScrollBars(0);
    d_ptr->buffer->clear();
    invalidateRegion(viewport()->rect());
    d_ptr->placeEditors();
}

//! Columns came, went or moved, or the header is another one.
void QTableFastViewPrivate::columnsChanged()
{
    buffer->forgetColumns();
    q_ptr->columnCountChanged(0, 0);
    q_ptr->updateGeometries();
}

void QTableFastViewPrivate::modelColumnsChanged(const QModelIndex &parent)
{
    if (!parent.isValid())
        columnsChanged();
}

void QTableFastView::updateColumn(int column)
{
    if (isColumnHidden(column))
        return;
    d_ptr->pixels->update(
        QRect(columnViewportPosition(column), 0, columnWidth(column), viewport()->height()));
}

void QTableFastView::columnResized(int column, int oldSize, int newSize)
{
    if (!m_header || m_header->isSectionHidden(column))
        return;
    const int oldOffset = m_header->offset();
    updateEditorGeometries();
    updateScrollBars(0);
    if (m_usePixmapCacheIndexed) {
        d_ptr->buffer->columnsChanged({column});
        setPixmapCacheIndexedVisibleBounds();
    }
    // Showing or hiding a column changes what its neighbours are painted as.
    const bool isShownOrHidden = oldSize == 0 || newSize == 0;
    if (isShownOrHidden)
        d_ptr->buffer->clear();
    if (isShownOrHidden || oldOffset != m_header->offset()
        || !d_ptr->shownColumns->followResize(d_ptr->seenColumns(), column, newSize - oldSize)
        || !d_ptr->pixels->canMoveAgain()) {
        d_ptr->pixels->update();
        d_ptr->placeEditors();
        return;
    }
    d_ptr->pixels->moveColumns(columnViewportPosition(column), columnWidth(column),
                               newSize - oldSize, isRightToLeft());
}

void QTableFastView::columnMoved(int logicalIndex, int oldVisualIndex, int newVisualIndex)
{
    if (!m_header)
        return;
    if (m_usePixmapCacheIndexed) {
        QList<int> columns {logicalIndex};
        // Deliberate: the logical neighbour, too.
        if (logicalIndex > 0)
            columns.append(logicalIndex - 1);
        for (int visual : {oldVisualIndex, newVisualIndex}) {
            if (visual - 1 > 0)
                columns.append(m_header->logicalIndex(visual - 1));
            if (visual + 1 < m_header->count())
                columns.append(m_header->logicalIndex(visual + 1));
        }
        d_ptr->buffer->columnsChanged(columns);
        setPixmapCacheIndexedVisibleBounds();
    }
    d_ptr->pixels->update();
    updateScrollBars(0);
    d_ptr->placeEditors();
}

int QTableFastView::sizeHintForColumn(int column) const
{
    if (!m_model)
        return -1;
    ensurePolished();
    const int first = std::max(itemAtCoordinate(0), 0);
    int last = itemAtCoordinate(viewport()->height());
    if (last == -1)
        last = d_ptr->rowCount() - 1;
    QStyleOptionViewItem option;
    initViewItemOption(&option);
    int width = 0;
    for (int row = first; row <= last; ++row) {
        const QModelIndex index = m_model->index(row, column);
        if (const QAbstractItemDelegate *delegate = itemDelegateForIndex(index))
            width = std::max(width, delegate->sizeHint(option, index).width());
    }
    return width + 1;
}

void QTableFastView::resizeColumnToContents(int column)
{
    if (!m_header || !m_model || column < 0 || column >= m_header->count())
        return;
    const Qt::Orientation orientation = m_header->orientation();
    const QFont font = m_model->headerData(column, orientation, Qt::FontRole).value<QFont>();
    const QString title = m_model->headerData(column, orientation, Qt::DisplayRole).toString();
    const int headerHint = m_header->isHidden() ? 0 : m_header->sectionSizeHint(column);
    m_header->resizeSection(column,
                            std::max({sizeHintForColumn(column), headerHint,
                                      QFontMetrics(font).horizontalAdvance(title)}));
}

void QTableFastView::resizeColumnsToContents()
{
    for (int column = 0; m_header && column < m_header->count(); ++column)
        resizeColumnToContents(column);
}
