// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef ROWNUMBERS_H
#define ROWNUMBERS_H

#include <cstddef>
#include <span>
#include <vector>

/*!
 * \brief Row numbers in ascending order, none of them twice.
 *
 * Takes four bytes a number. They live in chunks of 64 KiB, each with an offset that counts for
 * all of its numbers: where rows arrive in front of millions of others, one addition a chunk
 * moves them on, and numbers that are appended never make those copied that are there.
 */
class RowNumbers
{
public:
    int size() const { return m_chunks.empty() ? 0 : m_chunks.back().end(); }

    //! The number at \a place, from 0 to below size().
    int at(int place) const;
    //! Numbers that are lower than \a row; so this is where \a row is, or would be.
    int placeOf(int row) const;
    bool contains(int row) const;

    //! Adds ascending \a rows, which all go to \a place: each is higher than the number before
    //! it, and lower than the one that is there.
    void insert(int place, std::span<const int> rows);
    //! Removes \a count numbers, the first of them at \a place.
    void remove(int place, int count);
    //! Adds \a by, which may be negative, to all numbers that are not lower than \a row. They
    //! have to stay behind the others.
    void shift(int row, int by);
    void clear() { m_chunks = Chunks(); }

    //! Bytes allocated.
    std::size_t memory() const;

private:
    static constexpr std::size_t chunkLength = 16384;

    struct Chunk
    {
        std::vector<int> numbers; //!< ascending, less the offset; never empty
        int offset = 0;           //!< to be added to each
        int before = 0;           //!< numbers in the chunks before

        int end() const { return before + int(numbers.size()); }
        int first() const { return numbers.front() + offset; }
        int last() const { return numbers.back() + offset; }
        void append(std::span<const int> rows);
    };
    using Chunks = std::vector<Chunk>;

    static Chunks chunksOf(std::span<const int> rows);
    std::size_t chunkAt(int place) const;
    void append(std::span<const int> rows);
    std::size_t split(int place);
    void join(std::size_t chunk);
    void countFrom(std::size_t chunk);

    Chunks m_chunks;
};

#endif // ROWNUMBERS_H
