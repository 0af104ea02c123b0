// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef LINEMATCHER_H
#define LINEMATCHER_H

#include "lineexpression.h"
#include "textmatcher.h"

#include <QByteArray>
#include <QString>

#include <optional>

/*!
 * \brief Tells from the bytes of a line whether its text has a match.
 *
 * ASCII characters are these bytes, as in UTF-8. Where other characters may matter, or
 * such as are shown as something else, it leaves it open.
 */
class LineMatcher
{
public:
    enum class Verdict {
        NoMatch,
        Match,
        Unclear //!< look at the text
    };

    //! Of lines that end with \a lineEnd.
    LineMatcher(const TextMatcher &matcher, char lineEnd);

    //! About all of \a line, its end included if it has one. That there is no match before
    //! \a place, in bytes, has to be known.
    Verdict judge(QByteArrayView line, qsizetype place) const;

private:
    Verdict judgeBytes(QByteArrayView line, qsizetype place) const;
    Verdict judgeText(QByteArrayView line) const;
    Verdict wordAt(QByteArrayView line, qsizetype place) const;
    bool isAt(const char *place) const;

    const TextMatcher m_matcher; //!< looked for
    const char m_lineEnd;        //!< '\n' or '\r'
    QByteArray m_needle;         //!< its text, in lower case unless case matters; empty if it
                                 //!< is no plain one
    bool m_hasDoubles = false;   //!< other characters are letters of it in another case
    std::optional<LineExpression> m_expression; //!< the expression, if it can be one
    mutable QString m_text;                     //!< of a line, kept for its memory
};

#endif // LINEMATCHER_H
