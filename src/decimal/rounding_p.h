// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef DECIMAL_ROUNDING_P_H
#define DECIMAL_ROUNDING_P_H

#include "compiler_p.h"
#include "layout_p.h"
#include "roundstyle_p.h"
#include "words_p.h"

//! \file
//! The short way to round and store: an exact magnitude in words is cut behind the last byte
//! of the destination, rounded there and written.
//!
//! A cut keeps whole pairs. Of what is lost the first pair has to stay exact; behind it
//! matters only whether all is zero, so that words may be merged. With an odd nfrac the
//! units digit of the last pair kept is lost as well, and is then the first lost one.
//!
//! Adding 1 to a pair of 99 gives 100, which is no pair: then the carry is taken on, pair by
//! pair, which is rare. It cannot leave the words unseen: a carry out of the highest pair
//! makes that 100, which fits no destination.
//!
//! Statuses are those of BCDIICopy(). With the bit NoResult, what is kept is not a value.

namespace Decimal {

//! An exact magnitude, cut behind the destination's last byte.
template<int N> struct Cut
{
    Words<N> kept;        //!< ends with the destination's last byte
    Word lost = 0;        //!< the pairs behind, the first in the highest byte; others may be merged
    bool tooWide = false; //!< more pairs stand in front of kept
};

//! The largest words whose first byte is byte rest - 1, by the tens digits that it may
//! have: 99 in front with an even nint, 9 with an odd one.
inline constexpr auto largestTops = [] {
    Array<Array<Word, wordPairs + 1>, 2> largest {};
    for (int rest = 1; rest <= wordPairs; ++rest) {
        largest[0][rest] = (Word {100} << (8 * (rest - 1))) - 1;
        largest[1][rest] = (Word {10} << (8 * (rest - 1))) - 1;
    }
    return largest;
}();

//! Whether the kept pairs fit nint digits: nothing in front of the first byte, and
//! no tens digit in it when nint is odd.
template<int N> DECIMAL_INLINE bool fits(const Words<N> &w, Layout d)
{
    const int rest = d.ball - wordPairs * (N - 1);
    if (rest > 0)
        return w[N - 1] <= largestTops[d.nint & 1][rest];
    if constexpr (N > 1)
        return w[N - 1] == 0 && fits<N - 1>(resized<N - 1>(w), d);
    return false;
}

//! Carries 1 into the pair in front of the last one, which has become 0 or 100 less.
template<int N> void carryOn(Words<N> &w)
{
    for (int j = 0; j < N; ++j) {
        for (int shift = j == 0 ? 8 : 0; shift < 64; shift += 8) {
            if ((w[j] >> shift & 0xFF) != 99) {
                w[j] += Word {1} << shift;
                return;
            }
            w[j] -= Word {99} << shift;
        }
    }
    w[N - 1] = Word {100} << 56; // fits nowhere
}

//! Rounds what is kept when pairs or a digit are lost.
template<int N>
DECIMAL_INLINE UINT32 roundKept(Words<N> &kept, Layout d, bool atLeastHalf, Word unit,
                                bool negative, BCDIIroundstyle rs)
{
    // No branch: halves are as good as random.
    kept[0] += (Word {0} - Word {roundsUp(rs, negative, atLeastHalf)}) & unit;
    const bool carries = (kept[0] & 0xFF) >= 100;
    if (carries) {
        kept[0] -= 100;
        carryOn<N>(kept);
    }
    if ((carries || d.ball == 1) && !fits<N>(kept, d))
        return Rounded | NoResult | Overflow;
    return anyOf<N>(kept) == 0 ? Rounded | IsZero : Rounded | signStatus(negative);
}

//! Rounds a cut magnitude to the destination; without NoResult kept is the result. Cuts go
//! in parts: compilers keep copies of whole ones in memory.
//! sourceFraction is the number of digits after the point that the source's type has.
template<int N>
DECIMAL_INLINE UINT32 roundCut(Words<N> &kept, Word lost, bool tooWide, Layout d,
                               int sourceFraction, bool negative, BCDIIroundstyle rs)
{
    if (tooWide | !fits<N>(kept, d)) // one branch, not two
        return NoResult | Overflow;
    // The first lost digit is the tens digit of a whole pair, or with an odd nfrac
    // the units digit of the last pair kept.
    if ((d.nfrac & 1) != 0 && d.nfrac < sourceFraction) {
        const Word units = (kept[0] & 0xFF) % 10;
        if ((units | lost) != 0) {
            kept[0] -= units;
            return roundKept<N>(kept, d, units >= 5, 10, negative, rs);
        }
    } else if (lost != 0) {
        return roundKept<N>(kept, d, lost >= Word {50} << 56, 1, negative, rs);
    }
    return anyOf<N>(kept) == 0 ? UINT32 {IsZero} : signStatus(negative);
}

template<int N>
DECIMAL_INLINE UINT32 deliver(BYTE *dst, Layout d, Words<N> &kept, Word lost, bool tooWide,
                              int sourceFraction, bool negative, BCDIIroundstyle rs)
{
    const UINT32 status = roundCut<N>(kept, lost, tooWide, d, sourceFraction, negative, rs);
    if ((status & NoResult) != 0)
        return putNan(dst, status);
    storeWords<N>(dst, d.ball, kept, (status & IsNegative) != 0);
    return status;
}

//! Drops pairs, 0 or more, from the end of the window and returns what is lost.
template<int N> DECIMAL_INLINE Word dropPairs(Words<N> &w, int pairs)
{
    Word lost = 0;
    if (pairs <= 0)
        return lost;
    if constexpr (N == 1) {
        if (pairs < wordPairs) {
            lost = w[0] << (64 - 8 * pairs);
            w[0] >>= 8 * pairs;
            return lost;
        }
    }
    Word merged = 0;
    for (; pairs >= wordPairs; pairs -= wordPairs) {
        merged |= lost;
        lost = w[0];
        repeat<N - 1>([&](int j) DECIMAL_INLINE_LAMBDA { w[j] = w[j + 1]; });
        w[N - 1] = 0;
    }
    const int shift = 8 * pairs;
    merged |= lost << 1 << (63 - shift);
    lost = shiftedDown(w[0], lost, shift) | Word {merged != 0};
    repeat<N - 1>([&](int j) DECIMAL_INLINE_LAMBDA { w[j] = shiftedDown(w[j + 1], w[j], shift); });
    w[N - 1] >>= shift;
    return lost;
}

} // namespace Decimal

#endif // DECIMAL_ROUNDING_P_H
