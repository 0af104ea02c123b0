// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "addresses.h"

#include <arpa/inet.h>

#include <array>

namespace {

template<int family, qsizetype size> QString internetAddress(QByteArrayView bytes)
{
    std::array<char, INET6_ADDRSTRLEN> text {};
    if (bytes.size() != size || !::inet_ntop(family, bytes.data(), text.data(), text.size()))
        return {};
    return QString::fromLatin1(text.data());
}

} // namespace

QString hardwareAddress(QByteArrayView bytes)
{
    return bytes.size() == 6 ? QString::fromLatin1(bytes.toByteArray().toHex(':')) : QString();
}

QString ipv4Address(QByteArrayView bytes)
{
    return internetAddress<AF_INET, 4>(bytes);
}

QString ipv6Address(QByteArrayView bytes)
{
    return internetAddress<AF_INET6, 16>(bytes);
}

QString hexNumber(quint32 number, int digits)
{
    return QStringLiteral("0x%1").arg(number, digits, 16, QLatin1Char('0'));
}
