// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef DECIMAL_DOUBLES_P_H
#define DECIMAL_DOUBLES_P_H

#include "array_p.h"
#include "compiler_p.h"
#include "integers_p.h"
#include "layout_p.h"
#include "limbs_p.h"
#include "rounding_p.h"
#include "words_p.h"

#include <algorithm>
#include <cfloat>
#include <cmath>

#if FLT_EVAL_METHOD != 0
#error "Doubles must be rounded to doubles at each step: on x86 with 32 bits, -msse2 -mfpmath=sse"
#endif

//! \file
//! Doubles as values and back. Each step of the chain of double operations rounds, and the
//! roundings are part of the result: nothing may be contracted, reordered or kept wider.
//! Below 2^53 the chain and integers agree, so that integers stand in for it.

namespace Decimal {

//! 10.0^i for i = -128 to 128, by repeated multiplication or division, whose
//! roundings are part of the conversions.
inline constexpr auto powersOfTen = [] {
    Array<double, 257> powers {};
    powers[128] = 1.0;
    for (int i = 1; i <= 128; ++i) {
        powers[128 + i] = powers[128 + i - 1] * 10.0;
        powers[128 - i] = powers[128 - i + 1] / 10.0;
    }
    return powers;
}();

inline double power10(int i)
{
    return powersOfTen[128 + i];
}

inline constexpr double doubleExact = 9007199254740992.0; // 2^53: integers below are exact
inline constexpr double tolerance = 0.125;

//! For x >= 0; from 2^52 on every double is an integer.
inline double floorPositive(double x)
{
    return x < doubleExact ? static_cast<double>(static_cast<INT64>(x)) : x;
}

//! Puts pairs into the bytes of a type; false when they do not fit, and then the
//! bytes hold the last of them.
DECIMAL_INLINE bool putPairs(BYTE *bcd, Layout t, Words<2> pairs)
{
    const Words<windowWords> w {pairs[0], pairs[1]};
    if (t.ball <= 2 * wordPairs && fits<2>(pairs, t)) {
        storeWords<2>(bcd, t.ball, pairs, false);
        return true;
    }
    if (t.ball <= windowWords * wordPairs && fits<windowWords>(w, t)) {
        storeWords<windowWords>(bcd, t.ball, w, false);
        return true;
    }
    for (int i = t.ball; i > 0; --i) {
        bcd[i - 1] = static_cast<BYTE>(pairs[0]);
        pairs = {pairs[0] >> 8 | pairs[1] << 56, pairs[1] >> 8};
    }
    return anyOf<2>(pairs) == 0 && ((t.nint & 1) == 0 || bcd[0] < 10);
}

//! Places the integer x >= 2^53, or any into a type without bytes; false when it does not fit.
bool putLargeDouble(BYTE *bcd, Layout t, double x);

//! Places the integer x > 0; false when it does not fit.
DECIMAL_INLINE bool putDouble(BYTE *bcd, Layout t, double x)
{
    if (x >= doubleExact || t.ball == 0)
        return putLargeDouble(bcd, t, x);
    return putPairs(bcd, t, integerPairs(static_cast<UINT64>(x), t.nfrac & 1));
}

//! BCDII2Double() for values that are not NaN.
inline UINT32 toDouble(double *dbl, const BYTE *b, BCDIIType type)
{
    const Layout t(type);
    // Seven pairs are below 2^53, where integers and doubles agree. Zeros in front
    // make no difference.
    const int exact = std::min(7, t.ball);
    const Word leading = exact > 0 ? toLimb(loadShort(b, exact) & topMasks[exact]) : 0;
    auto value = static_cast<double>(static_cast<INT64>(leading));
    for (int i = exact; i < t.ball; ++i)
        value = value * 100.0 + b[i];
    if (value == 0.0) {
        *dbl = 0.0;
        return IsZero;
    }
    value /= power10(2 * t.bfrac());
    *dbl = isNegative(b) ? -value : value;
    return signStatus(isNegative(b));
}

//! BCDIIGetFromDouble().
inline UINT32 putReal(BYTE *bcd, double src, BCDIIType type)
{
    constexpr double integral = 4503599627370496.0; // 2^52: no fraction from here on
    const Layout t(type);
    double x = std::fabs(src) * power10(t.nfrac) + 0.5;
    if (x < integral)
        x = floorPositive(x);
    if (x < tolerance)
        return putZero(bcd, t);
    if (std::isnan(x)) {
        putZero(bcd, t);
        return 0; // nothing compares with it: no digit is placed, no sign seen
    }
    if (std::isinf(x))
        putZero(bcd, t);
    if (std::isinf(x) || !putDouble(bcd, t, x))
        return putNan(bcd, NoResult | Overflow);
    if (src < 0 && t.ball > 0)
        bcd[0] |= signBit;
    return signStatus(src < 0);
}

} // namespace Decimal

#endif // DECIMAL_DOUBLES_P_H
