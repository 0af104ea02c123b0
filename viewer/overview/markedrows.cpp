// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "markedrows.h"

#include "search/rowtext.h"

#include <algorithm>
#include <utility>

MarkedRows::MarkedRows(QObject *parent)
    : QObject(parent)
{
}

void MarkedRows::setModel(QAbstractItemModel *model)
{
    if (model == m_model)
        return;
    if (m_model)
        m_model->disconnect(this);
    m_model = model;
    const bool isKept = std::exchange(m_isKept, false) && model;
    if (!isKept)
        removeAll();
    if (!model)
        return;
    connect(model, &QAbstractItemModel::rowsInserted, this, &MarkedRows::rowsCame);
    connect(model, &QAbstractItemModel::rowsRemoved, this, &MarkedRows::rowsWent);
    connect(model, &QAbstractItemModel::dataChanged, this, &MarkedRows::rowsChanged);
    connect(model, &QAbstractItemModel::modelReset, this, &MarkedRows::beginAnew);
    connect(model, &QAbstractItemModel::layoutChanged, this, &MarkedRows::beginAnew);
    connect(model, &QAbstractItemModel::rowsMoved, this, &MarkedRows::beginAnew);
    connect(model, &QObject::destroyed, this, &MarkedRows::removeAll);
    if (isKept)
        beginAnew();
}

//! The first mark at \a row or below.
MarkedRows::Marks::const_iterator MarkedRows::place(const Marks &marks, int row)
{
    return std::lower_bound(marks.begin(), marks.end(), row,
                            [](const Mark &mark, int wanted) { return mark.row < wanted; });
}

bool MarkedRows::isMarked(int row) const
{
    const auto found = place(m_marks, row);
    return found != m_marks.end() && found->row == row;
}

QList<int> MarkedRows::rows() const
{
    QList<int> rows;
    rows.reserve(qsizetype(m_marks.size()));
    for (const Mark &mark : m_marks)
        rows.append(mark.row);
    return rows;
}

void MarkedRows::toggle(int row)
{
    if (!m_model || row < 0 || row >= m_model->rowCount())
        return;
    const auto found = place(m_marks, row);
    if (found != m_marks.end() && found->row == row)
        m_marks.erase(found);
    else
        m_marks.insert(found, {row, rowText(*m_model, row)});
    Q_EMIT changed();
}

void MarkedRows::removeAll()
{
    m_waiting.clear();
    if (m_marks.empty())
        return;
    m_marks.clear();
    Q_EMIT changed();
}

void MarkedRows::rowsCame(const QModelIndex &parent, int first, int last)
{
    if (parent.isValid())
        return;
    const qptrdiff from = place(m_marks, first) - m_marks.cbegin();
    const bool moves = size_t(from) < m_marks.size();
    for (auto mark = m_marks.begin() + from; mark != m_marks.end(); ++mark)
        mark->row += last - first + 1;
    takeBack();
    if (moves)
        Q_EMIT moved();
}

void MarkedRows::rowsWent(const QModelIndex &parent, int first, int last)
{
    const auto from = place(m_marks, first);
    if (parent.isValid() || from == m_marks.cend())
        return;
    const size_t before = m_marks.size();
    auto mark = m_marks.erase(from, place(m_marks, last + 1));
    for (; mark != m_marks.end(); ++mark)
        mark->row -= last - first + 1;
    if (m_marks.size() < before)
        Q_EMIT changed();
    else
        Q_EMIT moved();
}

//! The last line of a file may have been marked before it was complete.
void MarkedRows::rowsChanged(const QModelIndex &first, const QModelIndex &last)
{
    if (first.row() != last.row())
        return;
    takeBack();
    const auto found = place(m_marks, first.row());
    if (found == m_marks.cend() || found->row != first.row())
        return;
    const QString text = rowText(*m_model, first.row());
    Mark &mark = m_marks[size_t(found - m_marks.cbegin())];
    if (text.startsWith(mark.text))
        mark.text = text;
}

//! A file that begins anew has no rows at first.
void MarkedRows::beginAnew()
{
    if (m_marks.empty() && m_waiting.empty())
        return;
    const auto isHigher = [](const Mark &a, const Mark &b) { return a.row < b.row; };
    Marks all;
    std::merge(m_marks.begin(), m_marks.end(), m_waiting.begin(), m_waiting.end(),
               std::back_inserter(all), isHigher);
    m_waiting = std::move(all);
    m_marks.clear();
    takeBack();
    Q_EMIT changed();
}

bool MarkedRows::isAwaited(const Mark &mark) const
{
    const int rows = m_model->rowCount();
    if (mark.row >= rows)
        return true;
    return mark.row == rows - 1 && mark.text.startsWith(rowText(*m_model, mark.row));
}

//! Marks rows that have come again; gives up those that are others.
void MarkedRows::takeBack()
{
    if (m_waiting.empty() || m_waiting.front().row >= m_model->rowCount())
        return;
    Marks awaited;
    bool isAny = false;
    for (const Mark &mark : std::exchange(m_waiting, {})) {
        if (mark.row < m_model->rowCount() && rowText(*m_model, mark.row) == mark.text) {
            const auto found = place(m_marks, mark.row);
            if (found == m_marks.end() || found->row != mark.row)
                m_marks.insert(found, mark);
            isAny = true;
        } else if (isAwaited(mark)) {
            awaited.push_back(mark);
        }
    }
    m_waiting = std::move(awaited);
    if (isAny)
        Q_EMIT changed();
}
