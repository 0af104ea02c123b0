// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef ABSTRACTITEMVIEWFIND_H
#define ABSTRACTITEMVIEWFIND_H

#include "vantixglobal.h"

#include <QAbstractItemView>
#include <QElapsedTimer>
#include <QHeaderView>
#include <QList>
#include <QMetaType>
#include <QModelIndex>
#include <QObject>
#include <QPointer>
#include <QString>

#include <optional>

class ItemViewSearch;

/*!
 * \brief Finds rows of any item view by the text that they show, and filters them.
 *
 * A search walks the rows from the current one, the branches of a tree included,
 * makes the first cell that shows the text current and selects its row; the view
 * scrolls there as it does for every new current cell. Upper and lower case are the
 * same, unless caseSensitivity() says otherwise. Columns are those that the header
 * shows, in its order.
 *
 * A search runs in the caller's thread and lets events through every 40 ms: whatever
 * they do is allowed. Rows may come, go and move under it. stop(), another search,
 * another model, and the end of the view, the header, the model or the engine end it.
 *
 * Rows that a model fetches later (QAbstractItemModel::canFetchMore()) are not asked
 * for; a branch that has none of its rows yet is where a walk ends.
 *
 * Without a view, a model or a header nothing is found and nothing is filtered.
 * GUI thread only.
 *
 * \since 0.2
 */
class VANTIX_EXPORT AbstractItemViewFind : public QObject
{
    Q_OBJECT
    Q_PROPERTY(Qt::CaseSensitivity caseSensitivity READ caseSensitivity WRITE setCaseSensitivity)

public:
    /*!
     * \brief A place in a model, walking from a row to its children, then to its next
     * sibling.
     *
     * Forward it arrives in the first column of the engine's columnList(), backward in
     * the last; children of any other column are not visited. An invalid index stands
     * before the first row and behind the last one. Model and engine must outlive it.
     */
    class VANTIX_EXPORT Iterator
    {
    public:
        //! At the end of nothing.
        Iterator() = default;
        //! Before the first row of \a model, with the columns of \a find.
        Iterator(const QAbstractItemModel *model, AbstractItemViewFind *find);
        //! At \a index, with the columns of \a find.
        Iterator(const QModelIndex &index, AbstractItemViewFind *find);

        //! The index it is at; invalid before the first row and behind the last one.
        QModelIndex operator*() const { return m_index; }
        //! To the next row. The end stays the end, but before the first row that is
        //! where a model with rows begins.
        Iterator &operator++();
        //! To the row before, or to an invalid index from the first one.
        Iterator &operator--();

    private:
        QModelIndex m_index;                         //!< invalid before and behind all rows
        const QAbstractItemModel *m_model = nullptr; //!< walked
        AbstractItemViewFind *m_toolbar = nullptr;   //!< has the columns
    };

    //! Searches nothing before setView(); \a parent as in QObject.
    explicit AbstractItemViewFind(QObject *parent = nullptr);
    //! Ends a search that is running.
    ~AbstractItemViewFind() override;

    //! Null if none was set or it was destroyed.
    QAbstractItemView *view() const { return m_view; }
    //! \a view, which stays the caller's, is searched from now on.
    void setView(QAbstractItemView *view);
    //! \a header, which stays the caller's, gives the columns and their order. It
    //! should have the sections of the view's model.
    void setHeader(QHeaderView *header);
    //! The columns of the last search, logical numbers in the order on screen.
    QList<int> columnList() const { return m_columnList; }

    //! Whether upper and lower case differ when a text is looked for; Qt::CaseInsensitive
    //! at first.
    Qt::CaseSensitivity caseSensitivity() const;
    //! Finds by \a sensitivity from the next search on, and gives it to a
    //! SortFilterProxyModel of the view, at once and with every dofilter(). A search that
    //! runs should be stopped. As long as this was not called the proxy keeps its own.
    void setCaseSensitivity(Qt::CaseSensitivity sensitivity);

    //! Whether there is a model that could be filtered: any model counts.
    bool isFilterAvailable() const;

    //! Whether a cell of column \a column that holds \a data shows \a text: as the
    //! QStyledItemDelegate of the column or of the view writes it in the view's
    //! locale, or as a plain string without one. In numbers (int, uint, long long,
    //! unsigned long long, double) white space and group separators do not count. An
    //! empty text is everywhere. False without a view.
    virtual bool acceptsData(const QVariant &data, const QString &text, int column) const;

    //! acceptsData() for the display value of \a index. False if it belongs to another
    //! model than the view's.
    bool acceptsIndex(const QModelIndex &index, const QString &text) const;

    //! Shows only rows with \a text, upper and lower case apart unless
    //! setCaseSensitivity() was called, if the view's model is a SortFilterProxyModel;
    //! all if it is empty. Other models stay as they are.
    virtual void dofilter(const QString &text);

public Q_SLOTS:
    //! Finds \a text from the current cell on, which itself counts, then from the
    //! first row to the current one. Returns whether it was found; an empty text
    //! always is, where the view stands.
    bool findIncremental(const QString &text);
    //! Finds \a text in the rows above the current one, nearest first. Does not go on
    //! from the last row: who asks for what came before learns that there is nothing more.
    bool findPrev(const QString &text);
    //! Finds \a text in the rows below the current one, then from the first row on.
    //! The current row itself is not looked at.
    bool findNext(const QString &text);
    //! Ends the running search, which returns false.
    void stop();
    //! Calls dofilter().
    void filter(const QString &text);

protected:
    //! The model of the view; null without a view.
    QAbstractItemModel *itemModel() const;

    //! A search for \a text. \a incremental has an effect forward only.
    bool find(const QString &text, bool forward, bool incremental);
    //! The search forward from \a idx, in the columns of columnList().
    bool dofind(const QModelIndex &idx, const QString &text, bool incremental);
    //! The search backward from \a idx, in the columns of columnList().
    bool dofindReverse(const QModelIndex &idx, const QString &text);
    //! Lets events through if 40 ms have passed since the last time. Anything may have
    //! been destroyed afterwards, this engine included.
    void processEvents();
    //! Makes the first matching cell of the row of \a index current, or else lets
    //! events through if it is time.
    bool tryAcceptCurrentLine(const QModelIndex &index, const QString &text, bool forward);
    //! The first cell of the row that shows \a text, beginning with \a index if its
    //! column is in columnList(); an invalid index if there is none.
    QModelIndex acceptsLineForward(const QModelIndex &index, const QString &text) const;
    //! The same from right to left, beginning with \a index.
    QModelIndex acceptsLineReverse(const QModelIndex &index, const QString &text) const;
    //! Makes \a index current and its row the selection.
    void setCurrentIndex(const QModelIndex &index);

    //! Removes white space and \a separator from \a str. A separator of several
    //! characters is in no text.
    static inline void trim(QString &str, QString &separator)
    {
        const QChar only = separator.size() == 1 ? separator.at(0) : QChar();
        const bool separates = separator.size() == 1;
        str.removeIf([=](QChar c) { return c.isSpace() || (separates && c == only); });
    }

private:
    friend class ItemViewSearch;

    QPointer<QAbstractItemView> m_view; //!< searched
    QPointer<QHeaderView> m_header;     //!< gives the columns
    QList<int> m_columnList;            //!< of the last search, in the order on screen
    QElapsedTimer m_timer;              //!< since events were let through
    bool m_stopped = false;             //!< stop() was called
    ItemViewSearch *m_search = nullptr; //!< running, the latest begun
    std::optional<Qt::CaseSensitivity> m_caseSensitivity; //!< none until it was set
};

Q_DECLARE_METATYPE(AbstractItemViewFind)

#endif // ABSTRACTITEMVIEWFIND_H
