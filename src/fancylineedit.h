// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef FANCYLINEEDIT_H
#define FANCYLINEEDIT_H

#include "vantixglobal.h"

#include <QAbstractButton>
#include <QLineEdit>
#include <QPixmap>

class FancyLineEditPrivate;
class QMenu;

//! A picture that can be clicked: no frame, no hovered or pressed look. It takes no
//! focus and shows an arrow as the cursor. Part of a FancyLineEdit. Screen readers read its
//! accessible name, else its tool tip, else the title of the menu that the edit opens from it.
//! \since 0.2
class VANTIX_EXPORT IconButton : public QAbstractButton
{
    Q_OBJECT
    Q_PROPERTY(float iconOpacity READ iconOpacity WRITE setIconOpacity)
    Q_PROPERTY(bool autoHide READ hasAutoHide WRITE setAutoHide)
    Q_PROPERTY(QPixmap pixmap READ pixmap WRITE setPixmap)

public:
    //! A button without a picture; \a parent as in QWidget.
    explicit IconButton(QWidget *parent = nullptr);

    //! Starts to fade in (\a visible) or out from the present opacity. Takes 160 ms.
    //! Shows only while hasAutoHide().
    void animateShow(bool visible);

    //! Shows \a pixmap, centred, in its own size.
    void setPixmap(const QPixmap &pixmap);
    //! The picture; empty at first.
    QPixmap pixmap() const;

    //! How much of the picture is seen while hasAutoHide(): 0 nothing, 1 (at first) all.
    float iconOpacity() const;
    //! Sets iconOpacity(). Beyond 0 and 1 counts as the nearer of the two.
    void setIconOpacity(float value);

    //! Makes the picture follow iconOpacity(), from the next repaint on.
    void setAutoHide(bool hide);
    //! Whether the picture follows iconOpacity(); false at first.
    bool hasAutoHide() const;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QPixmap m_pixmap;           //!< what is drawn
    float m_iconOpacity = 1.0F; //!< read only while m_autoHide
    bool m_autoHide = false;    //!< m_iconOpacity counts
};

/*!
 * \brief A line edit with a small button inside its frame at either end.
 *
 * Each end may have a button with a picture, which may open a menu or fade in only
 * while the edit holds text. In a right-to-left layout the sides are mirrored: the
 * button of Left is then at the right end.
 *
 * A picture takes as many pixels of text as it is wide, and 8 more. The room is
 * taken anew by setButtonPixmap() and setButtonVisible(), not by a change of the
 * layout direction. The buttons are put in place by setButtonPixmap() and when the
 * edit is resized, so an edit that is shown already needs setButtonVisible() first and
 * setButtonPixmap() second.
 *
 * GUI thread only.
 *
 * \since 0.2
 */
class VANTIX_EXPORT FancyLineEdit : public QLineEdit
{
    Q_OBJECT

public:
    //! The ends of the edit in a left-to-right layout.
    enum Side {
        Left = 0,
        Right = 1
    };
    Q_ENUM(Side)

    //! An empty edit that shows no button; \a parent as in QWidget.
    explicit FancyLineEdit(QWidget *parent = nullptr);
    ~FancyLineEdit() override;

    //! Always an empty pixmap; the picture that is shown belongs to the button.
    QPixmap buttonPixmap(Side side) const;
    //! Shows \a pixmap in the button of \a side.
    void setButtonPixmap(Side side, const QPixmap &pixmap);

    //! The menu of a button; null if there is none, or if it was destroyed.
    QMenu *buttonMenu(Side side) const;
    //! Makes the button open \a menu instead of sending click signals. Null: signals
    //! again. The menu is not owned; once destroyed it no longer counts. A button that
    //! hides itself becomes opaque until the text next appears or disappears.
    void setButtonMenu(Side side, QMenu *menu);

    //! Whether a button is shown; false at first.
    bool isButtonVisible(Side side) const;
    //! Shows or hides a button.
    void setButtonVisible(Side side, bool visible);

    //! Sets the tool tip of a button.
    void setButtonToolTip(Side side, const QString &tip);
    //! Sets the focus policy of a button; Qt::NoFocus at first.
    void setButtonFocusPolicy(Side side, Qt::FocusPolicy policy);

    //! Whether a button opens its menu when it gets the focus; false at first.
    bool hasMenuTabFocusTrigger(Side side) const;
    //! Lets the button take part in the tab order and open its menu when it gets the
    //! focus, which then returns to the edit.
    void setMenuTabFocusTrigger(Side side, bool trigger);

    //! Whether a button fades out while the edit is empty; false at first.
    bool hasAutoHideButton(Side side) const;
    //! Makes a button fade in when text appears and out when it is gone.
    void setAutoHideButton(Side side, bool hide);

Q_SIGNALS:
    //! A button without a menu was clicked; sent before the two below.
    void buttonClicked(FancyLineEdit::Side side);
    //! The button of Left, without a menu, was clicked.
    void leftButtonClicked();
    //! The button of Right, without a menu, was clicked.
    void rightButtonClicked();

protected:
    //! Places the buttons.
    void resizeEvent(QResizeEvent *event) override;

private Q_SLOTS:
    void checkButtons(const QString &text);
    void iconClicked();

private:
    void updateMargins();
    void updateButtonPositions();

    VANTIX_HIDES_FIELD_BEGIN
    FancyLineEditPrivate *d_ptr; //!< private data, a child of the edit
    VANTIX_HIDES_FIELD_END
};

#endif // FANCYLINEEDIT_H
