// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef SCALABLEFONT_H
#define SCALABLEFONT_H

#include <QFont>
#include <QFontDatabase>
#include <QFontInfo>
#include <QStringList>

#include <algorithm>

//! A font that has any size: the system's own may be one of pictures in a single size.
inline QFont scalableFont(int pixelSize)
{
    QFont font;
    if (!QFontDatabase::isSmoothlyScalable(QFontInfo(font).family())) {
        const QStringList families = QFontDatabase::families();
        const auto it = std::find_if(families.begin(), families.end(), [](const QString &family) {
            return QFontDatabase::isSmoothlyScalable(family);
        });
        if (it != families.end())
            font.setFamily(*it);
    }
    font.setPixelSize(pixelSize);
    return font;
}

#endif // SCALABLEFONT_H
