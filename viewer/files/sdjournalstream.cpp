// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "journalstream.h"
#include "jsontext.h"
#include "textfile.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QMap>

#include <systemd/sd-journal.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <sys/epoll.h>
#include <sys/eventfd.h>
#include <unistd.h>

namespace {

constexpr std::size_t s_mostOfField = 1 << 16; // bytes; what a field has more is left out

QString journalError(int code)
{
    return QString::fromLocal8Bit(std::strerror(-code));
}

struct JournalCloser
{
    void operator()(sd_journal *journal) const { sd_journal_close(journal); }
};

class SystemdJournal : public JournalStream
{
public:
    bool open(const QString &path, QString *error);
    int descriptor() const override { return m_wait.get(); }
    qint64 read(char *buffer, qint64 size, QString *error) override;

private:
    int openJournal(const QString &path);
    bool watch();
    void fill();
    void writeEntry();

    std::unique_ptr<sd_journal, JournalCloser> m_journal;
    FileDescriptor m_wait;     //!< may be read from while one of the following may
    FileDescriptor m_hasMore;  //!< while not all entries have been read
    bool m_mayHaveMore = true; //!< m_hasMore may be read from
    QByteArray m_text;         //!< of entries, to be read
    qsizetype m_textRead = 0;  //!< of it
    QString m_error;           //!< nothing if all went well
};

int SystemdJournal::openJournal(const QString &path)
{
    const QString place = isName(path) ? path.mid(8) : path;
    const QByteArray name = QFile::encodeName(place);
    sd_journal *journal = nullptr;
    int result = 0;
    if (place.isEmpty()) {
        result = sd_journal_open(&journal, SD_JOURNAL_LOCAL_ONLY);
    } else if (QFileInfo(place).isDir()) {
        result = sd_journal_open_directory(&journal, name.constData(), 0);
    } else {
        std::array<const char *, 2> names {name.constData(), nullptr};
        result = sd_journal_open_files(&journal, names.data(), 0);
    }
    m_journal.reset(result < 0 ? nullptr : journal);
    return result;
}

bool SystemdJournal::open(const QString &path, QString *error)
{
    int result = openJournal(path);
    if (result >= 0)
        result = sd_journal_set_data_threshold(m_journal.get(), s_mostOfField);
    if (result >= 0 && !watch())
        result = -errno;
    if (result < 0)
        *error = journalError(result);
    return result >= 0;
}

//! There are entries that nobody reports, those that are there already; and others later.
bool SystemdJournal::watch()
{
    m_hasMore = FileDescriptor(::eventfd(1, EFD_CLOEXEC | EFD_NONBLOCK));
    m_wait = FileDescriptor(::epoll_create1(EPOLL_CLOEXEC));
    const int changes = sd_journal_get_fd(m_journal.get());
    if (!m_hasMore.isOpen() || !m_wait.isOpen() || changes < 0)
        return false;
    epoll_event event {};
    event.events = EPOLLIN;
    return ::epoll_ctl(m_wait.get(), EPOLL_CTL_ADD, m_hasMore.get(), &event) == 0
        && ::epoll_ctl(m_wait.get(), EPOLL_CTL_ADD, changes, &event) == 0;
}

void SystemdJournal::writeEntry()
{
    uint64_t time = 0;
    if (sd_journal_get_realtime_usec(m_journal.get(), &time) < 0)
        return;
    QMap<QByteArray, QByteArrayList> fields; // which may have several values
    const void *data = nullptr;
    std::size_t size = 0;
    SD_JOURNAL_FOREACH_DATA(m_journal.get(), data, size)
    {
        const QByteArrayView field(static_cast<const char *>(data), qsizetype(size));
        const qsizetype equals = field.indexOf('=');
        if (equals > 0)
            fields[field.first(equals).toByteArray()] += field.sliced(equals + 1).toByteArray();
    }
    m_text += R"({"__REALTIME_TIMESTAMP":")" + QByteArray::number(time) + '"';
    for (auto field = fields.cbegin(); field != fields.cend(); ++field) {
        m_text += ",\"" + field.key() + "\":";
        if (field->size() == 1) {
            appendJsonValue(&m_text, field->front());
            continue;
        }
        for (qsizetype i = 0; i < field->size(); ++i) {
            m_text += i == 0 ? '[' : ',';
            appendJsonValue(&m_text, field->at(i));
        }
        m_text += ']';
    }
    m_text += "}\n";
}

//! Takes the next entry, if there is one.
void SystemdJournal::fill()
{
    m_text.clear();
    m_textRead = 0;
    int result = sd_journal_next(m_journal.get());
    // What was reported is known to the library only when it has heard of it.
    if (result == 0 && sd_journal_process(m_journal.get()) != SD_JOURNAL_NOP)
        result = sd_journal_next(m_journal.get());
    if (result > 0)
        writeEntry();
    else if (result < 0)
        m_error = journalError(result);
    const bool mayHaveMore = result > 0;
    if (m_mayHaveMore == mayHaveMore)
        return;
    m_mayHaveMore = mayHaveMore;
    eventfd_t value = 1;
    if (mayHaveMore)
        ::eventfd_write(m_hasMore.get(), value);
    else
        ::eventfd_read(m_hasMore.get(), &value);
}

qint64 SystemdJournal::read(char *buffer, qint64 size, QString *error)
{
    qint64 done = 0;
    while (done < size && m_error.isEmpty()) {
        if (m_textRead == m_text.size())
            fill();
        if (m_text.isEmpty() && !m_mayHaveMore)
            break;
        const auto count = qMin(qsizetype(size - done), m_text.size() - m_textRead);
        std::copy_n(m_text.constData() + m_textRead, count, buffer + done);
        m_textRead += count;
        done += count;
    }
    if (done > 0)
        return done;
    *error = m_error;
    return -1;
}

} // namespace

std::unique_ptr<JournalStream> JournalStream::open(const QString &path, QString *error)
{
    auto journal = std::make_unique<SystemdJournal>();
    return journal->open(path, error) ? std::move(journal) : nullptr;
}
