// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef MARKETPANE_H
#define MARKETPANE_H

#include "bookmodel.h"

#include <QDockWidget>

class PriceChart;
class QTableFastView;

//! Beside the trades of a feed: what has become of each symbol, and how the price of the current
//! one went. While it is hidden nothing is computed.
class MarketPane : public QDockWidget
{
    Q_OBJECT

public:
    //! About \a feed, which must outlive the pane.
    MarketPane(const FeedModel *feed, QWidget *parent);
    ~MarketPane() override;

    //! Takes in the trades that have come.
    void update();

    const BookModel *book() const { return &m_book; }
    QTableFastView *table() const { return m_table; }
    PriceChart *chart() const { return m_chart; }

private:
    void symbolChosen(int symbol);
    void traded(const Trade &trade);

    const FeedModel *m_feed; //!< not owned
    BookModel m_book;        //!< of m_feed
    QTableFastView *m_table; //!< shows m_book
    PriceChart *m_chart;     //!< of m_symbol
    int m_symbol = -1;       //!< the chosen one
};

#endif // MARKETPANE_H
