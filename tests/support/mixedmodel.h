// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef MIXEDMODEL_H
#define MIXEDMODEL_H

#include <QAbstractTableModel>
#include <QColor>

//! Texts, check marks and decorations.
class MixedModel : public QAbstractTableModel
{
public:
    int rowCount(const QModelIndex &parent = {}) const override
    {
        return parent.isValid() ? 0 : 40;
    }
    int columnCount(const QModelIndex &parent = {}) const override
    {
        return parent.isValid() ? 0 : 4;
    }
    QVariant data(const QModelIndex &index, int role) const override
    {
        if (role == Qt::DisplayRole)
            return QStringLiteral("%1, %2").arg(index.row()).arg(index.column());
        if (role == Qt::CheckStateRole && index.column() == 2)
            return index.row() % 2 ? Qt::Checked : Qt::Unchecked;
        if (role == Qt::DecorationRole && index.column() == 3)
            return QColor(Qt::darkCyan);
        return {};
    }
};

#endif // MIXEDMODEL_H
