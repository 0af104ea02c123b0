// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef SOURCEINDEX_H
#define SOURCEINDEX_H

#include <QAbstractProxyModel>

//! \a index in the model that is no proxy, however many stand before it.
inline QModelIndex sourceIndex(QModelIndex index)
{
    while (const auto *proxy = qobject_cast<const QAbstractProxyModel *>(index.model()))
        index = proxy->mapToSource(index);
    return index;
}

//! The model that is no proxy, however many stand before it; null without one.
inline const QAbstractItemModel *sourceModel(const QAbstractItemModel *model)
{
    while (const auto *proxy = qobject_cast<const QAbstractProxyModel *>(model))
        model = proxy->sourceModel();
    return model;
}

#endif // SOURCEINDEX_H
