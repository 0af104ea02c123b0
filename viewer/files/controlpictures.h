// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef CONTROLPICTURES_H
#define CONTROLPICTURES_H

#include <QString>

//! \a text with a visible stand-in for each character that would be invisible or begin a
//! new line: the Unicode picture of a control character but the tab, and of a new line.
QString withPictures(QString text);

#endif // CONTROLPICTURES_H
