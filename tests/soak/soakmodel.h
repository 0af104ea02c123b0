// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef SOAKMODEL_H
#define SOAKMODEL_H

#include <QAbstractTableModel>
#include <QHash>
#include <QList>

//! A table whose rows have lasting identities and change in every way a model can.
class SoakModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    explicit SoakModel(int rows, QObject *parent = nullptr);

    int rowCount(const QModelIndex &parent = QModelIndex()) const override;
    int columnCount(const QModelIndex &parent = QModelIndex()) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    Qt::ItemFlags flags(const QModelIndex &index) const override;
    void sort(int column, Qt::SortOrder order) override;

    //! What tells a row from all others; −1 out of range.
    qint64 identity(int row) const;

    void insert(int row, int count);
    void remove(int row, int count);
    void move(int row, int count, int destination);
    //! Changes a block of cells and says so.
    void change(int top, int bottom, int left, int right);
    //! Changes all cells and says so with invalid corners.
    void changeUnsaid();
    void restart(int rows);
    //! Reverses the order of the rows as a layout change.
    void turnRound(QAbstractItemModel::LayoutChangeHint hint);
    void insertColumn(int column);
    void removeColumn(int column);

private:
    struct Row
    {
        qint64 identity;
        QHash<int, int> versions {}; //!< changes by column
    };

    template<typename Change> void relayout(LayoutChangeHint hint, Change change);
    QList<Row> fresh(int count);
    QVariant look(const Row &row, int column, int role) const;

    qint64 m_next = 0; // before m_rows, which takes from it
    QList<Row> m_rows;
    QList<int> m_columns {0, 1, 2, 3, 4};
    int m_nextColumn = 5;
    int m_version = 0;
};

#endif // SOAKMODEL_H
