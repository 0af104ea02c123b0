// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

// What the view has of QTableView's names, beside QTableView where that has them, too.

#include "activation.h"
#include "itemdelegate.h"
#include "qtablefastview.h"
#include "scalablefont.h"
#include "styleditemdelegate.h"
#include "viewpictures.h"

#include <QApplication>
#include <QHeaderView>
#include <QMetaProperty>
#include <QScopeGuard>
#include <QScrollBar>
#include <QSignalSpy>
#include <QStandardItemModel>
#include <QStyledItemDelegate>
#include <QTableView>
#include <QTest>
#include <QVBoxLayout>

#include <functional>

namespace {

constexpr int rowHeight = 24;

void fill(QStandardItemModel *model, int rows, int columns)
{
    for (int row = 0; row < rows; ++row) {
        for (int column = 0; column < columns; ++column)
            model->setItem(row, column, new QStandardItem(QString::number(row * column)));
    }
}

//! Both views of one model, one beside the other, with room for ten rows and a half.
struct Stage
{
    explicit Stage(int rows = 40, int columns = 6)
    {
        fill(&model, rows, columns);
        fast = new QTableFastView(&window);
        table = new QTableView(&window);
        fast->setRowHeight(rowHeight);
        table->verticalHeader()->setMinimumSectionSize(1);
        table->verticalHeader()->setDefaultSectionSize(rowHeight);
        table->verticalHeader()->hide();
        table->setShowGrid(false);
        table->setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
        table->horizontalHeader()->setSectionsMovable(true);
        int x = 0;
        for (QAbstractItemView *view : views()) {
            view->setModel(&model);
            view->setFrameShape(QFrame::NoFrame);
            view->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
            view->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
            view->setGeometry(x, 0, 230, 300);
            x += 240;
        }
        for (QHeaderView *header : headers()) {
            header->setDefaultAlignment(Qt::AlignCenter);
            for (int column = 0; column < columns; ++column)
                header->resizeSection(column, 60);
        }
        window.resize(480, 300);
    }

    void show()
    {
        window.show();
        activate(&window);
        settleEvents();
        for (QAbstractItemView *view : views()) {
            const int wanted = 10 * rowHeight + rowHeight / 2;
            view->resize(view->width(), view->height() + wanted - view->viewport()->height());
        }
        settleEvents();
    }

    QList<QAbstractItemView *> views() const { return {fast, table}; }
    QList<QHeaderView *> headers() const
    {
        return {fast->horizontalHeader(), table->horizontalHeader()};
    }

    QStandardItemModel model;
    QWidget window;
    QTableFastView *fast = nullptr;
    QTableView *table = nullptr;
};

using Change = std::function<void(Stage &)>;
using HeaderChange = void (*)(QHeaderView *);

Change headerChange(HeaderChange change)
{
    return [change](Stage &stage) {
        for (QHeaderView *header : stage.headers())
            change(header);
    };
}

Change title(const QString &text)
{
    return [text](Stage &stage) { stage.model.setHeaderData(1, Qt::Horizontal, text); };
}

//! Much larger or smaller than the machine's.
QFont scaled(QFont font, double factor)
{
    font.setPixelSize(int(QFontInfo(font).pixelSize() * factor));
    return font;
}

//! A delegate whose rows are as high as it is told, or three times the option's font.
class HighDelegate : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;
    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex & /*index*/) const override
    {
        return {30, height > 0 ? height : 3 * QFontMetrics(option.font).height()};
    }
    int height = 0;
};

using Cells = QList<std::pair<int, int>>;

Cells selectedCells(const QAbstractItemView &view)
{
    Cells cells;
    for (const QModelIndex &index : view.selectionModel()->selectedIndexes())
        cells.append({index.row(), index.column()});
    std::sort(cells.begin(), cells.end());
    return cells;
}

} // namespace

class TestViewNames : public QObject
{
    Q_OBJECT

public:
    //! Called before the application is made: device pixels are whole.
    static void initMain() { qputenv("QT_SCALE_FACTOR", "1"); }

private slots:
    void initTestCase() { m_font = QApplication::font(); }
    void cleanup() { QApplication::setFont(m_font); }

    void properties_data();
    void properties();
    void rowHeightProperty();
    void columnWidths_data();
    void columnWidths();
    void hiddenColumns_data();
    void hiddenColumns();
    void placesAreQTableViews_data();
    void placesAreQTableViews();
    void noPlacesWithoutHeader();
    void selectColumn_data();
    void selectColumn();
    void selectColumnOfNothing();
    void setRowHeight_data();
    void setRowHeight();
    void setRowHeightKeepsRows_data();
    void setRowHeightKeepsRows();
    void rowHeightFollowsFont_data();
    void rowHeightFollowsFont();
    void rowHeightIsNotThatOfACell_data();
    void rowHeightIsNotThatOfACell();
    void sizeHintIsQTableViews_data();
    void sizeHintIsQTableViews();
    void layoutFollowsContents_data();
    void layoutFollowsContents();
    void iconSizeRepaints_data();
    void iconSizeRepaints();
    void headerHeights_data();
    void headerHeights();

private:
    QFont m_font;
};

void TestViewNames::properties_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<QVariant>("first");
    QTest::addColumn<QVariant>("other");
    const auto add = [](const char *name, bool first) {
        QTest::newRow(name) << QByteArray(name) << QVariant(first) << QVariant(!first);
    };
    add("paintBufferEnabled", false);
    add("sortingEnabled", false);
    add("followsCurrentRow", true);
    add("hasStandardKeys", false);
    add("selectsVisualRanges", false);
    add("rowHeightFollowsFont", false);
}

void TestViewNames::properties()
{
    QFETCH(QByteArray, name);
    QFETCH(QVariant, first);
    QFETCH(QVariant, other);
    QTableFastView view;
    const QMetaObject *meta = view.metaObject();
    const QMetaProperty property = meta->property(meta->indexOfProperty(name.constData()));
    QVERIFY(property.isWritable());
    QVERIFY(!property.isResettable());
    QCOMPARE(property.read(&view), first);
    QVERIFY(property.write(&view, other));
    QCOMPARE(property.read(&view), other);
    QVERIFY(property.write(&view, first));
    QCOMPARE(property.read(&view), first);
}

void TestViewNames::rowHeightProperty()
{
    QTableFastView view;
    const QMetaObject *meta = view.metaObject();
    const QMetaProperty property = meta->property(meta->indexOfProperty("rowHeight"));
    const int natural = view.rowHeight();
    QVERIFY(property.isWritable() && property.isResettable() && property.hasNotifySignal());
    QSignalSpy changed(&view, property.notifySignal().methodSignature().prepend('2').constData());
    QCOMPARE(property.read(&view), QVariant(natural));
    QVERIFY(property.write(&view, natural + 7));
    QCOMPARE(view.rowHeight(), natural + 7);
    QCOMPARE(changed.size(), 1);
    QVERIFY(property.reset(&view));
    QCOMPARE(view.rowHeight(), natural);
    QCOMPARE(changed.size(), 2);

    const QMetaProperty frozen = meta->property(meta->indexOfProperty("frozenColumnWidth"));
    QVERIFY(!frozen.isWritable() && !frozen.isStored() && !frozen.isDesignable());
    QCOMPARE(frozen.read(&view), QVariant(0));
}

void TestViewNames::columnWidths_data()
{
    QTest::addColumn<int>("column");
    QTest::addColumn<int>("width");
    for (int column : {-1, 0, 3, 5, 6, 1000}) {
        for (int width : {0, 1, 5, 77, 100000})
            QTest::addRow("%d, %d", column, width) << column << width;
    }
}

void TestViewNames::columnWidths()
{
    QFETCH(int, column);
    QFETCH(int, width);
    Stage stage;
    for (QHeaderView *header : stage.headers()) {
        header->setMinimumSectionSize(3);
        header->setMaximumSectionSize(5000);
    }
    stage.show();
    if (column >= 0 && column < 6) // what QTableView does not check
        stage.table->setColumnWidth(column, width);
    stage.fast->setColumnWidth(column, width);
    for (int at = 0; at < 6; ++at)
        QCOMPARE(stage.fast->columnWidth(at), stage.table->columnWidth(at));
    stage.fast->setColumnWidth(column, -1);
    for (int at = 0; at < 6; ++at)
        QCOMPARE(stage.fast->columnWidth(at), stage.table->columnWidth(at));
}

void TestViewNames::hiddenColumns_data()
{
    QTest::addColumn<int>("column");
    for (int column : {-1, 0, 3, 5, 6, 1000})
        QTest::addRow("%d", column) << column;
}

void TestViewNames::hiddenColumns()
{
    QFETCH(int, column);
    Stage stage;
    stage.show();
    const bool exists = column >= 0 && column < 6;
    const auto hidden = [&stage] {
        QList<int> columns;
        for (int at = 0; at < 6; ++at) {
            if (stage.fast->isColumnHidden(at))
                columns.append(at);
        }
        return columns;
    };
    const QList<int> it = exists ? QList<int> {column} : QList<int>();
    stage.fast->setColumnHidden(column, true);
    QCOMPARE(hidden(), it);
    QCOMPARE(stage.fast->isColumnHidden(column), exists);
    QCOMPARE(stage.fast->columnWidth(column), 0);
    stage.fast->setColumnHidden(column, false);
    QCOMPARE(hidden(), QList<int>());
    stage.fast->hideColumn(column);
    QCOMPARE(hidden(), it);
    stage.fast->showColumn(column);
    QCOMPARE(hidden(), QList<int>());
    QCOMPARE(stage.fast->columnWidth(column), exists ? 60 : 0);
}

void TestViewNames::placesAreQTableViews_data()
{
    QTest::addColumn<Change>("change");
    const auto add = [](const char *name, const Change &change) { QTest::newRow(name) << change; };
    add("at the top", [](Stage & /*stage*/) {});
    const auto scroll = [](int row, int x) -> Change {
        return [row, x](Stage &stage) {
            for (QAbstractItemView *view : stage.views()) {
                view->verticalScrollBar()->setValue(row);
                view->horizontalScrollBar()->setValue(x);
            }
        };
    };
    add("scrolled", scroll(7, 33));
    add("per pixel", [](Stage &stage) {
        for (QAbstractItemView *view : stage.views()) {
            view->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
            settleEvents();
            view->verticalScrollBar()->setValue(131);
        }
    });
    add("moved and hidden columns", headerChange([](QHeaderView *header) {
            header->moveSection(1, 4);
            header->hideSection(2);
        }));
    add("right to left", [](Stage &stage) {
        for (QAbstractItemView *view : stage.views())
            view->setLayoutDirection(Qt::RightToLeft);
    });
    add("few rows", [](Stage &stage) { stage.model.removeRows(3, 37); });
    add("no rows", [](Stage &stage) { stage.model.removeRows(0, 40); });
    add("no columns", [](Stage &stage) { stage.model.setColumnCount(0); });
}

void TestViewNames::placesAreQTableViews()
{
    QFETCH(Change, change);
    Stage stage;
    stage.show();
    change(stage);
    settleEvents();
    const QRect area = stage.fast->viewport()->rect();
    QCOMPARE(area.size(), stage.table->viewport()->size());
    for (int x = -5; x < area.width() + 5; ++x)
        QCOMPARE(stage.fast->columnAt(x), stage.table->columnAt(x));
    for (int y = 0; y < area.height() + 5; ++y)
        QCOMPARE(stage.fast->rowAt(y), stage.table->rowAt(y));
    for (int row = -1; row <= 41; ++row) {
        QCOMPARE(stage.fast->rowHeight(row), stage.table->rowHeight(row));
        QCOMPARE(stage.fast->rowViewportPosition(row), stage.table->rowViewportPosition(row));
    }
    for (int column = -1; column <= 7; ++column) {
        QCOMPARE(stage.fast->columnViewportPosition(column),
                 stage.table->columnViewportPosition(column));
        QCOMPARE(stage.fast->columnWidth(column), stage.table->columnWidth(column));
    }
}

void TestViewNames::noPlacesWithoutHeader()
{
    QStandardItemModel model(3, 3);
    QTableFastView view;
    view.setModel(&model);
    delete view.header();
    QVERIFY(!view.horizontalHeader());
    view.setColumnWidth(1, 20);
    view.setColumnHidden(1, true);
    view.showColumn(1);
    view.selectColumn(1);
    QCOMPARE(view.columnAt(5), -1);
    QCOMPARE(view.columnWidth(1), 0);
    QCOMPARE(view.columnViewportPosition(1), -1);
    QVERIFY(!view.isColumnHidden(1));
    QCOMPARE(view.rowAt(0), 0);
    QCOMPARE(view.rowViewportPosition(1), view.rowHeight());
}

void TestViewNames::selectColumn_data()
{
    QTest::addColumn<QAbstractItemView::SelectionMode>("mode");
    QTest::addColumn<QAbstractItemView::SelectionBehavior>("behavior");
    QTest::addColumn<Change>("change");
    const std::pair<const char *, QAbstractItemView::SelectionMode> modes[] = {
        {"none", QAbstractItemView::NoSelection},
        {"single", QAbstractItemView::SingleSelection},
        {"multi", QAbstractItemView::MultiSelection},
        {"extended", QAbstractItemView::ExtendedSelection},
        {"contiguous", QAbstractItemView::ContiguousSelection},
    };
    const std::pair<const char *, QAbstractItemView::SelectionBehavior> behaviors[] = {
        {"items", QAbstractItemView::SelectItems},
        {"rows", QAbstractItemView::SelectRows},
        {"columns", QAbstractItemView::SelectColumns},
    };
    const std::pair<const char *, Change> changes[] = {
        {"as it is", [](Stage & /*stage*/) {}},
        {"scrolled",
         [](Stage &stage) {
             for (QAbstractItemView *view : stage.views())
                 view->verticalScrollBar()->setValue(5);
         }},
        {"hidden and moved columns", headerChange([](QHeaderView *header) {
             header->moveSection(3, 0);
             header->hideSection(2);
         })},
        {"with a current cell",
         [](Stage &stage) {
             for (QAbstractItemView *view : stage.views())
                 view->setCurrentIndex(stage.model.index(2, 2));
         }},
        {"without rows", [](Stage &stage) { stage.model.setRowCount(0); }},
    };
    for (const auto &[modeName, mode] : modes) {
        for (const auto &[behaviorName, behavior] : behaviors) {
            for (const auto &[name, change] : changes)
                QTest::addRow("%s, %s, %s", modeName, behaviorName, name)
                    << mode << behavior << change;
        }
    }
}

void TestViewNames::selectColumn()
{
    QFETCH(QAbstractItemView::SelectionMode, mode);
    QFETCH(QAbstractItemView::SelectionBehavior, behavior);
    QFETCH(Change, change);
    Stage stage;
    for (QAbstractItemView *view : stage.views()) {
        view->setFocusPolicy(Qt::NoFocus);
        view->setSelectionMode(mode);
        view->setSelectionBehavior(behavior);
    }
    stage.show();
    change(stage);
    settleEvents();
    for (int column : {3, 1, 1, 5, 2, -1, 6}) {
        stage.table->selectColumn(column);
        stage.fast->selectColumn(column);
        QCOMPARE(stage.fast->currentIndex(), stage.table->currentIndex());
        QCOMPARE(selectedCells(*stage.fast), selectedCells(*stage.table));
    }
}

void TestViewNames::selectColumnOfNothing()
{
    QTableFastView view;
    view.selectColumn(0);
    QVERIFY(!view.currentIndex().isValid());
}

void TestViewNames::setRowHeight_data()
{
    QTest::addColumn<int>("height");
    QTest::addColumn<int>("result"); // 0: what font and delegates ask for
    QTest::newRow("least") << 1 << 1;
    QTest::newRow("usual") << 30 << 30;
    QTest::newRow("most") << QWIDGETSIZE_MAX << QWIDGETSIZE_MAX;
    QTest::newRow("too much") << QWIDGETSIZE_MAX + 1 << QWIDGETSIZE_MAX;
    QTest::newRow("int") << std::numeric_limits<int>::max() << QWIDGETSIZE_MAX;
    QTest::newRow("nothing") << 0 << 0;
    QTest::newRow("less") << -1 << 0;
    QTest::newRow("negative") << std::numeric_limits<int>::min() << 0;
}

void TestViewNames::setRowHeight()
{
    QFETCH(int, height);
    QFETCH(int, result);
    Stage stage;
    HighDelegate delegate;
    delegate.height = 45 + QFontMetrics(stage.fast->font()).height();
    stage.fast->setItemDelegate(&delegate);
    stage.show();
    stage.fast->resetRowHeight();
    const int natural = stage.fast->rowHeight();
    QCOMPARE(natural, delegate.height);
    stage.fast->setRowHeight(natural + 1);
    QSignalSpy changed(stage.fast, SIGNAL(rowHeightChanged()));
    stage.fast->setRowHeight(height);
    const int wanted = result == 0 ? natural : result;
    QCOMPARE(stage.fast->rowHeight(), wanted);
    QCOMPARE(stage.fast->visualRect(stage.model.index(0, 0)).height(), wanted);
    QCOMPARE(changed.size(), 1);
    stage.fast->setRowHeight(height);
    QCOMPARE(changed.size(), 1);
    stage.fast->updateItemHeight();
    QCOMPARE(stage.fast->rowHeight(), wanted);
    QEvent styleChange(QEvent::StyleChange);
    QCoreApplication::sendEvent(stage.fast, &styleChange);
    QCOMPARE(stage.fast->rowHeight(), wanted);
    stage.fast->resetRowHeight();
    QCOMPARE(stage.fast->rowHeight(), natural);
    settleEvents();
}

void TestViewNames::setRowHeightKeepsRows_data()
{
    QTest::addColumn<QAbstractItemView::ScrollMode>("mode");
    QTest::addColumn<int>("row");
    QTest::addColumn<bool>("isBuffered");
    for (bool isBuffered : {false, true}) {
        const char *how = isBuffered ? "buffered" : "direct";
        for (int row : {0, 7, 30}) {
            QTest::addRow("per row, %d, %s", row, how)
                << QAbstractItemView::ScrollPerItem << row << isBuffered;
            QTest::addRow("per pixel, %d, %s", row, how)
                << QAbstractItemView::ScrollPerPixel << row << isBuffered;
        }
    }
}

//! The top row stays, or the last row where it is seen; and what is shown is right.
void TestViewNames::setRowHeightKeepsRows()
{
    QFETCH(QAbstractItemView::ScrollMode, mode);
    QFETCH(int, row);
    QFETCH(bool, isBuffered);
    Stage stage;
    stage.fast->setPaintBufferEnabled(isBuffered);
    stage.fast->setVerticalScrollMode(mode);
    stage.show();
    QScrollBar *bar = stage.fast->verticalScrollBar();
    bar->setValue(mode == QAbstractItemView::ScrollPerItem ? row : row * rowHeight);
    const bool isAtEnd = bar->value() == bar->maximum();
    for (int height : {31, 17, rowHeight}) {
        settleEvents();
        stage.fast->setRowHeight(height);
        settleEvents();
        if (isAtEnd)
            QCOMPARE(bar->value(), bar->maximum());
        else
            QCOMPARE(stage.fast->rowAt(0), row);
        QCOMPARE(maintainedPicture(*stage.fast), freshPicture(*stage.fast));
    }
}

void TestViewNames::rowHeightFollowsFont_data()
{
    QTest::addColumn<bool>("follows");
    QTest::addColumn<bool>("isShown");
    QTest::addColumn<Change>("change");
    QTest::addColumn<bool>("isStyle"); // which row heights follow anyway
    const auto add = [](const char *name, bool isStyle, const Change &change) {
        for (bool follows : {false, true}) {
            for (bool isShown : {false, true}) {
                QTest::addRow("%s, %s, %s", name, follows ? "follows" : "does not follow",
                              isShown ? "shown" : "not shown yet")
                    << follows << isShown << change << isStyle;
            }
        }
    };
    add("font", false, [](Stage &s) { s.fast->setFont(scaled(s.fast->font(), 3)); });
    add("smaller font", false, [](Stage &s) { s.fast->setFont(scaled(s.fast->font(), 0.5)); });
    add("font of the window", false,
        [](Stage &s) { s.window.setFont(scaled(s.window.font(), 3)); });
    add("font of the application", false,
        [](Stage & /*s*/) { QApplication::setFont(scaled(QApplication::font(), 3)); });
    add("style sheet", true,
        [](Stage &s) { s.fast->setStyleSheet(QStringLiteral("font-size: 41px")); });
    add("style sheet of the window", true,
        [](Stage &s) { s.window.setStyleSheet(QStringLiteral("* { font-size: 41px }")); });
    add("padding of a style sheet", true, [](Stage &s) {
        s.fast->setStyleSheet(QStringLiteral("QTableFastView::item { padding: 19px }"));
    });
}

void TestViewNames::rowHeightFollowsFont()
{
    QFETCH(bool, follows);
    QFETCH(bool, isShown);
    QFETCH(Change, change);
    QFETCH(bool, isStyle);
    // The system's own may have one size only.
    const QFont system = QApplication::font();
    const auto back = qScopeGuard([system] { QApplication::setFont(system); });
    QApplication::setFont(scalableFont(QFontInfo(system).pixelSize()));
    Stage stage;
    if (isShown)
        stage.show();
    stage.fast->resetRowHeight();
    stage.fast->setRowHeightFollowsFont(follows);
    const int before = stage.fast->rowHeight();
    QSignalSpy changed(stage.fast, SIGNAL(rowHeightChanged()));
    change(stage);
    QCoreApplication::processEvents();
    if (!isShown)
        stage.show();
    const int after = stage.fast->rowHeight();
    stage.fast->updateItemHeight();
    const int wanted = stage.fast->rowHeight();
    if (follows) {
        QVERIFY(after != before);
        QVERIFY(!changed.isEmpty());
        QCOMPARE(after, wanted);
    } else if (isStyle) {
        QCOMPARE(after, wanted);
    } else if (isShown) { // else it may be polished later
        QCOMPARE(after, before);
    }

    // One that was set stays.
    stage.fast->setRowHeight(77);
    stage.fast->setFont(scaled(stage.fast->font(), 1.5));
    QCOMPARE(stage.fast->rowHeight(), 77);
}

void TestViewNames::rowHeightIsNotThatOfACell_data()
{
    QTest::addColumn<Change>("setDelegate");
    QTest::newRow("Qt's") << Change([](Stage & /*stage*/) {});
    QTest::newRow("of a column") << Change([](Stage &stage) {
        stage.fast->setItemDelegateForColumn(1, new QStyledItemDelegate(stage.fast));
    });
    QTest::newRow("styled") << Change(
        [](Stage &stage) { stage.fast->setItemDelegate(new StyledItemDelegate(stage.fast)); });
    QTest::newRow("ours") << Change(
        [](Stage &stage) { stage.fast->setItemDelegate(new Vantix::ItemDelegate(stage.fast)); });
}

//! However high the cells are that a delegate has painted last.
void TestViewNames::rowHeightIsNotThatOfACell()
{
    QFETCH(Change, setDelegate);
    Stage stage(3, 2);
    stage.fast->resetRowHeight();
    setDelegate(stage);
    stage.fast->updateItemHeight();
    const int height = stage.fast->rowHeight();
    QPixmap high(90, 90);
    high.fill(Qt::red);
    for (int row = 0; row < 3; ++row) {
        stage.model.item(row, 1)->setIcon(QIcon(high));
        stage.model.item(row, 1)->setFont(scaled(QApplication::font(), 5));
    }
    stage.fast->setIconSize(high.size());
    stage.show();
    stage.fast->updateItemHeight();
    QCOMPARE(stage.fast->rowHeight(), height);
    stage.fast->setStyleSheet(QStringLiteral("QTableFastView { color: red }"));
    settleEvents();
    QCOMPARE(stage.fast->rowHeight(), height);
}

void TestViewNames::sizeHintIsQTableViews_data()
{
    QTest::addColumn<Qt::ScrollBarPolicy>("policy");
    QTest::addColumn<Change>("change");
    const std::pair<const char *, Qt::ScrollBarPolicy> policies[] = {
        {"no bars", Qt::ScrollBarAlwaysOff},
        {"bars", Qt::ScrollBarAlwaysOn},
        {"bars as needed", Qt::ScrollBarAsNeeded},
    };
    const std::pair<const char *, Change> changes[] = {
        {"as it is", [](Stage & /*stage*/) {}},
        {"more rows", [](Stage &stage) { stage.model.insertRows(2, 9); }},
        {"fewer rows", [](Stage &stage) { stage.model.removeRows(0, 3); }},
        {"no rows", [](Stage &stage) { stage.model.setRowCount(0); }},
        {"more columns", [](Stage &stage) { stage.model.insertColumns(1, 3); }},
        {"no columns", [](Stage &stage) { stage.model.setColumnCount(0); }},
        {"wider column", headerChange([](QHeaderView *header) { header->resizeSection(1, 99); })},
        {"hidden column", headerChange([](QHeaderView *header) { header->hideSection(1); })},
        {"hidden header", headerChange([](QHeaderView *header) { header->hide(); })},
        {"high header", headerChange([](QHeaderView *header) { header->setFixedHeight(71); })},
        {"other rows",
         [](Stage &stage) {
             stage.fast->setRowHeight(rowHeight + 9);
             stage.table->verticalHeader()->setDefaultSectionSize(rowHeight + 9);
         }},
        {"reset", [](Stage &stage) { fill(&stage.model, 3, 2); }},
        {"a frame",
         [](Stage &stage) {
             for (QAbstractItemView *view : stage.views()) {
                 view->setFrameShape(QFrame::Box);
                 view->setLineWidth(3);
             }
         }},
    };
    for (const auto &[policyName, policy] : policies) {
        for (const auto &[name, change] : changes)
            QTest::addRow("%s, %s", name, policyName) << policy << change;
    }
}

void TestViewNames::sizeHintIsQTableViews()
{
    QFETCH(Qt::ScrollBarPolicy, policy);
    QFETCH(Change, change);
#if QT_VERSION >= QT_VERSION_CHECK(6, 5, 0)
    // A later QTableView counts bars that are needed otherwise.
    if (QByteArrayView(QTest::currentDataTag()) == "more rows, bars as needed")
        QSKIP("compared with Qt 6.4 only");
#endif
    Stage stage(8, 3);
    for (QAbstractItemView *view : stage.views()) {
        view->setSizeAdjustPolicy(QAbstractScrollArea::AdjustToContents);
        view->setHorizontalScrollBarPolicy(policy);
        view->setVerticalScrollBarPolicy(policy);
    }
    stage.show();
    QCOMPARE(stage.fast->sizeHint(), stage.table->sizeHint());
    change(stage);
    settleEvents();
    QCOMPARE(stage.fast->sizeHint(), stage.table->sizeHint());
}

void TestViewNames::layoutFollowsContents_data()
{
    QTest::addColumn<Change>("change");
    const auto add = [](const char *name, const Change &change) { QTest::newRow(name) << change; };
    add("more rows", [](Stage &stage) { stage.model.insertRows(2, 9); });
    add("rows at the end", [](Stage &stage) { stage.model.insertRows(8, 9); });
    add("fewer rows", [](Stage &stage) { stage.model.removeRows(0, 3); });
    add("more columns", [](Stage &stage) { stage.model.insertColumns(1, 3); });
    add("fewer columns", [](Stage &stage) { stage.model.removeColumns(0, 1); });
    add("wider column", [](Stage &stage) { stage.fast->setColumnWidth(1, 99); });
    add("hidden column", [](Stage &stage) { stage.fast->hideColumn(1); });
    add("hidden header", [](Stage &stage) { stage.fast->header()->hide(); });
    add("high header", [](Stage &stage) { stage.fast->header()->setFixedHeight(71); });
    add("higher header", title(QStringLiteral("one\ntwo\nthree")));
    add("other rows", [](Stage &stage) { stage.fast->setRowHeight(rowHeight + 9); });
    add("no model", [](Stage &stage) { stage.fast->setModel(nullptr); });
}

void TestViewNames::layoutFollowsContents()
{
    QFETCH(Change, change);
    Stage stage(8, 3);
    QWidget window;
    auto *layout = new QVBoxLayout(&window);
    layout->addWidget(stage.fast, 0, Qt::AlignLeft | Qt::AlignTop);
    layout->addStretch();
    stage.fast->setSizeAdjustPolicy(QAbstractScrollArea::AdjustToContents);
    window.resize(900, 900);
    window.show();
    settleEvents();
    const QSize before = stage.fast->size();
    QCOMPARE(before, stage.fast->sizeHint());
    change(stage);
    settleEvents();
    QVERIFY(stage.fast->size() != before);
    // Without a model a small font hints at less than a table may have.
    QCOMPARE(stage.fast->size(), stage.fast->sizeHint().expandedTo(stage.fast->minimumSizeHint()));
}

void TestViewNames::iconSizeRepaints_data()
{
    QTest::addColumn<bool>("isBuffered");
    QTest::newRow("direct") << false;
    QTest::newRow("buffered") << true;
}

void TestViewNames::iconSizeRepaints()
{
    QFETCH(bool, isBuffered);
    Stage stage;
    QPixmap red(64, 64);
    red.fill(Qt::red);
    for (int row = 0; row < 5; ++row)
        stage.model.item(row, 1)->setIcon(QIcon(red));
    stage.fast->setPaintBufferEnabled(isBuffered);
    stage.fast->setFocusPolicy(Qt::NoFocus);
    stage.fast->setItemDelegate(new QStyledItemDelegate(stage.fast));
    stage.show();
    QImage before = maintainedPicture(*stage.fast);
    for (int size : {8, 20, 12}) {
        stage.fast->setIconSize(QSize(size, size));
        settleEvents();
        const QImage shown = maintainedPicture(*stage.fast);
        QVERIFY(shown != before);
        stage.fast->setPaintBufferEnabled(!isBuffered);
        stage.fast->viewport()->update();
        settleEvents();
        QCOMPARE(shown, maintainedPicture(*stage.fast));
        stage.fast->setPaintBufferEnabled(isBuffered);
        before = shown;
    }
}

void TestViewNames::headerHeights_data()
{
    QTest::addColumn<Change>("change");
    QTest::addColumn<bool>("isBefore");
    const QString three = QStringLiteral("one\ntwo\nthree");
    const std::pair<const char *, Change> changes[] = {
        {"as it is", [](Stage & /*stage*/) {}},
        {"fixed", headerChange([](QHeaderView *header) { header->setFixedHeight(57); })},
        {"fixed, lower", headerChange([](QHeaderView *header) { header->setFixedHeight(9); })},
        {"minimum", headerChange([](QHeaderView *header) { header->setMinimumHeight(61); })},
        {"maximum", headerChange([](QHeaderView *header) { header->setMaximumHeight(11); })},
        {"maximum, larger",
         headerChange([](QHeaderView *header) { header->setMaximumHeight(400); })},
        {"no height", headerChange([](QHeaderView *header) { header->setFixedHeight(0); })},
        {"three lines", title(three)},
        {"three lines and back",
         [three](Stage &stage) {
             title(three)(stage);
             settleEvents();
             title(QStringLiteral("one"))(stage);
         }},
        {"font",
         headerChange([](QHeaderView *header) { header->setFont(scaled(header->font(), 3)); })},
        {"font of the views",
         [](Stage &stage) {
             for (QAbstractItemView *view : stage.views())
                 view->setFont(scaled(view->font(), 3));
         }},
        {"font of the application",
         [](Stage & /*stage*/) { QApplication::setFont(scaled(QApplication::font(), 2)); }},
        {"font of the model",
         [](Stage &stage) {
             stage.model.setHeaderData(1, Qt::Horizontal, scaled(QApplication::font(), 3),
                                       Qt::FontRole);
         }},
        {"icon of the model",
         [](Stage &stage) {
             QPixmap high(40, 70);
             high.fill(Qt::red);
             stage.model.setHeaderData(1, Qt::Horizontal, high, Qt::DecorationRole);
         }},
        {"size of the model",
         [](Stage &stage) {
             stage.model.setHeaderData(1, Qt::Horizontal, QSize(50, 83), Qt::SizeHintRole);
         }},
        {"style sheet", headerChange([](QHeaderView *header) {
             header->setStyleSheet(QStringLiteral("QHeaderView::section { padding: 17px }"));
         })},
        {"style sheet of the views",
         [](Stage &stage) {
             for (QAbstractItemView *view : stage.views())
                 view->setStyleSheet(QStringLiteral(
                     "QHeaderView::section { height: 63px; border: 2px solid red }"));
         }},
        {"style sheet, font", headerChange([](QHeaderView *header) {
             header->setStyleSheet(QStringLiteral("font-size: 39px"));
         })},
        {"style sheet of the window",
         [](Stage &stage) {
             stage.window.setStyleSheet(QStringLiteral("QHeaderView { font-size: 39px }"));
         }},
        {"hidden", headerChange([](QHeaderView *header) { header->hide(); })},
        {"hidden and shown", headerChange([](QHeaderView *header) {
             header->hide();
             header->show();
         })},
        {"sort indicator",
         headerChange([](QHeaderView *header) { header->setSortIndicatorShown(true); })},
        {"no columns", [](Stage &stage) { stage.model.setColumnCount(0); }},
        {"another model",
         [](Stage &stage) {
             auto *other = new QStandardItemModel(3, 3, &stage.window);
             other->setHeaderData(0, Qt::Horizontal, QStringLiteral("a\nb"));
             for (QAbstractItemView *view : stage.views())
                 view->setModel(other);
         }},
    };
    for (const auto &[name, change] : changes) {
        QTest::addRow("%s, before", name) << change << true;
        QTest::addRow("%s, when shown", name) << change << false;
    }
}

//! As high as QTableView's, and the viewport begins where the header ends.
void TestViewNames::headerHeights()
{
    QFETCH(Change, change);
    QFETCH(bool, isBefore);
    Stage stage;
    if (isBefore)
        change(stage);
    stage.window.show();
    settleEvents();
    if (!isBefore)
        change(stage);
    settleEvents();
    const QHeaderView *header = stage.fast->header();
    const QRect viewport = stage.fast->viewport()->geometry();
    QCOMPARE(viewport, stage.table->viewport()->geometry());
    if (header->isHidden())
        return;
    QCOMPARE(header->geometry(), stage.table->horizontalHeader()->geometry());
    QCOMPARE(header->geometry().bottom() + 1, viewport.top());
    QCOMPARE(header->width(), viewport.width());
}

QTEST_MAIN(TestViewNames)

#include "tst_viewnames.moc"
