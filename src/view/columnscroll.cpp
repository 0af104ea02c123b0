// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "columnscroll_p.h"

#include <QHeaderView>
#include <QScrollBar>

#include <algorithm>

//! How many sections at the end fit into \a width pixels; one at least, if there is one.
int ColumnScroll::fittingSections(int width) const
{
    const int count = m_header->count();
    int fit = 0;
    int used = 0;
    for (int visual = count - 1; visual >= 0; --visual, ++fit) {
        used += m_header->sectionSize(m_header->logicalIndex(visual));
        if (used > width)
            break;
    }
    return count > 0 ? std::max(fit, 1) : fit;
}

void ColumnScroll::setRange(int width, int widest) const
{
    const int fit = fittingSections(width);
    if (m_isPerItem) {
        m_bar->setRange(0, m_header->count() - fit);
        m_bar->setPageStep(fit);
        m_bar->setSingleStep(1);
        return;
    }
    const int length = m_header->length();
    const int page = length <= widest && m_bar->maximum() < 1 ? widest : width;
    m_bar->setPageStep(page);
    m_bar->setRange(0, std::max(length - page, 0));
    m_bar->setSingleStep(std::max(page / (fit + 1), 2));
}

int ColumnScroll::apply() const
{
    const int oldOffset = m_header->offset();
    const int visible = m_header->count() - m_header->hiddenSectionCount();
    if (!m_isPerItem)
        m_header->setOffset(m_bar->value());
    else if (m_bar->value() == 0)
        m_header->setOffset(0);
    else if (m_bar->value() == m_bar->maximum() || m_bar->value() >= visible)
        m_header->setOffsetToLastSection();
    else
        m_header->setOffsetToSectionPosition(m_bar->value());
    return oldOffset - m_header->offset();
}

void ColumnScroll::scrollTo(int offset) const
{
    if (!m_isPerItem) {
        m_bar->setValue(offset);
        return;
    }
    int section = 0;
    for (int visual = 0; visual < m_header->count(); ++visual) {
        const int logical = m_header->logicalIndex(visual);
        if (m_header->isSectionHidden(logical))
            continue;
        if (m_header->sectionPosition(logical) >= offset)
            break;
        ++section;
    }
    m_bar->setValue(section);
}
