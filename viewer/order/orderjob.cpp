// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "orderjob.h"

#include <algorithm>
#include <utility>

OrderJob::OrderJob(const RowSorter::Reader &read, Qt::SortOrder order, std::vector<int> rows,
                   std::vector<int> staying)
    : m_read(read)
    , m_order(order)
    , m_sorter(read, std::move(rows), order)
    , m_staying(std::move(staying))
{
}

void OrderJob::step()
{
    if (!m_sorter.isDone())
        m_sorter.step();
    else
        place();
    if (m_sorter.isDone() && isMerge() && m_rows.empty())
        m_rows = m_sorter.takeRows();
}

//! Finds the place of one more row: the ones before it are before it here, too.
void OrderJob::place()
{
    const int row = m_rows[m_places.size()];
    const SortValue value(m_read(row));
    const auto isBefore = [&](int other) {
        const int result = SortValue(m_read(other)).compare(value, m_order);
        return result < 0 || (result == 0 && other < row);
    };
    const auto from = m_staying.begin() + (m_places.empty() ? 0 : m_places.back());
    const auto place = std::partition_point(from, m_staying.end(), isBefore);
    m_places.push_back(int(place - m_staying.begin()));
}

std::vector<int> OrderJob::takeOrder()
{
    if (!isMerge())
        return m_sorter.takeRows();
    std::vector<int> order;
    order.reserve(m_staying.size() + m_rows.size());
    auto next = m_staying.cbegin();
    for (std::size_t at = 0; at < m_rows.size(); ++at) {
        const auto end = m_staying.cbegin() + m_places[at];
        order.insert(order.end(), next, end);
        order.push_back(m_rows[at]);
        next = end;
    }
    order.insert(order.end(), next, m_staying.cend());
    return order;
}
