// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "bcdiivalue.h"
#include "decimalcases.h"

#include <QRegularExpression>
#include <QSet>
#include <QTest>

#include <random>
#include <unordered_map>

namespace {

using Money = BCDIIValue<15, 2>;

constexpr std::uint32_t notANumber = 48;
constexpr std::uint32_t tooLarge = 17;
constexpr std::uint32_t lostDigits = 80;

constexpr BCDIIType typeWord(int nall, int nfrac)
{
    return static_cast<BCDIIType>((nall & 0xFF) << 8 | (nfrac & 0xFF));
}

// What a text must give, worked out with big integers.
struct Expected
{
    std::uint32_t status = notANumber;
    std::vector<BYTE> bytes; // of a number
};

Expected expected(const QString &text, Oracle::Type t)
{
    static const QRegularExpression number(
        QStringLiteral("\\A([+-]?)([0-9]*)(?:[.,]([0-9]+))?\\z"));
    const QRegularExpressionMatch match = number.match(text);
    const QString digits = match.captured(2) + match.captured(3);
    if (!match.hasMatch() || digits.isEmpty())
        return {};
    Oracle::Integer all = 0;
    for (QChar c : digits)
        all = all * 10 + c.digitValue();
    const int fraction = int(match.capturedLength(3));
    if (t.nint() + fraction < 0 ? all > 0 : all >= Oracle::tenTo(t.nint() + fraction))
        return {tooLarge, {}};
    if (t.nfrac >= fraction)
        all *= Oracle::tenTo(t.nfrac - fraction);
    else if (all % Oracle::tenTo(fraction - t.nfrac) != 0)
        return {lostDigits, {}};
    else
        all /= Oracle::tenTo(fraction - t.nfrac);
    const bool isNegative = match.captured(1) == QLatin1String("-") && all != 0;
    return {all == 0 ? 2U : isNegative ? 4U : 0U, Oracle::write(all, isNegative, t)};
}

// Mostly numbers, and sometimes something else somewhere.
QByteArray randomText(std::mt19937_64 &random, int length)
{
    QByteArray text;
    const auto below = [&random](int n) { return int(random() % unsigned(n)); };
    if (below(3) == 0)
        text += "+--"[below(3)];
    const int count = below(length);
    const int point = below(3) == 0 ? -1 : below(length);
    for (int i = 0; i < count; ++i) {
        if (i == point)
            text += ".,"[below(2)];
        text += below(3) == 0 ? char('0' + below(10)) : '0';
    }
    if (below(6) == 0)
        text.insert(below(int(text.size()) + 1), "-+.,e 'x\0\xB2"[below(10)]);
    return text;
}

template<typename Value> void compareLimits()
{
    Value value;
    BCDIISetMax(value.data(), Value::type());
    QCOMPARE(Value::highest(), value);
    QCOMPARE(Value::highest().status(), 0U);
    BCDIISetMin(value.data(), Value::type());
    QCOMPARE(Value::lowest(), value);
    QCOMPARE(Value::lowest().status(), 4U);
    QCOMPARE(Value::smallest().status(), 0U);
    QCOMPARE(Value::smallest().toUnits(), INT64 {1});
}

} // namespace

class tst_BcdiiValue : public QObject
{
    Q_OBJECT

private slots:
    void arithmetic();
    void comparison();
    void texts();
    void literals();
    void conversions();
    void units();
    void numericLimits();
    void hashOfEquals();
    void parse_data();
    void parse();
    void parseRefusesInvalidType();
    void parseEndsWhereTheTextDoes();
    void parseHeader();
    void parseLikeOracle_data();
    void parseLikeOracle();
    void parseValue();
    void parseQString_data();
    void parseQString();
    void constants();
    void limits();
    void hashIgnoresTheType_data();
    void hashIgnoresTheType();
    void hashTellsApart();
    void hashOfInvalid();
    void keys();
};

void tst_BcdiiValue::arithmetic()
{
    const Money price = Money::fromString("19.90");
    QCOMPARE((price * Money(3) + Money::fromString("4.50")).toString(), std::string("64.20"));
    QCOMPARE((Money(1) - price).toString(), std::string("-18.90"));
    Money m = price;
    m += Money(1);
    m -= Money::fromString("0.45");
    m *= Money(-2);
    QCOMPARE(m.toString(), std::string("-40.90"));
    QCOMPARE((-m).toString(), std::string("40.90"));
    QCOMPARE((+m).toString(), std::string("-40.90"));

    UINT32 status = 0;
    using Rate = BCDIIValue<5, 4>;
    const Rate rate = Rate::fromString("0.1905");
    QCOMPARE(Money::product(price, rate, BCDII_ROUND_DOWN, &status).toString(),
             std::string("3.79"));
    QCOMPARE(status, 64U);
    QCOMPARE(Rate::sum(rate, rate, BCDII_ROUND_TRUNC, &status).toString(), std::string("0.3810"));
    QCOMPARE(status, 0U);

    const Money nothing = Money::highest() + Money::smallest();
    QVERIFY(nothing.isNan());
    QVERIFY((nothing + price).isNan());
    QVERIFY((price * nothing).isNan());
    QVERIFY((-nothing).isNan());
}

void tst_BcdiiValue::comparison()
{
    const auto half = BCDIIValue<2, 1>::fromString("0.5");
    QVERIFY(half == (BCDIIValue<5, 3>::fromString("0.500")));
    QVERIFY(half < Money(1));
    QVERIFY(Money(-1) < half);
    QVERIFY(Money(2) >= Money(2));
    QVERIFY(half != Money(1));
    const Money nan = Money::nan();
    QVERIFY(nan != nan);
    QVERIFY(!(nan < half) && !(nan > half) && !(half <= nan));
    QVERIFY(Money().isZero() && !nan.isZero() && !half.isZero());
    QVERIFY(Money(-1).isNegative() && !Money(1).isNegative() && !nan.isNegative());
}

void tst_BcdiiValue::texts()
{
    QCOMPARE(Money().toString(), std::string("0.00"));
    QCOMPARE(Money::fromString("-.5").toString(), std::string("-0.50"));
    QCOMPARE((BCDIIValue<3, 0>().toString()), std::string("0"));
    QCOMPARE((BCDIIValue<3, -2>::fromString("12345").toString()), std::string("12300"));
    QCOMPARE(Money::nan().toString(), std::string("NaN"));
    QCOMPARE(Money::fromQString(QStringLiteral("7,125")).toQString(), QStringLiteral("7.13"));
    UINT32 status = 0;
    QVERIFY(Money::fromString(std::string("none"), &status).isNan());
    QCOMPARE(status, 48U);
    QVERIFY(Money::fromString("12345678901234", &status).isNan());
    QCOMPARE(status, 17U);
    Cases::Random random(17);
    for (int i = 0; i < 1000; ++i) {
        using Value = BCDIIValue<40, 13>;
        Value value;
        const std::vector<BYTE> bytes = random.value({40, 13});
        QCOMPARE(bytes.size(), Value::size());
        std::copy(bytes.begin(), bytes.end(), value.data());
        QVERIFY(Value::fromString(value.toString()) == value);
        QVERIFY(Value::fromQString(value.toQString()) == value);
    }
}

void tst_BcdiiValue::literals()
{
    using namespace BCDIILiterals;
    const auto value = 12.50_bcd;
    static_assert(std::is_same_v<decltype(value), const BCDIIValue<4, 2>>);
    QCOMPARE(value.toString(), std::string("12.50"));
    static_assert(std::is_same_v<decltype(1'000_bcd), BCDIIValue<4, 0>>);
    QCOMPARE((1'000_bcd).toString(), std::string("1000"));
    static_assert(std::is_same_v<decltype(0.05_bcd), BCDIIValue<2, 2>>);
    QVERIFY(-0.05_bcd < 0_bcd);
    QCOMPARE((0.05_bcd).toString(), std::string("0.05"));
}

void tst_BcdiiValue::conversions()
{
    UINT32 status = 0;
    QCOMPARE(Money::fromString("-2.5").toInt64(), INT64(-3));
    QCOMPARE(Money::fromString("-2.5").toInt64(BCDII_ROUND_TRUNC, &status), INT64(-2));
    QCOMPARE(status, 68U);
    QCOMPARE(Money::nan().toInt64(BCDII_ROUND_TRUNC, &status), INT64(0));
    QCOMPARE(status, 176U);
    QCOMPARE(Money::fromDouble(2.675).toString(), std::string("2.68"));
    QVERIFY(Money::fromDouble(std::nan("")).isNan());
    QVERIFY(Money::fromDouble(1e300).isNan());
    QCOMPARE(Money::fromString("-12.25").toDouble(), -12.25);
    QVERIFY(std::isnan(Money::nan().toDouble()));
    QCOMPARE((BCDIIValue<3, -2>(-5, &status).status()), 2U); // cut to zero, without a sign
    QCOMPARE(status, 66U);
    QVERIFY((BCDIIValue<3, 0>(1000, &status).isNan()));
    QCOMPARE(status, 17U);
    QCOMPARE((Money::fromString("9.96").to<BCDIIValue<3, 1>>().toString()), std::string("10.0"));
    QVERIFY((Money::fromString("9.96").to<BCDIIValue<2, 1>>(BCDII_ROUND_NEAREST, &status).isNan()));
    QCOMPARE(status, 81U);
}

void tst_BcdiiValue::units()
{
    UINT32 status = 77;
    QCOMPARE(Money::fromUnits(1990, &status).toString(), std::string("19.90"));
    QCOMPARE(status, 0U);
    QCOMPARE(Money::fromUnits(-5, &status).toString(), std::string("-0.05"));
    QCOMPARE(status, 4U);
    QVERIFY(Money::fromUnits(0, &status).isZero());
    QCOMPARE(status, 2U);
    using Small = BCDIIValue<3, 1>;
    const Small tooLow = Small::fromUnits(-1000, &status);
    QCOMPARE(status, 17U);
    QCOMPARE(tooLow.status(), 160U); // as any other NaN
    QCOMPARE(Small(-100, &status).status(), 160U);
    QCOMPARE(status, 17U);

    QCOMPARE(Money::fromString("-19.90").toUnits(&status), INT64 {-1990});
    QCOMPARE(status, 4U);
    QCOMPARE(tooLow.toUnits(&status), INT64 {0});
    QCOMPARE(status, 176U);
    using Large = BCDIIValue<30, 4>;
    QCOMPARE(Large::highest().toUnits(&status), INT64 {0});
    QCOMPARE(status, 17U);
    for (INT64 units : {INT64 {0}, INT64 {7}, std::numeric_limits<INT64>::max(),
                        std::numeric_limits<INT64>::min()})
        QCOMPARE(Large::fromUnits(units).toUnits(), units);
    using Thousands = BCDIIValue<4, -3>;
    QCOMPARE(Thousands::fromUnits(12).toString(), std::string("12000"));
    QCOMPARE(Thousands::fromString("12000").toUnits(), INT64 {12});
}

void tst_BcdiiValue::numericLimits()
{
    using Limits = std::numeric_limits<Money>;
    static_assert(Limits::is_specialized && Limits::is_exact && Limits::digits10 == 15);
    static_assert(!Limits::is_integer && std::numeric_limits<BCDIIValue<5, 0>>::is_integer);
    static_assert(sizeof(Money) == 8 && std::is_trivially_copyable_v<Money>);
    QCOMPARE(Limits::max().toString(), std::string("9999999999999.99"));
    QCOMPARE(Limits::lowest().toString(), std::string("-9999999999999.99"));
    QCOMPARE(Limits::min().toString(), std::string("0.01"));
    QCOMPARE(Limits::epsilon().status(), 0U);
    QCOMPARE((BCDIIValue<4, 1>::smallest().toString()), std::string("0.1"));
    QVERIFY(Limits::quiet_NaN().isNan());
}

void tst_BcdiiValue::hashOfEquals()
{
    const std::hash<Money> hash;
    QCOMPARE(hash(Money(3) - Money(1)), hash(Money::fromString("2.00")));
    QVERIFY(hash(Money(1)) != hash(Money(2)));
    QVERIFY(hash(Money(1)) != hash(Money(-1)));
}

void tst_BcdiiValue::parse_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<int>("nall");
    QTest::addColumn<int>("nfrac");
    QTest::addColumn<std::uint32_t>("status");
    QTest::addColumn<std::size_t>("position");
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QByteArray>("points");

    const auto row = [](const char *name, const QByteArray &text, int nall, int nfrac,
                        std::uint32_t status, int position, const char *bytes,
                        const char *points = ".,") {
        QTest::newRow(name) << text << nall << nfrac << status << std::size_t(position)
                            << QByteArray::fromHex(bytes) << QByteArray(points);
    };
    row("number", "123.45", 5, 2, 0, 6, "01172d");
    row("comma", "123,45", 5, 2, 0, 6, "01172d");
    row("negative", "-123.45", 5, 2, 4, 7, "81172d");
    row("plus", "+7", 5, 2, 0, 2, "000700");
    row("integer", "7", 5, 2, 0, 1, "000700");
    row("no integer digit", ".5", 5, 2, 0, 2, "000032");
    row("leading zeros", "000000007.5", 5, 2, 0, 11, "000732");
    row("trailing zeros", "7.50000000", 5, 2, 0, 10, "000732");
    row("zero", "0", 5, 2, 2, 1, "000000");
    row("negative zero", "-0.000", 5, 2, 2, 6, "000000");
    row("zeros", QByteArray(5000, '0'), 1, -62, 2, 5000, "00");
    row("odd fraction", "1234.5", 5, 1, 0, 6, "0c2232");
    row("thousands", "4560", 3, -1, 0, 4, "2d3c");
    row("behind the point", "0.0012", 2, 4, 0, 6, "0c");
    row("negative at the sign's byte", "-99", 2, 0, 4, 3, "e3");

    row("empty", "", 5, 2, notANumber, 0, "65");
    row("sign alone", "-", 5, 2, notANumber, 1, "65");
    row("two signs", "+-1", 5, 2, notANumber, 1, "65");
    row("point alone", ".", 5, 2, notANumber, 0, "65");
    row("sign and point", "-,", 5, 2, notANumber, 1, "65");
    row("letters", "abc", 5, 2, notANumber, 0, "65");
    row("letters behind", "12abc", 5, 2, notANumber, 2, "65");
    row("unit behind", "12.50 EUR", 5, 2, notANumber, 5, "65");
    row("blank before", " 1", 5, 2, notANumber, 0, "65");
    row("blank behind", "1 ", 5, 2, notANumber, 1, "65");
    row("line feed behind", "1\n", 5, 2, notANumber, 1, "65");
    row("exponent", "1e3", 5, 2, notANumber, 1, "65");
    row("grouping", "1,234.50", 9, 4, notANumber, 5, "65");
    row("apostrophe", "1'234", 9, 4, notANumber, 1, "65");
    row("point at the end", "12.", 5, 2, notANumber, 2, "65");
    row("two points", "1..2", 5, 2, notANumber, 1, "65");
    row("sign behind", "1-", 5, 2, notANumber, 1, "65");
    row("NUL", QByteArray("12\0003", 4), 5, 2, notANumber, 2, "65");
    row("high byte", "1\xB2", 5, 2, notANumber, 1, "65");
    row("not a number", "NaN", 5, 2, notANumber, 0, "65");
    row("hexadecimal", "0x10", 5, 2, notANumber, 1, "65");
    row("no number before too large", "12345678x", 5, 2, notANumber, 8, "65");

    row("too large", "1234", 5, 2, tooLarge, 3, "65");
    row("too large behind zeros", "-0001234.5", 5, 2, tooLarge, 7, "65");
    row("too large and too fine", "1234.567", 5, 2, tooLarge, 3, "65");
    row("too large for thousands", "12345", 3, -1, tooLarge, 4, "65");
    row("no integer digits", "1.5", 2, 2, tooLarge, 0, "65");
    row("too large behind the point", "0.05", 2, 4, tooLarge, 3, "65");
    row("far too large", QByteArray(5000, '9'), 63, 0, tooLarge, 63, "65");

    row("too fine", "1.239", 5, 2, lostDigits, 4, "65");
    row("too fine behind zeros", "1.2300009", 5, 2, lostDigits, 8, "65");
    row("too fine for thousands", "1239", 3, -1, lostDigits, 3, "65");
    row("all too fine", "0.001", 5, 2, lostDigits, 4, "65");
    row("far too fine", "0." + QByteArray(4000, '0') + "1", 63, 62, lostDigits, 4002, "65");

    row("only a point", "1,5", 5, 2, notANumber, 1, "65", ".");
    row("only a comma", "1,5", 5, 2, 0, 3, "000132", ",");
    row("no point", "1.5", 5, 2, notANumber, 1, "65", "");
    row("another point", "1'5", 5, 2, 0, 3, "000132", "'");
}

void tst_BcdiiValue::parse()
{
    QFETCH(const QByteArray, text);
    QFETCH(const int, nall);
    QFETCH(const int, nfrac);
    QFETCH(const std::uint32_t, status);
    QFETCH(const std::size_t, position);
    QFETCH(const QByteArray, points);
    QFETCH(const QByteArray, bytes);
    QByteArray data(40, '\x5A');
    // Exactly the bytes of the text, so that a sanitizer sees every step outside.
    const std::vector<char> exact(text.begin(), text.end());
    std::size_t end = 77777;
    QCOMPARE(BCDIIParse(data.data(), typeWord(nall, nfrac), exact.data(), exact.size(), &end,
                        points.constData()),
             status);
    QCOMPARE(end, position);
    QCOMPARE(data.left(bytes.size()).toHex(), bytes.toHex());
    QCOMPARE(data.mid(bytes.size()), QByteArray(40 - bytes.size(), '\x5A'));
    QCOMPARE(BCDIIParse(data.data(), typeWord(nall, nfrac), exact.data(), exact.size(), nullptr,
                        points.constData()),
             status);
}

void tst_BcdiiValue::parseRefusesInvalidType()
{
    BYTE byte = 7;
    std::size_t end = 77;
    QCOMPARE(BCDIIParse(&byte, typeWord(0, 0), "1", 1, &end), 32U);
    QCOMPARE(byte, BYTE {101});
    QCOMPARE(end, std::size_t {0});
    QCOMPARE(BCDIIParse(&byte, typeWord(64, 0), "1", 1, &end), 32U);
    QCOMPARE(BCDIIParse(&byte, typeWord(5, 63), "1", 1, &end), 32U);
    QCOMPARE(BCDIIParse(&byte, 0xABCD0000U | typeWord(2, 0), "12", 2, &end), 0U);
    QCOMPARE(byte, BYTE {12});
}

//! Whatever stands behind it.
void tst_BcdiiValue::parseEndsWhereTheTextDoes()
{
    BYTE bytes[] = {7, 7};
    std::size_t end = 77;
    QCOMPARE(BCDIIParse(bytes, typeWord(3, 1), "12.5", 3, &end), notANumber);
    QCOMPARE(end, std::size_t {2});
    QCOMPARE(BCDIIParse(bytes, typeWord(3, 1), "12.5", 1, &end), 0U);
    QCOMPARE(end, std::size_t {1});
    QCOMPARE(bytes[0], BYTE {1});
}

void tst_BcdiiValue::parseHeader()
{
    InternalBCDType value {};
    BCDIIInit(&value, typeWord(5, 2));
    std::size_t end = 0;
    QCOMPARE(BCDIIParse(&value, "-1.5", 4, &end), 4U);
    QCOMPARE(end, std::size_t {4});
    QCOMPARE(BCDIIGetType(&value), typeWord(5, 2)); // the text's digits do not decide
    QCOMPARE(BCDII2StringSequence(&value).c_str(), "-1.50");
    QCOMPARE(BCDIIParse(&value, "1;5", 3, &end), notANumber);
    QCOMPARE(end, std::size_t {1});
    QCOMPARE(BCDIICheck(&value), 160U);
    QCOMPARE(BCDIIParse(&value, "1;5", 3, &end, ";"), 0U);
}

void tst_BcdiiValue::parseLikeOracle_data()
{
    QTest::addColumn<int>("length");
    for (int length : {3, 6, 12, 30, 80})
        QTest::addRow("up to %d digits", length) << length;
}

void tst_BcdiiValue::parseLikeOracle()
{
    QFETCH(const int, length);
    std::mt19937_64 random(std::uint64_t(20240611 + length));
    for (int i = 0; i < 5000; ++i) {
        Oracle::Type t;
        t.nall = 1 + int(random() % unsigned(std::min(length, 63)));
        t.nfrac = std::clamp(int(random() % unsigned(length + 8)) - 4, -62, 62);
        const QByteArray text = randomText(random, length);
        const Expected wanted = expected(QString::fromLatin1(text), t);
        InternalBCDType value {};
        const std::uint32_t status =
            BCDIIParse(value.data, t.word(), text.constData(), std::size_t(text.size()));
        const QByteArray context = text + " as " + QByteArray::number(t.nall) + ','
            + QByteArray::number(t.nfrac) + " gives " + QByteArray::number(status);
        QVERIFY2(status == wanted.status, context.constData());
        if (wanted.bytes.empty())
            QVERIFY2(value.data[0] == 101, context.constData());
        else
            QVERIFY2(std::equal(wanted.bytes.begin(), wanted.bytes.end(), value.data),
                     context.constData());
    }
}

void tst_BcdiiValue::parseValue()
{
    const auto price = Money::parse("19.90");
    QVERIFY(price);
    QCOMPARE(price.value, Money::fromUnits(1990));
    QCOMPARE(price.position, std::size_t {5});
    QCOMPARE(price.status, 0U);
    QVERIFY(Money::parse(std::string("-0")));

    const auto grouped = Money::parse("1,234.50");
    QVERIFY(!grouped);
    QVERIFY(grouped.value.isNan());
    QCOMPARE(grouped.position, std::size_t {5});
    QCOMPARE(Money::parse("1,23", ".").position, std::size_t {1});
    QCOMPARE(Money::parse("1e3").position, std::size_t {1});
    QCOMPARE(Money::parse("0.005").status, lostDigits);
    QCOMPARE(Money::parse("12345678901234").status, tooLarge);
    QVERIFY(!Money::parse(std::string_view()));

    // The other one still takes what it finds.
    QCOMPARE(Money::fromString("1,234.50").toString(), std::string("1.23"));
    QCOMPARE(Money::fromString("1e3").toString(), std::string("1.00"));
}

void tst_BcdiiValue::parseQString_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<std::size_t>("position");
    QTest::addColumn<bool>("isNumber");

    QTest::newRow("number") << QStringLiteral("19.90") << std::size_t {5} << true;
    QTest::newRow("null") << QString() << std::size_t {0} << false;
    QTest::newRow("euro") << QStringLiteral("12\u20AC") << std::size_t {2} << false;
    QTest::newRow("surrogates") << QStringLiteral("\U0001F600") << std::size_t {0} << false;
    QTest::newRow("other digits") << QStringLiteral("1\u0662") << std::size_t {1} << false;
    QTest::newRow("superscript") << QStringLiteral("1\u00B2") << std::size_t {1} << false;
    QTest::newRow("wide digit") << QStringLiteral("\uFF11") << std::size_t {0} << false;
    QTest::newRow("like a digit in its low byte")
        << QStringLiteral("1\u0132") << std::size_t {1} << false;
    QTest::newRow("minus sign") << QStringLiteral("\u22121") << std::size_t {0} << false;
    QTest::newRow("behind surrogates is not reached")
        << QStringLiteral("1.5\U0001F600") << std::size_t {3} << false;
}

void tst_BcdiiValue::parseQString()
{
    QFETCH(const QString, text);
    QFETCH(const std::size_t, position);
    QFETCH(const bool, isNumber);
    const auto parsed = Money::parse(text);
    QCOMPARE(parsed.position, position);
    QCOMPARE(bool(parsed), isNumber);
    QCOMPARE(parsed.value.isNan(), !isNumber);
    QVERIFY(!Money::parse(QStringLiteral("1\u20AC5"), "?"));
}

void tst_BcdiiValue::constants()
{
    static_assert(Money::digits == 15 && Money::fractionDigits == 2);
    static_assert(BCDIIValue<3, -2>::digits == 3 && BCDIIValue<3, -2>::fractionDigits == -2);
    // Known to the compiler.
    static_assert(!Money::highest().isNan() && !Money::highest().isNegative());
    static_assert(Money::lowest().isNegative());
    static_assert(!Money::smallest().isZero() && !Money::smallest().isNegative());
    static_assert(std::numeric_limits<Money>::quiet_NaN().isNan());
    static_assert(!(std::numeric_limits<Money>::max)().isNan());
    QCOMPARE(std::numeric_limits<Money>::max() - std::numeric_limits<Money>::epsilon()
                 + Money::smallest(),
             Money::highest());
}

void tst_BcdiiValue::limits()
{
    compareLimits<Money>();
    compareLimits<BCDIIValue<1, 0>>();
    compareLimits<BCDIIValue<1, 1>>();
    compareLimits<BCDIIValue<1, 2>>();
    compareLimits<BCDIIValue<2, 1>>();
    compareLimits<BCDIIValue<3, 1>>();
    compareLimits<BCDIIValue<2, 4>>();
    compareLimits<BCDIIValue<2, 5>>();
    compareLimits<BCDIIValue<3, -1>>();
    compareLimits<BCDIIValue<3, -2>>();
    compareLimits<BCDIIValue<1, -62>>();
    compareLimits<BCDIIValue<63, 0>>();
    compareLimits<BCDIIValue<63, 62>>();
}

void tst_BcdiiValue::hashIgnoresTheType_data()
{
    QTest::addColumn<QByteArray>("text");
    for (const char *text : {"0", "1", "-1", "1.5", "-1.5", "10", "100", "-900", "0.1", "-0.07",
                             "99.99", "12300", "-123.45"})
        QTest::newRow(text) << QByteArray(text);
}

template<typename Value> std::size_t hashOf(const QByteArray &text)
{
    const auto parsed = Value::parse(text.toStdString());
    return parsed ? std::hash<Value>()(parsed.value) : 0;
}

void tst_BcdiiValue::hashIgnoresTheType()
{
    QFETCH(const QByteArray, text);
    const std::size_t wanted = hashOf<BCDIIValue<40, 20>>(text);
    QVERIFY(wanted != 0);
    int compared = 0;
    for (std::size_t hash :
         {hashOf<Money>(text), hashOf<BCDIIValue<63, 0>>(text), hashOf<BCDIIValue<63, 62>>(text),
          hashOf<BCDIIValue<5, 2>>(text), hashOf<BCDIIValue<6, 3>>(text),
          hashOf<BCDIIValue<7, 1>>(text), hashOf<BCDIIValue<2, 2>>(text),
          hashOf<BCDIIValue<3, -2>>(text), hashOf<BCDIIValue<9, -1>>(text)}) {
        if (hash == 0)
            continue; // the type does not have the number
        QCOMPARE(hash, wanted);
        ++compared;
    }
    QVERIFY(compared >= 3);
}

void tst_BcdiiValue::hashTellsApart()
{
    std::unordered_map<std::size_t, QByteArray> hashes;
    for (int units = -1000; units <= 1000; ++units) {
        const auto value = Money::fromUnits(units);
        const std::size_t hash = std::hash<Money>()(value);
        QVERIFY2(hashes.emplace(hash, value.toString().c_str()).second, value.toString().c_str());
    }
    // The same pairs at other places.
    const char *const texts[] = {"0.0012", "0.12", "12", "1200", "120000"};
    for (const char *text : texts) {
        for (const char *other : texts)
            QCOMPARE((hashOf<BCDIIValue<12, 4>>(text) == hashOf<BCDIIValue<12, 4>>(other)),
                     text == other);
    }
}

void tst_BcdiiValue::hashOfInvalid()
{
    const std::hash<Money> hash;
    Money nan = Money::highest();
    nan.data()[0] = 101;
    QCOMPARE(hash(nan), hash(Money::nan()));
    nan.data()[0] = 101 | 0x80;
    QCOMPARE(hash(nan), hash(Money::nan()));
    QCOMPARE(hash(Money::nan()), (std::hash<BCDIIValue<1, 0>>()(BCDIIValue<1, 0>::nan())));
    Money negativeZero;
    negativeZero.data()[0] = 0x80;
    QCOMPARE(hash(negativeZero), hash(Money()));
}

void tst_BcdiiValue::keys()
{
    QSet<Money> set;
    std::unordered_map<Money, int> map;
    for (int i = 0; i < 300; ++i) {
        set.insert(Money(i % 100));
        ++map[Money(i % 100)];
    }
    QCOMPARE(set.size(), 100);
    QCOMPARE(map.size(), std::size_t {100});
    QCOMPARE(map.at(Money::fromString("7.00")), 3);
    QVERIFY(set.contains(Money(99)) && !set.contains(Money::fromString("0.5")));
}

QTEST_GUILESS_MAIN(tst_BcdiiValue)

#include "tst_bcdiivalue.moc"
