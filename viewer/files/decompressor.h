// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef DECOMPRESSOR_H
#define DECOMPRESSOR_H

#include "bytestream.h"

#include <QByteArray>
#include <QString>

#include <memory>

//! Reads the text in a compressed file, from its start to its end.
class Decompressor : public ByteStream
{
public:
    static constexpr qint64 signatureSize = 16; //!< bytes that formatOf() needs at most

    //! What a file that begins with \a bytes is compressed with: "gzip", "xz", "zstd",
    //! "bzip2", or nothing.
    static QString formatOf(QByteArrayView bytes);

    //! Reads the compressed file \a descriptor, which must stay open, from its beginning.
    //! Null with a sentence for the user in \a error if that fails, or if this build cannot.
    static std::unique_ptr<Decompressor> open(int descriptor, QString *error);

    //! The library that this build decompresses with, and its version; empty without one.
    static QString libraryName();
};

#endif // DECOMPRESSOR_H
