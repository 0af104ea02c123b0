// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef OPENDATA_H
#define OPENDATA_H

#include <QString>
#include <QStringList>

#include <memory>

class FrameStatistics;
class ViewerWindow;

//! What the command line wants to see of a database.
struct DataRequest
{
    QString table {};   //!< empty for the first one
    QString sql {};     //!< a query in its place
    QStringList key {}; //!< columns that tell its rows apart

    bool isEmpty() const { return table.isEmpty() && sql.isEmpty() && key.isEmpty(); }
};

//! A window on the database that \a text names, whose frames go to \a statistics; null if it names
//! none, or the program was built without databases.
std::unique_ptr<ViewerWindow> openData(const QString &text, const DataRequest &request,
                                       FrameStatistics *statistics);
//! Whether the program was built with databases.
bool canOpenData();

#endif // OPENDATA_H
