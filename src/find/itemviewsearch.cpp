// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "itemviewsearch_p.h"

ItemViewSearch::ItemViewSearch(AbstractItemViewFind *engine, const QModelIndex &start,
                               const QString &text, bool forward)
    : m_engine(engine)
    , m_interrupted(engine->m_search)
    , m_view(engine->m_view)
    , m_header(engine->m_header)
    , m_model(engine->itemModel())
    , m_text(text)
    , m_start(start)
    , m_forward(forward)
{
    if (m_interrupted)
        m_interrupted->breakOff();
    engine->m_search = this;
    if (!m_model || m_model != start.model()) {
        m_isBroken = true;
        return;
    }
    connect(m_model, SIGNAL(rowsAboutToBeRemoved(QModelIndex, int, int)),
            SLOT(rowsAboutToBeRemoved(QModelIndex, int, int)));
}

ItemViewSearch::~ItemViewSearch()
{
    if (m_engine)
        m_engine->m_search = m_interrupted;
}

ItemViewSearch::Result ItemViewSearch::walk(Iterator it)
{
    while (!isBroken()) {
        m_isReplaced = false;
        m_position = *it;
        if (m_engine->tryAcceptCurrentLine(m_position, m_text, m_forward))
            return Result::Found;
        if (isBroken())
            break;
        if (m_isReplaced || m_position != *it)
            it = Iterator(m_position, m_engine);
        if (!m_isReplaced)
            m_forward ? ++it : --it;
        if (!(*it).isValid() || *it == m_stopAt)
            return Result::End;
    }
    return Result::Broken;
}

ItemViewSearch::Result ItemViewSearch::walkToStart()
{
    if (isBroken())
        return Result::Broken;
    m_wraps = true;
    m_stopAt = stopRow();
    return walk(Iterator(m_model, m_engine));
}

QModelIndex ItemViewSearch::stopRow() const
{
    const QModelIndex start = m_start;
    return m_wraps ? start.sibling(start.row(), m_engine->m_columnList.first()) : QModelIndex();
}

void ItemViewSearch::breakOff()
{
    for (ItemViewSearch *search = this; search; search = search->m_interrupted)
        search->m_isBroken = true;
}

void ItemViewSearch::engineDestroyed()
{
    breakOff();
    for (ItemViewSearch *search = this; search; search = search->m_interrupted)
        search->m_engine = nullptr;
}

void ItemViewSearch::beginEvents()
{
    m_kept = m_position;
    m_runsEvents = true;
}

void ItemViewSearch::endEvents()
{
    m_runsEvents = false;
    m_shown.reset();
    const bool isLost = m_position.isValid() && !m_kept.isValid() && !m_isReplaced;
    m_position = m_kept;
    if (isLost || hasLostItsView())
        m_isBroken = true;
    if (!m_isBroken)
        m_stopAt = stopRow();
}

bool ItemViewSearch::hasLostItsView() const
{
    return !m_engine || !m_view || !m_header || !m_model || m_engine->m_view != m_view
        || m_engine->m_header != m_header || m_view->model() != m_model;
}

void ItemViewSearch::rowsAboutToBeRemoved(const QModelIndex &parent, int first, int last)
{
    QModelIndex row = m_runsEvents ? QModelIndex(m_kept) : QModelIndex();
    while (row.isValid() && row.parent() != parent)
        row = row.parent();
    if (!row.isValid() || row.row() < first || row.row() > last || !m_engine)
        return;
    const QList<int> columns = m_engine->m_columnList;
    if (columns.isEmpty())
        return;
    if (m_forward)
        m_kept = rowBehind(parent, last);
    else
        m_kept = *--Iterator(m_model->index(first, columns.last(), parent), m_engine);
    m_isReplaced = true;
}

//! The row after \a row of \a parent and its children.
QModelIndex ItemViewSearch::rowBehind(QModelIndex parent, int row) const
{
    while (row + 1 >= m_model->rowCount(parent)) {
        if (!parent.isValid())
            return {};
        row = parent.row();
        parent = parent.parent();
    }
    return m_model->index(row + 1, m_engine->m_columnList.first(), parent);
}

FindTexts::ShownTexts &ItemViewSearch::shownTexts()
{
    if (!m_shown)
        m_shown = std::make_unique<FindTexts::ShownTexts>(m_view, m_engine->caseSensitivity());
    return *m_shown;
}
