// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "fancylineedit.h"

#include "accessible/install_p.h"
#include "fancylineedit_p.h"

#include <QCursor>
#include <QEvent>
#include <QPainter>
#include <QPropertyAnimation>
#include <QStyle>

#include <algorithm>

namespace {

constexpr FancyLineEdit::Side bothSides[] = {FancyLineEdit::Left, FancyLineEdit::Right};

//! Logical pixels, so that a picture for a dense screen takes no more room.
QSize shownSize(const QPixmap &pixmap)
{
    return pixmap.deviceIndependentSize().toSize();
}

} // namespace

IconButton::IconButton(QWidget *parent)
    : QAbstractButton(parent)
{
    Accessible::installIconButtonFactory();
    setCursor(Qt::ArrowCursor); // not the edit's I-beam
    setFocusPolicy(Qt::NoFocus);
}

void IconButton::animateShow(bool visible)
{
    auto *animation = new QPropertyAnimation(this, "iconOpacity");
    animation->setDuration(160);
    animation->setEndValue(visible ? 1.0F : 0.0F);
    animation->start(QAbstractAnimation::DeleteWhenStopped);
}

void IconButton::setPixmap(const QPixmap &pixmap)
{
    m_pixmap = pixmap;
    update();
}

QPixmap IconButton::pixmap() const
{
    return m_pixmap;
}

float IconButton::iconOpacity() const
{
    return m_iconOpacity;
}

void IconButton::setIconOpacity(float value)
{
    m_iconOpacity = value;
    update();
}

void IconButton::setAutoHide(bool hide)
{
    m_autoHide = hide;
}

bool IconButton::hasAutoHide() const
{
    return m_autoHide;
}

void IconButton::paintEvent(QPaintEvent *)
{
    QRect target(QPoint(0, 0), shownSize(m_pixmap));
    target.moveTo((width() - 1) / 2 - (target.width() - 1) / 2,
                  (height() - 1) / 2 - (target.height() - 1) / 2);
    QPainter painter(this);
    if (m_autoHide)
        painter.setOpacity(m_iconOpacity);
    painter.setRenderHint(QPainter::SmoothPixmapTransform); // between screens
    painter.drawPixmap(target, m_pixmap);
}

FancyLineEditPrivate::FancyLineEditPrivate(FancyLineEdit *lineEdit)
    : QObject(lineEdit)
    , m_lineEdit(lineEdit)
{
    for (const FancyLineEdit::Side side : bothSides) {
        auto *button = new IconButton(lineEdit);
        button->installEventFilter(this);
        button->hide();
        m_iconbutton[side] = button;
    }
}

bool FancyLineEditPrivate::eventFilter(QObject *object, QEvent *event)
{
    if (event->type() != QEvent::FocusIn)
        return QObject::eventFilter(object, event);
    for (const FancyLineEdit::Side side : bothSides) {
        if (object != m_iconbutton[side] || !m_menuTabFocusTrigger[side] || !m_menu[side])
            continue;
        // Whoever hears of the focus or the menu may destroy the edit, or the menu.
        const QPointer<IconButton> button = m_iconbutton[side];
        const QPointer<QMenu> menu = m_menu[side];
        m_lineEdit->setFocus(Qt::OtherFocusReason);
        if (button && menu)
            menu->exec(button->mapToGlobal(button->rect().center()));
        return true;
    }
    return QObject::eventFilter(object, event);
}

FancyLineEdit::FancyLineEdit(QWidget *parent)
    : QLineEdit(parent)
    , d_ptr(new FancyLineEditPrivate(this))
{
    ensurePolished();
    connect(this, SIGNAL(textChanged(QString)), this, SLOT(checkButtons(QString)));
    for (IconButton *button : d_ptr->m_iconbutton)
        connect(button, SIGNAL(clicked()), this, SLOT(iconClicked()));
}

FancyLineEdit::~FancyLineEdit() = default;

QPixmap FancyLineEdit::buttonPixmap(Side side) const
{
    return d_ptr->m_pixmap[side]; // deliberate: nothing writes it
}

void FancyLineEdit::setButtonPixmap(Side side, const QPixmap &pixmap)
{
    d_ptr->m_iconbutton[side]->setPixmap(pixmap);
    updateMargins();
    updateButtonPositions();
    update();
}

QMenu *FancyLineEdit::buttonMenu(Side side) const
{
    return d_ptr->m_menu[side];
}

void FancyLineEdit::setButtonMenu(Side side, QMenu *menu)
{
    d_ptr->m_menu[side] = menu;
    d_ptr->m_iconbutton[side]->setIconOpacity(1.0F);
}

bool FancyLineEdit::isButtonVisible(Side side) const
{
    return d_ptr->m_iconEnabled[side];
}

void FancyLineEdit::setButtonVisible(Side side, bool visible)
{
    d_ptr->m_iconbutton[side]->setVisible(visible);
    d_ptr->m_iconEnabled[side] = visible;
    updateMargins();
}

void FancyLineEdit::setButtonToolTip(Side side, const QString &tip)
{
    d_ptr->m_iconbutton[side]->setToolTip(tip);
}

void FancyLineEdit::setButtonFocusPolicy(Side side, Qt::FocusPolicy policy)
{
    d_ptr->m_iconbutton[side]->setFocusPolicy(policy);
}

bool FancyLineEdit::hasMenuTabFocusTrigger(Side side) const
{
    return d_ptr->m_menuTabFocusTrigger[side];
}

void FancyLineEdit::setMenuTabFocusTrigger(Side side, bool trigger)
{
    if (d_ptr->m_menuTabFocusTrigger[side] == trigger)
        return;
    d_ptr->m_menuTabFocusTrigger[side] = trigger;
    setButtonFocusPolicy(side, trigger ? Qt::TabFocus : Qt::NoFocus);
}

bool FancyLineEdit::hasAutoHideButton(Side side) const
{
    return d_ptr->m_iconbutton[side]->hasAutoHide();
}

void FancyLineEdit::setAutoHideButton(Side side, bool hide)
{
    IconButton *button = d_ptr->m_iconbutton[side];
    button->setAutoHide(hide);
    button->setIconOpacity(hide && text().isEmpty() ? 0.0F : 1.0F);
}

// Deliberate: the base class is not called.
void FancyLineEdit::resizeEvent(QResizeEvent *)
{
    updateButtonPositions();
}

void FancyLineEdit::checkButtons(const QString &text)
{
    if (!d_ptr->m_oldText.isEmpty() && !text.isEmpty())
        return;
    for (IconButton *button : d_ptr->m_iconbutton) {
        if (button->hasAutoHide())
            button->animateShow(!text.isEmpty());
    }
    d_ptr->m_oldText = text;
}

void FancyLineEdit::iconClicked()
{
    const auto *button = qobject_cast<IconButton *>(sender());
    const auto *found =
        std::find(std::begin(d_ptr->m_iconbutton), std::end(d_ptr->m_iconbutton), button);
    if (found == std::end(d_ptr->m_iconbutton))
        return;
    const Side side = bothSides[found - d_ptr->m_iconbutton];
    if (QMenu *menu = d_ptr->m_menu[side]) {
        menu->exec(QCursor::pos()); // the edit may be gone after this
        return;
    }
    const QPointer<FancyLineEdit> guard = this;
    Q_EMIT buttonClicked(side);
    if (!guard)
        return;
    if (side == Left)
        Q_EMIT leftButtonClicked();
    else
        Q_EMIT rightButtonClicked();
}

void FancyLineEdit::updateMargins()
{
    const Side nearSide = isRightToLeft() ? Right : Left;
    const Side farSide = isRightToLeft() ? Left : Right;
    // Hidden buttons are measured as well; only the visible ones get the room.
    int leftMargin = shownSize(d_ptr->m_iconbutton[nearSide]->pixmap()).width() + 8;
    int rightMargin = shownSize(d_ptr->m_iconbutton[farSide]->pixmap()).width() + 8;
    if (style()->inherits("OxygenStyle")) {
        leftMargin = std::max(leftMargin, 24);
        rightMargin = std::max(rightMargin, 24);
    }
    setTextMargins(d_ptr->m_iconEnabled[nearSide] ? leftMargin : 0, 0,
                   d_ptr->m_iconEnabled[farSide] ? rightMargin : 0, 0);
}

void FancyLineEdit::updateButtonPositions()
{
    const QMargins margins = textMargins();
    for (const Side side : bothSides) {
        const bool isAtLeftEnd = (side == Left) != isRightToLeft();
        const int buttonWidth = (isAtLeftEnd ? margins.left() : margins.right()) + 4;
        const int x = isAtLeftEnd ? 0 : width() - buttonWidth;
        d_ptr->m_iconbutton[side]->setGeometry(x, 0, buttonWidth, height());
    }
}
