// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

// Where rows and columns are, and what scrolls to them.

#include "bigmodel.h"
#include "recordedview.h"
#include "scalablefont.h"

#include <QHeaderView>
#include <QProxyStyle>
#include <QRegularExpression>
#include <QScrollBar>
#include <QStandardItemModel>
#include <QTest>

namespace {

//! Notes whether a cell is asked for that it does not have.
class StrictModel : public BigModel
{
public:
    using BigModel::BigModel;
    QModelIndex index(int row, int column, const QModelIndex &parent) const override
    {
        isAskedOutside = isAskedOutside || !hasIndex(row, column, parent);
        return BigModel::index(row, column, parent);
    }
    mutable bool isAskedOutside = false;
};

} // namespace

class tst_ViewPlaces : public QObject
{
    Q_OBJECT

private slots:
    void pointsOutsideAskForNoIndex();
    void keysAskForNoIndexOfAnEmptyTable_data();
    void keysAskForNoIndexOfAnEmptyTable();
    void keysFindTheOnlyRow();
    void leftKeyLeadsToTheParent();
    void selectsTheFirstRow();
    void emptyRubberBandSelectsNothing();
    void lastRowOfATableThatLostItsRows();
    void selectionAtTheVeryEdges();
    void scrollBarWaitsForTheEndOfAChange_data();
    void scrollBarWaitsForTheEndOfAChange();
    void rowsOfARegion_data();
    void rowsOfARegion();
    void childRowsAreNoChange();
    void oneRowMovesPastTheView();
    void rowHeightIsMeasuredAtOnce();
    void higherRowsBeginAtTheTop();
    void scrollToColumns_data();
    void scrollToColumns();
    void scrollToNothing();
    void allRowsOfAShortTableAreMeasured();
    void cellsAreMeasuredInTheViewsFont();
    void newHeaderIsInItsPlaceAtOnce();
    void scrollToBesideFrozenColumns();
};

void tst_ViewPlaces::pointsOutsideAskForNoIndex()
{
    StrictModel model(3, 2);
    View view(&model);
    view.showWith(200, 200);
    model.isAskedOutside = false;
    QVERIFY(view.indexAt(QPoint(10, 10)).isValid());
    for (const QPoint &point : {QPoint(10, 70), QPoint(150, 10), QPoint(10, -1), QPoint(-1, 10)})
        QVERIFY(!view.indexAt(point).isValid());
    delete view.header();
    QVERIFY(!view.indexAt(QPoint(10, 10)).isValid());
    QVERIFY(!model.isAskedOutside);
}

void tst_ViewPlaces::rowHeightIsMeasuredAtOnce()
{
    BigModel model(3);
    QTableFastView view;
    view.setModel(&model);
    const int usual = view.rowHeight();
    view.setFont(scalableFont(usual + 20));
    QCOMPARE(view.rowHeight(), usual);
    view.setRowHeightFollowsFont(true);
    QVERIFY(view.rowHeight() > usual);
}

void tst_ViewPlaces::higherRowsBeginAtTheTop()
{
    BigModel model(5);
    View view(&model);
    view.showWith(200, 200);
    QCOMPARE(view.bar()->maximum(), 0);
    view.setRowHeight(100); // all of them fitted, now two do
    QCOMPARE(view.bar()->maximum(), 3);
    QCOMPARE(view.bar()->value(), 0);
}

void tst_ViewPlaces::scrollToColumns_data()
{
    QTest::addColumn<QAbstractItemView::ScrollHint>("hint");
    QTest::addColumn<int>("column"); // of 20 that are 60 pixels wide, in 200, from 300 on
    QTest::addColumn<int>("offset");
    using View = QAbstractItemView;
    QTest::newRow("in sight") << View::EnsureVisible << 6 << 300;
    QTest::newRow("at the left edge") << View::EnsureVisible << 5 << 300;
    QTest::newRow("partly in sight") << View::EnsureVisible << 8 << 8 * 60 - 200 + 60;
    QTest::newRow("at the right") << View::EnsureVisible << 10 << 10 * 60 - 200 + 60;
    QTest::newRow("at the left") << View::EnsureVisible << 2 << 120;
    QTest::newRow("centred") << View::PositionAtCenter << 8 << 8 * 60 - 70;
    QTest::newRow("in sight, other rows") << View::PositionAtTop << 6 << 300;
}

void tst_ViewPlaces::scrollToColumns()
{
    QFETCH(QAbstractItemView::ScrollHint, hint);
    QFETCH(int, column);
    BigModel model(100, 20);
    View view(&model);
    view.showWith(200, 200);
    view.horizontalScrollBar()->setValue(300);
    view.scrollTo(model.index(3, column), hint);
    QTEST(view.header()->offset(), "offset");
    view.horizontalScrollBar()->setValue(300);
    view.scrollToRow(model.index(3, column), hint);
    QCOMPARE(view.header()->offset(), 300);
}

void tst_ViewPlaces::scrollToNothing()
{
    BigModel model(100);
    const BigModel other(100);
    View view(&model);
    view.showWith(200, 200);
    view.scrollTo(other.index(50, 4));
    view.scrollTo(QModelIndex());
    QCOMPARE(view.bar()->value(), 0);
    QCOMPARE(view.horizontalScrollBar()->value(), 0);
    delete view.header();
    view.scrollTo(model.index(50, 4));
    QCOMPARE(view.bar()->value(), 0);
}

void tst_ViewPlaces::scrollToBesideFrozenColumns()
{
    class Frozen : public View
    {
    public:
        using View::View;
        int frozenColumnWidth() const override { return 30; }
    };
    BigModel model(100, 20);
    Frozen view(&model);
    view.showWith(200, 200);
    view.horizontalScrollBar()->setValue(300);
    view.scrollTo(model.index(3, 2));
    QCOMPARE(view.header()->offset(), 2 * 60 - 30);
    view.header()->resizeSection(8, 200); // it just fits
    view.horizontalScrollBar()->setValue(300);
    view.scrollTo(model.index(3, 8));
    QCOMPARE(view.header()->offset(), 8 * 60);
    view.header()->resizeSection(8, 201);
    view.horizontalScrollBar()->setValue(300);
    view.scrollTo(model.index(3, 8));
    QCOMPARE(view.header()->offset(), 8 * 60 - 30);
}

void tst_ViewPlaces::allRowsOfAShortTableAreMeasured()
{
    BigModel model(3);
    View view(&model);
    view.showWith(200, 200);
    QCOMPARE(view.sizeHintForColumn(0), 50 + 2 + 1);
}

void tst_ViewPlaces::cellsAreMeasuredInTheViewsFont()
{
    BigModel model(100);
    QTableFastView view;
    view.setModel(&model);
    view.setFont(scalableFont(10));
    const int small = view.sizeHintForColumn(0);
    view.setFont(scalableFont(50));
    QVERIFY(view.sizeHintForColumn(0) > 2 * small);
}

void tst_ViewPlaces::newHeaderIsInItsPlaceAtOnce()
{
    BigModel model(100);
    View view(&model);
    view.showWith(200, 200);
    const QRect place = view.header()->geometry();
    QCOMPARE(place.width(), 200);
    QCOMPARE(place.bottom() + 1, view.viewport()->y());
    auto *header = new QHeaderView(Qt::Horizontal);
    view.setHeader(header);
    QCOMPARE(header->geometry(), place);
}

void tst_ViewPlaces::keysAskForNoIndexOfAnEmptyTable_data()
{
    QTest::addColumn<bool>("hasStandardKeys");
    QTest::newRow("own keys") << false;
    QTest::newRow("standard keys") << true;
}

void tst_ViewPlaces::keysAskForNoIndexOfAnEmptyTable()
{
    QFETCH(bool, hasStandardKeys);
    StrictModel model(0, 2);
    View view(&model);
    view.setStandardKeys(hasStandardKeys);
    view.showWith(200, 200);
    model.isAskedOutside = false;
    for (const View::CursorAction action : {View::MoveUp, View::MoveDown, View::MoveHome,
                                            View::MoveEnd, View::MoveLeft, View::MoveRight}) {
        QVERIFY(!view.moveCursor(action, Qt::NoModifier).isValid());
    }
    QVERIFY(!model.isAskedOutside);
}

void tst_ViewPlaces::keysFindTheOnlyRow()
{
    BigModel model(1, 2);
    View view(&model);
    for (const bool isStandard : {false, true}) {
        view.setStandardKeys(isStandard);
        QCOMPARE(view.moveCursor(View::MoveDown, Qt::NoModifier), model.index(0, 0));
    }
}

//! In styles whose arrow keys walk through trees.
void tst_ViewPlaces::leftKeyLeadsToTheParent()
{
    class Style : public QProxyStyle
    {
    public:
        int styleHint(StyleHint hint, const QStyleOption *option, const QWidget *widget,
                      QStyleHintReturn *data) const override
        {
            return hint == SH_ItemView_ArrowKeysNavigateIntoChildren
                ? navigates
                : QProxyStyle::styleHint(hint, option, widget, data);
        }
        int navigates = 1;
    };
    Style style;
    QStandardItemModel model(2, 2);
    auto *parent = new QStandardItem;
    parent->appendRow({new QStandardItem, new QStandardItem});
    model.setItem(0, 0, parent);
    View view;
    view.setStyle(&style);
    view.setModel(&model);
    view.setCurrentIndex(model.index(0, 1, parent->index()));
    QCOMPARE(view.moveCursor(View::MoveLeft, Qt::NoModifier), parent->index());
    style.navigates = 0;
    QCOMPARE(view.moveCursor(View::MoveLeft, Qt::NoModifier), model.index(0, 0, parent->index()));
    style.navigates = 1;
    view.setCurrentIndex(model.index(1, 1));
    QCOMPARE(view.moveCursor(View::MoveLeft, Qt::NoModifier), model.index(1, 0));
    view.setStyle(nullptr);
}

void tst_ViewPlaces::selectsTheFirstRow()
{
    BigModel model(10);
    View view(&model);
    view.setCurrentIndex(model.index(5, 2));
    view.selectRow(0);
    QCOMPARE(view.currentIndex(), model.index(0, 0));
    view.selectRow(9);
    QCOMPARE(view.currentIndex(), model.index(9, 0));
    view.selectRow(10);
    view.selectRow(-1);
    QCOMPARE(view.currentIndex(), model.index(9, 0));
}

void tst_ViewPlaces::emptyRubberBandSelectsNothing()
{
    BigModel model(10);
    View view(&model);
    view.showWith(200, 200);
    view.selectRow(3);
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
    view.setSelection(QRect(), QItemSelectionModel::ClearAndSelect);
    QCOMPARE(view.selectionModel()->selectedRows(), QModelIndexList {model.index(3, 0)});
}

void tst_ViewPlaces::lastRowOfATableThatLostItsRows()
{
    BigModel model(3);
    View view(&model);
    view.setCurrentIndex(model.index(1, 0));
    QVERIFY(!view.isCurrentLast());
    model.rows = 0; // and told nobody
    QVERIFY(view.isCurrentLast());
}

void tst_ViewPlaces::selectionAtTheVeryEdges()
{
    BigModel model(100);
    View view(&model);
    view.setVerticalScrollMode(perPixel);
    view.showWith(300, 200);
    const auto region = [&](int row) {
        return view.visualRegionForSelection(
            QItemSelection(model.index(row, 0), model.index(row, 4)));
    };
    view.bar()->setValue(19);
    QCOMPARE(region(0), QRegion(0, 0, 300, 1));
    QCOMPARE(region(10), QRegion(0, 181, 300, 19));
    QCOMPARE(region(11), QRegion());
    view.bar()->setValue(20);
    QCOMPARE(region(0), QRegion());
    view.bar()->setValue(1);
    QCOMPARE(region(10), QRegion(0, 199, 300, 1));
    view.bar()->setValue(0);
    QCOMPARE(region(10), QRegion());
}

void tst_ViewPlaces::scrollBarWaitsForTheEndOfAChange_data()
{
    QTest::addColumn<QByteArray>("what");
    for (const char *what : {"insertion", "removal", "move"})
        QTest::newRow(what) << QByteArray(what);
}

//! Its value and the number of rows do not belong together before.
void tst_ViewPlaces::scrollBarWaitsForTheEndOfAChange()
{
    QFETCH(QByteArray, what);
    BigModel model(100);
    View view(&model);
    view.showWith(200, 200);
    view.bar()->setValue(20);
    int during = -1;
    const auto scroll = [&] {
        view.updateScrollBars(3);
        during = view.bar()->value();
    };
    if (what == "insertion")
        connect(&model, &QAbstractItemModel::rowsAboutToBeInserted, &view, scroll);
    else if (what == "removal")
        connect(&model, &QAbstractItemModel::rowsAboutToBeRemoved, &view, scroll);
    else
        connect(&model, &QAbstractItemModel::rowsAboutToBeMoved, &view, scroll);
    if (what == "insertion")
        model.insert(60, 2);
    else if (what == "removal")
        model.remove(60, 2);
    else
        model.move(60, 2, 70);
    QCOMPARE(during, 20);
    view.updateScrollBars(3);
    QCOMPARE(view.bar()->value(), 23);
}

void tst_ViewPlaces::rowsOfARegion_data()
{
    QTest::addColumn<QRegion>("region");
    QTest::addColumn<QList<int>>("rows");
    QTest::newRow("none") << QRegion() << QList<int> {};
    QTest::newRow("one") << QRegion(0, 20, 10, 20) << QList<int> {11};
    QTest::newRow("last line of one") << QRegion(0, 39, 10, 1) << QList<int> {11};
    QTest::newRow("first line of one") << QRegion(0, 40, 10, 1) << QList<int> {12};
    QTest::newRow("and a line of the next") << QRegion(0, 20, 10, 21) << QList<int> {11, 12};
    QTest::newRow("and a line of the one before") << QRegion(0, 19, 10, 2) << QList<int> {10, 11};
    QTest::newRow("above") << QRegion(0, -30, 10, 31) << QList<int> {10};
    QTest::newRow("beyond the last") << QRegion(0, 170, 10, 100) << QList<int> {18, 19};
}

void tst_ViewPlaces::rowsOfARegion()
{
    QFETCH(QRegion, region);
    BigModel model(20);
    View view(&model);
    view.showWith(200, 200);
    view.bar()->setValue(10);
    QTEST(view.rowsAt(region), "rows");
}

void tst_ViewPlaces::childRowsAreNoChange()
{
    BigModel model(100);
    View view(&model);
    view.showWith(200, 200);
    view.stayAtEnd = true;
    const QModelIndex parent = model.index(1, 0);
    view.rowsAboutToBeInserted(parent, 0, 1);
    view.rowsAboutToBeRemoved(parent, 0, 1);
    view.updateScrollBars(3);
    QCOMPARE(view.bar()->value(), 3);
    QVERIFY(view.stayAtEnd); // nothing was decided
}

void tst_ViewPlaces::oneRowMovesPastTheView()
{
    BigModel model(100);
    View view(&model);
    view.showWith(200, 200);
    view.bar()->setValue(20);
    model.move(60, 1, 0);
    QCOMPARE(view.bar()->value(), 21);
    model.move(0, 1, 60);
    QCOMPARE(view.bar()->value(), 20);
    model.move(60, 2, 50);
    QCOMPARE(view.bar()->value(), 20);
}

QTEST_MAIN(tst_ViewPlaces)

#include "tst_viewplaces.moc"
