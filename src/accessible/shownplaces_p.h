// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef SHOWNPLACES_P_H
#define SHOWNPLACES_P_H

#include <QAccessible>
#include <QList>
#include <QRect>

class QModelIndex;
class QTableFastView;
class QWidget;

/*!
 * Screen readers know the columns that are shown, numbered from 0 in the order on screen: the
 * first is the leftmost, in a right-to-left layout the rightmost.
 */
namespace Accessible {

//! The logical indexes of the columns shown.
QList<int> shownColumns(const QTableFastView &view);
//! The number of a column (logical index); −1 if it is not shown.
int shownPosition(const QTableFastView &view, int column);
//! The cell \a index, or the first one shown in its row if its column is hidden; invalid
//! without one, and for an invalid index.
QModelIndex shownCell(const QTableFastView &view, const QModelIndex &index);

//! What is read of the title of a column (logical index): its name or its description.
QString headerText(const QTableFastView &view, int column, QAccessible::Text text);

//! A rectangle of \a widget's coordinates on the screen.
QRect onScreen(const QRect &rect, const QWidget &widget);

} // namespace Accessible

#endif // SHOWNPLACES_P_H
