// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef PACKEDDECIMAL_H
#define PACKEDDECIMAL_H

#include <bcdii.h>

#include <algorithm>
#include <string>
#include <string_view>

//! A decimal whose type is known at run time, with room for every type. What Python's
//! Decimal is made of; types are checked there.
class PackedDecimal
{
public:
    //! NaN of \a digits digits, \a fraction of them after the point.
    PackedDecimal(int digits, int fraction)
        : m_type((static_cast<BCDIIType>(digits) & 0xFF) << 8
                 | (static_cast<BCDIIType>(fraction) & 0xFF))
    {
        m_bytes[0] = 101;
    }

    //! \a text exactly, else NaN; see BCDIIParse().
    static PackedDecimal parse(std::string_view text, int digits, int fraction)
    {
        PackedDecimal value(digits, fraction);
        value.m_status =
            BCDIIParse(value.m_bytes, value.m_type, text.data(), text.size(), nullptr, ".");
        return value;
    }

    //! The value that \a data is; status() has 0x20 when it is none, or not as long as it
    //! should be.
    static PackedDecimal fromBytes(std::string_view data, int digits, int fraction)
    {
        PackedDecimal value(digits, fraction);
        value.m_status = 0x20;
        if (data.size() != value.size())
            return value;
        std::copy(data.begin(), data.end(), value.m_bytes);
        value.m_status = BCDIICheck(value.m_bytes, value.m_type);
        return value;
    }

    //! \a source in another type; see BCDIICopy().
    static PackedDecimal copy(const PackedDecimal &source, int digits, int fraction, int style)
    {
        PackedDecimal value(digits, fraction);
        value.m_status = BCDIICopy(value.m_bytes, value.m_type, source.m_bytes, source.m_type,
                                   static_cast<BCDIIroundstyle>(style));
        return value;
    }

    //! a + b and a * b in any type; see BCDIIAdd() and BCDIIMul().
    //! @{
    static PackedDecimal sum(const PackedDecimal &a, const PackedDecimal &b, int digits,
                             int fraction, int style)
    {
        PackedDecimal value(digits, fraction);
        value.m_status = BCDIIAdd(value.m_bytes, value.m_type, a.m_bytes, a.m_type, b.m_bytes,
                                  b.m_type, static_cast<BCDIIroundstyle>(style));
        return value;
    }
    static PackedDecimal product(const PackedDecimal &a, const PackedDecimal &b, int digits,
                                 int fraction, int style)
    {
        PackedDecimal value(digits, fraction);
        value.m_status = BCDIIMul(value.m_bytes, value.m_type, a.m_bytes, a.m_type, b.m_bytes,
                                  b.m_type, static_cast<BCDIIroundstyle>(style));
        return value;
    }
    //! @}

    //! −\a source.
    static PackedDecimal negated(const PackedDecimal &source)
    {
        PackedDecimal value = source;
        value.m_status = BCDIINeg(value.m_bytes, value.m_type);
        return value;
    }

    //! The sign of a − b; neither may be NaN.
    static int compare(const PackedDecimal &a, const PackedDecimal &b)
    {
        return BCDIICmp(a.m_bytes, a.m_type, b.m_bytes, b.m_type);
    }

    //! The two numbers of the type.
    //! @{
    int digits() const { return static_cast<signed char>(m_type >> 8); }
    int fraction() const { return static_cast<signed char>(m_type & 0xFF); }
    //! @}

    //! The status word of bcdii.h that the value was made with.
    int status() const { return static_cast<int>(m_status); }
    bool isNan() const { return (m_bytes[0] & 0x7F) == 101; }
    //! Whether it is below zero.
    bool isNegative() const { return !isNan() && (m_bytes[0] & 0x80) != 0; }

    //! "-12.50", "0.5", "0", or "NaN".
    std::string text() const
    {
        if (isNan())
            return "NaN";
        std::string text = BCDII2StringSequence(m_bytes, m_type).c_str();
        const std::size_t first = isNegative() ? 1 : 0;
        if (text.size() == first || text[first] == '.')
            text.insert(first, 1, '0');
        return text;
    }

    //! The bytes of the value, size() of them.
    //! @{
    const char *data() const { return reinterpret_cast<const char *>(m_bytes); }
    std::size_t size() const
    {
        return static_cast<std::size_t>((digits() >> 1) + ((digits() | fraction()) & 1));
    }
    //! @}

private:
    BCDIIType m_type;
    std::uint32_t m_status = 0x10;
    std::uint8_t m_bytes[32] = {}; //!< as described in bcdii.h
};

#endif // PACKEDDECIMAL_H
