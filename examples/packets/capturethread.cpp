// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "capturethread.h"

#include <QElapsedTimer>
#include <QFile>
#include <QtEndian>

#include <pcap/pcap.h>

#include <array>
#include <utility>

namespace {

constexpr int restTime = 5; // ms between looks at the clock

Packet packetOf(const pcap_pkthdr &header, const u_char *bytes)
{
    Packet packet;
    packet.time = qint64(header.ts.tv_sec) * 1'000'000 + header.ts.tv_usec;
    packet.length = header.len;
    if (header.caplen < 38 || qFromBigEndian<quint16>(bytes + 12) != 0x0800)
        return packet;
    packet.source = qFromBigEndian<quint32>(bytes + 26);
    packet.destination = qFromBigEndian<quint32>(bytes + 30);
    packet.sourcePort = qFromBigEndian<quint16>(bytes + 34);
    packet.destinationPort = qFromBigEndian<quint16>(bytes + 36);
    return packet;
}

} // namespace

CaptureThread::CaptureThread(const QString &path, int rate, QObject *parent)
    : QThread(parent)
    , m_path(path)
    , m_rate(rate)
{
}

CaptureThread::~CaptureThread()
{
    requestInterruption();
    wait();
}

std::vector<Packet> CaptureThread::take()
{
    const std::lock_guard lock(m_mutex);
    return std::exchange(m_packets, {});
}

int CaptureThread::read(pcap *capture, qint64 count)
{
    pcap_pkthdr *header = nullptr;
    const u_char *bytes = nullptr;
    const std::lock_guard lock(m_mutex);
    int done = 0;
    while (done < count && pcap_next_ex(capture, &header, &bytes) == 1) {
        m_packets.push_back(packetOf(*header, bytes));
        ++done;
    }
    return done;
}

void CaptureThread::run()
{
    QElapsedTimer clock;
    clock.start();
    qint64 read = 0;
    while (!isInterruptionRequested()) {
        std::array<char, PCAP_ERRBUF_SIZE> error {};
        pcap_t *capture = pcap_open_offline(QFile::encodeName(m_path).constData(), error.data());
        if (!capture) {
            qWarning("%s", error.data());
            return;
        }
        for (bool isAtEnd = false; !isAtEnd && !isInterruptionRequested();) {
            const qint64 due = clock.elapsed() * m_rate / 1000 - read;
            const int count = this->read(capture, due);
            read += count;
            isAtEnd = count < due;
            if (!isAtEnd)
                msleep(restTime);
        }
        pcap_close(capture);
    }
}
