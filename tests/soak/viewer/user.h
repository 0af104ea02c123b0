// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef USER_H
#define USER_H

#include "changingfile.h"
#include "files/delimiter.h"
#include "windows/framestatistics.h"
#include "windows/tabwindows.h"

#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QTimer>

#include <memory>
#include <vector>

class FileWindow;
class ViewerWindow;

/*!
 * \brief Somebody who does anything to the viewer's windows, while files change beneath them.
 *
 * Dialogs are left alone: they wait for somebody.
 */
class User
{
public:
    //! Does the same for the same \a seed, but for how long files take to be read.
    explicit User(quint32 seed);
    ~User();

    //! Does one thing. Returns what, for people.
    QString step();
    //! Waits until the files have been read, and holds what pages show against them. Returns
    //! what differs, or nothing.
    QString check();

private:
    template<typename T> T oneOf(std::initializer_list<T> choices)
    {
        return choices.begin()[m_random.bounded(int(choices.size()))];
    }

    QString open();
    QString changePages();
    QString pressKey();
    QString useMouse();
    QString changeColumns();
    QString changeLook();
    QString search();
    QString followOrMove();
    QString reopen();
    FormatRequest someFormat();
    void losePatience();
    ViewerWindow *page();
    void removeClosed();
    QString compare(const FileWindow &page, const QByteArray &content) const;
    QString compareEnd(const FileWindow &page, const QByteArray &content) const;
    QString compareShown(const FileWindow &page) const;

    QRandomGenerator m_random;
    QTemporaryDir m_directory;
    std::vector<std::unique_ptr<ChangingFile>> m_files;
    QTimer m_patience; //!< runs during a step
    FrameStatistics m_statistics;
    TabWindows m_windows;
    std::vector<std::unique_ptr<ViewerWindow>> m_pages; //!< go before the windows
};

#endif // USER_H
