// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef OVERVIEW_H
#define OVERVIEW_H

#include "rowsurvey.h"

class GoToTime;
class Histogram;
class MarkedRows;
class OverviewStrip;
class QAction;
class QLabel;

//! Pictures of all rows beside and above a table, and the number of those that have what is looked
//! for.
class Overview : public QObject
{
    Q_OBJECT

public:
    //! Of \a table, which \a find filters; both, and \a marks, must outlive it. Belongs to the
    //! table's window, \a parent, which finds places for strip(), histogram() and label().
    Overview(TableFilter *find, QTableFastView *table, const MarkedRows *marks, QWidget *parent);

    RowSurvey *survey() const { return m_survey; }
    OverviewStrip *strip() const { return m_strip; }
    Histogram *histogram() const { return m_histogram; }
    //! Tells how many rows there are with what is looked for; hidden while that is nothing.
    QLabel *label() const { return m_label; }
    GoToTime *goToTime() const { return m_goToTime; }
    //! Show or hide strip and histogram, which is kept in the settings.
    //! @{
    QAction *stripAction() const { return m_stripAction; }
    QAction *histogramAction() const { return m_histogramAction; }
    //! @}

Q_SIGNALS:
    //! Somebody wants to see \a row of the model behind the filter.
    void rowChosen(int row);

private:
    QAction *createSwitch(const QString &text, const QString &key, bool isOn, QWidget *widget);
    void updateLabel();
    void goToShownRow(int row);
    void filterSpan(RowSpan span);

    RowSurvey *m_survey;
    GoToTime *m_goToTime;
    OverviewStrip *m_strip;
    Histogram *m_histogram;
    QLabel *m_label;
    QAction *m_stripAction;
    QAction *m_histogramAction;
    TableFilter *m_find;     //!< not owned
    QTableFastView *m_table; //!< not owned
};

#endif // OVERVIEW_H
