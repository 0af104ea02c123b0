// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef ROWENGINE_H
#define ROWENGINE_H

#include <QList>
#include <QString>
#include <Qt>

class TextMatcher;

/*!
 * \brief What a model is that orders, filters and finds its rows where they come from.
 *
 * TableFilter leaves all of that to such a model, and puts nothing before it.
 */
class RowEngine
{
public:
    virtual ~RowEngine() = default;

    //! Orders rows by \a column, with −1 as they come.
    virtual void sortBy(int column, Qt::SortOrder order) = 0;
    //! What rows are ordered by, or −1, and how.
    //! @{
    virtual int sortColumn() const = 0;
    virtual Qt::SortOrder sortOrder() const = 0;
    //! @}

    //! Shows the rows that \a matcher finds in \a columns, all if it finds nothing.
    virtual void filterBy(const TextMatcher &matcher, const QList<int> &columns) = 0;
    //! Shows all rows, whatever they are filtered by.
    virtual void showAll() = 0;
    //! The text that rows are filtered by.
    virtual TextMatcher shownMatcher() const = 0;
    //! Whether rows are filtered by anything.
    virtual bool isFiltered() const = 0;
    //! What rows are filtered by and how many there are, for the user.
    virtual QString filterText() const = 0;

    //! The row that \a matcher finds in \a columns next behind \a row, or before it, from the
    //! other end on where there is none; −1 if there is none at all. \a row may be −1. Lets events
    //! through; another call, or cancel(), ends it.
    virtual int find(const TextMatcher &matcher, const QList<int> &columns, int row,
                     bool forward) = 0;
    //! Ends find().
    virtual void cancel() = 0;
};

#endif // ROWENGINE_H
