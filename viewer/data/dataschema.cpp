// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "dataschema.h"

#include "dataconnection.h"
#include "odbcschema.h"

#include <QFileInfo>
#include <QSqlQuery>
#include <QSqlRecord>

#include <algorithm>

namespace {

constexpr qint64 s_smallestRow = 4; // bytes that a row takes at least
constexpr qint64 s_usualRow = 100;  // bytes, where nothing is known

bool isBinaryType(const QString &type)
{
    return type == QLatin1String("bytea");
}

//! Of SQLite columns anything may be in any; these say that they have no numbers.
bool mayHaveNumbers(const QString &type)
{
    const QStringList others {QStringLiteral("CHAR"), QStringLiteral("CLOB"),
                              QStringLiteral("TEXT"), QStringLiteral("BLOB"),
                              QStringLiteral("DATE"), QStringLiteral("TIME"),
                              QStringLiteral("JSON"), QStringLiteral("BOOL")};
    return std::none_of(others.begin(), others.end(), [&](const QString &other) {
        return type.contains(other, Qt::CaseInsensitive);
    });
}

bool isServerNumber(const QString &type)
{
    static const QStringList numbers {
        QStringLiteral("smallint"), QStringLiteral("integer"), QStringLiteral("bigint"),
        QStringLiteral("real"),     QStringLiteral("numeric"), QStringLiteral("double precision")};
    return numbers.contains(type);
}

bool isWholeNumber(const QString &type)
{
    return type == QLatin1String("smallint") || type == QLatin1String("integer")
        || type == QLatin1String("bigint");
}

//! Of a server's types.
bool isOrderedType(const QString &type)
{
    static const QStringList others {
        QStringLiteral("xml"),  QStringLiteral("point"),  QStringLiteral("polygon"),
        QStringLiteral("path"), QStringLiteral("line"),   QStringLiteral("lseg"),
        QStringLiteral("box"),  QStringLiteral("circle"), QStringLiteral("xid")};
    return !type.startsWith(QLatin1String("json")) && !others.contains(type);
}

DataColumn columnOf(DataEngine engine, const QString &name, const QString &type, bool isNullable)
{
    DataColumn column {name, type};
    column.isNullable = isNullable;
    column.isBinary = isBinaryType(type);
    column.isExact = engine == DataEngine::Sqlite && type == QLatin1String("DECIMAL_TEXT");
    column.isNumeric = engine == DataEngine::Sqlite ? column.isExact || mayHaveNumbers(type)
                                                    : isServerNumber(type);
    column.isWhole = isWholeNumber(type);
    column.isOrdered = engine == DataEngine::Sqlite || isOrderedType(type);
    return column;
}

QString query(const DataSource &source)
{
    return u'(' + source.sql + QLatin1String("\n) AS asked");
}

//! The columns that \a source names as key of \a table, which may have none of its own.
void takeGivenKey(const DataSource &source, DataTable *table)
{
    if (source.key.isEmpty())
        return;
    table->key.clear();
    table->keyTypes.clear();
    for (const QString &name : source.key) {
        const auto column =
            std::find_if(table->columns.cbegin(), table->columns.cend(),
                         [&](const DataColumn &known) { return known.name == name; });
        table->key << table->dialect.quoted(name);
        table->keyTypes << (column == table->columns.cend() ? QString() : column->type);
    }
    table->hasIntegerKey = table->key.size() == 1
        && (isWholeNumber(table->keyTypes.first())
            || table->keyTypes.first().contains(QLatin1String("INT")));
}

//! The column that alone tells rows apart; −1 if it takes several.
int keyColumnOf(const DataTable &table)
{
    for (int column = 0; table.key.size() == 1 && column < table.columns.size(); ++column) {
        if (table.dialect.quoted(table.columns.at(column).name) == table.key.first())
            return column;
    }
    return -1;
}

// --- SQLite

QString sqliteRowid(DataConnection &connection, const DataTable &table)
{
    for (const char *name : {"rowid", "_rowid_", "oid"}) {
        const bool isTaken = std::any_of(
            table.columns.cbegin(), table.columns.cend(), [&](const DataColumn &column) {
                return column.name.compare(QLatin1String(name), Qt::CaseInsensitive) == 0;
            });
        DataProblem problem;
        if (!isTaken)
            connection.rows({QLatin1String("SELECT ") + QLatin1String(name)
                                 + QLatin1String(" FROM ") + table.relation
                                 + QLatin1String(" LIMIT 1"),
                             {}},
                            &problem);
        if (!isTaken && !problem)
            return QLatin1String(name);
    }
    return {};
}

//! What the rows of \a table can be at most, were they as small as can be, or what was counted
//! when the database was analysed.
qint64 sqliteEstimate(DataConnection &connection, const DataTable &table)
{
    const qint64 size = QFileInfo(connection.source().database).size();
    if (!table.hasIntegerKey)
        return qMax<qint64>(1, size / s_usualRow);
    const QString key = table.key.first();
    const QString from = QLatin1String(") FROM ") + table.relation;
    const auto rows = connection.rows({QLatin1String("SELECT (SELECT min(") + key + from
                                           + QLatin1String("), (SELECT max(") + key + from + u')',
                                       {}});
    if (rows.isEmpty() || rows.first().first().isNull())
        return 0;
    const double span = rows.first().at(1).toDouble() - rows.first().first().toDouble() + 1;
    return qint64(qMin(span, double(qMax<qint64>(size / s_smallestRow, 1))));
}

void describeSqliteColumns(DataConnection &connection, const QString &name, DataTable *table,
                           DataProblem *problem)
{
    const auto columns = connection.rows(
        {QStringLiteral("SELECT name, type, \"notnull\", pk, hidden FROM pragma_table_xinfo(?)"),
         {name}},
        problem);
    QList<std::pair<int, int>> key; // place in the key, column
    for (const QVariantList &column : columns) {
        if (column.at(4).toInt() == 1) // of a virtual table, not for "*"
            continue;
        if (column.at(3).toInt() > 0)
            key.append({column.at(3).toInt(), int(table->columns.size())});
        table->columns.append(columnOf(DataEngine::Sqlite, column.at(0).toString(),
                                       column.at(1).toString(), !column.at(2).toBool()));
    }
    std::sort(key.begin(), key.end());
    for (const auto &[place, column] : std::as_const(key)) {
        table->key << table->dialect.quoted(table->columns.at(column).name);
        table->keyTypes << table->columns.at(column).type;
    }
}

void describeSqliteQuery(DataConnection &connection, DataTable *table, DataProblem *problem)
{
    QSqlQuery probe(connection.database());
    *problem = connection.each(
        {QLatin1String("SELECT * FROM ") + table->relation + QLatin1String(" LIMIT 1"), {}},
        [](const QSqlQuery &) { return false; });
    if (*problem
        || !probe.prepare(QLatin1String("SELECT * FROM ") + table->relation
                          + QLatin1String(" LIMIT 0"))
        || !probe.exec())
        return;
    const QSqlRecord record = probe.record();
    for (int i = 0; i < record.count(); ++i)
        table->columns.append(columnOf(DataEngine::Sqlite, record.fieldName(i), {}, true));
}

DataTable describeSqlite(DataConnection &connection, const DataSource &source, DataProblem *problem)
{
    DataTable table {DataDialect::of(DataEngine::Sqlite), source.table};
    if (!source.sql.isEmpty()) {
        table.name = DataSource::tr("Query");
        table.relation = query(source);
        describeSqliteQuery(connection, &table, problem);
        takeGivenKey(source, &table);
        return table;
    }
    table.relation = table.dialect.quoted(source.table);
    const auto kind = connection.rows(
        {QStringLiteral("SELECT type FROM sqlite_master WHERE lower(name) = lower(?) AND type IN "
                        "('table', 'view')"),
         {source.table}},
        problem);
    if (!*problem && kind.isEmpty())
        *problem = {DataProblem::Kind::Refused,
                    DataSource::tr("There is no table “%1”.").arg(source.table)};
    if (*problem)
        return table;
    describeSqliteColumns(connection, source.table, &table, problem);
    const bool isView = kind.first().first() == QLatin1String("view");
    const QString rowid = isView ? QString() : sqliteRowid(connection, table);
    if (!rowid.isEmpty()) {
        // That very type makes a primary key another name of the row's own number.
        if (table.keyTypes == QStringList {QStringLiteral("INTEGER")})
            table.keyColumn = keyColumnOf(table);
        table.key = {rowid};
        table.keyTypes = {QStringLiteral("INTEGER")};
        table.hasIntegerKey = true;
    }
    if (!isView && rowid.isEmpty())
        table.keyColumn = keyColumnOf(table);
    takeGivenKey(source, &table);
    if (!table.key.isEmpty())
        table.estimate = sqliteEstimate(connection, table);
    return table;
}

// --- PostgreSQL

//! The tables p that have the rows of \a table: itself, or its partitions, which may be on other
//! servers. What is asked of them as a whole, the server knows of each of them only.
QString partsOf(const QString &table)
{
    return QStringLiteral("(WITH RECURSIVE part(oid) AS (SELECT CAST(%1 AS oid) UNION SELECT "
                          "inhrelid FROM pg_inherits JOIN part ON inhparent = part.oid) SELECT "
                          "r.oid, r.relkind, r.reltuples FROM part JOIN pg_class r ON r.oid = "
                          "part.oid) AS p WHERE p.relkind <> 'p'")
        .arg(table);
}

//! Primary key, else the columns of an index that tell rows apart.
void describeServerKey(DataConnection &connection, const QVariant &oid, DataTable *table)
{
    const auto key = connection.rows(
        {QStringLiteral(
             "SELECT a.attname, format_type(a.atttypid, NULL) FROM (SELECT indexrelid, indkey "
             "FROM pg_index i WHERE indrelid = CAST(? AS oid) AND indisunique AND indisvalid AND "
             "indpred IS NULL AND indexprs IS NULL AND NOT EXISTS (SELECT 1 FROM pg_attribute n "
             "WHERE n.attrelid = i.indrelid AND n.attnum = ANY (i.indkey) AND NOT n.attnotnull) "
             "ORDER BY indisprimary DESC, indnkeyatts LIMIT 1) AS best, unnest(best.indkey) WITH "
             "ORDINALITY AS k(number, place) JOIN pg_attribute a ON a.attnum = k.number AND "
             "a.attrelid = CAST(? AS oid) ORDER BY k.place"),
         {oid, oid}});
    for (const QVariantList &column : key) {
        table->key << table->dialect.quoted(column.at(0).toString());
        table->keyTypes << column.at(1).toString();
    }
    table->hasIntegerKey = table->key.size() == 1 && isWholeNumber(table->keyTypes.first());
}

void describeServerColumns(DataConnection &connection, const QVariant &oid, DataTable *table)
{
    const auto columns = connection.rows(
        {QStringLiteral("SELECT attname, format_type(atttypid, NULL), attnotnull FROM "
                        "pg_attribute WHERE attrelid = CAST(? AS oid) AND attnum > 0 AND NOT "
                        "attisdropped ORDER BY attnum"),
         {oid}});
    for (const QVariantList &column : columns)
        table->columns.append(columnOf(DataEngine::PostgreSql, column.at(0).toString(),
                                       column.at(1).toString(), !column.at(2).toBool()));
}

//! What it has for each of its columns: their types stand in a row of NULLs.
void describeServerQuery(DataConnection &connection, DataTable *table, DataProblem *problem)
{
    QSqlQuery probe(connection.database());
    const QString nothing =
        QLatin1String("SELECT * FROM ") + table->relation + QLatin1String(" LIMIT 0");
    *problem = connection.each({nothing, {}}, [](const QSqlQuery &) { return false; });
    if (*problem || !probe.exec(nothing))
        return;
    const QSqlRecord record = probe.record();
    QStringList types;
    for (int i = 0; i < record.count(); ++i)
        types << QLatin1String("CAST(pg_typeof(asked.") + table->dialect.quoted(record.fieldName(i))
                + QLatin1String(") AS text)");
    const auto row = connection.rows({QLatin1String("SELECT ") + types.join(QLatin1String(", "))
                                          + QLatin1String(" FROM (SELECT 1) AS one LEFT JOIN ")
                                          + table->relation + QLatin1String(" ON false"),
                                      {}},
                                     problem);
    for (int i = 0; i < record.count() && !row.isEmpty(); ++i)
        table->columns.append(columnOf(DataEngine::PostgreSql, record.fieldName(i),
                                       row.first().at(i).toString(), true));
}

//! As the server's statistics have it; whole numbers need none.
QVariantList serverHistogram(DataConnection &connection, const QVariant &oid,
                             const DataTable &table)
{
    if (table.keyColumn < 0 || table.hasIntegerKey)
        return {};
    const auto rows = connection.rows(
        {QStringLiteral("SELECT u.bound FROM pg_stats s JOIN pg_namespace n ON n.nspname = "
                        "s.schemaname JOIN pg_class c ON c.relnamespace = n.oid AND c.relname = "
                        "s.tablename, unnest(CAST(CAST(s.histogram_bounds AS text) AS text[])) "
                        "WITH ORDINALITY AS u(bound, place) WHERE c.oid = CAST(? AS oid) AND "
                        "s.attname = ? AND s.inherited = EXISTS (SELECT 1 FROM pg_inherits WHERE "
                        "inhparent = c.oid) ORDER BY u.place"),
         {oid, table.columns.at(table.keyColumn).name}});
    QVariantList bounds;
    for (const QVariantList &row : rows)
        bounds << row.first();
    return bounds;
}

qint64 serverEstimate(const QVariantList &facts)
{
    const double rows = facts.at(1).toDouble();
    return rows > 0 ? qint64(rows) : facts.at(2).toLongLong() / s_usualRow;
}

DataTable describeServer(DataConnection &connection, const DataSource &source, DataProblem *problem)
{
    DataTable table {DataDialect::of(DataEngine::PostgreSql), source.table};
    if (!source.sql.isEmpty()) {
        table.name = DataSource::tr("Query");
        table.relation = query(source);
        describeServerQuery(connection, &table, problem);
        takeGivenKey(source, &table);
        return table;
    }
    // As it is written, or as it is called where that has capitals.
    const auto facts = connection.rows(
        {QStringLiteral("SELECT CAST(c.oid AS bigint), (SELECT sum(greatest(p.reltuples, 0)) FROM ")
             + partsOf(QStringLiteral("c.oid"))
             + QLatin1String("), (SELECT sum(pg_relation_size(p.oid)) FROM ")
             + partsOf(QStringLiteral("c.oid"))
             + QLatin1String(
                 " AND p.relkind IN ('r', 'm')), quote_ident(n.nspname) || '.' || "
                 "quote_ident(c.relname) FROM pg_class c JOIN pg_namespace n ON n.oid = "
                 "c.relnamespace WHERE c.oid = coalesce(to_regclass(quote_ident(?)), "
                 "to_regclass(CAST(? AS text)))"),
         {source.table, source.table}},
        problem);
    if (!*problem && facts.isEmpty())
        *problem = {DataProblem::Kind::Refused,
                    DataSource::tr("There is no table “%1”.").arg(source.table)};
    if (*problem)
        return table;
    const QVariant oid = facts.first().first();
    table.relation = facts.first().at(3).toString();
    describeServerColumns(connection, oid, &table);
    describeServerKey(connection, oid, &table);
    takeGivenKey(source, &table);
    table.keyColumn = keyColumnOf(table);
    table.estimate = serverEstimate(facts.first());
    table.histogram = serverHistogram(connection, oid, table);
    return table;
}

} // namespace

QStringList DataSchema::tables(DataConnection &connection, DataProblem *problem)
{
    if (connection.source().engine == DataEngine::Odbc)
        return OdbcSchema::tables(connection);
    const bool isSqlite = connection.source().engine == DataEngine::Sqlite;
    const auto rows = connection.rows(
        {isSqlite ? QStringLiteral("SELECT name FROM sqlite_master WHERE type IN ('table', "
                                   "'view') AND name NOT LIKE 'sqlite\\_%' ESCAPE '\\' ORDER BY "
                                   "type, name")
                  : QStringLiteral(
                      "SELECT CASE WHEN pg_table_is_visible(c.oid) THEN quote_ident(relname) ELSE "
                      "quote_ident(nspname) || '.' || quote_ident(relname) END FROM pg_class c "
                      "JOIN pg_namespace n ON n.oid = c.relnamespace WHERE relkind IN ('r', 'p', "
                      "'v', 'm', 'f') AND nspname NOT IN ('pg_catalog', 'information_schema') AND "
                      "nspname NOT LIKE 'pg\\_t%' AND has_table_privilege(c.oid, 'SELECT') AND NOT "
                      "relispartition ORDER BY relkind IN ('v', 'm'), 1"),
         {}},
        problem);
    QStringList names;
    for (const QVariantList &row : rows)
        names << row.first().toString();
    return names;
}

DataTable DataSchema::describe(DataConnection &connection, const DataSource &source,
                               DataProblem *problem)
{
    switch (source.engine) {
    case DataEngine::Sqlite:
        return describeSqlite(connection, source, problem);
    case DataEngine::PostgreSql:
        return describeServer(connection, source, problem);
    case DataEngine::Odbc:
        break;
    }
    DataTable table = OdbcSchema::describe(connection, source, problem);
    takeGivenKey(source, &table);
    table.keyColumn = keyColumnOf(table);
    table.hasIntegerKey = table.keyColumn >= 0 && table.columns.at(table.keyColumn).isWhole;
    return table;
}

QVariant DataSchema::version(DataConnection &connection, const DataTable &table)
{
    if (connection.source().engine == DataEngine::Odbc)
        return {};
    if (connection.source().engine == DataEngine::Sqlite) {
        const auto rows = connection.rows({QStringLiteral("PRAGMA data_version"), {}});
        return rows.isEmpty() ? QVariant() : rows.first().first();
    }
    // Nobody counts what happens on other servers.
    const auto rows = connection.rows(
        {QStringLiteral("SELECT CASE WHEN bool_and(s.relid IS NOT NULL) THEN sum(n_tup_ins) || ' ' "
                        "|| sum(n_tup_upd) || ' ' || sum(n_tup_del) END FROM (SELECT p.oid FROM ")
             + partsOf(QStringLiteral("to_regclass(CAST(? AS text))"))
             + QLatin1String(") AS parts LEFT JOIN pg_stat_all_tables s ON s.relid = parts.oid"),
         {table.relation}});
    const QVariant counted = rows.isEmpty() ? QVariant() : rows.first().first();
    return counted.isNull() ? QVariant() : counted;
}
