// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "basics/icons.h"
#include "files/decompressor.h"
#include "qtablefastview.h"
#include "search/lineexpression.h"
#include "windows/aboutdialog.h"
#include "windows/filewindow.h"
#include "windows/framestatistics.h"
#include "windows/statisticsdialog.h"

#include <QAction>
#include <QDialog>
#include <QLabel>
#include <QLocale>
#include <QPointer>
#include <QStandardItemModel>
#include <QTest>

class tst_ViewerDialogs : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void iconsAreThere_data();
    void iconsAreThere();
    void programHasItsIcon();
    void aboutTellsVersionsAndLicences();
    void statisticsTellWhatHappens();
    void windowTakesItsDialogsAlong_data();
    void windowTakesItsDialogsAlong();
};

namespace {

QString textsOf(const QWidget &widget)
{
    QStringList texts;
    const auto labels = widget.findChildren<QLabel *>();
    for (const QLabel *label : labels)
        texts.append(label->text());
    return texts.join(u'\n');
}

} // namespace

void tst_ViewerDialogs::iconsAreThere_data()
{
    QTest::addColumn<QString>("name");
    for (const char *name : {"open", "follow", "find", "filter", "pause", "stop"})
        QTest::newRow(name) << QString::fromLatin1(name);
}

void tst_ViewerDialogs::iconsAreThere()
{
    QFETCH(QString, name);
    const QIcon icon = Icons::action(QStringLiteral("no theme has this"), name);
    QCOMPARE(icon.pixmap(QSize(24, 24), 1).size(), QSize(24, 24));
    const QImage fine(QStringLiteral(":/viewer/%1@2x.png").arg(name)); // taken on finer screens
    QCOMPARE(fine.size(), QSize(48, 48));
}

void tst_ViewerDialogs::programHasItsIcon()
{
    const QIcon icon = Icons::program();
    for (const int size : {16, 24, 32, 48, 64, 128, 256}) {
        const QImage image = icon.pixmap(QSize(size, size), 1).toImage();
        QCOMPARE(image.size(), QSize(size, size));
        QCOMPARE(image.pixelColor(0, 0).alpha(), 0);
        QCOMPARE(image.pixelColor(size / 2, size / 5).alpha(), 255);
    }
}

void tst_ViewerDialogs::aboutTellsVersionsAndLicences()
{
    QCoreApplication::setApplicationVersion(QStringLiteral("1.2.3"));
    const AboutDialog dialog(nullptr);
    const QString texts = textsOf(dialog);
    QVERIFY(texts.contains(QStringLiteral("1.2.3")));
    QVERIFY(texts.contains(QStringLiteral("MIT")));
    QVERIFY(texts.contains(QStringLiteral("Qt %1").arg(QString::fromLatin1(qVersion()))));
    QVERIFY(texts.contains(Decompressor::libraryName()));
    QVERIFY(texts.contains(LineExpression::libraryName()));
}

void tst_ViewerDialogs::statisticsTellWhatHappens()
{
    QTableFastView table;
    FrameStatistics statistics;
    StatisticsDialog dialog(&table, &statistics, nullptr);
    dialog.show();
    QVERIFY(textsOf(dialog).contains(QStringLiteral("\n0\n")));
    dialog.hide();
    QStandardItemModel model(1234, 1);
    table.setModel(&model);
    statistics.add(1'500'000);
    dialog.show();
    const QLocale locale;
    QVERIFY(textsOf(dialog).contains(u'\n' + locale.toString(1234) + u'\n'));
    const QString time = locale.toString(statistics.percentile(50), 'f', 2);
    QVERIFY(!time.startsWith(u'0'));
    QVERIFY(textsOf(dialog).contains(time + QStringLiteral(" ms")));
    table.setModel(nullptr);
}

void tst_ViewerDialogs::windowTakesItsDialogsAlong_data()
{
    QTest::addColumn<QString>("action");
    QTest::newRow("about") << QStringLiteral("&About");
    QTest::newRow("colours") << QStringLiteral("Colours of Ro&ws…");
    QTest::newRow("statistics") << QStringLiteral("&Statistics");
}

//! As at the end of a session, which may come while a dialog is open.
void tst_ViewerDialogs::windowTakesItsDialogsAlong()
{
    QFETCH(QString, action);
    FrameStatistics statistics;
    auto window = std::make_unique<FileWindow>(QFINDTESTDATA("tst_viewerdialogs.cpp"),
                                               FormatRequest(), &statistics);
    window->show();
    QPointer<QDialog> dialog;
    const auto actions = window->findChildren<QAction *>();
    for (QAction *each : actions) {
        if (each->text() == action)
            each->trigger();
    }
    dialog = window->findChild<QDialog *>();
    QVERIFY(dialog && dialog->isVisible());
    window.reset();
    QVERIFY(!dialog);
}

QTEST_MAIN(tst_ViewerDialogs)

#include "tst_viewerdialogs.moc"
