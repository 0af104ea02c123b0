// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "picturekeys_p.h"

#include <QPixmap>
#include <QPixmapCache>
#include <QSet>

#include <algorithm>

void PictureKeys::insert(const QString &key, const QPixmap &picture)
{
    QPixmapCache::insert(key, picture);
    m_keys.append(key);
    if (m_keys.size() >= m_limit)
        sweep();
}

//! Takes out the keys without a picture. Looking for a picture makes it the last to be
//! dropped, so that all of them are looked for from the oldest on.
void PictureKeys::sweep()
{
    QSet<QString> seen;
    QList<QString> kept;
    for (auto key = m_keys.crbegin(); key != m_keys.crend(); ++key) {
        if (const auto size = seen.size(); seen.insert(*key), seen.size() > size)
            kept.append(*key);
    }
    std::reverse(kept.begin(), kept.end());
    kept.removeIf([](const QString &key) {
        QPixmap picture;
        if (QPixmapCache::find(key, &picture))
            return false;
        QPixmapCache::remove(key);
        return true;
    });
    m_keys = kept;
    m_limit = std::max(2 * kept.size(), s_least);
}
