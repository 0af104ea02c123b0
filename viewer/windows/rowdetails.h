// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef ROWDETAILS_H
#define ROWDETAILS_H

#include <QModelIndex>
#include <QString>

//! A row for somebody who reads it whole.
struct RowDetails
{
    QString text;        //!< line feeds between its lines
    bool isDump = false; //!< hexadecimal; its lines are not to be wrapped

    static constexpr qint64 mostBytes = 1 << 20;   //!< read of a row
    static constexpr qsizetype mostDumped = 65536; //!< bytes in hexadecimal
    static constexpr qsizetype mostText = 1 << 20; //!< characters, or a few more
};

//! The row of \a index: what the model tells with RowRole::Details, or else the text alone if it is
//! the only one, or names and values of all columns. What is JSON is indented, and what is no text,
//! as NUL or many control characters in it tell, is dumped. An ellipsis stands for what is left
//! out.
RowDetails rowDetails(const QModelIndex &index);

#endif // ROWDETAILS_H
