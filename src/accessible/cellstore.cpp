// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "cellstore_p.h"

#include "cell_p.h"
#include "headercell_p.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace Accessible {

CellStore::CellStore(QTableFastView *view)
    : m_view(view)
{
}

CellStore::~CellStore()
{
    clear();
}

QAccessibleInterface *CellStore::cell(const QModelIndex &index)
{
    const QPersistentModelIndex key(index);
    const auto known = m_cells.find(key);
    if (known != m_cells.end()) {
        known->asked = ++m_now;
        // Null when the application ends: Qt's cache drops all in any order.
        if (QAccessibleInterface *kept = QAccessible::accessibleInterface(known->id))
            return kept;
    }
    auto *made = new Cell(m_view, key);
    m_cells.insert(key, {QAccessible::registerAccessibleInterface(made), ++m_now});
    if (m_cells.size() > mostKept)
        trimLater();
    return made;
}

QAccessibleInterface *CellStore::knownCell(const QModelIndex &index) const
{
    const auto known = m_cells.constFind(QPersistentModelIndex(index));
    return known == m_cells.constEnd() ? nullptr : QAccessible::accessibleInterface(known->id);
}

QAccessibleInterface *CellStore::headerCell(int column)
{
    if (const auto known = m_headerCells.constFind(column); known != m_headerCells.constEnd()) {
        if (QAccessibleInterface *kept = QAccessible::accessibleInterface(*known))
            return kept;
    }
    auto *made = new HeaderCell(m_view, column);
    m_headerCells.insert(column, QAccessible::registerAccessibleInterface(made));
    return made;
}

void CellStore::clear()
{
    for (const Kept &kept : std::exchange(m_cells, {}))
        QAccessible::deleteAccessibleInterface(kept.id);
    for (const QAccessible::Id id : std::exchange(m_headerCells, {}))
        QAccessible::deleteAccessibleInterface(id);
}

void CellStore::dropGone()
{
    m_cells.removeIf([](const auto &entry) {
        if (entry.key().isValid())
            return false;
        QAccessible::deleteAccessibleInterface(entry.value().id);
        return true;
    });
}

//! Whoever asks for a cell may hold others meanwhile.
void CellStore::trimLater()
{
    if (!std::exchange(m_isTrimming, true))
        QMetaObject::invokeMethod(this, "trim", Qt::QueuedConnection);
}

//! Keeps the half that was asked for last.
void CellStore::trim()
{
    m_isTrimming = false;
    if (m_cells.size() <= mostKept)
        return;
    std::vector<quint64> times;
    times.reserve(size_t(m_cells.size()));
    for (const Kept &kept : std::as_const(m_cells))
        times.push_back(kept.asked);
    const auto first = times.end() - mostKept / 2;
    std::nth_element(times.begin(), first, times.end());
    m_cells.removeIf([oldest = *first](const auto &entry) {
        if (entry.value().asked >= oldest)
            return false;
        QAccessible::deleteAccessibleInterface(entry.value().id);
        return true;
    });
}

} // namespace Accessible
