// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef ITEMVIEWSEARCH_P_H
#define ITEMVIEWSEARCH_P_H

#include "abstractitemviewfind.h"
#include "showntexts_p.h"

#include <QAbstractItemModel>
#include <QAbstractItemView>
#include <QHeaderView>
#include <QObject>
#include <QPersistentModelIndex>
#include <QPointer>
#include <QString>

#include <memory>

/*!
 * \brief One search: the row where it is, and what it has asked of the view.
 *
 * Lives on the stack of the function that searches. The engine knows the latest one,
 * and each knows the one that it interrupted.
 */
class ItemViewSearch : public QObject
{
    Q_OBJECT

public:
    enum class Result {
        Found,
        End,   //!< all rows were looked at
        Broken //!< stopped, or something that it needs is gone
    };

    using Iterator = AbstractItemViewFind::Iterator;

    ItemViewSearch(AbstractItemViewFind *engine, const QModelIndex &start, const QString &text,
                   bool forward);
    ~ItemViewSearch() override;

    //! From the row of \a it to the end.
    Result walk(Iterator it);
    //! Forward from the first row to the row of the start.
    Result walkToStart();

    //! Ends this search and those that it interrupted.
    void breakOff();
    void engineDestroyed();

    //! Events run between these two.
    void beginEvents();
    void endEvents();
    bool runsEvents() const { return m_runsEvents; }

    //! What the view shows, asked anew after events.
    FindTexts::ShownTexts &shownTexts();

private Q_SLOTS:
    //! Goes on from the row that takes the place of the current one.
    void rowsAboutToBeRemoved(const QModelIndex &parent, int first, int last);

private:
    bool isBroken() const { return m_isBroken || m_engine->m_stopped; }
    bool hasLostItsView() const;
    QModelIndex stopRow() const;
    QModelIndex rowBehind(QModelIndex parent, int row) const;

    AbstractItemViewFind *m_engine;                 //!< null when destroyed
    ItemViewSearch *m_interrupted;                  //!< this one began in its events
    QPointer<QAbstractItemView> m_view;             //!< searched
    QPointer<QHeaderView> m_header;                 //!< gave the columns
    QPointer<QAbstractItemModel> m_model;           //!< walked
    std::unique_ptr<FindTexts::ShownTexts> m_shown; //!< null until asked for
    const QString m_text;                           //!< the caller's may go while events run
    QPersistentModelIndex m_start;                  //!< invalid when its row has gone
    QModelIndex m_stopAt;                           //!< end of the second walk
    QModelIndex m_position;                         //!< the row looked at
    QPersistentModelIndex m_kept;                   //!< m_position while events run
    const bool m_forward;                           //!< direction
    bool m_wraps = false;                           //!< in the second walk
    bool m_isBroken = false;                        //!< has to end
    bool m_runsEvents = false;                      //!< m_kept counts
    bool m_isReplaced = false;                      //!< m_position was not looked at yet
};

#endif // ITEMVIEWSEARCH_P_H
