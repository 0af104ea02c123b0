// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "session.h"

#include "basics/endsignals.h"
#include "basics/memory.h"
#include "basics/recentfiles.h"
#include "capture/capturewalk.h"
#include "capture/capturewindow.h"
#include "capture/packetsource.h"
#include "feed/feedwindow.h"
#include "windows/filewindow.h"
#include "windows/tabwindow.h"
#include "windows/welcomewindow.h"

#include <QApplication>
#include <QJsonDocument>
#include <QJsonObject>
#include <QPixmap>
#include <QTimer>
#include <QUrl>

#include <algorithm>
#include <cstdio>
#include <utility>

namespace {

constexpr int s_waitTime = 10; // ms between looks for a first frame
constexpr int s_mostWaits = 200;

} // namespace

Session::Session(const SessionOptions &options)
    : m_options(options)
{
}

Session::~Session() = default;

int Session::run()
{
    EndSignals endSignals;
    connect(&endSignals, &EndSignals::received, this, &Session::quit);
    connect(qGuiApp, &QGuiApplication::commitDataRequest, this, &Session::save);
    connect(&m_tabs, &TabWindows::created, this, &Session::windowCreated);
    connect(&m_tabs, &TabWindows::aboutToClose, this, &Session::save);
    begin();
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

void Session::begin()
{
    const QList<SavedWindow> saved = isWatched() ? SavedSession::load() : QList<SavedWindow>();
    if (!saved.isEmpty())
        m_geometry = saved.first().geometry;
    for (const QString &path : m_options.files)
        m_asked.insert(open(path, m_options.format));
    if (!m_windows.empty()) {
        m_tabs.windows().first()->setCurrent(m_windows.front().get());
        return;
    }
    if (m_options.hasFeed || !isWatched())
        openFeed();
    else
        restore(saved);
    if (m_windows.empty())
        add(std::make_unique<WelcomeWindow>(&m_statistics), nullptr);
}

void Session::restore(const QList<SavedWindow> &windows)
{
    const FormatRequest &asked = m_options.format;
    const bool isAnyAsked = asked != FormatRequest();
    QList<ViewerWindow *> inFront;
    for (const SavedWindow &saved : windows) {
        m_geometry = saved.geometry;
        QList<ViewerWindow *> pages;
        for (const PageState &state : saved.pages) {
            pages.append(open(state.path, isAnyAsked ? asked : state.format, pages.value(0)));
            if (pages.size() == 1)
                m_tabs.detach(pages.first());
            pages.last()->restore(state);
        }
        if (!pages.isEmpty())
            inFront.append(pages.at(saved.current));
    }
    for (ViewerWindow *page : inFront)
        m_tabs.windowOf(page)->setCurrent(page);
}

void Session::windowCreated(TabWindow *window)
{
    window->restoreGeometry(std::exchange(m_geometry, {}));
}

//! A run that ends by itself has no user, and leaves his settings alone.
bool Session::isWatched() const
{
    return !m_options.seconds;
}

//! What windows are open, and what they show. The simulated feed is not kept.
void Session::save() const
{
    if (!isWatched() || m_isEnding)
        return;
    QList<SavedWindow> saved;
    const QList<TabWindow *> windows = m_tabs.windows();
    for (const TabWindow *window : windows) {
        SavedWindow kept {window->saveGeometry(), {}, 0};
        const QList<ViewerWindow *> pages = window->pages();
        for (const ViewerWindow *page : pages) {
            if (page == window->current())
                kept.current = int(kept.pages.size());
            const PageState state = page->state();
            if (!state.path.isEmpty())
                kept.pages.append(state);
        }
        saved.append(kept);
    }
    SavedSession::save(saved);
}

//! Closes all windows, which are open again next time.
void Session::quit()
{
    save();
    m_isEnding = true;
    QApplication::closeAllWindows();
    m_isEnding = false;
}

ViewerWindow *Session::open(const QString &path, const FormatRequest &format,
                            const ViewerWindow *beside)
{
    const QUrl url(path);
    const QString file = url.isLocalFile() ? url.toLocalFile() : path;
    auto data = openData(file, m_options.data, &m_statistics);
    if (isWatched() && !file.contains(QLatin1String("://")))
        RecentFiles::add(file);
    if (data)
        return add(std::move(data), beside);
    const bool isCalledCapture = m_options.hasCaptures && m_options.files.contains(path);
    if (PacketSource::isAvailable() && (isCalledCapture || isCapture(file)))
        return add(std::make_unique<CaptureWindow>(file, &m_statistics), beside);
    return add(std::make_unique<FileWindow>(file, format, &m_statistics), beside);
}

ViewerWindow *Session::openFeed(const ViewerWindow *beside)
{
    return add(std::make_unique<FeedWindow>(m_options.rate, m_options.newRows, &m_statistics),
               beside);
}

void Session::openFrom(ViewerWindow *page, const QString &path)
{
    open(path, m_options.format, page);
    leave(page);
}

//! What was opened takes the place of the page of welcome.
void Session::leave(ViewerWindow *page)
{
    if (qobject_cast<WelcomeWindow *>(page))
        page->close();
}

ViewerWindow *Session::add(std::unique_ptr<ViewerWindow> window, const ViewerWindow *beside)
{
    ViewerWindow *added = window.get();
    connect(added, &ViewerWindow::openRequested, this,
            [this, added](const QString &path) { openFrom(added, path); });
    connect(added, &ViewerWindow::feedRequested, this, [this, added] {
        openFeed(added);
        leave(added);
    });
    connect(added, &ViewerWindow::quitRequested, this, &Session::quit);
    connect(added, &ViewerWindow::settled, this, &Session::endWhenSettled);
    connect(added, &ViewerWindow::closed, this, [this, added] { forget(added); });
    if (!m_options.follow)
        added->setFollowing(false);
    m_windows.push_back(std::move(window));
    m_tabs.add(added, beside);
    return added;
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
    m_asked.remove(window); // another one may come to be in its place
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
    if (m_windows.front()->window()->grab().save(m_options.screenshot, "PNG"))
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
