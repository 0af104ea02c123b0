// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "find/numberwriter_p.h"

#include <QTest>
#include <QVariant>

#include <limits>

using FindTexts::NumberWriter;

class tst_NumberWriter : public QObject
{
    Q_OBJECT

private slots:
    void writesIntegers_data();
    void writesIntegers();
    void writesReals_data();
    void writesReals();
    void takesSignAndPointOfTheLocale_data();
    void takesSignAndPointOfTheLocale();
    void knowsTextsAsTheLocaleWritesThem_data();
    void knowsTextsAsTheLocaleWritesThem();
    void tellsPlainNumbers_data();
    void tellsPlainNumbers();
    void leavesLongSignsToTheLocale();
    void leavesOtherTypesToTheLocale_data();
    void leavesOtherTypesToTheLocale();
};

void tst_NumberWriter::writesIntegers_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<QString>("text");

    QTest::newRow("0") << QVariant(0) << QStringLiteral("0");
    QTest::newRow("all digits") << QVariant(1234567890) << QStringLiteral("1234567890");
    QTest::newRow("lowest int") << QVariant(std::numeric_limits<int>::min())
                                << QStringLiteral("-2147483648");
    QTest::newRow("largest uint") << QVariant(std::numeric_limits<uint>::max())
                                  << QStringLiteral("4294967295");
    QTest::newRow("lowest qlonglong") << QVariant(std::numeric_limits<qlonglong>::min())
                                      << QStringLiteral("-9223372036854775808");
    QTest::newRow("largest qulonglong") << QVariant(std::numeric_limits<qulonglong>::max())
                                        << QStringLiteral("18446744073709551615");
}

void tst_NumberWriter::writesIntegers()
{
    QFETCH(QVariant, value);
    QFETCH(QString, text);
    QCOMPARE(NumberWriter(QLocale::c()).text(value).toString(), text);
}

void tst_NumberWriter::writesReals_data()
{
    QTest::addColumn<double>("value");
    QTest::addColumn<QString>("text"); // empty: left to the locale

    QTest::newRow("0") << 0.0 << QStringLiteral("0");
    QTest::newRow("whole") << 250.0 << QStringLiteral("250");
    QTest::newRow("few digits") << -0.5 << QStringLiteral("-0.5");
    QTest::newRow("six digits") << 9876.54 << QStringLiteral("9876.54");
    QTest::newRow("six digits, no point") << 999998.0 << QStringLiteral("999998");
    QTest::newRow("down") << 1.2345644 << QStringLiteral("1.23456");
    QTest::newRow("up") << 1.2345678 << QStringLiteral("1.23457");
    QTest::newRow("up, at 9") << 9.2345678 << QStringLiteral("9.23457");
    QTest::newRow("carried") << 1.2399996 << QStringLiteral("1.24");
    QTest::newRow("carried past the point") << 129.99996 << QStringLiteral("130");
    QTest::newRow("carried to the first") << 1.9999996 << QStringLiteral("2");
    QTest::newRow("carried before the first") << 9.9999996 << QString();
    QTest::newRow("zeros cut off") << 1.2000004 << QStringLiteral("1.2");
    QTest::newRow("point cut off") << 12345.04 << QStringLiteral("12345");
    QTest::newRow("zeros before the point stay") << 123450.4 << QStringLiteral("123450");
    QTest::newRow("decided behind the point") << 123456.7 << QStringLiteral("123457");
    QTest::newRow("a tie but for binary, down") << 1.234565 << QStringLiteral("1.23456");
    QTest::newRow("a tie but for binary, up") << 1.000005 << QStringLiteral("1.00001");
    QTest::newRow("a tie") << 100000.5 << QStringLiteral("100001");
    QTest::newRow("a tie behind an odd digit") << 100001.5 << QStringLiteral("100002");
    QTest::newRow("a tie's neighbour") << 1.2345651 << QStringLiteral("1.23457");
    QTest::newRow("7 digits that end in 4") << 1.234564 << QStringLiteral("1.23456");
    QTest::newRow("zeros at the beginning") << 0.00123456789 << QStringLiteral("0.00123457");
    QTest::newRow("smallest") << 0.0001 << QStringLiteral("0.0001");
    QTest::newRow("too small") << 0.00009999 << QString();
    QTest::newRow("too large") << 1234567.0 << QString();
    QTest::newRow("negative, too large") << -1234567.0 << QString();
    QTest::newRow("infinite") << std::numeric_limits<double>::infinity() << QString();
    QTest::newRow("no number") << std::numeric_limits<double>::quiet_NaN() << QString();
}

void tst_NumberWriter::writesReals()
{
    QFETCH(double, value);
    QFETCH(QString, text);
    if (!text.isEmpty())
        QCOMPARE(QString::number(value, 'g', 6), text);
    QCOMPARE(NumberWriter(QLocale::c()).text(value).toString(), text);
}

void tst_NumberWriter::takesSignAndPointOfTheLocale_data()
{
    QTest::addColumn<QLocale>("locale");
    QTest::addColumn<QVariant>("value");
    QTest::newRow("point") << QLocale(QLocale::English, QLocale::UnitedStates) << QVariant(-1.5);
    QTest::newRow("comma") << QLocale(QLocale::German, QLocale::Germany) << QVariant(-1.5);
    QTest::newRow("wide minus") << QLocale(QLocale::Swedish, QLocale::Sweden) << QVariant(-15);
}

void tst_NumberWriter::takesSignAndPointOfTheLocale()
{
    QFETCH(QLocale, locale);
    QFETCH(QVariant, value);
    const QString text = value.typeId() == QMetaType::Int ? locale.toString(value.toInt())
                                                          : locale.toString(value.toDouble());
    QCOMPARE(NumberWriter(locale).text(value).toString(), text);
}

void tst_NumberWriter::knowsTextsAsTheLocaleWritesThem_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QByteArray>("plain"); // empty: no number is written so
    QTest::addColumn<bool>("isPossible");
    QTest::newRow("digits") << QStringLiteral("0123456789") << QByteArray("0123456789") << true;
    QTest::newRow("comma") << QStringLiteral("-1,5") << QByteArray("-1.5") << true;
    QTest::newRow("point") << QStringLiteral("1.5") << QByteArray() << false;
    QTest::newRow("letter") << QStringLiteral("1e5") << QByteArray() << false;
    QTest::newRow("slash") << QStringLiteral("1/") << QByteArray() << false;
    QTest::newRow("colon") << QStringLiteral("1:") << QByteArray() << false;
}

void tst_NumberWriter::knowsTextsAsTheLocaleWritesThem()
{
    QFETCH(QString, text);
    QFETCH(bool, isPossible);
    NumberWriter writer(QLocale(QLocale::German, QLocale::Germany));
    QTEST(QByteArray::fromStdString(writer.asPlain(text)), "plain");
    QCOMPARE(writer.mayWrite(text), isPossible);
    const std::string_view plain = writer.plain(-1.5);
    QCOMPARE(QByteArray(plain.data(), qsizetype(plain.size())), QByteArray("-1.5"));
}

void tst_NumberWriter::tellsPlainNumbers_data()
{
    QTest::addColumn<QVariant>("number");
    QTest::addColumn<bool>("isPlain");
    QTest::newRow("integer") << QVariant(std::numeric_limits<qlonglong>::max()) << true;
    QTest::newRow("0") << QVariant(0.0) << true;
    QTest::newRow("negative") << QVariant(-999998.0) << true;
    QTest::newRow("large") << QVariant(-1e6) << false;
    QTest::newRow("smallest") << QVariant(1e-4) << true;
    QTest::newRow("small") << QVariant(9e-5) << false;
    QTest::newRow("no number") << QVariant(std::numeric_limits<double>::quiet_NaN()) << false;
}

void tst_NumberWriter::tellsPlainNumbers()
{
    QFETCH(QVariant, number);
    QTEST(NumberWriter::isPlain(number), "isPlain");
}

void tst_NumberWriter::leavesLongSignsToTheLocale()
{
    const QLocale marked(QLocale::Arabic, QLocale::Egypt); // a direction mark before its minus
    if (marked.negativeSign().size() == 1)
        QSKIP("the minus is one character");
    NumberWriter writer(marked);
    QVERIFY(writer.text(-12).isEmpty());
    QCOMPARE(writer.text(12).toString(), QStringLiteral("12"));
}

void tst_NumberWriter::leavesOtherTypesToTheLocale_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::newRow("none") << QVariant();
    QTest::newRow("bool") << QVariant(true);
    QTest::newRow("float") << QVariant(1.5F);
    QTest::newRow("short") << QVariant::fromValue(short(1));
    QTest::newRow("text") << QVariant(QStringLiteral("1"));
}

void tst_NumberWriter::leavesOtherTypesToTheLocale()
{
    QFETCH(QVariant, value);
    NumberWriter writer(QLocale::c());
    QVERIFY(!writer.text(1234).isEmpty());
    QVERIFY(writer.text(value).isEmpty());
}

QTEST_GUILESS_MAIN(tst_NumberWriter)

#include "tst_numberwriter.moc"
