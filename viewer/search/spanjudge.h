// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef SPANJUDGE_H
#define SPANJUDGE_H

#include "rowclock.h"
#include "rowspan.h"

class QAbstractItemModel;
class TextFileModel;

/*!
 * \brief Tells which rows of a model lie in a span.
 *
 * Those of times it asks one by one, as they may be in any order; downwards is quickest. A row
 * without a time has that of the row above. A span of rows stays with its rows.
 */
class SpanJudge
{
public:
    //! Rows that all lie in the span, or none of them.
    struct Run
    {
        int first = 0;
        int end = 0;
        bool isIn = false;
    };

    explicit SpanJudge(const RowSpan &span)
        : m_span(span)
    {
    }

    const RowSpan &span() const { return m_span; }

    //! Looks at \a source from now on; again after it has begun anew.
    void setSource(const QAbstractItemModel *source);

    //! Rows from \a first on, at least one, all before \a end, which is higher. Gives up after
    //! some milliseconds: the next ones may be like them.
    Run runFrom(int first, int end);
    //! The end of the rows from \a row on whose time is that of the row above \a row.
    int endOfHeirs(int row) const;

    //! \a count rows have come before the one that was \a first.
    void rowsCame(int first, int count);
    //! \a count rows, the first of them \a first, have gone.
    void rowsWent(int first, int count);
    //! Rows from \a first on have changed.
    void rowsChanged(int first);

private:
    Run look(int first, int end);
    bool isIn(int row);

    RowSpan m_span;
    const QAbstractItemModel *m_source = nullptr; //!< not owned
    std::optional<RowClock> m_clock;              //!< of its rows, once they are asked for
    Run m_run;                                    //!< of the last answer, all that was seen
};

#endif // SPANJUDGE_H
