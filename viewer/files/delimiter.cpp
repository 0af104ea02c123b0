// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "delimiter.h"

#include <QHash>
#include <QRegularExpression>

#include <algorithm>

namespace {

constexpr qsizetype s_longestNumber = 64; // characters
constexpr qsizetype s_mostColumns = 1000; // more make a header that nobody can use

// Reads the quoted field that begins at *position, and what stands between its
// closing quote and the next delimiter.
QString takeQuoted(const QString &line, QChar delimiter, qsizetype *position)
{
    QString field;
    qsizetype i = *position + 1;
    for (; i < line.size(); ++i) {
        if (line[i] != u'"') {
            field += line[i];
            continue;
        }
        const bool isDoubled = i + 1 < line.size() && line[i + 1] == u'"';
        if (!isDoubled)
            break;
        field += u'"';
        ++i;
    }
    const qsizetype closing = qMin(i + 1, line.size());
    const qsizetype found = line.indexOf(delimiter, closing);
    const qsizetype end = found < 0 ? line.size() : found;
    *position = end;
    return field + line.mid(closing, end - closing);
}

QString takePlain(const QString &line, QChar delimiter, qsizetype *position)
{
    const qsizetype start = *position;
    const qsizetype found = line.indexOf(delimiter, start);
    *position = found < 0 ? line.size() : found;
    return line.mid(start, *position - start);
}

// The most frequent number of fields if it is frequent enough, else 0.
qsizetype commonFieldCount(const QStringList &lines, QChar delimiter)
{
    QHash<qsizetype, qsizetype> occurrences;
    qsizetype total = 0;
    for (const QString &line : lines) {
        if (line.isEmpty())
            continue;
        ++occurrences[splitFields(line, delimiter).size()];
        ++total;
    }
    for (auto it = occurrences.cbegin(); it != occurrences.cend(); ++it) {
        if (it.key() > 1 && total >= 2 && it.value() * 10 >= total * 9)
            return it.key();
    }
    return 0;
}

constexpr char16_t s_delimiters[] {u'\t', u'|', u';', u','};

struct Fields
{
    QChar delimiter;
    QStringList lines; //!< the first ones
    LogFormat log;     //!< if there is no delimiter
};

Fields detectColumns(const FirstLines &lines)
{
    const QStringList plain = lines({});
    // The commas between the members of objects make no columns.
    if (const LogFormat log = LogFormat::of(plain); log.kind != LogFormat::Kind::None)
        return {{}, plain, log};
    for (const QChar candidate : s_delimiters) {
        const QStringList records = lines(candidate);
        if (commonFieldCount(records, candidate) > 0)
            return {candidate, records, {}};
    }
    for (const QChar candidate : s_delimiters) {
        if (commonFieldCount(plain, candidate) > 0)
            return {candidate, plain, {}};
    }
    return {};
}

//! What is asked for counts before what is recognised.
Fields columnsFor(const FirstLines &lines, const FormatRequest &request)
{
    if (request.delimiter)
        return {*request.delimiter, lines(*request.delimiter), {}};
    if (!request.log)
        return detectColumns(lines);
    const QStringList plain = lines({});
    return {{}, plain, LogFormat::ofKind(*request.log, plain)};
}

bool looksLikeHeader(const QStringList &fields)
{
    return std::none_of(fields.begin(), fields.end(), [](const QString &field) {
        return field.trimmed().isEmpty() || isNumber(field);
    });
}

} // namespace

QString TextFormat::lineText(QByteArrayView bytes, bool isTerminated) const
{
    QString text = encoding.decode(bytes);
    // The file may have been cut off since the line was found.
    if (!isTerminated || !text.endsWith(QLatin1Char(lineEnd)))
        return text;
    text.chop(1);
    if (lineEnd == '\n' && text.endsWith(u'\r'))
        text.chop(1);
    return text;
}

QStringList TextFormat::fieldsOf(const QString &line) const
{
    return isDelimited() ? splitFields(line, delimiter, names.size()) : log.split(line);
}

QStringList splitFields(const QString &line, QChar delimiter, qsizetype maximumFields)
{
    QStringList fields;
    qsizetype position = 0;
    while (true) {
        const qsizetype start = position;
        const bool isQuoted = start < line.size() && line[start] == u'"';
        fields << (isQuoted ? takeQuoted(line, delimiter, &position)
                            : takePlain(line, delimiter, &position));
        if (position >= line.size())
            return fields;
        if (fields.size() == maximumFields) {
            fields.last() = line.mid(start);
            return fields;
        }
        ++position;
    }
}

bool isNumber(const QString &field)
{
    static const QRegularExpression number(
        QStringLiteral("^[+-]?(\\d+([.,]\\d+)*|[.,]\\d+)([eE][+-]?\\d+)?%?$"));
    const QStringView text = QStringView(field).trimmed();
    if (text.isEmpty() || text.size() > s_longestNumber || text.front() > u'9')
        return false;
#if QT_VERSION >= QT_VERSION_CHECK(6, 5, 0)
    return number.matchView(text).hasMatch();
#else
    return number.match(text).hasMatch();
#endif
}

TextFormat detectFormat(const FirstLines &lines, const FormatRequest &request)
{
    TextFormat format;
    const Fields found = columnsFor(lines, request);
    format.delimiter = found.delimiter;
    format.log = found.log;
    format.names = found.log.names;
    if (!format.isDelimited())
        return format;
    qsizetype columns = 1;
    for (const QString &line : found.lines)
        columns = qMax(columns, splitFields(line, format.delimiter).size());
    columns = qMin(columns, s_mostColumns);
    const QStringList first = splitFields(found.lines.value(0), format.delimiter, columns);
    format.hasHeader = !found.lines.isEmpty() && request.hasHeader.value_or(looksLikeHeader(first));
    for (qsizetype i = 0; i < columns; ++i) {
        const QString name = format.hasHeader ? first.value(i).trimmed() : QString();
        format.names << (name.isEmpty() ? QString::number(i + 1) : name);
    }
    return format;
}

std::optional<QChar> delimiterFromName(const QString &name)
{
    static const QHash<QString, QChar> names {
        {QStringLiteral("tab"), u'\t'},    {QStringLiteral("\\t"), u'\t'},
        {QStringLiteral("comma"), u','},   {QStringLiteral("semicolon"), u';'},
        {QStringLiteral("pipe"), u'|'},    {QStringLiteral("space"), u' '},
        {QStringLiteral("none"), QChar()},
    };
    const auto it = names.constFind(name.toLower());
    if (it != names.cend())
        return *it;
    const bool isUsable =
        name.size() == 1 && name[0] != u'"' && name[0] != u'\n' && name[0] != u'\r';
    return isUsable ? std::optional(name[0]) : std::nullopt;
}
