// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "rowclock.h"

#include <utility>

namespace {

constexpr int s_reach = 2000; // rows

} // namespace

RowClock::RowClock(const QAbstractItemModel &model)
    : m_inTurn(model, RowTimes::Order::InTurn)
    , m_hereAndThere(model)
{
}

std::optional<TimeStamp> RowClock::timeOf(int row)
{
    const int before = std::exchange(m_row, row);
    if (auto time = m_inTurn.at(row))
        m_time = time;
    else if (row != before + 1) {
        const int above = m_hereAndThere.rowWithTimeAbove(row - 1, s_reach);
        m_time = above < 0 ? std::nullopt : m_hereAndThere.at(above);
    }
    return m_time;
}
