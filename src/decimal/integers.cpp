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

UINT32 putMagnitude(BYTE *dst, BCDIIType type, UINT64 i64, int fd)
{
    const Layout d(type);
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

template<int N>
DECIMAL_INLINE UINT32 toIntegerShort(INT64 *pi64, Layout d, const BYTE *bcd, Layout t,
                                     BCDIIroundstyle rs)
{
    const int fraction = std::max(d.bfrac(), t.bfrac());
    Words<N> w = loadAligned<N>(bcd, t, fraction);
    const Word lost = dropPairs<N>(w, fraction - d.bfrac());
    const UINT32 status = roundCut<N>(w, lost, false, d, t.nfrac, isNegative(bcd), rs);
    return giveInteger(pi64, d, w[1], w[0], status);
}

UINT32 toIntegerPlain(INT64 *pi64, const BYTE *bcd, BCDIIType type, int fd, BCDIIroundstyle rs)
{
    const Layout d(19, fd);
    Array<BYTE, 10> digits {};
    const UINT32 status = copyPlain(digits.data(), d, bcd, Layout(type), rs);
    const Words<2> w = loadExact<2>(digits.data(), 10);
    return giveInteger(pi64, d, w[1], w[0], status);
}

} // namespace

UINT32 putAnyInteger(BYTE *dst, BCDIIType type, UINT64 i64, int fd, bool negative)
{
    const UINT32 status = putMagnitude(dst, type, i64, nearFractionDigits(fd));
    // Deliberate: zero and NaN get the sign as well, and a type without digits.
    dst[0] = static_cast<BYTE>(dst[0] | (negative ? signBit : 0));
    return status | signStatus(negative);
}

UINT32 toAnyInteger(INT64 *pi64, const BYTE *bcd, BCDIIType type, int fd, BCDIIroundstyle rs)
{
    fd = nearFractionDigits(fd);
    const Layout t(type);
    const Layout d(19, fd); // 10 bytes, so 2 words at least
    switch (windowOfBoth(d, t)) {
    case 0:
        return toIntegerPlain(pi64, bcd, type, fd, rs);
    case 1:
    case 2:
        return toIntegerShort<2>(pi64, d, bcd, t, rs);
    case 3:
        return toIntegerShort<3>(pi64, d, bcd, t, rs);
    default:
        return toIntegerShort<4>(pi64, d, bcd, t, rs);
    }
}

} // namespace Decimal
