// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "newestfile.h"

#include <QDateTime>
#include <QDir>
#include <QFileInfo>

#include <algorithm>

bool isFilePattern(const QString &path)
{
    const QFileInfo file(path);
    const QString name = file.fileName();
    const bool hasWildcard = std::any_of(name.begin(), name.end(), [](QChar character) {
        return character == u'*' || character == u'?' || character == u'[';
    });
    return hasWildcard && !file.exists();
}

QString newestFile(const QString &pattern)
{
    const QFileInfo wanted(pattern);
    QFileInfoList files = wanted.dir().entryInfoList({wanted.fileName()}, QDir::Files, QDir::Name);
    // Equal times keep the order of names.
    std::stable_sort(files.begin(), files.end(), [](const QFileInfo &a, const QFileInfo &b) {
        return a.lastModified() < b.lastModified();
    });
    return files.isEmpty() ? QString() : files.last().filePath();
}
