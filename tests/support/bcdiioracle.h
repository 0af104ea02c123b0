// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef BCDIIORACLE_H
#define BCDIIORACLE_H

#include "bcdii.h"

#include <boost/multiprecision/cpp_int.hpp>

#include <string>
#include <vector>

//! \file
//! What the decimal functions must give, worked out with big integers: a value is an
//! integer and a power of ten, and bytes only appear when it is read or written.

namespace Oracle {

//! Wide enough for 126 digits scaled by 10^186; never allocates.
using Integer = boost::multiprecision::number<boost::multiprecision::cpp_int_backend<
    1280, 1280, boost::multiprecision::signed_magnitude, boost::multiprecision::unchecked, void>>;

const Integer &tenTo(int n);

int digitCount(const Integer &x);

struct Type
{
    int nall = 0;
    int nfrac = 0;

    BCDIIType word() const { return BCDIIType((nall & 0xFF) << 8 | (nfrac & 0xFF)); }
    int nint() const { return nall - nfrac; }
    int size() const { return nall > 0 ? (nall + (nfrac & 1) + 1) / 2 : 0; }
};

//! (-1)^negative * digits * 10^exponent
struct Number
{
    bool negative = false;
    Integer digits = 0;
    int exponent = 0;
};

struct Outcome
{
    UINT32 status = 0;
    bool nan = false; //!< only byte 0 was written, as 101
    std::vector<BYTE> bytes;
};

bool isOdd(int n);

//! Reads a valid value.
Number read(const BYTE *bytes, Type t);

//! The bytes of units * 10^-nfrac.
std::vector<BYTE> write(Integer units, bool negative, Type t);

Outcome nan(UINT32 status);

bool goesAway(BCDIIroundstyle style, bool negative, int firstLostDigit);

//! The number rounded into a type: what every operation ends with.
Outcome store(const Number &v, Type t, BCDIIroundstyle style);

Integer aligned(const Number &v, int exponent);

Outcome add(const Number &a, const Number &b, Type t, BCDIIroundstyle style);

Outcome multiply(const Number &a, const Number &b, Type t, BCDIIroundstyle style);

int compare(const Number &a, const Number &b);

Outcome fromUInt64(UINT64 i, int fd, Type t);

Outcome fromInt64(INT64 i, int fd, Type t);

struct IntegerOutcome
{
    UINT32 status = 0;
    bool written = false;
    INT64 value = 0;
};

IntegerOutcome toInt64(const Number &v, int fd, BCDIIroundstyle style);

double stepwisePower(int n);

//! The stated chain of double operations.
double toDouble(const BYTE *bytes, Type t);

//! The stated chain for the other way; bytes hold what was written before an overflow.
Outcome fromDouble(double src, Type t);

struct ParseOutcome
{
    Outcome value;
    Type type;
};

//! Reads a text by its grammar: blanks, sign, digits, separator, digits.
ParseOutcome parse(const std::string &text, Type t);

//! The text of a valid value, without the NULs that follow it.
std::string format(const BYTE *bytes, Type t);

} // namespace Oracle

#endif // BCDIIORACLE_H
