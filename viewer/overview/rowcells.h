// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef ROWCELLS_H
#define ROWCELLS_H

#include <vector>

/*!
 * \brief How many rows of some kind there are, and about where, in little memory.
 *
 * Rows that follow each other share a cell. When there would be too many cells, twice as many
 * rows share one: nothing has to be counted again.
 */
class RowCells
{
public:
    static constexpr int most = 4096; //!< cells

    void clear();
    //! Counts \a row, from 0 on, \a times; negative to take back what was counted.
    void add(int row, int times = 1);
    //! Rows counted in the cells that have rows from \a first to the one before \a end: with
    //! fewer than most rows only those, else some of their neighbours too.
    int between(int first, int end) const;
    //! Rows counted.
    int total() const { return m_total; }

private:
    void shareMore();

    std::vector<int> m_cells; //!< as far as there is something in them
    int m_shift = 0;          //!< 2 to the power of it rows share a cell
    int m_total = 0;          //!< see total()
};

#endif // ROWCELLS_H
