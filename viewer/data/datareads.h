// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef DATAREADS_H
#define DATAREADS_H

#include "dataconnection.h"
#include "rowpages.h"

#include <QVariant>

#include <optional>

//! What is read of a table, in the thread of a connection.
namespace DataReads {

//! A database that was opened.
struct Opened
{
    DataProblem problem {};
    DataSource source {}; //!< with the table that was chosen
    QStringList tables {};
    DataTable table {};
    QVariant version {}; //!< see DataSchema::version()
};

//! Rows of a page, in the order in which they were asked for.
struct Page
{
    DataProblem problem {};
    QList<DataRow> rows {};
};

//! Where rows are.
struct Survey
{
    DataProblem problem {};
    QList<RowPages::Anchor> anchors;
    int step = 0;
    qint64 total = 0;
    RowKey key {}; //!< of the row that was to be found
    int row = -1;
};

//! What was found.
struct Found
{
    DataProblem problem {};
    std::optional<RowKey> key; //!< nothing if there is no such row
    qint64 distance = 0;       //!< rows between it and the one before which it was looked for
};

//! Of the numbers in a column.
struct Sums
{
    DataProblem problem {};
    int column = 0;
    qint64 rows = 0;
    qint64 numbers = 0;
    QString sum {}; //!< to the digit
    bool isExact = true;
    QString minimum {}; //!< empty without numbers
    QString maximum {};
};

//! Connects to \a source, and looks what there is. Without a table it takes the first one.
Opened open(DataConnection &connection, DataSource source);
Page page(DataConnection &connection, const DataQuery &query, const RowPages::Fetch &fetch);
//! Counts the rows of \a query, and finds the place of each \a step -th, and of that with \a key,
//! which may be empty.
Survey survey(DataConnection &connection, const DataQuery &query, int step, const RowKey &key);
//! The next row behind \a from, or before it, with \a text; without a key, the first or last one.
Found find(DataConnection &connection, const DataQuery &query, const RowKey &from, bool backward,
           const DataText &text);
Sums sums(DataConnection &connection, const DataQuery &query, int column);

} // namespace DataReads

Q_DECLARE_METATYPE(DataReads::Sums)

#endif // DATAREADS_H
