// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "jsontext.h"

#include <QUtf8StringView>

namespace {

void appendString(QByteArray *json, QByteArrayView text)
{
    *json += '"';
    for (const char c : text) {
        if (c == '"' || c == '\\')
            (*json += '\\') += c;
        else if (c == '\n')
            *json += "\\n";
        else if (c == '\t')
            *json += "\\t";
        else if (quint8(c) < 0x20)
            *json += "\\u" + QByteArray::number(quint8(c), 16).rightJustified(4, '0');
        else
            *json += c;
    }
    *json += '"';
}

} // namespace

void appendJsonValue(QByteArray *json, QByteArrayView bytes)
{
    if (QUtf8StringView(bytes.data(), bytes.size()).isValidUtf8()) {
        appendString(json, bytes);
        return;
    }
    char before = '[';
    for (const char byte : bytes) {
        (*json += before) += QByteArray::number(quint8(byte));
        before = ',';
    }
    *json += ']';
}
