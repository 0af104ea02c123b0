// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "rowheight_p.h"

#include <QAbstractItemView>
#include <QFontMetrics>
#include <QStyledItemDelegate>

#include <algorithm>
#include <typeinfo>

namespace {

//! What a delegate asks for without a cell.
int hintedHeight(const QAbstractItemDelegate &delegate, const QStyleOptionViewItem &option)
{
    // Qt's own would tell of the cell that it has painted last.
    if (typeid(delegate) == typeid(QStyledItemDelegate))
        return QStyledItemDelegate().sizeHint(option, QModelIndex()).height();
    return delegate.sizeHint(option, QModelIndex()).height();
}

} // namespace

int neededRowHeight(const QAbstractItemView &view, const QAbstractItemModel *model,
                    const QStyleOptionViewItem &option)
{
    int height = QFontMetrics(view.font()).height();
    if (const QAbstractItemDelegate *delegate = view.itemDelegate())
        height = std::max(height, hintedHeight(*delegate, option));
    const int columns = model ? model->columnCount(QModelIndex()) : 0;
    for (int column = 0; column < columns; ++column) {
        if (const QAbstractItemDelegate *delegate = view.itemDelegateForColumn(column))
            height = std::max(height, hintedHeight(*delegate, option));
    }
    return std::max(height, 1);
}
