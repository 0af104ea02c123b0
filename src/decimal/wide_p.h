// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef DECIMAL_WIDE_P_H
#define DECIMAL_WIDE_P_H

#include "compiler_p.h"

#include <cstdint>

#if defined(__x86_64__) && defined(__GNUC__) && !defined(VANTIX_PORTABLE_DECIMALS)
#define DECIMAL_X86
#include <immintrin.h>
#endif

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

//! Chains of additions and subtractions: \a carry is what the words below have left over, and
//! then what these do.
//! @{
DECIMAL_INLINE std::uint64_t addWithCarry(std::uint64_t a, std::uint64_t b, bool &carry)
{
#ifdef DECIMAL_X86
    unsigned long long sum;
    carry = _addcarry_u64(carry, a, b, &sum) != 0;
    return sum;
#else
    const std::uint64_t partial = a + b;
    const std::uint64_t sum = partial + std::uint64_t {carry};
    carry = (partial < a) | (sum < partial);
    return sum;
#endif
}

DECIMAL_INLINE std::uint64_t subtractWithBorrow(std::uint64_t a, std::uint64_t b, bool &borrow)
{
#ifdef DECIMAL_X86
    unsigned long long difference;
    borrow = _subborrow_u64(borrow, a, b, &difference) != 0;
    return difference;
#else
    const std::uint64_t partial = a - b;
    const std::uint64_t difference = partial - std::uint64_t {borrow};
    borrow = (a < b) | (partial < difference);
    return difference;
#endif
}
//! @}

//! Has both be computed before what follows.
DECIMAL_INLINE void settle(std::uint64_t &a, std::uint64_t &b)
{
#ifdef DECIMAL_X86
    __asm__("" : "+r"(a), "+r"(b));
#else
    (void)a;
    (void)b;
#endif
}

//! The upper word of two that are shifted up by 0 to 63 bits, and the lower one of two that
//! are shifted down. Compilers make one instruction of it only while they do not know the
//! range of the count.
//! @{
DECIMAL_INLINE std::uint64_t shiftedUp(std::uint64_t high, std::uint64_t low, int bits)
{
#ifdef DECIMAL_X86
    __asm__("shldq %b2, %1, %0" : "+r"(high) : "r"(low), "c"(bits) : "cc");
    return high;
#else
    return high << bits | low >> 1 >> (63 - bits);
#endif
}

DECIMAL_INLINE std::uint64_t shiftedDown(std::uint64_t high, std::uint64_t low, int bits)
{
#ifdef DECIMAL_X86
    __asm__("shrdq %b2, %1, %0" : "+r"(low) : "r"(high), "c"(bits) : "cc");
    return low;
#else
    return low >> bits | high << 1 << (63 - bits);
#endif
}
//! @}

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
