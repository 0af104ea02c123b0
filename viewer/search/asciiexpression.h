// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef ASCIIEXPRESSION_H
#define ASCIIEXPRESSION_H

#include <QByteArrayView>
#include <QString>

#include <array>
#include <optional>

/*!
 * \brief Tells whether a simple regular expression matches in ASCII text.
 *
 * Simple ones are sequences of characters, sets of them, and how often they are there, one or
 * several as alternatives, at the beginning, at the end or anywhere. All places of the sequences
 * are bits of one number, so that a step for each character of the text is all it takes: what
 * QRegularExpression does before it begins takes longer than most lines.
 */
class AsciiExpression
{
public:
    //! Nothing for an \a expression that is not simple, that is none, or takes more than 64 bits.
    static std::optional<AsciiExpression> of(const QString &expression, bool matchesCase);

    //! Whether there is a match in \a text, one line of ASCII characters.
    bool isIn(QByteArrayView text) const;

private:
    friend class AsciiExpressionReader;

    AsciiExpression() = default;
    quint64 withSkipped(quint64 places) const;

    std::array<quint64, 128> m_takes {}; //!< by character, the places that take it
    quint64 m_repeats = 0;               //!< places that take several
    quint64 m_optional = 0;              //!< places that can be left out
    quint64 m_starts = 0;                //!< first places, anywhere in the text
    quint64 m_startsAtBegin = 0;         //!< the same at its beginning only
    quint64 m_ends = 0;                  //!< behind the last places, anywhere
    quint64 m_endsAtEnd = 0;             //!< the same at its end only
};

#endif // ASCIIEXPRESSION_H
