// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef DATAROWS_H
#define DATAROWS_H

#include "datamodel.h"
#include "search/rowengine.h"
#include "search/textmatcher.h"

#include <QEventLoop>
#include <QPointer>

//! A table of a database whose engine orders, filters and finds its rows.
class DataRows : public DataModel, public RowEngine
{
    Q_OBJECT

public:
    using DataModel::DataModel;

    void sortBy(int column, Qt::SortOrder order) override;
    int sortColumn() const override { return order().column; }
    Qt::SortOrder sortOrder() const override;

    void filterBy(const TextMatcher &matcher, const QList<int> &columns) override;
    void showAll() override { setFilter({}); }
    TextMatcher shownMatcher() const override;
    bool isFiltered() const override { return !filter().isEmpty(); }
    QString filterText() const override;

    int find(const TextMatcher &matcher, const QList<int> &columns, int row, bool forward) override;
    void cancel() override;

    //! How many rows there are, for the user: "1,000 rows", or "about 1,000 rows".
    QString rowsText() const;

private:
    int findOnce(const DataText &text, int row, bool forward);

    QPointer<QEventLoop> m_search; //!< of find()
};

#endif // DATAROWS_H
