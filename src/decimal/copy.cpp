// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "copy_p.h"

#include "plain_p.h"

namespace Decimal {

namespace {

template<int N>
DECIMAL_INLINE UINT32 copyShort(BYTE *dst, const Layout &d, const BYTE *src, const Layout &s,
                                BCDIIroundstyle rs)
{
    Words<N> w = loadWords<N>(src, s.ball);
    return copyWords<N>(dst, d, w, s, isNegative(src), rs);
}

// The destination reaches as far as the source to both sides, or further: nothing is cut.
template<int N>
DECIMAL_INLINE UINT32 copyWithin(BYTE *dst, Layout d, const BYTE *src, Layout s, BCDIIroundstyle rs)
{
    Words<N> w = loadAligned<N>(src, s, d.bfrac());
    const UINT32 status = roundCut<N>(w, 0, false, d, s.nfrac, isNegative(src), rs);
    if ((status & NoResult) != 0)
        return putNan(dst, status);
    storeExact<N>(dst, d.ball, w, (status & IsNegative) != 0);
    return status;
}

} // namespace

UINT32 copyInternal(BYTE *dst, BCDIIType dstType, const BYTE *src, BCDIIType srcType,
                    BCDIIroundstyle rs)
{
    const Layout d(dstType);
    const Layout s(srcType);
    if (d.bfrac() >= s.bfrac() && d.bint() >= s.bint() && d.bfrac() <= windowFraction
        && s.ball > 0) {
        switch (wordsOf(d.ball)) {
        case 1:
            return copyWithin<1>(dst, d, src, s, rs);
        case 2:
            return copyWithin<2>(dst, d, src, s, rs);
        case 3:
            return copyWithin<3>(dst, d, src, s, rs);
        case 4:
            return copyWithin<4>(dst, d, src, s, rs);
        default:
            return copyPlain(dst, dstType, src, srcType, rs);
        }
    }
    switch (windowOfBoth(d, s)) {
    case 0:
        return copyPlain(dst, dstType, src, srcType, rs);
    case 1:
        return copyShort<1>(dst, d, src, s, rs);
    case 2:
        return copyShort<2>(dst, d, src, s, rs);
    case 3:
        return copyShort<3>(dst, d, src, s, rs);
    default:
        return copyShort<4>(dst, d, src, s, rs);
    }
}

} // namespace Decimal
