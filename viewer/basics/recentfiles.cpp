// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "basics/recentfiles.h"

#include <QFileInfo>
#include <QSettings>

namespace {

QString settingsKey()
{
    return QStringLiteral("recentFiles");
}

} // namespace

QStringList RecentFiles::paths()
{
    return QSettings().value(settingsKey()).toStringList().mid(0, most);
}

void RecentFiles::add(const QString &path)
{
    const QFileInfo file(path);
    if (path == QLatin1String("-") || !file.isFile())
        return;
    QStringList known = paths();
    known.removeAll(file.absoluteFilePath());
    known.prepend(file.absoluteFilePath());
    QSettings().setValue(settingsKey(), known.mid(0, most));
}

void RecentFiles::clear()
{
    QSettings().remove(settingsKey());
}
