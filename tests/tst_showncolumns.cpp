// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "bigmodel.h"
#include "pixels/painttraits_p.h"
#include "recordedview.h"
#include "view/showncolumns_p.h"

#include <QTest>

namespace {

//! Cells look alike at every place among the columns.
class Ignorant : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;
};

using Position = QStyleOptionViewItem::ViewItemPosition;
constexpr Position first = QStyleOptionViewItem::Beginning;
constexpr Position inside = QStyleOptionViewItem::Middle;
constexpr Position last = QStyleOptionViewItem::End;

//! Columns of 60 pixels in a viewport of 150, of which 20 pixels were scrolled away.
const ColumnStrip scrolledAway {{0, -20, 60, first}, {1, 40, 60, inside}, {2, 100, 60, inside}};

//! A view of which nothing is to be painted but what a test asks for.
struct ShownView
{
    ShownView()
        : model(20)
        , view(&model)
    {
        view.showWith(150, 100);
        view.regions.clear();
    }
    //! What was asked to be painted since, from x to x.
    QList<int> painted()
    {
        settleEvents();
        QRegion all;
        for (const QRegion &region : std::exchange(view.regions, {}))
            all |= region;
        QList<int> ends;
        for (const QRect &rect : all)
            ends << rect.left() << rect.right();
        return ends;
    }

    BigModel model;
    View view;
};

ColumnStrip moved(ColumnStrip strip, int dx)
{
    for (ColumnSlot &slot : strip)
        slot.x += dx;
    return strip;
}

} // namespace

class tst_ShownColumns : public QObject
{
    Q_OBJECT

public:
    //! Pixels are moved and kept only where they are whole.
    static void initMain() { qputenv("QT_SCALE_FACTOR", "1"); }

private slots:
    void initTestCase();
    void comparesPlaces();
    void comparesPositionsWhereTheyShow();
    void followsScrolling_data();
    void followsScrolling();
    void doesNotFollowOtherColumns();
    void standsStill();
    void followsResizing_data();
    void followsResizing();
    void paintsColumnsWithAnotherPosition();
    void tellsLooksApart();
};

void tst_ShownColumns::initTestCase()
{
    PaintTraits::setReader([](const QAbstractItemDelegate *delegate) {
        return PaintTraits {dynamic_cast<const Ignorant *>(delegate) != nullptr, false};
    });
}

void tst_ShownColumns::comparesPlaces()
{
    ShownView shown;
    ShownColumns columns(&shown.view);
    QVERIFY(columns.areAs({}));
    QVERIFY(!columns.areAs(scrolledAway));
    columns.set(scrolledAway);
    QVERIFY(columns.areAs(scrolledAway));
    QVERIFY(!columns.areAs(moved(scrolledAway, 1)));
    QVERIFY(!columns.areAs(scrolledAway.first(2)));
}

void tst_ShownColumns::comparesPositionsWhereTheyShow()
{
    ShownView shown;
    ShownColumns columns(&shown.view);
    columns.set(scrolledAway);
    ColumnStrip other = scrolledAway;
    other[0].position = last;
    QVERIFY(!columns.areAs(other)); // any delegate may draw them otherwise
    other = scrolledAway;
    other[2].position = last;
    QVERIFY(!columns.areAs(other));
    Ignorant ignorant(&shown.view);
    shown.view.setItemDelegateForColumn(2, &ignorant);
    QVERIFY(columns.areAs(other));
    other[1].position = last;
    QVERIFY(!columns.areAs(other));
    shown.view.setItemDelegate(&ignorant);
    QVERIFY(columns.areAs(other));
    QVERIFY(!columns.hasSheet());
    shown.view.setStyleSheet(QStringLiteral("QTableFastView::item { border: 1px }"));
    QVERIFY(columns.hasSheet());
    QVERIFY(!columns.areAs(other));
    shown.view.setItemDelegateForColumn(2, nullptr);
    shown.view.setItemDelegate(&shown.view.recorder);
}

void tst_ShownColumns::followsScrolling_data()
{
    QTest::addColumn<ColumnStrip>("before");
    QTest::addColumn<int>("dx");
    QTest::addColumn<ColumnStrip>("after");
    const ColumnStrip whole {{0, 0, 60, inside}, {1, 60, 60, inside}, {2, 120, 60, inside}};
    QTest::newRow("to the right") << scrolledAway << -30
                                  << moved(scrolledAway, -30) + ColumnStrip {{3, 130, 60, inside}};
    QTest::newRow("to the left") << scrolledAway << 10 << moved(scrolledAway, 10);
    QTest::newRow("to the right, a narrow one came")
        << scrolledAway << -30
        << moved(scrolledAway, -30) + ColumnStrip {{3, 130, 4, inside}, {4, 134, 60, inside}};
    QTest::newRow("to the left, a narrow one came")
        << whole << 10 << ColumnStrip {{3, 2, 8, inside}} + moved(whole, 10);
    QTest::newRow("to the left, one at the edge came")
        << whole << 10 << ColumnStrip {{3, -3, 13, inside}} + moved(whole, 10);
    QTest::newRow("by one pixel") << scrolledAway << -1 << moved(scrolledAway, -1);
    QTest::newRow("by one pixel to the left")
        << whole << 1 << ColumnStrip {{3, -59, 60, inside}} + moved(whole, 1);
}

//! What comes into view is painted, whatever column it is.
void tst_ShownColumns::followsScrolling()
{
    QFETCH(ColumnStrip, before);
    QFETCH(int, dx);
    QFETCH(ColumnStrip, after);
    ShownView shown;
    ShownColumns columns(&shown.view);
    columns.set(before);
    ColumnStrip wrong = after;
    for (ColumnSlot &slot : wrong)
        slot.width += slot.column == 1 ? 1 : 0;
    QVERIFY(!columns.followScroll(wrong, dx));
    QVERIFY(columns.areAs(before));
    QVERIFY(columns.followScroll(after, dx));
    QVERIFY(columns.areAs(after));
    QCOMPARE(shown.painted(), QList<int>());
}

void tst_ShownColumns::doesNotFollowOtherColumns()
{
    ShownView shown;
    ShownColumns columns(&shown.view);
    columns.set(scrolledAway);
    for (int dx : {-30, 10}) {
        ColumnStrip wanted = moved(scrolledAway, dx);
        QVERIFY(!columns.followScroll(moved(wanted, 1), dx));
        wanted[1].column = 4;
        QVERIFY(!columns.followScroll(wanted, dx));
        QVERIFY(columns.areAs(scrolledAway));
    }
    // What is at an edge where nothing came into view has to be there already.
    ColumnStrip wanted = moved(scrolledAway, -30).mid(1);
    wanted.prepend({4, -50, 60, inside});
    QVERIFY(!columns.followScroll(wanted, -30));
    wanted = moved(scrolledAway, 10);
    wanted.last().column = 4;
    QVERIFY(!columns.followScroll(wanted, 10));
}

void tst_ShownColumns::standsStill()
{
    ShownView shown;
    ShownColumns columns(&shown.view);
    columns.set(scrolledAway);
    QVERIFY(columns.followScroll(moved(scrolledAway, 5), 0));
    QVERIFY(columns.areAs(scrolledAway)); // there was nothing to follow
}

void tst_ShownColumns::followsResizing_data()
{
    QTest::addColumn<bool>("isRightToLeft");
    QTest::addColumn<ColumnStrip>("before");
    QTest::addColumn<int>("delta");
    QTest::addColumn<ColumnStrip>("after");
    QTest::newRow("grown") << false << scrolledAway << 25
                           << ColumnStrip {
                                  {0, -20, 60, first}, {1, 40, 85, inside}, {2, 125, 60, inside}};
    QTest::newRow("shrunk, another came in")
        << false << scrolledAway << -25
        << ColumnStrip {
               {0, -20, 60, first}, {1, 40, 35, inside}, {2, 75, 60, inside}, {3, 135, 60, inside}};
    QTest::newRow("grown beside one pixel")
        << false << ColumnStrip {{0, -59, 60, inside}, {1, 1, 60, inside}, {2, 61, 60, inside}}
        << 25 << ColumnStrip {{0, -59, 60, inside}, {1, 1, 85, inside}, {2, 86, 60, inside}};
    QTest::newRow("shrunk by one pixel, right to left")
        << true << ColumnStrip {{0, 120, 60, inside}, {1, 60, 60, inside}, {2, 0, 60, inside}} << -1
        << ColumnStrip {
               {0, 120, 60, inside}, {1, 61, 59, inside}, {2, 1, 60, inside}, {3, -59, 60, inside}};
    const ColumnStrip mirrored {{0, 110, 60, first}, {1, 50, 60, inside}, {2, -10, 60, inside}};
    QTest::newRow("grown, right to left")
        << true << mirrored << 25
        << ColumnStrip {{0, 110, 60, first}, {1, 25, 85, inside}, {2, -35, 60, inside}};
    QTest::newRow("shrunk, right to left, another came in")
        << true << mirrored << -25
        << ColumnStrip {
               {0, 110, 60, first}, {1, 75, 35, inside}, {2, 15, 60, inside}, {3, -45, 60, inside}};
}

void tst_ShownColumns::followsResizing()
{
    QFETCH(bool, isRightToLeft);
    QFETCH(ColumnStrip, before);
    QFETCH(int, delta);
    QFETCH(ColumnStrip, after);
    ShownView shown;
    shown.view.setLayoutDirection(isRightToLeft ? Qt::RightToLeft : Qt::LeftToRight);
    ShownColumns columns(&shown.view);
    columns.set(before);
    shown.painted();
    ColumnStrip wrong = after;
    wrong[2].x += isRightToLeft ? 1 : -1;
    QVERIFY(!columns.followResize(wrong, 1, delta));
    wrong = after;
    wrong[0].column = 5; // where nothing came in
    QVERIFY(!columns.followResize(wrong, 1, delta));
    QVERIFY(columns.followResize(after, 1, delta));
    QVERIFY(columns.areAs(after));
    QCOMPARE(shown.painted(), QList<int>());
}

void tst_ShownColumns::paintsColumnsWithAnotherPosition()
{
    ShownView shown;
    ShownColumns columns(&shown.view);
    columns.set(scrolledAway);
    ColumnStrip wanted = moved(scrolledAway, -30);
    wanted.append({3, 130, 60, last});
    wanted[1].position = first;
    QVERIFY(columns.followScroll(wanted, -30));
    // Where the header has the column; what is new has to be painted anyway.
    QCOMPARE(shown.painted(), QList<int>({60, 119}));

    Ignorant ignorant(&shown.view);
    shown.view.setItemDelegateForColumn(1, &ignorant);
    shown.painted();
    ColumnStrip next = moved(wanted, -1);
    next[1].position = inside;
    QVERIFY(columns.followScroll(next, -1));
    QCOMPARE(shown.painted(), QList<int>());
    shown.view.setItemDelegateForColumn(1, nullptr);
}

void tst_ShownColumns::tellsLooksApart()
{
    ShownView shown;
    const ShownColumns columns(&shown.view);
    const ColumnSlot a {1, 40, 60, inside};
    const ColumnSlot b {1, 40, 60, last};
    QVERIFY(columns.look(a, false) == columns.look(a, false));
    QVERIFY(columns.look(a, false) != columns.look(b, false));
    QVERIFY(columns.look(a, true) != columns.look(b, true));
    const ColumnLook before = columns.look(a, false);
    Ignorant ignorant(&shown.view);
    shown.view.setItemDelegateForColumn(1, &ignorant);
    QVERIFY(columns.look(a, false) != before);
    QVERIFY(columns.look(a, false) == columns.look(b, false));
    QVERIFY(columns.look(a, true) != columns.look(b, true));
    shown.view.setItemDelegateForColumn(1, nullptr);
}

QTEST_MAIN(tst_ShownColumns)

#include "tst_showncolumns.moc"
