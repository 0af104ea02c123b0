// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef DECOMPRESSOR_H
#define DECOMPRESSOR_H

#include <QByteArray>
#include <QString>

#include <memory>

//! Reads the text in a compressed file, from its start to its end.
class Decompressor
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

    virtual ~Decompressor() = default;

    //! Reads the next \a size bytes of text, or as many as there are. 0 at the end, −1 with
    //! \a error set if the file is damaged there.
    virtual qint64 read(char *buffer, qint64 size, QString *error) = 0;

protected:
    Decompressor() = default;

private:
    Q_DISABLE_COPY(Decompressor)
};

#endif // DECOMPRESSOR_H
