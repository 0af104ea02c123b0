// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "data/datamodel.h"
#include "data/dataschema.h"
#include "dataserver.h"
#include "datatables.h"

#include <QSignalSpy>
#include <QTest>

#include <array>

namespace {

constexpr int s_rows = 3000;

const QString s_columns =
    QStringLiteral("id bigint NOT NULL, time timestamptz NOT NULL, symbol text, price numeric(30, "
                   "10), ratio double precision");

//! The rows as the viewer shows them.
const QString s_shown =
    QStringLiteral("SELECT id::text AS a, time::text AS b, symbol AS c, price::text AS d, "
                   "ratio::text AS e FROM plain ");

} // namespace

//! Tables whose rows are in several tables, on one server or on three, which are started for it.
//! Skipped where none is installed.
class tst_DataPartitions : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanupTestCase();
    void estimatesWhatAllPartsHave_data();
    void estimatesWhatAllPartsHave();
    void showsRows_data();
    void showsRows();
    void ordersByAnyColumn_data();
    void ordersByAnyColumn();
    void filtersFindsAndAddsUp_data();
    void filtersFindsAndAddsUp();
    void follows_data();
    void follows();
    void knowsWhetherSomethingChanged();
    void copiesWhatHasNoKey();
    void tellsOfALostWorker();

private:
    void shapes();
    void fill(const QString &table);
    void createForeign();
    DataSource source(const QString &table, const QStringList &key) const;
    std::unique_ptr<DataModel> open(const DataSource &source);
    void settle(DataModel *model);
    void compareShown(DataModel *model, const QString &tail);

    std::array<DataServer, 3> m_servers; //!< the first one knows the others
    std::array<std::unique_ptr<Writer>, 3> m_writers;
};

void tst_DataPartitions::initTestCase()
{
    for (size_t i = 0; i < m_servers.size(); ++i) {
        const QString problem = m_servers[i].start();
        if (!problem.isEmpty())
            QSKIP(qPrintable(problem));
        QSqlDatabase database = QSqlDatabase::addDatabase("QPSQL", QString("server %1").arg(i));
        database.setHostName(m_servers[i].folder());
        database.setUserName("tester");
        database.setDatabaseName("postgres");
        QVERIFY2(database.open(), qPrintable(database.lastError().text()));
        m_writers[i] = std::make_unique<Writer>(database);
    }
    const Writer &writer = *m_writers[0];
    if (writer.rows("SELECT 1 FROM pg_available_extensions WHERE name = 'postgres_fdw'").isEmpty())
        QSKIP("postgres_fdw is not installed.");
    writer.run("CREATE TABLE plain (" + s_columns + ", PRIMARY KEY (id))");
    writer.run("CREATE TABLE ranges (" + s_columns + ", PRIMARY KEY (id)) PARTITION BY RANGE (id)");
    for (int i = 0; i < 3; ++i)
        writer.run(
            QString("CREATE TABLE ranges_%1 PARTITION OF ranges FOR VALUES FROM (%2) TO (%3)")
                .arg(i)
                .arg(i * 1000)
                .arg(i == 2 ? 1000000 : (i + 1) * 1000));
    createForeign();
    for (const char *table : {"plain", "ranges", "hashed"})
        fill(table);
    writer.run("ANALYZE ranges_0, ranges_1, ranges_2, hashed_0, hashed_1, hashed_2");
}

void tst_DataPartitions::cleanupTestCase()
{
    for (auto &writer : m_writers)
        writer.reset();
}

//! One part here, the others on the workers: such a table cannot have a primary key.
void tst_DataPartitions::createForeign()
{
    const Writer &writer = *m_writers[0];
    writer.run("CREATE EXTENSION postgres_fdw");
    writer.run("CREATE TABLE hashed (" + s_columns + ") PARTITION BY HASH (id)");
    writer.run("CREATE TABLE hashed_0 PARTITION OF hashed FOR VALUES WITH (MODULUS 3, REMAINDER "
               "0)");
    for (size_t i = 1; i < m_servers.size(); ++i) {
        m_writers[i]->run("CREATE TABLE part (" + s_columns + ", PRIMARY KEY (id))");
        writer.run(QString("CREATE SERVER worker_%1 FOREIGN DATA WRAPPER postgres_fdw OPTIONS "
                           "(host '%2', dbname 'postgres')")
                       .arg(i)
                       .arg(m_servers[i].folder()));
        writer.run(QString("CREATE USER MAPPING FOR tester SERVER worker_%1 OPTIONS (user "
                           "'tester')")
                       .arg(i));
        writer.run(QString("CREATE FOREIGN TABLE hashed_%1 PARTITION OF hashed FOR VALUES WITH "
                           "(MODULUS 3, REMAINDER %1) SERVER worker_%1 OPTIONS (table_name 'part')")
                       .arg(i));
    }
}

void tst_DataPartitions::fill(const QString &table)
{
    m_writers[0]->run(
        "INSERT INTO " + table
        + QString(" SELECT i, timestamptz '2026-01-01' + i % 50 * interval '1 second', CASE WHEN i "
                  "% 7 = 0 THEN NULL ELSE 'S' || i % 5 END, i / 8.0 + 12345678901234567890.0, i / "
                  "3.0 FROM generate_series(1, %1) AS i")
              .arg(s_rows));
}

DataSource tst_DataPartitions::source(const QString &table, const QStringList &key) const
{
    DataSource source;
    source.engine = DataEngine::PostgreSql;
    source.host = m_servers[0].folder();
    source.user = "tester";
    source.database = "postgres";
    source.table = table;
    source.key = key;
    return source;
}

std::unique_ptr<DataModel> tst_DataPartitions::open(const DataSource &source)
{
    auto model = std::make_unique<DataModel>();
    model->setPollTime(50);
    model->open(source);
    settle(model.get());
    return model;
}

void tst_DataPartitions::settle(DataModel *model)
{
    const auto isSettled = [&] {
        return model->state() == DataModel::State::Failed || model->isIdle();
    };
    QTRY_VERIFY_WITH_TIMEOUT(isSettled(), 120000);
}

//! The first, middle and last rows, beside those of the plain table.
void tst_DataPartitions::compareShown(DataModel *model, const QString &tail)
{
    const QStringList expected = m_writers[0]->rows(s_shown + tail);
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

//! Partitions of one server, with a key; those of three, whose key the user gives.
void tst_DataPartitions::shapes()
{
    QTest::addColumn<QString>("table");
    QTest::addColumn<QStringList>("key");
    QTest::newRow("by range, one server") << "ranges" << QStringList();
    QTest::newRow("by hash, three servers") << "hashed" << QStringList("id");
}

void tst_DataPartitions::estimatesWhatAllPartsHave_data()
{
    shapes();
}

void tst_DataPartitions::estimatesWhatAllPartsHave()
{
    QFETCH(QString, table);
    QFETCH(QStringList, key);
    DataConnection connection;
    QVERIFY(!connection.open(source(table, key)));
    DataProblem problem;
    const QStringList tables = DataSchema::tables(connection, &problem);
    QCOMPARE(tables, QStringList({"hashed", "plain", "ranges"}));
    const DataTable described = DataSchema::describe(connection, source(table, key), &problem);
    QVERIFY2(!problem, qPrintable(problem.text));
    QCOMPARE(described.estimate, s_rows);
    QCOMPARE(described.key, QStringList("\"id\""));
}

void tst_DataPartitions::showsRows_data()
{
    shapes();
}

void tst_DataPartitions::showsRows()
{
    QFETCH(QString, table);
    QFETCH(QStringList, key);
    const auto model = open(source(table, key));
    QVERIFY2(!model->problem(), qPrintable(model->problem().text));
    QVERIFY(!model->isCopy());
    QVERIFY(model->isCounted());
    compareShown(model.get(), "ORDER BY id");
}

void tst_DataPartitions::ordersByAnyColumn_data()
{
    QTest::addColumn<int>("column");
    QTest::addColumn<bool>("isDescending");
    QTest::addColumn<QString>("order");
    QTest::newRow("key") << 0 << true << "id DESC";
    QTest::newRow("ties in many parts") << 1 << false << "time, id";
    QTest::newRow("NULL") << 2 << true << "symbol DESC, id DESC";
    QTest::newRow("decimal numbers") << 3 << true << "price DESC, id DESC";
}

void tst_DataPartitions::ordersByAnyColumn()
{
    QFETCH(int, column);
    QFETCH(bool, isDescending);
    QFETCH(QString, order);
    for (const char *table : {"ranges", "hashed"}) {
        const auto model = open(source(table, {"id"}));
        model->setOrder({column, isDescending});
        settle(model.get());
        compareShown(model.get(), "ORDER BY " + order);
    }
}

void tst_DataPartitions::filtersFindsAndAddsUp_data()
{
    shapes();
}

void tst_DataPartitions::filtersFindsAndAddsUp()
{
    QFETCH(QString, table);
    QFETCH(QStringList, key);
    const auto model = open(source(table, key));
    int found = -2;
    model->find({"00:00:49", {1}}, 1000, true, [&](int row) { found = row; });
    QTRY_COMPARE(found, 1048);
    DataFilter filter;
    filter.text = {"s3", {2}};
    filter.conditions = {{3, DataCondition::Is::AtLeast, "12345678901234567899.5", true}};
    filter.where = "id % 2 = 0";
    model->setFilter(filter);
    settle(model.get());
    const QString where = "WHERE symbol = 'S3' AND price >= 12345678901234567899.5 AND id % 2 = 0";
    compareShown(model.get(), where + " ORDER BY id");
    QSignalSpy summed(model.get(), &DataModel::summed);
    model->sum(3);
    QTRY_COMPARE(summed.size(), 1);
    const auto sums = summed.first().first().value<DataReads::Sums>();
    QVERIFY(sums.isExact);
    QCOMPARE(sums.sum,
             m_writers[0]->rows("SELECT trim_scale(sum(price))::text FROM plain " + where).first());
}

void tst_DataPartitions::follows_data()
{
    shapes();
}

//! On a worker, the server that is asked sees nothing of it.
void tst_DataPartitions::follows()
{
    QFETCH(QString, table);
    QFETCH(QStringList, key);
    const bool isForeign = table == "hashed";
    const Writer &writer = *m_writers[isForeign ? 1 : 0];
    const QString part = isForeign ? "part" : "ranges";
    const auto model = open(source(table, key));
    model->setVisible(s_rows - 20, s_rows - 1);
    settle(model.get());
    writer.run("INSERT INTO " + part + " (id, time, symbol) VALUES (100001, now(), 'new')");
    QTRY_COMPARE_WITH_TIMEOUT(model->rowCount(), s_rows + 1, 30000);
    QCOMPARE(model->index(s_rows, 2).data().toString(), QString("new"));
    model->setVisible(s_rows - 20, s_rows);
    writer.run("UPDATE " + part + " SET symbol = 'seen' WHERE id = 100001");
    QTRY_COMPARE_WITH_TIMEOUT(model->index(s_rows, 2).data().toString(), QString("seen"), 30000);
    writer.run("DELETE FROM " + part + " WHERE id = 100001");
    QTRY_COMPARE_WITH_TIMEOUT(model->rowCount(), s_rows, 30000);
}

void tst_DataPartitions::knowsWhetherSomethingChanged()
{
    DataConnection connection;
    QVERIFY(!connection.open(source("ranges", {})));
    DataProblem problem;
    const DataTable ranges = DataSchema::describe(connection, source("ranges", {}), &problem);
    const QVariant before = DataSchema::version(connection, ranges);
    QVERIFY(before.isValid());
    m_writers[0]->run("UPDATE ranges SET ratio = ratio WHERE id = 1");
    QTRY_VERIFY_WITH_TIMEOUT(DataSchema::version(connection, ranges) != before, 60000);
    const DataTable hashed = DataSchema::describe(connection, source("hashed", {}), &problem);
    QVERIFY(!DataSchema::version(connection, hashed).isValid()); // the workers do not tell
}

void tst_DataPartitions::copiesWhatHasNoKey()
{
    const auto model = open(source("hashed", {}));
    QVERIFY(model->isCopy());
    QCOMPARE(model->rowCount(), s_rows);
}

void tst_DataPartitions::tellsOfALostWorker()
{
    const auto model = open(source("hashed", {"id"}));
    const QString seen = shownRow(*model, 5);
    m_writers[2].reset();
    m_servers[2].stop();
    QTRY_VERIFY_WITH_TIMEOUT(model->problem(), 30000);
    QCOMPARE(shownRow(*model, 5), seen); // what was seen stays
    QString said;
    QVERIFY2(m_servers[2].restart(&said), qPrintable(said));
    QTRY_VERIFY_WITH_TIMEOUT(!model->problem(), 60000);
    settle(model.get());
    QCOMPARE(shownRow(*model, 5), seen);
}

QTEST_MAIN(tst_DataPartitions)
#include "tst_datapartitions.moc"
