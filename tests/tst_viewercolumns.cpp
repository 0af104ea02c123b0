// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "search/tablefilter.h"
#include "windows/columnmenu.h"
#include "windows/columnsort.h"
#include "windows/filewindow.h"
#include "windows/framestatistics.h"
#include "windows/viewertable.h"

#include <QApplication>
#include <QFile>
#include <QHeaderView>
#include <QStandardItemModel>
#include <QTemporaryDir>
#include <QTest>

class tst_ViewerColumns : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void hidesAndShows();
    void oneColumnStays();
    void opensOverTheHeader();
    void fitsAColumn();
    void alignsTexts_data();
    void alignsTexts();
    void groupsDigits_data();
    void groupsDigits();
    void marksWhatIsGrouped_data();
    void marksWhatIsGrouped();
    void groupsAreKept();
    void bearsNoModel();

private:
    QImage look(const QModelIndex &index) const;
    QAction *action(const QString &text) const;
    int inkCentre(const QModelIndex &index) const;

    FrameStatistics m_statistics;
    std::unique_ptr<QStandardItemModel> m_model;
    std::unique_ptr<ViewerTable> m_table;
    TableFilter *m_find = nullptr; //!< a child of the table
    std::unique_ptr<ColumnMenu> m_menu;
};

void tst_ViewerColumns::init()
{
    m_model = std::make_unique<QStandardItemModel>(5, 3);
    m_model->setHorizontalHeaderLabels({"name", "a & b", "last"});
    for (int row = 0; row < 5; ++row) {
        for (int column = 0; column < 3; ++column)
            m_model->setItem(row, column, new QStandardItem("ii"));
    }
    m_table = std::make_unique<ViewerTable>(&m_statistics);
    m_table->resize(700, 200);
    m_find = new TableFilter(m_table.get());
    m_find->setSource(m_model.get());
    m_table->show();
    m_table->fitColumns();
    m_menu =
        std::make_unique<ColumnMenu>(m_table.get(), new ColumnSort(m_find, m_table.get()), nullptr);
}

void tst_ViewerColumns::cleanup()
{
    m_menu.reset();
    m_table.reset();
}

//! One of the menu as it is when it is opened now, or over the header before.
QAction *tst_ViewerColumns::action(const QString &text) const
{
    if (!m_menu->isVisible())
        Q_EMIT m_menu->aboutToShow();
    QList<QAction *> actions = m_menu->actions();
    for (qsizetype at = 0; at < actions.size(); ++at) {
        if (QString(actions[at]->text()).replace("&&", "\1").remove(u'&').replace("\1", "&")
            == text)
            return actions[at];
        if (actions[at]->menu())
            actions += actions[at]->menu()->actions();
    }
    return nullptr;
}

//! Where the text of a cell stands, in pixels from the cell's left edge.
int tst_ViewerColumns::inkCentre(const QModelIndex &index) const
{
    const QImage image = m_table->viewport()->grab(m_table->visualRect(index)).toImage();
    const QRgb paper = image.pixel(0, 0);
    int left = image.width();
    int right = -1;
    for (int y = 0; y < image.height() - 1; ++y) {
        for (int x = 0; x < image.width() - 2; ++x) {
            if (image.pixel(x, y) == paper)
                continue;
            left = qMin(left, x);
            right = qMax(right, x);
        }
    }
    return int((left + right) / 2 / image.devicePixelRatio());
}

void tst_ViewerColumns::hidesAndShows()
{
    const QHeaderView *header = m_table->header();
    m_table->setCurrentIndex(m_model->index(0, 1));
    QVERIFY(action("Hide “a & b”"));
    action("Hide “a & b”")->trigger();
    QVERIFY(header->isSectionHidden(1));
    QVERIFY(!action("a & b")->isChecked());
    QVERIFY(action("name")->isChecked());
    action("a & b")->trigger();
    QVERIFY(!header->isSectionHidden(1));
    action("last")->trigger();
    QVERIFY(header->isSectionHidden(2));
}

void tst_ViewerColumns::oneColumnStays()
{
    action("name")->trigger();
    action("a & b")->trigger();
    QVERIFY(!action("last")->isEnabled());
    QVERIFY(action("name")->isEnabled());
    m_table->setCurrentIndex(m_model->index(0, 2));
    QVERIFY(!action("Hide “last”")->isEnabled());
}

void tst_ViewerColumns::opensOverTheHeader()
{
    QHeaderView *header = m_table->header();
    m_table->setCurrentIndex(m_model->index(0, 1));
    Q_EMIT header->customContextMenuRequested({header->sectionViewportPosition(2) + 3, 3});
    QVERIFY(m_menu->isVisible());
    QVERIFY(action("Hide “last”"));
    QVERIFY(!action("Hide “a & b”"));
    m_menu->close();
    QVERIFY(action("Hide “a & b”"));
}

void tst_ViewerColumns::fitsAColumn()
{
    QHeaderView *header = m_table->header();
    const int usual = header->sectionSize(1);
    const int other = header->sectionSize(0) + 50;
    header->resizeSection(1, usual + 100);
    header->resizeSection(0, other);
    m_table->setCurrentIndex(m_model->index(0, 1));
    action("Fit “a & b”")->trigger();
    QCOMPARE(header->sectionSize(1), usual);
    QCOMPARE(header->sectionSize(0), other);
    action("Fit All Columns")->trigger();
    QCOMPARE(header->sectionSize(0), other - 50);
}

void tst_ViewerColumns::alignsTexts_data()
{
    QTest::addColumn<QString>("choice");
    QTest::addColumn<int>("third"); // of the cell
    QTest::addColumn<bool>("isBuffered");
    for (const bool isBuffered : {false, true}) {
        const char *how = isBuffered ? "buffered" : "painted";
        QTest::addRow("left, %s", how) << "Left" << 0 << isBuffered;
        QTest::addRow("centre, %s", how) << "Centre" << 1 << isBuffered;
        QTest::addRow("right, %s", how) << "Right" << 2 << isBuffered;
    }
}

void tst_ViewerColumns::alignsTexts()
{
    QFETCH(QString, choice);
    QFETCH(int, third);
    QFETCH(bool, isBuffered);
    m_table->setPaintBufferEnabled(isBuffered);
    m_table->header()->resizeSection(1, 300);
    const QModelIndex cell = m_model->index(1, 1);
    const QModelIndex other = m_model->index(1, 0);
    m_table->setCurrentIndex(m_model->index(3, 1));
    const int before = inkCentre(cell);
    const int otherBefore = inkCentre(other);
    QVERIFY(action("As the File Wants")->isChecked());
    action(choice)->trigger();
    QVERIFY(action(choice)->isChecked());
    QCOMPARE(inkCentre(cell) / 100, third);
    QCOMPARE(inkCentre(other), otherBefore);
    action("As the File Wants")->trigger();
    QCOMPARE(inkCentre(cell), before);
}

QImage tst_ViewerColumns::look(const QModelIndex &index) const
{
    return m_table->viewport()->grab(m_table->visualRect(index)).toImage();
}

void tst_ViewerColumns::groupsDigits_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("shown");
    QTest::addColumn<bool>("isBuffered");
    for (const bool isBuffered : {false, true}) {
        const char *how = isBuffered ? "buffered" : "painted";
        QTest::addRow("number, %s", how) << "-1234567.5"
                                         << "-1,234,567.5" << isBuffered;
        QTest::addRow("code, %s", how) << "01234567"
                                       << "01234567" << isBuffered;
    }
}

//! A cell looks as if the file had what it shows; all else goes by what the file has.
void tst_ViewerColumns::groupsDigits()
{
    QFETCH(QString, text);
    QFETCH(QString, shown);
    QFETCH(bool, isBuffered);
    m_table->setLocale(QLocale(QLocale::English, QLocale::UnitedStates));
    m_table->setPaintBufferEnabled(isBuffered);
    for (int column = 0; column < 3; ++column)
        m_table->header()->resizeSection(column, 200);
    const QModelIndex cell = m_model->index(1, 1);
    m_model->setData(cell, shown);
    const QImage wanted = look(cell);
    m_model->setData(cell, text);
    const QImage plain = look(cell);
    QCOMPARE(plain == wanted, text == shown);
    m_table->setCurrentIndex(m_model->index(3, 1));
    QVERIFY(!action("Group Digits of “a & b”")->isChecked());
    action("Group Digits of “a & b”")->trigger();
    QVERIFY(action("Group Digits of “a & b”")->isChecked());
    QVERIFY(look(cell) == wanted);
    QCOMPARE(cell.data().toString(), text);
    m_model->setData(m_model->index(1, 0), text); // of another column
    QVERIFY(text == shown || look(m_model->index(1, 0)) != wanted);
    action("Group Digits of “a & b”")->trigger();
    QVERIFY(look(cell) == plain);
}

void tst_ViewerColumns::marksWhatIsGrouped_data()
{
    QTest::addColumn<QString>("sought");
    QTest::addColumn<QString>("soughtInShown");
    QTest::newRow("over a seam") << "345"
                                 << "34,5";
    QTest::newRow("behind a seam") << "23"
                                   << "23";
    QTest::newRow("before a seam") << "4"
                                   << "4";
    QTest::newRow("between seams") << "234"
                                   << "234";
    QTest::newRow("fraction") << "7.5"
                              << "7.5";
    QTest::newRow("all of it") << "1234567.5"
                               << "1,234,567.5";
    QTest::newRow("what only the screen has") << "1,2"
                                              << "nothing";
}

void tst_ViewerColumns::marksWhatIsGrouped()
{
    QFETCH(QString, sought);
    QFETCH(QString, soughtInShown);
    m_table->setLocale(QLocale(QLocale::English, QLocale::UnitedStates));
    for (int column = 0; column < 3; ++column)
        m_table->header()->resizeSection(column, 200);
    const QModelIndex cell = m_model->index(1, 1);
    for (const auto direction : {Qt::LeftToRight, Qt::RightToLeft}) {
        m_table->setLayoutDirection(direction);
        m_table->setDigitGroups(1, false);
        m_model->setData(cell, "1,234,567.5");
        const QImage unmarked = look(cell);
        m_table->setMarked(TextMatcher(soughtInShown, {}), {1});
        const QImage wanted = look(cell);
        QCOMPARE(wanted != unmarked, soughtInShown != "nothing");
        m_model->setData(cell, "1234567.5");
        m_table->setDigitGroups(1, true);
        m_table->setMarked(TextMatcher(sought, {}), {1});
        QVERIFY(look(cell) == wanted);
        m_table->setMarked({}, {});
    }
}

void tst_ViewerColumns::groupsAreKept()
{
    QTemporaryDir folder;
    QFile file(folder.filePath("a.csv"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("name,size\nplum,1234567\npear,7654321\n");
    file.close();
    PageState state;
    {
        FileWindow window(file.fileName(), FormatRequest(), &m_statistics);
        window.show();
        QTRY_COMPARE(window.rows(), 2);
        QTRY_COMPARE(window.state().columnCount, 2);
        const int narrow = window.table()->columnWidth(0);
        window.table()->setDigitGroups(0, true);
        window.table()->setDigitGroups(1, true);
        window.table()->setDigitGroups(0, false);
        QCOMPARE(window.table()->columnWidth(0), narrow);
        window.reopen(FormatRequest());
        QTRY_COMPARE(window.rows(), 2);
        QTRY_COMPARE(window.state().grouped, QList<int>({1}));
        // What is copied, and what is searched, has no groups.
        window.table()->selectAll();
        QVERIFY(window.selectedText().contains("plum\t1234567"));
        state = window.state();
    }
    FileWindow again(file.fileName(), FormatRequest(), &m_statistics);
    again.restore(state);
    again.show();
    QTRY_COMPARE(again.rows(), 2);
    QTRY_VERIFY(again.table()->hasDigitGroups(1));
    QVERIFY(!again.table()->hasDigitGroups(0));
}

void tst_ViewerColumns::bearsNoModel()
{
    m_table->setModel(nullptr);
    QVERIFY(action("There are no columns"));
    QCOMPARE(m_menu->actions().size(), 1);
}

QTEST_MAIN(tst_ViewerColumns)

#include "tst_viewercolumns.moc"
