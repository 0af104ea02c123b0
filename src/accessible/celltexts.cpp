// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "celltexts_p.h"

#include <QAbstractItemView>
#include <QStyledItemDelegate>

namespace Accessible {

//! As the view shows it, but in as many lines as the model has.
static QString shownText(const QAbstractItemView &view, const QModelIndex &index)
{
    const QVariant value = index.data(Qt::DisplayRole);
    const auto *delegate = qobject_cast<QStyledItemDelegate *>(view.itemDelegateForIndex(index));
    if (!value.isValid() || !delegate)
        return value.toString();
    return delegate->displayText(value, view.locale()).replace(QChar::LineSeparator, u'\n');
}

QString cellText(const QAbstractItemView &view, const QModelIndex &index, QAccessible::Text text)
{
    if (text == QAccessible::Description)
        return index.data(Qt::AccessibleDescriptionRole).toString();
    if (text != QAccessible::Name)
        return {};
    const QString told = index.data(Qt::AccessibleTextRole).toString();
    return told.isEmpty() ? shownText(view, index) : told;
}

} // namespace Accessible
