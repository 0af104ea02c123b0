// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "capture/addresses.h"
#include "capture/dissection.h"
#include "captures.h"

#include <QRandomGenerator>
#include <QTest>

namespace {

constexpr int s_ethernet = int(LinkType::Ethernet);

QByteArray icmpv6(int type)
{
    return QByteArray(1, char(type)) + '\0' + big16(0) + big16(7) + big16(3);
}

} // namespace

class tst_Dissection : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void packets_data();
    void packets();
    void namesInDns_data();
    void namesInDns();
    void recordsInDns_data();
    void recordsInDns();
    void layers();
    void leavesLayersOut();
    void cutAnywhere_data();
    void cutAnywhere();
    void anyBytes();
    void addresses();
};

void tst_Dissection::packets_data()
{
    QTest::addColumn<int>("link");
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("source");
    QTest::addColumn<QString>("destination");
    QTest::addColumn<QString>("protocol");
    QTest::addColumn<QString>("info");
    const QString one = "10.0.0.1";
    const QString two = "10.0.0.2";
    const QString hardwareOne = "02:00:00:00:00:01";
    const QString hardwareTwo = "02:00:00:00:00:02";
    const QByteArray syn = tcp(50000, 443, 0x002);
    const QString synInfo = "50000 → 443 [SYN] Seq=1000 Win=64240 Len=0";
    QTest::newRow("TCP") << s_ethernet << ethernet(0x800, ipv4(6, syn)) << one << two << "TCP"
                         << synInfo;
    QTest::newRow("TCP with text")
        << s_ethernet << ethernet(0x800, ipv4(6, tcp(443, 50000, 0x018, "hello"))) << one << two
        << "TCP"
        << "443 → 50000 [PSH, ACK] Seq=1000 Ack=2000 Win=64240 Len=5";
    QTest::newRow("all flags of TCP")
        << s_ethernet << ethernet(0x800, ipv4(6, tcp(1, 2, 0x1ff))) << one << two << "TCP"
        << "1 → 2 [FIN, SYN, RST, PSH, ACK, URG, ECE, CWR, AE] Seq=1000 Ack=2000 Win=64240 Len=0";
    QTest::newRow("filled up by Ethernet")
        << s_ethernet << ethernet(0x800, ipv4(6, syn)) + QByteArray(6, '\0') << one << two << "TCP"
        << synInfo;
    QTest::newRow("one tag") << s_ethernet
                             << ethernet(0x8100, big16(0x2005) + big16(0x800) + ipv4(6, syn)) << one
                             << two << "TCP" << synInfo;
    QTest::newRow("two tags") << s_ethernet
                              << ethernet(0x88a8,
                                          big16(5) + big16(0x8100) + big16(6) + big16(0x800)
                                              + ipv4(6, syn))
                              << one << two << "TCP" << synInfo;
    QTest::newRow("UDP") << s_ethernet << ethernet(0x800, ipv4(17, udp(5000, 6000, "abc"))) << one
                         << two << "UDP"
                         << "5000 → 6000 Len=3";
    QTest::newRow("ARP asks") << s_ethernet
                              << ethernet(0x806,
                                          big16(1) + big16(0x800) + big16(0x604) + big16(1)
                                              + QByteArray::fromHex("020000000001")
                                              + address4("10.0.0.1") + QByteArray(6, '\0')
                                              + address4("10.0.0.9"))
                              << hardwareOne << hardwareTwo << "ARP"
                              << "Who has 10.0.0.9? Tell 10.0.0.1";
    QTest::newRow("ARP answers") << s_ethernet
                                 << ethernet(0x806,
                                             big16(1) + big16(0x800) + big16(0x604) + big16(2)
                                                 + QByteArray::fromHex("020000000001")
                                                 + address4("10.0.0.1") + QByteArray(6, '\0')
                                                 + address4("10.0.0.9"))
                                 << hardwareOne << hardwareTwo << "ARP"
                                 << "10.0.0.1 is at 02:00:00:00:00:01";
    QTest::newRow("ARP of others")
        << s_ethernet << ethernet(0x806, big16(6) + big16(0x900) + big16(0x0202) + big16(3))
        << hardwareOne << hardwareTwo << "ARP"
        << "Operation 3";
    QTest::newRow("ping") << s_ethernet
                          << ethernet(0x800,
                                      ipv4(1, QByteArray("\x08\0\0\0", 4) + big16(7) + big16(9)))
                          << one << two << "ICMP"
                          << "Echo request, id 7, number 9";
    QTest::newRow("unreachable") << s_ethernet
                                 << ethernet(0x800, ipv4(1, QByteArray("\x03\x01\0\0", 4))) << one
                                 << two << "ICMP"
                                 << "Destination unreachable, code 1";
    QTest::newRow("fragment") << s_ethernet
                              << ethernet(0x800,
                                          ipv4(6, QByteArray(40, 'x'), "10.0.0.1", "10.0.0.2", 185))
                              << one << two << "IPv4"
                              << "Fragment of TCP, 40 bytes from 1480 on";
    QTest::newRow("unknown transport")
        << s_ethernet << ethernet(0x800, ipv4(200, "abc")) << one << two << "Protocol 200"
        << "3 bytes";
    QTest::newRow("unknown network")
        << s_ethernet << ethernet(0x88cc, "abc") << hardwareOne << hardwareTwo << "0x88cc"
        << "3 bytes";
    QTest::newRow("length instead of a type")
        << s_ethernet << ethernet(3, "abc") << hardwareOne << hardwareTwo << "LLC"
        << "3 bytes";
    const QString sixOne = "2001:db8::1";
    const QString sixTwo = "2001:db8::2";
    QTest::newRow("IPv6") << s_ethernet << ethernet(0x86dd, ipv6(6, syn)) << sixOne << sixTwo
                          << "TCP" << synInfo;
    QTest::newRow("IPv6 with extensions")
        << s_ethernet
        << ethernet(0x86dd,
                    ipv6(0,
                         QByteArray("\x2b\0", 2) + QByteArray(6, '\0') + QByteArray("\x06\x01", 2)
                             + QByteArray(14, '\0') + syn))
        << sixOne << sixTwo << "TCP" << synInfo;
    QTest::newRow("first fragment of IPv6")
        << s_ethernet << ethernet(0x86dd, ipv6(44, QByteArray("\x06\0\0\x01\0\0\0\x05", 8) + syn))
        << sixOne << sixTwo << "TCP" << synInfo;
    QTest::newRow("later fragment of IPv6")
        << s_ethernet
        << ethernet(0x86dd, ipv6(44, QByteArray("\x06\0\x05\xa8\0\0\0\x05", 8) + "more")) << sixOne
        << sixTwo << "IPv6"
        << "Fragment of TCP, 4 bytes from 1448 on";
    QTest::newRow("neighbor") << s_ethernet << ethernet(0x86dd, ipv6(58, icmpv6(135))) << sixOne
                              << sixTwo << "ICMPv6"
                              << "Neighbor solicitation";
    QTest::newRow("ping of IPv6") << s_ethernet << ethernet(0x86dd, ipv6(58, icmpv6(129))) << sixOne
                                  << sixTwo << "ICMPv6"
                                  << "Echo reply, id 7, number 3";
    for (const LinkType link :
         {LinkType::Raw, LinkType::RawOfOthers, LinkType::RawInFile, LinkType::Ipv4}) {
        QTest::addRow("raw %d", int(link))
            << int(link) << ipv4(6, syn) << one << two << "TCP" << synInfo;
    }
    QTest::newRow("raw IPv6") << int(LinkType::Ipv6) << ipv6(6, syn) << sixOne << sixTwo << "TCP"
                              << synInfo;
    QTest::newRow("neither version") << int(LinkType::Raw) << QByteArray("\x10") << ""
                                     << ""
                                     << "IP"
                                     << "Malformed, or cut off when it was captured";
    for (const LinkType link : {LinkType::Null, LinkType::Loop}) {
        QTest::addRow("loopback %d", int(link))
            << int(link) << big32(2) + ipv4(6, syn) << one << two << "TCP" << synInfo;
    }
    const QByteArray hardware = QByteArray::fromHex("0200000000010000");
    QTest::newRow("cooked") << int(LinkType::LinuxCooked)
                            << big16(0) + big16(1) + big16(6) + hardware + big16(0x800)
            + ipv4(6, syn) << one
                            << two << "TCP" << synInfo;
    QTest::newRow("cooked, unknown")
        << int(LinkType::LinuxCooked) << big16(0) + big16(1) + big16(6) + hardware + big16(0x1234)
        << hardwareOne << ""
        << "0x1234"
        << "0 bytes";
    QTest::newRow("cooked, second version") << int(LinkType::LinuxCooked2)
                                            << big16(0x800) + big16(0) + big32(2) + big16(1)
            + char(0) + char(6) + hardware + ipv4(6, syn)
                                            << one << two << "TCP" << synInfo;
    QTest::newRow("unknown link") << 105 << QByteArray("abcd") << ""
                                  << ""
                                  << "Link type 105"
                                  << "4 bytes";
    QTest::newRow("header of TCP too short")
        << s_ethernet << ethernet(0x800, ipv4(6, QByteArray(syn).replace(12, 1, "\x40"))) << one
        << two << "TCP"
        << "Malformed, or cut off when it was captured";
    QTest::newRow("header of UDP too short")
        << s_ethernet << ethernet(0x800, ipv4(17, big16(1) + big16(2) + big16(7) + big16(0))) << one
        << two << "UDP"
        << "Malformed, or cut off when it was captured";
    QTest::newRow("header of IPv4 too short")
        << s_ethernet << ethernet(0x800, QByteArray(ipv4(6, syn)).replace(0, 1, "\x44"))
        << hardwareOne << hardwareTwo << "IPv4"
        << "Malformed, or cut off when it was captured";
    QTest::newRow("length left to the card")
        << s_ethernet
        << ethernet(0x800, QByteArray(ipv4(6, tcp(1, 2, 0x10, "abc"))).replace(2, 2, big16(0)))
        << one << two << "TCP"
        << "1 → 2 [ACK] Seq=1000 Ack=2000 Win=64240 Len=3";
}

void tst_Dissection::packets()
{
    QFETCH(int, link);
    QFETCH(QByteArray, bytes);
    const Dissection told = dissect(link, bytes);
    QTEST(told.source, "source");
    QTEST(told.destination, "destination");
    QTEST(told.protocol, "protocol");
    QTEST(told.info, "info");
}

void tst_Dissection::namesInDns_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<QString>("text");
    const QString broken = " (cut off or malformed)";
    const QByteArray end = big16(1) + big16(1);
    QTest::newRow("plain") << dnsName("www.example.com") + end << "A www.example.com";
    QTest::newRow("root") << QByteArray(1, '\0') + end << "A .";
    QTest::newRow("strange") << QByteArray("\x05"
                                           "a.b \xe4\0",
                                           7)
            + end << "A a\\.b\\032\\228";
    QTest::newRow("points to itself") << big16(0xc00c) + end << broken.mid(1);
    QTest::newRow("points ahead") << big16(0xc010) + end << broken.mid(1);
    QTest::newRow("wrong kind") << QByteArray("\x41"
                                              "a\0",
                                              3)
            + end << broken.mid(1);
    QTest::newRow("no end") << QByteArray("\x03"
                                          "abc")
                            << broken.mid(1);
    QTest::newRow("no type") << dnsName("abc") << broken.mid(1);
    QTest::newRow("too long") << QByteArray("\x3f" + QByteArray(63, 'a')).repeated(5) + '\0' + end
                              << broken.mid(1);
    QTest::newRow("other type") << dnsName("abc") + big16(28) + big16(1) << "AAAA abc";
    QTest::newRow("unknown type") << dnsName("abc") + big16(999) + big16(1) << "TYPE999 abc";
}

void tst_Dissection::namesInDns()
{
    QFETCH(QByteArray, name);
    const QByteArray message =
        big16(0x1a2b) + big16(0x0100) + big16(1) + big16(0) + big32(0) + name;
    const Dissection told = dissect(s_ethernet, ethernet(0x800, ipv4(17, udp(40000, 53, message))));
    QCOMPARE(told.protocol, "DNS");
    QVERIFY2(told.info.startsWith("Query 0x1a2b "), qPrintable(told.info));
    QTEST(told.info.mid(13), "text");
}

void tst_Dissection::recordsInDns_data()
{
    QTest::addColumn<QByteArray>("message");
    QTest::addColumn<QString>("text");
    const auto response = [](int type, const QByteArray &data, int failure = 0) {
        return dnsResponse("example.com", type, data, failure);
    };
    QTest::newRow("A") << response(1, address4("93.184.216.34"))
                       << "A example.com: A 93.184.216.34";
    QTest::newRow("AAAA") << response(28, QByteArray(15, '\0') + '\x01')
                          << "AAAA example.com: AAAA ::1";
    QTest::newRow("CNAME") << response(5, dnsName("a.b")) << "CNAME example.com: CNAME a.b";
    QTest::newRow("CNAME that points") << response(5,
                                                   "\x01"
                                                   "a" + big16(0xc00c))
                                       << "CNAME example.com: CNAME a.example.com";
    QTest::newRow("MX") << response(15, big16(10) + dnsName("mail"))
                        << "MX example.com: MX 10 mail";
    QTest::newRow("SRV") << response(33, big32(0) + big16(5060) + dnsName("sip"))
                         << "SRV example.com: SRV sip port 5060";
    QTest::newRow("TXT") << response(16, "\x05hello") << "TXT example.com: TXT \"hello\"";
    QTest::newRow("another name") << big16(0x1a2b) + big16(0x8180) + big16(0) + big16(2) + big32(0)
            + (dnsName("b") + big16(1) + big16(1) + big32(1) + big16(4) + address4("1.2.3.4"))
                  .repeated(2) << ": b A 1.2.3.4, b A 1.2.3.4";
    QTest::newRow("others") << response(6, "xyz") << "SOA example.com: SOA 3 bytes";
    QTest::newRow("no such name") << response(1, {}, 3) << "A example.com: no such name";
    QTest::newRow("refused") << response(1, {}, 5) << "A example.com: refused";
    QTest::newRow("server failure") << response(1, {}, 2) << "A example.com: server failure";
    QTest::newRow("other failure") << response(1, {}, 9) << "A example.com: error 9";
    QTest::newRow("cut off") << response(1, address4("1.2.3.4")).chopped(1)
                             << "A example.com (cut off or malformed)";
}

void tst_Dissection::recordsInDns()
{
    QFETCH(QByteArray, message);
    QFETCH(QString, text);
    const QByteArray overUdp = ethernet(0x800, ipv4(17, udp(53, 40000, message)));
    const QString info = (text.startsWith(u':') ? "Response 0x1a2b" : "Response 0x1a2b ") + text;
    QCOMPARE(dissect(s_ethernet, overUdp).info, info);
    const QByteArray overTcp =
        ethernet(0x800, ipv4(6, tcp(53, 40000, 0x18, big16(int(message.size())) + message)));
    QCOMPARE(dissect(s_ethernet, overTcp).info, info);
    QCOMPARE(dissect(s_ethernet, ethernet(0x800, ipv4(17, udp(5353, 5353, message)))).protocol,
             "MDNS");
    QCOMPARE(dissect(s_ethernet, ethernet(0x800, ipv4(17, udp(40000, 5355, message)))).protocol,
             "LLMNR");
}

void tst_Dissection::layers()
{
    const QByteArray bytes = ethernet(
        0x8100, big16(0x6005) + big16(0x800) + ipv4(17, udp(40000, 53, dnsQuery("example.com"))));
    const Dissection told = dissect(s_ethernet, bytes, true);
    QCOMPARE(told.layers,
             QStringList({"Ethernet: 02:00:00:00:00:01 → 02:00:00:00:00:02, type 0x8100",
                          "802.1Q: VLAN 5, priority 3",
                          "IPv4: 10.0.0.1 → 10.0.0.2, UDP, 57 bytes, time to live 64, "
                          "identification 0x1234, may not be fragmented",
                          "UDP: 40000 → 53 Len=29", "DNS: Query 0x1a2b A example.com"}));
}

void tst_Dissection::leavesLayersOut()
{
    QVERIFY(dissect(s_ethernet, ethernet(0x800, ipv4(6, tcp(1, 2, 2)))).layers.isEmpty());
}

void tst_Dissection::cutAnywhere_data()
{
    packets_data();
}

//! Nothing is read that is not there, and a packet that is cut off tells what it has.
void tst_Dissection::cutAnywhere()
{
    QFETCH(int, link);
    QFETCH(QByteArray, bytes);
    const QString whole = dissect(link, bytes).source;
    for (qsizetype size = 0; size < bytes.size(); ++size) {
        const QByteArray part(bytes.constData(), size); // ends where its memory does
        const Dissection told = dissect(link, part, true);
        QVERIFY(!told.protocol.isEmpty());
        QVERIFY(!told.info.isEmpty());
        const bool isKnown = told.source.isEmpty() || told.source == whole
            || told.source.startsWith("02:00:00:00:00:01");
        QVERIFY2(isKnown, qPrintable(told.source));
    }
}

void tst_Dissection::anyBytes()
{
    constexpr quint32 seed = 4711;
    qInfo("seed %u", seed);
    QRandomGenerator random(seed);
    const QByteArray whole = ethernet(
        0x800, ipv4(17, udp(53, 40000, dnsResponse("example.com", 15, big16(1) + "\xc0\x0c"))));
    const QList<int> links {0, 1, 12, 108, 113, 228, 276, 105};
    for (int round = 0; round < 20000; ++round) {
        QByteArray bytes = whole.first(random.bounded(int(whole.size()) + 1));
        for (int i = random.bounded(6); i > 0 && !bytes.isEmpty(); --i)
            bytes[random.bounded(int(bytes.size()))] = char(random.bounded(256));
        const Dissection told = dissect(links.at(random.bounded(int(links.size()))), bytes, true);
        QVERIFY(!told.protocol.isEmpty());
        QVERIFY(told.info.size() < 100'000);
    }
}

void tst_Dissection::addresses()
{
    QCOMPARE(hardwareAddress(QByteArray::fromHex("00a0ff102030")), "00:a0:ff:10:20:30");
    QVERIFY(hardwareAddress("abc").isEmpty());
    QCOMPARE(ipv4Address(address4("192.0.2.255")), "192.0.2.255");
    QVERIFY(ipv4Address("abc").isEmpty());
    QCOMPARE(ipv6Address(QByteArray::fromHex("20010db800000000000000000000ab01")),
             "2001:db8::ab01");
    QVERIFY(ipv6Address("abc").isEmpty());
    QCOMPARE(hexNumber(0xab, 4), "0x00ab");
}

QTEST_APPLESS_MAIN(tst_Dissection)
#include "tst_dissection.moc"
