// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef TABWINDOWS_H
#define TABWINDOWS_H

#include <QObject>

#include <memory>
#include <vector>

class QMenu;
class TabWindow;
class ViewerWindow;

//! The windows of a run, and the ways of a page from one to another.
class TabWindows : public QObject
{
    Q_OBJECT

public:
    TabWindows();
    ~TabWindows() override;

    //! Shows \a page, which stays the caller's, in the window of \a beside, else in the first
    //! one. A page gets a menu of windows with this.
    void add(ViewerWindow *page, const ViewerWindow *beside = nullptr);
    //! Moves \a page from among others to a window of its own. Returns that, or null if it
    //! has its window already.
    TabWindow *detach(ViewerWindow *page);
    //! Moves \a page, and all others of its window, to the oldest of the other windows.
    void join(ViewerWindow *page);

    //! The open ones, the oldest first.
    QList<TabWindow *> windows() const;
    //! The one with \a page, or null.
    TabWindow *windowOf(const ViewerWindow *page) const;

Q_SIGNALS:
    //! \a window, which has a page, is about to be shown for the first time.
    void created(TabWindow *window);
    //! The user closes \a window, or its last page: what is there is about to go.
    void aboutToClose(TabWindow *window);

private:
    TabWindow *create();
    void forget(TabWindow *window);
    void addMenu(ViewerWindow *page);
    void fillMenu(ViewerWindow *page, QMenu *menu);
    void addMoves(ViewerWindow *page, QMenu *menu);
    void activate(ViewerWindow *page);

    std::vector<std::unique_ptr<TabWindow>> m_windows; //!< see windows()
};

#endif // TABWINDOWS_H
