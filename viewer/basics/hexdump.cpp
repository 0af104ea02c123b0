// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "hexdump.h"

#include <algorithm>
#include <iterator>

namespace {

constexpr qsizetype s_dumpedInLine = 16;

char printable(char byte)
{
    return byte >= ' ' && byte <= '~' ? byte : '.';
}

} // namespace

QString hexDump(QByteArrayView bytes)
{
    QByteArray dump;
    for (qsizetype at = 0; at < bytes.size(); at += s_dumpedInLine) {
        const QByteArrayView line = bytes.sliced(at, qMin(s_dumpedInLine, bytes.size() - at));
        if (at > 0)
            dump += '\n';
        dump += QByteArray::number(at, 16).rightJustified(8, '0') + "  "
            + line.toByteArray().toHex(' ').leftJustified(s_dumpedInLine * 3 - 1) + "  ";
        std::transform(line.begin(), line.end(), std::back_inserter(dump), printable);
    }
    return QString::fromLatin1(dump);
}
