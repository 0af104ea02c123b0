// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "pixelmover_p.h"

#include "pixels/background_p.h"
#include "rowgeometry_p.h"

#include <QAbstractScrollArea>

#include <cstdlib>

namespace {

// Several moves of the same pixels before one paint cost more than the paint.
constexpr int maxMoves = 3;

// What is pending is known exactly up to this many rectangles.
constexpr int maxRects = 64;

//! \a region and what shares device pixels with it, as wide as \a area.
QRegion widened(const QRegion &region, const QRect &area)
{
    QRegion wide;
    for (const QRect &rect : region)
        wide |= QRect(area.left(), rect.top() - 2, area.width(), rect.height() + 4);
    return wide;
}

} // namespace

void PixelMover::update()
{
    m_isAllPending = true;
    m_area->viewport()->update();
}

void PixelMover::update(const QRegion &part)
{
    // A device pixel that belongs to two cells by halves is that of the one painted last.
    const bool isWhole = hasWholeDevicePixels(*m_area->viewport());
    const QRegion region = isWhole ? part : widened(part, m_area->viewport()->rect());
    if (!m_isAllPending) {
        m_pending |= region & m_area->viewport()->rect();
        if (m_pending.rectCount() > maxRects)
            m_pending = m_pending.boundingRect();
    }
    m_area->viewport()->update(region);
}

bool PixelMover::canMove() const
{
    return !m_isAllPending && !m_area->viewport()->testAttribute(Qt::WA_WState_InPaintEvent)
        && hasPlainBackground(*m_area->viewport()) && hasPlainCells(m_area->palette())
        && hasWholeDevicePixels(*m_area->viewport());
}

bool PixelMover::canMoveAgain()
{
    return m_area->viewport()->children().isEmpty() && canMove() && ++m_moves <= maxMoves;
}

bool PixelMover::moveAll(int dx, int dy)
{
    if (!canMove()) {
        update();
        return false;
    }
    m_area->viewport()->scroll(dx, dy);
    keepPending(m_area->viewport()->rect(), dx, dy);
    return true;
}

void PixelMover::moveRows(int top, int bottom, qint64 dy)
{
    moveStrip(0, saturated(dy), QRect(0, top, m_area->viewport()->width(), bottom - top));
}

void PixelMover::moveColumns(int x, int width, int delta, bool isRightToLeft)
{
    const QRect area = m_area->viewport()->rect();
    QRect moved = area;
    if (isRightToLeft)
        moved.setRight(x);
    else
        moved.setLeft(x + width - 1);
    moveStrip(isRightToLeft ? -delta : delta, 0, moved & area);
    update(QRect(x, 0, width, area.height()));
}

void PixelMover::moveStrip(int dx, int dy, const QRect &strip)
{
    if (std::abs(dx) >= strip.width() || std::abs(dy) >= strip.height()) {
        update(strip);
        return;
    }
    m_area->viewport()->scroll(dx, dy, strip);
    keepPending(strip, dx, dy);
}

//! What was pending in \a strip went along; it is pending where it was, too.
void PixelMover::keepPending(const QRect &strip, int dx, int dy)
{
    const QRegion kept = m_pending & strip;
    if (kept.isEmpty())
        return;
    m_pending |= kept.translated(dx, dy) & strip;
    m_area->viewport()->update(kept);
}

void PixelMover::painted(const QRegion &region)
{
    const QRect all = m_area->viewport()->rect();
    m_moves = 0;
    if (m_isAllPending)
        m_pending = all;
    m_pending -= region;
    m_isAllPending = !m_pending.isEmpty() && (QRegion(all) - m_pending).isEmpty();
}
