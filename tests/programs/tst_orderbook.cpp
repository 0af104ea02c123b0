// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

// An order book: orders are placed, cancelled and moved anywhere, and their prices change all
// the time. One window shows it as it is, another one sorted; the user arranges the columns.

#include "sidebyside.h"

#include <itemdelegate.h>

#include <QAbstractTableModel>
#include <QSortFilterProxyModel>
#include <QTableView>
#include <QTest>

#include <algorithm>
#include <random>

namespace {

//! What happens to the market is made of this.
constexpr quint32 marketSeed = 20240611;

struct Order
{
    int id;
    int price; //!< in hundredths
    int quantity;
    bool isBid;
};

class OrderBook : public QAbstractTableModel
{
public:
    enum Column {
        Id,
        Side,
        Price,
        Quantity,
        Total,
        Trader,
    };

    explicit OrderBook(int count)
    {
        for (int i = 0; i < count; ++i)
            m_orders.append(newOrder());
    }

    int rowCount(const QModelIndex &parent = {}) const override
    {
        return parent.isValid() ? 0 : int(m_orders.size());
    }
    int columnCount(const QModelIndex & /*parent*/ = {}) const override { return 6; }

    QVariant headerData(int section, Qt::Orientation orientation, int role) const override
    {
        static const QStringList names {"Id", "Side", "Price", "Quantity", "Total", "Trader"};
        return orientation == Qt::Horizontal && role == Qt::DisplayRole ? names.value(section)
                                                                        : QVariant();
    }

    QVariant data(const QModelIndex &index, int role) const override
    {
        const Order &order = m_orders.at(index.row());
        if (role == Qt::ForegroundRole && index.column() == Side)
            return QColor(order.isBid ? Qt::darkGreen : Qt::darkRed);
        if (role == Qt::TextAlignmentRole && index.column() >= Price && index.column() <= Total)
            return int(Qt::AlignRight | Qt::AlignVCenter);
        if (role != Qt::DisplayRole)
            return {};
        switch (index.column()) {
        case Id:
            return order.id;
        case Side:
            return order.isBid ? QStringLiteral("bid") : QStringLiteral("ask");
        case Price:
            return order.price / 100.0;
        case Quantity:
            return order.quantity;
        case Total:
            return order.price * order.quantity / 100;
        default:
            return QStringLiteral("T%1").arg(order.id % 37);
        }
    }

    void place(int row, int count)
    {
        beginInsertRows({}, row, row + count - 1);
        for (int i = 0; i < count; ++i)
            m_orders.insert(row, newOrder());
        endInsertRows();
    }
    void cancel(int row, int count)
    {
        beginRemoveRows({}, row, row + count - 1);
        m_orders.remove(row, count);
        endRemoveRows();
    }
    //! Puts \a count orders before the one in \a to.
    void move(int row, int count, int to)
    {
        beginMoveRows({}, row, row + count - 1, {}, to);
        const auto begin = m_orders.begin();
        if (to > row)
            std::rotate(begin + row, begin + row + count, begin + to);
        else
            std::rotate(begin + to, begin + row, begin + row + count);
        endMoveRows();
    }
    void setPrice(int row, int price)
    {
        m_orders[row].price = price;
        emit dataChanged(index(row, Price), index(row, Total));
    }
    //! Prices of \a count orders anywhere change.
    void tick(int count)
    {
        for (int i = 0; i < count; ++i) {
            const int row = int(m_random() % quint32(m_orders.size()));
            setPrice(row, m_orders.at(row).price + int(m_random() % 41) - 20);
        }
    }
    //! Everything that happens in a busy second.
    void trade(int count)
    {
        for (int i = 0; i < count; ++i) {
            const int rows = int(m_orders.size());
            const int row = int(m_random() % quint32(rows - 8));
            const int few = 1 + int(m_random() % 4);
            switch (m_random() % 4) {
            case 0:
                place(row, few);
                break;
            case 1:
                cancel(row, few);
                break;
            case 2:
                move(row, few, row > rows / 2 ? row / 2 : row + few + 2);
                break;
            default:
                tick(few);
            }
        }
    }

private:
    Order newOrder()
    {
        return {++m_lastId, 10000 + int(m_random() % 2000), 1 + int(m_random() % 500),
                m_random() % 2 == 0};
    }

    std::mt19937 m_random {marketSeed};
    int m_lastId = 0;
    QList<Order> m_orders;
};

//! The program: our view and Qt's. Each sorts a proxy of its own, if there are any.
struct Program
{
    Program(bool isSorted, const QList<Difference> &expected)
        : window(new ProgramView, new QTableView, expected)
    {
        auto *table = static_cast<QTableView *>(&window.peer());
        table->verticalHeader()->setMinimumSectionSize(1);
        table->verticalHeader()->setDefaultSectionSize(rowHeight);
        table->verticalHeader()->hide();
        ours.setRowHeight(rowHeight);
        ours.setStandardKeys(true);
        ours.setFollowsCurrentRow(false);
        ours.setSelectsVisualRanges(true);
        for (QAbstractItemView *view : {static_cast<QAbstractItemView *>(&ours), &peer}) {
            view->setModel(isSorted ? proxyFor(view) : &book);
            view->setItemDelegate(new Vantix::ItemDelegate(view));
            view->setSelectionBehavior(QAbstractItemView::SelectRows);
            view->setSelectionMode(QAbstractItemView::ExtendedSelection);
        }
        if (isSorted) {
            ours.setSortingEnabled(true);
            table->setSortingEnabled(true);
        }
    }

    QAbstractItemModel *proxyFor(QObject *view)
    {
        auto *proxy = new QSortFilterProxyModel(view);
        proxy->setSourceModel(&book);
        return proxy;
    }

    static constexpr int rowHeight = 18;

    OrderBook book {2000};
    SideBySide window;
    ProgramView &ours = window.ours();
    QAbstractItemView &peer = window.peer();
};

const QList<Difference> tradingDifferences {
    {"orders above", "first", "801 800", Why::sameRows},
    {"orders above", "last", "815 807", Why::sameRows},
    {"cancelled above", "first", "792 800", Why::sameRows},
    {"cancelled above", "last", "806 807", Why::sameRows},
    {"moved from above to below", "first", "787 800", Why::sameRows},
    {"moved from above to below", "last", "801 807", Why::sameRows},
    {"moved from below to above", "first", "792 800", Why::sameRows},
    {"moved from below to above", "last", "806 807", Why::sameRows},
    {"an order at the end", "first", "1968 1987", Why::atEnd},
    {"an order at the end", "last", "1982 2033", Why::atEnd},
};

const QList<Difference> sortingDifferences {
    {"cancelled", "first", "1713 1754", Why::sameRows},
    {"cancelled", "last", "1727 1768", Why::sameRows},
};

void addModes()
{
    QTest::addColumn<bool>("isBuffered");
    QTest::addColumn<Qt::LayoutDirection>("direction");
    QTest::newRow("plain") << false << Qt::LeftToRight;
    QTest::newRow("buffered") << true << Qt::LeftToRight;
    QTest::newRow("right to left") << false << Qt::RightToLeft;
    QTest::newRow("right to left, buffered") << true << Qt::RightToLeft;
}

void setMode(Program &program)
{
    QFETCH(bool, isBuffered);
    QFETCH(Qt::LayoutDirection, direction);
    program.ours.setPaintBufferEnabled(isBuffered);
    program.window.setLayoutDirection(direction);
}

} // namespace

class TestOrderBook : public QObject
{
    Q_OBJECT

public:
    static void initMain() { qputenv("QT_SCALE_FACTOR", "1"); }

private Q_SLOTS:
    void initTestCase() { qInfo("seed %u", marketSeed); }
    void trades_data() { addModes(); }
    void trades();
    void sorts_data() { addModes(); }
    void sorts();
    void arrangesColumns_data() { addModes(); }
    void arrangesColumns();
};

//! Rows come, go and move above, in and below what is seen.
void TestOrderBook::trades()
{
    Program program(false, tradingDifferences);
    setMode(program);
    SideBySide &window = program.window;
    OrderBook &book = program.book;
    window.showWith(15, 7);

    window.both("slider", dragSlider(0.4));
    const int top = program.ours.rowAt(0);
    window.both("click", clickCell(5, 2));
    window.both("extend", clickCell(8, 2, Qt::ShiftModifier));
    window.once("orders in sight", [&] { book.place(top + 7, 2); });
    window.once("orders below", [&] { book.place(top + 400, 20); });
    window.once("prices in sight", [&] { book.setPrice(top + 6, 12345); });
    window.once("all prices", [&] { book.tick(500); });
    window.once("an order above the current one", [&] { book.place(top + 3, 1); });
    window.once("cancelled in sight", [&] { book.cancel(top + 1, 2); });
    window.once("cancelled below", [&] { book.cancel(top + 100, 30); });
    window.once("moved down in sight", [&] { book.move(top + 2, 3, top + 10); });
    window.once("moved up in sight", [&] { book.move(top + 9, 2, top + 1); });
    window.once("moved out of sight, below", [&] { book.move(top + 11, 2, top + 300); });
    window.once("moved into sight from below", [&] { book.move(top + 200, 4, top + 6); });
    window.once("moved below", [&] { book.move(top + 200, 10, top + 500); });
    window.both("down", pressKey(Qt::Key_Down, Qt::NoModifier, 3));
    window.once("orders above", [&] { book.place(10, 6); });
    window.once("cancelled above", [&] { book.cancel(20, 9); });
    window.once("moved above", [&] { book.move(20, 9, 3); });
    window.once("moved from above to below", [&] { book.move(20, 5, top + 900); });
    window.once("moved from below to above", [&] { book.move(top + 900, 5, 20); });
    window.once("the current one is cancelled",
                [&] { book.cancel(program.ours.currentIndex().row(), 1); });
    window.once("current and selected are cancelled",
                [&] { book.cancel(program.ours.currentIndex().row() - 3, 8); });
    window.both("home", pressKey(Qt::Key_Home, Qt::ControlModifier));
    window.once("orders at the top", [&] { book.place(0, 3); });
    window.both("end", pressKey(Qt::Key_End, Qt::ControlModifier));
    window.once("an order at the end", [&] { book.place(book.rowCount(), 1); });
    window.both("middle", dragSlider(0.5));
    window.both("click in the middle", clickCell(7, 1));
    window.ignorePlaces();
    for (int i = 0; i < 30; ++i)
        window.once(QStringLiteral("trade %1").arg(i), [&] { book.trade(8); });
    QCOMPARE(window.problems(), QStringList());
}

//! The same sorted by a column, which prices change.
void TestOrderBook::sorts()
{
    Program program(true, sortingDifferences);
    setMode(program);
    SideBySide &window = program.window;
    OrderBook &book = program.book;
    window.showWith(15, 7);

    window.both("by price", clickHeader(OrderBook::Price));
    window.both("click", clickCell(5, 2));
    window.once("prices change", [&] { book.tick(50); });
    window.both("by price, descending", clickHeader(OrderBook::Price));
    window.once("prices change again", [&] { book.tick(50); });
    window.both("page down", pressKey(Qt::Key_PageDown, Qt::NoModifier, 2));
    window.both("by quantity", clickHeader(OrderBook::Quantity));
    window.both("key", pressKey(Qt::Key_Down));
    window.both("extend", pressKey(Qt::Key_Down, Qt::ShiftModifier, 3));
    window.both("by id", clickHeader(OrderBook::Id));
    window.once("cancelled", [&] { book.cancel(800, 40); });
    window.once("placed", [&] { book.place(800, 40); });
    window.once("moved", [&] { book.move(10, 40, 600); });
    window.both("programmatically", [](QAbstractItemView &view) {
        view.model()->sort(OrderBook::Trader, Qt::DescendingOrder);
    });
    window.both("sort no more", [](QAbstractItemView &view) {
        if (auto *ours = qobject_cast<QTableFastView *>(&view))
            ours->setSortingEnabled(false);
        else
            qobject_cast<QTableView *>(&view)->setSortingEnabled(false);
    });
    window.both("click a header in vain", clickHeader(OrderBook::Side));
    window.ignorePlaces();
    for (int i = 0; i < 20; ++i)
        window.once(QStringLiteral("trade %1").arg(i), [&] { book.trade(8); });
    QCOMPARE(window.problems(), QStringList());
}

//! What users do to headers, while prices change.
void TestOrderBook::arrangesColumns()
{
    Program program(false, {});
    setMode(program);
    SideBySide &window = program.window;
    OrderBook &book = program.book;
    window.showWith(15, 7);

    const auto inHeader = [](const std::function<void(QHeaderView &)> &act) {
        return [act](QAbstractItemView &view) { act(*columnsOf(view)); };
    };
    window.both("click", clickCell(4, 1));
    window.both("move a column", dragColumn(OrderBook::Id, OrderBook::Price));
    window.both("move it back", dragColumn(OrderBook::Id, OrderBook::Side));
    window.both("move another", dragColumn(OrderBook::Price, OrderBook::Id));
    QCOMPARE(program.ours.header()->visualIndex(OrderBook::Price), 0);
    window.both("right", pressKey(Qt::Key_Right, Qt::NoModifier, 2));
    window.both("widen", dragColumnEdge(OrderBook::Side, 37));
    window.both("narrow", dragColumnEdge(OrderBook::Id, -41));
    window.once("prices change", [&] { book.tick(200); });
    window.both("scroll sideways", turnWheel(3, true));
    window.both("end", pressKey(Qt::Key_End));
    window.both("hide", inHeader([](QHeaderView &header) { header.hideSection(1); }));
    window.both("home", pressKey(Qt::Key_Home));
    window.both("right over the hidden one", pressKey(Qt::Key_Right));
    window.both("tab", pressKey(Qt::Key_Tab, Qt::NoModifier, 7));
    window.both("cells", [](QAbstractItemView &view) {
        view.setSelectionBehavior(QAbstractItemView::SelectItems);
    });
    window.both("select cells", pressKey(Qt::Key_Right, Qt::ShiftModifier, 2));
    window.both("more cells", pressKey(Qt::Key_Down, Qt::ShiftModifier, 2));
    window.both("drag over cells", dragOver(2, 6, OrderBook::Price));
    window.both("show", inHeader([](QHeaderView &header) { header.showSection(1); }));
    window.both("select columns", [](QAbstractItemView &view) {
        view.setSelectionBehavior(QAbstractItemView::SelectColumns);
    });
    window.both("click a column", clickCell(3, 2));
    window.both("rows", [](QAbstractItemView &view) {
        view.setSelectionBehavior(QAbstractItemView::SelectRows);
        view.clearSelection();
    });
    window.both("fit to contents", doubleClickColumnEdge(OrderBook::Side));
    window.both("fit all to contents", inHeader([](QHeaderView &header) {
                    header.resizeSections(QHeaderView::ResizeToContents);
                }));
    window.both("narrow all", inHeader([](QHeaderView &header) {
                    for (int column = 0; column < header.count(); ++column)
                        header.resizeSection(column, 50);
                }));
    window.both("stretch the last",
                inHeader([](QHeaderView &header) { header.setStretchLastSection(true); }));
    window.both("resize beside the stretched", dragColumnEdge(OrderBook::Side, 22));
    window.both("hide the last", inHeader([](QHeaderView &header) {
                    header.hideSection(header.logicalIndex(header.count() - 1));
                }));
    window.both("stretch all", inHeader([](QHeaderView &header) {
                    header.setSectionResizeMode(QHeaderView::Stretch);
                }));
    window.both("wider window",
                [](QAbstractItemView &view) { view.setFixedWidth(view.width() + 61); });
    window.both("show the last", inHeader([](QHeaderView &header) {
                    header.showSection(header.logicalIndex(header.count() - 1));
                }));
    window.both("interactive", inHeader([](QHeaderView &header) {
                    header.setSectionResizeMode(QHeaderView::Interactive);
                    header.setStretchLastSection(false);
                }));
    QHash<QHeaderView *, QByteArray> states;
    window.both("save",
                inHeader([&](QHeaderView &header) { states.insert(&header, header.saveState()); }));
    window.both("mix up", inHeader([](QHeaderView &header) {
                    header.swapSections(0, 4);
                    header.moveSection(1, 3);
                    header.hideSection(0);
                    header.resizeSection(3, 210);
                }));
    window.both("restore",
                inHeader([&](QHeaderView &header) { header.restoreState(states.value(&header)); }));
    window.both("hide all", inHeader([](QHeaderView &header) {
                    for (int column = 0; column < header.count(); ++column)
                        header.hideSection(column);
                }));
    window.both("show two", inHeader([](QHeaderView &header) {
                    header.showSection(2);
                    header.showSection(4);
                }));
    window.both("click again", clickCell(1, 4));
    window.once("prices change again", [&] { book.tick(200); });
    window.both("turn around", [](QAbstractItemView &view) {
        view.setLayoutDirection(view.isRightToLeft() ? Qt::LeftToRight : Qt::RightToLeft);
    });
    QCOMPARE(window.problems(), QStringList());
}

QTEST_MAIN(TestOrderBook)
#include "tst_orderbook.moc"
