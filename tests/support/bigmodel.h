// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef BIGMODEL_H
#define BIGMODEL_H

#include <QAbstractTableModel>
#include <QList>

#include <algorithm>
#include <utility>

//! A table of any size: nothing is stored per row.
class BigModel : public QAbstractTableModel
{
public:
    explicit BigModel(int rows, int columns = 5)
        : rows(rows)
        , columns(columns)
    {
    }
    int rowCount(const QModelIndex &parent = {}) const override
    {
        return parent.isValid() ? 0 : rows;
    }
    int columnCount(const QModelIndex &parent = {}) const override
    {
        return parent.isValid() ? 0 : columns;
    }
    QVariant data(const QModelIndex &index, int role) const override
    {
        ++asked;
        return role == Qt::DisplayRole ? QVariant(index.row() - first) : QVariant();
    }
    Qt::ItemFlags flags(const QModelIndex &index) const override
    {
        if (index.isValid() && index.row() == disabledRow)
            return Qt::NoItemFlags;
        Qt::ItemFlags flags = QAbstractTableModel::flags(index) | Qt::ItemIsEditable;
        if (index.isValid() ? isDropOnItems : isDropBetween)
            flags |= Qt::ItemIsDropEnabled;
        return flags;
    }
    void sort(int column, Qt::SortOrder order) override { sorted.append({column, int(order)}); }
    bool submit() override
    {
        ++submitted;
        return true;
    }
    bool canFetchMore(const QModelIndex &) const override { return fetchable > 0; }
    void fetchMore(const QModelIndex &) override
    {
        const int count = std::min(fetchable, 7);
        fetchable -= count;
        append(count);
    }

    void insert(int row, int count)
    {
        beginInsertRows({}, row, row + count - 1);
        rows += count;
        if (row == 0)
            first += count;
        endInsertRows();
    }
    void append(int count) { insert(rows, count); }
    void remove(int row, int count)
    {
        beginRemoveRows({}, row, row + count - 1);
        rows -= count;
        if (row == 0)
            first -= count;
        endRemoveRows();
    }
    void move(int row, int count, int to)
    {
        if (beginMoveRows({}, row, row + count - 1, {}, to))
            endMoveRows();
    }
    void restart(int newRows)
    {
        beginResetModel();
        rows = newRows;
        endResetModel();
    }
    //! Says that count rows came, but has more.
    void insertAndLie(int row, int count)
    {
        beginInsertRows({}, row, row + count - 1);
        rows += count + 3;
        endInsertRows();
    }
    void relayout(QAbstractItemModel::LayoutChangeHint hint)
    {
        emit layoutAboutToBeChanged({}, hint);
        emit layoutChanged({}, hint);
    }
    using QAbstractTableModel::dataChanged;

    int rows;
    int columns;
    int first = 0;
    int disabledRow = -1;
    int fetchable = 0;
    int submitted = 0;
    bool isDropOnItems = false;
    bool isDropBetween = false;
    mutable int asked = 0;
    QList<std::pair<int, int>> sorted;
};

#endif // BIGMODEL_H
