// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "basics/keys.h"

#include <QAction>
#include <QKeySequence>

void leaveKey(QAction *action, const QKeySequence &key)
{
    QList<QKeySequence> keys = action->shortcuts();
    if (keys.removeAll(key) > 0)
        action->setShortcuts(keys);
}
