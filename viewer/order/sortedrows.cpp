// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "sortedrows.h"

#include "find/eventpump_p.h"

#include <QHash>

#include <algorithm>
#include <iterator>
#include <numeric>
#include <utility>

namespace {

constexpr int s_delay = 200;                 // ms, from the first change until it is sorted in
constexpr std::size_t s_fewRows = 4096;      // always put in one by one
constexpr std::size_t s_partOfRows = 16;     // if they are a smaller part than this, too
constexpr std::size_t s_mostInsertions = 64; // in other places each, while rows are sorted

std::vector<int> numbersUpTo(int end)
{
    std::vector<int> rows(static_cast<std::size_t>(end));
    std::iota(rows.begin(), rows.end(), 0);
    return rows;
}

//! Which of the numbers below \a end are among \a rows.
std::vector<bool> flagsOf(const std::vector<int> &rows, int end)
{
    std::vector<bool> flags(static_cast<std::size_t>(end));
    for (const int row : rows)
        flags[std::size_t(row)] = true;
    return flags;
}

//! Numbers from \a first on become \a by more.
void shift(std::vector<int> *rows, int first, int by)
{
    for (int &row : *rows)
        row += row >= first ? by : 0;
}

} // namespace

SortedRows::SortedRows(QAbstractItemModel *source, int column, Qt::SortOrder order)
    : m_column(column)
    , m_sortOrder(order)
{
    m_timer.setSingleShot(true);
    connect(&m_timer, &QTimer::timeout, this, &SortedRows::work);
    setSourceModel(source);
    m_count = source->rowCount();
    followRows();
    followSource();
    m_timer.start(0);
}

SortedRows::~SortedRows() = default;

void SortedRows::followRows()
{
    const auto follow = [this](auto signal, void (SortedRows::*slot)(int, int)) {
        connect(sourceModel(), signal, this,
                [this, slot](const QModelIndex &parent, int first, int last) {
                    if (!parent.isValid())
                        (this->*slot)(first, last);
                });
    };
    follow(&QAbstractItemModel::rowsAboutToBeInserted, &SortedRows::rowsAboutToCome);
    follow(&QAbstractItemModel::rowsInserted, &SortedRows::rowsCame);
    follow(&QAbstractItemModel::rowsAboutToBeRemoved, &SortedRows::rowsAboutToGo);
    follow(&QAbstractItemModel::rowsRemoved, &SortedRows::rowsWent);
    connect(sourceModel(), &QAbstractItemModel::dataChanged, this, &SortedRows::rowsChanged);
    connect(sourceModel(), &QAbstractItemModel::headerDataChanged, this,
            [this](Qt::Orientation orientation, int first, int last) {
                if (orientation == Qt::Horizontal)
                    Q_EMIT headerDataChanged(orientation, first, last);
                else if (rowCount() > 0)
                    Q_EMIT headerDataChanged(orientation, 0, rowCount() - 1);
            });
}

//! Columns that come and go are another model, as others may be sorted by then.
void SortedRows::followSource()
{
    const auto follow = [this](auto signal, auto slot) {
        connect(sourceModel(), signal, this, slot);
    };
    const auto aboutToReset = [this] { beginResetModel(); };
    const auto reset = [this] {
        forgetOrder();
        endResetModel();
    };
    follow(&QAbstractItemModel::modelAboutToBeReset, aboutToReset);
    follow(&QAbstractItemModel::modelReset, reset);
    follow(&QAbstractItemModel::columnsAboutToBeInserted, aboutToReset);
    follow(&QAbstractItemModel::columnsInserted, reset);
    follow(&QAbstractItemModel::columnsAboutToBeRemoved, aboutToReset);
    follow(&QAbstractItemModel::columnsRemoved, reset);
    follow(&QAbstractItemModel::columnsAboutToBeMoved, aboutToReset);
    follow(&QAbstractItemModel::columnsMoved, reset);
    follow(&QAbstractItemModel::layoutAboutToBeChanged, [this] { layoutAboutToChange(); });
    follow(&QAbstractItemModel::layoutChanged, [this] { sourceLayoutChanged(); });
    follow(&QAbstractItemModel::rowsAboutToBeMoved, [this] { layoutAboutToChange(); });
    follow(&QAbstractItemModel::rowsMoved, [this] { sourceLayoutChanged(); });
    follow(&QObject::destroyed, [this] {
        beginResetModel();
        forgetOrder();
        m_timer.stop();
        endResetModel();
    });
}

QString SortedRows::textOf(int sourceRow) const
{
    return sourceModel()->index(sourceRow, m_column).data().toString();
}

//! Sorts for a while.
void SortedRows::work()
{
    if (!m_job)
        begin();
    const EventPump events;
    while (!m_job->isDone() && !events.isDue())
        m_job->step();
    if (m_job->isDone()) {
        finish();
        return;
    }
    m_timer.start(0);
    Q_EMIT progressed(0.99 * m_job->progress());
}

//! With all rows, or with those that wait if they are few.
void SortedRows::begin()
{
    const std::size_t few = std::max(s_fewRows, std::size_t(m_count) / s_partOfRows);
    const bool isMerge = m_isSorted && m_waiting.size() <= few;
    m_taken = std::exchange(m_waiting, {});
    std::sort(m_taken.begin(), m_taken.end());
    m_taken.erase(std::unique(m_taken.begin(), m_taken.end()), m_taken.end());
    std::vector<int> staying;
    if (isMerge) {
        staying.reserve(m_order.size());
        std::copy_if(m_order.begin(), m_order.end(), std::back_inserter(staying), [this](int row) {
            return !std::binary_search(m_taken.begin(), m_taken.end(), row);
        });
    }
    m_since.clear();
    m_job =
        std::make_unique<OrderJob>([this](int row) { return textOf(rowNow(row)); }, m_sortOrder,
                                   isMerge ? m_taken : numbersUpTo(m_count), std::move(staying));
}

//! Rows have other numbers than those that are being sorted.
void SortedRows::beginAgain()
{
    if (!m_job)
        return;
    m_job.reset();
    m_waiting.insert(m_waiting.end(), m_taken.begin(), m_taken.end());
    m_taken.clear();
    m_timer.start(s_delay);
}

void SortedRows::finish()
{
    std::vector<int> order = m_job->takeOrder();
    m_job.reset();
    m_taken = {};
    if (!m_since.empty())
        std::transform(order.begin(), order.end(), order.begin(),
                       [this](int row) { return rowNow(row); });
    if (m_isSorted) {
        showHidden(order);
    } else {
        // Those that have come since wait, but they are shown.
        const std::vector<bool> isThere = flagsOf(order, m_count);
        for (int row = 0; row < m_count; ++row) {
            if (!isThere[std::size_t(row)])
                order.push_back(row);
        }
    }
    rearrange(std::move(order));
    if (!m_waiting.empty())
        m_timer.start(s_delay);
    Q_EMIT progressed(1);
}

//! Those of \a order that are not shown come to the end.
void SortedRows::showHidden(const std::vector<int> &order)
{
    if (order.size() == m_order.size())
        return;
    const std::vector<bool> isShown = flagsOf(m_order, m_count);
    beginInsertRows({}, int(m_order.size()), int(order.size()) - 1);
    std::copy_if(order.begin(), order.end(), std::back_inserter(m_order),
                 [&](int row) { return !isShown[std::size_t(row)]; });
    endInsertRows();
}

//! Shows the same rows in another \a order.
void SortedRows::rearrange(std::vector<int> order)
{
    Q_EMIT layoutAboutToBeChanged({}, VerticalSortHint);
    const QModelIndexList before = persistentIndexList();
    QHash<int, int> places; // of rows of the source
    for (const QModelIndex &index : before)
        places.insert(sourceRow(index.row()), -1);
    for (std::size_t at = 0; at < order.size() && !places.isEmpty(); ++at) {
        if (const auto place = places.find(order[at]); place != places.end())
            *place = int(at);
    }
    QModelIndexList now;
    for (const QModelIndex &index : before) {
        const int row = places.value(sourceRow(index.row()), -1);
        now.append(row < 0 ? QModelIndex() : createIndex(row, index.column()));
    }
    m_order = std::move(order);
    m_isSorted = true;
    changePersistentIndexList(before, now);
    Q_EMIT layoutChanged({}, VerticalSortHint);
}

void SortedRows::addWaiting(int first, int last)
{
    for (int row = first; row <= last; ++row)
        m_waiting.push_back(row);
    if (!m_job && !m_timer.isActive())
        m_timer.start(s_delay);
}

void SortedRows::forgetOrder()
{
    m_job.reset();
    m_isSorted = false;
    m_order = {};
    m_waiting = {};
    m_taken = {};
    m_count = sourceModel() ? sourceModel()->rowCount() : 0;
    m_timer.start(0);
}

void SortedRows::rowsAboutToCome(int first, int last)
{
    if (!m_isSorted)
        beginInsertRows({}, first, last);
}

void SortedRows::rowsCame(int first, int last)
{
    const int count = last - first + 1;
    const bool isAtEnd = first == m_count;
    m_count += count;
    if (!isAtEnd) {
        shift(&m_order, first, count);
        shift(&m_waiting, first, count);
        shift(&m_taken, first, count);
    }
    if (!m_isSorted)
        endInsertRows();
    if (m_job && !isAtEnd)
        moveOn(first, count);
    if (m_isSorted || m_job)
        addWaiting(first, last);
}

//! Rows that come all the time, at the top perhaps, must not keep others from being sorted.
void SortedRows::moveOn(int first, int count)
{
    if (!m_since.empty() && m_since.back().first == first)
        m_since.back().count += count;
    else
        m_since.push_back({first, count});
    if (m_since.size() > s_mostInsertions)
        beginAgain();
}

//! The number that a row has now, which had \a jobRow when m_job began.
int SortedRows::rowNow(int jobRow) const
{
    for (const Insertion &insertion : m_since)
        jobRow += jobRow >= insertion.first ? insertion.count : 0;
    return jobRow;
}

//! They have to be neighbours to go at once.
void SortedRows::rowsAboutToGo(int first, int last)
{
    if (!m_isSorted) {
        beginRemoveRows({}, first, last);
        return;
    }
    const auto stays = [&](int row) { return row < first || row > last; };
    std::vector<int> order = m_order;
    std::stable_partition(order.begin(), order.end(), stays);
    const auto end = std::partition_point(order.begin(), order.end(), stays) - order.begin();
    if (std::size_t(end) == order.size())
        return;
    if (order != m_order)
        rearrange(std::move(order));
    beginRemoveRows({}, int(end), int(m_order.size()) - 1);
    m_order.resize(std::size_t(end));
    endRemoveRows();
}

void SortedRows::rowsWent(int first, int last)
{
    const int count = last - first + 1;
    m_count -= count;
    for (std::vector<int> *rows : {&m_waiting, &m_taken})
        std::erase_if(*rows, [&](int row) { return row >= first && row <= last; });
    for (std::vector<int> *rows : {&m_order, &m_waiting, &m_taken})
        shift(rows, last + 1, -count);
    if (!m_isSorted)
        endRemoveRows();
    beginAgain();
}

void SortedRows::rowsChanged(const QModelIndex &first, const QModelIndex &last,
                             const QList<int> &roles)
{
    if (!first.isValid() || !last.isValid() || first.parent().isValid() || rowCount() == 0)
        return;
    if (first.row() == last.row()) {
        const int row = rowOf(first.row());
        if (row >= 0)
            Q_EMIT dataChanged(index(row, first.column()), index(row, last.column()), roles);
    } else {
        Q_EMIT dataChanged(index(0, first.column()), index(rowCount() - 1, last.column()), roles);
    }
    const bool isSorted = first.column() <= m_column && m_column <= last.column()
        && (roles.isEmpty() || roles.contains(Qt::DisplayRole));
    if (!isSorted || (!m_isSorted && !m_job))
        return;
    if (m_job && m_job->isMerge())
        beginAgain();
    addWaiting(first.row(), last.row());
}

//! As in the source, until they are sorted.
void SortedRows::sourceLayoutChanged()
{
    forgetOrder();
    layoutHasChanged();
}

int SortedRows::shownRows() const
{
    return m_isSorted ? int(m_order.size()) : m_count;
}

int SortedRows::sourceRow(int row) const
{
    return m_isSorted ? m_order[std::size_t(row)] : row;
}

int SortedRows::rowOf(int sourceRow) const
{
    if (!m_isSorted)
        return sourceRow < m_count ? sourceRow : -1;
    const auto found = std::find(m_order.begin(), m_order.end(), sourceRow);
    return found == m_order.end() ? -1 : int(found - m_order.begin());
}
