// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef GOTOTIME_H
#define GOTOTIME_H

#include "timesearch.h"

class QAction;
class QTableFastView;
class QWidget;
class TableFilter;

//! Asks for a time and finds the row where it was.
class GoToTime : public QObject
{
    Q_OBJECT

public:
    //! Finds rows of the model behind the filter \a find of \a table. Both must outlive it;
    //! \a window asks, and is its parent.
    GoToTime(TableFilter *find, QTableFastView *table, QWidget *window);

    //! Asks for a time; Ctrl+T.
    QAction *action() const { return m_action; }
    //! Finds the first row at the time that \a text says, or after it.
    void goTo(const QString &text);
    //! The same for a \a time.
    void goTo(const TimeStamp &time);
    //! The time of the current row, or the row above that has one, as goTo() takes it; empty
    //! without one.
    QString present() const;

Q_SIGNALS:
    //! \a row of the model behind the filter is the one.
    void rowChosen(int row);
    //! Something to say to the user; empty if what was said is over.
    void said(const QString &text);

private:
    void ask();
    void showFound(int row);

    TableFilter *m_find;     //!< not owned
    QTableFastView *m_table; //!< not owned
    QAction *m_action;
    TimeSearch m_search;
};

#endif // GOTOTIME_H
