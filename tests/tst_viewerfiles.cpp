// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

// Files to which strange things happen while somebody looks at them, from the first key to the
// last.

#include "files/textfilemodel.h"
#include "search/findpanel.h"
#include "windows/detailpane.h"
#include "windows/filewindow.h"
#include "windows/framestatistics.h"
#include "windows/viewertable.h"

#include <QDir>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QRandomGenerator>
#include <QScrollBar>
#include <QStatusBar>
#include <QTemporaryDir>
#include <QTest>

#include "activation.h"

using Activity = TextFileModel::Activity;

class tst_ViewerFiles : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void hundredGigabytes();
    void becomesAFolderAndAFileAgain();
    void fillsWithBinary();
    void vanishesUnderAFilter();
    void growsUnderEveryKey();

private:
    void write(const QByteArray &text, QIODevice::OpenMode mode = QIODevice::WriteOnly) const;
    std::unique_ptr<FileWindow> open();
    static void press(FileWindow *window, Qt::Key key, Qt::KeyboardModifiers modifiers = {});
    static QString cell(const FileWindow &window, int row);
    static bool tells(const FileWindow &window, const QString &text);

    FrameStatistics m_statistics;
    std::unique_ptr<QTemporaryDir> m_folder; //!< one per test
    QString m_path;                          //!< of the file under test
};

void tst_ViewerFiles::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    QVERIFY(m_folder->isValid());
    m_path = m_folder->filePath("file.log");
}

void tst_ViewerFiles::write(const QByteArray &text, QIODevice::OpenMode mode) const
{
    QFile file(m_path);
    QVERIFY(file.open(mode | QIODevice::Unbuffered));
    QCOMPARE(file.write(text), text.size());
}

std::unique_ptr<FileWindow> tst_ViewerFiles::open()
{
    auto window = std::make_unique<FileWindow>(m_path, FormatRequest(), &m_statistics);
    window->show();
    activate(window.get());
    return window;
}

void tst_ViewerFiles::press(FileWindow *window, Qt::Key key, Qt::KeyboardModifiers modifiers)
{
    QWidget *focus = window->focusWidget();
    QTest::keyClick(focus ? focus : window->table(), key, modifiers);
}

QString tst_ViewerFiles::cell(const FileWindow &window, int row)
{
    return window.table()->model()->index(row, 1).data().toString();
}

bool tst_ViewerFiles::tells(const FileWindow &window, const QString &text)
{
    const auto labels = window.statusBar()->findChildren<QLabel *>();
    return std::any_of(labels.begin(), labels.end(),
                       [&](const QLabel *label) { return label->text() == text; });
}

//! All of it takes a minute to read: what is there can be looked at meanwhile, and left.
void tst_ViewerFiles::hundredGigabytes()
{
    constexpr qint64 size = qint64(100) << 30;
    QByteArray lines;
    for (int line = 1; line <= 2000; ++line)
        lines += "line " + QByteArray::number(line) + '\n';
    write(lines);
    if (!QFile::resize(m_path, size))
        QSKIP("No file of that size can be made here.");
    const auto window = open();
    QTRY_COMPARE(window->rows(), 2001);
    QCOMPARE(window->model()->activity(), Activity::Indexing);
    QTRY_COMPARE(window->model()->fileSize(), quint64(size));
    press(window.get(), Qt::Key_Home, Qt::ControlModifier);
    QCOMPARE(window->table()->rowAt(0), 0);
    QCOMPARE(cell(*window, 0), "line 1");
    QCOMPARE(cell(*window, 1999), "line 2000");
    window->openFindWith("line 1234");
    press(window.get(), Qt::Key_Return);
    QTRY_COMPARE(window->table()->currentIndex().row(), 1233);
    press(window.get(), Qt::Key_Escape);
    QVERIFY(!window->findChild<FindPanel *>()->isVisible());
    press(window.get(), Qt::Key_Escape);
    QTRY_COMPARE(window->model()->activity(), Activity::Stopped);
    QTRY_VERIFY(tells(*window, "Paused"));
    const quint64 read = window->model()->indexedBytes();
    QVERIFY(read < quint64(size));
    QVERIFY(window->model()->indexMemory() < 1 << 20);
    QVERIFY(window->close());
}

void tst_ViewerFiles::becomesAFolderAndAFileAgain()
{
    write("one\ntwo\n");
    const auto window = open();
    QTRY_COMPARE(window->rows(), 2);
    window->showLine(1);
    QVERIFY(QFile::remove(m_path));
    QVERIFY(QDir().mkpath(m_path + "/within"));
    QTRY_VERIFY(window->model()->isMissing());
    QCOMPARE(cell(*window, 1), "two"); // what it held
    press(window.get(), Qt::Key_F5);
    QTRY_VERIFY(window->hasFailed());
    QVERIFY(QDir(m_path).removeRecursively());
    write("three\n");
    QTRY_COMPARE(window->rows(), 1);
    QVERIFY(!window->hasFailed());
    QCOMPARE(cell(*window, 0), "three");
}

void tst_ViewerFiles::fillsWithBinary()
{
    QByteArray text;
    for (int line = 0; line < 100; ++line)
        text += "text\n";
    write(text);
    const auto window = open();
    QTRY_COMPARE(window->rows(), 100);
    QRandomGenerator random(20261122);
    QByteArray bytes;
    for (int i = 0; i < 300000; ++i)
        bytes += char(random.bounded(256));
    write(bytes + "\nlast\n", QIODevice::Append);
    const int rows = 100 + int(bytes.count('\n')) + 2;
    QTRY_COMPARE(window->rows(), rows);
    QCOMPARE(cell(*window, rows - 1), "last");
    press(window.get(), Qt::Key_D, Qt::ControlModifier);
    QVERIFY(window->rowPane()->isVisible());
    window->showLine(102);
    QTRY_VERIFY(window->rowPane()->text()->toPlainText().startsWith("00000000"));
    for (int i = 0; i < 20; ++i) {
        press(window.get(), Qt::Key_PageDown);
        window->table()->grab();
    }
    window->openFindWith("last");
    press(window.get(), Qt::Key_Return);
    QTRY_COMPARE(window->table()->currentIndex().row(), rows - 1);
}

void tst_ViewerFiles::vanishesUnderAFilter()
{
    QByteArray text;
    for (int line = 0; line < 3000; ++line)
        text += line % 3 == 0 ? "hit\n" : "other\n";
    write(text);
    const auto window = open();
    QTRY_COMPARE(window->rows(), 3000);
    window->openFindWith("hit");
    window->findChild<FindPanel *>()->toggleFilter();
    QTRY_COMPARE(window->rows(), 1000);
    QVERIFY(QFile::remove(m_path));
    QTRY_VERIFY(tells(*window, "The file was deleted; this is what it held"));
    QCOMPARE(window->rows(), 1000);
    press(window.get(), Qt::Key_End, Qt::ControlModifier);
    QCOMPARE(cell(*window, 999), "hit");
    write("hit again\nother\nhit\n");
    QTRY_COMPARE(window->rows(), 2);
    QCOMPARE(cell(*window, 0), "hit again");
    press(window.get(), Qt::Key_Escape);
    QTRY_COMPARE(window->rows(), 3);
}

//! Keys do what they do in a table, whatever comes in between.
void tst_ViewerFiles::growsUnderEveryKey()
{
    const auto lines = [](int first, int last) {
        QByteArray text;
        for (int line = first; line <= last; ++line)
            text += "line " + QByteArray::number(line) + '\n';
        return text;
    };
    write(lines(1, 200));
    const auto window = open();
    QTRY_COMPARE(window->rows(), 200);
    window->table()->setFocus();
    window->showLine(50);
    int written = 200;
    int current = 49;
    const auto step = [&](Qt::Key key, int row) {
        write(lines(written + 1, written + 10), QIODevice::Append);
        press(window.get(), key);
        QCOMPARE(window->table()->currentIndex().row(), row);
        written += 10;
        QTRY_COMPARE(window->rows(), written);
        QCOMPARE(window->table()->currentIndex().row(), row);
    };
    for (int i = 0; i < 3; ++i)
        step(Qt::Key_Down, ++current);
    for (int i = 0; i < 2; ++i)
        step(Qt::Key_Up, --current);
    step(Qt::Key_Right, current);
    step(Qt::Key_Left, current);
    press(window.get(), Qt::Key_Down, Qt::ShiftModifier);
    QCOMPARE(window->table()->selectionModel()->selectedRows().size(), 2);
    press(window.get(), Qt::Key_End, Qt::ControlModifier);
    QCOMPARE(window->table()->currentIndex().row(), written - 1);
    QCOMPARE(window->table()->selectionModel()->selectedRows().size(), 1);
}

QTEST_MAIN(tst_ViewerFiles)
#include "tst_viewerfiles.moc"
