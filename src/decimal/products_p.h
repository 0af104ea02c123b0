// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef DECIMAL_PRODUCTS_P_H
#define DECIMAL_PRODUCTS_P_H

#include "array_p.h"
#include "compiler_p.h"
#include "layout_p.h"
#include "limbs_p.h"
#include "wide_p.h"

#include <algorithm>
#include <bit>

//! \file
//! Products. Values of up to 18 digits are numbers below 10^19, so that a product is one of
//! 128 bits and the rounded one is a word again: one multiplication, and one division by a
//! power of ten that rounds as well. Whatever does not fit goes the longer way, by limbs.
//!
//! The division multiplies with the reciprocal of the divisor d, shifted so that its highest
//! bit is set: floor((2^128 - 1) / d) - 2^64. For a dividend below 2^64 d the estimate that
//! it gives is at most 1 too large, and in rare cases 1 too small; both show in the remainder
//! (Moeller and Granlund, "Improved division by invariant integers", algorithm 4). To
//! round, less than d is added beforehand. Larger dividends are refused.

namespace Decimal {

//! BCDIIMul() for values that are not NaN, with any number of digits.
UINT32 mulLong(BYTE *ret, BCDIIType retType, const BYTE *a, BCDIIType aType, const BYTE *b,
               BCDIIType bType, BCDIIroundstyle rs);

//! 10^0 to 10^19, the same shifted so that the highest bit is set, and
//! floor((2^128 - 1) / normalized) less 2^64.
struct Divisor
{
    Word power;
    Word normalized;
    Word reciprocal;
    int shift;
};

inline constexpr auto tens = [] {
    Array<Divisor, 20> divisors {};
    Word power = 1;
    for (Divisor &d : divisors) {
        d.power = power;
        d.shift = std::countl_zero(power);
        d.normalized = power << d.shift;
        d.reciprocal = reciprocalOf(d.normalized);
        power *= 10;
    }
    return divisors;
}();

//! What is added to a number before it is divided, so that the quotient is rounded as the
//! style says. It is less than the divisor, shifted like it.
DECIMAL_INLINE Word roundingBias(const Divisor &d, bool negative, BCDIIroundstyle rs)
{
    if (rs == BCDII_ROUND_NEAREST) // the commonest
        return d.normalized >> 1;
    const Word away = d.normalized - (Word {1} << d.shift);
    switch (rs) {
    case BCDII_ROUND_UP:
        return away & (Word {negative} - 1);
    case BCDII_ROUND_DOWN:
        return away & (Word {0} - Word {negative});
    case BCDII_ROUND_FROMZERO:
        return away;
    case BCDII_ROUND_TRUNC:
        return 0;
    default:
        return d.normalized >> 1;
    }
}

//! Divides, with the high word of the product with the reciprocal as the estimate, and
//! rounds; false when the quotient might have more than 64 bits. The estimate is the
//! quotient or 1 too large, and in rare cases 1 too small, which the remainder shows
//! (Moeller and Granlund, "Improved division by invariant integers", algorithm 4).
DECIMAL_INLINE bool divide(Wide x, const Divisor &d, Word bias, Word *quotient, bool *isRounded)
{
    const Word low = x.low();
    const Word high = x.high();
    const Word shifted = shiftedUp(high, low, d.shift);
    const Wide dividend = Wide(shifted, low << d.shift) + Wide(0, bias);
    if (high >= d.power || dividend.high() >= d.normalized)
        return false;
    const Wide estimate = Wide::product(dividend.high(), d.reciprocal) + dividend;
    *quotient = estimate.high() + 1;
    Word rest = dividend.low() - *quotient * d.normalized;
    const Word over = Word {0} - Word {rest > estimate.low()};
    *quotient += over;
    rest += over & d.normalized;
    if (rest >= d.normalized) [[unlikely]] {
        ++*quotient;
        rest -= d.normalized;
    }
    *isRounded = rest != bias; // what was there before the bias is lost
    return true;
}

//! BCDIIMul() for values that are not NaN.
inline UINT32 mulInternal(BYTE *ret, BCDIIType retType, const BYTE *a, BCDIIType aType,
                          const BYTE *b, BCDIIType bType, BCDIIroundstyle rs)
{
    const Layout at(aType);
    const Layout bt(bType);
    if (std::max(at.ball, bt.ball) > numberPairs)
        return mulLong(ret, retType, a, aType, b, bType, rs);
    const Layout d(retType);
    const int fraction = at.bfrac() + bt.bfrac();
    const bool odd = (d.nfrac & 1) != 0; // a digit of padding follows
    const auto drop = static_cast<unsigned>(2 * fraction - d.nfrac);
    const auto digits = static_cast<unsigned>(d.nint + d.nfrac);
    constexpr unsigned count = tens.size();
    if (!isNumber(a, at.ball) || !isNumber(b, bt.ball) || drop >= count || fraction > windowFraction
        || digits - 1 >= count - (odd ? 2 : 1))
        return mulLong(ret, retType, a, aType, b, bType, rs);

    const Wide product = Wide::product(toNumber(a, at.ball), toNumber(b, bt.ball));
    const bool negative = isNegative(a) != isNegative(b);
    Word rounded = product.low();
    bool isRounded = false;
    const bool fits = drop == 0
        ? product.high() == 0
        : divide(product, tens[drop], roundingBias(tens[drop], negative, rs), &rounded, &isRounded);
    if (!fits || rounded >= tens[digits].power)
        return mulLong(ret, retType, a, aType, b, bType, rs);
    putNumber(ret, d.ball, odd ? 10 * rounded : rounded, negative & (rounded != 0));
    return UINT32 {isRounded} * Rounded | (rounded == 0 ? UINT32 {IsZero} : signStatus(negative));
}

} // namespace Decimal

#endif // DECIMAL_PRODUCTS_P_H
