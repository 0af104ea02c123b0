// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "datasource.h"

#include <QFile>
#include <QFileInfo>
#include <QMap>
#include <QRegularExpression>
#include <QUrl>
#include <QUrlQuery>

namespace {

constexpr int s_headerSize = 16; // with the zero at its end

constexpr QLatin1String s_odbc("odbc:");

bool isServerUrl(const QString &text)
{
    return text.startsWith(QLatin1String("postgresql://"))
        || text.startsWith(QLatin1String("postgres://"));
}

//! A password there stands in the history of the shell, and in the list of processes.
QString problemOf(const QUrl &url, const QUrlQuery &query)
{
    if (!url.isValid())
        return DataSource::tr("This is no address of a database: %1").arg(url.errorString());
    if (!url.password().isEmpty() || query.hasQueryItem(QStringLiteral("password")))
        return DataSource::tr("A password does not belong into an address: leave it out, and it is "
                              "read from ~/.pgpass or asked for.");
    return {};
}

DataSource sourceOf(const QUrl &url, const QUrlQuery &query)
{
    const auto value = [&](const char *name) {
        return query.queryItemValue(QLatin1String(name), QUrl::FullyDecoded);
    };
    DataSource source;
    source.engine = DataEngine::PostgreSql;
    source.database = url.path(QUrl::FullyDecoded).mid(1);
    source.host = url.host();
    if (source.host.isEmpty()) // folders of sockets are no names of hosts
        source.host = value("host");
    source.port = qMax(0, url.port(0));
    source.user = url.userName();
    source.channel = value("channel");
    source.takeQuery(query);
    if (source.port == 0)
        source.port = value("port").toInt();
    return source;
}

//! The keywords of a connection string, in lower case, and their values without braces.
QMap<QString, QString> odbcParts(const QString &connection)
{
    static const QRegularExpression part(
        QStringLiteral(R"(\s*([^=;]+?)\s*=\s*(?:\{((?:[^}]|\}\})*)\}|([^;]*)))"));
    QMap<QString, QString> parts;
    for (auto it = part.globalMatch(connection); it.hasNext();) {
        const QRegularExpressionMatch match = it.next();
        const QString name = match.captured(1).toLower();
        if (!parts.contains(name)) // the first one counts
            parts.insert(name, match.captured(2) + match.captured(3).trimmed());
    }
    return parts;
}

QString problemOfOdbc(const QString &connection)
{
    const QMap<QString, QString> parts = odbcParts(connection);
    if (parts.isEmpty())
        return DataSource::tr("This is no connection string of ODBC, such as DSN=prices.");
    if (parts.contains(QStringLiteral("pwd")) || parts.contains(QStringLiteral("password")))
        return DataSource::tr("A password does not belong into an address: leave it out, and it is "
                              "asked for.");
    return {};
}

//! What stands behind the last question mark chooses the table: the others are ODBC's.
DataSource odbcSource(const QString &text, QString *problem)
{
    const QString address = text.mid(s_odbc.size());
    const qsizetype mark = address.lastIndexOf(u'?');
    const QString connection = address.left(mark).trimmed();
    DataSource source;
    source.engine = DataEngine::Odbc;
    const QString wrong = problemOfOdbc(connection);
    if (problem)
        *problem = wrong;
    if (!wrong.isEmpty())
        return source;
    source.database = connection;
    if (mark >= 0)
        source.takeQuery(QUrlQuery(address.mid(mark + 1)));
    return source;
}

//! The name of a data source, else that of its database, and where that is.
QString odbcName(const QString &connection)
{
    const QMap<QString, QString> parts = odbcParts(connection);
    const auto first = [&](std::initializer_list<const char *> names) {
        for (const char *name : names) {
            if (const QString value = parts.value(QLatin1String(name)); !value.isEmpty())
                return value;
        }
        return QString();
    };
    const QString source = first({"dsn", "filedsn"});
    if (!source.isEmpty())
        return source;
    const QString database = first({"database", "db", "dbq"}).section(u'/', -1);
    const QString server = first({"server", "servername", "host"});
    if (database.isEmpty())
        return server.isEmpty() ? first({"driver"}) : server;
    return server.isEmpty() || server.startsWith(u'/') ? database : database + u'@' + server;
}

} // namespace

bool isSqliteFile(const QString &path)
{
    if (!QFileInfo(path).isFile()) // a pipe would lose what is looked at
        return false;
    QFile file(path);
    return file.open(QIODevice::ReadOnly | QIODevice::Unbuffered)
        && file.read(s_headerSize) == QByteArray("SQLite format 3", s_headerSize);
}

std::optional<DataSource> DataSource::fromText(const QString &text, QString *problem)
{
    if (text.startsWith(s_odbc))
        return odbcSource(text, problem);
    if (!isServerUrl(text)) {
        if (!isSqliteFile(text))
            return {};
        DataSource source;
        source.database = QFileInfo(text).absoluteFilePath();
        return source;
    }
    const QUrl url(text, QUrl::StrictMode);
    const QUrlQuery query(url);
    const QString wrong = problemOf(url, query);
    if (problem)
        *problem = wrong;
    return wrong.isEmpty() ? sourceOf(url, query) : DataSource {DataEngine::PostgreSql};
}

void DataSource::takeQuery(const QUrlQuery &query)
{
    const auto value = [&](const char *name) {
        return query.queryItemValue(QLatin1String(name), QUrl::FullyDecoded);
    };
    table = value("table");
    sql = value("sql");
    key = value("key").split(u',', Qt::SkipEmptyParts);
}

QString DataSource::text() const
{
    if (engine == DataEngine::Odbc) // or its own question mark would be the last one
        return s_odbc + database + (database.contains(u'?') ? QLatin1String("?") : QLatin1String());
    if (engine == DataEngine::Sqlite)
        return database;
    QUrl url;
    url.setScheme(QStringLiteral("postgresql"));
    url.setUserName(user);
    url.setPath(u'/' + database);
    QUrlQuery query;
    if (host.startsWith(u'/'))
        query.addQueryItem(QStringLiteral("host"), host);
    else
        url.setHost(host);
    if (port > 0 && !url.host().isEmpty())
        url.setPort(port);
    else if (port > 0)
        query.addQueryItem(QStringLiteral("port"), QString::number(port));
    if (!channel.isEmpty())
        query.addQueryItem(QStringLiteral("channel"), channel);
    if (!query.isEmpty())
        url.setQuery(query);
    const QString text = url.toString(QUrl::FullyEncoded);
    const QLatin1String scheme("postgresql:/");
    const bool hasHost = text.startsWith(QLatin1String("postgresql://"));
    return hasHost ? text : QLatin1String("postgresql:///") + text.mid(scheme.size());
}

QString DataSource::name() const
{
    if (engine == DataEngine::Sqlite)
        return QFileInfo(database).fileName();
    if (engine == DataEngine::Odbc)
        return odbcName(database);
    return host.isEmpty() || host.startsWith(u'/') ? database : database + u'@' + host;
}
