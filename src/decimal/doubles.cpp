// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "doubles_p.h"

#include <bit>
#include <limits>

namespace Decimal {

namespace {

// 2^i modulo 100, for i = 0 to 21; from 2 on it returns every 20 powers.
constexpr auto powerResidues = [] {
    Array<unsigned, 22> residues {1};
    for (int i = 1; i < residues.size(); ++i)
        residues[i] = residues[i - 1] * 2 % 100;
    return residues;
}();

// An integer from 2^53 on modulo 100: its 53 bits and its power of two each have a residue.
unsigned residue(double x)
{
    constexpr int mantissaBits = 53;
    static_assert(std::numeric_limits<double>::is_iec559);
    const auto bits = std::bit_cast<UINT64>(x);
    const auto mantissa = (bits & 0xFFFFFFFFFFFFF) | 0x10000000000000;
    const int exponent = static_cast<int>(bits >> (mantissaBits - 1)) - 1022 - mantissaBits;
    const int index = exponent < 2 ? exponent : 2 + (exponent - 2) % 20;
    return static_cast<unsigned>(mantissa % 100) * powerResidues[index] % 100;
}

// Takes the lowest digits (base 10 or 100) off x >= 2^53 in double arithmetic. Integers do
// the same: the digits are exact, and x - digits is rounded as a double.
BYTE takeDigits(double *x, unsigned base)
{
    const unsigned digits = residue(*x) % base;
    *x = floorPositive((*x - digits) / base + tolerance);
    return static_cast<BYTE>(digits);
}

} // namespace

// From 2^53 on the double arithmetic may round, below it is the same as that of integers.
bool putLargeDouble(BYTE *bcd, Layout t, double x)
{
    bool half = (t.nfrac & 1) != 0; // the last byte holds one digit
    while (x >= doubleExact && t.ball > 0) {
        const bool single = half || (t.ball == 1 && (t.nint & 1) != 0);
        const BYTE digits = takeDigits(&x, single ? 10 : 100);
        bcd[--t.ball] = static_cast<BYTE>(half ? 10 * digits : digits);
        half = false;
    }
    return t.ball > 0 && putPairs(bcd, t, integerPairs(static_cast<UINT64>(x), half ? 1 : 0));
}

} // namespace Decimal
