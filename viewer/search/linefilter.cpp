// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "linefilter.h"

#include "files/textfilemodel.h"
#include "find/eventpump_p.h"

#include <QPointer>

#include <algorithm>
#include <numeric>

bool isTextColumn(const QAbstractItemModel *model, int column)
{
    const auto *lines = qobject_cast<const TextFileModel *>(model);
    return !lines || !lines->isLineNumber(column);
}

LineFilter::LineFilter(const QList<int> &columns, const TextMatcher &matcher)
    : m_columns(columns)
    , m_matcher(matcher)
{
}

bool LineFilter::takeOver(QAbstractItemModel *source)
{
    const QPointer<QAbstractItemModel> alive(source);
    QObject whileJudging;
    const auto follow = [&](auto signal, auto slot) {
        connect(source, signal, &whileJudging, slot);
    };
    follow(&QAbstractItemModel::rowsInserted,
           [this](const QModelIndex &, int first, int last) { rowsCame(first, last); });
    follow(&QAbstractItemModel::rowsRemoved,
           [this](const QModelIndex &, int first, int last) { rowsWent(first, last); });
    follow(&QAbstractItemModel::dataChanged,
           [this](const QModelIndex &first) { rowsChanged(first.row()); });
    follow(&QAbstractItemModel::modelReset, [=, this] { beginAnew(source); });
    follow(&QAbstractItemModel::layoutChanged, [=, this] { beginAnew(source); });
    follow(&QAbstractItemModel::rowsMoved, [=, this] { beginAnew(source); });
    follow(&QObject::destroyed, [this] { cancel(); });
    beginAnew(source);
    if (!judgeRows(source) || !alive)
        return false;
    followSource(source);
    setSourceModel(source);
    rowCount(); // asks for the verdicts
    m_verdicts = {};
    return true;
}

//! The proxy is connected after this: what it asks for then is up to date.
void LineFilter::followSource(const QAbstractItemModel *source)
{
    const auto forget = [this] { m_skipped = {}; };
    connect(source, &QAbstractItemModel::rowsInserted, this, forget);
    connect(source, &QAbstractItemModel::rowsRemoved, this, forget);
    connect(source, &QAbstractItemModel::dataChanged, this, forget);
    connect(source, &QAbstractItemModel::modelReset, this, [=, this] { chooseWay(source); });
}

bool LineFilter::judgeRows(const QAbstractItemModel *source)
{
    EventPump events;
    while (m_next < m_verdicts.size()) {
        if (!skipRows()) {
            m_verdicts[m_next] = judge(source, int(m_next));
            ++m_next;
        }
        if (!events.isDue())
            continue;
        Q_EMIT progressed(double(m_next) / double(m_verdicts.size()));
        events.pump();
        if (m_isCancelled)
            return false;
    }
    return !m_isCancelled;
}

//! Hides lines in whose bytes the text is not. Returns false if the next row has to be
//! judged.
bool LineFilter::skipRows()
{
    if (!m_pattern)
        return false;
    const TextFileModel::Sighting sighting = m_lines->look(*m_pattern, int(m_next), true);
    const size_t next = qMin(size_t(sighting.row), m_verdicts.size());
    std::fill(m_verdicts.begin() + qptrdiff(m_next), m_verdicts.begin() + qptrdiff(next),
              Verdict::Hidden);
    m_next = next;
    return !sighting.mayShow;
}

LineFilter::Verdict LineFilter::judge(const QAbstractItemModel *source, int row) const
{
    const bool isShown = std::any_of(m_columns.begin(), m_columns.end(), [&](int column) {
        return m_matcher.isIn(source->index(row, column).data().toString());
    });
    return isShown ? Verdict::Shown : Verdict::Hidden;
}

void LineFilter::beginAnew(const QAbstractItemModel *source)
{
    m_verdicts.assign(size_t(source->rowCount()), Verdict::Unknown);
    m_next = 0;
    chooseWay(source);
}

//! Whether rows are looked at by their bytes first, and in which columns: other columns
//! than there were before are all looked at.
void LineFilter::chooseWay(const QAbstractItemModel *source)
{
    const int columns = source->columnCount();
    const int before = columns > 0 ? std::exchange(m_columnCount, columns) : columns;
    if (before > 0 && before != columns) {
        m_columns.resize(columns);
        std::iota(m_columns.begin(), m_columns.end(), 0);
        m_columns.removeIf([source](int column) { return !isTextColumn(source, column); });
    }
    m_skipped = {};
    m_lines = qobject_cast<const TextFileModel *>(source);
    m_pattern = m_lines ? m_lines->patternFor(m_matcher.needle(), m_columns) : std::nullopt;
}

//! Those among the judged rows stay unknown until the source is taken over.
void LineFilter::rowsCame(int first, int last)
{
    const size_t count = size_t(last - first) + 1;
    m_verdicts.insert(m_verdicts.begin() + first, count, Verdict::Unknown);
    if (size_t(first) < m_next)
        m_next += count;
}

void LineFilter::rowsWent(int first, int last)
{
    m_verdicts.erase(m_verdicts.begin() + first, m_verdicts.begin() + last + 1);
    const size_t judged = std::clamp(m_next, size_t(first), size_t(last) + 1) - size_t(first);
    m_next -= judged;
}

//! Judges those from \a first on again: files change at their end or everywhere.
void LineFilter::rowsChanged(int first)
{
    m_next = qMin(m_next, size_t(first));
}

//! Whether the bytes of a line, or of those around it, leave it open what it shows.
bool LineFilter::mayShow(int row) const
{
    if (!m_pattern)
        return true;
    if (row < m_skipped.first || row >= m_skipped.second)
        m_skipped = {row, m_lines->look(*m_pattern, row, true).row};
    return row >= m_skipped.second;
}

bool LineFilter::filterAcceptsRow(int source_row, const QModelIndex &source_parent) const
{
    const auto row = size_t(source_row);
    const Verdict known = row < m_verdicts.size() ? m_verdicts[row] : Verdict::Unknown;
    if (known != Verdict::Unknown)
        return known == Verdict::Shown;
    // A file may bring millions of lines at once.
    return !source_parent.isValid() && mayShow(source_row)
        && judge(sourceModel(), source_row) == Verdict::Shown;
}
