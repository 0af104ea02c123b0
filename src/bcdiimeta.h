// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef BCDIIMETA_H
#define BCDIIMETA_H

#include "bcdiivalue.h"

#include <QDataStream>
#include <QDebug>
#include <QMetaType>
#include <QString>
#include <QVariant>

//! \file
//! \since 0.2
//!
//! Decimals in variants, and so in models and views; in data streams and debug output.
//! A program includes this header wherever it includes bcdiivalue.h and makes variants:
//! the operators that a variant knows are those seen where it is made first.

namespace BCDIIMeta {

//! The steps of the templates below. \a data has the bytes that \a type implies.
//! @{
VANTIX_EXPORT void write(QDataStream &stream, const void *data, BCDIIType type);
VANTIX_EXPORT void read(QDataStream &stream, void *data, BCDIIType type);
VANTIX_EXPORT void registerConverter(QMetaType from, QMetaType to,
                                     bool (*convert)(const void *from, void *to));
//! @}

//! Makes variants and streams know \a Value, a BCDIIValue.
template<typename Value> void registerValue()
{
    const auto self = QMetaType::fromType<Value>();
    qRegisterMetaType<Value>(); // by which a stream names it
    registerConverter(self, QMetaType::fromType<QString>(), [](const void *from, void *to) {
        *static_cast<QString *>(to) = static_cast<const Value *>(from)->toQString();
        return true;
    });
    registerConverter(self, QMetaType::fromType<double>(), [](const void *from, void *to) {
        *static_cast<double *>(to) = static_cast<const Value *>(from)->toDouble();
        return true;
    });
    registerConverter(self, QMetaType::fromType<InternalBCDType>(), [](const void *from, void *to) {
        auto *const described = static_cast<InternalBCDType *>(to);
        const auto *const value = static_cast<const Value *>(from);
        described->type = static_cast<BCDIIStoreType>(Value::type());
        std::copy_n(value->data(), Value::size(), described->data);
        return true;
    });
    registerConverter(QMetaType::fromType<QString>(), self, [](const void *from, void *to) {
        const auto parsed = Value::parse(*static_cast<const QString *>(from));
        *static_cast<Value *>(to) = parsed.value;
        return bool(parsed);
    });
}

} // namespace BCDIIMeta

//! Lets variants of the types \a Values, as in vantixRegisterDecimals<Money, Rate>(), be
//! converted
//! - to QString, as toString() writes them: that is what views and delegates show;
//! - to double, the nearest one up to 15 digits, a quiet NaN for NaN;
//! - to InternalBCDType, the self-describing form, by which vantixDecimalLessThan() compares
//!   values of different types;
//! - from QString, as parse() reads it: a text that is no number of the type is not
//!   converted, and QVariant::value() gives NaN.
//!
//! Also registers the types' names, by which variants are read from data streams.
//! QVariant::compare() needs no registration; it compares variants of one type, exactly, and
//! NaN is unordered. Does nothing for a type that is registered already; may be called in
//! any thread.
template<typename... Values> void vantixRegisterDecimals()
{
    (BCDIIMeta::registerValue<Values>(), ...);
}

//! Whether \a left comes before \a right in an ascending order: registered decimals by
//! value, also between types, then NaN, then whatever is no decimal. A strict weak order.
VANTIX_EXPORT bool vantixDecimalLessThan(const QVariant &left, const QVariant &right);

//! Whether \a value is a decimal of a registered type, NaN included.
VANTIX_EXPORT bool vantixIsDecimal(const QVariant &value);

//! Writes the number as QDebug writes a double: 12.50, or NaN.
template<int Digits, int Fraction>
QDebug operator<<(QDebug debug, const BCDIIValue<Digits, Fraction> &value)
{
    const QDebugStateSaver saver(debug);
    debug.nospace() << value.toString().c_str();
    return debug;
}

//! Writes nall and nfrac, a byte each, and the bytes of the value. Any NaN, and bytes that
//! are not a value, are written as the one NaN whose other bytes are 0.
template<int Digits, int Fraction>
QDataStream &operator<<(QDataStream &stream, const BCDIIValue<Digits, Fraction> &value)
{
    BCDIIMeta::write(stream, value.data(), value.type());
    return stream;
}

//! Reads a value that was written in this type or another one, exactly. Otherwise \a value
//! becomes NaN and the stream gets a status: ReadPastEnd when it ends too early,
//! ReadCorruptData when it has a type or bytes that are not valid, or a number that this
//! type cannot hold without loss. A stream with such a status already is not read.
template<int Digits, int Fraction>
QDataStream &operator>>(QDataStream &stream, BCDIIValue<Digits, Fraction> &value)
{
    BCDIIMeta::read(stream, value.data(), value.type());
    return stream;
}

#endif // BCDIIMETA_H
