// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "journalstream.h"

#include <QCoreApplication>

std::unique_ptr<JournalStream> JournalStream::open(const QString &, QString *error)
{
    *error = QCoreApplication::translate(
        "JournalStream", "It is a journal, and this program was built without libsystemd.");
    return nullptr;
}
