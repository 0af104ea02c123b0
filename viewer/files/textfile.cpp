// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "textfile.h"

#include "journalstream.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace {

using FileStatus = struct stat;

QString tr(const char *text)
{
    return QCoreApplication::translate("TextFile", text);
}

QString systemError()
{
    return QString::fromLocal8Bit(std::strerror(errno));
}

FileState toState(const FileStatus &status)
{
    return {quint64(status.st_dev), quint64(status.st_ino), quint64(status.st_size),
            qint64(status.st_mtim.tv_sec) * 1000000000 + status.st_mtim.tv_nsec};
}

// Calls a function that signals may interrupt until they do not.
template<typename Call> ssize_t uninterrupted(Call call)
{
    ssize_t result = 0;
    do {
        result = call();
    } while (result < 0 && errno == EINTR);
    return result;
}

FileDescriptor namelessFile()
{
    QByteArray name =
        QFile::encodeName(TextFile::copyFolder() + QStringLiteral("/vantix-viewer-XXXXXX"));
    FileDescriptor file(::mkostemp(name.data(), O_CLOEXEC));
    if (file.isOpen())
        ::unlink(name.constData());
    return file;
}

bool writeAll(int descriptor, const char *bytes, qint64 size)
{
    while (size > 0) {
        const ssize_t written =
            uninterrupted([&] { return ::write(descriptor, bytes, std::size_t(size)); });
        if (written < 0)
            return false;
        bytes += written;
        size -= written;
    }
    return true;
}

// Files in /proc and the like claim to be empty but are not.
bool hidesItsSize(int descriptor, const FileStatus &status)
{
    char byte = 0;
    return status.st_size == 0
        && uninterrupted([&] { return ::pread(descriptor, &byte, 1, 0); }) > 0;
}

//! The bytes that tell what kind of file it is.
QByteArray startOf(int descriptor)
{
    QByteArray bytes(Decompressor::signatureSize, Qt::Uninitialized);
    const ssize_t count = uninterrupted(
        [&] { return ::pread(descriptor, bytes.data(), std::size_t(bytes.size()), 0); });
    return bytes.first(std::max<ssize_t>(count, 0));
}

FileDescriptor openDescriptor(const QString &path)
{
    if (path == QLatin1String("-"))
        return FileDescriptor(::fcntl(STDIN_FILENO, F_DUPFD_CLOEXEC, 0));
    // Without O_NONBLOCK a pipe would wait for its writer here.
    return FileDescriptor(
        ::open(QFile::encodeName(path).constData(), O_RDONLY | O_NONBLOCK | O_CLOEXEC | O_NOCTTY));
}

} // namespace

FileDescriptor::FileDescriptor(FileDescriptor &&other) noexcept
    : m_descriptor(std::exchange(other.m_descriptor, -1))
{
}

FileDescriptor &FileDescriptor::operator=(FileDescriptor &&other) noexcept
{
    std::swap(m_descriptor, other.m_descriptor);
    return *this;
}

FileDescriptor::~FileDescriptor()
{
    if (isOpen())
        ::close(m_descriptor);
}

QString TextFile::copyFolder()
{
    // Elsewhere temporary files may be in memory, which a large text would fill.
    const QFileInfo large(QStringLiteral("/var/tmp"));
    const bool isGiven = !qEnvironmentVariableIsEmpty("TMPDIR");
    return isGiven || !large.isDir() || !large.isWritable() ? QDir::tempPath() : large.filePath();
}

std::shared_ptr<TextFile> TextFile::open(const QString &path, QString *error)
{
    if (JournalStream::isName(path))
        return openJournal(path, error);
    FileDescriptor descriptor = openDescriptor(path);
    struct stat status
    {
    };
    if (!descriptor.isOpen() || ::fstat(descriptor.get(), &status) != 0) {
        *error = systemError();
        return nullptr;
    }
    if (S_ISDIR(status.st_mode)) {
        *error = tr("It is a directory.");
        return nullptr;
    }
    const bool isInput = path == QLatin1String("-");
    if (S_ISBLK(status.st_mode) || (S_ISCHR(status.st_mode) && !isInput)) {
        *error = tr("It is a device, not a file.");
        return nullptr;
    }
    if (!S_ISREG(status.st_mode) || hidesItsSize(descriptor.get(), status))
        return openStream(std::move(descriptor), error);
    const QByteArray start = startOf(descriptor.get());
    if (JournalStream::isJournalStart(start))
        return openJournal(path, error);
    const QString compression = Decompressor::formatOf(start);
    if (!compression.isEmpty())
        return openCompressed(std::move(descriptor), compression, error);
    auto file = std::make_shared<TextFile>();
    file->m_file = std::move(descriptor);
    return file;
}

std::shared_ptr<TextFile> TextFile::openStream(FileDescriptor &&stream, QString *error)
{
    auto file = std::make_shared<TextFile>();
    file->m_file = namelessFile();
    if (!file->m_file.isOpen()) {
        *error = tr("There is no room for a temporary copy: %1").arg(systemError());
        return nullptr;
    }
    file->m_stream = std::move(stream);
    return file;
}

std::shared_ptr<TextFile> TextFile::openJournal(const QString &path, QString *error)
{
    std::unique_ptr<JournalStream> journal = JournalStream::open(path, error);
    if (!journal)
        return nullptr;
    FileDescriptor stream(::fcntl(journal->descriptor(), F_DUPFD_CLOEXEC, 0));
    std::shared_ptr<TextFile> file = openStream(std::move(stream), error);
    if (file)
        file->m_source = std::move(journal);
    return file;
}

std::shared_ptr<TextFile> TextFile::openCompressed(FileDescriptor &&compressed,
                                                   const QString &format, QString *error)
{
    std::unique_ptr<Decompressor> decompressor = Decompressor::open(compressed.get(), error);
    if (!decompressor)
        return nullptr;
    std::shared_ptr<TextFile> file = openStream(std::move(compressed), error);
    if (file) {
        file->m_compression = format;
        file->m_source = std::move(decompressor);
    }
    return file;
}

std::shared_ptr<TextFile> TextFile::decompressed(QString *error) const
{
    FileDescriptor copy(::fcntl(m_file.get(), F_DUPFD_CLOEXEC, 0));
    const QString format = Decompressor::formatOf(startOf(m_file.get()));
    return openCompressed(std::move(copy), format, error);
}

std::optional<FileState> TextFile::stateOf(const QString &path)
{
    struct stat status
    {
    };
    if (::stat(QFile::encodeName(path).constData(), &status) != 0)
        return {};
    return toState(status);
}

std::optional<FileState> TextFile::state() const
{
    struct stat status
    {
    };
    if (::fstat(m_file.get(), &status) != 0)
        return {};
    FileState state = toState(status);
    state.size += begin();
    return state;
}

void TextFile::putBehind(std::shared_ptr<const TextFile> before, quint64 size,
                         const QByteArray &joint)
{
    m_before = std::move(before);
    m_beforeSize = size;
    m_joint = joint;
}

qint64 TextFile::readAt(quint64 offset, char *buffer, qint64 size) const
{
    const qint64 before = offset < begin() ? readBefore(offset, buffer, size) : 0;
    if (before < 0 || before == size || offset + quint64(before) < begin())
        return before;
    const qint64 own = readOwn(offset + quint64(before) - begin(), buffer + before, size - before);
    return own < 0 && before > 0 ? before : own + before;
}

//! What comes before the text of this file itself.
qint64 TextFile::readBefore(quint64 offset, char *buffer, qint64 size) const
{
    qint64 done = 0;
    if (offset < m_beforeSize) {
        done = m_before->readAt(offset, buffer, std::min(size, qint64(m_beforeSize - offset)));
        if (done < 0 || done == size || offset + quint64(done) < m_beforeSize)
            return done; // it was cut off
    }
    const auto from = qsizetype(offset + quint64(done) - m_beforeSize);
    const qint64 count = std::min(size - done, qint64(m_joint.size() - from));
    std::copy_n(m_joint.data() + from, count, buffer + done);
    return done + count;
}

qint64 TextFile::readOwn(quint64 offset, char *buffer, qint64 size) const
{
    qint64 done = 0;
    while (done < size) {
        const ssize_t count = uninterrupted([&] {
            return ::pread(m_file.get(), buffer + done, std::size_t(size - done),
                           off_t(offset) + off_t(done));
        });
        if (count < 0)
            return -1;
        if (count == 0)
            break;
        done += count;
    }
    return done;
}

QByteArray TextFile::readAt(quint64 offset, qint64 size) const
{
    QByteArray bytes(qsizetype(size), Qt::Uninitialized);
    bytes.truncate(qsizetype(std::max<qint64>(readAt(offset, bytes.data(), size), 0)));
    return bytes;
}

bool TextFile::hasStreamText() const
{
    pollfd stream {m_stream.get(), POLLIN, 0};
    return uninterrupted([&] { return ::poll(&stream, 1, 0); }) > 0;
}

//! As pump(), without the copy.
qint64 TextFile::readStream(char *buffer, qint64 size, QString *error)
{
    if (m_source)
        return m_source->read(buffer, size, error);
    const ssize_t count =
        uninterrupted([&] { return ::read(m_stream.get(), buffer, std::size_t(size)); });
    if (count < 0 && errno != EAGAIN && errno != EWOULDBLOCK)
        *error = systemError();
    return count;
}

qint64 TextFile::pump(char *buffer, qint64 size, QString *error)
{
    const qint64 count = readStream(buffer, size, error);
    if (count > 0 && !writeAll(m_file.get(), buffer, count)) {
        *error = tr("The temporary copy cannot be written: %1").arg(systemError());
        return -1;
    }
    return count;
}

void TextFile::endStream()
{
    m_source.reset();
    m_stream = FileDescriptor();
}
