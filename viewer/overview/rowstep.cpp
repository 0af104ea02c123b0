// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "rowstep.h"

#include "qtablefastview.h"
#include "search/tablefilter.h"

#include <algorithm>

RowStep stepAmong(QList<int> rows, bool forward, const TableFilter &find,
                  const QTableFastView &table)
{
    if (!forward)
        std::reverse(rows.begin(), rows.end());
    const QModelIndex current = table.currentIndex();
    const int from = current.isValid() ? find.toSource(current).row() : -1;
    const bool hasFrom = from >= 0;
    const auto isAhead = [=](int row) { return forward ? row > from : !hasFrom || row < from; };
    const auto ahead = std::find_if(rows.begin(), rows.end(), isAhead);
    const qsizetype begun = ahead - rows.begin();
    std::rotate(rows.begin(), ahead, rows.end());
    const auto leads = [&](int row) {
        const int shown = find.rowNear(row);
        return shown >= 0 && shown != current.row();
    };
    const auto found = std::find_if(rows.begin(), rows.end(), leads);
    if (found == rows.end())
        return {};
    return {*found, begun + (found - rows.begin()) >= rows.size()};
}
