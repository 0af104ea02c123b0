// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "textsample.h"

#include "controlpictures.h"
#include "recordscanner.h"

TextSample::TextSample(const QByteArray &bytes)
    : m_bytes(bytes.first(qMin(bytes.size(), qsizetype(maximumBytes))))
{
}

//! A carriage return at the very end may be half of a line's end.
char TextSample::lineEnd(const Encoding &encoding) const
{
    const TextUnits units = encoding.units();
    const char *const begin = m_bytes.cbegin();
    const char *const end = m_bytes.cend();
    if (units.find(begin, end, '\n') != end)
        return '\n';
    const char *const last = isCut() ? end - units.bytes : end;
    return units.find(begin, last, '\r') != last ? '\r' : '\n';
}

QStringList TextSample::lines(const TextFormat &format) const
{
    const auto start = format.encoding.markLength(m_bytes);
    const std::unique_ptr<LineScanner> scanner = makeScanner(format, quint64(start), maximumLines);
    scanner->scan(m_bytes.cbegin() + start, std::size_t(m_bytes.size() - start));
    LineIndex index;
    index.append(scanner->takeBatch());
    QStringList lines;
    for (qint64 i = 0; i < index.count(); ++i) {
        const LineSpan span = index.line(i);
        const bool isPartial = !span.terminated && isCut() && !lines.isEmpty();
        if (isPartial)
            break;
        const QByteArrayView bytes(m_bytes.cbegin() + span.offset, qsizetype(span.length));
        lines << withPictures(format.lineText(bytes, span.terminated));
    }
    return lines;
}

TextFormat TextSample::format(const FormatRequest &request) const
{
    TextFormat format;
    format.encoding = request.encoding.value_or(Encoding::of(m_bytes));
    format.lineEnd = lineEnd(format.encoding);
    const TextFormat columns = detectFormat(
        [&](QChar delimiter) {
            TextFormat separated = format;
            separated.delimiter = delimiter;
            return lines(separated);
        },
        request);
    format.delimiter = columns.delimiter;
    format.log = columns.log;
    format.hasHeader = columns.hasHeader;
    format.names = columns.names;
    return format;
}
