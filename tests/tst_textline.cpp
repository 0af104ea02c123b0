// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "celltext_p.h"

#include <QImage>
#include <QPainter>
#include <QTest>

#include <functional>

namespace {

QImage canvas()
{
    QImage image(240, 60, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::white);
    return image;
}

//! What \a paint(painter) leaves on a canvas.
QImage painted(const std::function<void(QPainter *)> &paint,
               Qt::LayoutDirection direction = Qt::LeftToRight)
{
    QImage image = canvas();
    QPainter painter(&image);
    painter.setLayoutDirection(direction);
    paint(&painter);
    return image;
}

//! More fonts than are remembered.
QList<QFont> manyFonts()
{
    QList<QFont> fonts;
    for (int size = 8; size < 28; ++size) {
        QFont font;
        font.setPixelSize(size);
        font.setBold(size % 2 == 0);
        fonts.append(font);
    }
    return fonts;
}

} // namespace

class tst_TextLine : public QObject
{
    Q_OBJECT

private slots:
    void remembersEachFont();
    void remembersEachText();
    void knowsThePaintersFont();
    void elidesAsTheMetricsDo_data();
    void elidesAsTheMetricsDo();
    void elidesInTheMetricsOfAnotherFont();
    void elidesWithoutALine();
    void drawsAsThePainterDoes_data();
    void drawsAsThePainterDoes();
    void drawsWhatWasNotMeasured();
    void drawsNothingWithoutPen();
    void cutsOffAtItsRectangle_data();
    void cutsOffAtItsRectangle();
    void leavesThePainterAsItWas_data();
    void leavesThePainterAsItWas();
    void worksInsideOfAnother();
};

void tst_TextLine::remembersEachFont()
{
    for (int round = 0; round < 3; ++round) {
        for (const QFont &font : manyFonts()) {
            QCOMPARE(CellText::fontText(font), font.toString());
            QVERIFY(CellText::metricsOf(font) == QFontMetrics(font));
        }
    }
}

void tst_TextLine::remembersEachText()
{
    for (int round = 0; round < 2; ++round) {
        for (const QFont &font : manyFonts()) {
            const QFontMetrics metrics(font);
            for (const QString &text : {QStringLiteral("12:30"), QStringLiteral("12:30:00")}) {
                QCOMPARE(CellText::referenceWidth(metrics, text), metrics.horizontalAdvance(text));
            }
        }
    }
}

void tst_TextLine::knowsThePaintersFont()
{
    const QString text = QStringLiteral("Efficient office");
    QImage image = canvas();
    QImage dense = canvas();
    dense.setDotsPerMeterX(2 * image.dotsPerMeterX());
    dense.setDotsPerMeterY(2 * image.dotsPerMeterY());
    for (int round = 0; round < 2; ++round) {
        for (QImage *device : {&image, &dense}) {
            QPainter painter(device);
            for (double points : {9.0, 12.0}) {
                QFont font = painter.font();
                font.setPointSizeF(points);
                painter.setFont(font);
                const QFontMetrics metrics = CellText::Line(&painter).metrics();
                QCOMPARE(metrics.height(), painter.fontMetrics().height());
                QCOMPARE(metrics.horizontalAdvance(text),
                         painter.fontMetrics().horizontalAdvance(text));
            }
        }
    }
}

void tst_TextLine::elidesAsTheMetricsDo_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<Qt::LayoutDirection>("direction");
    for (const Qt::LayoutDirection direction : {Qt::LeftToRight, Qt::RightToLeft}) {
        const char *way = direction == Qt::RightToLeft ? "right to left" : "left to right";
        QTest::addRow("latin, %s", way) << QStringLiteral("AVATAR, Te. fj") << direction;
        QTest::addRow("two letters, %s", way) << QStringLiteral("ab") << direction;
        QTest::addRow("hebrew, %s", way) << QStringLiteral("שלום עולם 12") << direction;
        QTest::addRow("mixed, %s", way) << QStringLiteral("abc שלום!") << direction;
        QTest::addRow("spaces, %s", way) << QStringLiteral("a  b   c") << direction;
    }
}

void tst_TextLine::elidesAsTheMetricsDo()
{
    QFETCH(QString, text);
    QFETCH(Qt::LayoutDirection, direction);
    QImage image = canvas();
    QPainter painter(&image);
    painter.setLayoutDirection(direction);
    CellText::Line line(&painter);
    const QFontMetrics metrics = line.metrics();
    const int full = metrics.horizontalAdvance(text);
    for (const Qt::TextElideMode mode :
         {Qt::ElideRight, Qt::ElideLeft, Qt::ElideMiddle, Qt::ElideNone}) {
        for (int width = -1; width < 2 * full + 40; ++width) {
            QCOMPARE(CellText::elided(text, metrics, mode, width),
                     metrics.elidedText(text, mode, width));
        }
    }
}

void tst_TextLine::elidesInTheMetricsOfAnotherFont()
{
    QImage image = canvas();
    QPainter painter(&image);
    const CellText::Line line(&painter);
    QFont large = painter.font();
    large.setPixelSize(40);
    const QFontMetrics metrics(large);
    const QString text = QStringLiteral("Efficient office");
    const int width = line.metrics().horizontalAdvance(text);
    QCOMPARE(CellText::elided(text, line.metrics(), Qt::ElideRight, width),
             line.metrics().elidedText(text, Qt::ElideRight, width));
    QCOMPARE(CellText::elided(text, metrics, Qt::ElideRight, width),
             metrics.elidedText(text, Qt::ElideRight, width));
}

void tst_TextLine::elidesWithoutALine()
{
    const QFontMetrics metrics {QFont()};
    const QString text = QStringLiteral("Efficient office");
    const int width = metrics.horizontalAdvance(text) / 2;
    QCOMPARE(CellText::elided(text, metrics, Qt::ElideRight, width),
             metrics.elidedText(text, Qt::ElideRight, width));
}

void tst_TextLine::drawsAsThePainterDoes_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("none") << QString();
    QTest::newRow("one letter") << QStringLiteral("a");
    QTest::newRow("letters") << QStringLiteral("ab cd");
    QTest::newRow("space in front") << QStringLiteral(" ab");
    QTest::newRow("space behind") << QStringLiteral("ab ");
    QTest::newRow("right to left, too") << QStringLiteral("abc שלום!");
    for (const char16_t code : {u'\t', u'\n', u'\r', u'\x1f', u'\x7f', u'\x85', u'\x9c', u'\x9f',
                                u'\xa0', u'\xad', u'\u200b', u'\u2028', u'\u2029', u'\ufffc'}) {
        QTest::addRow("U+%04X", code) << QStringLiteral("ab") + QChar(code) + QStringLiteral("cd");
    }
}

void tst_TextLine::drawsAsThePainterDoes()
{
    QFETCH(QString, text);
    for (const Qt::LayoutDirection direction : {Qt::LeftToRight, Qt::RightToLeft}) {
        for (const Qt::AlignmentFlag side : {Qt::AlignLeft, Qt::AlignRight, Qt::AlignHCenter}) {
            for (const Qt::AlignmentFlag height :
                 {Qt::AlignTop, Qt::AlignBottom, Qt::AlignVCenter}) {
                const QRect rect(3, 5, 200, 41);
                const QImage plain = painted(
                    [&](QPainter *painter) { painter->drawText(rect, int(side | height), text); },
                    direction);
                const QImage ours = painted(
                    [&](QPainter *painter) {
                        CellText::Line(painter).draw(rect, side | height, text);
                    },
                    direction);
                QCOMPARE(ours, plain);
            }
        }
    }
}

void tst_TextLine::drawsWhatWasNotMeasured()
{
    const QRect rect(3, 5, 200, 41);
    const QString text = QStringLiteral("drawn");
    const QImage plain =
        painted([&](QPainter *painter) { painter->drawText(rect, Qt::AlignLeft, text); });
    QVERIFY(plain != canvas());
    const QImage ours = painted([&](QPainter *painter) {
        CellText::Line line(painter);
        QVERIFY(!CellText::elided(QStringLiteral("measured"), line.metrics(), Qt::ElideRight, 200)
                     .isEmpty());
        line.draw(rect, Qt::AlignLeft, text);
    });
    QCOMPARE(ours, plain);
}

void tst_TextLine::drawsNothingWithoutPen()
{
    const QImage ours = painted([](QPainter *painter) {
        painter->setPen(Qt::NoPen);
        CellText::Line(painter).draw(QRect(3, 5, 200, 41), Qt::AlignLeft, QStringLiteral("text"));
    });
    QCOMPARE(ours, canvas());
}

void tst_TextLine::cutsOffAtItsRectangle_data()
{
    QTest::addColumn<QRect>("rect");
    QTest::newRow("too narrow") << QRect(20, 5, 25, 40);
    QTest::newRow("too low") << QRect(20, 20, 200, 5);
    QTest::newRow("too small") << QRect(20, 20, 25, 5);
}

void tst_TextLine::cutsOffAtItsRectangle()
{
    QFETCH(QRect, rect);
    const QString text = QStringLiteral("Efficient office");
    for (const Qt::AlignmentFlag side : {Qt::AlignLeft, Qt::AlignRight, Qt::AlignHCenter}) {
        for (const Qt::AlignmentFlag height : {Qt::AlignTop, Qt::AlignBottom, Qt::AlignVCenter}) {
            const QImage plain = painted(
                [&](QPainter *painter) { painter->drawText(rect, int(side | height), text); });
            const QImage ours = painted([&](QPainter *painter) {
                CellText::Line(painter).draw(rect, side | height, text);
            });
            QCOMPARE(ours, plain);
        }
    }
}

void tst_TextLine::leavesThePainterAsItWas_data()
{
    QTest::addColumn<bool>("isClipped");
    QTest::newRow("not clipped") << false;
    QTest::newRow("clipped") << true;
}

void tst_TextLine::leavesThePainterAsItWas()
{
    QFETCH(bool, isClipped);
    const QRect clip(0, 0, 30, 60);
    const QRect rest(100, 30, 20, 20);
    const QImage ours = painted([&](QPainter *painter) {
        if (isClipped)
            painter->setClipRect(clip);
        CellText::Line(painter).draw(QRect(20, 5, 25, 10), Qt::AlignLeft,
                                     QStringLiteral("Efficient office"));
        QCOMPARE(painter->hasClipping(), isClipped);
        painter->fillRect(rest, Qt::red);
    });
    QCOMPARE(ours.pixelColor(rest.center()), isClipped ? Qt::white : Qt::red);
    for (int y = 0; isClipped && y < ours.height(); ++y) {
        for (int x = clip.right() + 1; x < ours.width(); ++x)
            QCOMPARE(ours.pixel(x, y), QColor(Qt::white).rgb());
    }
}

//! A delegate may paint another cell while it paints one.
void tst_TextLine::worksInsideOfAnother()
{
    QFont large;
    large.setPixelSize(30);
    const QString text = QStringLiteral("Efficient office");
    const QRect rect(3, 5, 200, 41);
    const QImage plain = painted([&](QPainter *painter) {
        painter->drawText(rect, Qt::AlignLeft,
                          painter->fontMetrics().elidedText(text, Qt::ElideRight, 50));
    });
    const QImage ours = painted([&](QPainter *painter) {
        CellText::Line outer(painter);
        {
            QImage other = canvas();
            QPainter inside(&other);
            inside.setFont(large);
            CellText::Line inner(&inside);
            const QString shown = CellText::elided(text, inner.metrics(), Qt::ElideRight, 90);
            QCOMPARE(shown, inner.metrics().elidedText(text, Qt::ElideRight, 90));
            inner.draw(rect, Qt::AlignLeft, shown);
        }
        const QString shown = CellText::elided(text, outer.metrics(), Qt::ElideRight, 50);
        outer.draw(rect, Qt::AlignLeft, shown);
    });
    QCOMPARE(ours, plain);
}

QTEST_MAIN(tst_TextLine)

#include "tst_textline.moc"
