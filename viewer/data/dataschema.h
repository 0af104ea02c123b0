// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef DATASCHEMA_H
#define DATASCHEMA_H

#include "datatable.h"

class DataConnection;
struct DataProblem;

//! What a database says of its tables. To be asked in the thread of the connection, which is open.
namespace DataSchema {

//! Tables and views that can be read, as describe() takes them, tables first.
QStringList tables(DataConnection &connection, DataProblem *problem);
//! Columns, key and size of what \a source names: its query, else its table.
DataTable describe(DataConnection &connection, const DataSource &source, DataProblem *problem);
//! A value that is another one when something in \a table may have changed; invalid if nobody
//! knows.
QVariant version(DataConnection &connection, const DataTable &table);

} // namespace DataSchema

#endif // DATASCHEMA_H
