// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "files/textfilemodel.h"
#include "overview/gototime.h"
#include "overview/timesearch.h"
#include "search/rowtimes.h"
#include "search/tablefilter.h"
#include "windows/filewindow.h"
#include "windows/framestatistics.h"
#include "windows/viewertable.h"

#include <QFile>
#include <QSignalSpy>
#include <QStatusBar>
#include <QStringListModel>
#include <QTemporaryDir>
#include <QTest>

namespace {

const QDate s_latest(2026, 11, 22);

//! As "HH:mm:ss", \a second of a day.
QString timeAt(int second)
{
    return QTime(0, 0).addSecs(second).toString(QStringLiteral("HH:mm:ss"));
}

//! A row each \a step seconds.
QStringList rowsEach(int step, int count)
{
    QStringList rows;
    for (int i = 0; i < count; ++i)
        rows << QStringLiteral("2026-11-22 %1 row").arg(timeAt(i * step));
    return rows;
}

} // namespace

class tst_OverviewTimes : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void findsRows_data();
    void findsRows();
    void findsEveryRow();
    void skipsRowsWithoutATime_data();
    void skipsRowsWithoutATime();
    void findsInOtherOrder();
    void comparesClocks_data();
    void comparesClocks();
    void goesThroughAFile();
    void endsWithTheModel();
    void givesUp();
    void findsRowsAround();
    void goesThere();
    void goesToShownRows();
    void saysWhatIsWrong_data();
    void saysWhatIsWrong();

private:
    int found(QAbstractItemModel *model, const QByteArray &text, int row = -1);
    std::unique_ptr<FileWindow> open(const QByteArray &text);

    QTemporaryDir m_directory;
    FrameStatistics m_statistics;
};

//! −2 if nothing is.
int tst_OverviewTimes::found(QAbstractItemModel *model, const QByteArray &text, int row)
{
    TimeSearch search;
    QSignalSpy results(&search, &TimeSearch::found);
    search.find(model, *timeStampFrom(text, s_latest), row);
    if (results.isEmpty())
        results.wait();
    return results.isEmpty() ? -2 : results.constFirst().constFirst().toInt();
}

void tst_OverviewTimes::findsRows_data()
{
    QTest::addColumn<QStringList>("rows");
    QTest::addColumn<QByteArray>("time");
    QTest::addColumn<int>("current");
    QTest::addColumn<int>("expected");
    const QStringList tens = rowsEach(10, 1000);
    const auto add = [](const char *name, const QStringList &rows, const char *time, int expected,
                        int current = -1) {
        QTest::newRow(name) << rows << QByteArray(time) << current << expected;
    };
    add("exactly", tens, "2026-11-22 00:10:00", 60);
    add("the next one", tens, "2026-11-22 00:09:51", 60);
    add("the first", tens, "2026-11-22 00:00:00", 0);
    add("before the first", tens, "2020-01-01", 0);
    add("the last", tens, "2026-11-22 02:46:30", 999);
    add("behind the last", tens, "2026-11-22 02:46:31", -1);
    add("time alone", tens, "00:10", 60);
    const QStringList days {"2026-11-21 10:00:00", "2026-11-21 12:00:00", "2026-11-22 10:00:00",
                            "2026-11-22 12:00:00"};
    add("of the first day", days, "11:00:00", 1);
    add("of the current day", days, "11:00:00", 3, 2);
    const QStringList times {"10:00:00 a", "11:00:00 b", "12:00:00 c"};
    add("rows without a date", times, "10:30", 1);
    add("a date too much", times, "2026-11-22 11:30", 2);
    add("several at once", {"10:00:00", "11:00:00", "11:00:00", "11:00:00", "12:00:00"}, "11:00:00",
        1);
    add("no times", {"a", "b"}, "11:00", -1);
    add("no rows", {}, "11:00", -1);
}

void tst_OverviewTimes::findsRows()
{
    QFETCH(QStringList, rows);
    QFETCH(QByteArray, time);
    QFETCH(int, current);
    QStringListModel model(rows);
    QTEST(found(&model, time, current), "expected");
}

void tst_OverviewTimes::findsEveryRow()
{
    QStringListModel model(rowsEach(10, 77));
    for (int i = 0; i < 77; ++i) {
        QCOMPARE(found(&model, timeAt(i * 10).toLatin1()), i);
        QCOMPARE(found(&model, timeAt(i * 10 + 5).toLatin1()), i < 76 ? i + 1 : -1);
    }
}

void tst_OverviewTimes::skipsRowsWithoutATime_data()
{
    QTest::addColumn<int>("before");
    QTest::addColumn<int>("between");
    QTest::addColumn<int>("after");
    QTest::newRow("above") << 100 << 0 << 0;
    QTest::newRow("below") << 0 << 0 << 100;
    QTest::newRow("between") << 0 << 3 << 0;
    QTest::newRow("everywhere") << 10 << 10 << 10;
    QTest::newRow("many below") << 0 << 0 << 5000;
    QTest::newRow("many between") << 0 << 5000 << 0;
}

void tst_OverviewTimes::skipsRowsWithoutATime()
{
    QFETCH(int, before);
    QFETCH(int, between);
    QFETCH(int, after);
    QStringList rows(before, QStringLiteral("  more"));
    const QStringList timed = rowsEach(10, 20);
    for (const QString &row : timed)
        rows << row << QStringList(between, QStringLiteral("  more"));
    rows << QStringList(after, QStringLiteral("  more"));
    QStringListModel model(rows);
    for (int i = 0; i < 20; ++i)
        QCOMPARE(found(&model, "2026-11-22 " + timeAt(i * 10 - (i > 0 ? 1 : 0)).toLatin1()),
                 before + i * (between + 1));
    QCOMPARE(found(&model, "2026-11-22 00:03:11"), -1);
}

void tst_OverviewTimes::findsInOtherOrder()
{
    QStringList rows = rowsEach(1, 50000);
    std::reverse(rows.begin(), rows.end());
    rows << "2026-11-23 00:00:00";
    QStringListModel model(rows);
    QCOMPARE(found(&model, "2026-11-22 13:00"), 0);
    QCOMPARE(found(&model, "2026-11-22 23:00"), 50000);
    QCOMPARE(found(&model, "2026-11-24"), -1);
}

void tst_OverviewTimes::comparesClocks_data()
{
    QTest::addColumn<QByteArray>("time");
    QTest::addColumn<int>("expected");
    QTest::newRow("as it is seen") << QByteArray("2026-11-22 11:30") << 1;
    QTest::newRow("in its zone") << QByteArray("2026-11-22 11:30:00+01:00") << 1;
    QTest::newRow("in another") << QByteArray("2026-11-22 12:30:00+03:00") << 0;
}

void tst_OverviewTimes::comparesClocks()
{
    QFETCH(QByteArray, time);
    QStringListModel model({"2026-11-22T11:00:00+01:00", "2026-11-22T12:00:00+01:00"});
    QTEST(found(&model, time), "expected");
}

void tst_OverviewTimes::goesThroughAFile()
{
    QStringList rows = rowsEach(1, 50000);
    std::reverse(rows.begin(), rows.end());
    rows << "2026-11-23 00:00:00";
    const auto window = open(rows.join(u'\n').toLatin1());
    QCOMPARE(found(window->model(), "2026-11-22 23:00"), 50000);
    QCOMPARE(found(window->model(), "2026-11-24"), -1);
}

void tst_OverviewTimes::endsWithTheModel()
{
    QStringList rows = rowsEach(1, 80000);
    std::reverse(rows.begin(), rows.end());
    auto model = std::make_unique<QStringListModel>(rows);
    TimeSearch search;
    QSignalSpy results(&search, &TimeSearch::found);
    const TimeStamp never = *timeStampFrom("2027-01-01", QDate(2027, 1, 1));
    search.find(model.get(), never, -1);
    QVERIFY(search.isSearching());
    model->setStringList(rows); // begins anew
    QVERIFY(!search.isSearching());
    search.find(model.get(), never, -1);
    model.reset();
    QVERIFY(!search.isSearching());
    QCoreApplication::processEvents();
    QVERIFY(results.isEmpty());
}

void tst_OverviewTimes::givesUp()
{
    QStringList rows = rowsEach(1, 80000);
    std::reverse(rows.begin(), rows.end());
    QStringListModel model(rows);
    TimeSearch search;
    QSignalSpy results(&search, &TimeSearch::found);
    search.find(&model, *timeStampFrom("2026-11-23", s_latest), -1);
    search.find(&model, *timeStampFrom("00:00", s_latest), -1);
    QVERIFY(results.wait());
    QCOMPARE(results.count(), 1);
    QCOMPARE(results.constFirst().constFirst().toInt(), 0);
    QVERIFY(!search.isSearching());
}

void tst_OverviewTimes::findsRowsAround()
{
    QStringListModel model({"a", "b", "11:00:00", "c", "d", "12:00:00", "e"});
    const RowTimes times(model);
    QCOMPARE(times.rowWithTime(0, 7, 100), 2);
    QCOMPARE(times.rowWithTime(0, 7, 2), 7);
    QCOMPARE(times.rowWithTime(0, 2, 100), 2);
    QCOMPARE(times.rowWithTime(2, 7, 100), 2);
    QCOMPARE(times.rowWithTime(6, 7, 100), 7);
    QCOMPARE(times.rowWithTimeAbove(4, 100), 2);
    QCOMPARE(times.rowWithTimeAbove(4, 2), -1);
    QCOMPARE(times.rowWithTimeAbove(5, 100), 5);
    QCOMPARE(times.rowWithTimeAbove(1, 100), -1);
    QCOMPARE(times.rowWithTimeAbove(-1, 100), -1);
}

std::unique_ptr<FileWindow> tst_OverviewTimes::open(const QByteArray &text)
{
    const QString path = m_directory.filePath("file.log");
    QFile file(path);
    [&] {
        QVERIFY(file.open(QIODevice::WriteOnly));
        QCOMPARE(file.write(text), text.size());
    }();
    file.close();
    auto window = std::make_unique<FileWindow>(path, FormatRequest(), &m_statistics);
    window->show();
    [&] { QTRY_COMPARE(window->model()->indexedBytes(), quint64(text.size())); }();
    return window;
}

void tst_OverviewTimes::goesThere()
{
    const auto window = open(rowsEach(10, 2000).join(u'\n').toLatin1());
    auto *go = window->findChild<GoToTime *>();
    QCOMPARE(go->present(), QString());
    go->goTo("01:00");
    QCOMPARE(window->table()->currentIndex().row(), 360);
    QVERIFY(!window->isFollowing());
    QVERIFY(window->statusBar()->currentMessage().isEmpty());
    QCOMPARE(go->present(), QString("2026-11-22 01:00:00"));
    go->goTo(go->present());
    QCOMPARE(window->table()->currentIndex().row(), 360);
}

void tst_OverviewTimes::goesToShownRows()
{
    const auto window = open(rowsEach(10, 2000).join(u'\n').toLatin1());
    auto *find = window->findChild<TableFilter *>();
    find->dofilter(":00:00");
    QCOMPARE(window->rows(), 6);
    window->findChild<GoToTime *>()->goTo("02:30");
    QCOMPARE(window->table()->currentIndex().row(), 3);
}

void tst_OverviewTimes::saysWhatIsWrong_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QString>("time");
    const QByteArray usual = rowsEach(10, 20).join(u'\n').toLatin1();
    QTest::newRow("no time") << usual << "soon";
    QTest::newRow("too late") << usual << "2026-11-23";
    QTest::newRow("no times") << QByteArray("a\nb\n") << "11:00";
}

void tst_OverviewTimes::saysWhatIsWrong()
{
    QFETCH(QByteArray, text);
    QFETCH(QString, time);
    const auto window = open(text);
    window->findChild<GoToTime *>()->goTo(time);
    QVERIFY(!window->statusBar()->currentMessage().isEmpty());
    QVERIFY(!window->table()->currentIndex().isValid());
}

QTEST_MAIN(tst_OverviewTimes)
#include "tst_overviewtimes.moc"
