// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef COLUMNSORT_H
#define COLUMNSORT_H

#include <QObject>

class QLabel;
class QMenu;
class TableFilter;
class ViewerTable;

/*!
 * \brief Lets the user sort a table by a column.
 *
 * A click on a header sorts upwards, the next one downwards, the third one not at all. What it
 * is sorted by stands in the header, and in a label for the status bar.
 */
class ColumnSort : public QObject
{
    Q_OBJECT

public:
    //! Sorts \a table, which is the parent, by \a find.
    ColumnSort(TableFilter *find, ViewerTable *table);

    //! Adds what sorts by \a column to \a menu.
    void addActions(QMenu *menu, int column);
    //! Hidden while nothing is sorted. The caller's from now on.
    QLabel *label() const { return m_label; }
    //! The column that is sorted by, or −1, and how.
    //! @{
    int column() const;
    Qt::SortOrder order() const;
    //! @}
    //! Shows in the header what is sorted by. Call it where the header was restored.
    void showInHeader();
    //! Sorts by \a column, with −1 not at all.
    void sortBy(int column, Qt::SortOrder order);
    //! Sorts no more by a column that is not there.
    void leaveLostColumn();

Q_SIGNALS:
    //! The table is to be sorted, or not any more.
    void sorted(bool on);

private:
    void headerClicked(int column);
    void tellProgress(double part);
    void tellEngine();
    void showFirst();
    QString nameOf(int column) const;

    TableFilter *m_find;  //!< not owned
    ViewerTable *m_table; //!< the parent
    QLabel *m_label;
    bool m_isAwaited = false; //!< rows are not in the order yet that was asked for
};

#endif // COLUMNSORT_H
