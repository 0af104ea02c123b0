// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef KNOWNSTYLE_P_H
#define KNOWNSTYLE_P_H

#include <QStyle>

#include <cstring>

//! Whether \a style is one of those of Qt that are known to draw from their options alone.
//! A proxy, or a style sheet, has a class of its own, and is not.
inline bool isKnownStyle(const QStyle &style)
{
    const char *name = style.metaObject()->className();
    return std::strcmp(name, "QFusionStyle") == 0 || std::strcmp(name, "QWindowsStyle") == 0;
}

#endif // KNOWNSTYLE_P_H
