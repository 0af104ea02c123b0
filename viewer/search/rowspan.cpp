// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "rowspan.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QLocale>
#include <QTimeZone>

namespace {

constexpr qint64 s_spanSecond = 1000; // ms
constexpr qint64 s_minute = 60 * s_spanSecond;

QDateTime clockAt(qint64 time)
{
    return QDateTime::fromMSecsSinceEpoch(time, QTimeZone::utc());
}

QString text(const QString &from, const QString &to)
{
    return QCoreApplication::translate("RowSpan", "%1 to %2").arg(from, to);
}

} // namespace

QString textOf(const RowSpan &span)
{
    if (!span.areTimes) {
        const QLocale locale;
        return QCoreApplication::translate("RowSpan", "Rows %1 to %2")
            .arg(locale.toString(span.from + 1), locale.toString(span.to));
    }
    const QString day = QStringLiteral("yyyy-MM-dd");
    const auto needs = [&](qint64 step) { return span.from % step != 0 || span.to % step != 0; };
    const QString time = needs(s_spanSecond) ? QStringLiteral("HH:mm:ss.zzz")
        : needs(s_minute)                    ? QStringLiteral("HH:mm:ss")
                                             : QStringLiteral("HH:mm");
    const QDateTime from = clockAt(span.from);
    const QDateTime to = clockAt(span.to);
    if (!span.haveDates)
        return text(from.toString(time), to.toString(time));
    const QString whole = day + u' ' + time;
    return text(from.toString(whole), to.toString(from.date() == to.date() ? time : whole));
}
