// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

// Which cells may be copied from where they were painted, and that the copies are right.

#include "view/canvas_p.h"

#include <QPainter>
#include <QPicture>
#include <QPixmap>
#include <QTest>
#include <QWidget>

#include <cmath>
#include <functional>
#include <memory>

namespace {

constexpr QSize size(60, 40);
//! That of a painter which begins on an image.
constexpr Qt::LayoutDirection direction = Qt::LayoutDirectionAuto;
constexpr QRect cell(10, 8, 20, 12);

QImage image(QImage::Format format, double ratio = 1)
{
    QImage made((QSizeF(size) * ratio).toSize(), format);
    made.setDevicePixelRatio(ratio);
    made.fill(Qt::white);
    return made;
}

using Preparation = std::function<void(QPainter &)>;

//! Tells of a part of itself while it is painted.
class Window : public QWidget
{
public:
    QRect asked = cell;
    bool isHeld = false;
    QImage copied;

protected:
    void paintEvent(QPaintEvent * /*event*/) override
    {
        QPainter painter(this);
        const Canvas canvas(painter, painter.layoutDirection());
        isHeld = canvas.holds(asked);
        painter.fillRect(asked.adjusted(2, 3, -4, -5), Qt::red);
        if (isHeld)
            copied = std::unique_ptr<QPixmap>(canvas.picture(asked))->toImage();
    }
};

} // namespace

class TestCanvas : public QObject
{
    Q_OBJECT

private slots:
    void holds_data();
    void holds();
    void isNoneForOtherDevices();
    void dependsOnThePainter_data();
    void dependsOnThePainter();
    void copies_data();
    void copies();
    void knowsWhatAWindowPaints();
};

void TestCanvas::holds_data()
{
    QTest::addColumn<QRect>("rect");
    QTest::addColumn<bool>("isHeld");

    QTest::newRow("inside") << cell << true;
    QTest::newRow("all") << QRect(QPoint(0, 0), size) << true;
    QTest::newRow("beyond the right edge") << QRect(50, 8, 11, 12) << false;
    QTest::newRow("above") << QRect(10, -1, 20, 12) << false;
    QTest::newRow("elsewhere") << QRect(100, 8, 20, 12) << false;
}

void TestCanvas::holds()
{
    QFETCH(QRect, rect);
    QImage painted = image(QImage::Format_RGB32);
    QPainter painter(&painted);
    QTEST(Canvas(painter, direction).holds(rect), "isHeld");
}

void TestCanvas::isNoneForOtherDevices()
{
    for (const QImage::Format format :
         {QImage::Format_ARGB32_Premultiplied, QImage::Format_ARGB32, QImage::Format_RGB16}) {
        QImage painted = image(format);
        QPainter painter(&painted);
        QVERIFY(!Canvas(painter, direction).holds(cell));
    }
    QPixmap pixmap(size);
    pixmap.fill(Qt::transparent);
    QPainter onPixmap(&pixmap);
    QVERIFY(!Canvas(onPixmap, direction).holds(cell));
    QPicture picture;
    QPainter onPicture(&picture);
    QVERIFY(!Canvas(onPicture, direction).holds(cell));
    QVERIFY(!Canvas(QPainter(), direction).holds(cell));
}

void TestCanvas::dependsOnThePainter_data()
{
    QTest::addColumn<Preparation>("prepare");
    QTest::addColumn<bool>("isHeld");

    const auto add = [](const char *name, bool isHeld, const Preparation &prepare) {
        QTest::newRow(name) << prepare << isHeld;
    };
    add("nothing", true, [](QPainter & /*painter*/) {});
    add("moved", true, [](QPainter &painter) { painter.translate(5, 6); });
    add("moved out", false, [](QPainter &painter) { painter.translate(45, 6); });
    add("moved by less", false, [](QPainter &painter) { painter.translate(0.5, 0); });
    add("moved down by less", false, [](QPainter &painter) { painter.translate(0, 0.25); });
    add("scaled", false, [](QPainter &painter) { painter.scale(2, 1); });
    add("scaled in height", false, [](QPainter &painter) { painter.scale(1, 2); });
    add("turned", false, [](QPainter &painter) { painter.rotate(1); });
    add("clipped", false, [](QPainter &painter) { painter.setClipRect(cell); });
    add("no longer clipped", true, [](QPainter &painter) {
        painter.setClipRect(cell);
        painter.setClipping(false);
    });
    add("half transparent", false, [](QPainter &painter) { painter.setOpacity(0.5); });
    add("smoothed edges", false,
        [](QPainter &painter) { painter.setRenderHint(QPainter::Antialiasing); });
    add("texts with hard edges", false,
        [](QPainter &painter) { painter.setRenderHint(QPainter::TextAntialiasing, false); });
    add("another direction", false,
        [](QPainter &painter) { painter.setLayoutDirection(Qt::RightToLeft); });
    add("another composition", false,
        [](QPainter &painter) { painter.setCompositionMode(QPainter::CompositionMode_Multiply); });
}

void TestCanvas::dependsOnThePainter()
{
    QFETCH(Preparation, prepare);
    QImage painted = image(QImage::Format_RGB32);
    QPainter painter(&painted);
    prepare(painter);
    QTEST(Canvas(painter, direction).holds(cell), "isHeld");
}

void TestCanvas::copies_data()
{
    QTest::addColumn<double>("ratio");
    QTest::addColumn<bool>("isHeld");

    QTest::newRow("1") << 1.0 << true;
    QTest::newRow("2") << 2.0 << true;
    QTest::newRow("1.5") << 1.5 << false;
}

void TestCanvas::copies()
{
    QFETCH(double, ratio);
    QFETCH(bool, isHeld);
    QImage painted = image(QImage::Format_RGB32, ratio);
    QPainter painter(&painted);
    painter.translate(3, 4);
    const Canvas canvas(painter, direction);
    QCOMPARE(canvas.holds(cell), isHeld);
    if (!isHeld)
        return;
    painter.fillRect(QRect(15, 10, 3, 2), Qt::blue);
    const std::unique_ptr<QPixmap> picture(canvas.picture(cell));
    painter.fillRect(cell, Qt::green); // the copy is no share of it
    QCOMPARE(picture->devicePixelRatio(), ratio);
    QImage expected(cell.size() * ratio, QImage::Format_RGB32);
    expected.setDevicePixelRatio(ratio);
    expected.fill(Qt::white);
    QPainter(&expected).fillRect(QRect(5, 2, 3, 2), Qt::blue);
    QCOMPARE(picture->toImage().convertToFormat(QImage::Format_RGB32), expected);
}

void TestCanvas::knowsWhatAWindowPaints()
{
    Window window;
    window.resize(200, 100);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    const double ratio = window.devicePixelRatioF();
    if (ratio != std::floor(ratio))
        QSKIP("a window without whole device pixels is no canvas");
    const auto paint = [&window](const QRegion &region) {
        window.isHeld = false;
        window.repaint(region);
        return window.isHeld;
    };
    QVERIFY(paint(window.rect()));
    QImage expected(cell.size() * ratio, QImage::Format_RGB32);
    expected.setDevicePixelRatio(ratio);
    expected.fill(window.palette().color(QPalette::Window));
    QPainter(&expected).fillRect(QRect(2, 3, cell.width() - 6, cell.height() - 8), Qt::red);
    QCOMPARE(window.copied.convertToFormat(QImage::Format_RGB32), expected);
    QVERIFY(paint(cell));
    QVERIFY(!paint(cell.adjusted(1, 0, 0, 0)));
    QVERIFY(!paint(cell.adjusted(0, 0, 0, -1)));
    QVERIFY(!paint(QRegion(cell) + QRect(150, 50, 5, 5))); // two rectangles are not looked through
}

QTEST_MAIN(TestCanvas)
#include "tst_canvas.moc"
