// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "showncolumns_p.h"

#include "pixels/painttraits_p.h"
#include "qtablefastview.h"

#include <QStyle>

#include <algorithm>

bool ShownColumns::areAs(const ColumnStrip &columns) const
{
    if (columns == m_columns)
        return true;
    if (!haveSamePlaces(columns, m_columns))
        return false;
    const bool isSheet = hasSheet();
    for (qsizetype i = 0; i < columns.size(); ++i) {
        if (columns.at(i) != m_columns.at(i) && showsPosition(columns.at(i).column, isSheet))
            return false;
    }
    return true;
}

bool ShownColumns::followScroll(const ColumnStrip &wanted, int dx)
{
    const int width = m_view->viewport()->width();
    return dx == 0
        || follow(scrolled(m_columns, dx), wanted, dx > 0 ? 0 : width + dx, dx > 0 ? dx : width);
}

bool ShownColumns::followResize(const ColumnStrip &wanted, int column, int delta)
{
    const bool isRightToLeft = m_view->isRightToLeft();
    const int width = m_view->viewport()->width();
    const int dx = isRightToLeft ? -delta : delta;
    // What grows uncovers nothing: the column itself is painted.
    const int from = dx > 0 ? 0 : width + dx;
    const int to = dx > 0 ? dx : width;
    const bool isShrunk = delta < 0;
    return follow(resized(m_columns, column, delta, isRightToLeft), wanted, isShrunk ? from : 0,
                  isShrunk ? to : 0);
}

//! Takes \a moved, of which the pixels between \a from and \a to are not painted, for
//! \a wanted.
bool ShownColumns::follow(const ColumnStrip &moved, const ColumnStrip &wanted, int from, int to)
{
    if (!shows(moved, wanted, m_view->viewport()->width(), from, to))
        return false;
    // The first and the last column on screen may be drawn otherwise.
    const bool isSheet = hasSheet();
    for (const ColumnSlot &slot : wanted) {
        const auto isIt = [&slot](const ColumnSlot &other) { return other.column == slot.column; };
        const auto before = std::find_if(m_columns.cbegin(), m_columns.cend(), isIt);
        if (before != m_columns.cend() && before->position != slot.position
            && showsPosition(slot.column, isSheet)) {
            m_view->updateColumn(slot.column);
        }
    }
    m_columns = wanted;
    return true;
}

ColumnLook ShownColumns::look(const ColumnSlot &slot, bool hasSheet) const
{
    const bool isPositionSeen = showsPosition(slot.column, hasSheet);
    return {m_view->itemDelegateForColumn(slot.column),
            isPositionSeen ? slot.position : QStyleOptionViewItem::Invalid};
}

//! Whether the place of a column among the painted ones may be seen in its cells.
bool ShownColumns::showsPosition(int column, bool hasSheet) const
{
    if (hasSheet)
        return true;
    QAbstractItemDelegate *delegate = m_view->itemDelegateForColumn(column);
    if (!delegate)
        delegate = m_view->itemDelegate();
    return !PaintTraits::of(delegate).ignoresPosition;
}

bool ShownColumns::hasSheet() const
{
    return m_view->style()->inherits("QStyleSheetStyle");
}
