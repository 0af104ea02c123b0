// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef PAGESTATE_H
#define PAGESTATE_H

#include "files/delimiter.h"

#include <QByteArray>
#include <QString>

//! How a file was shown.
struct PageState
{
    QString path;            //!< absolute
    bool isFollowing = true; //!< at the newest rows
    int line = 0;            //!< that was current or at the top, from 1 on; 0 for none
    int columnCount = 0;     //!< that columns is about
    QByteArray columns;      //!< QHeaderView::saveState()
    FormatRequest format;    //!< that was chosen

    friend bool operator==(const PageState &, const PageState &) = default;
};

#endif // PAGESTATE_H
