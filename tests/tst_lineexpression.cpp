// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "search/lineexpression.h"
#include "search/sharedsyntax.h"

#include <QRandomGenerator>
#include <QRegularExpression>
#include <QTest>

class tst_LineExpression : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void sharesSyntax_data();
    void sharesSyntax();
    void refusesWhatIsTooLarge();
    void isIn_data();
    void isIn();
    void findsWhatQtFinds_data();
    void findsWhatQtFinds();
};

void tst_LineExpression::sharesSyntax_data()
{
    QTest::addColumn<QString>("expression");
    QTest::addColumn<bool>("isShared");

    for (const char *shared : {"abc",
                               "worker-[0-9]",
                               "GET /[a-z]+",
                               "a|b",
                               "^a$",
                               "^^a",
                               "a$b",
                               "a*b+?c??",
                               "a{2}b{1,}c{0,3}?",
                               "a{1000}",
                               "\\d\\D\\w\\W\\s\\S",
                               "\\bauth\\B",
                               "\\.\\\\\\[",
                               ".*",
                               "[^a-z\\d.]",
                               "[a-]",
                               "[-a]",
                               "[^-]",
                               "[\\w.-]+@",
                               "[a\\]]",
                               "[\\-a]",
                               "",
                               "|a",
                               "]",
                               "a}",
                               "(a)",
                               "(?:a|b)+(c(d))*",
                               "# x"})
        QTest::newRow(shared) << QString::fromUtf8(shared) << true;
    for (const char *other :
         {"a(?i)b",   "(?=a)",      "(?<!a)", "(?<n>a)",     "(*UTF)a", "a*+",     "a++",
          "a?+",      "a{2}+",      "\\1",    "(a)\\1",      "\\x41",   "\\Qa\\E", "\\pL",
          "\\K",      "\\h",        "\\A",    "[[:alpha:]]", "[]a]",    "[^]]",    "[\\d-z]",
          "[a-\\d]",  "[a-b-c]",    "[\\b]",  "[a",          "a{,3}",   "a{x}",    "a{1001}",
          "a{3,2}",   "a{2,10000}", "a**",    "^*",          "$+",      "\\b?",    "\\B{2}",
          "\xc3\xa9", "[\xc3\xa9]", "a\n",    "\\",          "\\t",     "[\\t]",   "{",
          "a{ 1 }"})
        QTest::newRow(other) << QString::fromUtf8(other) << false;
}

void tst_LineExpression::sharesSyntax()
{
    QFETCH(const QString, expression);
    QFETCH(const bool, isShared);
    QCOMPARE(hasSharedSyntax(expression), isShared);
    if (!LineExpression::libraryName().isEmpty())
        QCOMPARE(LineExpression::of(expression, {}).has_value(), isShared);
}

//! Repeated repetitions may take more memory than there is.
void tst_LineExpression::refusesWhatIsTooLarge()
{
    const QString large = QStringLiteral("((a{1000}){1000}){1000}");
    QVERIFY(hasSharedSyntax(large));
    QVERIFY(!LineExpression::of(large, {}));
}

void tst_LineExpression::isIn_data()
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
    row("\\b(ERROR|WARN)\\b.*failed", true, "x ERROR: failed", true);
    row("\\b(ERROR|WARN)\\b.*failed", true, "x ERRORS: failed", false);
    row("(ab){2}", false, "xaBAb", true);
    row("a[^b]c", true, "a\tc", true);
}

void tst_LineExpression::isIn()
{
    QFETCH(QString, expression);
    QFETCH(bool, matchesCase);
    QFETCH(QByteArray, text);
    QFETCH(bool, isFound);
    if (LineExpression::libraryName().isEmpty())
        QSKIP("This build has no RE2.");
    const auto made = LineExpression::of(expression, {.matchesCase = matchesCase});
    QVERIFY(made);
    QCOMPARE(made->isIn(text), isFound);
}

void tst_LineExpression::findsWhatQtFinds_data()
{
    QTest::addColumn<quint32>("seed");
    QTest::addColumn<bool>("matchesCase");
    QTest::addColumn<bool>("wholeWords");
    for (quint32 seed = 1; seed <= 4; ++seed) {
        QTest::addRow("seed %u", seed) << seed << true << false;
        QTest::addRow("seed %u, any case", seed) << seed << false << false;
        QTest::addRow("seed %u, whole words", seed) << seed << true << true;
    }
}

void tst_LineExpression::findsWhatQtFinds()
{
    QFETCH(quint32, seed);
    QFETCH(bool, matchesCase);
    QFETCH(bool, wholeWords);
    if (LineExpression::libraryName().isEmpty())
        QSKIP("This build has no RE2.");
    static const QStringList pieces {
        "a",   "b",   "B",   "ab",  "c",   "*",    "+",    "?",      "{2}",      "{0,1}", "{1,}",
        "{0}", "|",   "^",   "$",   ".",   "[ab]", "[^a]", "[A-Cx]", "[^\\d b]", "\\d",   "\\D",
        "\\w", "\\W", "\\s", "\\S", "\\.", "-",    "]",    "{",      "}",        "[",     "1",
        " ",   "\\",  "(",   ")",   "(?:", ")*",   "\\b",  "\\B"};
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
        // PCRE2 10.46 looks in the wrong place for where "c?a.{2}" may begin.
        const QString written = wholeWords ? QStringLiteral("\\b(?:%1)\\b").arg(text) : text;
        const QRegularExpression expression(QStringLiteral("(*NO_START_OPT)") + written, options);
        const bool isValid = expression.isValid() && QRegularExpression(text, options).isValid();
        const auto made = isValid
            ? LineExpression::of(text, {.matchesCase = matchesCase, .wholeWords = wholeWords})
            : std::nullopt;
        if (!made)
            continue;
        ++simple;
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

QTEST_APPLESS_MAIN(tst_LineExpression)

#include "tst_lineexpression.moc"
