// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "datamodel.h"

#include "basics/alignments.h"
#include "datacopy.h"
#include "dataschema.h"
#include "files/textfile.h"

#include <QColor>
#include <QDeadlineTimer>
#include <QGuiApplication>
#include <QPalette>

#include <algorithm>
#include <climits>
#include <utility>

namespace {

constexpr int s_frameTime = 16;       // ms
constexpr int s_pollShare = 4;        // looking for changes takes this part of the time at most
constexpr int s_firstPause = 500;     // ms before another attempt to connect
constexpr int s_longestPause = 30000; // ms
constexpr int s_surveyLimit = 60000;  // ms after which the number of rows stays an estimate
constexpr int s_surveyShare = 10;     // a survey takes this part of the time at most
constexpr int s_blindPause = 10000;   // ms between surveys, where changes are not told
constexpr int s_smallestStep = 1024;  // rows between places that a survey finds
constexpr int s_mostAnchors = 4096;   // that it finds, about
constexpr int s_rowsAhead = 64;       // that are read beside those on screen
constexpr int s_loadAttempts = 8;
constexpr int s_longestWait = 3000;  // ms that a row is waited for
constexpr qint64 s_bytesOfCell = 64; // beside its text

int clamped(qint64 rows)
{
    return int(std::clamp<qint64>(rows, 1, INT_MAX - 1));
}

} // namespace

DataModel::DataModel(QObject *parent)
    : QAbstractTableModel(parent)
{
    m_pollTimer.setInterval(m_pollTime);
    connect(&m_pollTimer, &QTimer::timeout, this, &DataModel::poll);
    m_retryTimer.setSingleShot(true);
    connect(&m_retryTimer, &QTimer::timeout, this, &DataModel::connectNow);
    m_limitTimer.setSingleShot(true);
    connect(&m_limitTimer, &QTimer::timeout, this, [this] { m_reader.cancel(); });
    m_surveyTimer.setSingleShot(true);
    connect(&m_surveyTimer, &QTimer::timeout, this, &DataModel::pump);
}

DataModel::~DataModel() = default;

void DataModel::open(const DataSource &source)
{
    m_source = source;
    m_copy.reset();
    m_order = {};
    m_filter = {};
    m_formerFilter = {};
    m_version = {};
    m_attempts = 0;
    m_problem = {};
    m_sinceSurvey.invalidate();
    beginResetModel();
    m_query = {};
    ++m_number;
    m_pages.reset(0, false);
    endResetModel();
    m_reader.cancel();
    m_counter.cancel();
    connectNow();
}

DataSource DataModel::readSource() const
{
    return m_copy ? m_copy->source() : m_source;
}

void DataModel::connectNow()
{
    m_retryTimer.stop();
    m_state = State::Opening;
    m_isReading = true;
    const int number = m_number;
    const DataSource source = readSource();
    const std::function<void()> notified = [this] {
        QMetaObject::invokeMethod(this, &DataModel::refresh, Qt::QueuedConnection);
    };
    m_reader.run(
        this,
        [source, notified](DataConnection &connection) {
            connection.close();
            const DataReads::Opened opened = DataReads::open(connection, source);
            if (!opened.problem)
                connection.listen(notified);
            return opened;
        },
        [this, number](const DataReads::Opened &opened) {
            if (number == m_number)
                takeOpened(opened);
        });
    Q_EMIT statusChanged();
}

void DataModel::takeOpened(const DataReads::Opened &opened)
{
    m_isReading = false;
    if (opened.problem) {
        takeProblem(opened.problem);
        return;
    }
    m_attempts = 0;
    m_problem = {};
    const DataTable before = table();
    if (!m_copy) {
        m_source = opened.source;
        m_tables = opened.tables;
        if (opened.table.key.isEmpty()) {
            beginCopy(opened.table);
            return;
        }
    }
    m_version = opened.version;
    m_state = State::Ready;
    m_pollTimer.start();
    const bool isSame = before.columns == opened.table.columns && before.key == opened.table.key
        && before.relation == opened.table.relation;
    if (isSame) {
        refresh();
    } else {
        m_order = {};
        m_filter = {};
        m_formerFilter = {};
        m_query = DataQuery(opened.table, {}, {});
        beginQuery();
        Q_EMIT tableOpened();
    }
    Q_EMIT statusChanged();
}

//! Its columns are shown at once, its rows as they are copied.
void DataModel::beginCopy(const DataTable &table)
{
    m_copy = std::make_unique<DataCopy>(m_source, table, TextFile::copyFolder());
    connect(m_copy.get(), &DataCopy::ready, this, &DataModel::connectNow);
    connect(m_copy.get(), &DataCopy::finished, this, [this](const DataProblem &problem) {
        if (problem && problem.kind != DataProblem::Kind::Cancelled)
            m_problem = problem;
        if (problem && m_copy->rows() == 0)
            m_state = State::Failed;
        refresh();
        Q_EMIT statusChanged();
    });
    m_copy->start();
    Q_EMIT statusChanged();
}

bool DataModel::isCopying() const
{
    return m_copy && m_copy->isRunning();
}

//! Shows the rows of the present table, order and filter, of which nothing is known yet.
void DataModel::beginQuery()
{
    const bool isSameNumber = m_isCounted && m_filter == m_query.filter();
    const int rows = rowCount();
    DataOrder order = m_order;
    if (order.column == table().keyColumn)
        order.column = -1; // the same order, with an index
    beginResetModel();
    m_query = DataQuery(table(), order, m_filter);
    ++m_number;
    const int estimate = m_filter.isEmpty() ? clamped(table().estimate) : 1;
    m_pages.reset(isSameNumber ? rows : estimate, table().hasIntegerKey && order.column < 0);
    QVariantList histogram = table().histogram;
    if (order.isDescending)
        std::reverse(histogram.begin(), histogram.end());
    if (order.column < 0 && m_filter.isEmpty())
        m_pages.setHistogram(histogram);
    m_isCounted = isSameNumber;
    m_isSurveyed = false;
    m_isSurveyDue = true;
    m_sinceSurvey.invalidate();
    m_first = 0;
    m_last = qMin(m_last, s_rowsAhead);
    endResetModel();
    if (m_isReading)
        m_reader.cancel();
    if (m_isSurveying)
        m_counter.cancel();
    pump();
    Q_EMIT statusChanged();
}

void DataModel::setOrder(const DataOrder &order)
{
    if (order == m_order || m_state != State::Ready)
        return;
    m_order = order;
    beginQuery();
}

void DataModel::setFilter(const DataFilter &filter)
{
    if (filter == m_filter || m_state != State::Ready)
        return;
    if (!isSingleCondition(filter.where)) {
        Q_EMIT filterRefused(tr("This is not one condition: a bracket or a quote is not closed, or "
                                "there is a semicolon."));
        return;
    }
    if (!canLookFor(filter.text))
        return;
    m_filter = filter;
    beginQuery();
}

bool DataModel::canLookFor(const DataText &text)
{
    const bool isPlain = text.text.isEmpty() || (!text.wholeWords && !text.isExpression);
    if (isPlain || !table().dialect.matches.isEmpty())
        return true;
    Q_EMIT filterRefused(tr("Whole words and regular expressions cannot be looked for in this "
                            "database."));
    return false;
}

void DataModel::setVisible(int first, int last)
{
    m_first = qMax(0, first);
    m_last = qMax(m_first, last);
    m_pages.touch(m_first, m_last);
    const bool isOfPage = m_isReading && m_state == State::Ready;
    const int place = m_reading.row;
    const bool isFar =
        place < m_first - 2 * RowPages::pageRows || place > m_last + 2 * RowPages::pageRows;
    if (isOfPage && isFar && m_reading.kind != RowPages::Fetch::Kind::Again
        && m_pages.wanted(m_first, m_last))
        m_reader.cancel(); // nobody waits for that any more
    pump();
}

//! What is on the screen first, then the end, where rows come, then what has changed, and what may
//! be on the screen next.
std::optional<RowPages::Fetch> DataModel::nextFetch()
{
    if (auto fetch = m_pages.wanted(m_first, m_last))
        return fetch;
    if (!m_pages.isEndKnown())
        return m_pages.lastPage();
    if (std::exchange(m_isAgainDue, false)) {
        if (auto fetch = m_pages.again(m_first, m_last))
            return fetch;
    }
    if (std::exchange(m_isBeyondDue, false))
        return m_pages.beyond();
    return m_pages.wanted(m_first - s_rowsAhead, m_last + s_rowsAhead);
}

void DataModel::pump()
{
    if (m_isReading || m_state != State::Ready)
        return;
    if (const auto fetch = nextFetch()) {
        read(*fetch);
        return;
    }
    if (!m_isPolling && std::exchange(m_isLooking, false))
        pollAfter(std::exchange(m_haveRowsCome, false));
    if (m_isSurveyDue)
        surveySoon();
}

void DataModel::read(const RowPages::Fetch &fetch)
{
    m_isReading = true;
    m_reading = fetch;
    ++m_queries;
    const int number = m_number;
    const DataQuery query = m_query;
    if (!m_filter.where.isEmpty())
        m_limitTimer.start(m_timeLimit);
    m_reader.run(
        this,
        [query, fetch](DataConnection &connection) {
            return DataReads::page(connection, query, fetch);
        },
        [this, fetch, number](const DataReads::Page &page) { takePage(fetch, page, number); });
}

void DataModel::takePage(const RowPages::Fetch &fetch, const DataReads::Page &page, int number)
{
    const bool isOverLimit =
        m_limitTimer.interval() > 0 && !m_filter.where.isEmpty() && !m_limitTimer.isActive();
    m_limitTimer.stop();
    m_isReading = false;
    if (number != m_number) {
        pump();
        return;
    }
    if (page.problem.kind == DataProblem::Kind::Cancelled && isOverLimit) {
        refuse({DataProblem::Kind::Refused,
                tr("The database took more than %L1 s.").arg(m_timeLimit / 1000.0)});
        return;
    }
    const bool isTaken = !page.problem && m_pages.take(fetch, page.rows);
    // What nobody looks for otherwise is asked for again.
    m_isAgainDue = m_isAgainDue || (!isTaken && fetch.kind == RowPages::Fetch::Kind::Again);
    m_isBeyondDue = m_isBeyondDue || (!isTaken && fetch.row >= rowCount());
    if (page.problem) {
        takeProblem(page.problem);
        return;
    }
    m_formerFilter = m_filter;
    m_problem = {};
    m_pages.touch(m_first, m_last);
    pump();
    Q_EMIT statusChanged();
}

void DataModel::takeProblem(const DataProblem &problem)
{
    using Kind = DataProblem::Kind;
    switch (problem.kind) {
    case Kind::Cancelled:
        pump();
        return;
    case Kind::Lost:
        lose(problem);
        return;
    case Kind::Password:
        m_problem = problem;
        m_state = State::Waiting;
        Q_EMIT statusChanged();
        Q_EMIT passwordNeeded();
        return;
    default:
        refuse(problem);
    }
}

//! The rows seen so far stay. It is tried again, after a longer pause each time.
void DataModel::lose(const DataProblem &problem)
{
    m_problem = problem;
    m_state = State::Waiting;
    const int pause = s_firstPause << qMin(m_attempts++, 10);
    m_retryTimer.start(qMin(pause, s_longestPause));
    Q_EMIT statusChanged();
}

//! It is the filter's fault, or the table is another one by now.
void DataModel::refuse(const DataProblem &problem)
{
    if (m_state == State::Ready && m_filter != m_formerFilter) {
        m_filter = m_formerFilter;
        beginQuery();
        Q_EMIT filterRefused(problem.text);
        return;
    }
    m_problem = problem;
    if (m_state == State::Ready && m_pages.pages() == 0 && !m_copy) {
        showNothing();
    } else if (m_state == State::Ready || isCopying()) { // a copy is begun while it is opened
        lose(problem);                                   // looks at the table's columns again
        return;
    }
    m_state = State::Failed;
    Q_EMIT statusChanged();
}

//! There are no rows to be had: an estimate of their number would only promise some.
void DataModel::showNothing()
{
    beginResetModel();
    m_query = {};
    ++m_number;
    m_pages.reset(0, false);
    endResetModel();
}

void DataModel::setPollTime(int milliseconds)
{
    m_pollTime = milliseconds;
    m_pollTimer.setInterval(milliseconds);
}

//! Sooner while rows come, unless that would keep a slow server busy; then less and less often.
void DataModel::pollAfter(bool haveRowsCome)
{
    const qint64 next = haveRowsCome
        ? qMax<qint64>(s_frameTime, s_pollShare * m_sincePoll.elapsed())
        : qint64(2) * m_pollTimer.interval();
    m_pollTimer.start(int(qMin<qint64>(next, m_pollTime)));
}

void DataModel::poll()
{
    if (m_state != State::Ready || m_isPolling || m_isReading)
        return;
    m_isPolling = true;
    m_isLooking = true;
    m_sincePoll.start();
    const DataTable table = this->table();
    m_reader.run(
        this,
        [table](DataConnection &connection) { return DataSchema::version(connection, table); },
        [this](const QVariant &version) {
            m_isPolling = false;
            takeVersion(version);
        });
}

//! SQLite knows of each change at once. Servers count a little later: rows are read again there.
void DataModel::takeVersion(const QVariant &version)
{
    const bool isChanged = version != m_version;
    m_version = version;
    if (isChanged)
        m_pages.forget(m_first, m_last);
    const bool isSure = table().dialect.engine == DataEngine::Sqlite && version.isValid();
    m_isAgainDue = m_isAgainDue || isChanged || !isSure;
    m_isBeyondDue = m_isBeyondDue || isChanged || !isSure;
    // Where nobody tells, rows are counted again from time to time.
    const bool isBlind = !version.isValid() && !isCopy() && m_sinceSurvey.isValid()
        && m_sinceSurvey.elapsed() > s_blindPause;
    m_isSurveyDue = m_isSurveyDue || isChanged || isBlind;
    pump();
}

void DataModel::refresh()
{
    m_isLooking = true;
    m_sincePoll.start();
    m_pages.forget(m_first, m_last);
    m_isAgainDue = true;
    m_isBeyondDue = true;
    m_isSurveyDue = true;
    m_sinceSurvey.invalidate();
    pump();
}

//! Counting goes on in the background, and not all the time.
void DataModel::surveySoon()
{
    if (m_isSurveying || m_isAsked)
        return;
    const qint64 pause =
        m_sinceSurvey.isValid() ? m_surveyTime * s_surveyShare - m_sinceSurvey.elapsed() : 0;
    if (pause <= 0)
        survey();
    else if (!m_surveyTimer.isActive())
        m_surveyTimer.start(int(qMin<qint64>(pause, INT_MAX)));
}

int DataModel::surveyStep() const
{
    return qMax(s_smallestStep, rowCount() / s_mostAnchors);
}

//! Of a row that is known, on the screen if there is one: where it is makes the others fit.
RowKey DataModel::visibleKey() const
{
    for (int row = m_first; row <= qMin(m_last, rowCount() - 1); ++row) {
        if (const DataRow *known = m_pages.row(row))
            return known->key;
    }
    const DataRow *known = m_pages.row(0);
    return known ? known->key : RowKey();
}

void DataModel::survey()
{
    m_isSurveyDue = false;
    m_isSurveying = true;
    m_sinceSurvey.start();
    const int number = m_number;
    const int step = surveyStep();
    const DataQuery query = m_query;
    const DataSource source = readSource();
    const RowKey key = visibleKey();
    m_counter.run(
        this,
        [source, query, step, key](DataConnection &connection) {
            DataReads::Survey survey;
            survey.problem = connection.open(source);
            return survey.problem ? survey : DataReads::survey(connection, query, step, key);
        },
        [this, number](const DataReads::Survey &survey) { takeSurvey(survey, number); });
    QTimer::singleShot(s_surveyLimit, this, [this, number] {
        if (number == m_number && m_isSurveying && m_sinceSurvey.elapsed() >= s_surveyLimit)
            m_counter.cancel();
    });
    Q_EMIT statusChanged();
}

void DataModel::takeSurvey(const DataReads::Survey &survey, int number)
{
    m_isSurveying = false;
    m_surveyTime = m_sinceSurvey.elapsed();
    m_sinceSurvey.start();
    if (number != m_number || m_isAsked) {
        m_isSurveyDue = true;
        m_sinceSurvey.invalidate();
    } else if (survey.problem) {
        m_pages.setAnchors(survey.anchors, survey.step);
    } else if (survey.total < INT_MAX) {
        const int total = int(survey.total);
        bool isPlaced = true;
        if (survey.key.isEmpty())
            m_pages.resize(total);
        else
            isPlaced = m_pages.place(survey.key, survey.row, total);
        if (isPlaced)
            m_pages.setAnchors(survey.anchors, survey.step);
        m_isCounted = isPlaced;
        m_isSurveyed = isPlaced;
        m_isSurveyDue = m_isSurveyDue || !isPlaced; // it has left meanwhile
    }
    pump();
    Q_EMIT statusChanged();
}

bool DataModel::isIdle() const
{
    return m_state == State::Ready && !m_isReading && !m_isSurveying && !m_isSurveyDue
        && !m_isAgainDue && !m_isBeyondDue && !m_isAsked && !isCopying()
        && !m_pages.wanted(m_first, m_last) && m_pages.isEndKnown();
}

//! Reads a page while all else waits. False if it is of no use to ask again.
bool DataModel::readNow(const RowPages::Fetch &fetch)
{
    ++m_queries;
    const auto page =
        m_reader.runNow(s_longestWait, [query = m_query, fetch](DataConnection &connection) {
            return DataReads::page(connection, query, fetch);
        });
    if (page && !page->problem)
        m_pages.take(fetch, page->rows);
    return page && (!page->problem || page->problem.kind == DataProblem::Kind::Cancelled);
}

bool DataModel::load(int row)
{
    const QDeadlineTimer deadline(s_longestWait);
    for (int attempt = 0; attempt < s_loadAttempts && row >= 0 && row < rowCount(); ++attempt) {
        if (isLoaded(row)) {
            m_pages.touch(row, row);
            return true;
        }
        const auto fetch = m_pages.wanted(row, row);
        if (!fetch || m_state != State::Ready || deadline.hasExpired())
            return false;
        if (!readNow(*fetch))
            return false;
    }
    return isLoaded(row);
}

void DataModel::find(const DataText &text, int row, bool forward,
                     const std::function<void(int)> &found)
{
    if (m_state != State::Ready || !canLookFor(text) || (row >= 0 && !load(row))) {
        found(-1);
        return;
    }
    beginAsking();
    lookFor(text, row, forward, found);
}

//! A server may hear too late that a survey is given up, and end what was asked for in its place:
//! that is asked for again.
bool DataModel::isEndedInVain(const DataProblem &problem, int asked) const
{
    return problem.kind == DataProblem::Kind::Cancelled && !m_isGivenUp && asked == m_asked;
}

void DataModel::beginAsking()
{
    if (m_isSurveying || m_isAsked)
        m_counter.cancel();
    m_isAsked = true;
    m_isGivenUp = false;
    ++m_asked;
}

void DataModel::lookFor(const DataText &text, int row, bool forward,
                        const std::function<void(int)> &found)
{
    const DataRow *known = m_pages.row(row);
    const RowKey from = known ? known->key : RowKey();
    const DataQuery query = m_query;
    const DataSource source = readSource();
    const int number = m_number;
    const int asked = m_asked;
    m_counter.run(
        this,
        [=](DataConnection &connection) {
            DataReads::Found result;
            result.problem = connection.open(source);
            if (!result.problem)
                result = DataReads::find(connection, query, from, !forward, text);
            return result;
        },
        [=, this](const DataReads::Found &result) {
            if (number == m_number && isEndedInVain(result.problem, asked)) {
                lookFor(text, row, forward, found);
                return;
            }
            m_isAsked = m_isAsked && asked != m_asked;
            pump();
            found(number == m_number && !result.problem ? rowOf(result, row, from, forward) : -1);
        });
}

//! Where what was found is, counted from \a row, which may be elsewhere by now; −1 if nothing was.
int DataModel::rowOf(const DataReads::Found &found, int row, const RowKey &from, bool forward)
{
    if (!found.key)
        return -1;
    const int start = from.isEmpty() ? (forward ? -1 : rowCount()) : m_pages.rowOf(from);
    const int begin = start < 0 && !from.isEmpty() ? row : start;
    const int distance = clamped(found.distance + 1);
    const int target = qBound(0, forward ? begin + distance : begin - distance, rowCount() - 1);
    const int known = m_pages.rowOf(*found.key);
    if (known >= 0)
        return known;
    if (const auto fetch = m_pages.at(target, *found.key))
        readNow(*fetch);
    return m_pages.rowOf(*found.key);
}

void DataModel::sum(int column)
{
    if (m_state != State::Ready)
        return;
    beginAsking();
    addUp(column);
}

void DataModel::addUp(int column)
{
    const DataQuery query = m_query;
    const DataSource source = readSource();
    const int number = m_number;
    const int asked = m_asked;
    m_counter.run(
        this,
        [=](DataConnection &connection) {
            DataReads::Sums sums;
            sums.problem = connection.open(source);
            return sums.problem ? sums : DataReads::sums(connection, query, column);
        },
        [this, number, asked, column](const DataReads::Sums &sums) {
            if (number == m_number && isEndedInVain(sums.problem, asked)) {
                addUp(column);
                return;
            }
            m_isAsked = m_isAsked && asked != m_asked;
            Q_EMIT summed(sums);
            pump();
        });
}

void DataModel::cancel()
{
    if (!m_isAsked)
        return;
    m_isGivenUp = true;
    m_counter.cancel();
}

qint64 DataModel::memory() const
{
    return m_pages.memory() + qint64(m_pages.rows()) * columnCount() * s_bytesOfCell;
}

int DataModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : m_pages.rowCount();
}

int DataModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(table().columns.size());
}

DataCell DataModel::cell(int row, int column) const
{
    const DataRow *known = m_pages.row(row);
    return DataCell(known ? known->cells.value(column) : QString());
}

QVariant DataModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid())
        return {};
    const DataRow *known = m_pages.row(index.row());
    const auto kind = [&] { return cell(index.row(), index.column()).kind(); };
    switch (role) {
    case Qt::DisplayRole:
        return known ? cell(index.row(), index.column()).shown() : QStringLiteral("…");
    case Qt::ForegroundRole:
        if (!known || kind() == DataCell::Kind::Null || kind() == DataCell::Kind::Bytes)
            return QGuiApplication::palette().color(QPalette::PlaceholderText);
        return {};
    case Qt::TextAlignmentRole:
        if (kind() == DataCell::Kind::Number)
            return int(numberAlignment);
        return {};
    default:
        return {};
    }
}

QVariant DataModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || section < 0 || section >= columnCount())
        return {};
    const DataColumn &column = table().columns.at(section);
    if (role == Qt::DisplayRole)
        return column.name;
    if (role == Qt::ToolTipRole)
        return column.type;
    if (role == Qt::TextAlignmentRole && column.isNumeric && !column.type.isEmpty())
        return int(numberAlignment);
    return {};
}

void DataModel::aboutToInsert(int first, int last)
{
    m_haveRowsCome = m_haveRowsCome || first == rowCount();
    beginInsertRows({}, first, last);
    // Whoever looks at the first row goes on looking at it.
    if (m_first > 0 && first <= m_first) {
        m_first += last - first + 1;
        m_last += last - first + 1;
    }
}

void DataModel::inserted()
{
    endInsertRows();
}

void DataModel::aboutToRemove(int first, int last)
{
    beginRemoveRows({}, first, last);
    if (last < m_first) {
        m_first -= last - first + 1;
        m_last -= last - first + 1;
    }
}

void DataModel::removed()
{
    endRemoveRows();
}

void DataModel::changed(int first, int last)
{
    Q_EMIT dataChanged(index(first, 0), index(last, columnCount() - 1));
}
