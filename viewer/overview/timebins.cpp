// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "timebins.h"

#include "timesteps.h"

#include <algorithm>
#include <utility>

namespace {

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
    const auto *next = std::upper_bound(timeSteps.begin(), timeSteps.end(), m_width);
    const qint64 width = next == timeSteps.end() ? 2 * m_width : *next;
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
