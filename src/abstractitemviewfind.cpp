// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "abstractitemviewfind.h"

#include "common.h"
#include "find/showntexts_p.h"
#include "sortfilterproxymodel.h"

#include <QCoreApplication>
#include <QItemSelectionModel>
#include <QPersistentModelIndex>

#include <memory>

using FindTexts::ShownTexts;

constexpr qint64 s_eventInterval = 39; // ms that have to be exceeded

/*!
 * \brief One search: the row where it is, and what it has asked of the view.
 *
 * Lives on the stack of the function that searches. The engine knows the latest one,
 * and each knows the one that it interrupted.
 */
class ItemViewSearch : public QObject
{
    Q_OBJECT

public:
    enum class Result {
        Found,
        End,   //!< all rows were looked at
        Broken //!< stopped, or something that it needs is gone
    };

    using Iterator = AbstractItemViewFind::Iterator;

    ItemViewSearch(AbstractItemViewFind *engine, const QModelIndex &start, const QString &text,
                   bool forward);
    ~ItemViewSearch() override;

    //! From the row of \a it to the end.
    Result walk(Iterator it);
    //! Forward from the first row to the row of the start.
    Result walkToStart();

    //! Ends this search and those that it interrupted.
    void breakOff();
    void engineDestroyed();

    //! Events run between these two.
    void beginEvents();
    void endEvents();
    bool runsEvents() const { return m_runsEvents; }

    //! What the view shows, asked anew after events.
    ShownTexts &shownTexts();

private Q_SLOTS:
    //! Goes on from the row that takes the place of the current one.
    void rowsAboutToBeRemoved(const QModelIndex &parent, int first, int last);

private:
    bool isBroken() const { return m_isBroken || m_engine->m_stopped; }
    bool hasLostItsView() const;
    QModelIndex stopRow() const;
    QModelIndex rowBehind(QModelIndex parent, int row) const;

    AbstractItemViewFind *m_engine;       //!< null when destroyed
    ItemViewSearch *m_interrupted;        //!< this one began in its events
    QPointer<QAbstractItemView> m_view;   //!< searched
    QPointer<QHeaderView> m_header;       //!< gave the columns
    QPointer<QAbstractItemModel> m_model; //!< walked
    std::unique_ptr<ShownTexts> m_shown;  //!< null until asked for
    const QString m_text;                 //!< the caller's may go while events run
    QPersistentModelIndex m_start;        //!< invalid when its row has gone
    QModelIndex m_stopAt;                 //!< end of the second walk
    QModelIndex m_position;               //!< the row looked at
    QPersistentModelIndex m_kept;         //!< m_position while events run
    const bool m_forward;                 //!< direction
    bool m_wraps = false;                 //!< in the second walk
    bool m_isBroken = false;              //!< has to end
    bool m_runsEvents = false;            //!< m_kept counts
    bool m_isReplaced = false;            //!< m_position was not looked at yet
};

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

ShownTexts &ItemViewSearch::shownTexts()
{
    if (!m_shown)
        m_shown = std::make_unique<ShownTexts>(m_view, m_engine->caseSensitivity());
    return *m_shown;
}

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
    if (!m_timer.isValid() || m_timer.elapsed() <= s_eventInterval)
        return;
    const QPointer<AbstractItemViewFind> self(this);
    ItemViewSearch *search = m_search;
    if (search)
        search->beginEvents();
    QCoreApplication::processEvents();
    if (self)
        m_timer.restart();
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

#include "abstractitemviewfind.moc"
