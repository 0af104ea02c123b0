// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "addresses.h"
#include "layers.h"

namespace {

const QString s_arp = QStringLiteral("ARP");
const QString s_ipv4 = QStringLiteral("IPv4");
const QString s_ipv6 = QStringLiteral("IPv6");

//! Headers of IPv6 that stand before that of the transport.
struct Extension
{
    enum : quint8 {
        HopByHop = 0,
        Routing = 43,
        Fragment = 44,
        DestinationOptions = 60
    };
};

QString arpInfo(quint16 operation, const QString &sender, const QString &senderHardware,
                const QString &target)
{
    if (operation == 1)
        return QStringLiteral("Who has %1? Tell %2").arg(target, sender);
    if (operation == 2)
        return QStringLiteral("%1 is at %2").arg(sender, senderHardware);
    return QStringLiteral("Operation %1").arg(operation);
}

void dissectArp(Dissection *packet, ByteReader reader)
{
    reader.skip(2);
    const quint16 type = reader.u16();
    const quint16 sizes = reader.u16();
    const quint16 operation = reader.u16();
    const bool isUsual = type == quint16(EtherType::Ipv4) && sizes == 0x0604;
    const QString senderHardware = hardwareAddress(reader.take(isUsual ? 6 : 0));
    const QString sender = ipv4Address(reader.take(isUsual ? 4 : 0));
    reader.skip(isUsual ? 6 : 0);
    const QString target = ipv4Address(reader.take(isUsual ? 4 : 0));
    if (reader.isShort()) {
        tellMalformed(packet, s_arp);
        return;
    }
    packet->protocol = s_arp;
    packet->info = isUsual ? arpInfo(operation, sender, senderHardware, target)
                           : QStringLiteral("Operation %1").arg(operation);
    packet->addLayer([&] { return s_arp + QStringLiteral(": ") + packet->info; });
}

void tellFragment(Dissection *packet, const QString &version, quint8 protocol, int offset,
                  qsizetype size)
{
    packet->protocol = version;
    packet->info = QStringLiteral("Fragment of %1, %2 bytes from %3 on")
                       .arg(transportName(protocol))
                       .arg(size)
                       .arg(offset);
}

//! What a header of IPv4 says.
struct Ipv4Header
{
    qsizetype headerSize = 0; //!< bytes, with options
    qsizetype size = 0;       //!< bytes of all
    quint16 identification = 0;
    bool mayNotFragment = false;
    int offset = 0; //!< of a fragment, bytes
    quint8 timeToLive = 0;
    quint8 protocol = 0;
    QString source;
    QString destination;
    bool isValid = false;
};

Ipv4Header readIpv4(QByteArrayView bytes)
{
    ByteReader reader(bytes);
    Ipv4Header header;
    header.headerSize = (reader.u8() & 0xf) * 4;
    reader.skip(1);
    header.size = reader.u16();
    header.identification = reader.u16();
    const quint16 fragment = reader.u16();
    header.mayNotFragment = fragment & 0x4000;
    header.offset = (fragment & 0x1fff) * 8;
    header.timeToLive = reader.u8();
    header.protocol = reader.u8();
    reader.skip(2);
    header.source = ipv4Address(reader.take(4));
    header.destination = ipv4Address(reader.take(4));
    if (header.size == 0) // cards that cut packets for their sender leave it to themselves
        header.size = bytes.size();
    header.isValid = !reader.isShort() && header.headerSize >= 20
        && header.headerSize <= bytes.size() && header.headerSize <= header.size;
    return header;
}

void dissectIpv4(Dissection *packet, QByteArrayView bytes)
{
    const Ipv4Header header = readIpv4(bytes);
    if (!header.isValid) {
        tellMalformed(packet, s_ipv4);
        return;
    }
    packet->source = header.source;
    packet->destination = header.destination;
    packet->addLayer([&] {
        return QStringLiteral("IPv4: %1 → %2, %3, %4 bytes, time to live %5, identification %6%7%8")
            .arg(header.source, header.destination, transportName(header.protocol))
            .arg(header.size)
            .arg(header.timeToLive)
            .arg(hexNumber(header.identification, 4),
                 header.mayNotFragment ? QStringLiteral(", may not be fragmented") : QString(),
                 header.offset > 0 ? QStringLiteral(", fragment at %1").arg(header.offset)
                                   : QString());
    });
    // Ethernet fills short packets up.
    const QByteArrayView inside = bytes.first(qMin(bytes.size(), header.size));
    const qsizetype size = header.size - header.headerSize;
    if (header.offset > 0)
        tellFragment(packet, s_ipv4, header.protocol, header.offset, size);
    else
        dissectTransport(packet, header.protocol, inside.sliced(header.headerSize), size);
}

//! Takes what stands before the transport's header; returns the place of a fragment.
int takeExtensions(quint8 *next, ByteReader *reader)
{
    while (!reader->isShort()) {
        if (*next == Extension::Fragment) {
            *next = reader->u8();
            reader->skip(1);
            const int offset = reader->u16() & 0xfff8;
            reader->skip(4);
            if (offset > 0)
                return offset;
        } else if (*next == Extension::HopByHop || *next == Extension::Routing
                   || *next == Extension::DestinationOptions) {
            *next = reader->u8();
            reader->skip(reader->u8() * 8 + 6);
        } else {
            break;
        }
    }
    return 0;
}

void dissectIpv6(Dissection *packet, QByteArrayView bytes)
{
    ByteReader header(bytes);
    header.skip(4);
    const qsizetype announced = header.u16();
    quint8 next = header.u8();
    const quint8 hops = header.u8();
    const QString source = ipv6Address(header.take(16));
    const QString destination = ipv6Address(header.take(16));
    if (header.isShort()) {
        tellMalformed(packet, s_ipv6);
        return;
    }
    packet->source = source;
    packet->destination = destination;
    const qsizetype size = announced == 0 ? header.left() : announced;
    ByteReader reader(header.rest().first(qMin(header.left(), size)));
    const int offset = takeExtensions(&next, &reader);
    packet->addLayer([&] {
        return QStringLiteral("IPv6: %1 → %2, %3, %4 bytes, hop limit %5")
            .arg(source, destination, transportName(next))
            .arg(size)
            .arg(hops);
    });
    if (reader.isShort())
        tellMalformed(packet, s_ipv6);
    else if (offset > 0)
        tellFragment(packet, s_ipv6, next, offset, size - reader.place());
    else
        dissectTransport(packet, next, reader.rest(), size - reader.place());
}

} // namespace

void dissectNetwork(Dissection *packet, quint16 etherType, QByteArrayView bytes)
{
    switch (EtherType(etherType)) {
    case EtherType::Ipv4:
        dissectIpv4(packet, bytes);
        return;
    case EtherType::Ipv6:
        dissectIpv6(packet, bytes);
        return;
    case EtherType::Arp:
        dissectArp(packet, ByteReader(bytes));
        return;
    case EtherType::Vlan:
    case EtherType::VlanService:
        break;
    }
    packet->protocol = hexNumber(etherType, 4);
    packet->info = QStringLiteral("%1 bytes").arg(bytes.size());
}
