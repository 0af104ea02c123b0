// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "findtables.h"
#include "slowmodel.h"
#include "sortfilterproxymodel.h"
#include "styleditemdelegate.h"

#include <QStandardItemModel>
#include <QTableView>
#include <QTest>
#include <QTimer>
#include <QTreeView>

#include <functional>
#include <memory>
#include <stdexcept>

namespace {

//! A table that takes so long to search that events run after every row.
struct SlowTable
{
    SlowTable(std::initializer_list<QVariantList> rows)
        : view(std::make_unique<QTableView>())
        , model(std::make_unique<SlowModel>())
        , find(std::make_unique<RecordingEngine>())
    {
        for (const QVariantList &row : rows)
            model->appendRow(itemsOf(row));
        view->setModel(model.get());
        find->setView(view.get());
        find->setHeader(view->horizontalHeader());
    }
    //! Runs \a what in the events after the first row of the next search.
    void inEvents(const std::function<void()> &what)
    {
        QMetaObject::invokeMethod(&context, what, Qt::QueuedConnection);
    }
    QString current() const { return view->currentIndex().data().toString(); }

    QObject context;
    std::unique_ptr<QTableView> view;
    std::unique_ptr<SlowModel> model;
    std::unique_ptr<RecordingEngine> find;
};

} // namespace

class tst_FindEvents : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void eventsAfterMissesOnly();
    void stopFromEvents_data();
    void stopFromEvents();
    void destroyedInEvents_data();
    void destroyedInEvents();
    void destroyedBySelection_data();
    void destroyedBySelection();
    void secondSearchFromEvents_data();
    void secondSearchFromEvents();
    void stopThenSecondSearch();
    void rowsChangeInEvents_data();
    void rowsChangeInEvents();
    void rowsInsertedInEventsOfTheSecondWalk();
    void startRowRemovedInEvents();
    void branchRemovedInEvents();
    void modelResetInEvents();
    void filterChangedInEvents();
    void textChangedInEvents();
    void localeChangedInEvents();
    void throwingRule();
};

void tst_FindEvents::initTestCase()
{
    QLocale::setDefault(QLocale::c());
}

void tst_FindEvents::eventsAfterMissesOnly()
{
    SlowTable table {{"a"}, {"b"}, {"c"}, {"d"}};
    int ran = 0;
    table.inEvents([&] { ++ran; });
    QVERIFY(table.find->findIncremental(utf8("a")));
    QCOMPARE(ran, 0);
    QVERIFY(table.find->findNext(utf8("c")));
    QCOMPARE(ran, 1);
    // A quick search lets none through.
    table.model->isSlow = false;
    table.inEvents([&] { ++ran; });
    QVERIFY(!table.find->findNext(utf8("nothing")));
    QCOMPARE(ran, 1);
    QCoreApplication::processEvents();
    QCOMPARE(ran, 2);
}

void tst_FindEvents::stopFromEvents_data()
{
    QTest::addColumn<bool>("isForward");
    QTest::addColumn<int>("from");
    QTest::addColumn<QStringList>("asked");

    QTest::newRow("forward") << true << 0 << QStringList({"a", "b"});
    QTest::newRow("forward, second walk") << true << 4 << QStringList({"e", "a"});
    QTest::newRow("backward") << false << 4 << QStringList({"d", "c"});
}

void tst_FindEvents::stopFromEvents()
{
    QFETCH(bool, isForward);
    QFETCH(int, from);
    QFETCH(QStringList, asked);

    SlowTable table {{"a"}, {"b"}, {"c"}, {"d"}, {"e"}};
    table.view->setCurrentIndex(table.model->index(from, 0));
    // In the events after the second row, whatever came in between.
    table.inEvents([&] { table.inEvents([&] { table.find->stop(); }); });
    QVERIFY(!table.find->find(utf8("nothing"), isForward, true));
    QCOMPARE(table.find->asked, asked);
    QCOMPARE(table.view->currentIndex().row(), from);
    // It searches again afterwards.
    table.model->isSlow = false;
    QVERIFY(table.find->findIncremental(utf8("e")));
}

void tst_FindEvents::destroyedInEvents_data()
{
    QTest::addColumn<QByteArray>("what");
    QTest::addColumn<bool>("isForward");

    for (const char *what : {"view", "header", "model", "engine", "all", "other view",
                             "other header", "other model", "no model", "columns", "delegate"}) {
        QTest::addRow("%s, forward", what) << QByteArray(what) << true;
        QTest::addRow("%s, backward", what) << QByteArray(what) << false;
    }
}

void tst_FindEvents::destroyedInEvents()
{
    QFETCH(QByteArray, what);
    QFETCH(bool, isForward);

    QStandardItemModel other;
    other.appendRow(item(utf8("a")));
    QTableView otherView;
    otherView.setModel(&other);
    SlowTable table {{"x", "1"}, {"b", "2"}, {"b", "3"}, {"b", "4"}, {"x", "5"}};
    auto header = std::make_unique<QHeaderView>(Qt::Horizontal);
    header->setModel(table.model.get());
    table.find->setHeader(header.get());
    auto delegate = std::make_unique<StyledItemDelegate>(nullptr);
    table.view->setItemDelegate(delegate.get());
    table.view->setCurrentIndex(table.model->index(isForward ? 1 : 3, 0));
    const auto is = [&](const char *name) { return what == name || what == "all"; };
    table.inEvents([&] {
        if (is("header"))
            header.reset();
        if (is("view"))
            table.view.reset();
        if (is("model"))
            table.model.reset();
        if (is("engine"))
            table.find.reset();
        if (is("delegate"))
            delegate.reset();
        if (what == "other view")
            table.find->setView(&otherView);
        if (what == "other header")
            table.find->setHeader(otherView.horizontalHeader());
        if (what == "other model")
            table.view->setModel(&other);
        if (what == "no model")
            table.view->setModel(nullptr);
        if (what == "columns")
            table.model->removeColumn(0);
    });
    RecordingEngine *find = table.find.get();
    QCOMPARE(find->find(utf8("x"), isForward, false), what == "delegate");
    QVERIFY(!other.index(0, 0).data().isNull());
}

void tst_FindEvents::destroyedBySelection_data()
{
    QTest::addColumn<QByteArray>("what");

    for (const char *what : {"view", "model", "engine", "row", "selection"})
        QTest::addRow("%s", what) << QByteArray(what);
}

void tst_FindEvents::destroyedBySelection()
{
    QFETCH(QByteArray, what);

    auto table =
        std::make_unique<SlowTable>(std::initializer_list<QVariantList> {{"a"}, {"b"}, {"c"}});
    table->model->isSlow = false;
    QItemSelectionModel *selection = table->view->selectionModel();
    bool isFirst = true;
    connect(selection, &QItemSelectionModel::currentChanged, this, [&](const QModelIndex &current) {
        if (!std::exchange(isFirst, false))
            return;
        if (what == "view")
            table->view.reset();
        if (what == "model")
            table->model.reset();
        if (what == "engine")
            table->find.reset();
        if (what == "row")
            table->model->removeRow(current.row());
        if (what == "selection")
            table->view->setSelectionModel(new QItemSelectionModel(table->model.get(), this));
    });
    AbstractItemViewFind *find = table->find.get();
    QVERIFY(find->findNext(utf8("b")));
}

void tst_FindEvents::secondSearchFromEvents_data()
{
    QTest::addColumn<QString>("second");
    QTest::addColumn<bool>("secondFinds");

    QTest::newRow("another text") << utf8("c") << true;
    QTest::newRow("the same text") << utf8("e") << true;
    QTest::newRow("nothing to be found") << utf8("nothing") << false;
    QTest::newRow("no text") << QString() << true;
}

void tst_FindEvents::secondSearchFromEvents()
{
    QFETCH(QString, second);
    QFETCH(bool, secondFinds);

    SlowTable table {{"a"}, {"b"}, {"c"}, {"d"}, {"e"}};
    bool innerFound = !secondFinds;
    table.inEvents([&] { innerFound = table.find->findIncremental(second); });
    QVERIFY(!table.find->findIncremental(utf8("e")));
    QCOMPARE(innerFound, secondFinds);
    QCOMPARE(table.current(), second.size() == 1 ? second : QString());
}

void tst_FindEvents::stopThenSecondSearch()
{
    SlowTable table {{"a"}, {"b"}, {"c"}, {"d"}};
    table.inEvents([&] {
        table.find->stop();
        QVERIFY(table.find->findIncremental(QString()));
    });
    QVERIFY(!table.find->findIncremental(utf8("d")));
    QVERIFY(!table.view->currentIndex().isValid());
}

void tst_FindEvents::rowsChangeInEvents_data()
{
    QTest::addColumn<QByteArray>("what");
    QTest::addColumn<bool>("isForward");
    QTest::addColumn<QStringList>("asked"); // d is in the middle of the search, c or e next

    QTest::newRow("insert above, forward")
        << QByteArray("insert 0 2") << true << utf8("d e f g n n a b c").split(u' ');
    QTest::newRow("insert above, backward")
        << QByteArray("insert 0 2") << false << utf8("c b a n n").split(u' ');
    QTest::newRow("remove above, forward")
        << QByteArray("remove 0 2") << true << utf8("d e f g c").split(u' ');
    QTest::newRow("remove above, backward")
        << QByteArray("remove 0 1") << false << utf8("c b").split(u' ');
    QTest::newRow("remove the current, forward")
        << QByteArray("remove 3 1") << true << utf8("d e f g a b c e f g").split(u' ');
    QTest::newRow("remove the current, backward")
        << QByteArray("remove 2 1") << false << utf8("c b a").split(u' ');
    QTest::newRow("remove around it, forward")
        << QByteArray("remove 1 4") << true << utf8("d f g a f g").split(u' ');
    QTest::newRow("remove around it, backward")
        << QByteArray("remove 1 4") << false << utf8("c a").split(u' ');
    QTest::newRow("remove the rest, forward")
        << QByteArray("remove 3 4") << true << utf8("d a b c").split(u' ');
    QTest::newRow("remove the rest, backward")
        << QByteArray("remove 0 3") << false << utf8("c").split(u' ');
    QTest::newRow("remove all, forward")
        << QByteArray("remove 0 7") << true << utf8("d").split(u' ');
    QTest::newRow("remove all, backward")
        << QByteArray("remove 0 7") << false << utf8("c").split(u' ');
    QTest::newRow("sort, forward")
        << QByteArray("sort") << true << utf8("d c b a g f e").split(u' ');
    QTest::newRow("append, forward")
        << QByteArray("insert 7 1") << true << utf8("d e f g n a b c").split(u' ');
}

//! The start is d, which a forward search looks at too.
void tst_FindEvents::rowsChangeInEvents()
{
    QFETCH(QByteArray, what);
    QFETCH(bool, isForward);
    QFETCH(QStringList, asked);

    SlowTable table {{"a"}, {"b"}, {"c"}, {"d"}, {"e"}, {"f"}, {"g"}};
    table.view->setCurrentIndex(table.model->index(3, 0));
    const QList<QByteArray> words = what.split(' ');
    table.inEvents([&] {
        if (words.first() == "remove")
            table.model->removeRows(words.at(1).toInt(), words.at(2).toInt());
        if (words.first() == "sort") {
            table.model->isSlow = false;
            table.model->sort(0, Qt::DescendingOrder);
        }
        for (int i = 0; words.first() == "insert" && i < words.at(2).toInt(); ++i)
            table.model->insertRow(words.at(1).toInt(), item(utf8("n")));
    });
    QVERIFY(!table.find->find(utf8("nothing"), isForward, true));
    QCOMPARE(table.find->asked, asked);
}

void tst_FindEvents::rowsInsertedInEventsOfTheSecondWalk()
{
    SlowTable table {{"a"}, {"b"}, {"c"}};
    table.view->setCurrentIndex(table.model->index(2, 0));
    table.inEvents([&] { table.inEvents([&] { table.model->insertRow(0, item(utf8("n"))); }); });
    // It ends at the row of the start, wherever that is now.
    QVERIFY(!table.find->findIncremental(utf8("nothing")));
    QCOMPARE(table.find->asked, utf8("c a b").split(u' '));
}

void tst_FindEvents::startRowRemovedInEvents()
{
    SlowTable table {{"a"}, {"b"}, {"c"}};
    table.view->setCurrentIndex(table.model->index(1, 0));
    table.inEvents([&] { table.model->removeRow(1); });
    // Where it would have to end is gone: it ends behind the last row.
    QVERIFY(!table.find->findNext(utf8("nothing")));
    QCOMPARE(table.find->asked, utf8("c a c").split(u' '));
}

void tst_FindEvents::branchRemovedInEvents()
{
    const auto run = [](const char *start, bool isForward, const char *removed) {
        SlowModel model;
        fillTree(&model);
        QTreeView view;
        view.setModel(&model);
        view.hideColumn(1);
        RecordingEngine find;
        find.setView(&view);
        find.setHeader(view.header());
        const auto index = [&](const char *name) {
            return QPersistentModelIndex(model
                                             .match(model.index(0, 0), Qt::EditRole, utf8(name), 1,
                                                    Qt::MatchExactly | Qt::MatchRecursive)
                                             .value(0));
        };
        model.isSlow = false;
        view.setCurrentIndex(index(start));
        const QPersistentModelIndex row = index(removed);
        model.isSlow = true;
        QTimer::singleShot(0, &model, [&] { model.removeRow(row.row(), row.parent()); });
        const bool isFound = find.find(utf8("nothing"), isForward, true);
        return isFound ? QStringLiteral("found") : find.asked.join(u' ');
    };
    // The rows are a(b(c, d), e), f(g).
    QCOMPARE(run("c", true, "b"), utf8("c e f g a e f g"));
    QCOMPARE(run("c", true, "a"), utf8("c f g f g"));
    QCOMPARE(run("e", true, "e"), utf8("e f g a b c d f g"));
    QCOMPARE(run("d", true, "d"), utf8("d e f g a b c e f g"));
    QCOMPARE(run("g", true, "f"), utf8("g a b c d e"));
    QCOMPARE(run("e", false, "b"), utf8("d a"));
    QCOMPARE(run("e", false, "a"), utf8("d"));
    QCOMPARE(run("f", false, "e"), utf8("e d c b a"));
}

void tst_FindEvents::modelResetInEvents()
{
    SlowTable table {{"a"}, {"b"}, {"c"}};
    table.inEvents([&] { table.model->clear(); });
    QVERIFY(!table.find->findIncremental(utf8("c")));

    SlowTable same {{"a"}, {"b"}, {"c"}};
    same.inEvents([&] {
        same.model->beginResetModel();
        same.model->endResetModel();
    });
    QVERIFY(!same.find->findIncremental(utf8("c")));
    QCOMPARE(same.find->asked, QStringList("a"));
}

void tst_FindEvents::filterChangedInEvents()
{
    SlowTable table {{"a"}, {"b"}, {"ac"}, {"b"}, {"ad"}};
    SortFilterProxyModel proxy;
    proxy.setSourceModel(table.model.get());
    table.view->setModel(&proxy);
    table.inEvents([&] {
        table.model->isSlow = false;
        table.find->filter(utf8("a"));
    });
    QVERIFY(table.find->findIncremental(utf8("d")));
    QCOMPARE(table.find->asked, utf8("a ac ad").split(u' '));
    QCOMPARE(table.view->currentIndex().row(), 2);

    table.model->isSlow = true;
    table.find->asked.clear();
    table.inEvents([&] {
        table.model->isSlow = false;
        table.find->filter(utf8("none"));
    });
    QVERIFY(!table.find->findPrev(utf8("nothing")));
    QCOMPARE(table.find->asked, QStringList("ac"));
}

//! The caller's string may be a field that changes or goes.
void tst_FindEvents::textChangedInEvents()
{
    SlowTable table {{"a"}, {"b"}, {"c"}, {"b"}};
    QString text = utf8("c");
    table.inEvents([&] { text = utf8("b"); });
    QVERIFY(table.find->findIncremental(text));
    QCOMPARE(text, utf8("b"));
    QCOMPARE(table.current(), utf8("c"));

    table.view->setCurrentIndex(table.model->index(3, 0));
    table.inEvents([&] { text = utf8("c"); });
    text = utf8("nothing");
    QVERIFY(!table.find->findPrev(text));
    QCOMPARE(table.view->currentIndex().row(), 3);
}

void tst_FindEvents::localeChangedInEvents()
{
    SlowTable table {{"a"}, {1.5}, {"c"}};
    table.view->setLocale(QLocale::c());
    table.inEvents([&] { table.view->setLocale(QLocale(QLocale::German, QLocale::Germany)); });
    QVERIFY(table.find->findIncremental(utf8("1,5")));
    QCOMPARE(table.view->currentIndex().row(), 1);
}

void tst_FindEvents::throwingRule()
{
    class Throwing : public Engine
    {
    public:
        bool acceptsData(const QVariant &data, const QString &text, int column) const override
        {
            if (throws)
                throw std::runtime_error("refused");
            return Engine::acceptsData(data, text, column);
        }
        bool throws = true;
    };
    Table table {{"a"}, {"b"}};
    Throwing find;
    find.setView(&table.view);
    find.setHeader(table.view.horizontalHeader());
    QVERIFY_THROWS_EXCEPTION(std::runtime_error, find.findIncremental(utf8("b")));
    find.throws = false;
    QVERIFY(find.findIncremental(utf8("b")));
    QVERIFY(find.findPrev(utf8("a")));
}

QTEST_MAIN(tst_FindEvents)
#include "tst_findevents.moc"
