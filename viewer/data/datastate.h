// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef DATASTATE_H
#define DATASTATE_H

#include "datafilter.h"
#include "datatable.h"

#include <QString>
#include <QStringList>

//! What a page shows of a database, to be shown again another time. Columns are known by their
//! names there, as others may have come between them. Passwords are no part of it.
struct DataState
{
    QString table {};
    QString sql {};
    QStringList key {};
    QString order {};                   //!< the column that rows are ordered by; empty for none
    QString where {};                   //!< see DataFilter
    QList<DataCondition> conditions {}; //!< whose columns are their places in the next list
    QStringList conditionColumns {};

    //! What is shown of \a source by \a filter and \a order.
    static DataState of(const DataSource &source, const DataTable &table, const DataFilter &filter,
                        const DataOrder &order);
    //! What text() has given; nothing of what cannot be understood.
    static DataState fromText(const QString &text);
    QString text() const;

    //! The conditions whose columns \a table has.
    DataFilter filterFor(const DataTable &table) const;
    //! The column of \a table that rows are ordered by; −1 if it has none of that name.
    int orderFor(const DataTable &table) const;
    //! \a source with what was shown of it.
    DataSource chosen(DataSource source) const;

    friend bool operator==(const DataState &, const DataState &) = default;
};

#endif // DATASTATE_H
