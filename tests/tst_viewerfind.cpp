// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "activation.h"
#include "feed/feedwindow.h"
#include "files/textfilemodel.h"
#include "qprogressindicator.h"
#include "search/findpanel.h"
#include "search/linefilter.h"
#include "search/tablefilter.h"
#include "slowmodel.h"
#include "windows/filewindow.h"
#include "windows/filterbar.h"
#include "windows/framestatistics.h"
#include "windows/viewertable.h"

#include <QAction>
#include <QApplication>
#include <QFile>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QScrollBar>
#include <QStandardItemModel>
#include <QStatusBar>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <QToolButton>

#include <functional>
#include <memory>

namespace {

//! One row for each word.
class SlowWords : public SlowModel
{
public:
    explicit SlowWords(const char *words)
    {
        for (const QByteArray &word : QByteArray(words).split(' '))
            appendRow(new QStandardItem(QString::fromLatin1(word)));
    }
};

QString rowsOf(const QAbstractItemModel &model)
{
    QStringList rows;
    for (int row = 0; row < model.rowCount(); ++row)
        rows << model.index(row, 0).data().toString();
    return rows.join(u' ');
}

FindPanel *panelOf(const ViewerWindow &window)
{
    return window.findChild<FindPanel *>();
}

QLineEdit *fieldOf(const ViewerWindow &window)
{
    return window.findChild<QLineEdit *>(QStringLiteral("findLineEdit"));
}

void click(const ViewerWindow &window, const QByteArray &button)
{
    QTest::mouseClick(window.findChild<QToolButton *>(QString::fromLatin1(button)), Qt::LeftButton);
}

} // namespace

class tst_ViewerFind : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void lineFilterTakesRowsOver();
    void lineFilterFollowsItsRows_data();
    void lineFilterFollowsItsRows();
    void lineFilterGivesUp_data();
    void lineFilterGivesUp();

    void opensByKey();
    void findsFromTheTable();
    void findsAgainWithThePanel();
    void escapeClosesThePanelFirst();
    void filtersAndComesBack();
    void comesBackToAHiddenRow();
    void comesBackToARowChosenMeanwhile();
    void keepsColumns();
    void filterFollowsTheFile();
    void filterEndsWithTheFile();
    void anotherFilterReplacesTheFirst();
    void filterIsLive();
    void filterIsUndone_data();
    void filterIsUndone();
    void filterIsReachedByKeys();
    void filterTellsOfItself();
    void filterEndsNotFound();
    void rulesHoldForBoth_data();
    void rulesHoldForBoth();
    void lineNumbersAreNoText();
    void columnsAreLeftOut();
    void wrongExpressionIsExplained();
    void goesToALine();
    void filtersByACell();
    void marksWhatIsSought();
    void copiesFilteredRows();
    void feedIsNotFilteredAtFirst();
    void feedGoesOnWhileFiltered();
    void foundRowStaysInSight_data();
    void foundRowStaysInSight();
    void searchIsStopped_data();
    void searchIsStopped();
    void searchIsNotBegunTwice_data();
    void searchIsNotBegunTwice();
    void windowsSearchWithinEachOther_data();
    void windowsSearchWithinEachOther();

private:
    std::unique_ptr<FileWindow> openFile(const QByteArray &text);
    void append(const QByteArray &text);

    FrameStatistics m_statistics;               //!< of all windows
    std::unique_ptr<QTemporaryDir> m_directory; //!< one per test
    QString m_path;                             //!< of the file under test
};

void tst_ViewerFind::init()
{
    m_directory = std::make_unique<QTemporaryDir>();
    m_path = m_directory->filePath("file.txt");
}

void tst_ViewerFind::append(const QByteArray &text)
{
    QFile file(m_path);
    QVERIFY(file.open(QIODevice::Append | QIODevice::Unbuffered));
    QCOMPARE(file.write(text), text.size());
}

//! A window on a file with \a text, active and completely indexed.
std::unique_ptr<FileWindow> tst_ViewerFind::openFile(const QByteArray &text)
{
    append(text);
    auto window = std::make_unique<FileWindow>(m_path, FormatRequest(), &m_statistics);
    window->show();
    activate(window.get());
    [&] {
        QTRY_COMPARE(window->model()->activity(), TextFileModel::Activity::Following);
        QTRY_COMPARE(window->model()->indexedBytes(), quint64(text.size()));
    }();
    window->table()->setFocus();
    return window;
}

//! "a 0", "b 1", "c 2", "a 3" and so on.
static QByteArray lettered(int count)
{
    QByteArray text;
    for (int i = 0; i < count; ++i)
        text += QByteArray(1, "abc"[i % 3]) + ' ' + QByteArray::number(i) + '\n';
    return text;
}

static QString currentText(const ViewerWindow &window)
{
    return window.table()->currentIndex().siblingAtColumn(1).data().toString();
}

static bool isInSight(const ViewerWindow &window)
{
    const ViewerTable *table = window.table();
    return table->viewport()->rect().intersects(table->visualRect(table->currentIndex()));
}

void tst_ViewerFind::lineFilterTakesRowsOver()
{
    SlowWords model("ab b Ab cab x");
    model.isSlow = false;
    LineFilter filter({0}, TextMatcher(QStringLiteral("ab"), {.matchesCase = true}));
    QVERIFY(filter.takeOver(&model));
    QCOMPARE(rowsOf(filter), "ab cab");
    // From now on it is a filter like any other.
    model.appendRow(new QStandardItem(QStringLiteral("abc")));
    model.removeRow(0);
    QCOMPARE(rowsOf(filter), "cab abc");
    LineFilter none({}, TextMatcher(QStringLiteral("ab"), {.matchesCase = true}));
    QVERIFY(none.takeOver(&model));
    QCOMPARE(none.rowCount(), 0);
}

void tst_ViewerFind::lineFilterFollowsItsRows_data()
{
    QTest::addColumn<std::function<void(SlowModel &)>>("change");
    QTest::addColumn<QString>("rows");

    using Change = std::function<void(SlowModel &)>;
    const auto insert = [](int row) {
        return Change([row](SlowModel &model) {
            model.insertRow(row, new QStandardItem(QStringLiteral("anew")));
        });
    };
    const auto remove = [](int row, int count) {
        return Change([=](SlowModel &model) { model.removeRows(row, count); });
    };
    QTest::newRow("insert at the top") << insert(0) << "anew a0 a3 a6";
    QTest::newRow("insert among the judged") << insert(1) << "a0 anew a3 a6";
    QTest::newRow("insert at the place") << insert(3) << "a0 anew a3 a6";
    QTest::newRow("insert at the end") << insert(7) << "a0 a3 a6 anew";
    QTest::newRow("remove the first") << remove(0, 1) << "a3 a6";
    QTest::newRow("remove around the place") << remove(1, 4) << "a0 a6";
    QTest::newRow("remove the rest") << remove(2, 5) << "a0";
    QTest::newRow("remove all") << remove(0, 7) << "";
    QTest::newRow("sort") << Change([](SlowModel &model) {
        model.isSlow = false;
        model.sort(0, Qt::DescendingOrder);
    }) << "a6 a3 a0";
    const auto set = [](int row) {
        return Change([row](SlowModel &model) { model.item(row)->setText("anew"); });
    };
    QTest::newRow("change among the judged") << set(1) << "a0 anew a3 a6";
    QTest::newRow("change among the others") << set(5) << "a0 a3 anew a6";
    QTest::newRow("change of a shown one")
        << Change([](SlowModel &model) { model.item(0)->setText("b"); }) << "a3 a6";
    QTest::newRow("reset") << Change([](SlowModel &model) {
        model.clear();
        model.appendRow(new QStandardItem(QStringLiteral("a fresh")));
    }) << "a fresh";
    QTest::newRow("reset with the same rows") << Change([](SlowModel &model) {
        model.beginResetModel();
        model.endResetModel();
    }) << "a0 a3 a6";
}

//! The change happens when two or three rows have been judged.
void tst_ViewerFind::lineFilterFollowsItsRows()
{
    QFETCH(std::function<void(SlowModel &)>, change);
    QFETCH(QString, rows);

    SlowWords model("a0 b1 c2 a3 b4 c5 a6");
    LineFilter filter({0}, TextMatcher(QStringLiteral("a"), {.matchesCase = true}));
    QObject context;
    const auto later = [&](const std::function<void()> &what) {
        QMetaObject::invokeMethod(&context, what, Qt::QueuedConnection);
    };
    later([&] { later([&] { later([&] { change(model); }); }); });
    QVERIFY(filter.takeOver(&model));
    model.isSlow = false;
    QCOMPARE(rowsOf(filter), rows);
}

void tst_ViewerFind::lineFilterGivesUp_data()
{
    QTest::addColumn<bool>("isDestroyed");
    QTest::newRow("cancelled") << false;
    QTest::newRow("source destroyed") << true;
}

void tst_ViewerFind::lineFilterGivesUp()
{
    QFETCH(bool, isDestroyed);
    auto model = std::make_unique<SlowWords>("a b c d");
    LineFilter filter({0}, TextMatcher(QStringLiteral("a"), {.matchesCase = true}));
    QMetaObject::invokeMethod(
        this,
        [&] {
            if (isDestroyed)
                model.reset();
            else
                filter.cancel();
        },
        Qt::QueuedConnection);
    QVERIFY(!filter.takeOver(model.get()));
    QVERIFY(!filter.sourceModel());
    QCOMPARE(filter.rowCount(), 0);
}

void tst_ViewerFind::opensByKey()
{
    const auto window = openFile(lettered(100));
    QVERIFY(!panelOf(*window)->isVisible());
    QTest::keySequence(window.get(), QKeySequence(QKeySequence::Find));
    QVERIFY(panelOf(*window)->isVisible());
    QVERIFY(fieldOf(*window)->hasFocus());
    QTest::keyClicks(fieldOf(*window), QStringLiteral("b 4"));
    QTest::keyClick(fieldOf(*window), Qt::Key_Return);
    QCOMPARE(currentText(*window), "b 4");
    QVERIFY(isInSight(*window));
    // Again: what is there is ready to be typed over.
    window->table()->setFocus();
    QTest::keySequence(window.get(), QKeySequence(QKeySequence::Find));
    QCOMPARE(fieldOf(*window)->selectedText(), "b 4");
}

void tst_ViewerFind::findsFromTheTable()
{
    const auto window = openFile(lettered(1000));
    window->openFind();
    QTest::keyClicks(fieldOf(*window), QStringLiteral("c 77"));
    for (QWidget *focus : std::initializer_list<QWidget *> {window->table(), fieldOf(*window)}) {
        window->table()->setCurrentIndex(window->table()->model()->index(0, 0));
        focus->setFocus();
        QTest::keySequence(window.get(), QKeySequence(QKeySequence::FindNext));
        QCOMPARE(currentText(*window), "c 77");
        QTest::keySequence(window.get(), QKeySequence(QKeySequence::FindNext));
        QCOMPARE(currentText(*window), "c 770");
        QTest::keySequence(window.get(), QKeySequence(QKeySequence::FindPrevious));
        QCOMPARE(currentText(*window), "c 77");
        QVERIFY(isInSight(*window));
    }
    // A row that was found is not left behind for new ones.
    QVERIFY(!window->isFollowing());
}

//! The panel is where a search tells that it found nothing, and where it is stopped.
void tst_ViewerFind::findsAgainWithThePanel()
{
    const auto window = openFile(lettered(1000));
    const auto findNext = [&] {
        QTest::keySequence(window.get(), QKeySequence(QKeySequence::FindNext));
    };
    findNext();
    QVERIFY(panelOf(*window)->isVisible());
    QVERIFY(fieldOf(*window)->hasFocus());
    QTest::keyClicks(fieldOf(*window), QStringLiteral("c 77"));
    panelOf(*window)->close();
    window->table()->setFocus();
    findNext();
    QVERIFY(panelOf(*window)->isVisible());
    QVERIFY(window->table()->hasFocus());
    QCOMPARE(currentText(*window), "c 77");
    QCoreApplication::processEvents();
    QVERIFY(isInSight(*window));
    QTest::keyClick(window->table(), Qt::Key_Escape);
    QVERIFY(!panelOf(*window)->isVisible());
    QCOMPARE(window->model()->activity(), TextFileModel::Activity::Following);
}

void tst_ViewerFind::escapeClosesThePanelFirst()
{
    const auto window = openFile(lettered(10));
    const auto pressEscape = [&] { QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape); };
    window->openFind();
    pressEscape();
    QVERIFY(!panelOf(*window)->isVisible());
    QVERIFY(window->table()->hasFocus());
    window->openFind();
    window->table()->setFocus();
    pressEscape();
    QVERIFY(!panelOf(*window)->isVisible());
    QCOMPARE(window->model()->activity(), TextFileModel::Activity::Following);
    // What is complete has nothing to stop; it goes on to be followed.
    pressEscape();
    append("more\n");
    QTRY_COMPARE(window->rows(), 11);
    QCOMPARE(window->model()->activity(), TextFileModel::Activity::Following);
}

void tst_ViewerFind::filtersAndComesBack()
{
    const auto window = openFile(lettered(3000));
    ViewerTable *table = window->table();
    const QAbstractItemModel *source = table->model();
    window->openFind();
    QTest::keyClicks(fieldOf(*window), QStringLiteral("a 15"));
    table->setCurrentIndex(source->index(1500, 0));
    click(*window, "filterButton");
    QVERIFY(table->model() != source);
    // a 15, a 150, a 153, a 156, a 159 and those from a 1500 to a 1599.
    QCOMPARE(window->rows(), 5 + 34);
    QCOMPARE(currentText(*window), "a 1500");
    QVERIFY(isInSight(*window));
    const QString rowsText = QStringLiteral("%L1 of %L2 rows").arg(39).arg(3000);
    const QList<QLabel *> labels = window->findChildren<QLabel *>();
    QVERIFY(std::any_of(labels.begin(), labels.end(),
                        [&](const QLabel *label) { return label->text() == rowsText; }));
    fieldOf(*window)->setFocus();
    QTest::keyClick(fieldOf(*window), Qt::Key_Escape);
    QCOMPARE(table->model(), source);
    QCOMPARE(table->currentIndex().row(), 1500);
    QVERIFY(table->selectionModel()->isRowSelected(1500, QModelIndex()));
    QVERIFY(isInSight(*window));
    QCoreApplication::processEvents();
    QVERIFY(isInSight(*window));
}

void tst_ViewerFind::comesBackToAHiddenRow()
{
    const auto window = openFile(lettered(3000));
    ViewerTable *table = window->table();
    window->openFind();
    QTest::keyClicks(fieldOf(*window), QStringLiteral("a 15"));
    // The view has kept to the last row, of which nothing must be left.
    table->setCurrentLast();
    table->setCurrentIndex(table->model()->index(700, 0));
    click(*window, "filterButton");
    QCoreApplication::processEvents();
    QVERIFY(!table->currentIndex().isValid());
    panelOf(*window)->close();
    QCoreApplication::processEvents();
    QCOMPARE(table->currentIndex().row(), 700);
    QVERIFY(isInSight(*window));
}

void tst_ViewerFind::comesBackToARowChosenMeanwhile()
{
    const auto window = openFile(lettered(3000));
    ViewerTable *table = window->table();
    window->openFind();
    QTest::keyClicks(fieldOf(*window), QStringLiteral("a 15"));
    table->setCurrentIndex(table->model()->index(700, 0));
    click(*window, "filterButton");
    table->setCurrentIndex(table->model()->index(2, 1));
    QCOMPARE(currentText(*window), "a 153");
    panelOf(*window)->close();
    QCOMPARE(table->currentIndex().row(), 153);
    QVERIFY(isInSight(*window));
}

void tst_ViewerFind::keepsColumns()
{
    const auto window = openFile("x;y;z\n1;a;2\n3;b;4\n5;a;6\n");
    QHeaderView *header = window->table()->header();
    header->moveSection(2, 0);
    header->resizeSection(1, 123);
    window->table()->hideColumn(0);
    window->openFind();
    QTest::keyClicks(fieldOf(*window), QStringLiteral("a"));
    for (int i = 0; i < 2; ++i) {
        click(*window, i == 0 ? "filterButton" : "closeButton");
        QCOMPARE(window->rows(), i == 0 ? 2 : 3);
        QCOMPARE(header->visualIndex(2), 0);
        QCOMPARE(header->sectionSize(1), 123);
        QVERIFY(header->isSectionHidden(0));
    }
    // Hidden columns are not looked at.
    window->openFind();
    fieldOf(*window)->setText(QStringLiteral("5"));
    click(*window, "filterButton");
    QCOMPARE(window->rows(), 0);
}

void tst_ViewerFind::filterFollowsTheFile()
{
    const auto window = openFile(lettered(3000));
    const QScrollBar *bar = window->table()->verticalScrollBar();
    window->openFind();
    QTest::keyClicks(fieldOf(*window), QStringLiteral("a"));
    click(*window, "filterButton");
    QCOMPARE(window->rows(), 1000);
    QVERIFY(window->isFollowing());
    QTRY_COMPARE(bar->value(), bar->maximum());
    append("a new\nb new\na newer\n");
    QTRY_COMPARE(window->rows(), 1002);
    QTRY_COMPARE(bar->value(), bar->maximum());
    QVERIFY(bar->value() > 900);
    panelOf(*window)->close();
    QCOMPARE(window->rows(), 3003);
    QVERIFY(window->isFollowing());
    QTRY_COMPARE(bar->value(), bar->maximum());
}

void tst_ViewerFind::filterEndsWithTheFile()
{
    auto window = openFile(lettered(30));
    window->openFind();
    QTest::keyClicks(fieldOf(*window), QStringLiteral("a"));
    click(*window, "filterButton");
    QVERIFY(QFile::resize(m_path, 0));
    QTRY_COMPARE(window->rows(), 0);
    append("a\nb\n");
    QTRY_COMPARE(window->rows(), 1);
    window.reset();
}

void tst_ViewerFind::anotherFilterReplacesTheFirst()
{
    const auto window = openFile(lettered(30));
    window->openFind();
    for (const char *text : {"a", "b", "b 1", "c"}) {
        fieldOf(*window)->setText(QString::fromLatin1(text));
        click(*window, "filterButton");
        QCOMPARE(window->rows(), int(lettered(30).count(text)));
    }
    // Empty: all of them.
    fieldOf(*window)->clear();
    click(*window, "filterButton");
    QCOMPARE(window->rows(), 30);
    QCOMPARE(window->table()->model(), window->model());
}

void tst_ViewerFind::filterIsLive()
{
    const auto window = openFile(lettered(3000));
    window->openFind();
    QTest::keyClicks(fieldOf(*window), QStringLiteral("a 1"));
    click(*window, "filterButton");
    const int first = window->rows();
    QVERIFY(first < 3000);
    QTest::keyClick(fieldOf(*window), Qt::Key_5);
    QTRY_COMPARE(window->rows(), 5 + 34);
    QVERIFY(panelOf(*window)->hasFilter());
    QTest::keyClick(fieldOf(*window), Qt::Key_Backspace);
    QTRY_COMPARE(window->rows(), first);
    // Find looks in the rows that are shown then.
    QTest::keyClicks(fieldOf(*window), QStringLiteral("59"));
    QTest::keyClick(fieldOf(*window), Qt::Key_Return);
    QTRY_COMPARE(window->rows(), 1 + 4);
    QCOMPARE(currentText(*window), "a 159");
}

void tst_ViewerFind::filterIsUndone_data()
{
    using Undo = std::function<void(FileWindow &)>;
    QTest::addColumn<Undo>("undo");
    QTest::newRow("Esc") << Undo(
        [](FileWindow &window) { QTest::keyClick(fieldOf(window), Qt::Key_Escape); });
    QTest::newRow("button") << Undo([](FileWindow &window) { click(window, "filterButton"); });
    QTest::newRow("bar") << Undo([](FileWindow &window) { click(window, "showAllButton"); });
    QTest::newRow("empty text") << Undo([](FileWindow &window) {
        QTest::keyClick(fieldOf(window), Qt::Key_A, Qt::ControlModifier);
        QTest::keyClick(fieldOf(window), Qt::Key_Delete);
    });
    QTest::newRow("menu") << Undo([](FileWindow &window) {
        QTest::keyClick(&window, Qt::Key_F, Qt::ControlModifier | Qt::ShiftModifier);
    });
}

void tst_ViewerFind::filterIsUndone()
{
    QFETCH(std::function<void(FileWindow &)>, undo);
    const auto window = openFile(lettered(300));
    window->openFind();
    QTest::keyClicks(fieldOf(*window), QStringLiteral("a 15"));
    click(*window, "filterButton");
    const auto *button = window->findChild<QToolButton *>("filterButton");
    const auto *bar = window->findChild<FilterBar *>();
    QVERIFY(window->rows() < 300);
    QVERIFY(button->isChecked());
    QVERIFY(bar->isVisible());
    undo(*window);
    QTRY_COMPARE(window->rows(), 300);
    QVERIFY(!button->isChecked());
    QVERIFY(!bar->isVisible());
    QVERIFY(!panelOf(*window)->hasFilter());
}

void tst_ViewerFind::filterIsReachedByKeys()
{
    const auto window = openFile(lettered(300));
    const auto filterKey = [&window] {
        QTest::keyClick(window.get(), Qt::Key_F, Qt::ControlModifier | Qt::ShiftModifier);
    };
    filterKey(); // without a text it asks for one
    QVERIFY(fieldOf(*window)->hasFocus());
    QVERIFY(!panelOf(*window)->hasFilter());
    QTest::keyClicks(fieldOf(*window), QStringLiteral("a 15"));
    filterKey();
    QTRY_VERIFY(window->rows() < 300);
    filterKey();
    QTRY_COMPARE(window->rows(), 300);

    auto *button = window->findChild<QToolButton *>("filterButton");
    for (int i = 0; i < 20 && !button->hasFocus(); ++i)
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    QVERIFY(button->hasFocus());
    QTest::keyClick(button, Qt::Key_Space);
    QTRY_VERIFY(window->rows() < 300);
    QVERIFY(button->isChecked());
    QVERIFY(button->hasFocus());
}

void tst_ViewerFind::filterTellsOfItself()
{
    const auto window = openFile(lettered(3000));
    window->openFind();
    QTest::keyClicks(fieldOf(*window), QStringLiteral("a 15"));
    click(*window, "filterButton");
    const auto *bar = window->findChild<FilterBar *>();
    const auto expected = [](int shown, int all) {
        return QStringLiteral("%L1 of %L2 rows have “a 15”").arg(shown).arg(all);
    };
    QCOMPARE(bar->text(), expected(39, 3000));
    append("a 15\nnothing\n");
    QTRY_COMPARE(bar->text(), expected(40, 3002));
}

void tst_ViewerFind::filterEndsNotFound()
{
    const auto window = openFile(lettered(300));
    window->openFind();
    QTest::keyClicks(fieldOf(*window), QStringLiteral("a 15x"));
    QTest::keyClick(fieldOf(*window), Qt::Key_Return);
    const auto isNotFound = [&window] {
        const QList<QLabel *> labels = panelOf(*window)->findChildren<QLabel *>();
        return std::any_of(labels.begin(), labels.end(),
                           [](const QLabel *label) { return label->text() == "Not found"; });
    };
    QTRY_VERIFY(isNotFound());
    QTest::keyClick(fieldOf(*window), Qt::Key_Backspace);
    QVERIFY(!isNotFound());
    click(*window, "filterButton");
    QVERIFY(!isNotFound());
    QTest::keyClicks(fieldOf(*window), QStringLiteral("y"));
    QTRY_COMPARE(window->rows(), 0);
    QVERIFY(isNotFound());
    QTest::keyClick(fieldOf(*window), Qt::Key_Backspace);
    QTRY_VERIFY(window->rows() > 0);
    QVERIFY(!isNotFound());
}

void tst_ViewerFind::rulesHoldForBoth_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QStringList>("switches");
    QTest::addColumn<QList<int>>("lines");
    QTest::newRow("plain") << "port" << QStringList() << QList<int> {0, 1, 2, 4};
    QTest::newRow("case") << "Port" << QStringList {"caseButton"} << QList<int> {1, 4};
    QTest::newRow("words") << "port" << QStringList {"wordsButton"} << QList<int> {0, 1};
    QTest::newRow("words and case")
        << "Port" << QStringList {"wordsButton", "caseButton"} << QList<int> {1};
    QTest::newRow("expression") << "^[ap].*[0-9]" << QStringList {"expressionButton"}
                                << QList<int> {0, 1, 2};
    QTest::newRow("expression and case")
        << "^[ap].*[0-9]" << QStringList {"expressionButton", "caseButton"} << QList<int> {0, 2};
    QTest::newRow("expression and words")
        << "p.rt|7" << QStringList {"expressionButton", "wordsButton"} << QList<int> {0, 1, 2};
    QTest::newRow("no expression") << "^[ap]" << QStringList() << QList<int> {};
}

void tst_ViewerFind::rulesHoldForBoth()
{
    QFETCH(QString, text);
    QFETCH(QStringList, switches);
    QFETCH(QList<int>, lines);
    const auto window = openFile("a port 1\nA Port 8\nports 7\nnothing\nExPort\n");
    window->openFind();
    for (const QString &name : std::as_const(switches))
        click(*window, name.toLatin1());
    QTest::keyClicks(fieldOf(*window), text);
    QList<int> found;
    window->table()->setCurrentIndex({});
    for (int i = 0; i < 5; ++i) {
        panelOf(*window)->findNext();
        const int row = window->table()->currentIndex().row();
        if (row >= 0 && !found.contains(row))
            found << row;
    }
    QCOMPARE(found, lines);
    click(*window, "filterButton");
    QTRY_COMPARE(window->rows(), int(lines.size()));
    // Another rule filters again by itself.
    click(*window, "expressionButton");
    if (text == "^[ap]")
        QTRY_COMPARE(window->rows(), 3);
}

void tst_ViewerFind::lineNumbersAreNoText()
{
    const auto window = openFile("x\n404 here\n" + QByteArray("y\n").repeated(500));
    window->openFind();
    QTest::keyClicks(fieldOf(*window), QStringLiteral("404"));
    window->table()->setCurrentIndex({});
    for (int i = 0; i < 2; ++i) {
        if (i == 0)
            panelOf(*window)->findNext();
        else
            panelOf(*window)->findPrev();
        QCOMPARE(window->table()->currentIndex().row(), 1);
    }
    click(*window, "filterButton");
    QCOMPARE(window->rows(), 1);
}

void tst_ViewerFind::columnsAreLeftOut()
{
    const auto window = openFile("name;place\nport;x\ny;port\nport;port\nz;z\n");
    window->openFind();
    auto *menu = window->findChild<QToolButton *>("columnsButton")->menu();
    Q_EMIT menu->aboutToShow();
    QCOMPARE(menu->actions().size(), 2);
    QCOMPARE(menu->actions().at(1)->text(), "place");
    menu->actions().at(1)->setChecked(false);
    QTest::keyClicks(fieldOf(*window), QStringLiteral("port"));
    window->table()->setCurrentIndex({});
    QList<int> found;
    for (int i = 0; i < 3; ++i) {
        panelOf(*window)->findNext();
        found << window->table()->currentIndex().row();
    }
    QCOMPARE(found, QList<int>({0, 2, 0}));
    click(*window, "filterButton");
    QCOMPARE(window->rows(), 2);
    Q_EMIT menu->aboutToShow();
    QVERIFY(menu->actions().at(0)->isChecked());
    QVERIFY(!menu->actions().at(1)->isChecked());
    menu->actions().at(1)->setChecked(true);
    QTRY_COMPARE(window->rows(), 3);
}

void tst_ViewerFind::wrongExpressionIsExplained()
{
    const auto window = openFile(lettered(30));
    window->openFind();
    click(*window, "expressionButton");
    QTest::keyClicks(fieldOf(*window), QStringLiteral("a("));
    const auto problem = [&window] { return window->statusBar()->currentMessage(); };
    QVERIFY(problem().startsWith("Character 3: "));
    click(*window, "filterButton");
    QCOMPARE(window->rows(), 30);
    QVERIFY(!panelOf(*window)->hasFilter());
    panelOf(*window)->findNext();
    QVERIFY(!problem().isEmpty());
    QTest::keyClicks(fieldOf(*window), QStringLiteral(" 1)"));
    QCOMPARE(problem(), QString());
    QTest::keyClick(fieldOf(*window), Qt::Key_Backspace);
    QVERIFY(!problem().isEmpty());
    panelOf(*window)->close();
    QCOMPARE(problem(), QString());
}

void tst_ViewerFind::goesToALine()
{
    const auto window = openFile(lettered(3000));
    QTRY_VERIFY(window->isFollowing());
    window->showLine(1200);
    QCOMPARE(window->table()->currentIndex().row(), 1199);
    QVERIFY(!window->isFollowing());
    QVERIFY(isInSight(*window));
    window->openFind();
    QTest::keyClicks(fieldOf(*window), QStringLiteral("a 15"));
    click(*window, "filterButton");
    for (const auto &[line, text] :
         {std::pair(1, "a 15"), std::pair(16, "a 15"), std::pair(17, "a 150"),
          std::pair(1501, "a 1500"), std::pair(3000, "a 1599")}) {
        window->showLine(line);
        QCOMPARE(currentText(*window), text);
    }
    QTest::keyClicks(fieldOf(*window), QStringLiteral("x"));
    QTRY_COMPARE(window->rows(), 0);
    window->showLine(1);
    QVERIFY(!window->table()->currentIndex().isValid());
}

void tst_ViewerFind::filtersByACell()
{
    const auto window = openFile("name;place\na.b;x\naxb;y\na.b;z\n");
    ViewerTable *table = window->table();
    window->openFind();
    click(*window, "expressionButton"); // the cell's text is none
    panelOf(*window)->close();
    const QPoint place = table->visualRect(table->model()->index(0, 0)).center();
    QTimer::singleShot(0, window.get(), [] {
        auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
        QVERIFY(menu);
        for (QAction *action : menu->actions()) {
            if (action->text().contains(u"a.b")) {
                menu->setActiveAction(action);
                QTest::keyClick(menu, Qt::Key_Return);
                return;
            }
        }
        menu->close();
    });
    Q_EMIT table->customContextMenuRequested(place);
    QTRY_COMPARE(window->rows(), 2);
    QVERIFY(panelOf(*window)->hasFilter());
    QCOMPARE(fieldOf(*window)->text(), "a.b");
}

//! Where the panel is seen.
void tst_ViewerFind::marksWhatIsSought()
{
    const auto window = openFile("some text\n");
    window->openFind(); // takes its room first
    const auto picture = [&window] {
        const QModelIndex line = window->table()->model()->index(0, 1);
        return window->table()->viewport()->grab(window->table()->visualRect(line)).toImage();
    };
    const QImage plain = picture();
    QTest::keyClicks(fieldOf(*window), QStringLiteral("tex"));
    const QImage marked = picture();
    QVERIFY(marked != plain);
    QTest::keyClicks(fieldOf(*window), QStringLiteral("x"));
    QVERIFY(picture() == plain);
    QTest::keyClick(fieldOf(*window), Qt::Key_Backspace);
    QVERIFY(picture() == marked);
    click(*window, "caseButton");
    QVERIFY(picture() == marked);
    fieldOf(*window)->setText("TEX");
    QVERIFY(picture() == plain);
    click(*window, "caseButton");
    QVERIFY(picture() == marked);
    panelOf(*window)->close();
    QTRY_VERIFY(picture() == plain);
}

void tst_ViewerFind::copiesFilteredRows()
{
    const auto window = openFile("a;b\n1;x\n2;y\n3;x\n");
    window->openFind();
    fieldOf(*window)->setText(QStringLiteral("x"));
    click(*window, "filterButton");
    window->table()->selectAll();
    QCOMPARE(window->selectedText(), "1\tx\n3\tx");
}

void tst_ViewerFind::feedIsNotFilteredAtFirst()
{
    FeedWindow window(0, FeedModel::NewRows::AtTop, &m_statistics);
    window.show();
    QCOMPARE(window.table()->model(), window.model());
    window.openFind();
    QCOMPARE(window.table()->model(), window.model());
    panelOf(window)->close();
    QCOMPARE(window.table()->model(), window.model());
}

void tst_ViewerFind::feedGoesOnWhileFiltered()
{
    FeedWindow window(0, FeedModel::NewRows::AtTop, &m_statistics);
    window.show();
    activate(&window);
    window.openFind();
    const QString trade =
        window.model()->index(500, FeedModel::NumberColumn).data().toString().right(4);
    fieldOf(window)->setText(trade);
    click(window, "filterButton");
    const int before = window.rows();
    QVERIFY(before > 0 && before < window.model()->rowCount() / 100);
    window.model()->setRate(50'000);
    window.model()->advance(1'000'000'000);
    QVERIFY(window.rows() >= before);
    panelOf(window)->close();
    QVERIFY(window.rows() >= FeedModel::pastTrades + 50'000);
    QCOMPARE(window.table()->model(), window.model());
}

void tst_ViewerFind::foundRowStaysInSight_data()
{
    QTest::addColumn<FeedModel::NewRows>("newRows");
    QTest::newRow("at the top") << FeedModel::NewRows::AtTop;
    QTest::newRow("at the end") << FeedModel::NewRows::AtEnd;
}

//! New rows would push it out of the window in no time.
void tst_ViewerFind::foundRowStaysInSight()
{
    QFETCH(FeedModel::NewRows, newRows);
    FeedWindow window(0, newRows, &m_statistics);
    window.show();
    activate(&window);
    QCoreApplication::processEvents();
    QVERIFY(window.isFollowing());
    const bool isAtTop = newRows == FeedModel::NewRows::AtTop;
    const int row = isAtTop ? 5 : window.rows() - 6;
    const QString number = window.model()->index(row, FeedModel::NumberColumn).data().toString();
    window.openFind();
    fieldOf(window)->setText(number);
    window.table()->setCurrentIndex(window.model()->index(isAtTop ? 0 : window.rows() - 1, 0));
    if (isAtTop)
        panelOf(window)->findNext();
    else
        panelOf(window)->findPrev();
    const auto currentNumber = [&] {
        return window.table()->currentIndex().siblingAtColumn(0).data().toString();
    };
    QCOMPARE(currentNumber(), number);
    QVERIFY(isInSight(window));
    QVERIFY(!window.isFollowing());
    window.model()->setRate(50'000);
    window.model()->advance(1'000'000'000);
    QCoreApplication::processEvents();
    QCOMPARE(currentNumber(), number);
    QVERIFY(isInSight(window));
}

void tst_ViewerFind::searchIsStopped_data()
{
    QTest::addColumn<QByteArray>("what");
    QTest::addColumn<bool>("filters");

    for (const bool filters : {false, true}) {
        for (const char *what : {"close button", "escape", "type", "close window"})
            QTest::addRow("%s, %s", filters ? "filter" : "search", what)
                << QByteArray(what) << filters;
    }
}

//! The feed has a million rows: long enough for events to run.
void tst_ViewerFind::searchIsStopped()
{
    QFETCH(QByteArray, what);
    QFETCH(bool, filters);

    FeedWindow window(0, FeedModel::NewRows::AtTop, &m_statistics);
    window.show();
    activate(&window);
    window.openFind();
    fieldOf(window)->setText(QStringLiteral("nothing"));
    bool wasBusy = false;
    QTimer::singleShot(0, &window, [&] {
        wasBusy = window.findChild<QProgressIndicator *>()->isAnimated();
        if (what == "close button")
            click(window, "closeButton");
        if (what == "escape")
            QTest::keyClick(fieldOf(window), Qt::Key_Escape);
        if (what == "type")
            QTest::keyClicks(fieldOf(window), QStringLiteral("x"));
        if (what == "close window")
            window.close();
    });
    if (filters)
        click(window, "filterButton");
    else
        QTest::keyClick(fieldOf(window), Qt::Key_Return);
    QVERIFY(wasBusy);
    QVERIFY(!window.findChild<QProgressIndicator *>()->isAnimated());
    QCOMPARE(window.table()->model(), window.model());
    QCOMPARE(panelOf(window)->isVisible(), what == "type");
}

void tst_ViewerFind::searchIsNotBegunTwice_data()
{
    QTest::addColumn<bool>("filters");
    QTest::newRow("search") << false;
    QTest::newRow("filter") << true;
}

//! A key that is held down would begin a search in the events of the one before, and
//! that one cannot end before the new one does.
void tst_ViewerFind::searchIsNotBegunTwice()
{
    QFETCH(bool, filters);
    FeedWindow window(0, FeedModel::NewRows::AtTop, &m_statistics);
    window.show();
    activate(&window);
    window.openFind();
    fieldOf(window)->setText(QStringLiteral("nothing"));
    window.table()->setFocus();
    const auto findNext = [&] {
        QTest::keySequence(&window, QKeySequence(QKeySequence::FindNext));
    };
    int presses = 0;
    int running = 0;
    int most = 0;
    const std::function<void()> press = [&] {
        if (++presses == 5) {
            panelOf(window)->close();
            return;
        }
        QTimer::singleShot(0, &window, press);
        most = qMax(most, ++running);
        findNext();
        --running;
    };
    QTimer::singleShot(0, &window, press);
    if (filters)
        click(window, "filterButton");
    else
        findNext();
    QCOMPARE(presses, 5);
    QCOMPARE(most, 1);
    // Afterwards it may be.
    const QList<QAction *> actions = window.findChildren<QAction *>();
    QVERIFY(std::all_of(actions.begin(), actions.end(), [](const QAction *action) {
        return action->isEnabled() || action->shortcut() != QKeySequence::FindNext;
    }));
}

void tst_ViewerFind::windowsSearchWithinEachOther_data()
{
    QTest::addColumn<bool>("filters");
    QTest::addColumn<bool>("isDestroyed");
    for (const bool filters : {false, true}) {
        for (const bool isDestroyed : {false, true})
            QTest::addRow("%s, %s", filters ? "filter" : "search",
                          isDestroyed ? "destroyed" : "closed")
                << filters << isDestroyed;
    }
}

//! A window searches; one that searches in its events outlives it.
void tst_ViewerFind::windowsSearchWithinEachOther()
{
    QFETCH(bool, filters);
    QFETCH(bool, isDestroyed);

    auto outer = std::make_unique<FeedWindow>(0, FeedModel::NewRows::AtTop, &m_statistics);
    FeedWindow inner(0, FeedModel::NewRows::AtTop, &m_statistics);
    const auto search = [&](FeedWindow *window) {
        window->activateWindow(); // no wait: the timers below must fire in the search
        window->openFind();
        fieldOf(*window)->setText(QStringLiteral("nothing"));
        if (filters)
            panelOf(*window)->filter();
        else
            panelOf(*window)->findNext();
    };
    outer->show();
    inner.show();
    bool wasBusy = false;
    QTimer::singleShot(0, &inner, [&] {
        QTimer::singleShot(0, &inner, [&] {
            wasBusy = inner.findChild<QProgressIndicator *>()->isAnimated();
            if (isDestroyed)
                outer.reset();
            else
                outer->close();
            // This one goes on.
            QTimer::singleShot(0, &inner, [&] { panelOf(inner)->close(); });
        });
        search(&inner);
    });
    search(outer.get());
    QVERIFY(wasBusy);
    QVERIFY(!inner.findChild<QProgressIndicator *>()->isAnimated());
    QCOMPARE(inner.table()->model(), inner.model());
    QVERIFY(isDestroyed || outer->table()->model() == outer->model());
}

QTEST_MAIN(tst_ViewerFind)

#include "tst_viewerfind.moc"
