// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "basics/contrast.h"
#include "files/textfilemodel.h"
#include "search/findpanel.h"
#include "windows/detailpane.h"
#include "windows/filewindow.h"
#include "windows/framestatistics.h"
#include "windows/indentedjson.h"
#include "windows/rowdetails.h"
#include "windows/viewertable.h"

#include <QAction>
#include <QClipboard>
#include <QFile>
#include <QGuiApplication>
#include <QItemSelectionModel>
#include <QMainWindow>
#include <QPlainTextEdit>
#include <QScrollBar>
#include <QStandardItemModel>
#include <QTableView>
#include <QTemporaryDir>
#include <QTest>
#include <QTextCursor>

namespace {

//! Counts the questions for data.
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

//! A table without a window that would ask for data itself, and the pane below it.
struct Scene
{
    explicit Scene(QAbstractItemModel *model)
    {
        table.setModel(model);
        pane.setParent(&window, pane.windowFlags());
        window.addDockWidget(Qt::BottomDockWidgetArea, &pane);
        pane.followTable();
    }
    ~Scene() { pane.setParent(nullptr); }
    void show()
    {
        window.show();
        pane.show();
    }
    QString text() const { return pane.text()->toPlainText(); }

    QTableView table;         //!< never shown
    QMainWindow window;       //!< of the pane
    DetailPane pane {&table}; //!< under test
};

QString dumpLine(const char *offset, const char *bytes, const char *ascii)
{
    return QString::fromLatin1(offset) + QLatin1String("  ")
        + QString::fromLatin1(bytes).leftJustified(47) + QLatin1String("  ")
        + QString::fromLatin1(ascii);
}

} // namespace

class tst_DetailPane : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void showsRowsOfFiles_data();
    void showsRowsOfFiles();
    void showsEncodedRows();
    void leavesOutWhatIsTooMuch_data();
    void leavesOutWhatIsTooMuch();
    void readsRowsOutsideAsNothing();
    void indentsJson_data();
    void indentsJson();
    void cutsJson();
    void showsColumns();
    void followsTheCurrentRow();
    void followsChanges();
    void keepsItsPlaceInTheSameRow();
    void wrapsLongLinesAnywhere();
    void asksNothingWhileHidden();
    void followsThroughFilters();
    void hasAnAction();
    void copiesWhatIsSelected();
    void showsColorsOfTerminals();

private:
    std::unique_ptr<FileWindow> openFile(const QByteArray &bytes);

    FrameStatistics m_statistics;               //!< of all windows
    std::unique_ptr<QTemporaryDir> m_directory; //!< one per test
    QString m_path;                             //!< of the file under test
};

void tst_DetailPane::init()
{
    m_directory = std::make_unique<QTemporaryDir>();
    m_path = m_directory->filePath("file.txt");
}

//! A window on a file of \a bytes, shown and completely indexed.
std::unique_ptr<FileWindow> tst_DetailPane::openFile(const QByteArray &bytes)
{
    QFile file(m_path);
    [&] {
        QVERIFY(file.open(QIODevice::WriteOnly));
        QCOMPARE(file.write(bytes), bytes.size());
    }();
    file.close();
    auto window = std::make_unique<FileWindow>(m_path, FormatRequest(), &m_statistics);
    window->show();
    [&] {
        QTRY_COMPARE(window->model()->activity(), TextFileModel::Activity::Following);
        QTRY_COMPARE(window->model()->indexedBytes(), quint64(bytes.size()));
    }();
    return window;
}

void tst_DetailPane::showsRowsOfFiles_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<int>("row");
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("isDump");

    QTest::newRow("line") << QByteArray("one\n\ntwo words\r\n") << 2 << "two words" << false;
    QTest::newRow("empty line") << QByteArray("one\n\ntwo\n") << 1 << "" << false;
    QTest::newRow("line without an end") << QByteArray("one\ntwo") << 1 << "two" << false;
    QTest::newRow("control characters") << QByteArray("one\n\x1b[1mbold\x1b[0m\tand a \x07 bell\n")
                                        << 1 << "\x1b[1mbold\x1b[0m\tand a \x07 bell" << false;
    QTest::newRow("NUL") << QByteArray("one\nab\0c\n", 9) << 1
                         << dumpLine("00000000", "61 62 00 63 0a", "ab.c.") << true;
    QTest::newRow("one of nine is strange")
        << QByteArray("one\n\x01"
                      "abcdefgh\n")
        << 1 << dumpLine("00000000", "01 61 62 63 64 65 66 67 68 0a", ".abcdefgh.") << true;
    QTest::newRow("one of ten is strange") << QByteArray("one\n\x01"
                                                         "abcdefghi\n")
                                           << 1
                                           << "\x01"
                                              "abcdefghi"
                                           << false;
    QTest::newRow("dump of two lines")
        << QByteArray("\0"
                      "123456789abcdef~\x7f\n",
                      19)
        << 0
        << dumpLine("00000000", "00 31 32 33 34 35 36 37 38 39 61 62 63 64 65 66",
                    ".123456789abcdef")
            + '\n' + dumpLine("00000010", "7e 7f 0a", "~..")
        << true;
    QTest::newRow("JSON") << QByteArray("{\"b\":1,\"a\":[2,{}]}\n") << 0
                          << "{\n    \"b\": 1,\n    \"a\": [\n        2,\n        {}\n    ]\n}"
                          << false;
    const QByteArray records("name,long title,x\nn1,t1,1\n\"a \"\"b\"\"\",\"two\nlines\",\n"
                             "n3,\"{\"\"k\"\": 1}\",3\n");
    QTest::newRow("record") << records << 0 << "name:       n1\nlong title: t1\nx:          1"
                            << false;
    QTest::newRow("lines in quotes")
        << records << 1
        << "name:       a \"b\"\nlong title:\n    two\n    lines\nx:          " << false;
    QTest::newRow("JSON in a field")
        << records << 2
        << "name:       n3\nlong title:\n    {\n        \"k\": 1\n    }\nx:          3" << false;
    const QByteArray uneven("a,b\n1,2\n3,4,5\n4\n6,7\n8,9\n1,2\n3,4\n5,6\n7,8\n9,1\n2,3\n1,2\n3,4\n"
                            "5,6\n7,8\n9,1\n2,3\n1,2\n3,4\n5,6\n7,8\n9,1\n2,3\n");
    QTest::newRow("a longer record") << uneven << 1 << "a: 3\nb: 4\n3: 5" << false;
    QTest::newRow("a shorter record") << uneven << 2 << "a: 4\nb: \n3: " << false;
}

void tst_DetailPane::showsRowsOfFiles()
{
    QFETCH(const QByteArray, bytes);
    QFETCH(const int, row);
    const auto window = openFile(bytes);
    const RowDetails details = rowDetails(window->model()->index(row, 0));
    QTEST(details.text, "text");
    QTEST(details.isDump, "isDump");
}

void tst_DetailPane::showsEncodedRows()
{
    const auto window =
        openFile(QByteArray::fromHex("fffe 6100 0a00 3d00 d8 00") + QByteArray("\n\0", 2));
    QCOMPARE(rowDetails(window->model()->index(1, 0)).text, QString::fromUtf8("=Ø"));
}

void tst_DetailPane::leavesOutWhatIsTooMuch_data()
{
    QTest::addColumn<QByteArray>("line");
    QTest::addColumn<qsizetype>("size"); // of the text
    QTest::addColumn<bool>("isCut");

    constexpr qsizetype most = RowDetails::mostBytes;
    QTest::newRow("longer than a table shows")
        << QByteArray(TextFileModel::maximumLineBytes + 1, 'x')
        << qsizetype(TextFileModel::maximumLineBytes + 1) << false;
    // The end of the line counts, too.
    QTest::newRow("as long as can be") << QByteArray(most - 1, 'x') << most - 1 << false;
    QTest::newRow("longer") << QByteArray(most + 1, 'x') << most + 1 << true;
    QTest::newRow("cut character")
        << "x" + QByteArray("\xc3\xa9").repeated(most / 2) << most / 2 + 1 << true;
    constexpr qsizetype dumped = RowDetails::mostDumped;
    QTest::newRow("dump") << QByteArray(dumped - 1, '\0') << dumped / 16 * 76 - 1 << false;
    QTest::newRow("cut dump") << QByteArray(dumped, '\0') << dumped / 16 * 76 + 1 << true;
}

void tst_DetailPane::leavesOutWhatIsTooMuch()
{
    QFETCH(const QByteArray, line);
    const auto window = openFile("one\n" + line + "\ntwo\n");
    const QString text = rowDetails(window->model()->index(1, 0)).text;
    QTEST(text.size(), "size");
    QTEST(text.endsWith(QChar(0x2026)), "isCut");
}

void tst_DetailPane::readsRowsOutsideAsNothing()
{
    const auto window = openFile("one\ntwo\n");
    QCOMPARE(window->model()->rowBytes(1, 100), QByteArray("two\n"));
    QCOMPARE(window->model()->rowBytes(1, 2), QByteArray("tw"));
    QCOMPARE(window->model()->rowBytes(1, 0), QByteArray());
    QCOMPARE(window->model()->rowBytes(1, -1), QByteArray());
    QCOMPARE(window->model()->rowBytes(2, 100), QByteArray());
    QCOMPARE(window->model()->rowBytes(-1, 100), QByteArray());
    QCOMPARE(rowDetails({}).text, QString());
    QVERIFY(QFile::resize(m_path, 5)); // before the model has seen it
    QCOMPARE(window->model()->rowBytes(1, 100), QByteArray("t"));
}

void tst_DetailPane::indentsJson_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("json");

    QTest::newRow("nothing") << ""
                             << "";
    QTest::newRow("text") << "text"
                          << "";
    QTest::newRow("number") << "12"
                            << "";
    QTest::newRow("string") << "\"{}\""
                            << "";
    QTest::newRow("object that is none") << "{a}"
                                         << "";
    QTest::newRow("more behind it") << "{} {}"
                                    << "";
    QTest::newRow("not closed") << "[1, 2"
                                << "";
    QTest::newRow("empty object") << "{}"
                                  << "{}";
    QTest::newRow("empty array") << " [ ] "
                                 << "[]";
    QTest::newRow("empty in empty") << "[[],{}]"
                                    << "[\n    [],\n    {}\n]";
    QTest::newRow("members in their order") << "{\"b\" : 1 , \"a\":null}"
                                            << "{\n    \"b\": 1,\n    \"a\": null\n}";
    QTest::newRow("all digits") << "[12345678901234567890.10]"
                                << "[\n    12345678901234567890.10\n]";
    QTest::newRow("signs in strings") << R"(["{,:[", "\"]", "a b\\"])"
                                      << "[\n    \"{,:[\",\n    \"\\\"]\",\n    \"a b\\\\\"\n]";
    QTest::newRow("nested")
        << "{\"a\":{\"b\":[1]}}"
        << "{\n    \"a\": {\n        \"b\": [\n            1\n        ]\n    }\n}";
}

void tst_DetailPane::indentsJson()
{
    QFETCH(const QString, text);
    QTEST(indentedJson(text, 1000), "json");
}

void tst_DetailPane::cutsJson()
{
    const int depth = 500;
    const QString text =
        QString(depth, u'[') + QStringLiteral("1,").repeated(100'000) + u'1' + QString(depth, u']');
    const QString json = indentedJson(text, RowDetails::mostText);
    QVERIFY(json.endsWith(QChar(0x2026)));
    QVERIFY(json.size() >= RowDetails::mostText);
    QVERIFY(json.size() < RowDetails::mostText + 10'000);
}

void tst_DetailPane::showsColumns()
{
    QStandardItemModel model(1, 2);
    model.setHorizontalHeaderLabels({"A", "A name of more than twenty-four letters"});
    model.setItem(0, 0, new QStandardItem("a"));
    model.setItem(0, 1, new QStandardItem("b\nc"));
    QCOMPARE(rowDetails(model.index(0, 1)).text,
             QString("A: a\nA name of more than twenty-four letters:\n    b\n    c"));
    model.removeColumn(0);
    QCOMPARE(rowDetails(model.index(0, 0)).text, QString("b\nc"));
}

void tst_DetailPane::followsTheCurrentRow()
{
    QStandardItemModel model(3, 1);
    for (int row = 0; row < 3; ++row)
        model.setItem(row, 0, new QStandardItem("row " + QString::number(row)));
    Scene scene(&model);
    scene.show();
    QVERIFY(QTest::qWaitForWindowExposed(&scene.window));
    QCOMPARE(scene.text(), QString());
    scene.table.setCurrentIndex(model.index(1, 0));
    QTRY_COMPARE(scene.text(), QString("row 1"));
    model.removeRow(0);
    QCoreApplication::processEvents();
    QCOMPARE(scene.text(), QString("row 1"));
    model.removeRow(0);
    QTRY_COMPARE(scene.text(), QString("row 2"));
    model.clear();
    QTRY_COMPARE(scene.text(), QString());
    QVERIFY(!scene.pane.text()->placeholderText().isEmpty());
}

void tst_DetailPane::followsChanges()
{
    QStandardItemModel model(2, 2);
    model.setHorizontalHeaderLabels({"A", "B"});
    model.setItem(1, 0, new QStandardItem("a"));
    Scene scene(&model);
    scene.show();
    scene.table.setCurrentIndex(model.index(1, 0));
    QTRY_COMPARE(scene.text(), QString("A: a\nB: "));
    model.setData(model.index(1, 1), "b");
    QTRY_COMPARE(scene.text(), QString("A: a\nB: b"));
    model.setHeaderData(0, Qt::Horizontal, "C");
    QTRY_COMPARE(scene.text(), QString("C: a\nB: b"));
    QStandardItemModel other(1, 1);
    other.setItem(0, 0, new QStandardItem("other"));
    scene.table.setModel(&other);
    scene.table.setCurrentIndex(other.index(0, 0));
    scene.pane.followTable();
    QTRY_COMPARE(scene.text(), QString("other"));
    scene.table.setModel(nullptr);
    scene.pane.followTable();
    QTRY_COMPARE(scene.text(), QString());
}

void tst_DetailPane::keepsItsPlaceInTheSameRow()
{
    QStandardItemModel model(2, 1);
    model.setItem(0, 0, new QStandardItem(QStringLiteral("line\n").repeated(500)));
    model.setItem(1, 0, new QStandardItem(QStringLiteral("other\n").repeated(500)));
    Scene scene(&model);
    scene.show();
    scene.table.setCurrentIndex(model.index(0, 0));
    QScrollBar *bar = scene.pane.text()->verticalScrollBar();
    QTRY_VERIFY(bar->maximum() > 100);
    bar->setValue(100);
    model.setData(model.index(0, 0), QStringLiteral("line\n").repeated(600));
    QTRY_COMPARE(scene.pane.text()->blockCount(), 601);
    QCOMPARE(bar->value(), 100);
    scene.table.setCurrentIndex(model.index(1, 0));
    QTRY_COMPARE(scene.pane.text()->blockCount(), 501);
    QCOMPARE(bar->value(), 0);
}

//! To look for the ends of words in a line of a megabyte takes as long as to read it.
void tst_DetailPane::wrapsLongLinesAnywhere()
{
    QStandardItemModel model(3, 1);
    model.setItem(0, 0, new QStandardItem(QString(10'000, u'x')));
    model.setItem(1, 0, new QStandardItem(QLatin1String("one\n") + QString(10'001, u'x')));
    model.setItem(2, 0, new QStandardItem(QStringLiteral("line\n").repeated(10'000)));
    Scene scene(&model);
    scene.show();
    scene.table.setCurrentIndex(model.index(0, 0));
    QTRY_COMPARE(scene.text().size(), 10'000);
    QCOMPARE(scene.pane.text()->wordWrapMode(), QTextOption::WrapAtWordBoundaryOrAnywhere);
    scene.table.setCurrentIndex(model.index(1, 0));
    QTRY_COMPARE(scene.text().size(), 10'005);
    QCOMPARE(scene.pane.text()->wordWrapMode(), QTextOption::WrapAnywhere);
    scene.table.setCurrentIndex(model.index(2, 0));
    QTRY_COMPARE(scene.text().size(), 50'000);
    QCOMPARE(scene.pane.text()->wordWrapMode(), QTextOption::WrapAtWordBoundaryOrAnywhere);
}

void tst_DetailPane::asksNothingWhileHidden()
{
    AskedModel model(3, 1);
    for (int row = 0; row < 3; ++row)
        model.setItem(row, 0, new QStandardItem("row " + QString::number(row)));
    Scene scene(&model);
    scene.window.show();
    scene.pane.hide();
    scene.table.setCurrentIndex(model.index(1, 0));
    model.item(1, 0)->setText("changed");
    QCoreApplication::processEvents();
    QCOMPARE(model.asked(), 0);
    scene.pane.show();
    QTRY_COMPARE(scene.text(), QString("changed"));
    const int asked = model.asked();
    QVERIFY(asked > 0);
    // Others do not matter to it.
    model.item(0, 0)->setText("changed, too");
    model.item(2, 0)->setText("changed, too");
    QCoreApplication::processEvents();
    QCOMPARE(model.asked(), asked);
    scene.table.setCurrentIndex(model.index(2, 0));
    scene.pane.hide();
    QCoreApplication::processEvents();
    QCOMPARE(model.asked(), asked);
}

void tst_DetailPane::followsThroughFilters()
{
    const auto window = openFile("one\ntwo\nthree\nfour\n");
    window->rowPane()->show();
    const QPlainTextEdit *text = window->rowPane()->text();
    window->showLine(3);
    QTRY_COMPARE(text->toPlainText(), QString("three"));
    auto *panel = window->findChild<FindPanel *>();
    QVERIFY(panel);
    window->openFindWith("o");
    panel->toggleFilter();
    QTRY_COMPARE(window->rows(), 3);
    QTRY_COMPARE(text->toPlainText(), QString());
    window->table()->setCurrentIndex(window->table()->model()->index(2, 1));
    QTRY_COMPARE(text->toPlainText(), QString("four"));
    panel->removeFilter();
    QTRY_COMPARE(window->rows(), 4);
    QCoreApplication::processEvents();
    QCOMPARE(text->toPlainText(), QString("four"));
}

void tst_DetailPane::hasAnAction()
{
    const auto window = openFile("one\ntwo\n");
    QAction *action = window->rowPane()->toggleViewAction();
    QVERIFY(!window->rowPane()->isVisible());
    QCOMPARE(action->shortcut(), QKeySequence(Qt::CTRL | Qt::Key_D));
    QCOMPARE(action->text(), QString("&Row"));
    action->trigger();
    QVERIFY(window->rowPane()->isVisible());
    QVERIFY(action->isChecked());
    QVERIFY(window->rowPane()->text()->isReadOnly());
    action->trigger();
    QVERIFY(!window->rowPane()->isVisible());
}

//! By the same key that copies rows while the table has the focus.
void tst_DetailPane::copiesWhatIsSelected()
{
    const auto window = openFile("one\ntwo words\n");
    window->rowPane()->show();
    window->showLine(2);
    QPlainTextEdit *text = window->rowPane()->text();
    QTRY_COMPARE(text->toPlainText(), QString("two words"));
    window->activateWindow();
    text->setFocus();
    QTRY_VERIFY(text->hasFocus());
    text->moveCursor(QTextCursor::Start);
    text->moveCursor(QTextCursor::EndOfWord, QTextCursor::KeepAnchor);
    QTest::keySequence(text, QKeySequence::Copy);
    QCOMPARE(QGuiApplication::clipboard()->text(), QString("two"));
    window->table()->setFocus();
    QTest::keySequence(window->table(), QKeySequence::Copy);
    QCOMPARE(QGuiApplication::clipboard()->text(), QString("2\ttwo words"));
}

void tst_DetailPane::showsColorsOfTerminals()
{
    QStandardItemModel model(1, 1);
    model.setItem(0, 0, new QStandardItem("a \x1b[1;33mwarning\x1b[0m b"));
    Scene scene(&model);
    scene.show();
    scene.table.setCurrentIndex(model.index(0, 0));
    QTRY_COMPARE(scene.pane.text()->toPlainText(), QString("a warning b"));
    const auto formatAt = [&](int place) {
        QTextCursor cursor(scene.pane.text()->document());
        cursor.setPosition(place + 1);
        return cursor.charFormat();
    };
    QVERIFY(formatAt(5).fontWeight() > QFont::Normal);
    const QColor paper = scene.pane.text()->palette().color(QPalette::Base);
    const QColor color = formatAt(5).foreground().color();
    QVERIFY(color != scene.pane.text()->palette().color(QPalette::Text));
    QVERIFY(contrast(color, paper) >= readableContrast);
    QVERIFY(formatAt(0).fontWeight() <= QFont::Normal);
    QVERIFY(formatAt(10).fontWeight() <= QFont::Normal);
    QPalette dark(QColor(0x30, 0x30, 0x30), QColor(0x10, 0x10, 0x10));
    scene.pane.setPalette(dark);
    QTRY_VERIFY(formatAt(5).foreground().color() != color);
    QVERIFY(contrast(formatAt(5).foreground().color(),
                     scene.pane.text()->palette().color(QPalette::Base))
            >= readableContrast);
}

QTEST_MAIN(tst_DetailPane)

#include "tst_detailpane.moc"
