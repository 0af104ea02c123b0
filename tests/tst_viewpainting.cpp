// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "bigmodel.h"
#include "recordedview.h"
#include "scaled.h"

#include <QDragMoveEvent>
#include <QLineEdit>
#include <QMimeData>
#include <QPainter>
#include <QProxyStyle>
#include <QStringListModel>
#include <QStyle>
#include <QStyledItemDelegate>
#include <QTest>

#include <memory>

class TestViewPainting : public QObject
{
    Q_OBJECT

public:
    //! Called before the application is made: what is reused at ratio 1 is tested.
    static void initMain() { qputenv("QT_SCALE_FACTOR", "1"); }

private slots:
    void paintsEachRowOnce();
    void paintsWholeRows();
    void alternatesOddRows();
    void bufferSparesTheDelegate();
    void bufferPaintsWhatChanged();
    void disabledItemsLookDisabled();
    void positionsOfCells();
    void delegatesOfRowsAndColumns();
    void currentRowHasFocus_data();
    void currentRowHasFocus();
    void selectedRowsAreActive();
    void rowsAtListsTwice();
    void dropIndicator_data();
    void dropIndicator();
    void dropIndicatorLooksAsTheViewDoes();
    void decorationIsSelectedInRows();
    void editorGetsFocusFrame();
    void otherRatiosPaintAnew();
    void shortTableLeavesBackground();
    void pushedOutRowsAreEvicted();
    void boundsAreTheCaches_data();
    void boundsAreTheCaches();
    void rowsMovedAboveCachedOnes();
};

void TestViewPainting::paintsEachRowOnce()
{
    BigModel model(100);
    View view(&model);
    view.showWith(200, 200);
    view.recorder.forget();
    QRegion region(10, 45, 10, 4);
    region += QRect(100, 47, 10, 3);
    region += QRect(50, 55, 20, 30);
    QPixmap target(200, 200);
    QPainter painter(&target);
    view.draw(&painter, region);
    for (int row = 2; row <= 4; ++row) {
        for (int column = 0; column < 4; ++column)
            QCOMPARE(view.recorder.timesPainted(row, column), 1);
    }
    QCOMPARE(view.recorder.painted.size(), 12);
}

void TestViewPainting::paintsWholeRows()
{
    BigModel model(100);
    View view(&model);
    view.showWith(200, 200);
    view.recorder.forget();
    view.viewport()->update(5, 3 * rowHeight + 2, 3, 3);
    settleEvents();
    QCOMPARE(view.recorder.painted.size(), 4); // columns 0 to 3 are in view
    for (int column = 0; column < 4; ++column)
        QCOMPARE(view.recorder.timesPainted(3, column), 1);
}

void TestViewPainting::alternatesOddRows()
{
    BigModel model(100);
    View view(&model);
    view.setAlternatingRowColors(true);
    view.showWith(200, 200);
    for (int row = 0; row < 10; ++row) {
        const auto features = view.recorder.optionOf(row, 0).features;
        QCOMPARE(bool(features & QStyleOptionViewItem::Alternate), row % 2 == 1);
    }
}

void TestViewPainting::bufferSparesTheDelegate()
{
    BigModel model(100);
    View view(&model);
    view.setPaintBufferEnabled(true);
    view.showWith(200, 200);
    const QImage first = maintainedPicture(view);
    view.recorder.forget();
    view.viewport()->update();
    settleEvents();
    QVERIFY(view.recorder.painted.isEmpty());
    QCOMPARE(maintainedPicture(view), first);
    view.setPaintBufferEnabled(false);
    view.setPaintBufferEnabled(true);
    view.viewport()->update();
    settleEvents();
    QVERIFY(!view.recorder.painted.isEmpty());
}

void TestViewPainting::bufferPaintsWhatChanged()
{
    BigModel model(100);
    View view(&model);
    view.setPaintBufferEnabled(true);
    view.showWith(200, 200);
    view.recorder.forget();
    emit model.dataChanged(model.index(4, 1), model.index(4, 1));
    emit model.dataChanged(model.index(60, 1), model.index(60, 1));
    settleEvents();
    QCOMPARE(view.recorder.painted, (QModelIndexList {model.index(4, 1)}));
    view.setCurrentIndex(model.index(50, 0));
    view.bar()->setValue(0);
    settleEvents();
    view.recorder.forget();
    model.insert(0, 1); // pinned to the top: one new row
    settleEvents();
    for (const QModelIndex &index : std::as_const(view.recorder.painted))
        QCOMPARE(index.row(), 0);
    QCOMPARE(view.recorder.painted.size(), 4);
}

void TestViewPainting::disabledItemsLookDisabled()
{
    BigModel model(100);
    model.disabledRow = 3;
    View view(&model);
    view.showWith(200, 200);
    const QStyleOptionViewItem disabled = view.recorder.optionOf(3, 1);
    QVERIFY(!(disabled.state & QStyle::State_Enabled));
    QCOMPARE(disabled.palette.currentColorGroup(), QPalette::Disabled);
    const QStyleOptionViewItem enabled = view.recorder.optionOf(2, 1);
    QVERIFY(enabled.state & QStyle::State_Enabled);
    QVERIFY(enabled.palette.currentColorGroup() != QPalette::Disabled);
    QVERIFY(enabled.showDecorationSelected);
    QCOMPARE(enabled.widget, &view);
    view.setEnabled(false);
    settleEvents();
    QVERIFY(!(view.recorder.optionOf(2, 1).state & QStyle::State_Enabled));
}

void TestViewPainting::positionsOfCells()
{
    using Item = QStyleOptionViewItem;
    BigModel model(3, 4);
    View view(&model);
    view.showWith(300, 100);
    QCOMPARE(view.recorder.optionOf(0, 0).viewItemPosition, Item::Beginning);
    QCOMPARE(view.recorder.optionOf(0, 1).viewItemPosition, Item::Middle);
    QCOMPARE(view.recorder.optionOf(0, 3).viewItemPosition, Item::End);
    view.header()->moveSection(0, 3); // 1 2 3 0
    settleEvents();
    QCOMPARE(view.recorder.optionOf(0, 1).viewItemPosition, Item::Beginning);
    QCOMPARE(view.recorder.optionOf(0, 3).viewItemPosition, Item::End);
    QCOMPARE(view.recorder.optionOf(0, 0).viewItemPosition, Item::OnlyOne);
    view.hideColumn(1);
    view.hideColumn(2);
    settleEvents();
    QCOMPARE(view.recorder.optionOf(0, 3).viewItemPosition, Item::OnlyOne); // next is column 0

    BigModel single(3, 1);
    View narrow(&single);
    narrow.showWith(300, 100);
    QCOMPARE(narrow.recorder.optionOf(1, 0).viewItemPosition, Item::OnlyOne);
}

void TestViewPainting::delegatesOfRowsAndColumns()
{
    BigModel model(10);
    View view(&model);
    Recorder ofRow;
    Recorder ofColumn;
    view.setItemDelegateForRow(2, &ofRow);
    view.setItemDelegateForColumn(1, &ofColumn);
    view.showWith(200, 200);
    QVERIFY(ofRow.timesPainted(2, 1) > 0);
    QVERIFY(ofColumn.timesPainted(3, 1) > 0);
    QCOMPARE(ofColumn.timesPainted(2, 1), 0);
    QCOMPARE(view.recorder.timesPainted(2, 0), 0);
    QVERIFY(view.recorder.timesPainted(3, 0) > 0);
}

void TestViewPainting::currentRowHasFocus_data()
{
    QTest::addColumn<bool>("isBuffered");
    QTest::newRow("direct") << false;
    QTest::newRow("buffer") << true;
}

void TestViewPainting::currentRowHasFocus()
{
    QFETCH(bool, isBuffered);
    BigModel model(100);
    View view(&model);
    view.setPaintBufferEnabled(isBuffered);
    view.showWith(200, 200);
    const auto makeCurrent = [&](int row) {
        view.selectionModel()->setCurrentIndex(model.index(row, 1), QItemSelectionModel::NoUpdate);
        settleEvents();
    };
    makeCurrent(2);
    QVERIFY(view.recorder.optionOf(2, 0).state & QStyle::State_HasFocus);
    QVERIFY(view.recorder.optionOf(2, 3).state & QStyle::State_HasFocus);
    QVERIFY(!(view.recorder.optionOf(3, 1).state & QStyle::State_HasFocus));
    makeCurrent(5);
    QVERIFY(!(view.recorder.optionOf(2, 0).state & QStyle::State_HasFocus));
    QVERIFY(view.recorder.optionOf(5, 0).state & QStyle::State_HasFocus);
    view.selectionModel()->clear();
    settleEvents();
    QVERIFY(!(view.recorder.optionOf(5, 0).state & QStyle::State_HasFocus));
}

void TestViewPainting::selectedRowsAreActive()
{
    BigModel model(100);
    View view(&model);
    view.showWith(200, 200);
    view.selectRow(4);
    settleEvents();
    const QStyleOptionViewItem option = view.recorder.optionOf(4, 2);
    QVERIFY(option.state & QStyle::State_Selected);
    QVERIFY(option.state & QStyle::State_Active);
    QCOMPARE(option.palette.currentColorGroup(), QPalette::Active);
    // Selecting the cell in column 0 alone makes its row look selected.
    view.selectionModel()->select(model.index(6, 0), QItemSelectionModel::Select);
    settleEvents();
    QVERIFY(view.recorder.optionOf(6, 3).state & QStyle::State_Selected);
    view.setSelectionBehavior(QAbstractItemView::SelectItems);
    view.viewport()->update();
    settleEvents();
    QVERIFY(!(view.recorder.optionOf(6, 3).state & QStyle::State_Selected));
    QVERIFY(view.recorder.optionOf(6, 3).state & QStyle::State_Active);
    QVERIFY(view.recorder.optionOf(6, 0).state & QStyle::State_Selected);
}

void TestViewPainting::rowsAtListsTwice()
{
    BigModel model(100);
    View view(&model);
    view.showWith(200, 200);
    view.bar()->setValue(10);
    QRegion region(0, 0, 10, 10);
    region += QRect(50, 5, 10, 20);
    QList<int> rows = view.rowsAt(region);
    QCOMPARE(rows.count(10), qsizetype(region.rectCount())); // once for each rectangle
    QVERIFY(rows.contains(11));
    QVERIFY(!rows.contains(12));
    QVERIFY(view.rowsAt(QRegion()).isEmpty());
    QList<int> filled {7, 8};
    view.atRegion(region, &filled);
    QCOMPARE(filled, rows);
    model.restart(0);
    QVERIFY(view.rowsAt(region).isEmpty());
}

void TestViewPainting::dropIndicator_data()
{
    QTest::addColumn<int>("y");
    QTest::addColumn<bool>("onItems");
    QTest::addColumn<bool>("between");
    QTest::addColumn<QRect>("rect");
    const int top = 2 * rowHeight;
    QTest::newRow("upper edge") << top + 1 << false << true << QRect(0, top, 60, 0);
    QTest::newRow("lower edge") << top + rowHeight - 1 << false << true
                                << QRect(0, top + rowHeight - 1, 60, 0);
    QTest::newRow("middle") << top + 10 << true << false << QRect(0, top, 60, rowHeight);
    QTest::newRow("edge that takes nothing") << top + 1 << true << false << QRect();
    QTest::newRow("below the rows") << 150 << true << true << QRect();
}

void TestViewPainting::dropIndicator()
{
    QFETCH(int, y);
    QFETCH(bool, onItems);
    QFETCH(bool, between);
    BigModel model(5);
    model.isDropOnItems = onItems;
    model.isDropBetween = between;
    View view(&model);
    view.setAcceptDrops(true);
    view.setDragDropMode(QAbstractItemView::DragDrop);
    view.setDropIndicatorShown(true);
    view.showWith(200, 200);
    std::unique_ptr<QMimeData> data(model.mimeData({model.index(0, 0)}));
    QDragMoveEvent event(QPoint(10, y), Qt::CopyAction | Qt::MoveAction, data.get(), Qt::LeftButton,
                         Qt::NoModifier);
    view.dragMoveEvent(&event);
    QTEST(view.m_dropIndicatorRect, "rect");
    view.setState(View::DraggingState);
    view.viewport()->update();
    settleEvents();
    view.setState(View::NoState);
    view.setDropIndicatorShown(false);
    view.dragMoveEvent(&event);
    QCOMPARE(view.m_dropIndicatorRect, QRect());
}

void TestViewPainting::dropIndicatorLooksAsTheViewDoes()
{
    class Style : public QProxyStyle
    {
    public:
        void drawPrimitive(PrimitiveElement element, const QStyleOption *option, QPainter *painter,
                           const QWidget *widget) const override
        {
            if (element == PE_IndicatorItemViewItemDrop)
                drawn.append(*option);
            QProxyStyle::drawPrimitive(element, option, painter, widget);
        }
        mutable QList<QStyleOption> drawn;
    };
    Style style;
    BigModel model(5);
    View view(&model);
    view.setStyle(&style);
    view.setLayoutDirection(Qt::RightToLeft);
    view.setPalette(QPalette(Qt::green));
    view.showWith(200, 200);
    QVERIFY(style.drawn.isEmpty());
    view.m_dropIndicatorRect = QRect(0, 20, 200, 0);
    view.setDropIndicatorShown(true);
    view.setState(View::DraggingState);
    view.viewport()->repaint();
    view.setState(View::NoState);
    QCOMPARE(style.drawn.size(), 1);
    QCOMPARE(style.drawn.first().rect, QRect(0, 20, 200, 0));
    QCOMPARE(style.drawn.first().direction, Qt::RightToLeft);
    QCOMPARE(style.drawn.first().palette, view.palette());
    QVERIFY(style.drawn.first().state & QStyle::State_Enabled);

    view.viewport()->setCursor(Qt::ForbiddenCursor);
    view.setState(View::DraggingState);
    view.viewport()->repaint();
    view.viewport()->unsetCursor();
    view.setDropIndicatorShown(false);
    view.viewport()->repaint();
    view.setState(View::NoState);
    QCOMPARE(style.drawn.size(), 1);
    view.setStyle(nullptr);
}

void TestViewPainting::decorationIsSelectedInRows()
{
    class Style : public QProxyStyle
    {
    public:
        int styleHint(StyleHint hint, const QStyleOption *option, const QWidget *widget,
                      QStyleHintReturn *data) const override
        {
            return hint == SH_ItemView_ShowDecorationSelected
                ? 0
                : QProxyStyle::styleHint(hint, option, widget, data);
        }
    };
    Style style;
    View view;
    view.setStyle(&style);
    for (const bool isByRows : {true, false}) {
        view.setSelectionBehavior(isByRows ? View::SelectRows : View::SelectItems);
        QStyleOptionViewItem option;
        view.initViewItemOption(&option);
        QCOMPARE(option.showDecorationSelected, isByRows);
    }
    view.setStyle(nullptr);
}

void TestViewPainting::editorGetsFocusFrame()
{
    BigModel model(50);
    View view(&model);
    view.setPaintBufferEnabled(true);
    view.showWith(300, 200);
    view.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&view));
    auto *editor = new QLineEdit;
    view.setIndexWidget(model.index(3, 1), editor);
    view.setCurrentIndex(model.index(3, 1));
    view.setFocus();
    settleEvents();
    const QImage before = maintainedPicture(view);
    editor->setFocus();
    settleEvents();
    QVERIFY(view.recorder.optionOf(3, 0).state & QStyle::State_Active);
    const QImage with = maintainedPicture(view);
    QVERIFY(before != with);
    view.setFocus();
    settleEvents();
    QCOMPARE(maintainedPicture(view), before);
}

// Device pixels are held against logical ones: nothing is reused, nothing is blurred.
void TestViewPainting::otherRatiosPaintAnew()
{
    BigModel model(5);
    Scaled<View> view(2, &model);
    view.setPaintBufferEnabled(true);
    view.showWith(200, 100);
    QCOMPARE(view.recorder.optionOf(0, 0).rect, QRect(0, 0, 60, rowHeight));
    QCOMPARE(view.recorder.optionOf(0, 0).widget->devicePixelRatioF(), 2.0);
    const QImage buffered = maintainedPicture(view);
    view.recorder.forget();
    view.viewport()->update();
    settleEvents();
    QCOMPARE(view.recorder.timesPainted(0, 0), 1);
    view.setPaintBufferEnabled(false);
    view.viewport()->update();
    settleEvents();
    QCOMPARE(maintainedPicture(view), buffered);
}

void TestViewPainting::shortTableLeavesBackground()
{
    BigModel model(2, 2);
    View view(&model);
    view.showWith(200, 100);
    const QImage picture = maintainedPicture(view);
    QCOMPARE(picture.pixelColor(20, 60), view.viewport()->palette().color(QPalette::Base));
    QCOMPARE(picture.pixelColor(150, 10), view.viewport()->palette().color(QPalette::Base));
    QVERIFY(picture.pixelColor(20, 10) != picture.pixelColor(20, 60));
}

// A row that leaves the view downwards must not come back with an old picture.
void TestViewPainting::pushedOutRowsAreEvicted()
{
    BigModel model(1000);
    View view(&model);
    view.setPaintBufferEnabled(true);
    view.showWith(200, 200);
    view.bar()->setValue(100);
    settleEvents();
    model.insert(105, 10); // rows 105 to 109 are now 115 to 119, below the view
    model.insert(113, 1);  // below the view: the cache is not told
    settleEvents();
    view.recorder.forget();
    view.bar()->setValue(107);
    settleEvents();
    for (int row = 112; row < 117; ++row)
        QCOMPARE(view.recorder.timesPainted(row, 0), 1);
}

// Rows moved above others that had been shifted, then removed, in one turn.
void TestViewPainting::boundsAreTheCaches_data()
{
    using Act = std::function<void(View &)>;
    QTest::addColumn<Act>("act");
    QTest::newRow("scroll") << Act([](View &v) { v.bar()->setValue(v.bar()->value() + 1); });
    QTest::newRow("scroll columns") << Act([](View &v) { v.horizontalScrollBar()->setValue(70); });
    QTest::newRow("resize") << Act([](View &v) { v.resize(v.width() + 1, v.height() - 40); });
    QTest::newRow("switch off and on") << Act([](View &v) {
        v.setPaintBufferEnabled(false);
        v.setPaintBufferEnabled(true);
    });
}

// A derived view may have set others.
void TestViewPainting::boundsAreTheCaches()
{
    QFETCH(std::function<void(View &)>, act);
    BigModel model(1000);
    View view(&model);
    view.setPaintBufferEnabled(true);
    view.showWith(200, 200);
    view.bar()->setValue(100);
    const auto wanted = [&] {
        const int first = view.getFirstVisibleItem();
        const auto [left, right] = view.startAndEndColumns(view.viewport()->rect());
        return PixmapCacheIndexed::VisibleBounds {
            first, first + view.viewport()->height() / rowHeight + 1, left, right};
    };
    settleEvents();
    QCOMPARE(view.m_pixmapCacheIndexed.visibleBounds(), wanted());
    view.m_pixmapCacheIndexed.setVisibleBounds(3, 5, 1, 1);
    act(view);
    QCOMPARE(view.m_pixmapCacheIndexed.visibleBounds(), wanted());
    // Rows that come above move what the cache covers with what it holds.
    view.m_pixmapCacheIndexed.setVisibleBounds(3, 5, 1, 1);
    model.insert(0, 7);
    view.bar()->setValue(view.bar()->value() + 3);
    QCOMPARE(view.m_pixmapCacheIndexed.visibleBounds(), wanted());
}

void TestViewPainting::rowsMovedAboveCachedOnes()
{
    QStringList texts;
    for (int row = 0; row < 17; ++row)
        texts.append(QString::number(row));
    QStringListModel model(texts);
    View view(&model);
    view.setItemDelegate(new QStyledItemDelegate(&view));
    view.setPaintBufferEnabled(true);
    view.header()->setSortIndicator(0, Qt::AscendingOrder);
    view.showWith(200, 200);
    view.setCurrentIndex(QModelIndex());
    model.removeRows(0, 11);
    model.insertRows(0, 2);
    model.moveRows({}, 0, 2, {}, 4);
    model.insertRows(0, 4);
    model.removeRows(4, 2);
    settleEvents();
    const QImage now = maintainedPicture(view);
    view.setPaintBufferEnabled(false);
    view.viewport()->update();
    settleEvents();
    QCOMPARE(maintainedPicture(view), now);
}

QTEST_MAIN(TestViewPainting)
#include "tst_viewpainting.moc"
