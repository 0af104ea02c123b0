// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "feed/feedmodel.h"
#include "windows/framestatistics.h"

#include <QAbstractItemModelTester>
#include <QSignalSpy>
#include <QTest>

namespace {

constexpr qint64 start = 1'700'000'000'000; // milliseconds since 1970
constexpr qint64 second = 1'000'000'000;    // nanoseconds

QString text(const FeedModel &model, int row, int column)
{
    return model.index(row, column).data().toString();
}

} // namespace

class tst_ViewerFeed : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void beginsWithPastTrades();
    void addsRowsAtRate_data();
    void addsRowsAtRate();
    void isConsistentModel();
    void gathersFractions();
    void addsNothingAtRateZero();
    void keepsTradesWhileNewOnesArrive_data();
    void keepsTradesWhileNewOnesArrive();
    void givesTimesInOrder();
    void multipliesExactly();
    void turnsUpsideDown();
    void countsFrames();
};

void tst_ViewerFeed::beginsWithPastTrades()
{
    const FeedModel model(start);
    QCOMPARE(model.rowCount(), FeedModel::pastTrades);
    QCOMPARE(text(model, 0, FeedModel::NumberColumn), "1000000");
    QCOMPARE(text(model, 0, FeedModel::TimeColumn), "2023-11-14 22:13:20.000");
    QCOMPARE(text(model, 999'999, FeedModel::NumberColumn), "1");
    QVERIFY(model.index(0, FeedModel::SideColumn).data(Qt::ForegroundRole).isValid());
}

void tst_ViewerFeed::addsRowsAtRate_data()
{
    QTest::addColumn<FeedModel::NewRows>("newRows");
    QTest::addColumn<int>("first");
    QTest::newRow("at the top") << FeedModel::NewRows::AtTop << 0;
    QTest::newRow("at the end") << FeedModel::NewRows::AtEnd << FeedModel::pastTrades;
}

void tst_ViewerFeed::addsRowsAtRate()
{
    QFETCH(FeedModel::NewRows, newRows);
    QFETCH(int, first);
    FeedModel model(start);
    model.setNewRows(newRows);
    model.setRate(50'000);
    QSignalSpy inserted(&model, &QAbstractItemModel::rowsInserted);
    model.advance(second / 50);
    QCOMPARE(model.rowCount(), FeedModel::pastTrades + 1000);
    QCOMPARE(inserted.size(), 1);
    QCOMPARE(inserted.at(0).at(1).toInt(), first);
    QCOMPARE(inserted.at(0).at(2).toInt(), first + 999);
}

void tst_ViewerFeed::isConsistentModel()
{
    // The tester looks at every row again and again.
    FeedModel model(start, 100);
    const QAbstractItemModelTester tester(&model,
                                          QAbstractItemModelTester::FailureReportingMode::QtTest);
    model.setRate(10);
    model.advance(second);
    model.setNewRows(FeedModel::NewRows::AtEnd);
    model.advance(second);
    QCOMPARE(model.rowCount(), 120);
}

void tst_ViewerFeed::gathersFractions()
{
    FeedModel model(start);
    model.setRate(10);
    for (int i = 0; i < 100; ++i)
        model.advance(second / 100);
    QCOMPARE(model.rowCount(), FeedModel::pastTrades + 10);
}

void tst_ViewerFeed::addsNothingAtRateZero()
{
    FeedModel model(start);
    model.setRate(-5);
    QCOMPARE(model.rate(), 0);
    model.advance(10 * second);
    QCOMPARE(model.rowCount(), FeedModel::pastTrades);
    model.setRate(1'000'000);
    QCOMPARE(model.rate(), FeedModel::maximumRate);
}

void tst_ViewerFeed::keepsTradesWhileNewOnesArrive_data()
{
    addsRowsAtRate_data();
}

void tst_ViewerFeed::keepsTradesWhileNewOnesArrive()
{
    QFETCH(FeedModel::NewRows, newRows);
    FeedModel model(start);
    model.setNewRows(newRows);
    const QPersistentModelIndex kept(model.index(1234, FeedModel::PriceColumn));
    const QPersistentModelIndex number(model.index(1234, FeedModel::NumberColumn));
    const QString price = kept.data().toString();
    const QString numberText = number.data().toString();
    model.setRate(1000);
    model.advance(3 * second);
    QCOMPARE(model.rowCount(), FeedModel::pastTrades + 3000);
    QCOMPARE(kept.data().toString(), price);
    QCOMPARE(number.data().toString(), numberText);
}

void tst_ViewerFeed::givesTimesInOrder()
{
    FeedModel model(start);
    for (int rate : {10, 0, 1000, 50'000, 3, 10}) {
        model.setRate(rate);
        model.advance(second);
    }
    QCOMPARE(model.rowCount(), FeedModel::pastTrades + 10 + 1000 + 50'000 + 3 + 10);
    for (qint64 number = FeedModel::pastTrades - 5; number + 1 < model.rowCount(); ++number)
        QVERIFY(model.trade(number).time <= model.trade(number + 1).time);
    QCOMPARE(model.trade(model.rowCount() - 1).time, start + 6000);
}

void tst_ViewerFeed::multipliesExactly()
{
    const FeedModel model(start);
    for (int row = 0; row < 1000; ++row) {
        const Trade trade = model.trade(FeedModel::pastTrades - 1 - row);
        QVERIFY(trade.quantity >= 1);
        QVERIFY(trade.price > Trade::Price());
        const qint64 value = text(model, row, FeedModel::ValueColumn).remove('.').toLongLong();
        const qint64 price = text(model, row, FeedModel::PriceColumn).remove('.').toLongLong();
        QCOMPARE(value, price * text(model, row, FeedModel::QuantityColumn).toLongLong());
        QCOMPARE(price, trade.price.toUnits());
        QCOMPARE(value, trade.value().toUnits());
    }
}

void tst_ViewerFeed::turnsUpsideDown()
{
    FeedModel model(start);
    const QString newest = text(model, 0, FeedModel::ValueColumn);
    QSignalSpy reset(&model, &QAbstractItemModel::modelReset);
    model.setNewRows(FeedModel::NewRows::AtEnd);
    QCOMPARE(reset.size(), 1);
    QCOMPARE(text(model, FeedModel::pastTrades - 1, FeedModel::ValueColumn), newest);
    QCOMPARE(text(model, 0, FeedModel::NumberColumn), "1");
}

void tst_ViewerFeed::countsFrames()
{
    FrameStatistics statistics;
    QCOMPARE(statistics.percentile(50), 0.0);
    for (int i = 1; i <= 100; ++i)
        statistics.add(i * 1'000'000 - 1);
    QCOMPARE(statistics.frames(), 100);
    QCOMPARE(statistics.percentile(50), 50.0);
    QCOMPARE(statistics.percentile(99), 99.0);
    for (int i = 0; i < 10; ++i)
        statistics.add(3'000'000'000);
    QCOMPARE(statistics.percentile(99), 3000.0);
}

QTEST_MAIN(tst_ViewerFeed)

#include "tst_viewerfeed.moc"
