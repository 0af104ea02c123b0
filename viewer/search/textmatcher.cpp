// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "textmatcher.h"

#include "expressionliterals.h"

#include <QCoreApplication>

namespace {

bool isWordCharacter(QChar character)
{
    return character.isLetterOrNumber() || character.isMark() || character == u'_'
        || character.isSurrogate();
}

QRegularExpression expressionOf(const QString &text, const TextRules &rules)
{
    const QString words = QStringLiteral("\\b(?:%1)\\b");
    QRegularExpression expression(rules.wholeWords ? words.arg(text) : text,
                                  QRegularExpression::UseUnicodePropertiesOption);
    if (!rules.matchesCase)
        expression.setPatternOptions(expression.patternOptions()
                                     | QRegularExpression::CaseInsensitiveOption);
    return expression;
}

} // namespace

TextMatcher::TextMatcher(const QString &text, const TextRules &rules)
    : m_text(text)
    , m_rules(rules)
{
    if (rules.isExpression) {
        m_expression = expressionOf(text, rules);
        m_isValid = m_expression.isValid();
    } else {
        m_plain = QStringMatcher(text, rules.matchesCase ? Qt::CaseSensitive : Qt::CaseInsensitive);
    }
}

bool TextMatcher::isIn(const QString &text) const
{
    if (m_text.isEmpty())
        return false;
    if (m_rules.isExpression)
        return m_isValid && m_expression.match(text).hasMatch();
    return next(text, 0) >= 0;
}

bool TextMatcher::isInAscii(const QString &text) const
{
    if (!m_rules.isExpression)
        return isIn(text);
    // That it has whole characters only need not be looked at.
    return m_isValid && !m_text.isEmpty()
        && m_expression
               .match(text, 0, QRegularExpression::NormalMatch,
                      QRegularExpression::DontCheckSubjectStringMatchOption)
               .hasMatch();
}

QList<TextMatcher::Match> TextMatcher::matchesIn(const QString &text) const
{
    QList<Match> matches;
    if (m_text.isEmpty())
        return matches;
    if (!m_rules.isExpression) {
        for (qsizetype at = next(text, 0); at >= 0; at = next(text, at + m_text.size()))
            matches.append({at, m_text.size()});
        return matches;
    }
    if (!m_isValid)
        return matches;
    for (auto found = m_expression.globalMatch(text); found.hasNext();) {
        const QRegularExpressionMatch match = found.next();
        if (match.capturedLength() > 0)
            matches.append({match.capturedStart(), match.capturedLength()});
    }
    return matches;
}

//! Where a text as it is stands in \a text from \a from on, or -1.
qsizetype TextMatcher::next(const QString &text, qsizetype from) const
{
    for (qsizetype at = m_plain.indexIn(text, from); at >= 0; at = m_plain.indexIn(text, at + 1)) {
        const qsizetype end = at + m_text.size();
        const bool begins = at == 0 || !isWordCharacter(text[at - 1]);
        const bool ends = end == text.size() || !isWordCharacter(text[end]);
        if (!m_rules.wholeWords || (begins && ends))
            return at;
    }
    return -1;
}

QStringList TextMatcher::needles() const
{
    if (m_rules.isExpression)
        return literalsOf(m_text);
    return m_text.isEmpty() ? QStringList() : QStringList {m_text};
}

QString TextMatcher::problem() const
{
    if (!m_rules.isExpression || m_text.isEmpty())
        return {};
    // What is put around it for whole words is not what somebody wrote.
    const QRegularExpression written(m_text, QRegularExpression::UseUnicodePropertiesOption);
    if (written.isValid())
        return {};
    return QCoreApplication::translate("TextMatcher", "Character %1: %2")
        .arg(written.patternErrorOffset() + 1)
        .arg(written.errorString());
}
