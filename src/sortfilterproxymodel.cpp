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
    if (columns == m_visibleColumns)
        return;
    m_visibleColumns = columns;
    if (m_hasDynamicColumns && !m_filter.isEmpty())
        filterAgain();
}

void SortFilterProxyModel::setFilter(const QString &filter)
{
    if (filter == m_filter)
        return;
    m_filter = filter;
    filterAgain();
}

Qt::CaseSensitivity SortFilterProxyModel::filterCaseSensitivity() const
{
    return m_caseSensitivity;
}

void SortFilterProxyModel::setFilterCaseSensitivity(Qt::CaseSensitivity sensitivity)
{
    if (sensitivity == m_caseSensitivity)
        return;
    m_caseSensitivity = sensitivity;
    if (!m_filter.isEmpty())
        filterAgain();
}

bool SortFilterProxyModel::hasDynamicColumns() const
{
    return m_hasDynamicColumns;
}

void SortFilterProxyModel::setDynamicColumns(bool dynamic)
{
    m_hasDynamicColumns = dynamic;
}

void SortFilterProxyModel::filterAgain()
{
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
               return cell.data(Qt::DisplayRole).toString().contains(m_filter, m_caseSensitivity);
           });
}
