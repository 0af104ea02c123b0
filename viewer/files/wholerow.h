// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef WHOLEROW_H
#define WHOLEROW_H

#include <QByteArray>
#include <QModelIndex>
#include <QStringList>

//! What a row has, where the table shows only as much as it can paint.
struct WholeRow
{
    QStringList fields;  //!< by column of the model
    QString object;      //!< the line that they are from, if it is JSON
    QByteArray bytes;    //!< in the file; empty if there is none
    bool isCut = false;  //!< there is more
    bool isLine = false; //!< the fields are the number of a line and its text
};

//! The row of \a index, which proxies may stand before. Of a file the first \a mostBytes bytes
//! are read and become text without stand-ins for control characters; of other models it is
//! what they show. Of an invalid index there are no fields.
WholeRow wholeRow(const QModelIndex &index, qint64 mostBytes);

#endif // WHOLEROW_H
