// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

// Models that have more rows than they tell at first. The base class fetches when the view
// is scrolled to its end, when the last row becomes current, and by a timer while the end is
// seen. Rows that arrive meanwhile are told from new ones by isFetching, and nothing
// fetches while something fetches.

#include "qtablefastview.h"
#include "tableparts_p.h"

#include <QHeaderView>
#include <QPointer>
#include <QTimerEvent>

//! Whether the model has more rows and what it has told ends in sight.
bool QTableFastViewPrivate::mayFetch() const
{
    const QAbstractItemModel *model = q_ptr->m_model;
    if (!model || !model->canFetchMore(QModelIndex()))
        return false;
    const RowGeometry seen = rows();
    return seen.lastSeenRow() >= seen.rows - 1;
}

//! Runs \a work, which may fetch one batch. Whatever of it would have scrolled to the end
//! gets its batch afterwards, unless rows arrived.
template<typename Work> void QTableFastViewPrivate::whileFetching(const Work &work)
{
    const QPointer<QObject> alive(this); // the model may do anything
    const quint64 serial = changes->serial();
    isFetching = true;
    isFetchWanted = false;
    work();
    if (!alive)
        return;
    isFetching = false;
    if (serial == changes->serial()) {
        if (std::exchange(isFetchWanted, false))
            fetchMore();
    } else if (mayFetch() && rowCount() <= rows().wholeRows()) {
        // The batch did not fill the view: the base class goes on by its timer.
        q_ptr->QAbstractItemView::updateGeometries();
    }
}

void QTableFastViewPrivate::fetchMore()
{
    if (isFetching) {
        isFetchWanted = true;
        return;
    }
    QAbstractItemModel *model = q_ptr->m_model;
    if (model && model->canFetchMore(QModelIndex()))
        whileFetching([model] { model->fetchMore(QModelIndex()); });
}

//! Where the end came into sight without the bar having moved, as rows went or the model
//! told fewer, the base class fetches by its timer.
void QTableFastViewPrivate::fetchIfEndIsSeen()
{
    if (!isFetching && mayFetch())
        q_ptr->QAbstractItemView::updateGeometries();
}

void QTableFastView::verticalScrollbarValueChanged(int value)
{
    const bool isAtEnd = value == verticalScrollBar()->maximum();
    if (isAtEnd && m_model && m_model->canFetchMore(QModelIndex()))
        d_ptr->fetchMore();
    else
        QAbstractItemView::verticalScrollbarValueChanged(value);
}

void QTableFastView::timerEvent(QTimerEvent *event)
{
    if (!d_ptr->mayFetch())
        QAbstractItemView::timerEvent(event);
    else if (!d_ptr->isFetching) // else the timer comes again
        d_ptr->whileFetching([this, event] { QAbstractItemView::timerEvent(event); });
}

//! QAbstractItemView::currentChanged(), which may fetch.
void QTableFastViewPrivate::baseCurrentChanged(const QModelIndex &current,
                                               const QModelIndex &previous)
{
    QTableFastView *q = q_ptr;
    const bool mayFetchHere = current.isValid() && q->isVisible() && q->m_model
        && current.row() == rowCount() - 1 && q->m_model->canFetchMore(QModelIndex());
    if (!mayFetchHere) {
        q->QAbstractItemView::currentChanged(current, previous);
        return;
    }
    if (!isFetching) {
        whileFetching([=] { q->QAbstractItemView::currentChanged(current, previous); });
        return;
    }
    // What the base class does, without fetching.
    q->QAbstractItemView::currentChanged(QModelIndex(), previous);
    if (q->hasAutoScroll())
        q->scrollTo(current);
    q->edit(current, QAbstractItemView::CurrentChanged, nullptr);
    q->setAttribute(Qt::WA_InputMethodEnabled, current.flags() & Qt::ItemIsEditable);
}
