// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

// What of a view is painted again as something happens, and what is not.

#include "bigmodel.h"
#include "recordedview.h"

#include <QItemSelectionModel>
#include <QLineEdit>
#include <QScrollBar>
#include <QTest>
#include <QVBoxLayout>

#include <memory>
#include <utility>

namespace {

constexpr int width = 300;
constexpr int height = 10 * rowHeight;

QRegion rowsFrom(int first, int last)
{
    return QRect(0, first * rowHeight, width, (last - first + 1) * rowHeight);
}

//! A view on screen, all of which was painted.
struct Shown
{
    explicit Shown(int rows = 50)
        : model(rows)
        , view(&model)
    {
        view.showWith(width, height);
        view.regions.clear();
    }
    //! What was painted since.
    QRegion painted()
    {
        settleEvents();
        QRegion all;
        for (const QRegion &region : std::exchange(view.regions, {}))
            all |= region;
        return all;
    }

    BigModel model;
    View view;
};

const QRegion everything(0, 0, width, height);

} // namespace

class tst_ViewRepaints : public QObject
{
    Q_OBJECT

private slots:
    void nothingHappens();
    void modelGoes();
    void selectionModelGoes();
    void iconSizeChanges();
    void currentRowChanges();
    void rowsThatChangeTheirColor_data();
    void rowsThatChangeTheirColor();
    void focusChangesElsewhere();
    void editorsAreWhereTheirRowsAre_data();
    void editorsAreWhereTheirRowsAre();
};

void tst_ViewRepaints::nothingHappens()
{
    Shown shown;
    QCOMPARE(shown.painted(), QRegion());
}

void tst_ViewRepaints::modelGoes()
{
    auto model = std::make_unique<BigModel>(50);
    View view(model.get());
    view.showWith(width, height);
    view.regions.clear();
    model.reset();
    settleEvents();
    QVERIFY(!view.regions.isEmpty());
    QCOMPARE(view.regions.first(), everything);
}

void tst_ViewRepaints::selectionModelGoes()
{
    Shown shown;
    auto *selection = new QItemSelectionModel(&shown.model);
    shown.view.setSelectionModel(selection);
    shown.painted();
    delete selection;
    QCOMPARE(shown.painted(), everything);
}

void tst_ViewRepaints::iconSizeChanges()
{
    Shown shown;
    shown.view.setIconSize(QSize(7, 9));
    QCOMPARE(shown.painted(), everything);
}

void tst_ViewRepaints::currentRowChanges()
{
    Shown shown;
    shown.view.setSelectionMode(QAbstractItemView::NoSelection);
    shown.view.setCurrentIndex(shown.model.index(2, 1));
    shown.painted();
    shown.view.setCurrentIndex(shown.model.index(5, 2));
    QCOMPARE(shown.painted(), rowsFrom(2, 2) | rowsFrom(5, 5));
}

void tst_ViewRepaints::rowsThatChangeTheirColor_data()
{
    QTest::addColumn<bool>("isAlternating");
    QTest::addColumn<int>("count");
    QTest::addColumn<QRegion>("region");
    QTest::newRow("all below") << true << 1 << rowsFrom(3, 9);
    QTest::newRow("the new ones") << true << 2 << rowsFrom(3, 4);
    QTest::newRow("the new one") << false << 1 << rowsFrom(3, 3);
}

void tst_ViewRepaints::rowsThatChangeTheirColor()
{
    QFETCH(bool, isAlternating);
    QFETCH(int, count);
    QFETCH(QRegion, region);
    Shown shown;
    shown.view.setAlternatingRowColors(isAlternating);
    shown.painted();
    shown.model.insert(3, count);
    QCOMPARE(shown.painted(), region);
}

void tst_ViewRepaints::focusChangesElsewhere()
{
    QWidget window;
    BigModel model(50);
    auto *view = new View(&model);
    auto *a = new QLineEdit;
    auto *b = new QLineEdit;
    auto *layout = new QVBoxLayout(&window);
    for (QWidget *widget :
         {static_cast<QWidget *>(view), static_cast<QWidget *>(a), static_cast<QWidget *>(b)}) {
        layout->addWidget(widget);
    }
    window.resize(400, 400);
    window.show();
    window.activateWindow();
    view->setCurrentIndex(model.index(2, 0));
    auto *editor = new QLineEdit;
    view->setIndexWidget(model.index(2, 1), editor);
    a->setFocus();
    QTRY_VERIFY(a->hasFocus());
    settleEvents();
    view->regions.clear();
    b->setFocus();
    settleEvents();
    QCOMPARE(view->regions, QList<QRegion>());
    for (QWidget *next : {static_cast<QWidget *>(editor), static_cast<QWidget *>(a)}) {
        view->regions.clear();
        next->setFocus();
        settleEvents();
        QCOMPARE(view->regions.isEmpty(), false);
    }
}

void tst_ViewRepaints::editorsAreWhereTheirRowsAre_data()
{
    QTest::addColumn<bool>("isVisible");
    QTest::addColumn<bool>("isLayoutPending");
    QTest::newRow("visible") << true << false;
    QTest::newRow("hidden") << false << false;
    QTest::newRow("visible, something else to be laid out") << true << true;
}

void tst_ViewRepaints::editorsAreWhereTheirRowsAre()
{
    QFETCH(bool, isVisible);
    QFETCH(bool, isLayoutPending);
    Shown shown;
    auto *editor = new QLineEdit;
    shown.view.setIndexWidget(shown.model.index(3, 1), editor);
    shown.painted();
    QCOMPARE(editor->y(), 3 * rowHeight);
    shown.view.setVisible(isVisible);
    if (isLayoutPending)
        shown.view.setIconSize(QSize(7, 9));
    shown.model.insert(1, 2);
    QCOMPARE(editor->y(), 5 * rowHeight);
    if (isLayoutPending)
        shown.view.setIconSize(QSize(9, 7));
    shown.model.remove(1, 1);
    QCOMPARE(editor->y(), 4 * rowHeight);
    if (isLayoutPending)
        shown.view.setIconSize(QSize(7, 9));
    shown.model.move(4, 1, 0);
    QCOMPARE(editor->y(), shown.view.visualRect(shown.model.index(0, 1)).y());
}

QTEST_MAIN(tst_ViewRepaints)

#include "tst_viewrepaints.moc"
