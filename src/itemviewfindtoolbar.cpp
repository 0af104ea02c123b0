// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "itemviewfindtoolbar.h"

#include "abstractitemviewfind.h"

ItemViewFindToolBar::ItemViewFindToolBar(QWidget *parent)
    : AbstractFindToolBar(parent)
{
}

ItemViewFindToolBar::~ItemViewFindToolBar() = default;

void ItemViewFindToolBar::setViewFind(AbstractItemViewFind *find)
{
    m_find = find;
}

bool ItemViewFindToolBar::isFilterAvailable() const
{
    return m_find && m_find->isFilterAvailable();
}

void ItemViewFindToolBar::applyCase()
{
    if (m_find && isCaseSwitchVisible())
        m_find->setCaseSensitivity(caseSensitivity());
}

bool ItemViewFindToolBar::findIncremental(const QString & /*text*/)
{
    if (m_find)
        m_find->stop();
    applyCase();
    return true;
}

bool ItemViewFindToolBar::findPrev(const QString &text)
{
    applyCase();
    return m_find && m_find->findPrev(text);
}

bool ItemViewFindToolBar::findNext(const QString &text)
{
    applyCase();
    return m_find && m_find->findNext(text);
}

void ItemViewFindToolBar::resetSearch()
{
    if (!m_find)
        return;
    m_find->stop();
    m_find->filter(QString());
}

void ItemViewFindToolBar::filter(const QString &text)
{
    applyCase();
    if (m_find)
        m_find->filter(text);
}
