// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "qtablefastview.h"
#include "accessible/install_p.h"
#include "pixels/barpicture_p.h"
#include "view/tableparts_p.h"

#include <QApplication>
#include <QGuiApplication>
#include <QHeaderView>
#include <QItemSelectionModel>
#include <QKeyEvent>
#include <QScopedValueRollback>
#include <QStyle>
#include <QStyleOption>

#include <algorithm>
#include <limits>
#include <utility>

// QTableFastScrollBar

QTableFastScrollBar::QTableFastScrollBar(QWidget *parent)
    : QScrollBar(Qt::Vertical, parent)
    , m_picture(new BarPicture)
{
}

QTableFastScrollBar::~QTableFastScrollBar() = default;

void QTableFastScrollBar::sliderChange(SliderChange change)
{
    if (change == SliderValueChange)
        m_isMax = value() == maximum();
    // Deliberate: the base class may repaint at once; one update per frame is enough.
    update();
}

void QTableFastScrollBar::paintEvent(QPaintEvent *event)
{
    // What is hovered over or pressed is known to the base class only.
    const bool isTouched = underMouse() || isSliderDown() || repeatAction() != SliderNoAction
        || QGuiApplication::mouseButtons() != Qt::NoButton;
    if (isTouched) {
        QScrollBar::paintEvent(event);
        return;
    }
    QStyleOptionSlider option;
    initStyleOption(&option);
    option.subControls = QStyle::SC_All;
    if (!m_picture->paint(this, option, [this](QPainter *p) { initPainter(p); }))
        QScrollBar::paintEvent(event);
}

// Construction

QTableFastView::QTableFastView(QWidget *parent)
    : QAbstractItemView(parent)
    , d_ptr(new QTableFastViewPrivate(this))
{
    Accessible::installTableFactory();
    m_itemHeight = updatedItemHeight(QStyleOptionViewItem());
    setVerticalScrollBar(new QTableFastScrollBar(this));
    viewport()->setAttribute(Qt::WA_StaticContents);
    m_selectionModel = selectionModel();
    m_model = model();

    auto *columns = new QHeaderView(Qt::Horizontal);
    columns->setSectionsMovable(true);
    columns->setStretchLastSection(false);
    columns->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    setHeader(columns);

    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    setSelectionBehavior(SelectRows);
    setSelectionMode(SingleSelection);
    setHorizontalScrollMode(ScrollPerPixel);
    setAttribute(Qt::WA_MacShowFocusRect);

    // What the base class had connected to the bar that was replaced.
    connect(verticalScrollBar(), SIGNAL(actionTriggered(int)), SLOT(verticalScrollbarAction(int)));
    connect(verticalScrollBar(), SIGNAL(valueChanged(int)),
            SLOT(verticalScrollbarValueChanged(int)));
    connect(verticalScrollBar(), SIGNAL(valueChanged(int)), SLOT(verScrollbarValueChanged(int)));
    connect(horizontalScrollBar(), SIGNAL(valueChanged(int)), SLOT(horScrollbarValueChanged(int)));
    connect(this, SIGNAL(iconSizeChanged(QSize)), d_ptr, SLOT(iconSizeChanged()));
    connect(qApp, SIGNAL(focusChanged(QWidget *, QWidget *)), d_ptr,
            SLOT(focusChanged(QWidget *, QWidget *)));
}

QTableFastView::~QTableFastView()
{
    delete std::exchange(d_ptr, nullptr);
}

QTableFastViewPrivate::QTableFastViewPrivate(QTableFastView *q)
    : q_ptr(q)
    , connections(new Connections(q, this))
    , keyboardSearch(new KeyboardSearch(q))
    , changes(new RowChanges)
    , edges(new EdgeKeeper({q->stayAtTop, q->stayAtEnd, q->currentFirst, q->currentLast,
                            q->currentColumn, q->currentPos}))
    , autoScroll(new AutoScrollHold(q))
    , anchor(new RangeAnchor(q))
    , pixels(new PixelMover(q))
    , buffer(new PaintBuffer(&q->m_pixmapCacheIndexed, &q->m_usePixmapCacheIndexed))
    , cells(new CellPainter(q))
    , shownColumns(new ShownColumns(q))
{
    keyboardSearch->setParent(this);
}

QTableFastViewPrivate::~QTableFastViewPrivate() = default;

// Header, model and selection model

QHeaderView *QTableFastView::header() const
{
    return m_header;
}

void QTableFastView::setHeader(QHeaderView *header)
{
    if (!header || header == m_header)
        return;

    if (m_header) {
        m_header->removeEventFilter(this);
        m_header->viewport()->removeEventFilter(d_ptr);
        d_ptr->connections->disconnectHeader(m_header);
        if (m_header->parent() == this)
            delete m_header;
    }

    const bool isHiddenOnPurpose =
        header->isHidden() && header->testAttribute(Qt::WA_WState_ExplicitShowHide);
    m_header = header;
    m_header->setParent(this);
    if (!m_header->model()) {
        if (m_model)
            m_header->setModel(m_model);
        if (m_selectionModel)
            m_header->setSelectionModel(m_selectionModel);
    }
    d_ptr->connections->connectHeader(m_header);
    // The header must hear of columns first: asked for its length, it lays out what it has not
    // been told of, and counts that twice.
    if (m_model)
        d_ptr->connections->connectModel(m_model);
    m_header->installEventFilter(this);
    m_header->viewport()->installEventFilter(d_ptr);
    setSortingEnabled(m_sortingEnabled);
    if (isVisible() && !isHiddenOnPurpose)
        m_header->show();
    d_ptr->columnsChanged();
    emit headerChanged(m_header);
}

void QTableFastViewPrivate::headerDestroyed()
{
    q_ptr->m_header = nullptr;
    columnsChanged();
}

void QTableFastView::setModel(QAbstractItemModel *model)
{
    if (model == m_model)
        return;

    d_ptr->keyboardSearch->end();
    QPointer<QItemSelectionModel> outdated = d_ptr->ownSelectionModel;
    if (m_model) {
        if (m_selectionModel) {
            disconnect(m_selectionModel, SIGNAL(currentRowChanged(QModelIndex, QModelIndex)),
                       m_model, SLOT(submit()));
        }
        d_ptr->connections->disconnectModel(m_model);
    }

    m_model = model;
    if (m_header)
        m_header->setModel(model);
    const QPointer<QItemSelectionModel> ofHeader = m_header ? m_header->selectionModel() : nullptr;
    QAbstractItemView::setModel(model);
    QItemSelectionModel *interim = selectionModel(); // made by the base class
    m_modelRowCountBefore = d_ptr->rowCount();
    d_ptr->changes->reset(m_modelRowCountBefore);
    if (m_model) {
        d_ptr->connections->connectModel(m_model);
        if (m_sortingEnabled && m_header)
            sortIndicatorChanged(m_header->sortIndicatorSection(), m_header->sortIndicatorOrder());
        auto *own = new QItemSelectionModel(m_model, this);
        connect(m_model, SIGNAL(destroyed()), own, SLOT(deleteLater()));
        setSelectionModel(own);
        d_ptr->ownSelectionModel = own;
        delete interim;
    } else {
        // The base class's selection model works on its own empty model.
        d_ptr->ownSelectionModel = interim;
    }
    if (outdated)
        outdated->deleteLater();
    // The header made one, too, and would keep it listening to the model.
    if (ofHeader && ofHeader->parent() == m_header && m_header->selectionModel() != ofHeader)
        delete ofHeader;
    adjustViewportMargins();
    updateGeometries();
}

void QTableFastView::setSelectionModel(QItemSelectionModel *sm)
{
    if (!sm)
        return;
    d_ptr->keyboardSearch->end();
    QItemSelectionModel *old = m_selectionModel;
    m_selectionModel = sm;
    QAbstractItemView::setSelectionModel(sm);
    if (selectionModel() != sm) { // works on another model: the base class said so
        m_selectionModel = old;
        return;
    }
    if (old) {
        if (m_model) {
            disconnect(old, SIGNAL(currentRowChanged(QModelIndex, QModelIndex)), m_model,
                       SLOT(submit()));
        }
        disconnect(old, SIGNAL(destroyed()), d_ptr, SLOT(selectionModelDestroyed()));
    }
    connect(sm, SIGNAL(destroyed()), d_ptr, SLOT(selectionModelDestroyed()));
    if (m_header && m_header->model() == m_model)
        m_header->setSelectionModel(sm);
    if (m_model)
        connect(sm, SIGNAL(currentRowChanged(QModelIndex, QModelIndex)), m_model, SLOT(submit()));
    Accessible::watchModels(this);
}

void QTableFastViewPrivate::modelDestroyed()
{
    q_ptr->m_model = nullptr;
    q_ptr->m_modelRowCountBefore = 0;
    buffer->clear();
    pixels->update();
}

void QTableFastViewPrivate::selectionModelDestroyed()
{
    q_ptr->m_selectionModel = nullptr;
    buffer->clear();
    pixels->update();
}

// Geometry and events

void QTableFastView::setViewportMargins(int left, int top, int right, int bottom)
{
    setViewportMargins(QMargins(left, top, right, bottom));
}

void QTableFastView::setViewportMargins(const QMargins &margins)
{
    if (margins == m_viewportMargins)
        return;
    m_viewportMargins = margins;
    QAbstractScrollArea::setViewportMargins(margins);
}

QSize QTableFastView::viewportSizeHint() const
{
    if (!m_model || !m_header)
        return QAbstractItemView::viewportSizeHint();
    const qint64 height = qint64(m_itemHeight) * d_ptr->rowCount() + m_viewportMargins.top();
    return {std::min(m_header->length(), QWIDGETSIZE_MAX),
            int(std::min<qint64>(height, QWIDGETSIZE_MAX))};
}

//! A view that is as large as its contents has to be laid out when these change.
void QTableFastViewPrivate::noticeContentSize()
{
    if (q_ptr->sizeAdjustPolicy() == QAbstractScrollArea::AdjustToContents)
        q_ptr->updateGeometry();
}

void QTableFastViewPrivate::iconSizeChanged()
{
    pixels->update();
}

void QTableFastView::adjustViewportMargins()
{
    // A header that was given a height, or bounds of one, keeps to them.
    const int top = !m_header || m_header->isHidden()
        ? 0
        : std::min(std::max(m_header->sizeHint().height(), m_header->minimumHeight()),
                   m_header->maximumHeight());
    if (top != m_viewportMargins.top()) {
        setViewportMargins(m_viewportMargins.left(), top, m_viewportMargins.right(),
                           m_viewportMargins.bottom());
    }
}

void QTableFastView::updateGeometries()
{
    if (m_geometryRecursionBlock)
        return;
    {
        const QScopedValueRollback<bool> block(m_geometryRecursionBlock, true);
        if (m_header) {
            const QRect area = viewport()->geometry();
            const QRect wanted(area.left(), area.top() - m_viewportMargins.top(), area.width(),
                               m_viewportMargins.top());
            if (m_header->geometry() != wanted) {
                m_header->setGeometry(wanted);
                QMetaObject::invokeMethod(m_header, "updateGeometries");
            }
        }
        updateScrollBars(0);
    }
    QAbstractItemView::updateGeometries();
}

//! Puts editors and index widgets onto their cells.
void QTableFastViewPrivate::placeEditors()
{
    if (q_ptr->viewport()->children().isEmpty())
        return;
    q_ptr->executeDelayedItemsLayout(); // a pending one would end updateEditorGeometries() early
    q_ptr->updateEditorGeometries();
}

void QTableFastView::resizeEvent(QResizeEvent *event)
{
    QAbstractItemView::resizeEvent(event);
    if (m_model && isCurrentLast()) {
        scrollTo(currentIndex(), EnsureVisible);
        updateScrollBars(1000); // Deliberate: beyond any page, so that the bar ends at its end.
        if (d_ptr->isPerPixel())
            verticalScrollBar()->setValue(verticalScrollBar()->maximum());
    }
    if (m_usePixmapCacheIndexed)
        setPixmapCacheIndexedVisibleBounds();
    d_ptr->pixels->update();
    d_ptr->placeEditors();
}

bool QTableFastView::event(QEvent *event)
{
    // Esc is not a shortcut of the window as long as there is something to end.
    if (event->type() == QEvent::ShortcutOverride && d_ptr->keyboardSearch->isRunning()
        && static_cast<QKeyEvent *>(event)->key() == Qt::Key_Escape) {
        event->accept();
        return true;
    }
    if (event->type() == QEvent::Hide)
        d_ptr->keyboardSearch->end();
    const bool isHandled = QAbstractItemView::event(event);
    switch (event->type()) {
    case QEvent::Polish:
    case QEvent::StyleChange:
        updateItemHeight();
        adjustViewportMargins();
        d_ptr->pixels->update(); // the base class leaves that to others
        break;
    case QEvent::FontChange:
        if (d_ptr->rowHeightFollowsFont)
            updateItemHeight();
        d_ptr->pixels->update(); // under a style sheet nobody else does
        break;
    case QEvent::PaletteChange:
        d_ptr->pixels->update();
        break;
    case QEvent::LayoutRequest:
        adjustViewportMargins(); // of the header, too, when its bounds change
        break;
    case QEvent::LayoutDirectionChange:
        updateGeometries();
        d_ptr->pixels->update();
        break;
    default:
        break;
    }
    return isHandled;
}

bool QTableFastView::eventFilter(QObject *object, QEvent *event)
{
    const bool isFiltered = QAbstractItemView::eventFilter(object, event);
    if (object == m_header && (event->type() == QEvent::Show || event->type() == QEvent::Hide))
        adjustViewportMargins();
    // The header takes these after its filters have seen them.
    if (object == m_header
        && (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange))
        QMetaObject::invokeMethod(d_ptr, "headerHeightMayChange", Qt::QueuedConnection);
    return isFiltered;
}

bool QTableFastView::viewportEvent(QEvent *event)
{
    switch (event->type()) {
    case QEvent::MouseButtonPress:
        d_ptr->keyboardSearch->end();
        d_ptr->noticePress(*static_cast<QMouseEvent *>(event));
        break;
    case QEvent::HoverEnter:
    case QEvent::HoverMove:
    case QEvent::HoverLeave:
        d_ptr->hoverAt(*event);
        break;
    default:
        break;
    }
    return QAbstractItemView::viewportEvent(event);
}

// The columns on screen

//! A header tells of its sections before all of them have their places, and of some
//! changes not at all: once it has settled, and when it paints itself, what is on screen is
//! compared.
void QTableFastViewPrivate::headerChanged()
{
    if (!std::exchange(isColumnCheckPending, true))
        QMetaObject::invokeMethod(this, "checkColumns", Qt::QueuedConnection);
}

//! Watches the header's viewport.
bool QTableFastViewPrivate::eventFilter(QObject * /*object*/, QEvent *event)
{
    if (event->type() == QEvent::Paint)
        headerChanged();
    return false;
}

void QTableFastViewPrivate::checkColumns()
{
    isColumnCheckPending = false;
    if (!q_ptr->m_header || shownColumns->areAs(seenColumns()))
        return;
    pixels->update();
    placeEditors();
}

void QTableFastViewPrivate::headerHeightMayChange()
{
    if (q_ptr->m_geometryRecursionBlock) // the header has just been placed
        QMetaObject::invokeMethod(this, "headerHeightMayChange", Qt::QueuedConnection);
    else
        q_ptr->adjustViewportMargins();
}

// Rows inserted, removed and moved

void QTableFastViewPrivate::repaintAll()
{
    buffer->clear();
    pixels->update();
}

//! Rows are numbered anew and the view has not been told yet: it cannot say which of its
//! pixels, and of its kept cells, a number means.
void QTableFastViewPrivate::noticeUntoldRows()
{
    if (changes->areUntold(rowCount()))
        repaintAll();
}

void QTableFastView::rowsAboutToBeInserted(const QModelIndex &parent, int /*start*/, int /*end*/)
{
    if (!m_model || parent.isValid())
        return;
    d_ptr->changes->begin();
    const QScrollBar *bar = verticalScrollBar();
    const QModelIndex current = currentIndex();
    EdgeKeeper::Situation now;
    now.rows = d_ptr->rowCount();
    now.currentRow = current.row();
    now.currentColumn = current.column();
    now.topRow = d_ptr->scale().topRow();
    now.isAtMinimum = bar->value() == bar->minimum();
    now.isAtMaximum = bar->value() == bar->maximum();
    now.isAscending = m_header && m_header->sortIndicatorOrder() == Qt::AscendingOrder;
    now.isFetching = d_ptr->isFetching;
    now.isEditing = d_ptr->edges->isOwed() && d_ptr->isEditing();
    d_ptr->edges->beforeInsertion(now);
}

void QTableFastView::rowsInserted(const QModelIndex &parent, int start, int end)
{
    if (!m_model || parent.isValid())
        return;
    d_ptr->changes->end();
    const int count = end - start + 1;
    RowGeometry rows = d_ptr->rows();
    const bool isConsistent = m_modelRowCountBefore + count == rows.rows;
    const quint64 serial = d_ptr->changes->serial();
    const qint64 oldTop = rows.contentTop();

    const QPersistentModelIndex follower = d_ptr->edgeToFollow(start, end);
    d_ptr->changes->setRows(rows.rows);
    d_ptr->buffer->rowsInserted(start, end);
    d_ptr->setRangeQuietly(rows.maximum());
    const QScrollBar *bar = verticalScrollBar();
    rows.value = bar->value();
    switch (d_ptr->edges->scroll(start, rows.topRow())) {
    case EdgeKeeper::Scroll::ToEnd:
        d_ptr->quietBar().setValue(bar->maximum());
        break;
    case EdgeKeeper::Scroll::WithRows:
        d_ptr->quietBar().setValue(rows.valueMovedBy(count));
        break;
    case EdgeKeeper::Scroll::Stay:
        break;
    }
    rows.value = bar->value();

    // Reaching the end may have fetched more rows meanwhile.
    const bool isUndisturbed = isConsistent && serial == d_ptr->changes->serial();
    if (isUndisturbed)
        d_ptr->movePixels(rows.insertion(oldTop, start, count));
    d_ptr->evictOutside();
    d_ptr->dropParity(start, std::numeric_limits<int>::max(), count);
    d_ptr->dropLookOfRowDelegates();
    if (follower.isValid())
        d_ptr->followEdge(follower, isConsistent);
    if (!isUndisturbed)
        invalidateRegion(viewport()->rect());
    m_modelRowCountBefore = d_ptr->rowCount();
    QAbstractItemView::rowsInserted(parent, start, end);
}

//! What the current index moves to as rows arrived at the edge it is on; invalid if it
//! stays.
QModelIndex QTableFastViewPrivate::edgeToFollow(int start, int end)
{
    const EdgeKeeper::Edge edge = edges->edgeToFollow(start, end, rowCount());
    if (edge == EdgeKeeper::Edge::None)
        return {};
    if (isEditing()) {
        edges->owe(edge);
        return {};
    }
    return edgeCell(edge == EdgeKeeper::Edge::First);
}

//! The cell in the first or last row, in the column that was current.
QModelIndex QTableFastViewPrivate::edgeCell(bool isFirst) const
{
    const int row = isFirst ? 0 : rowCount() - 1;
    return q_ptr->m_model->index(row, q_ptr->currentColumn);
}

//! Whether the user is at work in the current row.
bool QTableFastViewPrivate::isEditing() const
{
    const QModelIndex current = q_ptr->currentIndex();
    return q_ptr->state() == QTableFastView::EditingState
        || (current.isValid() && q_ptr->m_header
            && cells->hasEditorFocus(*q_ptr->m_model, current.row()));
}

//! Makes \a target current without scrolling to it.
void QTableFastViewPrivate::followEdge(const QModelIndex &target, bool isConsistent)
{
    autoScroll->hold();
    QItemSelectionModel *selectionModel = q_ptr->m_selectionModel;
    if (isConsistent && selectionModel && selectionModel->currentIndex().isValid()) {
        selectionModel->clearSelection();
        updateRowStrip(selectionModel->currentIndex().row());
    }
    q_ptr->setCurrentIndex(target);
    autoScroll->release();
}

void QTableFastView::rowsAboutToBeRemoved(const QModelIndex &parent, int /*start*/, int /*end*/)
{
    if (!parent.isValid())
        d_ptr->changes->begin();
    d_ptr->autoScroll->hold();
}

void QTableFastView::rowsAboutToBeMoved(const QModelIndex &sourceParent, int /*sourceStart*/,
                                        int /*sourceEnd*/, const QModelIndex &destinationParent,
                                        int /*destinationRow*/)
{
    if (!sourceParent.isValid() || !destinationParent.isValid())
        d_ptr->changes->beginMove();
    d_ptr->autoScroll->hold();
}

void QTableFastView::rowsRemoved(const QModelIndex &parent, int first, int last)
{
    if (!m_model || parent.isValid()) {
        d_ptr->autoScroll->release();
        return;
    }
    d_ptr->changes->end();
    const int count = last - first + 1;
    const bool isConsistent = d_ptr->changes->rows() - count == d_ptr->rowCount();
    d_ptr->changes->setRows(d_ptr->rowCount());
    const RowGeometry rows = d_ptr->rows();
    const bool isAbove = rows.topRow() > last;
    const bool isSeen = rows.isSeen(first, last);
    d_ptr->buffer->rowsRemoved(first, last);
    if (isAbove)
        d_ptr->quietBar().setValue(rows.valueMovedBy(-count));
    d_ptr->setRangeQuietly(rows.maximum());
    if (isSeen) {
        d_ptr->pixels->update();
        updateScrollBars(0);
    }
    d_ptr->fetchIfEndIsSeen();
    d_ptr->evictOutside();
    d_ptr->dropParity(first, std::numeric_limits<int>::max(), count);
    d_ptr->dropLookOfRowDelegates();
    if (!isConsistent)
        d_ptr->repaintAll();
    d_ptr->autoScroll->release();
    m_modelRowCountBefore = d_ptr->rowCount();
    if (d_ptr->edges->followsCurrent())
        setCurrentIndex(currentIndex());
    d_ptr->placeEditors();
}

void QTableFastView::rowsMoved(const QModelIndex &sourceParent, int sourceStart, int sourceEnd,
                               const QModelIndex &destinationParent, int destinationRow)
{
    if (!m_model || (sourceParent.isValid() && destinationParent.isValid())) {
        d_ptr->autoScroll->release();
        return;
    }
    d_ptr->changes->end();
    d_ptr->changes->setRows(d_ptr->rowCount());
    if (sourceParent.isValid() || destinationParent.isValid()) {
        columnCountChanged(0, 0); // rows came or went: all is measured and painted anew
        m_modelRowCountBefore = d_ptr->rowCount();
        d_ptr->autoScroll->release();
        return;
    }
    d_ptr->moveCachedRows(sourceStart, sourceEnd, destinationRow);
    const RowGeometry rows = d_ptr->rows();
    const bool isSeen =
        rows.isSeen(std::min(sourceStart, destinationRow), std::max(sourceEnd, destinationRow));
    if (sourceStart != destinationRow && isSeen) {
        const int shift = rows.topRowShift(sourceStart, sourceEnd, destinationRow);
        if (shift != 0)
            d_ptr->quietBar().setValue(rows.valueMovedBy(shift));
        d_ptr->pixels->update();
        updateScrollBars(0);
    }
    d_ptr->evictOutside();
    d_ptr->dropLookOfRowDelegates();
    d_ptr->autoScroll->release();
    d_ptr->placeEditors();
}

// Resets, data and layout

void QTableFastView::modelAboutToBeReset()
{
    const QModelIndex current = currentIndex();
    d_ptr->edges->beforeReset(current.row(), current.column(), d_ptr->rowCount());
}

void QTableFastView::modelReset()
{
    invalidateRegion(viewport()->rect());
}

void QTableFastView::reset()
{
    QAbstractItemView::reset(); // ends editing
    if (!m_model)
        return;
    d_ptr->changes->reset(d_ptr->rowCount());
    if (m_usePixmapCacheIndexed)
        d_ptr->buffer->clear();
    d_ptr->pixels->update();
    updateScrollBars(0);
    d_ptr->followReset();
    const QModelIndex current = currentIndex();
    currentChanged(current, current);
    m_modelRowCountBefore = d_ptr->rowCount();
}

//! Has the first or last row made current once the reset has settled.
void QTableFastViewPrivate::followReset()
{
    resetTarget = QPersistentModelIndex();
    const EdgeKeeper::Edge edge = edges->edgeAfterReset();
    if (edge == EdgeKeeper::Edge::None || isFetching)
        return;
    resetTarget = edgeCell(edge == EdgeKeeper::Edge::First);
    // Persistent: the model may change, or go, before the event loop comes by.
    if (resetTarget.isValid())
        QMetaObject::invokeMethod(this, "applyResetTarget", Qt::QueuedConnection);
}

void QTableFastViewPrivate::applyResetTarget()
{
    const QPersistentModelIndex target = std::exchange(resetTarget, QPersistentModelIndex());
    if (target.isValid() && target.model() == q_ptr->m_model)
        q_ptr->setCurrentIndex(target);
}

void QTableFastView::dataChanged(const QModelIndex &topLeft, const QModelIndex &bottomRight,
                                 const QList<int> &roles)
{
    if (!topLeft.isValid() || !bottomRight.isValid()) {
        QAbstractItemView::dataChanged(topLeft, bottomRight, roles);
        d_ptr->repaintAll();
        return;
    }
    d_ptr->noticeUntoldRows();
    if (!viewport()->children().isEmpty())
        QAbstractItemView::dataChanged(topLeft, bottomRight,
                                       roles); // open editors show the new data
    d_ptr->buffer->cellsChanged(topLeft.row(), bottomRight.row(), topLeft.column(),
                                bottomRight.column());
    if (d_ptr->rows().isSeen(topLeft.row(), bottomRight.row()))
        d_ptr->pixels->update(visualRegionForSelection(QItemSelection(topLeft, bottomRight)));
}

void QTableFastView::dataChanged(const QModelIndex &topLeft, const QModelIndex &bottomRight)
{
    dataChanged(topLeft, bottomRight, QList<int>());
}

void QTableFastView::layoutChanged(const QList<QPersistentModelIndex> & /*parents*/,
                                   QAbstractItemModel::LayoutChangeHint hint)
{
    if (!m_model)
        return;
    if (m_usePixmapCacheIndexed)
        d_ptr->buffer->clear();
    d_ptr->pixels->update();
    const int rows = d_ptr->rowCount();
    d_ptr->changes->setRows(rows);
    if (hint == QAbstractItemModel::VerticalSortHint || rows != m_modelRowCountBefore)
        updateVScrollBar(0);
    else if (hint == QAbstractItemModel::HorizontalSortHint)
        updateHScrollBar();
    m_modelRowCountBefore = rows;
    d_ptr->placeEditors();
}

void QTableFastView::doItemsLayout()
{
    // Deliberate: there is no layout to do.
}
