// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef MARKEDROWS_H
#define MARKEDROWS_H

#include <QAbstractItemModel>
#include <QList>
#include <QPointer>
#include <QString>

#include <vector>

/*!
 * \brief Rows of a model that somebody wants to find again.
 *
 * A mark moves with its row and goes with it. Where a model begins anew, as that of a file that
 * was cut off, a mark waits for its row to come again, and stays if the text is the same.
 */
class MarkedRows : public QObject
{
    Q_OBJECT

public:
    explicit MarkedRows(QObject *parent = nullptr);

    //! Marks rows of \a model, which stays the caller's and may be null, and none of those
    //! that were marked. The same model again changes nothing.
    void setModel(QAbstractItemModel *model);

    //! The next model is about the same: setModel() lets marks wait for their rows in it.
    void keepForNextModel() { m_isKept = true; }

    //! Marks \a row, or removes its mark. Rows that do not exist are ignored.
    void toggle(int row);
    //! Removes all marks, those that wait for their rows included.
    void removeAll();

    //! Marked rows from the top down.
    QList<int> rows() const;
    int count() const { return int(m_marks.size()); }
    bool isEmpty() const { return m_marks.empty(); }
    bool isMarked(int row) const;

Q_SIGNALS:
    //! Rows have been marked, or are not any more.
    void changed();
    //! Marked rows have moved, as rows that come and go above move all below.
    void moved();

private:
    struct Mark
    {
        int row;
        QString text; //!< see rowText()
    };
    using Marks = std::vector<Mark>; // in the order of their rows

    static Marks::const_iterator place(const Marks &marks, int row);
    void rowsCame(const QModelIndex &parent, int first, int last);
    void rowsWent(const QModelIndex &parent, int first, int last);
    void rowsChanged(const QModelIndex &first, const QModelIndex &last);
    void beginAnew();
    void takeBack();
    bool isAwaited(const Mark &mark) const;

    QPointer<QAbstractItemModel> m_model; //!< not owned
    Marks m_marks;                        //!< of rows that exist
    Marks m_waiting;                      //!< for rows as they were before a new beginning
    bool m_isKept = false;                //!< see keepForNextModel()
};

#endif // MARKEDROWS_H
