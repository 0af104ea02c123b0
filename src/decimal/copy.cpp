// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "copy_p.h"

#include "plain_p.h"

namespace Decimal {

namespace {

template<int N>
DECIMAL_INLINE UINT32 copyShort(BYTE *dst, Layout d, const BYTE *src, Layout s, BCDIIroundstyle rs)
{
    return copyWords<N>(dst, d, loadWords<N>(src, s.ball), s, isNegative(src), rs);
}

} // namespace

UINT32 copyInternal(BYTE *dst, BCDIIType dstType, const BYTE *src, BCDIIType srcType,
                    BCDIIroundstyle rs)
{
    const Layout d(dstType);
    const Layout s(srcType);
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
