// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "files/delimiter.h"
#include "files/lineindex.h"

#include <QRandomGenerator>
#include <QTest>

namespace {

//! The lines of \a text, found the plain way.
std::vector<LineSpan> plainLines(const QByteArray &text)
{
    std::vector<LineSpan> lines;
    quint64 start = 0;
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (text[i] != '\n')
            continue;
        lines.push_back({start, quint64(i) + 1 - start, true});
        start = quint64(i) + 1;
    }
    if (start < quint64(text.size()))
        lines.push_back({start, quint64(text.size()) - start, false});
    return lines;
}

//! Random text whose lines have up to \a longest bytes.
QByteArray randomText(QRandomGenerator *random, int lines, int longest)
{
    QByteArray text;
    for (int i = 0; i < lines; ++i) {
        text += QByteArray(random->bounded(longest + 1), 'x');
        text += '\n';
    }
    if (random->bounded(2) == 1)
        text += "unfinished";
    return text;
}

//! The index of \a text, scanned in pieces and taken in batches of random size.
LineIndex indexOf(const QByteArray &text, QRandomGenerator *random, const LineSyntax &syntax = {})
{
    LineScanner scanner(std::numeric_limits<qint64>::max(), syntax);
    LineIndex index;
    qsizetype from = 0;
    while (from < text.size()) {
        const qsizetype size = qMin<qsizetype>(random->bounded(1, 5000), text.size() - from);
        scanner.scan(text.constData() + from, std::size_t(size));
        from += size;
        if (random->bounded(3) == 0)
            index.append(scanner.takeBatch());
    }
    index.append(scanner.takeBatch());
    return index;
}

//! Lines that are records, too.
FirstLines always(const QStringList &lines)
{
    return [=](QChar) { return lines; };
}

} // namespace

class tst_ViewerIndex : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void agreesWithPlainSplitter_data();
    void agreesWithPlainSplitter();
    void hasNoLinesWithoutText();
    void growsWithUnterminatedLine();
    void readsWideUnits_data();
    void readsWideUnits();
    void endsLinesAsTold();
    void beginsBehindTheMark();
    void stopsAtMaximum();
    void findsLinesBeyondFourGigabytes();
    void needsLittleMemory();
    void splitsFields_data();
    void splitsFields();
    void recognisesNumbers_data();
    void recognisesNumbers();
    void detectsFormat_data();
    void detectsFormat();
    void obeysRequest();
    void knowsDelimiterNames();
};

void tst_ViewerIndex::agreesWithPlainSplitter_data()
{
    QTest::addColumn<int>("lines");
    QTest::addColumn<int>("longest");
    QTest::newRow("empty lines only") << 1000 << 0;
    QTest::newRow("short lines") << 5000 << 20;
    QTest::newRow("lengths of one and two bytes") << 2000 << 300;
    QTest::newRow("lengths of three bytes") << 64 << 60000;
    QTest::newRow("one line") << 1 << 10;
}

void tst_ViewerIndex::agreesWithPlainSplitter()
{
    QFETCH(int, lines);
    QFETCH(int, longest);
    for (int round = 0; round < 5; ++round) {
        const auto seed = quint32(round + 1);
        qInfo("seed %u", seed);
        QRandomGenerator random(seed);
        const QByteArray text = randomText(&random, lines, longest);
        const std::vector<LineSpan> expected = plainLines(text);
        const LineIndex index = indexOf(text, &random);
        QCOMPARE(index.count(), qint64(expected.size()));
        QCOMPARE(index.bytes(), quint64(text.size()));
        QCOMPARE(index.hasTail(), !text.endsWith('\n'));
        for (std::size_t i = 0; i < expected.size(); ++i)
            QVERIFY2(index.line(qint64(i)) == expected[i], qPrintable(QString::number(i)));
    }
}

void tst_ViewerIndex::hasNoLinesWithoutText()
{
    const LineIndex index;
    QCOMPARE(index.count(), 0);
    QCOMPARE(index.line(0), LineSpan());
    QCOMPARE(index.line(-1), LineSpan());
}

void tst_ViewerIndex::growsWithUnterminatedLine()
{
    LineScanner scanner(100);
    LineIndex index;
    scanner.scan("ab", 2);
    index.append(scanner.takeBatch());
    QCOMPARE(index.line(0), (LineSpan {0, 2, false}));
    scanner.scan("c", 1);
    index.append(scanner.takeBatch());
    QCOMPARE(index.count(), 1);
    QCOMPARE(index.line(0), (LineSpan {0, 3, false}));
    scanner.scan("\nd", 2);
    index.append(scanner.takeBatch());
    QCOMPARE(index.count(), 2);
    QCOMPARE(index.line(0), (LineSpan {0, 4, true}));
    QCOMPARE(index.line(1), (LineSpan {4, 1, false}));
    QCOMPARE(index.line(2), LineSpan());
}

void tst_ViewerIndex::readsWideUnits_data()
{
    QTest::addColumn<int>("bytes");
    QTest::addColumn<bool>("isBigEndian");
    QTest::newRow("2, little") << 2 << false;
    QTest::newRow("2, big") << 2 << true;
    QTest::newRow("4, little") << 4 << false;
    QTest::newRow("4, big") << 4 << true;
}

//! Pieces end anywhere within a unit.
void tst_ViewerIndex::readsWideUnits()
{
    QFETCH(int, bytes);
    QFETCH(bool, isBigEndian);
    const quint32 seed = 1;
    qInfo("seed %u", seed);
    QRandomGenerator random(seed);
    const QByteArray narrow = randomText(&random, 3000, 30);
    QByteArray text;
    for (const char character : narrow) {
        const QByteArray zeros(bytes - 1, '\0');
        text += isBigEndian ? zeros + character : character + zeros;
    }
    text += QByteArray(bytes / 2, 'x'); // part of a unit
    const LineIndex index = indexOf(text, &random, {{bytes, isBigEndian}});
    QCOMPARE(index.bytes(), quint64(text.size()));
    const std::vector<LineSpan> lines = plainLines(narrow + 'x');
    QCOMPARE(index.count(), qint64(lines.size()));
    for (std::size_t i = 0; i + 1 < lines.size(); ++i) {
        const LineSpan line = index.line(qint64(i));
        QCOMPARE(line.offset, lines[i].offset * quint64(bytes));
        QCOMPARE(line.length, lines[i].length * quint64(bytes));
    }
}

void tst_ViewerIndex::endsLinesAsTold()
{
    LineScanner scanner(100, {{}, '\r'});
    scanner.scan("a\rb\nc\rd", 7);
    LineIndex index;
    index.append(scanner.takeBatch());
    QCOMPARE(index.count(), 3);
    QCOMPARE(index.line(1), (LineSpan {2, 4, true}));
    QCOMPARE(index.line(2), (LineSpan {6, 1, false}));
}

void tst_ViewerIndex::beginsBehindTheMark()
{
    LineScanner scanner(100, {{}, '\n', 3});
    LineIndex index;
    index.append(scanner.takeBatch());
    QCOMPARE(index.count(), 0);
    QCOMPARE(index.bytes(), quint64(3));
    scanner.scan("a\nb", 3);
    index.append(scanner.takeBatch());
    QCOMPARE(index.line(0), (LineSpan {3, 2, true}));
    QCOMPARE(index.line(1), (LineSpan {5, 1, false}));
    QCOMPARE(index.lineAt(0), 0);
    QCOMPARE(index.lineAt(5), 1);
}

void tst_ViewerIndex::stopsAtMaximum()
{
    LineScanner scanner(3);
    QVERIFY(scanner.scan("a\nb\nc\n", 6));
    QVERIFY(!scanner.scan("d\n", 2));
    LineIndex index;
    index.append(scanner.takeBatch());
    QCOMPARE(index.count(), 3);
    QCOMPARE(index.bytes(), quint64(6));
}

void tst_ViewerIndex::findsLinesBeyondFourGigabytes()
{
    // One line of 6 GiB, made of a single megabyte scanned again and again.
    constexpr quint64 megabyte = 1 << 20;
    const QByteArray piece(megabyte, 'x');
    LineScanner scanner(100);
    for (int i = 0; i < 6 * 1024; ++i)
        scanner.scan(piece.constData(), megabyte);
    scanner.scan("\nnext\n", 6);
    LineIndex index;
    index.append(scanner.takeBatch());
    QCOMPARE(index.count(), 2);
    QCOMPARE(index.line(0), (LineSpan {0, 6 * 1024 * megabyte + 1, true}));
    QCOMPARE(index.line(1), (LineSpan {6 * 1024 * megabyte + 1, 5, true}));
}

void tst_ViewerIndex::needsLittleMemory()
{
    constexpr int lines = 1'000'000;
    QRandomGenerator random(1);
    const LineIndex shortLines = indexOf(QByteArray(lines, '\n'), &random);
    QCOMPARE(shortLines.count(), lines);
    QVERIFY(shortLines.memory() < 3 * lines / 2);
    const LineIndex longerLines =
        indexOf((QByteArray(199, 'x') + '\n').repeated(lines / 20), &random);
    QVERIFY(longerLines.memory() < 8 * (lines / 20));
}

void tst_ViewerIndex::splitsFields_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<int>("maximum");
    QTest::addColumn<QStringList>("fields");
    QTest::newRow("plain") << "a,b,c" << 0 << QStringList {"a", "b", "c"};
    QTest::newRow("empty line") << "" << 0 << QStringList {""};
    QTest::newRow("empty fields") << ",b,," << 0 << QStringList {"", "b", "", ""};
    QTest::newRow("quoted delimiter") << R"(a,"b,c",d)" << 0 << QStringList {"a", "b,c", "d"};
    QTest::newRow("doubled quotes")
        << R"("say ""yes""",b)" << 0 << QStringList {R"(say "yes")", "b"};
    QTest::newRow("only quotes") << R"("")" << 0 << QStringList {""};
    QTest::newRow("quote inside") << R"(5" pipe,b)" << 0 << QStringList {R"(5" pipe)", "b"};
    QTest::newRow("quote left open") << R"(a,"b,c)" << 0 << QStringList {"a", "b,c"};
    QTest::newRow("text after quote") << R"("a"b,c)" << 0 << QStringList {"ab", "c"};
    QTest::newRow("surplus fields") << "a,b,c,d" << 2 << QStringList {"a", "b,c,d"};
    QTest::newRow("surplus after quotes") << R"(a,"b,c",d)" << 2 << QStringList {"a", R"("b,c",d)"};
    QTest::newRow("no surplus") << R"(a,"b,c")" << 2 << QStringList {"a", "b,c"};
    QTest::newRow("too few") << "a" << 3 << QStringList {"a"};
}

void tst_ViewerIndex::splitsFields()
{
    QFETCH(QString, line);
    QFETCH(int, maximum);
    QFETCH(QStringList, fields);
    QCOMPARE(splitFields(line, u',', maximum), fields);
}

void tst_ViewerIndex::recognisesNumbers_data()
{
    QTest::addColumn<QString>("field");
    QTest::addColumn<bool>("expected");
    for (const char *number : {"0", "-12", "+1.5", "1,234.50", ".5", "1e9", "2.5E-3", " 7 ", "12%"})
        QTest::newRow(number) << QString::fromLatin1(number) << true;
    for (const char *text : {"", "-", "x1", "1x", "2024-01-02", "12:30", "1.", "%", "e9", "NaN"})
        QTest::addRow("\"%s\"", text) << QString::fromLatin1(text) << false;
}

void tst_ViewerIndex::recognisesNumbers()
{
    QFETCH(QString, field);
    QFETCH(bool, expected);
    QCOMPARE(isNumber(field), expected);
}

void tst_ViewerIndex::detectsFormat_data()
{
    QTest::addColumn<QStringList>("lines");
    QTest::addColumn<QString>("delimiter");
    QTest::addColumn<bool>("hasHeader");
    QTest::addColumn<QStringList>("names");
    const QStringList none;
    QTest::newRow("nothing") << none << "" << false << none;
    QTest::newRow("prose") << QStringList {"Dear all,", "thanks for the fish, and bye,", "me"} << ""
                           << false << none;
    QTest::newRow("one line says nothing") << QStringList {"a,b"} << "" << false << none;
    QTest::newRow("comma") << QStringList {"id,name", "1,x"} << "," << true
                           << QStringList {"id", "name"};
    QTest::newRow("semicolons around decimal commas")
        << QStringList {"a;b", "1,5;2,5", "3,5;4,5"} << ";" << true << QStringList {"a", "b"};
    QTest::newRow("tab") << QStringList {"a\tb", "1, 2\t3, 4"} << "\t" << true
                         << QStringList {"a", "b"};
    QTest::newRow("pipe") << QStringList {"a|b|c", "1|2|3"} << "|" << true
                          << QStringList {"a", "b", "c"};
    QTest::newRow("numbers are no header")
        << QStringList {"1,2", "3,4"} << "," << false << QStringList {"1", "2"};
    QTest::newRow("quoted delimiters do not count")
        << QStringList {"a,b", R"("x,y,z",2)"} << "," << true << QStringList {"a", "b"};
    QTest::newRow("one odd line of eleven")
        << (QStringList {"a,b", "1,2,3"} + QStringList(9, "1,2")) << "," << true
        << QStringList {"a", "b", "3"};
    QTest::newRow("two odd lines of eleven")
        << (QStringList {"a,b", "1,2,3", "1"} + QStringList(8, "1,2")) << "" << false << none;
    const QString object = R"({"id": 1, "name": "x"})";
    const QStringList members {"id", "name", "More"};
    QTest::newRow("JSON lines") << QStringList {object, object} << "" << false << members;
    QTest::newRow("one JSON line") << QStringList {object} << "" << false << members;
    QTest::newRow("JSON lines, the last one cut off")
        << QStringList {object, object.left(12)} << "" << false << members;
    QTest::newRow("JSON lines but one of ten")
        << (QStringList(9, object) + QStringList {"a, b"}) << "" << false << members;
    QTest::newRow("JSON lines but two of ten")
        << (QStringList(8, object) + QStringList {"a, b", "c, d"}) << "," << true
        << QStringList {R"({"id": 1)", R"("name": "x"})"};
    QTest::newRow("braces that are no JSON")
        << QStringList {"{a,b}", "{c,d}"} << "," << true << QStringList {"{a", "b}"};
    QTest::newRow("JSON behind a header")
        << QStringList {"id,data", R"(1,"{}")"} << "," << true << QStringList {"id", "data"};
}

void tst_ViewerIndex::detectsFormat()
{
    QFETCH(QStringList, lines);
    QFETCH(QString, delimiter);
    QFETCH(bool, hasHeader);
    QFETCH(QStringList, names);
    const TextFormat format = detectFormat(always(lines));
    QCOMPARE(format.delimiter, delimiter.isEmpty() ? QChar() : delimiter[0]);
    QCOMPARE(format.hasHeader, hasHeader);
    QCOMPARE(format.names, names);
}

void tst_ViewerIndex::obeysRequest()
{
    const FirstLines lines = always({"a,b", "1,2"});
    QVERIFY(!detectFormat(lines, {QChar(), {}}).isDelimited());
    QCOMPARE(detectFormat(lines, {QChar(u'|'), {}}).names, QStringList {"a,b"});
    QCOMPARE(detectFormat(lines, {{}, false}).names, (QStringList {"1", "2"}));
    QVERIFY(detectFormat(always({"1,2", "3,4"}), {{}, true}).hasHeader);
    QVERIFY(!detectFormat(always({}), {QChar(u','), true}).hasHeader);
    const FirstLines objects = always({R"({"a": 1, "b": 2})"});
    QVERIFY(detectFormat(objects).log.kind == LogFormat::Kind::JsonLines);
    QCOMPARE(detectFormat(objects, {QChar(u','), {}}).log, LogFormat());
    QVERIFY(!detectFormat(objects, {QChar(), {}}).hasColumns());
    FormatRequest request;
    request.log = LogFormat::Kind::Syslog;
    QCOMPARE(detectFormat(objects, request).names.last(), QStringLiteral("Message"));
    request.log = LogFormat::Kind::None;
    QVERIFY(!detectFormat(lines, request).hasColumns());
}

void tst_ViewerIndex::knowsDelimiterNames()
{
    QCOMPARE(delimiterFromName("Tab"), QChar(u'\t'));
    QCOMPARE(delimiterFromName("\\t"), QChar(u'\t'));
    QCOMPARE(delimiterFromName(":"), QChar(u':'));
    QCOMPARE(delimiterFromName("none"), QChar());
    QVERIFY(!delimiterFromName("two").has_value());
    QVERIFY(!delimiterFromName("").has_value());
    QVERIFY(!delimiterFromName("\"").has_value());
}

QTEST_GUILESS_MAIN(tst_ViewerIndex)

#include "tst_viewerindex.moc"
