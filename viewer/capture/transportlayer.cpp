// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "addresses.h"
#include "layers.h"
#include "textline.h"

#include <array>
#include <utility>

namespace {

const QString s_tcp = QStringLiteral("TCP");
const QString s_udp = QStringLiteral("UDP");
const QString s_arrow = QStringLiteral(" → ");

//! Numbers of protocols in headers of IP.
struct Transport
{
    enum : quint8 {
        Icmp = 1,
        Igmp = 2,
        Tcp = 6,
        Udp = 17,
        Gre = 47,
        Esp = 50,
        Ah = 51,
        Icmpv6 = 58,
        NothingMore = 59,
        Ospf = 89,
        Sctp = 132
    };
};

//! The protocol whose messages have the layout of DNS, by the port of either side.
QString dnsOfPorts(quint16 source, quint16 destination)
{
    const auto isEither = [=](quint16 port) { return source == port || destination == port; };
    if (isEither(53))
        return QStringLiteral("DNS");
    if (isEither(5353))
        return QStringLiteral("MDNS");
    return isEither(5355) ? QStringLiteral("LLMNR") : QString();
}

void addFlagNames(TextLine *line, quint16 flags)
{
    static constexpr std::array<const char *, 9> names {"FIN", "SYN", "RST", "PSH", "ACK",
                                                        "URG", "ECE", "CWR", "AE"};
    const char *between = "";
    for (std::size_t bit = 0; bit < names.size(); ++bit) {
        if (flags >> bit & 1)
            *line << std::exchange(between, ", ") << names[bit];
    }
}

//! What a header of TCP says.
struct TcpHeader
{
    quint16 source = 0;
    quint16 destination = 0;
    quint32 sequence = 0;
    quint32 acknowledgement = 0;
    qsizetype size = 0; //!< bytes, with options
    quint16 flags = 0;
    quint16 window = 0;
};

TcpHeader readTcp(ByteReader *reader)
{
    TcpHeader header;
    header.source = reader->u16();
    header.destination = reader->u16();
    header.sequence = reader->u32();
    header.acknowledgement = reader->u32();
    const quint16 bits = reader->u16();
    header.size = (bits >> 12) * 4;
    header.flags = bits & 0x1ff;
    header.window = reader->u16();
    reader->skip(4);
    return header;
}

QString tcpInfo(const TcpHeader &header, qsizetype payload)
{
    TextLine line;
    line << header.source << s_arrow << header.destination << " [";
    addFlagNames(&line, header.flags);
    line << "] Seq=" << header.sequence;
    if (header.flags & 0x10)
        line << " Ack=" << header.acknowledgement;
    line << " Win=" << header.window << " Len=" << payload;
    return line.text();
}

void dissectTcp(Dissection *packet, QByteArrayView bytes, qsizetype size)
{
    ByteReader reader(bytes);
    const TcpHeader header = readTcp(&reader);
    if (reader.isShort() || header.size < 20 || header.size > size) {
        tellMalformed(packet, s_tcp);
        return;
    }
    packet->protocol = s_tcp;
    packet->info = tcpInfo(header, size - header.size);
    packet->addLayer([&] { return QStringLiteral("TCP: ") + packet->info; });
    reader.skip(header.size - 20);
    const QString dns = dnsOfPorts(header.source, header.destination);
    // A message has its length before it; one in several packets is not put together.
    if (!dns.isEmpty() && reader.left() > 2 && reader.u16() <= reader.left())
        dissectDns(packet, dns, reader.rest());
}

void dissectUdp(Dissection *packet, QByteArrayView bytes)
{
    ByteReader reader(bytes);
    const quint16 source = reader.u16();
    const quint16 destination = reader.u16();
    const quint16 size = reader.u16();
    reader.skip(2);
    if (reader.isShort() || size < 8) {
        tellMalformed(packet, s_udp);
        return;
    }
    packet->protocol = s_udp;
    TextLine line;
    line << source << s_arrow << destination << " Len=" << size - 8;
    packet->info = line.text();
    packet->addLayer([&] { return QStringLiteral("UDP: ") + packet->info; });
    const QString dns = dnsOfPorts(source, destination);
    if (!dns.isEmpty())
        dissectDns(packet, dns, reader.rest().first(qMin<qsizetype>(reader.left(), size - 8)));
}

QString icmpText(quint8 type, quint8 code)
{
    switch (type) {
    case 0:
        return QStringLiteral("Echo reply");
    case 3:
        return QStringLiteral("Destination unreachable, code %1").arg(code);
    case 5:
        return QStringLiteral("Redirect");
    case 8:
        return QStringLiteral("Echo request");
    case 11:
        return QStringLiteral("Time to live exceeded");
    default:
        return QStringLiteral("Type %1, code %2").arg(type).arg(code);
    }
}

QString icmpv6Text(quint8 type, quint8 code)
{
    switch (type) {
    case 1:
        return QStringLiteral("Destination unreachable, code %1").arg(code);
    case 2:
        return QStringLiteral("Packet too big");
    case 3:
        return QStringLiteral("Hop limit exceeded");
    case 128:
        return QStringLiteral("Echo request");
    case 129:
        return QStringLiteral("Echo reply");
    case 133:
        return QStringLiteral("Router solicitation");
    case 134:
        return QStringLiteral("Router advertisement");
    case 135:
        return QStringLiteral("Neighbor solicitation");
    case 136:
        return QStringLiteral("Neighbor advertisement");
    default:
        return QStringLiteral("Type %1, code %2").arg(type).arg(code);
    }
}

void dissectIcmp(Dissection *packet, quint8 protocol, ByteReader reader)
{
    const QString name = transportName(protocol);
    const quint8 type = reader.u8();
    const quint8 code = reader.u8();
    reader.skip(2);
    if (reader.isShort()) {
        tellMalformed(packet, name);
        return;
    }
    packet->protocol = name;
    packet->info = protocol == Transport::Icmp ? icmpText(type, code) : icmpv6Text(type, code);
    const bool isEcho = packet->info.startsWith(QLatin1String("Echo"));
    const quint16 identifier = isEcho ? reader.u16() : quint16(0);
    const quint16 number = isEcho ? reader.u16() : quint16(0);
    if (isEcho && !reader.isShort())
        packet->info += QStringLiteral(", id %1, number %2").arg(identifier).arg(number);
    packet->addLayer([&] { return name + QStringLiteral(": ") + packet->info; });
}

} // namespace

QString transportName(quint8 protocol)
{
    switch (protocol) {
    case Transport::Icmp:
        return QStringLiteral("ICMP");
    case Transport::Igmp:
        return QStringLiteral("IGMP");
    case Transport::Tcp:
        return s_tcp;
    case Transport::Udp:
        return s_udp;
    case Transport::Gre:
        return QStringLiteral("GRE");
    case Transport::Esp:
        return QStringLiteral("ESP");
    case Transport::Ah:
        return QStringLiteral("AH");
    case Transport::Icmpv6:
        return QStringLiteral("ICMPv6");
    case Transport::NothingMore:
        return QStringLiteral("IPv6");
    case Transport::Ospf:
        return QStringLiteral("OSPF");
    case Transport::Sctp:
        return QStringLiteral("SCTP");
    default:
        return QStringLiteral("Protocol %1").arg(protocol);
    }
}

void dissectTransport(Dissection *packet, quint8 protocol, QByteArrayView bytes, qsizetype size)
{
    switch (protocol) {
    case Transport::Tcp:
        dissectTcp(packet, bytes, size);
        return;
    case Transport::Udp:
        dissectUdp(packet, bytes);
        return;
    case Transport::Icmp:
    case Transport::Icmpv6:
        dissectIcmp(packet, protocol, ByteReader(bytes));
        return;
    default:
        packet->protocol = transportName(protocol);
        packet->info = QStringLiteral("%1 bytes").arg(size);
        return;
    }
}
