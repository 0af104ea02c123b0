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

// \a name in place of %1, and nothing else, whatever stands in it.
QString written(const QString &how, const QString &name)
{
    return QString(how).replace(QLatin1String("%1"), name);
}

QString nameOf(const DataTable &table, int column)
{
    return table.dialect.quoted(table.columns.at(column).name);
}

QString asText(const DataTable &table, int column)
{
    return written(table.dialect.asText, nameOf(table, column));
}

QString cellExpression(const DataTable &table, int column)
{
    const DataColumn &kind = table.columns.at(column);
    const DataDialect &dialect = table.dialect;
    QString how = kind.isExact ? dialect.exactCell
        : kind.isBinary        ? dialect.binaryCell
        : kind.isNumeric       ? dialect.numberCell
                               : dialect.textCell;
    how.replace(QLatin1String("%2"), QString::number(DataCell::mostText));
    how.replace(QLatin1String("%3"), QString::number(DataCell::mostBytes));
    return written(how, nameOf(table, column));
}

QString cells(const DataTable &table)
{
    QStringList expressions;
    for (int column = 0; column < table.columns.size(); ++column)
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

SqlText match(const DataDialect &dialect, const QString &cell, const DataText &sought)
{
    if (sought.wholeWords || sought.isExpression) {
        const QString expression = expressionOf(sought, dialect.wordEdge);
        if (sought.matchesCase)
            return {written(dialect.matches, cell), {expression}};
        return {written(dialect.matchesAnyCase, cell), {dialect.anyCasePrefix + expression}};
    }
    const bool isExact = sought.matchesCase;
    QString contains = dialect.contains;
    contains.replace(QLatin1String("%2"), isExact ? QLatin1String("?") : QLatin1String("lower(?)"));
    return {written(contains, isExact ? cell : QLatin1String("lower(") + cell + u')'),
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
        all = all + match(table.dialect, cell, sought);
    }
    return all.text.isEmpty() ? SqlText {QStringLiteral("1 = 0"), {}}
                              : SqlText {all.text + u')', all.values};
}

// A number with a point is compared by the text that the engine shows: the user has chosen that.
bool isComparedAsText(const DataTable &table, const DataCondition &condition)
{
    if (!table.dialect.comparesShown)
        return !table.columns.at(condition.column).isOrdered;
    const bool isEquality =
        condition.is == DataCondition::Is::Equal || condition.is == DataCondition::Is::NotEqual;
    bool isWhole = false;
    std::ignore = condition.value.toLongLong(&isWhole);
    return isEquality && condition.isNumber && !isWhole;
}

QVariant valueOf(const DataTable &table, const DataCondition &condition, bool isText)
{
    if (table.dialect.castsParameters || isText || !condition.isNumber)
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
    QString name = isText ? asText(table, condition.column) : nameOf(table, condition.column);
    if (condition.is == Is::Null)
        return {name + QLatin1String(" IS NULL"), {}};
    if (condition.is == Is::NotNull)
        return {name + QLatin1String(" IS NOT NULL"), {}};
    QString parameter = QStringLiteral("?");
    if (table.dialect.castsParameters && !isText)
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
    const QString name = nameOf(m_table, m_order.column);
    if (column.isExact)
        return QLatin1String("CAST(") + name + QLatin1String(" AS REAL)");
    return column.isOrdered ? name : asText(m_table, m_order.column);
}

QStringList DataQuery::keyExpressions() const
{
    QStringList expressions = m_table.key;
    if (m_order.column >= 0)
        expressions.prepend(orderExpression());
    return expressions;
}

QStringList DataQuery::parameters() const
{
    QStringList all;
    if (!m_table.dialect.castsParameters) {
        all.fill(QStringLiteral("?"), keySize());
        return all;
    }
    for (const QString &type : m_table.keyTypes)
        all << QLatin1String("CAST(? AS ") + type + u')';
    if (m_order.column >= 0) {
        const DataColumn &column = m_table.columns.at(m_order.column);
        all.prepend(QLatin1String("CAST(? AS ")
                    + (column.isOrdered ? column.type : QStringLiteral("text")) + u')');
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

//! Rows of \a bounds with NULL in the column that is ordered by, or those without.
SqlText DataQuery::segment(const Bounds &bounds, bool isOfNulls, bool *isEmpty) const
{
    const bool hasNullsFirst = m_table.dialect.hasNullsFirst;
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
    const bool nullsFirst = m_table.dialect.hasNullsFirst == isUpward;
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

//! As they are bound again.
QString DataQuery::keyColumns() const
{
    QStringList keys = keyExpressions();
    if (m_table.dialect.castsParameters) {
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
        if (m_table.dialect.castsParameters)
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
    const QString name = nameOf(m_table, column);
    const bool isBinary =
        summed.type == QLatin1String("real") || summed.type == QLatin1String("double precision");
    QString what =
        summed.isExact ? QStringLiteral("count(*), count(%1), 0, 0, 0") : m_table.dialect.sums;
    what.replace(QLatin1String("%2"),
                 isBinary ? m_table.dialect.binaryAsDecimal : QStringLiteral("%1"));
    return {QLatin1String("SELECT ") + written(what, name) + QLatin1String(" FROM ")
                + m_table.relation
                + (filter.text.isEmpty() ? QString() : QLatin1String(" WHERE ") + filter.text),
            filter.values};
}

SqlText DataQuery::values(int column) const
{
    const DataColumn &summed = m_table.columns.at(column);
    const QString how =
        summed.isExact ? QStringLiteral("%1 IS NOT NULL") : m_table.dialect.notInSums;
    if (how.isEmpty())
        return {};
    SqlText condition = filterText();
    addCondition(&condition, {written(how, nameOf(m_table, column)), {}});
    return {QLatin1String("SELECT ") + asText(m_table, column) + QLatin1String(" FROM ")
                + m_table.relation + QLatin1String(" WHERE ") + condition.text,
            condition.values};
}
