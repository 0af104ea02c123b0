// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "printing_p.h"

#include "array_p.h"
#include "compiler_p.h"
#include "words_p.h"

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstring>

//! \file
//! The short way writes eight digits at a time from the point on, to both sides, into a
//! buffer in which the longest text fits whatever the place of its point. It takes layouts
//! of 4 to 32 bytes that reach to the point or beyond it on both sides, and gives up where
//! a pair is above 99. The plain way takes all others, pair by pair.
//!
//! 103 / 2^10 is 1 / 10 for pairs: 103 * 10 - 2^10 = 6, and 6 * 99 < 2^10.

namespace Decimal {

namespace {

constexpr auto pairTexts = [] {
    Array<char, 256> texts {};
    for (int pair = 0; pair < 128; ++pair) {
        texts[2 * pair] = static_cast<char>('0' + pair / 10 % 10);
        texts[2 * pair + 1] = static_cast<char>('0' + pair % 10);
    }
    return texts;
}();

char *putPairText(char *to, BYTE pair)
{
    std::memcpy(to, &pairTexts[2 * (pair & pairMask)], 2);
    return to + 2;
}

// The digits before the point without leading zeros. Pairs that a negative nfrac
// leaves out follow as zeros.
char *putIntegerDigits(char *to, const BYTE *bcd, Layout t)
{
    const int stored = std::min(t.bint(), t.ball);
    int i = firstPair(bcd, stored);
    if (i >= stored)
        return to;
    const int first = bcd[i] & pairMask;
    if (first > 9 && (i > 0 || (t.nint & 1) == 0))
        *to++ = pairTexts[2 * first];
    *to++ = pairTexts[2 * first + 1];
    for (++i; i < stored; ++i)
        to = putPairText(to, bcd[i]);
    return std::fill_n(to, 2 * (t.bint() - stored), '0');
}

// The point and nfrac digits. Pairs in front of the first byte are zeros.
void putFractionDigits(char *to, const BYTE *bcd, Layout t)
{
    *to++ = '.';
    to = std::fill_n(to, std::min(2 * std::max(0, -t.bint()), t.nfrac), '0');
    for (int i = std::max(0, t.bint()); i < t.ball; ++i)
        to = putPairText(to, bcd[i]);
    if ((t.nfrac & 1) != 0 && t.ball > 0)
        to[-1] = '\0'; // the padding digit
}

void putTextPlain(char *to, const BYTE *bcd, Layout t)
{
    if (isNegative(bcd))
        *to++ = '-';
    to = putIntegerDigits(to, bcd, t);
    if (t.nfrac > 0)
        putFractionDigits(to, bcd, t);
}

// Characters of the widest text without a sign.
int textWidth(Layout t)
{
    return std::max(t.nint, 0) + (t.nfrac > 0 ? t.nfrac + 1 : 0);
}

constexpr int chunkDigits = 8;
constexpr int chunkPairs = chunkDigits / 2;
constexpr int mostDigits = 2 * windowWords * wordPairs;
constexpr int pointPlace = chunkDigits + mostDigits; // room for a sign and the integer
constexpr int textTail = mostDigits + 8;             // NULs that may follow the text
constexpr int textBuffer = pointPlace + 1 + mostDigits + textTail;

// Four pairs as eight digits; 103 / 2^10 is 1 / 10 for them.
DECIMAL_INLINE Word unpackChunk(Word pairs)
{
    const Word halves = (pairs | pairs << 16) & 0x0000FFFF0000FFFF;
    const Word spread = (halves | halves << 8) & 0x00FF00FF00FF00FF;
    const Word tens = spread * 103 >> 10 & 0x000F000F000F000F;
    return tens << 8 | (spread - tens * 10);
}

// A text that is put down from its point, eight digits at a time, wherever it begins. A
// chunk of fewer pairs is read with its neighbours, which are shifted out.
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

// Not inlined: knowing the bounds of the size, compilers copy in place, which is slower
// here than the C library.
DECIMAL_NOINLINE std::string textOf(const char *text, std::size_t size)
{
    return {text, size};
}

// Null for bytes that are not digits.
const char *putTextShort(Array<char, textBuffer> &buffer, const BYTE *bcd, Layout t)
{
    if ((bcd[0] & pairMask) > ((t.nint & 1) != 0 ? 9 : 99))
        return nullptr;
    TextWriter text(buffer.data() + pointPlace);
    text.putInteger(bcd, t.bint());
    text.putFraction(bcd + t.ball, t.bfrac(), t.bint() == 0);
    const char *const first = text.finish(t.nfrac, isNegative(bcd));
    return text.isValid() ? first : nullptr;
}

} // namespace

std::string printed(const BYTE *b, BCDIIType type)
{
    const Layout t(type);
    const auto size = static_cast<std::size_t>(textWidth(t)) + 2;
    if (t.ball >= chunkPairs && t.ball <= windowWords * wordPairs && t.bint() >= 0
        && t.nfrac >= 0) {
        Array<char, textBuffer> buffer;
        if (const char *const text = putTextShort(buffer, b, t))
            return textOf(text, size);
    }
    std::string text(size, '\0');
    putTextPlain(text.data(), b, t);
    return text;
}

} // namespace Decimal
