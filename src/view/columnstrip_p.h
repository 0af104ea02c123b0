// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef COLUMNSTRIP_P_H
#define COLUMNSTRIP_P_H

#include <QList>
#include <QStyleOptionViewItem>

//! A column on screen.
struct ColumnSlot
{
    int column; //!< logical index
    int x;      //!< left edge, viewport pixels
    int width;  //!< logical pixels
    QStyleOptionViewItem::ViewItemPosition position;

    friend bool operator==(const ColumnSlot &a, const ColumnSlot &b) = default;
};

//! The columns on screen in visual order.
using ColumnStrip = QList<ColumnSlot>;

//! Whether two strips have the same columns in the same places.
bool haveSamePlaces(const ColumnStrip &a, const ColumnStrip &b);

//! \a strip after all columns moved by \a dx pixels.
ColumnStrip scrolled(ColumnStrip strip, int dx);

//! \a strip after \a column grew by \a delta pixels and pushed those after it, which are at
//! its left if \a isRightToLeft.
ColumnStrip resized(ColumnStrip strip, int column, int delta, bool isRightToLeft);

//! Whether \a moved, of which pixels between \a from and \a to (exclusive) are not painted
//! yet, shows the columns \a wanted in a viewport of \a width pixels.
bool shows(const ColumnStrip &moved, const ColumnStrip &wanted, int width, int from, int to);

#endif // COLUMNSTRIP_P_H
