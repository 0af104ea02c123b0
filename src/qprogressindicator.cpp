// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "qprogressindicator.h"

#include "accessible/install_p.h"

#include <QAccessible>
#include <QGuiApplication>
#include <QPainter>
#include <QPixmapCache>

#include <algorithm>

namespace {

constexpr int capsuleCount = 12;
constexpr int stepAngle = 360 / capsuleCount;

//! The bar that points straight up from the middle of a ring.
struct Capsule
{
    explicit Capsule(int side)
    {
        const double half = (side - 1) * 0.5;
        const int outerRadius = int(half);
        const int height = outerRadius - int(half * 0.38);
        const int width = int(height * (side > 32 ? 0.23 : 0.35)); // large rings have thin bars
        rect = QRect(int(width * -0.5), -outerRadius, width, height);
        radius = width / 2;
    }

    QRect rect;
    int radius;
};

//! A ring of \a side logical pixels. Its middle is \a center, which belongs to the widget:
//! deliberate, so the ring of a widget that is not square is off the picture's middle.
QPixmap renderFrame(int side, QPoint center, QColor color, int angle)
{
    // Sharp on the densest screen, since one picture serves all of them.
    const double ratio = qGuiApp->devicePixelRatio();
    QPixmap pixmap(QSize(side, side) * ratio);
    pixmap.setDevicePixelRatio(ratio);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    const Capsule capsule(side);
    for (int i = 0; i < capsuleCount; ++i) {
        color.setAlphaF(1.0F - float(i) / capsuleCount);
        painter.setBrush(color);
        painter.save();
        painter.translate(center);
        painter.rotate(angle - stepAngle * i);
        painter.drawRoundedRect(capsule.rect, capsule.radius, capsule.radius);
        painter.restore();
    }
    return pixmap;
}

//! Tells screen readers whether something is going on.
void tellBusy(QProgressIndicator *indicator)
{
    if (!QAccessible::isActive())
        return;
    QAccessible::State changed;
    changed.busy = true;
    QAccessibleStateChangeEvent event(indicator, changed);
    QAccessible::updateAccessibility(&event);
}

} // namespace

QProgressIndicator::QProgressIndicator(QWidget *parent)
    : QWidget(parent)
{
    Accessible::installIndicatorFactory();
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

QProgressIndicator::~QProgressIndicator() = default;

int QProgressIndicator::animationDelay() const
{
    return m_delay;
}

bool QProgressIndicator::isAnimated() const
{
    return m_timerId != -1;
}

bool QProgressIndicator::isDisplayedWhenStopped() const
{
    return m_displayedWhenStopped;
}

const QColor &QProgressIndicator::color() const
{
    return m_color;
}

QSize QProgressIndicator::sizeHint() const
{
    return {20, 20};
}

int QProgressIndicator::heightForWidth(int w) const
{
    return w;
}

void QProgressIndicator::startAnimation()
{
    m_angle = 0;
    if (m_timerId != -1)
        return;
    m_timerId = startTimer(std::max(m_delay, 0));
    tellBusy(this);
}

void QProgressIndicator::stopAnimation()
{
    const bool wasAnimated = isAnimated();
    if (wasAnimated)
        killTimer(m_timerId);
    m_timerId = -1;
    update();
    if (wasAnimated)
        tellBusy(this);
}

void QProgressIndicator::setAnimationDelay(int delay)
{
    m_delay = delay;
    if (m_timerId == -1)
        return;
    killTimer(m_timerId);
    m_timerId = startTimer(std::max(m_delay, 0));
}

void QProgressIndicator::setDisplayedWhenStopped(bool state)
{
    m_displayedWhenStopped = state;
    update();
}

void QProgressIndicator::setColor(const QColor &color)
{
    m_color = color;
    update();
}

void QProgressIndicator::timerEvent(QTimerEvent *)
{
    m_angle = (m_angle + stepAngle) % 360;
    repaint(); // at once: a search lets few events through
}

void QProgressIndicator::paintEvent(QPaintEvent *)
{
    if (!m_displayedWhenStopped && !isAnimated())
        return;
    const int side = std::min(width(), height());
    // Deliberate: widgets of other shapes but the same smaller side share the picture.
    const QString key = QStringLiteral("%1,%2,%3")
                            .arg(QString::number(side), m_color.name(), QString::number(m_angle));
    QPixmap pixmap;
    if (!QPixmapCache::find(key, &pixmap)) {
        pixmap = renderFrame(side, rect().center(), m_color, m_angle);
        QPixmapCache::insert(key, pixmap);
    }
    QPainter painter(this);
    if (!qFuzzyCompare(pixmap.devicePixelRatio(), devicePixelRatio()))
        painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawPixmap(rect(), pixmap);
}
