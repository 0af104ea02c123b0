// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "overview/markedrows.h"
#include "search/rowtext.h"

#include <QSignalSpy>
#include <QStandardItemModel>
#include <QStringListModel>
#include <QTest>

#include <memory>
#include <numeric>

namespace {

//! The rows "0", "1" and so on.
QStringList numbers(int count)
{
    QStringList texts;
    for (int i = 0; i < count; ++i)
        texts << QString::number(i);
    return texts;
}

//! Tells of a reset as a file does that begins anew: it has no rows, and some come later.
class RestartingModel : public QStringListModel
{
public:
    void restart() { setStringList({}); }
    void append(const QStringList &texts)
    {
        for (const QString &text : texts) {
            insertRow(rowCount());
            setData(index(rowCount() - 1, 0), text);
        }
    }
};

} // namespace

class tst_MarkedRows : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void marksAndUnmarks();
    void ignoresRowsThatAreNot_data();
    void ignoresRowsThatAreNot();
    void followsRows_data();
    void followsRows();
    void tellsOfChanges();
    void keepsTheSameTextAfterAReset_data();
    void keepsTheSameTextAfterAReset();
    void waitsForRowsToComeAgain();
    void waitsForTheEndOfALine();
    void knowsALineThatGrew();
    void forgetsThoseOfAnotherModel();
    void outlivesItsModel();
    void joinsTexts();
};

void tst_MarkedRows::marksAndUnmarks()
{
    QStringListModel model(numbers(10));
    MarkedRows marks;
    marks.setModel(&model);
    QVERIFY(marks.isEmpty());
    for (const int row : {7, 2, 9, 4})
        marks.toggle(row);
    QCOMPARE(marks.rows(), QList<int>({2, 4, 7, 9}));
    QVERIFY(marks.isMarked(4));
    QVERIFY(!marks.isMarked(5));
    marks.toggle(4);
    QCOMPARE(marks.rows(), QList<int>({2, 7, 9}));
    QCOMPARE(marks.count(), 3);
    marks.removeAll();
    QVERIFY(marks.isEmpty());
}

void tst_MarkedRows::ignoresRowsThatAreNot_data()
{
    QTest::addColumn<int>("row");
    QTest::newRow("above") << -1;
    QTest::newRow("below") << 10;
}

void tst_MarkedRows::ignoresRowsThatAreNot()
{
    QFETCH(int, row);
    QStringListModel model(numbers(10));
    MarkedRows marks;
    marks.toggle(row); // without a model
    marks.setModel(&model);
    marks.toggle(row);
    QVERIFY(marks.isEmpty());
    QVERIFY(!marks.isMarked(row));
}

void tst_MarkedRows::followsRows_data()
{
    QTest::addColumn<int>("first");
    QTest::addColumn<int>("count"); // removed if negative
    QTest::addColumn<QList<int>>("expected");
    QTest::newRow("come on top") << 0 << 3 << QList<int> {5, 8, 12};
    QTest::newRow("come before a mark") << 5 << 1 << QList<int> {2, 6, 10};
    QTest::newRow("come behind a mark") << 6 << 2 << QList<int> {2, 5, 11};
    QTest::newRow("come at the end") << 10 << 5 << QList<int> {2, 5, 9};
    QTest::newRow("go on top") << 0 << -2 << QList<int> {0, 3, 7};
    QTest::newRow("go with a mark") << 2 << -1 << QList<int> {4, 8};
    QTest::newRow("go with two") << 1 << -5 << QList<int> {4};
    QTest::newRow("go at the end") << 6 << -4 << QList<int> {2, 5};
    QTest::newRow("all go") << 0 << -10 << QList<int> {};
}

void tst_MarkedRows::followsRows()
{
    QFETCH(int, first);
    QFETCH(int, count);
    QFETCH(QList<int>, expected);
    QStringListModel model(numbers(10));
    MarkedRows marks;
    marks.setModel(&model);
    for (const int row : {2, 5, 9})
        marks.toggle(row);
    if (count > 0)
        model.insertRows(first, count);
    else
        model.removeRows(first, -count);
    QCOMPARE(marks.rows(), expected);
}

void tst_MarkedRows::tellsOfChanges()
{
    QStringListModel model(numbers(10));
    MarkedRows marks;
    marks.setModel(&model);
    QSignalSpy changes(&marks, &MarkedRows::changed);
    QSignalSpy moves(&marks, &MarkedRows::moved);
    marks.toggle(5);
    QCOMPARE(changes.count(), 1);
    model.insertRows(10, 3); // moves no mark
    QCOMPARE(moves.count(), 0);
    model.insertRows(0, 3);
    QCOMPARE(moves.count(), 1);
    model.removeRows(0, 1);
    QCOMPARE(moves.count(), 2);
    QCOMPARE(changes.count(), 1);
    model.removeRows(7, 1);
    QCOMPARE(changes.count(), 2);
    marks.removeAll();
    QCOMPARE(changes.count(), 2);
    marks.toggle(3);
    marks.removeAll();
    QCOMPARE(changes.count(), 4);
    QCOMPARE(moves.count(), 2);
}

void tst_MarkedRows::keepsTheSameTextAfterAReset_data()
{
    QTest::addColumn<QStringList>("texts");
    QTest::addColumn<QList<int>>("expected");
    QTest::newRow("same") << QStringList {"a", "b", "c"} << QList<int> {0, 2};
    QTest::newRow("more") << QStringList {"a", "b", "c", "d"} << QList<int> {0, 2};
    QTest::newRow("one is another") << QStringList {"x", "b", "c", "d"} << QList<int> {2};
    QTest::newRow("one is longer") << QStringList {"aa", "b", "c", "d"} << QList<int> {2};
    QTest::newRow("one is shorter") << QStringList {"", "b", "c", "d"} << QList<int> {2};
    QTest::newRow("one is elsewhere") << QStringList {"a", "c", "b", "d"} << QList<int> {0};
    QTest::newRow("all are others") << QStringList {"1", "2", "3", "4"} << QList<int> {};
    QTest::newRow("none is left") << QStringList() << QList<int> {};
}

void tst_MarkedRows::keepsTheSameTextAfterAReset()
{
    QFETCH(QStringList, texts);
    QFETCH(QList<int>, expected);
    QStringListModel model({"a", "b", "c"});
    MarkedRows marks;
    marks.setModel(&model);
    marks.toggle(0);
    marks.toggle(2);
    model.setStringList(texts);
    QCOMPARE(marks.rows(), expected);
}

void tst_MarkedRows::waitsForRowsToComeAgain()
{
    RestartingModel model;
    model.append({"a", "b", "c", "d"});
    MarkedRows marks;
    marks.setModel(&model);
    for (const int row : {0, 1, 3})
        marks.toggle(row);
    model.restart();
    QVERIFY(marks.isEmpty());
    model.append({"a", "x"});
    QCOMPARE(marks.rows(), QList<int>({0}));
    model.restart(); // before all have come
    model.append({"a", "b", "c", "d"});
    QCOMPARE(marks.rows(), QList<int>({0, 3}));
    marks.removeAll();
    model.restart();
    model.append({"a", "b", "c", "d"});
    QVERIFY(marks.isEmpty());
}

void tst_MarkedRows::waitsForTheEndOfALine()
{
    RestartingModel model;
    model.append({"one", "two"});
    MarkedRows marks;
    marks.setModel(&model);
    marks.toggle(1);
    model.restart();
    model.append({"one", "t"});
    QVERIFY(marks.isEmpty());
    model.setData(model.index(1, 0), "two");
    QCOMPARE(marks.rows(), QList<int>({1}));
    model.restart();
    model.append({"one", "t", "three"}); // complete now, and another one
    model.setData(model.index(1, 0), "two");
    QVERIFY(marks.isEmpty());
}

void tst_MarkedRows::knowsALineThatGrew()
{
    RestartingModel model;
    model.append({"one", "t"});
    MarkedRows marks;
    marks.setModel(&model);
    marks.toggle(1);
    model.setData(model.index(1, 0), "two");
    model.restart();
    model.append({"one", "two", "three"});
    QCOMPARE(marks.rows(), QList<int>({1}));
}

void tst_MarkedRows::forgetsThoseOfAnotherModel()
{
    QStringListModel model(numbers(10));
    QStringListModel other(numbers(10));
    MarkedRows marks;
    marks.setModel(&model);
    marks.toggle(3);
    marks.setModel(&model);
    QCOMPARE(marks.rows(), QList<int>({3}));
    marks.setModel(&other);
    QVERIFY(marks.isEmpty());
    marks.toggle(3);
    model.insertRows(0, 1);
    QCOMPARE(marks.rows(), QList<int>({3}));
}

void tst_MarkedRows::outlivesItsModel()
{
    auto model = std::make_unique<QStringListModel>(numbers(10));
    MarkedRows marks;
    marks.setModel(model.get());
    marks.toggle(3);
    model.reset();
    QVERIFY(marks.isEmpty());
    marks.toggle(3);
    QVERIFY(marks.isEmpty());
}

void tst_MarkedRows::joinsTexts()
{
    QStandardItemModel model(1, 3);
    model.setData(model.index(0, 0), "a");
    model.setData(model.index(0, 1), "b c");
    model.setData(model.index(0, 2), QString(300, u'x'));
    QCOMPARE(rowText(model, 0), "a b c " + QString(194, u'x'));
    QCOMPARE(rowText(model, 1), QString());
}

QTEST_MAIN(tst_MarkedRows)
#include "tst_markedrows.moc"
