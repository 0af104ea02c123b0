// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "allocations.h"
#include "bcdii.h"
#include "bcdiioracle.h"
#include "bcdiivalue.h"

#include <QTest>

#include <sys/mman.h>
#include <unistd.h>

#include <bit>
#include <cstdlib>
#include <new>
#include <random>

namespace {

using Oracle::Number;
using Oracle::Outcome;
using Oracle::Type;

constexpr BYTE guardByte = 0xC3;
constexpr UINT64 seed = 20240611;

constexpr int defaultCases = 200000;

int caseCount()
{
    static const int cases = [] {
        bool ok = false;
        const int wanted = qEnvironmentVariableIntValue("VANTIX_BCDII_CASES", &ok);
        return ok ? wanted : defaultCases;
    }();
    return cases;
}

// Bytes that end, or begin, at a page that may not be touched. The bytes on the
// free side are guards.
class Guarded
{
public:
    Guarded()
        : m_page(std::size_t(sysconf(_SC_PAGESIZE)))
        , m_map(static_cast<BYTE *>(
              mmap(nullptr, 3 * m_page, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0)))
    {
        if (m_map == MAP_FAILED || mprotect(m_map + m_page, m_page, PROT_READ | PROT_WRITE) != 0)
            throw std::bad_alloc();
    }
    ~Guarded() { munmap(m_map, 3 * m_page); }
    Guarded(const Guarded &) = delete;
    Guarded &operator=(const Guarded &) = delete;

    // Takes size bytes at the end or the beginning, filled with guards.
    BYTE *take(int size, bool atEnd)
    {
        m_size = std::size_t(size);
        m_atEnd = atEnd;
        BYTE *const first = m_map + m_page;
        m_data = atEnd ? first + m_page - m_size : first;
        std::memset(atEnd ? m_data - guards : m_data, guardByte, m_size + guards);
        return m_data;
    }
    BYTE *take(const std::vector<BYTE> &bytes, bool atEnd)
    {
        std::copy(bytes.begin(), bytes.end(), take(int(bytes.size()), atEnd));
        return m_data;
    }
    BYTE *data() const { return m_data; }
    bool isIntact() const
    {
        const BYTE *const guard = m_atEnd ? m_data - guards : m_data + m_size;
        return std::all_of(guard, guard + guards, [](BYTE b) { return b == guardByte; });
    }
    bool holds(const std::vector<BYTE> &bytes) const
    {
        return isIntact() && std::equal(bytes.begin(), bytes.end(), m_data, m_data + m_size);
    }
    // What an outcome leaves: all bytes, or byte 0 of a NaN and the others untouched.
    bool holds(const Outcome &expected, const std::vector<BYTE> &before) const
    {
        if (!expected.nan)
            return holds(expected.bytes);
        std::vector<BYTE> bytes = before;
        bytes[0] = 101;
        return holds(bytes);
    }

private:
    static constexpr std::size_t guards = 32;
    std::size_t m_page;
    BYTE *m_map;
    BYTE *m_data = nullptr;
    std::size_t m_size = 0;
    bool m_atEnd = false;
};

class Random
{
public:
    explicit Random(UINT64 stream)
        : m_engine(seed * 1000003 + stream)
    {
    }
    UINT64 bits() { return m_engine(); }
    int below(int n) { return int(m_engine() % UINT64(n)); }
    int between(int low, int high) { return low + below(high - low + 1); }
    bool oneIn(int n) { return below(n) == 0; }

    Type type()
    {
        static constexpr int counts[] = {1, 2, 3, 8, 9, 15, 16, 17, 18, 19, 31, 32, 33, 34, 62, 63};
        static constexpr int places[] = {-62, -61, -2, -1, 0, 1, 2, 3, 4, 5, 6, 7, 16, 61, 62};
        Type t;
        t.nall = oneIn(2) ? counts[below(16)] : between(1, 63);
        if (oneIn(3))
            t.nfrac = places[below(15)];
        else if (oneIn(8))
            t.nfrac = between(-62, 62);
        else
            t.nfrac = between(0, std::min(t.nall, 62));
        return t;
    }
    // A type whose point lies near the one of another.
    Type typeNear(Type t)
    {
        if (oneIn(4))
            return type();
        t.nall = std::clamp(t.nall + between(-4, 8), 1, 63);
        t.nfrac = std::clamp(t.nfrac + between(-4, 4), -62, 62);
        return t;
    }
    BCDIIType word(Type t) { return t.word() | (oneIn(4) ? BCDIIType(bits()) << 16 : 0); }

    std::vector<BYTE> value(Type t)
    {
        static constexpr char common[] = "0099945";
        const int digits = oneIn(2) ? t.nall : between(0, t.nall);
        const int style = below(4);
        const int tail = oneIn(3) ? between(0, digits) : 0; // digits replaced at the end
        const char tailDigit = common[below(7)];
        std::string text(std::size_t(t.nall - digits), '0');
        for (int i = 0; i < digits; ++i) {
            if (i >= digits - tail)
                text += tailDigit;
            else
                text += style == 0 ? common[below(7)] : style == 1 ? '9' : char('0' + below(10));
        }
        Oracle::Integer units = 0;
        for (char c : text)
            units = units * 10 + (c - '0');
        return Oracle::write(units, units != 0 && oneIn(2), t);
    }
    BCDIIroundstyle roundStyle()
    {
        static constexpr int styles[] = {0, 0, 1, 2, 3, 4, 5, 7};
        return static_cast<BCDIIroundstyle>(styles[below(8)]);
    }
    INT64 integer()
    {
        static constexpr INT64 special[] = {0,
                                            1,
                                            -1,
                                            9,
                                            10,
                                            99,
                                            100,
                                            std::numeric_limits<INT64>::max(),
                                            std::numeric_limits<INT64>::min(),
                                            9999999999999999,
                                            10000000000000000};
        if (oneIn(8))
            return special[below(11)];
        return static_cast<INT64>(bits()) >> below(64);
    }
    int fractionDigits()
    {
        static constexpr int far[] = {
            -2147483647 - 1, 2147483647, -301, 301, 127, 128, -128, 63, -63};
        return oneIn(20) ? far[below(9)] : oneIn(2) ? between(0, 20) : between(-70, 70);
    }

private:
    std::mt19937_64 m_engine;
};

std::string hex(const BYTE *bytes, int size)
{
    return QByteArray(reinterpret_cast<const char *>(bytes), size).toHex(' ').toStdString();
}

std::string hex(const std::vector<BYTE> &bytes)
{
    return hex(bytes.data(), int(bytes.size()));
}

std::string name(Type t)
{
    return "(" + std::to_string(t.nall) + "," + std::to_string(t.nfrac) + ")";
}

// One operand in guarded memory.
struct Operand
{
    Type type;
    std::vector<BYTE> bytes;
    Guarded memory;

    void draw(Random &random, Type t)
    {
        type = t;
        bytes = random.value(t);
        memory.take(bytes, random.oneIn(2));
    }
    Number number() const { return Oracle::read(bytes.data(), type); }
    std::string text() const { return name(type) + " " + hex(bytes); }
};

// A destination with room for a type, and what was in it before.
struct Destination
{
    Type type;
    std::vector<BYTE> before;
    Guarded memory;

    void draw(Random &random, Type t)
    {
        type = t;
        before.assign(std::size_t(t.size()), BYTE(random.bits()));
        memory.take(before, random.oneIn(2));
    }
    bool check(const char *what, UINT32 status, const Outcome &expected, const std::string &from)
    {
        if (status == expected.status && memory.holds(expected, before))
            return true;
        qWarning("%s: %s into %s: status %u, bytes %s; expected %u, %s", what, from.c_str(),
                 name(type).c_str(), status, hex(memory.data(), type.size()).c_str(),
                 expected.status, expected.nan ? "NaN" : hex(expected.bytes).c_str());
        return false;
    }
};

// A value by its text, in exactly the given type.
std::vector<BYTE> valueOf(Type t, const char *text)
{
    Oracle::ParseOutcome wide = Oracle::parse(text, {63, 20});
    return Oracle::store(Oracle::read(wide.value.bytes.data(), wide.type), t, BCDII_ROUND_TRUNC)
        .bytes;
}

std::string textOf(const void *bytes, Type t)
{
    return BCDII2StringSequence(bytes, t.word()).c_str();
}

} // namespace

class tst_Bcdii : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void workedLayouts_data();
    void workedLayouts();
    void checkType();
    void check();
    void initAndHeader();
    void setZeroMaxMin();
    void negate();
    void copyExamples_data();
    void copyExamples();
    void copyInPlace();
    void compareExamples();
    void addExamples_data();
    void addExamples();
    void multiplyExamples_data();
    void multiplyExamples();
    void nanOperands();
    void fromIntegerExamples_data();
    void fromIntegerExamples();
    void toIntegerExamples_data();
    void toIntegerExamples();
    void toDoubleExamples();
    void fromDoubleExamples_data();
    void fromDoubleExamples();
    void fromDoubleWithoutNumber();
    void parseExamples_data();
    void parseExamples();
    void parseSelfDescribing();
    void parseLongTexts();
    void formatExamples_data();
    void formatExamples();
    void headerForms();
    void typesWithoutDigits_data();
    void typesWithoutDigits();
    void invalidDestinations();
    void shortCopiesExhaustively();
    void shortSumsExhaustively();
    void shortProductsExhaustively();
    void productsNearPowersOfTen();
    void randomCopies();
    void randomComparisons();
    void randomSums();
    void randomProducts();
    void resultsOverOperands();
    void wideTypesAgreeWithNarrow();
    void productsOfTooWideTypes();
    void randomFromIntegers();
    void randomToIntegers();
    void randomFromDoubles();
    void randomToDoubles();
    void randomTexts();
    void textsOfEveryShape();
    void randomFormats();
    void randomChecksAndConstants();
    void anyBytesAreSafe();
    void noAllocations();
    void valueArithmetic();
    void valueComparison();
    void valueText();
    void valueLiterals();
    void valueConversions();
    void valueUnits();
    void valueLimits();
    void valueHash();
};

void tst_Bcdii::initTestCase()
{
    qInfo("seed %llu, %d random cases per function", static_cast<unsigned long long>(seed),
          caseCount());
}

void tst_Bcdii::workedLayouts_data()
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

void tst_Bcdii::workedLayouts()
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

void tst_Bcdii::checkType()
{
    for (int nall = -128; nall < 128; ++nall) {
        for (int nfrac = -128; nfrac < 128; ++nfrac) {
            const bool valid = nall >= 1 && nall <= 63 && nfrac >= -62 && nfrac <= 62;
            QCOMPARE(BCDIICheckType(Type {nall, nfrac}.word() | 0xABCD0000U), valid ? 1 : 0);
        }
    }
}

void tst_Bcdii::check()
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

void tst_Bcdii::initAndHeader()
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

void tst_Bcdii::setZeroMaxMin()
{
    BYTE bcd[2];
    BCDIISetMax(bcd, 0x0201);
    QCOMPARE(hex(bcd, 2), std::string("09 5a"));
    BCDIISetMin(bcd, 0x0201);
    QCOMPARE(hex(bcd, 2), std::string("89 5a"));
}

void tst_Bcdii::negate()
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

void tst_Bcdii::copyExamples_data()
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

void tst_Bcdii::copyExamples()
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
    if (result == "NaN")
        QCOMPARE(memory.data()[0], BYTE(101));
    else
        QCOMPARE(textOf(memory.data(), d), result.toStdString());
}

void tst_Bcdii::copyInPlace()
{
    BYTE bcd[4] = {1, 23, 45, guardByte}; // 123.45
    QCOMPARE(BCDIICopy(bcd, 0x0603, bcd, 0x0502, BCDII_ROUND_NEAREST), 0U);
    QCOMPARE(hex(bcd, 4), std::string("01 17 2d 00"));
    QCOMPARE(BCDIICopy(bcd, 0x0300, bcd, 0x0603, BCDII_ROUND_UP), 64U);
    QCOMPARE(hex(bcd, 2), std::string("01 18"));
}

void tst_Bcdii::compareExamples()
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

void tst_Bcdii::addExamples_data()
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

void tst_Bcdii::addExamples()
{
    QFETCH(QByteArray, a);
    QFETCH(int, aType);
    QFETCH(QByteArray, b);
    QFETCH(int, bType);
    QFETCH(int, type);
    QFETCH(QByteArray, result);
    QFETCH(uint, status);
    const auto typeOf = [](int w) { return Type {w >> 8, w & 0xFF}; };
    Guarded memory;
    memory.take(typeOf(type).size(), true);
    QCOMPARE(BCDIIAdd(memory.data(), BCDIIType(type), valueOf(typeOf(aType), a).data(),
                      BCDIIType(aType), valueOf(typeOf(bType), b).data(), BCDIIType(bType),
                      BCDII_ROUND_NEAREST),
             status);
    QVERIFY(memory.isIntact());
    if (result == "NaN")
        QCOMPARE(memory.data()[0], BYTE(101));
    else
        QCOMPARE(textOf(memory.data(), typeOf(type)), result.toStdString());
}

void tst_Bcdii::multiplyExamples_data()
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

void tst_Bcdii::multiplyExamples()
{
    QFETCH(QByteArray, a);
    QFETCH(int, aType);
    QFETCH(QByteArray, b);
    QFETCH(int, bType);
    QFETCH(int, type);
    QFETCH(int, style);
    QFETCH(QByteArray, result);
    QFETCH(uint, status);
    const auto typeOf = [](int w) { return Type {w >> 8, w & 0xFF}; };
    Guarded memory;
    memory.take(typeOf(type).size(), true);
    QCOMPARE(BCDIIMul(memory.data(), BCDIIType(type), valueOf(typeOf(aType), a).data(),
                      BCDIIType(aType), valueOf(typeOf(bType), b).data(), BCDIIType(bType),
                      static_cast<BCDIIroundstyle>(style)),
             status);
    QVERIFY(memory.isIntact());
    if (result == "NaN")
        QCOMPARE(memory.data()[0], BYTE(101));
    else
        QCOMPARE(textOf(memory.data(), typeOf(type)), result.toStdString());
}

void tst_Bcdii::nanOperands()
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

void tst_Bcdii::fromIntegerExamples_data()
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

void tst_Bcdii::fromIntegerExamples()
{
    QFETCH(qlonglong, integer);
    QFETCH(int, fd);
    QFETCH(int, type);
    QFETCH(QByteArray, bytes);
    QFETCH(uint, status);
    Guarded memory;
    const int size = Type {type >> 8, type & 0xFF}.size();
    memory.take(size, true);
    QCOMPARE(BCDIIGetFromInt64(memory.data(), BCDIIType(type), integer, fd), status);
    if (integer == std::numeric_limits<qlonglong>::min())
        QCOMPARE(textOf(memory.data(), {19, 0}), std::string("-9223372036854775808"));
    else
        QCOMPARE(QByteArray(reinterpret_cast<char *>(memory.data()), size).toHex(), bytes);
    QVERIFY(memory.isIntact());
}

void tst_Bcdii::toIntegerExamples_data()
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

void tst_Bcdii::toIntegerExamples()
{
    QFETCH(QByteArray, text);
    QFETCH(int, type);
    QFETCH(int, fd);
    QFETCH(int, style);
    QFETCH(uint, status);
    QFETCH(qlonglong, result);
    INT64 integer = 4242;
    QCOMPARE(BCDII2Int64(&integer, valueOf({type >> 8, type & 0xFF}, text).data(), BCDIIType(type),
                         fd, static_cast<BCDIIroundstyle>(style)),
             status);
    QCOMPARE(qlonglong(integer), result);
}

void tst_Bcdii::toDoubleExamples()
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

void tst_Bcdii::fromDoubleExamples_data()
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

void tst_Bcdii::fromDoubleExamples()
{
    QFETCH(double, real);
    QFETCH(int, type);
    QFETCH(QByteArray, bytes);
    QFETCH(uint, status);
    Guarded memory;
    const int size = Type {type >> 8, type & 0xFF}.size();
    memory.take(size, true);
    QCOMPARE(BCDIIGetFromDouble(memory.data(), real, BCDIIType(type)), status);
    QCOMPARE(QByteArray(reinterpret_cast<char *>(memory.data()), size).toHex(), bytes);
    QVERIFY(memory.isIntact());
}

void tst_Bcdii::fromDoubleWithoutNumber()
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

void tst_Bcdii::parseExamples_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<int>("type");
    QTest::addColumn<uint>("status");
    QTest::addColumn<int>("newType");
    QTest::addColumn<QByteArray>("result");
    const auto row = [](const char *title, const char *text, int type, uint status, int newType,
                        const char *result) {
        QTest::newRow(title) << QByteArray(text) << type << status << newType << QByteArray(result);
    };
    row("blanks and comma", "  -12,50", 0x0502, 4, 0x0502, "-12.50");
    row("fewer digits", "12.5", 0x0502, 0, 0x0501, "12.5");
    row("more digits", "123.456", 0x0502, 17, 0x0503, "NaN");
    row("leading zeros", "0012", 0x0300, 0, 0x0300, "12");
    row("too wide", "1234", 0x0300, 17, 0x0300, "NaN");
    row("negative zero", "-0.000", 0x0302, 2, 0x0302, ".00");
    row("small", ".005", 0x0303, 0, 0x0303, ".005");
    row("small with zero", "0.005", 0x0303, 0, 0x0303, ".005");
    row("small negative", "-,005", 0x0303, 4, 0x0303, "-.005");
    row("letters behind", "12abc", 0x0300, 0, 0x0300, "12");
    row("letters", "abc", 0x0300, 48, 0x0300, "NaN");
    row("empty", "", 0x0300, 48, 0x0300, "NaN");
    row("minus", "-", 0x0300, 48, 0x0300, "NaN");
    row("two signs", "-+5", 0x0300, 48, 0x0300, "NaN");
    row("blank behind sign", "- 5", 0x0300, 48, 0x0300, "NaN");
    row("point", ".", 0x0300, 48, 0x0300, "NaN");
    row("point behind zero", "0.", 0x0300, 2, 0x0300, "");
    row("plus", "+7", 0x0300, 0, 0x0300, "7");
    row("point at the end", "7.", 0x0302, 0, 0x0300, "7");
    row("two points", "1.2.3", 0x0302, 0, 0x0301, "1.2");
    row("exponent ignored", "1.5e3", 0x0302, 0, 0x0301, "1.5");
    row("form feed", "\f7", 0x0300, 48, 0x0300, "NaN");
    row("vertical tab", "\v7", 0x0300, 48, 0x0300, "NaN");
    row("all blanks", " \t\r\n7", 0x0300, 0, 0x0300, "7");
    row("one byte more", "1.5", 0x0200, 0, 0x0201, "1.5");
}

void tst_Bcdii::parseExamples()
{
    QFETCH(QByteArray, text);
    QFETCH(int, type);
    QFETCH(uint, status);
    QFETCH(int, newType);
    QFETCH(QByteArray, result);
    Guarded memory;
    const Type t {newType >> 8, newType & 0xFF};
    memory.take(t.size(), true);
    BCDIIType word = BCDIIType(type);
    QCOMPARE(BCDIIFromString(memory.data(), word, text.constData()), status);
    QCOMPARE(int(word), newType);
    QVERIFY(memory.isIntact());
    if (result == "NaN")
        QCOMPARE(memory.data()[0], BYTE(101));
    else
        QCOMPARE(textOf(memory.data(), t), result.toStdString());
}

void tst_Bcdii::parseSelfDescribing()
{
    InternalBCDType value;
    bool ok = false;
    BCDIIInit(&value, 0x0502);
    QCOMPARE(BCDIIFromString(&value, "-12.5", &ok), 4U);
    QVERIFY(ok);
    QCOMPARE(BCDIIGetType(&value), BCDIIType(0x0501));
    QCOMPARE(std::string(BCDII2StringSequence(&value).c_str()), std::string("-12.5"));
    QCOMPARE(BCDIIFromString(&value, "nothing", &ok), 160U);
    QVERIFY(!ok);
    QCOMPARE(BCDIIFromString(&value, "0.0", nullptr), 2U);
    const std::string tooFine = "0." + std::string(60, '0') + "123";
    QCOMPARE(BCDIIFromString(&value, tooFine.c_str(), &ok), 32U); // 63 fraction digits
    QVERIFY(!ok);
}

void tst_Bcdii::parseLongTexts()
{
    const auto status = [](const std::string &text, BCDIIType type) {
        BYTE bcd[33] = {};
        return BCDIIFromString(bcd, type, text.c_str());
    };
    const std::string zeros(1000000, '0');
    QCOMPARE(status(zeros, 0x0502), 2U);
    QCOMPARE(status(zeros + "12", 0x0502), 0U);
    QCOMPARE(status("-" + zeros + "." + zeros, 0x0502), 2U);
    QCOMPARE(status("0." + zeros + "1", 0x0502), 48U);
    QCOMPARE(status("1." + zeros, 0x0502), 48U);
    QCOMPARE(status("1" + zeros, 0x0502), 48U);
    QCOMPARE(status(std::string(127, '1'), 0x0502), 48U);
    QCOMPARE(status(std::string(126, '1'), 0x0502), 17U);
    QCOMPARE(status("0." + std::string(126, '1'), 0x3F00), 17U);
    QCOMPARE(status("." + std::string(127, '0') + "1", 0x3F00), 48U);
    QCOMPARE(status("." + std::string(126, '0') + "1", 0x3F00), 2U);
    QCOMPARE(status("." + std::string(61, '0') + "1", 0x3F3E), 0U);
}

void tst_Bcdii::formatExamples_data()
{
    QTest::addColumn<int>("nall");
    QTest::addColumn<int>("nfrac");
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<int>("length");
    const auto row = [](int nall, int nfrac, const char *bytes, const char *text, int length) {
        QTest::addRow("%s of (%d,%d)", text, nall, nfrac)
            << nall << nfrac << QByteArray(bytes) << QByteArray(text) << length;
    };
    row(3, 0, "0100", "100", 5);
    row(3, 2, "0005", ".05", 6);
    row(1, 0, "87", "-7", 3);
    row(4, 2, "0c32", "12.50", 7);
    row(2, 1, "0032", ".5", 5);
    row(2, 1, "8032", "-.5", 5);
    row(3, 0, "0000", "", 5);
    row(3, 1, "0c32", "12.5", 6); // even integer digits, odd fraction digits
    row(5, 1, "0c2232", "1234.5", 8);
    row(2, -2, "0c", "1200", 6);
    row(2, -1, "0114", "120", 5);
    row(1, -2, "00", "", 5);
    row(2, 4, "8c", "-.0012", 7);
    row(2, 3, "0114", ".012", 6);
}

void tst_Bcdii::formatExamples()
{
    QFETCH(int, nall);
    QFETCH(int, nfrac);
    QFETCH(QByteArray, bytes);
    QFETCH(QByteArray, text);
    QFETCH(int, length);
    const QByteArray raw = QByteArray::fromHex(bytes);
    const std::string result = BCDII2StringSequence(raw.constData(), Type {nall, nfrac}.word());
    QCOMPARE(std::string(result.c_str()), text.toStdString());
    QCOMPARE(int(result.size()), length);
    const auto padding = result.begin() + text.size();
    QVERIFY(std::all_of(padding, result.end(), [](char c) { return c == '\0'; }));
}

void tst_Bcdii::headerForms()
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

void tst_Bcdii::typesWithoutDigits_data()
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
void tst_Bcdii::typesWithoutDigits()
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
void tst_Bcdii::invalidDestinations()
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

namespace {

// Calls f with every value of a type of few digits.
template<typename F> void everyValue(Type t, F f)
{
    const int count = int(static_cast<INT64>(Oracle::tenTo(t.nall)));
    for (int units = -count + 1; units < count; ++units)
        f(Oracle::write(std::abs(units), units < 0, t));
}

std::vector<Type> shortTypes(int digits, int lowest, int highest)
{
    std::vector<Type> types;
    for (int nall = 1; nall <= digits; ++nall) {
        for (int nfrac = lowest; nfrac <= highest; ++nfrac)
            types.push_back({nall, nfrac});
    }
    return types;
}

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr int exhaustiveDigits = 2;
#else
constexpr int exhaustiveDigits = 3;
#endif

} // namespace

void tst_Bcdii::shortCopiesExhaustively()
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

namespace {

using Operation = UINT32 (*)(void *, BCDIIType, const void *, BCDIIType, const void *, BCDIIType,
                             BCDIIroundstyle);
using OracleOperation = Outcome (*)(const Number &, const Number &, Type, BCDIIroundstyle);

int wrongShortResults(Operation operation, OracleOperation oracle)
{
    const std::vector<Type> types = shortTypes(exhaustiveDigits - 1, -1, 2);
    const Type results[] = {{2, 1}, {3, 0}, {4, 3}};
    int wrong = 0;
    BYTE result[8];
    for (Type at : types) {
        for (Type bt : types) {
            everyValue(at, [&](const std::vector<BYTE> &a) {
                const Number x = Oracle::read(a.data(), at);
                everyValue(bt, [&](const std::vector<BYTE> &b) {
                    const auto style = static_cast<BCDIIroundstyle>((a.back() + b.back()) % 5);
                    const Type d = results[(a.front() + b.back()) % 3];
                    const UINT32 status = operation(result, d.word(), a.data(), at.word(), b.data(),
                                                    bt.word(), style);
                    const Outcome o = oracle(x, Oracle::read(b.data(), bt), d, style);
                    const bool same = o.nan ? result[0] == 101
                                            : std::equal(o.bytes.begin(), o.bytes.end(), result);
                    wrong += status != o.status || !same ? 1 : 0;
                });
            });
        }
    }
    return wrong;
}

} // namespace

void tst_Bcdii::shortSumsExhaustively()
{
    QCOMPARE(wrongShortResults(BCDIIAdd, Oracle::add), 0);
}

void tst_Bcdii::shortProductsExhaustively()
{
    QCOMPARE(wrongShortResults(BCDIIMul, Oracle::multiply), 0);
}

// Factors beside powers of ten, where quotients and remainders are at their limits, in types
// of 18 to 20 digits with every number of pairs to cut off.
void tst_Bcdii::productsNearPowersOfTen()
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
                const bool same = expected.nan
                    ? result[0] == 101
                    : std::equal(expected.bytes.begin(), expected.bytes.end(), result);
                QVERIFY2(same && status == expected.status,
                         (x.str() + " * " + y.str() + " in " + name(d)).c_str());
            }
        }
    }
}

void tst_Bcdii::randomCopies()
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

void tst_Bcdii::randomComparisons()
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

void tst_Bcdii::randomSums()
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

void tst_Bcdii::randomProducts()
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

void tst_Bcdii::resultsOverOperands()
{
    Random random(6);
    for (int i = 0; i < caseCount() / 10; ++i) {
        const Type t = random.type();
        const Type d = random.typeNear(t);
        const std::vector<BYTE> a = random.value(t);
        const std::vector<BYTE> b = random.value(t);
        BYTE apart[40] = {};
        for (Operation operation : {Operation(BCDIIAdd), Operation(BCDIIMul)}) {
            const UINT32 status = operation(apart, d.word(), a.data(), t.word(), b.data(), t.word(),
                                            BCDII_ROUND_NEAREST);
            for (int over = 0; over < 3; ++over) {
                BYTE x[40] = {};
                BYTE y[40] = {};
                std::copy(a.begin(), a.end(), x);
                std::copy(over == 2 ? a.begin() : b.begin(), over == 2 ? a.end() : b.end(), y);
                BYTE *const result = over == 1 ? y : x;
                const BYTE *const second = over == 2 ? x : y;
                const UINT32 twice =
                    operation(result, d.word(), x, t.word(), second, t.word(), BCDII_ROUND_NEAREST);
                if (over == 2) {
                    BYTE again[40] = {};
                    QCOMPARE(operation(again, d.word(), a.data(), t.word(), y, t.word(),
                                       BCDII_ROUND_NEAREST),
                             twice);
                    QVERIFY(again[0] == 101 ? x[0] == 101 : std::equal(x, x + d.size(), again));
                    continue;
                }
                QCOMPARE(twice, status);
                QVERIFY(apart[0] == 101 ? result[0] == 101
                                        : std::equal(result, result + d.size(), apart));
            }
        }
        BYTE copied[40] = {};
        BYTE inPlace[40] = {};
        std::copy(a.begin(), a.end(), inPlace);
        QCOMPARE(BCDIICopy(inPlace, d.word(), inPlace, t.word(), BCDII_ROUND_NEAREST),
                 BCDIICopy(copied, d.word(), a.data(), t.word(), BCDII_ROUND_NEAREST));
        QVERIFY(copied[0] == 101 ? inPlace[0] == 101
                                 : std::equal(copied, copied + d.size(), inPlace));
    }
}

// The same sum through machine words, and pair by pair because one operand's type
// reaches too far for them.
void tst_Bcdii::wideTypesAgreeWithNarrow()
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

// The same product through machine words, and pair by pair because one operand's type is
// wider than any that is valid: types of operands are not checked.
void tst_Bcdii::productsOfTooWideTypes()
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

void tst_Bcdii::randomFromIntegers()
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

void tst_Bcdii::randomToIntegers()
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

void tst_Bcdii::randomFromDoubles()
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

void tst_Bcdii::randomToDoubles()
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

namespace {

std::string randomText(Random &random)
{
    static constexpr char odd[] = " \t\n\r\f\v-+.,0009e5x";
    std::string text;
    const auto repeat = [&](int most, auto next) {
        for (int n = random.oneIn(10) ? random.between(0, 4 * most) : random.below(most + 1); n > 0;
             --n)
            text += next();
    };
    if (random.oneIn(20)) {
        repeat(8, [&] { return odd[random.below(sizeof odd - 1)]; });
        return text;
    }
    const auto digit = [&] { return char('0' + random.below(10)); };
    const auto zero = [] { return '0'; };
    if (random.oneIn(4))
        repeat(3, [&] { return odd[random.below(4)]; });
    if (random.oneIn(2))
        text += random.oneIn(4) ? '+' : '-';
    if (random.oneIn(4))
        repeat(4, zero);
    if (!random.oneIn(4))
        repeat(random.oneIn(3) ? 63 : 12, digit);
    if (!random.oneIn(4)) {
        text += random.oneIn(3) ? ',' : '.';
        if (random.oneIn(4))
            repeat(40, zero);
        repeat(random.oneIn(4) ? 40 : 6, digit);
    }
    if (random.oneIn(8))
        repeat(2, [&] { return odd[random.below(sizeof odd - 1)]; });
    return text;
}

} // namespace

namespace {

// Reads a text that ends where memory ends, and compares status, type and bytes.
class TextCheck
{
public:
    bool agrees(const std::string &text, Type t, BCDIIType word, bool atEnd)
    {
        const Oracle::ParseOutcome expected = Oracle::parse(text, t);
        const int room = std::max(t.size(), expected.type.size());
        m_memory.take(room, atEnd);
        BYTE *const str = m_text.take(int(text.size()) + 1, true); // no byte behind the NUL
        std::memcpy(str, text.c_str(), text.size() + 1);
        m_status = BCDIIFromString(m_memory.data(), word, reinterpret_cast<char *>(str));
        std::vector<BYTE> bytes(std::size_t(room), guardByte);
        if (expected.value.nan)
            bytes[0] = 101;
        else
            std::copy(expected.value.bytes.begin(), expected.value.bytes.end(), bytes.begin());
        m_what = text + " into " + name(t) + ": " + std::to_string(m_status);
        return m_status == expected.value.status && (word & 0xFFFF) == expected.type.word()
            && m_memory.holds(bytes);
    }
    const char *what() const { return m_what.c_str(); }

private:
    Guarded m_memory;
    Guarded m_text;
    UINT32 m_status = 0;
    std::string m_what;
};

} // namespace

void tst_Bcdii::randomTexts()
{
    Random random(12);
    TextCheck check;
    for (int i = 0; i < caseCount(); ++i) {
        const Type t = random.oneIn(2) ? Type {63, random.between(0, 20)} : random.type();
        const std::string text = randomText(random);
        const BCDIIType word = random.word(t);
        QVERIFY2(check.agrees(text, t, word, random.oneIn(2)), check.what());
    }
}

// Every length and place of the separator, alone and with one more character that may
// end the number, at every place.
void tst_Bcdii::textsOfEveryShape()
{
    static constexpr char others[] = {'.', ',', '/', ':', '\x1f', '\x10', '0', 'x', '\xff'};
    const Type types[] = {{63, 20}, {63, 0}, {18, 6}, {9, 2}, {5, -2}, {3, 8}};
    TextCheck check;
    int other = 0;
    for (int digits = 0; digits <= 66; ++digits) {
        for (int before = 0; before <= digits + 1; ++before) {
            std::string text;
            for (int i = 0; i < digits; ++i)
                text += char('0' + (7 * i + 3 * before + 1) % 10);
            if (before <= digits)
                text.insert(std::size_t(before), 1, digits % 2 != 0 ? '.' : ',');
            for (const Type t : types)
                QVERIFY2(check.agrees(text, t, t.word(), true), check.what());
            for (std::size_t i = 0; i < text.size(); ++i) {
                std::string odd = text;
                odd[i] = others[std::size_t(++other) % sizeof others];
                const Type t = types[std::size_t(other) % std::size(types)];
                QVERIFY2(check.agrees(odd, t, t.word(), true), check.what());
            }
        }
    }
}

void tst_Bcdii::randomFormats()
{
    Random random(13);
    Operand src;
    Guarded back;
    for (int i = 0; i < caseCount(); ++i) {
        src.draw(random, random.type());
        const Type t = src.type;
        const std::string padded = BCDII2StringSequence(src.memory.data(), random.word(t));
        const std::string text = padded.c_str();
        QVERIFY2(text == Oracle::format(src.bytes.data(), t), (src.text() + " " + text).c_str());
        const int widest = std::max(t.nint(), 0) + (t.nfrac > 0 ? t.nfrac + 1 : 0);
        QCOMPARE(int(padded.size()), widest + 2);
        QCOMPARE(padded.find_first_not_of('\0', text.size()), std::string::npos);

        // What is printed is read back: in the same type when that has a fraction.
        if (t.nfrac < 0 || text.empty())
            continue;
        BCDIIType word = t.word();
        BYTE *const bcd = back.take(t.size(), true);
        BCDIIFromString(bcd, word, text.c_str());
        QCOMPARE(word, t.word());
        QVERIFY2(back.holds(src.bytes), src.text().c_str());
    }
}

void tst_Bcdii::randomChecksAndConstants()
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
void tst_Bcdii::anyBytesAreSafe()
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
        QCOMPARE(int(BCDII2StringSequence(a.memory.data(), at).size()),
                 std::max(a.type.nint(), 0) + (a.type.nfrac > 0 ? a.type.nfrac + 1 : 0) + 2);
        BCDIINeg(a.memory.data(), at);
        QVERIFY(a.memory.isIntact());
    }
}

void tst_Bcdii::noAllocations()
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

using Money = BCDIIValue<15, 2>;

void tst_Bcdii::valueArithmetic()
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

void tst_Bcdii::valueComparison()
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

void tst_Bcdii::valueText()
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
    Random random(17);
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

void tst_Bcdii::valueLiterals()
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

void tst_Bcdii::valueConversions()
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

void tst_Bcdii::valueUnits()
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

void tst_Bcdii::valueLimits()
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

void tst_Bcdii::valueHash()
{
    const std::hash<Money> hash;
    QCOMPARE(hash(Money(3) - Money(1)), hash(Money::fromString("2.00")));
    QVERIFY(hash(Money(1)) != hash(Money(2)));
    QVERIFY(hash(Money(1)) != hash(Money(-1)));
}

QTEST_GUILESS_MAIN(tst_Bcdii)

#include "tst_bcdii.moc"
