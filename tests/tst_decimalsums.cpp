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
    void shortSumsExhaustively();
    void randomSums();
    void resultsOverOperands();
    void wideTypesAgreeWithNarrow();
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

QTEST_GUILESS_MAIN(tst_DecimalSums)

#include "tst_decimalsums.moc"
