// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef ROWGEOMETRY_P_H
#define ROWGEOMETRY_P_H

#include <QAbstractItemView>

#include <algorithm>
#include <limits>

// Which rows are where: arithmetic on the height that all of them have. Products are
// computed in 64 bits and saturated; all pixels are logical ones of the viewport.

//! The nearest int.
inline int saturated(qint64 value)
{
    return int(std::clamp<qint64>(value, std::numeric_limits<int>::min(),
                                  std::numeric_limits<int>::max()));
}

//! Rounds toward minus infinity: y == −1 belongs to the row above.
template<typename T> T floorDiv(T y, T height)
{
    return y >= 0 ? y / height : (y + 1 - height) / height;
}

//! Where rows are, however many there are.
struct RowScale
{
    //! Positions of rows saturate here, so that a rectangle's far edge stays an int too.
    static constexpr qint64 farAway = qint64(1) << 30;

    int rowHeight = 1;       //!< at least 1
    int value = 0;           //!< of the vertical scroll bar
    bool isPerPixel = false; //!< the bar counts pixels, else rows

    //! Top of row 0, not saturated.
    qint64 contentTop() const { return isPerPixel ? -qint64(value) : -qint64(value) * rowHeight; }
    //! The row at the top edge.
    int topRow() const { return isPerPixel ? value / rowHeight : value; }
    //! Top of \a row, saturated.
    int top(int row) const
    {
        return int(std::clamp(qint64(row) * rowHeight + contentTop(), -farAway, farAway));
    }
    //! The row at \a y, which may be any number.
    qint64 rowNear(int y) const
    {
        return isPerPixel ? (qint64(value) + y) / rowHeight
                          : qint64(floorDiv(std::max(y, -int(farAway)), rowHeight)) + value;
    }
    //! The row at \a y among \a rows, or −1.
    int rowAt(int y, int rows) const
    {
        if (rows == 0 || rowHeight < 1)
            return -1;
        const qint64 row = rowNear(y);
        return row < 0 || row >= rows ? -1 : int(row);
    }
    //! The first of \a rows rows on screen and the position of its top in \a offset if that is
    //! given; −1 without one.
    int firstRow(int rows, int *offset) const
    {
        if (offset)
            *offset = isPerPixel ? -(value % rowHeight) : 0;
        return isPerPixel || (value >= 0 && value < rows) ? topRow() : -1;
    }
    //! The value that \a rows rows more above the view make of this one.
    qint64 valueMovedBy(qint64 rows) const { return value + rows * (isPerPixel ? rowHeight : 1); }
    //! The value that has \a row at the top edge.
    int valueOfTopRow(int row) const
    {
        return isPerPixel ? saturated(qint64(row) * rowHeight) : row;
    }
};

//! What moves as rows are inserted: the rows above \a seam by \a above pixels, those below it
//! by \a below.
struct RowShift
{
    int seam = 0;
    qint64 above = 0;
    qint64 below = 0;
    bool isAboveMoved = false;
    bool isBelowMoved = false;
};

//! Where the rows of a table are in a viewport.
struct RowGeometry : RowScale
{
    int rows = 0;           //!< in the model
    int viewportHeight = 0; //!< pixels

    //! How many whole rows fit into the viewport.
    int wholeRows() const { return std::max(viewportHeight, 0) / rowHeight; }
    //! The row at the bottom edge, whether there is one or not.
    int lastSeenRow() const
    {
        return saturated(floorDiv<qint64>(qint64(viewportHeight) - 1 - contentTop(), rowHeight));
    }
    //! Whether any of the rows \a first to \a last is on screen.
    bool isSeen(int first, int last) const { return first <= lastSeenRow() && last >= topRow(); }

    //! The row at \a y, or −1.
    int rowAt(int y) const { return RowScale::rowAt(y, rows); }
    //! The same for the rows that there are.
    int firstRow(int *offset) const { return RowScale::firstRow(rows, offset); }
    //! The rows one viewport height above and below \a row, as far as there are any.
    //! @{
    int pageUp(int row) const;
    int pageDown(int row) const;
    //! @}

    //! The highest value of the bar; below 0 where all rows fit.
    int maximum() const;
    int singleStep() const;
    int pageStep() const;
    //! By how much the value may change for pixels to be worth moving.
    int page() const;
    //! The value that shows \a row as \a hint says; \a pageStep is that of the bar.
    qint64 valueFor(int row, QAbstractItemView::ScrollHint hint, int pageStep) const;

    //! Pixels that the rows moved when the value fell by \a dy to what it is. Rows beyond the
    //! last one have none.
    int scrolledPixels(int dy) const;
    //! What the insertion of \a count rows at \a start moved; \a oldTop was contentTop() before.
    RowShift insertion(qint64 oldTop, int start, int count) const;
    //! Rows by which the top row has to go on so that a move of the rows \a start to \a end to
    //! before \a row does not shift what is seen.
    int topRowShift(int start, int end, int row) const;

private:
    qint64 valueForItem(int row, QAbstractItemView::ScrollHint hint, int pageStep) const;
    qint64 valueForPixel(int row, QAbstractItemView::ScrollHint hint) const;
    qint64 topRowAbove(int row, int budget) const;
};

#endif // ROWGEOMETRY_P_H
