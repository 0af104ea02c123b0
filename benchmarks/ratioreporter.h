// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef RATIOREPORTER_H
#define RATIOREPORTER_H

#include <benchmark/benchmark.h>

#include <map>
#include <string>
#include <vector>

//! Prints results as they come, then a table: for each subject the smallest CPU time,
//! and for each one of ours its ratio to the best peer. Benchmarks are named
//! subject/size/who.
class RatioReporter : public benchmark::ConsoleReporter
{
public:
    //! The highest ratio to one peer that is good enough.
    struct Goal
    {
        std::string subject; //!< subject/size
        std::string peer;
        double ratio;
    };

    //! \a peers are the names of those that are not ours.
    explicit RatioReporter(std::vector<std::string> peers)
        : ConsoleReporter(OO_Tabular)
        , m_peers(std::move(peers))
    {
    }

    //! Makes times those of one item, in ns, for benchmarks of many short operations.
    void setPerItem() { m_perItem = true; }

    void ReportRuns(const std::vector<Run> &reports) override;
    void printRatios() const;
    //! Each peer on its own, for the one of ours that is named.
    void printPeers(const std::string &ours) const;
    //! The goals whose subject and peer were measured. Returns how many were missed.
    int printGoals(const std::string &ours, const std::vector<Goal> &goals) const;

private:
    double valueOf(const Run &run) const;
    bool isPeer(const std::string &who) const;
    void printSubject(const std::string &subject, const std::map<std::string, double> &times) const;

    bool m_perItem = false;
    std::vector<std::string> m_peers;
    std::vector<std::string> m_subjects;                          //!< in order of appearance
    std::map<std::string, std::map<std::string, double>> m_times; //!< µs, ns an item or bytes
};

#endif // RATIOREPORTER_H
