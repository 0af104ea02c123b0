// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "benchmodel.h"

#include <QBrush>
#include <QDateTime>
#include <QTimeZone>

BenchModel::BenchModel(int rows, QObject *parent)
    : QAbstractTableModel(parent)
    , m_rows(rows)
{
}

int BenchModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : m_rows;
}

int BenchModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : 10;
}

QVariant BenchModel::data(const QModelIndex &index, int role) const
{
    const int column = index.column();
    switch (role) {
    case Qt::DisplayRole:
        return text(index.row() - m_first, column);
    case Qt::TextAlignmentRole:
        return column % 2 ? QVariant(Qt::AlignRight | Qt::AlignVCenter) : QVariant();
    case Qt::ForegroundRole:
        return column == 4 ? QVariant(QBrush(QColor(0, 96, 0))) : QVariant();
    default:
        return {};
    }
}

QVariant BenchModel::text(int row, int column) const
{
    switch (column) {
    case 0:
        return row;
    case 1:
        return double(row % 100000) / 100;
    case 2:
    case 3:
        return QDateTime::fromMSecsSinceEpoch(1700000000000LL + row * 1000LL, QTimeZone::utc());
    case 5:
        return row * 7 + m_version;
    default:
        return QStringLiteral("row %1 col %2").arg(row).arg(column);
    }
}

void BenchModel::insert(int row, int count)
{
    beginInsertRows({}, row, row + count - 1);
    m_rows += count;
    if (row == 0)
        m_first += count;
    endInsertRows();
}

void BenchModel::remove(int row, int count)
{
    beginRemoveRows({}, row, row + count - 1);
    m_rows -= count;
    if (row == 0)
        m_first -= count;
    endRemoveRows();
}

void BenchModel::change(int row, int column)
{
    ++m_version;
    emit dataChanged(index(row, column), index(row, column));
}

void BenchModel::relayout()
{
    emit layoutAboutToBeChanged({}, QAbstractItemModel::VerticalSortHint);
    emit layoutChanged({}, QAbstractItemModel::VerticalSortHint);
}

void BenchModel::restart()
{
    beginResetModel();
    endResetModel();
}
