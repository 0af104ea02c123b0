// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "framestatistics.h"

#include <cmath>

namespace {

constexpr qint64 s_step = 10000;        // nanoseconds
constexpr std::size_t s_steps = 100000; // a second in all

} // namespace

FrameStatistics::FrameStatistics()
    : m_counts(s_steps + 1)
{
}

void FrameStatistics::add(qint64 nanoseconds)
{
    const auto step = std::size_t(qMax<qint64>(nanoseconds, 0) / s_step);
    ++m_counts[qMin(step, s_steps)];
    ++m_frames;
    m_longest = qMax(m_longest, nanoseconds);
}

double FrameStatistics::percentile(double percent) const
{
    const auto wanted = qint64(std::ceil(double(m_frames) * percent / 100));
    qint64 seen = 0;
    for (std::size_t step = 0; step < s_steps; ++step) {
        seen += m_counts[step];
        if (seen >= wanted && seen > 0)
            return double(step + 1) * s_step / 1e6;
    }
    return double(m_longest) / 1e6;
}
