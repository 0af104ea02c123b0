// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "selectionsums.h"

#include "basics/rowloader.h"
#include "search/linefilter.h"

#include <QAbstractItemView>
#include <QAbstractProxyModel>
#include <QElapsedTimer>
#include <QItemSelectionModel>
#include <QScopedValueRollback>

#include <algorithm>

namespace {

//! Whether the cells of \a column may be numbers that are in the text.
bool isColumnOfText(const QAbstractItemModel *model, int column)
{
    while (const auto *proxy = qobject_cast<const QAbstractProxyModel *>(model))
        model = proxy->sourceModel();
    return isTextColumn(model, column);
}

} // namespace

SelectionSums::SelectionSums(QAbstractItemView *table, QObject *parent)
    : QObject(parent)
    , m_table(table)
{
    connect(&m_timer, &QTimer::timeout, this, &SelectionSums::goOn);
    followTable();
}

void SelectionSums::followTable()
{
    if (m_model)
        disconnect(m_model, nullptr, this, nullptr);
    if (m_choice)
        disconnect(m_choice, nullptr, this, nullptr);
    m_model = m_table->model();
    m_choice = m_table->selectionModel();
    if (m_choice) {
        connect(m_choice, SIGNAL(selectionChanged(QItemSelection, QItemSelection)), this,
                SLOT(selectionChanged(QItemSelection, QItemSelection)));
        connect(m_choice, SIGNAL(currentChanged(QModelIndex, QModelIndex)), this,
                SLOT(currentChanged(QModelIndex, QModelIndex)));
    }
    if (m_model) {
        connect(m_model, SIGNAL(dataChanged(QModelIndex, QModelIndex, QList<int>)), this,
                SLOT(dataChanged(QModelIndex, QModelIndex)));
        connect(m_model, SIGNAL(rowsInserted(QModelIndex, int, int)), this,
                SLOT(rowsInserted(QModelIndex, int, int)));
        for (const char *signal :
             {SIGNAL(modelReset()), SIGNAL(layoutChanged()),
              SIGNAL(rowsRemoved(QModelIndex, int, int)),
              SIGNAL(rowsMoved(QModelIndex, int, int, QModelIndex, int)),
              SIGNAL(columnsInserted(QModelIndex, int, int)),
              SIGNAL(columnsRemoved(QModelIndex, int, int)), SIGNAL(destroyed())})
            connect(m_model, signal, this, SLOT(beginAnew()));
    }
    beginAnew();
}

//! In the next slice: many changes may come at once.
void SelectionSums::beginAnew()
{
    m_isTaken = false;
    m_ranges.clear();
    m_timer.start(0);
}

//! Where the same rows only move, nothing is said to be selected or not.
void SelectionSums::selectionChanged(const QItemSelection &selected,
                                     const QItemSelection &deselected)
{
    if (!selected.isEmpty() || !deselected.isEmpty())
        beginAnew();
}

void SelectionSums::currentChanged(const QModelIndex &current, const QModelIndex &previous)
{
    if (current.column() != previous.column())
        beginAnew();
}

void SelectionSums::dataChanged(const QModelIndex &topLeft, const QModelIndex &bottomRight)
{
    if (m_isLoading)
        return;
    const bool isOfColumn = topLeft.column() <= m_column && m_column <= bottomRight.column();
    const auto meets = [&](const Range &range) {
        return range.first <= bottomRight.row() && topLeft.row() <= range.second;
    };
    if (isOfColumn && std::any_of(m_ranges.cbegin(), m_ranges.cend(), meets))
        beginAnew();
}

//! New rows above or below the selection come all the time, and change nothing in it.
void SelectionSums::rowsInserted(const QModelIndex & /*parent*/, int first, int last)
{
    if (m_ranges.isEmpty() || first > m_ranges.back().second)
        return;
    if (first > m_ranges.front().first) {
        beginAnew();
        return;
    }
    const int count = last - first + 1;
    for (Range &range : m_ranges)
        range = {range.first + count, range.second + count};
    m_next += count;
}

void SelectionSums::goOn()
{
    if (!m_isTaken)
        takeSelection();
    addSlice();
    if (m_range < m_ranges.size()) {
        setText(m_sums.count() == 0 ? QString()
                                    : tr("Adding up… %1 %").arg(qint64(m_done) * 100 / m_rows));
        return;
    }
    m_timer.stop();
    setText(sumsText());
}

void SelectionSums::takeSelection()
{
    m_isTaken = true;
    m_sums = {};
    m_range = 0;
    m_next = 0;
    m_rows = 0;
    m_done = 0;
    m_ranges.clear();
    m_column = m_table->currentIndex().column();
    if (!m_choice || !m_model || m_column < 0 || !isColumnOfText(m_model, m_column))
        return;
    QList<Range> selected;
    const QItemSelection selection = m_choice->selection();
    for (const QItemSelectionRange &range : selection)
        selected.append({range.top(), range.bottom()});
    std::sort(selected.begin(), selected.end());
    // Ranges of the same row in several columns are one row.
    for (const Range &range : std::as_const(selected)) {
        if (!m_ranges.isEmpty() && range.first <= m_ranges.back().second)
            m_ranges.back().second = qMax(m_ranges.back().second, range.second);
        else
            m_ranges.append(range);
    }
    for (const Range &range : std::as_const(m_ranges))
        m_rows += range.second - range.first + 1;
    // A table that is larger than the machine has its engine add up.
    const bool isTooFar =
        m_rows > mostLoadedRows && dynamic_cast<const RowLoader *>(m_model.data());
    if (m_rows < 2 || isTooFar)
        m_ranges.clear();
    if (!m_ranges.isEmpty())
        m_next = m_ranges.front().first;
}

void SelectionSums::addSlice()
{
    QElapsedTimer time;
    time.start();
    while (m_range < m_ranges.size()) {
        {
            const QScopedValueRollback loading(m_isLoading, true); // it is no change
            loadRow(m_model, m_next);
        }
        if (!m_isTaken)
            return;
        m_sums.add(m_model->index(m_next, m_column).data().toString());
        ++m_done;
        if (++m_next > m_ranges.at(m_range).second && ++m_range < m_ranges.size())
            m_next = m_ranges.at(m_range).first;
        if (time.elapsed() >= m_sliceTime)
            return;
    }
}

void SelectionSums::setText(const QString &text)
{
    if (text == m_text)
        return;
    m_text = text;
    Q_EMIT textChanged(m_text);
}

QString SelectionSums::sumsText() const
{
    if (m_sums.count() == 0)
        return {};
    const auto orTooLong = [](const QString &number) {
        return number.isEmpty() ? tr("more than 63 digits") : number;
    };
    QString text = tr("Count %L1").arg(m_sums.count()) + QLatin1String("   ")
        + tr("Sum %1   Min %2   Max %3   Mean %4")
              .arg(orTooLong(m_sums.sum()), m_sums.minimum(), m_sums.maximum(),
                   orTooLong(m_sums.mean()));
    if (m_sums.others() > 0)
        text += QLatin1String("   ") + tr("%L1 without a number").arg(m_sums.others());
    return text;
}
