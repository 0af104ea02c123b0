// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef RECORDEDVIEW_H
#define RECORDEDVIEW_H

#include "qtablefastview.h"
#include "viewpictures.h"

#include <QHeaderView>
#include <QPainter>
#include <QStyledItemDelegate>
#include <QTest>

#include <algorithm>

constexpr int rowHeight = 20;
constexpr QAbstractItemView::ScrollMode perPixel = QAbstractItemView::ScrollPerPixel;

//! Tells what it was asked to paint; rows are as high as wanted.
class Recorder : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;
    void paint(QPainter *painter, const QStyleOptionViewItem &option,
               const QModelIndex &index) const override
    {
        painted.append(index);
        options.append(option);
        painter->fillRect(
            option.rect,
            QColor::fromHsv((index.row() % 360 * 37 + index.column() * 90) % 360, 200, 200));
    }
    QSize sizeHint(const QStyleOptionViewItem &, const QModelIndex &index) const override
    {
        isAskedWithoutIndex = isAskedWithoutIndex || !index.isValid();
        return {50 + index.row(), height};
    }
    int timesPainted(int row, int column) const
    {
        return int(std::count_if(painted.begin(), painted.end(), [=](const QModelIndex &index) {
            return index.row() == row && index.column() == column;
        }));
    }
    QStyleOptionViewItem optionOf(int row, int column) const
    {
        for (qsizetype i = painted.size() - 1; i >= 0; --i) {
            if (painted.at(i).row() == row && painted.at(i).column() == column)
                return options.at(i);
        }
        return {};
    }
    void forget()
    {
        painted.clear();
        options.clear();
    }

    int height = rowHeight;
    mutable bool isAskedWithoutIndex = false;
    mutable QModelIndexList painted;
    mutable QList<QStyleOptionViewItem> options;
};

//! Shows what a Recorder paints, and lets tests at what views keep from others.
class View : public QTableFastView
{
public:
    explicit View(QAbstractItemModel *model = nullptr)
    {
        QFont low; // the system's may be higher than the delegate's rows
        low.setPixelSize(::rowHeight / 4);
        setFont(low);
        setItemDelegate(&recorder);
        updateItemHeight();
        setModel(model);
        for (int column = 0; model && column < model->columnCount(); ++column)
            header()->resizeSection(column, 60);
    }
    //! The viewport gets exactly this size.
    void showWith(int width, int height)
    {
        resize(400, 300);
        show();
        settleEvents();
        resize(size() + QSize(width, height) - viewport()->size());
        settleEvents();
        QCOMPARE(viewport()->size(), QSize(width, height));
    }
    QScrollBar *bar() const { return verticalScrollBar(); }
    int paintEvents = 0;
    QList<QRegion> regions; //!< of the paint events

    using QTableFastView::atRegion;
    using QTableFastView::coordinateForItem;
    using QTableFastView::draw;
    using QTableFastView::getFirstVisibleItem;
    using QTableFastView::horizontalOffset;
    using QTableFastView::initViewItemOption;
    using QTableFastView::isIndexHidden;
    using QTableFastView::itemAtCoordinate;
    using QTableFastView::moveCursor;
    using QTableFastView::pageDown;
    using QTableFastView::pageUp;
    using QTableFastView::setSelection;
    using QTableFastView::startAndEndColumns;
    using QTableFastView::updatedItemHeight;
    using QTableFastView::visualRegionForSelection;
    using CursorAction = QAbstractItemView::CursorAction;
    using QAbstractItemView::DraggingState;
    using QAbstractItemView::EditingState;
    using QAbstractItemView::MoveDown;
    using QAbstractItemView::MoveEnd;
    using QAbstractItemView::MoveHome;
    using QAbstractItemView::MoveLeft;
    using QAbstractItemView::MoveNext;
    using QAbstractItemView::MovePageDown;
    using QAbstractItemView::MovePageUp;
    using QAbstractItemView::MovePrevious;
    using QAbstractItemView::MoveRight;
    using QAbstractItemView::MoveUp;
    using QAbstractItemView::NoState;
    using QAbstractItemView::state;
    using QTableFastView::currentFirst;
    using QTableFastView::currentLast;
    using QTableFastView::dragMoveEvent;
    using QTableFastView::frozenColumnWidth;
    using QTableFastView::m_dropIndicatorRect;
    using QTableFastView::m_itemHeight;
    using QTableFastView::m_pixmapCacheIndexed;
    using QTableFastView::m_viewportMargins;
    using QTableFastView::setState;
    using QTableFastView::stayAtEnd;
    using QTableFastView::stayAtTop;

    Recorder recorder;

protected:
    void paintEvent(QPaintEvent *event) override
    {
        ++paintEvents;
        regions.append(event->region());
        QTableFastView::paintEvent(event);
    }
};

inline void pressKey(QWidget *widget, Qt::Key key)
{
    QTest::keyClick(widget, key);
}

inline void addScrollModes()
{
    QTest::addColumn<bool>("isPerPixel");
    QTest::newRow("rows") << false;
    QTest::newRow("pixels") << true;
}

inline void addDirections()
{
    QTest::addColumn<bool>("isRightToLeft");
    QTest::newRow("left to right") << false;
    QTest::newRow("right to left") << true;
}

#endif // RECORDEDVIEW_H
