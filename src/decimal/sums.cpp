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

// Adds b to a, or with subtract (all ones, else 0) takes it away, and returns the
// carry of an addition.
template<int N> DECIMAL_INLINE bool addWords(Words<N> &a, const Words<N> &b, Word subtract)
{
    const Word raise = (eachByte * 156) & ~subtract;
    bool carry = subtract != 0;
    repeat<N>([&](int j) DECIMAL_INLINE_LAMBDA {
        const Word y = (b[j] + raise) ^ subtract;
        const Word partial = a[j] + y;
        const Word sum = partial + Word {carry};
        carry = (partial < y) | (sum < partial);
        a[j] = sum - (sum >> 7 & eachByte) * 156;
    });
    return carry & (subtract == 0);
}

// The sum of two magnitudes with signs; *negative is its sign. With different signs
// the smaller is taken from the larger.
template<int N>
DECIMAL_INLINE Cut<N> addSigned(Words<N> x, Words<N> y, const BYTE *a, const BYTE *b,
                                bool *negative)
{
    const bool differ = ((a[0] ^ b[0]) & signBit) != 0;
    // Signs are as good as random: masks, since branches would be guessed wrong.
    const bool swap = differ & isLess<N>(x, y);
    const Word mask = Word {0} - Word {swap};
    repeat<N>([&](int j) DECIMAL_INLINE_LAMBDA {
        const Word change = (x[j] ^ y[j]) & mask;
        x[j] ^= change;
        y[j] ^= change;
    });
    *negative = isNegative(a) != swap;
    const bool tooWide = addWords<N>(x, y, Word {0} - Word {differ});
    return {x, 0, tooWide};
}

// fraction is the most bytes behind the point that a value or the result has.
template<int N>
DECIMAL_INLINE UINT32 addShort(BYTE *ret, Layout d, const BYTE *a, Layout at, const BYTE *b,
                               Layout bt, int fraction, BCDIIroundstyle rs)
{
    bool negative;
    const Cut<N> sum = addSigned<N>(loadAligned<N>(a, at, fraction),
                                    loadAligned<N>(b, bt, fraction), a, b, &negative);
    // A carry out of the window is beyond every integer digit of the result.
    Cut<N> cut = cutWindow<N>(sum.kept, fraction - d.bfrac());
    cut.tooWide = sum.tooWide;
    return deliver<N>(ret, d, cut, 2 * std::max(at.bfrac(), bt.bfrac()), negative, rs);
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

// addWords() for Rest bytes in the last word, the first of which is a plain number: the
// sum of two stays below 256, and a difference is at least 0.
template<int N, int Rest>
DECIMAL_INLINE void addFixed(Words<N> &a, const Words<N> &b, Word subtract)
{
    bool carry = subtract != 0;
    repeat<N>([&](int j) DECIMAL_INLINE_LAMBDA {
        const Word pairs = j + 1 < N ? eachByte : eachByte & topMasks[Rest] >> 7;
        const Word y = (b[j] + (pairs * 156 & ~subtract)) ^ subtract;
        const Word partial = a[j] + y;
        const Word sum = partial + Word {carry};
        carry = (partial < y) | (sum < partial);
        a[j] = sum - (sum >> 7 & pairs) * 156;
    });
}

// What is no plain sum of two values of one type.
DECIMAL_COLD UINT32 addSlowly(BYTE *ret, BCDIIType retType, const BYTE *a, BCDIIType aType,
                              const BYTE *b, BCDIIType bType, BCDIIroundstyle rs)
{
    if (isAnyNan(a, b))
        return putNan(ret, NanOperand | Invalid | NoResult);
    return addTypes(ret, retType, a, aType, b, bType, rs);
}

// One type of Ball bytes for all: nothing to align, and nothing to cut off. A NaN shows as
// too large a first pair in the larger operand, or in the sum, and a digit behind the last
// digit of the type as one in the sum.
template<int Ball>
UINT32 addSame(BYTE *ret, BCDIIType type, const BYTE *a, BCDIIType aType, const BYTE *b,
               BCDIIType bType, BCDIIroundstyle rs)
{
    constexpr int top = Fixed<Ball>::top;
    constexpr int rest = Fixed<Ball>::rest;
    constexpr Word magnitude = Fixed<Ball>::magnitude;
    Fixed<Ball> x;
    Fixed<Ball> y;
    x.load(a);
    y.load(b);
    Words<top + 1> larger = x.w;
    Words<top + 1> smaller = y.w;
    larger[top] &= magnitude;
    smaller[top] &= magnitude;
    // Signs are as good as random: masks, since branches would be guessed wrong.
    const Word swap = Word {0} - Word {isLess<top + 1>(larger, smaller)};
    const Word differ = Word {0} - Word {((x.w[top] ^ y.w[top]) & Fixed<Ball>::sign) != 0};
    repeat<top + 1>([&](int j) DECIMAL_INLINE_LAMBDA {
        const Word change = (larger[j] ^ smaller[j]) & swap;
        larger[j] ^= change;
        smaller[j] ^= change;
    });
    const Word sign = (x.w[top] ^ (differ & swap)) & Fixed<Ball>::sign;
    const Word limit = largestTops[(type >> 8 ^ type) & 1][rest];
    const bool isValid = larger[top] <= limit;
    addFixed<top + 1, rest>(larger, smaller, differ);
    if (!isValid || larger[top] > limit
        || ((type & 1) != 0 && static_cast<BYTE>(larger[0]) % 10U != 0)) [[unlikely]]
        return addSlowly(ret, type, a, aType, b, bType, rs);
    const bool isZeroSum = anyOf<top + 1>(larger) == 0;
    x.w = larger;
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
    switch (windowOf(std::max({at.bint(), bt.bint(), d.bint()}), fraction,
                     std::min({at.ball, bt.ball, d.ball}))) {
    case 0:
        return addPlain(ret, Layout(retType), a, Layout(aType), b, Layout(bType), rs);
    case 1:
        return addShort<1>(ret, d, a, at, b, bt, fraction, rs);
    case 2:
        return addShort<2>(ret, d, a, at, b, bt, fraction, rs);
    case 3:
        return addShort<3>(ret, d, a, at, b, bt, fraction, rs);
    default:
        return addShort<4>(ret, d, a, at, b, bt, fraction, rs);
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
