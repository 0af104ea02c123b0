// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "pathtexts.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

namespace {

//! What is no file has a name of its own, or nothing.
QString nameOfStream(const QString &path)
{
    if (path == QLatin1String("-"))
        return QCoreApplication::translate("FileWindow", "Standard input");
    return path == QLatin1String("journal:")
        ? QCoreApplication::translate("FileWindow", "Journal of the system")
        : QString();
}

} // namespace

QString displayName(const QString &path)
{
    const QString name = nameOfStream(path);
    return name.isEmpty() ? QFileInfo(path).fileName() : name;
}

QString titleOf(const QString &path)
{
    const QString name = nameOfStream(path);
    if (!name.isEmpty())
        return name;
    const QString folder = QDir::toNativeSeparators(QFileInfo(path).absolutePath());
    return QCoreApplication::translate("FileWindow", "%1 — %2").arg(displayName(path), folder);
}

QString displayPath(const QString &path)
{
    const QString name = nameOfStream(path);
    return name.isEmpty() ? QDir::toNativeSeparators(path) : name;
}
