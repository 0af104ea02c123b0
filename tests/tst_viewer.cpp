// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include <QFile>
#include <QImage>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>
#include <QUrl>

#include <sys/stat.h>

namespace {

//! What a run of the program left behind.
struct Run
{
    int status = -1;   //!< exit status; −1 if it did not end by itself
    QByteArray output; //!< stdout
    QByteArray errors; //!< stderr

    QJsonObject stats() const { return QJsonDocument::fromJson(output).object(); }
};

//! Two lines as gzip compresses them.
const QByteArray s_gzip =
    QByteArray::fromBase64("H4sIAAAAAAACA0vLLCouUcjJzEvlKk5Nzs9LgbABLFpFXRcAAAA=");

Run run(const QStringList &arguments)
{
    QProcess process;
    process.start(VIEWER_PROGRAM, arguments);
    process.closeWriteChannel();
    Run result;
    if (process.waitForFinished(120'000) && process.exitStatus() == QProcess::NormalExit)
        result.status = process.exitCode();
    result.output = process.readAllStandardOutput();
    result.errors = process.readAllStandardError();
    return result;
}

} // namespace

class tst_Viewer : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void explainsItself();
    void manualTellsAllOptions();
    void tellsVersion();
    void refusesWrongArguments_data();
    void refusesWrongArguments();
    void countsRows_data();
    void countsRows();
    void printsStats();
    void savesScreenshot();
    void reportsUnwritableScreenshot();
    void runsFeedWithoutFile();
    void failsForUnreadableFile_data();
    void failsForUnreadableFile();
    void goesOnWithOtherFilesAndFails();
    void opensUrls();
    void explainsThatThereIsNoDisplay();
    void readsStandardInput();
    void readsEmptyStandardInput();
    void readsFileAsStandardInput();
    void readsFifo();
    void readsCompressedStandardInput();
    void reportsCutArchive();
    void needsNoDisplay();

private:
    QString file(const QString &name, const QByteArray &text) const;
    QString path(const QString &name) const { return m_directory->filePath(name); }

    std::unique_ptr<QTemporaryDir> m_directory; //!< one per test
};

void tst_Viewer::init()
{
    m_directory = std::make_unique<QTemporaryDir>();
    QVERIFY(m_directory->isValid());
    qputenv("LANGUAGE", "en"); // what the program says is compared, wherever it runs
}

//! Writes a file and returns its path.
QString tst_Viewer::file(const QString &name, const QByteArray &text) const
{
    QFile file(path(name));
    if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size())
        qFatal("A test file cannot be written.");
    return file.fileName();
}

void tst_Viewer::explainsItself()
{
    const Run help = run({"--help"});
    QCOMPARE(help.status, 0);
    for (const char *option : {"--delimiter", "--encoding", "--no-header", "--screenshot",
                               "--seconds", "--stats", "--help", "--version"})
        QVERIFY2(help.output.contains(option), option);
}

void tst_Viewer::manualTellsAllOptions()
{
    QFile manual(QStringLiteral(VIEWER_MANUAL));
    QVERIFY(manual.open(QIODevice::ReadOnly));
    const QByteArray text = manual.readAll().replace("\\-", "-");
    const QString help = QString::fromUtf8(run({"--help"}).output);
    int options = 0;
    for (auto found = QRegularExpression("--[a-z-]+").globalMatch(help); found.hasNext();) {
        const QByteArray option = found.next().captured().toLatin1();
        QVERIFY2(text.contains(option), option);
        ++options;
    }
    QVERIFY(options >= 14);
}

void tst_Viewer::tellsVersion()
{
    const Run version = run({"--version"});
    QCOMPARE(version.status, 0);
    QCOMPARE(version.output.trimmed(), QByteArray("vantix-viewer " VIEWER_VERSION));
}

void tst_Viewer::refusesWrongArguments_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::newRow("unknown option") << QStringList {"--nonsense"};
    QTest::newRow("long delimiter") << QStringList {"--delimiter", "ab"};
    QTest::newRow("unknown encoding") << QStringList {"--encoding", "nonsense"};
    QTest::newRow("no encoding") << QStringList {"--encoding", ""};
    QTest::newRow("negative seconds") << QStringList {"--seconds=-1"};
    QTest::newRow("seconds in words") << QStringList {"--seconds", "two"};
    QTest::newRow("rate too high") << QStringList {"--rate", "50001"};
    QTest::newRow("unknown format") << QStringList {"--format", "nonsense"};
    QTest::newRow("format and delimiter") << QStringList {"--format", "json", "--delimiter", "tab"};
    QTest::newRow("header and none") << QStringList {"--header", "--no-header"};
    QTest::newRow("new rows elsewhere") << QStringList {"--new-rows", "left"};
}

void tst_Viewer::refusesWrongArguments()
{
    QFETCH(QStringList, arguments);
    const Run refused = run(arguments);
    QCOMPARE(refused.status, 1);
    QVERIFY(!refused.errors.isEmpty());
    QVERIFY(refused.output.isEmpty());
}

void tst_Viewer::countsRows_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<int>("rows");
    QTest::newRow("text") << QByteArray("one\ntwo\nthree") << QStringList() << 3;
    QTest::newRow("empty") << QByteArray() << QStringList() << 0;
    QTest::newRow("header") << QByteArray("a,b\n1,2\n") << QStringList() << 1;
    QTest::newRow("no header") << QByteArray("a,b\n1,2\n") << QStringList {"--no-header"} << 2;
    QTest::newRow("header of numbers") << QByteArray("1,2\n1,2\n") << QStringList {"--header"} << 1;
    QTest::newRow("no columns") << QByteArray("a,b\n1,2\n") << QStringList {"--delimiter", "none"}
                                << 2;
    QTest::newRow("other delimiter")
        << QByteArray("a:b\nc:d\n") << QStringList {"--delimiter", ":"} << 1;
    QTest::newRow("other encoding")
        << QByteArray("a\0\n\0b\n\n\0", 8) << QStringList {"--encoding", "UTF-16LE"} << 2;
}

void tst_Viewer::countsRows()
{
    QFETCH(QByteArray, text);
    QFETCH(QStringList, arguments);
    QFETCH(int, rows);
    const Run counted =
        run(arguments + QStringList {"--seconds", "0", "--stats", file("file", text)});
    QCOMPARE(counted.status, 0);
    QCOMPARE(counted.stats().value("rows").toInt(-1), rows);
}

void tst_Viewer::printsStats()
{
    const Run shown = run({"--seconds", "0", "--stats", file("file", "a\nb\n")});
    QCOMPARE(shown.status, 0);
    QCOMPARE(shown.output.count('\n'), 1);
    const QJsonObject stats = shown.stats();
    QCOMPARE(stats.keys(),
             (QStringList {"frame_ms_p50", "frame_ms_p99", "frames", "peak_rss_bytes", "rows"}));
    QVERIFY(stats.value("frames").toInt() >= 1);
    QVERIFY(stats.value("frame_ms_p50").toDouble() > 0);
    QVERIFY(stats.value("frame_ms_p99").toDouble() >= stats.value("frame_ms_p50").toDouble());
    QVERIFY(stats.value("peak_rss_bytes").toDouble() > 1e6);
}

void tst_Viewer::savesScreenshot()
{
    const QString picture = path("picture.png");
    const Run pictured = run({"--screenshot", picture, file("file", "a\nb\n")});
    QCOMPARE(pictured.status, 0);
    const QImage image(picture);
    QVERIFY(image.width() > 200);
    QVERIFY(image.height() > 200);
    const QImage filled = [&] {
        QImage plain = image;
        plain.fill(image.pixelColor(0, 0));
        return plain;
    }();
    QVERIFY(image != filled);
}

void tst_Viewer::reportsUnwritableScreenshot()
{
    const QString picture = path("missing/picture.png");
    const Run pictured = run({"--seconds", "0", "--screenshot", picture, file("file", "a\n")});
    QCOMPARE(pictured.status, 1);
    QVERIFY(pictured.errors.contains(QFile::encodeName(picture)));
}

void tst_Viewer::runsFeedWithoutFile()
{
    const Run fed = run({"--seconds", "1", "--stats", "--rate", "10000"});
    QCOMPARE(fed.status, 0);
    QVERIFY(fed.stats().value("rows").toInt() > 1'000'000);
    QVERIFY(fed.stats().value("frames").toInt() > 1);
    const Run still = run({"--seconds", "0", "--stats", "--rate", "0", "--new-rows", "end"});
    QCOMPARE(still.stats().value("rows").toInt(), 1'000'000);
}

void tst_Viewer::failsForUnreadableFile_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("missing") << "missing.txt";
    QTest::newRow("directory") << ".";
}

void tst_Viewer::failsForUnreadableFile()
{
    QFETCH(QString, name);
    const Run failed = run({"--seconds", "0", "--stats", path(name)});
    QCOMPARE(failed.status, 1);
    QVERIFY(failed.errors.contains("vantix-viewer: " + QFile::encodeName(path(name)) + ": "));
    QCOMPARE(failed.stats().value("rows").toInt(-1), 0);
}

void tst_Viewer::goesOnWithOtherFilesAndFails()
{
    const Run shown = run({"--seconds", "0", "--stats", path("missing"), file("file", "a\nb\n")});
    QCOMPARE(shown.status, 1);
    QVERIFY(shown.errors.contains("missing"));
    QCOMPARE(shown.stats().value("rows").toInt(), 2);
}

void tst_Viewer::opensUrls()
{
    const QString url = QUrl::fromLocalFile(file("a file", "a\nb\n")).toString(QUrl::FullyEncoded);
    QVERIFY(url.startsWith("file:///") && url.contains("%20"));
    const Run shown = run({"--seconds", "0", "--stats", url});
    QCOMPARE(shown.status, 0);
    QCOMPARE(shown.stats().value("rows").toInt(), 2);
}

void tst_Viewer::explainsThatThereIsNoDisplay()
{
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const char *name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM", "XDG_SESSION_TYPE"})
        environment.remove(name);
    process.setProcessEnvironment(environment);
    process.start(VIEWER_PROGRAM, {file("file", "a\n")});
    QVERIFY(process.waitForFinished(120'000));
    QCOMPARE(process.exitStatus(), QProcess::NormalExit);
    QCOMPARE(process.exitCode(), 1);
    QVERIFY(process.readAllStandardError().contains("There is no display to open a window on."));
}

void tst_Viewer::readsStandardInput()
{
    // The text is in the pipe before the program starts, and the pipe stays open.
    QCOMPARE(::mkfifo(QFile::encodeName(path("fifo")), 0600), 0);
    QFile writer(path("fifo"));
    QVERIFY(writer.open(QIODevice::ReadWrite | QIODevice::Unbuffered));
    QCOMPARE(writer.write("a\nb\nc"), 5);
    QProcess process;
    process.setStandardInputFile(path("fifo"));
    process.start(VIEWER_PROGRAM, {"--seconds", "0", "--stats", "-"});
    QVERIFY(process.waitForFinished(120'000));
    QCOMPARE(process.exitCode(), 0);
    const QJsonObject stats = QJsonDocument::fromJson(process.readAllStandardOutput()).object();
    QCOMPARE(stats.value("rows").toInt(), 3);
}

void tst_Viewer::readsEmptyStandardInput()
{
    const Run shown = run({"--seconds", "0", "--stats", "-"});
    QCOMPARE(shown.status, 0);
    QCOMPARE(shown.stats().value("rows").toInt(-1), 0);
}

void tst_Viewer::readsFileAsStandardInput()
{
    QProcess process;
    process.setStandardInputFile(file("file", "a\nb\n"));
    process.start(VIEWER_PROGRAM, {"--seconds", "0", "--stats", "-"});
    QVERIFY(process.waitForFinished(120'000));
    QCOMPARE(process.exitCode(), 0);
    const QJsonObject stats = QJsonDocument::fromJson(process.readAllStandardOutput()).object();
    QCOMPARE(stats.value("rows").toInt(), 2);
}

void tst_Viewer::readsFifo()
{
    QCOMPARE(::mkfifo(QFile::encodeName(path("fifo")), 0600), 0);
    QFile writer(path("fifo"));
    QVERIFY(writer.open(QIODevice::ReadWrite | QIODevice::Unbuffered));
    QCOMPARE(writer.write("a\nb\n"), 4);
    const Run shown = run({"--seconds", "0", "--stats", path("fifo")});
    QCOMPARE(shown.status, 0);
    QCOMPARE(shown.stats().value("rows").toInt(), 2);
}

void tst_Viewer::readsCompressedStandardInput()
{
#ifndef VIEWER_HAS_LIBARCHIVE
    QSKIP("This build reads no compressed files.");
#endif
    QProcess process;
    process.start(VIEWER_PROGRAM, {"--seconds", "0", "--stats", "-"});
    process.write(s_gzip);
    process.closeWriteChannel();
    QVERIFY(process.waitForFinished(120'000));
    QCOMPARE(process.exitCode(), 0);
    const QJsonObject stats = QJsonDocument::fromJson(process.readAllStandardOutput()).object();
    QCOMPARE(stats.value("rows").toInt(), 2);
}

void tst_Viewer::reportsCutArchive()
{
    const Run failed = run({"--seconds", "0", "--stats", file("text.gz", s_gzip.chopped(10))});
    QCOMPARE(failed.status, 1);
    QVERIFY(failed.errors.contains("text.gz: It is "));
}

void tst_Viewer::needsNoDisplay()
{
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const char *name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"})
        environment.remove(name);
    process.setProcessEnvironment(environment);
    process.start(VIEWER_PROGRAM, {"--seconds", "0", "--stats", file("file", "a\n")});
    QVERIFY(process.waitForFinished(120'000));
    QCOMPARE(process.exitStatus(), QProcess::NormalExit);
    QCOMPARE(process.exitCode(), 0);
}

QTEST_GUILESS_MAIN(tst_Viewer)

#include "tst_viewer.moc"
