// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef TABLEFILTER_H
#define TABLEFILTER_H

#include "abstractitemviewfind.h"
#include "itemviewfindtoolbar.h"

#include <QPersistentModelIndex>

#include <memory>
#include <optional>

class BytePattern;
class LineFilter;
class QLineEdit;
class QTableFastView;
class TextFileModel;

/*!
 * \brief The search engine of a table that puts a filter before the model only while
 * there is one to apply.
 *
 * A proxy before a model costs memory and time per row, and rows of a live feed would
 * pass through it for nothing.
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
    bool isFiltered() const { return m_filter != nullptr; }

    //! Shows rows with \a text, or all if it is empty, at the same current row. Lets
    //! events through while it looks at the rows; cancel() ends that.
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

private:
    void show(std::unique_ptr<LineFilter> filter);
    QModelIndex currentInSource() const;
    bool findFromTheEnd(const QString &text);
    bool findBetween(int from, int end, const QString &text, const BytePattern &pattern);
    bool acceptsRow(int row, const QString &text, bool forward);

    QTableFastView *m_table;               //!< searched; the parent
    QPointer<QAbstractItemModel> m_source; //!< not owned
    std::unique_ptr<LineFilter> m_filter;  //!< shown; null without one
    LineFilter *m_nextFilter = nullptr;    //!< looks at its rows
    int m_searches = 0;                    //!< begun or ended: a change ends the one before
    QPersistentModelIndex m_lastCurrent;   //!< of the source, kept while it is filtered out
};

//! The panel of a TableFilter: typing ends the making of a filter too.
class FindPanel : public ItemViewFindToolBar
{
    Q_OBJECT

public:
    //! A panel of \a find, which must outlive it.
    FindPanel(TableFilter *find, QWidget *parent);

    //! The text to look for.
    QLineEdit *field() const;

    using ItemViewFindToolBar::findNext;
    using ItemViewFindToolBar::findPrev;

public Q_SLOTS:
    bool findIncremental(const QString &text) override;
    bool findPrev(const QString &text) override;
    bool findNext(const QString &text) override;

Q_SIGNALS:
    //! A search or the making of a filter begins, or is over: \a isReady for another.
    void readyChanged(bool isReady);
    //! A row that shows the text is current now.
    void rowFound();

private:
    bool findRow(const QString &text, bool forward);

    TableFilter *m_find; //!< not owned
};

#endif // TABLEFILTER_H
