// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "basics/recentfiles.h"
#include "feed/feedwindow.h"
#include "files/textfilemodel.h"
#include "windows/filewindow.h"
#include "windows/framestatistics.h"
#include "windows/viewertable.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QDir>
#include <QDragEnterEvent>
#include <QFile>
#include <QGuiApplication>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QMimeData>
#include <QScreen>
#include <QScrollBar>
#include <QSettings>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

namespace {

QByteArray numberedLines(int first, int last)
{
    QByteArray text;
    for (int i = first; i <= last; ++i)
        text += "line " + QByteArray::number(i) + '\n';
    return text;
}

} // namespace

class tst_ViewerWindow : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void staysAtEndWhileFileGrows();
    void staysAtEndAfterTruncation();
    void leavesEndWhenUserScrolls();
    void stopsFollowingShortFile();
    void switchesFollowOff();
    void followsNewestTradeAtEitherSide();
    void keepsTradesInViewWhileNewOnesArrive();
    void copiesSelectedRows();
    void copiesColumnsAsShown();
    void copiesFromTheContextMenu();
    void filtersFromTheContextMenu();
    void explainsFailure();
    void holdsAtAClick_data();
    void holdsAtAClick();
    void holdsAtTheEndOfAFile();
    void holdsWhileResized();
    void followsAgainAtTheNewestRow();
    void letterOpensThePanel();
    void escapeStopsNothingElse();
    void fitsTheScreen();
    void countsOneRow();
    void opensWhatIsDropped();
    void opensRecentFiles();
    void tellsFolders();
    void saysThatDataIsSimulated();
    void fillsWindowWithColumns();
    void staysAtTheEndWhenResized();
    void paintsVeryLongLines();

private:
    void append(const QByteArray &text);
    std::unique_ptr<FileWindow> openFile(const QByteArray &text);

    FrameStatistics m_statistics;               //!< of all windows
    std::unique_ptr<QTemporaryDir> m_directory; //!< one per test
    QString m_path;                             //!< of the file under test
};

void tst_ViewerWindow::init()
{
    m_directory = std::make_unique<QTemporaryDir>();
    m_path = m_directory->filePath("file.txt");
}

void tst_ViewerWindow::append(const QByteArray &text)
{
    QFile file(m_path);
    QVERIFY(file.open(QIODevice::Append | QIODevice::Unbuffered));
    QCOMPARE(file.write(text), text.size());
}

//! A window on a file with \a text, shown and completely indexed.
std::unique_ptr<FileWindow> tst_ViewerWindow::openFile(const QByteArray &text)
{
    append(text);
    auto window = std::make_unique<FileWindow>(m_path, FormatRequest(), &m_statistics);
    window->show();
    [&] {
        QTRY_COMPARE(window->model()->activity(), TextFileModel::Activity::Following);
        QTRY_COMPARE(window->model()->indexedBytes(), quint64(text.size()));
    }();
    return window;
}

void tst_ViewerWindow::staysAtEndWhileFileGrows()
{
    const auto window = openFile(numberedLines(1, 500));
    const QScrollBar *bar = window->table()->verticalScrollBar();
    QTRY_VERIFY(bar->maximum() > 0);
    QTRY_COMPARE(bar->value(), bar->maximum());
    append(numberedLines(501, 1000));
    QTRY_COMPARE(window->rows(), 1000);
    QTRY_COMPARE(bar->value(), bar->maximum());
    QVERIFY(bar->value() > 500);
    QVERIFY(window->isFollowing());
}

void tst_ViewerWindow::staysAtEndAfterTruncation()
{
    const auto window = openFile(numberedLines(1, 500));
    const QScrollBar *bar = window->table()->verticalScrollBar();
    QTRY_VERIFY(bar->maximum() > 0);
    QVERIFY(QFile::resize(m_path, 0));
    QTRY_COMPARE(window->rows(), 0);
    QVERIFY(window->isFollowing());
    append(numberedLines(1, 300));
    QTRY_COMPARE(window->rows(), 300);
    QTRY_COMPARE(bar->value(), bar->maximum());
    QVERIFY(bar->value() > 0);
}

void tst_ViewerWindow::leavesEndWhenUserScrolls()
{
    const auto window = openFile(numberedLines(1, 500));
    QScrollBar *bar = window->table()->verticalScrollBar();
    QTRY_VERIFY(bar->maximum() > 0);
    QTRY_COMPARE(bar->value(), bar->maximum());
    bar->setValue(100);
    QVERIFY(!window->isFollowing());
    append(numberedLines(501, 600));
    QTRY_COMPARE(window->rows(), 600);
    QCoreApplication::processEvents();
    QCOMPARE(bar->value(), 100);
    QVERIFY(!window->isFollowing());
    bar->setValue(bar->maximum());
    QVERIFY(window->isFollowing());
}

void tst_ViewerWindow::stopsFollowingShortFile()
{
    const auto window = openFile(numberedLines(1, 3));
    window->setFollowing(false);
    append(numberedLines(4, 500));
    QTRY_COMPARE(window->rows(), 500);
    QTRY_VERIFY(window->table()->verticalScrollBar()->maximum() > 0);
    QCOMPARE(window->table()->verticalScrollBar()->value(), 0);
    QVERIFY(!window->isFollowing());
}

void tst_ViewerWindow::switchesFollowOff()
{
    const auto window = openFile(numberedLines(1, 500));
    const QScrollBar *bar = window->table()->verticalScrollBar();
    QTRY_VERIFY(bar->maximum() > 0);
    QTRY_COMPARE(bar->value(), bar->maximum());
    window->setFollowing(false);
    const int value = bar->value();
    append(numberedLines(501, 600));
    QTRY_COMPARE(window->rows(), 600);
    QCoreApplication::processEvents();
    QCOMPARE(bar->value(), value);
    QVERIFY(!window->isFollowing());
    window->setFollowing(true);
    QCOMPARE(bar->value(), bar->maximum());
}

void tst_ViewerWindow::followsNewestTradeAtEitherSide()
{
    FeedWindow window(0, FeedModel::NewRows::AtEnd, &m_statistics);
    window.show();
    const QScrollBar *bar = window.table()->verticalScrollBar();
    QTRY_VERIFY(bar->maximum() > 900'000);
    QTRY_COMPARE(bar->value(), bar->maximum());
    window.model()->setRate(1000);
    window.model()->advance(1'000'000'000);
    QTRY_COMPARE(bar->value(), bar->maximum());
    QVERIFY(window.isFollowing());

    FeedWindow top(0, FeedModel::NewRows::AtTop, &m_statistics);
    top.show();
    top.model()->setRate(1000);
    top.model()->advance(1'000'000'000);
    QCoreApplication::processEvents();
    QCOMPARE(top.table()->verticalScrollBar()->value(), 0);
    QVERIFY(top.isFollowing());
}

void tst_ViewerWindow::keepsTradesInViewWhileNewOnesArrive()
{
    FeedWindow window(0, FeedModel::NewRows::AtTop, &m_statistics);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    window.table()->verticalScrollBar()->setValue(5000);
    QVERIFY(!window.isFollowing());
    const auto topNumber = [&] {
        const QModelIndex top = window.table()->indexAt(QPoint(2, 2));
        return top.siblingAtColumn(FeedModel::NumberColumn).data().toString();
    };
    const QString number = topNumber();
    QVERIFY(!number.isEmpty());
    window.model()->setRate(50'000);
    for (int i = 0; i < 10; ++i) {
        window.model()->advance(16'000'000);
        QCOMPARE(topNumber(), number);
    }
    QVERIFY(window.rows() >= FeedModel::pastTrades + 8000);
}

void tst_ViewerWindow::copiesSelectedRows()
{
    const auto window = openFile("a;b\n1;x\n2;y\n3;z\n4;w\n");
    QCOMPARE(window->rows(), 4);
    ViewerTable *table = window->table();
    const auto select = [&](int first, int last) {
        table->selectionModel()->select(
            {table->model()->index(first, 0), table->model()->index(last, 1)},
            QItemSelectionModel::Select);
    };
    table->clearSelection();
    QCOMPARE(window->selectedText(), QString());
    select(3, 3);
    select(0, 1);
    QCOMPARE(window->selectedText(), "1\tx\n2\ty\n4\tw");
    window->copySelection();
    QCOMPARE(QGuiApplication::clipboard()->text(), "1\tx\n2\ty\n4\tw");
}

void tst_ViewerWindow::copiesColumnsAsShown()
{
    const auto window = openFile("a;b;c\n1;x;p\n2;y;q\n");
    ViewerTable *table = window->table();
    table->hideColumn(1);
    table->header()->moveSection(2, 0);
    table->selectAll();
    QCOMPARE(window->selectedText(), "p\t1\nq\t2");
}

//! Opens the menu of a cell as the mouse does, and chooses what begins with \a text.
void chooseFromMenu(const FileWindow &window, const QModelIndex &cell, const QString &text)
{
    ViewerTable *table = window.table();
    const QPoint place = table->visualRect(cell).topLeft() + QPoint(2, 2);
    QTest::mouseClick(table->viewport(), Qt::LeftButton, Qt::NoModifier, place);
    QContextMenuEvent event(QContextMenuEvent::Mouse, place, table->viewport()->mapToGlobal(place));
    QApplication::sendEvent(table->viewport(), &event);
    auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
    QVERIFY(menu);
    const QList<QAction *> actions = menu->actions();
    const auto chosen = std::find_if(actions.begin(), actions.end(), [&](const QAction *action) {
        return QString(action->text()).remove(u'&').startsWith(text);
    });
    QVERIFY2(chosen != actions.end(), qPrintable(text));
    QVERIFY((*chosen)->isEnabled());
    menu->setActiveAction(*chosen);
    QTest::keyClick(menu, Qt::Key_Return);
    QTRY_VERIFY(!QApplication::activePopupWidget());
}

void tst_ViewerWindow::copiesFromTheContextMenu()
{
    const auto window = openFile("name,note\nx,\"a, b\"\ny,c\n");
    QTRY_COMPARE(window->rows(), 2);
    const QModelIndex cell = window->table()->model()->index(0, 1);
    QClipboard *clipboard = QGuiApplication::clipboard();
    chooseFromMenu(*window, cell, "Copy Cell");
    QCOMPARE(clipboard->text(), "a, b");
    chooseFromMenu(*window, cell, "Copy as CSV");
    QCOMPARE(clipboard->text(), "name,note\nx,\"a, b\"");
    chooseFromMenu(*window, cell, "Copy");
    QCOMPARE(clipboard->text(), "x\ta, b");
}

void tst_ViewerWindow::filtersFromTheContextMenu()
{
    const auto window = openFile("name,note\nx,one\ny,two\nz,one\n");
    QTRY_COMPARE(window->rows(), 3);
    chooseFromMenu(*window, window->table()->model()->index(0, 1), "Show Only Rows with");
    QTRY_COMPARE(window->rows(), 2);
}

void tst_ViewerWindow::explainsFailure()
{
    FileWindow window(m_directory->filePath("missing"), {}, &m_statistics);
    window.show();
    QTRY_VERIFY(window.isSettled());
    QVERIFY(window.hasFailed());
    QVERIFY(!window.table()->isVisible());
    QList<QLabel *> labels = window.centralWidget()->findChildren<QLabel *>();
    labels.removeIf([](const QLabel *label) { return !label->isVisible(); });
    QCOMPARE(labels.size(), 1);
    QVERIFY(labels.first()->text().contains("missing"));
}

void tst_ViewerWindow::holdsAtAClick_data()
{
    QTest::addColumn<FeedModel::NewRows>("newRows");
    QTest::addColumn<int>("arriving");
    for (const int arriving : {1, 16, 1000}) {
        QTest::addRow("%d at the top", arriving) << FeedModel::NewRows::AtTop << arriving;
        QTest::addRow("%d at the end", arriving) << FeedModel::NewRows::AtEnd << arriving;
    }
}

void tst_ViewerWindow::holdsAtAClick()
{
    QFETCH(FeedModel::NewRows, newRows);
    QFETCH(int, arriving);
    FeedWindow window(0, newRows, &m_statistics);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    ViewerTable *table = window.table();
    const QScrollBar *bar = table->verticalScrollBar();
    QTRY_VERIFY(bar->maximum() > 900'000);
    QTRY_COMPARE(bar->value(), newRows == FeedModel::NewRows::AtTop ? 0 : bar->maximum());
    window.model()->setRate(1000);
    window.model()->advance(16'000'000);
    QTRY_COMPARE(bar->value(), newRows == FeedModel::NewRows::AtTop ? 0 : bar->maximum());

    const int rowHeight = table->rowHeight();
    const QPoint place(5, 4 * rowHeight);
    const auto numberAt = [table](QPoint point) {
        return table->indexAt(point).siblingAtColumn(FeedModel::NumberColumn).data().toString();
    };
    const QString number = numberAt(place);
    QTest::mouseClick(table->viewport(), Qt::LeftButton, {}, place);
    QVERIFY(!window.isFollowing());
    QCOMPARE(numberAt(place), number);
    QVERIFY(table->currentIndex().isValid());
    const int y = table->visualRect(table->currentIndex()).top();
    for (int i = 0; i < 3; ++i) {
        window.model()->advance(arriving * 1'000'000);
        QCoreApplication::processEvents();
        // A view that was at the end had its first row cut off.
        QVERIFY(qAbs(table->visualRect(table->currentIndex()).top() - y) < rowHeight);
        const QString current =
            table->currentIndex().siblingAtColumn(FeedModel::NumberColumn).data().toString();
        QCOMPARE(current, number);
        QVERIFY(!window.isFollowing());
    }
}

void tst_ViewerWindow::holdsAtTheEndOfAFile()
{
    const auto window = openFile(numberedLines(1, 500));
    ViewerTable *table = window->table();
    const QScrollBar *bar = table->verticalScrollBar();
    QTRY_VERIFY(bar->maximum() > 0);
    QTRY_COMPARE(bar->value(), bar->maximum());
    const int value = bar->value();
    QTest::mouseClick(table->viewport(), Qt::LeftButton, {}, QPoint(5, 3 * table->rowHeight()));
    QVERIFY(!window->isFollowing());
    for (const int first : {501, 502, 601}) {
        append(numberedLines(first, first));
        QTRY_COMPARE(window->rows(), first == 601 ? 503 : first);
        QCoreApplication::processEvents();
        QCOMPARE(bar->value(), value);
    }
    QVERIFY(!window->isFollowing());
}

void tst_ViewerWindow::holdsWhileResized()
{
    const auto window = openFile(numberedLines(1, 500));
    const QScrollBar *bar = window->table()->verticalScrollBar();
    QTRY_VERIFY(bar->maximum() > 0);
    QTRY_COMPARE(bar->value(), bar->maximum());
    window->setFollowing(false);
    const int maximum = bar->maximum();
    window->resize(window->width(), window->height() - 5 * window->table()->rowHeight());
    QTRY_VERIFY(bar->maximum() > maximum);
    QVERIFY(!window->isFollowing());
    const int resized = bar->value();
    QCOMPARE(resized, bar->maximum());
    append("more\n");
    QTRY_COMPARE(window->rows(), 501);
    QCoreApplication::processEvents();
    QCOMPARE(bar->value(), resized);
    QVERIFY(!window->isFollowing());
}

void tst_ViewerWindow::followsAgainAtTheNewestRow()
{
    const auto window = openFile(numberedLines(1, 500));
    ViewerTable *table = window->table();
    const QScrollBar *bar = table->verticalScrollBar();
    QTRY_VERIFY(bar->maximum() > 0);
    QTRY_COMPARE(bar->value(), bar->maximum());
    QTest::mouseClick(table->viewport(), Qt::LeftButton, {}, QPoint(5, 3 * table->rowHeight()));
    QVERIFY(!window->isFollowing());
    QTest::keyClick(table, Qt::Key_Down);
    QVERIFY(!window->isFollowing());
    QTest::keyClick(table, Qt::Key_End, Qt::ControlModifier);
    QCOMPARE(table->currentIndex().row(), 499);
    QVERIFY(table->selectionModel()->isRowSelected(499, {}));
    QVERIFY(window->isFollowing());
    QTest::keyClick(table, Qt::Key_Up);
    QVERIFY(!window->isFollowing());
}

void tst_ViewerWindow::letterOpensThePanel()
{
    const auto window = openFile(numberedLines(1, 500));
    QVERIFY(QTest::qWaitForWindowActive(window.get()));
    const auto *field = window->findChild<QLineEdit *>("findLineEdit");
    QVERIFY(!field->isVisible());
    window->table()->setFocus();
    QTest::keyClick(window->table(), Qt::Key_L);
    QVERIFY(field->isVisible());
    QCOMPARE(field->text(), "l");
    QCOMPARE(QApplication::focusWidget(), field);
    QTest::keyClicks(QApplication::focusWidget(), "ine 7");
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    QTRY_COMPARE(window->table()->currentIndex().row(), 6);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
    // The next letter begins another text.
    window->table()->setFocus();
    QTest::keyClick(window->table(), 'X');
    QCOMPARE(field->text(), "X");
}

void tst_ViewerWindow::escapeStopsNothingElse()
{
    const auto window = openFile(numberedLines(1, 50));
    QVERIFY(QTest::qWaitForWindowActive(window.get()));
    window->table()->setFocus();
    QTest::keyClick(window->table(), Qt::Key_Escape);
    QCOMPARE(window->model()->activity(), TextFileModel::Activity::Following);
    append(numberedLines(51, 60));
    QTRY_COMPARE(window->rows(), 60);
}

void tst_ViewerWindow::fitsTheScreen()
{
    const QFont font = QApplication::font();
    QFont largeFont = font;
    largeFont.setPointSize(40);
    QApplication::setFont(largeFont);
    const FeedWindow large(0, FeedModel::NewRows::AtTop, &m_statistics);
    const QSize available = large.screen()->availableSize();
    QApplication::setFont(font);
    QVERIFY(large.width() <= available.width());
    QVERIFY(large.height() <= available.height());
}

void tst_ViewerWindow::countsOneRow()
{
    const auto window = openFile("a\n");
    const auto shows = [&window](const char *text) {
        const QList<QLabel *> labels = window->findChildren<QLabel *>();
        return std::any_of(labels.begin(), labels.end(),
                           [text](const QLabel *label) { return label->text() == text; });
    };
    QTRY_VERIFY(shows("1 row"));
    append("b\n");
    QTRY_VERIFY(shows("2 rows"));
}

void tst_ViewerWindow::opensWhatIsDropped()
{
    const auto window = openFile("a\n");
    const QSignalSpy opened(window.get(), &ViewerWindow::openRequested);
    QMimeData text;
    text.setText("no file");
    QMimeData files;
    files.setUrls(
        {QUrl::fromLocalFile("/a file"), QUrl("https://example.org/"), QUrl::fromLocalFile("/b")});
    for (const QMimeData *data : {&text, &files}) {
        QDragEnterEvent enter(QPoint(5, 5), Qt::CopyAction, data, Qt::LeftButton, {});
        enter.ignore();
        QCoreApplication::sendEvent(window.get(), &enter);
        QCOMPARE(enter.isAccepted(), data == &files);
        if (!enter.isAccepted())
            continue;
        QDropEvent drop(QPointF(5, 5), Qt::CopyAction, data, Qt::LeftButton, {});
        QCoreApplication::sendEvent(window.get(), &drop);
    }
    QCOMPARE(opened, QList<QVariantList>({{"/a file"}, {"/b"}}));
}

void tst_ViewerWindow::opensRecentFiles()
{
    const QSettings::Format former = QSettings::defaultFormat();
    QSettings::setDefaultFormat(QSettings::IniFormat);
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, m_directory->path());
    const auto window = openFile("a\n");
    const QSignalSpy opened(window.get(), &ViewerWindow::openRequested);
    RecentFiles::add(m_path);
    const QList<QMenu *> menus = window->menuBar()->findChildren<QMenu *>();
    const auto recent = std::find_if(menus.begin(), menus.end(), [](const QMenu *menu) {
        return menu->title() == "Open &Recent";
    });
    QVERIFY(recent != menus.end());
    Q_EMIT(*recent)->aboutToShow();
    QCOMPARE((*recent)->actions().first()->text(), QDir::toNativeSeparators(m_path));
    (*recent)->actions().first()->trigger();
    QCOMPARE(opened, QList<QVariantList>({{m_path}}));
    (*recent)->actions().last()->trigger();
    Q_EMIT(*recent)->aboutToShow();
    QCOMPARE((*recent)->actions().size(), 2);
    QSettings::setDefaultFormat(former);
}

void tst_ViewerWindow::tellsFolders()
{
    const auto window = openFile("a\n");
    QCOMPARE(window->windowTitle(), "file.txt — " + QDir::toNativeSeparators(m_directory->path()));
}

void tst_ViewerWindow::saysThatDataIsSimulated()
{
    FeedWindow window(0, FeedModel::NewRows::AtTop, &m_statistics);
    window.show();
    QVERIFY(window.windowTitle().contains("Simulated"));
    const QList<QLabel *> labels = window.findChildren<QLabel *>();
    QVERIFY(std::any_of(labels.begin(), labels.end(), [](const QLabel *label) {
        return label->isVisible() && label->text() == "Simulated data";
    }));
}

void tst_ViewerWindow::fillsWindowWithColumns()
{
    const auto window = openFile("a;b\n" + QByteArray("1;x\n").repeated(500));
    const QScrollBar *bar = window->table()->horizontalScrollBar();
    const QHeaderView *header = window->table()->header();
    QTRY_COMPARE(header->length(), window->table()->viewport()->width());
    QCOMPARE(bar->maximum(), 0);
    window->resize(window->width() + 100, window->height());
    QTRY_COMPARE(header->length(), window->table()->viewport()->width());
    window->resize(window->width() - 200, window->height());
    QTRY_COMPARE(header->length(), window->table()->viewport()->width());
    QTRY_COMPARE(bar->maximum(), 0);
}

void tst_ViewerWindow::staysAtTheEndWhenResized()
{
    const auto window = openFile(QByteArray("line\n").repeated(500));
    const QScrollBar *bar = window->table()->verticalScrollBar();
    window->table()->scrollToBottom();
    QVERIFY(bar->value() > 0);
    for (int height : {-150, 100, -50}) {
        window->resize(window->width(), window->height() + height);
        QTRY_COMPARE(bar->value(), bar->maximum());
    }
}

void tst_ViewerWindow::paintsVeryLongLines()
{
    const auto window = openFile((QByteArray(200'000, 'x') + '\n').repeated(20));
    const qint64 before = m_statistics.frames();
    window->table()->viewport()->repaint();
    QVERIFY(m_statistics.frames() > before);
    QTRY_VERIFY(window->table()->horizontalScrollBar()->maximum() > 0);
    const QPixmap picture = window->grab();
    QVERIFY(!picture.isNull());
}

QTEST_MAIN(tst_ViewerWindow)

#include "tst_viewerwindow.moc"
