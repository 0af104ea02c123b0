// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "files/timestamp.h"

#include <QDateTime>
#include <QTest>

namespace {

const QDate s_latest(2026, 11, 23);

//! Milliseconds since 1970 of a clock that shows \a text, as in "2026-11-22T11:25:45.123".
qint64 clockAt(const QString &text)
{
    return QDateTime::fromString(text + QLatin1Char('Z'), Qt::ISODateWithMs).toMSecsSinceEpoch();
}

qint64 timeOfDay(int hour, int minute, int second, int millisecond = 0)
{
    return QTime(0, 0).msecsTo(QTime(hour, minute, second, millisecond));
}

} // namespace

class tst_TimeStamp : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void findsStamps_data();
    void findsStamps();
    void findsTimesOfADay_data();
    void findsTimesOfADay();
    void findsNone_data();
    void findsNone();
    void guessesTheYear_data();
    void guessesTheYear();
    void comparesClocks();
    void readsWhatIsWritten_data();
    void readsWhatIsWritten();
};

void tst_TimeStamp::findsStamps_data()
{
    QTest::addColumn<QByteArray>("line");
    QTest::addColumn<QString>("clock");
    QTest::addColumn<int>("offset");
    const auto add = [](const char *name, const char *line, const char *clock, int offset = 0) {
        QTest::newRow(name) << QByteArray(line) << QString(clock) << offset;
    };
    const char *usual = "2026-11-22T11:25:45";
    const char *parts = "2026-11-22T11:25:45.123";
    add("T", "2026-11-22T11:25:45 INFO x", usual);
    add("blank", "2026-11-22 11:25:45 INFO x", usual);
    add("alone", "2026-11-22 11:25:45", usual);
    add("point", "2026-11-22 11:25:45.123 x", parts);
    add("comma", "2026-11-22 11:25:45,123 x", parts);
    add("tenths", "2026-11-22T11:25:45.1 x", "2026-11-22T11:25:45.100");
    add("nanoseconds", "2026-11-22T11:25:45.123456789Z x", parts);
    add("point at the end", "2026-11-22T11:25:45. x", usual);
    add("UTC", "2026-11-22T11:25:45Z", usual);
    add("zone", "2026-11-22T11:25:45+01:00 x", usual, 60);
    add("zone without a colon", "2026-11-22T11:25:45.123-0530", parts, -330);
    add("zone of hours", "2026-11-22T11:25:45+02", usual, 120);
    add("zone behind a blank", "2026-11-22 11:25:45 +0100", usual, 60);
    add("no zone", "2026-11-22 11:25:45 -12345 items", usual);
    add("no zone but a word", "2026-11-22 11:25:45Zebra", usual);
    add("slashes", "2026/11/22 11:25:45 [error] 1#1: x", usual);
    add("dots", "2026.11.22 11:25:45 x", usual);
    add("in brackets", "[2026-11-22 11:25:45] x", usual);
    add("in quotes", "{\"time\":\"2026-11-22T11:25:45.123Z\"}", parts);
    add("as a field", "time=2026-11-22T11:25:45Z level=info", usual);
    add("behind the level", "INFO  2026-11-22 11:25:45 x", usual);
    add("leap second", "2026-06-30 23:59:60 x", "2026-07-01T00:00:00");
    add("leap day", "2024-02-29 01:02:03 x", "2024-02-29T01:02:03");
    add("before 1970", "1960-01-01 00:00:00", "1960-01-01T00:00:00");
    add("syslog", "Nov 22 11:25:45 host app[1]: x", usual);
    add("syslog, one digit", "Nov  2 11:25:45 host", "2026-11-02T11:25:45");
    add("one digit, one blank", "Nov 2 11:25:45 host", "2026-11-02T11:25:45");
    add("syslog with a priority", "<34>Nov 22 11:25:45 host x", usual);
    add("weekday and year", "[Sun Nov 22 11:25:45.123456 2026] [x] y", parts);
    add("year behind", "Nov 22 11:25:45 2020 x", "2020-11-22T11:25:45");
    add("number behind", "Nov 22 11:25:45 20201 x", usual);
    add("access log", "10.0.0.1 - - [22/Nov/2026:11:25:45 +0000] \"GET /\"", usual);
    add("access log, zone", "10.0.0.1 - u [22/Nov/2026:11:25:45 -0800] \"GET /\"", usual, -480);
    add("day first", "22-Nov-2026 11:25:45.123 x", parts);
    add("day first, blanks", "22 Nov 2026 11:25:45 x", usual);
    add("seconds since 1970", "1795346745 x", usual);
    add("with parts", "1795346745.123 x", parts);
    add("milliseconds since 1970", "1795346745123 x", parts);
    add("seconds in JSON", "{\"ts\": 1795346745.123, \"x\":1}", parts);
    add("begins in time",
        "------------------------------------------------------------ "
        "2026-11-22 11:25:45",
        usual);
    add("the first one", "2026-11-22 11:25:45 until 2027-01-01 00:00:00", usual);
    add("line end", "2026-11-22 11:25:45\r\n", usual);
}

void tst_TimeStamp::findsStamps()
{
    QFETCH(QByteArray, line);
    QFETCH(QString, clock);
    QFETCH(int, offset);
    const auto stamp = timeStampOf(line, s_latest);
    QVERIFY(stamp);
    QCOMPARE(stamp->clock, clockAt(clock));
    QCOMPARE(stamp->offset, offset);
    QVERIFY(stamp->hasDate);
}

void tst_TimeStamp::findsTimesOfADay_data()
{
    QTest::addColumn<QByteArray>("line");
    QTest::addColumn<qint64>("clock");
    QTest::newRow("seconds") << QByteArray("11:25:45 x") << timeOfDay(11, 25, 45);
    QTest::newRow("parts") << QByteArray("11:25:45.123 x") << timeOfDay(11, 25, 45, 123);
    QTest::newRow("comma") << QByteArray("11:25:45,5") << timeOfDay(11, 25, 45, 500);
    QTest::newRow("in brackets") << QByteArray("[00:00:00] x") << timeOfDay(0, 0, 0);
    QTest::newRow("the last") << QByteArray("23:59:59.999") << timeOfDay(23, 59, 59, 999);
}

void tst_TimeStamp::findsTimesOfADay()
{
    QFETCH(QByteArray, line);
    const auto stamp = timeStampOf(line, s_latest);
    QVERIFY(stamp);
    QTEST(stamp->clock, "clock");
    QVERIFY(!stamp->hasDate);
}

void tst_TimeStamp::findsNone_data()
{
    QTest::addColumn<QByteArray>("line");
    for (const char *line : {"",
                             "no time",
                             "2026-11-22",
                             "2026-11-22 ",
                             "2026-11-22 11:25",
                             "2026-13-22 11:25",
                             "11:25",
                             "25:00:00",
                             "11:60:00",
                             "11:25:61",
                             "1:25:45",
                             "11:25:456",
                             "111:25:45",
                             "aa:bb:11:25:45:cc",
                             "10.0.0.1:12:34:56",
                             "123456789",
                             "12345678901",
                             "0000000000",
                             "9999999999",
                             "17953467451234",
                             "1795346745th",
                             "x1795346745",
                             "May be",
                             "Nov 22",
                             "Nov 22 x",

                             "32/Nov/2026:11:25",
                             "22/Nob/2026:11:25",
                             "Mai 22 11:25"})
        QTest::newRow(line) << QByteArray(line);
    QTest::newRow("too late") << QByteArray(64, '-') + " 2026-11-22 11:25:45";
    QTest::newRow("not ASCII") << QByteArray("\xc3\xa4"
                                             "11:25:45");
}

void tst_TimeStamp::findsNone()
{
    QFETCH(QByteArray, line);
    QVERIFY(!timeStampOf(line, s_latest));
}

void tst_TimeStamp::guessesTheYear_data()
{
    QTest::addColumn<QByteArray>("line");
    QTest::addColumn<QDate>("latest");
    QTest::addColumn<QString>("clock");
    QTest::newRow("the same day") << QByteArray("Nov 22 11:25:45") << QDate(2026, 11, 22)
                                  << "2026-11-22T11:25:45";
    QTest::newRow("the next day: another zone")
        << QByteArray("Nov 23 00:25:45") << QDate(2026, 11, 22) << "2026-11-23T00:25:45";
    QTest::newRow("later") << QByteArray("Nov 24 00:25:45") << QDate(2026, 11, 22)
                           << "2025-11-24T00:25:45";
    QTest::newRow("before the new year")
        << QByteArray("Dec 31 23:00:00") << QDate(2026, 1, 2) << "2025-12-31T23:00:00";
    QTest::newRow("about the new year")
        << QByteArray("Jan  1 00:00:00") << QDate(2026, 12, 31) << "2027-01-01T00:00:00";
    QTest::newRow("leap day") << QByteArray("Feb 29 00:00:00") << QDate(2026, 11, 22)
                              << "2024-02-29T00:00:00";
    QTest::newRow("leap day, eight years")
        << QByteArray("Feb 29 00:00:00") << QDate(1904, 1, 1) << "1896-02-29T00:00:00";
}

void tst_TimeStamp::guessesTheYear()
{
    QFETCH(QByteArray, line);
    QFETCH(QDate, latest);
    QFETCH(QString, clock);
    const auto stamp = timeStampOf(line, latest);
    QVERIFY(stamp);
    QCOMPARE(stamp->clock, clockAt(clock));
}

void tst_TimeStamp::comparesClocks()
{
    const auto here = timeStampOf("2026-11-22T11:25:45+01:00", s_latest);
    const auto there = timeStampOf("2026-11-22T05:25:45-05:00", s_latest);
    QVERIFY(here && there);
    QVERIFY(here->clock != there->clock);
    QCOMPARE(here->utc(), there->utc());
    QCOMPARE(here->utc(), clockAt("2026-11-22T10:25:45"));
}

void tst_TimeStamp::readsWhatIsWritten_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QString>("clock"); // empty for none
    QTest::addColumn<bool>("hasDate");
    const auto add = [](const char *text, const char *clock, bool hasDate) {
        QTest::newRow(text) << QByteArray(text) << QString(clock) << hasDate;
    };
    add("2026-11-22 11:25:45.5", "2026-11-22T11:25:45.500", true);
    add("2026-11-22 11:25", "2026-11-22T11:25:00", true);
    add("2026-11-22", "2026-11-22T00:00:00", true);
    add("Nov 22 11:25", "2026-11-22T11:25:00", true);
    add("22/Nov/2026:11:25", "2026-11-22T11:25:00", true);
    add("1795346745", "2026-11-22T11:25:45", true);
    add("11:25:45", "1970-01-01T11:25:45", false);
    add("11:25", "1970-01-01T11:25:00", false);
    add("  11:25 ", "1970-01-01T11:25:00", false);
    add("", "", false);
    add("11", "", false);
    add("11:25 x", "", false);
    add("at 11:25", "", false);
    add("2026-11-22 25:00", "", false);
    add("2026-02-30", "", false);
}

void tst_TimeStamp::readsWhatIsWritten()
{
    QFETCH(QByteArray, text);
    QFETCH(QString, clock);
    QFETCH(bool, hasDate);
    const auto stamp = timeStampFrom(text, s_latest);
    QCOMPARE(stamp.has_value(), !clock.isEmpty());
    if (!stamp)
        return;
    QCOMPARE(stamp->clock, clockAt(clock));
    QCOMPARE(stamp->hasDate, hasDate);
}

QTEST_GUILESS_MAIN(tst_TimeStamp)
#include "tst_timestamp.moc"
