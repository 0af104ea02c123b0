// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef TRANSLATIONS_H
#define TRANSLATIONS_H

#include "vantixglobal.h"

#include <QLocale>

/*!
 * \brief Has the library's texts shown in the language of \a locale.
 *
 * That is the first of QLocale::uiLanguages() that there is a translation for, or else
 * English. Without \a locale it is the program's default locale: that of the system, unless
 * QLocale::setDefault() was called.
 *
 * Called again it replaces what it has installed before; windows that are open get
 * QEvent::LanguageChange and show other texts. A translator of the program's own that was
 * installed later goes before it. The translator belongs to the application.
 *
 * Returns whether there is a translation: false without a QCoreApplication, and if the
 * library was built without its translations. GUI thread only.
 *
 * \code
 * QApplication app(argc, argv);
 * vantixInstallTranslations();
 * \endcode
 *
 * \since 0.2
 */
VANTIX_EXPORT bool vantixInstallTranslations(const QLocale &locale = QLocale());

#endif // TRANSLATIONS_H
