// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef PIXELMOVER_P_H
#define PIXELMOVER_P_H

#include <QRegion>

class QAbstractScrollArea;

/*!
 * \brief Repaints parts of a viewport, and moves its pixels where that is right.
 *
 * QWidget::scroll() moves what waits for repaint along with the pixels. That is right for
 * a part that was found wrong where the pixels were, and wrong for one that was found
 * where they will be: a model or header that changes several times tells the view of it
 * one after the other, when everything has changed already. What is pending is
 * therefore painted in both places.
 *
 * All lengths are logical pixels of the viewport. The scroll area must outlive it.
 */
class PixelMover
{
public:
    explicit PixelMover(QAbstractScrollArea *area)
        : m_area(area)
    {
    }

    //! Has everything painted.
    void update();
    //! Has a part painted; what of it is outside of the viewport is left out.
    void update(const QRegion &part);

    //! Whether pixels may be moved now. They may not where all will be painted anyway, or is,
    //! where device pixels do not fall on logical ones, or on a background that does not move
    //! along with cells.
    bool canMove() const;
    //! As canMove(), for a part, and counts: several moves before one paint cost more than the
    //! paint, and child widgets would be smeared by a move within a strip.
    bool canMoveAgain();

    //! Moves all pixels and child widgets by (\a dx, \a dy). Where pixels must not be moved,
    //! all is painted, and false is the answer: child widgets are where they were.
    bool moveAll(int dx, int dy);
    //! Moves the pixels between two y coordinates by \a dy within them, or has them painted.
    void moveRows(int top, int bottom, qint64 dy);
    //! Moves what comes after a column that begins at \a x and grew by \a delta to \a width;
    //! the column itself is painted. What comes after is at the left in right-to-left.
    void moveColumns(int x, int width, int delta, bool isRightToLeft);
    //! Moves the pixels of \a strip within it, or has it painted; child widgets stay.
    void moveStrip(int dx, int dy, const QRect &strip);

    //! \a region was painted.
    void painted(const QRegion &region);

private:
    void keepPending(const QRect &strip, int dx, int dy);

    QAbstractScrollArea *m_area;
    QRegion m_pending;           //!< to be painted, as far as known here
    bool m_isAllPending = false; //!< m_pending is the whole viewport
    int m_moves = 0;             //!< counted since the last paint
};

#endif // PIXELMOVER_P_H
