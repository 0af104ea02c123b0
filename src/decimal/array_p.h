// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef DECIMAL_ARRAY_P_H
#define DECIMAL_ARRAY_P_H

#include <array>
#include <cstddef>

namespace Decimal {

//! std::array that takes indexes of any integer type. Counts of bytes and digits are ints;
//! if each index had to be converted, conversions that matter would not be seen.
template<typename T, int N> struct Array : std::array<T, std::size_t {N}>
{
    using Base = std::array<T, std::size_t {N}>;

    template<typename I> constexpr T &operator[](I i)
    {
        return Base::operator[](static_cast<std::size_t>(i));
    }
    template<typename I> constexpr const T &operator[](I i) const
    {
        return Base::operator[](static_cast<std::size_t>(i));
    }
    static constexpr int size() { return N; }
};

} // namespace Decimal

#endif // DECIMAL_ARRAY_P_H
