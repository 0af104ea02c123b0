// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "sortfilterproxymodel.h"

#include <QRandomGenerator>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QStandardItemModel>
#include <QTest>

namespace {

//! Tells when the hooks were called, and how many rows there were then.
class HookedProxy : public SortFilterProxyModel
{
public:
    using SortFilterProxyModel::filterAcceptsRow;

    QStringList calls;

protected:
    void filterAboutToBeReset() override { calls << QStringLiteral("before %1").arg(rowCount()); }
    void filterReset() override { calls << QStringLiteral("after %1").arg(rowCount()); }
};

void appendRow(QStandardItemModel *model, const QVariantList &values)
{
    QList<QStandardItem *> items;
    for (const QVariant &value : values) {
        items << new QStandardItem;
        items.last()->setData(value, Qt::DisplayRole);
    }
    model->appendRow(items);
}

QStringList firstColumn(const QAbstractItemModel &model)
{
    QStringList texts;
    for (int row = 0; row < model.rowCount(); ++row)
        texts << model.index(row, 0).data().toString();
    return texts;
}

} // namespace

class tst_SortFilterProxyModel : public QObject
{
    Q_OBJECT

private slots:
    void showsAllAtFirst();
    void rowTest_data();
    void rowTest();
    void hooksSurroundTheFilter();
    void sameTextDoesNothing();
    void columnsAloneDoNotFilter();
    void dynamicColumns();
    void caseSensitivity_data();
    void caseSensitivity();
    void caseFiltersAtOnce();
    void emptyFilterShowsAll();
    void columnsBeyondTheModel();
    void withoutSourceModel();
    void newRowsAreJudged();
    void sortingIsTheBaseClasss();
    void baseClassFilterPlaysNoPart();
    void treeRowsStandForThemselves();
    void hooksCanBeReplaced();
    void randomTables();
};

void tst_SortFilterProxyModel::showsAllAtFirst()
{
    QStandardItemModel model(3, 2);
    SortFilterProxyModel proxy;
    proxy.setSourceModel(&model);
    QCOMPARE(proxy.rowCount(), 3);
    proxy.setVisibleColumns({});
    QCOMPARE(proxy.rowCount(), 3);
}

void tst_SortFilterProxyModel::rowTest_data()
{
    QTest::addColumn<QVariantList>("row");
    QTest::addColumn<QList<int>>("columns");
    QTest::addColumn<QString>("filter");
    QTest::addColumn<bool>("isShown");

    const QList<int> both {0, 1};
    const auto text = [](const char *utf8) { return QString::fromUtf8(utf8); };
    QTest::newRow("inside") << QVariantList {"xAbx", "-"} << both << text("Ab") << true;
    QTest::newRow("other case") << QVariantList {"xabx", "-"} << both << text("Ab") << false;
    QTest::newRow("whole") << QVariantList {"Ab", "-"} << both << text("Ab") << true;
    QTest::newRow("second column") << QVariantList {"-", "Ab"} << both << text("Ab") << true;
    QTest::newRow("second column alone")
        << QVariantList {"Ab", "-"} << QList<int> {1} << text("Ab") << false;
    QTest::newRow("hidden column")
        << QVariantList {"-", "Ab"} << QList<int> {0} << text("Ab") << false;
    QTest::newRow("columns turned round")
        << QVariantList {"-", "Ab"} << QList<int> {1, 0} << text("Ab") << true;
    QTest::newRow("across columns") << QVariantList {"xA", "bx"} << both << text("Ab") << false;
    QTest::newRow("no column") << QVariantList {"Ab", "Ab"} << QList<int> {} << text("Ab") << false;
    QTest::newRow("number") << QVariantList {1234, "-"} << both << text("23") << true;
    QTest::newRow("number, spaced") << QVariantList {1234, "-"} << both << text("1 234") << false;
    QTest::newRow("number, grouped") << QVariantList {1234, "-"} << both << text("1,234") << false;
    QTest::newRow("real number") << QVariantList {0.5, "-"} << both << text("0.5") << true;
    QTest::newRow("truth") << QVariantList {true, "-"} << both << text("true") << true;
    QTest::newRow("no value") << QVariantList {QVariant(), "-"} << both << text("x") << false;
    QTest::newRow("empty filter") << QVariantList {"-", "-"} << both << QString() << true;
    QTest::newRow("no wildcards") << QVariantList {"axb", "-"} << both << text("a.b") << false;
    QTest::newRow("beyond the basic plane")
        << QVariantList {text("a\U0001F600b"), "-"} << both << text("\U0001F600") << true;
}

void tst_SortFilterProxyModel::rowTest()
{
    QFETCH(QVariantList, row);
    QFETCH(QList<int>, columns);
    QFETCH(QString, filter);
    QFETCH(bool, isShown);

    QStandardItemModel model;
    appendRow(&model, row);
    SortFilterProxyModel proxy;
    proxy.setSourceModel(&model);
    proxy.setVisibleColumns(columns);
    proxy.setFilter(filter);
    QCOMPARE(proxy.rowCount(), isShown ? 1 : 0);
}

void tst_SortFilterProxyModel::hooksSurroundTheFilter()
{
    QStandardItemModel model;
    appendRow(&model, {"a"});
    appendRow(&model, {"b"});
    HookedProxy proxy;
    proxy.setSourceModel(&model);
    proxy.setVisibleColumns({0});
    QCOMPARE(proxy.rowCount(), 2);
    QSignalSpy removed(&proxy, &QAbstractItemModel::rowsRemoved);
    proxy.setFilter(QStringLiteral("b"));
    QCOMPARE(proxy.calls, QStringList({"before 2", "after 1"}));
    QCOMPARE(removed.size(), 1);
    QCOMPARE(firstColumn(proxy), QStringList("b"));
}

void tst_SortFilterProxyModel::sameTextDoesNothing()
{
    QStandardItemModel model;
    appendRow(&model, {"a"});
    HookedProxy proxy;
    proxy.setSourceModel(&model);
    proxy.setVisibleColumns({0});
    QCOMPARE(proxy.rowCount(), 1);
    proxy.setFilter(QString());
    QVERIFY(proxy.calls.isEmpty());
    proxy.setFilter(QStringLiteral("b"));
    proxy.setFilter(QStringLiteral("b"));
    QCOMPARE(proxy.calls, QStringList({"before 1", "after 0"}));
    proxy.setFilter(QStringLiteral("B"));
    QCOMPARE(proxy.calls.size(), 4);
}

void tst_SortFilterProxyModel::columnsAloneDoNotFilter()
{
    QStandardItemModel model;
    appendRow(&model, {"a", "b"});
    HookedProxy proxy;
    proxy.setSourceModel(&model);
    proxy.setVisibleColumns({0});
    proxy.setFilter(QStringLiteral("a"));
    QCOMPARE(proxy.rowCount(), 1);
    proxy.setVisibleColumns({1});
    QCOMPARE(proxy.rowCount(), 1);
    proxy.setFilter(QStringLiteral("a"));
    QCOMPARE(proxy.rowCount(), 1);
    QCOMPARE(proxy.calls.size(), 2);
    proxy.setFilter(QStringLiteral("aa"));
    proxy.setFilter(QStringLiteral("a"));
    QCOMPARE(proxy.rowCount(), 0);
}

//! Columns that come after the text.
void tst_SortFilterProxyModel::dynamicColumns()
{
    QStandardItemModel model;
    appendRow(&model, {"a", "b"});
    appendRow(&model, {"b", "b"});
    HookedProxy proxy;
    proxy.setSourceModel(&model);
    QCOMPARE(proxy.rowCount(), 2);
    QVERIFY(!proxy.property("dynamicColumns").toBool());
    proxy.setDynamicColumns(true);
    proxy.setVisibleColumns({0, 1});
    QVERIFY(proxy.calls.isEmpty()); // all rows stay
    proxy.setVisibleColumns({});
    proxy.setFilter(QStringLiteral("a"));
    QCOMPARE(proxy.rowCount(), 0);
    proxy.setVisibleColumns({0});
    QCOMPARE(firstColumn(proxy), QStringList("a"));
    proxy.setVisibleColumns({0});
    QCOMPARE(proxy.calls, QStringList({"before 2", "after 0", "before 0", "after 1"}));
    proxy.setVisibleColumns({1});
    QCOMPARE(proxy.rowCount(), 0);
    proxy.setDynamicColumns(false);
    proxy.setVisibleColumns({0});
    QCOMPARE(proxy.rowCount(), 0);
}

void tst_SortFilterProxyModel::caseSensitivity_data()
{
    QTest::addColumn<QString>("cell");
    QTest::addColumn<QString>("filter");
    QTest::addColumn<bool>("isShownApart");
    QTest::addColumn<bool>("isShownAlike");

    const auto text = [](const char *utf8) { return QString::fromUtf8(utf8); };
    QTest::newRow("same") << text("xAbx") << text("Ab") << true << true;
    QTest::newRow("other case") << text("xabx") << text("Ab") << false << true;
    QTest::newRow("other text") << text("xabx") << text("Ac") << false << false;
    QTest::newRow("no text") << text("x") << QString() << true << true;
    QTest::newRow("Greek") << text("ΩΜΈΓΑ") << text("ωμ") << false << true;
    QTest::newRow("Cyrillic") << text("Запись") << text("ЗАП") << false << true;
    QTest::newRow("beyond the basic plane")
        << text("\U00010400") << text("\U00010428") << false << true;
}

void tst_SortFilterProxyModel::caseSensitivity()
{
    QFETCH(QString, cell);
    QFETCH(QString, filter);
    QFETCH(bool, isShownApart);
    QFETCH(bool, isShownAlike);

    QStandardItemModel model;
    appendRow(&model, {cell});
    SortFilterProxyModel proxy;
    proxy.setSourceModel(&model);
    proxy.setVisibleColumns({0});
    proxy.setFilter(filter);
    QCOMPARE(proxy.filterCaseSensitivity(), Qt::CaseSensitive);
    QCOMPARE(proxy.rowCount(), isShownApart ? 1 : 0);
    QVERIFY(proxy.setProperty("filterCaseSensitivity", QVariant::fromValue(Qt::CaseInsensitive)));
    QCOMPARE(proxy.filterCaseSensitivity(), Qt::CaseInsensitive);
    QCOMPARE(proxy.rowCount(), isShownAlike ? 1 : 0);
    proxy.setFilterCaseSensitivity(Qt::CaseSensitive);
    QCOMPARE(proxy.rowCount(), isShownApart ? 1 : 0);
}

void tst_SortFilterProxyModel::caseFiltersAtOnce()
{
    QStandardItemModel model;
    appendRow(&model, {"a"});
    appendRow(&model, {"A"});
    HookedProxy proxy;
    proxy.setSourceModel(&model);
    proxy.setVisibleColumns({0});
    QCOMPARE(proxy.rowCount(), 2);
    proxy.setFilterCaseSensitivity(Qt::CaseInsensitive);
    proxy.setFilterCaseSensitivity(Qt::CaseSensitive);
    QVERIFY(proxy.calls.isEmpty()); // there is nothing to filter by
    proxy.setFilter(QStringLiteral("a"));
    proxy.calls.clear();
    QSignalSpy inserted(&proxy, &QAbstractItemModel::rowsInserted);
    proxy.setFilterCaseSensitivity(Qt::CaseInsensitive);
    proxy.setFilterCaseSensitivity(Qt::CaseInsensitive);
    QCOMPARE(proxy.calls, QStringList({"before 1", "after 2"}));
    QCOMPARE(inserted.size(), 1);
}

void tst_SortFilterProxyModel::emptyFilterShowsAll()
{
    QStandardItemModel model(5, 1);
    SortFilterProxyModel proxy;
    proxy.setSourceModel(&model);
    proxy.setFilter(QStringLiteral("x"));
    QCOMPARE(proxy.rowCount(), 0);
    proxy.setFilter(QString());
    QCOMPARE(proxy.rowCount(), 5);
}

void tst_SortFilterProxyModel::columnsBeyondTheModel()
{
    QStandardItemModel model;
    appendRow(&model, {"a"});
    SortFilterProxyModel proxy;
    proxy.setSourceModel(&model);
    proxy.setVisibleColumns({-1, 7});
    proxy.setFilter(QStringLiteral("a"));
    QCOMPARE(proxy.rowCount(), 0);
    proxy.setVisibleColumns({-1, 7, 0});
    proxy.setFilter(QStringLiteral("A"));
    proxy.setFilter(QStringLiteral("a"));
    QCOMPARE(proxy.rowCount(), 1);
}

void tst_SortFilterProxyModel::withoutSourceModel()
{
    HookedProxy proxy;
    proxy.setVisibleColumns({0});
    proxy.setFilter(QStringLiteral("a"));
    QCOMPARE(proxy.rowCount(), 0);
    QVERIFY(!proxy.filterAcceptsRow(0, QModelIndex()));
}

void tst_SortFilterProxyModel::newRowsAreJudged()
{
    QStandardItemModel model;
    SortFilterProxyModel proxy;
    proxy.setSourceModel(&model);
    proxy.setVisibleColumns({0});
    proxy.setFilter(QStringLiteral("a"));
    appendRow(&model, {"a"});
    appendRow(&model, {"b"});
    appendRow(&model, {"ba"});
    QCOMPARE(firstColumn(proxy), QStringList({"a", "ba"}));
    model.item(1)->setText(QStringLiteral("bab"));
    QCOMPARE(firstColumn(proxy), QStringList({"a", "bab", "ba"}));
}

void tst_SortFilterProxyModel::sortingIsTheBaseClasss()
{
    QStandardItemModel model;
    appendRow(&model, {"b1"});
    appendRow(&model, {"c"});
    appendRow(&model, {"b0"});
    SortFilterProxyModel proxy;
    proxy.setSourceModel(&model);
    proxy.setVisibleColumns({0});
    proxy.setFilter(QStringLiteral("b"));
    proxy.sort(0);
    QCOMPARE(firstColumn(proxy), QStringList({"b0", "b1"}));
}

void tst_SortFilterProxyModel::baseClassFilterPlaysNoPart()
{
    QStandardItemModel model;
    appendRow(&model, {"a", "b"});
    SortFilterProxyModel proxy;
    proxy.setSourceModel(&model);
    proxy.setFilterFixedString(QStringLiteral("nothing"));
    proxy.setFilterKeyColumn(1);
    QCOMPARE(proxy.rowCount(), 1);
    proxy.setVisibleColumns({0});
    proxy.setFilter(QStringLiteral("a"));
    QCOMPARE(proxy.rowCount(), 1);
    proxy.setFilterRegularExpression(
        QRegularExpression(QStringLiteral("nothing"), QRegularExpression::CaseInsensitiveOption));
    proxy.setFilter(QStringLiteral("A"));
    QCOMPARE(proxy.rowCount(), 0);
}

void tst_SortFilterProxyModel::treeRowsStandForThemselves()
{
    QStandardItemModel model;
    appendRow(&model, {"parent"});
    model.item(0)->appendRow(new QStandardItem(QStringLiteral("child")));
    model.item(0)->appendRow(new QStandardItem(QStringLiteral("a parent's")));
    SortFilterProxyModel proxy;
    proxy.setSourceModel(&model);
    proxy.setVisibleColumns({0});
    proxy.setFilter(QStringLiteral("child"));
    QCOMPARE(proxy.rowCount(), 0);
    proxy.setFilter(QStringLiteral("parent"));
    QCOMPARE(proxy.rowCount(), 1);
    QCOMPARE(proxy.rowCount(proxy.index(0, 0)), 1);
    proxy.setRecursiveFilteringEnabled(true);
    proxy.setFilter(QStringLiteral("child"));
    QCOMPARE(proxy.rowCount(), 1);
}

void tst_SortFilterProxyModel::hooksCanBeReplaced()
{
    // A hook that replaces the one before it still sees both calls.
    class Counting : public HookedProxy
    {
    protected:
        void filterReset() override { calls << QStringLiteral("mine"); }
    };
    Counting proxy;
    proxy.setFilter(QStringLiteral("a"));
    QCOMPARE(proxy.calls, QStringList({"before 0", "mine"}));
}

void tst_SortFilterProxyModel::randomTables()
{
    const quint32 seed = 20261121;
    qInfo("seed %u", seed);
    QRandomGenerator random(seed);
    const auto text = [&](int most) {
        QString s;
        for (int n = random.bounded(most + 1); n > 0; --n)
            s += QStringLiteral("abAB").at(random.bounded(4));
        return s;
    };
    for (int round = 0; round < 200; ++round) {
        QStandardItemModel model;
        for (int row = 0; row < 20; ++row)
            appendRow(&model, {text(4), text(4), random.bounded(1000)});
        QList<int> columns {0, 1, 2};
        columns.removeAt(random.bounded(3));
        const QString filter = random.bounded(4) ? text(3) : QString::number(random.bounded(100));
        SortFilterProxyModel proxy;
        proxy.setSourceModel(&model);
        proxy.setVisibleColumns(columns);
        proxy.setFilter(filter);

        QStringList expected;
        for (int row = 0; row < model.rowCount(); ++row) {
            bool isShown = filter.isEmpty();
            for (const int column : columns)
                isShown = isShown || model.item(row, column)->text().indexOf(filter) != -1;
            if (isShown)
                expected << model.item(row)->text();
        }
        QCOMPARE(firstColumn(proxy), expected);
    }
}

QTEST_MAIN(tst_SortFilterProxyModel)
#include "tst_sortfilterproxymodel.moc"
