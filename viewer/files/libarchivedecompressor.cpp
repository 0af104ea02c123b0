// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "decompressor.h"

#include <QCoreApplication>

#include <algorithm>
#include <archive.h>
#include <array>
#include <cerrno>
#include <unistd.h>

namespace {

class LibArchiveDecompressor : public Decompressor
{
public:
    explicit LibArchiveDecompressor(int descriptor)
        : m_descriptor(descriptor)
        , m_archive(archive_read_new())
    {
    }
    ~LibArchiveDecompressor() override { archive_read_free(m_archive); }

    bool open(QString *error);
    qint64 read(char *buffer, qint64 size, QString *error) override;

private:
    static la_ssize_t readCompressed(archive *archive, void *self, const void **bytes);
    bool takeBlock();
    QString problem() const;

    const int m_descriptor;             //!< of the compressed file
    off_t m_position = 0;               //!< in it
    std::array<char, 65536> m_input {}; //!< read from it
    archive *const m_archive;           //!< owned
    QByteArrayView m_block;             //!< text not taken yet; in the archive's memory
    bool m_isAtEnd = false;             //!< there is no more text
    QString m_problem;                  //!< why there is no more
};

// Formats that need other programs are left out: no file shall start any.
bool LibArchiveDecompressor::open(QString *error)
{
    archive_read_support_filter_gzip(m_archive);
    archive_read_support_filter_xz(m_archive);
    archive_read_support_filter_zstd(m_archive);
    archive_read_support_filter_bzip2(m_archive);
    archive_read_support_format_raw(m_archive);
    archive_read_support_format_empty(m_archive);
    archive_entry *entry = nullptr;
    int status = archive_read_open(m_archive, this, nullptr, readCompressed, nullptr);
    if (status == ARCHIVE_OK)
        status = archive_read_next_header(m_archive, &entry);
    m_isAtEnd = status == ARCHIVE_EOF;
    // What begins like a compressed file and is none would be read as it stands.
    const bool isDecompressed = archive_filter_count(m_archive) > 1;
    if (isDecompressed && (m_isAtEnd || status >= ARCHIVE_WARN))
        return true;
    *error = problem();
    return false;
}

la_ssize_t LibArchiveDecompressor::readCompressed(archive *archive, void *self, const void **bytes)
{
    auto *const me = static_cast<LibArchiveDecompressor *>(self);
    ssize_t count = 0;
    do {
        count = ::pread(me->m_descriptor, me->m_input.data(), me->m_input.size(), me->m_position);
    } while (count < 0 && errno == EINTR);
    if (count < 0)
        archive_set_error(archive, errno, "read error");
    *bytes = me->m_input.data();
    me->m_position += std::max<ssize_t>(count, 0);
    return count;
}

QString LibArchiveDecompressor::problem() const
{
    const char *const text = archive_error_string(m_archive);
    if (!text)
        return QCoreApplication::translate("Decompressor", "It is damaged or cut off.");
    return QCoreApplication::translate("Decompressor", "It is damaged or cut off: %1")
        .arg(QString::fromLocal8Bit(text));
}

//! Returns false if there is none.
bool LibArchiveDecompressor::takeBlock()
{
    if (m_isAtEnd)
        return false;
    const void *bytes = nullptr;
    std::size_t size = 0;
    la_int64_t offset = 0;
    const int status = archive_read_data_block(m_archive, &bytes, &size, &offset);
    m_isAtEnd = status == ARCHIVE_EOF || status < ARCHIVE_WARN;
    if (m_isAtEnd && status != ARCHIVE_EOF)
        m_problem = problem();
    else
        m_block = QByteArrayView(static_cast<const char *>(bytes), qsizetype(size));
    return !m_isAtEnd;
}

//! What came before a damage is told first.
qint64 LibArchiveDecompressor::read(char *buffer, qint64 size, QString *error)
{
    qint64 done = 0;
    while (done < size && (!m_block.isEmpty() || takeBlock())) {
        const qsizetype count = std::min(m_block.size(), qsizetype(size - done));
        std::copy_n(m_block.data(), count, buffer + done);
        m_block = m_block.sliced(count);
        done += count;
    }
    if (done > 0 || m_problem.isEmpty())
        return done;
    *error = m_problem;
    return -1;
}

} // namespace

std::unique_ptr<Decompressor> Decompressor::open(int descriptor, QString *error)
{
    auto opened = std::make_unique<LibArchiveDecompressor>(descriptor);
    if (!opened->open(error))
        return nullptr;
    return opened;
}

QString Decompressor::libraryName()
{
    return QString::fromLatin1(::archive_version_string());
}
