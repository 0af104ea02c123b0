// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef QTABLEFASTVIEW_H
#define QTABLEFASTVIEW_H

#include "pixmapcacheindexed.h"
#include "vantixglobal.h"

#include <QAbstractItemModel>
#include <QAbstractItemView>
#include <QMargins>
#include <QPair>
#include <QPersistentModelIndex>
#include <QRect>
#include <QScrollBar>

#include <memory>

class BarPicture;
class QHeaderView;
class QStyleOptionViewItem;
class QTableFastViewPrivate;

//! The vertical scroll bar of a QTableFastView. It repaints once per frame
//! whatever happens to it, and knows whether it was left at its end.
//! \since 0.2
class VANTIX_EXPORT QTableFastScrollBar : public QScrollBar
{
    Q_OBJECT

public:
    //! A vertical bar; \a parent as in QScrollBar.
    explicit QTableFastScrollBar(QWidget *parent = nullptr);
    ~QTableFastScrollBar() override;

    //! True when the last change of the value left the slider at its maximum;
    //! false before the first change.
    bool isMax() const { return m_isMax; }

protected:
    void sliderChange(SliderChange change) override;
    //! Puts down the picture that the bar had last, if it would look the same.
    void paintEvent(QPaintEvent *event) override;

private:
    bool m_isMax = false; //!< the last value change ended at the maximum
    std::unique_ptr<BarPicture> m_picture;
};

/*!
 * \brief A table view for flat models of any size whose rows change all the time.
 *
 * Every row has one and the same height, so that the row under a pixel, the
 * pixel of a row and the ranges of the scroll bars are arithmetic: nothing in the
 * view visits, counts or stores rows. Columns belong to header(), a horizontal
 * QHeaderView with movable sections.
 *
 * While rows arrive and leave, a view scrolled to its top or its end stays there,
 * and any other view keeps showing the same rows. Whether a short table that shows
 * all of its rows counts as "at the top" or "at the end" follows the header's sort
 * order: ascending means top, descending end. A current index on the first or last
 * row follows new rows at that edge.
 *
 * The row height is the largest of the font's height and the size hints that the
 * view's and the columns' delegates give for an invalid index. It is taken when the
 * view is polished and when its style changes, and at no other time: call
 * updateItemHeight() after setFont() or a change of delegates, or see
 * setRowHeightFollowsFont() and setRowHeight().
 *
 * With setPaintBufferEnabled(true) every painted cell is kept as a pixmap and
 * follows its row; only what changed is painted again. The view drops pixmaps by
 * itself for everything that the model, the selection, the header, the style or the
 * view's own properties announce. A delegate whose look depends on anything else
 * must be followed by viewport()->update() after switching the buffer off and on.
 * setSelectionBehavior() and setTextElideMode() announce nothing: what they change is
 * seen from the next paint on, of which viewport()->update() makes one.
 * At a device pixel ratio other than 1 cells are painted anew each time. Where a kept picture
 * would not be what painting gives, cells are painted in place and nothing is kept: on a
 * background that is transparent, a gradient, a texture or a style sheet's, and where a logical
 * pixel is not a whole number of device pixels.
 *
 * A model that has more rows than it tells (QAbstractItemModel::canFetchMore()) is asked for
 * them as QTableView asks: one batch when the view is scrolled to its end or the last row
 * becomes current, and until the viewport is full. Rows that arrive because the view asked are
 * not followed. An editor that is open, and an index widget that has the focus, keep the current
 * index in their row until they are left.
 *
 * An empty view makes its first cell current when it gets the focus, as every
 * QAbstractItemView does.
 *
 * In ScrollPerItem (the default) the vertical bar counts rows: 2,000,000,000 rows
 * work. In ScrollPerPixel it counts pixels and its range ends at the largest int;
 * rows beyond are not reachable. Pixel positions of rows further than 2^30 pixels
 * away are reported as ±2^30.
 *
 * Screen readers get a table with its titles, cells, focus and selection, as from QTableView:
 * columns as they are on screen, without hidden ones, and texts as the delegates' displayText()
 * writes them, unless the model has a Qt::AccessibleTextRole. Cells can be selected, edited and
 * toggled. Nothing is made per row, and nothing is done while nobody listens. Children are
 * numbered as far as an int goes; the table interface reaches all rows, but lists no more than the
 * first 4096 selected ones. Derived views inherit it.
 *
 * The view shows the children of the invalid root index. Models, selection models
 * and headers given to it may be destroyed at any time. GUI thread only.
 *
 * \since 0.2
 */
class VANTIX_EXPORT QTableFastView : public QAbstractItemView
{
    Q_OBJECT
    Q_PROPERTY(bool paintBufferEnabled READ isPaintBufferEnabled WRITE setPaintBufferEnabled)
    Q_PROPERTY(bool sortingEnabled READ isSortingEnabled WRITE setSortingEnabled)
    Q_PROPERTY(bool followsCurrentRow READ followsCurrentRow WRITE setFollowsCurrentRow)
    Q_PROPERTY(bool hasStandardKeys READ hasStandardKeys WRITE setStandardKeys)
    Q_PROPERTY(bool selectsVisualRanges READ selectsVisualRanges WRITE setSelectsVisualRanges)
    Q_PROPERTY(int rowHeight READ rowHeight WRITE setRowHeight RESET resetRowHeight NOTIFY
                   rowHeightChanged)
    Q_PROPERTY(bool rowHeightFollowsFont READ rowHeightFollowsFont WRITE setRowHeightFollowsFont)
    Q_PROPERTY(int frozenColumnWidth READ frozenColumnWidth DESIGNABLE false STORED false)
    Q_MOC_INCLUDE(<QHeaderView>)

public:
    //! An empty view with a header of its own; \a parent as in QWidget. Selects
    //! single rows, scrolls per row vertically and per pixel horizontally.
    explicit QTableFastView(QWidget *parent = nullptr);
    ~QTableFastView() override;

    //! The horizontal header that holds the columns; null only after it was
    //! destroyed by someone else.
    QHeaderView *header() const;

    //! header(), as QTableView calls it.
    QHeaderView *horizontalHeader() const { return header(); }

    //! Shows \a header instead and becomes its parent. The old header is deleted if
    //! the view is its parent. A header without a model gets the view's. Null and
    //! the present header are ignored.
    void setHeader(QHeaderView *header);

    //! Shows \a model with a new selection model. Neither the old nor the new
    //! model is owned; null shows nothing. The same model again is ignored.
    void setModel(QAbstractItemModel *model) override;

    //! Uses \a sm, which must work on the view's model, for view and header. It is
    //! not owned. Null is ignored.
    void setSelectionModel(QItemSelectionModel *sm) override;

    //! Hides the section \a column (logical index) of the header.
    void hideColumn(int column);
    //! Whether the section \a column (logical index) is hidden; false without it.
    bool isColumnHidden(int column) const;
    //! Width of a column in logical pixels, 0 if hidden or out of range.
    int columnWidth(int column) const;
    //! Left edge of a column in viewport pixels, or −1 if hidden or out of range.
    int columnViewportPosition(int column) const;
    //! Repaints what is visible of a column.
    void updateColumn(int column);
    //! Shows the section \a column (logical index) of the header again.
    void showColumn(int column);
    //! Hides or shows a column. Columns out of range are ignored.
    void setColumnHidden(int column, bool hide);
    //! Makes a column \a width logical pixels wide, as far as the header's section sizes
    //! allow. Columns out of range and negative widths are ignored.
    void setColumnWidth(int column, int width);
    //! The column (logical index) at \a x in viewport pixels, or −1.
    int columnAt(int x) const;
    //! The row at \a y in viewport pixels, or −1.
    int rowAt(int y) const;
    //! Top of \a row in viewport pixels, outside of the viewport too; −1 for a row that does
    //! not exist.
    int rowViewportPosition(int row) const;
    //! Height of every row, logical pixels; at least 1.
    int rowHeight() const;
    //! rowHeight() for a row that exists, else 0.
    int rowHeight(int row) const;
    //! Makes every row \a height logical pixels high, whatever font and delegates ask for; 0
    //! or less as resetRowHeight(). The rows on screen stay.
    void setRowHeight(int height);
    //! Goes back to the height that font and delegates ask for.
    void resetRowHeight();
    //! Whether another font gives another row height at once: one set for the view, for the
    //! application, or by a style sheet. Delegates are asked with the view's font and style
    //! sheet then, and with the application's font otherwise. Off at first: see
    //! updateItemHeight().
    //! @{
    bool rowHeightFollowsFont() const;
    void setRowHeightFollowsFont(bool on);
    //! @}

    //! True when a click on the header sorts.
    bool isSortingEnabled() const;

    //! Cell rectangle in viewport pixels, outside of the viewport too; null for an
    //! index that is invalid, of another model, or in a hidden column. O(1) in rows.
    QRect visualRect(const QModelIndex &index) const override;

    //! Scrolls so that \a index is seen where \a hint says; EnsureVisible
    //! moves as little as it can. Invalid indexes are ignored. O(1) in rows.
    void scrollTo(const QModelIndex &index, ScrollHint hint = EnsureVisible) override;

    //! As scrollTo(), but never moves horizontally. With the paint buffer on a jump costs what
    //! painting the rows in view costs: only what was in view before is kept.
    void scrollToRow(const QModelIndex &index, ScrollHint hint = EnsureVisible);

    //! The cell under \a p (viewport pixels), or an invalid index. O(1) in rows.
    QModelIndex indexAt(const QPoint &p) const override;

    //! The rows that \a region (viewport pixels) touches, in the order of its
    //! rectangles; a row under two rectangles is listed twice.
    QList<int> rowsAt(const QRegion &region) const;

    //! Drops the buffered cells of the rows that \a region (viewport pixels)
    //! touches, and repaints the region.
    void invalidateRegion(const QRegion &region);

    //! The current index is valid and on row 0.
    bool isCurrentFirst() const;
    //! The current index is valid and on the last row.
    bool isCurrentLast() const;
    //! Makes the first row current and lets the current index follow rows that
    //! arrive at the top.
    void setCurrentFirst();
    //! Makes the last row current and lets the current index follow rows that
    //! arrive at the end.
    void setCurrentLast();
    //! Makes the first visible cell of \a row current, which selects as the
    //! selection behaviour and mode say. Rows out of range are ignored.
    void selectRow(int row);
    //! Selects all cells of a column (logical index), as the selection mode allows, and makes
    //! its cell in the first row on screen current. Columns out of range are ignored.
    void selectColumn(int column);

    //! Whether a current index on the first or last row follows rows that arrive there, and
    //! after a reset (on at first). Off, neither the current index nor the selection moves by
    //! itself. Where the view is scrolled to is not concerned.
    //! @{
    bool followsCurrentRow() const;
    void setFollowsCurrentRow(bool on);
    //! @}

    /*!
     * Whether keys do what they do in QTableView. Off at first.
     * - Left, Right: the next cell. Off, it becomes all that is selected, and at the edge
     *   the view scrolls.
     * - Up, Down: the cell in the next row. Off, it becomes all that is selected.
     * - Home, End: the first, the last cell of the row. Off, the first, the last row.
     * - Ctrl+Home, Ctrl+End: the first, the last cell of the table. Off, the first, the last
     *   row.
     * - Page up, Page down: by as many rows as fit into the viewport. Off, up by one more if
     *   a row is cut off.
     * - Tab, Shift+Tab: the next, the former cell, over the ends of rows. Off, the next, the
     *   former widget.
     * - Shift with any but Tab extends. Off, not with arrows.
     * - Ctrl moves without selecting. Off, not with arrows.
     *
     * What extends and what moves without selecting depends on the selection mode, as in any
     * QAbstractItemView. Columns are taken in the order on screen. Unlike in QTableView, keys
     * stop at a cell that is not enabled. setCurrentFirst(), setCurrentLast() and
     * moveCurrentIndex() are not concerned.
     */
    //! @{
    bool hasStandardKeys() const;
    void setStandardKeys(bool on);
    //! @}

    //! Whether a range that keys or mouse select is what lies between its two corners on
    //! screen, as in QTableView, rather than between their logical columns. That differs
    //! when columns were moved. And whether a range that the mouse is dragged over begins at
    //! the cell where it was pressed although the view has scrolled; off, the first corner
    //! goes along with a view that scrolls per item. Off at first.
    //! @{
    bool selectsVisualRanges() const;
    void setSelectsVisualRanges(bool on);
    //! @}

    //! Makes \a index current and moves on by one arrow key (Qt::Key_Left,
    //! Key_Up, Key_Right or Key_Down). Invalid indexes are ignored; other keys
    //! are reported as a debug message.
    void moveCurrentIndex(const QModelIndex &index, int key);

    //! Makes the next row current whose text, in the current column, begins with what
    //! is typed, as QAbstractItemView does: \a search is appended to what was typed
    //! not longer ago than QApplication::keyboardInputInterval(). Rows are looked at
    //! in slices of 40 ms with events between them; the first one runs at once. The
    //! next key, Esc, a click, another current index, rows or columns that come, go or
    //! move, a reset and another model end it.
    void keyboardSearch(const QString &search) override;

    //! Keeps painted cells as pixmaps and reuses them. Off at the start.
    //! Costs about width × height × 4 bytes of what is visible.
    void setPaintBufferEnabled(bool on);
    //! Whether it is switched on. Where pictures of cells cannot be kept (see above), nothing
    //! is in it all the same.
    bool isPaintBufferEnabled() const;

    //! Sets the margins around the viewport, in logical pixels. The header fills
    //! the top margin.
    //! @{
    void setViewportMargins(int left, int top, int right, int bottom);
    void setViewportMargins(const QMargins &margins);
    //! @}

    //! Sets ranges and steps of both scroll bars from the model, the header and the
    //! viewport, and in ScrollPerItem moves the top row by \a delta rows.
    void updateScrollBars(int delta);

    //! Width of the widest cell of a column among the rows on screen, in logical
    //! pixels plus 1; −1 without a model.
    int sizeHintForColumn(int column) const override;

public Q_SLOTS:
    //! Makes a column as wide as its header and its cells on screen need.
    void resizeColumnToContents(int column);
    //! resizeColumnToContents() for every column.
    void resizeColumnsToContents();
    //! Shows the sort indicator, sorts by it now and whenever it changes, or stops.
    void setSortingEnabled(bool enable);
    //! Sorts the model by \a column and shows the indicator there.
    void sortByColumn(int column, Qt::SortOrder order);
    //! The same in the header's present order.
    void sortByColumn(int column);
    //! Closes editors, forgets painted cells and shows the model anew. The current
    //! index stays on the first or last row if it was there before a model's reset.
    void reset() override;
    //! Remembers whether the current index is on the first or last row.
    virtual void modelAboutToBeReset();
    //! Has everything painted anew.
    virtual void modelReset();
    //! Has everything painted anew, at the same scroll positions; \a hint tells which of the
    //! scroll bars gets a new range.
    virtual void layoutChanged(const QList<QPersistentModelIndex> &parents,
                               QAbstractItemModel::LayoutChangeHint hint);
    //! Sorts the model.
    virtual void sortIndicatorChanged(int column, Qt::SortOrder order);
    //! Remembers where the view and the current index stand.
    virtual void rowsAboutToBeInserted(const QModelIndex &parent, int start, int end);
    //! Keeps the view pinned or on the same rows, and repaints as little as it can.
    void rowsInserted(const QModelIndex &parent, int start, int end) override;
    void rowsAboutToBeRemoved(const QModelIndex &parent, int start, int end) override;
    //! Keeps the same rows in view when the rows removed were all above it.
    virtual void rowsRemoved(const QModelIndex &parent, int first, int last);
    //! Holds automatic scrolling until rowsMoved().
    virtual void rowsAboutToBeMoved(const QModelIndex &sourceParent, int sourceStart, int sourceEnd,
                                    const QModelIndex &destinationParent, int destinationRow);
    //! Keeps the rows in view where rows went from above it to below it, or back.
    virtual void rowsMoved(const QModelIndex &sourceParent, int sourceStart, int sourceEnd,
                           const QModelIndex &destinationParent, int destinationRow);
    //! Repaints what is selected now, or was.
    void selectionChanged(const QItemSelection &selected,
                          const QItemSelection &deselected) override;
    void currentChanged(const QModelIndex &current, const QModelIndex &previous) override;
    //! Repaints the changed cells. An invalid corner means everything.
    void dataChanged(const QModelIndex &topLeft, const QModelIndex &bottomRight,
                     const QList<int> &roles) override;
    //! The same without roles: calls the one above.
    virtual void dataChanged(const QModelIndex &topLeft, const QModelIndex &bottomRight);
    //! Does nothing: rows need no layout.
    void doItemsLayout() override;
    //! Moves the columns after a resized one, and paints it.
    virtual void columnResized(int column, int oldSize, int newSize);
    //! Has everything painted anew, in new ranges of the scroll bars.
    virtual void columnCountChanged(int oldCount, int newCount);
    //! Has everything painted anew; buffered cells of other columns are kept.
    virtual void columnMoved(int logicalIndex, int oldVisualIndex, int newVisualIndex);
    //! Tell the paint buffer what is in view now.
    //! @{
    void verScrollbarValueChanged(int value);
    void horScrollbarValueChanged(int value);
    //! @}
    //! Gives the header the top margin that its size hint asks for, or none
    //! while it is hidden.
    virtual void adjustViewportMargins();
    //! Takes the row height anew from font, style and delegates; the rows on
    //! screen stay.
    void updateItemHeight();

Q_SIGNALS:
    //! The row height changed: every row is elsewhere.
    void rowHeightChanged();
    //! \a header is the view's header from now on.
    void headerChanged(QHeaderView *header);

protected:
    //! Paints one row. \a option holds its rectangle (viewport pixels) and its
    //! state, \a index is the row's cell in column 0; the columns are those of
    //! leftAndRight. A derived view may set these for a second call, with a painter that is
    //! moved: cells are not taken from the paint buffer then.
    virtual void drawRow(QPainter *painter, const QStyleOptionViewItem &option,
                         const QModelIndex &index) const;

    //! Width in logical pixels of columns that a derived view keeps at the left edge;
    //! scrollTo() leaves that much room. 0 here.
    virtual int frozenColumnWidth() const;

    //! Row at a y coordinate (viewport pixels, may be negative), or −1 where
    //! there is none.
    int itemAtCoordinate(int y) const;
    //! The inverse of itemAtCoordinate(): top of \a row in viewport pixels.
    //! Rows are not checked; more than 2^30 pixels away gives ±2^30.
    int coordinateForItem(int row) const;
    //! First row seen, or −1 without one. \a offset, if given, receives the y
    //! coordinate (0 or negative) of its top.
    int getFirstVisibleItem(int *offset = nullptr) const;
    //! The row one viewport height above \a row, at least 0.
    int pageUp(int row) const;
    //! The row one viewport height below \a row, at most the last.
    int pageDown(int row) const;
    //! First and last visual column across \a rect (viewport pixels).
    QPair<int, int> startAndEndColumns(const QRect &rect) const;
    //! Row height in logical pixels that font and delegates ask for.
    int updatedItemHeight(const QStyleOptionViewItem &option) const;
    //! updateScrollBars() for one of the bars. Amid a change of rows that the model has begun
    //! and not ended, the vertical one is left alone.
    //! @{
    void updateVScrollBar(int delta);
    void updateHScrollBar();
    //! @}
    //! Tells the paint buffer the rows and columns in view; it drops what is far from them.
    void setPixmapCacheIndexedVisibleBounds();

    //! Paints the rows that \a region (viewport pixels) touches, each once.
    void draw(QPainter *painter, const QRegion &region) const;
    //! Paints where a drop would go, while something is dragged over the view.
    void paintDropIndicator(QPainter *painter);
    //! Replaces \a rows by what rowsAt() returns.
    void atRegion(const QRegion &region, QList<int> *rows) const;

    bool event(QEvent *event) override;
    bool eventFilter(QObject *object, QEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void dragMoveEvent(QDragMoveEvent *event) override;
    bool viewportEvent(QEvent *event) override;
    void scrollContentsBy(int dx, int dy) override;
    void updateGeometries() override;
    void timerEvent(QTimerEvent *event) override;
    void verticalScrollbarValueChanged(int value) override;
    QSize viewportSizeHint() const override;
    QModelIndex moveCursor(CursorAction cursorAction, Qt::KeyboardModifiers modifiers) override;
    int horizontalOffset() const override;
    int verticalOffset() const override;
    bool isIndexHidden(const QModelIndex &index) const override;
    void setSelection(const QRect &rect, QItemSelectionModel::SelectionFlags command) override;
    QRegion visualRegionForSelection(const QItemSelection &selection) const override;
    void initViewItemOption(QStyleOptionViewItem *option) const override;

    QAbstractItemModel *m_model = nullptr;           //!< the model shown, not owned
    QItemSelectionModel *m_selectionModel = nullptr; //!< in use, not owned
    QHeaderView *m_header = nullptr;                 //!< the columns; usually a child
    bool m_sortingEnabled = false;                   //!< a click on the header sorts
    bool m_geometryRecursionBlock = false;           //!< updateGeometries() runs
    int m_itemHeight = 0;                            //!< height of every row, logical pixels
    QPersistentModelIndex hover;                     //!< hovered index
    VANTIX_HIDES_FIELD_BEGIN
    QTableFastViewPrivate *d_ptr; //!< private data, owned; see private/qtablefastview_p.h
    VANTIX_HIDES_FIELD_END
    mutable QPair<int, int> leftAndRight {0, 0}; //!< visual columns being painted
    bool currentFirst = false;                   //!< the current index keeps to the first row
    bool currentLast = false;                    //!< the current index keeps to the last row
    bool stayAtTop = false;               //!< the bar was at its minimum when an insertion began
    bool stayAtEnd = false;               //!< the bar was at its maximum when an insertion began
    int currentPos = 0;                   //!< rows from the top row to the current one, then
    int currentColumn = 0;                //!< the current column when an insertion or reset began
    bool blockScroll = false;             //!< scrollContentsBy() does nothing
    QRect m_dropIndicatorRect;            //!< viewport pixels
    QMargins m_viewportMargins;           //!< as last set
    bool m_usePixmapCacheIndexed = false; //!< the paint buffer is on
    mutable PixmapCacheIndexed m_pixmapCacheIndexed {nullptr}; //!< the paint buffer
    int m_modelRowCountBefore = 0;                             //!< row count last seen

private:
    friend class QTableFastViewPrivate;
    Q_DISABLE_COPY_MOVE(QTableFastView)
};

#endif // QTABLEFASTVIEW_H
