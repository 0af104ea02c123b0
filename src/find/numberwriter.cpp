// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "numberwriter_p.h"

#include <QMetaType>
#include <QVariant>

#include <algorithm>
#include <charconv>
#include <cmath>

namespace FindTexts {

//! Whether \a size, the shortest digits of which are seven, the last a 5, rounds up to six.
//! \a first to \a end are these digits, and may have a point. A tie exactly rounds up.
static bool roundsUp(double size, const char *first, const char *end)
{
    double digits = 0;
    double scale = 1; // 10^10 at most, which is exact
    for (bool isFraction = false; first != end; ++first) {
        if (*first == '.') {
            isFraction = true;
        } else {
            digits = digits * 10 + (*first - '0');
            scale *= isFraction ? 10 : 1;
        }
    }
    // product + rest is the exact product, and product - digits is exact.
    const double product = size * scale;
    const double rest = std::fma(size, scale, -product);
    return (product - digits) + rest >= 0;
}

//! Rounds what begins at \a begin to six digits from \a first on; up, if \a isUp says so.
//! Returns the end.
static const char *roundedToSix(char *begin, char *first, bool isUp)
{
    char *end = first;
    for (int digits = 0; digits < 6; ++end)
        digits += *end != '.';
    bool carries = isUp;
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

//! Whether delegates write a value of that \a size without an exponent.
static bool isPlain(double size)
{
    return size == 0 || (size >= 1e-4 && size < 999999);
}

//! Six digits at most, as delegates write them. Exponents are left to the locale.
//! Rounding the shortest digits of a value rounds the value itself, if they are more than
//! seven: a tie between the two would have been shorter still.
static const char *writeReal(double value, char *begin, char *limit)
{
    const double size = std::abs(value);
    if (size == 0)
        return std::to_chars(begin, limit, 0).ptr;
    if (!isPlain(size))
        return begin;
    char *end = std::to_chars(begin, limit, value, std::chars_format::fixed).ptr;
    char *first = std::find_if(begin, end, [](char c) { return c >= '1' && c <= '9'; });
    const auto digits = end - first - std::count(first, end, '.');
    if (digits <= 6)
        return end;
    const char *seventh = first + 6;
    if (std::find(first, first + 7, '.') != first + 7)
        ++seventh;
    const bool isUp = digits == 7 && *seventh == '5' ? roundsUp(size, first, end) : *seventh >= '5';
    return roundedToSix(begin, first, isUp);
}

NumberWriter::NumberWriter(const QLocale &locale)
    : m_minus(locale.negativeSign())
    , m_point(locale.decimalPoint())
{
}

std::string_view NumberWriter::plain(const QVariant &value)
{
    const char *begin = m_ascii.data();
    const std::string_view written(begin, size_t(write(value) - begin));
    // A sign of several characters, as a mark of direction before it, is left to the locale.
    if ((written.starts_with('-') && m_minus.size() != 1)
        || (m_point.size() != 1 && written.find('.') != written.npos)) {
        return {};
    }
    return written;
}

QStringView NumberWriter::text(const QVariant &value)
{
    const std::string_view written = plain(value);
    std::transform(written.begin(), written.end(), m_text.begin(), [this](char c) {
        return (c == '-' ? m_minus.front() : c == '.' ? m_point.front() : QLatin1Char(c)).unicode();
    });
    return {m_text.data(), qsizetype(written.size())};
}

std::string NumberWriter::asPlain(const QString &text) const
{
    std::string plain;
    for (const QChar c : text) {
        if (c >= u'0' && c <= u'9')
            plain += char(c.unicode());
        else if (m_minus == c)
            plain += '-';
        else if (m_point == c)
            plain += '.';
        else
            return {};
    }
    return plain;
}

bool NumberWriter::mayWrite(const QString &text) const
{
    return std::all_of(text.begin(), text.end(), [this](QChar c) {
        return (c >= u'0' && c <= u'9') || m_minus.contains(c) || m_point.contains(c);
    });
}

bool NumberWriter::isPlain(const QVariant &number)
{
    return number.typeId() != QMetaType::Double
        || FindTexts::isPlain(std::abs(*static_cast<const double *>(number.constData())));
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
