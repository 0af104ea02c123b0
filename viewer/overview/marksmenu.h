// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef MARKSMENU_H
#define MARKSMENU_H

#include "markedrows.h"

#include <QMenu>

class QTableFastView;
class TableFilter;

/*!
 * \brief What can be done with marks, and the marks themselves.
 *
 * Marks belong to rows of the model behind a filter. One whose row the filter hides leads to
 * the next row that is shown.
 */
class MarksMenu : public QMenu
{
    Q_OBJECT

public:
    //! Marks rows of \a table, which \a find filters. Both must outlive the menu.
    MarksMenu(TableFilter *find, QTableFastView *table, QWidget *parent);

    MarkedRows *marks() { return &m_marks; }
    //! Whether the row of the table \a row is marked.
    bool isMarked(int row) const;
    //! Marks the current row, or removes its mark; Ctrl+M.
    QAction *markAction() const { return m_markAction; }

Q_SIGNALS:
    //! Somebody wants to see \a row of the model behind the filter.
    void rowChosen(int row);
    //! Something to say to the user; empty if what was said is over.
    void said(const QString &text);

private:
    void createActions();
    void followSource();
    void markCurrent();
    void step(bool forward);
    void updateActions();
    void showList();

    TableFilter *m_find;     //!< not owned
    QTableFastView *m_table; //!< not owned
    MarkedRows m_marks;
    QAction *m_markAction = nullptr;   //!< Ctrl+M
    QAction *m_nextAction = nullptr;   //!< F2
    QAction *m_prevAction = nullptr;   //!< Shift+F2
    QAction *m_listAction = nullptr;   //!< all marks
    QAction *m_removeAction = nullptr; //!< all marks
};

#endif // MARKSMENU_H
