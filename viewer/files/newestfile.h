// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef NEWESTFILE_H
#define NEWESTFILE_H

#include <QString>

//! Whether \a path stands for files by wildcards (*, ?, [) in its last part, and is not the
//! name of one itself.
bool isFilePattern(const QString &path);

//! The file in the folder of \a pattern whose name fits it and that was written last; of several
//! the one whose name is last. Empty if there is none.
QString newestFile(const QString &pattern);

#endif // NEWESTFILE_H
