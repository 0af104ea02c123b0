// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "files/decompressor.h"
#include "files/textfile.h"
#include "files/textfilemodel.h"
#include "gzip.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTest>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

using Activity = TextFileModel::Activity;

//! "first line\nsecond line\n" as the programs of these names compress it.
const QByteArray s_gzip =
    QByteArray::fromBase64("H4sIAAAAAAACA0vLLCouUcjJzEvlKk5Nzs9LgbABLFpFXRcAAAA=");
const QByteArray s_xz = QByteArray::fromBase64(
    "/Td6WFoAAATm1rRGAgAhARwAAAAQz1jMAQAWZmlyc3QgbGluZQpzZWNvbmQgbGluZQoAABLpMe+yotpkAAEvF4EISbEf"
    "tvN9AQAAAAAEWVo=");
const QByteArray s_zstd =
    QByteArray::fromBase64("KLUv/QRouQAAZmlyc3QgbGluZQpzZWNvbmQgbGluZQofO7ig");
const QByteArray s_bzip2 = QByteArray::fromBase64(
    "QlpoOTFBWSZTWYsT4YQAAATRgAAQQAAPJZwAIAAhoTIxlCAaAJEqMZVoywSC/VfxdyRThQkIsT4YQA==");

//! The same for no text.
const QByteArray s_emptyGzip = QByteArray::fromBase64("H4sIAAAAAAACAwMAAAAAAAAAAAA=");
const QByteArray s_emptyXz = QByteArray::fromBase64("/Td6WFoAAATm1rRGAAAAABzfRCEftvN9AQAAAAAEWVo=");
const QByteArray s_emptyZstd = QByteArray::fromBase64("KLUv/SQAAQAAmenYUQ==");
const QByteArray s_emptyBzip2 = QByteArray::fromBase64("QlpoORdyRThQkAAAAAA=");

//! Lines that cannot be packed well: 16 digits each.
QByteArray manyLines(int count)
{
    QByteArray text;
    quint64 number = 1;
    for (int i = 0; i < count; ++i) {
        number = number * 6364136223846793005 + 1442695040888963407;
        text += QByteArray::number(number, 16).rightJustified(16, '0') + '\n';
    }
    return text;
}

} // namespace

class tst_ViewerDecompressor : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void recognises_data();
    void recognises();
    void shows_data();
    void shows();
    void recognisesByContents();
    void namesBothEncodings();
    void showsNothingOfNothing_data();
    void showsNothingOfNothing();
    void showsManyLines();
    void keepsWhatWasReadBeforeDamage_data();
    void keepsWhatWasReadBeforeDamage();
    void refusesCutHeader();
    void readsPipe_data();
    void readsPipe();
    void reportsDamageInPipe();
    void stopsAndGoesOn();
    void choosesAFolderForCopies();
    void keepsTextWhenAnArchiveTakesItsPlace();

private:
    void write(const QByteArray &bytes) const;

    std::unique_ptr<QTemporaryDir> m_directory; //!< one per test
    QString m_path;                             //!< of the file under test
};

void tst_ViewerDecompressor::initTestCase()
{
#ifndef VIEWER_HAS_LIBARCHIVE
    QString error;
    QVERIFY(!Decompressor::open(-1, &error));
    QVERIFY(!error.isEmpty());
    QSKIP("This build reads no compressed files.");
#endif
}

void tst_ViewerDecompressor::init()
{
    m_directory = std::make_unique<QTemporaryDir>();
    QVERIFY(m_directory->isValid());
    m_path = m_directory->filePath("file.txt");
}

void tst_ViewerDecompressor::write(const QByteArray &bytes) const
{
    QFile file(m_path);
    QVERIFY(file.open(QIODevice::WriteOnly | QIODevice::Unbuffered));
    QCOMPARE(file.write(bytes), bytes.size());
}

void tst_ViewerDecompressor::recognises_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("format");
    QTest::newRow("gzip") << s_gzip << "gzip";
    QTest::newRow("xz") << s_xz << "xz";
    QTest::newRow("zstd") << s_zstd << "zstd";
    QTest::newRow("bzip2") << s_bzip2 << "bzip2";
    QTest::newRow("empty bzip2") << s_emptyBzip2 << "bzip2";
    QTest::newRow("text") << QByteArray("first line\n") << QString();
    QTest::newRow("text like bzip2") << QByteArray("BZh9 is what bzip2 begins with") << QString();
    QTest::newRow("nothing") << QByteArray() << QString();
    QTest::newRow("too few bytes") << s_xz.first(5) << QString();
}

void tst_ViewerDecompressor::recognises()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QString, format);
    QCOMPARE(Decompressor::formatOf(bytes), format);
    QCOMPARE(Decompressor::formatOf(bytes.left(Decompressor::signatureSize)), format);
}

void tst_ViewerDecompressor::shows_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("format");
    QTest::addColumn<int>("copies");
    QTest::newRow("gzip") << s_gzip << "gzip" << 1;
    QTest::newRow("xz") << s_xz << "xz" << 1;
    QTest::newRow("zstd") << s_zstd << "zstd" << 1;
    QTest::newRow("bzip2") << s_bzip2 << "bzip2" << 1;
    QTest::newRow("gzip and gzip") << s_gzip + s_gzip << "gzip" << 2;
    QTest::newRow("xz and xz") << s_xz + s_xz << "xz" << 2;
    QTest::newRow("zstd and zstd") << s_zstd + s_zstd << "zstd" << 2;
    QTest::newRow("bzip2 and bzip2") << s_bzip2 + s_bzip2 << "bzip2" << 2;
    QTest::newRow("gzip behind nothing") << s_emptyGzip + s_gzip << "gzip" << 1;
    QTest::newRow("gzip in gzip") << gzip(s_gzip) << "gzip" << 1;
}

void tst_ViewerDecompressor::shows()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QString, format);
    QFETCH(int, copies);
    write(bytes);
    TextFileModel model(m_path);
    model.start();
    QTRY_COMPARE(model.activity(), Activity::Ended);
    QCOMPARE(model.rowCount(), 2 * copies);
    for (int row = 0; row < model.rowCount(); ++row)
        QCOMPARE(model.index(row, 1).data(), row % 2 ? "second line" : "first line");
    QCOMPARE(model.encodingName(), format + ", ASCII");
    QCOMPARE(model.fileSize(), quint64(23 * copies));
    QVERIFY(model.isCompressed());
}

//! The name says nothing.
void tst_ViewerDecompressor::recognisesByContents()
{
    m_path = m_directory->filePath("text.gz");
    write("no archive\n");
    TextFileModel model(m_path);
    model.start();
    QTRY_COMPARE(model.activity(), Activity::Following);
    QCOMPARE(model.index(0, 1).data(), "no archive");
    QVERIFY(!model.isCompressed());
}

void tst_ViewerDecompressor::namesBothEncodings()
{
    write(gzip(QByteArray("\xff\xfe"
                          "a\0,\0b\0\n\0x\0,\0y\0",
                          16)));
    TextFileModel model(m_path);
    model.start();
    QTRY_COMPARE(model.activity(), Activity::Ended);
    QCOMPARE(model.encodingName(), "gzip, UTF-16LE");
    QCOMPARE(model.rowCount(), 1);
    QCOMPARE(model.index(0, 1).data(), "y");
}

void tst_ViewerDecompressor::showsNothingOfNothing_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("gzip") << s_emptyGzip;
    QTest::newRow("xz") << s_emptyXz;
    QTest::newRow("zstd") << s_emptyZstd;
    QTest::newRow("bzip2") << s_emptyBzip2;
}

void tst_ViewerDecompressor::showsNothingOfNothing()
{
    QFETCH(QByteArray, bytes);
    write(bytes);
    TextFileModel model(m_path);
    model.start();
    QTRY_COMPARE(model.activity(), Activity::Ended);
    QCOMPARE(model.rowCount(), 0);
    QVERIFY(model.errorString().isEmpty());
}

void tst_ViewerDecompressor::showsManyLines()
{
    constexpr int count = 300'000;
    const QByteArray text = manyLines(count);
    write(gzip(text));
    TextFileModel model(m_path);
    model.start();
    QTRY_COMPARE(model.activity(), Activity::Ended);
    QCOMPARE(model.rowCount(), count);
    for (const int row : {0, 123'456, 299'999})
        QCOMPARE(model.index(row, 1).data().toString().toLatin1(), text.mid(17 * row, 16));
}

void tst_ViewerDecompressor::keepsWhatWasReadBeforeDamage_data()
{
    QTest::addColumn<QByteArray>("bytes");
    const QByteArray whole = gzip(manyLines(100'000));
    // Blocks of plain bytes, behind which there is one of a kind that does not exist.
    QByteArray damaged("\x1f\x8b\x08\0\0\0\0\0\0\x03", 10);
    const QByteArray lines = manyLines(3000);
    const auto length = quint32(lines.size());
    for (int i = 0; i < 20; ++i)
        damaged += '\0' + littleEndian(length | ~length << 16) + lines;
    damaged += QByteArray(100, '\x07');
    QTest::newRow("cut off") << whole.left(whole.size() / 2);
    QTest::newRow("damaged") << damaged;
    QTest::newRow("cut off in the second member") << whole + whole.left(whole.size() / 2);
}

void tst_ViewerDecompressor::keepsWhatWasReadBeforeDamage()
{
    QFETCH(QByteArray, bytes);
    write(bytes);
    TextFileModel model(m_path);
    model.start();
    QTRY_COMPARE(model.activity(), Activity::Failed);
    QVERIFY(model.errorString().contains("damaged or cut off"));
    QVERIFY2(model.rowCount() > 40'000, qPrintable(QString::number(model.rowCount())));
    const QByteArray line = manyLines(1).chopped(1);
    QCOMPARE(model.index(0, 1).data().toString().toLatin1(), line);
}

void tst_ViewerDecompressor::refusesCutHeader()
{
    write(s_gzip.first(5));
    TextFileModel model(m_path);
    model.start();
    QTRY_COMPARE(model.activity(), Activity::Failed);
    QVERIFY(model.errorString().contains("damaged or cut off"));
    QCOMPARE(model.rowCount(), 0);
}

void tst_ViewerDecompressor::readsPipe_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<int>("first");
    QTest::newRow("gzip") << s_gzip << 20;
    QTest::newRow("xz, one byte first") << s_xz << 1;
    QTest::newRow("bzip2, nine bytes first") << s_bzip2 << 9;
}

//! What is in a compressed pipe is shown when it has ended.
void tst_ViewerDecompressor::readsPipe()
{
    QFETCH(QByteArray, bytes);
    QFETCH(int, first);
    QCOMPARE(::mkfifo(QFile::encodeName(m_path), 0600), 0);
    TextFileModel model(m_path);
    model.start();
    const int writer = ::open(QFile::encodeName(m_path), O_RDWR | O_NONBLOCK);
    QVERIFY(writer >= 0);
    QCOMPARE(::write(writer, bytes.constData(), size_t(first)), ssize_t(first));
    QTRY_COMPARE(model.fileSize(), quint64(first));
    const auto rest = size_t(bytes.size() - first);
    QCOMPARE(::write(writer, bytes.constData() + first, rest), ssize_t(rest));
    QTRY_COMPARE(model.fileSize(), quint64(bytes.size()));
    QTRY_VERIFY(model.isCompressed());
    QCOMPARE(model.rowCount(), 0);
    ::close(writer);
    QTRY_COMPARE(model.activity(), Activity::Ended);
    QCOMPARE(model.rowCount(), 2);
    QCOMPARE(model.index(1, 1).data(), "second line");
}

void tst_ViewerDecompressor::reportsDamageInPipe()
{
    QCOMPARE(::mkfifo(QFile::encodeName(m_path), 0600), 0);
    TextFileModel model(m_path);
    model.start();
    const int writer = ::open(QFile::encodeName(m_path), O_RDWR | O_NONBLOCK);
    QVERIFY(writer >= 0);
    QCOMPARE(::write(writer, s_gzip.constData(), 20), ssize_t(20));
    QTRY_VERIFY(model.isCompressed());
    ::close(writer);
    QTRY_COMPARE(model.activity(), Activity::Failed);
    QVERIFY(model.errorString().contains("damaged or cut off"));
}

void tst_ViewerDecompressor::stopsAndGoesOn()
{
    constexpr int count = 200'000;
    write(gzip(manyLines(count)));
    TextFileModel model(m_path);
    model.stopIndexing(); // comes behind the first piece
    model.start();
    QTRY_COMPARE(model.activity(), Activity::Stopped);
    QVERIFY(model.rowCount() > 0);
    QVERIFY(model.rowCount() < count);
    model.resumeIndexing();
    QTRY_COMPARE(model.activity(), Activity::Ended);
    QCOMPARE(model.rowCount(), count);
}

//! It would not be followed, so that it is no continuation.
void tst_ViewerDecompressor::keepsTextWhenAnArchiveTakesItsPlace()
{
    write("text\n");
    TextFileModel model(m_path);
    model.start();
    QTRY_COMPARE(model.activity(), Activity::Following);
    const QString path = std::exchange(m_path, m_directory->filePath("other"));
    write(s_gzip);
    QCOMPARE(std::rename(QFile::encodeName(m_path), QFile::encodeName(path)), 0);
    QTRY_VERIFY(model.isMissing());
    QCOMPARE(model.rowCount(), 1);
    QCOMPARE(model.index(0, 1).data(), "text");
}

//! Where temporary files are in memory, a large text would fill it.
void tst_ViewerDecompressor::choosesAFolderForCopies()
{
    const bool wasGiven = qEnvironmentVariableIsSet("TMPDIR");
    const QByteArray before = qgetenv("TMPDIR");
    qputenv("TMPDIR", QFile::encodeName(m_directory->path()));
    QCOMPARE(TextFile::copyFolder(), m_directory->path());
    qunsetenv("TMPDIR");
    const QFileInfo large("/var/tmp");
    QCOMPARE(TextFile::copyFolder(),
             large.isDir() && large.isWritable() ? large.filePath() : QDir::tempPath());
    if (wasGiven)
        qputenv("TMPDIR", before);
}

QTEST_GUILESS_MAIN(tst_ViewerDecompressor)

#include "tst_viewerdecompressor.moc"
