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
#include <string>

//! \file
//! Values as texts.
//!
//! The short way writes eight digits at a time from the point on, to both sides, into a
//! buffer in which the longest text fits whatever the place of its point. It takes layouts
//! of 4 to 32 bytes that reach to the point or beyond it on both sides, and gives up where
//! a pair is above 99. The plain way takes all others, pair by pair.
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

inline constexpr int chunkDigits = 8;
inline constexpr int chunkPairs = chunkDigits / 2;
inline constexpr int mostDigits = 2 * windowWords * wordPairs;
inline constexpr int pointPlace = chunkDigits + mostDigits; // room for a sign and the integer
inline constexpr int textTail = mostDigits + 8;             // NULs that may follow the text
inline constexpr int textBuffer = pointPlace + 1 + mostDigits + textTail;

//! Four pairs as eight digits; 103 / 2^10 is 1 / 10 for them.
DECIMAL_INLINE Word unpackChunk(Word pairs)
{
    const Word halves = (pairs | pairs << 16) & 0x0000FFFF0000FFFF;
    const Word spread = (halves | halves << 8) & 0x00FF00FF00FF00FF;
    const Word tens = spread * 103 >> 10 & 0x000F000F000F000F;
    return tens << 8 | (spread - tens * 10);
}

//! A text that is put down from its point, eight digits at a time, wherever it begins. A
//! chunk of fewer pairs is read with its neighbours, which are shifted out.
class TextWriter
{
public:
    explicit TextWriter(char *point)
        : m_point(reinterpret_cast<BYTE *>(point))
    {
    }

    void putInteger(const BYTE *bcd, int pairs)
    {
        for (int at = 0; at < pairs; at += chunkPairs) {
            const int left = pairs - at;
            const Word chunk = left > chunkPairs
                ? load<UINT32>(bcd + left - chunkPairs)
                : load<UINT32>(bcd) >> (8 * (chunkPairs - left)) & topMasks[left];
            const Word digits = unpack(chunk);
            store(m_point - 2 * at - chunkDigits, digits | zeros);
            // No branch: where a number begins is as good as random.
            const int count = 2 * at + chunkDigits - (std::countl_zero(digits | 1) >> 3);
            const int keep = int {digits != 0} - 1;
            m_integerDigits = (m_integerDigits & keep) | (count & ~keep);
        }
    }
    // The pairs end with byte end, which is the end of the value.
    void putFraction(const BYTE *end, int pairs, bool hasSign)
    {
        for (int at = 0; at < pairs; at += chunkPairs) {
            const int left = pairs - at;
            UINT32 chunk = left >= chunkPairs
                ? load<UINT32>(end - left)
                : load<UINT32>(end - chunkPairs) << (8 * (chunkPairs - left));
            if (at == 0 && hasSign)
                chunk &= 0x7FFFFFFF;
            store(m_point + 1 + 2 * at, unpack(chunk) | zeros);
        }
    }
    // Ends the text behind nfrac digits, and returns where it begins.
    const char *finish(int nfrac, bool negative)
    {
        *m_point = nfrac > 0 ? '.' : '\0';
        repeat<textTail / 8>(
            [&](int j) DECIMAL_INLINE_LAMBDA { store<Word>(m_point + 1 + nfrac + 8 * j, 0); });
        BYTE *const first = m_point - m_integerDigits;
        first[-1] = '-';
        return reinterpret_cast<const char *>(first - int {negative});
    }
    bool isValid() const { return (m_tops & eachByte * 0x80) == 0; }

private:
    static constexpr Word zeros = eachByte * '0';

    Word unpack(Word pairs)
    {
        m_tops |= pairs | (pairs + eachByte * 28);
        return unpackChunk(pairs);
    }

    BYTE *m_point;
    int m_integerDigits = 0; // without zeros in front
    Word m_tops = 0;         // bit 7: a pair was above 99
};

//! Null for bytes that are not digits.
inline const char *putTextShort(Array<char, textBuffer> &buffer, const BYTE *bcd, Layout t)
{
    if ((bcd[0] & pairMask) > ((t.nint & 1) != 0 ? 9 : 99))
        return nullptr;
    TextWriter text(buffer.data() + pointPlace);
    text.putInteger(bcd, t.bint());
    text.putFraction(bcd + t.ball, t.bfrac(), t.bint() == 0);
    const char *const first = text.finish(t.nfrac, isNegative(bcd));
    return text.isValid() ? first : nullptr;
}

//! BCDII2StringSequence() for a type word and its bytes.
DECIMAL_INLINE std::string printed(const BYTE *b, BCDIIType type)
{
    const Layout t(type);
    const auto size = static_cast<std::size_t>(textWidth(t)) + 2;
    if (t.ball >= chunkPairs && t.ball <= windowWords * wordPairs && t.bint() >= 0
        && t.nfrac >= 0) {
        Array<char, textBuffer> buffer;
        if (const char *const text = putTextShort(buffer, b, t))
            return textOf(text, size);
    }
    return plainText(b, type, size);
}

} // namespace Decimal

#endif // DECIMAL_PRINTING_P_H
