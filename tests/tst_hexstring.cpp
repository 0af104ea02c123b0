// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "hexstring.h"

#include <QTest>

#include <limits>

namespace {

//! The usual spelling in full width, backwards.
QString reversedHex(quint64 value, int digits)
{
    QString text = QString::number(value, 16).rightJustified(digits, u'0');
    std::reverse(text.begin(), text.end());
    return text;
}

template<typename T> QString built(quint64 value)
{
    const QString text = QString() % HexString<T> {T(value)};
    return text;
}

} // namespace

class TestHexString : public QObject
{
    Q_OBJECT

private slots:
    void spellsKnownNumbers_data();
    void spellsKnownNumbers();
    void isTheSpellingBackwards_data();
    void isTheSpellingBackwards();
    void standsAmongOtherOperands();
    void knowsItsSize();
};

void TestHexString::spellsKnownNumbers_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("expected");
    QTest::newRow("31 as int") << built<unsigned int>(0x1f) << "f1000000";
    QTest::newRow("1 as char") << built<unsigned char>(1) << "10";
    QTest::newRow("0 as char") << built<unsigned char>(0) << "00";
    QTest::newRow("1500 as int") << built<unsigned int>(1500) << "cd500000";
    QTest::newRow("bytes in order") << built<unsigned int>(0x12345678) << "87654321";
    QTest::newRow("long long") << built<unsigned long long>(0x0123456789abcdefULL)
                               << "fedcba9876543210";
}

void TestHexString::spellsKnownNumbers()
{
    QFETCH(QString, text);
    QTEST(text, "expected");
}

void TestHexString::isTheSpellingBackwards_data()
{
    QTest::addColumn<quint64>("value");
    for (int bit = 0; bit < 64; ++bit) {
        const quint64 value = quint64(1) << bit;
        QTest::addRow("bit %d", bit) << value;
        QTest::addRow("bits below %d", bit) << value - 1;
        QTest::addRow("scattered %d", bit) << 0x9e3779b97f4a7c15ULL * (value + 1);
    }
    QTest::newRow("all bits") << std::numeric_limits<quint64>::max();
}

void TestHexString::isTheSpellingBackwards()
{
    QFETCH(quint64, value);
    QCOMPARE(built<unsigned long long>(value), reversedHex(value, 16));
    QCOMPARE(built<unsigned int>(value), reversedHex(value & 0xffffffff, 8));
    QCOMPARE(built<unsigned char>(value), reversedHex(value & 0xff, 2));
}

void TestHexString::standsAmongOtherOperands()
{
    const QString name = QStringLiteral("name");
    const QString text = HexString<unsigned char> {0xab} % name % QLatin1String("-")
        % HexString<unsigned int> {2} % QLatin1Char('!');
    QCOMPARE(text, QStringLiteral("baname-20000000!"));
}

void TestHexString::knowsItsSize()
{
    QCOMPARE((QString() % HexString<unsigned char> {9}).size(), 2);
    QCOMPARE((QString() % HexString<unsigned int> {9}).size(), 8);
    QCOMPARE((QString() % HexString<unsigned long long> {9}).size(), 16);
}

QTEST_APPLESS_MAIN(TestHexString)
#include "tst_hexstring.moc"
