// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

// Scroll bars that keep their picture look as bars do that paint themselves, whatever happens
// to them.

#include "pixels/barpicture_p.h"
#include "pixels/picture_p.h"
#include "qtablefastview.h"

#include <QHoverEvent>
#include <QPainter>
#include <QProxyStyle>
#include <QScrollBar>
#include <QStyleFactory>
#include <QStyleOption>
#include <QTest>

#include <cmath>
#include <functional>
#include <memory>
#include <random>
#include <vector>

namespace {

//! Counts how often its picture is put down.
class Bar : public QScrollBar
{
public:
    using QScrollBar::QScrollBar;

    int pictures = 0;
    int paints = 0;

protected:
    void paintEvent(QPaintEvent *event) override
    {
        ++paints;
        QStyleOptionSlider option;
        initStyleOption(&option);
        option.subControls = QStyle::SC_All;
        if (m_picture.paint(this, option, [this](QPainter *p) { initPainter(p); }))
            ++pictures;
        else
            QScrollBar::paintEvent(event);
    }

private:
    BarPicture m_picture;
};

//! What a style leaves as it was is white.
QImage pictureOf(QWidget &widget)
{
    const double ratio = widget.devicePixelRatioF();
    QImage image((QSizeF(widget.size()) * ratio).toSize(), QImage::Format_RGB32);
    image.setDevicePixelRatio(ratio);
    image.fill(Qt::white);
    widget.render(&image, QPoint(), QRegion(), QWidget::RenderFlags());
    return image;
}

void prepare(QScrollBar &bar)
{
    bar.setStyle(QStyleFactory::create(QStringLiteral("fusion")));
    bar.style()->setParent(&bar);
    bar.resize(17, 300);
    bar.setRange(0, 1000000);
    bar.setPageStep(40);
    bar.setValue(500000);
}

//! How often a picture is put down that could be \a count times: it needs whole pixels.
int pictures(const QWidget &widget, int count)
{
    const double ratio = widget.devicePixelRatioF();
    return ratio == std::floor(ratio) ? count : 0;
}

QPalette dark()
{
    QPalette palette(QColor(60, 60, 60), QColor(40, 40, 40));
    palette.setColor(QPalette::Highlight, Qt::darkMagenta);
    return palette;
}

using Change = std::function<void(QScrollBar &)>;

} // namespace

class TestBarPicture : public QObject
{
    Q_OBJECT

private slots:
    void keepsItsPicture();
    void makesNoPictureWhileItMoves();
    void looksAsEver_data();
    void looksAsEver();
    void looksAsEverAfterAnything_data();
    void looksAsEverAfterAnything();
    void hasNoPicture_data();
    void hasNoPicture();
    void hasNoPictureForOtherPixels();
    void looksTouched_data();
    void looksTouched();
    void picturesKeepWhatShowsThrough();
};

void TestBarPicture::keepsItsPicture()
{
    Bar bar(Qt::Vertical);
    prepare(bar);
    const QImage painted = pictureOf(bar);
    QCOMPARE(bar.pictures, 0);
    for (int i = 1; i <= 3; ++i) {
        bar.setRange(0, bar.maximum() + 1);
        bar.setValue(bar.value() + 1);
        QCOMPARE(pictureOf(bar), painted);
        QCOMPARE(bar.pictures, pictures(bar, i));
    }
}

void TestBarPicture::makesNoPictureWhileItMoves()
{
    Bar bar(Qt::Vertical);
    prepare(bar);
    bar.setRange(0, 400);
    for (int value = 0; value <= 400; value += 20) {
        bar.setValue(value);
        pictureOf(bar);
    }
    QCOMPARE(bar.pictures, 0);
    QCOMPARE(bar.paints, 21);
}

void TestBarPicture::looksAsEver_data()
{
    QTest::addColumn<Change>("change");

    const auto add = [](const char *name, const Change &change) { QTest::newRow(name) << change; };
    add("value", [](QScrollBar &bar) { bar.setValue(100000); });
    add("first value", [](QScrollBar &bar) { bar.setValue(0); });
    add("last value", [](QScrollBar &bar) { bar.setValue(bar.maximum()); });
    add("range", [](QScrollBar &bar) { bar.setRange(0, 510000); });
    add("no range", [](QScrollBar &bar) { bar.setRange(0, 0); });
    add("page", [](QScrollBar &bar) { bar.setPageStep(1000000); });
    add("size", [](QScrollBar &bar) { bar.resize(17, 301); });
    add("width", [](QScrollBar &bar) { bar.resize(20, 300); });
    add("palette", [](QScrollBar &bar) { bar.setPalette(dark()); });
    add("disabled", [](QScrollBar &bar) { bar.setEnabled(false); });
    add("right to left", [](QScrollBar &bar) { bar.setLayoutDirection(Qt::RightToLeft); });
    add("inverted", [](QScrollBar &bar) { bar.setInvertedAppearance(true); });
    add("orientation", [](QScrollBar &bar) { bar.setOrientation(Qt::Horizontal); });
    add("style", [](QScrollBar &bar) {
        bar.setStyle(QStyleFactory::create(QStringLiteral("windows")));
        bar.style()->setParent(&bar);
    });
    add("style sheet", [](QScrollBar &bar) {
        bar.setStyleSheet(QStringLiteral("QScrollBar { background: green }"));
    });
}

void TestBarPicture::looksAsEver()
{
    QFETCH(Change, change);
    QTableFastScrollBar bar;
    QScrollBar plain(Qt::Vertical);
    prepare(bar);
    prepare(plain);
    for (int i = 0; i < 3; ++i)
        QCOMPARE(pictureOf(bar), pictureOf(plain));
    change(bar);
    change(plain);
    for (int i = 0; i < 3; ++i)
        QCOMPARE(pictureOf(bar), pictureOf(plain));
}

void TestBarPicture::looksAsEverAfterAnything_data()
{
    QTest::addColumn<QString>("style");

    for (const char *style : {"fusion", "windows"})
        QTest::newRow(style) << QString::fromLatin1(style);
}

void TestBarPicture::looksAsEverAfterAnything()
{
    QFETCH(QString, style);
    const std::unique_ptr<QStyle> created(QStyleFactory::create(style));
    if (!created)
        QSKIP("this Qt has no such style");
    QTableFastScrollBar bar;
    QScrollBar plain(Qt::Vertical);
    for (QScrollBar *each : {static_cast<QScrollBar *>(&bar), static_cast<QScrollBar *>(&plain)}) {
        prepare(*each);
        each->setStyle(created.get());
    }
    constexpr unsigned seed = 20;
    qInfo("seed %u", seed);
    std::mt19937 random(seed);
    const auto below = [&random](int limit) {
        return std::uniform_int_distribution<int>(0, limit - 1)(random);
    };
    for (int step = 0; step < 300; ++step) {
        const int kind = below(12);
        const int number = below(2000);
        for (QScrollBar *each :
             {static_cast<QScrollBar *>(&bar), static_cast<QScrollBar *>(&plain)}) {
            switch (kind) {
            case 0:
                each->setEnabled(number % 2 == 0);
                break;
            case 1:
                each->setPalette(number % 2 == 0 ? dark() : QPalette());
                break;
            case 2:
                each->setLayoutDirection(number % 2 == 0 ? Qt::LeftToRight : Qt::RightToLeft);
                break;
            case 3:
                each->resize(12 + number % 9, 20 + number % 400);
                break;
            case 4:
                each->setRange(0, number < 200 ? 0 : number * 1000);
                break;
            case 5:
                each->setPageStep(number * number);
                break;
            case 6:
                each->setValue(number < 300 ? 0 : number * 1000);
                break;
            default: // as rows that arrive do
                each->setRange(0, each->maximum() + number % 4);
                each->setValue(each->value() + number % 3);
            }
        }
        QVERIFY2(pictureOf(bar) == pictureOf(plain), qPrintable(QString::number(step)));
    }
}

void TestBarPicture::hasNoPicture_data()
{
    QTest::addColumn<Change>("change");

    const auto add = [](const char *name, const Change &change) { QTest::newRow(name) << change; };
    add("style sheet", [](QScrollBar &bar) {
        bar.setStyleSheet(QStringLiteral("QScrollBar { background: green }"));
    });
    add("proxy", [](QScrollBar &bar) {
        bar.setStyle(new QProxyStyle(QStringLiteral("fusion")));
        bar.style()->setParent(&bar);
    });
}

void TestBarPicture::hasNoPicture()
{
    QFETCH(Change, change);
    Bar bar(Qt::Vertical);
    prepare(bar);
    pictureOf(bar);
    pictureOf(bar);
    QCOMPARE(bar.pictures, pictures(bar, 1));
    change(bar);
    for (int i = 0; i < 3; ++i)
        pictureOf(bar);
    QCOMPARE(bar.paints, 5);
    QCOMPARE(bar.pictures, pictures(bar, 1));
}

void TestBarPicture::hasNoPictureForOtherPixels()
{
    Bar bar(Qt::Vertical);
    prepare(bar);
    pictureOf(bar);
    pictureOf(bar);
    const auto rendered = [](QScrollBar &from, const std::function<void(QPainter &)> &set) {
        QImage image(400, 1400, QImage::Format_ARGB32_Premultiplied);
        image.setDevicePixelRatio(from.devicePixelRatioF());
        image.fill(Qt::white);
        QPainter painter(&image);
        set(painter);
        from.render(&painter, QPoint(), QRegion(), QWidget::RenderFlags());
        return image;
    };
    QScrollBar plain(Qt::Vertical);
    prepare(plain);
    const std::vector<std::function<void(QPainter &)>> ways = {
        [](QPainter &painter) { painter.scale(2, 2); },
        [](QPainter &painter) { painter.translate(0.5, 0.25); },
        [](QPainter &painter) { painter.rotate(3); },
        [](QPainter &painter) { painter.scale(1, 2); },
    };
    for (const auto &way : ways) {
        const int before = bar.pictures;
        QCOMPARE(rendered(bar, way), rendered(plain, way));
        QCOMPARE(bar.pictures, before);
    }
    const auto moved = [](QPainter &painter) { painter.translate(3, 4); };
    const int before = bar.pictures;
    QCOMPARE(rendered(bar, moved), rendered(plain, moved));
    QCOMPARE(bar.pictures, before + pictures(bar, 1));
}

void TestBarPicture::looksTouched_data()
{
    QTest::addColumn<Change>("touch");

    QTest::newRow("hover") << Change([](QScrollBar &bar) {
        bar.setAttribute(Qt::WA_UnderMouse);
        QHoverEvent hover(QEvent::HoverEnter, QPointF(8, 4), QPointF(8, 4), QPointF());
        QCoreApplication::sendEvent(&bar, &hover);
    });
    QTest::newRow("slider") << Change([](QScrollBar &bar) {
        QTest::mousePress(&bar, Qt::LeftButton, Qt::NoModifier, QPoint(8, 150));
    });
    QTest::newRow("button") << Change([](QScrollBar &bar) {
        QTest::mousePress(&bar, Qt::LeftButton, Qt::NoModifier, QPoint(8, 4));
    });
}

void TestBarPicture::looksTouched()
{
    QFETCH(Change, touch);
    QTableFastScrollBar bar;
    QScrollBar plain(Qt::Vertical);
    for (QScrollBar *each : {static_cast<QScrollBar *>(&bar), &plain}) {
        prepare(*each);
        each->setAttribute(Qt::WA_Hover);
        each->setSingleStep(0);
    }
    for (int i = 0; i < 3; ++i)
        QCOMPARE(pictureOf(bar), pictureOf(plain));
    const QImage idle = pictureOf(plain);
    touch(bar);
    touch(plain);
    const QImage touched = pictureOf(plain);
    QVERIFY(touched != idle);
    for (int i = 0; i < 3; ++i)
        QCOMPARE(pictureOf(bar), touched);
}

void TestBarPicture::picturesKeepWhatShowsThrough()
{
    QImage image(6, 4, QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(2);
    image.fill(Qt::red);
    QVERIFY(!pictureOf(image).hasAlphaChannel());
    QCOMPARE(pictureOf(image).toImage().convertToFormat(image.format()), image);
    image.setPixelColor(5, 3, QColor(0, 0, 255, 64));
    const QPixmap picture = pictureOf(image);
    QVERIFY(picture.hasAlphaChannel());
    QCOMPARE(picture.devicePixelRatio(), 2.0);
    QCOMPARE(picture.toImage().convertToFormat(image.format()), image);
}

QTEST_MAIN(TestBarPicture)
#include "tst_barpicture.moc"
