// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef SHOWNCOLUMNS_P_H
#define SHOWNCOLUMNS_P_H

#include "celllook_p.h"
#include "columnstrip_p.h"

class QTableFastView;

/*!
 * \brief Where columns are on screen, which is not always where the header has them.
 *
 * A header tells of its sections before all of them have their places, and of some changes
 * not at all. Pixels may be moved only if what they show then is what the header has.
 */
class ShownColumns
{
public:
    //! \a view must outlive it.
    explicit ShownColumns(QTableFastView *view)
        : m_view(view)
    {
    }

    //! All of \a columns were painted, or will be.
    void set(const ColumnStrip &columns) { m_columns = columns; }
    //! Whether \a columns are on screen as they would be painted.
    bool areAs(const ColumnStrip &columns) const;

    //! Take the columns on screen for \a wanted after all of them moved by \a dx pixels, or one
    //! grew by \a delta; columns that have another neighbour on screen then are painted. False
    //! if they are not those.
    //! @{
    bool followScroll(const ColumnStrip &wanted, int dx);
    bool followResize(const ColumnStrip &wanted, int column, int delta);
    //! @}

    //! Whether a style sheet paints.
    bool hasSheet() const;
    //! What a column looks like as a whole, as far as the view decides.
    ColumnLook look(const ColumnSlot &slot, bool hasSheet) const;

private:
    bool follow(const ColumnStrip &moved, const ColumnStrip &wanted, int from, int to);
    bool showsPosition(int column, bool hasSheet) const;

    QTableFastView *m_view;
    ColumnStrip m_columns;
};

#endif // SHOWNCOLUMNS_P_H
