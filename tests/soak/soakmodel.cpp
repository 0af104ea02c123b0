// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "soakmodel.h"

#include <QBrush>

#include <algorithm>

SoakModel::SoakModel(int rows, QObject *parent)
    : QAbstractTableModel(parent)
    , m_rows(fresh(rows))
{
}

int SoakModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_rows.size());
}

int SoakModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_columns.size());
}

QVariant SoakModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid())
        return {};
    const Row &row = m_rows.at(index.row());
    const int column = m_columns.at(index.column());
    if (role != Qt::DisplayRole)
        return look(row, column, role);
    return QString::number((row.identity * 7 + column) * 13
                           + (row.versions.value(column) + m_version) * 5);
}

//! Some cells are coloured, aligned, decorated or checked.
QVariant SoakModel::look(const Row &row, int column, int role) const
{
    const auto kind = int(row.identity + row.versions.value(column));
    switch (role) {
    case Qt::TextAlignmentRole:
        return column % 2 ? QVariant(Qt::AlignRight | Qt::AlignVCenter) : QVariant();
    case Qt::ForegroundRole:
        return kind % 4 == 1 ? QVariant(QBrush(QColor(0, 16 * (kind % 16), 96))) : QVariant();
    case Qt::BackgroundRole:
        return kind % 7 == 2 ? QVariant(QBrush(QColor(255, 200, 0, 40 * (kind % 6)))) : QVariant();
    case Qt::DecorationRole:
        return kind % 5 == 3 ? QVariant(QColor(Qt::darkCyan)) : QVariant();
    case Qt::CheckStateRole:
        return column == 0 ? QVariant(kind % 3) : QVariant();
    default:
        return {};
    }
}

Qt::ItemFlags SoakModel::flags(const QModelIndex &index) const
{
    if (!index.isValid())
        return Qt::NoItemFlags;
    if (m_rows.at(index.row()).identity % 11 == 3)
        return Qt::ItemIsSelectable;
    return Qt::ItemIsSelectable | Qt::ItemIsEnabled | Qt::ItemIsEditable;
}

void SoakModel::sort(int column, Qt::SortOrder order)
{
    const auto key = [column](const Row &row) {
        return (row.identity * 2654435761LL) >> (column & 7) & 0xff;
    };
    relayout(QAbstractItemModel::VerticalSortHint, [&] {
        std::stable_sort(m_rows.begin(), m_rows.end(), [&](const Row &a, const Row &b) {
            return order == Qt::AscendingOrder ? key(a) < key(b) : key(b) < key(a);
        });
    });
}

qint64 SoakModel::identity(int row) const
{
    return row >= 0 && row < m_rows.size() ? m_rows.at(row).identity : -1;
}

void SoakModel::insert(int row, int count)
{
    beginInsertRows({}, row, row + count - 1);
    const QList<Row> added = fresh(count);
    m_rows = m_rows.mid(0, row) + added + m_rows.mid(row);
    endInsertRows();
}

void SoakModel::remove(int row, int count)
{
    beginRemoveRows({}, row, row + count - 1);
    m_rows.remove(row, count);
    endRemoveRows();
}

void SoakModel::move(int row, int count, int destination)
{
    if (!beginMoveRows({}, row, row + count - 1, {}, destination))
        return;
    const auto begin = m_rows.begin();
    if (destination < row)
        std::rotate(begin + destination, begin + row, begin + row + count);
    else
        std::rotate(begin + row, begin + row + count, begin + destination);
    endMoveRows();
}

void SoakModel::change(int top, int bottom, int left, int right)
{
    for (int row = top; row <= bottom; ++row) {
        for (int column = left; column <= right; ++column)
            ++m_rows[row].versions[m_columns.at(column)];
    }
    emit dataChanged(index(top, left), index(bottom, right));
}

void SoakModel::changeUnsaid()
{
    ++m_version;
    emit dataChanged({}, {});
}

void SoakModel::restart(int rows)
{
    beginResetModel();
    m_rows = fresh(rows);
    endResetModel();
}

void SoakModel::turnRound(QAbstractItemModel::LayoutChangeHint hint)
{
    relayout(hint, [this] { std::reverse(m_rows.begin(), m_rows.end()); });
}

void SoakModel::insertColumn(int column)
{
    beginInsertColumns({}, column, column);
    m_columns.insert(column, m_nextColumn++);
    endInsertColumns();
}

void SoakModel::removeColumn(int column)
{
    beginRemoveColumns({}, column, column);
    m_columns.removeAt(column);
    endRemoveColumns();
}

template<typename Change> void SoakModel::relayout(LayoutChangeHint hint, Change change)
{
    emit layoutAboutToBeChanged({}, hint);
    const QModelIndexList before = persistentIndexList();
    QList<qint64> identities;
    for (const QModelIndex &index : before)
        identities.append(identity(index.row()));
    change();
    QHash<qint64, int> rowOf;
    for (int row = 0; row < m_rows.size(); ++row)
        rowOf.insert(m_rows.at(row).identity, row);
    QModelIndexList after;
    for (qsizetype i = 0; i < before.size(); ++i)
        after.append(index(rowOf.value(identities.at(i), -1), before.at(i).column()));
    changePersistentIndexList(before, after);
    emit layoutChanged({}, hint);
}

QList<SoakModel::Row> SoakModel::fresh(int count)
{
    QList<Row> rows;
    for (int i = 0; i < count; ++i)
        rows.append(Row {m_next++});
    return rows;
}
