// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef VIEWPICTURES_H
#define VIEWPICTURES_H

#include <QAbstractItemView>
#include <QBackingStore>
#include <QCoreApplication>
#include <QImage>

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

#endif // VIEWPICTURES_H
