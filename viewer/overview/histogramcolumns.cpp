// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "histogramcolumns.h"

#include "rowsurvey.h"
#include "timesteps.h"

#include <QDateTime>
#include <QLocale>
#include <QTimeZone>

#include <algorithm>

namespace {

//! The least round step by which \a span has no more than \a most places.
qint64 stepFor(qint64 span, int most, bool areTimes)
{
    size_t i = 0;
    qint64 step = 1;
    while (span / step >= most) {
        if (areTimes && i + 1 < timeSteps.size())
            step = timeSteps[++i];
        else
            step *= areTimes || QByteArray::number(step).startsWith('5') ? 2 : 5;
    }
    return step;
}

qint64 roundedUp(qint64 place, qint64 step)
{
    const qint64 rest = (place % step + step) % step;
    return rest == 0 ? place : place + step - rest;
}

} // namespace

HistogramColumns::HistogramColumns(const RowSurvey &survey, int most)
{
    TimeBins bins = survey.times();
    if (bins.isEmpty()) {
        if (survey.areTimesComplete())
            takeRows(survey, most);
        return;
    }
    bins.shrinkTo(most);
    m_areTimes = true;
    m_haveDates = survey.haveTimesDates();
    m_begin = bins.begin();
    m_width = bins.width();
    for (int i = 0; i < bins.count(); ++i)
        m_columns.append(bins.at(i));
}

void HistogramColumns::takeRows(const RowSurvey &survey, int most)
{
    const int rows = survey.rows();
    m_width = qMax(1, (rows - 1) / most + 1);
    for (int first = 0; first < rows; first += int(m_width)) {
        const int end = int(qMin(first + m_width, qint64(rows)));
        TimeBins::Counts counts;
        counts.errors = qMin(survey.errors().between(first, end), end - first);
        counts.warnings = qMin(survey.warnings().between(first, end), end - first - counts.errors);
        counts.others = end - first - counts.errors - counts.warnings;
        m_columns.append(counts);
        if (rows - first <= m_width)
            break; // the next one may be beyond all numbers
    }
}

int HistogramColumns::highest() const
{
    int highest = 0;
    for (const TimeBins::Counts &counts : m_columns)
        highest = qMax(highest, counts.rows());
    return highest;
}

QList<HistogramColumns::Label> HistogramColumns::labels(int most) const
{
    QList<Label> labels;
    if (m_columns.isEmpty())
        return labels;
    const qint64 end = begin(count());
    const qint64 step = stepFor(end - m_begin, most, m_areTimes);
    // Rows are counted from 1 on.
    const qint64 first = m_areTimes ? roundedUp(m_begin, step) : step - 1;
    for (qint64 place = first; place < end; place += step)
        labels.append({place, text(place, step)});
    return labels;
}

//! As exact as places that are \a step apart need it.
QString HistogramColumns::text(qint64 place, qint64 step) const
{
    if (!m_areTimes)
        return QLocale().toString(place + 1);
    const QDateTime clock = QDateTime::fromMSecsSinceEpoch(place, QTimeZone::utc());
    if (step >= dayTime && m_haveDates)
        return clock.toString(QStringLiteral("yyyy-MM-dd"));
    return clock.toString(step < secondTime       ? QStringLiteral("HH:mm:ss.zzz")
                              : step < minuteTime ? QStringLiteral("HH:mm:ss")
                                                  : QStringLiteral("HH:mm"));
}

QString HistogramColumns::description(int first, int last) const
{
    TimeBins::Counts counts;
    for (int i = first; i <= last; ++i)
        counts += at(i);
    const auto whole = [this](qint64 place) {
        const QString day =
            m_haveDates && m_width < dayTime ? text(place, dayTime) + u' ' : QString();
        return day + text(place, m_width);
    };
    QString where;
    if (!m_areTimes)
        where =
            tr("Rows %1 to %2").arg(whole(begin(first)), whole(begin(first) + counts.rows() - 1));
    else if (m_width >= dayTime && first == last)
        where = whole(begin(first));
    else
        where = tr("%1 to %2").arg(whole(begin(first)), whole(begin(last + 1)));
    QStringList parts {counts.rows() == 1 ? tr("1 row") : tr("%L1 rows").arg(counts.rows())};
    if (counts.errors > 0)
        parts << (counts.errors == 1 ? tr("1 error") : tr("%L1 errors").arg(counts.errors));
    if (counts.warnings > 0)
        parts << (counts.warnings == 1 ? tr("1 warning") : tr("%L1 warnings").arg(counts.warnings));
    return where + QLatin1String(": ") + parts.join(QLatin1String(", "));
}
