// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "view/columnstrip_p.h"

#include <QHeaderView>
#include <QStandardItemModel>
#include <QTest>

#include <algorithm>
#include <random>

namespace {

ColumnSlot slot(int column, int x, int width)
{
    return {column, x, width, QStyleOptionViewItem::Middle};
}

//! The columns of a header of \a width pixels that are on screen, or, with \a all, all.
ColumnStrip stripOf(const QHeaderView &header, int width, bool all = false)
{
    ColumnStrip strip;
    for (int visual = 0; visual < header.count(); ++visual) {
        const int column = header.logicalIndex(visual);
        if (header.isSectionHidden(column))
            continue;
        const ColumnSlot now =
            slot(column, header.sectionViewportPosition(column), header.sectionSize(column));
        if (all || (now.x < width && now.x + now.width > 0))
            strip.append(now);
    }
    return strip;
}

const ColumnSlot *find(const ColumnStrip &strip, int column)
{
    const auto it = std::find_if(strip.cbegin(), strip.cend(), [column](const ColumnSlot &other) {
        return other.column == column;
    });
    return it == strip.cend() ? nullptr : &*it;
}

//! The slot that a pixel shows.
ColumnSlot slotAt(const ColumnStrip &strip, int x)
{
    for (const ColumnSlot &now : strip) {
        if (now.x <= x && x < now.x + now.width)
            return now;
    }
    return slot(-1, 0, 0);
}

//! What shows() says, told from every pixel.
bool isSamePicture(const ColumnStrip &a, const ColumnStrip &b, int width, int from, int to)
{
    for (int x = 0; x < width; ++x) {
        if ((x < from || x >= to) && slotAt(a, x) != slotAt(b, x))
            return false;
    }
    return true;
}

//! Columns one after the other from \a x on, in random order with gaps where some are hidden.
ColumnStrip randomStrip(std::mt19937 &random)
{
    QList<int> columns {0, 1, 2, 3, 4};
    std::shuffle(columns.begin(), columns.end(), random);
    ColumnStrip strip;
    int x = int(random() % 9) - 6;
    for (int column : std::as_const(columns)) {
        if (random() % 4 == 0)
            continue;
        strip.append(slot(column, x, int(random() % 6)));
        x += strip.constLast().width;
    }
    return strip;
}

//! \a strip with one thing changed, or none.
ColumnStrip changed(ColumnStrip strip, std::mt19937 &random)
{
    if (strip.isEmpty())
        return strip;
    const auto at = qsizetype(random() % quint32(strip.size()));
    switch (random() % 5) {
    case 0:
        strip.removeAt(at);
        break;
    case 1:
        strip[at].column = 7;
        break;
    case 2:
        strip = scrolled(strip, int(random() % 3));
        break;
    case 3:
        strip = resized(strip, strip.at(at).column, 1, false);
        break;
    default:
        break;
    }
    return strip;
}

} // namespace

class TestColumnStrip : public QObject
{
    Q_OBJECT

private slots:
    void scrolledMovesAll_data();
    void scrolledMovesAll();
    void resizedPushes_data();
    void resizedPushes();
    void resizedIsWhatHeadersDo_data();
    void resizedIsWhatHeadersDo();
    void showsKnowsWhatIsSeen_data();
    void showsKnowsWhatIsSeen();
    void showsIsToldFromPixels();
    void samePlaces_data();
    void samePlaces();
};

void TestColumnStrip::scrolledMovesAll_data()
{
    QTest::addColumn<ColumnStrip>("strip");
    QTest::addColumn<int>("dx");
    QTest::addColumn<ColumnStrip>("result");
    const ColumnStrip two {slot(3, -5, 10), slot(1, 5, 20)};
    QTest::newRow("none") << ColumnStrip() << 7 << ColumnStrip();
    QTest::newRow("by nothing") << two << 0 << two;
    QTest::newRow("right") << two << 7 << ColumnStrip {slot(3, 2, 10), slot(1, 12, 20)};
    QTest::newRow("left") << two << -7 << ColumnStrip {slot(3, -12, 10), slot(1, -2, 20)};
}

void TestColumnStrip::scrolledMovesAll()
{
    QFETCH(ColumnStrip, strip);
    QFETCH(int, dx);
    QTEST(scrolled(strip, dx), "result");
}

void TestColumnStrip::resizedPushes_data()
{
    QTest::addColumn<int>("column");
    QTest::addColumn<int>("delta");
    QTest::addColumn<bool>("isRightToLeft");
    QTest::addColumn<QList<int>>("lefts");
    QTest::addColumn<QList<int>>("widths");
    // 2, 0, 1 from left to right, or the other way round.
    using Numbers = QList<int>;
    QTest::newRow("first grows") << 2 << 4 << false << Numbers {0, 14, 34} << Numbers {14, 20, 30};
    QTest::newRow("middle grows") << 0 << 4 << false << Numbers {0, 10, 34} << Numbers {10, 24, 30};
    QTest::newRow("last grows") << 1 << 4 << false << Numbers {0, 10, 30} << Numbers {10, 20, 34};
    QTest::newRow("middle shrinks")
        << 0 << -4 << false << Numbers {0, 10, 26} << Numbers {10, 16, 30};
    QTest::newRow("another") << 5 << 4 << false << Numbers {0, 10, 30} << Numbers {10, 20, 30};
    QTest::newRow("right to left, first grows")
        << 2 << 4 << true << Numbers {46, 26, -4} << Numbers {14, 20, 30};
    QTest::newRow("right to left, middle grows")
        << 0 << 4 << true << Numbers {50, 26, -4} << Numbers {10, 24, 30};
    QTest::newRow("right to left, last grows")
        << 1 << 4 << true << Numbers {50, 30, -4} << Numbers {10, 20, 34};
    QTest::newRow("right to left, middle shrinks")
        << 0 << -4 << true << Numbers {50, 34, 4} << Numbers {10, 16, 30};
}

void TestColumnStrip::resizedPushes()
{
    QFETCH(int, column);
    QFETCH(int, delta);
    QFETCH(bool, isRightToLeft);
    QFETCH(QList<int>, lefts);
    QFETCH(QList<int>, widths);
    const ColumnStrip strip = isRightToLeft
        ? ColumnStrip {slot(2, 50, 10), slot(0, 30, 20), slot(1, 0, 30)}
        : ColumnStrip {slot(2, 0, 10), slot(0, 10, 20), slot(1, 30, 30)};
    ColumnStrip wanted = strip;
    for (qsizetype i = 0; i < wanted.size(); ++i)
        wanted[i] = slot(strip.at(i).column, lefts.at(i), widths.at(i));
    QCOMPARE(resized(strip, column, delta, isRightToLeft), wanted);
}

void TestColumnStrip::resizedIsWhatHeadersDo_data()
{
    QTest::addColumn<bool>("isRightToLeft");
    QTest::addColumn<int>("offset");
    for (int offset : {0, 35}) {
        QTest::addRow("left to right, offset %d", offset) << false << offset;
        QTest::addRow("right to left, offset %d", offset) << true << offset;
    }
}

//! With moved and hidden sections.
void TestColumnStrip::resizedIsWhatHeadersDo()
{
    QFETCH(bool, isRightToLeft);
    QFETCH(int, offset);
    QStandardItemModel model(1, 6);
    QHeaderView header(Qt::Horizontal);
    header.setModel(&model);
    header.setLayoutDirection(isRightToLeft ? Qt::RightToLeft : Qt::LeftToRight);
    header.setMinimumSectionSize(1);
    header.setSectionsMovable(true);
    header.resize(200, 20);
    for (int column = 0; column < 6; ++column)
        header.resizeSection(column, 30 + 10 * column);
    header.moveSection(4, 0);
    header.moveSection(5, 2);
    header.hideSection(1);
    header.setOffset(offset);
    for (int column : {0, 2, 3, 4, 5}) {
        for (int delta : {-15, 12}) {
            const ColumnStrip before = stripOf(header, header.width(), true);
            header.resizeSection(column, header.sectionSize(column) + delta);
            header.setOffset(offset); // else it follows the end
            QCOMPARE(resized(before, column, delta, isRightToLeft),
                     stripOf(header, header.width(), true));
            QVERIFY(find(before, column));
        }
    }
}

void TestColumnStrip::showsKnowsWhatIsSeen_data()
{
    QTest::addColumn<ColumnStrip>("moved");
    QTest::addColumn<ColumnStrip>("wanted");
    QTest::addColumn<int>("from");
    QTest::addColumn<int>("to");
    QTest::addColumn<bool>("isShown");
    const ColumnStrip none;
    const ColumnStrip two {slot(0, 0, 40), slot(1, 40, 60)};
    const ColumnStrip three {slot(0, 0, 40), slot(2, 40, 10), slot(1, 50, 60)};
    const ColumnStrip atLeft {slot(0, -20, 40), slot(1, 20, 60)};
    QTest::newRow("nothing") << none << none << 0 << 0 << true;
    QTest::newRow("the same") << two << two << 0 << 0 << true;
    QTest::newRow("elsewhere") << two << atLeft << 0 << 0 << false;
    QTest::newRow("elsewhere, all uncovered") << two << atLeft << 0 << 100 << true;
    QTest::newRow("one less") << two << ColumnStrip {two.at(0)} << 0 << 0 << false;
    QTest::newRow("one less, uncovered") << two << ColumnStrip {two.at(0)} << 40 << 100 << true;
    QTest::newRow("one less, uncovered but for a pixel")
        << two << ColumnStrip {two.at(0)} << 41 << 100 << false;
    QTest::newRow("one more") << ColumnStrip {two.at(0)} << two << 0 << 0 << false;
    QTest::newRow("one more, uncovered") << ColumnStrip {two.at(0)} << two << 40 << 100 << true;
    QTest::newRow("one more at the left, uncovered")
        << ColumnStrip {two.at(1)} << two << 0 << 40 << true;
    QTest::newRow("one more at the left, not all uncovered")
        << ColumnStrip {two.at(1)} << two << 0 << 39 << false;
    QTest::newRow("one more between") << two << three << 0 << 0 << false;
    QTest::newRow("moved on by one between, uncovered")
        << ColumnStrip {slot(0, 0, 40), slot(1, 50, 60)} << three << 40 << 50 << true;
    QTest::newRow("one between gone, uncovered")
        << three << ColumnStrip {slot(0, 0, 40), slot(1, 50, 60)} << 40 << 50 << true;
    QTest::newRow("exchanged") << two << ColumnStrip {slot(1, 0, 40), slot(0, 40, 60)} << 0 << 0
                               << false;
    QTest::newRow("one out of sight at the right gone")
        << ColumnStrip {two.at(0), two.at(1), slot(2, 100, 10)} << two << 0 << 0 << true;
    QTest::newRow("one out of sight at the left gone")
        << ColumnStrip {slot(2, -10, 10), two.at(0), two.at(1)} << two << 0 << 0 << true;
    QTest::newRow("one out of sight more")
        << two << ColumnStrip {slot(2, -10, 10), two.at(0), two.at(1)} << 0 << 0 << true;
    QTest::newRow("another width out of sight")
        << ColumnStrip {slot(0, 0, 120)} << ColumnStrip {slot(0, 0, 130)} << 0 << 0 << false;
    QTest::newRow("a column without a width gone")
        << ColumnStrip {two.at(0), slot(2, 40, 0), two.at(1)} << two << 0 << 0 << true;
}

void TestColumnStrip::showsKnowsWhatIsSeen()
{
    QFETCH(ColumnStrip, moved);
    QFETCH(ColumnStrip, wanted);
    QFETCH(int, from);
    QFETCH(int, to);
    QTEST(shows(moved, wanted, 100, from, to), "isShown");
}

void TestColumnStrip::showsIsToldFromPixels()
{
    constexpr int width = 12;
    std::mt19937 random(3);
    int same = 0;
    for (int i = 0; i < 20000; ++i) {
        const ColumnStrip a = randomStrip(random);
        const ColumnStrip b = changed(changed(a, random), random);
        const int from = int(random() % width);
        const int to = from + int(random() % quint32(width - from + 1));
        const bool isSame = isSamePicture(a, b, width, from, to);
        QCOMPARE(shows(a, b, width, from, to), isSame);
        same += isSame ? 1 : 0;
    }
    QVERIFY(same > 2000 && same < 18000); // both were tried
}

void TestColumnStrip::samePlaces_data()
{
    using Item = QStyleOptionViewItem;
    QTest::addColumn<ColumnStrip>("other");
    QTest::addColumn<bool>("isSame");
    QTest::newRow("the same") << ColumnStrip {{3, 5, 60, Item::Beginning}, {1, 65, 70, Item::End}}
                              << true;
    QTest::newRow("positions") << ColumnStrip {{3, 5, 60, Item::Middle}, {1, 65, 70, Item::Middle}}
                               << true;
    QTest::newRow("column") << ColumnStrip {{3, 5, 60, Item::Beginning}, {2, 65, 70, Item::End}}
                            << false;
    QTest::newRow("place") << ColumnStrip {{3, 4, 60, Item::Beginning}, {1, 65, 70, Item::End}}
                           << false;
    QTest::newRow("width") << ColumnStrip {{3, 5, 60, Item::Beginning}, {1, 65, 71, Item::End}}
                           << false;
    QTest::newRow("fewer") << ColumnStrip {{3, 5, 60, Item::Beginning}} << false;
    QTest::newRow("none") << ColumnStrip {} << false;
}

void TestColumnStrip::samePlaces()
{
    QFETCH(ColumnStrip, other);
    QFETCH(bool, isSame);
    const ColumnStrip strip {{3, 5, 60, QStyleOptionViewItem::Beginning},
                             {1, 65, 70, QStyleOptionViewItem::End}};
    QCOMPARE(haveSamePlaces(strip, other), isSame);
    QCOMPARE(haveSamePlaces(other, strip), isSame);
}

QTEST_MAIN(TestColumnStrip)

#include "tst_columnstrip.moc"
