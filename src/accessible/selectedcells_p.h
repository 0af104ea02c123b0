// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef SELECTEDCELLS_P_H
#define SELECTEDCELLS_P_H

#include <QItemSelection>
#include <QList>
#include <QModelIndexList>

class QTableFastView;

namespace Accessible {

/*!
 * \brief What is selected, counted by ranges: no row is visited to count them.
 *
 * Rows are those of the model; columns are numbered as on screen, and hidden ones left out.
 * Counts end at the largest int, lists after mostListed entries. Made anew for each question.
 */
class SelectedCells
{
public:
    static constexpr int mostListed = 4096;

    explicit SelectedCells(const QTableFastView &view);

    int cellCount() const;
    //! The first cells, range by range; not those that the model says cannot be selected, which
    //! cellCount() counts as well.
    QModelIndexList cells() const;
    int rowCount() const;
    //! The first rows all of whose columns are selected, in their order.
    QList<int> rows() const;
    //! The columns all of whose rows are selected.
    QList<int> columns() const;
    //! False for a row that does not exist.
    bool isRowSelected(int row) const;
    //! False for a column that does not exist, and without rows.
    bool isColumnSelected(int column) const;

private:
    struct Span
    {
        int first;
        int last;
    };

    QList<Span> rowSpans() const;

    const QTableFastView &m_view;
    QList<int> m_columns;       //!< logical indexes of those shown
    QItemSelection m_selection; //!< ranges that do not overlap
};

} // namespace Accessible

#endif // SELECTEDCELLS_P_H
