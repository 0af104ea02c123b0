// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "controlpictures.h"

namespace {

// Whether any character would be invisible or begin a new line. Looks at all of them,
// so that the compiler can look at several at once.
bool needsPictures(QStringView text)
{
    unsigned found = 0;
    for (const QChar character : text) {
        const unsigned code = character.unicode();
        found |= unsigned(code < 0x20) & unsigned(code != u'\t');
        found |= unsigned(code == 0x7f) | unsigned((code & 0xfffe) == 0x2028);
    }
    return found != 0;
}

} // namespace

QString withPictures(QString text)
{
    if (!needsPictures(text))
        return text;
    for (QChar &character : text) {
        const char16_t code = character.unicode();
        if (code < 0x20 && code != u'\t')
            character = QChar(0x2400 + code);
        else if (code == 0x7f)
            character = QChar(0x2421);
        else if (code == QChar::LineSeparator || code == QChar::ParagraphSeparator)
            character = QChar(0x2424);
    }
    return text;
}
