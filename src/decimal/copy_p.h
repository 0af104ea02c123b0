// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef DECIMAL_COPY_P_H
#define DECIMAL_COPY_P_H

#include "compiler_p.h"
#include "layout_p.h"
#include "rounding_p.h"
#include "words_p.h"

//! \file
//! Copies from type to type. What both types say lies in a window of words around the
//! point; else the plain way is taken. The source is read whole before a byte is written.

namespace Decimal {

//! BCDIICopy() for values that are not NaN. The buffers may overlap.
UINT32 copyInternal(BYTE *dst, BCDIIType dstType, const BYTE *src, BCDIIType srcType,
                    BCDIIroundstyle rs);

//! Copies a value of type s, read into words that end with its last byte.
template<int N>
DECIMAL_INLINE UINT32 copyWords(BYTE *dst, Layout d, Words<N> &w, Layout s, bool negative,
                                BCDIIroundstyle rs)
{
    if (d.bfrac() > s.bfrac())
        shiftUp<N>(w, d.bfrac() - s.bfrac());
    const Word lost = dropPairs<N>(w, s.bfrac() - d.bfrac());
    return deliver<N>(dst, d, w, lost, false, s.nfrac, negative, rs);
}

} // namespace Decimal

#endif // DECIMAL_COPY_P_H
