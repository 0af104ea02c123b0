// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef CAPTURES_H
#define CAPTURES_H

#include <QByteArray>
#include <QtEndian>

/*!
 * \file
 * \brief Packets, and the files that captures of them are, byte by byte.
 */

//! Numbers as networks send them.
//! @{
inline QByteArray big16(int number)
{
    QByteArray bytes(2, '\0');
    qToBigEndian(quint16(number), bytes.data());
    return bytes;
}

inline QByteArray big32(quint32 number)
{
    QByteArray bytes(4, '\0');
    qToBigEndian(number, bytes.data());
    return bytes;
}
//! @}

//! "10.0.0.1" as four bytes.
inline QByteArray address4(const QByteArray &text)
{
    QByteArray bytes;
    for (const QByteArray &part : text.split('.'))
        bytes += char(part.toInt());
    return bytes;
}

//! "example.com" as labels.
inline QByteArray dnsName(const QByteArray &text)
{
    QByteArray bytes;
    for (const QByteArray &label : text.split('.'))
        bytes += char(label.size()) + label;
    return bytes + '\0';
}

inline QByteArray ethernet(int type, const QByteArray &inside)
{
    return QByteArray::fromHex("020000000002020000000001") + big16(type) + inside;
}

inline QByteArray ipv4(int protocol, const QByteArray &inside,
                       const QByteArray &source = "10.0.0.1",
                       const QByteArray &destination = "10.0.0.2", int fragment = 0x4000)
{
    return QByteArray("\x45\0", 2) + big16(20 + int(inside.size())) + big16(0x1234)
        + big16(fragment) + '\x40' + char(protocol) + big16(0) + address4(source)
        + address4(destination) + inside;
}

inline QByteArray ipv6(int next, const QByteArray &inside)
{
    return QByteArray::fromHex("60000000") + big16(int(inside.size())) + char(next) + '\x40'
        + QByteArray::fromHex("20010db8000000000000000000000001")
        + QByteArray::fromHex("20010db8000000000000000000000002") + inside;
}

inline QByteArray tcp(int source, int destination, int flags, const QByteArray &inside = {})
{
    return big16(source) + big16(destination) + big32(1000) + big32(2000) + big16(0x5000 | flags)
        + big16(64240) + big32(0) + inside;
}

inline QByteArray udp(int source, int destination, const QByteArray &inside)
{
    return big16(source) + big16(destination) + big16(8 + int(inside.size())) + big16(0) + inside;
}

inline QByteArray dnsQuery(const QByteArray &name, int type = 1)
{
    return big16(0x1a2b) + big16(0x0100) + big16(1) + big16(0) + big32(0) + dnsName(name)
        + big16(type) + big16(1);
}

//! One answer, whose name points to that of the question.
inline QByteArray dnsResponse(const QByteArray &name, int type, const QByteArray &data,
                              int failure = 0)
{
    return big16(0x1a2b) + big16(0x8180 | failure) + big16(1) + big16(data.isEmpty() ? 0 : 1)
        + big32(0) + dnsName(name) + big16(type) + big16(1)
        + (data.isEmpty() ? QByteArray()
                          : big16(0xc00c) + big16(type) + big16(1) + big32(300)
                   + big16(int(data.size())) + data);
}

//! Writes files of either format and byte order.
class CaptureWriter
{
public:
    explicit CaptureWriter(QSysInfo::Endian order = QSysInfo::LittleEndian)
        : m_order(order)
    {
    }

    QByteArray u16(int number) const { return ordered(quint16(number)); }
    QByteArray u32(quint32 number) const { return ordered(number); }

    //! The start of a file of records.
    QByteArray header(quint32 magic = 0xa1b2c3d4, quint32 link = 1) const
    {
        return u32(magic) + u16(2) + u16(4) + u32(0) + u32(0) + u32(65535) + u32(link);
    }
    //! A record; \a fraction in what the header's magic number says.
    QByteArray record(quint32 seconds, quint32 fraction, const QByteArray &bytes,
                      const QByteArray &more = {}, int sent = -1) const
    {
        return u32(seconds) + u32(fraction) + u32(quint32(bytes.size()))
            + u32(sent < 0 ? quint32(bytes.size()) : quint32(sent)) + more + bytes;
    }

    QByteArray block(quint32 type, QByteArray inside) const
    {
        inside += QByteArray((4 - inside.size() % 4) % 4, '\0');
        const QByteArray size = u32(quint32(inside.size()) + 12);
        return u32(type) + size + inside + size;
    }
    //! The start of a section.
    QByteArray section() const
    {
        return block(0x0a0d0d0a, u32(0x1a2b3c4d) + u16(1) + u16(0) + QByteArray(8, '\xff'));
    }
    //! An interface whose times have \a digits digits behind the second's point.
    QByteArray interface(int digits = 6, int link = 1) const
    {
        return block(1,
                     u16(link) + u16(0) + u32(0) + u16(9) + u16(1) + char(digits)
                         + QByteArray(3, '\0') + u16(0) + u16(0));
    }
    //! A packet of the interface with that \a number.
    QByteArray packet(int number, quint64 time, const QByteArray &bytes) const
    {
        const auto size = quint32(bytes.size());
        return block(6,
                     u32(quint32(number)) + u32(quint32(time >> 32)) + u32(quint32(time))
                         + u32(size) + u32(size) + bytes);
    }

private:
    template<typename Number> QByteArray ordered(Number number) const
    {
        QByteArray bytes(sizeof number, '\0');
        if (m_order == QSysInfo::BigEndian)
            qToBigEndian(number, bytes.data());
        else
            qToLittleEndian(number, bytes.data());
        return bytes;
    }

    QSysInfo::Endian m_order;
};

#endif // CAPTURES_H
