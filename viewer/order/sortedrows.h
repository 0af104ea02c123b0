// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef SORTEDROWS_H
#define SORTEDROWS_H

#include "basics/flatproxy.h"
#include "orderjob.h"

#include <QTimer>

#include <memory>

/*!
 * \brief Shows the rows of a flat model in the order of the values of a column.
 *
 * They are sorted while events run: until that is done for the first time rows stand as in the
 * source, then those that come or change are put in their places soon after. Four bytes a row are
 * kept.
 */
class SortedRows : public FlatProxy
{
    Q_OBJECT

public:
    //! By the texts that \a column of \a source shows, and what SortValue makes of them. \a source
    //! must outlive this, or go by its destroyed() signal. A column that is not there leaves the
    //! rows as they are.
    SortedRows(QAbstractItemModel *source, int column, Qt::SortOrder order);
    ~SortedRows() override;

    int column() const { return m_column; }
    Qt::SortOrder order() const { return m_sortOrder; }
    //! Whether the rows are in their order, but for some that have come or changed.
    bool isSorted() const { return m_isSorted; }
    //! Whether there is nothing to be sorted.
    bool isSettled() const { return !m_job && !m_timer.isActive(); }
    //! Bytes that the order of the rows occupies.
    std::size_t memory() const { return m_order.capacity() * sizeof(int); }

Q_SIGNALS:
    //! \a part, from 0 to 1, of the rows has been sorted; 1 when they are shown in their order.
    void progressed(double part);

protected:
    int shownRows() const override;
    int sourceRow(int row) const override;
    int rowOf(int sourceRow) const override;

private:
    //! Rows that have come to the source.
    struct Insertion
    {
        int first;
        int count;
    };

    void followRows();
    void followSource();
    void work();
    void begin();
    void beginAgain();
    void finish();
    void showHidden(const std::vector<int> &order);
    void rearrange(std::vector<int> order);
    void addWaiting(int first, int last);
    void forgetOrder();
    void rowsAboutToCome(int first, int last);
    void rowsCame(int first, int last);
    void rowsAboutToGo(int first, int last);
    void rowsWent(int first, int last);
    void rowsChanged(const QModelIndex &first, const QModelIndex &last, const QList<int> &roles);
    void sourceLayoutChanged();
    int rowNow(int jobRow) const;
    void moveOn(int first, int count);
    QString textOf(int sourceRow) const;

    const int m_column;
    const Qt::SortOrder m_sortOrder;
    int m_count = 0;                 //!< rows of the source
    bool m_isSorted = false;         //!< m_order counts; else rows are as in the source
    std::vector<int> m_order;        //!< rows of the source; those that wait may be missing
    std::vector<int> m_waiting;      //!< rows of the source that are not in their places yet
    std::vector<int> m_taken;        //!< those that waited when m_job began
    std::unique_ptr<OrderJob> m_job; //!< null if at rest
    std::vector<Insertion> m_since;  //!< since m_job began, which has the numbers of then
    QTimer m_timer;                  //!< begins, or goes on with, m_job
};

#endif // SORTEDROWS_H
