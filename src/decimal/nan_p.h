// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef NAN_P_H
#define NAN_P_H

#include <cstdint>

namespace Decimal {

//! The first byte of a value that is no number.
inline constexpr std::uint8_t nanByte = 101;

} // namespace Decimal

#endif // NAN_P_H
