// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "abstractitemviewfind.h"

#include "common.h"
#include "find/eventpump_p.h"
#include "find/itemviewsearch_p.h"
#include "sortfilterproxymodel.h"

#include <QItemSelectionModel>
#include <QPersistentModelIndex>

using FindTexts::ShownTexts;

AbstractItemViewFind::AbstractItemViewFind(QObject *parent)
    : QObject(parent)
{
}

AbstractItemViewFind::~AbstractItemViewFind()
{
    if (m_search)
        m_search->engineDestroyed();
}

void AbstractItemViewFind::setView(QAbstractItemView *view)
{
    m_view = view;
}

void AbstractItemViewFind::setHeader(QHeaderView *header)
{
    m_header = header;
}

QAbstractItemModel *AbstractItemViewFind::itemModel() const
{
    return m_view ? m_view->model() : nullptr;
}

Qt::CaseSensitivity AbstractItemViewFind::caseSensitivity() const
{
    return m_caseSensitivity.value_or(Qt::CaseInsensitive);
}

void AbstractItemViewFind::setCaseSensitivity(Qt::CaseSensitivity sensitivity)
{
    m_caseSensitivity = sensitivity;
    if (auto *proxy = qobject_cast<SortFilterProxyModel *>(itemModel()))
        proxy->setFilterCaseSensitivity(sensitivity);
}

bool AbstractItemViewFind::isFilterAvailable() const
{
    return itemModel() != nullptr;
}

bool AbstractItemViewFind::findIncremental(const QString &text)
{
    return find(text, true, true);
}

bool AbstractItemViewFind::findPrev(const QString &text)
{
    return find(text, false, false);
}

bool AbstractItemViewFind::findNext(const QString &text)
{
    return find(text, true, false);
}

void AbstractItemViewFind::stop()
{
    m_stopped = true;
}

void AbstractItemViewFind::filter(const QString &text)
{
    dofilter(text);
}

bool AbstractItemViewFind::acceptsData(const QVariant &data, const QString &text, int column) const
{
    if (!m_view)
        return false;
    if (m_search && !m_search->runsEvents())
        return m_search->shownTexts().accept(data, text, column);
    return ShownTexts(m_view, caseSensitivity()).accept(data, text, column);
}

bool AbstractItemViewFind::acceptsIndex(const QModelIndex &index, const QString &text) const
{
    const QAbstractItemModel *model = itemModel();
    if (!model || (index.isValid() && index.model() != model))
        return false;
    const QVariant data = index.isValid() ? model->data(index, Qt::DisplayRole) : QVariant();
    return acceptsData(data, text, index.column());
}

void AbstractItemViewFind::dofilter(const QString &text)
{
    auto *proxy = qobject_cast<SortFilterProxyModel *>(itemModel());
    if (!proxy || !m_header)
        return;
    proxy->setVisibleColumns(getVisibleColumns(m_header));
    if (m_caseSensitivity)
        proxy->setFilterCaseSensitivity(*m_caseSensitivity);
    proxy->setFilter(text);
}

bool AbstractItemViewFind::find(const QString &text, bool forward, bool incremental)
{
    if (m_search)
        m_search->breakOff();
    m_stopped = false;
    if (text.isEmpty())
        return true;
    m_timer.invalidate();
    m_timer.start();
    const QAbstractItemModel *model = itemModel();
    if (!model || !m_header)
        return false;
    m_columnList = getVisibleColumns(m_header);
    if (m_columnList.isEmpty())
        return false;
    QModelIndex start = m_view->currentIndex();
    if (!start.isValid())
        start = model->index(0, m_columnList.first());
    return forward ? dofind(start, text, incremental) : dofindReverse(start, text);
}

bool AbstractItemViewFind::dofind(const QModelIndex &idx, const QString &text, bool incremental)
{
    if (!idx.isValid() || m_columnList.isEmpty())
        return false;
    ItemViewSearch search(this, idx, text, true);
    Iterator it(idx, this);
    if (!incremental)
        ++it;
    ItemViewSearch::Result result = ItemViewSearch::Result::End;
    if ((*it).isValid())
        result = search.walk(it);
    if (result == ItemViewSearch::Result::End)
        result = search.walkToStart();
    return result == ItemViewSearch::Result::Found;
}

bool AbstractItemViewFind::dofindReverse(const QModelIndex &idx, const QString &text)
{
    if (!idx.isValid() || m_columnList.isEmpty())
        return false;
    ItemViewSearch search(this, idx, text, false);
    Iterator it(idx, this);
    --it;
    return (*it).isValid() && search.walk(it) == ItemViewSearch::Result::Found;
}

void AbstractItemViewFind::processEvents()
{
    EventPump events(m_timer);
    if (!events.isDue())
        return;
    const QPointer<AbstractItemViewFind> self(this);
    ItemViewSearch *search = m_search;
    if (search)
        search->beginEvents();
    events.pump();
    if (self)
        m_timer = events.since();
    if (search)
        search->endEvents();
}

bool AbstractItemViewFind::tryAcceptCurrentLine(const QModelIndex &index, const QString &text,
                                                bool forward)
{
    const QModelIndex match =
        forward ? acceptsLineForward(index, text) : acceptsLineReverse(index, text);
    if (match.isValid()) {
        setCurrentIndex(match);
        return true;
    }
    processEvents();
    return false;
}

QModelIndex AbstractItemViewFind::acceptsLineForward(const QModelIndex &index,
                                                     const QString &text) const
{
    if (!index.isValid())
        return {};
    const QList<int> columns = m_columnList;
    const qsizetype position = columns.indexOf(index.column());
    for (qsizetype i = qMax<qsizetype>(position, 0); i < columns.size(); ++i) {
        const QModelIndex cell = i == position ? index : index.sibling(index.row(), columns.at(i));
        if (acceptsIndex(cell, text))
            return cell;
    }
    return {};
}

QModelIndex AbstractItemViewFind::acceptsLineReverse(const QModelIndex &index,
                                                     const QString &text) const
{
    if (!index.isValid())
        return {};
    const QList<int> columns = m_columnList;
    const qsizetype position = columns.indexOf(index.column());
    for (qsizetype i = position < 0 ? columns.size() - 1 : position; i >= 0; --i) {
        const QModelIndex cell = i == position ? index : index.sibling(index.row(), columns.at(i));
        if (acceptsIndex(cell, text))
            return cell;
    }
    return {};
}

void AbstractItemViewFind::setCurrentIndex(const QModelIndex &index)
{
    const QItemSelectionModel::SelectionFlags flags = QItemSelectionModel::ClearAndSelect
        | QItemSelectionModel::Current | QItemSelectionModel::Rows;
    const QPointer<QItemSelectionModel> selection = m_view ? m_view->selectionModel() : nullptr;
    if (!selection)
        return;
    // Whoever hears of the new current index may change the model or end the view.
    const QPersistentModelIndex kept(index);
    selection->setCurrentIndex(index, flags);
    if (selection)
        selection->select(kept, flags);
}
