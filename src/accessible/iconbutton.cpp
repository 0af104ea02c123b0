// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "fancylineedit.h"

#include "accessible/factory_p.h"
#include "accessible/install_p.h"

#include <QAccessibleWidget>
#include <QMenu>

namespace Accessible {

namespace {

//! A button that has a picture only: its tool tip says what it does.
class IconButtonInterface : public QAccessibleWidget
{
public:
    explicit IconButtonInterface(IconButton *button)
        : QAccessibleWidget(button, QAccessible::Button)
    {
    }

    QAccessible::Role role() const override;
    QAccessible::State state() const override;
    QString text(QAccessible::Text text) const override;
    QStringList actionNames() const override;
    void doAction(const QString &name) override;

private:
    IconButton *button() const { return qobject_cast<IconButton *>(object()); }
    QMenu *menu() const;
};

//! The edit knows which of its buttons opens a menu.
QMenu *IconButtonInterface::menu() const
{
    const QWidget *parent = widget() ? widget()->parentWidget() : nullptr;
    const auto *edit = qobject_cast<const FancyLineEdit *>(parent);
    if (!edit)
        return nullptr;
    const qsizetype side =
        edit->findChildren<IconButton *>(Qt::FindDirectChildrenOnly).indexOf(button());
    const bool isOfEdit = side == FancyLineEdit::Left || side == FancyLineEdit::Right;
    return isOfEdit ? edit->buttonMenu(FancyLineEdit::Side(side)) : nullptr;
}

QAccessible::Role IconButtonInterface::role() const
{
    return menu() ? QAccessible::ButtonMenu : QAccessible::Button;
}

QAccessible::State IconButtonInterface::state() const
{
    QAccessible::State state = QAccessibleWidget::state();
    const IconButton *icon = button();
    if (!icon)
        return state;
    state.hasPopup = menu() != nullptr;
    if (icon->hasAutoHide() && icon->iconOpacity() <= 0)
        state.invisible = true;
    return state;
}

QString IconButtonInterface::text(QAccessible::Text text) const
{
    QString given = QAccessibleWidget::text(text);
    if (!widget() || (text != QAccessible::Name && text != QAccessible::Description))
        return given;
    if (text == QAccessible::Description) // the tool tip, which is not to be read twice
        return given == this->text(QAccessible::Name) ? QString() : given;
    if (!given.isEmpty())
        return given;
    const QString tip = widget()->toolTip();
    const QMenu *opened = menu();
    return tip.isEmpty() && opened ? opened->title().remove(u'&') : tip;
}

QStringList IconButtonInterface::actionNames() const
{
    if (!widget() || !widget()->isEnabled())
        return {};
    return QStringList(menu() ? showMenuAction() : pressAction())
        + QAccessibleWidget::actionNames();
}

void IconButtonInterface::doAction(const QString &name)
{
    if (!actionNames().contains(name))
        return;
    // Later: a menu does not return before it is closed, and who asked waits for the answer.
    if (name == pressAction() || name == showMenuAction())
        QMetaObject::invokeMethod(button(), "click", Qt::QueuedConnection);
    else
        QAccessibleWidget::doAction(name);
}

} // namespace

void installIconButtonFactory()
{
    static const Factory factory(made<IconButton, IconButtonInterface>);
}

} // namespace Accessible
