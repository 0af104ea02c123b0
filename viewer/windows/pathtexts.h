// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef PATHTEXTS_H
#define PATHTEXTS_H

#include <QString>

//! What users are told of \a path, which may be "-" for the standard input, or "journal:".
//! @{
//! Its name alone.
QString displayName(const QString &path);
//! With its folder: files in several of them may have the same name.
QString titleOf(const QString &path);
//! As it was given, as this system writes paths.
QString displayPath(const QString &path);
//! @}

#endif // PATHTEXTS_H
