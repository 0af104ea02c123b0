// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "inheritedlook_p.h"

#include <QEvent>
#include <QFont>
#include <QPalette>
#include <QWidget>

InheritedLook::InheritedLook(QWidget *widget)
    : QObject(widget)
    , m_widget(widget)
{
    widget->installEventFilter(this);
    widget->parentWidget()->installEventFilter(this);
    inherit();
}

bool InheritedLook::eventFilter(QObject *object, QEvent *event)
{
    switch (event->type()) {
    case QEvent::PaletteChange:
    case QEvent::FontChange:
    case QEvent::StyleChange:
    case QEvent::ApplicationPaletteChange:
    case QEvent::ApplicationFontChange:
        if (!m_isInheriting)
            inherit();
        break;
    case QEvent::Show: // Qt does not tell of every style sheet
        Q_EMIT changed();
        break;
    default:
        break;
    }
    return QObject::eventFilter(object, event);
}

void InheritedLook::inherit()
{
    m_isInheriting = true;
    m_widget->setPalette(m_widget->palette()); // fills in what is the application's
    if (!m_widget->styleSheet().isEmpty())
        m_widget->setStyleSheet(m_widget->styleSheet()); // it keeps a colour, too

    // Fonts come from the ancestors to those without a style sheet only.
    const bool hasSheet = m_widget->testAttribute(Qt::WA_StyleSheet);
    m_widget->setAttribute(Qt::WA_StyleSheet, false);
    m_widget->setFont(m_widget->testAttribute(Qt::WA_SetFont) ? m_widget->font() : QFont());
    m_widget->setAttribute(Qt::WA_StyleSheet, hasSheet);
    m_isInheriting = false;
    Q_EMIT changed();
}
