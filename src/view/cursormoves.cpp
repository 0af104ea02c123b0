// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "cursormoves_p.h"

#include <algorithm>

QModelIndex CursorMoves::beside(const QModelIndex &current, int step) const
{
    const int column = m_columns.neighbour(current.column(), step);
    return column < 0 ? QModelIndex() : current.sibling(current.row(), column);
}

QModelIndex CursorMoves::next(const QModelIndex &current, int step) const
{
    const QModelIndex inRow = beside(current, step);
    if (inRow.isValid())
        return inRow;
    const int row = current.row() + step;
    const int rows = rowCount();
    return endOfRow(row < 0 ? rows - 1 : row >= rows ? 0 : row, step);
}

QModelIndex CursorMoves::inRows(const QModelIndex &current, int rows) const
{
    const qint64 row = std::clamp<qint64>(qint64(current.row()) + rows, 0, rowCount() - 1);
    return m_model->index(int(row), current.column());
}

QModelIndex CursorMoves::endOfRow(int row, int step) const
{
    const int column = m_columns.end(step);
    return column < 0 ? QModelIndex() : m_model->index(row, column);
}

QModelIndex CursorMoves::endOfTable(int step) const
{
    return endOfRow(step > 0 ? 0 : rowCount() - 1, step);
}
