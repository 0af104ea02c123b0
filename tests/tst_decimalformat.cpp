// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "allocations.h"
#include "decimalcases.h"

#include <QTest>

#include <bit>

using namespace Cases;

//! Layouts, checks, constants and signs of values, and what all functions do alike.
class tst_DecimalFormat : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { announce(); }
    void workedLayouts_data();
    void workedLayouts();
    void checkType();
    void check();
    void initAndHeader();
    void setZeroMaxMin();
    void negate();
    void nanOperands();
    void headerForms();
    void typesWithoutDigits_data();
    void typesWithoutDigits();
    void invalidDestinations();
    void randomChecksAndConstants();
    void anyBytesAreSafe();
    void noAllocations();
};

void tst_DecimalFormat::workedLayouts_data()
{
    QTest::addColumn<int>("nall");
    QTest::addColumn<int>("nfrac");
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("123.45") << 5 << 2 << QByteArray("123.45") << QByteArray("01172d");
    QTest::newRow("-123.45") << 5 << 2 << QByteArray("-123.45") << QByteArray("81172d");
    QTest::newRow("999.99") << 5 << 2 << QByteArray("999.99") << QByteArray("096363");
    QTest::newRow("123.4") << 4 << 1 << QByteArray("123.4") << QByteArray("011728");
    QTest::newRow("4560") << 3 << -1 << QByteArray("4560") << QByteArray("2d3c");
    QTest::newRow(".0012") << 2 << 4 << QByteArray(".0012") << QByteArray("0c");
}

void tst_DecimalFormat::workedLayouts()
{
    QFETCH(int, nall);
    QFETCH(int, nfrac);
    QFETCH(QByteArray, text);
    QFETCH(QByteArray, bytes);
    const Type t {nall, nfrac};
    const QByteArray raw = QByteArray::fromHex(bytes);
    QCOMPARE(t.size(), raw.size());
    QCOMPARE(textOf(raw.constData(), t), text.toStdString());
    QCOMPARE(BCDIICheck(raw.constData(), t.word()), text.startsWith('-') ? 4U : 0U);
}

void tst_DecimalFormat::checkType()
{
    for (int nall = -128; nall < 128; ++nall) {
        for (int nfrac = -128; nfrac < 128; ++nfrac) {
            const bool valid = nall >= 1 && nall <= 63 && nfrac >= -62 && nfrac <= 62;
            QCOMPARE(BCDIICheckType(Type {nall, nfrac}.word() | 0xABCD0000U), valid ? 1 : 0);
        }
    }
}

void tst_DecimalFormat::check()
{
    const BYTE paddingDigit[] = {1, 23};
    QCOMPARE(BCDIICheck(paddingDigit, Type({3, 1}).word()), 32U);
    const BYTE paddingTooLarge[] = {1, 100};
    QCOMPARE(BCDIICheck(paddingTooLarge, Type({3, 1}).word()), 32U);
    const BYTE tensInFront[] = {10, 0, 0};
    QCOMPARE(BCDIICheck(tensInFront, Type({5, 2}).word()), 32U);
    QCOMPARE(BCDIICheck(tensInFront, Type({6, 2}).word()), 0U);
    const BYTE signInside[] = {1, 0x80 + 5, 0};
    QCOMPARE(BCDIICheck(signInside, Type({5, 2}).word()), 32U);
    const BYTE negativeZero[] = {0x80, 0, 0};
    QCOMPARE(BCDIICheck(negativeZero, Type({5, 2}).word()), 32U);
    const BYTE nanValue[] = {101, 255, 255};
    QCOMPARE(BCDIICheck(nanValue, Type({5, 2}).word()), 160U);
    QCOMPARE(BCDIICheck(nanValue, Type({0, 2}).word()), 32U);
    const BYTE negativeNan[] = {0xE5, 0, 0};
    QCOMPARE(BCDIICheck(negativeNan, Type({5, 2}).word()), 32U);
    const BYTE hundred[] = {100, 0, 0};
    QCOMPARE(BCDIICheck(hundred, Type({6, 2}).word()), 32U);
}

void tst_DecimalFormat::initAndHeader()
{
    Guarded memory;
    BYTE *const bcd = memory.take(2 + 3, true);
    BCDIIInit(bcd, 0xFFFF0502);
    const BCDIIStoreType word = 0x0502;
    QCOMPARE(std::memcmp(bcd, &word, 2), 0);
    if constexpr (std::endian::native == std::endian::little) {
        QCOMPARE(bcd[0], BYTE(2)); // nfrac first
        QCOMPARE(bcd[1], BYTE(5));
    }
    QCOMPARE(bcd[2], BYTE(101));
    QCOMPARE(bcd[3], guardByte);
    QCOMPARE(BCDIIGetType(bcd), BCDIIType(0x0502));
    QCOMPARE(BCDIICheck(bcd), 160U);
    BCDIISetZero(bcd);
    QCOMPARE(hex(bcd + 2, 3), std::string("00 00 00"));
    QCOMPARE(BCDIICheck(bcd), 2U);
    QVERIFY(memory.isIntact());
}

void tst_DecimalFormat::setZeroMaxMin()
{
    BYTE bcd[2];
    BCDIISetMax(bcd, 0x0201);
    QCOMPARE(hex(bcd, 2), std::string("09 5a"));
    BCDIISetMin(bcd, 0x0201);
    QCOMPARE(hex(bcd, 2), std::string("89 5a"));
}

void tst_DecimalFormat::negate()
{
    const BCDIIType type = 0x0502;
    BYTE bcd[] = {0, 0, 0};
    QCOMPARE(BCDIINeg(bcd, type), 2U);
    QCOMPARE(hex(bcd, 3), std::string("00 00 00"));
    bcd[1] = 5;
    QCOMPARE(BCDIINeg(bcd, type), 4U);
    QCOMPARE(hex(bcd, 3), std::string("80 05 00"));
    QCOMPARE(BCDIINeg(bcd, type), 0U);
    QCOMPARE(hex(bcd, 3), std::string("00 05 00"));
    BYTE negativeZero[] = {0x80, 0, 0};
    QCOMPARE(BCDIINeg(negativeZero, type), 0U);
    QCOMPARE(hex(negativeZero, 3), std::string("00 00 00"));
    for (BYTE first : std::initializer_list<BYTE> {101, 0xE5, 100, 0xFF}) {
        BYTE nanValue[] = {first, 1, 2};
        QCOMPARE(BCDIINeg(nanValue, type), 176U);
        QCOMPARE(nanValue[0], first);
    }
    BYTE noBytes[] = {5};
    QCOMPARE(BCDIINeg(noBytes, 0x0002), 2U);
    QCOMPARE(noBytes[0], BYTE(5));
}

void tst_DecimalFormat::nanOperands()
{
    const BYTE one[] = {1};
    for (BYTE first : std::initializer_list<BYTE> {101, 0xE5, 100, 0x7F, 0xFF}) {
        const BYTE bad[] = {first};
        BYTE result[] = {1, 2};
        QCOMPARE(BCDIICopy(result, 0x0300, bad, 0x0100, BCDII_ROUND_TRUNC), 176U);
        QCOMPARE(hex(result, 2), std::string("65 02"));
        result[0] = 7;
        QCOMPARE(BCDIIAdd(result, 0x0300, bad, 0x0100, one, 0x0100, BCDII_ROUND_TRUNC), 176U);
        QCOMPARE(hex(result, 2), std::string("65 02"));
        result[0] = 7;
        QCOMPARE(BCDIIAdd(result, 0x0300, one, 0x0100, bad, 0x0100, BCDII_ROUND_TRUNC), 176U);
        QCOMPARE(hex(result, 2), std::string("65 02"));
        result[0] = 7;
        QCOMPARE(BCDIIMul(result, 0x0300, bad, 0x0100, one, 0x0100, BCDII_ROUND_TRUNC), 176U);
        QCOMPARE(hex(result, 2), std::string("65 02"));
        result[0] = 7;
        QCOMPARE(BCDIIMul(result, 0x0300, one, 0x0100, bad, 0x0100, BCDII_ROUND_TRUNC), 176U);
        QCOMPARE(hex(result, 2), std::string("65 02"));
        INT64 integer = 42;
        QCOMPARE(BCDII2Int64(&integer, bad, 0x0100, 0, BCDII_ROUND_TRUNC), 176U);
        QCOMPARE(integer, INT64(42));
        double real = 42;
        QCOMPARE(BCDII2Double(&real, bad, 0x0100), 176U);
        QCOMPARE(real, 42.0);
    }
}

void tst_DecimalFormat::headerForms()
{
    // At odd addresses, since headers need no alignment.
    BYTE storage[3][40] = {};
    void *const a = &storage[0][1];
    void *const b = &storage[1][1];
    void *const r = &storage[2][1];
    BCDIIInit(a, 0x0502);
    BCDIIInit(b, 0x0401);
    BCDIIInit(r, 0x0601);
    QCOMPARE(BCDIIGetFromInt64(a, 12345, 2), 0U);
    QCOMPARE(BCDIIGetFromUInt64(b, 25, 1), 0U);
    QCOMPARE(BCDIIAdd(r, a, b), 64U);
    QCOMPARE(std::string(BCDII2StringSequence(r).c_str()), std::string("126.0"));
    QCOMPARE(BCDIIMul(r, a, b), 64U);
    QCOMPARE(std::string(BCDII2StringSequence(r).c_str()), std::string("308.6"));
    QCOMPARE(BCDIICopy(r, a), 64U);
    QCOMPARE(std::string(BCDII2StringSequence(r).c_str()), std::string("123.5"));
    QCOMPARE(BCDIICmp(r, a), 1);
    QCOMPARE(BCDIINeg(r), 4U);
    QCOMPARE(BCDIICmp(r, a), -1);
    INT64 integer = 0;
    QCOMPARE(BCDII2Int64(&integer, r, 0), 68U);
    QCOMPARE(integer, INT64(-124));
    double real = 0;
    QCOMPARE(BCDII2Double(&real, r), 4U);
    QCOMPARE(real, -123.5);
    QCOMPARE(BCDIIGetFromDouble(r, 2.5), 0U);
    QCOMPARE(std::string(BCDII2StringSequence(r).c_str()), std::string("2.5"));
    BCDIISetMin(r);
    QCOMPARE(std::string(BCDII2StringSequence(r).c_str()), std::string("-99999.9"));
    BCDIISetMax(r);
    QCOMPARE(BCDIICheck(r), 0U);
    QCOMPARE(std::string(BCDII2StringSequence(r).c_str()), std::string("99999.9"));
}

namespace {

// What a function does with a destination of some type.
struct Write
{
    const char *name;
    UINT32 (*run)(void *dst, BCDIIType type);
    UINT32 status;
};

const BYTE oneValue[] = {1};
const BYTE nanValueOf1[] = {101};
const BYTE zeroValue[] = {0};

const Write nanWrites[] = {
    {"copy NaN",
     [](void *d, BCDIIType t) { return BCDIICopy(d, t, nanValueOf1, 0x0100, BCDII_ROUND_UP); },
     176},
    {"copy", [](void *d, BCDIIType t) { return BCDIICopy(d, t, oneValue, 0x0100, BCDII_ROUND_UP); },
     17},
    {"add NaN",
     [](void *d, BCDIIType t) {
         return BCDIIAdd(d, t, oneValue, 0x0100, nanValueOf1, 0x0100, BCDII_ROUND_UP);
     },
     176},
    {"add",
     [](void *d, BCDIIType t) {
         return BCDIIAdd(d, t, oneValue, 0x0100, oneValue, 0x0200, BCDII_ROUND_UP);
     },
     17},
    {"multiply NaN",
     [](void *d, BCDIIType t) {
         return BCDIIMul(d, t, nanValueOf1, 0x0100, oneValue, 0x0100, BCDII_ROUND_UP);
     },
     176},
    {"multiply",
     [](void *d, BCDIIType t) {
         return BCDIIMul(d, t, oneValue, 0x0100, oneValue, 0x0200, BCDII_ROUND_UP);
     },
     17},
    {"from uint64", [](void *d, BCDIIType t) { return BCDIIGetFromUInt64(d, t, 5, 0); }, 17},
    {"from int64", [](void *d, BCDIIType t) { return BCDIIGetFromInt64(d, t, 5, 0); }, 17},
    {"from double", [](void *d, BCDIIType t) { return BCDIIGetFromDouble(d, 5.0, t); }, 17},
    {"from infinity",
     [](void *d, BCDIIType t) {
         return BCDIIGetFromDouble(d, std::numeric_limits<double>::infinity(), t);
     },
     17},
    {"from text", [](void *d, BCDIIType t) { return BCDIIFromString(d, t, "5"); }, 17},
    {"from no number", [](void *d, BCDIIType t) { return BCDIIFromString(d, t, "x"); }, 48},
};

const Write zeroWrites[] = {
    {"copy 0", [](void *d, BCDIIType t) { return BCDIICopy(d, t, zeroValue, 0x0100, {}); }, 2},
    {"add to 0",
     [](void *d, BCDIIType t) {
         const BYTE minusOne[] = {0x81};
         return BCDIIAdd(d, t, oneValue, 0x0100, minusOne, 0x0100, BCDII_ROUND_UP);
     },
     2},
    {"multiply by 0",
     [](void *d, BCDIIType t) {
         return BCDIIMul(d, t, oneValue, 0x0100, zeroValue, 0x0100, BCDII_ROUND_UP);
     },
     2},
    {"from 0", [](void *d, BCDIIType t) { return BCDIIGetFromInt64(d, t, 0, 0); }, 2},
    {"from 0.0", [](void *d, BCDIIType t) { return BCDIIGetFromDouble(d, 0.0, t); }, 2},
    {"from text 0", [](void *d, BCDIIType t) { return BCDIIFromString(d, t, "0"); }, 2},
};

const Type digitless[] = {{0, 0}, {0, 1}, {0, 2}, {0, 62}};

} // namespace

void tst_DecimalFormat::typesWithoutDigits_data()
{
    QTest::addColumn<const Write *>("write");
    QTest::addColumn<BCDIIType>("type");
    QTest::addColumn<int>("byte");
    for (Type t : digitless) {
        for (const Write &write : nanWrites)
            QTest::addRow("%s into %s", write.name, name(t).c_str()) << &write << t.word() << 101;
        for (const Write &write : zeroWrites) {
            QTest::addRow("%s into %s", write.name, name(t).c_str())
                << &write << t.word() << int {guardByte};
        }
    }
}

// NaN needs one byte whatever the type; zero needs those of its digits.
void tst_DecimalFormat::typesWithoutDigits()
{
    QFETCH(const Write *, write);
    QFETCH(BCDIIType, type);
    QFETCH(int, byte);
    Guarded memory;
    BYTE *const bcd = memory.take(1, true);
    QCOMPARE(write->run(bcd, type), write->status);
    QCOMPARE(int {bcd[0]}, byte);
    QVERIFY(memory.isIntact());
}

// No type is written beyond its bytes.
void tst_DecimalFormat::invalidDestinations()
{
    Random random(1);
    const BYTE one[] = {1, 0};
    const BYTE bad[] = {101};
    for (int nall = -128; nall < 128; ++nall) {
        for (int nfrac = -128; nfrac < 128; ++nfrac) {
            const Type t {nall, nfrac};
            const BCDIIType word = t.word();
            Guarded memory;
            BYTE *const bcd = memory.take(std::max(t.size(), 1), true);
            const BCDIIroundstyle rs = random.roundStyle();
            BCDIICopy(bcd, word, one, 0x0402, rs);
            BCDIICopy(bcd, word, bad, 0x0200, rs);
            BCDIIAdd(bcd, word, one, 0x0402, one, 0x0203, rs);
            BCDIIMul(bcd, word, one, 0x0402, one, 0x0203, rs);
            BCDIIGetFromInt64(bcd, word, -12345, 3);
            BCDIIGetFromDouble(bcd, -123.456, word);
            BCDIIGetFromDouble(bcd, 1e300, word);
            BCDIISetMax(bcd, word);
            BCDIISetMin(bcd, word);
            QVERIFY2(memory.isIntact(), name(t).c_str());
        }
    }
}

void tst_DecimalFormat::randomChecksAndConstants()
{
    Random random(14);
    Operand src;
    for (int i = 0; i < caseCount(); ++i) {
        src.draw(random, random.type());
        const Type t = src.type;
        BYTE *const bcd = src.memory.data();
        const UINT32 sign = src.number().digits == 0 ? 2 : src.number().negative ? 4 : 0;
        QCOMPARE(BCDIICheck(bcd, random.word(t)), sign);
        QCOMPARE(BCDIINeg(bcd, random.word(t)), sign == 2 ? 2U : 4U - sign);
        BCDIINeg(bcd, t.word());
        QVERIFY(src.memory.holds(src.bytes));
        const Oracle::Integer most = Oracle::tenTo(t.nall) - 1;
        BCDIISetMax(bcd, random.word(t));
        QVERIFY(src.memory.holds(Oracle::write(most, false, t)));
        BCDIISetMin(bcd, random.word(t));
        QVERIFY(src.memory.holds(Oracle::write(most, true, t)));
    }
}

// Bytes that are no value give some result, but nothing outside is read or written.
void tst_DecimalFormat::anyBytesAreSafe()
{
    Random random(15);
    Operand a;
    Operand b;
    Destination dst;
    const auto scramble = [&](Operand &o) {
        for (int i = 0; i < o.type.size(); ++i) {
            if (random.oneIn(4))
                o.memory.data()[i] = BYTE(random.bits());
        }
    };
    for (int i = 0; i < caseCount() / 4; ++i) {
        a.draw(random, random.type());
        b.draw(random, random.typeNear(a.type));
        scramble(a);
        scramble(b);
        const BCDIIroundstyle rs = random.roundStyle();
        const BCDIIType at = a.type.word();
        const BCDIIType bt = b.type.word();
        dst.draw(random, random.typeNear(b.type));
        const BCDIIType dt = dst.type.word();
        INT64 integer = 0;
        double real = 0;
        BCDIICopy(dst.memory.data(), dt, a.memory.data(), at, rs);
        BCDIIAdd(dst.memory.data(), dt, a.memory.data(), at, b.memory.data(), bt, rs);
        BCDIIMul(dst.memory.data(), dt, a.memory.data(), at, b.memory.data(), bt, rs);
        QVERIFY(dst.memory.isIntact());
        const int order = BCDIICmp(a.memory.data(), at, b.memory.data(), bt);
        QCOMPARE(BCDIICmp(b.memory.data(), bt, a.memory.data(), at), -order);
        BCDII2Int64(&integer, a.memory.data(), at, random.fractionDigits(), rs);
        BCDII2Double(&real, a.memory.data(), at);
        BCDIICheck(a.memory.data(), at);
        const std::string text = BCDII2StringSequence(a.memory.data(), at);
        QCOMPARE(int(text.size()),
                 std::max(a.type.nint(), 0) + (a.type.nfrac > 0 ? a.type.nfrac + 1 : 0) + 2);
        QVERIFY2(text.substr(0, text.find('\0')).find_first_not_of("-.0123456789") == text.npos,
                 (a.text() + " as " + text).c_str());
        BCDIINeg(a.memory.data(), at);
        QVERIFY(a.memory.isIntact());
    }
}

void tst_DecimalFormat::noAllocations()
{
    Random random(16);
    for (int i = 0; i < 2000; ++i) {
        const Type t = random.type();
        const Type d = random.typeNear(t);
        const std::vector<BYTE> a = random.value(t);
        const std::vector<BYTE> b = random.value(d);
        InternalBCDType self;
        BYTE result[40] = {};
        INT64 integer = 0;
        double real = 0;
        BCDIIType word = d.word();
        const std::size_t before = allocationCount();
        BCDIIAdd(result, d.word(), a.data(), t.word(), b.data(), d.word(), BCDII_ROUND_NEAREST);
        BCDIIMul(result, d.word(), a.data(), t.word(), b.data(), d.word(), BCDII_ROUND_NEAREST);
        BCDIICopy(result, d.word(), a.data(), t.word(), BCDII_ROUND_NEAREST);
        BCDIICmp(a.data(), t.word(), b.data(), d.word());
        BCDIICheck(result, d.word());
        BCDIINeg(result, d.word());
        BCDII2Int64(&integer, a.data(), t.word(), 2, BCDII_ROUND_NEAREST);
        BCDIIGetFromInt64(result, d.word(), 12345, 2);
        BCDII2Double(&real, a.data(), t.word());
        BCDIIGetFromDouble(result, 1.25, d.word());
        BCDIIInit(&self, t.word());
        BCDIIFromString(&self, "12.5", nullptr);
        BCDIIFromString(result, word, "-1234567.123456789");
        QCOMPARE(allocationCount(), before);
    }
    const BYTE value[32] = {1};
    const std::size_t before = allocationCount();
    const std::string text = BCDII2StringSequence(value, 0x3F00);
    QCOMPARE(allocationCount(), before + 1);
    QCOMPARE(text.size(), std::size_t(65));
}

QTEST_GUILESS_MAIN(tst_DecimalFormat)

#include "tst_decimalformat.moc"
