// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "compare_p.h"

#include "plain_p.h"

#include <cstdlib>

namespace Decimal {

namespace {

template<int N>
DECIMAL_INLINE int compareShort(const BYTE *a, Layout at, const BYTE *b, Layout bt, int fraction)
{
    const Words<N> x = loadAligned<N>(a, at, fraction);
    const Words<N> y = loadAligned<N>(b, bt, fraction);
    return int {isLess<N>(y, x)} - int {isLess<N>(x, y)};
}

DECIMAL_NOINLINE int compareMagnitudes(const BYTE *a, BCDIIType aType, const BYTE *b,
                                       BCDIIType bType)
{
    const Layout at(aType);
    const Layout bt(bType);
    const int fraction = std::max(at.bfrac(), bt.bfrac());
    switch (windowOfBoth(at, bt)) {
    case 0:
        return compareMagnitudesPlain(a, Layout(aType), b, Layout(bType));
    case 1:
        return compareShort<1>(a, at, b, bt, fraction);
    case 2:
        return compareShort<2>(a, at, b, bt, fraction);
    case 3:
        return compareShort<3>(a, at, b, bt, fraction);
    default:
        return compareShort<4>(a, at, b, bt, fraction);
    }
}

int compareSlowly(const BYTE *a, BCDIIType aType, const BYTE *b, BCDIIType bType)
{
    const int sign = isNegative(a) ? -1 : 1;
    return isNegative(a) != isNegative(b) ? sign : sign * compareMagnitudes(a, aType, b, bType);
}

// The first bytes of a value with bytes of 0 in front, and the sign where it was.
DECIMAL_INLINE Word movedBack(Word w, int bytes)
{
    constexpr Word sign = Word {1} << 63;
    return (w & ~sign) >> (8 * bytes) | (w & sign);
}

} // namespace

// Nearly always the first 8 bytes tell, counted from the first of either value.
int compareTypes(const BYTE *a, BCDIIType aType, const BYTE *b, BCDIIType bType)
{
    const Layout at(aType);
    const Layout bt(bType);
    const int ahead = at.bint() - bt.bint();
    if (std::min(at.ball, bt.ball) > 0 && std::abs(ahead) < wordPairs) {
        Word x = loadFirst(a, at.ball);
        Word y = loadFirst(b, bt.ball);
        if (ahead > 0)
            y = movedBack(y, ahead);
        else if (ahead < 0)
            x = movedBack(x, -ahead);
        if (x != y)
            return compareDifferent(x, y);
    }
    return compareSlowly(a, aType, b, bType);
}

} // namespace Decimal
