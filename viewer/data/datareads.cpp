// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "datareads.h"

#include "datacell.h"
#include "dataschema.h"
#include "exactsum.h"

#include <QSqlQuery>

#include <algorithm>
#include <climits>

namespace {

//! The key at \a place of \a row.
RowKey keyOf(const QSqlQuery &row, int place, const DataQuery &query)
{
    RowKey key;
    for (int i = 0; i < query.keySize(); ++i)
        key.append(row.isNull(place + i) ? QVariant() : query.keyValue(i, row.value(place + i)));
    return key;
}

DataRow rowOf(const QSqlQuery &row, const DataQuery &query)
{
    DataRow read {keyOf(row, 0, query), {}};
    const DataTable &table = query.table();
    for (int column = 0; column < table.columns.size(); ++column) {
        const int place = query.keySize() + column;
        if (row.isNull(place))
            read.cells.append(QString());
        else if (table.dialect.writesCells)
            read.cells.append(row.value(place).toString());
        else
            read.cells.append(
                DataCell::written(row.value(place), table.columns.at(column).isNumeric));
    }
    return read;
}

qint64 counted(DataConnection &connection, const QList<SqlText> &queries, DataProblem *problem)
{
    qint64 count = 0;
    for (const SqlText &query : queries) {
        const auto rows = *problem ? QList<QVariantList>() : connection.rows(query, problem);
        if (!rows.isEmpty())
            count += rows.first().first().toLongLong();
    }
    return count;
}

// The table as it is at one moment.
class Snapshot
{
public:
    explicit Snapshot(DataConnection &connection)
        : m_connection(connection)
    {
        m_connection.beginSnapshot();
    }
    ~Snapshot() { m_connection.endSnapshot(); }
    Q_DISABLE_COPY_MOVE(Snapshot)

private:
    DataConnection &m_connection;
};

//! The row that those of \a range come behind: an engine that rounds what it compares would give
//! it again for ever.
bool isReadAgain(const QList<DataRow> &rows, const RowRange &range, bool backward)
{
    const RowKey &beyond = backward ? range.before : range.after;
    return !rows.isEmpty() && !beyond.isEmpty() && rows.first().key == beyond;
}

void takeSums(const DataTable &table, const QVariantList &row, ExactSum *sum, DataReads::Sums *sums)
{
    sums->rows = row.at(0).toLongLong();
    sums->numbers = row.at(1).toLongLong();
    if (!row.at(3).isNull())
        sum->add(row.at(3).toString(), table.dialect.firstPart);
    if (!row.at(4).isNull())
        sum->add(row.at(4).toString());
    if (row.size() > 6) {
        sums->minimum = row.at(5).toString();
        sums->maximum = row.at(6).toString();
    }
}

//! Numbers that are texts in the table: the least and the greatest are found here, too.
void addTexts(DataConnection &connection, const DataQuery &query, bool withExtremes, ExactSum *sum,
              DataReads::Sums *sums)
{
    const SqlText values = query.values(sums->column);
    if (values.text.isEmpty())
        return;
    using Number = BCDIIValue<63, 20>;
    Number least;
    Number greatest;
    sums->problem = connection.each(values, [&](const QSqlQuery &row) {
        const QString text = DataCell::plainText(row.value(0));
        const Number value = Number::parse(withoutExponent(text), ".").value;
        sum->add(text);
        if (!withExtremes)
            return true;
        if (sums->minimum.isEmpty() || value < least) {
            least = value;
            sums->minimum = text;
        }
        if (sums->maximum.isEmpty() || value > greatest) {
            greatest = value;
            sums->maximum = text;
        }
        return true;
    });
}

} // namespace

DataReads::Opened DataReads::open(DataConnection &connection, DataSource source)
{
    Opened opened;
    opened.problem = connection.open(source);
    if (!opened.problem)
        opened.tables = DataSchema::tables(connection, &opened.problem);
    if (!opened.problem && source.table.isEmpty() && source.sql.isEmpty()) {
        source.table = opened.tables.value(0);
        if (source.table.isEmpty())
            opened.problem = {DataProblem::Kind::Refused,
                              DataSource::tr("There are no tables in the database.")};
    }
    if (!opened.problem)
        opened.table = DataSchema::describe(connection, source, &opened.problem);
    if (!opened.problem)
        opened.version = DataSchema::version(connection, opened.table);
    opened.source = source;
    return opened;
}

DataReads::Page DataReads::page(DataConnection &connection, const DataQuery &query,
                                const RowPages::Fetch &fetch)
{
    const bool backward = fetch.kind == RowPages::Fetch::Kind::Backward;
    const DataPage asked = query.page(fetch.range, backward, fetch.limit, fetch.offset);
    Page page;
    int skipped = 0;
    for (const SqlText &part : asked.parts) {
        if (page.problem || page.rows.size() >= asked.limit)
            break;
        page.problem = connection.each(part, [&](const QSqlQuery &row) {
            if (skipped < asked.skipped)
                ++skipped;
            else
                page.rows.append(rowOf(row, query));
            return page.rows.size() < asked.limit;
        });
    }
    if (!page.problem && isReadAgain(page.rows, fetch.range, backward))
        page.problem = {DataProblem::Kind::Refused,
                        DataSource::tr("The database does not find rows by the values that it "
                                       "gives of them.")};
    return page;
}

DataReads::Survey DataReads::survey(DataConnection &connection, const DataQuery &query, int step,
                                    const RowKey &key)
{
    const Snapshot snapshot(connection);
    Survey survey;
    survey.step = step;
    survey.key = key;
    const SqlText numbered = query.survey(step);
    const auto takeAnchor = [&](const QSqlQuery &row) {
        const qint64 number = row.value(0).toLongLong();
        RowPages::Anchor anchor {int(qMin<qint64>(number - 1, INT_MAX)), {}};
        anchor.key = keyOf(row, 1, query);
        survey.anchors.append(anchor);
        return number < INT_MAX;
    };
    if (!numbered.text.isEmpty())
        survey.problem = connection.each(numbered, takeAnchor);
    RowRange rest;
    if (!survey.anchors.isEmpty())
        rest.from = survey.anchors.last().key;
    const qint64 before = survey.anchors.isEmpty() ? 0 : survey.anchors.last().row;
    if (!survey.problem)
        survey.total = before + counted(connection, query.count(rest), &survey.problem);
    RowRange above;
    above.before = key;
    if (!survey.problem && !key.isEmpty())
        survey.row =
            int(qMin<qint64>(counted(connection, query.count(above), &survey.problem), INT_MAX));
    return survey;
}

DataReads::Found DataReads::find(DataConnection &connection, const DataQuery &query,
                                 const RowKey &from, bool backward, const DataText &text)
{
    const Snapshot snapshot(connection);
    Found found;
    RowRange range;
    (backward ? range.before : range.after) = from;
    for (const SqlText &part : query.find(range, backward, text)) {
        if (found.problem || found.key)
            break;
        found.problem = connection.each(part, [&](const QSqlQuery &row) {
            found.key = keyOf(row, 0, query);
            return false;
        });
    }
    if (!found.key || found.problem)
        return found;
    (backward ? range.after : range.before) = *found.key;
    found.distance = counted(connection, query.count(range), &found.problem);
    return found;
}

DataReads::Sums DataReads::sums(DataConnection &connection, const DataQuery &query, int column)
{
    const Snapshot snapshot(connection);
    Sums sums;
    sums.column = column;
    ExactSum sum;
    const auto rows = connection.rows(query.sums(column), &sums.problem);
    if (sums.problem || rows.isEmpty())
        return sums;
    takeSums(query.table(), rows.first(), &sum, &sums);
    const bool isOfTexts = query.readsNumbers(column);
    if (isOfTexts || rows.first().at(2).toLongLong() > 0)
        addTexts(connection, query, isOfTexts, &sum, &sums);
    sums.sum = sum.text();
    sums.isExact = sum.isExact();
    return sums;
}
