// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "numberwriter_p.h"

#include <QMetaType>
#include <QVariant>

#include <algorithm>
#include <charconv>
#include <cmath>

namespace FindTexts {

//! Rounds what begins at \a begin to six digits from \a first on. Returns the end.
//! Rounding the shortest digits of a value rounds the value itself: a tie between
//! the two would have been shorter still.
static const char *roundedToSix(char *begin, char *first)
{
    char *end = first;
    for (int digits = 0; digits < 6; ++end)
        digits += *end != '.';
    bool carries = (*end == '.' ? end[1] : *end) >= '5';
    for (char *digit = end - 1; carries; --digit) {
        if (digit < first)
            return begin;
        if (*digit == '.')
            continue;
        carries = *digit == '9';
        *digit = carries ? '0' : char(*digit + 1);
    }
    if (std::find(begin, end, '.') == end)
        return end;
    while (end[-1] == '0')
        --end;
    return end[-1] == '.' ? end - 1 : end;
}

//! Six digits at most, as delegates write them. Exponents are left to the locale.
static const char *writeReal(double value, char *begin, char *limit)
{
    const double size = std::abs(value);
    if (size == 0)
        return std::to_chars(begin, limit, 0).ptr;
    if (!(size >= 1e-4 && size < 999999))
        return begin;
    char *end = std::to_chars(begin, limit, value, std::chars_format::fixed).ptr;
    char *first = std::find_if(begin, end, [](char c) { return c >= '1' && c <= '9'; });
    const auto digits = end - first - std::count(first, end, '.');
    if (digits <= 6)
        return end;
    // Whether it is a tie exactly does not show here.
    return digits == 7 && end[-1] == '5' ? begin : roundedToSix(begin, first);
}

NumberWriter::NumberWriter(const QLocale &locale)
    : m_minus(locale.negativeSign())
    , m_point(locale.decimalPoint())
{
}

QStringView NumberWriter::text(const QVariant &value)
{
    char16_t *to = m_text.data();
    for (const char *c = m_ascii.data(), *end = write(value); c != end; ++c) {
        if (*c >= '0' && *c <= '9')
            *to++ = char16_t(*c);
        else if ((*c == '-' && m_minus.size() == 1) || (*c == '.' && m_point.size() == 1))
            *to++ = (*c == '-' ? m_minus : m_point).front().unicode();
        else
            return {};
    }
    return {m_text.data(), to - m_text.data()};
}

//! Into m_ascii, in the way of C. Returns the end.
const char *NumberWriter::write(const QVariant &value)
{
    char *begin = m_ascii.data();
    char *limit = begin + m_ascii.size();
    const void *data = value.constData();
    switch (value.typeId()) {
    case QMetaType::Int:
        return std::to_chars(begin, limit, *static_cast<const int *>(data)).ptr;
    case QMetaType::UInt:
        return std::to_chars(begin, limit, *static_cast<const uint *>(data)).ptr;
    case QMetaType::LongLong:
        return std::to_chars(begin, limit, *static_cast<const qlonglong *>(data)).ptr;
    case QMetaType::ULongLong:
        return std::to_chars(begin, limit, *static_cast<const qulonglong *>(data)).ptr;
    case QMetaType::Double:
        return writeReal(*static_cast<const double *>(data), begin, limit);
    default:
        return begin;
    }
}

} // namespace FindTexts
