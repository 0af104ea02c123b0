// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "files/bytepattern.h"
#include "files/lineindex.h"
#include "files/textfilemodel.h"
#include "qtablefastview.h"
#include "search/findpanel.h"
#include "search/linefilter.h"
#include "search/placescanner.h"
#include "search/tablefilter.h"

#include <QFile>
#include <QHeaderView>
#include <QRandomGenerator>
#include <QStringConverter>
#include <QTemporaryDir>
#include <QTest>

#include <limits>

namespace {

//! A file that is shown and completely indexed.
struct ShownFile
{
    explicit ShownFile(const QByteArray &text, const FormatRequest &request = {})
        : path(directory.filePath("file.txt"))
        , model((write(text), path), request)
        , find(&view)
    {
        find.setSource(&model);
        model.start();
        const auto indexed = quint64(text.size());
        [&] {
            QTRY_COMPARE(model.activity(), TextFileModel::Activity::Following);
            QTRY_COMPARE(model.indexedBytes(), indexed);
        }();
    }
    ~ShownFile() { find.setSource(nullptr); }
    Q_DISABLE_COPY_MOVE(ShownFile)

    void write(const QByteArray &text) const
    {
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly));
        QCOMPARE(file.write(text), text.size());
    }
    void setCurrent(int row) { view.setCurrentIndex(model.index(row, 1)); }

    QTemporaryDir directory;
    QString path;
    TextFileModel model;
    QTableFastView view;
    TableFilter find;
};

//! Words that meet each other's beginnings and ends, in either case.
QByteArray randomLine(QRandomGenerator &random, int words)
{
    static const QList<QByteArray> pieces {
        "ab",   "AB",           "a",        "b",  "ba ", "sk",   "K", "S",  "x y",        "é",
        "日本", "\xe2\x84\xaa", "\xc5\xbf", "\t", "7",   "\xff", ";", "\"", "\"a;\"\"b\""};
    QByteArray line;
    for (int i = 0; i < words; ++i)
        line += pieces.at(random.bounded(int(pieces.size())));
    return line;
}

//! Anything that may be in a file, and what is like an ASCII letter without being one.
QByteArray strangeLine(QRandomGenerator &random)
{
    static const QList<QByteArray> pieces {"ask",
                                           "ASK",
                                           "k",
                                           "S",
                                           "a",
                                           "id=17 ",
                                           "id=",
                                           "_",
                                           "\xe2\x84\xaa",
                                           "\xc5\xbf",
                                           "é",
                                           "\xc3",
                                           "\xe2\x84",
                                           "\xff",
                                           " ",
                                           "\t",
                                           "\x7f",
                                           "\x01",
                                           "\r",
                                           "\xe2\x80\xa8",
                                           "日本",
                                           "7",
                                           "-",
                                           ".",
                                           "\xef\xbb\xbf",
                                           "\xf0\x9f\x98\x80",
                                           "\xed\xa0\x80",
                                           "İ",
                                           "error",
                                           "Fail",
                                           "ed",
                                           "b"};
    QByteArray line;
    if (random.bounded(100) == 0)
        line = QByteArray(random.bounded(16370, 16390), 'x'); // about what is read of a line
    for (int n = random.bounded(9); n > 0; --n)
        line += pieces.at(random.bounded(int(pieces.size())));
    return line + QByteArrayList {"\n", "\n", "\r\n"}.at(random.bounded(3));
}

QStringList linesWith(const QAbstractItemModel &model, const QString &text)
{
    QStringList lines;
    for (int row = 0; row < model.rowCount(); ++row) {
        const QString line = model.index(row, 1).data().toString();
        if (line.contains(text))
            lines << line;
    }
    return lines;
}

//! Where the engine, which reads every row, ends up.
int rowByEngine(ShownFile &file, int start, const QString &text, bool forward)
{
    file.setCurrent(start);
    const bool isFound = file.find.findInRows(text, forward);
    return isFound ? file.view.currentIndex().row() : -1;
}

int rowByBytes(ShownFile &file, int start, const QString &text, bool forward)
{
    file.setCurrent(start);
    const std::optional<bool> isFound = file.find.findInFile(text, forward);
    return isFound.value_or(false) ? file.view.currentIndex().row() : -1;
}

} // namespace

class tst_ViewerSearch : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void linesByOffset();
    void patternsThatAreTaken_data();
    void patternsThatAreTaken();
    void patternPlaces_data();
    void patternPlaces();
    void marksArePlaces();
    void placesFarFromEachOther_data();
    void placesFarFromEachOther();
    void patternsAtRandom();
    void placesOfSeveralPatterns();
    void onlyWhatBytesTell_data();
    void onlyWhatBytesTell();
    void findsWhatTheEngineFinds_data();
    void findsWhatTheEngineFinds();
    void findsExpressionsByTheirLiterals_data();
    void findsExpressionsByTheirLiterals();
    void filtersWhatTheRowsShow();
    void filterKeepsUpWithTheFile();
    void filterFollowsTheColumns();
    void bytesTellWhatTheTextTells_data();
    void bytesTellWhatTheTextTells();
    void numbersOfLinesAreNotInTheBytes_data();
    void numbersOfLinesAreNotInTheBytes();
    void readsWholeLines();
    void endsOfLines_data();
    void endsOfLines();
    void blocksMeet_data();
    void blocksMeet();
    void veryLongLines();
    void stopsWhenCancelled();
    void fileCutOff();
    void takesTheFirstCell();
    void looksAtAllRows_data();
    void looksAtAllRows();
};

void tst_ViewerSearch::linesByOffset()
{
    QByteArray text;
    for (int i = 0; i < 1000; ++i)
        text += QByteArray(i % 7 == 3 ? 300 : i % 5, 'x') + '\n';
    for (const bool hasTail : {false, true}) {
        if (hasTail)
            text += "tail";
        LineScanner scanner(std::numeric_limits<qint64>::max());
        scanner.scan(text.constData(), size_t(text.size()));
        LineIndex index;
        index.append(scanner.takeBatch());
        qint64 line = 0;
        for (qsizetype offset = 0; offset < text.size(); ++offset) {
            QCOMPARE(index.lineAt(quint64(offset)), line);
            line += text.at(offset) == '\n';
        }
        QCOMPARE(index.lineAt(quint64(text.size())), index.count());
        QCOMPARE(index.lineAt(std::numeric_limits<quint64>::max()), index.count());
    }
    QCOMPARE(LineIndex().lineAt(0), 0);
}

void tst_ViewerSearch::patternsThatAreTaken_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("isTaken");

    QTest::newRow("word") << "Word" << true;
    QTest::newRow("blank and signs") << " a~!" << true;
    QTest::newRow("empty") << "" << false;
    QTest::newRow("tab") << "a\tb" << false;
    QTest::newRow("delete") << QString(QChar(0x7f)) << false;
    QTest::newRow("accent") << "é" << false;
}

void tst_ViewerSearch::patternsThatAreTaken()
{
    QFETCH(QString, text);
    QFETCH(bool, isTaken);
    QCOMPARE(BytePattern::of(text).has_value(), isTaken);
}

void tst_ViewerSearch::patternPlaces_data()
{
    QTest::addColumn<QString>("pattern");
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<int>("first");
    QTest::addColumn<int>("last");

    const auto row = [](const char *name, const char *pattern, const char *bytes, int first,
                        int last) {
        QTest::newRow(name) << QString::fromLatin1(pattern) << QByteArray(bytes) << first << last;
    };
    row("nowhere", "abc", "ab ab bc", -1, -1);
    row("whole", "abc", "ABC", 0, 0);
    row("twice", "Abc", "xabcABCx", 1, 4);
    row("overlapping", "aa", "aaaa", 0, 2);
    row("one character", "a", "xxAxxax", 2, 5);
    row("too short", "abc", "ab", -1, -1);
    row("no bytes", "a", "", -1, -1);
    row("signs are no letters", "[`{@", "{@[`", -1, -1);
    row("far away", "abc", "ab-bc-ab-bc-ab-bc-ab-bc-ab-bc-ab-bc-ab-bc-ABC-", 42, 42);
    row("edges only", "abc", "a-c-a-c-a-c-a-c-a-c-a-c-a-c-a-c-a-c-a-c-a-c", -1, -1);
    row("signs are no letters, far away", "[{", "{{{{{{{{{{[[[[[[[[[[{]{]{]{]{]{]{]{]{]{]{]", 19,
        19);
    row("kelvin sign", "k", "x\xe2\x84\xaax", 1, 1);
    row("kelvin sign before and behind", "k", "\xe2\x84\xaak\xe2\x84\xaa", 0, 4);
    row("long s cut off", "s", "x\xc5", -1, -1);
    row("long s", "ask", "xa\xc5\xbfk", 2, 2);
    row("no long s", "abc", "\xc5\xbf", -1, -1);
    row("no mark", "abc", "\"", -1, -1);
}

void tst_ViewerSearch::patternPlaces()
{
    QFETCH(QString, pattern);
    QFETCH(QByteArray, bytes);
    QFETCH(int, first);
    QFETCH(int, last);
    const auto made = BytePattern::of(pattern);
    QVERIFY(made);
    QCOMPARE(made->first(bytes), first);
    QCOMPARE(made->last(bytes), last);
}

void tst_ViewerSearch::marksArePlaces()
{
    const auto pattern = BytePattern::of("abc", '"');
    QCOMPARE(pattern->first("x\"abc\"y"), 1);
    QCOMPARE(pattern->last("x\"abc\"y"), 5);
    QCOMPARE(pattern->first("xabc\"y"), 1);
    QCOMPARE(pattern->last("x\"abcy"), 2);
    QCOMPARE(pattern->first("xaby"), -1);
}

void tst_ViewerSearch::placesFarFromEachOther_data()
{
    QTest::addColumn<int>("distance");
    for (int around : {1024, 3 * 1024, 127 * 1024, 400 * 1024}) {
        for (int distance = around - 6; distance <= around + 6; ++distance)
            QTest::addRow("%d bytes", distance) << distance;
    }
}

//! They are looked for in parts of the bytes, from either side.
void tst_ViewerSearch::placesFarFromEachOther()
{
    QFETCH(int, distance);
    const auto pattern = BytePattern::of("desk", '"');
    for (const QByteArray text : {"desk", "\"", "\xc5\xbf", "\xe2\x84\xaa"}) {
        const QByteArray room(distance, '.');
        QCOMPARE(pattern->first(room + text), distance);
        QCOMPARE(pattern->first(room + text + room + "desk"), distance);
        QCOMPARE(pattern->first(room + text + "desk\""), distance);
        QCOMPARE(pattern->last(text + room), 0);
        QCOMPARE(pattern->last("desk" + room + text + room), 4 + distance);
        QCOMPARE(pattern->last("desk\"" + text + room), 5);
        QCOMPARE(pattern->first(room + "des"), -1);
        QCOMPARE(pattern->last("esk" + room), -1);
    }
}

void tst_ViewerSearch::patternsAtRandom()
{
    const quint32 seed = 5;
    qInfo("seed %u", seed);
    QRandomGenerator random(seed);
    int hits = 0;
    for (int round = 0; round < 20000; ++round) {
        const auto letters = [&](int most) {
            QByteArray text;
            for (int n = random.bounded(most + 1); n > 0; --n)
                text += "abAB"[random.bounded(4)];
            return text;
        };
        const QByteArray bytes = letters(round % 4 == 0 ? 300 : 30);
        const QByteArray wanted = letters(6);
        if (wanted.isEmpty())
            continue;
        const auto pattern = BytePattern::of(QString::fromLatin1(wanted));
        const qsizetype first = bytes.toLower().indexOf(wanted.toLower());
        hits += first >= 0;
        QCOMPARE(pattern->first(bytes), first);
        QCOMPARE(pattern->last(bytes), bytes.toLower().lastIndexOf(wanted.toLower()));
    }
    QVERIFY(hits > 2000);
}

void tst_ViewerSearch::placesOfSeveralPatterns()
{
    QRandomGenerator random(7);
    const QByteArrayList wanted {"ab", "ca", "bbb", "cccc"};
    std::vector<BytePattern> patterns;
    for (const QByteArray &text : wanted)
        patterns.push_back(*BytePattern::of(QString::fromLatin1(text)));
    PlaceScanner scanner(patterns);
    int hits = 0;
    for (int round = 0; round < 500; ++round) {
        QByteArray bytes;
        for (int n = random.bounded(100); n > 0; --n)
            bytes += "abcd"[random.bounded(4)];
        scanner.start(bytes);
        for (qsizetype from = 0; from <= bytes.size(); from += random.bounded(5)) {
            qsizetype expected = -1;
            for (const QByteArray &text : wanted) {
                const qsizetype place = bytes.indexOf(text, from);
                if (place >= 0 && (expected < 0 || place < expected))
                    expected = place;
            }
            QCOMPARE(scanner.next(from), expected);
            hits += expected >= 0;
        }
    }
    QVERIFY(hits > 1000);
}

void tst_ViewerSearch::onlyWhatBytesTell_data()
{
    QTest::addColumn<QByteArray>("file");
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("hidden"); // column, −1 for none
    QTest::addColumn<bool>("isTaken");

    const QByteArray log = "first line\nsecond line\n";
    QTest::newRow("plain") << log << "line" << -1 << true;
    QTest::newRow("number of a line") << log << "2" << -1 << true;
    QTest::newRow("number, lines' numbers hidden") << log << "2" << 0 << true;
    QTest::newRow("letters and numbers") << log << "line 2" << -1 << true;
    QTest::newRow("text hidden") << log << "line" << 1 << false;
    QTest::newRow("not ASCII") << log << "ligne é" << -1 << false;
    QTest::newRow("Windows-1252") << QByteArray("\xe4 line\n") << "line" << -1 << true;
    QTest::newRow("UTF-16") << QByteArray("\xff\xfe"
                                          "a\0\n\0",
                                          6)
                            << "a" << -1 << false;
    QTest::newRow("fields") << QByteArray("a;b\n\"1;2\";3\n4;5\n") << "2" << -1 << true;
}

void tst_ViewerSearch::onlyWhatBytesTell()
{
    QFETCH(QByteArray, file);
    QFETCH(QString, text);
    QFETCH(int, hidden);
    QFETCH(bool, isTaken);
    ShownFile shown(file);
    if (hidden >= 0)
        shown.view.hideColumn(hidden);
    QCOMPARE(shown.find.findInFile(text, true).has_value(), isTaken);
    QCOMPARE(shown.find.findInFile(text, false).has_value(), isTaken);
}

void tst_ViewerSearch::findsWhatTheEngineFinds_data()
{
    QTest::addColumn<quint32>("seed");
    QTest::addColumn<QChar>("delimiter"); // null character: none
    QTest::addColumn<QString>("encoding");
    for (quint32 seed = 1; seed <= 4; ++seed) {
        QTest::addRow("lines, seed %u", seed) << seed << QChar(u'\0') << "utf-8";
        QTest::addRow("fields, seed %u", seed) << seed << QChar(u';') << "utf-8";
    }
    QTest::newRow("lines of single bytes") << 5U << QChar(u'\0') << "cp1252";
}

void tst_ViewerSearch::findsWhatTheEngineFinds()
{
    QFETCH(quint32, seed);
    QFETCH(QChar, delimiter);
    QFETCH(QString, encoding);
    QRandomGenerator random(seed);
    QByteArray text;
    if (!delimiter.isNull())
        text = "one;two;three;four\n";
    for (int i = 0; i < 400; ++i)
        text += randomLine(random, random.bounded(12)) + (random.bounded(4) ? "\n" : "\r\n");
    if (seed % 2)
        text += "a tail";
    ShownFile file(text, {delimiter, {}, Encoding::named(encoding)});
    int hits = 0;
    for (int round = 0; round < 120; ++round) {
        QString wanted;
        for (int n = random.bounded(1, 7); n > 0; --n)
            wanted += QStringLiteral("abkSxy 7\";").at(random.bounded(10));
        const int start = random.bounded(file.model.rowCount());
        for (const bool forward : {true, false}) {
            const int row = rowByEngine(file, start, wanted, forward);
            if (!file.find.findInFile(wanted, forward))
                continue;
            hits += row >= 0;
            QCOMPARE(rowByBytes(file, start, wanted, forward), row);
        }
    }
    QVERIFY(hits > 40);
}

void tst_ViewerSearch::findsExpressionsByTheirLiterals_data()
{
    QTest::addColumn<QString>("expression");
    QTest::addColumn<bool>("isTaken"); // its bytes tell where to look

    QTest::newRow("a literal") << "sk[^a]*y" << true;
    QTest::newRow("at the end") << "[xy]+ba " << true;
    QTest::newRow("in a group") << "(ba )+x?" << true;
    QTest::newRow("several literals") << "sk7|ba " << false;
    QTest::newRow("none") << "[ab][7x]" << false;
}

void tst_ViewerSearch::findsExpressionsByTheirLiterals()
{
    QFETCH(QString, expression);
    QFETCH(bool, isTaken);
    QRandomGenerator random(3);
    QByteArray text;
    for (int i = 0; i < 300; ++i)
        text += randomLine(random, random.bounded(6)) + '\n';
    ShownFile file(text, {u'\0', {}, Encoding()});
    file.find.setExpressions(true);
    int hits = 0;
    for (int start = 0; start < 300; start += 7) {
        for (const bool forward : {true, false}) {
            const int row = rowByEngine(file, start, expression, forward);
            hits += row >= 0;
            QCOMPARE(file.find.findInFile(expression, forward).has_value(), isTaken);
            if (isTaken)
                QCOMPARE(rowByBytes(file, start, expression, forward), row);
        }
    }
    QVERIFY(hits > 20);
}

void tst_ViewerSearch::filtersWhatTheRowsShow()
{
    QRandomGenerator random(11);
    QByteArray text;
    for (int i = 0; i < 2000; ++i)
        text += randomLine(random, random.bounded(12)) + '\n';
    ShownFile file(text, {u'\0', {}, Encoding()});
    for (const char *wanted : {"a", "ab", "AB", "skS", "K", "x y", "7", "nothing", "é"}) {
        const QString filter = QString::fromUtf8(wanted);
        LineFilter shown({1}, TextMatcher(filter, {.matchesCase = true}));
        QVERIFY(shown.takeOver(&file.model));
        QCOMPARE(linesWith(shown, QString()), linesWith(file.model, filter));
    }
}

//! A filter that is shown judges the lines that come and change by their bytes too.
void tst_ViewerSearch::filterKeepsUpWithTheFile()
{
    QRandomGenerator random(23);
    QByteArray text = QByteArray(600, '-') + '\n';
    ShownFile file(text, {u'\0', {}, Encoding()});
    LineFilter shown({1}, TextMatcher(QStringLiteral("ab"), {.matchesCase = true}));
    QVERIFY(shown.takeOver(&file.model));
    const auto write = [&](qsizetype offset, const QByteArray &bytes) {
        QFile onDisk(file.path);
        QVERIFY(onDisk.open(QIODevice::ReadWrite));
        QVERIFY(onDisk.seek(offset));
        QCOMPARE(onDisk.write(bytes), bytes.size());
        text.replace(offset, bytes.size(), bytes);
    };
    const auto check = [&] {
        QTRY_COMPARE(file.model.indexedBytes(), quint64(text.size()));
        QCOMPARE(linesWith(shown, QString()), linesWith(file.model, QStringLiteral("ab")));
    };
    for (const int lines : {1, 2, 500, 3000}) {
        QByteArray more;
        for (int i = 0; i < lines; ++i)
            more += randomLine(random, random.bounded(12)) + '\n';
        write(text.size(), more);
        check();
    }
    QVERIFY(shown.rowCount() > 100);
    for (const char *piece : {"x", "a", "b", "\n"}) {
        write(text.size(), piece);
        check();
    }
    const int before = shown.rowCount();
    write(300, "ab"); // far from the ends, which tell that it is another file
    QTRY_COMPARE(shown.rowCount(), before + 1);
    check();
}

//! Text that turns out to be in columns is looked at in all of them.
void tst_ViewerSearch::filterFollowsTheColumns()
{
    ShownFile file("one\n");
    LineFilter shown({0, 1}, TextMatcher(QStringLiteral("x"), {.matchesCase = true}));
    QVERIFY(shown.takeOver(&file.model));
    file.write("1;2;3\n4;5;x\n7;8;9\n");
    QTRY_COMPARE(file.model.columnCount(), 3);
    QTRY_COMPARE(file.model.rowCount(), 3);
    QCOMPARE(shown.rowCount(), 1);
    // And the other way round, where bytes tell again.
    file.write("one\ntwo x\nthree\nfour\n");
    QTRY_COMPARE(file.model.columnCount(), 2);
    QTRY_COMPARE(file.model.rowCount(), 4);
    QCOMPARE(shown.rowCount(), 1);
    // As many columns, the first of which has text instead of numbers now.
    file.write("x;1\n2;3\n4;x\n5;6\n7;8\n");
    QTRY_COMPARE(file.model.rowCount(), 5);
    QCOMPARE(file.model.columnCount(), 2);
    QCOMPARE(shown.rowCount(), 2);
}

void tst_ViewerSearch::bytesTellWhatTheTextTells_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("encoding");

    for (const char *encoding : {"utf-8", "latin1", "cp1252", "utf-16le"}) {
        for (const char *text : {"k",          "ask",     "S",
                                 "a",          "7",       "id=1",
                                 " ",          "_",       "x",
                                 "é",          "\u212a",  "\u017f",
                                 "\t",         "\r",      "error|fail(ed)?",
                                 "ask|7 ",     "K\\d",    "s+",
                                 "a.k|^7",     "(a|k)7",  "id=[0-9]+7 ",
                                 "^$",         "^a",      "k$",
                                 "\\bask\\b",  "[^a-z]k", "\\s",
                                 "(?i)ASK",    ".",       "x{20}",
                                 "a\\x{2401}", "\\W7",    "\u2421|\u2401",
                                 "\ufffd",     "("}) {
            QTest::addRow("%s, %s", encoding, text)
                << QString::fromUtf8(text) << QString::fromLatin1(encoding);
        }
    }
}

void tst_ViewerSearch::bytesTellWhatTheTextTells()
{
    QFETCH(QString, text);
    QFETCH(QString, encoding);
    QRandomGenerator random(31);
    QByteArray lines;
    for (int i = 0; i < 1000; ++i)
        lines += strangeLine(random);
    lines += "ask me\r";
    if (encoding == QLatin1String("utf-16le"))
        lines = QStringEncoder(QStringEncoder::Utf16LE).encode(QString::fromUtf8(lines));
    ShownFile file(lines, {u'\0', {}, Encoding::named(encoding)});
    for (int rules = 0; rules < 8; ++rules) {
        const TextMatcher matcher(text,
                                  {.matchesCase = (rules & 1) != 0,
                                   .wholeWords = (rules & 2) != 0,
                                   .isExpression = (rules & 4) != 0});
        LineFilter shown({1}, matcher);
        QVERIFY(shown.takeOver(&file.model));
        int found = 0;
        for (int row = 0; row < file.model.rowCount(); ++row) {
            const QModelIndex cell = file.model.index(row, 1);
            if (matcher.isIn(cell.data().toString()))
                QCOMPARE(shown.mapToSource(shown.index(found++, 1)), cell);
        }
        QCOMPARE(shown.rowCount(), found);
    }
}

void tst_ViewerSearch::numbersOfLinesAreNotInTheBytes_data()
{
    QTest::addColumn<QList<int>>("columns");
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("isExpression");
    QTest::addColumn<QList<int>>("rows");

    const QList<int> number {0};
    const QList<int> both {0, 1};
    QTest::newRow("number") << number << "2" << false << QList<int> {1};
    QTest::newRow("number, not in the text") << number << "7" << false << QList<int> {};
    QTest::newRow("number or text") << both << "2" << false << QList<int> {1, 2};
    QTest::newRow("text beside the number") << both << "b" << false << QList<int> {1};
    QTest::newRow("number by an expression") << number << "^[2]$" << true << QList<int> {1};
    QTest::newRow("either by an expression") << both << "^[2-3]" << true << QList<int> {1, 2};
    QTest::newRow("either by a literal") << both << "2+" << true << QList<int> {1, 2};
}

void tst_ViewerSearch::numbersOfLinesAreNotInTheBytes()
{
    QFETCH(QList<int>, columns);
    QFETCH(QString, text);
    QFETCH(bool, isExpression);
    QFETCH(QList<int>, rows);
    ShownFile file("a7\nb\n2\n", {u'\0', {}, Encoding()});
    LineFilter shown(columns, TextMatcher(text, {.isExpression = isExpression}));
    QVERIFY(shown.takeOver(&file.model));
    QList<int> behind;
    for (int row = 0; row < shown.rowCount(); ++row)
        behind << shown.mapToSource(shown.index(row, 0)).row();
    QCOMPARE(behind, rows);
}

void tst_ViewerSearch::readsWholeLines()
{
    const QByteArray longest(TextFileModel::maximumLineBytes - 1, 'x');
    const QByteArray text = "one\r\n\n" + longest + '\n' + longest + "x\nlast but one\ntail";
    const ShownFile file(text);
    TextFileModel::RawLines lines;
    const auto read = [&](int row, int end) {
        file.model.readLines(row, end, &lines);
        QByteArrayList bytes;
        for (qsizetype i = 0, begin = 0; i < qsizetype(lines.ends.size()); ++i) {
            const qsizetype lineEnd = lines.ends[size_t(i)];
            bytes << lines.bytes.sliced(begin, lineEnd - begin).toByteArray();
            begin = lineEnd;
        }
        return bytes;
    };
    const QByteArrayList first {"one\r\n", "\n", longest + '\n'};
    QCOMPARE(read(0, 6), first);
    QCOMPARE(read(0, 2), first.first(2));
    QCOMPARE(read(1, 6), first.sliced(1));
    QCOMPARE(read(3, 6), QByteArrayList()); // too long
    QCOMPARE(read(4, 6), QByteArrayList {"last but one\n"});
    QCOMPARE(read(5, 6), QByteArrayList()); // has no end
    QCOMPARE(read(2, 2), QByteArrayList());
    QCOMPARE(read(6, 9), QByteArrayList());
}

void tst_ViewerSearch::endsOfLines_data()
{
    QTest::addColumn<int>("first");
    QTest::addColumn<int>("end");
    QTest::addColumn<int>("most");
    QTest::addColumn<int>("longest");
    QTest::addColumn<int>("count");

    QTest::newRow("all") << 0 << 200 << 100'000 << 1000 << 200;
    QTest::newRow("more than all") << 0 << 300 << 100'000 << 1000 << 200;
    QTest::newRow("behind a checkpoint") << 65 << 200 << 100'000 << 1000 << 135;
    QTest::newRow("some") << 100 << 110 << 100'000 << 1000 << 10;
    QTest::newRow("as many as fit") << 0 << 200 << 10 << 1000 << 4; // 1 + 2 + 3 + 4
    QTest::newRow("one less") << 0 << 200 << 9 << 1000 << 3;
    QTest::newRow("up to a long one") << 0 << 200 << 100'000 << 150 << 150;
    QTest::newRow("a long one") << 150 << 200 << 100'000 << 150 << 0;
    QTest::newRow("none") << 10 << 10 << 100'000 << 1000 << 0;
    QTest::newRow("behind the last") << 200 << 201 << 100'000 << 1000 << 0;
}

void tst_ViewerSearch::endsOfLines()
{
    QFETCH(int, first);
    QFETCH(int, end);
    QFETCH(int, most);
    QFETCH(int, longest);
    QFETCH(int, count);
    QByteArray text;
    for (int i = 0; i < 200; ++i)
        text += QByteArray(i, 'x') + '\n';
    text += "tail";
    LineScanner scanner(std::numeric_limits<qint64>::max());
    scanner.scan(text.constData(), size_t(text.size()));
    LineIndex index;
    index.append(scanner.takeBatch());
    std::vector<qsizetype> ends {7};
    index.readEnds(first, end, quint64(most), quint64(longest), &ends);
    QCOMPARE(int(ends.size()), count);
    for (int i = 0; i < count; ++i) {
        const LineSpan line = index.line(first + i);
        QCOMPARE(quint64(ends[size_t(i)]), line.offset + line.length - index.line(first).offset);
    }
}

void tst_ViewerSearch::blocksMeet_data()
{
    QTest::addColumn<bool>("forward");
    QTest::addColumn<int>("shift"); // of the match, from where the first block ends

    for (const int shift : {-4, -3, -1, 0, 1, 5})
        QTest::addRow("forward %d", shift) << true << shift;
    for (const int shift : {-8, -6, -5, -4, -3})
        QTest::addRow("backward %d", shift) << false << shift;
}

//! A match across the end of what is read at once is found.
void tst_ViewerSearch::blocksMeet()
{
    QFETCH(bool, forward);
    QFETCH(int, shift);
    constexpr qsizetype block = 4 << 20;
    constexpr qsizetype line = 100;
    QByteArray text = (QByteArray(line - 1, 'x') + '\n').repeated(2 * block / line + 10);
    // The first row to be looked at is the second, or the last but one.
    const qsizetype end = forward ? line + block : text.size() - line - block;
    text.replace(end + shift, 6, "needle");
    QCOMPARE(text.count('\n'), text.size() / line);
    ShownFile file(text);
    const int start = forward ? 0 : file.model.rowCount() - 1;
    const int row = int((end + shift) / line);
    QCOMPARE(rowByBytes(file, start, "Needle", forward), row);
    // Of the row where it begins only the search down sees anything, at last.
    QCOMPARE(rowByBytes(file, row, "Needle", forward), forward ? row : -1);
}

//! Only the beginning of a line is shown, and so found.
void tst_ViewerSearch::veryLongLines()
{
    const QByteArray longLine(9 << 20, 'x');
    const QByteArray text = "first\n" + longLine + "needle\nneedle" + longLine + "\n" + longLine
        + "needle" + longLine + "\nlast needle\nafter\n";
    ShownFile file(text);
    QCOMPARE(file.model.rowCount(), 6);
    for (int start = 0; start < 6; ++start) {
        for (const bool forward : {true, false}) {
            QCOMPARE(rowByBytes(file, start, "needle", forward),
                     rowByEngine(file, start, "needle", forward));
        }
    }
    QCOMPARE(rowByBytes(file, 0, "needle", true), 2);
}

void tst_ViewerSearch::stopsWhenCancelled()
{
    // The long s may be one: every row is looked at, which takes a while.
    ShownFile file(QByteArray("\xc5\xbf\n").repeated(1 << 19));
    bool ran = false;
    const auto later = [&] {
        ran = true;
        file.find.cancel();
    };
    file.setCurrent(0);
    QMetaObject::invokeMethod(&file.find, later, Qt::QueuedConnection);
    QCOMPARE(file.find.findInFile("sq", true), std::optional<bool>(false));
    QVERIFY(ran);
}

void tst_ViewerSearch::fileCutOff()
{
    ShownFile file(QByteArray("a line\n").repeated(2'000'000) + "needle\n");
    QVERIFY(QFile::resize(file.path, 1000));
    // Whatever the model knows of that by now, the search ends.
    file.setCurrent(0);
    QCOMPARE(file.find.findInFile("needle", true), std::optional<bool>(false));
    QTRY_COMPARE(file.model.fileSize(), 1000u);
}

void tst_ViewerSearch::takesTheFirstCell()
{
    ShownFile file("x\nx1\nx\n");
    file.view.hideColumn(0);
    file.setCurrent(0);
    QCOMPARE(file.find.findInFile("1", true), std::optional<bool>(true));
    QCOMPARE(file.view.currentIndex(), file.model.index(1, 1));
    QVERIFY(file.view.selectionModel()->isRowSelected(1, QModelIndex()));
}

void tst_ViewerSearch::looksAtAllRows_data()
{
    QTest::addColumn<QByteArray>("file");
    QTest::addColumn<int>("current"); // −1 for none
    QTest::addColumn<bool>("forward");
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("row"); // −1 for nowhere

    const QByteArray lines = "one\ntwo\nthree\n";
    const QByteArray fields = "1;one\n2;two\n3;three\n";
    for (const QByteArray &file : {lines, fields}) {
        const char *name = file == lines ? "lines" : "fields";
        const auto row = [&](const char *which) -> QTestData & {
            return QTest::addRow("%s, %s", name, which) << file;
        };
        row("first, none current") << -1 << true << "one" << 0;
        row("last, none current") << -1 << true << "three" << 2;
        row("the current one only") << 1 << true << "two" << 1;
        row("others first") << 0 << true << "o" << 1;
        row("nowhere") << 2 << true << "x" << -1;
        row("nowhere, none current") << -1 << true << "x" << -1;
        row("up to the first, none current") << -1 << false << "one" << 0;
        row("up to the last, none current") << -1 << false << "three" << 2;
        row("up to the nearest") << 2 << false << "o" << 1;
        row("up, only below") << 1 << false << "three" << -1;
        row("up, above the first") << 0 << false << "e" << -1;
        row("up, nowhere, none current") << -1 << false << "x" << -1;
    }
    for (const bool forward : {true, false})
        QTest::addRow("only line, none current, %d", forward)
            << QByteArray("only") << -1 << forward << "only" << 0;
    QTest::newRow("only line") << QByteArray("only") << 0 << true << "only" << 0;
    QTest::newRow("no line") << QByteArray() << -1 << true << "only" << -1;
    QTest::newRow("up, no line") << QByteArray() << -1 << false << "only" << -1;
}

//! Nothing that is shown is "Not found".
void tst_ViewerSearch::looksAtAllRows()
{
    QFETCH(QByteArray, file);
    QFETCH(int, current);
    QFETCH(bool, forward);
    QFETCH(QString, text);
    QFETCH(int, row);
    ShownFile shown(file);
    FindPanel panel(&shown.find, nullptr);
    shown.view.setCurrentIndex(shown.model.index(current, 0));
    QCOMPARE(forward ? panel.findNext(text) : panel.findPrev(text), row >= 0);
    QCOMPARE(shown.view.currentIndex().row(), row >= 0 ? row : current);
}

QTEST_MAIN(tst_ViewerSearch)

#include "tst_viewersearch.moc"
