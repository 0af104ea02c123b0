// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "data/exactsum.h"

#include <QTest>

class tst_ExactSum : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void addsToTheDigit();
    void addsWhatDoublesWouldLose();
    void multiplies();
    void saysWhatItCannotAdd_data();
    void saysWhatItCannotAdd();
    void writesOutExponents_data();
    void writesOutExponents();
};

void tst_ExactSum::addsToTheDigit()
{
    ExactSum sum;
    QCOMPARE(sum.text(), QString("0"));
    for (int i = 0; i < 10; ++i)
        sum.add("0.1");
    QCOMPARE(sum.text(), QString("1"));
    sum.add("-2.50");
    QCOMPARE(sum.text(), QString("-1.5"));
    QVERIFY(sum.isExact());
}

void tst_ExactSum::addsWhatDoublesWouldLose()
{
    ExactSum sum;
    sum.add("123456789012345678901234567890.12345678901234567890");
    sum.add("0.00000000000000000001");
    QCOMPARE(sum.text(), QString("123456789012345678901234567890.12345678901234567891"));
    QVERIFY(sum.isExact());
}

void tst_ExactSum::multiplies()
{
    ExactSum sum;
    sum.add("2147483648", qint64(1) << 32);
    sum.add("-1");
    QCOMPARE(sum.text(), QString("9223372036854775807"));
}

void tst_ExactSum::saysWhatItCannotAdd_data()
{
    QTest::addColumn<QString>("number");
    QTest::newRow("text") << "one";
    QTest::newRow("nothing") << "";
    QTest::newRow("infinity") << "Inf";
    QTest::newRow("too small") << "1e-21";
    QTest::newRow("too large") << "1e50";
}

void tst_ExactSum::saysWhatItCannotAdd()
{
    QFETCH(QString, number);
    ExactSum sum;
    sum.add("1");
    sum.add(number);
    QVERIFY(!sum.isExact());
    QCOMPARE(sum.text(), QString("1"));
}

void tst_ExactSum::writesOutExponents_data()
{
    QTest::addColumn<QString>("number");
    QTest::addColumn<QString>("written");
    QTest::newRow("none") << "12.5"
                          << "12.5";
    QTest::newRow("up") << "1.5e+3"
                        << "1500";
    QTest::newRow("within") << "1.2345e2"
                            << "123.45";
    QTest::newRow("down") << "-1.5E-05"
                          << "-0.000015";
    QTest::newRow("one") << "1e-1"
                         << "0.1";
    QTest::newRow("far") << "1e300"
                         << "1e300";
    QTest::newRow("text") << "here"
                          << "here";
}

void tst_ExactSum::writesOutExponents()
{
    QFETCH(QString, number);
    QTEST(withoutExponent(number), "written");
}

QTEST_GUILESS_MAIN(tst_ExactSum)
#include "tst_exactsum.moc"
