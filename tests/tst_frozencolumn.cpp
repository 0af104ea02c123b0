// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "files/textfilemodel.h"
#include "support/bigmodel.h"
#include "support/recordedview.h"
#include "windows/columnmenu.h"
#include "windows/filewindow.h"
#include "windows/framestatistics.h"
#include "windows/frozencolumnview.h"
#include "windows/frozenheader.h"
#include "windows/shorttextdelegate.h"
#include "windows/viewertable.h"

#include <QApplication>
#include <QFile>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QRandomGenerator>
#include <QScrollBar>
#include <QSettings>
#include <QSignalSpy>
#include <QStandardItemModel>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

namespace {

constexpr int s_columnWidth = 90; // logical pixels

//! Counts its paints, and takes the pixels of a whole row for what it is.
class CountingView : public FrozenColumnView
{
public:
    using FrozenColumnView::FrozenColumnView;
    using FrozenColumnView::frozenColumnWidth;

    QRegion painted;

protected:
    void paintEvent(QPaintEvent *event) override
    {
        painted += event->region();
        FrozenColumnView::paintEvent(event);
    }
};

QList<QStandardItem *> randomRow(QRandomGenerator *random, int columns)
{
    QList<QStandardItem *> row;
    for (int column = 0; column < columns; ++column) {
        row.append(new QStandardItem(QString::number(random->bounded(1000000))));
        if (random->bounded(4) == 0)
            row.constLast()->setForeground(QColor(200, 0, 0));
    }
    return row;
}

//! A view whose first column is frozen, and beside it one that is never scrolled sideways.
struct Pair
{
    explicit Pair(bool isBuffered = true, bool isRightToLeft = false)
    {
        QRandomGenerator random(7);
        for (int row = 0; row < 60; ++row)
            model.appendRow(randomRow(&random, 9));
        auto *layout = new QHBoxLayout(&window);
        for (QTableFastView *view : std::initializer_list<QTableFastView *> {&frozen, &plain}) {
            view->setItemDelegate(new ShortTextDelegate(view));
            view->setLayoutDirection(isRightToLeft ? Qt::RightToLeft : Qt::LeftToRight);
            view->setPaintBufferEnabled(isBuffered);
            view->setSelectionMode(QAbstractItemView::ExtendedSelection);
            view->setFollowsCurrentRow(false);
            view->setFixedSize(400, 240);
            view->setModel(&model);
            for (int column = 0; column < model.columnCount(); ++column)
                view->header()->resizeSection(column, s_columnWidth);
            layout->addWidget(view);
        }
        plain.setSelectionModel(frozen.selectionModel());
        frozen.setFrozenColumn(0);
        window.show();
        settleEvents();
    }

    //! Where the column is while it is frozen.
    QRect strip() const
    {
        const QRect area = frozen.viewport()->rect();
        const int width = frozen.columnWidth(0);
        return {frozen.isRightToLeft() ? area.right() + 1 - width : 0, 0, width, area.height()};
    }
    QImage stripOf(QAbstractItemView *view) const
    {
        return view->viewport()->grab(strip()).toImage();
    }
    void scroll(int pixels)
    {
        frozen.horizontalScrollBar()->setValue(pixels);
        settleEvents();
    }

    QWidget window;
    QStandardItemModel model;
    CountingView frozen {&window};
    QTableFastView plain {&window};
};

//! Does anything to \a pair.
void actRandomly(Pair *pair, QRandomGenerator *random)
{
    QAbstractItemModel &model = pair->model;
    QScrollBar *across = pair->frozen.horizontalScrollBar();
    const int row = random->bounded(model.rowCount());
    const auto flags = QItemSelectionModel::Toggle | QItemSelectionModel::Rows;
    switch (random->bounded(9)) {
    case 0:
    case 1:
        across->setValue(random->bounded(across->maximum() + 1));
        break;
    case 2:
        across->setValue(across->value() + random->bounded(21) - 10);
        break;
    case 3:
        pair->frozen.verticalScrollBar()->setValue(random->bounded(model.rowCount()));
        break;
    case 4:
        pair->frozen.verticalScrollBar()->setValue(pair->frozen.verticalScrollBar()->value() + 1);
        break;
    case 5:
        pair->model.insertRow(row, randomRow(random, 9));
        break;
    case 6:
        pair->frozen.selectionModel()->select(model.index(row, 0), flags);
        break;
    case 7:
        model.setData(model.index(row, 0), random->bounded(99999));
        break;
    default:
        pair->frozen.header()->resizeSection(random->bounded(9), 60 + random->bounded(60));
        pair->plain.header()->resizeSection(0, pair->frozen.columnWidth(0));
        break;
    }
    // Several things may happen between two paints.
    if (random->bounded(3) != 0)
        settleEvents();
}

} // namespace

class tst_FrozenColumn : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void looksAsUnscrolled_data();
    void looksAsUnscrolled();
    void columnsBeneathAreResized();
    void isFoundWhereItIs_data();
    void isFoundWhereItIs();
    void onlyTheFirstColumn();
    void scrollsToWhatIsBeneath_data();
    void scrollsToWhatIsBeneath();
    void scrollingDownMovesPixels();
    void nothingIsPaintedTwiceUnscrolled();
    void headerIsClicked_data();
    void headerIsClicked();
    void headerIsDraggedWider();
    void headerIsNotMovedAway();
    void headerIsPressed();
    void editorsKeepTheirPlace();
    void lineNumbersStay();
    void menuDecides();
};

void tst_FrozenColumn::initTestCase()
{
    QStandardPaths::setTestModeEnabled(true);
    QCoreApplication::setOrganizationName(QStringLiteral("vantix-test"));
    QCoreApplication::setApplicationName(QStringLiteral("tst_frozencolumn"));
    QSettings().clear();
}

void tst_FrozenColumn::looksAsUnscrolled_data()
{
    QTest::addColumn<bool>("isBuffered");
    QTest::addColumn<bool>("isRightToLeft");
    QTest::addColumn<bool>("isAlternating");
    QTest::addColumn<bool>("isPerPixel");
    QTest::addColumn<bool>("isStyled");
    QTest::newRow("buffered") << true << false << false << false << false;
    QTest::newRow("painted") << false << false << true << true << false;
    QTest::newRow("buffered, right to left") << true << true << true << false << false;
    QTest::newRow("painted, right to left") << false << true << false << false << false;
    QTest::newRow("a delegate of Qt's") << true << false << false << false << true;
}

void tst_FrozenColumn::looksAsUnscrolled()
{
    QFETCH(bool, isBuffered);
    QFETCH(bool, isRightToLeft);
    QFETCH(bool, isAlternating);
    QFETCH(bool, isPerPixel);
    QFETCH(bool, isStyled);
    Pair pair(isBuffered, isRightToLeft);
    for (QTableFastView *view :
         std::initializer_list<QTableFastView *> {&pair.frozen, &pair.plain}) {
        view->setAlternatingRowColors(isAlternating);
        if (isStyled)
            view->setItemDelegate(new QStyledItemDelegate(view));
        if (isPerPixel)
            view->setVerticalScrollMode(perPixel);
    }
    QRandomGenerator random(11);
    for (int step = 0; step < 150; ++step) {
        actRandomly(&pair, &random);
        settleEvents();
        pair.plain.verticalScrollBar()->setValue(pair.frozen.verticalScrollBar()->value());
        settleEvents();
        // Where pixels are halved, the delegate keeps pictures of texts as they were first.
        const bool isHalved =
            pair.frozen.devicePixelRatioF() != int(pair.frozen.devicePixelRatioF());
        QVERIFY2(isHalved
                     || isSamePicture(maintainedPicture(pair.frozen), freshPicture(pair.frozen)),
                 qPrintable(QString::number(step)));
        QVERIFY2(pair.stripOf(&pair.frozen) == pair.stripOf(&pair.plain),
                 qPrintable(QString::number(step)));
    }
}

void tst_FrozenColumn::columnsBeneathAreResized()
{
    Pair pair;
    for (const int column : {2, 1, 3, 2, 4, 0}) {
        for (const int added : {13, -20}) {
            pair.scroll(0);
            pair.scroll(200);
            pair.frozen.setColumnWidth(column, pair.frozen.columnWidth(column) + added);
            settleEvents();
            const bool isHalved =
                pair.frozen.devicePixelRatioF() != int(pair.frozen.devicePixelRatioF());
            QVERIFY(isHalved
                    || isSamePicture(maintainedPicture(pair.frozen), freshPicture(pair.frozen)));
        }
    }
}

void tst_FrozenColumn::isFoundWhereItIs_data()
{
    addDirections();
}

void tst_FrozenColumn::isFoundWhereItIs()
{
    QFETCH(bool, isRightToLeft);
    Pair pair(true, isRightToLeft);
    FrozenColumnView &view = pair.frozen;
    const QModelIndex cell = pair.model.index(2, 0);
    const QRect home = view.visualRect(cell);
    pair.scroll(200);
    QCOMPARE(view.visualRect(cell), home);
    QCOMPARE(view.indexAt(home.center()), cell);
    QCOMPARE(view.columnAt(home.center().x()), 0);
    const QPoint beside(isRightToLeft ? home.left() - 1 : home.right() + 1, home.center().y());
    QVERIFY(view.indexAt(beside).column() > 0);
    QVERIFY(!view.indexAt({home.center().x(), view.viewport()->height() * 100}).isValid());
    QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, home.center());
    QCOMPARE(view.currentIndex(), cell);
    QCOMPARE(view.horizontalScrollBar()->value(), 200);
    view.setFrozenColumn(-1);
    QVERIFY(view.indexAt(home.center()).column() > 0);
    QVERIFY(view.visualRect(cell) != home);
}

void tst_FrozenColumn::onlyTheFirstColumn()
{
    Pair pair;
    CountingView &view = pair.frozen;
    QHeaderView *header = view.header();
    QCOMPARE(view.frozenColumnWidth(), s_columnWidth);
    pair.scroll(100);
    const QPoint corner(1, 1);
    QCOMPARE(view.indexAt(corner).column(), 0);
    header->moveSection(0, 2);
    QCOMPARE(view.frozenColumnWidth(), 0);
    QCOMPARE(view.indexAt(corner).column(), 2);
    header->moveSection(2, 0);
    header->hideSection(0);
    QCOMPARE(view.frozenColumnWidth(), 0);
    QVERIFY(view.indexAt(corner).column() > 0);
    header->showSection(0);
    header->moveSection(1, 0);
    QCOMPARE(view.frozenColumnWidth(), 0);
    header->hideSection(1); // what is before it is not seen
    QCOMPARE(view.frozenColumnWidth(), s_columnWidth);
    header->resizeSection(0, view.viewport()->width() / 2 + 1);
    QCOMPARE(view.frozenColumnWidth(), 0);
    view.setFrozenColumn(99);
    QCOMPARE(view.frozenColumnWidth(), 0);
    view.setHeader(new QHeaderView(Qt::Horizontal));
    view.setFrozenColumn(0);
    QCOMPARE(view.frozenColumn(), -1);
    QCOMPARE(view.frozenColumnWidth(), 0);
}

void tst_FrozenColumn::scrollsToWhatIsBeneath_data()
{
    addDirections();
}

void tst_FrozenColumn::scrollsToWhatIsBeneath()
{
    QFETCH(bool, isRightToLeft);
    Pair pair(true, isRightToLeft);
    FrozenColumnView &view = pair.frozen;
    QScrollBar *bar = view.horizontalScrollBar();
    const auto isClear = [&](int column) {
        const QRect cell = view.visualRect(pair.model.index(3, column));
        return view.viewport()->rect().contains(cell) && !cell.intersects(pair.strip());
    };
    pair.scroll(2 * s_columnWidth - 30); // column 2 is at 30, beneath the frozen one
    QVERIFY(!isClear(2));
    view.scrollTo(pair.model.index(3, 2));
    QVERIFY(isClear(2));
    QCOMPARE(bar->value(), s_columnWidth);
    pair.scroll(300);
    view.scrollTo(pair.model.index(3, 1));
    QVERIFY(isClear(1));
    pair.scroll(0);
    view.scrollTo(pair.model.index(3, 7));
    QVERIFY(isClear(7));
    const int value = bar->value();
    for (const auto hint :
         {QAbstractItemView::EnsureVisible, QAbstractItemView::PositionAtCenter}) {
        view.scrollTo(pair.model.index(50, 0), hint);
        QCOMPARE(bar->value(), value); // it is seen
    }
    QVERIFY(view.rowViewportPosition(50) < view.viewport()->height());
    view.setHorizontalScrollMode(QAbstractItemView::ScrollPerItem);
    bar->setValue(3);
    view.scrollTo(pair.model.index(3, 3));
    QVERIFY(isClear(3));
}

//! One row comes to light; the column goes along with all others.
void tst_FrozenColumn::scrollingDownMovesPixels()
{
    Pair pair;
    CountingView &view = pair.frozen;
    pair.scroll(200);
    view.painted = {};
    view.verticalScrollBar()->setValue(view.verticalScrollBar()->value() + 1);
    settleEvents();
    if (view.devicePixelRatioF() != int(view.devicePixelRatioF()))
        QSKIP("Pixels are not moved by parts");
    QVERIFY(!view.painted.isEmpty());
    QVERIFY(view.painted.boundingRect().height() <= 2 * view.rowHeight());
    // Sideways what was beneath is painted again, not all of it.
    view.painted = {};
    view.horizontalScrollBar()->setValue(210);
    settleEvents();
    QVERIFY(!view.painted.contains(QPoint(view.viewport()->width() / 2, 10)));
}

void tst_FrozenColumn::nothingIsPaintedTwiceUnscrolled()
{
    BigModel model(100, 9);
    FrozenColumnView view;
    Recorder recorder;
    view.setItemDelegate(&recorder);
    view.setFrozenColumn(0);
    view.setModel(&model);
    view.resize(300, 200);
    view.show();
    settleEvents();
    recorder.forget();
    view.viewport()->grab();
    QCOMPARE(recorder.timesPainted(1, 0), 1);
    view.horizontalScrollBar()->setValue(view.columnWidth(0) + 5);
    recorder.forget();
    view.viewport()->grab();
    QCOMPARE(recorder.timesPainted(1, 0), 1); // by the frozen column alone
}

void tst_FrozenColumn::headerIsClicked_data()
{
    addDirections();
}

void tst_FrozenColumn::headerIsClicked()
{
    QFETCH(bool, isRightToLeft);
    Pair pair(true, isRightToLeft);
    QHeaderView *header = pair.frozen.header();
    header->setSectionsClickable(true);
    const QSignalSpy clicked(header, &QHeaderView::sectionClicked);
    pair.scroll(200);
    const QPoint inside(pair.strip().center().x(), header->height() / 2);
    QTest::mouseClick(header->viewport(), Qt::LeftButton, {}, inside);
    QCOMPARE(clicked.size(), 1);
    QCOMPARE(clicked.at(0).at(0).toInt(), 0);
    const int beside = pair.strip().center().x() + (isRightToLeft ? -2 : 2) * s_columnWidth;
    QTest::mouseClick(header->viewport(), Qt::LeftButton, {}, QPoint(beside, inside.y()));
    QCOMPARE(clicked.size(), 2);
    QCOMPARE(clicked.at(1).at(0).toInt(), header->logicalIndexAt(beside));
}

void tst_FrozenColumn::headerIsDraggedWider()
{
    Pair pair;
    QHeaderView *header = pair.frozen.header();
    pair.scroll(200);
    QWidget *place = header->viewport();
    const int y = header->height() / 2;
    QTest::mouseMove(place, {s_columnWidth - 2, y});
    QCOMPARE(header->cursor().shape(), Qt::SplitHCursor);
    QTest::mouseMove(place, {s_columnWidth / 2, y});
    QVERIFY(header->cursor().shape() != Qt::SplitHCursor);
    QTest::mousePress(place, Qt::LeftButton, {}, {s_columnWidth - 2, y});
    QTest::mouseMove(place, {s_columnWidth + 18, y});
    QTest::mouseMove(place, {s_columnWidth + 28, y});
    QTest::mouseRelease(place, Qt::LeftButton, {}, {s_columnWidth + 28, y});
    QCOMPARE(header->sectionSize(0), s_columnWidth + 30);
    for (int column = 1; column < header->count(); ++column)
        QCOMPARE(header->sectionSize(column), s_columnWidth);
    settleEvents();
    pair.plain.header()->resizeSection(0, s_columnWidth + 30);
    QVERIFY(pair.stripOf(&pair.frozen) == pair.stripOf(&pair.plain));
}

void tst_FrozenColumn::headerIsNotMovedAway()
{
    Pair pair;
    QHeaderView *header = pair.frozen.header();
    QWidget *place = header->viewport();
    const int y = header->height() / 2;
    const auto drag = [&] {
        QTest::mousePress(place, Qt::LeftButton, {}, {20, y});
        for (const int x : {60, 160, 260})
            QTest::mouseMove(place, {x, y});
        QTest::mouseRelease(place, Qt::LeftButton, {}, {260, y});
    };
    pair.scroll(200);
    drag();
    QCOMPARE(header->visualIndex(0), 0);
    pair.scroll(0);
    drag();
    QVERIFY(header->visualIndex(0) > 0);
}

//! The section looks as it does where it belongs: pressed, and sorted by.
void tst_FrozenColumn::headerIsPressed()
{
    Pair pair;
    const auto look = [&](QTableFastView *view, bool isPressed) {
        QWidget *place = view->header()->viewport();
        const QPoint inside(20, 5);
        if (isPressed)
            QTest::mousePress(place, Qt::LeftButton, {}, inside);
        settleEvents();
        // What is maintained, rather than painted for the grab.
        const auto *image = static_cast<const QImage *>(pair.window.backingStore()->paintDevice());
        const double ratio = image->devicePixelRatio();
        const QRect section(place->mapTo(&pair.window, QPoint(0, 0)),
                            QSize(s_columnWidth - 2, place->height()));
        const QImage look = image->copy(QRect((QPointF(section.topLeft()) * ratio).toPoint(),
                                              (QSizeF(section.size()) * ratio).toSize()));
        if (isPressed)
            QTest::mouseRelease(place, Qt::LeftButton, {}, inside);
        settleEvents();
        return look;
    };
    for (QTableFastView *view :
         std::initializer_list<QTableFastView *> {&pair.frozen, &pair.plain}) {
        view->header()->setSectionsClickable(true);
        view->header()->setSectionsMovable(false); // what can be moved does not look pressed
        view->header()->setStyleSheet("QHeaderView::section { background: gray }"
                                      "QHeaderView::section:pressed { background: red }");
        view->header()->setSortIndicatorShown(true);
        view->header()->setSortIndicator(1, Qt::AscendingOrder);
    }
    pair.scroll(200);
    for (const bool isPressed : {true, false})
        QVERIFY(look(&pair.frozen, isPressed) == look(&pair.plain, isPressed));
    QVERIFY(look(&pair.frozen, true) != look(&pair.plain, false));
    const QImage unsorted = look(&pair.frozen, false);
    for (QTableFastView *view : std::initializer_list<QTableFastView *> {&pair.frozen, &pair.plain})
        view->header()->setSortIndicator(0, Qt::AscendingOrder);
    QVERIFY(look(&pair.frozen, false) == look(&pair.plain, false));
    QVERIFY(look(&pair.frozen, false) != unsorted);
}

void tst_FrozenColumn::editorsKeepTheirPlace()
{
    Pair pair;
    FrozenColumnView &view = pair.frozen;
    auto *kept = new QLineEdit;
    auto *other = new QLineEdit;
    view.setIndexWidget(pair.model.index(1, 0), kept);
    view.setIndexWidget(pair.model.index(1, 1), other);
    pair.scroll(10);
    const QRect home = kept->geometry();
    pair.scroll(30);
    QCOMPARE(kept->geometry(), home);
    QVERIFY(kept->mask().isEmpty());
    QCOMPARE(other->x() + other->mask().boundingRect().left(), s_columnWidth);
    pair.scroll(0);
    QCOMPARE(kept->geometry(), home);
    QVERIFY(other->mask().isEmpty());
}

namespace {

//! A window on a file of long lines.
struct Lines
{
    explicit Lines(const QByteArray &text = QByteArray("word ").repeated(400) + '\n')
    {
        QFile file(folder.filePath("a.txt"));
        QVERIFY(file.open(QIODevice::WriteOnly));
        for (int i = 0; i < 50; ++i)
            file.write(text);
        file.close();
        window = std::make_unique<FileWindow>(file.fileName(), FormatRequest(), &statistics);
        window->resize(700, 400);
        window->show();
        QTRY_COMPARE(window->rows(), text.contains(',') ? 49 : 50);
        window->setFollowing(false);
        settleEvents();
        table = window->table();
        menu = window->findChild<ColumnMenu *>();
    }
    QAction *entry() const
    {
        Q_EMIT menu->aboutToShow();
        for (QAction *action : menu->actions()) {
            if (action->text() == "&Keep Line Numbers in Sight")
                return action;
        }
        return nullptr;
    }
    //! The column at the left edge.
    int leftColumn() const { return table->columnAt(2); }

    QTemporaryDir folder;
    FrameStatistics statistics;
    std::unique_ptr<FileWindow> window;
    ViewerTable *table = nullptr;
    ColumnMenu *menu = nullptr;
};

} // namespace

void tst_FrozenColumn::lineNumbersStay()
{
    Lines lines;
    QTRY_VERIFY(lines.table->horizontalScrollBar()->maximum() > 500);
    lines.table->horizontalScrollBar()->setValue(400);
    QCOMPARE(lines.leftColumn(), 0);
    const QModelIndex second = lines.table->indexAt({2, lines.table->rowHeight() + 2});
    QCOMPARE(second.data().toString(), QString::number(lines.table->firstSeenRow() + 2));
    lines.window->showLine(30);
    QCOMPARE(lines.table->horizontalScrollBar()->value(), 400);
    lines.table->header()->hideSection(0);
    QCOMPARE(lines.leftColumn(), 1);
    // Other formats have no numbers of lines.
    Lines fields("one,two,three\n");
    QVERIFY(!fields.entry());
    QCOMPARE(fields.table->frozenColumn(), -1);
}

void tst_FrozenColumn::menuDecides()
{
    {
        Lines lines;
        QTRY_VERIFY(lines.table->horizontalScrollBar()->maximum() > 500);
        lines.table->horizontalScrollBar()->setValue(400);
        QVERIFY(lines.entry() && lines.entry()->isChecked());
        lines.entry()->trigger();
        QCOMPARE(lines.leftColumn(), 1);
        QVERIFY(!lines.entry()->isChecked());
    }
    Lines again;
    QTRY_VERIFY(again.table->horizontalScrollBar()->maximum() > 500);
    again.table->horizontalScrollBar()->setValue(400);
    QCOMPARE(again.leftColumn(), 1);
    again.entry()->trigger();
    QCOMPARE(again.leftColumn(), 0);
    QSettings().clear();
}

QTEST_MAIN(tst_FrozenColumn)

#include "tst_frozencolumn.moc"
