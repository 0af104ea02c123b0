// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef TEXTMATCHER_H
#define TEXTMATCHER_H

#include <QList>
#include <QRegularExpression>
#include <QString>
#include <QStringList>
#include <QStringMatcher>

//! How a text is looked for, by search and filter alike.
struct TextRules
{
    bool matchesCase = false;  //!< upper and lower case differ
    bool wholeWords = false;   //!< no letter, digit or underscore on either side
    bool isExpression = false; //!< the text is a regular expression

    friend bool operator==(const TextRules &, const TextRules &) = default;
};

/*!
 * \brief Tells whether a text is in others.
 *
 * Prepared once, asked for each cell. An empty text is nowhere, nor is an expression that
 * is none.
 */
class TextMatcher
{
public:
    //! Where a match is, in characters.
    struct Match
    {
        qsizetype begin = 0;
        qsizetype length = 0;

        friend bool operator==(const Match &, const Match &) = default;
    };

    //! Finds nothing.
    TextMatcher() = default;
    TextMatcher(const QString &text, const TextRules &rules);

    QString text() const { return m_text; }
    const TextRules &rules() const { return m_rules; }

    //! Whether \a text has what is looked for.
    bool isIn(const QString &text) const;

    //! The same, quicker, for a \a text that is known to be ASCII.
    bool isInAscii(const QString &text) const;

    //! All matches in \a text from left to right, none within another, none that is empty.
    QList<Match> matchesIn(const QString &text) const;

    //! Whether it finds something in any text at all.
    bool isNothing() const { return m_text.isEmpty() || !problem().isEmpty(); }

    //! What is wrong with the expression, with the place where; empty if nothing is.
    QString problem() const;

    //! Texts, at least one of which is in every text that has a match, in whatever case; none
    //! if they are not known.
    QStringList needles() const;

private:
    qsizetype next(const QString &text, qsizetype from) const;

    QString m_text;
    TextRules m_rules;
    QStringMatcher m_plain;          //!< of a text as it is
    QRegularExpression m_expression; //!< of an expression
    bool m_isValid = false;          //!< it is one
};

#endif // TEXTMATCHER_H
