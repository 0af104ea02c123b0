// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef JSONTEXT_H
#define JSONTEXT_H

#include <QByteArray>

//! Adds \a bytes to \a json as a value: a string, or an array of numbers if they are not UTF-8.
void appendJsonValue(QByteArray *json, QByteArrayView bytes);

#endif // JSONTEXT_H
