// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef ROWSPAN_H
#define ROWSPAN_H

#include <QString>

//! Rows of a model between two times, or two places.
struct RowSpan
{
    bool areTimes = false;  //!< rows by what their clocks showed, else by their numbers
    bool haveDates = false; //!< the times have dates; rows whose times have none are not meant
    qint64 from = 0;        //!< milliseconds since 1970, or of the day; or a row from 0 on
    qint64 to = 0;          //!< the same, of the first one that is not meant any more

    friend bool operator==(const RowSpan &, const RowSpan &) = default;
};

//! A span for the user, as "12:00 to 12:05". As exact as its ends need it; rows are counted from
//! 1 on.
QString textOf(const RowSpan &span);

#endif // ROWSPAN_H
