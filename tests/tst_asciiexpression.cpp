// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "search/asciiexpression.h"

#include <QRandomGenerator>
#include <QRegularExpression>
#include <QTest>

class tst_AsciiExpression : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void isSimple_data();
    void isSimple();
    void isIn_data();
    void isIn();
    void findsWhatQtFinds_data();
    void findsWhatQtFinds();
};

void tst_AsciiExpression::isSimple_data()
{
    QTest::addColumn<QString>("expression");
    QTest::addColumn<bool>("isTaken");

    for (const char *simple : {"abc",
                               "worker-[0-9]",
                               "id=[0-9]+7 ",
                               "GET /[a-z]+",
                               "a|b",
                               "^a$",
                               "a*b+?c??",
                               "a{2}b{1,}c{0,3}",
                               "\\d\\D\\w\\W\\s\\S",
                               "\\.\\\\\\[",
                               ".*",
                               "[^a-z\\d.]",
                               "",
                               "|a",
                               "]",
                               "a}",
                               "[a\\]]",
                               "[\\-a]",
                               "a{63}",
                               "# x"})
        QTest::newRow(simple) << QString::fromUtf8(simple) << true;
    for (const char *other : {"(a)",  "a(?i)b",   "a*+",        "a++",     "a{2}+",       "\\ba",
                              "\\1",  "\\x41",    "\\Qa\\E",    "\\pL",    "[[:alpha:]]", "[]a]",
                              "[a-]", "[-a]",     "[z-a]",      "[\\d-z]", "[a",          "a{,3}",
                              "a{x}", "a{3,2}",   "a{100}",     "a{64}",   "a{32}|b{31}", "*a",
                              "a**",  "a^",       "^^a",        "a$b",     "a$$",         "^*",
                              "$*",   "\xc3\xa9", "[\xc3\xa9]", "a\n",     "\\",          "\\t",
                              "+"})
        QTest::newRow(other) << QString::fromUtf8(other) << false;
}

void tst_AsciiExpression::isSimple()
{
    QFETCH(QString, expression);
    QFETCH(bool, isTaken);
    QCOMPARE(AsciiExpression::of(expression, true).has_value(), isTaken);
    QCOMPARE(AsciiExpression::of(expression, false).has_value(), isTaken);
}

void tst_AsciiExpression::isIn_data()
{
    QTest::addColumn<QString>("expression");
    QTest::addColumn<bool>("matchesCase");
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<bool>("isFound");

    const auto row = [](const char *expression, bool matchesCase, const char *text, bool isFound) {
        QTest::addRow("%s in %s, %d", expression, text, matchesCase)
            << QString::fromUtf8(expression) << matchesCase << QByteArray(text) << isFound;
    };
    row("", true, "", true);
    row("", true, "a", true);
    row("^$", true, "", true);
    row("^$", true, "a", false);
    row("ab", true, "xabx", true);
    row("ab", true, "xAbx", false);
    row("ab", false, "xAbx", true);
    row("[^a]", false, "aA", false);
    row("[b-d]x", false, "Cx", true);
    row("^ab", true, "xab", false);
    row("ab$", true, "abx", false);
    row("ab$", true, "xab", true);
    row("^a|b$", true, "xb", true);
    row("^a|b$", true, "bxa", false);
    row("a{2,3}b", true, "xab", false);
    row("a{2,3}b", true, "xaab", true);
    row("^a{2,3}b", true, "aaaab", false);
    row("a?b?c?d", true, "ad", true);
    row("^a?b?c?d", true, "axd", false);
    row("id=[0-9]+7 ", true, "id=1277 x", true);
    row("id=[0-9]+7 ", true, "id=7 x", false);
    row("a.*b", true, "a----b", true);
    row("a.*b", true, "b----a", false);
    row("a{63}", true, "aaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaa", true);
    row("a{63}", true, "aaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaa", false);
    row("ab|cd", true, "bc", false);
    row("a|b|c", true, "xc", true);
}

void tst_AsciiExpression::isIn()
{
    QFETCH(QString, expression);
    QFETCH(bool, matchesCase);
    QFETCH(QByteArray, text);
    QFETCH(bool, isFound);
    const auto made = AsciiExpression::of(expression, matchesCase);
    QVERIFY(made);
    QCOMPARE(made->isIn(text), isFound);
}

void tst_AsciiExpression::findsWhatQtFinds_data()
{
    QTest::addColumn<quint32>("seed");
    QTest::addColumn<bool>("matchesCase");
    for (quint32 seed = 1; seed <= 4; ++seed) {
        QTest::addRow("seed %u", seed) << seed << true;
        QTest::addRow("seed %u, any case", seed) << seed << false;
    }
}

void tst_AsciiExpression::findsWhatQtFinds()
{
    QFETCH(quint32, seed);
    QFETCH(bool, matchesCase);
    static const QStringList pieces {
        "a",      "b",        "B",   "ab",  "c",   "*",   "+",   "?",    "{2}",
        "{0,1}",  "{1,}",     "{0}", "|",   "^",   "$",   ".",   "[ab]", "[^a]",
        "[A-Cx]", "[^\\d b]", "\\d", "\\D", "\\w", "\\W", "\\s", "\\S",  "\\.",
        "-",      "]",        "{",   "}",   "[",   "1",   " ",   "\\",   "("};
    QRandomGenerator random(seed);
    auto options =
        QRegularExpression::PatternOptions(QRegularExpression::UseUnicodePropertiesOption);
    options.setFlag(QRegularExpression::CaseInsensitiveOption, !matchesCase);
    int simple = 0;
    int found = 0;
    for (int round = 0; round < 20'000; ++round) {
        QString text;
        for (int n = random.bounded(1, 9); n > 0; --n)
            text += pieces.at(random.bounded(int(pieces.size())));
        const auto made = AsciiExpression::of(text, matchesCase);
        if (!made)
            continue;
        ++simple;
        // PCRE2 10.46 looks in the wrong place for where "c?a.{2}" may begin.
        const QRegularExpression expression(QStringLiteral("(*NO_START_OPT)") + text, options);
        QVERIFY2(expression.isValid(), qPrintable(text));
        for (int i = 0; i < 20; ++i) {
            QByteArray subject;
            for (int n = random.bounded(9); n > 0; --n)
                subject += "aaabbcABCx1 .-]_{}\t["[random.bounded(19)];
            const bool isThere = expression.match(QString::fromLatin1(subject)).hasMatch();
            found += isThere;
            QVERIFY2(made->isIn(subject) == isThere,
                     qPrintable(text + QStringLiteral(" in ") + QString::fromLatin1(subject)));
        }
    }
    QVERIFY(simple > 2000);
    QVERIFY(found > 10'000);
}

QTEST_APPLESS_MAIN(tst_AsciiExpression)

#include "tst_asciiexpression.moc"
