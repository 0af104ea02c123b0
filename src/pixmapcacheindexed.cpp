// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "pixmapcacheindexed.h"

#include <QItemSelection>
#include <QPixmap>

#include <algorithm>

namespace {

constexpr int lowestInt = std::numeric_limits<int>::min();
constexpr int largestInt = std::numeric_limits<int>::max();

int clampToInt(qint64 value)
{
    return int(std::clamp<qint64>(value, lowestInt, largestInt));
}

// −1 stands for "no limit" on either side.
bool isWithin(int value, int first, int last)
{
    return (first == -1 || value >= first) && (last == -1 || value <= last);
}

} // namespace

PixmapCacheIndexed::PixmapCacheIndexed(QObject *parent)
    : QObject(parent)
{
}

PixmapCacheIndexed::~PixmapCacheIndexed()
{
    clear();
}

QPixmap *PixmapCacheIndexed::pixmap(int row, int column) const
{
    return m_paintBuffer.value({clampToInt(qint64(row) + m_rowOffset), column}, nullptr);
}

void PixmapCacheIndexed::insertPixmap(int row, int column, QPixmap *pixmapInsert)
{
    if (row < 0 || column < 0 || !pixmapInsert)
        return;
    // Deliberate: the cell looked up is row + offset, the one stored row − offset.
    if (m_rowOffset != 0) {
        const auto seen = m_paintBuffer.find({clampToInt(qint64(row) + m_rowOffset), column});
        if (seen != m_paintBuffer.end())
            remove(seen);
    }
    QPixmap *&stored = m_paintBuffer[{clampToInt(qint64(row) - m_rowOffset), column}];
    deletePixmap(stored);
    stored = pixmapInsert;
    m_colMin = std::min(m_colMin, column);
    m_colMax = std::max(m_colMax, column);
}

void PixmapCacheIndexed::clear()
{
    qDeleteAll(m_paintBuffer);
    m_paintBuffer.clear();
    m_colMin = s_unbounded;
    m_colMax = -1;
}

void PixmapCacheIndexed::clear(int rowFirst, int rowLast, int colFirst, int colLast)
{
    if (m_paintBuffer.isEmpty())
        return;
    auto it = firstFromRow(rowFirst);
    while (it != m_paintBuffer.end()) {
        const auto [storedRow, column] = it.key();
        if (rowLast != -1 && qint64(storedRow) + m_rowOffset > rowLast)
            return;
        if (column >= colFirst && (colLast == -1 || column <= colLast))
            it = remove(it);
        else
            ++it;
    }
}

void PixmapCacheIndexed::clear(const QItemSelection &selection)
{
    if (m_paintBuffer.isEmpty())
        return;
    for (const QItemSelectionRange &range : selection) {
        // isValid() is the test of both corners, their parent and their order.
        if (range.isValid())
            clear(range.top(), range.bottom(), range.left(), range.right());
    }
}

void PixmapCacheIndexed::clearRows(const QList<int> &rows)
{
    for (int row : rows) {
        if (row < m_indexRowFirst || row > m_indexRowLast)
            continue;
        auto it = m_paintBuffer.lowerBound({row, lowestInt});
        while (it != m_paintBuffer.end() && it.key().first == row)
            it = remove(it);
    }
}

void PixmapCacheIndexed::clearColumns(const QList<int> &columns)
{
    QList<int> visible;
    for (int column : columns) {
        if (column >= m_indexColFirst && column <= m_indexColLast)
            visible.append(column);
    }
    if (visible.isEmpty())
        return;
    for (auto it = m_paintBuffer.begin(); it != m_paintBuffer.end();) {
        if (visible.contains(it.key().second))
            it = remove(it);
        else
            ++it;
    }
}

void PixmapCacheIndexed::clearExcluded(int rowFirst, int rowLast, int colFirst, int colLast)
{
    if (!mayExclude(rowFirst, rowLast, colFirst, colLast))
        return;
    for (auto it = m_paintBuffer.begin(); it != m_paintBuffer.end();) {
        const auto [storedRow, column] = it.key();
        const int row = clampToInt(qint64(storedRow) + m_rowOffset);
        if (isWithin(row, rowFirst, rowLast) && isWithin(column, colFirst, colLast))
            ++it;
        else
            it = remove(it);
    }
    m_colMin = std::max(m_colMin, colFirst);
    if (colLast != -1)
        m_colMax = std::min(m_colMax, colLast);
}

void PixmapCacheIndexed::indexInsert(int first, int last)
{
    if (m_indexRowLast < first || m_paintBuffer.isEmpty())
        return;
    const int count = clampToInt(qint64(last) - first + 1);
    if (m_rowOffset >= first) {
        m_rowOffset = clampToInt(qint64(m_rowOffset) + count);
        return;
    }
    shiftRowsFrom(firstFromRow(first), count);
}

void PixmapCacheIndexed::indexRemove(int first, int last)
{
    if (m_indexRowLast < first)
        return;
    const int count = clampToInt(qint64(last) - first + 1);
    const int oldOffset = m_rowOffset;
    if (last < oldOffset) {
        m_rowOffset = oldOffset - count;
        return;
    }

    auto it = firstFromRow(first);
    bool isShifted = false;
    if (first <= oldOffset) {
        isShifted = oldOffset - count >= 0;
        m_rowOffset = isShifted ? oldOffset - count : 0;
    }
    while (it != m_paintBuffer.end() && qint64(it.key().first) + oldOffset <= last)
        it = remove(it);
    if (!isShifted)
        shiftRowsFrom(it, oldOffset - m_rowOffset - count);
}

void PixmapCacheIndexed::indexMove(int start, int end, int destination)
{
    const int count = clampToInt(qint64(end) - start + 1);
    if (m_indexRowLast < std::min(start, destination))
        return;
    if (m_indexRowFirst > end && m_indexRowFirst > qint64(destination) + count)
        return;
    if (start == destination)
        return;
    if (start < destination && destination <= end) {
        clear(start, end, -1, -1);
        clear(destination, clampToInt(qint64(destination) + count - 1), -1, -1);
        return;
    }

    PaintBufferType block;
    PaintBufferType passed; // the rows that the block jumped over
    auto it = firstFromRow(start);
    takeRows(&it, end, destination - start, &block);
    if (destination > start) {
        takeRows(&it, clampToInt(qint64(destination) + count - 1), -count, &passed);
    } else {
        it = firstFromRow(destination);
        takeRows(&it, start - 1, count, &passed);
    }
    merge(block);
    merge(passed);
}

void PixmapCacheIndexed::invalidateVisibleBounds()
{
    m_indexRowFirst = 0;
    m_indexRowLast = s_unbounded;
    m_indexColFirst = 0;
    m_indexColLast = s_unbounded;
}

void PixmapCacheIndexed::setVisibleBounds(int rowFirst, int rowLast, int colFirst, int colLast)
{
    if (rowFirst == m_indexRowFirst && rowLast == m_indexRowLast && colFirst == m_indexColFirst
        && colLast == m_indexColLast) {
        return;
    }
    if (rowFirst < 0 || rowLast < 0 || colFirst < 0 || colLast < 0)
        return;
    clearExcluded(rowFirst, rowLast, colFirst, colLast);
    m_indexRowFirst = rowFirst;
    m_indexRowLast = rowLast;
    m_indexColFirst = colFirst;
    m_indexColLast = colLast;
}

void PixmapCacheIndexed::setRowFirstVisibleBound(int index)
{
    if (index < 0 || index == m_indexRowFirst)
        return;
    if (index > m_indexRowFirst)
        clear(0, index - 1, -1, -1);
    m_indexRowFirst = index;
}

void PixmapCacheIndexed::setRowLastVisibleBound(int index)
{
    if (index < 0 || index == m_indexRowLast)
        return;
    if (index < m_indexRowLast)
        clear(index + 1, m_indexRowLast, -1, -1);
    m_indexRowLast = index;
}

void PixmapCacheIndexed::setColFirstVisibleBound(int index)
{
    if (index < 0 || index == m_indexColFirst)
        return;
    if (index > m_indexColFirst)
        clear(-1, -1, 0, index - 1);
    m_indexColFirst = index;
}

void PixmapCacheIndexed::setColLastVisibleBound(int index)
{
    if (index < 0 || index == m_indexColLast)
        return;
    if (index < m_indexColLast)
        clear(-1, -1, index + 1, m_indexColLast);
    m_indexColLast = index;
}

void PixmapCacheIndexed::rebase()
{
    if (m_rowOffset == 0)
        return;
    const int offset = m_rowOffset;
    m_rowOffset = 0;
    shiftRowsFrom(m_paintBuffer.begin(), offset);
}

PixmapCacheIndexed &PixmapCacheIndexed::operator=(const PixmapCacheIndexed &other)
{
    if (this == &other)
        return *this;
    // Deliberate: the old pixmaps are left to whoever held them.
    m_paintBuffer.clear();
    for (auto it = other.m_paintBuffer.begin(); it != other.m_paintBuffer.end(); ++it)
        m_paintBuffer.insert(m_paintBuffer.cend(), it.key(), new QPixmap(*it.value()));
    m_paintBufferModifierCounter = other.m_paintBufferModifierCounter;
    m_rowOffset = other.m_rowOffset;
    m_indexRowFirst = other.m_indexRowFirst;
    m_indexRowLast = other.m_indexRowLast;
    m_indexColFirst = other.m_indexColFirst;
    m_indexColLast = other.m_indexColLast;
    m_colMin = other.m_colMin;
    m_colMax = other.m_colMax;
    return *this;
}

void PixmapCacheIndexed::deletePixmap(QPixmap *pixmap)
{
    delete pixmap;
}

//! Deletes an entry with its pixmap; returns the entry after it.
PixmapCacheIndexed::PaintBufferType::iterator
PixmapCacheIndexed::remove(PaintBufferType::iterator it)
{
    deletePixmap(it.value());
    return m_paintBuffer.erase(it);
}

//! The first entry whose model row is at least \a row.
PixmapCacheIndexed::PaintBufferType::iterator PixmapCacheIndexed::firstFromRow(int row)
{
    return m_paintBuffer.lowerBound({clampToInt(qint64(row) - m_rowOffset), lowestInt});
}

//! False when no entry can lie outside the rectangle. Rows are known from the
//! first and the last key, columns from what was ever inserted.
bool PixmapCacheIndexed::mayExclude(int rowFirst, int rowLast, int colFirst, int colLast) const
{
    if (m_paintBuffer.isEmpty())
        return false;
    const int top = clampToInt(qint64(m_paintBuffer.firstKey().first) + m_rowOffset);
    const int bottom = clampToInt(qint64(m_paintBuffer.lastKey().first) + m_rowOffset);
    return !isWithin(top, rowFirst, rowLast) || !isWithin(bottom, rowFirst, rowLast)
        || !isWithin(m_colMin, colFirst, colLast) || !isWithin(m_colMax, colFirst, colLast);
}

//! Adds \a count to the row key of \a from and of every entry after it.
//! Order does not change among these, so that each goes to the end of a map.
void PixmapCacheIndexed::shiftRowsFrom(PaintBufferType::iterator from, int count)
{
    if (count == 0 || from == m_paintBuffer.end())
        return;
    PaintBufferType shifted;
    if (from == m_paintBuffer.begin()) {
        shifted.swap(m_paintBuffer);
        from = shifted.begin();
        for (auto it = shifted.cbegin(); it != shifted.cend(); ++it) {
            const auto [row, column] = it.key();
            m_paintBuffer.insert(m_paintBuffer.cend(), {clampToInt(qint64(row) + count), column},
                                 it.value());
        }
        return;
    }
    while (from != m_paintBuffer.end()) {
        const auto [row, column] = from.key();
        shifted.insert(shifted.cend(), {clampToInt(qint64(row) + count), column}, from.value());
        from = m_paintBuffer.erase(from);
    }
    merge(shifted);
}

//! Moves the entries from \a from up to model row \a lastRow into \a taken,
//! \a shift rows on; \a from is then the entry after them.
void PixmapCacheIndexed::takeRows(PaintBufferType::iterator *from, int lastRow, int shift,
                                  PaintBufferType *taken)
{
    while (*from != m_paintBuffer.end() && qint64(from->key().first) + m_rowOffset <= lastRow) {
        const auto [row, column] = from->key();
        taken->insert(taken->cend(), {clampToInt(qint64(row) + shift), column}, from->value());
        *from = m_paintBuffer.erase(*from);
    }
}

//! Puts re-keyed entries back.
void PixmapCacheIndexed::merge(const PaintBufferType &moved)
{
    for (auto it = moved.cbegin(); it != moved.cend(); ++it)
        m_paintBuffer.insert(it.key(), it.value());
}
