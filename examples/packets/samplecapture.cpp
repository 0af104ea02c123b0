// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "samplecapture.h"

#include <QFile>
#include <QRandomGenerator>
#include <QtEndian>

#include <pcap/pcap.h>

#include <array>

namespace {

constexpr int headers = 14 + 20 + 8; // Ethernet, IPv4, UDP

std::array<uchar, 1514> makePacket(QRandomGenerator *random, int size)
{
    std::array<uchar, 1514> packet {};
    qToBigEndian<quint16>(0x0800, &packet[12]);
    packet[14] = 0x45;
    qToBigEndian(quint16(size - 14), &packet[16]);
    packet[22] = 64; // hops
    packet[23] = 17; // UDP
    qToBigEndian(quint32(0x0a000000 + random->bounded(4000U)), &packet[26]);
    qToBigEndian(quint32(0xc0a80000 + random->bounded(250U)), &packet[30]);
    qToBigEndian(quint16(1024 + random->bounded(60'000)), &packet[34]);
    qToBigEndian(quint16(random->bounded(3) == 0 ? 53 : 443), &packet[36]);
    qToBigEndian(quint16(size - 34), &packet[38]);
    return packet;
}

} // namespace

bool writeSampleCapture(const QString &path, int packets)
{
    pcap_t *format = pcap_open_dead(DLT_EN10MB, 65535);
    pcap_dumper_t *file = pcap_dump_open(format, QFile::encodeName(path).constData());
    pcap_close(format);
    if (!file)
        return false;
    QRandomGenerator random(1);
    for (int i = 0; i < packets; ++i) {
        const int size = headers + random.bounded(1514 - headers);
        const auto packet = makePacket(&random, size);
        pcap_pkthdr header {};
        header.ts.tv_sec = 1'795'255'200 + i / 200'000;
        header.ts.tv_usec = i % 200'000 * 5;
        header.len = bpf_u_int32(size);
        header.caplen = bpf_u_int32(size);
        pcap_dump(reinterpret_cast<u_char *>(file), &header, packet.data());
    }
    const bool isWritten = pcap_dump_flush(file) == 0;
    pcap_dump_close(file);
    return isWritten;
}
