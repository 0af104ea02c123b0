// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef FILEWINDOW_H
#define FILEWINDOW_H

#include "files/delimiter.h"
#include "files/newestfilewatch.h"
#include "viewerwindow.h"

#include <memory>

class FormatMenu;
class QProgressBar;
class QToolButton;
class TextFileModel;

//! A window that shows one file or the standard input while it is indexed, and
//! follows it while it grows.
class FileWindow : public ViewerWindow
{
    Q_OBJECT

public:
    //! Begins to open \a path, "-" for the standard input, in the format that
    //! \a request leaves open. If that fails, the window and stderr tell why. Of a pattern, as
    //! "*.log", it shows the file that was written last, and goes on to a newer one.
    FileWindow(const QString &path, const FormatRequest &request, FrameStatistics *statistics);
    ~FileWindow() override;

    TextFileModel *model() const { return m_model.get(); }
    bool isSettled() const override;
    //! With request().
    PageState state() const override;
    bool hasFailed() const override { return m_failed; }

    //! Opens the file again, in the format that \a request leaves open, at the same row and
    //! with the same filter. The standard input cannot be read twice: nothing happens.
    void reopen(const FormatRequest &request);
    //! What was asked of the format.
    const FormatRequest &request() const { return m_request; }

protected:
    void filterChanged() override;
    void findPanelShown(bool isShown) override;
    void closeEvent(QCloseEvent *event) override;

private:
    void createStatusBar();
    void createStopAction();
    void createFormatMenu();
    void createReloadActions();
    void updateOlderFiles();
    void showOlderFiles(bool on);
    void open(const FormatRequest &request);
    bool canReopen() const;
    void tellRestart();
    void tellLeftOut();
    void tellSize();
    void awaitLineOfFile();
    void updateStatus();
    void updateProgress();
    void updateStop();
    bool hasMoreToIndex() const;
    void reportFailure();
    bool isAwaited() const;
    void waitForFile();
    void takeNewestFile(const QString &newest);
    void showPath();
    void toggleIndexing();
    QString activityText() const;
    QString formatText() const;

    const QString m_pattern;                //!< of files, of which the newest is shown; or empty
    QString m_path;                         //!< of the file, as given
    NewestFileWatch m_newest;               //!< looks for a newer file
    FormatRequest m_request;                //!< see request()
    std::unique_ptr<TextFileModel> m_model; //!< the file
    QTimer m_waitTimer {this};              //!< looks for a file that cannot be read yet
    FormatMenu *m_formatMenu = nullptr;     //!< what the text is taken for
    QAction *m_olderFiles = nullptr;        //!< shows files that were rotated away, too
    int m_lineOfFile = 0;                   //!< to be shown when all older files are read
    QAction *m_stopAction = nullptr;        //!< stops indexing, or goes on
    QLabel *m_rowsLabel = nullptr;          //!< number of rows
    QLabel *m_sizeLabel = nullptr;          //!< size of the file
    QToolButton *m_formatButton = nullptr;  //!< encoding; opens m_formatMenu
    QLabel *m_activityLabel = nullptr;      //!< what goes on
    QProgressBar *m_progress = nullptr;     //!< indexed part, while there is more
    QToolButton *m_stopButton = nullptr;    //!< m_stopAction beside the progress
    bool m_isFindShown = false;             //!< the panel has Esc
    bool m_settled = false;                 //!< settled() was emitted
    bool m_isRetried = false;               //!< m_waitTimer has opened it, and could
    bool m_failed = false;                  //!< the file could not be opened
};

#endif // FILEWINDOW_H
