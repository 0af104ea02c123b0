// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "files/recordscanner.h"
#include "files/textsample.h"

#include <QRandomGenerator>
#include <QTest>

#include <limits>

namespace {

constexpr qint64 s_anyNumber = std::numeric_limits<qint64>::max();

//! The records of \a text, found character by character.
QStringList plainRecords(const QString &text, QChar delimiter)
{
    QStringList records;
    bool isQuoted = false;
    bool isFieldStart = true;
    QString record;
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar character = text.at(i);
        record += character;
        if (character == u'"' && isQuoted && i + 1 < text.size() && text.at(i + 1) == u'"')
            record += text.at(++i);
        else if (character == u'"' && (isQuoted || isFieldStart))
            isQuoted = !isQuoted;
        const bool isEnd = character == u'\n' && !isQuoted;
        isFieldStart = !isQuoted && (isEnd || character == delimiter);
        if (isEnd)
            records << std::exchange(record, {});
    }
    return record.isEmpty() ? records : records << record;
}

QByteArray encoded(const QString &text, const Encoding &encoding)
{
    QByteArray bytes;
    for (const QChar character : text)
        bytes += encoding.encode(character);
    return bytes;
}

//! The index of \a text, scanned in pieces of \a pieceSize bytes, or of random size for 0.
LineIndex indexOf(const QByteArray &text, const TextFormat &format, qsizetype pieceSize)
{
    const std::unique_ptr<LineScanner> scanner = makeScanner(format, 0, s_anyNumber);
    LineIndex index;
    QRandomGenerator random(2);
    for (qsizetype from = 0; from < text.size();) {
        const qsizetype wanted = pieceSize > 0 ? pieceSize : random.bounded(1, 9);
        const qsizetype size = qMin(wanted, text.size() - from);
        scanner->scan(text.constData() + from, std::size_t(size));
        from += size;
        index.append(scanner->takeBatch());
    }
    return index;
}

QStringList recordsOf(const LineIndex &index, const QByteArray &text, const Encoding &encoding)
{
    QStringList records;
    for (qint64 i = 0; i < index.count(); ++i) {
        const LineSpan span = index.line(i);
        records << encoding.decode(text.mid(qsizetype(span.offset), qsizetype(span.length)));
    }
    return records;
}

TextFormat commas()
{
    TextFormat format;
    format.delimiter = u',';
    return format;
}

} // namespace

class tst_ViewerRecords : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void keepsTogether_data();
    void keepsTogether();
    void agreesWithPlainSplitter_data();
    void agreesWithPlainSplitter();
    void growsByAnyPiece();
    void givesUpLongRecords_data();
    void givesUpLongRecords();
    void takesLongestRecord();
    void quotesCountAgainBehindTheLine();
    void givesUpAtTheEnd();
    void stopsAtMaximumWithinARecord();
    void needsLittleMemory();
    void detectsColumns_data();
    void detectsColumns();
};

void tst_ViewerRecords::keepsTogether_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<int>("records");
    QTest::newRow("no quotes") << QByteArray("a,b\nc,d\n") << 2;
    QTest::newRow("line break in quotes") << QByteArray("a,\"b\nc\"\nd\n") << 2;
    QTest::newRow("CRLF in quotes") << QByteArray("a,\"b\r\nc\"\r\nd\n") << 2;
    QTest::newRow("first field") << QByteArray("\"a\nb\",c\nd\n") << 2;
    QTest::newRow("two fields") << QByteArray("\"a\nb\",\"\nc\n\"\nd\n") << 2;
    QTest::newRow("doubled quotes") << QByteArray("\"a\"\"\n\"\"b\",c\nd\n") << 2;
    QTest::newRow("empty field") << QByteArray("\"\",c\nd\n") << 2;
    QTest::newRow("quote within a field") << QByteArray("5\" pipe,c\nd\n") << 2;
    QTest::newRow("quote behind a closed one") << QByteArray("\"a\"b\"\nd\n") << 2;
    QTest::newRow("open quote at the end") << QByteArray("a,\"b\nc\n") << 1;
}

void tst_ViewerRecords::keepsTogether()
{
    QFETCH(QByteArray, text);
    QFETCH(int, records);
    for (const qsizetype pieceSize : {1, 2, 3, 100})
        QCOMPARE(indexOf(text, commas(), pieceSize).count(), records);
}

void tst_ViewerRecords::agreesWithPlainSplitter_data()
{
    QTest::addColumn<QString>("encoding");
    QTest::addColumn<QChar>("delimiter");
    QTest::newRow("UTF-8") << "utf-8" << QChar(u',');
    QTest::newRow("UTF-8, delimiter of two bytes") << "utf-8" << QChar(u'§');
    QTest::newRow("UTF-8, delimiter of three bytes") << "utf-8" << QChar(u'€');
    QTest::newRow("Windows-1252") << "cp1252" << QChar(u'§');
    QTest::newRow("UTF-16LE") << "utf-16le" << QChar(u',');
    QTest::newRow("UTF-16BE") << "utf-16be" << QChar(u'§');
    QTest::newRow("UTF-32LE") << "utf-32le" << QChar(u'§');
    QTest::newRow("UTF-32BE") << "utf-32be" << QChar(u',');
}

void tst_ViewerRecords::agreesWithPlainSplitter()
{
    QFETCH(QString, encoding);
    QFETCH(QChar, delimiter);
    const quint32 seed = 1;
    qInfo("seed %u", seed);
    QRandomGenerator random(seed);
    TextFormat format;
    format.encoding = *Encoding::named(encoding);
    format.delimiter = delimiter;
    const QString letters = QStringLiteral("a\"\"\n\r,Ċ") + delimiter + delimiter;
    for (int round = 0; round < 400; ++round) {
        QString text;
        for (int i = random.bounded(60); i > 0; --i)
            text += letters.at(random.bounded(int(letters.size())));
        if (encoding == QLatin1String("cp1252"))
            text.remove(u'Ċ');
        const QByteArray bytes = encoded(text, format.encoding);
        const LineIndex index = indexOf(bytes, format, random.bounded(2) * 1000);
        QCOMPARE(recordsOf(index, bytes, format.encoding), plainRecords(text, delimiter));
        QCOMPARE(index.givenUp(), 0);
    }
}

void tst_ViewerRecords::growsByAnyPiece()
{
    const std::unique_ptr<LineScanner> scanner = makeScanner(commas(), 0, s_anyNumber);
    LineIndex index;
    const auto add = [&](const QByteArray &more) {
        scanner->scan(more.constData(), std::size_t(more.size()));
        index.append(scanner->takeBatch());
    };
    add("a,\"b\n");
    QCOMPARE(index.count(), 1);
    QCOMPARE(index.line(0), (LineSpan {0, 5, false}));
    add("c\"");
    QCOMPARE(index.line(0), (LineSpan {0, 7, false}));
    add("\"\n");
    QCOMPARE(index.count(), 1);
    add("\"");
    add("\nd");
    QCOMPARE(index.count(), 2);
    QCOMPARE(index.line(0), (LineSpan {0, 11, true}));
    QCOMPARE(index.line(1), (LineSpan {11, 1, false}));
}

void tst_ViewerRecords::givesUpLongRecords_data()
{
    QTest::addColumn<QByteArray>("line");
    QTest::addColumn<int>("count");
    QTest::newRow("many lines") << QByteArray("x,y\n") << 30'000;
    QTest::newRow("empty lines") << QByteArray("\n") << 30'000;
    QTest::newRow("long lines") << QByteArray(70'000, 'x') + '\n' << 40;
    QTest::newRow("a line beyond the limit") << QByteArray(3'000'000, 'x') + '\n' << 2;
}

//! Nothing is lost, and it does not matter in which pieces the text comes.
void tst_ViewerRecords::givesUpLongRecords()
{
    QFETCH(QByteArray, line);
    QFETCH(int, count);
    const QByteArray open = "a,\"b\n";
    const QByteArray text = "one,two\n" + open + line.repeated(count) + "three,four";
    for (const qsizetype pieceSize : {997, 65'536, 1 << 20, 10'000'000}) {
        const LineIndex index = indexOf(text, commas(), pieceSize);
        QCOMPARE(index.count(), count + 3);
        QCOMPARE(index.bytes(), quint64(text.size()));
        QCOMPARE(index.givenUp(), 1);
        QCOMPARE(index.line(1), (LineSpan {8, quint64(open.size()), true}));
        for (int i = 0; i < count; ++i) {
            const LineSpan span = index.line(i + 2);
            QCOMPARE(span.length, quint64(line.size()));
            QCOMPARE(span.offset, quint64(8 + open.size() + i * line.size()));
        }
    }
}

//! One byte, or one line, more is too much.
void tst_ViewerRecords::takesLongestRecord()
{
    const auto isGivenUp = [](const QByteArray &inside, qsizetype pieceSize) {
        const QByteArray text = '"' + inside + "\"\nx\n";
        const LineIndex index = indexOf(text, commas(), pieceSize);
        return index.givenUp() == 1;
    };
    const auto longest = qsizetype(RecordScanner::maximumBytes) - 1;
    const auto mostLines = qsizetype(RecordScanner::maximumInnerLines);
    for (const qsizetype pieceSize : {4096, 1 << 20, 4 << 20}) {
        QVERIFY(!isGivenUp(QByteArray(longest, 'x'), pieceSize));
        QVERIFY(isGivenUp(QByteArray(longest + 1, 'x'), pieceSize));
        QVERIFY(!isGivenUp(QByteArray(mostLines, '\n'), pieceSize));
        QVERIFY(isGivenUp(QByteArray(mostLines + 1, '\n'), pieceSize));
    }
}

void tst_ViewerRecords::quotesCountAgainBehindTheLine()
{
    const QByteArray text = '"' + QByteArray(2'000'000, 'x') + ",\"y\n" + "a,\"b\nc\"\n" + "d";
    const LineIndex index = indexOf(text, commas(), 100'000);
    QCOMPARE(index.count(), 3);
    QCOMPARE(index.line(1).length, quint64(8));
    QCOMPARE(index.givenUp(), 1);
}

void tst_ViewerRecords::givesUpAtTheEnd()
{
    const auto rows = [](const QByteArray &text) {
        const std::unique_ptr<LineScanner> scanner = makeScanner(commas(), 0, s_anyNumber);
        scanner->scan(text.constData(), std::size_t(text.size()));
        scanner->finish();
        LineIndex index;
        index.append(scanner->takeBatch());
        return recordsOf(index, text, {});
    };
    QCOMPARE(rows("a,\"b\nc\nd"), (QStringList {"a,\"b\n", "c\n", "d"}));
    QCOMPARE(rows("a,\"b\nc\n"), (QStringList {"a,\"b\n", "c\n"}));
    QCOMPARE(rows("a,\"b\nc\""), (QStringList {"a,\"b\nc\""}));
    QCOMPARE(rows("a,b\nc"), (QStringList {"a,b\n", "c"}));
    QCOMPARE(rows("\""), (QStringList {"\""}));
}

void tst_ViewerRecords::stopsAtMaximumWithinARecord()
{
    const QByteArray text = "a\n\"" + QByteArray(20'000, '\n');
    const std::unique_ptr<LineScanner> scanner = makeScanner(commas(), 0, 100);
    QVERIFY(!scanner->scan(text.constData(), std::size_t(text.size())));
    LineIndex index;
    index.append(scanner->takeBatch());
    QCOMPARE(index.count(), 100);
    QCOMPARE(index.bytes(), quint64(102));
}

void tst_ViewerRecords::needsLittleMemory()
{
    constexpr int records = 500'000;
    const LineIndex index =
        indexOf(QByteArray("a,\"b\nc\"\n").repeated(records), commas(), 1 << 20);
    QCOMPARE(index.count(), records);
    QVERIFY(index.memory() < 3 * records / 2);
}

void tst_ViewerRecords::detectsColumns_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QString>("delimiter");
    QTest::addColumn<QStringList>("names");
    const QStringList names {"a", "b"};
    QTest::newRow("line breaks in every record")
        << QByteArray("a,b\n\"1\n2\n3\",4\n\"5\n6\",7\n") << "," << names;
    QTest::newRow("line break in the header")
        << QByteArray("a,\"b\nc\"\n1,2\n") << "," << QStringList {"a", "b\u240ac"};
    QTest::newRow("a record longer than the sample")
        << "a,b\n1,2\n3,\"" + (QByteArray(99, 'x') + "\n").repeated(1000) << "," << names;
    QTest::newRow("quote left open in the header's line")
        << "a,\"b\n" + QByteArray("1,2\n").repeated(50'000) << "," << names;
    QTest::newRow("prose in quotes")
        << QByteArray("\"Yes,\" he said.\n\"No\nway.\"\n") << "" << QStringList();
    QTest::newRow("JSON") << QByteArray("{\"a\":\"x\",\"b\":1}\n").repeated(3) << ""
                          << QStringList {"a", "b", "More"};
}

void tst_ViewerRecords::detectsColumns()
{
    QFETCH(QByteArray, text);
    QFETCH(QString, delimiter);
    QFETCH(QStringList, names);
    const TextFormat format = TextSample(text.left(TextSample::maximumBytes)).format({});
    QCOMPARE(format.delimiter, delimiter.isEmpty() ? QChar() : delimiter[0]);
    QCOMPARE(format.names, names);
}

QTEST_GUILESS_MAIN(tst_ViewerRecords)

#include "tst_viewerrecords.moc"
