// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef DATASOURCE_H
#define DATASOURCE_H

#include <QCoreApplication>
#include <QString>
#include <QStringList>
#include <QUrlQuery>

#include <optional>

//! The engines that are understood.
enum class DataEngine {
    Sqlite,     //!< a file
    PostgreSql, //!< a server
    Odbc        //!< whatever an ODBC driver leads to
};

//! Where a table comes from, and which one it is. Passwords are kept in memory only.
struct DataSource
{
    Q_DECLARE_TR_FUNCTIONS(DataSource)

public:
    DataEngine engine = DataEngine::Sqlite;
    QString database {}; //!< file of SQLite, name of the server's database, or ODBC's connection
                         //!< string
    QString host {};     //!< of the server, or the folder of its socket; empty for the usual one
    int port = 0;        //!< of the server; 0 for the usual one
    QString user {};     //!< of the server; empty for the system's user
    QString password {}; //!< asked for; never written anywhere
    QString table {};    //!< to open, perhaps with its schema before a point; empty for the first
    QString sql {};      //!< a query to show instead of a table
    QStringList key {};  //!< columns that tell rows apart, where the engine does not know them
    QString channel {};  //!< on which the server notifies of changes; empty for none

    //! What \a text of the command line means; nothing if it means no database. Sets \a problem
    //! if it means one and cannot be used.
    static std::optional<DataSource> fromText(const QString &text, QString *problem = nullptr);
    //! What becomes of \a query, "table=…&sql=…&key=…", of an address.
    void takeQuery(const QUrlQuery &query);
    //! The text that fromText() would understand, without what chooses a table.
    QString text() const;
    //! What the user knows it by: a file's name, or a database on a host.
    QString name() const;

    friend bool operator==(const DataSource &, const DataSource &) = default;
};

//! Whether \a path is a file that begins as those of SQLite do.
bool isSqliteFile(const QString &path);

#endif // DATASOURCE_H
