// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "dataconnection.h"

#include <QFileInfo>
#include <QSqlDriver>
#include <QSqlError>
#include <QSqlQuery>
#include <QSqlRecord>

#include <atomic>

namespace {

constexpr int s_busyTime = 2000;  // ms that SQLite waits for who writes
constexpr int s_connectTime = 10; // s

std::atomic<int> s_connections = 0; // made so far, by all threads

QString driverOf(DataEngine engine)
{
    return engine == DataEngine::Sqlite ? QStringLiteral("QSQLITE") : QStringLiteral("QPSQL");
}

QString missingDriver(DataEngine engine)
{
    return engine == DataEngine::Sqlite
        ? DataConnection::tr("Qt's driver for SQLite is not installed (Debian: "
                             "libqt6sql6-sqlite).")
        : DataConnection::tr("Qt's driver for PostgreSQL is not installed (Debian: "
                             "libqt6sql6-psql).");
}

bool isAboutPassword(const QString &text)
{
    return text.contains(QLatin1String("no password supplied"))
        || text.contains(QLatin1String("password authentication failed"));
}

//! SQLite's numbers for "interrupted", "busy" and "locked", and the server's states.
DataProblem::Kind kindOf(DataEngine engine, const QString &code)
{
    using Kind = DataProblem::Kind;
    if (engine == DataEngine::Sqlite)
        return code == QLatin1String("9") ? Kind::Cancelled
            : code == QLatin1String("5") || code == QLatin1String("6")
                || code == QLatin1String("261")
            ? Kind::Lost
            : Kind::Refused;
    if (code == QLatin1String("57014"))
        return Kind::Cancelled;
    const bool isGone = code.isEmpty() || code.startsWith(QLatin1String("08"))
        || code.startsWith(QLatin1String("57P"));
    return isGone ? Kind::Lost : Kind::Refused;
}

//! Both the driver and the engine say it, the driver what it wanted to do.
QString textOf(const QSqlError &error)
{
    const QString text = error.databaseText().trimmed();
    return text.isEmpty() ? error.text().trimmed() : text;
}

} // namespace

DataConnection::DataConnection()
    : m_name(QStringLiteral("vantix-data-%1").arg(++s_connections))
{
}

DataConnection::~DataConnection()
{
    close();
}

DataProblem DataConnection::problemOf(const QSqlError &error) const
{
    const QString text = textOf(error);
    return {kindOf(m_source.engine, error.nativeErrorCode()),
            text.isEmpty() ? tr("The database gave no reason.") : text};
}

DataProblem DataConnection::open(const DataSource &source)
{
    if (isOpen() && source == m_source)
        return {};
    close();
    m_source = source;
    if (!QSqlDatabase::isDriverAvailable(driverOf(source.engine)))
        return {DataProblem::Kind::NoDriver, missingDriver(source.engine)};
    const DataProblem problem = connectTo(source);
    if (problem)
        close();
    else
        m_cancel.attach(m_database);
    return problem;
}

DataProblem DataConnection::connectTo(const DataSource &source)
{
    using Kind = DataProblem::Kind;
    m_database = QSqlDatabase::addDatabase(driverOf(source.engine), m_name);
    m_database.setNumericalPrecisionPolicy(QSql::HighPrecision);
    m_database.setDatabaseName(source.database);
    if (source.engine == DataEngine::Sqlite) {
        if (!QFileInfo::exists(source.database))
            return {Kind::Refused, tr("The file is not there.")};
        m_database.setConnectOptions(
            QStringLiteral("QSQLITE_OPEN_READONLY;QSQLITE_ENABLE_REGEXP;QSQLITE_BUSY_TIMEOUT=%1")
                .arg(s_busyTime));
    } else {
        m_database.setHostName(source.host);
        m_database.setPort(source.port > 0 ? source.port : -1);
        m_database.setUserName(source.user);
        m_database.setPassword(source.password);
        m_database.setConnectOptions(
            QStringLiteral("connect_timeout=%1;keepalives_idle=%1;keepalives_interval=%1;"
                           "keepalives_count=2;application_name=vantix-viewer")
                .arg(s_connectTime));
    }
    if (m_database.open() && prepareSession())
        return {};
    const QSqlError error = m_database.lastError();
    if (source.engine == DataEngine::PostgreSql)
        return {isAboutPassword(error.text()) ? Kind::Password : Kind::Lost, textOf(error)};
    return problemOf(error);
}

//! Nothing that follows can write, whatever it is.
bool DataConnection::prepareSession()
{
    QSqlQuery query(m_database);
    if (m_source.engine == DataEngine::Sqlite)
        return query.exec(QStringLiteral("PRAGMA query_only = ON"));
    return query.exec(QStringLiteral("SET default_transaction_read_only = on"))
        && query.exec(QStringLiteral("SET extra_float_digits = 1"));
}

void DataConnection::close()
{
    m_cancel.detach();
    if (!m_database.isValid())
        return;
    m_database.close();
    m_database = QSqlDatabase();
    QSqlDatabase::removeDatabase(m_name);
}

void DataConnection::listen(const std::function<void()> &notified)
{
    if (!isOpen() || m_source.channel.isEmpty())
        return;
    QSqlDriver *driver = m_database.driver();
    QObject::connect(driver, &QSqlDriver::notification, driver, notified);
    driver->subscribeToNotification(m_source.channel);
}

DataProblem DataConnection::each(const SqlText &query,
                                 const std::function<bool(const QSqlQuery &)> &take)
{
    QSqlQuery running(m_database);
    running.setForwardOnly(true);
    bool isDone = running.prepare(query.text);
    if (isDone) {
        for (const QVariant &value : query.values)
            running.addBindValue(value);
        isDone = running.exec();
    }
    if (!isDone)
        return problemOf(running.lastError());
    while (running.next()) {
        if (!take(running))
            return {};
    }
    return running.lastError().isValid() ? problemOf(running.lastError()) : DataProblem();
}

QList<QVariantList> DataConnection::rows(const SqlText &query, DataProblem *problem)
{
    QList<QVariantList> rows;
    const DataProblem found = each(query, [&](const QSqlQuery &row) {
        QVariantList values;
        for (int i = 0, count = row.record().count(); i < count; ++i)
            values.append(row.value(i));
        rows.append(values);
        return true;
    });
    if (problem)
        *problem = found;
    return found ? QList<QVariantList>() : rows;
}

void DataConnection::beginSnapshot()
{
    each({m_source.engine == DataEngine::Sqlite
              ? QStringLiteral("BEGIN")
              : QStringLiteral("BEGIN ISOLATION LEVEL REPEATABLE READ READ ONLY"),
          {}},
         [](const QSqlQuery &) { return true; });
}

void DataConnection::endSnapshot()
{
    each({QStringLiteral("ROLLBACK"), {}}, [](const QSqlQuery &) { return true; });
}
