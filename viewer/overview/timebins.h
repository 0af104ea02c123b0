// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef TIMEBINS_H
#define TIMEBINS_H

#include "files/loglevel.h"

#include <QtGlobal>

#include <vector>

/*!
 * \brief How many rows there are at which times, in little memory.
 *
 * Times that follow each other share a bin. When there would be too many, bins become wider, to
 * whole seconds, minutes, hours and days, each of which begins when a clock shows it.
 */
class TimeBins
{
public:
    //! Rows by their level.
    struct Counts
    {
        int errors = 0;
        int warnings = 0;
        int others = 0;

        int rows() const { return errors + warnings + others; }
        Counts &operator+=(const Counts &more);
    };

    static constexpr int most = 2048; //!< bins

    void clear() { *this = {}; }
    //! Counts a row of \a level at \a time, milliseconds since 1970, \a times; negative to take
    //! back what was counted.
    void add(qint64 time, LogLevel level, int times = 1);
    //! Makes bins wider until there are at most \a atMost, which is at least 2.
    void shrinkTo(int atMost);

    bool isEmpty() const { return m_bins.empty(); }
    //! Bins, of which those in between may be empty.
    int count() const { return int(m_bins.size()); }
    const Counts &at(int bin) const { return m_bins[size_t(bin)]; }
    //! Milliseconds that share a bin.
    qint64 width() const { return m_width; }
    //! The beginning of the first bin, milliseconds since 1970.
    qint64 begin() const { return m_first * m_width; }

private:
    void widen();

    std::vector<Counts> m_bins; //!< the first and the last one have had rows
    qint64 m_first = 0;         //!< number of the first bin, counted from 1970
    qint64 m_width = 1;         //!< see width()
};

#endif // TIMEBINS_H
