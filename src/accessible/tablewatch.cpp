// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "tablewatch_p.h"

#include "shownplaces_p.h"
#include "table_p.h"

#include "qtablefastview.h"

#include <QEvent>
#include <QHeaderView>
#include <QItemSelectionModel>

#include <algorithm>

namespace Accessible {

TableWatch::TableWatch(QTableFastView *view)
    : m_view(view)
{
}

void TableWatch::start()
{
    stop();
    m_view->installEventFilter(this);
    connect(m_view, &QTableFastView::headerChanged, this, [this] {
        start();
        columnsChanged();
    });
    connectHeader(m_view->header());
    connectModel(m_view->model());
    connectSelection(m_view->selectionModel());
}

void TableWatch::stop()
{
    m_view->removeEventFilter(this);
    m_view->disconnect(this);
    if (m_header)
        m_header->disconnect(this);
    if (m_model)
        m_model->disconnect(this);
    if (m_selection)
        m_selection->disconnect(this);
}

void TableWatch::connectHeader(QHeaderView *header)
{
    m_header = header;
    if (!header)
        return;
    connect(header, &QHeaderView::sectionMoved, this, &TableWatch::columnsChanged);
    connect(header, &QHeaderView::sectionResized, this, [this](int, int oldSize, int newSize) {
        if (oldSize == 0 || newSize == 0) // shown or hidden
            columnsChanged();
    });
}

void TableWatch::connectModel(QAbstractItemModel *model)
{
    m_model = model;
    if (model)
        connect(model, &QAbstractItemModel::dataChanged, this, &TableWatch::dataChanged);
}

void TableWatch::connectSelection(QItemSelectionModel *selection)
{
    m_selection = selection;
    if (!selection)
        return;
    connect(selection, &QItemSelectionModel::currentChanged, this, &TableWatch::currentChanged);
    connect(selection, &QItemSelectionModel::selectionChanged, this, &TableWatch::selectionChanged);
}

bool TableWatch::eventFilter(QObject *object, QEvent *event)
{
    // Later: Qt itself is about to tell that the view has it.
    if (event->type() == QEvent::FocusIn)
        QMetaObject::invokeMethod(this, "tellFocus", Qt::QueuedConnection);
    return QObject::eventFilter(object, event);
}

//! Tells of a cell's event, if it has an interface or can have one.
void TableWatch::tell(const QModelIndex &index, QAccessible::Event type)
{
    const Table *table = Table::of(m_view);
    QAccessibleInterface *cell = table ? table->cell(index) : nullptr;
    if (!cell)
        return;
    // By the cell itself: the numbers of children end long before the rows.
    QAccessibleEvent event(cell, type);
    QAccessible::updateAccessibility(&event);
}

// Focus and selection

void TableWatch::tellFocus()
{
    if (QAccessible::isActive()) // still
        currentChanged(m_view->currentIndex());
}

void TableWatch::currentChanged(const QModelIndex &current)
{
    if (current.isValid() && m_view->hasFocus())
        tell(current, QAccessible::Focus);
}

void TableWatch::selectionChanged(const QItemSelection &selected, const QItemSelection &deselected)
{
    tell(firstOf(selected), QAccessible::SelectionAdd);
    tell(firstOf(deselected), QAccessible::SelectionRemove);
    const auto isLarge = [](const QItemSelection &selection) {
        return selection.size() > 1 || (selection.size() == 1 && selection.first().height() > 1);
    };
    if (!isLarge(selected) && !isLarge(deselected))
        return;
    QAccessibleEvent event(m_view, QAccessible::SelectionWithin);
    QAccessible::updateAccessibility(&event);
}

//! The cell that stands for a selection: the current one, or the first shown.
QModelIndex TableWatch::firstOf(const QItemSelection &selection) const
{
    if (selection.isEmpty() || !selection.first().isValid())
        return {};
    const QModelIndex current = m_view->currentIndex();
    if (selection.contains(current))
        return current;
    return selection.first().topLeft();
}

// Data and columns

void TableWatch::dataChanged(const QModelIndex &topLeft, const QModelIndex &bottomRight,
                             const QList<int> &roles)
{
    if (!topLeft.isValid() || !bottomRight.isValid() || topLeft.parent().isValid())
        return;
    // With an editor open the base class tells of it.
    if (m_view->viewport()->children().isEmpty())
        tellRange(topLeft, bottomRight);
    const QModelIndex current = m_view->currentIndex();
    const QItemSelectionRange changed(topLeft, bottomRight);
    if (changed.contains(current))
        tellCurrent(roles);
}

void TableWatch::tellRange(const QModelIndex &topLeft, const QModelIndex &bottomRight)
{
    QAccessibleTableModelChangeEvent event(m_view, QAccessibleTableModelChangeEvent::DataChanged);
    event.setFirstRow(topLeft.row());
    event.setLastRow(bottomRight.row());
    event.setFirstColumn(topLeft.column());
    event.setLastColumn(bottomRight.column());
    QAccessible::updateAccessibility(&event);
}

//! The cell that the user is at reads otherwise now.
void TableWatch::tellCurrent(const QList<int> &roles)
{
    const Table *table = Table::of(m_view);
    QAccessibleInterface *cell = table ? table->knownCell(m_view->currentIndex()) : nullptr;
    if (!cell)
        return;
    const auto isOneOf = [&](std::initializer_list<int> wanted) {
        return roles.isEmpty() || std::any_of(wanted.begin(), wanted.end(), [&](int role) {
                   return roles.contains(role);
               });
    };
    if (isOneOf({Qt::DisplayRole, Qt::EditRole, Qt::AccessibleTextRole})) {
        QAccessibleEvent event(cell, QAccessible::NameChanged);
        QAccessible::updateAccessibility(&event);
    }
    if (isOneOf({Qt::CheckStateRole}) && cell->state().checkable) {
        QAccessible::State changed;
        changed.checked = true;
        QAccessibleStateChangeEvent event(cell, changed);
        QAccessible::updateAccessibility(&event);
    }
}

//! Columns are numbered anew.
void TableWatch::columnsChanged()
{
    QAccessibleTableModelChangeEvent event(m_view, QAccessibleTableModelChangeEvent::ModelReset);
    QAccessible::updateAccessibility(&event);
}

} // namespace Accessible
