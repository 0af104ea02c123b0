// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef HEADERCOLUMNS_P_H
#define HEADERCOLUMNS_P_H

#include "columnstrip_p.h"

#include <QList>
#include <QPair>
#include <QRect>

class QHeaderView;

/*!
 * \brief What is asked of a header about its columns.
 *
 * Columns are logical indexes unless they are called visual; pixels are logical ones of the
 * viewport. The header must not be null but for the functions that say so. Asking changes
 * nothing.
 */
class HeaderColumns
{
public:
    //! \a header may be null for the functions that allow it.
    explicit HeaderColumns(const QHeaderView *header)
        : m_header(header)
    {
    }

    //! First and last visual column across \a rect, in a view whose direction is told; (0, −1)
    //! without a header.
    QPair<int, int> crossing(const QRect &rect, bool isRightToLeft) const;
    //! Lowest and highest column of a visual range, which may be empty; without a header the
    //! range itself.
    QPair<int, int> bounds(QPair<int, int> visual) const;
    //! The non-hidden columns of a visual range.
    ColumnStrip strip(QPair<int, int> visual) const;
    //! Rectangle around the non-hidden ones of the columns \a left to \a right, \a height
    //! pixels high; null without any, or without a header.
    QRect span(int left, int right, int height) const;
    //! The columns that lie between two of them on screen, both included, in logical order.
    QList<int> between(int a, int b) const;

    //! The lowest column that is not hidden; −1 without any, or without a header.
    int first() const;
    //! The non-hidden column that comes first (\a step 1) or last (−1) on screen; −1 as above.
    int end(int step) const;
    //! The non-hidden column next to \a column, \a step (1 or −1) visual positions on; −1 as
    //! above.
    int neighbour(int column, int step) const;

private:
    int shownBefore(int visual) const;

    const QHeaderView *m_header;
};

#endif // HEADERCOLUMNS_P_H
