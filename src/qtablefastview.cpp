// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "qtablefastview.h"
#include "qtablefastview_p.h"

#include "pixels/background_p.h"
#include "view/keyboardsearch_p.h"
#include "view/rowheight_p.h"

#include <QApplication>
#include <QDragMoveEvent>
#include <QHeaderView>
#include <QItemSelectionModel>
#include <QKeyEvent>
#include <QPaintEvent>
#include <QPainter>
#include <QPixmap>
#include <QScopedValueRollback>
#include <QSignalBlocker>
#include <QStyle>
#include <QWheelEvent>

#include <algorithm>
#include <limits>
#include <utility>

// QTableFastScrollBar

QTableFastScrollBar::QTableFastScrollBar(QWidget *parent)
    : QScrollBar(Qt::Vertical, parent)
{
}

void QTableFastScrollBar::sliderChange(SliderChange change)
{
    if (change == SliderValueChange)
        m_isMax = value() == maximum();
    // Deliberate: the base class may repaint at once; one update per frame is enough.
    update();
}

// Construction

QTableFastView::QTableFastView(QWidget *parent)
    : QAbstractItemView(parent)
    , d_ptr(new QTableFastViewPrivate(this))
{
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
    , connections(q, this)
    , keyboardSearch(new KeyboardSearch(q))
    , anchor(q)
    , autoScroll(q)
    , edges({q->stayAtTop, q->stayAtEnd, q->currentFirst, q->currentLast, q->currentColumn,
             q->currentPos})
    , pixels(q)
    , buffer(&q->m_pixmapCacheIndexed, &q->m_usePixmapCacheIndexed)
    , cells(q)
    , shownColumns(q)
{
    keyboardSearch->setParent(this);
}

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
        d_ptr->connections.disconnectHeader(m_header);
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
    d_ptr->connections.connectHeader(m_header);
    // The header must hear of columns first: asked for its length, it lays out what it has not
    // been told of, and counts that twice.
    if (m_model)
        d_ptr->connections.connectModel(m_model);
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
        d_ptr->connections.disconnectModel(m_model);
    }

    m_model = model;
    if (m_header)
        m_header->setModel(model);
    const QPointer<QItemSelectionModel> ofHeader = m_header ? m_header->selectionModel() : nullptr;
    QAbstractItemView::setModel(model);
    QItemSelectionModel *interim = selectionModel(); // made by the base class
    m_modelRowCountBefore = d_ptr->rowCount();
    d_ptr->changes.reset(m_modelRowCountBefore);
    if (m_model) {
        d_ptr->connections.connectModel(m_model);
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
}

void QTableFastViewPrivate::modelDestroyed()
{
    q_ptr->m_model = nullptr;
    q_ptr->m_modelRowCountBefore = 0;
    buffer.clear();
    pixels.update();
}

void QTableFastViewPrivate::selectionModelDestroyed()
{
    q_ptr->m_selectionModel = nullptr;
    buffer.clear();
    pixels.update();
}

// Row geometry

int QTableFastViewPrivate::rowCount() const
{
    return q_ptr->m_model ? q_ptr->m_model->rowCount(QModelIndex()) : 0;
}

bool QTableFastViewPrivate::isPerPixel() const
{
    return q_ptr->verticalScrollMode() == QAbstractItemView::ScrollPerPixel;
}

RowScale QTableFastViewPrivate::scale() const
{
    return {q_ptr->m_itemHeight, q_ptr->verticalScrollBar()->value(), isPerPixel()};
}

RowGeometry QTableFastViewPrivate::rows() const
{
    return {scale(), rowCount(), q_ptr->viewport()->height()};
}

QRect QTableFastViewPrivate::rowStrip(int row) const
{
    return {0, q_ptr->coordinateForItem(row), q_ptr->viewport()->width(), q_ptr->m_itemHeight};
}

void QTableFastViewPrivate::updateRowStrip(int row)
{
    pixels.update(rowStrip(row));
}

int QTableFastView::rowAt(int y) const
{
    return itemAtCoordinate(y);
}

int QTableFastView::rowViewportPosition(int row) const
{
    return row >= 0 && row < d_ptr->rowCount() ? coordinateForItem(row) : -1;
}

int QTableFastView::itemAtCoordinate(int y) const
{
    return d_ptr->rows().rowAt(y);
}

int QTableFastView::coordinateForItem(int row) const
{
    return d_ptr->scale().top(row);
}

int QTableFastView::getFirstVisibleItem(int *offset) const
{
    return m_model ? d_ptr->rows().firstRow(offset) : -1;
}

QModelIndex QTableFastView::indexAt(const QPoint &p) const
{
    const int row = itemAtCoordinate(p.y());
    const int column = m_header ? m_header->logicalIndexAt(p.x()) : -1;
    return row == -1 || column == -1 ? QModelIndex() : m_model->index(row, column);
}

QRect QTableFastView::visualRect(const QModelIndex &index) const
{
    if (!index.isValid() || index.model() != m_model || isIndexHidden(index))
        return {};
    const int column = index.column();
    return {columnViewportPosition(column), coordinateForItem(index.row()), columnWidth(column),
            m_itemHeight};
}

bool QTableFastView::isIndexHidden(const QModelIndex &index) const
{
    // Deliberate: an index out of range does not count as hidden.
    if (!m_model || !m_header || index.row() >= d_ptr->rowCount()
        || index.column() >= m_model->columnCount()) {
        return false;
    }
    return m_header->isSectionHidden(index.column());
}

int QTableFastView::horizontalOffset() const
{
    return m_header ? m_header->offset() : 0;
}

int QTableFastView::verticalOffset() const
{
    return verticalScrollBar()->value();
}

// Columns, as the header has them

HeaderColumns QTableFastViewPrivate::columns() const
{
    return HeaderColumns(q_ptr->m_header);
}

//! The columns that are on screen, and where.
ColumnStrip QTableFastViewPrivate::seenColumns() const
{
    return columns().strip(q_ptr->startAndEndColumns(q_ptr->viewport()->rect()));
}

ColumnScroll QTableFastViewPrivate::columnScroll() const
{
    return {q_ptr->m_header, q_ptr->horizontalScrollBar(),
            q_ptr->horizontalScrollMode() == QAbstractItemView::ScrollPerItem};
}

bool QTableFastView::isColumnHidden(int column) const
{
    return m_header && m_header->isSectionHidden(column);
}

int QTableFastView::columnWidth(int column) const
{
    return m_header ? m_header->sectionSize(column) : 0;
}

int QTableFastView::columnViewportPosition(int column) const
{
    return m_header ? m_header->sectionViewportPosition(column) : -1;
}

void QTableFastView::hideColumn(int column)
{
    setColumnHidden(column, true);
}

void QTableFastView::showColumn(int column)
{
    setColumnHidden(column, false);
}

void QTableFastView::setColumnHidden(int column, bool hide)
{
    if (m_header && column >= 0 && column < m_header->count())
        m_header->setSectionHidden(column, hide);
}

void QTableFastView::setColumnWidth(int column, int width)
{
    if (m_header && column >= 0 && column < m_header->count() && width >= 0)
        m_header->resizeSection(column, width);
}

int QTableFastView::columnAt(int x) const
{
    return m_header ? m_header->logicalIndexAt(x) : -1;
}

int QTableFastView::frozenColumnWidth() const
{
    return 0;
}

QPair<int, int> QTableFastView::startAndEndColumns(const QRect &rect) const
{
    return d_ptr->columns().crossing(rect, isRightToLeft());
}

// Row height

int QTableFastView::updatedItemHeight(const QStyleOptionViewItem &option) const
{
    return neededRowHeight(*this, m_model, option);
}

void QTableFastView::updateItemHeight()
{
    QStyleOptionViewItem option;
    if (d_ptr->rowHeightFollowsFont)
        initViewItemOption(&option); // the view's font and style sheet, too
    else
        option.initFrom(this);
    const int height =
        d_ptr->fixedRowHeight > 0 ? d_ptr->fixedRowHeight : updatedItemHeight(option);
    if (height == m_itemHeight)
        return;
    const int top = d_ptr->scale().topRow();
    QScrollBar *bar = verticalScrollBar();
    const bool isAtEnd = bar->value() == bar->maximum() && bar->maximum() > bar->minimum();
    m_itemHeight = height;
    d_ptr->buffer.clear();
    updateScrollBars(0);
    if (isAtEnd)
        bar->setValue(bar->maximum());
    else if (d_ptr->isPerPixel())
        bar->setValue(d_ptr->scale().valueOfTopRow(top));
    d_ptr->pixels.update();
    d_ptr->placeEditors();
    emit rowHeightChanged();
}

int QTableFastView::rowHeight() const
{
    return m_itemHeight;
}

int QTableFastView::rowHeight(int row) const
{
    return row >= 0 && row < d_ptr->rowCount() ? m_itemHeight : 0;
}

void QTableFastView::setRowHeight(int height)
{
    d_ptr->fixedRowHeight = std::clamp(height, 0, QWIDGETSIZE_MAX);
    updateItemHeight();
}

void QTableFastView::resetRowHeight()
{
    setRowHeight(0);
}

bool QTableFastView::rowHeightFollowsFont() const
{
    return d_ptr->rowHeightFollowsFont;
}

void QTableFastView::setRowHeightFollowsFont(bool on)
{
    if (on == d_ptr->rowHeightFollowsFont)
        return;
    d_ptr->rowHeightFollowsFont = on;
    updateItemHeight();
}

// Scroll bars

void QTableFastView::updateScrollBars(int delta)
{
    updateVScrollBar(delta);
    updateHScrollBar();
    d_ptr->noticeContentSize();
}

void QTableFastView::updateVScrollBar(int delta)
{
    // Amid a change of rows, the value and the row count do not belong together.
    if (!m_model || d_ptr->changes.isAmid())
        return;
    QScrollBar *bar = verticalScrollBar();
    const RowGeometry rows = d_ptr->rows();
    {
        const QSignalBlocker quiet(bar);
        bar->setSingleStep(rows.singleStep());
        bar->setPageStep(rows.pageStep());
    }
    const qint64 value = qint64(rows.value) + (rows.isPerPixel ? 0 : delta);
    const quint64 serial = d_ptr->changes.serial();
    bar->setRange(0, rows.maximum());
    if (serial == d_ptr->changes.serial()) // else rows were fetched, and the value is theirs
        bar->setValue(saturated(value));
    d_ptr->fetchIfEndIsSeen();
    if (d_ptr->shownScrollMode == verticalScrollMode())
        return;
    d_ptr->shownScrollMode = verticalScrollMode(); // the value counts something else now
    d_ptr->pixels.update();
    d_ptr->placeEditors();
}

void QTableFastView::updateHScrollBar()
{
    if (!m_model || !m_header)
        return;
    d_ptr->columnScroll().setRange(viewport()->width(), maximumViewportSize().width());
    // A value that stayed may stand for another offset now.
    if (d_ptr->columnScroll().apply() != 0) {
        d_ptr->pixels.update();
        d_ptr->placeEditors();
    }
}

QuietBar QTableFastViewPrivate::quietBar() const
{
    return {q_ptr->verticalScrollBar(), &q_ptr->blockScroll};
}

//! Has the bar know of rows that came or went, and nobody else.
void QTableFastViewPrivate::setRangeQuietly()
{
    noticeContentSize();
    quietBar().setMaximum(std::max(rows().maximum(), 0));
}

void QTableFastView::verScrollbarValueChanged(int /*value*/)
{
    if (m_usePixmapCacheIndexed)
        setPixmapCacheIndexedVisibleBounds();
}

void QTableFastView::horScrollbarValueChanged(int /*value*/)
{
    if (m_usePixmapCacheIndexed)
        setPixmapCacheIndexedVisibleBounds();
}

void QTableFastView::wheelEvent(QWheelEvent *event)
{
    const QPoint delta = event->angleDelta().isNull() ? event->pixelDelta() : event->angleDelta();
    if (delta.x() != 0)
        QCoreApplication::sendEvent(horizontalScrollBar(), event);
    if (delta.y() != 0)
        QCoreApplication::sendEvent(verticalScrollBar(), event);
}

// Scrolling

void QTableFastView::scrollTo(const QModelIndex &index, ScrollHint hint)
{
    if (!index.isValid() || index.model() != m_model || !m_header)
        return;
    const QRect cell(columnViewportPosition(index.column()), coordinateForItem(index.row()),
                     columnWidth(index.column()), m_itemHeight);
    QScrollBar *bar = verticalScrollBar();
    if (d_ptr->isPerPixel() && hint == EnsureVisible && viewport()->rect().contains(cell))
        d_ptr->pixels.update(cell);
    else if (!d_ptr->isPerPixel() || !cell.isEmpty())
        bar->setValue(saturated(d_ptr->rows().valueFor(index.row(), hint, bar->pageStep())));

    const int width = viewport()->width();
    const int position = m_header->sectionPosition(index.column());
    const int size = m_header->sectionSize(index.column());
    if (hint == PositionAtCenter) {
        d_ptr->columnScroll().scrollTo(position - (width - size) / 2);
        return;
    }
    const int left = position - m_header->offset();
    if (size > width || left < 0)
        d_ptr->columnScroll().scrollTo(position - frozenColumnWidth());
    else if (left + size > width)
        d_ptr->columnScroll().scrollTo(position - width + size);
}

void QTableFastView::scrollToRow(const QModelIndex &index, ScrollHint hint)
{
    const int value = horizontalScrollBar()->value();
    scrollTo(index, hint);
    horizontalScrollBar()->setValue(value);
}

void QTableFastView::scrollContentsBy(int dx, int dy)
{
    if (blockScroll || !m_model || !m_header)
        return;
    const int moved = dx == 0 ? 0 : d_ptr->columnScroll().apply();
    const int columnPixels = isRightToLeft() ? -moved : moved;
    const RowGeometry rows = d_ptr->rows();
    if (rows.rows == 0)
        return;
    if (rows.page() < std::abs(qint64(dy))) {
        verticalScrollBar()->update();
        d_ptr->pixels.update();
        d_ptr->placeEditors();
        return;
    }
    if (columnPixels != 0 && !d_ptr->shownColumns.followScroll(d_ptr->seenColumns(), columnPixels))
        d_ptr->pixels.update();
    if (!d_ptr->pixels.moveAll(columnPixels, rows.scrolledPixels(dy)))
        d_ptr->placeEditors();
}

//! Moves what the insertion of \a count rows at \a start moves: the rows above by
//! the change of the content's top since \a oldTop, the rows below by \a count rows
//! more. The new rows get painted.
void QTableFastViewPrivate::movePixels(qint64 oldTop, int start, int count)
{
    const RowGeometry::Shift shift = rows().insertion(oldTop, start, count);
    if (!shift.isAboveMoved && !shift.isBelowMoved)
        return;
    if (!pixels.canMoveAgain()) {
        pixels.update();
        placeEditors();
        return;
    }
    if (shift.isAboveMoved)
        pixels.moveRows(0, shift.seam, shift.above);
    if (shift.isBelowMoved)
        pixels.moveRows(shift.seam, q_ptr->viewport()->height(), shift.below);
}

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
    if (!q_ptr->m_header || shownColumns.areAs(seenColumns()))
        return;
    pixels.update();
    placeEditors();
}

//! Puts editors and index widgets onto their cells.
void QTableFastViewPrivate::placeEditors()
{
    if (q_ptr->viewport()->children().isEmpty())
        return;
    q_ptr->executeDelayedItemsLayout(); // a pending one would end updateEditorGeometries() early
    q_ptr->updateEditorGeometries();
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

void QTableFastViewPrivate::headerHeightMayChange()
{
    if (q_ptr->m_geometryRecursionBlock) // the header has just been placed
        QMetaObject::invokeMethod(this, "headerHeightMayChange", Qt::QueuedConnection);
    else
        q_ptr->adjustViewportMargins();
}

void QTableFastViewPrivate::iconSizeChanged()
{
    pixels.update();
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
    d_ptr->pixels.update();
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
        d_ptr->pixels.update(); // the base class leaves that to others
        break;
    case QEvent::FontChange:
        if (d_ptr->rowHeightFollowsFont)
            updateItemHeight();
        d_ptr->pixels.update(); // under a style sheet nobody else does
        break;
    case QEvent::PaletteChange:
        d_ptr->pixels.update();
        break;
    case QEvent::LayoutRequest:
        adjustViewportMargins(); // of the header, too, when its bounds change
        break;
    case QEvent::LayoutDirectionChange:
        updateGeometries();
        d_ptr->pixels.update();
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

void QTableFastViewPrivate::hoverAt(const QEvent &event)
{
    QModelIndex index;
    if (event.type() != QEvent::HoverLeave)
        index = q_ptr->indexAt(static_cast<const QHoverEvent &>(event).position().toPoint());
    if (index == q_ptr->hover)
        return;
    const QPersistentModelIndex left = std::exchange(q_ptr->hover, index);
    updateHover(left);
    updateHover(index);
}

void QTableFastViewPrivate::updateHover(const QModelIndex &index)
{
    if (!index.isValid())
        return;
    buffer.rowsChanged(index.row(), index.row());
    updateRowStrip(index.row());
}

// The paint buffer

void QTableFastView::setPaintBufferEnabled(bool on)
{
    if (on == m_usePixmapCacheIndexed)
        return;
    m_usePixmapCacheIndexed = on;
    if (on)
        setPixmapCacheIndexedVisibleBounds();
    else
        d_ptr->buffer.clear();
}

bool QTableFastView::isPaintBufferEnabled() const
{
    return m_usePixmapCacheIndexed;
}

void QTableFastView::setPixmapCacheIndexedVisibleBounds()
{
    int offset = 0;
    const int first = std::max(getFirstVisibleItem(&offset), 0);
    // The cache knows columns by their logical index.
    const auto [start, end] = d_ptr->columns().bounds(startAndEndColumns(viewport()->rect()));
    const qint64 last = qint64(first) + viewport()->height() / m_itemHeight + 1;
    d_ptr->buffer.setBounds({first, saturated(last), start, end});
}

//! Rows \a start to \a end were put before \a row.
void QTableFastViewPrivate::moveCachedRows(int start, int end, int row)
{
    if (!q_ptr->m_usePixmapCacheIndexed)
        return;
    const int count = end - start + 1;
    buffer.rowsMoved(start, end, row);
    dropParity(std::min(start, row), std::max(end, row - 1),
               (row > end ? row - end - 1 : start - row));
    dropParity(std::min(start, row), std::max(end, row - 1), count);
}

//! Rows pushed out of the bounds must go: later changes there would pass them by.
void QTableFastViewPrivate::evictOutside()
{
    if (!q_ptr->m_usePixmapCacheIndexed)
        return;
    q_ptr->setPixmapCacheIndexedVisibleBounds();
    buffer.dropOutside();
}

//! Rows that moved by an odd \a count change their alternate colour.
void QTableFastViewPrivate::dropParity(int fromRow, int toRow, int count)
{
    if (!q_ptr->alternatingRowColors() || count % 2 == 0)
        return;
    buffer.rowsChanged(fromRow, toRow);
    const int top = std::max(q_ptr->coordinateForItem(fromRow), 0);
    const QRect area = q_ptr->viewport()->rect();
    if (top < area.height())
        pixels.update(area.adjusted(0, top, 0, 0));
}

//! Delegates of rows stay with their row number, not with their row's content.
void QTableFastViewPrivate::dropLookOfRowDelegates()
{
    if (!buffer.hasRowDelegates() && seenRowDelegates().isEmpty())
        return;
    buffer.clear();
    pixels.update();
}

//! The delegates that rows on screen have for themselves, by row.
QHash<int, DelegateMark> QTableFastViewPrivate::seenRowDelegates() const
{
    QHash<int, DelegateMark> delegates;
    const RowGeometry seen = rows();
    const int last = std::min(seen.lastSeenRow(), seen.rows - 1);
    for (int row = std::max(seen.topRow(), 0); row <= last; ++row) {
        if (QAbstractItemDelegate *delegate = q_ptr->itemDelegateForRow(row))
            delegates.insert(row, delegate);
    }
    return delegates;
}

void QTableFastView::invalidateRegion(const QRegion &region)
{
    if (m_usePixmapCacheIndexed)
        d_ptr->buffer.rowsChanged(rowsAt(region));
    d_ptr->pixels.update(region);
}

void QTableFastView::atRegion(const QRegion &region, QList<int> *rows) const
{
    rows->clear();
    int offset = 0;
    const int first = getFirstVisibleItem(&offset);
    if (m_itemHeight == 0 || first < 0)
        return;
    const int count = d_ptr->rowCount();
    for (const QRect &rect : region) {
        const int skipped = std::max((rect.top() - offset) / m_itemHeight, 0);
        qint64 row = qint64(first) + skipped;
        for (int y = offset + skipped * m_itemHeight; row < count && y <= rect.bottom();
             y += m_itemHeight) {
            rows->append(int(row++));
        }
    }
}

QList<int> QTableFastView::rowsAt(const QRegion &region) const
{
    QList<int> rows;
    atRegion(region, &rows);
    return rows;
}

// Painting

void QTableFastView::paintEvent(QPaintEvent *event)
{
    d_ptr->pixels.painted(event->region());
    QPainter painter(viewport());
    // A painter on a widget begins with the application's direction.
    painter.setLayoutDirection(viewport()->layoutDirection());
    draw(&painter, event->region());
    paintDropIndicator(&painter);
}

void QTableFastView::draw(QPainter *painter, const QRegion &region) const
{
    int offset = 0;
    const int first = getFirstVisibleItem(&offset);
    if (!m_model || !m_header || first < 0)
        return;
    QStyleOptionViewItem initial;
    initViewItemOption(&initial); // font, locale, elision, sizes, widget
    const QStyleOptionViewItem base = d_ptr->cells.rowOption(initial);
    const int width = viewport()->width();
    const int count = d_ptr->rowCount();
    leftAndRight = startAndEndColumns(QRect(0, 0, width, viewport()->height()));
    const PaintPass pass = d_ptr->paintPass(&region);
    d_ptr->prepareBuffer(base, pass);
    const KnownBackground known(this, pass.isBackgroundPlain);
    const QScopedValueRollback<const PaintPass *> current(d_ptr->pass, &pass);

    QStyleOptionViewItem option = base;
    qint64 unpainted = first; // rectangles come from top to bottom: rows above are painted
    for (const QRect &rect : region) {
        qint64 row =
            std::max(first + std::max<qint64>((rect.top() - offset) / m_itemHeight, 0), unpainted);
        for (; row < count; ++row) {
            const int y = int(offset + (row - first) * m_itemHeight);
            if (y > rect.bottom())
                break;
            const QModelIndex index = m_model->index(int(row), 0);
            d_ptr->cells.setRow(&option, base, index, pass);
            option.rect = QRect(0, y, width, m_itemHeight);
            drawRow(painter, option, index);
        }
        unpainted = std::max(unpainted, row);
    }
}

void QTableFastView::drawRow(QPainter *painter, const QStyleOptionViewItem &option,
                             const QModelIndex &index) const
{
    if (!m_model || !m_header)
        return;
    const PaintPass pass = d_ptr->pass ? PaintPass() : d_ptr->paintPass(nullptr);
    d_ptr->cells.paintRow(painter, option, index, d_ptr->pass ? *d_ptr->pass : pass,
                          &d_ptr->buffer);
}

void QTableFastView::initViewItemOption(QStyleOptionViewItem *option) const
{
    QAbstractItemView::initViewItemOption(option);
    if (selectionBehavior() == SelectRows)
        option->showDecorationSelected = true;
}

//! Gathers what the rows of \a region share; null stands for everything.
PaintPass QTableFastViewPrivate::paintPass(const QRegion *region) const
{
    PaintPass pass;
    pass.model = q_ptr->m_model;
    pass.selectionModel = q_ptr->m_selectionModel;
    pass.region = region;
    pass.columns = columns().strip(q_ptr->leftAndRight);
    pass.delay = scrollDelayOffset;
    if (q_ptr->hover.isValid() && q_ptr->hover.model() == q_ptr->m_model) {
        pass.hoverRow = q_ptr->hover.row();
        pass.hoverColumn = q_ptr->hover.column();
    }
    cells.complete(&pass, rows());
    return pass;
}

//! Drops from the buffer what no longer looks as it would be painted now, and has
//! everything painted again when the look of all cells changed.
void QTableFastViewPrivate::prepareBuffer(const QStyleOptionViewItem &option, const PaintPass &pass)
{
    const bool isNewLook = buffer.noticeLook(cells.look(option, pass));
    const bool hasNewColumns = !shownColumns.areAs(pass.columns);
    if (hasNewColumns && !q_ptr->viewport()->children().isEmpty())
        QMetaObject::invokeMethod(this, "placeEditors", Qt::QueuedConnection);
    if (isNewLook || hasNewColumns) {
        shownColumns.set(pass.columns);
        // What this event does not paint still shows what was.
        const QRegion rest = QRegion(q_ptr->viewport()->rect()) - *pass.region;
        if (!rest.isEmpty())
            pixels.update(rest);
    }
    buffer.noticeColumns(shownColumns.looks(pass.columns));
    buffer.noticeRowDelegates(seenRowDelegates());
    if (q_ptr->m_usePixmapCacheIndexed) {
        q_ptr->setPixmapCacheIndexedVisibleBounds();
        buffer.prepare();
        buffer.noticeCurrentRow(*q_ptr->m_model, pass.currentRow,
                                pass.hasEditorFocus ? pass.currentRow : -1);
    }
}

void QTableFastViewPrivate::repaintAll()
{
    buffer.clear();
    pixels.update();
}

//! Rows are numbered anew and the view has not been told yet: it cannot say which of its
//! pixels, and of its kept cells, a number means.
void QTableFastViewPrivate::noticeUntoldRows()
{
    if (changes.areUntold(rowCount()))
        repaintAll();
}

//! An editor got or lost the focus: the current row looks different.
void QTableFastViewPrivate::focusChanged(QWidget *old, QWidget *now)
{
    const QWidget *viewport = q_ptr->viewport();
    if (!q_ptr->m_selectionModel
        || !((old && viewport->isAncestorOf(old)) || (now && viewport->isAncestorOf(now)))) {
        return;
    }
    const QModelIndex current = q_ptr->m_selectionModel->currentIndex();
    if (current.isValid())
        updateRowStrip(current.row());
}

void QTableFastView::dragMoveEvent(QDragMoveEvent *event)
{
    QAbstractItemView::dragMoveEvent(event);
    const QModelIndex index = indexAt(event->position().toPoint());
    if (!index.isValid() || !showDropIndicator()) {
        m_dropIndicatorRect = QRect();
        return;
    }
    const QRect rect = visualRect(index);
    const bool isOn = dropIndicatorPosition() == OnItem;
    const Qt::ItemFlags flags = m_model->flags(isOn ? index : index.parent());
    m_dropIndicatorRect = QRect();
    if (!(flags & Qt::ItemIsDropEnabled))
        return;
    switch (dropIndicatorPosition()) {
    case OnItem:
        m_dropIndicatorRect = rect;
        return;
    case AboveItem:
        m_dropIndicatorRect = QRect(rect.left(), rect.top(), rect.width(), 0);
        break;
    case BelowItem:
        m_dropIndicatorRect = QRect(rect.left(), rect.bottom(), rect.width(), 0);
        break;
    case OnViewport:
        return;
    }
    event->accept();
}

void QTableFastView::paintDropIndicator(QPainter *painter)
{
    if (!showDropIndicator() || state() != DraggingState
        || viewport()->cursor().shape() == Qt::ForbiddenCursor) {
        return;
    }
    QStyleOption option;
    option.initFrom(this);
    option.rect = m_dropIndicatorRect;
    style()->drawPrimitive(QStyle::PE_IndicatorItemViewItemDrop, &option, painter, this);
}

// Current index and keyboard

bool QTableFastView::isCurrentFirst() const
{
    const QModelIndex current = currentIndex();
    return current.isValid() && current.row() == 0;
}

bool QTableFastView::isCurrentLast() const
{
    const QModelIndex current = currentIndex();
    if (!current.isValid())
        return false;
    const int rows = d_ptr->rowCount();
    return rows == 0 || current.row() == rows - 1;
}

bool QTableFastView::followsCurrentRow() const
{
    return d_ptr->edges.followsCurrent();
}

void QTableFastView::setFollowsCurrentRow(bool on)
{
    d_ptr->edges.setFollowsCurrent(on);
    if (!on)
        d_ptr->resetTarget = QPersistentModelIndex();
}

void QTableFastView::setCurrentFirst()
{
    currentFirst = true;
    currentLast = false;
    setCurrentIndex(d_ptr->moveByRows(MoveHome));
}

void QTableFastView::setCurrentLast()
{
    currentFirst = false;
    currentLast = true;
    if (!m_model)
        return;
    setCurrentIndex(m_model->index(0, 0));
    setCurrentIndex(d_ptr->moveByRows(MoveEnd));
}

void QTableFastView::selectRow(int row)
{
    if (row < 0 || row >= d_ptr->rowCount())
        return;
    for (int column = 0; column < m_model->columnCount(); ++column) {
        const QModelIndex index = m_model->index(row, column);
        if (!isColumnHidden(column) && index.isValid()) {
            setCurrentIndex(index);
            return;
        }
    }
}

void QTableFastView::keyboardSearch(const QString &search)
{
    d_ptr->keyboardSearch->type(search);
}

void QTableFastView::keyPressEvent(QKeyEvent *event)
{
    if (d_ptr->keyboardSearch->isRunning()) {
        d_ptr->keyboardSearch->end();
        if (event->key() == Qt::Key_Escape) {
            event->accept();
            return;
        }
    }
    if (d_ptr->hasStandardKeys) {
        d_ptr->baseKeyPress(event);
        return;
    }
    switch (event->key()) {
    case Qt::Key_Left:
    case Qt::Key_Up:
    case Qt::Key_Right:
    case Qt::Key_Down:
        moveCurrentIndex(currentIndex(), event->key());
        break;
    default:
        d_ptr->baseKeyPress(event);
    }
}

void QTableFastView::moveCurrentIndex(const QModelIndex &index, int key)
{
    if (!index.isValid())
        return;
    setCurrentIndex(index);
    CursorAction action = MoveLeft;
    switch (key) {
    case Qt::Key_Left:
        break;
    case Qt::Key_Up:
        action = MovePrevious;
        break;
    case Qt::Key_Right:
        action = MoveRight;
        break;
    case Qt::Key_Down:
        action = MoveNext;
        break;
    default:
        qDebug("void QTableFastView::moveCurrentIndex(const QModelIndex&, int) "
               "Unknown key pressed to move current index");
        return;
    }
    setCurrentIndex(d_ptr->moveByRows(action));
}

QModelIndex QTableFastView::moveCursor(CursorAction cursorAction, Qt::KeyboardModifiers modifiers)
{
    if (!m_model)
        return {};
    if (d_ptr->hasStandardKeys)
        return d_ptr->standardMove(cursorAction, modifiers);
    const QModelIndex current = currentIndex();
    const int rows = d_ptr->rowCount();
    if (!current.isValid()) {
        const int column = d_ptr->columns().first();
        return rows > 0 && column >= 0 ? m_model->index(0, column) : QModelIndex();
    }

    const int row = current.row();
    const int column = current.column();
    switch (cursorAction) {
    case MoveUp:
    case MovePrevious:
        return m_model->index(std::max(row - 1, 0), column);
    case MoveDown:
    case MoveNext:
        return m_model->index(row + 1 < rows ? row + 1 : row, column);
    case MoveHome:
        currentFirst = true;
        return m_model->index(0, column);
    case MoveEnd:
        currentLast = true;
        return m_model->index(rows - 1, column);
    case MovePageUp:
        return m_model->index(pageUp(row), column);
    case MovePageDown:
        return m_model->index(pageDown(row), column);
    case MoveLeft:
        return isRightToLeft() ? d_ptr->moveRight(current) : d_ptr->moveLeft(current);
    case MoveRight:
        return isRightToLeft() ? d_ptr->moveLeft(current) : d_ptr->moveRight(current);
    }
    return current;
}

CursorMoves QTableFastViewPrivate::cursorMoves() const
{
    return {q_ptr->m_model, q_ptr->m_header};
}

QModelIndex QTableFastViewPrivate::moveRight(const QModelIndex &current)
{
    if (q_ptr->style()->styleHint(QStyle::SH_ItemView_ArrowKeysNavigateIntoChildren, nullptr,
                                  q_ptr)) {
        const int next = current.row() + 1 < rowCount() ? current.row() + 1 : current.row();
        const QModelIndex candidate = q_ptr->m_model->index(next, 0);
        if (candidate.parent() == current)
            return candidate;
    }
    const QModelIndex next = cursorMoves().beside(current, 1);
    if (next.isValid())
        return next;
    QScrollBar *bar = q_ptr->horizontalScrollBar();
    bar->setValue(bar->value() + bar->singleStep());
    return endHorizontalMove(current);
}

QModelIndex QTableFastViewPrivate::moveLeft(const QModelIndex &current)
{
    if (current.row() >= rowCount())
        return endHorizontalMove(current);
    if (q_ptr->style()->styleHint(QStyle::SH_ItemView_ArrowKeysNavigateIntoChildren, nullptr,
                                  q_ptr)) {
        const QModelIndex parent = current.parent();
        if (parent.isValid() && parent != q_ptr->rootIndex())
            return parent;
    }
    const QModelIndex previous = cursorMoves().beside(current, -1);
    if (previous.isValid())
        return previous;
    QScrollBar *bar = q_ptr->horizontalScrollBar();
    if (bar->value() > bar->minimum())
        bar->setValue(bar->value() - bar->singleStep());
    return endHorizontalMove(current);
}

QModelIndex QTableFastViewPrivate::endHorizontalMove(const QModelIndex &current)
{
    q_ptr->updateGeometries();
    pixels.update();
    return current;
}

int QTableFastView::pageUp(int row) const
{
    return d_ptr->rows().pageUp(row);
}

int QTableFastView::pageDown(int row) const
{
    return d_ptr->rows().pageDown(row);
}

// Selection

void QTableFastView::setSelection(const QRect &rect, QItemSelectionModel::SelectionFlags command)
{
    if (!m_selectionModel || !m_model || rect.isNull() || d_ptr->selectDragged(rect, command))
        return;
    const int top = std::min(rect.top(), rect.bottom());
    const int bottom = std::max(rect.top(), rect.bottom());
    int left = std::min(rect.left(), rect.right());
    int right = std::max(rect.left(), rect.right());
    if (isRightToLeft())
        std::swap(left, right);
    const QModelIndex topLeft = d_ptr->anchor.cornerAt(QPoint(left, top));
    const QModelIndex bottomRight = d_ptr->anchor.cornerAt(QPoint(right, bottom));

    if (!topLeft.isValid() && !bottomRight.isValid()) {
        if (command & QItemSelectionModel::Clear)
            m_selectionModel->clear();
    } else if (!topLeft.isValid()) {
        // Deliberate: a rubber band that leaves the rows selects nothing.
        qWarning("TODO: !topLeft.isValid()");
    } else if (!bottomRight.isValid()) {
        qWarning("TODO: !bottomRight.isValid()");
    } else if ((m_model->flags(topLeft) & Qt::ItemIsEnabled)
               && (m_model->flags(bottomRight) & Qt::ItemIsEnabled)) {
        m_selectionModel->select(
            d_ptr->anchor.range(topLeft, bottomRight, d_ptr->selectsVisualRanges), command);
    }
}

QRegion QTableFastView::visualRegionForSelection(const QItemSelection &selection) const
{
    QRegion region;
    const QRect area = viewport()->rect();
    const RowScale scale = d_ptr->scale();
    const HeaderColumns columns = d_ptr->columns();
    for (const QItemSelectionRange &range : selection) {
        if (!range.isValid() || range.model() != m_model)
            continue;
        const int top = scale.top(range.top());
        const int bottom = scale.top(range.bottom()) + m_itemHeight - 1;
        if (top > area.bottom() || bottom < area.top())
            continue;
        const QRect span = columns.span(range.left(), range.right(), area.height());
        region += QRect(QPoint(span.left(), top), QPoint(span.right(), bottom)) & area;
    }
    return region;
}

void QTableFastView::selectionChanged(const QItemSelection &selected,
                                      const QItemSelection &deselected)
{
    d_ptr->repaintSelection(selected);
    d_ptr->repaintSelection(deselected);
}

void QTableFastViewPrivate::repaintSelection(const QItemSelection &selection)
{
    if (selection.isEmpty() || !q_ptr->m_model)
        return;
    noticeUntoldRows();
    buffer.selectionChanged(selection);
    QRegion region = q_ptr->visualRegionForSelection(selection);

    // The whole row looks selected when its cell in column 0 is.
    const int lastColumn = q_ptr->m_model->columnCount() - 1;
    for (const QItemSelectionRange &range : selection) {
        if (range.left() > 0 || range.right() >= lastColumn || !range.isValid())
            continue;
        buffer.rowsChanged(range.top(), range.bottom());
        region +=
            rowStrip(range.top()).united(rowStrip(range.bottom())) & q_ptr->viewport()->rect();
    }
    pixels.update(region);
}

void QTableFastView::currentChanged(const QModelIndex &current, const QModelIndex &previous)
{
    d_ptr->edges.currentChanged();
    d_ptr->baseCurrentChanged(current, previous);
    // Rows, not cells: the column of the index may be hidden.
    if (previous.isValid())
        d_ptr->updateRowStrip(previous.row());
    if (current.isValid())
        d_ptr->updateRowStrip(current.row());
}

// Rows inserted, removed and moved

void QTableFastView::rowsAboutToBeInserted(const QModelIndex &parent, int /*start*/, int /*end*/)
{
    if (!m_model || parent.isValid())
        return;
    d_ptr->changes.begin();
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
    now.isEditing = d_ptr->edges.isOwed() && d_ptr->isEditing();
    d_ptr->edges.beforeInsertion(now);
}

void QTableFastView::rowsInserted(const QModelIndex &parent, int start, int end)
{
    if (!m_model || parent.isValid())
        return;
    d_ptr->changes.end();
    const int count = end - start + 1;
    const bool isConsistent = m_modelRowCountBefore + count == d_ptr->rowCount();
    const quint64 serial = d_ptr->changes.serial();
    const qint64 oldTop = d_ptr->scale().contentTop();

    const QPersistentModelIndex follower = d_ptr->edgeToFollow(start, end);
    d_ptr->changes.setRows(d_ptr->rowCount());
    d_ptr->buffer.rowsInserted(start, end);
    d_ptr->setRangeQuietly();
    switch (d_ptr->edges.scroll(start, d_ptr->scale().topRow())) {
    case EdgeKeeper::Scroll::ToEnd:
        d_ptr->quietBar().setValue(verticalScrollBar()->maximum());
        break;
    case EdgeKeeper::Scroll::WithRows:
        d_ptr->quietBar().setValue(d_ptr->scale().valueMovedBy(count));
        break;
    case EdgeKeeper::Scroll::Stay:
        break;
    }

    // Reaching the end may have fetched more rows meanwhile.
    const bool isUndisturbed = isConsistent && serial == d_ptr->changes.serial();
    if (isUndisturbed)
        d_ptr->movePixels(oldTop, start, count);
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
    const EdgeKeeper::Edge edge = edges.edgeToFollow(start, end, rowCount());
    if (edge == EdgeKeeper::Edge::None)
        return {};
    if (isEditing()) {
        edges.owe(edge);
        return {};
    }
    return edgeCell(edge);
}

//! The cell at an edge in the column that was current.
QModelIndex QTableFastViewPrivate::edgeCell(EdgeKeeper::Edge edge) const
{
    const int row = edge == EdgeKeeper::Edge::First ? 0 : rowCount() - 1;
    return q_ptr->m_model->index(row, q_ptr->currentColumn);
}

//! Whether the user is at work in the current row.
bool QTableFastViewPrivate::isEditing() const
{
    const QModelIndex current = q_ptr->currentIndex();
    return q_ptr->state() == QTableFastView::EditingState
        || (current.isValid() && q_ptr->m_header
            && cells.hasEditorFocus(*q_ptr->m_model, current.row()));
}

//! Makes \a target current without scrolling to it.
void QTableFastViewPrivate::followEdge(const QModelIndex &target, bool isConsistent)
{
    autoScroll.hold();
    QItemSelectionModel *selectionModel = q_ptr->m_selectionModel;
    if (isConsistent && selectionModel && selectionModel->currentIndex().isValid()) {
        selectionModel->clearSelection();
        updateRowStrip(selectionModel->currentIndex().row());
    }
    q_ptr->setCurrentIndex(target);
    autoScroll.release();
}

void QTableFastView::rowsAboutToBeRemoved(const QModelIndex &parent, int /*start*/, int /*end*/)
{
    if (!parent.isValid())
        d_ptr->changes.begin();
    d_ptr->autoScroll.hold();
}

void QTableFastView::rowsAboutToBeMoved(const QModelIndex &sourceParent, int /*sourceStart*/,
                                        int /*sourceEnd*/, const QModelIndex &destinationParent,
                                        int /*destinationRow*/)
{
    if (!sourceParent.isValid() || !destinationParent.isValid())
        d_ptr->changes.beginMove();
    d_ptr->autoScroll.hold();
}

void QTableFastView::rowsRemoved(const QModelIndex &parent, int first, int last)
{
    if (!m_model || parent.isValid()) {
        d_ptr->autoScroll.release();
        return;
    }
    d_ptr->changes.end();
    const int count = last - first + 1;
    const bool isConsistent = d_ptr->changes.rows() - count == d_ptr->rowCount();
    d_ptr->changes.setRows(d_ptr->rowCount());
    const RowGeometry rows = d_ptr->rows();
    const bool isAbove = rows.topRow() > last;
    const bool isSeen = rows.isSeen(first, last);
    d_ptr->buffer.rowsRemoved(first, last);
    if (isAbove)
        d_ptr->quietBar().setValue(d_ptr->scale().valueMovedBy(-count));
    d_ptr->setRangeQuietly();
    if (isSeen) {
        d_ptr->pixels.update();
        updateScrollBars(0);
    }
    d_ptr->fetchIfEndIsSeen();
    d_ptr->evictOutside();
    d_ptr->dropParity(first, std::numeric_limits<int>::max(), count);
    d_ptr->dropLookOfRowDelegates();
    if (!isConsistent)
        d_ptr->repaintAll();
    d_ptr->autoScroll.release();
    m_modelRowCountBefore = d_ptr->rowCount();
    if (d_ptr->edges.followsCurrent())
        setCurrentIndex(currentIndex());
    d_ptr->placeEditors();
}

void QTableFastView::rowsMoved(const QModelIndex &sourceParent, int sourceStart, int sourceEnd,
                               const QModelIndex &destinationParent, int destinationRow)
{
    if (!m_model || (sourceParent.isValid() && destinationParent.isValid())) {
        d_ptr->autoScroll.release();
        return;
    }
    d_ptr->changes.end();
    d_ptr->changes.setRows(d_ptr->rowCount());
    if (sourceParent.isValid() || destinationParent.isValid()) {
        columnCountChanged(0, 0); // rows came or went: all is measured and painted anew
        m_modelRowCountBefore = d_ptr->rowCount();
        d_ptr->autoScroll.release();
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
        d_ptr->pixels.update();
        updateScrollBars(0);
    }
    d_ptr->evictOutside();
    d_ptr->dropLookOfRowDelegates();
    d_ptr->autoScroll.release();
    d_ptr->placeEditors();
}

// Resets, data and layout

void QTableFastView::modelAboutToBeReset()
{
    const QModelIndex current = currentIndex();
    d_ptr->edges.beforeReset(current.row(), current.column(), d_ptr->rowCount());
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
    d_ptr->changes.reset(d_ptr->rowCount());
    if (m_usePixmapCacheIndexed)
        d_ptr->buffer.clear();
    d_ptr->pixels.update();
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
    const EdgeKeeper::Edge edge = edges.edgeAfterReset();
    if (edge == EdgeKeeper::Edge::None || isFetching)
        return;
    resetTarget = edgeCell(edge);
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
    d_ptr->buffer.cellsChanged(topLeft.row(), bottomRight.row(), topLeft.column(),
                               bottomRight.column());
    if (d_ptr->rows().isSeen(topLeft.row(), bottomRight.row()))
        d_ptr->pixels.update(visualRegionForSelection(QItemSelection(topLeft, bottomRight)));
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
        d_ptr->buffer.clear();
    d_ptr->pixels.update();
    const int rows = d_ptr->rowCount();
    d_ptr->changes.setRows(rows);
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

// Sorting

bool QTableFastView::isSortingEnabled() const
{
    return m_sortingEnabled;
}

void QTableFastView::setSortingEnabled(bool enable)
{
    if (m_header) {
        m_header->setSortIndicatorShown(enable);
        m_header->setSectionsClickable(enable);
        if (enable)
            sortByColumn(m_header->sortIndicatorSection(), m_header->sortIndicatorOrder());
        d_ptr->connections.connectSorting(m_header, enable);
    }
    m_sortingEnabled = enable;
}

void QTableFastView::sortByColumn(int column, Qt::SortOrder order)
{
    if (m_header)
        m_header->setSortIndicator(column, order);
    if (!m_sortingEnabled && m_model)
        m_model->sort(column, order);
}

void QTableFastView::sortByColumn(int column)
{
    sortByColumn(column, m_header ? m_header->sortIndicatorOrder() : Qt::AscendingOrder);
}

void QTableFastView::sortIndicatorChanged(int column, Qt::SortOrder order)
{
    if (m_model)
        m_model->sort(column, order);
}

// Columns

void QTableFastView::columnCountChanged(int /*oldCount*/, int /*newCount*/)
{
    adjustViewportMargins();
    updateScrollBars(0);
    d_ptr->buffer.clear();
    invalidateRegion(viewport()->rect());
    d_ptr->placeEditors();
}

//! Columns came, went or moved, or the header is another one.
void QTableFastViewPrivate::columnsChanged()
{
    buffer.forgetColumns();
    q_ptr->columnCountChanged(0, 0);
    q_ptr->updateGeometries();
}

void QTableFastViewPrivate::modelColumnsChanged(const QModelIndex &parent)
{
    if (!parent.isValid())
        columnsChanged();
}

void QTableFastView::updateColumn(int column)
{
    if (isColumnHidden(column))
        return;
    d_ptr->pixels.update(
        QRect(columnViewportPosition(column), 0, columnWidth(column), viewport()->height()));
}

void QTableFastView::columnResized(int column, int oldSize, int newSize)
{
    if (!m_header || m_header->isSectionHidden(column))
        return;
    const int oldOffset = m_header->offset();
    updateEditorGeometries();
    updateScrollBars(0);
    if (m_usePixmapCacheIndexed) {
        d_ptr->buffer.columnsChanged({column});
        setPixmapCacheIndexedVisibleBounds();
    }
    // Showing or hiding a column changes what its neighbours are painted as.
    const bool isShownOrHidden = oldSize == 0 || newSize == 0;
    if (isShownOrHidden)
        d_ptr->buffer.clear();
    if (isShownOrHidden || oldOffset != m_header->offset()
        || !d_ptr->shownColumns.followResize(d_ptr->seenColumns(), column, newSize - oldSize)
        || !d_ptr->pixels.canMoveAgain()) {
        d_ptr->pixels.update();
        d_ptr->placeEditors();
        return;
    }
    d_ptr->pixels.moveColumns(columnViewportPosition(column), columnWidth(column),
                              newSize - oldSize, isRightToLeft());
}

void QTableFastView::columnMoved(int logicalIndex, int oldVisualIndex, int newVisualIndex)
{
    if (!m_header)
        return;
    if (m_usePixmapCacheIndexed) {
        QList<int> columns {logicalIndex};
        // Deliberate: the logical neighbour, too.
        if (logicalIndex > 0)
            columns.append(logicalIndex - 1);
        for (int visual : {oldVisualIndex, newVisualIndex}) {
            if (visual - 1 > 0)
                columns.append(m_header->logicalIndex(visual - 1));
            if (visual + 1 < m_header->count())
                columns.append(m_header->logicalIndex(visual + 1));
        }
        d_ptr->buffer.columnsChanged(columns);
        setPixmapCacheIndexedVisibleBounds();
    }
    d_ptr->pixels.update();
    updateScrollBars(0);
    d_ptr->placeEditors();
}

int QTableFastView::sizeHintForColumn(int column) const
{
    if (!m_model)
        return -1;
    ensurePolished();
    const int first = std::max(itemAtCoordinate(0), 0);
    int last = itemAtCoordinate(viewport()->height());
    if (last == -1)
        last = d_ptr->rowCount() - 1;
    QStyleOptionViewItem option;
    initViewItemOption(&option);
    int width = 0;
    for (int row = first; row <= last; ++row) {
        const QModelIndex index = m_model->index(row, column);
        if (const QAbstractItemDelegate *delegate = itemDelegateForIndex(index))
            width = std::max(width, delegate->sizeHint(option, index).width());
    }
    return width + 1;
}

void QTableFastView::resizeColumnToContents(int column)
{
    if (!m_header || !m_model || column < 0 || column >= m_header->count())
        return;
    const Qt::Orientation orientation = m_header->orientation();
    const QFont font = m_model->headerData(column, orientation, Qt::FontRole).value<QFont>();
    const QString title = m_model->headerData(column, orientation, Qt::DisplayRole).toString();
    const int headerHint = m_header->isHidden() ? 0 : m_header->sectionSizeHint(column);
    m_header->resizeSection(column,
                            std::max({sizeHintForColumn(column), headerHint,
                                      QFontMetrics(font).horizontalAdvance(title)}));
}

void QTableFastView::resizeColumnsToContents()
{
    for (int column = 0; m_header && column < m_header->count(); ++column)
        resizeColumnToContents(column);
}
