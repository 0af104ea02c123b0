// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "decimalcases.h"

#include <QTest>

using namespace Cases;

//! Copies from type to type with rounding, and the order of values.
class tst_DecimalCopies : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { announce(); }
    void copyExamples_data();
    void copyExamples();
    void copyInPlace();
    void randomCopiesInPlace();
    void compareExamples();
    void roundsToTensWithoutDigits_data();
    void roundsToTensWithoutDigits();
    void shortCopiesExhaustively();
    void randomCopies();
    void randomComparisons();
};

void tst_DecimalCopies::copyExamples_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<int>("nall");
    QTest::addColumn<int>("nfrac");
    QTest::addColumn<int>("dstAll");
    QTest::addColumn<int>("dstFrac");
    QTest::addColumn<int>("style");
    QTest::addColumn<QByteArray>("result");
    QTest::addColumn<uint>("status");
    const auto row = [](const char *text, Type s, Type d, BCDIIroundstyle style, const char *result,
                        uint status) {
        QTest::addRow("%s to (%d,%d) style %d", text, d.nall, d.nfrac, int(style))
            << QByteArray(text) << s.nall << s.nfrac << d.nall << d.nfrac << int(style)
            << QByteArray(result) << status;
    };
    row("9.96", {3, 2}, {2, 1}, BCDII_ROUND_NEAREST, "NaN", 81);
    row("9.96", {3, 2}, {2, 1}, BCDII_ROUND_TRUNC, "9.9", 64);
    row("1.25", {3, 2}, {2, 1}, BCDII_ROUND_NEAREST, "1.3", 64);
    row("1.25", {3, 2}, {2, 1}, BCDII_ROUND_DOWN, "1.2", 64);
    row("1.25", {3, 2}, {2, 1}, BCDII_ROUND_UP, "1.3", 64);
    row("1.25", {3, 2}, {2, 1}, static_cast<BCDIIroundstyle>(7), "1.3", 64);
    row("-1.25", {3, 2}, {2, 1}, BCDII_ROUND_NEAREST, "-1.3", 68);
    row("-1.25", {3, 2}, {2, 1}, BCDII_ROUND_UP, "-1.2", 68);
    row("-1.25", {3, 2}, {2, 1}, BCDII_ROUND_DOWN, "-1.3", 68);
    row("-1.25", {3, 2}, {2, 1}, BCDII_ROUND_FROMZERO, "-1.3", 68);
    row("-1.25", {3, 2}, {2, 1}, BCDII_ROUND_TRUNC, "-1.2", 68);
    row("0.04", {2, 2}, {2, 1}, BCDII_ROUND_NEAREST, ".0", 66);
    row("-0.04", {2, 2}, {2, 1}, BCDII_ROUND_NEAREST, ".0", 66);
    row("123", {3, 0}, {2, 0}, BCDII_ROUND_NEAREST, "NaN", 17);
    row("123", {3, 0}, {5, 2}, BCDII_ROUND_NEAREST, "123.00", 0);
    row("0", {3, 0}, {5, 2}, BCDII_ROUND_NEAREST, ".00", 2);
    row("99", {2, 0}, {2, -1}, BCDII_ROUND_NEAREST, "100", 64);
    row("99", {2, 0}, {1, -1}, BCDII_ROUND_NEAREST, "NaN", 81);
}

void tst_DecimalCopies::copyExamples()
{
    QFETCH(QByteArray, text);
    QFETCH(int, nall);
    QFETCH(int, nfrac);
    QFETCH(int, dstAll);
    QFETCH(int, dstFrac);
    QFETCH(int, style);
    QFETCH(QByteArray, result);
    QFETCH(uint, status);
    const std::vector<BYTE> src = valueOf({nall, nfrac}, text);
    const Type d {dstAll, dstFrac};
    Guarded memory;
    memory.take(d.size(), true);
    QCOMPARE(BCDIICopy(memory.data(), d.word(), src.data(), Type {nall, nfrac}.word(),
                       static_cast<BCDIIroundstyle>(style)),
             status);
    QVERIFY(memory.isIntact());
    QCOMPARE(resultText(memory.data(), d), result.toStdString());
}

void tst_DecimalCopies::copyInPlace()
{
    BYTE bcd[4] = {1, 23, 45, guardByte}; // 123.45
    QCOMPARE(BCDIICopy(bcd, 0x0603, bcd, 0x0502, BCDII_ROUND_NEAREST), 0U);
    QCOMPARE(hex(bcd, 4), std::string("01 17 2d 00"));
    QCOMPARE(BCDIICopy(bcd, 0x0300, bcd, 0x0603, BCDII_ROUND_UP), 64U);
    QCOMPARE(hex(bcd, 2), std::string("01 18"));
}

void tst_DecimalCopies::randomCopiesInPlace()
{
    Random random(6);
    for (int i = 0; i < caseCount() / 10; ++i) {
        const Type t = random.type();
        const Type d = random.typeNear(t);
        const std::vector<BYTE> a = random.value(t);
        BYTE copied[40] = {};
        BYTE inPlace[40] = {};
        std::copy(a.begin(), a.end(), inPlace);
        QCOMPARE(BCDIICopy(inPlace, d.word(), inPlace, t.word(), BCDII_ROUND_NEAREST),
                 BCDIICopy(copied, d.word(), a.data(), t.word(), BCDII_ROUND_NEAREST));
        QVERIFY2(isSame(inPlace, copied, d), (name(t) + " " + hex(a)).c_str());
    }
}

void tst_DecimalCopies::compareExamples()
{
    const auto compare = [](const char *a, Type at, const char *b, Type bt) {
        return BCDIICmp(valueOf(at, a).data(), at.word(), valueOf(bt, b).data(), bt.word());
    };
    QCOMPARE(compare("1.5", {2, 1}, "1.50", {5, 3}), 0);
    QCOMPARE(compare("-2", {1, 0}, "1", {3, 1}), -1);
    QCOMPARE(compare("-2", {1, 0}, "-1", {1, 0}), -1);
    QCOMPARE(compare("2", {1, 0}, "-1", {1, 0}), 1);
    QCOMPARE(compare("0.01", {4, 2}, "0.009", {4, 3}), 1);
    const BYTE negativeZero[] = {0x80};
    const BYTE zero[] = {0};
    QCOMPARE(BCDIICmp(negativeZero, 0x0100, zero, 0x0100), -1);
    QCOMPARE(BCDIICmp(zero, 0x0100, negativeZero, 0x0200), 1);
    const BYTE nanValue[] = {101};
    const BYTE largest[] = {99};
    QCOMPARE(BCDIICmp(nanValue, 0x0200, largest, 0x0200), 1);
    QCOMPARE(BCDIICmp(largest, 0x0200, nanValue, 0x0100), -1);
    QCOMPARE(BCDIICmp(nanValue, 0x0000, largest, 0xFFFF0000), 0);
}

void tst_DecimalCopies::roundsToTensWithoutDigits_data()
{
    QTest::addColumn<int>("style");
    QTest::addColumn<int>("first"); // byte of the number
    QTest::addColumn<uint>("status");
    const auto row = [](const char *name, BCDIIroundstyle style, int first, uint status) {
        QTest::newRow(name) << int(style) << first << status;
    };
    row("4, nearest", BCDII_ROUND_NEAREST, 4, 66);
    row("5, nearest", BCDII_ROUND_NEAREST, 5, 17);
    row("-5, nearest", BCDII_ROUND_NEAREST, 0x85, 17);
    row("4, up", BCDII_ROUND_UP, 4, 21);
    row("-4, up", BCDII_ROUND_UP, 0x84, 66);
    row("4, down", BCDII_ROUND_DOWN, 4, 66);
    row("-4, down", BCDII_ROUND_DOWN, 0x84, 21);
    row("4, from zero", BCDII_ROUND_FROMZERO, 4, 17);
    row("9, to zero", BCDII_ROUND_TRUNC, 9, 66);
}

//! Ten does not fit, and zero has no bytes.
void tst_DecimalCopies::roundsToTensWithoutDigits()
{
    QFETCH(int, style);
    QFETCH(int, first);
    const BYTE number[] = {BYTE(first)};
    BYTE result[] = {7};
    const UINT32 status = BCDIICopy(result, 0x00FF, number, 0x0100, BCDIIroundstyle(style));
    QTEST(uint(status), "status");
    QCOMPARE(result[0], BYTE(status == 66 ? 7 : 101));
}

void tst_DecimalCopies::shortCopiesExhaustively()
{
    const std::vector<Type> types = shortTypes(exhaustiveDigits, -3, 4);
    Guarded memory;
    int wrong = 0;
    for (Type s : types) {
        everyValue(s, [&](const std::vector<BYTE> &src) {
            const Number v = Oracle::read(src.data(), s);
            for (Type d : types) {
                const auto style = static_cast<BCDIIroundstyle>((d.nall + src.back()) % 5);
                memory.take(d.size(), true);
                const UINT32 status =
                    BCDIICopy(memory.data(), d.word(), src.data(), s.word(), style);
                const Outcome expected = Oracle::store(v, d, style);
                const std::vector<BYTE> before(std::size_t(d.size()), guardByte);
                wrong += status != expected.status || !memory.holds(expected, before) ? 1 : 0;
            }
        });
    }
    QCOMPARE(wrong, 0);
}

void tst_DecimalCopies::randomCopies()
{
    Random random(2);
    Operand src;
    Destination dst;
    for (int i = 0; i < caseCount(); ++i) {
        src.draw(random, random.type());
        dst.draw(random, random.typeNear(src.type));
        const BCDIIroundstyle rs = random.roundStyle();
        const UINT32 status = BCDIICopy(dst.memory.data(), random.word(dst.type), src.memory.data(),
                                        random.word(src.type), rs);
        const Outcome expected = Oracle::store(src.number(), dst.type, rs);
        QVERIFY(dst.check("copy", status, expected, src.text() + " style " + std::to_string(rs)));
        QVERIFY(src.memory.holds(src.bytes));
    }
}

void tst_DecimalCopies::randomComparisons()
{
    Random random(3);
    Operand a;
    Operand b;
    for (int i = 0; i < caseCount(); ++i) {
        a.draw(random, random.type());
        b.draw(random, random.oneIn(3) ? a.type : random.typeNear(a.type));
        if (random.oneIn(4)) { // equal values, where the second type holds the first
            const Outcome same = Oracle::store(a.number(), b.type, BCDII_ROUND_TRUNC);
            if (!same.nan)
                b.memory.take(b.bytes = same.bytes, random.oneIn(2));
        }
        const int order =
            BCDIICmp(a.memory.data(), random.word(a.type), b.memory.data(), random.word(b.type));
        const int expected = Oracle::compare(a.number(), b.number());
        QVERIFY2(order == (expected > 0) - (expected < 0), (a.text() + " " + b.text()).c_str());
    }
}

QTEST_GUILESS_MAIN(tst_DecimalCopies)

#include "tst_decimalcopies.moc"
