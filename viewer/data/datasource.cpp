// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "datasource.h"

#include <QFile>
#include <QFileInfo>
#include <QUrl>
#include <QUrlQuery>

namespace {

constexpr int s_headerSize = 16; // with the zero at its end

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
    source.table = value("table");
    source.sql = value("sql");
    source.channel = value("channel");
    source.key = value("key").split(u',', Qt::SkipEmptyParts);
    if (source.port == 0)
        source.port = value("port").toInt();
    return source;
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

QString DataSource::text() const
{
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
    return host.isEmpty() || host.startsWith(u'/') ? database : database + u'@' + host;
}
