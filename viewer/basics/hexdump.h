// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef HEXDUMP_H
#define HEXDUMP_H

#include <QByteArrayView>
#include <QString>

//! Lines of an offset, 16 bytes in hexadecimal, and those of them that are ASCII.
QString hexDump(QByteArrayView bytes);

#endif // HEXDUMP_H
