// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "freshframes.h"

#include <QtGlobal>

#include <algorithm>

namespace {

constexpr int s_enoughFrames = 8;

} // namespace

bool FreshFrames::add(const QModelIndex &top, int rows)
{
    const bool isFresh =
        m_top.isValid() && top.isValid() && qAbs(qint64(top.row()) - m_top.row()) >= rows;
    m_top = top;
    m_weight = std::clamp(m_weight + (isFresh ? 1 : -1), 0, s_enoughFrames);
    const bool wereFresh = m_areFresh;
    m_areFresh = m_areFresh ? m_weight > 0 : m_weight == s_enoughFrames;
    return m_areFresh != wereFresh;
}
