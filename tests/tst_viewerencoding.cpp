// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "files/encoding.h"

#include <QRandomGenerator>
#include <QStringEncoder>
#include <QTest>

class tst_ViewerEncoding : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void recognises_data();
    void recognises();
    void knowsNames_data();
    void knowsNames();
    void decodes_data();
    void decodes();
    void encodesWhatItDecodes_data();
    void encodesWhatItDecodes();
    void showsAllBytesOfWindows1252();
    void hidesMarks_data();
    void hidesMarks();
    void leavesOutCutCharacters_data();
    void leavesOutCutCharacters();
    void searchesBytesOfSome_data();
    void searchesBytesOfSome();
    void findsUnits_data();
    void findsUnits();
};

void tst_ViewerEncoding::recognises_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("name");
    QTest::newRow("nothing") << QByteArray() << "ASCII";
    QTest::newRow("ASCII") << QByteArray("abc\n") << "ASCII";
    QTest::newRow("UTF-8") << QByteArray("\xc3\xa4") << "UTF-8";
    QTest::newRow("UTF-8 by its mark") << QByteArray("\xef\xbb\xbf\xff") << "UTF-8";
    QTest::newRow("UTF-8, the last character cut off") << QByteArray("\xc3\xa4\xe2\x82") << "UTF-8";
    QTest::newRow("cut off within") << QByteArray("\xe2\x82 a") << "Windows-1252";
    QTest::newRow("accented letter of one byte") << QByteArray("\xe4 b") << "Windows-1252";
    QTest::newRow("UTF-16LE") << QByteArray("\xff\xfe"
                                            "a\0",
                                            4)
                              << "UTF-16LE";
    QTest::newRow("UTF-16BE") << QByteArray("\xfe\xff\0a", 4) << "UTF-16BE";
    QTest::newRow("UTF-32LE") << QByteArray("\xff\xfe\0\0a\0\0\0", 8) << "UTF-32LE";
    QTest::newRow("UTF-32BE") << QByteArray("\0\0\xfe\xff\0\0\0a", 8) << "UTF-32BE";
    QTest::newRow("nothing but a mark") << QByteArray("\xff\xfe") << "UTF-16LE";
    QTest::newRow("half a mark") << QByteArray("\xff") << "Windows-1252";
}

void tst_ViewerEncoding::recognises()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QString, name);
    QCOMPARE(Encoding::of(bytes).name(), name);
}

void tst_ViewerEncoding::knowsNames_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("shown");
    QTest::newRow("utf-8") << "utf-8"
                           << "UTF-8";
    QTest::newRow("upper case") << "UTF-8"
                                << "UTF-8";
    QTest::newRow("without hyphen") << "utf8"
                                    << "UTF-8";
    QTest::newRow("utf-16le") << "utf-16le"
                              << "UTF-16LE";
    QTest::newRow("utf-16be") << "utf-16be"
                              << "UTF-16BE";
    QTest::newRow("utf-32le") << "utf-32le"
                              << "UTF-32LE";
    QTest::newRow("utf-32be") << "utf-32be"
                              << "UTF-32BE";
    QTest::newRow("latin-1") << "latin-1"
                             << "ISO-8859-1";
    QTest::newRow("its other name") << "iso-8859-1"
                                    << "ISO-8859-1";
    QTest::newRow("cp1252") << "cp1252"
                            << "Windows-1252";
    QTest::newRow("its long name") << "windows-1252"
                                   << "Windows-1252";
    QTest::newRow("unknown") << "nonsense" << QString();
    QTest::newRow("none") << "" << QString();
    QTest::newRow("not ASCII") << "ütf-8" << QString();
    QTest::newRow("several bytes a character") << "shift_jis" << QString();
    QTest::newRow("no ASCII in it") << "cp037" << QString();
    QTest::newRow("order of bytes left open") << "utf-16" << QString();
}

void tst_ViewerEncoding::knowsNames()
{
    QFETCH(QString, name);
    QFETCH(QString, shown);
    const std::optional<Encoding> encoding = Encoding::named(name);
    QCOMPARE(encoding.has_value(), !shown.isEmpty());
    if (encoding)
        QCOMPARE(encoding->name(), shown);
}

void tst_ViewerEncoding::decodes_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("text");
    const QString wrong(QChar(0xfffd));
    QTest::newRow("UTF-8") << "utf-8" << QByteArray("\xc3\xa4") << QString("ä");
    QTest::newRow("UTF-8, not valid") << "utf-8" << QByteArray("\xe4") << wrong;
    QTest::newRow("UTF-16LE") << "utf-16le" << QByteArray("\xe4\0\x3d\xd8\0\xde", 6)
                              << QString("ä😀");
    QTest::newRow("UTF-16BE") << "utf-16be" << QByteArray("\0\xe4\xd8\x3d\xde\0", 6)
                              << QString("ä😀");
    QTest::newRow("UTF-16, half a unit") << "utf-16le" << QByteArray("a\0b", 3) << "a" + wrong;
    QTest::newRow("UTF-32LE") << "utf-32le" << QByteArray("\0\xf6\1\0", 4) << QString("😀");
    QTest::newRow("UTF-32BE") << "utf-32be" << QByteArray("\0\1\xf6\0", 4) << QString("😀");
    QTest::newRow("UTF-32, no character")
        << "utf-32le" << QByteArray("\xff\xff\xff\x7f", 4) << wrong;
    QTest::newRow("UTF-32, a surrogate") << "utf-32be" << QByteArray("\0\0\xd8\0", 4) << wrong;
    QTest::newRow("UTF-32, part of a unit")
        << "utf-32le" << QByteArray("a\0\0\0b\0", 6) << "a" + wrong;
    QTest::newRow("Latin-1") << "latin-1" << QByteArray("a\x80\xe4") << QString("a\u0080ä");
    QTest::newRow("Windows-1252") << "cp1252" << QByteArray("\x80 \x93x\x94 \xe4\xff")
                                  << QString("€ “x” äÿ");
    QTest::newRow("nothing") << "cp1252" << QByteArray() << QString();
}

void tst_ViewerEncoding::decodes()
{
    QFETCH(QString, name);
    QFETCH(QByteArray, bytes);
    QFETCH(QString, text);
    QCOMPARE(Encoding::named(name)->decode(bytes), text);
}

void tst_ViewerEncoding::encodesWhatItDecodes_data()
{
    QTest::addColumn<QString>("name");
    for (const char *name :
         {"utf-8", "utf-16le", "utf-16be", "utf-32le", "utf-32be", "latin-1", "cp1252"})
        QTest::newRow(name) << QString::fromLatin1(name);
}

void tst_ViewerEncoding::encodesWhatItDecodes()
{
    QFETCH(QString, name);
    const Encoding encoding = *Encoding::named(name);
    for (const QChar character : QStringLiteral(",|\t§ä")) {
        const QByteArray bytes = encoding.encode(character);
        QCOMPARE(bytes.size() % encoding.units().bytes, 0);
        QCOMPARE(encoding.decode(bytes), QString(character));
    }
    const bool hasEuro = name != QLatin1String("latin-1");
    QCOMPARE(encoding.decode(encoding.encode(u'€')), hasEuro ? QString("€") : QString());
}

void tst_ViewerEncoding::showsAllBytesOfWindows1252()
{
    const Encoding encoding = *Encoding::named("cp1252");
    int undefined = 0;
    for (int i = 0; i < 256; ++i) {
        const char byte = char(i);
        const QString text = encoding.decode({&byte, 1});
        QCOMPARE(text.size(), 1);
        undefined += text.front() == QChar(0xfffd) ? 1 : 0;
        if (i < 0x80 || i >= 0xa0)
            QCOMPARE(text.front(), QChar(i));
        else
            QVERIFY(text.front().unicode() > 0xff);
    }
    QCOMPARE(undefined, 5);
}

void tst_ViewerEncoding::hidesMarks_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("mark");
    QTest::newRow("UTF-8") << "utf-8" << QByteArray("\xef\xbb\xbf");
    QTest::newRow("UTF-16LE") << "utf-16le" << QByteArray("\xff\xfe");
    QTest::newRow("UTF-16BE") << "utf-16be" << QByteArray("\xfe\xff");
    QTest::newRow("UTF-32LE") << "utf-32le" << QByteArray("\xff\xfe\0\0", 4);
    QTest::newRow("UTF-32BE") << "utf-32be" << QByteArray("\0\0\xfe\xff", 4);
}

void tst_ViewerEncoding::hidesMarks()
{
    QFETCH(QString, name);
    QFETCH(QByteArray, mark);
    const Encoding encoding = *Encoding::named(name);
    QCOMPARE(encoding.decode(mark + encoding.encode(u'a')), "a");
    QCOMPARE(encoding.markLength(mark + "a"), mark.size());
    QCOMPARE(encoding.markLength(mark.chopped(1)), 0);
    QCOMPARE(encoding.markLength("abcd"), 0);
    QCOMPARE(Encoding::named("cp1252")->markLength(mark), 0);
}

void tst_ViewerEncoding::leavesOutCutCharacters_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<int>("left");
    QTest::newRow("UTF-8") << "utf-8" << QByteArray("a\xe2\x82") << 1;
    QTest::newRow("UTF-8, one byte of four") << "utf-8" << QByteArray("a\xf0") << 1;
    QTest::newRow("UTF-8, nothing cut") << "utf-8" << QByteArray("ab") << 2;
    QTest::newRow("UTF-16, half a unit") << "utf-16le" << QByteArray("a\0b", 3) << 2;
    QTest::newRow("UTF-16LE, half a pair") << "utf-16le" << QByteArray("a\0\x3d\xd8", 4) << 2;
    QTest::newRow("UTF-16BE, half a pair") << "utf-16be" << QByteArray("\0a\xd8\x3d", 4) << 2;
    QTest::newRow("UTF-16, a pair") << "utf-16le" << QByteArray("\x3d\xd8\0\xde", 4) << 4;
    QTest::newRow("UTF-16, one byte") << "utf-16le" << QByteArray("a") << 0;
    QTest::newRow("UTF-32") << "utf-32le" << QByteArray("a\0\0\0b\0\0", 7) << 4;
    QTest::newRow("one byte each") << "cp1252" << QByteArray("a\xe2\x82") << 3;
}

void tst_ViewerEncoding::leavesOutCutCharacters()
{
    QFETCH(QString, name);
    QFETCH(QByteArray, bytes);
    QFETCH(int, left);
    QCOMPARE(Encoding::named(name)->withoutPartialCharacter(bytes).size(), left);
}

void tst_ViewerEncoding::searchesBytesOfSome_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("expected");
    QTest::newRow("UTF-8") << "utf-8" << true;
    QTest::newRow("Latin-1") << "latin-1" << true;
    QTest::newRow("Windows-1252") << "cp1252" << true;
    QTest::newRow("UTF-16LE") << "utf-16le" << false;
    QTest::newRow("UTF-32BE") << "utf-32be" << false;
}

void tst_ViewerEncoding::searchesBytesOfSome()
{
    QFETCH(QString, name);
    QFETCH(bool, expected);
    QCOMPARE(Encoding::named(name)->isAsciiSearchable(), expected);
}

void tst_ViewerEncoding::findsUnits_data()
{
    QTest::addColumn<int>("size");
    QTest::addColumn<bool>("isBigEndian");
    QTest::newRow("1") << 1 << false;
    QTest::newRow("2, little") << 2 << false;
    QTest::newRow("2, big") << 2 << true;
    QTest::newRow("4, little") << 4 << false;
    QTest::newRow("4, big") << 4 << true;
}

//! Against looking at every unit, in bytes most of which look like a part of it.
void tst_ViewerEncoding::findsUnits()
{
    QFETCH(int, size);
    QFETCH(bool, isBigEndian);
    const TextUnits units {size, isBigEndian};
    const quint32 seed = 1;
    qInfo("seed %u", seed);
    QRandomGenerator random(seed);
    for (int round = 0; round < 2000; ++round) {
        QByteArray bytes(random.bounded(24), '\0');
        for (char &byte : bytes)
            byte = random.bounded(3) == 0 ? '\n' : '\0';
        qsizetype expected = bytes.size();
        for (qsizetype i = bytes.size() / size * size - size; i >= 0; i -= size) {
            QByteArray unit(size, '\0');
            unit[isBigEndian ? size - 1 : 0] = '\n';
            if (bytes.mid(i, size) == unit)
                expected = i;
        }
        const char *const begin = bytes.constData();
        QCOMPARE(units.find(begin, begin + bytes.size(), '\n') - begin, expected);
    }
}

QTEST_GUILESS_MAIN(tst_ViewerEncoding)

#include "tst_viewerencoding.moc"
