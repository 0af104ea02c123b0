// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "histogram.h"

#include "basics/contrast.h"
#include "rowsurvey.h"

#include <QApplication>
#include <QHelpEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QToolTip>

#include <algorithm>
#include <utility>

namespace {

constexpr int s_narrowest = 4; // logical pixels of a column, its gap included
constexpr int s_margin = 6;
constexpr int s_lines = 5; // of text that would be as high as the columns

} // namespace

Histogram::Colors::Colors(const QPalette &palette)
    : background(palette.color(QPalette::Base))
    , error(readable(levelColor(LogLevel::Error), background, visibleContrast))
    , warning(readable(levelColor(LogLevel::Warning), background, visibleContrast))
    , other(readable(QColor(0x6f, 0x8f, 0xb5), background, visibleContrast))
    , text(readable(palette.color(QPalette::Text), background))
    , chosen(palette.color(QPalette::Highlight))
{
    chosen.setAlphaF(0.25F);
}

Histogram::Histogram(RowSurvey *survey, QWidget *parent)
    : QWidget(parent)
    , m_survey(survey)
{
    setObjectName(QStringLiteral("histogram"));
    setAccessibleName(tr("Histogram"));
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    setAttribute(Qt::WA_OpaquePaintEvent);
    connect(survey, &RowSurvey::changed, this, &Histogram::updateColumns);
}

QSize Histogram::sizeHint() const
{
    return {s_narrowest, fontMetrics().height() * (s_lines + 1) + 2 * s_margin};
}

//! The columns' part of the widget.
QRect Histogram::plot() const
{
    return rect().adjusted(s_margin, s_margin, -s_margin, -s_margin - fontMetrics().height());
}

QRect Histogram::columnRect(int column) const
{
    const QRect room = plot();
    const int count = m_columns.count();
    const auto left = [&](int of) { return room.left() + int(qint64(room.width()) * of / count); };
    return {left(column), room.top(), left(column + 1) - left(column), room.height()};
}

int Histogram::columnAt(int x) const
{
    const QRect room = plot();
    const int count = m_columns.count();
    if (count == 0 || room.width() <= 0)
        return -1;
    int column = int(qint64(x - room.left()) * count / room.width());
    column = qBound(0, column, count - 1);
    while (column + 1 < count && columnRect(column + 1).left() <= x)
        ++column;
    return column;
}

std::pair<int, int> Histogram::chosen() const
{
    const auto [from, to] = std::minmax(m_from, m_to);
    int first = -1;
    int last = -1;
    for (int i = 0; m_isChosen && i < m_columns.count(); ++i) {
        if (m_columns.begin(i + 1) <= from || m_columns.begin(i) > to)
            continue;
        first = first < 0 ? i : first;
        last = i;
    }
    return {first, last};
}

void Histogram::updateColumns()
{
    if (!isVisible())
        return;
    const bool wereTimes = m_columns.areTimes();
    m_columns = HistogramColumns(*m_survey, qMax(2, plot().width() / s_narrowest));
    m_isChosen = m_isChosen && m_columns.areTimes() == wereTimes;
    update();
}

void Histogram::updateWanted()
{
    m_survey->setLevelsWanted(this, !isHidden());
    m_survey->setTimesWanted(!isHidden());
}

void Histogram::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    updateWanted();
    updateColumns();
}

void Histogram::hideEvent(QHideEvent *event)
{
    QWidget::hideEvent(event);
    giveUp();
    updateWanted();
}

void Histogram::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    updateColumns();
}

void Histogram::paintEvent(QPaintEvent *event)
{
    QPainter painter(this);
    painter.setLayoutDirection(Qt::LeftToRight);
    const Colors colors(palette());
    painter.fillRect(event->rect(), colors.background);
    const auto [first, last] = chosen();
    if (first >= 0)
        painter.fillRect(columnRect(first) | columnRect(last), colors.chosen);
    const int highest = m_columns.highest();
    for (int i = 0; i < m_columns.count(); ++i)
        paintColumn(&painter, colors, i, highest);
    if (first < last)
        fadeOthers(&painter, colors, columnRect(first) | columnRect(last));
    paintAxis(&painter, colors);
}

//! Columns as high as the plot would hide what is behind them.
void Histogram::fadeOthers(QPainter *painter, const Colors &colors, const QRect &span) const
{
    QColor veil = colors.background;
    veil.setAlphaF(0.65F);
    const QRect room = plot();
    painter->fillRect(QRect(room.topLeft(), QPoint(span.left() - 1, room.bottom())), veil);
    painter->fillRect(QRect(QPoint(span.right() + 1, room.top()), room.bottomRight()), veil);
}

//! Errors at the foot; whatever there is, is seen.
void Histogram::paintColumn(QPainter *painter, const Colors &colors, int column, int highest) const
{
    const TimeBins::Counts &counts = m_columns.at(column);
    QRect room = columnRect(column);
    if (room.width() > s_narrowest - 2)
        room.setWidth(room.width() - 1);
    int foot = room.bottom() + 1;
    const auto paint = [&](int rows, const QColor &color) {
        if (rows <= 0)
            return;
        const int height = qMax(2, int(qint64(room.height()) * rows / highest));
        painter->fillRect(room.left(), foot - height, room.width(), height, color);
        foot -= height;
    };
    paint(counts.errors, colors.error);
    paint(counts.warnings, colors.warning);
    paint(counts.others, colors.other);
}

void Histogram::paintAxis(QPainter *painter, const Colors &colors) const
{
    const QRect room = plot();
    const int widest = fontMetrics().horizontalAdvance(QStringLiteral("2000-00-00 00:00"));
    const QList<HistogramColumns::Label> labels = m_columns.labels(qMax(1, room.width() / widest));
    painter->setPen(colors.text);
    painter->drawLine(room.left(), room.bottom() + 1, room.right(), room.bottom() + 1);
    const qint64 span = m_columns.begin(m_columns.count()) - m_columns.begin(0);
    for (const HistogramColumns::Label &label : labels) {
        const double part = double(label.place - m_columns.begin(0)) / double(span);
        const int x = room.left() + int(part * room.width());
        painter->drawLine(x, room.bottom() + 1, x, room.bottom() + 4);
        const int width = fontMetrics().horizontalAdvance(label.text);
        const int left =
            qBound(room.left(), x - width / 2, qMax(room.left(), room.right() - width));
        painter->drawText(left, room.bottom() + 4 + fontMetrics().ascent(), label.text);
    }
}

bool Histogram::event(QEvent *event)
{
    if (event->type() != QEvent::ToolTip)
        return QWidget::event(event);
    const auto *help = static_cast<QHelpEvent *>(event);
    const int column = columnAt(help->pos().x());
    QToolTip::showText(help->globalPos(),
                       column < 0 ? QString() : m_columns.description(column, column), this);
    return true;
}

//! Places, unlike columns, are the same when rows are added.
void Histogram::mousePressEvent(QMouseEvent *event)
{
    const int column = columnAt(event->position().toPoint().x());
    if (event->button() != Qt::LeftButton || column < 0)
        return;
    m_from = m_columns.begin(column);
    m_to = m_from;
    m_isChosen = true;
    m_pressed = event->position().toPoint();
    m_isPressed = true;
    m_isDragging = false;
    qApp->installEventFilter(this); // keys go elsewhere
    update();
}

//! Columns are narrow: a hand that is not quite still means one of them.
bool Histogram::isDrag(QPoint to) const
{
    const auto [first, last] = chosen();
    const int way = (to - m_pressed).manhattanLength();
    return way >= QApplication::startDragDistance() || (first != last && way >= s_narrowest);
}

void Histogram::giveUp()
{
    qApp->removeEventFilter(this);
    if (!std::exchange(m_isPressed, false))
        return;
    m_isChosen = false;
    QToolTip::hideText();
    update();
}

//! Esc is for what is going on, not for what the window would do by it.
bool Histogram::eventFilter(QObject *watched, QEvent *event)
{
    const bool isKey =
        event->type() == QEvent::ShortcutOverride || event->type() == QEvent::KeyPress;
    if (!isKey || static_cast<QKeyEvent *>(event)->key() != Qt::Key_Escape)
        return QWidget::eventFilter(watched, event);
    event->accept();
    if (event->type() == QEvent::KeyPress)
        giveUp();
    return true;
}

void Histogram::mouseMoveEvent(QMouseEvent *event)
{
    const int column = columnAt(event->position().toPoint().x());
    if (!(event->buttons() & Qt::LeftButton) || column < 0 || !m_isPressed || !m_isChosen)
        return;
    m_to = m_columns.begin(column);
    m_isDragging = m_isDragging || isDrag(event->position().toPoint());
    const auto [first, last] = chosen();
    if (first >= 0)
        QToolTip::showText(event->globalPosition().toPoint(), m_columns.description(first, last),
                           this);
    update();
}

void Histogram::mouseReleaseEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton || !std::exchange(m_isPressed, false))
        return;
    qApp->removeEventFilter(this);
    const auto [first, last] = chosen();
    if (first < 0)
        return;
    if (m_isDragging) {
        m_isChosen = false; // it will be all there is
        update();
        Q_EMIT spanChosen(span(first, last));
        return;
    }
    const qint64 place = m_columns.begin(first);
    if (m_columns.areTimes())
        Q_EMIT timeChosen({place, 0, m_columns.haveDates()});
    else
        Q_EMIT rowChosen(int(place));
}

//! All of the columns from \a first to \a last.
RowSpan Histogram::span(int first, int last) const
{
    RowSpan span {m_columns.areTimes(), m_columns.haveDates(), m_columns.begin(first),
                  m_columns.begin(last + 1)};
    if (!span.areTimes)
        span.to = qMin(span.to, qint64(m_survey->rows()));
    return span;
}
