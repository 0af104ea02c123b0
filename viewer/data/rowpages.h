// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef ROWPAGES_H
#define ROWPAGES_H

#include "datatable.h"

#include <optional>
#include <vector>

/*!
 * \brief The rows of a table that are known, among all the others.
 *
 * Known rows are in pages. Between two pages there is nothing, which is known then, or a gap of one
 * row at least: so many rows are thought to be there. When a gap turns out to be larger or smaller,
 * rows come or go within it, and no page moves against its neighbour. No query is made here: what
 * is to be read is told as a Fetch, and its rows are given back with it.
 */
class RowPages
{
public:
    static constexpr int pageRows = 256;     //!< rows that are read at a time
    static constexpr int mostPages = 64;     //!< that are kept
    static constexpr int mostSkipped = 2048; //!< rows that a query may read in vain

    //! Hears of rows that come and go.
    class Listener
    {
    public:
        virtual ~Listener() = default;
        virtual void aboutToInsert(int first, int last) = 0;
        virtual void inserted() = 0;
        virtual void aboutToRemove(int first, int last) = 0;
        virtual void removed() = 0;
        virtual void changed(int first, int last) = 0;
    };

    //! Rows to be read.
    struct Fetch
    {
        enum class Kind {
            Forward,  //!< those behind known ones
            Backward, //!< those before known ones, the last one first
            Jump,     //!< somewhere in a gap
            Again     //!< known ones, which may have changed
        };

        Kind kind = Kind::Forward;
        RowRange range;
        int limit = pageRows; //!< rows at most; fewer say that \a range has no more
        int offset = 0;       //!< rows of \a range to leave out
        int row = 0;          //!< of the table, where the first of them is thought to be
        int count = 0;        //!< known rows, if they are read again
        quint64 generation = 0;
    };

    //! A row whose place is known.
    struct Anchor
    {
        int row = 0;
        RowKey key;
    };

    //! No rows yet. \a listener must outlive it.
    explicit RowPages(Listener *listener);

    //! Nothing is known of \a rows rows; nobody is told.
    void reset(int rows, bool hasIntegerKey);
    //! Keys that about as many rows lie between, in their order: what is asked for far from all
    //! that is known is looked for near one of them. Until the next reset().
    void setHistogram(const QVariantList &keys) { m_histogram = keys; }
    int rowCount() const { return m_rows; }
    //! The row, or null if it is not known.
    const DataRow *row(int row) const;
    //! The known row with \a key, or −1.
    int rowOf(const RowKey &key) const;
    int pages() const { return int(m_pages.size()); }
    //! How many rows are known.
    int rows() const;
    //! Bytes of their texts.
    qint64 memory() const;
    //! Whether all rows at the end are known, so that more may be asked for.
    bool isEndKnown() const;

    //! What to read first so that the rows from \a first to \a last are known; nothing if they are,
    //! or if nobody knows yet where they are.
    std::optional<Fetch> wanted(int first, int last) const;
    //! The rows that have come behind the last one; only if isEndKnown().
    Fetch beyond() const;
    //! The last page.
    Fetch lastPage() const;
    //! The row with \a key and those behind it, to be at \a row; nothing if that row is known.
    std::optional<Fetch> at(int row, const RowKey &key) const;
    //! Known rows among those from \a first to \a last, to be read again; nothing if there are
    //! none.
    std::optional<Fetch> again(int first, int last) const;
    //! Takes what was read. Returns false, and takes nothing, where other rows are known by now.
    bool take(const Fetch &fetch, const QList<DataRow> &rows);

    //! Where some rows are, in order, each \a step -th of them.
    void setAnchors(QList<Anchor> anchors, int step);
    //! There are \a total rows, and that with \a key, which is known, is \a row. Pages whose place
    //! is not known any more are given up. Returns false, and does nothing, if that cannot be.
    bool place(const RowKey &key, int row, int total);
    //! There are \a total rows, wherever the known ones are.
    void resize(int total);

    //! All rows may be others by now: gives up those outside of \a first to \a last.
    void forget(int first, int last);
    //! The rows from \a first to \a last are looked at; keeps no more pages than mostPages.
    void touch(int first, int last);

private:
    struct Page
    {
        int first = 0;
        QList<DataRow> rows;
        quint64 seen = 0; //!< when it was looked at last

        int end() const { return first + int(rows.size()); }
    };

    //! Rows that are not known: [begin, end). Empty only at the end of all rows.
    struct Gap
    {
        int begin = 0;
        int end = 0;
    };

    int pageFrom(int row) const;
    Gap gapAt(int row) const;
    const Page *before(const Gap &gap) const;
    const Page *behind(const Gap &gap) const;
    std::optional<Fetch> jump(const Gap &gap, int row) const;
    std::optional<RowKey> guess(const Gap &gap, int row) const;
    std::optional<RowKey> guessByHistogram(int row) const;
    Anchor anchorBefore(const Gap &gap, int row) const;
    std::optional<Anchor> anchorBehind(const Gap &gap, int row) const;
    void bound(Fetch *fetch, const Gap &gap) const;

    void insertRows(int first, int count);
    void removeRows(int first, int count);
    void insertKnown(int page, int place, const QList<DataRow> &rows);
    void removeKnown(int page, int place, int count);
    void put(int first, const QList<DataRow> &rows);
    void dropPage(int page);
    void takeForward(const Gap &gap, const QList<DataRow> &rows, bool isAll);
    void takeBackward(const Gap &gap, QList<DataRow> rows, bool isAll);
    void takeJump(const Gap &gap, const Fetch &fetch, const QList<DataRow> &rows, bool isAll);
    void takeAgain(const Fetch &fetch, const QList<DataRow> &rows, bool isAll);
    void merge(int page, int end);
    void updateMerged(int page, const QList<DataRow> &rows);
    void split(int page);
    void dropBetween(int page);
    int placedTop(int first);
    int placedTail(int behind);
    void resizeGap(int first, int present, int needed);
    int chainBegin(int page) const;
    int chainEnd(int page) const;

    Listener *m_listener; //!< not owned
    int m_rows = 0;
    bool m_hasIntegerKey = false;
    std::vector<Page> m_pages; //!< ascending, apart from each other
    QList<Anchor> m_anchors;   //!< ascending
    int m_step = 0;            //!< of m_anchors
    QVariantList m_histogram;  //!< see setHistogram()
    quint64 m_generation = 1;  //!< of m_pages
    quint64 m_time = 0;        //!< looks so far
    int m_deadEnd = -1;        //!< end of a gap that has nothing where it was guessed
};

#endif // ROWPAGES_H
