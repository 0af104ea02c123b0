// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef LINEFILTER_H
#define LINEFILTER_H

#include "basics/flatproxy.h"
#include "rowjudge.h"
#include "rownumbers.h"

#include <QTimer>

/*!
 * \brief A filter that looks at its rows before it takes them over, letting events
 * through.
 *
 * Of its rows, those of a flat model in their order, it keeps the numbers only. Where millions
 * of rows come or change at once, it goes through them while events run; those that came are
 * hidden until then, those that changed remain what they were. It does not sort.
 */
class LineFilter : public FlatProxy
{
    Q_OBJECT

public:
    //! Rows judged at once when they come or change; more of them are judged piece by piece.
    static constexpr int rowsAtOnce = 32768;

    //! Shows rows with a match of \a matcher in one of \a columns, of no model yet. They
    //! count until the model has other columns, then all do that have text. With a \a span it
    //! shows those of its rows, whatever they have if \a matcher is nothing.
    LineFilter(const QList<int> &columns, const TextMatcher &matcher,
               const std::optional<RowSpan> &span = {});

    const TextMatcher &matcher() const { return m_judge.matcher(); }
    //! One of rows is where these are now.
    std::optional<RowSpan> rowSpan() const { return m_judge.span(); }

    //! Judges the rows of \a source and makes it the source model. Returns false
    //! without doing that if cancel() was called or \a source was destroyed. Called once,
    //! instead of setSourceModel().
    bool takeOver(QAbstractItemModel *source);
    //! Makes takeOver(), from whose events this is called, give up.
    void cancel() { m_isCancelled = true; }
    //! Rows that are shown of those before \a row of the source.
    int placeOf(int row) const { return m_shown.placeOf(row); }
    //! Bytes that the numbers of the rows occupy.
    std::size_t memory() const { return m_shown.memory(); }

Q_SIGNALS:
    //! takeOver() has looked at \a part, from 0 to 1, of the rows.
    void progressed(double part);

protected:
    int shownRows() const override { return m_shown.size(); }
    int sourceRow(int row) const override { return m_shown.at(row); }
    int rowOf(int sourceRow) const override;

private:
    //! Rows of the source from first to the one before end.
    struct Range
    {
        int first = 0;
        int end = 0;

        bool isEmpty() const { return first >= end; }
    };

    bool isShown() const { return sourceModel() != nullptr; }
    bool tells() const { return isShown() && !m_isQuiet; }
    void followRows();
    void followLayout();
    void followColumns();
    bool judgeAll();
    void judgeDue();
    void judgeOnTime();
    void require(Range rows);
    int endOfHeirs(int row);
    void forgetRows();
    void beginAnew(int rowsNow);
    void show(Range rows, const std::vector<int> &found);
    void hideOthers(Range rows, const std::vector<int> &found);
    void insertShown(int place, std::span<const int> rows);
    void removeShown(int place, int count);
    void rowsCame(int first, int last);
    void rowsAboutToGo(int first, int last);
    void rowsWent(int first, int last);
    void rowsMoved(int first, int last, int to);
    void rowsChanged(const QModelIndex &first, const QModelIndex &last, const QList<int> &roles);
    void columnsChanged(void (LineFilter::*end)());
    void headerChanged(Qt::Orientation orientation, int first, int last);
    void sourceLayoutAboutToChange();
    void sourceLayoutChanged();

    QAbstractItemModel *m_followed = nullptr; //!< the source, before it is the source model, too
    RowJudge m_judge;                         //!< of its rows
    RowNumbers m_shown;                       //!< rows of the source
    Range m_due;                              //!< to be judged, some of them perhaps again
    QTimer m_dueTimer;                        //!< for them, once the source is taken over
    std::vector<int> m_found;                 //!< kept for its memory
    bool m_isQuiet = false;                   //!< rows come and go without signals
    bool m_isCancelled = false;               //!< see cancel()
};

#endif // LINEFILTER_H
