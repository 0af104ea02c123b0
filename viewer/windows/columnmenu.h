// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef COLUMNMENU_H
#define COLUMNMENU_H

#include <QMenu>

class ColumnSort;
class ViewerTable;

//! A menu of the columns of a table: which ones are shown, how wide, on which side of them their
//! texts stand, and which one rows are sorted by. It also opens over the header, about the column
//! there.
class ColumnMenu : public QMenu
{
    Q_OBJECT

public:
    //! About \a table, which \a sort sorts. Both must outlive the menu.
    ColumnMenu(ViewerTable *table, ColumnSort *sort, QWidget *parent);

private:
    void openAt(QPoint place);
    void fill(int column);
    void addColumn(int column);
    void addOptions();
    void addChoices();
    void addAlignments(int column);
    int shownColumns() const;
    QString nameOf(int column) const;

    ViewerTable *m_table; //!< not owned
    ColumnSort *m_sort;   //!< not owned
    int m_column = -1;    //!< the one that the header was asked about, while it is open
};

#endif // COLUMNMENU_H
