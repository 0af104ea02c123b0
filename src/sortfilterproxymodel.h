// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef SORTFILTERPROXYMODEL_H
#define SORTFILTERPROXYMODEL_H

#include "vantixglobal.h"

#include <QList>
#include <QSortFilterProxyModel>
#include <QString>

/*!
 * \brief Hides the rows that show a text in none of the visible columns.
 *
 * Stands between a model and its view; an AbstractItemViewFind gives it the columns and
 * the text. Sorting is the base class's. Its filter role, key column and regular
 * expression are not used. In a tree a row is judged by itself, unless recursive
 * filtering is switched on.
 */
class VANTIX_EXPORT SortFilterProxyModel : public QSortFilterProxyModel
{
    Q_OBJECT

public:
    //! A proxy that shows every row of its future source model.
    explicit SortFilterProxyModel(QObject *parent = nullptr);
    ~SortFilterProxyModel() override;

    //! Source columns to look at, in this order. Takes effect when the filter changes
    //! next. Columns that the source model does not have are empty.
    void setVisibleColumns(const QList<int> &columns);

    //! Shows only rows with \a filter in a visible column, or every row if it is empty.
    //! Without visible columns no row has it. Does nothing if the text is the same as
    //! before, even when the columns are others.
    void setFilter(const QString &filter);

protected:
    //! Called before the rows are filtered again.
    virtual void filterAboutToBeReset();
    //! Called after the rows were filtered again.
    virtual void filterReset();

    //! Whether the row has the filter text, upper and lower case apart, in the
    //! Qt::DisplayRole value of a visible column, turned to a string as it is: no
    //! delegate or locale is asked.
    bool filterAcceptsRow(int source_row, const QModelIndex &source_parent) const override;

private:
    QString m_filter;            //!< empty for every row
    QList<int> m_visibleColumns; //!< of the source model
};

#endif // SORTFILTERPROXYMODEL_H
