// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "overview/timebins.h"
#include "search/rowclock.h"

#include <QDateTime>
#include <QStringListModel>
#include <QTest>

namespace {

constexpr qint64 s_second = 1000;
constexpr qint64 s_day = 86400000;

int rows(const TimeBins &bins)
{
    int sum = 0;
    for (int i = 0; i < bins.count(); ++i)
        sum += bins.at(i).rows();
    return sum;
}

} // namespace

class tst_TimeBins : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void countsLevels();
    void coversTimes_data();
    void coversTimes();
    void hasRoundBins_data();
    void hasRoundBins();
    void countsAnyOrder();
    void takesBack();
    void shrinks();
    void tellsTimesOfRows();
    void keepsTheTimeOfALongTrace();
};

void tst_TimeBins::countsLevels()
{
    TimeBins bins;
    QVERIFY(bins.isEmpty());
    for (const LogLevel level : {LogLevel::Error, LogLevel::Warning, LogLevel::Info,
                                 LogLevel::Debug, LogLevel::None, LogLevel::Error})
        bins.add(5000, level);
    QCOMPARE(bins.count(), 1);
    QCOMPARE(bins.begin(), 5000);
    QCOMPARE(bins.at(0).errors, 2);
    QCOMPARE(bins.at(0).warnings, 1);
    QCOMPARE(bins.at(0).others, 3);
    QCOMPARE(bins.at(0).rows(), 6);
    bins.clear();
    QVERIFY(bins.isEmpty());
}

void tst_TimeBins::coversTimes_data()
{
    QTest::addColumn<qint64>("first");
    QTest::addColumn<qint64>("last");
    const qint64 now = 1795346745123;
    QTest::newRow("a moment") << now << now + 3;
    QTest::newRow("a second") << now << now + s_second;
    QTest::newRow("a day") << now << now + s_day;
    QTest::newRow("a year") << now << now + 365 * s_day;
    QTest::newRow("a century") << now - 36500 * s_day << now;
    QTest::newRow("before 1970") << -10 * s_day << -9 * s_day;
    QTest::newRow("about 1970") << qint64(-12345) << qint64(23456);
}

void tst_TimeBins::coversTimes()
{
    QFETCH(qint64, first);
    QFETCH(qint64, last);
    for (const bool isUpwards : {true, false}) {
        TimeBins bins;
        if (isUpwards)
            bins.add(first, LogLevel::Error);
        bins.add(last, LogLevel::Warning);
        if (!isUpwards)
            bins.add(first, LogLevel::Error);
        QVERIFY(bins.count() <= TimeBins::most);
        QVERIFY(bins.begin() <= first);
        QVERIFY(first < bins.begin() + bins.width());
        QVERIFY(last >= bins.begin() + (bins.count() - 1) * bins.width());
        QVERIFY(last < bins.begin() + bins.count() * bins.width());
        QCOMPARE(bins.at(0).errors, 1);
        QCOMPARE(bins.at(bins.count() - 1).warnings, 1);
        QCOMPARE(rows(bins), 2);
    }
}

void tst_TimeBins::hasRoundBins_data()
{
    QTest::addColumn<qint64>("span");
    QTest::addColumn<qint64>("width");
    QTest::newRow("two seconds") << 2 * s_second << qint64(1);
    QTest::newRow("a minute") << 60 * s_second << qint64(50);
    QTest::newRow("an hour") << 3600 * s_second << 5 * s_second;
    QTest::newRow("a day") << s_day << 60 * s_second;
    QTest::newRow("a month") << 30 * s_day << 1800 * s_second;
    QTest::newRow("ten years") << 3650 * s_day << 2 * s_day;
}

void tst_TimeBins::hasRoundBins()
{
    QFETCH(qint64, span);
    TimeBins bins;
    bins.add(20 * s_day, LogLevel::None);
    bins.add(20 * s_day + span, LogLevel::None);
    QTEST(bins.width(), "width");
    QCOMPARE(bins.begin() % bins.width(), 0);
}

void tst_TimeBins::countsAnyOrder()
{
    QList<TimeBins> results;
    for (const int step : {1, 7, 4999}) { // steps that reach every row
        TimeBins bins;
        for (int i = 0; i < 5000; ++i)
            bins.add(qint64(i * step % 5000) * 777,
                     i * step % 5000 < 100 ? LogLevel::Error : LogLevel::None);
        results << bins;
    }
    for (const TimeBins &bins : results) {
        QCOMPARE(rows(bins), 5000);
        QCOMPARE(bins.width(), results.constFirst().width());
        QCOMPARE(bins.count(), results.constFirst().count());
        for (int i = 0; i < bins.count(); ++i) {
            QCOMPARE(bins.at(i).errors, results.constFirst().at(i).errors);
            QCOMPARE(bins.at(i).others, results.constFirst().at(i).others);
        }
    }
}

void tst_TimeBins::takesBack()
{
    TimeBins bins;
    bins.add(5, LogLevel::Error);
    bins.add(10 * s_day, LogLevel::Warning);
    bins.add(5, LogLevel::Error, -1);
    QCOMPARE(rows(bins), 1);
    QCOMPARE(bins.at(0).errors, 0);
}

void tst_TimeBins::shrinks()
{
    TimeBins bins;
    for (int i = 0; i < 1000; ++i)
        bins.add(i * s_second, LogLevel::Info);
    bins.shrinkTo(100);
    QCOMPARE(bins.width(), 10 * s_second);
    QCOMPARE(bins.count(), 100);
    for (int i = 0; i < 100; ++i)
        QCOMPARE(bins.at(i).others, 10);
    bins.shrinkTo(2);
    QVERIFY(bins.count() <= 2);
    QCOMPARE(rows(bins), 1000);
}

void tst_TimeBins::tellsTimesOfRows()
{
    QStringListModel model({"before", "10:00:00", "more", "more", "11:00:00", "more"});
    const qint64 ten = 36000 * s_second;
    const qint64 eleven = 39600 * s_second;
    RowClock clock(model);
    QVERIFY(!clock.timeOf(0));
    QCOMPARE(clock.timeOf(1)->clock, ten);
    QCOMPARE(clock.timeOf(2)->clock, ten);
    QCOMPARE(clock.timeOf(3)->clock, ten);
    QCOMPARE(clock.timeOf(5)->clock, eleven); // not that of the row before
    QCOMPARE(clock.timeOf(2)->clock, ten);
    QVERIFY(!clock.timeOf(0));
}

void tst_TimeBins::keepsTheTimeOfALongTrace()
{
    constexpr int length = 5000; // more than are looked at above a row
    QStringList rows {"10:00:00"};
    rows.insert(1, length, QStringLiteral("more"));
    QStringListModel model(rows);
    RowClock clock(model);
    for (int row = 0; row < length; ++row)
        QVERIFY(clock.timeOf(row));
    QVERIFY(clock.timeOf(length - 1)); // again
    clock.rowsChanged(length - 1);
    QVERIFY(clock.timeOf(length - 1));
    QVERIFY(clock.timeOf(length));
    model.setData(model.index(0), "none");
    clock.rowsChanged(0);
    QVERIFY(!clock.timeOf(0));
    QVERIFY(!clock.timeOf(1));
    model.setData(model.index(2), "11:00:00");
    clock.rowsChanged(2);
    QVERIFY(!clock.timeOf(1));
    QCOMPARE(clock.timeOf(3)->clock, 39600 * s_second);
}

QTEST_GUILESS_MAIN(tst_TimeBins)
#include "tst_timebins.moc"
