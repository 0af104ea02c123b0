// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef ROWRANGES_H
#define ROWRANGES_H

#include <deque>

//! Rows that have yet to be looked at, in the order in which they are.
class RowRanges
{
public:
    //! All of \a count rows, from \a first on and then those above.
    void begin(int first, int count)
    {
        m_ranges.clear();
        append(first, count);
        append(0, first);
    }
    //! Those from \a first to the one before \a end, behind all others.
    void append(int first, int end)
    {
        if (!m_ranges.empty() && m_ranges.back().end == first)
            m_ranges.back().end = end;
        else if (first < end)
            m_ranges.push_back({first, end});
    }
    void clear() { m_ranges.clear(); }
    bool isEmpty() const { return m_ranges.empty(); }
    //! The row to be looked at next, if there is one.
    int next() const { return m_ranges.front().next; }
    //! The row up to which rows follow next() without a gap.
    int end() const { return m_ranges.front().end; }
    //! Those before \a row, which is behind next() and at most end(), have been looked at.
    void goOn(int row)
    {
        m_ranges.front().next = row;
        if (row >= m_ranges.front().end)
            m_ranges.pop_front();
    }
    //! Whether \a row is yet to be looked at.
    bool contains(int row) const
    {
        for (const Range &range : m_ranges) {
            if (row >= range.next && row < range.end)
                return true;
        }
        return false;
    }

private:
    struct Range
    {
        int next;
        int end;
    };

    std::deque<Range> m_ranges;
};

#endif // ROWRANGES_H
