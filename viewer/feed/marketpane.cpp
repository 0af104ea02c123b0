// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "marketpane.h"

#include "itemdelegate.h"
#include "pricechart.h"
#include "qtablefastview.h"

#include <QHeaderView>
#include <QItemSelectionModel>
#include <QSplitter>

namespace {

constexpr qint64 s_lookedBack = 20000; // trades of before, for the chart
constexpr double s_widest = 12;        // of a column, in heights of the font

} // namespace

MarketPane::MarketPane(const FeedModel *feed, QWidget *parent)
    : QDockWidget(tr("Market"), parent)
    , m_feed(feed)
    , m_book(feed)
{
    setObjectName(QStringLiteral("marketPane"));
    auto *splitter = new QSplitter(Qt::Vertical, this);
    m_table = new QTableFastView(splitter);
    m_chart = new PriceChart(splitter);
    m_table->setItemDelegate(new Vantix::ItemDelegate(m_table));
    m_table->setPaintBufferEnabled(true);
    m_table->setModel(&m_book);
    QHeaderView *header = m_table->header();
    for (int column = 0; column < BookModel::ColumnCount; ++column) {
        int width = header->sectionSizeHint(column);
        for (int row = 0; row < m_book.rowCount(); ++row)
            width =
                qMax(width,
                     fontMetrics().horizontalAdvance(m_book.index(row, column).data().toString()));
        width += fontMetrics().height();
        header->resizeSection(column, qMin(width, int(s_widest * fontMetrics().height())));
    }
    splitter->setStretchFactor(0, 3);
    splitter->setStretchFactor(1, 2);
    setWidget(splitter);
    connect(&m_book, &BookModel::traded, this, &MarketPane::traded);
    connect(m_table->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            [this](const QModelIndex &row) {
                if (row.isValid())
                    symbolChosen(row.row());
            });
    symbolChosen(0);
}

MarketPane::~MarketPane()
{
    m_table->setModel(nullptr);
}

void MarketPane::update()
{
    if (isVisible())
        m_book.update();
}

//! The chart begins with what happened before.
void MarketPane::symbolChosen(int symbol)
{
    if (symbol == m_symbol)
        return;
    m_symbol = symbol;
    m_chart->begin(FeedModel::symbolName(symbol));
    const qint64 count = m_feed->rowCount();
    for (qint64 number = qMax<qint64>(0, count - s_lookedBack); number < count; ++number)
        traded(m_feed->trade(number));
}

void MarketPane::traded(const Trade &trade)
{
    if (trade.symbol == m_symbol)
        m_chart->add(trade.time, trade.price.toDouble());
}
