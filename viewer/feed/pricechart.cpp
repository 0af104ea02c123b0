// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "pricechart.h"

#include <QLinearGradient>
#include <QLocale>
#include <QPainter>
#include <QPainterPath>

#include <algorithm>

namespace {

constexpr int s_paintTime = 100;      // ms
constexpr int s_gridLines = 4;        // of the scale
constexpr double s_chartMargin = 0.5; // of the font's height

} // namespace

PriceChart::PriceChart(QWidget *parent)
    : QWidget(parent)
{
    m_timer.setSingleShot(true);
    m_timer.setInterval(s_paintTime);
    connect(&m_timer, &QTimer::timeout, this, qOverload<>(&QWidget::update));
}

void PriceChart::begin(const QString &name)
{
    m_name = name;
    m_points.clear();
    update();
}

void PriceChart::add(qint64 time, double price)
{
    const qint64 at = time / pointTime;
    if (!m_points.empty() && at < m_points.back().at)
        return;
    if (m_points.empty() || m_points.back().at != at)
        m_points.push_back({at, price, price, price});
    Point &point = m_points.back();
    point.low = std::min(point.low, price);
    point.high = std::max(point.high, price);
    point.last = price;
    while (m_points.front().at <= at - shownTime / pointTime)
        m_points.pop_front();
    if (isVisible() && !m_timer.isActive())
        m_timer.start();
}

double PriceChart::lowest() const
{
    const auto it = std::min_element(m_points.begin(), m_points.end(),
                                     [](const Point &a, const Point &b) { return a.low < b.low; });
    return it == m_points.end() ? 0 : it->low;
}

double PriceChart::highest() const
{
    const auto it =
        std::max_element(m_points.begin(), m_points.end(),
                         [](const Point &a, const Point &b) { return a.high < b.high; });
    return it == m_points.end() ? 0 : it->high;
}

QSize PriceChart::sizeHint() const
{
    return {fontMetrics().height() * 20, fontMetrics().height() * 12};
}

QSize PriceChart::minimumSizeHint() const
{
    return {fontMetrics().height() * 8, fontMetrics().height() * 5};
}

//! Room for the prices at its right, and for the name above.
PriceChart::Scale PriceChart::scale() const
{
    const double low = lowest();
    const double high = highest();
    const double height = fontMetrics().height();
    const double numbers = fontMetrics().horizontalAdvance(QLocale().toString(high, 'f', 2));
    return {QRectF(rect()).adjusted(s_chartMargin * height, 1.5 * height, -numbers - height,
                                    -s_chartMargin * height),
            low, high};
}

QPointF PriceChart::place(const Point &point, double price, const Scale &scale) const
{
    const QRectF &plot = scale.plot;
    const double range = std::max(scale.high - scale.low, 0.01);
    const double age = double(m_points.back().at - point.at) * pointTime / shownTime;
    return {plot.right() - age * plot.width(),
            plot.bottom() - (price - scale.low) / range * plot.height()};
}

void PriceChart::paintEvent(QPaintEvent * /*event*/)
{
    QPainter painter(this);
    painter.fillRect(rect(), palette().color(QPalette::Base));
    painter.setPen(palette().color(QPalette::Text));
    const double height = fontMetrics().height();
    painter.drawText(QRectF(rect()).adjusted(s_chartMargin * height, 0.25 * height, 0, 0),
                     int(Qt::AlignLeft | Qt::AlignTop), m_name);
    const Scale area = scale();
    if (m_points.empty() || area.plot.isEmpty())
        return;
    painter.setRenderHint(QPainter::Antialiasing);
    drawScale(&painter, area);
    drawPrices(&painter, area);
}

void PriceChart::drawScale(QPainter *painter, const Scale &scale) const
{
    const QRectF &plot = scale.plot;
    const QLocale locale;
    QColor line = palette().color(QPalette::Text);
    line.setAlphaF(0.15F);
    const double height = fontMetrics().height();
    for (int i = 0; i < s_gridLines; ++i) {
        const double part = double(i) / (s_gridLines - 1);
        const double y = plot.bottom() - part * plot.height();
        painter->setPen(line);
        painter->drawLine(QPointF(plot.left(), y), QPointF(plot.right(), y));
        painter->setPen(palette().color(QPalette::Text));
        const double price = scale.low + part * (scale.high - scale.low);
        painter->drawText(QRectF(plot.right() + height / 2, y - height, width(), 2 * height),
                          int(Qt::AlignLeft | Qt::AlignVCenter), locale.toString(price, 'f', 2));
    }
}

void PriceChart::drawPrices(QPainter *painter, const Scale &scale) const
{
    const QRectF &plot = scale.plot;
    QColor color = palette().color(QPalette::Highlight);
    QPainterPath path;
    path.moveTo(place(m_points.front(), m_points.front().last, scale));
    for (const Point &point : m_points) {
        path.lineTo(place(point, point.low, scale));
        path.lineTo(place(point, point.high, scale));
        path.lineTo(place(point, point.last, scale));
    }
    QPainterPath area = path;
    area.lineTo(plot.right(), plot.bottom());
    area.lineTo(place(m_points.front(), lowest(), scale));
    QLinearGradient gradient(plot.topLeft(), plot.bottomLeft());
    color.setAlphaF(0.35F);
    gradient.setColorAt(0, color);
    color.setAlphaF(0.02F);
    gradient.setColorAt(1, color);
    painter->fillPath(area, gradient);
    color.setAlphaF(1);
    painter->setPen(QPen(color, 1.5));
    painter->drawPath(path);
    painter->setBrush(color);
    painter->drawEllipse(place(m_points.back(), m_points.back().last, scale), 3, 3);
}
