// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef CANVAS_P_H
#define CANVAS_P_H

#include <QRect>

class QImage;
class QPainter;
class QPixmap;

/*!
 * \brief The image that a painter paints on, where pictures of it may be taken from.
 *
 * A cell that is painted where it is to be seen, and copied from there, takes half of what a
 * pixmap with a painter of its own does. It has to be seen whole: nothing of it may be
 * clipped.
 */
class Canvas
{
public:
    //! None, if \a painter does not paint whole device pixels of an opaque image, clips, or
    //! paints otherwise than one that begins on a picture with the layout \a direction.
    //! Valid until the painter is changed.
    Canvas(const QPainter &painter, Qt::LayoutDirection direction);

    //! Whether every pixel of \a rect, in the painter's coordinates, is painted.
    bool holds(const QRect &rect) const;
    //! What \a rect, which must be held, looks like now. The caller owns it.
    QPixmap *picture(const QRect &rect) const;

private:
    QRect devicePixels(const QRect &rect) const;

    const QImage *m_image = nullptr;
    QRect m_painted; //!< device pixels of the image; null if there is no image
    int m_ratio = 1; //!< device pixels for each unit of the painter
    QPoint m_origin; //!< of the painter, in device pixels
};

#endif // CANVAS_P_H
