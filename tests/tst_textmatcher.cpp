// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "search/textmatcher.h"

#include <QTest>

namespace {

constexpr TextRules plain;
constexpr TextRules byCase {.matchesCase = true};
constexpr TextRules byWord {.wholeWords = true};
constexpr TextRules expression {.isExpression = true};
constexpr TextRules wordExpression {.wholeWords = true, .isExpression = true};

} // namespace

Q_DECLARE_METATYPE(TextRules)

class tst_TextMatcher : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void isIn_data();
    void isIn();
    void matchesIn_data();
    void matchesIn();
    void explainsExpressions_data();
    void explainsExpressions();
    void knowsNeedles();
};

void tst_TextMatcher::isIn_data()
{
    QTest::addColumn<TextRules>("rules");
    QTest::addColumn<QString>("sought");
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("isFound");

    QTest::newRow("the same") << plain << "ab"
                              << "ab" << true;
    QTest::newRow("within") << plain << "ab"
                            << "cabd" << true;
    QTest::newRow("other case") << plain << "aB"
                                << "cAbd" << true;
    QTest::newRow("not there") << plain << "ab"
                               << "ba" << false;
    QTest::newRow("nothing sought") << plain << ""
                                    << "ab" << false;
    QTest::newRow("nothing there") << plain << "ab"
                                   << "" << false;
    QTest::newRow("not as an expression") << plain << "a.b"
                                          << "axb" << false;
    QTest::newRow("sharp s") << plain << "STRASSE"
                             << "straße" << false;
    QTest::newRow("umlaut") << plain << "ÄB"
                            << "äb" << true;
    QTest::newRow("by case") << byCase << "aB"
                             << "caBd" << true;
    QTest::newRow("by another case") << byCase << "aB"
                                     << "cabd" << false;

    QTest::newRow("word") << byWord << "ab"
                          << "ab" << true;
    QTest::newRow("word between others") << byWord << "ab"
                                         << "x ab, y" << true;
    QTest::newRow("begins a word") << byWord << "ab"
                                   << "abc" << false;
    QTest::newRow("ends a word") << byWord << "ab"
                                 << "xab" << false;
    QTest::newRow("later a word") << byWord << "ab"
                                  << "abab ab" << true;
    QTest::newRow("overlapping") << byWord << "a a"
                                 << "a a a" << true;
    QTest::newRow("beside an underscore") << byWord << "ab"
                                          << "ab_" << false;
    QTest::newRow("beside a digit") << byWord << "ab"
                                    << "ab2" << false;
    QTest::newRow("beside an umlaut") << byWord << "ab"
                                      << "äab" << false;
    QTest::newRow("no word itself") << byWord << "(ab)"
                                    << "x(ab)y" << false;
    QTest::newRow("no word between blanks") << byWord << "(ab)"
                                            << "x (ab) y" << true;

    QTest::newRow("expression") << expression << "a.b"
                                << "xAxB" << true;
    QTest::newRow("expression from the beginning") << expression << "^b"
                                                   << "ab" << false;
    QTest::newRow("expression for letters") << expression << "^\\w$"
                                            << "ä" << true;
    QTest::newRow("no expression") << expression << "a("
                                   << "a(" << false;
    QTest::newRow("nothing as an expression") << expression << ""
                                              << "a" << false;
    QTest::newRow("expression for a word") << wordExpression << "a|b"
                                           << "ab" << false;
    QTest::newRow("expression for words") << wordExpression << "a|b"
                                          << "x b" << true;
}

void tst_TextMatcher::isIn()
{
    QFETCH(TextRules, rules);
    QFETCH(QString, sought);
    QFETCH(QString, text);
    QTEST(TextMatcher(sought, rules).isIn(text), "isFound");
    QVERIFY(!TextMatcher().isIn(text));
}

void tst_TextMatcher::matchesIn_data()
{
    using Matches = QList<TextMatcher::Match>;
    QTest::addColumn<TextRules>("rules");
    QTest::addColumn<QString>("sought");
    QTest::addColumn<QString>("text");
    QTest::addColumn<Matches>("matches");
    QTest::newRow("none") << plain << "x"
                          << "abab" << Matches();
    QTest::newRow("nothing sought") << plain << ""
                                    << "abab" << Matches();
    QTest::newRow("two") << plain << "AB"
                         << "xabab" << Matches({{1, 2}, {3, 2}});
    QTest::newRow("not within each other") << plain << "aa"
                                           << "aaaaa" << Matches({{0, 2}, {2, 2}});
    QTest::newRow("words") << byWord << "ab"
                           << "ab abc ab" << Matches({{0, 2}, {7, 2}});
    QTest::newRow("expression") << expression << "a+"
                                << "aa b a" << Matches({{0, 2}, {5, 1}});
    QTest::newRow("empty matches") << expression << "a*"
                                   << "ba" << Matches({{1, 1}});
    QTest::newRow("no expression") << expression << "a("
                                   << "a(" << Matches();
}

void tst_TextMatcher::matchesIn()
{
    QFETCH(TextRules, rules);
    QFETCH(QString, sought);
    QFETCH(QString, text);
    QFETCH(QList<TextMatcher::Match>, matches);
    const TextMatcher matcher(sought, rules);
    QCOMPARE(matcher.matchesIn(text), matches);
    QCOMPARE(matcher.isNothing(), sought.isEmpty() || !matcher.problem().isEmpty());
}

void tst_TextMatcher::explainsExpressions_data()
{
    QTest::addColumn<TextRules>("rules");
    QTest::addColumn<QString>("sought");
    QTest::addColumn<QString>("beginning");
    QTest::newRow("parenthesis") << expression << "ab("
                                 << "Character 4: ";
    QTest::newRow("for words") << wordExpression << "ab("
                               << "Character 4: ";
    QTest::newRow("none") << expression << "ab()"
                          << "";
    QTest::newRow("empty") << expression << ""
                           << "";
    QTest::newRow("plain") << plain << "ab("
                           << "";
}

void tst_TextMatcher::explainsExpressions()
{
    QFETCH(TextRules, rules);
    QFETCH(QString, sought);
    QFETCH(QString, beginning);
    const QString problem = TextMatcher(sought, rules).problem();
    QCOMPARE(problem.isEmpty(), beginning.isEmpty());
    QCOMPARE(problem.left(beginning.size()), beginning);
}

void tst_TextMatcher::knowsNeedles()
{
    const auto needles = [](const QString &text, const TextRules &rules) {
        return TextMatcher(text, rules).needles();
    };
    QCOMPARE(needles(QStringLiteral("a|b"), byWord), QStringList {QStringLiteral("a|b")});
    QCOMPARE(needles(QStringLiteral("a|b"), expression), (QStringList {"a", "b"}));
    QCOMPARE(needles(QStringLiteral("ab+c"), wordExpression), QStringList {QStringLiteral("ab")});
    QCOMPARE(needles(QStringLiteral("."), expression), QStringList());
    QCOMPARE(needles(QString(), byWord), QStringList());
}

QTEST_GUILESS_MAIN(tst_TextMatcher)

#include "tst_textmatcher.moc"
