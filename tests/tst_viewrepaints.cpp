// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

// What of a view is painted again as something happens, and what is not.

#include "bigmodel.h"
#include "recordedview.h"

#include <QHoverEvent>
#include <QItemSelectionModel>
#include <QLineEdit>
#include <QScopedValueRollback>
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

public:
    //! Pixels are moved and kept only where they are whole.
    static void initMain() { qputenv("QT_SCALE_FACTOR", "1"); }

private slots:
    void nothingHappens();
    void modelGoes();
    void selectionModelGoes();
    void headerGoes();
    void derivedViewsPaintOtherColumns_data();
    void derivedViewsPaintOtherColumns();
    void iconSizeChanges();
    void currentRowChanges();
    void pointerMoves_data();
    void pointerMoves();
    void selectionChanges_data();
    void selectionChanges();
    void rowsThatChangeTheirColor_data();
    void rowsThatChangeTheirColor();
    void delegatesOfRowsStay_data();
    void delegatesOfRowsStay();
    void dataChangesNobodyKnowsWhere();
    void dataChangesAmidAMove_data();
    void dataChangesAmidAMove();
    void colorsOfMovedRows();
    void newLookIsPaintedOnce();
    void autoScrollComesBackAfterMoves_data();
    void autoScrollComesBackAfterMoves();
    void rowsComeAtTheEnd();
    void columnsAreScrolled_data();
    void columnsAreScrolled();
    void columnsAreResized_data();
    void columnsAreResized();
    void bufferedColumnsBesideAMove_data();
    void bufferedColumnsBesideAMove();
    void focusChangesElsewhere();
    void editorsAreWhereTheirRowsAre_data();
    void editorsAreWhereTheirRowsAre();
    void editorsFollowTheScrollMode();
    void editorsAreMirrored();
    void scrollBarIsPaintedOnce();
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

void tst_ViewRepaints::headerGoes()
{
    class RowPainter : public View
    {
    public:
        using View::drawRow;
        using View::View;
    };
    BigModel model(50);
    RowPainter view(&model);
    view.showWith(width, height);
    QImage image(width, rowHeight, QImage::Format_RGB32);
    QPainter painter(&image);
    QStyleOptionViewItem option;
    option.rect = image.rect();
    view.recorder.forget();
    view.drawRow(&painter, option, model.index(1, 0));
    QCOMPARE(view.recorder.timesPainted(1, 0), 1);
    delete view.header();
    view.recorder.forget();
    view.drawRow(&painter, option, model.index(1, 0));
    settleEvents();
    QVERIFY(view.recorder.painted.isEmpty());
}

void tst_ViewRepaints::derivedViewsPaintOtherColumns_data()
{
    QTest::addColumn<bool>("isBuffered");
    QTest::newRow("painted") << false;
    QTest::newRow("buffered") << true;
}

//! Column 6, which is not on screen, over column 0.
void tst_ViewRepaints::derivedViewsPaintOtherColumns()
{
    QFETCH(bool, isBuffered);
    class Derived : public View
    {
    public:
        using View::View;

    protected:
        void drawRow(QPainter *painter, const QStyleOptionViewItem &option,
                     const QModelIndex &index) const override
        {
            View::drawRow(painter, option, index);
            const QScopedValueRollback other(leftAndRight, {6, 6});
            painter->save();
            painter->translate(-columnViewportPosition(6), 0);
            View::drawRow(painter, option, index);
            painter->restore();
        }
    };
    BigModel model(50, 7);
    Derived view(&model);
    view.setPaintBufferEnabled(isBuffered);
    view.showWith(3 * 60, 100);
    const auto colorAt = [&view](int x) { return view.viewport()->grab().toImage().pixel(x, 5); };
    const QRgb over = colorAt(5);
    const QRgb second = colorAt(65);
    QVERIFY(over != second);
    view.horizontalScrollBar()->setValue(4 * 60);
    view.viewport()->grab();
    QCOMPARE(colorAt(2 * 60 + 5), over); // where it belongs
    view.horizontalScrollBar()->setValue(0);
    QCOMPARE(colorAt(5), over);
    QCOMPARE(colorAt(65), second);
    view.recorder.forget();
    view.viewport()->grab();
    QCOMPARE(view.recorder.timesPainted(1, 6), 1); // each time
    QCOMPARE(view.recorder.timesPainted(1, 1), isBuffered ? 0 : 1);
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

void tst_ViewRepaints::pointerMoves_data()
{
    QTest::addColumn<bool>("isBuffered");
    QTest::newRow("plain") << false;
    QTest::newRow("with the paint buffer") << true;
}

void tst_ViewRepaints::pointerMoves()
{
    QFETCH(bool, isBuffered);
    Shown shown;
    shown.view.setPaintBufferEnabled(isBuffered);
    shown.view.viewport()->update();
    shown.painted();
    const auto hover = [&](QEvent::Type type, const QPointF &to) {
        shown.view.recorder.forget();
#if QT_VERSION >= QT_VERSION_CHECK(6, 3, 0)
        QHoverEvent event(type, to, to, QPointF());
#else
        QHoverEvent event(type, to, QPointF());
#endif
        QCoreApplication::sendEvent(shown.view.viewport(), &event);
        return shown.painted();
    };
    const auto isHovered = [&](int row, int column) {
        return bool(shown.view.recorder.optionOf(row, column).state & QStyle::State_MouseOver);
    };
    QCOMPARE(hover(QEvent::HoverMove, {70, 3 * rowHeight + 5}), rowsFrom(3, 3));
    QVERIFY(isHovered(3, 1));
    QVERIFY(!isHovered(3, 0));
    QCOMPARE(hover(QEvent::HoverMove, {75, 3 * rowHeight + 8}), QRegion()); // the same cell
    QCOMPARE(hover(QEvent::HoverMove, {5, 5 * rowHeight + 5}), rowsFrom(3, 3) | rowsFrom(5, 5));
    QVERIFY(isHovered(5, 0));
    QVERIFY(!isHovered(3, 1));
    hover(QEvent::HoverLeave, {-1, -1});
    QVERIFY(!isHovered(5, 0));
}

void tst_ViewRepaints::selectionChanges_data()
{
    QTest::addColumn<int>("first");
    QTest::addColumn<int>("last");
    QTest::addColumn<QRegion>("region");
    // The whole row looks selected when its first cell is.
    QTest::newRow("first column") << 0 << 0 << rowsFrom(2, 3);
    QTest::newRow("first columns") << 0 << 2 << rowsFrom(2, 3);
    QTest::newRow("second column") << 1 << 1 << QRegion(60, 2 * rowHeight, 60, 2 * rowHeight);
    QTest::newRow("all columns") << 0 << 4 << rowsFrom(2, 3);
}

void tst_ViewRepaints::selectionChanges()
{
    QFETCH(int, first);
    QFETCH(int, last);
    QFETCH(QRegion, region);
    Shown shown;
    const QItemSelection selection(shown.model.index(2, first), shown.model.index(3, last));
    for (const QItemSelectionModel::SelectionFlag change :
         {QItemSelectionModel::Select, QItemSelectionModel::Deselect}) {
        shown.view.selectionModel()->select(selection, change);
        QCOMPARE(shown.painted(), region);
    }
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

void tst_ViewRepaints::delegatesOfRowsStay_data()
{
    QTest::addColumn<bool>("isBuffered");
    QTest::addColumn<QByteArray>("what");
    QTest::addColumn<int>("row");
    for (const char *what : {"insert", "remove", "move"}) {
        for (const int row : {0, 3, 9}) {
            QTest::addRow("%s, row %d", what, row) << false << QByteArray(what) << row;
            QTest::addRow("%s, row %d, paint buffer", what, row) << true << QByteArray(what) << row;
        }
    }
}

void tst_ViewRepaints::delegatesOfRowsStay()
{
    class Plain : public QStyledItemDelegate
    {
    public:
        void paint(QPainter *painter, const QStyleOptionViewItem &option,
                   const QModelIndex &) const override
        {
            painter->fillRect(option.rect, Qt::black);
        }
    };
    QFETCH(bool, isBuffered);
    QFETCH(QByteArray, what);
    QFETCH(int, row);
    Shown shown;
    shown.view.setPaintBufferEnabled(isBuffered);
    Plain plain;
    shown.view.setItemDelegateForRow(row, &plain);
    shown.view.viewport()->update();
    shown.painted();
    if (what == "insert")
        shown.model.insert(1, 2);
    else if (what == "remove")
        shown.model.remove(1, 1);
    else
        shown.model.move(1, 1, 7);
    settleEvents();
    const QImage picture = maintainedPicture(shown.view);
    QCOMPARE(picture.pixelColor(90, row * rowHeight + 5), QColor(Qt::black));
    QVERIFY(isSamePicture(picture, freshPicture(shown.view)));
    shown.view.setItemDelegateForRow(row, nullptr);
}

void tst_ViewRepaints::dataChangesNobodyKnowsWhere()
{
    Shown shown;
    const QModelIndex cell = shown.model.index(4, 1);
    for (const auto &[topLeft, bottomRight] :
         {std::pair(cell, QModelIndex()), std::pair(QModelIndex(), cell),
          std::pair(QModelIndex(), QModelIndex())}) {
        shown.view.dataChanged(topLeft, bottomRight, {});
        QCOMPARE(shown.painted(), everything);
    }
}

void tst_ViewRepaints::dataChangesAmidAMove_data()
{
    autoScrollComesBackAfterMoves_data();
}

//! Rows may have other numbers already, but for those that only children changed places in.
void tst_ViewRepaints::dataChangesAmidAMove()
{
    QFETCH(bool, isFromChild);
    QFETCH(bool, isToChild);
    Shown shown;
    const QModelIndex from = isFromChild ? shown.model.index(1, 0) : QModelIndex();
    const QModelIndex to = isToChild ? shown.model.index(2, 0) : QModelIndex();
    const QModelIndex changed = shown.model.index(4, 1);
    shown.view.rowsAboutToBeMoved(from, 30, 30, to, 40);
    shown.view.dataChanged(changed, changed, {});
    QCOMPARE(shown.painted(),
             isFromChild && isToChild ? QRegion(60, 4 * rowHeight, 60, rowHeight) : everything);
    shown.view.rowsMoved(from, 30, 30, to, 40);
    shown.painted();
    shown.view.dataChanged(changed, changed, {});
    QCOMPARE(shown.painted(), QRegion(60, 4 * rowHeight, 60, rowHeight));
}

//! Kept pictures of rows that change their alternate colour are not used.
void tst_ViewRepaints::colorsOfMovedRows()
{
    class Striped : public QStyledItemDelegate
    {
    public:
        void paint(QPainter *painter, const QStyleOptionViewItem &option,
                   const QModelIndex &) const override
        {
            const bool isOdd = option.features & QStyleOptionViewItem::Alternate;
            painter->fillRect(option.rect, isOdd ? Qt::black : Qt::white);
        }
    };
    Shown shown;
    Striped striped;
    shown.view.setItemDelegate(&striped);
    shown.view.setAlternatingRowColors(true);
    const auto stripes = [&] {
        const QImage picture = freshPicture(shown.view);
        QList<bool> odd;
        for (int y = rowHeight / 2; y < height; y += rowHeight)
            odd.append(picture.pixelColor(90, y) == Qt::black);
        return odd;
    };
    shown.view.setRowHeight(rowHeight);
    shown.view.setPaintBufferEnabled(true);
    for (const int start : {0, 2}) {
        for (const int count : {1, 2, 3}) {
            for (int to = 0; to <= 8; ++to) {
                stripes();
                shown.model.move(start, count, to);
                QList<bool> expected;
                for (int row = shown.view.getFirstVisibleItem(); expected.size() < 10; ++row)
                    expected.append(row % 2 == 1);
                QCOMPARE(stripes(), expected);
            }
        }
    }
    shown.view.setItemDelegate(&shown.view.recorder);
}

void tst_ViewRepaints::newLookIsPaintedOnce()
{
    Shown shown;
    shown.view.setAlternatingRowColors(true);
    shown.painted();
    shown.view.paintEvents = 0;
    shown.view.setAlternatingRowColors(false);
    shown.view.viewport()->update();
    QCOMPARE(shown.painted(), everything);
    QCOMPARE(shown.view.paintEvents, 1);
    // What is painted first makes the view paint the rest.
    shown.view.setAlternatingRowColors(true);
    shown.view.paintEvents = 0;
    shown.view.viewport()->repaint(0, 0, 10, 10);
    QCOMPARE(shown.painted(), everything);
}

void tst_ViewRepaints::autoScrollComesBackAfterMoves_data()
{
    QTest::addColumn<bool>("isFromChild");
    QTest::addColumn<bool>("isToChild");
    QTest::newRow("rows") << false << false;
    QTest::newRow("from a child") << true << false;
    QTest::newRow("to a child") << false << true;
    QTest::newRow("among children") << true << true;
}

void tst_ViewRepaints::autoScrollComesBackAfterMoves()
{
    QFETCH(bool, isFromChild);
    QFETCH(bool, isToChild);
    Shown shown;
    const QModelIndex from = isFromChild ? shown.model.index(1, 0) : QModelIndex();
    const QModelIndex to = isToChild ? shown.model.index(2, 0) : QModelIndex();
    shown.view.rowsAboutToBeMoved(from, 0, 0, to, 3);
    QVERIFY(!shown.view.hasAutoScroll());
    shown.view.rowsMoved(from, 0, 0, to, 3);
    QVERIFY(shown.view.hasAutoScroll());
}

void tst_ViewRepaints::rowsComeAtTheEnd()
{
    Shown shown;
    shown.view.bar()->setValue(shown.view.bar()->maximum());
    shown.painted();
    shown.model.append(2);
    QCOMPARE(shown.painted(), rowsFrom(8, 9));
    QCOMPARE(shown.view.itemAtCoordinate(0), 42);
    QVERIFY(isSamePicture(maintainedPicture(shown.view), freshPicture(shown.view)));
}

void tst_ViewRepaints::columnsAreScrolled_data()
{
    addDirections();
}

void tst_ViewRepaints::columnsAreScrolled()
{
    QFETCH(bool, isRightToLeft);
    Shown shown;
    shown.view.setLayoutDirection(isRightToLeft ? Qt::RightToLeft : Qt::LeftToRight);
    shown.view.header()->resizeSection(2, 200);
    shown.painted();
    shown.view.horizontalScrollBar()->setValue(10);
    QCOMPARE(shown.view.header()->offset(), 10);
    const QRegion strip(isRightToLeft ? 0 : width - 10, 0, 10, height);
    QCOMPARE(shown.painted(), strip);
    QVERIFY(isSamePicture(maintainedPicture(shown.view), freshPicture(shown.view)));
}

void tst_ViewRepaints::columnsAreResized_data()
{
    QTest::addColumn<bool>("isRightToLeft");
    QTest::addColumn<int>("size"); // of a column that had 60 pixels, as all have
    QTest::addColumn<QRegion>("region");
    const auto strip = [](int x, int w) { return QRegion(x, 0, w, height); };
    QTest::newRow("larger") << false << 80 << strip(60, 99); // and where its neighbour was

    QTest::newRow("smaller") << false << 40 << (strip(60, 40) | strip(width - 20, 20));
    QTest::newRow("to one pixel") << false << 1 << (strip(60, 1) | strip(width - 59, 59));
    QTest::newRow("to nothing") << false << 0 << everything;
    QTest::newRow("larger, right to left") << true << 80 << strip(width - 159, 99);
    QTest::newRow("smaller, right to left")
        << true << 40 << (strip(width - 100, 40) | strip(0, 20));
}

void tst_ViewRepaints::columnsAreResized()
{
    QFETCH(bool, isRightToLeft);
    QFETCH(int, size);
    Shown shown;
    shown.view.setLayoutDirection(isRightToLeft ? Qt::RightToLeft : Qt::LeftToRight);
    shown.view.header()->setMinimumSectionSize(0);
    shown.view.header()->resizeSection(4, 300);
    shown.painted();
    shown.view.header()->resizeSection(1, size);
    QTEST(shown.painted(), "region");
    QVERIFY(isSamePicture(maintainedPicture(shown.view), freshPicture(shown.view)));
}

void tst_ViewRepaints::bufferedColumnsBesideAMove_data()
{
    QTest::addColumn<int>("column");
    QTest::addColumn<int>("from");
    QTest::addColumn<int>("to");
    QTest::addColumn<QList<int>>("dropped");
    QTest::newRow("inside") << 4 << 2 << 5 << QList<int> {1, 3, 4, 6};
    QTest::newRow("at the ends") << 0 << 1 << 7 << QList<int> {0, 2, 6};
    QTest::newRow("from beside the last") << 3 << 6 << 2 << QList<int> {1, 2, 3, 5, 7};
    QTest::newRow("from beside the first") << 5 << 1 << 4 << QList<int> {2, 3, 4, 5};
    QTest::newRow("second") << 1 << 2 << 2 << QList<int> {0, 1, 3};
    QTest::newRow("last but one") << 7 << 6 << 0 << QList<int> {1, 5, 6, 7};
}

void tst_ViewRepaints::bufferedColumnsBesideAMove()
{
    QFETCH(int, column);
    QFETCH(int, from);
    QFETCH(int, to);
    BigModel model(20, 8);
    View view(&model);
    view.setPaintBufferEnabled(true);
    view.showWith(8 * 60, height);
    for (int at = 0; at < 8; ++at)
        QVERIFY(view.m_pixmapCacheIndexed.pixmap(3, at));
    view.columnMoved(column, from, to);
    QList<int> dropped;
    for (int at = 0; at < 8; ++at) {
        if (!view.m_pixmapCacheIndexed.pixmap(3, at))
            dropped.append(at);
    }
    QTEST(dropped, "dropped");
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

//! While something else is to be laid out, too.
void tst_ViewRepaints::editorsFollowTheScrollMode()
{
    Shown shown;
    shown.view.header()->resizeSection(4, 900);
    auto *editor = new QLineEdit;
    const QModelIndex cell = shown.model.index(8, 4);
    shown.view.setIndexWidget(cell, editor);
    shown.view.bar()->setValue(3);
    shown.view.horizontalScrollBar()->setValue(70);
    shown.painted();
    const auto isInPlace = [&] { return editor->pos() == shown.view.visualRect(cell).topLeft(); };
    QVERIFY(isInPlace());
    shown.view.setIconSize(QSize(7, 9));
    shown.view.setVerticalScrollMode(perPixel);
    QVERIFY(isInPlace());
    shown.view.setIconSize(QSize(9, 7));
    shown.view.setHorizontalScrollMode(QAbstractItemView::ScrollPerItem);
    QVERIFY(isInPlace());
}

void tst_ViewRepaints::editorsAreMirrored()
{
    Shown shown;
    auto *editor = new QLineEdit;
    const QModelIndex cell = shown.model.index(3, 1);
    shown.view.setIndexWidget(cell, editor);
    shown.view.header()->resizeSection(4, 200);
    for (const Qt::LayoutDirection direction : {Qt::RightToLeft, Qt::LeftToRight}) {
        const int before = editor->x();
        shown.view.setLayoutDirection(direction);
        QVERIFY(editor->x() != before);
        QCOMPARE(editor->pos(), shown.view.visualRect(cell).topLeft());
    }
}

void tst_ViewRepaints::scrollBarIsPaintedOnce()
{
    class PaintCounter : public QObject
    {
    public:
        bool eventFilter(QObject *, QEvent *event) override
        {
            count += event->type() == QEvent::Paint;
            return false;
        }
        int count = 0;
    };
    Shown shown;
    PaintCounter paints;
    shown.view.bar()->installEventFilter(&paints);
    shown.view.bar()->setValue(10);
    shown.view.bar()->setValue(20);
    QCOMPARE(paints.count, 0); // not at once
    settleEvents();
    QCOMPARE(paints.count, 1);
    shown.view.bar()->setRange(0, 1000);
    settleEvents();
    QCOMPARE(paints.count, 2);
}

QTEST_MAIN(tst_ViewRepaints)

#include "tst_viewrepaints.moc"
