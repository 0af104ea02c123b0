// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "decimal/plain_p.h"
#include "decimalcases.h"

#include <QTest>

using namespace Cases;
using Decimal::Layout;

//! The plain way by itself, for all types and not only for those that the short ways leave to
//! it: whatever they are held against has to be right.
class tst_DecimalPlain : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { announce(); }
    void copies();
    void magnitudes();
    void sums();
    void products();
    void overOperands();
};

namespace {

Layout layoutOf(const Operand &operand)
{
    return Layout(operand.type.word());
}

using PlainOperation = UINT32 (*)(BYTE *, Layout, const BYTE *, Layout, const BYTE *, Layout,
                                  BCDIIroundstyle);

// The number of results that are not those of the oracle.
int wrongResults(PlainOperation operation, OracleOperation oracle, UINT64 stream)
{
    Random random(stream);
    Operand a;
    Operand b;
    Destination dst;
    int wrong = 0;
    for (int i = 0; i < caseCount() / 4; ++i) {
        a.draw(random, random.type());
        b.draw(random, random.typeNear(a.type));
        dst.draw(random, random.typeNear(a.type));
        const BCDIIroundstyle rs = random.roundStyle();
        const UINT32 status = operation(dst.memory.data(), Layout(dst.type.word()), a.memory.data(),
                                        layoutOf(a), b.memory.data(), layoutOf(b), rs);
        const Outcome expected = oracle(a.number(), b.number(), dst.type, rs);
        const bool right = dst.check("plain", status, expected, a.text() + " and " + b.text())
            && a.memory.holds(a.bytes) && b.memory.holds(b.bytes);
        wrong += right ? 0 : 1;
    }
    return wrong;
}

} // namespace

void tst_DecimalPlain::copies()
{
    Random random(21);
    Operand src;
    Destination dst;
    for (int i = 0; i < caseCount() / 4; ++i) {
        src.draw(random, random.type());
        dst.draw(random, random.typeNear(src.type));
        const BCDIIroundstyle rs = random.roundStyle();
        const UINT32 status = Decimal::copyPlain(dst.memory.data(), dst.type.word(),
                                                 src.memory.data(), src.type.word(), rs);
        const Outcome expected = Oracle::store(src.number(), dst.type, rs);
        QVERIFY(dst.check("copy", status, expected, src.text()));
        QVERIFY(src.memory.holds(src.bytes));
    }
}

void tst_DecimalPlain::magnitudes()
{
    Random random(22);
    Operand a;
    Operand b;
    for (int i = 0; i < caseCount() / 4; ++i) {
        a.draw(random, random.type());
        b.draw(random, random.oneIn(3) ? a.type : random.typeNear(a.type));
        if (random.oneIn(4)) { // equal values, where the second type holds the first
            const Outcome same = Oracle::store(a.number(), b.type, BCDII_ROUND_TRUNC);
            if (!same.nan)
                b.memory.take(b.bytes = same.bytes, random.oneIn(2));
        }
        Number x = a.number();
        Number y = b.number();
        x.negative = y.negative = false;
        const int expected = Oracle::compare(x, y);
        const int order = Decimal::compareMagnitudesPlain(a.memory.data(), layoutOf(a),
                                                          b.memory.data(), layoutOf(b));
        QVERIFY2(order == (expected > 0) - (expected < 0), (a.text() + " " + b.text()).c_str());
    }
}

void tst_DecimalPlain::sums()
{
    QCOMPARE(wrongResults(Decimal::addPlain, Oracle::add, 23), 0);
}

void tst_DecimalPlain::products()
{
    QCOMPARE(wrongResults(Decimal::mulPlain, Oracle::multiply, 24), 0);
}

void tst_DecimalPlain::overOperands()
{
    QCOMPARE(wrongResultsOverOperands([](void *ret, BCDIIType t, const void *a, BCDIIType at,
                                         const void *b, BCDIIType bt, BCDIIroundstyle rs) {
                 return Decimal::addPlain(Decimal::bytes(ret), Layout(t), Decimal::bytes(a),
                                          Layout(at), Decimal::bytes(b), Layout(bt), rs);
             }),
             0);
    QCOMPARE(wrongResultsOverOperands([](void *ret, BCDIIType t, const void *a, BCDIIType at,
                                         const void *b, BCDIIType bt, BCDIIroundstyle rs) {
                 return Decimal::mulPlain(Decimal::bytes(ret), Layout(t), Decimal::bytes(a),
                                          Layout(at), Decimal::bytes(b), Layout(bt), rs);
             }),
             0);
}

QTEST_GUILESS_MAIN(tst_DecimalPlain)

#include "tst_decimalplain.moc"
