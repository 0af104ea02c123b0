// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef NEEDLE_P_H
#define NEEDLE_P_H

#include <QString>
#include <QStringMatcher>
#include <QStringView>

#include <algorithm>
#include <string>

namespace FindTexts {

//! A text to be found.
class Needle
{
public:
    Needle(const QString &text, Qt::CaseSensitivity sensitivity)
        : m_text(text)
        , m_matcher(text, sensitivity)
        , m_isInPairs(
              std::any_of(text.begin(), text.end(), [](QChar c) { return c.isSurrogate(); }))
    {
    }

    const QString &text() const { return m_text; }

    //! The matcher is quicker, but does not see half a surrogate pair.
    bool isIn(QStringView shown) const
    {
        return m_isInPairs ? shown.contains(m_text, m_matcher.caseSensitivity())
                           : m_matcher.indexIn(shown) >= 0;
    }

private:
    QString m_text;
    QStringMatcher m_matcher;
    bool m_isInPairs;
};

//! What is searched for, made ready once.
struct Needles
{
    Needle text;
    Needle number;           //!< without white space and separators
    bool hasBreak;           //!< delegates show a line break as another character
    std::string plainNumber; //!< as it would be in what NumberWriter::plain() returns, or empty
    bool mayBeInNumber;      //!< has no characters but those of plain numbers
};

} // namespace FindTexts

#endif // NEEDLE_P_H
