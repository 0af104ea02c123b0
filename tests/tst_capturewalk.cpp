// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "capture/capturewalk.h"
#include "capture/packetsource.h"
#include "captures.h"
#include "files/textfile.h"
#include "gzip.h"

#include <QFile>
#include <QRandomGenerator>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

namespace {

using Stop = CaptureWalk::Stop;

//! A packet as it is read where the walk found it.
struct ReadPacket
{
    qint64 time;
    quint32 length;
    QByteArray bytes;

    friend bool operator==(const ReadPacket &, const ReadPacket &) = default;
};

constexpr qint64 s_second = 1'000'000'000;

} // namespace

#ifdef VIEWER_HAS_PCAP
#define NEED_PACKETS()
#else
#define NEED_PACKETS() QSKIP("This build reads no captures.");
#endif

class tst_CaptureWalk : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void recognises_data();
    void recognises();
    void recognisesFiles_data();
    void recognisesFiles();
    void records_data();
    void records();
    void blocks_data();
    void blocks();
    void sections();
    void otherLinkOfLaterInterface();
    void timesWithoutRoom();
    void readsInAnyOrder();
    void growsByAnyPiece_data();
    void growsByAnyPiece();
    void goesPieceByPiece();
    void damage_data();
    void damage();
    void anyBytes();

private:
    void write(const QByteArray &bytes);
    //! Reads the packets of what was written, and how the walk ended.
    QList<ReadPacket> packets(Stop *stop = nullptr);
    QByteArray manyBlocks() const;

    QTemporaryDir m_folder;
    QString m_path;
};

void tst_CaptureWalk::init()
{
    QVERIFY(m_folder.isValid());
    m_path = m_folder.filePath("capture");
}

void tst_CaptureWalk::write(const QByteArray &bytes)
{
    QFile file(m_path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(bytes), bytes.size());
}

QList<ReadPacket> tst_CaptureWalk::packets(Stop *stop)
{
    QString error;
    const std::shared_ptr<TextFile> file = TextFile::open(m_path, &error);
    CaptureWalk walk(file);
    std::vector<quint64> places;
    const Stop end = walk.walk(100'000, &places);
    if (stop)
        *stop = end;
    PacketSource source(file);
    QList<ReadPacket> read;
    for (const quint64 place : places) {
        if (const Packet *packet = source.read(place, walk.sections()))
            read.append({packet->time, packet->length, packet->bytes.toByteArray()});
        else
            qWarning("%s", qPrintable(source.error()));
    }
    return read;
}

void tst_CaptureWalk::recognises_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<bool>("isCapture");
    for (const auto order : {QSysInfo::LittleEndian, QSysInfo::BigEndian}) {
        const CaptureWriter writer(order);
        const char *name = order == QSysInfo::LittleEndian ? "little" : "big";
        for (const quint32 magic : {0xa1b2c3d4, 0xa1b23c4d, 0xa1b2cd34})
            QTest::addRow("%s %x", name, magic) << writer.header(magic) << true;
        QTest::addRow("%s blocks", name) << writer.section() << true;
        QTest::addRow("%s blocks, too short", name) << writer.section().first(11) << false;
    }
    QTest::newRow("text") << QByteArray("plain text") << false;
    QTest::newRow("empty") << QByteArray() << false;
    QTest::newRow("three bytes") << QByteArray("\xd4\xc3\xb2") << false;
    QTest::newRow("no byte order") << QByteArray("\n\r\r\n\x1c\0\0\0abcd", 12) << false;
}

void tst_CaptureWalk::recognises()
{
    QFETCH(QByteArray, bytes);
    QTEST(isCaptureStart(bytes), "isCapture");
}

void tst_CaptureWalk::recognisesFiles_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<bool>("isCapture");
    const QByteArray header = CaptureWriter().header();
    QTest::newRow("any name") << "x.log" << header << true;
    QTest::newRow("text") << "x.pcap" << QByteArray("text") << false;
    QTest::newRow("empty") << "x.pcap" << QByteArray() << false;
    QTest::newRow("compressed") << "x.pcap.gz" << gzip(header) << true;
    QTest::newRow("compressed blocks") << "x.PCAPNG.gz" << gzip(header) << true;
    QTest::newRow("compressed text") << "x.log.gz" << gzip("text") << false;
}

void tst_CaptureWalk::recognisesFiles()
{
    QFETCH(QString, name);
    QFETCH(QByteArray, bytes);
    m_path = m_folder.filePath(name);
    QVERIFY(!isCapture(m_path)); // it is not there
    write(bytes);
    QTEST(isCapture(m_path), "isCapture");
    QVERIFY(QFile::remove(m_path));
    QVERIFY(!isCapture(m_folder.path()));
}

void tst_CaptureWalk::records_data()
{
    QTest::addColumn<QSysInfo::Endian>("order");
    QTest::addColumn<quint32>("magic");
    QTest::addColumn<QByteArray>("more");
    QTest::addColumn<int>("unit");
    for (const auto order : {QSysInfo::LittleEndian, QSysInfo::BigEndian}) {
        const char *name = order == QSysInfo::LittleEndian ? "little" : "big";
        QTest::addRow("%s microseconds", name) << order << 0xa1b2c3d4 << QByteArray() << 1000;
        QTest::addRow("%s nanoseconds", name) << order << 0xa1b23c4d << QByteArray() << 1;
        QTest::addRow("%s long headers", name)
            << order << 0xa1b2cd34 << QByteArray(8, '\x7f') << 1000;
    }
}

void tst_CaptureWalk::records()
{
    NEED_PACKETS()
    QFETCH(QSysInfo::Endian, order);
    QFETCH(quint32, magic);
    QFETCH(QByteArray, more);
    QFETCH(int, unit);
    const CaptureWriter writer(order);
    write(writer.header(magic) + writer.record(1, 5, "first", more)
          + writer.record(2, 999'999, "", more) + writer.record(3, 0, "cut", more, 1500));
    Stop stop;
    QCOMPARE(packets(&stop),
             QList<ReadPacket>({{s_second + 5 * unit, 5, "first"},
                                {2 * s_second + 999'999 * unit, 0, ""},
                                {3 * s_second, 1500, "cut"}}));
    QCOMPARE(stop, Stop::End);
}

void tst_CaptureWalk::blocks_data()
{
    QTest::addColumn<QSysInfo::Endian>("order");
    QTest::newRow("little") << QSysInfo::LittleEndian;
    QTest::newRow("big") << QSysInfo::BigEndian;
}

//! Interfaces have their own units of time, wherever in the file they are described.
void tst_CaptureWalk::blocks()
{
    NEED_PACKETS()
    QFETCH(QSysInfo::Endian, order);
    const CaptureWriter writer(order);
    write(writer.section() + writer.block(4, "names") + writer.interface(6) + writer.interface(9)
          + writer.packet(0, 1'000'005, "one") + writer.packet(1, 2'000'000'007, "two")
          + writer.block(5, "statistics") + writer.interface(3) + writer.packet(2, 3001, "three")
          + writer.packet(0, 4'000'000, "four"));
    Stop stop;
    QCOMPARE(packets(&stop),
             QList<ReadPacket>({{s_second + 5000, 3, "one"},
                                {2 * s_second + 7, 3, "two"},
                                {3 * s_second + 1'000'000, 5, "three"},
                                {4 * s_second, 4, "four"}}));
    QCOMPARE(stop, Stop::End);
}

//! Files put behind each other, even of another byte order.
QByteArray tst_CaptureWalk::manyBlocks() const
{
    const CaptureWriter little;
    const CaptureWriter big(QSysInfo::BigEndian);
    return little.section() + little.interface(6) + little.interface(9)
        + little.packet(1, 1'000'000'001, "one") + little.packet(0, 2'000'002, "two")
        + big.section() + big.interface(3) + big.packet(0, 3003, "three") + big.interface(6)
        + big.packet(1, 4'000'004, "four") + little.section() + little.section()
        + little.interface(9) + little.packet(0, 5'000'000'005, "five");
}

void tst_CaptureWalk::sections()
{
    NEED_PACKETS()
    write(manyBlocks());
    QCOMPARE(packets(),
             QList<ReadPacket>({{s_second + 1, 3, "one"},
                                {2 * s_second + 2000, 3, "two"},
                                {3 * s_second + 3'000'000, 5, "three"},
                                {4 * s_second + 4000, 4, "four"},
                                {5 * s_second + 5, 4, "five"}}));
}

//! libpcap reads one kind of link in a section: the others are told as not readable.
void tst_CaptureWalk::otherLinkOfLaterInterface()
{
    NEED_PACKETS()
    const CaptureWriter writer;
    write(writer.section() + writer.interface(6, 1) + writer.packet(0, 1, "one")
          + writer.interface(6, 113) + writer.packet(1, 2, "two"));
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression("type 1"));
    QCOMPARE(packets(), QList<ReadPacket>({{1000, 3, "one"}}));
}

//! As damage makes them.
void tst_CaptureWalk::timesWithoutRoom()
{
    NEED_PACKETS()
    const CaptureWriter writer;
    write(writer.section() + writer.interface(0) + writer.packet(0, quint64(1) << 62, "late"));
    QCOMPARE(packets(), QList<ReadPacket>({{9'223'372'035 * s_second, 4, "late"}}));
}

void tst_CaptureWalk::readsInAnyOrder()
{
    NEED_PACKETS()
    constexpr quint32 seed = 77;
    qInfo("seed %u", seed);
    QRandomGenerator random(seed);
    write(manyBlocks().repeated(40));
    const QList<ReadPacket> expected = packets();
    QCOMPARE(expected.size(), 200);
    QString error;
    const std::shared_ptr<TextFile> file = TextFile::open(m_path, &error);
    CaptureWalk walk(file);
    std::vector<quint64> places;
    QCOMPARE(walk.walk(1000, &places), Stop::End);
    PacketSource source(file);
    for (int round = 0; round < 2000; ++round) {
        const int row = random.bounded(int(places.size()));
        const Packet *packet = source.read(places.at(size_t(row)), walk.sections());
        QVERIFY2(packet, qPrintable(source.error()));
        QCOMPARE((ReadPacket {packet->time, packet->length, packet->bytes.toByteArray()}),
                 expected.at(row));
        QCOMPARE(source.linkType(), 1);
    }
    QCOMPARE(source.linkName(), "Ethernet");
}

void tst_CaptureWalk::growsByAnyPiece_data()
{
    QTest::addColumn<QByteArray>("bytes");
    const CaptureWriter writer;
    QTest::newRow("records") << writer.header() + writer.record(1, 2, "abc")
            + writer.record(3, 4, "defgh") + writer.record(5, 6, "");
    QTest::newRow("blocks") << manyBlocks();
}

//! Whoever writes may be anywhere in a packet: only whole ones count.
void tst_CaptureWalk::growsByAnyPiece()
{
    QFETCH(QByteArray, bytes);
    write(bytes);
    QString error;
    CaptureWalk whole(TextFile::open(m_path, &error));
    std::vector<quint64> expected;
    QCOMPARE(whole.walk(1000, &expected), Stop::End);
    write({});
    CaptureWalk walk(TextFile::open(m_path, &error));
    QFile file(m_path);
    QVERIFY(file.open(QIODevice::Append | QIODevice::Unbuffered));
    std::vector<quint64> places;
    QCOMPARE(walk.walk(1000, &places), Stop::End);
    for (const char byte : std::as_const(bytes)) {
        QCOMPARE(file.write(&byte, 1), 1);
        const Stop stop = walk.walk(1000, &places);
        QCOMPARE(stop, quint64(file.size()) == walk.position() ? Stop::End : Stop::Incomplete);
    }
    QCOMPARE(places, expected);
    QCOMPARE(walk.sections(), whole.sections());
    QCOMPARE(walk.position(), quint64(bytes.size()));
}

void tst_CaptureWalk::goesPieceByPiece()
{
    const CaptureWriter writer;
    write(writer.header() + writer.record(1, 2, "abc").repeated(10));
    QString error;
    CaptureWalk walk(TextFile::open(m_path, &error));
    std::vector<quint64> places;
    for (int i = 1; i <= 3; ++i) {
        QCOMPARE(walk.walk(3, &places), Stop::Enough);
        QCOMPARE(places.size(), std::size_t(3 * i));
    }
    QCOMPARE(walk.walk(3, &places), Stop::End);
    QCOMPARE(places.size(), std::size_t(10));
    QCOMPARE(places.back(), quint64(24 + 9 * 19));
}

void tst_CaptureWalk::damage_data()
{
    QTest::addColumn<QByteArray>("before");
    QTest::addColumn<QByteArray>("bytes");
    const CaptureWriter writer;
    const QByteArray records = writer.header() + writer.record(1, 2, "abc");
    const QByteArray blocks = writer.section() + writer.interface() + writer.packet(0, 1, "abc");
    const auto block = [&](quint32 size) { return writer.u32(6) + writer.u32(size); };
    QTest::newRow("no capture") << QByteArray() << QByteArray(24, 'x');
    QTest::newRow("packet too large") << records << QByteArray(8, '\0') + writer.u32(262'145);
    QTest::newRow("block too small") << blocks << block(8);
    QTest::newRow("block of odd size") << blocks << block(33);
    QTest::newRow("block too large") << blocks << block((16 << 20) + 4);
    QTest::newRow("section too small")
        << blocks << writer.u32(0x0a0d0d0a) + writer.u32(24) + writer.u32(0x1a2b3c4d);
    QTest::newRow("section of no byte order")
        << blocks << writer.u32(0x0a0d0d0a) + writer.u32(28) + writer.u32(1);
}

void tst_CaptureWalk::damage()
{
    QFETCH(QByteArray, before);
    QFETCH(QByteArray, bytes);
    write(before + bytes + QByteArray(1000, '\0'));
    QString error;
    CaptureWalk walk(TextFile::open(m_path, &error));
    std::vector<quint64> places;
    QCOMPARE(walk.walk(1000, &places), Stop::Damaged);
    QCOMPARE(walk.position(), quint64(before.size()));
    QCOMPARE(places.size(), std::size_t(before.isEmpty() ? 0 : 1));
}

//! Whatever a file holds, it is walked to an end, and what is found is read or refused.
void tst_CaptureWalk::anyBytes()
{
    constexpr quint32 seed = 31;
    qInfo("seed %u", seed);
    QRandomGenerator random(seed);
    const CaptureWriter writer;
    const QByteArray records = writer.header() + writer.record(1, 2, "abcdef").repeated(20);
    for (int round = 0; round < 300; ++round) {
        QByteArray bytes = round % 2 == 0 ? records : manyBlocks().repeated(3);
        for (int i = 1 + random.bounded(4); i > 0; --i)
            bytes[random.bounded(int(bytes.size()))] = char(random.bounded(256));
        write(bytes);
        QString error;
        const std::shared_ptr<TextFile> file = TextFile::open(m_path, &error);
        CaptureWalk walk(file);
        std::vector<quint64> places;
        QVERIFY(walk.walk(1000, &places) != Stop::Enough);
        QVERIFY(walk.position() <= quint64(bytes.size()));
        PacketSource source(file);
        for (const quint64 place : places) {
            const Packet *packet = source.read(place, walk.sections());
            if (packet)
                QVERIFY(packet->bytes.size() <= bytes.size());
        }
    }
}

QTEST_APPLESS_MAIN(tst_CaptureWalk)
#include "tst_capturewalk.moc"
