// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "frozenheader.h"

#include <QHelpEvent>
#include <QMouseEvent>
#include <QPainter>

#include <utility>

FrozenHeader::FrozenHeader(QWidget *parent)
    : QHeaderView(Qt::Horizontal, parent)
{
    connect(this, &QHeaderView::sectionResized, this, &FrozenHeader::repaintFrozen);
    connect(this, &QHeaderView::sortIndicatorChanged, this, &FrozenHeader::repaintFrozen);
}

void FrozenHeader::setFrozenSection(int section)
{
    if (section == m_section)
        return;
    m_section = section;
    viewport()->update();
}

void FrozenHeader::setModel(QAbstractItemModel *model)
{
    if (this->model())
        disconnect(this->model(), &QAbstractItemModel::headerDataChanged, this,
                   &FrozenHeader::repaintFrozen);
    QHeaderView::setModel(model);
    if (model)
        connect(model, &QAbstractItemModel::headerDataChanged, this, &FrozenHeader::repaintFrozen);
}

int FrozenHeader::frozenWidth() const
{
    if (m_section < 0 || m_section >= count() || isSectionHidden(m_section))
        return 0;
    for (int visual = visualIndex(m_section) - 1; visual >= 0; --visual) {
        if (!isSectionHidden(logicalIndex(visual)))
            return 0;
    }
    const int width = sectionSize(m_section);
    return width <= viewport()->width() / 2 ? width : 0;
}

//! Where the section is kept.
int FrozenHeader::homeOfFrozen() const
{
    return isRightToLeft() ? viewport()->width() - sectionSize(m_section) : 0;
}

int FrozenHeader::frozenShift() const
{
    return offset() <= 0 || frozenWidth() == 0
        ? 0
        : homeOfFrozen() - sectionViewportPosition(m_section);
}

QRect FrozenHeader::frozenRect() const
{
    return frozenShift() == 0 ? QRect()
                              : QRect(homeOfFrozen(), 0, frozenWidth(), viewport()->height());
}

void FrozenHeader::repaintFrozen()
{
    viewport()->update(frozenRect());
}

bool FrozenHeader::viewportEvent(QEvent *event)
{
    switch (event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseMove:
    case QEvent::MouseButtonRelease:
        return mouseEvent(*static_cast<QMouseEvent *>(event)) || QHeaderView::viewportEvent(event);
    case QEvent::HoverEnter:
    case QEvent::HoverMove:
    case QEvent::HoverLeave:
        return hoverEvent(*static_cast<QHoverEvent *>(event)) || QHeaderView::viewportEvent(event);
    case QEvent::ToolTip:
    case QEvent::WhatsThis: {
        const auto *help = static_cast<QHelpEvent *>(event);
        if (!frozenRect().contains(help->pos()))
            break;
        QHelpEvent moved(help->type(), help->pos() - QPoint(frozenShift(), 0), help->globalPos());
        return QHeaderView::viewportEvent(&moved);
    }
    default:
        break;
    }
    return QHeaderView::viewportEvent(event);
}

//! Whether \a event is one of the frozen section, which has taken it then as if it was where it
//! belongs.
bool FrozenHeader::hoverEvent(const QHoverEvent &event)
{
    repaintFrozen(); // it may be left, too
    if (event.type() == QEvent::HoverLeave || !frozenRect().contains(event.position().toPoint()))
        return false;
    const QPointF shift(frozenShift(), 0);
    QHoverEvent moved(event.type(), event.position() - shift,
#if QT_VERSION >= QT_VERSION_CHECK(6, 3, 0)
                      event.globalPosition(),
#endif
                      event.oldPosF() - shift, event.modifiers());
    return QHeaderView::viewportEvent(&moved);
}

//! Whether \a x is where the frozen section is dragged wider.
bool FrozenHeader::isGrip(int x) const
{
    const QRect frozen = frozenRect();
    const int width = style()->pixelMetric(QStyle::PM_HeaderGripMargin, nullptr, this);
    const int distance = isRightToLeft() ? x - frozen.left() : frozen.right() - x;
    return distance >= 0 && distance < width && sectionResizeMode(m_section) == Interactive;
}

//! The same of the mouse. While a button is held that was pressed over the section, what the
//! pointer does is about it, wherever that is.
bool FrozenHeader::mouseEvent(const QMouseEvent &event)
{
    const QPoint place = event.position().toPoint();
    const bool isOver = frozenRect().contains(place);
    const bool isPress =
        event.type() == QEvent::MouseButtonPress || event.type() == QEvent::MouseButtonDblClick;
    repaintFrozen();
    if (event.type() == QEvent::MouseMove && event.buttons() == Qt::NoButton) {
        if (isOver)
            setCursor(isGrip(place.x()) ? Qt::SplitHCursor : Qt::ArrowCursor);
        return isOver;
    }
    if (isPress) {
        m_isPressed = isOver;
        m_shift = frozenShift();
        setFirstSectionMovable(frozenRect().isEmpty());
    }
    if (!m_isPressed)
        return false;
    m_isPressed = event.buttons() != Qt::NoButton;
    if (resizeFrozen(event))
        return true;
    QMouseEvent moved(event.type(), event.position() - QPointF(m_shift, 0), event.scenePosition(),
                      event.globalPosition(), event.button(), event.buttons(), event.modifiers(),
                      event.pointingDevice());
    QHeaderView::viewportEvent(&moved);
    return true;
}

//! Whether \a event begins, goes on with or ends dragging the frozen section wider: the base class
//! bears no pointer at the left of the header.
bool FrozenHeader::resizeFrozen(const QMouseEvent &event)
{
    const int x = event.position().toPoint().x();
    if (event.type() == QEvent::MouseButtonDblClick && isGrip(x)) {
        Q_EMIT sectionHandleDoubleClicked(m_section);
        return true;
    }
    if (event.type() == QEvent::MouseButtonPress && event.button() == Qt::LeftButton && isGrip(x)) {
        m_resizedFrom = x;
        m_resizedWidth = sectionSize(m_section);
    }
    if (m_resizedWidth < 0)
        return false;
    const int added = isRightToLeft() ? m_resizedFrom - x : x - m_resizedFrom;
    resizeSection(m_section, qMax(m_resizedWidth + added, minimumSectionSize()));
    if (event.type() == QEvent::MouseButtonRelease)
        m_resizedWidth = -1;
    return true;
}

void FrozenHeader::paintEvent(QPaintEvent *event)
{
    QHeaderView::paintEvent(event);
    // A header that is scrolled moves what it has painted, the frozen section as well.
    if (std::exchange(m_paintedOffset, offset()) != offset()
        && event->rect() != viewport()->rect()) {
        viewport()->update();
    }
    if (event->region().intersects(frozenRect()))
        paintFrozen();
}

void FrozenHeader::paintFrozen()
{
    const QRect rect = frozenRect();
    QPainter painter(viewport());
    painter.fillRect(rect, viewport()->palette().brush(viewport()->backgroundRole()));
    paintSection(&painter, rect, m_section);
}
