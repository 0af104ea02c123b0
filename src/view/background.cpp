// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "background_p.h"

#include <QPalette>
#include <QWidget>

#include <cmath>

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

bool hasWholeDevicePixels(const QWidget &widget)
{
    const double ratio = widget.devicePixelRatioF();
    return ratio == std::floor(ratio);
}
