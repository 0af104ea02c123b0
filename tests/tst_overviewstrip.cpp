// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "basics/contrast.h"
#include "feed/feedwindow.h"
#include "files/textfilemodel.h"
#include "overview/marksmenu.h"
#include "overview/overviewstrip.h"
#include "overview/rowsurvey.h"
#include "search/findpanel.h"
#include "search/tablefilter.h"
#include "windows/filewindow.h"
#include "windows/framestatistics.h"
#include "windows/viewertable.h"

#include <QAction>
#include <QFile>
#include <QHelpEvent>
#include <QLabel>
#include <QLineEdit>
#include <QScrollBar>
#include <QSettings>
#include <QTemporaryDir>
#include <QTest>
#include <QToolTip>

namespace {

//! Of \a count lines number \a error is an error, \a warning a warning and \a hit has "sought".
QByteArray lines(int count, int error, int warning, int hit)
{
    QByteArray text;
    for (int i = 0; i < count; ++i) {
        text += i == error ? "ERROR " : i == warning ? "WARN " : "INFO ";
        text += i == hit ? "sought\n" : "line\n";
    }
    return text;
}

} // namespace

class tst_OverviewStrip : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void picturesRows_data();
    void picturesRows();
    void picturesWhatAFilterShows();
    void isAsHighAsTheGroove();
    void isBesideTheBar_data();
    void isBesideTheBar();
    void goesThere_data();
    void goesThere();
    void stopsFollowing();
    void tellsWhatIsThere();
    void tellsNothingOfNoRows();
    void isVisibleOnAnyPalette_data();
    void isVisibleOnAnyPalette();
    void keepsWhetherItIsShown();
    void asksForLevelsWhileShown();
    void countsHits();
    void isNotThereForAFeed();

private:
    void open(const QByteArray &text);
    void seek(const QString &text);
    QRect groove() const;
    int yOf(int row) const;
    QList<QColor> colorsAt(int y) const;

    QTemporaryDir m_settings;
    FrameStatistics m_statistics;
    std::unique_ptr<QTemporaryDir> m_directory;
    std::unique_ptr<FileWindow> m_window;
    OverviewStrip *m_strip = nullptr;
    RowSurvey *m_survey = nullptr;
};

void tst_OverviewStrip::initTestCase()
{
    QSettings::setDefaultFormat(QSettings::IniFormat);
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, m_settings.path());
    QCoreApplication::setOrganizationName("vantix-test");
}

void tst_OverviewStrip::init()
{
    QSettings().clear();
    m_window.reset();
    m_directory = std::make_unique<QTemporaryDir>();
}

void tst_OverviewStrip::open(const QByteArray &text)
{
    const QString path = m_directory->filePath("file.log");
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly | QIODevice::Unbuffered));
    QCOMPARE(file.write(text), text.size());
    m_window = std::make_unique<FileWindow>(path, FormatRequest(), &m_statistics);
    m_strip = m_window->findChild<OverviewStrip *>();
    m_survey = m_window->findChild<RowSurvey *>();
    m_window->resize(600, 700);
    m_window->show();
    QTRY_COMPARE(m_window->model()->indexedBytes(), quint64(text.size()));
    QTRY_VERIFY(m_survey->isComplete());
}

void tst_OverviewStrip::seek(const QString &text)
{
    m_window->openFind();
    m_window->findChild<FindPanel *>()->setPlainText(text);
    QTRY_VERIFY(m_survey->isComplete());
}

//! From the first pixel with rows to the last one, in the strip's own.
QRect tst_OverviewStrip::groove() const
{
    int top = 0;
    while (m_strip->rowsAt(top + 1).first == 0 && m_strip->rowsAt(top) == m_strip->rowsAt(top + 1)
           && top < m_strip->height())
        ++top;
    return {0, top, m_strip->width(), m_strip->height() - top};
}

//! Of the first pixel with \a row.
int tst_OverviewStrip::yOf(int row) const
{
    int y = 0;
    while (m_strip->rowsAt(y).second <= row)
        ++y;
    return y;
}

//! In the lane beside the scroll bar, and in the one outside.
QList<QColor> tst_OverviewStrip::colorsAt(int y) const
{
    const QImage picture = m_strip->grab().toImage();
    const double scale = picture.devicePixelRatio();
    QList<QColor> colors;
    for (const int x : {1, m_strip->width() - 2})
        colors << picture.pixelColor(int(x * scale), int((y + 0.5) * scale));
    if (m_strip->isRightToLeft())
        std::reverse(colors.begin(), colors.end());
    return colors;
}

void tst_OverviewStrip::picturesRows_data()
{
    QTest::addColumn<int>("count");
    QTest::addColumn<Qt::LayoutDirection>("direction");
    QTest::newRow("few") << 100 << Qt::LeftToRight;
    QTest::newRow("more than pixels") << 3000 << Qt::LeftToRight;
    QTest::newRow("more than cells") << 100000 << Qt::LeftToRight;
    QTest::newRow("right to left") << 3000 << Qt::RightToLeft;
}

void tst_OverviewStrip::picturesRows()
{
    QFETCH(int, count);
    QFETCH(Qt::LayoutDirection, direction);
    open(lines(count, count / 4, count / 2, count * 3 / 4));
    m_window->setLayoutDirection(direction);
    m_window->findChild<MarksMenu *>()->marks()->toggle(count / 8);
    seek("sought");
    QTest::qWait(0);
    const OverviewStrip::Colors colors(m_window->table()->palette());
    QCOMPARE(colorsAt(yOf(count / 4)), QList<QColor>({colors.background, colors.error}));
    QCOMPARE(colorsAt(yOf(count / 2)), QList<QColor>({colors.background, colors.warning}));
    QCOMPARE(colorsAt(yOf(count * 3 / 4)), QList<QColor>({colors.hit, colors.background}));
    QCOMPARE(colorsAt(yOf(count / 8)), QList<QColor>({colors.mark, colors.mark}));
    QCOMPARE(colorsAt(yOf(count * 7 / 8)), QList<QColor>({colors.background, colors.background}));
}

void tst_OverviewStrip::picturesWhatAFilterShows()
{
    open(lines(1000, 900, 500, 10));
    MarkedRows *marks = m_window->findChild<MarksMenu *>()->marks();
    marks->toggle(500);
    marks->toggle(600);                                  // not shown
    m_window->findChild<TableFilter *>()->dofilter("r"); // both levels
    QTRY_VERIFY(m_survey->isComplete());
    QCOMPARE(m_window->rows(), 2);
    const OverviewStrip::Colors colors(m_window->table()->palette());
    QCOMPARE(m_strip->description(0, 1), QString("Row 1: 1 warning, 1 mark"));
    QCOMPARE(m_strip->description(1, 2), QString("Row 2: 1 error"));
    QCOMPARE(colorsAt(m_strip->height() / 4).constLast(), colors.warning);
    QCOMPARE(colorsAt(m_strip->height() * 3 / 4).constLast(), colors.error);
}

void tst_OverviewStrip::isAsHighAsTheGroove()
{
    open(lines(10000, 0, 0, 0));
    const QScrollBar *bar = m_window->table()->verticalScrollBar();
    QVERIFY(bar->isVisible());
    const int top = m_strip->mapFromGlobal(bar->mapToGlobal(QPoint())).y();
    const QRect pictured = groove();
    QVERIFY(pictured.top() >= top);
    QVERIFY(pictured.top() <= top + bar->width() + 1);
    QCOMPARE(m_strip->rowsAt(top + bar->height() - 1).second, 10000);
    QVERIFY(m_strip->rowsAt(top + bar->height() - bar->width() - 3).second < 10000);
}

void tst_OverviewStrip::isBesideTheBar_data()
{
    QTest::addColumn<Qt::LayoutDirection>("direction");
    QTest::newRow("left to right") << Qt::LeftToRight;
    QTest::newRow("right to left") << Qt::RightToLeft;
}

void tst_OverviewStrip::isBesideTheBar()
{
    QFETCH(Qt::LayoutDirection, direction);
    open(lines(1000, 0, 0, 0));
    m_window->setLayoutDirection(direction);
    QTest::qWait(0);
    const QScrollBar *bar = m_window->table()->verticalScrollBar();
    const int barLeft = bar->mapTo(m_window.get(), QPoint()).x();
    const int left = m_strip->mapTo(m_window.get(), QPoint()).x();
    if (direction == Qt::LeftToRight)
        QCOMPARE(left, barLeft + bar->width());
    else
        QCOMPARE(left + m_strip->width(), barLeft);
}

void tst_OverviewStrip::goesThere_data()
{
    QTest::addColumn<double>("part");
    QTest::addColumn<int>("row");
    QTest::newRow("middle") << 0.5 << 5000;
    QTest::newRow("a quarter") << 0.25 << 2500;
    QTest::newRow("top") << 0. << 0;
    QTest::newRow("above") << -0.1 << 0;
    QTest::newRow("end") << 1. << 9999;
    QTest::newRow("below") << 1.1 << 9999;
}

void tst_OverviewStrip::goesThere()
{
    QFETCH(double, part);
    QFETCH(int, row);
    open(lines(10000, 0, 0, 0));
    const QPoint begin(3, m_strip->height() / 3);
    const QPoint place(3, int(part * m_strip->height()));
    const auto isSeen = [&] {
        ViewerTable *table = m_window->table();
        const int tolerance = 500; // the groove is shorter than the strip
        const int first = table->rowAt(0);
        const int last = first + table->viewport()->height() / table->rowHeight();
        return first - tolerance < row && row < last + tolerance;
    };
    QTest::mousePress(m_strip, Qt::LeftButton, {}, begin);
    QVERIFY(!isSeen());
    QMouseEvent move(QEvent::MouseMove, place, m_strip->mapToGlobal(place), Qt::NoButton,
                     Qt::LeftButton, {});
    QCoreApplication::sendEvent(m_strip, &move);
    QVERIFY(isSeen());
}

void tst_OverviewStrip::stopsFollowing()
{
    open(lines(10000, 0, 0, 0));
    QVERIFY(m_window->isFollowing());
    QTest::mouseClick(m_strip, Qt::LeftButton, {}, {3, m_strip->height() / 2});
    QVERIFY(!m_window->isFollowing());
    const std::pair<int, int> rows = m_strip->rowsAt(m_strip->height() / 2);
    ViewerTable *table = m_window->table();
    const int middle = table->rowAt(table->viewport()->height() / 2);
    QVERIFY(middle >= rows.first - 1);
    QVERIFY(middle <= rows.first + 1);
}

void tst_OverviewStrip::tellsWhatIsThere()
{
    open(lines(2000, 3, 4, 5));
    m_window->findChild<MarksMenu *>()->marks()->toggle(5);
    seek("line");
    QCOMPARE(m_strip->description(3, 4), QString("Row 4: 1 match, 1 error"));
    QCOMPARE(m_strip->description(5, 6), QString("Row 6: 1 mark"));
    QCOMPARE(m_strip->description(0, 6),
             QString("Rows 1 to 6: 5 matches, 1 error, 1 warning, 1 mark"));
    seek("nothing of this");
    QCOMPARE(m_strip->description(10, 20), QString("Rows 11 to 20"));
}

void tst_OverviewStrip::tellsNothingOfNoRows()
{
    open(QByteArray());
    QCOMPARE(m_strip->rowsAt(10), std::pair(0, 0));
    QTest::mouseClick(m_strip, Qt::LeftButton, {}, {3, 50});
    const OverviewStrip::Colors colors(m_window->table()->palette());
    QCOMPARE(colorsAt(50), QList<QColor>({colors.background, colors.background}));
    QHelpEvent help(QEvent::ToolTip, {3, 50}, m_strip->mapToGlobal(QPoint(3, 50)));
    QCoreApplication::sendEvent(m_strip, &help);
    QVERIFY(QToolTip::text().isEmpty());
}

void tst_OverviewStrip::isVisibleOnAnyPalette_data()
{
    QTest::addColumn<QPalette>("palette");
    QTest::newRow("light") << QPalette(QColor(0xf0, 0xf0, 0xf0), QColor(Qt::white));
    QTest::newRow("dark") << QPalette(QColor(0x30, 0x30, 0x30), QColor(0x20, 0x20, 0x20));
    QTest::newRow("black") << QPalette(Qt::black, Qt::black);
    QTest::newRow("grey") << QPalette(Qt::gray, Qt::gray);
}

void tst_OverviewStrip::isVisibleOnAnyPalette()
{
    QFETCH(QPalette, palette);
    const OverviewStrip::Colors colors(palette);
    for (const QColor &color : {colors.error, colors.warning, colors.hit, colors.mark})
        QVERIFY(contrast(color, colors.background) >= visibleContrast);
}

void tst_OverviewStrip::keepsWhetherItIsShown()
{
    const auto action = [this] {
        const auto actions = m_window->findChildren<QAction *>();
        return *std::find_if(actions.begin(), actions.end(), [](const QAction *candidate) {
            return candidate->text() == QLatin1String("&Overview Strip");
        });
    };
    open(lines(10, 0, 0, 0));
    QVERIFY(m_strip->isVisible());
    QVERIFY(action()->isChecked());
    action()->trigger();
    QVERIFY(!m_strip->isVisible());
    open(lines(10, 0, 0, 0));
    QVERIFY(!m_strip->isVisible());
    QVERIFY(!action()->isChecked());
    action()->trigger();
    QVERIFY(m_strip->isVisible());
    open(lines(10, 0, 0, 0));
    QVERIFY(m_strip->isVisible());
}

void tst_OverviewStrip::asksForLevelsWhileShown()
{
    open(lines(10, 0, 0, 0));
    QVERIFY(m_survey->areLevelsWanted());
    m_window->hide();
    QVERIFY(m_survey->areLevelsWanted());
    m_window->show();
    m_strip->hide();
    QVERIFY(!m_survey->areLevelsWanted());
    m_strip->show();
    QVERIFY(m_survey->areLevelsWanted());
}

void tst_OverviewStrip::countsHits()
{
    open(lines(2000, 1, 2, 3));
    const auto *label = m_window->findChild<QLabel *>("hitsLabel");
    QVERIFY(!label->isVisible());
    seek("line");
    const QLocale locale;
    QTRY_COMPARE(label->text(),
                 QString("%1 of %2 rows match").arg(locale.toString(1999), locale.toString(2000)));
    QVERIFY(label->isVisible());
    m_window->findChild<FindPanel *>()->hide();
    QTRY_VERIFY(!label->isVisible());
}

void tst_OverviewStrip::isNotThereForAFeed()
{
    FeedWindow window(0, FeedModel::NewRows::AtTop, &m_statistics);
    QVERIFY(!window.findChild<OverviewStrip *>());
    QVERIFY(!window.findChild<RowSurvey *>());
}

QTEST_MAIN(tst_OverviewStrip)
#include "tst_overviewstrip.moc"
