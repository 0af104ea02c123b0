// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef DECIMAL_PLAIN_P_H
#define DECIMAL_PLAIN_P_H

#include "layout_p.h"

//! \file
//! The plain way: pair by pair in arrays, following the rules of the value format word for
//! word. It takes every layout that a type word can stand for, at any distance, and is what
//! all shorter ways fall back to and are held against.
//!
//! No operand is checked; NaN is seen to before. Statuses are those of BCDIICopy(). An exact
//! result is put together in a temporary of whole bytes on both sides of the point, which
//! has 320 bytes: that is room for a 19-digit integer scaled by 10^300 (160 bytes before the
//! point) and for a product (128 in all). It is rounded from there, once, so that nothing is
//! ever rounded twice. A value whose first digit is below the 62nd place after the point is
//! zero.

namespace Decimal {

//! Copies \a src to \a dst with rounding. The buffers may overlap.
UINT32 copyPlain(BYTE *dst, Layout d, const BYTE *src, Layout s, BCDIIroundstyle rs);

//! The same for type words.
UINT32 copyPlain(BYTE *dst, BCDIIType dstType, const BYTE *src, BCDIIType srcType,
                 BCDIIroundstyle rs);

//! The order of two magnitudes, as BCDIICmp() gives it: signs do not count.
int compareMagnitudesPlain(const BYTE *a, Layout at, const BYTE *b, Layout bt);

//! a + b, with rounding. The result may lie over an operand.
UINT32 addPlain(BYTE *ret, Layout d, const BYTE *a, Layout at, const BYTE *b, Layout bt,
                BCDIIroundstyle rs);

//! a * b, with rounding. The result may lie over an operand.
UINT32 mulPlain(BYTE *ret, Layout d, const BYTE *a, Layout at, const BYTE *b, Layout bt,
                BCDIIroundstyle rs);

} // namespace Decimal

#endif // DECIMAL_PLAIN_P_H
