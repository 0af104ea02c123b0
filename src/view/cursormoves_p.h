// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef CURSORMOVES_P_H
#define CURSORMOVES_P_H

#include "headercolumns_p.h"

#include <QAbstractItemModel>

/*!
 * \brief Where keys lead from a cell of a table.
 *
 * Columns are taken in the order on screen, hidden ones left out. Every answer is a cell, or
 * an invalid index where there is none.
 */
class CursorMoves
{
public:
    //! \a header may be null; then there are no columns.
    CursorMoves(const QAbstractItemModel *model, const QHeaderView *header)
        : m_model(model)
        , m_columns(header)
    {
    }

    //! The cell \a step (1 or −1) columns on in the row.
    QModelIndex beside(const QModelIndex &current, int step) const;
    //! As beside(); from the last cell of a row to the first of the next, and back, round the
    //! table.
    QModelIndex next(const QModelIndex &current, int step) const;
    //! The cell \a rows rows below, or above, as far as there are any.
    QModelIndex inRows(const QModelIndex &current, int rows) const;
    //! The first (\a step 1) or last (−1) cell of \a row.
    QModelIndex endOfRow(int row, int step) const;
    //! The first (\a step 1) or last (−1) cell of the table.
    QModelIndex endOfTable(int step) const;

private:
    int rowCount() const { return m_model->rowCount(QModelIndex()); }

    const QAbstractItemModel *m_model;
    HeaderColumns m_columns;
};

#endif // CURSORMOVES_P_H
