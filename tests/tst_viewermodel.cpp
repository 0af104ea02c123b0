// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "files/textfilemodel.h"

#include <QAbstractItemModelTester>
#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

using Activity = TextFileModel::Activity;
using Restart = TextFileModel::Restart;

//! A model under a model tester, started at once.
struct TestedModel : TextFileModel
{
    explicit TestedModel(const QString &path, const FormatRequest &request = {},
                         int maximumRows = std::numeric_limits<int>::max())
        : TextFileModel(path, request, maximumRows)
        , tester(this, QAbstractItemModelTester::FailureReportingMode::QtTest)
    {
        start();
    }

    QString text(int row, int column = 1) const { return index(row, column).data().toString(); }

    bool isIdle() const
    {
        return activity() != Activity::Opening && activity() != Activity::Indexing;
    }

    QAbstractItemModelTester tester;
};

} // namespace

class tst_ViewerModel : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void showsLineNumbersAndText();
    void showsColumns();
    void showsMissingAndSurplusFields();
    void decodes_data();
    void decodes();
    void keepsLongLinesShort();
    void cutsLongLinesBetweenCharacters();
    void showsEmptyFile();
    void growsFromEmptyFile();
    void appendsLines();
    void completesLastLine();
    void becomesColumnsWhileSampleGrows();
    void beginsAnewWhenTruncated();
    void noticesRewrittenFile();
    void noticesOverwrittenText();
    void noticesReplacement();
    void survivesDeletion();
    void showsEmptyTextForLinesCutOff();
    void stopsAndGoesOn();
    void stopsAtMaximum();
    void indexesManyLines();
    void readsFifo();
    void waitsForFifoWriter();
    void readsFileWithoutSize();
    void refuses_data();
    void refuses();
    void namesEncoding_data();
    void namesEncoding();

private:
    void write(const QByteArray &text, QIODevice::OpenMode mode = QIODevice::WriteOnly);

    std::unique_ptr<QTemporaryDir> m_directory; //!< one per test
    QString m_path;                             //!< of the file under test
};

void tst_ViewerModel::init()
{
    m_directory = std::make_unique<QTemporaryDir>();
    QVERIFY(m_directory->isValid());
    m_path = m_directory->filePath("file.txt");
}

//! Writes with one system call, so that the file is never seen half done.
void tst_ViewerModel::write(const QByteArray &text, QIODevice::OpenMode mode)
{
    QFile file(m_path);
    QVERIFY(file.open(mode | QIODevice::Unbuffered));
    QCOMPARE(file.write(text), text.size());
}

void tst_ViewerModel::showsLineNumbersAndText()
{
    write("first line\nsecond line\n\nfourth");
    TestedModel model(m_path);
    QTRY_COMPARE(model.activity(), Activity::Following);
    QCOMPARE(model.rowCount(), 4);
    QCOMPARE(model.columnCount(), 2);
    QCOMPARE(model.text(0, 0), "1");
    QCOMPARE(model.text(0), "first line");
    QCOMPARE(model.text(2), "");
    QCOMPARE(model.text(3, 0), "4");
    QCOMPARE(model.text(3), "fourth");
    QCOMPARE(model.fileSize(), quint64(30));
    QCOMPARE(model.indexedBytes(), quint64(30));
}

void tst_ViewerModel::showsColumns()
{
    write("name,amount\nx,1\n\"y, z\",22\n");
    TestedModel model(m_path);
    QTRY_COMPARE(model.rowCount(), 2);
    QCOMPARE(model.columnCount(), 2);
    QCOMPARE(model.headerData(1, Qt::Horizontal).toString(), "amount");
    QCOMPARE(model.text(1, 0), "y, z");
    QCOMPARE(model.text(1, 1), "22");
    const auto alignment = model.index(1, 1).data(Qt::TextAlignmentRole).value<Qt::Alignment>();
    QVERIFY(alignment.testFlag(Qt::AlignRight));
    QVERIFY(!model.index(1, 0).data(Qt::TextAlignmentRole).isValid());
}

void tst_ViewerModel::showsMissingAndSurplusFields()
{
    QByteArray text("a;b\n");
    for (int i = 0; i < 63; ++i)
        text += "1;2\n";
    write(text + "only\n1;2;3;4\n");
    TestedModel model(m_path);
    QTRY_COMPARE(model.rowCount(), 65);
    QCOMPARE(model.columnCount(), 2);
    QCOMPARE(model.text(63, 0), "only");
    QCOMPARE(model.text(63, 1), "");
    QCOMPARE(model.text(64, 1), "2;3;4");
}

void tst_ViewerModel::decodes_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QString>("expected");
    QTest::newRow("CRLF") << QByteArray("ab\r\ncd\r\n") << "ab";
    QTest::newRow("lone CR") << QByteArray("a\rb\n") << QString("a%1b").arg(QChar(0x240d));
    QTest::newRow("CR at the end of the file")
        << QByteArray("ab\r") << QString("ab%1").arg(QChar(0x240d));
    QTest::newRow("NUL bytes") << QByteArray("a\0b\0\n", 5) << QString("a%1b%1").arg(QChar(0x2400));
    QTest::newRow("escape") << QByteArray("\x1b[1m\n") << QString("%1[1m").arg(QChar(0x241b));
    QTest::newRow("tab stays") << QByteArray("a\tb\n") << "a\tb";
    QTest::newRow("UTF-8") << QByteArray("\xc3\xa4\xf0\x9f\x98\x80\n") << QString::fromUtf8("ä😀");
    QTest::newRow("byte order mark") << QByteArray("\xef\xbb\xbfx\n") << "x";
    QTest::newRow("invalid byte") << QByteArray("a\xff"
                                                "b\n")
                                  << QString("a%1b").arg(QChar(0xfffd));
    QTest::newRow("cut character") << QByteArray("a\xc3\n") << QString("a%1").arg(QChar(0xfffd));
    QTest::newRow("line separator") << QByteArray("a\xe2\x80\xa8"
                                                  "b\n")
                                    << QString("a%1b").arg(QChar(0x2424));
}

void tst_ViewerModel::decodes()
{
    QFETCH(QByteArray, text);
    QFETCH(QString, expected);
    write(text);
    TestedModel model(m_path, {QChar(), {}});
    QTRY_VERIFY(model.rowCount() > 0);
    QCOMPARE(model.text(0), expected);
}

void tst_ViewerModel::keepsLongLinesShort()
{
    const QByteArray text = QByteArray(10'000'000, 'x');
    write(text + "\nnext\n" + text);
    TestedModel model(m_path);
    QTRY_COMPARE(model.rowCount(), 3);
    QTRY_COMPARE(model.activity(), Activity::Following);
    const QString shown = QString(TextFileModel::maximumLineBytes, u'x') + QChar(0x2026);
    QCOMPARE(model.text(0), shown);
    QCOMPARE(model.text(1), "next");
    QCOMPARE(model.text(2), shown);
}

void tst_ViewerModel::cutsLongLinesBetweenCharacters()
{
    // The cut falls after the first byte of the two that make the letter.
    const int before = int(TextFileModel::maximumLineBytes) - 1;
    write(QByteArray(before, 'x') + QByteArray("\xc3\xa4").repeated(10) + "\n");
    TestedModel model(m_path);
    QTRY_COMPARE(model.rowCount(), 1);
    QCOMPARE(model.text(0), QString(before, u'x') + QChar(0x2026));
}

void tst_ViewerModel::showsEmptyFile()
{
    write("");
    TestedModel model(m_path);
    QTRY_COMPARE(model.activity(), Activity::Following);
    QCOMPARE(model.rowCount(), 0);
    QCOMPARE(model.columnCount(), 2);
}

void tst_ViewerModel::growsFromEmptyFile()
{
    write("");
    TestedModel model(m_path);
    QTRY_COMPARE(model.activity(), Activity::Following);
    write("a", QIODevice::Append);
    QTRY_COMPARE(model.rowCount(), 1);
    QCOMPARE(model.text(0), "a");
}

void tst_ViewerModel::appendsLines()
{
    write("a\nb\n");
    TestedModel model(m_path);
    QTRY_COMPARE(model.rowCount(), 2);
    QTRY_COMPARE(model.activity(), Activity::Following);
    QSignalSpy inserted(&model, &QAbstractItemModel::rowsInserted);
    QSignalSpy reset(&model, &QAbstractItemModel::modelReset);
    write("c\nd\n", QIODevice::Append);
    QTRY_COMPARE(model.rowCount(), 4);
    QCOMPARE(inserted.size(), 1);
    QCOMPARE(inserted.at(0).at(1).toInt(), 2);
    QCOMPARE(inserted.at(0).at(2).toInt(), 3);
    QCOMPARE(reset.size(), 0);
    QCOMPARE(model.text(3), "d");
}

void tst_ViewerModel::completesLastLine()
{
    write("a\nbeg");
    TestedModel model(m_path);
    QTRY_COMPARE(model.rowCount(), 2);
    QTRY_COMPARE(model.activity(), Activity::Following);
    QCOMPARE(model.text(1), "beg");
    QSignalSpy changed(&model, &QAbstractItemModel::dataChanged);
    write("in", QIODevice::Append);
    QTRY_COMPARE(model.text(1), "begin");
    QCOMPARE(model.rowCount(), 2);
    QCOMPARE(changed.size(), 1);
    QCOMPARE(changed.at(0).at(0).toModelIndex().row(), 1);
    write("ning\nend\n", QIODevice::Append);
    QTRY_COMPARE(model.rowCount(), 3);
    QCOMPARE(model.text(1), "beginning");
    QCOMPARE(model.text(2), "end");
}

void tst_ViewerModel::becomesColumnsWhileSampleGrows()
{
    write("name;size\n");
    TestedModel model(m_path);
    QTRY_COMPARE(model.rowCount(), 1);
    QVERIFY(!model.format().isDelimited());
    write("a;1\n", QIODevice::Append);
    QTRY_VERIFY(model.format().isDelimited());
    QCOMPARE(model.rowCount(), 1);
    QCOMPARE(model.text(0, 1), "1");
    QCOMPARE(model.headerData(1, Qt::Horizontal).toString(), "size");
}

void tst_ViewerModel::beginsAnewWhenTruncated()
{
    write("a\nb\nc\n");
    TestedModel model(m_path);
    QTRY_COMPARE(model.rowCount(), 3);
    QTRY_COMPARE(model.activity(), Activity::Following);
    QFile::resize(m_path, 2);
    QTRY_COMPARE(model.rowCount(), 1);
    QCOMPARE(model.text(0), "a");
    QCOMPARE(model.lastRestart(), Restart::Truncated);
    QFile::resize(m_path, 0);
    QTRY_COMPARE(model.rowCount(), 0);
    write("x\ny\n", QIODevice::Append);
    QTRY_COMPARE(model.rowCount(), 2);
    QCOMPARE(model.text(1), "y");
}

void tst_ViewerModel::noticesRewrittenFile()
{
    write("a\nb\nc\n");
    TestedModel model(m_path);
    QTRY_COMPARE(model.activity(), Activity::Following);
    QTRY_COMPARE(model.rowCount(), 3);
    // Longer than before when the model next looks, and all different.
    write("1\n2\n3\n4\n5\n", QIODevice::ReadWrite);
    QTRY_COMPARE(model.rowCount(), 5);
    QTRY_COMPARE(model.text(0), "1");
    QCOMPARE(model.lastRestart(), Restart::Rewritten);
}

void tst_ViewerModel::noticesOverwrittenText()
{
    // The ends stay, the middle and the size change nothing but the time.
    const QByteArray end = QByteArray(600, '-') + '\n';
    write(end + "old\n" + end);
    TestedModel model(m_path);
    QTRY_COMPARE(model.activity(), Activity::Following);
    QTRY_COMPARE(model.rowCount(), 3);
    QCOMPARE(model.text(1), "old");
    QSignalSpy reset(&model, &QAbstractItemModel::modelReset);
    write(end + "new\n" + end, QIODevice::ReadWrite);
    const timespec later[2] = {{4'000'000'000, 0}, {4'000'000'000, 0}};
    QCOMPARE(::utimensat(AT_FDCWD, QFile::encodeName(m_path), later, 0), 0);
    QTRY_COMPARE(model.text(1), "new");
    QCOMPARE(reset.size(), 0);
}

void tst_ViewerModel::noticesReplacement()
{
    write("old\n");
    TestedModel model(m_path);
    QTRY_COMPARE(model.rowCount(), 1);
    const QString other = m_directory->filePath("other");
    QFile file(other);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("new\nfile\n");
    file.close();
    QCOMPARE(std::rename(QFile::encodeName(other), QFile::encodeName(m_path)), 0);
    QTRY_COMPARE(model.rowCount(), 2);
    QCOMPARE(model.text(0), "new");
    QCOMPARE(model.lastRestart(), Restart::Replaced);
    QTRY_COMPARE(model.activity(), Activity::Following);
    write("more\n", QIODevice::Append);
    QTRY_COMPARE(model.rowCount(), 3);
}

void tst_ViewerModel::survivesDeletion()
{
    write("old\n");
    TestedModel model(m_path);
    QTRY_COMPARE(model.rowCount(), 1);
    QVERIFY(QFile::remove(m_path));
    QTRY_VERIFY(model.isMissing());
    QCOMPARE(model.text(0), "old");
    write("new\nfile\n");
    QTRY_COMPARE(model.rowCount(), 2);
    QCOMPARE(model.text(0), "new");
    QVERIFY(!model.isMissing());
}

void tst_ViewerModel::showsEmptyTextForLinesCutOff()
{
    write("a\nb\n");
    TestedModel model(m_path);
    QTRY_COMPARE(model.rowCount(), 2);
    // Nothing is processed between cut and look: the model cannot know yet.
    QFile::resize(m_path, 1);
    QCOMPARE(model.rowCount(), 2);
    QCOMPARE(model.text(1), "");
}

void tst_ViewerModel::stopsAndGoesOn()
{
    write("a\n");
    TestedModel model(m_path);
    QTRY_COMPARE(model.rowCount(), 1);
    QTRY_COMPARE(model.activity(), Activity::Following);
    model.stopIndexing();
    QTRY_COMPARE(model.activity(), Activity::Stopped);
    write("b\n", QIODevice::Append);
    model.resumeIndexing();
    QTRY_COMPARE(model.rowCount(), 2);
    QTRY_COMPARE(model.activity(), Activity::Following);
}

void tst_ViewerModel::stopsAtMaximum()
{
    write(QByteArray("line\n").repeated(100));
    TestedModel model(m_path, {}, 10);
    QTRY_COMPARE(model.activity(), Activity::Full);
    QCOMPARE(model.rowCount(), 10);
    QVERIFY(model.isFull());
    QCOMPARE(model.text(9, 0), "10");
}

void tst_ViewerModel::indexesManyLines()
{
    QByteArray text;
    for (int i = 0; i < 500'000; ++i)
        text += "row " + QByteArray::number(i) + '\n';
    write(text);
    TestedModel model(m_path);
    QTRY_COMPARE(model.rowCount(), 500'000);
    for (int row : {0, 63, 64, 65, 123'456, 499'999})
        QCOMPARE(model.text(row), QString("row %1").arg(row));
    QVERIFY(model.indexMemory() < 8 * 500'000);
}

void tst_ViewerModel::readsFifo()
{
    QCOMPARE(::mkfifo(QFile::encodeName(m_path), 0600), 0);
    TestedModel model(m_path);
    const int writer = ::open(QFile::encodeName(m_path), O_RDWR | O_NONBLOCK);
    QVERIFY(writer >= 0);
    QCOMPARE(::write(writer, "a\nb", 3), ssize_t(3));
    QTRY_COMPARE(model.rowCount(), 2);
    QCOMPARE(model.text(1), "b");
    QCOMPARE(::write(writer, "c\n", 2), ssize_t(2));
    QTRY_COMPARE(model.text(1), "bc");
    QCOMPARE(model.activity(), Activity::Indexing);
    ::close(writer);
    QTRY_COMPARE(model.activity(), Activity::Ended);
    QCOMPARE(model.rowCount(), 2);
}

void tst_ViewerModel::waitsForFifoWriter()
{
    QCOMPARE(::mkfifo(QFile::encodeName(m_path), 0600), 0);
    {
        TestedModel model(m_path);
        QTRY_COMPARE(model.activity(), Activity::Indexing);
        QCOMPARE(model.rowCount(), 0);
    } // ends although nobody ever writes
}

void tst_ViewerModel::readsFileWithoutSize()
{
    const QString path("/proc/self/status");
    if (!QFile::exists(path))
        QSKIP("There is no /proc here.");
    TestedModel model(path, {QChar(), {}});
    QTRY_COMPARE(model.activity(), Activity::Ended);
    QVERIFY(model.text(0).startsWith("Name:"));
}

void tst_ViewerModel::refuses_data()
{
    QTest::addColumn<QString>("path");
    QTest::newRow("a missing file") << "missing";
    QTest::newRow("a directory") << ".";
    QTest::newRow("a device") << "/dev/zero";
}

void tst_ViewerModel::refuses()
{
    QFETCH(QString, path);
    TestedModel model(path.startsWith('/') ? path : m_directory->filePath(path));
    QTRY_COMPARE(model.activity(), Activity::Failed);
    QVERIFY(!model.errorString().isEmpty());
    QCOMPARE(model.rowCount(), 0);
}

void tst_ViewerModel::namesEncoding_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QString>("name");
    QTest::newRow("ASCII") << QByteArray("abc\n") << "ASCII";
    QTest::newRow("UTF-8") << QByteArray("\xc3\xa4\n") << "UTF-8";
    QTest::newRow("Latin-1") << QByteArray("\xe4\n") << "not valid UTF-8";
}

void tst_ViewerModel::namesEncoding()
{
    QFETCH(QByteArray, text);
    QFETCH(QString, name);
    write(text);
    TestedModel model(m_path);
    QTRY_COMPARE(model.encodingName(), name);
}

QTEST_GUILESS_MAIN(tst_ViewerModel)

#include "tst_viewermodel.moc"
