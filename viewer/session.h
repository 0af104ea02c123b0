// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef SESSION_H
#define SESSION_H

#include "data/opendata.h"
#include "feed/feedmodel.h"
#include "files/delimiter.h"
#include "savedsession.h"
#include "windows/framestatistics.h"
#include "windows/tabwindows.h"

#include <QObject>
#include <QSet>
#include <QStringList>

#include <memory>
#include <optional>
#include <vector>

class ViewerWindow;

//! What the command line asks for.
struct SessionOptions
{
    QStringList files;        //!< to open
    bool hasFeed = false;     //!< show the simulated feed if there are no files
    FormatRequest format;     //!< of the files
    bool hasCaptures = false; //!< the files are captures of packets, whatever they begin with
    DataRequest data;         //!< of databases
    bool follow = true;       //!< follow from the start
    int rate = 1000;          //!< of the feed, rows per second
    FeedModel::NewRows newRows = FeedModel::NewRows::AtTop; //!< of the feed
    std::optional<double> seconds;                          //!< end after these
    QString screenshot; //!< file for a picture of the first window, if any
    bool stats = false; //!< print figures at the end
};

//! One run of the program: a page for each file, or one for the feed, or what was open last
//! time, or a page of welcome.
class Session : public QObject
{
    Q_OBJECT

public:
    explicit Session(const SessionOptions &options);
    ~Session() override;

    //! Shows the windows, runs until they are closed or the time is over, and returns
    //! the exit status: 1 if a file of the command line or the screenshot failed, else 0.
    int run();

private:
    bool isWatched() const;
    void begin();
    void restore(const QList<SavedWindow> &windows);
    void windowCreated(TabWindow *window);
    void save() const;
    void quit();
    ViewerWindow *open(const QString &path, const FormatRequest &format,
                       const ViewerWindow *beside = nullptr);
    ViewerWindow *openFeed(const ViewerWindow *beside = nullptr);
    void openFrom(ViewerWindow *page, const QString &path);
    ViewerWindow *add(std::unique_ptr<ViewerWindow> window, const ViewerWindow *beside);
    void leave(ViewerWindow *page);
    void forget(const ViewerWindow *window);
    void noteFailure(const ViewerWindow &window);
    void endWhenSettled();
    bool saveScreenshot() const;
    void printStats() const;

    const SessionOptions m_options;                       //!< as given
    FrameStatistics m_statistics;                         //!< frames of all windows
    TabWindows m_tabs;                                    //!< around the pages
    std::vector<std::unique_ptr<ViewerWindow>> m_windows; //!< the pages
    QByteArray m_geometry;                                //!< of the first window
    bool m_isEnding = false;                              //!< all is saved
    bool m_timeIsOver = false;          //!< the run ends as soon as all windows are settled
    int m_waits = 0;                    //!< looks for a first frame after that
    QSet<const ViewerWindow *> m_asked; //!< windows of the files of the command line
    bool m_hasFailed = false;           //!< a closed one of them had nothing to show
};

#endif // SESSION_H
