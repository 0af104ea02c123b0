// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "abstractitemviewfind.h"
#include "activation.h"
#include "filterlineedit.h"
#include "itemviewfindtoolbar.h"
#include "qprogressindicator.h"
#include "qtablefastview.h"
#include "slowmodel.h"
#include "sortfilterproxymodel.h"

#include <QApplication>
#include <QLabel>
#include <QMainWindow>
#include <QPointer>
#include <QStandardItemModel>
#include <QTest>
#include <QToolButton>

#include <functional>
#include <memory>

namespace {

const QString notFound = QStringLiteral("Not found");

//! A window with a table and its panel, as a program has them.
struct Window
{
    Window()
        : model(std::make_unique<SlowModel>())
        , proxy(std::make_unique<SortFilterProxyModel>())
        , view(new QTableFastView)
        , find(new AbstractItemViewFind(view))
        , panel(new ItemViewFindToolBar)
    {
        model->isSlow = false;
        for (const char *name : {"apple", "banana", "cherry", "apricot", "date", "fig"}) {
            model->appendRow({new QStandardItem(QString::fromLatin1(name)),
                              new QStandardItem(QStringLiteral("fruit"))});
        }
        proxy->setSourceModel(model.get());
        view->setModel(proxy.get());
        find->setView(view);
        find->setHeader(view->header());
        panel->setViewFind(find);
        window.setCentralWidget(view);
        window.addToolBar(Qt::BottomToolBarArea, panel);
        panel->hide();
        window.resize(500, 300);
        window.show();
        activate(&window);
        panel->openFind();
    }
    FilterLineEdit *field() const { return panel->findChild<FilterLineEdit *>(); }
    QString label() const { return panel->findChild<QLabel *>()->text(); }
    QToolButton *button(const char *name) const
    {
        return panel->findChild<QToolButton *>(QString::fromLatin1(name));
    }
    QString current() const { return view->currentIndex().data().toString(); }
    void type(const char *text) const
    {
        field()->clear();
        QTest::keyClicks(field(), QString::fromLatin1(text));
    }
    void press(Qt::Key key) const { QTest::keyClick(field(), key); }
    //! Runs \a what in the events after the first row of the next search.
    void inEvents(const std::function<void()> &what)
    {
        model->isSlow = true;
        QMetaObject::invokeMethod(&context, what, Qt::QueuedConnection);
    }

    QObject context;
    std::unique_ptr<SlowModel> model;
    std::unique_ptr<SortFilterProxyModel> proxy;
    QMainWindow window;
    QPointer<QTableFastView> view;
    QPointer<AbstractItemViewFind> find;
    QPointer<ItemViewFindToolBar> panel;
};

} // namespace

class tst_ItemViewFindToolBar : public QObject
{
    Q_OBJECT

private slots:
    void withoutEngine();
    void engineDestroyed();
    void typingDoesNotSearch();
    void findsByKeys();
    void notFoundLabel();
    void filters();
    void closingShowsAllRows();
    void clearButtonShowsAllRows();
    void filterAvailability();
    void matchCase();
    void matchCaseOfLaterEngine();
    void anyUseTellsALaterEngineOfTheCase_data();
    void anyUseTellsALaterEngineOfTheCase();

    void duringSearch_data();
    void duringSearch();
    void endsTheSearch_data();
    void endsTheSearch();
    void searchFromOutsideDuringSearch();
};

void tst_ItemViewFindToolBar::withoutEngine()
{
    const QString text = QStringLiteral("a");
    ItemViewFindToolBar panel;
    QVERIFY(!panel.isFilterAvailable());
    QVERIFY(panel.findIncremental(text));
    QVERIFY(!panel.findPrev(text));
    QVERIFY(!panel.findNext(text));
    panel.filter(text);
    panel.resetSearch();
    panel.openFind();
    QVERIFY(!panel.findChild<QToolButton *>(QStringLiteral("filterButton"))->isVisible());
    QTest::keyClicks(panel.findChild<FilterLineEdit *>(), text);
    panel.findNext();
    QCOMPARE(panel.findChild<QLabel *>()->text(), notFound);
    panel.filter();
    panel.close();
}

void tst_ItemViewFindToolBar::engineDestroyed()
{
    Window w;
    w.type("apple");
    delete w.find;
    w.press(Qt::Key_Return);
    QCOMPARE(w.label(), notFound);
    QVERIFY(!w.panel->isFilterAvailable());
    w.press(Qt::Key_Escape);
    QVERIFY(!w.panel->isVisible());
}

void tst_ItemViewFindToolBar::typingDoesNotSearch()
{
    Window w;
    w.type("nothing");
    w.press(Qt::Key_Return);
    QCOMPARE(w.label(), notFound);
    QTest::keyClicks(w.field(), QStringLiteral("x"));
    QCOMPARE(w.label(), QString());
    const QModelIndex current = w.view->currentIndex();
    w.type("cherry");
    QCOMPARE(w.view->currentIndex(), current);
}

void tst_ItemViewFindToolBar::findsByKeys()
{
    Window w;
    w.type("AP");
    w.press(Qt::Key_Return);
    QCOMPARE(w.current(), QStringLiteral("apricot"));
    w.press(Qt::Key_Enter);
    QCOMPARE(w.current(), QStringLiteral("apple"));
    QTest::keySequence(&w.window, QKeySequence(QKeySequence::FindNext));
    QCOMPARE(w.current(), QStringLiteral("apricot"));
    QTest::keySequence(&w.window, QKeySequence(QKeySequence::FindPrevious));
    QCOMPARE(w.current(), QStringLiteral("apple"));
    // No way back from the first row.
    QTest::keySequence(&w.window, QKeySequence(QKeySequence::FindPrevious));
    QCOMPARE(w.current(), QStringLiteral("apple"));
    QVERIFY(w.field()->hasFocus());
    // With the focus elsewhere the keys are not the panel's.
    w.view->setFocus();
    QTest::keySequence(&w.window, QKeySequence(QKeySequence::FindNext));
    QCOMPARE(w.current(), QStringLiteral("apple"));
}

void tst_ItemViewFindToolBar::notFoundLabel()
{
    Window w;
    QCOMPARE(w.label(), QString());
    w.type("kiwi");
    w.press(Qt::Key_Return);
    QCOMPARE(w.label(), notFound);
    w.type("fig");
    w.press(Qt::Key_Return);
    QCOMPARE(w.label(), QString());
    // The only one: not found again, which is not said.
    w.press(Qt::Key_Return);
    QCOMPARE(w.label(), QString());
    QCOMPARE(w.current(), QStringLiteral("fig"));
}

void tst_ItemViewFindToolBar::filters()
{
    Window w;
    w.type("ap");
    QTest::mouseClick(w.button("filterButton"), Qt::LeftButton);
    QCOMPARE(w.proxy->rowCount(), 2);
    // Upper and lower case apart, unlike the search.
    w.type("AP");
    QCOMPARE(w.proxy->rowCount(), 2);
    QTest::mouseClick(w.button("filterButton"), Qt::LeftButton);
    QCOMPARE(w.proxy->rowCount(), 0);
    w.type("fruit");
    w.view->header()->hideSection(1);
    QTest::mouseClick(w.button("filterButton"), Qt::LeftButton);
    QCOMPARE(w.proxy->rowCount(), 0);
}

void tst_ItemViewFindToolBar::closingShowsAllRows()
{
    Window w;
    w.type("ap");
    QTest::mouseClick(w.button("filterButton"), Qt::LeftButton);
    QCOMPARE(w.proxy->rowCount(), 2);
    w.field()->setFocus();
    w.press(Qt::Key_Escape);
    QVERIFY(!w.panel->isVisible());
    QCOMPARE(w.proxy->rowCount(), 6);
}

void tst_ItemViewFindToolBar::clearButtonShowsAllRows()
{
    Window w;
    w.type("ap");
    QTest::mouseClick(w.button("filterButton"), Qt::LeftButton);
    QCOMPARE(w.proxy->rowCount(), 2);
    for (IconButton *icon : w.field()->findChildren<IconButton *>()) {
        if (icon->isVisible())
            QTest::mouseClick(icon, Qt::LeftButton);
    }
    QCOMPARE(w.proxy->rowCount(), 6);
    QVERIFY(w.field()->text().isEmpty());
}

void tst_ItemViewFindToolBar::filterAvailability()
{
    Window w;
    QVERIFY(w.button("filterButton")->isVisible());
    w.view->setModel(w.model.get());
    w.panel->openFind();
    QVERIFY(w.button("filterButton")->isVisible());
    w.view->setModel(nullptr);
    w.panel->openFind();
    QVERIFY(!w.button("filterButton")->isVisible());
}

//! Without the switch finding takes no notice of the case and filtering does. With it
//! both do as it says, at once.
void tst_ItemViewFindToolBar::matchCase()
{
    Window w;
    w.model->setData(w.model->index(3, 0), QStringLiteral("APRICOT"));
    w.type("ap");
    w.press(Qt::Key_Return);
    QCOMPARE(w.current(), QStringLiteral("APRICOT"));
    w.panel->setCaseSensitivity(Qt::CaseSensitive);
    w.panel->setCaseSensitivity(Qt::CaseInsensitive);
    w.panel->filter(QStringLiteral("ap"));
    QCOMPARE(w.proxy->rowCount(), 1);

    w.panel->setCaseSwitchVisible(true);
    QCOMPARE(w.proxy->rowCount(), 2);
    QTest::mouseClick(w.button("caseButton"), Qt::LeftButton);
    QCOMPARE(w.proxy->rowCount(), 1);
    w.panel->filter(QString());
    w.view->setCurrentIndex(w.proxy->index(0, 0));
    w.press(Qt::Key_Return);
    QCOMPARE(w.label(), notFound); // but in the current row
    w.type("AP");
    QCOMPARE(w.label(), QString());
    w.press(Qt::Key_Return);
    QCOMPARE(w.current(), QStringLiteral("APRICOT"));
    QTest::mouseClick(w.button("caseButton"), Qt::LeftButton);
    w.press(Qt::Key_Return);
    QCOMPARE(w.current(), QStringLiteral("apple"));
    w.panel->filter(QStringLiteral("AP"));
    QCOMPARE(w.proxy->rowCount(), 2);
}

void tst_ItemViewFindToolBar::matchCaseOfLaterEngine()
{
    Window w;
    w.panel->setViewFind(nullptr);
    w.panel->setCaseSwitchVisible(true);
    w.panel->setCaseSensitivity(Qt::CaseSensitive);
    QCOMPARE(w.find->caseSensitivity(), Qt::CaseInsensitive);
    w.panel->setViewFind(w.find);
    w.type("FIG");
    w.press(Qt::Key_Return);
    QCOMPARE(w.label(), notFound);
    w.panel->setCaseSwitchVisible(false);
    w.panel->setCaseSensitivity(Qt::CaseInsensitive);
    w.press(Qt::Key_Return);
    QCOMPARE(w.label(), notFound); // what was set stays
}

void tst_ItemViewFindToolBar::anyUseTellsALaterEngineOfTheCase_data()
{
    QTest::addColumn<std::function<void(ItemViewFindToolBar *)>>("use");
    const auto row = [](const char *name, const std::function<void(ItemViewFindToolBar *)> &use) {
        QTest::newRow(name) << use;
    };
    const QString text = QStringLiteral("FIG");
    row("typing", [=](ItemViewFindToolBar *panel) { panel->findIncremental(text); });
    row("previous", [=](ItemViewFindToolBar *panel) { panel->findPrev(text); });
    row("next", [=](ItemViewFindToolBar *panel) { panel->findNext(text); });
    row("filter", [=](ItemViewFindToolBar *panel) { panel->filter(text); });
}

void tst_ItemViewFindToolBar::anyUseTellsALaterEngineOfTheCase()
{
    QFETCH(std::function<void(ItemViewFindToolBar *)>, use);
    Window w;
    w.panel->setViewFind(nullptr);
    w.panel->setCaseSwitchVisible(true);
    w.panel->setCaseSensitivity(Qt::CaseSensitive);
    w.panel->setViewFind(w.find);
    use(w.panel);
    QCOMPARE(w.find->caseSensitivity(), Qt::CaseSensitive);
}

void tst_ItemViewFindToolBar::duringSearch_data()
{
    QTest::addColumn<QByteArray>("what");

    for (const char *what :
         {"type", "clear", "escape", "close button", "delete the view", "delete the model",
          "replace the model", "change the filter", "delete the panel", "delete the engine",
          "delete the window's widgets", "close the window"})
        QTest::newRow(what) << QByteArray(what);
}

//! Whatever the user or the program does while rows are searched, the search ends
//! without a result, and what is left of the panel is alive.
void tst_ItemViewFindToolBar::duringSearch()
{
    QFETCH(QByteArray, what);

    Window w;
    QStandardItemModel other(1, 1);
    w.type("nothing");
    bool ran = false;
    w.inEvents([&] {
        ran = true;
        QVERIFY(w.panel->findChild<QProgressIndicator *>()->isAnimated());
        QVERIFY(!w.button("findNextButton")->isEnabled());
        QVERIFY(w.button("closeButton")->isEnabled());
        if (what == "type")
            QTest::keyClicks(w.field(), QStringLiteral("b"));
        if (what == "clear") {
            for (IconButton *icon : w.field()->findChildren<IconButton *>())
                QTest::mouseClick(icon, Qt::LeftButton);
        }
        if (what == "escape")
            w.press(Qt::Key_Escape);
        if (what == "close button")
            QTest::mouseClick(w.button("closeButton"), Qt::LeftButton);
        if (what == "delete the view")
            delete w.view;
        if (what == "delete the model")
            w.proxy.reset();
        if (what == "replace the model")
            w.view->setModel(&other);
        if (what == "change the filter")
            w.find->filter(QStringLiteral("none"));
        if (what == "delete the panel")
            delete w.panel;
        if (what == "delete the engine")
            delete w.find;
        if (what == "delete the window's widgets") {
            delete w.panel;
            delete w.view;
        }
        if (what == "close the window")
            w.window.close();
    });
    w.panel->findNext();
    QVERIFY(ran);
    if (!w.panel)
        return;
    QCOMPARE(w.label(), notFound);
    QVERIFY(!w.panel->findChild<QProgressIndicator *>()->isAnimated());
    QVERIFY(w.button("findNextButton")->isEnabled());
    w.model->isSlow = false;
    w.panel->openFind();
    w.panel->findPrev();
    w.panel->close();
}

void tst_ItemViewFindToolBar::endsTheSearch_data()
{
    QTest::addColumn<Qt::Key>("key");
    QTest::newRow("typing") << Qt::Key_S;
    QTest::newRow("closing") << Qt::Key_Escape;
}

//! It does not get to the match in the last row.
void tst_ItemViewFindToolBar::endsTheSearch()
{
    QFETCH(Qt::Key, key);
    Window w;
    w.type("fig");
    bool ran = false;
    w.inEvents([&] {
        ran = true;
        w.press(key);
    });
    w.panel->findNext();
    QVERIFY(ran);
    QVERIFY(w.current() != QStringLiteral("fig"));
}

void tst_ItemViewFindToolBar::searchFromOutsideDuringSearch()
{
    Window w;
    w.type("fig");
    w.inEvents([&] {
        w.model->isSlow = false;
        w.panel->findNext();
    });
    w.panel->findNext();
    QCOMPARE(w.current(), QStringLiteral("fig"));
    // The inner search has found it, and that counts until the text changes.
    QCOMPARE(w.label(), QString());
    QVERIFY(!w.panel->findChild<QProgressIndicator *>()->isAnimated());
}

QTEST_MAIN(tst_ItemViewFindToolBar)

#include "tst_itemviewfindtoolbar.moc"
