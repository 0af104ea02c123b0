// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "driver.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <sys/resource.h>
#include <utility>

namespace {

using std::chrono::duration;

constexpr double settlingSeconds = 0.5;

double milliseconds(const timeval &time)
{
    return double(time.tv_sec) * 1000 + double(time.tv_usec) / 1000;
}

//! Of all threads of the process, ms.
double processorTime()
{
    rusage usage {};
    getrusage(RUSAGE_SELF, &usage);
    return milliseconds(usage.ru_utime) + milliseconds(usage.ru_stime);
}

double peakMebibytes()
{
    rusage usage {};
    getrusage(RUSAGE_SELF, &usage);
    return double(usage.ru_maxrss) / 1024;
}

//! Loading the toolkit is part of what a user waits for, so the script says when it began.
double millisecondsSinceStart()
{
    const char *start = std::getenv("COMPARE_START");
    if (!start)
        return 0;
    const duration<double> now = std::chrono::system_clock::now().time_since_epoch();
    return (now.count() - std::strtod(start, nullptr)) * 1000;
}

} // namespace

Request::Request(int argc, char **argv)
{
    bool isRight = argc == 6;
    if (isRight) {
        view = argv[1];
        scenarioName = argv[2];
        rows = std::atoi(argv[3]);
        rate = std::atoi(argv[4]);
        seconds = std::strtod(argv[5], nullptr);
        const std::string batch = "-batch";
        const std::size_t end = scenarioName.rfind(batch);
        isBatched = end != std::string::npos && end + batch.size() == scenarioName.size();
        isRight = scenarioFromName(scenarioName.substr(0, end), &scenario) && rows >= 1000
            && rate >= 0 && (scenario != Scenario::Open || rate == 0);
    }
    if (!isRight) {
        std::fprintf(stderr, "usage: %s VIEW SCENARIO ROWS RATE SECONDS\n", argv[0]);
        std::exit(2);
    }
}

Driver::Driver(const Request &request, Contents *contents)
    : m_request(request)
    , m_contents(contents)
    , m_schedule(request.scenario)
{
}

void Driver::framePresented()
{
    ++m_frames;
    if (m_firstFrame == 0)
        m_firstFrame = millisecondsSinceStart();
}

double Driver::secondsInPhase() const
{
    return duration<double>(Clock::now() - m_phaseStart).count();
}

void Driver::enter(Phase phase)
{
    m_phase = phase;
    m_phaseStart = Clock::now();
    m_frames = 0;
}

bool Driver::tick()
{
    switch (m_phase) {
    case Phase::Starting:
        if (m_frames > 0 && secondsInPhase() > settlingSeconds)
            placeView();
        return true;
    case Phase::Placing:
        if (secondsInPhase() > settlingSeconds)
            startFeed();
        return true;
    case Phase::Feeding:
        if (!feed())
            finishFeed();
        return true;
    case Phase::Settling:
        if (secondsInPhase() < settlingSeconds)
            return true;
        m_isRight = isInPlace();
        print();
        return false;
    }
    return false;
}

void Driver::placeView()
{
    if (m_request.scenario == Scenario::Append)
        m_table->showEnd();
    else if (m_request.scenario != Scenario::Open)
        m_table->showRow(m_request.rows / 2);
    enter(Phase::Placing);
}

void Driver::startFeed()
{
    m_firstRow = m_table->firstInView();
    m_processorBefore = processorTime();
    m_lastTick = Clock::now();
    enter(Phase::Feeding);
}

//! Hands over what has come since the last tick; false when all has come.
bool Driver::feed()
{
    const Clock::time_point now = Clock::now();
    m_worstGap = std::max(m_worstGap, duration<double, std::milli>(now - m_lastTick).count());
    m_lastTick = now;
    const int all = int(m_request.rate * m_request.seconds);
    const int due = std::min(all, int(m_request.rate * secondsInPhase()));
    deliver(due - m_delivered);
    m_delivered = due;
    return secondsInPhase() < m_request.seconds || m_delivered < all;
}

void Driver::deliver(int count)
{
    if (count == 0)
        return;
    const int above = m_contents->countAbove();
    for (int i = 0; i < count; ++i)
        deliver(m_schedule.next());
    tellRows();
    scroll();
    keepPlace(m_contents->countAbove() - above);
}

void Driver::deliver(Event event)
{
    switch (event) {
    case Event::Append:
        m_contents->append();
        ++m_appended;
        break;
    case Event::InsertAbove:
        m_contents->insertAbove();
        ++m_insertedAbove;
        break;
    case Event::Change:
        changeCell();
        break;
    case Event::ScrollRow:
        ++m_scrolledRows;
        break;
    case Event::ScrollPage:
        ++m_scrolledPages;
        break;
    }
    if (!m_request.isBatched)
        tellRows();
}

void Driver::changeCell()
{
    const int number = m_firstRow + m_schedule.nextRow();
    const int column = m_schedule.nextColumn();
    m_contents->change(number, column);
    m_table->cellChanged(m_contents->positionOf(number), column);
}

void Driver::tellRows()
{
    if (m_appended > 0)
        m_table->rowsAppended(std::exchange(m_appended, 0));
    if (m_insertedAbove > 0)
        m_table->rowsInsertedAbove(std::exchange(m_insertedAbove, 0));
}

void Driver::scroll()
{
    if (m_scrolledRows > 0)
        m_table->scrollRows(std::exchange(m_scrolledRows, 0));
    if (m_scrolledPages > 0)
        m_table->scrollPages(std::exchange(m_scrolledPages, 0));
}

void Driver::keepPlace(int above)
{
    if (above > 0)
        m_table->keepRows(above);
    if (m_request.scenario == Scenario::Append)
        m_table->keepEnd();
}

void Driver::finishFeed()
{
    const double seconds = secondsInPhase();
    m_processor = (processorTime() - m_processorBefore) / seconds;
    m_framesASecond = m_frames / seconds;
    m_late = seconds - m_request.seconds;
    enter(Phase::Settling);
}

//! Whether the rows in view are those that a user expects after all these events.
bool Driver::isInPlace()
{
    const int first = m_table->firstInView();
    const int last = m_table->lastInView();
    switch (m_request.scenario) {
    case Scenario::Append:
        return last == m_contents->numberAt(m_contents->rows() - 1);
    case Scenario::ScrollRow:
        return first == m_firstRow + m_delivered;
    case Scenario::ScrollPage:
        // A page is what fits, and for some toolkits a row less or a part of one more.
        return std::abs(first - m_firstRow - m_delivered * (last - first + 1)) <= 2 * m_delivered;
    default:
        return first == m_firstRow && last > first;
    }
}

void Driver::print()
{
    std::string view = m_request.view;
    if (!m_renderer.empty())
        view += ' ' + m_renderer;
    std::printf("%s\t%s\t%d\t%d\t", view.c_str(), m_request.scenarioName.c_str(), m_request.rows,
                m_request.rate);
    std::printf("%.1f\t%.1f\t%.1f\t%.2f\t%.1f\t%.0f\t", m_processor, m_framesASecond, m_worstGap,
                m_late, peakMebibytes(), m_firstFrame);
    std::printf("%d\t%d\t%d\t%s\n", m_contents->rows(), m_table->firstInView(),
                m_table->lastInView(), m_isRight ? "right" : "wrong");
}
