// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "paintbuffer_p.h"

#include "rowgeometry_p.h"

#include <QItemSelection>
#include <QPixmap>

#include <cstdlib>
#include <limits>
#include <utility>

//! What is covered, in rows as they are now.
PaintBuffer::Bounds PaintBuffer::bounds() const
{
    Bounds bounds = m_cache->visibleBounds();
    bounds.rowFirst = saturated(qint64(bounds.rowFirst) + m_shift);
    bounds.rowLast = saturated(qint64(bounds.rowLast) + m_shift);
    return bounds;
}

void PaintBuffer::setBounds(const Bounds &wanted)
{
    // The same rows are in view as before they moved: nothing can be outside.
    if (wanted == bounds())
        return;
    applyShift();
    m_cache->setVisibleBounds(wanted.rowFirst, wanted.rowLast, wanted.colFirst, wanted.colLast);
}

void PaintBuffer::dropOutside()
{
    if (m_shift != 0)
        return;
    const Bounds now = bounds();
    m_cache->clearExcluded(now.rowFirst, now.rowLast, now.colFirst, now.colLast);
}

//! Whether any of the rows may be kept.
bool PaintBuffer::covers(int rowFirst, int rowLast) const
{
    const Bounds now = bounds();
    return isOn() && rowFirst <= now.rowLast && rowLast >= now.rowFirst;
}

//! The cache with every key being its row.
PixmapCacheIndexed &PaintBuffer::plainCache()
{
    applyShift();
    m_cache->rebase();
    return *m_cache;
}

//! The cache for operations on ranges of rows, which know of its row offset.
PixmapCacheIndexed &PaintBuffer::shiftedCache()
{
    applyShift();
    return *m_cache;
}

//! Rows came (or, negative, went) above all that is kept. Only the sum matters, and only
//! when a cell is next asked for.
void PaintBuffer::shift(int count)
{
    const qint64 sum = qint64(m_shift) + count;
    if (std::abs(sum) > std::numeric_limits<int>::max() / 2)
        applyShift();
    m_shift += count;
}

void PaintBuffer::applyShift()
{
    if (m_shift == 0)
        return;
    const Bounds moved = bounds();
    const int shift = std::exchange(m_shift, 0);
    if (shift > 0)
        m_cache->indexInsert(0, shift - 1);
    else
        m_cache->indexRemove(0, -shift - 1);
    m_cache->setVisibleBounds(moved.rowFirst, moved.rowLast, moved.colFirst, moved.colLast);
}

void PaintBuffer::rowsInserted(int first, int last)
{
    if (!isOn())
        return;
    if (first <= bounds().rowFirst)
        shift(last - first + 1);
    else
        shiftedCache().indexInsert(first, last);
}

void PaintBuffer::rowsRemoved(int first, int last)
{
    if (!isOn())
        return;
    if (last < bounds().rowFirst)
        shift(first - last - 1);
    else
        shiftedCache().indexRemove(first, last);
}

void PaintBuffer::rowsMoved(int first, int last, int row)
{
    if (!isOn())
        return;
    // Without an offset: a move may put rows above it, which later removals would miss.
    plainCache().indexMove(first, last, row > last ? row - (last - first + 1) : row);
}

void PaintBuffer::rowsChanged(const QList<int> &rows)
{
    if (isOn())
        plainCache().clearRows(rows);
}

void PaintBuffer::cellsChanged(int rowFirst, int rowLast, int columnFirst, int columnLast)
{
    if (covers(rowFirst, rowLast))
        shiftedCache().clear(rowFirst, rowLast, columnFirst, columnLast);
}

void PaintBuffer::selectionChanged(const QItemSelection &selection)
{
    if (isOn())
        shiftedCache().clear(selection);
}

void PaintBuffer::columnsChanged(const QList<int> &columns)
{
    if (isOn())
        plainCache().clearColumns(columns);
}

void PaintBuffer::clear()
{
    m_cache->clear();
    applyShift();
}

bool PaintBuffer::noticeLook(const CellLook &look)
{
    if (look == m_look)
        return false;
    m_look = look;
    clear();
    return true;
}

void PaintBuffer::noticeColumn(int column, const ColumnLook &look)
{
    ColumnLook &known = m_columnLooks[column];
    if (look == known)
        return;
    known = look;
    plainCache().clearColumns({column});
}

void PaintBuffer::noticeRowDelegates(const QHash<int, DelegateMark> &delegates)
{
    if (delegates == m_rowDelegates)
        return;
    m_rowDelegates = delegates;
    clear();
}

void PaintBuffer::noticeCurrentRow(const QAbstractItemModel &model, int current, int editor)
{
    if (m_currentRow.row() == current && m_editorRow.row() == editor)
        return;
    plainCache().clearRows({m_currentRow.row(), m_editorRow.row(), current});
    m_currentRow = model.index(current, 0);
    m_editorRow = model.index(editor, 0);
}

const QPixmap *PaintBuffer::cell(int row, int column, QSize size) const
{
    const QPixmap *picture = m_cache->pixmap(row, column);
    return picture && picture->size() == size ? picture : nullptr;
}

void PaintBuffer::keep(int row, int column, QPixmap *picture)
{
    m_cache->insertPixmap(row, column, picture);
}
