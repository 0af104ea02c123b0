// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef BCDII_H
#define BCDII_H

#include "vantixglobal.h"

#include <cstddef>
#include <cstdint>
#include <string>

//! \file
//! \since 0.2
//!
//! Packed decimal numbers: exact fixed-point values of 1 to 63 digits in bytes
//! that the caller owns. No function allocates but BCDII2StringSequence(),
//! none throws (that one may run out of memory), and each touches nothing but
//! its arguments.
//!
//! **Types.** Bits 0-7 of a type word are `nfrac`, bits 8-15 `nall`, both signed:
//! digits after the point, and digits in all. Bits 16-31 are ignored. A type is
//! valid when 1 <= nall <= 63 and -62 <= nfrac <= 62. A negative nfrac leaves the
//! lowest integer digits out; an nfrac above nall leaves leading fraction digits out.
//!
//! **Bytes.** With nint = nall - nfrac, a value has bint = floor((nint + 1) / 2)
//! bytes before the point and bfrac = floor((nfrac + 1) / 2) after it; ball is
//! their sum. Byte i is a pair of digits, 0 to 99, of weight 100^(bint - 1 - i).
//! Bit 7 of byte 0 is the sign. With an odd nint the tens digit of byte 0 is 0,
//! with an odd nfrac the units digit of the last byte. Zero has no sign. A first
//! byte of 101 makes the value NaN; the bytes behind it then mean nothing and
//! are not written. Example: -123.45 of type (5, 2) is 81 17 2D.
//!
//! **Headers.** The overloads with one pointer per operand take the address of a
//! type word in the machine's byte order, followed by the data bytes without
//! padding (InternalBCDType). On a little-endian machine a stored value is
//! therefore little-endian in its type word: first nfrac, then nall. Such
//! pointers need no alignment.
//!
//! **Status.** A set of bits: 0x01 overflow, 0x02 zero, 0x04 negative, 0x10 no
//! numeric result (a value became NaN; an integer or double was not written),
//! 0x20 invalid value or type, 0x40 digits were rounded away, 0x80 an operand
//! was NaN. So 0 and 4 are exact results, 2 is zero, 64 and 68 are rounded, 66 is
//! rounded to zero, 17 is an overflow, 81 an overflow by rounding, 176 a NaN operand.
//!
//! **What is not checked.** Operands are taken as they are: types are not checked
//! unless a function says so, and pairs above 99 behind the first byte give
//! unspecified digits. Byte 0 of an operand is always read, and every destination
//! has room for one byte at least: that of a type without digits (nall <= 0) becomes
//! 101 when the result is NaN. Beyond that nothing is ever written outside the bytes
//! that a type implies.

#if !defined(VANTIX_NO_TYPE_NAMES)
//! Short names for the integers of these functions, seen in the global namespace.
//!
//! Other libraries give some of these names to types of their own. If their headers come
//! first, a name that is a macro is left to it, BOOL to X11/Xmd.h, and the names of 64 bits
//! to a basetsd.h; BOOL is always left to Objective-C. If they come later, they compile all
//! the same, but a name that then means two types needs `::` before it, for theirs.
//!
//! X11/Xproto.h uses BOOL without: include it first, or define VANTIX_NO_TYPE_NAMES. Then
//! none of the names is declared, and other headers may stand anywhere. The functions
//! are the same with and without.
namespace BCDIITypeNames {
#if !defined(BYTE)
using BYTE = std::uint8_t; //!< 8 bits
#endif
#if !defined(UINT16)
using UINT16 = std::uint16_t; //!< 16 bits
#endif
#if !defined(UINT32)
using UINT32 = std::uint32_t; //!< 32 bits
#endif
#if !defined(UINT64) && !defined(_BASETSD_H_)
using UINT64 = std::uint64_t; //!< 64 bits
#endif
#if !defined(INT64) && !defined(_BASETSD_H_) && !(defined(XMD_H) && defined(LONG64))
using INT64 = std::int64_t; //!< 64 bits, signed
#endif
#if !defined(BOOL) && !defined(XMD_H) && !defined(__OBJC__)
using BOOL = int; //!< 0 for no, anything else for yes
#endif
} // namespace BCDIITypeNames

// Unlike declarations, these names bear others beside them.
using namespace BCDIITypeNames;
#endif

//! A type word: nfrac in bits 0-7, nall in bits 8-15, the rest ignored.
using BCDIIType = std::uint32_t;
//! A type word as it stands before the data of a self-describing value.
using BCDIIStoreType = std::uint16_t;

//! A self-describing value with room for every valid type. Functions need only
//! the header and the ball bytes behind it, so a shorter buffer will do as well.
struct InternalBCDType
{
    BCDIIStoreType type;   //!< native byte order
    std::uint8_t data[32]; //!< ball bytes are in use
};

//! What happens to the last kept digit when digits are lost. Any other value
//! acts as BCDII_ROUND_NEAREST.
enum BCDIIroundstyle {
    BCDII_ROUND_NEAREST = 0,  //!< up in magnitude when the first lost digit is 5 or more
    BCDII_ROUND_UP = 1,       //!< toward plus infinity
    BCDII_ROUND_DOWN = 2,     //!< toward minus infinity
    BCDII_ROUND_FROMZERO = 3, //!< away from zero
    BCDII_ROUND_TRUNC = 4     //!< toward zero
};

//! Stores \a type in the header at \a bcd_dst and makes the value NaN: writes the
//! header and data byte 0, whatever the type.
VANTIX_EXPORT void BCDIIInit(void *bcd_dst, BCDIIType type);

//! The type word in the header at \a bcd_, its high 16 bits 0.
VANTIX_EXPORT BCDIIType BCDIIGetType(const void *bcd_);

//! 1 when 1 <= nall <= 63 and -62 <= nfrac <= 62, else 0.
VANTIX_EXPORT int BCDIICheckType(BCDIIType type);

//! Tells whether \a bcd_ is a value of \a type: 0 positive, 4 negative, 2 zero,
//! 160 NaN, 32 when the type or a byte is invalid (a pair above 99, a digit in
//! the padding, a negative zero). Data are read only when the type is valid.
//! @{
VANTIX_EXPORT std::uint32_t BCDIICheck(const void *bcd_, BCDIIType type);
VANTIX_EXPORT std::uint32_t BCDIICheck(const void *bcd_);
//! @}

//! Makes the value behind the header at \a bcd_dst zero.
VANTIX_EXPORT void BCDIISetZero(void *bcd_dst);

//! Writes the largest value of the type: nall nines.
//! @{
VANTIX_EXPORT void BCDIISetMax(void *bcd_, BCDIIType type);
VANTIX_EXPORT void BCDIISetMax(void *bcd_);
//! @}

//! Writes the most negative value of the type: minus nall nines.
//! @{
VANTIX_EXPORT void BCDIISetMin(void *bcd, BCDIIType type);
VANTIX_EXPORT void BCDIISetMin(void *bcd_);
//! @}

//! Negates in place. Returns 4 or 0 for a negative or positive result, 2 for zero,
//! which is left alone, 176 for NaN, also left alone. A negative zero becomes
//! zero and returns 0.
//! @{
VANTIX_EXPORT std::uint32_t BCDIINeg(void *bcd, BCDIIType type);
VANTIX_EXPORT std::uint32_t BCDIINeg(void *bcd_);
//! @}

//! Converts the value at \a src_ to \a dstType, rounding by \a rs (the header form
//! to nearest) at its last fraction digit. Returns 0 or 4 when exact, 2 for zero,
//! 64, 68 or 66 when rounded; 17 when the integer digits do not fit and 81 when
//! rounding carries past them (NaN is written), 176 for a NaN (NaN is written).
//! A first digit below the 62nd after the point makes zero, 2. Source and
//! destination may be the same address, but may not overlap otherwise.
//! @{
VANTIX_EXPORT std::uint32_t BCDIICopy(void *dst_, BCDIIType dstType, const void *src_,
                                      BCDIIType srcType, BCDIIroundstyle rs);
VANTIX_EXPORT std::uint32_t BCDIICopy(void *dst_, const void *src_);
//! @}

//! The sign of a - b: -1, 0 or 1. Equal values of different types are equal. Tests
//! nothing: NaN counts as a first pair of 101, and a sign bit always as less.
//! @{
VANTIX_EXPORT int BCDIICmp(const void *a, BCDIIType aType, const void *b, BCDIIType bType);
VANTIX_EXPORT int BCDIICmp(const void *a_, const void *b_);
//! @}

//! a + b, exact and then rounded by \a rs (the header form to nearest) to \a retType,
//! with the status of BCDIICopy(). The result may lie over an operand. To
//! subtract, negate one operand before.
//! @{
VANTIX_EXPORT std::uint32_t BCDIIAdd(void *ret, BCDIIType retType, const void *a_, BCDIIType aType,
                                     const void *b_, BCDIIType bType, BCDIIroundstyle rs);
VANTIX_EXPORT std::uint32_t BCDIIAdd(void *ret_, const void *a_, const void *b_);
//! @}

//! a * b, exact and then rounded by \a rs (the header form to nearest) to \a retType,
//! with the status of BCDIICopy(). The result may lie over an operand.
//! @{
VANTIX_EXPORT std::uint32_t BCDIIMul(void *ret, BCDIIType retType, const void *a_, BCDIIType aType,
                                     const void *b_, BCDIIType bType, BCDIIroundstyle rs);
VANTIX_EXPORT std::uint32_t BCDIIMul(void *ret_, const void *a_, const void *b_);
//! @}

//! Writes i64 / 10^fd, surplus fraction digits cut off. \a fd may be any number,
//! also negative: 12345 with fd 2 is 123.45, with fd -1 it is 123450. Returns
//! 0 or 64, 2 or 66 for zero, 17 (NaN is written) when it does not fit.
//! @{
VANTIX_EXPORT std::uint32_t BCDIIGetFromUInt64(void *bcd, BCDIIType type, std::uint64_t i64,
                                               int fd);
VANTIX_EXPORT std::uint32_t BCDIIGetFromUInt64(void *bcd_dst, std::uint64_t i64, int fd);
//! @}

//! The same for signed integers. A negative one always sets the sign bit and adds
//! 4 to the status: cut to zero it is a negative zero with status 70, and an
//! overflow leaves a first byte of 0xE5 (NaN as well) with status 21.
//! @{
VANTIX_EXPORT std::uint32_t BCDIIGetFromInt64(void *bcd_dst, BCDIIType type, std::int64_t i64,
                                              int fd);
VANTIX_EXPORT std::uint32_t BCDIIGetFromInt64(void *bcd_dst, std::int64_t i64, int fd);
//! @}

//! *\a pi64 = value * 10^fd, rounded by \a rs (the header form to nearest); \a fd may
//! be any number. Returns 0, 4, 64 or 68, 2 or 66 for zero; 17 out of the range
//! of std::int64_t and 176 for NaN, and then writes nothing.
//! @{
VANTIX_EXPORT std::uint32_t BCDII2Int64(std::int64_t *pi64, const void *bcd, BCDIIType type, int fd,
                                        BCDIIroundstyle rs);
VANTIX_EXPORT std::uint32_t BCDII2Int64(std::int64_t *pi64, const void *bcd_, int fd);
//! @}

//! Converts to double: the pairs as one integer in double arithmetic, divided by
//! the power of ten. Returns 0, 4 or 2 (zero), or 176 for NaN and then writes
//! nothing. Up to 15 digits the result is the nearest double.
//! @{
VANTIX_EXPORT std::uint32_t BCDII2Double(double *dbl, const void *bcd, BCDIIType type);
VANTIX_EXPORT std::uint32_t BCDII2Double(double *dbl, const void *bcd_);
//! @}

//! Writes floor(|src| * 10^nfrac + 0.5) units of the last fraction digit, with the
//! sign of \a src: half away from zero, the product taken in double. Returns 0
//! or 4, 2 for zero; 17 (NaN is written) when it does not fit or is infinite. Lost
//! digits are not reported. A NaN writes zero bytes and returns 0.
//! @{
VANTIX_EXPORT std::uint32_t BCDIIGetFromDouble(void *bcd_, double src, BCDIIType type);
VANTIX_EXPORT std::uint32_t BCDIIGetFromDouble(void *bcd_, double dbl);
//! @}

//! Reads a decimal number: white space (tab, line feed, carriage return, space), a
//! sign, digits, and '.' or ',' with more digits. Whatever follows is ignored.
//! The text decides how many fraction digits the value has: \a type keeps its
//! nall and gets the text's count as nfrac. The new type may need one byte more
//! than the old one, so the buffer must have (nall >> 1) + 1 bytes; nall = 63
//! never needs more than its 32.
//!
//! Returns 0 or 4; 2 for zero (\a type unchanged); 17 (NaN is written) when the integer
//! digits do not fit the old type (\a type unchanged) or the new one; 48 (NaN is
//! written, \a type unchanged) for a text without digits, with more than 127
//! fraction digits, or with more significant digits than 63 pairs hold.
VANTIX_EXPORT std::uint32_t BCDIIFromString(void *bcd, BCDIIType &type, const char *str);

//! The same for a self-describing value, whose header gets the new type. Returns
//! BCDIICheck() of what was stored; *\a ok, if given, becomes true when that is a
//! valid number.
VANTIX_EXPORT std::uint32_t BCDIIFromString(void *bcd_, const char *str, bool *ok);

//! Reads the \a size bytes at \a text strictly: nothing but an optional sign, digits, and
//! one character of \a points with more digits behind it. At least one digit, no white
//! space, no grouping, no exponent. The value is exact or there is none.
//!
//! Returns 0, 4, or 2 for zero. Otherwise NaN is written: 48 when the text is no number,
//! 17 when it has more integer digits than \a type, and 80 when a digit other than 0
//! stands behind the last place of \a type; 32 when the type is invalid.
//! *\a position, if given, becomes \a size, or the index of the first byte that does not
//! belong to a number (\a size when the text ends too early) or, in a number, of the
//! first digit that the type has no place for: 5 in "12.50 EUR", 2 in "12.", 3 in
//! "1234" for (5, 2), 4 in "1.239". The text may hold any bytes and need not end with NUL.
//! @{
VANTIX_EXPORT std::uint32_t BCDIIParse(void *bcd, BCDIIType type, const char *text,
                                       std::size_t size, std::size_t *position = nullptr,
                                       const char *points = ".,");
VANTIX_EXPORT std::uint32_t BCDIIParse(void *bcd_, const char *text, std::size_t size,
                                       std::size_t *position = nullptr, const char *points = ".,");
//! @}

//! The value as text: "-" when negative, the integer digits without leading zeros
//! (none for 0), and with nfrac > 0 a "." and nfrac digits: 12.50, .5, -7. Zero of a
//! type without fraction is an empty text.
//!
//! Deliberate: the string is as long as the widest text of the type plus 2, the
//! rest filled with NULs; use c_str(). NaN gives some digits.
//! @{
VANTIX_EXPORT std::string BCDII2StringSequence(const void *bcd, BCDIIType type);
VANTIX_EXPORT std::string BCDII2StringSequence(const void *bcd_);
//! @}

#endif // BCDII_H
