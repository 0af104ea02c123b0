// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef COMPARE_DRIVER_H
#define COMPARE_DRIVER_H

#include "feed.h"

#include <chrono>
#include <string>

//! A toolkit's table and its model, as the driver sees them. What is inserted or changed in the
//! contents by the driver is told to the toolkit here.
class Table
{
public:
    virtual ~Table() = default;

    //! \a count rows were appended to the contents.
    virtual void rowsAppended(int count) = 0;
    //! \a count rows were inserted into the contents at position 0.
    virtual void rowsInsertedAbove(int count) = 0;
    //! The text of a cell at \a position has changed.
    virtual void cellChanged(int position, int column) = 0;

    //! Scrolls so that the row at \a position is the first in view, or near it.
    virtual void showRow(int position) = 0;
    virtual void showEnd() = 0;
    virtual void scrollRows(int count) = 0;
    virtual void scrollPages(int count) = 0;

    //! Called once after a batch of events, for those that do not stay at their end by themselves.
    virtual void keepEnd() { }
    //! Called once after a batch with \a count rows above, for those that do not keep their rows.
    virtual void keepRows(int count) { static_cast<void>(count); }

    //! The numbers of the first and the last row that are wholly in view, as they are shown; -1 if
    //! that cannot be found out.
    virtual int firstInView() = 0;
    virtual int lastInView() = 0;
};

//! What a program is asked for on its command line: VIEW SCENARIO ROWS RATE SECONDS. A scenario is
//! named as scenarioFromName() says; with "-batch" behind it the table is told of all rows of a
//! tick together, and of each alone otherwise.
struct Request
{
    //! Ends the program if the arguments are wrong.
    Request(int argc, char **argv);

    std::string view;
    std::string scenarioName;
    Scenario scenario = Scenario::Open;
    bool isBatched = false;
    int rows = 0;
    int rate = 0;       //!< events a second
    double seconds = 0; //!< that the events take
};

//! Feeds a table, and measures what that costs the whole process. The toolkit's event loop calls
//! tick() every 16 ms, and framePresented() whenever it has painted.
class Driver
{
public:
    static constexpr int interval = 16; //!< milliseconds between ticks

    //! Neither is owned; both outlive the driver.
    Driver(const Request &request, Contents *contents);
    void setTable(Table *table) { m_table = table; }
    //! How the table is painted, if the toolkit has a choice; printed with the view's name.
    void setRenderer(const std::string &name) { m_renderer = name; }

    void framePresented();
    //! False when all has been measured and printed: the program ends then.
    bool tick();
    //! The program's exit status: 0 if the rows in view are those that must be there.
    int status() const { return m_isRight ? 0 : 1; }

private:
    using Clock = std::chrono::steady_clock;
    enum class Phase {
        Starting,
        Placing,
        Feeding,
        Settling
    };

    double secondsInPhase() const;
    void enter(Phase phase);
    void placeView();
    void startFeed();
    bool feed();
    void deliver(int count);
    void deliver(Event event);
    void changeCell();
    void tellRows();
    void scroll();
    void keepPlace(int above);
    void finishFeed();
    bool isInPlace();
    void print();

    const Request m_request;
    Contents *const m_contents;
    Schedule m_schedule;
    Table *m_table = nullptr;
    std::string m_renderer;

    Phase m_phase = Phase::Starting;
    Clock::time_point m_phaseStart = Clock::now();
    Clock::time_point m_lastTick = Clock::now();
    int m_delivered = 0;
    int m_appended = 0;      //!< rows of this tick that the table was not told of
    int m_insertedAbove = 0; //!< the same above
    int m_scrolledRows = 0;  //!< in this tick; one movement, as of keys that repeat
    int m_scrolledPages = 0;
    int m_frames = 0;   //!< in this phase
    int m_firstRow = 0; //!< in view when the feed began
    double m_processorBefore = 0;

    double m_firstFrame = 0; //!< ms since the program was started
    double m_processor = 0;  //!< ms for each second of the feed
    double m_framesASecond = 0;
    double m_worstGap = 0; //!< ms between two ticks
    double m_late = 0;     //!< seconds that the feed took longer than it should
    bool m_isRight = false;
};

#endif // COMPARE_DRIVER_H
