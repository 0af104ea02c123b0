// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef ROWCACHE_H
#define ROWCACHE_H

#include <QStringList>

#include <array>

//! The fields of a few rows: more than fit on a screen, at most one for each of its
//! places.
class RowCache
{
public:
    //! Null if the row is not there.
    const QStringList *find(int row) const
    {
        const Place &place = m_places[size_t(row) % m_places.size()];
        return place.row == row ? &place.fields : nullptr;
    }
    //! Takes the place of another row. Valid until the next call.
    const QStringList &insert(int row, QStringList &&fields)
    {
        Place &place = m_places[size_t(row) % m_places.size()];
        place = {row, std::move(fields)};
        return place.fields;
    }
    void remove(int row) { m_places[size_t(row) % m_places.size()] = {}; }
    void clear() { m_places.fill({}); }

private:
    struct Place
    {
        int row = -1;
        QStringList fields;
    };

    std::array<Place, 256> m_places;
};

#endif // ROWCACHE_H
