// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "textfont.h"

#include <QFontDatabase>
#include <QSettings>

namespace {

QString textFontKey()
{
    return QStringLiteral("textFont");
}

} // namespace

QFont TextFont::font()
{
    QFont font = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    const QString kept = QSettings().value(textFontKey()).toString();
    QFont chosen;
    if (!kept.isEmpty() && chosen.fromString(kept))
        font = chosen;
    return font;
}

bool TextFont::isChosen()
{
    return !QSettings().value(textFontKey()).toString().isEmpty();
}

void TextFont::choose(const QFont &font)
{
    QSettings().setValue(textFontKey(), font.toString());
}

void TextFont::reset()
{
    QSettings().remove(textFontKey());
}
