// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "packetmodel.h"

#include <QColor>

namespace {

QString placeText(quint32 address, quint16 port)
{
    return QStringLiteral("%1.%2.%3.%4:%5")
        .arg(address >> 24)
        .arg(address >> 16 & 255)
        .arg(address >> 8 & 255)
        .arg(address & 255)
        .arg(port);
}

bool isDns(const Packet &packet)
{
    return packet.destinationPort == 53;
}

} // namespace

void PacketModel::add(const std::vector<Packet> &packets)
{
    if (packets.empty())
        return;
    const int before = int(m_packets.size());
    beginInsertRows({}, before, before + int(packets.size()) - 1);
    m_packets.insert(m_packets.end(), packets.begin(), packets.end());
    endInsertRows();
}

int PacketModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_packets.size());
}

int PacketModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(ColumnCount);
}

QVariant PacketModel::data(const QModelIndex &index, int role) const
{
    const Packet &packet = m_packets[std::size_t(index.row())];
    if (role == Qt::ForegroundRole && index.column() == Protocol && isDns(packet))
        return QColor(0x2f, 0x7a, 0xc0);
    const bool isNumber = index.column() == Number || index.column() == Length;
    if (role == Qt::TextAlignmentRole && isNumber)
        return int(Qt::AlignRight | Qt::AlignVCenter);
    if (role != Qt::DisplayRole)
        return {};
    switch (index.column()) {
    case Number:
        return index.row() + 1;
    case Time:
        return QString::number(double(packet.time % 3'600'000'000) / 1e6, 'f', 6);
    case Source:
        return placeText(packet.source, packet.sourcePort);
    case Destination:
        return placeText(packet.destination, packet.destinationPort);
    case Protocol:
        return isDns(packet) ? QStringLiteral("DNS") : QStringLiteral("QUIC");
    default:
        return packet.length;
    }
}

QVariant PacketModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    static const QStringList titles {"No.", "Time", "Source", "Destination", "Protocol", "Length"};
    return orientation == Qt::Horizontal && role == Qt::DisplayRole ? titles.value(section)
                                                                    : QVariant();
}
