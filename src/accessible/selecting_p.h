// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef SELECTING_P_H
#define SELECTING_P_H

class QModelIndex;
class QTableFastView;

/*!
 * Selecting rows and columns as the selection mode and behaviour of a view allow: what a
 * QTableView allows screen readers. Rows are those of the model, columns are numbered as on
 * screen. False: nothing has changed, as it must not, or as there is no such row or column.
 */
namespace Accessible {

//! Selects a row. Where one alone, or neighbours alone, may be selected the rest is not any more.
bool selectRow(QTableFastView *view, int row);
//! The same of a column.
bool selectColumn(QTableFastView *view, int column);
//! Where only neighbours may be selected, those behind \a row are not selected any more either;
//! the last one selected stays so unless any may be.
bool unselectRow(QTableFastView *view, int row);
//! The same of a column.
bool unselectColumn(QTableFastView *view, int column);

//! Selects a cell, or what the behaviour makes of it, as a click does: where several may be
//! selected those that are stay so.
bool selectCell(QTableFastView *view, const QModelIndex &index);
//! The inverse, where several may be selected. Elsewhere one that is selected stays so.
bool unselectCell(QTableFastView *view, const QModelIndex &index);

} // namespace Accessible

#endif // SELECTING_P_H
