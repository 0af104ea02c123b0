// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "data/datastate.h"
#include "data/datawindow.h"
#include "data/opendata.h"
#include "datatables.h"
#include "search/findpanel.h"
#include "windows/columnsort.h"
#include "windows/detailpane.h"
#include "windows/filterbar.h"
#include "windows/framestatistics.h"
#include "windows/rowexport.h"
#include "windows/selectionsums.h"
#include "windows/viewertable.h"

#include <QComboBox>
#include <QFile>
#include <QHeaderView>
#include <QItemSelectionModel>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPlainTextEdit>
#include <QScrollBar>
#include <QSignalSpy>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

class tst_DataWindow : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();
    void opensDatabasesOnly();
    void showsRowsWhereItScrolls();
    void choosesAmongTables();
    void sortsByTheHeader();
    void filtersByThePanel();
    void filtersByTheCell();
    void tellsWhatIsRefused();
    void findsByThePanel();
    void addsUpAColumn();
    void addsUpSelectedRows();
    void copiesRowsThatWereNotThere();
    void writesAllRows();
    void showsJsonInTheRowPane();
    void followsNewRows();
    void keepsRowsInViewAsOthersGo();
    void tellsThatThereIsNoTable();
    void showsWhatWasShown();
    void restoresWhatIsStillThere();
    void keepsWhatIsNotThereYet();

private:
    std::unique_ptr<DataWindow> open(const QString &table = {});
    void settle(DataWindow *window);
    QString labelText(const DataWindow &window, const char *name);

    FrameStatistics m_statistics;
    std::unique_ptr<QTemporaryDir> m_folder; //!< one per test
    QString m_path;                          //!< of the database
    std::unique_ptr<Writer> m_writer;
};

void tst_DataWindow::initTestCase()
{
    QStandardPaths::setTestModeEnabled(true);
    if (!QSqlDatabase::isDriverAvailable("QSQLITE"))
        QSKIP("Qt's driver for SQLite is not installed.");
}

void tst_DataWindow::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    m_path = m_folder->filePath("data.sqlite");
    m_writer = std::make_unique<Writer>(m_path);
    m_writer->run("PRAGMA journal_mode = WAL");
    m_writer->run("CREATE TABLE t (id INTEGER PRIMARY KEY, name TEXT, price REAL)");
    m_writer->run("WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < "
                  "20000) INSERT INTO t SELECT i, 'name ' || i, i / 4.0 FROM n");
    m_writer->run("CREATE TABLE u (a)");
    m_writer->run("INSERT INTO u VALUES ('{\"x\": [1, 2]}')");
}

void tst_DataWindow::cleanup()
{
    m_writer.reset();
}

std::unique_ptr<DataWindow> tst_DataWindow::open(const QString &table)
{
    DataSource source;
    source.database = m_path;
    source.table = table;
    auto window = std::make_unique<DataWindow>(source, &m_statistics);
    window->model()->setPollTime(20);
    window->resize(700, 500);
    window->show();
    settle(window.get());
    return window;
}

//! Until what is on the screen is known.
void tst_DataWindow::settle(DataWindow *window)
{
    const auto isSettled = [&] {
        const int first = qMax(0, window->table()->firstSeenRow());
        return window->hasFailed()
            || (window->isSettled() && window->model()->isIdle()
                && (window->rows() == 0 || window->model()->isLoaded(first)));
    };
    QTRY_VERIFY_WITH_TIMEOUT(isSettled(), 30000);
}

QString tst_DataWindow::labelText(const DataWindow &window, const char *name)
{
    return window.findChild<QLabel *>(name)->text();
}

void tst_DataWindow::opensDatabasesOnly()
{
    QVERIFY(!openData(m_folder->filePath("none"), {}, &m_statistics));
    QFile text(m_folder->filePath("text"));
    QVERIFY(text.open(QIODevice::WriteOnly));
    text.write("a line\n");
    text.close();
    QVERIFY(!openData(text.fileName(), {}, &m_statistics));
    const auto window = openData(m_path, {"u", {}, {}}, &m_statistics);
    auto *data = qobject_cast<DataWindow *>(window.get());
    QVERIFY(data);
    settle(data);
    QCOMPARE(data->model()->source().table, QString("u"));
    QVERIFY(!data->hasFailed());
    QVERIFY(canOpenData());
}

void tst_DataWindow::showsRowsWhereItScrolls()
{
    const auto window = open();
    QCOMPARE(window->rows(), 20000);
    QVERIFY(window->windowTitle().startsWith("t "));
    QCOMPARE(window->table()->firstSeenRow(), 0);
    window->table()->verticalScrollBar()->setValue(10000);
    const int first = window->table()->firstSeenRow();
    QCOMPARE(first, 10000);
    QTRY_VERIFY(window->model()->isLoaded(first));
    QCOMPARE(shownRow(*window->model(), first), QString("10001|name 10001|2500.25"));
    QVERIFY(!labelText(*window, "rowsLabel").isEmpty());
    QVERIFY(!labelText(*window, "memoryLabel").isEmpty());
}

void tst_DataWindow::choosesAmongTables()
{
    const auto window = open();
    auto *box = window->findChild<QComboBox *>("tableBox");
    QCOMPARE(box->count(), 2);
    QCOMPARE(box->currentText(), QString("t"));
    box->setCurrentText("u");
    Q_EMIT box->textActivated("u");
    settle(window.get());
    QCOMPARE(window->rows(), 1);
    QCOMPARE(window->model()->columnCount(), 1);
    QCOMPARE(box->currentText(), QString("u"));
}

void tst_DataWindow::sortsByTheHeader()
{
    const auto window = open();
    QHeaderView *header = window->table()->header();
    auto *sort = window->findChild<ColumnSort *>();
    Q_EMIT header->sectionClicked(2);
    settle(window.get());
    QCOMPARE(window->model()->order(), (DataOrder {2, false}));
    Q_EMIT header->sectionClicked(2);
    settle(window.get());
    QCOMPARE(window->model()->order(), (DataOrder {2, true}));
    QCOMPARE(shownRow(*window->model(), 0), QString("20000|name 20000|5000.0"));
    QVERIFY(header->isSortIndicatorShown());
    QCOMPARE(header->sortIndicatorSection(), 2);
    QVERIFY(!sort->label()->isHidden());
    Q_EMIT header->sectionClicked(2);
    settle(window.get());
    QCOMPARE(window->model()->order(), DataOrder());
    QVERIFY(sort->label()->isHidden());
}

void tst_DataWindow::filtersByThePanel()
{
    const auto window = open();
    auto *bar = window->findChild<FilterBar *>();
    auto *panel = window->findChild<FindPanel *>();
    QVERIFY(bar->isHidden());
    window->openFindWith("NAME 1999");
    panel->toggleFilter();
    settle(window.get());
    QCOMPARE(window->rows(), 11);
    QVERIFY(!bar->isHidden());
    QVERIFY(bar->text().contains("NAME 1999"));
    QVERIFY(panel->hasFilter());
    panel->removeFilter();
    settle(window.get());
    QCOMPARE(window->rows(), 20000);
    QVERIFY(bar->isHidden());
}

void tst_DataWindow::filtersByTheCell()
{
    const auto window = open();
    window->filterMore({2, DataCondition::Is::AtMost, "1.75", true});
    settle(window.get());
    QCOMPARE(window->rows(), 7);
    window->filterMore({1, DataCondition::Is::NotEqual, "name 3", false});
    settle(window.get());
    QCOMPARE(window->rows(), 6);
    auto *bar = window->findChild<FilterBar *>();
    QVERIFY(bar->text().contains(QStringLiteral("price ≤ 1.75 · name ≠ name 3")));
    // The menu has what the cell has.
    Q_EMIT window->table()->customContextMenuRequested(QPoint(30, 5));
    QStringList texts;
    const QList<QMenu *> menus = window->findChildren<QMenu *>();
    for (const QMenu *menu : menus) {
        for (const QAction *action : menu->actions())
            texts << action->text();
    }
    QVERIFY(texts.contains("id = 1") || texts.contains("name = name 1"));
}

void tst_DataWindow::tellsWhatIsRefused()
{
    const auto window = open();
    window->filterWhere("id % 2 = 0 AND name LIKE '%00'");
    settle(window.get());
    QCOMPARE(window->rows(), 200);
    window->filterWhere("colour = 'red'");
    const auto *refusal = window->findChild<QLabel *>("refusalLabel");
    QTRY_VERIFY(refusal->text().contains("colour"));
    QVERIFY(!refusal->isHidden());
    settle(window.get());
    QCOMPARE(window->rows(), 200); // as before
    window->filterWhere({});
    settle(window.get());
    QCOMPARE(window->rows(), 20000);
    QVERIFY(refusal->isHidden());
}

void tst_DataWindow::findsByThePanel()
{
    const auto window = open();
    auto *panel = window->findChild<FindPanel *>();
    window->openFindWith("name 15000");
    panel->findNext();
    QTRY_COMPARE(window->table()->currentIndex().row(), 14999);
    settle(window.get());
    QCOMPARE(shownRow(*window->model(), 14999), QString("15000|name 15000|3750.0"));
}

void tst_DataWindow::addsUpAColumn()
{
    const auto window = open();
    window->filterWhere("id <= 4");
    settle(window.get());
    window->sumColumn(2);
    QTRY_VERIFY(labelText(*window, "columnSumsLabel").contains("2.5"));
    window->sumColumn(1);
    QTRY_VERIFY(!labelText(*window, "columnSumsLabel").contains("2.5"));
}

void tst_DataWindow::addsUpSelectedRows()
{
    const auto window = open();
    ViewerTable *table = window->table();
    const QModelIndex from = table->model()->index(9000, 0);
    table->selectionModel()->setCurrentIndex(from, QItemSelectionModel::NoUpdate);
    table->selectionModel()->select(QItemSelection(from, table->model()->index(9999, 0)),
                                    QItemSelectionModel::ClearAndSelect
                                        | QItemSelectionModel::Rows);
    // From 9001 to 10000, few of which were there.
    QTRY_VERIFY(window->sums()->text().contains("9500500"));
}

void tst_DataWindow::copiesRowsThatWereNotThere()
{
    const auto window = open();
    ViewerTable *table = window->table();
    QVERIFY(!window->model()->isLoaded(12345));
    table->selectionModel()->select(table->model()->index(12345, 0),
                                    QItemSelectionModel::ClearAndSelect
                                        | QItemSelectionModel::Rows);
    QCOMPARE(window->selectedText(), QString("12346\tname 12346\t3086.5"));
}

void tst_DataWindow::writesAllRows()
{
    const auto window = open();
    const QString path = m_folder->filePath("rows.csv");
    RowExport rows(window->model(), {0, 1}, RowFormat::Csv, path);
    QSignalSpy finished(&rows, &RowExport::finished);
    rows.start();
    QTRY_COMPARE_WITH_TIMEOUT(finished.size(), 1, 30000);
    QCOMPARE(rows.error(), QString());
    QFile file(path);
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QList<QByteArray> lines = file.readAll().split('\n');
    QCOMPARE(lines.size(), 20002);
    QCOMPARE(lines.at(20000), QByteArray("20000,name 20000\r"));
    QCOMPARE(lines.at(11111), QByteArray("11111,name 11111\r"));
}

void tst_DataWindow::showsJsonInTheRowPane()
{
    const auto window = open("u");
    window->rowPane()->show();
    window->showLine(1);
    const auto *text = window->rowPane()->findChild<QPlainTextEdit *>();
    QTRY_VERIFY(text->toPlainText().contains("\"x\": ["));
    QVERIFY(text->toPlainText().contains(u'\n')); // indented
}

void tst_DataWindow::followsNewRows()
{
    const auto window = open();
    window->setFollowing(true);
    const QScrollBar *bar = window->table()->verticalScrollBar();
    QTRY_COMPARE(bar->value(), bar->maximum());
    settle(window.get());
    m_writer->run("INSERT INTO t (name) VALUES ('newest')");
    QTRY_COMPARE(window->rows(), 20001);
    QTRY_COMPARE(bar->value(), bar->maximum());
    QTRY_VERIFY(window->model()->isLoaded(20000));
    QCOMPARE(shownRow(*window->model(), 20000), QString("20001|newest|NULL"));
}

void tst_DataWindow::keepsRowsInViewAsOthersGo()
{
    const auto window = open();
    ViewerTable *table = window->table();
    table->verticalScrollBar()->setValue(15000);
    QTRY_VERIFY(window->model()->isLoaded(15000));
    settle(window.get());
    m_writer->run("DELETE FROM t WHERE id BETWEEN 100 AND 599");
    QTRY_COMPARE(window->rows(), 19500);
    settle(window.get());
    QCOMPARE(table->firstSeenRow(), 14500);
    QCOMPARE(shownRow(*window->model(), 14500), QString("15001|name 15001|3750.25"));
}

void tst_DataWindow::tellsThatThereIsNoTable()
{
    const auto window = open("nothing");
    QVERIFY(window->hasFailed());
    QVERIFY(window->isSettled());
    bool isTold = false;
    const QList<QLabel *> labels = window->findChildren<QLabel *>();
    for (const QLabel *label : labels)
        isTold = isTold || (label->isVisible() && label->text().contains("nothing"));
    QVERIFY(isTold);
}

void tst_DataWindow::showsWhatWasShown()
{
    PageState state;
    QStringList shown;
    {
        const auto window = open("t");
        Q_EMIT window->table()->header()->sectionClicked(2);
        Q_EMIT window->table()->header()->sectionClicked(2);
        window->filterMore({2, DataCondition::Is::AtMost, "1000", true});
        window->filterWhere("id % 2 = 0");
        window->openFindWith("NAME 19");
        window->findChild<FindPanel *>()->toggleFilter();
        settle(window.get());
        state = window->state();
        shown = {shownRow(*window->model(), 0), QString::number(window->rows())};
    }
    QCOMPARE(shown.first(), QString("1998|name 1998|499.5"));
    QCOMPARE(state.path, m_path);
    const auto window = open("u");
    window->restore(state);
    settle(window.get());
    QTRY_COMPARE(window->model()->order(), (DataOrder {2, true}));
    settle(window.get());
    QCOMPARE(window->model()->source().table, QString("t"));
    QCOMPARE(QStringList({shownRow(*window->model(), 0), QString::number(window->rows())}), shown);
    QCOMPARE(window->findChild<QLineEdit *>("whereField")->text(), QString("id % 2 = 0"));
    QCOMPARE(window->table()->header()->sortIndicatorSection(), 2);
    QCOMPARE(window->state().own, state.own);
    window->showTableNamed("u");
    settle(window.get());
    QVERIFY(window->model()->filter().isEmpty());
}

//! Columns have come and gone meanwhile, and one that a condition is about.
void tst_DataWindow::restoresWhatIsStillThere()
{
    PageState state;
    {
        const auto window = open("t");
        Q_EMIT window->table()->header()->sectionClicked(1);
        window->filterMore({2, DataCondition::Is::AtMost, "1000", true});
        window->filterMore({0, DataCondition::Is::AtLeast, "19991", true});
        window->filterMore({0, DataCondition::Is::AtMost, "19995", true});
        settle(window.get());
        window->filterWhere("price > 0");
        settle(window.get());
        state = window->state();
    }
    m_writer->run("DROP TABLE t");
    m_writer->run("CREATE TABLE t (more TEXT, id INTEGER PRIMARY KEY, name TEXT)");
    m_writer->run("WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < "
                  "20000) INSERT INTO t SELECT '', i, 'name ' || i FROM n");
    const auto window = open("t");
    window->restore(state);
    settle(window.get());
    QTRY_COMPARE(window->model()->order(), (DataOrder {2, false}));
    settle(window.get());
    QTRY_VERIFY(!window->findChild<QLabel *>("refusalLabel")->text().isEmpty()); // no price
    settle(window.get());
    QVERIFY(!window->hasFailed());
    QVERIFY(window->model()->filter().where.isEmpty());
}

void tst_DataWindow::keepsWhatIsNotThereYet()
{
    DataSource source;
    source.engine = DataEngine::PostgreSql;
    source.host = m_folder->path();
    source.database = "nowhere";
    source.user = "me";
    source.password = "secret";
    PageState state;
    state.own = DataState::of({{}, {}, {}, 0, {}, {}, "prices", {}, {"id"}}, {}, {}, {}).text();
    DataWindow window(source, &m_statistics);
    state.path = window.state().path;
    QVERIFY(!state.path.isEmpty());
    window.restore(state);
    QCOMPARE(window.state(), state);
    QCOMPARE(window.model()->source().table, QString("prices"));
    QCOMPARE(window.model()->source().key, QStringList("id"));
    QVERIFY(!state.path.contains("secret") && !window.state().own.contains("secret"));
}

QTEST_MAIN(tst_DataWindow)
#include "tst_datawindow.moc"
