// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "rownumbers.h"

#include <algorithm>
#include <iterator>

void RowNumbers::Chunk::append(std::span<const int> rows)
{
    for (const int row : rows)
        numbers.push_back(row - offset);
}

int RowNumbers::at(int place) const
{
    const Chunk &chunk = m_chunks[chunkAt(place)];
    return chunk.numbers[std::size_t(place - chunk.before)] + chunk.offset;
}

//! The chunk that has \a place; behind them all the number of chunks.
std::size_t RowNumbers::chunkAt(int place) const
{
    const auto found = std::partition_point(m_chunks.begin(), m_chunks.end(),
                                            [&](const Chunk &c) { return c.end() <= place; });
    return std::size_t(found - m_chunks.begin());
}

int RowNumbers::placeOf(int row) const
{
    const auto chunk = std::partition_point(m_chunks.begin(), m_chunks.end(),
                                            [&](const Chunk &c) { return c.last() < row; });
    if (chunk == m_chunks.end())
        return size();
    const auto found =
        std::lower_bound(chunk->numbers.begin(), chunk->numbers.end(), row - chunk->offset);
    return chunk->before + int(found - chunk->numbers.begin());
}

bool RowNumbers::contains(int row) const
{
    const int place = placeOf(row);
    return place < size() && at(place) == row;
}

void RowNumbers::insert(int place, std::span<const int> rows)
{
    if (rows.empty())
        return;
    if (place == size()) {
        append(rows);
        return;
    }
    const std::size_t index = chunkAt(place);
    Chunk &chunk = m_chunks[index];
    if (chunk.numbers.size() + rows.size() <= chunkLength) {
        if (m_chunks.size() > 1)
            chunk.numbers.reserve(chunkLength); // doubling would go beyond
        const auto at = chunk.numbers.begin() + (place - chunk.before);
        const auto added = chunk.numbers.insert(at, rows.begin(), rows.end());
        for (auto it = added; it != added + std::ssize(rows); ++it)
            *it -= chunk.offset;
        countFrom(index);
        return;
    }
    const std::size_t next = split(place);
    Chunks added = chunksOf(rows);
    const std::size_t end = next + added.size();
    m_chunks.insert(m_chunks.begin() + std::ptrdiff_t(next), std::make_move_iterator(added.begin()),
                    std::make_move_iterator(added.end()));
    join(end);
    join(next);
    countFrom(next > 0 ? next - 1 : 0);
}

RowNumbers::Chunks RowNumbers::chunksOf(std::span<const int> rows)
{
    Chunks chunks;
    for (; !rows.empty(); rows = rows.subspan(std::min(rows.size(), chunkLength))) {
        const auto part = rows.first(std::min(rows.size(), chunkLength));
        chunks.push_back({{part.begin(), part.end()}});
    }
    return chunks;
}

void RowNumbers::append(std::span<const int> rows)
{
    while (!rows.empty()) {
        if (m_chunks.empty() || m_chunks.back().numbers.size() >= chunkLength)
            m_chunks.push_back({{}, 0, size()});
        Chunk &chunk = m_chunks.back();
        const auto part = rows.first(std::min(rows.size(), chunkLength - chunk.numbers.size()));
        if (m_chunks.size() > 1)
            chunk.numbers.reserve(chunkLength);
        chunk.append(part);
        rows = rows.subspan(part.size());
    }
}

//! Makes a chunk begin at \a place, and returns it.
std::size_t RowNumbers::split(int place)
{
    const std::size_t index = chunkAt(place);
    const int inside = place - m_chunks[index].before;
    if (inside == 0)
        return index;
    std::vector<int> &numbers = m_chunks[index].numbers;
    const auto cut = numbers.begin() + inside;
    Chunk rest {{cut, numbers.end()}, m_chunks[index].offset, place};
    numbers.erase(cut, numbers.end());
    m_chunks.insert(m_chunks.begin() + std::ptrdiff_t(index) + 1, std::move(rest));
    return index + 1;
}

//! Puts a \a chunk to the one before if they fit into one. Many small ones would be slow.
void RowNumbers::join(std::size_t chunk)
{
    if (chunk == 0 || chunk >= m_chunks.size())
        return;
    Chunk &into = m_chunks[chunk - 1];
    const Chunk &from = m_chunks[chunk];
    if (into.numbers.size() + from.numbers.size() > chunkLength)
        return;
    const int further = from.offset - into.offset;
    std::transform(from.numbers.begin(), from.numbers.end(), std::back_inserter(into.numbers),
                   [&](int number) { return number + further; });
    m_chunks.erase(m_chunks.begin() + std::ptrdiff_t(chunk));
}

//! Counts anew what is before those behind \a chunk, which is counted.
void RowNumbers::countFrom(std::size_t chunk)
{
    int before = chunk > 0 ? m_chunks[chunk - 1].end() : 0;
    for (; chunk < m_chunks.size(); ++chunk) {
        m_chunks[chunk].before = before;
        before = m_chunks[chunk].end();
    }
}

void RowNumbers::remove(int place, int count)
{
    if (count <= 0)
        return;
    const std::size_t first = chunkAt(place);
    std::size_t chunk = first;
    for (int inside = place - m_chunks[first].before; count > 0; inside = 0, ++chunk) {
        std::vector<int> &numbers = m_chunks[chunk].numbers;
        const int removed = std::min(count, int(numbers.size()) - inside);
        numbers.erase(numbers.begin() + inside, numbers.begin() + inside + removed);
        count -= removed;
    }
    const auto begin = m_chunks.begin() + std::ptrdiff_t(first);
    const auto end = m_chunks.begin() + std::ptrdiff_t(chunk);
    m_chunks.erase(
        std::remove_if(begin, end, [](const Chunk &emptied) { return emptied.numbers.empty(); }),
        end);
    join(first + 1);
    join(first);
    countFrom(first > 0 ? first - 1 : 0);
}

void RowNumbers::shift(int row, int by)
{
    const int place = placeOf(row);
    if (place == size())
        return;
    std::size_t index = chunkAt(place);
    const int inside = place - m_chunks[index].before;
    if (inside > 0) {
        std::vector<int> &numbers = m_chunks[index++].numbers;
        std::transform(numbers.begin() + inside, numbers.end(), numbers.begin() + inside,
                       [by](int number) { return number + by; });
    }
    for (; index < m_chunks.size(); ++index)
        m_chunks[index].offset += by;
}

std::size_t RowNumbers::memory() const
{
    std::size_t bytes = m_chunks.capacity() * sizeof(Chunk);
    for (const Chunk &chunk : m_chunks)
        bytes += chunk.numbers.capacity() * sizeof(int);
    return bytes;
}
