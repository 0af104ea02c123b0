// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef DECIMALCASES_H
#define DECIMALCASES_H

#include "bcdii.h"
#include "bcdiioracle.h"

#include <QByteArray>

#include <cstring>
#include <random>
#include <string>
#include <vector>

//! \file
//! Values to try the decimal functions with, memory in which a byte too many shows, and
//! comparisons of results with those of the oracle.

namespace Cases {

using Oracle::Number;
using Oracle::Outcome;
using Oracle::Type;

constexpr BYTE guardByte = 0xC3;

//! How many random cases there are for each function: VANTIX_BCDII_CASES, or 200000.
int caseCount();
//! Writes that number and the seed to the log.
void announce();

//! Bytes that end, or begin, at a page that may not be touched. The bytes on the
//! free side are guards.
class Guarded
{
public:
    Guarded();
    ~Guarded();
    Guarded(const Guarded &) = delete;
    Guarded &operator=(const Guarded &) = delete;

    //! Takes size bytes at the end or the beginning, filled with guards.
    BYTE *take(int size, bool atEnd)
    {
        m_size = std::size_t(size);
        m_atEnd = atEnd;
        BYTE *const first = m_map + m_page;
        m_data = atEnd ? first + m_page - m_size : first;
        std::memset(atEnd ? m_data - guards : m_data, guardByte, m_size + guards);
        return m_data;
    }
    BYTE *take(const std::vector<BYTE> &bytes, bool atEnd)
    {
        std::copy(bytes.begin(), bytes.end(), take(int(bytes.size()), atEnd));
        return m_data;
    }
    BYTE *data() const { return m_data; }
    bool isIntact() const
    {
        const BYTE *const guard = m_atEnd ? m_data - guards : m_data + m_size;
        return std::all_of(guard, guard + guards, [](BYTE b) { return b == guardByte; });
    }
    bool holds(const std::vector<BYTE> &bytes) const
    {
        return isIntact() && std::equal(bytes.begin(), bytes.end(), m_data, m_data + m_size);
    }
    //! What an outcome leaves: all bytes, or byte 0 of a NaN and the others untouched.
    bool holds(const Outcome &expected, const std::vector<BYTE> &before) const
    {
        if (!expected.nan)
            return holds(expected.bytes);
        std::vector<BYTE> bytes = before;
        bytes[0] = 101;
        return holds(bytes);
    }

private:
    static constexpr std::size_t guards = 32;
    std::size_t m_page;
    BYTE *m_map;
    BYTE *m_data = nullptr;
    std::size_t m_size = 0;
    bool m_atEnd = false;
};

//! Types, values and numbers, many of them at the limits of something.
class Random
{
public:
    explicit Random(UINT64 stream);
    UINT64 bits() { return m_engine(); }
    int below(int n) { return int(m_engine() % UINT64(n)); }
    int between(int low, int high) { return low + below(high - low + 1); }
    bool oneIn(int n) { return below(n) == 0; }

    Type type();
    //! A type whose point lies near the one of another.
    Type typeNear(Type t);
    BCDIIType word(Type t) { return t.word() | (oneIn(4) ? BCDIIType(bits()) << 16 : 0); }
    std::vector<BYTE> value(Type t);
    BCDIIroundstyle roundStyle();
    INT64 integer();
    //! Counts of fraction digits for integers, few of them far away.
    int fractionDigits();

private:
    std::mt19937_64 m_engine;
};

std::string hex(const BYTE *bytes, int size);
std::string hex(const std::vector<BYTE> &bytes);
std::string name(Type t);

//! One operand in guarded memory.
struct Operand
{
    Type type;
    std::vector<BYTE> bytes;
    Guarded memory;

    void draw(Random &random, Type t)
    {
        type = t;
        bytes = random.value(t);
        memory.take(bytes, random.oneIn(2));
    }
    Number number() const { return Oracle::read(bytes.data(), type); }
    std::string text() const { return name(type) + " " + hex(bytes); }
};

//! A destination with room for a type, and what was in it before.
struct Destination
{
    Type type;
    std::vector<BYTE> before;
    Guarded memory;

    void draw(Random &random, Type t)
    {
        type = t;
        before.assign(std::size_t(t.size()), BYTE(random.bits()));
        memory.take(before, random.oneIn(2));
    }
    //! Complains and returns false when the result is not what was expected.
    bool check(const char *what, UINT32 status, const Outcome &expected, const std::string &from);
};

//! The type that a type word of 16 bits names.
Type typeOf(int word);

//! A value by its text, in exactly the given type.
std::vector<BYTE> valueOf(Type t, const char *text);

std::string textOf(const void *bytes, Type t);
//! The same, or "NaN".
std::string resultText(const void *bytes, Type t);

//! Whether a result is what was expected, but for bytes behind byte 0 of a NaN.
bool isSame(const BYTE *result, const Outcome &expected);
bool isSame(const BYTE *result, const BYTE *expected, Type t);

//! Calls f with every value of a type of few digits.
template<typename F> void everyValue(Type t, F f)
{
    const int count = int(static_cast<INT64>(Oracle::tenTo(t.nall)));
    for (int units = -count + 1; units < count; ++units)
        f(Oracle::write(std::abs(units), units < 0, t));
}

//! All types of up to \a digits digits, with \a lowest to \a highest of them behind the point.
std::vector<Type> shortTypes(int digits, int lowest, int highest);

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr int exhaustiveDigits = 2;
#else
constexpr int exhaustiveDigits = 3;
#endif

using Operation = UINT32 (*)(void *, BCDIIType, const void *, BCDIIType, const void *, BCDIIType,
                             BCDIIroundstyle);
using OracleOperation = Outcome (*)(const Number &, const Number &, Type, BCDIIroundstyle);

//! What an operation makes of two texts.
struct Result
{
    UINT32 status = 0;
    std::string text; //!< "NaN" when there is none, and "outside" when a guard was changed
};
Result operate(Operation operation, const QByteArray &a, Type at, const QByteArray &b, Type bt,
               Type t, BCDIIroundstyle rs = BCDII_ROUND_NEAREST);

//! The number of wrong results for all values of some short types.
int wrongShortResults(Operation operation, OracleOperation oracle);

//! The number of wrong results that lie over one operand, or over both.
int wrongResultsOverOperands(Operation operation);

} // namespace Cases

#endif // DECIMALCASES_H
