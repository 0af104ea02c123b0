// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "files/textfilemodel.h"
#include "order/sortedrows.h"
#include "overview/marksmenu.h"
#include "search/findpanel.h"
#include "search/tablefilter.h"
#include "windows/columnsort.h"
#include "windows/filewindow.h"
#include "windows/framestatistics.h"
#include "windows/viewertable.h"

#include <QFile>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QSettings>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

class tst_ViewerSort : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();
    void headerIsClicked();
    void beginsAtTheTop();
    void menuSorts();
    void keepsTheCurrentRow();
    void sortsWhatIsFiltered();
    void filtersWhatIsSorted();
    void rowsThatComeAreSortedIn();
    void goesToLines();
    void marksStay();
    void findsInOrder();
    void reloadStaysSorted();
    void otherFileUnderItsName();
    void restoredHeaderIsNotSorted();
    void closesWhileSorting();

private:
    void write(const QByteArray &text, QIODevice::OpenMode mode = QIODevice::WriteOnly) const;
    void open(const QByteArray &text);
    void click(int column) const;
    QStringList texts(int column) const;
    bool isSorted() const;
    TableFilter *find() const { return m_window->findChild<TableFilter *>(); }

    std::unique_ptr<QTemporaryDir> m_folder;
    FrameStatistics m_statistics;
    std::unique_ptr<FileWindow> m_window;
    ViewerTable *m_table = nullptr;
};

void tst_ViewerSort::initTestCase()
{
    QStandardPaths::setTestModeEnabled(true);
    QCoreApplication::setOrganizationName(QStringLiteral("vantix-test"));
    QCoreApplication::setApplicationName(QStringLiteral("tst_viewersort"));
    QSettings().clear();
}

void tst_ViewerSort::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    open("name,size\npear,10\nFig,9\napple,\nplum,9\n");
}

void tst_ViewerSort::cleanup()
{
    m_window.reset();
}

void tst_ViewerSort::write(const QByteArray &text, QIODevice::OpenMode mode) const
{
    QFile file(m_folder->filePath("a.csv"));
    QVERIFY(file.open(mode));
    QCOMPARE(file.write(text), text.size());
}

void tst_ViewerSort::open(const QByteArray &text)
{
    write(text);
    m_window =
        std::make_unique<FileWindow>(m_folder->filePath("a.csv"), FormatRequest(), &m_statistics);
    m_table = m_window->findChild<ViewerTable *>();
    m_window->resize(700, 400);
    m_window->show();
    QTRY_VERIFY(m_window->rows() >= int(text.count('\n')) - 1);
    QVERIFY(QTest::qWaitForWindowExposed(m_window.get()));
}

void tst_ViewerSort::click(int column) const
{
    const QHeaderView *header = m_table->header();
    const QPoint place(header->sectionViewportPosition(column) + header->sectionSize(column) / 2,
                       header->height() / 2);
    QTest::mouseClick(header->viewport(), Qt::LeftButton, {}, place);
}

QStringList tst_ViewerSort::texts(int column) const
{
    QStringList texts;
    for (int row = 0; row < m_table->model()->rowCount(); ++row)
        texts.append(m_table->model()->index(row, column).data().toString());
    return texts;
}

bool tst_ViewerSort::isSorted() const
{
    const SortedRows *rows = find()->sortedRows();
    return rows && rows->isSorted() && rows->isSettled();
}

void tst_ViewerSort::headerIsClicked()
{
    const QHeaderView *header = m_table->header();
    const auto *label = m_window->findChild<QLabel *>("sortLabel");
    QVERIFY(!header->isSortIndicatorShown());
    QVERIFY(!label->isVisible());
    QVERIFY(m_window->isFollowing());
    click(1);
    QTRY_VERIFY(isSorted());
    QCOMPARE(texts(0), QStringList({"Fig", "plum", "pear", "apple"}));
    QVERIFY(header->isSortIndicatorShown());
    QCOMPARE(header->sortIndicatorSection(), 1);
    QCOMPARE(header->sortIndicatorOrder(), Qt::AscendingOrder);
    QVERIFY(label->isVisible());
    QTRY_COMPARE(label->text(), QString("Sorted by “size”"));
    QVERIFY(!label->toolTip().isEmpty());
    QVERIFY(!m_window->isFollowing());
    click(1);
    QTRY_VERIFY(isSorted());
    QCOMPARE(texts(0), QStringList({"pear", "Fig", "plum", "apple"}));
    QCOMPARE(header->sortIndicatorOrder(), Qt::DescendingOrder);
    click(1);
    QCOMPARE(find()->sortedRows(), nullptr);
    QCOMPARE(texts(0), QStringList({"pear", "Fig", "apple", "plum"}));
    QVERIFY(!header->isSortIndicatorShown());
    QVERIFY(!label->isVisible());
    click(1);
    click(0);
    QTRY_VERIFY(isSorted());
    QCOMPARE(texts(0), QStringList({"apple", "Fig", "pear", "plum"}));
}

//! Where it followed, nobody would see what comes first.
void tst_ViewerSort::beginsAtTheTop()
{
    QByteArray text("n\n");
    for (int row = 0; row < 500; ++row)
        text += QByteArray::number(row) + '\n';
    open(text);
    QTRY_VERIFY(m_table->firstSeenRow() > 100);
    click(m_table->model()->columnCount() - 1);
    QTRY_VERIFY(isSorted());
    QTRY_COMPARE(m_table->firstSeenRow(), 0);
}

void tst_ViewerSort::menuSorts()
{
    auto *sort = m_window->findChild<ColumnSort *>();
    QMenu menu;
    sort->addActions(&menu, 0);
    QCOMPARE(menu.actions().size(), 3);
    QVERIFY(menu.actions().at(2)->isChecked());
    menu.actions().at(1)->trigger();
    QTRY_VERIFY(isSorted());
    QCOMPARE(texts(0), QStringList({"plum", "pear", "Fig", "apple"}));
    menu.clear();
    sort->addActions(&menu, 0);
    QVERIFY(menu.actions().at(1)->isChecked());
    menu.actions().at(2)->trigger();
    QCOMPARE(find()->sortedRows(), nullptr);
}

void tst_ViewerSort::keepsTheCurrentRow()
{
    m_table->setCurrentIndex(m_table->model()->index(1, 0));
    click(0);
    QCOMPARE(m_table->currentIndex().data().toString(), QString("Fig"));
    QTRY_VERIFY(isSorted());
    QCOMPARE(m_table->currentIndex().data().toString(), QString("Fig"));
    QCOMPARE(m_table->currentIndex().row(), 1);
    click(0);
    QTRY_VERIFY(isSorted());
    QCOMPARE(m_table->currentIndex().row(), 2);
    click(0);
    QCOMPARE(m_table->currentIndex().row(), 1);
}

void tst_ViewerSort::sortsWhatIsFiltered()
{
    find()->dofilter("p");
    QCOMPARE(texts(0), QStringList({"pear", "apple", "plum"}));
    m_table->setCurrentIndex(m_table->model()->index(2, 0));
    click(0);
    QTRY_VERIFY(isSorted());
    QCOMPARE(texts(0), QStringList({"apple", "pear", "plum"}));
    QCOMPARE(m_table->currentIndex().data().toString(), QString("plum"));
    QCOMPARE(find()->toSource(m_table->currentIndex()).row(), 3);
    click(0);
    click(0);
    QCOMPARE(texts(0), QStringList({"pear", "apple", "plum"}));
    QVERIFY(find()->isFiltered());
}

void tst_ViewerSort::filtersWhatIsSorted()
{
    click(0);
    QTRY_VERIFY(isSorted());
    m_table->setCurrentIndex(m_table->model()->index(2, 0));
    find()->dofilter("p");
    QTRY_VERIFY(isSorted());
    QCOMPARE(texts(0), QStringList({"apple", "pear", "plum"}));
    QCOMPARE(m_table->currentIndex().data().toString(), QString("pear"));
    find()->dofilter("fig");
    QTRY_VERIFY(isSorted());
    QCOMPARE(texts(0), QStringList({"Fig"}));
    find()->dofilter({});
    QTRY_VERIFY(isSorted());
    QCOMPARE(texts(0), QStringList({"apple", "Fig", "pear", "plum"}));
    QCOMPARE(m_table->currentIndex().data().toString(), QString("pear"));
    QVERIFY(m_table->header()->isSortIndicatorShown());
}

void tst_ViewerSort::rowsThatComeAreSortedIn()
{
    click(1);
    QTRY_VERIFY(isSorted());
    m_table->setCurrentIndex(m_table->model()->index(2, 0));
    write("kiwi,9.5\nlime,1\n", QIODevice::Append);
    QTRY_COMPARE(m_window->rows(), 6);
    QTRY_VERIFY(isSorted());
    QCOMPARE(texts(0), QStringList({"lime", "Fig", "plum", "kiwi", "pear", "apple"}));
    QCOMPARE(m_table->currentIndex().data().toString(), QString("pear"));
}

void tst_ViewerSort::goesToLines()
{
    click(1);
    QTRY_VERIFY(isSorted());
    m_window->showLine(1);
    QCOMPARE(m_table->currentIndex().data().toString(), QString("pear"));
    find()->dofilter("fig");
    QTRY_VERIFY(isSorted());
    QCOMPARE(find()->rowNear(0), 0);
    QCOMPARE(find()->rowNear(3), 0);
    find()->dofilter("p");
    QTRY_VERIFY(isSorted());
    QCOMPARE(texts(0), QStringList({"plum", "pear", "apple"}));
    QCOMPARE(find()->rowNear(0), 1);
    QCOMPARE(find()->rowNear(1), 2); // the first one behind it that is shown
    QCOMPARE(find()->rowNear(100), 0);
    find()->dofilter("nothing has this");
    QCOMPARE(find()->rowNear(0), -1);
}

void tst_ViewerSort::marksStay()
{
    auto *marks = m_window->findChild<MarksMenu *>();
    m_table->setCurrentIndex(m_table->model()->index(3, 0));
    marks->markAction()->trigger();
    QVERIFY(marks->isMarked(3));
    click(1);
    QTRY_VERIFY(isSorted());
    QVERIFY(marks->isMarked(1));
    QVERIFY(!marks->isMarked(3));
}

void tst_ViewerSort::findsInOrder()
{
    click(0);
    QTRY_VERIFY(isSorted());
    auto *panel = m_window->findChild<FindPanel *>();
    panel->setPlainText("p");
    panel->findNext();
    QCOMPARE(m_table->currentIndex().data().toString(), QString("apple"));
    panel->findNext();
    QCOMPARE(m_table->currentIndex().data().toString(), QString("pear"));
    panel->findPrev();
    QCOMPARE(m_table->currentIndex().data().toString(), QString("apple"));
}

void tst_ViewerSort::reloadStaysSorted()
{
    click(0);
    QTRY_VERIFY(isSorted());
    m_window->reopen(FormatRequest());
    QTRY_COMPARE(m_window->rows(), 4);
    QTRY_VERIFY(isSorted());
    QCOMPARE(texts(0), QStringList({"apple", "Fig", "pear", "plum"}));
    QVERIFY(m_table->header()->isSortIndicatorShown());
}

void tst_ViewerSort::otherFileUnderItsName()
{
    click(1);
    QTRY_VERIFY(isSorted());
    QFile::remove(m_folder->filePath("a.csv"));
    write("only lines\nof text\n");
    QTRY_COMPARE(m_window->rows(), 2);
    QTRY_VERIFY(isSorted());
    QCOMPARE(texts(1), QStringList({"of text", "only lines"}));
}

void tst_ViewerSort::restoredHeaderIsNotSorted()
{
    const Qt::SortOrder usual = m_table->header()->sortIndicatorOrder();
    click(1);
    if (usual == Qt::AscendingOrder)
        click(1);
    QTRY_VERIFY(isSorted());
    QVERIFY(m_table->header()->sortIndicatorOrder() != usual);
    PageState state = m_window->state();
    state.isFollowing = true;
    state.sortColumn = -1;
    open("name,size\npear,10\nFig,9\napple,\nplum,9\n");
    m_window->restore(state);
    m_window->reopen(FormatRequest());
    QTRY_COMPARE(m_window->rows(), 4);
    QTRY_VERIFY(m_window->isFollowing());
    QCOMPARE(find()->sortedRows(), nullptr);
    QTRY_COMPARE(m_table->header()->sortIndicatorOrder(), usual);
    QVERIFY(!m_table->header()->isSortIndicatorShown());
    QCOMPARE(m_table->header()->sortIndicatorSection(), -1);
}

void tst_ViewerSort::closesWhileSorting()
{
    click(0);
    m_window.reset();
    QCoreApplication::processEvents();
}

QTEST_MAIN(tst_ViewerSort)

#include "tst_viewersort.moc"
