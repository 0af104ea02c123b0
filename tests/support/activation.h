// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef ACTIVATION_H
#define ACTIVATION_H

#include <QTest>
#include <QWidget>

//! Gives a window that is shown the keyboard. Lets events through.
inline void activate(QWidget *window)
{
    window->activateWindow();
    if (!QTest::qWaitForWindowActive(window))
        qWarning("a window did not become active");
}

#endif // ACTIVATION_H
