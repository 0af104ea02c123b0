// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef SAVEDSESSION_H
#define SAVEDSESSION_H

#include "windows/pagestate.h"

#include <QByteArray>
#include <QList>
#include <QString>

//! A window and its pages, as they were.
struct SavedWindow
{
    QByteArray geometry;    //!< QWidget::saveGeometry()
    QList<PageState> pages; //!< from left to right
    int current = 0;        //!< the one in front

    friend bool operator==(const SavedWindow &, const SavedWindow &) = default;
};

//! What was open when the program ended, in the user's settings.
namespace SavedSession {

//! Nothing if nothing was kept, or it cannot be understood. Windows may have no pages.
QList<SavedWindow> load();
void save(const QList<SavedWindow> &windows);

} // namespace SavedSession

#endif // SAVEDSESSION_H
