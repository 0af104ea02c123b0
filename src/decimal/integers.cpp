// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "integers_p.h"

#include "copy_p.h"
#include "plain_p.h"

namespace Decimal {

namespace {

constexpr int integerBytes = 11; // 20 digits, and one of padding with an odd fd

template<int N> DECIMAL_INLINE UINT32 putIntegerShort(BYTE *dst, Layout d, UINT64 i64, int fd)
{
    const Layout s(2 * integerBytes - (fd & 1), fd);
    const Words<2> pairs = integerPairs(i64, fd);
    Words<N> w {pairs[0], pairs[1]};
    return copyWords<N>(dst, d, w, s, false, BCDII_ROUND_TRUNC);
}

DECIMAL_NOINLINE UINT32 putIntegerPlain(BYTE *dst, BCDIIType type, UINT64 i64, int fd)
{
    const Layout s(2 * integerBytes - (fd & 1), fd);
    Array<BYTE, integerBytes> pairs;
    storeExact<2>(pairs.data(), integerBytes, integerPairs(i64, fd), false);
    return copyPlain(dst, Layout(type), pairs.data(), s, BCDII_ROUND_TRUNC);
}

// The type has the integer's own fraction digits: nothing to cut.
DECIMAL_INLINE UINT32 putScaledInteger(BYTE *dst, Layout d, UINT64 i64)
{
    const Words<2> pairs = integerPairs(i64, d.nfrac);
    if (!fits<2>(pairs, d))
        return putNan(dst, NoResult | Overflow);
    storeWords<2>(dst, d.ball, pairs, false);
    return i64 == 0 ? UINT32 {IsZero} : 0;
}

} // namespace

UINT32 putInteger(BYTE *dst, BCDIIType type, UINT64 i64, int fd)
{
    const Layout d(type);
    if (fd == d.nfrac && fd <= 2 * windowFraction && d.ball > 0 && d.ball <= 2 * wordPairs)
        return putScaledInteger(dst, d, i64);
    fd = nearFractionDigits(fd);
    switch (windowOfBoth(d, Layout(2 * integerBytes - (fd & 1), fd))) {
    case 0:
        return putIntegerPlain(dst, type, i64, fd);
    case 1:
    case 2:
        return putIntegerShort<2>(dst, d, i64, fd);
    case 3:
        return putIntegerShort<3>(dst, d, i64, fd);
    default:
        return putIntegerShort<4>(dst, d, i64, fd);
    }
}

UINT32 toIntegerPlain(INT64 *pi64, const BYTE *bcd, BCDIIType type, int fd, BCDIIroundstyle rs)
{
    const Layout d(19, fd);
    Array<BYTE, 10> digits {};
    const UINT32 status = copyPlain(digits.data(), d, bcd, Layout(type), rs);
    const Words<2> w = loadExact<2>(digits.data(), 10);
    return giveInteger(pi64, d, w[1], w[0], status);
}

} // namespace Decimal
