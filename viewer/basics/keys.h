// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef KEYS_H
#define KEYS_H

class QAction;
class QKeySequence;

//! Takes \a key, which means something else here, from those of \a action. The usual keys
//! differ from desktop to desktop, and a key that means two things does nothing.
void leaveKey(QAction *action, const QKeySequence &key);

#endif // KEYS_H
