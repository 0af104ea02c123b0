// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "decimalcases.h"

#include <QTest>

using namespace Cases;

//! Products, short and long.
class tst_DecimalProducts : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { announce(); }
    void multiplyExamples_data();
    void multiplyExamples();
    void shortProductsExhaustively();
    void productsNearPowersOfTen();
    void randomProducts();
    void resultsOverOperands();
    void productsOfTooWideTypes();
};

void tst_DecimalProducts::multiplyExamples_data()
{
    QTest::addColumn<QByteArray>("a");
    QTest::addColumn<int>("aType");
    QTest::addColumn<QByteArray>("b");
    QTest::addColumn<int>("bType");
    QTest::addColumn<int>("type");
    QTest::addColumn<int>("style");
    QTest::addColumn<QByteArray>("result");
    QTest::addColumn<uint>("status");
    const auto row = [](const char *a, int at, const char *b, int bt, int t, BCDIIroundstyle style,
                        const char *result, uint status) {
        QTest::addRow("%s * %s to %04x style %d", a, b, unsigned(t), int(style))
            << QByteArray(a) << at << QByteArray(b) << bt << t << int(style) << QByteArray(result)
            << status;
    };
    row("1.25", 0x0302, "1.5", 0x0201, 0x0402, BCDII_ROUND_NEAREST, "1.88", 64);
    row("1.25", 0x0302, "1.5", 0x0201, 0x0402, BCDII_ROUND_TRUNC, "1.87", 64);
    row("123456789", 0x0900, "987654321", 0x0900, 0x1200, BCDII_ROUND_NEAREST, "121932631112635269",
        0);
    row("123456789", 0x0900, "987654321", 0x0900, 0x1100, BCDII_ROUND_NEAREST, "NaN", 17);
    row("-3", 0x0100, "0", 0x0502, 0x0502, BCDII_ROUND_NEAREST, ".00", 2);
    row("-3", 0x0100, "-4", 0x0100, 0x0200, BCDII_ROUND_NEAREST, "12", 0);
    row("-3", 0x0100, "4", 0x0100, 0x0200, BCDII_ROUND_NEAREST, "-12", 4);
}

void tst_DecimalProducts::multiplyExamples()
{
    QFETCH(QByteArray, a);
    QFETCH(int, aType);
    QFETCH(QByteArray, b);
    QFETCH(int, bType);
    QFETCH(int, type);
    QFETCH(int, style);
    QFETCH(QByteArray, result);
    QFETCH(uint, status);
    const Result r = operate(BCDIIMul, a, typeOf(aType), b, typeOf(bType), typeOf(type),
                             static_cast<BCDIIroundstyle>(style));
    QCOMPARE(r.status, status);
    QCOMPARE(r.text, result.toStdString());
}

void tst_DecimalProducts::shortProductsExhaustively()
{
    QCOMPARE(wrongShortResults(BCDIIMul, Oracle::multiply), 0);
}

// Factors beside powers of ten, where quotients and remainders are at their limits, in types
// of 18 to 20 digits with every number of pairs to cut off.
void tst_DecimalProducts::productsNearPowersOfTen()
{
    std::vector<Oracle::Integer> units;
    for (int i = 0; i < 19; ++i) {
        for (int beside = -1; beside <= 1; ++beside)
            units.push_back(Oracle::tenTo(i) + beside);
    }
    const Type shapes[][3] = {{{18, 6}, {18, 6}, {18, 6}},  {{18, 5}, {18, 5}, {18, 5}},
                              {{19, 0}, {19, 0}, {38, 0}},  {{19, 9}, {19, 5}, {20, 1}},
                              {{20, 8}, {20, 6}, {16, 0}},  {{18, 2}, {19, 1}, {9, 2}},
                              {{19, 15}, {18, 3}, {30, 4}}, {{18, -2}, {18, 16}, {19, 7}}};
    BYTE result[40] = {};
    for (const auto &[at, bt, d] : shapes) {
        for (const Oracle::Integer &x : units) {
            for (const Oracle::Integer &y : units) {
                const std::vector<BYTE> a = Oracle::write(x % Oracle::tenTo(at.nall), false, at);
                const std::vector<BYTE> b = Oracle::write(y % Oracle::tenTo(bt.nall), false, bt);
                const auto rs = static_cast<BCDIIroundstyle>((a.back() + b.back()) % 5);
                const Outcome expected =
                    Oracle::multiply(Oracle::read(a.data(), at), Oracle::read(b.data(), bt), d, rs);
                const UINT32 status =
                    BCDIIMul(result, d.word(), a.data(), at.word(), b.data(), bt.word(), rs);
                QVERIFY2(isSame(result, expected) && status == expected.status,
                         (x.str() + " * " + y.str() + " in " + name(d)).c_str());
            }
        }
    }
}

void tst_DecimalProducts::randomProducts()
{
    Random random(5);
    Operand a;
    Operand b;
    Destination dst;
    for (int i = 0; i < caseCount(); ++i) {
        a.draw(random, random.type());
        b.draw(random, random.typeNear(a.type));
        const Type exact {std::min(63, a.type.nall + b.type.nall),
                          std::clamp(a.type.nfrac + b.type.nfrac, -62, 62)};
        dst.draw(random, random.typeNear(random.oneIn(2) ? a.type : exact));
        const BCDIIroundstyle rs = random.roundStyle();
        const UINT32 status =
            BCDIIMul(dst.memory.data(), random.word(dst.type), a.memory.data(), random.word(a.type),
                     b.memory.data(), random.word(b.type), rs);
        const Outcome expected = Oracle::multiply(a.number(), b.number(), dst.type, rs);
        QVERIFY(dst.check("multiply", status, expected,
                          a.text() + " * " + b.text() + " style " + std::to_string(rs)));
    }
}

void tst_DecimalProducts::resultsOverOperands()
{
    QCOMPARE(wrongResultsOverOperands(BCDIIMul), 0);
}

// The same product through machine words, and pair by pair because one operand's type is
// wider than any that is valid: types of operands are not checked.
void tst_DecimalProducts::productsOfTooWideTypes()
{
    Random random(17);
    int products = 0;
    for (int i = 0; i < caseCount() / 10; ++i) {
        const int nfrac = 2 * random.between(0, 15);
        const Type t {random.between(1, 63), nfrac};
        const Type wide {2 * random.between(33, 63), nfrac};
        const Type result {random.between(1, 63), random.between(0, 30)};
        const std::vector<BYTE> a = random.value(t);
        const std::vector<BYTE> b = random.value(t);
        // The digits behind leading zeros, with the sign in front.
        const auto zeros = std::size_t(wide.size() - t.size());
        std::vector<BYTE> widened(zeros, 0);
        widened.insert(widened.end(), b.begin(), b.end());
        const BYTE sign = BYTE(b.front() & 0x80);
        widened[zeros] ^= sign;
        widened.front() |= sign;

        BYTE narrow[40] = {};
        BYTE plain[40] = {};
        const UINT32 status = BCDIIMul(narrow, result.word(), a.data(), t.word(), b.data(),
                                       t.word(), BCDII_ROUND_NEAREST);
        QCOMPARE(BCDIIMul(plain, result.word(), a.data(), t.word(), widened.data(), wide.word(),
                          BCDII_ROUND_NEAREST),
                 status);
        QVERIFY(std::equal(narrow, narrow + 40, plain));
        products += narrow[0] != 101;
    }
    QVERIFY(products > caseCount() / 100);
}

QTEST_GUILESS_MAIN(tst_DecimalProducts)

#include "tst_decimalproducts.moc"
