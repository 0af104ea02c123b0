// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef FANCYLINEEDIT_P_H
#define FANCYLINEEDIT_P_H

#include "fancylineedit.h"

#include <QMenu>
#include <QObject>
#include <QPixmap>
#include <QPointer>

//! What a FancyLineEdit keeps to itself, and the watch on its buttons' focus. Arrays are
//! indexed by FancyLineEdit::Side.
class FancyLineEditPrivate : public QObject
{
    Q_OBJECT

public:
    //! Makes the hidden buttons of \a lineEdit, which becomes the parent.
    explicit FancyLineEditPrivate(FancyLineEdit *lineEdit);

    bool eventFilter(QObject *object, QEvent *event) override;

    FancyLineEdit *m_lineEdit;          //!< the owner
    QPixmap m_pixmap[2];                //!< never written
    QPointer<QMenu> m_menu[2];          //!< not owned; null once destroyed
    IconButton *m_iconbutton[2];        //!< children of the edit
    QString m_oldText;                  //!< as FancyLineEdit::checkButtons() last saw it
    bool m_iconEnabled[2] = {};         //!< the button is shown
    bool m_menuTabFocusTrigger[2] = {}; //!< the focus opens the menu
};

#endif // FANCYLINEEDIT_P_H
