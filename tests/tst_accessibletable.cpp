// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "activation.h"
#include "bigmodel.h"
#include "itemdelegate.h"
#include "qtablefastview.h"
#include "screenreader.h"

#include <QAccessible>
#include <QAccessibleObject>
#include <QDateTime>
#include <QHeaderView>
#include <QLineEdit>
#include <QPointer>
#include <QRandomGenerator>
#include <QSignalSpy>
#include <QStandardItemModel>
#include <QTableView>
#include <QTest>

#include <algorithm>
#include <functional>
#include <limits>
#include <memory>

using Mode = QAbstractItemView::SelectionMode;
using Behaviour = QAbstractItemView::SelectionBehavior;
using Select = QItemSelectionModel::SelectionFlag;

namespace {

constexpr int s_rows = 6;
constexpr int s_columns = 4;

QAccessibleInterface *interfaceOf(QObject *object)
{
    return QAccessible::queryAccessibleInterface(object);
}

QAccessibleTableInterface *tableOf(QAbstractItemView *view)
{
    return interfaceOf(view)->tableInterface();
}

QString nameOf(const QAccessibleInterface *thing)
{
    return thing ? thing->text(QAccessible::Name) : QStringLiteral("none");
}

QString listed(const QList<int> &numbers)
{
    QList<int> sorted = numbers;
    std::sort(sorted.begin(), sorted.end());
    QStringList texts;
    for (const int number : std::as_const(sorted))
        texts.append(QString::number(number));
    return texts.join(QLatin1Char(' '));
}

//! A cell of every kind.
void fill(QStandardItemModel *model)
{
    for (int row = 0; row < s_rows; ++row) {
        for (int column = 0; column < s_columns; ++column) {
            auto *item = new QStandardItem(QStringLiteral("%1/%2").arg(row).arg(column));
            model->setItem(row, column, item);
        }
    }
    model->setHorizontalHeaderLabels({QStringLiteral("One"), QStringLiteral("Two"),
                                      QStringLiteral("Three"), QStringLiteral("Four")});
    model->setVerticalHeaderLabels({QStringLiteral("first")});
    model->item(1, 1)->setCheckable(true);
    model->item(1, 2)->setCheckable(true);
    model->item(1, 2)->setCheckState(Qt::Checked);
    model->item(2, 0)->setSelectable(false);
    model->item(2, 1)->setEditable(false);
    model->item(3, 1)->setData(QStringLiteral("spoken"), Qt::AccessibleTextRole);
    model->item(3, 2)->setData(QStringLiteral("described"), Qt::AccessibleDescriptionRole);
}

void setUp(QAbstractItemView *view, QAbstractItemModel *model)
{
    view->setModel(model);
    view->setSelectionMode(QAbstractItemView::ExtendedSelection);
    view->setSelectionBehavior(QAbstractItemView::SelectItems);
    view->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    view->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    view->resize(500, 400);
}

//! Ours and Qt's, with the same model.
struct Both
{
    Both()
    {
        fill(&model);
        setUp(&fast, &model);
        setUp(&qt, &model);
        qt.setShowGrid(false);
        qt.verticalHeader()->hide();
        qt.horizontalHeader()->setSectionsMovable(true);
        for (QHeaderView *header : {fast.header(), qt.horizontalHeader()})
            header->setFixedHeight(24);
        qt.verticalHeader()->setMinimumSectionSize(1);
        for (int row = 0; row < s_rows; ++row)
            qt.setRowHeight(row, fast.rowHeight());
        for (int column = 0; column < s_columns; ++column) {
            fast.setColumnWidth(column, 90 + column);
            qt.setColumnWidth(column, 90 + column);
        }
    }

    void show()
    {
        for (QAbstractItemView *view : views()) {
            view->show();
            QVERIFY(QTest::qWaitForWindowExposed(view));
        }
    }
    QList<QAbstractItemView *> views() { return {&fast, &qt}; }

    QStandardItemModel model;
    QTableFastView fast;
    QTableView qt;
};

using Change = std::function<void(QAbstractItemView *)>;
using Question = std::function<QString(QAccessibleInterface *)>;

//! What is asked of each of the cells, joined.
template<typename Ask> Question ofEachCell(Ask ask)
{
    return [=](QAccessibleInterface *table) {
        QStringList answers;
        for (int row = 0; row < table->tableInterface()->rowCount(); ++row) {
            for (int column = 0; column < table->tableInterface()->columnCount(); ++column)
                answers.append(ask(table->tableInterface()->cellAt(row, column)));
        }
        return answers.join(QLatin1Char(';'));
    };
}

//! A state of each of the cells.
template<typename Bit> Question stateOf(Bit bit)
{
    return ofEachCell([=](QAccessibleInterface *cell) {
        const QAccessible::State state = cell->state();
        return QString::number(int(bit(state)));
    });
}

template<typename Ask> Question ofTable(Ask ask)
{
    return [=](QAccessibleInterface *table) { return ask(table->tableInterface()); };
}

QList<QPair<const char *, Question>> questions()
{
    using Table = QAccessibleTableInterface;
    using Thing = QAccessibleInterface;
    using State = QAccessible::State;
    return {
        {"role", [](Thing *table) { return QString::number(table->role()); }},
        {"valid", [](Thing *table) { return QString::number(table->isValid()); }},
        {"children",
         [](Thing *table) { // Qt numbers titles of rows, too
             const Table *inner = table->tableInterface();
             return QString::number((inner->rowCount() + 1) * inner->columnCount());
         }},
        {"rows", ofTable([](Table *t) { return QString::number(t->rowCount()); })},
        {"columns", ofTable([](Table *t) { return QString::number(t->columnCount()); })},
        {"caption", ofTable([](Table *t) { return nameOf(t->caption()); })},
        {"summary", ofTable([](Table *t) { return nameOf(t->summary()); })},
        {"title of a column", ofTable([](Table *t) { return t->columnDescription(1); })},
        {"title of a row", ofTable([](Table *t) { return t->rowDescription(0); })},
        {"selected cells", ofTable([](Table *t) {
             QStringList places;
             for (Thing *cell : t->selectedCells())
                 places.append(ScreenReader::placeOf(cell));
             places.sort();
             return places.join(QLatin1Char(' '));
         })},
        {"selected rows", ofTable([](Table *t) { return listed(t->selectedRows()); })},
        {"selected columns", ofTable([](Table *t) { return listed(t->selectedColumns()); })},
        {"number of selected cells",
         ofTable([](Table *t) { return QString::number(t->selectedCells().size()); })},
        {"number of selected rows",
         ofTable([](Table *t) { return QString::number(t->selectedRowCount()); })},
        {"number of selected columns",
         ofTable([](Table *t) { return QString::number(t->selectedColumnCount()); })},
        {"whether each row is selected", ofTable([](Table *t) {
             QString all;
             for (int row = 0; row < t->rowCount(); ++row)
                 all += QString::number(t->isRowSelected(row));
             return all;
         })},
        {"whether each column is selected", ofTable([](Table *t) {
             QString all;
             for (int column = 0; column < t->columnCount(); ++column)
                 all += QString::number(t->isColumnSelected(column));
             return all;
         })},
        {"places", ofEachCell([](Thing *cell) { return ScreenReader::placeOf(cell); })},
        {"roles", ofEachCell([](Thing *cell) { return QString::number(cell->role()); })},
        {"names", ofEachCell([](Thing *cell) { return nameOf(cell); })},
        {"descriptions",
         ofEachCell([](Thing *cell) { return cell->text(QAccessible::Description); })},
        {"values", ofEachCell([](Thing *cell) { return cell->text(QAccessible::Value); })},
        {"extents", ofEachCell([](Thing *cell) {
             return QString::number(cell->tableCellInterface()->rowExtent())
                 + QString::number(cell->tableCellInterface()->columnExtent());
         })},
        {"parents", ofEachCell([](Thing *cell) {
             return QString::number(cell->parent() == cell->tableCellInterface()->table());
         })},
        {"valid cells", ofEachCell([](Thing *cell) { return QString::number(cell->isValid()); })},
        {"children of cells",
         ofEachCell([](Thing *cell) { return QString::number(cell->childCount()); })},
        {"titles", ofEachCell([](Thing *cell) {
             QAccessibleInterface *title = cell->tableCellInterface()->columnHeaderCells().value(0);
             QAccessible::uniqueId(title); // Qt's view makes new ones that nobody owns
             return nameOf(title);
         })},
        {"same again", ofEachCell([](Thing *cell) {
             const QAccessibleTableCellInterface *inner = cell->tableCellInterface();
             return QString::number(
                 inner->table()->tableInterface()->cellAt(inner->rowIndex(), inner->columnIndex())
                 == cell);
         })},
        {"isSelected", ofEachCell([](Thing *cell) {
             return QString::number(cell->tableCellInterface()->isSelected());
         })},
        {"selected", stateOf([](const State &s) { return s.selected; })},
        {"selectable", stateOf([](const State &s) { return s.selectable; })},
        {"focusable", stateOf([](const State &s) { return s.focusable; })},
        {"multiSelectable", stateOf([](const State &s) { return s.multiSelectable; })},
        {"extSelectable", stateOf([](const State &s) { return s.extSelectable; })},
        {"checkable", stateOf([](const State &s) { return s.checkable; })},
        {"checked", stateOf([](const State &s) { return s.checked; })},
        {"invisible", stateOf([](const State &s) { return s.invisible; })},
        {"rectangles",
         [](Thing *table) {
             const auto *view = qobject_cast<QAbstractItemView *>(table->object());
             const QPoint origin = view->viewport()->mapToGlobal(QPoint(0, 0));
             return ofEachCell([=](Thing *cell) {
                 const QRect rect = cell->rect().translated(-origin);
                 return QStringLiteral("%1,%2 %3x%4")
                     .arg(rect.x())
                     .arg(rect.y())
                     .arg(rect.width())
                     .arg(rect.height());
             })(table);
         }},
    };
}

void selectRange(QAbstractItemView *view, int top, int left, int bottom, int right)
{
    view->selectionModel()->select(
        {view->model()->index(top, left), view->model()->index(bottom, right)}, Select::Select);
}

QList<QPair<const char *, Change>> situations()
{
    using View = QAbstractItemView;
    return {
        {"as new", [](View *) {}},
        {"current", [](View *view) { view->setCurrentIndex(view->model()->index(1, 1)); }},
        {"a row selected", [](View *view) { selectRange(view, 1, 0, 1, s_columns - 1); }},
        {"a column selected", [](View *view) { selectRange(view, 0, 2, s_rows - 1, 2); }},
        {"cells selected",
         [](View *view) {
             selectRange(view, 0, 1, 2, 2);
             selectRange(view, 4, 3, 5, 3);
         }},
        {"rows in parts",
         [](View *view) {
             selectRange(view, 3, 0, 4, 1);
             selectRange(view, 4, 2, 5, 3);
         }},
        {"all selected", [](View *view) { view->selectAll(); }},
        {"taken back",
         [](View *view) {
             view->selectAll();
             view->selectionModel()->select(view->model()->index(3, 2), Select::Deselect);
         }},
        {"rows",
         [](View *view) {
             view->setSelectionBehavior(View::SelectRows);
             view->setSelectionMode(View::MultiSelection);
             view->selectionModel()->select(view->model()->index(4, 2),
                                            Select::Select | Select::Rows);
         }},
        {"single",
         [](View *view) {
             view->setSelectionMode(View::SingleSelection);
             view->setCurrentIndex(view->model()->index(5, 3));
         }},
        {"small",
         [](View *view) {
             const int height = view->visualRect(view->model()->index(0, 0)).height();
             view->setVerticalScrollMode(View::ScrollPerPixel);
             view->setHorizontalScrollMode(View::ScrollPerPixel);
             view->resize(200, 24 + 3 * height);
             view->verticalScrollBar()->setValue(height / 2);
             view->horizontalScrollBar()->setValue(100);
         }},
    };
}

} // namespace

class tst_AccessibleTable : public QObject
{
    Q_OBJECT

private slots:
    void init() { m_reader.reset(new ScreenReader); }
    void cleanup() { m_reader.reset(); }
    void cleanupTestCase() { m_both.reset(); }

    void answersAsQTableView_data();
    void answersAsQTableView();
    void selectsAsQTableView_data();
    void selectsAsQTableView();
    void unselectsAmidNeighbours();
    void selectsOneColumn();
    void selectsLoneRow();
    void tellsAsQTableView_data();
    void tellsAsQTableView();

    void derivedViews();
    void derivedViewsOwnFactory();
    void children();
    void cellsOutOfRange();
    void childrenBeyondCounting();
    void manyRowsSelected();
    void noModelOrHeader();
    void hiddenColumns();
    void movedColumns();
    void rightToLeft();
    void cellsUnderPixels();
    void titles();
    void titlesSort();
    void names_data();
    void names();
    void focusChild();
    void stateOfEditing();
    void stateOfDisabled();
    void stateOfMixed();
    void offers_data();
    void offers();
    void selectAction();
    void editAction();
    void toggleAction_data();
    void toggleAction();
    void toggleIsTheDelegates();
    void focusAction();
    void setText();
    void cellsFollowRows();
    void cellsOfRemovedRows();
    void cellsAfterReset();
    void cellsOfColumns();
    void cellsAreBounded();
    void tellsFocusOnEntering();
    void tellsFocusInHiddenColumn();
    void tellsDataOfCurrent();
    void tellsColumns();
    void tellsLargeSelections();
    void tellsOfNewSelectionModel();
    void tellsOfNewHeader();
    void modelDestroyed();
    void viewDestroyed();
    void asleep();

private:
    std::unique_ptr<ScreenReader> m_reader;
    std::unique_ptr<Both> m_both;
    int m_situation = -1;
};

// Held against QTableView

void tst_AccessibleTable::answersAsQTableView_data()
{
    QTest::addColumn<int>("situation");
    QTest::addColumn<Question>("question");
    for (int i = 0; i < situations().size(); ++i) {
        for (const auto &question : questions()) {
            QTest::addRow("%s: %s", situations().at(i).first, question.first)
                << i << question.second;
        }
    }
}

void tst_AccessibleTable::answersAsQTableView()
{
    QFETCH(int, situation);
    QFETCH(Question, question);
    // One pair of views is asked all questions about a situation.
    if (!m_both || m_situation != situation) {
        m_both.reset(new Both);
        m_situation = situation;
        m_both->show();
        for (QAbstractItemView *view : m_both->views())
            situations().at(situation).second(view);
    }
    QCOMPARE(question(interfaceOf(&m_both->fast)), question(interfaceOf(&m_both->qt)));
}

void tst_AccessibleTable::selectsAsQTableView_data()
{
    QTest::addColumn<Mode>("mode");
    QTest::addColumn<Behaviour>("behaviour");
    const QList<QPair<const char *, Mode>> modes {
        {"none", QAbstractItemView::NoSelection},
        {"single", QAbstractItemView::SingleSelection},
        {"multi", QAbstractItemView::MultiSelection},
        {"extended", QAbstractItemView::ExtendedSelection},
        {"contiguous", QAbstractItemView::ContiguousSelection},
    };
    for (const auto &mode : modes) {
        QTest::addRow("%s, items", mode.first) << mode.second << QAbstractItemView::SelectItems;
        QTest::addRow("%s, rows", mode.first) << mode.second << QAbstractItemView::SelectRows;
        // Of QTableView's columns two may be selected where only one may.
        if (mode.second != QAbstractItemView::SingleSelection) {
            QTest::addRow("%s, columns", mode.first)
                << mode.second << QAbstractItemView::SelectColumns;
        }
    }
}

//! The same in both views, one after the other.
void tst_AccessibleTable::selectsAsQTableView()
{
    QFETCH(Mode, mode);
    QFETCH(Behaviour, behaviour);
    Both both;
    for (QAbstractItemView *view : both.views()) {
        view->setSelectionMode(mode);
        view->setSelectionBehavior(behaviour);
    }
    both.model.item(2, 0)->setSelectable(true);
    const auto act = [](QAbstractItemView *view, int action, int line) {
        QAccessibleTableInterface *table = tableOf(view);
        switch (action) {
        case 0:
            return table->selectRow(line);
        case 1:
            return table->selectColumn(line);
        case 2:
            return table->unselectRow(line);
        default:
            return table->unselectColumn(line);
        }
    };
    QRandomGenerator random(7);
    for (int step = 0; step < 200; ++step) {
        const int action = int(random.bounded(4));
        const int line = int(random.bounded(action % 2 ? s_columns : s_rows));
        const QByteArray where = QByteArray::number(action) + " of " + QByteArray::number(line);
        QVERIFY2(act(&both.fast, action, line) == act(&both.qt, action, line), where);
        QVERIFY2(listed(tableOf(&both.fast)->selectedRows())
                     == listed(tableOf(&both.qt)->selectedRows()),
                 where);
        QVERIFY2(both.fast.selectionModel()->selection().indexes().size()
                     == both.qt.selectionModel()->selection().indexes().size(),
                 where);
    }
    QVERIFY(!tableOf(&both.fast)->selectRow(s_rows));
    QVERIFY(!tableOf(&both.fast)->selectColumn(s_columns));
    QVERIFY(!tableOf(&both.fast)->unselectRow(-1));
}

//! What is selected stays in one piece.
void tst_AccessibleTable::unselectsAmidNeighbours()
{
    Both both;
    both.model.item(2, 0)->setSelectable(true);
    for (QAbstractItemView *view : both.views()) {
        view->setSelectionMode(QAbstractItemView::ContiguousSelection);
        for (int row = 1; row < s_rows; ++row)
            QVERIFY(tableOf(view)->selectRow(row));
        QVERIFY(tableOf(view)->unselectRow(3));
        QCOMPARE(listed(tableOf(view)->selectedRows()), QStringLiteral("1 2"));
        view->clearSelection();
        for (int column = 0; column < s_columns; ++column)
            QVERIFY(tableOf(view)->selectColumn(column));
        QVERIFY(tableOf(view)->unselectColumn(1));
        QCOMPARE(listed(tableOf(view)->selectedColumns()), QStringLiteral("0"));
    }
}

void tst_AccessibleTable::selectsLoneRow()
{
    Both both;
    both.fast.setSelectionMode(QAbstractItemView::SingleSelection);
    for (int column = 1; column < s_columns - 1; ++column)
        both.fast.hideColumn(column);
    QVERIFY(!tableOf(&both.fast)->selectRow(1));
    both.fast.hideColumn(0); // a row is a cell now
    QVERIFY(tableOf(&both.fast)->selectRow(1));
    QVERIFY(tableOf(&both.fast)->isRowSelected(1));
}

void tst_AccessibleTable::selectsOneColumn()
{
    Both both;
    both.fast.setSelectionMode(QAbstractItemView::SingleSelection);
    both.fast.setSelectionBehavior(QAbstractItemView::SelectColumns);
    QVERIFY(tableOf(&both.fast)->selectColumn(1));
    QVERIFY(tableOf(&both.fast)->selectColumn(2));
    QCOMPARE(tableOf(&both.fast)->selectedColumns(), QList<int> {2});
    QVERIFY(!tableOf(&both.fast)->unselectColumn(2));
    both.fast.setSelectionBehavior(QAbstractItemView::SelectItems);
    QVERIFY(!tableOf(&both.fast)->selectColumn(1));
    both.model.removeRows(1, s_rows - 1); // a column is a cell now
    QVERIFY(tableOf(&both.fast)->selectColumn(1));
}

void tst_AccessibleTable::tellsAsQTableView_data()
{
    using Tell = std::function<void(QAbstractItemView *, QStandardItemModel *)>;
    using View = QAbstractItemView;
    using Model = QStandardItemModel;
    QTest::addColumn<Tell>("change");
    const QList<QPair<const char *, Tell>> changes {
        {"current", [](View *view, Model *m) { view->setCurrentIndex(m->index(2, 2)); }},
        {"current again",
         [](View *view, Model *m) {
             view->setCurrentIndex(m->index(2, 2));
             view->setCurrentIndex(m->index(3, 2));
         }},
        {"no current",
         [](View *view, Model *m) {
             view->setCurrentIndex(m->index(2, 2));
             view->setCurrentIndex({});
         }},
        {"a cell selected",
         [](View *view, Model *m) {
             view->selectionModel()->select(m->index(4, 1), Select::Select);
         }},
        {"a cell deselected",
         [](View *view, Model *m) {
             view->selectionModel()->select(m->index(4, 1), Select::Select);
             view->selectionModel()->select(m->index(4, 1), Select::Deselect);
         }},
        {"row inserted at the top", [](View *, Model *m) { m->insertRow(0); }},
        {"rows inserted in view", [](View *, Model *m) { m->insertRows(2, 3); }},
        {"rows appended", [](View *, Model *m) { m->insertRows(s_rows, 2); }},
        {"row removed at the top", [](View *, Model *m) { m->removeRow(0); }},
        {"rows removed in view", [](View *, Model *m) { m->removeRows(2, 2); }},
        {"all rows removed", [](View *, Model *m) { m->removeRows(0, s_rows); }},
        {"column inserted", [](View *, Model *m) { m->insertColumn(1); }},
        {"column removed", [](View *, Model *m) { m->removeColumn(2); }},
        {"data", [](View *, Model *m) { m->item(2, 1)->setText(QStringLiteral("new")); }},
        {"sorted", [](View *, Model *m) { m->sort(0, Qt::DescendingOrder); }},
        {"cleared", [](View *, Model *m) { m->clear(); }},
    };
    for (const auto &change : changes)
        QTest::newRow(change.first) << change.second;
}

void tst_AccessibleTable::tellsAsQTableView()
{
    using Tell = std::function<void(QAbstractItemView *, QStandardItemModel *)>;
    QFETCH(Tell, change);
    QStringList told[2];
    const std::unique_ptr<QAbstractItemView> views[2] {std::make_unique<QTableFastView>(),
                                                       std::make_unique<QTableView>()};
    for (int i = 0; i < 2; ++i) {
        QStandardItemModel model;
        fill(&model);
        setUp(views[i].get(), &model);
        if (auto *fast = qobject_cast<QTableFastView *>(views[i].get()))
            fast->setFollowsCurrentRow(false);
        views[i]->show();
        activate(views[i].get());
        views[i]->setFocus();
        interfaceOf(views[i].get());
        QCoreApplication::processEvents();
        m_reader->heard();
        change(views[i].get(), &model);
        told[i] = m_reader->heard();
        views[i]->setModel(nullptr);
    }
    QVERIFY(!told[0].isEmpty());
    QCOMPARE(told[0], told[1]);
}

// The table

namespace {

class NamedView : public QTableFastView
{
    Q_OBJECT
};

class NamelessView : public QTableFastView
{
};

class OwnInterface : public QAccessibleObject
{
public:
    using QAccessibleObject::QAccessibleObject;
    QAccessibleInterface *parent() const override { return nullptr; }
    QAccessibleInterface *child(int) const override { return nullptr; }
    int childCount() const override { return 0; }
    int indexOfChild(const QAccessibleInterface *) const override { return -1; }
    QString text(QAccessible::Text) const override { return QStringLiteral("own"); }
    QAccessible::Role role() const override { return QAccessible::Chart; }
    QAccessible::State state() const override { return {}; }
};

QAccessibleInterface *ownInterface(const QString &name, QObject *object)
{
    return name == QLatin1String(NamedView::staticMetaObject.className()) ? new OwnInterface(object)
                                                                          : nullptr;
}

} // namespace

void tst_AccessibleTable::derivedViews()
{
    NamedView named;
    NamelessView nameless;
    QCOMPARE(interfaceOf(&named)->role(), QAccessible::Table);
    QCOMPARE(interfaceOf(&nameless)->role(), QAccessible::Table);
    named.setAccessibleName(QStringLiteral("Orders"));
    QCOMPARE(nameOf(interfaceOf(&named)), QStringLiteral("Orders"));
    QCOMPARE(tableOf(&named)->rowCount(), 0);
    QCOMPARE(tableOf(&named)->columnCount(), 0);
    QVERIFY(!tableOf(&named)->cellAt(0, 0));
}

void tst_AccessibleTable::derivedViewsOwnFactory()
{
    QTableFastView first; // our factory is there already
    QAccessible::installFactory(ownInterface);
    {
        NamedView named;
        QCOMPARE(interfaceOf(&named)->role(), QAccessible::Chart);
        QCOMPARE(interfaceOf(&first)->role(), QAccessible::Table);
    }
    QAccessible::removeFactory(ownInterface);
}

void tst_AccessibleTable::children()
{
    Both both;
    both.show();
    QAccessibleInterface *table = interfaceOf(&both.fast);
    QCOMPARE(table->childCount(), (s_rows + 1) * s_columns);
    for (int i = 0; i < table->childCount(); ++i) {
        QAccessibleInterface *child = table->child(i);
        QVERIFY(child && child->isValid());
        QCOMPARE(child->parent(), table);
        QCOMPARE(table->indexOfChild(child), i);
        QCOMPARE(child->role(), i < s_columns ? QAccessible::ColumnHeader : QAccessible::Cell);
    }
    QCOMPARE(nameOf(table->child(2)), QStringLiteral("Three"));
    QCOMPARE(nameOf(table->child(s_columns + 1)), QStringLiteral("0/1"));
    QVERIFY(!table->child(-1));
    QVERIFY(!table->child(table->childCount()));
    QCOMPARE(table->indexOfChild(interfaceOf(&both.qt)), -1);
    QCOMPARE(table->indexOfChild(tableOf(&both.qt)->cellAt(0, 0)), -1);
    QCOMPARE(table->indexOfChild(nullptr), -1);

    const QAccessibleInterface *title = table->child(1);
    both.fast.header()->hide();
    QCOMPARE(table->indexOfChild(title), -1);
    QCOMPARE(table->childCount(), s_rows * s_columns);
    QCOMPARE(nameOf(table->child(0)), QStringLiteral("0/0"));
    QCOMPARE(table->indexOfChild(table->child(5)), 5);
}

//! Models need not look whether there is such a cell.
void tst_AccessibleTable::cellsOutOfRange()
{
    struct Trusting : BigModel
    {
        using BigModel::BigModel;
        QModelIndex index(int row, int column, const QModelIndex &) const override
        {
            return createIndex(row, column);
        }
    } model(3);
    QTableFastView view;
    view.setModel(&model);
    const QAccessibleTableInterface *table = tableOf(&view);
    QVERIFY(table->cellAt(2, 4));
    QVERIFY(!table->cellAt(3, 0));
    QVERIFY(!table->cellAt(-1, 0));
    QVERIFY(!table->cellAt(0, 5));
    QVERIFY(!table->cellAt(0, -1));
}

void tst_AccessibleTable::childrenBeyondCounting()
{
    constexpr int rows = 1000000000;
    BigModel model(rows);
    QTableFastView view;
    view.setModel(&model);
    QAccessibleInterface *table = interfaceOf(&view);
    model.asked = 0;
    QCOMPARE(table->tableInterface()->rowCount(), rows);
    QCOMPARE(table->childCount(), std::numeric_limits<int>::max());
    QAccessibleInterface *last = table->tableInterface()->cellAt(rows - 1, 4);
    QVERIFY(last);
    QCOMPARE(nameOf(last), QLocale().toString(rows - 1));
    QCOMPARE(table->indexOfChild(last), -1);
    QCOMPARE(last->tableCellInterface()->rowIndex(), rows - 1);

    const int far = std::numeric_limits<int>::max() - 1;
    QAccessibleInterface *reachable = table->child(far);
    QVERIFY(reachable);
    QCOMPARE(reachable->tableCellInterface()->rowIndex(), far / 5 - 1);
    QCOMPARE(reachable->tableCellInterface()->columnIndex(), far % 5);
    QCOMPARE(table->indexOfChild(reachable), far);
    QVERIFY2(model.asked < 20, QByteArray::number(model.asked)); // no row was visited
}

void tst_AccessibleTable::manyRowsSelected()
{
    constexpr int rows = 1000000000;
    BigModel model(rows);
    QTableFastView view;
    view.setModel(&model);
    view.setSelectionMode(QAbstractItemView::ExtendedSelection);
    view.selectionModel()->select({model.index(0, 0), model.index(rows - 1, 4)}, Select::Select);
    const QAccessibleTableInterface *table = tableOf(&view);
    QCOMPARE(table->selectedRowCount(), rows);
    QCOMPARE(table->selectedCellCount(), std::numeric_limits<int>::max());
    QCOMPARE(table->selectedColumnCount(), 5);
    QVERIFY(table->isColumnSelected(4));
    QVERIFY(table->isRowSelected(rows - 1));
    QVERIFY(!table->isRowSelected(rows));
    const QList<int> listedRows = table->selectedRows();
    QVERIFY(!listedRows.isEmpty());
    QVERIFY(listedRows.size() < 100000);
    QCOMPARE(listedRows.last(), int(listedRows.size()) - 1);
    const QList<QAccessibleInterface *> cells = table->selectedCells();
    QVERIFY(cells.size() > 1000);
    QVERIFY(cells.size() < 100000);
    for (const QAccessibleInterface *cell : cells)
        QVERIFY(cell->isValid()); // none was dropped while the list was made
}

void tst_AccessibleTable::noModelOrHeader()
{
    QStandardItemModel model;
    fill(&model);
    QTableFastView view;
    QAccessibleInterface *table = interfaceOf(&view);
    QCOMPARE(table->childCount(), 0);
    QVERIFY(!table->child(0));
    QVERIFY(!table->focusChild());
    QVERIFY(!table->tableInterface()->selectRow(0));
    QCOMPARE(table->tableInterface()->selectedCellCount(), 0);
    QVERIFY(table->tableInterface()->rowDescription(0).isEmpty());
    view.setModel(&model);
    QCOMPARE(table->tableInterface()->columnCount(), s_columns);
    delete view.header();
    QCOMPARE(table->tableInterface()->columnCount(), 0);
    QVERIFY(!table->tableInterface()->cellAt(0, 0));
    QVERIFY(!table->childAt(0, 0));
}

// Columns

void tst_AccessibleTable::hiddenColumns()
{
    Both both;
    both.show();
    both.fast.hideColumn(1);
    QAccessibleInterface *table = interfaceOf(&both.fast);
    QCOMPARE(table->tableInterface()->columnCount(), s_columns - 1);
    QCOMPARE(table->childCount(), (s_rows + 1) * (s_columns - 1));
    QCOMPARE(nameOf(table->tableInterface()->cellAt(2, 1)), QStringLiteral("2/2"));
    QCOMPARE(table->tableInterface()->columnDescription(1), QStringLiteral("Three"));
    QVERIFY(!table->tableInterface()->cellAt(0, s_columns - 1));

    selectRange(&both.fast, 0, 0, 0, 2);
    QCOMPARE(table->tableInterface()->selectedCellCount(), 2);
    QVERIFY(!table->tableInterface()->isRowSelected(0));
    selectRange(&both.fast, 0, 3, 0, 3);
    QVERIFY(table->tableInterface()->isRowSelected(0));

    for (int column = 0; column < s_columns; ++column)
        both.fast.hideColumn(column);
    QCOMPARE(table->childCount(), 0);
    QVERIFY(!table->child(0));
    QVERIFY(!table->tableInterface()->isRowSelected(0));
    QVERIFY(!table->tableInterface()->selectRow(0));
}

void tst_AccessibleTable::movedColumns()
{
    Both both;
    both.show();
    both.fast.header()->moveSection(0, 3); // Two Three Four One
    const QAccessibleTableInterface *table = tableOf(&both.fast);
    QCOMPARE(nameOf(table->cellAt(2, 0)), QStringLiteral("2/1"));
    QCOMPARE(nameOf(table->cellAt(2, 3)), QStringLiteral("2/0"));
    QCOMPARE(table->cellAt(2, 3)->tableCellInterface()->columnIndex(), 3);
    QCOMPARE(table->columnDescription(0), QStringLiteral("Two"));
    QCOMPARE(nameOf(table->cellAt(1, 3)->tableCellInterface()->columnHeaderCells().value(0)),
             QStringLiteral("One"));
    int x = std::numeric_limits<int>::min();
    for (int column = 0; column < s_columns; ++column) {
        const QRect rect = table->cellAt(0, column)->rect();
        QVERIFY(rect.left() > x);
        x = rect.right();
    }
    selectRange(&both.fast, 0, 0, s_rows - 1, 0);
    QCOMPARE(table->selectedColumns(), QList<int> {3});
    QVERIFY(tableOf(&both.fast)->selectColumn(1));
    QVERIFY(both.fast.selectionModel()->isSelected(both.model.index(0, 2)));
}

void tst_AccessibleTable::rightToLeft()
{
    Both both;
    for (QAbstractItemView *view : both.views())
        view->setLayoutDirection(Qt::RightToLeft);
    both.show();
    QAccessibleInterface *table = interfaceOf(&both.fast);
    QVERIFY(table->child(s_columns)->rect().left() > table->child(s_columns + 1)->rect().right());
    QVERIFY(table->child(0)->rect().left() > table->child(1)->rect().right());
    for (int column = 0; column < s_columns; ++column) {
        const QRect rect = table->tableInterface()->cellAt(1, column)->rect();
        const QRect other = tableOf(&both.qt)->cellAt(1, column)->rect();
        QCOMPARE(rect.left() - both.fast.viewport()->mapToGlobal(QPoint(0, 0)).x(),
                 other.left() - both.qt.viewport()->mapToGlobal(QPoint(0, 0)).x());
        QCOMPARE(nameOf(table->childAt(rect.center().x(), rect.center().y())),
                 nameOf(table->tableInterface()->cellAt(1, column)));
    }
}

void tst_AccessibleTable::cellsUnderPixels()
{
    Both both;
    both.show();
    QAccessibleInterface *table = interfaceOf(&both.fast);
    for (int i = 0; i < table->childCount(); ++i) {
        const QRect rect = table->child(i)->rect();
        QVERIFY(!rect.isEmpty());
        QCOMPARE(table->childAt(rect.left(), rect.top()), table->child(i));
        QCOMPARE(table->childAt(rect.right(), rect.bottom()), table->child(i));
    }
    const QPoint below = both.fast.viewport()->mapToGlobal(QPoint(5, 370));
    QVERIFY(!table->childAt(below.x(), below.y()));
    const QPoint outside = both.fast.mapToGlobal(QPoint(-5, -5));
    QVERIFY(!table->childAt(outside.x(), outside.y()));
    both.fast.header()->hide();
    const QRect first = table->child(0)->rect();
    QCOMPARE(table->childAt(first.left(), first.top()), table->child(0));
}

void tst_AccessibleTable::titles()
{
    Both both;
    both.show();
    QAccessibleInterface *title = interfaceOf(&both.fast)->child(1);
    QCOMPARE(nameOf(title), QStringLiteral("Two"));
    QCOMPARE(title->text(QAccessible::Value), QString());
    both.model.setHeaderData(1, Qt::Horizontal, QStringLiteral("Second"), Qt::AccessibleTextRole);
    both.model.setHeaderData(1, Qt::Horizontal, QStringLiteral("of four"),
                             Qt::AccessibleDescriptionRole);
    QCOMPARE(nameOf(title), QStringLiteral("Second"));
    QCOMPARE(title->text(QAccessible::Description), QStringLiteral("of four"));
    const QRect rect = title->rect();
    QCOMPARE(rect.size(), QSize(91, both.fast.header()->viewport()->height()));
    QCOMPARE(rect.bottom() + 1, both.fast.viewport()->mapToGlobal(QPoint(0, 0)).y());
    QVERIFY(!title->state().invisible);
    QCOMPARE(title->childCount(), 0);
    QVERIFY(!title->child(0));
    QCOMPARE(interfaceOf(&both.fast)->child(1), title);

    both.fast.resize(150, 200);
    both.fast.scrollTo(both.model.index(0, 3));
    QVERIFY(interfaceOf(&both.fast)->child(0)->state().invisible);
    QVERIFY(!interfaceOf(&both.fast)->child(3)->state().invisible);
}

void tst_AccessibleTable::titlesSort()
{
    Both both;
    QAccessibleActionInterface *title = interfaceOf(&both.fast)->child(1)->actionInterface();
    QVERIFY(title);
    QVERIFY(title->actionNames().isEmpty());
    title->doAction(QAccessibleActionInterface::pressAction());
    QCOMPARE(both.model.item(0, 1)->text(), QStringLiteral("0/1"));
    both.fast.setSortingEnabled(true);
    both.fast.sortByColumn(0, Qt::AscendingOrder);
    title = interfaceOf(&both.fast)->child(1)->actionInterface();
    QCOMPARE(title->actionNames(), QStringList(QAccessibleActionInterface::pressAction()));
    title->doAction(QAccessibleActionInterface::pressAction());
    QCOMPARE(both.fast.header()->sortIndicatorSection(), 1);
    QCOMPARE(both.fast.header()->sortIndicatorOrder(), Qt::AscendingOrder);
    interfaceOf(&both.fast)
        ->child(1)
        ->actionInterface()
        ->doAction(QAccessibleActionInterface::pressAction());
    QCOMPARE(both.model.item(0, 1)->text(), QStringLiteral("5/1"));
}

// Texts

namespace {

class LoudDelegate : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;
    QString displayText(const QVariant &value, const QLocale &) const override
    {
        return value.toString().toUpper() + u'!';
    }
};

//! Writes nothing that can be asked for.
class PlainDelegate : public QAbstractItemDelegate
{
public:
    void paint(QPainter *, const QStyleOptionViewItem &, const QModelIndex &) const override { }
    QSize sizeHint(const QStyleOptionViewItem &, const QModelIndex &) const override
    {
        return {10, 10};
    }
};

} // namespace

void tst_AccessibleTable::names_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<QString>("delegate");
    QTest::addColumn<QString>("expected");
    const QLocale german(QLocale::German);
    const QDateTime time(QDate(2021, 3, 4), QTime(5, 6, 7));
    QTest::newRow("text") << QVariant(QStringLiteral("a text")) << QString()
                          << QStringLiteral("a text");
    QTest::newRow("lines") << QVariant(QStringLiteral("a\nb")) << QString()
                           << QStringLiteral("a\nb");
    QTest::newRow("nothing") << QVariant() << QString() << QString();
    QTest::newRow("number") << QVariant(1234567) << QString() << german.toString(1234567);
    QTest::newRow("fraction") << QVariant(0.25) << QString() << QStringLiteral("0,25");
    QTest::newRow("library's delegate")
        << QVariant(1234567) << QStringLiteral("ours") << german.toString(1234567);
    QTest::newRow("library's date-time") << QVariant(time) << QStringLiteral("ours")
                                         << QLocale().toString(time, QLocale::ShortFormat);
    QTest::newRow("own delegate") << QVariant(QStringLiteral("quiet")) << QStringLiteral("loud")
                                  << QStringLiteral("QUIET!");
    QTest::newRow("own delegate without a value")
        << QVariant() << QStringLiteral("loud") << QString();
    QTest::newRow("delegate without texts")
        << QVariant(12) << QStringLiteral("plain") << QStringLiteral("12");
}

void tst_AccessibleTable::names()
{
    QFETCH(QVariant, value);
    QFETCH(QString, delegate);
    QFETCH(QString, expected);
    QStandardItemModel model(2, 2);
    model.setData(model.index(1, 1), value, Qt::DisplayRole);
    QTableFastView view;
    view.setLocale(QLocale(QLocale::German));
    const LoudDelegate loud;
    PlainDelegate plain;
    Vantix::ItemDelegate ours(&view);
    if (delegate == QLatin1String("loud"))
        view.setItemDelegateForColumn(1, const_cast<LoudDelegate *>(&loud));
    else if (delegate == QLatin1String("plain"))
        view.setItemDelegateForColumn(1, &plain);
    else if (delegate == QLatin1String("ours"))
        view.setItemDelegate(&ours);
    view.setModel(&model);
    QCOMPARE(nameOf(tableOf(&view)->cellAt(1, 1)), expected);
    model.setData(model.index(1, 1), QStringLiteral("told"), Qt::AccessibleTextRole);
    QCOMPARE(nameOf(tableOf(&view)->cellAt(1, 1)), QStringLiteral("told"));
}

// Focus and states

void tst_AccessibleTable::focusChild()
{
    Both both;
    both.show();
    activate(&both.fast);
    both.fast.setFocus();
    both.fast.setCurrentIndex(both.model.index(2, 1));
    QAccessibleInterface *table = interfaceOf(&both.fast);
    QCOMPARE(nameOf(table->focusChild()), QStringLiteral("2/1"));
    QVERIFY(table->focusChild()->state().focused);
    QVERIFY(!table->tableInterface()->cellAt(2, 2)->state().focused);
    both.fast.hideColumn(1);
    QCOMPARE(nameOf(table->focusChild()), QStringLiteral("2/0"));
    both.fast.showColumn(1);
    both.fast.clearFocus();
    QVERIFY(!table->tableInterface()->cellAt(2, 1)->state().focused);
    QVERIFY(!table->focusChild() || table->focusChild()->role() != QAccessible::Cell);
}

void tst_AccessibleTable::stateOfEditing()
{
    Both both;
    const QAccessibleTableInterface *table = tableOf(&both.fast);
    QVERIFY(table->cellAt(0, 0)->state().editable);
    QVERIFY(!table->cellAt(2, 1)->state().editable);
    both.fast.setEditTriggers(QAbstractItemView::NoEditTriggers);
    QVERIFY(!table->cellAt(0, 0)->state().editable);
}

void tst_AccessibleTable::stateOfDisabled()
{
    Both both;
    both.show();
    both.model.item(0, 0)->setEnabled(false);
    const QAccessibleTableInterface *table = tableOf(&both.fast);
    QVERIFY(table->cellAt(0, 0)->state().disabled);
    QVERIFY(!table->cellAt(0, 0)->state().editable);
    QVERIFY(table->cellAt(0, 0)->actionInterface()->actionNames().isEmpty());
    QVERIFY(!table->cellAt(0, 1)->state().disabled);
    both.fast.setEnabled(false);
    QVERIFY(table->cellAt(0, 1)->state().disabled);
    QVERIFY(interfaceOf(&both.fast)->state().disabled);
}

void tst_AccessibleTable::stateOfMixed()
{
    Both both;
    both.model.item(1, 1)->setCheckState(Qt::PartiallyChecked);
    const QAccessible::State mixed = tableOf(&both.fast)->cellAt(1, 1)->state();
    QVERIFY(mixed.checkStateMixed);
    QVERIFY(!mixed.checked);
    QVERIFY(!tableOf(&both.fast)->cellAt(1, 2)->state().checkStateMixed);
}

// Actions

void tst_AccessibleTable::offers_data()
{
    QTest::addColumn<int>("row");
    QTest::addColumn<int>("column");
    QTest::addColumn<QStringList>("expected");
    const QString toggle = QAccessibleActionInterface::toggleAction();
    const QString focus = QAccessibleActionInterface::setFocusAction();
    const QString select = QStringLiteral("Select");
    const QString edit = QStringLiteral("Edit");
    QTest::newRow("a cell") << 0 << 0 << QStringList {select, edit, focus};
    QTest::newRow("checkable") << 1 << 1 << QStringList {select, edit, toggle, focus};
    QTest::newRow("checked, and not by the user") << 4 << 0 << QStringList {select, edit, focus};
    QTest::newRow("not selectable") << 2 << 0 << QStringList {edit, focus};
    QTest::newRow("not editable") << 2 << 1 << QStringList {select, focus};
}

void tst_AccessibleTable::offers()
{
    QFETCH(int, row);
    QFETCH(int, column);
    QFETCH(QStringList, expected);
    Both both;
    both.model.setData(both.model.index(4, 0), Qt::Checked, Qt::CheckStateRole);
    QAccessibleActionInterface *actions =
        tableOf(&both.fast)->cellAt(row, column)->actionInterface();
    QVERIFY(actions);
    QCOMPARE(actions->actionNames(), expected);
    for (const QString &name : expected) {
        QVERIFY(!actions->localizedActionName(name).isEmpty());
        if (name == QLatin1String("Edit") || name == QLatin1String("Select"))
            QCOMPARE(actions->localizedActionName(name), QTableFastView::tr(name.toLatin1()));
        QVERIFY(actions->keyBindingsForAction(name).isEmpty());
    }
    actions->doAction(QStringLiteral("Fly"));
}

void tst_AccessibleTable::selectAction()
{
    Both both;
    const auto select = [&](int row, int column) {
        tableOf(&both.fast)
            ->cellAt(row, column)
            ->actionInterface()
            ->doAction(QStringLiteral("Select"));
    };
    const auto selected = [&] { return both.fast.selectionModel()->selection().indexes().size(); };
    select(0, 0);
    select(3, 3);
    QCOMPARE(selected(), 2);
    both.fast.setSelectionMode(QAbstractItemView::SingleSelection);
    select(4, 3);
    QCOMPARE(selected(), 1);
    both.fast.setSelectionBehavior(QAbstractItemView::SelectRows);
    select(1, 1);
    QCOMPARE(selected(), s_columns);
    both.fast.setSelectionBehavior(QAbstractItemView::SelectColumns);
    select(1, 1);
    QCOMPARE(selected(), s_rows);
    both.fast.clearSelection();
    both.fast.setSelectionMode(QAbstractItemView::NoSelection);
    select(1, 1);
    QCOMPARE(selected(), 0);
}

void tst_AccessibleTable::editAction()
{
    Both both;
    both.show();
    activate(&both.fast);
    QAccessibleInterface *cell = tableOf(&both.fast)->cellAt(3, 3);
    cell->actionInterface()->doAction(QStringLiteral("Edit"));
    QCOMPARE(both.fast.currentIndex(), both.model.index(3, 3));
    auto *editor = both.fast.viewport()->findChild<QLineEdit *>();
    QVERIFY(editor);
    QCOMPARE(editor->text(), QStringLiteral("3/3"));
    QCOMPARE(interfaceOf(editor)->role(), QAccessible::EditableText);
    QCOMPARE(cell->state().focused, both.fast.hasFocus());
    const QAccessibleInterface *focused = interfaceOf(&both.fast)->focusChild();
    QVERIFY(focused && focused->object() == editor);
}

void tst_AccessibleTable::toggleAction_data()
{
    QTest::addColumn<bool>("hasDelegateOfTheLibrary");
    QTest::newRow("Qt's delegate") << false;
    QTest::newRow("the library's") << true;
}

void tst_AccessibleTable::toggleAction()
{
    QFETCH(bool, hasDelegateOfTheLibrary);
    Both both;
    Vantix::ItemDelegate delegate(&both.fast);
    delegate.setDrawIndicator(true);
    if (hasDelegateOfTheLibrary)
        both.fast.setItemDelegate(&delegate);
    QAccessibleActionInterface *actions = tableOf(&both.fast)->cellAt(1, 1)->actionInterface();
    actions->doAction(QAccessibleActionInterface::toggleAction());
    QCOMPARE(both.model.item(1, 1)->checkState(), Qt::Checked);
    QVERIFY(tableOf(&both.fast)->cellAt(1, 1)->state().checked);
    actions->doAction(QAccessibleActionInterface::toggleAction());
    QCOMPARE(both.model.item(1, 1)->checkState(), Qt::Unchecked);
    tableOf(&both.fast)
        ->cellAt(0, 0)
        ->actionInterface()
        ->doAction(QAccessibleActionInterface::toggleAction());
    QVERIFY(!both.model.item(0, 0)->data(Qt::CheckStateRole).isValid());
}

void tst_AccessibleTable::toggleIsTheDelegates()
{
    struct Stubborn : QStyledItemDelegate
    {
        bool editorEvent(QEvent *, QAbstractItemModel *, const QStyleOptionViewItem &,
                         const QModelIndex &) override
        {
            return true;
        }
    } stubborn;
    Both both;
    both.fast.setItemDelegate(&stubborn);
    tableOf(&both.fast)
        ->cellAt(1, 1)
        ->actionInterface()
        ->doAction(QAccessibleActionInterface::toggleAction());
    QCOMPARE(both.model.item(1, 1)->checkState(), Qt::Unchecked);
}

void tst_AccessibleTable::focusAction()
{
    Both both;
    both.show();
    activate(&both.fast);
    both.fast.clearFocus();
    tableOf(&both.fast)
        ->cellAt(4, 2)
        ->actionInterface()
        ->doAction(QAccessibleActionInterface::setFocusAction());
    QCOMPARE(both.fast.currentIndex(), both.model.index(4, 2));
    QVERIFY(both.fast.hasFocus());
}

void tst_AccessibleTable::setText()
{
    Both both;
    const QAccessibleTableInterface *table = tableOf(&both.fast);
    table->cellAt(0, 0)->setText(QAccessible::Name, QStringLiteral("new"));
    QCOMPARE(both.model.item(0, 0)->text(), QStringLiteral("new"));
    table->cellAt(0, 0)->setText(QAccessible::Value, QStringLiteral("newer"));
    QCOMPARE(both.model.item(0, 0)->text(), QStringLiteral("newer"));
    table->cellAt(0, 0)->setText(QAccessible::Description, QStringLiteral("other"));
    QCOMPARE(both.model.item(0, 0)->text(), QStringLiteral("newer"));
    table->cellAt(2, 1)->setText(QAccessible::Name, QStringLiteral("new"));
    QCOMPARE(both.model.item(2, 1)->text(), QStringLiteral("2/1"));
}

// Changes of the model

void tst_AccessibleTable::cellsFollowRows()
{
    Both both;
    QAccessibleInterface *cell = tableOf(&both.fast)->cellAt(2, 1);
    both.model.insertRows(0, 3);
    QVERIFY(cell->isValid());
    QCOMPARE(cell->tableCellInterface()->rowIndex(), 5);
    QCOMPARE(nameOf(cell), QStringLiteral("2/1"));
    QCOMPARE(tableOf(&both.fast)->cellAt(5, 1), cell);
    QVERIFY(tableOf(&both.fast)->cellAt(2, 1) != cell);
    both.model.insertRows(7, 2);
    QCOMPARE(cell->tableCellInterface()->rowIndex(), 5);
    both.model.removeRows(0, 4);
    QCOMPARE(cell->tableCellInterface()->rowIndex(), 1);
    QCOMPARE(interfaceOf(&both.fast)->indexOfChild(cell), 2 * s_columns + 1);
    both.model.removeRows(4, 1);
    QCOMPARE(tableOf(&both.fast)->cellAt(1, 1), cell);
}

void tst_AccessibleTable::cellsOfRemovedRows()
{
    Both both;
    const QAccessible::Id gone = QAccessible::uniqueId(tableOf(&both.fast)->cellAt(2, 1));
    const QAccessible::Id kept = QAccessible::uniqueId(tableOf(&both.fast)->cellAt(4, 1));
    both.model.removeRows(1, 2);
    QVERIFY(!QAccessible::accessibleInterface(gone));
    QVERIFY(QAccessible::accessibleInterface(kept));
    QCOMPARE(nameOf(tableOf(&both.fast)->cellAt(1, 1)), QStringLiteral("spoken"));
}

void tst_AccessibleTable::cellsAfterReset()
{
    BigModel model(10);
    QTableFastView view;
    view.setModel(&model);
    QAccessible::Id id = QAccessible::uniqueId(tableOf(&view)->cellAt(2, 1));
    model.restart(20);
    QVERIFY(!QAccessible::accessibleInterface(id));
    QCOMPARE(tableOf(&view)->rowCount(), 20);
    id = QAccessible::uniqueId(tableOf(&view)->cellAt(15, 1));
    model.relayout(QAbstractItemModel::VerticalSortHint);
    QVERIFY(!QAccessible::accessibleInterface(id));
    id = QAccessible::uniqueId(tableOf(&view)->cellAt(15, 1));
    BigModel other(3);
    view.setModel(&other);
    QVERIFY(!QAccessible::accessibleInterface(id));
    QVERIFY(!tableOf(&view)->cellAt(15, 1));
    QVERIFY(tableOf(&view)->cellAt(2, 1));
}

//! Titles are kept by the numbers of their columns.
void tst_AccessibleTable::cellsOfColumns()
{
    Both both;
    QAccessibleInterface *table = interfaceOf(&both.fast);
    const QAccessible::Id title = QAccessible::uniqueId(table->child(2));
    const QAccessible::Id cell = QAccessible::uniqueId(table->tableInterface()->cellAt(1, 2));
    both.model.insertColumn(1);
    QVERIFY(!QAccessible::accessibleInterface(title));
    QVERIFY(!QAccessible::accessibleInterface(cell));
    QCOMPARE(nameOf(table->child(3)), QStringLiteral("Three"));
    QCOMPARE(table->tableInterface()->columnCount(), s_columns + 1);
    QAccessibleInterface *last = table->child(4);
    both.model.removeColumn(0);
    QVERIFY(!QAccessible::accessibleInterface(title));
    QVERIFY(last != nullptr);
    QCOMPARE(nameOf(table->child(3)), QStringLiteral("Four"));
}

void tst_AccessibleTable::cellsAreBounded()
{
    BigModel model(100000, 1);
    QTableFastView view;
    view.setModel(&model);
    QList<QAccessible::Id> ids;
    const auto alive = [&] {
        return std::count_if(ids.begin(), ids.end(), [](QAccessible::Id id) {
            return QAccessible::accessibleInterface(id) != nullptr;
        });
    };
    for (int row = 0; row < 20000; ++row)
        ids.append(QAccessible::uniqueId(tableOf(&view)->cellAt(row, 0)));
    QCOMPARE(alive(), 20000); // whoever holds one still may
    tableOf(&view)->cellAt(0, 0);
    QCoreApplication::processEvents();
    QVERIFY(alive() <= 4096);
    QVERIFY(QAccessible::accessibleInterface(ids.first())); // asked for last
    QVERIFY(QAccessible::accessibleInterface(ids.last()));
    QVERIFY(!QAccessible::accessibleInterface(ids.at(1)));
    QCOMPARE(nameOf(tableOf(&view)->cellAt(1, 0)), QLocale().toString(1));
    QCOMPARE(tableOf(&view)->cellAt(19999, 0), QAccessible::accessibleInterface(ids.last()));
    for (int row = 20000; row < 40000; ++row)
        ids.append(QAccessible::uniqueId(tableOf(&view)->cellAt(row, 0)));
    QCoreApplication::processEvents();
    QVERIFY(alive() <= 4096);
    QCOMPARE(tableOf(&view)->cellAt(39999, 0), QAccessible::accessibleInterface(ids.last()));
}

// Events

void tst_AccessibleTable::tellsFocusOnEntering()
{
    Both both;
    both.show();
    activate(&both.fast);
    both.fast.setCurrentIndex(both.model.index(3, 2));
    both.fast.clearFocus();
    interfaceOf(&both.fast);
    QCoreApplication::processEvents();
    m_reader->heard();
    both.fast.setFocus();
    QStringList heard;
    QTRY_VERIFY((heard += m_reader->heard()).contains(QStringLiteral("focus 3,2")));
    QVERIFY(heard.contains(QStringLiteral("focus role 18")));
    // The cell last: what is told last has the focus.
    QVERIFY(heard.lastIndexOf(QStringLiteral("focus 3,2"))
            > heard.lastIndexOf(QStringLiteral("focus role 18")));
}

void tst_AccessibleTable::tellsFocusInHiddenColumn()
{
    Both both;
    both.show();
    activate(&both.fast);
    both.fast.setFocus();
    both.fast.hideColumn(1);
    interfaceOf(&both.fast);
    QCoreApplication::processEvents();
    m_reader->heard();
    both.fast.setCurrentIndex(both.model.index(3, 1));
    QVERIFY(m_reader->heard().contains(QStringLiteral("focus 3,0")));
    both.fast.clearFocus();
    QCoreApplication::processEvents();
    m_reader->heard();
    both.fast.setCurrentIndex(both.model.index(4, 2));
    QVERIFY(m_reader->heard().filter(QStringLiteral("focus")).isEmpty());
}

void tst_AccessibleTable::tellsDataOfCurrent()
{
    Both both;
    both.fast.setCurrentIndex(both.model.index(1, 1));
    tableOf(&both.fast)->cellAt(1, 1);
    tableOf(&both.fast)->cellAt(1, 2);
    m_reader->heard();
    both.model.item(1, 1)->setText(QStringLiteral("new"));
    QVERIFY(m_reader->heard().contains(QStringLiteral("name 1,1")));
    both.model.item(1, 2)->setText(QStringLiteral("new"));
    QCOMPARE(m_reader->heard().filter(QStringLiteral("name")), QStringList());
    both.model.item(1, 1)->setCheckState(Qt::Checked);
    const QStringList heard = m_reader->heard();
    QVERIFY(heard.contains(QStringLiteral("state 1,1 checked")));
    QVERIFY(!heard.contains(QStringLiteral("name 1,1")));
}

void tst_AccessibleTable::tellsColumns()
{
    Both both;
    interfaceOf(&both.fast);
    const QString reset = QStringLiteral("model role 18 0: -1--1, -1--1");
    m_reader->heard();
    both.fast.hideColumn(2);
    QVERIFY(m_reader->heard().contains(reset));
    both.fast.showColumn(2);
    QVERIFY(m_reader->heard().contains(reset));
    both.fast.header()->moveSection(0, 1);
    QVERIFY(m_reader->heard().contains(reset));
    both.fast.setColumnWidth(1, 200);
    QVERIFY(m_reader->heard().isEmpty());
}

void tst_AccessibleTable::tellsLargeSelections()
{
    Both both;
    interfaceOf(&both.fast);
    m_reader->heard();
    selectRange(&both.fast, 1, 1, 2, 2);
    QCOMPARE(m_reader->heard(),
             (QStringList {QStringLiteral("selected 1,1"), QStringLiteral("selection role 18")}));
    selectRange(&both.fast, 5, 0, 5, 2);
    QCOMPARE(m_reader->heard(), QStringList {QStringLiteral("selected 5,0")});
    both.fast.clearSelection();
    QVERIFY(m_reader->heard().contains(QStringLiteral("selection role 18")));
}

void tst_AccessibleTable::tellsOfNewSelectionModel()
{
    Both both;
    both.show();
    activate(&both.fast);
    both.fast.setFocus();
    interfaceOf(&both.fast);
    QItemSelectionModel *former = both.fast.selectionModel();
    QItemSelectionModel other(&both.model);
    both.fast.setSelectionModel(&other);
    QCoreApplication::processEvents();
    m_reader->heard();
    other.setCurrentIndex(both.model.index(2, 3), Select::Select);
    QVERIFY(m_reader->heard().contains(QStringLiteral("focus 2,3")));
    former->setCurrentIndex(both.model.index(1, 1), Select::Select);
    QVERIFY(m_reader->heard().isEmpty());
}

void tst_AccessibleTable::tellsOfNewHeader()
{
    Both both;
    interfaceOf(&both.fast)->child(0);
    auto *header = new QHeaderView(Qt::Horizontal);
    m_reader->heard();
    both.fast.setHeader(header);
    QVERIFY(m_reader->heard().contains(QStringLiteral("model role 18 0: -1--1, -1--1")));
    header->hideSection(0);
    QVERIFY(!m_reader->heard().isEmpty());
    QCOMPARE(nameOf(interfaceOf(&both.fast)->child(0)), QStringLiteral("Two"));
}

// Who is destroyed

void tst_AccessibleTable::modelDestroyed()
{
    auto model = std::make_unique<QStandardItemModel>();
    fill(model.get());
    QTableFastView view;
    view.setModel(model.get());
    view.show();
    QAccessibleInterface *table = interfaceOf(&view);
    const QAccessible::Id id = QAccessible::uniqueId(table->tableInterface()->cellAt(1, 1));
    model.reset();
    QAccessibleInterface *cell = QAccessible::accessibleInterface(id);
    if (cell) {
        QVERIFY(!cell->isValid());
        QVERIFY(cell->state().invalid);
        QVERIFY(cell->rect().isNull());
        QVERIFY(nameOf(cell).isEmpty());
        QVERIFY(cell->actionInterface()->actionNames().isEmpty());
        QCOMPARE(table->indexOfChild(cell), -1);
    }
    QCOMPARE(table->tableInterface()->rowCount(), 0);
    QVERIFY(!table->tableInterface()->cellAt(1, 1));
    QCOMPARE(table->tableInterface()->selectedRowCount(), 0);
}

void tst_AccessibleTable::viewDestroyed()
{
    QStandardItemModel model;
    fill(&model);
    auto view = std::make_unique<QTableFastView>();
    view->setModel(&model);
    view->show();
    activate(view.get());
    view->setCurrentIndex(model.index(1, 1));
    QAccessibleInterface *table = interfaceOf(view.get());
    const QList<QAccessible::Id> ids {QAccessible::uniqueId(table),
                                      QAccessible::uniqueId(table->child(0)),
                                      QAccessible::uniqueId(table->tableInterface()->cellAt(1, 1))};
    view.reset();
    m_reader->heard();
    for (const QAccessible::Id id : ids)
        QVERIFY(!QAccessible::accessibleInterface(id));
    model.item(1, 1)->setText(QStringLiteral("new")); // nobody listens
    QVERIFY(m_reader->heard().isEmpty());
}

namespace {

//! Tells how many listen.
template<typename Base> struct Listened : Base
{
    using Base::Base;
    using Base::receivers;
};

int listeners(const Listened<QStandardItemModel> &model,
              const Listened<QItemSelectionModel> &selection, const Listened<QHeaderView> &header)
{
    return model.receivers(SIGNAL(dataChanged(QModelIndex, QModelIndex, QList<int>)))
        + selection.receivers(SIGNAL(currentChanged(QModelIndex, QModelIndex)))
        + selection.receivers(SIGNAL(selectionChanged(QItemSelection, QItemSelection)))
        + header.receivers(SIGNAL(sectionMoved(int, int, int)))
        + header.receivers(SIGNAL(sectionResized(int, int, int)));
}

} // namespace

//! A view that nobody hears does nothing for it, also when somebody has been there.
void tst_AccessibleTable::asleep()
{
    ScreenReader::setListening(false);
    Listened<QStandardItemModel> model;
    fill(&model);
    QTableFastView view;
    view.setModel(&model);
    Listened<QItemSelectionModel> selection(&model);
    view.setSelectionModel(&selection);
    auto *header = new Listened<QHeaderView>(Qt::Horizontal);
    view.setHeader(header);
    view.show();
    activate(&view);
    const int unheard = listeners(model, selection, *header);
    const auto use = [&] {
        view.setFocus();
        view.setCurrentIndex(model.index(1, 1));
        view.selectAll();
        model.insertRows(0, 2);
        model.removeRows(3, 1);
        model.setData(model.index(0, 0), QStringLiteral("new"));
        view.hideColumn(0);
        view.showColumn(0);
        view.clearSelection();
        view.clearFocus();
        QCoreApplication::processEvents();
        return m_reader->heard();
    };
    use();
    interfaceOf(&view)->child(0);
    QCOMPARE(listeners(model, selection, *header), unheard);
    QCOMPARE(use(), QStringList());

    ScreenReader::setListening(true);
    QCOMPARE(listeners(model, selection, *header), unheard + 5);
    QVERIFY(use().size() > 5);
    const QAccessible::Id cell = QAccessible::uniqueId(tableOf(&view)->cellAt(0, 0));
    ScreenReader::setListening(false);
    QCOMPARE(listeners(model, selection, *header), unheard);
    QVERIFY(!QAccessible::accessibleInterface(cell));
    QCOMPARE(use(), QStringList());
}

QTEST_MAIN(tst_AccessibleTable)

#include "tst_accessibletable.moc"
