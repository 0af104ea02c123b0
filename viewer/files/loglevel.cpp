// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "loglevel.h"

#include <array>
#include <utility>

namespace {

constexpr qsizetype s_lookedAt = 200; // characters
constexpr qsizetype s_longestName = 9;

constexpr std::array<std::pair<QStringView, LogLevel>, 18> s_names {{
    {u"emerg", LogLevel::Error},
    {u"emergency", LogLevel::Error},
    {u"alert", LogLevel::Error},
    {u"panic", LogLevel::Error},
    {u"fatal", LogLevel::Error},
    {u"critical", LogLevel::Error},
    {u"crit", LogLevel::Error},
    {u"severe", LogLevel::Error},
    {u"error", LogLevel::Error},
    {u"err", LogLevel::Error},
    {u"warning", LogLevel::Warning},
    {u"warn", LogLevel::Warning},
    {u"notice", LogLevel::Info},
    {u"info", LogLevel::Info},
    {u"debug", LogLevel::Debug},
    {u"trace", LogLevel::Debug},
    {u"fine", LogLevel::Debug},
    {u"verbose", LogLevel::Debug},
}};

LogLevel levelOfWord(QStringView word)
{
    for (const auto &[name, level] : s_names) {
        if (word.compare(name, Qt::CaseInsensitive) == 0)
            return level;
    }
    return LogLevel::None;
}

} // namespace

LogLevel levelOf(QStringView line)
{
    const qsizetype end = qMin(line.size(), s_lookedAt);
    for (qsizetype begin = 0; begin < end; ++begin) {
        qsizetype i = begin;
        while (i < line.size() && line[i].isLetter())
            ++i;
        if (i > begin && i - begin <= s_longestName) {
            const LogLevel level = levelOfWord(line.sliced(begin, i - begin));
            if (level != LogLevel::None)
                return level;
        }
        begin = i;
    }
    return LogLevel::None;
}
