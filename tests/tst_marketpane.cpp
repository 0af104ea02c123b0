// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "feed/bookmodel.h"
#include "feed/feedmodel.h"
#include "feed/feedwindow.h"
#include "feed/marketpane.h"
#include "feed/pricechart.h"
#include "qtablefastview.h"
#include "windows/framestatistics.h"

#include <QAbstractItemModelTester>
#include <QSignalSpy>
#include <QTest>

#include <algorithm>

namespace {

constexpr qint64 start = 1'700'000'000'000; // ms since 1970
constexpr qint64 second = 1'000'000'000;    // ns

QString cell(const BookModel &book, int row, int column)
{
    return book.index(row, column).data().toString();
}

} // namespace

class tst_MarketPane : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void bookKnowsPastTrades();
    void bookTakesTradesIn();
    void bookTellsEachRowOnce();
    void bookTakesManyInSlices();
    void bookColorsDirections();
    void chartGathersPoints();
    void chartForgets();
    void chartPaints();
    void paneFollowsTheChosenSymbol();
    void hiddenPaneDoesNothing();
    void feedHasThePane();
};

//! What the book says is what a walk through the trades says.
void tst_MarketPane::bookKnowsPastTrades()
{
    const FeedModel feed(start, 3000);
    BookModel book(&feed);
    const QAbstractItemModelTester tester(&book,
                                          QAbstractItemModelTester::FailureReportingMode::QtTest);
    QCOMPARE(book.rowCount(), FeedModel::symbolCount());
    for (int symbol = 0; symbol < book.rowCount(); ++symbol) {
        QList<qint64> prices; // hundredths
        qint64 volume = 0;
        for (int number = 0; number < 3000; ++number) {
            const Trade trade = feed.trade(number);
            if (trade.symbol != symbol)
                continue;
            prices.append(trade.price.toUnits());
            volume += trade.quantity;
        }
        QVERIFY(!prices.isEmpty());
        const auto text = [](qint64 price) { return Trade::Price::fromUnits(price).toQString(); };
        QCOMPARE(cell(book, symbol, BookModel::SymbolColumn), FeedModel::symbolName(symbol));
        QCOMPARE(cell(book, symbol, BookModel::LastColumn), text(prices.last()));
        QCOMPARE(cell(book, symbol, BookModel::HighColumn),
                 text(*std::max_element(prices.begin(), prices.end())));
        QCOMPARE(cell(book, symbol, BookModel::LowColumn),
                 text(*std::min_element(prices.begin(), prices.end())));
        const qint64 change = prices.last() - prices.first();
        QCOMPARE(cell(book, symbol, BookModel::ChangeColumn),
                 (change > 0 ? QStringLiteral("+") : QString()) + text(change));
        QCOMPARE(cell(book, symbol, BookModel::VolumeColumn), QString::number(volume));
    }
}

void tst_MarketPane::bookTakesTradesIn()
{
    FeedModel feed(start, 1);
    BookModel book(&feed);
    const int known = feed.trade(0).symbol;
    QVERIFY(!cell(book, known, BookModel::LastColumn).isEmpty());
    const int other = known == 0 ? 1 : 0;
    QVERIFY(cell(book, other, BookModel::LastColumn).isEmpty());
    feed.setRate(1000);
    feed.advance(second);
    QVERIFY(cell(book, other, BookModel::LastColumn).isEmpty());
    book.update();
    QVERIFY(!cell(book, other, BookModel::LastColumn).isEmpty());
    const BookModel anew(&feed);
    for (int row = 0; row < book.rowCount(); ++row) {
        for (int column = 0; column < book.columnCount(); ++column)
            QCOMPARE(cell(book, row, column), cell(anew, row, column));
    }
}

void tst_MarketPane::bookTellsEachRowOnce()
{
    FeedModel feed(start, 1);
    BookModel book(&feed);
    QSignalSpy changed(&book, &QAbstractItemModel::dataChanged);
    book.update();
    QCOMPARE(changed.size(), 0);
    feed.setRate(1000);
    feed.advance(second);
    book.update();
    QCOMPARE(changed.size(), FeedModel::symbolCount());
    for (int row = 0; row < int(changed.size()); ++row) {
        QCOMPARE(changed[row][0].toModelIndex(), book.index(row, BookModel::LastColumn));
        QCOMPARE(changed[row][1].toModelIndex(), book.index(row, BookModel::VolumeColumn));
    }
}

void tst_MarketPane::bookTakesManyInSlices()
{
    FeedModel feed(start, 1);
    BookModel book(&feed);
    QSignalSpy traded(&book, &BookModel::traded);
    feed.setRate(FeedModel::maximumRate);
    feed.advance(second);
    const int slices = FeedModel::maximumRate / BookModel::mostAtOnce;
    for (int slice = 1; slice <= slices; ++slice) {
        book.update();
        QCOMPARE(traded.size(), slice * BookModel::mostAtOnce);
    }
    book.update();
    QCOMPARE(traded.size(), FeedModel::maximumRate);
}

void tst_MarketPane::bookColorsDirections()
{
    FeedModel feed(start, 5000);
    const BookModel book(&feed);
    for (int symbol = 0; symbol < book.rowCount(); ++symbol) {
        Trade::Price last;
        int direction = 0;
        for (int number = 0; number < 5000; ++number) {
            const Trade trade = feed.trade(number);
            if (trade.symbol != symbol)
                continue;
            if (last > Trade::Price::fromUnits(0) && trade.price != last)
                direction = trade.price > last ? 1 : -1;
            last = trade.price;
        }
        QVERIFY(direction != 0);
        QCOMPARE(book.index(symbol, BookModel::LastColumn).data(Qt::ForegroundRole).value<QColor>(),
                 FeedModel::sideColor(direction > 0));
        QVERIFY(!book.index(symbol, BookModel::HighColumn).data(Qt::ForegroundRole).isValid());
    }
}

void tst_MarketPane::chartGathersPoints()
{
    PriceChart chart;
    chart.begin("A");
    QCOMPARE(chart.points(), 0);
    QCOMPARE(chart.lowest(), 0.0);
    QCOMPARE(chart.highest(), 0.0);
    chart.add(start, 10);
    chart.add(start + PriceChart::pointTime - 1, 12);
    chart.add(start + 1, 8);
    QCOMPARE(chart.points(), 1);
    QCOMPARE(chart.lowest(), 8.0);
    QCOMPARE(chart.highest(), 12.0);
    chart.add(start + PriceChart::pointTime, 9);
    QCOMPARE(chart.points(), 2);
    chart.add(start, 1); // the past
    QCOMPARE(chart.lowest(), 8.0);
    chart.begin("B");
    QCOMPARE(chart.points(), 0);
}

void tst_MarketPane::chartForgets()
{
    PriceChart chart;
    chart.begin("A");
    const int most = PriceChart::shownTime / PriceChart::pointTime;
    for (int i = 0; i < 3 * most; ++i)
        chart.add(start + qint64(i) * PriceChart::pointTime, i);
    QCOMPARE(chart.points(), most);
    QCOMPARE(chart.lowest(), 2.0 * most);
    chart.add(start + 100 * PriceChart::shownTime, 5);
    QCOMPARE(chart.points(), 1);
}

//! A price that went up is painted from the lower left to the upper right.
void tst_MarketPane::chartPaints()
{
    PriceChart chart;
    chart.resize(400, 200);
    chart.begin("A");
    const QImage empty = chart.grab().toImage();
    for (int i = 0; i < 500; ++i)
        chart.add(start + qint64(i) * PriceChart::pointTime, 100 + i);
    const QImage image = chart.grab().toImage();
    const QColor line = chart.palette().color(QPalette::Highlight);
    const auto isLine = [&](double x, double y) {
        const QColor color = image.pixelColor(int(x * image.width()), int(y * image.height()));
        return qAbs(color.red() - line.red()) + qAbs(color.green() - line.green())
            + qAbs(color.blue() - line.blue())
            < 60;
    };
    const auto heightAt = [&](double x) {
        for (double y = 0.15; y < 1; y += 0.5 / image.height()) {
            if (isLine(x, y))
                return y;
        }
        return 2.0;
    };
    QVERIFY(heightAt(0.3) < 1);
    QVERIFY(heightAt(0.6) < heightAt(0.3));
    QVERIFY(empty != image);
}

void tst_MarketPane::paneFollowsTheChosenSymbol()
{
    FeedModel feed(start, 5000);
    MarketPane pane(&feed, nullptr);
    pane.show();
    QVERIFY(pane.chart()->points() > 10);
    pane.table()->setCurrentIndex(pane.book()->index(3, 0));
    const auto prices = [&](int symbol) {
        QList<double> all;
        for (int number = 0; number < feed.rowCount(); ++number) {
            const Trade trade = feed.trade(number);
            if (trade.symbol == symbol)
                all.append(trade.price.toDouble());
        }
        return all;
    };
    const QList<double> expected = prices(3);
    QVERIFY(pane.chart()->lowest() >= *std::min_element(expected.begin(), expected.end()));
    QVERIFY(pane.chart()->highest() <= *std::max_element(expected.begin(), expected.end()));
    const int before = pane.chart()->points();
    feed.setRate(1000);
    feed.advance(5 * second);
    pane.update();
    QVERIFY(pane.chart()->points() > before || pane.chart()->points() == 600);
}

void tst_MarketPane::hiddenPaneDoesNothing()
{
    FeedModel feed(start, 100);
    MarketPane pane(&feed, nullptr);
    QSignalSpy traded(pane.book(), &BookModel::traded);
    feed.setRate(1000);
    feed.advance(second);
    pane.update();
    QCOMPARE(traded.size(), 0);
    pane.show();
    pane.update();
    QCOMPARE(traded.size(), 1000);
}

void tst_MarketPane::feedHasThePane()
{
    FrameStatistics statistics;
    FeedWindow window(1000, FeedModel::NewRows::AtTop, &statistics);
    window.show();
    QVERIFY(window.market()->isVisible());
    QSignalSpy traded(window.market()->book(), &BookModel::traded);
    QTRY_VERIFY(traded.size() > 10);
}

QTEST_MAIN(tst_MarketPane)

#include "tst_marketpane.moc"
