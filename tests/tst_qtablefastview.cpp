// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "qtablefastview.h"
#include "scaled.h"

#include <QAbstractItemModelTester>
#include <QBackingStore>
#include <QDragMoveEvent>
#include <QHeaderView>
#include <QLineEdit>
#include <QMetaMethod>
#include <QMimeData>
#include <QPainter>
#include <QProxyStyle>
#include <QSignalSpy>
#include <QStandardItemModel>
#include <QStringListModel>
#include <QStyleFactory>
#include <QStyledItemDelegate>
#include <QTest>
#include <QWheelEvent>

#include <memory>

namespace {

constexpr int rowHeight = 20;

// A table of any size: nothing is stored per row.
class BigModel : public QAbstractTableModel
{
public:
    explicit BigModel(int rows, int columns = 5)
        : rows(rows)
        , columns(columns)
    {
    }
    int rowCount(const QModelIndex &parent = {}) const override
    {
        return parent.isValid() ? 0 : rows;
    }
    int columnCount(const QModelIndex &parent = {}) const override
    {
        return parent.isValid() ? 0 : columns;
    }
    QVariant data(const QModelIndex &index, int role) const override
    {
        ++asked;
        return role == Qt::DisplayRole ? QVariant(index.row() - first) : QVariant();
    }
    Qt::ItemFlags flags(const QModelIndex &index) const override
    {
        if (index.isValid() && index.row() == disabledRow)
            return Qt::NoItemFlags;
        Qt::ItemFlags flags = QAbstractTableModel::flags(index) | Qt::ItemIsEditable;
        if (index.isValid() ? isDropOnItems : isDropBetween)
            flags |= Qt::ItemIsDropEnabled;
        return flags;
    }
    void sort(int column, Qt::SortOrder order) override { sorted.append({column, int(order)}); }
    bool submit() override
    {
        ++submitted;
        return true;
    }
    bool canFetchMore(const QModelIndex &) const override { return fetchable > 0; }
    void fetchMore(const QModelIndex &) override
    {
        const int count = std::min(fetchable, 7);
        fetchable -= count;
        append(count);
    }

    void insert(int row, int count)
    {
        beginInsertRows({}, row, row + count - 1);
        rows += count;
        if (row == 0)
            first += count;
        endInsertRows();
    }
    void append(int count) { insert(rows, count); }
    void remove(int row, int count)
    {
        beginRemoveRows({}, row, row + count - 1);
        rows -= count;
        if (row == 0)
            first -= count;
        endRemoveRows();
    }
    void move(int row, int count, int to)
    {
        if (beginMoveRows({}, row, row + count - 1, {}, to))
            endMoveRows();
    }
    void restart(int newRows)
    {
        beginResetModel();
        rows = newRows;
        endResetModel();
    }
    // Says that count rows came, but has more.
    void insertAndLie(int row, int count)
    {
        beginInsertRows({}, row, row + count - 1);
        rows += count + 3;
        endInsertRows();
    }
    void relayout(QAbstractItemModel::LayoutChangeHint hint)
    {
        emit layoutAboutToBeChanged({}, hint);
        emit layoutChanged({}, hint);
    }
    using QAbstractTableModel::dataChanged;

    int rows;
    int columns;
    int first = 0;
    int disabledRow = -1;
    int fetchable = 0;
    int submitted = 0;
    bool isDropOnItems = false;
    bool isDropBetween = false;
    mutable int asked = 0;
    QList<std::pair<int, int>> sorted;
};

// Tells what it was asked to paint; rows are as high as wanted.
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

class View : public QTableFastView
{
    Q_OBJECT

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
    // The viewport gets exactly this size.
    void showWith(int width, int height)
    {
        resize(400, 300);
        show();
        settle();
        resize(size() + QSize(width, height) - viewport()->size());
        settle();
        QCOMPARE(viewport()->size(), QSize(width, height));
    }
    static void settle()
    {
        for (int i = 0; i < 3; ++i) {
            QCoreApplication::sendPostedEvents();
            QCoreApplication::processEvents();
        }
    }
    QScrollBar *bar() const { return verticalScrollBar(); }
    int paintEvents = 0;
    QList<QRegion> regions; //!< of the paint events

    using QTableFastView::atRegion;
    using QTableFastView::coordinateForItem;
    using QTableFastView::draw;
    using QTableFastView::getFirstVisibleItem;
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

QAbstractItemView::ScrollMode perPixel = QAbstractItemView::ScrollPerPixel;

// What the window holds of a view's viewport.
QImage maintained(const QTableFastView &view)
{
    const auto *image = static_cast<const QImage *>(view.window()->backingStore()->paintDevice());
    const QWidget *viewport = view.viewport();
    return image->copy(QRect(viewport->mapTo(view.window(), QPoint(0, 0)), viewport->size()));
}

void pressKey(QWidget *widget, Qt::Key key)
{
    QTest::keyClick(widget, key);
}

} // namespace

class TestQTableFastView : public QObject
{
    Q_OBJECT

public:
    //! Called before the application is made: what is reused at ratio 1 is tested.
    static void initMain() { qputenv("QT_SCALE_FACTOR", "1"); }

private slots:
    // Core
    void startValues();
    void metaObject_data();
    void metaObject();
    void emptyModel();
    void workWithoutModel();
    void pageStepCountsWholeRows();
    void rangeInPixels();
    void itemAtCoordinateRoundsDown();
    void coordinatesAndItemsAgree_data();
    void coordinatesAndItemsAgree();
    void scrollToInRows_data();
    void scrollToInRows();
    void scrollToInPixels_data();
    void scrollToInPixels();
    void scrollToSeenCellRepaintsIt();
    void scrollToColumn_data();
    void scrollToColumn();
    void scrollToColumnPerItem();
    void scrollToRowKeepsColumns();
    void frozenColumnsAreLeftFree();
    void hidingTheHeaderGivesItsRoom();
    void headerHasRoomAtOnce();
    void resizeKeepsTheLastRow_data();
    void resizeKeepsTheLastRow();
    void resizeNeedsTheLastRowToKeepTheEnd();
    void sameModelDoesNothing();
    void setHeaderReplaces();
    void setHeaderIgnoresNull();
    void keptHeaderNoLongerSorts();
    void destroyedHeaderLeavesNoHeader();
    void longScrollRepaints();
    void shortScrollPaintsTheStripOnly();
    void wheelGoesToTheBars();
    void itemHeightAsksDelegates();
    void itemHeightFollowsStyle();
    void updateItemHeightKeepsRows();
    void twoBillionRows();
    void pixelRangeSaturates();
    void marginsAreSetOnce();
    void fetchesMoreAtTheEnd();
    void entersRowsThatMoveUnderTheMouse();
    void columnsPerItemCountSections();
    void columnsPerItemCountHiddenSections_data();
    void columnsPerItemCountHiddenSections();

    // Painting
    void paintsEachRowOnce();
    void paintsWholeRows();
    void alternatesOddRows();
    void bufferSparesTheDelegate();
    void bufferPaintsWhatChanged();
    void disabledItemsLookDisabled();
    void positionsOfCells();
    void delegatesOfRowsAndColumns();
    void currentRowHasFocus_data();
    void currentRowHasFocus();
    void selectedRowsAreActive();
    void rowsAtListsTwice();
    void dropIndicator_data();
    void dropIndicator();
    void editorGetsFocusFrame();
    void otherRatiosPaintAnew();
    void shortTableLeavesBackground();

    // Current index, keyboard, selection
    void moveCursorInRows();
    void moveCursorInColumns_data();
    void moveCursorInColumns();
    void moveRightAtTheEndScrolls();
    void hiddenColumnAtTheEndCountsAsNone();
    void moveCursorWithoutCurrent();
    void arrowKeysWithoutCurrent();
    void otherKeysReachTheBase();
    void standardPageUp_data();
    void standardPageUp();
    void standardKeysBeginOnScreen();
    void unknownKeyIsReported();
    void rubberBandBelowRows();
    void rubberBandSelects();
    void currentFirstAndLast();
    void setCurrentLastOnNothing();
    void selectRowOutOfRange();
    void selectionRegion_data();
    void selectionRegion();
    void currentStripWithHiddenColumn();
    void submitsOnRowChange();

    // Model and header changes
    void staysAtTheEnd_data();
    void staysAtTheEnd();
    void keepsRowsAboveInsertions_data();
    void keepsRowsAboveInsertions();
    void keepsRowsWhenRemovedAbove_data();
    void keepsRowsWhenRemovedAbove();
    void currentFollowsTheTop();
    void currentFollowsTheEnd();
    void shortTableFollowsSortOrder_data();
    void shortTableFollowsSortOrder();
    void resetFollowsTheEdge_data();
    void resetFollowsTheEdge();
    void resetTargetMayVanish();
    void inconsistentInsertionRepaints();
    void childRowsChangeNothing();
    void movesKeepRows_data();
    void movesOutOfSightPaintNothing_data();
    void movesOutOfSightPaintNothing();
    void movesKeepRows();
    void autoScrollIsGivenBack();
    void dataChangeWithInvalidCorners();
    void layoutChangeRepaints();
    void sorting();
    void columnSizes();
    void onlyRowsOnScreenAreMeasured();
    void columnResizeMovesPixels_data();
    void columnResizeMovesPixels();
    void hiddenColumnIsLeftAlone();
    void editorsFollowTheirCells();
    void resetEndsEditing();
    void dataChangeReachesEditors();
    void destroyedModelLeavesNone();
    void destroyedSelectionModelLeavesNone();
    void foreignSelectionModelIsRefused();
    void replacedModelChangesNothing();
    void setModelLeavesNoSelectionModelBehind();
    void columnCountChanges();
    void burstCostsOnePaint();
    void connectionsExistOnce();
    void pushedOutRowsAreEvicted();
    void boundsAreTheCaches_data();
    void boundsAreTheCaches();
    void rowsMovedAboveCachedOnes();
    void focusLeavesAnIndexWidget();
    void replacedDelegateRepaints();
};

// Core

void TestQTableFastView::startValues()
{
    QTableFastView view;
    QVERIFY(view.header());
    QCOMPARE(view.header()->parent(), &view);
    QVERIFY(view.header()->sectionsMovable());
    QVERIFY(!view.header()->stretchLastSection());
    QCOMPARE(view.header()->defaultAlignment(), Qt::AlignLeft | Qt::AlignVCenter);
    QCOMPARE(view.verticalScrollBarPolicy(), Qt::ScrollBarAlwaysOn);
    QCOMPARE(view.horizontalScrollBarPolicy(), Qt::ScrollBarAlwaysOn);
    QCOMPARE(view.selectionBehavior(), QAbstractItemView::SelectRows);
    QCOMPARE(view.selectionMode(), QAbstractItemView::SingleSelection);
    QCOMPARE(view.horizontalScrollMode(), QAbstractItemView::ScrollPerPixel);
    QCOMPARE(view.verticalScrollMode(), QAbstractItemView::ScrollPerItem);
    QVERIFY(view.testAttribute(Qt::WA_MacShowFocusRect));
    QVERIFY(view.viewport()->testAttribute(Qt::WA_StaticContents));
    QVERIFY(qobject_cast<QTableFastScrollBar *>(view.verticalScrollBar()));
    QVERIFY(!static_cast<QTableFastScrollBar *>(view.verticalScrollBar())->isMax());
    QVERIFY(!view.isPaintBufferEnabled());
    QVERIFY(!view.isSortingEnabled());
    QVERIFY(!view.model());
}

void TestQTableFastView::metaObject_data()
{
    QTest::addColumn<QByteArray>("signature");
    const char *const signatures[] = {
        "rowHeightChanged()",
        "headerChanged(QHeaderView*)",
        "resizeColumnToContents(int)",
        "resizeColumnsToContents()",
        "setSortingEnabled(bool)",
        "sortByColumn(int,Qt::SortOrder)",
        "sortByColumn(int)",
        "reset()",
        "modelAboutToBeReset()",
        "modelReset()",
        "layoutChanged(QList<QPersistentModelIndex>,QAbstractItemModel::LayoutChangeHint)",
        "sortIndicatorChanged(int,Qt::SortOrder)",
        "rowsAboutToBeInserted(QModelIndex,int,int)",
        "rowsInserted(QModelIndex,int,int)",
        "rowsAboutToBeRemoved(QModelIndex,int,int)",
        "rowsRemoved(QModelIndex,int,int)",
        "rowsAboutToBeMoved(QModelIndex,int,int,QModelIndex,int)",
        "rowsMoved(QModelIndex,int,int,QModelIndex,int)",
        "selectionChanged(QItemSelection,QItemSelection)",
        "currentChanged(QModelIndex,QModelIndex)",
        "dataChanged(QModelIndex,QModelIndex,QList<int>)",
        "dataChanged(QModelIndex,QModelIndex)",
        "doItemsLayout()",
        "columnResized(int,int,int)",
        "columnCountChanged(int,int)",
        "columnMoved(int,int,int)",
        "verScrollbarValueChanged(int)",
        "horScrollbarValueChanged(int)",
        "adjustViewportMargins()",
        "updateItemHeight()",
    };
    for (const char *signature : signatures)
        QTest::newRow(signature) << QByteArray(signature);
}

void TestQTableFastView::metaObject()
{
    QFETCH(QByteArray, signature);
    const QMetaObject &meta = QTableFastView::staticMetaObject;
    QCOMPARE(QMetaObject::normalizedSignature(signature), signature);
    QVERIFY(meta.indexOfMethod(signature) >= meta.methodOffset());
}

void TestQTableFastView::emptyModel()
{
    BigModel model(0);
    View view(&model);
    view.showWith(200, 100);
    int offset = 7;
    QCOMPARE(view.itemAtCoordinate(0), -1);
    QCOMPARE(view.getFirstVisibleItem(&offset), -1);
    QVERIFY(!view.indexAt(QPoint(5, 5)).isValid());
    view.paintEvents = 0;
    view.bar()->setValue(5);
    View::settle();
    QCOMPARE(view.bar()->value(), 0);
    QCOMPARE(view.paintEvents, 0);
    QVERIFY(view.recorder.painted.isEmpty());
}

void TestQTableFastView::workWithoutModel()
{
    View view;
    view.showWith(200, 100);
    view.setPaintBufferEnabled(true);
    QCOMPARE(view.itemAtCoordinate(3), -1);
    QCOMPARE(view.getFirstVisibleItem(), -1);
    QCOMPARE(view.visualRect(QModelIndex()), QRect());
    QCOMPARE(view.sizeHintForColumn(0), -1);
    QVERIFY(!view.moveCursor(View::MoveDown, Qt::NoModifier).isValid());
    view.scrollTo(QModelIndex());
    view.setCurrentFirst();
    view.setCurrentLast();
    view.selectRow(0);
    view.setSelection(QRect(0, 0, 50, 50), QItemSelectionModel::ClearAndSelect);
    // Every slot bears the absence of a model.
    view.reset();
    view.modelAboutToBeReset();
    view.modelReset();
    view.layoutChanged({}, QAbstractItemModel::VerticalSortHint);
    view.sortIndicatorChanged(0, Qt::AscendingOrder);
    view.rowsAboutToBeInserted({}, 0, 0);
    view.rowsInserted({}, 0, 0);
    view.rowsAboutToBeRemoved({}, 0, 0);
    view.rowsRemoved({}, 0, 0);
    view.rowsAboutToBeMoved({}, 0, 0, {}, 2);
    view.rowsMoved({}, 0, 0, {}, 2);
    view.selectionChanged({}, {});
    view.currentChanged({}, {});
    view.dataChanged({}, {});
    view.columnResized(0, 1, 2);
    view.columnCountChanged(0, 1);
    view.columnMoved(0, 0, 1);
    view.resizeColumnToContents(0);
    view.resizeColumnsToContents();
    view.setSortingEnabled(true);
    view.sortByColumn(0, Qt::AscendingOrder);
    view.updateItemHeight();
    view.adjustViewportMargins();
    View::settle();
    QVERIFY(view.recorder.painted.isEmpty());
    QVERIFY(view.hasAutoScroll());
}

void TestQTableFastView::pageStepCountsWholeRows()
{
    BigModel model(100);
    View view(&model);
    view.showWith(200, 10 * rowHeight + rowHeight / 2);
    QCOMPARE(view.bar()->pageStep(), 10);
    QCOMPARE(view.bar()->singleStep(), 1);
    QCOMPARE(view.bar()->maximum(), 90);
    view.showWith(200, rowHeight / 2);
    QCOMPARE(view.bar()->pageStep(), 1);
    QCOMPARE(view.bar()->maximum(), 99);
}

void TestQTableFastView::rangeInPixels()
{
    BigModel model(100);
    View view(&model);
    view.setVerticalScrollMode(perPixel);
    view.showWith(200, 205);
    QCOMPARE(view.bar()->maximum(), 100 * rowHeight - 205);
    QCOMPARE(view.bar()->pageStep(), 205);
    QCOMPARE(view.bar()->singleStep(), 205 / 11);
    view.bar()->setValue(47);
    int offset = 0;
    QCOMPARE(view.getFirstVisibleItem(&offset), 2);
    QCOMPARE(offset, -7);
    QCOMPARE(view.coordinateForItem(3), 13);
    QCOMPARE(view.itemAtCoordinate(12), 2);
    QCOMPARE(view.itemAtCoordinate(13), 3);
}

void TestQTableFastView::itemAtCoordinateRoundsDown()
{
    BigModel model(100);
    View view(&model);
    view.showWith(200, 200);
    QCOMPARE(view.itemAtCoordinate(-1), -1);
    view.bar()->setValue(5);
    QCOMPARE(view.itemAtCoordinate(-1), 4);
    QCOMPARE(view.itemAtCoordinate(-rowHeight), 4);
    QCOMPARE(view.itemAtCoordinate(-rowHeight - 1), 3);
    QCOMPARE(view.itemAtCoordinate(0), 5);
    QCOMPARE(view.itemAtCoordinate(95 * rowHeight), -1);
}

void TestQTableFastView::coordinatesAndItemsAgree_data()
{
    QTest::addColumn<bool>("isPerPixel");
    QTest::newRow("rows") << false;
    QTest::newRow("pixels") << true;
}

void TestQTableFastView::coordinatesAndItemsAgree()
{
    QFETCH(bool, isPerPixel);
    BigModel model(1000);
    View view(&model);
    if (isPerPixel)
        view.setVerticalScrollMode(perPixel);
    view.showWith(200, 150);
    for (int value : {0, 1, 13, 200, view.bar()->maximum()}) {
        view.bar()->setValue(value);
        for (int y = 0; y < 7 * rowHeight; y += 7) { // the half row below may be empty
            const int row = view.itemAtCoordinate(y);
            QVERIFY(row >= 0);
            const int top = view.coordinateForItem(row);
            QVERIFY(top <= y && y < top + rowHeight);
            QCOMPARE(view.indexAt(QPoint(5, y)), model.index(row, 0));
            QCOMPARE(view.visualRect(model.index(row, 1)), QRect(60, top, 60, rowHeight));
        }
    }
}

void TestQTableFastView::scrollToInRows_data()
{
    using V = QAbstractItemView;
    QTest::addColumn<int>("row");
    QTest::addColumn<int>("hint");
    QTest::addColumn<int>("value");
    // Ten and a half rows are seen, the top row is 50.
    QTest::newRow("top") << 20 << int(V::PositionAtTop) << 20;
    QTest::newRow("top beyond the end") << 99 << int(V::PositionAtTop) << 90;
    QTest::newRow("bottom") << 20 << int(V::PositionAtBottom) << 11;
    QTest::newRow("bottom, row 0") << 0 << int(V::PositionAtBottom) << 0;
    QTest::newRow("bottom, row 9") << 9 << int(V::PositionAtBottom) << 0;
    QTest::newRow("bottom, row 10") << 10 << int(V::PositionAtBottom) << 1;
    QTest::newRow("centre") << 20 << int(V::PositionAtCenter) << 15;
    QTest::newRow("visible above") << 20 << int(V::EnsureVisible) << 20;
    QTest::newRow("visible already") << 55 << int(V::EnsureVisible) << 50;
    QTest::newRow("visible last") << 59 << int(V::EnsureVisible) << 50;
    QTest::newRow("visible half") << 60 << int(V::EnsureVisible) << 51;
    QTest::newRow("visible below") << 70 << int(V::EnsureVisible) << 61;
}

void TestQTableFastView::scrollToInRows()
{
    QFETCH(int, row);
    QFETCH(int, hint);
    BigModel model(100);
    View view(&model);
    view.showWith(200, 210);
    view.bar()->setValue(50);
    view.scrollTo(model.index(row, 0), QAbstractItemView::ScrollHint(hint));
    QTEST(view.bar()->value(), "value");
    QCOMPARE(view.horizontalScrollBar()->value(), 0);
}

void TestQTableFastView::scrollToInPixels_data()
{
    using V = QAbstractItemView;
    QTest::addColumn<int>("row");
    QTest::addColumn<int>("hint");
    QTest::addColumn<int>("value");
    // The viewport is 210 high, the value is 1000: rows 50 to 60 are seen.
    QTest::newRow("top") << 20 << int(V::PositionAtTop) << 400;
    QTest::newRow("bottom") << 20 << int(V::PositionAtBottom) << 419 - 210;
    QTest::newRow("centre") << 20 << int(V::PositionAtCenter) << 400 - 95;
    QTest::newRow("visible above") << 20 << int(V::EnsureVisible) << 400;
    QTest::newRow("visible already") << 52 << int(V::EnsureVisible) << 1000;
    QTest::newRow("visible below") << 70 << int(V::EnsureVisible) << 1419 - 210;
}

void TestQTableFastView::scrollToInPixels()
{
    QFETCH(int, row);
    QFETCH(int, hint);
    BigModel model(100);
    View view(&model);
    view.setVerticalScrollMode(perPixel);
    view.showWith(200, 210);
    view.bar()->setValue(1000);
    view.scrollTo(model.index(row, 0), QAbstractItemView::ScrollHint(hint));
    QTEST(view.bar()->value(), "value");
}

// What is seen already is painted again, and nothing beside it.
void TestQTableFastView::scrollToSeenCellRepaintsIt()
{
    BigModel model(1000);
    View view(&model);
    view.setVerticalScrollMode(perPixel);
    view.showWith(200, 200);
    view.regions.clear();
    view.scrollTo(model.index(4, 1));
    View::settle();
    QCOMPARE(view.regions, QList<QRegion> {QRect(60, 4 * rowHeight, 60, rowHeight)});
}

void TestQTableFastView::scrollToColumn_data()
{
    using V = QAbstractItemView;
    QTest::addColumn<int>("column");
    QTest::addColumn<int>("hint");
    QTest::addColumn<int>("value");
    // Columns are 60 wide; 200 pixels from 70 on are seen.
    QTest::newRow("cut off at the left") << 1 << int(V::EnsureVisible) << 60;
    QTest::newRow("seen") << 2 << int(V::EnsureVisible) << 70;
    QTest::newRow("cut off at the right") << 4 << int(V::EnsureVisible) << 100;
    QTest::newRow("at the centre") << 2 << int(V::PositionAtCenter) << 50;
    QTest::newRow("at the top") << 0 << int(V::PositionAtTop) << 0;
}

void TestQTableFastView::scrollToColumn()
{
    QFETCH(int, column);
    QFETCH(int, hint);
    BigModel model(100);
    View view(&model);
    view.showWith(200, 200);
    view.horizontalScrollBar()->setValue(70);
    view.scrollTo(model.index(3, column), QAbstractItemView::ScrollHint(hint));
    QTEST(view.horizontalScrollBar()->value(), "value");
}

void TestQTableFastView::scrollToColumnPerItem()
{
    BigModel model(100, 8);
    View view(&model);
    view.setHorizontalScrollMode(QAbstractItemView::ScrollPerItem);
    view.showWith(200, 200);
    view.hideColumn(1);
    for (int column : {7, 0, 5, 2, 6, 3}) {
        view.scrollTo(model.index(0, column));
        const QRect rect = view.visualRect(model.index(0, column));
        QVERIFY2(view.viewport()->rect().contains(rect), QByteArray::number(column).constData());
    }
}

void TestQTableFastView::columnsPerItemCountSections()
{
    BigModel model(10, 8);
    View view(&model);
    view.setHorizontalScrollMode(QAbstractItemView::ScrollPerItem);
    view.showWith(200, 100);
    QScrollBar *bar = view.horizontalScrollBar();
    QCOMPARE(bar->maximum(), 5);
    QCOMPARE(bar->pageStep(), 3);
    QCOMPARE(bar->singleStep(), 1);
    bar->setValue(2);
    QCOMPARE(view.columnViewportPosition(2), 0);
    bar->setValue(5);
    QCOMPARE(view.columnViewportPosition(7), 200 - 60); // the last section is seen whole
}

void TestQTableFastView::columnsPerItemCountHiddenSections_data()
{
    QTest::addColumn<QList<int>>("hidden");
    QTest::addColumn<int>("maximum");
    // Three of the eight sections fit; hidden ones fit everywhere.
    QTest::newRow("none") << QList<int> {} << 5;
    QTest::newRow("at the front") << QList<int> {0, 1} << 5;
    QTest::newRow("before those that fit") << QList<int> {3, 4} << 3;
    QTest::newRow("among those that fit") << QList<int> {6} << 4;
    QTest::newRow("at the end") << QList<int> {6, 7} << 3;
    QTest::newRow("nearly all") << QList<int> {0, 1, 2, 3, 4, 5} << 0;
}

void TestQTableFastView::columnsPerItemCountHiddenSections()
{
    QFETCH(QList<int>, hidden);
    BigModel model(10, 8);
    View view(&model);
    view.setHorizontalScrollMode(QAbstractItemView::ScrollPerItem);
    for (int column : hidden)
        view.hideColumn(column);
    view.showWith(200, 100);
    QScrollBar *bar = view.horizontalScrollBar();
    QTEST(bar->maximum(), "maximum");
    for (int value = 0; value <= bar->maximum(); ++value) {
        bar->setValue(value);
        QVERIFY(view.header()->offset() >= 0);
        QVERIFY(view.header()->offset() < view.header()->length());
    }
}

void TestQTableFastView::scrollToRowKeepsColumns()
{
    BigModel model(100);
    View view(&model);
    view.showWith(200, 200);
    view.horizontalScrollBar()->setValue(70);
    view.scrollToRow(model.index(60, 0), QAbstractItemView::PositionAtTop);
    QCOMPARE(view.bar()->value(), 60);
    QCOMPARE(view.horizontalScrollBar()->value(), 70);
}

void TestQTableFastView::frozenColumnsAreLeftFree()
{
    class Frozen : public View
    {
    public:
        using View::View;
        int frozenColumnWidth() const override { return 25; }
    };
    BigModel model(100);
    Frozen view(&model);
    view.showWith(200, 200);
    view.horizontalScrollBar()->setValue(100);
    view.scrollTo(model.index(0, 1));
    QCOMPARE(view.horizontalScrollBar()->value(), 60 - 25);
    QCOMPARE(View(&model).frozenColumnWidth(), 0);
}

void TestQTableFastView::hidingTheHeaderGivesItsRoom()
{
    BigModel model(100);
    View view(&model);
    view.showWith(200, 200);
    const int height = view.header()->sizeHint().height();
    QCOMPARE(view.m_viewportMargins.top(), height);
    QCOMPARE(view.header()->height(), height);
    QCOMPARE(view.header()->geometry().bottom(), view.viewport()->geometry().top() - 1);
    view.header()->hide();
    QCOMPARE(view.m_viewportMargins.top(), 0);
    QCOMPARE(view.viewport()->height(), 200 + height);
    view.header()->show();
    QCOMPARE(view.m_viewportMargins.top(), height);
}

void TestQTableFastView::headerHasRoomAtOnce()
{
    View view;
    view.resize(300, 200);
    view.show();
    View::settle();
    BigModel model(10);
    view.setModel(&model);
    QCOMPARE(view.m_viewportMargins.top(), view.header()->sizeHint().height());
    QVERIFY(view.m_viewportMargins.top() > 0);

    QStandardItemModel growing;
    View other(&growing);
    other.resize(300, 200);
    other.show();
    View::settle();
    growing.setColumnCount(3);
    QCOMPARE(other.m_viewportMargins.top(), other.header()->sizeHint().height());
    QVERIFY(other.m_viewportMargins.top() > 0);
}

void TestQTableFastView::resizeKeepsTheLastRow_data()
{
    coordinatesAndItemsAgree_data();
}

void TestQTableFastView::resizeKeepsTheLastRow()
{
    QFETCH(bool, isPerPixel);
    BigModel model(100);
    View view(&model);
    if (isPerPixel)
        view.setVerticalScrollMode(perPixel);
    view.showWith(200, 200);
    view.setCurrentLast();
    QCOMPARE(view.bar()->value(), isPerPixel ? 99 * rowHeight + 19 - 200 : 90);
    for (int height : {310, 105, 55, 200}) {
        view.showWith(200, height);
        QCOMPARE(view.bar()->value(), view.bar()->maximum());
        const QRect last = view.visualRect(model.index(99, 0));
        QVERIFY(last.bottom() < height);
    }
}

void TestQTableFastView::resizeNeedsTheLastRowToKeepTheEnd()
{
    BigModel model(100);
    View view(&model);
    view.showWith(200, 200);
    view.bar()->setValue(view.bar()->maximum());
    view.setCurrentIndex(model.index(98, 0));
    const auto grow = [&](int height) {
        view.resize(view.width(), view.height() + height);
        View::settle();
    };
    grow(-100);
    QCOMPARE(view.bar()->value(), 90);
    grow(200);
    QCOMPARE(view.bar()->value(), 85); // there are no more rows
    view.setCurrentIndex(model.index(99, 0));
    grow(-200);
    QCOMPARE(view.bar()->value(), 95);
}

void TestQTableFastView::sameModelDoesNothing()
{
    BigModel model(100);
    View view(&model);
    const QItemSelectionModel *selectionModel = view.selectionModel();
    view.setModel(&model);
    QCOMPARE(view.selectionModel(), selectionModel);
}

void TestQTableFastView::setHeaderReplaces()
{
    BigModel model(10);
    View view(&model);
    view.showWith(200, 100);
    QPointer<QHeaderView> old = view.header();
    QSignalSpy spy(&view, &QTableFastView::headerChanged);
    auto *header = new QHeaderView(Qt::Horizontal);
    view.setHeader(header);
    QVERIFY(!old);
    QCOMPARE(spy.size(), 1);
    QCOMPARE(spy.at(0).at(0).value<QHeaderView *>(), header);
    QCOMPARE(header->parent(), &view);
    QCOMPARE(header->model(), &model);
    QCOMPARE(header->selectionModel(), view.selectionModel());
    QVERIFY(header->isVisible());
    QCOMPARE(header->geometry().bottom(), view.viewport()->geometry().top() - 1);
    view.setHeader(header);
    QCOMPARE(spy.size(), 1);
}

void TestQTableFastView::setHeaderIgnoresNull()
{
    QTableFastView view;
    QSignalSpy spy(&view, &QTableFastView::headerChanged);
    QHeaderView *header = view.header();
    view.setHeader(nullptr);
    QCOMPARE(view.header(), header);
    QCOMPARE(spy.size(), 0);
}

void TestQTableFastView::keptHeaderNoLongerSorts()
{
    BigModel model(10);
    QWidget keeper;
    View view(&model);
    view.setSortingEnabled(true);
    QHeaderView *kept = view.header();
    kept->setParent(&keeper);
    view.setHeader(new QHeaderView(Qt::Horizontal));
    model.sorted.clear();
    kept->setSortIndicator(3, Qt::AscendingOrder);
    QVERIFY(model.sorted.isEmpty());
    view.header()->setSortIndicator(2, Qt::AscendingOrder);
    QCOMPARE(model.sorted, (QList<std::pair<int, int>> {{2, int(Qt::AscendingOrder)}}));
}

void TestQTableFastView::destroyedHeaderLeavesNoHeader()
{
    BigModel model(10);
    View view(&model);
    view.showWith(200, 100);
    delete view.header();
    QVERIFY(!view.header());
    model.insert(0, 3);
    View::settle();
    QVERIFY(!view.indexAt(QPoint(3, 3)).isValid());
    QCOMPARE(view.columnWidth(0), 0);
    QCOMPARE(view.columnViewportPosition(0), -1);
    view.hideColumn(0);
    view.resizeColumnsToContents();
    view.moveCursor(View::MoveRight, Qt::NoModifier);
    view.setHeader(new QHeaderView(Qt::Horizontal));
    View::settle();
    QVERIFY(view.indexAt(QPoint(3, 3)).isValid());
}

void TestQTableFastView::longScrollRepaints()
{
    BigModel model(1000);
    View view(&model);
    view.showWith(200, 200);
    view.recorder.forget();
    view.bar()->setValue(500);
    View::settle();
    for (int row = 500; row < 510; ++row)
        QVERIFY(view.recorder.timesPainted(row, 0) == 1);
}

void TestQTableFastView::shortScrollPaintsTheStripOnly()
{
    BigModel model(1000);
    View view(&model);
    view.showWith(200, 200);
    view.bar()->setValue(100);
    View::settle();
    view.recorder.forget();
    view.bar()->setValue(102);
    View::settle();
    QCOMPARE(view.recorder.timesPainted(110, 0), 1);
    QCOMPARE(view.recorder.timesPainted(111, 0), 1);
    QCOMPARE(view.recorder.timesPainted(105, 0), 0);
}

void TestQTableFastView::wheelGoesToTheBars()
{
    BigModel model(1000);
    View view(&model);
    view.showWith(200, 200);
    view.bar()->setValue(500);
    view.horizontalScrollBar()->setValue(50);
    QWheelEvent down(QPointF(5, 5), view.mapToGlobal(QPointF(5, 5)), QPoint(), QPoint(0, -120),
                     Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(view.viewport(), &down);
    QVERIFY(view.bar()->value() > 500);
    QCOMPARE(view.horizontalScrollBar()->value(), 50);
    QWheelEvent left(QPointF(5, 5), view.mapToGlobal(QPointF(5, 5)), QPoint(), QPoint(120, 0),
                     Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    const int value = view.bar()->value();
    QCoreApplication::sendEvent(view.viewport(), &left);
    QVERIFY(view.horizontalScrollBar()->value() < 50);
    QCOMPARE(view.bar()->value(), value);
}

void TestQTableFastView::itemHeightAsksDelegates()
{
    BigModel model(10);
    View view(&model);
    QVERIFY(view.recorder.isAskedWithoutIndex);
    QCOMPARE(view.m_itemHeight, std::max(rowHeight, view.fontMetrics().height()));
    Recorder taller;
    taller.height = 77;
    view.setItemDelegateForColumn(2, &taller);
    QCOMPARE(view.updatedItemHeight(QStyleOptionViewItem()), 77);
    view.setModel(nullptr);
    QCOMPARE(view.updatedItemHeight(QStyleOptionViewItem()), view.m_itemHeight);
    view.recorder.height = 1;
    QCOMPARE(view.updatedItemHeight(QStyleOptionViewItem()), view.fontMetrics().height());
}

void TestQTableFastView::itemHeightFollowsStyle()
{
    BigModel model(10);
    View view(&model);
    view.showWith(200, 100);
    QSignalSpy spy(&view, &QTableFastView::rowHeightChanged);
    view.recorder.height = 31;
    QCOMPARE(view.m_itemHeight, rowHeight);
    std::unique_ptr<QStyle> style(QStyleFactory::create(QStringLiteral("windows")));
    view.setStyle(style.get());
    QCOMPARE(view.m_itemHeight, 31);
    QCOMPARE(spy.size(), 1);
    view.setStyle(nullptr);
    QCOMPARE(spy.size(), 1);
}

void TestQTableFastView::updateItemHeightKeepsRows()
{
    BigModel model(1000);
    View view(&model);
    view.setVerticalScrollMode(perPixel);
    view.showWith(200, 200);
    view.bar()->setValue(50 * rowHeight);
    view.recorder.height = 40;
    view.updateItemHeight();
    QCOMPARE(view.getFirstVisibleItem(), 50);
    QCOMPARE(view.bar()->maximum(), 40 * 1000 - 200);
    view.bar()->setValue(view.bar()->maximum());
    view.recorder.height = 25;
    view.updateItemHeight();
    QCOMPARE(view.bar()->value(), view.bar()->maximum());
    QCOMPARE(view.bar()->maximum(), 25 * 1000 - 200);
}

void TestQTableFastView::twoBillionRows()
{
    BigModel model(2000000000);
    View view(&model);
    view.setPaintBufferEnabled(true);
    view.showWith(200, 200);
    QCOMPARE(view.bar()->maximum(), 2000000000 - 10);
    view.bar()->setValue(view.bar()->maximum());
    View::settle();
    QCOMPARE(view.itemAtCoordinate(199), 1999999999);
    QCOMPARE(view.visualRect(model.index(1999999999, 0)).bottom(), 199);
    QCOMPARE(view.coordinateForItem(0), -(1 << 30));
    QCOMPARE(view.recorder.timesPainted(1999999999, 0), 1);
    view.scrollTo(model.index(1000000000, 0), QAbstractItemView::PositionAtTop);
    QCOMPARE(view.bar()->value(), 1000000000);
    model.append(5);
    QCOMPARE(view.bar()->value(), 1000000000);
    model.insert(0, 5);
    QCOMPARE(view.bar()->value(), 1000000005);
    view.setCurrentLast();
    QCOMPARE(view.bar()->value(), view.bar()->maximum());
    view.showWith(200, 150);
    QCOMPARE(view.bar()->value(), view.bar()->maximum());
    QVERIFY(model.asked < 100000);
}

void TestQTableFastView::pixelRangeSaturates()
{
    BigModel model(2000000000);
    View view(&model);
    view.setVerticalScrollMode(perPixel);
    view.showWith(200, 200);
    QCOMPARE(view.bar()->maximum(), std::numeric_limits<int>::max());
    view.bar()->setValue(view.bar()->maximum());
    View::settle();
    QCOMPARE(view.itemAtCoordinate(199),
             int((std::numeric_limits<int>::max() + 199LL) / rowHeight));
    view.scrollTo(model.index(1999999999, 0));
    QCOMPARE(view.bar()->value(), view.bar()->maximum());
    model.append(3);
    view.scrollTo(model.index(100, 0), QAbstractItemView::PositionAtTop);
    QCOMPARE(view.bar()->value(), 100 * rowHeight);
    QCOMPARE(view.coordinateForItem(1999999999), 1 << 30);
}

void TestQTableFastView::marginsAreSetOnce()
{
    View view;
    view.setViewportMargins(1, 2, 3, 4);
    QCOMPARE(view.m_viewportMargins, QMargins(1, 2, 3, 4));
    view.setViewportMargins(QMargins(1, 2, 3, 4));
    view.setViewportMargins(QMargins(0, 0, 0, 0));
    QCOMPARE(view.m_viewportMargins, QMargins());
}

void TestQTableFastView::fetchesMoreAtTheEnd()
{
    BigModel model(50);
    View view(&model);
    view.showWith(200, 200);
    QCOMPARE(model.rows, 50);
    model.fetchable = 20;
    view.bar()->setValue(view.bar()->maximum());
    View::settle();
    QVERIFY(model.rows > 50);
    QCOMPARE(view.bar()->maximum(), model.rows - 10);
    QCOMPARE(maintained(view),
             view.viewport()->grab().toImage().convertToFormat(maintained(view).format()));
}

void TestQTableFastView::entersRowsThatMoveUnderTheMouse()
{
    BigModel model(100);
    View view(&model);
    view.setMouseTracking(true);
    view.viewport()->setMouseTracking(true);
    view.showWith(200, 200);
    QCursor::setPos(view.viewport()->mapToGlobal(QPoint(10, 10)));
    QTest::mouseMove(view.viewport(), QPoint(10, 10));
    QSignalSpy spy(&view, &QAbstractItemView::entered);
    view.bar()->setValue(7);
    QCOMPARE(spy.size(), 1);
    QCOMPARE(spy.at(0).at(0).toModelIndex(), model.index(7, 0));
}

// Painting

void TestQTableFastView::paintsEachRowOnce()
{
    BigModel model(100);
    View view(&model);
    view.showWith(200, 200);
    view.recorder.forget();
    QRegion region(10, 45, 10, 4);
    region += QRect(100, 47, 10, 3);
    region += QRect(50, 55, 20, 30);
    QPixmap target(200, 200);
    QPainter painter(&target);
    view.draw(&painter, region);
    for (int row = 2; row <= 4; ++row) {
        for (int column = 0; column < 4; ++column)
            QCOMPARE(view.recorder.timesPainted(row, column), 1);
    }
    QCOMPARE(view.recorder.painted.size(), 12);
}

void TestQTableFastView::paintsWholeRows()
{
    BigModel model(100);
    View view(&model);
    view.showWith(200, 200);
    view.recorder.forget();
    view.viewport()->update(5, 3 * rowHeight + 2, 3, 3);
    View::settle();
    QCOMPARE(view.recorder.painted.size(), 4); // columns 0 to 3 are in view
    for (int column = 0; column < 4; ++column)
        QCOMPARE(view.recorder.timesPainted(3, column), 1);
}

void TestQTableFastView::alternatesOddRows()
{
    BigModel model(100);
    View view(&model);
    view.setAlternatingRowColors(true);
    view.showWith(200, 200);
    for (int row = 0; row < 10; ++row) {
        const auto features = view.recorder.optionOf(row, 0).features;
        QCOMPARE(bool(features & QStyleOptionViewItem::Alternate), row % 2 == 1);
    }
}

void TestQTableFastView::bufferSparesTheDelegate()
{
    BigModel model(100);
    View view(&model);
    view.setPaintBufferEnabled(true);
    view.showWith(200, 200);
    const QImage first = maintained(view);
    view.recorder.forget();
    view.viewport()->update();
    View::settle();
    QVERIFY(view.recorder.painted.isEmpty());
    QCOMPARE(maintained(view), first);
    view.setPaintBufferEnabled(false);
    view.setPaintBufferEnabled(true);
    view.viewport()->update();
    View::settle();
    QVERIFY(!view.recorder.painted.isEmpty());
}

void TestQTableFastView::bufferPaintsWhatChanged()
{
    BigModel model(100);
    View view(&model);
    view.setPaintBufferEnabled(true);
    view.showWith(200, 200);
    view.recorder.forget();
    emit model.dataChanged(model.index(4, 1), model.index(4, 1));
    emit model.dataChanged(model.index(60, 1), model.index(60, 1));
    View::settle();
    QCOMPARE(view.recorder.painted, (QModelIndexList {model.index(4, 1)}));
    view.setCurrentIndex(model.index(50, 0));
    view.bar()->setValue(0);
    View::settle();
    view.recorder.forget();
    model.insert(0, 1); // pinned to the top: one new row
    View::settle();
    for (const QModelIndex &index : std::as_const(view.recorder.painted))
        QCOMPARE(index.row(), 0);
    QCOMPARE(view.recorder.painted.size(), 4);
}

void TestQTableFastView::disabledItemsLookDisabled()
{
    BigModel model(100);
    model.disabledRow = 3;
    View view(&model);
    view.showWith(200, 200);
    const QStyleOptionViewItem disabled = view.recorder.optionOf(3, 1);
    QVERIFY(!(disabled.state & QStyle::State_Enabled));
    QCOMPARE(disabled.palette.currentColorGroup(), QPalette::Disabled);
    const QStyleOptionViewItem enabled = view.recorder.optionOf(2, 1);
    QVERIFY(enabled.state & QStyle::State_Enabled);
    QVERIFY(enabled.palette.currentColorGroup() != QPalette::Disabled);
    QVERIFY(enabled.showDecorationSelected);
    QCOMPARE(enabled.widget, &view);
    view.setEnabled(false);
    View::settle();
    QVERIFY(!(view.recorder.optionOf(2, 1).state & QStyle::State_Enabled));
}

void TestQTableFastView::positionsOfCells()
{
    using Item = QStyleOptionViewItem;
    BigModel model(3, 4);
    View view(&model);
    view.showWith(300, 100);
    QCOMPARE(view.recorder.optionOf(0, 0).viewItemPosition, Item::Beginning);
    QCOMPARE(view.recorder.optionOf(0, 1).viewItemPosition, Item::Middle);
    QCOMPARE(view.recorder.optionOf(0, 3).viewItemPosition, Item::End);
    view.header()->moveSection(0, 3); // 1 2 3 0
    View::settle();
    QCOMPARE(view.recorder.optionOf(0, 1).viewItemPosition, Item::Beginning);
    QCOMPARE(view.recorder.optionOf(0, 3).viewItemPosition, Item::End);
    QCOMPARE(view.recorder.optionOf(0, 0).viewItemPosition, Item::OnlyOne);
    view.hideColumn(1);
    view.hideColumn(2);
    View::settle();
    QCOMPARE(view.recorder.optionOf(0, 3).viewItemPosition, Item::OnlyOne); // next is column 0

    BigModel single(3, 1);
    View narrow(&single);
    narrow.showWith(300, 100);
    QCOMPARE(narrow.recorder.optionOf(1, 0).viewItemPosition, Item::OnlyOne);
}

void TestQTableFastView::delegatesOfRowsAndColumns()
{
    BigModel model(10);
    View view(&model);
    Recorder ofRow;
    Recorder ofColumn;
    view.setItemDelegateForRow(2, &ofRow);
    view.setItemDelegateForColumn(1, &ofColumn);
    view.showWith(200, 200);
    QVERIFY(ofRow.timesPainted(2, 1) > 0);
    QVERIFY(ofColumn.timesPainted(3, 1) > 0);
    QCOMPARE(ofColumn.timesPainted(2, 1), 0);
    QCOMPARE(view.recorder.timesPainted(2, 0), 0);
    QVERIFY(view.recorder.timesPainted(3, 0) > 0);
}

void TestQTableFastView::currentRowHasFocus_data()
{
    QTest::addColumn<bool>("isBuffered");
    QTest::newRow("direct") << false;
    QTest::newRow("buffer") << true;
}

void TestQTableFastView::currentRowHasFocus()
{
    QFETCH(bool, isBuffered);
    BigModel model(100);
    View view(&model);
    view.setPaintBufferEnabled(isBuffered);
    view.showWith(200, 200);
    const auto makeCurrent = [&](int row) {
        view.selectionModel()->setCurrentIndex(model.index(row, 1), QItemSelectionModel::NoUpdate);
        View::settle();
    };
    makeCurrent(2);
    QVERIFY(view.recorder.optionOf(2, 0).state & QStyle::State_HasFocus);
    QVERIFY(view.recorder.optionOf(2, 3).state & QStyle::State_HasFocus);
    QVERIFY(!(view.recorder.optionOf(3, 1).state & QStyle::State_HasFocus));
    makeCurrent(5);
    QVERIFY(!(view.recorder.optionOf(2, 0).state & QStyle::State_HasFocus));
    QVERIFY(view.recorder.optionOf(5, 0).state & QStyle::State_HasFocus);
    view.selectionModel()->clear();
    View::settle();
    QVERIFY(!(view.recorder.optionOf(5, 0).state & QStyle::State_HasFocus));
}

void TestQTableFastView::selectedRowsAreActive()
{
    BigModel model(100);
    View view(&model);
    view.showWith(200, 200);
    view.selectRow(4);
    View::settle();
    const QStyleOptionViewItem option = view.recorder.optionOf(4, 2);
    QVERIFY(option.state & QStyle::State_Selected);
    QVERIFY(option.state & QStyle::State_Active);
    QCOMPARE(option.palette.currentColorGroup(), QPalette::Active);
    // Selecting the cell in column 0 alone makes its row look selected.
    view.selectionModel()->select(model.index(6, 0), QItemSelectionModel::Select);
    View::settle();
    QVERIFY(view.recorder.optionOf(6, 3).state & QStyle::State_Selected);
    view.setSelectionBehavior(QAbstractItemView::SelectItems);
    view.viewport()->update();
    View::settle();
    QVERIFY(!(view.recorder.optionOf(6, 3).state & QStyle::State_Selected));
    QVERIFY(view.recorder.optionOf(6, 3).state & QStyle::State_Active);
    QVERIFY(view.recorder.optionOf(6, 0).state & QStyle::State_Selected);
}

void TestQTableFastView::rowsAtListsTwice()
{
    BigModel model(100);
    View view(&model);
    view.showWith(200, 200);
    view.bar()->setValue(10);
    QRegion region(0, 0, 10, 10);
    region += QRect(50, 5, 10, 20);
    QList<int> rows = view.rowsAt(region);
    QCOMPARE(rows.count(10), qsizetype(region.rectCount())); // once for each rectangle
    QVERIFY(rows.contains(11));
    QVERIFY(!rows.contains(12));
    QVERIFY(view.rowsAt(QRegion()).isEmpty());
    model.restart(0);
    QVERIFY(view.rowsAt(region).isEmpty());
}

void TestQTableFastView::dropIndicator_data()
{
    QTest::addColumn<int>("y");
    QTest::addColumn<bool>("onItems");
    QTest::addColumn<bool>("between");
    QTest::addColumn<QRect>("rect");
    const int top = 2 * rowHeight;
    QTest::newRow("upper edge") << top + 1 << false << true << QRect(0, top, 60, 0);
    QTest::newRow("lower edge") << top + rowHeight - 1 << false << true
                                << QRect(0, top + rowHeight - 1, 60, 0);
    QTest::newRow("middle") << top + 10 << true << false << QRect(0, top, 60, rowHeight);
    QTest::newRow("edge that takes nothing") << top + 1 << true << false << QRect();
    QTest::newRow("below the rows") << 150 << true << true << QRect();
}

void TestQTableFastView::dropIndicator()
{
    QFETCH(int, y);
    QFETCH(bool, onItems);
    QFETCH(bool, between);
    BigModel model(5);
    model.isDropOnItems = onItems;
    model.isDropBetween = between;
    View view(&model);
    view.setAcceptDrops(true);
    view.setDragDropMode(QAbstractItemView::DragDrop);
    view.setDropIndicatorShown(true);
    view.showWith(200, 200);
    std::unique_ptr<QMimeData> data(model.mimeData({model.index(0, 0)}));
    QDragMoveEvent event(QPoint(10, y), Qt::CopyAction | Qt::MoveAction, data.get(), Qt::LeftButton,
                         Qt::NoModifier);
    view.dragMoveEvent(&event);
    QTEST(view.m_dropIndicatorRect, "rect");
    view.setState(View::DraggingState);
    view.viewport()->update();
    View::settle();
    view.setState(View::NoState);
    view.setDropIndicatorShown(false);
    view.dragMoveEvent(&event);
    QCOMPARE(view.m_dropIndicatorRect, QRect());
}

void TestQTableFastView::editorGetsFocusFrame()
{
    BigModel model(50);
    View view(&model);
    view.setPaintBufferEnabled(true);
    view.showWith(300, 200);
    view.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&view));
    auto *editor = new QLineEdit;
    view.setIndexWidget(model.index(3, 1), editor);
    view.setCurrentIndex(model.index(3, 1));
    view.setFocus();
    View::settle();
    const QImage before = maintained(view);
    editor->setFocus();
    View::settle();
    QVERIFY(view.recorder.optionOf(3, 0).state & QStyle::State_Active);
    const QImage with = maintained(view);
    QVERIFY(before != with);
    view.setFocus();
    View::settle();
    QCOMPARE(maintained(view), before);
}

// Device pixels are held against logical ones: nothing is reused, nothing is blurred.
void TestQTableFastView::otherRatiosPaintAnew()
{
    BigModel model(5);
    Scaled<View> view(2, &model);
    view.setPaintBufferEnabled(true);
    view.showWith(200, 100);
    QCOMPARE(view.recorder.optionOf(0, 0).rect, QRect(0, 0, 60, rowHeight));
    QCOMPARE(view.recorder.optionOf(0, 0).widget->devicePixelRatioF(), 2.0);
    const QImage buffered = maintained(view);
    view.recorder.forget();
    view.viewport()->update();
    View::settle();
    QCOMPARE(view.recorder.timesPainted(0, 0), 1);
    view.setPaintBufferEnabled(false);
    view.viewport()->update();
    View::settle();
    QCOMPARE(maintained(view), buffered);
}

void TestQTableFastView::shortTableLeavesBackground()
{
    BigModel model(2, 2);
    View view(&model);
    view.showWith(200, 100);
    const QImage picture = maintained(view);
    QCOMPARE(picture.pixelColor(20, 60), view.viewport()->palette().color(QPalette::Base));
    QCOMPARE(picture.pixelColor(150, 10), view.viewport()->palette().color(QPalette::Base));
    QVERIFY(picture.pixelColor(20, 10) != picture.pixelColor(20, 60));
}

// Current index, keyboard, selection

void TestQTableFastView::moveCursorInRows()
{
    BigModel model(100);
    View view(&model);
    view.showWith(200, 200);
    const auto from = [&](int row, int action) {
        view.selectionModel()->setCurrentIndex(model.index(row, 1), QItemSelectionModel::NoUpdate);
        return view.moveCursor(View::CursorAction(action), Qt::NoModifier);
    };
    QCOMPARE(from(0, View::MoveUp), model.index(0, 1));
    QCOMPARE(from(5, View::MovePrevious), model.index(4, 1));
    QCOMPARE(from(99, View::MoveDown), model.index(99, 1));
    QCOMPARE(from(5, View::MoveNext), model.index(6, 1));
    QCOMPARE(from(50, View::MovePageDown), model.index(60, 1));
    QCOMPARE(from(95, View::MovePageDown), model.index(99, 1));
    QCOMPARE(from(50, View::MovePageUp), model.index(40, 1));
    QCOMPARE(from(4, View::MovePageUp), model.index(0, 1));
    view.currentFirst = view.currentLast = false;
    QCOMPARE(from(0, View::MoveHome), model.index(0, 1));
    QVERIFY(view.currentFirst && !view.currentLast);
    QCOMPARE(from(5, View::MoveEnd), model.index(99, 1));
    QVERIFY(view.currentLast);
    QCOMPARE(from(5, View::MovePrevious + 1), model.index(5, 1));
}

void TestQTableFastView::moveCursorInColumns_data()
{
    QTest::addColumn<bool>("isRightToLeft");
    QTest::newRow("left to right") << false;
    QTest::newRow("right to left") << true;
}

void TestQTableFastView::moveCursorInColumns()
{
    QFETCH(bool, isRightToLeft);
    BigModel model(10, 6);
    View view(&model);
    view.setLayoutDirection(isRightToLeft ? Qt::RightToLeft : Qt::LeftToRight);
    view.showWith(500, 200);
    view.hideColumn(2);
    view.hideColumn(3);
    view.header()->moveSection(0, 5); // 1 2 3 4 5 0
    const auto onward = isRightToLeft ? View::MoveLeft : View::MoveRight;
    const auto back = isRightToLeft ? View::MoveRight : View::MoveLeft;
    const auto from = [&](int column, auto action) {
        view.setCurrentIndex(model.index(4, column));
        return view.moveCursor(action, Qt::NoModifier);
    };
    QCOMPARE(from(1, onward), model.index(4, 4));
    QCOMPARE(from(4, onward), model.index(4, 5));
    QCOMPARE(from(5, onward), model.index(4, 0));
    QCOMPARE(from(0, back), model.index(4, 5));
    QCOMPARE(from(4, back), model.index(4, 1));
    QCOMPARE(from(1, back), model.index(4, 1));
    QCOMPARE(from(0, onward), model.index(4, 0));
}

void TestQTableFastView::moveRightAtTheEndScrolls()
{
    BigModel model(10, 6);
    View view(&model);
    view.showWith(200, 200);
    view.setCurrentIndex(model.index(0, 5));
    QScrollBar *bar = view.horizontalScrollBar();
    bar->setValue(20);
    QCOMPARE(view.moveCursor(View::MoveRight, Qt::NoModifier), model.index(0, 5));
    QCOMPARE(bar->value(), 20 + bar->singleStep());
    view.selectionModel()->setCurrentIndex(model.index(0, 0), QItemSelectionModel::NoUpdate);
    bar->setValue(100);
    QCOMPARE(view.moveCursor(View::MoveLeft, Qt::NoModifier), model.index(0, 0));
    QCOMPARE(bar->value(), 100 - bar->singleStep());
}

void TestQTableFastView::hiddenColumnAtTheEndCountsAsNone()
{
    BigModel model(10, 4);
    View view(&model);
    view.showWith(500, 200);
    view.hideColumn(0);
    view.hideColumn(3);
    view.setCurrentIndex(model.index(1, 2));
    QCOMPARE(view.moveCursor(View::MoveRight, Qt::NoModifier), model.index(1, 2));
    view.setCurrentIndex(model.index(1, 1));
    QCOMPARE(view.moveCursor(View::MoveLeft, Qt::NoModifier), model.index(1, 1));
}

void TestQTableFastView::moveCursorWithoutCurrent()
{
    BigModel model(10, 3);
    View view(&model);
    view.hideColumn(0);
    QCOMPARE(view.moveCursor(View::MoveDown, Qt::NoModifier), model.index(0, 1));
    view.hideColumn(1);
    view.hideColumn(2);
    QVERIFY(!view.moveCursor(View::MoveDown, Qt::NoModifier).isValid());
    BigModel empty(0);
    View nothing(&empty);
    QVERIFY(!nothing.moveCursor(View::MoveDown, Qt::NoModifier).isValid());
}

void TestQTableFastView::arrowKeysWithoutCurrent()
{
    BigModel model(100);
    View view(&model);
    view.showWith(200, 200);
    view.selectionModel()->clear();
    for (Qt::Key key : {Qt::Key_Up, Qt::Key_Down, Qt::Key_Left, Qt::Key_Right}) {
        pressKey(&view, key);
        QVERIFY(!view.currentIndex().isValid());
    }
    view.setCurrentIndex(model.index(3, 1));
    pressKey(&view, Qt::Key_Down);
    QCOMPARE(view.currentIndex(), model.index(4, 1));
    pressKey(&view, Qt::Key_Up);
    pressKey(&view, Qt::Key_Up);
    QCOMPARE(view.currentIndex(), model.index(2, 1));
    pressKey(&view, Qt::Key_Right);
    QCOMPARE(view.currentIndex(), model.index(2, 2));
    pressKey(&view, Qt::Key_Left);
    QCOMPARE(view.currentIndex(), model.index(2, 1));
}

void TestQTableFastView::otherKeysReachTheBase()
{
    BigModel model(100);
    View view(&model);
    view.showWith(200, 200);
    view.setCurrentIndex(model.index(50, 1));
    pressKey(&view, Qt::Key_PageUp);
    QCOMPARE(view.currentIndex(), model.index(40, 1));
    pressKey(&view, Qt::Key_PageDown);
    QCOMPARE(view.currentIndex(), model.index(50, 1));
    pressKey(&view, Qt::Key_Home);
    QCOMPARE(view.currentIndex(), model.index(0, 1));
    pressKey(&view, Qt::Key_End);
    QCOMPARE(view.currentIndex(), model.index(99, 1));
}

void TestQTableFastView::standardPageUp_data()
{
    QTest::addColumn<QAbstractItemView::ScrollMode>("mode");
    QTest::addColumn<int>("height");
    QTest::addColumn<int>("from");
    QTest::addColumn<int>("to");
    const auto perItem = QAbstractItemView::ScrollPerItem;
    const auto perPixel = QAbstractItemView::ScrollPerPixel;
    QTest::newRow("whole rows") << perItem << 200 << 50 << 40;
    QTest::newRow("half a row more") << perItem << 210 << 50 << 40;
    QTest::newRow("nearly a row more") << perItem << 219 << 50 << 40;
    QTest::newRow("pixels") << perPixel << 210 << 50 << 40;
    QTest::newRow("less than a row") << perItem << 15 << 50 << 50;
    QTest::newRow("to the first row") << perItem << 210 << 4 << 0;
}

//! From where page down leads back, as in QTableView.
void TestQTableFastView::standardPageUp()
{
    QFETCH(QAbstractItemView::ScrollMode, mode);
    QFETCH(int, height);
    QFETCH(int, from);
    QFETCH(int, to);
    BigModel model(100);
    View view(&model);
    view.setVerticalScrollMode(mode);
    view.setStandardKeys(true);
    view.showWith(200, height);
    view.setCurrentIndex(model.index(from, 1));
    pressKey(&view, Qt::Key_PageUp);
    QCOMPARE(view.currentIndex(), model.index(to, 1));
}

//! In the first column on screen, as in QTableView.
void TestQTableFastView::standardKeysBeginOnScreen()
{
    BigModel model(10);
    View view(&model);
    view.showWith(200, 200);
    view.header()->moveSection(2, 0);
    view.setCurrentIndex(QModelIndex());
    view.setStandardKeys(true);
    pressKey(&view, Qt::Key_Down);
    QCOMPARE(view.currentIndex(), model.index(0, 2));
    view.setCurrentIndex(QModelIndex());
    view.setStandardKeys(false);
    pressKey(&view, Qt::Key_PageDown);
    QCOMPARE(view.currentIndex(), model.index(0, 0));

    model.restart(0);
    view.setStandardKeys(true);
    pressKey(&view, Qt::Key_Down);
    QVERIFY(!view.currentIndex().isValid());
}

void TestQTableFastView::unknownKeyIsReported()
{
    BigModel model(100);
    View view(&model);
    QTest::ignoreMessage(QtDebugMsg,
                         "void QTableFastView::moveCurrentIndex(const QModelIndex&, int) "
                         "Unknown key pressed to move current index");
    view.moveCurrentIndex(model.index(7, 1), Qt::Key_A);
    QCOMPARE(view.currentIndex(), model.index(7, 1));
    view.moveCurrentIndex(QModelIndex(), Qt::Key_A); // nothing, not even a message
    view.moveCurrentIndex(model.index(8, 1), Qt::Key_Down);
    QCOMPARE(view.currentIndex(), model.index(9, 1));
}

void TestQTableFastView::rubberBandBelowRows()
{
    BigModel model(3);
    View view(&model);
    view.showWith(200, 200);
    QTest::ignoreMessage(QtWarningMsg, "TODO: !bottomRight.isValid()");
    view.setSelection(QRect(QPoint(5, 5), QPoint(50, 150)), QItemSelectionModel::ClearAndSelect);
    QVERIFY(!view.selectionModel()->hasSelection());
    QTest::ignoreMessage(QtWarningMsg, "TODO: !topLeft.isValid()");
    view.setSelection(QRect(QPoint(5, -5), QPoint(50, 10)), QItemSelectionModel::ClearAndSelect);
    QVERIFY(!view.selectionModel()->hasSelection());
}

void TestQTableFastView::rubberBandSelects()
{
    BigModel model(8);
    model.disabledRow = 5;
    View view(&model);
    view.showWith(200, 200);
    QItemSelectionModel *selection = view.selectionModel();
    view.setSelection(QRect(), QItemSelectionModel::ClearAndSelect);
    QVERIFY(!selection->hasSelection());
    // From the bottom up, as well.
    view.setSelection(QRect(QPoint(70, 50), QPoint(5, 5)),
                      QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    QCOMPARE(selection->selectedRows().size(), 3);
    view.setSelection(QRect(QPoint(5, 5), QPoint(50, 5 * rowHeight + 3)),
                      QItemSelectionModel::ClearAndSelect);
    QCOMPARE(selection->selectedRows().size(), 3); // ends on a disabled row: not touched
    view.setSelection(QRect(5, 180, 10, 10), QItemSelectionModel::Select);
    QCOMPARE(selection->selectedRows().size(), 3);
    view.setSelection(QRect(5, 180, 10, 10), QItemSelectionModel::Clear);
    QVERIFY(!selection->hasSelection());
    view.setLayoutDirection(Qt::RightToLeft);
    view.setSelection(QRect(QPoint(140, 5), QPoint(195, 25)), QItemSelectionModel::ClearAndSelect);
    QVERIFY(selection->isSelected(model.index(0, 0)));
    QVERIFY(selection->isSelected(model.index(1, 0)));
}

void TestQTableFastView::currentFirstAndLast()
{
    BigModel model(10);
    View view(&model);
    QVERIFY(!view.isCurrentFirst() && !view.isCurrentLast());
    view.setCurrentFirst();
    QVERIFY(view.isCurrentFirst() && !view.isCurrentLast());
    QVERIFY(view.currentFirst && !view.currentLast);
    view.setCurrentLast();
    QVERIFY(!view.isCurrentFirst() && view.isCurrentLast());
    QVERIFY(!view.currentFirst && view.currentLast);
}

void TestQTableFastView::setCurrentLastOnNothing()
{
    BigModel model(0);
    View view(&model);
    view.setCurrentLast();
    QVERIFY(!view.currentIndex().isValid());
    QVERIFY(view.currentLast);
}

void TestQTableFastView::selectRowOutOfRange()
{
    BigModel model(10);
    View view(&model);
    view.selectRow(-1);
    view.selectRow(10);
    QVERIFY(!view.currentIndex().isValid());
    view.hideColumn(0);
    view.selectRow(9);
    QCOMPARE(view.currentIndex(), model.index(9, 1));
    for (int column = 0; column < 5; ++column)
        view.hideColumn(column);
    view.selectRow(3);
    QCOMPARE(view.currentIndex(), model.index(9, 1));
}

void TestQTableFastView::selectionRegion_data()
{
    moveCursorInColumns_data();
}

void TestQTableFastView::selectionRegion()
{
    QFETCH(bool, isRightToLeft);
    BigModel model(100, 5);
    View view(&model);
    view.setLayoutDirection(isRightToLeft ? Qt::RightToLeft : Qt::LeftToRight);
    view.showWith(300, 200);
    view.bar()->setValue(10);
    view.hideColumn(2);
    const auto region = [&](int top, int left, int bottom, int right) {
        return view.visualRegionForSelection(
            QItemSelection(model.index(top, left), model.index(bottom, right)));
    };
    const QRect cells(isRightToLeft ? 300 - 180 : 60, 2 * rowHeight, 120, 2 * rowHeight);
    QCOMPARE(region(12, 1, 13, 3), QRegion(cells));
    QVERIFY(region(12, 2, 13, 2).isEmpty());
    QVERIFY(region(0, 0, 9, 4).isEmpty());
    QCOMPARE(region(5, 0, 60, 4).boundingRect().height(), 200);
    view.header()->moveSection(4, 0);
    QCOMPARE(region(12, 1, 12, 4).boundingRect().width(), 60 * 4);
    QItemSelection broken;
    broken.append(QItemSelectionRange());
    QVERIFY(view.visualRegionForSelection(broken).isEmpty());
}

void TestQTableFastView::currentStripWithHiddenColumn()
{
    BigModel model(100);
    View view(&model);
    view.showWith(200, 200);
    view.hideColumn(1);
    View::settle();
    view.recorder.forget();
    view.selectionModel()->setCurrentIndex(model.index(4, 1), QItemSelectionModel::NoUpdate);
    View::settle();
    QCOMPARE(view.recorder.timesPainted(4, 0), 1);
}

void TestQTableFastView::submitsOnRowChange()
{
    BigModel first(10);
    BigModel second(10);
    View view(&first);
    view.setCurrentIndex(first.index(1, 0));
    view.setCurrentIndex(first.index(1, 1));
    QCOMPARE(first.submitted, 1);
    QPointer<QItemSelectionModel> old = view.selectionModel();
    QItemSelectionModel own(&first);
    view.setSelectionModel(&own);
    own.setCurrentIndex(first.index(5, 0), QItemSelectionModel::NoUpdate);
    QCOMPARE(first.submitted, 2);
    view.setModel(&second);
    own.setCurrentIndex(first.index(6, 0), QItemSelectionModel::NoUpdate);
    QCOMPARE(first.submitted, 2);
    view.setCurrentIndex(second.index(6, 0));
    QCOMPARE(second.submitted, 1);
}

// Model and header changes

void TestQTableFastView::staysAtTheEnd_data()
{
    coordinatesAndItemsAgree_data();
}

void TestQTableFastView::staysAtTheEnd()
{
    QFETCH(bool, isPerPixel);
    BigModel model(100);
    View view(&model);
    if (isPerPixel)
        view.setVerticalScrollMode(perPixel);
    view.showWith(200, 205);
    view.bar()->setValue(view.bar()->maximum());
    View::settle();
    for (int i = 1; i < 5; ++i) {
        view.recorder.forget();
        model.append(i);
        QCOMPARE(view.bar()->value(), view.bar()->maximum());
        View::settle();
        const QRect last = view.visualRect(model.index(model.rows - 1, 0));
        QVERIFY(last.bottom() < 205);
        QCOMPARE(view.recorder.timesPainted(model.rows - 1, 0), 1);
        QCOMPARE(view.recorder.timesPainted(model.rows - 1 - i, 0), 0); // moved, not painted
    }
    model.insert(3, 10); // far above: the same rows stay
    QCOMPARE(view.bar()->value(), view.bar()->maximum());
}

void TestQTableFastView::keepsRowsAboveInsertions_data()
{
    coordinatesAndItemsAgree_data();
}

void TestQTableFastView::keepsRowsAboveInsertions()
{
    QFETCH(bool, isPerPixel);
    BigModel model(1000);
    View view(&model);
    if (isPerPixel)
        view.setVerticalScrollMode(perPixel);
    view.showWith(200, 620);
    view.bar()->setValue(isPerPixel ? 100 * rowHeight + 7 : 100);
    View::settle();
    const QImage before = maintained(view);
    const int value = view.bar()->value();
    view.paintEvents = 0;
    model.insert(0, 10);
    QCOMPARE(view.bar()->value(), value + (isPerPixel ? 10 * rowHeight : 10));
    model.insert(110, 1); // at the top row: above it
    View::settle();
    QCOMPARE(view.paintEvents, 0);
    QCOMPARE(maintained(view), before);
    QCOMPARE(view.getFirstVisibleItem(), 111);
    model.insert(900, 5);
    model.insert(115, 1); // in view: the top stays
    View::settle();
    QCOMPARE(view.getFirstVisibleItem(), 111);
}

void TestQTableFastView::keepsRowsWhenRemovedAbove_data()
{
    coordinatesAndItemsAgree_data();
}

void TestQTableFastView::keepsRowsWhenRemovedAbove()
{
    QFETCH(bool, isPerPixel);
    BigModel model(1000);
    View view(&model);
    if (isPerPixel)
        view.setVerticalScrollMode(perPixel);
    view.showWith(200, 200);
    view.bar()->setValue(isPerPixel ? 100 * rowHeight + 7 : 100);
    View::settle();
    view.paintEvents = 0;
    model.remove(0, 30);
    QCOMPARE(view.bar()->value(), isPerPixel ? 70 * rowHeight + 7 : 70);
    View::settle();
    QCOMPARE(view.paintEvents, 0);
    model.remove(68, 2);
    QCOMPARE(view.getFirstVisibleItem(), 68);
    model.remove(500, 10);
    QCOMPARE(view.getFirstVisibleItem(), 68);
    model.remove(60, 900);
    QCOMPARE(view.bar()->value(), view.bar()->maximum());
}

void TestQTableFastView::currentFollowsTheTop()
{
    BigModel model(100);
    View view(&model);
    view.showWith(200, 200);
    view.selectRow(0);
    model.insert(0, 3);
    QCOMPARE(view.currentIndex(), model.index(0, 0));
    QCOMPARE(view.selectionModel()->selectedRows(), (QModelIndexList {model.index(0, 0)}));
    QCOMPARE(view.bar()->value(), 0);
    model.insert(1, 1);
    QCOMPARE(view.currentIndex().row(), 0);
    view.selectRow(5);
    model.insert(0, 1);
    QCOMPARE(view.currentIndex().row(), 6);
}

void TestQTableFastView::currentFollowsTheEnd()
{
    BigModel model(100);
    View view(&model);
    view.showWith(200, 200);
    view.setCurrentIndex(model.index(99, 2));
    view.bar()->setValue(10);
    model.append(2);
    QCOMPARE(view.currentIndex(), model.index(101, 2));
    QCOMPARE(view.bar()->value(), 10); // the current index is followed, not shown
    model.insert(50, 4);
    QCOMPARE(view.currentIndex().row(), 105);
    model.insert(105, 1); // just above it
    QCOMPARE(view.currentIndex().row(), 106);
    QVERIFY(view.hasAutoScroll());
}

void TestQTableFastView::shortTableFollowsSortOrder_data()
{
    QTest::addColumn<int>("order");
    QTest::addColumn<bool>("isAtEnd");
    QTest::newRow("ascending") << int(Qt::AscendingOrder) << false;
    QTest::newRow("descending") << int(Qt::DescendingOrder) << true;
}

void TestQTableFastView::shortTableFollowsSortOrder()
{
    QFETCH(int, order);
    QFETCH(bool, isAtEnd);
    BigModel model(0);
    View view(&model);
    view.header()->setSortIndicator(0, Qt::SortOrder(order));
    view.showWith(200, 200);
    model.insert(0, 50);
    QCOMPARE(view.bar()->value(), isAtEnd ? 40 : 0);
    QCOMPARE(view.currentIndex().row(), isAtEnd ? 49 : 0);
}

void TestQTableFastView::resetFollowsTheEdge_data()
{
    QTest::addColumn<int>("current");
    QTest::addColumn<int>("after");
    QTest::newRow("first") << 0 << 0;
    QTest::newRow("last") << 99 << 29;
    QTest::newRow("between") << 50 << -1;
}

void TestQTableFastView::resetFollowsTheEdge()
{
    QFETCH(int, current);
    BigModel model(100);
    View view(&model);
    view.showWith(200, 200);
    view.setCurrentIndex(model.index(current, 2));
    model.restart(30);
    View::settle();
    QTEST(view.currentIndex().row(), "after");
    QCOMPARE(view.bar()->maximum(), 20);
}

void TestQTableFastView::resetTargetMayVanish()
{
    auto model = std::make_unique<BigModel>(100);
    View view(model.get());
    view.setCurrentIndex(model->index(0, 0));
    model->restart(30);
    BigModel other(10);
    view.setModel(&other);
    view.setCurrentIndex(other.index(5, 0));
    model.reset();
    View::settle();
    QVERIFY(view.currentIndex().model() == &other);
}

void TestQTableFastView::inconsistentInsertionRepaints()
{
    BigModel model(1000);
    View view(&model);
    view.setPaintBufferEnabled(true);
    view.showWith(200, 200);
    view.bar()->setValue(100);
    View::settle();
    view.recorder.forget();
    model.insertAndLie(0, 2);
    View::settle();
    QCOMPARE(view.bar()->maximum(), model.rows - 10);
    for (int row = view.getFirstVisibleItem(), i = 0; i < 10; ++i)
        QCOMPARE(view.recorder.timesPainted(row + i, 0), 1);
    view.recorder.forget();
    model.insert(0, 2); // the count is right again
    View::settle();
    QVERIFY(view.recorder.painted.isEmpty());
}

void TestQTableFastView::childRowsChangeNothing()
{
    QStandardItemModel model(50, 2);
    model.setItem(0, new QStandardItem);
    View view(&model);
    view.showWith(200, 200);
    view.bar()->setValue(20);
    View::settle();
    view.paintEvents = 0;
    model.item(0)->appendRow(new QStandardItem);
    model.item(0)->appendRow(new QStandardItem);
    model.item(0)->removeRow(0);
    View::settle();
    QCOMPARE(view.bar()->value(), 20);
    QCOMPARE(view.paintEvents, 0);
    QVERIFY(view.hasAutoScroll());
}

void TestQTableFastView::movesKeepRows_data()
{
    QTest::addColumn<int>("row");
    QTest::addColumn<int>("count");
    QTest::addColumn<int>("to");
    QTest::addColumn<int>("value");
    // The top row is 100.
    QTest::newRow("all above") << 10 << 5 << 50 << 100;
    QTest::newRow("all below") << 200 << 5 << 300 << 100;
    QTest::newRow("from above to below") << 10 << 5 << 300 << 95;
    QTest::newRow("from above into view") << 10 << 5 << 104 << 95;
    QTest::newRow("from below to above") << 200 << 5 << 10 << 105;
    QTest::newRow("within view") << 102 << 2 << 106 << 100;
    QTest::newRow("around the top, down") << 98 << 5 << 300 << 105;
    QTest::newRow("around the top, up") << 98 << 5 << 10 << 95;
}

void TestQTableFastView::movesOutOfSightPaintNothing_data()
{
    QTest::addColumn<QAbstractItemView::ScrollMode>("mode");
    QTest::addColumn<int>("row");
    QTest::addColumn<int>("to");
    QTest::addColumn<bool>("isPainted");
    // Rows 100 to 109 are seen.
    for (const auto &[name, mode] :
         {std::pair("rows", QAbstractItemView::ScrollPerItem), std::pair("pixels", perPixel)}) {
        QTest::addRow("above, %s", name) << mode << 10 << 50 << false;
        QTest::addRow("just above, %s", name) << mode << 90 << 98 << false;
        QTest::addRow("below, %s", name) << mode << 200 << 300 << false;
        QTest::addRow("just below, %s", name) << mode << 300 << 110 << false;
        QTest::addRow("last one seen, %s", name) << mode << 300 << 109 << true;
    }
}

void TestQTableFastView::movesOutOfSightPaintNothing()
{
    QFETCH(QAbstractItemView::ScrollMode, mode);
    QFETCH(int, row);
    QFETCH(int, to);
    BigModel model(1000);
    View view(&model);
    view.setVerticalScrollMode(mode);
    view.showWith(200, 200);
    view.bar()->setValue(mode == perPixel ? 100 * rowHeight : 100);
    View::settle();
    view.paintEvents = 0;
    model.move(row, 1, to);
    View::settle();
    QTEST(view.paintEvents > 0, "isPainted");
}

void TestQTableFastView::movesKeepRows()
{
    QFETCH(int, row);
    QFETCH(int, count);
    QFETCH(int, to);
    BigModel model(1000);
    View view(&model);
    view.showWith(200, 200);
    view.bar()->setValue(100);
    model.move(row, count, to);
    QTEST(view.bar()->value(), "value");
    QVERIFY(view.hasAutoScroll());
}

void TestQTableFastView::autoScrollIsGivenBack()
{
    BigModel model(100);
    View view(&model);
    view.setAutoScroll(false);
    view.setCurrentIndex(model.index(0, 0));
    model.insert(0, 1);
    model.remove(4, 2);
    model.move(4, 2, 9);
    QVERIFY(!view.hasAutoScroll());
    view.setAutoScroll(true);
    model.insert(0, 1);
    model.remove(4, 2);
    model.move(4, 2, 9);
    QVERIFY(view.hasAutoScroll());
}

void TestQTableFastView::dataChangeWithInvalidCorners()
{
    BigModel model(100);
    View view(&model);
    view.setPaintBufferEnabled(true);
    view.showWith(200, 200);
    view.recorder.forget();
    emit model.dataChanged({}, {});
    View::settle();
    QCOMPARE(view.recorder.timesPainted(0, 0), 1);
    QCOMPARE(view.recorder.timesPainted(9, 3), 1);
    view.recorder.forget();
    view.dataChanged(model.index(3, 0), model.index(3, 0));
    View::settle();
    QCOMPARE(view.recorder.timesPainted(3, 0), 1);
}

void TestQTableFastView::layoutChangeRepaints()
{
    BigModel model(100);
    View view(&model);
    view.setPaintBufferEnabled(true);
    view.showWith(200, 200);
    view.recorder.forget();
    model.relayout(QAbstractItemModel::NoLayoutChangeHint);
    View::settle();
    QCOMPARE(view.recorder.timesPainted(5, 1), 1);
    model.rows = 40; // as models do that hide rows by a layout change
    model.relayout(QAbstractItemModel::VerticalSortHint);
    QCOMPARE(view.bar()->maximum(), 30);
    model.relayout(QAbstractItemModel::HorizontalSortHint);
    QCOMPARE(view.bar()->maximum(), 30);
}

void TestQTableFastView::sorting()
{
    using Sorted = QList<std::pair<int, int>>;
    BigModel model(10);
    View view(&model);
    view.sortByColumn(2, Qt::AscendingOrder);
    QCOMPARE(model.sorted, (Sorted {{2, int(Qt::AscendingOrder)}}));
    view.sortByColumn(1);
    QCOMPARE(model.sorted.last(), std::make_pair(1, int(Qt::AscendingOrder)));
    QVERIFY(!view.header()->isSortIndicatorShown());
    model.sorted.clear();
    view.setSortingEnabled(true);
    QVERIFY(view.isSortingEnabled());
    QVERIFY(view.header()->isSortIndicatorShown());
    QVERIFY(view.header()->sectionsClickable());
    QCOMPARE(model.sorted, (Sorted {{1, int(Qt::AscendingOrder)}}));
    view.setSortingEnabled(true);
    model.sorted.clear();
    view.sortByColumn(3, Qt::DescendingOrder);
    QCOMPARE(model.sorted, (Sorted {{3, int(Qt::DescendingOrder)}})); // once
    BigModel other(10);
    view.setModel(&other);
    QCOMPARE(other.sorted, (Sorted {{3, int(Qt::DescendingOrder)}}));
    view.setSortingEnabled(false);
    other.sorted.clear();
    view.header()->setSortIndicator(0, Qt::AscendingOrder);
    QVERIFY(other.sorted.isEmpty());
}

void TestQTableFastView::columnSizes()
{
    BigModel model(1000);
    View view(&model);
    view.showWith(200, 200);
    QCOMPARE(view.sizeHintForColumn(0), 50 + 10 + 1); // rows 0 to 10 are on screen
    view.bar()->setValue(500);
    QCOMPARE(view.sizeHintForColumn(0), 50 + 510 + 1);
    view.resizeColumnToContents(1);
    QCOMPARE(view.columnWidth(1), 561);
    view.resizeColumnToContents(-1);
    view.resizeColumnToContents(9);
    view.bar()->setValue(0);
    view.resizeColumnsToContents();
    for (int column = 0; column < 5; ++column)
        QCOMPARE(view.columnWidth(column), std::max(61, view.header()->sectionSizeHint(column)));
    BigModel empty(0);
    View nothing(&empty);
    QCOMPARE(nothing.sizeHintForColumn(0), 1);
    QMetaObject::invokeMethod(view.header(), "sectionHandleDoubleClicked", Q_ARG(int, 1));
}

void TestQTableFastView::onlyRowsOnScreenAreMeasured()
{
    BigModel model(2000000000);
    View view(&model);
    view.setItemDelegate(new QStyledItemDelegate(&view));
    view.showWith(200, 200);
    model.asked = 0;
    view.resizeColumnsToContents();
    const int rowsOnScreen = 200 / view.m_itemHeight + 2;
    QVERIFY(model.asked < 20 * rowsOnScreen * 5); // roles, rows and columns
}

void TestQTableFastView::columnResizeMovesPixels_data()
{
    moveCursorInColumns_data();
}

void TestQTableFastView::columnResizeMovesPixels()
{
    QFETCH(bool, isRightToLeft);
    BigModel model(100, 4);
    View view(&model);
    view.setLayoutDirection(isRightToLeft ? Qt::RightToLeft : Qt::LeftToRight);
    view.setPaintBufferEnabled(true);
    view.showWith(400, 200);
    for (int size : {90, 45, 61, 60}) {
        view.recorder.forget();
        view.header()->resizeSection(1, size);
        View::settle();
        QCOMPARE(view.recorder.timesPainted(2, 1), 1);
        QCOMPARE(view.recorder.timesPainted(2, 3), 0); // comes from the buffer
        const QImage now = maintained(view);
        view.setPaintBufferEnabled(false);
        view.viewport()->update();
        View::settle();
        QCOMPARE(maintained(view), now);
        view.setPaintBufferEnabled(true);
        view.viewport()->update();
        View::settle();
    }
}

void TestQTableFastView::hiddenColumnIsLeftAlone()
{
    BigModel model(100, 4);
    View view(&model);
    view.showWith(400, 200);
    view.hideColumn(1);
    QVERIFY(view.isColumnHidden(1));
    QCOMPARE(view.columnWidth(1), 0);
    QCOMPARE(view.visualRect(model.index(0, 1)), QRect());
    QVERIFY(view.isIndexHidden(model.index(0, 1)));
    View::settle();
    view.paintEvents = 0;
    view.columnResized(1, 60, 0);
    view.updateColumn(1);
    View::settle();
    QCOMPARE(view.paintEvents, 0);
    view.recorder.forget();
    view.updateColumn(2);
    View::settle();
    QCOMPARE(view.recorder.timesPainted(0, 2), 1);
    QVERIFY(!view.isIndexHidden(QModelIndex()));
}

void TestQTableFastView::editorsFollowTheirCells()
{
    BigModel model(1000);
    View view(&model);
    view.showWith(200, 200);
    const QPersistentModelIndex index = model.index(4, 1);
    view.openPersistentEditor(index);
    const QWidget *editor = view.indexWidget(index);
    QCOMPARE(editor->geometry(), view.visualRect(index));
    const auto follows = [&] {
        View::settle();
        return editor->geometry() == view.visualRect(index);
    };
    model.insert(1, 1);
    QVERIFY(follows());
    model.insert(0, 1);
    QVERIFY(follows());
    view.bar()->setValue(2);
    QVERIFY(follows());
    view.bar()->setValue(500);
    QVERIFY(follows());
    view.bar()->setValue(0);
    QVERIFY(follows());
    model.remove(0, 1);
    QVERIFY(follows());
    model.move(5, 2, 1);
    QVERIFY(follows());
    view.header()->resizeSection(0, 33);
    QVERIFY(follows());
    view.header()->moveSection(0, 3);
    QVERIFY(follows());
    view.horizontalScrollBar()->setValue(10);
    QVERIFY(follows());
}

void TestQTableFastView::resetEndsEditing()
{
    BigModel model(10);
    View view(&model);
    view.showWith(200, 200);
    view.edit(model.index(2, 1));
    QPointer<QWidget> editor = view.indexWidget(model.index(2, 1));
    QVERIFY(editor);
    QCOMPARE(view.state(), View::EditingState);
    model.restart(20);
    View::settle();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QVERIFY(!editor);
    QCOMPARE(view.state(), View::NoState);
    view.openPersistentEditor(model.index(2, 1));
    editor = view.indexWidget(model.index(2, 1));
    BigModel other(5);
    view.setModel(&other);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QVERIFY(!editor);
}

void TestQTableFastView::dataChangeReachesEditors()
{
    QStandardItemModel model(10, 2);
    View view(&model);
    view.showWith(200, 200);
    view.openPersistentEditor(model.index(2, 1));
    model.setData(model.index(2, 1), QStringLiteral("new"));
    auto *editor = qobject_cast<QLineEdit *>(view.indexWidget(model.index(2, 1)));
    QVERIFY(editor);
    QCOMPARE(editor->text(), QStringLiteral("new"));
}

void TestQTableFastView::destroyedModelLeavesNone()
{
    auto model = std::make_unique<BigModel>(100);
    View view(model.get());
    view.setPaintBufferEnabled(true);
    view.showWith(200, 200);
    view.setCurrentIndex(model->index(4, 1));
    model.reset();
    QVERIFY(!view.model());
    view.bar()->setValue(3);
    view.viewport()->update();
    View::settle();
    QCOMPARE(view.itemAtCoordinate(4), -1);
    pressKey(&view, Qt::Key_Down);
    view.resize(300, 300);
    View::settle();
    const QImage picture = maintained(view);
    QCOMPARE(picture.pixelColor(5, 5), view.viewport()->palette().color(QPalette::Base));
    BigModel other(50);
    view.setModel(&other);
    QCOMPARE(view.bar()->maximum() > 0, true);
}

void TestQTableFastView::destroyedSelectionModelLeavesNone()
{
    BigModel model(100);
    View view(&model);
    view.showWith(200, 200);
    {
        QItemSelectionModel own(&model);
        view.setSelectionModel(&own);
        view.setCurrentIndex(model.index(3, 1));
        QCOMPARE(own.currentIndex(), model.index(3, 1));
        View::settle();
    }
    view.viewport()->update();
    View::settle();
    QVERIFY(!(view.recorder.optionOf(3, 0).state & QStyle::State_HasFocus));
    view.setSelection(QRect(0, 0, 30, 30), QItemSelectionModel::ClearAndSelect);
    model.insert(0, 2);
    model.remove(0, 2);
    View::settle();
    QItemSelectionModel next(&model);
    view.setSelectionModel(&next);
    QCOMPARE(view.selectionModel(), &next);
    QCOMPARE(view.header()->selectionModel(), &next);
    view.setSelectionModel(nullptr);
    QCOMPARE(view.selectionModel(), &next);
}

void TestQTableFastView::foreignSelectionModelIsRefused()
{
    BigModel model(100);
    BigModel other(100);
    View view(&model);
    QItemSelectionModel foreign(&other);
    const QItemSelectionModel *old = view.selectionModel();
    QTest::ignoreMessage(QtWarningMsg,
                         "QAbstractItemView::setSelectionModel() failed: Trying to set a "
                         "selection model, which works on a different model than the view.");
    view.setSelectionModel(&foreign);
    QCOMPARE(view.selectionModel(), old);
    view.setCurrentIndex(model.index(4, 0));
    QCOMPARE(old->currentIndex(), model.index(4, 0));
}

void TestQTableFastView::replacedModelChangesNothing()
{
    BigModel first(100);
    BigModel second(100);
    View view(&first);
    view.showWith(200, 200);
    view.setModel(&second);
    view.bar()->setValue(50);
    View::settle();
    view.paintEvents = 0;
    first.insert(0, 7);
    first.remove(0, 3);
    first.move(0, 1, 5);
    first.relayout(QAbstractItemModel::VerticalSortHint);
    emit first.dataChanged(first.index(0, 0), first.index(99, 1));
    first.restart(5);
    View::settle();
    QCOMPARE(view.bar()->value(), 50);
    QCOMPARE(view.paintEvents, 0);
    view.setModel(nullptr);
    QVERIFY(!view.model());
    second.insert(0, 1);
    View::settle();
    QVERIFY(!view.indexAt(QPoint(3, 3)).isValid());
}

void TestQTableFastView::setModelLeavesNoSelectionModelBehind()
{
    BigModel first(10);
    BigModel second(10);
    View view;
    for (int i = 0; i < 10; ++i) {
        view.setModel(&first);
        view.setModel(&second);
        view.setModel(nullptr);
    }
    View::settle();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QVERIFY(view.findChildren<QItemSelectionModel *>(QString(), Qt::FindDirectChildrenOnly).size()
            <= 1);
    QVERIFY(view.header()->findChildren<QItemSelectionModel *>().size() <= 1);
}

void TestQTableFastView::columnCountChanges()
{
    QStandardItemModel model(50, 3);
    View view(&model);
    view.setPaintBufferEnabled(true);
    view.showWith(300, 200);
    view.recorder.forget();
    model.insertColumn(1);
    View::settle();
    QCOMPARE(view.recorder.timesPainted(0, 0), 1);
    QVERIFY(view.recorder.timesPainted(0, 2) > 0);
    model.removeColumn(0);
    View::settle();
    QCOMPARE(view.header()->count(), 3);
    const QImage now = maintained(view);
    view.setPaintBufferEnabled(false);
    view.viewport()->update();
    View::settle();
    QCOMPARE(maintained(view), now);
}

void TestQTableFastView::burstCostsOnePaint()
{
    BigModel model(1000);
    View view(&model);
    view.setPaintBufferEnabled(true);
    view.showWith(200, 200);
    view.bar()->setValue(view.bar()->maximum());
    View::settle();
    view.paintEvents = 0;
    view.recorder.forget();
    for (int i = 0; i < 500; ++i)
        model.append(1);
    View::settle();
    QCOMPARE(view.paintEvents, 1);
    QCOMPARE(view.recorder.painted.size(), 10 * 4);
    QCOMPARE(view.bar()->value(), view.bar()->maximum());
}

void TestQTableFastView::connectionsExistOnce()
{
    class Counted : public BigModel
    {
    public:
        using BigModel::BigModel;
        QList<int> listeners() const
        {
            return {receivers(SIGNAL(rowsRemoved(QModelIndex, int, int))),
                    receivers(SIGNAL(rowsMoved(QModelIndex, int, int, QModelIndex, int))),
                    receivers(SIGNAL(rowsAboutToBeMoved(QModelIndex, int, int, QModelIndex, int))),
                    receivers(SIGNAL(modelAboutToBeReset())),
                    receivers(SIGNAL(modelReset())),
                    receivers(SIGNAL(rowsAboutToBeInserted(QModelIndex, int, int))),
                    receivers(SIGNAL(rowsInserted(QModelIndex, int, int))),
                    receivers(SIGNAL(columnsInserted(QModelIndex, int, int))),
                    receivers(SIGNAL(destroyed()))};
        }
    };
    Counted first(10);
    Counted second(10);
    View view(&first);
    const auto settled = [](const Counted &model) {
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        return model.listeners();
    };
    const QList<int> once = settled(first);
    view.setModel(&second);
    QCOMPARE(settled(second), once);
    const QList<int> left = settled(first); // what Qt's header forgets to disconnect
    for (int i = 0; i < 5; ++i) {
        view.setModel(&first);
        QCOMPARE(settled(first), once);
        QCOMPARE(settled(second), left);
        view.setModel(&second);
    }
}

// A row that leaves the view downwards must not come back with an old picture.
void TestQTableFastView::pushedOutRowsAreEvicted()
{
    BigModel model(1000);
    View view(&model);
    view.setPaintBufferEnabled(true);
    view.showWith(200, 200);
    view.bar()->setValue(100);
    View::settle();
    model.insert(105, 10); // rows 105 to 109 are now 115 to 119, below the view
    model.insert(113, 1);  // below the view: the cache is not told
    View::settle();
    view.recorder.forget();
    view.bar()->setValue(107);
    View::settle();
    for (int row = 112; row < 117; ++row)
        QCOMPARE(view.recorder.timesPainted(row, 0), 1);
}

// Rows moved above others that had been shifted, then removed, in one turn.
void TestQTableFastView::boundsAreTheCaches_data()
{
    using Act = std::function<void(View &)>;
    QTest::addColumn<Act>("act");
    QTest::newRow("scroll") << Act([](View &v) { v.bar()->setValue(v.bar()->value() + 1); });
    QTest::newRow("scroll columns") << Act([](View &v) { v.horizontalScrollBar()->setValue(70); });
    QTest::newRow("resize") << Act([](View &v) { v.resize(v.width() + 1, v.height() - 40); });
    QTest::newRow("switch off and on") << Act([](View &v) {
        v.setPaintBufferEnabled(false);
        v.setPaintBufferEnabled(true);
    });
}

// A derived view may have set others.
void TestQTableFastView::boundsAreTheCaches()
{
    QFETCH(std::function<void(View &)>, act);
    BigModel model(1000);
    View view(&model);
    view.setPaintBufferEnabled(true);
    view.showWith(200, 200);
    view.bar()->setValue(100);
    const auto wanted = [&] {
        const int first = view.getFirstVisibleItem();
        const auto [left, right] = view.startAndEndColumns(view.viewport()->rect());
        return PixmapCacheIndexed::VisibleBounds {
            first, first + view.viewport()->height() / rowHeight + 1, left, right};
    };
    View::settle();
    QCOMPARE(view.m_pixmapCacheIndexed.visibleBounds(), wanted());
    view.m_pixmapCacheIndexed.setVisibleBounds(3, 5, 1, 1);
    act(view);
    QCOMPARE(view.m_pixmapCacheIndexed.visibleBounds(), wanted());
    // Rows that come above move what the cache covers with what it holds.
    view.m_pixmapCacheIndexed.setVisibleBounds(3, 5, 1, 1);
    model.insert(0, 7);
    view.bar()->setValue(view.bar()->value() + 3);
    QCOMPARE(view.m_pixmapCacheIndexed.visibleBounds(), wanted());
}

void TestQTableFastView::rowsMovedAboveCachedOnes()
{
    QStringList texts;
    for (int row = 0; row < 17; ++row)
        texts.append(QString::number(row));
    QStringListModel model(texts);
    View view(&model);
    view.setItemDelegate(new QStyledItemDelegate(&view));
    view.setPaintBufferEnabled(true);
    view.header()->setSortIndicator(0, Qt::AscendingOrder);
    view.showWith(200, 200);
    view.setCurrentIndex(QModelIndex());
    model.removeRows(0, 11);
    model.insertRows(0, 2);
    model.moveRows({}, 0, 2, {}, 4);
    model.insertRows(0, 4);
    model.removeRows(4, 2);
    View::settle();
    const QImage now = maintained(view);
    view.setPaintBufferEnabled(false);
    view.viewport()->update();
    View::settle();
    QCOMPARE(maintained(view), now);
}

void TestQTableFastView::focusLeavesAnIndexWidget()
{
    BigModel model(50);
    QWidget window;
    QLineEdit other(&window);
    View view(&model);
    view.setParent(&window);
    view.setGeometry(0, 40, 300, 200);
    view.setPaintBufferEnabled(true);
    window.resize(300, 240);
    window.show();
    window.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    auto *editor = new QLineEdit;
    view.setIndexWidget(model.index(2, 1), editor);
    view.selectionModel()->setCurrentIndex(model.index(2, 1), QItemSelectionModel::NoUpdate);
    const auto cellBeside = [&] {
        return maintained(view).copy(view.visualRect(model.index(2, 0)));
    };
    other.setFocus();
    View::settle();
    const QImage before = cellBeside();
    editor->setFocus();
    View::settle();
    QVERIFY(cellBeside() != before);
    other.setFocus();
    View::settle();
    QCOMPARE(cellBeside(), before);
    view.setParent(nullptr);
}

void TestQTableFastView::replacedDelegateRepaints()
{
    BigModel model(50);
    View view(&model);
    view.setPaintBufferEnabled(true);
    view.showWith(200, 200);
    for (int i = 0; i < 3; ++i) { // likely at the same address each time
        auto next = std::make_unique<Recorder>();
        view.setItemDelegate(next.get());
        View::settle();
        QCOMPARE(next->timesPainted(2, 1), 1);
        auto ofColumn = std::make_unique<Recorder>();
        view.setItemDelegateForColumn(2, ofColumn.get());
        View::settle();
        QCOMPARE(ofColumn->timesPainted(2, 2), 1);
        view.setItemDelegate(&view.recorder);
        view.setItemDelegateForColumn(2, nullptr);
    }
}

QTEST_MAIN(TestQTableFastView)
#include "tst_qtablefastview.moc"
