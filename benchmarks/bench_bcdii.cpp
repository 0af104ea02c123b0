// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

//! \file
//! The packed decimals beside binary-coded decimals, big numbers and scaled integers,
//! with the same operands, named operation/digits/who. Time is that of 4096
//! operations; items per second are operations. Then follow the times of one operation
//! beside every peer's, and the goals. Peers take turns, the smallest time counts;
//! --benchmark_repetitions=N sets how many turns there are.

#include "bcdii.h"
#include "compilerdecimal.h"
#include "instructioncount.h"
#include "ratioreporter.h"

#include <benchmark/benchmark.h>
#include <boost/multiprecision/cpp_dec_float.hpp>
#include <boost/multiprecision/cpp_int.hpp>
#include <gmp.h>
#ifdef HAVE_LIBMPDEC
#include <mpdecimal.h>
#endif

#define DECIMAL_CALL_BY_REFERENCE 0
#define DECIMAL_GLOBAL_ROUNDING 0
#define DECIMAL_GLOBAL_EXCEPTION_FLAGS 0
#include <bid_conf.h>
// After its configuration.
#include <bid_functions.h>

#include <array>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <memory>
#include <random>
#include <string>
#include <type_traits>
#include <vector>

namespace {

__extension__ using Int128 = __int128;
using Integer = boost::multiprecision::cpp_int;

constexpr int operandCount = 4096;

struct Type
{
    int nall = 0;
    int nfrac = 0;

    BCDIIType word() const { return BCDIIType((nall & 0xFF) << 8 | (nfrac & 0xFF)); }
};

// The types of one precision: most digits, an addend with fewer fraction digits, the
// type to round to, a small factor, and one that holds products exactly.
struct Row
{
    const char *name;
    Type t, u, r, m, x;
};

const Row rows[] = {
    {"9", {9, 2}, {8, 1}, {8, 1}, {4, 2}, {9, 4}},
    {"16", {16, 4}, {14, 2}, {14, 2}, {6, 2}, {16, 8}},
    {"18", {18, 6}, {15, 3}, {14, 2}, {6, 2}, {18, 12}},
    {"18odd", {18, 5}, {15, 2}, {16, 3}, {6, 3}, {18, 10}},
    {"34", {34, 10}, {30, 6}, {28, 4}, {6, 2}, {34, 20}},
    {"63", {63, 20}, {55, 12}, {51, 8}, {6, 2}, {63, 40}},
};

// What an operation is to do, besides its operands.
struct Task
{
    Type a, b, r;
    bool truncates = false;

    int surplus(bool product) const // fraction digits of the exact result to round away
    {
        return (product ? a.nfrac + b.nfrac : std::max(a.nfrac, b.nfrac)) - r.nfrac;
    }
    BCDIIroundstyle style() const { return truncates ? BCDII_ROUND_TRUNC : BCDII_ROUND_NEAREST; }
};

Integer powerOfTen(int n)
{
    return boost::multiprecision::pow(Integer(10), unsigned(n));
}

// Units of a type in scientific notation.
std::string textOf(const Integer &units, int nfrac)
{
    return units.str() + "e" + std::to_string(-nfrac);
}

std::string plainText(const Integer &units, int nfrac)
{
    std::string digits = Integer(abs(units)).str();
    if (int(digits.size()) <= nfrac)
        digits.insert(0, std::size_t(nfrac + 1) - digits.size(), '0');
    if (nfrac > 0)
        digits.insert(digits.size() - std::size_t(nfrac), ".");
    return (units < 0 ? "-" : "") + digits;
}

// ------------------------------------------------------------------------- peers

struct Ours
{
    static constexpr const char *name = "bcdii";
    static constexpr int mostDigits = 63;
    struct Value
    {
        std::array<BYTE, 32> bytes;
    };
    static Value make(const Integer &units, int nfrac, Type t)
    {
        Value v {};
        BCDIIType word = Type {63, 0}.word();
        std::array<BYTE, 33> wide;
        BCDIIFromString(wide.data(), word, plainText(units, nfrac).c_str());
        BCDIICopy(v.bytes.data(), t.word(), wide.data(), word, BCDII_ROUND_TRUNC);
        return v;
    }
    static void add(Value &r, const Value &a, const Value &b, const Task &task)
    {
        BCDIIAdd(r.bytes.data(), task.r.word(), a.bytes.data(), task.a.word(), b.bytes.data(),
                 task.b.word(), task.style());
    }
    static void sub(Value &r, const Value &a, const Value &b, const Task &task)
    {
        Value negated = b;
        BCDIINeg(negated.bytes.data(), task.b.word());
        add(r, a, negated, task);
    }
    static void mul(Value &r, const Value &a, const Value &b, const Task &task)
    {
        BCDIIMul(r.bytes.data(), task.r.word(), a.bytes.data(), task.a.word(), b.bytes.data(),
                 task.b.word(), task.style());
    }
    static int cmp(const Value &a, const Value &b, const Task &task)
    {
        return BCDIICmp(a.bytes.data(), task.a.word(), b.bytes.data(), task.b.word());
    }
    static void rescale(Value &r, const Value &a, const Task &task)
    {
        BCDIICopy(r.bytes.data(), task.r.word(), a.bytes.data(), task.a.word(), task.style());
    }
    static void fromInt(Value &r, INT64 i, Type t)
    {
        BCDIIGetFromInt64(r.bytes.data(), t.word(), i, t.nfrac);
    }
    static INT64 toInt(const Value &a, Type t)
    {
        INT64 i = 0;
        BCDII2Int64(&i, a.bytes.data(), t.word(), 0, BCDII_ROUND_NEAREST);
        return i;
    }
    static void fromDouble(Value &r, double d, Type t)
    {
        BCDIIGetFromDouble(r.bytes.data(), d, t.word());
    }
    static double toDouble(const Value &a, Type t)
    {
        double d = 0;
        BCDII2Double(&d, a.bytes.data(), t.word());
        return d;
    }
    static void parse(Value &r, const char *text, Type t)
    {
        BCDIIType word = t.word();
        BCDIIFromString(r.bytes.data(), word, text);
    }
    static std::string printed(const Value &a, Type t)
    {
        return BCDII2StringSequence(a.bytes.data(), t.word());
    }
    static std::size_t format(const Value &a, Type t)
    {
        const std::string text = printed(a, t);
        benchmark::DoNotOptimize(text.data());
        return text.size();
    }
};

constexpr unsigned nearestAway = 4;
constexpr unsigned towardZero = 3;

unsigned bidRounding(const Task &task)
{
    return task.truncates ? towardZero : nearestAway;
}

struct Bid128
{
    static constexpr const char *name = "bid128";
    static constexpr int mostDigits = 34;
    using Value = BID_UINT128;
    static Value parsed(const char *text)
    {
        unsigned flags = 0;
        return bid128_from_string(const_cast<char *>(text), nearestAway, &flags);
    }
    static Value make(const Integer &units, int nfrac, Type)
    {
        return parsed(textOf(units, nfrac).c_str());
    }
    static Value unit(int nfrac)
    {
        static const std::vector<Value> units = [] {
            std::vector<Value> v;
            for (int i = 0; i < 64; ++i)
                v.push_back(parsed(textOf(1, i).c_str()));
            return v;
        }();
        return units[std::size_t(nfrac)];
    }
    static void add(Value &r, const Value &a, const Value &b, const Task &task)
    {
        unsigned flags = 0;
        r = bid128_add(a, b, nearestAway, &flags);
        if (task.surplus(false) > 0)
            r = bid128_quantize(r, unit(task.r.nfrac), bidRounding(task), &flags);
    }
    static void sub(Value &r, const Value &a, const Value &b, const Task &)
    {
        unsigned flags = 0;
        r = bid128_sub(a, b, nearestAway, &flags);
    }
    static void mul(Value &r, const Value &a, const Value &b, const Task &task)
    {
        unsigned flags = 0;
        r = bid128_mul(a, b, bidRounding(task), &flags);
        if (task.surplus(true) > 0)
            r = bid128_quantize(r, unit(task.r.nfrac), bidRounding(task), &flags);
    }
    static int cmp(const Value &a, const Value &b, const Task &)
    {
        unsigned flags = 0;
        if (bid128_quiet_less(a, b, &flags) != 0)
            return -1;
        return bid128_quiet_greater(a, b, &flags);
    }
    static void rescale(Value &r, const Value &a, const Task &task)
    {
        unsigned flags = 0;
        r = bid128_quantize(a, unit(task.r.nfrac), bidRounding(task), &flags);
    }
    static void fromInt(Value &r, INT64 i, Type t)
    {
        unsigned flags = 0;
        r = bid128_scalbn(bid128_from_int64(i), -t.nfrac, nearestAway, &flags);
    }
    static INT64 toInt(const Value &a, Type)
    {
        unsigned flags = 0;
        return bid128_to_int64_rninta(a, &flags);
    }
    static void fromDouble(Value &r, double d, Type t)
    {
        unsigned flags = 0;
        r = bid128_quantize(binary64_to_bid128(d, nearestAway, &flags), unit(t.nfrac), nearestAway,
                            &flags);
    }
    static double toDouble(const Value &a, Type)
    {
        unsigned flags = 0;
        return bid128_to_binary64(a, nearestAway, &flags);
    }
    static void parse(Value &r, const char *text, Type) { r = parsed(text); }
    static std::size_t format(const Value &a, Type)
    {
        unsigned flags = 0;
        char text[64];
        bid128_to_string(text, a, &flags);
        benchmark::DoNotOptimize(text[0]);
        return 0;
    }
};

struct Bid64
{
    static constexpr const char *name = "bid64";
    static constexpr int mostDigits = 16;
    using Value = BID_UINT64;
    static Value parsed(const char *text)
    {
        unsigned flags = 0;
        return bid64_from_string(const_cast<char *>(text), nearestAway, &flags);
    }
    static Value make(const Integer &units, int nfrac, Type)
    {
        return parsed(textOf(units, nfrac).c_str());
    }
    static Value unit(int nfrac)
    {
        static const std::vector<Value> units = [] {
            std::vector<Value> v;
            for (int i = 0; i < 64; ++i)
                v.push_back(parsed(textOf(1, i).c_str()));
            return v;
        }();
        return units[std::size_t(nfrac)];
    }
    static void add(Value &r, const Value &a, const Value &b, const Task &task)
    {
        unsigned flags = 0;
        r = bid64_add(a, b, nearestAway, &flags);
        if (task.surplus(false) > 0)
            r = bid64_quantize(r, unit(task.r.nfrac), bidRounding(task), &flags);
    }
    static void sub(Value &r, const Value &a, const Value &b, const Task &)
    {
        unsigned flags = 0;
        r = bid64_sub(a, b, nearestAway, &flags);
    }
    static void mul(Value &r, const Value &a, const Value &b, const Task &task)
    {
        unsigned flags = 0;
        r = bid64_mul(a, b, bidRounding(task), &flags);
        if (task.surplus(true) > 0)
            r = bid64_quantize(r, unit(task.r.nfrac), bidRounding(task), &flags);
    }
    static int cmp(const Value &a, const Value &b, const Task &)
    {
        unsigned flags = 0;
        if (bid64_quiet_less(a, b, &flags) != 0)
            return -1;
        return bid64_quiet_greater(a, b, &flags);
    }
    static void rescale(Value &r, const Value &a, const Task &task)
    {
        unsigned flags = 0;
        r = bid64_quantize(a, unit(task.r.nfrac), bidRounding(task), &flags);
    }
    static void fromInt(Value &r, INT64 i, Type t)
    {
        unsigned flags = 0;
        r = bid64_scalbn(bid64_from_int64(i, nearestAway, &flags), -t.nfrac, nearestAway, &flags);
    }
    static INT64 toInt(const Value &a, Type)
    {
        unsigned flags = 0;
        return bid64_to_int64_rninta(a, &flags);
    }
    static void fromDouble(Value &r, double d, Type t)
    {
        unsigned flags = 0;
        r = bid64_quantize(binary64_to_bid64(d, nearestAway, &flags), unit(t.nfrac), nearestAway,
                           &flags);
    }
    static double toDouble(const Value &a, Type)
    {
        unsigned flags = 0;
        return bid64_to_binary64(a, nearestAway, &flags);
    }
    static void parse(Value &r, const char *text, Type) { r = parsed(text); }
    static std::size_t format(const Value &a, Type)
    {
        unsigned flags = 0;
        char text[64];
        bid64_to_string(text, a, &flags);
        benchmark::DoNotOptimize(text[0]);
        return 0;
    }
};

// The compiler's decimal floats; they have no operation that rounds to a scale.
template<int Digits> struct CompilerDecimal
{
    static constexpr const char *name = Digits == 16 ? "gcc_d64" : "gcc_d128";
    static constexpr int mostDigits = Digits;
    using Native = CompilerDecimalOperations<Digits>;
    using Value = CompilerDecimalValue<Digits>;
    static Value make(const Integer &units, int nfrac, Type)
    {
        Value v;
        Native::read(&v, Integer(abs(units)).str().c_str(), nfrac, units < 0);
        return v;
    }
    static void add(Value &r, const Value &a, const Value &b, const Task &)
    {
        Native::add(&r, &a, &b);
    }
    static void sub(Value &r, const Value &a, const Value &b, const Task &)
    {
        Native::sub(&r, &a, &b);
    }
    static void mul(Value &r, const Value &a, const Value &b, const Task &)
    {
        Native::mul(&r, &a, &b);
    }
    static int cmp(const Value &a, const Value &b, const Task &) { return Native::cmp(&a, &b); }
    static INT64 toInt(const Value &a, Type) { return Native::toInt(&a); }
    static double toDouble(const Value &a, Type) { return Native::toDouble(&a); }
};

template<unsigned Digits> struct DecFloat
{
    static constexpr const char *name = "cpp_dec_float";
    static constexpr int mostDigits = int(Digits);
    using Value = boost::multiprecision::number<boost::multiprecision::cpp_dec_float<Digits>,
                                                boost::multiprecision::et_off>;
    static Value make(const Integer &units, int nfrac, Type) { return Value(textOf(units, nfrac)); }
    static void add(Value &r, const Value &a, const Value &b, const Task &) { r = a + b; }
    static void sub(Value &r, const Value &a, const Value &b, const Task &) { r = a - b; }
    static void mul(Value &r, const Value &a, const Value &b, const Task &) { r = a * b; }
    static int cmp(const Value &a, const Value &b, const Task &) { return a.compare(b); }
    static INT64 toInt(const Value &a, Type) { return static_cast<INT64>(a); }
    static double toDouble(const Value &a, Type) { return static_cast<double>(a); }
    static void fromDouble(Value &r, double d, Type) { r = d; }
    static void parse(Value &r, const char *text, Type) { r.assign(text); }
    static std::size_t format(const Value &a, Type t)
    {
        return a.str(t.nfrac, std::ios_base::fixed).size();
    }
};

// Scaled integers: the caller keeps the scales and rounds by hand.
template<typename T> T divideAway(const T &value, const T &divisor, bool truncates)
{
    if (truncates)
        return value / divisor;
    return (value < 0 ? T(value - divisor / 2) : T(value + divisor / 2)) / divisor;
}

template<typename T> const T &scaleOf(int n)
{
    static const std::vector<T> powers = [] {
        std::vector<T> p {T(1)};
        while (p.size() < (std::is_same_v<T, Int128> ? 39U : 64U))
            p.push_back(p.back() * T(10));
        return p;
    }();
    return powers[std::size_t(n)];
}

template<typename T, int Digits> struct Scaled
{
    static constexpr const char *name = std::is_same_v<T, Int128> ? "int128" : "cpp_int";
    static constexpr int mostDigits = Digits;
    using Value = T;
    static Value make(const Integer &units, int, Type) { return static_cast<T>(units); }
    static T rounded(T exact, int surplus, const Task &task)
    {
        return surplus > 0 ? divideAway<T>(exact, scaleOf<T>(surplus), task.truncates) : exact;
    }
    static T lifted(const T &a, int digits) { return digits > 0 ? T(a * scaleOf<T>(digits)) : a; }
    static void add(Value &r, const Value &a, const Value &b, const Task &task)
    {
        const T sum =
            lifted(a, task.b.nfrac - task.a.nfrac) + lifted(b, task.a.nfrac - task.b.nfrac);
        r = rounded(sum, task.surplus(false), task);
    }
    static void sub(Value &r, const Value &a, const Value &b, const Task &) { r = a - b; }
    static void mul(Value &r, const Value &a, const Value &b, const Task &task)
    {
        r = rounded(T(a * b), task.surplus(true), task);
    }
    static int cmp(const Value &a, const Value &b, const Task &task)
    {
        const T x = lifted(a, task.b.nfrac - task.a.nfrac);
        const T y = lifted(b, task.a.nfrac - task.b.nfrac);
        return x < y ? -1 : x > y;
    }
    static void rescale(Value &r, const Value &a, const Task &task)
    {
        r = rounded(lifted(a, task.r.nfrac - task.a.nfrac), task.a.nfrac - task.r.nfrac, task);
    }
    static void fromInt(Value &r, INT64 i, Type) { r = i; }
    static INT64 toInt(const Value &a, Type t)
    {
        return static_cast<INT64>(divideAway<T>(a, scaleOf<T>(t.nfrac), false));
    }
    static double toDouble(const Value &a, Type t)
    {
        return static_cast<double>(a) / static_cast<double>(scaleOf<T>(t.nfrac));
    }
};

class BigInteger
{
public:
    BigInteger() { mpz_init(m_z); }
    BigInteger(const BigInteger &other) { mpz_init_set(m_z, other.m_z); }
    BigInteger &operator=(const BigInteger &other)
    {
        mpz_set(m_z, other.m_z);
        return *this;
    }
    ~BigInteger() { mpz_clear(m_z); }
    mpz_ptr z() { return m_z; }
    mpz_srcptr z() const { return m_z; }

private:
    mpz_t m_z;
};

struct Mpz
{
    static constexpr const char *name = "mpz";
    static constexpr int mostDigits = 63;
    using Value = BigInteger;
    static const Value &scale(int n)
    {
        static const std::vector<Value> powers = [] {
            std::vector<Value> v(80);
            for (unsigned i = 0; i < 80; ++i)
                mpz_ui_pow_ui(v[i].z(), 10, i);
            return v;
        }();
        return powers[std::size_t(n)];
    }
    static Value make(const Integer &units, int, Type)
    {
        Value v;
        mpz_set_str(v.z(), units.str().c_str(), 10);
        return v;
    }
    static void round(Value &r, int surplus, bool truncates)
    {
        if (surplus <= 0)
            return;
        if (!truncates) {
            static thread_local Value half;
            mpz_fdiv_q_2exp(half.z(), scale(surplus).z(), 1);
            if (mpz_sgn(r.z()) < 0)
                mpz_sub(r.z(), r.z(), half.z());
            else
                mpz_add(r.z(), r.z(), half.z());
        }
        mpz_tdiv_q(r.z(), r.z(), scale(surplus).z());
    }
    static void add(Value &r, const Value &a, const Value &b, const Task &task)
    {
        const int lift = task.a.nfrac - task.b.nfrac;
        if (lift == 0) {
            mpz_add(r.z(), a.z(), b.z());
        } else {
            mpz_mul(r.z(), b.z(), scale(lift).z());
            mpz_add(r.z(), r.z(), a.z());
        }
        round(r, task.surplus(false), task.truncates);
    }
    static void sub(Value &r, const Value &a, const Value &b, const Task &)
    {
        mpz_sub(r.z(), a.z(), b.z());
    }
    static void mul(Value &r, const Value &a, const Value &b, const Task &task)
    {
        mpz_mul(r.z(), a.z(), b.z());
        round(r, task.surplus(true), task.truncates);
    }
    static int cmp(const Value &a, const Value &b, const Task &task)
    {
        const int lift = task.a.nfrac - task.b.nfrac;
        if (lift == 0)
            return mpz_cmp(a.z(), b.z());
        static thread_local Value lifted;
        mpz_mul(lifted.z(), b.z(), scale(lift).z());
        return mpz_cmp(a.z(), lifted.z());
    }
    static void rescale(Value &r, const Value &a, const Task &task)
    {
        const int lift = task.r.nfrac - task.a.nfrac;
        if (lift > 0) {
            mpz_mul(r.z(), a.z(), scale(lift).z());
            return;
        }
        mpz_set(r.z(), a.z());
        round(r, -lift, task.truncates);
    }
    static void fromInt(Value &r, INT64 i, Type) { mpz_set_si(r.z(), i); }
    static double toDouble(const Value &a, Type t)
    {
        return mpz_get_d(a.z()) / mpz_get_d(scale(t.nfrac).z());
    }
    static std::size_t format(const Value &a, Type)
    {
        char text[80];
        mpz_get_str(text, 10, a.z());
        benchmark::DoNotOptimize(text[0]);
        return 0;
    }
};

#ifdef HAVE_LIBMPDEC

// A number with room for every result, so that no operation allocates.
class MpdNumber
{
public:
    MpdNumber()
        : m_number(mpd_new(context(false)))
    {
    }
    MpdNumber(const MpdNumber &other)
        : MpdNumber()
    {
        *this = other;
    }
    MpdNumber &operator=(const MpdNumber &other)
    {
        mpd_copy(m_number, other.m_number, context(false));
        return *this;
    }
    ~MpdNumber() { mpd_del(m_number); }

    // Nothing is rounded but what is asked to be.
    static mpd_context_t *context(bool truncates) { return &contexts[truncates ? 1 : 0]; }

    mpd_t *z() { return m_number; }
    const mpd_t *z() const { return m_number; }

private:
    static constexpr int mostWords = 8; // 152 digits
    static std::array<mpd_context_t, 2> contexts;

    static mpd_context_t made(int rounding)
    {
        mpd_context_t context;
        mpd_maxcontext(&context);
        context.prec = mostWords * MPD_RDIGITS;
        context.round = rounding;
        context.traps = 0;
        return context;
    }

    mpd_t *m_number;
};

std::array<mpd_context_t, 2> MpdNumber::contexts = [] {
    mpd_setminalloc(mostWords);
    return std::array {made(MPD_ROUND_HALF_UP), made(MPD_ROUND_DOWN)};
}();

struct Mpdec
{
    static constexpr const char *name = "libmpdec";
    static constexpr int mostDigits = 63;
    using Value = MpdNumber;
    struct Free
    {
        void operator()(char *text) const { mpd_free(text); }
    };
    static const mpd_context_t *context() { return MpdNumber::context(false); }
    static Value make(const Integer &units, int nfrac, Type t)
    {
        Value v;
        parse(v, textOf(units, nfrac).c_str(), t);
        return v;
    }
    static bool isEqual(const Value &a, const Ours::Value &ours, Type t)
    {
        Value v;
        parse(v, Ours::printed(ours, t).c_str(), t);
        return cmp(a, v, {}) == 0;
    }
    static void round(Value &r, const Value &a, const Task &task)
    {
        std::uint32_t status = 0;
        mpd_qrescale(r.z(), a.z(), -task.r.nfrac, MpdNumber::context(task.truncates), &status);
    }
    static void add(Value &r, const Value &a, const Value &b, const Task &task)
    {
        std::uint32_t status = 0;
        mpd_qadd(r.z(), a.z(), b.z(), context(), &status);
        if (task.surplus(false) > 0)
            round(r, r, task);
    }
    static void sub(Value &r, const Value &a, const Value &b, const Task &)
    {
        std::uint32_t status = 0;
        mpd_qsub(r.z(), a.z(), b.z(), context(), &status);
    }
    static void mul(Value &r, const Value &a, const Value &b, const Task &task)
    {
        std::uint32_t status = 0;
        mpd_qmul(r.z(), a.z(), b.z(), context(), &status);
        if (task.surplus(true) > 0)
            round(r, r, task);
    }
    static int cmp(const Value &a, const Value &b, const Task &)
    {
        std::uint32_t status = 0;
        return mpd_qcmp(a.z(), b.z(), &status);
    }
    static void rescale(Value &r, const Value &a, const Task &task) { round(r, a, task); }
    static void fromInt(Value &r, INT64 i, Type t)
    {
        std::uint32_t status = 0;
        mpd_qset_i64(r.z(), i, context(), &status);
        r.z()->exp = -t.nfrac;
    }
    static INT64 toInt(const Value &a, Type)
    {
        static thread_local Value whole;
        std::uint32_t status = 0;
        mpd_qround_to_int(whole.z(), a.z(), context(), &status);
        return mpd_qget_i64(whole.z(), &status);
    }
    static void parse(Value &r, const char *text, Type)
    {
        std::uint32_t status = 0;
        mpd_qset_string(r.z(), text, context(), &status);
    }
    static std::unique_ptr<char, Free> printed(const Value &a, Type)
    {
        return std::unique_ptr<char, Free>(mpd_to_sci(a.z(), 0));
    }
    static std::size_t format(const Value &a, Type t)
    {
        benchmark::DoNotOptimize(printed(a, t).get());
        return 0;
    }
};

#endif

// --------------------------------------------------------------------- operands

class Draw
{
public:
    Integer digits(int count)
    {
        std::string text;
        for (int i = 0; i < count; ++i)
            text += char('0' + (i == 0 ? 1 + m_engine() % 9 : m_engine() % 10));
        return count > 0 ? Integer(text) : Integer(0);
    }
    // Between half and all of a number of digits.
    int count(int most) { return most - int(m_engine() % (unsigned(most) / 2 + 1)); }
    Integer sign(const Integer &units) { return m_engine() % 2 != 0 ? Integer(-units) : units; }
    std::uint64_t bits() { return m_engine(); }

private:
    std::mt19937_64 m_engine {97};
};

// Pairs of units.
struct Pairs
{
    std::vector<Integer> a, b;
};

// For sums, so that no carry leaves the type.
Pairs addends(Type a, Type b, bool positive)
{
    Draw draw;
    Pairs pairs;
    for (int i = 0; i < operandCount; ++i) {
        const Integer x = draw.digits(draw.count(a.nall - 1));
        const Integer y = draw.digits(draw.count(b.nall - 1));
        pairs.a.push_back(positive ? x : draw.sign(x));
        pairs.b.push_back(positive ? y : draw.sign(y));
    }
    return pairs;
}

// Values of all the second type's digits, and others that only differ from them by a few
// units of the first.
Pairs neighbours(Type a, Type b)
{
    Draw draw;
    Pairs pairs;
    const Integer lift = powerOfTen(a.nfrac - b.nfrac);
    for (int i = 0; i < operandCount; ++i) {
        pairs.b.push_back(draw.sign(draw.digits(b.nall - 1)));
        pairs.a.push_back(pairs.b.back() * lift + draw.sign(draw.digits(1)));
    }
    return pairs;
}

// For products that fit a type.
Pairs factors(Type a, Type b, Type r)
{
    Draw draw;
    Pairs pairs;
    const int most = r.nall + a.nfrac + b.nfrac - r.nfrac; // digits of the exact product
    for (int i = 0; i < operandCount; ++i) {
        const int second = std::min(draw.count(b.nall), most - 1);
        const int first = std::min(draw.count(a.nall), most - second);
        pairs.a.push_back(draw.sign(draw.digits(first)));
        pairs.b.push_back(draw.sign(draw.digits(second)));
    }
    return pairs;
}

// ----------------------------------------------------------------- registration

template<typename F>
void measure(const std::string &name, F f, std::function<bool()> isRight = nullptr)
{
    auto isKnown = std::make_shared<bool>(!isRight);
    InstructionCount::registerBenchmark(name, [=](benchmark::State &state) {
        if (!*isKnown && !isRight()) {
            std::fprintf(stderr, "%s: a result is not ours\n", name.c_str());
            std::exit(1);
        }
        *isKnown = true;
        const auto takeTurn = [&f] {
            for (std::size_t i = 0; i < operandCount; ++i) {
                f(i);
                benchmark::ClobberMemory();
            }
        };
        {
            const InstructionCount count(state, operandCount, takeTurn);
            for (auto _ : state)
                takeTurn();
        }
        state.SetItemsProcessed(state.iterations() * operandCount);
    });
}

template<typename Peer> struct Operands
{
    std::vector<typename Peer::Value> a, b;
    std::vector<typename Peer::Value> r = std::vector<typename Peer::Value>(operandCount);
    Task task;

    Operands(const Pairs &pairs, const Task &t)
        : task(t)
    {
        for (std::size_t i = 0; i < pairs.a.size(); ++i) {
            a.push_back(Peer::make(pairs.a[i], task.a.nfrac, task.a));
            b.push_back(Peer::make(pairs.b[i], task.b.nfrac, task.b));
        }
    }
};

template<typename Peer> std::string title(const char *operation, const Row &row)
{
    return std::string(operation) + "/" + row.name + "/" + Peer::name;
}

// Whether a peer makes the same as we do of the same operands.
template<typename Peer, typename Work>
bool isSameWork(const Pairs &pairs, const Task &task, Work work)
{
    Operands<Peer> theirs(pairs, task);
    Operands<Ours> ours(pairs, task);
    for (std::size_t i = 0; i < operandCount; ++i) {
        if constexpr (std::is_void_v<decltype(work(Peer(), theirs, i))>) {
            work(Peer(), theirs, i);
            work(Ours(), ours, i);
            if (!Peer::isEqual(theirs.r[i], ours.r[i], task.r))
                return false;
        } else if (work(Peer(), theirs, i) != work(Ours(), ours, i)) {
            return false;
        }
    }
    return true;
}

// Registers work, which takes a peer, its operands and the number of a pair, and leaves
// its result in the operands or returns it. A peer that can compare with us has to agree.
template<typename Peer, typename Work>
void registerWork(const char *operation, const Row &row, const Pairs &pairs, const Task &task,
                  Work work)
{
    auto data = std::make_shared<Operands<Peer>>(pairs, task);
    std::function<bool()> isRight;
    if constexpr (requires { &Peer::isEqual; })
        isRight = [=] { return isSameWork<Peer>(pairs, task, work); };
    measure(
        title<Peer>(operation, row),
        [data, work](std::size_t i) {
            if constexpr (std::is_void_v<decltype(work(Peer(), *data, i))>)
                work(Peer(), *data, i);
            else
                benchmark::DoNotOptimize(work(Peer(), *data, i));
        },
        isRight);
}

template<typename Peer>
void registerSum(const char *operation, const Row &row, Type b, Type r, bool positive, bool chained)
{
    Pairs pairs = addends(row.t, b, positive);
    if (chained) { // every other addend takes the one before away again
        for (std::size_t i = 1; i < operandCount; i += 2)
            pairs.b[i] = -pairs.b[i - 1];
    }
    const Task task {row.t, b, r};
    if (chained) {
        auto data = std::make_shared<Operands<Peer>>(pairs, task);
        measure(title<Peer>(operation, row), [data](std::size_t i) {
            Peer::add(data->r[0], i == 0 ? data->a[0] : data->r[0], data->b[i], data->task);
        });
        return;
    }
    registerWork<Peer>(operation, row, pairs, task, [](auto peer, auto &o, std::size_t i) {
        peer.add(o.r[i], o.a[i], o.b[i], o.task);
    });
}

template<typename Peer>
void registerProduct(const char *operation, const Row &row, Type a, Type b, Type r, bool truncates)
{
    registerWork<Peer>(
        operation, row, factors(a, b, r), Task {a, b, r, truncates},
        [](auto peer, auto &o, std::size_t i) { peer.mul(o.r[i], o.a[i], o.b[i], o.task); });
}

// Each difference is the next one's operand; every other one takes the subtrahend before
// back.
template<typename Peer> void registerChainedDifference(const Row &row)
{
    Pairs pairs = addends(row.t, row.t, false);
    for (std::size_t i = 1; i < operandCount; i += 2)
        pairs.b[i] = -pairs.b[i - 1];
    auto data = std::make_shared<Operands<Peer>>(pairs, Task {row.t, row.t, row.t});
    measure(title<Peer>("sub_lat", row), [data](std::size_t i) {
        Peer::sub(data->r[0], i == 0 ? data->a[0] : data->r[0], data->b[i], data->task);
    });
}

// One value goes back and forth between two types.
template<typename Peer> void registerChainedRescale(const Row &row)
{
    auto data =
        std::make_shared<Operands<Peer>>(addends(row.r, row.r, false), Task {row.t, row.t, row.r});
    const Task back {row.r, row.r, row.t};
    const auto start = data->a[0];
    Peer::rescale(data->r[0], start, back);
    measure(title<Peer>("rescale_lat", row), [data, back](std::size_t i) {
        Peer::rescale(data->r[0], data->r[0], i % 2 == 0 ? data->task : back);
    });
}

// Each product is the next one's operand; the factors are near 1 to stay in range.
template<typename Peer> void registerChainedProduct(const Row &row)
{
    Pairs pairs;
    Draw draw;
    const Integer one = powerOfTen(row.t.nfrac);
    for (int i = 0; i < operandCount; ++i) {
        const Integer near = one + draw.sign(Integer(draw.bits()) % (one / 16));
        pairs.a.push_back(i == 0 ? draw.digits(row.t.nall - 3) : near);
        pairs.b.push_back(i % 2 == 0 ? near : Integer(one * one / pairs.b.back()));
    }
    auto data = std::make_shared<Operands<Peer>>(pairs, Task {row.t, row.t, row.t});
    measure(title<Peer>("mul_lat", row), [data](std::size_t i) {
        Peer::mul(data->r[0], i == 0 ? data->a[0] : data->r[0], data->b[i], data->task);
    });
}

template<typename Peer> void registerComparisons(const Row &row)
{
    const auto one = [&](const char *operation, Type b, const Pairs &pairs) {
        registerWork<Peer>(
            operation, row, pairs, Task {row.t, b, b},
            [](auto peer, auto &o, std::size_t i) { return peer.cmp(o.a[i], o.b[i], o.task); });
    };
    one("cmp", row.t, addends(row.t, row.t, false));
    one("cmp_late", row.t, neighbours(row.t, row.t));
    one("cmp_diff", row.u, addends(row.t, row.u, false));
    one("cmp_diff_late", row.u, neighbours(row.t, row.u));
}

template<typename Peer> void registerRescales(const Row &row)
{
    const auto one = [&](const char *operation, Type from, Type to, bool truncates) {
        registerWork<Peer>(
            operation, row, addends(from, from, false), Task {from, from, to, truncates},
            [](auto peer, auto &o, std::size_t i) { peer.rescale(o.r[i], o.a[i], o.task); });
    };
    one("round", row.t, row.r, false);
    one("trunc", row.t, row.r, true);
    one("widen", row.r, row.t, false);
    registerChainedRescale<Peer>(row);
}

template<typename Peer> void registerIntegers(const Row &row)
{
    const int most = std::min(row.t.nall, 18);
    Draw draw;
    auto integers = std::make_shared<std::vector<INT64>>();
    Pairs pairs;
    for (int i = 0; i < operandCount; ++i) {
        integers->push_back(static_cast<INT64>(draw.sign(draw.digits(draw.count(most)))));
        const int digits = draw.count(std::min(row.t.nall, 18 + row.t.nfrac));
        pairs.a.push_back(draw.sign(draw.digits(digits)));
        pairs.b.push_back(0);
    }
    const Task task {row.t, row.t, row.t};
    if constexpr (requires(typename Peer::Value r) { Peer::fromInt(r, 1, row.t); }) {
        registerWork<Peer>("from_i64", row, pairs, task,
                           [integers](auto peer, auto &o, std::size_t i) {
                               peer.fromInt(o.r[i], (*integers)[i], o.task.a);
                           });
    }
    if constexpr (requires(typename Peer::Value a) { Peer::toInt(a, row.t); }) {
        registerWork<Peer>("to_i64", row, pairs, task, [](auto peer, auto &o, std::size_t i) {
            return peer.toInt(o.a[i], o.task.a);
        });
    }
}

template<typename Peer> void registerDoubles(const Row &row)
{
    auto data =
        std::make_shared<Operands<Peer>>(addends(row.t, row.t, false), Task {row.t, row.t, row.t});
    if constexpr (requires { Peer::fromDouble(data->r[0], 1.0, row.t); }) {
        auto doubles = std::make_shared<std::vector<double>>();
        for (const Integer &units : addends(row.t, row.t, false).a)
            doubles->push_back(static_cast<double>(units) / std::pow(10.0, row.t.nfrac));
        measure(title<Peer>("from_double", row), [data, doubles](std::size_t i) {
            Peer::fromDouble(data->r[i], (*doubles)[i], data->task.a);
        });
    }
    if constexpr (requires { Peer::toDouble(data->a[0], row.t); }) {
        measure(title<Peer>("to_double", row), [data](std::size_t i) {
            benchmark::DoNotOptimize(Peer::toDouble(data->a[i], data->task.a));
        });
    }
}

template<typename Peer> bool isSameText(const Operands<Ours> &ours, const Operands<Peer> &theirs)
{
    for (std::size_t i = 0; i < operandCount; ++i) {
        const std::string text = Ours::printed(ours.a[i], ours.task.a);
        if (std::strcmp(text.c_str(), Peer::printed(theirs.a[i], theirs.task.a).get()) != 0)
            return false;
    }
    return true;
}

template<typename Peer> void registerTexts(const Row &row)
{
    const Pairs pairs = addends(row.t, row.t, false);
    const Task task {row.t, row.t, row.t};
    if constexpr (requires(typename Peer::Value r) { Peer::parse(r, "", row.t); }) {
        auto texts = std::make_shared<std::vector<std::string>>();
        for (const Integer &units : pairs.a)
            texts->push_back(plainText(units, row.t.nfrac));
        registerWork<Peer>("parse", row, pairs, task, [texts](auto peer, auto &o, std::size_t i) {
            peer.parse(o.r[i], (*texts)[i].c_str(), o.task.a);
        });
    }
    auto data = std::make_shared<Operands<Peer>>(pairs, task);
    std::function<bool()> isRight;
    if constexpr (requires { Peer::printed(data->a[0], row.t).get(); })
        isRight = [=] { return isSameText<Peer>(Operands<Ours>(pairs, task), *data); };
    if constexpr (requires { Peer::format(data->a[0], row.t); }) {
        measure(
            title<Peer>("format", row),
            [data](std::size_t i) {
                benchmark::DoNotOptimize(Peer::format(data->a[i], data->task.a));
            },
            isRight);
    }
}

template<typename Peer>
concept Rounds = requires(typename Peer::Value v, const Task &task)
{
    Peer::rescale(v, v, task);
};

template<typename Peer> void registerPeer(const Row &row)
{
    if (row.t.nall > Peer::mostDigits)
        return;
    registerSum<Peer>("add", row, row.t, row.t, false, false);
    registerSum<Peer>("add_pos", row, row.t, row.t, true, false);
    registerSum<Peer>("add_diff", row, row.u, row.t, false, false);
    registerSum<Peer>("add_lat", row, row.t, row.t, false, true);
    {
        registerWork<Peer>(
            "sub", row, addends(row.t, row.t, false), Task {row.t, row.t, row.t},
            [](auto peer, auto &o, std::size_t i) { peer.sub(o.r[i], o.a[i], o.b[i], o.task); });
        registerChainedDifference<Peer>(row);
    }
    // A scaled int128 has no room for products of more than 38 digits.
    if (!std::is_same_v<typename Peer::Value, Int128> || row.t.nall <= 18)
        registerProduct<Peer>("mul_exact", row, row.t, row.t, row.x, false);
    if constexpr (Rounds<Peer>) {
        registerSum<Peer>("add_round", row, row.u, row.r, false, false);
        registerRescales<Peer>(row);
        if (!std::is_same_v<typename Peer::Value, Int128> || row.t.nall <= 18) {
            registerProduct<Peer>("mul", row, row.t, row.t, row.t, false);
            registerProduct<Peer>("mul_trunc", row, row.t, row.t, row.t, true);
            registerProduct<Peer>("mul_small", row, row.t, row.m, row.t, false);
            registerChainedProduct<Peer>(row);
        }
    }
    registerComparisons<Peer>(row);
    registerIntegers<Peer>(row);
    registerDoubles<Peer>(row);
    registerTexts<Peer>(row);
}

// What the decimals are to reach. The scaled integers are a bound, not a goal: they keep
// neither a scale nor more than 38 digits.
const std::vector<RatioReporter::Goal> goals = {
    {"add/9", "bid64", 1.30},
    {"add/16", "bid64", 1.20},
    {"add/18", "bid128", 0.50},
    {"add/18odd", "bid128", 0.50},
    {"add/34", "bid128", 0.65},
    {"add/63", "mpz", 1.10},
    {"add_pos/16", "bid64", 1.00},
    {"add_pos/18", "bid128", 0.45},
    {"add_diff/16", "bid64", 1.90},
    {"add_diff/18", "bid128", 0.70},
    {"add_diff/34", "bid128", 1.00},
    {"add_round/9", "bid64", 1.20},
    {"add_round/18", "bid128", 0.50},
    {"add_round/18odd", "bid128", 0.50},
    {"add_round/34", "bid128", 0.70},
    {"sub/18", "bid128", 0.70},
    {"add_lat/16", "bid64", 1.20},
    {"add_lat/18", "bid128", 0.55},
    {"mul/9", "bid64", 1.50},
    {"mul/16", "bid64", 1.30},
    {"mul/18", "bid128", 0.40},
    {"mul/18odd", "bid128", 0.45},
    {"mul/34", "bid128", 0.60},
    {"mul/63", "mpz", 1.10},
    {"mul_trunc/18", "bid128", 0.40},
    {"mul_small/18", "bid128", 0.40},
    {"mul_small/18", "mpz", 0.85},
    {"mul_small/34", "bid128", 0.50},
    {"mul_lat/18", "bid128", 0.50},
    {"cmp/16", "bid64", 0.30},
    {"cmp/18", "bid128", 0.30},
    {"cmp_diff/18", "bid128", 0.35},
    {"cmp_diff/34", "bid128", 0.45},
    {"round/16", "bid64", 1.40},
    {"round/18", "bid128", 0.75},
    {"round/18odd", "bid128", 0.75},
    {"round/34", "bid128", 0.85},
    {"trunc/18", "bid128", 0.70},
    {"widen/18", "bid128", 1.10},
    {"widen/34", "bid128", 1.10},
    {"from_i64/18", "bid128", 1.20},
    {"to_i64/18", "bid128", 0.50},
    {"from_double/16", "bid64", 0.60},
    {"from_double/18", "bid128", 0.45},
    {"to_double/18", "bid128", 0.25},
    {"to_double/34", "bid128", 0.50},
    {"parse/9", "bid64", 0.65},
    {"parse/18", "bid128", 0.75},
    {"parse/34", "bid128", 0.65},
    {"format/16", "bid64", 1.40},
    {"format/18", "bid128", 1.30},
    {"add/18", "libmpdec", 0.45},
    {"add/34", "libmpdec", 0.50},
    {"add/63", "libmpdec", 0.50},
    {"add_pos/63", "libmpdec", 0.45},
    {"add_diff/63", "libmpdec", 0.60},
    {"add_round/63", "libmpdec", 0.45},
    {"sub/63", "libmpdec", 0.65},
    {"add_lat/63", "libmpdec", 0.60},
    {"mul/18", "libmpdec", 0.55},
    {"mul/34", "libmpdec", 0.75},
    {"mul/63", "libmpdec", 0.75},
    {"mul_trunc/63", "libmpdec", 0.75},
    {"mul_small/63", "libmpdec", 0.55},
    {"mul_exact/18", "libmpdec", 0.60},
    {"mul_exact/63", "libmpdec", 1.10},
    {"mul_lat/63", "libmpdec", 0.90},
    {"cmp/34", "libmpdec", 0.45},
    {"cmp/63", "libmpdec", 0.50},
    {"cmp_diff/63", "libmpdec", 0.80},
    {"cmp_diff_late/63", "libmpdec", 0.80},
    {"round/63", "libmpdec", 0.65},
    {"trunc/63", "libmpdec", 0.65},
    {"widen/63", "libmpdec", 0.60},
    {"from_i64/18", "libmpdec", 0.50},
    {"format/18", "libmpdec", 0.70},
    {"format/34", "libmpdec", 0.60},
    {"format/63", "libmpdec", 0.45},
};

// A first round of options, so that those on the command line win.
std::vector<char *> withDefaults(int argc, char **argv)
{
    static char interleaved[] = "--benchmark_enable_random_interleaving=true";
    static char turns[] = "--benchmark_repetitions=5";
    static char shortTurns[] = "--benchmark_min_time=0.02";
    std::vector<char *> arguments = {argv[0], interleaved, turns, shortTurns};
    arguments.insert(arguments.end(), argv + 1, argv + argc);
    return arguments;
}

} // namespace

int main(int argc, char **argv)
{
    using boost::multiprecision::int512_t;
    for (const Row &row : rows) {
        registerPeer<Ours>(row);
        registerPeer<Bid64>(row);
        registerPeer<Bid128>(row);
        registerPeer<CompilerDecimal<16>>(row);
        registerPeer<CompilerDecimal<34>>(row);
        registerPeer<DecFloat<63>>(row);
        registerPeer<Scaled<Int128, 34>>(row);
        registerPeer<Scaled<int512_t, 63>>(row);
        registerPeer<Mpz>(row);
#ifdef HAVE_LIBMPDEC
        registerPeer<Mpdec>(row);
#endif
    }
    std::vector<char *> arguments = withDefaults(argc, argv);
    int count = static_cast<int>(arguments.size());
    benchmark::Initialize(&count, arguments.data());
    if (benchmark::ReportUnrecognizedArguments(count, arguments.data()))
        return 1;
    RatioReporter reporter({Bid64::name, Bid128::name, CompilerDecimal<16>::name,
                            CompilerDecimal<34>::name, DecFloat<63>::name, Scaled<Int128, 34>::name,
                            Scaled<int512_t, 63>::name, Mpz::name, "libmpdec"});
    reporter.setPerItem();
    benchmark::RunSpecifiedBenchmarks(&reporter);
    reporter.printPeers(Ours::name);
    const int missed = reporter.printGoals(Ours::name, goals);
    std::printf("%d missed\n", missed);
    return 0;
}
