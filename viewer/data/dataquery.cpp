// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "dataquery.h"

#include "datacell.h"

#include <QRegularExpression>

#include <algorithm>
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
QString filledIn(const QString &how, const QString &name)
{
    return QString(how).replace(QLatin1String("%1"), name);
}

QString quotedColumn(const DataTable &table, int column)
{
    return table.dialect.quoted(table.columns.at(column).name);
}

QString asText(const DataTable &table, int column)
{
    return filledIn(table.dialect.asText, quotedColumn(table, column));
}

QString cellExpression(const DataTable &table, int column)
{
    const DataColumn &kind = table.columns.at(column);
    const DataDialect &dialect = table.dialect;
    if (kind.isReadAsText) // with a name of its own, or what is ordered by could be this text
        return asText(table, column) + QLatin1String(" AS vantix_cell_") + QString::number(column);
    QString how = kind.isExact ? dialect.exactCell
        : kind.isBinary        ? dialect.binaryCell
        : kind.isNumeric       ? dialect.numberCell
                               : dialect.textCell;
    how.replace(QLatin1String("%2"), QString::number(DataCell::mostText));
    how.replace(QLatin1String("%3"), QString::number(DataCell::mostBytes));
    return filledIn(how, quotedColumn(table, column));
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

//! For LIKE, anything before and behind \a text.
QString patternOf(QString text)
{
    static const QRegularExpression special(QStringLiteral("([!%_])"));
    return u'%' + text.replace(special, QStringLiteral("!\\1")) + u'%';
}

SqlText match(const DataDialect &dialect, const QString &cell, const DataText &sought)
{
    if (sought.wholeWords || sought.isExpression) {
        const QString expression = expressionOf(sought, dialect.wordEdge);
        if (sought.matchesCase)
            return {filledIn(dialect.matches, cell), {expression}};
        return {filledIn(dialect.matchesAnyCase, cell), {dialect.anyCasePrefix + expression}};
    }
    const QString how = sought.matchesCase ? QStringLiteral("%1") : dialect.anyCase;
    QString contains = dialect.contains;
    contains.replace(QLatin1String("%2"), filledIn(how, QStringLiteral("?")));
    const bool isPattern = contains.contains(QLatin1String(" LIKE "));
    return {filledIn(contains, filledIn(how, cell)),
            {isPattern ? patternOf(sought.text) : sought.text}};
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
    if (!table.columns.at(condition.column).isOrdered)
        return true;
    if (!table.dialect.comparesShown)
        return false;
    const bool isEquality =
        condition.is == DataCondition::Is::Equal || condition.is == DataCondition::Is::NotEqual;
    bool isWhole = false;
    std::ignore = condition.value.toLongLong(&isWhole);
    return isEquality && condition.isNumber && !isWhole;
}

QVariant valueOf(const DataTable &table, const DataCondition &condition, bool isText)
{
    const bool isOther = table.columns.at(condition.column).isReadAsText
        && !table.columns.at(condition.column).isWhole;
    if (table.dialect.castsParameters || isText || isOther || !condition.isNumber)
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
    QString name = isText ? asText(table, condition.column) : quotedColumn(table, condition.column);
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

QString plainValue(const DataTable &table, int column)
{
    const DataColumn &kind = table.columns.at(column);
    const bool isText = table.dialect.writesCells ? !kind.isBinary : kind.isReadAsText;
    return isText ? asText(table, column) : quotedColumn(table, column);
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
    const QString name = quotedColumn(m_table, m_order.column);
    if (column.isExact)
        return QLatin1String("CAST(") + name + QLatin1String(" AS REAL)");
    const QString &binary = m_table.dialect.orderedBinary;
    if (column.isNumeric && !column.isReadAsText && !binary.isEmpty())
        return filledIn(binary, name);
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
    if (!m_table.dialect.comparesRows)
        return comparedInTurn(names, values, key.mid(first), comparison);
    if (names.size() == 1)
        return {names.first() + comparison + values.first(), key.mid(first)};
    return {u'(' + names.join(QLatin1String(", ")) + u')' + comparison + u'('
                + values.join(QLatin1String(", ")) + u')',
            key.mid(first)};
}

//! As (a, b) > (c, d), but in words that all engines know. What all rows of the answer have in the
//! first part stands alone: an index is looked into for that.
SqlText DataQuery::comparedInTurn(const QStringList &names, const QStringList &parameters,
                                  const RowKey &key, const QString &comparison) const
{
    const qsizetype last = names.size() - 1;
    SqlText rest {names.at(last) + comparison + parameters.at(last), {key.at(last)}};
    const QString strict = comparison.left(2) + u' ';
    for (qsizetype i = last - 1; i >= 0; --i) {
        const QString &name = names.at(i);
        const QString &value = parameters.at(i);
        rest = SqlText {u'(' + name + strict + value + QLatin1String(" OR (") + name
                            + QLatin1String(" = ") + value + QLatin1String(" AND "),
                        {key.at(i), key.at(i)}}
            + rest + SqlText {QStringLiteral("))"), {}};
    }
    if (last == 0)
        return rest;
    return SqlText {names.first() + strict.chopped(1) + QLatin1String("= ") + parameters.first()
                        + QLatin1String(" AND "),
                    {key.first()}}
    + rest;
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

//! The parts of a query for \a what of the rows of \a range, each ended by \a tail, behind SELECT.
QList<SqlText> DataQuery::parts(const QString &what, const RowRange &range, bool backward,
                                const QString &tail) const
{
    QList<SqlText> found = segments(range, backward);
    for (SqlText &part : found) {
        const QString where =
            part.text.isEmpty() ? QString() : QLatin1String(" WHERE ") + part.text;
        part.text = what + QLatin1String(" FROM ") + m_table.relation + where + tail;
    }
    return found;
}

QList<SqlText> DataQuery::limited(QList<SqlText> parts, int limit, int offset) const
{
    for (SqlText &part : parts)
        part.text = m_table.dialect.select(part.text, limit, offset);
    return parts;
}

//! The column that is the \a part -th value of a RowKey; null if that is none that is shown.
const DataColumn *DataQuery::keyPart(int part) const
{
    const int ofKey = part - (m_order.column >= 0 ? 1 : 0);
    if (ofKey < 0)
        return &m_table.columns.at(m_order.column);
    const auto column = std::find_if(
        m_table.columns.cbegin(), m_table.columns.cend(), [&](const DataColumn &known) {
            return m_table.dialect.quoted(known.name) == m_table.key.at(ofKey);
        });
    return column == m_table.columns.cend() ? nullptr : &*column;
}

QVariant DataQuery::keyValue(int part, const QVariant &read) const
{
    const DataColumn *column = m_table.dialect.writesCells ? nullptr : keyPart(part);
    bool isWhole = false;
    const qlonglong whole = column && column->isWhole ? read.toLongLong(&isWhole) : 0;
    return isWhole ? QVariant(whole) : read;
}

bool DataQuery::readsNumbers(int column) const
{
    return m_table.columns.at(column).isExact || m_table.dialect.sums.isEmpty();
}

//! As they are bound again.
QString DataQuery::keyColumns() const
{
    QStringList keys = keyExpressions();
    const DataDialect &dialect = m_table.dialect;
    for (int i = 0; i < keys.size(); ++i) {
        const bool isText = dialect.castsParameters || isKeyReadAsText(i);
        // With names of their own, or what is ordered by would be these texts.
        if (isText)
            keys[i] = filledIn(dialect.asText, keys.at(i)) + QLatin1String(" AS ")
                + dialect.quoted(QLatin1String("vantix key ") + QString::number(i));
    }
    return keys.join(QLatin1String(", "));
}

bool DataQuery::isKeyReadAsText(int part) const
{
    const DataColumn *column = m_table.dialect.writesCells ? nullptr : keyPart(part);
    return column && column->isReadAsText;
}

DataPage DataQuery::page(const RowRange &range, bool backward, int limit, int offset) const
{
    const QString columns = keyColumns() + QLatin1String(", ") + cells(m_table);
    const QList<SqlText> all =
        parts(columns, range, backward, QLatin1String(" ORDER BY ") + direction(backward));
    // What the first part has not, the next one need not skip: that is known when it was read.
    if (all.size() == 1 && m_table.dialect.skipsRows)
        return {limited(all, limit, offset), limit, 0};
    return {limited(all, limit + offset, 0), limit, offset};
}

QList<SqlText> DataQuery::count(const RowRange &range) const
{
    QList<SqlText> all = parts(QStringLiteral("count(*)"), range, false, {});
    for (SqlText &part : all)
        part.text.prepend(QLatin1String("SELECT "));
    return all;
}

//! In which rows are numbered: NULL where it is in pages.
QString DataQuery::numberedOrder() const
{
    const bool isTold = m_table.dialect.ordersNulls || m_order.column < 0
        || !m_table.columns.at(m_order.column).isNullable;
    if (isTold)
        return direction(false);
    return QLatin1String("CASE WHEN ") + orderExpression()
        + (m_table.dialect.hasNullsFirst ? QLatin1String(" IS NULL THEN 0 ELSE 1 END")
                                         : QLatin1String(" IS NULL THEN 1 ELSE 0 END"))
        + (m_order.isDescending ? QLatin1String(" DESC, ") : QLatin1String(" ASC, "))
        + direction(false);
}

SqlText DataQuery::survey(qint64 step) const
{
    if (!m_table.dialect.numbersRows)
        return {};
    const SqlText filter = filterText();
    const QString where =
        filter.text.isEmpty() ? QString() : QLatin1String(" WHERE ") + filter.text;
    QStringList keys = keyExpressions();
    QStringList names;
    for (qsizetype i = 0; i < keys.size(); ++i) {
        names << QLatin1Char('k') + QString::number(i);
        keys[i] += QLatin1String(" AS ") + names.at(i);
        if (m_table.dialect.castsParameters || isKeyReadAsText(int(i)))
            names[i] = filledIn(m_table.dialect.asText, names.at(i));
    }
    return {QLatin1String("SELECT n, ") + names.join(QLatin1String(", "))
                + QLatin1String(" FROM (SELECT ") + keys.join(QLatin1String(", "))
                + QLatin1String(", row_number() OVER (ORDER BY ") + numberedOrder()
                + QLatin1String(") AS n FROM ") + m_table.relation + where
                + QLatin1String(") numbered WHERE n % ") + QString::number(step)
                + QLatin1String(" = 0 ORDER BY n"),
            filter.values};
}

QList<SqlText> DataQuery::find(const RowRange &range, bool backward, const DataText &text) const
{
    DataQuery narrower = *this;
    narrower.m_sought = text;
    const QString order = QLatin1String(" ORDER BY ") + direction(backward);
    return narrower.limited(narrower.parts(keyColumns(), range, backward, order), 1, 0);
}

SqlText DataQuery::sums(int column) const
{
    const SqlText filter = filterText();
    const DataColumn &summed = m_table.columns.at(column);
    const QString name = quotedColumn(m_table, column);
    const bool isBinary =
        summed.type == QLatin1String("real") || summed.type == QLatin1String("double precision");
    QString what = readsNumbers(column) ? QStringLiteral("count(*), count(%1), 0, 0, 0")
                                        : m_table.dialect.sums;
    what.replace(QLatin1String("%2"),
                 isBinary ? m_table.dialect.binaryAsDecimal : QStringLiteral("%1"));
    return {QLatin1String("SELECT ") + filledIn(what, name) + QLatin1String(" FROM ")
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
    addCondition(&condition, {filledIn(how, quotedColumn(m_table, column)), {}});
    return {QLatin1String("SELECT ") + plainValue(m_table, column) + QLatin1String(" FROM ")
                + m_table.relation + QLatin1String(" WHERE ") + condition.text,
            condition.values};
}
