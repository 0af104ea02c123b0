// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

// The fast view beside the field's answers, in one run: each operation with its
// painting, until the event loop is quiet. Prints the ratio to the better peer.

#include "benchmodel.h"
#include "instructioncount.h"
#include "itemdelegate.h"
#include "qtablefastview.h"
#include "ratioreporter.h"

#include <QApplication>
#include <QHeaderView>
#include <QItemSelectionModel>
#include <QPixmapCache>
#include <QScrollBar>
#include <QTableView>
#include <QTreeView>

#include <benchmark/benchmark.h>

#include <functional>
#include <malloc.h>
#include <memory>

namespace {

constexpr int rowHeight = 14;
constexpr int columnWidth = 160;

enum Kind {
    Buffered,
    Direct,
    Table,
    Tree
};
const char *const kindNames[] = {"vantix-buffer", "vantix-direct", "QTableView", "QTreeView"};

void quiet()
{
    QCoreApplication::sendPostedEvents();
    QCoreApplication::processEvents();
}

std::unique_ptr<QAbstractItemView> makeFastView(bool isBuffered)
{
    auto view = std::make_unique<QTableFastView>();
    view->setPaintBufferEnabled(isBuffered);
    view->setItemDelegate(new Vantix::ItemDelegate(view.get()));
    return view;
}

std::unique_ptr<QAbstractItemView> makeTable()
{
    auto view = std::make_unique<QTableView>();
    view->setShowGrid(false);
    view->setWordWrap(false);
    view->verticalHeader()->hide();
    view->verticalHeader()->setMinimumSectionSize(1);
    view->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    view->verticalHeader()->setDefaultSectionSize(rowHeight);
    view->horizontalHeader()->setSectionResizeMode(QHeaderView::Interactive);
    view->setSelectionBehavior(QAbstractItemView::SelectRows);
    return view;
}

std::unique_ptr<QAbstractItemView> makeTree()
{
    auto view = std::make_unique<QTreeView>();
    view->setUniformRowHeights(true);
    view->setRootIsDecorated(false);
    view->setItemsExpandable(false);
    view->setVerticalScrollMode(QAbstractItemView::ScrollPerItem);
    return view;
}

//! A view of one kind, its model, and the corrections that keep a peer on its rows.
class Stage
{
public:
    Stage(Kind kind, int rows)
        : m_kind(kind)
        , model(rows)
    {
        switch (kind) {
        case Buffered:
        case Direct:
            view = makeFastView(kind == Buffered);
            break;
        case Table:
            view = makeTable();
            break;
        case Tree:
            view = makeTree();
            break;
        }
        view->setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
        view->setSelectionMode(QAbstractItemView::ExtendedSelection);
        view->setFocusPolicy(Qt::NoFocus); // no current index that would follow insertions
        view->setModel(&model);
        for (int column = 0; column < 10; ++column)
            header()->resizeSection(column, columnWidth);
        view->resize(1280, 800);
        view->show();
        quiet();
    }

    QHeaderView *header() const
    {
        if (auto *fast = qobject_cast<QTableFastView *>(view.get()))
            return fast->header();
        if (auto *table = qobject_cast<QTableView *>(view.get()))
            return table->horizontalHeader();
        return static_cast<QTreeView *>(view.get())->header();
    }
    QScrollBar *bar() const { return view->verticalScrollBar(); }
    bool isPeer() const { return m_kind == Table || m_kind == Tree; }
    void toMiddle() { bar()->setValue(bar()->maximum() / 2); }

    //! Rows came or went above: peers are told to keep their rows.
    void keepRows(int count)
    {
        if (isPeer())
            bar()->setValue(bar()->value() + count);
    }
    void keepEnd()
    {
        if (isPeer())
            view->scrollToBottom();
    }

private:
    Kind m_kind;

public:
    BenchModel model;
    std::unique_ptr<QAbstractItemView> view;
};

struct Operation
{
    const char *name;
    std::function<void(Stage &)> prepare;
    std::function<void(Stage &, int)> run; //!< the turn's number counts from 0
    int perTurn = 1;                       //!< what the time is divided by
    bool isPainted = true;                 //!< the event loop gets quiet after each turn
};

const auto nothing = [](Stage &) {};
const auto middle = [](Stage &s) { s.toMiddle(); };

void insertAbove(Stage &s, int)
{
    s.model.insert(0, 1);
    s.keepRows(1);
}

void removeAbove(Stage &s, int turn)
{
    // Refills unseen by the count: a thousand rows would run out.
    if (turn % 100 == 99) {
        s.model.insert(0, 100);
        s.keepRows(100);
        return;
    }
    s.model.remove(0, 1);
    s.keepRows(-1);
}

void insertBurst(Stage &s, int)
{
    for (int i = 0; i < 1000; ++i)
        insertAbove(s, i);
}

void appendAtEnd(Stage &s, int)
{
    s.model.insert(s.model.rowCount(), 1);
    s.keepEnd();
}

void insertInView(Stage &s, int)
{
    s.model.insert(s.bar()->value() + 10, 1);
}

void changeCells(Stage &s, int turn, int count)
{
    const int top = s.view->indexAt(QPoint(5, 5)).row();
    for (int i = 0; i < count; ++i) {
        const int n = turn * count + i;
        s.model.change(top + (n * 7) % 50, (n * 3) % 8);
    }
}

//! A sixtieth of a second of a busy feed: rows above and at the end, changed cells.
void stormFrame(Stage &s, int turn)
{
    for (int i = 0; i < 10; ++i) {
        insertAbove(s, i);
        s.model.insert(s.model.rowCount(), 1);
    }
    changeCells(s, turn, 50);
    if (turn % 10 == 0)
        s.bar()->setValue(s.bar()->value() + 3);
}

void selectRanges(Stage &s)
{
    s.toMiddle();
    QItemSelection selection;
    const int top = s.bar()->value();
    for (int i = 0; i < 300; ++i) {
        const int row = std::min(top + 2 * i, s.model.rowCount() - 1);
        selection.append(QItemSelectionRange(s.model.index(row, 0), s.model.index(row, 9)));
    }
    s.view->selectionModel()->select(selection, QItemSelectionModel::ClearAndSelect);
}

QList<Operation> operations()
{
    return {
        {"repaint", middle, [](Stage &s, int) { s.view->viewport()->update(); }},
        {"repaint, 300 ranges selected", selectRanges,
         [](Stage &s, int) { s.view->viewport()->update(); }},
        {"scroll one row", middle,
         [](Stage &s, int turn) {
             s.bar()->setValue(s.bar()->value() + (turn / 50 % 2 ? -1 : 1));
         }},
        {"scroll a page", middle,
         [](Stage &s, int turn) {
             s.bar()->setValue(s.bar()->value() + (turn % 2 ? -1 : 1) * s.bar()->pageStep());
         }},
        {"scroll columns", middle,
         [](Stage &s, int turn) {
             QScrollBar *bar = s.view->horizontalScrollBar();
             bar->setValue(turn % 2 ? 0 : 40);
         }},
        {"insert above", middle, insertAbove},
        {"remove above", middle, removeAbove},
        {"1000 insertions above", middle, insertBurst},
        {"append at the end", [](Stage &s) { s.view->scrollToBottom(); }, appendAtEnd},
        {"insert at the top", [](Stage &s) { s.view->scrollToTop(); },
         [](Stage &s, int) { s.model.insert(0, 1); }},
        {"insert in view", middle, insertInView},
        {"1 changed cell", middle, [](Stage &s, int turn) { changeCells(s, turn, 1); }},
        {"100 changed cells", middle, [](Stage &s, int turn) { changeCells(s, turn, 100); }},
        {"10000 cell changes a second, a frame", middle,
         [](Stage &s, int turn) { changeCells(s, turn, 10000 / 60); }},
        {"mixed storm, a frame", middle, stormFrame},
        {"reset", middle, [](Stage &s, int) { s.model.restart(); }},
        {"layout change", middle, [](Stage &s, int) { s.model.relayout(); }},
        {"select all", nothing,
         [](Stage &s, int turn) {
             if (turn % 2)
                 s.view->clearSelection();
             else
                 s.view->selectAll();
         }},
        {"indexAt", middle,
         [](Stage &s, int turn) {
             for (int i = 0; i < 1000; ++i)
                 benchmark::DoNotOptimize(s.view->indexAt(QPoint((turn + i) % 1200, i % 700)));
         },
         1000, false},
        {"visualRect", middle,
         [](Stage &s, int) {
             const QModelIndex index = s.view->indexAt(QPoint(300, 300));
             for (int i = 0; i < 1000; ++i)
                 benchmark::DoNotOptimize(s.view->visualRect(index));
         },
         1000, false},
        {"column widths", middle,
         [](Stage &s, int) {
             if (auto *fast = qobject_cast<QTableFastView *>(s.view.get()))
                 fast->resizeColumnsToContents();
             else if (auto *table = qobject_cast<QTableView *>(s.view.get()))
                 table->resizeColumnsToContents();
             else
                 for (int column = 0; column < 10; ++column)
                     static_cast<QTreeView *>(s.view.get())->resizeColumnToContents(column);
         }},
    };
}

void measure(benchmark::State &state, const Operation &operation, Kind kind, int rows)
{
    Stage stage(kind, rows);
    operation.prepare(stage);
    quiet();
    int turn = 0;
    const auto takeTurn = [&] {
        operation.run(stage, turn++);
        if (operation.isPainted)
            quiet();
    };
    {
        const InstructionCount count(state, operation.perTurn, takeTurn);
        for ([[maybe_unused]] auto _ : state)
            takeTurn();
    }
    state.SetItemsProcessed(state.iterations() * operation.perTurn);
}

void measureOpening(benchmark::State &state, Kind kind, int rows)
{
    const auto open = [&] { Stage stage(kind, rows); };
    const InstructionCount count(state, 1, open);
    for ([[maybe_unused]] auto _ : state)
        open();
}

//! Heap that a view takes for its model.
void measureHeap(benchmark::State &state, Kind kind, int rows)
{
    { // what is made once per process is not the view's
        Stage first(kind, 10);
    }
    double used = 0;
    for ([[maybe_unused]] auto _ : state) {
        const struct mallinfo2 before = mallinfo2();
        const Stage stage(kind, rows);
        const struct mallinfo2 after = mallinfo2();
        used = double(after.uordblks + after.hblkhd) - double(before.uordblks + before.hblkhd);
    }
    state.counters["heap_bytes"] = used;
}

std::string nameOf(const char *operation, int rows, Kind kind)
{
    return std::string(operation) + '/' + std::to_string(rows) + '/' + kindNames[kind];
}

void registerAll(int rows, bool isPeerWanted)
{
    for (Kind kind : {Buffered, Direct, Table, Tree}) {
        if (kind >= Table && !isPeerWanted)
            continue;
        for (const Operation &operation : operations()) {
            InstructionCount::registerBenchmark(
                nameOf(operation.name, rows, kind),
                [=](benchmark::State &state) { measure(state, operation, kind, rows); })
                ->Unit(benchmark::kMicrosecond);
        }
        InstructionCount::registerBenchmark(
            nameOf("open and first paint", rows, kind),
            [=](benchmark::State &state) { measureOpening(state, kind, rows); })
            ->Unit(benchmark::kMicrosecond);
        benchmark::RegisterBenchmark(
            nameOf("heap at opening", rows, kind).c_str(),
            [=](benchmark::State &state) { measureHeap(state, kind, rows); })
            ->Unit(benchmark::kMicrosecond)
            ->Iterations(1);
    }
}

} // namespace

int main(int argc, char *argv[])
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    QApplication::setStyle(QStringLiteral("fusion"));
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setPixelSize(12);
    QApplication::setFont(font);
    QPixmapCache::setCacheLimit(64 * 1024); // sixteen screens of cells

    for (int rows : {1000, 1000000, 10000000})
        registerAll(rows, true);
    registerAll(100000000, false);
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    RatioReporter reporter({"QTableView", "QTreeView"});
    benchmark::RunSpecifiedBenchmarks(&reporter);
    reporter.printRatios();
    return 0;
}
