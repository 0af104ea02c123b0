// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "view/autoscrollhold_p.h"

#include <QListView>
#include <QTest>

class tst_AutoScrollHold : public QObject
{
    Q_OBJECT

private slots:
    void restoresWhatTheApplicationHadSet_data();
    void restoresWhatTheApplicationHadSet();
    void releaseWithoutHoldDoesNothing();
};

void tst_AutoScrollHold::restoresWhatTheApplicationHadSet_data()
{
    QTest::addColumn<bool>("isOn");
    QTest::newRow("on") << true;
    QTest::newRow("off") << false;
}

void tst_AutoScrollHold::restoresWhatTheApplicationHadSet()
{
    QFETCH(bool, isOn);
    QListView view;
    view.setAutoScroll(isOn);
    AutoScrollHold scroll(&view);
    for (int round = 0; round < 2; ++round) {
        scroll.hold();
        QVERIFY(!view.hasAutoScroll());
        scroll.hold();
        scroll.release();
        QVERIFY(!view.hasAutoScroll());
        scroll.release();
        QCOMPARE(view.hasAutoScroll(), isOn);
    }
}

void tst_AutoScrollHold::releaseWithoutHoldDoesNothing()
{
    QListView view;
    AutoScrollHold scroll(&view);
    scroll.release();
    QVERIFY(view.hasAutoScroll());
    scroll.hold();
    scroll.release();
    view.setAutoScroll(false);
    scroll.release();
    QVERIFY(!view.hasAutoScroll());
    scroll.hold(); // what was released too often does not count
    QVERIFY(!view.hasAutoScroll());
    view.setAutoScroll(true);
    scroll.hold();
    QVERIFY(!view.hasAutoScroll());
}

QTEST_MAIN(tst_AutoScrollHold)

#include "tst_autoscrollhold.moc"
