// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef PACKET_H
#define PACKET_H

#include <QtGlobal>

//! What the list tells of a packet of UDP over IPv4: 24 bytes, whatever its size.
struct Packet
{
    qint64 time = 0; //!< microseconds since 1970
    quint32 source = 0;
    quint32 destination = 0;
    quint16 sourcePort = 0;
    quint16 destinationPort = 0;
    quint32 length = 0; //!< bytes
};

#endif // PACKET_H
