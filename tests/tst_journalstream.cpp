// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "files/journalstream.h"
#include "files/jsontext.h"
#include "files/textfilemodel.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <poll.h>

namespace {

using Activity = TextFileModel::Activity;

//! Writes journals from texts; of Debian's package systemd-journal-remote.
const QString s_writer = QStringLiteral("/lib/systemd/systemd-journal-remote");

//! An entry as journals are exported; fields are "NAME=value", or "NAME" with bytes.
QByteArray entry(quint64 time, const QByteArrayList &fields, const QByteArray &binaryName = {},
                 const QByteArray &bytes = {})
{
    QByteArray text = "__REALTIME_TIMESTAMP=" + QByteArray::number(time)
        + "\n__MONOTONIC_TIMESTAMP=1000\n_BOOT_ID=0123456789abcdef0123456789abcdef\n";
    for (const QByteArray &field : fields)
        text += field + '\n';
    if (!binaryName.isEmpty()) {
        QByteArray size(8, '\0');
        size[0] = char(bytes.size());
        text += binaryName + '\n' + size + bytes + '\n';
    }
    return text + '\n';
}

bool isReadable(int descriptor)
{
    pollfd wait {descriptor, POLLIN, 0};
    return ::poll(&wait, 1, 0) > 0;
}

//! All that can be read now.
QByteArray readAll(JournalStream *journal)
{
    QByteArray text;
    char buffer[100]; // shorter than an entry
    QString error;
    for (qint64 count = 1; count > 0;) {
        count = journal->read(buffer, sizeof buffer, &error);
        text.append(buffer, qMax<qint64>(count, 0));
    }
    if (!error.isEmpty())
        qWarning("%s", qPrintable(error));
    return text;
}

} // namespace

class tst_JournalStream : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void valuesOfJson_data();
    void valuesOfJson();
    void names();
    void writesEntries();
    void writesAsJournalctl();
    void readsFolders();
    void goesOnAsTheJournalGrows();
    void showsJournals_data();
    void showsJournals();
    void fails();

private:
    void write(const QByteArray &entries);
    std::unique_ptr<JournalStream> open();

    std::unique_ptr<QTemporaryDir> m_folder;
    QString m_path;
};

void tst_JournalStream::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    m_path = m_folder->filePath("test.journal");
}

void tst_JournalStream::write(const QByteArray &entries)
{
    QProcess writer;
    writer.start(s_writer, {"--output=" + m_path, "-"});
    QVERIFY(writer.waitForStarted());
    writer.write(entries);
    writer.closeWriteChannel();
    QVERIFY(writer.waitForFinished());
    QCOMPARE(writer.exitCode(), 0);
}

std::unique_ptr<JournalStream> tst_JournalStream::open()
{
    QString error;
    std::unique_ptr<JournalStream> journal = JournalStream::open(m_path, &error);
    if (!journal)
        qWarning("%s", qPrintable(error));
    return journal;
}

#ifdef VIEWER_HAS_SYSTEMD
#define NEED_JOURNALS()                                                                            \
    if (!QFile::exists(s_writer))                                                                  \
        QSKIP("There is no systemd-journal-remote, which writes journals.");
#else
#define NEED_JOURNALS() QSKIP("This build reads no journals.");
#endif

void tst_JournalStream::valuesOfJson_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QByteArray>("json");
    QTest::newRow("plain") << QByteArray("text") << QByteArray(R"("text")");
    QTest::newRow("empty") << QByteArray() << QByteArray(R"("")");
    QTest::newRow("quotes") << QByteArray(R"(a"b\c)") << QByteArray(R"("a\"b\\c")");
    QTest::newRow("lines") << QByteArray("a\nb\tc\rd\x01")
                           << QByteArray(R"("a\nb\tc\u000dd\u0001")");
    QTest::newRow("UTF-8") << QByteArray("\xc3\xa4") << QByteArray("\"\xc3\xa4\"");
    QTest::newRow("bytes") << QByteArray("a\xff\0", 3) << QByteArray("[97,255,0]");
}

void tst_JournalStream::valuesOfJson()
{
    QFETCH(QByteArray, bytes);
    QByteArray json = "=";
    appendJsonValue(&json, bytes);
    QTEST(json.sliced(1), "json");
    QVERIFY(QJsonDocument::fromJson('[' + json.sliced(1) + ']').isArray());
}

void tst_JournalStream::names()
{
    QVERIFY(JournalStream::isName("journal:"));
    QVERIFY(JournalStream::isName("journal:/var/log/journal"));
    QVERIFY(!JournalStream::isName("journal"));
    QVERIFY(!JournalStream::isName("/tmp/journal:"));
    QVERIFY(JournalStream::isJournalStart("LPKSHHRH\1"));
    QVERIFY(!JournalStream::isJournalStart("LPKSHHR"));
}

void tst_JournalStream::writesEntries()
{
    NEED_JOURNALS()
    write(entry(1'700'000'000'123'456, {"MESSAGE=first \"one\"", "PRIORITY=3"})
          + entry(1'700'000'001'000'000, {"MESSAGE=a", "MESSAGE=b"}, "RAW", "x\xff\n"));
    const auto journal = open();
    QVERIFY(journal);
    QVERIFY(isReadable(journal->descriptor()));
    const QByteArrayList lines = readAll(journal.get()).split('\n');
    QVERIFY(!isReadable(journal->descriptor()));
    QCOMPARE(lines.size(), 3);
    QVERIFY(lines.at(2).isEmpty());
    QVERIFY(lines.at(0).startsWith(R"({"__REALTIME_TIMESTAMP":"1700000000123456","MESSAGE":)"));
    const QJsonObject first = QJsonDocument::fromJson(lines.at(0)).object();
    QCOMPARE(first.value("MESSAGE").toString(), "first \"one\"");
    QCOMPARE(first.value("PRIORITY").toString(), "3");
    const QJsonObject second = QJsonDocument::fromJson(lines.at(1)).object();
    QCOMPARE(second.value("MESSAGE").toArray(), QJsonArray({"a", "b"}));
    QCOMPARE(second.value("RAW").toArray(), QJsonArray({120, 255, 10}));
}

//! The same members and values, but for what places are called by and clocks that stand still.
void tst_JournalStream::writesAsJournalctl()
{
    NEED_JOURNALS()
    write(entry(1'700'000'000'000'001, {"MESSAGE=one", "PRIORITY=3", "_HOSTNAME=h"})
          + entry(1'700'000'000'000'002, {"MESSAGE=\xc3\xa4", "SYSLOG_IDENTIFIER=p"}));
    QProcess client;
    client.start("journalctl", {"--file=" + m_path, "--output=json", "--no-pager"});
    if (!client.waitForStarted())
        QSKIP("There is no journalctl.");
    QVERIFY(client.waitForFinished());
    const QByteArrayList expected = client.readAllStandardOutput().split('\n');
    const QByteArrayList lines = readAll(open().get()).split('\n');
    QCOMPARE(lines.size(), expected.size());
    for (qsizetype i = 0; i + 1 < lines.size(); ++i) {
        QJsonObject theirs = QJsonDocument::fromJson(expected.at(i)).object();
        for (const char *name : {"__CURSOR", "__MONOTONIC_TIMESTAMP", "__SEQNUM", "__SEQNUM_ID"})
            theirs.remove(QLatin1String(name));
        QCOMPARE(QJsonDocument::fromJson(lines.at(i)).object(), theirs);
    }
}

void tst_JournalStream::readsFolders()
{
    NEED_JOURNALS()
    write(entry(2'000'000, {"MESSAGE=two"}));
    m_path = m_folder->filePath("other.journal");
    write(entry(1'000'000, {"MESSAGE=one"}));
    m_path = "journal:" + m_folder->path();
    const QByteArrayList lines = readAll(open().get()).split('\n');
    QCOMPARE(lines.size(), 3);
    QVERIFY(lines.at(0).contains("one"));
    QVERIFY(lines.at(1).contains("two"));
}

void tst_JournalStream::goesOnAsTheJournalGrows()
{
    NEED_JOURNALS()
    write(entry(1'000'000, {"MESSAGE=one"}));
    const auto journal = open();
    QVERIFY(readAll(journal.get()).contains("one"));
    QVERIFY(readAll(journal.get()).isEmpty());
    QVERIFY(!isReadable(journal->descriptor()));
    write(entry(2'000'000, {"MESSAGE=two"}).repeated(3));
    QTRY_VERIFY(isReadable(journal->descriptor()));
    QByteArray text;
    QTRY_COMPARE((text += readAll(journal.get())).count("\"two\""), 3);
    QCOMPARE(text.count('\n'), 3);
}

void tst_JournalStream::showsJournals_data()
{
    QTest::addColumn<QString>("prefix");
    QTest::newRow("by its bytes") << "";
    QTest::newRow("by its name") << "journal:";
}

//! As any journal: with times, and the level of a priority.
void tst_JournalStream::showsJournals()
{
    NEED_JOURNALS()
    QFETCH(QString, prefix);
    QByteArray entries;
    for (quint64 i = 0; i < 500; ++i)
        entries += entry(1'700'000'000'000'000 + i,
                         {"MESSAGE=line " + QByteArray::number(i), "PRIORITY=3"});
    write(entries);
    TextFileModel model(prefix + m_path);
    model.start();
    QTRY_COMPARE(model.rowCount(), 500);
    QVERIFY(model.isJournal());
    QCOMPARE(model.headerData(0, Qt::Horizontal).toString(), "__REALTIME_TIMESTAMP");
    QCOMPARE(model.index(7, 0).data().toString(), "2023-11-14T22:13:20.000007Z");
    QVERIFY(model.index(7, 0).data(Qt::ForegroundRole).isValid());
    write(entry(1'700'000'001'000'000, {"MESSAGE=more", "PRIORITY=6"}));
    QTRY_COMPARE(model.rowCount(), 501);
    QCOMPARE(model.activity(), Activity::Indexing); // there is no end
}

void tst_JournalStream::fails()
{
    QString error;
    QVERIFY(!JournalStream::open("journal:" + m_folder->filePath("none"), &error));
    QVERIFY(!error.isEmpty());
#ifdef VIEWER_HAS_SYSTEMD
    QFile file(m_path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write("LPKSHHRH, but no more"), 21);
    file.close();
    error.clear();
    QVERIFY(!JournalStream::open(m_path, &error));
    QVERIFY(!error.isEmpty());
#endif
}

QTEST_GUILESS_MAIN(tst_JournalStream)
#include "tst_journalstream.moc"
