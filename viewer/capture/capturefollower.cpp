// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "capturefollower.h"

#include <QElapsedTimer>

#include <algorithm>
#include <array>
#include <utility>

namespace {

constexpr std::size_t s_packetsAtOnce = 4096;
constexpr int s_walkTime = 40;            // ms of a slice
constexpr int s_lookTime = 100;           // ms between looks at a file
constexpr qint64 s_rememberedBytes = 256; // at the start
constexpr qint64 s_pumpedBytes = 1 << 16; // at a time

} // namespace

CaptureFollower::CaptureFollower(const QString &path, qint64 maximumPackets)
    : m_path(path)
    , m_maximumPackets(maximumPackets)
{
    m_checkTimer.setInterval(s_lookTime);
    m_sliceTimer.setSingleShot(true);
    connect(&m_checkTimer, &QTimer::timeout, this, &CaptureFollower::checkFile);
    connect(&m_sliceTimer, &QTimer::timeout, this, &CaptureFollower::indexSlice);
}

CaptureNews CaptureFollower::takeNews()
{
    return m_news.take([](const CaptureNews &taken) {
        CaptureNews next;
        next.file = taken.file;
        next.sections = taken.sections;
        next.size = taken.size;
        next.indexed = taken.indexed;
        next.activity = taken.activity;
        next.isIncomplete = taken.isIncomplete;
        next.isMissing = taken.isMissing;
        next.error = taken.error;
        return next;
    });
}

//! Lets \a change alter the news, and announces them.
template<typename Change> void CaptureFollower::tell(Change change)
{
    if (m_news.tell(change))
        Q_EMIT news();
}

void CaptureFollower::start()
{
    QString error;
    if (std::shared_ptr<TextFile> file = TextFile::open(m_path, &error))
        follow(std::move(file));
    else
        fail(error);
}

void CaptureFollower::finish()
{
    m_checkTimer.stop();
    m_sliceTimer.stop();
    m_notifier.reset();
    m_news.hush();
}

//! Begins \a file from its start.
void CaptureFollower::follow(std::shared_ptr<TextFile> file)
{
    m_file = std::move(file);
    m_walk.emplace(m_file);
    m_packets = 0;
    m_head.clear();
    m_isIncomplete = false;
    m_isStreamEnded = false;
    m_activity = Activity::Indexing;
    tell([&](CaptureNews &news) {
        news.hasBegunAnew = true;
        news.file = m_file;
        news.places.clear();
        news.sections.clear();
        news.activity = m_activity;
    });
    if (m_file->streamDescriptor() >= 0) {
        watchStream();
        return;
    }
    m_checkTimer.start();
    m_sliceTimer.start(0);
}

void CaptureFollower::watchStream()
{
    m_notifier =
        std::make_unique<QSocketNotifier>(m_file->streamDescriptor(), QSocketNotifier::Read);
    connect(m_notifier.get(), &QSocketNotifier::activated, this, &CaptureFollower::pumpSlice);
}

//! Copies what the stream has for a while; false at its end.
bool CaptureFollower::pump(QString *error)
{
    std::array<char, s_pumpedBytes> buffer;
    QElapsedTimer timer;
    timer.start();
    qint64 count = 0;
    do {
        count = m_file->pump(buffer.data(), s_pumpedBytes, error);
    } while (count > 0 && m_file->hasStreamText() && timer.elapsed() < s_walkTime);
    return count != 0 && error->isEmpty();
}

void CaptureFollower::pumpSlice()
{
    QString error;
    m_isStreamEnded = !pump(&error);
    if (!error.isEmpty()) {
        m_notifier->setEnabled(false);
        fail(error);
        return;
    }
    m_activity = Activity::Indexing;
    indexSlice();
    const bool wantsMore = m_activity == Activity::Indexing || m_activity == Activity::Following;
    m_notifier->setEnabled(wantsMore && !m_isStreamEnded);
}

//! Looks at what comes for a while, and tells what it found.
void CaptureFollower::indexSlice()
{
    if (m_activity != Activity::Indexing)
        return;
    if (m_head.size() < s_rememberedBytes)
        m_head = m_file->readAt(0, s_rememberedBytes);
    walk();
    if (m_activity == Activity::Indexing)
        m_sliceTimer.start(0);
}

void CaptureFollower::walk()
{
    QElapsedTimer timer;
    timer.start();
    std::vector<quint64> places;
    CaptureWalk::Stop stop = CaptureWalk::Stop::Enough;
    const auto most = [&] {
        const qint64 left = m_maximumPackets - m_packets - qint64(places.size());
        return std::min(s_packetsAtOnce, std::size_t(left));
    };
    while (stop == CaptureWalk::Stop::Enough && most() > 0 && timer.elapsed() < s_walkTime)
        stop = m_walk->walk(most(), &places);
    const bool isFull = most() == 0;
    m_packets += qint64(places.size());
    m_isIncomplete = stop == CaptureWalk::Stop::Incomplete;
    m_activity = isFull ? Activity::Full : activityAfter(stop);
    publish(std::move(places));
}

CaptureNews::Activity CaptureFollower::activityAfter(CaptureWalk::Stop stop) const
{
    switch (stop) {
    case CaptureWalk::Stop::Enough:
        return Activity::Indexing;
    case CaptureWalk::Stop::Damaged:
        return Activity::Damaged;
    case CaptureWalk::Stop::End:
    case CaptureWalk::Stop::Incomplete:
        break;
    }
    return m_isStreamEnded ? Activity::Ended : Activity::Following;
}

void CaptureFollower::publish(std::vector<quint64> &&places)
{
    const std::optional<FileState> state = m_file->state();
    m_sizeSeen = m_walk->sizeSeen();
    tell([&](CaptureNews &news) {
        if (!places.empty())
            news.places.push_back(std::move(places));
        news.sections = m_walk->sections();
        news.size = state ? state->size : m_walk->position();
        news.indexed = m_walk->position();
        news.activity = m_activity;
        news.isIncomplete = m_isIncomplete;
    });
}

void CaptureFollower::checkFile()
{
    if (m_path != QLatin1String("-"))
        checkPath();
    const std::optional<FileState> state = m_file->state();
    if (!state || m_file->streamDescriptor() >= 0)
        return;
    if (hasBegunAnew(*state)) {
        follow(std::exchange(m_file, nullptr));
        return;
    }
    if (m_activity != Activity::Following || state->size == m_sizeSeen)
        return;
    m_activity = Activity::Indexing;
    indexSlice();
}

bool CaptureFollower::hasBegunAnew(const FileState &state) const
{
    return state.size < m_walk->position() || m_file->readAt(0, m_head.size()) != m_head;
}

//! Notices that the file was deleted, came back, or is another one.
void CaptureFollower::checkPath()
{
    const std::optional<FileState> named = TextFile::stateOf(m_path);
    const std::optional<FileState> open = m_file->state();
    bool isHere = named && open && named->isSameFile(*open);
    if (named && !isHere && !(m_refused && named->isSameFile(*m_refused))) {
        QString error;
        std::shared_ptr<TextFile> file = TextFile::open(m_path, &error);
        isHere = file && file->streamDescriptor() < 0;
        if (isHere)
            follow(std::move(file));
        else if (file)
            m_refused = named;
    }
    if (m_isMissing == !isHere)
        return;
    m_isMissing = !isHere;
    tell([&](CaptureNews &news) { news.isMissing = m_isMissing; });
}

void CaptureFollower::fail(const QString &error)
{
    m_activity = Activity::Failed;
    tell([&](CaptureNews &news) {
        news.activity = Activity::Failed;
        news.error = error;
    });
}
