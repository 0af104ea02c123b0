// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "datarows.h"

#include <utility>

namespace {

DataText dataText(const TextMatcher &matcher, const QList<int> &columns)
{
    const TextRules rules = matcher.rules();
    return {matcher.text(), columns, rules.matchesCase, rules.wholeWords, rules.isExpression};
}

QString comparison(DataCondition::Is is)
{
    switch (is) {
    case DataCondition::Is::Equal:
        return QStringLiteral("=");
    case DataCondition::Is::NotEqual:
        return QStringLiteral("≠");
    case DataCondition::Is::AtLeast:
        return QStringLiteral("≥");
    case DataCondition::Is::AtMost:
        return QStringLiteral("≤");
    case DataCondition::Is::Null:
        return QStringLiteral("= NULL");
    case DataCondition::Is::NotNull:
        break;
    }
    return QStringLiteral("≠ NULL");
}

} // namespace

void DataRows::sortBy(int column, Qt::SortOrder order)
{
    setOrder({column, order == Qt::DescendingOrder});
}

Qt::SortOrder DataRows::sortOrder() const
{
    return order().isDescending ? Qt::DescendingOrder : Qt::AscendingOrder;
}

void DataRows::filterBy(const TextMatcher &matcher, const QList<int> &columns)
{
    DataFilter filter = this->filter();
    filter.text = matcher.isNothing() ? DataText() : dataText(matcher, columns);
    setFilter(filter);
}

TextMatcher DataRows::shownMatcher() const
{
    const DataText &text = filter().text;
    return text.text.isEmpty()
        ? TextMatcher()
        : TextMatcher(text.text, {text.matchesCase, text.wholeWords, text.isExpression});
}

QString DataRows::rowsText() const
{
    if (!isCounted())
        return tr("about %L1 rows").arg(rowCount());
    return rowCount() == 1 ? tr("1 row") : tr("%L1 rows").arg(rowCount());
}

QString DataRows::filterText() const
{
    const DataFilter &filter = this->filter();
    QStringList parts;
    for (const DataCondition &condition : filter.conditions)
        parts << table().columns.at(condition.column).name + u' ' + comparison(condition.is)
                + (condition.value.isEmpty() ? QString() : u' ' + condition.value);
    if (!filter.text.text.isEmpty())
        parts << tr("“%1”").arg(filter.text.text);
    if (!filter.where.isEmpty())
        parts << QLatin1String("WHERE ") + filter.where.simplified();
    return tr("%1 with %2").arg(rowsText(), parts.join(QStringLiteral(" · ")));
}

//! From the other end on where nothing is found.
int DataRows::find(const TextMatcher &matcher, const QList<int> &columns, int row, bool forward)
{
    cancel();
    if (matcher.isNothing() || columns.isEmpty())
        return -1;
    const DataText text = dataText(matcher, columns);
    const QPointer<DataRows> self(this);
    const int found = findOnce(text, row, forward);
    if (!self || found != -1 || row < 0)
        return found;
    return findOnce(text, -1, forward);
}

//! −2 if it was ended.
int DataRows::findOnce(const DataText &text, int row, bool forward)
{
    QEventLoop loop;
    m_search = &loop;
    int found = -2;
    const QPointer<QEventLoop> self(&loop); // the answer may come when nobody waits any more
    DataModel::find(text, row, forward, [self, &found](int result) {
        if (!self)
            return;
        found = result;
        self->quit();
    });
    if (found == -2)
        loop.exec();
    return found;
}

void DataRows::cancel()
{
    DataModel::cancel();
    if (m_search)
        m_search->quit();
}
