// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "bigmodel.h"
#include "recordedview.h"

#include <QLineEdit>
#include <QStandardItemModel>
#include <QStyle>
#include <QStyledItemDelegate>
#include <QTest>

#include <memory>

class TestViewChanges : public QObject
{
    Q_OBJECT

public:
    //! Called before the application is made: what is reused at ratio 1 is tested.
    static void initMain() { qputenv("QT_SCALE_FACTOR", "1"); }

private slots:
    void staysAtTheEnd_data();
    void staysAtTheEnd();
    void keepsRowsAboveInsertions_data();
    void keepsRowsAboveInsertions();
    void keepsRowsWhenRemovedAbove_data();
    void keepsRowsWhenRemovedAbove();
    void currentFollowsTheTop();
    void followingEndsTheSelectionUnlessTheModelLies_data();
    void followingEndsTheSelectionUnlessTheModelLies();
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
    void focusLeavesAnIndexWidget();
    void replacedDelegateRepaints();
};

void TestViewChanges::staysAtTheEnd_data()
{
    addScrollModes();
}

void TestViewChanges::staysAtTheEnd()
{
    QFETCH(bool, isPerPixel);
    BigModel model(100);
    View view(&model);
    if (isPerPixel)
        view.setVerticalScrollMode(perPixel);
    view.showWith(200, 205);
    view.bar()->setValue(view.bar()->maximum());
    settleEvents();
    for (int i = 1; i < 5; ++i) {
        view.recorder.forget();
        model.append(i);
        QCOMPARE(view.bar()->value(), view.bar()->maximum());
        settleEvents();
        const QRect last = view.visualRect(model.index(model.rows - 1, 0));
        QVERIFY(last.bottom() < 205);
        QCOMPARE(view.recorder.timesPainted(model.rows - 1, 0), 1);
        QCOMPARE(view.recorder.timesPainted(model.rows - 1 - i, 0), 0); // moved, not painted
    }
    model.insert(3, 10); // far above: the same rows stay
    QCOMPARE(view.bar()->value(), view.bar()->maximum());
}

void TestViewChanges::keepsRowsAboveInsertions_data()
{
    addScrollModes();
}

void TestViewChanges::keepsRowsAboveInsertions()
{
    QFETCH(bool, isPerPixel);
    BigModel model(1000);
    View view(&model);
    if (isPerPixel)
        view.setVerticalScrollMode(perPixel);
    view.showWith(200, 620);
    view.bar()->setValue(isPerPixel ? 100 * rowHeight + 7 : 100);
    settleEvents();
    const QImage before = maintainedPicture(view);
    const int value = view.bar()->value();
    view.paintEvents = 0;
    model.insert(0, 10);
    QCOMPARE(view.bar()->value(), value + (isPerPixel ? 10 * rowHeight : 10));
    model.insert(110, 1); // at the top row: above it
    settleEvents();
    QCOMPARE(view.paintEvents, 0);
    QCOMPARE(maintainedPicture(view), before);
    QCOMPARE(view.getFirstVisibleItem(), 111);
    model.insert(900, 5);
    model.insert(115, 1); // in view: the top stays
    settleEvents();
    QCOMPARE(view.getFirstVisibleItem(), 111);
}

void TestViewChanges::keepsRowsWhenRemovedAbove_data()
{
    addScrollModes();
}

void TestViewChanges::keepsRowsWhenRemovedAbove()
{
    QFETCH(bool, isPerPixel);
    BigModel model(1000);
    View view(&model);
    if (isPerPixel)
        view.setVerticalScrollMode(perPixel);
    view.showWith(200, 200);
    view.bar()->setValue(isPerPixel ? 100 * rowHeight + 7 : 100);
    settleEvents();
    view.paintEvents = 0;
    model.remove(0, 30);
    QCOMPARE(view.bar()->value(), isPerPixel ? 70 * rowHeight + 7 : 70);
    settleEvents();
    QCOMPARE(view.paintEvents, 0);
    model.remove(68, 2);
    QCOMPARE(view.getFirstVisibleItem(), 68);
    model.remove(500, 10);
    QCOMPARE(view.getFirstVisibleItem(), 68);
    model.remove(60, 900);
    QCOMPARE(view.bar()->value(), view.bar()->maximum());
}

void TestViewChanges::currentFollowsTheTop()
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

void TestViewChanges::followingEndsTheSelectionUnlessTheModelLies_data()
{
    QTest::addColumn<bool>("isLying");
    QTest::newRow("tells of all rows") << false;
    QTest::newRow("has more") << true;
}

void TestViewChanges::followingEndsTheSelectionUnlessTheModelLies()
{
    QFETCH(bool, isLying);
    BigModel model(100);
    View view(&model);
    view.setSelectionMode(QAbstractItemView::MultiSelection);
    view.showWith(200, 200);
    view.setCurrentIndex(model.index(0, 0));
    view.selectionModel()->select(model.index(7, 0), QItemSelectionModel::Select);
    if (isLying)
        model.insertAndLie(0, 2);
    else
        model.insert(0, 2);
    QCOMPARE(view.currentIndex(), model.index(0, 0));
    QCOMPARE(view.selectionModel()->isSelected(model.index(9, 0)), isLying);
}

void TestViewChanges::currentFollowsTheEnd()
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

void TestViewChanges::shortTableFollowsSortOrder_data()
{
    QTest::addColumn<int>("order");
    QTest::addColumn<bool>("isAtEnd");
    QTest::newRow("ascending") << int(Qt::AscendingOrder) << false;
    QTest::newRow("descending") << int(Qt::DescendingOrder) << true;
}

void TestViewChanges::shortTableFollowsSortOrder()
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

void TestViewChanges::resetFollowsTheEdge_data()
{
    QTest::addColumn<int>("current");
    QTest::addColumn<int>("after");
    QTest::newRow("first") << 0 << 0;
    QTest::newRow("last") << 99 << 29;
    QTest::newRow("between") << 50 << -1;
}

void TestViewChanges::resetFollowsTheEdge()
{
    QFETCH(int, current);
    BigModel model(100);
    View view(&model);
    view.showWith(200, 200);
    view.setCurrentIndex(model.index(current, 2));
    model.restart(30);
    settleEvents();
    QTEST(view.currentIndex().row(), "after");
    QCOMPARE(view.bar()->maximum(), 20);
}

void TestViewChanges::resetTargetMayVanish()
{
    auto model = std::make_unique<BigModel>(100);
    View view(model.get());
    view.setCurrentIndex(model->index(0, 0));
    model->restart(30);
    BigModel other(10);
    view.setModel(&other);
    view.setCurrentIndex(other.index(5, 0));
    model.reset();
    settleEvents();
    QVERIFY(view.currentIndex().model() == &other);
}

void TestViewChanges::inconsistentInsertionRepaints()
{
    BigModel model(1000);
    View view(&model);
    view.setPaintBufferEnabled(true);
    view.showWith(200, 200);
    view.bar()->setValue(100);
    settleEvents();
    view.recorder.forget();
    model.insertAndLie(0, 2);
    settleEvents();
    QCOMPARE(view.bar()->maximum(), model.rows - 10);
    for (int row = view.getFirstVisibleItem(), i = 0; i < 10; ++i)
        QCOMPARE(view.recorder.timesPainted(row + i, 0), 1);
    view.recorder.forget();
    model.insert(0, 2); // the count is right again
    settleEvents();
    QVERIFY(view.recorder.painted.isEmpty());
}

void TestViewChanges::childRowsChangeNothing()
{
    QStandardItemModel model(50, 2);
    model.setItem(0, new QStandardItem);
    View view(&model);
    view.showWith(200, 200);
    view.bar()->setValue(20);
    settleEvents();
    view.paintEvents = 0;
    model.item(0)->appendRow(new QStandardItem);
    model.item(0)->appendRow(new QStandardItem);
    model.item(0)->removeRow(0);
    settleEvents();
    QCOMPARE(view.bar()->value(), 20);
    QCOMPARE(view.paintEvents, 0);
    QVERIFY(view.hasAutoScroll());
}

void TestViewChanges::movesKeepRows_data()
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

void TestViewChanges::movesOutOfSightPaintNothing_data()
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

void TestViewChanges::movesOutOfSightPaintNothing()
{
    QFETCH(QAbstractItemView::ScrollMode, mode);
    QFETCH(int, row);
    QFETCH(int, to);
    BigModel model(1000);
    View view(&model);
    view.setVerticalScrollMode(mode);
    view.showWith(200, 200);
    view.bar()->setValue(mode == perPixel ? 100 * rowHeight : 100);
    settleEvents();
    view.paintEvents = 0;
    model.move(row, 1, to);
    settleEvents();
    QTEST(view.paintEvents > 0, "isPainted");
}

void TestViewChanges::movesKeepRows()
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

void TestViewChanges::autoScrollIsGivenBack()
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

void TestViewChanges::dataChangeWithInvalidCorners()
{
    BigModel model(100);
    View view(&model);
    view.setPaintBufferEnabled(true);
    view.showWith(200, 200);
    view.recorder.forget();
    emit model.dataChanged({}, {});
    settleEvents();
    QCOMPARE(view.recorder.timesPainted(0, 0), 1);
    QCOMPARE(view.recorder.timesPainted(9, 3), 1);
    view.recorder.forget();
    view.dataChanged(model.index(3, 0), model.index(3, 0));
    settleEvents();
    QCOMPARE(view.recorder.timesPainted(3, 0), 1);
}

void TestViewChanges::layoutChangeRepaints()
{
    BigModel model(100);
    View view(&model);
    view.setPaintBufferEnabled(true);
    view.showWith(200, 200);
    view.recorder.forget();
    model.relayout(QAbstractItemModel::NoLayoutChangeHint);
    settleEvents();
    QCOMPARE(view.recorder.timesPainted(5, 1), 1);
    model.rows = 40; // as models do that hide rows by a layout change
    model.relayout(QAbstractItemModel::VerticalSortHint);
    QCOMPARE(view.bar()->maximum(), 30);
    model.relayout(QAbstractItemModel::HorizontalSortHint);
    QCOMPARE(view.bar()->maximum(), 30);
}

void TestViewChanges::sorting()
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

void TestViewChanges::columnSizes()
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

void TestViewChanges::onlyRowsOnScreenAreMeasured()
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

void TestViewChanges::columnResizeMovesPixels_data()
{
    addDirections();
}

void TestViewChanges::columnResizeMovesPixels()
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
        settleEvents();
        QCOMPARE(view.recorder.timesPainted(2, 1), 1);
        QCOMPARE(view.recorder.timesPainted(2, 3), 0); // comes from the buffer
        const QImage now = maintainedPicture(view);
        view.setPaintBufferEnabled(false);
        view.viewport()->update();
        settleEvents();
        QCOMPARE(maintainedPicture(view), now);
        view.setPaintBufferEnabled(true);
        view.viewport()->update();
        settleEvents();
    }
}

void TestViewChanges::hiddenColumnIsLeftAlone()
{
    BigModel model(100, 4);
    View view(&model);
    view.showWith(400, 200);
    view.hideColumn(1);
    QVERIFY(view.isColumnHidden(1));
    QCOMPARE(view.columnWidth(1), 0);
    QCOMPARE(view.visualRect(model.index(0, 1)), QRect());
    QVERIFY(view.isIndexHidden(model.index(0, 1)));
    settleEvents();
    view.paintEvents = 0;
    view.columnResized(1, 60, 0);
    view.updateColumn(1);
    settleEvents();
    QCOMPARE(view.paintEvents, 0);
    view.recorder.forget();
    view.updateColumn(2);
    settleEvents();
    QCOMPARE(view.recorder.timesPainted(0, 2), 1);
    QVERIFY(!view.isIndexHidden(QModelIndex()));
    // An index out of range does not count as hidden.
    const BigModel longer(101, 4);
    QVERIFY(view.isIndexHidden(longer.index(99, 1)));
    QVERIFY(!view.isIndexHidden(longer.index(100, 1)));
    BigModel columns(1, 6);
    const BigModel wider(100, 6);
    QHeaderView apart(Qt::Horizontal);
    apart.setModel(&columns);
    view.setHeader(&apart);
    apart.hideSection(3);
    apart.hideSection(4);
    QVERIFY(view.isIndexHidden(wider.index(0, 3)));
    QVERIFY(!view.isIndexHidden(wider.index(0, 4)));
}

void TestViewChanges::editorsFollowTheirCells()
{
    BigModel model(1000);
    View view(&model);
    view.showWith(200, 200);
    const QPersistentModelIndex index = model.index(4, 1);
    view.openPersistentEditor(index);
    const QWidget *editor = view.indexWidget(index);
    QCOMPARE(editor->geometry(), view.visualRect(index));
    const auto follows = [&] {
        settleEvents();
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

void TestViewChanges::resetEndsEditing()
{
    BigModel model(10);
    View view(&model);
    view.showWith(200, 200);
    view.edit(model.index(2, 1));
    QPointer<QWidget> editor = view.indexWidget(model.index(2, 1));
    QVERIFY(editor);
    QCOMPARE(view.state(), View::EditingState);
    model.restart(20);
    settleEvents();
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

void TestViewChanges::dataChangeReachesEditors()
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

void TestViewChanges::destroyedModelLeavesNone()
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
    settleEvents();
    QCOMPARE(view.itemAtCoordinate(4), -1);
    pressKey(&view, Qt::Key_Down);
    view.resize(300, 300);
    settleEvents();
    const QImage picture = maintainedPicture(view);
    QCOMPARE(picture.pixelColor(5, 5), view.viewport()->palette().color(QPalette::Base));
    BigModel other(50);
    view.setModel(&other);
    QCOMPARE(view.bar()->maximum() > 0, true);
}

void TestViewChanges::destroyedSelectionModelLeavesNone()
{
    BigModel model(100);
    View view(&model);
    view.showWith(200, 200);
    {
        QItemSelectionModel own(&model);
        view.setSelectionModel(&own);
        view.setCurrentIndex(model.index(3, 1));
        QCOMPARE(own.currentIndex(), model.index(3, 1));
        settleEvents();
    }
    view.viewport()->update();
    settleEvents();
    QVERIFY(!(view.recorder.optionOf(3, 0).state & QStyle::State_HasFocus));
    view.setSelection(QRect(0, 0, 30, 30), QItemSelectionModel::ClearAndSelect);
    model.insert(0, 2);
    model.remove(0, 2);
    settleEvents();
    QItemSelectionModel next(&model);
    view.setSelectionModel(&next);
    QCOMPARE(view.selectionModel(), &next);
    QCOMPARE(view.header()->selectionModel(), &next);
    view.setSelectionModel(nullptr);
    QCOMPARE(view.selectionModel(), &next);
}

void TestViewChanges::foreignSelectionModelIsRefused()
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

void TestViewChanges::replacedModelChangesNothing()
{
    BigModel first(100);
    BigModel second(100);
    View view(&first);
    view.showWith(200, 200);
    view.setModel(&second);
    view.bar()->setValue(50);
    settleEvents();
    view.paintEvents = 0;
    first.insert(0, 7);
    first.remove(0, 3);
    first.move(0, 1, 5);
    first.relayout(QAbstractItemModel::VerticalSortHint);
    emit first.dataChanged(first.index(0, 0), first.index(99, 1));
    first.restart(5);
    settleEvents();
    QCOMPARE(view.bar()->value(), 50);
    QCOMPARE(view.paintEvents, 0);
    view.setModel(nullptr);
    QVERIFY(!view.model());
    second.insert(0, 1);
    settleEvents();
    QVERIFY(!view.indexAt(QPoint(3, 3)).isValid());
}

void TestViewChanges::setModelLeavesNoSelectionModelBehind()
{
    BigModel first(10);
    BigModel second(10);
    View view;
    for (int i = 0; i < 10; ++i) {
        view.setModel(&first);
        view.setModel(&second);
        view.setModel(nullptr);
    }
    settleEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QVERIFY(view.findChildren<QItemSelectionModel *>(QString(), Qt::FindDirectChildrenOnly).size()
            <= 1);
    QVERIFY(view.header()->findChildren<QItemSelectionModel *>().size() <= 1);
}

void TestViewChanges::columnCountChanges()
{
    QStandardItemModel model(50, 3);
    View view(&model);
    view.setPaintBufferEnabled(true);
    view.showWith(300, 200);
    view.recorder.forget();
    model.insertColumn(1);
    settleEvents();
    QCOMPARE(view.recorder.timesPainted(0, 0), 1);
    QVERIFY(view.recorder.timesPainted(0, 2) > 0);
    model.removeColumn(0);
    settleEvents();
    QCOMPARE(view.header()->count(), 3);
    const QImage now = maintainedPicture(view);
    view.setPaintBufferEnabled(false);
    view.viewport()->update();
    settleEvents();
    QCOMPARE(maintainedPicture(view), now);
}

void TestViewChanges::burstCostsOnePaint()
{
    BigModel model(1000);
    View view(&model);
    view.setPaintBufferEnabled(true);
    view.showWith(200, 200);
    view.bar()->setValue(view.bar()->maximum());
    settleEvents();
    view.paintEvents = 0;
    view.recorder.forget();
    for (int i = 0; i < 500; ++i)
        model.append(1);
    settleEvents();
    QCOMPARE(view.paintEvents, 1);
    QCOMPARE(view.recorder.painted.size(), 10 * 4);
    QCOMPARE(view.bar()->value(), view.bar()->maximum());
}

void TestViewChanges::connectionsExistOnce()
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

void TestViewChanges::focusLeavesAnIndexWidget()
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
        return maintainedPicture(view).copy(view.visualRect(model.index(2, 0)));
    };
    other.setFocus();
    settleEvents();
    const QImage before = cellBeside();
    editor->setFocus();
    settleEvents();
    QVERIFY(cellBeside() != before);
    other.setFocus();
    settleEvents();
    QCOMPARE(cellBeside(), before);
    view.setParent(nullptr);
}

void TestViewChanges::replacedDelegateRepaints()
{
    BigModel model(50);
    View view(&model);
    view.setPaintBufferEnabled(true);
    view.showWith(200, 200);
    for (int i = 0; i < 3; ++i) { // likely at the same address each time
        auto next = std::make_unique<Recorder>();
        view.setItemDelegate(next.get());
        settleEvents();
        QCOMPARE(next->timesPainted(2, 1), 1);
        auto ofColumn = std::make_unique<Recorder>();
        view.setItemDelegateForColumn(2, ofColumn.get());
        settleEvents();
        QCOMPARE(ofColumn->timesPainted(2, 2), 1);
        view.setItemDelegate(&view.recorder);
        view.setItemDelegateForColumn(2, nullptr);
    }
}

QTEST_MAIN(TestViewChanges)
#include "tst_viewchanges.moc"
