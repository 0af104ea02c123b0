// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef QTABLEFASTVIEW_P_H
#define QTABLEFASTVIEW_P_H

#include <QHash>
#include <QItemSelectionModel>
#include <QList>
#include <QObject>
#include <QPersistentModelIndex>
#include <QPoint>
#include <QPointer>

#include <memory>

class AutoScrollHold;
class CellPainter;
class ColumnScroll;
class Connections;
class CursorMoves;
class DelegateMark;
class EdgeKeeper;
class HeaderColumns;
class KeyboardSearch;
class PaintBuffer;
class PixelMover;
class QKeyEvent;
class QMouseEvent;
class QStyleOptionViewItem;
class QTableFastView;
class QuietBar;
class RangeAnchor;
class RowChanges;
class ShownColumns;
struct ColumnSlot;
struct PaintPass;
struct RowGeometry;
struct RowScale;
struct RowShift;

/*!
 * \brief What a QTableFastView keeps to itself: those who do its work, and how they work
 * together.
 *
 * For derived views there is scrollDelayOffset; all else may change in any version.
 */
class QTableFastViewPrivate : public QObject
{
    Q_OBJECT

public:
    explicit QTableFastViewPrivate(QTableFastView *q);
    ~QTableFastViewPrivate() override;

    bool eventFilter(QObject *object, QEvent *event) override;

    // Geometry
    int rowCount() const;
    RowScale scale() const;
    RowGeometry rows() const;
    QRect rowStrip(int row) const;
    HeaderColumns columns() const;
    QList<ColumnSlot> seenColumns() const;
    ColumnScroll columnScroll() const;
    void updateRowStrip(int row);
    bool isPerPixel() const;

    // Scrolling
    void setRangeQuietly(int maximum);
    QuietBar quietBar() const;
    void noticeContentSize();
    void movePixels(const RowShift &shift);

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
    PaintPass passOfOtherColumns() const;
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
    QModelIndex edgeCell(bool isFirst) const;
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

    // Who does what; see their own files
    const std::unique_ptr<Connections> connections;
    KeyboardSearch *keyboardSearch; //!< a child
    const std::unique_ptr<RowChanges> changes;
    const std::unique_ptr<EdgeKeeper> edges;
    const std::unique_ptr<AutoScrollHold> autoScroll;
    const std::unique_ptr<RangeAnchor> anchor;
    const std::unique_ptr<PixelMover> pixels; //!< all repaints of the view
    const std::unique_ptr<PaintBuffer> buffer;
    const std::unique_ptr<CellPainter> cells;
    const std::unique_ptr<ShownColumns> shownColumns;

    QPointer<QItemSelectionModel> ownSelectionModel; //!< made by setModel()
    QPersistentModelIndex resetTarget;               //!< becomes current once a reset has settled
    const PaintPass *pass = nullptr;                 //!< while draw() runs
    bool isColumnCheckPending = false;
    int shownScrollMode = 0;    //!< the vertical one that the picture was made in
    bool isFetching = false;    //!< rows that arrive are those the view asked for
    bool isFetchWanted = false; //!< the view came to its end meanwhile

    // As set by the application
    bool hasStandardKeys = false;
    bool savedTabKeyNavigation = false; //!< before the standard keys
    bool selectsVisualRanges = false;
    int fixedRowHeight = 0; //!< logical pixels; 0: as font and delegates ask for
    bool rowHeightFollowsFont = false;
};

#endif // QTABLEFASTVIEW_P_H
