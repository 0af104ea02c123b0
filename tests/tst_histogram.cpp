// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "basics/contrast.h"
#include "files/textfilemodel.h"
#include "overview/histogram.h"
#include "overview/rowsurvey.h"
#include "search/findpanel.h"
#include "search/tablefilter.h"
#include "windows/filewindow.h"
#include "windows/framestatistics.h"
#include "windows/viewertable.h"

#include <QAction>
#include <QApplication>
#include <QFile>
#include <QHelpEvent>
#include <QMouseEvent>
#include <QSettings>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QTimeZone>
#include <QToolTip>

namespace {

//! A line each \a step seconds; those in the last tenth are errors, the first one is a warning.
QByteArray logLines(int count, int step)
{
    QByteArray text;
    const QDateTime begin(QDate(2026, 11, 22), QTime(8, 0), QTimeZone::utc());
    for (int i = 0; i < count; ++i) {
        text += begin.addSecs(i * step).toString("yyyy-MM-dd HH:mm:ss").toLatin1();
        text += i == 0 ? " WARN x\n" : i >= count * 9 / 10 ? " ERROR x\n" : " INFO x\n";
    }
    return text;
}

//! The same without times.
QByteArray plainLines(int count)
{
    QByteArray text;
    for (int i = 0; i < count; ++i)
        text += i == 0 ? "WARN x\n" : i >= count * 9 / 10 ? "ERROR x\n" : "INFO x\n";
    return text;
}

} // namespace

class tst_Histogram : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void isHiddenAtFirst();
    void hasColumnsOfTimes();
    void hasColumnsOfRows_data();
    void hasColumnsOfRows();
    void hasNoColumnsWithoutRows();
    void growsWithItsFile();
    void paintsLevels();
    void isVisibleOnAnyPalette_data();
    void isVisibleOnAnyPalette();
    void labelsAreRound_data();
    void labelsAreRound();
    void describesColumns();
    void knowsColumnsByTheirPlace();
    void goesToTheColumn_data();
    void goesToTheColumn();
    void choosesASpan_data();
    void choosesASpan();
    void choosesAPartOfASpan_data();
    void choosesAPartOfASpan();
    void choosesWithinAFilter_data();
    void choosesWithinAFilter();
    void aClickIsNoDrag();
    void aLongWayWithinAColumnIsADrag();
    void escapeEndsADrag();
    void hidingEndsADrag();
    void followsTheFilter();

private:
    void open(const QByteArray &text, bool isShown = true);
    QAction *action() const;
    TimeBins::Counts sum() const;
    void press(int column);
    void move(QPoint to);
    void moveTo(int column) { move(m_histogram->columnRect(column).center()); }
    void release(int column);

    QTemporaryDir m_settings;
    FrameStatistics m_statistics;
    std::unique_ptr<QTemporaryDir> m_directory;
    QString m_path;
    std::unique_ptr<FileWindow> m_window;
    Histogram *m_histogram = nullptr;
    RowSurvey *m_survey = nullptr;
};

void tst_Histogram::initTestCase()
{
    QSettings::setDefaultFormat(QSettings::IniFormat);
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, m_settings.path());
    QCoreApplication::setOrganizationName("vantix-test");
}

void tst_Histogram::init()
{
    QSettings().clear();
    m_window.reset();
    m_directory = std::make_unique<QTemporaryDir>();
    m_path = m_directory->filePath("file.log");
}

void tst_Histogram::open(const QByteArray &text, bool isShown)
{
    QFile file(m_path);
    QVERIFY(file.open(QIODevice::WriteOnly | QIODevice::Unbuffered));
    QCOMPARE(file.write(text), text.size());
    m_window = std::make_unique<FileWindow>(m_path, FormatRequest(), &m_statistics);
    m_histogram = m_window->findChild<Histogram *>();
    m_survey = m_window->findChild<RowSurvey *>();
    m_window->resize(800, 700);
    m_window->show();
    QTRY_COMPARE(m_window->model()->indexedBytes(), quint64(text.size()));
    if (!isShown)
        return;
    action()->trigger();
    QTRY_VERIFY(m_survey->isComplete());
    const int rows = m_window->rows();
    QTRY_COMPARE(sum().rows(), rows);
}

QAction *tst_Histogram::action() const
{
    const auto actions = m_window->findChildren<QAction *>();
    return *std::find_if(actions.begin(), actions.end(), [](const QAction *candidate) {
        return candidate->text() == QLatin1String("&Histogram");
    });
}

TimeBins::Counts tst_Histogram::sum() const
{
    TimeBins::Counts counts;
    for (int i = 0; i < m_histogram->columns().count(); ++i)
        counts += m_histogram->columns().at(i);
    return counts;
}

void tst_Histogram::press(int column)
{
    QTest::mousePress(m_histogram, Qt::LeftButton, {}, m_histogram->columnRect(column).center());
}

void tst_Histogram::move(QPoint to)
{
    QMouseEvent event(QEvent::MouseMove, to, m_histogram->mapToGlobal(to), Qt::NoButton,
                      Qt::LeftButton, {});
    QCoreApplication::sendEvent(m_histogram, &event);
}

void tst_Histogram::release(int column)
{
    QTest::mouseRelease(m_histogram, Qt::LeftButton, {}, m_histogram->columnRect(column).center());
}

void tst_Histogram::isHiddenAtFirst()
{
    open(logLines(10, 1), false);
    QVERIFY(!m_histogram->isVisible());
    QVERIFY(!action()->isChecked());
    QTRY_VERIFY(m_survey->isComplete());
    QVERIFY(m_survey->times().isEmpty());
    action()->trigger();
    QVERIFY(m_histogram->isVisible());
    open(logLines(10, 1), false);
    QVERIFY(m_histogram->isVisible());
    action()->trigger();
    QVERIFY(!m_histogram->isVisible());
    QVERIFY(m_survey->times().isEmpty());
}

void tst_Histogram::hasColumnsOfTimes()
{
    open(logLines(1000, 10));
    const HistogramColumns &columns = m_histogram->columns();
    QVERIFY(columns.areTimes());
    QVERIFY(columns.haveDates());
    QVERIFY(columns.count() >= 20);
    QVERIFY(columns.count() <= m_histogram->width() / 4);
    QCOMPARE(sum().errors, 100);
    QCOMPARE(sum().warnings, 1);
    QCOMPARE(columns.at(0).warnings, 1);
    QCOMPARE(columns.at(columns.count() - 1).rows(), columns.at(columns.count() - 1).errors);
}

void tst_Histogram::hasColumnsOfRows_data()
{
    QTest::addColumn<int>("count");
    QTest::newRow("one") << 1;
    QTest::newRow("few") << 10;
    QTest::newRow("many") << 20000;
}

void tst_Histogram::hasColumnsOfRows()
{
    QFETCH(int, count);
    open(plainLines(count));
    const HistogramColumns &columns = m_histogram->columns();
    QVERIFY(!columns.areTimes());
    QVERIFY(columns.count() <= m_histogram->width() / 4);
    QCOMPARE(columns.begin(0), 0);
    QVERIFY(columns.begin(columns.count()) >= count);
    QVERIFY(columns.begin(columns.count() - 1) < count);
    if (count < 100) {
        QCOMPARE(columns.count(), count);
        QCOMPARE(sum().errors, count / 10);
        QCOMPARE(sum().warnings, 1);
    }
}

void tst_Histogram::hasNoColumnsWithoutRows()
{
    open(QByteArray());
    QCOMPARE(m_histogram->columns().count(), 0);
    QCOMPARE(m_histogram->columnAt(50), -1);
    QVERIFY(m_histogram->columns().labels(5).isEmpty());
    QTest::mouseClick(m_histogram, Qt::LeftButton, {}, {50, 20});
    QCOMPARE(m_histogram->chosen(), std::pair(-1, -1));
    QVERIFY(!m_histogram->grab().isNull());
}

void tst_Histogram::growsWithItsFile()
{
    open(logLines(100, 10));
    QFile file(m_path);
    QVERIFY(file.open(QIODevice::Append));
    file.write("2026-11-23 08:00:00 ERROR later\n");
    file.close();
    QTRY_COMPARE(sum().rows(), 101);
    const HistogramColumns &columns = m_histogram->columns();
    QCOMPARE(columns.at(columns.count() - 1).errors, 1);
    QCOMPARE(sum().errors, 11);
}

void tst_Histogram::paintsLevels()
{
    open(logLines(1000, 10));
    const Histogram::Colors colors(m_histogram->palette());
    const QImage picture = m_histogram->grab().toImage();
    const double scale = picture.devicePixelRatio();
    const auto footOf = [&](int column) {
        const QRect rect = m_histogram->columnRect(column);
        return picture.pixelColor(int((rect.left() + 1) * scale),
                                  int((rect.bottom() - 0.5) * scale));
    };
    const int last = m_histogram->columns().count() - 1;
    QCOMPARE(footOf(last), colors.error);
    QCOMPARE(footOf(last / 2), colors.other);
    QCOMPARE(footOf(0), colors.warning);
    const QRect rect = m_histogram->columnRect(0);
    QCOMPARE(picture.pixelColor(0, int(rect.center().y() * scale)), colors.background);
}

void tst_Histogram::isVisibleOnAnyPalette_data()
{
    QTest::addColumn<QPalette>("palette");
    QTest::newRow("light") << QPalette(QColor(0xf0, 0xf0, 0xf0), QColor(Qt::white));
    QTest::newRow("dark") << QPalette(QColor(0x30, 0x30, 0x30), QColor(0x20, 0x20, 0x20));
    QTest::newRow("grey") << QPalette(Qt::gray, Qt::gray);
}

void tst_Histogram::isVisibleOnAnyPalette()
{
    QFETCH(QPalette, palette);
    const Histogram::Colors colors(palette);
    for (const QColor &color : {colors.error, colors.warning, colors.other})
        QVERIFY(contrast(color, colors.background) >= visibleContrast);
    QVERIFY(contrast(colors.text, colors.background) >= readableContrast);
}

void tst_Histogram::labelsAreRound_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QStringList>("labels");
    QTest::newRow("hours") << logLines(360, 60)
                           << QStringList {"08:00", "09:00", "10:00", "11:00", "12:00", "13:00"};
    QTest::newRow("days") << logLines(6, 86400)
                          << QStringList {"2026-11-23", "2026-11-24", "2026-11-25", "2026-11-26",
                                          "2026-11-27"};
    QTest::newRow("seconds") << logLines(6, 1) << QStringList {"08:00:00", "08:00:01", "08:00:02",
                                                               "08:00:03", "08:00:04", "08:00:05"};
    QTest::newRow("parts of a second")
        << QByteArray("10:00:00.020\n10:00:00.034\n")
        << QStringList {"10:00:00.020", "10:00:00.025", "10:00:00.030"};
    const QLocale locale;
    QStringList rows;
    for (const int row : {1000, 2000, 3000, 4000})
        rows << locale.toString(row);
    QTest::newRow("rows") << plainLines(4321) << rows;
}

void tst_Histogram::labelsAreRound()
{
    QFETCH(QByteArray, text);
    open(text);
    QStringList texts;
    const HistogramColumns &columns = m_histogram->columns();
    const auto labels = columns.labels(7);
    for (const HistogramColumns::Label &label : labels) {
        QVERIFY(label.place >= columns.begin(0));
        QVERIFY(label.place < columns.begin(columns.count()));
        texts << label.text;
    }
    QTEST(texts, "labels");
}

void tst_Histogram::describesColumns()
{
    open("2026-11-22 08:00:00 ERROR\n2026-11-22 08:00:00 WARN\n2026-11-22 08:00:00 x\n"
         "2026-11-22 10:00:00 WARN\n2026-11-22 10:00:00 WARN\n");
    const HistogramColumns &columns = m_histogram->columns();
    const int last = columns.count() - 1;
    QVERIFY(columns.description(0, 0).startsWith("2026-11-22 08:00"));
    QVERIFY(columns.description(0, 0).endsWith(": 3 rows, 1 error, 1 warning"));
    QVERIFY(columns.description(last, last).endsWith(": 2 rows, 2 warnings"));
    QVERIFY(columns.description(0, last).endsWith(": 5 rows, 1 error, 3 warnings"));
    const QPoint place = m_histogram->columnRect(0).center();
    QHelpEvent help(QEvent::ToolTip, place, m_histogram->mapToGlobal(place));
    QCoreApplication::sendEvent(m_histogram, &help);
    QCOMPARE(QToolTip::text(), columns.description(0, 0));
    QToolTip::hideText();
}

void tst_Histogram::knowsColumnsByTheirPlace()
{
    open(logLines(1000, 10));
    const int count = m_histogram->columns().count();
    for (int i = 0; i < count; ++i) {
        const QRect rect = m_histogram->columnRect(i);
        QCOMPARE(m_histogram->columnAt(rect.left()), i);
        QCOMPARE(m_histogram->columnAt(rect.right()), i);
    }
    QCOMPARE(m_histogram->columnAt(-100), 0);
    QCOMPARE(m_histogram->columnAt(100000), count - 1);
}

void tst_Histogram::goesToTheColumn_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::newRow("times") << logLines(2000, 10);
    QTest::newRow("rows") << plainLines(2000);
}

void tst_Histogram::goesToTheColumn()
{
    QFETCH(QByteArray, text);
    open(text);
    const HistogramColumns &columns = m_histogram->columns();
    int before = 0;
    for (int i = 0; i < columns.count(); ++i) {
        if (i % 20 == 3) {
            QTest::mouseClick(m_histogram, Qt::LeftButton, {}, m_histogram->columnRect(i).center());
            QTRY_COMPARE(m_window->table()->currentIndex().row(), before);
            QCOMPARE(m_histogram->chosen(), std::pair(i, i));
        }
        before += columns.at(i).rows();
    }
    QVERIFY(!m_window->isFollowing());
}

void tst_Histogram::choosesASpan_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<int>("from");
    QTest::addColumn<int>("to");
    for (const bool areTimes : {true, false}) {
        const QByteArray text = areTimes ? logLines(2000, 10) : plainLines(2000);
        const char *what = areTimes ? "times" : "rows";
        QTest::addRow("%s", what) << text << 10 << 20;
        QTest::addRow("%s to the left", what) << text << 20 << 10;
        QTest::addRow("%s of two columns", what) << text << 10 << 11;
        QTest::addRow("all %s", what) << text << 0 << -1;
    }
}

void tst_Histogram::choosesASpan()
{
    QFETCH(QByteArray, text);
    QFETCH(int, from);
    QFETCH(int, to);
    open(text);
    const HistogramColumns columns = m_histogram->columns();
    to = to < 0 ? columns.count() - 1 : to;
    const auto [first, last] = std::minmax(from, to);
    QSignalSpy goesTo(m_histogram, &Histogram::timeChosen);
    QSignalSpy goesToRow(m_histogram, &Histogram::rowChosen);
    press(from);
    moveTo(to);
    QCOMPARE(m_histogram->chosen(), std::pair(first, last));
    QCOMPARE(QToolTip::text(), columns.description(first, last));
    QCOMPARE(m_window->rows(), 2000); // not yet
    release(to);
    int above = 0;
    int expected = 0;
    for (int i = 0; i <= last; ++i)
        (i < first ? above : expected) += columns.at(i).rows();
    const auto *find = m_window->findChild<TableFilter *>();
    QTRY_VERIFY(find->shownSpan());
    QCOMPARE(m_window->rows(), expected);
    QCOMPARE(find->toSource(m_window->table()->model()->index(0, 0)).row(), above);
    QCOMPARE(find->span()->areTimes, columns.areTimes());
    QCOMPARE(find->span()->haveDates, columns.haveDates());
    QCOMPARE(find->span()->from, columns.begin(first));
    // The picture is one of these rows then.
    QTRY_COMPARE(sum().rows(), expected);
    QCOMPARE(m_histogram->chosen(), std::pair(-1, -1));
    QCOMPARE(goesTo.count() + goesToRow.count(), 0);
}

void tst_Histogram::choosesAPartOfASpan_data()
{
    goesToTheColumn_data();
}

void tst_Histogram::choosesAPartOfASpan()
{
    QFETCH(QByteArray, text);
    open(text);
    press(30);
    moveTo(60);
    release(60);
    QTRY_VERIFY(m_window->rows() < 2000);
    const int shown = m_window->rows();
    QTRY_COMPARE(sum().rows(), shown);
    const auto *find = m_window->findChild<TableFilter *>();
    const HistogramColumns columns = m_histogram->columns();
    int above = find->toSource(m_window->table()->model()->index(0, 0)).row();
    for (int i = 0; i < 5; ++i)
        above += columns.at(i).rows();
    int expected = 0;
    for (int i = 5; i <= 10; ++i)
        expected += columns.at(i).rows();
    QVERIFY(expected > 0 && expected < shown);
    press(5);
    moveTo(10);
    release(10);
    QTRY_COMPARE(m_window->rows(), expected);
    QCOMPARE(find->toSource(m_window->table()->model()->index(0, 0)).row(), above);
}

void tst_Histogram::choosesWithinAFilter_data()
{
    goesToTheColumn_data();
}

//! By what the columns show, rows of the filter.
void tst_Histogram::choosesWithinAFilter()
{
    QFETCH(QByteArray, text);
    open(text);
    auto *find = m_window->findChild<TableFilter *>();
    find->dofilter("ERROR");
    QTRY_COMPARE(sum().rows(), 200);
    const HistogramColumns columns = m_histogram->columns();
    press(2);
    moveTo(4);
    release(4);
    int expected = 0;
    for (int i = 2; i <= 4; ++i)
        expected += columns.at(i).rows();
    QTRY_COMPARE(m_window->rows(), expected);
    QCOMPARE(find->shownMatcher().text(), "ERROR");
    QCOMPARE(find->toSource(m_window->table()->model()->index(0, 0)).row(),
             1800 + columns.at(0).rows() + columns.at(1).rows());
}

//! A click of a hand that is not quite still.
void tst_Histogram::aClickIsNoDrag()
{
    open(logLines(2000, 10));
    QSignalSpy chosen(m_histogram, &Histogram::timeChosen);
    const QSignalSpy spans(m_histogram, &Histogram::spanChosen);
    const QRect column = m_histogram->columnRect(10);
    const QPoint edge(column.right(), column.center().y());
    QCOMPARE(m_histogram->columnAt(edge.x() + 1), 11);
    for (const QPoint way : {QPoint(0, 0), QPoint(0, 2), QPoint(1, 2)}) {
        QTest::mousePress(m_histogram, Qt::LeftButton, {}, edge);
        move(edge + way);
        QTest::mouseRelease(m_histogram, Qt::LeftButton, {}, edge + way);
    }
    QCOMPARE(chosen.count(), 3);
    QCOMPARE(spans.count(), 0);
    const auto time = chosen.constFirst().constFirst().value<TimeStamp>();
    QCOMPARE(time.clock, m_histogram->columns().begin(10));
    QVERIFY(time.hasDate);
    QCOMPARE(m_window->rows(), 2000);
}

void tst_Histogram::aLongWayWithinAColumnIsADrag()
{
    open(logLines(1, 10)); // a wide column
    const QRect column = m_histogram->columnRect(0);
    const QPoint way(QApplication::startDragDistance(), 0);
    QVERIFY(column.contains(column.center() + way));
    QTest::mousePress(m_histogram, Qt::LeftButton, {}, column.center());
    move(column.center() + way);
    move(column.center()); // and back
    QTest::mouseRelease(m_histogram, Qt::LeftButton, {}, column.center());
    const auto *find = m_window->findChild<TableFilter *>();
    QTRY_VERIFY(find->shownSpan());
    QCOMPARE(m_window->rows(), 1);
}

void tst_Histogram::escapeEndsADrag()
{
    open(logLines(2000, 10));
    const QSignalSpy times(m_histogram, &Histogram::timeChosen);
    const QSignalSpy spans(m_histogram, &Histogram::spanChosen);
    m_window->openFind(); // Esc would close that
    m_window->table()->setFocus();
    press(10);
    const auto footOf = [this](int column) {
        const QRect rect = m_histogram->columnRect(column);
        const QImage picture = m_histogram->grab().toImage();
        const double scale = picture.devicePixelRatio();
        return picture.pixelColor(int((rect.left() + 1) * scale), int((rect.bottom() - 1) * scale));
    };
    const QColor usual = footOf(30);
    QCOMPARE(footOf(15), usual);
    moveTo(20);
    QCOMPARE(footOf(15), usual);
    const QColor paper = Histogram::Colors(m_histogram->palette()).background;
    QVERIFY(contrast(footOf(30), paper) < contrast(usual, paper));
    QTest::keyClick(m_window.get(), Qt::Key_A); // any other key
    QCOMPARE(m_histogram->chosen(), std::pair(10, 20));
    QTest::keyClick(m_window->table(), Qt::Key_Escape);
    QCOMPARE(m_histogram->chosen(), std::pair(-1, -1));
    moveTo(25);
    QCOMPARE(m_histogram->chosen(), std::pair(-1, -1));
    release(25);
    QCoreApplication::processEvents();
    QCOMPARE(spans.count() + times.count(), 0);
    QCOMPARE(m_window->rows(), 2000);
    auto *panel = m_window->findChild<FindPanel *>();
    QVERIFY(panel->isVisible());
    QTest::keyClick(m_window->table(), Qt::Key_Escape); // its own again
    QVERIFY(!panel->isVisible());
    press(10);
    moveTo(20);
    release(20);
    QTRY_VERIFY(m_window->rows() < 2000);
}

void tst_Histogram::hidingEndsADrag()
{
    open(plainLines(2000));
    const QSignalSpy spans(m_histogram, &Histogram::spanChosen);
    press(10);
    moveTo(20);
    action()->trigger();
    action()->trigger();
    QTRY_COMPARE(sum().rows(), 2000);
    release(20);
    QCOMPARE(spans.count(), 0);
    QCOMPARE(m_histogram->chosen(), std::pair(-1, -1));
}

void tst_Histogram::followsTheFilter()
{
    open(logLines(1000, 10));
    m_window->findChild<TableFilter *>()->dofilter("ERROR");
    QTRY_COMPARE(sum().rows(), 100);
    QCOMPARE(sum().errors, 100);
    QTest::mouseClick(m_histogram, Qt::LeftButton, {}, m_histogram->columnRect(0).center());
    QTRY_COMPARE(m_window->table()->currentIndex().row(), 0);
}

QTEST_MAIN(tst_Histogram)
#include "tst_histogram.moc"
