// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "basics/textfont.h"
#include "feed/feedwindow.h"
#include "scalablefont.h"
#include "windows/detailpane.h"
#include "windows/filewindow.h"
#include "windows/fontmenu.h"
#include "windows/framestatistics.h"
#include "windows/viewertable.h"

#include <QFontDatabase>
#include <QFontDialog>
#include <QPlainTextEdit>
#include <QSettings>
#include <QTemporaryDir>
#include <QTest>

//! The font of texts of files, as a user chooses it.
class tst_TextFont : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void isTheSystemsAtFirst();
    void survivesOtherTexts();
    void isChosenForAllWindows();
    void chosenFontIsZoomed();
    void dialogMayBeCancelled();

private:
    std::unique_ptr<FileWindow> open();
    static QAction *action(const FileWindow &window, int at);

    FrameStatistics m_statistics;
    QTemporaryDir m_directory; //!< the file and the settings
};

void tst_TextFont::initTestCase()
{
    QCoreApplication::setApplicationName(QStringLiteral("textfont"));
    QSettings::setDefaultFormat(QSettings::IniFormat);
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, m_directory.path());
    QFile file(m_directory.filePath("a.log"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("one\ntwo\n");
}

void tst_TextFont::init()
{
    TextFont::reset();
}

std::unique_ptr<FileWindow> tst_TextFont::open()
{
    auto window =
        std::make_unique<FileWindow>(m_directory.filePath("a.log"), FormatRequest(), &m_statistics);
    window->show();
    return window;
}

//! Of the menu: 0 for the system's font, 1 to choose one.
QAction *tst_TextFont::action(const FileWindow &window, int at)
{
    auto *menu = window.findChild<FontMenu *>();
    Q_EMIT menu->aboutToShow();
    return menu->actions().at(at);
}

void tst_TextFont::isTheSystemsAtFirst()
{
    QVERIFY(!TextFont::isChosen());
    QCOMPARE(TextFont::font(), QFontDatabase::systemFont(QFontDatabase::FixedFont));
    const auto window = open();
    QCOMPARE(window->table()->font().family(), TextFont::font().family());
    QVERIFY(action(*window, 0)->isChecked());
    QVERIFY(!action(*window, 1)->isChecked());
}

void tst_TextFont::survivesOtherTexts()
{
    for (const char *text : {"no font", ",,,,,,,,,,,,,,,,,,,,,,,", "\n"}) {
        QSettings().setValue(QStringLiteral("textFont"), QString::fromLatin1(text));
        TextFont::font();
    }
    QSettings().setValue(QStringLiteral("textFont"), QStringLiteral("no font"));
    const auto window = open();
    QVERIFY(window->table()->rowHeight() > 0);
}

void tst_TextFont::isChosenForAllWindows()
{
    const auto first = open();
    const auto second = open();
    FeedWindow feed(0, FeedModel::NewRows::AtTop, &m_statistics);
    const QFont usual = first->table()->font();
    const QFont feedFont = feed.table()->font();
    const int height = first->table()->rowHeight();
    action(*first, 1)->trigger();
    auto *dialog = first->findChild<QFontDialog *>();
    QVERIFY(dialog);
    dialog->setCurrentFont(scalableFont(41));
    dialog->accept();
    const QFont large = dialog->selectedFont(); // a family may have several names
    const auto later = open();
    for (const FileWindow *window : {first.get(), second.get(), later.get()}) {
        QCOMPARE(QFontInfo(window->table()->font()).pixelSize(), QFontInfo(large).pixelSize());
        QCOMPARE(window->table()->font().family(), large.family());
        QCOMPARE(window->rowPane()->text()->font().family(), large.family());
        QVERIFY(window->table()->rowHeight() > height);
        QVERIFY(action(*window, 1)->isChecked());
    }
    QCOMPARE(feed.table()->font(), feedFont);
    action(*later, 0)->trigger();
    for (const FileWindow *window : {first.get(), second.get(), later.get()}) {
        QCOMPARE(window->table()->font().family(), usual.family());
        QCOMPARE(window->table()->rowHeight(), height);
    }
    QVERIFY(!TextFont::isChosen());
}

void tst_TextFont::chosenFontIsZoomed()
{
    TextFont::choose(scalableFont(20));
    const auto window = open();
    const QFont chosen = window->table()->font();
    window->table()->zoomIn();
    QVERIFY(window->table()->font().pointSizeF() > QFontInfo(chosen).pointSizeF());
    window->table()->resetZoom();
    QCOMPARE(QFontInfo(window->table()->font()).pixelSize(), QFontInfo(chosen).pixelSize());
}

void tst_TextFont::dialogMayBeCancelled()
{
    const auto window = open();
    const QFont usual = window->table()->font();
    action(*window, 1)->trigger();
    auto *dialog = window->findChild<QFontDialog *>();
    QVERIFY(dialog);
    dialog->setCurrentFont(scalableFont(41));
    dialog->reject();
    QCOMPARE(window->table()->font(), usual);
    QVERIFY(!TextFont::isChosen());
    QVERIFY(action(*window, 0)->isChecked());
}

QTEST_MAIN(tst_TextFont)
#include "tst_textfont.moc"
