// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "view/edgekeeper_p.h"

#include <QTest>

#include <optional>

namespace {

using Edge = EdgeKeeper::Edge;
using Scroll = EdgeKeeper::Scroll;
using Situation = EdgeKeeper::Situation;

//! A table of ten rows, of which the view shows the middle, with the flags of a view.
struct Keeper
{
    bool stayAtTop = false;
    bool stayAtEnd = false;
    bool currentFirst = false;
    bool currentLast = false;
    int currentColumn = -2;
    int currentPos = -2;
    EdgeKeeper edges {{stayAtTop, stayAtEnd, currentFirst, currentLast, currentColumn, currentPos}};

    QString flags() const
    {
        QString text;
        for (const auto &[flag, letter] :
             {std::pair(stayAtTop, 'T'), std::pair(stayAtEnd, 'E'), std::pair(currentFirst, 'F'),
              std::pair(currentLast, 'L')}) {
            text += flag ? QLatin1Char(letter) : QLatin1Char('-');
        }
        return text;
    }
};

Situation situation(int currentRow, const char *bar, bool isAscending = true)
{
    Situation now;
    now.rows = 10;
    now.currentRow = currentRow;
    now.currentColumn = currentRow < 0 ? -1 : 2;
    now.topRow = 4;
    now.isAtMinimum = qstrcmp(bar, "top") == 0 || qstrcmp(bar, "both") == 0;
    now.isAtMaximum = qstrcmp(bar, "end") == 0 || qstrcmp(bar, "both") == 0;
    now.isAscending = isAscending;
    return now;
}

Situation ofRows(Situation now, int rows)
{
    now.rows = rows;
    return now;
}

Situation fetching(Situation now)
{
    now.isFetching = true;
    return now;
}

} // namespace

Q_DECLARE_METATYPE(EdgeKeeper::Situation)
Q_DECLARE_METATYPE(EdgeKeeper::Edge)
Q_DECLARE_METATYPE(EdgeKeeper::Scroll)

class TestEdgeKeeper : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void beforeInsertion_data();
    void beforeInsertion();
    void remembersTheCurrentIndex();
    void scrolls_data();
    void scrolls();
    void follows_data();
    void follows();
    void followsAtHomeAndEnd();
    void owes();
    void owesNoMore();
    void resets_data();
    void resets();
};

void TestEdgeKeeper::beforeInsertion_data()
{
    QTest::addColumn<Situation>("now");
    QTest::addColumn<QString>("flags"); // top, end, first, last
    const auto add = [](const char *name, const Situation &now, const char *flags) {
        QTest::newRow(name) << now << QString::fromLatin1(flags);
    };
    add("amid", situation(5, "amid"), "----");
    add("none current", situation(-1, "amid"), "----");
    add("first row", situation(0, "amid"), "--F-");
    add("last row", situation(9, "amid"), "---L");
    add("last but one", situation(8, "amid"), "----");
    add("at the top", situation(5, "top"), "T---");
    add("at the end", situation(5, "end"), "-E--");
    add("first row at the end", situation(0, "end"), "-EF-");
    add("both ends, ascending", situation(5, "both"), "T---");
    add("both ends, descending", situation(5, "both", false), "-E--");
    add("one row, ascending", ofRows(situation(0, "both"), 1), "T-F-");
    add("one row, descending", ofRows(situation(0, "both", false), 1), "-E-L");
    add("empty, ascending", ofRows(situation(-1, "both"), 0), "T-F-");
    add("empty, descending", ofRows(situation(-1, "both", false), 0), "-E-L");
    add("fetched at the end", fetching(situation(9, "end")), "----");
    add("fetched at the top", fetching(situation(0, "top")), "----");
    add("fetched into an empty table", fetching(ofRows(situation(-1, "both"), 0)), "T---");
}

void TestEdgeKeeper::beforeInsertion()
{
    QFETCH(Situation, now);
    for (bool before : {false, true}) { // nothing is left of what was
        Keeper keeper;
        keeper.stayAtTop = keeper.stayAtEnd = keeper.currentFirst = keeper.currentLast = before;
        keeper.edges.beforeInsertion(now);
        QTEST(keeper.flags(), "flags");
    }
}

void TestEdgeKeeper::remembersTheCurrentIndex()
{
    Keeper keeper;
    keeper.edges.beforeInsertion(situation(7, "amid"));
    QCOMPARE(keeper.currentColumn, 2);
    QCOMPARE(keeper.currentPos, 3);
    keeper.edges.beforeInsertion(situation(1, "amid"));
    QCOMPARE(keeper.currentPos, -3);
    keeper.edges.beforeInsertion(situation(-1, "amid"));
    QCOMPARE(keeper.currentColumn, 2); // as it was
    QCOMPARE(keeper.currentPos, 0);
}

void TestEdgeKeeper::scrolls_data()
{
    QTest::addColumn<bool>("stayAtTop");
    QTest::addColumn<bool>("stayAtEnd");
    QTest::addColumn<int>("start");
    QTest::addColumn<Scroll>("scroll");
    // The top row is 4.
    QTest::newRow("amid, above") << false << false << 0 << Scroll::WithRows;
    QTest::newRow("amid, at the top row") << false << false << 4 << Scroll::WithRows;
    QTest::newRow("amid, in view") << false << false << 5 << Scroll::Stay;
    QTest::newRow("at the top") << true << false << 0 << Scroll::Stay;
    QTest::newRow("at the end") << false << true << 9 << Scroll::ToEnd;
    QTest::newRow("at the end, above") << false << true << 0 << Scroll::ToEnd;
    QTest::newRow("both") << true << true << 0 << Scroll::Stay;
}

void TestEdgeKeeper::scrolls()
{
    QFETCH(bool, stayAtTop);
    QFETCH(bool, stayAtEnd);
    QFETCH(int, start);
    Keeper keeper;
    keeper.stayAtTop = stayAtTop;
    keeper.stayAtEnd = stayAtEnd;
    QTEST(keeper.edges.scroll(start, 4), "scroll");
}

void TestEdgeKeeper::follows_data()
{
    QTest::addColumn<int>("currentRow");
    QTest::addColumn<int>("start");
    QTest::addColumn<int>("count");
    QTest::addColumn<Edge>("edge");
    QTest::newRow("rows at the top, first current") << 0 << 0 << 2 << Edge::First;
    QTest::newRow("rows at the end, last current") << 9 << 10 << 2 << Edge::Last;
    QTest::newRow("rows at the top, last current") << 9 << 0 << 2 << Edge::None;
    QTest::newRow("rows at the end, first current") << 0 << 10 << 2 << Edge::None;
    QTest::newRow("rows before the last") << 9 << 9 << 2 << Edge::None;
    QTest::newRow("rows after the first") << 0 << 1 << 2 << Edge::None;
    QTest::newRow("another row current") << 5 << 0 << 2 << Edge::None;
    QTest::newRow("none current") << -1 << 0 << 2 << Edge::None;
}

void TestEdgeKeeper::follows()
{
    QFETCH(int, currentRow);
    QFETCH(int, start);
    QFETCH(int, count);
    Keeper keeper;
    keeper.edges.beforeInsertion(situation(currentRow, "amid"));
    QTEST(keeper.edges.edgeToFollow(start, start + count - 1, 10 + count), "edge");
    QVERIFY(keeper.edges.followsCurrent());
    keeper.edges.setFollowsCurrent(false);
    QVERIFY(!keeper.edges.followsCurrent());
    QCOMPARE(keeper.edges.edgeToFollow(start, start + count - 1, 10 + count), Edge::None);
}

void TestEdgeKeeper::followsAtHomeAndEnd()
{
    // The keys set a flag, which lasts until rows are about to come.
    Keeper keeper;
    keeper.currentFirst = true;
    QCOMPARE(keeper.edges.edgeToFollow(0, 1, 12), Edge::First);
    keeper.currentLast = true;
    QCOMPARE(keeper.edges.edgeToFollow(0, 11, 12), Edge::First); // of both
    QCOMPARE(keeper.edges.edgeToFollow(10, 11, 12), Edge::Last);
    keeper.edges.beforeInsertion(situation(5, "amid"));
    QCOMPARE(keeper.edges.edgeToFollow(0, 1, 12), Edge::None);
}

void TestEdgeKeeper::owes()
{
    for (Edge edge : {Edge::First, Edge::Last}) {
        Keeper keeper;
        QVERIFY(!keeper.edges.isOwed());
        keeper.edges.owe(edge);
        QVERIFY(keeper.edges.isOwed());

        Situation now = situation(5, "amid");
        now.isEditing = true;
        keeper.edges.beforeInsertion(now);
        QCOMPARE(keeper.flags(), QStringLiteral("----"));
        QVERIFY(keeper.edges.isOwed());
        now.isEditing = false;
        keeper.edges.beforeInsertion(fetching(now));
        QCOMPARE(keeper.flags(), QStringLiteral("----"));
        QVERIFY(keeper.edges.isOwed());

        keeper.edges.beforeInsertion(now);
        QCOMPARE(keeper.flags(),
                 edge == Edge::First ? QStringLiteral("--F-") : QStringLiteral("---L"));
        QVERIFY(!keeper.edges.isOwed());
    }
}

void TestEdgeKeeper::owesNoMore()
{
    Keeper keeper;
    for (Edge edge : {Edge::First, Edge::Last}) {
        keeper.edges.owe(edge);
        keeper.edges.currentChanged();
        QVERIFY(!keeper.edges.isOwed());
        keeper.edges.owe(edge);
        keeper.edges.setFollowsCurrent(true);
        QVERIFY(!keeper.edges.isOwed());
    }
}

void TestEdgeKeeper::resets_data()
{
    QTest::addColumn<int>("currentRow");
    QTest::addColumn<int>("rows");
    QTest::addColumn<QString>("flags");
    QTest::addColumn<Edge>("edge");
    QTest::newRow("first") << 0 << 10 << QStringLiteral("--F-") << Edge::First;
    QTest::newRow("last") << 9 << 10 << QStringLiteral("---L") << Edge::Last;
    QTest::newRow("amid") << 5 << 10 << QStringLiteral("----") << Edge::None;
    QTest::newRow("the only one") << 0 << 1 << QStringLiteral("--F-") << Edge::First;
}

void TestEdgeKeeper::resets()
{
    QFETCH(int, currentRow);
    QFETCH(int, rows);
    for (bool before : {false, true}) {
        Keeper keeper;
        keeper.currentFirst = keeper.currentLast = before;
        // Nothing that could be remembered: what is known is kept.
        keeper.edges.beforeReset(-1, -1, rows);
        keeper.edges.beforeReset(currentRow, 1, 0);
        QCOMPARE(keeper.flags(), before ? QStringLiteral("--FL") : QStringLiteral("----"));
        QCOMPARE(keeper.currentColumn, -2);

        keeper.edges.beforeReset(currentRow, 1, rows);
        QTEST(keeper.flags(), "flags");
        QCOMPARE(keeper.currentColumn, 1);
        QTEST(keeper.edges.edgeAfterReset(), "edge");
        keeper.edges.setFollowsCurrent(false);
        QCOMPARE(keeper.edges.edgeAfterReset(), Edge::None);
    }
}

QTEST_APPLESS_MAIN(TestEdgeKeeper)
#include "tst_edgekeeper.moc"
