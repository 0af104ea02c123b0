// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef TABLEWATCH_P_H
#define TABLEWATCH_P_H

#include <QAccessible>
#include <QItemSelection>
#include <QList>
#include <QObject>
#include <QPointer>

class QAbstractItemModel;
class QHeaderView;
class QItemSelectionModel;
class QTableFastView;

namespace Accessible {

class Table;

/*!
 * \brief Tells screen readers what happens in a table view, beside what QAbstractItemView tells:
 * rows and columns that come and go, and resets.
 *
 * It listens to the view itself, so that a view that nobody hears does nothing for it.
 */
class TableWatch : public QObject
{
    Q_OBJECT

public:
    //! Of \a view, which must live as long as this.
    explicit TableWatch(QTableFastView *view);

    //! Listens to the view and its present models and header, and no more to former ones.
    void start();
    //! Listens to nothing.
    void stop();

    //! The view gets the focus: its current cell has it.
    bool eventFilter(QObject *object, QEvent *event) override;

private Q_SLOTS:
    void tellFocus();

private:
    void connectHeader(QHeaderView *header);
    void connectModel(QAbstractItemModel *model);
    void connectSelection(QItemSelectionModel *selection);
    void currentChanged(const QModelIndex &current);
    void selectionChanged(const QItemSelection &selected, const QItemSelection &deselected);
    void dataChanged(const QModelIndex &topLeft, const QModelIndex &bottomRight,
                     const QList<int> &roles);
    void columnsChanged();
    void tellRange(const QModelIndex &topLeft, const QModelIndex &bottomRight);
    void tellCurrent(const QList<int> &roles);
    void tell(const QModelIndex &index, QAccessible::Event type);
    QModelIndex firstOf(const QItemSelection &selection) const;

    QTableFastView *m_view;
    QPointer<QAbstractItemModel> m_model;
    QPointer<QItemSelectionModel> m_selection;
    QPointer<QHeaderView> m_header;
};

} // namespace Accessible

#endif // TABLEWATCH_P_H
