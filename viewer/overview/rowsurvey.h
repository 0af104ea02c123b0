// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef ROWSURVEY_H
#define ROWSURVEY_H

#include "files/loglevel.h"
#include "rowcells.h"
#include "rowranges.h"
#include "search/rowclock.h"
#include "search/rowjudge.h"
#include "timebins.h"

#include <QAbstractItemModel>
#include <QElapsedTimer>
#include <QPointer>
#include <QSet>
#include <QTimer>

#include <functional>
#include <optional>
#include <vector>

class QTableFastView;
class TableFilter;
class TextFileModel;

/*!
 * \brief Looks through all rows of a table, as it is filtered, between events: which ones have
 * what is looked for, which ones are errors and warnings, and when they were written.
 *
 * It begins with what is seen. New rows at the end are added; whatever else happens to the rows
 * lets it begin anew, so that a table whose rows come on top should not be surveyed.
 */
class RowSurvey : public QObject
{
    Q_OBJECT

public:
    //! Milliseconds that it works before it lets events through; a block of a file that is read
    //! may make it one or two more.
    static constexpr int slice = 10;

    //! Surveys \a table, which \a find filters, once anything is looked for or
    //! setLevelsWanted() or setTimesWanted() is called. Both must outlive it.
    RowSurvey(TableFilter *find, QTableFastView *table, QObject *parent);

    //! Looks for \a matcher in the logical \a columns, if it finds anything at all.
    void setSought(const TextMatcher &matcher, const QList<int> &columns);
    //! Sets whether \a user wants it to look for errors and warnings. It does while anybody does.
    void setLevelsWanted(const QObject *user, bool on);
    //! Sets whether it looks for times; off at first.
    void setTimesWanted(bool on);
    bool areLevelsWanted() const { return m_levels.isWanted; }

    //! Rows of the table.
    int rows() const { return m_model ? m_model->rowCount() : 0; }
    //! What is looked for is not nothing.
    bool isSeeking() const { return m_hits.isWanted; }
    //! Rows that have what is looked for, as far as they have been looked at.
    const RowCells &hits() const { return m_hitRows; }
    const RowCells &errors() const { return m_errorRows; }
    const RowCells &warnings() const { return m_warningRows; }
    //! Rows by what their clocks showed; those without a time belong to the row above.
    const TimeBins &times() const { return m_bins; }
    //! Whether times() are days and times; else they are times of a day.
    bool haveTimesDates() const { return m_haveDates; }
    bool areTimesComplete() const { return m_times.left.isEmpty(); }
    //! Whether all rows have been looked at for what is looked for.
    bool areHitsComplete() const { return m_hits.left.isEmpty(); }
    //! Whether all rows have been looked at for whatever is wanted.
    bool isComplete() const
    {
        return m_hits.left.isEmpty() && m_levels.left.isEmpty() && m_times.left.isEmpty();
    }

Q_SIGNALS:
    //! There are more or other results, or rows; at most ten times a second.
    void changed();

private:
    struct Pass
    {
        bool isWanted = false;
        RowRanges left;                 //!< rows
        int lastRow = -1;               //!< the row that was the last one when it was counted
        std::function<void()> takeBack; //!< counts that row no more; null if it was not counted
    };

    void followModel(QAbstractItemModel *model);
    void rowsCame(const QModelIndex &parent, int first, int last);
    void rowsChanged(const QModelIndex &first, const QModelIndex &last);
    void countAgain(Pass *pass, int row);
    void beginAnew();
    void begin(Pass *pass);
    void goOn();
    void work();
    void seek();
    void judgeLevel();
    void tellTime();
    void count(Pass *pass, int row, RowCells *cells);
    void noteLast(Pass *pass, int row, const std::function<void()> &takeBack);
    LogLevel levelOfRow(int row) const;
    int sourceRow(int row) const;
    const TextFileModel *lines() const;

    TableFilter *m_find;                  //!< not owned
    QTableFastView *m_table;              //!< not owned
    QPointer<QAbstractItemModel> m_model; //!< the table's
    TextMatcher m_sought;                 //!< see setSought()
    QList<int> m_columns;                 //!< looked at for m_sought
    std::optional<RowJudge> m_judge;      //!< of the rows behind the filter, for m_sought
    std::vector<int> m_found;             //!< kept for its memory
    Pass m_hits;
    Pass m_levels;
    Pass m_times;
    QSet<const QObject *> m_levelUsers; //!< see setLevelsWanted()
    RowCells m_hitRows;
    RowCells m_errorRows;
    RowCells m_warningRows;
    TimeBins m_bins;                 //!< see times()
    bool m_haveDates = false;        //!< see haveTimesDates()
    std::optional<RowClock> m_clock; //!< of the rows behind the filter, while times are told
    QTimer m_timer {this};           //!< for the next slice
    QTimer m_tellTimer {this};       //!< gathers changes
};

#endif // ROWSURVEY_H
