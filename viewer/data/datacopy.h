// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef DATACOPY_H
#define DATACOPY_H

#include "dataconnection.h"

#include <QObject>
#include <QTemporaryDir>
#include <QThread>

#include <atomic>
#include <memory>

/*!
 * \brief Copies rows that have no key into a temporary database, where they get one.
 *
 * In a thread of its own, from the first row to the last, once. What was copied can be read
 * meanwhile. Goes with what it has written.
 */
class DataCopy : public QObject
{
    Q_OBJECT

public:
    //! Copies \a table of \a source into \a folder, where there must be room for it.
    DataCopy(const DataSource &source, const DataTable &table, const QString &folder);
    ~DataCopy() override;

    //! Begins; ready() comes when there is a table to read.
    void start();
    bool isRunning() const { return m_thread && m_thread->isRunning(); }
    //! Rows copied so far.
    qint64 rows() const { return m_rows; }
    //! The copy, as a source to open.
    DataSource source() const;

Q_SIGNALS:
    void ready();
    //! All rows are there, or \a problem says why not.
    void finished(const DataProblem &problem);

private:
    DataProblem copy();
    DataProblem write(DataConnection &from, QSqlDatabase &to);
    SqlText rowsOf() const;
    QVariant copied(const QVariant &value) const;
    QString definition() const;

    const DataSource m_from;
    const DataTable m_table;
    QTemporaryDir m_folder;
    QStringList m_names; //!< of the copy's columns, each once
    std::unique_ptr<QThread> m_thread;
    DataConnection m_connection; //!< used in m_thread, but for cancel()
    std::atomic<qint64> m_rows = 0;
    std::atomic<bool> m_isCancelled = false;
};

#endif // DATACOPY_H
