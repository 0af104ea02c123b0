// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "datastate.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace {

const QString s_shownTable = QStringLiteral("table");
const QString s_shownQuery = QStringLiteral("sql");
const QString s_keyColumns = QStringLiteral("key");
const QString s_orderColumn = QStringLiteral("order");
const QString s_where = QStringLiteral("where");
const QString s_conditions = QStringLiteral("conditions");
const QString s_conditionColumn = QStringLiteral("column");
const QString s_conditionIs = QStringLiteral("is");
const QString s_conditionValue = QStringLiteral("value");
const QString s_conditionIsNumber = QStringLiteral("number");

int columnNamed(const QString &name, const DataTable &table)
{
    for (int column = 0; column < table.columns.size(); ++column) {
        if (table.columns.at(column).name == name)
            return column;
    }
    return -1;
}

QJsonObject conditionToJson(const DataCondition &condition, const QString &column)
{
    return {{s_conditionColumn, column},
            {s_conditionIs, int(condition.is)},
            {s_conditionValue, condition.value},
            {s_conditionIsNumber, condition.isNumber}};
}

} // namespace

DataState DataState::of(const DataSource &source, const DataTable &table, const DataFilter &filter,
                        const DataOrder &order)
{
    DataState state {source.table, source.sql, source.key};
    if (order.column >= 0 && order.column < table.columns.size())
        state.order = table.columns.at(order.column).name;
    state.where = filter.where;
    for (DataCondition condition : filter.conditions) {
        state.conditionColumns << table.columns.value(condition.column).name;
        condition.column = int(state.conditions.size());
        state.conditions << condition;
    }
    return state;
}

QString DataState::text() const
{
    QJsonArray all;
    for (qsizetype i = 0; i < conditions.size(); ++i)
        all.append(conditionToJson(conditions.at(i), conditionColumns.at(i)));
    const QJsonObject json {{s_shownTable, table},
                            {s_shownQuery, sql},
                            {s_keyColumns, QJsonArray::fromStringList(key)},
                            {s_orderColumn, order},
                            {s_where, where},
                            {s_conditions, all}};
    return QString::fromUtf8(QJsonDocument(json).toJson(QJsonDocument::Compact));
}

DataState DataState::fromText(const QString &text)
{
    const QJsonObject json = QJsonDocument::fromJson(text.toUtf8()).object();
    DataState state {json[s_shownTable].toString(), json[s_shownQuery].toString()};
    const QJsonArray key = json[s_keyColumns].toArray();
    for (const QJsonValue column : key)
        state.key << column.toString();
    state.order = json[s_orderColumn].toString();
    state.where = json[s_where].toString();
    const QJsonArray conditions = json[s_conditions].toArray();
    for (const QJsonValue each : conditions) {
        const int is = each[s_conditionIs].toInt(-1);
        if (is < 0 || is > int(DataCondition::Is::NotNull))
            continue;
        state.conditions << DataCondition {int(state.conditions.size()), DataCondition::Is(is),
                                           each[s_conditionValue].toString(),
                                           each[s_conditionIsNumber].toBool()};
        state.conditionColumns << each[s_conditionColumn].toString();
    }
    return state;
}

DataFilter DataState::filterFor(const DataTable &table) const
{
    DataFilter filter;
    filter.where = where;
    for (DataCondition condition : conditions) {
        condition.column = columnNamed(conditionColumns.at(condition.column), table);
        if (condition.column >= 0)
            filter.conditions << condition;
    }
    return filter;
}

int DataState::orderFor(const DataTable &table) const
{
    return order.isEmpty() ? -1 : columnNamed(order, table);
}

DataSource DataState::chosen(DataSource source) const
{
    source.table = table;
    source.sql = sql;
    source.key = key;
    return source;
}
