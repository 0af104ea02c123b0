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
 *
 * \since 0.2
 */
class VANTIX_EXPORT SortFilterProxyModel : public QSortFilterProxyModel
{
    Q_OBJECT
    Q_PROPERTY(Qt::CaseSensitivity filterCaseSensitivity READ filterCaseSensitivity WRITE
                   setFilterCaseSensitivity)
    Q_PROPERTY(bool dynamicColumns READ hasDynamicColumns WRITE setDynamicColumns)

public:
    //! A proxy that shows every row of its future source model.
    explicit SortFilterProxyModel(QObject *parent = nullptr);
    ~SortFilterProxyModel() override;

    //! Source columns to look at, in this order. Takes effect when the filter changes
    //! next, unless hasDynamicColumns(). Columns that the source model does not have are
    //! empty.
    void setVisibleColumns(const QList<int> &columns);

    //! Shows only rows with \a filter in a visible column, or every row if it is empty.
    //! Without visible columns no row has it. Does nothing if the text is the same as
    //! before, even when the columns are others.
    void setFilter(const QString &filter);

    //! Whether upper and lower case of the filter text differ; Qt::CaseSensitive at first.
    Qt::CaseSensitivity filterCaseSensitivity() const;
    //! Sets filterCaseSensitivity() and filters again. Stands before the base class's
    //! function, which is about its regular expression and has no effect here.
    void setFilterCaseSensitivity(Qt::CaseSensitivity sensitivity);

    //! Whether other columns take effect at once; false at first.
    bool hasDynamicColumns() const;
    //! Makes setVisibleColumns() filter again if the columns are others and there is a
    //! filter text, so that it may be called after setFilter(). Does not filter itself.
    void setDynamicColumns(bool dynamic);

protected:
    //! Called before the rows are filtered again.
    virtual void filterAboutToBeReset();
    //! Called after the rows were filtered again.
    virtual void filterReset();

    //! Whether the row has the filter text, as filterCaseSensitivity() says, in the
    //! Qt::DisplayRole value of a visible column, turned to a string as it is: no
    //! delegate or locale is asked.
    bool filterAcceptsRow(int source_row, const QModelIndex &source_parent) const override;

private:
    void filterAgain();

    QString m_filter;                                          //!< empty for every row
    QList<int> m_visibleColumns;                               //!< of the source model
    Qt::CaseSensitivity m_caseSensitivity = Qt::CaseSensitive; //!< of m_filter
    bool m_hasDynamicColumns = false; //!< other columns take effect at once
};

#endif // SORTFILTERPROXYMODEL_H
