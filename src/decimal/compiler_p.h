// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef DECIMAL_COMPILER_P_H
#define DECIMAL_COMPILER_P_H

#include <cstddef>
#include <cstdint>

//! \file
//! What only some compilers have, with what the others do without it.

#if defined(__GNUC__) // Clang says so, too
//! A function that is to be inlined wherever it is called.
#define DECIMAL_INLINE [[gnu::always_inline]] inline
//! The same behind the parameters of a lambda.
#define DECIMAL_INLINE_LAMBDA __attribute__((always_inline))
#define DECIMAL_NOINLINE [[gnu::noinline]]
//! A function that is hardly ever called.
#define DECIMAL_COLD [[gnu::noinline, gnu::cold]]
#else
#define DECIMAL_INLINE inline
#define DECIMAL_INLINE_LAMBDA
#define DECIMAL_NOINLINE
#define DECIMAL_COLD
#endif

//! Vectors of 16 bytes, the first byte of a number the least significant one.
#if defined(__has_builtin) && (defined(__SSE2__) || defined(__ARM_NEON))                           \
    && __BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__ && !defined(VANTIX_PORTABLE_DECIMALS)
#if __has_builtin(__builtin_shufflevector)
#define DECIMAL_HAS_VECTORS
#endif
#endif

namespace Decimal {

//! The bytes of an unsigned integer in the opposite order.
template<typename T> DECIMAL_INLINE T byteSwapped(T w)
{
#if defined(__GNUC__)
    if constexpr (sizeof(T) == 8)
        return __builtin_bswap64(w);
    else if constexpr (sizeof(T) == 4)
        return __builtin_bswap32(w);
    else
        return __builtin_bswap16(w);
#else
    T swapped = 0;
    for (std::size_t i = 0; i < sizeof(T); ++i)
        swapped = static_cast<T>(swapped << 8 | (w >> (8 * i) & 0xFF));
    return swapped;
#endif
}

} // namespace Decimal

#endif // DECIMAL_COMPILER_P_H
