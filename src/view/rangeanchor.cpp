// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "rangeanchor_p.h"

#include "headercolumns_p.h"
#include "qtablefastview.h"
#include "rowgeometry_p.h"

#include <QHeaderView>

#include <algorithm>
#include <cstdlib>

void RangeAnchor::press(const QModelIndex &pressed, QItemSelectionModel::SelectionFlags command)
{
    if (!(command & QItemSelectionModel::Current))
        m_anchor = pressed;
    else if (!m_anchor.isValid())
        m_anchor = m_view->currentIndex();
}

QPersistentModelIndex RangeAnchor::beginKey(const QModelIndex &current)
{
    QPersistentModelIndex known = m_anchor;
    if (!m_anchor.isValid())
        m_anchor = current;
    return known;
}

void RangeAnchor::endKey(const QModelIndex &now, QItemSelectionModel::SelectionFlags command)
{
    if (!(command & QItemSelectionModel::Current))
        m_anchor = now;
}

QItemSelection RangeAnchor::range(const QModelIndex &a, const QModelIndex &b, bool isVisual) const
{
    const QHeaderView *header = m_view->header();
    if (!isVisual || !header || !header->sectionsMoved())
        return {a, b};
    const QAbstractItemModel *model = a.model();
    const QList<int> seen = HeaderColumns(header).between(a.column(), b.column());
    const auto [top, bottom] = std::minmax({a.row(), b.row()});
    QItemSelection selection;
    for (qsizetype from = 0, to = 0; from < seen.size(); from = to) {
        for (to = from + 1; to < seen.size() && seen.at(to) == seen.at(to - 1) + 1;)
            ++to;
        selection.select(model->index(top, seen.at(from)), model->index(bottom, seen.at(to - 1)));
    }
    return selection;
}

QModelIndex RangeAnchor::cornerAt(const QPoint &point) const
{
    // The centre of a cell at the upper limit is less far away.
    const qint64 limit = RowScale::farAway - m_view->rowHeight();
    if (std::abs(qint64(point.y())) < limit || !m_anchor.isValid())
        return m_view->indexAt(point);
    const int column = m_view->columnAt(point.x());
    return column < 0 ? QModelIndex() : m_view->model()->index(m_anchor.row(), column);
}
