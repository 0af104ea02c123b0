// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "timebins.h"

#include <algorithm>
#include <array>
#include <utility>

namespace {

constexpr qint64 s_second = 1000;
constexpr qint64 s_minute = 60 * s_second;
constexpr qint64 s_hour = 60 * s_minute;
constexpr qint64 s_day = 24 * s_hour;

// Each is so many times the one before.
constexpr std::array s_widths {qint64(1),     qint64(5),     qint64(10), qint64(50),
                               qint64(100),   qint64(500),   s_second,   5 * s_second,
                               10 * s_second, 30 * s_second, s_minute,   5 * s_minute,
                               10 * s_minute, 30 * s_minute, s_hour,     3 * s_hour,
                               6 * s_hour,    12 * s_hour,   s_day};

qint64 divided(qint64 number, qint64 by)
{
    return number >= 0 ? number / by : -((by - 1 - number) / by);
}

} // namespace

TimeBins::Counts &TimeBins::Counts::operator+=(const Counts &more)
{
    errors += more.errors;
    warnings += more.warnings;
    others += more.others;
    return *this;
}

void TimeBins::add(qint64 time, LogLevel level, int times)
{
    qint64 bin = divided(time, m_width);
    if (isEmpty())
        m_first = bin;
    while (std::max(bin, m_first + count() - 1) - std::min(bin, m_first) >= most) {
        widen();
        bin = divided(time, m_width);
    }
    if (bin < m_first) {
        m_bins.insert(m_bins.begin(), size_t(m_first - bin), Counts());
        m_first = bin;
    }
    if (bin >= m_first + count())
        m_bins.resize(size_t(bin - m_first) + 1);
    Counts &counts = m_bins[size_t(bin - m_first)];
    (level == LogLevel::Error         ? counts.errors
         : level == LogLevel::Warning ? counts.warnings
                                      : counts.others) += times;
}

void TimeBins::shrinkTo(int atMost)
{
    while (count() > atMost)
        widen();
}

void TimeBins::widen()
{
    const auto *next = std::upper_bound(s_widths.begin(), s_widths.end(), m_width);
    const qint64 width = next == s_widths.end() ? 2 * m_width : *next;
    const qint64 share = width / m_width;
    const qint64 first = divided(m_first, share);
    std::vector<Counts> bins;
    for (int i = 0; i < count(); ++i) {
        bins.resize(size_t(divided(m_first + i, share) - first) + 1);
        bins.back() += at(i);
    }
    m_bins = std::move(bins);
    m_first = first;
    m_width = width;
}
