// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef SLOWMODEL_H
#define SLOWMODEL_H

#include <QElapsedTimer>
#include <QStandardItemModel>

//! A model whose rows take longer to read than the time between two looks at the events,
//! so that whoever searches it lets events through after every row.
class SlowModel : public QStandardItemModel
{
public:
    using QStandardItemModel::beginResetModel;
    using QStandardItemModel::endResetModel;

    QVariant data(const QModelIndex &index, int role) const override
    {
        if (role == Qt::DisplayRole && isSlow && index.column() == 0) {
            QElapsedTimer timer;
            timer.start();
            while (timer.elapsed() < 41) { }
        }
        return QStandardItemModel::data(index, role);
    }

    bool isSlow = true;
};

#endif // SLOWMODEL_H
