// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "session.h"

#include "basics/recentfiles.h"
#include "feed/feedwindow.h"
#include "windows/filewindow.h"

#include <QApplication>
#include <QJsonDocument>
#include <QJsonObject>
#include <QPixmap>
#include <QSettings>
#include <QTimer>
#include <QUrl>

#include <algorithm>
#include <cstdio>
#include <sys/resource.h>

namespace {

const QString s_geometry = QStringLiteral("windowGeometry"); // in the settings
constexpr int s_waitTime = 10;                               // ms between looks for a first frame
constexpr int s_mostWaits = 200;

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

} // namespace

Session::Session(const SessionOptions &options)
    : m_options(options)
{
}

Session::~Session() = default;

int Session::run()
{
    if (m_options.files.isEmpty())
        add(std::make_unique<FeedWindow>(m_options.rate, m_options.newRows, &m_statistics));
    for (const QString &path : m_options.files) {
        open(path);
        m_asked.insert(m_windows.back().get());
    }
    if (m_options.seconds) {
        QTimer::singleShot(qRound(*m_options.seconds * 1000), this, [this] {
            m_timeIsOver = true;
            endWhenSettled();
        });
    }
    QApplication::exec();
    // The picture comes last: taking it is a frame more.
    if (m_options.stats)
        printStats();
    const bool isSaved = m_options.screenshot.isEmpty() || saveScreenshot();
    for (const auto &window : m_windows)
        noteFailure(*window);
    return isSaved && !m_hasFailed ? 0 : 1;
}

//! A run that ends by itself has no user, and leaves his settings alone.
bool Session::isWatched() const
{
    return !m_options.seconds;
}

void Session::open(const QString &path)
{
    const QUrl url(path);
    const QString file = url.isLocalFile() ? url.toLocalFile() : path;
    if (isWatched())
        RecentFiles::add(file);
    add(std::make_unique<FileWindow>(file, m_options.format, &m_statistics));
}

void Session::add(std::unique_ptr<ViewerWindow> window)
{
    ViewerWindow *added = window.get();
    connect(added, &ViewerWindow::openRequested, this, &Session::open);
    connect(added, &ViewerWindow::settled, this, &Session::endWhenSettled);
    connect(added, &ViewerWindow::closed, this, [this, added] {
        if (isWatched())
            QSettings().setValue(s_geometry, added->saveGeometry());
        forget(added);
    });
    if (isWatched() && m_windows.empty())
        added->restoreGeometry(QSettings().value(s_geometry).toByteArray());
    if (!m_options.follow)
        added->setFollowing(false);
    m_windows.push_back(std::move(window));
    added->show();
}

//! Lets go of a closed window, unless it is the last: the run's end asks it.
void Session::forget(const ViewerWindow *window)
{
    if (m_windows.size() == 1)
        return;
    const auto it = std::find_if(m_windows.begin(), m_windows.end(),
                                 [&](const auto &held) { return held.get() == window; });
    if (it == m_windows.end())
        return;
    noteFailure(*window);
    it->release()->deleteLater();
    m_windows.erase(it);
}

//! Only what the command line names is its caller's business.
void Session::noteFailure(const ViewerWindow &window)
{
    m_hasFailed = m_hasFailed || (m_asked.contains(&window) && window.hasFailed());
}

void Session::endWhenSettled()
{
    const bool isSettled = std::all_of(m_windows.begin(), m_windows.end(),
                                       [](const auto &window) { return window->isSettled(); });
    if (!m_timeIsOver || !isSettled)
        return;
    // However short the time: what was opened shall have been on the screen, unless
    // the window system shows nothing at all.
    const bool isPainted = std::all_of(m_windows.begin(), m_windows.end(),
                                       [](const auto &window) { return window->isPainted(); });
    if (isPainted || m_waits == s_mostWaits) {
        QApplication::exit(); // quit() would close the windows, which are asked later
        return;
    }
    ++m_waits;
    QTimer::singleShot(s_waitTime, this, &Session::endWhenSettled);
}

bool Session::saveScreenshot() const
{
    if (m_windows.front()->grab().save(m_options.screenshot, "PNG"))
        return true;
    std::fprintf(stderr, "vantix-viewer: %s cannot be written.\n",
                 qUtf8Printable(m_options.screenshot));
    return false;
}

void Session::printStats() const
{
    qint64 rows = 0;
    for (const auto &window : m_windows)
        rows += window->rows();
    const QJsonObject stats {
        {QStringLiteral("rows"), rows},
        {QStringLiteral("frames"), m_statistics.frames()},
        {QStringLiteral("frame_ms_p50"), m_statistics.percentile(50)},
        {QStringLiteral("frame_ms_p99"), m_statistics.percentile(99)},
        {QStringLiteral("peak_rss_bytes"), peakResidentBytes()},
    };
    std::printf("%s\n", QJsonDocument(stats).toJson(QJsonDocument::Compact).constData());
    std::fflush(stdout);
}
