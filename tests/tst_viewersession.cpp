// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "feed/feedwindow.h"
#include "savedsession.h"
#include "search/findpanel.h"
#include "session.h"
#include "windows/filewindow.h"
#include "windows/tabwindow.h"
#include "windows/viewertable.h"
#include "windows/welcomewindow.h"

#include <QAction>
#include <QCommandLinkButton>
#include <QFile>
#include <QHeaderView>
#include <QItemSelectionModel>
#include <QMenu>
#include <QMenuBar>
#include <QSettings>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#ifdef VIEWER_HAS_SQL
#include "data/datastate.h"
#include "data/datawindow.h"
#include "datatables.h"
#endif

#include <algorithm>
#include <csignal>
#include <functional>

//! The whole program but for its main(), in a run after the other with the same settings.
class tst_ViewerSession : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void welcomesWhoOpensNothing();
    void welcomesThoseWithoutAMouse();
    void opensFromThePageOfWelcome();
    void showsTheFeedOnDemand();
    void opensFilesBehindTabs();
    void opensBesideThePageThatAsks();
    void goesOnWhereItEnded_data();
    void goesOnWhereItEnded();
    void keepsWindows();
    void keepsColumns();
    void keepsOrderAndFilter();
    void keepsTablesOfDatabases();
    void keepsAddressesOfDatabases();
    void keepsRotatedFiles();
    void keepsTheFormat();
    void keepsWhatWasNotSeen();
    void keepsThePlaceInFilesThatHaveGone();
    void waitsForFilesThatHaveGone();
    void leavesSettingsAloneWhenTimed();
    void doesNotKeepTheFeed();

private:
    QString write(const QString &name, const QByteArray &text) const;
    void run(const SessionOptions &options, const std::function<void()> &steps);
    void run(const QStringList &files, const std::function<void()> &steps);

    std::unique_ptr<QTemporaryDir> m_directory; //!< files and settings of a test
    int m_status = -1;                          //!< of the last run
};

namespace {

QList<TabWindow *> tabWindows()
{
    QList<TabWindow *> windows;
    const QWidgetList widgets = QApplication::topLevelWidgets();
    for (QWidget *widget : widgets) {
        auto *window = qobject_cast<TabWindow *>(widget);
        if (window && window->isVisible())
            windows.append(window);
    }
    std::sort(windows.begin(), windows.end(), [](TabWindow *a, TabWindow *b) {
        return a->pages().first()->windowTitle() < b->pages().first()->windowTitle();
    });
    return windows;
}

template<typename Page> Page *onlyPage()
{
    const QList<TabWindow *> windows = tabWindows();
    if (windows.size() != 1 || windows.first()->pages().size() != 1)
        return nullptr;
    return qobject_cast<Page *>(windows.first()->pages().first());
}

QByteArray numberedLines(int count)
{
    QByteArray text;
    for (int line = 1; line <= count; ++line)
        text += "line " + QByteArray::number(line) + '\n';
    return text;
}

QAction *quitAction(const ViewerWindow *page)
{
    return page->menuBar()->actions().first()->menu()->actions().last();
}

} // namespace

void tst_ViewerSession::initTestCase()
{
    QCoreApplication::setApplicationName(QStringLiteral("session"));
    QSettings::setDefaultFormat(QSettings::IniFormat);
}

void tst_ViewerSession::init()
{
    m_directory = std::make_unique<QTemporaryDir>();
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope,
                       m_directory->filePath("settings"));
}

QString tst_ViewerSession::write(const QString &name, const QByteArray &text) const
{
    QFile file(m_directory->filePath(name));
    if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size())
        return {};
    return file.fileName();
}

//! One run of the program; the user does \a steps and closes what is left.
void tst_ViewerSession::run(const SessionOptions &options, const std::function<void()> &steps)
{
    Session session(options);
    QTimer::singleShot(0, &session, [&] {
        steps();
        QTimer::singleShot(0, &session, &QApplication::closeAllWindows);
    });
    m_status = session.run();
}

void tst_ViewerSession::run(const QStringList &files, const std::function<void()> &steps)
{
    SessionOptions options;
    options.files = files;
    run(options, steps);
}

void tst_ViewerSession::welcomesWhoOpensNothing()
{
    run(QStringList(), [] {
        const auto *page = onlyPage<WelcomeWindow>();
        QVERIFY(page);
        QVERIFY(page->isVisible());
        QVERIFY(!page->table()->isVisible());
    });
    QCOMPARE(m_status, 0);
}

void tst_ViewerSession::welcomesThoseWithoutAMouse()
{
    run(QStringList(), [] {
        const auto *page = onlyPage<WelcomeWindow>();
        QVERIFY(page);
        page->window()->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(page->window()));
        const auto buttons = page->findChildren<QCommandLinkButton *>();
        QCOMPARE(QApplication::focusWidget(), buttons.at(0));
        QTest::keyClick(buttons.at(0), Qt::Key_Tab);
        QCOMPARE(QApplication::focusWidget(), buttons.at(1));
        // There are no rows to look for, to save or to mark.
        QTest::keySequence(page->window(), QKeySequence(QKeySequence::Find));
        QVERIFY(!page->findChild<FindPanel *>()->isVisible());
        const auto actions = page->findChildren<QAction *>();
        for (const QAction *action : actions) {
            if (action->text() == QString::fromUtf8("Save Rows &As…")
                || action->shortcut() == QKeySequence(Qt::CTRL | Qt::Key_M))
                QVERIFY(!action->isEnabled());
        }
    });
}

void tst_ViewerSession::opensFromThePageOfWelcome()
{
    const QString path = write("a & b.log", numberedLines(3));
    run({path}, [] { QVERIFY(onlyPage<FileWindow>()); });
    SavedSession::save({});
    run(QStringList(), [path] {
        const auto *page = onlyPage<WelcomeWindow>();
        QVERIFY(page);
        const auto buttons = page->findChildren<QCommandLinkButton *>();
        QCOMPARE(buttons.size(), 3);
        QCOMPARE(buttons.last()->text(), QStringLiteral("a && b.log"));
        buttons.last()->click();
        const auto *opened = onlyPage<FileWindow>();
        QVERIFY(opened);
        QCOMPARE(opened->windowFilePath(), path);
        QTRY_COMPARE(opened->rows(), 3);
    });
    QCOMPARE(m_status, 0);
    SavedSession::save({});
    run(QStringList(), [] {
        const auto *page = onlyPage<WelcomeWindow>();
        QVERIFY(page);
        page->findChildren<QCommandLinkButton *>().at(1)->click();
        QVERIFY(onlyPage<FeedWindow>());
    });
}

void tst_ViewerSession::showsTheFeedOnDemand()
{
    SessionOptions options;
    options.hasFeed = true;
    run(options, [] { QVERIFY(onlyPage<FeedWindow>()); });
    options = SessionOptions();
    options.seconds = 0;
    run(options, [] { QVERIFY(onlyPage<FeedWindow>()); });
}

void tst_ViewerSession::opensFilesBehindTabs()
{
    const QString a = write("a.log", numberedLines(3));
    const QString b = write("b.log", numberedLines(4));
    run({a, b}, [=] {
        const QList<TabWindow *> windows = tabWindows();
        QCOMPARE(windows.size(), 1);
        const QList<ViewerWindow *> pages = windows.first()->pages();
        QCOMPARE(pages.size(), 2);
        QCOMPARE(pages[0]->windowFilePath(), a);
        QCOMPARE(pages[1]->windowFilePath(), b);
        QCOMPARE(windows.first()->current(), pages[0]);
    });
}

void tst_ViewerSession::opensBesideThePageThatAsks()
{
    const QString a = write("a.log", numberedLines(3));
    const QString b = write("b.log", numberedLines(4));
    run({a}, [=] {
        auto *page = onlyPage<FileWindow>();
        QVERIFY(page);
        Q_EMIT page->openRequested(b);
        const QList<TabWindow *> windows = tabWindows();
        QCOMPARE(windows.size(), 1);
        QCOMPARE(windows.first()->pages().size(), 2);
        QCOMPARE(windows.first()->current()->windowFilePath(), b);
    });
}

void tst_ViewerSession::goesOnWhereItEnded_data()
{
    QTest::addColumn<QString>("end");
    for (const char *end : {"window closed", "page closed", "quit", "SIGTERM", "SIGINT"})
        QTest::newRow(end) << QString::fromLatin1(end);
}

void tst_ViewerSession::goesOnWhereItEnded()
{
    QFETCH(QString, end);
    const QString a = write("a.log", numberedLines(5000));
    run({a}, [end] {
        auto *page = onlyPage<FileWindow>();
        QVERIFY(page);
        QTRY_COMPARE(page->rows(), 5000);
        page->showLine(2345);
        if (end == QLatin1String("window closed"))
            page->window()->close();
        else if (end == QLatin1String("page closed"))
            page->close();
        else if (end == QLatin1String("quit"))
            quitAction(page)->trigger();
        else
            std::raise(end == QLatin1String("SIGTERM") ? SIGTERM : SIGINT);
        QTRY_VERIFY(tabWindows().isEmpty());
    });
    QCOMPARE(m_status, 0);
    run(QStringList(), [a] {
        auto *page = onlyPage<FileWindow>();
        QVERIFY(page);
        QCOMPARE(page->windowFilePath(), a);
        QTRY_COMPARE(page->rows(), 5000);
        QTRY_COMPARE(page->table()->currentIndex().row(), 2344);
        QVERIFY(!page->isFollowing());
        QVERIFY(page->table()->viewport()->rect().contains(
            page->table()->visualRect(page->table()->currentIndex()).center()));
        page->setFollowing(true);
    });
    run(QStringList(), [] { QVERIFY(onlyPage<FileWindow>()->isFollowing()); });
}

void tst_ViewerSession::keepsWindows()
{
    const QString a = write("a.log", numberedLines(3));
    const QString b = write("b.log", numberedLines(4));
    const QString c = write("c.log", numberedLines(5));
    QSize size;
    run({b, a, c}, [&] {
        TabWindow *window = tabWindows().first();
        ViewerWindow *page = window->pages().first();
        const QList<QAction *> menus = page->menuBar()->actions();
        QMenu *menu = menus[menus.size() - 2]->menu();
        Q_EMIT menu->aboutToShow();
        menu->actions().first()->trigger();
        QCOMPARE(tabWindows().size(), 2);
        TabWindow *own = tabWindows().last();
        QCOMPARE(own->pages(), QList<ViewerWindow *> {page});
        window->setCurrent(window->pages().first());
        own->resize(own->size() - QSize(60, 40));
        size = own->size();
        quitAction(page)->trigger();
    });
    run(QStringList(), [&] {
        const QList<TabWindow *> windows = tabWindows();
        QCOMPARE(windows.size(), 2);
        QCOMPARE(windows[0]->pages().size(), 2);
        QCOMPARE(windows[0]->pages().at(0)->windowFilePath(), a);
        QCOMPARE(windows[0]->pages().at(1)->windowFilePath(), c);
        QCOMPARE(windows[0]->current()->windowFilePath(), a);
        QCOMPARE(windows[1]->pages().size(), 1);
        QCOMPARE(windows[1]->current()->windowFilePath(), b);
        QCOMPARE(windows[1]->size(), size);
        QVERIFY(windows[0]->size() != size);
        // Whoever closes one window goes on with the other.
        windows[0]->close();
    });
    run(QStringList(), [&] {
        const auto *page = onlyPage<FileWindow>();
        QVERIFY(page);
        QCOMPARE(page->windowFilePath(), b);
    });
}

void tst_ViewerSession::keepsColumns()
{
    const QString path = write("a.csv", "name,count\nx,1\ny,2\n");
    run({path}, [] {
        auto *page = onlyPage<FileWindow>();
        QVERIFY(page);
        QTRY_COMPARE(page->rows(), 2);
        page->table()->header()->resizeSection(0, 321);
        page->table()->header()->moveSection(0, 1);
    });
    run(QStringList(), [] {
        auto *page = onlyPage<FileWindow>();
        QVERIFY(page);
        QTRY_COMPARE(page->rows(), 2);
        QTRY_COMPARE(page->table()->header()->visualIndex(0), 1);
        QCOMPARE(page->table()->header()->sectionSize(0), 321);
    });
}

void tst_ViewerSession::keepsOrderAndFilter()
{
    const QString path = write("a.csv", "name,note,count\nAx,,1\naz,,3\nay,,2\nAw,,4\nb,,5\n");
    const auto names = [](const ViewerWindow *page) {
        QStringList names;
        for (int row = 0; row < page->table()->model()->rowCount(); ++row)
            names.append(page->table()->model()->index(row, 0).data().toString());
        return names;
    };
    run({path}, [names] {
        auto *page = onlyPage<FileWindow>();
        QVERIFY(page);
        QTRY_COMPARE(page->rows(), 5);
        QTest::mouseClick(page->table()->header()->viewport(), Qt::LeftButton, {},
                          {page->table()->header()->sectionViewportPosition(2) + 10, 5});
        QTest::mouseClick(page->table()->header()->viewport(), Qt::LeftButton, {},
                          {page->table()->header()->sectionViewportPosition(2) + 10, 5});
        page->openFindWith(QStringLiteral("A"));
        page->findChild<FindPanel *>()->setCaseSensitivity(Qt::CaseSensitive);
        page->findChild<FindPanel *>()->toggleFilter();
        QTRY_COMPARE(names(page), QStringList({"Aw", "Ax"}));
    });
    run(QStringList(), [names] {
        auto *page = onlyPage<FileWindow>();
        QVERIFY(page);
        QTRY_COMPARE(names(page), QStringList({"Aw", "Ax"}));
        const auto *panel = page->findChild<FindPanel *>();
        QVERIFY(panel->isVisible());
        QVERIFY(panel->hasFilter());
        QVERIFY(page->table()->header()->isSortIndicatorShown());
        QCOMPARE(page->table()->header()->sortIndicatorSection(), 2);
        page->findChild<FindPanel *>()->removeFilter();
        QTRY_COMPARE(names(page), QStringList({"b", "Aw", "az", "ay", "Ax"}));
    });
    run(QStringList(), [names] {
        auto *page = onlyPage<FileWindow>();
        QVERIFY(page);
        QTRY_COMPARE(names(page), QStringList({"b", "Aw", "az", "ay", "Ax"}));
        QVERIFY(!page->findChild<FindPanel *>()->hasFilter());
    });
    // Columns that have gone sort nothing.
    write("a.csv", "{\"only\": \"one column\"}\n{\"only\": 2}\n");
    run(QStringList(), [names] {
        auto *page = onlyPage<FileWindow>();
        QVERIFY(page);
        QTRY_COMPARE(names(page), QStringList({"one column", "2"}));
        QCOMPARE(page->table()->model()->columnCount(), 2);
        QTRY_VERIFY(!page->table()->header()->isSortIndicatorShown());
    });
}

#ifdef VIEWER_HAS_SQL
void tst_ViewerSession::keepsTablesOfDatabases()
{
    if (!QSqlDatabase::isDriverAvailable(QStringLiteral("QSQLITE")))
        QSKIP("Qt's driver for SQLite is not installed.");
    const QString path = write("data.sqlite", {});
    const Writer writer(path);
    writer.run("CREATE TABLE a (x)");
    writer.run("CREATE TABLE b (x INTEGER PRIMARY KEY, y TEXT)");
    writer.run("INSERT INTO b VALUES (1, 'one'), (2, 'two'), (3, 'three'), (4, NULL)");
    const auto shown = [](DataWindow *page) {
        QStringList rows;
        for (int row = 0; row < page->rows(); ++row)
            rows << shownRow(*page->model(), row);
        return rows;
    };
    const QStringList expected {"2|two", "3|three", "1|one"};
    run({path}, [&] {
        auto *page = onlyPage<DataWindow>();
        QVERIFY(page);
        page->showTableNamed("b");
        QTRY_COMPARE(page->rows(), 4);
        page->filterMore({1, DataCondition::Is::NotNull, {}, false});
        page->model()->sortBy(1, Qt::DescendingOrder);
        QTRY_COMPARE(shown(page), expected);
    });
    for (int again = 0; again < 2; ++again) {
        run(QStringList(), [&] {
            auto *page = onlyPage<DataWindow>();
            QVERIFY(page);
            QTRY_COMPARE(shown(page), expected);
            QTRY_COMPARE(page->table()->header()->sortIndicatorSection(), 1);
        });
    }
}

//! Nobody answers there: what was to be shown is to be shown next time.
void tst_ViewerSession::keepsAddressesOfDatabases()
{
    const QStringList addresses {"postgresql:///db?host=/nowhere&table=prices",
                                 "odbc:DSN=nowhere;UID=me?table=trades&key=id"};
    const auto tables = [] {
        QStringList tables;
        for (const QWidget *widget : QApplication::allWidgets()) {
            if (const auto *page = qobject_cast<const DataWindow *>(widget))
                tables << page->state().path + u' ' + DataState::fromText(page->state().own).table;
        }
        tables.sort();
        return tables;
    };
    const QStringList expected {"odbc:DSN=nowhere;UID=me trades",
                                "postgresql:///db?host=/nowhere prices"};
    run(addresses, [&] { QCOMPARE(tables(), expected); });
    run(QStringList(), [&] { QCOMPARE(tables(), expected); });
    run(QStringList(), [&] { QCOMPARE(tables(), expected); });
    const QString kept = QSettings().value(QStringLiteral("session")).toString();
    QVERIFY(kept.contains("DSN=nowhere"));
}
#else
void tst_ViewerSession::keepsTablesOfDatabases()
{
    QSKIP("This build knows no databases.");
}

void tst_ViewerSession::keepsAddressesOfDatabases()
{
    QSKIP("This build knows no databases.");
}
#endif

void tst_ViewerSession::keepsRotatedFiles()
{
    const QString path = write("log", "c\n");
    write("log.1", "b\n");
    SessionOptions options;
    options.files = QStringList(path);
    options.format.hasOlderFiles = true;
    for (int turn = 0; turn < 2; ++turn) {
        run(turn == 0 ? options : SessionOptions(), [] {
            const auto *page = onlyPage<FileWindow>();
            QVERIFY(page);
            QTRY_COMPARE(page->rows(), 2);
            QVERIFY(page->request().hasOlderFiles);
        });
    }
}

//! What was chosen by hand is chosen again, unless the command line says otherwise.
void tst_ViewerSession::keepsTheFormat()
{
    const QString path = write("a.csv", "name,count\nx,1\ny,2\n");
    FormatRequest chosen;
    chosen.delimiter = QChar(u'\0');
    chosen.encoding = Encoding::named("Latin-1");
    run({path}, [chosen] {
        auto *page = onlyPage<FileWindow>();
        QVERIFY(page);
        page->reopen(chosen);
        QTRY_COMPARE(page->rows(), 3);
    });
    run(QStringList(), [chosen] {
        const auto *page = onlyPage<FileWindow>();
        QVERIFY(page);
        QCOMPARE(page->request(), chosen);
        QTRY_COMPARE(page->rows(), 3);
    });
    SessionOptions options;
    options.format.hasHeader = true;
    run(options, [&options] {
        const auto *page = onlyPage<FileWindow>();
        QVERIFY(page);
        QCOMPARE(page->request(), options.format);
    });
}

//! A page that stays behind its tab has no columns to save.
void tst_ViewerSession::keepsWhatWasNotSeen()
{
    const QString csv = write("a.csv", "name,count\nx,1\ny,2\n");
    const QString log = write("b.log", numberedLines(3));
    run({csv, log}, [] {
        const TabWindow *window = tabWindows().first();
        ViewerWindow *page = window->pages().first();
        QTRY_COMPARE(page->rows(), 2);
        page->table()->header()->resizeSection(0, 321);
        window->tabs()->setCurrentIndex(1);
    });
    run(QStringList(), [] {
        const ViewerWindow *page = tabWindows().first()->pages().first();
        QTRY_COMPARE(page->rows(), 2);
        QVERIFY(!page->isVisible());
    });
    run(QStringList(), [] {
        const TabWindow *window = tabWindows().first();
        ViewerWindow *page = window->pages().first();
        window->tabs()->setCurrentIndex(0);
        QTRY_COMPARE(page->rows(), 2);
        QTRY_COMPARE(page->table()->header()->sectionSize(0), 321);
    });
}

void tst_ViewerSession::keepsThePlaceInFilesThatHaveGone()
{
    const QString path = write("a.log", numberedLines(5000));
    run({path}, [] {
        auto *page = onlyPage<FileWindow>();
        QVERIFY(page);
        QTRY_COMPARE(page->rows(), 5000);
        page->showLine(2345);
    });
    QVERIFY(QFile::remove(path));
    run(QStringList(), [] { QTRY_VERIFY(onlyPage<FileWindow>()->hasFailed()); });
    write("a.log", numberedLines(5000));
    run(QStringList(), [] {
        const auto *page = onlyPage<FileWindow>();
        QVERIFY(page);
        QTRY_COMPARE(page->table()->currentIndex().row(), 2344);
    });
}

void tst_ViewerSession::waitsForFilesThatHaveGone()
{
    const QString path = write("a.log", numberedLines(3));
    run({path}, [] { QVERIFY(onlyPage<FileWindow>()); });
    QVERIFY(QFile::remove(path));
    run(QStringList(), [&] {
        auto *page = onlyPage<FileWindow>();
        QVERIFY(page);
        QTRY_VERIFY(page->hasFailed());
        write("a.log", numberedLines(7));
        QTRY_COMPARE(page->rows(), 7);
        QVERIFY(!page->hasFailed());
        QVERIFY(page->table()->isVisible());
    });
    QCOMPARE(m_status, 0);
}

void tst_ViewerSession::leavesSettingsAloneWhenTimed()
{
    SessionOptions options;
    options.files = QStringList {write("a.log", numberedLines(3))};
    options.seconds = 0;
    run(options, [] {});
    QVERIFY(SavedSession::load().isEmpty());
    QVERIFY(QSettings().allKeys().isEmpty());
}

void tst_ViewerSession::doesNotKeepTheFeed()
{
    SessionOptions options;
    options.hasFeed = true;
    run(options, [] { QVERIFY(onlyPage<FeedWindow>()); });
    run(QStringList(), [] { QVERIFY(onlyPage<WelcomeWindow>()); });
}

QTEST_MAIN(tst_ViewerSession)

#include "tst_viewersession.moc"
