// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

// Models that tell their rows in batches, beside QTableView; and what a current index
// does that an editor is in.

#include "activation.h"

#include <itemdelegate.h>
#include <qtablefastview.h>

#include <QHeaderView>
#include <QLineEdit>
#include <QPaintEvent>
#include <QScrollBar>
#include <QStandardItemModel>
#include <QTableView>
#include <QTest>

#include <functional>
#include <memory>
#include <utility>

namespace {

//! What fetchMore() does.
enum class Fetch {
    Batch,
    Nothing,
    Everything,
    Above,
    Twice,
    Reset,
    EventLoop,
};

//! Rows of one column; has \a all, and tells some.
class BatchModel : public QAbstractTableModel
{
public:
    BatchModel(int told, int all, int batch, Fetch how = Fetch::Batch)
        : m_told(told)
        , m_all(all)
        , m_batch(batch)
        , m_how(how)
    {
    }

    int rowCount(const QModelIndex &parent = {}) const override
    {
        return parent.isValid() ? 0 : m_told;
    }
    int columnCount(const QModelIndex & /*parent*/) const override { return 2; }
    QVariant data(const QModelIndex &index, int role) const override
    {
        return role == Qt::DisplayRole ? QVariant(index.row()) : QVariant();
    }
    bool canFetchMore(const QModelIndex &parent) const override
    {
        return !parent.isValid() && m_told < m_all;
    }
    void fetchMore(const QModelIndex & /*parent*/) override
    {
        ++fetches;
        deepest = std::max(deepest, ++m_depth);
        // What runs away fails, and does not hang.
        if (fetches < 2000)
            fetch();
        --m_depth;
    }

    void remove(int row, int count)
    {
        beginRemoveRows({}, row, row + count - 1);
        m_told -= count;
        m_all -= count;
        endRemoveRows();
    }
    //! Begins anew with \a told rows.
    void restart(int told)
    {
        beginResetModel();
        m_told = told;
        endResetModel();
    }
    void insert(int row, int count)
    {
        if (count < 1)
            return;
        beginInsertRows({}, row, row + count - 1);
        m_told += count;
        endInsertRows();
    }
    //! A row that is new, not only told.
    void append()
    {
        ++m_all;
        insert(m_told, 1);
    }

    int fetches = 0;
    int deepest = 0; //!< calls of fetchMore() inside each other

private:
    void fetch()
    {
        const int count = std::min(m_batch, m_all - m_told);
        switch (m_how) {
        case Fetch::Nothing:
            break;
        case Fetch::Everything:
            insert(m_told, m_all - m_told);
            break;
        case Fetch::Above:
            insert(0, count);
            break;
        case Fetch::Twice:
            insert(m_told, count / 2);
            insert(m_told, count - count / 2);
            break;
        case Fetch::Reset:
            beginResetModel();
            m_told += count;
            endResetModel();
            break;
        case Fetch::EventLoop:
            insert(m_told, count);
            QCoreApplication::processEvents();
            break;
        case Fetch::Batch:
            insert(m_told, count);
            break;
        }
    }

    int m_told;
    int m_all;
    int m_batch;
    Fetch m_how;
    int m_depth = 0;
};

using Step = void (*)(QAbstractItemView &, BatchModel &);

void show(QAbstractItemView & /*view*/, BatchModel & /*model*/)
{
}
void scrollToBottom(QAbstractItemView &view, BatchModel & /*model*/)
{
    view.scrollToBottom();
}
void scrollTwice(QAbstractItemView &view, BatchModel & /*model*/)
{
    view.scrollToBottom();
    QCoreApplication::processEvents();
    view.scrollToBottom();
}
void lastIsCurrent(QAbstractItemView &view, BatchModel &model)
{
    view.setCurrentIndex(model.index(model.rowCount() - 1, 0));
}
void endKey(QAbstractItemView &view, BatchModel &model)
{
    view.setCurrentIndex(model.index(0, 0));
    QTest::keyClick(&view, Qt::Key_End, Qt::ControlModifier);
}
void pages(QAbstractItemView &view, BatchModel &model)
{
    view.setCurrentIndex(model.index(0, 0));
    for (int i = 0; i < 5; ++i)
        QTest::keyClick(&view, Qt::Key_PageDown);
}
void wait()
{
    for (int i = 0; i < 20; ++i)
        QCoreApplication::processEvents();
}

void startWithFew(QAbstractItemView & /*view*/, BatchModel &model)
{
    model.restart(2);
}
//! The bar is at the end of the rows that are told after the reset.
void startSeenToEnd(QAbstractItemView &view, BatchModel &model)
{
    // Between the tops: rectangles of QTableView leave the grid out.
    const int height =
        view.visualRect(model.index(1, 0)).top() - view.visualRect(model.index(0, 0)).top();
    const int seen = view.viewport()->height() / height;
    view.verticalScrollBar()->setValue(100);
    wait();
    model.restart(100 + seen);
}
//! The bar is far behind the end of the rows that are told after the reset.
void startFromAfar(QAbstractItemView &view, BatchModel &model)
{
    model.insert(0, 1000);
    view.verticalScrollBar()->setValue(900);
    wait();
    model.restart(200);
}
void removeNearlyAll(QAbstractItemView & /*view*/, BatchModel &model)
{
    model.remove(1, model.rowCount() - 2);
}
void removeAll(QAbstractItemView & /*view*/, BatchModel &model)
{
    model.remove(0, model.rowCount());
}

//! Both views show as many whole rows.
template<typename View> void showLikeOthers(View &view, BatchModel &model)
{
    view.setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    view.setVerticalScrollMode(QAbstractItemView::ScrollPerItem);
    view.setSelectionBehavior(QAbstractItemView::SelectRows);
    view.setFocusPolicy(Qt::NoFocus); // a view that gets the focus makes its first cell current
    view.setModel(&model);
    view.resize(300, 300);
    view.show();
    QCoreApplication::processEvents();
}

//! A view with the keyboard that shows 30 rows of 2 columns.
struct Table
{
    Table()
    {
        view->setModel(model.get());
        view->resize(300, 300);
        view->show();
        activate(view.get());
    }

    const std::unique_ptr<QStandardItemModel> model {new QStandardItemModel(30, 2)};
    const std::unique_ptr<QTableFastView> view {new QTableFastView};
};

} // namespace

class TestViewFetch : public QObject
{
    Q_OBJECT

private slots:
    void fetchesAsTableViewsDo_data();
    void fetchesAsTableViewsDo();
    void isNeverRecursive_data();
    void isNeverRecursive();
    void showsTheSameRowsAfterAFetch();
    void fetchedRowsAreNotFollowed();
    void newRowsAreFollowedWhileMoreCanBeFetched();
    void fillsTheViewByBatches();
    void fillsTheViewToItsLastPixel();
    void hiddenViewFetchesAsRowsCome();
    void currentIndexThatIsSetWhileFetching_data();
    void currentIndexThatIsSetWhileFetching();
    void currentCellIsPaintedWhileFetching();
    void fetchesAsLongAsThereIsMore_data();
    void fetchesAsLongAsThereIsMore();
    void editorKeepsTheCurrentIndex_data();
    void editorKeepsTheCurrentIndex();
    void focusedIndexWidgetKeepsTheCurrentIndex();
    void anotherCurrentIndexEndsTheWait();
    void nothingMovesByItself_data();
    void nothingMovesByItself();
    void endStaysWithoutFollowing();
};

void TestViewFetch::fetchesAsTableViewsDo_data()
{
    QTest::addColumn<int>("told");
    QTest::addColumn<Step>("step");
    QTest::addRow("20 rows, shown") << 20 << Step(show);
    QTest::addRow("20 rows, to the bottom") << 20 << Step(scrollToBottom);
    QTest::addRow("20 rows, the last is current") << 20 << Step(lastIsCurrent);
    QTest::addRow("255 rows, to the bottom") << 255 << Step(scrollToBottom);
    QTest::addRow("255 rows, to the bottom twice") << 255 << Step(scrollTwice);
    QTest::addRow("255 rows, the last is current") << 255 << Step(lastIsCurrent);
    QTest::addRow("255 rows, Ctrl+End") << 255 << Step(endKey);
    QTest::addRow("30 rows, pages") << 30 << Step(pages);
    QTest::addRow("20 rows, a reset to 2") << 20 << Step(startWithFew);
    QTest::addRow("255 rows, a reset that ends in sight") << 255 << Step(startSeenToEnd);
    QTest::addRow("255 rows, a reset that ends far above") << 255 << Step(startFromAfar);
    QTest::addRow("255 rows, nearly all removed") << 255 << Step(removeNearlyAll);
    QTest::addRow("255 rows, all removed") << 255 << Step(removeAll);
    QTest::addRow("no rows, shown") << 0 << Step(show);
    QTest::addRow("no rows, to the bottom") << 0 << Step(scrollToBottom);
}

void TestViewFetch::fetchesAsTableViewsDo()
{
    QFETCH(int, told);
    QFETCH(Step, step);
    BatchModel theirs(told, 1'000'000, 256);
    BatchModel ours(told, 1'000'000, 256);
    QTableView table;
    QTableFastView view;
    showLikeOthers(view, ours);
    table.verticalHeader()->setMinimumSectionSize(1); // also where the font is small
    table.verticalHeader()->setDefaultSectionSize(view.rowHeight());
    showLikeOthers(table, theirs);
    step(table, theirs);
    wait();
    step(view, ours);
    wait();
    if (step == startSeenToEnd) // with as many rows as are seen
        QCOMPARE(ours.fetches, theirs.fetches);
    else
        QCOMPARE(ours.rowCount(), theirs.rowCount());
    QCOMPARE(ours.deepest, std::min(theirs.deepest, 1));
    const auto rest = [](const QAbstractItemView &any) {
        return any.verticalScrollBar()->maximum() - any.verticalScrollBar()->value();
    };
    if (step == startFromAfar)
        QCOMPARE(rest(view), rest(table));
    if (step != pages) // of how many rows is another matter
        QCOMPARE(view.currentIndex().row(), table.currentIndex().row());
}

void TestViewFetch::isNeverRecursive_data()
{
    QTest::addColumn<Fetch>("how");
    QTest::addColumn<int>("told");
    QTest::addColumn<Step>("step");
    const std::pair<const char *, Fetch> ways[] = {
        {"a batch", Fetch::Batch},
        {"nothing", Fetch::Nothing},
        {"everything", Fetch::Everything},
        {"above", Fetch::Above},
        {"in two parts", Fetch::Twice},
        {"a reset", Fetch::Reset},
        {"with an event loop", Fetch::EventLoop},
    };
    const std::pair<const char *, Step> steps[] = {{"to the bottom", scrollToBottom},
                                                   {"the last is current", lastIsCurrent}};
    for (const auto &[wayName, way] : ways) {
        for (const int told : {0, 5, 200}) {
            for (const auto &[stepName, step] : steps)
                QTest::addRow("%s, %d rows, %s", wayName, told, stepName) << way << told << step;
        }
    }
}

void TestViewFetch::isNeverRecursive()
{
    QFETCH(Fetch, how);
    QFETCH(int, told);
    QFETCH(Step, step);
    BatchModel model(told, 100'000, 64, how);
    QTableFastView view;
    showLikeOthers(view, model);
    step(view, model);
    wait();
    step(view, model);
    wait();
    QCOMPARE(model.deepest, 1);
    QVERIFY2(model.fetches < 60, qPrintable(QString::number(model.fetches)));
    if (how == Fetch::Everything)
        QCOMPARE(model.rowCount(), 100'000);
}

void TestViewFetch::showsTheSameRowsAfterAFetch()
{
    BatchModel model(200, 10'000, 64);
    QTableFastView view;
    showLikeOthers(view, model);
    view.scrollToBottom();
    const QModelIndex top = view.indexAt(QPoint(1, 1));
    QVERIFY(top.row() > 100);
    wait();
    QCOMPARE(model.rowCount(), 264);
    QCOMPARE(view.indexAt(QPoint(1, 1)), top);

    BatchModel above(200, 10'000, 64, Fetch::Above);
    QTableFastView other;
    showLikeOthers(other, above);
    other.scrollToBottom();
    wait();
    const int value = other.verticalScrollBar()->value();
    QCOMPARE(value, other.verticalScrollBar()->maximum());
    QCOMPARE(above.rowCount(), 264);
}

void TestViewFetch::fetchedRowsAreNotFollowed()
{
    BatchModel model(200, 10'000, 64);
    QTableFastView view;
    showLikeOthers(view, model);
    view.setCurrentIndex(model.index(199, 0));
    wait();
    QCOMPARE(model.rowCount(), 264);
    QCOMPARE(view.currentIndex().row(), 199);
    QVERIFY(view.selectionModel()->isSelected(model.index(199, 1)));
}

void TestViewFetch::newRowsAreFollowedWhileMoreCanBeFetched()
{
    BatchModel model(200, 10'000, 64, Fetch::Nothing);
    QTableFastView view;
    showLikeOthers(view, model);
    view.setCurrentIndex(model.index(199, 0));
    wait();
    model.append();
    QCOMPARE(view.currentIndex().row(), 200);
    QCOMPARE(view.verticalScrollBar()->value(), view.verticalScrollBar()->maximum());
}

void TestViewFetch::fillsTheViewByBatches()
{
    BatchModel model(0, 1000, 2);
    QTableFastView view;
    showLikeOthers(view, model);
    QTRY_VERIFY(!view.indexAt(view.viewport()->rect().bottomLeft()).isValid()
                || model.rowCount() > 4);
    // Between the tops: rectangles of QTableView leave the grid out.
    const int height =
        view.visualRect(model.index(1, 0)).top() - view.visualRect(model.index(0, 0)).top();
    const int seen = view.viewport()->height() / height;
    QTRY_VERIFY2(model.rowCount() > seen, qPrintable(QString::number(model.rowCount())));
    wait();
    QVERIFY(model.rowCount() < seen + 6);
    QVERIFY(!view.currentIndex().isValid());
    QCOMPARE(view.verticalScrollBar()->value(), 0);
}

//! Rows that just fill the view leave its end in sight.
void TestViewFetch::fillsTheViewToItsLastPixel()
{
    BatchModel model(0, 1000, 5);
    BatchModel empty(0, 0, 1);
    QTableFastView view;
    showLikeOthers(view, empty);
    view.setRowHeight(20);
    view.resize(view.width(), view.height() - view.viewport()->height() + 10 * 20);
    wait();
    QCOMPARE(view.viewport()->height(), 10 * 20);
    view.setModel(&model);
    QTRY_COMPARE(model.rowCount(), 15);
    wait();
    QCOMPARE(model.rowCount(), 15);
}

void TestViewFetch::hiddenViewFetchesAsRowsCome()
{
    BatchModel model(0, 1000, 5, Fetch::Nothing);
    QTableFastView view;
    view.setModel(&model);
    wait();
    const int before = model.fetches;
    wait();
    QCOMPARE(model.fetches, before);
    model.insert(0, 1);
    wait();
    QCOMPARE(model.fetches, before + 1);
}

void TestViewFetch::currentIndexThatIsSetWhileFetching_data()
{
    QTest::addColumn<bool>("isEditable");
    QTest::newRow("editable") << true;
    QTest::newRow("not editable") << false;
}

//! It is edited as any other, but fetches no more.
void TestViewFetch::currentIndexThatIsSetWhileFetching()
{
    QFETCH(bool, isEditable);
    class EditableModel : public BatchModel
    {
    public:
        using BatchModel::BatchModel;
        Qt::ItemFlags flags(const QModelIndex &index) const override
        {
            const Qt::ItemFlags flags = BatchModel::flags(index);
            return isEditable ? flags | Qt::ItemIsEditable : flags;
        }
        bool isEditable = false;
    };
    EditableModel model(40, 1000, 10);
    model.isEditable = isEditable;
    QTableFastView view;
    view.setEditTriggers(QAbstractItemView::CurrentChanged);
    showLikeOthers(view, model);
    const QModelIndex first = model.index(0, 0);
    view.setCurrentIndex(first);
    QCOMPARE(view.indexWidget(first) != nullptr, isEditable);
    const auto toTheEnd = [&] { view.setCurrentIndex(model.index(model.rowCount() - 1, 1)); };
    connect(&model, &QAbstractItemModel::rowsInserted, &view, toTheEnd);
    view.verticalScrollBar()->setValue(view.verticalScrollBar()->maximum());
    QCOMPARE(model.fetches, 1);
    QCOMPARE(view.currentIndex(), model.index(49, 1));
    QVERIFY(view.viewport()->rect().intersects(view.visualRect(view.currentIndex())));
    QCOMPARE(view.indexWidget(view.currentIndex()) != nullptr, isEditable);
    QCOMPARE(view.testAttribute(Qt::WA_InputMethodEnabled), isEditable);
    QCoreApplication::processEvents();
    QVERIFY(!view.indexWidget(first));
}

//! The last row becomes current in a fetch that brings none.
void TestViewFetch::currentCellIsPaintedWhileFetching()
{
    class FruitlessModel : public BatchModel
    {
    public:
        FruitlessModel()
            : BatchModel(5, 10, 1)
        {
        }
        void fetchMore(const QModelIndex & /*parent*/) override
        {
            if (whenFetched)
                std::exchange(whenFetched, {})();
        }
        std::function<void()> whenFetched;
    };
    class Paints : public QObject
    {
    public:
        QRegion region;
        bool eventFilter(QObject *, QEvent *event) override
        {
            if (event->type() == QEvent::Paint)
                region |= static_cast<QPaintEvent *>(event)->region();
            return false;
        }
    };
    FruitlessModel model;
    QTableFastView view;
    view.setSelectionMode(QAbstractItemView::NoSelection);
    showLikeOthers(view, model);
    view.setCurrentIndex(model.index(0, 0));
    const QModelIndex last = model.index(4, 1);
    model.whenFetched = [&] { view.setCurrentIndex(last); };
    QCoreApplication::processEvents();
    Paints paints;
    view.viewport()->installEventFilter(&paints);
    view.setCurrentIndex(model.index(4, 0)); // fetches
    QVERIFY(!model.whenFetched);
    QCOMPARE(view.currentIndex(), last);
    QCoreApplication::processEvents();
    QVERIFY(paints.region.contains(view.visualRect(last).center()));
}

void TestViewFetch::fetchesAsLongAsThereIsMore_data()
{
    QTest::addColumn<int>("count");
    QTest::newRow("once") << 1;
    QTest::newRow("again") << 2;
}

//! A fetch may scroll to the end, and may show that there is no more.
void TestViewFetch::fetchesAsLongAsThereIsMore()
{
    QFETCH(int, count);
    class EndingModel : public BatchModel
    {
    public:
        EndingModel()
            : BatchModel(100, 200, 1)
        {
        }
        bool canFetchMore(const QModelIndex & /*parent*/) const override { return left > 0; }
        void fetchMore(const QModelIndex & /*parent*/) override
        {
            ++fetches;
            bar->setValue(0);
            bar->setValue(bar->maximum());
            --left;
        }
        QScrollBar *bar = nullptr;
        int left = 0;
    };
    EndingModel model;
    QTableFastView view;
    model.bar = view.verticalScrollBar();
    model.left = count;
    showLikeOthers(view, model);
    QCOMPARE(model.fetches, 0);
    model.bar->setValue(model.bar->maximum());
    QCOMPARE(model.fetches, count);
}

void TestViewFetch::editorKeepsTheCurrentIndex_data()
{
    QTest::addColumn<bool>("isAtTop");
    QTest::newRow("last row") << false;
    QTest::newRow("first row") << true;
}

void TestViewFetch::editorKeepsTheCurrentIndex()
{
    QFETCH(bool, isAtTop);
    const Table table;
    QTableFastView &view = *table.view;
    QStandardItemModel &model = *table.model;
    const QPersistentModelIndex cell = model.index(isAtTop ? 0 : 29, 0);
    view.setCurrentIndex(cell);
    view.edit(cell);
    auto *editor = view.viewport()->findChild<QLineEdit *>();
    QVERIFY(editor);
    QTest::keyClicks(editor, QStringLiteral("half a te"));

    const auto arrive = [&] { model.insertRow(isAtTop ? 0 : model.rowCount()); };
    arrive();
    arrive();
    QCOMPARE(view.currentIndex(), QModelIndex(cell));
    QCOMPARE(editor->text(), QStringLiteral("half a te"));
    QCOMPARE(cell.data().toString(), QString());
    QTest::keyClicks(editor, QStringLiteral("xt"));
    QTest::keyClick(editor, Qt::Key_Return);
    QTRY_COMPARE(cell.data().toString(), QStringLiteral("half a text"));
    QCOMPARE(view.currentIndex(), QModelIndex(cell));

    QTRY_VERIFY(!view.viewport()->findChild<QLineEdit *>());
    arrive();
    QCOMPARE(view.currentIndex().row(), isAtTop ? 0 : model.rowCount() - 1);
}

void TestViewFetch::focusedIndexWidgetKeepsTheCurrentIndex()
{
    const Table table;
    QTableFastView &view = *table.view;
    QStandardItemModel &model = *table.model;
    auto *widget = new QLineEdit;
    view.setIndexWidget(model.index(29, 1), widget);
    view.setCurrentIndex(model.index(29, 1));
    widget->setFocus();
    model.insertRow(30);
    QCOMPARE(view.currentIndex().row(), 29);
    QVERIFY(widget->hasFocus());
    view.setFocus();
    model.insertRow(31);
    QCOMPARE(view.currentIndex().row(), 31);
}

void TestViewFetch::anotherCurrentIndexEndsTheWait()
{
    const Table table;
    QTableFastView &view = *table.view;
    QStandardItemModel &model = *table.model;
    view.setCurrentIndex(model.index(29, 0));
    view.edit(model.index(29, 0));
    model.insertRow(30);
    QCOMPARE(view.currentIndex().row(), 29);
    view.setCurrentIndex(model.index(5, 0));
    model.insertRow(31);
    QCOMPARE(view.currentIndex().row(), 5);
}

void TestViewFetch::nothingMovesByItself_data()
{
    QTest::addColumn<int>("row");
    QTest::newRow("first") << 0;
    QTest::newRow("middle") << 15;
    QTest::newRow("last") << 29;
}

void TestViewFetch::nothingMovesByItself()
{
    QFETCH(int, row);
    QStandardItemModel model(30, 2);
    QTableFastView view;
    QVERIFY(view.followsCurrentRow());
    view.setFollowsCurrentRow(false);
    view.setSelectionMode(QAbstractItemView::ExtendedSelection);
    view.setModel(&model);
    view.resize(300, 300);
    view.show();
    view.setCurrentIndex(model.index(row, 0));
    view.selectionModel()->select(QItemSelection(model.index(10, 0), model.index(20, 1)),
                                  QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    const QPersistentModelIndex current = view.currentIndex();
    model.insertRow(0);
    model.insertRow(model.rowCount());
    QCOMPARE(view.currentIndex(), QModelIndex(current));
    QCOMPARE(view.selectionModel()->selectedRows().size(), 11);
    model.removeRow(25);
    QCOMPARE(view.selectionModel()->selectedRows().size(), 11);
    QCOMPARE(view.currentIndex(), QModelIndex(current));
    view.setCurrentIndex(model.index(0, 0));
    model.setRowCount(0);
    model.setRowCount(40);
    wait();
    QVERIFY(!view.currentIndex().isValid());
}

void TestViewFetch::endStaysWithoutFollowing()
{
    QStandardItemModel model(100, 2);
    QTableFastView view;
    view.setFollowsCurrentRow(false);
    view.setModel(&model);
    view.resize(300, 300);
    view.show();
    view.scrollToBottom();
    model.insertRows(100, 7);
    QCOMPARE(view.verticalScrollBar()->value(), view.verticalScrollBar()->maximum());
}

QTEST_MAIN(TestViewFetch)

#include "tst_viewfetch.moc"
