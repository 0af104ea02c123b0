// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "filewindow.h"

#include "files/textfilemodel.h"
#include "viewertable.h"

#include <QAction>
#include <QDir>
#include <QFileInfo>
#include <QLabel>
#include <QLocale>
#include <QMenu>
#include <QProgressBar>
#include <QStatusBar>
#include <QToolBar>
#include <QToolButton>

#include <cstdio>

namespace {

constexpr int s_progressSteps = 1000;

using Activity = TextFileModel::Activity;

QString displayName(const QString &path)
{
    return path == QLatin1String("-") ? FileWindow::tr("Standard input")
                                      : QFileInfo(path).fileName();
}

//! Files in several folders may have the same name.
QString title(const QString &path)
{
    if (path == QLatin1String("-"))
        return displayName(path);
    const QString folder = QDir::toNativeSeparators(QFileInfo(path).absolutePath());
    return FileWindow::tr("%1 — %2").arg(displayName(path), folder);
}

QString displayPath(const QString &path)
{
    return path == QLatin1String("-") ? FileWindow::tr("Standard input")
                                      : QDir::toNativeSeparators(path);
}

} // namespace

FileWindow::FileWindow(const QString &path, const FormatRequest &request,
                       FrameStatistics *statistics)
    : ViewerWindow(statistics)
    , m_model(std::make_unique<TextFileModel>(path, request))
{
    setWindowTitle(title(path));
    createStopAction();
    createStatusBar();
    table()->useFixedFont();
    createOverview();
    setModel(m_model.get(), Edge::End);
    connect(m_model.get(), &TextFileModel::statusChanged, this, &FileWindow::updateStatus);
    connect(followAction(), &QAction::toggled, this, &FileWindow::updateStatus);
    m_model->start();
}

FileWindow::~FileWindow()
{
    removeModel();
}

void FileWindow::createStopAction()
{
    m_stopAction = new QAction(tr("&Stop Indexing"), this);
    m_stopAction->setEnabled(false);
    addTableAction(m_stopAction);
    connect(m_stopAction, &QAction::triggered, this, &FileWindow::toggleIndexing);
    fileMenu()->insertAction(fileMenu()->actions().at(1), m_stopAction);
    toolBar()->addAction(m_stopAction);
}

void FileWindow::createStatusBar()
{
    m_rowsLabel = new QLabel(this);
    m_sizeLabel = new QLabel(this);
    m_encodingLabel = new QLabel(this);
    m_activityLabel = new QLabel(tr("Opening…"), this);
    m_progress = new QProgressBar(this);
    m_progress->setRange(0, s_progressSteps);
    m_progress->setMaximumWidth(fontMetrics().horizontalAdvance(u'x') * 24);
    m_progress->hide();
    m_stopButton = new QToolButton(this);
    m_stopButton->setDefaultAction(m_stopAction);
    m_stopButton->setAutoRaise(true);
    m_stopButton->hide();
    statusBar()->addWidget(m_activityLabel, 1);
    statusBar()->addWidget(m_progress);
    statusBar()->addWidget(m_stopButton);
    for (QLabel *label : {m_rowsLabel, m_sizeLabel, m_encodingLabel})
        statusBar()->addPermanentWidget(label);
}

void FileWindow::findPanelShown(bool isShown)
{
    ViewerWindow::findPanelShown(isShown);
    m_isFindShown = isShown;
    updateStop();
}

void FileWindow::filterChanged()
{
    m_rowsLabel->setText(rowsText());
}

bool FileWindow::isSettled() const
{
    return m_settled;
}

void FileWindow::toggleIndexing()
{
    if (m_model->activity() == Activity::Stopped)
        m_model->resumeIndexing();
    else
        m_model->stopIndexing();
}

void FileWindow::updateStatus()
{
    const QLocale locale;
    m_rowsLabel->setText(rowsText());
    m_sizeLabel->setText(locale.formattedDataSize(qint64(m_model->fileSize())));
    m_encodingLabel->setText(m_model->encodingName());
    m_activityLabel->setText(activityText());
    updateProgress();
    updateStop();
    if (m_model->activity() == Activity::Failed && !m_failed)
        reportFailure();
    const bool isOpening = m_model->activity() == Activity::Opening;
    const bool isFirstScreenOpen = m_model->activity() == Activity::Indexing
        && m_model->rowCount() == 0 && m_model->fileSize() > 0;
    if (m_settled || isOpening || isFirstScreenOpen)
        return;
    m_settled = true;
    Q_EMIT settled();
}

void FileWindow::updateProgress()
{
    m_progress->setVisible(hasMoreToIndex());
    m_stopButton->setVisible(m_progress->isVisibleTo(this)
                             || m_model->activity() == Activity::Stopped);
    if (m_model->fileSize() == 0)
        return;
    const double part = double(m_model->indexedBytes()) / double(m_model->fileSize());
    m_progress->setValue(int(part * s_progressSteps));
}

bool FileWindow::hasMoreToIndex() const
{
    return m_model->activity() == Activity::Indexing
        && m_model->indexedBytes() < m_model->fileSize();
}

//! Esc closes the panel first, and does nothing where nothing is to be stopped: a file that
//! grows would not be followed any more.
void FileWindow::updateStop()
{
    const bool isEscape = hasMoreToIndex() && !m_isFindShown;
    m_stopAction->setShortcut(isEscape ? QKeySequence(Qt::Key_Escape) : QKeySequence());
    const bool isStopped = m_model->activity() == Activity::Stopped;
    m_stopAction->setText(isStopped ? tr("&Resume Indexing") : tr("&Stop Indexing"));
    m_stopAction->setEnabled(isStopped || m_model->activity() == Activity::Indexing);
}

QString FileWindow::activityText() const
{
    if (m_model->isMissing())
        return tr("The file was deleted; this is what it held");
    if (m_model->isFull())
        return tr("There are more lines; the first %L1 are shown").arg(m_model->rowCount());
    switch (m_model->activity()) {
    case Activity::Opening:
        return tr("Opening…");
    case Activity::Indexing:
        if (m_model->isCompressed())
            return tr("Decompressing…");
        return m_model->indexedBytes() < m_model->fileSize() ? tr("Indexing…")
                                                             : tr("Waiting for more");
    case Activity::Following:
        return isFollowing() ? tr("Following") : tr("Indexed");
    case Activity::Ended:
        if (m_model->isCompressed())
            return tr("Complete");
        return tr("The input has ended");
    case Activity::Stopped:
        return tr("Paused");
    case Activity::Full:
        break;
    case Activity::Failed:
        return m_model->errorString();
    }
    return {};
}

void FileWindow::reportFailure()
{
    m_failed = true;
    const QString path = displayPath(m_model->path());
    std::fprintf(stderr, "vantix-viewer: %s: %s\n", qUtf8Printable(path),
                 qUtf8Printable(m_model->errorString()));
    if (m_model->rowCount() == 0)
        showMessage(tr("%1\ncannot be shown: %2").arg(path, m_model->errorString()));
}

void FileWindow::closeEvent(QCloseEvent *event)
{
    m_model->stopIndexing();
    ViewerWindow::closeEvent(event);
}
