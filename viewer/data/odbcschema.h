// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef ODBCSCHEMA_H
#define ODBCSCHEMA_H

#include "datatable.h"

class DataConnection;
struct DataProblem;

//! What ODBC and its drivers say of tables, whatever engine is behind them. To be asked in the
//! thread of the connection, which is open.
namespace OdbcSchema {

//! Tables and views, as describe() takes them, tables first.
QStringList tables(DataConnection &connection);
//! Columns and primary key of the table, or of the query, that \a source names, and what the engine
//! knows of SQL, which is tried with queries that read nothing.
DataTable describe(DataConnection &connection, const DataSource &source, DataProblem *problem);

} // namespace OdbcSchema

#endif // ODBCSCHEMA_H
