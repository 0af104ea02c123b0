// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "reference.h"

#include <QApplication>
#include <QBackingStore>
#include <QHeaderView>
#include <QLineEdit>
#include <QPainter>
#include <QPixmapCache>
#include <QScrollBar>
#include <QStyle>
#include <QStyleOptionViewItem>

#include <utility>

ColorDelegate::ColorDelegate(uint salt, QObject *parent)
    : QAbstractItemDelegate(parent)
    , m_salt(salt)
{
}

void ColorDelegate::paint(QPainter *painter, const QStyleOptionViewItem &option,
                          const QModelIndex &index) const
{
    const QStyle::State seen = option.state
        & (QStyle::State_Selected | QStyle::State_Enabled | QStyle::State_HasFocus
           | QStyle::State_Active);
    const QPalette::ColorGroup group = option.palette.currentColorGroup();
    const size_t hash =
        qHashMulti(m_salt, index.data().toString(), int(seen), int(group),
                   bool(option.features & QStyleOptionViewItem::Alternate),
                   option.palette.color(QPalette::Text).rgba(), int(option.direction));
    painter->fillRect(option.rect, QColor::fromRgb(QRgb(hash) & 0xffffff));
    // The edges tell a shifted or cut picture from a whole one.
    const QRect &rect = option.rect;
    painter->fillRect(QRect(rect.topLeft(), QSize(3, 2)) & rect, Qt::white);
    painter->fillRect(QRect(rect.bottomRight() - QPoint(1, 2), QSize(2, 3)) & rect, Qt::black);
}

QSize ColorDelegate::sizeHint(const QStyleOptionViewItem & /*option*/,
                              const QModelIndex & /*index*/) const
{
    return {40, 15};
}

QWidget *ColorDelegate::createEditor(QWidget *parent, const QStyleOptionViewItem & /*option*/,
                                     const QModelIndex & /*index*/) const
{
    return new QLineEdit(parent);
}

void ColorDelegate::updateEditorGeometry(QWidget *editor, const QStyleOptionViewItem &option,
                                         const QModelIndex & /*index*/) const
{
    editor->setGeometry(option.rect);
}

CellDelegate::CellDelegate(uint salt, QAbstractItemView *view)
    : ItemDelegate(view)
{
    // Lines of directly painted cells reach into their neighbours, so that the order
    // of painting would show.
    setDrawIndicator(salt % 3 == 0);
    setDrawFrame(salt % 3 == 1);
}

QWidget *CellDelegate::createEditor(QWidget *parent, const QStyleOptionViewItem & /*option*/,
                                    const QModelIndex & /*index*/) const
{
    return new QLineEdit(parent);
}

QImage SoakView::maintainedPicture() const
{
    const auto *image = static_cast<const QImage *>(window()->backingStore()->paintDevice());
    return picturePart(*image, *viewport());
}

//! The part of a picture of the window that \a widget has.
QImage SoakView::picturePart(const QImage &window, const QWidget &widget) const
{
    const double ratio = window.devicePixelRatio();
    const QPointF place = widget.mapTo(this->window(), QPoint(0, 0));
    QImage part =
        window.copy(QRect((place * ratio).toPoint(), (QSizeF(widget.size()) * ratio).toSize()))
            .convertToFormat(QImage::Format_RGB32);
    part.setDevicePixelRatio(1);
    return part;
}

QImage SoakView::renderedPicture()
{
    const bool isBuffered = std::exchange(m_usePixmapCacheIndexed, false);
    QPixmapCache::clear();
    const double ratio = devicePixelRatioF();
    QImage picture((QSizeF(window()->size()) * ratio).toSize(), QImage::Format_RGB32);
    picture.setDevicePixelRatio(ratio);
    window()->render(&picture);
    m_usePixmapCacheIndexed = isBuffered;
    return picturePart(picture, *viewport());
}

QImage SoakView::maintainedBar() const
{
    const auto *image = static_cast<const QImage *>(window()->backingStore()->paintDevice());
    return picturePart(*image, *verticalScrollBar());
}

QImage SoakView::plainBar()
{
    const QScrollBar *shown = verticalScrollBar();
    QScrollBar plain(Qt::Vertical, this);
    plain.resize(shown->size());
    plain.setRange(shown->minimum(), shown->maximum());
    plain.setPageStep(shown->pageStep());
    plain.setValue(shown->value());
    QImage picture = plain.grab().toImage().convertToFormat(QImage::Format_RGB32);
    picture.setDevicePixelRatio(1);
    return picture;
}

QImage SoakView::plainPicture() const
{
    QImage image(viewport()->size(), QImage::Format_RGB32);
    image.fill(viewport()->palette().color(QPalette::Base));
    const QAbstractItemModel *shown = model();
    if (!shown)
        return image;
    QPixmapCache::clear(); // a picture kept under a wrong key would be right here as well
    QPainter painter(&image);
    painter.setFont(viewport()->font());
    painter.setLayoutDirection(viewport()->layoutDirection());
    const int value = verticalScrollBar()->value();
    const bool isPerPixel = verticalScrollMode() == ScrollPerPixel;
    for (int row = 0; row < shown->rowCount(); ++row) {
        const int y = isPerPixel ? row * m_itemHeight - value : (row - value) * m_itemHeight;
        if (y + m_itemHeight > 0 && y < image.height())
            paintPlainRow(&painter, row, y);
    }
    return image;
}

bool SoakView::rowHoldsFocus(int row) const
{
    const QWidget *focus = QApplication::focusWidget();
    for (int column = 0; focus && column < model()->columnCount(); ++column) {
        const QWidget *editor = indexWidget(model()->index(row, column));
        if (editor && (editor == focus || editor->isAncestorOf(focus)))
            return true;
    }
    return false;
}

void SoakView::paintPlainRow(QPainter *painter, int row, int y) const
{
    QStyleOptionViewItem option;
    initViewItemOption(&option);
    option.initFrom(this);
    option.state &= ~QStyle::State_MouseOver;
    if (selectionModel()->isSelected(model()->index(row, 0))) {
        option.state |= QStyle::State_Active;
        if (selectionBehavior() == SelectRows)
            option.state |= QStyle::State_Selected;
    }
    option.rect = QRect(0, y, viewport()->width(), m_itemHeight);
    if (option.state & QStyle::State_Enabled) {
        option.palette.setCurrentColorGroup(
            option.state & QStyle::State_Active ? QPalette::Active : QPalette::Inactive);
    }
    for (int column = 0; column < header()->count(); ++column) {
        const QRect rect(header()->sectionViewportPosition(column), y,
                         header()->sectionSize(column), m_itemHeight);
        if (!header()->isSectionHidden(column) && rect.intersects(viewport()->rect()))
            paintPlainCell(painter, option, row, column, rect);
    }
    const QModelIndex current = selectionModel()->currentIndex();
    if (!current.isValid() || current.row() != row || !rowHoldsFocus(row))
        return;
    QStyleOptionFocusRect frame;
    frame.QStyleOption::operator=(option);
    frame.state |= QStyle::State_KeyboardFocusChange;
    const bool isSelected = selectionModel()->isSelected(model()->index(row, 0));
    frame.backgroundColor = option.palette.color(
        option.state & QStyle::State_Enabled ? QPalette::Normal : QPalette::Disabled,
        isSelected ? QPalette::Highlight : QPalette::Window);
    frame.rect =
        QStyle::visualRect(layoutDirection(), viewport()->rect(),
                           QRect(-header()->offset(), y, header()->length(), m_itemHeight));
    style()->drawPrimitive(QStyle::PE_FrameFocusRect, &frame, painter);
}

void SoakView::paintPlainCell(QPainter *painter, const QStyleOptionViewItem &rowOption, int row,
                              int column, const QRect &rect) const
{
    const QModelIndex index = model()->index(row, column);
    const QModelIndex current = selectionModel()->currentIndex();
    QStyleOptionViewItem cell = rowOption;
    cell.rect = rect;
    cell.showDecorationSelected = true;
    if (alternatingRowColors() && row % 2)
        cell.features |= QStyleOptionViewItem::Alternate;
    cell.state.setFlag(QStyle::State_HasFocus, current.isValid() && current.row() == row);
    if (current.isValid() && current.row() == row && rowHoldsFocus(row))
        cell.state |= QStyle::State_Active;
    if (selectionModel()->isSelected(index))
        cell.state |= QStyle::State_Selected;
    if (cell.state & QStyle::State_Enabled) {
        const bool isEnabled = model()->flags(index) & Qt::ItemIsEnabled;
        const bool isActive = cell.state & QStyle::State_Active;
        cell.state.setFlag(QStyle::State_Enabled, isEnabled);
        cell.palette.setCurrentColorGroup(!isEnabled     ? QPalette::Disabled
                                              : isActive ? QPalette::Active
                                                         : QPalette::Inactive);
    }
    const QStyle::State state = cell.state;
    cell.state &= ~QStyle::State_Selected;
    style()->drawPrimitive(QStyle::PE_PanelItemViewRow, &cell, painter, this);
    cell.state = state;
    const QAbstractItemDelegate *delegate = itemDelegateForRow(row);
    if (!delegate)
        delegate = itemDelegateForColumn(column);
    if (!delegate)
        delegate = itemDelegate();
    delegate->paint(painter, cell, index);
}
