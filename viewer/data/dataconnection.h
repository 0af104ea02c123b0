// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef DATACONNECTION_H
#define DATACONNECTION_H

#include "dataquery.h"
#include "servercancel.h"

#include <QCoreApplication>
#include <QSqlDatabase>
#include <QString>

#include <functional>

class QSqlError;
class QSqlQuery;
class QSqlRecord;

//! What went wrong with a query or a connection.
struct DataProblem
{
    enum class Kind {
        None,
        NoDriver,  //!< Qt's plugin for the engine is not installed
        Password,  //!< one is needed, or another one
        Lost,      //!< the server went, or is busy: it may be tried again
        Cancelled, //!< somebody gave the query up
        Refused    //!< whatever else the engine says
    };

    Kind kind = Kind::None;
    QString text {}; //!< for the user

    explicit operator bool() const { return kind != Kind::None; }
};

/*!
 * \brief A connection to a database that reads and never writes.
 *
 * Lives in one thread, which alone may call its functions, but for cancel().
 */
class DataConnection
{
    Q_DECLARE_TR_FUNCTIONS(DataConnection)

public:
    DataConnection();
    ~DataConnection();
    Q_DISABLE_COPY_MOVE(DataConnection)

    //! Connects, or does nothing where it is connected to \a source already.
    DataProblem open(const DataSource &source);
    void close();
    bool isOpen() const { return m_database.isOpen(); }
    const DataSource &source() const { return m_source; }
    //! Has the server tell of what happens on DataSource::channel by \a notified, which is called
    //! in this connection's thread while its events run.
    void listen(const std::function<void()> &notified);

    //! Gives each row of \a query to \a take until that returns false. Rows are read as they come;
    //! none is kept. ODBC gets nothing but one SELECT: few of its drivers can be told to write
    //! nothing.
    DataProblem each(const SqlText &query, const std::function<bool(const QSqlQuery &)> &take);
    //! The columns that \a query gives, of which nothing is read.
    DataProblem columns(const SqlText &query, QSqlRecord *columns);
    //! Whether the engine understands \a query, of which nothing is read.
    bool understands(const QString &query);
    //! The rows of \a query.
    QList<QVariantList> rows(const SqlText &query, DataProblem *problem = nullptr);
    //! Begins a transaction in which the table stays as it is, or ends it.
    //! @{
    void beginSnapshot();
    void endSnapshot();
    //! @}

    //! Ends what runs. Any thread may call it.
    void cancel() { m_cancel.cancel(); }
    //! The database, for what only it can tell.
    const QSqlDatabase &database() const { return m_database; }

private:
    DataProblem connectTo(const DataSource &source);
    bool prepareSession();
    DataProblem start(const SqlText &query, QSqlQuery *running);
    void setUp(const DataSource &source);
    DataProblem connectionProblem() const;
    DataProblem problemOf(const QSqlError &error) const;
    bool isGone() const;

    QString m_name;          //!< of m_database, among all of the program
    DataSource m_source;     //!< connected to
    QSqlDatabase m_database; //!< invalid while closed
    ServerCancel m_cancel;   //!< of m_database
};

#endif // DATACONNECTION_H
