// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef COLUMNMENU_H
#define COLUMNMENU_H

#include <QMenu>

class ViewerTable;

//! A menu of the columns of a table: which ones are shown, how wide, and on which side of them
//! their texts stand. It also opens over the header, about the column there.
class ColumnMenu : public QMenu
{
    Q_OBJECT

public:
    //! About \a table, which must outlive the menu.
    ColumnMenu(ViewerTable *table, QWidget *parent);

private:
    void openAt(QPoint place);
    void fill(int column);
    void addColumn(int column);
    void addChoices();
    void addAlignments(int column);
    int shownColumns() const;
    QString nameOf(int column) const;

    ViewerTable *m_table; //!< not owned
    int m_column = -1;    //!< the one that the header was asked about, while it is open
};

#endif // COLUMNMENU_H
