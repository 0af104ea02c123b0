// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef SERVERCANCEL_H
#define SERVERCANCEL_H

#include <QMutex>

#include <memory>

class QSqlDatabase;

/*!
 * \brief Ends what a connection is doing, from another thread.
 *
 * Where the engine's own library was not there when the program was built, nothing is ended, and a
 * query runs to its end.
 */
class ServerCancel
{
public:
    ServerCancel() = default;
    ~ServerCancel() { detach(); }
    Q_DISABLE_COPY_MOVE(ServerCancel)

    //! Takes the handle of \a database, which is open. To be called by the thread that uses it, as
    //! is detach(), which comes before it is closed.
    void attach(const QSqlDatabase &database);
    void detach();
    //! Ends the query that runs, if one does. Any thread may call it; none waits for a server that
    //! does not answer.
    void cancel();

private:
    QMutex m_mutex;                 //!< the handle goes while another thread asks
    void *m_sqlite = nullptr;       //!< sqlite3, not owned
    std::shared_ptr<void> m_server; //!< PGcancel, owned, too, by those that ask the server
};

#endif // SERVERCANCEL_H
