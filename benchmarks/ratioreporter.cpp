// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "ratioreporter.h"

#include <algorithm>
#include <cstdio>
#include <limits>

void RatioReporter::ReportRuns(const std::vector<Run> &reports)
{
    ConsoleReporter::ReportRuns(reports);
    for (const Run &run : reports) {
        if (run.error_occurred || run.run_type == Run::RT_Aggregate)
            continue;
        const std::string name = run.run_name.function_name;
        const size_t cut = name.rfind('/');
        const std::string subject = name.substr(0, cut);
        const std::string who = name.substr(cut + 1);
        const auto heap = run.counters.find("heap_bytes");
        const double value =
            heap != run.counters.end() ? double(heap->second) : run.GetAdjustedCPUTime();
        if (m_times.find(subject) == m_times.end())
            m_subjects.push_back(subject);
        auto [it, isNew] = m_times[subject].try_emplace(who, value);
        if (!isNew)
            it->second = std::min(it->second, value);
    }
}

bool RatioReporter::isPeer(const std::string &who) const
{
    return std::find(m_peers.begin(), m_peers.end(), who) != m_peers.end();
}

void RatioReporter::printRatios() const
{
    std::printf("\nRatios to the best peer (µs of CPU time, or bytes of heap)\n");
    for (const std::string &subject : m_subjects)
        printSubject(subject, m_times.at(subject));
}

void RatioReporter::printSubject(const std::string &subject,
                                 const std::map<std::string, double> &times) const
{
    double best = std::numeric_limits<double>::infinity();
    for (const auto &[who, time] : times) {
        if (isPeer(who))
            best = std::min(best, time);
    }
    const bool hasPeer = best < std::numeric_limits<double>::infinity();
    std::printf("%-42s", subject.c_str());
    if (hasPeer)
        std::printf(" best peer %12.1f", best);
    for (const auto &[who, time] : times) {
        if (isPeer(who))
            continue;
        std::printf("   %s %12.1f", who.c_str(), time);
        if (hasPeer)
            std::printf(" (%.3f)", time / best);
    }
    std::printf("\n");
}
