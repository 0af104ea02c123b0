// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef INDENTEDJSON_H
#define INDENTEDJSON_H

#include <QString>

//! \a text with each member of its objects and arrays on a line of its own, indented, if it is a
//! JSON object or array; else empty. Members keep their order, and numbers all their digits.
//! Behind the first \a most characters or so an ellipsis stands for the rest.
QString indentedJson(const QString &text, qsizetype most);

#endif // INDENTEDJSON_H
