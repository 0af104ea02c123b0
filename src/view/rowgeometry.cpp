// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "rowgeometry_p.h"

int RowGeometry::pageUp(int row) const
{
    return std::max(rowAt(top(row) - viewportHeight), 0);
}

int RowGeometry::pageDown(int row) const
{
    const int target = rowAt(top(row) + viewportHeight);
    return target == -1 ? rows - 1 : target;
}

int RowGeometry::maximum() const
{
    if (!isPerPixel)
        return rows - std::max(wholeRows(), 1);
    return saturated(qint64(rowHeight) * rows - viewportHeight);
}

int RowGeometry::singleStep() const
{
    return isPerPixel ? std::max(viewportHeight / (wholeRows() + 1), 2) : 1;
}

int RowGeometry::pageStep() const
{
    return isPerPixel ? viewportHeight : std::max(wholeRows(), 1);
}

int RowGeometry::page() const
{
    const int pageRows = std::min(viewportHeight / rowHeight, rows);
    return isPerPixel ? pageRows * rowHeight : pageRows;
}

qint64 RowGeometry::valueFor(int row, QAbstractItemView::ScrollHint hint, int pageStep) const
{
    return isPerPixel ? valueForPixel(row, hint) : valueForItem(row, hint, pageStep);
}

qint64 RowGeometry::valueForItem(int row, QAbstractItemView::ScrollHint hint, int pageStep) const
{
    const bool isEnsureVisible = hint == QAbstractItemView::EnsureVisible;
    if (hint == QAbstractItemView::PositionAtTop || (isEnsureVisible && row < value))
        return row;
    if (isEnsureVisible && row < qint64(value) + pageStep)
        return value;
    const bool isCentred = hint == QAbstractItemView::PositionAtCenter;
    return topRowAbove(row, isCentred ? viewportHeight / 2 + rowHeight - 1 : viewportHeight);
}

//! The lowest top row that shows all of \a row within \a budget pixels; −1 when that would
//! be above row 0.
qint64 RowGeometry::topRowAbove(int row, int budget) const
{
    if (budget <= rowHeight)
        return row;
    const int rowsAbove = (budget - rowHeight) / rowHeight;
    return row > rowsAbove ? row - rowsAbove : -1;
}

qint64 RowGeometry::valueForPixel(int row, QAbstractItemView::ScrollHint hint) const
{
    const qint64 first = qint64(row) * rowHeight - value;
    const qint64 last = first + rowHeight - 1;
    switch (hint) {
    case QAbstractItemView::PositionAtTop:
        return value + first;
    case QAbstractItemView::PositionAtBottom:
        return value + last - viewportHeight;
    case QAbstractItemView::PositionAtCenter:
        return value + first - (viewportHeight - rowHeight) / 2;
    case QAbstractItemView::EnsureVisible:
        break;
    }
    if (first < 0)
        return value + first;
    if (last < viewportHeight)
        return value;
    if (rowHeight < viewportHeight)
        return value + last - viewportHeight;
    return rowHeight > viewportHeight ? value + first : value;
}

int RowGeometry::scrolledPixels(int dy) const
{
    if (dy == 0 || isPerPixel)
        return dy;
    const qint64 previous = qint64(value) + dy;
    const qint64 moved = std::min<qint64>(previous, rows) - std::min(value, rows);
    return int(moved * rowHeight);
}

RowShift RowGeometry::insertion(qint64 oldTop, int start, int count) const
{
    RowShift shift;
    const qint64 seam = oldTop + qint64(start) * rowHeight;
    shift.seam = int(std::clamp<qint64>(seam, 0, viewportHeight));
    shift.above = contentTop() - oldTop;
    shift.below = shift.above + qint64(count) * rowHeight;
    shift.isAboveMoved = shift.seam > 0 && shift.above != 0;
    shift.isBelowMoved = shift.seam < viewportHeight && shift.below != 0;
    return shift;
}

int RowGeometry::topRowShift(int start, int end, int row) const
{
    const int count = end - start + 1;
    const int first = topRow();
    if (first >= start && first <= end)
        return start < row ? count : -count;
    if (first < start && first >= row)
        return count;
    return first > start && first < row ? -count : 0;
}
