// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef TIMESTAMP_H
#define TIMESTAMP_H

#include <QByteArrayView>
#include <QDate>

#include <optional>

//! When something happened, as a clock showed it.
struct TimeStamp
{
    qint64 clock = 0;     //!< milliseconds since the beginning of 1970, or of the day
    int offset = 0;       //!< minutes that the clock is ahead of UTC; 0 too where that is not said
    bool hasDate = false; //!< else it is a time of some day

    //! Milliseconds by which different clocks can be compared.
    qint64 utc() const { return clock - qint64(offset) * 60000; }

    friend bool operator==(const TimeStamp &, const TimeStamp &) = default;
};

//! Bytes of a line that timeStampOf() looks at.
constexpr qsizetype timeStampBytes = 128;

/*!
 * The first time stamp of a line that begins within its first 64 bytes, if there is one: as in
 * "2026-11-22T11:25:45.123Z", also with slashes or dots, a blank, a comma, or a zone as "+01:00";
 * "22/Nov/2026:11:25:45 +0000"; "Nov 22 11:25:45", also with a year behind it; "11:25:45"; or
 * seconds or milliseconds since 1970, of the years from 2001 to 2100. A stamp without a year is
 * of the last one that does not begin after \a latest, the day after it included.
 */
std::optional<TimeStamp> timeStampOf(QByteArrayView line, QDate latest);

//! The time that somebody wrote, in any of these ways and nothing else beside it. Seconds, and
//! the time of a day behind its date, may be left out.
std::optional<TimeStamp> timeStampFrom(QByteArrayView text, QDate latest);

#endif // TIMESTAMP_H
