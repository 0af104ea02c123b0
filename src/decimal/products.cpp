// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "products_p.h"

#include "plain_p.h"
#include "rounding_p.h"
#include "words_p.h"

#include <cstring>

namespace Decimal {

namespace {

// Divides by limbBase. Let x' = floor(x / 2^46), below 2^63 for x < 2^109, and r =
// floor(2^110 / limbBase). Then x / limbBase exceeds x' r / 2^64 by less than
// 2^46 / limbBase + x' / 2^64 < 0.51, so the estimate is right or one too small.
DECIMAL_INLINE Word splitLimb(Wide x, Word *remainder)
{
    // 2^110 / limbBase is 2^128 / (2^10 limbBase) / 2^8.
    constexpr Word reciprocal = Word {1} << 56 | reciprocalOf(limbBase << 10) >> 8;
    const Word quotient = Wide::product(x.shiftedDown(46), reciprocal).high();
    const Word rest = x.low() - quotient * limbBase;
    const bool more = rest >= limbBase;
    *remainder = more ? rest - limbBase : rest;
    return quotient + Word {more};
}

// A magnitude in limbs, least significant first, with limbs of 0 on both sides, so
// that those around the destination's bytes need no test.
constexpr int zeroLimbs = 5;
constexpr int mostLimbs = 2 * windowWords;

struct Limbs
{
    Limbs(int limbs, int fractionBytes)
        : count(limbs)
        , fraction(fractionBytes)
    {
        std::memset(storage.data(), 0, zeroLimbs * sizeof(Word));
        std::memset(limb() + count, 0, zeroLimbs * sizeof(Word));
    }

    Array<Word, zeroLimbs + mostLimbs + zeroLimbs> storage;
    int count;
    int fraction; //!< bytes behind the point where the last limb ends

    Word *limb() { return storage.data() + zeroLimbs; }
    const Word *limb() const { return storage.data() + zeroLimbs; }
};

// Cuts behind the last byte of the destination and turns only those limbs into
// pairs that it needs; of the others it matters whether they are zero. shift is 8 to
// 64 bits of the first limb that are lost, ball the destination's bytes.
template<int N> DECIMAL_INLINE Cut<N> cutLimbs(const Limbs &x, int first, int shift, int ball)
{
    const Word *const limb = x.limb() + first;
    Word below = 0;
    for (int i = -first; i < 0; ++i)
        below |= limb[i];
    Word above = 0;
    for (int i = N + 1; i < x.count - first; ++i)
        above |= limb[i];
    Cut<N> cut;
    Word next = toPairs(limb[0]);
    cut.lost = next << (64 - shift) | Word {below != 0};
    repeat<N>([&](int j) DECIMAL_INLINE_LAMBDA {
        const Word low = next;
        if (j + 1 == N && ball <= wordPairs * N - (shift >> 3)) {
            above |= limb[N]; // all in front of the destination
            next = 0;
        } else {
            next = toPairs(limb[j + 1]);
        }
        cut.kept[j] = shiftedUp(next, low, 64 - shift);
    });
    cut.tooWide = ((next >> 1 >> (shift - 1)) | above) != 0;
    return cut;
}

// The destination begins with a limb: nothing to shift.
template<int N> DECIMAL_INLINE Cut<N> takeLimbs(const Limbs &x)
{
    Cut<N> cut;
    repeat<N>([&](int j) DECIMAL_INLINE_LAMBDA { cut.kept[j] = toPairs(x.limb()[j]); });
    Word above = 0;
    for (int i = N; i < x.count; ++i)
        above |= x.limb()[i];
    cut.tooWide = above != 0;
    return cut;
}

UINT32 deliverLimbsPlain(BYTE *dst, Layout d, const Limbs &x, bool negative, BCDIIroundstyle rs)
{
    Array<BYTE, wordPairs * mostLimbs> pairs {};
    const int size = wordPairs * x.count;
    for (int i = 0; i < x.count; ++i)
        store<Word>(pairs.data() + size - wordPairs * (i + 1), toPairs(x.limb()[i]));
    pairs[0] = static_cast<BYTE>(pairs[0] | (negative ? signBit : 0));
    return copyPlain(dst, d, pairs.data(), Layout(2 * size, 2 * x.fraction), rs);
}

template<int N>
DECIMAL_INLINE UINT32 deliverLimbsShort(BYTE *dst, Layout d, const Limbs &x, bool negative,
                                        BCDIIroundstyle rs)
{
    const int drop = x.fraction - d.bfrac();
    const int first = (drop - 1) >> 3;
    Cut<N> cut =
        drop == 0 ? takeLimbs<N>(x) : cutLimbs<N>(x, first, 8 * (drop - 8 * first), d.ball);
    return deliver<N>(dst, d, cut.kept, cut.lost, cut.tooWide, 2 * x.fraction, negative, rs);
}

// Writes a magnitude in limbs. The plain way is for values that may begin below the
// lowest position, and for results that end far away from the limbs.
UINT32 deliverLimbs(BYTE *dst, BCDIIType type, const Limbs &x, bool negative, BCDIIroundstyle rs)
{
    const Layout d(type);
    const int first = (x.fraction - d.bfrac() - 1) >> 3; // negative: zeros follow
    if (x.fraction > windowFraction || first < -zeroLimbs || first >= x.count)
        return deliverLimbsPlain(dst, Layout(type), x, negative, rs);
    switch (windowOf(d.ball, 0, d.ball)) {
    case 0:
        return deliverLimbsPlain(dst, Layout(type), x, negative, rs);
    case 1:
        return deliverLimbsShort<1>(dst, d, x, negative, rs);
    case 2:
        return deliverLimbsShort<2>(dst, d, x, negative, rs);
    case 3:
        return deliverLimbsShort<3>(dst, d, x, negative, rs);
    default:
        return deliverLimbsShort<4>(dst, d, x, negative, rs);
    }
}

// Column by column. A column sums at most 4 products below 10^32 and a carry, which
// splitLimb() takes.
template<int NA, int NB>
void multiplyLimbs(const BYTE *a, int aBall, const BYTE *b, int bBall, Word *product)
{
    Words<NA> x = loadExact<NA>(a, aBall);
    Words<NB> y = loadExact<NB>(b, bBall);
    // A single pair in front is a number already.
    const bool isPairX = (aBall & 7) == 1;
    const bool isPairY = (bBall & 7) == 1;
    repeat<NA>([&](int j)
                   DECIMAL_INLINE_LAMBDA { x[j] = j + 1 == NA && isPairX ? x[j] : toLimb(x[j]); });
    repeat<NB>([&](int j)
                   DECIMAL_INLINE_LAMBDA { y[j] = j + 1 == NB && isPairY ? y[j] : toLimb(y[j]); });
    Word carry = 0;
    repeat<NA + NB - 1>([&](int k) DECIMAL_INLINE_LAMBDA {
        Wide column(0, carry);
        repeat<NA>([&](int i) DECIMAL_INLINE_LAMBDA {
            if (k - i >= 0 && k - i < NB)
                column = column + Wide::product(x[i], y[k - i]);
        });
        carry = splitLimb(column, &product[k]);
    });
    product[NA + NB - 1] = carry;
}

// a is not the shorter; both have 1 to 4 words.
void multiply(const BYTE *a, int aBall, const BYTE *b, int bBall, Word *product)
{
    switch (4 * wordsOf(aBall) + wordsOf(bBall)) {
    case 4 * 1 + 1:
        return multiplyLimbs<1, 1>(a, aBall, b, bBall, product);
    case 4 * 2 + 1:
        return multiplyLimbs<2, 1>(a, aBall, b, bBall, product);
    case 4 * 2 + 2:
        return multiplyLimbs<2, 2>(a, aBall, b, bBall, product);
    case 4 * 3 + 1:
        return multiplyLimbs<3, 1>(a, aBall, b, bBall, product);
    case 4 * 3 + 2:
        return multiplyLimbs<3, 2>(a, aBall, b, bBall, product);
    case 4 * 3 + 3:
        return multiplyLimbs<3, 3>(a, aBall, b, bBall, product);
    case 4 * 4 + 1:
        return multiplyLimbs<4, 1>(a, aBall, b, bBall, product);
    case 4 * 4 + 2:
        return multiplyLimbs<4, 2>(a, aBall, b, bBall, product);
    case 4 * 4 + 3:
        return multiplyLimbs<4, 3>(a, aBall, b, bBall, product);
    default:
        return multiplyLimbs<4, 4>(a, aBall, b, bBall, product);
    }
}

} // namespace

UINT32 mulLong(BYTE *ret, BCDIIType retType, const BYTE *a, BCDIIType aType, const BYTE *b,
               BCDIIType bType, BCDIIroundstyle rs)
{
    const Layout at(aType);
    const Layout bt(bType);
    if (std::min(at.ball, bt.ball) < 1 || std::max(at.ball, bt.ball) > wordPairs * windowWords)
        return mulPlain(ret, Layout(retType), a, at, b, bt, rs);
    Limbs product(wordsOf(at.ball) + wordsOf(bt.ball), at.bfrac() + bt.bfrac());
    if (at.ball < bt.ball)
        multiply(b, bt.ball, a, at.ball, product.limb());
    else
        multiply(a, at.ball, b, bt.ball, product.limb());
    return deliverLimbs(ret, retType, product, isNegative(a) != isNegative(b), rs);
}

} // namespace Decimal
