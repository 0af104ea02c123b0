// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef RECORDFAULTS_H
#define RECORDFAULTS_H

#include <QByteArrayView>
#include <QFlags>
#include <QStringView>

//! What RFC 4180 does not allow in a record.
enum class RecordFault {
    OpenQuote = 1,      //!< a quote that nothing closes; its fields cannot be told then
    TextAfterQuote = 2, //!< between a closing quote and the end of its field
    TooFewFields = 4,   //!< than the header has
    TooManyFields = 8   //!< the same
};
Q_DECLARE_FLAGS(RecordFaults, RecordFault)
Q_DECLARE_OPERATORS_FOR_FLAGS(RecordFaults)

//! What is wrong with \a record, which has no end of a line behind it, if \a delimiter separates
//! its fields and the header has \a fields of them; 0: it does not tell. Nothing is wrong with an
//! empty one.
RecordFaults faultsOf(QStringView record, QChar delimiter, qsizetype fields);
//! The same for a text whose quotes and delimiters are these bytes, and no others are.
RecordFaults faultsOf(QByteArrayView record, char delimiter, qsizetype fields);

#endif // RECORDFAULTS_H
