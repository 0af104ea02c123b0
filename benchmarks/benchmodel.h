// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef BENCHMODEL_H
#define BENCHMODEL_H

#include <QAbstractTableModel>

//! Ten columns of text, numbers and date-times, computed from the row number. Nothing
//! is stored per row, so that what is measured is the view.
class BenchModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    explicit BenchModel(int rows, QObject *parent = nullptr);

    int rowCount(const QModelIndex &parent = QModelIndex()) const override;
    int columnCount(const QModelIndex &parent = QModelIndex()) const override;
    QVariant data(const QModelIndex &index, int role) const override;

    void insert(int row, int count);
    void remove(int row, int count);
    void change(int row, int column);
    void relayout();
    void restart();

private:
    QVariant text(int row, int column) const;

    int m_rows;
    int m_first = 0; //!< number of row 0: rows keep their content when others come or go
    int m_version = 0;
};

#endif // BENCHMODEL_H
