// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef PLACESCANNER_H
#define PLACESCANNER_H

#include "files/bytepattern.h"

#include <vector>

/*!
 * \brief Finds the places of several patterns in bytes, one after the other.
 *
 * Each of them is looked for from its last place on only, so that the rare ones do not cost
 * anything where the others are frequent.
 */
class PlaceScanner
{
public:
    explicit PlaceScanner(std::vector<BytePattern> patterns);

    //! Begins anew, with \a bytes, which have to stay.
    void start(QByteArrayView bytes);
    //! The first place of any of the patterns from \a from on, which never decreases; −1 if
    //! there is none.
    qsizetype next(qsizetype from);

private:
    std::vector<BytePattern> m_patterns;
    std::vector<qsizetype> m_places; //!< of each pattern the one found last
    QByteArrayView m_bytes;          //!< looked through
};

#endif // PLACESCANNER_H
