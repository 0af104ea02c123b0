// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "decimal/wide_p.h"

#include <QTest>

#include <random>
#include <vector>

using namespace Decimal;
using Word = std::uint64_t;

//! The integers of 128 bits that compilers need not have, beside those that they have.
class tst_Wide : public QObject
{
    Q_OBJECT

private slots:
    void operations();
    void shifts();
    void reciprocals();
};

namespace {

#if defined(__SIZEOF_INT128__)

__extension__ using Native = unsigned __int128;

Native nativeOf(Word high, Word low)
{
    return Native {high} << 64 | low;
}

template<typename Wide> bool isEqual(Wide x, Native y)
{
    return x.high() == static_cast<Word>(y >> 64) && x.low() == static_cast<Word>(y);
}

//! Words at which carries come and go, and others.
std::vector<Word> words()
{
    std::vector<Word> all {0, 1, 2, ~Word {0}, ~Word {0} - 1, 10000000000000000U};
    for (int bit = 1; bit < 64; ++bit) {
        all.push_back(Word {1} << bit);
        all.push_back((Word {1} << bit) - 1);
    }
    std::mt19937_64 engine(7);
    while (all.size() < 400)
        all.push_back(engine() >> engine() % 64);
    return all;
}

template<typename Wide> int wrongOperations(Word a, Word b, Word c, Word d)
{
    const Native x = nativeOf(a, b);
    const Native y = nativeOf(c, d);
    const Wide v(a, b);
    const Wide w(c, d);
    int wrong = isEqual(Wide::product(a, b), Native {a} * b) ? 0 : 1;
    wrong += isEqual(v + w, x + y) ? 0 : 1;
    wrong += (v < w) == (x < y) ? 0 : 1;
    wrong += (v == w) == (x == y) ? 0 : 1;
    wrong += v == v && !(v < v) ? 0 : 1;
    return wrong;
}

template<typename Wide> int wrongShifts(Word a, Word b)
{
    int wrong = 0;
    for (int bits = 1; bits < 64; ++bits)
        wrong += Wide(a, b).shiftedDown(bits) == static_cast<Word>(nativeOf(a, b) >> bits) ? 0 : 1;
    return wrong;
}

#endif

} // namespace

void tst_Wide::operations()
{
#if defined(__SIZEOF_INT128__)
    const std::vector<Word> all = words();
    int wrong = 0;
    for (std::size_t i = 0; i < all.size(); ++i) {
        for (std::size_t j = 0; j < all.size(); ++j) {
            const Word c = all[(i + 7 * j) % all.size()];
            const Word d = all[(3 * i + j) % all.size()];
            wrong += wrongOperations<PortableWide>(all[i], all[j], c, d);
            wrong += wrongOperations<PortableWide>(all[i], all[j], all[i], d);
            wrong += wrongOperations<NativeWide>(all[i], all[j], c, d);
        }
    }
    QCOMPARE(wrong, 0);
#else
    QSKIP("no integers of 128 bits to compare with");
#endif
}

void tst_Wide::shifts()
{
#if defined(__SIZEOF_INT128__)
    const std::vector<Word> all = words();
    int wrong = 0;
    for (std::size_t i = 0; i < all.size(); ++i) {
        for (std::size_t j = 0; j < all.size(); j += 3)
            wrong +=
                wrongShifts<PortableWide>(all[i], all[j]) + wrongShifts<NativeWide>(all[i], all[j]);
    }
    QCOMPARE(wrong, 0);
#else
    QSKIP("no integers of 128 bits to compare with");
#endif
}

void tst_Wide::reciprocals()
{
#if defined(__SIZEOF_INT128__)
    for (Word word : words()) {
        const Word divisor = word | Word {1} << 63;
        QCOMPARE(reciprocalOf(divisor), static_cast<Word>(~Native {0} / divisor));
    }
    // The shorter one that is made of it, for 10^16.
    constexpr Word tenToSixteen = 10000000000000000U;
    const Word shorter = Word {1} << 56 | reciprocalOf(tenToSixteen << 10) >> 8;
    QCOMPARE(shorter, static_cast<Word>((Native {1} << 110) / tenToSixteen));
#else
    QSKIP("no integers of 128 bits to compare with");
#endif
}

QTEST_MAIN(tst_Wide)

#include "tst_wide.moc"
