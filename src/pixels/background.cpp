// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "background_p.h"

#include <QAbstractScrollArea>
#include <QPainter>
#include <QPalette>
#include <QWidget>

#include <cmath>
#include <utility>

namespace {

const QWidget *knownView = nullptr;
bool isKnownPlain = false;

//! Solid and opaque.
bool isOneColor(const QBrush &brush)
{
    return brush.style() == Qt::SolidPattern && brush.isOpaque();
}

} // namespace

bool hasPlainBackground(const QWidget &viewport)
{
    // A style sheet's background may be a picture: it fills the viewport itself.
    if (!viewport.autoFillBackground() || viewport.testAttribute(Qt::WA_NoSystemBackground)
        || viewport.testAttribute(Qt::WA_StyledBackground)) {
        return false;
    }
    return isOneColor(viewport.palette().brush(viewport.backgroundRole()));
}

KnownBackground::KnownBackground(const QWidget *view, bool isPlain)
    : m_formerView(std::exchange(knownView, view))
    , m_wasPlain(std::exchange(isKnownPlain, isPlain))
{
}

KnownBackground::~KnownBackground()
{
    knownView = m_formerView;
    isKnownPlain = m_wasPlain;
}

bool isPlainBehind(const QWidget *view)
{
    if (view && view == knownView)
        return isKnownPlain;
    const auto *area = qobject_cast<const QAbstractScrollArea *>(view);
    return !area || hasPlainBackground(*area->viewport());
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

bool paintsWholePixels(const QPainter &painter, double ratio)
{
    const QTransform &transform = painter.deviceTransform();
    return ratio >= 1 && ratio == std::floor(ratio) && transform.type() <= QTransform::TxScale
        && transform.m11() == ratio && transform.m22() == ratio
        && transform.dx() == std::floor(transform.dx())
        && transform.dy() == std::floor(transform.dy());
}
