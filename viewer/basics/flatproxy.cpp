// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "flatproxy.h"

#include <utility>

QModelIndex FlatProxy::index(int row, int column, const QModelIndex &parent) const
{
    return hasIndex(row, column, parent) ? createIndex(row, column) : QModelIndex();
}

QModelIndex FlatProxy::parent(const QModelIndex & /*child*/) const
{
    return {};
}

int FlatProxy::rowCount(const QModelIndex &parent) const
{
    return sourceModel() && !parent.isValid() ? shownRows() : 0;
}

int FlatProxy::columnCount(const QModelIndex &parent) const
{
    return sourceModel() && !parent.isValid() ? sourceModel()->columnCount() : 0;
}

bool FlatProxy::hasChildren(const QModelIndex &parent) const
{
    return rowCount(parent) > 0 && columnCount(parent) > 0;
}

QVariant FlatProxy::data(const QModelIndex &index, int role) const
{
    const QModelIndex source = mapToSource(index);
    return source.isValid() ? source.data(role) : QVariant();
}

QVariant FlatProxy::headerData(int section, Qt::Orientation orientation, int role) const
{
    const bool isColumn = orientation == Qt::Horizontal;
    if (section < 0 || section >= (isColumn ? columnCount() : rowCount()))
        return {};
    return sourceModel()->headerData(isColumn ? section : sourceRow(section), orientation, role);
}

QModelIndex FlatProxy::mapToSource(const QModelIndex &proxyIndex) const
{
    if (!proxyIndex.isValid() || proxyIndex.row() >= rowCount())
        return {};
    return sourceModel()->index(sourceRow(proxyIndex.row()), proxyIndex.column());
}

QModelIndex FlatProxy::mapFromSource(const QModelIndex &sourceIndex) const
{
    if (!sourceIndex.isValid() || !sourceModel() || sourceIndex.parent().isValid())
        return {};
    const int row = rowOf(sourceIndex.row());
    return row < 0 ? QModelIndex() : createIndex(row, sourceIndex.column());
}

void FlatProxy::sort(int /*column*/, Qt::SortOrder /*order*/)
{
}

void FlatProxy::layoutAboutToChange()
{
    Q_EMIT layoutAboutToBeChanged();
    m_layoutProxies = persistentIndexList();
    for (const QModelIndex &proxy : std::as_const(m_layoutProxies))
        m_layoutSources.append(mapToSource(proxy));
}

void FlatProxy::layoutHasChanged()
{
    QModelIndexList now;
    for (const QPersistentModelIndex &behind : std::as_const(m_layoutSources))
        now.append(mapFromSource(behind));
    changePersistentIndexList(m_layoutProxies, now);
    m_layoutProxies.clear();
    m_layoutSources.clear();
    Q_EMIT layoutChanged();
}
