// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "headercolumns_p.h"

#include <QHeaderView>

#include <algorithm>
#include <utility>

namespace {

// What a style draws a cell as, from the painted columns (−1 for none) beside it.
QStyleOptionViewItem::ViewItemPosition cellPosition(int previous, int column, int next,
                                                    bool isSingle)
{
    if (isSingle || (next == 0 && previous == -1) || (column == 0 && next == -1))
        return QStyleOptionViewItem::OnlyOne;
    if (column == 0 || (next != 0 && previous == -1))
        return QStyleOptionViewItem::Beginning;
    if (next == 0 || next == -1)
        return QStyleOptionViewItem::End;
    return QStyleOptionViewItem::Middle;
}

} // namespace

QPair<int, int> HeaderColumns::crossing(const QRect &rect, bool isRightToLeft) const
{
    if (!m_header)
        return {0, -1};
    int start = m_header->visualIndexAt(rect.left());
    int end = m_header->visualIndexAt(rect.right());
    const int last = m_header->count() - 1;
    if (start == -1)
        start = isRightToLeft ? last : 0;
    if (end == -1)
        end = isRightToLeft ? 0 : last;
    return {std::min(start, end), std::max(start, end)};
}

QPair<int, int> HeaderColumns::bounds(QPair<int, int> visual) const
{
    const auto [start, end] = visual;
    if (!m_header || !m_header->sectionsMoved() || start > end)
        return visual;
    int lowest = m_header->logicalIndex(start);
    int highest = lowest;
    for (int at = start + 1; at <= end; ++at) {
        lowest = std::min(lowest, m_header->logicalIndex(at));
        highest = std::max(highest, m_header->logicalIndex(at));
    }
    return {lowest, highest};
}

ColumnStrip HeaderColumns::strip(QPair<int, int> visual) const
{
    const auto [start, last] = visual;
    ColumnStrip columns;
    for (int at = start; at <= last; ++at) {
        const int column = m_header->logicalIndex(at);
        if (column >= 0 && !m_header->isSectionHidden(column)) {
            columns.append({column, m_header->sectionViewportPosition(column),
                            m_header->sectionSize(column), QStyleOptionViewItem::Middle});
        }
    }
    int previous = shownBefore(start);
    for (qsizetype i = 0; i < columns.size(); ++i) {
        const int next = i + 1 < columns.size() ? columns.at(i + 1).column : -1;
        columns[i].position =
            cellPosition(previous, columns.at(i).column, next, m_header->count() == 1);
        previous = columns.at(i).column;
    }
    return columns;
}

//! The nearest non-hidden column before a visual position, or −1.
int HeaderColumns::shownBefore(int visual) const
{
    for (int at = visual - 1; at >= 0; --at) {
        const int column = m_header->logicalIndex(at);
        if (!m_header->isSectionHidden(column))
            return column;
    }
    return -1;
}

QRect HeaderColumns::span(int left, int right, int height) const
{
    if (!m_header)
        return {};
    int first = -1;
    int last = -1;
    for (int column = left; column <= std::min(right, m_header->count() - 1); ++column) {
        if (m_header->isSectionHidden(column))
            continue;
        const int visual = m_header->visualIndex(column);
        first = first == -1 ? visual : std::min(first, visual);
        last = std::max(last, visual);
    }
    if (first == -1)
        return {};
    const int a = m_header->logicalIndex(first);
    const int b = m_header->logicalIndex(last);
    const int xOfA = m_header->sectionViewportPosition(a);
    const int xOfB = m_header->sectionViewportPosition(b);
    const int x = std::min(xOfA, xOfB);
    const int end = std::max(xOfA + m_header->sectionSize(a), xOfB + m_header->sectionSize(b));
    return {x, 0, end - x, height};
}

QList<int> HeaderColumns::between(int a, int b) const
{
    const auto [start, last] = std::minmax({m_header->visualIndex(a), m_header->visualIndex(b)});
    QList<int> columns;
    for (int visual = start; visual <= last; ++visual)
        columns.append(m_header->logicalIndex(visual));
    std::sort(columns.begin(), columns.end());
    return columns;
}

int HeaderColumns::first() const
{
    for (int column = 0; m_header && column < m_header->count(); ++column) {
        if (!m_header->isSectionHidden(column))
            return column;
    }
    return -1;
}

int HeaderColumns::end(int step) const
{
    const int count = m_header ? m_header->count() : 0;
    for (int visual = step > 0 ? 0 : count - 1; visual >= 0 && visual < count; visual += step) {
        const int column = m_header->logicalIndex(visual);
        if (!m_header->isSectionHidden(column))
            return column;
    }
    return -1;
}

int HeaderColumns::neighbour(int column, int step) const
{
    if (!m_header)
        return -1;
    int visual = m_header->visualIndex(column) + step;
    while (visual >= 0 && visual < m_header->count()
           && m_header->isSectionHidden(m_header->logicalIndex(visual))) {
        visual += step;
    }
    return m_header->logicalIndex(visual);
}
