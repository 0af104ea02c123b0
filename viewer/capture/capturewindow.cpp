// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "capturewindow.h"

#include "capturemodel.h"
#include "windows/pathtexts.h"

#include <QAction>
#include <QDir>
#include <QFileInfo>
#include <QLabel>
#include <QLocale>
#include <QMenu>
#include <QProgressBar>
#include <QStatusBar>

#include <cstdio>
#include <utility>

namespace {

constexpr int s_stepsOfProgress = 1000;
constexpr int s_restartTime = 8000; // ms that the status bar tells of it

using CaptureActivity = CaptureModel::Activity;

bool isInput(const QString &path)
{
    return path == QLatin1String("-");
}

} // namespace

CaptureWindow::CaptureWindow(const QString &path, FrameStatistics *statistics)
    : ViewerWindow(statistics)
    , m_path(path)
{
    if (!isInput(path))
        setWindowFilePath(QFileInfo(path).absoluteFilePath());
    setWindowTitle(titleOf(path));
    createStatusBar();
    createOverview();
    auto *reload = new QAction(tr("R&eload"), this);
    reload->setShortcut(Qt::Key_F5);
    reload->setEnabled(!isInput(path));
    connect(reload, &QAction::triggered, this, &CaptureWindow::reload);
    viewMenu()->insertAction(viewMenu()->actions().at(1), reload);
    connect(followAction(), &QAction::toggled, this, &CaptureWindow::updateStatus);
    open();
}

CaptureWindow::~CaptureWindow()
{
    removeModel();
}

void CaptureWindow::createStatusBar()
{
    m_activityLabel = new QLabel(tr("Opening…"), this);
    m_progress = new QProgressBar(this);
    m_progress->setRange(0, s_stepsOfProgress);
    m_progress->setMaximumWidth(fontMetrics().horizontalAdvance(u'x') * 24);
    m_progress->hide();
    m_rowsLabel = new QLabel(this);
    m_sizeLabel = new QLabel(this);
    m_linkLabel = new QLabel(this);
    m_linkLabel->setToolTip(tr("What the packets were captured from"));
    statusBar()->addWidget(m_activityLabel, 1);
    statusBar()->addWidget(m_progress);
    for (QLabel *label : {m_rowsLabel, m_sizeLabel, m_linkLabel})
        statusBar()->addPermanentWidget(label);
}

void CaptureWindow::open()
{
    const std::unique_ptr<CaptureModel> former = std::move(m_model);
    m_model = std::make_unique<CaptureModel>(m_path);
    m_hasBegun = false;
    setModel(m_model.get(), Edge::End);
    connect(m_model.get(), &CaptureModel::statusChanged, this, &CaptureWindow::updateStatus);
    connect(m_model.get(), &CaptureModel::restarted, this, &CaptureWindow::tellRestart);
    m_model->start();
}

void CaptureWindow::reload()
{
    const PageState before = state();
    m_hasFailed = false;
    showTable();
    keepMarks();
    open();
    restore(before);
}

void CaptureWindow::filterChanged()
{
    m_rowsLabel->setText(rowsText());
}

void CaptureWindow::updateStatus()
{
    m_rowsLabel->setText(rowsText());
    m_linkLabel->setText(m_model->linkName());
    m_activityLabel->setText(activityText());
    tellSize();
    updateProgress();
    const CaptureActivity activity = m_model->activity();
    if (activity == CaptureActivity::Failed && !m_hasFailed)
        reportFailure();
    const bool isOpening = activity == CaptureActivity::Opening
        || (activity == CaptureActivity::Indexing && m_model->rowCount() == 0);
    if (!isOpening && activity != CaptureActivity::Indexing)
        showAwaitedLine();
    if (m_isSettled || isOpening)
        return;
    m_isSettled = true;
    Q_EMIT settled();
}

void CaptureWindow::tellSize()
{
    const QLocale locale;
    const QString memory = locale.formattedDataSize(qint64(m_model->indexMemory()));
    m_sizeLabel->setText(locale.formattedDataSize(qint64(m_model->fileSize())));
    m_sizeLabel->setToolTip(
        m_model->isCopied()
            ? tr("A temporary copy of this size is kept in %1, the index of packets in %2 of "
                 "memory.")
                  .arg(QDir::toNativeSeparators(TextFile::copyFolder()), memory)
            : tr("The index of packets takes %1 of memory.").arg(memory));
}

void CaptureWindow::updateProgress()
{
    const bool hasMore = m_model->activity() == CaptureActivity::Indexing
        && m_model->indexedBytes() < m_model->fileSize();
    m_progress->setVisible(hasMore);
    if (!hasMore)
        return;
    const double part = double(m_model->indexedBytes()) / double(m_model->fileSize());
    m_progress->setValue(int(part * s_stepsOfProgress));
}

QString CaptureWindow::activityText() const
{
    if (m_model->isMissing())
        return tr("The file was deleted; this is what it held");
    switch (m_model->activity()) {
    case CaptureActivity::Opening:
        return tr("Opening…");
    case CaptureActivity::Indexing:
        return tr("Indexing…");
    case CaptureActivity::Following:
        if (m_model->isIncomplete())
            return tr("The last packet is not complete yet");
        return isFollowing() ? tr("Following") : tr("Indexed");
    case CaptureActivity::Ended:
        return m_model->isIncomplete() ? tr("The last packet is not complete") : tr("Complete");
    case CaptureActivity::Damaged:
        return tr("Damaged at byte %L1; the packets before are shown").arg(m_model->indexedBytes());
    case CaptureActivity::Full:
        return tr("There are more packets; the first %L1 are shown").arg(m_model->rowCount());
    case CaptureActivity::Failed:
        return m_model->errorString();
    }
    return {};
}

void CaptureWindow::reportFailure()
{
    m_hasFailed = true;
    const QString path = displayPath(m_path);
    std::fprintf(stderr, "vantix-viewer: %s: %s\n", qUtf8Printable(path),
                 qUtf8Printable(m_model->errorString()));
    if (m_model->rowCount() == 0)
        showMessage(tr("%1\ncannot be shown: %2").arg(path, m_model->errorString()));
}

void CaptureWindow::tellRestart()
{
    if (std::exchange(m_hasBegun, true))
        statusBar()->showMessage(tr("The file was written anew."), s_restartTime);
}
