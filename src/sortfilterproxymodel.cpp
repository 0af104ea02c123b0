// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "sortfilterproxymodel.h"

#include <algorithm>

SortFilterProxyModel::SortFilterProxyModel(QObject *parent)
    : QSortFilterProxyModel(parent)
{
}

SortFilterProxyModel::~SortFilterProxyModel() = default;

void SortFilterProxyModel::setVisibleColumns(const QList<int> &columns)
{
    if (columns != m_visibleColumns)
        m_visibleColumns = columns;
}

void SortFilterProxyModel::setFilter(const QString &filter)
{
    if (filter == m_filter)
        return;
    m_filter = filter;
    filterAboutToBeReset();
    invalidateFilter();
    filterReset();
}

void SortFilterProxyModel::filterAboutToBeReset()
{
}

void SortFilterProxyModel::filterReset()
{
}

bool SortFilterProxyModel::filterAcceptsRow(int source_row, const QModelIndex &source_parent) const
{
    if (m_filter.isEmpty())
        return true;
    const QAbstractItemModel *model = sourceModel();
    return model && std::any_of(m_visibleColumns.begin(), m_visibleColumns.end(), [&](int column) {
               const QModelIndex cell = model->index(source_row, column, source_parent);
               return cell.data(Qt::DisplayRole).toString().contains(m_filter, Qt::CaseSensitive);
           });
}
