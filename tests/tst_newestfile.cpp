// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "files/newestfile.h"
#include "files/newestfilewatch.h"
#include "files/textfilemodel.h"
#include "windows/filewindow.h"
#include "windows/framestatistics.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QStatusBar>
#include <QTemporaryDir>
#include <QTest>

class tst_NewestFile : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void tellsPatterns_data();
    void tellsPatterns();
    void findsTheNewest();
    void windowGoesOnToANewerFile();
    void windowWaitsForTheFirst();
    void windowThatDoesNotFollowWaitsForTheFirst();
    void windowStaysWithTheRowsOfAReader();
    void watchTellsEachTime();
    void watchEndsAtOnce();

private:
    //! Writes a file that was written \a secondsAgo.
    void write(const QString &name, int secondsAgo, const QByteArray &text = "a\n") const;
    QString path(const QString &name) const { return m_directory->filePath(name); }

    FrameStatistics m_statistics;
    std::unique_ptr<QTemporaryDir> m_directory; //!< one per test
};

void tst_NewestFile::init()
{
    m_directory = std::make_unique<QTemporaryDir>();
}

void tst_NewestFile::write(const QString &name, int secondsAgo, const QByteArray &text) const
{
    QFile file(path(name));
    QVERIFY(file.open(QIODevice::ReadWrite | QIODevice::Append));
    QCOMPARE(file.write(text), text.size());
    QVERIFY(file.flush());
    const QDateTime time = QDateTime::currentDateTimeUtc().addSecs(-secondsAgo);
    QVERIFY(file.setFileTime(time, QFileDevice::FileModificationTime));
}

void tst_NewestFile::tellsPatterns_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("isPattern");
    QTest::newRow("star") << "*.log" << true;
    QTest::newRow("question mark") << "a?.log" << true;
    QTest::newRow("characters") << "a[0-9].log" << true;
    QTest::newRow("name") << "a.log" << false;
    QTest::newRow("standard input") << "-" << false;
    QTest::newRow("a file of that name") << "is[1].log" << false;
}

void tst_NewestFile::tellsPatterns()
{
    QFETCH(QString, name);
    QFETCH(bool, isPattern);
    write("is[1].log", 0);
    QCOMPARE(isFilePattern(path(name)), isPattern);
    QVERIFY(!isFilePattern(path("folder*/a.log")));
}

void tst_NewestFile::findsTheNewest()
{
    QVERIFY(newestFile(path("*.log")).isEmpty());
    write("a.log", 30);
    write("b.log", 10);
    write("c.log", 20);
    write("newer.txt", 0);
    QVERIFY(QDir().mkpath(path("folder.log")));
    QCOMPARE(newestFile(path("*.log")), path("b.log"));
    QCOMPARE(newestFile(path("[ac].log")), path("c.log"));
    QVERIFY(newestFile(path("missing/*.log")).isEmpty());
}

void tst_NewestFile::windowGoesOnToANewerFile()
{
    write("a.log", 100, "1\n2\n");
    FileWindow window(path("*.log"), {}, &m_statistics);
    window.show();
    QTRY_COMPARE(window.rows(), 2);
    QVERIFY(window.windowTitle().startsWith("a.log"));
    QVERIFY(window.windowTitle().endsWith("*.log"));
    QCOMPARE(window.windowFilePath(), path("*.log"));
    write("b.log", 50, "1\n2\n3\n");
    QTRY_COMPARE(window.rows(), 3);
    QVERIFY(window.windowTitle().startsWith("b.log"));
    QVERIFY(window.statusBar()->currentMessage().contains("b.log"));
    QVERIFY(window.isFollowing());
}

void tst_NewestFile::windowWaitsForTheFirst()
{
    FileWindow window(path("*.log"), {}, &m_statistics);
    window.show();
    QTRY_VERIFY(window.hasFailed());
    write("a.log", 0, "1\n2\n");
    QTRY_COMPARE(window.rows(), 2);
    QVERIFY(!window.hasFailed());
}

void tst_NewestFile::windowThatDoesNotFollowWaitsForTheFirst()
{
    FileWindow window(path("*.log"), {}, &m_statistics);
    window.setFollowing(false);
    window.show();
    QTRY_VERIFY(window.hasFailed());
    write("a.log", 50, "1\n2\n");
    QTRY_COMPARE(window.rows(), 2);
    QVERIFY(!window.isFollowing());
}

void tst_NewestFile::windowStaysWithTheRowsOfAReader()
{
    write("a.log", 100, "1\n2\n");
    FileWindow window(path("*.log"), {}, &m_statistics);
    window.show();
    QTRY_COMPARE(window.rows(), 2);
    window.showLine(1);
    QVERIFY(!window.isFollowing());
    write("b.log", 50, "1\n2\n3\n");
    write("a.log", 100, "3\n4\n"); // read within the same time
    QTRY_COMPARE(window.rows(), 4);
    QVERIFY(window.windowTitle().startsWith("a.log"));
    window.setFollowing(true);
    QTRY_COMPARE(window.rows(), 3);
}

void tst_NewestFile::watchTellsEachTime()
{
    write("a.log", 100);
    NewestFileWatch watch;
    QStringList told;
    connect(&watch, &NewestFileWatch::found, this,
            [&told](const QString &newest) { told.append(newest); });
    watch.start(path("*.log"));
    QTRY_COMPARE(told, QStringList {path("a.log")});
    write("b.log", 50);
    QTRY_COMPARE(told.last(), path("b.log"));
}

void tst_NewestFile::watchEndsAtOnce()
{
    for (int i = 0; i < 10; ++i) {
        NewestFileWatch watch;
        watch.start(path("*.log"));
    }
    const NewestFileWatch unused;
}

QTEST_MAIN(tst_NewestFile)

#include "tst_newestfile.moc"
