// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef ROWCLOCK_H
#define ROWCLOCK_H

#include "rowtimes.h"

//! Tells the times of rows that are asked for downwards; one without a time of its own has that
//! of the row above, in reach of some thousand rows. The model must live on.
class RowClock
{
public:
    explicit RowClock(const QAbstractItemModel &model);

    std::optional<TimeStamp> timeOf(int row);
    //! The rows from \a first on are others now.
    void rowsChanged(int first);

private:
    RowTimes m_inTurn;
    RowTimes m_hereAndThere;
    std::optional<TimeStamp> m_time; //!< of m_row
    int m_timeRow = -1;              //!< the row that has it; none between that and m_row has one
    int m_row = -1;                  //!< asked for last
};

#endif // ROWCLOCK_H
