// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "activation.h"
#include "files/textfilemodel.h"
#include "search/findpanel.h"
#include "search/tablefilter.h"
#include "slowmodel.h"
#include "windows/filewindow.h"
#include "windows/filterbar.h"
#include "windows/framestatistics.h"
#include "windows/viewertable.h"

#include <QApplication>
#include <QFile>
#include <QLineEdit>
#include <QLocale>
#include <QTemporaryDir>
#include <QTest>
#include <QTimeZone>
#include <QTimer>
#include <QToolButton>

#include <functional>
#include <memory>

namespace {

constexpr qint64 s_minute = 60'000;
constexpr qint64 s_day = 24 * 60 * s_minute;

//! The span between two minutes after twelve.
RowSpan minutes(int from, int to)
{
    return {true, false, (720 + from) * s_minute, (720 + to) * s_minute};
}

//! Ten rows a minute from twelve on, of which one has an a, and two have no time.
QByteArray logLines(int from, int count)
{
    QByteArray text;
    for (int i = from; i < from + count; ++i) {
        const QTime time = QTime(12, 0).addSecs(6 * i);
        text += i % 10 > 7 ? QByteArray("  more") : time.toString("HH:mm:ss").toLatin1();
        text += i % 10 == 3 ? " a\n" : " b\n";
    }
    return text;
}

void click(const QWidget &window, const char *button)
{
    QTest::mouseClick(window.findChild<QToolButton *>(QString::fromLatin1(button)), Qt::LeftButton);
}

} // namespace

class tst_RowSpan : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void tellsOfItself_data();
    void tellsOfItself();
    void filtersAFile_data();
    void filtersAFile();
    void followsTheFile();
    void aLineThatGrowsGetsATime();
    void holdsWithAText();
    void barTellsOfIt();
    void isUndone_data();
    void isUndone();
    void textIsUndoneFirst();
    void staysInAFileReadAnew();
    void isGivenUp_data();
    void isGivenUp();
    void holdsWithATextThatIsLookedFor();

private:
    void open(const QByteArray &text);
    void write(const QByteArray &text, QIODevice::OpenMode mode = QIODevice::Append) const;
    void filterByText();
    QString barText() const { return m_window->findChild<FilterBar *>()->text(); }

    FrameStatistics m_statistics;
    std::unique_ptr<QTemporaryDir> m_directory;
    std::unique_ptr<FileWindow> m_window;
    TableFilter *m_find = nullptr;
};

void tst_RowSpan::init()
{
    m_window.reset();
    m_directory = std::make_unique<QTemporaryDir>();
}

void tst_RowSpan::write(const QByteArray &text, QIODevice::OpenMode mode) const
{
    QFile file(m_directory->filePath("file.log"));
    QVERIFY(file.open(mode | QIODevice::WriteOnly | QIODevice::Unbuffered));
    QCOMPARE(file.write(text), text.size());
}

void tst_RowSpan::open(const QByteArray &text)
{
    write(text);
    m_window = std::make_unique<FileWindow>(m_directory->filePath("file.log"), FormatRequest(),
                                            &m_statistics);
    m_find = m_window->findChild<TableFilter *>();
    m_window->show();
    activate(m_window.get());
    m_window->table()->setFocus();
    QTRY_COMPARE(m_window->model()->indexedBytes(), quint64(text.size()));
}

void tst_RowSpan::filterByText()
{
    m_window->openFind();
    QTest::keyClicks(m_window->findChild<FindPanel *>()->field(), QStringLiteral("a"));
    click(*m_window, "filterButton");
}

void tst_RowSpan::tellsOfItself_data()
{
    QTest::addColumn<RowSpan>("span");
    QTest::addColumn<QString>("text");
    const qint64 day = QDate(2026, 11, 22).startOfDay(QTimeZone::utc()).toMSecsSinceEpoch();
    QTest::newRow("minutes") << minutes(0, 5) << "12:00 to 12:05";
    QTest::newRow("seconds") << RowSpan {true, false, 0, 5000} << "00:00:00 to 00:00:05";
    QTest::newRow("parts of a second")
        << RowSpan {true, false, 60'000, 65'020} << "00:01:00.000 to 00:01:05.020";
    QTest::newRow("of a day") << RowSpan {true, true, day, day + 12 * 60 * s_minute}
                              << "2026-11-22 00:00 to 12:00";
    QTest::newRow("over midnight") << RowSpan {true, true, day - s_minute, day + 1000}
                                   << "2026-11-21 23:59:00 to 2026-11-22 00:00:01";
    QTest::newRow("days") << RowSpan {true, true, day, day + 2 * s_day}
                          << "2026-11-22 00:00 to 2026-11-24 00:00";
    QTest::newRow("rows") << RowSpan {false, false, 1999, 3000}
                          << "Rows " + QLocale().toString(2000) + " to " + QLocale().toString(3000);
}

void tst_RowSpan::tellsOfItself()
{
    QFETCH(RowSpan, span);
    QTEST(textOf(span), "text");
}

void tst_RowSpan::filtersAFile_data()
{
    QTest::addColumn<QByteArray>("text");
    const QByteArray lines = logLines(0, 5000);
    QTest::newRow("ASCII") << lines;
    QTest::newRow("UTF-8") << QByteArray(lines).replace(" b", " \xc3\xa4");
    QByteArray wide("\xff\xfe");
    for (const char letter : lines)
        wide.append(letter).append('\0');
    QTest::newRow("UTF-16") << wide;
}

void tst_RowSpan::filtersAFile()
{
    QFETCH(QByteArray, text);
    open(text);
    m_find->setSpan(minutes(10, 200));
    QCOMPARE(m_window->rows(), 1900);
    QCOMPARE(m_find->toSource(m_window->table()->model()->index(0, 0)).row(), 100);
    QCOMPARE(m_find->toSource(m_window->table()->model()->index(1899, 0)).row(), 1999);
    m_find->dofilter("a");
    QCOMPARE(m_window->rows(), 190);
    m_find->setSpan(minutes(20, 30));
    QCOMPARE(m_window->rows(), 10);
    QCOMPARE(m_find->toSource(m_window->table()->model()->index(0, 0)).row(), 203);
}

void tst_RowSpan::followsTheFile()
{
    open(logLines(0, 15));
    m_find->setSpan(minutes(1, 3));
    QCOMPARE(m_window->rows(), 5);
    write(logLines(15, 4));
    QTRY_COMPARE(m_window->rows(), 9);
    write(logLines(19, 100)); // begins with a row that has its time from before
    QTRY_COMPARE(m_find->source()->rowCount(), 119);
    QTRY_COMPARE(m_window->rows(), 20);
    write("12:01:00 late\n  more\n12:03:00 too late\n  more\n");
    QTRY_COMPARE(m_window->rows(), 22);
    write("  none\n12:02:00 another\n", QIODevice::Truncate);
    QTRY_COMPARE(m_find->source()->rowCount(), 2);
    QTRY_COMPARE(m_window->rows(), 1);
    QVERIFY(m_find->span() == minutes(1, 3));
}

void tst_RowSpan::aLineThatGrowsGetsATime()
{
    open("12:00:00\n12:0");
    m_find->setSpan(minutes(1, 3));
    QCOMPARE(m_window->rows(), 0);
    write("2:00");
    QTRY_COMPARE(m_window->rows(), 1);
    write(" a\n  more\n");
    QTRY_COMPARE(m_window->rows(), 2);
}

void tst_RowSpan::holdsWithAText()
{
    open(logLines(0, 100));
    m_find->setSpan(minutes(1, 3));
    QCOMPARE(m_window->rows(), 20);
    m_find->dofilter("a");
    QCOMPARE(m_window->rows(), 2);
    QVERIFY(m_find->isTextFiltered());
    m_find->dofilter("b");
    QCOMPARE(m_window->rows(), 18);
    m_find->setSpan({});
    QCOMPARE(m_window->rows(), 90);
    QCOMPARE(m_find->shownMatcher().text(), "b");
    m_find->setSpan(minutes(0, 1));
    QCOMPARE(m_window->rows(), 9);
    m_find->dofilter({});
    QCOMPARE(m_window->rows(), 10);
    QVERIFY(!m_find->isTextFiltered());
    m_find->setSpan({});
    QVERIFY(!m_find->isFiltered());
    QCOMPARE(m_window->rows(), 100);
    m_find->setSpan(minutes(0, 1));
    m_find->dofilter("a");
    m_find->showAll();
    QVERIFY(!m_find->isFiltered());
    m_find->dofilter("a");
    QCOMPARE(m_window->rows(), 10);
}

void tst_RowSpan::barTellsOfIt()
{
    open(logLines(0, 100));
    const auto *bar = m_window->findChild<FilterBar *>();
    const auto *button = m_window->findChild<QToolButton *>("showAllTimesButton");
    const auto *panel = m_window->findChild<FindPanel *>();
    const auto counts = [](int shown, int all) {
        return QStringLiteral("%L1 of %L2 rows").arg(shown).arg(all);
    };
    const auto rows = [] { return QStringLiteral("Rows %L1 to %L2 · ").arg(5).arg(9); };
    m_find->setSpan(minutes(0, 5));
    QVERIFY(bar->isVisible());
    QCOMPARE(barText(), "12:00 to 12:05 · " + counts(50, 100));
    QVERIFY(!button->isVisible()); // the other one does the same
    QVERIFY(!panel->hasFilter());
    filterByText();
    QCOMPARE(barText(), "12:00 to 12:05 · " + counts(5, 100) + " have “a”");
    QVERIFY(button->isVisible());
    QVERIFY(panel->hasFilter());
    click(*m_window, "showAllTimesButton");
    QCOMPARE(barText(), counts(10, 100) + " have “a”");
    QVERIFY(!button->isVisible());
    QVERIFY(panel->hasFilter());
    m_find->setSpan(minutes(0, 5));
    click(*m_window, "filterButton");
    QCOMPARE(barText(), "12:00 to 12:05 · " + counts(50, 100));
    QVERIFY(!panel->hasFilter());
    m_find->setSpan(RowSpan {false, false, 4, 9});
    QCOMPARE(barText(), rows() + counts(5, 100));
    write(logLines(100, 20));
    QTRY_COMPARE(barText(), rows() + counts(5, 120));
}

void tst_RowSpan::isUndone_data()
{
    using Undo = std::function<void(FileWindow &)>;
    QTest::addColumn<bool>("hasText");
    QTest::addColumn<Undo>("undo");
    QTest::newRow("Esc") << false << Undo([](FileWindow &window) {
        QTest::keyClick(window.table(), Qt::Key_Escape);
    });
    for (const bool hasText : {false, true}) {
        QTest::addRow("bar, %s", hasText ? "with a text" : "alone")
            << hasText << Undo([](FileWindow &window) { click(window, "showAllButton"); });
    }
}

void tst_RowSpan::isUndone()
{
    QFETCH(bool, hasText);
    QFETCH(std::function<void(FileWindow &)>, undo);
    open(logLines(0, 100));
    m_find->setSpan(minutes(1, 3));
    if (hasText)
        filterByText();
    QCOMPARE(m_window->rows(), hasText ? 2 : 20);
    undo(*m_window);
    QCOMPARE(m_window->rows(), 100);
    QVERIFY(!m_find->isFiltered());
    QVERIFY(!m_find->span());
    QVERIFY(!m_window->findChild<FilterBar *>()->isVisible());
    QVERIFY(!m_window->findChild<FindPanel *>()->hasFilter());
}

void tst_RowSpan::textIsUndoneFirst()
{
    open(logLines(0, 100));
    m_find->setSpan(minutes(1, 3));
    filterByText();
    QCOMPARE(m_window->rows(), 2);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
    QVERIFY(!m_window->findChild<FindPanel *>()->isVisible());
    QCOMPARE(m_window->rows(), 20);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
    QCOMPARE(m_window->rows(), 100);
}

void tst_RowSpan::staysInAFileReadAnew()
{
    open(logLines(0, 100));
    m_find->setSpan(minutes(1, 3));
    filterByText();
    QTest::keyClick(m_window.get(), Qt::Key_F5);
    QTRY_COMPARE(m_find->source()->rowCount(), 100);
    QTRY_COMPARE(m_window->rows(), 2);
    m_find->dofilter({});
    QTest::keyClick(m_window.get(), Qt::Key_F5);
    QTRY_COMPARE(m_find->source()->rowCount(), 100);
    QTRY_COMPARE(m_window->rows(), 20);
}

void tst_RowSpan::isGivenUp_data()
{
    using Meanwhile = std::function<void(TableFilter &)>;
    QTest::addColumn<Meanwhile>("meanwhile");
    QTest::addColumn<int>("rows");
    QTest::newRow("ended") << Meanwhile([](TableFilter &find) { find.cancel(); }) << 2;
    QTest::newRow("taken off") << Meanwhile([](TableFilter &find) { find.setSpan({}); }) << 2;
    QTest::newRow("all rows") << Meanwhile([](TableFilter &find) { find.showAll(); }) << 4;
    QTest::newRow("no text any more")
        << Meanwhile([](TableFilter &find) { find.dofilter({}); }) << 3;
    QTest::newRow("another text") << Meanwhile([](TableFilter &find) { find.dofilter("b"); }) << 2;
    QTest::newRow("another span") << Meanwhile([](TableFilter &find) {
        find.setSpan(RowSpan {false, false, 0, 1});
    }) << 1;
}

//! While a span of the last three rows is judged beside the text a, which two rows have.
void tst_RowSpan::isGivenUp()
{
    QFETCH(std::function<void(TableFilter &)>, meanwhile);
    QFETCH(int, rows);
    SlowModel model;
    for (const char *text : {"a", "b", "a", "b"})
        model.appendRow(new QStandardItem(QLatin1String(text)));
    QTableFastView view;
    TableFilter find(&view);
    find.setSource(&model);
    view.show();
    model.isSlow = false;
    find.dofilter("a");
    QCOMPARE(find.shownRows(), 2);
    model.isSlow = true;
    bool isReached = false;
    QTimer::singleShot(0, &find, [&] {
        isReached = find.isFiltering() && find.span() && !find.shownSpan();
        model.isSlow = false;
        meanwhile(find);
    });
    find.setSpan(RowSpan {false, false, 1, 4});
    QVERIFY(isReached);
    QVERIFY(!find.isFiltering());
    QCOMPARE(find.shownRows(), rows);
    find.setSource(nullptr);
}

void tst_RowSpan::holdsWithATextThatIsLookedFor()
{
    SlowModel model;
    for (const char *text : {"a", "b", "a", "b"})
        model.appendRow(new QStandardItem(QLatin1String(text)));
    QTableFastView view;
    TableFilter find(&view);
    find.setSource(&model);
    view.show();
    QTimer::singleShot(0, &find, [&] {
        model.isSlow = false;
        find.setSpan(RowSpan {false, false, 1, 4});
    });
    find.dofilter("a");
    QCOMPARE(find.shownRows(), 1);
    QCOMPARE(find.shownMatcher().text(), "a");
    QCOMPARE(find.toSource(view.model()->index(0, 0)).row(), 2);
    find.setSource(nullptr);
}

QTEST_MAIN(tst_RowSpan)
#include "tst_rowspan.moc"
