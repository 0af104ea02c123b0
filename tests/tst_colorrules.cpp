// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "basics/contrast.h"
#include "files/textfilemodel.h"
#include "search/colorrules.h"
#include "windows/colorrulesdialog.h"
#include "windows/filewindow.h"
#include "windows/framestatistics.h"
#include "windows/viewertable.h"

#include <QApplication>
#include <QColorDialog>
#include <QFile>
#include <QLabel>
#include <QSettings>
#include <QStandardItemModel>
#include <QTableWidget>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <QToolButton>

class tst_ColorRules : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void firstRuleThatFitsCounts_data();
    void firstRuleThatFitsCounts();
    void looksAtNoLineNumbers();
    void keepsRules();
    void dialogEdits();
    void dialogTellsProblems();
    void dialogAsksOnceForAColor();
    void dialogIsLeftByTab();
    void colorsRows();
    void colorsWhatChanges();

private:
    QTemporaryDir m_directory; //!< settings and files
    FrameStatistics m_statistics;
};

namespace {

//! The colour of the text of a cell: the one farthest from the background's.
QColor inkOf(ViewerTable *table, const QModelIndex &index)
{
    const QImage image = table->viewport()->grab(table->visualRect(index)).toImage();
    const QColor paper = table->palette().color(QPalette::Base);
    QColor ink = paper;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (contrast(image.pixelColor(x, y), paper) > contrast(ink, paper))
                ink = image.pixelColor(x, y);
        }
    }
    return ink;
}

bool isReddish(const QColor &color)
{
    return color.red() > color.green() + 40 && color.red() > color.blue() + 40;
}

bool isBluish(const QColor &color)
{
    return color.blue() > color.green() + 40 && color.blue() > color.red() + 40;
}

} // namespace

void tst_ColorRules::initTestCase()
{
    QCoreApplication::setApplicationName(QStringLiteral("colors"));
    QSettings::setDefaultFormat(QSettings::IniFormat);
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, m_directory.path());
}

void tst_ColorRules::init()
{
    QSettings().clear();
}

void tst_ColorRules::firstRuleThatFitsCounts_data()
{
    QTest::addColumn<QStringList>("row");
    QTest::addColumn<QColor>("color");
    QTest::newRow("none") << QStringList {"a", "b"} << QColor();
    QTest::newRow("first column") << QStringList {"an error", "b"} << QColor(Qt::red);
    QTest::newRow("other column, other case") << QStringList {"a", "ERROR"} << QColor(Qt::red);
    QTest::newRow("two rules") << QStringList {"id=7", "Error"} << QColor(Qt::red);
    QTest::newRow("expression") << QStringList {"id=7", "b"} << QColor(Qt::blue);
    QTest::newRow("no expression") << QStringList {"id=x", "b"} << QColor();
    QTest::newRow("case") << QStringList {"Case", "b"} << QColor(Qt::green);
    QTest::newRow("other case") << QStringList {"case", "b"} << QColor();
}

void tst_ColorRules::firstRuleThatFitsCounts()
{
    QFETCH(QStringList, row);
    QFETCH(QColor, color);
    const ColorRules rules({{"error", false, false, Qt::red},
                            {"", false, false, Qt::yellow},
                            {"[", true, false, Qt::yellow},
                            {"b", false, false, QColor()},
                            {"id=\\d", true, false, Qt::blue},
                            {"Case", false, true, Qt::green}});
    QStandardItemModel model;
    model.appendRow({new QStandardItem(row[0]), new QStandardItem(row[1])});
    for (int column = 0; column < 2; ++column)
        QCOMPARE(rules.colorOf(model.index(0, column)).value_or(QColor()), color);
    QVERIFY(!rules.colorOf({}));
    QVERIFY(!ColorRules().colorOf(model.index(0, 0)));
    QVERIFY(ColorRules().isEmpty());
    QVERIFY(!rules.isEmpty());
}

void tst_ColorRules::looksAtNoLineNumbers()
{
    QFile file(m_directory.filePath("file"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("a\nb\n2\n");
    file.close();
    TextFileModel model(file.fileName());
    model.start();
    QTRY_COMPARE(model.rowCount(), 3);
    const ColorRules rules({{"2", false, false, Qt::red}});
    QVERIFY(!rules.colorOf(model.index(1, 0)));
    QVERIFY(rules.colorOf(model.index(2, 0)));
}

void tst_ColorRules::keepsRules()
{
    QVERIFY(ColorRules::load().isEmpty());
    const QList<ColorRule> rules {{"a, \"b\"\\d", true, false, QColor("#123456")},
                                  {"ä", false, true, QColor("#ffffff")}};
    ColorRules::save(rules);
    QCOMPARE(ColorRules::load(), rules);
    ColorRules::save({rules[1]});
    QCOMPARE(ColorRules::load(), QList<ColorRule> {rules[1]});
    QSettings().setValue("colorRules/1/color", "no colour");
    QVERIFY(ColorRules::load().isEmpty());
}

void tst_ColorRules::dialogEdits()
{
    const ColorRule a {"a", false, false, QColor("#aa0000")};
    const ColorRule b {"b", true, true, QColor("#00aa00")};
    ColorRulesDialog dialog({a, b}, nullptr);
    dialog.show();
    dialog.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&dialog));
    QCOMPARE(dialog.rules(), QList<ColorRule>({a, b}));
    auto *table = dialog.findChild<QTableWidget *>();
    const auto press = [&](const QString &text) {
        const auto buttons = dialog.findChildren<QToolButton *>();
        for (QToolButton *button : buttons) {
            if (button->text() == text)
                button->click();
        }
    };
    table->setCurrentCell(1, 0);
    press("&Down");
    QCOMPARE(dialog.rules(), QList<ColorRule>({a, b}));
    press("&Up");
    QCOMPARE(dialog.rules(), QList<ColorRule>({b, a}));
    QCOMPARE(table->currentRow(), 0);
    table->item(0, 0)->setText("c");
    table->item(0, 1)->setCheckState(Qt::Unchecked);
    const ColorRule c {"c", false, true, b.color};
    QCOMPARE(dialog.rules(), QList<ColorRule>({c, a}));
    press("&Add");
    QCOMPARE(table->rowCount(), 3);
    QCOMPARE(dialog.rules().size(), 2); // without a text yet
    QTest::keyClicks(QApplication::focusWidget(), "new");
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    QTRY_COMPARE(dialog.rules().value(2).text, QStringLiteral("new"));
    QVERIFY(dialog.rules().value(2).color.isValid());
    table->setCurrentCell(1, 0);
    press("&Remove");
    QCOMPARE(dialog.rules().size(), 2);
    QCOMPARE(dialog.rules().first(), c);
}

void tst_ColorRules::dialogTellsProblems()
{
    ColorRulesDialog dialog({{"[", true, false, Qt::red}, {"a", true, false, Qt::red}}, nullptr);
    auto *table = dialog.findChild<QTableWidget *>();
    const QLabel *problem = dialog.findChild<QLabel *>("problemLabel");
    table->setCurrentCell(0, 0);
    QVERIFY(!problem->text().isEmpty());
    table->setCurrentCell(1, 0);
    QVERIFY(problem->text().isEmpty());
    table->item(1, 0)->setText("(");
    QVERIFY(!problem->text().isEmpty());
}

void tst_ColorRules::dialogAsksOnceForAColor()
{
    ColorRulesDialog dialog({{"a", false, false, Qt::red}}, nullptr);
    dialog.show();
    QVERIFY(QTest::qWaitForWindowExposed(&dialog));
    auto *table = dialog.findChild<QTableWidget *>();
    int asked = 0;
    QTimer whileAsked;
    connect(&whileAsked, &QTimer::timeout, this, [&asked] {
        if (auto *question = qobject_cast<QColorDialog *>(QApplication::activeModalWidget())) {
            ++asked;
            question->setCurrentColor(Qt::green);
            question->accept();
        }
    });
    whileAsked.start(0);
    const QPoint cell = table->visualItemRect(table->item(0, 3)).center();
    QTest::mouseClick(table->viewport(), Qt::LeftButton, {}, cell);
    QTest::mouseDClick(table->viewport(), Qt::LeftButton, {}, cell);
    QCOMPARE(asked, 1);
    QCOMPARE(dialog.rules().first().color, QColor(Qt::green));
}

void tst_ColorRules::dialogIsLeftByTab()
{
    ColorRulesDialog dialog({{"a", false, false, Qt::red}}, nullptr);
    dialog.show();
    dialog.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&dialog));
    auto *table = dialog.findChild<QTableWidget *>();
    table->setFocus();
    table->setCurrentCell(0, 0);
    QTest::keyClick(table, Qt::Key_Tab);
    QVERIFY(qobject_cast<QToolButton *>(QApplication::focusWidget()));
}

void tst_ColorRules::colorsRows()
{
    QStandardItemModel model;
    for (const char *text : {"plain", "warm", "cold", "ERROR"})
        model.appendRow({new QStandardItem(text), new QStandardItem("MMMM")});
    model.item(3)->setForeground(QColor(Qt::red));
    ViewerTable table(&m_statistics);
    table.resize(600, 200);
    table.setModel(&model);
    table.show();
    const QColor usual = inkOf(&table, model.index(0, 1));
    QVERIFY(!isReddish(usual) && !isBluish(usual));
    table.setColorRules(ColorRules({{"warm", false, false, QColor(200, 0, 0)},
                                    {"cold|error", true, false, QColor(0, 0, 220)}}));
    QCOMPARE(inkOf(&table, model.index(0, 1)), usual);
    QVERIFY(isReddish(inkOf(&table, model.index(1, 0))));
    QVERIFY(isReddish(inkOf(&table, model.index(1, 1))));
    QVERIFY(isBluish(inkOf(&table, model.index(2, 1))));
    QVERIFY(isBluish(inkOf(&table, model.index(3, 0)))); // the user's rule before the model's
    table.setColorRules({});
    QCOMPARE(inkOf(&table, model.index(1, 1)), usual);
    QVERIFY(isReddish(inkOf(&table, model.index(3, 0))));
}

void tst_ColorRules::colorsWhatChanges()
{
    QStandardItemModel model;
    model.appendRow(new QStandardItem("MMMM"));
    model.appendRow(new QStandardItem("NNNN"));
    ViewerTable table(&m_statistics);
    table.resize(600, 200);
    table.setModel(&model);
    table.setColorRules(ColorRules({{"W", false, false, QColor(200, 0, 0)}}));
    table.show();
    QVERIFY(!isReddish(inkOf(&table, model.index(0, 0))));
    model.item(0)->setText("WWWW");
    QVERIFY(isReddish(inkOf(&table, model.index(0, 0))));
    model.insertRow(0, new QStandardItem("MMMM"));
    QVERIFY(!isReddish(inkOf(&table, model.index(0, 0))));
    QVERIFY(isReddish(inkOf(&table, model.index(1, 0))));
}

QTEST_MAIN(tst_ColorRules)

#include "tst_colorrules.moc"
