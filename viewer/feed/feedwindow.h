// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef FEEDWINDOW_H
#define FEEDWINDOW_H

#include "feedmodel.h"
#include "windows/viewerwindow.h"

#include <QElapsedTimer>

class MarketPane;
class QComboBox;

//! A window with a simulated market feed: rows arrive at a rate, and at a side of the
//! table, that the user chooses.
class FeedWindow : public ViewerWindow
{
    Q_OBJECT

public:
    //! A running feed of \a rate rows per second that appear at \a newRows.
    FeedWindow(int rate, FeedModel::NewRows newRows, FrameStatistics *statistics);
    ~FeedWindow() override;

    FeedModel *model() { return &m_model; }
    MarketPane *market() const { return m_market; }

protected:
    void filterChanged() override;
    void closeEvent(QCloseEvent *event) override;

private:
    void createToolBar(int rate);
    void createStatusBar();
    void tick();
    void showRates();
    void applyRate();
    void applyNewRows();

    FeedModel m_model;                 //!< the feed
    QTimer m_tickTimer {this};         //!< lets trades happen
    QTimer m_rateTimer {this};         //!< shows what happened, once a second
    QElapsedTimer m_sinceTick;         //!< since the trades last happened
    QElapsedTimer m_sinceRates;        //!< since rates were last shown
    int m_rowsShown = 0;               //!< rows when rates were last shown
    MarketPane *m_market = nullptr;    //!< beside the trades
    QComboBox *m_rateBox = nullptr;    //!< rows per second
    QComboBox *m_newRowsBox = nullptr; //!< side of the table
    QAction *m_pauseAction = nullptr;  //!< checked while nothing happens
    QLabel *m_rowsLabel = nullptr;     //!< number of rows
    QLabel *m_ratesLabel = nullptr;    //!< frames and rows per second
};

#endif // FEEDWINDOW_H
