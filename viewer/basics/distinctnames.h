// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef DISTINCTNAMES_H
#define DISTINCTNAMES_H

#include <QStringList>

//! For each of the absolute \a paths the name of its file, with as many of its folders as
//! tell it from others of that name: "a/log" and "b/log". The same paths get the same name.
QStringList distinctNames(const QStringList &paths);

#endif // DISTINCTNAMES_H
