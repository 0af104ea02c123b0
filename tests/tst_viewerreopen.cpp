// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

// Opening a file again: on demand, in another format, when it appears.

#include "files/textfile.h"
#include "files/textfilemodel.h"
#include "gzip.h"
#include "overview/marksmenu.h"
#include "search/findpanel.h"
#include "windows/filewindow.h"
#include "windows/formatmenu.h"
#include "windows/framestatistics.h"
#include "windows/viewertable.h"

#include <QAction>
#include <QActionGroup>
#include <QDir>
#include <QFile>
#include <QHeaderView>
#include <QItemSelectionModel>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QSignalSpy>
#include <QStatusBar>
#include <QTemporaryDir>
#include <QTest>
#include <QToolButton>

#include <algorithm>

namespace {

QByteArray numberedLines(int first, int last)
{
    QByteArray text;
    for (int line = first; line <= last; ++line)
        text += "line " + QByteArray::number(line) + '\n';
    return text;
}

QAction *actionNamed(const QMenu *menu, const QString &text)
{
    const QList<QAction *> actions = menu->actions();
    for (QAction *action : actions) {
        if (QString(action->text()).remove(u'&') == text)
            return action;
    }
    return nullptr;
}

QMenu *menuNamed(const FileWindow *window, const QString &text)
{
    for (const QAction *action : window->menuBar()->actions()) {
        if (QString(action->text()).remove(u'&') == text)
            return action->menu();
    }
    return nullptr;
}

} // namespace

class tst_ViewerReopen : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void waitsForAFile();
    void waitsForAFileInAFolderToCome();
    void waitsForAFileInPlaceOfAFolder();
    void readsAnew();
    void keepsRowAndFilter();
    void keepsMarks();
    void keepsToTheEnd();
    void leavesStandardInputAlone();
    void choosesEncoding();
    void choosesColumns();
    void choosesLogs();
    void choosesFirstLine();
    void keepsWhatTheMenuCannotSay();
    void tellsFormat();
    void tellsWhatHappened_data();
    void tellsWhatHappened();
    void tellsOnceWhatHappened();
    void offersRotatedFiles();
    void keepsTheRowAmongRotatedFiles();
    void tellsOfDamagedFiles();
    void tellsWhatItKeeps();

private:
    void write(const QByteArray &text) const;
    std::unique_ptr<FileWindow> open(const QByteArray &text, const FormatRequest &request = {});
    void choose(FileWindow *window, const QString &part, const QString &choice) const;
    QString cell(const FileWindow *window, int row, int column) const;

    FrameStatistics m_statistics;
    std::unique_ptr<QTemporaryDir> m_directory; //!< one per test
    QString m_path;                             //!< of the file under test
};

void tst_ViewerReopen::init()
{
    m_directory = std::make_unique<QTemporaryDir>();
    m_path = m_directory->filePath("file.txt");
}

void tst_ViewerReopen::write(const QByteArray &text) const
{
    QFile file(m_path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(text), text.size());
}

std::unique_ptr<FileWindow> tst_ViewerReopen::open(const QByteArray &text,
                                                   const FormatRequest &request)
{
    write(text);
    auto window = std::make_unique<FileWindow>(m_path, request, &m_statistics);
    window->show();
    return window;
}

//! Chooses from the menu that the status bar opens.
void tst_ViewerReopen::choose(FileWindow *window, const QString &part, const QString &choice) const
{
    auto *menu = window->findChild<FormatMenu *>();
    Q_EMIT menu->aboutToShow();
    QAction *const section = actionNamed(menu, part);
    QVERIFY2(section, qPrintable(part));
    QAction *const chosen = actionNamed(section->menu(), choice);
    QVERIFY2(chosen, qPrintable(choice));
    chosen->trigger();
    Q_EMIT menu->aboutToShow();
    QVERIFY(chosen->isChecked());
}

QString tst_ViewerReopen::cell(const FileWindow *window, int row, int column) const
{
    return window->table()->model()->index(row, column).data().toString();
}

void tst_ViewerReopen::waitsForAFile()
{
    FileWindow window(m_path, {}, &m_statistics);
    window.show();
    QTRY_VERIFY(window.hasFailed());
    QVERIFY(!window.table()->isVisible());
    QVERIFY(window.isSettled());
    write(numberedLines(1, 3));
    QTRY_COMPARE(window.rows(), 3);
    QVERIFY(!window.hasFailed());
    QVERIFY(window.table()->isVisible());
    QVERIFY(window.isFollowing());
    write(numberedLines(1, 4));
    QTRY_COMPARE(window.rows(), 4);
}

void tst_ViewerReopen::waitsForAFileInAFolderToCome()
{
    m_path = m_directory->filePath("folder/file.txt");
    FileWindow window(m_path, {}, &m_statistics);
    window.show();
    QTRY_VERIFY(window.hasFailed());
    QVERIFY(QDir().mkpath(m_directory->filePath("folder")));
    write("a\n");
    QTRY_COMPARE(window.rows(), 1);
}

void tst_ViewerReopen::waitsForAFileInPlaceOfAFolder()
{
    QVERIFY(QDir().mkpath(m_path));
    FileWindow window(m_path, {}, &m_statistics);
    window.show();
    QTRY_VERIFY(window.hasFailed());
    QVERIFY(QDir().rmdir(m_path));
    write("a\n");
    QTRY_COMPARE(window.rows(), 1);
    QVERIFY(!window.hasFailed());
}

void tst_ViewerReopen::readsAnew()
{
    const auto window = open(numberedLines(1, 20));
    QTRY_COMPARE(window->rows(), 20);
    window->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(window.get()));
    const TextFileModel *former = window->model();
    QTest::keyClick(window->table(), Qt::Key_F5);
    QVERIFY(window->model() != former);
    QTRY_COMPARE(window->rows(), 20);
    QVERIFY(window->isFollowing());
}

void tst_ViewerReopen::keepsRowAndFilter()
{
    const auto window = open(numberedLines(1, 2000));
    QTRY_COMPARE(window->rows(), 2000);
    auto *panel = window->findChild<FindPanel *>();
    window->openFindWith("9");
    panel->filter(panel->field()->text());
    QTRY_VERIFY(window->rows() < 2000);
    const int shown = window->rows();
    window->showLine(1234); // not shown itself
    const QString current = cell(window.get(), window->table()->currentIndex().row(), 1);
    QCOMPARE(current, QStringLiteral("line 1239"));
    window->reopen(window->request());
    QTRY_COMPARE(window->rows(), shown);
    QTRY_VERIFY(window->table()->currentIndex().isValid());
    QCOMPARE(cell(window.get(), window->table()->currentIndex().row(), 1), current);
    QVERIFY(!window->isFollowing());
}

void tst_ViewerReopen::keepsMarks()
{
    const auto window = open(numberedLines(1, 2000));
    QTRY_COMPARE(window->rows(), 2000);
    const MarkedRows *marks = window->findChild<MarksMenu *>()->marks();
    window->showLine(7);
    window->findChild<MarksMenu *>()->markAction()->trigger();
    window->showLine(1500);
    window->findChild<MarksMenu *>()->markAction()->trigger();
    QCOMPARE(marks->rows(), QList<int>({6, 1499}));
    window->reopen(window->request());
    QTRY_COMPARE(window->rows(), 2000);
    QTRY_COMPARE(marks->rows(), QList<int>({6, 1499}));
    write(numberedLines(1, 100) + numberedLines(1, 1900)); // other lines from the 101st on
    window->reopen(window->request());
    QTRY_COMPARE(window->rows(), 2000);
    QTRY_COMPARE(marks->rows(), QList<int> {6});
}

void tst_ViewerReopen::keepsToTheEnd()
{
    const auto window = open(numberedLines(1, 2000));
    QTRY_COMPARE(window->rows(), 2000);
    window->reopen(window->request());
    QTRY_COMPARE(window->rows(), 2000);
    QVERIFY(window->isFollowing());
    const ViewerTable *table = window->table();
    QTRY_VERIFY(table->viewport()->rect().contains(
        table->visualRect(table->model()->index(1999, 1)).center()));
}

void tst_ViewerReopen::leavesStandardInputAlone()
{
    FileWindow window("-", {}, &m_statistics);
    const TextFileModel *model = window.model();
    window.reopen({});
    QCOMPARE(window.model(), model);
    QVERIFY(!window.findChild<FormatMenu *>()->isEnabled());
}

void tst_ViewerReopen::choosesEncoding()
{
    const auto window = open("gr\xfc\xdf\n");
    QTRY_COMPARE(window->rows(), 1);
    QCOMPARE(cell(window.get(), 0, 1), QString::fromUtf8("grüß"));
    choose(window.get(), "Encoding", "UTF-8");
    QTRY_COMPARE(window->rows(), 1);
    QCOMPARE(cell(window.get(), 0, 1), QString::fromUtf8("gr\uFFFD\uFFFD"));
    choose(window.get(), "Encoding", "Recognised");
    QTRY_COMPARE(window->rows(), 1);
    QCOMPARE(cell(window.get(), 0, 1), QString::fromUtf8("grüß"));
    QVERIFY(!window->request().encoding);
}

void tst_ViewerReopen::choosesColumns()
{
    const auto window = open("1,2;3\n4,5;6\n");
    QTRY_COMPARE(window->rows(), 2);
    choose(window.get(), "Columns", "comma");
    QTRY_COMPARE(window->rows(), 2);
    QCOMPARE(cell(window.get(), 1, 1), QStringLiteral("5;6"));
    choose(window.get(), "Columns", "semicolon");
    QTRY_COMPARE(window->rows(), 2);
    QCOMPARE(cell(window.get(), 1, 0), QStringLiteral("4,5"));
    choose(window.get(), "Columns", "no columns");
    QTRY_COMPARE(window->rows(), 2);
    QCOMPARE(cell(window.get(), 1, 1), QStringLiteral("4,5;6"));
}

void tst_ViewerReopen::choosesLogs()
{
    const auto window = open("{\"a\": 1, \"b\": \"x\"}\n{\"b\": 2}\n");
    QTRY_COMPARE(window->rows(), 2);
    QCOMPARE(window->table()->model()->columnCount(), 3);
    QCOMPARE(cell(window.get(), 0, 0), QStringLiteral("1"));
    QCOMPARE(cell(window.get(), 1, 1), QStringLiteral("2"));
    choose(window.get(), "Columns", "logfmt");
    QTRY_COMPARE(window->rows(), 2);
    QCOMPARE(window->table()->model()->columnCount(), 1);
    choose(window.get(), "Columns", "no columns");
    QTRY_COMPARE(window->rows(), 2);
    QCOMPARE(cell(window.get(), 1, 1), QStringLiteral("{\"b\": 2}"));
    choose(window.get(), "Columns", "JSON lines");
    QTRY_COMPARE(window->rows(), 2);
    QCOMPARE(cell(window.get(), 0, 1), QStringLiteral("x"));
    choose(window.get(), "Columns", "comma");
    QTRY_COMPARE(window->model()->format().delimiter, QChar(u','));
}

void tst_ViewerReopen::choosesFirstLine()
{
    const auto window = open("a,b\nc,d\ne,f\n");
    QTRY_COMPARE(window->rows(), 2);
    choose(window.get(), "First Line", "Is a Row");
    QTRY_COMPARE(window->rows(), 3);
    choose(window.get(), "First Line", "Names the Columns");
    QTRY_COMPARE(window->rows(), 2);
}

void tst_ViewerReopen::keepsWhatTheMenuCannotSay()
{
    FormatRequest request;
    request.delimiter = u'x';
    request.encoding = Encoding::named("ISO-8859-15");
    if (!request.encoding)
        request.encoding = Encoding::named("latin-1");
    const auto window = open("1x2\n3x4\n", request);
    QTRY_COMPARE(window->rows(), 2);
    choose(window.get(), "First Line", "Names the Columns");
    QTRY_COMPARE(window->rows(), 1);
    QCOMPARE(window->request().delimiter, request.delimiter);
    QVERIFY(window->request().encoding == request.encoding);
    QCOMPARE(cell(window.get(), 0, 1), QStringLiteral("4"));
}

void tst_ViewerReopen::tellsFormat()
{
    const auto window = open("a;b\nc;d\n");
    QTRY_COMPARE(window->rows(), 1);
    const auto *menu = window->findChild<FormatMenu *>();
    const auto buttons = window->statusBar()->findChildren<QToolButton *>();
    const auto it = std::find_if(buttons.begin(), buttons.end(),
                                 [menu](const QToolButton *b) { return b->menu() == menu; });
    QVERIFY(it != buttons.end());
    QTRY_COMPARE((*it)->text(), QStringLiteral("ASCII, semicolon"));
}

void tst_ViewerReopen::tellsWhatHappened_data()
{
    QTest::addColumn<QString>("event");
    QTest::addColumn<QString>("message");
    QTest::newRow("shortened") << "shortened"
                               << "The file was shortened, and is shown from its beginning.";
    QTest::newRow("replaced") << "replaced"
                              << "Another file has taken its name, and is shown now.";
}

void tst_ViewerReopen::tellsWhatHappened()
{
    QFETCH(QString, event);
    QFETCH(QString, message);
    const auto window = open(numberedLines(1, 20));
    QTRY_COMPARE(window->rows(), 20);
    QVERIFY(window->statusBar()->currentMessage().isEmpty());
    if (event == QLatin1String("replaced"))
        QVERIFY(QFile::rename(m_path, m_path + ".1"));
    write("x\ny\n");
    QTRY_COMPARE(window->rows(), 2);
    QCOMPARE(window->statusBar()->currentMessage(), message);
}

//! That the text has other columns now is no other file.
void tst_ViewerReopen::tellsOnceWhatHappened()
{
    const auto window = open(numberedLines(1, 20));
    QTRY_COMPARE(window->rows(), 20);
    write("a,b\n");
    QTRY_COMPARE(window->rows(), 1);
    QVERIFY(!window->statusBar()->currentMessage().isEmpty());
    window->statusBar()->clearMessage();
    QSignalSpy reset(window->model(), &QAbstractItemModel::modelReset);
    QFile file(m_path);
    QVERIFY(file.open(QIODevice::Append));
    QCOMPARE(file.write("1,2\n3,4\n"), 8);
    file.close();
    QTRY_VERIFY(window->model()->format().isDelimited());
    QVERIFY(!reset.isEmpty());
    QCOMPARE(window->statusBar()->currentMessage(), QString());
}

void tst_ViewerReopen::offersRotatedFiles()
{
    const auto window = open("a\n");
    QTRY_COMPARE(window->rows(), 1);
    QMenu *const menu = menuNamed(window.get(), "View");
    QVERIFY(menu);
    QAction *const older = actionNamed(menu, "With Rotated Files");
    QVERIFY(older);
    Q_EMIT menu->aboutToShow();
    QVERIFY(!older->isEnabled());
    QFile file(m_path + ".1");
    QVERIFY(file.open(QIODevice::WriteOnly | QIODevice::Unbuffered));
    file.write("x\ny\n");
    Q_EMIT menu->aboutToShow();
    QVERIFY(older->isEnabled());
    QVERIFY(!older->isChecked());
    older->trigger();
    QVERIFY(window->request().hasOlderFiles);
    QTRY_COMPARE(window->rows(), 3);
    QVERIFY(window->windowTitle().contains("with rotated files"));
    older->trigger();
    QTRY_COMPARE(window->rows(), 1);
    QVERIFY(!window->windowTitle().contains("with rotated files"));
}

void tst_ViewerReopen::keepsTheRowAmongRotatedFiles()
{
    const auto window = open(numberedLines(1, 1000));
    QTRY_COMPARE(window->rows(), 1000);
    QFile file(m_path + ".1");
    QVERIFY(file.open(QIODevice::WriteOnly | QIODevice::Unbuffered));
    file.write(numberedLines(-499, 0));
    window->showLine(700);
    QCOMPARE(cell(window.get(), 699, 1), "line 700");
    QAction *const older = actionNamed(menuNamed(window.get(), "View"), "With Rotated Files");
    older->setEnabled(true);
    older->trigger();
    QTRY_COMPARE(window->rows(), 1500);
    QTRY_COMPARE(window->table()->currentIndex().row(), 1199);
    QCOMPARE(cell(window.get(), 1199, 1), "line 700");
    older->trigger();
    QTRY_COMPARE(window->rows(), 1000);
    QTRY_COMPARE(window->table()->currentIndex().row(), 699);
}

void tst_ViewerReopen::tellsOfDamagedFiles()
{
#ifndef VIEWER_HAS_LIBARCHIVE
    QSKIP("This build reads no compressed files.");
#endif
    QFile file(m_path + ".1.gz");
    QVERIFY(file.open(QIODevice::WriteOnly | QIODevice::Unbuffered));
    file.write("\x1f\x8b\x08", 3);
    FormatRequest request;
    request.hasOlderFiles = true;
    const auto window = open("a\n", request);
    QTRY_COMPARE(window->rows(), 1);
    const auto labels = window->statusBar()->findChildren<QLabel *>();
    const auto told = [&] {
        return std::any_of(labels.begin(), labels.end(), [](const QLabel *label) {
            return label->text() == "Not all files could be read"
                && label->toolTip().contains("file.txt.1.gz");
        });
    };
    QTRY_VERIFY(told());
}

void tst_ViewerReopen::tellsWhatItKeeps()
{
    const auto told = [](const FileWindow &window) {
        QStringList tips;
        for (const QLabel *label : window.statusBar()->findChildren<QLabel *>())
            tips.append(label->toolTip());
        return tips.join(u'\n');
    };
    const auto plain = open(numberedLines(1, 10));
    QTRY_COMPARE(plain->rows(), 10);
    QTRY_VERIFY(told(*plain).contains("index of lines"));
    QVERIFY(!told(*plain).contains("copy"));
#ifdef VIEWER_HAS_LIBARCHIVE
    const auto compressed = open(gzip(numberedLines(1, 10)));
    QTRY_COMPARE(compressed->rows(), 10);
    QTRY_VERIFY(told(*compressed).contains("copy"));
    QVERIFY(told(*compressed).contains(QDir::toNativeSeparators(TextFile::copyFolder())));
#endif
}

QTEST_MAIN(tst_ViewerReopen)

#include "tst_viewerreopen.moc"
