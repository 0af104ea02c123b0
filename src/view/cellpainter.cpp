// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "cellpainter_p.h"

#include "canvas_p.h"
#include "paintbuffer_p.h"
#include "pixels/background_p.h"
#include "pixels/knownstyle_p.h"
#include "pixels/painttraits_p.h"
#include "qtablefastview.h"
#include "rowgeometry_p.h"

#include <QApplication>
#include <QHeaderView>
#include <QItemSelectionModel>
#include <QPainter>
#include <QPixmap>

#include <algorithm>
#include <optional>

namespace {

//! Draws a cell from the buffer; false if it is not there in the right size.
//! Deliberate: device pixels are held against logical ones, so that at a device pixel ratio
//! other than 1 every cell is painted anew.
bool paintBuffered(QPainter *painter, const QRect &rect, int row, int column, const PaintPass &pass,
                   const PaintBuffer &buffer)
{
    if (rect.isEmpty())
        return true;
    const QPixmap *picture = buffer.cell(row, column, rect.size());
    if (!picture)
        return false;
    if (!pass.region || pass.region->intersects(rect))
        painter->drawPixmap(rect.topLeft(), *picture);
    return true;
}

} // namespace

bool PaintPass::isSelected(const QModelIndex &index) const
{
    const int row = index.row();
    const int column = index.column();
    const auto reaches = [row, column](const QItemSelectionRange &range) {
        return range.top() <= row && row <= range.bottom() && range.left() <= column
            && column <= range.right();
    };
    return std::any_of(selection.cbegin(), selection.cend(), reaches)
        && selectionModel->isSelected(index);
}

void CellPainter::complete(PaintPass *pass, const RowGeometry &rows) const
{
    pass->isBackgroundPlain = hasPlainBackground(*m_view->viewport());
    pass->isInPlace = paintsInPlace(*pass);
    if (!pass->selectionModel)
        return;
    const int first = rows.topRow();
    const int last = rows.lastSeenRow();
    const QItemSelection selection = pass->selectionModel->selection();
    for (const QItemSelectionRange &range : selection) {
        if (range.top() <= last && range.bottom() >= first)
            pass->selection.append(range);
    }
    const QModelIndex current = pass->selectionModel->currentIndex();
    pass->currentRow = current.isValid() ? current.row() : -1;
    pass->hasEditorFocus = pass->currentRow >= 0 && hasEditorFocus(*pass->model, pass->currentRow);
}

//! Whether pictures of cells cannot be kept: they would show another background, or would
//! not lie on device pixels.
bool CellPainter::paintsInPlace(const PaintPass &pass) const
{
    return !hasWholeDevicePixels(*m_view->viewport()) || !pass.isBackgroundPlain
        || !hasPlainCells(m_view->palette());
}

void CellPainter::initRows(QStyleOptionViewItem *option) const
{
    option->initFrom(m_view); // state and palette as the view has them
    // The pointer is over the view, not over each of its cells.
    option->state &= ~QStyle::State_MouseOver;
}

CellLook CellPainter::look(const QStyleOptionViewItem &rowOption, const PaintPass &pass) const
{
    CellLook now;
    now.state = rowOption.state & ~QStyle::State_HasFocus; // set for each cell
    now.palette = rowOption.palette.cacheKey();
    now.background = m_view->viewport()->palette().cacheKey();
    now.colorGroup = rowOption.palette.currentColorGroup();
    now.font = rowOption.font;
    now.locale = rowOption.locale;
    now.direction = rowOption.direction;
    now.elideMode = rowOption.textElideMode;
    now.decorationSize = rowOption.decorationSize;
    now.features = rowOption.features;
    now.isAlternating = m_view->alternatingRowColors();
    now.selectionBehavior = m_view->selectionBehavior();
    now.devicePixelRatio = m_view->devicePixelRatioF();
    now.columnCount = m_view->header()->count();
    now.hiddenColumnCount = m_view->header()->hiddenSectionCount();
    now.style = m_view->style();
    now.delegate = m_view->itemDelegate();
    now.isInPlace = pass.isInPlace;
    return now;
}

bool CellPainter::hasEditorFocus(const QAbstractItemModel &model, int row) const
{
    const QWidget *focus = QApplication::focusWidget();
    const QWidget *viewport = m_view->viewport();
    if (!focus || focus == viewport || !viewport->isAncestorOf(focus))
        return false;
    for (int column = 0; column < m_view->header()->count(); ++column) {
        const QWidget *editor = m_view->indexWidget(model.index(row, column));
        if (editor && (editor == focus || editor->isAncestorOf(focus)))
            return true;
    }
    return false;
}

void CellPainter::setRow(QStyleOptionViewItem *option, const QStyleOptionViewItem &base,
                         const QModelIndex &index, const PaintPass &pass) const
{
    option->state = base.state;
    if (pass.isSelected(index)) {
        option->state |= QStyle::State_Active;
        if (m_view->selectionBehavior() == QAbstractItemView::SelectRows)
            option->state |= QStyle::State_Selected;
    }
    if (option->state & QStyle::State_Enabled) {
        option->palette.setCurrentColorGroup(
            option->state & QStyle::State_Active ? QPalette::Active : QPalette::Inactive);
    }
}

void CellPainter::paintRow(QPainter *painter, const QStyleOptionViewItem &option,
                           const QModelIndex &index, const PaintPass &pass,
                           PaintBuffer *buffer) const
{
    const int y = option.rect.top() + pass.delay.y();
    const int row = index.row();
    const bool isBuffered = buffer->isOn() && !pass.isInPlace;
    QStyleOptionViewItem cell;
    bool isCellCopied = false;
    std::optional<Canvas> canvas; // asked for when a picture is missing
    for (const ColumnSlot &slot : pass.columns) {
        const QRect rect(slot.x + pass.delay.x(), y, slot.width, option.rect.height());
        if (isBuffered && paintBuffered(painter, rect, row, slot.column, pass, *buffer))
            continue;
        if (!isCellCopied)
            cell = option;
        isCellCopied = true;
        const QModelIndex cellIndex = pass.model->index(row, slot.column);
        setCell(&cell, option, slot, cellIndex, pass);
        cell.rect = rect;
        const CellSource source {cellIndex, delegateFor(cellIndex)};
        if (!isBuffered) {
            paintInPlace(painter, &cell, source);
            continue;
        }
        if (!canvas)
            canvas.emplace(*painter, m_view->viewport()->layoutDirection());
        buffer->keep(row, slot.column, paintPicture(painter, &cell, source, *canvas));
    }
    if (pass.hasEditorFocus && row == pass.currentRow)
        paintEditorFocus(painter, option, index, pass);
}

//! Makes the option of one cell out of its row's; the rectangle is left alone.
void CellPainter::setCell(QStyleOptionViewItem *cell, const QStyleOptionViewItem &row,
                          const ColumnSlot &slot, const QModelIndex &index,
                          const PaintPass &pass) const
{
    cell->features = row.features;
    if (m_view->alternatingRowColors() && index.row() % 2 == 1)
        cell->features |= QStyleOptionViewItem::Alternate;
    cell->viewItemPosition = slot.position;
    const bool isCurrentRow = index.row() == pass.currentRow;
    cell->state = row.state;
    cell->state.setFlag(QStyle::State_HasFocus, isCurrentRow);
    if (index.row() == pass.hoverRow && index.column() == pass.hoverColumn)
        cell->state |= QStyle::State_MouseOver;
    if (isCurrentRow && pass.hasEditorFocus)
        cell->state |= QStyle::State_Active;
    if (pass.isSelected(index))
        cell->state |= QStyle::State_Selected;

    QPalette::ColorGroup group = row.palette.currentColorGroup();
    if (row.state & QStyle::State_Enabled) {
        if (pass.model->flags(index) & Qt::ItemIsEnabled) {
            group = cell->state & QStyle::State_Active ? QPalette::Active : QPalette::Inactive;
        } else {
            group = QPalette::Disabled;
            cell->state &= ~QStyle::State_Enabled;
        }
    }
    cell->palette.setCurrentColorGroup(group);
    cell->showDecorationSelected = true;
}

//! Paints a cell into its rectangle: the row's panel, then the delegate.
void CellPainter::paintCell(QPainter *painter, QStyleOptionViewItem *cell,
                            const CellSource &source) const
{
    // A known style works for long to paint nothing if rows do not alternate.
    const QStyle *style = m_view->style();
    if ((cell->features & QStyleOptionViewItem::Alternate) || !isKnownStyle(*style)) {
        const QStyle::State state = cell->state;
        cell->state &= ~QStyle::State_Selected;
        style->drawPrimitive(QStyle::PE_PanelItemViewRow, cell, painter, m_view);
        cell->state = state;
    }

    if (source.delegate)
        source.delegate->paint(painter, *cell, source.index);
}

QAbstractItemDelegate *CellPainter::delegateFor(const QModelIndex &index) const
{
    if (QAbstractItemDelegate *delegate = m_view->itemDelegateForRow(index.row()))
        return delegate;
    if (QAbstractItemDelegate *delegate = m_view->itemDelegateForColumn(index.column()))
        return delegate;
    return m_view->itemDelegate();
}

//! paintCell() cut off at the edges of the cell, as a pixmap of it is.
void CellPainter::paintInPlace(QPainter *painter, QStyleOptionViewItem *cell,
                               const CellSource &source) const
{
    if (PaintTraits::of(source.delegate).staysInCell) {
        paintCell(painter, cell, source);
        return;
    }
    painter->save();
    painter->setClipRect(cell->rect, Qt::IntersectClip);
    paintCell(painter, cell, source);
    painter->restore();
}

//! Paints a cell and returns a picture of it, which the caller owns; copied from \a canvas,
//! that of the painter, where that makes no difference.
QPixmap *CellPainter::paintPicture(QPainter *painter, QStyleOptionViewItem *cell,
                                   const CellSource &source, const Canvas &canvas) const
{
    const PaintTraits traits = PaintTraits::of(source.delegate);
    if (traits.staysInCell && traits.ignoresDevice && canvas.holds(cell->rect)) {
        painter->fillRect(cell->rect, m_view->viewport()->palette().color(QPalette::Base));
        paintCell(painter, cell, source);
        return canvas.picture(cell->rect);
    }
    QPixmap *pixmap = picture(*cell, source);
    painter->drawPixmap(cell->rect, *pixmap, QRect());
    return pixmap;
}

//! A new pixmap of a cell.
QPixmap *CellPainter::picture(const QStyleOptionViewItem &cell, const CellSource &source) const
{
    const QWidget *viewport = m_view->viewport();
    QStyleOptionViewItem option = cell;
    option.rect = QRect(QPoint(0, 0), cell.rect.size());
    const double ratio = cell.widget ? cell.widget->devicePixelRatioF() : 1.0;
    auto *pixmap = new QPixmap((QSizeF(option.rect.size()) * ratio).toSize());
    pixmap->fill(viewport->palette().color(QPalette::Base));
    pixmap->setDevicePixelRatio(ratio);

    QPainter painter(pixmap); // begins as one on the viewport does
    painter.setFont(viewport->font());
    painter.setPen(viewport->palette().color(viewport->foregroundRole()));
    painter.setBackground(viewport->palette().brush(viewport->backgroundRole()));
    painter.setLayoutDirection(viewport->layoutDirection());
    paintCell(&painter, &option, source);
    return pixmap;
}

//! The frame around a row in which an editor has the focus.
void CellPainter::paintEditorFocus(QPainter *painter, const QStyleOptionViewItem &option,
                                   const QModelIndex &index, const PaintPass &pass) const
{
    const QHeaderView *header = m_view->header();
    const bool isSelected = pass.selectionModel && pass.selectionModel->isSelected(index);
    QStyleOptionFocusRect focus;
    focus.QStyleOption::operator=(option);
    focus.state |= QStyle::State_KeyboardFocusChange;
    focus.backgroundColor = option.palette.color(
        option.state & QStyle::State_Enabled ? QPalette::Normal : QPalette::Disabled,
        isSelected ? QPalette::Highlight : QPalette::Window);
    const QRect rect(-header->offset(), option.rect.top() + pass.delay.y(), header->length(),
                     option.rect.height());
    focus.rect = QStyle::visualRect(m_view->layoutDirection(), m_view->viewport()->rect(), rect);
    m_view->style()->drawPrimitive(QStyle::PE_FrameFocusRect, &focus, painter);
}
