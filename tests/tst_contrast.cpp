// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "basics/contrast.h"

#include <QTest>

class tst_Contrast : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void ratio_data();
    void ratio();
    void becomesReadable_data();
    void becomesReadable();
    void becomesVisible();
    void highlightsBecomeReadable();
};

void tst_Contrast::ratio_data()
{
    QTest::addColumn<QColor>("a");
    QTest::addColumn<QColor>("b");
    QTest::addColumn<double>("expected"); // of the guidelines' own examples
    QTest::newRow("black and white") << QColor(Qt::black) << QColor(Qt::white) << 21.0;
    QTest::newRow("equal") << QColor(Qt::gray) << QColor(Qt::gray) << 1.0;
    QTest::newRow("the darkest grey that fails on white")
        << QColor(0x77, 0x77, 0x77) << QColor(Qt::white) << 4.48;
    QTest::newRow("red") << QColor(Qt::red) << QColor(Qt::white) << 4.00;
    QTest::newRow("nearly black") << QColor(10, 10, 10) << QColor(Qt::black) << 1.06;
}

void tst_Contrast::ratio()
{
    QFETCH(QColor, a);
    QFETCH(QColor, b);
    QFETCH(double, expected);
    QVERIFY(qAbs(contrast(a, b) - expected) < 0.01);
    QCOMPARE(contrast(a, b), contrast(b, a));
}

void tst_Contrast::becomesReadable_data()
{
    QTest::addColumn<QColor>("text");
    QTest::addColumn<QColor>("background");
    const QList<QColor> colors {Qt::black, Qt::white, Qt::red,    Qt::darkGreen,
                                Qt::gray,  Qt::blue,  Qt::yellow, QColor(0x30, 0x8c, 0xc6)};
    for (const QColor &text : colors) {
        for (const QColor &background : colors) {
            QTest::addRow("%s on %s", qPrintable(text.name()), qPrintable(background.name()))
                << text << background;
        }
    }
}

void tst_Contrast::becomesReadable()
{
    QFETCH(QColor, text);
    QFETCH(QColor, background);
    const QColor shown = readable(text, background);
    QVERIFY(contrast(shown, background) >= readableContrast);
    if (contrast(text, background) >= readableContrast)
        QCOMPARE(shown, text);
}

void tst_Contrast::becomesVisible()
{
    const QColor yellow(0xff, 0xdd, 0x66);
    const QColor shown = readable(yellow, Qt::white, visibleContrast);
    QVERIFY(contrast(shown, Qt::white) >= visibleContrast);
    QVERIFY(contrast(shown, Qt::white) < readableContrast); // no darker than it has to be
    for (const QColor &text : {QColor(Qt::black), QColor(Qt::white)}) {
        QVERIFY(contrast(matchColor(text), text) >= readableContrast);
        QVERIFY(contrast(rowMarkColor(text), text) >= readableContrast);
    }
}

void tst_Contrast::highlightsBecomeReadable()
{
    QPalette palette;
    palette.setColor(QPalette::Highlight, QColor(0x30, 0x8c, 0xc6));
    palette.setColor(QPalette::HighlightedText, Qt::white);
    palette.setColor(QPalette::Disabled, QPalette::Highlight, QColor(0xa0, 0xa0, 0xa0));
    palette.setColor(QPalette::Inactive, QPalette::HighlightedText, Qt::black);
    const QPalette shown = withReadableHighlights(palette);
    for (const auto group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled}) {
        QVERIFY(contrast(shown.color(group, QPalette::Highlight),
                         shown.color(group, QPalette::HighlightedText))
                >= readableContrast);
        QCOMPARE(shown.color(group, QPalette::HighlightedText),
                 palette.color(group, QPalette::HighlightedText));
    }
    // What is readable stays.
    QCOMPARE(shown.color(QPalette::Inactive, QPalette::Highlight),
             palette.color(QPalette::Inactive, QPalette::Highlight));
    QVERIFY(shown.color(QPalette::Active, QPalette::Highlight).lightness()
            < palette.color(QPalette::Active, QPalette::Highlight).lightness());
}

QTEST_GUILESS_MAIN(tst_Contrast)

#include "tst_contrast.moc"
