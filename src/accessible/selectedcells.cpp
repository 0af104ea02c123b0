// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "selectedcells_p.h"

#include "shownplaces_p.h"

#include "qtablefastview.h"

#include <QItemSelectionModel>

#include <algorithm>
#include <limits>

namespace Accessible {

static int saturated(qint64 count)
{
    return int(std::min<qint64>(count, std::numeric_limits<int>::max()));
}

SelectedCells::SelectedCells(const QTableFastView &view)
    : m_view(view)
    , m_columns(shownColumns(view))
{
    const QItemSelectionModel *model = view.selectionModel();
    if (!view.model() || !model || model->model() != view.model())
        return;
    for (const QItemSelectionRange &range : model->selection()) {
        if (range.isValid() && !range.parent().isValid())
            m_selection.append(range);
    }
}

int SelectedCells::cellCount() const
{
    qint64 count = 0;
    for (const QItemSelectionRange &range : m_selection) {
        count +=
            range.height() * std::count_if(m_columns.begin(), m_columns.end(), [&](int column) {
                return column >= range.left() && column <= range.right();
            });
    }
    return saturated(count);
}

QModelIndexList SelectedCells::cells() const
{
    const QItemSelectionModel *model = m_view.selectionModel();
    QModelIndexList cells;
    int visited = 0;
    for (const QItemSelectionRange &range : m_selection) {
        for (int row = range.top(); row <= range.bottom(); ++row) {
            for (const int column : m_columns) {
                if (column < range.left() || column > range.right())
                    continue;
                if (++visited > mostListed)
                    return cells;
                const QModelIndex index = m_view.model()->index(row, column);
                if (model->isSelected(index)) // ranges have cells that cannot be selected, too
                    cells.append(index);
            }
        }
    }
    return cells;
}

//! Where no range begins or ends within, all rows are alike.
QList<SelectedCells::Span> SelectedCells::rowSpans() const
{
    QList<int> starts;
    for (const QItemSelectionRange &range : m_selection)
        starts << range.top() << range.bottom() + 1;
    std::sort(starts.begin(), starts.end());
    starts.erase(std::unique(starts.begin(), starts.end()), starts.end());
    QList<Span> spans;
    for (qsizetype i = 0; i + 1 < starts.size(); ++i) {
        if (isRowSelected(starts.at(i)))
            spans.append({starts.at(i), starts.at(i + 1) - 1});
    }
    return spans;
}

int SelectedCells::rowCount() const
{
    qint64 count = 0;
    for (const Span &span : rowSpans())
        count += span.last - span.first + 1;
    return saturated(count);
}

QList<int> SelectedCells::rows() const
{
    QList<int> rows;
    for (const Span &span : rowSpans()) {
        for (int row = span.first; row <= span.last; ++row) {
            if (rows.size() == mostListed)
                return rows;
            rows.append(row);
        }
    }
    return rows;
}

QList<int> SelectedCells::columns() const
{
    QList<int> columns;
    for (int column = 0; column < m_columns.size(); ++column) {
        if (isColumnSelected(column))
            columns.append(column);
    }
    return columns;
}

bool SelectedCells::isRowSelected(int row) const
{
    const auto isSelected = [&](int column) {
        return std::any_of(m_selection.begin(), m_selection.end(), [&](const auto &range) {
            return range.top() <= row && row <= range.bottom() && range.left() <= column
                && column <= range.right();
        });
    };
    return !m_columns.isEmpty() && std::all_of(m_columns.begin(), m_columns.end(), isSelected);
}

bool SelectedCells::isColumnSelected(int column) const
{
    const int logical = m_columns.value(column, -1);
    const int rows = m_view.model() ? m_view.model()->rowCount() : 0;
    if (logical == -1 || rows == 0)
        return false;
    qint64 selected = 0; // ranges do not overlap
    for (const QItemSelectionRange &range : m_selection) {
        if (range.left() <= logical && logical <= range.right())
            selected += range.height();
    }
    return selected == rows;
}

} // namespace Accessible
