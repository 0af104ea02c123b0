// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "files/loglevel.h"

#include <QTest>

Q_DECLARE_METATYPE(LogLevel)

class tst_LogLevel : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void levelOfALine_data();
    void levelOfALine();
};

void tst_LogLevel::levelOfALine_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<LogLevel>("level");
    QTest::newRow("empty") << "" << LogLevel::None;
    QTest::newRow("none") << "a plain line of text" << LogLevel::None;
    QTest::newRow("first word") << "ERROR: no room" << LogLevel::Error;
    QTest::newRow("after the time") << "2026-11-22 08:10:15 WARN  slow" << LogLevel::Warning;
    QTest::newRow("in brackets") << "[debug] x" << LogLevel::Debug;
    QTest::newRow("as a field") << "ts=1 level=error msg=x" << LogLevel::Error;
    QTest::newRow("of a record") << "{\"level\":\"fatal\"}" << LogLevel::Error;
    QTest::newRow("at the end") << "x trace" << LogLevel::Debug;
    QTest::newRow("the first counts") << "INFO there was no error" << LogLevel::Info;
    QTest::newRow("part of a word") << "errors terror informal" << LogLevel::None;
    QTest::newRow("beside an underscore") << "log_error" << LogLevel::Error;
    QTest::newRow("beside a digit") << "3err" << LogLevel::Error;
    QTest::newRow("mixed case") << "Warning: x" << LogLevel::Warning;
    QTest::newRow("longest name") << "emergency" << LogLevel::Error;
    QTest::newRow("too late") << QString(201, u'-') + "ERROR" << LogLevel::None;
    QTest::newRow("just in time") << QString(199, u'-') + "ERROR" << LogLevel::Error;
    QTest::newRow("a word before") << QString(500, u'a') + " ERROR" << LogLevel::None;
}

void tst_LogLevel::levelOfALine()
{
    QFETCH(QString, line);
    QTEST(levelOf(line), "level");
    QTEST(levelOfAscii(line.toLatin1()), "level");
    QTEST(levelOfAscii(line.toLatin1().left(levelBytes)), "level");
}

QTEST_GUILESS_MAIN(tst_LogLevel)

#include "tst_loglevel.moc"
