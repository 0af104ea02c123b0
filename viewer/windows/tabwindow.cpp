// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "tabwindow.h"

#include "basics/distinctnames.h"
#include "viewerwindow.h"

#include <QCloseEvent>
#include <QMenu>
#include <QPointer>
#include <QShortcut>
#include <QTabBar>
#include <QTabWidget>
#include <QVBoxLayout>

namespace {

constexpr int s_numberedTabs = 9; // Alt+1 to Alt+9

} // namespace

TabWindow::TabWindow()
    : m_tabs(new QTabWidget(this))
{
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_tabs);
    m_tabs->setDocumentMode(true);
    m_tabs->setMovable(true);
    m_tabs->setTabsClosable(true);
    m_tabs->setTabBarAutoHide(true);
    m_tabs->setElideMode(Qt::ElideMiddle);
    m_tabs->setFocusPolicy(Qt::NoFocus); // keys belong to the page
    m_tabs->tabBar()->setFocusPolicy(Qt::NoFocus);
    m_tabs->tabBar()->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(m_tabs->tabBar(), &QWidget::customContextMenuRequested, this, &TabWindow::showTabMenu);
    connect(m_tabs, &QTabWidget::tabCloseRequested, this, [this](int tab) { page(tab)->close(); });
    connect(m_tabs, &QTabWidget::currentChanged, this, &TabWindow::pagesChanged);
    const auto step = [this](int by) {
        const int count = m_tabs->count();
        m_tabs->setCurrentIndex((m_tabs->currentIndex() + by + count) % count);
    };
    connect(new QShortcut(QKeySequence::NextChild, this), &QShortcut::activated, this,
            [step] { step(1); });
    connect(new QShortcut(QKeySequence::PreviousChild, this), &QShortcut::activated, this,
            [step] { step(-1); });
    for (int number = 1; number <= s_numberedTabs; ++number) {
        auto *shortcut =
            new QShortcut(QKeySequence(int(Qt::ALT) | (int(Qt::Key_0) + number)), this);
        connect(shortcut, &QShortcut::activated, this,
                [this, number] { m_tabs->setCurrentIndex(number - 1); });
    }
}

TabWindow::~TabWindow()
{
    // Pages are others'.
    m_tabs->disconnect(this);
    const QList<ViewerWindow *> left = pages();
    for (ViewerWindow *page : left) {
        page->disconnect(this);
        page->setParent(nullptr);
    }
}

void TabWindow::add(ViewerWindow *page)
{
    if (m_tabs->count() == 0)
        resize(page->size());
    connect(page, &ViewerWindow::closed, this, &TabWindow::pageClosed);
    connect(page, &QWidget::windowTitleChanged, this, &TabWindow::nameTabs);
    m_tabs->setCurrentIndex(m_tabs->addTab(page, QString()));
    pagesChanged();
}

void TabWindow::take(ViewerWindow *page)
{
    const int tab = m_tabs->indexOf(page);
    if (tab < 0)
        return;
    page->disconnect(this);
    page->hide();
    m_tabs->removeTab(tab);
    page->setParent(nullptr);
    if (m_tabs->count() > 0) {
        nameTabs();
        return;
    }
    close();
    Q_EMIT emptied();
}

QList<ViewerWindow *> TabWindow::pages() const
{
    QList<ViewerWindow *> pages;
    for (int tab = 0; tab < m_tabs->count(); ++tab)
        pages.append(page(tab));
    return pages;
}

ViewerWindow *TabWindow::page(int index) const
{
    return qobject_cast<ViewerWindow *>(m_tabs->widget(index));
}

ViewerWindow *TabWindow::current() const
{
    return page(m_tabs->currentIndex());
}

void TabWindow::setCurrent(ViewerWindow *page)
{
    m_tabs->setCurrentWidget(page);
}

void TabWindow::pageClosed()
{
    if (m_tabs->count() == 1 && !m_isClosing)
        Q_EMIT aboutToClose();
    take(qobject_cast<ViewerWindow *>(sender()));
}

void TabWindow::pagesChanged()
{
    nameTabs();
    if (ViewerWindow *page = current())
        page->setFocus();
}

void TabWindow::nameTabs()
{
    const QList<ViewerWindow *> pages = this->pages();
    QStringList paths;
    for (const ViewerWindow *page : pages)
        paths.append(page->windowFilePath().isEmpty() ? page->windowTitle()
                                                      : page->windowFilePath());
    const QStringList names = distinctNames(paths);
    for (int tab = 0; tab < m_tabs->count(); ++tab) {
        QString name = names[tab];
        m_tabs->setTabText(tab, name.replace(u'&', QLatin1String("&&")));
        m_tabs->setTabToolTip(tab, pages[tab]->windowTitle().toHtmlEscaped());
    }
    if (const ViewerWindow *page = current())
        setWindowTitle(page->windowTitle());
}

void TabWindow::showTabMenu(QPoint place)
{
    ViewerWindow *const clicked = page(m_tabs->tabBar()->tabAt(place));
    if (!clicked)
        return;
    QMenu menu;
    menu.addAction(tr("&Close"), clicked, &QWidget::close);
    menu.addAction(tr("Close &Others"), this, [this, clicked] {
        const QList<ViewerWindow *> all = pages();
        for (ViewerWindow *other : all) {
            if (other != clicked)
                other->close();
        }
    });
    menu.addSeparator();
    Q_EMIT menuWanted(clicked, &menu);
    menu.exec(m_tabs->tabBar()->mapToGlobal(place));
}

//! Each page ends what it does as if it was closed alone.
void TabWindow::closeEvent(QCloseEvent *event)
{
    const QPointer<TabWindow> self(this);
    const QList<ViewerWindow *> open = pages();
    if (!open.isEmpty())
        Q_EMIT aboutToClose();
    m_isClosing = true;
    for (ViewerWindow *page : open)
        page->close();
    if (!self)
        return;
    m_isClosing = false;
    QWidget::closeEvent(event);
}
