// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

// An address book with a find panel under each view: our table beside Qt's table, and beside
// Qt's tree, in light and dark, in both directions and with style sheets. And a real tree, in
// which what the panel finds is what a plain walk finds.

#include "sidebyside.h"

#include <abstractitemviewfind.h>
#include <itemdelegate.h>
#include <itemviewfindtoolbar.h>
#include <sortfilterproxymodel.h>

#include <QAction>
#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QStandardItemModel>
#include <QTableView>
#include <QTest>
#include <QToolButton>
#include <QTreeView>

#include <algorithm>
#include <random>

namespace {

//! Who lives where is made of this.
constexpr quint32 bookSeed = 19770525;

constexpr int rowHeight = 19;

enum Column {
    Name,
    City,
    Number,
    Note,
};

QString oneOf(const QStringList &texts, std::mt19937 *random)
{
    return texts.at(qsizetype((*random)() % quint32(texts.size())));
}

QString newName(std::mt19937 *random)
{
    return oneOf({"Abel", "Bergmann", "Castro", "Dietz", "Eklund", "Fabre"}, random);
}

QList<QStandardItem *> newEntry(std::mt19937 *random)
{
    static const QStringList cities {"Bergen", "Turku", "Kyoto", "Quito", "Lyon", "Perth"};
    auto *number = new QStandardItem;
    number->setData(int((*random)() % 90000 + 1000), Qt::DisplayRole);
    return {new QStandardItem(newName(random)), new QStandardItem(oneOf(cities, random)), number,
            new QStandardItem((*random)() % 50 == 0 ? QStringLiteral("call back") : QString())};
}

//! Cells of one height in every style.
class EntryDelegate : public Vantix::ItemDelegate
{
public:
    using Vantix::ItemDelegate::ItemDelegate;
    QSize sizeHint(const QStyleOptionViewItem & /*option*/,
                   const QModelIndex & /*index*/) const override
    {
        return {80, rowHeight};
    }
};

struct Look
{
    bool isDark = false;
    Qt::LayoutDirection direction = Qt::LeftToRight;
    QString styleSheet;
};

QPalette paletteOf(const Look &look)
{
    if (!look.isDark)
        return QPalette(QColor(0xef, 0xef, 0xef));
    QPalette palette(QColor(0x35, 0x35, 0x35));
    palette.setColor(QPalette::Base, QColor(0x23, 0x23, 0x23));
    palette.setColor(QPalette::AlternateBase, QColor(0x2b, 0x2b, 0x2b));
    return palette;
}

//! A view with a panel.
struct Finder
{
    Finder(QAbstractItemView *view, QAbstractItemModel *model)
        : engine(view)
    {
        view->setModel(model);
        view->setItemDelegate(new EntryDelegate(view));
        view->setSelectionBehavior(QAbstractItemView::SelectRows);
        view->setSelectionMode(QAbstractItemView::ExtendedSelection);
        view->setAlternatingRowColors(true);
        engine.setView(view);
        engine.setHeader(columnsOf(*view));
        panel.setViewFind(&engine);
    }

    QLineEdit *field() const
    {
        return panel.findChild<QLineEdit *>(QStringLiteral("findLineEdit"));
    }
    void press(const char *button) const
    {
        auto *toolButton = panel.findChild<QToolButton *>(QLatin1String(button));
        QTest::mouseClick(toolButton, Qt::LeftButton);
    }
    //! What the panel shows beside the field.
    QString message() const
    {
        const auto labels = panel.findChildren<QLabel *>();
        QString text;
        for (const QLabel *label : labels)
            text += label->text();
        return text;
    }

    AbstractItemViewFind engine;
    ItemViewFindToolBar panel;
};

//! The program: a book and two views with a proxy and a panel each.
class Program
{
public:
    Program(QAbstractItemView *peerView, const Look &look, const QList<Difference> &expected)
        : window(new ProgramView, peerView, expected)
        , ourFinder(&ours, &ourProxy)
        , peerFinder(&peer, &peerProxy)
    {
        for (int i = 0; i < 3000; ++i)
            book.appendRow(newEntry(&random));
        book.setHorizontalHeaderLabels({"Name", "City", "Number", "Note"});
        ourProxy.setSourceModel(&book);
        peerProxy.setSourceModel(&book);
        ours.setRowHeight(rowHeight);
        ours.setStandardKeys(true);
        ours.setFollowsCurrentRow(false);
        if (auto *table = qobject_cast<QTableView *>(&peer)) {
            table->setShowGrid(false);
            table->verticalHeader()->setMinimumSectionSize(1);
            table->verticalHeader()->setDefaultSectionSize(rowHeight);
            table->verticalHeader()->hide();
        } else if (auto *tree = qobject_cast<QTreeView *>(&peer)) {
            tree->setRootIsDecorated(false);
            tree->setUniformRowHeights(true);
            tree->setVerticalScrollMode(QAbstractItemView::ScrollPerItem);
            tree->header()->setFirstSectionMovable(true);
        }
        window.setLayoutDirection(look.direction);
        window.setStyleSheet(look.styleSheet);
        window.addBelow(ours, &ourFinder.panel);
        window.addBelow(peer, &peerFinder.panel);
        window.compareToo(QStringLiteral("panel"), [this](QAbstractItemView &view) {
            const Finder &finder = finderOf(view);
            return QStringLiteral("%1 \"%2\" %3")
                .arg(finder.panel.isVisible() ? "open" : "closed", finder.field()->text(),
                     finder.message());
        });
    }
    ~Program()
    {
        // Before the views that the panels lie beside.
        ourFinder.panel.setParent(nullptr);
        peerFinder.panel.setParent(nullptr);
    }

    Finder &finderOf(const QAbstractItemView &view)
    {
        return &view == &ours ? ourFinder : peerFinder;
    }

    // Steps

    SideBySide::Step open()
    {
        return [this](QAbstractItemView &view) { finderOf(view).panel.openFind(); };
    }
    //! What is in the field is typed over.
    SideBySide::Step type(const QString &text)
    {
        return [=, this](QAbstractItemView &view) {
            QLineEdit *field = finderOf(view).field();
            field->setFocus();
            field->selectAll();
            if (text.isEmpty())
                QTest::keyClick(field, Qt::Key_Backspace);
            QTest::keyClicks(field, text);
        };
    }
    SideBySide::Step key(Qt::Key key, int times = 1)
    {
        return [=, this](QAbstractItemView &view) {
            finderOf(view).field()->setFocus();
            for (int i = 0; i < times; ++i)
                QTest::keyClick(finderOf(view).field(), key);
        };
    }
    SideBySide::Step press(const char *button)
    {
        return [=, this](QAbstractItemView &view) { finderOf(view).press(button); };
    }

    std::mt19937 random {bookSeed};
    QStandardItemModel book;
    SortFilterProxyModel ourProxy;
    SortFilterProxyModel peerProxy;
    SideBySide window;
    ProgramView &ours = window.ours();
    QAbstractItemView &peer = window.peer();
    Finder ourFinder;
    Finder peerFinder;
};

//! All of them, or half: right-to-left in the dark alone.
void addLooks(bool isAll)
{
    QTest::addColumn<bool>("isDark");
    QTest::addColumn<Qt::LayoutDirection>("direction");
    QTest::addColumn<QString>("styleSheet");
    const std::pair<const char *, QString> sheets[] = {
        {"plain", {}},
        {"colours",
         "QAbstractItemView { selection-background-color: #a04000; selection-color: #ffffff;"
         " alternate-background-color: #c0e0c0 } QHeaderView::section { padding: 4px }"},
        {"cells",
         "QAbstractItemView::item { padding: 2px; border-bottom: 1px solid #808080 }"
         "QAbstractItemView::item:selected { background: #204080; color: #ffff80 }"
         "QAbstractItemView::item:hover { background: #508050 }"},
        {"background",
         "QTableFastView, QTableView, QTreeView { border: 3px solid #604020; background: "
         "qlineargradient(x1:0, y1:0,"
         " x2:1, y2:1, stop:0 #dddddd, stop:1 #888888) } QToolBar { background: #a0a080 }"},
    };
    for (const auto &[name, sheet] : sheets) {
        for (const bool isDark : {false, true}) {
            for (const auto direction : {Qt::LeftToRight, Qt::RightToLeft}) {
                if (!isAll && isDark != (direction == Qt::RightToLeft))
                    continue;
                QTest::addRow("%s, %s, %s", name, isDark ? "dark" : "light",
                              direction == Qt::LeftToRight ? "left to right" : "right to left")
                    << isDark << direction << sheet;
            }
        }
    }
}

const QString fromNothing =
    QStringLiteral("where all rows are new, the view goes to the end that the header tells");

const QList<Difference> differences {
    {"filter", "first", "497 Abel", Why::sameRows},
    {"filter", "last", "507 Eklund", Why::sameRows},
    {"an entry that is shown", "first", "503 Bergmann", Why::sameRows},
    {"an entry that is shown", "last", "513 Bergmann", Why::sameRows},
    {"a shown entry changes", "first", "502 Bergmann", Why::sameRows},
    {"a shown entry changes", "last", "512 Bergmann", Why::sameRows},
    {"show all", "first", "1589 Bergmann", Why::sameRows},
    {"show all", "last", "1599 Eklund", Why::sameRows},
    {"close", "first", "2991 Abel", fromNothing},
    {"close", "last", "3001 Bergmann", fromNothing},
};

// A tree, for which the answers are looked up in a plain list

//! All rows below \a parent, each before its children.
QModelIndexList rowsBelow(const QAbstractItemModel &model, const QModelIndex &parent = {})
{
    QModelIndexList rows;
    for (int row = 0; row < model.rowCount(parent); ++row) {
        rows.append(model.index(row, 0, parent));
        rows += rowsBelow(model, rows.last());
    }
    return rows;
}

bool has(const QModelIndex &row, const QString &text)
{
    return row.data().toString().contains(text, Qt::CaseInsensitive);
}

QModelIndex nextWith(const QModelIndexList &rows, const QModelIndex &from, const QString &text)
{
    const qsizetype begin = rows.indexOf(from);
    for (qsizetype i = 1; i < rows.size(); ++i) {
        const QModelIndex &row = rows.at((begin + i) % rows.size());
        if (has(row, text))
            return row;
    }
    return from;
}

QModelIndex formerWith(const QModelIndexList &rows, const QModelIndex &from, const QString &text)
{
    for (qsizetype i = rows.indexOf(from) - 1; i >= 0; --i) {
        if (has(rows.at(i), text))
            return rows.at(i);
    }
    return from;
}

//! Three levels of names, of which every third has children.
void grow(QStandardItem *parent, std::mt19937 *random, int depth)
{
    for (int i = 0; i < 12; ++i) {
        const QString name = newName(random); // in this order with every compiler
        auto *item = new QStandardItem(name + QStringLiteral(" %1").arg((*random)() % 40));
        parent->appendRow(item);
        if (depth < 3 && i % 3 == 0)
            grow(item, random, depth + 1);
    }
}

} // namespace

class TestFinder : public QObject
{
    Q_OBJECT

public:
    static void initMain() { qputenv("QT_SCALE_FACTOR", "1"); }

private Q_SLOTS:
    void initTestCase();
    void cleanup() { QApplication::setPalette(m_palette); }
    void besideTable_data() { addLooks(true); }
    void besideTable() { run(new QTableView); }
    void besideTree_data() { addLooks(false); }
    void besideTree() { run(new QTreeView); }
    void findsInTree_data();
    void findsInTree();

private:
    void run(QAbstractItemView *peer);

    QPalette m_palette;
};

void TestFinder::initTestCase()
{
    qInfo("seed %u", bookSeed);
    QApplication::setCursorFlashTime(0);
    m_palette = QApplication::palette();
}

void TestFinder::run(QAbstractItemView *peer)
{
    QFETCH(bool, isDark);
    QFETCH(Qt::LayoutDirection, direction);
    QFETCH(QString, styleSheet);
    Look look {isDark, direction, styleSheet};
    QApplication::setPalette(paletteOf(look));
    Program program(peer, look, differences);
    program.ours.setPaintBufferEnabled(true);
    SideBySide &window = program.window;
    QStandardItemModel &book = program.book;
    window.showWith(11, 6);

    window.both("open", program.open());
    window.both("type", program.type("berg"));
    window.both("enter", program.key(Qt::Key_Return));
    window.both("enter again", program.key(Qt::Key_Enter, 7));
    window.both("previous", program.press("findPrevButton"));
    window.both("next", program.press("findNextButton"));
    window.both("not there", inTurn({program.type("zebra"), program.key(Qt::Key_Return)}));
    window.both("a rare one", inTurn({program.type("CALL"), program.key(Qt::Key_Return)}));
    window.both("many more", program.key(Qt::Key_Return, 30));
    window.both("back", program.press("findPrevButton"));
    window.both("a number", inTurn({program.type("77"), program.key(Qt::Key_Return)}));
    window.both("filter", inTurn({program.type("erg"), program.press("filterButton")}));
    window.both("find in what is left", inTurn({program.type("Kyo"), program.key(Qt::Key_Return)}));
    window.both("keys in the view", pressKey(Qt::Key_Down, Qt::NoModifier, 2));
    window.both("select", pressKey(Qt::Key_Down, Qt::ShiftModifier, 2));
    window.once("an entry that is shown", [&] {
        QList<QStandardItem *> entry = newEntry(&program.random);
        entry.at(City)->setText("Bergen");
        book.insertRow(0, entry);
    });
    window.once("an entry that is not shown", [&] {
        QList<QStandardItem *> entry = newEntry(&program.random);
        entry.at(City)->setText("Rome");
        entry.at(Name)->setText("Rossi");
        book.insertRow(10, entry);
    });
    window.once("a shown entry changes", [&] {
        const QModelIndex shown = program.ours.model()->index(40, City);
        book.setData(program.ourProxy.mapToSource(shown), "Athens");
        book.setData(program.ourProxy.mapToSource(shown.siblingAtColumn(Name)), "Adler");
    });
    window.both("show all", inTurn({program.key(Qt::Key_Escape), program.open()}));
    window.both("sort",
                [](QAbstractItemView &view) { view.model()->sort(City, Qt::AscendingOrder); });
    window.both("find where it is sorted",
                inTurn({program.type("abel"), program.key(Qt::Key_Return)}));
    window.both("hide a column",
                [](QAbstractItemView &view) { columnsOf(view)->hideSection(Name); });
    window.both("find in what is shown",
                inTurn({program.type("abel"), program.key(Qt::Key_Return)}));
    window.once("another palette", [&] {
        look.isDark = !look.isDark;
        QApplication::setPalette(paletteOf(look));
    });
    window.both("enter in other colours",
                inTurn({program.type("perth"), program.key(Qt::Key_Return, 3)}));
    window.both("move a column", [](QAbstractItemView &view) {
        columnsOf(view)->moveSection(columnsOf(view)->visualIndex(Note), 0);
    });
    window.once("the other direction", [&] {
        window.setLayoutDirection(window.isRightToLeft() ? Qt::LeftToRight : Qt::RightToLeft);
    });
    window.both("filter once more", inTurn({program.type("Lyon"), program.press("filterButton")}));
    window.both("page down", pressKey(Qt::Key_PageDown, Qt::NoModifier, 3));
    window.both("filter for nothing",
                inTurn({program.type("zebra"), program.press("filterButton")}));
    window.both("close", inTurn({program.press("closeButton"), [](QAbstractItemView &view) {
                                     view.setFocus();
                                 }}));
    window.once("another style sheet", [&] {
        window.setStyleSheet(styleSheet.isEmpty() ? QStringLiteral("QTableFastView, QTableView,"
                                                                   " QTreeView { color: #3060c0 }")
                                                  : QString());
    });
    window.both("click", clickCell(4, City));
    window.both("click with shift", clickCell(7, City, Qt::ShiftModifier));
    QCOMPARE(window.problems(), QStringList());
}

void TestFinder::findsInTree_data()
{
    QTest::addColumn<bool>("isExpanded");
    QTest::newRow("expanded") << true;
    QTest::newRow("collapsed") << false;
}

void TestFinder::findsInTree()
{
    QFETCH(bool, isExpanded);
    std::mt19937 random(bookSeed);
    QStandardItemModel names;
    grow(names.invisibleRootItem(), &random, 1);
    SortFilterProxyModel shown;
    shown.setRecursiveFilteringEnabled(true);
    shown.setSourceModel(&names);
    QTreeView tree;
    Finder finder(&tree, &shown);
    tree.resize(300, 300);
    tree.show();
    if (isExpanded)
        tree.expandAll();
    settle(tree);

    finder.panel.openFind();
    tree.setCurrentIndex(shown.index(0, 0));
    for (const QString text : {"dietz", "7", "Abel 1", "FABRE"}) {
        finder.field()->setText(text);
        const QModelIndexList rows = rowsBelow(shown);
        for (int i = 0; i < 36; ++i) {
            const bool isForward = i / 8 % 3 != 1;
            const QModelIndex from = tree.currentIndex();
            const QModelIndex expected =
                isForward ? nextWith(rows, from, text) : formerWith(rows, from, text);
            finder.press(isForward ? "findNextButton" : "findPrevButton");
            settle(tree);
            QCOMPARE(tree.currentIndex(), expected);
            QVERIFY(tree.viewport()->rect().contains(tree.visualRect(expected).center()));
        }

        finder.press("filterButton");
        const QModelIndexList left = rowsBelow(shown);
        qsizetype matches = 0;
        for (const QModelIndex &row : left) {
            const bool isMatch = row.data().toString().contains(text); // as it is written
            matches += isMatch;
            QVERIFY(isMatch || shown.hasChildren(row));
        }
        const auto isMatch = [&](const QModelIndex &row) {
            return row.data().toString().contains(text);
        };
        const QModelIndexList all = rowsBelow(names);
        QCOMPARE(matches, std::count_if(all.begin(), all.end(), isMatch));
        finder.field()->clear();
        finder.press("filterButton");
        QCOMPARE(rowsBelow(shown).size(), all.size());
        if (!tree.currentIndex().isValid())
            tree.setCurrentIndex(shown.index(0, 0));
    }
}

QTEST_MAIN(TestFinder)
#include "tst_finder.moc"
