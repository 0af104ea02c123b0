// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef DECIMAL_ROUNDSTYLE_P_H
#define DECIMAL_ROUNDSTYLE_P_H

#include "bcdii.h"

namespace Decimal {

//! Whether a magnitude that loses digits grows by a unit of its last place. \a atLeastHalf
//! says that the first lost digit is 5 or more.
inline bool roundsUp(BCDIIroundstyle rs, bool negative, bool atLeastHalf)
{
    switch (rs) {
    case BCDII_ROUND_UP:
        return !negative;
    case BCDII_ROUND_DOWN:
        return negative;
    case BCDII_ROUND_FROMZERO:
        return true;
    case BCDII_ROUND_TRUNC:
        return false;
    default:
        return atLeastHalf;
    }
}

} // namespace Decimal

#endif // DECIMAL_ROUNDSTYLE_P_H
