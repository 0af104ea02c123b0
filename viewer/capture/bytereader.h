// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef BYTEREADER_H
#define BYTEREADER_H

#include <QByteArrayView>

//! Takes numbers, the most significant byte first, off bytes that may end too early: what is not
//! there reads as 0, and isShort() tells from then on.
class ByteReader
{
public:
    explicit ByteReader(QByteArrayView bytes)
        : m_bytes(bytes)
    {
    }

    quint8 u8() { return quint8(number(1)); }
    quint16 u16() { return quint16(number(2)); }
    quint32 u32() { return number(4); }
    //! The next \a size bytes, or those that are left. Of a negative size none.
    QByteArrayView take(qsizetype size)
    {
        const qsizetype wanted = qMax<qsizetype>(size, 0);
        m_isShort = m_isShort || wanted > left();
        const QByteArrayView taken = m_bytes.sliced(m_place, qMin(wanted, left()));
        m_place += taken.size();
        return taken;
    }
    void skip(qsizetype size) { take(size); }
    //! What was not taken yet, which stays.
    QByteArrayView rest() const { return m_bytes.sliced(m_place); }
    qsizetype left() const { return m_bytes.size() - m_place; }
    //! Bytes taken so far.
    qsizetype place() const { return m_place; }
    //! More was taken than there was.
    bool isShort() const { return m_isShort; }

private:
    quint32 number(int size)
    {
        const QByteArrayView bytes = take(size);
        if (bytes.size() < size)
            return 0;
        quint32 value = 0;
        for (const char byte : bytes)
            value = value << 8 | quint8(byte);
        return value;
    }

    QByteArrayView m_bytes;
    qsizetype m_place = 0;
    bool m_isShort = false;
};

#endif // BYTEREADER_H
