// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef DECIMAL_LAYOUT_P_H
#define DECIMAL_LAYOUT_P_H

#include "bcdii.h"
#include "nan_p.h"

#include <algorithm>
#include <cstring>

//! \file
//! What a type word says about a value's bytes, what its first byte says about the value, and
//! the bits of a status.
//!
//! A type word is never refused. Whatever it holds, a layout has 0 to 64 bytes, and a value
//! of it is these bytes and no others. Pairs are 0 to 99; that of the first byte is below
//! its sign bit. A byte 0 beyond 99 without that bit is NaN, for all operations.

namespace Decimal {

enum StatusBit : UINT32 {
    Overflow = 0x01,
    IsZero = 0x02,
    IsNegative = 0x04,
    NoResult = 0x10,
    Invalid = 0x20,
    Rounded = 0x40,
    NanOperand = 0x80
};

inline constexpr BYTE signBit = 0x80;
inline constexpr BYTE pairMask = 0x7F;
inline constexpr int headerSize = sizeof(BCDIIStoreType);

//! What a type says about its bytes. Counts are ints: an exact product has up to
//! 128 digits, more than a type word can say.
struct Layout
{
    constexpr Layout(int digits, int fractionDigits)
        : nfrac(fractionDigits)
        , nint(digits - fractionDigits)
        , ball(bint() + bfrac())
    {
    }

    constexpr explicit Layout(BCDIIType type)
        : nfrac(static_cast<std::int8_t>(type))
        , nint(static_cast<std::int8_t>(type >> 8) - nfrac)
        , ball(nint + nfrac > 0 ? (nint + nfrac + 1 + (nfrac & 1)) >> 1 : 0)
    {
    }

    constexpr int bint() const { return (nint + 1) >> 1; }
    constexpr int bfrac() const { return (nfrac + 1) >> 1; }

    int nfrac;
    int nint;
    int ball; //!< a type of no digits, or fewer, has no bytes
};

inline BYTE *bytes(void *p)
{
    return static_cast<BYTE *>(p);
}

inline const BYTE *bytes(const void *p)
{
    return static_cast<const BYTE *>(p);
}

inline BYTE *dataOf(void *bcd)
{
    return bytes(bcd) + headerSize;
}

inline const BYTE *dataOf(const void *bcd)
{
    return bytes(bcd) + headerSize;
}

inline void storeHeader(void *bcd, BCDIIType type)
{
    const auto word = static_cast<BCDIIStoreType>(type);
    std::memcpy(bcd, &word, sizeof word);
}

inline bool isSameType(BCDIIType a, BCDIIType b)
{
    return static_cast<BCDIIStoreType>(a) == static_cast<BCDIIStoreType>(b);
}

inline bool isNan(const BYTE *bcd)
{
    return (bcd[0] & pairMask) > 99;
}

//! Without a branch.
inline bool isAnyNan(const BYTE *a, const BYTE *b)
{
    return (int {isNan(a)} | int {isNan(b)}) != 0;
}

inline bool isNegative(const BYTE *bcd)
{
    return (bcd[0] & signBit) != 0;
}

inline UINT32 signStatus(bool negative)
{
    return negative ? UINT32 {IsNegative} : 0;
}

inline UINT32 putZero(BYTE *bcd, Layout t)
{
    std::fill_n(bcd, t.ball, BYTE {0});
    return IsZero;
}

//! Every destination has room for this byte, one of a type without digits, too.
inline UINT32 putNan(BYTE *bcd, UINT32 status)
{
    bcd[0] = nanByte;
    return status;
}

//! First pair that is not zero, or ball.
inline int firstPair(const BYTE *bcd, int ball)
{
    int i = 0;
    while (i < ball && (bcd[i] & pairMask) == 0)
        ++i;
    return i;
}

} // namespace Decimal

#endif // DECIMAL_LAYOUT_P_H
