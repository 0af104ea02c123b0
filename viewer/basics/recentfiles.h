// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef RECENTFILES_H
#define RECENTFILES_H

#include <QStringList>

//! The files that were opened last, the newest first, in the user's settings.
namespace RecentFiles {

constexpr int most = 12; //!< remembered

//! Their absolute paths. Files that are gone are among them: they may come back.
QStringList paths();

//! Puts \a path, which is made absolute, in front. The standard input and what is no
//! regular file, as a pipe, is not remembered.
void add(const QString &path);

//! Forgets all of them.
void clear();

} // namespace RecentFiles

#endif // RECENTFILES_H
