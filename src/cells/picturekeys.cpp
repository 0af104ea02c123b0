// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "picturekeys_p.h"

#include <QPixmap>
#include <QPixmapCache>
#include <QSet>

#include <algorithm>
#include <utility>

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
        if (seen.contains(*key))
            continue;
        seen.insert(*key);
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
    m_keys = std::move(kept);
    m_limit = std::max(2 * m_keys.size(), s_least);
}
