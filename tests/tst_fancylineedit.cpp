// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "fancylineedit.h"

#include <QAnimationDriver>
#include <QApplication>
#include <QCursor>
#include <QMenu>
#include <QMetaEnum>
#include <QMetaProperty>
#include <QPainter>
#include <QPointer>
#include <QPropertyAnimation>
#include <QProxyStyle>
#include <QScopeGuard>
#include <QScreen>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>

#include <functional>
#include <memory>

//! Known by its name alone.
class OxygenStyle : public QProxyStyle
{
    Q_OBJECT
};

namespace {

using Side = FancyLineEdit::Side;

QPixmap picture(int width, int height = 10, const QColor &color = Qt::red)
{
    QPixmap pixmap(width, height);
    pixmap.fill(color);
    return pixmap;
}

QList<IconButton *> buttons(const FancyLineEdit &edit)
{
    return edit.findChildren<IconButton *>(QString(), Qt::FindDirectChildrenOnly);
}

//! A shown window with an edit that has pictures on both sides, and another widget.
class Window : public QWidget
{
public:
    explicit Window(Qt::LayoutDirection direction = Qt::LeftToRight)
    {
        setLayoutDirection(direction);
        edit = new FancyLineEdit(this);
        edit->setGeometry(10, 10, 200, 30);
        other = new QLineEdit(this);
        other->setGeometry(10, 50, 200, 30);
        for (const Side side : {FancyLineEdit::Left, FancyLineEdit::Right}) {
            edit->setButtonVisible(side, true);
            edit->setButtonPixmap(side, picture(side == FancyLineEdit::Left ? 10 : 20));
        }
        resize(220, 100);
        move(20, 20);
        show();
        activateWindow();
        shown = QTest::qWaitForWindowActive(this);
    }

    IconButton *button(Side side) const { return buttons(*edit).at(side); }

    QPointer<FancyLineEdit> edit;
    QLineEdit *other;
    bool shown = false;
};

void click(IconButton *button)
{
    QTest::mouseClick(button, Qt::LeftButton, {}, button->rect().center());
}

//! Runs \a function as soon as \a menu is open, then closes it.
template<typename Function> void whenOpen(QMenu *menu, Function function)
{
    QObject::connect(menu, &QMenu::aboutToShow, menu, [menu, function] {
        QTimer::singleShot(0, menu, [menu, function] {
            const QPointer<QMenu> guard = menu;
            function();
            if (guard)
                guard->close();
        });
    });
}

//! Lets more time pass than a fade takes, by an animation started after it.
bool outlastFades()
{
    QObject target;
    QPropertyAnimation clock(&target, "objectName");
    clock.setDuration(250);
    clock.setEndValue(QString());
    QSignalSpy finished(&clock, SIGNAL(finished()));
    clock.start();
    return finished.wait();
}

//! The focus arrives. Qt's own setFocus() would not survive the end of the widget.
void sendFocus(IconButton *button)
{
    QFocusEvent event(QEvent::FocusIn, Qt::TabFocusReason);
    QCoreApplication::sendEvent(button, &event);
}

} // namespace

class TestFancyLineEdit : public QObject
{
    Q_OBJECT

public:
    //! Called before the application is made: menus must fit the screen where they open.
    static void initMain() { qputenv("QT_SCALE_FACTOR", "1"); }

private slots:
    void describesItself();
    void startsWithoutButtons();
    void isPolishedFromTheStart();
    void makesButtons();
    void setsMargins_data();
    void setsMargins();
    void widensMarginsUnderOneStyle_data();
    void widensMarginsUnderOneStyle();
    void measuresDensePicturesInLogicalPixels();
    void mirrorsMargins();
    void placesButtons_data();
    void placesButtons();
    void placesButtonsWhenResized();
    void keepsButtonPixmapEmpty();
    void centersPicture_data();
    void centersPicture();
    void drawsWithOpacityOnlyWhileHiding();
    void hidesButtonByText_data();
    void hidesButtonByText();
    void stopsHiding();
    void menuMakesButtonOpaque();
    void fadesWithText();
    void fadesOnlyHidingButtons();
    void fadesOnceForSeveralCharacters();
    void fadesFromPresentOpacity();
    void fadesFor160Milliseconds();
    void fadesOutAgainWhenEmptyIsCleared();
    void survivesDestructionDuringFade();
    void announcesClicks_data();
    void announcesClicks();
    void opensMenuOnClick_data();
    void opensMenuOnClick();
    void signalsAgainWithoutMenu();
    void forgetsDestroyedMenu();
    void ignoresOtherSenders();
    void clickMayDestroyEdit();
    void menuMayDestroyEdit_data();
    void menuMayDestroyEdit();
    void menuMayDestroyItself();
    void setsFocusTrigger();
    void opensMenuOnTab_data();
    void opensMenuOnTab();
    void focusWithoutTriggerOrMenuOpensNothing_data();
    void focusWithoutTriggerOrMenuOpensNothing();
    void focusMayDestroyEdit();
    void focusMayDestroyMenu();
    void leavesMenuToCaller();
    void repaintsButtons_data();
    void repaintsButtons();
    void smoothsPicturesForOtherScreens();
};

void TestFancyLineEdit::describesItself()
{
    const QMetaEnum sides = QMetaEnum::fromType<FancyLineEdit::Side>();
    QCOMPARE(sides.keyCount(), 2);
    QCOMPARE(sides.valueToKey(0), "Left");
    QCOMPARE(sides.valueToKey(1), "Right");

    const QMetaObject &button = IconButton::staticMetaObject;
    QStringList properties;
    for (int i = button.propertyOffset(); i < button.propertyCount(); ++i) {
        const QMetaProperty property = button.property(i);
        QVERIFY(property.isWritable());
        properties.append(QLatin1String(property.typeName()) + u' '
                          + QLatin1String(property.name()));
    }
    QCOMPARE(properties, QStringList({"float iconOpacity", "bool autoHide", "QPixmap pixmap"}));
    QVERIFY(FancyLineEdit::staticMetaObject.indexOfSignal("buttonClicked(FancyLineEdit::Side)")
            >= 0);
}

void TestFancyLineEdit::startsWithoutButtons()
{
    const FancyLineEdit edit;
    QCOMPARE(edit.textMargins(), QMargins());
    QCOMPARE(buttons(edit).size(), 2);
    for (const Side side : {FancyLineEdit::Left, FancyLineEdit::Right}) {
        const IconButton *button = buttons(edit).at(side);
        QVERIFY(button->isHidden());
        QVERIFY(button->pixmap().isNull());
        QCOMPARE(button->iconOpacity(), 1.0F);
        QVERIFY(!button->hasAutoHide());
        QVERIFY(!edit.isButtonVisible(side));
        QVERIFY(!edit.buttonMenu(side));
        QVERIFY(!edit.hasAutoHideButton(side));
        QVERIFY(!edit.hasMenuTabFocusTrigger(side));
    }
}

//! Who measures it before it is shown gets what the style sheet says.
void TestFancyLineEdit::isPolishedFromTheStart()
{
    const auto restore = qScopeGuard([] { qApp->setStyleSheet(QString()); });
    qApp->setStyleSheet(QStringLiteral("QLineEdit { font-size: 41px; }"));
    const FancyLineEdit edit;
    QCOMPARE(edit.font().pixelSize(), 41);
}

void TestFancyLineEdit::makesButtons()
{
    IconButton button;
    QCOMPARE(button.cursor().shape(), Qt::ArrowCursor);
    QCOMPARE(button.focusPolicy(), Qt::NoFocus);

    FancyLineEdit edit;
    edit.setButtonToolTip(FancyLineEdit::Right, QStringLiteral("tip"));
    edit.setButtonFocusPolicy(FancyLineEdit::Right, Qt::StrongFocus);
    QCOMPARE(buttons(edit).at(1)->toolTip(), QStringLiteral("tip"));
    QCOMPARE(buttons(edit).at(1)->focusPolicy(), Qt::StrongFocus);
    QCOMPARE(buttons(edit).at(0)->toolTip(), QString());
    QCOMPARE(buttons(edit).at(0)->focusPolicy(), Qt::NoFocus);

    edit.setButtonVisible(FancyLineEdit::Right, true);
    QVERIFY(edit.isButtonVisible(FancyLineEdit::Right));
    QVERIFY(!buttons(edit).at(1)->isHidden());
    QVERIFY(!edit.isButtonVisible(FancyLineEdit::Left));
    edit.setButtonVisible(FancyLineEdit::Right, false);
    QVERIFY(!edit.isButtonVisible(FancyLineEdit::Right));
    QVERIFY(buttons(edit).at(1)->isHidden());
}

void TestFancyLineEdit::setsMargins_data()
{
    QTest::addColumn<int>("left"); // width of the picture, −1 for a hidden button
    QTest::addColumn<int>("right");
    QTest::addColumn<QMargins>("margins");
    QTest::newRow("none") << -1 << -1 << QMargins();
    QTest::newRow("left") << 10 << -1 << QMargins(18, 0, 0, 0);
    QTest::newRow("right") << -1 << 10 << QMargins(0, 0, 18, 0);
    QTest::newRow("both") << 10 << 20 << QMargins(18, 0, 28, 0);
    QTest::newRow("without a picture") << 0 << 0 << QMargins(8, 0, 8, 0);
}

void TestFancyLineEdit::setsMargins()
{
    QFETCH(int, left);
    QFETCH(int, right);
    FancyLineEdit edit;
    for (const Side side : {FancyLineEdit::Left, FancyLineEdit::Right}) {
        const int width = side == FancyLineEdit::Left ? left : right;
        edit.setButtonPixmap(side, width == 0 ? QPixmap() : picture(qAbs(width)));
        edit.setButtonVisible(side, width >= 0);
    }
    QTEST(edit.textMargins(), "margins");
    for (const Side side : {FancyLineEdit::Left, FancyLineEdit::Right})
        edit.setButtonVisible(side, false);
    QCOMPARE(edit.textMargins(), QMargins());
}

void TestFancyLineEdit::widensMarginsUnderOneStyle_data()
{
    QTest::addColumn<int>("width");
    QTest::addColumn<int>("margin");
    QTest::newRow("small") << 10 << 24;
    QTest::newRow("just below") << 15 << 24;
    QTest::newRow("just above") << 17 << 25;
    QTest::newRow("large") << 20 << 28;
}

void TestFancyLineEdit::widensMarginsUnderOneStyle()
{
    QFETCH(int, width);
    OxygenStyle style;
    FancyLineEdit edit;
    edit.setStyle(&style);
    edit.setButtonPixmap(FancyLineEdit::Left, picture(width));
    edit.setButtonVisible(FancyLineEdit::Left, true);
    QTEST(edit.textMargins().left(), "margin");
    QCOMPARE(edit.textMargins().right(), 0);
    edit.setButtonVisible(FancyLineEdit::Left, false);
    edit.setButtonPixmap(FancyLineEdit::Right, picture(width));
    edit.setButtonVisible(FancyLineEdit::Right, true);
    QTEST(edit.textMargins().right(), "margin");
    QCOMPARE(edit.textMargins().left(), 0);
}

void TestFancyLineEdit::measuresDensePicturesInLogicalPixels()
{
    QPixmap pixmap = picture(20, 20);
    pixmap.setDevicePixelRatio(2);
    FancyLineEdit edit;
    edit.setButtonVisible(FancyLineEdit::Left, true);
    edit.setButtonPixmap(FancyLineEdit::Left, pixmap);
    QCOMPARE(edit.textMargins(), QMargins(18, 0, 0, 0));
}

void TestFancyLineEdit::mirrorsMargins()
{
    FancyLineEdit edit;
    edit.setLayoutDirection(Qt::RightToLeft);
    edit.setButtonPixmap(FancyLineEdit::Left, picture(10));
    edit.setButtonPixmap(FancyLineEdit::Right, picture(20));
    edit.setButtonVisible(FancyLineEdit::Right, true);
    QCOMPARE(edit.textMargins(), QMargins(28, 0, 0, 0));
    edit.setButtonVisible(FancyLineEdit::Left, true);
    QCOMPARE(edit.textMargins(), QMargins(28, 0, 18, 0));
    edit.setButtonVisible(FancyLineEdit::Right, false);
    QCOMPARE(edit.textMargins(), QMargins(0, 0, 18, 0));
}

void TestFancyLineEdit::placesButtons_data()
{
    QTest::addColumn<Qt::LayoutDirection>("direction");
    QTest::addColumn<QRect>("left");
    QTest::addColumn<QRect>("right");
    QTest::newRow("left to right")
        << Qt::LeftToRight << QRect(0, 0, 22, 30) << QRect(168, 0, 32, 30);
    QTest::newRow("right to left")
        << Qt::RightToLeft << QRect(178, 0, 22, 30) << QRect(0, 0, 32, 30);
}

void TestFancyLineEdit::placesButtons()
{
    QFETCH(Qt::LayoutDirection, direction);
    const Window window(direction);
    QTEST(window.button(FancyLineEdit::Left)->geometry(), "left");
    QTEST(window.button(FancyLineEdit::Right)->geometry(), "right");
}

void TestFancyLineEdit::placesButtonsWhenResized()
{
    const Window window;
    window.edit->resize(100, 40);
    QCOMPARE(window.button(FancyLineEdit::Left)->geometry(), QRect(0, 0, 22, 40));
    QCOMPARE(window.button(FancyLineEdit::Right)->geometry(), QRect(68, 0, 32, 40));
    window.edit->setButtonVisible(FancyLineEdit::Right, false);
    window.edit->resize(120, 40);
    QCOMPARE(window.button(FancyLineEdit::Right)->geometry(), QRect(116, 0, 4, 40));
}

void TestFancyLineEdit::keepsButtonPixmapEmpty()
{
    FancyLineEdit edit;
    for (const Side side : {FancyLineEdit::Left, FancyLineEdit::Right}) {
        edit.setButtonPixmap(side, picture(12));
        QVERIFY(edit.buttonPixmap(side).isNull());
        QCOMPARE(buttons(edit).at(side)->pixmap().width(), 12);
    }
}

void TestFancyLineEdit::centersPicture_data()
{
    QTest::addColumn<QSize>("button");
    QTest::addColumn<QRect>("picture");
    QTest::newRow("odd in odd") << QSize(21, 31) << QRect(8, 13, 5, 5);
    QTest::newRow("odd in even") << QSize(22, 30) << QRect(8, 12, 5, 5);
    QTest::newRow("even in odd") << QSize(21, 31) << QRect(8, 13, 6, 6);
    QTest::newRow("even in even") << QSize(22, 30) << QRect(8, 12, 6, 6);
}

void TestFancyLineEdit::centersPicture()
{
    QFETCH(QSize, button);
    QFETCH(QRect, picture);
    IconButton widget;
    widget.resize(button);
    widget.setPixmap(::picture(picture.width(), picture.height()));
    QImage expected(button, QImage::Format_ARGB32_Premultiplied);
    expected.fill(Qt::white);
    QPainter(&expected).fillRect(picture, Qt::red);
    QImage painted(button, QImage::Format_ARGB32_Premultiplied);
    painted.fill(Qt::white);
    widget.render(&painted, QPoint(), QRegion(), QWidget::RenderFlags());
    QCOMPARE(painted, expected);
}

void TestFancyLineEdit::drawsWithOpacityOnlyWhileHiding()
{
    IconButton button;
    button.resize(20, 20);
    button.setPixmap(picture(20, 20));
    button.setIconOpacity(0.0F);
    const auto center = [&] {
        QImage image(20, 20, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::white);
        button.render(&image, QPoint(), QRegion(), QWidget::RenderFlags());
        return image.pixelColor(10, 10);
    };
    QCOMPARE(center(), QColor(Qt::red));
    button.setAutoHide(true);
    QCOMPARE(center(), QColor(Qt::white));
    button.setIconOpacity(0.5F);
    QVERIFY(qAbs(center().green() - 128) <= 2);
    button.setIconOpacity(1.0F);
    QCOMPARE(center(), QColor(Qt::red));
}

void TestFancyLineEdit::hidesButtonByText_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<float>("opacity");
    QTest::newRow("empty") << QString() << 0.0F;
    QTest::newRow("text") << QStringLiteral("a") << 1.0F;
}

void TestFancyLineEdit::hidesButtonByText()
{
    QFETCH(QString, text);
    FancyLineEdit edit(nullptr);
    edit.setText(text);
    edit.setAutoHideButton(FancyLineEdit::Left, true);
    QVERIFY(edit.hasAutoHideButton(FancyLineEdit::Left));
    QVERIFY(!edit.hasAutoHideButton(FancyLineEdit::Right));
    QVERIFY(buttons(edit).at(0)->hasAutoHide());
    QTEST(buttons(edit).at(0)->iconOpacity(), "opacity");
    QCOMPARE(buttons(edit).at(1)->iconOpacity(), 1.0F);
}

void TestFancyLineEdit::stopsHiding()
{
    FancyLineEdit edit;
    edit.setAutoHideButton(FancyLineEdit::Right, true);
    QCOMPARE(buttons(edit).at(1)->iconOpacity(), 0.0F);
    edit.setAutoHideButton(FancyLineEdit::Right, false);
    QVERIFY(!edit.hasAutoHideButton(FancyLineEdit::Right));
    QCOMPARE(buttons(edit).at(1)->iconOpacity(), 1.0F);
}

void TestFancyLineEdit::menuMakesButtonOpaque()
{
    QMenu menu;
    FancyLineEdit edit;
    edit.setAutoHideButton(FancyLineEdit::Left, true);
    edit.setAutoHideButton(FancyLineEdit::Right, true);
    edit.setButtonMenu(FancyLineEdit::Left, &menu);
    QCOMPARE(edit.buttonMenu(FancyLineEdit::Left), &menu);
    QVERIFY(!edit.buttonMenu(FancyLineEdit::Right));
    QCOMPARE(buttons(edit).at(0)->iconOpacity(), 1.0F);
    QCOMPARE(buttons(edit).at(1)->iconOpacity(), 0.0F);
    edit.setButtonMenu(FancyLineEdit::Right, nullptr);
    QCOMPARE(buttons(edit).at(1)->iconOpacity(), 1.0F);
}

void TestFancyLineEdit::fadesWithText()
{
    const Window window;
    window.edit->setAutoHideButton(FancyLineEdit::Right, true);
    window.edit->setFocus();
    QTest::keyClick(window.edit, Qt::Key_A);
    QVERIFY(window.button(FancyLineEdit::Right)->iconOpacity() < 1.0F);
    QTRY_COMPARE(window.button(FancyLineEdit::Right)->iconOpacity(), 1.0F);
    QVERIFY(window.button(FancyLineEdit::Right)->isVisible());
    QTest::keyClick(window.edit, Qt::Key_Backspace);
    QTRY_COMPARE(window.button(FancyLineEdit::Right)->iconOpacity(), 0.0F);
    QVERIFY(window.button(FancyLineEdit::Right)->isVisible());
}

void TestFancyLineEdit::fadesOnlyHidingButtons()
{
    const Window window;
    window.edit->setAutoHideButton(FancyLineEdit::Right, true);
    window.button(FancyLineEdit::Left)->setIconOpacity(0.25F);
    window.edit->setText(QStringLiteral("a"));
    QTRY_COMPARE(window.button(FancyLineEdit::Right)->iconOpacity(), 1.0F);
    QCOMPARE(window.button(FancyLineEdit::Left)->iconOpacity(), 0.25F);
}

void TestFancyLineEdit::fadesOnceForSeveralCharacters()
{
    const Window window;
    window.edit->setAutoHideButton(FancyLineEdit::Left, true);
    window.edit->setFocus();
    QTest::keyClick(window.edit, Qt::Key_A);
    QTRY_COMPARE(window.button(FancyLineEdit::Left)->iconOpacity(), 1.0F);
    QVERIFY(outlastFades()); // the end value comes just before the end

    window.button(FancyLineEdit::Left)->setIconOpacity(0.5F);
    QTest::keyClick(window.edit, Qt::Key_B);
    QVERIFY(outlastFades());
    QCOMPARE(window.button(FancyLineEdit::Left)->iconOpacity(), 0.5F);
    window.edit->setText(QStringLiteral("c"));
    QVERIFY(outlastFades());
    QCOMPARE(window.button(FancyLineEdit::Left)->iconOpacity(), 0.5F);
}

void TestFancyLineEdit::fadesFromPresentOpacity()
{
    IconButton button;
    button.setIconOpacity(0.75F);
    button.animateShow(true);
    QVERIFY(button.iconOpacity() >= 0.75F);
    QTRY_COMPARE(button.iconOpacity(), 1.0F);
    button.animateShow(false);
    QTRY_COMPARE(button.iconOpacity(), 0.0F);
}

void TestFancyLineEdit::fadesFor160Milliseconds()
{
    class Clock : public QAnimationDriver
    {
    public:
        Clock() { install(); }
        ~Clock() override { uninstall(); }
        Q_DISABLE_COPY_MOVE(Clock)

        qint64 elapsed() const override { return now; }
        qint64 now = 0;
    } clock;
    IconButton button;
    button.setIconOpacity(0.0F);
    button.animateShow(true);
    QTRY_VERIFY(clock.isRunning());
    QCoreApplication::processEvents();
    clock.now = 159;
    clock.advance();
    QVERIFY(button.iconOpacity() > 0.9F);
    QVERIFY(button.iconOpacity() < 1.0F);
    clock.now = 160;
    clock.advance();
    QCOMPARE(button.iconOpacity(), 1.0F);
}

void TestFancyLineEdit::fadesOutAgainWhenEmptyIsCleared()
{
    FancyLineEdit edit;
    edit.setAutoHideButton(FancyLineEdit::Right, true);
    buttons(edit).at(1)->setIconOpacity(1.0F);
    QVERIFY(QMetaObject::invokeMethod(&edit, "checkButtons", Q_ARG(QString, QString())));
    QTRY_COMPARE(buttons(edit).at(1)->iconOpacity(), 0.0F);
}

void TestFancyLineEdit::survivesDestructionDuringFade()
{
    auto edit = std::make_unique<FancyLineEdit>();
    edit->setAutoHideButton(FancyLineEdit::Right, true);
    edit->setText(QStringLiteral("a"));
    edit.reset();
    QVERIFY(outlastFades());
}

void TestFancyLineEdit::announcesClicks_data()
{
    QTest::addColumn<Qt::LayoutDirection>("direction");
    QTest::addColumn<Side>("side");
    QTest::addColumn<QStringList>("expected");
    const QStringList left {"button 0", "left"};
    const QStringList right {"button 1", "right"};
    QTest::newRow("left") << Qt::LeftToRight << FancyLineEdit::Left << left;
    QTest::newRow("right") << Qt::LeftToRight << FancyLineEdit::Right << right;
    QTest::newRow("left, mirrored") << Qt::RightToLeft << FancyLineEdit::Left << left;
    QTest::newRow("right, mirrored") << Qt::RightToLeft << FancyLineEdit::Right << right;
}

void TestFancyLineEdit::announcesClicks()
{
    QFETCH(Qt::LayoutDirection, direction);
    QFETCH(Side, side);
    const Window window(direction);
    QVERIFY(window.shown);
    QStringList heard;
    connect(window.edit, &FancyLineEdit::buttonClicked, this,
            [&](Side clicked) { heard.append(QStringLiteral("button %1").arg(clicked)); });
    connect(window.edit, &FancyLineEdit::leftButtonClicked, this, [&] { heard.append("left"); });
    connect(window.edit, &FancyLineEdit::rightButtonClicked, this, [&] { heard.append("right"); });

    // As the window system tells it: the button is whatever lies under the mouse there.
    const bool isAtLeftEnd = (side == FancyLineEdit::Left) == (direction == Qt::LeftToRight);
    const QPoint place = window.edit->geometry().center();
    const QPoint end(isAtLeftEnd ? window.edit->x() + 10 : window.edit->geometry().right() - 10,
                     place.y());
    QTest::mouseClick(window.windowHandle(), Qt::LeftButton, {}, end);
    QTEST(heard, "expected");
    QTest::mouseClick(window.windowHandle(), Qt::LeftButton, {}, place);
    QTEST(heard, "expected");
}

void TestFancyLineEdit::opensMenuOnClick_data()
{
    QTest::addColumn<Side>("side");
    QTest::newRow("left") << FancyLineEdit::Left;
    QTest::newRow("right") << FancyLineEdit::Right;
}

void TestFancyLineEdit::opensMenuOnClick()
{
    QFETCH(Side, side);
    const Window window;
    QMenu menu;
    menu.addAction(QStringLiteral("item"));
    window.edit->setButtonMenu(side, &menu);
    QSignalSpy clicked(window.edit, SIGNAL(buttonClicked(FancyLineEdit::Side)));
    QSignalSpy left(window.edit, SIGNAL(leftButtonClicked()));
    QSignalSpy right(window.edit, SIGNAL(rightButtonClicked()));
    QPoint place(-1, -1);
    whenOpen(&menu, [&] { place = menu.pos(); });
    const QPoint mouse = window.button(side)->mapToGlobal(QPoint(6, 7));
    QCursor::setPos(mouse);
    click(window.button(side));
    QCOMPARE(place, mouse);
    QVERIFY(!menu.isVisible());
    QCOMPARE(clicked.count() + left.count() + right.count(), 0);

    const Side opposite = side == FancyLineEdit::Left ? FancyLineEdit::Right : FancyLineEdit::Left;
    click(window.button(opposite));
    QCOMPARE(clicked.count(), 1);
    QCOMPARE(clicked.at(0).at(0).value<Side>(), opposite);
}

void TestFancyLineEdit::signalsAgainWithoutMenu()
{
    const Window window;
    QMenu menu;
    menu.addAction(QStringLiteral("item"));
    window.edit->setButtonMenu(FancyLineEdit::Left, &menu);
    window.edit->setButtonMenu(FancyLineEdit::Left, nullptr);
    QVERIFY(!window.edit->buttonMenu(FancyLineEdit::Left));
    QSignalSpy left(window.edit, SIGNAL(leftButtonClicked()));
    click(window.button(FancyLineEdit::Left));
    QCOMPARE(left.count(), 1);
}

void TestFancyLineEdit::forgetsDestroyedMenu()
{
    const Window window;
    auto menu = std::make_unique<QMenu>();
    window.edit->setButtonMenu(FancyLineEdit::Right, menu.get());
    window.edit->setMenuTabFocusTrigger(FancyLineEdit::Right, true);
    menu.reset();
    QVERIFY(!window.edit->buttonMenu(FancyLineEdit::Right));
    QSignalSpy right(window.edit, SIGNAL(rightButtonClicked()));
    click(window.button(FancyLineEdit::Right));
    QCOMPARE(right.count(), 1);
    window.button(FancyLineEdit::Right)->setFocus(Qt::TabFocusReason);
    QVERIFY(window.button(FancyLineEdit::Right)->hasFocus());
}

void TestFancyLineEdit::ignoresOtherSenders()
{
    FancyLineEdit edit;
    IconButton stranger;
    QTimer timer;
    connect(&stranger, SIGNAL(clicked()), &edit, SLOT(iconClicked()));
    connect(&timer, SIGNAL(objectNameChanged(QString)), &edit, SLOT(iconClicked()));
    QSignalSpy clicked(&edit, SIGNAL(buttonClicked(FancyLineEdit::Side)));
    stranger.click();
    timer.setObjectName(QStringLiteral("x"));
    QVERIFY(QMetaObject::invokeMethod(&edit, "iconClicked"));
    QCOMPARE(clicked.count(), 0);
}

void TestFancyLineEdit::clickMayDestroyEdit()
{
    const Window window;
    QSignalSpy left(window.edit, SIGNAL(leftButtonClicked()));
    connect(window.edit, &FancyLineEdit::buttonClicked, this, [&] { delete window.edit; });
    click(window.button(FancyLineEdit::Left));
    QVERIFY(!window.edit);
    QCOMPARE(left.count(), 0);
}

void TestFancyLineEdit::menuMayDestroyEdit_data()
{
    QTest::addColumn<bool>("isMenuOfEdit");
    QTest::newRow("menu stays") << false;
    QTest::newRow("menu goes too") << true;
}

void TestFancyLineEdit::menuMayDestroyEdit()
{
    QFETCH(bool, isMenuOfEdit);
    const Window window;
    QPointer<QMenu> menu = new QMenu(isMenuOfEdit ? window.edit.data() : nullptr);
    menu->addAction(QStringLiteral("item"));
    window.edit->setButtonMenu(FancyLineEdit::Left, menu);
    whenOpen(menu, [&] { delete window.edit; });
    click(window.button(FancyLineEdit::Left));
    QVERIFY(!window.edit);
    QCOMPARE(menu.isNull(), isMenuOfEdit);
    delete menu;
}

void TestFancyLineEdit::menuMayDestroyItself()
{
    const Window window;
    QPointer<QMenu> menu = new QMenu;
    menu->addAction(QStringLiteral("item"));
    window.edit->setButtonMenu(FancyLineEdit::Left, menu);
    whenOpen(menu, [&] { delete menu; });
    click(window.button(FancyLineEdit::Left));
    QVERIFY(!menu);
    QVERIFY(!window.edit->buttonMenu(FancyLineEdit::Left));
}

void TestFancyLineEdit::setsFocusTrigger()
{
    FancyLineEdit edit;
    edit.setButtonFocusPolicy(FancyLineEdit::Right, Qt::StrongFocus);
    edit.setMenuTabFocusTrigger(FancyLineEdit::Right, false); // no change
    QCOMPARE(buttons(edit).at(1)->focusPolicy(), Qt::StrongFocus);
    edit.setMenuTabFocusTrigger(FancyLineEdit::Right, true);
    QVERIFY(edit.hasMenuTabFocusTrigger(FancyLineEdit::Right));
    QVERIFY(!edit.hasMenuTabFocusTrigger(FancyLineEdit::Left));
    QCOMPARE(buttons(edit).at(1)->focusPolicy(), Qt::TabFocus);
    edit.setButtonFocusPolicy(FancyLineEdit::Right, Qt::StrongFocus);
    edit.setMenuTabFocusTrigger(FancyLineEdit::Right, true); // no change
    QCOMPARE(buttons(edit).at(1)->focusPolicy(), Qt::StrongFocus);
    edit.setMenuTabFocusTrigger(FancyLineEdit::Right, false);
    QCOMPARE(buttons(edit).at(1)->focusPolicy(), Qt::NoFocus);
    QCOMPARE(buttons(edit).at(0)->focusPolicy(), Qt::NoFocus);
}

void TestFancyLineEdit::opensMenuOnTab_data()
{
    opensMenuOnClick_data();
}

void TestFancyLineEdit::opensMenuOnTab()
{
    QFETCH(Side, side);
    const Window window;
    QVERIFY(window.shown);
    QMenu menu;
    menu.addAction(QStringLiteral("item"));
    window.edit->setButtonMenu(side, &menu);
    window.edit->setMenuTabFocusTrigger(side, true);
    QPoint place(-1, -1);
    bool hadFocus = false;
    whenOpen(&menu, [&] {
        place = menu.pos();
        hadFocus = window.focusWidget() == window.edit;
    });
    window.edit->setFocus();
    QTest::keyClick(window.edit, Qt::Key_Tab);
    QCOMPARE(place, window.button(side)->mapToGlobal(window.button(side)->rect().center()));
    QVERIFY(hadFocus);
    QCOMPARE(window.focusWidget(), window.edit);
}

void TestFancyLineEdit::focusWithoutTriggerOrMenuOpensNothing_data()
{
    QTest::addColumn<bool>("hasTrigger");
    QTest::addColumn<bool>("hasMenu");
    QTest::newRow("no trigger") << false << true;
    QTest::newRow("no menu") << true << false;
    QTest::newRow("neither") << false << false;
}

void TestFancyLineEdit::focusWithoutTriggerOrMenuOpensNothing()
{
    QFETCH(bool, hasTrigger);
    QFETCH(bool, hasMenu);
    const Window window;
    QMenu menu;
    menu.addAction(QStringLiteral("item"));
    window.edit->setButtonMenu(FancyLineEdit::Left, hasMenu ? &menu : nullptr);
    window.edit->setMenuTabFocusTrigger(FancyLineEdit::Left, hasTrigger);
    window.edit->setButtonFocusPolicy(FancyLineEdit::Left, Qt::TabFocus);
    QSignalSpy opened(&menu, SIGNAL(aboutToShow()));
    whenOpen(&menu, [] {}); // a wrong menu closes itself
    window.edit->setFocus();
    QTest::keyClick(window.edit, Qt::Key_Tab);
    QCOMPARE(opened.count(), 0);
    QVERIFY(window.button(FancyLineEdit::Left)->hasFocus());
}

void TestFancyLineEdit::focusMayDestroyEdit()
{
    const Window window;
    QMenu menu;
    menu.addAction(QStringLiteral("item"));
    window.edit->setButtonMenu(FancyLineEdit::Left, &menu);
    window.edit->setMenuTabFocusTrigger(FancyLineEdit::Left, true);
    window.other->setFocus();
    whenOpen(&menu, [&] { delete window.edit; });
    sendFocus(window.button(FancyLineEdit::Left));
    QVERIFY(!window.edit);
}

void TestFancyLineEdit::focusMayDestroyMenu()
{
    const Window window;
    QVERIFY(window.shown);
    QPointer<QMenu> menu = new QMenu;
    window.edit->setButtonMenu(FancyLineEdit::Left, menu);
    window.edit->setMenuTabFocusTrigger(FancyLineEdit::Left, true);
    window.other->setFocus();
    const auto deletion =
        connect(qApp, &QApplication::focusChanged, this, [&](QWidget *, QWidget *now) {
            if (now == window.edit)
                delete menu;
        });
    sendFocus(window.button(FancyLineEdit::Left));
    disconnect(deletion);
    QVERIFY(!menu);
    QVERIFY(window.edit->hasFocus());
}

void TestFancyLineEdit::leavesMenuToCaller()
{
    QMenu menu;
    const QPointer<QMenu> guard = &menu;
    auto edit = std::make_unique<FancyLineEdit>();
    edit->setButtonMenu(FancyLineEdit::Left, &menu);
    QVERIFY(!menu.parent());
    edit.reset();
    QVERIFY(guard);
}

void TestFancyLineEdit::repaintsButtons_data()
{
    QTest::addColumn<std::function<void(IconButton *)>>("change");
    const auto row = [](const char *name, const std::function<void(IconButton *)> &change) {
        QTest::newRow(name) << change;
    };
    row("picture", [](IconButton *button) { button->setPixmap(picture(20, 20)); });
    row("opacity", [](IconButton *button) { button->setIconOpacity(0.5F); });
}

void TestFancyLineEdit::repaintsButtons()
{
    QFETCH(std::function<void(IconButton *)>, change);
    class Counter : public QObject
    {
    public:
        int paints = 0;
        bool eventFilter(QObject *, QEvent *event) override
        {
            paints += event->type() == QEvent::Paint;
            return false;
        }
    } counter;
    IconButton button;
    button.resize(20, 20);
    button.show();
    QVERIFY(QTest::qWaitForWindowExposed(&button));
    QCoreApplication::processEvents();
    button.installEventFilter(&counter);
    QCoreApplication::processEvents();
    QCOMPARE(counter.paints, 0);
    change(&button);
    QCoreApplication::processEvents();
    QCOMPARE(counter.paints, 1);
}

//! Lines finer than the screen's pixels run into each other, they do not come and go.
void TestFancyLineEdit::smoothsPicturesForOtherScreens()
{
    IconButton button;
    button.resize(16, 16);
    const double ratio = 4 * button.devicePixelRatioF();
    QImage lines(button.size() * ratio, QImage::Format_RGB32);
    for (int y = 0; y < lines.height(); ++y) {
        for (int x = 0; x < lines.width(); ++x)
            lines.setPixelColor(x, y, x % 2 ? Qt::black : Qt::white);
    }
    lines.setDevicePixelRatio(ratio);
    button.setPixmap(QPixmap::fromImage(lines));
    const QImage shown = button.grab().toImage();
    bool isGray = false;
    for (int x = 0; x < shown.width(); ++x) {
        const int value = shown.pixelColor(x, shown.height() / 2).red();
        isGray = isGray || (value > 20 && value < 235);
    }
    QVERIFY(isGray);
}

QTEST_MAIN(TestFancyLineEdit)
#include "tst_fancylineedit.moc"
