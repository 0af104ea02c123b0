// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "tabwindows.h"

#include "tabwindow.h"
#include "viewerwindow.h"

#include <QAction>
#include <QMenu>
#include <QMenuBar>

#include <algorithm>

TabWindows::TabWindows() = default;
TabWindows::~TabWindows() = default;

void TabWindows::add(ViewerWindow *page, const ViewerWindow *beside)
{
    TabWindow *window = windowOf(beside);
    if (!window)
        window = m_windows.empty() ? create() : m_windows.front().get();
    const bool isNew = window->pages().isEmpty();
    window->add(page);
    addMenu(page);
    if (isNew)
        Q_EMIT created(window);
    window->show();
}

TabWindow *TabWindows::detach(ViewerWindow *page)
{
    TabWindow *const from = windowOf(page);
    if (!from || from->pages().size() < 2)
        return nullptr;
    const QSize size = from->size();
    from->take(page);
    TabWindow *const window = create();
    window->add(page);
    window->resize(size);
    Q_EMIT created(window);
    window->show();
    return window;
}

void TabWindows::join(ViewerWindow *page)
{
    TabWindow *const from = windowOf(page);
    const QList<TabWindow *> all = windows();
    const auto to = std::find_if(all.begin(), all.end(),
                                 [from](const TabWindow *window) { return window != from; });
    if (!from || to == all.end())
        return;
    const QList<ViewerWindow *> pages = from->pages();
    for (ViewerWindow *moved : pages) {
        from->take(moved);
        (*to)->add(moved);
    }
    (*to)->setCurrent(page);
    activate(page);
}

QList<TabWindow *> TabWindows::windows() const
{
    QList<TabWindow *> windows;
    for (const auto &window : m_windows)
        windows.append(window.get());
    return windows;
}

TabWindow *TabWindows::windowOf(const ViewerWindow *page) const
{
    const auto it = std::find_if(m_windows.begin(), m_windows.end(), [page](const auto &window) {
        return window->pages().contains(page);
    });
    return it == m_windows.end() ? nullptr : it->get();
}

TabWindow *TabWindows::create()
{
    m_windows.push_back(std::make_unique<TabWindow>());
    TabWindow *const window = m_windows.back().get();
    connect(window, &TabWindow::menuWanted, this, &TabWindows::addMoves);
    connect(window, &TabWindow::aboutToClose, this,
            [this, window] { Q_EMIT aboutToClose(window); });
    connect(window, &TabWindow::emptied, this, [this, window] { forget(window); });
    return window;
}

void TabWindows::forget(TabWindow *window)
{
    const auto it = std::find_if(m_windows.begin(), m_windows.end(),
                                 [window](const auto &held) { return held.get() == window; });
    if (it == m_windows.end())
        return;
    it->release()->deleteLater(); // what it does just now goes on in it
    m_windows.erase(it);
}

//! Before Help, as people look for it there.
void TabWindows::addMenu(ViewerWindow *page)
{
    auto *menu = new QMenu(tr("&Window"), page);
    page->menuBar()->insertMenu(page->menuBar()->actions().constLast(), menu);
    connect(menu, &QMenu::aboutToShow, this, [this, page, menu] { fillMenu(page, menu); });
}

void TabWindows::fillMenu(ViewerWindow *page, QMenu *menu)
{
    menu->clear();
    addMoves(page, menu);
    menu->addSeparator();
    for (const auto &window : m_windows) {
        const QList<ViewerWindow *> pages = window->pages();
        for (ViewerWindow *shown : pages) {
            QString title = shown->windowTitle();
            QAction *action = menu->addAction(title.replace(u'&', QLatin1String("&&")), shown,
                                              [this, shown] { activate(shown); });
            action->setCheckable(true);
            action->setChecked(shown == page);
        }
    }
}

void TabWindows::addMoves(ViewerWindow *page, QMenu *menu)
{
    const TabWindow *const window = windowOf(page);
    menu->addAction(tr("Move Tab to &New Window"), page, [this, page] { detach(page); })
        ->setEnabled(window && window->pages().size() > 1);
    menu->addAction(tr("&Join the Other Window"), page, [this, page] { join(page); })
        ->setEnabled(m_windows.size() > 1);
}

void TabWindows::activate(ViewerWindow *page)
{
    TabWindow *const window = windowOf(page);
    if (!window)
        return;
    window->setCurrent(page);
    window->raise();
    window->activateWindow();
}
