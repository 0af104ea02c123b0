// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef SELECTIONSUMS_H
#define SELECTIONSUMS_H

#include "numbersums.h"

#include <QList>
#include <QObject>
#include <QPointer>
#include <QTimer>

#include <utility>

class QAbstractItemModel;
class QAbstractItemView;
class QItemSelection;
class QItemSelectionModel;
class QModelIndex;

/*!
 * \brief Adds up the numbers in the current column of a table's selected rows.
 *
 * In slices, so that events go on. There is nothing to tell of fewer than two rows, of numbers
 * of lines, and of cells none of which is a number.
 */
class SelectionSums : public QObject
{
    Q_OBJECT

public:
    //! Of rows that must be loaded first, no more are added up.
    static constexpr int mostLoadedRows = 100000;

    //! Adds up rows of \a table, which must outlive it; call followTable() whenever that has
    //! another model.
    explicit SelectionSums(QAbstractItemView *table, QObject *parent = nullptr);

    //! Count, sum, minimum, maximum and mean for the user, or how far it has come; empty if
    //! there is nothing to tell.
    QString text() const { return m_text; }
    //! There are cells left to look at.
    bool isRunning() const { return m_timer.isActive(); }

    //! Looks at cells for \a milliseconds, and at one at least, before events go on; 20 at
    //! first.
    void setSliceTime(int milliseconds) { m_sliceTime = milliseconds; }

public Q_SLOTS:
    //! The table has another model, or none.
    void followTable();

Q_SIGNALS:
    //! text() is another.
    void textChanged(const QString &text);

private Q_SLOTS:
    void beginAnew();
    void selectionChanged(const QItemSelection &selected, const QItemSelection &deselected);
    void currentChanged(const QModelIndex &current, const QModelIndex &previous);
    void dataChanged(const QModelIndex &topLeft, const QModelIndex &bottomRight);
    void rowsInserted(const QModelIndex &parent, int first, int last);

private:
    void goOn();
    void takeSelection();
    void addSlice();
    void setText(const QString &text);
    QString sumsText() const;

    using Range = std::pair<int, int>; //!< rows, first to last

    QAbstractItemView *m_table;             //!< not owned
    QPointer<QAbstractItemModel> m_model;   //!< followed
    QPointer<QItemSelectionModel> m_choice; //!< followed
    QTimer m_timer {this};                  //!< runs while there are cells left
    int m_sliceTime = 20;                   //!< ms
    bool m_isTaken = false;                 //!< the selection is in m_ranges
    bool m_isLoading = false;               //!< a row that was not at hand
    int m_column = -1;                      //!< whose cells are added up
    QList<Range> m_ranges;                  //!< selected, ascending, apart from each other
    qsizetype m_range = 0;                  //!< of m_ranges, the one that m_next is in
    int m_next = 0;                         //!< the row to be looked at next
    int m_rows = 0;                         //!< in m_ranges
    int m_done = 0;                         //!< of m_rows
    NumberSums m_sums;                      //!< of those
    QString m_text;                         //!< see text()
};

#endif // SELECTIONSUMS_H
