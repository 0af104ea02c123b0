// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef SLICEDSORT_H
#define SLICEDSORT_H

#include <algorithm>
#include <cstddef>
#include <span>
#include <utility>
#include <vector>

/*!
 * \brief Sorts many items piece by piece: runs first, which are merged then.
 *
 * A step takes some milliseconds. Needs memory for a second copy of the items meanwhile.
 */
template<typename Item> class SlicedSort
{
public:
    //! Items of a step.
    static constexpr std::size_t stepLength = 65536;

    SlicedSort() = default;
    //! Sorts \a items, which must stay where they are until isDone().
    explicit SlicedSort(std::span<Item> items)
        : m_items(items)
        , m_stage(items.size() > 1 ? Stage::Runs : Stage::Done)
    {
    }

    bool isDone() const { return m_stage == Stage::Done; }

    void step()
    {
        const std::size_t end = std::min(m_place + stepLength, m_items.size());
        if (m_stage == Stage::Runs)
            std::sort(m_items.data() + m_place, m_items.data() + end);
        else if (m_stage == Stage::Merges)
            merge(end);
        else if (m_stage == Stage::Copy)
            std::copy(m_merged.data() + m_place, m_merged.data() + end, m_items.data() + m_place);
        m_place = end;
        if (m_place == m_items.size())
            endStage();
    }

private:
    enum class Stage {
        Runs,
        Merges,
        Copy,
        Done
    };

    //! Runs are as long as they were sorted or merged to; at last they are one.
    void endStage()
    {
        m_place = 0;
        if (m_stage == Stage::Merges) {
            m_isMergedLatest = !m_isMergedLatest;
            m_length *= 2;
        }
        if (m_stage == Stage::Copy)
            m_stage = Stage::Done;
        else if (m_length < m_items.size())
            m_stage = Stage::Merges;
        else
            m_stage = m_isMergedLatest ? Stage::Copy : Stage::Done;
        if (m_stage == Stage::Merges)
            m_merged.resize(m_items.size());
        m_end = 0; // of a pair that is over
        m_left = m_middle = m_right = 0;
    }

    //! Fills the places up to \a end with what comes next of pairs of runs.
    void merge(std::size_t end)
    {
        const Item *from = m_isMergedLatest ? m_merged.data() : m_items.data();
        Item *to = m_isMergedLatest ? m_items.data() : m_merged.data();
        for (std::size_t place = m_place; place < end; ++place) {
            if (place == m_end) {
                m_left = place;
                m_right = m_middle = std::min(place + m_length, m_items.size());
                m_end = std::min(m_middle + m_length, m_items.size());
            }
            const bool takesRight =
                m_left == m_middle || (m_right != m_end && from[m_right] < from[m_left]);
            to[place] = from[takesRight ? m_right++ : m_left++];
        }
    }

    std::span<Item> m_items;
    std::vector<Item> m_merged; //!< has the latest runs, if m_isMergedLatest, or the next
    bool m_isMergedLatest = false;
    Stage m_stage = Stage::Done;
    std::size_t m_length = stepLength; //!< of the latest runs
    std::size_t m_place = 0;           //!< where the stage goes on
    std::size_t m_left = 0;            //!< next of the pair's first run, which ends at m_middle
    std::size_t m_middle = 0;
    std::size_t m_right = 0; //!< next of its second run, which ends at m_end
    std::size_t m_end = 0;
};

#endif // SLICEDSORT_H
