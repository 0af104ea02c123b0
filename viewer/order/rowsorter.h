// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef ROWSORTER_H
#define ROWSORTER_H

#include "slicedsort.h"
#include "sortvalue.h"

#include <array>
#include <functional>
#include <optional>
#include <vector>

/*!
 * \brief Puts rows in the order of their values, piece by piece; equal ones stay as they were.
 *
 * Keeps twelve bytes a row of what it has read, and as many while it sorts: numbers as doubles, of
 * texts four characters. Only rows that are the same so far are read again for the next ones, so
 * that millions of times or names are read a few times each, in the order of the file.
 */
class RowSorter
{
public:
    //! The text of \a row in the column that is sorted by.
    using Reader = std::function<QString(int row)>;

    //! Sorts \a rows, which ascend. Of rows that are no more \a read may give anything.
    RowSorter(Reader read, std::vector<int> rows, Qt::SortOrder order);

    bool isDone() const { return m_stage == Stage::Done; }
    //! Works for some milliseconds.
    void step();
    //! How much is done, from 0 to 1. Nobody knows how many rows will be read again.
    double progress() const;
    //! Bytes allocated.
    std::size_t memory() const;
    //! The rows in their order, once isDone().
    std::vector<int> takeRows() { return std::move(m_rows); }

private:
    enum class Stage {
        Reading,
        SortingNumbers,
        SortingTexts,
        Splitting,
        Done
    };
    struct Entry
    {
        std::array<quint32, 2> key; //!< of 64 bits; the first are the high ones
        int row;

        friend auto operator<=>(const Entry &, const Entry &) = default;
    };
    using Entries = std::vector<Entry>;
    //! Entries that have the same text so far.
    struct Group
    {
        Entries *entries;
        std::size_t begin;
        std::size_t end;
        qsizetype offset; //!< characters that are the same
    };
    //! Goes through entries that are sorted by what is behind an offset.
    struct Scan
    {
        Entries *entries;
        std::size_t place; //!< to go on from
        std::size_t end;
        qsizetype offset;
        bool isOuter; //!< not of a group of others
    };

    void read();
    void goOn();
    void split();
    void splitNext(Scan *scan);
    void begin(const Group &group);
    void sortSmall(const Group &group);
    void readGroup();
    Entry numberEntry(const SortValue &value, int row) const;
    Entry textEntry(const QString &text, qsizetype offset, int row) const;
    SortValue valueOf(int row) const { return SortValue(m_read(row)); }
    void collect();

    Reader m_read;
    Qt::SortOrder m_order;
    Stage m_stage = Stage::Reading;
    std::vector<int> m_rows; //!< that are sorted; at last those without text, or all
    std::size_t m_next = 0;  //!< of m_rows, to be read
    Entries m_numbers;
    Entries m_texts;
    std::vector<int> m_empties;   //!< rows without text
    bool m_areExact = true;       //!< all numbers are
    SlicedSort<Entry> m_sort;     //!< of what is sorted at present
    std::vector<Scan> m_scans;    //!< nested: the last one goes on
    std::optional<Group> m_group; //!< is read again
    std::size_t m_groupNext = 0;  //!< of its entries
    QString m_groupText;          //!< its first one
    qsizetype m_common = 0;       //!< characters that all that were read share
    bool m_isCommonEnd = true;    //!< and behind them none has any
};

#endif // ROWSORTER_H
