// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "frozencolumnview.h"

#include "frozenheader.h"

#include <QItemSelection>
#include <QPaintEvent>
#include <QPainter>
#include <QScopedValueRollback>
#include <QScrollBar>

namespace {

constexpr int s_shadowWidth = 5;  // logical pixels
constexpr int s_shadowDepth = 60; // of 255, where it is darkest
constexpr int s_edgeDepth = 80;   // of 255: the line that the shadow begins with

} // namespace

FrozenColumnView::FrozenColumnView(QWidget *parent)
    : QTableFastView(parent)
{
    auto *header = new FrozenHeader;
    header->setSectionsMovable(true);
    header->setStretchLastSection(false);
    header->setDefaultAlignment(this->header()->defaultAlignment());
    setHeader(header);
}

const FrozenHeader *FrozenColumnView::columns() const
{
    return qobject_cast<const FrozenHeader *>(header());
}

void FrozenColumnView::setFrozenColumn(int column)
{
    auto *header = qobject_cast<FrozenHeader *>(this->header());
    if (!header || column == frozenColumn())
        return;
    header->setFrozenSection(column);
    viewport()->update();
    updateEditorGeometries();
}

int FrozenColumnView::frozenColumn() const
{
    return columns() ? columns()->frozenSection() : -1;
}

int FrozenColumnView::frozenColumnWidth() const
{
    return columns() ? columns()->frozenWidth() : 0;
}

//! Where the column is kept, from the top of the viewport to its bottom; empty as long as it is
//! where it belongs.
QRect FrozenColumnView::frozenRect() const
{
    QRect rect = columns() ? columns()->frozenRect() : QRect();
    if (!rect.isEmpty())
        rect.setHeight(viewport()->height());
    return rect;
}

//! Where the shadow is.
QRect FrozenColumnView::edgeRect() const
{
    const QRect frozen = frozenRect();
    if (frozen.isEmpty())
        return {};
    const int left = isRightToLeft() ? frozen.left() - s_shadowWidth : frozen.right() + 1;
    return {left, 0, s_shadowWidth, frozen.height()};
}

bool FrozenColumnView::isFrozen(const QModelIndex &index) const
{
    return index.column() == frozenColumn() && index.model() == model() && !frozenRect().isEmpty();
}

int FrozenColumnView::columnAt(int x) const
{
    return frozenRect().contains(x, 0) ? frozenColumn() : QTableFastView::columnAt(x);
}

QModelIndex FrozenColumnView::indexAt(const QPoint &point) const
{
    const QModelIndex beneath = QTableFastView::indexAt(point);
    const QRect frozen = frozenRect();
    const bool isOver = point.x() >= frozen.left() && point.x() <= frozen.right();
    return isOver && beneath.isValid() ? beneath.siblingAtColumn(frozenColumn()) : beneath;
}

QRect FrozenColumnView::visualRect(const QModelIndex &index) const
{
    const QRect rect = QTableFastView::visualRect(index);
    return isFrozen(index) ? rect.translated(columns()->frozenShift(), 0) : rect;
}

QRegion FrozenColumnView::visualRegionForSelection(const QItemSelection &selection) const
{
    QRegion region = QTableFastView::visualRegionForSelection(selection);
    const QRect frozen = frozenRect();
    const int column = frozenColumn();
    for (const QItemSelectionRange &range : selection) {
        if (frozen.isEmpty() || !range.isValid() || range.left() > column || range.right() < column)
            continue;
        const int top = coordinateForItem(range.top());
        const int bottom = coordinateForItem(range.bottom()) + rowHeight() - 1;
        region += QRect(QPoint(frozen.left(), top), QPoint(frozen.right(), bottom)) & frozen;
    }
    return region;
}

//! How many pixels of a column are beneath the frozen one, and would not be elsewhere.
int FrozenColumnView::coveredWidth(int column) const
{
    const QRect frozen = frozenRect();
    const int left = columnViewportPosition(column);
    const int right = left + columnWidth(column);
    if (frozen.isEmpty() || column == frozenColumn())
        return 0;
    return qMax(isRightToLeft() ? right - frozen.left() : frozen.right() + 1 - left, 0);
}

void FrozenColumnView::scrollTo(const QModelIndex &index, ScrollHint hint)
{
    QScrollBar *bar = horizontalScrollBar();
    const int value = bar->value();
    QTableFastView::scrollTo(index, hint);
    if (index.column() == frozenColumn() && frozenColumnWidth() > 0 && index.isValid()) {
        bar->setValue(value);
        return;
    }
    // The library makes room only for columns that have left the viewport.
    const bool isPerPixel = horizontalScrollMode() == ScrollPerPixel;
    while (hint != PositionAtCenter && index.isValid() && index.model() == model()
           && coveredWidth(index.column()) > 0 && bar->value() > bar->minimum()) {
        bar->setValue(bar->value() - (isPerPixel ? coveredWidth(index.column()) : 1));
    }
}

void FrozenColumnView::drawRow(QPainter *painter, const QStyleOptionViewItem &option,
                               const QModelIndex &index) const
{
    QTableFastView::drawRow(painter, option, index);
    const QRect frozen = frozenRect();
    if (frozen.isEmpty())
        return;
    const QRect cell(frozen.left(), option.rect.top(), frozen.width(), option.rect.height());
    const int visual = header()->visualIndex(frozenColumn());
    const QScopedValueRollback frozenOnly(leftAndRight, {visual, visual});
    painter->save();
    painter->setClipRect(cell, Qt::IntersectClip);
    painter->fillRect(cell, viewport()->palette().brush(viewport()->backgroundRole()));
    painter->translate(columns()->frozenShift(), 0);
    QTableFastView::drawRow(painter, option, index);
    painter->restore();
}

void FrozenColumnView::paintEvent(QPaintEvent *event)
{
    QTableFastView::paintEvent(event);
    if (event->region().intersects(edgeRect()))
        paintEdge();
}

//! A line that is seen on any background, and a shadow that fades.
void FrozenColumnView::paintEdge()
{
    const QRect edge = edgeRect();
    QPainter painter(viewport());
    QLinearGradient shadow(edge.topLeft(), edge.topRight() + QPoint(1, 0));
    const bool isMirrored = isRightToLeft();
    shadow.setColorAt(isMirrored ? 1 : 0, QColor(0, 0, 0, s_shadowDepth));
    shadow.setColorAt(isMirrored ? 0 : 1, Qt::transparent);
    painter.fillRect(edge, shadow);
    QColor line = palette().color(QPalette::Text);
    line.setAlpha(s_edgeDepth);
    painter.fillRect(isMirrored ? edge.right() : edge.left(), 0, 1, edge.height(), line);
}

//! The view moves what it has painted, the frozen column as well.
void FrozenColumnView::scrollContentsBy(int dx, int dy)
{
    const QRect before = frozenRect() | edgeRect();
    const int offset = horizontalOffset();
    QTableFastView::scrollContentsBy(dx, dy);
    const int moved = isRightToLeft() ? horizontalOffset() - offset : offset - horizontalOffset();
    if (moved == 0)
        return;
    const QRect now = frozenRect() | edgeRect();
    viewport()->update(QRegion(before) + before.translated(moved, 0) + now);
    if (columns())
        header()->viewport()->update();
    if (!viewport()->children().isEmpty()) {
        executeDelayedItemsLayout(); // a pending one would keep editors where they are
        updateEditorGeometries();
    }
}

//! The view moves the columns beside it, on which the frozen one may be.
void FrozenColumnView::columnResized(int column, int oldSize, int newSize)
{
    const bool wasScrolled = !frozenRect().isEmpty();
    QTableFastView::columnResized(column, oldSize, newSize);
    if (wasScrolled || !frozenRect().isEmpty())
        viewport()->update();
}

void FrozenColumnView::updateEditorGeometries()
{
    QTableFastView::updateEditorGeometries();
    const QRect frozen = frozenRect();
    const QList<QWidget *> editors =
        viewport()->findChildren<QWidget *>(QString(), Qt::FindDirectChildrenOnly);
    for (QWidget *editor : editors) {
        const QRect covered = editor->geometry() & frozen;
        const int row = rowAt(editor->geometry().center().y());
        const QModelIndex kept = row < 0 ? QModelIndex() : model()->index(row, frozenColumn());
        if (covered.isEmpty() || indexWidget(kept) == editor)
            editor->clearMask();
        else
            editor->setMask(QRegion(editor->rect())
                            - covered.translated(-editor->geometry().topLeft()));
    }
}
