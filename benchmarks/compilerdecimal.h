// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef COMPILERDECIMAL_H
#define COMPILERDECIMAL_H

//! \file
//! The compiler's decimal floats behind plain calls, in a library of their own: the
//! compiler's helpers have the same names as another peer's functions, with other
//! arguments. A call costs about as much as one into libvantix.

template<int Digits> struct CompilerDecimalValue
{
    alignas(Digits == 16 ? 8 : 16) unsigned char bytes[Digits == 16 ? 8 : 16] = {};
};

//! Operations for 16 and 34 digits.
template<int Digits> struct CompilerDecimalOperations
{
    using Value = CompilerDecimalValue<Digits>;
    static void read(Value *r, const char *digits, int nfrac, bool negative);
    static void add(Value *r, const Value *a, const Value *b);
    static void sub(Value *r, const Value *a, const Value *b);
    static void mul(Value *r, const Value *a, const Value *b);
    static int cmp(const Value *a, const Value *b);
    static long long toInt(const Value *a);
    static double toDouble(const Value *a);
};

#endif // COMPILERDECIMAL_H
