// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

// A table of a database: its rows are fetched in batches as one scrolls, its cells are edited,
// and changes are submitted or taken back.

#include "sidebyside.h"

#include <itemdelegate.h>

#include <QApplication>
#include <QScrollBar>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QSqlTableModel>
#include <QTableView>
#include <QTest>
#include <QToolTip>

namespace {

constexpr int customerCount = 2500;

//! Customers; a limit must not be negative.
class CustomerModel : public QSqlTableModel
{
public:
    using QSqlTableModel::QSqlTableModel;

    enum Column {
        Id,
        Name,
        City,
        Limit,
        Note,
    };

    bool setData(const QModelIndex &index, const QVariant &value, int role) override
    {
        if (index.column() == Limit && role == Qt::EditRole && value.toInt() < 0)
            return false;
        return QSqlTableModel::setData(index, value, role);
    }
};

//! A database of its own, in memory.
void createDatabase(const QString &connection)
{
    QSqlDatabase database = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), connection);
    database.setDatabaseName(QStringLiteral(":memory:"));
    QVERIFY2(database.open(), qPrintable(database.lastError().text()));
    QSqlQuery query(database);
    QVERIFY(query.exec(QStringLiteral("create table customers (id integer primary key, "
                                      "name text, city text, \"limit\" integer, note text)")));
    database.transaction();
    query.prepare(QStringLiteral("insert into customers values (?, ?, ?, ?, ?)"));
    static const QStringList cities {"Utrecht", "Graz", "Porto", "Bergen", "Lyon", "Turku"};
    for (int id = 1; id <= customerCount; ++id) {
        query.addBindValue(id);
        query.addBindValue(QStringLiteral("Customer %1").arg(id));
        query.addBindValue(cities.at(id * 7 % cities.size()));
        query.addBindValue(id * 37 % 5000);
        query.addBindValue(QString());
        QVERIFY(query.exec());
    }
    database.commit();
}

//! The program: two databases with a model and a view each.
class Program
{
public:
    explicit Program(QSqlTableModel::EditStrategy strategy, const QList<Difference> &expected = {})
        : window(new ProgramView, new QTableView, expected)
    {
        auto *table = static_cast<QTableView *>(&peer);
        table->verticalHeader()->setMinimumSectionSize(1);
        table->verticalHeader()->setDefaultSectionSize(rowHeight);
        table->verticalHeader()->hide();
        ours.setRowHeight(rowHeight);
        ours.setStandardKeys(true);
        ours.setFollowsCurrentRow(false);
        setUp(ours, QStringLiteral("ours"), strategy);
        setUp(peer, QStringLiteral("peer"), strategy);
        window.compareToo(QStringLiteral("cell"), [](QAbstractItemView &view) {
            return view.currentIndex().data(Qt::EditRole).toString();
        });
        window.compareToo(QStringLiteral("database"), [](QAbstractItemView &view) {
            QSqlQuery query(modelOf(view).database());
            query.exec(QStringLiteral("select count(*), sum(\"limit\"), min(name), max(city), "
                                      "max(note) from customers"));
            query.next();
            QStringList texts;
            for (int i = 0; i < 5; ++i)
                texts.append(query.value(i).toString());
            return texts.join(QLatin1Char(' '));
        });
        window.compareToo(QStringLiteral("changed"), [](QAbstractItemView &view) {
            return modelOf(view).isDirty() ? QStringLiteral("yes") : QStringLiteral("no");
        });
    }
    ~Program()
    {
        for (QAbstractItemView *view : {static_cast<QAbstractItemView *>(&ours), &peer})
            delete view->model();
        for (const char *name : {"ours", "peer"}) {
            QSqlDatabase::database(QLatin1String(name)).close();
            QSqlDatabase::removeDatabase(QLatin1String(name));
        }
    }

    static CustomerModel &modelOf(const QAbstractItemView &view)
    {
        return *static_cast<CustomerModel *>(view.model());
    }

    static constexpr int rowHeight = 22;

    SideBySide window;
    ProgramView &ours = window.ours();
    QAbstractItemView &peer = window.peer();

private:
    void setUp(QAbstractItemView &view, const QString &connection,
               QSqlTableModel::EditStrategy strategy)
    {
        createDatabase(connection);
        auto *model = new CustomerModel(nullptr, QSqlDatabase::database(connection));
        model->setTable(QStringLiteral("customers"));
        model->setEditStrategy(strategy);
        QVERIFY(model->select());
        view.setModel(model);
        view.setItemDelegate(new Vantix::ItemDelegate(&view));
        view.setSelectionBehavior(QAbstractItemView::SelectItems);
        view.setSelectionMode(QAbstractItemView::ExtendedSelection);
        view.setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::EditKeyPressed
                             | QAbstractItemView::AnyKeyPressed);
    }
};

//! What is done with the model of a view.
SideBySide::Step inModel(const std::function<void(CustomerModel &)> &act)
{
    return [act](QAbstractItemView &view) { act(Program::modelOf(view)); };
}

SideBySide::Step makeCurrent(int row, int column)
{
    return [=](QAbstractItemView &view) { view.setCurrentIndex(view.model()->index(row, column)); };
}

void fetchAll(QAbstractItemView &view)
{
    while (view.model()->canFetchMore({}))
        view.model()->fetchMore({});
}

SideBySide::Step fetchUpTo(int rows)
{
    return [=](QAbstractItemView &view) {
        while (view.model()->rowCount() < rows)
            view.model()->fetchMore({});
    };
}

//! The current cell gets another text.
SideBySide::Step edit(const QString &text, Qt::Key end = Qt::Key_Return)
{
    return inTurn({pressKey(Qt::Key_F2), typeText(text), pressKeyInEditor(end)});
}

const QString oneBatch =
    QStringLiteral("a key that leads to the end fetches one batch of rows, not two");

QList<Difference> fetchingDifferences(bool isPerPixel)
{
    QList<Difference> differences {{"last cell", "rows", "1021", oneBatch}};
    if (isPerPixel) {
        differences += {{"down", "last", "513 514", Why::cut},
                        {"last cell", "last", "764 765", Why::cut},
                        {"as many in both", "last", "764 765", Why::cut},
                        {"down at the end", "last", "765 766", Why::cut},
                        {"page down", "last", "801 802", Why::cut},
                        {"last of these", "last", "509 553", Why::cut},
                        {"all", "last", "509 553", Why::cut},
                        {"last of all", "last", "2498 2490", Why::cut},
                        {"page down through all", "last", "297 288", Why::cut}};
    }
    return differences;
}

//! A model that submits by hand reads the table anew then, in which the row that was inserted
//! in sight is the last one.
QList<Difference> rowDifferences(bool isByHand)
{
    const auto row = [=](int number, int id) {
        return QStringLiteral("%1 %2").arg(number - isByHand).arg(id);
    };
    return {{"append", "first", QStringLiteral("2490 %1").arg(2490 + isByHand), Why::atEnd},
            {"append", "last", "2501 0", Why::atEnd},
            {"insert at the top", "first", row(1246, 1245), Why::sameRows},
            {"insert at the top", "last", row(1257, 1256), Why::sameRows},
            {"take it back", "first", row(1245, 1245), Why::sameRows},
            {"take it back", "last", row(1256, 1256), Why::sameRows}};
}

} // namespace

class TestTables : public QObject
{
    Q_OBJECT

public:
    static void initMain() { qputenv("QT_SCALE_FACTOR", "1"); }

private Q_SLOTS:
    void initTestCase();
    void cleanup() { QToolTip::hideText(); }
    void fetches_data();
    void fetches();
    void edits_data();
    void edits();
    void changesRows_data() { edits_data(); }
    void changesRows();
};

void TestTables::initTestCase()
{
    if (!QSqlDatabase::isDriverAvailable(QStringLiteral("QSQLITE")))
        QSKIP("Qt's driver for SQLite is not installed");
    QApplication::setCursorFlashTime(0);
}

void TestTables::fetches_data()
{
    QTest::addColumn<QAbstractItemView::ScrollMode>("mode");
    QTest::newRow("rows") << QAbstractItemView::ScrollPerItem;
    QTest::newRow("pixels") << QAbstractItemView::ScrollPerPixel;
}

//! Rows are fetched as one comes to the end of those that are there.
void TestTables::fetches()
{
    QFETCH(QAbstractItemView::ScrollMode, mode);
    Program program(QSqlTableModel::OnManualSubmit,
                    fetchingDifferences(mode == QAbstractItemView::ScrollPerPixel));
    program.ours.setVerticalScrollMode(mode);
    program.peer.setVerticalScrollMode(mode);
    SideBySide &window = program.window;
    window.showWith(12, 5);

    const auto scrollToBottom = [](QAbstractItemView &view) { view.scrollToBottom(); };
    window.both("scroll to the bottom", scrollToBottom);
    window.both("scroll to the bottom again", scrollToBottom);
    window.both("click", clickCell(5, 1));
    window.both("down", pressKey(Qt::Key_Down, Qt::NoModifier, 10));
    window.both("last cell", pressKey(Qt::Key_End, Qt::ControlModifier));
    window.both("as many in both", fetchUpTo(1276));
    window.both("down at the end", pressKey(Qt::Key_Down));
    window.both("page down", pressKey(Qt::Key_PageDown, Qt::NoModifier, 3));
    window.both("slider nearly to the end", dragSlider(0.99));
    window.both("slider to the end", dragSlider(1));
    window.both("wheel", turnWheel(200));
    window.both("edit the last", inTurn({makeCurrent(1023, 1), edit("Zoe")}));
    window.both("sort", [](QAbstractItemView &view) {
        view.model()->sort(CustomerModel::City, Qt::AscendingOrder);
    });
    window.both("last of these", pressKey(Qt::Key_End, Qt::ControlModifier));
    window.both("all", fetchAll);
    window.both("last of all", pressKey(Qt::Key_End, Qt::ControlModifier));
    window.both("filter",
                inModel([](CustomerModel &model) { model.setFilter(QStringLiteral("id < 300")); }));
    window.both("first", pressKey(Qt::Key_Home, Qt::ControlModifier));
    window.both("page down through all", pressKey(Qt::Key_PageDown, Qt::NoModifier, 30));
    window.both("fewer than fit",
                inModel([](CustomerModel &model) { model.setFilter(QStringLiteral("id < 5")); }));
    window.both("none",
                inModel([](CustomerModel &model) { model.setFilter(QStringLiteral("id < 0")); }));
    window.both("all again", inModel([](CustomerModel &model) { model.setFilter(QString()); }));
    QCOMPARE(window.problems(), QStringList());
}

void TestTables::edits_data()
{
    QTest::addColumn<QSqlTableModel::EditStrategy>("strategy");
    QTest::newRow("each field") << QSqlTableModel::OnFieldChange;
    QTest::newRow("each row") << QSqlTableModel::OnRowChange;
    QTest::newRow("by hand") << QSqlTableModel::OnManualSubmit;
}

void TestTables::edits()
{
    QFETCH(QSqlTableModel::EditStrategy, strategy);
    Program program(strategy);
    program.ours.setPaintBufferEnabled(true);
    SideBySide &window = program.window;
    window.showWith(12, 5);

    window.both("current", makeCurrent(2, CustomerModel::Name));
    window.both("edit", edit("Alice"));
    window.both("edit, enter", edit("Bob", Qt::Key_Enter));
    window.both("edit in vain", edit("Carol", Qt::Key_Escape));
    window.both(
        "edit, then tab",
        inTurn({edit("Dora", Qt::Key_Tab), typeText("Delft"), pressKeyInEditor(Qt::Key_Return)}));
    window.both("edit, then twice tab",
                inTurn({edit("Essen", Qt::Key_Tab), pressKeyInEditor(Qt::Key_Tab),
                        pressKeyInEditor(Qt::Key_Escape)}));
    window.both("edit, then back",
                inTurn({edit("note", Qt::Key_Backtab), pressKeyInEditor(Qt::Key_Escape)}));
    window.both("next row", pressKey(Qt::Key_Down));
    window.both("type", inTurn({typeText("4711"), pressKeyInEditor(Qt::Key_Return)}));
    window.both("refused", edit("-5"));
    window.both("double click",
                inTurn({doubleClickCell(6, CustomerModel::City), typeText("Fulda"),
                        pressKeyInEditor(Qt::Key_Return)}));
    window.both(
        "edit, then click elsewhere",
        inTurn({pressKey(Qt::Key_F2), typeText("Genoa"), clickCell(9, CustomerModel::Note)}));
    window.both("edit, then scroll",
                inTurn({pressKey(Qt::Key_F2), typeText("Halle"), turnWheel(3),
                        pressKeyInEditor(Qt::Key_Return)}));
    window.mine(
        "an editor is open",
        inTurn({makeCurrent(20, CustomerModel::City), pressKey(Qt::Key_F2), typeText("Ith")}));
    window.mine("it is scrolled", turnWheel(1));
    window.mine("it is scrolled sideways", turnWheel(1, true));
    window.mine("it is scrolled away", turnWheel(5));
    window.mine("it comes back", turnWheel(-6));
    window.mine("its column is resized", [](QAbstractItemView &view) {
        columnsOf(view)->resizeSection(CustomerModel::City, 70);
    });
    window.mine("its column is moved", [](QAbstractItemView &view) {
        columnsOf(view)->moveSection(CustomerModel::City, 1);
    });
    window.mine("other data change", inModel([](CustomerModel &model) {
                    model.setData(model.index(21, CustomerModel::Note), "seen", Qt::EditRole);
                }));
    window.mine("it is closed", pressKeyInEditor(Qt::Key_Escape));
    window.both("the same there", [&](QAbstractItemView &view) {
        if (&view == &window.ours())
            return;
        columnsOf(view)->resizeSection(CustomerModel::City, 70);
        columnsOf(view)->moveSection(CustomerModel::City, 1);
        view.setCurrentIndex(view.model()->index(20, CustomerModel::City));
        view.model()->setData(view.model()->index(21, CustomerModel::Note), "seen", Qt::EditRole);
        view.model()->revert(); // as the key Escape has done
        view.verticalScrollBar()->setValue(window.ours().verticalScrollBar()->value());
        view.horizontalScrollBar()->setValue(window.ours().horizontalScrollBar()->value());
    });
    window.both("tab in the order on screen",
                inTurn({edit("Jena", Qt::Key_Tab), pressKeyInEditor(Qt::Key_Tab), typeText("12"),
                        pressKeyInEditor(Qt::Key_Return)}));
    window.both("submit", inModel([](CustomerModel &model) { model.submitAll(); }));
    window.both("edit once more", inTurn({makeCurrent(7, CustomerModel::Name), edit("Kim")}));
    window.both("revert", inModel([](CustomerModel &model) { model.revertAll(); }));
    QCOMPARE(window.problems(), QStringList());
}

void TestTables::changesRows()
{
    QFETCH(QSqlTableModel::EditStrategy, strategy);
    Program program(strategy, rowDifferences(strategy == QSqlTableModel::OnManualSubmit));
    SideBySide &window = program.window;
    window.showWith(12, 5);

    const auto insertAt = [](int row) {
        return inModel(
            [=](CustomerModel &model) { model.insertRow(row < 0 ? model.rowCount() : row); });
    };
    window.both("all", fetchAll); // the model loses count of new rows while it fetches others
    window.both("current", makeCurrent(4, CustomerModel::Name));
    window.both("insert in sight", insertAt(6));
    window.both("go there", pressKey(Qt::Key_Down, Qt::NoModifier, 2));
    window.both(
        "fill it in",
        inTurn({edit("Zara", Qt::Key_Tab), typeText("Ypres"), pressKeyInEditor(Qt::Key_Return)}));
    window.both("leave it", pressKey(Qt::Key_Down));
    window.both("submit", inModel([](CustomerModel &model) { model.submitAll(); }));
    window.both("all again", fetchAll);
    window.both("last cell", pressKey(Qt::Key_End, Qt::ControlModifier));
    window.both("append", insertAt(-1));
    window.both("go to it", pressKey(Qt::Key_Down));
    window.both("fill in the last",
                inTurn({pressKey(Qt::Key_Home), pressKey(Qt::Key_Right), edit("Yann")}));
    window.both("leave the last", pressKey(Qt::Key_Up));
    window.both("revert", inModel([](CustomerModel &model) { model.revertAll(); }));
    window.both("slider", dragSlider(0.5));
    window.both("click", clickCell(3, CustomerModel::City));
    window.both("insert at the top", insertAt(0));
    window.both("take it back", inModel([](CustomerModel &model) { model.revertRow(0); }));
    window.both("remove the current one", [](QAbstractItemView &view) {
        view.model()->removeRow(view.currentIndex().row());
    });
    window.both("submit that", inModel([](CustomerModel &model) { model.submitAll(); }));
    window.both("remove several", inModel([](CustomerModel &model) { model.removeRows(3, 4); }));
    window.both("do remove them", inModel([](CustomerModel &model) { model.submitAll(); }));
    window.both("select", inModel([](CustomerModel &model) { model.select(); }));
    window.both("key", pressKey(Qt::Key_Down));
    QCOMPARE(window.problems(), QStringList());
}

QTEST_MAIN(TestTables)
#include "tst_tables.moc"
