// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef RANGEANCHOR_P_H
#define RANGEANCHOR_P_H

#include <QItemSelectionModel>
#include <QPersistentModelIndex>

class QTableFastView;

/*!
 * \brief Where a range that keys or the mouse extend begins, and what lies between it and its
 * other end.
 *
 * Follows the decisions of QAbstractItemView, which keeps the place of its own to itself.
 */
class RangeAnchor
{
public:
    //! \a view must outlive it.
    explicit RangeAnchor(const QTableFastView *view)
        : m_view(view)
    {
    }

    const QPersistentModelIndex &index() const { return m_anchor; }

    //! The mouse goes down over \a pressed, which \a command will select.
    void press(const QModelIndex &pressed, QItemSelectionModel::SelectionFlags command);
    //! A key is about to be handled. Returns what endKey() wants to know.
    QPersistentModelIndex beginKey(const QModelIndex &current);
    //! The key moved the current index to \a now; \a command is that of the move.
    void endKey(const QModelIndex &now, QItemSelectionModel::SelectionFlags command);
    //! The key moved nothing; \a known is what beginKey() returned.
    void endKey(const QPersistentModelIndex &known) { m_anchor = known; }

    //! The cells between two corners: by their logical columns, or as they lie on screen.
    QItemSelection range(const QModelIndex &a, const QModelIndex &b, bool isVisual) const;
    //! The cell at \a point, a corner of a range, in viewport pixels. A row too far away for
    //! pixels is the anchor's.
    QModelIndex cornerAt(const QPoint &point) const;

private:
    const QTableFastView *m_view;
    QPersistentModelIndex m_anchor;
};

#endif // RANGEANCHOR_P_H
