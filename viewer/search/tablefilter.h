// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef TABLEFILTER_H
#define TABLEFILTER_H

#include "abstractitemviewfind.h"
#include "rowspan.h"
#include "textmatcher.h"

#include <QPersistentModelIndex>
#include <QSet>

#include <memory>
#include <optional>

class BytePattern;
class LineFilter;
class QTableFastView;
class RowEngine;
class SortedRows;
class TextFileModel;

/*!
 * \brief The search engine of a table that puts a filter before the model only while
 * there is one to apply.
 *
 * A proxy before a model costs memory and time per row, and rows of a live feed would
 * pass through it for nothing.
 *
 * Search and filter go by the same rules: those that are set here, and caseSensitivity().
 * Both look at texts as they are shown, in the columns on screen but for those that are
 * left out; numbers of lines are no text.
 */
class TableFilter : public AbstractItemViewFind
{
    Q_OBJECT

public:
    //! Searches \a table, which is its parent and has no model yet.
    explicit TableFilter(QTableFastView *table);
    ~TableFilter() override;

    //! Shows all rows of \a model, which stays the caller's.
    void setSource(QAbstractItemModel *model);
    //! The model behind the filter, if there is one.
    QAbstractItemModel *source() const { return m_source; }
    bool isFiltered() const;
    //! source(), if it orders, filters and finds its rows itself; else null.
    RowEngine *engine() const { return m_source ? m_engine : nullptr; }
    //! Whether the rows of the table are those of source(), in its order.
    bool showsSource() const { return !m_filter && !m_sorted; }
    //! Shows rows in the order of \a column, or with −1 in that of source(), at the same current
    //! row. They are sorted while events run.
    void sortBy(int column, Qt::SortOrder order);
    //! What sorts the rows of the table; null if nothing does.
    const SortedRows *sortedRows() const { return m_sorted.get(); }
    //! What the rows of the table are ordered by, or −1, and how.
    //! @{
    int sortColumn() const;
    Qt::SortOrder sortOrder() const;
    //! @}
    //! Rows of the table.
    int shownRows() const;
    //! The cell of source() behind one of the table.
    QModelIndex toSource(const QModelIndex &index) const;
    //! The row of the table that shows \a row of source(), or the first shown one behind it, else
    //! the last one; -1 without rows.
    int rowNear(int row) const;
    //! Whether rows are being looked at for a filter.
    bool isFiltering() const { return m_nextFilter != nullptr; }
    //! Whether rows are filtered by a text, or are being looked at for one.
    //! @{
    bool isTextFiltered() const;
    bool isTextFiltering() const;
    //! @}
    //! The span that the rows are filtered to, or are being looked at for.
    std::optional<RowSpan> span() const;
    //! The span of the rows that are shown; nothing if they may be anywhere.
    std::optional<RowSpan> shownSpan() const;
    //! Filters rows to \a span, of source(), or no more to one; beside that by the text that there
    //! is. Goes on as dofilter() does.
    void setSpan(const std::optional<RowSpan> &span);
    //! Shows all rows, whatever they were filtered by.
    void showAll();
    //! What the rows that are shown have; finds nothing without a filter by a text.
    TextMatcher shownMatcher() const;
    //! Whether the rows that are shown are those with \a text, by the present rules.
    bool isShown(const QString &text) const;
    //! What \a text is looked for as.
    const TextMatcher &matcherFor(const QString &text) const;

    //! Sets whether words are looked for as a whole.
    void setWholeWords(bool on) { m_rules.wholeWords = on; }
    //! Sets whether texts are regular expressions.
    void setExpressions(bool on) { m_rules.isExpression = on; }
    //! Sets whether a logical column is looked at.
    void setLookedAt(int column, bool on);
    bool isLookedAt(int column) const { return !m_leftOut.contains(column); }
    //! Columns on screen that have text, those that are left out among them.
    QList<int> textColumns() const;
    //! Those of textColumns() that are looked at.
    QList<int> columns() const;

    //! Whether \a data has \a text by the rules, and \a column is looked at.
    bool acceptsData(const QVariant &data, const QString &text, int column) const override;

    //! Shows rows with \a text, or with any if it is empty, at the same current row; those of
    //! span() only, if there is one. Lets events through while it looks at the rows; cancel() ends
    //! that.
    void dofilter(const QString &text) override;
    //! findInRows() by looking through the bytes of a file, which is some ten times as
    //! fast. Nothing if the table does not show one as it is.
    std::optional<bool> findInFile(const QString &text, bool forward);
    //! findNext(), and then looks at the current row: it may be current because it is
    //! the newest. Or findPrev(), if not \a forward. Without a current row it begins with
    //! the first row, or with the last one.
    bool findInRows(const QString &text, bool forward);

    //! Ends a search or the making of a filter. A filter that is shown stays.
    void cancel();

Q_SIGNALS:
    //! The table is about to have another model.
    void modelAboutToBeShown();
    //! The table has another model now: source(), or a filter before it.
    void modelShown(QAbstractItemModel *model);
    //! \a part, from 0 to 1, of the rows has been looked at for a filter; 1 at its end,
    //! whatever that is.
    void filtering(double part);
    //! \a part, from 0 to 1, of the rows has been sorted; 1 if nothing sorts them.
    void sorting(double part);

private:
    void filterBy(const TextMatcher &matcher, const std::optional<RowSpan> &span);
    void show(LineFilter *filter);
    QAbstractItemModel *showSorted(QAbstractItemModel *model);
    QModelIndex fromSource(const QModelIndex &index) const;
    QModelIndex currentInSource() const;
    bool findByEngine(const QString &text, bool forward);
    bool findFromTheEnd(const QString &text);
    bool findBetween(int from, int end, const QString &text, const BytePattern &pattern);
    bool acceptsRow(int row, const QString &text, bool forward);

    QTableFastView *m_table;               //!< searched; the parent
    QPointer<QAbstractItemModel> m_source; //!< not owned
    RowEngine *m_engine = nullptr;         //!< m_source as one, while that is there; see engine()
    std::unique_ptr<LineFilter> m_filter;  //!< shown; null without one
    std::unique_ptr<SortedRows> m_sorted;  //!< before the others; null without a column
    int m_sortColumn = -1;                 //!< see sortBy()
    Qt::SortOrder m_sortOrder = Qt::AscendingOrder;
    LineFilter *m_nextFilter = nullptr;  //!< looks at its rows
    TextRules m_rules;                   //!< but for the case
    QSet<int> m_leftOut;                 //!< columns that are not looked at
    mutable TextMatcher m_matcher;       //!< the one asked for last
    int m_searches = 0;                  //!< begun or ended: a change ends the one before
    QPersistentModelIndex m_lastCurrent; //!< of the source, kept while it is filtered out
};

#endif // TABLEFILTER_H
