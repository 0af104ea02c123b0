// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef COMPARE_FEED_H
#define COMPARE_FEED_H

#include <cstdint>
#include <random>
#include <string>
#include <unordered_map>

//! What all programs show: ten columns of text, computed from the number of a row. Nothing is
//! stored per row but the cells that have changed. Rows keep their number, and so their texts,
//! while others arrive above: a row at position p has the number p - countAbove().
class Contents
{
public:
    static constexpr int columns = 10;
    static constexpr int columnWidth = 160; //!< pixels
    static constexpr int rowHeight = 21;    //!< pixels, the least that all toolkits can do

    //! Rows with the numbers 0 to \a rows - 1.
    explicit Contents(int rows);

    int rows() const { return m_rows; }
    int countAbove() const { return m_above; }
    int numberAt(int position) const { return position - m_above; }
    int positionOf(int number) const { return number + m_above; }

    //! A text in ASCII, of at most 40 characters. Any number of a row, a column from 0 to 9.
    std::string text(int number, int column) const;
    static bool isRightAligned(int column) { return column % 2 != 0; }
    static bool isGreen(int column) { return column == 4; }

    //! The text of a row's number as column 0 shows it, read back.
    static int numberOf(const std::string &text);

    void append() { ++m_rows; }
    void insertAbove();
    //! A cell gets another text, if its column is not 0.
    void change(int number, int column);

private:
    int m_rows;
    int m_above = 0;
    int m_version = 0;
    std::unordered_map<std::int64_t, int> m_versions; //!< of cells that have changed
};

//! What may happen to a table in one event.
enum class Event {
    Append,
    InsertAbove,
    Change,
    ScrollRow,
    ScrollPage
};

//! Which events a run has.
enum class Scenario {
    Open,       //!< none
    Append,     //!< rows at the end, which the view shows
    Above,      //!< rows above those that the view shows
    Change,     //!< other texts in cells that the view shows
    Mixed,      //!< 3 of 10 at the end, 3 above, 4 changed cells; the view stays in the middle
    ScrollRow,  //!< on by a row
    ScrollPage, //!< on by a page
};

//! A name as the programs take it: "open", "append", "above", "change", "mixed", "scroll-row" or
//! "scroll-page". False for another one.
bool scenarioFromName(const std::string &name, Scenario *scenario);

//! The same events in each run and each program.
class Schedule
{
public:
    explicit Schedule(Scenario scenario);

    Event next();
    //! How many rows below the first one in view the next changed cell is, and its column.
    int nextRow() { return int(++m_changes * 7 % 30); }
    int nextColumn() const { return int(1 + m_changes * 3 % 7); }

private:
    const Scenario m_scenario;
    std::mt19937 m_random {20261123};
    unsigned m_changes = 0;
};

#endif // COMPARE_FEED_H
