// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "data/datamodel.h"
#include "data/datathread.h"
#include "datatables.h"

#include <QAbstractItemModelTester>
#include <QFile>
#include <QRandomGenerator>
#include <QSemaphore>
#include <QSignalSpy>
#include <QSqlQuery>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

namespace {

constexpr int s_steps = 100; // of the walk, unless the environment says otherwise

//! The rows of \a model, all of which are loaded.
QStringList allRows(DataModel *model)
{
    QStringList rows;
    for (int row = 0; row < model->rowCount(); ++row) {
        if (!model->load(row))
            return {QStringLiteral("row %1 cannot be had").arg(row)};
        rows << shownRow(*model, row);
    }
    return rows;
}

} // namespace

class tst_DataModel : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();
    void showsATable();
    void tellsWhatIsNotThereYet();
    void tellsNullFromNothing();
    void showsNumbersAsTheEngineDoes();
    void jumpsIntoAGapWithFewQueries();
    void countsRowsWithHoles();
    void ordersByAnyColumn_data();
    void ordersByAnyColumn();
    void ordersByTheKeyItself();
    void showsTablesWithoutRowid();
    void filters();
    void refusesWhatIsNoCondition();
    void givesUpAfterATime();
    void waitsNoLongerThanItMay();
    void waitsForNobodyWhoDoesNotAnswer();
    void leavesWhoDoesNotAnswer();
    void follows();
    void looksOftenWhileRowsCome();
    void keepsRowsInPlaceAsOthersGo();
    void showsQueriesWithAKey();
    void copiesWhatHasNoKey();
    void findsRows();
    void addsUpExactly();
    void writesNothing();
    void tellsWhatIsWrong_data();
    void tellsWhatIsWrong();
    void noticesAnotherSchema();
    void waitsForABusyDatabase();
    void boundsItsMemory();
    void walks();

private:
    std::unique_ptr<DataModel> open(const DataSource &source);
    std::unique_ptr<DataModel> openTable(const QString &table);
    void settle(DataModel *model);
    void numbers(int count);

    std::unique_ptr<QTemporaryDir> m_folder; //!< one per test
    QString m_path;                          //!< of the database
    std::unique_ptr<Writer> m_writer;        //!< of another process, as it were
};

void tst_DataModel::initTestCase()
{
    if (!QSqlDatabase::isDriverAvailable("QSQLITE"))
        QSKIP("Qt's driver for SQLite is not installed.");
}

void tst_DataModel::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    m_path = m_folder->filePath("data.sqlite");
    m_writer = std::make_unique<Writer>(m_path);
    m_writer->run("PRAGMA journal_mode = WAL");
    m_writer->run("PRAGMA synchronous = OFF");
}

void tst_DataModel::cleanup()
{
    m_writer.reset();
}

std::unique_ptr<DataModel> tst_DataModel::open(const DataSource &source)
{
    auto model = std::make_unique<DataModel>();
    model->setPollTime(20);
    new QAbstractItemModelTester(model.get(), QAbstractItemModelTester::FailureReportingMode::Fatal,
                                 model.get());
    model->open(source);
    settle(model.get());
    return model;
}

std::unique_ptr<DataModel> tst_DataModel::openTable(const QString &table)
{
    DataSource source;
    source.database = m_path;
    source.table = table;
    return open(source);
}

void tst_DataModel::settle(DataModel *model)
{
    const auto isSettled = [&] {
        return model->state() == DataModel::State::Failed || model->isIdle();
    };
    QTRY_VERIFY_WITH_TIMEOUT(isSettled(), 30000);
}

//! A table t of as many rows, of a number, a text and a price.
void tst_DataModel::numbers(int count)
{
    m_writer->run("CREATE TABLE t (id INTEGER PRIMARY KEY, name TEXT, price REAL)");
    m_writer->run("WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < ?) "
                  "INSERT INTO t SELECT i, 'name ' || i, i / 4.0 FROM n",
                  {count});
}

void tst_DataModel::showsATable()
{
    numbers(1000);
    const auto model = openTable({});
    QCOMPARE(model->source().table, QString("t"));
    QCOMPARE(model->tables(), QStringList("t"));
    QCOMPARE(model->rowCount(), 1000);
    QVERIFY(model->isCounted());
    QCOMPARE(model->columnCount(), 3);
    QCOMPARE(model->headerData(1, Qt::Horizontal).toString(), QString("name"));
    QCOMPARE(shownRow(*model, 0), QString("1|name 1|0.25"));
    QCOMPARE(allRows(model.get()), m_writer->rows("SELECT id, name, CAST(price AS TEXT) FROM t"));
    QVERIFY(model->memory() > 0);
}

void tst_DataModel::tellsWhatIsNotThereYet()
{
    numbers(20000);
    const auto model = openTable("t");
    QVERIFY(!model->isLoaded(10000));
    QCOMPARE(model->index(10000, 0).data().toString(), QString("…"));
    QSignalSpy changed(model.get(), &DataModel::dataChanged);
    model->setVisible(10000, 10040);
    QTRY_VERIFY(model->isLoaded(10040));
    QCOMPARE(shownRow(*model, 10000), QString("10001|name 10001|2500.25"));
    QVERIFY(!changed.isEmpty());
}

void tst_DataModel::tellsNullFromNothing()
{
    m_writer->run("CREATE TABLE t (a, b BLOB)");
    m_writer->run("INSERT INTO t VALUES (NULL, ?), ('', NULL), ('NULL', ?)",
                  {QByteArray("\x89PNG", 4), QByteArray(100, 'x')});
    const auto model = openTable("t");
    QCOMPARE(model->cell(0, 0).kind(), DataCell::Kind::Null);
    QCOMPARE(model->cell(1, 0).kind(), DataCell::Kind::Text);
    QCOMPARE(model->cell(1, 0).shown(), QString());
    QCOMPARE(model->cell(2, 0).kind(), DataCell::Kind::Text);
    QVERIFY(model->cell(0, 1).shown().endsWith(": 89 50 4e 47"));
    QVERIFY(model->cell(2, 1).shown().endsWith("78 …"));
    QVERIFY(model->index(0, 0).data(Qt::ForegroundRole).isValid());
    QVERIFY(!model->index(2, 0).data(Qt::ForegroundRole).isValid());
}

void tst_DataModel::showsNumbersAsTheEngineDoes()
{
    m_writer->run("CREATE TABLE t (x)");
    m_writer->run("INSERT INTO t VALUES (9223372036854775807), (0.1 + 0.2), (1e100), (-0.5), "
                  "(100.0), ('0.10')");
    const auto model = openTable("t");
    QCOMPARE(allRows(model.get()), m_writer->rows("SELECT CAST(x AS TEXT) FROM t"));
    QCOMPARE(shownRow(*model, 0), QString("9223372036854775807"));
    QCOMPARE(shownRow(*model, 1), QString("0.3"));
    QCOMPARE(shownRow(*model, 4), QString("100.0"));
}

void tst_DataModel::jumpsIntoAGapWithFewQueries()
{
    numbers(50000);
    const auto model = openTable("t");
    const int before = model->queries();
    model->setVisible(25000, 25040);
    QTRY_VERIFY(model->isLoaded(25000) && model->isLoaded(25040));
    QCOMPARE(model->queries() - before, 1);
    QCOMPARE(shownRow(*model, 25000), QString("25001|name 25001|6250.25"));
}

void tst_DataModel::countsRowsWithHoles()
{
    numbers(3000);
    m_writer->run("DELETE FROM t WHERE id BETWEEN 500 AND 2000 OR id % 7 = 0");
    m_writer->run("INSERT INTO t VALUES (100000000, 'far', 1)");
    const auto model = openTable("t");
    QCOMPARE(allRows(model.get()), m_writer->rows("SELECT id, name, CAST(price AS TEXT) FROM t"));
    QVERIFY(model->isCounted());
}

void tst_DataModel::ordersByAnyColumn_data()
{
    QTest::addColumn<int>("column");
    QTest::addColumn<bool>("isDescending");
    QTest::addColumn<QString>("order");
    QTest::newRow("number") << 0 << true << "id DESC";
    QTest::newRow("ties and NULLs") << 1 << false << "name, id";
    QTest::newRow("ties and NULLs, down") << 1 << true << "name DESC, id DESC";
    QTest::newRow("mixed") << 2 << false << "price, id";
    QTest::newRow("mixed, down") << 2 << true << "price DESC, id DESC";
}

void tst_DataModel::ordersByAnyColumn()
{
    QFETCH(int, column);
    QFETCH(bool, isDescending);
    QFETCH(QString, order);
    numbers(2000);
    m_writer->run("UPDATE t SET name = CASE WHEN id % 5 = 0 THEN NULL ELSE 'n' || id % 3 END");
    m_writer->run("UPDATE t SET price = CASE id % 4 WHEN 0 THEN NULL WHEN 1 THEN 'text' ELSE price "
                  "END");
    const auto model = openTable("t");
    model->setOrder({column, isDescending});
    settle(model.get());
    const QString text = "SELECT id, name, CAST(price AS TEXT) FROM t ORDER BY " + order;
    QCOMPARE(allRows(model.get()), m_writer->rows(text));
    // Backward and from the middle, too.
    const auto other = openTable("t");
    other->setOrder({column, isDescending});
    other->setVisible(1000, 1040);
    settle(other.get());
    for (int row = 1040; row >= 0; --row)
        QVERIFY(other->load(row));
    QCOMPARE(allRows(other.get()), m_writer->rows(text));
}

void tst_DataModel::ordersByTheKeyItself()
{
    numbers(20000);
    const auto model = openTable("t");
    model->setOrder({0, true});
    settle(model.get());
    QCOMPARE(model->order().column, 0);
    QCOMPARE(model->index(0, 0).data().toString(), QString("20000"));
    const int before = model->queries();
    model->setVisible(10000, 10040);
    QTRY_VERIFY(model->isLoaded(10040));
    QCOMPARE(model->queries() - before, 1);
    QCOMPARE(model->index(10000, 0).data().toString(), QString("10000"));
}

void tst_DataModel::showsTablesWithoutRowid()
{
    m_writer->run("CREATE TABLE t (a TEXT, b INTEGER, c, PRIMARY KEY (b, a)) WITHOUT ROWID");
    m_writer->run("WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 3000) "
                  "INSERT INTO t SELECT 'k' || i, i % 10, i FROM n");
    const auto model = openTable("t");
    QCOMPARE(model->table().key, QStringList({"`b`", "`a`"}));
    QCOMPARE(allRows(model.get()), m_writer->rows("SELECT a, b, c FROM t ORDER BY b, a"));
}

void tst_DataModel::filters()
{
    numbers(3000);
    const auto model = openTable("t");
    DataFilter filter;
    filter.text = {"NAME 12", {1}};
    model->setFilter(filter);
    settle(model.get());
    const QString rows = "SELECT id, name, CAST(price AS TEXT) FROM t WHERE ";
    QCOMPARE(allRows(model.get()), m_writer->rows(rows + "name LIKE '%name 12%'"));
    filter.text.isExpression = true;
    filter.text.text = "^name [0-9]+5$";
    filter.conditions = {{2, DataCondition::Is::AtMost, "500.25", true}};
    filter.where = "id % 2 = 1";
    model->setFilter(filter);
    settle(model.get());
    QCOMPARE(allRows(model.get()),
             m_writer->rows(rows + "id % 10 = 5 AND id > 10 AND price <= 500.25"));
    filter.where = "id < 0";
    model->setFilter(filter);
    settle(model.get());
    QCOMPARE(model->rowCount(), 0);
    model->setFilter({});
    settle(model.get());
    QCOMPARE(model->rowCount(), 3000);
}

void tst_DataModel::refusesWhatIsNoCondition()
{
    numbers(100);
    const auto model = openTable("t");
    QSignalSpy refused(model.get(), &DataModel::filterRefused);
    DataFilter filter;
    filter.where = "1); DELETE FROM t; --";
    model->setFilter(filter);
    QCOMPARE(refused.size(), 1);
    filter.where = "nothing = 1";
    model->setFilter(filter);
    QTRY_COMPARE(refused.size(), 2);
    QVERIFY(refused.last().first().toString().contains("nothing"));
    settle(model.get());
    QVERIFY(model->filter().isEmpty());
    QCOMPARE(model->rowCount(), 100);
    QCOMPARE(m_writer->rows("SELECT count(*) FROM t"), QStringList("100"));
}

void tst_DataModel::givesUpAfterATime()
{
    numbers(10);
    const auto model = openTable("t");
    QSignalSpy refused(model.get(), &DataModel::filterRefused);
    model->setTimeLimit(50);
    DataFilter filter;
    filter.where = "(WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < "
                   "100000000000) SELECT count(*) FROM n) = id";
    model->setFilter(filter);
#ifdef VIEWER_HAS_SQLITE3
    QTRY_COMPARE_WITH_TIMEOUT(refused.size(), 1, 20000);
    settle(model.get());
    QCOMPARE(model->rowCount(), 10);
#endif
}

//! Who waits for a row is not kept by a query that never ends.
void tst_DataModel::waitsNoLongerThanItMay()
{
#ifndef VIEWER_HAS_SQLITE3
    QSKIP("This build cannot end a query.");
#endif
    numbers(1);
    DataSource source;
    source.database = m_path;
    const SqlText endless {"WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n) "
                           "SELECT count(*) FROM n",
                           {}};
    DataThread thread;
    const auto problem = thread.runNow(50, [source, endless](DataConnection &connection) {
        const DataProblem notOpen = connection.open(source);
        return notOpen ? notOpen : connection.each(endless, [](const QSqlQuery &) { return true; });
    });
    QVERIFY(problem);
    QCOMPARE(problem->kind, DataProblem::Kind::Cancelled);
    QVERIFY(thread.runNow(5000, [](DataConnection &connection) { return connection.isOpen(); })
                .value_or(false));
}

//! Nor by one that cannot be ended, as of a server that is no longer there.
void tst_DataModel::waitsForNobodyWhoDoesNotAnswer()
{
    QSemaphore answer;
    DataThread thread;
    const auto nothing = thread.runNow(10, [&answer](DataConnection &) {
        answer.acquire();
        return 1;
    });
    QVERIFY(!nothing);
    answer.release();
    QCOMPARE(thread.runNow(5000, [](DataConnection &) { return 2; }), std::optional(2));
}

void tst_DataModel::leavesWhoDoesNotAnswer()
{
    QSemaphore begun;
    const auto answer = std::make_shared<QSemaphore>();
    auto context = std::make_unique<QObject>();
    bool isTold = false;
    auto thread = std::make_unique<DataThread>();
    thread->run(
        context.get(),
        [&begun, answer](DataConnection &) {
            begun.release();
            answer->acquire();
            return 1;
        },
        [&isTold](int) { isTold = true; });
    begun.acquire();
    thread.reset();
    context.reset();
    QVERIFY(answer.use_count() > 1); // it still works
    answer->release();
    QTRY_COMPARE(answer.use_count(), 1);
    QVERIFY(!isTold);
}

void tst_DataModel::follows()
{
    numbers(600);
    const auto model = openTable("t");
    model->setVisible(560, 599);
    settle(model.get());
    m_writer->run("INSERT INTO t (name) VALUES ('new'), ('newer')");
    QTRY_COMPARE(model->rowCount(), 602);
    QTRY_COMPARE(shownRow(*model, 601), QString("602|newer|NULL"));
    m_writer->run("UPDATE t SET name = 'changed' WHERE id = 590");
    QTRY_COMPARE(shownRow(*model, 589), QString("590|changed|147.5"));
    m_writer->run("DELETE FROM t WHERE id = 600");
    QTRY_COMPARE(model->rowCount(), 601);
    QCOMPARE(shownRow(*model, 599), QString("601|new|NULL"));
}

//! Rows that come one after the other are shown so, and not in heaps.
void tst_DataModel::looksOftenWhileRowsCome()
{
    constexpr int quiet = 1000000;
    numbers(600);
    const auto model = openTable("t");
    model->setPollTime(quiet);
    model->setVisible(560, 599);
    settle(model.get());
    m_writer->run("INSERT INTO t (name) VALUES ('new')");
    model->refresh();
    QTRY_COMPARE(model->rowCount(), 601);
    QTRY_COMPARE_LT(model->pollTime(), quiet); // when it has been looked at what comes behind
    const int soon = model->pollTime();
    QTRY_COMPARE_GT(model->pollTime(), soon);
}

void tst_DataModel::keepsRowsInPlaceAsOthersGo()
{
    numbers(5000);
    const auto model = openTable("t");
    model->setVisible(4000, 4040);
    settle(model.get());
    const QPersistentModelIndex seen = model->index(4010, 0);
    QCOMPARE(seen.data().toString(), QString("4011"));
    m_writer->run("DELETE FROM t WHERE id <= 1000");
    m_writer->run("INSERT INTO t (id, name) VALUES (-5, 'first')");
    QTRY_COMPARE(model->rowCount(), 4001);
    QVERIFY(seen.isValid());
    QCOMPARE(seen.row(), 3011);
    QCOMPARE(seen.data().toString(), QString("4011"));
}

void tst_DataModel::showsQueriesWithAKey()
{
    numbers(3000);
    DataSource source;
    source.database = m_path;
    source.sql = "SELECT id AS number, name FROM t WHERE id % 3 = 0 -- some";
    source.key = {"number"};
    const auto model = open(source);
    QVERIFY(!model->isCopy());
    QCOMPARE(allRows(model.get()), m_writer->rows("SELECT id, name FROM t WHERE id % 3 = 0"));
}

void tst_DataModel::copiesWhatHasNoKey()
{
    numbers(12000);
    m_writer->run(
        "CREATE VIEW v AS SELECT name, price, price AS price, NULL AS n FROM t WHERE id > 7");
    const auto model = openTable("v");
    QVERIFY(model->isCopy());
    QCOMPARE(model->rowCount(), 11993);
    QCOMPARE(shownRow(*model, 0), QString("name 8|2.0|2.0|NULL"));
    model->setOrder({1, true});
    settle(model.get());
    QCOMPARE(shownRow(*model, 0), QString("name 12000|3000.0|3000.0|NULL"));
}

void tst_DataModel::findsRows()
{
    numbers(20000);
    const auto model = openTable("t");
    const auto find = [&](const QString &text, int row, bool forward) {
        int found = -2;
        model->find({text, {1}}, row, forward, [&](int result) { found = result; });
        [&] { QTRY_VERIFY_WITH_TIMEOUT(found != -2, 20000); }();
        return found;
    };
    QCOMPARE(find("NAME 15000", -1, true), 14999);
    QCOMPARE(find("name 1500", 14999, false), 1499);
    QCOMPARE(find("name 1500", 1499, true), 14999);
    QCOMPARE(find("name 15001", -1, false), 15000);
    QCOMPARE(find("nowhere", 5, true), -1);
    DataFilter filter;
    filter.where = "id % 2 = 0";
    model->setFilter(filter);
    settle(model.get());
    QCOMPARE(find("name 15000", 0, true), 7499);
}

void tst_DataModel::addsUpExactly()
{
    m_writer->run("CREATE TABLE t (a INTEGER, b REAL, c)");
    m_writer->run("INSERT INTO t VALUES (9223372036854775807, 0.1, 1), (9223372036854775807, 0.2, "
                  "'x'), (-3, 0.3, 2.5), (NULL, NULL, NULL)");
    const auto model = openTable("t");
    QSignalSpy summed(model.get(), &DataModel::summed);
    const auto sums = [&](int column) {
        summed.clear();
        model->sum(column);
        [&] { QTRY_COMPARE(summed.size(), 1); }();
        return summed.first().first().value<DataReads::Sums>();
    };
    DataReads::Sums found = sums(0);
    QCOMPARE(found.sum, QString("18446744073709551611"));
    QCOMPARE(found.rows, 4);
    QCOMPARE(found.numbers, 3);
    QCOMPARE(found.minimum, QString("-3"));
    QCOMPARE(found.maximum, QString("9223372036854775807"));
    found = sums(1);
    QCOMPARE(found.sum, QString("0.6"));
    QVERIFY(found.isExact);
    found = sums(2);
    QCOMPARE(found.sum, QString("3.5"));
    QCOMPARE(found.numbers, 2);
    DataFilter filter;
    filter.where = "a < 0";
    model->setFilter(filter);
    settle(model.get());
    QCOMPARE(sums(0).sum, QString("-3"));
}

void tst_DataModel::writesNothing()
{
    numbers(10);
    DataConnection connection;
    DataSource source;
    source.database = m_path;
    QVERIFY(!connection.open(source));
    for (const char *text : {"DELETE FROM t", "DROP TABLE t", "CREATE TABLE u (x)",
                             "INSERT INTO t (name) VALUES ('x')", "UPDATE t SET name = ''"}) {
        DataProblem problem;
        connection.rows({QString(text), {}}, &problem);
        QCOMPARE(problem.kind, DataProblem::Kind::Refused);
    }
    connection.rows({"PRAGMA query_only = OFF", {}});
    DataProblem problem;
    connection.rows({"DELETE FROM t", {}}, &problem);
    QCOMPARE(problem.kind, DataProblem::Kind::Refused);
    QCOMPARE(m_writer->rows("SELECT count(*) FROM t"), QStringList("10"));
    source.sql = "DELETE FROM t RETURNING id";
    const auto model = open(source);
    QCOMPARE(model->state(), DataModel::State::Failed);
    QCOMPARE(m_writer->rows("SELECT count(*) FROM t"), QStringList("10"));
}

void tst_DataModel::tellsWhatIsWrong_data()
{
    QTest::addColumn<QString>("database");
    QTest::addColumn<QString>("table");
    QTest::newRow("no file") << "none.sqlite"
                             << "t";
    QTest::newRow("no table") << ""
                              << "nothing";
    QTest::newRow("no database") << "damaged"
                                 << "t";
}

void tst_DataModel::tellsWhatIsWrong()
{
    QFETCH(QString, database);
    QFETCH(QString, table);
    numbers(1);
    QFile damaged(m_folder->filePath("damaged"));
    QVERIFY(damaged.open(QIODevice::WriteOnly));
    damaged.write("SQLite format 3\0 and nothing of the kind", 40);
    damaged.close();
    DataSource source;
    source.database = database.isEmpty() ? m_path : m_folder->filePath(database);
    source.table = table;
    const auto model = open(source);
    QCOMPARE(model->state(), DataModel::State::Failed);
    QVERIFY(!model->problem().text.isEmpty());
    QCOMPARE(model->rowCount(), 0);
}

void tst_DataModel::noticesAnotherSchema()
{
    numbers(100);
    const auto model = openTable("t");
    QSignalSpy opened(model.get(), &DataModel::tableOpened);
    m_writer->run("ALTER TABLE t DROP COLUMN price");
    m_writer->run("ALTER TABLE t ADD COLUMN more TEXT DEFAULT 'm'");
    QTRY_COMPARE(opened.size(), 1);
    settle(model.get());
    QCOMPARE(shownRow(*model, 0), QString("1|name 1|m"));
}

void tst_DataModel::waitsForABusyDatabase()
{
    m_writer->run("PRAGMA journal_mode = DELETE");
    numbers(100);
    m_writer->run("PRAGMA locking_mode = EXCLUSIVE");
    m_writer->run("UPDATE t SET name = 'x'");
    DataSource source;
    source.database = m_path;
    source.table = "t";
    DataModel model;
    model.open(source);
    QTRY_COMPARE_WITH_TIMEOUT(model.state(), DataModel::State::Waiting, 20000);
    QVERIFY(!model.problem().text.isEmpty());
    m_writer.reset();
    QTRY_COMPARE_WITH_TIMEOUT(model.state(), DataModel::State::Ready, 20000);
    settle(&model);
    QCOMPARE(model.rowCount(), 100);
}

void tst_DataModel::boundsItsMemory()
{
    numbers(60000);
    const auto model = openTable("t");
    for (int row = 0; row < model->rowCount(); ++row)
        QVERIFY(model->load(row));
    QVERIFY(model->memory() < 20000 * 400);
    QVERIFY(!model->isLoaded(20000));
    QVERIFY(model->isLoaded(59999));
}

//! What is done to the table and to the model, and what the model shows of it at rest.
void tst_DataModel::walks()
{
    bool isGiven = false;
    const int steps = qEnvironmentVariableIntValue("VANTIX_DATA_STEPS", &isGiven);
    QRandomGenerator random(quint32(qEnvironmentVariableIntValue("VANTIX_DATA_SEED") + 5));
    numbers(4000);
    auto model = openTable("t");
    QString order = "id";
    QString where = "1";
    for (int step = 0; step < (isGiven ? steps : s_steps); ++step) {
        const int id = 1 + random.bounded(6000);
        switch (random.bounded(9)) {
        case 0:
            m_writer->run("INSERT OR REPLACE INTO t VALUES (?, ?, ?)",
                          {id, QString("name %1").arg(id % 50), random.bounded(100) / 4.0});
            break;
        case 1:
            m_writer->run("DELETE FROM t WHERE id BETWEEN ? AND ?", {id, id + random.bounded(300)});
            break;
        case 2:
            m_writer->run("UPDATE t SET price = price + 1, name = NULL WHERE id BETWEEN ? AND ?",
                          {id, id + random.bounded(20)});
            break;
        case 3:
            m_writer->run("INSERT INTO t (name, price) SELECT 'again ' || id, id FROM t LIMIT ?",
                          {random.bounded(700)});
            break;
        case 4: {
            const int column = random.bounded(4) - 1;
            const bool down = random.bounded(2) == 1;
            model->setOrder({column, column >= 0 && down});
            const QStringList names {"id", "id", "name", "price"};
            const QString name = names.at(column + 1);
            order = column >= 0 && down ? name + " DESC, id DESC" : name + ", id";
            break;
        }
        case 5: {
            DataFilter filter;
            if (random.bounded(2) == 0) {
                filter.where = QString("id % 7 <> %1").arg(random.bounded(7));
                where = filter.where;
            } else {
                where = "1";
            }
            model->setFilter(filter);
            break;
        }
        case 6:
            if (random.bounded(5) == 0) {
                model = openTable("t");
                order = "id";
                where = "1";
            }
            break;
        default: {
            const int first = random.bounded(qMax(1, model->rowCount()));
            model->setVisible(first, first + 40);
            break;
        }
        }
        model->refresh();
        settle(model.get());
        const QStringList expected = m_writer->rows(
            "SELECT id, name, CAST(price AS TEXT) FROM t WHERE " + where + " ORDER BY " + order);
        QVERIFY2(model->rowCount() == expected.size(),
                 qPrintable(QString("step %1: %2 rows, not %3")
                                .arg(step)
                                .arg(model->rowCount())
                                .arg(expected.size())));
        for (int row = 0; row < model->rowCount(); ++row) {
            if (model->isLoaded(row))
                QCOMPARE(shownRow(*model, row), expected.at(row));
        }
    }
}

QTEST_MAIN(tst_DataModel)
#include "tst_datamodel.moc"
