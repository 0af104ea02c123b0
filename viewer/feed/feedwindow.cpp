// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "feedwindow.h"

#include "basics/contrast.h"
#include "basics/icons.h"
#include "marketpane.h"
#include "windows/viewertable.h"

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QDateTime>
#include <QLabel>
#include <QLocale>
#include <QMenu>
#include <QStatusBar>
#include <QToolBar>

#include <array>

namespace {

constexpr std::array s_rates {0, 10, 1000, 10000, 50000}; // rows per second
constexpr int s_tickTime = 16;                            // ms

QLabel *createSimulatedLabel(QWidget *parent)
{
    auto *label = new QLabel(FeedWindow::tr("Simulated data"), parent);
    label->setAutoFillBackground(true);
    label->setBackgroundRole(QPalette::Highlight);
    label->setForegroundRole(QPalette::HighlightedText);
    label->setPalette(withReadableHighlights(QApplication::palette()));
    label->setContentsMargins(8, 2, 8, 2);
    label->setToolTip(FeedWindow::tr("These trades never happened: they are computed."));
    return label;
}

} // namespace

FeedWindow::FeedWindow(int rate, FeedModel::NewRows newRows, FrameStatistics *statistics)
    : ViewerWindow(statistics)
    , m_model(QDateTime::currentMSecsSinceEpoch())
{
    setWindowTitle(tr("Simulated market feed"));
    m_model.setNewRows(newRows);
    createToolBar(rate);
    createStatusBar();
    setModel(&m_model, newRows == FeedModel::NewRows::AtTop ? Edge::Top : Edge::End);
    m_market = new MarketPane(&m_model, this);
    addDockWidget(Qt::RightDockWidgetArea, m_market);
    viewMenu()->addAction(m_market->toggleViewAction());
    applyRate();
    m_rowsShown = m_model.rowCount();
    connect(&m_tickTimer, &QTimer::timeout, this, &FeedWindow::tick);
    connect(&m_rateTimer, &QTimer::timeout, this, &FeedWindow::showRates);
    m_tickTimer.setTimerType(Qt::PreciseTimer);
    m_sinceTick.start();
    m_sinceRates.start();
    m_tickTimer.start(s_tickTime);
    m_rateTimer.start(1000);
    showRates();
}

FeedWindow::~FeedWindow()
{
    removeModel();
    delete m_market; // the model goes next
}

void FeedWindow::createToolBar(int rate)
{
    m_rateBox = new QComboBox(this);
    for (const int choice : s_rates)
        m_rateBox->addItem(tr("%L1 rows/s").arg(choice), choice);
    if (m_rateBox->findData(rate) < 0)
        m_rateBox->addItem(tr("%L1 rows/s").arg(rate), rate);
    m_rateBox->setCurrentIndex(m_rateBox->findData(rate));
    m_newRowsBox = new QComboBox(this);
    m_newRowsBox->addItem(tr("New rows at the top"), int(FeedModel::NewRows::AtTop));
    m_newRowsBox->addItem(tr("New rows at the end"), int(FeedModel::NewRows::AtEnd));
    m_newRowsBox->setCurrentIndex(m_newRowsBox->findData(int(m_model.newRows())));
    m_pauseAction = new QAction(tr("&Pause"), this);
    m_pauseAction->setIcon(
        Icons::action(QStringLiteral("media-playback-pause"), QStringLiteral("pause")));
    m_pauseAction->setCheckable(true);
    m_pauseAction->setShortcut(Qt::Key_Pause);
    viewMenu()->addAction(m_pauseAction);

    toolBar()->addAction(m_pauseAction);
    toolBar()->addSeparator();
    toolBar()->addWidget(m_rateBox);
    toolBar()->addWidget(m_newRowsBox);
    connect(m_rateBox, &QComboBox::currentIndexChanged, this, &FeedWindow::applyRate);
    connect(m_pauseAction, &QAction::toggled, this, &FeedWindow::applyRate);
    connect(m_newRowsBox, &QComboBox::currentIndexChanged, this, &FeedWindow::applyNewRows);
}

void FeedWindow::createStatusBar()
{
    m_rowsLabel = new QLabel(this);
    m_ratesLabel = new QLabel(this);
    auto *hint = new QLabel(tr("Scroll away from the new rows: the rows you look at stay."), this);
    hint->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred); // the first to be cut off
    statusBar()->addWidget(createSimulatedLabel(this));
    statusBar()->addWidget(hint, 1);
    statusBar()->addPermanentWidget(m_ratesLabel);
    statusBar()->addPermanentWidget(m_rowsLabel);
}

void FeedWindow::applyRate()
{
    m_model.setRate(m_pauseAction->isChecked() ? 0 : m_rateBox->currentData().toInt());
}

void FeedWindow::applyNewRows()
{
    const auto newRows = FeedModel::NewRows(m_newRowsBox->currentData().toInt());
    m_model.setNewRows(newRows);
    setEdge(newRows == FeedModel::NewRows::AtTop ? Edge::Top : Edge::End);
}

void FeedWindow::tick()
{
    const qint64 elapsed = m_sinceTick.nsecsElapsed();
    m_sinceTick.start();
    m_model.advance(elapsed);
    m_market->update();
}

void FeedWindow::showRates()
{
    const double seconds = double(m_sinceRates.nsecsElapsed()) / 1e9;
    m_sinceRates.start();
    const int rows = m_model.rowCount() - m_rowsShown;
    m_rowsShown += rows;
    if (seconds > 0.1)
        m_ratesLabel->setText(tr("%L1 rows/s").arg(qRound(rows / seconds)));
    filterChanged();
}

void FeedWindow::filterChanged()
{
    const bool isFull = m_model.rowCount() == FeedModel::maximumTrades;
    m_rowsLabel->setText(isFull ? tr("%1, no more will come").arg(rowsText()) : rowsText());
}

void FeedWindow::closeEvent(QCloseEvent *event)
{
    m_tickTimer.stop();
    ViewerWindow::closeEvent(event);
}
