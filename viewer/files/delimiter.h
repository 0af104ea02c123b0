// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef DELIMITER_H
#define DELIMITER_H

#include "encoding.h"
#include "logformat.h"

#include <QString>
#include <QStringList>

#include <functional>
#include <optional>

//! How bytes become lines, and lines rows of columns.
struct TextFormat
{
    Encoding encoding;      //!< of the bytes
    char lineEnd = '\n';    //!< '\n', before which a '\r' may stand, or '\r'
    QChar delimiter;        //!< between fields; null for text without separated columns
    LogFormat log;          //!< of lines that name their columns, or have them in places
    bool hasHeader = false; //!< the first line names the columns
    QStringList names;      //!< of the columns, if there are any; never empty then

    bool isDelimited() const { return !delimiter.isNull(); }
    //! Delimited, or a log whose lines have columns.
    bool hasColumns() const { return !names.isEmpty(); }
    //! The columns of \a line; without any, the line.
    QStringList fieldsOf(const QString &line) const;
    //! The text of a line's \a bytes, without its end if \a isTerminated.
    QString lineText(QByteArrayView bytes, bool isTerminated) const;

    friend bool operator==(const TextFormat &, const TextFormat &) = default;
};

//! What the user wants instead of what a file looks like.
struct FormatRequest
{
    std::optional<QChar> delimiter;        //!< null character: no columns
    std::optional<bool> hasHeader;         //!< true: the first line is the header
    std::optional<Encoding> encoding = {}; //!< of the text
    std::optional<LogFormat::Kind> log =
        {};                     //!< of the lines; a delimiter that is given counts first
    bool hasOlderFiles = false; //!< those that were rotated away come before it: see olderFiles()

    friend bool operator==(const FormatRequest &, const FormatRequest &) = default;
};

/*!
 * Splits a record at \a delimiter as RFC 4180 says: a field in double quotes may hold
 * delimiters, ends of lines, and quotes that are doubled. A quote within an unquoted
 * field is a plain character. A quoted field ends with its record at the latest.
 *
 * With \a maximumFields above 0 the last field takes all of the rest as it is.
 */
QStringList splitFields(const QString &line, QChar delimiter, qsizetype maximumFields = 0);

//! Whether \a field is a number: optional sign, digits with one decimal point or
//! comma and grouping, optional exponent or percent sign.
bool isNumber(const QString &field);

//! The first lines of a text, which are records if fields are separated by a delimiter;
//! lines as they stand for the null character.
using FirstLines = std::function<QStringList(QChar delimiter)>;

/*!
 * Delimiter, header and names of a text that begins with \a lines.
 *
 * Tab, pipe, semicolon and comma are tried in this order; the first that occurs
 * equally often in at least nine of ten records, two records at least, is taken. If
 * there is none, lines as they stand count: quotes may be wrong. Empty lines do not
 * count. Before that, logs are looked for (see LogFormat), whose lines may have all of them. The
 * first record is the header unless it has an empty field or one that is a number.
 * There are as many columns as the longest of the records has.
 */
TextFormat detectFormat(const FirstLines &lines, const FormatRequest &request = {});

//! The character that a command line names: tab, comma, semicolon, pipe, space,
//! none (the null character) or any single character. Nothing for other words.
std::optional<QChar> delimiterFromName(const QString &name);

#endif // DELIMITER_H
