// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef PIXMAPCACHEINDEXED_H
#define PIXMAPCACHEINDEXED_H

#include "vantixglobal.h"

#include <QList>
#include <QMap>
#include <QObject>

#include <limits>
#include <utility>

class QItemSelection;
class QPixmap;

/*!
 * \brief Painted table cells, kept by row and column.
 *
 * The cache is a plain container: it never paints and never asks a model
 * anything. Its user tells it which part of the table is visible and which rows
 * came, went or moved; the pixmaps then follow their rows or are dropped.
 * Nothing is evicted by size or age.
 *
 * Rows and columns are those of the model, counted from 0. A key's row is not
 * always the model's: an insertion above everything that is cached may be
 * remembered as an offset instead of changing keys. While the offset is not 0,
 * pixmap() adds it, insertPixmap() subtracts it, clearRows() ignores it, and the
 * operations on ranges of rows take it into account. Call rebase() before the
 * first three.
 *
 * GUI thread only.
 *
 * \since 0.2
 */
class VANTIX_EXPORT PixmapCacheIndexed : public QObject
{
    Q_OBJECT

    static constexpr int s_unbounded = std::numeric_limits<int>::max();

public:
    //! The visible area, edges included.
    struct VisibleBounds
    {
        int rowFirst = 0;          //!< of the view's rows
        int rowLast = s_unbounded; //!< of the view's rows
        int colFirst = 0;          //!< from the left
        int colLast = s_unbounded; //!< from the left

        //! Whether all edges are equal.
        friend bool operator==(const VisibleBounds &a, const VisibleBounds &b) = default;
    };

    //! (row key, column) to pixmap, rows ascending, then columns.
    using PaintBufferType = QMap<std::pair<int, int>, QPixmap *>;

    //! An empty cache with unbounded visible bounds; \a parent as in QObject.
    explicit PixmapCacheIndexed(QObject *parent);
    //! Deletes every pixmap.
    ~PixmapCacheIndexed() override;

    //! The pixmap of a cell, or null if there is none. The cache keeps it.
    //! O(log n) in the cached cells.
    QPixmap *pixmap(int row, int column) const;

    //! Takes \a pixmapInsert as the picture of a cell and deletes the pixmap
    //! that pixmap() returns for it. A negative \a row or \a column or a null
    //! pixmap is ignored; the pixmap then stays the caller's. Never insert a
    //! pixmap that the cache already holds.
    void insertPixmap(int row, int column, QPixmap *pixmapInsert);

    //! Deletes every pixmap; the bounds and the row offset stay.
    void clear();

    //! Deletes the pixmaps of a rectangle of cells, edges included. −1 as
    //! \a rowLast or \a colLast means no upper limit.
    void clear(int rowFirst, int rowLast, int colFirst, int colLast);

    //! Deletes the pixmaps of the cells of \a selection. Ranges with an invalid
    //! corner are skipped.
    void clear(const QItemSelection &selection);

    //! Deletes the pixmaps of \a rows as far as these lie within the visible
    //! rows. Compares row keys as they are, without the offset.
    void clearRows(const QList<int> &rows);

    //! Deletes the pixmaps of \a columns as far as these lie within the visible
    //! columns.
    void clearColumns(const QList<int> &columns);

    //! Deletes the pixmaps outside a rectangle of cells. −1 as any of the four
    //! means no limit on that side. O(log n) when nothing can be outside.
    void clearExcluded(int rowFirst, int rowLast, int colFirst, int colLast);

    //! Rows \a first to \a last were inserted: cached rows from \a first on move
    //! down. Nothing happens when all of it is below the visible rows.
    void indexInsert(int first, int last);

    //! Rows \a first to \a last were removed: their pixmaps are deleted, the
    //! rows below move up. Nothing happens when all of it is below the visible rows.
    void indexRemove(int first, int last);

    //! Rows \a start to \a end were moved so that the block now begins at row
    //! \a destination. A move onto itself drops the pixmaps concerned.
    void indexMove(int start, int end, int destination);

    //! The visible area as last set.
    VisibleBounds visibleBounds() const
    {
        return {m_indexRowFirst, m_indexRowLast, m_indexColFirst, m_indexColLast};
    }

    //! Makes the visible area unbounded; deletes nothing.
    void invalidateVisibleBounds();

    //! Sets the visible area, edges included, and deletes what is outside.
    //! Ignored when any argument is negative or nothing changes.
    void setVisibleBounds(int rowFirst, int rowLast, int colFirst, int colLast);

    //! Sets one edge of the visible area and deletes what a smaller area leaves
    //! outside. A negative \a index is ignored.
    //! @{
    void setRowFirstVisibleBound(int index);
    void setRowLastVisibleBound(int index);
    void setColFirstVisibleBound(int index);
    void setColLastVisibleBound(int index);
    //! @}

    //! Gives every pixmap the key of its model row and sets the row offset to 0.
    //! O(n) when the offset is not 0, else free.
    void rebase();

    //! Copies pixmaps (implicitly shared), bounds, offset and counter. The
    //! pixmaps held before are dropped without being deleted: call clear() first
    //! where they are the cache's own.
    PixmapCacheIndexed &operator=(const PixmapCacheIndexed &other);

private:
    static void deletePixmap(QPixmap *pixmap);
    PaintBufferType::iterator remove(PaintBufferType::iterator it);
    PaintBufferType::iterator firstFromRow(int row);
    bool mayExclude(int rowFirst, int rowLast, int colFirst, int colLast) const;
    void shiftRowsFrom(PaintBufferType::iterator from, int count);
    void takeRows(PaintBufferType::iterator *from, int lastRow, int shift, PaintBufferType *taken);
    void merge(const PaintBufferType &moved);

    PaintBufferType m_paintBuffer;        //!< the pixmaps, owned
    int m_paintBufferModifierCounter = 0; //!< for users; only copied here
    int m_rowOffset = 0;                  //!< model row − row key
    int m_indexRowFirst = 0;              //!< first visible row
    int m_indexRowLast = s_unbounded;     //!< last visible row
    int m_indexColFirst = 0;              //!< first visible column
    int m_indexColLast = s_unbounded;     //!< last visible column
    int m_colMin = s_unbounded;           //!< no cached column is smaller
    int m_colMax = -1;                    //!< no cached column is larger
};

#endif // PIXMAPCACHEINDEXED_H
