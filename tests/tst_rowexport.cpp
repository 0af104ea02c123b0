// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "files/textfilemodel.h"
#include "search/findpanel.h"
#include "windows/filewindow.h"
#include "windows/framestatistics.h"
#include "windows/rowexport.h"
#include "windows/rowexportdialog.h"
#include "windows/viewertable.h"

#include <QAction>
#include <QApplication>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QHeaderView>
#include <QMainWindow>
#include <QMessageBox>
#include <QSignalSpy>
#include <QStandardItemModel>
#include <QStatusBar>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <algorithm>
#include <functional>

using Change = std::function<void(QStandardItemModel *)>;

class tst_RowExport : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void writesRows_data();
    void writesRows();
    void writesFilesWhole_data();
    void writesFilesWhole();
    void writesRowsAsShown();
    void writesNoRows();
    void bearsChanges_data();
    void bearsChanges();
    void endsWithTheModel();
    void canBeStopped();
    void leavesTheFileWhereItFails();
    void refusesRowsThatAreTooLong();
    void tellsOfItsEnd_data();
    void tellsOfItsEnd();
    void stopsByItsButton();
    void canBeDestroyed();
    void asksForTheFile_data();
    void asksForTheFile();

private:
    QByteArray written() const;
    void write(const QByteArray &bytes, const QString &name) const;
    static void run(RowExport *rows);

    std::unique_ptr<QTemporaryDir> m_directory;  //!< one per test
    QString m_path;                              //!< of the file that is written
    std::unique_ptr<QStandardItemModel> m_model; //!< cells a0 to b4 in columns A and B
};

void tst_RowExport::init()
{
    m_directory = std::make_unique<QTemporaryDir>();
    m_path = m_directory->filePath("rows");
    m_model = std::make_unique<QStandardItemModel>(5, 2);
    m_model->setHorizontalHeaderLabels({"A", "B"});
    for (int row = 0; row < 5; ++row) {
        m_model->setItem(row, 0, new QStandardItem('a' + QString::number(row)));
        m_model->setItem(row, 1, new QStandardItem('b' + QString::number(row)));
    }
}

QByteArray tst_RowExport::written() const
{
    QFile file(m_path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("no file");
}

void tst_RowExport::write(const QByteArray &bytes, const QString &name) const
{
    QFile file(m_directory->filePath(name));
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(bytes), bytes.size());
}

void tst_RowExport::run(RowExport *rows)
{
    rows->start();
    QVERIFY(rows->isRunning());
    QTRY_VERIFY_WITH_TIMEOUT(!rows->isRunning(), 60000);
}

void tst_RowExport::writesRows_data()
{
    QTest::addColumn<QList<int>>("columns");
    QTest::addColumn<RowFormat>("format");
    QTest::addColumn<QByteArray>("bytes");

    QTest::newRow("CSV") << QList<int> {0, 1} << RowFormat::Csv
                         << QByteArray("A,B\r\na0,b0\r\n\"a\n1\",\"b\"\"1\"\r\na2,\r\n"
                                       "a3,\"b,3\"\r\na4,\xc3\xa9\r\n");
    QTest::newRow("tabs") << QList<int> {0, 1} << RowFormat::Tabs
                          << QByteArray("a0\tb0\na\xe2\x90\x8a"
                                        "1\tb\"1\na2\t\na3\tb,3\na4\t\xc3\xa9\n");
    QTest::newRow("other columns") << QList<int> {1, 0} << RowFormat::Csv
                                   << QByteArray("B,A\r\nb0,a0\r\n\"b\"\"1\",\"a\n1\"\r\n,a2\r\n"
                                                 "\"b,3\",a3\r\n\xc3\xa9,a4\r\n");
}

void tst_RowExport::writesRows()
{
    QFETCH(const QList<int>, columns);
    QFETCH(const RowFormat, format);
    m_model->item(1, 0)->setText("a\n1");
    m_model->item(1, 1)->setText("b\"1");
    m_model->item(2, 1)->setText("");
    m_model->item(3, 1)->setText("b,3");
    m_model->item(4, 1)->setText(QString(QChar(0xe9)));
    write("before", "rows");
    RowExport rows(m_model.get(), columns, format, m_path);
    rows.setSliceTime(0);
    const QSignalSpy finished(&rows, &RowExport::finished);
    const QSignalSpy progressed(&rows, &RowExport::progressed);
    run(&rows);
    QTEST(written(), "bytes");
    QCOMPARE(finished.size(), 1);
    QCOMPARE(finished.at(0).at(0).toBool(), true);
    QCOMPARE(progressed.size(), 4);
    QCOMPARE(progressed.at(3).at(0).toInt(), 4);
    QCOMPARE(rows.rowsWritten(), 5);
    QCOMPARE(rows.error(), QString());
}

void tst_RowExport::writesFilesWhole_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<RowFormat>("format");
    QTest::addColumn<QByteArray>("bytes");

    const QByteArray longText(TextFileModel::maximumLineBytes + 1, 'x');
    QTest::newRow("long lines") << "one\n" + longText + '\n'
                                << RowFormat::Tabs << "1\tone\n2\t" + longText + '\n';
    QTest::newRow("control characters") << QByteArray("one\n\x1b[1m\n") << RowFormat::Csv
                                        << QByteArray("Line,Text\r\n1,one\r\n2,\x1b[1m\r\n");
    QTest::newRow("records") << QByteArray("a;b\n1;\"two\nlines\"\n3;\"4,5\"\n") << RowFormat::Csv
                             << QByteArray("a,b\r\n1,\"two\nlines\"\r\n3,\"4,5\"\r\n");
    QTest::newRow("records between tabs")
        << QByteArray("a;b\n1;\"two\nlines\"\n3;\"4,5\"\n") << RowFormat::Tabs
        << QByteArray("1\ttwo\xe2\x90\x8alines\n3\t4,5\n");
}

void tst_RowExport::writesFilesWhole()
{
    QFETCH(const QByteArray, text);
    QFETCH(const RowFormat, format);
    write(text, "file");
    TextFileModel model(m_directory->filePath("file"));
    model.start();
    QTRY_COMPARE(model.indexedBytes(), quint64(text.size()));
    RowExport rows(&model, {0, 1}, format, m_path);
    run(&rows);
    QTEST(written(), "bytes");
}

void tst_RowExport::writesRowsAsShown()
{
    FrameStatistics statistics;
    write("a,b,c\n1,x,2\n3,y,4\n5,x,6\n", "file");
    FileWindow window(m_directory->filePath("file"), FormatRequest(), &statistics);
    window.show();
    QTRY_COMPARE(window.rows(), 3);
    window.openFindWith("x");
    window.findChild<FindPanel *>()->toggleFilter();
    QTRY_COMPARE(window.rows(), 2);
    RowExport rows(window.table()->model(), {2, 1}, RowFormat::Csv, m_path);
    run(&rows);
    QCOMPARE(written(), QByteArray("c,b\r\n2,x\r\n6,x\r\n"));
}

void tst_RowExport::writesNoRows()
{
    m_model->removeRows(0, 5);
    RowExport rows(m_model.get(), {0, 1}, RowFormat::Csv, m_path);
    run(&rows);
    QCOMPARE(written(), QByteArray("A,B\r\n"));
}

void tst_RowExport::bearsChanges_data()
{
    QTest::addColumn<Change>("change");    // after two rows
    QTest::addColumn<QByteArray>("bytes"); // empty for an error

    const QByteArray all("a0\na1\na2\na3\na4\n");
    using Model = QStandardItemModel;
    QTest::newRow("at the end") << Change([](Model *model) {
        model->appendRow(new QStandardItem("new"));
    }) << all;
    QTest::newRow("at the top") << Change([](Model *model) { model->insertRows(0, 3); }) << all;
    QTest::newRow("before the next") << Change([](Model *model) { model->insertRow(2); }) << all;
    QTest::newRow("amid those to come")
        << Change([](Model *model) { model->insertRow(3); }) << QByteArray();
    QTest::newRow("written ones go")
        << Change([](Model *model) { model->removeRows(0, 2); }) << all;
    QTest::newRow("the next one goes")
        << Change([](Model *model) { model->removeRows(1, 2); }) << QByteArray();
    QTest::newRow("the last one goes")
        << Change([](Model *model) { model->removeRow(4); }) << QByteArray();
    QTest::newRow("new ones go") << Change([](Model *model) {
        model->appendRow(new QStandardItem("new"));
        model->removeRow(5);
    }) << all;
    QTest::newRow("reset") << Change([](Model *model) { model->clear(); }) << QByteArray();
    QTest::newRow("sorted") << Change([](Model *model) { model->sort(0, Qt::DescendingOrder); })
                            << QByteArray();
    QTest::newRow("another column")
        << Change([](Model *model) { model->insertColumn(0); }) << QByteArray();
    QTest::newRow("a column less")
        << Change([](Model *model) { model->removeColumn(1); }) << QByteArray();
    QTest::newRow("other text") << Change([](Model *model) { model->item(4, 0)->setText("new"); })
                                << QByteArray("a0\na1\na2\na3\nnew\n");
}

void tst_RowExport::bearsChanges()
{
    QFETCH(const Change, change);
    QFETCH(const QByteArray, bytes);
    write("before", "rows");
    RowExport rows(m_model.get(), {0}, RowFormat::Tabs, m_path);
    rows.setSliceTime(0);
    connect(&rows, &RowExport::progressed, this, [&](int count) {
        if (count == 2)
            change(m_model.get());
    });
    const QSignalSpy finished(&rows, &RowExport::finished);
    run(&rows);
    QCOMPARE(written(), bytes.isEmpty() ? QByteArray("before") : bytes);
    QCOMPARE(finished.size(), 1);
    QCOMPARE(finished.at(0).at(0).toBool(), !bytes.isEmpty());
    QCOMPARE(rows.error().isEmpty(), !bytes.isEmpty());
    QCOMPARE(rows.rowsWritten(), bytes.isEmpty() ? 2 : 5);
}

void tst_RowExport::endsWithTheModel()
{
    RowExport rows(m_model.get(), {0}, RowFormat::Tabs, m_path);
    rows.setSliceTime(0);
    connect(&rows, &RowExport::progressed, this, [this] { m_model.reset(); });
    run(&rows);
    QCOMPARE(written(), QByteArray("no file"));
    QVERIFY(!rows.error().isEmpty());
}

void tst_RowExport::canBeStopped()
{
    write("before", "rows");
    RowExport rows(m_model.get(), {0}, RowFormat::Tabs, m_path);
    rows.setSliceTime(0);
    const QSignalSpy finished(&rows, &RowExport::finished);
    connect(&rows, &RowExport::progressed, &rows, &RowExport::cancel);
    run(&rows);
    QCOMPARE(finished.size(), 1);
    QCOMPARE(finished.at(0).at(0).toBool(), false);
    QCOMPARE(rows.error(), QString());
    QCOMPARE(written(), QByteArray("before"));
    QCOMPARE(QDir(m_directory->path()).entryList(QDir::Files), QStringList {"rows"});
    rows.cancel();
    QCOMPARE(finished.size(), 1);
}

void tst_RowExport::leavesTheFileWhereItFails()
{
    m_path = m_directory->filePath("missing/rows");
    RowExport rows(m_model.get(), {0}, RowFormat::Csv, m_path);
    const QSignalSpy finished(&rows, &RowExport::finished);
    run(&rows);
    QCOMPARE(finished.size(), 1);
    QCOMPARE(finished.at(0).at(0).toBool(), false);
    QVERIFY(!rows.error().isEmpty());
    QVERIFY(!QFile::exists(m_path));
}

void tst_RowExport::refusesRowsThatAreTooLong()
{
    write("one\n" + QByteArray(RowExport::mostBytes, 'x') + '\n', "file");
    TextFileModel model(m_directory->filePath("file"));
    model.start();
    QTRY_COMPARE(model.rowCount(), 2);
    QTRY_COMPARE(model.indexedBytes(), quint64(RowExport::mostBytes + 5));
    RowExport rows(&model, {1}, RowFormat::Tabs, m_path);
    run(&rows);
    QVERIFY(!rows.error().isEmpty());
    QCOMPARE(written(), QByteArray("no file"));
}

void tst_RowExport::tellsOfItsEnd_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("isComplete");

    QTest::newRow("complete") << "rows" << true;
    QTest::newRow("no folder") << "missing/rows" << false;
}

void tst_RowExport::tellsOfItsEnd()
{
    QFETCH(const QString, name);
    QFETCH(const bool, isComplete);
    QMainWindow window;
    window.show();
    const QPointer<RowExportDialog> dialog = new RowExportDialog(
        new RowExport(m_model.get(), {0}, RowFormat::Tabs, m_directory->filePath(name)), &window);
    QTRY_VERIFY(!dialog);
    QCOMPARE(!window.statusBar()->currentMessage().isEmpty(), isComplete);
    auto *box = window.findChild<QMessageBox *>();
    QCOMPARE(box != nullptr, !isComplete);
    if (!box)
        return;
    QVERIFY(box->isVisible());
    QVERIFY(!box->text().isEmpty());
    QVERIFY(!box->informativeText().isEmpty());
    box->close();
}

void tst_RowExport::stopsByItsButton()
{
    QMainWindow window;
    window.show();
    auto *rows = new RowExport(m_model.get(), {0}, RowFormat::Tabs, m_path);
    rows->setSliceTime(0);
    const QPointer<RowExportDialog> dialog = new RowExportDialog(rows, &window);
    connect(rows, &RowExport::progressed, dialog, [&](int count) {
        if (count == 3)
            Q_EMIT dialog->canceled();
    });
    QTRY_VERIFY(!dialog);
    QCOMPARE(written(), QByteArray("no file"));
    QVERIFY(!window.findChild<QMessageBox *>());
    QVERIFY(window.statusBar()->currentMessage().isEmpty());
}

//! As when its window is closed and goes.
void tst_RowExport::canBeDestroyed()
{
    auto *rows = new RowExport(m_model.get(), {0}, RowFormat::Tabs, m_path);
    rows->setSliceTime(0);
    const QPointer<RowExport> watched(rows);
    connect(rows, &RowExport::progressed, this, [rows] { delete rows; });
    rows->start();
    QTRY_VERIFY(!watched);
    QCOMPARE(written(), QByteArray("no file"));
    QVERIFY(QDir(m_directory->path()).isEmpty());
}

void tst_RowExport::asksForTheFile_data()
{
    QTest::addColumn<int>("filter");
    QTest::addColumn<QByteArray>("bytes");

    QTest::newRow("CSV") << 0 << QByteArray("c,a\r\n2,1\r\n4,3\r\n");
    QTest::newRow("tabs") << 1 << QByteArray("2\t1\n4\t3\n");
}

//! Columns on screen, as they are there.
void tst_RowExport::asksForTheFile()
{
    QFETCH(const int, filter);
    FrameStatistics statistics;
    write("a,b,c\n1,x,2\n3,y,4\n", "file");
    FileWindow window(m_directory->filePath("file"), FormatRequest(), &statistics);
    window.show();
    QTRY_COMPARE(window.rows(), 2);
    window.table()->header()->hideSection(1);
    window.table()->header()->moveSection(2, 0);
    const QList<QAction *> actions = window.findChildren<QAction *>();
    const auto save = std::find_if(actions.begin(), actions.end(), [](const QAction *action) {
        return action->text() == "Save Rows &As…";
    });
    QVERIFY(save != actions.end());
    QTimer::singleShot(0, &window, [&] {
        auto *dialog = qobject_cast<QFileDialog *>(QApplication::activeModalWidget());
        QVERIFY(dialog);
        dialog->selectNameFilter(dialog->nameFilters().at(filter));
        dialog->selectFile(m_path);
        QVERIFY(QMetaObject::invokeMethod(dialog, "accept"));
    });
    (*save)->trigger();
    QTRY_VERIFY(QFile::exists(m_path));
    QTEST(written(), "bytes");
    QTRY_VERIFY(!window.findChild<RowExportDialog *>());
}

QTEST_MAIN(tst_RowExport)

#include "tst_rowexport.moc"
