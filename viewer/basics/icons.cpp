// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "basics/icons.h"

// A static library keeps its resources for itself until somebody asks. Not to be called in a
// namespace.
static void useResources()
{
    Q_INIT_RESOURCE(viewer);
}

QIcon Icons::program()
{
    useResources();
    QIcon icon;
    for (const int size : {16, 24, 32, 48, 64, 128, 256})
        icon.addFile(QStringLiteral(":/viewer/vantix-viewer-%1.png").arg(size), {size, size});
    return icon;
}

QIcon Icons::action(const QString &themeName, const QString &name)
{
    useResources();
    return QIcon::fromTheme(themeName, QIcon(QStringLiteral(":/viewer/%1.png").arg(name)));
}
