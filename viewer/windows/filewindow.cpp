// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "filewindow.h"

#include "basics/icons.h"
#include "files/journalstream.h"
#include "files/newestfile.h"
#include "files/rotatedfiles.h"
#include "files/textfile.h"
#include "files/textfilemodel.h"
#include "fontmenu.h"
#include "formatmenu.h"
#include "pathtexts.h"
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
#include <initializer_list>
#include <utility>

namespace {

constexpr int s_progressSteps = 1000;
constexpr int s_fileWaitTime = 500; // ms between looks for a missing file
constexpr int s_messageTime = 8000; // ms that the status bar tells what happened

using Activity = TextFileModel::Activity;

} // namespace

FileWindow::FileWindow(const QString &path, const FormatRequest &request,
                       FrameStatistics *statistics)
    : ViewerWindow(statistics)
    , m_pattern(isFilePattern(path) ? path : QString())
    , m_path(path)
    , m_request(request)
{
    if (!m_pattern.isEmpty()) {
        if (const QString newest = newestFile(m_pattern); !newest.isEmpty())
            m_path = newest;
        connect(&m_newest, &NewestFileWatch::found, this, &FileWindow::takeNewestFile);
        m_newest.start(m_pattern);
    }
    if (canReopen())
        setWindowFilePath(JournalStream::isName(path) ? path : QFileInfo(path).absoluteFilePath());
    showPath();
    createStopAction();
    createStatusBar();
    createFormatMenu();
    createReloadActions();
    table()->useTextFont();
    createOverview();
    m_waitTimer.setInterval(s_fileWaitTime);
    connect(&m_waitTimer, &QTimer::timeout, this, &FileWindow::waitForFile);
    connect(followAction(), &QAction::toggled, this, &FileWindow::updateStatus);
    open(request);
}

FileWindow::~FileWindow()
{
    removeModel();
}

void FileWindow::open(const FormatRequest &request)
{
    m_request = request;
    m_olderFiles->setChecked(request.hasOlderFiles);
    const std::unique_ptr<TextFileModel> former = std::move(m_model);
    m_model = std::make_unique<TextFileModel>(m_path, request);
    setModel(m_model.get(), Edge::End);
    connect(m_model.get(), &TextFileModel::statusChanged, this, &FileWindow::updateStatus);
    connect(m_model.get(), &TextFileModel::restarted, this, &FileWindow::tellRestart);
    m_model->start();
}

bool FileWindow::canReopen() const
{
    return m_path != QLatin1String("-");
}

void FileWindow::reopen(const FormatRequest &request)
{
    if (!canReopen())
        return;
    m_waitTimer.stop();
    m_isRetried = false;
    const PageState before = state();
    m_failed = false;
    showTable();
    keepMarks();
    open(request);
    restore(before);
}

//! The format is also chosen in the status bar, where it is told.
void FileWindow::createFormatMenu()
{
    m_formatMenu = new FormatMenu(this);
    m_formatMenu->setEnabled(canReopen());
    connect(m_formatMenu, &QMenu::aboutToShow, this, [this] { m_formatMenu->show(m_request); });
    connect(m_formatMenu, &FormatMenu::chosen, this, &FileWindow::reopen);
    m_formatButton->setMenu(m_formatMenu);
    m_formatButton->setEnabled(canReopen());
    viewMenu()->addSeparator();
    viewMenu()->addMenu(m_formatMenu);
    viewMenu()->addMenu(new FontMenu(this));
}

void FileWindow::createReloadActions()
{
    auto *reload = new QAction(tr("R&eload"), this);
    reload->setShortcut(Qt::Key_F5);
    reload->setEnabled(canReopen());
    connect(reload, &QAction::triggered, this, [this] { reopen(m_request); });
    viewMenu()->insertAction(viewMenu()->actions().at(1), reload);
    m_olderFiles = new QAction(tr("With Rotate&d Files"), this);
    m_olderFiles->setCheckable(true);
    m_olderFiles->setStatusTip(
        tr("Shows the files that were rotated away before this one, as one table"));
    connect(m_olderFiles, &QAction::toggled, this, &FileWindow::showOlderFiles);
    connect(viewMenu(), &QMenu::aboutToShow, this, &FileWindow::updateOlderFiles);
    viewMenu()->insertAction(viewMenu()->actions().at(2), m_olderFiles);
}

//! There may be some by now.
void FileWindow::updateOlderFiles()
{
    m_olderFiles->setEnabled(m_request.hasOlderFiles
                             || (canReopen() && !olderFiles(m_path).isEmpty()));
}

//! The row that was shown is still shown, though it has another number.
void FileWindow::showOlderFiles(bool on)
{
    if (on == m_request.hasOlderFiles)
        return;
    const PageState before = state();
    const int line = before.isFollowing ? 0 : before.line - qMax(m_model->olderRows(), 0);
    FormatRequest request = m_request;
    request.hasOlderFiles = on;
    reopen(request);
    awaitLine(0);
    m_lineOfFile = qMax(line, 0);
    showPath();
}

void FileWindow::awaitLineOfFile()
{
    const int older = m_model->olderRows();
    if (m_lineOfFile == 0 || older < 0 || m_model->rowCount() == 0)
        return;
    awaitLine(older + std::exchange(m_lineOfFile, 0));
}

//! Of several files it may be that some are damaged.
void FileWindow::tellLeftOut()
{
    QStringList names;
    for (const QString &path : m_model->leftOut())
        names.append(displayPath(path));
    m_activityLabel->setToolTip(names.isEmpty() ? QString()
                                                : tr("Could not be read to the end:") + u'\n'
                                        + names.join(u'\n'));
}

void FileWindow::showPath()
{
    const QString name = m_request.hasOlderFiles ? tr("%1, with rotated files").arg(titleOf(m_path))
                                                 : titleOf(m_path);
    setWindowTitle(m_pattern.isEmpty() || m_pattern == m_path
                       ? name
                       : tr("%1 — newest of %2").arg(name, QFileInfo(m_pattern).fileName()));
}

//! Whoever has chosen a row of the former file, if there is one, stays with that file.
void FileWindow::takeNewestFile(const QString &newest)
{
    const bool isAnyShown = m_path != m_pattern;
    if (newest == m_path || (isAnyShown && !isFollowing()))
        return;
    m_path = newest;
    showPath();
    reopen(m_request);
    statusBar()->showMessage(tr("%1 is newer, and is shown now.").arg(displayName(newest)),
                             s_messageTime);
}

void FileWindow::createStopAction()
{
    m_stopAction = new QAction(tr("&Stop Indexing"), this);
    m_stopAction->setIcon(Icons::action(QStringLiteral("process-stop"), QStringLiteral("stop")));
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
    m_formatButton = new QToolButton(this);
    m_formatButton->setAutoRaise(true);
    // With an arrow of its own beside the text; the text opens the menu, too.
    m_formatButton->setPopupMode(QToolButton::MenuButtonPopup);
    connect(m_formatButton, &QToolButton::clicked, m_formatButton, &QToolButton::showMenu);
    m_formatButton->setToolTip(tr("Encoding and columns"));
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
    for (QWidget *widget :
         std::initializer_list<QWidget *> {m_rowsLabel, m_sizeLabel, m_formatButton})
        statusBar()->addPermanentWidget(widget);
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

PageState FileWindow::state() const
{
    PageState state = ViewerWindow::state();
    state.format = m_request;
    return state;
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
    m_rowsLabel->setText(rowsText());
    tellSize();
    m_formatButton->setText(formatText());
    m_activityLabel->setText(activityText());
    tellLeftOut();
    awaitLineOfFile();
    updateProgress();
    updateStop();
    if (m_model->activity() == Activity::Failed && !m_failed)
        reportFailure();
    const bool isOpening = m_model->activity() == Activity::Opening;
    if (!isOpening && m_model->activity() != Activity::Failed)
        m_isRetried = false;
    const bool isFirstScreenOpen = m_model->activity() == Activity::Indexing
        && m_model->rowCount() == 0 && (m_model->fileSize() > 0 || m_model->isCompressed());
    if (!isOpening && m_model->activity() != Activity::Indexing)
        showAwaitedLine();
    if (m_settled || isOpening || isFirstScreenOpen)
        return;
    m_settled = true;
    Q_EMIT settled();
}

void FileWindow::tellSize()
{
    const QLocale locale;
    m_sizeLabel->setText(locale.formattedDataSize(qint64(m_model->fileSize())));
    m_sizeLabel->setToolTip(
        m_model->isCompressed() || !canReopen()
            ? tr("A temporary copy of this size is kept in %1, the index of lines in %2 of memory.")
                  .arg(QDir::toNativeSeparators(TextFile::copyFolder()),
                       locale.formattedDataSize(qint64(m_model->indexMemory())))
            : tr("The index of lines takes %1 of memory.")
                  .arg(locale.formattedDataSize(qint64(m_model->indexMemory()))));
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
    m_stopAction->setText(isStopped ? tr("Resume &Indexing") : tr("&Stop Indexing"));
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
        if (!m_model->leftOut().isEmpty())
            return tr("Not all files could be read");
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
    if (!m_isRetried)
        std::fprintf(stderr, "vantix-viewer: %s: %s\n", qUtf8Printable(path),
                     qUtf8Printable(m_model->errorString()));
    if (m_model->rowCount() > 0)
        return;
    QString message = tr("%1\ncannot be shown: %2").arg(path, m_model->errorString());
    if (isAwaited())
        message += u'\n' + tr("It is shown as soon as it can be.");
    showMessage(message);
    // Once more in any case: it may have come in between.
    if (canReopen() && (isAwaited() || !m_isRetried))
        m_waitTimer.start();
}

//! Others may be about to make it, or to let it be read.
bool FileWindow::isAwaited() const
{
    const QFileInfo file(m_path);
    return canReopen() && !JournalStream::isName(m_path)
        && (!file.exists() || file.isDir() || !file.isReadable());
}

void FileWindow::waitForFile()
{
    if (isAwaited())
        return;
    reopen(m_request);
    m_isRetried = true;
}

void FileWindow::tellRestart()
{
    switch (m_model->lastRestart()) {
    case TextFileModel::Restart::None:
    case TextFileModel::Restart::Opened:
        return;
    case TextFileModel::Restart::Truncated:
        statusBar()->showMessage(tr("The file was shortened, and is shown from its beginning."),
                                 s_messageTime);
        return;
    case TextFileModel::Restart::Rewritten:
        statusBar()->showMessage(tr("The file was written anew."), s_messageTime);
        return;
    case TextFileModel::Restart::Replaced:
        statusBar()->showMessage(tr("Another file has taken its name, and is shown now."),
                                 s_messageTime);
        return;
    }
}

QString FileWindow::formatText() const
{
    QString text = m_model->encodingName();
    if (m_model->format().isDelimited() && !text.isEmpty())
        text += QLatin1String(", ") + FormatMenu::delimiterName(m_model->format().delimiter);
    else if (m_model->format().hasColumns() && !text.isEmpty())
        text += QLatin1String(", ") + FormatMenu::logName(m_model->format().log.kind);
    return text;
}

void FileWindow::closeEvent(QCloseEvent *event)
{
    m_model->stopIndexing();
    ViewerWindow::closeEvent(event);
}
