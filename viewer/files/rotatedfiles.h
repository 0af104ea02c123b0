// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef ROTATEDFILES_H
#define ROTATEDFILES_H

#include <QStringList>

/*!
 * The files in the folder of \a path that had its name before they were rotated away, the oldest
 * first, without \a path.
 *
 * Their names have a number or a date more, at the end or before the suffix: "syslog.1",
 * "syslog.2.gz", "app-20261121.log", "app.2026-11-21.3.log". The higher number is the older
 * file, and within a date the newer one. If \a path is a rotated file itself, only those older
 * than it. A file that stands there compressed, too, counts once, as it is.
 */
QStringList olderFiles(const QString &path);

#endif // ROTATEDFILES_H
