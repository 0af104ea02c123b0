// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "journalstream.h"

#include <QString>

bool JournalStream::isName(const QString &path)
{
    return path.startsWith(QLatin1String("journal:"));
}

bool JournalStream::isJournalStart(QByteArrayView bytes)
{
    return bytes.startsWith("LPKSHHRH");
}
