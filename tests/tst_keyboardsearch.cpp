// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

// Rows that are looked for by typing: those that QTableView finds, without a stop.

#include "activation.h"
#include "qtablefastview.h"
#include "viewpictures.h"

#include <QAbstractItemDelegate>
#include <QAbstractTableModel>
#include <QApplication>
#include <QHeaderView>
#include <QItemSelectionModel>
#include <QPointer>
#include <QRandomGenerator>
#include <QScrollBar>
#include <QShortcut>
#include <QStringListModel>
#include <QTableView>
#include <QTest>
#include <QTimer>

#include <functional>

namespace {

constexpr quint32 seed = 20240905;

//! Texts by row; rows may take their time, or do something when they are asked for.
class WordModel : public QAbstractTableModel
{
public:
    explicit WordModel(const QStringList &words)
        : rows(int(words.size()))
        , m_words(words)
    {
    }
    int rowCount(const QModelIndex &parent = {}) const override
    {
        return parent.isValid() ? 0 : rows;
    }
    int columnCount(const QModelIndex &parent = {}) const override
    {
        return parent.isValid() ? 0 : 3;
    }
    QVariant data(const QModelIndex &index, int role) const override
    {
        if (role != Qt::DisplayRole)
            return {};
        ++asked;
        if (isSlow) {
            QElapsedTimer timer;
            timer.start();
            while (timer.elapsed() < 41) { }
        }
        if (whenAsked)
            whenAsked(index.row());
        const int row = index.row() % int(m_words.size());
        return index.column() == 1 ? m_words.at(row) : QString::number(index.row());
    }
    Qt::ItemFlags flags(const QModelIndex &index) const override
    {
        if (whenChecked)
            whenChecked();
        return disabled.contains(index.row()) ? Qt::NoItemFlags : QAbstractTableModel::flags(index);
    }
    void insert(int row)
    {
        beginInsertRows({}, row, row);
        ++rows;
        endInsertRows();
    }
    void remove(int row)
    {
        beginRemoveRows({}, row, row);
        --rows;
        endRemoveRows();
    }
    void move(int row, int to)
    {
        beginMoveRows({}, row, row, {}, to);
        endMoveRows();
    }
    void restart()
    {
        beginResetModel();
        endResetModel();
    }
    void relayout()
    {
        emit layoutAboutToBeChanged();
        emit layoutChanged();
    }
    void addColumn()
    {
        beginInsertColumns({}, 3, 3);
        endInsertColumns();
    }

    int rows;
    bool isSlow = false;
    QSet<int> disabled;
    mutable int asked = 0;
    std::function<void(int)> whenAsked;
    std::function<void()> whenChecked; //!< whether a row is enabled

private:
    QStringList m_words;
};

QStringList words()
{
    return {QStringLiteral("Apple"),      QStringLiteral("apricot"),
            QStringLiteral("Äpfel"),      QStringLiteral("banana"),
            QStringLiteral("aa"),         QStringLiteral("aaa"),
            QStringLiteral("blackberry"), QString(),
            QStringLiteral(" cherry")};
}

//! Asks for nothing.
class BlankDelegate : public QAbstractItemDelegate
{
public:
    using QAbstractItemDelegate::QAbstractItemDelegate;
    void paint(QPainter *, const QStyleOptionViewItem &, const QModelIndex &) const override { }
    QSize sizeHint(const QStyleOptionViewItem &, const QModelIndex &) const override
    {
        return {10, 10};
    }
};

//! A view that looks through a model in which only the last row begins with "z".
struct Stage
{
    explicit Stage(bool isSlow = true)
        : model(new WordModel(words()))
        , view(new QTableFastView)
    {
        model->rows = 100000;
        model->isSlow = isSlow;
        view->setItemDelegate(new BlankDelegate(view.get()));
        view->setModel(model.get());
        view->setCurrentIndex(model->index(0, 1));
        view->show();
        activate(view.get());
        view->setFocus();
        model->asked = 0;
    }

    //! Whether rows are still looked at.
    bool isSearching()
    {
        const int before = model->asked;
        QCoreApplication::processEvents();
        QCoreApplication::processEvents();
        return model->asked != before;
    }

    std::unique_ptr<WordModel> model;
    std::unique_ptr<QTableFastView> view;
};

using Act = std::function<void(Stage &)>;

} // namespace

class TestKeyboardSearch : public QObject
{
    Q_OBJECT

private slots:
    void findsWhatQtFinds();
    void beginsAtTheFirstRow();
    void findsTheOnlyRow();
    void staysAtAMatch();
    void findsFarRowsLater();
    void startsAnewAfterThePause();
    void gapsAreShort();
    void ends_data();
    void ends();
    void goesOn_data();
    void goesOn();
    void goesOnBesideAFormerModel();
    void escapeIsTheViews();
    void escapeIsFreeAfterTheLastRow();
    void modelMayDoAnything_data();
    void modelMayDoAnything();
    void modelMayChangeWhenAMatchIsChecked();
    void asksNoMoreWhenItHasEnded();
    void findsNothingInNothing();
    void looksAtEveryRowOnce();
};

//! Random words, keys, disabled rows and current cells beside Qt's own view.
void TestKeyboardSearch::findsWhatQtFinds()
{
    QRandomGenerator random(seed);
    const QString letters = QStringLiteral("aAbpz äc");
    for (int round = 0; round < 300; ++round) {
        WordModel model(words());
        model.rows = int(random.bounded(1, 40));
        for (int i = 0; i < 5; ++i)
            model.disabled.insert(int(random.bounded(40)));
        QTableFastView ours;
        QTableView theirs;
        ours.setModel(&model);
        theirs.setModel(&model);
        if (random.bounded(4) > 0) {
            const QModelIndex current = model.index(int(random.bounded(model.rows)), 1);
            ours.setCurrentIndex(current);
            theirs.setCurrentIndex(current);
        } else {
            ours.selectionModel()->clearCurrentIndex();
            theirs.selectionModel()->clearCurrentIndex();
        }
        QString typed;
        for (int key = 0; key < 4; ++key) {
            const QString text = letters.mid(random.bounded(letters.size()), 1);
            typed += text;
            ours.keyboardSearch(text);
            theirs.keyboardSearch(text);
            QVERIFY2(ours.currentIndex() == theirs.currentIndex(),
                     qPrintable(QStringLiteral("seed %1, round %2, typed \"%3\": row %4, not %5")
                                    .arg(seed)
                                    .arg(round)
                                    .arg(typed)
                                    .arg(ours.currentIndex().row())
                                    .arg(theirs.currentIndex().row())));
        }
    }
}

void TestKeyboardSearch::beginsAtTheFirstRow()
{
    QStringListModel model({QStringLiteral("ab"), QStringLiteral("ac")});
    QTableFastView view;
    view.setModel(&model);
    view.selectionModel()->clearCurrentIndex();
    view.keyboardSearch(QStringLiteral("a"));
    QCOMPARE(view.currentIndex(), model.index(0, 0));
}

void TestKeyboardSearch::findsTheOnlyRow()
{
    QStringListModel model(QStringList {QStringLiteral("ab")});
    QTableFastView view;
    view.setModel(&model);
    view.selectionModel()->clearCurrentIndex();
    view.keyboardSearch(QStringLiteral("a"));
    QCOMPARE(view.currentIndex(), model.index(0, 0));
}

void TestKeyboardSearch::staysAtAMatch()
{
    QStringListModel model({QStringLiteral("ab"), QStringLiteral("ba"), QStringLiteral("bab")});
    QTableFastView view;
    view.setModel(&model);
    view.setCurrentIndex(model.index(0, 0));
    QApplication::setKeyboardInputInterval(100000);
    view.keyboardSearch(QStringLiteral("b"));
    view.keyboardSearch(QStringLiteral("a"));
    QApplication::setKeyboardInputInterval(400);
    QCoreApplication::processEvents();
    QCoreApplication::processEvents();
    QCOMPARE(view.currentIndex(), model.index(1, 0));
}

void TestKeyboardSearch::findsFarRowsLater()
{
    Stage stage(false);
    stage.model->rows = 3000000;
    stage.model->whenAsked = {};
    const QModelIndex last = stage.model->index(stage.model->rows - 1, 0);
    stage.view->setCurrentIndex(stage.model->index(0, 0)); // column 0 shows row numbers
    QApplication::setKeyboardInputInterval(100000);
    for (QChar digit : QStringLiteral("2999999"))
        QTest::keyClick(stage.view.get(), digit.toLatin1());
    QTRY_COMPARE(stage.view->currentIndex(), last);
    QVERIFY(!stage.isSearching());
    QVERIFY(stage.view->selectionModel()->isSelected(last));
    QApplication::setKeyboardInputInterval(400);
}

void TestKeyboardSearch::startsAnewAfterThePause()
{
    WordModel model(words());
    QTableFastView view;
    view.setModel(&model);
    view.setCurrentIndex(model.index(0, 1));
    QApplication::setKeyboardInputInterval(100000);
    view.keyboardSearch(QStringLiteral("b"));
    QCOMPARE(view.currentIndex().row(), 3);
    view.keyboardSearch(QStringLiteral("l"));
    QCOMPARE(view.currentIndex().row(), 6);
    QApplication::setKeyboardInputInterval(0);
    QElapsedTimer pause;
    pause.start();
    while (pause.elapsed() < 2) { }
    view.keyboardSearch(QStringLiteral("a"));
    QCOMPARE(view.currentIndex().row(), 0);
    QApplication::setKeyboardInputInterval(400);
}

//! One row takes longer than a slice: events come after every row.
void TestKeyboardSearch::gapsAreShort()
{
    Stage stage;
    int events = 0;
    QTimer timer;
    connect(&timer, &QTimer::timeout, [&] { ++events; });
    timer.start(0);
    stage.view->keyboardSearch(QStringLiteral("z"));
    QCOMPARE(stage.model->asked, 1);
    QTRY_VERIFY(events >= 4);
    QVERIFY(stage.model->asked <= events + 2);
    stage.view.reset();
}

void TestKeyboardSearch::ends_data()
{
    QTest::addColumn<Act>("act");
    const auto row = [](const char *name, Act act) { QTest::newRow(name) << act; };
    row("Esc", [](Stage &s) { QTest::keyClick(s.view.get(), Qt::Key_Escape); });
    row("arrow", [](Stage &s) { QTest::keyClick(s.view.get(), Qt::Key_Down); });
    row("other key", [](Stage &s) { QTest::keyClick(s.view.get(), Qt::Key_F7); });
    row("click",
        [](Stage &s) { QTest::mouseClick(s.view->viewport(), Qt::LeftButton, {}, QPoint(5, 5)); });
    row("current index", [](Stage &s) { s.view->setCurrentIndex(s.model->index(2, 0)); });
    row("insertion", [](Stage &s) { s.model->insert(50); });
    row("removal", [](Stage &s) { s.model->remove(50); });
    row("move", [](Stage &s) { s.model->move(50, 60); });
    row("reset", [](Stage &s) { s.model->restart(); });
    row("layout", [](Stage &s) { s.model->relayout(); });
    row("column", [](Stage &s) { s.model->addColumn(); });
    row("other model", [](Stage &s) { s.view->setModel(new QStringListModel(s.view.get())); });
    row("no model", [](Stage &s) { s.view->setModel(nullptr); });
    row("other selection model", [](Stage &s) {
        s.view->setSelectionModel(new QItemSelectionModel(s.model.get(), s.view.get()));
    });
    row("model destroyed", [](Stage &s) { s.model.reset(); });
    row("view hidden", [](Stage &s) { s.view->hide(); });
    row("view destroyed", [](Stage &s) { s.view.reset(); });
}

void TestKeyboardSearch::ends()
{
    QFETCH(Act, act);
    Stage stage;
    stage.view->keyboardSearch(QStringLiteral("z"));
    QVERIFY(stage.isSearching());
    act(stage);
    QCoreApplication::processEvents();
    QVERIFY(!stage.model || !stage.isSearching());
}

void TestKeyboardSearch::goesOn_data()
{
    QTest::addColumn<Act>("act");
    const auto row = [](const char *name, Act act) { QTest::newRow(name) << act; };
    row("nothing", [](Stage &) {});
    row("next letter", [](Stage &s) { QTest::keyClick(s.view.get(), 'z'); });
    row("changed cell", [](Stage &s) {
        emit s.model->dataChanged(s.model->index(90000, 0), s.model->index(90000, 1));
    });
    row("scrolling", [](Stage &s) { s.view->verticalScrollBar()->setValue(500); });
}

void TestKeyboardSearch::goesOn()
{
    QFETCH(Act, act);
    Stage stage;
    stage.view->keyboardSearch(QStringLiteral("z"));
    act(stage);
    QVERIFY(stage.isSearching());
    stage.view->hide();
    QVERIFY(!stage.isSearching());
}

//! A search is done with a model when it has ended.
void TestKeyboardSearch::goesOnBesideAFormerModel()
{
    Stage former;
    former.view->keyboardSearch(QStringLiteral("z"));
    QTest::keyClick(former.view.get(), Qt::Key_Escape);
    QVERIFY(!former.isSearching());
    const QPointer<QItemSelectionModel> formerSelection(former.view->selectionModel());
    Stage stage;
    former.view->setModel(stage.model.get());
    former.view->setCurrentIndex(stage.model->index(0, 1));
    former.view->keyboardSearch(QStringLiteral("z"));
    QVERIFY(stage.isSearching());
    former.model->insert(50);
    QVERIFY(stage.isSearching());
    QVERIFY(formerSelection);
    formerSelection->setCurrentIndex(former.model->index(9, 1), QItemSelectionModel::NoUpdate);
    QVERIFY(stage.isSearching());
}

//! What ends the search does not close the dialog around the view.
void TestKeyboardSearch::escapeIsTheViews()
{
    Stage stage;
    int closed = 0;
    QShortcut shortcut(Qt::Key_Escape, stage.view.get());
    connect(&shortcut, &QShortcut::activated, [&] { ++closed; });
    stage.view->keyboardSearch(QStringLiteral("z"));
    QTest::keyClick(stage.view.get(), Qt::Key_Escape);
    QCOMPARE(closed, 0);
    QVERIFY(!stage.isSearching());
    QTest::keyClick(stage.view.get(), Qt::Key_Escape);
    QCOMPARE(closed, 1);
}

void TestKeyboardSearch::escapeIsFreeAfterTheLastRow()
{
    Stage stage(false);
    stage.model->rows = 10;
    int closed = 0;
    QShortcut shortcut(Qt::Key_Escape, stage.view.get());
    connect(&shortcut, &QShortcut::activated, [&] { ++closed; });
    stage.view->keyboardSearch(QStringLiteral("z"));
    QTRY_VERIFY(!stage.isSearching());
    QTest::keyClick(stage.view.get(), Qt::Key_Escape);
    QCOMPARE(closed, 1);
}

void TestKeyboardSearch::modelMayDoAnything_data()
{
    QTest::addColumn<Act>("act");
    const auto row = [](const char *name, Act act) { QTest::newRow(name) << act; };
    row("types", [](Stage &s) { s.view->keyboardSearch(QStringLiteral("b")); });
    row("lets events through", [](Stage &) { QCoreApplication::processEvents(); });
    row("changes the current index",
        [](Stage &s) { s.view->setCurrentIndex(s.model->index(7, 1)); });
    row("inserts", [](Stage &s) { s.model->insert(0); });
    row("removes", [](Stage &s) { s.model->remove(s.model->rows - 1); });
    row("resets", [](Stage &s) { s.model->restart(); });
    row("takes another model", [](Stage &s) { s.view->setModel(nullptr); });
    row("destroys the view", [](Stage &s) { s.view.reset(); });
}

void TestKeyboardSearch::modelMayDoAnything()
{
    QFETCH(Act, act);
    for (int row : {1, 5}) {
        Stage stage(false);
        stage.model->rows = 200;
        bool isDone = false;
        stage.model->whenAsked = [&](int asked) {
            if (asked == row && !isDone) {
                isDone = true;
                act(stage);
            }
        };
        stage.view->keyboardSearch(QStringLiteral("z"));
        for (int i = 0; i < 5; ++i)
            QCoreApplication::processEvents();
        QVERIFY(isDone);
    }
}

void TestKeyboardSearch::modelMayChangeWhenAMatchIsChecked()
{
    Stage stage(false);
    const QModelIndex other = stage.model->index(7, 1);
    stage.model->whenChecked = [&] {
        stage.model->whenChecked = {};
        stage.view->setCurrentIndex(other);
    };
    stage.view->keyboardSearch(QStringLiteral("b"));
    QVERIFY(!stage.model->whenChecked);
    QCOMPARE(stage.view->currentIndex(), other);
}

void TestKeyboardSearch::asksNoMoreWhenItHasEnded()
{
    Stage stage(false);
    stage.model->whenAsked = [&](int) { stage.view->setCurrentIndex(stage.model->index(7, 1)); };
    stage.view->keyboardSearch(QStringLiteral("z"));
    QCOMPARE(stage.model->asked, 1);
}

void TestKeyboardSearch::findsNothingInNothing()
{
    QTableFastView view;
    view.keyboardSearch(QStringLiteral("a")); // no model
    WordModel model(words());
    model.rows = 0;
    view.setModel(&model);
    view.keyboardSearch(QStringLiteral("aa"));
    QVERIFY(!view.currentIndex().isValid());
}

void TestKeyboardSearch::looksAtEveryRowOnce()
{
    Stage stage(false);
    stage.model->rows = 1000;
    QHash<int, int> counts;
    stage.model->whenAsked = [&](int row) { ++counts[row]; };
    stage.view->keyboardSearch(QStringLiteral("z"));
    QTRY_VERIFY(!stage.isSearching());
    QCOMPARE(counts.size(), 1000);
    for (int count : std::as_const(counts))
        QCOMPARE(count, 1);
}

QTEST_MAIN(TestKeyboardSearch)

#include "tst_keyboardsearch.moc"
