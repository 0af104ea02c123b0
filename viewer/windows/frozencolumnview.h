// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef FROZENCOLUMNVIEW_H
#define FROZENCOLUMNVIEW_H

#include "qtablefastview.h"

class FrozenHeader;

/*!
 * \brief A table that keeps its first column in sight while others are scrolled beneath it.
 *
 * It is the example for QTableFastView::frozenColumnWidth(). The column stays at the left edge, or
 * at the right one if the view is laid out from right to left. What is painted there is found
 * there: by indexAt(), visualRect(), clicks and tool tips. Nothing is different as long as the view
 * is not scrolled horizontally.
 *
 * Behind the cells of the column there has to be one colour, the viewport's.
 */
class FrozenColumnView : public QTableFastView
{
    Q_OBJECT

public:
    //! A view with a FrozenHeader. Without one, if it is given another, it freezes nothing.
    explicit FrozenColumnView(QWidget *parent = nullptr);

    //! Keeps the logical \a column in sight, −1 none, wherever it is the first one that is shown
    //! and leaves half of the view to others.
    void setFrozenColumn(int column);
    //! As set. −1 at first.
    int frozenColumn() const;

    //! The column (logical index) that is seen at \a x in viewport pixels, or −1.
    int columnAt(int x) const;

    QRect visualRect(const QModelIndex &index) const override;
    QModelIndex indexAt(const QPoint &point) const override;
    //! Never scrolls horizontally for the frozen column, and lets no other cell stay beneath it.
    void scrollTo(const QModelIndex &index, ScrollHint hint = EnsureVisible) override;

public Q_SLOTS:
    void columnResized(int column, int oldSize, int newSize) override;

protected:
    int frozenColumnWidth() const override;
    void drawRow(QPainter *painter, const QStyleOptionViewItem &option,
                 const QModelIndex &index) const override;
    void paintEvent(QPaintEvent *event) override;
    void scrollContentsBy(int dx, int dy) override;
    QRegion visualRegionForSelection(const QItemSelection &selection) const override;

protected Q_SLOTS:
    //! Cuts off what of an editor is beneath the frozen column.
    void updateEditorGeometries() override;

private:
    const FrozenHeader *columns() const;
    QRect frozenRect() const;
    QRect edgeRect() const;
    bool isFrozen(const QModelIndex &index) const;
    int coveredWidth(int column) const;
    void paintEdge();
};

#endif // FROZENCOLUMNVIEW_H
