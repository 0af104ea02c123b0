// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

// Opening, searching and filtering a log in the viewer beside wc and grep, which do the same
// with the same file in the same run, and sorting a table beside Qt's proxy. The smallest of
// three times each; the file is in the system's memory.

#include "files/textfilemodel.h"
#include "order/sortedrows.h"
#include "qtablefastview.h"
#include "search/linefilter.h"
#include "search/tablefilter.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QRandomGenerator>
#include <QSortFilterProxyModel>
#include <QTemporaryDir>
#include <QTimer>

#include <algorithm>
#include <cstdio>
#include <functional>
#include <limits>

namespace {

constexpr int rounds = 3;
constexpr TextRules plain;
constexpr TextRules byCase {.matchesCase = true};
constexpr TextRules expression {.matchesCase = true, .isExpression = true};
constexpr TextRules anyCaseExpression {.isExpression = true};

//! Writes a log of at least \a bytes, the last line of which alone has the word "needle".
bool writeLog(const QString &path, qint64 bytes)
{
    static const QByteArrayList levels {"INFO ", "DEBUG", "INFO ", "WARN ",
                                        "INFO ", "ERROR", "INFO "};
    static const QByteArrayList messages {
        "request GET /index.html 200", "request GET /api/orders 200", "session opened for user ",
        "cache refreshed in ",         "connection from 10.0.7.",     "timeout, retrying after "};
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return false;
    qint64 written = 0;
    for (int line = 0; written < bytes; ++line) {
        const int kind = line * 31 % int(messages.size());
        const int second = line / 40;
        QByteArray text = QByteArray("2026-11-22 ") + QByteArray::number(10 + second / 3600 % 14)
            + ':' + QByteArray::number(10 + second / 60 % 50) + ':'
            + QByteArray::number(10 + second % 50) + ' '
            + levels.at(line * 7919 % 104729 % int(levels.size())) + " worker-"
            + QByteArray::number(line % 8) + ": " + messages.at(kind);
        if (kind > 1)
            text += QByteArray::number(line % 977) + " ms";
        written += file.write(text + '\n');
    }
    return file.write("the needle\n") > 0;
}

//! How long nothing else could happen.
class Stretches : public QObject
{
public:
    Stretches()
    {
        connect(&m_timer, &QTimer::timeout, this, [this] { end(); });
        m_since.start();
        m_timer.start();
    }
    //! The longest one so far, with the present one.
    qint64 longest()
    {
        end();
        return m_longest;
    }

private:
    void end() { m_longest = qMax(m_longest, m_since.restart()); }

    QTimer m_timer;
    QElapsedTimer m_since;
    qint64 m_longest = 0;
};

//! The smallest of several times, in ms. Those of the peer are taken in between.
struct Measured
{
    double best = std::numeric_limits<double>::max();

    void take(const std::function<void()> &what)
    {
        QElapsedTimer timer;
        timer.start();
        what();
        best = std::min(best, double(timer.nsecsElapsed()) / 1e6);
    }
};

//! Measures ours and the peer by turns, and prints a line.
void compare(const char *subject, const std::function<void()> &ours, const QStringList &peer)
{
    Measured our;
    Measured their;
    bool hasPeer = !peer.isEmpty();
    for (int round = 0; round < rounds; ++round) {
        our.take(ours);
        if (!hasPeer)
            continue;
        their.take([&] {
            QProcess process;
            process.setStandardErrorFile(QProcess::nullDevice());
            process.start(peer.first(), peer.mid(1));
            hasPeer = process.waitForFinished(-1) && !process.readAllStandardOutput().isEmpty();
        });
    }
    std::printf("%-42s %9.1f ms", subject, our.best);
    if (hasPeer)
        std::printf(" %9.1f ms %6.2f  %s", their.best, our.best / their.best,
                    qPrintable(peer.mid(0, peer.size() - 1).join(u' ')));
    std::printf("\n");
    std::fflush(stdout);
}

void waitFor(const std::function<bool()> &isDone)
{
    while (!isDone())
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
}

void measureOpening(const QString &path)
{
    const auto open = [&](const std::function<bool(const TextFileModel &)> &isDone) {
        TextFileModel model(path);
        QTableFastView view;
        view.resize(1280, 800);
        view.setModel(&model);
        view.show();
        model.start();
        waitFor([&] { return isDone(model); });
        view.grab();
    };
    compare("open: the first screen",
            [&] { open([](const TextFileModel &model) { return model.rowCount() > 0; }); }, {});
    compare("open: all lines",
            [&] {
                open([](const TextFileModel &model) {
                    return model.activity() == TextFileModel::Activity::Following;
                });
            },
            {"wc", "-l", path});
}

void measureSearch(TextFileModel *model)
{
    QTableFastView view;
    TableFilter find(&view);
    find.setSource(model);
    const auto search = [&](const TextRules &rules, const QString &text) {
        return [&find, &view, rules, text] {
            view.setCurrentIndex({});
            find.setCaseSensitivity(rules.matchesCase ? Qt::CaseSensitive : Qt::CaseInsensitive);
            find.setExpressions(rules.isExpression);
            if (!find.findInFile(text, true).value_or(false))
                qWarning("%s: not found", qPrintable(text));
        };
    };
    const QString path = model->path();
    compare("search: needle", search(byCase, "needle"), {"grep", "-c", "-F", "needle", path});
    compare("search: Needle, in any case", search(plain, "Needle"),
            {"grep", "-ci", "Needle", path});
    compare("search: n[a-z]+dle", search(expression, "n[a-z]+dle"),
            {"grep", "-c", "-E", "n[a-z]+dle", path});
    find.setSource(nullptr);
}

void measureFilters(TextFileModel *model)
{
    qint64 stretch = 0;
    int mostRows = 0;
    double bytes = 0;
    const auto filter = [&](const TextRules &rules, const QString &text) {
        return [&, rules, text] {
            Stretches stretches;
            QTableFastView view;
            view.resize(1280, 800);
            view.show();
            LineFilter lines({1}, TextMatcher(text, rules));
            lines.takeOver(model);
            view.setModel(&lines);
            view.grab();
            stretch = qMax(stretch, stretches.longest());
            if (lines.rowCount() > mostRows) {
                mostRows = lines.rowCount();
                bytes = double(lines.memory()) / mostRows;
            }
            view.setModel(nullptr);
        };
    };
    const QString path = model->path();
    const auto row = [&](const char *subject, const char *text, const TextRules &rules,
                         const char *options) {
        compare(subject, filter(rules, text), {"grep", options, text, path});
    };
    row("filter: nearly all", "worker", byCase, "-cF");
    row("filter: nearly all, in any case", "Worker", plain, "-ci");
    row("filter: a sixth", "orders", byCase, "-cF");
    row("filter: a sixth, in any case", "Orders", plain, "-ci");
    row("filter: one", "needle", byCase, "-cF");
    row("filter: error|fail(ed|ure)", "error|fail(ed|ure)", expression, "-cE");
    row("filter: the same, in any case", "error|fail(ed|ure)", anyCaseExpression, "-ciE");
    row("filter: id=[0-9]+7 ", "id=[0-9]+7 ", expression, "-cE");
    row("filter: GET /[a-z]+", "GET /[a-z]+", expression, "-cE");
    row("filter: [0-9]+7 ms", "[0-9]+7 ms", expression, "-cE");
    row("filter: \\b(a|o)[a-z]+s\\b", "\\b(a|o)[a-z]+s\\b", expression, "-cE");
    row("filter: id=([0-9]{2})+7 ", "id=([0-9]{2})+7 ", expression, "-cE");
    row("filter: (GET|POST) /[a-z]+", "(GET|POST) /[a-z]+", expression, "-cE");
    row("filter: worker-[0-9], nearly all", "worker-[0-9]", expression, "-cE");
    std::printf("longest stretch without events, any filter %lld ms\n", stretch);
    std::printf("bytes a row of the largest filter %.3f\n", bytes);
}

//! Writes a table of \a rows that are in order of their times only.
bool writeTable(const QString &path, int rows)
{
    QRandomGenerator random(1);
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write("time,name,price,note\n") <= 0)
        return false;
    for (int row = 0; row < rows; ++row) {
        const QByteArray time = QByteArray::number(1000000 + row / 10);
        const QByteArray text = "2026-11-22 " + time + ",item"
            + QByteArray::number(random.bounded(500)) + ','
            + QByteArray::number(random.bounded(10000000) / 100.0, 'f', 2) + ','
            + (row % 2 != 0 ? QByteArray() : 'n' + QByteArray::number(random.generate())) + '\n';
        file.write(text);
    }
    return file.flush();
}

//! Once each: Qt's proxy takes long.
void measureSorting(TextFileModel *model)
{
    qint64 stretch = 0;
    double bytes = 0;
    for (int column = 0; column < model->columnCount(); ++column) {
        Measured ours;
        ours.take([&] {
            Stretches stretches;
            SortedRows rows(model, column, Qt::AscendingOrder);
            waitFor([&rows] { return rows.isSettled(); });
            stretch = qMax(stretch, stretches.longest());
            bytes = double(rows.memory()) / model->rowCount();
        });
        Measured peer;
        peer.take([&] {
            QSortFilterProxyModel rows;
            rows.setSortCaseSensitivity(Qt::CaseInsensitive);
            rows.setSourceModel(model);
            rows.sort(column);
        });
        const QString name = model->headerData(column, Qt::Horizontal).toString();
        std::printf("sort: %d rows by %-21s %9.1f ms %9.1f ms %6.2f  QSortFilterProxyModel\n",
                    model->rowCount(), qPrintable(name), ours.best, peer.best,
                    ours.best / peer.best);
        std::fflush(stdout);
    }
    std::printf("longest stretch without events, any sorting %lld ms\n", stretch);
    std::printf("bytes a row of the order %.3f\n", bytes);
}

} // namespace

int main(int argc, char *argv[])
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication app(argc, argv);
    const qint64 mebibytes = argc > 1 ? QByteArray(argv[1]).toLongLong() : 256;
    if (argc > 2 || mebibytes <= 0) {
        std::fprintf(stderr, "usage: bench_viewer [MEBIBYTES]\n");
        return 2;
    }
    const QTemporaryDir directory;
    const QString path = directory.filePath(QStringLiteral("server.log"));
    if (!directory.isValid() || !writeLog(path, mebibytes << 20)) {
        std::fprintf(stderr, "bench_viewer: cannot write %s\n", qPrintable(path));
        return 1;
    }
    std::printf("%-42s %12s %12s %6s\n", "", "viewer", "peer", "ratio");
    measureOpening(path);
    TextFileModel model(path, {u'\0', {}, Encoding()});
    model.start();
    waitFor([&] { return model.activity() == TextFileModel::Activity::Following; });
    measureSearch(&model);
    measureFilters(&model);
    std::printf("bytes a line of the index %.3f\n",
                double(model.indexMemory()) / double(model.rowCount()));
    constexpr int rows = 200000;
    const QString tablePath = directory.filePath(QStringLiteral("table.csv"));
    if (!writeTable(tablePath, rows)) {
        std::fprintf(stderr, "bench_viewer: cannot write %s\n", qPrintable(tablePath));
        return 1;
    }
    TextFileModel table(tablePath);
    table.start();
    waitFor([&] { return table.rowCount() == rows; });
    measureSorting(&table);
    return 0;
}
