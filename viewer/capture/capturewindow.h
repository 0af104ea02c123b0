// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef CAPTUREWINDOW_H
#define CAPTUREWINDOW_H

#include "windows/viewerwindow.h"

#include <memory>

class CaptureModel;
class QProgressBar;

//! A window that shows the packets of a capture while it is indexed, and follows it while it
//! grows.
class CaptureWindow : public ViewerWindow
{
    Q_OBJECT

public:
    //! Begins to open \a path, "-" for the standard input. If that fails, the window and stderr
    //! tell why.
    CaptureWindow(const QString &path, FrameStatistics *statistics);
    ~CaptureWindow() override;

    CaptureModel *model() const { return m_model.get(); }
    bool isSettled() const override { return m_isSettled; }
    bool hasFailed() const override { return m_hasFailed; }

protected:
    void filterChanged() override;

private:
    void createStatusBar();
    void open();
    void reload();
    void updateStatus();
    void updateProgress();
    void tellSize();
    void tellRestart();
    void reportFailure();
    QString activityText() const;

    const QString m_path;                  //!< as given
    std::unique_ptr<CaptureModel> m_model; //!< the packets
    QLabel *m_rowsLabel = nullptr;         //!< number of packets
    QLabel *m_sizeLabel = nullptr;         //!< size of the file
    QLabel *m_linkLabel = nullptr;         //!< what packets were captured from
    QLabel *m_activityLabel = nullptr;     //!< what goes on
    QProgressBar *m_progress = nullptr;    //!< indexed part, while there is more
    bool m_hasBegun = false;               //!< the model has begun once
    bool m_isSettled = false;              //!< settled() was emitted
    bool m_hasFailed = false;              //!< it could not be opened
};

#endif // CAPTUREWINDOW_H
