// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef PICTUREKEYS_P_H
#define PICTUREKEYS_P_H

#include <QList>
#include <QString>

class QPixmap;

/*!
 * \brief The keys of pictures that were put into QPixmapCache.
 *
 * The cache drops pictures for which there is no room, but keeps their keys until it has
 * been idle for half a minute. Who scrolls through a large table leaves hundreds of bytes
 * behind with each cell. These keys are taken out in time; pictures stay as they are.
 *
 * GUI thread only.
 */
class PictureKeys
{
public:
    //! Puts \a picture into the cache.
    void insert(const QString &key, const QPixmap &picture);

private:
    void sweep();

    QList<QString> m_keys;       //!< the oldest first
    qsizetype m_limit = s_least; //!< how many there are before they are looked through

    static constexpr qsizetype s_least = 1024;
};

#endif // PICTUREKEYS_P_H
