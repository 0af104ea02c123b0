// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "data/datamodel.h"
#include "data/dataschema.h"
#include "datatables.h"
#include "odbcdrivers.h"

#include <QAbstractItemModelTester>
#include <QLocale>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

namespace {

constexpr int s_rows = 5000;

//! The rows as the viewer shows them: the shortest of all texts of a number, bytes by their digits.
QString shown()
{
    return QStringLiteral(
               "SELECT id, time, symbol, CASE WHEN ratio IS NOT NULL THEN "
               "rtrim(rtrim(printf('%.3f', ratio), '0'), '.') END, big, CASE WHEN raw IS "
               "NOT NULL THEN '")
        + QLocale().toString(2) + QStringLiteral(" bytes: 00 ff' END FROM trades");
}

} // namespace

//! An engine behind ODBC: a driver of SQLite, whose file is read directly as well. Skipped where
//! that is not installed.
class tst_DataOdbc : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanupTestCase();
    void findsOutWhatTheEngineKnows();
    void showsRowsAsTheFileHasThem();
    void opensNamedSources();
    void jumpsAndCounts();
    void ordersByAnyColumn_data();
    void ordersByAnyColumn();
    void pagesBySeveralColumns();
    void keepsEachDigit();
    void noticesRowsThatAreReadAgain();
    void filters_data();
    void filters();
    void refusesWhatItCannotLookFor();
    void finds();
    void addsUpExactly();
    void showsQueriesWithAKey();
    void copiesWhatHasNoKey();
    void follows();
    void writesNothing_data();
    void writesNothing();
    void tellsWhatIsWrong_data();
    void tellsWhatIsWrong();

private:
    DataSource source(const QString &table) const;
    std::unique_ptr<DataModel> open(const DataSource &source);
    void settle(DataModel *model);
    void compareShown(DataModel *model, const QString &query);

    QTemporaryDir m_folder;
    OdbcDrivers m_drivers;
    QString m_path; //!< of the database
    std::unique_ptr<Writer> m_writer;
};

void tst_DataOdbc::initTestCase()
{
    if (!QSqlDatabase::isDriverAvailable("QSQLITE"))
        QSKIP("Qt's driver for SQLite is not installed.");
    const QString problem = m_drivers.set("Lite", "libsqlite3odbc.so");
    if (!problem.isEmpty())
        QSKIP(qPrintable(problem));
    m_path = m_folder.filePath("data.sqlite");
    m_drivers.setSource("prices", "Driver=Lite\nDatabase=" + m_path);
    m_writer = std::make_unique<Writer>(m_path);
    m_writer->run("PRAGMA journal_mode = WAL");
    m_writer->run("CREATE TABLE trades (id INTEGER PRIMARY KEY, time TIMESTAMP, symbol TEXT, "
                  "ratio DOUBLE, big BIGINT NOT NULL, raw BLOB)");
    m_writer->run(
        "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < ?) "
        "INSERT INTO trades SELECT i, datetime('2026-01-01', i || ' seconds') || '.' || "
        "(100000 + i), CASE WHEN i % 7 = 0 THEN NULL WHEN i % 11 = 0 THEN '' ELSE 'S' || (i "
        "% 5) END, CASE WHEN i % 13 <> 0 THEN i / 8.0 END, i * 9007199254740993 % "
        "1000000007, CASE WHEN i % 9 = 0 THEN x'00ff' END FROM n",
        {s_rows});
}

void tst_DataOdbc::cleanupTestCase()
{
    m_writer.reset();
}

DataSource tst_DataOdbc::source(const QString &table) const
{
    DataSource source;
    source.engine = DataEngine::Odbc;
    source.database = "Driver=Lite;Database=" + m_path;
    source.table = table;
    return source;
}

std::unique_ptr<DataModel> tst_DataOdbc::open(const DataSource &source)
{
    auto model = std::make_unique<DataModel>();
    model->setPollTime(50);
    new QAbstractItemModelTester(model.get(), QAbstractItemModelTester::FailureReportingMode::Fatal,
                                 model.get());
    model->open(source);
    settle(model.get());
    return model;
}

void tst_DataOdbc::settle(DataModel *model)
{
    const auto isSettled = [&] {
        return model->state() == DataModel::State::Failed || model->isIdle();
    };
    QTRY_VERIFY_WITH_TIMEOUT(isSettled(), 60000);
}

//! The first, middle and last rows, beside those of \a query, whose values are texts.
void tst_DataOdbc::compareShown(DataModel *model, const QString &query)
{
    const QStringList expected = m_writer->rows(query);
    QCOMPARE(model->rowCount(), int(expected.size()));
    const int last = qMax(0, model->rowCount() - 1);
    for (const int first : {0, last / 2, qMax(0, last - 300)}) {
        const int end = qMin(first + 300, last);
        model->setVisible(first, end);
        settle(model);
        for (int row = first; row <= end && row < model->rowCount(); ++row)
            QCOMPARE(shownRow(*model, row), expected.at(row));
    }
}

void tst_DataOdbc::findsOutWhatTheEngineKnows()
{
    const auto model = open(source("trades"));
    const DataTable &table = model->table();
    QCOMPARE(table.dialect.engine, DataEngine::Odbc);
    QCOMPARE(table.dialect.limit, DataDialect::Limit::AtEnd);
    QCOMPARE(table.dialect.contains, QString("INSTR(%1, %2) > 0"));
    QVERIFY(table.dialect.numbersRows);
    QCOMPARE(table.key, QStringList("\"id\""));
    QVERIFY(table.hasIntegerKey);
    QCOMPARE(table.keyColumn, 0);
}

void tst_DataOdbc::showsRowsAsTheFileHasThem()
{
    m_writer->run("CREATE VIEW v AS SELECT id, symbol FROM trades LIMIT 100");
    const auto model = open(source("trades"));
    QCOMPARE(model->tables(), QStringList({"trades", "v"}));
    m_writer->run("DROP VIEW v");
    QCOMPARE(model->columnCount(), 6);
    QVERIFY(!model->isCopy());
    compareShown(model.get(), shown() + " ORDER BY id");
    model->setVisible(0, 40);
    settle(model.get());
    QCOMPARE(model->cell(6, 2).kind(), DataCell::Kind::Null);
    QCOMPARE(model->cell(10, 2).kind(), DataCell::Kind::Text); // empty, not NULL
    QCOMPARE(model->cell(0, 3).kind(), DataCell::Kind::Number);
    QCOMPARE(model->cell(8, 5).kind(), DataCell::Kind::Bytes);
}

void tst_DataOdbc::opensNamedSources()
{
    const auto named = DataSource::fromText("odbc:DSN=prices?table=trades");
    QVERIFY(named);
    const auto model = open(*named);
    QVERIFY2(!model->problem(), qPrintable(model->problem().text));
    QCOMPARE(model->rowCount(), s_rows);
}

void tst_DataOdbc::jumpsAndCounts()
{
    const auto model = open(source("trades"));
    QVERIFY(model->isCounted());
    QCOMPARE(model->rowCount(), s_rows);
    model->setPollTime(1000000);
    const int before = model->queries();
    const int middle = s_rows / 2;
    model->setVisible(middle, middle + 40);
    QTRY_VERIFY(model->isLoaded(middle) && model->isLoaded(middle + 40));
    QVERIFY2(model->queries() - before <= 2, qPrintable(QString::number(model->queries())));
    QCOMPARE(model->index(middle, 0).data().toString(), QString::number(middle + 1));
}

void tst_DataOdbc::ordersByAnyColumn_data()
{
    QTest::addColumn<int>("column");
    QTest::addColumn<bool>("isDescending");
    QTest::addColumn<QString>("order");
    QTest::newRow("key") << 0 << true << "id DESC";
    QTest::newRow("time") << 1 << false << "time, id";
    QTest::newRow("ties and NULL") << 2 << false << "symbol, id";
    QTest::newRow("ties and NULL, down") << 2 << true << "symbol DESC, id DESC";
    QTest::newRow("binary numbers and NULL") << 3 << true << "ratio DESC, id DESC";
    QTest::newRow("whole numbers") << 4 << false << "big, id";
}

void tst_DataOdbc::ordersByAnyColumn()
{
    QFETCH(int, column);
    QFETCH(bool, isDescending);
    QFETCH(QString, order);
    const auto model = open(source("trades"));
    model->setOrder({column, isDescending});
    settle(model.get());
    compareShown(model.get(), shown() + " ORDER BY " + order);
}

void tst_DataOdbc::pagesBySeveralColumns()
{
    m_writer->run("CREATE TABLE \"a; b\" (\"x\"\"y\" TEXT NOT NULL, n INT NOT NULL, c, PRIMARY KEY "
                  "(\"x\"\"y\", n)) WITHOUT ROWID");
    m_writer->run("INSERT INTO \"a; b\" SELECT 'k' || id % 3, id, id FROM trades WHERE id <= 2000");
    const auto model = open(source("a; b"));
    QVERIFY2(!model->problem(), qPrintable(model->problem().text));
    QVERIFY(!model->isCopy());
    QCOMPARE(model->table().key, QStringList({"\"x\"\"y\"", "\"n\""}));
    compareShown(model.get(), "SELECT * FROM \"a; b\" ORDER BY 1, 2");
    m_writer->run("DROP TABLE \"a; b\"");
}

//! The driver gives 15 digits of binary numbers, and finds no others by those.
void tst_DataOdbc::keepsEachDigit()
{
    m_writer->run("CREATE TABLE digits (id INTEGER PRIMARY KEY, third DOUBLE, whole BIGINT)");
    m_writer->run("INSERT INTO digits VALUES (5000000001, 1.0 / 3, 9007199254740993), "
                  "(5000000002, 0.1, -9223372036854775807), (9000000000000000001, 2.0 / 3, 0)");
    const auto model = open(source("digits"));
    QCOMPARE(shownRow(*model, 0), QString("5000000001|0.333333333333333|9007199254740993"));
    QCOMPARE(shownRow(*model, 1), QString("5000000002|0.1|-9223372036854775807"));
    QCOMPARE(model->index(2, 0).data().toString(), QString("9000000000000000001"));
    model->setOrder({1, false});
    settle(model.get());
    QCOMPARE(model->rowCount(), 3);
    QCOMPARE(model->index(1, 0).data().toString(), QString("5000000001"));
    model->setVisible(0, 3);
    m_writer->run("INSERT INTO digits VALUES (9000000000000000002, 1e300, 0)");
    QTRY_COMPARE(model->rowCount(), 4);
    QCOMPARE(shownRow(*model, 3), QString("9000000000000000002|1e+300|0"));
    DataFilter filter;
    filter.conditions = {{1, DataCondition::Is::Equal, "0.333333333333333", true}};
    model->setFilter(filter);
    settle(model.get());
    QCOMPARE(model->rowCount(), 1);
    QVERIFY(!model->problem());
    m_writer->run("DROP TABLE digits");
}

//! An engine that rounds, and was not found out.
void tst_DataOdbc::noticesRowsThatAreReadAgain()
{
    m_writer->run("CREATE TABLE thirds (id INTEGER PRIMARY KEY, third DOUBLE)");
    m_writer->run("INSERT INTO thirds VALUES (1, 1.0 / 3), (2, 4.0 / 3)");
    DataConnection connection;
    QVERIFY(!connection.open(source("thirds")));
    DataProblem problem;
    DataTable table = DataSchema::describe(connection, source("thirds"), &problem);
    QVERIFY(!table.dialect.orderedBinary.isEmpty());
    RowPages::Fetch fetch;
    const auto next = [&] {
        const DataQuery query(table, {1, false}, {});
        fetch.range = {};
        fetch.range.after = DataReads::page(connection, query, fetch).rows.value(0).key;
        return DataReads::page(connection, query, fetch);
    };
    const DataReads::Page right = next();
    QVERIFY(!right.problem);
    QCOMPARE(right.rows.size(), 1);
    table.dialect.orderedBinary.clear();
    QVERIFY(next().problem);
    m_writer->run("DROP TABLE thirds");
}

void tst_DataOdbc::filters_data()
{
    using Is = DataCondition::Is;
    QTest::addColumn<QList<int>>("condition"); // column, Is, whether it is a number
    QTest::addColumn<QString>("value");
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("matchesCase");
    QTest::addColumn<QString>("where");
    QTest::addColumn<QString>("expected");
    const auto row = [](const char *name, const QList<int> &condition, const QString &value,
                        const QString &expected) {
        QTest::newRow(name) << condition << value << "" << false << "" << expected;
    };
    row("whole number", {0, int(Is::AtLeast), 1}, "4990", "id >= 4990");
    row("binary number", {3, int(Is::Equal), 1}, "0.125", "ratio = 0.125");
    row("other text", {2, int(Is::NotEqual), 0}, "S1", "symbol IS NOT 'S1'");
    row("time", {1, int(Is::AtMost), 0}, "2026-01-01 00:00:09.100009", "id <= 9");
    row("NULL", {2, int(Is::Null), 0}, "", "symbol IS NULL");
    row("not NULL", {2, int(Is::NotNull), 0}, "", "symbol IS NOT NULL");
    const QList<int> none;
    QTest::newRow("any case") << none << ""
                              << "s3" << false << ""
                              << "symbol = 'S3'";
    QTest::newRow("case") << none << ""
                          << "s3" << true << ""
                          << "1 = 0";
    QTest::newRow("same case") << none << ""
                               << "S3" << true << ""
                               << "symbol = 'S3'";
    QTest::newRow("signs of patterns") << none << ""
                                       << "S_" << false << ""
                                       << "1 = 0";
    QTest::newRow("condition") << none << ""
                               << "S3" << false << "id % 2 = 0 -- even"
                               << "symbol = 'S3' AND id % 2 = 0";
}

void tst_DataOdbc::filters()
{
    QFETCH(QList<int>, condition);
    QFETCH(QString, value);
    QFETCH(QString, text);
    QFETCH(bool, matchesCase);
    QFETCH(QString, where);
    QFETCH(QString, expected);
    const auto model = open(source("trades"));
    DataFilter filter;
    if (!condition.isEmpty())
        filter.conditions = {
            {condition.at(0), DataCondition::Is(condition.at(1)), value, condition.at(2) != 0}};
    if (!text.isEmpty())
        filter.text = {text, {2}, matchesCase};
    filter.where = where;
    model->setFilter(filter);
    settle(model.get());
    compareShown(model.get(), shown() + " WHERE " + expected + " ORDER BY id");
}

void tst_DataOdbc::refusesWhatItCannotLookFor()
{
    const auto model = open(source("trades"));
    QSignalSpy refused(model.get(), &DataModel::filterRefused);
    DataFilter filter;
    filter.text = {"S3", {2}, false, true};
    model->setFilter(filter);
    QCOMPARE(refused.size(), 1);
    filter = {};
    filter.where = "nothing = 1";
    model->setFilter(filter);
    QTRY_COMPARE(refused.size(), 2);
    QVERIFY(refused.last().first().toString().contains("nothing"));
    settle(model.get());
    QCOMPARE(model->rowCount(), s_rows);
    int found = -2;
    model->find({"S3", {2}, false, false, true}, -1, true, [&](int row) { found = row; });
    QTRY_COMPARE(found, -1);
    QCOMPARE(refused.size(), 3);
}

void tst_DataOdbc::finds()
{
    const auto model = open(source("trades"));
    int found = -2;
    model->find({"03:20.1032", {1}}, -1, true, [&](int row) { found = row; });
    QTRY_COMPARE(found, -1);
    model->find({"00:53:20.1032", {1}}, 5, true, [&](int row) { found = row; });
    QTRY_COMPARE(found, 3199);
    model->find({"s4", {2}}, found, false, [&](int row) { found = row; });
    QTRY_COMPARE(found, 3193);
}

void tst_DataOdbc::addsUpExactly()
{
    m_writer->run("CREATE TABLE sums (id INTEGER PRIMARY KEY, big BIGINT, tenth DOUBLE)");
    m_writer->run("INSERT INTO sums SELECT id, 9223372036854775807, 0.1 FROM trades WHERE id <= "
                  "1000");
    m_writer->run("INSERT INTO sums VALUES (1001, NULL, -5.5)");
    const auto model = open(source("sums"));
    QSignalSpy summed(model.get(), &DataModel::summed);
    model->sum(1);
    QTRY_COMPARE(summed.size(), 1);
    const auto whole = summed.last().first().value<DataReads::Sums>();
    QVERIFY(whole.isExact);
    QCOMPARE(whole.rows, 1001);
    QCOMPARE(whole.numbers, 1000);
    QCOMPARE(whole.sum, QString("9223372036854775807000"));
    QCOMPARE(whole.maximum, QString("9223372036854775807"));
    model->sum(2);
    QTRY_COMPARE(summed.size(), 2);
    const auto tenths = summed.last().first().value<DataReads::Sums>();
    QCOMPARE(tenths.sum, QString("94.5"));
    QCOMPARE(tenths.minimum, QString("-5.5"));
    DataFilter filter;
    filter.where = "id > 1000";
    model->setFilter(filter);
    settle(model.get());
    model->sum(2);
    QTRY_COMPARE(summed.size(), 3);
    QCOMPARE(summed.last().first().value<DataReads::Sums>().sum, QString("-5.5"));
    m_writer->run("DROP TABLE sums");
}

void tst_DataOdbc::showsQueriesWithAKey()
{
    DataSource asked = source({});
    asked.sql = "SELECT id * 2 AS twice, symbol FROM trades WHERE id <= 1000";
    asked.key = {"twice"};
    const auto model = open(asked);
    QVERIFY2(!model->problem(), qPrintable(model->problem().text));
    QVERIFY(!model->isCopy());
    compareShown(model.get(),
                 "SELECT id * 2 AS twice, symbol FROM trades WHERE id <= 1000 ORDER BY 1");
}

void tst_DataOdbc::copiesWhatHasNoKey()
{
    m_writer->run(
        "CREATE VIEW w AS SELECT id, ratio / 3 AS third, raw FROM trades WHERE id <= 700");
    const auto model = open(source("w"));
    QVERIFY(model->isCopy());
    QCOMPARE(model->rowCount(), 700);
    QCOMPARE(model->index(0, 1).data().toString(), QString("0.0416666666666667"));
    QCOMPARE(model->cell(12, 1).kind(), DataCell::Kind::Null);
    QVERIFY(model->index(8, 2).data().toString().endsWith(": 00 ff"));
    m_writer->run("DROP VIEW w");
}

void tst_DataOdbc::follows()
{
    m_writer->run("CREATE TABLE growing (id INTEGER PRIMARY KEY, name TEXT)");
    m_writer->run("INSERT INTO growing SELECT id, 'n' FROM trades WHERE id <= 300");
    const auto model = open(source("growing"));
    QCOMPARE(model->rowCount(), 300);
    model->setVisible(290, 299);
    m_writer->run("INSERT INTO growing VALUES (301, 'new')");
    QTRY_COMPARE(model->rowCount(), 301);
    QCOMPARE(shownRow(*model, 300), QString("301|new"));
    m_writer->run("UPDATE growing SET name = 'seen' WHERE id = 299");
    QTRY_COMPARE(shownRow(*model, 298), QString("299|seen"));
    m_writer->run("DELETE FROM growing WHERE id = 295");
    QTRY_COMPARE(model->rowCount(), 300);
    m_writer->run("DROP TABLE growing");
}

void tst_DataOdbc::writesNothing_data()
{
    QTest::addColumn<QString>("text");
    for (const char *text :
         {"DELETE FROM trades", "DROP TABLE trades", "CREATE TABLE x (a INT)",
          "UPDATE trades SET symbol = ''", "INSERT INTO trades (id, big) VALUES (-1, 0)",
          "SELECT 1; DELETE FROM trades", " WITH x AS (SELECT 1) DELETE FROM trades",
          "PRAGMA user_version = 5"})
        QTest::newRow(text) << QString(text);
}

void tst_DataOdbc::writesNothing()
{
    QFETCH(QString, text);
    const QStringList before = m_writer->rows("SELECT count(*), sum(id) FROM trades");
    DataConnection connection;
    QVERIFY(!connection.open(source("trades")));
    DataProblem problem;
    connection.rows({text, {}}, &problem);
    QVERIFY(problem);
    QVERIFY(!connection.understands(text));
    const auto model = open(source("trades"));
    QSignalSpy refused(model.get(), &DataModel::filterRefused);
    DataFilter filter;
    filter.where = "1 = 1); " + text + "; --";
    model->setFilter(filter);
    QCOMPARE(refused.size(), 1);
    DataSource asked = source({});
    asked.sql = text;
    DataModel shown;
    shown.open(asked);
    QTRY_COMPARE(shown.state(), DataModel::State::Failed);
    QCOMPARE(m_writer->rows("SELECT count(*), sum(id) FROM trades"), before);
}

void tst_DataOdbc::tellsWhatIsWrong_data()
{
    QTest::addColumn<QString>("connection");
    QTest::addColumn<QString>("table");
    QTest::addColumn<QString>("told");
    QTest::newRow("no such source") << "DSN=elsewhere"
                                    << ""
                                    << "Data source name not found";
    QTest::newRow("no such driver") << "Driver=Gone;Database=x"
                                    << ""
                                    << "/nowhere/driver.so";
    QTest::newRow("no such table") << "DSN=prices"
                                   << "nothing"
                                   << "nothing";
}

void tst_DataOdbc::tellsWhatIsWrong()
{
    QFETCH(QString, connection);
    QFETCH(QString, table);
    QFETCH(QString, told);
    DataSource asked;
    asked.engine = DataEngine::Odbc;
    asked.database = connection;
    asked.table = table;
    DataModel model;
    model.open(asked);
    QTRY_COMPARE(model.state(), DataModel::State::Failed);
    QVERIFY2(model.problem().text.contains(told), qPrintable(model.problem().text));
}

QTEST_MAIN(tst_DataOdbc)
#include "tst_dataodbc.moc"
