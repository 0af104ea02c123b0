// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "odbcschema.h"

#include "dataconnection.h"

#include <QRegularExpression>
#include <QSqlDriver>
#include <QSqlField>
#include <QSqlIndex>
#include <QSqlQuery>
#include <QSqlRecord>

#include <algorithm>
#include <initializer_list>

namespace {

constexpr int s_binaryDigits = 17; // that a binary number is told from all others by

bool isWholeType(int type)
{
    const std::initializer_list<int> types {
        QMetaType::Char,   QMetaType::SChar,    QMetaType::UChar,    QMetaType::Short,
        QMetaType::UShort, QMetaType::Int,      QMetaType::UInt,     QMetaType::Long,
        QMetaType::ULong,  QMetaType::LongLong, QMetaType::ULongLong};
    return std::find(types.begin(), types.end(), type) != types.end();
}

bool isTimeType(int type)
{
    return type == QMetaType::QDate || type == QMetaType::QTime || type == QMetaType::QDateTime;
}

//! Drivers call both kinds of numbers the same. Binary ones have no digits behind a point, and a
//! length in bits, or in the digits that are sure.
bool isDecimal(const QSqlField &field)
{
    const bool isBinaryLength = field.length() <= s_binaryDigits || field.length() == 24
        || field.length() == 53 || field.length() == 54;
    return field.precision() > 0 || !isBinaryLength;
}

//! As standard SQL names it, for the user.
QString standardTypeName(const QSqlField &field)
{
    switch (field.metaType().id()) {
    case QMetaType::QString:
        return field.length() > 0 ? QStringLiteral("VARCHAR(%1)").arg(field.length())
                                  : QStringLiteral("VARCHAR");
    case QMetaType::QByteArray:
        return QStringLiteral("VARBINARY");
    case QMetaType::QDate:
        return QStringLiteral("DATE");
    case QMetaType::QTime:
        return QStringLiteral("TIME");
    case QMetaType::QDateTime:
        return QStringLiteral("TIMESTAMP");
    case QMetaType::Float:
        return QStringLiteral("REAL");
    case QMetaType::Double:
        return isDecimal(field)
            ? QStringLiteral("DECIMAL(%1, %2)").arg(field.length()).arg(qMax(0, field.precision()))
            : QStringLiteral("DOUBLE PRECISION");
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
        return QStringLiteral("BIGINT");
    default:
        return QStringLiteral("INTEGER");
    }
}

//! Qt reads whole numbers of 32 bits, where drivers have more, and times to the millisecond.
DataColumn odbcColumn(const QSqlField &field)
{
    const int type = field.metaType().id();
    DataColumn column {field.name(), standardTypeName(field)};
    column.isWhole = isWholeType(type);
    column.isNumeric = column.isWhole || type == QMetaType::Double || type == QMetaType::Float;
    column.isBinary = type == QMetaType::QByteArray;
    column.isNullable = field.requiredStatus() != QSqlField::Required;
    column.isReadAsText = column.isWhole || isTimeType(type) || type == QMetaType::Float
        || (type == QMetaType::Double && isDecimal(field));
    return column;
}

QString castToText(const DataTable &table, const QString &value)
{
    return QString(table.dialect.asText).replace(QLatin1String("%1"), value);
}

QString firstColumn(const DataTable &table)
{
    return table.dialect.quoted(table.columns.first().name);
}

//! Of each of these the first one that the engine takes.
void findLimit(DataConnection &connection, DataTable *table)
{
    using Limit = DataDialect::Limit;
    for (const Limit limit : {Limit::AtEnd, Limit::Fetch, Limit::Top}) {
        DataDialect tried = table->dialect;
        tried.limit = limit;
        if (connection.understands(
                tried.select(firstColumn(*table) + QLatin1String(" FROM ") + table->relation, 1))) {
            table->dialect.limit = limit;
            return;
        }
    }
}

bool understandsWhere(DataConnection &connection, const DataTable &table, const QString &what,
                      const QString &condition = {})
{
    return connection.understands(QLatin1String("SELECT ") + what + QLatin1String(" FROM ")
                                  + table.relation + QLatin1String(" WHERE 1 = 0") + condition);
}

void findCast(DataConnection &connection, DataTable *table)
{
    for (const char *cast : {"CAST(%1 AS VARCHAR(4000))", "CAST(%1 AS CHAR(4000))"}) {
        table->dialect.asText = QLatin1String(cast);
        if (understandsWhere(connection, *table, castToText(*table, firstColumn(*table))))
            return;
    }
}

void findContains(DataConnection &connection, DataTable *table)
{
    for (const char *how :
         {"POSITION(%2 IN %1) > 0", "INSTR(%1, %2) > 0", "CHARINDEX(%2, %1) > 0"}) {
        QString condition = QLatin1String(how);
        condition.replace(QLatin1String("%1"), castToText(*table, firstColumn(*table)));
        condition.replace(QLatin1String("%2"), QLatin1String("'a'"));
        if (understandsWhere(connection, *table, QStringLiteral("COUNT(*)"),
                             QLatin1String(" AND ") + condition)) {
            table->dialect.contains = QLatin1String(how);
            return;
        }
    }
}

//! Some drivers make texts of binary numbers on the way, and lose digits: what was read is not
//! found again. Numbers are then ordered, and compared, by what is left of them.
void findBinaryNumbers(DataConnection &connection, DataTable *table)
{
    const QString third = QStringLiteral("CAST(1 AS DOUBLE PRECISION) / 3");
    const QString from = QLatin1String(" FROM ") + table->relation;
    QVariant read;
    connection.each({table->dialect.select(third + from, 1), {}}, [&](const QSqlQuery &row) {
        read = row.value(0);
        return false;
    });
    bool isFound = !read.isValid(); // nothing to be read again
    connection.each(
        {table->dialect.select(
             third + from + QLatin1String(" WHERE ") + third + QLatin1String(" = ?"), 1),
         {read}},
        [&](const QSqlQuery &) {
            isFound = true;
            return false;
        });
    if (isFound)
        return;
    table->dialect.orderedBinary =
        QLatin1String("CAST(") + table->dialect.asText + QLatin1String(" AS DOUBLE PRECISION)");
    table->dialect.comparesShown = true;
}

void findDialect(DataConnection &connection, DataTable *table)
{
    findLimit(connection, table);
    findCast(connection, table);
    findContains(connection, table);
    findBinaryNumbers(connection, table);
    table->dialect.numbersRows = connection.understands(
        QLatin1String("SELECT n FROM (SELECT row_number() OVER (ORDER BY ") + firstColumn(*table)
        + QLatin1String(") AS n FROM ") + table->relation
        + QLatin1String(" WHERE 1 = 0) numbered WHERE n % 2 = 0 ORDER BY n"));
}

//! Whether the engine's texts of \a column are those of ISO 8601, by which it can be compared; they
//! are, where there are no values yet.
bool hasStandardTimes(DataConnection &connection, const DataTable &table, const DataColumn &column)
{
    static const QRegularExpression standard(
        QStringLiteral(R"(^(\d{4,}-\d\d-\d\d)?([ T]?\d\d:\d\d(:\d\d.*)?)?$)"));
    const QString name = table.dialect.quoted(column.name);
    QString text;
    connection.each(
        {table.dialect.select(castToText(table, name) + QLatin1String(" FROM ") + table.relation
                                  + QLatin1String(" WHERE ") + name + QLatin1String(" IS NOT NULL"),
                              1),
         {}},
        [&](const QSqlQuery &row) {
            text = row.value(0).toString();
            return false;
        });
    return standard.match(text.trimmed()).hasMatch();
}

void findTimes(DataConnection &connection, DataTable *table)
{
    for (DataColumn &column : table->columns) {
        const bool isTime =
            column.isReadAsText && !column.isNumeric; // those alone are read so without numbers
        column.isOrdered = !isTime || hasStandardTimes(connection, *table, column);
    }
}

bool isFoundAgain(const DataDialect &dialect, const DataColumn &column)
{
    const bool isBinaryNumber = column.isNumeric && !column.isReadAsText;
    return column.isOrdered && (!isBinaryNumber || dialect.orderedBinary.isEmpty());
}

void findKey(DataConnection &connection, const QString &name, DataTable *table)
{
    const QSqlIndex index = connection.database().primaryIndex(name);
    for (int i = 0; i < index.count(); ++i) {
        const auto column =
            std::find_if(table->columns.cbegin(), table->columns.cend(),
                         [&](const DataColumn &known) { return known.name == index.fieldName(i); });
        if (column == table->columns.cend() || !isFoundAgain(table->dialect, *column)) {
            table->key.clear();
            return;
        }
        table->key << table->dialect.quoted(column->name);
    }
}

//! A name with a point is one name if there is such a table, else that of a schema and a table.
QString relationOf(DataConnection &connection, const DataTable &table)
{
    return OdbcSchema::tables(connection).contains(table.name)
        ? table.dialect.quoted(table.name)
        : connection.database().driver()->escapeIdentifier(table.name, QSqlDriver::TableName);
}

//! One character, or nothing where the driver knows no quotes.
QString quoteOf(DataConnection &connection)
{
    const QString quoted = connection.database().driver()->escapeIdentifier(QStringLiteral("x"),
                                                                            QSqlDriver::FieldName);
    return quoted.left(quoted.indexOf(u'x'));
}

} // namespace

QStringList OdbcSchema::tables(DataConnection &connection)
{
    QStringList tables = connection.database().tables(QSql::Tables);
    QStringList views = connection.database().tables(QSql::Views);
    tables.sort();
    views.sort();
    return tables + views;
}

DataTable OdbcSchema::describe(DataConnection &connection, const DataSource &source,
                               DataProblem *problem)
{
    DataTable table {DataDialect::of(DataEngine::Odbc), source.table};
    table.dialect.quote = quoteOf(connection);
    const bool isQuery = !source.sql.isEmpty();
    if (isQuery)
        table.name = DataSource::tr("Query");
    table.relation =
        isQuery ? u'(' + source.sql + QLatin1String("\n) asked") : relationOf(connection, table);
    QSqlRecord record;
    *problem = connection.columns(
        {QLatin1String("SELECT * FROM ") + table.relation + QLatin1String(" WHERE 1 = 0"), {}},
        &record);
    for (int i = 0; i < record.count(); ++i)
        table.columns.append(odbcColumn(record.field(i)));
    if (*problem || table.columns.isEmpty())
        return table;
    findDialect(connection, &table);
    findTimes(connection, &table);
    if (!isQuery)
        findKey(connection, source.table, &table);
    return table;
}
