// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef FRAMESTATISTICS_H
#define FRAMESTATISTICS_H

#include <QtGlobal>

#include <vector>

//! Counts frames and how long they took, to 10 µs, in constant memory.
class FrameStatistics
{
public:
    FrameStatistics();

    //! Adds a frame that took \a nanoseconds.
    void add(qint64 nanoseconds);

    //! Frames added.
    qint64 frames() const { return m_frames; }

    //! Milliseconds that \a percent of a hundred frames do not exceed, rounded up to
    //! 10 µs; frames above a second count by the longest. 0 without frames.
    double percentile(double percent) const;

private:
    std::vector<quint32> m_counts; //!< frames by 10 µs of duration; the last: longer ones
    qint64 m_frames = 0;           //!< frames added
    qint64 m_longest = 0;          //!< nanoseconds
};

#endif // FRAMESTATISTICS_H
