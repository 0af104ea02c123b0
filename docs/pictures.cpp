// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

// Takes the pictures of docs/viewer.md: vantix-pictures FOLDER. They are the same on each machine
// that has the fonts DejaVu Sans and DejaVu Sans Mono.

#include "capture/capturewindow.h"
#include "captures.h"
#ifdef VIEWER_HAS_SQL
#include "data/datawindow.h"
#endif
#include "overview/histogram.h"
#include "overview/marksmenu.h"
#include "overview/overviewstrip.h"
#include "search/findpanel.h"
#include "windows/detailpane.h"
#include "windows/filewindow.h"
#include "windows/framestatistics.h"
#include "windows/tabwindow.h"
#include "windows/tabwindows.h"
#include "windows/viewertable.h"

#include <QAction>
#include <QApplication>
#include <QDateTime>
#include <QDir>
#include <QFontDatabase>
#include <QItemSelectionModel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QRandomGenerator>
#include <QScrollBar>
#include <QSettings>
#include <QTemporaryDir>
#include <QTest>

#ifdef VIEWER_HAS_SQL
#include <QSqlError>
#include <QSqlQuery>
#endif

#include <cmath>
#include <cstdio>

namespace {

constexpr QSize s_size(1000, 560);
constexpr int s_lines = 40000;

void write(const QString &path, const QByteArray &text)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size())
        qFatal("%s cannot be written.", qUtf8Printable(path));
}

//! A day of a server that has trouble at noon.
QByteArray serverLog()
{
    QRandomGenerator random(1);
    QByteArray log;
    QDateTime time = QDateTime::fromString(QStringLiteral("2026-11-22T00:00:00"), Qt::ISODate);
    for (int line = 0; line < s_lines; ++line) {
        const double day = double(line) / s_lines;
        const double trouble = std::exp(-std::pow((day - 0.55) * 14, 2)) * 0.4;
        const double load = 0.3 + 0.7 * std::sin(3.14159 * day);
        time = time.addMSecs(qint64(700 + random.bounded(2000) / load));
        log += time.toString(QStringLiteral("yyyy-MM-dd hh:mm:ss.zzz")).toLatin1();
        const QByteArray id = QByteArray::number(random.bounded(100000));
        if (random.generateDouble() < trouble)
            log += " ERROR db: timeout after 30 s, request " + id + '\n';
        else if (random.generateDouble() < 0.02 + trouble / 2)
            log += " WARN  cache: slow answer for request " + id + '\n';
        else
            log += " INFO  http: GET /items/" + id + " 200 in "
                + QByteArray::number(3 + random.bounded(80)) + " ms\n";
    }
    return log;
}

QByteArray orders()
{
    QRandomGenerator random(2);
    QByteArray text = "order,customer,amount,currency,paid\n";
    for (int order = 1; order <= 5000; ++order)
        text += QByteArray::number(100000 + order) + ",customer "
            + QByteArray::number(random.bounded(900)) + ','
            + QByteArray::number(random.bounded(90000)) + '.'
            + QByteArray::number(10 + random.bounded(90)) + ",EUR,"
            + (random.bounded(5) > 0 ? "yes" : "no") + '\n';
    return text;
}

QByteArray events()
{
    QRandomGenerator random(3);
    QByteArray text;
    for (int event = 0; event < 3000; ++event)
        text += R"({"time": "2026-11-22T10:)" + QByteArray::number(10 + event / 60 % 50) + ':'
            + QByteArray::number(10 + event % 50) + R"(Z", "level": ")"
            + (random.bounded(9) == 0 ? "error" : "info")
            + R"(", "service": "billing", "attempt": )" + QByteArray::number(random.bounded(4))
            + R"(, "context": {"user": )" + QByteArray::number(random.bounded(9999))
            + R"(, "tags": ["a", "b"]}})" + '\n';
    return text;
}

//! Somebody at 192.168.1.23 who asks for names and then for what is there.
QByteArray packets()
{
    QRandomGenerator random(4);
    const CaptureWriter writer;
    QByteArray capture = writer.header();
    quint64 time = 1'795'255'200'000'000; // microseconds since 1970
    const auto add = [&](const QByteArray &bytes) {
        time += quint64(200 + random.bounded(9000));
        capture += writer.record(quint32(time / 1'000'000), quint32(time % 1'000'000),
                                 ethernet(0x800, bytes));
    };
    const QByteArray me = "192.168.1.23";
    const QByteArray resolver = "192.168.1.1";
    for (int visit = 0; visit < 800; ++visit) {
        const QByteArray server = "203.0.113." + QByteArray::number(1 + random.bounded(250));
        const QByteArray name = "host" + QByteArray::number(random.bounded(90)) + ".example.com";
        const int port = 32768 + random.bounded(28000);
        add(ipv4(17, udp(port, 53, dnsQuery(name)), me, resolver));
        add(ipv4(17, udp(53, port, dnsResponse(name, 1, address4(server))), resolver, me));
        add(ipv4(6, tcp(port, 443, 0x002), me, server));
        add(ipv4(6, tcp(443, port, 0x012), server, me));
        add(ipv4(6, tcp(port, 443, 0x010), me, server));
        for (int part = random.bounded(6); part >= 0; --part)
            add(ipv4(6, tcp(443, port, 0x018, QByteArray(random.bounded(1400), 'x')), server, me));
        add(ipv4(6, tcp(port, 443, 0x011), me, server));
    }
    return capture;
}

void useColors(bool isDark)
{
    if (!isDark)
        return;
    QPalette palette(QColor(0x35, 0x38, 0x3d), QColor(0x2b, 0x2d, 0x31));
    palette.setColor(QPalette::Base, QColor(0x1f, 0x21, 0x24));
    palette.setColor(QPalette::AlternateBase, QColor(0x26, 0x28, 0x2c));
    palette.setColor(QPalette::Highlight, QColor(0x2f, 0x6f, 0xb3));
    QApplication::setPalette(palette);
}

//! Until nothing happens any more.
void settle()
{
    for (int turn = 0; turn < 60; ++turn)
        QTest::qWait(20);
}

class Photographer
{
public:
    explicit Photographer(const QString &folder)
        : m_folder(folder)
    {
    }

    //! Shows \a window until it has settled.
    template<typename Window> Window *add(std::unique_ptr<Window> window)
    {
        Window *page = window.get();
        m_pages.push_back(std::move(window));
        m_windows.add(page);
        m_windows.windowOf(page)->resize(s_size);
        settle();
        return page;
    }

    FileWindow *open(const QString &name, const QByteArray &text)
    {
        write(m_files.filePath(name), text);
        return add(
            std::make_unique<FileWindow>(m_files.filePath(name), FormatRequest(), &m_statistics));
    }

    CaptureWindow *openCapture(const QString &name, const QByteArray &bytes)
    {
        write(m_files.filePath(name), bytes);
        return add(std::make_unique<CaptureWindow>(m_files.filePath(name), &m_statistics));
    }

    QString filePath(const QString &name) const { return m_files.filePath(name); }
    FrameStatistics *statistics() { return &m_statistics; }

    void take(const ViewerWindow *page, const QString &name)
    {
        settle();
        const QString path = QDir(m_folder).filePath(name);
        if (!m_windows.windowOf(page)->grab().save(path))
            qFatal("%s cannot be written.", qUtf8Printable(path));
        std::printf("%s\n", qUtf8Printable(path));
    }

private:
    const QString m_folder;
    QTemporaryDir m_files;
    FrameStatistics m_statistics;
    TabWindows m_windows;
    std::vector<std::unique_ptr<ViewerWindow>> m_pages; //!< go before the windows
};

QAction *viewAction(const ViewerWindow *page, const QString &text)
{
    const QList<QAction *> menus = page->menuBar()->actions();
    for (const QAction *menu : menus) {
        const QList<QAction *> actions =
            menu->menu() ? menu->menu()->actions() : QList<QAction *>();
        for (QAction *action : actions) {
            if (QString(action->text()).remove(u'&') == text)
                return action;
        }
    }
    qFatal("There is no action %s.", qUtf8Printable(text));
}

void takeLog(Photographer *photographer, const QString &name)
{
    FileWindow *page = photographer->open(QStringLiteral("server.log"), serverLog());
    viewAction(page, QStringLiteral("Histogram"))->setChecked(true);
    page->showLine(21000);
    page->findChild<MarksMenu *>()->markAction()->trigger();
    page->showLine(21012);
    page->openFindWith(QStringLiteral("timeout"));
    photographer->take(page, name);
}

void takeTable(Photographer *photographer)
{
    FileWindow *page = photographer->open(QStringLiteral("orders.csv"), orders());
    ViewerTable *table = page->table();
    viewAction(page, QStringLiteral("Histogram"))->setChecked(false);
    page->showLine(400);
    const QModelIndex first = table->model()->index(395, 2);
    table->selectionModel()->setCurrentIndex(first, QItemSelectionModel::NoUpdate);
    table->selectionModel()->select(QItemSelection(first, table->model()->index(409, 2)),
                                    QItemSelectionModel::ClearAndSelect
                                        | QItemSelectionModel::Rows);
    photographer->take(page, QStringLiteral("viewer-sums.png"));
}

void takeJson(Photographer *photographer)
{
    FileWindow *page = photographer->open(QStringLiteral("events.jsonl"), events());
    viewAction(page, QStringLiteral("Histogram"))->setChecked(false);
    page->rowPane()->show();
    page->openFindWith(QStringLiteral("error"));
    page->findChild<FindPanel *>()->filter(QStringLiteral("error"));
    settle();
    page->showLine(1200);
    photographer->take(page, QStringLiteral("viewer-json.png"));
}

void takePackets(Photographer *photographer)
{
    CaptureWindow *page = photographer->openCapture(QStringLiteral("visits.pcap"), packets());
    viewAction(page, QStringLiteral("Histogram"))->setChecked(false);
    page->rowPane()->show();
    page->openFindWith(QStringLiteral("Response"));
    settle();
    page->showLine(2000);
    photographer->take(page, QStringLiteral("viewer-packets.png"));
}

#ifdef VIEWER_HAS_SQL
//! Trades of a day, as ./demo --sql makes them.
void makeTrades(const QString &path)
{
    const QString name = QStringLiteral("trades");
    {
        QSqlDatabase database = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), name);
        database.setDatabaseName(path);
        QSqlQuery query = database.open() ? QSqlQuery(database) : QSqlQuery();
        const bool isMade =
            query.exec(QStringLiteral(
                "CREATE TABLE trades (id INTEGER PRIMARY KEY, time TEXT, symbol TEXT, side TEXT, "
                "price REAL, quantity INTEGER, note TEXT)"))
            && query.exec(QStringLiteral(
                "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < "
                "200000) INSERT INTO trades SELECT i, strftime('%Y-%m-%d %H:%M:%S', 1767225600 + "
                "i / 3, 'unixepoch'), substr('ALFABETAECHOGOLFLIMA', 1 + 4 * (i * 7919 % 5), 4), "
                "CASE i * 31 % 2 WHEN 0 THEN 'buy' ELSE 'sell' END, round(100 + i * 7919 % 5 * 50 "
                "+ i * 104729 % 1000 / 100.0, 2), 1 + i * 15485863 % 900, CASE WHEN i % 11 = 0 "
                "THEN 'block' END FROM n"));
        if (!isMade)
            qFatal("%s", qUtf8Printable(query.lastError().text()));
    }
    QSqlDatabase::removeDatabase(name);
}

void takeData(Photographer *photographer)
{
    const QString path = photographer->filePath(QStringLiteral("trades.sqlite"));
    makeTrades(path);
    DataSource source;
    source.database = path;
    DataWindow *page =
        photographer->add(std::make_unique<DataWindow>(source, photographer->statistics()));
    page->filterMore({2, DataCondition::Is::Equal, QStringLiteral("ECHO"), false});
    page->filterWhere(QStringLiteral("quantity > 500 AND side = 'buy'"));
    settle();
    page->sumColumn(4);
    page->table()->verticalScrollBar()->setValue(5000);
    page->findChild<QAction *>(QStringLiteral("whereAction"))->trigger();
    photographer->take(page, QStringLiteral("viewer-data.png"));
}
#endif

} // namespace

int main(int argc, char **argv)
{
    const QApplication application(argc, argv);
    if (argc != 2) {
        std::fprintf(stderr, "usage: vantix-pictures FOLDER\n");
        return 1;
    }
    const QTemporaryDir settings;
    QSettings::setDefaultFormat(QSettings::IniFormat);
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, settings.path());
    QApplication::setApplicationName(QStringLiteral("vantix-viewer"));
    QApplication::setFont(QFont(QStringLiteral("DejaVu Sans"), 10));
    QLocale::setDefault(QLocale::C);
    const QString folder = QString::fromLocal8Bit(argv[1]);
    {
        Photographer photographer(folder);
        takeLog(&photographer, QStringLiteral("viewer-log.png"));
        takeTable(&photographer);
        takeJson(&photographer);
        takePackets(&photographer);
#ifdef VIEWER_HAS_SQL
        takeData(&photographer);
#endif
    }
    useColors(true);
    Photographer photographer(folder);
    takeLog(&photographer, QStringLiteral("viewer-dark.png"));
    return 0;
}
