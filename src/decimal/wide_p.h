// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef DECIMAL_WIDE_P_H
#define DECIMAL_WIDE_P_H

#include "compiler_p.h"

#include <cstdint>

//! \file
//! Unsigned integers of 128 bits: as many operations as products of 64-bit numbers, and
//! divisions by what is known beforehand, need. Compilers for 64-bit machines have such
//! integers; PortableWide serves where they do not, and where
//! VANTIX_PORTABLE_DECIMALS is defined.

namespace Decimal {

//! Two words, with carries made by comparison.
class PortableWide
{
public:
    using Word = std::uint64_t;

    constexpr PortableWide() = default;
    constexpr PortableWide(Word high, Word low)
        : m_high(high)
        , m_low(low)
    {
    }

    //! \a a times \a b by products of their halves. The middle sum holds the high half
    //! of low * low and two numbers below 2^32, less than 2^64 together with one
    //! product of halves: (2^32 - 1)^2 + 2 (2^32 - 1) = 2^64 - 1.
    static constexpr PortableWide product(Word a, Word b)
    {
        constexpr Word half = 0xFFFFFFFF;
        const Word low = (a & half) * (b & half);
        const Word middle = (a >> 32) * (b & half) + (low >> 32);
        const Word otherMiddle = (a & half) * (b >> 32) + (middle & half);
        return {(a >> 32) * (b >> 32) + (middle >> 32) + (otherMiddle >> 32),
                otherMiddle << 32 | (low & half)};
    }

    constexpr Word high() const { return m_high; }
    constexpr Word low() const { return m_low; }

    //! The sum modulo 2^128.
    friend constexpr PortableWide operator+(PortableWide a, PortableWide b)
    {
        const Word low = a.m_low + b.m_low;
        return {a.m_high + b.m_high + Word {low < a.m_low}, low};
    }
    //! The lower 64 bits of the number shifted by \a bits, 1 to 63.
    constexpr Word shiftedDown(int bits) const { return m_high << (64 - bits) | m_low >> bits; }
    //! a < b, and a == b.
    //! @{
    friend constexpr bool operator<(PortableWide a, PortableWide b)
    {
        return (int {a.m_high < b.m_high} | (int {a.m_high == b.m_high} & int {a.m_low < b.m_low}))
            != 0;
    }
    friend constexpr bool operator==(PortableWide a, PortableWide b)
    {
        return ((a.m_high ^ b.m_high) | (a.m_low ^ b.m_low)) == 0;
    }
    //! @}

private:
    Word m_high = 0;
    Word m_low = 0;
};

#if defined(__SIZEOF_INT128__)

//! The compiler's own.
class NativeWide
{
public:
    using Word = std::uint64_t;

    constexpr NativeWide() = default;
    DECIMAL_INLINE constexpr NativeWide(Word high, Word low)
        : m_value(Value {high} << 64 | low)
    {
    }

    DECIMAL_INLINE static constexpr NativeWide product(Word a, Word b)
    {
        return NativeWide(Value {a} * b);
    }

    DECIMAL_INLINE constexpr Word high() const { return static_cast<Word>(m_value >> 64); }
    DECIMAL_INLINE constexpr Word low() const { return static_cast<Word>(m_value); }

    DECIMAL_INLINE friend constexpr NativeWide operator+(NativeWide a, NativeWide b)
    {
        return NativeWide(a.m_value + b.m_value);
    }
    DECIMAL_INLINE constexpr Word shiftedDown(int bits) const
    {
        return static_cast<Word>(m_value >> bits);
    }
    DECIMAL_INLINE friend constexpr bool operator<(NativeWide a, NativeWide b)
    {
        return a.m_value < b.m_value;
    }
    DECIMAL_INLINE friend constexpr bool operator==(NativeWide a, NativeWide b)
    {
        return a.m_value == b.m_value;
    }

private:
    __extension__ using Value = unsigned __int128;

    DECIMAL_INLINE explicit constexpr NativeWide(Value value)
        : m_value(value)
    {
    }

    Value m_value = 0;
};

#endif

#if defined(__SIZEOF_INT128__) && !defined(VANTIX_PORTABLE_DECIMALS)
using Wide = NativeWide;
#else
using Wide = PortableWide;
#endif

//! floor((2^128 - 1) / divisor) - 2^64 for a divisor from 2^63 on: digit by digit, since
//! it is only needed while compiling.
constexpr std::uint64_t reciprocalOf(std::uint64_t divisor)
{
    // 2^128 - 1 - 2^64 divisor is (2^64 - 1 - divisor) 2^64 + 2^64 - 1.
    std::uint64_t rest = ~divisor;
    std::uint64_t quotient = 0;
    for (int bit = 0; bit < 64; ++bit) {
        const bool isOver = rest >> 63 != 0; // beyond 2^64 when doubled
        rest = rest << 1 | 1;
        const bool fits = isOver || rest >= divisor;
        quotient = quotient << 1 | std::uint64_t {fits};
        rest -= fits ? divisor : 0;
    }
    return quotient;
}

} // namespace Decimal

#endif // DECIMAL_WIDE_P_H
