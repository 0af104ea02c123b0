// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "addresses.h"

#include "textline.h"

#include <arpa/inet.h>

#include <array>

QString hardwareAddress(QByteArrayView bytes)
{
    return bytes.size() == 6 ? QString::fromLatin1(bytes.toByteArray().toHex(':')) : QString();
}

QString ipv4Address(QByteArrayView bytes)
{
    if (bytes.size() != 4)
        return {};
    TextLine line(15);
    line << quint8(bytes[0]) << u'.' << quint8(bytes[1]) << u'.' << quint8(bytes[2]) << u'.'
         << quint8(bytes[3]);
    return line.text();
}

QString ipv6Address(QByteArrayView bytes)
{
    std::array<char, INET6_ADDRSTRLEN> text {};
    if (bytes.size() != 16 || !::inet_ntop(AF_INET6, bytes.data(), text.data(), text.size()))
        return {};
    return QString::fromLatin1(text.data());
}

QString hexNumber(quint32 number, int digits)
{
    return QStringLiteral("0x%1").arg(number, digits, 16, QLatin1Char('0'));
}
