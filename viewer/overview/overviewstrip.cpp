// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "overviewstrip.h"

#include "basics/contrast.h"
#include "files/loglevel.h"
#include "markedrows.h"
#include "qtablefastview.h"
#include "rowsurvey.h"
#include "search/tablefilter.h"

#include <QHelpEvent>
#include <QLocale>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>
#include <QStyle>
#include <QStyleOptionSlider>
#include <QToolTip>

#include <algorithm>

namespace {

constexpr int s_width = 10;    // logical pixels
constexpr int s_thickness = 2; // of what is a single row

//! Of \a bar, in its own pixels.
QRect grooveOf(const QScrollBar &bar)
{
    QStyleOptionSlider option;
    option.initFrom(&bar);
    option.orientation = Qt::Vertical;
    option.subControls = QStyle::SC_All;
    option.minimum = bar.minimum();
    option.maximum = bar.maximum();
    option.pageStep = bar.pageStep();
    option.sliderPosition = bar.value();
    return bar.style()->subControlRect(QStyle::CC_ScrollBar, &option, QStyle::SC_ScrollBarGroove,
                                       &bar);
}

//! At least half of \a room, all of it if all \a rows count.
int widthFor(int count, int rows, int room)
{
    return (room * (rows + qMin(count, rows)) + 2 * rows - 1) / (2 * rows);
}

QString counted(int count, const QString &one, const QString &more)
{
    return count == 1 ? one : more.arg(count);
}

} // namespace

OverviewStrip::Colors::Colors(const QPalette &palette)
    : background(palette.color(QPalette::Base))
    , error(readable(levelColor(LogLevel::Error), background, visibleContrast))
    , warning(readable(levelColor(LogLevel::Warning), background, visibleContrast))
    , hit(readable(matchColor(palette.color(QPalette::Text)), background, visibleContrast))
    , mark(rowMarkColor(background))
{
}

OverviewStrip::OverviewStrip(TableFilter *find, QTableFastView *table, RowSurvey *survey,
                             const MarkedRows *marks, QWidget *parent)
    : QWidget(parent)
    , m_find(find)
    , m_table(table)
    , m_survey(survey)
    , m_marks(marks)
{
    setObjectName(QStringLiteral("overviewStrip"));
    setAccessibleName(tr("Overview strip"));
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Ignored);
    setAttribute(Qt::WA_OpaquePaintEvent);
    const auto updated = qOverload<>(&QWidget::update);
    connect(survey, &RowSurvey::changed, this, updated);
    connect(marks, &MarkedRows::changed, this, updated);
    connect(marks, &MarkedRows::moved, this, updated);
    connect(table->verticalScrollBar(), &QScrollBar::rangeChanged, this, updated);
}

QSize OverviewStrip::sizeHint() const
{
    return {s_width, s_width};
}

//! Its own pixels that picture rows.
QRect OverviewStrip::groove() const
{
    const QScrollBar *bar = m_table->verticalScrollBar();
    const QWidget *pictured = m_table->viewport();
    QRect part = pictured->rect();
    if (bar->isVisible()) {
        pictured = bar;
        part = grooveOf(*bar);
    }
    const int top = mapFromGlobal(pictured->mapToGlobal(part.topLeft())).y();
    return {0, top, width(), part.height()};
}

std::pair<int, int> OverviewStrip::rowsAt(int y) const
{
    const QRect room = groove();
    const qint64 rows = m_survey->rows();
    if (rows == 0 || room.height() <= 0)
        return {0, 0};
    const qint64 line = qBound(0, y - room.top(), room.height() - 1);
    const int first = int(line * rows / room.height());
    const int end = int((line + 1) * rows / room.height());
    return {first, qMax(first + 1, end)};
}

QList<int> OverviewStrip::markedRows() const
{
    QList<int> rows = m_marks->rows();
    if (m_find->showsSource())
        return rows;
    QList<int> shown;
    for (const int row : std::as_const(rows)) {
        const int near = m_find->rowNear(row);
        if (m_find->toSource(m_table->model()->index(near, 0)).row() == row)
            shown.append(near);
    }
    std::sort(shown.begin(), shown.end());
    return shown;
}

QString OverviewStrip::description(int first, int end) const
{
    QStringList parts;
    const auto add = [&](int count, const QString &one, const QString &more) {
        if (count > 0)
            parts.append(counted(count, one, more));
    };
    const QList<int> marks = markedRows();
    add(m_survey->hits().between(first, end), tr("1 match"), tr("%L1 matches"));
    add(m_survey->errors().between(first, end), tr("1 error"), tr("%L1 errors"));
    add(m_survey->warnings().between(first, end), tr("1 warning"), tr("%L1 warnings"));
    add(int(std::count_if(marks.begin(), marks.end(),
                          [=](int row) { return row >= first && row < end; })),
        tr("1 mark"), tr("%L1 marks"));
    const QString rows =
        end - first == 1 ? tr("Row %L1").arg(end) : tr("Rows %L1 to %L2").arg(first + 1).arg(end);
    return parts.isEmpty() ? rows : rows + QLatin1String(": ") + parts.join(QLatin1String(", "));
}

bool OverviewStrip::event(QEvent *event)
{
    if (event->type() != QEvent::ToolTip)
        return QWidget::event(event);
    const auto *help = static_cast<QHelpEvent *>(event);
    const auto [first, end] = rowsAt(help->pos().y());
    QToolTip::showText(help->globalPos(), end > 0 ? description(first, end) : QString(), this);
    return true;
}

void OverviewStrip::paintEvent(QPaintEvent *event)
{
    QPainter painter(this);
    const Colors colors(m_table->palette());
    painter.fillRect(event->rect(), colors.background);
    if (m_survey->rows() == 0)
        return;
    const QRect room = groove();
    for (int y = room.top(); y <= room.bottom(); ++y)
        paintLine(&painter, colors, y);
    paintMarks(&painter, colors);
}

//! What the line above has goes on in this one, to be seen.
void OverviewStrip::paintLine(QPainter *painter, const Colors &colors, int y)
{
    const int first = rowsAt(y - s_thickness + 1).first;
    const int end = rowsAt(y).second;
    const auto paint = [&](int count, bool isLeft, const QColor &color) {
        const int wide = widthFor(count, end - first, width() / 2);
        if (count > 0)
            painter->fillRect(isLeft ? 0 : width() - wide, y, wide, 1, color);
    };
    paint(m_survey->hits().between(first, end), !isRightToLeft(), colors.hit);
    const int errors = m_survey->errors().between(first, end);
    const int warnings = m_survey->warnings().between(first, end);
    paint(errors > 0 ? errors : warnings, isRightToLeft(),
          errors > 0 ? colors.error : colors.warning);
}

void OverviewStrip::paintMarks(QPainter *painter, const Colors &colors)
{
    const QRect room = groove();
    const QList<int> rows = markedRows();
    for (const int row : rows) {
        const qint64 below = qint64(row) * room.height();
        const int y = room.top() + int(below / m_survey->rows());
        painter->fillRect(0, qMin(y, room.bottom() + 1 - s_thickness), width(), s_thickness,
                          colors.mark);
    }
}

void OverviewStrip::mousePressEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton)
        showRowsAt(event->position().toPoint().y());
}

void OverviewStrip::mouseMoveEvent(QMouseEvent *event)
{
    if (event->buttons() & Qt::LeftButton)
        showRowsAt(event->position().toPoint().y());
}

//! In the middle of the table.
void OverviewStrip::showRowsAt(int y)
{
    const int seen = m_table->viewport()->height() / m_table->rowHeight();
    m_table->verticalScrollBar()->setValue(rowsAt(y).first - seen / 2);
}

//! In a window, or a page, that is hidden it goes on.
void OverviewStrip::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    m_survey->setLevelsWanted(this, true);
}

void OverviewStrip::hideEvent(QHideEvent *event)
{
    QWidget::hideEvent(event);
    m_survey->setLevelsWanted(this, !isHidden());
}
