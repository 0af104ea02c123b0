// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "linefilter.h"

#include "find/eventpump_p.h"

#include <QPointer>

#include <algorithm>
#include <utility>

LineFilter::LineFilter(const QList<int> &columns, const TextMatcher &matcher,
                       const std::optional<RowSpan> &span)
    : m_judge(columns, matcher, span)
{
    m_dueTimer.setSingleShot(true);
    connect(&m_dueTimer, &QTimer::timeout, this, &LineFilter::judgeOnTime);
}

bool LineFilter::takeOver(QAbstractItemModel *source)
{
    const QPointer<QAbstractItemModel> alive(source);
    QObject whileJudging;
    connect(source, &QObject::destroyed, &whileJudging, [this] { cancel(); });
    m_followed = source;
    followRows();
    followLayout();
    followColumns();
    m_judge.setSource(source);
    m_due = {0, source->rowCount()};
    if (!judgeAll()) {
        forgetRows();
        if (alive)
            disconnect(source, nullptr, this, nullptr);
        return false;
    }
    beginResetModel();
    setSourceModel(source);
    // After the base class, for which it is no source model any more.
    connect(source, &QObject::destroyed, this, [this] {
        beginResetModel();
        forgetRows();
        endResetModel();
    });
    endResetModel();
    return true;
}

void LineFilter::followRows()
{
    const auto follow = [this](auto signal, void (LineFilter::*slot)(int, int)) {
        connect(m_followed, signal, this,
                [this, slot](const QModelIndex &parent, int first, int last) {
                    if (!parent.isValid())
                        (this->*slot)(first, last);
                });
    };
    follow(&QAbstractItemModel::rowsInserted, &LineFilter::rowsCame);
    follow(&QAbstractItemModel::rowsAboutToBeRemoved, &LineFilter::rowsAboutToGo);
    follow(&QAbstractItemModel::rowsRemoved, &LineFilter::rowsWent);
    connect(m_followed, &QAbstractItemModel::dataChanged, this, &LineFilter::rowsChanged);
}

void LineFilter::followLayout()
{
    const auto follow = [this](auto signal, auto slot) { connect(m_followed, signal, this, slot); };
    follow(&QAbstractItemModel::modelAboutToBeReset, [this] {
        if (isShown())
            beginResetModel();
    });
    follow(&QAbstractItemModel::modelReset, [this] {
        beginAnew(rowsAtOnce);
        if (isShown())
            endResetModel();
    });
    follow(&QAbstractItemModel::layoutAboutToBeChanged, [this] { sourceLayoutAboutToChange(); });
    follow(&QAbstractItemModel::layoutChanged, [this] {
        // Whatever is selected has to be found again now.
        beginAnew(m_followed->rowCount());
        sourceLayoutChanged();
    });
    follow(&QAbstractItemModel::rowsAboutToBeMoved, [this] { sourceLayoutAboutToChange(); });
    follow(&QAbstractItemModel::rowsMoved,
           [this](const QModelIndex &, int first, int last, const QModelIndex &, int to) {
               // In a span it matters where a row is.
               if (m_judge.spanJudge())
                   beginAnew(m_followed->rowCount());
               else
                   rowsMoved(first, last, to);
               sourceLayoutChanged();
           });
}

void LineFilter::followColumns()
{
    const auto follow = [this](auto signal, auto slot) { connect(m_followed, signal, this, slot); };
    follow(&QAbstractItemModel::columnsAboutToBeInserted,
           [this](const QModelIndex &, int first, int last) {
               if (isShown())
                   beginInsertColumns({}, first, last);
           });
    follow(&QAbstractItemModel::columnsInserted,
           [this] { columnsChanged(&LineFilter::endInsertColumns); });
    follow(&QAbstractItemModel::columnsAboutToBeRemoved,
           [this](const QModelIndex &, int first, int last) {
               if (isShown())
                   beginRemoveColumns({}, first, last);
           });
    follow(&QAbstractItemModel::columnsRemoved,
           [this] { columnsChanged(&LineFilter::endRemoveColumns); });
    follow(&QAbstractItemModel::columnsAboutToBeMoved,
           [this](const QModelIndex &, int first, int last, const QModelIndex &, int to) {
               if (isShown())
                   beginMoveColumns({}, first, last, {}, to);
           });
    follow(&QAbstractItemModel::columnsMoved,
           [this] { columnsChanged(&LineFilter::endMoveColumns); });
    follow(&QAbstractItemModel::headerDataChanged,
           [this](Qt::Orientation orientation, int first, int last) {
               headerChanged(orientation, first, last);
           });
}

bool LineFilter::judgeAll()
{
    EventPump events;
    while (!m_isCancelled && !m_due.isEmpty()) {
        judgeDue();
        if (!events.isDue())
            continue;
        Q_EMIT progressed(double(m_due.first) / qMax(m_followed->rowCount(), 1));
        events.pump();
    }
    return !m_isCancelled;
}

//! Judges some of the rows that are due.
void LineFilter::judgeDue()
{
    m_found.clear();
    const int next = m_judge.judge(m_due.first, m_due.end, &m_found);
    show({std::exchange(m_due.first, next), next}, m_found);
}

void LineFilter::judgeOnTime()
{
    const EventPump events;
    while (isShown() && !m_due.isEmpty() && !events.isDue())
        judgeDue();
    if (isShown() && !m_due.isEmpty())
        m_dueTimer.start();
}

//! Judges \a rows, if they are many later on.
void LineFilter::require(Range rows)
{
    if (rows.end - rows.first > rowsAtOnce) {
        // What is between them, too: one range is enough.
        m_due = m_due.isEmpty() ? rows
                                : Range {qMin(m_due.first, rows.first), qMax(m_due.end, rows.end)};
        if (isShown())
            m_dueTimer.start();
        return;
    }
    std::vector<int> found;
    for (int row = rows.first; row < rows.end;)
        row = m_judge.judge(row, rows.end, &found);
    show(rows, found);
}

//! The end of the rows from \a row on that have their time from one above; \a row if there are
//! none, or times do not matter.
int LineFilter::endOfHeirs(int row)
{
    const SpanJudge *span = m_judge.spanJudge();
    return span ? span->endOfHeirs(row) : row;
}

//! Hides \a rows but for those that were \a found, which are shown.
void LineFilter::show(Range rows, const std::vector<int> &found)
{
    hideOthers(rows, found);
    for (auto next = found.begin(); next != found.end();) {
        const int place = m_shown.placeOf(*next);
        const bool isLast = place == m_shown.size();
        if (!isLast && m_shown.at(place) == *next) {
            ++next;
            continue;
        }
        const auto end =
            isLast ? found.end() : std::lower_bound(next, found.end(), m_shown.at(place));
        insertShown(place, {next, end});
        next = end;
    }
}

void LineFilter::hideOthers(Range rows, const std::vector<int> &found)
{
    const auto isFound = [&](int place) {
        return std::binary_search(found.begin(), found.end(), m_shown.at(place));
    };
    const int first = m_shown.placeOf(rows.first);
    for (int end = m_shown.placeOf(rows.end); end > first; --end) {
        int place = end;
        while (place > first && !isFound(place - 1))
            --place;
        if (place == end)
            continue;
        removeShown(place, end - place);
        end = place; // the one before stays
    }
}

void LineFilter::insertShown(int place, std::span<const int> rows)
{
    if (tells())
        beginInsertRows({}, place, place + int(rows.size()) - 1);
    m_shown.insert(place, rows);
    if (tells())
        endInsertRows();
}

void LineFilter::removeShown(int place, int count)
{
    if (tells())
        beginRemoveRows({}, place, place + count - 1);
    m_shown.remove(place, count);
    if (tells())
        endRemoveRows();
}

void LineFilter::forgetRows()
{
    m_shown.clear();
    m_due = {};
}

//! Judges the first rows at once, \a rowsNow of them, without telling of them: that they are
//! others is told anyway.
void LineFilter::beginAnew(int rowsNow)
{
    m_judge.setSource(m_followed);
    forgetRows();
    m_due = {0, m_followed->rowCount()};
    if (!isShown())
        return;
    m_isQuiet = true;
    while (!m_due.isEmpty() && m_due.first < rowsNow)
        judgeDue();
    m_isQuiet = false;
    if (!m_due.isEmpty())
        m_dueTimer.start();
}

void LineFilter::rowsCame(int first, int last)
{
    const int count = last - first + 1;
    if (SpanJudge *span = m_judge.spanJudge())
        span->rowsCame(first, count);
    m_shown.shift(first, count);
    if (!m_due.isEmpty() && first < m_due.end) {
        m_due.end += count;
        m_due.first += first < m_due.first ? count : 0;
    }
    require({first, endOfHeirs(last + 1)});
}

void LineFilter::rowsAboutToGo(int first, int last)
{
    const int place = m_shown.placeOf(first);
    const int count = m_shown.placeOf(last + 1) - place;
    if (count > 0)
        removeShown(place, count);
}

void LineFilter::rowsWent(int first, int last)
{
    const int count = last - first + 1;
    m_shown.shift(last + 1, -count);
    const auto without = [&](int row) { return row > last ? row - count : qMin(row, first); };
    m_due = {without(m_due.first), without(m_due.end)};
    if (SpanJudge *span = m_judge.spanJudge())
        span->rowsWent(first, count);
    require({first, endOfHeirs(first)});
}

//! As QAbstractItemModel::beginMoveRows() has it.
void LineFilter::rowsMoved(int first, int last, int to)
{
    const int count = last - first + 1;
    const int place = m_shown.placeOf(first);
    const int begin = to > last ? to - count : to;
    std::vector<int> moved;
    for (int end = m_shown.placeOf(last + 1); place + int(moved.size()) < end;)
        moved.push_back(m_shown.at(place + int(moved.size())) - first + begin);
    m_shown.remove(place, int(moved.size()));
    m_shown.shift(last + 1, -count);
    m_shown.shift(begin, count);
    m_shown.insert(m_shown.placeOf(begin), moved);
    const Range touched {qMin(first, begin), qMax(last, begin + count - 1) + 1};
    if (!m_due.isEmpty() && touched.first < m_due.end && m_due.first < touched.end)
        m_due = {qMin(m_due.first, touched.first), qMax(m_due.end, touched.end)};
}

void LineFilter::rowsChanged(const QModelIndex &first, const QModelIndex &last,
                             const QList<int> &roles)
{
    if (!first.isValid() || !last.isValid() || first.parent().isValid())
        return;
    const Range rows {first.row(), last.row() + 1};
    if (SpanJudge *span = m_judge.spanJudge())
        span->rowsChanged(rows.first);
    require({rows.first, endOfHeirs(rows.end)});
    const int begin = m_shown.placeOf(rows.first);
    const int end = m_shown.placeOf(rows.end);
    if (isShown() && begin < end)
        Q_EMIT dataChanged(index(begin, first.column()), index(end - 1, last.column()), roles);
}

void LineFilter::columnsChanged(void (LineFilter::*end)())
{
    if (isShown())
        (this->*end)();
    m_judge.setSource(m_followed);
    require({0, m_followed->rowCount()});
}

void LineFilter::headerChanged(Qt::Orientation orientation, int first, int last)
{
    if (!isShown())
        return;
    if (orientation == Qt::Horizontal) {
        Q_EMIT headerDataChanged(orientation, first, last);
        return;
    }
    const int begin = m_shown.placeOf(first);
    const int end = m_shown.placeOf(last + 1);
    if (begin < end)
        Q_EMIT headerDataChanged(orientation, begin, end - 1);
}

void LineFilter::sourceLayoutAboutToChange()
{
    if (isShown())
        layoutAboutToChange();
}

void LineFilter::sourceLayoutChanged()
{
    if (isShown())
        layoutHasChanged();
}

int LineFilter::rowOf(int sourceRow) const
{
    const int place = m_shown.placeOf(sourceRow);
    return place < m_shown.size() && m_shown.at(place) == sourceRow ? place : -1;
}
