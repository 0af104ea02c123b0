// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "datadialect.h"

namespace {

//! Any value may be in any column, whatever the column's type is.
DataDialect sqliteDialect()
{
    DataDialect dialect;
    // What stands between double quotes is a text where there is no such column.
    dialect.quote = QStringLiteral("`");
    dialect.asText = QStringLiteral("CAST(%1 AS TEXT)");
    dialect.textCell =
        QStringLiteral("CASE typeof(%1) WHEN 'null' THEN NULL WHEN 'blob' THEN 'b' || "
                       "length(%1) || ':' || hex(substr(%1, 1, %3)) WHEN 'text' THEN 't' || "
                       "substr(%1, 1, %2) ELSE 'n' || %1 END");
    dialect.binaryCell = dialect.textCell;
    dialect.numberCell = dialect.textCell;
    dialect.exactCell = QStringLiteral("'n' || %1");
    dialect.contains = QStringLiteral("instr(%1, %2) > 0");
    dialect.anyCase = QStringLiteral("lower(%1)");
    dialect.matches = QStringLiteral("%1 REGEXP ?");
    dialect.matchesAnyCase = dialect.matches;
    dialect.anyCasePrefix = QStringLiteral("(?i)");
    dialect.wordEdge = QStringLiteral("\\b");
    dialect.comparesShown = true;
    dialect.sums = QStringLiteral(
        "count(*), total(typeof(%1) IN ('integer', 'real')), total(typeof(%1) = 'real'), "
        "sum(CASE typeof(%1) WHEN 'integer' THEN %1 >> 32 END), "
        "sum(CASE typeof(%1) WHEN 'integer' THEN %1 & 4294967295 END), "
        "CAST(min(CASE WHEN typeof(%1) IN ('integer', 'real') THEN %1 END) AS TEXT), "
        "CAST(max(CASE WHEN typeof(%1) IN ('integer', 'real') THEN %1 END) AS TEXT)");
    dialect.firstPart = qint64(1) << 32;
    dialect.notInSums = QStringLiteral("typeof(%1) = 'real'");
    return dialect;
}

DataDialect serverDialect()
{
    DataDialect dialect;
    dialect.engine = DataEngine::PostgreSql;
    dialect.quote = QStringLiteral("\"");
    dialect.asText = QStringLiteral("CAST(%1 AS TEXT)");
    dialect.binaryCell = QStringLiteral("'b' || octet_length(%1) || ':' || "
                                        "encode(substring(%1 FROM 1 FOR %3), 'hex')");
    dialect.numberCell = QStringLiteral("'n' || CAST(%1 AS TEXT)");
    dialect.textCell = QStringLiteral("'t' || left(CAST(%1 AS TEXT), %2)");
    dialect.exactCell = dialect.numberCell;
    dialect.contains = QStringLiteral("strpos(%1, %2) > 0");
    dialect.anyCase = QStringLiteral("lower(%1)");
    dialect.matches = QStringLiteral("%1 ~ ?");
    dialect.matchesAnyCase = QStringLiteral("%1 ~* ?");
    dialect.wordEdge = QStringLiteral("\\y");
    dialect.hasNullsFirst = false;
    dialect.castsParameters = true;
    // A text first: other numbers lose digits on their way from binary ones.
    dialect.binaryAsDecimal = QStringLiteral("CAST(%1 AS TEXT)");
    dialect.sums = QStringLiteral("count(*), count(%1), 0, CAST(sum(CAST(%2 AS numeric)) AS TEXT), "
                                  "0, CAST(min(%1) AS TEXT), CAST(max(%1) AS TEXT)");
    return dialect;
}

//! What any engine may be expected to know; what it knows beyond that is found out.
DataDialect odbcDialect()
{
    DataDialect dialect;
    dialect.engine = DataEngine::Odbc;
    dialect.quote = QStringLiteral("\"");
    dialect.asText = QStringLiteral("CAST(%1 AS VARCHAR(4000))");
    dialect.binaryCell = QStringLiteral("%1");
    dialect.numberCell = dialect.binaryCell;
    dialect.textCell = dialect.binaryCell;
    dialect.exactCell = dialect.binaryCell;
    dialect.writesCells = false;
    dialect.contains = QStringLiteral("%1 LIKE %2 ESCAPE '!'");
    dialect.anyCase = QStringLiteral("LOWER(%1)");
    dialect.limit = DataDialect::Limit::None;
    dialect.skipsRows = false;
    dialect.comparesRows = false;
    dialect.numbersRows = false;
    dialect.ordersNulls = false;
    dialect.notInSums = QStringLiteral("%1 IS NOT NULL");
    return dialect;
}

} // namespace

DataDialect DataDialect::of(DataEngine engine)
{
    switch (engine) {
    case DataEngine::Sqlite:
        return sqliteDialect();
    case DataEngine::PostgreSql:
        return serverDialect();
    case DataEngine::Odbc:
        break;
    }
    return odbcDialect();
}

QString DataDialect::quoted(const QString &name) const
{
    QString doubled = name;
    return quote + doubled.replace(quote, quote + quote) + quote;
}

QString DataDialect::select(const QString &rest, int rows, int skipped) const
{
    const QString count = QString::number(rows);
    switch (limit) {
    case Limit::AtEnd:
        return QLatin1String("SELECT ") + rest + QLatin1String(" LIMIT ") + count
            + (skipped > 0 ? QLatin1String(" OFFSET ") + QString::number(skipped) : QString());
    case Limit::Fetch:
        return QLatin1String("SELECT ") + rest + QLatin1String(" FETCH FIRST ") + count
            + QLatin1String(" ROWS ONLY");
    case Limit::Top:
        return QLatin1String("SELECT TOP ") + count + u' ' + rest;
    case Limit::None:
        break;
    }
    return QLatin1String("SELECT ") + rest;
}
