// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef BYTESTREAM_H
#define BYTESTREAM_H

#include <QtGlobal>

class QString;

//! Bytes that come one after another, from what has to be read in a way of its own.
class ByteStream
{
public:
    virtual ~ByteStream() = default;

    //! Reads the next \a size bytes, or as many as there are. 0 at the end; −1 if there are none
    //! yet or, with \a error set, if it cannot be read on.
    virtual qint64 read(char *buffer, qint64 size, QString *error) = 0;

protected:
    ByteStream() = default;

private:
    Q_DISABLE_COPY(ByteStream)
};

#endif // BYTESTREAM_H
