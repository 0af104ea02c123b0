// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef LAYERS_H
#define LAYERS_H

#include "bytereader.h"
#include "dissection.h"

/*!
 * \file
 * \brief The layers of packets, each of which reads its own header and hands on what is left.
 *
 * Each of them takes bytes that may end anywhere, and fills in what they tell.
 */

//! Numbers of protocols in Ethernet's headers.
enum class EtherType : quint16 {
    Ipv4 = 0x0800,
    Arp = 0x0806,
    Vlan = 0x8100,
    Ipv6 = 0x86dd,
    VlanService = 0x88a8
};

//! A message of DNS, or of its relatives on the local link.
void dissectDns(Dissection *packet, const QString &protocol, QByteArrayView message);

//! What follows the header of a link.
void dissectNetwork(Dissection *packet, quint16 etherType, QByteArrayView bytes);

//! What follows the header of IP, of which \a size bytes were sent, if not captured.
void dissectTransport(Dissection *packet, quint8 protocol, QByteArrayView bytes, qsizetype size);

//! The name of a protocol above IP, or its number.
QString transportName(quint8 protocol);

//! A header is cut off or contradicts itself: says so as the packet's info.
void tellMalformed(Dissection *packet, const QString &protocol);

#endif // LAYERS_H
