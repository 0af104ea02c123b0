// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef CELL_P_H
#define CELL_P_H

#include <QAccessible>
#include <QPersistentModelIndex>
#include <QPointer>

class QTableFastView;

namespace Accessible {

/*!
 * \brief A cell of a table view, as screen readers see it.
 *
 * It follows its row and column; once one of them is gone it is not valid and tells nothing.
 */
class Cell final : public QAccessibleInterface,
                   public QAccessibleTableCellInterface,
                   public QAccessibleActionInterface
{
public:
    //! The cell \a index of \a view.
    Cell(QTableFastView *view, const QPersistentModelIndex &index);

    //! The cell.
    QModelIndex index() const { return m_index; }

    bool isValid() const override;
    QObject *object() const override { return nullptr; }
    QWindow *window() const override;
    QAccessibleInterface *parent() const override;
    QAccessibleInterface *child(int index) const override;
    QAccessibleInterface *childAt(int x, int y) const override;
    int childCount() const override { return 0; }
    int indexOfChild(const QAccessibleInterface *child) const override;

    QString text(QAccessible::Text text) const override;
    //! Edits the cell, if the user may: \a text becomes its value.
    void setText(QAccessible::Text kind, const QString &text) override;
    QRect rect() const override;
    QAccessible::Role role() const override { return QAccessible::Cell; }
    QAccessible::State state() const override;
    void *interface_cast(QAccessible::InterfaceType type) override;

    bool isSelected() const override;
    QList<QAccessibleInterface *> columnHeaderCells() const override;
    QList<QAccessibleInterface *> rowHeaderCells() const override { return {}; }
    int columnIndex() const override;
    int rowIndex() const override { return m_index.row(); }
    int columnExtent() const override { return 1; }
    int rowExtent() const override { return 1; }
    QAccessibleInterface *table() const override { return parent(); }

    QStringList actionNames() const override;
    QString localizedActionName(const QString &name) const override;
    void doAction(const QString &name) override;
    QStringList keyBindingsForAction(const QString &name) const override;

private:
    bool isOnScreen() const;
    bool isEnabled() const;
    bool isEditable() const;
    bool isCheckable() const;
    void fillCheckState(QAccessible::State *state) const;
    void fillSelectionState(QAccessible::State *state) const;
    void focus() const;
    void edit() const;
    void toggle() const;

    QPointer<QTableFastView> m_view;
    QPersistentModelIndex m_index;
};

} // namespace Accessible

#endif // CELL_P_H
