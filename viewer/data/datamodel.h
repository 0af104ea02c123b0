// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef DATAMODEL_H
#define DATAMODEL_H

#include "basics/rowloader.h"
#include "datacell.h"
#include "datareads.h"
#include "datathread.h"
#include "rowpages.h"

#include <QAbstractTableModel>
#include <QElapsedTimer>
#include <QPointer>
#include <QTimer>

#include <functional>
#include <memory>

class DataCopy;

/*!
 * \brief A table of a database, of any size, that is only read.
 *
 * It has the rows around those that are looked at, and asks for others when they are: setVisible()
 * tells it. Its number of rows is an estimate until they are counted; where it was wrong, rows come
 * or go where nothing is known, and those on screen stay. New, changed and deleted rows are seen
 * within seconds.
 *
 * A table without a key is read once from its first row to its last into a temporary file, which is
 * shown.
 */
class DataModel : public QAbstractTableModel, public RowLoader, private RowPages::Listener
{
    Q_OBJECT

public:
    //! What it does.
    enum class State {
        Opening,
        Ready,
        Waiting, //!< to try again: the connection was lost
        Failed   //!< there is nothing to show
    };

    explicit DataModel(QObject *parent = nullptr);
    ~DataModel() override;

    //! Connects to \a source in place of what was shown.
    void open(const DataSource &source);
    State state() const { return m_state; }
    //! What is wrong; none while all is well.
    const DataProblem &problem() const { return m_problem; }
    //! What was opened, with the table that was chosen.
    const DataSource &source() const { return m_source; }
    const DataTable &table() const { return m_query.table(); }
    //! The tables and views beside it.
    QStringList tables() const { return m_tables; }
    //! Whether rowCount() was counted, and not estimated.
    bool isCounted() const { return m_isCounted; }
    //! Whether it shows a temporary copy, as the table has no key, and whether that is still made.
    //! @{
    bool isCopy() const { return m_copy != nullptr; }
    bool isCopying() const;
    //! @}
    //! Bytes that its rows take, about.
    qint64 memory() const;
    //! Queries for rows so far.
    int queries() const { return m_queries; }
    //! Nothing is being read or counted, and all rows that are looked at are there.
    bool isIdle() const;

    //! The rows from \a first to \a last are on the screen.
    void setVisible(int first, int last);
    bool load(int row) override;
    bool isLoaded(int row) const { return m_pages.row(row) != nullptr; }
    //! What a cell has; NULL if its row is not there.
    DataCell cell(int row, int column) const;

    //! How rows are ordered.
    const DataOrder &order() const { return m_order; }
    void setOrder(const DataOrder &order);
    //! Which rows are shown. One that the engine refuses is told by filterRefused(), and the former
    //! one is back.
    const DataFilter &filter() const { return m_filter; }
    void setFilter(const DataFilter &filter);
    //! A query with a WHERE of the user's is given up after so many milliseconds; 30 s at first.
    void setTimeLimit(int milliseconds) { m_timeLimit = milliseconds; }

    //! Looks for changes, and counts rows, soon.
    void refresh();
    //! The row that has \a text next behind \a row, or before it; \a found gets it, or −1.
    void find(const DataText &text, int row, bool forward, const std::function<void(int)> &found);
    //! Adds up the numbers in \a column; summed() comes later.
    void sum(int column);
    //! Ends find() and sum().
    void cancel();
    //! Looks for changes each \a milliseconds; 1000 at first. While rows come at the end, it looks
    //! as often as there are frames, if a look takes a quarter of that time at most.
    void setPollTime(int milliseconds);
    //! The milliseconds from one look to the next.
    int pollTime() const { return m_pollTimer.interval(); }

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation,
                        int role = Qt::DisplayRole) const override;

Q_SIGNALS:
    //! state(), problem(), isCounted() or memory() may be others.
    void statusChanged();
    //! There is another table: other columns.
    void tableOpened();
    //! A password is needed; open() goes on with one.
    void passwordNeeded();
    //! The engine refuses what rows were to be filtered by.
    void filterRefused(const QString &reason);
    //! The numbers in a column were added up.
    void summed(const DataReads::Sums &sums);

private:
    void aboutToInsert(int first, int last) override;
    void inserted() override;
    void aboutToRemove(int first, int last) override;
    void removed() override;
    void changed(int first, int last) override;

    void connectNow();
    void takeOpened(const DataReads::Opened &opened);
    void beginCopy(const DataTable &table);
    void beginQuery();
    void pump();
    std::optional<RowPages::Fetch> nextFetch();
    void read(const RowPages::Fetch &fetch);
    bool readNow(const RowPages::Fetch &fetch);
    void takePage(const RowPages::Fetch &fetch, const DataReads::Page &page, int query);
    void takeProblem(const DataProblem &problem);
    void lose(const DataProblem &problem);
    void refuse(const DataProblem &problem);
    void showNothing();
    void poll();
    void pollAfter(bool haveRowsCome);
    void takeVersion(const QVariant &version);
    void surveySoon();
    void survey();
    void takeSurvey(const DataReads::Survey &survey, int query);
    int surveyStep() const;
    RowKey visibleKey() const;
    bool canLookFor(const DataText &text);
    void beginAsking();
    bool isEndedInVain(const DataProblem &problem, int asked) const;
    void addUp(int column);
    void lookFor(const DataText &text, int row, bool forward,
                 const std::function<void(int)> &found);
    int rowOf(const DataReads::Found &found, int row, const RowKey &from, bool forward);
    DataSource readSource() const;

    DataSource m_source;
    QStringList m_tables;
    State m_state = State::Opening;
    DataProblem m_problem;
    DataOrder m_order;
    DataFilter m_filter;
    DataFilter m_formerFilter; //!< that rows came of; back if the engine refuses m_filter
    DataQuery m_query;         //!< of table, order and filter
    int m_number = 0;          //!< of m_query: answers to others are too late
    RowPages m_pages {this};
    int m_first = 0; //!< see setVisible()
    int m_last = 60;
    bool m_isReading = false;
    RowPages::Fetch m_reading; //!< while that is true
    bool m_isSurveyed = false; //!< there are all anchors that can be
    bool m_isSurveying = false;
    bool m_isSurveyDue = false;
    bool m_isAgainDue = false;  //!< rows on screen are to be read again
    bool m_isBeyondDue = false; //!< so are those that have come at the end
    bool m_isPolling = false;
    bool m_isCounted = false;
    bool m_isAsked = false;   //!< for what sum() or find() wants
    bool m_isGivenUp = false; //!< by cancel()
    int m_asked = 0;          //!< such wants so far
    int m_queries = 0;
    int m_attempts = 0;      //!< to connect, that failed
    int m_timeLimit = 30000; //!< ms
    qint64 m_surveyTime = 0; //!< ms that the last one took
    QVariant m_version;
    QElapsedTimer m_sinceSurvey;
    int m_pollTime = 1000;       //!< ms while nothing comes
    bool m_isLooking = false;    //!< for changes
    bool m_haveRowsCome = false; //!< at the end
    QElapsedTimer m_sincePoll;
    QTimer m_pollTimer {this};
    QTimer m_retryTimer {this};
    QTimer m_limitTimer {this};
    QTimer m_surveyTimer {this};
    std::unique_ptr<DataCopy> m_copy; //!< of a table without a key
    // They go first: what they answer comes here.
    DataThread m_counter; //!< surveys, sums, searches
    DataThread m_reader;  //!< pages
};

#endif // DATAMODEL_H
