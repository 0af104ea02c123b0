// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "ratioreporter.h"

#include <algorithm>
#include <cstdio>
#include <limits>

namespace {

//! Google Benchmark 1.8 renamed the member.
template<typename Run> bool isFailed(const Run &run)
{
    if constexpr (requires { run.error_occurred; })
        return run.error_occurred;
    else
        return bool(run.skipped);
}

} // namespace

double RatioReporter::valueOf(const Run &run) const
{
    const auto heap = run.counters.find("heap_bytes");
    if (heap != run.counters.end())
        return double(heap->second);
    const auto items = run.counters.find("items_per_second");
    if (m_perItem && items != run.counters.end())
        return 1e9 / double(items->second);
    return run.GetAdjustedCPUTime();
}

void RatioReporter::ReportRuns(const std::vector<Run> &reports)
{
    if (!m_perItem) // else there are too many to read
        ConsoleReporter::ReportRuns(reports);
    for (const Run &run : reports) {
        if (isFailed(run) || run.run_type == Run::RT_Aggregate)
            continue;
        const std::string name = run.run_name.function_name;
        const size_t cut = name.rfind('/');
        const std::string subject = name.substr(0, cut);
        const std::string who = name.substr(cut + 1);
        const double value = valueOf(run);
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

void RatioReporter::printPeers(const std::string &ours) const
{
    std::printf("\nns of CPU time for each operation; peers with the ratio of %s to them\n",
                ours.c_str());
    for (const auto &[subject, times] : m_times) {
        const auto own = times.find(ours);
        if (own == times.end())
            continue;
        std::printf("%-18s %s %.1f", subject.c_str(), ours.c_str(), own->second);
        const char *best = nullptr;
        double least = std::numeric_limits<double>::infinity();
        for (const auto &[who, time] : times) {
            if (!isPeer(who))
                continue;
            std::printf("   %s %.1f (%.2f)", who.c_str(), time, own->second / time);
            if (time < least)
                best = who.c_str();
            least = std::min(least, time);
        }
        if (best != nullptr)
            std::printf("   best %s", best);
        std::printf("\n");
    }
}

int RatioReporter::printGoals(const std::string &ours, const std::vector<Goal> &goals) const
{
    std::printf("\nRatios and the highest that are good enough\n");
    int missed = 0;
    for (const Goal &goal : goals) {
        const auto subject = m_times.find(goal.subject);
        if (subject == m_times.end())
            continue;
        const auto own = subject->second.find(ours);
        const auto peer = subject->second.find(goal.peer);
        if (own == subject->second.end() || peer == subject->second.end())
            continue;
        const double ratio = own->second / peer->second;
        const bool isMissed = ratio > goal.ratio;
        missed += isMissed ? 1 : 0;
        std::printf("%-18s %-8s %.3f of %.3f%s\n", goal.subject.c_str(), goal.peer.c_str(), ratio,
                    goal.ratio, isMissed ? "   missed" : "");
    }
    return missed;
}
