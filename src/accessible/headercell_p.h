// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef HEADERCELL_P_H
#define HEADERCELL_P_H

#include <QAccessible>
#include <QPointer>

class QHeaderView;
class QTableFastView;

namespace Accessible {

//! A column's title, as screen readers see it. Where a click sorts it can be pressed.
class HeaderCell final : public QAccessibleInterface, public QAccessibleActionInterface
{
public:
    //! The title of \a column (logical index) of \a view.
    HeaderCell(QTableFastView *view, int column);

    //! The logical index of its column.
    int column() const { return m_column; }

    //! As long as there is the column and it is not hidden.
    bool isValid() const override;
    QObject *object() const override { return nullptr; }
    QWindow *window() const override;
    QAccessibleInterface *parent() const override;
    QAccessibleInterface *child(int index) const override;
    QAccessibleInterface *childAt(int x, int y) const override;
    int childCount() const override { return 0; }
    int indexOfChild(const QAccessibleInterface *child) const override;

    QString text(QAccessible::Text text) const override;
    //! Does nothing.
    void setText(QAccessible::Text kind, const QString &text) override;
    QRect rect() const override;
    QAccessible::Role role() const override { return QAccessible::ColumnHeader; }
    QAccessible::State state() const override;
    void *interface_cast(QAccessible::InterfaceType type) override;

    QStringList actionNames() const override;
    void doAction(const QString &name) override;
    QStringList keyBindingsForAction(const QString &name) const override;

private:
    QHeaderView *header() const;

    QPointer<QTableFastView> m_view;
    int m_column;
};

} // namespace Accessible

#endif // HEADERCELL_P_H
