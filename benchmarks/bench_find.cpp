// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

// A search that finds nothing beside QAbstractItemModel::match() over the same cells,
// and a filter beside Qt's proxy, over a million rows of five columns.

#include "abstractitemviewfind.h"
#include "instructioncount.h"
#include "ratioreporter.h"
#include "sortfilterproxymodel.h"
#include "styleditemdelegate.h"

#include <QAbstractTableModel>
#include <QApplication>
#include <QDateTime>
#include <QElapsedTimer>
#include <QHeaderView>
#include <QTableView>
#include <QTimeZone>
#include <QTimer>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <functional>
#include <vector>

namespace {

constexpr int rows = 1000000;
constexpr int columns = 5;

//! Stored values, as an application has them, or values made of the row when they are asked for,
//! which hide nothing of what a search takes.
class StoredModel : public QAbstractTableModel
{
public:
    using Computed = QVariant (*)(int row);

    explicit StoredModel(const std::function<QVariant(int)> &value, Computed computed = nullptr)
        : m_computed(computed)
    {
        if (computed)
            return;
        m_values.reserve(size_t(rows) * columns);
        for (int i = 0; i < rows * columns; ++i)
            m_values.push_back(value(i));
    }
    int rowCount(const QModelIndex &parent = {}) const override
    {
        return parent.isValid() ? 0 : rows;
    }
    int columnCount(const QModelIndex &parent = {}) const override
    {
        return parent.isValid() ? 0 : columns;
    }
    QVariant data(const QModelIndex &index, int role) const override
    {
        if (role != Qt::DisplayRole || !index.isValid())
            return {};
        if (m_computed)
            return m_computed(index.row());
        return m_values[size_t(index.row()) * columns + size_t(index.column())];
    }

private:
    Computed m_computed;
    std::vector<QVariant> m_values;
};

struct Kind
{
    const char *name;
    std::function<QVariant(int)> value;
    QString text; //!< in no cell
    StoredModel::Computed computed = nullptr;
};

QVariant sentence(int n)
{
    return QStringLiteral("row %1 of a log with some text").arg(n);
}

QVariant dateTime(int n)
{
    return QDateTime::fromMSecsSinceEpoch(1700000000000LL + n * 200LL, QTimeZone::utc());
}

const std::vector<Kind> &kinds()
{
    static const std::vector<Kind> all {
        {"texts", sentence, QStringLiteral("nothing")},
        {"numbers", [](int n) { return QVariant(n * 7); }, QStringLiteral("99999999")},
        {"real numbers", [](int n) { return QVariant(n / 100.0); }, QStringLiteral("99999999")},
        {"date-times", dateTime, QStringLiteral("99:99")},
        {"computed texts",
         {},
         QStringLiteral("nothing"),
         [](int) { return QVariant(QStringLiteral("a row of a log with some text")); }},
        {"computed numbers", {}, QStringLiteral("99999999"), [](int row) { return QVariant(row); }},
        {"computed real numbers",
         {},
         QStringLiteral("99999999"),
         [](int row) { return QVariant(row * 0.25); }},
    };
    return all;
}

//! Qt's own search, a column after the other.
void match(const QAbstractItemModel &model, const QString &text)
{
    for (int column = 0; column < columns; ++column) {
        benchmark::DoNotOptimize(model.match(model.index(0, column), Qt::DisplayRole, text, 1,
                                             Qt::MatchContains | Qt::MatchWrap));
    }
}

void measureMatch(benchmark::State &state, const Kind &kind)
{
    const StoredModel model(kind.value, kind.computed);
    const InstructionCount count(state, rows, [] {});
    for ([[maybe_unused]] auto _ : state)
        match(model, kind.text);
}

void measureFind(benchmark::State &state, const Kind &kind, bool isForward, bool hasDelegate)
{
    StoredModel model(kind.value, kind.computed);
    QTableView view;
    view.setLocale(QLocale(QLocale::English, QLocale::UnitedStates));
    view.setModel(&model);
    StyledItemDelegate delegate(&view);
    if (hasDelegate)
        view.setItemDelegate(&delegate);
    AbstractItemViewFind find;
    find.setView(&view);
    find.setHeader(view.horizontalHeader());
    view.setCurrentIndex(model.index(isForward ? 0 : rows - 1, 0));
    const InstructionCount count(state, rows, [] {});
    for ([[maybe_unused]] auto _ : state) {
        if (isForward ? find.findNext(kind.text) : find.findPrev(kind.text))
            state.SkipWithError("found");
    }
}

//! The longest time without events, of which a timer asks for as many as it can get.
void measureGaps(benchmark::State &state)
{
    StoredModel model(sentence);
    QTableView view;
    view.setModel(&model);
    AbstractItemViewFind find;
    find.setView(&view);
    find.setHeader(view.horizontalHeader());
    qint64 longest = 0;
    QElapsedTimer sinceEvents;
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout,
                     [&] { longest = std::max(longest, sinceEvents.nsecsElapsed()); });
    QObject::connect(&timer, &QTimer::timeout, [&] { sinceEvents.start(); });
    timer.start(0);
    for ([[maybe_unused]] auto _ : state) {
        sinceEvents.start();
        find.findNext(QStringLiteral("nothing"));
        longest = std::max(longest, sinceEvents.nsecsElapsed());
    }
    state.counters["longest_gap_ms"] = double(longest) / 1e6;
}

//! From all rows shown to none shown, and back.
template<typename Proxy, typename SetFilter>
void measureFilter(benchmark::State &state, Proxy &proxy, SetFilter setFilter)
{
    StoredModel model(sentence);
    proxy.setSourceModel(&model);
    benchmark::DoNotOptimize(proxy.rowCount());
    const InstructionCount count(state, rows, [] {});
    for ([[maybe_unused]] auto _ : state) {
        setFilter(QStringLiteral("nothing"));
        if (proxy.rowCount() != 0)
            state.SkipWithError("wrong rows");
        setFilter(QString());
    }
    proxy.setSourceModel(nullptr);
}

void measureOurFilter(benchmark::State &state)
{
    SortFilterProxyModel proxy;
    proxy.setVisibleColumns({0, 1, 2, 3, 4});
    measureFilter(state, proxy, [&](const QString &text) { proxy.setFilter(text); });
}

void measureTheirFilter(benchmark::State &state)
{
    QSortFilterProxyModel proxy;
    proxy.setFilterKeyColumn(-1);
    measureFilter(state, proxy, [&](const QString &text) { proxy.setFilterFixedString(text); });
}

template<typename Measure> void add(const std::string &subject, const char *who, Measure measure)
{
    const std::string name = subject + '/' + std::to_string(rows) + '/' + who;
    InstructionCount::registerBenchmark(name, measure)->Unit(benchmark::kMicrosecond);
}

void registerAll()
{
    for (const Kind &kind : kinds()) {
        add(kind.name, "match", [&](benchmark::State &state) { measureMatch(state, kind); });
        for (const bool isForward : {true, false}) {
            const char *const way = isForward ? "next" : "previous";
            add(kind.name, (std::string("vantix, ") + way).c_str(),
                [&kind, isForward](benchmark::State &state) {
                    measureFind(state, kind, isForward, true);
                });
            add(kind.name, (std::string("vantix with Qt's delegate, ") + way).c_str(),
                [&kind, isForward](benchmark::State &state) {
                    measureFind(state, kind, isForward, false);
                });
        }
    }
    add("texts, a timer running", "vantix", measureGaps);
    add("filter", "vantix", measureOurFilter);
    add("filter", "QSortFilterProxyModel", measureTheirFilter);
}

} // namespace

int main(int argc, char *argv[])
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    registerAll();
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    RatioReporter reporter({"match", "QSortFilterProxyModel"});
    benchmark::RunSpecifiedBenchmarks(&reporter);
    reporter.printRatios();
    return 0;
}
