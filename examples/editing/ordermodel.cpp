// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "ordermodel.h"

#include <QBrush>
#include <QColor>

namespace {

constexpr double largestAmount = 1e6;

QColor colorOf(int priority)
{
    switch (priority) {
    case 1:
        return {0xd0, 0x30, 0x30};
    case 2:
        return {0xe0, 0xa0, 0x20};
    default:
        return {0x50, 0xa0, 0x50};
    }
}

} // namespace

OrderModel::OrderModel(QObject *parent)
    : QAbstractTableModel(parent)
{
    const QStringList names {
        tr("Abbott & Daughters"),
        tr("Bakery on the Corner, Second Street"),
        tr("Čapek"),
        tr("Дом книги"),
        tr("Epsilon Ltd."),
        tr("שלום ספרים"),
    };
    const QDateTime start(QDate(2024, 5, 6), QTime(9, 12, 31));
    for (int i = 0; i < 40; ++i) {
        const QDateTime ordered = start.addSecs(i * 34567);
        m_orders.append({names.at(i % names.size()), 1 + i % 3, (i * 7919 % 10007) * 12.0,
                         ordered.addDays(14), ordered, i % 4 == 1});
    }
}

int OrderModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_orders.size());
}

int OrderModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(ColumnCount);
}

QVariant OrderModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    const QStringList names {tr("Customer, paid"), tr("Priority"), tr("Amount"), tr("Due"),
                             tr("Ordered")};
    return names.value(section);
}

QVariant OrderModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid())
        return {};
    const Order &order = m_orders.at(index.row());
    const int column = index.column();
    switch (role) {
    case Qt::DisplayRole:
    case Qt::EditRole:
        return value(order, column);
    case Qt::TextAlignmentRole:
        return column == Amount ? QVariant(Qt::AlignRight | Qt::AlignVCenter) : QVariant();
    case Qt::CheckStateRole:
        return column == Customer ? QVariant(order.isPaid ? Qt::Checked : Qt::Unchecked)
                                  : QVariant();
    case Qt::DecorationRole:
        return column == Priority ? QVariant(colorOf(order.priority)) : QVariant();
    case Qt::ForegroundRole:
        return column == Amount && order.amount > 100000 ? QVariant(QBrush(colorOf(1)))
                                                         : QVariant();
    default:
        return {};
    }
}

QVariant OrderModel::value(const Order &order, int column) const
{
    switch (column) {
    case Customer:
        return order.customer;
    case Priority:
        return order.priority;
    case Amount:
        return order.amount;
    case Due:
        return order.due;
    default:
        return order.ordered;
    }
}

bool OrderModel::setData(const QModelIndex &index, const QVariant &value, int role)
{
    if (!index.isValid())
        return false;
    Order &order = m_orders[index.row()];
    if (role == Qt::CheckStateRole && index.column() == Customer)
        order.isPaid = value.toInt() == Qt::Checked;
    else if (role != Qt::EditRole || !change(order, index.column(), value))
        return false;
    emit dataChanged(index, index);
    return true;
}

//! False for a refusal without a reason; throws the reason if there is one.
bool OrderModel::change(Order &order, int column, const QVariant &value) const
{
    switch (column) {
    case Customer:
        if (value.toString().trimmed().isEmpty())
            throw tr("An order needs a customer.");
        order.customer = value.toString();
        return true;
    case Priority:
        if (value.toInt() < 1 || value.toInt() > 3)
            return false;
        order.priority = value.toInt();
        return true;
    case Amount:
        if (value.toDouble() < 0 || value.toDouble() > largestAmount)
            throw tr("An amount is between 0 and %L1.").arg(largestAmount, 0, 'f', 0);
        order.amount = value.toDouble();
        return true;
    case Due:
        if (value.toDateTime() < order.ordered)
            throw tr("Nothing is due before it was ordered.");
        order.due = value.toDateTime();
        return true;
    default:
        return false;
    }
}

Qt::ItemFlags OrderModel::flags(const QModelIndex &index) const
{
    if (!index.isValid())
        return Qt::NoItemFlags;
    Qt::ItemFlags flags = Qt::ItemIsSelectable | Qt::ItemIsEnabled;
    if (index.column() != Ordered)
        flags |= Qt::ItemIsEditable;
    if (index.column() == Customer)
        flags |= Qt::ItemIsUserCheckable;
    return flags;
}
