// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "qprogressindicator.h"

#include <QGuiApplication>
#include <QImage>
#include <QMetaProperty>
#include <QPainter>
#include <QPixmapCache>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>

#include <algorithm>
#include <array>
#include <cmath>
#include <functional>

namespace {

//! Counts paint events and may be turned by hand.
class Indicator : public QProgressIndicator
{
public:
    using QProgressIndicator::QProgressIndicator;

    void step()
    {
        QTimerEvent event(0);
        timerEvent(&event);
    }
    int paints = 0;
    int steps = 0;

protected:
    void timerEvent(QTimerEvent *event) override
    {
        ++steps;
        QProgressIndicator::timerEvent(event);
    }
    void paintEvent(QPaintEvent *event) override
    {
        ++paints;
        QProgressIndicator::paintEvent(event);
    }
};

QImage pictureOf(QWidget *widget)
{
    QImage image(widget->size(), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    widget->render(&image, QPoint(), QRegion(), QWidget::RenderFlags());
    return image;
}

bool isEmpty(const QImage &image)
{
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (qAlpha(image.pixel(x, y)) != 0)
                return false;
        }
    }
    return true;
}

//! The bar that points up, as the numbers say; its middle line has x = 0 or not.
struct Bar
{
    double left;
    double top;
    double width;
    double height;
    double radius;

    bool contains(double x, double y) const
    {
        if (x < left || x > left + width || y < top || y > top + height)
            return false;
        const double nearX = std::clamp(x, left + radius, left + width - radius);
        const double nearY = std::clamp(y, top + radius, top + height - radius);
        return std::hypot(x - nearX, y - nearY) <= radius;
    }
};

//! Coverage of a pixel by samples, in the bar turned clockwise by degrees about a point.
double coverage(const Bar &bar, QPoint center, int degrees, int pixelX, int pixelY)
{
    constexpr int n = 16;
    const double angle = degrees * M_PI / 180;
    int hits = 0;
    for (int i = 0; i < n * n; ++i) {
        const double x = pixelX + (i % n + 0.5) / n - center.x();
        const double y = pixelY + (double(i / n) + 0.5) / n - center.y();
        hits += bar.contains(x * std::cos(angle) + y * std::sin(angle),
                             y * std::cos(angle) - x * std::sin(angle));
    }
    return double(hits) / (n * n);
}

//! Alpha of the pixels of a ring, 0 to 255, counted without a painter.
QList<double> expectedAlpha(const Bar &bar, int side, QPoint center, int angle)
{
    QList<double> alphas;
    for (int y = 0; y < side; ++y) {
        for (int x = 0; x < side; ++x) {
            double clear = 1;
            for (int i = 0; i < 12; ++i)
                clear *= 1 - coverage(bar, center, angle - 30 * i, x, y) * (1 - i / 12.0);
            alphas.append(255 * (1 - clear));
        }
    }
    return alphas;
}

//! Largest and mean difference of alphas.
std::array<double, 2> difference(const QImage &image, const QList<double> &alphas)
{
    double largest = 0;
    double sum = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const double apart =
                std::abs(alphas.at(y * image.width() + x) - qAlpha(image.pixel(x, y)));
            largest = std::max(largest, apart);
            sum += apart;
        }
    }
    return {largest, sum / double(alphas.size())};
}

//! Lets a timer of its own fire some times, as one that is left over would.
bool outlastsMilliseconds()
{
    QTimer other;
    other.setTimerType(Qt::CoarseTimer);
    QSignalSpy fired(&other, SIGNAL(timeout()));
    other.start(1);
    return QTest::qWaitFor([&] { return fired.count() >= 3; });
}

//! Whether it turns whenever events are let through, which takes no millisecond.
bool turnsInAllEvents(const Indicator &indicator)
{
    const int before = indicator.steps;
    for (int i = 0; i < 100; ++i)
        QCoreApplication::processEvents();
    return indicator.steps >= before + 50;
}

const Bar bar20 {-1, -9, 2, 6, 1};
const Bar bar32 {-1, -15, 3, 10, 1};
const Bar bar33 {-1, -16, 2, 10, 1};

} // namespace

class TestQProgressIndicator : public QObject
{
    Q_OBJECT

public:
    //! Called before the application is made: pictures are held against sizes in pixels.
    static void initMain()
    {
        qputenv("QT_SCALE_FACTOR", qEnvironmentVariable("INDICATOR_SCALE", "1").toLatin1());
    }

private slots:
    void init();
    void describesItself();
    void startsStopped();
    void showsNothingWhileStopped();
    void staysVisibleWhenStopped();
    void paintsCapsules_data();
    void paintsCapsules();
    void paintsInColor();
    void ignoresAlphaOfColor();
    void leavesOtherShapesOffCenter_data();
    void leavesOtherShapesOffCenter();
    void repaintsWhenItLooksOtherwise_data();
    void repaintsWhenItLooksOtherwise();
    void turnsInTwelveSteps();
    void repaintsAtOnce();
    void restartsFromFirstFrame();
    void stopsAtPresentAngle();
    void startsAndStopsInAnyOrder();
    void turnsByItself();
    void changesDelay();
    void takesNegativeDelayAsZero();
    void sharesFrames();
    void takesFramesFromCache();
    void survivesEmptySize();
    void isSharpOnAnyScreen();
};

void TestQProgressIndicator::init()
{
    QPixmapCache::clear();
}

void TestQProgressIndicator::describesItself()
{
    const QMetaObject &meta = QProgressIndicator::staticMetaObject;
    QStringList properties;
    for (int i = meta.propertyOffset(); i < meta.propertyCount(); ++i) {
        QVERIFY(meta.property(i).isWritable());
        properties.append(QLatin1String(meta.property(i).typeName()) + u' '
                          + QLatin1String(meta.property(i).name()));
    }
    QCOMPARE(properties, QStringList({"int delay", "bool displayedWhenStopped", "QColor color"}));
    QStringList slotNames;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i) {
        if (meta.method(i).methodType() == QMetaMethod::Slot)
            slotNames.append(QString::fromLatin1(meta.method(i).methodSignature()));
    }
    QCOMPARE(slotNames,
             QStringList({"startAnimation()", "stopAnimation()", "setAnimationDelay(int)",
                          "setDisplayedWhenStopped(bool)", "setColor(QColor)"}));
}

void TestQProgressIndicator::startsStopped()
{
    const QProgressIndicator indicator;
    QVERIFY(!indicator.isAnimated());
    QVERIFY(!indicator.isDisplayedWhenStopped());
    QCOMPARE(indicator.animationDelay(), 40);
    QCOMPARE(indicator.color(), QColor(Qt::black));
    QCOMPARE(indicator.sizeHint(), QSize(20, 20));
    QCOMPARE(indicator.heightForWidth(37), 37);
    QCOMPARE(indicator.sizePolicy(), QSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed));
    QCOMPARE(indicator.focusPolicy(), Qt::NoFocus);
    QVERIFY(!indicator.autoFillBackground());
}

void TestQProgressIndicator::showsNothingWhileStopped()
{
    QProgressIndicator indicator;
    indicator.resize(20, 20);
    QVERIFY(isEmpty(pictureOf(&indicator)));
    indicator.startAnimation();
    QVERIFY(!isEmpty(pictureOf(&indicator)));
    indicator.stopAnimation();
    QVERIFY(isEmpty(pictureOf(&indicator)));
}

void TestQProgressIndicator::staysVisibleWhenStopped()
{
    QProgressIndicator indicator;
    indicator.resize(20, 20);
    indicator.setDisplayedWhenStopped(true);
    QVERIFY(indicator.isDisplayedWhenStopped());
    QVERIFY(!indicator.isAnimated());
    QVERIFY(!isEmpty(pictureOf(&indicator)));
    indicator.setDisplayedWhenStopped(false);
    QVERIFY(isEmpty(pictureOf(&indicator)));
}

void TestQProgressIndicator::paintsCapsules_data()
{
    QTest::addColumn<int>("side");
    QTest::addColumn<int>("steps");
    for (const int side : {20, 32, 33}) {
        for (const int steps : {0, 1, 4, 11})
            QTest::addRow("%d pixels, %d steps", side, steps) << side << steps;
    }
}

void TestQProgressIndicator::paintsCapsules()
{
    QFETCH(int, side);
    QFETCH(int, steps);
    Indicator indicator;
    indicator.resize(side, side);
    indicator.setDisplayedWhenStopped(true);
    for (int i = 0; i < steps; ++i)
        indicator.step();
    const Bar &bar = side == 20 ? bar20 : side == 32 ? bar32 : bar33;
    const QPoint center((side - 1) / 2, (side - 1) / 2);
    const QImage painted = pictureOf(&indicator);
    const auto [largest, mean] = difference(painted, expectedAlpha(bar, side, center, 30 * steps));
    QVERIFY2(largest < 48 && mean < 2, qPrintable(QStringLiteral("%1, %2").arg(largest).arg(mean)));
    // The next frame, or thicker bars, would be told from this one.
    const auto [unlike, unlikeMean] =
        difference(painted, expectedAlpha(bar, side, center, 30 * steps + 30));
    QVERIFY(unlike > 48 && unlikeMean > 4);
    Bar thick = bar;
    thick.width += 1;
    QVERIFY(difference(painted, expectedAlpha(thick, side, center, 30 * steps))[1] > 2);
}

void TestQProgressIndicator::paintsInColor()
{
    QProgressIndicator indicator;
    indicator.resize(40, 40);
    indicator.setDisplayedWhenStopped(true);
    indicator.setColor(QColor(200, 100, 50));
    QCOMPARE(indicator.color(), QColor(200, 100, 50));
    // Capsule 0: up from the middle at (19, 19), fully opaque.
    QCOMPARE(pictureOf(&indicator).pixelColor(18, 6), QColor(200, 100, 50));
}

void TestQProgressIndicator::ignoresAlphaOfColor()
{
    QProgressIndicator opaque;
    opaque.setDisplayedWhenStopped(true);
    opaque.resize(20, 20);
    opaque.setColor(Qt::blue);
    const QImage expected = pictureOf(&opaque);
    QPixmapCache::clear();
    opaque.setColor(QColor(0, 0, 255, 10));
    QCOMPARE(pictureOf(&opaque), expected);
}

void TestQProgressIndicator::leavesOtherShapesOffCenter_data()
{
    QTest::addColumn<QSize>("size");
    QTest::newRow("wide") << QSize(32, 20);
    QTest::newRow("high") << QSize(20, 29);
}

void TestQProgressIndicator::leavesOtherShapesOffCenter()
{
    QFETCH(QSize, size);
    QProgressIndicator indicator;
    indicator.setDisplayedWhenStopped(true);
    indicator.resize(size);
    const QImage shown = pictureOf(&indicator);
    QPixmap frame;
    QVERIFY(QPixmapCache::find(QStringLiteral("20,#000000,0"), &frame));
    QCOMPARE(frame.size(), QSize(20, 20));
    const QPoint center((size.width() - 1) / 2, (size.height() - 1) / 2);
    const QImage painted = frame.toImage();
    const auto [largest, mean] = difference(painted, expectedAlpha(bar20, 20, center, 0));
    QVERIFY2(largest < 48 && mean < 2, qPrintable(QStringLiteral("%1, %2").arg(largest).arg(mean)));

    QImage stretched(size, QImage::Format_ARGB32_Premultiplied);
    stretched.fill(Qt::transparent);
    QPainter(&stretched).drawPixmap(QRect(QPoint(0, 0), size), frame);
    QCOMPARE(shown, stretched);
}

void TestQProgressIndicator::repaintsWhenItLooksOtherwise_data()
{
    QTest::addColumn<std::function<void(QProgressIndicator *)>>("change");
    const auto row = [](const char *name, const std::function<void(QProgressIndicator *)> &change) {
        QTest::newRow(name) << change;
    };
    row("shown when stopped", [](QProgressIndicator *i) { i->setDisplayedWhenStopped(true); });
    row("color", [](QProgressIndicator *i) { i->setColor(Qt::red); });
    row("stopped", [](QProgressIndicator *i) { i->stopAnimation(); });
}

void TestQProgressIndicator::repaintsWhenItLooksOtherwise()
{
    QFETCH(std::function<void(QProgressIndicator *)>, change);
    Indicator indicator;
    indicator.resize(20, 20);
    indicator.show();
    QVERIFY(QTest::qWaitForWindowExposed(&indicator));
    QCoreApplication::processEvents();
    const int before = indicator.paints;
    QCoreApplication::processEvents();
    QCOMPARE(indicator.paints, before);
    change(&indicator);
    QCoreApplication::processEvents();
    QCOMPARE(indicator.paints, before + 1);
}

void TestQProgressIndicator::turnsInTwelveSteps()
{
    Indicator indicator;
    indicator.resize(20, 20);
    indicator.setDisplayedWhenStopped(true);
    QList<QImage> frames;
    for (int i = 0; i < 12; ++i) {
        const QImage frame = pictureOf(&indicator);
        QVERIFY(!frames.contains(frame));
        frames.append(frame);
        QVERIFY(QPixmapCache::find(QStringLiteral("20,#000000,%1").arg(30 * i), nullptr));
        indicator.step();
    }
    QCOMPARE(pictureOf(&indicator), frames.first());
    QVERIFY(!QPixmapCache::find(QStringLiteral("20,#000000,360"), nullptr));
}

void TestQProgressIndicator::repaintsAtOnce()
{
    Indicator indicator;
    indicator.resize(20, 20);
    indicator.show();
    QVERIFY(QTest::qWaitForWindowExposed(&indicator));
    const int before = indicator.paints;
    indicator.step();
    QCOMPARE(indicator.paints, before + 1);
}

void TestQProgressIndicator::restartsFromFirstFrame()
{
    Indicator indicator;
    indicator.resize(20, 20);
    indicator.startAnimation();
    const QImage first = pictureOf(&indicator);
    QVERIFY(QPixmapCache::find(QStringLiteral("20,#000000,0"), nullptr));
    indicator.step();
    QVERIFY(pictureOf(&indicator) != first);
    indicator.startAnimation();
    QCOMPARE(pictureOf(&indicator), first);
    QVERIFY(indicator.isAnimated());
}

void TestQProgressIndicator::stopsAtPresentAngle()
{
    Indicator indicator;
    indicator.resize(20, 20);
    indicator.setDisplayedWhenStopped(true);
    indicator.startAnimation();
    indicator.step();
    const QImage turned = pictureOf(&indicator);
    indicator.stopAnimation();
    QCOMPARE(pictureOf(&indicator), turned);
}

void TestQProgressIndicator::startsAndStopsInAnyOrder()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*"))); // of timers that are none
    QProgressIndicator indicator;
    indicator.stopAnimation();
    QVERIFY(!indicator.isAnimated());
    indicator.startAnimation();
    indicator.startAnimation();
    QVERIFY(indicator.isAnimated());
    indicator.stopAnimation();
    indicator.stopAnimation();
    QVERIFY(!indicator.isAnimated());
    indicator.startAnimation();
    QVERIFY(indicator.isAnimated());
}

void TestQProgressIndicator::turnsByItself()
{
    Indicator indicator;
    indicator.setAnimationDelay(1);
    indicator.startAnimation();
    QTRY_VERIFY(indicator.steps >= 12);
    indicator.stopAnimation();
    const int stopped = indicator.steps;
    QVERIFY(outlastsMilliseconds());
    QCOMPARE(indicator.steps, stopped);
}

void TestQProgressIndicator::changesDelay()
{
    Indicator indicator;
    indicator.setAnimationDelay(100);
    QCOMPARE(indicator.animationDelay(), 100);
    QVERIFY(!indicator.isAnimated());
    indicator.setAnimationDelay(24 * 3600 * 1000); // never
    indicator.startAnimation();
    indicator.setAnimationDelay(1);
    QVERIFY(indicator.isAnimated());
    QCOMPARE(indicator.animationDelay(), 1);
    QTRY_VERIFY(indicator.steps > 0);
    indicator.setAnimationDelay(24 * 3600 * 1000);
    const int steps = indicator.steps;
    QVERIFY(outlastsMilliseconds());
    QCOMPARE(indicator.steps, steps);
}

void TestQProgressIndicator::takesNegativeDelayAsZero()
{
    Indicator indicator;
    indicator.setAnimationDelay(-5);
    QCOMPARE(indicator.animationDelay(), -5);
    indicator.startAnimation();
    QVERIFY(turnsInAllEvents(indicator));
    indicator.setAnimationDelay(24 * 3600 * 1000);
    indicator.setAnimationDelay(-1);
    QVERIFY(turnsInAllEvents(indicator));
    indicator.stopAnimation();
    QVERIFY(!indicator.isAnimated());
}

void TestQProgressIndicator::sharesFrames()
{
    QProgressIndicator one;
    QProgressIndicator two;
    for (QProgressIndicator *indicator : {&one, &two}) {
        indicator->resize(20, 20);
        indicator->setDisplayedWhenStopped(true);
        indicator->setColor(QColor(1, 2, 255));
    }
    pictureOf(&one);
    QPixmap first;
    QVERIFY(QPixmapCache::find(QStringLiteral("20,#0102ff,0"), &first));
    pictureOf(&two);
    QPixmap second;
    QVERIFY(QPixmapCache::find(QStringLiteral("20,#0102ff,0"), &second));
    QCOMPARE(second.cacheKey(), first.cacheKey());
}

void TestQProgressIndicator::takesFramesFromCache()
{
    QPixmap frame(20, 20);
    frame.fill(Qt::magenta);
    QPixmapCache::insert(QStringLiteral("20,#000000,0"), frame);
    QProgressIndicator indicator;
    indicator.setDisplayedWhenStopped(true);
    indicator.resize(20, 24); // the smaller side counts
    QCOMPARE(pictureOf(&indicator).pixelColor(0, 0), QColor(Qt::magenta));
    indicator.resize(24, 20);
    QCOMPARE(pictureOf(&indicator).pixelColor(23, 19), QColor(Qt::magenta));
}

void TestQProgressIndicator::survivesEmptySize()
{
    Indicator indicator;
    indicator.setDisplayedWhenStopped(true);
    for (const QSize size : {QSize(1, 1), QSize(2, 2), QSize(0, 20), QSize(3, 1)}) {
        indicator.resize(size);
        QCOMPARE(indicator.grab().isNull(), size.isEmpty());
    }
}

//! Runs by itself on a dense screen, too.
void TestQProgressIndicator::isSharpOnAnyScreen()
{
    const double ratio = qGuiApp->devicePixelRatio();
    QProgressIndicator indicator;
    indicator.setDisplayedWhenStopped(true);
    indicator.resize(20, 20);
    pictureOf(&indicator);
    QPixmap frame;
    QVERIFY(QPixmapCache::find(QStringLiteral("20,#000000,0"), &frame));
    QCOMPARE(frame.devicePixelRatio(), ratio);
    QCOMPARE(frame.size(), QSize(20, 20) * ratio);
    // The bar that points up.
    QCOMPARE(frame.toImage().pixelColor(QPoint(8, 2) * ratio), QColor(Qt::black));
}

QTEST_MAIN(TestQProgressIndicator)
#include "tst_qprogressindicator.moc"
