// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "journal.h"

#include <QDateTime>
#include <QTimeZone>

#include <algorithm>

namespace {

constexpr QByteArrayView s_realTime = "__REALTIME_TIMESTAMP";
constexpr QByteArrayView s_priority = "PRIORITY";
constexpr qsizetype s_timeDigits = 16;

//! The text of a member of \a line; empty without it.
QByteArrayView memberOf(QByteArrayView line, QByteArrayView name)
{
    for (qsizetype at = line.indexOf(name); at >= 0; at = line.indexOf(name, at + 1)) {
        const QByteArrayView behind = line.sliced(at + name.size());
        // What is within a text has a backslash before its quotes.
        if (at == 0 || line[at - 1] != '"' || !behind.startsWith('"'))
            continue;
        const QByteArrayView value = behind.sliced(1).trimmed();
        if (!value.startsWith(':'))
            continue;
        const QByteArrayView text = value.sliced(1).trimmed();
        const qsizetype end = text.startsWith('"') ? text.indexOf('"', 1) : -1;
        return end > 0 ? text.sliced(1, end - 1) : QByteArrayView();
    }
    return {};
}

LogLevel levelOfPriority(QByteArrayView priority)
{
    if (priority.size() != 1)
        return LogLevel::None;
    switch (priority.front()) {
    case '0':
    case '1':
    case '2':
    case '3':
        return LogLevel::Error;
    case '4':
        return LogLevel::Warning;
    case '5':
    case '6':
        return LogLevel::Info;
    case '7':
        return LogLevel::Debug;
    default:
        return LogLevel::None;
    }
}

//! Nothing for what is no such number.
std::optional<qint64> microsecondsIn(QByteArrayView text)
{
    const bool isNumber = text.size() == s_timeDigits
        && std::all_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; });
    return isNumber ? std::optional(text.toLongLong()) : std::nullopt;
}

} // namespace

QString Journal::timeName()
{
    return QString::fromLatin1(s_realTime);
}

QStringList Journal::inOrder(const QStringList &names)
{
    static const QStringList first {timeName(),
                                    QStringLiteral("_HOSTNAME"),
                                    QStringLiteral("SYSLOG_IDENTIFIER"),
                                    QStringLiteral("_PID"),
                                    QString::fromLatin1(s_priority),
                                    QStringLiteral("MESSAGE")};
    QStringList ordered = names;
    std::stable_sort(ordered.begin(), ordered.end(), [](const QString &a, const QString &b) {
        const auto place = [](const QString &name) {
            const qsizetype at = first.indexOf(name);
            return at < 0 ? first.size() : at;
        };
        return place(a) < place(b);
    });
    return ordered;
}

std::optional<TimeStamp> Journal::timeOf(QByteArrayView line)
{
    const std::optional<qint64> microseconds = microsecondsIn(memberOf(line, s_realTime));
    return microseconds ? std::optional(TimeStamp {*microseconds / 1000, 0, true}) : std::nullopt;
}

QString Journal::timeText(const QString &microseconds)
{
    const std::optional<qint64> time = microsecondsIn(microseconds.toLatin1());
    if (!time)
        return microseconds;
    const auto seconds = QDateTime::fromSecsSinceEpoch(*time / 1000000, QTimeZone::utc());
    return seconds.toString(QStringLiteral("yyyy-MM-ddTHH:mm:ss"))
        + QStringLiteral(".%1Z").arg(*time % 1000000, 6, 10, QLatin1Char('0'));
}

bool Journal::mayBeInTime(const QString &text)
{
    return std::all_of(text.begin(), text.end(),
                       [](QChar c) { return QStringView(u"0123456789-:.TZtz").contains(c); });
}

LogLevel Journal::levelOf(QByteArrayView line)
{
    return levelOfPriority(memberOf(line, s_priority));
}

LogLevel Journal::levelOf(const QStringList &names, const QStringList &fields)
{
    return levelOfPriority(fields.value(names.indexOf(QLatin1StringView(s_priority))).toLatin1());
}
