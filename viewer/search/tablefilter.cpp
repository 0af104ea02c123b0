// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "tablefilter.h"

#include "common.h"
#include "files/textfilemodel.h"
#include "find/eventpump_p.h"
#include "linefilter.h"
#include "order/sortedrows.h"
#include "qtablefastview.h"
#include "rowengine.h"

#include <QHeaderView>
#include <QItemSelectionModel>
#include <QScopeGuard>

#include <algorithm>
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
    m_engine = dynamic_cast<RowEngine *>(model);
    m_lastCurrent = QModelIndex();
    Q_EMIT modelAboutToBeShown();
    QAbstractItemModel *shown = showSorted(model);
    m_filter.reset();
    Q_EMIT modelShown(shown);
}

void TableFilter::cancel()
{
    stop();
    ++m_searches;
    if (m_nextFilter)
        m_nextFilter->cancel();
    if (engine())
        engine()->cancel();
}

bool TableFilter::isFiltered() const
{
    return m_filter || (engine() && engine()->isFiltered());
}

int TableFilter::sortColumn() const
{
    return engine() ? engine()->sortColumn() : m_sorted ? m_sorted->column() : -1;
}

Qt::SortOrder TableFilter::sortOrder() const
{
    return engine() ? engine()->sortOrder() : m_sorted ? m_sorted->order() : Qt::AscendingOrder;
}

int TableFilter::shownRows() const
{
    return m_table->model() ? m_table->model()->rowCount() : 0;
}

QModelIndex TableFilter::toSource(const QModelIndex &index) const
{
    QModelIndex behind = index;
    if (m_sorted && behind.model() == m_sorted.get())
        behind = m_sorted->mapToSource(behind);
    return m_filter && behind.model() == m_filter.get() ? m_filter->mapToSource(behind) : behind;
}

QModelIndex TableFilter::fromSource(const QModelIndex &index) const
{
    const QModelIndex filtered = m_filter ? m_filter->mapFromSource(index) : index;
    return m_sorted ? m_sorted->mapFromSource(filtered) : filtered;
}

int TableFilter::rowNear(int row) const
{
    const QAbstractItemModel *unsorted = m_filter ? m_filter.get() : m_source.data();
    if (!unsorted || shownRows() == 0)
        return -1;
    const int near = m_filter ? m_filter->placeOf(row) : row;
    const int last = unsorted->rowCount() - 1;
    const QModelIndex index = unsorted->index(qBound(0, near, last), 0);
    return m_sorted ? qMax(0, m_sorted->mapFromSource(index).row()) : index.row();
}

TextMatcher TableFilter::shownMatcher() const
{
    if (engine())
        return engine()->shownMatcher();
    return m_filter ? m_filter->matcher() : TextMatcher();
}

bool TableFilter::isShown(const QString &text) const
{
    const TextMatcher shown = shownMatcher();
    return shown.text() == text && shown.rules() == matcherFor(text).rules();
}

const TextMatcher &TableFilter::matcherFor(const QString &text) const
{
    TextRules rules = m_rules;
    rules.matchesCase = caseSensitivity() == Qt::CaseSensitive;
    if (m_matcher.text() != text || m_matcher.rules() != rules)
        m_matcher = TextMatcher(text, rules);
    return m_matcher;
}

void TableFilter::setLookedAt(int column, bool on)
{
    if (on)
        m_leftOut.remove(column);
    else
        m_leftOut.insert(column);
}

QList<int> TableFilter::textColumns() const
{
    QList<int> columns = getVisibleColumns(m_table->header());
    columns.removeIf([this](int column) { return !isTextColumn(m_source, column); });
    return columns;
}

QList<int> TableFilter::columns() const
{
    QList<int> columns = textColumns();
    columns.removeIf([this](int column) { return !isLookedAt(column); });
    return columns;
}

bool TableFilter::acceptsData(const QVariant &data, const QString &text, int column) const
{
    return isLookedAt(column) && isTextColumn(m_source, column)
        && matcherFor(text).isIn(data.toString());
}

bool TableFilter::isTextFiltered() const
{
    return !shownMatcher().isNothing();
}

bool TableFilter::isTextFiltering() const
{
    return m_nextFilter && !m_nextFilter->matcher().isNothing();
}

std::optional<RowSpan> TableFilter::span() const
{
    const LineFilter *filter = m_nextFilter ? m_nextFilter : m_filter.get();
    return filter ? filter->rowSpan() : std::nullopt;
}

std::optional<RowSpan> TableFilter::shownSpan() const
{
    return m_filter ? m_filter->rowSpan() : std::nullopt;
}

void TableFilter::setSpan(const std::optional<RowSpan> &span)
{
    const TextMatcher matcher = m_nextFilter ? m_nextFilter->matcher() : shownMatcher();
    filterBy(matcher, span);
}

void TableFilter::showAll()
{
    if (!engine()) {
        filterBy({}, {});
        return;
    }
    cancel();
    engine()->showAll();
    Q_EMIT filtering(1);
}

void TableFilter::dofilter(const QString &text)
{
    const std::optional<RowSpan> span = this->span();
    cancel();
    if (text.isEmpty() || matcherFor(text).problem().isEmpty())
        filterBy(text.isEmpty() ? TextMatcher() : matcherFor(text), span);
}

void TableFilter::filterBy(const TextMatcher &matcher, const std::optional<RowSpan> &span)
{
    cancel();
    if (engine()) {
        engine()->filterBy(matcher, columns());
        Q_EMIT filtering(1);
        return;
    }
    if (matcher.isNothing() && !span) {
        if (m_filter)
            show(nullptr);
        return;
    }
    if (!m_source)
        return;
    // Whatever happens while it looks at rows, it ends before this function does.
    auto filter = std::make_unique<LineFilter>(columns(), matcher, span);
    connect(filter.get(), &LineFilter::progressed, this, &TableFilter::filtering);
    LineFilter *const outer = std::exchange(m_nextFilter, filter.get());
    const QPointer<TableFilter> self(this);
    const bool isDone = filter->takeOver(m_source);
    if (!self)
        return;
    m_nextFilter = outer;
    if (isDone)
        show(filter.release());
    if (self && !m_nextFilter)
        Q_EMIT filtering(1);
}

std::optional<bool> TableFilter::findInFile(const QString &text, bool forward)
{
    const auto *lines = qobject_cast<const TextFileModel *>(m_table->model());
    const QStringList needles = matcherFor(text).needles();
    const auto pattern =
        lines && needles.size() == 1 ? lines->patternFor(needles.first(), columns()) : std::nullopt;
    if (!pattern || lines->rowCount() == 0)
        return {};
    cancel();
    const QPersistentModelIndex current = m_table->currentIndex();
    if (!forward) {
        const int end = current.isValid() ? current.row() : lines->rowCount();
        return findBetween(end - 1, -1, text, *pattern);
    }
    const int search = m_searches;
    const QPointer<TableFilter> self(this);
    const bool isFound = findBetween(current.row() + 1, lines->rowCount(), text, *pattern);
    if (isFound || !self || m_searches != search || !current.isValid())
        return isFound;
    return findBetween(0, current.row() + 1, text, *pattern);
}

bool TableFilter::findInRows(const QString &text, bool forward)
{
    if (engine())
        return findByEngine(text, forward);
    const bool hasCurrent = m_table->currentIndex().isValid();
    if (!forward)
        return findPrev(text) || (!hasCurrent && findFromTheEnd(text));
    if (!hasCurrent)
        return findIncremental(text);
    const int search = m_searches;
    const QPointer<TableFilter> self(this);
    if (findNext(text))
        return true;
    const QModelIndex current = self ? m_table->currentIndex() : QModelIndex();
    return current.isValid() && m_searches == search && acceptsRow(current.row(), text, true);
}

bool TableFilter::findByEngine(const QString &text, bool forward)
{
    const QPointer<TableFilter> self(this);
    const int row =
        engine()->find(matcherFor(text), columns(), m_table->currentIndex().row(), forward);
    if (!self || !engine() || row < 0)
        return false;
    setCurrentIndex(m_table->model()->index(row, columns().value(0)));
    return true;
}

//! After findPrev() for \a text, which found nothing above no current row.
bool TableFilter::findFromTheEnd(const QString &text)
{
    const int last = m_table->model() ? m_table->model()->rowCount() - 1 : -1;
    if (last < 0 || columnList().isEmpty())
        return false;
    return acceptsRow(last, text, false)
        || dofindReverse(m_table->model()->index(last, columnList().first()), text);
}

//! Looks at the rows from \a from on, up or down, to the one before \a end.
bool TableFilter::findBetween(int from, int end, const QString &text, const BytePattern &pattern)
{
    const bool forward = from < end;
    const int search = m_searches;
    const QPointer<TableFilter> self(this);
    const QPointer<const TextFileModel> lines = qobject_cast<TextFileModel *>(m_table->model());
    // Rows come at the end only, and go only when the file begins anew.
    const auto reset = connect(lines, &QAbstractItemModel::modelReset, this, &TableFilter::cancel);
    const auto guard = qScopeGuard([&] { disconnect(reset); });
    EventPump events;
    for (int row = from; forward ? row < end : row > end;) {
        const TextFileModel::Sighting sighting = lines->look(pattern, row, forward);
        row = sighting.row;
        if (sighting.mayShow && (forward ? row < end : row > end)) {
            if (acceptsRow(row, text, forward))
                return true;
            row += forward ? 1 : -1;
        }
        if (!events.isDue())
            continue;
        events.pump();
        if (!self || !lines || m_searches != search || m_table->model() != lines)
            return false;
    }
    return false;
}

//! Makes the first cell of \a row with \a text current, the last one if not \a forward.
bool TableFilter::acceptsRow(int row, const QString &text, bool forward)
{
    QList<int> columns = getVisibleColumns(m_table->header());
    if (!forward)
        std::reverse(columns.begin(), columns.end());
    for (const int column : std::as_const(columns)) {
        const QModelIndex cell = m_table->model()->index(row, column);
        if (!acceptsIndex(cell, text))
            continue;
        setCurrentIndex(cell);
        return true;
    }
    return false;
}

QModelIndex TableFilter::currentInSource() const
{
    const QModelIndex current = m_table->currentIndex();
    if (showsSource())
        return current;
    return current.isValid() ? toSource(current) : QModelIndex(m_lastCurrent);
}

//! Makes \a model that of the table, or what sorts it.
QAbstractItemModel *TableFilter::showSorted(QAbstractItemModel *model)
{
    std::unique_ptr<SortedRows> sorted;
    if (model && m_sortColumn >= 0 && !engine()) {
        sorted = std::make_unique<SortedRows>(model, m_sortColumn, m_sortOrder);
        connect(sorted.get(), &SortedRows::progressed, this, &TableFilter::sorting);
        model = sorted.get();
    }
    m_table->setModel(model);
    std::swap(m_sorted, sorted);
    return model;
}

void TableFilter::sortBy(int column, Qt::SortOrder order)
{
    m_sortColumn = column;
    m_sortOrder = order;
    if (engine()) {
        engine()->sortBy(column, order);
        Q_EMIT sorting(1);
        return;
    }
    if (m_source)
        show(m_filter.get());
    Q_EMIT sorting(m_sorted ? 0 : 1);
}

//! Shows the rows of \a filter, which it takes, or all.
void TableFilter::show(LineFilter *filter)
{
    Q_EMIT modelAboutToBeShown();
    m_lastCurrent = currentInSource();
    const QByteArray sections = m_table->header()->saveState();
    QAbstractItemModel *model = showSorted(filter ? filter : m_source.data());
    if (filter != m_filter.get())
        m_filter.reset(filter);
    m_table->header()->restoreState(sections);
    const QModelIndex current = fromSource(m_lastCurrent);
    if (current.isValid()) {
        m_table->selectionModel()->setCurrentIndex(
            current, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
        m_table->scrollTo(current);
    }
    Q_EMIT modelShown(model);
}
