// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "basics/contrast.h"
#include "feed/feedwindow.h"
#include "files/textfilemodel.h"
#include "overview/marksdialog.h"
#include "overview/marksmenu.h"
#include "search/findpanel.h"
#include "windows/filewindow.h"
#include "windows/framestatistics.h"
#include "windows/viewertable.h"

#include <QFile>
#include <QHeaderView>
#include <QLineEdit>
#include <QScreen>
#include <QScrollBar>
#include <QSignalSpy>
#include <QStatusBar>
#include <QTemporaryDir>
#include <QTest>
#include <QTreeWidget>

namespace {

//! Every tenth of \a count lines is "ten", the others "other".
QByteArray lines(int count)
{
    QByteArray text;
    for (int i = 1; i <= count; ++i)
        text += QByteArray(i % 10 == 0 ? "ten " : "other ") + QByteArray::number(i) + '\n';
    return text;
}

} // namespace

class tst_MarksMenu : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void marksTheCurrentRow();
    void marksNoRowWithoutACurrentOne();
    void goesFromMarkToMark_data();
    void goesFromMarkToMark();
    void goesToShownRowsOfAFilter();
    void switchesActions();
    void staysWithLinesOfAFileThatBeginsAnew();
    void staysWithTradesOfAFeed();
    void listsMarks();
    void listsRowsThatGo();
    void paintsMarks_data();
    void paintsMarks();
    void movesMarksOnScreen_data();
    void movesMarksOnScreen();

private:
    void write(const QByteArray &text, QIODevice::OpenMode mode);
    void open(const QByteArray &text);
    void trigger(const QKeySequence &key);
    void choose(int row);
    int current() const { return m_window->table()->currentIndex().row(); }
    void filterBy(const QString &text);

    FrameStatistics m_statistics;
    std::unique_ptr<QTemporaryDir> m_directory;
    QString m_path;
    std::unique_ptr<FileWindow> m_window;
    MarksMenu *m_menu = nullptr;
};

void tst_MarksMenu::init()
{
    m_window.reset();
    m_directory = std::make_unique<QTemporaryDir>();
    m_path = m_directory->filePath("file.txt");
}

void tst_MarksMenu::write(const QByteArray &text, QIODevice::OpenMode mode)
{
    QFile file(m_path);
    QVERIFY(file.open(mode | QIODevice::Unbuffered));
    QCOMPARE(file.write(text), text.size());
}

void tst_MarksMenu::open(const QByteArray &text)
{
    write(text, QIODevice::WriteOnly);
    m_window = std::make_unique<FileWindow>(m_path, FormatRequest(), &m_statistics);
    m_menu = m_window->findChild<MarksMenu *>();
    m_window->show();
    QTRY_COMPARE(m_window->model()->activity(), TextFileModel::Activity::Following);
    QTRY_COMPARE(m_window->model()->indexedBytes(), quint64(text.size()));
}

void tst_MarksMenu::trigger(const QKeySequence &key)
{
    const QList<QAction *> actions = m_menu->actions();
    const auto found = std::find_if(actions.begin(), actions.end(), [&](const QAction *action) {
        return action->shortcut() == key;
    });
    QVERIFY(found != actions.end());
    (*found)->trigger();
}

void tst_MarksMenu::choose(int row)
{
    m_window->table()->setCurrentIndex(m_window->table()->model()->index(row, 0));
}

void tst_MarksMenu::filterBy(const QString &text)
{
    auto *panel = m_window->findChild<FindPanel *>();
    panel->setPlainText(text);
    panel->filter();
}

void tst_MarksMenu::marksTheCurrentRow()
{
    open(lines(100));
    choose(41);
    trigger(QKeySequence("Ctrl+M"));
    QCOMPARE(m_menu->marks()->rows(), QList<int>({41}));
    QVERIFY(m_menu->isMarked(41));
    QVERIFY(!m_menu->isMarked(40));
    trigger(QKeySequence("Ctrl+M"));
    QVERIFY(m_menu->marks()->isEmpty());
}

void tst_MarksMenu::marksNoRowWithoutACurrentOne()
{
    open(lines(100));
    QVERIFY(!m_window->table()->currentIndex().isValid());
    trigger(QKeySequence("Ctrl+M"));
    QVERIFY(m_menu->marks()->isEmpty());
    QVERIFY(!m_window->statusBar()->currentMessage().isEmpty());
}

void tst_MarksMenu::goesFromMarkToMark_data()
{
    QTest::addColumn<QList<int>>("marks");
    QTest::addColumn<int>("from"); // −1 without a current row
    QTest::addColumn<QString>("key");
    QTest::addColumn<int>("to");
    QTest::addColumn<bool>("isSaid");
    const QList<int> three {10, 20, 30};
    QTest::newRow("next") << three << 15 << "F2" << 20 << false;
    QTest::newRow("next of a mark") << three << 20 << "F2" << 30 << false;
    QTest::newRow("next of the last") << three << 30 << "F2" << 10 << true;
    QTest::newRow("next behind the last") << three << 99 << "F2" << 10 << true;
    QTest::newRow("next of none") << three << -1 << "F2" << 10 << false;
    QTest::newRow("previous") << three << 25 << "Shift+F2" << 20 << false;
    QTest::newRow("previous of a mark") << three << 20 << "Shift+F2" << 10 << false;
    QTest::newRow("previous of the first") << three << 10 << "Shift+F2" << 30 << true;
    QTest::newRow("previous before the first") << three << 0 << "Shift+F2" << 30 << true;
    QTest::newRow("previous of none") << three << -1 << "Shift+F2" << 30 << false;
    QTest::newRow("only one") << QList<int> {10} << 10 << "F2" << 10 << true;
}

void tst_MarksMenu::goesFromMarkToMark()
{
    QFETCH(QList<int>, marks);
    QFETCH(int, from);
    QFETCH(QString, key);
    QFETCH(int, to);
    QFETCH(bool, isSaid);
    open(lines(100));
    for (const int row : marks)
        m_menu->marks()->toggle(row);
    if (from >= 0)
        choose(from);
    trigger(QKeySequence(key));
    QCOMPARE(current(), to);
    QCOMPARE(!m_window->statusBar()->currentMessage().isEmpty(), isSaid);
    QVERIFY(m_window->table()->viewport()->rect().intersects(
        m_window->table()->visualRect(m_window->table()->currentIndex())));
}

//! Rows 9, 19 and so on are shown.
void tst_MarksMenu::goesToShownRowsOfAFilter()
{
    open(lines(100));
    for (const int row : {12, 15, 39, 97})
        m_menu->marks()->toggle(row);
    filterBy("ten");
    QTRY_COMPARE(m_window->rows(), 10);
    QVERIFY(m_menu->isMarked(3));
    QVERIFY(!m_menu->isMarked(2));
    choose(0);
    trigger(QKeySequence("F2"));
    QCOMPARE(current(), 1); // instead of 12
    trigger(QKeySequence("F2"));
    QCOMPARE(current(), 3);
    trigger(QKeySequence("F2"));
    QCOMPARE(current(), 9); // the last one, instead of 97
    trigger(QKeySequence("F2"));
    QCOMPARE(current(), 1);
    trigger(QKeySequence("Shift+F2"));
    QCOMPARE(current(), 9);
    trigger(QKeySequence("Shift+F2"));
    QCOMPARE(current(), 3);
    filterBy(QString());
    QTRY_COMPARE(m_window->rows(), 100);
    QCOMPARE(m_menu->marks()->rows(), QList<int>({12, 15, 39, 97}));
}

void tst_MarksMenu::switchesActions()
{
    open(lines(100));
    const auto enabled = [this] {
        const QList<QAction *> actions = m_menu->actions();
        return std::count_if(actions.begin(), actions.end(), [](const QAction *action) {
            return !action->isSeparator() && action->isEnabled();
        });
    };
    QCOMPARE(enabled(), 1);
    m_menu->marks()->toggle(3);
    QCOMPARE(enabled(), 5);
    m_menu->actions().constLast()->trigger();
    QVERIFY(m_menu->marks()->isEmpty());
    QCOMPARE(enabled(), 1);
}

void tst_MarksMenu::staysWithLinesOfAFileThatBeginsAnew()
{
    open(lines(100));
    for (const int row : {3, 50, 99})
        m_menu->marks()->toggle(row);
    write(lines(100) + lines(20), QIODevice::WriteOnly | QIODevice::Append);
    QTRY_COMPARE(m_window->rows(), 220);
    QCOMPARE(m_menu->marks()->rows(), QList<int>({3, 50, 99}));
    QVERIFY(QFile::resize(m_path, 0));
    QTRY_COMPARE(m_window->rows(), 0);
    QVERIFY(m_menu->marks()->isEmpty());
    write(lines(50) + lines(60), QIODevice::Append);
    QTRY_COMPARE(m_window->rows(), 110);
    QCOMPARE(m_menu->marks()->rows(), QList<int>({3}));
}

void tst_MarksMenu::staysWithTradesOfAFeed()
{
    FeedWindow window(0, FeedModel::NewRows::AtTop, &m_statistics);
    MarkedRows *marks = window.findChild<MarksMenu *>()->marks();
    marks->toggle(5);
    const QVariant number = window.model()->index(5, FeedModel::NumberColumn).data();
    window.model()->setRate(1000);
    window.model()->advance(10'000'000'000);
    QCOMPARE(marks->count(), 1);
    const int row = marks->rows().constFirst();
    QVERIFY(row >= 10005);
    QCOMPARE(window.model()->index(row, FeedModel::NumberColumn).data(), number);
}

void tst_MarksMenu::listsMarks()
{
    open(lines(3000));
    for (const int row : {9, 1999})
        m_menu->marks()->toggle(row);
    m_menu->actions().at(4)->trigger();
    auto *dialog = m_window->findChild<MarksDialog *>();
    QVERIFY(dialog);
    auto *list = dialog->findChild<QTreeWidget *>();
    QCOMPARE(list->topLevelItemCount(), 2);
    QCOMPARE(list->topLevelItem(0)->text(1), QString("ten 10"));
    QCOMPARE(list->topLevelItem(1)->text(0), QLocale().toString(2000));
    list->setCurrentItem(list->topLevelItem(1));
    dialog->accept();
    QCOMPARE(current(), 1999);
}

void tst_MarksMenu::listsRowsThatGo()
{
    open(lines(10));
    m_menu->marks()->toggle(5);
    MarksDialog dialog(*m_menu->marks(), *m_window->model(), m_window.get());
    QSignalSpy chosen(&dialog, &MarksDialog::rowChosen);
    QVERIFY(QFile::resize(m_path, 0));
    QTRY_COMPARE(m_window->rows(), 0);
    dialog.accept();
    QCOMPARE(chosen.count(), 0);
}

void tst_MarksMenu::paintsMarks_data()
{
    QTest::addColumn<Qt::LayoutDirection>("direction");
    QTest::newRow("left to right") << Qt::LeftToRight;
    QTest::newRow("right to left") << Qt::RightToLeft;
}

void tst_MarksMenu::paintsMarks()
{
    QFETCH(Qt::LayoutDirection, direction);
    open(lines(10));
    ViewerTable *table = m_window->table();
    m_window->setLayoutDirection(direction);
    m_menu->marks()->toggle(2);
    const QImage picture = table->viewport()->grab().toImage();
    const double scale = picture.devicePixelRatio();
    const int x = direction == Qt::LeftToRight ? 1 : table->viewport()->width() - 2;
    const QRgb color = rowMarkColor(table->palette().color(QPalette::Base)).rgb();
    for (int row = 0; row < 10; ++row) {
        const int y = table->rowViewportPosition(row) + table->rowHeight() / 2;
        const QRgb pixel = picture.pixel(int(x * scale), int(y * scale)) | 0xff000000;
        QCOMPARE(pixel == color, row == 2);
    }
}

void tst_MarksMenu::movesMarksOnScreen_data()
{
    QTest::addColumn<QString>("move");
    QTest::newRow("rows come on top") << "insert";
    QTest::newRow("to the right") << "right";
    QTest::newRow("down") << "down";
}

//! What was painted before, and is moved, looks as if it was painted now.
void tst_MarksMenu::movesMarksOnScreen()
{
    QFETCH(QString, move);
    FeedWindow window(0, FeedModel::NewRows::AtTop, &m_statistics);
    if (window.devicePixelRatioF() != 1)
        QSKIP("Pictures of the screen are those of unscaled windows.");
    window.resize(400, 500);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    ViewerTable *table = window.table();
    for (const int row : {3, 4, 8})
        window.findChild<MarksMenu *>()->marks()->toggle(row);
    table->header()->resizeSection(table->header()->count() - 1, 2 * table->width());
    QTRY_VERIFY(table->horizontalScrollBar()->maximum() > 50);
    QTest::qWait(0);
    if (move == "insert") {
        window.model()->setRate(1000);
        window.model()->advance(2'000'000);
    } else if (move == "right") {
        table->horizontalScrollBar()->setValue(30);
    } else {
        window.setFollowing(false);
        table->verticalScrollBar()->setValue(2);
    }
    QCoreApplication::processEvents();
    QTest::qWait(0);
    const QRect edge(table->viewport()->mapTo(&window, QPoint()),
                     QSize(60, table->viewport()->height()));
    const QImage seen = window.screen()->grabWindow(window.winId()).toImage();
    const QImage fresh = window.grab().toImage();
    QCOMPARE(seen.size(), fresh.size());
    const double scale = fresh.devicePixelRatio();
    const QRect part(edge.topLeft() * scale, edge.size() * scale);
    QCOMPARE(seen.copy(part).convertToFormat(QImage::Format_RGB32),
             fresh.copy(part).convertToFormat(QImage::Format_RGB32));
}

QTEST_MAIN(tst_MarksMenu)
#include "tst_marksmenu.moc"
