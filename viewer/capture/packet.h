// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef PACKET_H
#define PACKET_H

#include <QByteArrayView>

//! A packet as it was captured.
struct Packet
{
    qint64 time = 0;      //!< nanoseconds since 1970, UTC
    quint32 length = 0;   //!< bytes that were sent
    QByteArrayView bytes; //!< those that were captured; valid until another packet is read
};

#endif // PACKET_H
