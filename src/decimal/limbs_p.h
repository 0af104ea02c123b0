// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef DECIMAL_LIMBS_P_H
#define DECIMAL_LIMBS_P_H

#include "compiler_p.h"
#include "layout_p.h"
#include "words_p.h"

//! \file
//! Pairs as binary numbers and back: eight pairs make a limb, below 10^16, and values of up
//! to ten pairs a number, below 10^19 and so below 2^64.
//!
//! Both directions work on all fields of a word at once, and no field overflows into the
//! next: one of 8, 16 or 32 bits holds a number below 10^2, 10^4 or 10^8.
//!
//! To divide by d is to multiply with c / 2^s, where c = ceil(2^s / d). That is exact for x
//! with x (c d - 2^s) < 2^s. 109951163 * 10^4 - 2^40 = 2224 takes all x below 4.9 * 10^8, and
//! 10486 * 100 - 2^20 = 24 those below 43690, as 5243 * 100 - 2^19 = 12 does.

namespace Decimal {

//! A limb is the number that a word of pairs stands for, below 10^16.
inline constexpr Word tenToEight = 100000000;
inline constexpr Word limbBase = tenToEight * tenToEight;

//! Folds neighbours three times: pairs to fours, fours to eights, eights to one.
//! Of high * 2^k + low, taking high * (2^k - 10^m) leaves high * 10^m + low.
DECIMAL_INLINE Word toLimb(Word pairs)
{
    Word x = pairs - (pairs >> 8 & 0x00FF00FF00FF00FF) * (0x100 - 100);
    x -= (x >> 16 & 0x0000FFFF0000FFFF) * (0x10000 - 10000);
    return x - (x >> 32) * (0x100000000 - tenToEight);
}

//! The inverse of toLimb(): splits eights, fours and pairs. The reciprocals are exact
//! for their ranges: 109951163 / 2^40 for 1 / 10^4 below 10^8, 10486 / 2^20 for 1 / 100
//! below 10^4.
DECIMAL_INLINE Word toPairs(Word high, Word low)
{
    constexpr Word lanes = 0x0000007F0000007F;
    const Word fours = (high * 109951163 >> 40) << 32 | low * 109951163 >> 40;
    const Word otherFours = (high << 32 | low) - fours * 10000;
    const Word hundreds = fours * 10486 >> 20 & lanes;
    const Word otherHundreds = otherFours * 10486 >> 20 & lanes;
    return (fours << 16 | otherFours) + (hundreds << 16 | otherHundreds) * (0x100 - 100);
}

DECIMAL_INLINE Word toPairs(Word limb)
{
    const Word high = limb / tenToEight;
    return toPairs(high, limb - high * tenToEight);
}

inline constexpr int numberPairs = 10;

//! 1 to 10 pairs as a number. With 10 the first is below 10.
DECIMAL_INLINE Word toNumber(const BYTE *p, int n)
{
    if (n < wordPairs)
        return toLimb(loadShort(p, n) & topMasks[n]);
    const Word low = load<Word>(p + n - wordPairs);
    if (n == wordPairs)
        return toLimb(low & topMasks[n]);
    const Word first = p[0] & pairMask;
    return toLimb(low) + (n == numberPairs ? first * 100 + p[1] : first) * limbBase;
}

//! The inverse for a number that fits n bytes.
DECIMAL_INLINE void putNumber(BYTE *p, int n, Word number, bool negative)
{
    const Word upper = number / tenToEight;
    const Word low = number - upper * tenToEight;
    if (n <= wordPairs)
        return storeWords<1>(p, n, {toPairs(upper, low)}, negative);
    const Word top = upper / tenToEight; // below 1845: two pairs
    const Word pairs = top + (top * 5243 >> 19) * (0x100 - 100);
    storeExact<2>(p, n, {toPairs(upper - top * tenToEight, low), pairs}, negative);
}

//! Whether a value is below 10^19.
DECIMAL_INLINE bool isNumber(const BYTE *p, int n)
{
    return n > 0 && (n < numberPairs || (n == numberPairs && (p[0] & pairMask) < 10));
}

} // namespace Decimal

#endif // DECIMAL_LIMBS_P_H
