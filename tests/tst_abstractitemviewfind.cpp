// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "abstractitemviewfind.h"
#include "common.h"
#include "itemdelegate.h"
#include "qtablefastview.h"
#include "slowmodel.h"
#include "sortfilterproxymodel.h"
#include "styleditemdelegate.h"

#include <QDateTime>
#include <QItemDelegate>
#include <QRandomGenerator>
#include <QSignalSpy>
#include <QStandardItemModel>
#include <QTableView>
#include <QTest>
#include <QTimeZone>
#include <QTimer>
#include <QTreeView>

#include <functional>
#include <limits>
#include <memory>
#include <stdexcept>

Q_DECLARE_METATYPE(QLocale)

namespace {

//! The engine with what it keeps from others, and a record of what it asked.
class Engine : public AbstractItemViewFind
{
public:
    using AbstractItemViewFind::acceptsLineForward;
    using AbstractItemViewFind::acceptsLineReverse;
    using AbstractItemViewFind::dofind;
    using AbstractItemViewFind::dofindReverse;
    using AbstractItemViewFind::find;
    using AbstractItemViewFind::itemModel;
    using AbstractItemViewFind::processEvents;
    using AbstractItemViewFind::setCurrentIndex;
    using AbstractItemViewFind::trim;
    using AbstractItemViewFind::tryAcceptCurrentLine;
};

class RecordingEngine : public Engine
{
public:
    bool acceptsData(const QVariant &data, const QString &text, int column) const override
    {
        asked << data.toString();
        return Engine::acceptsData(data, text, column);
    }

    mutable QStringList asked;
};

QStandardItem *item(const QVariant &value)
{
    auto *made = new QStandardItem;
    made->setData(value, Qt::DisplayRole);
    return made;
}

QList<QStandardItem *> itemsOf(const QVariantList &values)
{
    QList<QStandardItem *> items;
    for (const QVariant &value : values)
        items << item(value);
    return items;
}

//! A table view of Qt's with its engine.
struct Table
{
    Table(std::initializer_list<QVariantList> rows = {})
    {
        for (const QVariantList &row : rows)
            model.appendRow(itemsOf(row));
        view.setModel(&model);
        view.setLocale(QLocale::c());
        find.setView(&view);
        find.setHeader(view.horizontalHeader());
    }
    void setCurrent(int row, int column) { view.setCurrentIndex(model.index(row, column)); }
    std::pair<int, int> current() const
    {
        return {view.currentIndex().row(), view.currentIndex().column()};
    }

    QStandardItemModel model;
    QTableView view;
    RecordingEngine find;
};

using Cell = std::pair<int, int>;

QString utf8(const char *text)
{
    return QString::fromUtf8(text);
}

} // namespace

class tst_AbstractItemViewFind : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();

    void settersAndQueries();
    void metaType();
    void trim_data();
    void trim();
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

    void lineForward_data();
    void lineForward();
    void lineReverse_data();
    void lineReverse();
    void lineOfNothing();

    void iteratorOverTree();
    void iteratorEnds();
    void iteratorWithoutColumns();
    void iteratorOverEmptyModel();
    void iteratorWithChildrenUnderColumnZero();

    void emptyTextIsFound();
    void noCurrentIndex();
    void emptyModel();
    void allColumnsHidden();
    void search_data();
    void search();
    void orderOfColumns();
    void makesRowTheSelection();
    void columnListIsTakenAtEverySearch();
    void filteredByCollapse();
    void nestedStartWithOtherFirstColumn();
    void scrollsTheFastView();

    void missingPartners();
    void proxyGetsColumnsAndText();
    void proxyGetsCase();
    void otherModelsAreNotFiltered();
    void filterIsVirtual();

    void eventsAfterMissesOnly();
    void stopFromEvents_data();
    void stopFromEvents();
    void destroyedInEvents_data();
    void destroyedInEvents();
    void destroyedBySelection_data();
    void destroyedBySelection();
    void secondSearchFromEvents_data();
    void secondSearchFromEvents();
    void stopThenSecondSearch();
    void rowsChangeInEvents_data();
    void rowsChangeInEvents();
    void startRowRemovedInEvents();
    void branchRemovedInEvents();
    void modelResetInEvents();
    void filterChangedInEvents();
    void textChangedInEvents();
    void throwingRule();

    void randomTrees_data();
    void randomTrees();
    void randomTables();
};

void tst_AbstractItemViewFind::initTestCase()
{
    QLocale::setDefault(QLocale::c());
}

void tst_AbstractItemViewFind::settersAndQueries()
{
    Engine find;
    QVERIFY(!find.view());
    QVERIFY(!find.itemModel());
    QVERIFY(!find.isFilterAvailable());
    QVERIFY(find.columnList().isEmpty());

    QStandardItemModel model;
    auto view = std::make_unique<QTableView>();
    find.setView(view.get());
    QCOMPARE(find.view(), view.get());
    QVERIFY(!find.isFilterAvailable());
    view->setModel(&model);
    QCOMPARE(find.itemModel(), &model);
    QVERIFY(find.isFilterAvailable());
    view.reset();
    QVERIFY(!find.view());
    QVERIFY(!find.isFilterAvailable());
}

void tst_AbstractItemViewFind::metaType()
{
    const int id = qRegisterMetaType<AbstractItemViewFind>();
    QCOMPARE(QMetaType(id).name(), "AbstractItemViewFind");
    const QMetaObject &meta = AbstractItemViewFind::staticMetaObject;
    for (const char *slot : {"findIncremental(QString)", "findPrev(QString)", "findNext(QString)",
                             "stop()", "filter(QString)"})
        QVERIFY2(meta.indexOfSlot(slot) >= 0, slot);
    Table table {{"a"}};
    bool isFound = false;
    QVERIFY(QMetaObject::invokeMethod(&table.find, "findIncremental", Q_RETURN_ARG(bool, isFound),
                                      Q_ARG(QString, QStringLiteral("a"))));
    QVERIFY(isFound);
}

void tst_AbstractItemViewFind::trim_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("separator");
    QTest::addColumn<QString>("expected");

    QTest::newRow("nothing") << utf8("1234") << utf8(",") << utf8("1234");
    QTest::newRow("separator") << utf8("1,234,567") << utf8(",") << utf8("1234567");
    QTest::newRow("white space") << utf8(" 1\t2\n3\u00a04\u202f5 ") << utf8(",") << utf8("12345");
    QTest::newRow("several characters") << utf8("1,,2") << utf8(",,") << utf8("1,,2");
    QTest::newRow("empty separator") << utf8("1,2 3") << utf8("") << utf8("1,23");
    QTest::newRow("empty text") << utf8("") << utf8(",") << utf8("");
    QTest::newRow("only separators") << utf8(", ,") << utf8(",") << utf8("");
}

void tst_AbstractItemViewFind::trim()
{
    QFETCH(QString, text);
    QFETCH(QString, separator);
    QFETCH(QString, expected);
    const QString before = separator;
    Engine::trim(text, separator);
    QCOMPARE(text, expected);
    QCOMPARE(separator, before);
}

void tst_AbstractItemViewFind::acceptsText_data()
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

void tst_AbstractItemViewFind::acceptsText()
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

void tst_AbstractItemViewFind::tellsCaseApart_data()
{
    acceptsText_data();
}

void tst_AbstractItemViewFind::tellsCaseApart()
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

void tst_AbstractItemViewFind::acceptsNumber_data()
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

void tst_AbstractItemViewFind::acceptsNumber()
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

void tst_AbstractItemViewFind::numberTypes_data()
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

void tst_AbstractItemViewFind::numberTypes()
{
    QFETCH(QVariant, value);
    QFETCH(bool, isNumber);

    Table table {{value}};
    table.view.setLocale(QLocale(QLocale::English, QLocale::UnitedStates));
    QCOMPARE(table.find.acceptsData(value, utf8("1 2 3 4"), 0), isNumber);
    QCOMPARE(table.find.findIncremental(utf8("1 2 3 4")), isNumber);
}

void tst_AbstractItemViewFind::quickNumbersEqualShownOnes_data()
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
void tst_AbstractItemViewFind::quickNumbersEqualShownOnes()
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

void tst_AbstractItemViewFind::delegateOfTheColumnFirst()
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

void tst_AbstractItemViewFind::delegateThatIsNotStyled()
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

void tst_AbstractItemViewFind::dateTimesAsShown()
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

void tst_AbstractItemViewFind::lineBreaks()
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

void tst_AbstractItemViewFind::ownRule()
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

void tst_AbstractItemViewFind::ownRuleThatSplitsTheText()
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

void tst_AbstractItemViewFind::farColumns()
{
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
    QVERIFY(find.acceptsData(1234, utf8("1,234"), -1));
    QVERIFY(find.acceptsData(1234, utf8("1,234"), std::numeric_limits<int>::max()));
}

void tst_AbstractItemViewFind::foreignIndex()
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

void tst_AbstractItemViewFind::lineForward_data()
{
    QTest::addColumn<QList<int>>("order");
    QTest::addColumn<QList<int>>("hidden");
    QTest::addColumn<int>("column");
    QTest::addColumn<int>("found");

    // The row is a x a x a.
    using Columns = QList<int>;
    const Columns straight {0, 1, 2, 3, 4};
    const Columns turned {4, 3, 2, 1, 0};
    QTest::newRow("itself") << straight << Columns {} << 2 << 2;
    QTest::newRow("the next") << straight << Columns {} << 1 << 2;
    QTest::newRow("none behind") << Columns {0, 2, 4, 1, 3} << Columns {} << 1 << -1;
    QTest::newRow("turned, itself") << turned << Columns {} << 2 << 2;
    QTest::newRow("turned, the next") << turned << Columns {} << 3 << 2;
    QTest::newRow("turned, from the end") << turned << Columns {} << 1 << 0;
    QTest::newRow("next is hidden") << straight << Columns {2} << 1 << 4;
    QTest::newRow("own is hidden") << straight << Columns {2} << 2 << 0;
    QTest::newRow("own and first are hidden") << straight << Columns {0, 2} << 2 << 4;
}

void tst_AbstractItemViewFind::lineForward()
{
    QFETCH(QList<int>, order);
    QFETCH(QList<int>, hidden);
    QFETCH(int, column);
    QFETCH(int, found);

    Table table {{"a", "x", "a", "x", "a"}};
    QHeaderView *header = table.view.horizontalHeader();
    for (int i = 0; i < order.size(); ++i)
        header->moveSection(header->visualIndex(order.at(i)), i);
    for (const int section : hidden)
        header->hideSection(section);
    table.find.findIncremental(utf8("nothing")); // takes the columns
    const QModelIndex match =
        table.find.acceptsLineForward(table.model.index(0, column), utf8("a"));
    QCOMPARE(match.column(), found);
    QCOMPARE(match.isValid(), found >= 0);
}

void tst_AbstractItemViewFind::lineReverse_data()
{
    QTest::addColumn<QList<int>>("order");
    QTest::addColumn<QList<int>>("hidden");
    QTest::addColumn<int>("column");
    QTest::addColumn<int>("found");

    using Columns = QList<int>;
    const Columns straight {0, 1, 2, 3, 4};
    const Columns turned {4, 3, 2, 1, 0};
    QTest::newRow("itself") << straight << Columns {} << 2 << 2;
    QTest::newRow("the one before") << straight << Columns {} << 3 << 2;
    QTest::newRow("none before") << Columns {1, 3, 0, 2, 4} << Columns {} << 3 << -1;
    QTest::newRow("turned, the one before") << turned << Columns {} << 1 << 2;
    QTest::newRow("turned, from the start") << turned << Columns {} << 3 << 4;
    QTest::newRow("the one before is hidden") << straight << Columns {2} << 3 << 0;
    QTest::newRow("own is hidden") << straight << Columns {2} << 2 << 4;
    QTest::newRow("own and last are hidden") << straight << Columns {2, 4} << 2 << 0;
}

void tst_AbstractItemViewFind::lineReverse()
{
    QFETCH(QList<int>, order);
    QFETCH(QList<int>, hidden);
    QFETCH(int, column);
    QFETCH(int, found);

    Table table {{"a", "x", "a", "x", "a"}};
    QHeaderView *header = table.view.horizontalHeader();
    for (int i = 0; i < order.size(); ++i)
        header->moveSection(header->visualIndex(order.at(i)), i);
    for (const int section : hidden)
        header->hideSection(section);
    table.find.findIncremental(utf8("nothing")); // takes the columns
    const QModelIndex match =
        table.find.acceptsLineReverse(table.model.index(0, column), utf8("a"));
    QCOMPARE(match.column(), found);
}

void tst_AbstractItemViewFind::lineOfNothing()
{
    Table table {{"a"}};
    // No search has taken the columns yet.
    QVERIFY(!table.find.acceptsLineForward(table.model.index(0, 0), utf8("a")).isValid());
    QVERIFY(!table.find.acceptsLineReverse(table.model.index(0, 0), utf8("a")).isValid());
    QVERIFY(table.find.findIncremental(utf8("a")));
    QVERIFY(!table.find.acceptsLineForward(QModelIndex(), utf8("a")).isValid());
    QVERIFY(!table.find.acceptsLineReverse(QModelIndex(), utf8("a")).isValid());
    QVERIFY(!table.find.tryAcceptCurrentLine(QModelIndex(), utf8("a"), true));
    QVERIFY(!table.find.tryAcceptCurrentLine(QModelIndex(), utf8("a"), false));
}

namespace {

//! a(b(c, d), e), f(g) with every child under the first column, two columns.
void fillTree(QStandardItemModel *model)
{
    const auto add = [](QStandardItem *parent, const char *name) {
        QStandardItem *made = item(utf8(name));
        parent->appendRow({made, item(utf8(name) + u'2')});
        return made;
    };
    QStandardItem *a = add(model->invisibleRootItem(), "a");
    QStandardItem *b = add(a, "b");
    add(b, "c");
    add(b, "d");
    add(a, "e");
    add(add(model->invisibleRootItem(), "f"), "g");
}

QStringList walkForward(AbstractItemViewFind::Iterator it)
{
    QStringList names;
    while ((*++it).isValid())
        names << (*it).data().toString();
    return names;
}

QStringList walkBackward(AbstractItemViewFind::Iterator it)
{
    QStringList names;
    while ((*--it).isValid())
        names << (*it).data().toString();
    return names;
}

//! A tree view of Qt's with its engine; all columns taken.
struct Tree
{
    Tree()
    {
        fillTree(&model);
        view.setModel(&model);
        find.setView(&view);
        find.setHeader(view.header());
        find.findIncremental(utf8("nothing"));
        find.asked.clear();
    }
    QModelIndex index(const char *name) const
    {
        const QModelIndexList hits = model.match(model.index(0, 0), Qt::DisplayRole, utf8(name), 1,
                                                 Qt::MatchExactly | Qt::MatchRecursive);
        return hits.value(0);
    }
    QString current() const { return view.currentIndex().data().toString(); }

    QStandardItemModel model;
    QTreeView view;
    RecordingEngine find;
};

} // namespace

void tst_AbstractItemViewFind::iteratorOverTree()
{
    using Iterator = AbstractItemViewFind::Iterator;
    Tree tree;
    QCOMPARE(walkForward(Iterator(&tree.model, &tree.find)), utf8("a b c d e f g").split(u' '));
    QCOMPARE(walkForward(Iterator(tree.index("d"), &tree.find)), utf8("e f g").split(u' '));
    // Backward it lands in the last column, under which nothing hangs.
    QCOMPARE(walkBackward(Iterator(tree.index("g"), &tree.find)), utf8("f2 a2").split(u' '));
    QCOMPARE(walkBackward(Iterator(tree.index("d"), &tree.find)), utf8("c2 b2 a2").split(u' '));

    tree.view.header()->hideSection(1);
    tree.find.findIncremental(utf8("nothing"));
    QCOMPARE(walkBackward(Iterator(tree.index("g"), &tree.find)), utf8("f e d c b a").split(u' '));
    Iterator it(tree.index("b"), &tree.find);
    QCOMPARE(&++it, &it);
    QCOMPARE((*it).data().toString(), utf8("c"));
    QCOMPARE(&--it, &it);
    QCOMPARE((*it).data().toString(), utf8("b"));
}

void tst_AbstractItemViewFind::iteratorEnds()
{
    using Iterator = AbstractItemViewFind::Iterator;
    Tree tree;
    Iterator none;
    QVERIFY(!(*none).isValid());
    QVERIFY(!(*++none).isValid());
    QVERIFY(!(*--none).isValid());
    Iterator first(tree.index("a"), &tree.find);
    QVERIFY(!(*--first).isValid());
    QVERIFY(!(*--first).isValid());
    Iterator last(tree.index("g"), &tree.find);
    QVERIFY(!(*++last).isValid());
    Iterator ofNothing(QModelIndex(), &tree.find);
    QVERIFY(!(*++ofNothing).isValid());
    Iterator withoutEngine(&tree.model, nullptr);
    QVERIFY(!(*++withoutEngine).isValid());
}

void tst_AbstractItemViewFind::iteratorWithoutColumns()
{
    using Iterator = AbstractItemViewFind::Iterator;
    Tree tree;
    AbstractItemViewFind fresh;
    Iterator forward(tree.index("a"), &fresh);
    QVERIFY(!(*++forward).isValid());
    Iterator backward(tree.index("f"), &fresh);
    QVERIFY(!(*--backward).isValid());
}

void tst_AbstractItemViewFind::iteratorOverEmptyModel()
{
    Tree tree;
    QStandardItemModel empty;
    QCOMPARE(walkForward(AbstractItemViewFind::Iterator(&empty, &tree.find)), QStringList());
}

void tst_AbstractItemViewFind::iteratorWithChildrenUnderColumnZero()
{
    using Iterator = AbstractItemViewFind::Iterator;
    Tree tree;
    tree.view.header()->moveSection(1, 0);
    tree.find.findIncremental(utf8("nothing"));
    QCOMPARE(tree.find.columnList(), QList<int>({1, 0}));
    QCOMPARE(walkForward(Iterator(&tree.model, &tree.find)), utf8("a2 f2").split(u' '));
    QCOMPARE(walkBackward(Iterator(tree.index("g"), &tree.find)), utf8("f e d c b a").split(u' '));
}

void tst_AbstractItemViewFind::emptyTextIsFound()
{
    Table table {{"a"}};
    QVERIFY(table.find.findIncremental(QString()));
    QVERIFY(table.find.findNext(QString()));
    QVERIFY(table.find.findPrev(QString()));
    QVERIFY(!table.view.currentIndex().isValid());
    QVERIFY(table.find.columnList().isEmpty());
    Engine alone;
    QVERIFY(alone.findNext(QString()));
}

void tst_AbstractItemViewFind::noCurrentIndex()
{
    Table table {{"ax", "y"}, {"a", "b"}};
    QVERIFY(table.find.findIncremental(utf8("a")));
    QCOMPARE(table.current(), Cell(0, 0));

    table.view.setCurrentIndex(QModelIndex());
    QVERIFY(table.find.findNext(utf8("a")));
    QCOMPARE(table.current(), Cell(1, 0));

    table.view.setCurrentIndex(QModelIndex());
    QVERIFY(!table.find.findPrev(utf8("a")));
    table.view.horizontalHeader()->hideSection(0);
    QVERIFY(table.find.findIncremental(utf8("y")));
    QCOMPARE(table.current(), Cell(0, 1));
}

void tst_AbstractItemViewFind::emptyModel()
{
    Table table;
    QVERIFY(!table.find.findIncremental(utf8("a")));
    table.model.setColumnCount(2);
    QVERIFY(!table.find.findIncremental(utf8("a")));
    QVERIFY(!table.find.findNext(utf8("a")));
    QVERIFY(!table.find.findPrev(utf8("a")));
}

void tst_AbstractItemViewFind::allColumnsHidden()
{
    Table table {{"a", "a"}, {"a", "a"}};
    table.view.hideColumn(0);
    table.view.hideColumn(1);
    QVERIFY(!table.find.findIncremental(utf8("a")));
    QVERIFY(!table.find.findNext(utf8("a")));
    QVERIFY(!table.find.findPrev(utf8("a")));
    QVERIFY(!table.find.dofind(table.model.index(0, 0), utf8("a"), true));
    QVERIFY(!table.find.dofindReverse(table.model.index(1, 0), utf8("a")));
}

void tst_AbstractItemViewFind::search_data()
{
    QTest::addColumn<QByteArray>("rows"); // two letters a row, a is searched for
    QTest::addColumn<Cell>("from");
    QTest::addColumn<QByteArray>("way");
    QTest::addColumn<Cell>("to"); // −1 if not found

    const auto row = [](const char *name, const char *rows, Cell from, const char *way, Cell to) {
        QTest::newRow(name) << QByteArray(rows) << from << QByteArray(way) << to;
    };
    const Cell none(-1, -1);
    row("incremental, the current cell", "xa xx", {0, 1}, "incremental", {0, 1});
    row("incremental, right of it", "xa xx", {0, 0}, "incremental", {0, 1});
    row("incremental, not left of it", "ax xx ax", {0, 1}, "incremental", {2, 0});
    row("incremental, left of it alone", "ax xx xx", {0, 1}, "incremental", none);
    row("incremental, wraps", "ax xx xx", {1, 0}, "incremental", {0, 0});
    row("next, not the current row", "aa xx xa", {0, 0}, "next", {2, 1});
    row("next, right of it alone", "xa xx xx", {0, 0}, "next", none);
    row("next, the following row", "xx aa aa", {0, 1}, "next", {1, 0});
    row("next, wraps", "xx xa xx ax", {3, 0}, "next", {1, 1});
    row("next, wraps to the first row", "ax xx", {1, 1}, "next", {0, 0});
    row("next, none", "xx xx", {0, 0}, "next", none);
    row("next, one row", "aa", {0, 0}, "next", none);
    row("previous, nearest", "ax ax xx", {2, 0}, "previous", {1, 0});
    row("previous, from the right", "aa xx", {1, 0}, "previous", {0, 1});
    row("previous, not the current row", "xx aa", {1, 1}, "previous", none);
    row("previous, does not wrap", "xx ax ax", {0, 0}, "previous", none);
    row("previous, none above", "xx xx ax", {1, 0}, "previous", none);
}

void tst_AbstractItemViewFind::search()
{
    QFETCH(QByteArray, rows);
    QFETCH(Cell, from);
    QFETCH(QByteArray, way);
    QFETCH(Cell, to);

    Table table;
    for (const QByteArray &row : rows.split(' '))
        table.model.appendRow(itemsOf({row.left(1), row.mid(1)}));
    table.setCurrent(from.first, from.second);
    bool isFound = false;
    if (way == "incremental")
        isFound = table.find.findIncremental(utf8("A"));
    else if (way == "next")
        isFound = table.find.findNext(utf8("A"));
    else
        isFound = table.find.findPrev(utf8("A"));
    QCOMPARE(isFound, to.first >= 0);
    QCOMPARE(table.current(), isFound ? to : from);
}

void tst_AbstractItemViewFind::orderOfColumns()
{
    Table table {{"0", "1", "2"}, {"3", "4", "5"}, {"6", "7", "8"}};
    table.view.horizontalHeader()->moveSection(2, 0);
    table.view.hideColumn(1);
    table.setCurrent(1, 0);
    QVERIFY(!table.find.findIncremental(utf8("nothing")));
    QCOMPARE(table.find.columnList(), QList<int>({2, 0}));
    // Each other row once, in columns as they are on screen; of the own row what is right.
    QCOMPARE(table.find.asked, QStringList({"3", "8", "6", "2", "0"}));
    table.find.asked.clear();
    QVERIFY(!table.find.findPrev(utf8("nothing")));
    QCOMPARE(table.find.asked, QStringList({"0", "2"}));
}

void tst_AbstractItemViewFind::makesRowTheSelection()
{
    Table table {{"x", "x"}, {"x", "a"}, {"x", "x"}};
    table.view.selectAll();
    QVERIFY(table.find.findIncremental(utf8("a")));
    QCOMPARE(table.current(), Cell(1, 1));
    QCOMPARE(table.view.selectionModel()->selectedRows().size(), 1);
    QVERIFY(table.view.selectionModel()->isRowSelected(1, QModelIndex()));
    QCOMPARE(table.view.selectionModel()->selectedIndexes().size(), 2);
}

void tst_AbstractItemViewFind::columnListIsTakenAtEverySearch()
{
    Table table {{"a", "b"}};
    QVERIFY(table.find.findIncremental(utf8("b")));
    QCOMPARE(table.find.columnList(), QList<int>({0, 1}));
    table.view.hideColumn(1);
    QCOMPARE(table.find.columnList(), QList<int>({0, 1}));
    QVERIFY(!table.find.findNext(utf8("b")));
    QCOMPARE(table.find.columnList(), QList<int>({0}));
    table.model.setColumnCount(4);
    table.model.setItem(0, 3, item(utf8("d")));
    QVERIFY(table.find.findIncremental(utf8("d")));
}

void tst_AbstractItemViewFind::filteredByCollapse()
{
    Tree tree;
    tree.view.collapseAll();
    QVERIFY(tree.find.findIncremental(utf8("d")));
    QCOMPARE(tree.current(), utf8("d"));
    QCOMPARE(tree.find.asked, utf8("a a2 b b2 c c2 d").split(u' '));
    QVERIFY(tree.find.findNext(utf8("b")));
    QCOMPARE(tree.current(), utf8("b"));
    QVERIFY(tree.find.findPrev(utf8("a")));
    QCOMPARE(tree.current(), utf8("a2"));
    QVERIFY(!tree.find.findPrev(utf8("g")));
}

//! The rows below column 0 are never met again when the first column is another one.
void tst_AbstractItemViewFind::nestedStartWithOtherFirstColumn()
{
    Tree tree;
    tree.view.header()->moveSection(1, 0);
    tree.view.setCurrentIndex(tree.index("c"));
    tree.find.asked.clear();
    QVERIFY(!tree.find.findNext(utf8("nothing")));
    QCOMPARE(tree.find.asked, utf8("d2 d e2 e f2 f a2 a f2 f").split(u' '));
    QVERIFY(tree.find.findNext(utf8("f")));
    QCOMPARE(tree.current(), utf8("f2"));
}

void tst_AbstractItemViewFind::scrollsTheFastView()
{
    QStandardItemModel model;
    for (int row = 0; row < 500; ++row)
        model.appendRow(item(QStringLiteral("row %1").arg(row)));
    QTableFastView view;
    view.setModel(&model);
    view.resize(300, 200);
    view.show();
    QVERIFY(QTest::qWaitForWindowExposed(&view));
    Engine find;
    find.setView(&view);
    find.setHeader(view.header());
    QVERIFY(find.findIncremental(utf8("row 432")));
    QCOMPARE(view.currentIndex().row(), 432);
    QVERIFY(view.viewport()->rect().contains(view.visualRect(view.currentIndex())));
    QVERIFY(find.findPrev(utf8("row 43")));
    QCOMPARE(view.currentIndex().row(), 431);
    QVERIFY(find.findNext(utf8("ROW 3")));
    QCOMPARE(view.currentIndex().row(), 3);
    QVERIFY(view.viewport()->rect().contains(view.visualRect(view.currentIndex())));
}

void tst_AbstractItemViewFind::missingPartners()
{
    const QString text = utf8("a");
    Engine alone;
    QVERIFY(!alone.findIncremental(text));
    QVERIFY(!alone.findNext(text));
    QVERIFY(!alone.findPrev(text));
    QVERIFY(!alone.acceptsData(text, text, 0));
    QVERIFY(!alone.acceptsIndex(QModelIndex(), text));
    QVERIFY(!alone.dofind(QModelIndex(), text, true));
    alone.setCurrentIndex(QModelIndex());
    alone.processEvents();
    alone.stop();
    alone.filter(text);

    Table table {{"a"}};
    table.find.setHeader(nullptr);
    QVERIFY(!table.find.findIncremental(text));
    table.find.filter(text);
    table.find.setHeader(table.view.horizontalHeader());
    table.find.setView(nullptr);
    QVERIFY(!table.find.findIncremental(text));
    table.find.setView(&table.view);
    table.view.setModel(nullptr);
    QVERIFY(!table.find.findIncremental(text));
    QVERIFY(!table.find.findPrev(text));
    table.find.filter(text);

    auto header = std::make_unique<QHeaderView>(Qt::Horizontal);
    SortFilterProxyModel proxy;
    proxy.setSourceModel(&table.model);
    table.view.setModel(&proxy);
    table.find.setHeader(header.get());
    header.reset();
    QVERIFY(!table.find.findIncremental(text));
    table.find.filter(utf8("x"));
    QCOMPARE(proxy.rowCount(), 1);
}

void tst_AbstractItemViewFind::proxyGetsColumnsAndText()
{
    Table table {{"Ab", "x"}, {"x", "Ab"}, {"ab", "ab"}};
    SortFilterProxyModel proxy;
    proxy.setSourceModel(&table.model);
    table.view.setModel(&proxy);
    table.find.filter(utf8("Ab"));
    QCOMPARE(proxy.rowCount(), 2);
    table.view.hideColumn(1);
    table.find.filter(utf8("A"));
    QCOMPARE(proxy.rowCount(), 1);
    table.find.filter(QString());
    QCOMPARE(proxy.rowCount(), 3);
    QVERIFY(table.find.findIncremental(utf8("AB")));
    QCOMPARE(table.current(), Cell(0, 0));
}

//! Once it was set, and not before.
void tst_AbstractItemViewFind::proxyGetsCase()
{
    Table table {{"Ab"}, {"ab"}, {"b"}};
    SortFilterProxyModel proxy;
    proxy.setSourceModel(&table.model);
    table.view.setModel(&proxy);
    table.find.filter(utf8("ab"));
    QCOMPARE(proxy.rowCount(), 1);
    table.find.setCaseSensitivity(Qt::CaseInsensitive);
    QCOMPARE(proxy.rowCount(), 2);
    table.find.setCaseSensitivity(Qt::CaseSensitive);
    QCOMPARE(proxy.rowCount(), 1);
    table.find.setCaseSensitivity(Qt::CaseInsensitive);

    // Another model gets it with the next filter.
    SortFilterProxyModel later;
    later.setSourceModel(&table.model);
    table.view.setModel(&later);
    QCOMPARE(later.filterCaseSensitivity(), Qt::CaseSensitive);
    table.find.filter(utf8("AB"));
    QCOMPARE(later.rowCount(), 2);

    AbstractItemViewFind untouched;
    untouched.setView(&table.view);
    untouched.setHeader(table.view.horizontalHeader());
    untouched.filter(utf8("aB"));
    QCOMPARE(later.filterCaseSensitivity(), Qt::CaseInsensitive);
    untouched.setView(nullptr);
    untouched.setCaseSensitivity(Qt::CaseSensitive);
    QCOMPARE(later.filterCaseSensitivity(), Qt::CaseInsensitive);
}

void tst_AbstractItemViewFind::otherModelsAreNotFiltered()
{
    Table table {{"a"}, {"b"}};
    QSortFilterProxyModel proxy;
    proxy.setSourceModel(&table.model);
    table.view.setModel(&proxy);
    QVERIFY(table.find.isFilterAvailable());
    table.find.filter(utf8("a"));
    QCOMPARE(proxy.rowCount(), 2);
}

void tst_AbstractItemViewFind::filterIsVirtual()
{
    class Filtering : public AbstractItemViewFind
    {
    public:
        void dofilter(const QString &text) override { texts << text; }
        QStringList texts;
    };
    Filtering find;
    find.filter(utf8("a"));
    find.filter(QString());
    QCOMPARE(find.texts, QStringList({"a", QString()}));
}

namespace {

//! A table that takes so long to search that events run after every row.
struct SlowTable
{
    SlowTable(std::initializer_list<QVariantList> rows)
        : view(std::make_unique<QTableView>())
        , model(std::make_unique<SlowModel>())
        , find(std::make_unique<RecordingEngine>())
    {
        for (const QVariantList &row : rows)
            model->appendRow(itemsOf(row));
        view->setModel(model.get());
        find->setView(view.get());
        find->setHeader(view->horizontalHeader());
    }
    //! Runs \a what in the events after the first row of the next search.
    void inEvents(const std::function<void()> &what)
    {
        QMetaObject::invokeMethod(&context, what, Qt::QueuedConnection);
    }
    QString current() const { return view->currentIndex().data().toString(); }

    QObject context;
    std::unique_ptr<QTableView> view;
    std::unique_ptr<SlowModel> model;
    std::unique_ptr<RecordingEngine> find;
};

} // namespace

void tst_AbstractItemViewFind::eventsAfterMissesOnly()
{
    SlowTable table {{"a"}, {"b"}, {"c"}, {"d"}};
    int ran = 0;
    table.inEvents([&] { ++ran; });
    QVERIFY(table.find->findIncremental(utf8("a")));
    QCOMPARE(ran, 0);
    QVERIFY(table.find->findNext(utf8("c")));
    QCOMPARE(ran, 1);
    // A quick search lets none through.
    table.model->isSlow = false;
    table.inEvents([&] { ++ran; });
    QVERIFY(!table.find->findNext(utf8("nothing")));
    QCOMPARE(ran, 1);
    QCoreApplication::processEvents();
    QCOMPARE(ran, 2);
}

void tst_AbstractItemViewFind::stopFromEvents_data()
{
    QTest::addColumn<bool>("isForward");
    QTest::addColumn<int>("from");
    QTest::addColumn<QStringList>("asked");

    QTest::newRow("forward") << true << 0 << QStringList({"a", "b"});
    QTest::newRow("forward, second walk") << true << 4 << QStringList({"e", "a"});
    QTest::newRow("backward") << false << 4 << QStringList({"d", "c"});
}

void tst_AbstractItemViewFind::stopFromEvents()
{
    QFETCH(bool, isForward);
    QFETCH(int, from);
    QFETCH(QStringList, asked);

    SlowTable table {{"a"}, {"b"}, {"c"}, {"d"}, {"e"}};
    table.view->setCurrentIndex(table.model->index(from, 0));
    // In the events after the second row, whatever came in between.
    table.inEvents([&] { table.inEvents([&] { table.find->stop(); }); });
    QVERIFY(!table.find->find(utf8("nothing"), isForward, true));
    QCOMPARE(table.find->asked, asked);
    QCOMPARE(table.view->currentIndex().row(), from);
    // It searches again afterwards.
    table.model->isSlow = false;
    QVERIFY(table.find->findIncremental(utf8("e")));
}

void tst_AbstractItemViewFind::destroyedInEvents_data()
{
    QTest::addColumn<QByteArray>("what");
    QTest::addColumn<bool>("isForward");

    for (const char *what : {"view", "header", "model", "engine", "all", "other view",
                             "other header", "other model", "no model", "columns", "delegate"}) {
        QTest::addRow("%s, forward", what) << QByteArray(what) << true;
        QTest::addRow("%s, backward", what) << QByteArray(what) << false;
    }
}

void tst_AbstractItemViewFind::destroyedInEvents()
{
    QFETCH(QByteArray, what);
    QFETCH(bool, isForward);

    QStandardItemModel other;
    other.appendRow(item(utf8("a")));
    QTableView otherView;
    otherView.setModel(&other);
    SlowTable table {{"x", "1"}, {"b", "2"}, {"b", "3"}, {"b", "4"}, {"x", "5"}};
    auto header = std::make_unique<QHeaderView>(Qt::Horizontal);
    header->setModel(table.model.get());
    table.find->setHeader(header.get());
    auto delegate = std::make_unique<StyledItemDelegate>(nullptr);
    table.view->setItemDelegate(delegate.get());
    table.view->setCurrentIndex(table.model->index(isForward ? 1 : 3, 0));
    const auto is = [&](const char *name) { return what == name || what == "all"; };
    table.inEvents([&] {
        if (is("header"))
            header.reset();
        if (is("view"))
            table.view.reset();
        if (is("model"))
            table.model.reset();
        if (is("engine"))
            table.find.reset();
        if (is("delegate"))
            delegate.reset();
        if (what == "other view")
            table.find->setView(&otherView);
        if (what == "other header")
            table.find->setHeader(otherView.horizontalHeader());
        if (what == "other model")
            table.view->setModel(&other);
        if (what == "no model")
            table.view->setModel(nullptr);
        if (what == "columns")
            table.model->removeColumn(0);
    });
    RecordingEngine *find = table.find.get();
    QCOMPARE(find->find(utf8("x"), isForward, false), what == "delegate");
    QVERIFY(!other.index(0, 0).data().isNull());
}

void tst_AbstractItemViewFind::destroyedBySelection_data()
{
    QTest::addColumn<QByteArray>("what");

    for (const char *what : {"view", "model", "engine", "row", "selection"})
        QTest::addRow("%s", what) << QByteArray(what);
}

void tst_AbstractItemViewFind::destroyedBySelection()
{
    QFETCH(QByteArray, what);

    auto table =
        std::make_unique<SlowTable>(std::initializer_list<QVariantList> {{"a"}, {"b"}, {"c"}});
    table->model->isSlow = false;
    QItemSelectionModel *selection = table->view->selectionModel();
    bool isFirst = true;
    connect(selection, &QItemSelectionModel::currentChanged, this, [&](const QModelIndex &current) {
        if (!std::exchange(isFirst, false))
            return;
        if (what == "view")
            table->view.reset();
        if (what == "model")
            table->model.reset();
        if (what == "engine")
            table->find.reset();
        if (what == "row")
            table->model->removeRow(current.row());
        if (what == "selection")
            table->view->setSelectionModel(new QItemSelectionModel(table->model.get(), this));
    });
    AbstractItemViewFind *find = table->find.get();
    QVERIFY(find->findNext(utf8("b")));
}

void tst_AbstractItemViewFind::secondSearchFromEvents_data()
{
    QTest::addColumn<QString>("second");
    QTest::addColumn<bool>("secondFinds");

    QTest::newRow("another text") << utf8("c") << true;
    QTest::newRow("the same text") << utf8("e") << true;
    QTest::newRow("nothing to be found") << utf8("nothing") << false;
    QTest::newRow("no text") << QString() << true;
}

void tst_AbstractItemViewFind::secondSearchFromEvents()
{
    QFETCH(QString, second);
    QFETCH(bool, secondFinds);

    SlowTable table {{"a"}, {"b"}, {"c"}, {"d"}, {"e"}};
    bool innerFound = !secondFinds;
    table.inEvents([&] { innerFound = table.find->findIncremental(second); });
    QVERIFY(!table.find->findIncremental(utf8("e")));
    QCOMPARE(innerFound, secondFinds);
    QCOMPARE(table.current(), second.size() == 1 ? second : QString());
}

void tst_AbstractItemViewFind::stopThenSecondSearch()
{
    SlowTable table {{"a"}, {"b"}, {"c"}, {"d"}};
    table.inEvents([&] {
        table.find->stop();
        QVERIFY(table.find->findIncremental(QString()));
    });
    QVERIFY(!table.find->findIncremental(utf8("d")));
    QVERIFY(!table.view->currentIndex().isValid());
}

void tst_AbstractItemViewFind::rowsChangeInEvents_data()
{
    QTest::addColumn<QByteArray>("what");
    QTest::addColumn<bool>("isForward");
    QTest::addColumn<QStringList>("asked"); // d is in the middle of the search, c or e next

    QTest::newRow("insert above, forward")
        << QByteArray("insert 0 2") << true << utf8("d e f g n n a b c").split(u' ');
    QTest::newRow("insert above, backward")
        << QByteArray("insert 0 2") << false << utf8("c b a n n").split(u' ');
    QTest::newRow("remove above, forward")
        << QByteArray("remove 0 2") << true << utf8("d e f g c").split(u' ');
    QTest::newRow("remove above, backward")
        << QByteArray("remove 0 1") << false << utf8("c b").split(u' ');
    QTest::newRow("remove the current, forward")
        << QByteArray("remove 3 1") << true << utf8("d e f g a b c e f g").split(u' ');
    QTest::newRow("remove the current, backward")
        << QByteArray("remove 2 1") << false << utf8("c b a").split(u' ');
    QTest::newRow("remove around it, forward")
        << QByteArray("remove 1 4") << true << utf8("d f g a f g").split(u' ');
    QTest::newRow("remove around it, backward")
        << QByteArray("remove 1 4") << false << utf8("c a").split(u' ');
    QTest::newRow("remove the rest, forward")
        << QByteArray("remove 3 4") << true << utf8("d a b c").split(u' ');
    QTest::newRow("remove the rest, backward")
        << QByteArray("remove 0 3") << false << utf8("c").split(u' ');
    QTest::newRow("remove all, forward")
        << QByteArray("remove 0 7") << true << utf8("d").split(u' ');
    QTest::newRow("remove all, backward")
        << QByteArray("remove 0 7") << false << utf8("c").split(u' ');
    QTest::newRow("sort, forward")
        << QByteArray("sort") << true << utf8("d c b a g f e").split(u' ');
    QTest::newRow("append, forward")
        << QByteArray("insert 7 1") << true << utf8("d e f g n a b c").split(u' ');
}

//! The start is d, which a forward search looks at too.
void tst_AbstractItemViewFind::rowsChangeInEvents()
{
    QFETCH(QByteArray, what);
    QFETCH(bool, isForward);
    QFETCH(QStringList, asked);

    SlowTable table {{"a"}, {"b"}, {"c"}, {"d"}, {"e"}, {"f"}, {"g"}};
    table.view->setCurrentIndex(table.model->index(3, 0));
    const QList<QByteArray> words = what.split(' ');
    table.inEvents([&] {
        if (words.first() == "remove")
            table.model->removeRows(words.at(1).toInt(), words.at(2).toInt());
        if (words.first() == "sort") {
            table.model->isSlow = false;
            table.model->sort(0, Qt::DescendingOrder);
        }
        for (int i = 0; words.first() == "insert" && i < words.at(2).toInt(); ++i)
            table.model->insertRow(words.at(1).toInt(), item(utf8("n")));
    });
    QVERIFY(!table.find->find(utf8("nothing"), isForward, true));
    QCOMPARE(table.find->asked, asked);
}

void tst_AbstractItemViewFind::startRowRemovedInEvents()
{
    SlowTable table {{"a"}, {"b"}, {"c"}};
    table.view->setCurrentIndex(table.model->index(1, 0));
    table.inEvents([&] { table.model->removeRow(1); });
    // Where it would have to end is gone: it ends behind the last row.
    QVERIFY(!table.find->findNext(utf8("nothing")));
    QCOMPARE(table.find->asked, utf8("c a c").split(u' '));
}

void tst_AbstractItemViewFind::branchRemovedInEvents()
{
    const auto run = [](const char *start, bool isForward, const char *removed) {
        SlowModel model;
        fillTree(&model);
        QTreeView view;
        view.setModel(&model);
        view.hideColumn(1);
        RecordingEngine find;
        find.setView(&view);
        find.setHeader(view.header());
        const auto index = [&](const char *name) {
            return QPersistentModelIndex(model
                                             .match(model.index(0, 0), Qt::EditRole, utf8(name), 1,
                                                    Qt::MatchExactly | Qt::MatchRecursive)
                                             .value(0));
        };
        model.isSlow = false;
        view.setCurrentIndex(index(start));
        const QPersistentModelIndex row = index(removed);
        model.isSlow = true;
        QTimer::singleShot(0, &model, [&] { model.removeRow(row.row(), row.parent()); });
        const bool isFound = find.find(utf8("nothing"), isForward, true);
        return isFound ? QStringLiteral("found") : find.asked.join(u' ');
    };
    // The rows are a(b(c, d), e), f(g).
    QCOMPARE(run("c", true, "b"), utf8("c e f g a e f g"));
    QCOMPARE(run("c", true, "a"), utf8("c f g f g"));
    QCOMPARE(run("g", true, "f"), utf8("g a b c d e"));
    QCOMPARE(run("e", false, "b"), utf8("d a"));
    QCOMPARE(run("e", false, "a"), utf8("d"));
    QCOMPARE(run("f", false, "e"), utf8("e d c b a"));
}

void tst_AbstractItemViewFind::modelResetInEvents()
{
    SlowTable table {{"a"}, {"b"}, {"c"}};
    table.inEvents([&] { table.model->clear(); });
    QVERIFY(!table.find->findIncremental(utf8("c")));

    SlowTable same {{"a"}, {"b"}, {"c"}};
    same.inEvents([&] {
        same.model->beginResetModel();
        same.model->endResetModel();
    });
    QVERIFY(!same.find->findIncremental(utf8("c")));
    QCOMPARE(same.find->asked, QStringList("a"));
}

void tst_AbstractItemViewFind::filterChangedInEvents()
{
    SlowTable table {{"a"}, {"b"}, {"ac"}, {"b"}, {"ad"}};
    SortFilterProxyModel proxy;
    proxy.setSourceModel(table.model.get());
    table.view->setModel(&proxy);
    table.inEvents([&] {
        table.model->isSlow = false;
        table.find->filter(utf8("a"));
    });
    QVERIFY(table.find->findIncremental(utf8("d")));
    QCOMPARE(table.find->asked, utf8("a ac ad").split(u' '));
    QCOMPARE(table.view->currentIndex().row(), 2);

    table.model->isSlow = true;
    table.find->asked.clear();
    table.inEvents([&] {
        table.model->isSlow = false;
        table.find->filter(utf8("none"));
    });
    QVERIFY(!table.find->findPrev(utf8("nothing")));
    QCOMPARE(table.find->asked, QStringList("ac"));
}

//! The caller's string may be a field that changes or goes.
void tst_AbstractItemViewFind::textChangedInEvents()
{
    SlowTable table {{"a"}, {"b"}, {"c"}, {"b"}};
    QString text = utf8("c");
    table.inEvents([&] { text = utf8("b"); });
    QVERIFY(table.find->findIncremental(text));
    QCOMPARE(text, utf8("b"));
    QCOMPARE(table.current(), utf8("c"));

    table.view->setCurrentIndex(table.model->index(3, 0));
    table.inEvents([&] { text = utf8("c"); });
    text = utf8("nothing");
    QVERIFY(!table.find->findPrev(text));
    QCOMPARE(table.view->currentIndex().row(), 3);
}

void tst_AbstractItemViewFind::throwingRule()
{
    class Throwing : public Engine
    {
    public:
        bool acceptsData(const QVariant &data, const QString &text, int column) const override
        {
            if (throws)
                throw std::runtime_error("refused");
            return Engine::acceptsData(data, text, column);
        }
        bool throws = true;
    };
    Table table {{"a"}, {"b"}};
    Throwing find;
    find.setView(&table.view);
    find.setHeader(table.view.horizontalHeader());
    QVERIFY_THROWS_EXCEPTION(std::runtime_error, find.findIncremental(utf8("b")));
    find.throws = false;
    QVERIFY(find.findIncremental(utf8("b")));
    QVERIFY(find.findPrev(utf8("a")));
}

namespace {

//! What a search should find, by lists of rows instead of steps.
class BruteForce
{
public:
    BruteForce(const QAbstractItemModel *model, const QList<int> &columns, const QString &text)
        : m_model(model)
        , m_columns(columns)
        , m_text(text.toLower())
    {
    }

    QModelIndex next(const QModelIndex &start, bool isIncremental) const
    {
        QModelIndexList rows;
        if (isIncremental)
            rows << start;
        appendRowsUnder(start, m_columns.first(), &rows);
        appendRowsAfter(start, &rows);
        if (const QModelIndex hit = firstIn(rows, isIncremental ? start.column() : -1);
            hit.isValid())
            return hit;
        QModelIndexList all;
        appendRowsUnder({}, m_columns.first(), &all);
        const qsizetype end = all.indexOf(start.sibling(start.row(), m_columns.first()));
        return firstIn(end < 0 ? all : all.first(end), -1);
    }

    QModelIndex previous(const QModelIndex &start) const
    {
        QModelIndexList rows;
        for (QModelIndex at = start; at.isValid(); at = at.parent()) {
            for (int row = at.row() - 1; row >= 0; --row) {
                QModelIndexList branch {m_model->index(row, m_columns.last(), at.parent())};
                appendRowsUnder(branch.first(), m_columns.last(), &branch);
                std::reverse(branch.begin(), branch.end());
                rows << branch;
            }
            if (at.parent().isValid())
                rows << at.parent();
        }
        for (const QModelIndex &row : rows) {
            for (qsizetype i = m_columns.size() - 1; i >= 0; --i) {
                if (matches(row.sibling(row.row(), m_columns.at(i))))
                    return row.sibling(row.row(), m_columns.at(i));
            }
        }
        return {};
    }

private:
    void appendRowsUnder(const QModelIndex &parent, int column, QModelIndexList *rows) const
    {
        for (int row = 0; row < m_model->rowCount(parent); ++row) {
            rows->append(m_model->index(row, column, parent));
            appendRowsUnder(rows->last(), column, rows);
        }
    }
    void appendRowsAfter(const QModelIndex &start, QModelIndexList *rows) const
    {
        for (QModelIndex at = start; at.isValid(); at = at.parent()) {
            for (int row = at.row() + 1; row < m_model->rowCount(at.parent()); ++row) {
                rows->append(m_model->index(row, m_columns.first(), at.parent()));
                appendRowsUnder(rows->last(), m_columns.first(), rows);
            }
        }
    }
    //! The first hit; of the first row only from column \a from on.
    QModelIndex firstIn(const QModelIndexList &rows, int from) const
    {
        for (qsizetype i = 0; i < rows.size(); ++i) {
            const qsizetype first = i == 0 ? m_columns.indexOf(from) : -1;
            for (qsizetype c = qMax<qsizetype>(first, 0); c < m_columns.size(); ++c) {
                const QModelIndex cell = rows.at(i).sibling(rows.at(i).row(), m_columns.at(c));
                if (matches(cell))
                    return cell;
            }
        }
        return {};
    }
    bool matches(const QModelIndex &cell) const
    {
        return cell.data().toString().toLower().indexOf(m_text) >= 0;
    }

    const QAbstractItemModel *m_model;
    QList<int> m_columns;
    QString m_text;
};

void fillRandomly(QStandardItem *parent, int depth, int columns, QRandomGenerator &random)
{
    const int rows = random.bounded(depth == 0 ? 1 : 0, 5);
    for (int row = 0; row < rows; ++row) {
        QList<QStandardItem *> items;
        for (int column = 0; column < columns; ++column) {
            QString text;
            for (int n = random.bounded(4); n > 0; --n)
                text += QStringLiteral("abcABC").at(random.bounded(6));
            items << item(text);
        }
        parent->appendRow(items);
        // Mostly under the first column, as models do, now and then under any.
        if (depth < 3) {
            const int under = random.bounded(4) ? 0 : random.bounded(columns);
            fillRandomly(items.at(under), depth + 1, columns, random);
        }
    }
}

QModelIndex randomRow(const QAbstractItemModel &model, QRandomGenerator &random)
{
    QModelIndex at;
    do {
        at = model.index(random.bounded(model.rowCount(at)), random.bounded(model.columnCount(at)),
                         at);
    } while (model.hasChildren(at) && random.bounded(2));
    return at;
}

} // namespace

void tst_AbstractItemViewFind::randomTrees_data()
{
    QTest::addColumn<quint32>("seed");
    for (quint32 seed = 1; seed <= 8; ++seed)
        QTest::addRow("seed %u", seed) << seed;
}

void tst_AbstractItemViewFind::randomTrees()
{
    QFETCH(quint32, seed);
    QRandomGenerator random(seed);
    int hits = 0;
    for (int round = 0; round < 250; ++round) {
        const int columns = random.bounded(1, 4);
        QStandardItemModel model;
        model.setColumnCount(columns);
        fillRandomly(model.invisibleRootItem(), 0, columns, random);
        QTreeView view;
        view.setModel(&model);
        QHeaderView *header = view.header();
        header->moveSection(random.bounded(columns), random.bounded(columns));
        if (columns > 1 && random.bounded(3) == 0)
            header->hideSection(random.bounded(columns));
        Engine find;
        find.setView(&view);
        find.setHeader(header);
        const QList<int> shown = getVisibleColumns(header);
        for (int search = 0; search < 6; ++search) {
            QString text;
            for (int n = random.bounded(1, 4); n > 0; --n)
                text += QStringLiteral("abcABC").at(random.bounded(6));
            const BruteForce expected(&model, shown, text);
            const QModelIndex start = randomRow(model, random);
            view.setCurrentIndex(start);
            const int way = random.bounded(3);
            const QModelIndex hit =
                way == 2 ? expected.previous(start) : expected.next(start, way == 0);
            hits += hit.isValid();
            QCOMPARE(find.find(text, way != 2, way == 0), hit.isValid());
            QCOMPARE(view.currentIndex(), hit.isValid() ? hit : start);
        }
    }
    // Both outcomes have to be met for this to mean something.
    QVERIFY(hits > 300 && hits < 1200);
}

void tst_AbstractItemViewFind::randomTables()
{
    const quint32 seed = 99;
    qInfo("seed %u", seed);
    QRandomGenerator random(seed);
    const QLocale english(QLocale::English, QLocale::UnitedStates);
    for (int round = 0; round < 300; ++round) {
        QStandardItemModel model;
        for (int row = random.bounded(1, 12); row > 0; --row) {
            const int number = int(random.generate() >> random.bounded(32));
            model.appendRow(itemsOf({number, double(number) / 4, QString::number(number)}));
        }
        QTableView view;
        view.setLocale(english);
        view.setModel(&model);
        Engine find;
        find.setView(&view);
        find.setHeader(view.horizontalHeader());
        const QString digits = QString::number(random.bounded(1, 200));
        const int start = random.bounded(model.rowCount());
        view.setCurrentIndex(model.index(start, 0));

        QModelIndex hit;
        for (int i = 1; i < model.rowCount() && !hit.isValid(); ++i) {
            const int row = (start + i) % model.rowCount();
            for (int column = 2; column >= 0; --column) {
                const QVariant value = model.index(row, column).data();
                QString text = value.toString();
                if (column == 0)
                    text = english.toString(value.toLongLong()).remove(u',');
                if (column == 1)
                    text = english.toString(value.toDouble()).remove(u',');
                if (text.contains(digits, Qt::CaseInsensitive))
                    hit = model.index(row, column);
            }
        }
        QCOMPARE(find.findNext(digits), hit.isValid());
        QCOMPARE(view.currentIndex(), hit.isValid() ? hit : model.index(start, 0));
    }
}

QTEST_MAIN(tst_AbstractItemViewFind)
#include "tst_abstractitemviewfind.moc"
