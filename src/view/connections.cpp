// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "connections_p.h"

#include "qtablefastview.h"

#include <QAbstractItemModel>
#include <QHeaderView>

namespace {

struct Connection
{
    const char *signal;
    const char *slot;
};

// From the header to the view.
const Connection headerConnections[] = {
    {SIGNAL(sectionResized(int, int, int)), SLOT(columnResized(int, int, int))},
    {SIGNAL(sectionMoved(int, int, int)), SLOT(columnMoved(int, int, int))},
    {SIGNAL(sectionCountChanged(int, int)), SLOT(columnCountChanged(int, int))},
    {SIGNAL(sectionHandleDoubleClicked(int)), SLOT(resizeColumnToContents(int))},
    {SIGNAL(geometriesChanged()), SLOT(updateGeometries())},
};

// From the header to the view's private object.
const Connection privateHeaderConnections[] = {
    {SIGNAL(destroyed()), SLOT(headerDestroyed())},
    {SIGNAL(geometriesChanged()), SLOT(headerHeightMayChange())},
    {SIGNAL(geometriesChanged()), SLOT(headerChanged())},
    {SIGNAL(sectionResized(int, int, int)), SLOT(headerChanged())},
    {SIGNAL(sortIndicatorChanged(int, Qt::SortOrder)), SLOT(headerChanged())}, // restoreState()
};

const Connection sortConnection = {SIGNAL(sortIndicatorChanged(int, Qt::SortOrder)),
                                   SLOT(sortIndicatorChanged(int, Qt::SortOrder))};

// From the model to the view, beside those that QAbstractItemView makes itself.
const Connection modelConnections[] = {
    {SIGNAL(rowsRemoved(QModelIndex, int, int)), SLOT(rowsRemoved(QModelIndex, int, int))},
    {SIGNAL(rowsAboutToBeMoved(QModelIndex, int, int, QModelIndex, int)),
     SLOT(rowsAboutToBeMoved(QModelIndex, int, int, QModelIndex, int))},
    {SIGNAL(rowsMoved(QModelIndex, int, int, QModelIndex, int)),
     SLOT(rowsMoved(QModelIndex, int, int, QModelIndex, int))},
    {SIGNAL(modelAboutToBeReset()), SLOT(modelAboutToBeReset())},
    {SIGNAL(modelReset()), SLOT(modelReset())},
    {SIGNAL(rowsAboutToBeInserted(QModelIndex, int, int)),
     SLOT(rowsAboutToBeInserted(QModelIndex, int, int))},
    {SIGNAL(layoutChanged(QList<QPersistentModelIndex>, QAbstractItemModel::LayoutChangeHint)),
     SLOT(layoutChanged(QList<QPersistentModelIndex>, QAbstractItemModel::LayoutChangeHint))},
};

// From the model to the view's private object.
const Connection privateModelConnections[] = {
    {SIGNAL(destroyed()), SLOT(modelDestroyed())},
    {SIGNAL(headerDataChanged(Qt::Orientation, int, int)), SLOT(headerHeightMayChange())},
    {SIGNAL(columnsInserted(QModelIndex, int, int)), SLOT(modelColumnsChanged(QModelIndex))},
    {SIGNAL(columnsRemoved(QModelIndex, int, int)), SLOT(modelColumnsChanged(QModelIndex))},
    {SIGNAL(columnsMoved(QModelIndex, int, int, QModelIndex, int)),
     SLOT(modelColumnsChanged(QModelIndex))},
};

template<typename Table>
void connectAll(const Table &table, const QObject *sender, const QObject *receiver)
{
    for (const Connection &c : table)
        QObject::connect(sender, c.signal, receiver, c.slot);
}

template<typename Table>
void disconnectAll(const Table &table, const QObject *sender, const QObject *receiver)
{
    for (const Connection &c : table)
        QObject::disconnect(sender, c.signal, receiver, c.slot);
}

} // namespace

void Connections::connectHeader(QHeaderView *header) const
{
    connectAll(headerConnections, header, m_view);
    connectAll(privateHeaderConnections, header, m_private);
}

void Connections::disconnectHeader(QHeaderView *header) const
{
    disconnectAll(headerConnections, header, m_view);
    connectSorting(header, false);
    disconnectAll(privateHeaderConnections, header, m_private);
}

void Connections::connectSorting(QHeaderView *header, bool on) const
{
    if (on) {
        QObject::connect(header, sortConnection.signal, m_view, sortConnection.slot,
                         Qt::UniqueConnection);
    } else {
        QObject::disconnect(header, sortConnection.signal, m_view, sortConnection.slot);
    }
}

void Connections::connectModel(QAbstractItemModel *model) const
{
    disconnectModel(model);
    connectAll(modelConnections, model, m_view);
    connectAll(privateModelConnections, model, m_private);
}

void Connections::disconnectModel(QAbstractItemModel *model) const
{
    disconnectAll(modelConnections, model, m_view);
    disconnectAll(privateModelConnections, model, m_private);
}
