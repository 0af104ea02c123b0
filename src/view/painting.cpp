// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

// The members of QTableFastView that paint, and have it painted.

#include "qtablefastview.h"
#include "tableparts_p.h"

#include "pixels/background_p.h"

#include <QDragMoveEvent>
#include <QHeaderView>
#include <QItemSelectionModel>
#include <QPaintEvent>
#include <QPainter>
#include <QScopedValueRollback>
#include <QStyle>

#include <algorithm>
#include <cstdlib>

// The paint buffer

void QTableFastView::setPaintBufferEnabled(bool on)
{
    if (on == m_usePixmapCacheIndexed)
        return;
    m_usePixmapCacheIndexed = on;
    if (on)
        setPixmapCacheIndexedVisibleBounds();
    else
        d_ptr->buffer->clear();
}

bool QTableFastView::isPaintBufferEnabled() const
{
    return m_usePixmapCacheIndexed;
}

void QTableFastView::setPixmapCacheIndexedVisibleBounds()
{
    const int first = std::max(getFirstVisibleItem(), 0);
    // The cache knows columns by their logical index.
    const auto [start, end] = d_ptr->columns().bounds(startAndEndColumns(viewport()->rect()));
    const qint64 last = qint64(first) + viewport()->height() / m_itemHeight + 1;
    d_ptr->buffer->setBounds({first, saturated(last), start, end});
}

//! Rows \a start to \a end were put before \a row.
void QTableFastViewPrivate::moveCachedRows(int start, int end, int row)
{
    if (!q_ptr->m_usePixmapCacheIndexed)
        return;
    const int count = end - start + 1;
    buffer->rowsMoved(start, end, row);
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
    buffer->dropOutside();
}

//! Rows that moved by an odd \a count change their alternate colour.
void QTableFastViewPrivate::dropParity(int fromRow, int toRow, int count)
{
    if (!q_ptr->alternatingRowColors() || count % 2 == 0)
        return;
    buffer->rowsChanged(fromRow, toRow);
    const int top = std::max(q_ptr->coordinateForItem(fromRow), 0);
    const QRect area = q_ptr->viewport()->rect();
    if (top < area.height())
        pixels->update(area.adjusted(0, top, 0, 0));
}

//! Delegates of rows stay with their row number, not with their row's content.
void QTableFastViewPrivate::dropLookOfRowDelegates()
{
    if (!buffer->hasRowDelegates() && seenRowDelegates().isEmpty())
        return;
    buffer->clear();
    pixels->update();
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
        d_ptr->buffer->rowsChanged(rowsAt(region));
    d_ptr->pixels->update(region);
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
    d_ptr->pixels->painted(event->region());
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
    QStyleOptionViewItem base;
    initViewItemOption(&base); // font, locale, elision, sizes, widget
    d_ptr->cells->initRows(&base);
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
            d_ptr->cells->setRow(&option, base, index, pass);
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
    PaintBuffer *buffer = d_ptr->buffer.get();
    if (!d_ptr->pass)
        d_ptr->cells->paintRow(painter, option, index, d_ptr->paintPass(nullptr), buffer);
    else if (d_ptr->pass->visual == leftAndRight)
        d_ptr->cells->paintRow(painter, option, index, *d_ptr->pass, buffer);
    else
        d_ptr->cells->paintRow(painter, option, index, d_ptr->passOfOtherColumns(), buffer);
}

//! Of columns that a derived view asks for amid the painting of those on screen: it may put them
//! anywhere, and what is not on screen is no matter of the buffer.
PaintPass QTableFastViewPrivate::passOfOtherColumns() const
{
    PaintPass other = *pass;
    other.visual = q_ptr->leftAndRight;
    other.columns = columns().strip(other.visual);
    other.region = nullptr;
    other.isInPlace = true;
    return other;
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
    pass.visual = q_ptr->leftAndRight;
    pass.columns = columns().strip(pass.visual);
    pass.delay = scrollDelayOffset;
    if (q_ptr->hover.isValid() && q_ptr->hover.model() == q_ptr->m_model) {
        pass.hoverRow = q_ptr->hover.row();
        pass.hoverColumn = q_ptr->hover.column();
    }
    cells->complete(&pass, rows());
    return pass;
}

//! Drops from the buffer what no longer looks as it would be painted now, and has
//! everything painted again when the look of all cells changed.
void QTableFastViewPrivate::prepareBuffer(const QStyleOptionViewItem &option, const PaintPass &pass)
{
    const bool isNewLook = buffer->noticeLook(cells->look(option, pass));
    const bool hasNewColumns = !shownColumns->areAs(pass.columns);
    if (hasNewColumns && !q_ptr->viewport()->children().isEmpty())
        QMetaObject::invokeMethod(this, "placeEditors", Qt::QueuedConnection);
    if (isNewLook || hasNewColumns) {
        shownColumns->set(pass.columns);
        // What this event does not paint still shows what was.
        const QRegion rest = QRegion(q_ptr->viewport()->rect()) - *pass.region;
        if (!rest.isEmpty())
            pixels->update(rest);
    }
    const bool isSheet = shownColumns->hasSheet();
    for (const ColumnSlot &slot : pass.columns)
        buffer->noticeColumn(slot.column, shownColumns->look(slot, isSheet));
    buffer->noticeRowDelegates(seenRowDelegates());
    if (q_ptr->m_usePixmapCacheIndexed) {
        q_ptr->setPixmapCacheIndexedVisibleBounds();
        buffer->prepare();
        buffer->noticeCurrentRow(*q_ptr->m_model, pass.currentRow,
                                 pass.hasEditorFocus ? pass.currentRow : -1);
    }
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
    buffer->rowsChanged(index.row(), index.row());
    updateRowStrip(index.row());
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
