// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "basics/roles.h"
#include "capture/capturemodel.h"
#include "captures.h"
#include "gzip.h"

#include <QAbstractItemModelTester>
#include <QDateTime>
#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

using Activity = CaptureModel::Activity;

//! A model that is looked after, and started.
class TestedCapture : public CaptureModel
{
public:
    explicit TestedCapture(const QString &path, int maximumRows = 1'000'000)
        : CaptureModel(path, maximumRows)
        , m_tester(this, QAbstractItemModelTester::FailureReportingMode::Fatal)
    {
        start();
    }

    QString text(int row, Column column = Info) const
    {
        return index(row, column).data().toString();
    }

private:
    QAbstractItemModelTester m_tester;
};

QByteArray packetTo(int port)
{
    return ethernet(0x800, ipv4(17, udp(1000, port, "abc")));
}

} // namespace

class tst_CaptureModel : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void showsPackets();
    void showsNanoseconds();
    void timesBefore1970();
    void tellsDetails();
    void tellsHeaders();
    void followsGrowth();
    void waitsForThePacketsEnd();
    void beginsAnew_data();
    void beginsAnew();
    void keepsWhatADeletedFileHeld();
    void showsCompressedCaptures();
    void showsStreams();
    void showsTheFirstPackets();
    void stopsAtDamage();
    void tellsWhatCannotBeRead();
    void fails();

private:
    void write(const QByteArray &bytes, QIODevice::OpenMode mode = QIODevice::WriteOnly);

    QTemporaryDir m_folder;
    QString m_path;
    const CaptureWriter m_writer;
};

void tst_CaptureModel::initTestCase()
{
#ifndef VIEWER_HAS_PCAP
    QSKIP("This build reads no captures.");
#endif
    QVERIFY(m_folder.isValid());
}

void tst_CaptureModel::init()
{
    m_path =
        m_folder.filePath(QLatin1String("capture-") + QLatin1String(QTest::currentTestFunction()));
    if (QTest::currentDataTag())
        m_path += QLatin1String(QTest::currentDataTag());
}

void tst_CaptureModel::write(const QByteArray &bytes, QIODevice::OpenMode mode)
{
    QFile file(m_path);
    QVERIFY(file.open(mode));
    QCOMPARE(file.write(bytes), bytes.size());
}

void tst_CaptureModel::showsPackets()
{
    write(m_writer.header() + m_writer.record(1'700'000'000, 123'456, packetTo(2000))
          + m_writer.record(1'700'000'001, 7, packetTo(3000), {}, 1500));
    TestedCapture model(m_path);
    QTRY_COMPARE(model.activity(), Activity::Following);
    QCOMPARE(model.rowCount(), 2);
    QCOMPARE(model.columnCount(), 6);
    const QString second =
        QDateTime::fromSecsSinceEpoch(1'700'000'000).toString("yyyy-MM-dd HH:mm:ss");
    QCOMPARE(model.text(0, CaptureModel::Time), second + ".123456");
    QCOMPARE(model.text(0, CaptureModel::Source), "10.0.0.1");
    QCOMPARE(model.text(0, CaptureModel::Destination), "10.0.0.2");
    QCOMPARE(model.text(0, CaptureModel::Protocol), "UDP");
    QCOMPARE(model.text(0, CaptureModel::Length), "45");
    QCOMPARE(model.text(0), "1000 → 2000 Len=3");
    QVERIFY(model.text(1, CaptureModel::Time).endsWith(":21.000007"));
    QCOMPARE(model.text(1, CaptureModel::Length), "1500");
    QCOMPARE(model.fileSize(), quint64(QFile(m_path).size()));
    QCOMPARE(model.indexedBytes(), model.fileSize());
    QCOMPARE(model.linkName(), "Ethernet");
    QVERIFY(!model.isCopied());
}

//! All of them have as many digits, those that were told before included.
void tst_CaptureModel::showsNanoseconds()
{
    write(m_writer.header(0xa1b23c4d) + m_writer.record(1, 5000, packetTo(1))
          + m_writer.record(1, 5001, packetTo(2)));
    TestedCapture model(m_path);
    QTRY_COMPARE(model.rowCount(), 2);
    QVERIFY(model.text(0, CaptureModel::Time).endsWith(":01.000005"));
    QSignalSpy changed(&model, &QAbstractItemModel::dataChanged);
    QVERIFY(model.text(1, CaptureModel::Time).endsWith(":01.000005001"));
    QVERIFY(model.text(0, CaptureModel::Time).endsWith(":01.000005000"));
    QTRY_COMPARE(changed.size(), 1);
    QCOMPARE(changed.first().at(1).toModelIndex(), model.index(1, CaptureModel::Time));
}

//! No such capture was made, but a broken clock is no reason to write nonsense.
void tst_CaptureModel::timesBefore1970()
{
    write(m_writer.header() + m_writer.record(0, 0, packetTo(1)));
    TestedCapture model(m_path);
    QTRY_COMPARE(model.rowCount(), 1);
    QCOMPARE(model.text(0, CaptureModel::Time),
             QDateTime::fromSecsSinceEpoch(0).toString("yyyy-MM-dd HH:mm:ss") + ".000000");
}

void tst_CaptureModel::tellsDetails()
{
    write(m_writer.header() + m_writer.record(1, 2, packetTo(2000), {}, 1500)
          + m_writer.record(1, 2, packetTo(2000)));
    TestedCapture model(m_path);
    QTRY_COMPARE(model.rowCount(), 2);
    const QString text = model.index(0, 2).data(int(RowRole::Details)).toString();
    QVERIFY2(text.startsWith("Packet 1: " + model.text(0, CaptureModel::Time) + ", "),
             qPrintable(text));
    QVERIFY2(text.contains("45 were captured\n"), qPrintable(text));
    QVERIFY2(text.contains("\nUDP: 1000 → 2000 Len=3\n\n00000000  02 00 00 00 00 02 "),
             qPrintable(text));
    const QString whole = model.index(1, 0).data(int(RowRole::Details)).toString();
    QVERIFY2(!whole.contains("captured"), qPrintable(whole));
}

void tst_CaptureModel::tellsHeaders()
{
    CaptureModel model(m_path);
    QStringList names;
    for (int column = 0; column < model.columnCount(); ++column)
        names << model.headerData(column, Qt::Horizontal).toString();
    QCOMPARE(names, QStringList({"Time", "Source", "Destination", "Protocol", "Length", "Info"}));
    QVERIFY(!model.headerData(6, Qt::Horizontal).isValid());
    QVERIFY(!model.headerData(0, Qt::Vertical).isValid());
    const auto alignment = [&](int column) {
        return Qt::Alignment(
            model.headerData(column, Qt::Horizontal, Qt::TextAlignmentRole).toInt());
    };
    QVERIFY(alignment(CaptureModel::Length) & Qt::AlignRight);
    QVERIFY(alignment(CaptureModel::Info) & Qt::AlignLeft);
}

void tst_CaptureModel::followsGrowth()
{
    write(m_writer.header());
    TestedCapture model(m_path);
    QTRY_COMPARE(model.activity(), Activity::Following);
    QCOMPARE(model.rowCount(), 0);
    QSignalSpy resets(&model, &QAbstractItemModel::modelReset);
    for (int i = 1; i <= 3; ++i) {
        write(m_writer.record(1, 2, packetTo(i)).repeated(1000), QIODevice::Append);
        QTRY_COMPARE(model.rowCount(), i * 1000);
        QCOMPARE(model.text(i * 1000 - 1), QString("1000 → %1 Len=3").arg(i));
    }
    QCOMPARE(resets.size(), 0);
    QVERIFY(model.indexMemory() < 200'000);
}

void tst_CaptureModel::waitsForThePacketsEnd()
{
    const QByteArray second = m_writer.record(1, 2, packetTo(2));
    write(m_writer.header() + m_writer.record(1, 2, packetTo(1)) + second.first(20));
    TestedCapture model(m_path);
    QTRY_VERIFY(model.isIncomplete());
    QCOMPARE(model.rowCount(), 1);
    QCOMPARE(model.activity(), Activity::Following);
    write(second.sliced(20), QIODevice::Append);
    QTRY_COMPARE(model.rowCount(), 2);
    QVERIFY(!model.isIncomplete());
    QCOMPARE(model.text(1), "1000 → 2 Len=3");
}

void tst_CaptureModel::beginsAnew_data()
{
    QTest::addColumn<int>("packets");
    QTest::addColumn<bool>("isReplaced");
    QTest::newRow("shorter") << 1 << false;
    QTest::newRow("longer") << 9 << false;
    QTest::newRow("replaced") << 3 << true;
}

void tst_CaptureModel::beginsAnew()
{
    QFETCH(int, packets);
    QFETCH(bool, isReplaced);
    write(m_writer.header() + m_writer.record(1, 2, packetTo(1)).repeated(3));
    TestedCapture model(m_path);
    QTRY_COMPARE(model.rowCount(), 3);
    QCOMPARE(model.text(2), "1000 → 1 Len=3");
    QSignalSpy restarted(&model, &CaptureModel::restarted);
    if (isReplaced)
        QVERIFY(QFile::rename(m_path, m_path + ".1"));
    write(m_writer.header() + m_writer.record(5, 6, packetTo(7)).repeated(packets));
    QTRY_COMPARE(model.rowCount(), packets);
    QTRY_COMPARE(model.text(packets - 1), "1000 → 7 Len=3");
    QVERIFY(!restarted.isEmpty());
}

void tst_CaptureModel::keepsWhatADeletedFileHeld()
{
    write(m_writer.header() + m_writer.record(1, 2, packetTo(1)).repeated(1000));
    TestedCapture model(m_path);
    QTRY_COMPARE(model.rowCount(), 1000);
    QVERIFY(QFile::remove(m_path));
    QTRY_VERIFY(model.isMissing());
    QCOMPARE(model.text(500), "1000 → 1 Len=3");
    write(m_writer.header() + m_writer.record(1, 2, packetTo(2)));
    QTRY_COMPARE(model.rowCount(), 1);
    QTRY_VERIFY(!model.isMissing());
    QCOMPARE(model.text(0), "1000 → 2 Len=3");
}

void tst_CaptureModel::showsCompressedCaptures()
{
#ifndef VIEWER_HAS_LIBARCHIVE
    QSKIP("This build reads no compressed files.");
#endif
    write(gzip(m_writer.header() + m_writer.record(1, 2, packetTo(1)).repeated(20'000)));
    TestedCapture model(m_path);
    QTRY_COMPARE(model.activity(), Activity::Ended);
    QCOMPARE(model.rowCount(), 20'000);
    QCOMPARE(model.text(19'999), "1000 → 1 Len=3");
    QVERIFY(model.isCopied());
}

void tst_CaptureModel::showsStreams()
{
    QCOMPARE(::mkfifo(QFile::encodeName(m_path), 0600), 0);
    TestedCapture model(m_path);
    const int writer = ::open(QFile::encodeName(m_path), O_RDWR | O_NONBLOCK);
    QVERIFY(writer >= 0);
    const auto send = [&](const QByteArray &bytes) {
        return ::write(writer, bytes.constData(), size_t(bytes.size())) == ssize_t(bytes.size());
    };
    QVERIFY(send(m_writer.header() + m_writer.record(1, 2, packetTo(1))));
    QTRY_COMPARE(model.rowCount(), 1);
    QCOMPARE(model.text(0), "1000 → 1 Len=3");
    const QByteArray next = m_writer.record(1, 2, packetTo(2));
    QVERIFY(send(next + next.first(30)));
    QTRY_COMPARE(model.rowCount(), 2);
    ::close(writer);
    QTRY_COMPARE(model.activity(), Activity::Ended);
    QVERIFY(model.isIncomplete());
    QCOMPARE(model.text(1), "1000 → 2 Len=3");
}

void tst_CaptureModel::showsTheFirstPackets()
{
    write(m_writer.header() + m_writer.record(1, 2, packetTo(1)).repeated(10));
    TestedCapture model(m_path, 7);
    QTRY_COMPARE(model.activity(), Activity::Full);
    QCOMPARE(model.rowCount(), 7);
    write(m_writer.header() + m_writer.record(1, 2, packetTo(2)).repeated(3));
    QTRY_COMPARE(model.rowCount(), 3);
}

void tst_CaptureModel::stopsAtDamage()
{
    const QByteArray good = m_writer.header() + m_writer.record(1, 2, packetTo(1)).repeated(3);
    write(good + QByteArray(16, '\xff') + m_writer.record(1, 2, packetTo(2)));
    TestedCapture model(m_path);
    QTRY_COMPARE(model.activity(), Activity::Damaged);
    QCOMPARE(model.rowCount(), 3);
    QCOMPARE(model.indexedBytes(), quint64(good.size()));
}

void tst_CaptureModel::tellsWhatCannotBeRead()
{
    write(m_writer.section() + m_writer.interface(6, 1) + m_writer.packet(7, 1, packetTo(1)));
    TestedCapture model(m_path);
    QTRY_COMPARE(model.rowCount(), 1);
    QVERIFY2(model.text(0).startsWith("This packet cannot be read: "), qPrintable(model.text(0)));
    QVERIFY(model.text(0).size() > 30);
    QVERIFY(model.text(0, CaptureModel::Time).isEmpty());
    QCOMPARE(model.index(0, 0).data(int(RowRole::Details)).toString(), model.text(0));
}

void tst_CaptureModel::fails()
{
    TestedCapture model(m_path);
    QTRY_COMPARE(model.activity(), Activity::Failed);
    QVERIFY(!model.errorString().isEmpty());
    QCOMPARE(model.rowCount(), 0);
}

QTEST_GUILESS_MAIN(tst_CaptureModel)
#include "tst_capturemodel.moc"
