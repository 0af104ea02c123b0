// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef OVERVIEW_H
#define OVERVIEW_H

#include "rowsurvey.h"

class GoToTime;
class MarkedRows;
class OverviewStrip;
class QAction;
class QLabel;

//! The picture of all rows beside a table, and the number of those that have what is looked for.
class Overview : public QObject
{
    Q_OBJECT

public:
    //! Of \a table, which \a find filters; both, and \a marks, must outlive it. Belongs to the
    //! table's window, \a parent, which finds places for strip() and label().
    Overview(TableFilter *find, QTableFastView *table, const MarkedRows *marks, QWidget *parent);

    RowSurvey *survey() const { return m_survey; }
    OverviewStrip *strip() const { return m_strip; }
    //! Tells how many rows there are with what is looked for; hidden while that is nothing.
    QLabel *label() const { return m_label; }
    GoToTime *goToTime() const { return m_goToTime; }
    //! Shows or hides the strip, which is kept in the settings.
    QAction *action() const { return m_action; }

private:
    void updateLabel();

    RowSurvey *m_survey;
    GoToTime *m_goToTime;
    OverviewStrip *m_strip;
    QLabel *m_label;
    QAction *m_action;
};

#endif // OVERVIEW_H
