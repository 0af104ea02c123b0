// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "files/rotatedfiles.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTest>

class tst_RotatedFiles : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void findsOlderFiles_data();
    void findsOlderFiles();
    void looksInTheFolderOfTheFile();
    void leavesFoldersOut();
};

void tst_RotatedFiles::findsOlderFiles_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QStringList>("inFolder");
    QTest::addColumn<QStringList>("older");
    using List = QStringList;
    QTest::newRow("nothing") << "syslog" << List {"syslog", "kern.log", "syslog2", "my.syslog.1"}
                             << List {};
    QTest::newRow("numbers") << "syslog"
                             << List {"syslog", "syslog.1", "syslog.2.gz", "syslog.10.gz"}
                             << List {"syslog.10.gz", "syslog.2.gz", "syslog.1"};
    QTest::newRow("all kinds of compression")
        << "a" << List {"a.1", "a.2.gz", "a.3.xz", "a.4.zst", "a.5.bz2", "a.6.zip"}
        << List {"a.5.bz2", "a.4.zst", "a.3.xz", "a.2.gz", "a.1"};
    QTest::newRow("numbers before the suffix")
        << "app.log" << List {"app.log", "app.1.log", "app-2.log.gz", "app.1.txt", "app.x.log"}
        << List {"app-2.log.gz", "app.1.log"};
    QTest::newRow("numbers behind the suffix")
        << "app.log" << List {"app.log.1", "app.log.old", "app.log.2.gz"}
        << List {"app.log.2.gz", "app.log.1"};
    QTest::newRow("dates") << "app.log"
                           << List {"app.log-20261121", "app.log-20260101.gz", "app.log-20261120"}
                           << List {"app.log-20260101.gz", "app.log-20261120", "app.log-20261121"};
    QTest::newRow("dates with hyphens")
        << "app.log" << List {"app.2026-11-21.log", "app.2025-12-31.log.gz", "app-2026-01-02.log"}
        << List {"app.2025-12-31.log.gz", "app-2026-01-02.log", "app.2026-11-21.log"};
    QTest::newRow("numbers within a date count upwards")
        << "app.log"
        << List {"app.2026-11-21.10.log", "app.2026-11-21.2.log", "app.2026-11-20.3.log.gz",
                 "app.2026-11-21.log"}
        << List {"app.2026-11-20.3.log.gz", "app.2026-11-21.log", "app.2026-11-21.2.log",
                 "app.2026-11-21.10.log"};
    QTest::newRow("times within a date")
        << "a.log" << List {"a.log-20261121-093000", "a.log-20261121-083000"}
        << List {"a.log-20261121-083000", "a.log-20261121-093000"};
    QTest::newRow("numbers, then dates")
        << "a" << List {"a-20261121", "a.1", "a.2.gz"} << List {"a.2.gz", "a.1", "a-20261121"};
    QTest::newRow("no date") << "a" << List {"a.20261301", "a.3"} << List {"a.20261301", "a.3"};
    QTest::newRow("about to be compressed")
        << "a" << List {"a.1", "a.1.gz", "a.2.gz", "a.2"} << List {"a.2", "a.1"};
    QTest::newRow("of a rotated file")
        << "a.2" << List {"a", "a.1", "a.2", "a.3.gz", "a.4.gz"} << List {"a.4.gz", "a.3.gz"};
    QTest::newRow("of a compressed one")
        << "a.3.gz" << List {"a", "a.1", "a.2", "a.3.gz", "a.4.gz"} << List {"a.4.gz"};
    QTest::newRow("of a dated one")
        << "a-20261120.log" << List {"a.log", "a-20261121.log", "a-20261120.log", "a-20261119.log"}
        << List {"a-20261119.log"};
    QTest::newRow("not there itself") << "a" << List {"a.1"} << List {"a.1"};
    QTest::newRow("characters of expressions")
        << "a+(b).log" << List {"a+(b).log.1", "aa(b).log.1"} << List {"a+(b).log.1"};
    QTest::newRow("hidden") << ".xsession" << List {".xsession", ".xsession.1"}
                            << List {".xsession.1"};
    QTest::newRow("only a suffix")
        << "log" << List {"log.gz", ".gz", "log.1.gz"} << List {"log.1.gz"};
    QTest::newRow("very long number") << "a" << List {"a.123456789012345678901"} << List {};
}

void tst_RotatedFiles::findsOlderFiles()
{
    QFETCH(const QString, name);
    QFETCH(const QStringList, inFolder);
    QFETCH(const QStringList, older);
    const QTemporaryDir folder;
    for (const QString &file : inFolder)
        QVERIFY(QFile(folder.filePath(file)).open(QIODevice::WriteOnly));
    QStringList found;
    for (const QString &path : olderFiles(folder.filePath(name))) {
        QVERIFY2(QFile::exists(path), qPrintable(path));
        found.append(QFileInfo(path).fileName());
    }
    QCOMPARE(found, older);
}

void tst_RotatedFiles::looksInTheFolderOfTheFile()
{
    const QTemporaryDir folder;
    QVERIFY(QDir(folder.path()).mkdir("sub"));
    for (const char *name : {"a", "a.1", "sub/a", "sub/a.2"})
        QVERIFY(QFile(folder.filePath(name)).open(QIODevice::WriteOnly));
    QCOMPARE(olderFiles(folder.filePath("sub/a")), QStringList {folder.filePath("sub/a.2")});
}

void tst_RotatedFiles::leavesFoldersOut()
{
    const QTemporaryDir folder;
    QVERIFY(QDir(folder.path()).mkdir("a.1"));
    QCOMPARE(olderFiles(folder.filePath("a")), QStringList());
}

QTEST_GUILESS_MAIN(tst_RotatedFiles)
#include "tst_rotatedfiles.moc"
