// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "edgekeeper_p.h"

void EdgeKeeper::setFollowsCurrent(bool on)
{
    m_followsCurrent = on;
    m_isFirstOwed = m_isLastOwed = false;
}

void EdgeKeeper::beforeInsertion(const Situation &now)
{
    if (now.currentRow >= 0) {
        m_flags.currentFirst = now.currentRow == 0;
        m_flags.currentLast = now.currentRow == now.rows - 1;
        m_flags.currentColumn = now.currentColumn;
        m_flags.currentPos = now.currentRow - now.topRow;
    } else {
        m_flags.currentPos = 0;
        m_flags.currentFirst = m_flags.currentLast = now.rows == 0;
    }
    m_flags.stayAtTop = now.isAtMinimum;
    m_flags.stayAtEnd = now.isAtMaximum;
    if (now.isFetching) {
        m_flags.stayAtTop = now.rows == 0;
        m_flags.stayAtEnd = m_flags.currentFirst = m_flags.currentLast = false;
        return;
    }
    if (isOwed() && !now.isEditing)
        takeOwed();

    // Where both ends coincide, new rows are expected where the order puts them.
    if (m_flags.stayAtTop && m_flags.stayAtEnd)
        (now.isAscending ? m_flags.stayAtEnd : m_flags.stayAtTop) = false;
    if (m_flags.currentFirst && m_flags.currentLast)
        (now.isAscending ? m_flags.currentLast : m_flags.currentFirst) = false;
}

EdgeKeeper::Scroll EdgeKeeper::scroll(int start, int topRow) const
{
    if (m_flags.stayAtEnd && !m_flags.stayAtTop)
        return Scroll::ToEnd;
    if (!m_flags.stayAtEnd && !m_flags.stayAtTop && start <= topRow)
        return Scroll::WithRows;
    return Scroll::Stay;
}

EdgeKeeper::Edge EdgeKeeper::edgeToFollow(int start, int end, int rows) const
{
    if (!m_followsCurrent)
        return Edge::None;
    if (m_flags.currentFirst && start == 0)
        return Edge::First;
    return m_flags.currentLast && end == rows - 1 ? Edge::Last : Edge::None;
}

//! What is owed applies to the rows that come next.
void EdgeKeeper::takeOwed()
{
    m_flags.currentFirst = m_flags.currentFirst || m_isFirstOwed;
    m_flags.currentLast = m_flags.currentLast || m_isLastOwed;
    m_isFirstOwed = m_isLastOwed = false;
}

void EdgeKeeper::beforeReset(int currentRow, int currentColumn, int rows)
{
    if (rows == 0 || currentRow < 0)
        return;
    m_flags.currentFirst = currentRow == 0;
    m_flags.currentLast = !m_flags.currentFirst && currentRow == rows - 1;
    m_flags.currentColumn = currentColumn;
}

EdgeKeeper::Edge EdgeKeeper::edgeAfterReset() const
{
    if (!m_followsCurrent)
        return Edge::None;
    return m_flags.currentFirst ? Edge::First : m_flags.currentLast ? Edge::Last : Edge::None;
}
