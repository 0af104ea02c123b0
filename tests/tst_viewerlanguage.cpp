// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "basics/language.h"
#include "feed/feedwindow.h"
#include "files/logformat.h"
#include "overview/histogramcolumns.h"
#include "search/findpanel.h"
#include "windows/filewindow.h"
#include "windows/framestatistics.h"
#include "windows/tabwindows.h"
#include "windows/viewertable.h"

#include <QFile>
#include <QLibraryInfo>
#include <QMenuBar>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>
#include <QToolButton>
#include <QTranslator>
#include <QXmlStreamReader>

#include <memory>

class tst_ViewerLanguage : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void choosesLanguage_data();
    void choosesLanguage();
    void windowsSpeakIt_data();
    void windowsSpeakIt();
    void staysEnglishByItself();
    void columnsSpeakIt();
    void qtSpeaksIt();
    void programSpeaksIt_data();
    void programSpeaksIt();
    void mnemonicsAreUnique_data();
    void mnemonicsAreUnique();
    void mnemonicOfStoppedIsUnique_data();
    void mnemonicOfStoppedIsUnique();
    void translationsKeepTheForm_data();
    void translationsKeepTheForm();

private:
    std::unique_ptr<ViewerWindow> fileWindow();

    FrameStatistics m_statistics;
    std::unique_ptr<QTemporaryDir> m_directory;
};

namespace {

QLocale localeOf(const char *name)
{
    return QLocale(QString::fromLatin1(name));
}

//! The titles of the menus, from left to right.
QStringList menusOf(const ViewerWindow &window)
{
    QStringList titles;
    const QList<QAction *> actions = window.menuBar()->actions();
    for (const QAction *action : actions)
        titles.append(action->text());
    return titles;
}

//! The keys that choose something in \a widget, a menu or a menu bar.
QStringList mnemonicsOf(const QWidget &widget)
{
    QStringList keys;
    const QList<QAction *> actions = widget.actions();
    for (const QAction *action : actions) {
        const QKeySequence key = QKeySequence::mnemonic(action->text());
        if (!key.isEmpty())
            keys.append(key.toString(QKeySequence::PortableText));
    }
    return keys;
}

//! Those that are there more than once, in any menu of \a window.
QStringList ambiguousKeys(const ViewerWindow &window)
{
    QList<const QWidget *> widgets {window.menuBar()};
    const auto menus = window.findChildren<QMenu *>();
    for (QMenu *menu : menus) {
        Q_EMIT menu->aboutToShow(); // fills it
        widgets.append(menu);
    }
    QStringList ambiguous;
    for (const QWidget *widget : widgets) {
        const QStringList keys = mnemonicsOf(*widget);
        for (const QString &key : keys) {
            if (keys.count(key) > 1)
                ambiguous.append(QStringLiteral("%1: %2").arg(
                    key, widget == window.menuBar() ? QString() : widget->windowTitle()));
        }
    }
    return ambiguous;
}

//! The places in \a text where something is filled in, in order of their numbers.
QStringList placesIn(const QString &text)
{
    static const QRegularExpression place(QStringLiteral("%L?\\d"));
    QStringList places;
    for (auto it = place.globalMatch(text); it.hasNext();)
        places.append(it.next().captured());
    places.sort();
    return places;
}

//! What stands at the end of \a text beside words and their abbreviations.
QString endOf(const QString &text)
{
    if (!text.contains(u' ') && text.endsWith(u'.'))
        return {};
    static const QRegularExpression end(QStringLiteral("[….:)]$"));
    return end.match(text).captured();
}

//! Adds a row for each text in the file \a name. Returns whether it can be read to its end.
bool addTexts(const QString &name)
{
    QFile file(QStringLiteral(TRANSLATION_FOLDER "/%1.ts").arg(name));
    if (!file.open(QIODevice::ReadOnly))
        return false;
    QXmlStreamReader reader(&file);
    QString context;
    QString source;
    while (!reader.atEnd()) {
        if (reader.readNext() != QXmlStreamReader::StartElement)
            continue;
        if (reader.name() == u"name")
            context = reader.readElementText();
        else if (reader.name() == u"source")
            source = reader.readElementText();
        else if (reader.name() == u"translation")
            QTest::addRow("%s, %s: %s", qPrintable(name), qPrintable(context), qPrintable(source))
                << source << reader.readElementText();
    }
    return !reader.hasError();
}

} // namespace

void tst_ViewerLanguage::init()
{
    m_directory = std::make_unique<QTemporaryDir>();
    QVERIFY(m_directory->isValid());
}

//! Takes away what Language::install() has installed.
void tst_ViewerLanguage::cleanup()
{
    qDeleteAll(qApp->findChildren<QTranslator *>(Qt::FindDirectChildrenOnly));
}

std::unique_ptr<ViewerWindow> tst_ViewerLanguage::fileWindow()
{
    QFile file(m_directory->filePath("file.csv"));
    if (file.open(QIODevice::WriteOnly))
        file.write("a,b\n1,2\n3,4\n");
    file.close();
    return std::make_unique<FileWindow>(file.fileName(), FormatRequest(), &m_statistics);
}

void tst_ViewerLanguage::choosesLanguage_data()
{
    QTest::addColumn<QString>("language");
    for (const char *name : {"C", "en_US", "en_GB", "fr_FR", "ja_JP", "uk_UA"})
        QTest::newRow(name) << "en";
    for (const char *name : {"de", "de_DE", "de_AT", "de_CH"})
        QTest::newRow(name) << "de";
    for (const char *name : {"ru", "ru_RU", "ru_UA"})
        QTest::newRow(name) << "ru";
}

void tst_ViewerLanguage::choosesLanguage()
{
    QTEST(Language::of(localeOf(QTest::currentDataTag())), "language");
}

void tst_ViewerLanguage::windowsSpeakIt_data()
{
    QTest::addColumn<QStringList>("menus");
    QTest::addColumn<QString>("panel");
    const QStringList english {"&File", "&Edit", "&View", "&Marks", "&Help"};
    QTest::newRow("fr_FR") << english << "Close search panel";
    QTest::newRow("en_GB") << english << "Close search panel";
    QTest::newRow("de_DE") << QStringList {"&Datei", "&Bearbeiten", "&Ansicht", "&Markierungen",
                                           "&Hilfe"}
                           << "Suchleiste schließen";
    QTest::newRow("ru_RU") << QStringList {"&Файл", "&Правка", "&Вид", "&Метки", "&Справка"}
                           << "Закрыть панель поиска";
}

void tst_ViewerLanguage::windowsSpeakIt()
{
    Language::install(localeOf(QTest::currentDataTag()));
    const std::unique_ptr<ViewerWindow> window = fileWindow();
    QTEST(menusOf(*window), "menus");
    const auto *close = window->findChild<QToolButton *>(QStringLiteral("closeButton"));
    QTEST(close->toolTip(), "panel");
}

//! A window alone installs nothing: what is tested elsewhere speaks English everywhere.
void tst_ViewerLanguage::staysEnglishByItself()
{
    const std::unique_ptr<ViewerWindow> window = fileWindow();
    QCOMPARE(menusOf(*window).first(), "&File");
    QVERIFY(qApp->findChildren<QTranslator *>().isEmpty());
}

void tst_ViewerLanguage::columnsSpeakIt()
{
    Language::install(QLocale(QLocale::German));
    QCOMPARE(LogFormat::ofKind(LogFormat::Kind::Syslog, {}).names,
             QStringList({"Zeit", "Host", "Programm", "Prozess", "Meldung"}));
    QCOMPARE(LogFormat::ofKind(LogFormat::Kind::JsonLines, {}).names, QStringList("Weiteres"));
    QCOMPARE(HistogramColumns::tr("1 warning"), "1 Warnung");
}

//! Dialogs of Qt do so where its translations are installed.
void tst_ViewerLanguage::qtSpeaksIt()
{
    const QString folder = QLibraryInfo::path(QLibraryInfo::TranslationsPath);
    const bool isInstalled = QFile::exists(folder + QStringLiteral("/qtbase_de.qm"));
    const auto cancel = [] { return QCoreApplication::translate("QPlatformTheme", "Cancel"); };
    Language::install(QLocale(QLocale::German));
    QCOMPARE(cancel(), isInstalled ? "Abbrechen" : "Cancel");
    cleanup();
    Language::install(QLocale(QLocale::French)); // which the windows do not speak
    QCOMPARE(cancel(), "Cancel");
}

void tst_ViewerLanguage::programSpeaksIt_data()
{
    QTest::addColumn<QString>("languages");
    QTest::addColumn<QString>("message");
    QTest::newRow("German") << "de"
                            << "Das ist ein Ordner.";
    QTest::newRow("Russian") << "ru_RU"
                             << "Это папка.";
    QTest::newRow("none that it speaks") << "fr"
                                         << "It is a directory.";
    QTest::newRow("the second") << "fr:de"
                                << "Das ist ein Ordner.";
    QTest::newRow("English before German") << "en_GB:de"
                                           << "It is a directory.";
}

//! What a window has to say reaches the terminal, too.
void tst_ViewerLanguage::programSpeaksIt()
{
    QFETCH(QString, languages);
    QFETCH(QString, message);
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("LC_ALL", languages.section(':', 0, 0) + ".UTF-8");
    environment.insert("LANGUAGE", languages);
    process.setProcessEnvironment(environment);
    process.start(VIEWER_PROGRAM, {"--seconds", "0", m_directory->path()});
    QVERIFY(process.waitForFinished(120'000));
    const QString said = QString::fromUtf8(process.readAllStandardError());
    QVERIFY2(said.contains(message), qPrintable(said));
}

void tst_ViewerLanguage::mnemonicsAreUnique_data()
{
    QTest::addColumn<QString>("language");
    QTest::addColumn<bool>("isFeed");
    for (const char *language : {"en", "de", "ru"}) {
        QTest::addRow("%s, file", language) << language << false;
        QTest::addRow("%s, feed", language) << language << true;
    }
}

void tst_ViewerLanguage::mnemonicsAreUnique()
{
    QFETCH(QString, language);
    QFETCH(bool, isFeed);
    Language::install(QLocale(language));
    TabWindows windows; // whose menu pages get
    std::unique_ptr<ViewerWindow> window = fileWindow();
    if (isFeed)
        window = std::make_unique<FeedWindow>(0, FeedModel::NewRows::AtTop, &m_statistics);
    windows.add(window.get());
    QVERIFY(QTest::qWaitFor([&] { return window->rows() > 0; }));
    ViewerTable *table = window->table();
    table->setCurrentIndex(table->model()->index(0, 1)); // for the menu of columns
    QCOMPARE(ambiguousKeys(*window), QStringList());
}

void tst_ViewerLanguage::mnemonicOfStoppedIsUnique_data()
{
    QTest::addColumn<QString>("language");
    for (const char *language : {"en", "de", "ru"})
        QTest::newRow(language) << language;
}

//! The action that stops is called otherwise afterwards.
void tst_ViewerLanguage::mnemonicOfStoppedIsUnique()
{
    QFETCH(QString, language);
    Language::install(QLocale(language));
    const std::unique_ptr<ViewerWindow> window = fileWindow();
    const QMenu *menu = window->menuBar()->actions().constFirst()->menu();
    QAction *stop = menu->actions().at(1);
    QCOMPARE(stop->text(), FileWindow::tr("&Stop Indexing"));
    stop->setText(FileWindow::tr("Resume &Indexing"));
    QCOMPARE(ambiguousKeys(*window), QStringList());
}

void tst_ViewerLanguage::translationsKeepTheForm_data()
{
    QTest::addColumn<QString>("source");
    QTest::addColumn<QString>("translation");
    for (const char *name : {"viewer_de", "viewer_ru", "vantix_de"})
        QVERIFY2(addTexts(QString::fromLatin1(name)), name);
}

void tst_ViewerLanguage::translationsKeepTheForm()
{
    QFETCH(QString, source);
    QFETCH(QString, translation);
    QVERIFY(!translation.isEmpty());
    QCOMPARE(placesIn(translation), placesIn(source));
    QCOMPARE(translation.count(u'&'), source.count(u'&'));
    QCOMPARE(translation.count(u'\n'), source.count(u'\n'));
    QCOMPARE(endOf(translation), endOf(source));
    QCOMPARE(translation.trimmed(), translation);
}

QTEST_MAIN(tst_ViewerLanguage)

#include "tst_viewerlanguage.moc"
