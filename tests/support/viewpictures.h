// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef VIEWPICTURES_H
#define VIEWPICTURES_H

#include <QAbstractItemView>
#include <QBackingStore>
#include <QCoreApplication>
#include <QImage>

#include <cstdlib>

//! Lets everything happen that is to happen, layouts and paints included.
inline void settleEvents()
{
    for (int i = 0; i < 3; ++i) {
        QCoreApplication::sendPostedEvents();
        QCoreApplication::processEvents();
    }
}

//! What the window holds of a view's viewport, which nothing else may lie over.
inline QImage maintainedPicture(const QAbstractItemView &view)
{
    const QWidget *viewport = view.viewport();
    const auto *image = static_cast<const QImage *>(view.window()->backingStore()->paintDevice());
    const double ratio = image->devicePixelRatio();
    const QPoint place = viewport->mapTo(view.window(), QPoint(0, 0));
    return image->copy(
        QRect((QPointF(place) * ratio).toPoint(), (QSizeF(viewport->size()) * ratio).toSize()));
}

//! What painting all of the viewport now gives.
inline QImage freshPicture(const QAbstractItemView &view)
{
    return view.viewport()->grab().toImage();
}

//! Whether two colours are the same but for rounding.
inline bool isSameColor(QRgb a, QRgb b)
{
    return std::abs(qRed(a) - qRed(b)) <= 2 && std::abs(qGreen(a) - qGreen(b)) <= 2
        && std::abs(qBlue(a) - qBlue(b)) <= 2;
}

//! Whether two pictures are the same but for the rounding of colours in gradients, which
//! depends on what is painted along with a pixel.
inline bool isSamePicture(const QImage &a, const QImage &b)
{
    if (a == b)
        return true;
    if (a.size() != b.size())
        return false;
    for (int y = 0; y < a.height(); ++y) {
        for (int x = 0; x < a.width(); ++x) {
            if (!isSameColor(a.pixel(x, y), b.pixel(x, y)))
                return false;
        }
    }
    return true;
}

#endif // VIEWPICTURES_H
