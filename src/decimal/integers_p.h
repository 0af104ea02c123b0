// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef DECIMAL_INTEGERS_P_H
#define DECIMAL_INTEGERS_P_H

#include "compiler_p.h"
#include "layout_p.h"
#include "limbs_p.h"
#include "rounding_p.h"
#include "roundstyle_p.h"
#include "words_p.h"

#include <algorithm>
#include <limits>

//! \file
//! Integers as values and back: a copy from, or to, a layout in which the integer's last
//! digit is the fd-th after the point.
//!
//! With an odd fd that digit is the tens digit of a pair, and the other one is padding: an
//! integer has 20 digits at most, and 11 bytes hold it either way. The upper three of them
//! are the integer divided by 10^16, or by 10^15 with an odd fd: below 18447, for which
//! 5243 / 2^19 is 1 / 100.

namespace Decimal {

//! Beyond this a count of fraction digits makes no more difference: all digits of
//! every type are on one side of the point. Even, so that parity is kept.
inline constexpr int farAway = 300;

inline int nearFractionDigits(int fd)
{
    return fd > farAway ? farAway : fd < -farAway ? -farAway : fd;
}

//! The integer in pairs that are aligned on a point fd digits from its end.
DECIMAL_INLINE Words<2> integerPairs(UINT64 i64, int fd)
{
    // With an odd fd times 10, to fill a pair.
    const bool odd = (fd & 1) != 0;
    const Word high = odd ? i64 / (limbBase / 10) : i64 / limbBase;
    const Word low = odd ? (i64 - high * (limbBase / 10)) * 10 : i64 - high * limbBase;
    // The high part is below 2^16: three pairs.
    const Word hundreds = high * 5243 >> 19;
    const Word tenThousands = hundreds * 5243 >> 19;
    return {toPairs(low), high + hundreds * (0x100 - 100) + tenThousands * (0x10000 - 0x6400)};
}

//! putInteger() for any type and fd, with words or pair by pair.
UINT32 putAnyInteger(BYTE *dst, BCDIIType type, UINT64 i64, int fd, bool negative);

//! toInteger() for any value and fd, with words or pair by pair.
UINT32 toAnyInteger(INT64 *pi64, const BYTE *bcd, BCDIIType type, int fd, BCDIIroundstyle rs);

//! BCDIIGetFromInt64() for a magnitude and a sign. Mostly the type has the integer's own
//! fraction digits: then nothing is cut, and what fits is stored.
DECIMAL_INLINE UINT32 putInteger(BYTE *dst, BCDIIType type, UINT64 i64, int fd, bool negative)
{
    const Layout d(type);
    constexpr int mostBytes = windowWords * wordPairs;
    if (fd != d.nfrac || fd > 2 * windowFraction || static_cast<unsigned>(d.ball - 1) >= mostBytes)
        return putAnyInteger(dst, type, i64, fd, negative);
    const UINT32 status = i64 == 0 ? UINT32 {IsZero} : signStatus(negative);
    if (d.ball <= wordPairs) {
        const bool odd = (fd & 1) != 0;
        if (i64 >= limbBase / 10) // a limb when an odd fd has made it ten times as large
            return putAnyInteger(dst, type, i64, fd, negative);
        const Words<1> pairs {toPairs(odd ? i64 * 10 : i64)};
        if (!fits<1>(pairs, d))
            return putAnyInteger(dst, type, i64, fd, negative);
        storeExact<1>(dst, d.ball, pairs, negative);
        return status;
    }
    const Words<2> pairs = integerPairs(i64, fd);
    if (d.ball > 2 * wordPairs) { // more digits than an integer has
        storeWords<windowWords>(dst, d.ball, resized<windowWords>(pairs), negative);
        return status;
    }
    if (!fits<2>(pairs, d))
        return putAnyInteger(dst, type, i64, fd, negative);
    storeExact<2>(dst, d.ball, pairs, negative);
    return status;
}

//! Hands out a magnitude below 2^64.
DECIMAL_INLINE UINT32 giveMagnitude(INT64 *pi64, Word magnitude, bool negative, UINT32 status)
{
    constexpr auto most = static_cast<Word>(std::numeric_limits<INT64>::max());
    if (magnitude > most + Word {negative})
        return NoResult | Overflow;
    *pi64 = static_cast<INT64>((magnitude ^ (Word {0} - Word {negative})) + Word {negative});
    return status;
}

//! Hands out a value of a type of 19 digits. With an odd fraction the last digit is
//! padding: 20 digits, more than a word holds.
DECIMAL_INLINE UINT32 giveInteger(INT64 *pi64, Layout d, Word high, Word low, UINT32 status)
{
    if ((status & Overflow) != 0)
        return NoResult | Overflow; // also where a rounding carry overflowed
    const Word highPart = high - (high >> 8) * (0x100 - 100); // two pairs at most
    const Word magnitude = (d.nfrac & 1) != 0 ? highPart * (limbBase / 10) + toLimb(low) / 10
                                              : highPart * limbBase + toLimb(low);
    return giveMagnitude(pi64, magnitude, (status & IsNegative) != 0, status);
}

//! A value that is cut behind some of its pairs, which make a number, with at most a word
//! of pairs behind them. Rounding cannot reach 2^64.
DECIMAL_INLINE UINT32 giveNumber(INT64 *pi64, const BYTE *bcd, int ball, int kept,
                                 BCDIIroundstyle rs)
{
    constexpr Word digits = topMasks[wordPairs]; // not the sign
    const bool negative = isNegative(bcd);
    const int drop = ball - kept;
    Word magnitude = kept > wordPairs
        ? toNumber(bcd, kept)
        : toLimb((loadFirst(bcd, ball) & digits) >> (8 * (wordPairs - kept)));
    bool isRounded = false;
    if (drop > 0) {
        const Word last =
            ball < wordPairs ? loadShort(bcd, ball) : load<Word>(bcd + ball - wordPairs);
        const Word lost = last << (8 * (wordPairs - drop));
        isRounded = lost != 0;
        // No branch: halves are as good as random.
        magnitude += Word {isRounded} & Word {roundsUp(rs, negative, lost >= Word {50} << 56)};
    }
    const UINT32 status = UINT32 {isRounded} * Rounded;
    if (magnitude == 0)
        return giveMagnitude(pi64, 0, false, status | IsZero);
    return giveMagnitude(pi64, magnitude, negative, status | signStatus(negative));
}

//! BCDII2Int64() for values that are not NaN.
DECIMAL_INLINE UINT32 toInteger(INT64 *pi64, const BYTE *bcd, BCDIIType type, int fd,
                                BCDIIroundstyle rs)
{
    const Layout t(type);
    const int kept = t.bint() + (fd >> 1);
    const bool isNear = static_cast<unsigned>(t.ball - kept) <= unsigned {wordPairs};
    if ((fd & 1) == 0 && isNear && t.bfrac() <= windowFraction && isNumber(bcd, kept))
        return giveNumber(pi64, bcd, t.ball, kept, rs);
    return toAnyInteger(pi64, bcd, type, fd, rs);
}

} // namespace Decimal

#endif // DECIMAL_INTEGERS_P_H
