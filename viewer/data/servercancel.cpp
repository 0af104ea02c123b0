// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "servercancel.h"

#include <QSqlDatabase>
#include <QSqlDriver>
#include <QSqlQuery>
#include <QThreadPool>
#include <QVariant>

#include <array>
#include <cstring>

#ifdef VIEWER_HAS_SQLITE3
#include <sqlite3.h>
#endif
#ifdef VIEWER_HAS_LIBPQ
#include <libpq-fe.h>
#endif

namespace {

//! Both what a header calls it and what it stands for are names of its type.
template<typename Handle>
Handle handleOf(const QSqlDatabase &database, const char *type, const char *otherType)
{
    const QVariant handle = database.driver()->handle();
    if (!handle.isValid()
        || (std::strcmp(handle.typeName(), type) != 0
            && std::strcmp(handle.typeName(), otherType) != 0))
        return nullptr;
    return *static_cast<const Handle *>(handle.constData());
}

#ifdef VIEWER_HAS_SQLITE3
//! Qt may have brought an SQLite of its own, whose handles are not those of the system's.
bool isOurSqlite(const QSqlDatabase &database)
{
    QSqlQuery query(database);
    return query.exec(QStringLiteral("SELECT sqlite_source_id()")) && query.next()
        && query.value(0).toString() == QLatin1String(sqlite3_sourceid());
}
#endif

} // namespace

void ServerCancel::attach(const QSqlDatabase &database)
{
    detach();
    const QMutexLocker lock(&m_mutex);
#ifdef VIEWER_HAS_SQLITE3
    if (sqlite3 *handle = handleOf<sqlite3 *>(database, "sqlite3*", "sqlite3 *");
        handle && isOurSqlite(database))
        m_sqlite = handle;
#endif
#ifdef VIEWER_HAS_LIBPQ
    if (PGconn *handle = handleOf<PGconn *>(database, "PGconn*", "pg_conn*"))
        m_server = {PQgetCancel(handle),
                    [](void *server) { PQfreeCancel(static_cast<PGcancel *>(server)); }};
#endif
}

void ServerCancel::detach()
{
    const QMutexLocker lock(&m_mutex);
    m_sqlite = nullptr;
    m_server.reset();
}

void ServerCancel::cancel()
{
    const QMutexLocker lock(&m_mutex);
#ifdef VIEWER_HAS_SQLITE3
    if (m_sqlite)
        sqlite3_interrupt(static_cast<sqlite3 *>(m_sqlite));
#endif
#ifdef VIEWER_HAS_LIBPQ
    if (m_server)
        QThreadPool::globalInstance()->start([server = m_server] {
            std::array<char, 256> problem {};
            PQcancel(static_cast<PGcancel *>(server.get()), problem.data(), int(problem.size()));
        });
#endif
}
