// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef NAMES_SAMPLE_H
#define NAMES_SAMPLE_H

#include "bcdiivalue.h"
#include "names.h"

namespace {

//! Whether decimals work, called without the short names.
inline Outcome sampleOutcome()
{
    using Money = BCDIIValue<15, 2>;
    std::uint32_t status = 77;
    std::int64_t units = 0;
    const Money price = Money::fromString("19.90", &status);
    const bool isRead = status == 0
        && BCDII2Int64(&units, price.data(), Money::type(), 2, BCDII_ROUND_NEAREST) == 0;
    const bool isValid = BCDIICheckType(Money::type()) == 1;
    const bool isBounded = price < (std::numeric_limits<Money>::max)();
    return isRead && isValid && isBounded && units == 1990 ? Outcome::Works : Outcome::Fails;
}

} // namespace

#endif // NAMES_SAMPLE_H
