// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

// The members of QTableFastView about its scroll bars.

#include "qtablefastview.h"
#include "tableparts_p.h"

#include <QCoreApplication>
#include <QHeaderView>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QWheelEvent>

#include <algorithm>
#include <cstdlib>

// Scroll bars

void QTableFastView::updateScrollBars(int delta)
{
    updateVScrollBar(delta);
    updateHScrollBar();
    d_ptr->noticeContentSize();
}

void QTableFastView::updateVScrollBar(int delta)
{
    // Amid a change of rows, the value and the row count do not belong together.
    if (!m_model || d_ptr->changes->isAmid())
        return;
    QScrollBar *bar = verticalScrollBar();
    const RowGeometry rows = d_ptr->rows();
    {
        const QSignalBlocker quiet(bar);
        bar->setSingleStep(rows.singleStep());
        bar->setPageStep(rows.pageStep());
    }
    const qint64 value = qint64(rows.value) + (rows.isPerPixel ? 0 : delta);
    const quint64 serial = d_ptr->changes->serial();
    bar->setRange(0, rows.maximum());
    if (serial == d_ptr->changes->serial()) // else rows were fetched, and the value is theirs
        bar->setValue(saturated(value));
    d_ptr->fetchIfEndIsSeen();
    if (d_ptr->shownScrollMode == verticalScrollMode())
        return;
    d_ptr->shownScrollMode = verticalScrollMode(); // the value counts something else now
    d_ptr->pixels->update();
    d_ptr->placeEditors();
}

void QTableFastView::updateHScrollBar()
{
    if (!m_model || !m_header)
        return;
    d_ptr->columnScroll().setRange(viewport()->width(), maximumViewportSize().width());
    // A value that stayed may stand for another offset now.
    if (d_ptr->columnScroll().apply() != 0) {
        d_ptr->pixels->update();
        d_ptr->placeEditors();
    }
}

QuietBar QTableFastViewPrivate::quietBar() const
{
    return {q_ptr->verticalScrollBar(), &q_ptr->blockScroll};
}

//! Has the bar know of rows that came or went, and nobody else.
void QTableFastViewPrivate::setRangeQuietly(int maximum)
{
    noticeContentSize();
    quietBar().setMaximum(std::max(maximum, 0));
}

void QTableFastView::verScrollbarValueChanged(int /*value*/)
{
    if (m_usePixmapCacheIndexed)
        setPixmapCacheIndexedVisibleBounds();
}

void QTableFastView::horScrollbarValueChanged(int /*value*/)
{
    if (m_usePixmapCacheIndexed)
        setPixmapCacheIndexedVisibleBounds();
}

void QTableFastView::wheelEvent(QWheelEvent *event)
{
    const QPoint delta = event->angleDelta().isNull() ? event->pixelDelta() : event->angleDelta();
    if (delta.x() != 0)
        QCoreApplication::sendEvent(horizontalScrollBar(), event);
    if (delta.y() != 0)
        QCoreApplication::sendEvent(verticalScrollBar(), event);
}

// Scrolling

void QTableFastView::scrollTo(const QModelIndex &index, ScrollHint hint)
{
    if (!index.isValid() || index.model() != m_model || !m_header)
        return;
    const QRect cell(columnViewportPosition(index.column()), coordinateForItem(index.row()),
                     columnWidth(index.column()), m_itemHeight);
    QScrollBar *bar = verticalScrollBar();
    if (d_ptr->isPerPixel() && hint == EnsureVisible && viewport()->rect().contains(cell))
        d_ptr->pixels->update(cell);
    else if (!d_ptr->isPerPixel() || !cell.isEmpty())
        bar->setValue(saturated(d_ptr->rows().valueFor(index.row(), hint, bar->pageStep())));

    const int width = viewport()->width();
    const int position = m_header->sectionPosition(index.column());
    const int size = m_header->sectionSize(index.column());
    if (hint == PositionAtCenter) {
        d_ptr->columnScroll().scrollTo(position - (width - size) / 2);
        return;
    }
    const int left = position - m_header->offset();
    if (size > width || left < 0)
        d_ptr->columnScroll().scrollTo(position - frozenColumnWidth());
    else if (left + size > width)
        d_ptr->columnScroll().scrollTo(position - width + size);
}

void QTableFastView::scrollToRow(const QModelIndex &index, ScrollHint hint)
{
    const int value = horizontalScrollBar()->value();
    scrollTo(index, hint);
    horizontalScrollBar()->setValue(value);
}

void QTableFastView::scrollContentsBy(int dx, int dy)
{
    if (blockScroll || !m_model || !m_header)
        return;
    const int moved = dx == 0 ? 0 : d_ptr->columnScroll().apply();
    const int columnPixels = isRightToLeft() ? -moved : moved;
    const RowGeometry rows = d_ptr->rows();
    if (rows.rows == 0)
        return;
    if (rows.page() < std::abs(qint64(dy))) {
        verticalScrollBar()->update();
        d_ptr->pixels->update();
        d_ptr->placeEditors();
        return;
    }
    if (columnPixels != 0 && !d_ptr->shownColumns->followScroll(d_ptr->seenColumns(), columnPixels))
        d_ptr->pixels->update();
    if (!d_ptr->pixels->moveAll(columnPixels, rows.scrolledPixels(dy)))
        d_ptr->placeEditors();
}

//! Moves what the insertion of rows moves; the new rows get painted.
void QTableFastViewPrivate::movePixels(const RowShift &shift)
{
    if (!shift.isAboveMoved && !shift.isBelowMoved)
        return;
    if (!pixels->canMoveAgain()) {
        pixels->update();
        placeEditors();
        return;
    }
    if (shift.isAboveMoved)
        pixels->moveRows(0, shift.seam, shift.above);
    if (shift.isBelowMoved)
        pixels->moveRows(shift.seam, q_ptr->viewport()->height(), shift.below);
}
