// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef REFERENCE_H
#define REFERENCE_H

#include <QAbstractItemDelegate>
#include <QImage>

#include "itemdelegate.h"
#include "qtablefastview.h"

//! Paints a cell as a colour made of everything that its look may depend on.
class ColorDelegate : public QAbstractItemDelegate
{
    Q_OBJECT

public:
    explicit ColorDelegate(uint salt, QObject *parent = nullptr);
    void paint(QPainter *painter, const QStyleOptionViewItem &option,
               const QModelIndex &index) const override;
    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override;
    QWidget *createEditor(QWidget *parent, const QStyleOptionViewItem &option,
                          const QModelIndex &index) const override;
    void updateEditorGeometry(QWidget *editor, const QStyleOptionViewItem &option,
                              const QModelIndex &index) const override;

private:
    uint m_salt;
};

//! The library's own cells: with lines, without, or with marks, as \a salt has it.
class CellDelegate : public Vantix::ItemDelegate
{
    Q_OBJECT

public:
    CellDelegate(uint salt, QAbstractItemView *view);
    //! An editor that keeps its size.
    QWidget *createEditor(QWidget *parent, const QStyleOptionViewItem &option,
                          const QModelIndex &index) const override;
};

//! A view that tells what it holds.
class SoakView : public QTableFastView
{
    Q_OBJECT

public:
    using QTableFastView::coordinateForItem;
    using QTableFastView::getFirstVisibleItem;
    using QTableFastView::initViewItemOption;
    using QTableFastView::QTableFastView;

    int itemHeight() const { return m_itemHeight; }

    //! What the window holds of the viewport.
    QImage maintainedPicture() const;
    //! The viewport painted from scratch, in the plainest way and without the view's
    //! own painting code.
    QImage plainPicture() const;
    //! The viewport painted from scratch by the view, with nothing kept; for backgrounds
    //! and ratios that plainPicture() does not know.
    QImage renderedPicture();

    //! What the window holds of the vertical scroll bar.
    QImage maintainedBar() const;
    //! The vertical scroll bar as one looks that keeps no picture.
    QImage plainBar();

private:
    void paintPlainRow(QPainter *painter, int row, int y) const;
    void paintPlainCell(QPainter *painter, const QStyleOptionViewItem &rowOption, int row,
                        int column, const QRect &rect) const;
    bool rowHoldsFocus(int row) const;
    QImage picturePart(const QImage &window, const QWidget &widget) const;
};

#endif // REFERENCE_H
