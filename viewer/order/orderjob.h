// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef ORDERJOB_H
#define ORDERJOB_H

#include "rowsorter.h"

/*!
 * \brief Sorts rows and puts them among others that are sorted, piece by piece.
 */
class OrderJob
{
public:
    //! Sorts \a rows, which ascend, into \a staying, which has others in their order already.
    OrderJob(const RowSorter::Reader &read, Qt::SortOrder order, std::vector<int> rows,
             std::vector<int> staying);

    bool isDone() const { return m_sorter.isDone() && m_places.size() == m_rows.size(); }
    //! Whether others stay, whose texts must not change meanwhile.
    bool isMerge() const { return !m_staying.empty(); }
    //! Works for some milliseconds.
    void step();
    //! How much is done, from 0 to 1.
    double progress() const { return m_sorter.progress(); }
    //! All rows in their order, once isDone().
    std::vector<int> takeOrder();

private:
    void place();

    RowSorter::Reader m_read;
    Qt::SortOrder m_order;
    RowSorter m_sorter;
    std::vector<int> m_staying;
    std::vector<int> m_rows;   //!< in their order, if there are any that stay
    std::vector<int> m_places; //!< of m_rows among m_staying
};

#endif // ORDERJOB_H
