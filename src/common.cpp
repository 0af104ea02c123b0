// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "common.h"

#include <QHeaderView>

QList<int> getVisibleColumns(QHeaderView *header)
{
    QList<int> columns;
    const int count = header->count();
    for (int position = 0; position < count; ++position) {
        const int logical = header->logicalIndex(position);
        if (!header->isSectionHidden(logical))
            columns.append(logical);
    }
    return columns;
}
