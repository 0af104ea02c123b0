// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "feed.h"

#include <array>
#include <cstdio>
#include <cstdlib>

namespace {

std::int64_t keyOf(int number, int column)
{
    return std::int64_t(number) * Contents::columns + column;
}

//! Seconds since a midnight as "day hh:mm:ss".
int writeTime(char *text, std::size_t size, int seconds)
{
    const int ofDay = ((seconds % 86400) + 86400) % 86400;
    return std::snprintf(text, size, "day %d %02d:%02d:%02d", (seconds - ofDay) / 86400,
                         ofDay / 3600, ofDay / 60 % 60, ofDay % 60);
}

} // namespace

Contents::Contents(int rows)
    : m_rows(rows)
{
}

std::string Contents::text(int number, int column) const
{
    std::array<char, 48> text {};
    int length = 0;
    const auto changed =
        m_versions.empty() ? m_versions.end() : m_versions.find(keyOf(number, column));
    if (changed != m_versions.end())
        length = std::snprintf(text.data(), text.size(), "%d changed", changed->second);
    else if (column == 0)
        length = std::snprintf(text.data(), text.size(), "%d", number);
    else if (column == 1)
        length = std::snprintf(text.data(), text.size(), "%.2f", double(number % 100000) / 100);
    else if (column == 2 || column == 3)
        length = writeTime(text.data(), text.size(), number);
    else if (column == 5)
        length = std::snprintf(text.data(), text.size(), "%lld", number * 7LL);
    else
        length = std::snprintf(text.data(), text.size(), "row %d col %d", number, column);
    return std::string(text.data(), std::size_t(length));
}

int Contents::numberOf(const std::string &text)
{
    return std::atoi(text.c_str());
}

void Contents::insertAbove()
{
    ++m_rows;
    ++m_above;
}

void Contents::change(int number, int column)
{
    if (column != 0)
        m_versions[keyOf(number, column)] = ++m_version;
}

bool scenarioFromName(const std::string &name, Scenario *scenario)
{
    static const std::unordered_map<std::string, Scenario> scenarios = {
        {"open", Scenario::Open},
        {"append", Scenario::Append},
        {"above", Scenario::Above},
        {"change", Scenario::Change},
        {"mixed", Scenario::Mixed},
        {"scroll-row", Scenario::ScrollRow},
        {"scroll-page", Scenario::ScrollPage},
    };
    const auto found = scenarios.find(name);
    if (found == scenarios.end())
        return false;
    *scenario = found->second;
    return true;
}

Schedule::Schedule(Scenario scenario)
    : m_scenario(scenario)
{
}

Event Schedule::next()
{
    switch (m_scenario) {
    case Scenario::Above:
        return Event::InsertAbove;
    case Scenario::Change:
        return Event::Change;
    case Scenario::ScrollRow:
        return Event::ScrollRow;
    case Scenario::ScrollPage:
        return Event::ScrollPage;
    case Scenario::Open:
    case Scenario::Append:
        return Event::Append;
    case Scenario::Mixed:
        break;
    }
    // The generator's numbers are the same everywhere, which those of a distribution are not.
    const unsigned dice = unsigned(m_random() % 10);
    return dice < 3 ? Event::Append : dice < 6 ? Event::InsertAbove : Event::Change;
}
