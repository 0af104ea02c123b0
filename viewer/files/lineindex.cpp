// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "lineindex.h"

#include <cstring>
#include <utility>

LineScanner::LineScanner(qint64 maximumLines)
    : m_maximumLines(maximumLines)
{
}

bool LineScanner::scan(const char *bytes, std::size_t size)
{
    const char *const end = bytes + size;
    while (bytes < end) {
        if (m_lines >= m_maximumLines)
            return false;
        const void *found = std::memchr(bytes, '\n', static_cast<std::size_t>(end - bytes));
        if (!found) {
            m_batch.tail += static_cast<quint64>(end - bytes);
            return true;
        }
        const char *const next = static_cast<const char *>(found) + 1;
        addLine(std::exchange(m_batch.tail, 0) + static_cast<quint64>(next - bytes));
        bytes = next;
    }
    return true;
}

void LineScanner::addLine(quint64 length)
{
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
    return std::exchange(m_batch, std::move(next));
}

void LineIndex::append(const LineBatch &batch)
{
    m_lengths.append(batch.lengths);
    m_checkpoints.append(batch.checkpoints);
    m_lines += batch.lines;
    m_end = batch.end;
    m_tail = batch.tail;
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
