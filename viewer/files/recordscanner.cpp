// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "recordscanner.h"

#include <algorithm>
#include <cstring>
#include <utility>

//! Bytes that are scanned, and what comes next in them. Each byte is looked at once for
//! quotes and once for ends of lines, however many there are of the other kind.
struct RecordScanner::Piece
{
    Piece(const char *bytes, const char *end, const LineSyntax &syntax)
        : begin(bytes)
        , at(bytes)
        , end(end)
        , quote(syntax.units.find(bytes, end, '"'))
        , lineEnd(syntax.units.find(bytes, end, syntax.lineEnd))
    {
    }

    const char *begin;
    const char *at; //!< scanned up to here
    const char *end;
    const char *quote;   //!< the first from at on, or end
    const char *lineEnd; //!< the same
};

RecordScanner::RecordScanner(qint64 maximumLines, const LineSyntax &syntax,
                             const QByteArray &delimiter)
    : LineScanner(maximumLines, syntax)
    , m_delimiter(delimiter)
{
}

bool RecordScanner::scanUnits(const char *bytes, const char *end)
{
    Piece piece(bytes, end, syntax());
    while (piece.at < end) {
        if (isFull())
            return false;
        if (m_isAtClosing)
            passClosing(&piece);
        else if (m_isQuoted)
            passQuoted(&piece);
        else
            passPlain(&piece);
    }
    m_before = (m_before + QByteArray(bytes, end - bytes).right(m_delimiter.size()))
                   .right(m_delimiter.size());
    return true;
}

//! Goes to \a to without ending the record.
void RecordScanner::advance(Piece *piece, const char *to)
{
    addToTail(quint64(to - piece->at));
    piece->at = to;
    if (piece->quote < to)
        piece->quote = syntax().units.find(to, piece->end, '"');
    if (piece->lineEnd < to)
        piece->lineEnd = syntax().units.find(to, piece->end, syntax().lineEnd);
}

//! Outside of quotes, up to the next end of a line or quote.
void RecordScanner::passPlain(Piece *piece)
{
    const int unit = syntax().units.bytes;
    if (piece->quote < piece->lineEnd) {
        m_isQuoted = !m_isGivenUp && isFieldStart(*piece, piece->quote);
        advance(piece, piece->quote + unit);
        return;
    }
    if (piece->lineEnd == piece->end) {
        advance(piece, piece->end);
        return;
    }
    advance(piece, piece->lineEnd + unit);
    endLine(0);
    m_innerLines.clear();
    m_innerBytes = 0;
    m_isGivenUp = false;
}

//! Within quotes, up to the next end of a line or quote. However the text is cut into
//! pieces, records are given up at the same byte.
void RecordScanner::passQuoted(Piece *piece)
{
    const char *const next = std::min(piece->quote, piece->lineEnd);
    const quint64 room = maximumBytes - std::min(tail(), maximumBytes);
    if (quint64(next - piece->at) > room) {
        advance(piece, piece->at + room);
        giveUp();
    } else if (next == piece->end) {
        advance(piece, next);
    } else if (next == piece->quote) {
        advance(piece, next + syntax().units.bytes);
        m_isAtClosing = true;
    } else {
        advance(piece, next + syntax().units.bytes);
        m_innerLines.push_back(tail() - m_innerBytes);
        m_innerBytes = tail();
        if (m_innerLines.size() > maximumInnerLines)
            giveUp();
    }
}

//! Behind a quote that another one would make a plain character.
void RecordScanner::passClosing(Piece *piece)
{
    m_isAtClosing = false;
    m_isQuoted = piece->quote == piece->at;
    if (m_isQuoted)
        advance(piece, piece->at + syntax().units.bytes);
}

bool RecordScanner::isFieldStart(const Piece &piece, const char *place) const
{
    const auto before = place - piece.at;
    if (tail() + quint64(before) == 0)
        return true;
    const auto size = m_delimiter.size();
    if (size > 0 && place - piece.begin >= size)
        return std::memcmp(place - size, m_delimiter.constData(), std::size_t(size)) == 0;
    // It may have begun in the piece before.
    const QByteArray here(piece.begin, place - piece.begin);
    return size > 0 && (m_before + here).endsWith(m_delimiter);
}

//! The record's lines become lines as they stand.
void RecordScanner::giveUp()
{
    const quint64 rest = tail() - m_innerBytes;
    dropTail();
    for (const quint64 length : std::exchange(m_innerLines, {})) {
        if (!isFull())
            endLine(length);
    }
    if (!isFull())
        addToTail(rest);
    countGivenUp();
    m_innerBytes = 0;
    m_isQuoted = false;
    m_isAtClosing = false;
    m_isGivenUp = rest > 0;
}

void RecordScanner::finish()
{
    if (m_isQuoted && !m_isAtClosing)
        giveUp();
}

std::unique_ptr<LineScanner> makeScanner(const TextFormat &format, quint64 start,
                                         qint64 maximumLines)
{
    const LineSyntax syntax {format.encoding.units(), format.lineEnd, start};
    if (!format.isDelimited())
        return std::make_unique<LineScanner>(maximumLines, syntax);
    return std::make_unique<RecordScanner>(maximumLines, syntax,
                                           format.encoding.encode(format.delimiter));
}
