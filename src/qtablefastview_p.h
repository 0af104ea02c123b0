// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef QTABLEFASTVIEW_P_H
#define QTABLEFASTVIEW_P_H

#include "view/autoscrollhold_p.h"
#include "view/cellpainter_p.h"
#include "view/columnscroll_p.h"
#include "view/columnstrip_p.h"
#include "view/connections_p.h"
#include "view/cursormoves_p.h"
#include "view/edgekeeper_p.h"
#include "view/headercolumns_p.h"
#include "view/paintbuffer_p.h"
#include "view/pixelmover_p.h"
#include "view/quietbar_p.h"
#include "view/rangeanchor_p.h"
#include "view/rowchanges_p.h"
#include "view/rowgeometry_p.h"
#include "view/showncolumns_p.h"

#include <QHash>
#include <QItemSelection>
#include <QLocale>
#include <QObject>
#include <QPersistentModelIndex>
#include <QPoint>
#include <QPointer>
#include <QRegion>
#include <QStyle>
#include <QStyleOptionViewItem>

class KeyboardSearch;
class QItemSelectionModel;
class QKeyEvent;
class QMouseEvent;
class QTableFastView;

/*!
 * \brief What a QTableFastView keeps to itself: the bookkeeping that lets the paint
 * buffer and the pixels on screen survive changes.
 */
class QTableFastViewPrivate : public QObject
{
    Q_OBJECT

public:
    explicit QTableFastViewPrivate(QTableFastView *q);

    bool eventFilter(QObject *object, QEvent *event) override;

    // Geometry
    int rowCount() const;
    RowScale scale() const;
    RowGeometry rows() const;
    QRect rowStrip(int row) const;
    HeaderColumns columns() const;
    ColumnStrip seenColumns() const;
    ColumnScroll columnScroll() const;
    void updateRowStrip(int row);
    bool isPerPixel() const;

    // Scrolling
    void setRangeQuietly();
    QuietBar quietBar() const;
    void noticeContentSize();
    void movePixels(qint64 oldTop, int start, int count);

    // The paint buffer
    void moveCachedRows(int start, int end, int row);
    void evictOutside();
    void dropParity(int fromRow, int toRow, int count);
    void dropLookOfRowDelegates();
    void repaintAll();
    QHash<int, DelegateMark> seenRowDelegates() const;

    // Painting
    void hoverAt(const QEvent &event);
    void updateHover(const QModelIndex &index);
    PaintPass paintPass(const QRegion *region) const;
    void prepareBuffer(const QStyleOptionViewItem &option, const PaintPass &pass);
    // Current index and selection
    CursorMoves cursorMoves() const;
    QModelIndex moveRight(const QModelIndex &current);
    QModelIndex moveLeft(const QModelIndex &current);
    QModelIndex endHorizontalMove(const QModelIndex &current);
    void repaintSelection(const QItemSelection &selection);
    QModelIndex standardMove(int action, Qt::KeyboardModifiers modifiers) const;
    QModelIndex moveByRows(int action);
    QModelIndex moveAmongColumns(const QModelIndex &current, int action, bool isWholeTable) const;
    bool isWholeColumnSelected(int column) const;
    bool selectDragged(const QRect &rect, QItemSelectionModel::SelectionFlags command);
    void baseKeyPress(QKeyEvent *event);
    void noticePress(const QMouseEvent &event);

    // Model changes
    QModelIndex edgeToFollow(int start, int end);
    void followEdge(const QModelIndex &target, bool isConsistent);
    QModelIndex edgeCell(EdgeKeeper::Edge edge) const;
    bool isEditing() const;
    void followReset();
    void columnsChanged();
    void noticeUntoldRows();

    // Models that have more rows than they tell at first
    bool mayFetch() const;
    void fetchMore();
    void fetchIfEndIsSeen();
    template<typename Work> void whileFetching(const Work &work);
    void baseCurrentChanged(const QModelIndex &current, const QModelIndex &previous);

public Q_SLOTS:
    void modelDestroyed();
    void selectionModelDestroyed();
    void headerDestroyed();
    void modelColumnsChanged(const QModelIndex &parent);
    void focusChanged(QWidget *old, QWidget *now);
    void applyResetTarget();
    void headerHeightMayChange();
    void headerChanged();
    void placeEditors();
    void checkColumns();
    void iconSizeChanged();

public:
    QPoint scrollDelayOffset; //!< logical pixels added to every cell rectangle
    QTableFastView *q_ptr;    //!< the view

    Connections connections;
    KeyboardSearch *keyboardSearch;                  //!< a child
    QPointer<QItemSelectionModel> ownSelectionModel; //!< made by setModel()
    QPersistentModelIndex resetTarget;               //!< becomes current once a reset has settled
    bool isFetching = false;    //!< rows that arrive are those the view asked for
    bool isFetchWanted = false; //!< the view came to its end meanwhile
    bool hasStandardKeys = false;
    bool savedTabKeyNavigation = false; //!< before the standard keys
    bool selectsVisualRanges = false;
    RangeAnchor anchor;
    int fixedRowHeight = 0; //!< logical pixels; 0: as font and delegates ask for
    bool rowHeightFollowsFont = false;

    RowChanges changes;
    AutoScrollHold autoScroll;
    EdgeKeeper edges;
    PixelMover pixels;  //!< all repaints of the view
    PaintBuffer buffer; //!< pictures of cells
    CellPainter cells;
    ShownColumns shownColumns;
    bool isColumnCheckPending = false;
    int shownScrollMode = 0; //!< the vertical one that the picture was made in

    const PaintPass *pass = nullptr; //!< while draw() runs
};

#endif // QTABLEFASTVIEW_P_H
