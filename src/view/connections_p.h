// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef CONNECTIONS_P_H
#define CONNECTIONS_P_H

class QAbstractItemModel;
class QHeaderView;
class QObject;
class QTableFastView;

/*!
 * \brief What a view listens to.
 *
 * Signals and slots are connected by name, so that a derived view may redefine a slot.
 */
class Connections
{
public:
    //! Connects to slots of \a view and of \a d, its private object.
    Connections(QTableFastView *view, QObject *d)
        : m_view(view)
        , m_private(d)
    {
    }

    void connectHeader(QHeaderView *header) const;
    void disconnectHeader(QHeaderView *header) const;
    //! Has the view sort, or stop to, as the header's sort indicator changes.
    void connectSorting(QHeaderView *header, bool on) const;
    //! Connects what QAbstractItemView does not; a model already connected is last again to
    //! be heard.
    void connectModel(QAbstractItemModel *model) const;
    void disconnectModel(QAbstractItemModel *model) const;

private:
    QTableFastView *m_view;
    QObject *m_private;
};

#endif // CONNECTIONS_P_H
