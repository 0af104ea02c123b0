// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "bigmodel.h"
#include "qtablefastview.h"
#include "recordedview.h"

#include <QHeaderView>
#include <QScrollBar>
#include <QSignalSpy>
#include <QStandardItemModel>
#include <QStyle>
#include <QStyleFactory>
#include <QTest>
#include <QWheelEvent>

#include <memory>

class TestQTableFastView : public QObject
{
    Q_OBJECT

public:
    //! Called before the application is made: what is reused at ratio 1 is tested.
    static void initMain() { qputenv("QT_SCALE_FACTOR", "1"); }

private slots:
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
};

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
    settleEvents();
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
    settleEvents();
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
    addScrollModes();
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
    settleEvents();
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
    settleEvents();
    BigModel model(10);
    view.setModel(&model);
    QCOMPARE(view.m_viewportMargins.top(), view.header()->sizeHint().height());
    QVERIFY(view.m_viewportMargins.top() > 0);

    QStandardItemModel growing;
    View other(&growing);
    other.resize(300, 200);
    other.show();
    settleEvents();
    growing.setColumnCount(3);
    QCOMPARE(other.m_viewportMargins.top(), other.header()->sizeHint().height());
    QVERIFY(other.m_viewportMargins.top() > 0);
}

void TestQTableFastView::resizeKeepsTheLastRow_data()
{
    addScrollModes();
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
        settleEvents();
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
    QCOMPARE(view.horizontalOffset(), 0);
    model.insert(0, 3);
    settleEvents();
    QVERIFY(!view.indexAt(QPoint(3, 3)).isValid());
    QCOMPARE(view.columnWidth(0), 0);
    QCOMPARE(view.columnViewportPosition(0), -1);
    view.hideColumn(0);
    view.resizeColumnsToContents();
    view.moveCursor(View::MoveRight, Qt::NoModifier);
    view.setHeader(new QHeaderView(Qt::Horizontal));
    settleEvents();
    QVERIFY(view.indexAt(QPoint(3, 3)).isValid());
}

void TestQTableFastView::longScrollRepaints()
{
    BigModel model(1000);
    View view(&model);
    view.showWith(200, 200);
    view.recorder.forget();
    view.bar()->setValue(500);
    settleEvents();
    for (int row = 500; row < 510; ++row)
        QVERIFY(view.recorder.timesPainted(row, 0) == 1);
}

void TestQTableFastView::shortScrollPaintsTheStripOnly()
{
    BigModel model(1000);
    View view(&model);
    view.showWith(200, 200);
    view.bar()->setValue(100);
    settleEvents();
    view.recorder.forget();
    view.bar()->setValue(102);
    settleEvents();
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
    for (const int column : {0, model.columnCount() - 1}) {
        view.setItemDelegateForColumn(column, &taller);
        QCOMPARE(view.updatedItemHeight(QStyleOptionViewItem()), 77);
        view.setItemDelegateForColumn(column, nullptr);
    }
    view.setItemDelegateForColumn(model.columnCount(), &taller);
    QCOMPARE(view.updatedItemHeight(QStyleOptionViewItem()), view.m_itemHeight);
    view.setItemDelegateForColumn(0, &taller);
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
    settleEvents();
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
    settleEvents();
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
    settleEvents();
    QVERIFY(model.rows > 50);
    QCOMPARE(view.bar()->maximum(), model.rows - 10);
    QCOMPARE(maintainedPicture(view),
             view.viewport()->grab().toImage().convertToFormat(maintainedPicture(view).format()));
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

QTEST_MAIN(TestQTableFastView)
#include "tst_qtablefastview.moc"
