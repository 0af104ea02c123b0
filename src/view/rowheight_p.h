// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef ROWHEIGHT_P_H
#define ROWHEIGHT_P_H

class QAbstractItemModel;
class QAbstractItemView;
class QStyleOptionViewItem;

//! The height in logical pixels that the font of \a view, its delegate and those of the
//! columns of \a model (which may be null) ask for when they are shown \a option. At least 1.
int neededRowHeight(const QAbstractItemView &view, const QAbstractItemModel *model,
                    const QStyleOptionViewItem &option);

#endif // ROWHEIGHT_P_H
