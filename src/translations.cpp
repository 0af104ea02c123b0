// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "translations.h"

#include <QCoreApplication>
#include <QPointer>
#include <QTranslator>

//! Some texts are Russian in the source, so English is a translation like any other.
static bool load(QTranslator *translator, const QLocale &locale)
{
    const QString folder = QStringLiteral(":/translations");
    const QString name = QStringLiteral("vantix");
    const QString separator = QStringLiteral("_");
    return translator->load(locale, name, separator, folder)
        || translator->load(QLocale(QLocale::English), name, separator, folder);
}

bool vantixInstallTranslations(const QLocale &locale)
{
    Q_INIT_RESOURCE(vantix);                // brings all resources, from a static library too
    static QPointer<QTranslator> installed; // gone with its application
    QCoreApplication *application = QCoreApplication::instance();
    if (!application)
        return false;
    if (installed)
        return load(installed, locale); // tells the windows, and keeps its rank
    auto *translator = new QTranslator(application);
    if (load(translator, locale) && QCoreApplication::installTranslator(translator)) {
        installed = translator;
        return true;
    }
    delete translator;
    return false;
}
