// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef ROLES_H
#define ROLES_H

#include <Qt>

//! Roles of the viewer's models beside Qt's.
enum class RowRole {
    //! Of any column: the row as a text of many lines, for who reads it whole. Its lines are not
    //! to be wrapped. Models without it have their columns told.
    Details = Qt::UserRole + 1
};

#endif // ROLES_H
