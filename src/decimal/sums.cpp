// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "sums_p.h"

#include "compiler_p.h"
#include "plain_p.h"
#include "rounding_p.h"

#include <algorithm>
#include <utility>

namespace Decimal {

namespace {

// All bits set when a condition holds, else none.
DECIMAL_INLINE Word maskOf(bool condition)
{
    return Word {0} - Word {condition};
}

// Adds y to x, or with differ (all ones, else 0) takes the smaller from the larger, which is
// y with swap; returns the carry. To take one away adds its complement, and 1. Signs are as
// good as random: masks, since branches would be guessed wrong. TopPairs has a bit for each
// byte of the last word that carries like a pair.
template<int N, Word TopPairs>
DECIMAL_INLINE bool combine(Words<N> &x, Words<N> &y, Word differ, Word swap)
{
    const auto pairsOf = [](int j)
                             DECIMAL_INLINE_LAMBDA { return j + 1 < N ? eachByte : TopPairs; };
    const Word complement = differ & ~swap;
    repeat<N>([&](int j) DECIMAL_INLINE_LAMBDA {
        x[j] ^= swap;
        y[j] = (y[j] ^ complement) + (pairsOf(j) * 156 & ~differ);
    });
    const bool carry = addChain<N>(x, y, differ != 0);
    repeat<N>([&](int j) DECIMAL_INLINE_LAMBDA { x[j] -= (x[j] >> 7 & pairsOf(j)) * 156; });
    return carry & (differ == 0);
}

// Adds two magnitudes with signs to x; *negative is the sum's sign, and the result a carry
// out of the words.
template<int N>
DECIMAL_INLINE bool addSigned(Words<N> &x, Words<N> &y, const BYTE *a, const BYTE *b,
                              bool *negative)
{
    const bool differ = ((a[0] ^ b[0]) & signBit) != 0;
    const bool swap = differ & isLess<N>(x, y);
    *negative = isNegative(a) != swap;
    return combine<N, eachByte>(x, y, maskOf(differ), maskOf(swap));
}

struct SumLayouts
{
    Layout d; // of the sum
    Layout a;
    Layout b;
    int fraction; // the most bytes behind the point of the three
};

template<int N>
DECIMAL_INLINE UINT32 addShort(BYTE *ret, const BYTE *a, const BYTE *b, const SumLayouts &t,
                               BCDIIroundstyle rs)
{
    bool negative;
    Words<N> x = loadAligned<N>(a, t.a, t.fraction);
    Words<N> y = loadAligned<N>(b, t.b, t.fraction);
    // A carry out of the window is beyond every integer digit of the result.
    const bool tooWide = addSigned<N>(x, y, a, b, &negative);
    const Word lost = dropPairs<N>(x, t.fraction - t.d.bfrac());
    return deliver<N>(ret, t.d, x, lost, tooWide, 2 * std::max(t.a.bfrac(), t.b.bfrac()), negative,
                      rs);
}

// The sum has the layout of a, in which b begins and ends.
template<int N>
DECIMAL_INLINE UINT32 addWithin(BYTE *ret, Layout d, const BYTE *a, const BYTE *b, Layout bt,
                                BCDIIroundstyle rs)
{
    bool negative;
    Words<N> x = loadExact<N>(a, d.ball);
    Words<N> y = loadAligned<N>(b, bt, d.bfrac());
    const bool tooWide = addSigned<N>(x, y, a, b, &negative);
    const UINT32 status = roundCut<N>(x, 0, tooWide, d, 2 * d.bfrac(), negative, rs);
    if ((status & NoResult) != 0)
        return putNan(ret, status);
    storeExact<N>(ret, d.ball, x, (status & IsNegative) != 0);
    return status;
}

// 1 to 8 bytes as a number, in pieces that do not overlap: what storePieces() has written
// comes back without a wait for memory.
template<int Size> DECIMAL_INLINE Word loadPieces(const BYTE *p)
{
    if constexpr (Size == 8)
        return load<Word>(p);
    else if constexpr (Size > 4)
        return Word {load<UINT32>(p)} << (8 * (Size - 4)) | loadPieces<Size - 4>(p + 4);
    else if constexpr (Size == 4)
        return load<UINT32>(p);
    else if constexpr (Size == 3)
        return Word {load<UINT16>(p)} << 8 | p[2];
    else if constexpr (Size == 2)
        return load<UINT16>(p);
    else
        return p[0];
}

template<int Size> DECIMAL_INLINE void storePieces(BYTE *p, Word w)
{
    if constexpr (Size == 8) {
        store<Word>(p, w);
    } else if constexpr (Size > 4) {
        store(p, static_cast<UINT32>(w >> (8 * (Size - 4))));
        storePieces<Size - 4>(p + 4, w);
    } else if constexpr (Size == 4) {
        store(p, static_cast<UINT32>(w));
    } else if constexpr (Size == 3) {
        store(p, static_cast<UINT16>(w >> 8));
        p[2] = static_cast<BYTE>(w);
    } else if constexpr (Size == 2) {
        store(p, static_cast<UINT16>(w));
    } else {
        p[0] = static_cast<BYTE>(w);
    }
}

// A value of Ball bytes in words, the last of them with its sign bit.
template<int Ball> struct Fixed
{
    static constexpr int top = (Ball - 1) / wordPairs;
    static constexpr int rest = Ball - wordPairs * top;
    static constexpr Word magnitude = topMasks[rest]; // of the last word
    static constexpr Word sign = magnitude + 1;

    Words<top + 1> w;

    DECIMAL_INLINE void load(const BYTE *p)
    {
        repeat<top>([&](int j) DECIMAL_INLINE_LAMBDA {
            w[j] = Decimal::load<Word>(p + Ball - wordPairs * (j + 1));
        });
        w[top] = loadPieces<rest>(p);
    }
    DECIMAL_INLINE void save(BYTE *p) const
    {
        repeat<top>([&](int j) DECIMAL_INLINE_LAMBDA {
            store<Word>(p + Ball - wordPairs * (j + 1), w[j]);
        });
        storePieces<rest>(p, w[top]);
    }
};

// What is no plain sum of two values of one type.
DECIMAL_COLD UINT32 addSlowly(BYTE *ret, BCDIIType retType, const BYTE *a, BCDIIType aType,
                              const BYTE *b, BCDIIType bType, BCDIIroundstyle rs)
{
    if (isAnyNan(a, b))
        return putNan(ret, NanOperand | Invalid | NoResult);
    return addTypes(ret, retType, a, aType, b, bType, rs);
}

// One type of Ball bytes for all: nothing to align, and nothing to cut off. The first byte is
// a plain number: the sum of two stays below 256, and a difference is at least 0. A NaN shows
// as too large a first pair in an operand or in the sum, and a digit behind the last digit of
// the type as one in the sum.
template<int Ball>
UINT32 addSame(BYTE *ret, BCDIIType type, const BYTE *a, BCDIIType aType, const BYTE *b,
               BCDIIType bType, BCDIIroundstyle rs)
{
    constexpr int top = Fixed<Ball>::top;
    constexpr int rest = Fixed<Ball>::rest;
    constexpr Word magnitude = Fixed<Ball>::magnitude;
    constexpr Word topPairs = eachByte & magnitude >> 7;
    Fixed<Ball> x;
    Fixed<Ball> y;
    x.load(a);
    y.load(b);
    const Word signs = x.w[top];
    const Word differ = maskOf(((signs ^ y.w[top]) & Fixed<Ball>::sign) != 0);
    x.w[top] &= magnitude;
    y.w[top] &= magnitude;
    const Word swap = differ & maskOf(isLess<top + 1>(x.w, y.w));
    const Word sign = (signs ^ swap) & Fixed<Ball>::sign;
    const Word largest = std::max(x.w[top], y.w[top]);
    combine<top + 1, topPairs>(x.w, y.w, differ, swap);
    if (std::max(largest, x.w[top]) > largestTops[(type >> 8 ^ type) & 1][rest]
        || ((type & 1) != 0 && static_cast<BYTE>(x.w[0]) % 10U != 0)) [[unlikely]]
        return addSlowly(ret, type, a, aType, b, bType, rs);
    const bool isZeroSum = anyOf<top + 1>(x.w) == 0;
    if (!isZeroSum)
        x.w[top] |= sign;
    x.save(ret);
    return isZeroSum ? UINT32 {IsZero} : signStatus(sign != 0);
}

} // namespace

UINT32 addTypes(BYTE *ret, BCDIIType retType, const BYTE *a, BCDIIType aType, const BYTE *b,
                BCDIIType bType, BCDIIroundstyle rs)
{
    const Layout d(retType);
    const Layout at(aType);
    const Layout bt(bType);
    const int fraction = std::max({at.bfrac(), bt.bfrac(), d.bfrac()});
    const SumLayouts layouts {d, at, bt, fraction};
    switch (windowOf(std::max({at.bint(), bt.bint(), d.bint()}), fraction,
                     std::min({at.ball, bt.ball, d.ball}))) {
    case 0:
        return addPlain(ret, d, a, at, b, bt, rs);
    case 1:
        return addShort<1>(ret, a, b, layouts, rs);
    case 2:
        return addShort<2>(ret, a, b, layouts, rs);
    case 3:
        return addShort<3>(ret, a, b, layouts, rs);
    default:
        return addShort<4>(ret, a, b, layouts, rs);
    }
}

UINT32 addInto(BYTE *ret, BCDIIType retType, const BYTE *a, BCDIIType aType, const BYTE *b,
               BCDIIType bType, BCDIIroundstyle rs)
{
    const Layout d(retType);
    const Layout bt(bType);
    if (bt.ball < 1 || bt.bfrac() > d.bfrac() || bt.bint() > d.bint() || d.bfrac() > windowFraction)
        return addTypes(ret, retType, a, aType, b, bType, rs);
    switch (wordsOf(d.ball)) {
    case 1:
        return addWithin<1>(ret, d, a, b, bt, rs);
    case 2:
        return addWithin<2>(ret, d, a, b, bt, rs);
    case 3:
        return addWithin<3>(ret, d, a, b, bt, rs);
    case 4:
        return addWithin<4>(ret, d, a, b, bt, rs);
    default:
        return addTypes(ret, retType, a, aType, b, bType, rs);
    }
}

// For 1 to 32 bytes. All take the same arguments, so that these stay where they are.
constinit const Array<SameAdder, wordPairs *windowWords> sameAdders =
    []<int... I>(std::integer_sequence<int, I...>)
{
    return Array<SameAdder, sizeof...(I)> {addSame<I + 1>...};
}
(std::make_integer_sequence<int, wordPairs * windowWords>());

} // namespace Decimal
