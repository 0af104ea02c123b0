// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef TEXTSAMPLE_H
#define TEXTSAMPLE_H

#include "delimiter.h"

#include <QByteArray>

/*!
 * \brief The beginning of a text, on which its format is decided.
 *
 * Lines end with a line feed, or with a carriage return if there are some of these and no
 * line feeds.
 */
class TextSample
{
public:
    static constexpr qint64 maximumLines = 64;    //!< that are looked at
    static constexpr qint64 maximumBytes = 65536; //!< the same

    //! \a bytes are maximumBytes, or all that there are.
    explicit TextSample(const QByteArray &bytes);

    //! The format, as far as \a request leaves it open.
    TextFormat format(const FormatRequest &request) const;

private:
    char lineEnd(const Encoding &encoding) const;
    QStringList lines(const TextFormat &format) const;
    bool isCut() const { return m_bytes.size() >= maximumBytes; }

    QByteArray m_bytes; //!< as given
};

#endif // TEXTSAMPLE_H
