// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef MEMORY_H
#define MEMORY_H

#include <QtGlobal>

//! Bytes of the machine's memory that this process has now; 0 where nobody tells.
qint64 residentBytes();
//! Bytes of the machine's memory that this process had at most so far.
qint64 peakResidentBytes();

#endif // MEMORY_H
