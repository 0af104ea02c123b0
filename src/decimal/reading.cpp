// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "reading_p.h"

#include "array_p.h"
#include "compiler_p.h"
#include "copy_p.h"
#include "rounding_p.h"
#include "words_p.h"

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstring>

//! \file
//! Most texts are digits with at most one point, 64 characters or fewer. They are taken eight
//! characters at a time: less '0' all bytes are 0 to 9, or the text is no such one and is gone
//! through character by character. Only those characters are read that the text has.
//!
//! Pairs are aligned on the point, so the point is taken out by moving the digits on one side
//! of it by one place: those in front of it when there are even many behind it, and those
//! behind it when they are odd many.

namespace Decimal {

namespace {

constexpr BCDIIType typeWord(int nall, int nfrac)
{
    return static_cast<BCDIIType>((nall & 0xFF) << 8 | (nfrac & 0xFF));
}

constexpr int parseBuffer = 63; // bytes
constexpr int mostFractionDigits = 127;

bool isDigit(char c)
{
    return c >= '0' && c <= '9';
}

const char *skipZeros(const char *p)
{
    while (*p == '0')
        ++p;
    return p;
}

const char *skipDigits(const char *p)
{
    while (isDigit(*p))
        ++p;
    return p;
}

// A number found in a text.
struct Found
{
    const char *integer = nullptr;  //!< first integer digit that is not a leading zero
    const char *fraction = nullptr; //!< the same, without zeros when no integer digits stand before
    const char *end = nullptr;      //!< behind the last digit
    std::ptrdiff_t nint = 0;        //!< digits before the point; negative: zeros after it
    std::ptrdiff_t nfrac = 0;       //!< digits after the point, with those zeros
    bool anyDigit = false;
    bool anySignificant = false;
};

const char *skipSpace(const char *p)
{
    while (*p == '\t' || *p == '\n' || *p == '\r' || *p == ' ')
        ++p;
    return p;
}

// The number that begins behind the sign.
Found findNumber(const char *p)
{
    Found found;
    found.integer = skipZeros(p);
    found.end = skipDigits(found.integer);
    found.nint = found.end - found.integer;
    found.anyDigit = found.end != p;
    found.anySignificant = found.nint > 0;
    found.fraction = found.end;
    if ((*found.end != '.' && *found.end != ',') || !isDigit(found.end[1]))
        return found;

    const char *const point = found.end + 1;
    found.anyDigit = true;
    found.fraction = found.nint > 0 ? point : skipZeros(point);
    found.end = skipDigits(found.fraction);
    found.nfrac = found.end - point;
    if (found.nint == 0) {
        found.nint = point - found.fraction;
        found.anySignificant = found.end != found.fraction;
    }
    return found;
}

// Packs count digits, the first into the tens place unless it stands alone; a digit
// left over is followed by padding.
BYTE *packDigits(BYTE *out, const char *digit, std::ptrdiff_t count, bool firstAlone)
{
    if (firstAlone && count > 0) {
        *out++ = static_cast<BYTE>(*digit++ - '0');
        --count;
    }
    for (; count > 1; count -= 2, digit += 2)
        *out++ = static_cast<BYTE>(10 * (digit[0] - '0') + (digit[1] - '0'));
    if (count > 0)
        *out++ = static_cast<BYTE>(10 * (digit[0] - '0'));
    return out;
}

// Texts of at most 64 characters are taken eight characters at a time, without a branch
// for each of them. Digits stand in bytes, the last character of the text in the lowest.
constexpr int mostShortText = 64;
constexpr int chunkDigits = 8;

// 8 (W - 1) < n <= 8 W characters, each less '0' if it is a digit.
template<int W> DECIMAL_INLINE Words<W> loadDigits(const char *text, int n)
{
    constexpr Word zeros = eachByte * '0';
    const auto *const p = reinterpret_cast<const BYTE *>(text);
    Words<W> w;
    repeat<W - 1>([&](int j) DECIMAL_INLINE_LAMBDA {
        w[j] = load<Word>(p + n - chunkDigits * (j + 1)) ^ zeros;
    });
    const int rest = n - chunkDigits * (W - 1);
    const int surplus = 8 * (chunkDigits - rest); // bits
    if constexpr (W > 1)
        w[W - 1] = (load<Word>(p) ^ zeros) >> surplus;
    else
        w[0] = loadShort(p, rest) ^ zeros >> surplus;
    return w;
}

// Takes the separator, which is marked by a 1 in its byte, out of the digits: those in
// front move down by one, or those behind move up when they are odd in number, since
// pairs are aligned on the point. The mark as a long number, less 1, is a mask of what is
// behind.
template<int W>
DECIMAL_INLINE Words<W> joinDigits(const Words<W> &w, const Words<W> &mark, bool odd)
{
    Words<W> behind;
    Words<W> front;
    Word borrow = 1;
    repeat<W>([&](int j) DECIMAL_INLINE_LAMBDA {
        behind[j] = w[j] & (mark[j] - borrow);
        front[j] = w[j] & ~((mark[j] << 8) - borrow);
        borrow &= Word {mark[j] == 0};
    });
    Words<W> joined;
    repeat<W>([&](int j) DECIMAL_INLINE_LAMBDA {
        if (odd)
            joined[j] = front[j] | behind[j] << 8 | (j > 0 ? behind[j - 1] >> 56 : 0);
        else
            joined[j] = behind[j] | front[j] >> 8 | (j + 1 < W ? front[j + 1] << 56 : 0);
    });
    return joined;
}

// Whether all bytes are 0 to 9: above, adding 0x76 sets bit 7, or it is set already.
template<int W> DECIMAL_INLINE bool areDigits(const Words<W> &w)
{
    Word tops = 0;
    repeat<W>([&](int j) DECIMAL_INLINE_LAMBDA { tops |= w[j] | (w[j] + eachByte * 0x76); });
    return (tops & eachByte * 0x80) == 0;
}

// Eight digits as four pairs.
DECIMAL_INLINE Word packChunk(Word digits)
{
    const Word pairs = (digits + (digits >> 8) * 10) & 0x00FF00FF00FF00FF;
    const Word halves = (pairs | pairs >> 8) & 0x0000FFFF0000FFFF;
    return (halves | halves >> 16) & 0xFFFFFFFF;
}

// Digits from the first that is not 0 to the end; the pairs are not all zero.
template<int N> DECIMAL_INLINE int significantDigits(const Words<N> &pairs)
{
    Word top = pairs[0];
    int below = 0;
    for (int j = 1; j < N; ++j) {
        below = pairs[j] != 0 ? 2 * wordPairs * j : below;
        top = pairs[j] != 0 ? pairs[j] : top;
    }
    const int pair = (63 - std::countl_zero(top | 1)) >> 3;
    return below + 2 * pair + ((top >> (8 * pair)) > 9 ? 2 : 1);
}

// What a text is read into.
struct Target
{
    BYTE *dst;
    BCDIIType *type;
    bool negative;
};

// The same rules as for any other text, with the place of the first digit.
template<int N> DECIMAL_INLINE UINT32 putPairs(Target to, const Words<N> &pairs, int nfrac)
{
    const BCDIIType given = *to.type;
    const Layout d(static_cast<std::int8_t>(given >> 8), nfrac);
    const int nint = significantDigits<N>(pairs) - 2 * d.bfrac();
    const bool fitsGiven = nint <= d.nint + nfrac - static_cast<std::int8_t>(given);
    if (fitsGiven)
        *to.type = (given & 0xFF00) | static_cast<BYTE>(nfrac);
    if (!fitsGiven || nint > d.nint) {
        to.dst[0] = nanByte;
        return NoResult | Overflow;
    }
    if (N == windowWords || d.ball <= wordPairs * N)
        storeWords<N>(to.dst, d.ball, pairs, to.negative);
    else
        storeWords<windowWords>(to.dst, d.ball, resized<windowWords>(pairs), to.negative);
    return signStatus(to.negative);
}

constexpr UINT32 notTaken = ~UINT32 {0};

// Takes digits with at most one separator, and anything but zero.
template<int W> DECIMAL_INLINE UINT32 putDigits(Target to, const char *text, int n)
{
    Words<W> digits = loadDigits<W>(text, n);
    Words<W> marks;
    Word places = 0; // bit j of byte i for byte i of word j
    repeat<W>([&](int j) DECIMAL_INLINE_LAMBDA {
        marks[j] = digits[j] >> 4 & eachByte; // in separators, not in digits
        places |= marks[j] << j;
    });
    int nfrac = 0;
    if (places != 0) { // with more than one, any will do: the others are no digits
        const int place = std::countr_zero(places);
        nfrac = chunkDigits * (place & 7) + (place >> 3);
        const char separator = text[n - 1 - nfrac];
        if ((separator != '.' && separator != ',') || nfrac > 2 * windowFraction)
            return notTaken;
        digits = joinDigits<W>(digits, marks, (nfrac & 1) != 0);
    }
    if (!areDigits<W>(digits)) // a second separator is none
        return notTaken;
    Words<(W + 1) / 2> pairs {};
    repeat<W>([&](int j) DECIMAL_INLINE_LAMBDA {
        pairs[j / 2] |= packChunk(digits[j]) << (32 * (j % 2));
    });
    if (anyOf<(W + 1) / 2>(pairs) == 0)
        return notTaken;
    return putPairs<(W + 1) / 2>(to, pairs, nfrac);
}

UINT32 putShortText(Target to, const char *text, std::size_t n)
{
    const auto nall = static_cast<std::int8_t>(*to.type >> 8);
    if (n > mostShortText || nall < 1 || nall > 63)
        return notTaken;
    const int length = static_cast<int>(n);
    switch ((n + chunkDigits - 1) / chunkDigits) {
    case 0:
        return notTaken;
    case 1:
        return putDigits<1>(to, text, length);
    case 2:
        return putDigits<2>(to, text, length);
    case 3:
        return putDigits<3>(to, text, length);
    case 4:
        return putDigits<4>(to, text, length);
    case 5:
        return putDigits<5>(to, text, length);
    case 6:
        return putDigits<6>(to, text, length);
    case 7:
        return putDigits<7>(to, text, length);
    default:
        return putDigits<8>(to, text, length);
    }
}

// Characters to the end of the text, or more than mostShortText. The search does not
// look behind the end.
std::size_t shortLength(const char *text)
{
    const void *const end = std::memchr(text, '\0', mostShortText + 1);
    return static_cast<std::size_t>(end != nullptr ? static_cast<const char *>(end) - text
                                                   : mostShortText + 1);
}

// The new type's fraction digits are the text's, so that nothing is rounded.
UINT32 putFound(Target to, const Found &found)
{
    const Layout d(*to.type);
    const int nint = static_cast<int>(found.nint);
    Array<BYTE, parseBuffer> pairs;
    const bool odd = (nint & 1) != 0;
    BYTE *next = packDigits(pairs.data(), found.integer, std::max(nint, 0), odd);
    packDigits(next, found.fraction, d.nfrac + std::min(nint, 0), nint < 0 && odd);
    pairs[0] = static_cast<BYTE>(pairs[0] | (to.negative ? signBit : 0));
    return copyInternal(to.dst, *to.type, pairs.data(), typeWord(nint + d.nfrac, d.nfrac),
                        BCDII_ROUND_NEAREST);
}

// Any text, without its sign.
UINT32 putText(Target to, const char *text)
{
    const Layout given(*to.type);
    const Found found = findNumber(text);
    if (!found.anyDigit)
        return putNan(to.dst, Invalid | NoResult);
    if (!found.anySignificant)
        return putZero(to.dst, given);
    const auto length = static_cast<std::size_t>(found.end - found.integer);
    const UINT32 status = putShortText(to, found.integer, length);
    if (status != notTaken)
        return status;
    if (((found.nint + 1) >> 1) + ((found.nfrac + 1) >> 1) > parseBuffer
        || found.nfrac > mostFractionDigits)
        return putNan(to.dst, Invalid | NoResult);
    if (found.nint > given.nint)
        return putNan(to.dst, NoResult | Overflow);

    *to.type = (*to.type & 0xFF00) | static_cast<BYTE>(found.nfrac);
    return putFound(to, found);
}

} // namespace

UINT32 readText(BYTE *bcd, BCDIIType &type, const char *str)
{
    const char *text = skipSpace(str);
    const bool negative = *text == '-';
    text += int {negative} | int {*text == '+'};
    const Target to {bcd, &type, negative};
    const UINT32 status = putShortText(to, text, shortLength(text));
    return status != notTaken ? status : putText(to, text);
}

} // namespace Decimal
