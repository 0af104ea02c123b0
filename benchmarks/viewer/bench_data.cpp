// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

// A table of a database in the viewer's model beside Qt's own: bench_data [ROWS] of SQLite,
// bench_data --server [ROWS] of a PostgreSQL server that is started for it, and beside that
// server's own client with a cursor. Prints the time until the first rows are there, and until
// those in the middle are, the memory that came with them, and ratios. With a server it then
// follows the table while rows are inserted.

#include "basics/memory.h"
#include "data/datamodel.h"
#include "dataserver.h"
#include "windows/framestatistics.h"
#include "windows/viewertable.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QProcess>
#include <QScrollBar>
#include <QSqlError>
#include <QSqlQuery>
#include <QSqlTableModel>
#include <QTableView>
#include <QTemporaryDir>
#include <QTimer>

#include <sys/resource.h>
#include <unistd.h>

#include <cstdio>
#include <functional>

namespace {

constexpr qint64 s_usualRows = 1000000;
constexpr int s_shownRows = 40;
constexpr int s_followTime = 10000; // ms
constexpr QSize s_size(900, 700);

struct Figures
{
    double firstScreen = 0; // ms
    double middle = 0;      // ms
    qint64 memory = 0;      // bytes
    int rows = 0;
};

//! Runs \a statements, which are expected to work.
void run(const QStringList &statements)
{
    for (const QString &statement : statements) {
        QSqlQuery query;
        if (!query.exec(statement))
            qFatal("%s", qPrintable(query.lastError().text()));
    }
}

void makeSqliteTable(qint64 rows)
{
    run({QStringLiteral("PRAGMA journal_mode = OFF"),
         QStringLiteral("CREATE TABLE trades (id INTEGER PRIMARY KEY, symbol TEXT, price REAL, "
                        "quantity INTEGER)"),
         QStringLiteral("WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE "
                        "i < %1) INSERT INTO trades SELECT i, 'symbol ' || i % 100, i / 8.0, "
                        "i % 900 FROM n")
             .arg(rows)});
}

void makeServerTable(qint64 rows)
{
    run({QStringLiteral("CREATE TABLE trades (id bigint, symbol text, price double precision, "
                        "quantity integer)"),
         QStringLiteral("INSERT INTO trades SELECT i, 'symbol ' || i % 100, i / 8.0, i % 900 FROM "
                        "generate_series(1::bigint, %1) AS i")
             .arg(rows),
         QStringLiteral("ALTER TABLE trades ADD PRIMARY KEY (id)"),
         QStringLiteral("VACUUM ANALYZE trades")});
}

void waitFor(const std::function<bool()> &isDone)
{
    while (!isDone())
        QCoreApplication::processEvents(QEventLoop::AllEvents, 5);
}

//! As a program does that has nothing else to do.
void liveFor(int milliseconds)
{
    QEventLoop loop;
    QTimer::singleShot(milliseconds, Qt::PreciseTimer, &loop, &QEventLoop::quit);
    loop.exec();
}

double milliseconds(const QElapsedTimer &time)
{
    return double(time.nsecsElapsed()) / 1e6;
}

Figures measureOurs(const DataSource &source)
{
    Figures figures;
    const qint64 before = residentBytes();
    FrameStatistics statistics;
    ViewerTable table(&statistics);
    table.resize(s_size);
    QElapsedTimer time;
    time.start();
    DataModel model;
    model.open(source);
    table.setModel(&model);
    table.show();
    waitFor([&] { return model.isLoaded(s_shownRows) && table.hasPaintedRows(); });
    figures.firstScreen = milliseconds(time);
    time.start();
    const int middle = model.rowCount() / 2;
    table.verticalScrollBar()->setValue(middle);
    model.setVisible(middle, middle + s_shownRows);
    waitFor([&] { return model.isLoaded(middle) && model.isLoaded(middle + s_shownRows); });
    table.grab();
    figures.middle = milliseconds(time);
    figures.memory = residentBytes() - before;
    figures.rows = model.rowCount();
    table.setModel(nullptr);
    return figures;
}

//! It has no rows but those that were fetched: the middle is where all before it are.
Figures measureQt()
{
    Figures figures;
    const qint64 before = residentBytes();
    QTableView table;
    table.resize(s_size);
    QElapsedTimer time;
    time.start();
    QSqlTableModel model;
    model.setTable(QStringLiteral("trades"));
    model.select();
    table.setModel(&model);
    table.show();
    table.grab();
    figures.firstScreen = milliseconds(time);
    time.start();
    QSqlQuery count(QStringLiteral("SELECT count(*) FROM trades"));
    count.next();
    const int middle = count.value(0).toInt() / 2;
    while (model.rowCount() < middle + s_shownRows && model.canFetchMore())
        model.fetchMore();
    table.scrollTo(model.index(middle, 0), QAbstractItemView::PositionAtTop);
    table.grab();
    figures.middle = milliseconds(time);
    figures.memory = residentBytes() - before;
    figures.rows = model.rowCount();
    return figures;
}

//! The server's own client, which is told what to print.
class Client
{
public:
    explicit Client(const DataServer &server)
    {
        const QString beside = server.programFolder() + QStringLiteral("/psql");
        m_process.setProcessChannelMode(QProcess::MergedChannels);
        m_process.start(QFile::exists(beside) ? beside : QStringLiteral("psql"),
                        {QStringLiteral("-h"), server.folder(), QStringLiteral("-U"),
                         QStringLiteral("tester"), QStringLiteral("-d"), QStringLiteral("postgres"),
                         QStringLiteral("-qAtX")});
    }
    ~Client()
    {
        m_process.closeWriteChannel();
        m_process.waitForFinished(-1);
    }
    Q_DISABLE_COPY_MOVE(Client)

    //! Lines of \a commands are run by it, one after the other.
    void tell(const char *commands)
    {
        m_process.write(commands);
        m_process.write("\n");
    }
    //! Until all is done that was told. What it printed.
    QByteArray wait()
    {
        m_process.write("\\echo all done\n");
        QByteArray said;
        while (!said.endsWith("all done\n") && m_process.waitForReadyRead(-1))
            said += m_process.readAll();
        return said;
    }
    //! Bytes of the machine's memory that it has.
    qint64 memory() const
    {
        QFile pages(QStringLiteral("/proc/%1/statm").arg(m_process.processId()));
        return pages.open(QIODevice::ReadOnly)
            ? pages.readAll().split(' ').value(1).toLongLong() * ::sysconf(_SC_PAGESIZE)
            : 0;
    }

private:
    QProcess m_process;
};

Figures measureClient(const DataServer &server, qint64 rows)
{
    Figures figures;
    QElapsedTimer time;
    time.start();
    Client client(server);
    client.tell("BEGIN; DECLARE shown SCROLL CURSOR FOR SELECT * FROM trades ORDER BY id;");
    client.tell("FETCH 40 FROM shown;");
    client.wait();
    figures.firstScreen = milliseconds(time);
    time.start();
    client.tell("MOVE ABSOLUTE " + QByteArray::number(rows / 2) + " IN shown;");
    client.tell("FETCH 40 FROM shown;");
    client.wait();
    figures.middle = milliseconds(time);
    figures.memory = client.memory();
    return figures;
}

double processorTime()
{
    rusage usage {};
    ::getrusage(RUSAGE_SELF, &usage);
    const auto seconds = [](const timeval &time) {
        return double(time.tv_sec) + double(time.tv_usec) / 1e6;
    };
    return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

qint64 lastId()
{
    QSqlQuery query(QStringLiteral("SELECT max(id) FROM trades"));
    query.next();
    return query.value(0).toLongLong();
}

//! Shows the end while a hundred rows come at a time, some 20,000 a second.
void follow(const DataServer &server, const DataSource &source)
{
    FrameStatistics statistics;
    ViewerTable table(&statistics);
    table.resize(s_size);
    DataModel model;
    model.open(source);
    table.setModel(&model);
    table.show();
    const auto look = [&] {
        const int first = table.verticalScrollBar()->value();
        model.setVisible(first, first + s_shownRows);
    };
    QObject::connect(table.verticalScrollBar(), &QScrollBar::valueChanged, &model, look);
    waitFor([&] { return model.isLoaded(s_shownRows) && model.isIdle(); });
    table.scrollToBottom();
    waitFor([&] { return model.isIdle(); });
    Client writer(server);
    writer.tell("DO $$ BEGIN FOR i IN 1..100000 LOOP INSERT INTO trades SELECT n, 'new', n, 1 FROM "
                "(SELECT (SELECT max(id) FROM trades) + generate_series(1, 100) AS n) AS more; "
                "COMMIT; PERFORM pg_sleep(0.0045); END LOOP; END $$;");
    liveFor(1000);
    const qint64 ids = lastId();
    const int rows = model.rowCount();
    const qint64 frames = statistics.frames();
    const double used = processorTime();
    QElapsedTimer time;
    time.start();
    liveFor(s_followTime);
    const double seconds = milliseconds(time) / 1000;
    const double usedThen = processorTime();
    const qint64 written = lastId() - ids;
    std::printf("%.0f rows a second inserted, %.0f shown: %.0f frames a second, %.0f %% of a "
                "processor\n",
                double(written) / seconds, double(model.rowCount() - rows) / seconds,
                double(statistics.frames() - frames) / seconds, (usedThen - used) / seconds * 100);
    run({QStringLiteral("SELECT pg_terminate_backend(pid) FROM pg_stat_activity WHERE "
                        "application_name = 'psql'")});
    table.setModel(nullptr);
}

void print(const char *name, double ours, double peer, const char *unit)
{
    std::printf("%-24s %10.2f %10.2f %s   %.4f\n", name, ours, peer, unit, ours / peer);
}

void printAll(qint64 rows, const char *peerName, const Figures &ours, const Figures &peer)
{
    std::printf("%lld rows %26s %10s        ratio\n", (long long)(rows), "ours", peerName);
    print("first screen", ours.firstScreen, peer.firstScreen, "ms");
    print("jump to the middle", ours.middle, peer.middle, "ms");
    print("memory", double(ours.memory) / 1048576, double(peer.memory) / 1048576, "MiB");
}

void openDatabase(QSqlDatabase database, const QString &name)
{
    database.setDatabaseName(name);
    if (!database.open())
        qFatal("%s", qPrintable(database.lastError().text()));
}

void compareFiles(qint64 rows)
{
    const QTemporaryDir folder;
    DataSource source;
    source.database = folder.filePath(QStringLiteral("trades.sqlite"));
    openDatabase(QSqlDatabase::addDatabase(QStringLiteral("QSQLITE")), source.database);
    makeSqliteTable(rows);
    const Figures ours = measureOurs(source);
    printAll(rows, "Qt", ours, measureQt());
}

void compareServers(qint64 rows)
{
    DataServer server;
    const QString problem = server.start();
    if (!problem.isEmpty())
        qFatal("%s", qPrintable(problem));
    DataSource source;
    source.engine = DataEngine::PostgreSql;
    source.host = server.folder();
    source.user = QStringLiteral("tester");
    source.database = QStringLiteral("postgres");
    source.table = QStringLiteral("trades");
    QSqlDatabase database = QSqlDatabase::addDatabase(QStringLiteral("QPSQL"));
    database.setHostName(source.host);
    database.setUserName(source.user);
    openDatabase(database, source.database);
    makeServerTable(rows);
    const Figures ours = measureOurs(source);
    printAll(rows, "psql", ours, measureClient(server, rows));
    follow(server, source);
    printAll(rows, "Qt", ours, measureQt());
    std::fflush(stdout);
    database.close();
}

} // namespace

int main(int argc, char **argv)
{
    const QApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments().mid(1);
    const bool isOfServer = arguments.contains(QStringLiteral("--server"));
    const qint64 given = arguments.isEmpty() ? 0 : arguments.last().toLongLong();
    const qint64 rows = given > 0 ? given : s_usualRows;
    isOfServer ? compareServers(rows) : compareFiles(rows);
    return 0;
}
