// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef PAINTBUFFER_P_H
#define PAINTBUFFER_P_H

#include "celllook_p.h"
#include "pixmapcacheindexed.h"

#include <QHash>
#include <QList>
#include <QPersistentModelIndex>
#include <QSize>

class QItemSelection;

/*!
 * \brief The pictures of cells that a view keeps, and why they are still right.
 *
 * A picture is that of a row and a column (logical) of the model. Whoever paints tells of
 * every change to rows and cells as it happens, and before each paint what cells look like
 * now; what does not look so any more is dropped. Rows that come and go above all that is
 * kept are counted only, so that a burst of them costs one re-keying.
 *
 * While it is off, what it is told of is not remembered but for the looks.
 */
class PaintBuffer
{
public:
    using Bounds = PixmapCacheIndexed::VisibleBounds;

    //! Keeps pictures in \a cache while \a isOn says so; both must outlive it.
    PaintBuffer(PixmapCacheIndexed *cache, const bool *isOn)
        : m_cache(cache)
        , m_isOn(isOn)
    {
    }

    bool isOn() const { return *m_isOn; }

    // What happened
    //! @{
    void rowsInserted(int first, int last);
    void rowsRemoved(int first, int last);
    //! The rows \a first to \a last were put before \a row.
    void rowsMoved(int first, int last, int row);
    void rowsChanged(int first, int last) { cellsChanged(first, last, -1, -1); }
    void rowsChanged(const QList<int> &rows);
    //! −1 for both columns stands for all of them.
    void cellsChanged(int rowFirst, int rowLast, int columnFirst, int columnLast);
    void selectionChanged(const QItemSelection &selection);
    void columnsChanged(const QList<int> &columns);
    //! Nothing is known any more.
    void clear();
    //! @}

    //! Takes the rows and columns that are in view; drops what is far from them.
    void setBounds(const Bounds &wanted);
    //! Drops what was pushed out of the bounds: changes there pass by.
    void dropOutside();

    // What cells look like now, before they are painted
    //! @{
    //! False if that is as before; else nothing is kept.
    bool noticeLook(const CellLook &look);
    void noticeColumn(int column, const ColumnLook &look);
    //! The delegates that rows in view have for themselves, by row.
    void noticeRowDelegates(const QHash<int, DelegateMark> &delegates);
    //! Rows of \a model, or −1: the current one, and it again if an editor there has the focus.
    void noticeCurrentRow(const QAbstractItemModel &model, int current, int editor);
    //! No column is known any more.
    void forgetColumns() { m_columnLooks.clear(); }
    //! @}

    //! Whether rows were seen to have delegates of their own, which stay when rows move.
    bool hasRowDelegates() const { return !m_rowDelegates.isEmpty(); }

    // Painting; ask for the first cell after all that was noticed
    //! @{
    //! Has cell() and keep() know rows by the numbers that they have now.
    void prepare() { plainCache(); }
    //! The picture of a cell that is \a size device pixels large, or null. It is valid until
    //! the next call.
    const QPixmap *cell(int row, int column, QSize size) const;
    //! Keeps \a picture, which becomes the buffer's.
    void keep(int row, int column, QPixmap *picture);
    //! @}

private:
    Bounds bounds() const;
    bool covers(int rowFirst, int rowLast) const;
    PixmapCacheIndexed &plainCache();
    PixmapCacheIndexed &shiftedCache();
    void shift(int count);
    void applyShift();

    PixmapCacheIndexed *m_cache;
    const bool *m_isOn;
    int m_shift = 0;                         //!< rows that all that is kept has still to move down
    CellLook m_look;                         //!< of what is kept and on screen
    QHash<int, ColumnLook> m_columnLooks;    //!< of the painted columns
    QHash<int, DelegateMark> m_rowDelegates; //!< of the painted rows that have one
    QPersistentModelIndex m_currentRow;      //!< kept with the look of the current row
    QPersistentModelIndex m_editorRow;       //!< the same of a focused editor's
};

#endif // PAINTBUFFER_P_H
