// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "parse_p.h"

#include <algorithm>

namespace Decimal {

namespace {

// The parts of a number, as indexes of its text. Digits have places: 0 for the units, -1
// for the first one after the point.
struct Scan
{
    bool isNegative = false;
    bool isNumber = false;         // from the first character to the last
    std::size_t integerEnd = 0;    // behind the integer digits
    std::size_t fractionBegin = 0; // equal to end without fraction digits
    std::size_t end = 0;           // behind the last digit

    std::ptrdiff_t place(std::size_t index) const
    {
        return index < integerEnd ? static_cast<std::ptrdiff_t>(integerEnd - index) - 1
                                  : -static_cast<std::ptrdiff_t>(index - fractionBegin) - 1;
    }
};

bool isDigit(char c)
{
    return c >= '0' && c <= '9';
}

std::size_t skipDigits(std::string_view text, std::size_t i)
{
    while (i < text.size() && isDigit(text[i]))
        ++i;
    return i;
}

Scan scan(std::string_view text, std::string_view points)
{
    Scan s;
    s.isNegative = !text.empty() && text[0] == '-';
    const std::size_t first = s.isNegative || (!text.empty() && text[0] == '+') ? 1 : 0;
    s.integerEnd = skipDigits(text, first);
    s.fractionBegin = s.end = s.integerEnd;
    const std::size_t next = s.integerEnd + 1;
    if (next < text.size() && points.find(text[s.integerEnd]) != points.npos
        && isDigit(text[next])) {
        s.fractionBegin = next;
        s.end = skipDigits(text, next);
    }
    s.isNumber = s.end == text.size() && s.end > first;
    return s;
}

// A number's digits and the type that is to have them.
class Reader
{
public:
    Reader(std::string_view text, const Scan &scan, BCDIIType type)
        : m_text(text)
        , m_scan(scan)
        , m_fraction(static_cast<std::int8_t>(type & 0xFF))
        , m_integer(static_cast<std::int8_t>(type >> 8 & 0xFF) - m_fraction)
        , m_first(nextDigit(0))
    {
    }

    bool isZero() const { return m_first == m_scan.end; }

    // The first digit too many before the point, or the end.
    std::size_t surplusInteger() const
    {
        if (isZero() || m_scan.place(m_first) < m_integer)
            return m_scan.end;
        return m_first + static_cast<std::size_t>(std::max(m_integer, 0));
    }

    // The first digit other than 0 behind the last place, or the end.
    std::size_t surplusFraction() const
    {
        std::size_t i = m_first;
        while (i < m_scan.end && m_scan.place(i) >= -m_fraction)
            i = nextDigit(i + 1);
        return i;
    }

    // A value that fits.
    void write(std::uint8_t *bytes) const
    {
        const int pairsBefore = (m_integer + 1) >> 1;
        std::fill_n(bytes, pairsBefore + ((m_fraction + 1) >> 1), std::uint8_t {0});
        for (std::size_t i = m_first; i < m_scan.end; i = nextDigit(i + 1)) {
            const std::ptrdiff_t place = m_scan.place(i);
            const int digit = m_text[i] - '0';
            std::uint8_t &pair = bytes[pairsBefore - 1 - (place >> 1)];
            pair = static_cast<std::uint8_t>(pair + ((place & 1) != 0 ? digit * 10 : digit));
        }
        if (m_scan.isNegative && !isZero())
            bytes[0] = static_cast<std::uint8_t>(bytes[0] | 0x80U);
    }

private:
    // The first digit from i on that is not 0, or the end.
    std::size_t nextDigit(std::size_t i) const
    {
        while (i < m_scan.end && !(m_text[i] >= '1' && m_text[i] <= '9'))
            ++i;
        return i;
    }

    std::string_view m_text;
    const Scan &m_scan;
    int m_fraction;      // digits after the point
    int m_integer;       // and before it
    std::size_t m_first; // the first digit that is not 0
};

} // namespace

std::uint32_t parse(std::uint8_t *bytes, BCDIIType type, std::string_view text,
                    std::string_view points, std::size_t *end)
{
    *end = 0;
    if (BCDIICheckType(type) == 0)
        return 0x20;
    const Scan s = scan(text, points);
    *end = s.end;
    if (!s.isNumber)
        return 0x30;
    const Reader reader(text, s, type);
    *end = reader.surplusInteger();
    if (*end != s.end)
        return 0x11;
    *end = reader.surplusFraction();
    if (*end != s.end)
        return 0x50;
    reader.write(bytes);
    return reader.isZero() ? 0x02 : s.isNegative ? 0x04 : 0x00;
}

} // namespace Decimal
