// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "contrast.h"

#include <algorithm>
#include <cmath>

namespace {

double linear(double channel)
{
    return channel <= 0.04045 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
}

double luminance(const QColor &color)
{
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF())
        + 0.0722 * linear(color.blueF());
}

//! \a color on its way to \a end; \a part from 0 to 1.
QColor mixed(const QColor &color, const QColor &end, double part)
{
    const auto channel = [part](int from, int to) {
        return from + int(std::lround(part * (to - from)));
    };
    return {channel(color.red(), end.red()), channel(color.green(), end.green()),
            channel(color.blue(), end.blue())};
}

//! The first colour on the way from \a color to \a end with \a least contrast to \a other.
QColor movedTo(const QColor &end, const QColor &color, const QColor &other, double least)
{
    constexpr int steps = 64;
    for (int step = 0; step < steps; ++step) {
        const QColor moved = mixed(color, end, double(step) / steps);
        if (contrast(moved, other) >= least)
            return moved;
    }
    return end;
}

} // namespace

double contrast(const QColor &a, const QColor &b)
{
    const auto [darker, lighter] = std::minmax({luminance(a), luminance(b)});
    return (lighter + 0.05) / (darker + 0.05);
}

QColor readable(const QColor &text, const QColor &background, double least)
{
    if (contrast(text, background) >= least)
        return text;
    // The farther end, whichever side the colour is on: one of them is always readable.
    const bool isLighter = contrast(Qt::white, background) > contrast(Qt::black, background);
    return movedTo(isLighter ? Qt::white : Qt::black, text, background, least);
}

QColor matchColor(const QColor &text)
{
    const bool isDarkText = text.lightness() < 128;
    return readable(isDarkText ? QColor(0xff, 0xdd, 0x66) : QColor(0x8a, 0x5a, 0x00), text);
}

QColor rowMarkColor(const QColor &background)
{
    return readable(QColor(0x90, 0x30, 0xd0), background);
}

QPalette withReadableHighlights(QPalette palette)
{
    for (const QPalette::ColorGroup group :
         {QPalette::Active, QPalette::Inactive, QPalette::Disabled}) {
        const QColor text = palette.color(group, QPalette::HighlightedText);
        palette.setColor(group, QPalette::Highlight,
                         readable(palette.color(group, QPalette::Highlight), text));
    }
    return palette;
}
