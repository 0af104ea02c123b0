// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "barpicture_p.h"

#include "background_p.h"
#include "knownstyle_p.h"
#include "picture_p.h"

#include <QPaintEngine>
#include <QPainter>
#include <QScrollBar>
#include <QStyleOption>

namespace {

//! Whether the style of \a bar draws it from what Look holds alone.
bool isKnown(const QScrollBar &bar, const QStyleOptionSlider &option)
{
    const QStyle *style = bar.style();
    return isKnownStyle(*style) && !style->styleHint(QStyle::SH_ScrollBar_Transient, &option, &bar);
}

} // namespace

BarPicture::Look BarPicture::lookOf(const QScrollBar &bar, const QStyleOptionSlider &option)
{
    constexpr std::array<QStyle::SubControl, 5> controls = {
        QStyle::SC_ScrollBarSlider, QStyle::SC_ScrollBarAddLine, QStyle::SC_ScrollBarSubLine,
        QStyle::SC_ScrollBarAddPage, QStyle::SC_ScrollBarSubPage};
    const QStyle *style = bar.style();
    Look look;
    look.style = style->metaObject();
    look.palette = option.palette.cacheKey();
    look.state = option.state;
    look.direction = option.direction;
    look.isAtStart = option.sliderPosition == option.minimum;
    look.isAtEnd = option.sliderPosition == option.maximum;
    look.ratio = bar.devicePixelRatioF();
    look.dpi = bar.logicalDpiX();
    look.size = bar.size();
    for (std::size_t i = 0; i < controls.size(); ++i)
        look.parts[i] = style->subControlRect(QStyle::CC_ScrollBar, &option, controls[i], &bar);
    return look;
}

bool BarPicture::paint(QScrollBar *bar, const QStyleOptionSlider &option,
                       const Initialize &initialize)
{
    if (bar->size().isEmpty() || !isKnown(*bar, option) || !hasWholeDevicePixels(*bar)) {
        *this = {};
        return false;
    }
    // While the slider moves, a picture would be made for each frame and be of no use.
    if (const Look look = lookOf(*bar, option); look != m_look) {
        m_look = look;
        m_pixmap = {};
        return false;
    }
    QPainter painter(bar);
    if (painter.paintEngine()->type() != QPaintEngine::Raster
        || !paintsWholePixels(painter, m_look.ratio)) {
        return false;
    }
    if (m_pixmap.isNull())
        make(bar, option, initialize);
    painter.drawPixmap(0, 0, m_pixmap);
    return true;
}

void BarPicture::make(QScrollBar *bar, const QStyleOptionSlider &option,
                      const Initialize &initialize)
{
    // A style may leave pixels at the edges as they were.
    QImage image(m_look.size * m_look.ratio, QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(m_look.ratio);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    initialize(&painter);
    bar->style()->drawComplexControl(QStyle::CC_ScrollBar, &option, &painter, bar);
    painter.end();
    m_pixmap = pictureOf(image);
}
