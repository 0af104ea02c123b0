// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "bigmodel.h"
#include "pixels/painttraits_p.h"
#include "recordedview.h"
#include "view/cellpainter_p.h"
#include "view/paintbuffer_p.h"
#include "view/rowgeometry_p.h"

#include <QApplication>
#include <QItemSelectionModel>
#include <QLineEdit>
#include <QLinearGradient>
#include <QProxyStyle>
#include <QTest>

#include <functional>
#include <memory>

namespace {

constexpr QStyle::State enabled = QStyle::State_Enabled;
constexpr QStyle::State active = QStyle::State_Active;
constexpr QStyle::State selected = QStyle::State_Selected;
constexpr QStyle::State focused = QStyle::State_HasFocus;

//! Paints everything, whatever its rectangle is.
class Flooding : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;
    void paint(QPainter *painter, const QStyleOptionViewItem &,
               const QModelIndex &index) const override
    {
        painter->fillRect(QRect(-1000, -1000, 3000, 3000),
                          index.column() == 0 ? Qt::red : Qt::blue);
    }
};

//! Notes the panels of rows and the frames that it draws.
class NotingStyle : public QProxyStyle
{
public:
    NotingStyle()
        : QProxyStyle(QStringLiteral("fusion"))
    {
    }
    void drawPrimitive(PrimitiveElement element, const QStyleOption *option, QPainter *painter,
                       const QWidget *widget) const override
    {
        if (element == PE_PanelItemViewRow)
            panels.append(*qstyleoption_cast<const QStyleOptionViewItem *>(option));
        if (element == PE_FrameFocusRect)
            frames.append(*qstyleoption_cast<const QStyleOptionFocusRect *>(option));
        QProxyStyle::drawPrimitive(element, option, painter, widget);
    }

    mutable QList<QStyleOptionViewItem> panels;
    mutable QList<QStyleOptionFocusRect> frames;
};

//! A view of three columns, and what paints its cells.
struct Painted
{
    Painted()
        : model(30, 3)
        , view(&model)
        , painter(&view)
        , buffer(&cache, &isOn)
    {
        view.showWith(180, 5 * rowHeight);
        geometry.rowHeight = rowHeight;
        geometry.rows = 30;
        geometry.viewportHeight = 5 * rowHeight;
        view.recorder.forget();
    }
    //! A pass over all columns, without anything but what the view says.
    PaintPass pass()
    {
        PaintPass made;
        made.model = &model;
        made.selectionModel = view.selectionModel();
        for (int column = 0; column < 3; ++column)
            made.columns.append({column, column * 60, 60, QStyleOptionViewItem::Middle});
        painter.complete(&made, geometry);
        return made;
    }
    QStyleOptionViewItem base()
    {
        QStyleOptionViewItem option;
        view.initViewItemOption(&option);
        painter.initRows(&option);
        return option;
    }
    //! Paints a row at the top.
    QImage paint(int row, const PaintPass &of, QPoint place = {})
    {
        QImage image(180, 5 * rowHeight, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::white);
        QPainter to(&image);
        const QStyleOptionViewItem begin = base();
        QStyleOptionViewItem option = begin;
        const QModelIndex index = model.index(row, 0);
        painter.setRow(&option, begin, index, of);
        option.rect = QRect(place, QSize(180, rowHeight));
        painter.paintRow(&to, option, index, of, &buffer);
        return image;
    }
    QImage paint(int row) { return paint(row, pass()); }

    BigModel model;
    View view;
    CellPainter painter;
    RowGeometry geometry;
    PixmapCacheIndexed cache {nullptr};
    bool isOn = false;
    PaintBuffer buffer;
};

} // namespace

Q_DECLARE_METATYPE(std::function<void(Painted *)>)

class tst_CellPainter : public QObject
{
    Q_OBJECT

public:
    //! Pixels are moved and kept only where they are whole.
    static void initMain() { qputenv("QT_SCALE_FACTOR", "1"); }

private slots:
    void init();
    void passKnowsTheSelectionOnScreen();
    void selectionIsAskedForWhereItMayReach();
    void selectionIsThatOfTheBeginning();
    void passKnowsTheCurrentRow();
    void passKnowsWhetherPicturesCanBeKept_data();
    void passKnowsWhetherPicturesCanBeKept();
    void editorInTheRowHasFocus();
    void looksAreToldApart_data();
    void looksAreToldApart();
    void rowsAreNotUnderThePointer();
    void rowHasItsState_data();
    void rowHasItsState();
    void cellHasItsState();
    void disabledCellIsDisabled();
    void editorsRowIsActive();
    void cellsAreInTheirPlaces();
    void panelIsNotSelected();
    void delegateOfRowThenColumn();
    void delegateIsCutOff_data();
    void delegateIsCutOff();
    void bufferIsUsed();
    void bufferedCellsOutsideAreLeftOut();
    void pictureBeginsAsTheViewportDoes();
    void pictureIsCopiedFromTheCanvas_data();
    void pictureIsCopiedFromTheCanvas();
    void pictureIsNotKeptInPlace();
    void frameIsAroundTheEditorsRow_data();
    void frameIsAroundTheEditorsRow();
};

void tst_CellPainter::init()
{
    PaintTraits::setReader(nullptr);
}

void tst_CellPainter::passKnowsTheSelectionOnScreen()
{
    Painted painted;
    painted.view.setSelectionMode(QAbstractItemView::MultiSelection);
    painted.geometry.value = 10; // rows 10 to 14
    QItemSelection selection;
    for (const auto &[top, bottom] : {std::pair(0, 9), std::pair(10, 10), std::pair(12, 12),
                                      std::pair(14, 20), std::pair(22, 23)}) {
        selection.select(painted.model.index(top, 0), painted.model.index(bottom, 1));
    }
    painted.view.selectionModel()->select(selection, QItemSelectionModel::Select);
    const PaintPass pass = painted.pass();
    QList<int> tops;
    for (const QItemSelectionRange &range : pass.selection)
        tops.append(range.top());
    std::sort(tops.begin(), tops.end());
    QCOMPARE(tops, QList<int>({10, 12, 14}));
}

void tst_CellPainter::selectionIsAskedForWhereItMayReach()
{
    Painted painted;
    painted.view.selectionModel()->select(
        QItemSelection(painted.model.index(1, 1), painted.model.index(2, 1)),
        QItemSelectionModel::Select);
    const PaintPass pass = painted.pass();
    for (int row = 0; row < 4; ++row) {
        for (int column = 0; column < 3; ++column) {
            QCOMPARE(pass.isSelected(painted.model.index(row, column)),
                     column == 1 && (row == 1 || row == 2));
        }
    }
    painted.view.selectionModel()->select(painted.model.index(2, 1), QItemSelectionModel::Deselect);
    QVERIFY(!pass.isSelected(painted.model.index(2, 1))); // the model has the last word
    PaintPass without;
    without.model = &painted.model;
    painted.painter.complete(&without, painted.geometry);
    QVERIFY(!without.isSelected(painted.model.index(1, 1)));
    QCOMPARE(without.currentRow, -1);
}

void tst_CellPainter::selectionIsThatOfTheBeginning()
{
    Painted painted;
    painted.view.setSelectionMode(QAbstractItemView::MultiSelection);
    QItemSelectionModel *selection = painted.view.selectionModel();
    selection->select(painted.model.index(2, 1), QItemSelectionModel::ClearAndSelect);
    const PaintPass pass = painted.pass();
    selection->select(QItemSelection(painted.model.index(1, 0), painted.model.index(3, 2)),
                      QItemSelectionModel::Select);
    for (int row = 1; row <= 3; ++row) {
        for (int column = 0; column < 3; ++column) {
            QCOMPARE(pass.isSelected(painted.model.index(row, column)), row == 2 && column == 1);
        }
    }
}

void tst_CellPainter::passKnowsTheCurrentRow()
{
    Painted painted;
    painted.view.setCurrentIndex(QModelIndex());
    QCOMPARE(painted.pass().currentRow, -1);
    QVERIFY(!painted.pass().hasEditorFocus);
    painted.view.setCurrentIndex(painted.model.index(0, 1));
    QCOMPARE(painted.pass().currentRow, 0);
    QVERIFY(!painted.pass().hasEditorFocus);
    auto *editor = new QLineEdit;
    painted.view.setIndexWidget(painted.model.index(0, 2), editor);
    painted.view.activateWindow();
    editor->setFocus();
    QTRY_VERIFY(editor->hasFocus());
    QVERIFY(painted.pass().hasEditorFocus);
}

void tst_CellPainter::passKnowsWhetherPicturesCanBeKept_data()
{
    QTest::addColumn<std::function<void(Painted *)>>("change");
    QTest::addColumn<bool>("isBackgroundPlain");
    QTest::addColumn<bool>("isInPlace");
    using Change = std::function<void(Painted *)>;
    const auto withBrush = [](QPalette::ColorRole role) {
        return Change([role](Painted *painted) {
            QPalette palette = painted->view.palette();
            palette.setBrush(role, QLinearGradient(0, 0, 9, 9));
            painted->view.setPalette(palette);
        });
    };
    QTest::newRow("plain") << Change([](Painted *) {}) << true << false;
    QTest::newRow("base") << withBrush(QPalette::Base) << false << true;
    QTest::newRow("alternate base") << withBrush(QPalette::AlternateBase) << true << true;
    QTest::newRow("nothing behind")
        << Change([](Painted *painted) { painted->view.viewport()->setAutoFillBackground(false); })
        << false << true;
}

void tst_CellPainter::passKnowsWhetherPicturesCanBeKept()
{
    QFETCH(std::function<void(Painted *)>, change);
    QFETCH(bool, isBackgroundPlain);
    QFETCH(bool, isInPlace);
    Painted painted;
    change(&painted);
    QCOMPARE(painted.pass().isBackgroundPlain, isBackgroundPlain);
    QCOMPARE(painted.pass().isInPlace, isInPlace);
}

void tst_CellPainter::editorInTheRowHasFocus()
{
    Painted painted;
    auto *holder = new QWidget;
    auto *editor = new QLineEdit(holder);
    painted.view.setIndexWidget(painted.model.index(3, 2), holder);
    auto *other = new QLineEdit(painted.view.viewport());
    other->show();
    painted.view.activateWindow();
    painted.view.setFocus();
    QTRY_VERIFY(painted.view.hasFocus());
    QVERIFY(!painted.painter.hasEditorFocus(painted.model, 3));
    editor->setFocus();
    QVERIFY(painted.painter.hasEditorFocus(painted.model, 3));
    QVERIFY(!painted.painter.hasEditorFocus(painted.model, 2));
    holder->setFocusPolicy(Qt::StrongFocus);
    holder->setFocus();
    QVERIFY(painted.painter.hasEditorFocus(painted.model, 3));
    other->setFocus();
    QVERIFY(!painted.painter.hasEditorFocus(painted.model, 3));
    auto *first = new QLineEdit;
    painted.view.setIndexWidget(painted.model.index(3, 0), first);
    first->setFocus();
    QVERIFY(painted.painter.hasEditorFocus(painted.model, 3));
    painted.view.viewport()->setFocusProxy(nullptr);
    painted.view.viewport()->setFocus();
    QVERIFY(!painted.painter.hasEditorFocus(painted.model, 3));
}

void tst_CellPainter::looksAreToldApart_data()
{
    QTest::addColumn<std::function<void(Painted *)>>("change");
    using Change = std::function<void(Painted *)>;
    const auto add = [](const char *name, const Change &change) { QTest::newRow(name) << change; };
    add("palette", [](Painted *painted) { painted->view.setPalette(QPalette(Qt::green)); });
    add("palette of the viewport",
        [](Painted *painted) { painted->view.viewport()->setPalette(QPalette(Qt::green)); });
    add("font", [](Painted *painted) {
        QFont font = painted->view.font();
        font.setItalic(true);
        painted->view.setFont(font);
    });
    add("locale", [](Painted *painted) {
        const bool isC = painted->view.locale() == QLocale::c();
        painted->view.setLocale(isC ? QLocale(QLocale::German) : QLocale::c());
    });
    add("direction", [](Painted *painted) { painted->view.setLayoutDirection(Qt::RightToLeft); });
    add("elision", [](Painted *painted) { painted->view.setTextElideMode(Qt::ElideMiddle); });
    add("size of icons", [](Painted *painted) { painted->view.setIconSize(QSize(7, 9)); });
    add("alternating rows", [](Painted *painted) { painted->view.setAlternatingRowColors(true); });
    add("selected items", [](Painted *painted) {
        painted->view.setSelectionBehavior(QAbstractItemView::SelectItems);
    });
    add("hidden column", [](Painted *painted) { painted->view.hideColumn(1); });
    add("disabled", [](Painted *painted) { painted->view.setEnabled(false); });
    add("delegate",
        [](Painted *painted) { painted->view.setItemDelegate(new Flooding(&painted->view)); });
    add("in place",
        [](Painted *painted) { painted->view.viewport()->setAutoFillBackground(false); });
}

void tst_CellPainter::looksAreToldApart()
{
    QFETCH(std::function<void(Painted *)>, change);
    Painted painted;
    const auto look = [&] { return painted.painter.look(painted.base(), painted.pass()); };
    const CellLook before = look();
    QVERIFY(look() == before);
    change(&painted);
    QVERIFY(look() != before);
}

void tst_CellPainter::rowsAreNotUnderThePointer()
{
    Painted painted;
    painted.view.setAttribute(Qt::WA_UnderMouse);
    QStyleOptionViewItem option;
    painted.view.initViewItemOption(&option);
    option.state |= QStyle::State_MouseOver;
    painted.painter.initRows(&option);
    QVERIFY(!(option.state & QStyle::State_MouseOver));
    QCOMPARE(option.palette.cacheKey(), painted.view.palette().cacheKey());
    QVERIFY(option.state & enabled);
    // The focus is that of single cells.
    QStyleOptionViewItem focusedOption = option;
    focusedOption.state ^= focused;
    const PaintPass pass = painted.pass();
    QVERIFY(painted.painter.look(option, pass) == painted.painter.look(focusedOption, pass));
}

void tst_CellPainter::rowHasItsState_data()
{
    QTest::addColumn<QStyle::State>("base");
    QTest::addColumn<bool>("isSelected");
    QTest::addColumn<bool>("isByRows");
    QTest::addColumn<QStyle::State>("state");
    QTest::addColumn<QPalette::ColorGroup>("group");
    using State = QStyle::State;
    QTest::newRow("plain") << enabled << false << true << enabled << QPalette::Inactive;
    QTest::newRow("active") << (enabled | active) << false << true << (enabled | active)
                            << QPalette::Active;
    QTest::newRow("selected") << enabled << true << true << (enabled | active | selected)
                              << QPalette::Active;
    QTest::newRow("selected cell")
        << enabled << true << false << (enabled | active) << QPalette::Active;
    QTest::newRow("disabled") << State() << true << true << (active | selected)
                              << QPalette::Disabled; // as it was
}

void tst_CellPainter::rowHasItsState()
{
    QFETCH(QStyle::State, base);
    QFETCH(bool, isSelected);
    QFETCH(bool, isByRows);
    QFETCH(QStyle::State, state);
    QFETCH(QPalette::ColorGroup, group);
    Painted painted;
    painted.view.setSelectionBehavior(isByRows ? QAbstractItemView::SelectRows
                                               : QAbstractItemView::SelectItems);
    if (isSelected) {
        painted.view.selectionModel()->select(painted.model.index(2, 0),
                                              QItemSelectionModel::Select);
    }
    QStyleOptionViewItem begin;
    begin.state = base;
    QStyleOptionViewItem option;
    option.state = ~QStyle::State(); // that of another row
    option.rect = QRect(1, 2, 3, 4);
    option.palette.setCurrentColorGroup(QPalette::Disabled);
    painted.painter.setRow(&option, begin, painted.model.index(2, 0), painted.pass());
    QCOMPARE(option.state, state);
    QCOMPARE(option.palette.currentColorGroup(), group);
    QCOMPARE(option.rect, QRect(1, 2, 3, 4));
}

void tst_CellPainter::cellHasItsState()
{
    Painted painted;
    painted.view.setAlternatingRowColors(true);
    painted.view.setSelectionBehavior(QAbstractItemView::SelectItems);
    painted.view.selectionModel()->select(painted.model.index(1, 1), QItemSelectionModel::Select);
    painted.view.selectionModel()->setCurrentIndex(painted.model.index(1, 2),
                                                   QItemSelectionModel::NoUpdate);
    PaintPass pass = painted.pass();
    pass.hoverRow = 1;
    pass.hoverColumn = 0;
    painted.view.recorder.forget();
    for (int row : {1, 2})
        painted.paint(row, pass);
    const auto state = [&](int row, int column, QStyle::State flag) {
        return bool(painted.view.recorder.optionOf(row, column).state & flag);
    };
    for (int column = 0; column < 3; ++column) {
        QCOMPARE(state(1, column, focused), true);
        QCOMPARE(state(2, column, focused), false);
        QCOMPARE(state(1, column, selected), column == 1);
        QCOMPARE(state(2, column, selected), false);
        QCOMPARE(state(1, column, QStyle::State_MouseOver), column == 0);
        QCOMPARE(state(2, column, QStyle::State_MouseOver), false);
        for (int row : {1, 2}) {
            const QStyleOptionViewItem option = painted.view.recorder.optionOf(row, column);
            QCOMPARE(bool(option.features & QStyleOptionViewItem::Alternate), row == 1);
            QVERIFY(option.showDecorationSelected);
        }
    }
}

void tst_CellPainter::disabledCellIsDisabled()
{
    Painted painted;
    painted.model.disabledRow = 1;
    for (int row : {0, 1, 2})
        painted.paint(row);
    for (int row : {0, 1, 2}) {
        const QStyleOptionViewItem option = painted.view.recorder.optionOf(row, 0);
        QCOMPARE(bool(option.state & enabled), row != 1);
        QCOMPARE(option.palette.currentColorGroup() == QPalette::Disabled, row == 1);
    }
}

void tst_CellPainter::editorsRowIsActive()
{
    Painted painted;
    PaintPass pass = painted.pass();
    pass.currentRow = 1;
    const auto paintInactive = [&](int row) {
        QImage image(180, 20, QImage::Format_ARGB32_Premultiplied);
        QPainter to(&image);
        QStyleOptionViewItem option = painted.base();
        option.state = enabled;
        option.rect = QRect(0, 0, 180, rowHeight);
        painted.painter.paintRow(&to, option, painted.model.index(row, 0), pass, &painted.buffer);
        return painted.view.recorder.optionOf(row, 0);
    };
    QVERIFY(!(paintInactive(1).state & active));
    QCOMPARE(paintInactive(1).palette.currentColorGroup(), QPalette::Inactive);
    pass.hasEditorFocus = true;
    QVERIFY(paintInactive(1).state & active);
    QCOMPARE(paintInactive(1).palette.currentColorGroup(), QPalette::Active);
    QVERIFY(!(paintInactive(2).state & active));
}

void tst_CellPainter::cellsAreInTheirPlaces()
{
    Painted painted;
    PaintPass pass = painted.pass();
    pass.columns = {{2, -10, 60, QStyleOptionViewItem::Beginning},
                    {0, 50, 40, QStyleOptionViewItem::End}};
    pass.delay = QPoint(3, 5);
    painted.paint(4, pass, QPoint(0, 20));
    QCOMPARE(painted.view.recorder.optionOf(4, 2).rect, QRect(-7, 25, 60, rowHeight));
    QCOMPARE(painted.view.recorder.optionOf(4, 0).rect, QRect(53, 25, 40, rowHeight));
    QCOMPARE(painted.view.recorder.optionOf(4, 2).viewItemPosition,
             QStyleOptionViewItem::Beginning);
    QCOMPARE(painted.view.recorder.optionOf(4, 0).viewItemPosition, QStyleOptionViewItem::End);
    QCOMPARE(painted.view.recorder.timesPainted(4, 1), 0);
}

void tst_CellPainter::panelIsNotSelected()
{
    NotingStyle style;
    Painted painted;
    painted.view.setStyle(&style);
    painted.view.setCurrentIndex(painted.model.index(1, 0));
    style.panels.clear();
    painted.view.recorder.forget();
    painted.paint(1);
    QCOMPARE(style.panels.size(), 3);
    for (const QStyleOptionViewItem &option : std::as_const(style.panels)) {
        QVERIFY(!(option.state & selected));
        QVERIFY(option.state & focused);
        QCOMPARE(option.rect.height(), rowHeight);
    }
    QVERIFY(painted.view.recorder.optionOf(1, 0).state & selected);
    painted.view.setStyle(nullptr);
}

void tst_CellPainter::delegateOfRowThenColumn()
{
    Painted painted;
    Recorder ofRow;
    Recorder ofColumn;
    painted.view.setItemDelegateForRow(1, &ofRow);
    painted.view.setItemDelegateForColumn(2, &ofColumn);
    ofRow.forget();
    ofColumn.forget();
    painted.paint(1);
    painted.paint(2);
    QCOMPARE(ofRow.painted.size(), 3);
    QCOMPARE(ofColumn.painted, QModelIndexList {painted.model.index(2, 2)});
    QCOMPARE(painted.view.recorder.timesPainted(2, 0), 1);
    QCOMPARE(painted.view.recorder.timesPainted(1, 0), 0);
    painted.view.setItemDelegateForRow(1, nullptr);
    painted.view.setItemDelegateForColumn(2, nullptr);
}

void tst_CellPainter::delegateIsCutOff_data()
{
    QTest::addColumn<bool>("isBuffered");
    QTest::addColumn<bool>("isKnown");
    QTest::newRow("in place") << false << false;
    QTest::newRow("in place, known to stay inside") << false << true;
    QTest::newRow("picture") << true << false;
}

void tst_CellPainter::delegateIsCutOff()
{
    QFETCH(bool, isBuffered);
    QFETCH(bool, isKnown);
    if (isKnown)
        PaintTraits::setReader([](const QAbstractItemDelegate *) {
            return PaintTraits {false, true};
        });
    Painted painted;
    painted.isOn = isBuffered;
    Flooding flooding;
    painted.view.setItemDelegate(&flooding);
    PaintPass pass = painted.pass();
    pass.columns.removeLast();
    const QImage image = painted.paint(1, pass, QPoint(0, 20));
    // One that is known is taken at its word.
    const QColor outside = isKnown ? Qt::blue : Qt::white;
    QCOMPARE(image.pixelColor(30, 30), QColor(isKnown ? Qt::blue : Qt::red));
    QCOMPARE(image.pixelColor(59, 39), QColor(isKnown ? Qt::blue : Qt::red));
    QCOMPARE(image.pixelColor(60, 20), QColor(Qt::blue));
    QCOMPARE(image.pixelColor(119, 39), QColor(Qt::blue));
    QCOMPARE(image.pixelColor(120, 30), outside);
    QCOMPARE(image.pixelColor(90, 19), outside);
    QCOMPARE(image.pixelColor(90, 40), outside);
    painted.view.setItemDelegate(&painted.view.recorder);
}

void tst_CellPainter::bufferIsUsed()
{
    Painted painted;
    painted.isOn = true;
    const QImage first = painted.paint(1);
    QCOMPARE(painted.view.recorder.painted.size(), 3);
    QCOMPARE(painted.view.recorder.optionOf(1, 1).rect, QRect(0, 0, 60, rowHeight));
    QCOMPARE(painted.paint(1), first);
    QCOMPARE(painted.view.recorder.painted.size(), 3);
    painted.isOn = false;
    QCOMPARE(painted.paint(1), first);
    QCOMPARE(painted.view.recorder.painted.size(), 6);
    QVERIFY(!painted.buffer.cell(2, 0, QSize(60, rowHeight)));
}

void tst_CellPainter::bufferedCellsOutsideAreLeftOut()
{
    Painted painted;
    painted.isOn = true;
    const QImage first = painted.paint(1);
    QImage empty = first;
    empty.fill(Qt::white);
    PaintPass pass = painted.pass();
    const QRegion part(QRect(0, 0, 60, rowHeight));
    pass.region = &part;
    const QImage image = painted.paint(1, pass);
    QCOMPARE(image.copy(0, 0, 60, rowHeight), first.copy(0, 0, 60, rowHeight));
    QCOMPARE(image.copy(60, 0, 120, rowHeight), empty.copy(60, 0, 120, rowHeight));
    // A column without width is asked for by nobody.
    pass.columns = {{1, 0, 0, QStyleOptionViewItem::Middle}};
    painted.paint(7, pass);
    QCOMPARE(painted.view.recorder.timesPainted(7, 1), 0);
}

void tst_CellPainter::pictureBeginsAsTheViewportDoes()
{
    class Asking : public QStyledItemDelegate
    {
    public:
        void paint(QPainter *painter, const QStyleOptionViewItem &,
                   const QModelIndex &) const override
        {
            font = painter->font();
            pen = painter->pen();
            background = painter->background();
            direction = painter->layoutDirection();
        }
        mutable QFont font;
        mutable QPen pen;
        mutable QBrush background;
        mutable Qt::LayoutDirection direction = Qt::LayoutDirectionAuto;
    };
    Painted painted;
    painted.isOn = true;
    Asking asking;
    painted.view.setItemDelegate(&asking);
    QWidget *viewport = painted.view.viewport();
    QFont font = viewport->font();
    font.setItalic(true);
    viewport->setFont(font);
    QPalette palette = viewport->palette();
    palette.setColor(viewport->foregroundRole(), Qt::green);
    palette.setColor(QPalette::Base, Qt::yellow);
    viewport->setPalette(palette);
    viewport->setLayoutDirection(Qt::RightToLeft);
    const QImage image = painted.paint(1);
    QVERIFY(asking.font.italic());
    QCOMPARE(asking.pen.color(), QColor(Qt::green));
    QCOMPARE(asking.background.color(), viewport->palette().color(viewport->backgroundRole()));
    QCOMPARE(asking.direction, Qt::RightToLeft);
    QCOMPARE(image.pixelColor(30, 10), QColor(Qt::yellow));
    painted.view.setItemDelegate(&painted.view.recorder);
}

void tst_CellPainter::pictureIsCopiedFromTheCanvas_data()
{
    QTest::addColumn<bool>("staysInCell");
    QTest::addColumn<bool>("ignoresDevice");
    QTest::addColumn<bool>("isAsTheView");
    QTest::addColumn<bool>("isCopied");
    QTest::newRow("known") << true << true << true << true;
    QTest::newRow("may leave its cell") << false << true << true << false;
    QTest::newRow("may ask for its device") << true << false << true << false;
    QTest::newRow("laid out another way") << true << true << false << false;
}

void tst_CellPainter::pictureIsCopiedFromTheCanvas()
{
    class Dot : public QStyledItemDelegate
    {
    public:
        void paint(QPainter *painter, const QStyleOptionViewItem &option,
                   const QModelIndex &) const override
        {
            places.append(option.rect.topLeft());
            painter->fillRect(QRect(option.rect.topLeft(), QSize(3, 3)), Qt::red);
        }
        mutable QList<QPoint> places;
    };
    QFETCH(bool, staysInCell);
    QFETCH(bool, ignoresDevice);
    QFETCH(bool, isAsTheView);
    QFETCH(bool, isCopied);
    static PaintTraits traits;
    traits = PaintTraits();
    traits.staysInCell = staysInCell;
    traits.ignoresDevice = ignoresDevice;
    PaintTraits::setReader([](const QAbstractItemDelegate *) { return traits; });
    Painted painted;
    painted.isOn = true;
    Dot dot;
    painted.view.setItemDelegate(&dot);
    QPalette palette = painted.view.viewport()->palette();
    palette.setColor(QPalette::Base, Qt::yellow);
    painted.view.viewport()->setPalette(palette);

    QImage image(180, 5 * rowHeight, QImage::Format_RGB32);
    image.fill(Qt::blue);
    QPainter to(&image);
    to.setLayoutDirection(isAsTheView ? Qt::LeftToRight : Qt::RightToLeft);
    QStyleOptionViewItem option = painted.base();
    option.rect = QRect(0, 20, 180, rowHeight);
    painted.painter.paintRow(&to, option, painted.model.index(1, 0), painted.pass(),
                             &painted.buffer);
    to.end();
    QCOMPARE(dot.places,
             isCopied ? QList<QPoint>({{0, 20}, {60, 20}, {120, 20}})
                      : QList<QPoint>({{0, 0}, {0, 0}, {0, 0}}));
    for (int column = 0; column < 3; ++column) {
        const QPixmap *kept = painted.buffer.cell(1, column, QSize(60, rowHeight));
        QVERIFY(kept);
        const QImage shown = image.copy(column * 60, 20, 60, rowHeight);
        QCOMPARE(kept->toImage().convertToFormat(QImage::Format_RGB32), shown);
        QCOMPARE(shown.pixelColor(1, 1), QColor(Qt::red));
        QCOMPARE(shown.pixelColor(30, 10), QColor(Qt::yellow));
    }
    QCOMPARE(image.pixelColor(30, 19), QColor(Qt::blue));
    QCOMPARE(image.pixelColor(30, 40), QColor(Qt::blue));
    painted.view.setItemDelegate(&painted.view.recorder);
}

void tst_CellPainter::pictureIsNotKeptInPlace()
{
    Painted painted;
    painted.isOn = true;
    PaintPass pass = painted.pass();
    pass.isInPlace = true;
    painted.paint(1, pass);
    QCOMPARE(painted.view.recorder.optionOf(1, 1).rect, QRect(60, 0, 60, rowHeight));
    QVERIFY(!painted.buffer.cell(1, 1, QSize(60, rowHeight)));
}

void tst_CellPainter::frameIsAroundTheEditorsRow_data()
{
    QTest::addColumn<bool>("isRightToLeft");
    QTest::addColumn<bool>("isSelected");
    QTest::addColumn<bool>("isEnabled");
    QTest::addColumn<int>("offset");
    QTest::newRow("left to right") << false << true << true << 0;
    QTest::newRow("right to left") << true << true << true << 0;
    QTest::newRow("not selected") << false << false << true << 0;
    QTest::newRow("disabled") << false << true << false << 0;
    QTest::newRow("scrolled") << false << true << true << 40;
}

void tst_CellPainter::frameIsAroundTheEditorsRow()
{
    QFETCH(bool, isRightToLeft);
    QFETCH(bool, isSelected);
    QFETCH(bool, isEnabled);
    QFETCH(int, offset);
    NotingStyle style;
    Painted painted;
    painted.view.setStyle(&style);
    painted.view.setLayoutDirection(isRightToLeft ? Qt::RightToLeft : Qt::LeftToRight);
    painted.view.setEnabled(isEnabled);
    painted.view.header()->resizeSection(2, 120); // wider than the viewport
    painted.view.horizontalScrollBar()->setValue(offset);
    QCOMPARE(painted.view.header()->offset(), offset);
    if (isSelected) {
        painted.view.selectionModel()->select(painted.model.index(1, 0),
                                              QItemSelectionModel::Select);
    }
    PaintPass pass = painted.pass();
    pass.currentRow = 1;
    pass.delay = QPoint(0, 2);
    painted.paint(1, pass, QPoint(0, 20));
    QVERIFY(style.frames.isEmpty());
    pass.hasEditorFocus = true;
    painted.paint(2, pass, QPoint(0, 40));
    QVERIFY(style.frames.isEmpty());
    painted.paint(1, pass, QPoint(0, 20));
    QCOMPARE(style.frames.size(), 1);
    const QStyleOptionFocusRect frame = style.frames.first();
    QCOMPARE(frame.rect, QRect(isRightToLeft ? -60 : -offset, 22, 240, rowHeight));
    QVERIFY(frame.state & QStyle::State_KeyboardFocusChange);
    QCOMPARE(frame.backgroundColor,
             painted.view.palette().color(isEnabled ? QPalette::Active : QPalette::Disabled,
                                          isSelected ? QPalette::Highlight : QPalette::Window));
    painted.view.setStyle(nullptr);
}

QTEST_MAIN(tst_CellPainter)

#include "tst_cellpainter.moc"
