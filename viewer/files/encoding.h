// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef ENCODING_H
#define ENCODING_H

#include "textunits.h"

#include <QByteArray>
#include <QString>
#include <QStringConverter>

#include <optional>

/*!
 * \brief How the bytes of a text stand for its characters.
 *
 * One of the Unicode encodings, or one whose characters are one byte each, the first
 * 128 of them ASCII. What is not valid becomes U+FFFD.
 */
class Encoding
{
public:
    //! UTF-8.
    Encoding();
    //! The encoding that a user calls \a name, in upper or lower case; nothing for names
    //! that are unknown, or of encodings of other kinds.
    static std::optional<Encoding> named(const QString &name);
    //! The encoding of a text that begins with \a bytes: what a byte order mark says, else
    //! UTF-8 if it is valid, else Windows-1252. A character cut off at the end is valid.
    static Encoding of(QByteArrayView bytes);

    //! For the user. "ASCII" if of() has seen nothing else.
    QString name() const { return m_name; }
    TextUnits units() const;
    //! Whether a text that is found as its ASCII bytes is found wherever it is shown, and
    //! in upper or lower case, too.
    bool isAsciiSearchable() const;

    //! Bytes of the byte order mark that a text of this encoding begins with; 0 without one.
    qsizetype markLength(QByteArrayView bytes) const;
    //! A byte order mark at the beginning is left out.
    QString decode(QByteArrayView bytes) const;
    //! Empty for characters that are not in the encoding.
    QByteArray encode(QChar character) const;
    //! \a bytes up to the last character that is complete, as far as they are valid.
    QByteArrayView withoutPartialCharacter(QByteArrayView bytes) const;

    //! Whether they decode alike.
    friend bool operator==(const Encoding &a, const Encoding &b)
    {
        return a.m_kind == b.m_kind && a.m_upper == b.m_upper;
    }

private:
    using Kind = QStringConverter::Encoding;

    Encoding(Kind kind, const QString &name);
    //! Of one byte each; \a upper are the characters 128 to 255.
    Encoding(const QString &upper, const QString &name);
    static Encoding windows1252();
    static std::optional<Encoding> ofSingleBytes(const QString &name);

    Kind m_kind = QStringConverter::Utf8; //!< unless there are single bytes
    QString m_upper;                      //!< of single bytes: the upper 128; else empty
    QString m_name;                       //!< see name()
};

#endif // ENCODING_H
