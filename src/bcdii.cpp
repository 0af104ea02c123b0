// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "bcdii.h"

#include "decimal/compare_p.h"
#include "decimal/copy_p.h"
#include "decimal/doubles_p.h"
#include "decimal/integers_p.h"
#include "decimal/layout_p.h"
#include "decimal/parse_p.h"
#include "decimal/printing_p.h"
#include "decimal/products_p.h"
#include "decimal/reading_p.h"
#include "decimal/sums_p.h"
#include "decimal/words_p.h"

#include <algorithm>
#include <cstring>
#include <string_view>

// Two ways lead to every result of copying, adding and multiplying.
//
// The short way takes values that meet in a window of 32 bytes around the point,
// which is nearly all of them: up to four machine words, read so that the first
// pair is the most significant byte on every machine. Carries between pairs are
// made to be carries between bytes, and rounding is a shift by whole bytes.
//
// The plain way works pair by pair in arrays, follows the rules word for word and
// takes whatever is left: far-apart scales, and types that are not valid.
//
// Products and integers of up to 18 digits go a shorter way still, as 64-bit numbers, and
// sums within one type one that is made for its number of bytes. Texts are read and written
// eight digits at a time.
//
// What most calls do is inlined here; the rest is a call that takes the same arguments.

using namespace Decimal;

// ----------------------------------------------------------------- value format

void BCDIIInit(void *bcd_dst, BCDIIType type)
{
    storeHeader(bcd_dst, type);
    dataOf(bcd_dst)[0] = nanByte;
}

BCDIIType BCDIIGetType(const void *bcd_)
{
    BCDIIStoreType word;
    std::memcpy(&word, bcd_, sizeof word);
    return word;
}

BOOL BCDIICheckType(BCDIIType type)
{
    const Layout t(type);
    const int nall = t.nint + t.nfrac;
    return nall >= 1 && nall <= 63 && t.nfrac >= -62 && t.nfrac <= 62 ? 1 : 0;
}

UINT32 BCDIICheck(const void *bcd_, BCDIIType type)
{
    if (BCDIICheckType(type) == 0)
        return Invalid;
    const BYTE *const bcd = bytes(bcd_);
    const Layout t(type);
    if (bcd[0] == nanByte)
        return NanOperand | Invalid;
    const int last = bcd[t.ball - 1] & pairMask;
    if ((t.nfrac & 1) != 0 && (last > 90 || last % 10 != 0))
        return Invalid;
    if ((bcd[0] & pairMask) > ((t.nint & 1) != 0 ? 9 : 99))
        return Invalid;
    if (std::any_of(bcd + 1, bcd + t.ball, [](BYTE b) { return b > 99; }))
        return Invalid;
    if (firstPair(bcd, t.ball) < t.ball)
        return signStatus(isNegative(bcd));
    return isNegative(bcd) ? Invalid : IsZero;
}

UINT32 BCDIICheck(const void *bcd_)
{
    return BCDIICheck(dataOf(bcd_), BCDIIGetType(bcd_));
}

void BCDIISetZero(void *bcd_dst)
{
    putZero(dataOf(bcd_dst), Layout(BCDIIGetType(bcd_dst)));
}

void BCDIISetMax(void *bcd_, BCDIIType type)
{
    const Layout t(type);
    if (t.ball <= 0)
        return;
    BYTE *const bcd = bytes(bcd_);
    std::fill_n(bcd, t.ball, BYTE {99});
    if ((t.nfrac & 1) != 0)
        bcd[t.ball - 1] = 90;
    if ((t.nint & 1) != 0)
        bcd[0] = 9;
}

void BCDIISetMax(void *bcd_)
{
    BCDIISetMax(dataOf(bcd_), BCDIIGetType(bcd_));
}

void BCDIISetMin(void *bcd, BCDIIType type)
{
    BCDIISetMax(bcd, type);
    if (Layout(type).ball > 0)
        bytes(bcd)[0] |= signBit;
}

void BCDIISetMin(void *bcd_)
{
    BCDIISetMin(dataOf(bcd_), BCDIIGetType(bcd_));
}

UINT32 BCDIINeg(void *bcd, BCDIIType type)
{
    BYTE *const b = bytes(bcd);
    if (isNan(b))
        return NanOperand | Invalid | NoResult;
    const Layout t(type);
    if (isZero(b, t.ball))
        return IsZero;
    b[0] ^= signBit;
    return signStatus(isNegative(b));
}

UINT32 BCDIINeg(void *bcd_)
{
    return BCDIINeg(dataOf(bcd_), BCDIIGetType(bcd_));
}

UINT32 BCDIICopy(void *dst_, BCDIIType dstType, const void *src_, BCDIIType srcType,
                 BCDIIroundstyle rs)
{
    if (isNan(bytes(src_)))
        return putNan(bytes(dst_), NanOperand | Invalid | NoResult);
    return copyInternal(bytes(dst_), dstType, bytes(src_), srcType, rs);
}

UINT32 BCDIICopy(void *dst_, const void *src_)
{
    return BCDIICopy(dataOf(dst_), BCDIIGetType(dst_), dataOf(src_), BCDIIGetType(src_),
                     BCDII_ROUND_NEAREST);
}

int BCDIICmp(const void *a, BCDIIType aType, const void *b, BCDIIType bType)
{
    if (isSameType(aType, bType))
        return compareSame(bytes(a), bytes(b), aType);
    return compareTypes(bytes(a), aType, bytes(b), bType);
}

int BCDIICmp(const void *a_, const void *b_)
{
    return BCDIICmp(dataOf(a_), BCDIIGetType(a_), dataOf(b_), BCDIIGetType(b_));
}

// ------------------------------------------------------------------- arithmetic

UINT32 BCDIIAdd(void *ret, BCDIIType retType, const void *a_, BCDIIType aType, const void *b_,
                BCDIIType bType, BCDIIroundstyle rs)
{
    if (isSameType(aType, bType) && isSameType(aType, retType)) {
        const auto index = static_cast<unsigned>(Layout(retType).ball - 1);
        if (index < unsigned {sameAdders.size()})
            return sameAdders[index](bytes(ret), retType, bytes(a_), aType, bytes(b_), bType, rs);
    }
    if (isAnyNan(bytes(a_), bytes(b_)))
        return putNan(bytes(ret), NanOperand | Invalid | NoResult);
    if (isSameType(aType, retType))
        return addInto(bytes(ret), retType, bytes(a_), aType, bytes(b_), bType, rs);
    return addTypes(bytes(ret), retType, bytes(a_), aType, bytes(b_), bType, rs);
}

UINT32 BCDIIAdd(void *ret_, const void *a_, const void *b_)
{
    return BCDIIAdd(dataOf(ret_), BCDIIGetType(ret_), dataOf(a_), BCDIIGetType(a_), dataOf(b_),
                    BCDIIGetType(b_), BCDII_ROUND_NEAREST);
}

UINT32 BCDIIMul(void *ret, BCDIIType retType, const void *a_, BCDIIType aType, const void *b_,
                BCDIIType bType, BCDIIroundstyle rs)
{
    if (isAnyNan(bytes(a_), bytes(b_)))
        return putNan(bytes(ret), NanOperand | Invalid | NoResult);
    return mulInternal(bytes(ret), retType, bytes(a_), aType, bytes(b_), bType, rs);
}

UINT32 BCDIIMul(void *ret_, const void *a_, const void *b_)
{
    return BCDIIMul(dataOf(ret_), BCDIIGetType(ret_), dataOf(a_), BCDIIGetType(a_), dataOf(b_),
                    BCDIIGetType(b_), BCDII_ROUND_NEAREST);
}

// ------------------------------------------------------------------- conversion

UINT32 BCDIIGetFromUInt64(void *bcd, BCDIIType type, UINT64 i64, int fd)
{
    return putInteger(bytes(bcd), type, i64, fd, false);
}

UINT32 BCDIIGetFromUInt64(void *bcd_dst, UINT64 i64, int fd)
{
    return BCDIIGetFromUInt64(dataOf(bcd_dst), BCDIIGetType(bcd_dst), i64, fd);
}

UINT32 BCDIIGetFromInt64(void *bcd_dst, BCDIIType type, INT64 i64, int fd)
{
    // No branch: the signs of numbers are as good as random.
    const Word negative = i64 < 0 ? 1 : 0;
    const UINT64 magnitude = (static_cast<UINT64>(i64) ^ (Word {0} - negative)) + negative;
    return putInteger(bytes(bcd_dst), type, magnitude, fd, negative != 0);
}

UINT32 BCDIIGetFromInt64(void *bcd_dst, INT64 i64, int fd)
{
    return BCDIIGetFromInt64(dataOf(bcd_dst), BCDIIGetType(bcd_dst), i64, fd);
}

UINT32 BCDII2Int64(INT64 *pi64, const void *bcd, BCDIIType type, int fd, BCDIIroundstyle rs)
{
    if (isNan(bytes(bcd)))
        return NanOperand | Invalid | NoResult;
    return toInteger(pi64, bytes(bcd), type, fd, rs);
}

UINT32 BCDII2Int64(INT64 *pi64, const void *bcd_, int fd)
{
    return BCDII2Int64(pi64, dataOf(bcd_), BCDIIGetType(bcd_), fd, BCDII_ROUND_NEAREST);
}

UINT32 BCDII2Double(double *dbl, const void *bcd, BCDIIType type)
{
    const BYTE *const b = bytes(bcd);
    if (isNan(b))
        return NanOperand | Invalid | NoResult;
    return toDouble(dbl, b, type);
}

UINT32 BCDII2Double(double *dbl, const void *bcd_)
{
    return BCDII2Double(dbl, dataOf(bcd_), BCDIIGetType(bcd_));
}

UINT32 BCDIIGetFromDouble(void *bcd_, double src, BCDIIType type)
{
    return putReal(bytes(bcd_), src, type);
}

UINT32 BCDIIGetFromDouble(void *bcd_, double dbl)
{
    return BCDIIGetFromDouble(dataOf(bcd_), dbl, BCDIIGetType(bcd_));
}

// ------------------------------------------------------------------------- text

UINT32 BCDIIFromString(void *bcd, BCDIIType &type, const char *str)
{
    return readText(bytes(bcd), type, str);
}

UINT32 BCDIIFromString(void *bcd_, const char *str, bool *ok)
{
    BCDIIType type = BCDIIGetType(bcd_);
    BCDIIFromString(dataOf(bcd_), type, str);
    storeHeader(bcd_, type);
    const UINT32 status = BCDIICheck(bcd_);
    if (ok != nullptr)
        *ok = (status & ~UINT32 {IsZero | IsNegative}) == 0;
    return status;
}

UINT32 BCDIIParse(void *bcd, BCDIIType type, const char *text, std::size_t size,
                  std::size_t *position, const char *points)
{
    std::size_t end = 0;
    const UINT32 status = parse(bytes(bcd), type, std::string_view(text, size), points, &end);
    if ((status & (NoResult | Invalid)) != 0)
        putNan(bytes(bcd), status);
    if (position != nullptr)
        *position = end;
    return status;
}

UINT32 BCDIIParse(void *bcd_, const char *text, std::size_t size, std::size_t *position,
                  const char *points)
{
    return BCDIIParse(dataOf(bcd_), BCDIIGetType(bcd_), text, size, position, points);
}

std::string BCDII2StringSequence(const void *bcd, BCDIIType type)
{
    return printed(bytes(bcd), type);
}

std::string BCDII2StringSequence(const void *bcd_)
{
    return BCDII2StringSequence(dataOf(bcd_), BCDIIGetType(bcd_));
}
