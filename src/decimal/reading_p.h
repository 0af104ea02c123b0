// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef DECIMAL_READING_P_H
#define DECIMAL_READING_P_H

#include "layout_p.h"

//! \file
//! Texts as values. The text says how many digits there are behind the point, so that
//! reading never rounds.

namespace Decimal {

//! BCDIIFromString() for a type word and its bytes.
UINT32 readText(BYTE *bcd, BCDIIType &type, const char *str);

} // namespace Decimal

#endif // DECIMAL_READING_P_H
