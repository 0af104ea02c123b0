// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "windows/ansitext.h"

#include <QRandomGenerator>
#include <QTest>

using Look = AnsiText::Look;

class tst_AnsiText : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void leavesOutSequences_data();
    void leavesOutSequences();
    void takesLooks_data();
    void takesLooks();
    void runsFollowEachOther();
    void survivesAnyText();
};

void tst_AnsiText::leavesOutSequences_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("plain");
    QTest::newRow("empty") << ""
                           << "";
    QTest::newRow("none") << "plain [31m text"
                          << "plain [31m text";
    QTest::newRow("colour") << "a\x1b[31mb\x1b[0mc"
                            << "abc";
    QTest::newRow("no number") << "\x1b[mx"
                               << "x";
    QTest::newRow("erases") << "a\x1b[2K\x1b[1Gb"
                            << "ab";
    QTest::newRow("of its own") << "\x1b[?25lx\x1b[>4;1mx"
                                << "xx";
    QTest::newRow("between spaces") << "\x1b[1 q."
                                    << ".";
    QTest::newRow("link, bell") << "\x1b]8;;http://a\a"
                                   "b\x1b]8;;\a"
                                << "b";
    QTest::newRow("link, string end") << "\x1b]8;;http://a\x1b\\b\x1b]8;;\x1b\\"
                                      << "b";
    QTest::newRow("escape at the end") << "a\x1b"
                                       << "a\x1b";
    QTest::newRow("incomplete") << "a\x1b[31"
                                << "a\x1b[31";
    QTest::newRow("no end") << "a\x1b[31\nb"
                            << "a\x1b[31\nb";
    QTest::newRow("link without end") << "a\x1b]8;;http"
                                      << "a\x1b]8;;http";
    QTest::newRow("two escapes") << "a\x1b\x1b[1mb"
                                 << "a\x1b"
                                    "b";
    QTest::newRow("another sequence") << "a\x1b(Bb"
                                      << "a\x1b(Bb";
}

void tst_AnsiText::leavesOutSequences()
{
    QFETCH(QString, text);
    QTEST(AnsiText(text).plain(), "plain");
}

void tst_AnsiText::takesLooks_data()
{
    QTest::addColumn<QString>("parameters");
    QTest::addColumn<QColor>("text");
    QTest::addColumn<QColor>("background");
    QTest::addColumn<QString>("style");
    const auto add = [](const char *name, const char *parameters, const QColor &text,
                        const QColor &background, const char *style) {
        QTest::newRow(name) << QString::fromLatin1(parameters) << text << background
                            << QString::fromLatin1(style);
    };
    const QColor usual;
    const QColor red(0xcd, 0, 0);
    add("usual", "", usual, usual, "");
    add("reset", "1;31;0", usual, usual, "");
    add("an empty number resets", "1;31;", usual, usual, "");
    add("red", "31", red, usual, "");
    add("bright white", "97", Qt::white, usual, "");
    add("on red", "41", usual, red, "");
    add("on bright white", "107", usual, Qt::white, "");
    add("usual again", "31;41;39;49", usual, usual, "");
    add("bold", "1", usual, usual, "b");
    add("all styles", "1;3;4;7;9", usual, usual, "biuxs");
    add("none of them any more", "1;3;4;7;9;22;23;24;27;29", usual, usual, "");
    add("one of 256, named", "38;5;1", red, usual, "");
    add("of the cube", "38;5;16", Qt::black, usual, "");
    add("of the cube, end", "48;5;231", usual, Qt::white, "");
    add("of the cube, middle", "38;5;110", QColor(135, 175, 215), usual, "");
    add("grey", "38;5;232", QColor(8, 8, 8), usual, "");
    add("last grey", "38;5;255", QColor(238, 238, 238), usual, "");
    add("beyond 256", "38;5;256;1", usual, usual, "b");
    add("true colour", "38;2;1;2;3", QColor(1, 2, 3), usual, "");
    add("true colour behind others", "1;48;2;1;2;3;4", usual, QColor(1, 2, 3), "bu");
    add("too much of a colour", "38;2;999;0;0", Qt::red, usual, "");
    add("colons", "38:2::1:2:3", QColor(1, 2, 3), usual, "");
    add("colons without a space", "38:2:1:2:3;1", QColor(1, 2, 3), usual, "b");
    add("colons, numbered", "38:5:1", red, usual, "");
    add("kinds of lines below", "4:3", usual, usual, "u");
    add("half a colour", "38;2;1", usual, usual, "b"); // what is left counts
    add("no colour at all", "38", usual, usual, "");
    add("what nobody knows", "77;2;5", usual, usual, "");
    add("too large a number", "99999999999999999999;31", red, usual, "");
}

void tst_AnsiText::takesLooks()
{
    QFETCH(QString, parameters);
    QFETCH(QColor, text);
    QFETCH(QColor, background);
    QFETCH(QString, style);
    const AnsiText ansi(QStringLiteral("\x1b[%1mx").arg(parameters));
    QCOMPARE(ansi.plain(), QString("x"));
    Look look;
    if (!ansi.runs().isEmpty()) {
        QCOMPARE(ansi.runs().size(), 1);
        QCOMPARE(ansi.runs().first().begin, 0);
        QCOMPARE(ansi.runs().first().end, 1);
        look = ansi.runs().first().look;
    }
    QCOMPARE(look.text, text.isValid() ? text.toRgb() : QColor());
    QCOMPARE(look.background, background.isValid() ? background.toRgb() : QColor());
    QCOMPARE(look.isBold, style.contains(u'b'));
    QCOMPARE(look.isItalic, style.contains(u'i'));
    QCOMPARE(look.isUnderlined, style.contains(u'u'));
    QCOMPARE(look.isInverse, style.contains(u'x'));
    QCOMPARE(look.isStruckOut, style.contains(u's'));
}

void tst_AnsiText::runsFollowEachOther()
{
    const AnsiText ansi(QStringLiteral("a\x1b[1mbc\x1b[4md\x1b[m e\x1b[1m\x1b[0mf\x1b[7mg"));
    QCOMPARE(ansi.plain(), QString("abcd efg"));
    Look bold;
    bold.isBold = true;
    Look both = bold;
    both.isUnderlined = true;
    Look inverse;
    inverse.isInverse = true;
    const QList<AnsiText::Run> expected {{1, 3, bold}, {3, 4, both}, {7, 8, inverse}};
    QCOMPARE(ansi.runs(), expected);
}

void tst_AnsiText::survivesAnyText()
{
    QRandomGenerator random(3);
    const QString letters = QStringLiteral("\x1b\x1b[[]]m;:0123458 \a\\xK");
    for (int round = 0; round < 20000; ++round) {
        QString text;
        for (int left = int(random.bounded(20)); left > 0; --left)
            text += letters[random.bounded(int(letters.size()))];
        const AnsiText ansi(text);
        qsizetype at = 0;
        for (const AnsiText::Run &run : ansi.runs()) {
            QVERIFY2(run.begin >= at && run.end > run.begin, qPrintable(text));
            at = run.end;
        }
        QVERIFY2(at <= ansi.plain().size(), qPrintable(text));
    }
}

QTEST_APPLESS_MAIN(tst_AnsiText)

#include "tst_ansitext.moc"
