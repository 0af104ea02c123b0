// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef DECIMAL_WORDS_P_H
#define DECIMAL_WORDS_P_H

#include "array_p.h"
#include "compiler_p.h"
#include "layout_p.h"
#include "wide_p.h"

#include <algorithm>
#include <bit>
#include <cstdint>
#include <cstring>

//! \file
//! Runs of bytes as 64-bit words: load, store, shift, mask, compare.
//!
//! The first byte of a run is the most significant one on every machine, so that words are
//! in the order of their values, and shifts by whole bytes multiply and divide by powers of
//! 100. Of several words the least significant is first. No byte outside a run is read or
//! written: a word that would reach beyond it is put together from shorter pieces.
//!
//! Values meet in a window of up to four words around the point. The pairs in it need not
//! be 0 to 99: with others the digits mean nothing, but no byte elsewhere is touched. A shift
//! count is always below 64; where it may be 64, it is split: >> 1 >> (63 - n).

namespace Decimal {

using Word = UINT64;

inline constexpr int wordPairs = 8;
inline constexpr int windowWords = 4;
inline constexpr int windowFraction = 31; // bytes: with more, a value may begin below position -62
inline constexpr Word eachByte = 0x0101010101010101;

template<int N> using Words = Array<Word, N>; // least significant first

//! Calls f(0) to f(N - 1). Compilers unroll loops too late for their arrays to stay in
//! registers.
template<int N, typename F> DECIMAL_INLINE void repeat(const F &f)
{
    if constexpr (N > 0) {
        repeat<N - 1>(f);
        f(N - 1);
    }
}

//! The M lowest words, with words of 0 in front when there are more than N.
template<int M, int N> DECIMAL_INLINE Words<M> resized(const Words<N> &w)
{
    Words<M> r {};
    repeat<std::min(M, N)>([&](int j) DECIMAL_INLINE_LAMBDA { r[j] = w[j]; });
    return r;
}

//! Between the machine's byte order and the first byte as the most significant one.
template<typename T> DECIMAL_INLINE T bigEndian(T w)
{
    if constexpr (std::endian::native == std::endian::big)
        return w;
    else
        return byteSwapped(w);
}

//! An unsigned integer whose first byte is the most significant one.
//! @{
template<typename T> DECIMAL_INLINE T load(const BYTE *p)
{
    T w;
    std::memcpy(&w, p, sizeof w);
    return bigEndian(w);
}

template<typename T> DECIMAL_INLINE void store(BYTE *p, T w)
{
    w = bigEndian(w);
    std::memcpy(p, &w, sizeof w);
}
//! @}

//! 1 to 8 bytes as a number. The pieces overlap, so that none lies outside the bytes and no
//! loop is needed.
DECIMAL_INLINE Word loadShort(const BYTE *p, int n)
{
    if (n >= 4)
        return Word {load<UINT32>(p)} << (8 * (n - 4)) | load<UINT32>(p + n - 4);
    if (n == 1)
        return p[0];
    const Word high = load<UINT16>(p);
    return n == 2 ? high : high << 8 | p[2];
}

DECIMAL_INLINE void storeShort(BYTE *p, int n, Word w)
{
    if (n >= 4) {
        store(p, static_cast<UINT32>(w >> (8 * (n - 4))));
        store(p + n - 4, static_cast<UINT32>(w));
    } else if (n == 1) {
        p[0] = static_cast<BYTE>(w);
    } else if (n == 2) {
        store(p, static_cast<UINT16>(w));
    } else {
        store(p, static_cast<UINT16>(w >> 8));
        p[2] = static_cast<BYTE>(w);
    }
}

//! The bits of a word whose first byte is byte rest - 1, but for the sign.
inline constexpr auto topMasks = [] {
    Array<Word, wordPairs + 1> masks {};
    for (int rest = 1; rest <= wordPairs; ++rest)
        masks[rest] = ~Word {0} >> (65 - 8 * rest);
    return masks;
}();

inline int wordsOf(int bytes)
{
    return (bytes + wordPairs - 1) >> 3;
}

//! n bytes, 8 (N - 1) < n <= 8 N, as a number without the sign bit of the first.
template<int N> DECIMAL_INLINE Words<N> loadExact(const BYTE *p, int n)
{
    Words<N> w;
    repeat<N - 1>([&](int j)
                      DECIMAL_INLINE_LAMBDA { w[j] = load<Word>(p + n - wordPairs * (j + 1)); });
    if constexpr (N > 1)
        w[N - 1] = (load<Word>(p) & topMasks[wordPairs]) >> 8 * (wordPairs * N - n);
    else
        w[0] = (n == wordPairs ? load<Word>(p) : loadShort(p, n)) & topMasks[n];
    return w;
}

template<int N> DECIMAL_INLINE void storeExact(BYTE *p, int n, const Words<N> &w, bool negative)
{
    if constexpr (N > 1) {
        const Word first = shiftedUp(w[N - 1], w[N - 2], 8 * (wordPairs * N - n));
        store<Word>(p, first | Word {negative} << 63);
        repeat<N - 1>(
            [&](int j) DECIMAL_INLINE_LAMBDA { store<Word>(p + n - wordPairs * (j + 1), w[j]); });
    } else {
        const Word signedTop = w[0] | ((Word {0} - Word {negative}) & (topMasks[n] + 1));
        if (n == wordPairs)
            store<Word>(p, signedTop);
        else
            storeShort(p, n, signedTop);
    }
}

//! The same for 1 to 8 N bytes.
template<int N> DECIMAL_INLINE Words<N> loadWords(const BYTE *p, int n)
{
    if constexpr (N > 1) {
        if (n <= wordPairs * (N - 1)) {
            return resized<N>(loadWords<N - 1>(p, n));
        }
    }
    return loadExact<N>(p, n);
}

template<int N> DECIMAL_INLINE void storeWords(BYTE *p, int n, const Words<N> &w, bool negative)
{
    if constexpr (N > 1) {
        if (n <= wordPairs * (N - 1)) {
            storeWords<N - 1>(p, n, resized<N - 1>(w), negative);
            return;
        }
    }
    storeExact<N>(p, n, w, negative);
}

//! Multiplies with 100 to the power of \a pairs, 0 to 8 N - 1, modulo what N words hold.
template<int N> DECIMAL_INLINE void shiftUp(Words<N> &w, int pairs)
{
    for (; pairs >= wordPairs; pairs -= wordPairs) {
        repeat<N - 1>([&](int j) DECIMAL_INLINE_LAMBDA { w[N - 1 - j] = w[N - 2 - j]; });
        w[0] = 0;
    }
    const int shift = 8 * pairs;
    repeat<N - 1>([&](int j) DECIMAL_INLINE_LAMBDA {
        const int k = N - 1 - j;
        w[k] = shiftedUp(w[k], w[k - 1], shift);
    });
    w[0] <<= shift;
}

//! A value in a window that ends fraction bytes behind the point.
template<int N> DECIMAL_INLINE Words<N> loadAligned(const BYTE *bcd, Layout t, int fraction)
{
    Words<N> w = loadWords<N>(bcd, t.ball);
    if (t.bfrac() != fraction)
        shiftUp<N>(w, fraction - t.bfrac());
    return w;
}

//! Words of the window that both byte ranges fit in, or 0 when there is none.
inline int windowOf(int integerBytes, int fractionBytes, int shortest)
{
    const int words = wordsOf(integerBytes + fractionBytes);
    return shortest > 0 && words <= windowWords && fractionBytes <= windowFraction ? words : 0;
}

template<int N> DECIMAL_INLINE Word anyOf(const Words<N> &w)
{
    Word any = 0;
    repeat<N>([&](int j) DECIMAL_INLINE_LAMBDA { any |= w[j]; });
    return any;
}

//! The window of two layouts, for values that are copied or compared.
inline int windowOfBoth(Layout d, Layout s)
{
    return windowOf(std::max(d.bint(), s.bint()), std::max(d.bfrac(), s.bfrac()),
                    std::min(d.ball, s.ball));
}

//! Adds b, and carry, to a and returns the carry, if none came in. All of both is made known before
//! the first word is added: between the additions nothing else may touch the machine's carry.
template<int N> DECIMAL_INLINE bool addChain(Words<N> &a, Words<N> &b, bool carry)
{
    if constexpr (N == 1) {
        a[0] += b[0] + Word {carry};
        return a[0] < b[0];
    }
    repeat<N>([&](int j) DECIMAL_INLINE_LAMBDA { settle(a[j], b[j]); });
    repeat<N>([&](int j) DECIMAL_INLINE_LAMBDA { a[j] = addWithCarry(a[j], b[j], carry); });
    return carry;
}

//! a < b, without a branch.
template<int N> DECIMAL_INLINE bool isLess(const Words<N> &a, const Words<N> &b)
{
    bool less = a[0] < b[0];
    repeat<N - 1>([&](int j)
                      DECIMAL_INLINE_LAMBDA { subtractWithBorrow(a[j + 1], b[j + 1], less); });
    return less;
}

//! Whether all of n bytes are 0.
inline bool isZero(const BYTE *bcd, int n)
{
    if (n < wordPairs)
        return n <= 0 || loadShort(bcd, n) == 0;
    Word any = load<Word>(bcd + n - wordPairs);
    for (int i = 0; i < n - wordPairs; i += wordPairs)
        any |= load<Word>(bcd + i);
    return any == 0;
}

//! The first 8 bytes of n, n > 0, filled up with 0.
DECIMAL_INLINE Word loadFirst(const BYTE *p, int n)
{
    return n >= wordPairs ? load<Word>(p) : loadShort(p, n) << (8 * (wordPairs - n));
}

} // namespace Decimal

#endif // DECIMAL_WORDS_P_H
