// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "decimalcases.h"

#include <QTest>

using namespace Cases;

//! Sums, whose values may have two types and the result a third one.
class tst_DecimalSums : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { announce(); }
    void addExamples_data();
    void addExamples();
    void sumsWithoutBytes();
    void nanOperandsOfOneType();
    void shortSumsExhaustively();
    void randomSums();
    void resultsOverOperands();
    void wideTypesAgreeWithNarrow();
    void paddingDigitsCountAlike();
};

void tst_DecimalSums::addExamples_data()
{
    QTest::addColumn<QByteArray>("a");
    QTest::addColumn<int>("aType");
    QTest::addColumn<QByteArray>("b");
    QTest::addColumn<int>("bType");
    QTest::addColumn<int>("type");
    QTest::addColumn<QByteArray>("result");
    QTest::addColumn<uint>("status");
    const auto row = [](const char *a, int at, const char *b, int bt, int t, const char *result,
                        uint status) {
        QTest::addRow("%s + %s to %04x", a, b, unsigned(t))
            << QByteArray(a) << at << QByteArray(b) << bt << t << QByteArray(result) << status;
    };
    row("1.5", 0x0201, "-1.50", 0x0503, 0x0402, ".00", 2);
    row("99.99", 0x0402, "0.01", 0x0202, 0x0502, "100.00", 0);
    row("99.99", 0x0402, "0.01", 0x0202, 0x0402, "NaN", 17);
    row("0.05", 0x0202, "0.05", 0x0202, 0x0201, ".1", 0);
    row("0.05", 0x0202, "0", 0x0100, 0x0201, ".1", 64);
    row("-2.5", 0x0201, "1", 0x0100, 0x0201, "-1.5", 4);
    row("1", 0x0100, "-0.01", 0x0A02, 0x0302, ".99", 0); // zero bytes lead in b
    row("9.95", 0x0302, "0", 0x0100, 0x0201, "NaN", 81);
}

void tst_DecimalSums::addExamples()
{
    QFETCH(QByteArray, a);
    QFETCH(int, aType);
    QFETCH(QByteArray, b);
    QFETCH(int, bType);
    QFETCH(int, type);
    QFETCH(QByteArray, result);
    QFETCH(uint, status);
    const Result r = operate(BCDIIAdd, a, typeOf(aType), b, typeOf(bType), typeOf(type));
    QCOMPARE(r.status, status);
    QCOMPARE(r.text, result.toStdString());
}

// To tens of a type without digits.
void tst_DecimalSums::sumsWithoutBytes()
{
    const BYTE a[] = {1, 50};
    const BYTE b[] = {0x85};
    BYTE result[] = {7};
    QCOMPARE(BCDIIAdd(result, 0x00FF, a, 0x0201, b, 0x0100, BCDII_ROUND_NEAREST), 66U);
    QCOMPARE(result[0], BYTE {7});
}

void tst_DecimalSums::nanOperandsOfOneType()
{
    for (int size = 1; size <= 40; ++size) {
        const BCDIIType type = Type({2 * size, 0}).word();
        const std::vector<BYTE> number(std::size_t(size), BYTE {1});
        std::vector<BYTE> nan = number;
        nan[0] = 101;
        std::vector<BYTE> result = number;
        QCOMPARE(BCDIIAdd(result.data(), type, nan.data(), type, number.data(), type,
                          BCDII_ROUND_NEAREST),
                 0xB0U);
        QCOMPARE(result[0], BYTE {101});
        QCOMPARE(BCDIIAdd(result.data(), type, number.data(), type, nan.data(), type,
                          BCDII_ROUND_NEAREST),
                 0xB0U);
    }
}

void tst_DecimalSums::shortSumsExhaustively()
{
    QCOMPARE(wrongShortResults(BCDIIAdd, Oracle::add), 0);
}

void tst_DecimalSums::randomSums()
{
    Random random(4);
    Operand a;
    Operand b;
    Destination dst;
    for (int i = 0; i < caseCount(); ++i) {
        a.draw(random, random.type());
        b.draw(random, random.oneIn(3) ? a.type : random.typeNear(a.type));
        dst.draw(random, random.typeNear(random.oneIn(2) ? a.type : b.type));
        const BCDIIroundstyle rs = random.roundStyle();
        const UINT32 status =
            BCDIIAdd(dst.memory.data(), random.word(dst.type), a.memory.data(), random.word(a.type),
                     b.memory.data(), random.word(b.type), rs);
        const Outcome expected = Oracle::add(a.number(), b.number(), dst.type, rs);
        QVERIFY(dst.check("add", status, expected,
                          a.text() + " + " + b.text() + " style " + std::to_string(rs)));
    }
}

void tst_DecimalSums::resultsOverOperands()
{
    QCOMPARE(wrongResultsOverOperands(BCDIIAdd), 0);
}

// The same sum through machine words, and pair by pair because one operand's type
// reaches too far for them.
void tst_DecimalSums::wideTypesAgreeWithNarrow()
{
    Random random(7);
    const Type wide {63, 62};
    for (int i = 0; i < caseCount() / 10; ++i) {
        const Type t {random.between(1, 40), random.between(0, 30)};
        const std::vector<BYTE> a = random.value(t);
        const std::vector<BYTE> b = random.value(t);
        const std::vector<BYTE> zero(32, 0);
        BYTE narrow[40] = {};
        BYTE plain[40] = {};
        const UINT32 sum =
            BCDIIAdd(narrow, t.word(), a.data(), t.word(), b.data(), t.word(), BCDII_ROUND_NEAREST);
        const Outcome widened = Oracle::store(Oracle::read(b.data(), t), wide, BCDII_ROUND_TRUNC);
        if (widened.nan)
            continue;
        QCOMPARE(BCDIIAdd(plain, t.word(), a.data(), t.word(), widened.bytes.data(), wide.word(),
                          BCDII_ROUND_NEAREST),
                 sum);
        QVERIFY(std::equal(narrow, narrow + 40, plain));
    }
}

// A digit behind the last one of the type, where none belongs, is cut off the sum. It does not
// matter whether all are of one type, or a byte of zeros leads in one operand.
void tst_DecimalSums::paddingDigitsCountAlike()
{
    Random random(8);
    for (int i = 0; i < caseCount() / 10; ++i) {
        const Type t {random.between(1, 40), 2 * random.between(0, 15) + 1};
        std::vector<BYTE> a = random.value(t);
        const std::vector<BYTE> b = random.value(t);
        if (t.size() < 2)
            continue;
        if (random.oneIn(4))
            a.back() = 0;
        a.back() = BYTE(a.back() + random.between(0, 9));
        const Type longer {2 * (t.size() - (t.nfrac + 1) / 2) + 2 + t.nfrac, t.nfrac};
        std::vector<BYTE> led = b;
        led.insert(led.begin(), BYTE(led[0] & 0x80));
        led[1] = BYTE(led[1] & 0x7F);
        BYTE same[40] = {};
        BYTE other[40] = {};
        const UINT32 sum =
            BCDIIAdd(same, t.word(), a.data(), t.word(), b.data(), t.word(), BCDII_ROUND_NEAREST);
        QCOMPARE(BCDIIAdd(other, t.word(), a.data(), t.word(), led.data(), longer.word(),
                          BCDII_ROUND_NEAREST),
                 sum);
        QCOMPARE(Cases::hex(same, 40), Cases::hex(other, 40));
    }
}

QTEST_GUILESS_MAIN(tst_DecimalSums)

#include "tst_decimalsums.moc"
