// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "decompressor.h"

namespace {

bool isBzip2(QByteArrayView bytes)
{
    // Behind the block size comes a first block, or the end.
    return bytes.startsWith("BZh") && bytes.size() >= 10 && bytes[3] >= '1' && bytes[3] <= '9'
        && (bytes.sliced(4).startsWith("1AY&SY") || bytes.sliced(4).startsWith("\x17rE8P\x90"));
}

} // namespace

QString Decompressor::formatOf(QByteArrayView bytes)
{
    if (bytes.startsWith("\x1f\x8b\x08"))
        return QStringLiteral("gzip");
    if (bytes.startsWith(QByteArrayView("\xfd"
                                        "7zXZ\0",
                                        6)))
        return QStringLiteral("xz");
    if (bytes.startsWith("\x28\xb5\x2f\xfd"))
        return QStringLiteral("zstd");
    return isBzip2(bytes) ? QStringLiteral("bzip2") : QString();
}
