// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "bigmodel.h"
#include "recordedview.h"

#include <QScrollBar>
#include <QTest>

class TestViewCursor : public QObject
{
    Q_OBJECT

public:
    //! Called before the application is made: what is reused at ratio 1 is tested.
    static void initMain() { qputenv("QT_SCALE_FACTOR", "1"); }

private slots:
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
};

void TestViewCursor::moveCursorInRows()
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

void TestViewCursor::moveCursorInColumns_data()
{
    addDirections();
}

void TestViewCursor::moveCursorInColumns()
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

void TestViewCursor::moveRightAtTheEndScrolls()
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

void TestViewCursor::hiddenColumnAtTheEndCountsAsNone()
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

void TestViewCursor::moveCursorWithoutCurrent()
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

void TestViewCursor::arrowKeysWithoutCurrent()
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

void TestViewCursor::otherKeysReachTheBase()
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

void TestViewCursor::standardPageUp_data()
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
void TestViewCursor::standardPageUp()
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
void TestViewCursor::standardKeysBeginOnScreen()
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

void TestViewCursor::unknownKeyIsReported()
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

void TestViewCursor::rubberBandBelowRows()
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

void TestViewCursor::rubberBandSelects()
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

void TestViewCursor::currentFirstAndLast()
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

void TestViewCursor::setCurrentLastOnNothing()
{
    BigModel model(0);
    View view(&model);
    view.setCurrentLast();
    QVERIFY(!view.currentIndex().isValid());
    QVERIFY(view.currentLast);
}

void TestViewCursor::selectRowOutOfRange()
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

void TestViewCursor::selectionRegion_data()
{
    addDirections();
}

void TestViewCursor::selectionRegion()
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

void TestViewCursor::currentStripWithHiddenColumn()
{
    BigModel model(100);
    View view(&model);
    view.showWith(200, 200);
    view.hideColumn(1);
    settleEvents();
    view.recorder.forget();
    view.selectionModel()->setCurrentIndex(model.index(4, 1), QItemSelectionModel::NoUpdate);
    settleEvents();
    QCOMPARE(view.recorder.timesPainted(4, 0), 1);
}

void TestViewCursor::submitsOnRowChange()
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

QTEST_MAIN(TestViewCursor)
#include "tst_viewcursor.moc"
