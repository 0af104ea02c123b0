// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef EXPRESSIONLITERALS_H
#define EXPRESSIONLITERALS_H

#include <QStringList>

/*!
 * Texts of visible ASCII characters and blanks, at least one of which is in every match of a
 * regular \a expression as QRegularExpression has it, in whatever case. Eight at most, and none
 * if there are none or anything in the expression is not understood.
 */
QStringList literalsOf(const QString &expression);

#endif // EXPRESSIONLITERALS_H
