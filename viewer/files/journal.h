// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef JOURNAL_H
#define JOURNAL_H

#include "loglevel.h"
#include "timestamp.h"

#include <QString>
#include <QStringList>

/*!
 * \brief What a line of "journalctl -o json" tells in members that are anywhere in it.
 *
 * Such a line is an object whose members are in no order, among them the time in microseconds
 * since 1970 and a priority from 0, the most urgent one, to 7.
 */
namespace Journal {

constexpr qsizetype lineBytes = 16384; //!< of a line that are looked at

//! The name of the member that every line has: its time.
QString timeName();
//! \a names with those first that people look for: time, host, program, process, priority and
//! message.
QStringList inOrder(const QStringList &names);
//! The time of a \a line in UTC, if it has one.
std::optional<TimeStamp> timeOf(QByteArrayView line);
//! \a microseconds since 1970 as "2026-11-22T11:25:45.123456Z"; any other text as it is.
QString timeText(const QString &microseconds);
//! Whether \a text may be a part of such a time.
bool mayBeInTime(const QString &text);
//! The level that a line's priority stands for.
LogLevel levelOf(QByteArrayView line);
//! The level of a line with these \a fields of columns \a names.
LogLevel levelOf(const QStringList &names, const QStringList &fields);

} // namespace Journal

#endif // JOURNAL_H
