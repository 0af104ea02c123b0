// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "logformat.h"

#include "journal.h"

#include <QCoreApplication>
#include <QHash>
#include <QRegularExpression>

#include <algorithm>
#include <optional>

namespace {

constexpr qsizetype s_mostNames = 256;

using Kind = LogFormat::Kind;

//! Values of JSON that are no strings are as they stand: numbers keep all their digits.
struct Member
{
    QString name; //!< may be missing in logfmt
    QString value;
    QString text; //!< both, as they stand in the line
};

using Members = QList<Member>;

class Reader
{
public:
    explicit Reader(const QString &line)
        : m_line(line)
    {
    }

    qsizetype place() const { return m_at; }
    //! What stands from \a begin on up to here.
    QString since(qsizetype begin) const { return m_line.mid(begin, m_at - begin); }
    bool isAtEnd() const { return m_at >= m_line.size(); }
    QChar next() const { return isAtEnd() ? QChar() : m_line[m_at]; }

    void skipSpaces()
    {
        while (!isAtEnd() && m_line[m_at].isSpace())
            ++m_at;
    }

    bool take(QChar character)
    {
        if (next() != character || isAtEnd())
            return false;
        ++m_at;
        return true;
    }

    //! Up to the first of \a ends.
    QString takeUntil(const QString &ends)
    {
        const qsizetype begin = m_at;
        while (!isAtEnd() && !ends.contains(m_line[m_at]))
            ++m_at;
        return m_line.mid(begin, m_at - begin);
    }

    //! A string in double quotes, its escapes resolved; nothing if it does not end.
    std::optional<QString> takeString()
    {
        if (!take(u'"'))
            return {};
        QString text = QStringLiteral(""); // none would be null
        while (!isAtEnd() && next() != u'"') {
            if (take(u'\\'))
                text += takeEscape();
            else
                text += m_line[m_at++];
        }
        if (!take(u'"'))
            return {};
        return text;
    }

    //! A value of JSON: of a string its text, of anything else what stands there.
    std::optional<QString> takeValue()
    {
        if (next() == u'"')
            return takeString();
        const qsizetype begin = m_at;
        int depth = 0;
        while (!isAtEnd()) {
            const QChar character = next();
            if (depth == 0 && (character == u',' || character == u'}' || character == u']'))
                break;
            if (character == u'"') {
                if (!takeString())
                    return {};
                continue;
            }
            depth += character == u'{' || character == u'[' ? 1 : 0;
            depth -= character == u'}' || character == u']' ? 1 : 0;
            ++m_at;
        }
        const QString value = m_line.mid(begin, m_at - begin).trimmed();
        return value.isEmpty() || depth != 0 ? std::nullopt : std::optional(value);
    }

private:
    QString takeEscape()
    {
        const QChar escape = next();
        ++m_at;
        switch (escape.unicode()) {
        case u'n':
            return QStringLiteral("\n");
        case u't':
            return QStringLiteral("\t");
        case u'r':
            return QStringLiteral("\r");
        case u'b':
            return QStringLiteral("\b");
        case u'f':
            return QStringLiteral("\f");
        case u'u': {
            bool isNumber = false;
            const ushort code = m_line.mid(m_at, 4).toUShort(&isNumber, 16);
            m_at += isNumber ? 4 : 0;
            return isNumber ? QString(QChar(code)) : QStringLiteral("\\u");
        }
        default:
            return QString(escape);
        }
    }

    const QString &m_line;
    qsizetype m_at = 0;
};

std::optional<Members> jsonMembers(const QString &line)
{
    Reader reader(line);
    Members members;
    reader.skipSpaces();
    if (!reader.take(u'{'))
        return {};
    reader.skipSpaces();
    for (bool isFirst = true; !reader.take(u'}'); isFirst = false) {
        if (!isFirst && !reader.take(u','))
            return {};
        reader.skipSpaces();
        const qsizetype begin = reader.place();
        const std::optional<QString> name = reader.takeString();
        reader.skipSpaces();
        if (!name || !reader.take(u':'))
            return {};
        reader.skipSpaces();
        const std::optional<QString> value = reader.takeValue();
        if (!value)
            return {};
        members.append({*name, *value, reader.since(begin).trimmed()});
        reader.skipSpaces();
    }
    reader.skipSpaces();
    return reader.isAtEnd() ? std::optional(members) : std::nullopt;
}

bool isName(const QString &name)
{
    return !name.isEmpty() && (name[0].isLetter() || name[0] == u'_' || name[0] == u'@');
}

//! Words without a name that follow each other stay as they stand.
std::optional<Members> logfmtMembers(const QString &line)
{
    Reader reader(line);
    Members members;
    qsizetype unnamed = -1; // where they begin
    qsizetype end = 0;      // of the last of them
    const auto endUnnamed = [&] {
        if (unnamed >= 0)
            members.append({QString(), QString(), line.mid(unnamed, end - unnamed)});
        unnamed = -1;
    };
    while (true) {
        reader.skipSpaces();
        const qsizetype begin = reader.place();
        if (reader.isAtEnd()) {
            endUnnamed();
            return members;
        }
        const QString word = reader.takeUntil(QStringLiteral("= \t\""));
        if (!isName(word) || !reader.take(u'=')) {
            reader.takeUntil(QStringLiteral(" \t"));
            unnamed = unnamed < 0 ? begin : unnamed;
            end = reader.place();
            continue;
        }
        endUnnamed();
        const std::optional<QString> value = reader.next() == u'"'
            ? reader.takeString()
            : std::optional(reader.takeUntil(QStringLiteral(" \t")));
        if (!value)
            return {};
        members.append({word, *value, reader.since(begin)});
    }
}

std::optional<Members> membersOf(Kind kind, const QString &line)
{
    return kind == Kind::Logfmt ? logfmtMembers(line) : jsonMembers(line);
}

const QRegularExpression &accessLine()
{
    static const QRegularExpression expression(QStringLiteral(
        "^(\\S+) (\\S+) (\\S+) \\[([^\\]]+)\\] \"((?:[^\"\\\\]|\\\\.)*)\" (\\d{3}|-) (\\d+|-)"
        "(?: \"((?:[^\"\\\\]|\\\\.)*)\" \"((?:[^\"\\\\]|\\\\.)*)\")?(?: (.*))?$"));
    return expression;
}

const QRegularExpression &syslogLine()
{
    static const QRegularExpression expression(
        QStringLiteral("^((?:<\\d{1,3}>)?(?:[A-Z][a-z]{2} [ \\d]\\d "
                       "\\d\\d:\\d\\d:\\d\\d|\\d{4}-\\d\\d-\\d\\dT[\\d:.,]+"
                       "(?:Z|[+-]\\d\\d:?\\d\\d)?)) (\\S+) ([^\\s:\\[]+)(?:\\[(\\d+)\\])?: (.*)$"));
    return expression;
}

//! What translators get the names of columns from.
struct Columns
{
    Q_DECLARE_TR_FUNCTIONS(LogFormat)
};

QStringList accessNames()
{
    return {Columns::tr("Host"),  Columns::tr("Identity"), Columns::tr("User"),
            Columns::tr("Time"),  Columns::tr("Request"),  Columns::tr("Status"),
            Columns::tr("Bytes"), Columns::tr("Referrer"), Columns::tr("Agent"),
            Columns::tr("More")};
}

QStringList syslogNames()
{
    return {Columns::tr("Time"), Columns::tr("Host"), Columns::tr("Program"),
            Columns::tr("Process"), Columns::tr("Message")};
}

bool isNamed(Kind kind)
{
    return kind == Kind::JsonLines || kind == Kind::Logfmt || kind == Kind::Journal;
}

//! Of every name that a line has, once, and at last of what has none.
QStringList namesIn(Kind kind, const QStringList &lines)
{
    QStringList names;
    for (const QString &line : lines) {
        const Members members = membersOf(kind, line).value_or(Members());
        for (const Member &member : members) {
            const bool isNew = !member.name.isNull() && !names.contains(member.name);
            if (isNew && names.size() < s_mostNames)
                names.append(member.name);
        }
    }
    if (kind == Kind::Journal)
        names = Journal::inOrder(names);
    names.append(Columns::tr("More"));
    return names;
}

bool isOfJournal(const QString &line)
{
    const Members members = jsonMembers(line).value_or(Members());
    return std::any_of(members.begin(), members.end(),
                       [](const Member &member) { return member.name == Journal::timeName(); });
}

//! Objects may be empty; a line of words needs two with names to be no plain text.
bool hasForm(Kind kind, const QString &line)
{
    switch (kind) {
    case Kind::None:
        return true;
    case Kind::JsonLines:
        return jsonMembers(line).has_value();
    case Kind::Logfmt: {
        const std::optional<Members> members = logfmtMembers(line);
        return members && members->size() >= 2
            && std::none_of(members->begin(), members->end(),
                            [](const Member &member) { return member.name.isNull(); });
    }
    case Kind::AccessLog:
        return accessLine().match(line).hasMatch();
    case Kind::Syslog:
        return syslogLine().match(line).hasMatch();
    case Kind::Journal:
        return isOfJournal(line);
    }
    return false;
}

bool areOf(Kind kind, const QStringList &lines)
{
    if (lines.isEmpty() || !hasForm(kind, lines.front()))
        return false;
    qsizetype fitting = 0;
    qsizetype total = 0;
    for (qsizetype at = 0; at < lines.size(); ++at) {
        const bool isFitting = hasForm(kind, lines[at]);
        const bool isCut = at > 0 && at == lines.size() - 1 && !isFitting;
        fitting += isFitting && !lines[at].trimmed().isEmpty() ? 1 : 0;
        total += isCut || lines[at].trimmed().isEmpty() ? 0 : 1;
    }
    return fitting * 10 >= total * 9;
}

} // namespace

LogFormat LogFormat::of(const QStringList &lines)
{
    for (const Kind kind :
         {Kind::Journal, Kind::JsonLines, Kind::AccessLog, Kind::Syslog, Kind::Logfmt}) {
        if (areOf(kind, lines))
            return ofKind(kind, lines);
    }
    return {};
}

LogFormat LogFormat::ofKind(Kind kind, const QStringList &lines)
{
    switch (kind) {
    case Kind::None:
        break;
    case Kind::JsonLines:
    case Kind::Logfmt:
    case Kind::Journal:
        return {kind, namesIn(kind, lines)};
    case Kind::AccessLog:
        return {kind, accessNames()};
    case Kind::Syslog:
        return {kind, syslogNames()};
    }
    return {};
}

char LogFormat::escape() const
{
    return isNamed(kind) ? '\\' : '\0';
}

bool LogFormat::joins(const QString &text) const
{
    return (isNamed(kind) && text.contains(u','))
        || (kind == Kind::Journal && Journal::mayBeInTime(text));
}

std::optional<LogFormat::Kind> LogFormat::kindNamed(const QString &name)
{
    static const QHash<QString, Kind> kinds {
        {QStringLiteral("text"), Kind::None},     {QStringLiteral("json"), Kind::JsonLines},
        {QStringLiteral("logfmt"), Kind::Logfmt}, {QStringLiteral("access"), Kind::AccessLog},
        {QStringLiteral("syslog"), Kind::Syslog}, {QStringLiteral("journal"), Kind::Journal},
    };
    const auto it = kinds.constFind(name.toLower());
    return it == kinds.cend() ? std::nullopt : std::optional(*it);
}

QStringList LogFormat::split(const QString &line) const
{
    if (kind == Kind::None)
        return {line};
    QStringList fields(names.size());
    if (!isNamed(kind)) {
        const QRegularExpression &form = kind == Kind::Syslog ? syslogLine() : accessLine();
        const QRegularExpressionMatch match = form.match(line);
        for (qsizetype at = 0; match.hasMatch() && at < fields.size(); ++at)
            fields[at] = match.captured(int(at) + 1);
        if (!match.hasMatch())
            fields.last() = line;
        return fields;
    }
    const std::optional<Members> members = membersOf(kind, line);
    if (!members) {
        fields.last() = line;
        return fields;
    }
    QStringList more;
    for (const Member &member : *members) {
        const qsizetype at = member.name.isNull() ? -1 : names.indexOf(member.name);
        if (at >= 0 && at < fields.size() - 1 && fields[at].isNull())
            fields[at] = member.value.isNull() ? QStringLiteral("") : member.value;
        else
            more.append(member.text);
    }
    fields.last() = more.join(QLatin1String(", "));
    if (kind == Kind::Journal) {
        QString &time = fields[qMax(0, names.indexOf(Journal::timeName()))];
        time = Journal::timeText(time);
    }
    return fields;
}
