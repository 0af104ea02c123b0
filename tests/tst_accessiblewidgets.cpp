// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "fancylineedit.h"
#include "filterlineedit.h"
#include "itemviewfindtoolbar.h"
#include "qprogressindicator.h"
#include "screenreader.h"

#include <QAbstractItemView>
#include <QAction>
#include <QLabel>
#include <QMenu>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>
#include <QToolButton>

#include <algorithm>
#include <memory>

namespace {

QAccessibleInterface *interfaceOf(QObject *object)
{
    return QAccessible::queryAccessibleInterface(object);
}

QString nameOf(QObject *object)
{
    return interfaceOf(object)->text(QAccessible::Name);
}

IconButton *buttonOf(FancyLineEdit *edit, FancyLineEdit::Side side)
{
    return edit->findChildren<IconButton *>(Qt::FindDirectChildrenOnly).at(side);
}

} // namespace

class tst_AccessibleWidgets : public QObject
{
    Q_OBJECT

private slots:
    void init() { m_reader.reset(new ScreenReader); }
    void cleanup() { m_reader.reset(); }

    void buttonNames();
    void buttonRoles();
    void buttonStates();
    void buttonPress();
    void buttonOpensMenu();
    void buttonAlone();
    void filterField();
    void indicatorStates();
    void indicatorNames();
    void indicatorTells();
    void panel();
    void panelActions();
    void panelField();

private:
    std::unique_ptr<ScreenReader> m_reader;
};

// Icon buttons

void tst_AccessibleWidgets::buttonNames()
{
    FancyLineEdit edit;
    IconButton *button = buttonOf(&edit, FancyLineEdit::Left);
    QCOMPARE(nameOf(button), QString());
    QMenu menu(QStringLiteral("&Kinds"));
    edit.setButtonMenu(FancyLineEdit::Left, &menu);
    QCOMPARE(nameOf(button), QStringLiteral("Kinds"));
    edit.setButtonToolTip(FancyLineEdit::Left, QStringLiteral("Choose a kind"));
    QCOMPARE(nameOf(button), QStringLiteral("Choose a kind"));
    QCOMPARE(interfaceOf(button)->text(QAccessible::Description), QString());
    button->setAccessibleName(QStringLiteral("Kind"));
    QCOMPARE(nameOf(button), QStringLiteral("Kind"));
    QCOMPARE(interfaceOf(button)->text(QAccessible::Description), QStringLiteral("Choose a kind"));
}

void tst_AccessibleWidgets::buttonRoles()
{
    FancyLineEdit edit;
    QMenu menu;
    edit.setButtonMenu(FancyLineEdit::Right, &menu);
    QAccessibleInterface *left = interfaceOf(buttonOf(&edit, FancyLineEdit::Left));
    QAccessibleInterface *right = interfaceOf(buttonOf(&edit, FancyLineEdit::Right));
    QCOMPARE(left->role(), QAccessible::Button);
    QVERIFY(!left->state().hasPopup);
    QCOMPARE(right->role(), QAccessible::ButtonMenu);
    QVERIFY(right->state().hasPopup);
    QCOMPARE(left->parent(), interfaceOf(&edit));
    QVERIFY(interfaceOf(&edit)->indexOfChild(left) >= 0);
    QCOMPARE(left->actionInterface()->actionNames(),
             QStringList(QAccessibleActionInterface::pressAction()));
    QCOMPARE(right->actionInterface()->actionNames(),
             QStringList(QAccessibleActionInterface::showMenuAction()));
}

void tst_AccessibleWidgets::buttonStates()
{
    FancyLineEdit edit;
    edit.setButtonVisible(FancyLineEdit::Right, true);
    edit.show();
    QAccessibleInterface *left = interfaceOf(buttonOf(&edit, FancyLineEdit::Left));
    QAccessibleInterface *right = interfaceOf(buttonOf(&edit, FancyLineEdit::Right));
    QVERIFY(left->state().invisible);
    QVERIFY(!right->state().invisible);
    edit.setAutoHideButton(FancyLineEdit::Right, true); // the edit is empty
    QVERIFY(right->state().invisible);
    edit.setText(QStringLiteral("a"));
    QTRY_VERIFY(!right->state().invisible);
    edit.setEnabled(false);
    QVERIFY(right->state().disabled);
    QVERIFY(right->actionInterface()->actionNames().isEmpty());
}

void tst_AccessibleWidgets::buttonPress()
{
    FancyLineEdit edit;
    const QSignalSpy left(&edit, SIGNAL(leftButtonClicked()));
    const QSignalSpy right(&edit, SIGNAL(rightButtonClicked()));
    QAccessibleInterface *button = interfaceOf(buttonOf(&edit, FancyLineEdit::Right));
    button->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    QTRY_COMPARE(right.count(), 1);
    QCOMPARE(left.count(), 0);
    edit.setButtonFocusPolicy(FancyLineEdit::Right, Qt::TabFocus);
    QVERIFY(button->actionInterface()->actionNames().contains(
        QAccessibleActionInterface::setFocusAction()));
    edit.setEnabled(false);
    button->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    QCoreApplication::processEvents();
    QCOMPARE(right.count(), 1);
}

//! Who asks does not wait for the menu to close.
void tst_AccessibleWidgets::buttonOpensMenu()
{
    FancyLineEdit edit;
    edit.show();
    QMenu menu;
    menu.addAction(QStringLiteral("Only"));
    edit.setButtonMenu(FancyLineEdit::Left, &menu);
    const QSignalSpy shown(&menu, &QMenu::aboutToShow);
    interfaceOf(buttonOf(&edit, FancyLineEdit::Left))
        ->actionInterface()
        ->doAction(QAccessibleActionInterface::showMenuAction());
    QCOMPARE(shown.count(), 0);
    connect(&menu, &QMenu::aboutToShow, &menu,
            [&] { QTimer::singleShot(0, &menu, [&] { menu.close(); }); });
    QTRY_COMPARE(shown.count(), 1);
    QTRY_VERIFY(!menu.isVisible());
}

void tst_AccessibleWidgets::buttonAlone()
{
    IconButton button;
    button.setToolTip(QStringLiteral("Up"));
    QCOMPARE(interfaceOf(&button)->role(), QAccessible::Button);
    QCOMPARE(nameOf(&button), QStringLiteral("Up"));
}

void tst_AccessibleWidgets::filterField()
{
    FilterLineEdit edit;
    QCOMPARE(interfaceOf(&edit)->role(), QAccessible::EditableText);
    QCOMPARE(nameOf(&edit), FilterLineEdit::tr("Find"));
    QCOMPARE(nameOf(buttonOf(&edit, FancyLineEdit::Right)), FilterLineEdit::tr("Clear"));
    edit.setText(QStringLiteral("abc"));
    QCOMPARE(interfaceOf(&edit)->text(QAccessible::Value), QStringLiteral("abc"));
    interfaceOf(buttonOf(&edit, FancyLineEdit::Right))
        ->actionInterface()
        ->doAction(QAccessibleActionInterface::pressAction());
    QTRY_COMPARE(edit.text(), QString());
}

// The busy indicator

void tst_AccessibleWidgets::indicatorStates()
{
    QProgressIndicator indicator;
    indicator.show();
    QAccessibleInterface *ring = interfaceOf(&indicator);
    QCOMPARE(ring->role(), QAccessible::Animation);
    QVERIFY(!ring->state().busy);
    QVERIFY(ring->state().invisible);
    indicator.startAnimation();
    QVERIFY(ring->state().busy);
    QVERIFY(ring->state().animated);
    QVERIFY(!ring->state().invisible);
    indicator.stopAnimation();
    QVERIFY(!ring->state().busy);
    indicator.setDisplayedWhenStopped(true);
    QVERIFY(!ring->state().invisible);
    indicator.hide();
    QVERIFY(ring->state().invisible);
}

void tst_AccessibleWidgets::indicatorNames()
{
    class Derived : public QProgressIndicator
    {
    } indicator;
    QCOMPARE(nameOf(&indicator), QProgressIndicator::tr("Busy"));
    indicator.setAccessibleName(QStringLiteral("Loading"));
    QCOMPARE(nameOf(&indicator), QStringLiteral("Loading"));
    QCOMPARE(interfaceOf(&indicator)->role(), QAccessible::Animation);
}

void tst_AccessibleWidgets::indicatorTells()
{
    QProgressIndicator indicator;
    const QString told = QStringLiteral("state role 36 busy");
    indicator.startAnimation();
    QCOMPARE(m_reader->heard(), QStringList(told));
    indicator.startAnimation(); // as before
    QCOMPARE(m_reader->heard(), QStringList());
    indicator.stopAnimation();
    QCOMPARE(m_reader->heard(), QStringList(told));
    indicator.stopAnimation();
    QCOMPARE(m_reader->heard(), QStringList());
    ScreenReader::setListening(false);
    indicator.startAnimation();
    QCOMPARE(m_reader->heard(), QStringList());
}

// The panel

void tst_AccessibleWidgets::panel()
{
    ItemViewFindToolBar panel;
    QCOMPARE(interfaceOf(&panel)->role(), QAccessible::ToolBar);
    QCOMPARE(nameOf(&panel), AbstractFindToolBar::tr("Search panel"));
    auto *ring = panel.findChild<QProgressIndicator *>();
    QCOMPARE(nameOf(ring), AbstractFindToolBar::tr("Search is running"));
    QVERIFY(!interfaceOf(ring)->state().busy);
    panel.setAccessibleName(QStringLiteral("Orders"));
    QEvent change(QEvent::LanguageChange);
    QCoreApplication::sendEvent(&panel, &change);
    QCOMPARE(nameOf(&panel), QStringLiteral("Orders"));

    const auto labels = panel.findChildren<QLabel *>();
    panel.openFind();
    m_reader->heard();
    panel.findNext(); // there is nothing to find in
    const auto isTold = [&](QLabel *label) {
        return nameOf(label) == AbstractFindToolBar::tr("Not found");
    };
    QVERIFY(std::any_of(labels.begin(), labels.end(), isTold));
    QVERIFY(m_reader->heard().contains(QStringLiteral("name role 29")));
}

void tst_AccessibleWidgets::panelActions()
{
    ItemViewFindToolBar panel;
    panel.setCaseSwitchVisible(true);
    const QList<QPair<const char *, const char *>> names {
        {"findPrevButton", "Find previous"}, {"findNextButton", "Find next"},
        {"filterButton", "Filter"},          {"closeButton", "Done"},
        {"caseButton", "Match case"},
    };
    for (const auto &[object, name] : names) {
        auto *button = panel.findChild<QToolButton *>(QLatin1String(object));
        QVERIFY(button);
        QCOMPARE(nameOf(button), AbstractFindToolBar::tr(name));
        QVERIFY(interfaceOf(button)->actionInterface());
    }
    auto *caseButton = panel.findChild<QToolButton *>(QStringLiteral("caseButton"));
    QVERIFY(interfaceOf(caseButton)->state().checkable);
    QVERIFY(!interfaceOf(caseButton)->state().checked);
    panel.setCaseSensitivity(Qt::CaseSensitive);
    QVERIFY(interfaceOf(caseButton)->state().checked);
}

void tst_AccessibleWidgets::panelField()
{
    ItemViewFindToolBar panel;
    auto *field = panel.findChild<FilterLineEdit *>();
    QCOMPARE(nameOf(field), AbstractFindToolBar::tr("Find"));
    QCOMPARE(nameOf(buttonOf(field, FancyLineEdit::Right)), FilterLineEdit::tr("Clear"));
    QVERIFY(interfaceOf(buttonOf(field, FancyLineEdit::Left))->state().invisible);
}

QTEST_MAIN(tst_AccessibleWidgets)

#include "tst_accessiblewidgets.moc"
