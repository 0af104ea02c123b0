// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "linematcher.h"

#include <algorithm>

namespace {

using Verdict = LineMatcher::Verdict;

bool isAsciiByte(char c)
{
    return quint8(c) < 0x80;
}

char toLowerAscii(char c)
{
    return c >= 'A' && c <= 'Z' ? char(c + ('a' - 'A')) : c;
}

bool isWordCharacter(char c)
{
    const char lower = toLowerAscii(c);
    return (lower >= 'a' && lower <= 'z') || (c >= '0' && c <= '9') || c == '_';
}

//! Whether text is these bytes. Looks at all of them, so that the compiler can look at
//! several at once.
bool isVisibleAscii(QByteArrayView bytes)
{
    unsigned other = 0;
    for (const char byte : bytes)
        other |= unsigned(quint8(byte - 0x20) > 0x5e) & unsigned(byte != '\t');
    return other == 0;
}

QByteArrayView withoutEnd(QByteArrayView line, char lineEnd)
{
    if (!line.endsWith(lineEnd))
        return line;
    line.chop(1);
    if (lineEnd == '\n' && line.endsWith('\r'))
        line.chop(1);
    return line;
}

} // namespace

LineMatcher::LineMatcher(const TextMatcher &matcher, char lineEnd)
    : m_matcher(matcher)
    , m_lineEnd(lineEnd)
{
    const QString text = matcher.text();
    if (matcher.rules().isExpression) {
        if (!matcher.isNothing())
            m_expression = LineExpression::of(text, matcher.rules());
        return;
    }
    const bool isVisible = std::all_of(text.begin(), text.end(), [](QChar c) {
        return c.unicode() >= 0x20 && c.unicode() < 0x7f;
    });
    if (!isVisible)
        return;
    m_needle = matcher.rules().matchesCase ? text.toLatin1() : text.toLatin1().toLower();
    // The Kelvin sign and the long s.
    m_hasDoubles =
        !matcher.rules().matchesCase && (m_needle.contains('k') || m_needle.contains('s'));
}

LineMatcher::Verdict LineMatcher::judge(QByteArrayView line, qsizetype place) const
{
    return m_needle.isEmpty() ? judgeText(withoutEnd(line, m_lineEnd)) : judgeBytes(line, place);
}

LineMatcher::Verdict LineMatcher::judgeText(QByteArrayView line) const
{
    if (!isVisibleAscii(line))
        return Verdict::Unclear;
    if (m_expression)
        return m_expression->isIn(line) ? Verdict::Match : Verdict::NoMatch;
    m_text.resize(line.size());
    std::copy(line.begin(), line.end(), reinterpret_cast<char16_t *>(m_text.data()));
    return m_matcher.isInAscii(m_text) ? Verdict::Match : Verdict::NoMatch;
}

LineMatcher::Verdict LineMatcher::judgeBytes(QByteArrayView line, qsizetype place) const
{
    const qsizetype last = line.size() - m_needle.size();
    for (; place <= last; ++place) {
        if (!isAt(line.data() + place))
            continue;
        const Verdict verdict = m_matcher.rules().wholeWords ? wordAt(line, place) : Verdict::Match;
        if (verdict != Verdict::NoMatch)
            return verdict;
    }
    const bool isAllAscii = !m_hasDoubles || std::all_of(line.begin(), line.end(), isAsciiByte);
    return isAllAscii ? Verdict::NoMatch : Verdict::Unclear;
}

bool LineMatcher::isAt(const char *place) const
{
    if (m_matcher.rules().matchesCase)
        return std::equal(m_needle.begin(), m_needle.end(), place);
    return std::equal(m_needle.begin(), m_needle.end(), place,
                      [](char wanted, char c) { return wanted == toLowerAscii(c); });
}

//! Whether what is at \a place is a whole word.
LineMatcher::Verdict LineMatcher::wordAt(QByteArrayView line, qsizetype place) const
{
    const qsizetype end = place + m_needle.size();
    const char before = place > 0 ? line[place - 1] : '\0';
    const char behind = end < line.size() ? line[end] : '\0';
    if (!isAsciiByte(before) || !isAsciiByte(behind))
        return Verdict::Unclear;
    return isWordCharacter(before) || isWordCharacter(behind) ? Verdict::NoMatch : Verdict::Match;
}
