// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "scaled.h"
#include "view/pixelmover_p.h"
#include "viewpictures.h"

#include <QAbstractScrollArea>
#include <QBackingStore>
#include <QLinearGradient>
#include <QPaintEvent>
#include <QPainter>
#include <QTest>

#include <functional>
#include <memory>
#include <random>

namespace {

constexpr int bandHeight = 10;
constexpr int bands = 12;

//! Shows bands of colours, one below the other.
class BandArea : public QAbstractScrollArea
{
public:
    explicit BandArea(QWidget *area = nullptr)
        : mover(this)
    {
        setFrameShape(NoFrame);
        setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        if (area) { // before there is something to show
            area->setAutoFillBackground(true);
            setViewport(area);
        }
        for (int i = 0; i < bands; ++i)
            colors.append(nextColor());
        resize(60, bands * bandHeight);
        show();
        settleEvents();
        painted = QRegion();
    }

    QRgb nextColor() { return 0xff000000U | ++m_lastColor * 40503U; }
    QRect band(int at, int count = 1) const
    {
        return {0, at * bandHeight, viewport()->width(), count * bandHeight};
    }
    //! From a band to the bottom.
    QRect bandsFrom(int at) const { return band(at, bands - at); }

    QImage shown() const
    {
        return *static_cast<const QImage *>(window()->backingStore()->paintDevice());
    }

    PixelMover mover;
    QList<QRgb> colors;
    QRegion painted;
    std::function<void()> whilePainting;

protected:
    void paintEvent(QPaintEvent *event) override
    {
        painted |= event->region();
        mover.painted(event->region());
        if (whilePainting)
            whilePainting();
        QPainter painter(viewport());
        for (int i = 0; i < bands; ++i)
            painter.fillRect(band(i), QColor(colors.at(i)));
    }
    void scrollContentsBy(int /*dx*/, int /*dy*/) override { }

private:
    quint32 m_lastColor = 0;
};

bool isShown(const BandArea &area)
{
    const QImage image = area.shown();
    for (int y = 0; y < bands * bandHeight; ++y) {
        for (int x = 0; x < area.viewport()->width(); ++x) {
            if (image.pixel(x, y) != area.colors.at(y / bandHeight))
                return false;
        }
    }
    return true;
}

//! A band comes, or has another colour.
struct Change
{
    bool isInsertion;
    int band;
};

void apply(const Change &change, BandArea *area)
{
    if (!change.isInsertion) {
        area->colors[change.band] = area->nextColor();
        return;
    }
    area->colors.insert(change.band, area->nextColor());
    area->colors.removeLast();
}

void tell(const Change &change, BandArea *area)
{
    if (!change.isInsertion)
        area->mover.update(area->band(change.band));
    else if (area->mover.canMoveAgain())
        area->mover.moveStrip(0, bandHeight, area->bandsFrom(change.band));
    else
        area->mover.update();
}

//! The first of \a changes, with a band that changed colour where the others put it.
Change placedAfter(const QList<Change> &changes)
{
    Change first = changes.constFirst();
    for (const Change &next : changes.sliced(1)) {
        if (!first.isInsertion && next.isInsertion && next.band <= first.band)
            ++first.band;
    }
    return first;
}

using Prepare = void (*)(BandArea &);

void setBase(BandArea &area, const QBrush &brush)
{
    QPalette palette = area.viewport()->palette();
    palette.setBrush(area.viewport()->backgroundRole(), brush);
    area.viewport()->setPalette(palette);
    settleEvents();
}

//! Cells take their brushes from the scroll area.
void setCells(BandArea &area, QPalette::ColorRole role)
{
    QPalette palette = area.palette();
    palette.setBrush(role, QLinearGradient(0, 0, 0, 100));
    area.setPalette(palette);
    settleEvents();
}

} // namespace

class TestPixelMover : public QObject
{
    Q_OBJECT

public:
    //! Called before the application is made: device pixels are whole.
    static void initMain() { qputenv("QT_SCALE_FACTOR", "1"); }

private slots:
    void pixelsMove_data();
    void pixelsMove();
    void longMovesPaint_data();
    void longMovesPaint();
    void pendingIsPaintedInBothPlaces_data();
    void pendingIsPaintedInBothPlaces();
    void manyChangesAreShown_data();
    void manyChangesAreShown();
    void somePixelsStay_data();
    void somePixelsStay();
    void rowsMove();
    void columnsMove_data();
    void columnsMove();
    void noMoveWhilePainting();
    void noMoveWhenAllIsPending();
    void noMoveOffDevicePixels();
    void partIsWidenedOffDevicePixels();
    void threeMovesBetweenPaints();
    void childrenMoveWithAll();
    void childrenStayInStrips();
    void manyPartsArePainted();
    void movesWhilePartsArePending();
};

void TestPixelMover::pixelsMove_data()
{
    QTest::addColumn<int>("dy");
    QTest::addColumn<bool>("isStrip");
    for (int count : {-3, -1, 1, 3}) {
        QTest::addRow("all by %d", count) << count << false;
        QTest::addRow("strip by %d", count) << count << true;
    }
}

//! Only what is uncovered is painted.
void TestPixelMover::pixelsMove()
{
    QFETCH(int, dy);
    QFETCH(bool, isStrip);
    BandArea area;
    QVERIFY(isShown(area));
    const int first = isStrip ? 4 : 0;
    for (int i = 0; i < std::abs(dy); ++i) {
        if (dy > 0) {
            area.colors.insert(first, area.nextColor());
            area.colors.removeLast();
        } else {
            area.colors.removeAt(first);
            area.colors.append(area.nextColor());
        }
    }
    QVERIFY(area.mover.canMove());
    if (isStrip)
        area.mover.moveStrip(0, dy * bandHeight, area.bandsFrom(first));
    else
        QVERIFY(area.mover.moveAll(0, dy * bandHeight));
    settleEvents();
    QVERIFY(isShown(area));
    QCOMPARE(area.painted, QRegion(area.band(dy > 0 ? first : bands + dy, std::abs(dy))));
}

void TestPixelMover::longMovesPaint_data()
{
    QTest::addColumn<int>("dx");
    QTest::addColumn<int>("dy");
    QTest::newRow("down") << 0 << 8 * bandHeight;
    QTest::newRow("up") << 0 << -8 * bandHeight;
    QTest::newRow("right") << 60 << 0;
    QTest::newRow("left") << -60 << 0;
}

void TestPixelMover::longMovesPaint()
{
    QFETCH(int, dx);
    QFETCH(int, dy);
    BandArea area;
    area.mover.moveStrip(dx, dy, area.bandsFrom(4));
    settleEvents();
    QCOMPARE(area.painted, QRegion(area.bandsFrom(4)));
}

void TestPixelMover::pendingIsPaintedInBothPlaces_data()
{
    QTest::addColumn<bool>("isStrip");
    QTest::addColumn<QRect>("pending");
    QTest::addColumn<QRect>("there"); // after the move by two bands
    constexpr int h = bandHeight;
    QTest::newRow("all") << false << QRect(10, 3 * h, 20, h) << QRect(10, 5 * h, 20, h);
    QTest::newRow("all, to the edge")
        << false << QRect(0, 10 * h + 5, 60, 5) << QRect(0, 12 * h - 1, 0, 0);
    QTest::newRow("all, over the edge")
        << false << QRect(0, 9 * h, 60, 2 * h) << QRect(0, 11 * h, 60, h);
    QTest::newRow("strip") << true << QRect(10, 5 * h, 20, h) << QRect(10, 7 * h, 20, h);
    QTest::newRow("strip, above it") << true << QRect(10, 2 * h, 20, h) << QRect();
    QTest::newRow("strip, half above it")
        << true << QRect(10, 3 * h, 20, 2 * h) << QRect(10, 6 * h, 20, h);
}

void TestPixelMover::pendingIsPaintedInBothPlaces()
{
    QFETCH(bool, isStrip);
    QFETCH(QRect, pending);
    QFETCH(QRect, there);
    BandArea area;
    area.mover.update(pending);
    if (isStrip)
        area.mover.moveStrip(0, 2 * bandHeight, area.bandsFrom(4));
    else
        QVERIFY(area.mover.moveAll(0, 2 * bandHeight));
    settleEvents();
    QCOMPARE(area.painted, QRegion(pending) | there | area.band(isStrip ? 4 : 0, 2));
}

void TestPixelMover::manyChangesAreShown_data()
{
    QTest::addColumn<uint>("seed");
    QTest::addColumn<bool>("isToldLate");
    for (uint seed = 1; seed <= 30; ++seed) {
        QTest::addRow("%u, told at once", seed) << seed << false;
        QTest::addRow("%u, told when all is done", seed) << seed << true;
    }
}

//! Bands come and change colour. The mover is told of each change at once, or of one after
//! the other when everything has changed: then a band may be named by where it was when it
//! changed, by where it is, or by any place between.
void TestPixelMover::manyChangesAreShown()
{
    QFETCH(uint, seed);
    QFETCH(bool, isToldLate);
    std::mt19937 random(seed);
    BandArea area;
    for (int round = 0; round < 8; ++round) {
        QList<Change> changes;
        for (auto count = random() % 6 + 1; count > 0; --count) {
            changes.append({random() % 2 == 0, int(random() % bands)});
            apply(changes.constLast(), &area);
            if (!isToldLate)
                tell(changes.takeLast(), &area);
        }
        for (qsizetype i = 0; i < changes.size(); ++i) {
            const auto later = qsizetype(random() % uint(changes.size() - i));
            tell(placedAfter(changes.sliced(i, later + 1)), &area);
        }
        settleEvents();
        QVERIFY(isShown(area));
    }
}

void TestPixelMover::somePixelsStay_data()
{
    QTest::addColumn<Prepare>("prepare");
    QTest::addColumn<bool>("canMove");
    const auto add = [](const char *name, bool canMove, Prepare prepare) {
        QTest::newRow(name) << prepare << canMove;
    };
    add("plain", true, [](BandArea & /*area*/) {});
    add("another colour", true, [](BandArea &area) { setBase(area, Qt::red); });
    add("gradient", false, [](BandArea &area) { setBase(area, QLinearGradient(0, 0, 0, 100)); });
    add("pattern", false, [](BandArea &area) { setBase(area, QBrush(Qt::Dense4Pattern)); });
    add("texture", false, [](BandArea &area) {
        QPixmap texture(3, 3);
        texture.fill(Qt::red);
        setBase(area, texture);
    });
    add("no brush", false, [](BandArea &area) { setBase(area, Qt::NoBrush); });
    add("transparent", false, [](BandArea &area) { setBase(area, Qt::transparent); });
    add("half transparent", false, [](BandArea &area) { setBase(area, QColor(1, 2, 3, 254)); });
    add("not filled", false, [](BandArea &area) { area.viewport()->setAutoFillBackground(false); });
    add("no system background", false,
        [](BandArea &area) { area.viewport()->setAttribute(Qt::WA_NoSystemBackground); });
    add("gradient behind other rows", false,
        [](BandArea &area) { setCells(area, QPalette::AlternateBase); });
    add("gradient behind selected rows", false,
        [](BandArea &area) { setCells(area, QPalette::Highlight); });
    add("style sheet", false, [](BandArea &area) {
        area.setStyleSheet(QStringLiteral("QAbstractScrollArea { background: qlineargradient("
                                          "x1:0, y1:0, x2:0, y2:1, stop:0 red, stop:1 blue) }"));
    });
    add("style sheet of the viewport", false,
        [](BandArea &area) { area.viewport()->setStyleSheet(QStringLiteral("background: red")); });
}

void TestPixelMover::somePixelsStay()
{
    QFETCH(Prepare, prepare);
    QFETCH(bool, canMove);
    BandArea area;
    QWidget child(area.viewport());
    prepare(area);
    settleEvents();
    area.painted = QRegion();
    QCOMPARE(area.mover.canMove(), canMove);
    QVERIFY(!area.mover.canMoveAgain()); // the child would be smeared
    QCOMPARE(area.mover.moveAll(0, bandHeight), canMove);
    QCOMPARE(child.y(), canMove ? bandHeight : 0);
    settleEvents();
    QCOMPARE(area.painted, QRegion(canMove ? area.band(0) : area.viewport()->rect()));
}

void TestPixelMover::rowsMove()
{
    BandArea area;
    // Bands 1 to 3 are a strip, in which all goes down by one.
    area.mover.moveRows(bandHeight, 4 * bandHeight, bandHeight);
    area.colors.insert(1, area.nextColor());
    area.colors.remove(4);
    settleEvents();
    QCOMPARE(area.painted, QRegion(area.band(1)));
    QVERIFY(isShown(area));
}

void TestPixelMover::columnsMove_data()
{
    QTest::addColumn<int>("width"); // of a column that begins at 20, now
    QTest::addColumn<int>("delta");
    QTest::addColumn<bool>("isRightToLeft");
    QTest::addColumn<QList<QPair<int, int>>>("painted"); // first and last x
    const auto add = [](const char *name, int width, int delta, bool isRightToLeft,
                        const QList<QPair<int, int>> &painted) {
        QTest::newRow(name) << width << delta << isRightToLeft << painted;
    };
    // The column, and what nothing was moved to.
    add("wider", 15, 5, false, {{20, 38}});
    add("narrower", 10, -5, false, {{20, 29}, {55, 59}});
    add("wider, right to left", 15, 5, true, {{16, 34}});
    add("narrower, right to left", 15, -5, true, {{0, 4}, {20, 34}});
}

void TestPixelMover::columnsMove()
{
    using Spans = QList<QPair<int, int>>;
    QFETCH(int, width);
    QFETCH(int, delta);
    QFETCH(bool, isRightToLeft);
    QFETCH(Spans, painted);
    BandArea area;
    QCOMPARE(area.viewport()->width(), 60);
    area.mover.moveColumns(20, width, delta, isRightToLeft);
    settleEvents();
    QRegion wanted;
    for (const auto &[first, last] : painted)
        wanted |= QRect(first, 0, last - first + 1, area.viewport()->height());
    QCOMPARE(area.painted, wanted);
    QVERIFY(isShown(area));
}

void TestPixelMover::noMoveWhilePainting()
{
    BandArea area;
    bool couldMove = true;
    area.whilePainting = [&area, &couldMove] { couldMove = area.mover.canMove(); };
    area.mover.update(area.band(2));
    QVERIFY(area.mover.canMove());
    settleEvents();
    QVERIFY(!couldMove);
    QVERIFY(area.mover.canMove());
}

void TestPixelMover::noMoveWhenAllIsPending()
{
    BandArea area;
    area.mover.update();
    QVERIFY(!area.mover.canMove());
    QVERIFY(!area.mover.moveAll(0, bandHeight));
    // A part painted in between: the rest is still known.
    area.viewport()->repaint(area.band(0, 6));
    QVERIFY(area.mover.canMove());
    area.painted = QRegion();
    area.colors.insert(0, area.nextColor());
    area.colors.removeLast();
    QVERIFY(area.mover.moveAll(0, bandHeight));
    settleEvents();
    QVERIFY(isShown(area));
    QVERIFY(area.mover.canMove());
}

void TestPixelMover::noMoveOffDevicePixels()
{
    BandArea whole(new Scaled<QWidget>(2.0));
    whole.mover.painted(whole.viewport()->rect());
    QVERIFY(whole.mover.canMove());
    BandArea area(new Scaled<QWidget>(1.25));
    area.mover.painted(area.viewport()->rect());
    QVERIFY(!area.mover.canMove());
    QVERIFY(!area.mover.moveAll(0, bandHeight));
}

void TestPixelMover::partIsWidenedOffDevicePixels()
{
    BandArea area(new Scaled<QWidget>(1.25));
    area.mover.update(QRect(10, 30, 20, 10));
    settleEvents();
    QVERIFY((QRegion(0, 28, area.viewport()->width(), 14) - area.painted).isEmpty());
}

void TestPixelMover::threeMovesBetweenPaints()
{
    BandArea area;
    for (int paint = 0; paint < 2; ++paint) {
        for (int i = 0; i < 3; ++i)
            QVERIFY(area.mover.canMoveAgain());
        QVERIFY(!area.mover.canMoveAgain());
        QVERIFY(area.mover.canMove()); // that does not count
        area.mover.update(area.band(1));
        settleEvents();
    }
}

void TestPixelMover::childrenMoveWithAll()
{
    BandArea area;
    QWidget child(area.viewport());
    child.setGeometry(5, 5, 10, 10);
    QVERIFY(area.mover.moveAll(3, -2));
    QCOMPARE(child.pos(), QPoint(8, 3));
    area.mover.update();
    QVERIFY(!area.mover.moveAll(3, -2));
    QCOMPARE(child.pos(), QPoint(8, 3));
}

void TestPixelMover::childrenStayInStrips()
{
    BandArea area;
    QWidget child(area.viewport());
    child.setGeometry(5, 5, 10, 10);
    area.mover.moveStrip(0, bandHeight, area.viewport()->rect());
    QCOMPARE(child.pos(), QPoint(5, 5));
}

//! More than are kept apart.
void TestPixelMover::manyPartsArePainted()
{
    BandArea area;
    QRegion parts;
    for (int y = 0; y < bands * bandHeight; y += 4) {
        for (int x = 0; x < 60; x += 6) {
            area.mover.update(QRect(x, y, 2, 2));
            parts |= QRect(x, y, 2, 2);
        }
    }
    QVERIFY(area.mover.moveAll(1, 1));
    settleEvents();
    QVERIFY((parts - area.painted).isEmpty());
    QVERIFY(((parts.translated(1, 1) & area.viewport()->rect()) - area.painted).isEmpty());
}

void TestPixelMover::movesWhilePartsArePending()
{
    BandArea area;
    QVERIFY(area.mover.canMove());
    area.mover.update(area.band(3));
    QVERIFY(area.mover.canMove());
    area.mover.painted(area.band(0));
    QVERIFY(area.mover.canMove());
    area.mover.update();
    QVERIFY(!area.mover.canMove());
    area.mover.painted(QRegion());
    QVERIFY(!area.mover.canMove());
    area.mover.painted(area.band(0));
    QVERIFY(area.mover.canMove());
    area.mover.painted(area.bandsFrom(1));
    QVERIFY(area.mover.canMove());
}

QTEST_MAIN(TestPixelMover)

#include "tst_pixelmover.moc"
