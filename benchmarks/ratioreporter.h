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
    //! \a peers are the names of those that are not ours.
    explicit RatioReporter(std::vector<std::string> peers)
        : ConsoleReporter(OO_Tabular)
        , m_peers(std::move(peers))
    {
    }

    void ReportRuns(const std::vector<Run> &reports) override;
    void printRatios() const;

private:
    bool isPeer(const std::string &who) const;
    void printSubject(const std::string &subject, const std::map<std::string, double> &times) const;

    std::vector<std::string> m_peers;
    std::vector<std::string> m_subjects;                          //!< in order of appearance
    std::map<std::string, std::map<std::string, double>> m_times; //!< µs or bytes
};

#endif // RATIOREPORTER_H
