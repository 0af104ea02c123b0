// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "basics/distinctnames.h"

#include <QTest>

class tst_DistinctNames : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void names_data();
    void names();
};

void tst_DistinctNames::names_data()
{
    QTest::addColumn<QStringList>("paths");
    QTest::addColumn<QStringList>("names");
    const auto row = [](const char *what, const QStringList &paths, const QStringList &names) {
        QTest::newRow(what) << paths << names;
    };
    row("none", {}, {});
    row("one", {"/var/log/syslog"}, {"syslog"});
    row("other names", {"/var/log/syslog", "/var/log/auth.log"}, {"syslog", "auth.log"});
    row("one folder up", {"/a/log", "/b/log"}, {"a/log", "b/log"});
    row("two folders up", {"/a/x/log", "/b/x/log"}, {"a/x/log", "b/x/log"});
    row("as far as each needs", {"/a/x/log", "/b/x/log", "/b/y/log", "/z"},
        {"a/x/log", "b/x/log", "y/log", "z"});
    row("one above the other", {"/log", "/x/log"}, {"/log", "x/log"});
    row("the same twice", {"/a/log", "/a/log"}, {"log", "log"});
    row("the same twice and another", {"/a/log", "/a/log", "/b/log"}, {"a/log", "a/log", "b/log"});
    row("no path", {"Feed", "Feed", "/a/Feed"}, {"Feed", "Feed", "a/Feed"});
}

void tst_DistinctNames::names()
{
    QFETCH(QStringList, paths);
    QTEST(distinctNames(paths), "names");
}

QTEST_GUILESS_MAIN(tst_DistinctNames)

#include "tst_distinctnames.moc"
