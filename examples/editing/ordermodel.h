// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef ORDERMODEL_H
#define ORDERMODEL_H

#include <QAbstractTableModel>
#include <QDateTime>
#include <QList>

//! Orders that can be edited within reason. A refusal is explained by throwing the
//! reason, which Vantix::ItemDelegate shows under the editor.
class OrderModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum Column {
        Customer, //!< checkable; must not be empty
        Priority, //!< decorated with a colour; 1 to 3, refused without a reason
        Amount,   //!< right-aligned; not negative, at most a million
        Due,      //!< not before the order
        Ordered,
        ColumnCount
    };

    explicit OrderModel(QObject *parent = nullptr);

    int rowCount(const QModelIndex &parent = QModelIndex()) const override;
    int columnCount(const QModelIndex &parent = QModelIndex()) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    bool setData(const QModelIndex &index, const QVariant &value, int role) override;
    Qt::ItemFlags flags(const QModelIndex &index) const override;

private:
    struct Order
    {
        QString customer;
        int priority;
        double amount;
        QDateTime due;
        QDateTime ordered;
        bool isPaid;
    };

    QVariant value(const Order &order, int column) const;
    bool change(Order &order, int column, const QVariant &value) const;

    QList<Order> m_orders;
};

#endif // ORDERMODEL_H
