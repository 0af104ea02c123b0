// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "plain_p.h"

#include "array_p.h"
#include "roundstyle_p.h"

#include <algorithm>
#include <utility>

namespace Decimal {

namespace {

constexpr int lowestPosition = -62; // of a digit; a value that begins lower is 0

bool isAllZero(const BYTE *first, const BYTE *last)
{
    return std::all_of(first, last, [](BYTE b) { return b == 0; });
}

// Room for the widest temporary: 160 pairs before the point (a 19-digit integer
// scaled by 10^300) and 128 after it (a product).
using Pairs = Array<BYTE, 320>;

// Digit of weight 10^n, 0 outside the value. n >> 1 is the pair counted from the
// point on both sides of it, and the odd n are the tens digits.
int digitAt(const BYTE *bcd, Layout t, int n)
{
    if (n < -t.nfrac || n >= t.nint)
        return 0;
    const int i = t.bint() - 1 - (n >> 1);
    const int pair = i == 0 ? bcd[i] & pairMask : bcd[i];
    return (n & 1) != 0 ? pair / 10 : pair % 10;
}

// The rounding unit is above every digit of the type: what would be rounded up
// does not fit. Deliberate: directed rounding reports 21, the others 17.
UINT32 roundAllAway(BYTE *bcd, Layout t, bool negative, int firstLost, BCDIIroundstyle rs)
{
    if (roundsUp(rs, negative, firstLost >= 5)) {
        const bool directed = rs == BCDII_ROUND_UP || rs == BCDII_ROUND_DOWN;
        return putNan(bcd, NoResult | Overflow | signStatus(directed));
    }
    putZero(bcd, t);
    return Rounded | IsZero;
}

// Adds a unit to the digit of weight 10^-fd.
UINT32 incrementPlain(BYTE *bcd, Layout t, int fd)
{
    const int q = t.nint + fd - 1 + (t.nint & 1); // digit in whole pairs
    int i = q >> 1;
    int carry = (q & 1) != 0 ? 1 : 10;
    for (; i > 0; --i) {
        const int pair = bcd[i] + carry;
        if (pair <= 99) {
            bcd[i] = static_cast<BYTE>(pair);
            return Rounded | signStatus(isNegative(bcd));
        }
        bcd[i] = static_cast<BYTE>(pair - 100);
        carry = 1;
    }
    const int top = (bcd[0] & pairMask) + carry;
    if (top > ((t.nint & 1) != 0 ? 9 : 99))
        return putNan(bcd, Rounded | NoResult | Overflow);
    bcd[0] = static_cast<BYTE>(top | (bcd[0] & signBit));
    return Rounded | signStatus(isNegative(bcd));
}

// Rounds a value of type t in place so that no digit stands behind the fd-th
// fraction digit.
UINT32 roundPlain(BYTE *bcd, Layout t, int fd, BCDIIroundstyle rs)
{
    const bool negative = isNegative(bcd);
    if (isAllZero(bcd, bcd + t.ball))
        return IsZero;
    if (t.nfrac <= fd)
        return signStatus(negative);
    const int firstLost = digitAt(bcd, t, -fd - 1);
    if (-fd >= t.nint)
        return roundAllAway(bcd, t, negative, firstLost, rs);
    BYTE *const cut = bcd + t.bint() + ((fd + 1) >> 1);
    BYTE *const end = bcd + t.ball;
    if (firstLost == 0 && isAllZero(cut, end))
        return signStatus(negative);

    std::fill(cut, end, BYTE {0});
    if ((fd & 1) != 0) { // the pair before the cut keeps its tens digit
        BYTE &last = bcd[t.bint() + ((fd - 1) >> 1)];
        last = static_cast<BYTE>((last & signBit) | ((last & pairMask) / 10 * 10));
    }
    if (roundsUp(rs, negative, firstLost >= 5))
        return incrementPlain(bcd, t, fd);
    if (firstPair(bcd, t.ball) < t.ball)
        return Rounded | signStatus(negative);
    bcd[0] = 0;
    return Rounded | IsZero;
}

int pairOrZero(const BYTE *bcd, Layout t, int i)
{
    return i >= 0 && i < t.ball ? bcd[i] & pairMask : 0;
}

// Where a value's pairs begin in an array whose point is at byte point.
void placePairs(Pairs &pairs, int point, const BYTE *bcd, Layout t)
{
    if (t.ball == 0)
        return;
    std::copy_n(bcd, t.ball, pairs.begin() + point - t.bint());
    pairs[point - t.bint()] &= pairMask;
}

void addPairs(Pairs &sum, const Pairs &b, int size)
{
    int carry = 0;
    for (int i = size - 1; i >= 0; --i) {
        const int pair = sum[i] + b[i] + carry;
        carry = pair > 99 ? 1 : 0;
        sum[i] = static_cast<BYTE>(pair - 100 * carry);
    }
}

// The first is not the smaller, so that no borrow is left at the end.
void subtractPairs(Pairs &difference, const Pairs &b, int size)
{
    int borrow = 0;
    for (int i = size - 1; i >= 0; --i) {
        const int pair = difference[i] - b[i] - borrow;
        borrow = pair < 0 ? 1 : 0;
        difference[i] = static_cast<BYTE>(pair + 100 * borrow);
    }
}

} // namespace

UINT32 copyPlain(BYTE *dst, Layout d, const BYTE *src, Layout s, BCDIIroundstyle rs)
{
    const int first = firstPair(src, s.ball);
    if (first >= s.ball)
        return putZero(dst, d);
    const int pairs = s.bint() - first; // from the first one to the point
    const int position = 2 * pairs - ((src[first] & pairMask) > 9 ? 1 : 2);
    if (position < lowestPosition)
        return putZero(dst, d);
    if (position >= d.nint)
        return putNan(dst, NoResult | Overflow);

    // position < nint: the first pair is not in front of the destination's first.
    Pairs temporary {};
    BYTE *const t = temporary.data();
    const bool negative = isNegative(src);
    std::copy_n(src + first, pairs + s.bfrac(), t + d.bint() - pairs);
    t[d.bint() - pairs] &= pairMask;
    t[0] = static_cast<BYTE>(t[0] | (negative ? signBit : 0));
    UINT32 status = signStatus(negative);
    if (d.nfrac < s.nfrac)
        status = roundPlain(t, Layout(d.nint + s.nfrac, s.nfrac), d.nfrac, rs);
    if ((status & NoResult) != 0)
        return putNan(dst, status);
    std::copy_n(t, d.ball, dst);
    return status;
}

UINT32 copyPlain(BYTE *dst, BCDIIType dstType, const BYTE *src, BCDIIType srcType,
                 BCDIIroundstyle rs)
{
    return copyPlain(dst, Layout(dstType), src, Layout(srcType), rs);
}

int compareMagnitudesPlain(const BYTE *a, Layout at, const BYTE *b, Layout bt)
{
    const int fraction = std::max(at.bfrac(), bt.bfrac());
    for (int place = std::max(at.bint(), bt.bint()); place > -fraction; --place) {
        const int x = pairOrZero(a, at, at.bint() - place);
        const int y = pairOrZero(b, bt, bt.bint() - place);
        if (x != y)
            return x < y ? -1 : 1;
    }
    return 0;
}

UINT32 addPlain(BYTE *ret, Layout d, const BYTE *a, Layout at, const BYTE *b, Layout bt,
                BCDIIroundstyle rs)
{
    const int point = std::max({at.bint(), bt.bint(), 0}) + 1; // a byte for the carry
    const int fraction = std::max({at.bfrac(), bt.bfrac(), 0});
    bool negative = isNegative(a);
    Pairs x {};
    Pairs y {};
    placePairs(x, point, a, at);
    placePairs(y, point, b, bt);
    if (negative == isNegative(b)) {
        addPairs(x, y, point + fraction);
    } else {
        if (x < y) {
            std::swap(x, y);
            negative = !negative;
        }
        subtractPairs(x, y, point + fraction);
    }
    x[0] = static_cast<BYTE>(x[0] | (negative ? signBit : 0));
    return copyPlain(ret, d, x.data(), Layout(2 * (point + fraction), 2 * fraction), rs);
}

UINT32 mulPlain(BYTE *ret, Layout d, const BYTE *a, Layout at, const BYTE *b, Layout bt,
                BCDIIroundstyle rs)
{
    const int size = at.ball + bt.ball; // at most 128
    Pairs product {};
    for (int i = at.ball - 1; i >= 0; --i) {
        const int factor = i == 0 ? a[i] & pairMask : a[i];
        int carry = 0;
        for (int j = bt.ball - 1; j >= 0; --j) {
            const int pair =
                (j == 0 ? b[j] & pairMask : b[j]) * factor + product[i + j + 1] + carry;
            product[i + j + 1] = static_cast<BYTE>(pair % 100);
            carry = pair / 100;
        }
        product[i] = static_cast<BYTE>(carry);
    }
    product[0] = static_cast<BYTE>(product[0] | ((a[0] ^ b[0]) & signBit));
    return copyPlain(ret, d, product.data(), Layout(2 * size, 2 * (at.bfrac() + bt.bfrac())), rs);
}

} // namespace Decimal
