// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "addresses.h"
#include "layers.h"

namespace {

constexpr quint16 s_smallestEtherType = 0x0600; // below it is a length

bool isVlan(quint16 type)
{
    return type == quint16(EtherType::Vlan) || type == quint16(EtherType::VlanService);
}

//! Takes the tags of virtual networks; returns the type behind them.
quint16 takeTags(Dissection *packet, quint16 type, ByteReader *reader)
{
    while (isVlan(type) && !reader->isShort()) {
        const quint16 tag = reader->u16();
        type = reader->u16();
        packet->addLayer([&] {
            return QStringLiteral("802.1Q: VLAN %1, priority %2").arg(tag & 0xfff).arg(tag >> 13);
        });
    }
    return type;
}

void dissectEthernet(Dissection *packet, ByteReader reader)
{
    const QByteArrayView destination = reader.take(6);
    const QByteArrayView source = reader.take(6);
    const quint16 type = reader.u16();
    if (reader.isShort()) {
        tellMalformed(packet, QStringLiteral("Ethernet"));
        return;
    }
    packet->addLayer([&] {
        return QStringLiteral("Ethernet: %1 → %2, %3")
            .arg(hardwareAddress(source), hardwareAddress(destination),
                 type < s_smallestEtherType ? QStringLiteral("%1 bytes").arg(type)
                                            : QStringLiteral("type ") + hexNumber(type, 4));
    });
    const quint16 inner = takeTags(packet, type, &reader);
    if (inner < s_smallestEtherType) {
        packet->protocol = QStringLiteral("LLC");
        packet->info = QStringLiteral("%1 bytes").arg(inner);
    } else {
        dissectNetwork(packet, inner, reader.rest());
    }
    if (!packet->source.isEmpty()) // those of a network say more
        return;
    packet->source = hardwareAddress(source);
    packet->destination = hardwareAddress(destination);
}

//! Neither a first byte of 0x4_ nor one of 0x6_ is IP.
void dissectRaw(Dissection *packet, QByteArrayView bytes)
{
    const int version = bytes.isEmpty() ? 0 : quint8(bytes.front()) >> 4;
    if (version == 4)
        dissectNetwork(packet, quint16(EtherType::Ipv4), bytes);
    else if (version == 6)
        dissectNetwork(packet, quint16(EtherType::Ipv6), bytes);
    else
        tellMalformed(packet, QStringLiteral("IP"));
}

//! The address family, whose numbers are not the same everywhere, is left to what follows.
void dissectLoopback(Dissection *packet, ByteReader reader)
{
    reader.skip(4);
    packet->addLayer([] { return QStringLiteral("Loopback"); });
    dissectRaw(packet, reader.rest());
}

void dissectCooked(Dissection *packet, quint16 type, QByteArrayView sender, ByteReader reader)
{
    packet->source = hardwareAddress(sender);
    packet->addLayer([&] {
        return QStringLiteral("Linux cooked capture: from %1, type %2")
            .arg(packet->source.isEmpty() ? QStringLiteral("no address") : packet->source,
                 hexNumber(type, 4));
    });
    if (reader.isShort())
        tellMalformed(packet, QStringLiteral("SLL"));
    else
        dissectNetwork(packet, takeTags(packet, type, &reader), reader.rest());
}

void dissectCooked1(Dissection *packet, ByteReader reader)
{
    reader.skip(4);
    const quint16 size = reader.u16();
    const QByteArrayView address = reader.take(8);
    const quint16 type = reader.u16();
    dissectCooked(packet, type, address.first(qMin<qsizetype>(size, address.size())), reader);
}

void dissectCooked2(Dissection *packet, ByteReader reader)
{
    const quint16 type = reader.u16();
    reader.skip(9);
    const quint8 size = reader.u8();
    const QByteArrayView address = reader.take(8);
    dissectCooked(packet, type, address.first(qMin<qsizetype>(size, address.size())), reader);
}

} // namespace

void tellMalformed(Dissection *packet, const QString &protocol)
{
    packet->protocol = protocol;
    packet->info = QStringLiteral("Malformed, or cut off when it was captured");
    packet->addLayer([&] { return protocol + QStringLiteral(": ") + packet->info; });
}

Dissection dissect(int link, QByteArrayView bytes, bool hasLayers)
{
    Dissection packet;
    packet.hasLayers = hasLayers;
    const ByteReader reader(bytes);
    switch (LinkType(link)) {
    case LinkType::Ethernet:
        dissectEthernet(&packet, reader);
        return packet;
    case LinkType::Null:
    case LinkType::Loop:
        dissectLoopback(&packet, reader);
        return packet;
    case LinkType::LinuxCooked:
        dissectCooked1(&packet, reader);
        return packet;
    case LinkType::LinuxCooked2:
        dissectCooked2(&packet, reader);
        return packet;
    case LinkType::Raw:
    case LinkType::RawOfOthers:
    case LinkType::RawInFile:
    case LinkType::Ipv4:
    case LinkType::Ipv6:
        dissectRaw(&packet, bytes);
        return packet;
    }
    packet.protocol = QStringLiteral("Link type %1").arg(link);
    packet.info = QStringLiteral("%1 bytes").arg(bytes.size());
    return packet;
}
