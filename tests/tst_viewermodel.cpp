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
    void showsRecordsOfSeveralLines();
    void recordGrows();
    void showsLinesOfBrokenRecords();
    void givesUpRecordAtTheEndOfAStream();
    void showsMissingAndSurplusFields();
    void decodes_data();
    void decodes();
    void keepsLongLinesShort();
    void cutsLongLinesBetweenCharacters();
    void takesEncodingByHand();
    void cutsWideLinesBetweenCharacters();
    void showsNothingOf_data();
    void showsNothingOf();
    void growsByHalfACharacter_data();
    void growsByHalfACharacter();
    void learnsEncodingWhileSampleGrows();
    void recognisesLineEnds_data();
    void recognisesLineEnds();
    void completesLineEnd();
    void showsEmptyFile();
    void growsFromEmptyFile();
    void appendsLines();
    void completesLastLine();
    void becomesColumnsWhileSampleGrows();
    void beginsAnewWhenTruncated();
    void noticesRewrittenFile();
    void noticesOverwrittenText();
    void noticesTextWrittenWhileStopped();
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
    void headersStandAsTheirCells();

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

void tst_ViewerModel::showsRecordsOfSeveralLines()
{
    write("name,note\nx,\"one\ntwo\"\ny,\"three\r\nfour\"\r\nz,5\n");
    TestedModel model(m_path);
    QTRY_COMPARE(model.activity(), Activity::Following);
    QCOMPARE(model.rowCount(), 3);
    QCOMPARE(model.headerData(1, Qt::Horizontal).toString(), "note");
    QCOMPARE(model.text(0), QString("one%1two").arg(QChar(0x240a)));
    QCOMPARE(model.text(1), QString("three%1%2four").arg(QChar(0x240d)).arg(QChar(0x240a)));
    QCOMPARE(model.text(2, 0), "z");
}

void tst_ViewerModel::recordGrows()
{
    write("name,note\nx,1\ny,\"one\n");
    TestedModel model(m_path);
    QTRY_COMPARE(model.activity(), Activity::Following);
    QCOMPARE(model.rowCount(), 2);
    QCOMPARE(model.text(1), QString("one%1").arg(QChar(0x240a)));
    write("two\"", QIODevice::Append);
    QTRY_COMPARE(model.text(1), QString("one%1two").arg(QChar(0x240a)));
    QCOMPARE(model.rowCount(), 2);
    write("\nz,2\n", QIODevice::Append);
    QTRY_COMPARE(model.rowCount(), 3);
    QCOMPARE(model.text(1), QString("one%1two").arg(QChar(0x240a)));
    QCOMPARE(model.text(2), "2");
}

void tst_ViewerModel::showsLinesOfBrokenRecords()
{
    write("name,note\nx,1\ny,\"2\n");
    TestedModel model(m_path);
    QTRY_COMPARE(model.activity(), Activity::Following);
    QCOMPARE(model.rowCount(), 2);
    write(QByteArray("z,3\n").repeated(20'000), QIODevice::Append);
    QTRY_COMPARE(model.rowCount(), 20'002);
    QCOMPARE(model.text(1, 0), "y");
    QCOMPARE(model.text(1), "2");
    for (const int row : {2, 9'000, 20'001})
        QCOMPARE(model.text(row), "3");
}

void tst_ViewerModel::givesUpRecordAtTheEndOfAStream()
{
    QCOMPARE(::mkfifo(QFile::encodeName(m_path), 0600), 0);
    TestedModel model(m_path);
    const int writer = ::open(QFile::encodeName(m_path), O_RDWR | O_NONBLOCK);
    QVERIFY(writer >= 0);
    const QByteArray text = "name,note\nx,\"1\ny,2\n";
    QCOMPARE(::write(writer, text.constData(), size_t(text.size())), ssize_t(text.size()));
    QTRY_COMPARE(model.rowCount(), 1);
    ::close(writer);
    QTRY_COMPARE(model.activity(), Activity::Ended);
    QCOMPARE(model.rowCount(), 2);
    QCOMPARE(model.text(1), "2");
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
    QTest::newRow("only CR") << QByteArray("ab\rcd\r") << "ab";
    QTest::newRow("CR CR LF") << QByteArray("ab\r\r\n") << QString("ab%1").arg(QChar(0x240d));
    QTest::newRow("NUL bytes") << QByteArray("a\0b\0\n", 5) << QString("a%1b%1").arg(QChar(0x2400));
    QTest::newRow("escape") << QByteArray("\x1b[1m\n") << QString("%1[1m").arg(QChar(0x241b));
    QTest::newRow("tab stays") << QByteArray("a\tb\n") << "a\tb";
    QTest::newRow("UTF-8") << QByteArray("\xc3\xa4\xf0\x9f\x98\x80\n") << QString::fromUtf8("ä😀");
    QTest::newRow("byte order mark") << QByteArray("\xef\xbb\xbfx\n") << "x";
    QTest::newRow("Windows-1252") << QByteArray("\x80 \xe4\n") << QString::fromUtf8("€ ä");
    QTest::newRow("cut character at the end")
        << QByteArray("\xc3\xa4\xc3") << QString::fromUtf8("ä\ufffd");
    QTest::newRow("UTF-16LE") << QByteArray("\xff\xfe\xe4\0\r\0\n\0x\0", 10)
                              << QString::fromUtf8("ä");
    QTest::newRow("UTF-16BE") << QByteArray("\xfe\xff\0\xe4\0\r\0x\0", 9) << QString::fromUtf8("ä");
    QTest::newRow("UTF-16, an odd byte") << QByteArray("\xff\xfe"
                                                       "a\0b",
                                                       5)
                                         << QString("a\ufffd");
    QTest::newRow("UTF-32LE") << QByteArray("\xff\xfe\0\0\xe4\0\0\0\n\0\0\0", 12)
                              << QString::fromUtf8("ä");
    QTest::newRow("UTF-32BE") << QByteArray("\0\0\xfe\xff\0\0\0\xe4\0\0\0\n", 12)
                              << QString::fromUtf8("ä");
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

void tst_ViewerModel::takesEncodingByHand()
{
    const auto shown = [&](const char *encoding) {
        const FormatRequest request {QChar(), {}, Encoding::named(encoding)};
        TestedModel model(m_path, request);
        [&] { QTRY_COMPARE(model.activity(), Activity::Following); }();
        return model.encodingName() + ": " + model.text(0);
    };
    write("a\xe4\xc3\xa4\n");
    QCOMPARE(shown("utf-8"), QString::fromUtf8("UTF-8: a\ufffdä"));
    QCOMPARE(shown("latin-1"), QString::fromUtf8("ISO-8859-1: aäÃ¤"));
    QCOMPARE(shown("cp1252"), QString::fromUtf8("Windows-1252: aäÃ¤"));
    write(QByteArray("a\0\n\0b\0", 6));
    QCOMPARE(shown("utf-16le"), "UTF-16LE: a");
    write("\xef\xbb\xbfx\n");
    QCOMPARE(shown("utf-8"), "UTF-8: x");
}

void tst_ViewerModel::cutsWideLinesBetweenCharacters()
{
    // The cut falls between the halves of the first pair.
    const int before = int(TextFileModel::maximumLineBytes) / 2 - 1;
    write("\xff\xfe" + QByteArray("x\0", 2).repeated(before)
          + QByteArray("\x3d\xd8\0\xde", 4).repeated(10));
    TestedModel model(m_path);
    QTRY_COMPARE(model.rowCount(), 1);
    QCOMPARE(model.text(0), QString(before, u'x') + QChar(0x2026));
}

void tst_ViewerModel::showsNothingOf_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::newRow("an empty file") << QByteArray();
    QTest::newRow("the mark of UTF-8") << QByteArray("\xef\xbb\xbf");
    QTest::newRow("the mark of UTF-16") << QByteArray("\xff\xfe");
    QTest::newRow("the mark of UTF-32") << QByteArray("\0\0\xfe\xff", 4);
}

void tst_ViewerModel::showsNothingOf()
{
    QFETCH(QByteArray, text);
    write(text);
    TestedModel model(m_path);
    QTRY_COMPARE(model.activity(), Activity::Following);
    QCOMPARE(model.rowCount(), 0);
    QCOMPARE(model.indexedBytes(), quint64(text.size()));
}

void tst_ViewerModel::growsByHalfACharacter_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QByteArray>("more");
    QTest::newRow("UTF-8") << QByteArray("\xc3\xa4\n\xc3") << QByteArray("\xa4\nx");
    QTest::newRow("UTF-16") << QByteArray("\xff\xfe\xe4\0\n\0\xe4", 7)
                            << QByteArray("\0\n\0x\0", 5);
    QTest::newRow("UTF-16, the line's end")
        << QByteArray("\xff\xfe\xe4\0\n\0\xe4\0\n", 9) << QByteArray("\0x\0", 3);
    QTest::newRow("UTF-32") << QByteArray("\xff\xfe\0\0\xe4\0\0\0\n\0\0\0\xe4\0", 14)
                            << QByteArray("\0\0\n\0\0\0x\0\0\0", 10);
}

void tst_ViewerModel::growsByHalfACharacter()
{
    QFETCH(QByteArray, text);
    QFETCH(QByteArray, more);
    write(text);
    TestedModel model(m_path);
    QTRY_COMPARE(model.activity(), Activity::Following);
    QCOMPARE(model.rowCount(), 2);
    QCOMPARE(model.text(0), QString::fromUtf8("ä"));
    write(more, QIODevice::Append);
    QTRY_COMPARE(model.rowCount(), 3);
    QCOMPARE(model.text(1), QString::fromUtf8("ä"));
    QCOMPARE(model.text(2), "x");
}

void tst_ViewerModel::learnsEncodingWhileSampleGrows()
{
    write("abc\n");
    TestedModel model(m_path);
    QTRY_COMPARE(model.encodingName(), "ASCII");
    write("\xe4\n", QIODevice::Append);
    QTRY_COMPARE(model.encodingName(), "Windows-1252");
    QCOMPARE(model.rowCount(), 2);
    QCOMPARE(model.text(1), QString::fromUtf8("ä"));
    // What has been shown as text so far stays so however it goes on.
    write(QByteArray("x\n").repeated(64), QIODevice::Append);
    QTRY_COMPARE(model.rowCount(), 66);
    write("\xc3\xa4\n", QIODevice::Append);
    QTRY_COMPARE(model.rowCount(), 67);
    QCOMPARE(model.text(66), QString::fromUtf8("Ã¤"));
}

void tst_ViewerModel::recognisesLineEnds_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QStringList>("rows");
    const QChar picture(0x240d);
    QTest::newRow("LF") << QByteArray("a\nb") << QStringList {"a", "b"};
    QTest::newRow("CRLF") << QByteArray("a\r\nb\r\n") << QStringList {"a", "b"};
    QTest::newRow("CR") << QByteArray("a\rb\r\rc") << QStringList {"a", "b", "", "c"};
    QTest::newRow("nothing but CR") << QByteArray("\r") << QStringList {""};
    QTest::newRow("CR and LF") << QByteArray("a\rb\nc")
                               << QStringList {QString("a%1b").arg(picture), "c"};
    QTest::newRow("CR at the end")
        << QByteArray("a\nb\r") << QStringList {"a", QString("b%1").arg(picture)};
    QTest::newRow("CR of UTF-16") << QByteArray("\xff\xfe"
                                                "a\0\r\0b\0",
                                                8)
                                  << QStringList {"a", "b"};
    // The sample ends between the two.
    const QByteArray longLine(65535, 'x');
    QTest::newRow("CRLF behind a long line")
        << longLine + "\r\nb\rc"
        << QStringList {QString(TextFileModel::maximumLineBytes, u'x') + QChar(0x2026),
                        QString("b%1c").arg(picture)};
}

void tst_ViewerModel::recognisesLineEnds()
{
    QFETCH(QByteArray, text);
    QFETCH(QStringList, rows);
    write(text);
    TestedModel model(m_path);
    QTRY_COMPARE(model.activity(), Activity::Following);
    QStringList shown;
    for (int row = 0; row < model.rowCount(); ++row)
        shown << model.text(row);
    QCOMPARE(shown, rows);
}

void tst_ViewerModel::completesLineEnd()
{
    write("a\r");
    TestedModel model(m_path);
    QTRY_COMPARE(model.rowCount(), 1);
    QCOMPARE(model.text(0), "a");
    write("\nb\r\n", QIODevice::Append);
    QTRY_COMPARE(model.rowCount(), 2);
    QCOMPARE(model.text(0), "a");
    QCOMPARE(model.text(1), "b");
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

void tst_ViewerModel::noticesTextWrittenWhileStopped()
{
    write("one\ntwo\n");
    TestedModel model(m_path);
    QTRY_COMPARE(model.activity(), TextFileModel::Activity::Following);
    QCOMPARE(model.text(0), QStringLiteral("one"));
    model.stopIndexing();
    QTRY_COMPARE(model.activity(), TextFileModel::Activity::Stopped);
    write("abc\ndef\nghi\n");
    model.resumeIndexing();
    QTRY_COMPARE(model.rowCount(), 3);
    QTRY_COMPARE(model.text(0), QStringLiteral("abc"));
    QCOMPARE(model.text(2), QStringLiteral("ghi"));
    QCOMPARE(model.lastRestart(), TextFileModel::Restart::Rewritten);
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
    // Too far from the first line to be read with it, whoever looks at that.
    write(QByteArray(200'000, 'a') + "\nb\n");
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
    QTest::newRow("Windows-1252") << QByteArray("\xe4\n") << "Windows-1252";
    QTest::newRow("UTF-16LE") << QByteArray("\xff\xfe"
                                            "a\0",
                                            4)
                              << "UTF-16LE";
}

void tst_ViewerModel::namesEncoding()
{
    QFETCH(QByteArray, text);
    QFETCH(QString, name);
    write(text);
    TestedModel model(m_path);
    QTRY_COMPARE(model.encodingName(), name);
}

void tst_ViewerModel::headersStandAsTheirCells()
{
    write("name,amount,note,later\npear,,5 pieces,\n");
    TextFileModel model(m_path);
    model.start();
    QTRY_COMPARE(model.columnCount(), 4);
    QTRY_COMPARE(model.rowCount(), 1);
    const auto rightOnes = [&model] {
        QList<int> columns;
        for (int column = 0; column < model.columnCount(); ++column) {
            const int side =
                model.headerData(column, Qt::Horizontal, Qt::TextAlignmentRole).toInt();
            if ((side & Qt::AlignRight) != 0)
                columns.append(column);
        }
        return columns;
    };
    QCOMPARE(rightOnes(), QList<int>());
    QSignalSpy changed(&model, &QAbstractItemModel::headerDataChanged);
    write("fig,9,4,\n", QIODevice::Append);
    QTRY_COMPARE(model.rowCount(), 2);
    QCOMPARE(changed.count(), 1);
    QCOMPARE(rightOnes(), QList<int>({1}));
    write("plum,none,,3\n", QIODevice::Append);
    QTRY_COMPARE(model.rowCount(), 3);
    QCOMPARE(rightOnes(), QList<int>({1, 3}));
}

QTEST_GUILESS_MAIN(tst_ViewerModel)

#include "tst_viewermodel.moc"
