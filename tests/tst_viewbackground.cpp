// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

// Brushes and style sheets behind cells: with Qt's delegate the picture is QTableView's, with
// ours it is the same with and without the paint buffer, and after everything has moved.

#include "activation.h"
#include "itemdelegate.h"
#include "mixedmodel.h"
#include "qtablefastview.h"
#include "viewpictures.h"

#include <QHeaderView>
#include <QLinearGradient>
#include <QPixmapCache>
#include <QScrollBar>
#include <QStyledItemDelegate>
#include <QTableView>
#include <QTemporaryDir>
#include <QTest>

#include <functional>

namespace {

constexpr int rowHeight = 24;
constexpr int columnWidth = 70;
constexpr int margin = 20;
constexpr QSize viewSize(320, 10 * rowHeight);

QImage texture()
{
    QImage image(7, 5, QImage::Format_RGB32);
    image.fill(Qt::cyan);
    image.setPixelColor(3, 2, Qt::red);
    image.setPixelColor(4, 2, Qt::red);
    return image;
}

//! A window with both views, each before a background that is nowhere of one colour.
struct Stage
{
    explicit Stage(QAbstractItemView::SelectionBehavior behavior)
    {
        window.resize(2 * viewSize.width(), viewSize.height() + margin);
        fast = new QTableFastView(newBackground());
        table = new QTableView(newBackground());
        fast->setRowHeight(rowHeight);
        table->verticalHeader()->hide();
        table->verticalHeader()->setMinimumSectionSize(1);
        table->verticalHeader()->setDefaultSectionSize(rowHeight);
        table->setShowGrid(false);
        table->setWordWrap(false);
        table->setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
        fast->setItemDelegate(new QStyledItemDelegate(fast));
        for (QAbstractItemView *view : views()) {
            view->setModel(&model);
            view->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
            view->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
            view->setAlternatingRowColors(true);
            view->setSelectionMode(QAbstractItemView::ExtendedSelection);
            view->setSelectionBehavior(behavior);
            view->resize(viewSize);
            select(view, behavior);
            // Out of sight: which cells look focused is not the question.
            view->selectionModel()->setCurrentIndex(model.index(20, 0),
                                                    QItemSelectionModel::NoUpdate);
        }
        for (int column = 0; column < model.columnCount(); ++column) {
            fast->header()->resizeSection(column, columnWidth);
            table->horizontalHeader()->resizeSection(column, columnWidth);
        }
        fast->header()->hide();
        table->horizontalHeader()->hide();
        window.show();
        activate(&window);
        QTest::mouseMove(&window, QPoint(5, viewSize.height() + margin / 2));
        settleEvents();
        for (QAbstractItemView *view : views())
            view->verticalScrollBar()->setValue(0);
    }

    ~Stage() { QPixmapCache::clear(); }

    QList<QAbstractItemView *> views() const { return {fast, table}; }

    //! Gives both a style sheet that says VIEW for their class.
    void setSheet(const QString &sheet) const
    {
        fast->setStyleSheet(
            QString(sheet).replace(QLatin1String("VIEW"), QLatin1String("QTableFastView")));
        table->setStyleSheet(
            QString(sheet).replace(QLatin1String("VIEW"), QLatin1String("QTableView")));
    }

    void clearSelection() const
    {
        for (QAbstractItemView *view : views())
            view->clearSelection();
    }

    MixedModel model;
    QWidget window;
    QTableFastView *fast = nullptr;
    QTableView *table = nullptr;

private:
    QWidget *newBackground()
    {
        auto *background = new QWidget(&window);
        background->setGeometry(
            QRect(QPoint(window.children().size() == 1 ? 0 : viewSize.width(), 0), viewSize));
        QPalette palette = background->palette();
        palette.setBrush(QPalette::Window, texture());
        background->setPalette(palette);
        background->setAutoFillBackground(true);
        return background;
    }

    void select(QAbstractItemView *view, QAbstractItemView::SelectionBehavior behavior)
    {
        const bool isRows = behavior == QAbstractItemView::SelectRows;
        const auto flags = QItemSelectionModel::Select
            | (isRows ? QItemSelectionModel::Rows : QItemSelectionModel::NoUpdate);
        for (const QModelIndex &index : {model.index(2, 1), model.index(5, 3), model.index(6, 0)})
            view->selectionModel()->select(index, flags);
    }
};

using Change = std::function<void(const Stage &)>;

QBrush gradientBrush()
{
    QLinearGradient gradient(0, 0, 300, 200);
    gradient.setColorAt(0, Qt::white);
    gradient.setColorAt(1, Qt::green);
    return gradient;
}

Change brush(QPalette::ColorRole role, const QBrush &brush)
{
    return [role, brush](const Stage &stage) {
        for (QAbstractItemView *view : stage.views()) {
            QPalette palette = view->palette();
            palette.setBrush(role, brush);
            view->setPalette(palette);
        }
    };
}

//! Where style sheets find a picture.
QString pictureFile()
{
    static const QTemporaryDir directory;
    static const QString name = directory.filePath(QStringLiteral("background.png"));
    static const bool isSaved = texture().save(name);
    return isSaved ? name : QString();
}

Change sheet(const char *text)
{
    return [text](const Stage &stage) {
        stage.setSheet(QString::fromLatin1(text).replace(QLatin1String("PICTURE"), pictureFile()));
    };
}

constexpr char gradientSheet[] = "background: qlineargradient(x1:0, y1:0, x2:1, y2:1, "
                                 "stop:0 white, stop:1 #60c0f0)";

//! What QTableView does otherwise.
enum class Otherwise {
    Nothing,
    PaintsSelectionTwice, //!< behind the row, too, where it shows through the cell
    MovesBackground,      //!< along with the cells
};

struct Background
{
    QByteArray name;
    Change change;
    Otherwise otherwise = Otherwise::Nothing;
};

QList<Background> backgrounds()
{
    static const QByteArray gradient = QByteArray("VIEW { ") + gradientSheet + " }";
    static const QByteArray itemGradient = QByteArray("VIEW::item { ") + gradientSheet + " }";
    static const QByteArray selectedGradient =
        QByteArray("VIEW::item:selected { ") + gradientSheet + " }";
    const auto unfilled = [](const Stage &stage) {
        for (QAbstractItemView *view : stage.views())
            view->viewport()->setAutoFillBackground(false);
    };
    return {
        {"plain", [](const Stage & /*stage*/) {}},
        {"base colour", brush(QPalette::Base, QColor(Qt::yellow))},
        {"base gradient", brush(QPalette::Base, gradientBrush()), Otherwise::MovesBackground},
        {"base texture", brush(QPalette::Base, QBrush(texture()))},
        {"base pattern", brush(QPalette::Base, QBrush(Qt::red, Qt::DiagCrossPattern)),
         Otherwise::MovesBackground},
        {"base transparent", brush(QPalette::Base, QColor(Qt::transparent))},
        {"base half transparent", brush(QPalette::Base, QColor(255, 0, 0, 100))},
        {"no base", brush(QPalette::Base, Qt::NoBrush)},
        {"alternate gradient", brush(QPalette::AlternateBase, gradientBrush())},
        {"alternate texture", brush(QPalette::AlternateBase, QBrush(texture()))},
        {"alternate half transparent", brush(QPalette::AlternateBase, QColor(255, 0, 0, 100))},
        {"highlight gradient", brush(QPalette::Highlight, gradientBrush())},
        {"highlight texture", brush(QPalette::Highlight, QBrush(texture()))},
        {"highlight half transparent", brush(QPalette::Highlight, QColor(255, 0, 0, 100)),
         Otherwise::PaintsSelectionTwice},
        {"not filled", unfilled},
        {"sheet: transparent", sheet("VIEW { background: transparent }")},
        {"sheet: colour", sheet("VIEW { background: #d0f0d0 }")},
        {"sheet: half transparent", sheet("VIEW { background: rgba(255, 0, 0, 40%) }")},
        {"sheet: gradient", sheet(gradient.constData())},
        {"sheet: picture", sheet("VIEW { background-image: url(PICTURE) }"),
         Otherwise::MovesBackground},
        {"sheet: picture behind nothing",
         sheet("VIEW { background: transparent url(PICTURE) repeat-y }"),
         Otherwise::MovesBackground},
        {"sheet: picture that stays",
         sheet("VIEW { background-image: url(PICTURE); background-attachment: fixed }")},
        {"sheet: alternate", sheet("VIEW { alternate-background-color: #e0a0a0 }")},
        {"sheet: alternate half transparent",
         sheet("VIEW { alternate-background-color: rgba(255, 0, 0, 40%) }")},
        {"sheet: selection",
         sheet("VIEW { selection-background-color: #a0e0a0; "
               "selection-color: red }")},
        {"sheet: selection gradient",
         sheet("VIEW { selection-background-color: qlineargradient(x1:0, y1:0, x2:1, y2:1, "
               "stop:0 white, stop:1 red) }")},
        {"sheet: items", sheet("VIEW::item { background: #f0f0a0; color: blue }")},
        {"sheet: items with a border",
         sheet("VIEW::item { border: 2px solid red; padding-left: 5px }"),
         Otherwise::PaintsSelectionTwice},
        {"sheet: items, gradient", sheet(itemGradient.constData())},
        {"sheet: items, half transparent",
         sheet("VIEW::item { background: rgba(255, 0, 0, 40%) }")},
        {"sheet: items, picture", sheet("VIEW::item { background-image: url(PICTURE) }")},
        {"sheet: selected items", sheet("VIEW::item:selected { background: #a0e0a0; color: red }")},
        {"sheet: selected items, gradient", sheet(selectedGradient.constData())},
        {"sheet: selected items, half transparent",
         sheet("VIEW::item:selected { background: rgba(255, 0, 0, 40%) }"),
         Otherwise::PaintsSelectionTwice},
        {"sheet: active selected items",
         sheet("VIEW::item:selected:active { background: #a0e0a0; color: red }")},
        {"sheet: selected items of inactive windows",
         sheet("VIEW::item:selected:!active { background: #a0e0a0; color: red }")},
        {"sheet: alternate items", sheet("VIEW::item:alternate { background: #a0e0e0 }")},
        {"sheet: alternate items, half transparent",
         sheet("VIEW::item:alternate { background: rgba(255, 0, 0, 40%) }")},
        {"sheet: hovered items", sheet("VIEW::item:hover { background: #e0a0e0; color: red }")},
        {"sheet: hovered items, half transparent",
         sheet("VIEW::item:hover { background: rgba(255, 0, 0, 40%) }")},
        {"sheet: hovered selected items",
         sheet("VIEW::item:hover:selected { background: #e0a0e0; color: red }")},
        {"sheet: hovered view", sheet("VIEW:hover { background: #e0a0e0 }")},
        {"sheet: indicators",
         sheet("VIEW::indicator { background: red; width: 9px; height: 9px }")},
        {"sheet: border and padding",
         sheet("VIEW { border: 3px solid red; padding: 5px; background: #d0f0d0 }")},
        {"sheet: border radius",
         sheet("VIEW { border: 3px solid red; border-radius: 9px; background: #d0f0d0 }")},
        {"sheet: font", sheet("VIEW { font-weight: bold; color: blue }")},
        {"sheet: any view",
         sheet("QAbstractItemView { background: #d0f0d0 } "
               "QAbstractItemView::item:selected { background: red }")},
        {"sheet: everything", sheet("* { background: #d0f0d0 }")},
    };
}

struct Behavior
{
    QAbstractItemView::SelectionBehavior behavior;
    const char *name;
};

constexpr Behavior behaviors[] = {
    {QAbstractItemView::SelectRows, "rows"},
    {QAbstractItemView::SelectItems, "items"},
};

void addBackgroundRows()
{
    QTest::addColumn<Change>("change");
    QTest::addColumn<QAbstractItemView::SelectionBehavior>("behavior");
    QTest::addColumn<bool>("isBuffered");
    QTest::addColumn<Otherwise>("otherwise");
    for (const auto &[name, change, otherwise] : backgrounds()) {
        for (const Behavior &behavior : behaviors) {
            for (bool isBuffered : {false, true}) {
                QTest::addRow("%s, %s, %s", name.constData(), behavior.name,
                              isBuffered ? "buffered" : "direct")
                    << change << behavior.behavior << isBuffered << otherwise;
            }
        }
    }
}

//! The pointer over a cell.
void hover(QAbstractItemView *view, int row, int column)
{
    const QPoint point(columnWidth * column + 20, rowHeight * row + 10);
    QTest::mouseMove(view->viewport(), point);
    settleEvents();
}

//! What a view shows while it has the focus.
QImage focusedPicture(QAbstractItemView *view)
{
    view->setFocus();
    settleEvents();
    return maintainedPicture(*view);
}

QImage paintedAnew(QAbstractItemView *view)
{
    view->viewport()->update();
    return focusedPicture(view);
}

bool hasBlackCorner(const QTableFastView &view, const QImage &picture)
{
    for (int y = 1; y < picture.height(); y += rowHeight) {
        for (int column = 0; column < view.model()->columnCount(); ++column) {
            const int x = view.columnViewportPosition(column) + 1;
            if (picture.rect().contains(x, y) && qGray(picture.pixel(x, y)) == 0)
                return true;
        }
    }
    return false;
}

//! With the paint buffer, without it, and with nothing that was kept before.
bool isShownAsPaintedAnew(QTableFastView *view)
{
    const QImage shown = focusedPicture(view);
    const bool isBuffered = view->isPaintBufferEnabled();
    QPixmapCache::clear();
    view->setPaintBufferEnabled(!isBuffered);
    const bool isSameOtherwise = isSamePicture(shown, paintedAnew(view));
    QPixmapCache::clear();
    view->setPaintBufferEnabled(isBuffered);
    return isSameOtherwise && isSamePicture(shown, paintedAnew(view))
        && !hasBlackCorner(*view, shown);
}

} // namespace

class TestViewBackground : public QObject
{
    Q_OBJECT

public:
    //! Called before the application is made: device pixels are whole.
    static void initMain() { qputenv("QT_SCALE_FACTOR", "1"); }

private slots:
    void looksLikeQTableView_data();
    void looksLikeQTableView();
    void hoverLooksLikeQTableView_data();
    void hoverLooksLikeQTableView();
    void ownDelegate_data();
    void ownDelegate();
};

void TestViewBackground::looksLikeQTableView_data()
{
    addBackgroundRows();
}

void TestViewBackground::looksLikeQTableView()
{
    QFETCH(Change, change);
    QFETCH(QAbstractItemView::SelectionBehavior, behavior);
    QFETCH(bool, isBuffered);
    QFETCH(Otherwise, otherwise);
#if QT_VERSION >= QT_VERSION_CHECK(6, 5, 0)
    // A later QTableView paints the row behind such cells otherwise than 6.4 did.
    if (QByteArrayView(QTest::currentDataTag()).contains("items, half transparent"))
        QSKIP("compared with Qt 6.4 only");
#endif
    Stage stage(behavior);
    stage.fast->setPaintBufferEnabled(isBuffered);
    if (otherwise == Otherwise::PaintsSelectionTwice)
        stage.clearSelection();
    QVERIFY(isSamePicture(focusedPicture(stage.fast), focusedPicture(stage.table)));
    change(stage);
    settleEvents();
    QCOMPARE(stage.fast->viewport()->geometry(), stage.table->viewport()->geometry());
    QVERIFY(isSamePicture(focusedPicture(stage.fast), focusedPicture(stage.table)));
    for (QAbstractItemView *view : stage.views())
        view->verticalScrollBar()->setValue(3);
    settleEvents();
    const QImage shown = focusedPicture(stage.fast);
    QVERIFY(isSamePicture(shown, paintedAnew(stage.fast)));
    if (otherwise != Otherwise::MovesBackground)
        QVERIFY(isSamePicture(shown, paintedAnew(stage.table)));
}

void TestViewBackground::hoverLooksLikeQTableView_data()
{
    addBackgroundRows();
}

//! The pointer goes over cells, selected ones among them, below them and out.
void TestViewBackground::hoverLooksLikeQTableView()
{
#if QT_VERSION >= QT_VERSION_CHECK(6, 5, 0)
    if (QByteArrayView(QTest::currentDataTag()).contains("items, half transparent"))
        QSKIP("compared with Qt 6.4 only");
#endif
    QFETCH(Change, change);
    QFETCH(QAbstractItemView::SelectionBehavior, behavior);
    QFETCH(bool, isBuffered);
    QFETCH(Otherwise, otherwise);
    Stage stage(behavior);
    stage.fast->setPaintBufferEnabled(isBuffered);
    if (otherwise == Otherwise::PaintsSelectionTwice)
        stage.clearSelection();
    change(stage);
    settleEvents();
    const QList<std::pair<int, int>> cells {{0, 0}, {0, 1}, {1, 1}, {2, 1}, {5, 3}, {6, 0}, {6, 4}};
    for (const auto &[row, column] : cells) {
        QList<QImage> pictures;
        for (QAbstractItemView *view : stage.views()) {
            hover(view, row, column);
            pictures.append(focusedPicture(view));
        }
        QVERIFY2(isSamePicture(pictures.at(0), pictures.at(1)),
                 qPrintable(QStringLiteral("%1, %2").arg(row).arg(column)));
    }
}

void TestViewBackground::ownDelegate_data()
{
    addBackgroundRows();
}

//! No background leaves a cell black, and what is shown is what painting anew shows, after
//! moves in both directions and with the pointer over a cell.
void TestViewBackground::ownDelegate()
{
    QFETCH(Change, change);
    QFETCH(QAbstractItemView::SelectionBehavior, behavior);
    QFETCH(bool, isBuffered);
    Stage stage(behavior);
    auto *indicating = new Vantix::ItemDelegate(stage.fast);
    indicating->setDrawIndicator(true);
    stage.fast->setItemDelegate(new Vantix::ItemDelegate(stage.fast));
    stage.fast->setItemDelegateForColumn(2, indicating);
    stage.fast->setPaintBufferEnabled(isBuffered);
    stage.fast->header()->resizeSection(0, viewSize.width()); // there is something to scroll to
    change(stage);
    const QList<std::pair<int, int>> places {{0, 0}, {3, 0}, {3, 40}, {1, 40}, {20, 10}};
    for (const auto &[row, x] : places) {
        stage.fast->verticalScrollBar()->setValue(row);
        stage.fast->horizontalScrollBar()->setValue(x);
        QVERIFY(isShownAsPaintedAnew(stage.fast));
    }
    hover(stage.fast, 2, 1);
    QVERIFY(isShownAsPaintedAnew(stage.fast));
    hover(stage.fast, 4, 0);
    QVERIFY(isShownAsPaintedAnew(stage.fast));
}

QTEST_MAIN(TestViewBackground)

#include "tst_viewbackground.moc"
