// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef HISTOGRAMCOLUMNS_H
#define HISTOGRAMCOLUMNS_H

#include "timebins.h"

#include <QCoreApplication>
#include <QList>
#include <QString>

class RowSurvey;

/*!
 * \brief The columns of a histogram: rows over their times, or over the file where they have none.
 *
 * Places are milliseconds since 1970, or of the day; or rows of the table.
 */
class HistogramColumns
{
    Q_DECLARE_TR_FUNCTIONS(HistogramColumns)

public:
    //! A place on the axis, and what is written there.
    struct Label
    {
        qint64 place = 0;
        QString text;
    };

    HistogramColumns() = default;
    //! Those of \a survey, at most \a most, at least 2.
    HistogramColumns(const RowSurvey &survey, int most);

    bool areTimes() const { return m_areTimes; }
    bool haveDates() const { return m_haveDates; }
    int count() const { return int(m_columns.size()); }
    const TimeBins::Counts &at(int column) const { return m_columns[column]; }
    //! The place where \a column begins; that of count() is the end.
    qint64 begin(int column) const { return m_begin + column * m_width; }
    //! Rows of the highest column.
    int highest() const;
    //! At most \a most labels, 1 at least, at round places in the columns.
    QList<Label> labels(int most) const;
    //! What the columns from \a first to \a last have, in words.
    QString description(int first, int last) const;

private:
    void takeRows(const RowSurvey &survey, int most);
    QString text(qint64 place, qint64 step) const;

    QList<TimeBins::Counts> m_columns;
    qint64 m_begin = 0;       //!< the place of the first column
    qint64 m_width = 1;       //!< of a column, as a difference of places
    bool m_areTimes = false;  //!< else rows
    bool m_haveDates = false; //!< the times have dates
};

#endif // HISTOGRAMCOLUMNS_H
