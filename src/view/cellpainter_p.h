// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef CELLPAINTER_P_H
#define CELLPAINTER_P_H

#include "celllook_p.h"
#include "columnstrip_p.h"

#include <QItemSelection>
#include <QPair>
#include <QPoint>
#include <QRegion>

class Canvas;
class PaintBuffer;
class QItemSelectionModel;
class QPainter;
class QPixmap;
class QTableFastView;
struct RowGeometry;

//! What all rows of one paint event share.
struct PaintPass
{
    const QAbstractItemModel *model = nullptr;
    const QItemSelectionModel *selectionModel = nullptr; //!< may be null
    const QRegion *region = nullptr;                     //!< what is painted; null: everything
    QPair<int, int> visual;                              //!< the first and the last of these:
    ColumnStrip columns;                                 //!< all that are painted
    QPoint delay;                                        //!< added to every cell's rectangle
    bool isBackgroundPlain = false;                      //!< one opaque colour is behind the cells
    bool isInPlace = false;      //!< no picture of a cell would be the right one
    QItemSelection selection;    //!< what of the selection touches the rows on screen
    int hoverRow = -1;           //!< of the cell under the pointer
    int hoverColumn = -1;        //!< the same
    int currentRow = -1;         //!< the selection model's current row
    bool hasEditorFocus = false; //!< an editor in the current row has the focus

    //! Whether a cell is selected. Spares the selection model, which walks all of its ranges,
    //! where the selection does not reach.
    bool isSelected(const QModelIndex &index) const;
};

/*!
 * \brief Paints the rows of a view: options, the row's panel, delegates, the focus frame.
 *
 * Knows nothing of where rows are; pictures of cells go through a PaintBuffer. All lengths
 * are logical pixels of the viewport.
 */
class CellPainter
{
public:
    //! \a view must outlive it.
    explicit CellPainter(const QTableFastView *view)
        : m_view(view)
    {
    }

    //! Completes a pass, of which models, region, columns and hovered cell are known, with
    //! what the view says now; \a rows are those on screen.
    void complete(PaintPass *pass, const RowGeometry &rows) const;
    //! Completes what every row's option begins with, which the view has initialized.
    void initRows(QStyleOptionViewItem *option) const;
    //! What the cells of a pass look like.
    CellLook look(const QStyleOptionViewItem &rowOption, const PaintPass &pass) const;

    //! Gives the option of one row, which is that of another, its own state; its rectangle is
    //! left alone. \a index is the row's cell in column 0, \a base what rows begin with.
    void setRow(QStyleOptionViewItem *option, const QStyleOptionViewItem &base,
                const QModelIndex &index, const PaintPass &pass) const;
    //! Paints the row at \a option's rectangle.
    void paintRow(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index,
                  const PaintPass &pass, PaintBuffer *buffer) const;

    //! Whether the index widget of a cell in \a row of \a model has the focus, or holds it.
    bool hasEditorFocus(const QAbstractItemModel &model, int row) const;

private:
    //! Where the content of a cell comes from.
    struct CellSource
    {
        QModelIndex index;
        const QAbstractItemDelegate *delegate; //!< may be null
    };

    bool paintsInPlace(const PaintPass &pass) const;
    void setCell(QStyleOptionViewItem *cell, const QStyleOptionViewItem &row,
                 const ColumnSlot &slot, const QModelIndex &index, const PaintPass &pass) const;
    void paintCell(QPainter *painter, QStyleOptionViewItem *cell, const CellSource &source) const;
    void paintInPlace(QPainter *painter, QStyleOptionViewItem *cell,
                      const CellSource &source) const;
    QPixmap *paintPicture(QPainter *painter, QStyleOptionViewItem *cell, const CellSource &source,
                          const Canvas &canvas) const;
    QPixmap *picture(const QStyleOptionViewItem &cell, const CellSource &source) const;
    void paintEditorFocus(QPainter *painter, const QStyleOptionViewItem &option,
                          const QModelIndex &index, const PaintPass &pass) const;
    QAbstractItemDelegate *delegateFor(const QModelIndex &index) const;

    const QTableFastView *m_view;
};

#endif // CELLPAINTER_P_H
