// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef LOGLEVEL_H
#define LOGLEVEL_H

#include <QByteArrayView>
#include <QColor>
#include <QStringView>

//! How urgent a line of a log is.
enum class LogLevel {
    None, //!< it does not say
    Debug,
    Info,
    Warning,
    Error
};

/*!
 * The level of a line: that of the first word in its first 200 characters that names one,
 * in upper, lower or mixed case, as in "ERROR:", "[warn]" or "level=debug".
 */
LogLevel levelOf(QStringView line);

//! The same for a line of ASCII characters, several times as fast.
LogLevel levelOfAscii(QByteArrayView line);

//! Bytes of a line that levelOfAscii() looks at.
constexpr qsizetype levelBytes = 210;

//! What lines of that level are shown in; invalid where they look like any other.
QColor levelColor(LogLevel level);

#endif // LOGLEVEL_H
