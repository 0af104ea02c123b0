// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef CELLSTORE_P_H
#define CELLSTORE_P_H

#include <QAccessible>
#include <QHash>
#include <QObject>
#include <QPersistentModelIndex>

class QTableFastView;

namespace Accessible {

/*!
 * \brief The interfaces of cells and header cells that were asked for, and no others.
 *
 * Cells follow their rows. Of more than mostKept cells those that were not asked for longest
 * are dropped, later, when nobody holds one any more.
 */
class CellStore : public QObject
{
    Q_OBJECT

public:
    static constexpr int mostKept = 4096;

    //! Of \a view, which must live as long as this.
    explicit CellStore(QTableFastView *view);
    ~CellStore() override;

    //! The interface of the cell \a index, which must be valid. Owned by Qt's cache until it is
    //! dropped.
    QAccessibleInterface *cell(const QModelIndex &index);
    //! The interface of the cell \a index if it was asked for, or null.
    QAccessibleInterface *knownCell(const QModelIndex &index) const;
    //! The interface of the header's section \a column (logical index).
    QAccessibleInterface *headerCell(int column);

    //! Drops everything.
    void clear();
    //! Drops the cells of rows that are gone.
    void dropGone();

private Q_SLOTS:
    void trim();

private:
    struct Kept
    {
        QAccessible::Id id;
        quint64 asked; //!< when it was last asked for
    };

    void trimLater();

    QTableFastView *m_view;
    QHash<QPersistentModelIndex, Kept> m_cells;
    QHash<int, QAccessible::Id> m_headerCells;
    quint64 m_now = 0; //!< counts what was asked for
    bool m_isTrimming = false;
};

} // namespace Accessible

#endif // CELLSTORE_P_H
