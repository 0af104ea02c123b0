// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "loglevel.h"

#include <algorithm>
#include <array>
#include <utility>

namespace {

constexpr qsizetype s_lookedAt = 200; // characters
constexpr qsizetype s_longestLevel = 9;

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

char lower(char c)
{
    return char(c | 0x20);
}

bool isLetter(QChar c)
{
    return c.isLetter();
}

bool isLetter(char c)
{
    return lower(c) >= 'a' && lower(c) <= 'z';
}

// Of ASCII letters.
LogLevel levelOfWord(QByteArrayView word)
{
    const auto isSame = [](char a, QChar b) { return lower(a) == b.toLatin1(); };
    for (const auto &[name, level] : s_names) {
        if (name.size() == word.size() && isSame(word.front(), name.front())
            && std::equal(word.begin(), word.end(), name.begin(), isSame))
            return level;
    }
    return LogLevel::None;
}

template<typename Text> LogLevel levelOfText(Text line)
{
    const qsizetype end = qMin(line.size(), s_lookedAt);
    for (qsizetype begin = 0; begin < end; ++begin) {
        qsizetype i = begin;
        while (i < line.size() && isLetter(line[i]))
            ++i;
        if (i > begin && i - begin <= s_longestLevel) {
            const LogLevel level = levelOfWord(line.sliced(begin, i - begin));
            if (level != LogLevel::None)
                return level;
        }
        begin = i;
    }
    return LogLevel::None;
}

static_assert(levelBytes > s_lookedAt + s_longestLevel);

} // namespace

LogLevel levelOf(QStringView line)
{
    return levelOfText(line);
}

LogLevel levelOfAscii(QByteArrayView line)
{
    return levelOfText(line);
}

// Only those stand out that somebody has to look at, or need not.
QColor levelColor(LogLevel level)
{
    switch (level) {
    case LogLevel::Error:
        return {0xd0, 0x20, 0x20};
    case LogLevel::Warning:
        return {0xb0, 0x70, 0x00};
    case LogLevel::Debug:
        return {0x80, 0x80, 0x80};
    case LogLevel::Info:
    case LogLevel::None:
        break;
    }
    return {};
}
