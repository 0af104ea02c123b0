// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "bigmodel.h"
#include "recordedview.h"
#include "view/rangeanchor_p.h"

#include <QScrollBar>
#include <QTest>

#include <algorithm>
#include <limits>

namespace {

using Flags = QItemSelectionModel::SelectionFlags;

constexpr Flags fresh = QItemSelectionModel::ClearAndSelect;
constexpr Flags extending = QItemSelectionModel::SelectCurrent;

//! The top left and bottom right cells of each range, from the left.
QString described(QItemSelection selection)
{
    std::sort(selection.begin(), selection.end(),
              [](const auto &a, const auto &b) { return a.left() < b.left(); });
    QStringList ranges;
    for (const QItemSelectionRange &range : selection) {
        ranges += QStringLiteral("%1,%2-%3,%4")
                      .arg(range.top())
                      .arg(range.left())
                      .arg(range.bottom())
                      .arg(range.right());
    }
    return ranges.join(u' ');
}

} // namespace

class tst_RangeAnchor : public QObject
{
    Q_OBJECT

private slots:
    void pressBeginsARange();
    void pressThatExtendsKeepsTheBeginning();
    void pressThatExtendsNothingBeginsAtTheCurrentIndex();
    void keyBeginsAtTheCurrentIndexIfNowhere();
    void keyThatMovesTakesTheBeginningAlong();
    void keyThatMovesNothingLeavesAll();
    void rangeByLogicalColumns();
    void rangeAsOnScreen_data();
    void rangeAsOnScreen();
    void nearCornerIsTheCellThere();
    void farCornerIsInTheRowOfTheBeginning_data();
    void farCornerIsInTheRowOfTheBeginning();
};

void tst_RangeAnchor::pressBeginsARange()
{
    BigModel model(10);
    View view(&model);
    RangeAnchor anchor(&view);
    QVERIFY(!anchor.index().isValid());
    anchor.press(model.index(3, 1), fresh);
    QCOMPARE(QModelIndex(anchor.index()), model.index(3, 1));
    anchor.press(model.index(5, 2), fresh);
    QCOMPARE(QModelIndex(anchor.index()), model.index(5, 2));
    anchor.press(QModelIndex(), fresh);
    QVERIFY(!anchor.index().isValid());
}

void tst_RangeAnchor::pressThatExtendsKeepsTheBeginning()
{
    BigModel model(10);
    View view(&model);
    RangeAnchor anchor(&view);
    view.setCurrentIndex(model.index(7, 0));
    anchor.press(model.index(3, 1), fresh);
    anchor.press(model.index(5, 2), extending);
    QCOMPARE(QModelIndex(anchor.index()), model.index(3, 1));
}

void tst_RangeAnchor::pressThatExtendsNothingBeginsAtTheCurrentIndex()
{
    BigModel model(10);
    View view(&model);
    RangeAnchor anchor(&view);
    view.setCurrentIndex(model.index(7, 0));
    anchor.press(model.index(5, 2), extending);
    QCOMPARE(QModelIndex(anchor.index()), model.index(7, 0));
}

void tst_RangeAnchor::keyBeginsAtTheCurrentIndexIfNowhere()
{
    BigModel model(10);
    View view(&model);
    RangeAnchor anchor(&view);
    QVERIFY(!anchor.beginKey(model.index(4, 1)).isValid());
    QCOMPARE(QModelIndex(anchor.index()), model.index(4, 1));
    QCOMPARE(QModelIndex(anchor.beginKey(model.index(5, 1))), model.index(4, 1));
    QCOMPARE(QModelIndex(anchor.index()), model.index(4, 1));
}

void tst_RangeAnchor::keyThatMovesTakesTheBeginningAlong()
{
    BigModel model(10);
    View view(&model);
    RangeAnchor anchor(&view);
    anchor.beginKey(model.index(4, 1));
    anchor.endKey(model.index(5, 1), extending);
    QCOMPARE(QModelIndex(anchor.index()), model.index(4, 1));
    anchor.endKey(model.index(6, 1), fresh);
    QCOMPARE(QModelIndex(anchor.index()), model.index(6, 1));
}

void tst_RangeAnchor::keyThatMovesNothingLeavesAll()
{
    BigModel model(10);
    View view(&model);
    RangeAnchor anchor(&view);
    anchor.endKey(anchor.beginKey(model.index(4, 1)));
    QVERIFY(!anchor.index().isValid());
}

void tst_RangeAnchor::rangeByLogicalColumns()
{
    BigModel model(10);
    View view(&model);
    const RangeAnchor anchor(&view);
    const QModelIndex a = model.index(2, 1);
    const QModelIndex b = model.index(4, 3);
    QCOMPARE(described(anchor.range(a, b, false)), QStringLiteral("2,1-4,3"));
    QCOMPARE(described(anchor.range(a, b, true)), QStringLiteral("2,1-4,3"));
    view.header()->moveSection(4, 2); // 0 1 4 2 3
    QCOMPARE(described(anchor.range(a, b, false)), QStringLiteral("2,1-4,3"));
    delete view.header();
    QCOMPARE(described(anchor.range(a, b, true)), QStringLiteral("2,1-4,3"));
}

void tst_RangeAnchor::rangeAsOnScreen_data()
{
    QTest::addColumn<int>("columnOfA");
    QTest::addColumn<int>("columnOfB");
    QTest::addColumn<QString>("ranges");
    // on screen: 0 1 4 2 3
    QTest::newRow("what was between, and what came") << 1 << 3 << QStringLiteral("2,1-5,4");
    QTest::newRow("without a column") << 4 << 2 << QStringLiteral("2,2-5,2 2,4-5,4");
    QTest::newRow("two pieces") << 1 << 4 << QStringLiteral("2,1-5,1 2,4-5,4");
    QTest::newRow("up to one") << 0 << 2 << QStringLiteral("2,0-5,2 2,4-5,4");
    QTest::newRow("one") << 4 << 4 << QStringLiteral("2,4-5,4");
}

void tst_RangeAnchor::rangeAsOnScreen()
{
    QFETCH(int, columnOfA);
    QFETCH(int, columnOfB);
    QFETCH(QString, ranges);
    BigModel model(10);
    View view(&model);
    view.header()->moveSection(4, 2);
    const RangeAnchor anchor(&view);
    for (const auto &[a, b] : {std::pair(2, 5), std::pair(5, 2)}) {
        QCOMPARE(
            described(anchor.range(model.index(a, columnOfA), model.index(b, columnOfB), true)),
            ranges);
        QCOMPARE(
            described(anchor.range(model.index(b, columnOfB), model.index(a, columnOfA), true)),
            ranges);
    }
}

void tst_RangeAnchor::nearCornerIsTheCellThere()
{
    BigModel model(10);
    View view(&model);
    view.showWith(400, 100);
    RangeAnchor anchor(&view);
    anchor.press(model.index(3, 1), fresh);
    QCOMPARE(anchor.cornerAt(QPoint(70, 25)), model.index(1, 1));
    QCOMPARE(anchor.cornerAt(QPoint(70, -25)), QModelIndex());
    QCOMPARE(anchor.cornerAt(QPoint(70, 205)), QModelIndex());
    QCOMPARE(anchor.cornerAt(QPoint(390, 25)), QModelIndex());
}

void tst_RangeAnchor::farCornerIsInTheRowOfTheBeginning_data()
{
    // The top of a row saturates 2^30 pixels away; its centre is half a row lower.
    constexpr int far = 1 << 30;
    QTest::addColumn<int>("y");
    QTest::addColumn<bool>("isFar");
    QTest::newRow("below") << far + rowHeight / 2 << true;
    QTest::newRow("above") << -far + rowHeight / 2 << true;
    QTest::newRow("the first that is far") << far - rowHeight << true;
    QTest::newRow("not far") << far - rowHeight - 1 << false;
    QTest::newRow("not far, above") << -far + rowHeight + 1 << false;
}

void tst_RangeAnchor::farCornerIsInTheRowOfTheBeginning()
{
    QFETCH(int, y);
    QFETCH(bool, isFar);
    BigModel model(std::numeric_limits<int>::max());
    View view(&model);
    view.showWith(400, 100);
    view.bar()->setValue(1000000000);
    RangeAnchor anchor(&view);
    QCOMPARE(anchor.cornerAt(QPoint(70, y)), view.indexAt(QPoint(70, y)));
    anchor.press(model.index(3, 0), fresh);
    QCOMPARE(anchor.cornerAt(QPoint(70, y)),
             isFar ? model.index(3, 1) : view.indexAt(QPoint(70, y)));
    QCOMPARE(anchor.cornerAt(QPoint(390, y)), QModelIndex());
    if (!isFar)
        QVERIFY(view.indexAt(QPoint(70, y)).isValid());
    QCOMPARE(anchor.cornerAt(QPoint(10, y)).isValid(), true);
}

QTEST_MAIN(tst_RangeAnchor)

#include "tst_rangeanchor.moc"
