// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "lineindex.h"

#include <algorithm>
#include <bit>
#include <utility>

LineScanner::LineScanner(qint64 maximumLines, const LineSyntax &syntax)
    : m_maximumLines(maximumLines)
    , m_syntax(syntax)
{
    m_batch.end = syntax.start;
}

bool LineScanner::scan(const char *bytes, std::size_t size)
{
    const char *const end = bytes + size;
    return m_syntax.units.bytes == 1 ? scanUnits(bytes, end) : scanCutUnits(bytes, end);
}

//! Puts units together that are cut at either end.
bool LineScanner::scanCutUnits(const char *bytes, const char *end)
{
    const int unit = m_syntax.units.bytes;
    while (!m_cutUnit.isEmpty() && bytes < end) {
        m_cutUnit += *bytes++;
        if (m_cutUnit.size() < unit)
            continue;
        const QByteArray whole = std::exchange(m_cutUnit, {});
        if (!scanUnits(whole.cbegin(), whole.cend()))
            return false;
    }
    const char *const cut = end - (end - bytes) % unit;
    m_cutUnit += QByteArray(cut, end - cut);
    return scanUnits(bytes, cut);
}

bool LineScanner::scanUnits(const char *bytes, const char *end)
{
    const TextUnits units = m_syntax.units;
    const char lineEnd = m_syntax.lineEnd;
#ifdef __SSE2__
    if (units.bytes == 1)
        bytes = scanBlocks(bytes, end);
#endif
    while (bytes < end) {
        if (isFull())
            return false;
        const char *const found = units.find(bytes, end, lineEnd);
        if (found == end) {
            addToTail(static_cast<quint64>(end - bytes));
            return true;
        }
        const char *const next = found + units.bytes;
        endLine(static_cast<quint64>(next - bytes));
        bytes = next;
    }
    return true;
}

#ifdef __SSE2__
//! Short lines take less time together than a search for each. Returns where it got to: the end
//! of a line, or of a block.
const char *LineScanner::scanBlocks(const char *bytes, const char *end)
{
    for (const char *block = bytes; end - block >= blockBytes; block += blockBytes) {
        std::uint64_t ends = wantedIn(block, m_syntax.lineEnd);
        for (; ends != 0; ends &= ends - 1) {
            if (isFull())
                return bytes;
            const char *const next = block + std::countr_zero(ends) + 1;
            endLine(static_cast<quint64>(next - bytes));
            bytes = next;
        }
    }
    return bytes;
}
#endif

void LineScanner::endLine(quint64 bytes)
{
    quint64 length = std::exchange(m_batch.tail, 0) + bytes;
    if (m_lines % LineIndex::checkpointInterval == 0)
        m_batch.checkpoints.push_back({m_batch.end, m_lengthsBefore + m_batch.lengths.size()});
    m_batch.end += length;
    ++m_batch.lines;
    ++m_lines;
    while (length >= 0x80) {
        m_batch.lengths.push_back(static_cast<quint8>(length | 0x80));
        length >>= 7;
    }
    m_batch.lengths.push_back(static_cast<quint8>(length));
}

LineBatch LineScanner::takeBatch()
{
    m_lengthsBefore += m_batch.lengths.size();
    LineBatch next;
    next.end = m_batch.end;
    next.tail = m_batch.tail;
    m_batch.tail += static_cast<quint64>(m_cutUnit.size());
    return std::exchange(m_batch, std::move(next));
}

void LineIndex::append(const LineBatch &batch)
{
    m_lengths.append(batch.lengths);
    m_checkpoints.append(batch.checkpoints);
    m_lines += batch.lines;
    m_end = batch.end;
    m_tail = batch.tail;
    m_givenUp += batch.givenUp;
}

quint64 LineIndex::unpack(std::size_t *position) const
{
    quint64 length = 0;
    for (int shift = 0;; shift += 7) {
        const quint8 group = m_lengths[(*position)++];
        length |= quint64(group & 0x7f) << shift;
        if (group < 0x80)
            return length;
    }
}

LineSpan LineIndex::line(qint64 line) const
{
    if (line < 0 || line >= count())
        return {};
    if (line == m_lines)
        return {m_end, m_tail, false};
    const LineCheckpoint &checkpoint =
        m_checkpoints[static_cast<std::size_t>(line / checkpointInterval)];
    auto position = static_cast<std::size_t>(checkpoint.lengthsBefore);
    LineSpan span {checkpoint.offset, unpack(&position), true};
    for (qint64 skip = line % checkpointInterval; skip > 0; --skip) {
        span.offset += span.length;
        span.length = unpack(&position);
    }
    return span;
}

//! Where the packed length of a terminated line is.
std::size_t LineIndex::positionOf(qint64 line) const
{
    const auto checkpoint = static_cast<std::size_t>(line / checkpointInterval);
    auto position = static_cast<std::size_t>(m_checkpoints[checkpoint].lengthsBefore);
    for (qint64 skip = line % checkpointInterval; skip > 0; --skip)
        unpack(&position);
    return position;
}

void LineIndex::readEnds(qint64 first, qint64 end, quint64 mostBytes, quint64 longestLine,
                         std::vector<qsizetype> *ends) const
{
    ends->clear();
    end = std::min(end, m_lines);
    if (first < 0 || first >= end)
        return;
    std::size_t position = positionOf(first);
    quint64 bytes = 0;
    for (qint64 line = first; line < end; ++line) {
        const quint64 length = unpack(&position);
        bytes += length;
        if (length > longestLine || bytes > mostBytes)
            return;
        ends->push_back(static_cast<qsizetype>(bytes));
    }
}

qint64 LineIndex::lineAt(quint64 offset) const
{
    if (offset >= m_end)
        return offset < bytes() ? m_lines : count();
    // The last checkpoint that is not behind the offset.
    std::size_t below = 0;
    std::size_t above = m_checkpoints.size();
    while (above - below > 1) {
        const std::size_t middle = below + (above - below) / 2;
        (m_checkpoints[middle].offset <= offset ? below : above) = middle;
    }
    auto position = static_cast<std::size_t>(m_checkpoints[below].lengthsBefore);
    qint64 line = static_cast<qint64>(below) * checkpointInterval;
    quint64 end = m_checkpoints[below].offset + unpack(&position);
    while (end <= offset) {
        end += unpack(&position);
        ++line;
    }
    return line;
}
