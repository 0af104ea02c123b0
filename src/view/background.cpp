// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "background_p.h"

#include <QPalette>
#include <QWidget>

#include <cmath>

namespace {

bool haveOneColor(const QPalette &palette)
{
    for (const QPalette::ColorGroup group :
         {QPalette::Active, QPalette::Inactive, QPalette::Disabled}) {
        for (const QPalette::ColorRole role :
             {QPalette::Base, QPalette::AlternateBase, QPalette::Highlight}) {
            if (palette.brush(group, role).style() != Qt::SolidPattern)
                return false;
        }
    }
    return true;
}

} // namespace

bool hasPlainBackground(const QWidget &viewport)
{
    // A style sheet's background may be a picture: it fills the viewport itself.
    if (!viewport.autoFillBackground() || viewport.testAttribute(Qt::WA_NoSystemBackground)
        || viewport.testAttribute(Qt::WA_StyledBackground)) {
        return false;
    }
    const QBrush &brush = viewport.palette().brush(viewport.backgroundRole());
    return brush.style() == Qt::SolidPattern && brush.isOpaque();
}

bool hasPlainCells(const QPalette &palette)
{
    // Asked for every cell: the last palette is nearly always the one.
    static thread_local qint64 key = 0;
    static thread_local bool isPlain = false;
    if (palette.cacheKey() != key) {
        key = palette.cacheKey();
        isPlain = haveOneColor(palette);
    }
    return isPlain;
}

bool hasWholeDevicePixels(const QWidget &widget)
{
    const double ratio = widget.devicePixelRatioF();
    return ratio == std::floor(ratio);
}
