// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef TIMESEARCH_H
#define TIMESEARCH_H

#include "files/timestamp.h"

#include <QAbstractItemModel>
#include <QPointer>
#include <QTimer>

class RowTimes;

/*!
 * \brief Finds the first row of a model at some time, or after it.
 *
 * Where a sample of rows is in order it halves the rows until one is left, which takes no time;
 * else it goes through all of them, between events. Rows without a time belong to that before.
 */
class TimeSearch : public QObject
{
    Q_OBJECT

public:
    //! Milliseconds that it works before it lets events through.
    static constexpr int slice = 10;

    explicit TimeSearch(QObject *parent = nullptr);

    //! Looks for \a time in \a model, which stays the caller's, and emits found(), at once or
    //! later. One without a date is taken for one of the day of \a row, or of the first row with a
    //! time. Ends the search before.
    void find(QAbstractItemModel *model, const TimeStamp &time, int row);
    //! Ends a search without a result; another model, or one that begins anew, does that too.
    void cancel();
    bool isSearching() const { return m_model != nullptr; }

Q_SIGNALS:
    //! \a row is the first one; −1 if there is none.
    void found(int row);

private:
    static bool isOrdered(const RowTimes &times, int rows);
    bool prepare(const RowTimes &times, int row);
    bool isReached(const TimeStamp &time) const;
    bool halve(const RowTimes &times);
    void goThrough();
    void end(int row);

    QPointer<QAbstractItemModel> m_model; //!< searched; null if there is no search
    TimeStamp m_time;                     //!< sought
    bool m_hasZone = false;               //!< m_time is one of some zone
    int m_next = 0;                       //!< the row to be looked at next
    QTimer m_timer {this};                //!< for the next slice
};

#endif // TIMESEARCH_H
