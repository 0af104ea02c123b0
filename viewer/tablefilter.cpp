// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "tablefilter.h"

#include "common.h"
#include "linefilter.h"
#include "qtablefastview.h"

#include <QHeaderView>
#include <QItemSelectionModel>

#include <utility>

TableFilter::TableFilter(QTableFastView *table)
    : AbstractItemViewFind(table)
    , m_table(table)
{
    setView(table);
    setHeader(table->header());
}

TableFilter::~TableFilter()
{
    cancel();
}

void TableFilter::setSource(QAbstractItemModel *model)
{
    cancel();
    m_source = model;
    m_lastCurrent = QModelIndex();
    Q_EMIT modelAboutToBeShown();
    m_table->setModel(model);
    m_filter.reset();
    Q_EMIT modelShown(model);
}

void TableFilter::cancel()
{
    stop();
    if (m_nextFilter)
        m_nextFilter->cancel();
}

void TableFilter::dofilter(const QString &text)
{
    cancel();
    if (text.isEmpty()) {
        if (m_filter)
            show(nullptr);
        return;
    }
    if (!m_source)
        return;
    // Whatever happens while it looks at rows, it ends before this function does.
    auto filter = std::make_unique<LineFilter>(getVisibleColumns(m_table->header()), text);
    LineFilter *const outer = std::exchange(m_nextFilter, filter.get());
    const QPointer<TableFilter> self(this);
    const bool isDone = filter->takeOver(m_source);
    if (!self)
        return;
    m_nextFilter = outer;
    if (isDone)
        show(std::move(filter));
}

QModelIndex TableFilter::currentInSource() const
{
    const QModelIndex current = m_table->currentIndex();
    if (!m_filter)
        return current;
    return current.isValid() ? m_filter->mapToSource(current) : QModelIndex(m_lastCurrent);
}

void TableFilter::show(std::unique_ptr<LineFilter> filter)
{
    Q_EMIT modelAboutToBeShown();
    m_lastCurrent = currentInSource();
    const QByteArray sections = m_table->header()->saveState();
    QAbstractItemModel *model = filter ? filter.get() : m_source.data();
    m_table->setModel(model);
    m_filter = std::move(filter);
    m_table->header()->restoreState(sections);
    const QModelIndex current =
        m_filter ? m_filter->mapFromSource(m_lastCurrent) : QModelIndex(m_lastCurrent);
    if (current.isValid()) {
        m_table->selectionModel()->setCurrentIndex(
            current, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
        m_table->scrollTo(current);
    }
    Q_EMIT modelShown(model);
}

FindPanel::FindPanel(TableFilter *find, QWidget *parent)
    : ItemViewFindToolBar(parent)
    , m_find(find)
{
    setViewFind(find);
}

bool FindPanel::findIncremental(const QString &text)
{
    m_find->cancel();
    return ItemViewFindToolBar::findIncremental(text);
}
