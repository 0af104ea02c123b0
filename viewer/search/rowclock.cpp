// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "rowclock.h"

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
    if (const auto time = m_inTurn.at(row)) {
        m_time = time;
        m_timeRow = row;
    } else if (row <= m_timeRow || row > m_row + 1) {
        const int above = m_hereAndThere.rowWithTimeAbove(row - 1, s_reach);
        m_time = above < 0 ? std::nullopt : m_hereAndThere.at(above);
        m_timeRow = above < 0 ? row - 1 : above;
    }
    m_row = row;
    return m_time;
}

void RowClock::rowsChanged(int first)
{
    m_row = qMin(m_row, first - 1);
    if (first > m_timeRow)
        return;
    m_time.reset();
    m_timeRow = m_row = -1;
}
