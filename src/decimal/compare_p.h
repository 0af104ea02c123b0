// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef DECIMAL_COMPARE_P_H
#define DECIMAL_COMPARE_P_H

#include "compiler_p.h"
#include "layout_p.h"
#include "words_p.h"

//! \file
//! The order of values: 1, 0 or -1 for the sign of a - b.
//!
//! In one layout it is that of the raw bytes, and the first word that differs decides. In
//! two layouts the first words are aligned by a shift of at most 7 bytes, which drops bytes
//! from the end of one of them; where what is left differs, it decides, and only where it
//! is equal are whole magnitudes compared. Nothing is checked: a sign bit counts as less,
//! and a NaN as its first pair.

namespace Decimal {

//! BCDIICmp() for values of two types.
int compareTypes(const BYTE *a, BCDIIType aType, const BYTE *b, BCDIIType bType);

//! Different words that begin with a sign bit are in order as signed numbers, and in
//! the opposite order when both have the bit set: the larger magnitude is the smaller value.
DECIMAL_INLINE int compareDifferent(Word x, Word y)
{
    const int bothNegative = static_cast<int>((x & y) >> 63);
    const int less = int {static_cast<INT64>(x) < static_cast<INT64>(y)} ^ bothNegative;
    return -less | 1;
}

//! n bytes of one layout, n >= 8. The last word overlaps the one before it, which is
//! known to be equal there.
DECIMAL_INLINE int compareLong(const BYTE *a, const BYTE *b, int n)
{
    for (int i = wordPairs; i < n; i += wordPairs) {
        const int at = std::min(i, n - wordPairs);
        const Word x = load<Word>(a + at);
        const Word y = load<Word>(b + at);
        if (x != y)
            return (x < y) != isNegative(a) ? -1 : 1;
    }
    return 0;
}

//! Values of one type, by their raw bytes.
DECIMAL_INLINE int compareSame(const BYTE *a, const BYTE *b, BCDIIType type)
{
    constexpr int longDigits = 2 * wordPairs; // they fill 8 bytes at least
    if (static_cast<std::int16_t>(type) >= longDigits << 8) {
        const Word x = load<Word>(a);
        const Word y = load<Word>(b);
        return x != y ? compareDifferent(x, y) : compareLong(a, b, Layout(type).ball);
    }
    const int n = Layout(type).ball; // 8 at most
    if (n <= 0)
        return int {isNegative(b)} - int {isNegative(a)};
    const Word x = loadFirst(a, n);
    const Word y = loadFirst(b, n);
    return x != y ? compareDifferent(x, y) : 0;
}

} // namespace Decimal

#endif // DECIMAL_COMPARE_P_H
