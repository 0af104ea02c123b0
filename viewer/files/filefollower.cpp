// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "filefollower.h"

#include "recordscanner.h"
#include "rotatedfiles.h"
#include "textsample.h"

#include <QElapsedTimer>
#include <QFileInfo>

#include <utility>

namespace {

constexpr qint64 s_bufferSize = 1 << 16;   // bytes read at a time, which stay in the cache
constexpr qsizetype s_signatureSize = 256; // bytes remembered at either end
constexpr int s_sliceTime = 40;            // ms
constexpr int s_checkTime = 250;           // ms

} // namespace

FileFollower::FileFollower(const QString &path, const FormatRequest &request, qint64 maximumLines)
    : m_path(path)
    , m_request(request)
    , m_maximumLines(maximumLines)
{
    m_checkTimer.setInterval(s_checkTime);
    m_soonTimer.setInterval(s_sliceTime);
    m_soonTimer.setSingleShot(true);
    m_sliceTimer.setSingleShot(true);
    connect(&m_checkTimer, &QTimer::timeout, this, &FileFollower::checkFile);
    connect(&m_soonTimer, &QTimer::timeout, this, &FileFollower::checkFile);
    connect(&m_sliceTimer, &QTimer::timeout, this, &FileFollower::indexSlice);
}

FollowerNews FileFollower::takeNews()
{
    return m_news.take([](const FollowerNews &taken) {
        FollowerNews next;
        next.file = taken.file;
        next.size = taken.size;
        next.encodingName = taken.encodingName;
        next.compression = taken.compression;
        next.activity = taken.activity;
        next.missing = taken.missing;
        next.olderLines = taken.olderLines;
        next.leftOut = taken.leftOut;
        next.error = taken.error;
        return next;
    });
}

//! Lets \a change alter the news, and announces them.
template<typename Change> void FileFollower::tell(Change change)
{
    if (m_news.tell(change))
        Q_EMIT news();
}

void FileFollower::start()
{
    m_buffer.resize(s_bufferSize);
    begin(Restart::Opened);
}

void FileFollower::begin(Restart reason)
{
    m_coming.clear();
    if (m_request.hasOlderFiles && m_path != QLatin1String("-"))
        m_coming = olderFiles(m_path);
    m_coming.append(m_path);
    m_leftOut.clear();
    QString error;
    if (std::shared_ptr<TextFile> file = openNext(&error))
        follow(std::move(file), reason);
    else if (m_file) // which has lost its name meanwhile
        follow(std::exchange(m_file, nullptr), reason);
    else
        fail(error);
}

//! The text is another one than before.
void FileFollower::beginAnew(Restart reason)
{
    if (m_request.hasOlderFiles)
        begin(reason);
    else
        follow(std::exchange(m_file, nullptr), reason);
}

//! Opens the next one of the files that come. Null with an \a error if that is the last one, and
//! cannot be opened.
std::shared_ptr<TextFile> FileFollower::openNext(QString *error)
{
    std::shared_ptr<TextFile> file;
    while (!file && !m_coming.isEmpty()) {
        m_filePath = m_coming.takeFirst();
        file = TextFile::open(m_filePath, error);
        if (!file && !m_coming.isEmpty())
            m_leftOut.append(m_filePath);
    }
    m_comingSize = 0;
    for (const QString &path : std::as_const(m_coming))
        m_comingSize += quint64(QFileInfo(path).size());
    return file;
}

void FileFollower::watch()
{
    if (m_file->streamDescriptor() >= 0)
        watchStream(m_file->streamDescriptor());
    else if (m_coming.isEmpty())
        watchFile();
}

void FileFollower::watchFile()
{
    m_checkTimer.start();
    if (m_path == QLatin1String("-") || m_watcher)
        return;
    m_watcher = std::make_unique<QFileSystemWatcher>();
    m_watcher->addPath(m_path);
    connect(m_watcher.get(), &QFileSystemWatcher::fileChanged, this, &FileFollower::checkSoon);
}

void FileFollower::dropStream()
{
    if (!m_notifier)
        return;
    m_notifier->setEnabled(false);
    m_notifier.release()->deleteLater(); // it may be the one that called
}

void FileFollower::watchStream(int descriptor)
{
    dropStream();
    m_notifier = std::make_unique<QSocketNotifier>(descriptor, QSocketNotifier::Read);
    connect(m_notifier.get(), &QSocketNotifier::activated, this, &FileFollower::pumpStream);
}

//! Begins \a file from its start; what was indexed before is void.
void FileFollower::follow(std::shared_ptr<TextFile> file, Restart reason)
{
    m_file = std::move(file);
    beginScan({}, 0);
    m_newFormat.reset();
    m_compression = m_file->compression();
    m_firstSlice = true;
    const std::optional<FileState> state = m_file->state();
    tell([&](FollowerNews &news) {
        // A first opening that nobody has heard of stays one.
        if (news.restart != Restart::Opened)
            news.restart = reason;
        news.file = m_file;
        news.size = state ? state->size : 0;
        news.format.reset();
        news.encodingName.clear();
        news.compression = m_compression;
        news.olderLines = m_coming.isEmpty() ? 0 : -1;
        news.leftOut = m_leftOut;
        news.batches.clear();
    });
    watch();
    continueIndexing();
}

//! Goes on with the next file. Of those that come only the newest may be missing.
void FileFollower::endFile()
{
    QString error;
    std::shared_ptr<TextFile> next = openNext(&error);
    dropStream();
    m_file->endStream();
    if (next) {
        join(std::move(next));
        return;
    }
    watchFile();
    m_activity = Activity::Following;
    publish();
    tell([&](FollowerNews &news) { news.olderLines = m_scanner->lines(); });
}

//! Lets \a next follow m_file, all of which has been read.
void FileFollower::join(std::shared_ptr<TextFile> next)
{
    const QByteArray between = joint();
    next->putBehind(m_file, m_position, between);
    m_file = std::move(next);
    m_compression = m_file->compression();
    m_wasRead = false;
    if (!between.isEmpty())
        scan(between.constData(), between.size());
    publish();
    tell([&](FollowerNews &news) {
        news.file = m_file;
        news.olderLines = m_coming.isEmpty() ? m_scanner->lines() : -1;
    });
    watch();
    if (m_activity != Activity::Full)
        continueIndexing();
}

//! What ends the last line, if nothing does.
QByteArray FileFollower::joint() const
{
    const QByteArray end = m_format.encoding.encode(QLatin1Char(m_format.lineEnd));
    return m_position == 0 || m_tail.endsWith(end) ? QByteArray() : end;
}

//! The next text scanned is the first.
void FileFollower::beginScan(const TextFormat &format, quint64 start)
{
    m_format = format;
    m_textStart = start;
    m_scanner = makeScanner(format, start, m_maximumLines);
    m_position = 0;
    m_head.clear();
    m_tail.clear();
}

bool FileFollower::isSampleComplete() const
{
    return m_position >= TextSample::maximumBytes || m_scanner->lines() >= TextSample::maximumLines;
}

//! Looks at the beginning of the text. If that is of another format than before, what was
//! scanned is void.
void FileFollower::chooseFormat()
{
    const QByteArray sample = m_file->readAt(0, TextSample::maximumBytes);
    TextFormat format = TextSample(sample).format(m_request);
    const auto start = quint64(format.encoding.markLength(sample));
    if (format != m_format || start != m_textStart) {
        beginScan(format, start);
        m_newFormat = format;
    }
    m_format = std::move(format); // the encoding's name may be another
}

void FileFollower::continueIndexing()
{
    // What a stream already has belongs to its first news.
    m_activity = Activity::Indexing;
    if (m_file->streamDescriptor() >= 0 && m_file->hasStreamText()) {
        pumpStream();
        return;
    }
    setActivity(Activity::Indexing);
    if (m_file->streamDescriptor() < 0)
        m_sliceTimer.start(0);
}

void FileFollower::stop()
{
    const bool isActive = m_activity == Activity::Indexing || m_activity == Activity::Following;
    if (!isActive)
        return;
    m_sliceTimer.stop();
    if (m_notifier)
        m_notifier->setEnabled(false);
    setActivity(Activity::Stopped);
}

void FileFollower::resume()
{
    if (m_activity != Activity::Stopped)
        return;
    if (m_notifier)
        m_notifier->setEnabled(true);
    else if (beganAnew())
        return;
    continueIndexing();
}

void FileFollower::finish()
{
    for (QTimer *timer : {&m_checkTimer, &m_soonTimer, &m_sliceTimer})
        timer->stop();
    m_watcher.reset();
    m_notifier.reset();
    m_news.hush();
}

//! Adds text that follows what was scanned before.
void FileFollower::scan(const char *bytes, qint64 size)
{
    if (m_head.size() < s_signatureSize)
        m_head.append(bytes, qMin<qsizetype>(size, s_signatureSize - m_head.size()));
    const qsizetype fresh = qMin<qsizetype>(size, s_signatureSize);
    m_tail = m_tail.right(s_signatureSize - fresh) + QByteArray(bytes + size - fresh, fresh);
    const qint64 mark = qMin(size, qint64(m_textStart - qMin(m_textStart, m_position)));
    m_position += quint64(size);
    if (!m_scanner->scan(bytes + mark, std::size_t(size - mark)))
        m_activity = Activity::Full;
}

//! Scans what was pumped, which the buffer holds, or all there is if the format changed.
void FileFollower::scanCopy(qint64 pumped)
{
    recogniseCompression();
    if (isCopyCompressed())
        return;
    if (isSampleComplete()) {
        scan(m_buffer.data(), pumped);
        return;
    }
    chooseFormat();
    while (pumped > 0 && m_activity == Activity::Indexing) {
        pumped = m_file->readAt(m_position, m_buffer.data(), s_bufferSize);
        if (pumped > 0)
            scan(m_buffer.data(), pumped);
    }
}

//! Reads on for a while, and tells what it found.
void FileFollower::indexSlice()
{
    if (m_activity != Activity::Indexing)
        return;
    QElapsedTimer timer;
    timer.start();
    if (!isSampleComplete())
        chooseFormat();
    qint64 count = 0;
    do {
        count = m_file->readAt(m_position, m_buffer.data(), s_bufferSize);
        if (count <= 0)
            break;
        scan(m_buffer.data(), count);
    } while (!m_firstSlice && m_activity == Activity::Indexing && timer.elapsed() < s_sliceTime);
    m_firstSlice = false;
    if (count < 0) {
        fail(tr("It cannot be read."));
        return;
    }
    if (count < s_bufferSize && m_activity == Activity::Indexing) {
        if (beganAnew())
            return;
        if (!m_coming.isEmpty()) {
            endFile();
            return;
        }
        rememberModified();
        m_activity = Activity::Following;
    }
    publish();
    if (m_activity == Activity::Indexing)
        m_sliceTimer.start(0);
}

//! The time of change counts for the text indexed only if there is no more text;
//! else the next check finds the file longer and comes here again.
void FileFollower::rememberModified()
{
    const std::optional<FileState> state = m_file->state();
    if (state && state->size <= m_position)
        m_modified = state->modified;
}

void FileFollower::pumpStream()
{
    if (m_activity != Activity::Indexing)
        return;
    QString error;
    const qint64 count = m_file->pump(m_buffer.data(), s_bufferSize, &error);
    if (count > 0)
        scanCopy(count);
    const bool isAtEnd = count == 0 || !error.isEmpty();
    if (isAtEnd && !m_coming.isEmpty() && m_activity == Activity::Indexing) {
        if (!error.isEmpty())
            m_leftOut.append(m_filePath);
        endFile();
        return;
    }
    if (!error.isEmpty())
        fail(error);
    else if (count == 0)
        endStream();
    if (m_activity != Activity::Indexing)
        m_notifier->setEnabled(false);
    publish();
}

//! Whether the copy is of a compressed stream, which is no text.
bool FileFollower::isCopyCompressed() const
{
    return !m_compression.isEmpty() && m_file->compression().isEmpty();
}

//! The first bytes of a stream may come one by one, and may have been taken for text.
void FileFollower::recogniseCompression()
{
    if (!m_compression.isEmpty() || m_position >= Decompressor::signatureSize)
        return;
    m_compression = Decompressor::formatOf(m_file->readAt(0, Decompressor::signatureSize));
    if (!isCopyCompressed())
        return;
    beginScan({}, 0);
    m_newFormat.emplace();
}

//! A stream that was compressed is followed by what it holds.
void FileFollower::endStream()
{
    if (!isCopyCompressed()) {
        m_scanner->finish();
        m_activity = Activity::Ended;
        return;
    }
    QString error;
    std::shared_ptr<TextFile> text = m_file->decompressed(&error);
    if (!text) {
        fail(error);
        return;
    }
    follow(std::move(text), Restart::Opened);
}

//! Puts what was scanned into the news.
void FileFollower::publish()
{
    LineBatch batch = m_scanner->takeBatch();
    const std::optional<FileState> state = m_file->state();
    tell([&](FollowerNews &news) {
        if (m_newFormat) {
            news.format = std::exchange(m_newFormat, std::nullopt);
            news.batches.clear();
        }
        news.leftOut = m_leftOut;
        news.compression = m_compression;
        news.encodingName = isCopyCompressed() ? QString() : m_format.encoding.name();
        news.batches.push_back(std::move(batch));
        news.activity = m_activity;
        news.size = (state ? state->size : m_position) + m_comingSize;
    });
}

void FileFollower::checkSoon()
{
    if (!m_soonTimer.isActive())
        m_soonTimer.start();
}

void FileFollower::checkFile()
{
    if (!m_coming.isEmpty())
        return; // it is not the file of that name yet
    if (m_path != QLatin1String("-"))
        checkPath();
    checkContents();
}

//! Notices that the file was deleted, came back, or is another one.
void FileFollower::checkPath()
{
    const std::optional<FileState> named = TextFile::stateOf(m_path);
    const std::optional<FileState> open = m_file->state();
    bool isHere = named && open && named->isSameFile(*open);
    const bool isRefused = named && m_refused && named->isSameFile(*m_refused);
    if (named && !isHere && !isRefused) {
        if (m_request.hasOlderFiles && !isLeft())
            return;
        QString error;
        std::shared_ptr<TextFile> file = TextFile::open(m_path, &error);
        isHere = file && file->streamDescriptor() < 0;
        if (isHere)
            takeName(std::move(file));
        else if (file)
            m_refused = named;
    }
    if (isHere)
        m_wasRead = false;
    if (isHere && !m_watcher->files().contains(m_path))
        m_watcher->addPath(m_path);
    if (m_missing == !isHere)
        return;
    m_missing = !isHere;
    tell([&](FollowerNews &news) { news.missing = !isHere; });
}

//! \a file has the name now that m_file had.
void FileFollower::takeName(std::shared_ptr<TextFile> file)
{
    if (m_request.hasOlderFiles)
        join(std::move(file));
    else
        follow(std::move(file), Restart::Replaced);
}

//! Whether all of m_file has been read, now and at the last look: who writes to a file that was
//! renamed goes on for a while.
bool FileFollower::isLeft()
{
    const std::optional<FileState> state = m_file->state();
    const bool isRead = m_activity == Activity::Following && state && state->size <= m_position;
    return std::exchange(m_wasRead, isRead) && isRead;
}

//! Notices that the open file grew, shrank or was rewritten.
void FileFollower::checkContents()
{
    const std::optional<FileState> state = m_file->state();
    if (!state)
        return;
    if (state->size < m_position) {
        beginAnew(Restart::Truncated);
        return;
    }
    if (m_activity != Activity::Following)
        return;
    const bool isLonger = state->size > m_position;
    if (!isLonger && state->modified == m_modified)
        return;
    m_modified = state->modified;
    if (beganAnew())
        return;
    if (isLonger)
        continueIndexing();
    else
        tell([](FollowerNews &news) { news.touched = true; });
}

//! Begins anew if the file holds other text than what was indexed. Nobody looked while that was
//! stopped, or still going on.
bool FileFollower::beganAnew()
{
    if (isUnchanged())
        return false;
    beginAnew(Restart::Rewritten);
    return true;
}

//! Whether the ends of the indexed part still hold the same text.
bool FileFollower::isUnchanged() const
{
    const quint64 tailAt = m_position - quint64(m_tail.size());
    return m_file->readAt(0, m_head.size()) == m_head
        && m_file->readAt(tailAt, m_tail.size()) == m_tail;
}

void FileFollower::fail(const QString &error)
{
    m_activity = Activity::Failed;
    tell([&](FollowerNews &news) {
        news.activity = Activity::Failed;
        news.error = error;
    });
}

void FileFollower::setActivity(Activity activity)
{
    m_activity = activity;
    tell([&](FollowerNews &news) { news.activity = activity; });
}
