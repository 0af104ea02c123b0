// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef ROWFOLLOWER_H
#define ROWFOLLOWER_H

#include <QObject>
#include <QPersistentModelIndex>
#include <QTimer>

class QAbstractItemModel;
class ViewerTable;

/*!
 * \brief Keeps a table to the side on which rows arrive, or to the rows that it shows.
 *
 * Following begins switched on, ends when the user scrolls away from the edge, clicks on a
 * row or goes to another than the newest by a key, and begins again when he comes back to
 * the edge.
 */
class RowFollower : public QObject
{
    Q_OBJECT

public:
    //! The side of the table on which rows arrive.
    enum class Edge {
        Top,
        End
    };

    //! Follows rows of \a table, which is its parent, at the end.
    explicit RowFollower(ViewerTable *table);

    bool isFollowing() const { return m_isFollowing; }
    void setFollowing(bool on);
    void setEdge(Edge edge);

    //! Whether the table is scrolled to the edge.
    bool isAtEdge() const;
    //! Whether \a index is in the row that came last.
    bool isNewest(const QModelIndex &index) const;

    //! The table is about to have another model, or none.
    void beginChange();
    //! It has \a model now, and has connected to it.
    void follow(QAbstractItemModel *model);

Q_SIGNALS:
    //! isFollowing() is another.
    void followingChanged(bool isFollowing);
    //! The model has other rows, and the table shows what it is to show of them.
    void rowsChanged();

private:
    void endChange();
    void keepToEdge();
    void keepHeldRows();
    void barMoved();

    ViewerTable *m_table;
    Edge m_edge = Edge::End;
    bool m_isFollowing = true;
    bool m_modelChanges = false;  //!< the view moves the bar, not the user
    QPersistentModelIndex m_held; //!< the first row seen before a change
    QTimer m_pinTimer;            //!< goes to the edge when the view is done
};

#endif // ROWFOLLOWER_H
