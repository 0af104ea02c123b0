// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "spanjudge.h"

#include "files/textfilemodel.h"

namespace {

constexpr int s_timesAtOnce = 1024;    // of a file
constexpr int s_numbersAtOnce = 16384; // not looked at
constexpr int s_mostHeirs = 2000;

} // namespace

void SpanJudge::setSource(const QAbstractItemModel *source)
{
    m_source = source;
    m_clock.reset();
    m_run = {};
}

SpanJudge::Run SpanJudge::runFrom(int first, int end)
{
    // Who looks at texts may come back in the middle of a run.
    if (first < m_run.first || first >= m_run.end)
        m_run = look(first, end);
    return {first, qMin(m_run.end, end), m_run.isIn};
}

SpanJudge::Run SpanJudge::look(int first, int end)
{
    Run run {first, first + 1, isIn(first)};
    // How long others take over their data nobody knows.
    const bool isFile = qobject_cast<const TextFileModel *>(m_source) != nullptr;
    const int most = !m_span.areTimes ? s_numbersAtOnce : isFile ? s_timesAtOnce : 1;
    const int last = first + qMin(end - first, most);
    while (run.end < last && isIn(run.end) == run.isIn)
        ++run.end;
    return run;
}

bool SpanJudge::isIn(int row)
{
    if (!m_span.areTimes)
        return row >= m_span.from && row < m_span.to;
    if (!m_clock)
        m_clock.emplace(*m_source);
    const auto time = m_clock->timeOf(row);
    return time && time->hasDate == m_span.haveDates && time->clock >= m_span.from
        && time->clock < m_span.to;
}

int SpanJudge::endOfHeirs(int row) const
{
    const int rows = m_source->rowCount();
    if (!m_span.areTimes || row >= rows)
        return row;
    const int end = rows - row > s_mostHeirs ? row + s_mostHeirs : rows;
    return RowTimes(*m_source).rowWithTime(row, end, s_mostHeirs);
}

void SpanJudge::rowsCame(int first, int count)
{
    rowsChanged(first);
    if (m_span.areTimes)
        return;
    m_span.from += first <= m_span.from ? count : 0;
    m_span.to += first < m_span.to ? count : 0;
}

void SpanJudge::rowsWent(int first, int count)
{
    rowsChanged(first);
    if (m_span.areTimes)
        return;
    const auto without = [&](qint64 row) {
        return row >= first + count ? row - count : qMin(row, qint64(first));
    };
    m_span.from = without(m_span.from);
    m_span.to = without(m_span.to);
}

void SpanJudge::rowsChanged(int first)
{
    m_run.end = qMin(m_run.end, first);
    if (m_clock)
        m_clock->rowsChanged(first);
}
