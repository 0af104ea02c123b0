// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "basics/keys.h"
#include "feed/feedwindow.h"
#include "windows/filewindow.h"
#include "windows/framestatistics.h"
#include "windows/tabwindow.h"
#include "windows/tabwindows.h"
#include "windows/viewertable.h"

#include <QAction>
#include <QDir>
#include <QFile>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPointer>
#include <QShortcut>
#include <QSignalBlocker>
#include <QSignalSpy>
#include <QTabBar>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QTest>

#include <algorithm>

namespace {

QStringList tabTexts(const TabWindow *window)
{
    QStringList texts;
    for (int tab = 0; tab < window->tabs()->count(); ++tab)
        texts.append(window->tabs()->tabText(tab));
    return texts;
}

//! Whether \a action hears its keys while \a focus has the focus.
bool isHeard(const QAction *action, const QWidget *focus)
{
    if (!action->isEnabled() || action->shortcutContext() == Qt::WindowShortcut)
        return action->isEnabled();
    const QList<QObject *> users = action->associatedObjects();
    return std::any_of(users.begin(), users.end(), [focus](QObject *user) {
        const auto *widget = qobject_cast<QWidget *>(user);
        return widget && (widget == focus || widget->isAncestorOf(focus));
    });
}

//! Those that mean something in \a window where \a page has the focus.
QStringList keysIn(const TabWindow *window, const ViewerWindow *page)
{
    QStringList keys;
    const auto actions = page->findChildren<QAction *>();
    for (const QAction *action : actions) {
        const QList<QKeySequence> shortcuts = action->shortcuts();
        for (const QKeySequence &key : shortcuts) {
            if (!key.isEmpty() && isHeard(action, window->focusWidget()))
                keys.append(key.toString());
        }
    }
    const auto shortcuts = window->findChildren<QShortcut *>(QString(), Qt::FindDirectChildrenOnly);
    for (const QShortcut *shortcut : shortcuts)
        keys.append(shortcut->key().toString());
    keys.sort();
    return keys;
}

} // namespace

class tst_ViewerTabs : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void onePageHasNoTab();
    void aFileMoreIsATabMore();
    void tellsEqualNamesApart();
    void windowHasTheTitleOfItsPage();
    void keysGoToThePageInFront();
    void numbersChooseTabs();
    void closesTabs();
    void closesAllTabsWithTheWindow();
    void movesToAWindowAndBack();
    void movesPagesThatFollow();
    void windowMenuTellsAllPages();
    void survivesPagesThatGo();
    void survivesAPageThatGoesWhileFiltered();
    void noKeyIsAmbiguous_data();
    void noKeyIsAmbiguous();
    void leavesKeysToOthers_data();
    void leavesKeysToOthers();

private:
    QString write(const QString &name, const QByteArray &text) const;
    FileWindow *open(const QString &name, const QByteArray &text = "a\nb\nc\n");
    QMenu *windowMenu(const ViewerWindow *page) const;
    QAction *windowAction(const ViewerWindow *page, const QString &text) const;

    FrameStatistics m_statistics;
    std::unique_ptr<QTemporaryDir> m_directory;
    std::unique_ptr<TabWindows> m_windows;
    std::vector<std::unique_ptr<FileWindow>> m_pages; //!< go before the windows
};

void tst_ViewerTabs::init()
{
    m_pages.clear();
    m_windows = std::make_unique<TabWindows>();
    m_directory = std::make_unique<QTemporaryDir>();
}

QString tst_ViewerTabs::write(const QString &name, const QByteArray &text) const
{
    const QString path = m_directory->filePath(name);
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size())
        return {};
    return path;
}

FileWindow *tst_ViewerTabs::open(const QString &name, const QByteArray &text)
{
    m_pages.push_back(
        std::make_unique<FileWindow>(write(name, text), FormatRequest(), &m_statistics));
    m_windows->add(m_pages.back().get());
    return m_pages.back().get();
}

//! The menu "Window" of \a page as it is when it is opened.
QMenu *tst_ViewerTabs::windowMenu(const ViewerWindow *page) const
{
    const QList<QAction *> menus = page->menuBar()->actions();
    QMenu *menu = menus[menus.size() - 2]->menu();
    Q_EMIT menu->aboutToShow();
    return menu;
}

QAction *tst_ViewerTabs::windowAction(const ViewerWindow *page, const QString &text) const
{
    const QList<QAction *> actions = windowMenu(page)->actions();
    for (QAction *action : actions) {
        if (action->text() == text)
            return action;
    }
    return nullptr;
}

void tst_ViewerTabs::onePageHasNoTab()
{
    FileWindow *page = open("a.log");
    TabWindow *window = m_windows->windowOf(page);
    QVERIFY(QTest::qWaitForWindowExposed(window));
    QVERIFY(!window->tabs()->tabBar()->isVisible());
    QVERIFY(page->isVisible());
    QCOMPARE(page->size(), window->size());
    QTRY_COMPARE(page->rows(), 3);
}

void tst_ViewerTabs::aFileMoreIsATabMore()
{
    FileWindow *first = open("a.log");
    FileWindow *second = open("b.log");
    QCOMPARE(m_windows->windows().size(), 1);
    TabWindow *window = m_windows->windowOf(first);
    QCOMPARE(window, m_windows->windowOf(second));
    QVERIFY(QTest::qWaitForWindowExposed(window));
    QVERIFY(window->tabs()->tabBar()->isVisible());
    QCOMPARE(tabTexts(window), QStringList({"a.log", "b.log"}));
    QCOMPARE(window->current(), second);
    QVERIFY(second->isVisible());
    QVERIFY(!first->isVisible());
}

void tst_ViewerTabs::tellsEqualNamesApart()
{
    FileWindow *first = open("x/a.log");
    const TabWindow *window = m_windows->windowOf(first);
    QCOMPARE(tabTexts(window), QStringList({"a.log"}));
    FileWindow *second = open("y/a.log");
    QCOMPARE(
        tabTexts(window),
        QStringList({QDir::toNativeSeparators("x/a.log"), QDir::toNativeSeparators("y/a.log")}));
    QVERIFY(window->tabs()->tabToolTip(0).contains(m_directory->filePath("x").section('/', -2)));
    first->close();
    QCOMPARE(tabTexts(window), QStringList({"a.log"}));
    QVERIFY(second->isVisible());
}

void tst_ViewerTabs::windowHasTheTitleOfItsPage()
{
    FileWindow *first = open("a & b.log");
    FileWindow *second = open("b.log");
    TabWindow *window = m_windows->windowOf(first);
    QCOMPARE(tabTexts(window), QStringList({"a && b.log", "b.log"}));
    QCOMPARE(window->windowTitle(), second->windowTitle());
    window->setCurrent(first);
    QCOMPARE(window->windowTitle(), first->windowTitle());
    first->setWindowTitle("else");
    QCOMPARE(window->windowTitle(), QStringLiteral("else"));
}

void tst_ViewerTabs::keysGoToThePageInFront()
{
    FileWindow *first = open("a.log", "a1\na2\n");
    FileWindow *second = open("b.log", "b1\nb2\n");
    TabWindow *window = m_windows->windowOf(first);
    window->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(window));
    QTRY_COMPARE(first->rows(), 2);
    QTRY_COMPARE(second->rows(), 2);
    QVERIFY(second->table()->hasFocus());
    QTest::keyClick(window->focusWidget(), Qt::Key_Home, Qt::ControlModifier);
    QCOMPARE(second->table()->currentIndex().row(), 0);
    QTest::keyClick(second->table(), Qt::Key_Tab, Qt::ControlModifier);
    QCOMPARE(window->current(), first);
    QVERIFY(first->table()->hasFocus());
    QTest::keyClick(first->table(), Qt::Key_Backtab, Qt::ControlModifier | Qt::ShiftModifier);
    QCOMPARE(window->current(), second);
    QTest::keyClick(second->table(), Qt::Key_Tab, Qt::ControlModifier);
    QCOMPARE(window->current(), first); // round the end
}

void tst_ViewerTabs::numbersChooseTabs()
{
    FileWindow *first = open("a.log");
    FileWindow *second = open("b.log");
    TabWindow *window = m_windows->windowOf(first);
    window->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(window));
    QTest::keyClick(second->table(), Qt::Key_1, Qt::AltModifier);
    QCOMPARE(window->current(), first);
    QTest::keyClick(first->table(), Qt::Key_9, Qt::AltModifier);
    QCOMPARE(window->current(), first);
    QTest::keyClick(first->table(), Qt::Key_2, Qt::AltModifier);
    QCOMPARE(window->current(), second);
}

void tst_ViewerTabs::closesTabs()
{
    FileWindow *first = open("a.log");
    FileWindow *second = open("b.log");
    TabWindow *window = m_windows->windowOf(first);
    QSignalSpy closed(first, &ViewerWindow::closed);
    QSignalSpy windowClosed(m_windows.get(), &TabWindows::aboutToClose);
    Q_EMIT window->tabs()->tabCloseRequested(0);
    QCOMPARE(closed.size(), 1);
    QCOMPARE(window->pages(), QList<ViewerWindow *> {second});
    QVERIFY(window->isVisible());
    QCOMPARE(windowClosed.size(), 0);
    QList<ViewerWindow *> last;
    connect(m_windows.get(), &TabWindows::aboutToClose, this,
            [&last](const TabWindow *closing) { last = closing->pages(); });
    second->close();
    QCOMPARE(windowClosed.size(), 1);
    QCOMPARE(last, QList<ViewerWindow *> {second});
    QVERIFY(!window->isVisible());
    QVERIFY(m_windows->windows().isEmpty());
}

void tst_ViewerTabs::closesAllTabsWithTheWindow()
{
    FileWindow *first = open("a.log");
    FileWindow *second = open("b.log");
    QSignalSpy firstClosed(first, &ViewerWindow::closed);
    QSignalSpy secondClosed(second, &ViewerWindow::closed);
    QSignalSpy windowClosed(m_windows.get(), &TabWindows::aboutToClose);
    m_windows->windowOf(first)->close();
    QCOMPARE(firstClosed.size(), 1);
    QCOMPARE(secondClosed.size(), 1);
    QCOMPARE(windowClosed.size(), 1);
    QVERIFY(m_windows->windows().isEmpty());
}

void tst_ViewerTabs::movesToAWindowAndBack()
{
    FileWindow *first = open("a.log");
    QVERIFY(!windowAction(first, "Move Tab to &New Window")->isEnabled());
    QVERIFY(!windowAction(first, "&Join the Other Window")->isEnabled());
    FileWindow *second = open("b.log");
    FileWindow *third = open("c.log");
    TabWindow *window = m_windows->windowOf(first);
    windowAction(second, "Move Tab to &New Window")->trigger();
    TabWindow *own = m_windows->windowOf(second);
    QVERIFY(own != window);
    QCOMPARE(own->pages(), QList<ViewerWindow *> {second});
    QCOMPARE(own->size(), window->size());
    QVERIFY(own->isVisible());
    QVERIFY(second->isVisible());
    QCOMPARE(window->pages(), (QList<ViewerWindow *> {first, third}));
    QTRY_COMPARE(second->rows(), 3);
    windowAction(second, "&Join the Other Window")->trigger();
    QCOMPARE(m_windows->windows(), QList<TabWindow *> {window});
    QCOMPARE(window->pages(), (QList<ViewerWindow *> {first, third, second}));
    QCOMPARE(window->current(), second);
    QVERIFY(second->isVisible());
}

void tst_ViewerTabs::movesPagesThatFollow()
{
    QByteArray text;
    for (int i = 0; i < 500; ++i)
        text += "line\n";
    open("a.log");
    FileWindow *page = open("b.log", text);
    QTRY_COMPARE(page->rows(), 500);
    TabWindow *own = m_windows->detach(page);
    QVERIFY(QTest::qWaitForWindowExposed(own));
    QVERIFY(page->isFollowing());
    QFile file(page->windowFilePath());
    QVERIFY(file.open(QIODevice::Append));
    file.write("one more\n");
    file.close();
    QTRY_COMPARE(page->rows(), 501);
    const ViewerTable *table = page->table();
    QTRY_VERIFY(table->viewport()->rect().contains(
        table->visualRect(table->model()->index(500, 0)).center()));
}

void tst_ViewerTabs::windowMenuTellsAllPages()
{
    FileWindow *first = open("a.log");
    FileWindow *second = open("b.log");
    m_windows->detach(second);
    QAction *other = windowAction(second, first->windowTitle());
    QVERIFY(other);
    QVERIFY(!other->isChecked());
    QVERIFY(windowAction(second, second->windowTitle())->isChecked());
    FileWindow *third = open("c.log");
    QCOMPARE(m_windows->windowOf(first)->current(), third);
    windowAction(second, first->windowTitle())->trigger();
    QCOMPARE(m_windows->windowOf(first)->current(), first);
}

void tst_ViewerTabs::survivesPagesThatGo()
{
    FileWindow *first = open("a.log");
    FileWindow *second = open("b.log");
    TabWindow *window = m_windows->windowOf(first);
    m_pages.pop_back(); // of the second page
    QCOMPARE(window->pages(), QList<ViewerWindow *> {first});
    QVERIFY(first->isVisible());
    m_windows.reset(); // pages are not the windows'
    QVERIFY(!first->isVisible());
    QVERIFY(!first->parentWidget());
    Q_UNUSED(second)
}

void tst_ViewerTabs::survivesAPageThatGoesWhileFiltered()
{
    open("a.log");
    // The long s may be one: every row is looked at, which takes a while.
    constexpr int rows = 1 << 19;
    FileWindow *page = open("b.log", QByteArray("\xc5\xbf\n").repeated(rows));
    QTRY_COMPARE(page->rows(), rows);
    auto *field = page->findChild<QLineEdit *>("findLineEdit");
    {
        const QSignalBlocker beforeSearching(field);
        field->setText("sq");
    }
    const auto actions = page->findChildren<QAction *>();
    const auto filter = std::find_if(actions.begin(), actions.end(), [](const QAction *action) {
        return action->shortcut() == QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_F);
    });
    QVERIFY(filter != actions.end());
    const QPointer<FileWindow> gone(page);
    QMetaObject::invokeMethod(
        this, [this] { m_pages.pop_back(); }, Qt::QueuedConnection);
    (*filter)->trigger();
    QVERIFY(!gone);
}

void tst_ViewerTabs::noKeyIsAmbiguous_data()
{
    QTest::addColumn<bool>("isFeed");
    QTest::addColumn<bool>("isFinding");
    QTest::newRow("file") << false << false;
    QTest::newRow("file, finding") << false << true;
    QTest::newRow("feed") << true << false;
    QTest::newRow("feed, finding") << true << true;
}

//! Qt tells nobody but the console when two actions want a key.
void tst_ViewerTabs::noKeyIsAmbiguous()
{
    QFETCH(bool, isFeed);
    QFETCH(bool, isFinding);
    FileWindow *file = open("a.log");
    FeedWindow feed(0, FeedModel::NewRows::AtTop, &m_statistics);
    if (isFeed)
        m_windows->add(&feed);
    ViewerWindow *page = isFeed ? static_cast<ViewerWindow *>(&feed) : file;
    TabWindow *window = m_windows->windowOf(page);
    window->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(window));
    if (isFinding)
        page->openFind();
    const QStringList keys = keysIn(window, page);
    QVERIFY(keys.contains(QKeySequence(Qt::CTRL | Qt::Key_G).toString()));
    QVERIFY(keys.contains(QKeySequence(Qt::ALT | Qt::Key_1).toString()));
    QCOMPARE(keys.contains(QStringLiteral("Esc")), isFinding);
    QStringList once = keys;
    once.removeDuplicates();
    QCOMPARE(keys, once);
}

void tst_ViewerTabs::leavesKeysToOthers_data()
{
    QTest::addColumn<QList<QKeySequence>>("keys");
    QTest::addColumn<QList<QKeySequence>>("left");
    const QKeySequence usual(Qt::Key_F3);
    const QKeySequence taken(Qt::CTRL | Qt::Key_G);
    QTest::newRow("other keys") << QList {usual} << QList {usual};
    QTest::newRow("first") << QList {taken, usual} << QList {usual};
    QTest::newRow("second") << QList {usual, taken} << QList {usual};
    QTest::newRow("the only one") << QList {taken} << QList<QKeySequence>();
}

void tst_ViewerTabs::leavesKeysToOthers()
{
    QFETCH(QList<QKeySequence>, keys);
    QFETCH(QList<QKeySequence>, left);
    QAction action;
    action.setShortcuts(keys);
    leaveKey(&action, QKeySequence(Qt::CTRL | Qt::Key_G));
    QCOMPARE(action.shortcuts(), left);
}

QTEST_MAIN(tst_ViewerTabs)

#include "tst_viewertabs.moc"
