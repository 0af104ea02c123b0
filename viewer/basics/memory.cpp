// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "basics/memory.h"

#include <QByteArray>
#include <QFile>
#include <QList>

#include <sys/resource.h>
#include <unistd.h>

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

qint64 residentBytes()
{
    QFile pages(QStringLiteral("/proc/self/statm"));
    if (!pages.open(QIODevice::ReadOnly))
        return 0;
    const QList<QByteArray> counts = pages.readAll().split(' ');
    return counts.value(1).toLongLong() * ::sysconf(_SC_PAGESIZE);
}
