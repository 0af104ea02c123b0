// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "digitgroups.h"

#include <algorithm>

namespace {

constexpr qsizetype s_longestGrouped = 100; // characters
constexpr qint64 s_longSample = 1111111111111;
constexpr qint64 s_shortSample = 1111;
constexpr QChar s_narrowSpace(0x202f);

bool isPlainDigit(QChar character)
{
    return character >= u'0' && character <= u'9';
}

} // namespace

// The locale is asked for a number: it tells of sizes of groups in no other way.
DigitGroups::DigitGroups(const QLocale &locale)
    : m_separator(locale.groupSeparator())
{
    const QString sample = locale.toString(s_longSample);
    const qsizetype last = sample.lastIndexOf(m_separator);
    const qsizetype before = last > 0 ? sample.lastIndexOf(m_separator, last - 1) : -1;
    if (!m_separator.isEmpty() && before > 0) {
        m_last = int(sample.size() - last - m_separator.size());
        m_other = int(last - before - m_separator.size());
        m_least = locale.toString(s_shortSample).contains(m_separator) ? m_last + 1 : m_last + 2;
    }
    if (m_separator.isEmpty() || m_separator == QLatin1String("."))
        m_separator = s_narrowSpace;
}

DigitGroups::Integer DigitGroups::integerOf(const QString &text)
{
    if (text.size() > s_longestGrouped)
        return {};
    const auto isSpace = [](QChar character) { return character.isSpace(); };
    const auto *begin = std::find_if_not(text.begin(), text.end(), isSpace);
    if (begin != text.end() && (*begin == u'-' || *begin == u'+'))
        ++begin;
    const auto *end = std::find_if_not(begin, text.end(), isPlainDigit);
    Integer integer;
    integer.begin = begin - text.begin();
    integer.end = end - text.begin();
    const auto *rest = end;
    if (end != text.end() && (*end == u'.' || *end == u',')) {
        integer.mark = *end;
        rest = std::find_if_not(end + 1, text.end(), isPlainDigit);
    }
    const bool isCode = begin != end && *begin == u'0' && end - begin > 1;
    return isCode || !std::all_of(rest, text.end(), isSpace) ? Integer() : integer;
}

bool DigitGroups::isSeam(qsizetype digitsBehind) const
{
    return digitsBehind >= m_last && (digitsBehind - m_last) % m_other == 0;
}

QString DigitGroups::separatorFor(const Integer &integer) const
{
    return m_separator == integer.mark ? QString(s_narrowSpace) : m_separator;
}

QString DigitGroups::grouped(const QString &text) const
{
    const Integer integer = integerOf(text);
    if (integer.end - integer.begin < m_least)
        return text;
    const QString separator = separatorFor(integer);
    QString result = text.left(integer.begin);
    for (qsizetype at = integer.begin; at < integer.end; ++at) {
        if (at > integer.begin && isSeam(integer.end - at))
            result += separator;
        result += text[at];
    }
    return result + text.mid(integer.end);
}

qsizetype DigitGroups::placeOf(qsizetype place, const QString &text) const
{
    const Integer integer = integerOf(text);
    if (integer.end - integer.begin < m_least)
        return place;
    qsizetype seams = 0;
    for (qsizetype at = integer.begin + 1; at < integer.end && at <= place; ++at)
        seams += isSeam(integer.end - at) ? 1 : 0;
    return place + seams * separatorFor(integer).size();
}
