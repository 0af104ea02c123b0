// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

// A list of captured packets: five million rows, none of which is stored; new ones arrive at
// the end in batches, and the oldest are dropped.

#include "sidebyside.h"

#include <itemdelegate.h>

#include <QAbstractTableModel>
#include <QScrollBar>
#include <QTableView>
#include <QTest>

namespace {

//! The packets from one serial number on. What they hold is computed from it.
class PacketModel : public QAbstractTableModel
{
public:
    static constexpr int capacity = 5'000'000;

    int rowCount(const QModelIndex &parent = {}) const override
    {
        return parent.isValid() ? 0 : m_count;
    }
    int columnCount(const QModelIndex & /*parent*/ = {}) const override { return 7; }

    QVariant headerData(int section, Qt::Orientation orientation, int role) const override
    {
        static const QStringList names {"No.",      "Time",   "Source", "Destination",
                                        "Protocol", "Length", "Info"};
        return orientation == Qt::Horizontal && role == Qt::DisplayRole ? names.value(section)
                                                                        : QVariant();
    }

    QVariant data(const QModelIndex &index, int role) const override
    {
        const quint32 serial = quint32(m_oldest + index.row());
        const quint32 mixed = serial * 2654435761U;
        if (role == Qt::BackgroundRole && mixed % 97 == 0)
            return QColor(Qt::darkCyan);
        if (role != Qt::DisplayRole)
            return {};
        static const QStringList protocols {"TCP", "UDP", "DNS", "TLS", "ICMP"};
        switch (index.column()) {
        case 0:
            return serial;
        case 1:
            return QStringLiteral("%1.%2").arg(serial / 1000).arg(serial % 1000, 3, 10, QChar('0'));
        case 2:
            return address(mixed);
        case 3:
            return address(mixed >> 7);
        case 4:
            return protocols.at(mixed / 11 % 5);
        case 5:
            return 60 + mixed % 1440;
        default:
            return QStringLiteral("Seq=%1 Win=%2").arg(mixed % 100000).arg(mixed >> 16);
        }
    }

    //! \a count packets arrive.
    void capture(int count)
    {
        beginInsertRows({}, m_count, m_count + count - 1);
        m_count += count;
        endInsertRows();
    }
    //! The \a count oldest ones are dropped.
    void drop(int count)
    {
        beginRemoveRows({}, 0, count - 1);
        m_count -= count;
        m_oldest += count;
        endRemoveRows();
    }
    //! Another capture begins.
    void restart(int count)
    {
        beginResetModel();
        m_oldest = 0;
        m_count = count;
        endResetModel();
    }

private:
    static QString address(quint32 bits)
    {
        return QStringLiteral("10.0.%1.%2").arg(bits >> 8 & 3).arg(bits & 255);
    }

    int m_oldest = 0;
    int m_count = capacity;
};

//! The program: a model, our view and Qt's.
struct Program
{
    explicit Program(const QList<Difference> &expected = {})
        : window(new ProgramView, new QTableView, expected)
    {
        auto *table = static_cast<QTableView *>(&window.peer());
        table->setShowGrid(false);
        table->verticalHeader()->setMinimumSectionSize(1);
        table->verticalHeader()->setDefaultSectionSize(rowHeight);
        table->verticalHeader()->hide();
        window.ours().setRowHeight(rowHeight);
        for (QAbstractItemView *view : {static_cast<QAbstractItemView *>(&ours), &peer}) {
            view->setModel(&model);
            view->setItemDelegate(new Vantix::ItemDelegate(view));
            view->setSelectionBehavior(QAbstractItemView::SelectRows);
            view->setSelectionMode(QAbstractItemView::ExtendedSelection);
            view->setAlternatingRowColors(true);
        }
        ours.setPaintBufferEnabled(true);
    }

    static constexpr int rowHeight = 20;

    PacketModel model;
    SideBySide window;
    ProgramView &ours = window.ours();
    QAbstractItemView &peer = window.peer();
};

void addModes()
{
    QTest::addColumn<bool>("isPerPixel");
    QTest::addColumn<bool>("isBuffered");
    QTest::newRow("rows") << false << false;
    QTest::newRow("rows, buffered") << false << true;
    QTest::newRow("pixels") << true << false;
    QTest::newRow("pixels, buffered") << true << true;
}

void setMode(Program &program, bool isPerPixel, bool isBuffered)
{
    const auto mode =
        isPerPixel ? QAbstractItemView::ScrollPerPixel : QAbstractItemView::ScrollPerItem;
    program.ours.setVerticalScrollMode(mode);
    program.peer.setVerticalScrollMode(mode);
    program.ours.setPaintBufferEnabled(isBuffered);
}

const QString centre = QStringLiteral("PositionAtCenter takes the upper one of two middle rows");
const QString currentAtEnd = QStringLiteral("a current last row follows new rows");
const QString reapplied = QStringLiteral("the new current row is selected, too");
const QString resized = QStringLiteral("a current last row stays in sight");

QList<Difference> readingDifferences(bool isPerPixel)
{
    if (!isPerPixel) {
        return {{"scroll to, 3", "first", "1234680 1234680", centre},
                {"scroll to, 3", "last", "1234693 1234693", centre}};
    }
    return {{"page down", "last", "21 21", Why::cut},
            {"page down again", "last", "49 49", Why::cut},
            {"last cell", "last", "4999998 4999998", Why::cut},
            {"shift page down", "last", "4999980 4999980", Why::cut},
            {"to the end, extending", "last", "4999998 4999998", Why::cut},
            {"key brings current back", "last", "5000999 5000999", Why::cut},
            {"scroll to, 2", "last", "1234646 1234646", Why::cut},
            {"make current far away", "last", "4320999 4320999", Why::cut},
            {"extend cells down", "last", "4321010 4321010", Why::cut},
            {"extend to the end of the row", "last", "4321010 4321010", Why::cut}};
}

QList<Difference> followingDifferences(bool isPerPixel)
{
    const auto last = [=](int row, int serial) {
        const int hidden = isPerPixel ? 1 : 0; // see Why::cut
        return QStringLiteral("%1 %2").arg(row - hidden).arg(serial - hidden);
    };
    return {{"a batch arrives", "first", "5000242 5000242", Why::atEnd},
            {"a batch arrives", "last", "5000255 5000255", Why::atEnd},
            {"a batch arrives", "current", "5000255 5000255, column 1", currentAtEnd},
            {"a batch arrives", "selected", "5000255", currentAtEnd},
            {"another batch arrives", "first", "5002991 5003247", Why::atEnd},
            {"another batch arrives", "last", "5003004 5003260", Why::atEnd},
            {"another batch arrives", "current", "5003004 5003260, column 1", currentAtEnd},
            {"another batch arrives", "selected", "5003004", currentAtEnd},
            {"a batch arrives below", "current", "5000099 5003360, column 1", currentAtEnd},
            {"a batch arrives below", "selected", "5000099", currentAtEnd},
            {"the oldest go above", "first", "4999872 5003233", Why::sameRows},
            {"the oldest go above", "last", last(4999885, 5003246), Why::sameRows},
            {"a batch arrives at the end", "first", "5000043 5003404", Why::atEnd},
            {"a batch arrives at the end", "last", "5000056 5003417", Why::atEnd},
            {"the current row goes", "selected", "0", reapplied},
            {"the first ones arrive", "current", "4 5003422, column 3", currentAtEnd},
            {"the first ones arrive", "selected", "4", currentAtEnd},
            {"the view fills", "first", "2 5003420", Why::atEnd},
            {"the view fills", "last", "15 5003433", Why::atEnd},
            {"the view fills", "current", "15 5003433, column 3", currentAtEnd},
            {"the view fills", "selected", "15", currentAtEnd},
            {"more than fit", "first", "402 5003820", Why::atEnd},
            {"more than fit", "last", "415 5003833", Why::atEnd},
            {"more than fit", "current", "415 5003833, column 3", currentAtEnd},
            {"more than fit", "selected", "415", currentAtEnd},
            {"another capture", "first", "986 986", currentAtEnd},
            {"another capture", "last", last(999, 999), currentAtEnd},
            {"another capture", "current", "999 999, column 3", currentAtEnd},
            {"another capture", "selected", "999", currentAtEnd},
            {"yet another capture", "first", "1986 1986", currentAtEnd},
            {"yet another capture", "last", last(1999, 1999), currentAtEnd},
            {"yet another capture", "current", "1999 1999, column 1", currentAtEnd},
            {"yet another capture", "selected", "1999", currentAtEnd},
            {"lower window", "first", "1988 1988", resized},
            {"lower window", "last", "1999 1999", resized}};
}

QList<Difference> placeDifferences(bool isPerPixel)
{
    QList<Difference> differences {{"the oldest go", "first", "2498993 2499993", Why::sameRows},
                                   {"the oldest go", "last", "2499006 2500006", Why::sameRows}};
    if (isPerPixel) {
        differences += {{"all above go", "first", "1 2499993", Why::sameRows},
                        {"all above go", "last", "14 2500006", Why::sameRows},
                        {"last cell", "last", "1250485 5000998", Why::cut},
                        {"down to the new ones", "last", "1250488 5001001", Why::cut}};
    } else {
        differences += {
            {"all above go", "first", "0 2499993", Why::sameRows},
            {"all above go", "last", "13 2500006", Why::sameRows},
            {"packets arrive after the current one", "first", "1250492 5001006", Why::atEnd},
            {"packets arrive after the current one", "last", "1250505 5001019", Why::atEnd},
        };
    }
    return differences;
}

const QString pageUp = QStringLiteral("page up goes a viewport above the top of the row");
const QString arrows = QStringLiteral("arrows select the cell they lead to, and no other");
const QString ends = QStringLiteral("Home and End lead to the first and the last row");
const QString scrolls = QStringLiteral("arrows scroll where there is no other column");
const QString leaves = QStringLiteral("Tab leads to the next widget");

const QList<Difference> ownKeyDifferences {
    {"page up", "first", "33 33", pageUp},
    {"page up", "last", "46 46", pageUp},
    {"page up", "current", "33 33, column 2", pageUp},
    {"page up", "selected", "33", pageUp},
    {"shift down", "selected", "35", arrows},
    {"control down", "selected", "37", arrows},
    {"end", "first", "4999986 4999986", ends},
    {"end", "last", "4999999 4999999", ends},
    {"end", "columns", "0@0+100 1@100+100 2@200+100 3@300+100 4@400+100", ends},
    {"end", "current", "4999999 4999999, column 2", ends},
    {"end", "selected", "4999999", ends},
    {"home", "first", "0 0", ends},
    {"home", "last", "13 13", ends},
    {"home", "current", "0 0, column 2", ends},
    {"home", "selected", "0", ends},
    {"control end", "columns", "0@0+100 1@100+100 2@200+100 3@300+100 4@400+100", ends},
    {"control end", "current", "4999999 4999999, column 2", ends},
    {"control home", "current", "0 0, column 2", ends},
    {"right in the last column", "columns", "2@-40+100 3@60+100 4@160+100 5@260+100 6@360+100",
     scrolls},
    {"left in the first column", "columns", "0@0+100 1@100+100 2@200+100 3@300+100 4@400+100",
     scrolls},
    {"tab", "current", "2 2, column 0", leaves},
};

} // namespace

class TestPackets : public QObject
{
    Q_OBJECT

public:
    static void initMain() { qputenv("QT_SCALE_FACTOR", "1"); }

private Q_SLOTS:
    void reads_data() { addModes(); }
    void reads();
    void hasKeysOfItsOwn();
    void follows_data() { addModes(); }
    void follows();
    void keepsPlace_data() { addModes(); }
    void keepsPlace();
};

//! Everything that a reader does with keys and mouse while nothing arrives, or at the end.
void TestPackets::reads()
{
    QFETCH(bool, isPerPixel);
    QFETCH(bool, isBuffered);
    Program program(readingDifferences(isPerPixel));
    setMode(program, isPerPixel, isBuffered);
    program.ours.setStandardKeys(true);
    program.ours.setFollowsCurrentRow(false);
    SideBySide &window = program.window;
    window.showWith(14, 9);

    window.both("click", clickCell(3, 2));
    window.both("down", pressKey(Qt::Key_Down, Qt::NoModifier, 5));
    window.both("page down", pressKey(Qt::Key_PageDown));
    window.both("page down again", pressKey(Qt::Key_PageDown, Qt::NoModifier, 2));
    window.both("page up", pressKey(Qt::Key_PageUp));
    window.both("up", pressKey(Qt::Key_Up, Qt::NoModifier, 16));
    window.both("right", pressKey(Qt::Key_Right, Qt::NoModifier, 4));
    window.both("home", pressKey(Qt::Key_Home));
    window.both("end", pressKey(Qt::Key_End));
    window.both("left", pressKey(Qt::Key_Left, Qt::NoModifier, 5));
    window.both("tab", pressKey(Qt::Key_Tab, Qt::NoModifier, 6));
    window.both("shift tab", pressKey(Qt::Key_Backtab, Qt::ShiftModifier, 2));
    window.both("last cell", pressKey(Qt::Key_End, Qt::ControlModifier));
    window.both("page up from the end", pressKey(Qt::Key_PageUp, Qt::NoModifier, 2));
    window.both("shift down", pressKey(Qt::Key_Down, Qt::ShiftModifier, 3));
    window.both("shift up", pressKey(Qt::Key_Up, Qt::ShiftModifier, 7));
    window.both("shift page down", pressKey(Qt::Key_PageDown, Qt::ShiftModifier));
    window.both("control up", pressKey(Qt::Key_Up, Qt::ControlModifier, 2));
    window.both("first cell", pressKey(Qt::Key_Home, Qt::ControlModifier));
    window.both("second row", pressKey(Qt::Key_Down));
    window.both("to the end, extending",
                pressKey(Qt::Key_End, Qt::ControlModifier | Qt::ShiftModifier));
    window.both("slider to the middle", dragSlider(0.5));
    window.both("click far from current", clickCell(6, 1));
    window.both("click another with control", clickCell(9, 1, Qt::ControlModifier));
    window.both("click selected with control", clickCell(9, 1, Qt::ControlModifier));
    window.both("click with shift", clickCell(12, 2, Qt::ShiftModifier));
    window.both("drag over rows", dragOver(2, 8, 1));
    window.both("drag upwards", dragOver(11, 4, 1));
    window.both("wheel", turnWheel(3));
    window.both("wheel back", turnWheel(-1));
    window.both("wheel sideways", turnWheel(2, true));
    window.both("slider near the end", dragSlider(0.9999));
    window.both("shift click over millions", clickCell(5, 3, Qt::ShiftModifier));
    window.once("packets arrive out of sight", [&] { program.model.capture(1000); });
    window.both("scroll to the bottom", [](QAbstractItemView &view) { view.scrollToBottom(); });
    window.both("current and last", clickCell(13, 2));
    window.both("scroll up", turnWheel(-5));
    window.once("packets arrive further down", [&] { program.model.capture(10); });
    window.both("key brings current back", pressKey(Qt::Key_Down));
    for (const auto hint : {QAbstractItemView::PositionAtTop, QAbstractItemView::PositionAtCenter,
                            QAbstractItemView::PositionAtBottom, QAbstractItemView::EnsureVisible})
        window.both(QStringLiteral("scroll to, %1").arg(int(hint)), [&](QAbstractItemView &view) {
            view.scrollTo(program.model.index(1'234'567 + 40 * int(hint), 6), hint);
        });
    window.both("make current far away", [&](QAbstractItemView &view) {
        view.setCurrentIndex(program.model.index(4'321'000, 4));
    });
    window.both("lower window", [](QAbstractItemView &view) {
        view.setFixedHeight(view.height() - 3 * Program::rowHeight - 4);
    });
    window.both("taller window", [](QAbstractItemView &view) {
        view.setFixedHeight(view.height() + 6 * Program::rowHeight + 2);
    });
    window.both("single selection", [](QAbstractItemView &view) {
        view.setSelectionMode(QAbstractItemView::SingleSelection);
    });
    window.both("click one", clickCell(3, 0));
    window.both("down one", pressKey(Qt::Key_Down, Qt::ShiftModifier));
    window.both("contiguous selection", [](QAbstractItemView &view) {
        view.setSelectionMode(QAbstractItemView::ContiguousSelection);
    });
    window.both("click contiguous", clickCell(3, 0));
    window.both("extend contiguous", clickCell(7, 0, Qt::ShiftModifier));
    window.both("control contiguous", clickCell(10, 0, Qt::ControlModifier));
    window.both("down contiguous", pressKey(Qt::Key_Down, Qt::ShiftModifier, 2));
    window.both("multiple selection", [](QAbstractItemView &view) {
        view.setSelectionMode(QAbstractItemView::MultiSelection);
    });
    window.both("click toggles", clickCell(8, 0));
    window.both("click toggles again", clickCell(8, 0));
    window.both("down toggles nothing", pressKey(Qt::Key_Down, Qt::NoModifier, 2));
    window.both("cells", [](QAbstractItemView &view) {
        view.setSelectionBehavior(QAbstractItemView::SelectItems);
        view.setSelectionMode(QAbstractItemView::ExtendedSelection);
    });
    window.both("click a cell", clickCell(4, 2));
    window.both("extend cells right", pressKey(Qt::Key_Right, Qt::ShiftModifier, 2));
    window.both("extend cells down", pressKey(Qt::Key_Down, Qt::ShiftModifier, 20));
    window.both("extend to the end of the row", pressKey(Qt::Key_End, Qt::ShiftModifier));
    window.once("another capture", [&] { program.model.restart(10); });
    window.both("select all", pressKey(Qt::Key_A, Qt::ControlModifier));
    window.both("click below the rows", clickCell(12, 1));
    window.both("click the second", clickCell(1, 1));
    window.both("control down", pressKey(Qt::Key_Down, Qt::ControlModifier, 2));
    window.both("control space", pressKey(Qt::Key_Space, Qt::ControlModifier));
    window.both("space", pressKey(Qt::Key_Space));
    window.both("type a number", typeText("7"));
    QCOMPARE(window.problems(), QStringList());
}

//! Keys as they are before a program asks for those of QTableView.
void TestPackets::hasKeysOfItsOwn()
{
    Program program(ownKeyDifferences);
    program.ours.setFollowsCurrentRow(false);
    SideBySide &window = program.window;
    window.showWith(14, 9);

    window.both("click", clickCell(3, 1));
    window.both("down", pressKey(Qt::Key_Down, Qt::NoModifier, 20));
    window.both("up", pressKey(Qt::Key_Up, Qt::NoModifier, 3));
    window.both("right", pressKey(Qt::Key_Right, Qt::NoModifier, 2));
    window.both("left", pressKey(Qt::Key_Left));
    window.both("page down", pressKey(Qt::Key_PageDown));
    window.both("shift page down", pressKey(Qt::Key_PageDown, Qt::ShiftModifier));
    window.both("page up", pressKey(Qt::Key_PageUp));
    window.both("shift down", pressKey(Qt::Key_Down, Qt::ShiftModifier, 2));
    window.both("control down", pressKey(Qt::Key_Down, Qt::ControlModifier, 2));
    window.both("end", pressKey(Qt::Key_End));
    window.both("home", pressKey(Qt::Key_Home));
    window.both("control end", pressKey(Qt::Key_End, Qt::ControlModifier));
    window.both("control home", pressKey(Qt::Key_Home, Qt::ControlModifier));
    window.both("right in the last column", [](QAbstractItemView &view) {
        view.setCurrentIndex(view.model()->index(2, 6));
        view.horizontalScrollBar()->setValue(150);
        pressKey(Qt::Key_Right)(view);
    });
    window.both("left in the first column", [](QAbstractItemView &view) {
        view.setCurrentIndex(view.model()->index(2, 0));
        view.horizontalScrollBar()->setValue(50);
        pressKey(Qt::Key_Left)(view);
    });
    window.both("tab", pressKey(Qt::Key_Tab));
    QCOMPARE(window.problems(), QStringList());
}

//! The newest packets stay in sight as long as the reader has not scrolled away from them.
void TestPackets::follows()
{
    QFETCH(bool, isPerPixel);
    QFETCH(bool, isBuffered);
    Program program(followingDifferences(isPerPixel));
    setMode(program, isPerPixel, isBuffered);
    SideBySide &window = program.window;
    PacketModel &model = program.model;
    window.showWith(14, 9);

    const auto toLastRow = [&](QAbstractItemView &view) {
        view.scrollToBottom();
        view.setCurrentIndex(model.index(model.rowCount() - 1, 1));
        view.scrollToBottom();
    };
    window.both("last row", toLastRow);
    window.once("a batch arrives", [&] { model.capture(256); });
    window.once("the oldest go", [&] { model.drop(256); });
    window.once("another batch arrives", [&] {
        model.capture(5);
        model.capture(3000);
    });
    window.once("more of the oldest go", [&] { model.drop(3005); });
    window.both("scroll up", turnWheel(-6));
    window.once("a batch arrives below", [&] { model.capture(100); });
    window.once("the oldest go above", [&] { model.drop(100); });
    window.both("click a row", clickCell(5, 3));
    window.once("a batch arrives unseen", [&] { model.capture(50); });
    window.both("scroll to the bottom", [](QAbstractItemView &view) { view.scrollToBottom(); });
    window.once("a batch arrives at the end", [&] { model.capture(7); });
    window.once("the current row goes", [&] {
        const int current = program.ours.currentIndex().row();
        model.drop(current + 1);
    });
    window.once("everything goes", [&] { model.drop(model.rowCount()); });
    window.once("the first ones arrive", [&] { model.capture(5); });
    window.once("the view fills", [&] { model.capture(11); });
    window.once("more than fit", [&] { model.capture(400); });
    window.once("nearly all go", [&] { model.drop(410); });
    window.once("another capture", [&] { model.restart(1000); });
    window.both("last of these", toLastRow);
    window.once("yet another capture", [&] { model.restart(2000); });
    window.both("lower window", [](QAbstractItemView &view) {
        view.setFixedHeight(view.height() - 2 * Program::rowHeight - 4);
    });
    window.both("taller window", [](QAbstractItemView &view) {
        view.setFixedHeight(view.height() + 3 * Program::rowHeight + 2);
    });
    QCOMPARE(window.problems(), QStringList());
}

//! A reader at one place, while packets come and go everywhere.
void TestPackets::keepsPlace()
{
    QFETCH(bool, isPerPixel);
    QFETCH(bool, isBuffered);
    Program program(placeDifferences(isPerPixel));
    setMode(program, isPerPixel, isBuffered);
    program.ours.setStandardKeys(true);
    program.ours.setFollowsCurrentRow(false);
    SideBySide &window = program.window;
    PacketModel &model = program.model;
    window.showWith(14, 9);

    window.both("slider to the middle", dragSlider(0.5));
    window.both("click", clickCell(4, 2));
    window.both("extend", clickCell(6, 2, Qt::ShiftModifier));
    window.once("packets arrive", [&] { model.capture(1000); });
    window.once("the oldest go", [&] { model.drop(1000); });
    window.both("down", pressKey(Qt::Key_Down));
    window.both("up", pressKey(Qt::Key_Up, Qt::ShiftModifier, 3));
    window.once("all above go", [&] { model.drop(program.ours.rowAt(0)); });
    window.both("wheel", turnWheel(2));
    window.once("two rows on screen go, too", [&] { model.drop(program.ours.rowAt(0) + 2); });
    window.both("slider to the middle again", dragSlider(0.5));
    window.both("click again", clickCell(8, 2));
    window.once("all rows on screen go", [&] { model.drop(program.ours.rowAt(0) + 20); });
    window.both("first cell", pressKey(Qt::Key_Home, Qt::ControlModifier));
    window.once("the current row goes", [&] { model.drop(1); });
    window.both("last cell", pressKey(Qt::Key_End, Qt::ControlModifier));
    window.once("packets arrive after the current one", [&] { model.capture(20); });
    window.both("down to the new ones", pressKey(Qt::Key_Down, Qt::NoModifier, 3));
    window.once("all go but one", [&] { model.drop(model.rowCount() - 1); });
    window.once("the last one goes", [&] { model.drop(1); });
    window.both("keys without rows", pressKey(Qt::Key_Down));
    window.once("some arrive", [&] { model.capture(3); });
    window.both("down from nowhere", pressKey(Qt::Key_Down));
    QCOMPARE(window.problems(), QStringList());
}

QTEST_MAIN(TestPackets)
#include "tst_packets.moc"
