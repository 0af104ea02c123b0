// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "basics/distinctnames.h"

#include <QDir>

#include <algorithm>

namespace {

//! The last \a count parts of \a path, all if it has fewer.
QString lastParts(const QString &path, int count)
{
    return path.section(u'/', -count);
}

//! Whether another path than \a path ends as it does.
bool isTaken(const QString &path, int count, const QStringList &paths)
{
    const QString name = lastParts(path, count);
    return std::any_of(paths.begin(), paths.end(), [&](const QString &other) {
        return other != path && lastParts(other, count) == name;
    });
}

} // namespace

QStringList distinctNames(const QStringList &paths)
{
    QStringList names;
    names.reserve(paths.size());
    for (const QString &path : paths) {
        const int most = int(path.count(u'/')) + 1;
        int count = 1;
        while (count < most && isTaken(path, count, paths))
            ++count;
        names.append(QDir::toNativeSeparators(lastParts(path, count)));
    }
    return names;
}
