// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

// Where rows and columns are, and what scrolls to them.

#include "bigmodel.h"
#include "recordedview.h"

#include <QHeaderView>
#include <QScrollBar>
#include <QTest>

class tst_ViewPlaces : public QObject
{
    Q_OBJECT

private slots:
    void pointsOutsideAskForNoIndex();
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
    QFont high = view.font();
    high.setPixelSize(usual + 20);
    view.setFont(high);
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
    QFont font = view.font();
    font.setPixelSize(10);
    view.setFont(font);
    const int small = view.sizeHintForColumn(0);
    font.setPixelSize(50);
    view.setFont(font);
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

QTEST_MAIN(tst_ViewPlaces)

#include "tst_viewplaces.moc"
