// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "basics/language.h"

#include "translations.h"

#include <QCoreApplication>
#include <QFile>
#include <QLibraryInfo>
#include <QTranslator>

// Not to be called in a namespace.
static void useTranslations()
{
#if defined(VIEWER_HAS_TRANSLATIONS)
    Q_INIT_RESOURCE(viewer_translations);
#endif
}

namespace {

const QString s_english = QStringLiteral("en");
const QString s_file = QStringLiteral(":/viewer/translations/viewer_%1.qm");

void installFile(const QString &path)
{
    auto *translator = new QTranslator(QCoreApplication::instance());
    if (!translator->load(path) || !QCoreApplication::installTranslator(translator))
        delete translator;
}

} // namespace

QString Language::of(const QLocale &locale)
{
    useTranslations();
    const QStringList wanted = locale.uiLanguages();
    for (const QString &name : wanted) {
        QString code = QLocale::languageToCode(QLocale(name).language());
        if (code == s_english || QFile::exists(s_file.arg(code)))
            return code;
    }
    return s_english;
}

//! A window whose buttons speak another language than its texts is worse than an English one,
//! so all are of one language. The later go first.
void Language::install(const QLocale &locale)
{
    const QString code = of(locale);
    vantixInstallTranslations(QLocale(code));
    if (code == s_english)
        return;
    const QString folder = QLibraryInfo::path(QLibraryInfo::TranslationsPath);
    installFile(QStringLiteral("%1/qtbase_%2.qm").arg(folder, code));
    installFile(s_file.arg(code));
}
