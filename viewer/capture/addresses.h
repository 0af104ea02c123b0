// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef ADDRESSES_H
#define ADDRESSES_H

#include <QByteArrayView>
#include <QString>

//! Addresses as they are written; empty unless \a bytes has as many as such an address.
//! @{
QString hardwareAddress(QByteArrayView bytes);
QString ipv4Address(QByteArrayView bytes);
QString ipv6Address(QByteArrayView bytes);
//! @}

//! "0x" and \a digits hexadecimal digits of \a number.
QString hexNumber(quint32 number, int digits);

#endif // ADDRESSES_H
