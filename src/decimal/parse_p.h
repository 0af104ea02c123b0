// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef DECIMAL_PARSE_P_H
#define DECIMAL_PARSE_P_H

#include "bcdii.h"

#include <cstddef>
#include <string_view>

//! \file
//! Texts that must be numbers, and must fit, from the first character to the last. Digits
//! are put where their place says, so that there is nothing to round.

namespace Decimal {

//! BCDIIParse(), but for the byte of NaN: the status, and in \a end what *position becomes.
std::uint32_t parse(std::uint8_t *bytes, BCDIIType type, std::string_view text,
                    std::string_view points, std::size_t *end);

} // namespace Decimal

#endif // DECIMAL_PARSE_P_H
