// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef ICONS_H
#define ICONS_H

#include <QIcon>
#include <QString>

//! The pictures of the program.
namespace Icons {

//! The program's own.
QIcon program();

//! The one that the desktop's theme has for \a themeName, else the program's own \a name.
QIcon action(const QString &themeName, const QString &name);

} // namespace Icons

#endif // ICONS_H
