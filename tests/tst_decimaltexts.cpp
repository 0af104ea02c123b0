// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "decimalcases.h"

#include <QTest>

using namespace Cases;

//! Texts as values, and values as texts.
class tst_DecimalTexts : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { announce(); }
    void parseExamples_data();
    void parseExamples();
    void parseSelfDescribing();
    void parseLongTexts();
    void formatExamples_data();
    void formatExamples();
    void formatInvalidPairs_data();
    void formatInvalidPairs();
    void randomTexts();
    void textsIntoTooWideTypes();
    void textsOfEveryShape();
    void randomFormats();
};

void tst_DecimalTexts::parseExamples_data()
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

void tst_DecimalTexts::parseExamples()
{
    QFETCH(QByteArray, text);
    QFETCH(int, type);
    QFETCH(uint, status);
    QFETCH(int, newType);
    QFETCH(QByteArray, result);
    Guarded memory;
    const Type t = typeOf(newType);
    memory.take(t.size(), true);
    BCDIIType word = BCDIIType(type);
    QCOMPARE(BCDIIFromString(memory.data(), word, text.constData()), status);
    QCOMPARE(int(word), newType);
    QVERIFY(memory.isIntact());
    QCOMPARE(resultText(memory.data(), t), result.toStdString());
}

void tst_DecimalTexts::parseSelfDescribing()
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

void tst_DecimalTexts::parseLongTexts()
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

void tst_DecimalTexts::formatExamples_data()
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

void tst_DecimalTexts::formatExamples()
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

// Reads a text that ends, or every other one begins, where memory does, and compares
// status, type and bytes.
class TextCheck
{
public:
    bool agrees(const std::string &text, Type t, BCDIIType word, bool atEnd)
    {
        const Oracle::ParseOutcome expected = Oracle::parse(text, t);
        const int room = std::max(t.size(), expected.type.size());
        m_memory.take(room, atEnd);
        m_textAtEnd = !m_textAtEnd;
        BYTE *const str = m_text.take(int(text.size()) + 1, m_textAtEnd);
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
    bool m_textAtEnd = false;
    UINT32 m_status = 0;
    std::string m_what;
};

} // namespace

void tst_DecimalTexts::formatInvalidPairs_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("in the integer") << 0x0A00 << QByteArray("0278020202");
    QTest::newRow("last before the point") << 0x0A02 << QByteArray("0202027802");
    QTest::newRow("in the fraction") << 0x0A06 << QByteArray("0202027802");
    QTest::newRow("last of all") << 0x0A06 << QByteArray("0202020278");
    QTest::newRow("with bit 7") << 0x0A00 << QByteArray("028a020202");
    QTest::newRow("NaN") << 0x0A00 << QByteArray("6502020202");
}

// What they are is open, but they are digits, and no more than the type has.
void tst_DecimalTexts::formatInvalidPairs()
{
    QFETCH(int, type);
    QFETCH(QByteArray, bytes);
    const QByteArray raw = QByteArray::fromHex(bytes);
    const std::string text = textOf(raw.constData(), typeOf(type));
    QVERIFY2(text.find_first_not_of("0123456789.") == text.npos, text.c_str());
    QVERIFY(text.size() <= 11);
}

void tst_DecimalTexts::randomTexts()
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

// Types are not checked, and those of up to 127 digits have bytes as any others.
void tst_DecimalTexts::textsIntoTooWideTypes()
{
    Random random(18);
    TextCheck check;
    for (int i = 0; i < caseCount() / 10; ++i) {
        const Type t {random.between(64, 127), random.between(-20, 62)};
        QVERIFY2(check.agrees(randomText(random), t, t.word(), random.oneIn(2)), check.what());
    }
}

// Every length and place of the separator, alone and with one more character that may
// end the number, at every place.
void tst_DecimalTexts::textsOfEveryShape()
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

void tst_DecimalTexts::randomFormats()
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

QTEST_GUILESS_MAIN(tst_DecimalTexts)

#include "tst_decimaltexts.moc"
