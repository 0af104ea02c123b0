// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "timesearch.h"

#include "search/rowtimes.h"
#include "timesteps.h"

#include <QElapsedTimer>

#include <utility>

namespace {

constexpr int s_samples = 100;
constexpr int s_mostWithout = 500; // rows without a time that follow each other
constexpr int s_timeReach = 2000;  // rows that are looked at for the first time of all
constexpr int s_askedAtOnce = 16;

qint64 midnight(qint64 clock)
{
    const qint64 sinceMidnight = (clock % dayTime + dayTime) % dayTime;
    return clock - sinceMidnight;
}

} // namespace

TimeSearch::TimeSearch(QObject *parent)
    : QObject(parent)
{
    m_timer.setSingleShot(true);
    connect(&m_timer, &QTimer::timeout, this, &TimeSearch::goThrough);
}

void TimeSearch::cancel()
{
    if (m_model)
        m_model->disconnect(this);
    m_model = nullptr;
    m_timer.stop();
}

void TimeSearch::end(int row)
{
    cancel();
    Q_EMIT found(row);
}

void TimeSearch::find(QAbstractItemModel *model, const TimeStamp &time, int row)
{
    cancel();
    m_model = model;
    m_time = time;
    m_next = 0;
    const RowTimes times(*model);
    if (!prepare(times, row)) {
        end(-1);
        return;
    }
    if (isOrdered(times, model->rowCount()) && halve(times)) {
        const int timed = times.rowWithTime(m_next, model->rowCount(), s_mostWithout);
        end(timed < model->rowCount() ? timed : -1);
        return;
    }
    connect(model, &QAbstractItemModel::modelReset, this, &TimeSearch::cancel);
    connect(model, &QAbstractItemModel::rowsRemoved, this, &TimeSearch::cancel);
    m_timer.start(0);
}

//! Makes the time one that rows can have. Returns false if none has a time.
bool TimeSearch::prepare(const RowTimes &times, int row)
{
    const int rows = m_model->rowCount();
    int first = times.rowWithTimeAbove(row, s_timeReach);
    if (first < 0)
        first = times.rowWithTime(0, rows, s_timeReach);
    const auto near = first < rows ? times.at(first) : std::nullopt;
    if (!near)
        return false;
    m_hasZone = m_time.offset != 0;
    if (!near->hasDate && m_time.hasDate)
        m_time.clock -= midnight(m_time.clock);
    else if (near->hasDate && !m_time.hasDate)
        m_time.clock += midnight(near->clock);
    m_time.hasDate = near->hasDate;
    return true;
}

//! Who writes no zone means the clock that he sees.
bool TimeSearch::isReached(const TimeStamp &time) const
{
    return m_hasZone ? time.utc() >= m_time.utc() : time.clock >= m_time.clock;
}

bool TimeSearch::isOrdered(const RowTimes &times, int rows)
{
    std::optional<TimeStamp> before;
    for (int i = 0; i < s_samples; ++i) {
        const int row = int(qint64(rows) * i / s_samples);
        const int timed = times.rowWithTime(row, rows, s_mostWithout);
        if (timed == rows)
            return rows - row <= s_mostWithout; // the last ones belong to those before
        const auto time = times.at(timed);
        if (before && (time->clock < before->clock || time->utc() < before->utc()))
            return false;
        before = time;
    }
    return true;
}

//! Goes on to the last row of which all above are too early. Returns false where it comes to so
//! many rows without a time that going through them would take long.
bool TimeSearch::halve(const RowTimes &times)
{
    const int rows = m_model->rowCount();
    int end = rows;
    while (m_next < end) {
        const int middle = m_next + (end - m_next) / 2;
        const int timed = times.rowWithTime(middle, rows, s_mostWithout);
        if (timed == rows && rows - middle > s_mostWithout)
            return false;
        if (timed == rows || isReached(*times.at(timed)))
            end = middle;
        else
            m_next = timed + 1;
    }
    return true;
}

void TimeSearch::goThrough()
{
    if (!m_model)
        return;
    const RowTimes times(*m_model, RowTimes::Order::InTurn);
    QElapsedTimer since;
    since.start();
    while (since.elapsed() < slice) {
        for (int i = 0; i < s_askedAtOnce; ++i, ++m_next) {
            if (m_next >= m_model->rowCount()) {
                end(-1);
                return;
            }
            const auto time = times.at(m_next);
            if (time && isReached(*time)) {
                end(m_next);
                return;
            }
        }
    }
    m_timer.start(0);
}
