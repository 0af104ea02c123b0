// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "headercell_p.h"

#include "shownplaces_p.h"

#include "qtablefastview.h"

#include <QHeaderView>

namespace Accessible {

HeaderCell::HeaderCell(QTableFastView *view, int column)
    : m_view(view)
    , m_column(column)
{
}

QHeaderView *HeaderCell::header() const
{
    return m_view ? m_view->header() : nullptr;
}

bool HeaderCell::isValid() const
{
    const QHeaderView *header = this->header();
    return header && m_column < header->count() && !header->isSectionHidden(m_column);
}

QWindow *HeaderCell::window() const
{
    return isValid() ? m_view->window()->windowHandle() : nullptr;
}

QAccessibleInterface *HeaderCell::parent() const
{
    return QAccessible::queryAccessibleInterface(m_view);
}

QAccessibleInterface *HeaderCell::child(int /*index*/) const
{
    return nullptr;
}

QAccessibleInterface *HeaderCell::childAt(int /*x*/, int /*y*/) const
{
    return nullptr;
}

int HeaderCell::indexOfChild(const QAccessibleInterface * /*child*/) const
{
    return -1;
}

QString HeaderCell::text(QAccessible::Text text) const
{
    return isValid() ? headerText(*m_view, m_column, text) : QString();
}

void HeaderCell::setText(QAccessible::Text /*kind*/, const QString & /*text*/)
{
}

QRect HeaderCell::rect() const
{
    if (!isValid())
        return {};
    const QHeaderView *header = this->header();
    const QRect section(header->sectionViewportPosition(m_column), 0, header->sectionSize(m_column),
                        header->viewport()->height());
    return onScreen(section, *header->viewport());
}

QAccessible::State HeaderCell::state() const
{
    QAccessible::State state;
    if (!isValid()) {
        state.invalid = true;
        return state;
    }
    const QWidget *area = header()->viewport();
    state.invisible = !area->isVisible() || !onScreen(area->rect(), *area).intersects(this->rect());
    state.offscreen = state.invisible;
    state.disabled = !header()->isEnabled();
    return state;
}

void *HeaderCell::interface_cast(QAccessible::InterfaceType type)
{
    return type == QAccessible::ActionInterface ? static_cast<QAccessibleActionInterface *>(this)
                                                : nullptr;
}

QStringList HeaderCell::actionNames() const
{
    const bool sorts = isValid() && m_view->isEnabled() && m_view->isSortingEnabled();
    return sorts ? QStringList(pressAction()) : QStringList();
}

//! As a click: the column that is sorted already, the other way round.
void HeaderCell::doAction(const QString &name)
{
    if (!actionNames().contains(name))
        return;
    const QHeaderView *header = this->header();
    const bool isAscending = header->sortIndicatorSection() == m_column
        && header->sortIndicatorOrder() == Qt::AscendingOrder;
    m_view->sortByColumn(m_column, isAscending ? Qt::DescendingOrder : Qt::AscendingOrder);
}

QStringList HeaderCell::keyBindingsForAction(const QString & /*name*/) const
{
    return {};
}

} // namespace Accessible
