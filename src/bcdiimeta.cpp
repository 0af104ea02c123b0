// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "bcdiimeta.h"

#include "decimal/nan_p.h"

#include <QMutex>
#include <QMutexLocker>

#include <array>

namespace {

constexpr std::uint32_t nanStatus = 160;
constexpr std::uint32_t invalidStatus = 32;

using Buffer = std::array<std::uint8_t, sizeof(InternalBCDType::data)>;

int digitsOf(BCDIIType type)
{
    return static_cast<std::int8_t>(type >> 8 & 0xFF);
}

int byteCount(BCDIIType type)
{
    return (digitsOf(type) >> 1) + static_cast<int>((type >> 8 | type) & 1);
}

bool readBytes(QDataStream &stream, std::uint8_t *bytes, int count)
{
    if (stream.readRawData(reinterpret_cast<char *>(bytes), count) == count)
        return true;
    stream.setStatus(QDataStream::ReadPastEnd);
    return false;
}

// False when there is no value to be read; NaN is one.
bool readValue(QDataStream &stream, BCDIIType *type, Buffer *bytes)
{
    std::array<std::uint8_t, 2> header {};
    if (!readBytes(stream, header.data(), 2))
        return false;
    *type = static_cast<BCDIIType>(header[0] << 8 | header[1]);
    if (BCDIICheckType(*type) == 0) {
        stream.setStatus(QDataStream::ReadCorruptData);
        return false;
    }
    return readBytes(stream, bytes->data(), byteCount(*type));
}

// The order of numbers, NaN, and the rest.
int rankOf(const QVariant &variant, InternalBCDType *decimal)
{
    if (!vantixIsDecimal(variant))
        return 2;
    *decimal = variant.value<InternalBCDType>();
    return (decimal->data[0] & 0x7F) > 99 ? 1 : 0;
}

} // namespace

void BCDIIMeta::write(QDataStream &stream, const void *data, BCDIIType type)
{
    const std::uint32_t status = BCDIICheck(data, type);
    Buffer bytes {};
    if (status == nanStatus || status == invalidStatus)
        bytes[0] = Decimal::nanByte;
    else
        std::copy_n(static_cast<const std::uint8_t *>(data), byteCount(type), bytes.data());
    const std::array<std::uint8_t, 2> header {static_cast<std::uint8_t>(type >> 8),
                                              static_cast<std::uint8_t>(type & 0xFF)};
    stream.writeRawData(reinterpret_cast<const char *>(header.data()), 2);
    stream.writeRawData(reinterpret_cast<const char *>(bytes.data()), byteCount(type));
}

void BCDIIMeta::read(QDataStream &stream, void *data, BCDIIType type)
{
    auto *const value = static_cast<std::uint8_t *>(data);
    value[0] = Decimal::nanByte;
    if (stream.status() != QDataStream::Ok)
        return;
    BCDIIType writtenType = 0;
    Buffer bytes {};
    if (!readValue(stream, &writtenType, &bytes))
        return;
    std::uint32_t status = BCDIICheck(bytes.data(), writtenType);
    if (status == nanStatus)
        return;
    if (status != invalidStatus)
        status = BCDIICopy(data, type, bytes.data(), writtenType, BCDII_ROUND_TRUNC);
    if ((status & ~0x06U) != 0) { // invalid, too large or rounded
        value[0] = Decimal::nanByte;
        stream.setStatus(QDataStream::ReadCorruptData);
    }
}

// Qt warns about converters that are there already; another thread or library may be at it.
void BCDIIMeta::registerConverter(QMetaType from, QMetaType to,
                                  bool (*convert)(const void *from, void *to))
{
    static QBasicMutex mutex;
    const QMutexLocker locker(&mutex);
    if (!QMetaType::hasRegisteredConverterFunction(from, to))
        QMetaType::registerConverterFunction(convert, from, to);
}

bool vantixIsDecimal(const QVariant &value)
{
    const QMetaType type = value.metaType();
    return type.id() >= QMetaType::User
        && QMetaType::hasRegisteredConverterFunction(type, QMetaType::fromType<InternalBCDType>());
}

bool vantixDecimalLessThan(const QVariant &left, const QVariant &right)
{
    InternalBCDType a {};
    InternalBCDType b {};
    const int leftRank = rankOf(left, &a);
    const int rightRank = rankOf(right, &b);
    if (leftRank != 0 || rightRank != 0)
        return leftRank < rightRank;
    return BCDIICmp(&a, &b) < 0;
}
