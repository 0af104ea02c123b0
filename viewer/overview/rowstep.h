// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef ROWSTEP_H
#define ROWSTEP_H

#include <QList>

class QTableFastView;
class TableFilter;

//! Where a step from the current row leads.
struct RowStep
{
    int row = -1;         //!< of the rows behind the filter; −1: nowhere else
    bool isRound = false; //!< it went on at the other end
};

//! The nearest of \a rows, which go from the top down, in the direction that \a forward says;
//! beyond the end the one that is farthest in the other. Rows that lead to the current row of \a
//! table lead nowhere.
RowStep stepAmong(QList<int> rows, bool forward, const TableFilter &find,
                  const QTableFastView &table);

#endif // ROWSTEP_H
