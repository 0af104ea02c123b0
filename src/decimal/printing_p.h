// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef DECIMAL_PRINTING_P_H
#define DECIMAL_PRINTING_P_H

#include "layout_p.h"

#include <string>

//! \file
//! Values as texts.

namespace Decimal {

//! BCDII2StringSequence() for a type word and its bytes.
std::string printed(const BYTE *bcd, BCDIIType type);

} // namespace Decimal

#endif // DECIMAL_PRINTING_P_H
