// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "files/journal.h"
#include "files/textfilemodel.h"
#include "qtablefastview.h"
#include "search/linefilter.h"
#include "search/rowclock.h"

#include <QColor>
#include <QTemporaryFile>
#include <QTest>

class tst_Journal : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void findsTime_data();
    void findsTime();
    void findsLevel_data();
    void findsLevel();
    void writesTime_data();
    void writesTime();
    void ordersColumns();
    void isRecognised();
    void filtersByShownTime_data();
    void filtersByShownTime();
};

namespace {

//! As journalctl writes it: members in no order, the time behind 200 bytes of others.
QByteArray entry(qint64 microseconds, int priority, const QByteArray &message)
{
    return R"({"__CURSOR":"s=)" + QByteArray(180, 'c') + R"(","_PID":"77","MESSAGE":")" + message
        + R"(","__REALTIME_TIMESTAMP":")" + QByteArray::number(microseconds)
        + R"(","_HOSTNAME":"host","PRIORITY":")" + QByteArray::number(priority)
        + R"(","SYSLOG_IDENTIFIER":"cron","_UID":"0"})" + '\n';
}

constexpr qint64 s_time = 1795346745123456; // 2026-11-22T11:25:45.123456Z

} // namespace

void tst_Journal::findsTime_data()
{
    QTest::addColumn<QByteArray>("line");
    QTest::addColumn<qint64>("time"); // 0: none
    const auto row = [](const char *what, const QByteArray &line, qint64 time) {
        QTest::newRow(what) << line << time;
    };
    row("alone", R"({"__REALTIME_TIMESTAMP":"1795346745123456"})", s_time / 1000);
    row("among others", entry(s_time, 3, "a"), s_time / 1000);
    row("blanks", R"({ "__REALTIME_TIMESTAMP" : "1795346745123456" })", s_time / 1000);
    row("in a message first",
        R"({"MESSAGE":"\"__REALTIME_TIMESTAMP\":\"1\"","__REALTIME_TIMESTAMP":"1795346745123456"})",
        s_time / 1000);
    row("none", R"({"MESSAGE":"a"})", 0);
    row("in a message only", R"({"MESSAGE":"\"__REALTIME_TIMESTAMP\":\"1795346745123456\""})", 0);
    row("a number", R"({"__REALTIME_TIMESTAMP":1795346745123456})", 0);
    row("few digits", R"({"__REALTIME_TIMESTAMP":"1795346745"})", 0);
    row("no digits", R"({"__REALTIME_TIMESTAMP":"17953467451234x6"})", 0);
    row("cut off", R"({"__REALTIME_TIMESTAMP":"17953467)", 0);
    row("cut off before", R"({"__REALTIME_TIMESTAMP)", 0);
    row("empty", "", 0);
}

void tst_Journal::findsTime()
{
    QFETCH(const QByteArray, line);
    QFETCH(const qint64, time);
    const auto found = Journal::timeOf(line);
    QCOMPARE(found.has_value(), time != 0);
    if (found)
        QCOMPARE(*found, (TimeStamp {time, 0, true}));
}

void tst_Journal::findsLevel_data()
{
    QTest::addColumn<QByteArray>("line");
    QTest::addColumn<LogLevel>("level");
    for (int priority = 0; priority < 8; ++priority) {
        const LogLevel level = priority < 4 ? LogLevel::Error
            : priority == 4                 ? LogLevel::Warning
            : priority < 7                  ? LogLevel::Info
                                            : LogLevel::Debug;
        QTest::addRow("%d", priority) << entry(s_time, priority, "error") << level;
    }
    QTest::newRow("eight") << entry(s_time, 8, "error") << LogLevel::None;
    QTest::newRow("none") << QByteArray(R"({"MESSAGE":"error"})") << LogLevel::None;
}

void tst_Journal::findsLevel()
{
    QFETCH(const QByteArray, line);
    QFETCH(const LogLevel, level);
    QCOMPARE(Journal::levelOf(line), level);
}

void tst_Journal::writesTime_data()
{
    QTest::addColumn<QString>("microseconds");
    QTest::addColumn<QString>("text");
    QTest::newRow("time") << "1795346745123456"
                          << "2026-11-22T11:25:45.123456Z";
    QTest::newRow("zeros") << "1795346745000007"
                           << "2026-11-22T11:25:45.000007Z";
    for (const char *other : {"", "1", "17953467451234567", "abcdefghijklmnop"})
        QTest::addRow("'%s'", other) << other << other;
}

void tst_Journal::writesTime()
{
    QFETCH(const QString, microseconds);
    QFETCH(const QString, text);
    QCOMPARE(Journal::timeText(microseconds), text);
    QVERIFY(!text.startsWith("2026") || Journal::mayBeInTime(text));
}

void tst_Journal::ordersColumns()
{
    QCOMPARE(Journal::inOrder({"b", "MESSAGE", "a", "_PID", "__REALTIME_TIMESTAMP", "_HOSTNAME"}),
             QStringList({"__REALTIME_TIMESTAMP", "_HOSTNAME", "_PID", "MESSAGE", "b", "a"}));
}

void tst_Journal::isRecognised()
{
    QTemporaryFile file;
    QVERIFY(file.open());
    file.write(entry(s_time, 6, "started") + entry(s_time + 2'000'000, 3, "broke")
               + entry(s_time + 4'000'000, 7, "an error was seen"));
    file.flush();
    TextFileModel model(file.fileName());
    model.start();
    QTRY_COMPARE(model.rowCount(), 3);
    QTRY_VERIFY(model.isJournal());
    QCOMPARE(model.index(0, 0).data().toString(), "2026-11-22T11:25:45.123456Z");
    QCOMPARE(model.index(1, 5).data().toString(), "broke");
    QCOMPARE(model.headerData(5, Qt::Horizontal).toString(), "MESSAGE");
    // The priority counts, not what the message says.
    QVERIFY(model.index(1, 0).data(Qt::ForegroundRole).isValid());
    QCOMPARE(model.index(1, 0).data(Qt::ForegroundRole).value<QColor>(),
             levelColor(LogLevel::Error));
    QCOMPARE(model.index(2, 0).data(Qt::ForegroundRole).value<QColor>(),
             levelColor(LogLevel::Debug));
    RowClock clock(model);
    QCOMPARE(clock.timeOf(1)->clock, s_time / 1000 + 2000);
}

void tst_Journal::filtersByShownTime_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("rows");
    QTest::newRow("time") << "11:25:47" << 1;
    QTest::newRow("date") << "2026-11-22t11" << 3;
    QTest::newRow("digits of the file") << "1795346745" << 0;
    QTest::newRow("message") << "broke" << 1;
    QTest::newRow("number in a message") << "-5" << 1;
}

void tst_Journal::filtersByShownTime()
{
    QFETCH(const QString, text);
    QFETCH(const int, rows);
    QTemporaryFile file;
    QVERIFY(file.open());
    file.write(entry(s_time, 6, "started") + entry(s_time + 2'000'000, 3, "broke")
               + entry(s_time + 4'000'000, 7, "is at -5"));
    file.flush();
    TextFileModel model(file.fileName());
    model.start();
    QTRY_COMPARE(model.rowCount(), 3);
    QTRY_VERIFY(model.isJournal());
    LineFilter filter({0, 1, 2, 3, 4, 5}, TextMatcher(text, {}));
    QVERIFY(filter.takeOver(&model));
    QCOMPARE(filter.rowCount(), rows);
}

QTEST_MAIN(tst_Journal)
#include "tst_journal.moc"
