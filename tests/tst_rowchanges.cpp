// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "view/rowchanges_p.h"

#include <QTest>

class TestRowChanges : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void nests();
    void endsWithoutBeginning();
    void moves();
    void tells();
    void resets();
};

void TestRowChanges::nests()
{
    RowChanges changes;
    QVERIFY(!changes.isAmid());
    changes.begin();
    changes.begin();
    changes.end();
    QVERIFY(changes.isAmid());
    changes.end();
    QVERIFY(!changes.isAmid());
}

void TestRowChanges::endsWithoutBeginning()
{
    RowChanges changes;
    changes.end();
    QVERIFY(!changes.isAmid());
    changes.begin();
    QVERIFY(changes.isAmid()); // what was not announced does not count
}

void TestRowChanges::moves()
{
    RowChanges changes;
    changes.setRows(5);
    changes.beginMove();
    QVERIFY(changes.isAmid());
    QVERIFY(changes.areUntold(5));
    changes.begin();
    changes.end();
    QVERIFY(changes.areUntold(5)); // the move has not ended
    changes.end();
    QVERIFY(!changes.areUntold(5));
}

void TestRowChanges::tells()
{
    RowChanges changes;
    QCOMPARE(changes.rows(), 0);
    changes.setRows(5);
    QCOMPARE(changes.rows(), 5);
    QVERIFY(!changes.areUntold(5));
    QVERIFY(changes.areUntold(4));
    QVERIFY(changes.areUntold(6));
    const quint64 serial = changes.serial();
    changes.begin();
    QCOMPARE(changes.serial(), serial);
    changes.end();
    QVERIFY(changes.serial() != serial);
}

void TestRowChanges::resets()
{
    RowChanges changes;
    changes.beginMove();
    const quint64 serial = changes.serial();
    changes.reset(7);
    QVERIFY(!changes.isAmid());
    QVERIFY(!changes.areUntold(7));
    QVERIFY(changes.serial() != serial);
}

QTEST_APPLESS_MAIN(TestRowChanges)
#include "tst_rowchanges.moc"
