// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "datacopy.h"

#include "datacell.h"

#include <QDir>
#include <QSqlError>
#include <QSqlQuery>

namespace {

constexpr int s_rowsSeenTogether = 5000; // that others see together

//! Numbers of servers that have more digits than SQLite's are texts of a kind of their own.
QString typeInCopy(const DataColumn &column)
{
    if (column.isBinary)
        return QStringLiteral("BLOB");
    if (column.type.isEmpty())
        return {};
    return column.isNumeric
        ? column.isWhole ? QStringLiteral("INTEGER") : QStringLiteral("DECIMAL_TEXT")
        : QStringLiteral("TEXT");
}

QStringList distinctColumns(const QList<DataColumn> &columns)
{
    QStringList names;
    for (const DataColumn &column : columns) {
        QString name = column.name;
        for (int i = 2; names.contains(name, Qt::CaseInsensitive); ++i)
            name = column.name + u'_' + QString::number(i);
        names << name;
    }
    return names;
}

DataProblem problemOf(const QSqlError &error)
{
    return {DataProblem::Kind::Refused, error.databaseText()};
}

} // namespace

DataCopy::DataCopy(const DataSource &source, const DataTable &table, const QString &folder)
    : m_from(source)
    , m_table(table)
    , m_folder(QDir(folder).filePath(QStringLiteral("vantix-XXXXXX")))
    , m_names(distinctColumns(table.columns))
{
}

DataCopy::~DataCopy()
{
    m_isCancelled = true;
    if (!m_thread)
        return;
    while (!m_thread->wait(50))
        m_connection.cancel();
}

void DataCopy::start()
{
    m_thread.reset(QThread::create([this] {
        const DataProblem problem = copy();
        m_connection.close();
        QMetaObject::invokeMethod(
            this, [this, problem] { Q_EMIT finished(problem); }, Qt::QueuedConnection);
    }));
    m_thread->start();
}

DataSource DataCopy::source() const
{
    DataSource source;
    source.database = m_folder.filePath(QStringLiteral("rows.sqlite"));
    source.table = QStringLiteral("rows");
    return source;
}

QString DataCopy::definition() const
{
    QStringList columns;
    const DataDialect dialect = DataDialect::of(DataEngine::Sqlite);
    for (qsizetype i = 0; i < m_names.size(); ++i)
        columns << dialect.quoted(m_names.at(i)) + u' ' + typeInCopy(m_table.columns.at(i));
    return QLatin1String("CREATE TABLE rows (") + columns.join(QLatin1String(", ")) + u')';
}

//! Where numbers have more digits than Qt reads, their text.
SqlText DataCopy::rowsOf() const
{
    if (m_table.dialect.engine == DataEngine::Sqlite)
        return {QLatin1String("SELECT * FROM ") + m_table.relation, {}};
    QStringList columns;
    for (int column = 0; column < m_table.columns.size(); ++column)
        columns << plainValue(m_table, column);
    return {QLatin1String("SELECT ") + columns.join(QLatin1String(", ")) + QLatin1String(" FROM ")
                + m_table.relation,
            {}};
}

//! SQLite would write binary numbers as texts of fewer digits.
QVariant DataCopy::copied(const QVariant &value) const
{
    const bool isBinary = !m_table.dialect.writesCells && value.typeId() == QMetaType::Double;
    return isBinary ? QVariant(DataCell::plainText(value)) : value;
}

DataProblem DataCopy::copy()
{
    const DataProblem problem = m_connection.open(m_from);
    if (problem)
        return problem;
    const QString name = QStringLiteral("vantix-copy-%1").arg(quintptr(this));
    DataProblem written;
    {
        QSqlDatabase to = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), name);
        to.setDatabaseName(source().database);
        written = to.open() ? write(m_connection, to) : problemOf(to.lastError());
    }
    QSqlDatabase::removeDatabase(name);
    return written;
}

DataProblem DataCopy::write(DataConnection &from, QSqlDatabase &to)
{
    QSqlQuery insert(to);
    // Nothing is lost with it: it is a copy, and goes at the end.
    insert.exec(QStringLiteral("PRAGMA journal_mode = WAL"));
    insert.exec(QStringLiteral("PRAGMA synchronous = OFF"));
    if (!insert.exec(definition()))
        return problemOf(insert.lastError());
    QMetaObject::invokeMethod(this, &DataCopy::ready, Qt::QueuedConnection);
    QStringList places;
    places.fill(QStringLiteral("?"), m_names.size());
    insert.prepare(QLatin1String("INSERT INTO rows VALUES (") + places.join(u',') + u')');
    to.transaction();
    DataProblem problem;
    const DataProblem read = from.each(rowsOf(), [&](const QSqlQuery &row) {
        for (int i = 0; i < m_names.size(); ++i)
            insert.bindValue(i, row.isNull(i) ? QVariant() : copied(row.value(i)));
        if (!insert.exec()) {
            problem = problemOf(insert.lastError());
            return false;
        }
        if (++m_rows % s_rowsSeenTogether == 0 && to.commit())
            to.transaction();
        return !m_isCancelled;
    });
    to.commit();
    return read ? read : problem;
}
