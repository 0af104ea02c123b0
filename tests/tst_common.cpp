// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "common.h"

#include <QHeaderView>
#include <QStandardItemModel>
#include <QTest>

class tst_Common : public QObject
{
    Q_OBJECT

private slots:
    void visibleColumns_data();
    void visibleColumns();
    void headerWithoutModel();
};

void tst_Common::visibleColumns_data()
{
    QTest::addColumn<QList<int>>("order");
    QTest::addColumn<QList<int>>("hidden");
    QTest::addColumn<QList<int>>("expected");

    using Columns = QList<int>;
    QTest::newRow("as they are") << Columns {0, 1, 2, 3} << Columns {} << Columns {0, 1, 2, 3};
    QTest::newRow("moved") << Columns {2, 0, 3, 1} << Columns {} << Columns {2, 0, 3, 1};
    QTest::newRow("first hidden") << Columns {0, 1, 2, 3} << Columns {0} << Columns {1, 2, 3};
    QTest::newRow("last hidden") << Columns {0, 1, 2, 3} << Columns {3} << Columns {0, 1, 2};
    QTest::newRow("moved, hidden by number")
        << Columns {2, 0, 3, 1} << Columns {0, 3} << Columns {2, 1};
    QTest::newRow("all hidden") << Columns {3, 2, 1, 0} << Columns {0, 1, 2, 3} << Columns {};
}

void tst_Common::visibleColumns()
{
    QFETCH(QList<int>, order);
    QFETCH(QList<int>, hidden);
    QFETCH(QList<int>, expected);

    QStandardItemModel model(1, 4);
    QHeaderView header(Qt::Horizontal);
    header.setModel(&model);
    for (int i = 0; i < order.size(); ++i)
        header.moveSection(header.visualIndex(order.at(i)), i);
    for (const int column : hidden)
        header.hideSection(column);
    QCOMPARE(getVisibleColumns(&header), expected);
}

void tst_Common::headerWithoutModel()
{
    QHeaderView header(Qt::Horizontal);
    QCOMPARE(getVisibleColumns(&header), QList<int>());
}

QTEST_MAIN(tst_Common)
#include "tst_common.moc"
