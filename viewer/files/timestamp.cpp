// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "timestamp.h"

#include <array>

namespace {

constexpr qsizetype s_lastBegin = 64;    // bytes
constexpr qint64 s_earliest = 978307200; // 2001, seconds since 1970
constexpr qint64 s_latest = 4102444800;  // 2100
constexpr qint64 s_day = 86400000;       // ms
constexpr qint64 s_julian1970 = 2440588; // day

bool isDigit(char c)
{
    return c >= '0' && c <= '9';
}

bool isWord(char c)
{
    const char lower = char(c | 0x20);
    return isDigit(c) || (lower >= 'a' && lower <= 'z') || c == '_' || (c & 0x80) != 0;
}

//! Takes text piece by piece; what is not there is not taken.
class StampReader
{
public:
    explicit StampReader(QByteArrayView text)
        : m_text(text)
    {
    }

    char peek(qsizetype ahead = 0) const { return ahead < m_text.size() ? m_text[ahead] : '\0'; }
    bool isAtEnd() const { return m_text.isEmpty(); }
    qsizetype left() const { return m_text.size(); }
    void skip(qsizetype count) { m_text = m_text.sliced(count); }
    bool take(char c)
    {
        if (isAtEnd() || peek() != c)
            return false;
        skip(1);
        return true;
    }
    //! One of \a choice, which is returned; 0 without one.
    char takeOneOf(const char *choice)
    {
        for (; *choice; ++choice) {
            if (take(*choice))
                return *choice;
        }
        return 0;
    }
    //! A number of \a count digits.
    std::optional<int> number(int count)
    {
        int value = 0;
        for (int i = 0; i < count; ++i) {
            if (!isDigit(peek(i)))
                return {};
            value = value * 10 + (peek(i) - '0');
        }
        skip(count);
        return value;
    }
    //! The number of a month by its English name, from 1 on.
    std::optional<int> month();

private:
    QByteArrayView m_text;
};

std::optional<int> StampReader::month()
{
    constexpr std::array<const char *, 12> names {"jan", "feb", "mar", "apr", "may", "jun",
                                                  "jul", "aug", "sep", "oct", "nov", "dec"};
    for (size_t i = 0; i < names.size(); ++i) {
        const char *name = names[i];
        if (char(peek(0) | 0x20) == name[0] && char(peek(1) | 0x20) == name[1]
            && char(peek(2) | 0x20) == name[2]) {
            skip(3);
            return int(i) + 1;
        }
    }
    return {};
}

//! Milliseconds; nothing if there is no such day.
std::optional<qint64> dayAt(int year, int month, int day)
{
    if (year < 1000 || !QDate::isValid(year, month, day))
        return {};
    return (QDate(year, month, day).toJulianDay() - s_julian1970) * s_day;
}

int milliseconds(StampReader *text)
{
    int value = 0;
    int unit = 100;
    while (isDigit(text->peek())) {
        value += unit * (text->peek() - '0');
        unit /= 10;
        text->skip(1);
    }
    return value;
}

//! Milliseconds since midnight. Seconds may be left out if \a isLenient.
std::optional<qint64> timeOfDay(StampReader *text, bool isLenient)
{
    const auto hour = text->number(2);
    if (!hour || *hour > 23 || !text->take(':'))
        return {};
    const auto minute = text->number(2);
    if (!minute || *minute > 59)
        return {};
    qint64 time = (*hour * 60 + *minute) * 60000;
    if (!text->take(':'))
        return isLenient ? std::optional(time) : std::nullopt;
    const auto second = text->number(2);
    if (!second || *second > 60 || isDigit(text->peek()))
        return {};
    time += *second * 1000;
    if ((text->peek() == '.' || text->peek() == ',') && isDigit(text->peek(1))) {
        text->skip(1);
        time += milliseconds(text);
    }
    return time;
}

//! Minutes; 0 without a zone.
int zone(StampReader *text)
{
    StampReader ahead = *text;
    if (ahead.take('Z')) {
        if (!isWord(ahead.peek()))
            *text = ahead;
        return 0;
    }
    ahead.take(' ');
    const char sign = ahead.takeOneOf("+-");
    const auto hours = sign ? ahead.number(2) : std::nullopt;
    const bool hasColon = hours && ahead.take(':');
    const auto minutes = hours ? ahead.number(2) : std::nullopt;
    if (!hours || (hasColon && !minutes) || isDigit(ahead.peek()) || *hours > 14
        || minutes.value_or(0) > 59)
        return 0;
    *text = ahead;
    const int offset = *hours * 60 + minutes.value_or(0);
    return sign == '-' ? -offset : offset;
}

std::optional<TimeStamp> timeOn(std::optional<qint64> day, StampReader *text, bool isLenient)
{
    const auto time = day ? timeOfDay(text, isLenient) : std::nullopt;
    if (!time)
        return {};
    const int offset = zone(text);
    return TimeStamp {*day + *time, offset, true};
}

//! As in "2026-11-22T11:25:45".
std::optional<TimeStamp> yearFirst(StampReader *text, bool isLenient)
{
    const auto year = text->number(4);
    const char separator = year ? text->takeOneOf("-/.") : '\0';
    const auto month = separator ? text->number(2) : std::nullopt;
    const bool isPair = month && text->take(separator);
    const auto day = isPair ? text->number(2) : std::nullopt;
    if (!day)
        return {};
    const auto date = dayAt(*year, *month, *day);
    if (date && isLenient && text->isAtEnd())
        return TimeStamp {*date, 0, true};
    return text->takeOneOf("T _t:") ? timeOn(date, text, isLenient) : std::nullopt;
}

//! As in "22/Nov/2026:11:25:45".
std::optional<TimeStamp> dayFirst(StampReader *text, bool isLenient)
{
    const auto day = text->number(2);
    const char separator = day ? text->takeOneOf("/- ") : '\0';
    const auto month = separator ? text->month() : std::nullopt;
    const bool isPair = month && text->take(separator);
    const auto year = isPair ? text->number(4) : std::nullopt;
    if (!year || !text->takeOneOf(": T"))
        return {};
    return timeOn(dayAt(*year, *month, *day), text, isLenient);
}

//! The last such day that is not after the one that follows \a latest: clocks differ.
std::optional<qint64> dayWithoutYear(int month, int day, QDate latest)
{
    constexpr int leapYears = 8; // between two of them at most
    const QDate end = latest.addDays(1);
    for (int year = end.year(); year >= end.year() - leapYears; --year) {
        if (QDate::isValid(year, month, day) && QDate(year, month, day) <= end)
            return dayAt(year, month, day);
    }
    return {};
}

//! As in "Nov 22 11:25:45", "Nov  2 11:25:45" or, with a year, "Nov 22 11:25:45 2026".
std::optional<TimeStamp> monthFirst(StampReader *text, QDate latest, bool isLenient)
{
    const auto month = text->month();
    if (!month || !text->take(' '))
        return {};
    const bool isShort = text->take(' ') || !isDigit(text->peek(1));
    const auto day = text->number(isShort ? 1 : 2);
    if (!day || !text->take(' '))
        return {};
    auto stamp = timeOn(dayWithoutYear(*month, *day, latest), text, isLenient);
    StampReader ahead = *text;
    const auto year = stamp && ahead.take(' ') ? ahead.number(4) : std::nullopt;
    const auto date = year && !isWord(ahead.peek()) ? dayAt(*year, *month, *day) : std::nullopt;
    if (!date || *year < 1970 || *year > 2100)
        return stamp;
    *text = ahead;
    stamp->clock = *date + stamp->clock % s_day;
    return stamp;
}

std::optional<TimeStamp> timeOnly(StampReader *text, bool isLenient)
{
    auto stamp = timeOn(0, text, isLenient);
    if (stamp)
        stamp->hasDate = false;
    return stamp;
}

//! Since 1970.
std::optional<TimeStamp> seconds(StampReader *text)
{
    int digits = 0;
    qint64 value = 0;
    for (; digits < 14 && isDigit(text->peek(digits)); ++digits)
        value = value * 10 + (text->peek(digits) - '0');
    if (digits != 10 && digits != 13)
        return {};
    text->skip(digits);
    qint64 time = digits == 10 ? value * 1000 : value;
    if (time < s_earliest * 1000 || time >= s_latest * 1000 || isWord(text->peek()))
        return {};
    if (digits == 10 && text->peek() == '.' && isDigit(text->peek(1))) {
        text->skip(1);
        time += milliseconds(text);
    }
    return TimeStamp {time, 0, true};
}

using Form = std::optional<TimeStamp> (*)(StampReader *, QDate, bool);

//! The first form that \a text begins with, which is taken.
std::optional<TimeStamp> stamp(StampReader *text, QDate latest, bool isLenient)
{
    constexpr std::array<Form, 5> forms {
        [](StampReader *from, QDate, bool lenient) { return yearFirst(from, lenient); },
        [](StampReader *from, QDate, bool lenient) { return dayFirst(from, lenient); },
        [](StampReader *from, QDate end, bool lenient) { return monthFirst(from, end, lenient); },
        [](StampReader *from, QDate, bool lenient) { return timeOnly(from, lenient); },
        [](StampReader *from, QDate, bool) { return seconds(from); },
    };
    for (const Form form : forms) {
        StampReader ahead = *text;
        const auto found = form(&ahead, latest, isLenient);
        if (found && !isDigit(ahead.peek())) {
            *text = ahead;
            return found;
        }
    }
    return {};
}

//! Whether a stamp may begin with \a c: most places are passed by that.
bool mayBegin(char c)
{
    return isDigit(c) || (c >= 'A' && c <= 'Z');
}

} // namespace

std::optional<TimeStamp> timeStampOf(QByteArrayView line, QDate latest)
{
    const QByteArrayView seen = line.first(qMin(line.size(), timeStampBytes));
    for (qsizetype begin = 0; begin < qMin(seen.size(), s_lastBegin); ++begin) {
        const char before = begin > 0 ? seen[begin - 1] : ' ';
        // A number, or a part of an address, is no time.
        const bool isInside = isWord(before) || before == '.' || before == ':' || before == '-';
        if (isInside || !mayBegin(seen[begin]))
            continue;
        StampReader text(seen.sliced(begin));
        if (const auto found = stamp(&text, latest, false))
            return found;
    }
    return {};
}

std::optional<TimeStamp> timeStampFrom(QByteArrayView text, QDate latest)
{
    StampReader reader(text.trimmed());
    const auto found = stamp(&reader, latest, true);
    return reader.isAtEnd() ? found : std::nullopt;
}
