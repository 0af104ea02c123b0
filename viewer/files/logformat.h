// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef LOGFORMAT_H
#define LOGFORMAT_H

#include <QString>
#include <QStringList>

#include <optional>

/*!
 * \brief The columns of logs whose lines name their parts, or have them in fixed places.
 *
 * Every line has as many fields as there are names. What a line has that is in none of its
 * columns, and a line of another form as a whole, stands in the last one as it is: nothing
 * is left out.
 */
struct LogFormat
{
    enum class Kind : quint8 {
        None,      //!< lines as they are
        JsonLines, //!< an object in each line; columns by the names of its members
        Logfmt,    //!< name=value name="a value"; columns by name
        AccessLog, //!< of web servers, common or combined
        Syslog,    //!< time, host, program[process]: message
        Journal    //!< "journalctl -o json": objects as JsonLines; see Journal
    };

    Kind kind = Kind::None;
    QStringList names; //!< of the columns; none of Kind::None

    //! The format of which nine of ten of \a lines, and the first of them, are. The last one
    //! may be cut off, and empty ones do not count. Names are in order of appearance.
    static LogFormat of(const QStringList &lines);
    //! The format \a kind, with names from \a lines.
    static LogFormat ofKind(Kind kind, const QStringList &lines);

    //! The kind that a command line calls \a name: text, json, logfmt, access, syslog or
    //! journal, in any case. Nothing for other words.
    static std::optional<Kind> kindNamed(const QString &name);

    //! The fields of \a line, as many as there are names.
    QStringList split(const QString &line) const;
    //! The character without which fields stand in their line as they are; 0 if they always do.
    char escape() const;
    //! Whether a field can have \a text though it is nowhere in the line, which has no escape().
    bool joins(const QString &text) const;

    friend bool operator==(const LogFormat &, const LogFormat &) = default;
};

#endif // LOGFORMAT_H
