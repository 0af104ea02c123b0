// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef DECIMAL_PRINTING_P_H
#define DECIMAL_PRINTING_P_H

#include "array_p.h"
#include "compiler_p.h"
#include "layout_p.h"
#include "words_p.h"

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstring>
#include <string>

//! \file
//! Values as texts.
//!
//! The short way writes eight pairs at a time from the point on, to both sides, into a buffer
//! in which the longest text fits whatever the place of its point. It takes layouts of up to 32
//! bytes that reach to the point or beyond it on both sides, and gives up where a pair is
//! above 99. The plain way takes all others, pair by pair.
//!
//! 103 / 2^10 is 1 / 10 for pairs: 103 * 10 - 2^10 = 6, and 6 * 99 < 2^10.

namespace Decimal {

//! The text of any value, pair by pair, in a string of \a size characters.
std::string plainText(const BYTE *bcd, BCDIIType type, std::size_t size);

//! Out of line: knowing the bounds of the size, compilers copy in place, which is slower
//! here than the C library.
std::string textOf(const char *text, std::size_t size);

//! Characters of the widest text without a sign.
inline int textWidth(Layout t)
{
    return std::max(t.nint, 0) + (t.nfrac > 0 ? t.nfrac + 1 : 0);
}

inline constexpr int chunkDigits = 2 * wordPairs;
inline constexpr int mostDigits = chunkDigits * windowWords;
inline constexpr int pointPlace = 8 + mostDigits; // room for a sign and the integer
inline constexpr int textTail = mostDigits + 8;   // NULs that may follow the text
inline constexpr int textBuffer = pointPlace + 1 + mostDigits + textTail;

//! Four pairs as eight digits.
DECIMAL_INLINE Word unpackChunk(Word pairs)
{
    const Word halves = (pairs | pairs << 16) & 0x0000FFFF0000FFFF;
    const Word spread = (halves | halves << 8) & 0x00FF00FF00FF00FF;
    const Word tens = spread * 103 >> 10 & 0x000F000F000F000F;
    return tens << 8 | (spread - tens * 10);
}

//! A word of pairs as 16 digits, all of them at once where the machine has vectors.
DECIMAL_INLINE void storeDigits(char *to, Word pairs)
{
#ifdef DECIMAL_HAS_VECTORS
    using Bytes = BYTE __attribute__((vector_size(16)));
    using Lanes = UINT16 __attribute__((vector_size(16)));
    using Halves = Word __attribute__((vector_size(16)));
    const auto bytes = reinterpret_cast<Bytes>(Halves {bigEndian(pairs), 0});
    const auto spread = reinterpret_cast<Lanes>(__builtin_shufflevector(
        bytes, Bytes {}, 0, 16, 1, 17, 2, 18, 3, 19, 4, 20, 5, 21, 6, 22, 7, 23));
    const Lanes tens = spread * 103 >> 10;
    // The tens digit goes first, into the lower byte: tens + 256 (pair - 10 tens).
    const Lanes digits = (spread << 8) - tens * 2559 + 0x3030;
    std::memcpy(to, &digits, sizeof digits);
#else
    constexpr Word zeros = eachByte * '0';
    const auto at = reinterpret_cast<BYTE *>(to);
    store(at, unpackChunk(pairs >> 32) | zeros);
    store(at + wordPairs, unpackChunk(pairs & 0xFFFFFFFF) | zeros);
#endif
}

//! A text that is put down from its point, 16 digits at a time, wherever it begins. A word
//! with fewer pairs is read with its neighbours, which are shifted out.
class TextWriter
{
public:
    explicit TextWriter(char *point)
        : m_point(point)
    {
    }

    // A value of up to 8 bytes, the last of which are behind the point.
    DECIMAL_INLINE void putShort(Word value, int fractionPairs)
    {
        putIntegerWord(value >> 4 * fractionPairs >> 4 * fractionPairs, 0);
        if (fractionPairs > 0)
            putFractionWord(value << (64 - 8 * fractionPairs), 0);
    }
    // Values of at least 8 bytes.
    // @{
    DECIMAL_INLINE void putInteger(const BYTE *bcd, int pairs)
    {
        int place = 0;
        for (; pairs - place > wordPairs; place += wordPairs)
            putIntegerWord(load<Word>(bcd + pairs - place - wordPairs), place);
        putIntegerWord((load<Word>(bcd) & topMasks[wordPairs]) >> 8 * (wordPairs - pairs + place),
                       place);
    }
    // The pairs end with byte end, which is the end of the value.
    DECIMAL_INLINE void putFraction(const BYTE *end, int pairs, bool hasSign)
    {
        Word mask = ~Word {hasSign} << 63 | topMasks[wordPairs];
        int place = 0;
        for (; pairs - place >= wordPairs; place += wordPairs) {
            putFractionWord(load<Word>(end - pairs + place) & mask, place);
            mask = ~Word {0};
        }
        if (pairs > place)
            putFractionWord(load<Word>(end - wordPairs) << 8 * (wordPairs - pairs + place), place);
    }
    // @}
    // Ends the text behind nfrac digits, and returns where it begins.
    DECIMAL_INLINE const char *finish(int nfrac, bool negative)
    {
        *m_point = nfrac > 0 ? '.' : '\0';
        std::memset(m_point + 1 + nfrac, 0, textTail);
        char *const first = m_point - m_integerDigits;
        first[-1] = '-';
        return first - int {negative};
    }
    bool isValid() const { return (m_tops & eachByte * 0x80) == 0; }

private:
    DECIMAL_INLINE void check(Word pairs) { m_tops |= pairs | (pairs + eachByte * 28); }
    // place is the number of pairs between the word and the point.
    DECIMAL_INLINE void putIntegerWord(Word pairs, int place)
    {
        check(pairs);
        storeDigits(m_point - 2 * place - chunkDigits, pairs);
        // No branch: where a number begins is as good as random.
        const int pair = (63 - std::countl_zero(pairs | 1)) >> 3;
        const int count = 2 * (place + pair) + 1 + int {(pairs >> 8 * pair) > 9};
        const int keep = int {pairs != 0} - 1;
        m_integerDigits = (m_integerDigits & keep) | (count & ~keep);
    }
    DECIMAL_INLINE void putFractionWord(Word pairs, int place)
    {
        check(pairs);
        storeDigits(m_point + 1 + 2 * place, pairs);
    }

    char *m_point;
    int m_integerDigits = 0; // without zeros in front
    Word m_tops = 0;         // bit 7: a pair was above 99
};

//! Null for bytes that are not digits.
DECIMAL_INLINE const char *putTextShort(Array<char, textBuffer> &buffer, const BYTE *bcd, Layout t)
{
    if ((bcd[0] & pairMask) > ((t.nint & 1) != 0 ? 9 : 99))
        return nullptr;
    TextWriter text(buffer.data() + pointPlace);
    if (t.ball <= wordPairs) {
        text.putShort(loadShort(bcd, t.ball) & topMasks[t.ball], t.bfrac());
    } else {
        if (t.bint() > 0)
            text.putInteger(bcd, t.bint());
        text.putFraction(bcd + t.ball, t.bfrac(), t.bint() == 0);
    }
    const char *const first = text.finish(t.nfrac, isNegative(bcd));
    return text.isValid() ? first : nullptr;
}

//! BCDII2StringSequence() for a type word and its bytes.
DECIMAL_INLINE std::string printed(const BYTE *b, BCDIIType type)
{
    const Layout t(type);
    const auto size = static_cast<std::size_t>(textWidth(t)) + 2;
    if (t.ball > 0 && t.ball <= windowWords * wordPairs && t.bint() >= 0 && t.nfrac >= 0) {
        Array<char, textBuffer> buffer;
        if (const char *const text = putTextShort(buffer, b, t))
            return textOf(text, size);
    }
    return plainText(b, type, size);
}

} // namespace Decimal

#endif // DECIMAL_PRINTING_P_H
