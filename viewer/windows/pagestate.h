// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef PAGESTATE_H
#define PAGESTATE_H

#include "files/delimiter.h"
#include "search/textmatcher.h"

#include <QByteArray>
#include <QList>
#include <QString>

//! How a file was shown.
struct PageState
{
    QString path;            //!< absolute, or the address of a database
    bool isFollowing = true; //!< at the newest rows
    int line = 0;            //!< that was current or at the top, from 1 on; 0 for none
    int columnCount = 0;     //!< that columns is about
    QByteArray columns;      //!< QHeaderView::saveState()
    QList<int> grouped;      //!< logical columns whose numbers have digits in groups
    FormatRequest format;    //!< that was chosen
    int sortColumn = -1;     //!< that rows were sorted by; −1 for none
    Qt::SortOrder sortOrder = Qt::AscendingOrder;
    QString filter;        //!< what rows were filtered by; empty for nothing
    TextRules filterRules; //!< how that is looked for
    QString own;           //!< what pages of one kind add, in words of their own

    friend bool operator==(const PageState &, const PageState &) = default;
};

#endif // PAGESTATE_H
