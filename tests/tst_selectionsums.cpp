// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "files/textfilemodel.h"
#include "search/findpanel.h"
#include "windows/filewindow.h"
#include "windows/framestatistics.h"
#include "windows/numbersums.h"
#include "windows/selectionsums.h"
#include "windows/viewertable.h"

#include <QFile>
#include <QItemSelectionModel>
#include <QLabel>
#include <QLocale>
#include <QSignalSpy>
#include <QStandardItemModel>
#include <QTableView>
#include <QTemporaryDir>
#include <QTest>

namespace {

//! Counts the questions for texts.
class AskedModel : public QStandardItemModel
{
public:
    using QStandardItemModel::QStandardItemModel;

    QVariant data(const QModelIndex &index, int role) const override
    {
        if (role == Qt::DisplayRole)
            ++m_asked;
        return QStandardItemModel::data(index, role);
    }
    int asked() const { return m_asked; }

private:
    mutable int m_asked = 0; //!< for the text
};

//! A table, never shown, with the numbers 1 to 10 in column 1 and letters in column 0.
struct Scene
{
    Scene()
    {
        for (int row = 0; row < 10; ++row) {
            model.setItem(row, 0, new QStandardItem(QString(QChar('a' + row))));
            model.setItem(row, 1, new QStandardItem(QString::number(row + 1)));
        }
        table.setSelectionBehavior(QAbstractItemView::SelectRows);
        table.setModel(&model);
        sums.followTable();
    }
    void select(int first, int last, int column = 1)
    {
        table.selectionModel()->setCurrentIndex(model.index(first, column),
                                                QItemSelectionModel::NoUpdate);
        table.selectionModel()->select({model.index(first, 0), model.index(last, 1)},
                                       QItemSelectionModel::Select);
    }
    void finish() { QTRY_VERIFY(!sums.isRunning()); }

    AskedModel model {10, 2};
    QTableView table;
    SelectionSums sums {&table}; //!< under test
};

QString sumsText(int count, const char *rest)
{
    return QStringLiteral("Count ") + QLocale().toString(count) + QLatin1String("   ")
        + QLatin1String(rest);
}

} // namespace

class tst_SelectionSums : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void addsUp_data();
    void addsUp();
    void countsOthers_data();
    void countsOthers();
    void addsUpExactly();
    void tellsOfTheSelection();
    void tellsNothing_data();
    void tellsNothing();
    void followsTheSelection();
    void followsTheCurrentColumn();
    void followsRows();
    void goesOnBelowNewRows();
    void worksInSlices();
    void addsUpRowsAsShown();
    void leavesOutNumbersOfLines();
};

void tst_SelectionSums::addsUp_data()
{
    QTest::addColumn<QStringList>("texts");
    QTest::addColumn<QString>("sum");
    QTest::addColumn<QString>("mean");
    QTest::addColumn<QString>("minimum");
    QTest::addColumn<QString>("maximum");

    using Texts = QStringList;
    QTest::newRow("nothing") << Texts {} << ""
                             << ""
                             << ""
                             << "";
    QTest::newRow("one") << Texts {"7"} << "7"
                         << "7.00"
                         << "7"
                         << "7";
    QTest::newRow("integers") << Texts {"1", "2", "4"} << "7"
                              << "2.33"
                              << "1"
                              << "4";
    QTest::newRow("rounded up") << Texts {"1", "2", "5"} << "8"
                                << "2.67"
                                << "1"
                                << "5";
    QTest::newRow("halves up") << Texts {"0.01", "0", "0", "0", "0", "0", "0", "0"} << "0.01"
                               << "0.0013"
                               << "0"
                               << "0.01";
    QTest::newRow("negative halves down")
        << Texts {"-0.01", "0", "0", "0", "0", "0", "0", "0"} << "-0.01"
        << "-0.0013"
        << "-0.01"
        << "0";
    QTest::newRow("mean of nines")
        << Texts {"9.99", "9.99", "9.99", "9.98", "9.99", "9.99", "10"} << "69.93"
        << "9.9900"
        << "9.98"
        << "10";
    QTest::newRow("carry") << Texts {"29999", "0", "0"} << "29999"
                           << "9999.67"
                           << "0"
                           << "29999";
    QTest::newRow("rounded to zero") << QStringList(1000, "0") + Texts {"-1"} << "-1"
                                     << "0.00"
                                     << "-1"
                                     << "0";
    QTest::newRow("carry to a new digit") << QStringList(199, "1") + Texts {"0.9"} << "199.9"
                                          << "1.000"
                                          << "0.9"
                                          << "1";
    QTest::newRow("fractions of different lengths") << Texts {"1.5", "2.25", "3"} << "6.75"
                                                    << "2.2500"
                                                    << "1.5"
                                                    << "3";
    QTest::newRow("decimal comma") << Texts {"1,5", "-2,25"} << "-0,75"
                                   << "-0,3750"
                                   << "-2,25"
                                   << "1,5";
    QTest::newRow("signs and spaces") << Texts {" +5", "-5 "} << "0"
                                      << "0.00"
                                      << "-5"
                                      << "+5";
    QTest::newRow("zeros") << Texts {"000", "-0.0"} << "0.0"
                           << "0.000"
                           << "000"
                           << "000";
    QTest::newRow("leading zeros") << Texts {"007", "0000.50"} << "7.50"
                                   << "3.7500"
                                   << "0000.50"
                                   << "007";
    QTest::newRow("without an integer") << Texts {".05", "-.5"} << "-0.45"
                                        << "-0.2250"
                                        << "-.5"
                                        << ".05";
    QTest::newRow("first of equals") << Texts {"1", "1.0"} << "2.0"
                                     << "1.000"
                                     << "1"
                                     << "1";
    const QString nines(63, '9');
    QTest::newRow("63 digits") << Texts {nines, '-' + nines, "12"} << "12"
                               << "4.00" << '-' + nines << nines;
    QTest::newRow("too large a sum") << Texts {nines, "1"} << ""
                                     << ""
                                     << "1" << nines;
    QTest::newRow("too many digits together") << Texts {"12", '.' + QString(62, '1')} << ""
                                              << "" << '.' + QString(62, '1') << "12";
    QTest::newRow("62 fraction digits")
        << Texts {"1", '.' + QString(62, '1')} << "1." + QString(62, '1')
        << "0." + QString(62, '5') + "50" << '.' + QString(62, '1') << "1";
}

void tst_SelectionSums::addsUp()
{
    QFETCH(const QStringList, texts);
    NumberSums sums;
    for (const QString &text : texts)
        sums.add(text);
    QCOMPARE(sums.count(), int(texts.size()));
    QCOMPARE(sums.others(), 0);
    QTEST(sums.sum(), "sum");
    QTEST(sums.mean(), "mean");
    QTEST(sums.minimum(), "minimum");
    QTEST(sums.maximum(), "maximum");
}

void tst_SelectionSums::countsOthers_data()
{
    QTest::addColumn<QString>("text");

    for (const char *text : {"", " ", "n/a", "-", "+", ".", "1.", "1e3", "5%", "0x1f", "1 000",
                             "1,234,567", "1.234,5", "1'000", "--1", "0-1", "12 EUR", "NaN"})
        QTest::newRow(text) << QString(text);
    QTest::newRow("the other mark") << "1,5";
    QTest::newRow("64 digits") << QString(64, '1');
    QTest::newRow("63 fraction digits") << '.' + QString(63, '1');
    QTest::newRow("64 digits with a point") << "1." + QString(62, '0') + '0';
    QTest::newRow("other digits") << QString(QChar(0x0661));
    QTest::newRow("other characters") << QString(QChar(0x0131)) + '1';
}

void tst_SelectionSums::countsOthers()
{
    QFETCH(const QString, text);
    NumberSums sums;
    sums.add("2.5");
    sums.add(text);
    QCOMPARE(sums.count(), 1);
    QCOMPARE(sums.others(), 1);
    QCOMPARE(sums.sum(), QString("2.5"));
    QCOMPARE(sums.minimum(), QString("2.5"));
    QCOMPARE(sums.maximum(), QString("2.5"));
}

//! In binary floating point none of these is.
void tst_SelectionSums::addsUpExactly()
{
    NumberSums sums;
    sums.add("10000000000000000");
    for (int i = 0; i < 1000; ++i)
        sums.add("0.1");
    sums.add("-10000000000000000");
    QCOMPARE(sums.sum(), QString("100.0"));
    QCOMPARE(sums.mean(), QString("0.100")); // 100 / 1002
}

void tst_SelectionSums::tellsOfTheSelection()
{
    Scene scene;
    const QSignalSpy changes(&scene.sums, &SelectionSums::textChanged);
    scene.model.item(3, 1)->setText("none");
    scene.select(1, 4);
    QTRY_COMPARE(scene.sums.text(),
                 sumsText(3, "Sum 10   Min 2   Max 5   Mean 3.33   1 without a number"));
    QCOMPARE(changes.size(), 1);
    QCOMPARE(changes.at(0).at(0).toString(), scene.sums.text());
}

void tst_SelectionSums::tellsNothing_data()
{
    QTest::addColumn<int>("first");
    QTest::addColumn<int>("last");
    QTest::addColumn<int>("column");

    QTest::newRow("one row") << 2 << 2 << 1;
    QTest::newRow("letters") << 2 << 5 << 0;
}

void tst_SelectionSums::tellsNothing()
{
    QFETCH(const int, first);
    QFETCH(const int, last);
    QFETCH(const int, column);
    Scene scene;
    scene.select(0, 1);
    scene.finish();
    QVERIFY(!scene.sums.text().isEmpty());
    scene.table.selectionModel()->clear();
    scene.select(first, last, column);
    QVERIFY(scene.sums.isRunning());
    scene.finish();
    QCOMPARE(scene.sums.text(), QString());
}

void tst_SelectionSums::followsTheSelection()
{
    Scene scene;
    scene.select(7, 8);
    scene.select(0, 1);
    scene.finish();
    QCOMPARE(scene.sums.text(), sumsText(4, "Sum 20   Min 1   Max 9   Mean 5.00"));
    scene.table.selectionModel()->select({scene.model.index(6, 1), scene.model.index(8, 1)},
                                         QItemSelectionModel::Select);
    scene.finish();
    QCOMPARE(scene.sums.text(), sumsText(5, "Sum 27   Min 1   Max 9   Mean 5.40"));
    scene.table.selectionModel()->select({scene.model.index(8, 1), scene.model.index(9, 1)},
                                         QItemSelectionModel::Select);
    scene.table.selectionModel()->select({scene.model.index(1, 1), scene.model.index(2, 1)},
                                         QItemSelectionModel::Select);
    scene.finish();
    QCOMPARE(scene.sums.text(), sumsText(7, "Sum 40   Min 1   Max 10   Mean 5.71"));
    scene.table.clearSelection();
    scene.finish();
    QCOMPARE(scene.sums.text(), QString());
}

void tst_SelectionSums::followsTheCurrentColumn()
{
    Scene scene;
    scene.select(0, 1, 0);
    scene.finish();
    QCOMPARE(scene.sums.text(), QString());
    scene.table.selectionModel()->setCurrentIndex(scene.model.index(5, 1),
                                                  QItemSelectionModel::NoUpdate);
    scene.finish();
    QCOMPARE(scene.sums.text(), sumsText(2, "Sum 3   Min 1   Max 2   Mean 1.50"));
    scene.table.selectionModel()->setCurrentIndex(scene.model.index(6, 1),
                                                  QItemSelectionModel::NoUpdate);
    QVERIFY(!scene.sums.isRunning());
}

void tst_SelectionSums::followsRows()
{
    Scene scene;
    scene.select(1, 4);
    scene.finish();
    scene.model.setData(scene.model.index(6, 1), "x");
    QVERIFY(!scene.sums.isRunning());
    scene.model.setData(scene.model.index(2, 0), "x");
    QVERIFY(!scene.sums.isRunning());
    scene.model.setData(scene.model.index(2, 1), "30");
    scene.finish();
    QCOMPARE(scene.sums.text(), sumsText(4, "Sum 41   Min 2   Max 30   Mean 10.25"));
    scene.model.removeRow(2);
    scene.finish();
    QCOMPARE(scene.sums.text(), sumsText(3, "Sum 11   Min 2   Max 5   Mean 3.67"));
    scene.model.appendRow(new QStandardItem("new"));
    QVERIFY(!scene.sums.isRunning());
    scene.model.insertRow(0);
    QVERIFY(!scene.sums.isRunning());
    scene.model.insertRow(3); // is not selected
    scene.finish();
    QCOMPARE(scene.sums.text(), sumsText(3, "Sum 11   Min 2   Max 5   Mean 3.67"));
    scene.model.clear();
    scene.finish();
    QCOMPARE(scene.sums.text(), QString());
    scene.table.setModel(nullptr);
    scene.sums.followTable();
    scene.finish();
    QCOMPARE(scene.sums.text(), QString());
}

void tst_SelectionSums::goesOnBelowNewRows()
{
    Scene scene;
    scene.sums.setSliceTime(0);
    scene.select(2, 5);
    const int asked = scene.model.asked();
    connect(&scene.sums, &SelectionSums::textChanged, this, [&](const QString &text) {
        if (text != "Adding up… 50 %")
            return;
        scene.model.insertRows(1, 3);
        scene.model.appendRow(new QStandardItem("new"));
    });
    scene.finish();
    QCOMPARE(scene.model.rowCount(), 14);
    QCOMPARE(scene.model.asked(), asked + 4);
    QCOMPARE(scene.sums.text(), sumsText(4, "Sum 18   Min 3   Max 6   Mean 4.50"));
}

void tst_SelectionSums::worksInSlices()
{
    Scene scene;
    scene.sums.setSliceTime(0);
    scene.select(0, 3);
    QStringList texts;
    connect(&scene.sums, &SelectionSums::textChanged, this, [&](const QString &text) {
        texts << text;
        if (texts.size() == 2)
            scene.select(0, 4);
    });
    scene.finish();
    const QStringList expected {"Adding up… 25 %",
                                "Adding up… 50 %",
                                "Adding up… 20 %",
                                "Adding up… 40 %",
                                "Adding up… 60 %",
                                "Adding up… 80 %",
                                sumsText(5, "Sum 15   Min 1   Max 5   Mean 3.00")};
    QCOMPARE(texts, expected);
}

void tst_SelectionSums::addsUpRowsAsShown()
{
    const QTemporaryDir directory;
    FrameStatistics statistics;
    QFile file(directory.filePath("file.csv"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("name,price\na,1.10\nb,2.20\na,3.30\n");
    file.close();
    FileWindow window(file.fileName(), FormatRequest(), &statistics);
    window.show();
    QTRY_COMPARE(window.rows(), 3);
    const auto *label = window.findChild<QLabel *>("sumsLabel");
    QVERIFY(label);
    QVERIFY(!label->isVisible());
    window.table()->setCurrentIndex(window.model()->index(1, 1));
    window.table()->selectAll();
    QTRY_COMPARE(label->text(), sumsText(3, "Sum 6.60   Min 1.10   Max 3.30   Mean 2.2000"));
    QVERIFY(label->isVisible());
    window.openFindWith("a");
    window.findChild<FindPanel *>()->toggleFilter();
    QTRY_COMPARE(window.rows(), 2);
    QTRY_VERIFY(!label->isVisible());
    window.table()->setCurrentIndex(window.table()->model()->index(0, 1));
    window.table()->selectAll();
    QTRY_COMPARE(label->text(), sumsText(2, "Sum 4.40   Min 1.10   Max 3.30   Mean 2.2000"));
}

void tst_SelectionSums::leavesOutNumbersOfLines()
{
    const QTemporaryDir directory;
    FrameStatistics statistics;
    QFile file(directory.filePath("file.txt"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("10\n20\n30\n");
    file.close();
    FileWindow window(file.fileName(), FormatRequest(), &statistics);
    window.show();
    QTRY_COMPARE(window.rows(), 3);
    window.table()->setCurrentIndex(window.model()->index(1, 1));
    window.table()->selectAll();
    QTRY_COMPARE(window.sums()->text(), sumsText(3, "Sum 60   Min 10   Max 30   Mean 20.00"));
    window.table()->selectionModel()->setCurrentIndex(window.model()->index(1, 0),
                                                      QItemSelectionModel::NoUpdate);
    QTRY_COMPARE(window.sums()->text(), QString());
}

QTEST_MAIN(tst_SelectionSums)

#include "tst_selectionsums.moc"
