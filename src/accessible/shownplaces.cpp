// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "shownplaces_p.h"

#include "common.h"
#include "qtablefastview.h"

#include <QHeaderView>

namespace Accessible {

QList<int> shownColumns(const QTableFastView &view)
{
    QHeaderView *header = view.header();
    return header ? getVisibleColumns(header) : QList<int>();
}

int shownPosition(const QTableFastView &view, int column)
{
    return int(shownColumns(view).indexOf(column));
}

QModelIndex shownCell(const QTableFastView &view, const QModelIndex &index)
{
    const QHeaderView *header = view.header();
    if (!index.isValid() || !header || !header->isSectionHidden(index.column()))
        return header ? index : QModelIndex();
    const QList<int> columns = shownColumns(view);
    return columns.isEmpty() ? QModelIndex() : index.siblingAtColumn(columns.first());
}

static QString headerValue(const QTableFastView &view, int column, int role)
{
    const QAbstractItemModel *model = view.model();
    return model ? model->headerData(column, Qt::Horizontal, role).toString() : QString();
}

QString headerText(const QTableFastView &view, int column, QAccessible::Text text)
{
    if (text == QAccessible::Description)
        return headerValue(view, column, Qt::AccessibleDescriptionRole);
    if (text != QAccessible::Name)
        return {};
    const QString told = headerValue(view, column, Qt::AccessibleTextRole);
    return told.isEmpty() ? headerValue(view, column, Qt::DisplayRole) : told;
}

QRect onScreen(const QRect &rect, const QWidget &widget)
{
    return rect.isNull() ? QRect() : rect.translated(widget.mapToGlobal(QPoint(0, 0)));
}

} // namespace Accessible
