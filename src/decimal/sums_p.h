// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef DECIMAL_SUMS_P_H
#define DECIMAL_SUMS_P_H

#include "array_p.h"
#include "layout_p.h"
#include "words_p.h"

//! \file
//! Sums: all pairs of a word are added, or taken away, in one addition of the word.
//!
//! To have a pair carry like a byte, 156 is added to it beforehand: pair + 156 reaches 256
//! exactly when the pair reaches 100. A byte that carried holds the pair; one that did not
//! still holds the 156, so it is 156 to 255 with bit 7 set, and the pair of a byte that
//! carried is below 100 with bit 7 clear. To subtract is to add the complement to 99, which
//! raised by 156 is that of the byte: 255 - pair. Different signs take the smaller magnitude
//! from the larger, so that no borrow is left.
//!
//! Values of one type of up to 32 bytes, the commonest case, go through a function made for
//! their number of bytes. Others meet in a window of words, or go the plain way.

namespace Decimal {

//! BCDIIAdd() for values that are not NaN.
UINT32 addTypes(BYTE *ret, BCDIIType retType, const BYTE *a, BCDIIType aType, const BYTE *b,
                BCDIIType bType, BCDIIroundstyle rs);

//! The same where a has the result's type: most often b lies within it, as where a sum is
//! kept, and has only to be aligned. It takes the same arguments, so that they stay where
//! they are.
UINT32 addInto(BYTE *ret, BCDIIType retType, const BYTE *a, BCDIIType aType, const BYTE *b,
               BCDIIType bType, BCDIIroundstyle rs);

using SameAdder = UINT32 (*)(BYTE *ret, BCDIIType retType, const BYTE *a, BCDIIType aType,
                             const BYTE *b, BCDIIType bType, BCDIIroundstyle rs);
//! BCDIIAdd() for one type of 1 to 32 bytes, by that number less 1. NaNs are seen to.
extern const Array<SameAdder, wordPairs * windowWords> sameAdders;

} // namespace Decimal

#endif // DECIMAL_SUMS_P_H
