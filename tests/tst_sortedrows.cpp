// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "order/sortedrows.h"

#include <QAbstractItemModelTester>
#include <QItemSelectionModel>
#include <QRandomGenerator>
#include <QSignalSpy>
#include <QStandardItemModel>
#include <QStringListModel>
#include <QTest>

#include <algorithm>
#include <memory>
#include <utility>
#include <vector>

class tst_SortedRows : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void showsRowsInOrder_data();
    void showsRowsInOrder();
    void showsRowsMeanwhile();
    void hidesRowsUntilTheirPlaceIsKnown();
    void sortsWhileRowsCome();
    void putsChangedRowsElsewhere();
    void passesChangesOn();
    void keepsRowsChosen();
    void beginsAnewAfterReset();
    void followsColumns();
    void survivesItsSource();
    void takesFourBytesARow();
    void followsAnyChange_data();
    void followsAnyChange();

private:
    static QStringList textsOf(const QAbstractItemModel &model, int column = 0);
    static QStringList sorted(const QAbstractItemModel &model, Qt::SortOrder order);
};

QStringList tst_SortedRows::textsOf(const QAbstractItemModel &model, int column)
{
    QStringList texts;
    for (int row = 0; row < model.rowCount(); ++row)
        texts.append(model.index(row, column).data().toString());
    return texts;
}

QStringList tst_SortedRows::sorted(const QAbstractItemModel &model, Qt::SortOrder order)
{
    std::vector<std::pair<SortValue, QString>> values;
    for (const QString &text : textsOf(model))
        values.emplace_back(SortValue(text), text);
    std::stable_sort(values.begin(), values.end(), [order](const auto &a, const auto &b) {
        return a.first.compare(b.first, order) < 0;
    });
    QStringList texts;
    for (const auto &[value, text] : values)
        texts.append(text);
    return texts;
}

void tst_SortedRows::showsRowsInOrder_data()
{
    QTest::addColumn<Qt::SortOrder>("order");
    QTest::addColumn<QStringList>("expected");
    QTest::newRow("ascending") << Qt::AscendingOrder << QStringList {"2", "10", "A", "a", "b", ""};
    QTest::newRow("descending") << Qt::DescendingOrder
                                << QStringList {"b", "A", "a", "10", "2", ""};
}

void tst_SortedRows::showsRowsInOrder()
{
    QFETCH(Qt::SortOrder, order);
    QStringListModel source({"b", "10", "", "A", "2", "a"});
    SortedRows rows(&source, 0, order);
    const QAbstractItemModelTester tester(&rows,
                                          QAbstractItemModelTester::FailureReportingMode::Fatal);
    QSignalSpy progressed(&rows, &SortedRows::progressed);
    QVERIFY(!rows.isSettled());
    QTRY_VERIFY(rows.isSettled());
    QTEST(textsOf(rows), "expected");
    QCOMPARE(progressed.last().first().toDouble(), 1.0);
    for (int row = 0; row < rows.rowCount(); ++row) {
        const QModelIndex index = rows.index(row, 0);
        QCOMPARE(rows.mapFromSource(rows.mapToSource(index)), index);
        QCOMPARE(rows.headerData(row, Qt::Vertical),
                 source.headerData(rows.mapToSource(index).row(), Qt::Vertical));
    }
}

//! All of them, also those that come.
void tst_SortedRows::showsRowsMeanwhile()
{
    QStringListModel source({"2", "1"});
    SortedRows rows(&source, 0, Qt::AscendingOrder);
    const QAbstractItemModelTester tester(&rows,
                                          QAbstractItemModelTester::FailureReportingMode::Fatal);
    QCOMPARE(textsOf(rows), QStringList({"2", "1"}));
    source.insertRow(1);
    source.setData(source.index(1, 0), "0");
    source.insertRow(3);
    source.setData(source.index(3, 0), "3");
    QCOMPARE(textsOf(rows), QStringList({"2", "0", "1", "3"}));
    source.removeRow(2);
    QCOMPARE(textsOf(rows), QStringList({"2", "0", "3"}));
    QTRY_COMPARE(textsOf(rows), QStringList({"0", "2", "3"}));
}

void tst_SortedRows::hidesRowsUntilTheirPlaceIsKnown()
{
    QStringListModel source({"5", "1", "3"});
    SortedRows rows(&source, 0, Qt::AscendingOrder);
    const QAbstractItemModelTester tester(&rows,
                                          QAbstractItemModelTester::FailureReportingMode::Fatal);
    QTRY_VERIFY(rows.isSettled());
    source.insertRows(3, 2);
    QCOMPARE(rows.rowCount(), 3);
    QVERIFY(!rows.mapFromSource(source.index(3, 0)).isValid());
    source.setData(source.index(3, 0), "4");
    source.setData(source.index(4, 0), "0");
    QVERIFY(!rows.isSettled());
    QTRY_VERIFY(rows.isSettled());
    QCOMPARE(textsOf(rows), QStringList({"0", "1", "3", "4", "5"}));
}

//! At the top, in every turn of the events: some are in order all the same.
void tst_SortedRows::sortsWhileRowsCome()
{
    QStringList texts;
    for (int row = 0; row < 400000; ++row)
        texts.append(QString::number(qint64(row) * 7919 % 400000).rightJustified(8, u'0'));
    QStringListModel source(texts);
    SortedRows rows(&source, 0, Qt::AscendingOrder);
    int turns = 0;
    while (!rows.isSorted() && turns < 2000) {
        source.insertRow(0);
        source.setData(source.index(0, 0), QString::number(turns++));
        QCoreApplication::processEvents();
    }
    QVERIFY(rows.isSorted());
    QTRY_VERIFY(rows.isSettled());
    QCOMPARE(textsOf(rows), sorted(source, Qt::AscendingOrder));
}

void tst_SortedRows::putsChangedRowsElsewhere()
{
    QStringListModel source({"5", "1", "3"});
    SortedRows rows(&source, 0, Qt::AscendingOrder);
    QTRY_VERIFY(rows.isSettled());
    const QPersistentModelIndex five = rows.index(2, 0);
    QSignalSpy changed(&rows, &QAbstractItemModel::dataChanged);
    source.setData(source.index(0, 0), "2");
    QCOMPARE(changed.count(), 1);
    QCOMPARE(changed.first().first().toModelIndex(), rows.index(2, 0));
    QCOMPARE(textsOf(rows), QStringList({"1", "3", "2"}));
    QTRY_VERIFY(rows.isSettled());
    QCOMPARE(textsOf(rows), QStringList({"1", "2", "3"}));
    QCOMPARE(five.row(), 1);
}

void tst_SortedRows::passesChangesOn()
{
    QStandardItemModel source(3, 2);
    for (int row = 0; row < 3; ++row)
        source.setItem(row, 1, new QStandardItem(QString::number(9 - row)));
    SortedRows rows(&source, 1, Qt::AscendingOrder);
    QTRY_VERIFY(rows.isSettled());
    QSignalSpy changed(&rows, &QAbstractItemModel::dataChanged);
    source.setData(source.index(0, 0), "other column");
    QCOMPARE(changed.last().at(0).toModelIndex(), rows.index(2, 0));
    QVERIFY(rows.isSettled());
    source.setData(source.index(0, 1), QColor(Qt::red), Qt::BackgroundRole);
    QCOMPARE(changed.last().at(0).toModelIndex(), rows.index(2, 1));
    QVERIFY(rows.isSettled());
    QSignalSpy header(&rows, &QAbstractItemModel::headerDataChanged);
    source.setHeaderData(1, Qt::Horizontal, "name");
    QCOMPARE(header.count(), 1);
    QCOMPARE(rows.headerData(1, Qt::Horizontal).toString(), QString("name"));
}

void tst_SortedRows::keepsRowsChosen()
{
    QStringListModel source({"5", "1", "3", "4"});
    SortedRows rows(&source, 0, Qt::AscendingOrder);
    QItemSelectionModel selection(&rows);
    selection.setCurrentIndex(rows.index(0, 0), QItemSelectionModel::Select);
    selection.select(rows.index(2, 0), QItemSelectionModel::Select);
    QTRY_VERIFY(rows.isSettled());
    QCOMPARE(selection.currentIndex().data().toString(), QString("5"));
    source.insertRow(0);
    source.setData(source.index(0, 0), "2");
    QTRY_COMPARE(rows.rowCount(), 5);
    source.removeRow(2);
    QTRY_VERIFY(rows.isSettled());
    QCOMPARE(textsOf(rows), QStringList({"2", "3", "4", "5"}));
    QCOMPARE(selection.currentIndex().row(), 3);
    QStringList selected;
    for (const QModelIndex &index : selection.selectedIndexes())
        selected.append(index.data().toString());
    selected.sort();
    QCOMPARE(selected, QStringList({"3", "5"}));
}

void tst_SortedRows::beginsAnewAfterReset()
{
    QStringListModel source({"2", "1"});
    SortedRows rows(&source, 0, Qt::AscendingOrder);
    const QAbstractItemModelTester tester(&rows,
                                          QAbstractItemModelTester::FailureReportingMode::Fatal);
    QTRY_VERIFY(rows.isSettled());
    source.setStringList({"c", "b", "a"});
    QCOMPARE(rows.rowCount(), 3);
    QTRY_COMPARE(textsOf(rows), QStringList({"a", "b", "c"}));
    source.setStringList({});
    QCOMPARE(rows.rowCount(), 0);
    QTRY_VERIFY(rows.isSettled());
}

void tst_SortedRows::followsColumns()
{
    QStandardItemModel source(2, 1);
    source.setItem(0, 0, new QStandardItem("b"));
    source.setItem(1, 0, new QStandardItem("a"));
    SortedRows rows(&source, 0, Qt::AscendingOrder);
    QTRY_VERIFY(rows.isSettled());
    QCOMPARE(rows.columnCount(), 1);
    source.insertColumn(0);
    QCOMPARE(rows.columnCount(), 2);
    QTRY_VERIFY(rows.isSettled());
    QCOMPARE(textsOf(rows, 1), QStringList({"b", "a"})); // the first one has nothing
    source.removeColumn(0);
    QTRY_COMPARE(textsOf(rows), QStringList({"a", "b"}));
    source.removeColumn(0);
    QCOMPARE(rows.columnCount(), 0);
    QTRY_VERIFY(rows.isSettled());
}

void tst_SortedRows::survivesItsSource()
{
    auto source = std::make_unique<QStringListModel>(QStringList {"2", "1"});
    SortedRows rows(source.get(), 0, Qt::AscendingOrder);
    QTRY_VERIFY(rows.isSettled());
    source.reset();
    QCOMPARE(rows.rowCount(), 0);
    QCOMPARE(rows.columnCount(), 0);
    QVERIFY(rows.isSettled());
}

void tst_SortedRows::takesFourBytesARow()
{
    QStringList texts;
    for (int row = 0; row < 20000; ++row)
        texts.append(QString::number(row * 7 % 20000));
    QStringListModel source(texts);
    SortedRows rows(&source, 0, Qt::AscendingOrder);
    QTRY_VERIFY(rows.isSettled());
    QCOMPARE(rows.memory(), 4 * texts.size());
    QCOMPARE(rows.index(12345, 0).data().toString(), QString("12345"));
}

void tst_SortedRows::followsAnyChange_data()
{
    QTest::addColumn<int>("seed");
    QTest::addColumn<int>("rows");
    for (int seed = 1; seed <= 4; ++seed)
        QTest::addRow("seed %d", seed) << seed << 40;
    for (int seed = 11; seed <= 12; ++seed)
        QTest::addRow("many rows, seed %d", seed) << seed << 9000;
}

//! While it is sorting, and between.
void tst_SortedRows::followsAnyChange()
{
    QFETCH(int, seed);
    QFETCH(int, rows);
    QRandomGenerator random {quint32(seed)};
    const auto text = [&] { return QString::number(random.bounded(30)); };
    QStringList texts;
    for (int row = 0; row < rows; ++row)
        texts.append(text());
    QStringListModel source(texts);
    const Qt::SortOrder order = seed % 2 != 0 ? Qt::AscendingOrder : Qt::DescendingOrder;
    SortedRows shown(&source, 0, order);
    std::unique_ptr<QAbstractItemModelTester> tester;
    if (rows < 100)
        tester = std::make_unique<QAbstractItemModelTester>(
            &shown, QAbstractItemModelTester::FailureReportingMode::Fatal);
    const auto change = [&] {
        const int count = source.rowCount();
        const int first = int(random.bounded(count + 1));
        const int length = qMin(count - first, int(random.bounded(5)));
        switch (random.bounded(6)) {
        case 0:
            source.insertRows(first, 1 + length);
            break;
        case 1:
            source.insertRows(count, 3);
            break;
        case 2:
            if (length > 0 && count > rows / 2)
                source.removeRows(first, length);
            break;
        case 3:
            source.moveRows({}, 0, qMin(2, count), {}, count);
            break;
        case 4:
            source.sort(0);
            break;
        default:
            for (int row = first; row < first + length; ++row)
                source.setData(source.index(row, 0), text());
        }
    };
    for (int step = 0; step < 60; ++step) {
        const QPersistentModelIndex row =
            shown.index(int(random.bounded(qMax(1, shown.rowCount()))), 0);
        const QPersistentModelIndex behind = shown.mapToSource(row);
        change();
        if (random.bounded(3) == 0)
            QCoreApplication::processEvents();
        if (random.bounded(5) == 0) {
            QTRY_VERIFY(shown.isSettled());
            QCOMPARE(textsOf(shown), sorted(source, order));
        }
        if (behind.isValid() && shown.rowCount() > 0)
            QCOMPARE(shown.mapToSource(row), QModelIndex(behind));
    }
    QTRY_VERIFY(shown.isSettled());
    QCOMPARE(textsOf(shown), sorted(source, order));
}

QTEST_MAIN(tst_SortedRows)

#include "tst_sortedrows.moc"
