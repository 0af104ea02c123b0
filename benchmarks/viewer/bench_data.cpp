// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

// A table of a database in the viewer's model beside Qt's own: bench_data [ROWS]. Prints the time
// until the first rows are there, and until those in the middle are, the memory that came with
// them, and ratios.

#include "basics/memory.h"
#include "data/datamodel.h"
#include "windows/framestatistics.h"
#include "windows/viewertable.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QScrollBar>
#include <QSqlError>
#include <QSqlQuery>
#include <QSqlTableModel>
#include <QTableView>
#include <QTemporaryDir>

#include <cstdio>
#include <functional>

namespace {

constexpr qint64 s_usualRows = 1000000;
constexpr int s_shownRows = 40;
constexpr QSize s_size(900, 700);

struct Figures
{
    double firstScreen = 0; // ms
    double middle = 0;      // ms
    qint64 memory = 0;      // bytes
    int rows = 0;
};

void makeTable(const QString &path, qint64 rows)
{
    QSqlDatabase database = QSqlDatabase::database();
    QSqlQuery query(database);
    query.exec(QStringLiteral("PRAGMA journal_mode = OFF"));
    const bool isMade =
        query.exec(QStringLiteral("CREATE TABLE trades (id INTEGER PRIMARY KEY, symbol TEXT, "
                                  "price REAL, quantity INTEGER)"))
        && query.exec(QStringLiteral("WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 "
                                     "FROM n WHERE i < %1) INSERT INTO trades SELECT i, 'symbol ' "
                                     "|| i % 100, i / 8.0, i % 900 FROM n")
                          .arg(rows));
    if (!isMade)
        qFatal("%s: %s", qPrintable(path), qPrintable(query.lastError().text()));
}

void waitFor(const std::function<bool()> &isDone)
{
    while (!isDone())
        QCoreApplication::processEvents(QEventLoop::AllEvents, 5);
}

double milliseconds(const QElapsedTimer &time)
{
    return double(time.nsecsElapsed()) / 1e6;
}

Figures measureOurs(const QString &path)
{
    Figures figures;
    const qint64 before = residentBytes();
    FrameStatistics statistics;
    ViewerTable table(&statistics);
    table.resize(s_size);
    QElapsedTimer time;
    time.start();
    DataModel model;
    DataSource source;
    source.database = path;
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

void print(const char *name, double ours, double peer, const char *unit)
{
    std::printf("%-24s %10.2f %10.2f %s   %.4f\n", name, ours, peer, unit, ours / peer);
}

} // namespace

int main(int argc, char **argv)
{
    const QApplication application(argc, argv);
    const qint64 given = argc > 1 ? QByteArray(argv[1]).toLongLong() : 0;
    const qint64 rows = given > 0 ? given : s_usualRows;
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("trades.sqlite"));
    QSqlDatabase database = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"));
    database.setDatabaseName(path);
    if (!database.open())
        qFatal("%s", qPrintable(database.lastError().text()));
    makeTable(path, rows);
    const Figures ours = measureOurs(path);
    const Figures peer = measureQt();
    std::printf("%lld rows                    ours         Qt        ratio\n", (long long)(rows));
    print("first screen", ours.firstScreen, peer.firstScreen, "ms");
    print("jump to the middle", ours.middle, peer.middle, "ms");
    print("memory", double(ours.memory) / 1048576, double(peer.memory) / 1048576, "MiB");
    return 0;
}
