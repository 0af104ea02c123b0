// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "findtables.h"
#include "styleditemdelegate.h"

#include <QDateTime>
#include <QItemDelegate>
#include <QRandomGenerator>
#include <QStandardItemModel>
#include <QStyledItemDelegate>
#include <QTableView>
#include <QTest>
#include <QTimeZone>

#include <limits>

Q_DECLARE_METATYPE(QLocale)

class tst_FindRules : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void acceptsText_data();
    void acceptsText();
    void tellsCaseApart_data();
    void tellsCaseApart();
    void acceptsNumber_data();
    void acceptsNumber();
    void numberTypes_data();
    void numberTypes();
    void quickNumbersEqualShownOnes_data();
    void quickNumbersEqualShownOnes();
    void delegateOfTheColumnFirst();
    void delegateThatIsNotStyled();
    void dateTimesAsShown();
    void lineBreaks();
    void ownRule();
    void ownRuleThatSplitsTheText();
    void farColumns();
    void foreignIndex();
};

void tst_FindRules::initTestCase()
{
    QLocale::setDefault(QLocale::c());
}

void tst_FindRules::acceptsText_data()
{
    QTest::addColumn<QString>("cell");
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("isFound");

    QTest::newRow("other case") << utf8("xabcx") << utf8("ABC") << true;
    QTest::newRow("whole") << utf8("abc") << utf8("abc") << true;
    QTest::newRow("too long") << utf8("ab") << utf8("abc") << false;
    QTest::newRow("other") << utf8("abd") << utf8("abc") << false;
    QTest::newRow("empty text") << utf8("abc") << utf8("") << true;
    QTest::newRow("empty cell") << utf8("") << utf8("a") << false;
    QTest::newRow("repeated start") << utf8("aaab") << utf8("aab") << true;
    QTest::newRow("no pattern") << utf8("axb") << utf8("a.b") << false;
    QTest::newRow("spaces count") << utf8("12 345") << utf8("12345") << false;
    QTest::newRow("the same spaces") << utf8("12 345") << utf8("12 3") << true;
    QTest::newRow("cyrillic") << utf8("Привет") << utf8("пРИВ") << true;
    QTest::newRow("final sigma") << utf8("ΟΔΟΣ") << utf8("οδος") << true;
    QTest::newRow("kelvin sign") << utf8("300 \u212a") << utf8("k") << true;
    QTest::newRow("long s") << utf8("Wa\u017fer") << utf8("WASER") << true;
    QTest::newRow("beyond the basic plane") << utf8("x\U00010400y") << utf8("\U00010428") << true;
    QTest::newRow("half a character") << utf8("\U0001F600") << QString(QChar(0xde00)) << true;
    QTest::newRow("long") << QString(1000, u'a') + u'B' << utf8("aab") << true;
    QTest::newRow("long, other") << QString(1000, u'a') << utf8("aab") << false;
    QTest::newRow("accents differ") << utf8("cafe") << utf8("café") << false;
}

void tst_FindRules::acceptsText()
{
    QFETCH(QString, cell);
    QFETCH(QString, text);
    QFETCH(bool, isFound);
    // What Qt itself says is the measure.
    QCOMPARE(cell.contains(text, Qt::CaseInsensitive), isFound);

    Table table {{cell}};
    QCOMPARE(table.find.acceptsData(cell, text, 0), isFound);
    QCOMPARE(table.find.acceptsIndex(table.model.index(0, 0), text), isFound);
    QCOMPARE(table.find.findIncremental(text), isFound);
    StyledItemDelegate delegate(&table.view);
    table.view.setItemDelegate(&delegate);
    QCOMPARE(table.find.findIncremental(text), isFound);
    table.view.setItemDelegate(nullptr);
    QCOMPARE(table.find.findIncremental(text), isFound);
}

void tst_FindRules::tellsCaseApart_data()
{
    acceptsText_data();
}

void tst_FindRules::tellsCaseApart()
{
    QFETCH(QString, cell);
    QFETCH(QString, text);
    QFETCH(bool, isFound);
    const bool isFoundApart = cell.contains(text, Qt::CaseSensitive);

    Table table {{cell}};
    QCOMPARE(table.find.caseSensitivity(), Qt::CaseInsensitive);
    QVERIFY(table.find.setProperty("caseSensitivity", QVariant::fromValue(Qt::CaseSensitive)));
    QCOMPARE(table.find.caseSensitivity(), Qt::CaseSensitive);
    QCOMPARE(table.find.acceptsData(cell, text, 0), isFoundApart);
    QCOMPARE(table.find.acceptsIndex(table.model.index(0, 0), text), isFoundApart);
    QCOMPARE(table.find.findIncremental(text), isFoundApart);
    table.find.setCaseSensitivity(Qt::CaseInsensitive);
    QCOMPARE(table.find.acceptsData(cell, text, 0), isFound);
    QCOMPARE(table.find.findIncremental(text), isFound);
}

void tst_FindRules::acceptsNumber_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<QLocale>("locale");
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("isFound");

    const QLocale english(QLocale::English, QLocale::UnitedStates);
    const QLocale russian(QLocale::Russian, QLocale::Russia);
    const QLocale german(QLocale::German, QLocale::Germany);
    const QLocale arabic(QLocale::Arabic, QLocale::Egypt);
    const QLocale swedish(QLocale::Swedish, QLocale::Sweden);
    QTest::newRow("grouped, plain text") << QVariant(1234) << english << utf8("1234") << true;
    QTest::newRow("grouped, spaced text") << QVariant(1234) << english << utf8("1 234") << true;
    QTest::newRow("grouped, grouped text") << QVariant(1234) << english << utf8("1,234") << true;
    QTest::newRow("separators anywhere") << QVariant(1234) << english << utf8("1 2,3,4") << true;
    QTest::newRow("part") << QVariant(1234) << english << utf8("23") << true;
    QTest::newRow("other") << QVariant(1234) << english << utf8("24") << false;
    QTest::newRow("separators alone") << QVariant(1234) << english << utf8(" ,") << true;
    QTest::newRow("negative") << QVariant(-1234) << english << utf8("-1234") << true;
    QTest::newRow("12 345,5 plain") << QVariant(12345.5) << russian << utf8("12345") << true;
    QTest::newRow("12 345,5 spaced") << QVariant(12345.5) << russian << utf8("12 345") << true;
    QTest::newRow("12 345,5 with the comma")
        << QVariant(12345.5) << russian << utf8("2345,") << true;
    QTest::newRow("12 345,5 with a point")
        << QVariant(12345.5) << russian << utf8("2345.") << false;
    QTest::newRow("german point groups") << QVariant(12345.5) << german << utf8("12.345,5") << true;
    QTest::newRow("german comma") << QVariant(12345.5) << german << utf8("345,5") << true;
    QTest::newRow("arabic digits") << QVariant(1234) << arabic << arabic.toString(1234) << true;
    QTest::newRow("arabic, latin digits") << QVariant(1234) << arabic << utf8("1234") << false;
    QTest::newRow("swedish minus") << QVariant(-5) << swedish
                                   << utf8("\u2212"
                                           "5")
                                   << true;
    QTest::newRow("swedish, hyphen") << QVariant(-5) << swedish << utf8("-5") << false;
    QTest::newRow("exponent") << QVariant(1e30) << english << english.toString(1e30) << true;
    QTest::newRow("six digits") << QVariant(0.12345678) << english << utf8("0.123457") << true;
    QTest::newRow("not more digits")
        << QVariant(0.12345678) << english << utf8("0.1234567") << false;
    QTest::newRow("not a number") << QVariant(std::numeric_limits<double>::quiet_NaN()) << english
                                  << utf8("NAN") << true;
    QTest::newRow("infinite") << QVariant(std::numeric_limits<double>::infinity()) << german
                              << german.toString(std::numeric_limits<double>::infinity()) << true;
}

void tst_FindRules::acceptsNumber()
{
    QFETCH(QVariant, value);
    QFETCH(QLocale, locale);
    QFETCH(QString, text);
    QFETCH(bool, isFound);

    Table table {{value}};
    table.view.setLocale(locale);
    QCOMPARE(table.find.acceptsData(value, text, 0), isFound);
    QCOMPARE(table.find.findIncremental(text), isFound);
}

void tst_FindRules::numberTypes_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<bool>("isNumber");

    QTest::newRow("int") << QVariant(1234) << true;
    QTest::newRow("uint") << QVariant(1234u) << true;
    QTest::newRow("long long") << QVariant(1234ll) << true;
    QTest::newRow("unsigned long long") << QVariant(1234ull) << true;
    QTest::newRow("double") << QVariant(1234.0) << true;
    QTest::newRow("float") << QVariant(1234.0f) << false;
    QTest::newRow("short") << QVariant::fromValue<short>(1234) << false;
    QTest::newRow("unsigned short") << QVariant::fromValue<ushort>(1234) << false;
    QTest::newRow("long") << QVariant::fromValue<long>(1234) << false;
    QTest::newRow("string") << QVariant("1234") << false;
}

void tst_FindRules::numberTypes()
{
    QFETCH(QVariant, value);
    QFETCH(bool, isNumber);

    Table table {{value}};
    table.view.setLocale(QLocale(QLocale::English, QLocale::UnitedStates));
    QCOMPARE(table.find.acceptsData(value, utf8("1 2 3 4"), 0), isNumber);
    QCOMPARE(table.find.findIncremental(utf8("1 2 3 4")), isNumber);
}

void tst_FindRules::quickNumbersEqualShownOnes_data()
{
    QTest::addColumn<QLocale>("locale");

    QTest::newRow("C") << QLocale::c();
    QTest::newRow("en") << QLocale(QLocale::English, QLocale::UnitedStates);
    QTest::newRow("de") << QLocale(QLocale::German, QLocale::Germany);
    QTest::newRow("de_CH") << QLocale(QLocale::German, QLocale::Switzerland);
    QTest::newRow("ru") << QLocale(QLocale::Russian, QLocale::Russia);
    QTest::newRow("sv") << QLocale(QLocale::Swedish, QLocale::Sweden);
    QTest::newRow("ar_EG") << QLocale(QLocale::Arabic, QLocale::Egypt);
    QTest::newRow("fa") << QLocale(QLocale::Persian, QLocale::Iran);
    QTest::newRow("he") << QLocale(QLocale::Hebrew, QLocale::Israel);
    QTest::newRow("hi") << QLocale(QLocale::Hindi, QLocale::India);
    QTest::newRow("pl") << QLocale(QLocale::Polish, QLocale::Poland);
}

//! A delegate of another class is always asked for the text; Qt's own need not be. What
//! both accept must be the same.
void tst_FindRules::quickNumbersEqualShownOnes()
{
    class Asked : public QStyledItemDelegate
    {
    };
    QFETCH(QLocale, locale);
    const quint32 seed = 4711;
    qInfo("seed %u", seed);
    QRandomGenerator random(seed);

    Table quick {{0}};
    Table shown {{0}};
    Asked delegate;
    shown.view.setItemDelegate(&delegate);
    quick.view.setLocale(locale);
    shown.view.setLocale(locale);
    QVariantList values {0,
                         -0.0,
                         0.0,
                         1,
                         -1,
                         1e5,
                         1e6,
                         999999.5,
                         999999.4,
                         1e-4,
                         1e-5,
                         0.5,
                         std::numeric_limits<int>::min(),
                         std::numeric_limits<uint>::max(),
                         std::numeric_limits<qlonglong>::min(),
                         std::numeric_limits<qulonglong>::max(),
                         100000.5,
                         -123456.75};
    for (int i = 0; i < 500; ++i) {
        const int shift = random.bounded(64);
        values << qlonglong(random.generate64() >> shift)
               << qulonglong(random.generate64() >> shift) << int(random.generate())
               << random.generate() << double(qint64(random.generate64() >> shift)) / 100
               << (random.generateDouble() - 0.5) * 20;
    }
    for (const QVariant &value : values) {
        const QString full = delegate.displayText(value, locale);
        QString number = full;
        QString separator = locale.groupSeparator();
        Engine::trim(number, separator);
        const QStringList texts {full,
                                 number + u'0',
                                 number.mid(1, 3),
                                 number.right(2),
                                 locale.decimalPoint(),
                                 locale.negativeSign(),
                                 utf8("1")};
        quick.model.item(0)->setData(value, Qt::DisplayRole);
        shown.model.item(0)->setData(value, Qt::DisplayRole);
        for (const QString &text : texts) {
            const bool isFound = quick.find.findIncremental(text);
            QVERIFY2(isFound == shown.find.findIncremental(text),
                     qPrintable(full + QStringLiteral(" / ") + text));
        }
        QVERIFY(quick.find.findIncremental(full));
    }
}

void tst_FindRules::delegateOfTheColumnFirst()
{
    class Named : public QStyledItemDelegate
    {
    public:
        explicit Named(const QString &name)
            : m_name(name)
        {
        }
        QString displayText(const QVariant &value, const QLocale &) const override
        {
            return m_name + value.toString();
        }

    private:
        QString m_name;
    };
    Table table {{"a", "a", 1}};
    Named view(utf8("view "));
    Named column(utf8("column "));
    table.view.setItemDelegate(&view);
    table.view.setItemDelegateForColumn(1, &column);
    QVERIFY(table.find.acceptsData(utf8("a"), utf8("VIEW A"), 0));
    QVERIFY(table.find.acceptsData(utf8("a"), utf8("COLUMN A"), 1));
    QVERIFY(!table.find.acceptsData(utf8("a"), utf8("VIEW A"), 1));
    QVERIFY(table.find.acceptsData(1, utf8("vi ew1"), 2));
    QVERIFY(table.find.findIncremental(utf8("column a")));
    QCOMPARE(table.current(), Cell(0, 1));
    table.setCurrent(0, 0);
    QVERIFY(table.find.findIncremental(utf8("view1")));
    QCOMPARE(table.current(), Cell(0, 2));
}

void tst_FindRules::delegateThatIsNotStyled()
{
    Table table {{12345, utf8("b")}};
    table.view.setLocale(QLocale(QLocale::English, QLocale::UnitedStates));
    QItemDelegate plain;
    StyledItemDelegate styled(&table.view);
    table.view.setItemDelegateForColumn(0, &plain);
    table.view.setItemDelegate(&styled);
    // Not of the styled kind: the view's counts.
    QVERIFY(table.find.findIncremental(utf8("12,345")));
    table.view.setItemDelegate(&plain);
    QVERIFY(table.find.findIncremental(utf8("12,345")));
    QVERIFY(table.find.findIncremental(utf8("B")));
    // Without one a number is not grouped, and precise.
    QVERIFY(table.find.acceptsData(0.12345678, utf8("0.12345678"), 0));
    table.view.setItemDelegate(nullptr);
    QVERIFY(table.find.acceptsData(0.12345678, utf8("0.12345678"), 0));
}

void tst_FindRules::dateTimesAsShown()
{
    const QDateTime evening(QDate(2024, 5, 7), QTime(21, 43, 5), QTimeZone::utc());
    Table table {{evening}};
    StyledItemDelegate delegate(&table.view);
    table.view.setItemDelegate(&delegate);
    const QString shown = delegate.displayText(evening, table.view.locale());
    QVERIFY(shown.contains(utf8("21:43")));
    QVERIFY(table.find.findIncremental(shown));
    QVERIFY(table.find.findIncremental(utf8("21:43")));
    QVERIFY(!table.find.findIncremental(evening.toString(Qt::ISODateWithMs)));
    // As Qt's delegate writes it, the view's locale counts.
    QStyledItemDelegate plain;
    table.view.setItemDelegate(&plain);
    table.view.setLocale(QLocale(QLocale::English, QLocale::UnitedStates));
    QVERIFY(table.find.findIncremental(utf8("9:43")));
    QVERIFY(!table.find.findIncremental(utf8("21:43")));
}

void tst_FindRules::lineBreaks()
{
    const QString value = utf8("first\nsecond");
    Table table {{value}};
    QVERIFY(table.find.findIncremental(utf8("SECOND")));
    QVERIFY(!table.find.findIncremental(utf8("first\nsecond")));
    QVERIFY(table.find.findIncremental(utf8("first\u2028second")));
    table.view.setItemDelegate(nullptr);
    QVERIFY(table.find.findIncremental(utf8("first\nsecond")));
    QVERIFY(!table.find.findIncremental(utf8("first\u2028second")));
}

void tst_FindRules::ownRule()
{
    class Exact : public Engine
    {
    public:
        bool acceptsData(const QVariant &data, const QString &text, int column) const override
        {
            columns << column;
            return data.toString() == text;
        }
        mutable QList<int> columns;
    };
    Table table {{"ab", "a"}, {"b", "a"}};
    Exact find;
    find.setView(&table.view);
    find.setHeader(table.view.horizontalHeader());
    QVERIFY(find.findIncremental(utf8("a")));
    QCOMPARE(table.current(), Cell(0, 1));
    QCOMPARE(find.columns, QList<int>({0, 1}));
    QVERIFY(!find.findNext(utf8("A")));
}

void tst_FindRules::ownRuleThatSplitsTheText()
{
    class AllWords : public Engine
    {
    public:
        bool acceptsData(const QVariant &data, const QString &text, int column) const override
        {
            const QStringList words = text.split(u' ');
            return std::all_of(words.begin(), words.end(), [&](const QString &word) {
                return Engine::acceptsData(data, word, column);
            });
        }
    };
    Table table {{"one two"}, {"two three"}, {"one"}, {"THREE one two"}};
    AllWords find;
    find.setView(&table.view);
    find.setHeader(table.view.horizontalHeader());
    QVERIFY(find.findIncremental(utf8("three two")));
    QCOMPARE(table.current(), Cell(1, 0));
    QVERIFY(find.findNext(utf8("two one")));
    QCOMPARE(table.current(), Cell(3, 0));
    QVERIFY(!find.findNext(utf8("two four")));
}

void tst_FindRules::farColumns()
{
    class Shouting : public QStyledItemDelegate
    {
    public:
        QString displayText(const QVariant &value, const QLocale &) const override
        {
            return value.toString() + u'!';
        }
    };
    QStandardItemModel model(1, 3000);
    for (int column = 0; column < 3000; ++column)
        model.setItem(0, column, item(column));
    QTableView view;
    view.setLocale(QLocale(QLocale::English, QLocale::UnitedStates));
    view.setModel(&model);
    Engine find;
    find.setView(&view);
    find.setHeader(view.horizontalHeader());
    QVERIFY(find.findIncremental(utf8("2,998")));
    QCOMPARE(view.currentIndex().column(), 2998);
    Shouting shouting;
    view.setItemDelegateForColumn(1500, &shouting);
    QVERIFY(find.acceptsData(utf8("text"), utf8("text!"), 1500));
    QVERIFY(!find.acceptsData(utf8("text"), utf8("text!"), 1501));
    QVERIFY(find.acceptsData(1234, utf8("1,234"), -1));
    QVERIFY(find.acceptsData(1234, utf8("1,234"), std::numeric_limits<int>::max()));
}

void tst_FindRules::foreignIndex()
{
    Table table {{"a"}};
    QStandardItemModel other;
    other.appendRow(item(utf8("a")));
    QVERIFY(!table.find.acceptsIndex(other.index(0, 0), utf8("a")));
    QVERIFY(!table.find.acceptsIndex(QModelIndex(), utf8("a")));
    QVERIFY(!table.find.findIncremental(utf8("b"))); // takes the columns
    QVERIFY(!table.find.dofind(other.index(0, 0), utf8("a"), true));
    QVERIFY(!table.find.dofindReverse(other.index(0, 0), utf8("a")));
    QVERIFY(!table.find.dofind(QModelIndex(), utf8("a"), true));
    QVERIFY(!table.find.dofindReverse(QModelIndex(), utf8("a")));
    QVERIFY(table.find.dofind(table.model.index(0, 0), utf8("a"), true));
}

QTEST_MAIN(tst_FindRules)
#include "tst_findrules.moc"
