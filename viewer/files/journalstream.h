// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef JOURNALSTREAM_H
#define JOURNALSTREAM_H

#include "bytestream.h"

#include <QByteArrayView>

#include <memory>

/*!
 * \brief A journal of systemd as text: an object of JSON in each line, as "journalctl -o json"
 * writes them, without their cursors.
 *
 * It has no end: descriptor() can be read from whenever there may be more.
 */
class JournalStream : public ByteStream
{
public:
    //! Whether \a path stands for a journal rather than for a file of that name: "journal:" is
    //! that of this machine, "journal:" and a path that of a file, or of a folder's files.
    static bool isName(const QString &path);
    //! Whether bytes that a file begins with are those of a journal.
    static bool isJournalStart(QByteArrayView bytes);

    //! Opens \a path, a name or the path of a journal's file. Null with a sentence for the user in
    //! \a error if that fails, or if this build cannot.
    static std::unique_ptr<JournalStream> open(const QString &path, QString *error);

    //! To wait for; it stays the stream's.
    virtual int descriptor() const = 0;
};

#endif // JOURNALSTREAM_H
