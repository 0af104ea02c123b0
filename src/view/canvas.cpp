// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "canvas_p.h"

#include "pixels/background_p.h"

#include <QImage>
#include <QPaintEngine>
#include <QPainter>
#include <QPixmap>

#include <utility>

namespace {

//! Whether a painter that begins on a picture would paint the same as \a painter, all of it.
bool paintsPlainly(const QPainter &painter, Qt::LayoutDirection direction)
{
    return painter.layoutDirection() == direction
        && painter.renderHints() == QPainter::TextAntialiasing && !painter.hasClipping()
        && painter.opacity() == 1
        && painter.compositionMode() == QPainter::CompositionMode_SourceOver;
}

} // namespace

Canvas::Canvas(const QPainter &painter, Qt::LayoutDirection direction)
{
    const QPaintEngine *engine = painter.paintEngine();
    if (!engine || engine->type() != QPaintEngine::Raster
        || engine->paintDevice()->devType() != QInternal::Image) {
        return;
    }
    const auto *image = static_cast<const QImage *>(engine->paintDevice());
    const double ratio = image->devicePixelRatio();
    if (image->format() != QImage::Format_RGB32 || !paintsWholePixels(painter, ratio)
        || !paintsPlainly(painter, direction)) {
        return;
    }
    m_image = image;
    m_ratio = int(ratio);
    m_origin = QPoint(int(painter.deviceTransform().dx()), int(painter.deviceTransform().dy()));
    // What is to be painted anew is one rectangle most of the time.
    const QRegion clip = engine->systemClip();
    m_painted = image->rect();
    if (!clip.isEmpty())
        m_painted &= clip.rectCount() == 1 ? clip.boundingRect() : QRect();
}

QRect Canvas::devicePixels(const QRect &rect) const
{
    return {rect.topLeft() * m_ratio + m_origin, rect.size() * m_ratio};
}

bool Canvas::holds(const QRect &rect) const
{
    return m_painted.contains(devicePixels(rect));
}

QPixmap *Canvas::picture(const QRect &rect) const
{
    QImage picture = m_image->copy(devicePixels(rect));
    return new QPixmap(QPixmap::fromImage(std::move(picture), Qt::NoFormatConversion));
}
