// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef DATAQUERY_H
#define DATAQUERY_H

#include "datafilter.h"
#include "datatable.h"

//! A query whose values stand beside it, one for each question mark.
struct SqlText
{
    QString text {};
    QVariantList values {};

    friend bool operator==(const SqlText &, const SqlText &) = default;
};

//! Rows that several queries give together.
struct DataPage
{
    QList<SqlText> parts {}; //!< one after the other, until there are enough
    int limit = 0;           //!< rows that are wanted
    int skipped = 0;         //!< rows that are read before them
};

//! What \a column of \a table is read as, without a letter for its kind.
QString plainValue(const DataTable &table, int column);

/*!
 * \brief The queries that show a table in an order, through a filter.
 *
 * Rows are found by their key, so that the thousandth million of them costs what the first costs.
 * Values are parameters always; only names, which are quoted, and the WHERE that the user has
 * written stand in the text.
 */
class DataQuery
{
public:
    DataQuery() = default;
    //! \a table must have a key.
    DataQuery(DataTable table, const DataOrder &order, DataFilter filter);

    const DataTable &table() const { return m_table; }
    const DataOrder &order() const { return m_order; }
    const DataFilter &filter() const { return m_filter; }
    //! How many values of a row are its RowKey, before its cells.
    int keySize() const;

    //! What was read of the \a part -th value of a RowKey, as it is compared again.
    QVariant keyValue(int part, const QVariant &read) const;
    //! Whether values() has all numbers of \a column, and sums() none.
    bool readsNumbers(int column) const;

    //! At most \a limit rows of \a range, the first ones behind \a offset rows, or, if \a backward,
    //! the last ones, the last one first. Values: those of the key, then the cells.
    DataPage page(const RowRange &range, bool backward, int limit, int offset = 0) const;
    //! The number of rows in \a range: what all of these count.
    QList<SqlText> count(const RowRange &range) const;
    //! The number, from 1 on, and the RowKey of each \a step -th row; no text if the engine does
    //! not number rows.
    SqlText survey(qint64 step) const;
    //! The first, or last, RowKey of \a range whose row has \a text beside what is filtered by:
    //! what the first of these finds that finds any.
    QList<SqlText> find(const RowRange &range, bool backward, const DataText &text) const;
    //! Of \a column: rows, numbers, numbers that values() has, the sum of all others in two parts,
    //! the first one of SQLite 2^32 times as much, the least and the greatest number as texts.
    SqlText sums(int column) const;
    //! The numbers in \a column that sums() leaves out of the sum, as texts; no text if the engine
    //! adds up all of them exactly.
    SqlText values(int column) const;

private:
    struct Bounds;

    QString orderExpression() const;
    QStringList keyExpressions() const;
    QStringList parameters() const;
    QString direction(bool backward) const;
    SqlText filterText() const;
    Bounds bounds(const RowRange &range) const;
    QList<SqlText> segments(const RowRange &range, bool backward) const;
    SqlText segment(const Bounds &bounds, bool isOfNulls, bool *isEmpty) const;
    SqlText compared(const RowKey &key, const QString &comparison, bool isOfNulls) const;
    SqlText comparedInTurn(const QStringList &names, const QStringList &parameters,
                           const RowKey &key, const QString &comparison) const;
    QList<SqlText> parts(const QString &what, const RowRange &range, bool backward,
                         const QString &tail) const;
    QList<SqlText> limited(QList<SqlText> parts, int limit, int offset) const;
    QString numberedOrder() const;
    bool isKeyReadAsText(int part) const;
    const DataColumn *keyPart(int part) const;
    QString keyColumns() const;

    DataTable m_table;
    DataOrder m_order;
    DataFilter m_filter;
    DataText m_sought; //!< see find()
};

#endif // DATAQUERY_H
