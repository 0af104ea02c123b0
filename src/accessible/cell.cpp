// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "cell_p.h"

#include "celltexts_p.h"
#include "selecting_p.h"
#include "shownplaces_p.h"
#include "table_p.h"

#include "qtablefastview.h"

#include <QItemSelectionModel>
#include <QKeyEvent>
#include <QStyleOptionViewItem>

namespace Accessible {

namespace {

const QString s_select = QStringLiteral("Select");
const QString s_edit = QStringLiteral("Edit");

} // namespace

Cell::Cell(QTableFastView *view, const QPersistentModelIndex &index)
    : m_view(view)
    , m_index(index)
{
}

// Where it is

bool Cell::isValid() const
{
    return m_view && m_index.isValid() && m_index.model() == m_view->model();
}

QWindow *Cell::window() const
{
    return isValid() ? m_view->window()->windowHandle() : nullptr;
}

QAccessibleInterface *Cell::parent() const
{
    return QAccessible::queryAccessibleInterface(m_view);
}

QAccessibleInterface *Cell::child(int /*index*/) const
{
    return nullptr;
}

QAccessibleInterface *Cell::childAt(int /*x*/, int /*y*/) const
{
    return nullptr;
}

int Cell::indexOfChild(const QAccessibleInterface * /*child*/) const
{
    return -1;
}

QRect Cell::rect() const
{
    return isValid() ? onScreen(m_view->visualRect(m_index), *m_view->viewport()) : QRect();
}

int Cell::columnIndex() const
{
    return isValid() ? shownPosition(*m_view, m_index.column()) : -1;
}

QList<QAccessibleInterface *> Cell::columnHeaderCells() const
{
    const Table *table = Table::of(m_view);
    QAccessibleInterface *header = table ? table->headerCell(columnIndex()) : nullptr;
    return header ? QList<QAccessibleInterface *> {header} : QList<QAccessibleInterface *>();
}

void *Cell::interface_cast(QAccessible::InterfaceType type)
{
    if (type == QAccessible::TableCellInterface)
        return static_cast<QAccessibleTableCellInterface *>(this);
    if (type == QAccessible::ActionInterface)
        return static_cast<QAccessibleActionInterface *>(this);
    return nullptr;
}

// What it says

QString Cell::text(QAccessible::Text text) const
{
    return isValid() ? cellText(*m_view, m_index, text) : QString();
}

void Cell::setText(QAccessible::Text kind, const QString &text)
{
    if ((kind == QAccessible::Name || kind == QAccessible::Value) && isEditable())
        m_view->model()->setData(m_index, text);
}

// What state it is in

bool Cell::isOnScreen() const
{
    return m_view->isVisible()
        && m_view->viewport()->rect().intersects(m_view->visualRect(m_index));
}

bool Cell::isEnabled() const
{
    return isValid() && m_view->isEnabled() && (m_index.flags() & Qt::ItemIsEnabled);
}

bool Cell::isEditable() const
{
    return isEnabled() && (m_index.flags() & Qt::ItemIsEditable)
        && m_view->editTriggers() != QAbstractItemView::NoEditTriggers;
}

bool Cell::isCheckable() const
{
    return isEnabled() && (m_index.flags() & Qt::ItemIsUserCheckable)
        && m_index.data(Qt::CheckStateRole).isValid();
}

bool Cell::isSelected() const
{
    const QItemSelectionModel *selection = isValid() ? m_view->selectionModel() : nullptr;
    return selection && selection->isSelected(m_index);
}

QAccessible::State Cell::state() const
{
    QAccessible::State state;
    if (!isValid()) {
        state.invalid = true;
        return state;
    }
    state.invisible = !isOnScreen();
    state.offscreen = state.invisible;
    state.disabled = !isEnabled();
    state.editable = isEditable();
    fillCheckState(&state);
    fillSelectionState(&state);
    return state;
}

void Cell::fillCheckState(QAccessible::State *state) const
{
    const QVariant value = m_index.data(Qt::CheckStateRole);
    state->checkable = value.isValid() && (m_index.flags() & Qt::ItemIsUserCheckable);
    state->checked = value.toInt() == Qt::Checked;
    state->checkStateMixed = value.toInt() == Qt::PartiallyChecked;
}

void Cell::fillSelectionState(QAccessible::State *state) const
{
    state->selected = isSelected();
    state->focused = m_view->hasFocus() && m_view->currentIndex() == m_index;
    if (!(m_index.flags() & Qt::ItemIsSelectable))
        return;
    const QAbstractItemView::SelectionMode mode = m_view->selectionMode();
    state->selectable = true;
    state->focusable = true;
    state->multiSelectable = mode == QAbstractItemView::MultiSelection;
    state->extSelectable = mode == QAbstractItemView::ExtendedSelection;
}

// What can be done with it

QStringList Cell::actionNames() const
{
    if (!isEnabled())
        return {};
    QStringList names;
    if (m_index.flags() & Qt::ItemIsSelectable)
        names << s_select;
    if (isEditable())
        names << s_edit;
    if (isCheckable())
        names << toggleAction();
    return names << setFocusAction();
}

QString Cell::localizedActionName(const QString &name) const
{
    if (name == s_select)
        return QTableFastView::tr("Select");
    if (name == s_edit)
        return QTableFastView::tr("Edit");
    return QAccessibleActionInterface::localizedActionName(name);
}

void Cell::doAction(const QString &name)
{
    if (!actionNames().contains(name))
        return;
    if (name == s_select)
        selectCell(m_view, m_index);
    else if (name == s_edit)
        edit();
    else if (name == toggleAction())
        toggle();
    else
        focus();
}

QStringList Cell::keyBindingsForAction(const QString & /*name*/) const
{
    return {};
}

void Cell::focus() const
{
    const QPersistentModelIndex index = m_index; // this may be gone before it is current
    const QPointer<QTableFastView> view = m_view;
    view->setFocus(Qt::OtherFocusReason);
    if (view && index.isValid() && index.model() == view->model())
        view->setCurrentIndex(index);
}

void Cell::edit() const
{
    const QPersistentModelIndex index = m_index; // this may be gone once the current index moves
    const QPointer<QTableFastView> view = m_view;
    view->setCurrentIndex(index);
    if (view && index.isValid() && index.model() == view->model())
        view->edit(index);
}

//! The delegate does so with a key, and may refuse.
void Cell::toggle() const
{
    QStyleOptionViewItem option;
    option.initFrom(m_view);
    option.rect = m_view->visualRect(m_index);
    option.widget = m_view;
    option.index = m_index;
    QKeyEvent space(QEvent::KeyPress, Qt::Key_Space, Qt::NoModifier);
    if (QAbstractItemDelegate *delegate = m_view->itemDelegateForIndex(m_index))
        delegate->editorEvent(&space, m_view->model(), option, m_index);
}

} // namespace Accessible
