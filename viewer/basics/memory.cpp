// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "basics/memory.h"

#include <sys/resource.h>

qint64 peakResidentBytes()
{
    rusage usage {};
    ::getrusage(RUSAGE_SELF, &usage);
#ifdef Q_OS_DARWIN
    return usage.ru_maxrss;
#else
    return qint64(usage.ru_maxrss) * 1024;
#endif
}
