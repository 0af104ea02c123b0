// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef SHAREDSYNTAX_H
#define SHAREDSYNTAX_H

#include <QStringView>

/*!
 * Whether a valid regular \a expression finds the same in visible ASCII characters, blanks and
 * tabs whoever of QRegularExpression and RE2 looks for it.
 *
 * It has characters, sets, groups that take nothing out or number what they have, alternatives,
 * how often something is there, beginnings and ends of text and words. What looks around or back,
 * does not give back, or sets options is left to QRegularExpression, and what the two read
 * differently.
 */
bool hasSharedSyntax(QStringView expression);

#endif // SHAREDSYNTAX_H
