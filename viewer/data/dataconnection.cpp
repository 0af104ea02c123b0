// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "dataconnection.h"

#include <QFileInfo>
#include <QRegularExpression>
#include <QSqlDriver>
#include <QSqlError>
#include <QSqlQuery>
#include <QSqlRecord>

#include <algorithm>
#include <atomic>

namespace {

constexpr int s_busyTime = 2000;  // ms that SQLite waits for who writes
constexpr int s_connectTime = 10; // s

std::atomic<int> s_connections = 0; // made so far, by all threads

QString driverOf(DataEngine engine)
{
    switch (engine) {
    case DataEngine::Sqlite:
        return QStringLiteral("QSQLITE");
    case DataEngine::PostgreSql:
        return QStringLiteral("QPSQL");
    case DataEngine::Odbc:
        break;
    }
    return QStringLiteral("QODBC");
}

QString missingDriver(DataEngine engine)
{
    switch (engine) {
    case DataEngine::Sqlite:
        return DataConnection::tr("Qt's driver for SQLite is not installed (Debian: "
                                  "libqt6sql6-sqlite).");
    case DataEngine::PostgreSql:
        return DataConnection::tr("Qt's driver for PostgreSQL is not installed (Debian: "
                                  "libqt6sql6-psql).");
    case DataEngine::Odbc:
        break;
    }
    return DataConnection::tr("Qt's driver for ODBC is not installed (Debian: libqt6sql6-odbc).");
}

//! Engines behind ODBC have words of their own for it.
bool isAboutPassword(const QString &text)
{
    const QStringList words {QStringLiteral("no password supplied"),
                             QStringLiteral("password authentication failed"),
                             QStringLiteral("access denied for user"),
                             QStringLiteral("login failed"),
                             QStringLiteral("invalid username/password"),
                             QStringLiteral("invalid authorization")};
    return std::any_of(words.begin(), words.end(), [&](const QString &word) {
        return text.contains(word, Qt::CaseInsensitive);
    });
}

//! Qt puts DSN= before what names no driver and no server.
QString odbcDatabase(const QString &connection)
{
    static const QRegularExpression prefix(QStringLiteral(R"(^\s*(?:FILE)?DSN\s*=\s*)"),
                                           QRegularExpression::CaseInsensitiveOption);
    const bool isWhole = connection.contains(QLatin1String("DRIVER="), Qt::CaseInsensitive)
        || connection.contains(QLatin1String("SERVER="), Qt::CaseInsensitive);
    return isWhole ? connection : QString(connection).remove(prefix);
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
    if (engine == DataEngine::Odbc)
        return Kind::Refused;
    if (code == QLatin1String("57014"))
        return Kind::Cancelled;
    const bool isGone = code.isEmpty() || code.startsWith(QLatin1String("08"))
        || code.startsWith(QLatin1String("57P"));
    return isGone ? Kind::Lost : Kind::Refused;
}

//! Whatever is in it: Qt would end it at a semicolon.
QString odbcPassword(QString password)
{
    if (password.isEmpty())
        return {};
    static const QRegularExpression special(QStringLiteral(R"([\[\]{}(),;?*=!@\s])"));
    if (!password.contains(special))
        return QLatin1String(";PWD=") + password;
    return QLatin1String(";PWD={") + password.replace(u'}', QLatin1String("}}")) + u'}';
}

bool isOneSelect(const QString &text)
{
    return text.startsWith(QLatin1String("SELECT "), Qt::CaseInsensitive)
        && isSingleCondition(text);
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
    return {isGone() ? DataProblem::Kind::Lost : kindOf(m_source.engine, error.nativeErrorCode()),
            text.isEmpty() ? tr("The database gave no reason.") : text};
}

//! Errors of drivers of ODBC have numbers of their own. A database whose tables are not told any
//! more is not there any more.
bool DataConnection::isGone() const
{
    return m_source.engine == DataEngine::Odbc && m_database.isOpen()
        && m_database.tables(QSql::AllTables).isEmpty();
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
    m_database = QSqlDatabase::addDatabase(driverOf(source.engine), m_name);
    m_database.setNumericalPrecisionPolicy(QSql::HighPrecision);
    if (source.engine == DataEngine::Sqlite && !QFileInfo::exists(source.database))
        return {DataProblem::Kind::Refused, tr("The file is not there.")};
    setUp(source);
    return m_database.open() && prepareSession() ? DataProblem() : connectionProblem();
}

void DataConnection::setUp(const DataSource &source)
{
    m_database.setDatabaseName(source.database);
    m_database.setUserName(source.user);
    m_database.setPassword(source.password);
    switch (source.engine) {
    case DataEngine::Sqlite:
        m_database.setConnectOptions(
            QStringLiteral("QSQLITE_OPEN_READONLY;QSQLITE_ENABLE_REGEXP;QSQLITE_BUSY_TIMEOUT=%1")
                .arg(s_busyTime));
        return;
    case DataEngine::PostgreSql:
        m_database.setHostName(source.host);
        m_database.setPort(source.port > 0 ? source.port : -1);
        m_database.setConnectOptions(
            QStringLiteral("connect_timeout=%1;keepalives_idle=%1;keepalives_interval=%1;"
                           "keepalives_count=2;application_name=vantix-viewer")
                .arg(s_connectTime));
        return;
    case DataEngine::Odbc:
        m_database.setDatabaseName(odbcDatabase(source.database) + odbcPassword(source.password));
        m_database.setPassword({});
        // Of binary numbers drivers make texts of too few digits; decimal ones are read as texts.
        m_database.setNumericalPrecisionPolicy(QSql::LowPrecisionDouble);
        m_database.setConnectOptions(
            QStringLiteral("SQL_ATTR_ACCESS_MODE=SQL_MODE_READ_ONLY;SQL_ATTR_LOGIN_TIMEOUT=%1")
                .arg(s_connectTime));
    }
}

//! Servers that do not answer may do so later; drivers and sources that are not there will not
//! come.
DataProblem DataConnection::connectionProblem() const
{
    using Kind = DataProblem::Kind;
    const QSqlError error = m_database.lastError();
    if (m_source.engine == DataEngine::Sqlite)
        return problemOf(error);
    const QString text = textOf(error);
    if (isAboutPassword(text))
        return {Kind::Password, text};
    const bool isManager =
        m_source.engine == DataEngine::Odbc && text.contains(QLatin1String("[Driver Manager]"));
    return {isManager ? Kind::Refused : Kind::Lost, text};
}

//! Nothing that follows can write, whatever it is.
bool DataConnection::prepareSession()
{
    QSqlQuery query(m_database);
    if (m_source.engine == DataEngine::Sqlite)
        return query.exec(QStringLiteral("PRAGMA query_only = ON"));
    if (m_source.engine == DataEngine::Odbc)
        return true;
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

//! Has \a running give the rows of \a query.
DataProblem DataConnection::start(const SqlText &query, QSqlQuery *running)
{
    if (m_source.engine == DataEngine::Odbc && !isOneSelect(query.text))
        return {DataProblem::Kind::Refused, tr("Only queries are sent to this database.")};
    running->setForwardOnly(true);
    running->setNumericalPrecisionPolicy(m_database.numericalPrecisionPolicy());
    bool isDone = running->prepare(query.text);
    if (isDone) {
        for (const QVariant &value : query.values)
            running->addBindValue(value);
        isDone = running->exec();
    }
    return isDone ? DataProblem() : problemOf(running->lastError());
}

DataProblem DataConnection::each(const SqlText &query,
                                 const std::function<bool(const QSqlQuery &)> &take)
{
    QSqlQuery running(m_database);
    if (const DataProblem problem = start(query, &running))
        return problem;
    while (running.next()) {
        if (!take(running))
            return {};
    }
    return running.lastError().isValid() ? problemOf(running.lastError()) : DataProblem();
}

DataProblem DataConnection::columns(const SqlText &query, QSqlRecord *columns)
{
    QSqlQuery running(m_database);
    const DataProblem problem = start(query, &running);
    if (!problem)
        *columns = running.record();
    return problem;
}

bool DataConnection::understands(const QString &query)
{
    QSqlQuery asked(m_database);
    asked.setForwardOnly(true);
    return isOneSelect(query) && asked.prepare(query) && asked.exec();
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
    if (m_source.engine == DataEngine::Odbc) {
        m_database.transaction();
        return;
    }
    each({m_source.engine == DataEngine::Sqlite
              ? QStringLiteral("BEGIN")
              : QStringLiteral("BEGIN ISOLATION LEVEL REPEATABLE READ READ ONLY"),
          {}},
         [](const QSqlQuery &) { return true; });
}

void DataConnection::endSnapshot()
{
    if (m_source.engine == DataEngine::Odbc)
        m_database.rollback();
    else
        each({QStringLiteral("ROLLBACK"), {}}, [](const QSqlQuery &) { return true; });
}
