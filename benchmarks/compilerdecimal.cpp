// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "compilerdecimal.h"

#include <cstring>

namespace {

using Decimal64 = float __attribute__((mode(DD)));
using Decimal128 = float __attribute__((mode(TD)));

template<int Digits> struct Native
{
    using Type = Decimal64;
};

template<> struct Native<34>
{
    using Type = Decimal128;
};

template<int Digits> typename Native<Digits>::Type load(const CompilerDecimalValue<Digits> *a)
{
    typename Native<Digits>::Type v;
    std::memcpy(&v, a->bytes, sizeof v);
    return v;
}

template<int Digits> void store(CompilerDecimalValue<Digits> *r, typename Native<Digits>::Type v)
{
    std::memcpy(r->bytes, &v, sizeof v);
}

} // namespace

template<int Digits>
void CompilerDecimalOperations<Digits>::read(Value *r, const char *digits, int nfrac, bool negative)
{
    using T = typename Native<Digits>::Type;
    T v = T(0);
    for (; *digits != '\0'; ++digits)
        v = v * T(10) + T(*digits - '0');
    for (int i = 0; i < nfrac; ++i)
        v = v * (T(1) / T(10));
    store<Digits>(r, negative ? -v : v);
}

template<int Digits>
void CompilerDecimalOperations<Digits>::add(Value *r, const Value *a, const Value *b)
{
    store<Digits>(r, load<Digits>(a) + load<Digits>(b));
}

template<int Digits>
void CompilerDecimalOperations<Digits>::sub(Value *r, const Value *a, const Value *b)
{
    store<Digits>(r, load<Digits>(a) - load<Digits>(b));
}

template<int Digits>
void CompilerDecimalOperations<Digits>::mul(Value *r, const Value *a, const Value *b)
{
    store<Digits>(r, load<Digits>(a) * load<Digits>(b));
}

template<int Digits> int CompilerDecimalOperations<Digits>::cmp(const Value *a, const Value *b)
{
    const auto x = load<Digits>(a);
    const auto y = load<Digits>(b);
    return x < y ? -1 : x > y;
}

template<int Digits> long long CompilerDecimalOperations<Digits>::toInt(const Value *a)
{
    return static_cast<long long>(load<Digits>(a));
}

template<int Digits> double CompilerDecimalOperations<Digits>::toDouble(const Value *a)
{
    return static_cast<double>(load<Digits>(a));
}

template struct __attribute__((visibility("default"))) CompilerDecimalOperations<16>;
template struct __attribute__((visibility("default"))) CompilerDecimalOperations<34>;
