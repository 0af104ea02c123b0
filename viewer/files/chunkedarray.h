// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef CHUNKEDARRAY_H
#define CHUNKEDARRAY_H

#include <algorithm>
#include <cstddef>
#include <memory>
#include <vector>

/*!
 * \brief An array that only grows, and never moves what it holds.
 *
 * Elements live in chunks of 64 KiB. Growing copies nothing but one pointer per
 * chunk, so that there is neither a pause nor a moment with twice the memory.
 */
template<typename T> class ChunkedArray
{
public:
    static constexpr std::size_t chunkLength = 65536 / sizeof(T);

    std::size_t size() const { return m_size; }

    //! The element at \a index, which must be below size(). O(1).
    const T &operator[](std::size_t index) const
    {
        return m_chunks[index / chunkLength][index % chunkLength];
    }

    //! Copies \a values behind the last element.
    void append(const std::vector<T> &values)
    {
        const T *next = values.data();
        std::size_t left = values.size();
        while (left > 0) {
            const std::size_t used = m_size % chunkLength;
            if (used == 0)
                m_chunks.emplace_back(new T[chunkLength]); // left uninitialised on purpose
            const std::size_t count = std::min(left, chunkLength - used);
            std::copy_n(next, count, m_chunks.back().get() + used);
            next += count;
            left -= count;
            m_size += count;
        }
    }

    //! Bytes allocated.
    std::size_t memory() const
    {
        return m_chunks.size() * chunkLength * sizeof(T)
            + m_chunks.capacity() * sizeof(typename Chunks::value_type);
    }

private:
    using Chunks = std::vector<std::unique_ptr<T[]>>;

    Chunks m_chunks;        //!< all but the last one are full
    std::size_t m_size = 0; //!< elements held
};

#endif // CHUNKEDARRAY_H
