// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

// A file and those that were rotated away from it, as one table.

#include "files/textfilemodel.h"
#include "gzip.h"

#include <QAbstractItemModelTester>
#include <QDir>
#include <QFile>
#include <QRandomGenerator>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include <unistd.h>

namespace {

using Activity = TextFileModel::Activity;

constexpr int s_fewFiles = 12;

FormatRequest withOlderFiles()
{
    FormatRequest request;
    request.hasOlderFiles = true;
    return request;
}

//! A model of a file and older ones, under a model tester, started at once.
struct JoinedModel : TextFileModel
{
    explicit JoinedModel(const QString &path, const FormatRequest &request = withOlderFiles())
        : TextFileModel(path, request)
        , tester(this, QAbstractItemModelTester::FailureReportingMode::QtTest)
    {
        start();
    }

    bool isSettled() const { return activity() == Activity::Following && olderRows() >= 0; }
    QStringList texts() const
    {
        QStringList texts;
        for (int row = 0; row < rowCount(); ++row)
            texts.append(index(row, 1).data().toString());
        return texts;
    }

    QAbstractItemModelTester tester;
};

} // namespace

class tst_ViewerRotation : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void showsOlderFilesFirst();
    void showsThemOnDemandOnly();
    void readsCompressedOnes();
    void endsLastLines_data();
    void endsLastLines();
    void readsAnyNumberOfFiles();
    void recognisesColumnsOfAllOfThem();
    void findsTextInAnyOfThem();
    void leavesOutWhatCannotBeRead();
    void namesDamagedFilesWithEachNews();
    void keepsWhatCameBeforeDamage();
    void followsTheNewest();
    void goesOnAfterRotation();
    void readsWhatIsWrittenAfterRenaming();
    void rotatesAgainAndAgain();
    void waitsForTheNewest();
    void beginsAnewWhenTruncated();
    void stopsAndGoesOn();
    void beginsAnewWithoutAName();

private:
    QString path(const QString &name) const { return m_folder->filePath(name); }
    void write(const QString &name, const QByteArray &bytes,
               QIODevice::OpenMode mode = QIODevice::WriteOnly) const;
    void rename(const QString &from, const QString &to) const;

    std::unique_ptr<QTemporaryDir> m_folder; //!< one per test
};

void tst_ViewerRotation::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    QVERIFY(m_folder->isValid());
}

void tst_ViewerRotation::write(const QString &name, const QByteArray &bytes,
                               QIODevice::OpenMode mode) const
{
    QFile file(path(name));
    QVERIFY(file.open(mode | QIODevice::Unbuffered));
    QCOMPARE(file.write(bytes), bytes.size());
}

//! Over the file that has the name, as rotation does.
void tst_ViewerRotation::rename(const QString &from, const QString &to) const
{
    QFile::remove(path(to));
    QVERIFY(QFile::rename(path(from), path(to)));
}

void tst_ViewerRotation::showsOlderFilesFirst()
{
    write("log.2", "a\nb\n");
    write("log.1", "c\n");
    write("log", "d\ne\n");
    JoinedModel model(path("log"));
    QTRY_VERIFY(model.isSettled());
    QCOMPARE(model.texts(), QStringList({"a", "b", "c", "d", "e"}));
    QCOMPARE(model.olderRows(), 3);
    QCOMPARE(model.fileSize(), quint64(10));
    QCOMPARE(model.index(4, 0).data().toString(), "5");
    QVERIFY(model.leftOut().isEmpty());
}

void tst_ViewerRotation::showsThemOnDemandOnly()
{
    write("log.1", "c\n");
    write("log", "d\n");
    JoinedModel model(path("log"), {});
    QTRY_VERIFY(model.isSettled());
    QCOMPARE(model.texts(), QStringList("d"));
    QCOMPARE(model.olderRows(), 0);
}

void tst_ViewerRotation::readsCompressedOnes()
{
#ifndef VIEWER_HAS_LIBARCHIVE
    QSKIP("This build reads no compressed files.");
#endif
    write("log.3.gz", gzip("a\nb\n"));
    write("log.2.gz", gzip(""));
    write("log.1.gz", gzip("c"));
    write("log", "d\n");
    JoinedModel model(path("log"));
    QTRY_VERIFY(model.isSettled());
    QCOMPARE(model.texts(), QStringList({"a", "b", "c", "d"}));
    QVERIFY(!model.isCompressed());
    JoinedModel older(path("log.1.gz"));
    QTRY_COMPARE(older.activity(), Activity::Ended);
    QCOMPARE(older.texts(), QStringList({"a", "b", "c"}));
}

void tst_ViewerRotation::endsLastLines_data()
{
    QTest::addColumn<QStringConverter::Encoding>("encoding");
    QTest::addColumn<QString>("lineEnd");
    QTest::newRow("line feed") << QStringConverter::Utf8 << "\n";
    QTest::newRow("carriage return") << QStringConverter::Utf8 << "\r";
    QTest::newRow("both") << QStringConverter::Utf8 << "\r\n";
    QTest::newRow("UTF-16LE") << QStringConverter::Utf16LE << "\n";
    QTest::newRow("UTF-16BE") << QStringConverter::Utf16BE << "\n";
    QTest::newRow("UTF-32LE") << QStringConverter::Utf32LE << "\n";
}

void tst_ViewerRotation::endsLastLines()
{
    QFETCH(const QStringConverter::Encoding, encoding);
    QFETCH(const QString, lineEnd);
    const auto encoded = [&](const QString &text, QStringConverter::Flags flags) {
        QStringEncoder encoder(encoding, flags);
        return QByteArray(encoder(text));
    };
    write("log.3", encoded("a" + lineEnd + "b", QStringConverter::Flag::WriteBom));
    write("log.2", encoded("", {}));
    write("log.1", encoded("c" + lineEnd, {}));
    write("log", encoded("d", {}));
    JoinedModel model(path("log"));
    QTRY_VERIFY(model.isSettled());
    QCOMPARE(model.texts(), QStringList({"a", "b", "c", "d"}));
    QCOMPARE(model.olderRows(), 3);
}

//! Held against one file with all of the text.
void tst_ViewerRotation::readsAnyNumberOfFiles()
{
    constexpr quint32 seed = 20261122;
    QRandomGenerator random(seed);
    QByteArray whole;
    int lines = 0;
    for (int number = s_fewFiles; number >= 0; --number) {
        QByteArray text;
        const int count = random.bounded(3) == 0 ? random.bounded(3) : random.bounded(9000);
        for (int line = 0; line < count; ++line)
            text += QByteArray::number(++lines) + QByteArray(random.bounded(60), 'x') + '\n';
        whole += text;
        if (number > 0 && random.bounded(2) == 0)
            text.chop(1);
        write(number == 0 ? "log" : "log." + QString::number(number), text);
    }
    write("whole", whole);
    JoinedModel model(path("log"));
    JoinedModel other(path("whole"), {});
    QTRY_VERIFY(model.isSettled());
    QTRY_VERIFY(other.isSettled());
    QCOMPARE(model.rowCount(), lines);
    QCOMPARE(model.texts(), other.texts());
    for (int i = 0; i < 500; ++i) {
        const int row = random.bounded(lines);
        QCOMPARE(model.rowBytes(row, 1000), other.rowBytes(row, 1000));
    }
}

void tst_ViewerRotation::recognisesColumnsOfAllOfThem()
{
    write("a.2.csv", "name,value\nx,1\n");
    write("a.1.csv", "y,2\n");
    write("a.csv", "z,3\n");
    JoinedModel model(path("a.csv"));
    QTRY_VERIFY(model.isSettled());
    QCOMPARE(model.columnCount(), 2);
    QCOMPARE(model.headerData(0, Qt::Horizontal).toString(), "name");
    QTRY_COMPARE(model.rowCount(), 3);
    QCOMPARE(model.texts(), QStringList({"1", "2", "3"}));
}

void tst_ViewerRotation::findsTextInAnyOfThem()
{
    write("log.1", "needle\nhay\n");
    write("log", "hay\nneedle\n");
    JoinedModel model(path("log"));
    QTRY_VERIFY(model.isSettled());
    const auto pattern = model.patternFor("needle", {1});
    QVERIFY(pattern);
    QCOMPARE(model.look(*pattern, 0, true).row, 0);
    QCOMPARE(model.look(*pattern, 1, true).row, 3);
    QCOMPARE(model.look(*pattern, 2, false).row, 0);
}

void tst_ViewerRotation::leavesOutWhatCannotBeRead()
{
#ifndef VIEWER_HAS_LIBARCHIVE
    QSKIP("This build reads no compressed files.");
#endif
    write("log.3", "a\n");
    write("log.2.gz", QByteArray("\x1f\x8b\x08", 3)); // cut off
    write("log.1", "c\n");
    write("log", "d\n");
    JoinedModel model(path("log"));
    QTRY_VERIFY(model.isSettled());
    QCOMPARE(model.texts(), QStringList({"a", "c", "d"}));
    QCOMPARE(model.leftOut(), QStringList(path("log.2.gz")));
}

//! Whoever takes the news at once hears of the damage before the text begins.
void tst_ViewerRotation::namesDamagedFilesWithEachNews()
{
#ifndef VIEWER_HAS_LIBARCHIVE
    QSKIP("This build reads no compressed files.");
#endif
    write("log.2.gz", QByteArray("\x1f\x8b\x08", 3)); // cut off
    write("log.1", "c\n");
    write("log", "d\n");
    FormatRequest request;
    request.hasOlderFiles = true;
    FileFollower follower(path("log"), request, 1000);
    bool hasBegun = false;
    FollowerNews last;
    connect(&follower, &FileFollower::news, this, [&] {
        last = follower.takeNews();
        hasBegun = hasBegun || last.restart == FollowerNews::Restart::Opened;
        if (hasBegun)
            QCOMPARE(last.leftOut, QStringList(path("log.2.gz")));
    });
    follower.start();
    QTRY_COMPARE(last.activity, FollowerNews::Activity::Following);
    QVERIFY(hasBegun);
    QCOMPARE(last.leftOut, QStringList(path("log.2.gz")));
    follower.finish();
}

void tst_ViewerRotation::keepsWhatCameBeforeDamage()
{
#ifndef VIEWER_HAS_LIBARCHIVE
    QSKIP("This build reads no compressed files.");
#endif
    QByteArray text;
    for (int line = 1; line <= 20000; ++line)
        text += QByteArray::number(line * 7919) + '\n';
    QByteArray bytes = gzip(text);
    bytes.truncate(bytes.size() - 6);
    write("log.1.gz", bytes);
    write("log", "last\n");
    JoinedModel model(path("log"));
    QTRY_VERIFY(model.isSettled());
    QCOMPARE(model.leftOut(), QStringList(path("log.1.gz")));
    QVERIFY(model.rowCount() > 1);
    QCOMPARE(model.index(0, 1).data().toString(), "7919");
    QCOMPARE(model.index(model.rowCount() - 1, 1).data().toString(), "last");
}

void tst_ViewerRotation::followsTheNewest()
{
    write("log.1", "a\n");
    write("log", "b");
    JoinedModel model(path("log"));
    QTRY_VERIFY(model.isSettled());
    write("log", "c\nd\n", QIODevice::Append);
    QTRY_COMPARE(model.texts(), QStringList({"a", "bc", "d"}));
    QCOMPARE(model.olderRows(), 1);
}

//! The same rows, and those of the new file behind them.
void tst_ViewerRotation::goesOnAfterRotation()
{
    write("log.1", "a\n");
    write("log", "b\n");
    JoinedModel model(path("log"));
    QTRY_VERIFY(model.isSettled());
    const QPersistentModelIndex row = model.index(1, 1);
    const QSignalSpy resets(&model, &QAbstractItemModel::modelReset);
    rename("log.1", "log.2");
    rename("log", "log.1");
    QTRY_VERIFY(model.isMissing());
    write("log", "c\n");
    QTRY_COMPARE(model.texts(), QStringList({"a", "b", "c"}));
    QVERIFY(!model.isMissing());
    QCOMPARE(resets.count(), 0);
    QCOMPARE(row.data().toString(), "b");
    QTRY_COMPARE(model.olderRows(), 2);
    write("log", "d\n", QIODevice::Append);
    QTRY_COMPARE(model.texts(), QStringList({"a", "b", "c", "d"}));
}

void tst_ViewerRotation::readsWhatIsWrittenAfterRenaming()
{
    write("log", "a\n");
    JoinedModel model(path("log"));
    QTRY_VERIFY(model.isSettled());
    QFile former(path("log"));
    QVERIFY(former.open(QIODevice::Append | QIODevice::Unbuffered));
    rename("log", "log.1");
    write("log", "c\n");
    QCOMPARE(former.write("b\n"), 2);
    QTRY_COMPARE(model.texts(), QStringList({"a", "b", "c"}));
}

void tst_ViewerRotation::rotatesAgainAndAgain()
{
    write("log", "0\n");
    JoinedModel model(path("log"));
    QTRY_VERIFY(model.isSettled());
    const QSignalSpy resets(&model, &QAbstractItemModel::modelReset);
    QStringList expected("0");
    for (int i = 1; i <= 5; ++i) {
        rename("log", "log." + QString::number(100 - i));
        write("log", QByteArray::number(i) + '\n');
        expected.append(QString::number(i));
        QTRY_COMPARE(model.texts(), expected);
    }
    QCOMPARE(resets.count(), 0);
    JoinedModel again(path("log"));
    QTRY_VERIFY(again.isSettled());
    QCOMPARE(again.texts(), expected);
}

void tst_ViewerRotation::waitsForTheNewest()
{
    write("log.1", "a\n");
    JoinedModel model(path("log"));
    QTRY_VERIFY(model.isMissing());
    QCOMPARE(model.texts(), QStringList("a"));
    QTRY_COMPARE(model.activity(), Activity::Following);
    write("log", "b\n");
    QTRY_COMPARE(model.texts(), QStringList({"a", "b"}));
    QVERIFY(!model.isMissing());
}

//! Copied and cut off, as rotation does for those who keep the file open.
void tst_ViewerRotation::beginsAnewWhenTruncated()
{
    write("log.1", "a\n");
    write("log", "b\nc\n");
    JoinedModel model(path("log"));
    QTRY_VERIFY(model.isSettled());
    rename("log.1", "log.2");
    QVERIFY(QFile::copy(path("log"), path("log.1")));
    QVERIFY(::truncate(qPrintable(path("log")), 0) == 0);
    QTRY_COMPARE(model.lastRestart(), TextFileModel::Restart::Truncated);
    write("log", "d\n", QIODevice::Append);
    QTRY_COMPARE(model.texts(), QStringList({"a", "b", "c", "d"}));
}

void tst_ViewerRotation::stopsAndGoesOn()
{
    write("log.1", "a\n");
    write("log", "b\n");
    JoinedModel model(path("log"));
    QTRY_VERIFY(model.isSettled());
    model.stopIndexing();
    QTRY_COMPARE(model.activity(), Activity::Stopped);
    rename("log", "log.0");
    write("log", "c\n");
    model.resumeIndexing();
    QTRY_COMPARE(model.texts(), QStringList({"a", "b", "c"}));
}

//! What was written anew may be gone by the time somebody looks.
void tst_ViewerRotation::beginsAnewWithoutAName()
{
    write("log", "a\nb\n");
    JoinedModel model(path("log"));
    QTRY_VERIFY(model.isSettled());
    model.stopIndexing();
    QTRY_COMPARE(model.activity(), Activity::Stopped);
    write("log", "x\ny\nz\n");
    QVERIFY(QFile::remove(path("log")));
    model.resumeIndexing();
    QTRY_COMPARE(model.texts(), QStringList({"x", "y", "z"}));
    QTRY_VERIFY(model.isMissing());
    QTRY_COMPARE(model.activity(), Activity::Following);
    write("log", "c\n");
    QTRY_COMPARE(model.texts(), QStringList({"x", "y", "z", "c"}));
}

QTEST_GUILESS_MAIN(tst_ViewerRotation)
#include "tst_viewerrotation.moc"
