// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef TEXTFILE_H
#define TEXTFILE_H

#include "decompressor.h"

#include <QByteArray>
#include <QString>

#include <memory>
#include <optional>

//! A file descriptor that closes itself.
class FileDescriptor
{
public:
    explicit FileDescriptor(int descriptor = -1)
        : m_descriptor(descriptor)
    {
    }
    FileDescriptor(FileDescriptor &&other) noexcept;
    FileDescriptor &operator=(FileDescriptor &&other) noexcept;
    ~FileDescriptor();

    bool isOpen() const { return m_descriptor >= 0; }
    int get() const { return m_descriptor; }

private:
    Q_DISABLE_COPY(FileDescriptor)

    int m_descriptor; //!< owned; −1 for none
};

//! Which file it is, and what tells that it changed.
struct FileState
{
    quint64 device = 0;  //!< with inode: the file's identity
    quint64 inode = 0;   //!< unique on the device while the file exists
    quint64 size = 0;    //!< bytes
    qint64 modified = 0; //!< last change, nanoseconds since 1970

    bool isSameFile(const FileState &other) const
    {
        return device == other.device && inode == other.inode;
    }
};

/*!
 * \brief Text that can be read at any position.
 *
 * Either a regular file or the copy of a stream: pipes, terminals, files that do not know
 * their size (as in /proc) and what compressed files hold are copied to a temporary file
 * that has no name, by pump(); so are the journals of systemd. Opening never waits for a pipe's
 * writer.
 *
 * readAt() may be called by several threads at a time, and while another one pumps.
 */
class TextFile
{
public:
    //! Opens \a path; "-" is the standard input, "journal:" begins the name of a journal. Null with
    //! a sentence for the user in \a error if that fails. Directories and devices are refused.
    static std::shared_ptr<TextFile> open(const QString &path, QString *error);

    //! What this file holds when it is decompressed. Null with a sentence for the user in
    //! \a error if that fails.
    std::shared_ptr<TextFile> decompressed(QString *error) const;

    //! Lets the first \a size bytes of \a before and then \a joint come first in this file:
    //! all positions and sizes count them. To be called once, before anybody else has this file.
    void putBehind(std::shared_ptr<const TextFile> before, quint64 size, const QByteArray &joint);
    //! How many files there are that come first.
    int filesBefore() const { return m_before ? m_before->filesBefore() + 1 : 0; }

    //! What the file is compressed with that this is the text of, if it is.
    QString compression() const { return m_compression; }

    //! Where the copies of streams are: $TMPDIR, or a folder for large temporary files.
    static QString copyFolder();

    //! State of the file of that name, if there is one.
    static std::optional<FileState> stateOf(const QString &path);

    //! State of the open file, or of a stream's copy. Its size is that of the whole text.
    std::optional<FileState> state() const;

    //! Reads up to \a size bytes from \a offset. Fewer at the end of the file, none
    //! behind it; −1 if reading fails.
    qint64 readAt(quint64 offset, char *buffer, qint64 size) const;

    //! The same, as an array of what was there; \a size is at most a few MB.
    QByteArray readAt(quint64 offset, qint64 size) const;

    //! The stream to wait for before pump(), or −1 for a regular file that is not
    //! compressed.
    int streamDescriptor() const { return m_stream.get(); }

    //! Whether pump() would find text or the stream's end now.
    bool hasStreamText() const;

    //! Moves what the stream has, up to \a size bytes, to the copy, and leaves it
    //! in \a buffer too. 0 at the stream's end, −1 if there is nothing yet or, with
    //! \a error set, if it failed.
    qint64 pump(char *buffer, qint64 size, QString *error);

    //! Lets go of the stream, which is at its end: there is none any more.
    void endStream();

private:
    static std::shared_ptr<TextFile> openStream(FileDescriptor &&stream, QString *error);
    static std::shared_ptr<TextFile> openJournal(const QString &path, QString *error);
    static std::shared_ptr<TextFile> openCompressed(FileDescriptor &&compressed,
                                                    const QString &format, QString *error);
    qint64 readStream(char *buffer, qint64 size, QString *error);
    //! Where the text of this file itself begins.
    quint64 begin() const { return m_beforeSize + quint64(m_joint.size()); }
    qint64 readOwn(quint64 offset, char *buffer, qint64 size) const;
    qint64 readBefore(quint64 offset, char *buffer, qint64 size) const;

    FileDescriptor m_file;                    //!< what is read
    FileDescriptor m_stream;                  //!< where it comes from, if not a regular file
    QString m_compression;                    //!< see compression()
    std::unique_ptr<ByteStream> m_source;     //!< reads m_stream if that has to be decoded
    std::shared_ptr<const TextFile> m_before; //!< whose text comes first, if any
    quint64 m_beforeSize = 0;                 //!< bytes of m_before that count
    QByteArray m_joint;                       //!< between that text and this
};

#endif // TEXTFILE_H
