// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "printing_p.h"

#include "array_p.h"

#include <algorithm>
#include <cstddef>
#include <cstring>

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

} // namespace

std::string plainText(const BYTE *bcd, BCDIIType type, std::size_t size)
{
    std::string text(size, '\0');
    putTextPlain(text.data(), bcd, Layout(type));
    return text;
}

std::string textOf(const char *text, std::size_t size)
{
    return {text, size};
}

} // namespace Decimal
