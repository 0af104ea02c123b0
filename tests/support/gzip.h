// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef GZIP_H
#define GZIP_H

#include <QByteArray>
#include <QtEndian>

inline QByteArray littleEndian(quint32 number)
{
    QByteArray bytes(4, '\0');
    qToLittleEndian(number, bytes.data());
    return bytes;
}

inline quint32 crc32(const QByteArray &text)
{
    quint32 sum = 0xffffffff;
    for (const char byte : text) {
        sum ^= quint8(byte);
        for (int bit = 0; bit < 8; ++bit)
            sum = (sum >> 1) ^ (sum & 1 ? 0xedb88320 : 0);
    }
    return ~sum;
}

//! Text in a .gz file. Qt packs the same in another wrapping: four bytes of length, two of
//! header, and four of a check sum at the end.
inline QByteArray gzip(const QByteArray &text)
{
    // Of no text, Qt leaves out the block that is empty.
    const QByteArray block =
        text.isEmpty() ? QByteArray("\x03\0", 2) : qCompress(text).sliced(6).chopped(4);
    return QByteArray("\x1f\x8b\x08\0\0\0\0\0\0\x03", 10) + block + littleEndian(crc32(text))
        + littleEndian(quint32(text.size()));
}

#endif // GZIP_H
