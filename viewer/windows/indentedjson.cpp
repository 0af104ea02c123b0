// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "indentedjson.h"

#include <QJsonDocument>

namespace {

constexpr qsizetype s_indent = 4; // characters

bool isJson(const QString &text)
{
    const QStringView trimmed = QStringView(text).trimmed();
    const bool mayBe = (trimmed.startsWith(u'{') && trimmed.endsWith(u'}'))
        || (trimmed.startsWith(u'[') && trimmed.endsWith(u']'));
    return mayBe && !QJsonDocument::fromJson(text.toUtf8()).isNull();
}

bool isSpace(QChar character)
{
    return character == u' ' || character == u'\t' || character == u'\n' || character == u'\r';
}

//! Behind the string that begins at \a begin.
qsizetype endOfString(const QString &text, qsizetype begin)
{
    qsizetype at = begin + 1;
    while (at < text.size() && text[at] != u'"')
        at += text[at] == u'\\' ? 2 : 1;
    return qMin(at + 1, text.size());
}

//! The first character from \a at on that is no space.
qsizetype skipSpaces(const QString &text, qsizetype at)
{
    while (at < text.size() && isSpace(text[at]))
        ++at;
    return at;
}

void breakLine(QString *json, qsizetype depth)
{
    *json += u'\n';
    json->resize(json->size() + depth * s_indent, u' ');
}

} // namespace

// QJsonDocument would sort the members and round the numbers.
QString indentedJson(const QString &text, qsizetype most)
{
    if (!isJson(text))
        return {};
    QString json;
    qsizetype depth = 0;
    qsizetype at = skipSpaces(text, 0);
    while (at < text.size() && json.size() < most) {
        const QChar character = text[at];
        const qsizetype end = character == u'"' ? endOfString(text, at) : at + 1;
        const bool isClosing = character == u'}' || character == u']';
        const bool isOpening = character == u'{' || character == u'[';
        if (isClosing && --depth >= 0 && !json.endsWith(u'{') && !json.endsWith(u'['))
            breakLine(&json, depth);
        json += QStringView(text).sliced(at, end - at);
        at = skipSpaces(text, end);
        const bool isEmpty = at < text.size() && (text[at] == u'}' || text[at] == u']');
        depth += isOpening ? 1 : 0;
        if (character == u',' || (isOpening && !isEmpty))
            breakLine(&json, depth);
        else if (character == u':')
            json += u' ';
    }
    if (at < text.size())
        json += QChar(0x2026);
    return json;
}
