// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "view/quietbar_p.h"

#include <QSignalSpy>
#include <QTest>

class TestQuietBar : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void valueBlocksScrolling();
    void rangeIsQuiet();
    void valueComesAlong();
};

void TestQuietBar::valueBlocksScrolling()
{
    QScrollBar bar;
    bar.setRange(0, 100);
    bool blocks = false;
    bool blocked = false;
    connect(&bar, &QScrollBar::valueChanged, &bar, [&] { blocked = blocks; });
    const QuietBar quiet(&bar, &blocks);
    quiet.setValue(7);
    QCOMPARE(bar.value(), 7);
    QVERIFY(blocked);
    QVERIFY(!blocks);
    quiet.setValue(qint64(1) << 40); // more than an int holds
    QCOMPARE(bar.value(), 100);
    blocks = true; // as somebody else had it
    quiet.setValue(3);
    QVERIFY(blocks);
}

void TestQuietBar::rangeIsQuiet()
{
    QScrollBar bar;
    bar.setRange(2, 10);
    bool blocks = false;
    const QSignalSpy ranges(&bar, &QScrollBar::rangeChanged);
    QuietBar(&bar, &blocks).setMaximum(50);
    QCOMPARE(bar.minimum(), 0);
    QCOMPARE(bar.maximum(), 50);
    QCOMPARE(ranges.size(), 0);
    QVERIFY(!bar.signalsBlocked());
}

void TestQuietBar::valueComesAlong()
{
    QScrollBar bar;
    bar.setRange(0, 100);
    bar.setValue(80);
    bool blocks = false;
    const QSignalSpy values(&bar, &QScrollBar::valueChanged);
    const QuietBar quiet(&bar, &blocks);
    quiet.setMaximum(90);
    QCOMPARE(bar.value(), 80);
    QCOMPARE(values.size(), 0);
    quiet.setMaximum(50); // the scroll area hears of it
    QCOMPARE(bar.value(), 50);
    QCOMPARE(values.size(), 1);
}

QTEST_MAIN(TestQuietBar)
#include "tst_quietbar.moc"
