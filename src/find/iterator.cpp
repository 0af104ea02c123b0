// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "abstractitemviewfind.h"

AbstractItemViewFind::Iterator::Iterator(const QAbstractItemModel *model,
                                         AbstractItemViewFind *find)
    : m_model(model)
    , m_toolbar(find)
{
}

AbstractItemViewFind::Iterator::Iterator(const QModelIndex &index, AbstractItemViewFind *find)
    : m_index(index)
    , m_model(index.model())
    , m_toolbar(find)
{
}

AbstractItemViewFind::Iterator &AbstractItemViewFind::Iterator::operator++()
{
    if (!m_model || !m_toolbar || m_toolbar->m_columnList.isEmpty()) {
        m_index = QModelIndex();
        return *this;
    }
    const int first = m_toolbar->m_columnList.first();
    if (m_model->hasChildren(m_index)) {
        m_index = m_model->index(0, first, m_index);
        return *this;
    }
    if (m_index.row() < 0)
        return *this;
    QModelIndex parent = m_index.parent();
    while (m_index.row() + 1 == m_model->rowCount(parent)) {
        m_index = parent;
        if (m_index.row() < 0)
            return *this;
        parent = m_index.parent();
    }
    m_index = m_index.sibling(m_index.row() + 1, first);
    return *this;
}

AbstractItemViewFind::Iterator &AbstractItemViewFind::Iterator::operator--()
{
    if (!m_model || !m_toolbar || m_toolbar->m_columnList.isEmpty())
        m_index = QModelIndex();
    if (!m_index.isValid())
        return *this;
    const int last = m_toolbar->m_columnList.last();
    if (m_index.row() == 0) {
        const QModelIndex parent = m_index.parent();
        m_index = parent.isValid() ? parent.sibling(parent.row(), last) : QModelIndex();
        return *this;
    }
    m_index = m_index.sibling(m_index.row() - 1, last);
    // An invalid index would be the root, and have children again.
    while (m_index.isValid() && m_model->hasChildren(m_index))
        m_index = m_model->index(m_model->rowCount(m_index) - 1, last, m_index);
    return *this;
}
