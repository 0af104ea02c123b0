// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "common.h"
#include "findtables.h"
#include "qtablefastview.h"
#include "sortfilterproxymodel.h"

#include <QRandomGenerator>
#include <QStandardItemModel>
#include <QTableView>
#include <QTest>
#include <QTreeView>

#include <memory>

namespace {

QStringList walkForward(AbstractItemViewFind::Iterator it)
{
    QStringList names;
    while ((*++it).isValid())
        names << (*it).data().toString();
    return names;
}

QStringList walkBackward(AbstractItemViewFind::Iterator it)
{
    QStringList names;
    while ((*--it).isValid())
        names << (*it).data().toString();
    return names;
}

//! A tree view of Qt's with its engine; all columns taken.
struct Tree
{
    Tree()
    {
        fillTree(&model);
        view.setModel(&model);
        find.setView(&view);
        find.setHeader(view.header());
        find.findIncremental(utf8("nothing"));
        find.asked.clear();
    }
    QModelIndex index(const char *name) const
    {
        const QModelIndexList hits = model.match(model.index(0, 0), Qt::DisplayRole, utf8(name), 1,
                                                 Qt::MatchExactly | Qt::MatchRecursive);
        return hits.value(0);
    }
    QString current() const { return view.currentIndex().data().toString(); }

    QStandardItemModel model;
    QTreeView view;
    RecordingEngine find;
};

//! What a search should find, by lists of rows instead of steps.
class BruteForce
{
public:
    BruteForce(const QAbstractItemModel *model, const QList<int> &columns, const QString &text)
        : m_model(model)
        , m_columns(columns)
        , m_text(text.toLower())
    {
    }

    QModelIndex next(const QModelIndex &start, bool isIncremental) const
    {
        QModelIndexList rows;
        if (isIncremental)
            rows << start;
        appendRowsUnder(start, m_columns.first(), &rows);
        appendRowsAfter(start, &rows);
        if (const QModelIndex hit = firstIn(rows, isIncremental ? start.column() : -1);
            hit.isValid())
            return hit;
        QModelIndexList all;
        appendRowsUnder({}, m_columns.first(), &all);
        const qsizetype end = all.indexOf(start.sibling(start.row(), m_columns.first()));
        return firstIn(end < 0 ? all : all.first(end), -1);
    }

    QModelIndex previous(const QModelIndex &start) const
    {
        QModelIndexList rows;
        for (QModelIndex at = start; at.isValid(); at = at.parent()) {
            for (int row = at.row() - 1; row >= 0; --row) {
                QModelIndexList branch {m_model->index(row, m_columns.last(), at.parent())};
                appendRowsUnder(branch.first(), m_columns.last(), &branch);
                std::reverse(branch.begin(), branch.end());
                rows << branch;
            }
            if (at.parent().isValid())
                rows << at.parent();
        }
        for (const QModelIndex &row : rows) {
            for (qsizetype i = m_columns.size() - 1; i >= 0; --i) {
                if (matches(row.sibling(row.row(), m_columns.at(i))))
                    return row.sibling(row.row(), m_columns.at(i));
            }
        }
        return {};
    }

private:
    void appendRowsUnder(const QModelIndex &parent, int column, QModelIndexList *rows) const
    {
        for (int row = 0; row < m_model->rowCount(parent); ++row) {
            rows->append(m_model->index(row, column, parent));
            appendRowsUnder(rows->last(), column, rows);
        }
    }
    void appendRowsAfter(const QModelIndex &start, QModelIndexList *rows) const
    {
        for (QModelIndex at = start; at.isValid(); at = at.parent()) {
            for (int row = at.row() + 1; row < m_model->rowCount(at.parent()); ++row) {
                rows->append(m_model->index(row, m_columns.first(), at.parent()));
                appendRowsUnder(rows->last(), m_columns.first(), rows);
            }
        }
    }
    //! The first hit; of the first row only from column \a from on.
    QModelIndex firstIn(const QModelIndexList &rows, int from) const
    {
        for (qsizetype i = 0; i < rows.size(); ++i) {
            const qsizetype first = i == 0 ? m_columns.indexOf(from) : -1;
            for (qsizetype c = qMax<qsizetype>(first, 0); c < m_columns.size(); ++c) {
                const QModelIndex cell = rows.at(i).sibling(rows.at(i).row(), m_columns.at(c));
                if (matches(cell))
                    return cell;
            }
        }
        return {};
    }
    bool matches(const QModelIndex &cell) const
    {
        return cell.data().toString().toLower().indexOf(m_text) >= 0;
    }

    const QAbstractItemModel *m_model;
    QList<int> m_columns;
    QString m_text;
};

void fillRandomly(QStandardItem *parent, int depth, int columns, QRandomGenerator &random)
{
    const int rows = random.bounded(depth == 0 ? 1 : 0, 5);
    for (int row = 0; row < rows; ++row) {
        QList<QStandardItem *> items;
        for (int column = 0; column < columns; ++column) {
            QString text;
            for (int n = random.bounded(4); n > 0; --n)
                text += QStringLiteral("abcABC").at(random.bounded(6));
            items << item(text);
        }
        parent->appendRow(items);
        // Mostly under the first column, as models do, now and then under any.
        if (depth < 3) {
            const int under = random.bounded(4) ? 0 : random.bounded(columns);
            fillRandomly(items.at(under), depth + 1, columns, random);
        }
    }
}

QModelIndex randomRow(const QAbstractItemModel &model, QRandomGenerator &random)
{
    QModelIndex at;
    do {
        at = model.index(random.bounded(model.rowCount(at)), random.bounded(model.columnCount(at)),
                         at);
    } while (model.hasChildren(at) && random.bounded(2));
    return at;
}

} // namespace

class tst_AbstractItemViewFind : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void settersAndQueries();
    void metaType();
    void trim_data();
    void trim();
    void lineForward_data();
    void lineForward();
    void lineReverse_data();
    void lineReverse();
    void lineOfNothing();
    void iteratorOverTree();
    void iteratorEnds();
    void iteratorWithoutColumns();
    void iteratorOverEmptyModel();
    void iteratorWithChildrenUnderColumnZero();
    void emptyTextIsFound();
    void noCurrentIndex();
    void emptyModel();
    void allColumnsHidden();
    void search_data();
    void search();
    void orderOfColumns();
    void makesRowTheSelection();
    void columnListIsTakenAtEverySearch();
    void filteredByCollapse();
    void nestedStartWithOtherFirstColumn();
    void scrollsTheFastView();
    void missingPartners();
    void proxyGetsColumnsAndText();
    void proxyGetsCase();
    void otherModelsAreNotFiltered();
    void filterIsVirtual();
    void randomTrees_data();
    void randomTrees();
    void randomTables();
};

void tst_AbstractItemViewFind::initTestCase()
{
    QLocale::setDefault(QLocale::c());
}

void tst_AbstractItemViewFind::settersAndQueries()
{
    Engine find;
    QVERIFY(!find.view());
    QVERIFY(!find.itemModel());
    QVERIFY(!find.isFilterAvailable());
    QVERIFY(find.columnList().isEmpty());

    QStandardItemModel model;
    auto view = std::make_unique<QTableView>();
    find.setView(view.get());
    QCOMPARE(find.view(), view.get());
    QVERIFY(!find.isFilterAvailable());
    view->setModel(&model);
    QCOMPARE(find.itemModel(), &model);
    QVERIFY(find.isFilterAvailable());
    view.reset();
    QVERIFY(!find.view());
    QVERIFY(!find.isFilterAvailable());
}

void tst_AbstractItemViewFind::metaType()
{
    const int id = qRegisterMetaType<AbstractItemViewFind>();
    QCOMPARE(QMetaType(id).name(), "AbstractItemViewFind");
    const QMetaObject &meta = AbstractItemViewFind::staticMetaObject;
    for (const char *slot : {"findIncremental(QString)", "findPrev(QString)", "findNext(QString)",
                             "stop()", "filter(QString)"})
        QVERIFY2(meta.indexOfSlot(slot) >= 0, slot);
    Table table {{"a"}};
    bool isFound = false;
    QVERIFY(QMetaObject::invokeMethod(&table.find, "findIncremental", Q_RETURN_ARG(bool, isFound),
                                      Q_ARG(QString, QStringLiteral("a"))));
    QVERIFY(isFound);
}

void tst_AbstractItemViewFind::trim_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("separator");
    QTest::addColumn<QString>("expected");

    QTest::newRow("nothing") << utf8("1234") << utf8(",") << utf8("1234");
    QTest::newRow("separator") << utf8("1,234,567") << utf8(",") << utf8("1234567");
    QTest::newRow("white space") << utf8(" 1\t2\n3\u00a04\u202f5 ") << utf8(",") << utf8("12345");
    QTest::newRow("several characters") << utf8("1,,2") << utf8(",,") << utf8("1,,2");
    QTest::newRow("empty separator") << utf8("1,2 3") << utf8("") << utf8("1,23");
    QTest::newRow("empty text") << utf8("") << utf8(",") << utf8("");
    QTest::newRow("only separators") << utf8(", ,") << utf8(",") << utf8("");
}

void tst_AbstractItemViewFind::trim()
{
    QFETCH(QString, text);
    QFETCH(QString, separator);
    QFETCH(QString, expected);
    const QString before = separator;
    Engine::trim(text, separator);
    QCOMPARE(text, expected);
    QCOMPARE(separator, before);
}

void tst_AbstractItemViewFind::lineForward_data()
{
    QTest::addColumn<QList<int>>("order");
    QTest::addColumn<QList<int>>("hidden");
    QTest::addColumn<int>("column");
    QTest::addColumn<int>("found");

    // The row is a x a x a.
    using Columns = QList<int>;
    const Columns straight {0, 1, 2, 3, 4};
    const Columns turned {4, 3, 2, 1, 0};
    QTest::newRow("itself") << straight << Columns {} << 2 << 2;
    QTest::newRow("the next") << straight << Columns {} << 1 << 2;
    QTest::newRow("none behind") << Columns {0, 2, 4, 1, 3} << Columns {} << 1 << -1;
    QTest::newRow("turned, itself") << turned << Columns {} << 2 << 2;
    QTest::newRow("turned, the next") << turned << Columns {} << 3 << 2;
    QTest::newRow("turned, from the end") << turned << Columns {} << 1 << 0;
    QTest::newRow("next is hidden") << straight << Columns {2} << 1 << 4;
    QTest::newRow("own is hidden") << straight << Columns {2} << 2 << 0;
    QTest::newRow("own and first are hidden") << straight << Columns {0, 2} << 2 << 4;
}

void tst_AbstractItemViewFind::lineForward()
{
    QFETCH(QList<int>, order);
    QFETCH(QList<int>, hidden);
    QFETCH(int, column);
    QFETCH(int, found);

    Table table {{"a", "x", "a", "x", "a"}};
    QHeaderView *header = table.view.horizontalHeader();
    for (int i = 0; i < order.size(); ++i)
        header->moveSection(header->visualIndex(order.at(i)), i);
    for (const int section : hidden)
        header->hideSection(section);
    table.find.findIncremental(utf8("nothing")); // takes the columns
    const QModelIndex match =
        table.find.acceptsLineForward(table.model.index(0, column), utf8("a"));
    QCOMPARE(match.column(), found);
    QCOMPARE(match.isValid(), found >= 0);
}

void tst_AbstractItemViewFind::lineReverse_data()
{
    QTest::addColumn<QList<int>>("order");
    QTest::addColumn<QList<int>>("hidden");
    QTest::addColumn<int>("column");
    QTest::addColumn<int>("found");

    using Columns = QList<int>;
    const Columns straight {0, 1, 2, 3, 4};
    const Columns turned {4, 3, 2, 1, 0};
    QTest::newRow("itself") << straight << Columns {} << 2 << 2;
    QTest::newRow("the one before") << straight << Columns {} << 3 << 2;
    QTest::newRow("none before") << Columns {1, 3, 0, 2, 4} << Columns {} << 3 << -1;
    QTest::newRow("turned, the one before") << turned << Columns {} << 1 << 2;
    QTest::newRow("turned, from the start") << turned << Columns {} << 3 << 4;
    QTest::newRow("the one before is hidden") << straight << Columns {2} << 3 << 0;
    QTest::newRow("own is hidden") << straight << Columns {2} << 2 << 4;
    QTest::newRow("own and last are hidden") << straight << Columns {2, 4} << 2 << 0;
}

void tst_AbstractItemViewFind::lineReverse()
{
    QFETCH(QList<int>, order);
    QFETCH(QList<int>, hidden);
    QFETCH(int, column);
    QFETCH(int, found);

    Table table {{"a", "x", "a", "x", "a"}};
    QHeaderView *header = table.view.horizontalHeader();
    for (int i = 0; i < order.size(); ++i)
        header->moveSection(header->visualIndex(order.at(i)), i);
    for (const int section : hidden)
        header->hideSection(section);
    table.find.findIncremental(utf8("nothing")); // takes the columns
    const QModelIndex match =
        table.find.acceptsLineReverse(table.model.index(0, column), utf8("a"));
    QCOMPARE(match.column(), found);
}

void tst_AbstractItemViewFind::lineOfNothing()
{
    Table table {{"a"}};
    // No search has taken the columns yet.
    QVERIFY(!table.find.acceptsLineForward(table.model.index(0, 0), utf8("a")).isValid());
    QVERIFY(!table.find.acceptsLineReverse(table.model.index(0, 0), utf8("a")).isValid());
    QVERIFY(table.find.findIncremental(utf8("a")));
    QVERIFY(!table.find.acceptsLineForward(QModelIndex(), utf8("a")).isValid());
    QVERIFY(!table.find.acceptsLineReverse(QModelIndex(), utf8("a")).isValid());
    QVERIFY(!table.find.tryAcceptCurrentLine(QModelIndex(), utf8("a"), true));
    QVERIFY(!table.find.tryAcceptCurrentLine(QModelIndex(), utf8("a"), false));
    Table behind {{"x", "a"}};
    QVERIFY(!behind.find.findIncremental(utf8("nothing")));
    QVERIFY(!behind.find.acceptsLineReverse(behind.model.index(0, 0), utf8("a")).isValid());
    QVERIFY(behind.find.acceptsLineForward(behind.model.index(0, 0), utf8("a")).isValid());
}

void tst_AbstractItemViewFind::iteratorOverTree()
{
    using Iterator = AbstractItemViewFind::Iterator;
    Tree tree;
    QCOMPARE(walkForward(Iterator(&tree.model, &tree.find)), utf8("a b c d e f g").split(u' '));
    QCOMPARE(walkForward(Iterator(tree.index("d"), &tree.find)), utf8("e f g").split(u' '));
    // Backward it lands in the last column, under which nothing hangs.
    QCOMPARE(walkBackward(Iterator(tree.index("g"), &tree.find)), utf8("f2 a2").split(u' '));
    QCOMPARE(walkBackward(Iterator(tree.index("d"), &tree.find)), utf8("c2 b2 a2").split(u' '));

    tree.view.header()->hideSection(1);
    tree.find.findIncremental(utf8("nothing"));
    QCOMPARE(walkBackward(Iterator(tree.index("g"), &tree.find)), utf8("f e d c b a").split(u' '));
    Iterator it(tree.index("b"), &tree.find);
    QCOMPARE(&++it, &it);
    QCOMPARE((*it).data().toString(), utf8("c"));
    QCOMPARE(&--it, &it);
    QCOMPARE((*it).data().toString(), utf8("b"));
}

void tst_AbstractItemViewFind::iteratorEnds()
{
    using Iterator = AbstractItemViewFind::Iterator;
    Tree tree;
    Iterator none;
    QVERIFY(!(*none).isValid());
    QVERIFY(!(*++none).isValid());
    QVERIFY(!(*--none).isValid());
    Iterator first(tree.index("a"), &tree.find);
    QVERIFY(!(*--first).isValid());
    QVERIFY(!(*--first).isValid());
    Iterator last(tree.index("g"), &tree.find);
    QVERIFY(!(*++last).isValid());
    Iterator ofNothing(QModelIndex(), &tree.find);
    QVERIFY(!(*++ofNothing).isValid());
    Iterator withoutEngine(&tree.model, nullptr);
    QVERIFY(!(*++withoutEngine).isValid());
    Iterator backWithoutEngine(tree.index("g"), nullptr);
    QVERIFY(!(*--backWithoutEngine).isValid());
}

void tst_AbstractItemViewFind::iteratorWithoutColumns()
{
    using Iterator = AbstractItemViewFind::Iterator;
    Tree tree;
    AbstractItemViewFind fresh;
    Iterator forward(tree.index("a"), &fresh);
    QVERIFY(!(*++forward).isValid());
    Iterator backward(tree.index("f"), &fresh);
    QVERIFY(!(*--backward).isValid());
}

void tst_AbstractItemViewFind::iteratorOverEmptyModel()
{
    Tree tree;
    QStandardItemModel empty;
    QCOMPARE(walkForward(AbstractItemViewFind::Iterator(&empty, &tree.find)), QStringList());
}

void tst_AbstractItemViewFind::iteratorWithChildrenUnderColumnZero()
{
    using Iterator = AbstractItemViewFind::Iterator;
    Tree tree;
    tree.view.header()->moveSection(1, 0);
    tree.find.findIncremental(utf8("nothing"));
    QCOMPARE(tree.find.columnList(), QList<int>({1, 0}));
    QCOMPARE(walkForward(Iterator(&tree.model, &tree.find)), utf8("a2 f2").split(u' '));
    QCOMPARE(walkBackward(Iterator(tree.index("g"), &tree.find)), utf8("f e d c b a").split(u' '));
}

void tst_AbstractItemViewFind::emptyTextIsFound()
{
    Table table {{"a"}};
    QVERIFY(table.find.findIncremental(QString()));
    QVERIFY(table.find.findNext(QString()));
    QVERIFY(table.find.findPrev(QString()));
    QVERIFY(!table.view.currentIndex().isValid());
    QVERIFY(table.find.columnList().isEmpty());
    Engine alone;
    QVERIFY(alone.findNext(QString()));
}

void tst_AbstractItemViewFind::noCurrentIndex()
{
    Table table {{"ax", "y"}, {"a", "b"}};
    QVERIFY(table.find.findIncremental(utf8("a")));
    QCOMPARE(table.current(), Cell(0, 0));

    table.view.setCurrentIndex(QModelIndex());
    QVERIFY(table.find.findNext(utf8("a")));
    QCOMPARE(table.current(), Cell(1, 0));

    table.view.setCurrentIndex(QModelIndex());
    QVERIFY(!table.find.findPrev(utf8("a")));
    table.view.horizontalHeader()->hideSection(0);
    QVERIFY(table.find.findIncremental(utf8("y")));
    QCOMPARE(table.current(), Cell(0, 1));
}

void tst_AbstractItemViewFind::emptyModel()
{
    Table table;
    QVERIFY(!table.find.findIncremental(utf8("a")));
    table.model.setColumnCount(2);
    QVERIFY(!table.find.findIncremental(utf8("a")));
    QVERIFY(!table.find.findNext(utf8("a")));
    QVERIFY(!table.find.findPrev(utf8("a")));
}

void tst_AbstractItemViewFind::allColumnsHidden()
{
    Table table {{"a", "a"}, {"a", "a"}};
    table.view.hideColumn(0);
    table.view.hideColumn(1);
    QVERIFY(!table.find.findIncremental(utf8("a")));
    QVERIFY(!table.find.findNext(utf8("a")));
    QVERIFY(!table.find.findPrev(utf8("a")));
    QVERIFY(!table.find.dofind(table.model.index(0, 0), utf8("a"), true));
    QVERIFY(!table.find.dofindReverse(table.model.index(1, 0), utf8("a")));
}

void tst_AbstractItemViewFind::search_data()
{
    QTest::addColumn<QByteArray>("rows"); // two letters a row, a is searched for
    QTest::addColumn<Cell>("from");
    QTest::addColumn<QByteArray>("way");
    QTest::addColumn<Cell>("to"); // −1 if not found

    const auto row = [](const char *name, const char *rows, Cell from, const char *way, Cell to) {
        QTest::newRow(name) << QByteArray(rows) << from << QByteArray(way) << to;
    };
    const Cell none(-1, -1);
    row("incremental, the current cell", "xa xx", {0, 1}, "incremental", {0, 1});
    row("incremental, right of it", "xa xx", {0, 0}, "incremental", {0, 1});
    row("incremental, not left of it", "ax xx ax", {0, 1}, "incremental", {2, 0});
    row("incremental, left of it alone", "ax xx xx", {0, 1}, "incremental", none);
    row("incremental, wraps", "ax xx xx", {1, 0}, "incremental", {0, 0});
    row("next, not the current row", "aa xx xa", {0, 0}, "next", {2, 1});
    row("next, right of it alone", "xa xx xx", {0, 0}, "next", none);
    row("next, the following row", "xx aa aa", {0, 1}, "next", {1, 0});
    row("next, wraps", "xx xa xx ax", {3, 0}, "next", {1, 1});
    row("next, wraps to the first row", "ax xx", {1, 1}, "next", {0, 0});
    row("next, none", "xx xx", {0, 0}, "next", none);
    row("next, one row", "aa", {0, 0}, "next", none);
    row("previous, nearest", "ax ax xx", {2, 0}, "previous", {1, 0});
    row("previous, from the right", "aa xx", {1, 0}, "previous", {0, 1});
    row("previous, not the current row", "xx aa", {1, 1}, "previous", none);
    row("previous, does not wrap", "xx ax ax", {0, 0}, "previous", none);
    row("previous, none above", "xx xx ax", {1, 0}, "previous", none);
}

void tst_AbstractItemViewFind::search()
{
    QFETCH(QByteArray, rows);
    QFETCH(Cell, from);
    QFETCH(QByteArray, way);
    QFETCH(Cell, to);

    Table table;
    for (const QByteArray &row : rows.split(' '))
        table.model.appendRow(itemsOf({row.left(1), row.mid(1)}));
    table.setCurrent(from.first, from.second);
    bool isFound = false;
    if (way == "incremental")
        isFound = table.find.findIncremental(utf8("A"));
    else if (way == "next")
        isFound = table.find.findNext(utf8("A"));
    else
        isFound = table.find.findPrev(utf8("A"));
    QCOMPARE(isFound, to.first >= 0);
    QCOMPARE(table.current(), isFound ? to : from);
}

void tst_AbstractItemViewFind::orderOfColumns()
{
    Table table {{"0", "1", "2"}, {"3", "4", "5"}, {"6", "7", "8"}};
    table.view.horizontalHeader()->moveSection(2, 0);
    table.view.hideColumn(1);
    table.setCurrent(1, 0);
    QVERIFY(!table.find.findIncremental(utf8("nothing")));
    QCOMPARE(table.find.columnList(), QList<int>({2, 0}));
    // Each other row once, in columns as they are on screen; of the own row what is right.
    QCOMPARE(table.find.asked, QStringList({"3", "8", "6", "2", "0"}));
    table.find.asked.clear();
    QVERIFY(!table.find.findPrev(utf8("nothing")));
    QCOMPARE(table.find.asked, QStringList({"0", "2"}));
}

void tst_AbstractItemViewFind::makesRowTheSelection()
{
    Table table {{"x", "x"}, {"x", "a"}, {"x", "x"}};
    table.view.selectAll();
    QVERIFY(table.find.findIncremental(utf8("a")));
    QCOMPARE(table.current(), Cell(1, 1));
    QCOMPARE(table.view.selectionModel()->selectedRows().size(), 1);
    QVERIFY(table.view.selectionModel()->isRowSelected(1, QModelIndex()));
    QCOMPARE(table.view.selectionModel()->selectedIndexes().size(), 2);
}

void tst_AbstractItemViewFind::columnListIsTakenAtEverySearch()
{
    Table table {{"a", "b"}};
    QVERIFY(table.find.findIncremental(utf8("b")));
    QCOMPARE(table.find.columnList(), QList<int>({0, 1}));
    table.view.hideColumn(1);
    QCOMPARE(table.find.columnList(), QList<int>({0, 1}));
    QVERIFY(!table.find.findNext(utf8("b")));
    QCOMPARE(table.find.columnList(), QList<int>({0}));
    table.model.setColumnCount(4);
    table.model.setItem(0, 3, item(utf8("d")));
    QVERIFY(table.find.findIncremental(utf8("d")));
}

void tst_AbstractItemViewFind::filteredByCollapse()
{
    Tree tree;
    tree.view.collapseAll();
    QVERIFY(tree.find.findIncremental(utf8("d")));
    QCOMPARE(tree.current(), utf8("d"));
    QCOMPARE(tree.find.asked, utf8("a a2 b b2 c c2 d").split(u' '));
    QVERIFY(tree.find.findNext(utf8("b")));
    QCOMPARE(tree.current(), utf8("b"));
    QVERIFY(tree.find.findPrev(utf8("a")));
    QCOMPARE(tree.current(), utf8("a2"));
    QVERIFY(!tree.find.findPrev(utf8("g")));
}

//! The rows below column 0 are never met again when the first column is another one.
void tst_AbstractItemViewFind::nestedStartWithOtherFirstColumn()
{
    Tree tree;
    tree.view.header()->moveSection(1, 0);
    tree.view.setCurrentIndex(tree.index("c"));
    tree.find.asked.clear();
    QVERIFY(!tree.find.findNext(utf8("nothing")));
    QCOMPARE(tree.find.asked, utf8("d2 d e2 e f2 f a2 a f2 f").split(u' '));
    QVERIFY(tree.find.findNext(utf8("f")));
    QCOMPARE(tree.current(), utf8("f2"));
}

void tst_AbstractItemViewFind::scrollsTheFastView()
{
    QStandardItemModel model;
    for (int row = 0; row < 500; ++row)
        model.appendRow(item(QStringLiteral("row %1").arg(row)));
    QTableFastView view;
    view.setModel(&model);
    view.resize(300, 200);
    view.show();
    QVERIFY(QTest::qWaitForWindowExposed(&view));
    Engine find;
    find.setView(&view);
    find.setHeader(view.header());
    QVERIFY(find.findIncremental(utf8("row 432")));
    QCOMPARE(view.currentIndex().row(), 432);
    QVERIFY(view.viewport()->rect().contains(view.visualRect(view.currentIndex())));
    QVERIFY(find.findPrev(utf8("row 43")));
    QCOMPARE(view.currentIndex().row(), 431);
    QVERIFY(find.findNext(utf8("ROW 3")));
    QCOMPARE(view.currentIndex().row(), 3);
    QVERIFY(view.viewport()->rect().contains(view.visualRect(view.currentIndex())));
}

void tst_AbstractItemViewFind::missingPartners()
{
    const QString text = utf8("a");
    Engine alone;
    QVERIFY(!alone.findIncremental(text));
    QVERIFY(!alone.findNext(text));
    QVERIFY(!alone.findPrev(text));
    QVERIFY(!alone.acceptsData(text, text, 0));
    QVERIFY(!alone.acceptsIndex(QModelIndex(), text));
    QVERIFY(!alone.dofind(QModelIndex(), text, true));
    alone.setCurrentIndex(QModelIndex());
    alone.processEvents();
    alone.stop();
    alone.filter(text);

    Table table {{"a"}};
    table.find.setHeader(nullptr);
    QVERIFY(!table.find.findIncremental(text));
    table.find.filter(text);
    table.find.setHeader(table.view.horizontalHeader());
    table.find.setView(nullptr);
    QVERIFY(!table.find.findIncremental(text));
    table.find.setView(&table.view);
    table.view.setModel(nullptr);
    QVERIFY(!table.find.findIncremental(text));
    QVERIFY(!table.find.findPrev(text));
    table.find.filter(text);

    auto header = std::make_unique<QHeaderView>(Qt::Horizontal);
    SortFilterProxyModel proxy;
    proxy.setSourceModel(&table.model);
    table.view.setModel(&proxy);
    table.find.setHeader(header.get());
    header.reset();
    QVERIFY(!table.find.findIncremental(text));
    table.find.filter(utf8("x"));
    QCOMPARE(proxy.rowCount(), 1);
}

void tst_AbstractItemViewFind::proxyGetsColumnsAndText()
{
    Table table {{"Ab", "x"}, {"x", "Ab"}, {"ab", "ab"}};
    SortFilterProxyModel proxy;
    proxy.setSourceModel(&table.model);
    table.view.setModel(&proxy);
    table.find.filter(utf8("Ab"));
    QCOMPARE(proxy.rowCount(), 2);
    table.view.hideColumn(1);
    table.find.filter(utf8("A"));
    QCOMPARE(proxy.rowCount(), 1);
    table.find.filter(QString());
    QCOMPARE(proxy.rowCount(), 3);
    QVERIFY(table.find.findIncremental(utf8("AB")));
    QCOMPARE(table.current(), Cell(0, 0));
}

//! Once it was set, and not before.
void tst_AbstractItemViewFind::proxyGetsCase()
{
    Table table {{"Ab"}, {"ab"}, {"b"}};
    SortFilterProxyModel proxy;
    proxy.setSourceModel(&table.model);
    table.view.setModel(&proxy);
    table.find.filter(utf8("ab"));
    QCOMPARE(proxy.rowCount(), 1);
    table.find.setCaseSensitivity(Qt::CaseInsensitive);
    QCOMPARE(proxy.rowCount(), 2);
    table.find.setCaseSensitivity(Qt::CaseSensitive);
    QCOMPARE(proxy.rowCount(), 1);
    table.find.setCaseSensitivity(Qt::CaseInsensitive);

    // Another model gets it with the next filter.
    SortFilterProxyModel later;
    later.setSourceModel(&table.model);
    table.view.setModel(&later);
    QCOMPARE(later.filterCaseSensitivity(), Qt::CaseSensitive);
    table.find.filter(utf8("AB"));
    QCOMPARE(later.rowCount(), 2);

    AbstractItemViewFind untouched;
    untouched.setView(&table.view);
    untouched.setHeader(table.view.horizontalHeader());
    untouched.filter(utf8("aB"));
    QCOMPARE(later.filterCaseSensitivity(), Qt::CaseInsensitive);
    untouched.setView(nullptr);
    untouched.setCaseSensitivity(Qt::CaseSensitive);
    QCOMPARE(later.filterCaseSensitivity(), Qt::CaseInsensitive);
}

void tst_AbstractItemViewFind::otherModelsAreNotFiltered()
{
    Table table {{"a"}, {"b"}};
    QSortFilterProxyModel proxy;
    proxy.setSourceModel(&table.model);
    table.view.setModel(&proxy);
    QVERIFY(table.find.isFilterAvailable());
    table.find.filter(utf8("a"));
    QCOMPARE(proxy.rowCount(), 2);
}

void tst_AbstractItemViewFind::filterIsVirtual()
{
    class Filtering : public AbstractItemViewFind
    {
    public:
        void dofilter(const QString &text) override { texts << text; }
        QStringList texts;
    };
    Filtering find;
    find.filter(utf8("a"));
    find.filter(QString());
    QCOMPARE(find.texts, QStringList({"a", QString()}));
}

void tst_AbstractItemViewFind::randomTrees_data()
{
    QTest::addColumn<quint32>("seed");
    for (quint32 seed = 1; seed <= 8; ++seed)
        QTest::addRow("seed %u", seed) << seed;
}

void tst_AbstractItemViewFind::randomTrees()
{
    QFETCH(quint32, seed);
    QRandomGenerator random(seed);
    int hits = 0;
    for (int round = 0; round < 250; ++round) {
        const int columns = random.bounded(1, 4);
        QStandardItemModel model;
        model.setColumnCount(columns);
        fillRandomly(model.invisibleRootItem(), 0, columns, random);
        QTreeView view;
        view.setModel(&model);
        QHeaderView *header = view.header();
        header->moveSection(random.bounded(columns), random.bounded(columns));
        if (columns > 1 && random.bounded(3) == 0)
            header->hideSection(random.bounded(columns));
        Engine find;
        find.setView(&view);
        find.setHeader(header);
        const QList<int> shown = getVisibleColumns(header);
        for (int search = 0; search < 6; ++search) {
            QString text;
            for (int n = random.bounded(1, 4); n > 0; --n)
                text += QStringLiteral("abcABC").at(random.bounded(6));
            const BruteForce expected(&model, shown, text);
            const QModelIndex start = randomRow(model, random);
            view.setCurrentIndex(start);
            const int way = random.bounded(3);
            const QModelIndex hit =
                way == 2 ? expected.previous(start) : expected.next(start, way == 0);
            hits += hit.isValid();
            QCOMPARE(find.find(text, way != 2, way == 0), hit.isValid());
            QCOMPARE(view.currentIndex(), hit.isValid() ? hit : start);
        }
    }
    // Both outcomes have to be met for this to mean something.
    QVERIFY(hits > 300 && hits < 1200);
}

void tst_AbstractItemViewFind::randomTables()
{
    const quint32 seed = 99;
    qInfo("seed %u", seed);
    QRandomGenerator random(seed);
    const QLocale english(QLocale::English, QLocale::UnitedStates);
    for (int round = 0; round < 300; ++round) {
        QStandardItemModel model;
        for (int row = random.bounded(1, 12); row > 0; --row) {
            const int number = int(random.generate() >> random.bounded(32));
            model.appendRow(itemsOf({number, double(number) / 4, QString::number(number)}));
        }
        QTableView view;
        view.setLocale(english);
        view.setModel(&model);
        Engine find;
        find.setView(&view);
        find.setHeader(view.horizontalHeader());
        const QString digits = QString::number(random.bounded(1, 200));
        const int start = random.bounded(model.rowCount());
        view.setCurrentIndex(model.index(start, 0));

        QModelIndex hit;
        for (int i = 1; i < model.rowCount() && !hit.isValid(); ++i) {
            const int row = (start + i) % model.rowCount();
            for (int column = 2; column >= 0; --column) {
                const QVariant value = model.index(row, column).data();
                QString text = value.toString();
                if (column == 0)
                    text = english.toString(value.toLongLong()).remove(u',');
                if (column == 1)
                    text = english.toString(value.toDouble()).remove(u',');
                if (text.contains(digits, Qt::CaseInsensitive))
                    hit = model.index(row, column);
            }
        }
        QCOMPARE(find.findNext(digits), hit.isValid());
        QCOMPARE(view.currentIndex(), hit.isValid() ? hit : model.index(start, 0));
    }
}

QTEST_MAIN(tst_AbstractItemViewFind)
#include "tst_abstractitemviewfind.moc"
