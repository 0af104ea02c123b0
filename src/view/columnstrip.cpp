// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "columnstrip_p.h"

#include <algorithm>

bool haveSamePlaces(const ColumnStrip &a, const ColumnStrip &b)
{
    const auto isSame = [](const ColumnSlot &one, const ColumnSlot &other) {
        return one.column == other.column && one.x == other.x && one.width == other.width;
    };
    return std::equal(a.cbegin(), a.cend(), b.cbegin(), b.cend(), isSame);
}

ColumnStrip scrolled(ColumnStrip strip, int dx)
{
    for (ColumnSlot &slot : strip)
        slot.x += dx;
    return strip;
}

ColumnStrip resized(ColumnStrip strip, int column, int delta, bool isRightToLeft)
{
    bool isAfter = false;
    for (ColumnSlot &slot : strip) {
        const bool isResized = slot.column == column;
        if (isResized)
            slot.width += delta;
        if (isRightToLeft ? isAfter || isResized : isAfter)
            slot.x += isRightToLeft ? -delta : delta;
        isAfter = isAfter || isResized;
    }
    return strip;
}

bool shows(const ColumnStrip &moved, const ColumnStrip &wanted, int width, int from, int to)
{
    const auto isPainted = [=](const ColumnSlot &slot) {
        const int left = std::max(slot.x, 0);
        const int right = std::min(slot.x + slot.width, width);
        return left < right && (left < from || right > to);
    };
    auto next = wanted.cbegin();
    for (const ColumnSlot &slot : moved) {
        if (!isPainted(slot))
            continue;
        // Columns between are new here.
        while (next != wanted.cend() && next->column != slot.column && !isPainted(*next))
            ++next;
        if (next == wanted.cend() || next->column != slot.column || next->x != slot.x
            || next->width != slot.width) {
            return false;
        }
        ++next;
    }
    return std::none_of(next, wanted.cend(), isPainted);
}
