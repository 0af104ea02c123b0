// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef CELLTEXTS_P_H
#define CELLTEXTS_P_H

#include <QAccessible>
#include <QString>

class QAbstractItemView;
class QModelIndex;

namespace Accessible {

//! What is read of the cell \a index of \a view. The name is the model's
//! Qt::AccessibleTextRole, or without it the text that the cell's delegate writes; the
//! description its Qt::AccessibleDescriptionRole. Any other \a text is empty.
QString cellText(const QAbstractItemView &view, const QModelIndex &index, QAccessible::Text text);

} // namespace Accessible

#endif // CELLTEXTS_P_H
