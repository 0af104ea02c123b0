// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef TABWINDOW_H
#define TABWINDOW_H

#include <QWidget>

class QMenu;
class QTabWidget;
class ViewerWindow;

/*!
 * \brief A window of the program: pages behind tabs, each with menus and bars of its own.
 *
 * One page alone shows no tab. A page belongs to who made it and may go at any time; one that
 * is closed leaves, and with the last one the window is closed.
 */
class TabWindow : public QWidget
{
    Q_OBJECT

public:
    TabWindow();
    ~TabWindow() override;

    //! Shows \a page behind the tabs that are there, or takes it from another window. Its
    //! tab is named by its windowFilePath(), or else by its title. The first page gives the
    //! window its size.
    void add(ViewerWindow *page);
    //! Lets \a page, which is shown nowhere then, go to another window.
    void take(ViewerWindow *page);

    //! From left to right.
    QList<ViewerWindow *> pages() const;
    ViewerWindow *current() const;
    void setCurrent(ViewerWindow *page);
    QTabWidget *tabs() const { return m_tabs; }

Q_SIGNALS:
    //! \a menu is about to be shown beside the tab of \a page.
    void menuWanted(ViewerWindow *page, QMenu *menu);
    //! The user closes the window, or its last page: what is there is about to go.
    void aboutToClose();
    //! The last page has gone. The window is closed.
    void emptied();

protected:
    void closeEvent(QCloseEvent *event) override;

private:
    void pageClosed();
    void pagesChanged();
    void nameTabs();
    void showTabMenu(QPoint place);
    ViewerWindow *page(int index) const;

    QTabWidget *m_tabs;       //!< all there is
    bool m_isClosing = false; //!< the pages are being closed
};

#endif // TABWINDOW_H
