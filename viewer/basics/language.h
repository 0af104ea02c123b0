// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef LANGUAGE_H
#define LANGUAGE_H

#include <QLocale>

//! The language of the program's texts.
namespace Language {

/*!
 * The first of the languages that the user of \a locale wants which the program has texts in:
 * "en", which they are written in, or one that it was built with. "en" if there is none.
 */
QString of(const QLocale &locale);

/*!
 * Has windows that are made from now on speak it: their own texts, those of the library
 * and, where they are installed, Qt's. Called once, with an application, which the translators
 * belong to.
 */
void install(const QLocale &locale = QLocale());

} // namespace Language

#endif // LANGUAGE_H
