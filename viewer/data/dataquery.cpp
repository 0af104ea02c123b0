// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "dataquery.h"

#include "datacell.h"

#include <QRegularExpression>

#include <tuple>
#include <utility>

namespace {

SqlText operator+(SqlText left, const SqlText &right)
{
    left.text += right.text;
    left.values += right.values;
    return left;
}

void addCondition(SqlText *all, const SqlText &condition)
{
    if (condition.text.isEmpty())
        return;
    if (!all->text.isEmpty())
        all->text += QLatin1String(" AND ");
    *all = *all + condition;
}

// Types whose values have an order and are equal to what their text means.
bool isComparable(const DataColumn &column)
{
    const QString &type = column.type;
    return !type.startsWith(QLatin1String("json")) && type != QLatin1String("xml")
        && type != QLatin1String("point") && type != QLatin1String("polygon")
        && type != QLatin1String("path") && type != QLatin1String("line")
        && type != QLatin1String("lseg") && type != QLatin1String("box")
        && type != QLatin1String("circle") && type != QLatin1String("xid");
}

QString asText(const DataTable &table, int column)
{
    const QString name = quotedName(table.columns.at(column).name, table.engine);
    return QLatin1String("CAST(") + name + QLatin1String(" AS TEXT)");
}

QString sqliteCell(const QString &name)
{
    return QStringLiteral("CASE typeof(%1) WHEN 'null' THEN NULL WHEN 'blob' THEN 'b' || "
                          "length(%1) || ':' || hex(substr(%1, 1, %3)) WHEN 'text' THEN 't' || "
                          "substr(%1, 1, %2) ELSE 'n' || %1 END")
        .arg(name)
        .arg(DataCell::mostText)
        .arg(DataCell::mostBytes);
}

QString serverCell(const DataColumn &column, const QString &name)
{
    if (column.isBinary)
        return QStringLiteral("'b' || octet_length(%1) || ':' || "
                              "encode(substring(%1 FROM 1 FOR %2), 'hex')")
            .arg(name)
            .arg(DataCell::mostBytes);
    if (column.isNumeric)
        return QLatin1String("'n' || CAST(") + name + QLatin1String(" AS TEXT)");
    return QStringLiteral("'t' || left(CAST(%1 AS TEXT), %2)").arg(name).arg(DataCell::mostText);
}

QString cellExpression(const DataTable &table, const DataColumn &column)
{
    const QString name = quotedName(column.name, table.engine);
    if (table.engine == DataEngine::PostgreSql)
        return serverCell(column, name);
    return column.isExact ? QLatin1String("'n' || ") + name : sqliteCell(name);
}

QString cells(const DataTable &table)
{
    QStringList expressions;
    for (const DataColumn &column : table.columns)
        expressions << cellExpression(table, column);
    return expressions.join(QLatin1String(", "));
}

// As a regular expression; \y and \b are where words begin and end.
QString expressionOf(const DataText &sought, const QString &edge)
{
    QString text = sought.text;
    if (!sought.isExpression) {
        static const QRegularExpression special(QStringLiteral(R"(([\\^$.|?*+()\[\]{}]))"));
        text.replace(special, QStringLiteral("\\\\1"));
    }
    return sought.wholeWords ? edge + QLatin1String("(?:") + text + u')' + edge : text;
}

SqlText serverMatch(const QString &cell, const DataText &sought)
{
    if (sought.wholeWords || sought.isExpression)
        return {cell + (sought.matchesCase ? QLatin1String(" ~ ?") : QLatin1String(" ~* ?")),
                {expressionOf(sought, QStringLiteral("\\y"))}};
    if (sought.matchesCase)
        return {QLatin1String("strpos(") + cell + QLatin1String(", ?) > 0"), {sought.text}};
    return {QLatin1String("strpos(lower(") + cell + QLatin1String("), lower(?)) > 0"),
            {sought.text}};
}

SqlText sqliteMatch(const QString &cell, const DataText &sought)
{
    if (sought.wholeWords || sought.isExpression) {
        const QString expression = expressionOf(sought, QStringLiteral("\\b"));
        return {cell + QLatin1String(" REGEXP ?"),
                {sought.matchesCase ? expression : QLatin1String("(?i)") + expression}};
    }
    if (sought.matchesCase)
        return {QLatin1String("instr(") + cell + QLatin1String(", ?) > 0"), {sought.text}};
    return {QLatin1String("instr(lower(") + cell + QLatin1String("), lower(?)) > 0"),
            {sought.text}};
}

SqlText textCondition(const DataTable &table, const DataText &sought)
{
    if (sought.text.isEmpty())
        return {};
    SqlText all;
    for (const int column : sought.columns) {
        const QString cell = asText(table, column);
        all.text += all.text.isEmpty() ? QLatin1String("(") : QLatin1String(" OR ");
        all = all
            + (table.engine == DataEngine::Sqlite ? sqliteMatch(cell, sought)
                                                  : serverMatch(cell, sought));
    }
    return all.text.isEmpty() ? SqlText {QStringLiteral("1 = 0"), {}}
                              : SqlText {all.text + u')', all.values};
}

// A number with a point is compared by the text that the engine shows: the user has chosen that.
bool isComparedAsText(const DataTable &table, const DataCondition &condition)
{
    const DataColumn &column = table.columns.at(condition.column);
    const bool isEquality =
        condition.is == DataCondition::Is::Equal || condition.is == DataCondition::Is::NotEqual;
    if (table.engine == DataEngine::PostgreSql)
        return !isComparable(column);
    bool isWhole = false;
    std::ignore = condition.value.toLongLong(&isWhole);
    return isEquality && condition.isNumber && !isWhole;
}

QVariant valueOf(const DataTable &table, const DataCondition &condition, bool isText)
{
    if (table.engine == DataEngine::PostgreSql || isText || !condition.isNumber)
        return condition.value;
    bool isWhole = false;
    const qlonglong whole = condition.value.toLongLong(&isWhole);
    return isWhole ? QVariant(whole) : QVariant(condition.value.toDouble());
}

SqlText columnCondition(const DataTable &table, const DataCondition &condition)
{
    using Is = DataCondition::Is;
    const DataColumn &column = table.columns.at(condition.column);
    const bool isText = isComparedAsText(table, condition);
    QString name = isText ? asText(table, condition.column) : quotedName(column.name, table.engine);
    if (condition.is == Is::Null)
        return {name + QLatin1String(" IS NULL"), {}};
    if (condition.is == Is::NotNull)
        return {name + QLatin1String(" IS NOT NULL"), {}};
    QString parameter = QStringLiteral("?");
    if (table.engine == DataEngine::PostgreSql && !isText)
        parameter = QLatin1String("CAST(? AS ") + column.type + u')';
    if (column.isExact) {
        name = QLatin1String("CAST(") + name + QLatin1String(" AS REAL)");
        parameter = QStringLiteral("CAST(? AS REAL)");
    }
    const QVariant value = valueOf(table, condition, isText);
    switch (condition.is) {
    case Is::AtLeast:
        return {name + QLatin1String(" >= ") + parameter, {value}};
    case Is::AtMost:
        return {name + QLatin1String(" <= ") + parameter, {value}};
    case Is::NotEqual:
        return {QLatin1String("(") + name + QLatin1String(" <> ") + parameter
                    + QLatin1String(" OR ") + name + QLatin1String(" IS NULL)"),
                {value}};
    default:
        return {name + QLatin1String(" = ") + parameter, {value}};
    }
}

} // namespace

QString quotedName(const QString &name, DataEngine engine)
{
    // What stands between double quotes is a text for SQLite where there is no such column.
    const QChar quote = engine == DataEngine::Sqlite ? u'`' : u'"';
    QString doubled = name;
    return quote + doubled.replace(quote, QString(2, quote)) + quote;
}

//! A range in the direction in which values grow.
struct DataQuery::Bounds
{
    RowKey above, atLeast, below, atMost;
};

DataQuery::DataQuery(DataTable table, const DataOrder &order, DataFilter filter)
    : m_table(std::move(table))
    , m_order(order)
    , m_filter(std::move(filter))
{
}

int DataQuery::keySize() const
{
    return int(m_table.key.size()) + (m_order.column >= 0 ? 1 : 0);
}

//! What a column is ordered by; empty without one.
QString DataQuery::orderExpression() const
{
    if (m_order.column < 0)
        return {};
    const DataColumn &column = m_table.columns.at(m_order.column);
    const QString name = quotedName(column.name, m_table.engine);
    if (column.isExact)
        return QLatin1String("CAST(") + name + QLatin1String(" AS REAL)");
    return m_table.engine == DataEngine::PostgreSql && !isComparable(column)
        ? asText(m_table, m_order.column)
        : name;
}

QStringList DataQuery::keyExpressions() const
{
    QStringList expressions = m_table.key;
    if (m_order.column >= 0)
        expressions.prepend(orderExpression());
    return expressions;
}

//! Servers take all values as texts of a type.
QStringList DataQuery::parameters() const
{
    QStringList all;
    if (m_table.engine == DataEngine::Sqlite) {
        all.fill(QStringLiteral("?"), keySize());
        return all;
    }
    for (const QString &type : m_table.keyTypes)
        all << QLatin1String("CAST(? AS ") + type + u')';
    if (m_order.column >= 0) {
        const DataColumn &column = m_table.columns.at(m_order.column);
        all.prepend(QLatin1String("CAST(? AS ")
                    + (isComparable(column) ? column.type : QStringLiteral("text")) + u')');
    }
    return all;
}

QString DataQuery::direction(bool backward) const
{
    const QString word =
        m_order.isDescending != backward ? QStringLiteral(" DESC") : QStringLiteral(" ASC");
    QStringList all;
    for (const QString &expression : keyExpressions())
        all << expression + word;
    return all.join(QLatin1String(", "));
}

SqlText DataQuery::filterText() const
{
    SqlText all;
    for (const DataCondition &condition : m_filter.conditions)
        addCondition(&all, columnCondition(m_table, condition));
    addCondition(&all, textCondition(m_table, m_filter.text));
    addCondition(&all, textCondition(m_table, m_sought));
    if (!m_filter.where.isEmpty()) // a comment at its end ends there
        addCondition(&all, {u'(' + m_filter.where + QLatin1String("\n)"), {}});
    return all;
}

DataQuery::Bounds DataQuery::bounds(const RowRange &range) const
{
    if (m_order.isDescending)
        return {range.before, range.upTo, range.after, range.from};
    return {range.after, range.from, range.before, range.upTo};
}

//! Whether a row is on one side of \a key, among rows with NULL in the column or among others.
SqlText DataQuery::compared(const RowKey &key, const QString &comparison, bool isOfNulls) const
{
    const int first = isOfNulls ? 1 : 0;
    const QStringList names = keyExpressions().mid(first);
    const QStringList values = parameters().mid(first);
    if (names.size() == 1)
        return {names.first() + comparison + values.first(), key.mid(first)};
    return {u'(' + names.join(QLatin1String(", ")) + u')' + comparison + u'('
                + values.join(QLatin1String(", ")) + u')',
            key.mid(first)};
}

//! Rows of \a bounds with NULL in the column that is ordered by, or those without. In SQLite they
//! come before all others, on the server behind them.
SqlText DataQuery::segment(const Bounds &bounds, bool isOfNulls, bool *isEmpty) const
{
    const bool hasNullsFirst = m_table.engine == DataEngine::Sqlite;
    SqlText all = filterText();
    const auto add = [&](const RowKey &key, const char *comparison, bool isLower) {
        if (key.isEmpty())
            return;
        const bool isNull = m_order.column >= 0 && key.first().isNull();
        if (isNull == isOfNulls)
            addCondition(&all, compared(key, QLatin1String(comparison), isOfNulls));
        else if ((isOfNulls == hasNullsFirst) == isLower)
            *isEmpty = true;
    };
    if (m_order.column >= 0 && m_table.columns.at(m_order.column).isNullable)
        addCondition(&all,
                     {orderExpression()
                          + (isOfNulls ? QLatin1String(" IS NULL") : QLatin1String(" IS NOT NULL")),
                      {}});
    // The nearer bounds first: SQLite seeks by the first one, and tries the other row by row.
    add(bounds.atLeast, " >= ", true);
    add(bounds.above, " > ", true);
    add(bounds.atMost, " <= ", false);
    add(bounds.below, " < ", false);
    return all;
}

//! The conditions of the parts of \a range, in the order in which they are read.
QList<SqlText> DataQuery::segments(const RowRange &range, bool backward) const
{
    const bool hasNulls = m_order.column >= 0 && m_table.columns.at(m_order.column).isNullable;
    QList<SqlText> found;
    const auto add = [&](bool isOfNulls) {
        bool isEmpty = false;
        const SqlText condition = segment(bounds(range), isOfNulls, &isEmpty);
        if (!isEmpty)
            found.append(condition);
    };
    if (!hasNulls) {
        add(false);
        return found;
    }
    const bool isUpward = m_order.isDescending == backward;
    const bool nullsFirst = (m_table.engine == DataEngine::Sqlite) == isUpward;
    add(nullsFirst);
    add(!nullsFirst);
    return found;
}

//! The parts of a query for \a what of the rows of \a range, each ended by \a tail.
QList<SqlText> DataQuery::parts(const QString &what, const RowRange &range, bool backward,
                                const QString &tail) const
{
    QList<SqlText> found = segments(range, backward);
    for (SqlText &part : found) {
        const QString where =
            part.text.isEmpty() ? QString() : QLatin1String(" WHERE ") + part.text;
        part.text = QLatin1String("SELECT ") + what + QLatin1String(" FROM ") + m_table.relation
            + where + tail;
    }
    return found;
}

//! As they are bound again: the server's as texts.
QString DataQuery::keyColumns() const
{
    QStringList keys = keyExpressions();
    if (m_table.engine == DataEngine::PostgreSql) {
        // With names of their own, or what is ordered by would be these texts.
        for (qsizetype i = 0; i < keys.size(); ++i)
            keys[i] =
                QStringLiteral("CAST(%1 AS TEXT) AS \"vantix key %2\"").arg(keys.at(i)).arg(i);
    }
    return keys.join(QLatin1String(", "));
}

DataPage DataQuery::page(const RowRange &range, bool backward, int limit, int offset) const
{
    const QString columns = keyColumns() + QLatin1String(", ") + cells(m_table);
    DataPage page {
        parts(columns, range, backward, QLatin1String(" ORDER BY ") + direction(backward)), limit,
        offset};
    // What the first part has not, the next one need not skip: that is known when it was read.
    const bool isOne = page.parts.size() == 1;
    const QString tail = QLatin1String(" LIMIT ") + QString::number(isOne ? limit : limit + offset)
        + (isOne && offset > 0 ? QLatin1String(" OFFSET ") + QString::number(offset) : QString());
    for (SqlText &part : page.parts)
        part.text += tail;
    if (isOne)
        page.skipped = 0;
    return page;
}

QList<SqlText> DataQuery::count(const RowRange &range) const
{
    return parts(QStringLiteral("count(*)"), range, false, {});
}

SqlText DataQuery::survey(qint64 step) const
{
    const SqlText filter = filterText();
    const QString where =
        filter.text.isEmpty() ? QString() : QLatin1String(" WHERE ") + filter.text;
    QStringList keys = keyExpressions();
    QStringList names;
    for (qsizetype i = 0; i < keys.size(); ++i) {
        names << QLatin1Char('k') + QString::number(i);
        keys[i] += QLatin1String(" AS ") + names.at(i);
        if (m_table.engine == DataEngine::PostgreSql)
            names[i] = QLatin1String("CAST(") + names.at(i) + QLatin1String(" AS TEXT)");
    }
    return {QLatin1String("SELECT n, ") + names.join(QLatin1String(", "))
                + QLatin1String(" FROM (SELECT ") + keys.join(QLatin1String(", "))
                + QLatin1String(", row_number() OVER (ORDER BY ") + direction(false)
                + QLatin1String(") AS n FROM ") + m_table.relation + where
                + QLatin1String(") AS numbered WHERE n % ") + QString::number(step)
                + QLatin1String(" = 0"),
            filter.values};
}

QList<SqlText> DataQuery::find(const RowRange &range, bool backward, const DataText &text) const
{
    DataQuery narrower = *this;
    narrower.m_sought = text;
    return narrower.parts(keyColumns(), range, backward,
                          QLatin1String(" ORDER BY ") + direction(backward)
                              + QLatin1String(" LIMIT 1"));
}

SqlText DataQuery::sums(int column) const
{
    const SqlText filter = filterText();
    const DataColumn &summed = m_table.columns.at(column);
    const QString name = quotedName(summed.name, m_table.engine);
    const bool isFloat =
        summed.type == QLatin1String("real") || summed.type == QLatin1String("double precision");
    QString what;
    if (summed.isExact)
        what = QLatin1String("count(*), count(%1), 0, 0, 0");
    else if (m_table.engine == DataEngine::Sqlite)
        what = QLatin1String(
            "count(*), total(typeof(%1) IN ('integer', 'real')), total(typeof(%1) = 'real'), "
            "sum(CASE typeof(%1) WHEN 'integer' THEN %1 >> 32 END), "
            "sum(CASE typeof(%1) WHEN 'integer' THEN %1 & 4294967295 END), "
            "CAST(min(CASE WHEN typeof(%1) IN ('integer', 'real') THEN %1 END) AS TEXT), "
            "CAST(max(CASE WHEN typeof(%1) IN ('integer', 'real') THEN %1 END) AS TEXT)");
    else // a text first: other numbers lose digits on their way from binary ones
        what = QLatin1String("count(*), count(%1), 0, CAST(sum(CAST(%2 AS numeric)) AS TEXT), 0, "
                             "CAST(min(%1) AS TEXT), CAST(max(%1) AS TEXT)");
    what.replace(QLatin1String("%2"),
                 isFloat ? QLatin1String("CAST(%1 AS TEXT)") : QLatin1String("%1"));
    return {QLatin1String("SELECT ") + what.replace(QLatin1String("%1"), name)
                + QLatin1String(" FROM ") + m_table.relation
                + (filter.text.isEmpty() ? QString() : QLatin1String(" WHERE ") + filter.text),
            filter.values};
}

SqlText DataQuery::values(int column) const
{
    if (m_table.engine == DataEngine::PostgreSql)
        return {};
    const QString name = quotedName(m_table.columns.at(column).name, m_table.engine);
    SqlText condition = filterText();
    addCondition(&condition,
                 {m_table.columns.at(column).isExact
                      ? name + QLatin1String(" IS NOT NULL")
                      : QLatin1String("typeof(") + name + QLatin1String(") = 'real'"),
                  {}});
    return {QLatin1String("SELECT CAST(") + name + QLatin1String(" AS TEXT) FROM ")
                + m_table.relation + QLatin1String(" WHERE ") + condition.text,
            condition.values};
}
