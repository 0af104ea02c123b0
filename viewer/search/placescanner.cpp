// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "placescanner.h"

#include <utility>

PlaceScanner::PlaceScanner(std::vector<BytePattern> patterns)
    : m_patterns(std::move(patterns))
    , m_places(m_patterns.size())
{
}

void PlaceScanner::start(QByteArrayView bytes)
{
    m_bytes = bytes;
    m_places.assign(m_patterns.size(), -1);
}

qsizetype PlaceScanner::next(qsizetype from)
{
    qsizetype first = m_bytes.size();
    for (std::size_t i = 0; i < m_patterns.size(); ++i) {
        qsizetype &place = m_places[i];
        if (place < from) {
            const qsizetype further = m_patterns[i].first(m_bytes.sliced(from));
            place = further < 0 ? m_bytes.size() : from + further;
        }
        first = qMin(first, place);
    }
    return first < m_bytes.size() ? first : -1;
}
