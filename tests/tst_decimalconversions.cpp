// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "decimalcases.h"

#include <QTest>

#include <bit>
#include <cmath>
#include <limits>

using namespace Cases;

//! Integers and doubles as values, and values as integers and doubles.
class tst_DecimalConversions : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { announce(); }
    void fromIntegerExamples_data();
    void fromIntegerExamples();
    void toIntegerExamples_data();
    void toIntegerExamples();
    void toDoubleExamples();
    void typesWithoutDigits();
    void fromDoubleExamples_data();
    void fromDoubleExamples();
    void fromDoubleWithoutNumber();
    void randomFromIntegers();
    void randomToIntegers();
    void randomFromDoubles();
    void randomToDoubles();
};

void tst_DecimalConversions::fromIntegerExamples_data()
{
    QTest::addColumn<qlonglong>("integer");
    QTest::addColumn<int>("fd");
    QTest::addColumn<int>("type");
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<uint>("status");
    const auto row = [](qlonglong i, int fd, int type, const char *bytes, uint status) {
        QTest::addRow("%lld fd %d to %04x", i, fd, unsigned(type))
            << i << fd << type << QByteArray(bytes) << status;
    };
    row(12345, 2, 0x0502, "01172d", 0);
    row(12345, 2, 0x0401, "011728", 64);
    row(12345, 2, 0x0402, "65c3", 17);
    row(12345, 1, 0x0501, "0c2232", 0);
    row(12345, -1, 0x0600, "0c2232", 0);
    row(-5, 1, 0x0100, "80", 70);
    row(-12345, 2, 0x0402, "e5c3", 21);
    row(0, 5, 0x0402, "0000", 2);
    row(std::numeric_limits<qlonglong>::min(), 0, 0x1300, "", 4);
    row(5, std::numeric_limits<int>::max(), 0x0402, "0000", 2);
    row(5, std::numeric_limits<int>::min(), 0x0402, "65c3", 17);
}

void tst_DecimalConversions::fromIntegerExamples()
{
    QFETCH(qlonglong, integer);
    QFETCH(int, fd);
    QFETCH(int, type);
    QFETCH(QByteArray, bytes);
    QFETCH(uint, status);
    Guarded memory;
    const int size = typeOf(type).size();
    memory.take(size, true);
    QCOMPARE(BCDIIGetFromInt64(memory.data(), BCDIIType(type), integer, fd), status);
    if (integer == std::numeric_limits<qlonglong>::min())
        QCOMPARE(textOf(memory.data(), {19, 0}), std::string("-9223372036854775808"));
    else
        QCOMPARE(QByteArray(reinterpret_cast<char *>(memory.data()), size).toHex(), bytes);
    QVERIFY(memory.isIntact());
}

void tst_DecimalConversions::toIntegerExamples_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<int>("type");
    QTest::addColumn<int>("fd");
    QTest::addColumn<int>("style");
    QTest::addColumn<uint>("status");
    QTest::addColumn<qlonglong>("result");
    constexpr qlonglong unwritten = 4242;
    const auto row = [](const char *text, int type, int fd, int style, uint status,
                        qlonglong result) {
        QTest::addRow("%s fd %d style %d", text, fd, style)
            << QByteArray(text) << type << fd << style << status << result;
    };
    row("123.45", 0x0502, 1, 0, 64, 1235);
    row("123.45", 0x0502, 2, 0, 0, 12345);
    row("123.45", 0x0502, -2, BCDII_ROUND_TRUNC, 64, 1);
    row("-123.45", 0x0502, -2, BCDII_ROUND_UP, 68, -1);
    row("0.4", 0x0201, 0, 0, 66, 0);
    row("0", 0x0201, 7, 0, 2, 0);
    row("9223372036854775807", 0x1300, 0, 0, 0, 9223372036854775807);
    row("9223372036854775808", 0x1300, 0, 0, 17, unwritten);
    row("-9223372036854775808", 0x1300, 0, 0, 4, std::numeric_limits<qlonglong>::min());
    row("-9223372036854775809", 0x1300, 0, 0, 17, unwritten);
    row("9999999999999999999.5", 0x1401, 0, 0, 17, unwritten); // a carry overflows
    row("1", 0x0100, 2147483647, 0, 17, unwritten);
    row("1", 0x0100, -2147483647 - 1, BCDII_ROUND_UP, 64, 1);
}

void tst_DecimalConversions::toIntegerExamples()
{
    QFETCH(QByteArray, text);
    QFETCH(int, type);
    QFETCH(int, fd);
    QFETCH(int, style);
    QFETCH(uint, status);
    QFETCH(qlonglong, result);
    INT64 integer = 4242;
    QCOMPARE(BCDII2Int64(&integer, valueOf(typeOf(type), text).data(), BCDIIType(type), fd,
                         static_cast<BCDIIroundstyle>(style)),
             status);
    QCOMPARE(qlonglong(integer), result);
}

void tst_DecimalConversions::toDoubleExamples()
{
    double real = 42;
    const BYTE oneAndAHalf[] = {1, 50};
    QCOMPARE(BCDII2Double(&real, oneAndAHalf, 0x0201), 0U);
    QVERIFY(real == 1.5);
    const BYTE negative[] = {0x81, 50};
    QCOMPARE(BCDII2Double(&real, negative, 0x0201), 4U);
    QVERIFY(real == -1.5);
    const BYTE zero[] = {0x80, 0};
    QCOMPARE(BCDII2Double(&real, zero, 0x0201), 2U);
    QVERIFY(real == 0.0 && !std::signbit(real));
}

// Such a type has no bytes but the one that may hold a NaN: its only number is zero.
void tst_DecimalConversions::typesWithoutDigits()
{
    const BYTE one[] = {1};
    for (Type t : {Type {0, 0}, Type {0, 1}, Type {0, 62}, Type {-5, 2}}) {
        double real = 42;
        QCOMPARE(BCDII2Double(&real, one, t.word()), 2U);
        QCOMPARE(real, 0.0);
        INT64 integer = 42;
        QCOMPARE(BCDII2Int64(&integer, one, t.word(), 0, BCDII_ROUND_NEAREST), 2U);
        QCOMPARE(integer, INT64 {0});
    }
}

void tst_DecimalConversions::fromDoubleExamples_data()
{
    QTest::addColumn<double>("real");
    QTest::addColumn<int>("type");
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<uint>("status");
    const auto row = [](double real, int type, const char *bytes, uint status) {
        QTest::addRow("%g to %04x", real, unsigned(type))
            << real << type << QByteArray(bytes) << status;
    };
    row(1.005, 0x0302, "0100", 0);
    row(2.675, 0x0302, "0244", 0);
    row(-2.675, 0x0302, "8244", 4);
    row(-0.004, 0x0202, "00", 2);
    row(1000.0, 0x0300, "6500", 17);
    row(0.0, 0x0300, "0000", 2);
    row(0.5, 0x0300, "0001", 0);
    row(0.49999999999999994, 0x0300, "0001", 0); // 0.5 added rounds up to 1
    row(12.5, 0x0301, "0c32", 0);
}

void tst_DecimalConversions::fromDoubleExamples()
{
    QFETCH(double, real);
    QFETCH(int, type);
    QFETCH(QByteArray, bytes);
    QFETCH(uint, status);
    Guarded memory;
    const int size = typeOf(type).size();
    memory.take(size, true);
    QCOMPARE(BCDIIGetFromDouble(memory.data(), real, BCDIIType(type)), status);
    QCOMPARE(QByteArray(reinterpret_cast<char *>(memory.data()), size).toHex(), bytes);
    QVERIFY(memory.isIntact());
}

void tst_DecimalConversions::fromDoubleWithoutNumber()
{
    constexpr double infinite = std::numeric_limits<double>::infinity();
    for (Type t : {Type {5, 2}, Type {5, 1}, Type {1, 0}, Type {1, 1}, Type {63, 62}}) {
        Guarded memory;
        BYTE *const bcd = memory.take(t.size(), true);
        QCOMPARE(BCDIIGetFromDouble(bcd, std::nan(""), t.word()), 0U);
        QVERIFY(std::all_of(bcd, bcd + t.size(), [](BYTE b) { return b == 0; }));
        QCOMPARE(BCDIIGetFromDouble(bcd, infinite, t.word()), 17U);
        QCOMPARE(bcd[0], BYTE(101));
        QCOMPARE(BCDIIGetFromDouble(bcd, -infinite, t.word()), 17U);
        QCOMPARE(bcd[0], BYTE(101));
        QCOMPARE(BCDIIGetFromDouble(bcd, 1e308, t.word()), 17U);
        QCOMPARE(bcd[0], BYTE(101));
        QVERIFY(memory.isIntact());
    }
}

void tst_DecimalConversions::randomFromIntegers()
{
    Random random(8);
    Destination dst;
    for (int i = 0; i < caseCount(); ++i) {
        const INT64 integer = random.integer();
        const int fd = random.fractionDigits();
        dst.draw(random,
                 random.oneIn(2) ? Type {random.between(1, 24), random.between(0, 12)}
                                 : random.type());
        const std::string text = std::to_string(integer) + " fd " + std::to_string(fd);
        const UINT32 status =
            BCDIIGetFromUInt64(dst.memory.data(), random.word(dst.type), UINT64(integer), fd);
        QVERIFY(dst.check("from UInt64", status, Oracle::fromUInt64(UINT64(integer), fd, dst.type),
                          text));
        dst.draw(random, dst.type);
        const UINT32 signedStatus =
            BCDIIGetFromInt64(dst.memory.data(), random.word(dst.type), integer, fd);
        Outcome expected = Oracle::fromInt64(integer, fd, dst.type);
        if (expected.nan && integer < 0) { // byte 0 alone, as 0xE5
            expected.nan = false;
            std::vector<BYTE> bytes = dst.before;
            bytes[0] = 0xE5;
            expected.bytes = bytes;
        }
        QVERIFY(dst.check("from Int64", signedStatus, expected, text));

        INT64 back = 0;
        if ((signedStatus & ~4U) == 0 && fd >= -200 && fd <= 200) {
            QCOMPARE(
                BCDII2Int64(&back, dst.memory.data(), dst.type.word(), fd, BCDII_ROUND_NEAREST),
                integer < 0 ? 4U : 0U);
            QCOMPARE(back, integer);
        }
    }
}

void tst_DecimalConversions::randomToIntegers()
{
    Random random(9);
    Operand src;
    for (int i = 0; i < caseCount(); ++i) {
        src.draw(random,
                 random.oneIn(2) ? Type {random.between(1, 24), random.between(0, 12)}
                                 : random.type());
        const int fd = random.fractionDigits();
        const BCDIIroundstyle rs = random.roundStyle();
        const Oracle::IntegerOutcome expected = Oracle::toInt64(src.number(), fd, rs);
        constexpr INT64 unwritten = 0x1234567;
        INT64 integer = unwritten;
        const UINT32 status =
            BCDII2Int64(&integer, src.memory.data(), random.word(src.type), fd, rs);
        const bool same =
            status == expected.status && integer == (expected.written ? expected.value : unwritten);
        QVERIFY2(same, (src.text() + " fd " + std::to_string(fd)).c_str());
    }
}

void tst_DecimalConversions::randomFromDoubles()
{
    Random random(10);
    Destination dst;
    for (int i = 0; i < caseCount(); ++i) {
        dst.draw(random, random.type());
        double real = 0;
        switch (random.below(4)) {
        case 0:
            real = std::bit_cast<double>(random.bits());
            break;
        case 1:
            real = double(random.integer()) / Oracle::stepwisePower(random.between(0, 20));
            break;
        case 2:
            real = double(random.integer()) * Oracle::stepwisePower(-dst.type.nfrac);
            break;
        default:
            real =
                double(random.between(-2000, 2000)) / 8.0 * Oracle::stepwisePower(-dst.type.nfrac);
        }
        const UINT32 status = BCDIIGetFromDouble(dst.memory.data(), real, random.word(dst.type));
        const Outcome expected = Oracle::fromDouble(real, dst.type);
        QVERIFY(
            dst.check("from double", status, expected, QByteArray::number(real, 'g', 20).data()));
    }
}

void tst_DecimalConversions::randomToDoubles()
{
    Random random(11);
    Operand src;
    for (int i = 0; i < caseCount(); ++i) {
        src.draw(random, random.type());
        double real = 0;
        const UINT32 status = BCDII2Double(&real, src.memory.data(), random.word(src.type));
        const double expected = Oracle::toDouble(src.bytes.data(), src.type);
        QVERIFY2(real == expected, src.text().c_str());
        QCOMPARE(status, expected == 0 ? 2U : expected < 0 ? 4U : 0U);
    }
}

QTEST_GUILESS_MAIN(tst_DecimalConversions)

#include "tst_decimalconversions.moc"
