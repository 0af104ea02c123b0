// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef TABLE_P_H
#define TABLE_P_H

#include "cellstore_p.h"
#include "tablewatch_p.h"

#include <QAccessible>
#include <QAccessibleWidget>

class QTableFastView;

namespace Accessible {

/*!
 * \brief A table view as screen readers see it: a table of cells below its columns' titles.
 *
 * Rows are those of the model, columns those shown, in the order on screen. Cells are made when
 * they are asked for, so rows cost nothing. The children are the titles, if the header is not
 * hidden, and the cells, row by row: as many as an int counts. cellAt() reaches all rows.
 */
class Table final : public QAccessibleWidget,
                    public QAccessibleTableInterface,
                    private QAccessible::ActivationObserver
#if QT_VERSION >= QT_VERSION_CHECK(6, 5, 0)
    ,
                    public QAccessibleSelectionInterface
#endif
{
public:
    explicit Table(QTableFastView *view);

    //! The interface of \a view, made if need be; null without a view, and if somebody else
    //! has made another one.
    static Table *of(const QTableFastView *view);

    //! The interface of a cell; that of the first one shown in its row if its column is hidden.
    //! Null for an index that is none of the view's.
    QAccessibleInterface *cell(const QModelIndex &index) const;
    //! The interface of a cell that was asked for, or null.
    QAccessibleInterface *knownCell(const QModelIndex &index) const;
    //! The interface of a title; null out of range.
    QAccessibleInterface *headerCell(int column) const;
    //! Listens to the view's present models.
    void watch() { m_watch.start(); }

    QAccessible::Role role() const override { return QAccessible::Table; }
    QAccessibleInterface *focusChild() const override;
    QAccessibleInterface *childAt(int x, int y) const override;
    QAccessibleInterface *child(int index) const override;
    int childCount() const override;
    int indexOfChild(const QAccessibleInterface *child) const override;
    void *interface_cast(QAccessible::InterfaceType type) override;

    QAccessibleInterface *caption() const override { return nullptr; }
    QAccessibleInterface *summary() const override { return nullptr; }
    QAccessibleInterface *cellAt(int row, int column) const override;
    int selectedCellCount() const override;
    QList<QAccessibleInterface *> selectedCells() const override;
    QString columnDescription(int column) const override;
    QString rowDescription(int row) const override;
    int selectedColumnCount() const override;
    int selectedRowCount() const override;
    int columnCount() const override;
    int rowCount() const override;
    QList<int> selectedColumns() const override;
    QList<int> selectedRows() const override;
    bool isColumnSelected(int column) const override;
    bool isRowSelected(int row) const override;
    bool selectRow(int row) override;
    bool selectColumn(int column) override;
    bool unselectRow(int row) override;
    bool unselectColumn(int column) override;
    void modelChange(QAccessibleTableModelChangeEvent *event) override;

#if QT_VERSION >= QT_VERSION_CHECK(6, 5, 0)
    int selectedItemCount() const override
    {
        return selectedCellCount();
    }
    QList<QAccessibleInterface *> selectedItems() const override
    {
        return selectedCells();
    }
    bool isSelected(QAccessibleInterface *item) const override;
    bool select(QAccessibleInterface *item) override;
    bool unselect(QAccessibleInterface *item) override;
    bool selectAll() override;
    bool clear() override;
#endif

private:
    ~Table() override;

    //! Qt makes interfaces of all widgets shown, also where nobody listens: what costs anything
    //! begins with the first one who does, and ends with the last.
    void accessibilityActiveChanged(bool active) override;

    QTableFastView *view() const;
    bool hasTitles() const;

    mutable CellStore m_cells;
    TableWatch m_watch;
};

} // namespace Accessible

#endif // TABLE_P_H
