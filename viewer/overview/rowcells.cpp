// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "rowcells.h"

#include <algorithm>
#include <cstddef>
#include <numeric>

void RowCells::clear()
{
    *this = {};
}

void RowCells::add(int row, int times)
{
    while ((row >> m_shift) >= most)
        shareMore();
    const auto cell = size_t(row >> m_shift);
    if (cell >= m_cells.size())
        m_cells.resize(cell + 1);
    m_cells[cell] += times;
    m_total += times;
}

void RowCells::shareMore()
{
    ++m_shift;
    for (size_t i = 0; i < m_cells.size(); i += 2)
        m_cells[i / 2] = m_cells[i] + (i + 1 < m_cells.size() ? m_cells[i + 1] : 0);
    m_cells.resize((m_cells.size() + 1) / 2);
}

int RowCells::between(int first, int end) const
{
    if (first >= end)
        return 0;
    const auto cells = std::ptrdiff_t(m_cells.size());
    const auto from = std::min<std::ptrdiff_t>(first >> m_shift, cells);
    const auto to = std::min<std::ptrdiff_t>(((end - 1) >> m_shift) + 1, cells);
    return std::accumulate(m_cells.begin() + from, m_cells.begin() + to, 0);
}
