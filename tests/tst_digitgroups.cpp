// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "windows/digitgroups.h"

#include <QRandomGenerator>
#include <QTest>

class tst_DigitGroups : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void groups_data();
    void groups();
    void leavesAlone_data();
    void leavesAlone();
    void goesAsLocalesDo_data();
    void goesAsLocalesDo();
    void changesNoDigit();
    void knowsWhereCharactersAre();

private:
    const QLocale m_english {QLocale::English, QLocale::UnitedStates};
};

void tst_DigitGroups::groups_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("wanted");
    QTest::newRow("four digits") << "1234"
                                 << "1,234";
    QTest::newRow("six digits") << "123456"
                                << "123,456";
    QTest::newRow("seven digits") << "1234567"
                                  << "1,234,567";
    QTest::newRow("fraction") << "1234567.5"
                              << "1,234,567.5";
    QTest::newRow("long fraction") << "1234.56789"
                                   << "1,234.56789";
    QTest::newRow("point at the end") << "1234."
                                      << "1,234.";
    QTest::newRow("negative") << "-1234"
                              << "-1,234";
    QTest::newRow("positive") << "+1234"
                              << "+1,234";
    QTest::newRow("white space") << "  1234 "
                                 << "  1,234 ";
    QTest::newRow("comma before the fraction")
        << "1234567,5" << QString::fromUtf8("1\u202f234\u202f567,5");
    QTest::newRow("more than a double knows") << "123456789012345678901.25"
                                              << "123,456,789,012,345,678,901.25";
}

void tst_DigitGroups::groups()
{
    QFETCH(QString, text);
    QFETCH(QString, wanted);
    QCOMPARE(DigitGroups(m_english).grouped(text), wanted);
}

void tst_DigitGroups::leavesAlone_data()
{
    QTest::addColumn<QString>("text");
    for (const char *text : {"",
                             " ",
                             "-",
                             ".",
                             "123",
                             "-999",
                             "0.123456",
                             ".12345",
                             "0012345",
                             "-01234",
                             "0x12345",
                             "1234abcd",
                             "deadbeef",
                             "2024-05-01",
                             "20240501T101112",
                             "10:20:30",
                             "1.2345.6",
                             "1,234",
                             "1,234,567",
                             "1.234.567",
                             "1234.5678.9",
                             "12345e6",
                             "12345%",
                             "12 345",
                             "1234 5678",
                             "#12345",
                             "$12345",
                             "one 12345",
                             "\xd9\xa1\xd9\xa2\xd9\xa3\xd9\xa4"})
        QTest::newRow(text) << QString::fromUtf8(text);
    QTest::newRow("very long") << QString(101, u'1');
}

void tst_DigitGroups::leavesAlone()
{
    QFETCH(QString, text);
    QCOMPARE(DigitGroups(m_english).grouped(text), text);
    QCOMPARE(DigitGroups(m_english).placeOf(2, text), 2);
}

void tst_DigitGroups::goesAsLocalesDo_data()
{
    QTest::addColumn<QLocale>("locale");
    QTest::addColumn<QString>("wanted");
    const QString narrow = QString::fromUtf8("1\u202f234\u202f567.5");
    QTest::newRow("C") << QLocale::c() << "1,234,567.5";
    QTest::newRow("English") << m_english << "1,234,567.5";
    QTest::newRow("German") << QLocale(QLocale::German) << narrow;
    QTest::newRow("Dutch") << QLocale(QLocale::Dutch) << narrow;
    for (const char *name : {"ru_RU", "fr_FR", "de_CH", "sv_SE"}) {
        const QLocale locale {QLatin1String(name)};
        const QString separator = locale.groupSeparator();
        QTest::newRow(name) << locale << "1" + separator + "234" + separator + "567.5";
    }
}

void tst_DigitGroups::goesAsLocalesDo()
{
    QFETCH(QLocale, locale);
    QFETCH(QString, wanted);
    QCOMPARE(DigitGroups(locale).grouped("1234567.5"), wanted);
}

//! Whatever the locale, and whatever the text.
void tst_DigitGroups::changesNoDigit()
{
    QRandomGenerator random(5);
    const QList<QLocale> locales =
        QLocale::matchingLocales(QLocale::AnyLanguage, QLocale::AnyScript, QLocale::AnyCountry);
    const QString characters = "00112233445566778899.,-+ eEx";
    for (const QLocale &locale : locales) {
        const DigitGroups groups(locale);
        for (int i = 0; i < 20; ++i) {
            QString text;
            for (int length = random.bounded(12); length > 0; --length)
                text += characters[random.bounded(int(i < 10 ? 20 : characters.size()))];
            const QString shown = groups.grouped(text);
            QString known;
            for (qsizetype at = 0; at < text.size(); ++at)
                known += shown.at(groups.placeOf(at, text));
            QCOMPARE(known, text);
            QVERIFY(shown.startsWith(text.left(1)) && shown.endsWith(text.right(1)));
        }
    }
}

void tst_DigitGroups::knowsWhereCharactersAre()
{
    const DigitGroups groups(m_english);
    const QString text = "-1234567.5"; // -1,234,567.5
    const QList<qsizetype> wanted {0, 1, 3, 4, 5, 7, 8, 9, 10, 11, 12};
    for (qsizetype at = 0; at < wanted.size(); ++at)
        QCOMPARE(groups.placeOf(at, text), wanted[at]);
}

QTEST_APPLESS_MAIN(tst_DigitGroups)

#include "tst_digitgroups.moc"
