// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef DATATABLE_H
#define DATATABLE_H

#include "datadialect.h"

#include <QList>
#include <QStringList>
#include <QVariantList>

//! A column as its engine describes it.
struct DataColumn
{
    QString name {};
    QString type {};           //!< as the engine names it; may be empty in SQLite
    bool isNumeric = false;    //!< its values can be added up
    bool isBinary = false;     //!< all of its values are bytes
    bool isNullable = true;    //!< may have NULL
    bool isExact = false;      //!< numbers that are kept as text, to the digit
    bool isWhole = false;      //!< whole numbers only
    bool isReadAsText = false; //!< the engine is to make a text of it, or digits would be lost
    bool isOrdered = true;     //!< its values have an order, and are equal to what their text means

    friend bool operator==(const DataColumn &, const DataColumn &) = default;
};

//! What rows are read from.
struct DataTable
{
    DataDialect dialect {};       //!< of its engine
    QString name {};              //!< for the user
    QString relation {};          //!< what stands behind FROM: a quoted name, or a query
    QList<DataColumn> columns {}; //!< those that are shown
    QStringList key {};           //!< expressions that tell rows apart; empty if there are none
    QStringList keyTypes {};      //!< of them, as the engine names types
    bool hasIntegerKey = false;   //!< key is one whole number
    int keyColumn = -1;           //!< the column that alone is the key; −1 if none is
    qint64 estimate = 0;          //!< rows, as far as the engine knows without counting
    QVariantList histogram {};    //!< some values of the key alone, in its order and with about as
                                  //!< many rows between each two; empty if nobody knows

    friend bool operator==(const DataTable &, const DataTable &) = default;
};

//! The values that a row is ordered by: those of a column, if it is, and those of the key.
using RowKey = QVariantList;

//! A row as it was read.
struct DataRow
{
    RowKey key {};        //!< tells it apart
    QStringList cells {}; //!< as DataCell reads them

    friend bool operator==(const DataRow &, const DataRow &) = default;
};

//! How rows are ordered: by a column, or by the key alone.
struct DataOrder
{
    int column = -1; //!< −1 for the key
    bool isDescending = false;

    friend bool operator==(const DataOrder &, const DataOrder &) = default;
};

//! Rows between some others; what is not set bounds nothing.
struct RowRange
{
    RowKey after {};  //!< rows behind this one
    RowKey from {};   //!< this row and those behind it
    RowKey before {}; //!< rows before this one
    RowKey upTo {};   //!< this row and those before it

    friend bool operator==(const RowRange &, const RowRange &) = default;
};

#endif // DATATABLE_H
