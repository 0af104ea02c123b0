// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "search/expressionliterals.h"

#include <QRandomGenerator>
#include <QRegularExpression>
#include <QTest>

#include <algorithm>

class tst_ExpressionLiterals : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void knows_data();
    void knows();
    void isInEveryMatch_data();
    void isInEveryMatch();
};

void tst_ExpressionLiterals::knows_data()
{
    QTest::addColumn<QString>("expression");
    QTest::addColumn<QString>("literals"); // between bars

    const auto row = [](const char *expression, const char *literals) {
        QTest::newRow(expression) << QString::fromUtf8(expression) << QString::fromUtf8(literals);
    };
    row("", "");
    row("error", "error");
    row("id=[0-9]+7 ", "id=");
    row("GET /[a-z]+", "GET /");
    row("error|fail(ed|ure)", "error|fail");
    row("[0-9]+ ms$", " ms");
    row("^\\[main\\]", "[main]");
    // Repetition
    row("ab*cd", "cd");
    row("ab*", "a");
    row("a?", "");
    row("a?b?c?", "");
    row("abc+d", "abc");
    row("abc+?d", "abc");
    row("abc++d", "abc");
    row("abc{2}d", "abc");
    row("abc{0}d", "ab");
    row("abc{0,3}d", "ab");
    row("abc{1,}d", "abc");
    row("abc{00}d", "ab");
    row("abc{,3}d", "");
    row("abc{x}d", "");
    row("abc{ 1}d", "");
    row("*abc", "");
    // Groups
    row("(abc)d", "abc");
    row("(abc)?d", "d");
    row("(abc)*d", "d");
    row("(abc)+d", "abc");
    row("(abc){0,1}de", "de");
    row("(?:abc|de)f", "abc|de");
    row("(?:abc|d?)f", "f");
    row("(?>abc)", "abc");
    row("(?<name>abc)", "abc");
    row("(?P<name>abc)", "abc");
    row("(?'name'abc)", "abc");
    row("((a|b)|(c|d))", "a|b|c|d");
    row("(|abc)", "");
    row("abc|", "");
    row("|abc", "");
    row("a|b|c|d|e|f|g|h", "a|b|c|d|e|f|g|h");
    row("a|b|c|d|e|f|g|h|i", "");
    row("(abc", "");
    row("abc)", "");
    row("()", "");
    // Looking around
    row("(?=abc)d", "d");
    row("(?!abc)d", "d");
    row("(?<=abc)d", "d");
    row("(?<!abc)d", "d");
    row("(?=abc)", "");
    row("a(?!b|c)", "a");
    // Flags and what else begins with a question mark or an asterisk
    row("(?i)abc", "");
    row("(?x) a b c", "");
    row("(?x:a b)c", "");
    row("abc(?-i)d", "");
    row("abc(?#def)", "");
    row("(?|abc|def)g", "");
    row("(abc)(?1)", "");
    row("(?(1)abc|def)", "");
    row("(?R)?abc", "");
    row("(*UCP)abc", "");
    row("abc(*ACCEPT)def", "");
    row("(?C1)abc", "");
    // Classes
    row("[abc]", "");
    row("[abc]def", "def");
    row("[]abc]def", "def");
    row("[^]abc]def", "def");
    row("[\\]abc]def", "def");
    row("[[:alpha:]]def", "");
    row("[a[b]def", "");
    row("[\\Qab]\\E]def", "");
    row("[\\c]]def", "");
    row("[a-z]*def", "def");
    row("[abc", "");
    row("ab]c}d", "ab]c}d");
    // Escapes
    row("a\\.b", "a.b");
    row("a\\\\b", "a\\b");
    row("\\d+ms", "ms");
    row("ab\\dcde", "cde");
    row("ab\\tcde", "cde");
    row("\\babc\\b", "abc");
    row("ab\\Kcde", "cde");
    row("a\\.?bc", "bc");
    row("\\x41bc", "");
    row("\\x{41}bc", "");
    row("\\p{L}abc", "");
    row("\\101bc", "");
    row("(a)\\1bc", "");
    row("(a)\\g{1}bc", "");
    row("\\cAbc", "");
    row("\\o{101}bc", "");
    row("\\Eabc", "");
    row("abc\\", "");
    row("\\éabc", "");
    // Quoted
    row("\\Qa.b*\\E", "a.b*");
    row("\\Qa.b*\\E*c", "a.b");
    row("\\Qa.b\\E+c", "a.b");
    row("\\Qab", "ab");
    row("ab\\Qcd\\Eef", "abcdef");
    row("ab\\Q\\Ecd", "abcd");
    row("ab\\Q\\E*cd", "");
    // Other characters
    row("abéde f", "de f");
    row("é?abc", "abc");
    row("日本", "");
    row("a.b", "a");
    row("a b # c", "a b # c");
}

void tst_ExpressionLiterals::knows()
{
    QFETCH(QString, expression);
    QFETCH(QString, literals);
    const QStringList expected = literals.isEmpty() ? QStringList() : literals.split(u'|');
    QCOMPARE(literalsOf(expression), expected);
}

void tst_ExpressionLiterals::isInEveryMatch_data()
{
    QTest::addColumn<quint32>("seed");
    for (quint32 seed = 1; seed <= 4; ++seed)
        QTest::addRow("seed %u", seed) << seed;
}

//! Expressions and texts of the same few characters.
void tst_ExpressionLiterals::isInEveryMatch()
{
    QFETCH(quint32, seed);
    static const QStringList pieces {
        "a",     "b",     "ab",   "c",  "bc",  "*",   "+",   "?",   "{2}",  "{0,1}",
        "|",     "(",     "(?:",  ")",  "(?=", "(?!", "[",   "]",   "[^",   "^",
        "$",     ".",     "{",    "}",  "\\",  "\\d", "\\b", "\\Q", "\\E",  "(?i)",
        "(?<n>", "\\x61", "(?x)", " ",  "#",   "(?>", "-",   "\\n", "(?s)", "(a|b)",
        "(ab)?", "\\1",   "??",   "[:", ":]",  "é",   "1",   "{1,}"};
    QRandomGenerator random(seed);
    int valid = 0;
    int known = 0;
    for (int round = 0; round < 30'000; ++round) {
        QString text;
        for (int n = random.bounded(1, 9); n > 0; --n)
            text += pieces.at(random.bounded(int(pieces.size())));
        const QStringList literals = literalsOf(text);
        const QRegularExpression expression(text, QRegularExpression::CaseInsensitiveOption);
        if (literals.isEmpty() || !expression.isValid())
            continue;
        ++known;
        for (int i = 0; i < 30; ++i) {
            QString subject;
            for (int n = random.bounded(10); n > 0; --n)
                subject += QStringLiteral("aaabbbccAé1 #-[]{}*+?\\.x:").at(random.bounded(25));
            if (!expression.match(subject).hasMatch())
                continue;
            ++valid;
            const bool isThere =
                std::any_of(literals.begin(), literals.end(), [&](const QString &l) {
                    return subject.contains(l, Qt::CaseInsensitive);
                });
            QVERIFY2(isThere, qPrintable(text + QStringLiteral(" in ") + subject));
        }
    }
    QVERIFY(known > 1000);
    QVERIFY(valid > 3000);
}

QTEST_APPLESS_MAIN(tst_ExpressionLiterals)

#include "tst_expressionliterals.moc"
