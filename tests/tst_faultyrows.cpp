// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "basics/contrast.h"
#include "files/loglevel.h"
#include "files/textfilemodel.h"
#include "overview/faultguide.h"
#include "overview/marksmenu.h"
#include "search/findpanel.h"
#include "windows/filewindow.h"
#include "windows/framestatistics.h"
#include "windows/viewertable.h"

#include <QApplication>
#include <QFile>
#include <QHelpEvent>
#include <QLineEdit>
#include <QSettings>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>
#include <QToolButton>
#include <QToolTip>

class tst_FaultyRows : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanup();
    void countsByKind();
    void nothingIsDropped();
    void goodFilesAreQuiet_data();
    void goodFilesAreQuiet();
    void keysLeadToThem();
    void goesToThoseThatAreShown();
    void marksThem_data();
    void marksThem();
    void tellsWhatIsWrong();
    void followsTheFile();
    void looksAtOtherEncodings();
    void longRecordsAreNotBlamed();
    void otherFormatsHaveNone();

private:
    void write(const QByteArray &text, QIODevice::OpenMode mode = QIODevice::WriteOnly) const;
    void open(const QByteArray &text,
              const FormatRequest &request = {.delimiter = u',', .hasHeader = {}});
    void press(Qt::KeyboardModifiers modifiers = {}) const
    {
        QTest::keyClick(m_table, Qt::Key_F8, modifiers);
    }
    int current() const { return m_table->currentIndex().row(); }
    const FaultyRows &faults() const { return m_window->findChild<FaultGuide *>()->rows(); }
    QToolButton *button() const { return m_window->findChild<QToolButton *>("faultsButton"); }

    std::unique_ptr<QTemporaryDir> m_folder;
    FrameStatistics m_statistics;
    std::unique_ptr<FileWindow> m_window;
    ViewerTable *m_table = nullptr;
};

namespace {

// Rows 1 (text behind a quote), 3 (few), 4 (many), 6 (an open quote).
const QByteArray s_faulty = "name,size,when\n"
                            "\"plum\",1,now\n"
                            "\"pear\"s,2,now\n"
                            "\"two\nlines\",3,now\n"
                            "fig,4\n"
                            "apple,5,now,then\n"
                            "\n"
                            "cherry,\"6,now\n";

} // namespace

void tst_FaultyRows::initTestCase()
{
    QStandardPaths::setTestModeEnabled(true);
    QCoreApplication::setOrganizationName(QStringLiteral("vantix-test"));
    QCoreApplication::setApplicationName(QStringLiteral("tst_faultyrows"));
    QSettings().clear();
}

void tst_FaultyRows::cleanup()
{
    m_window.reset();
}

void tst_FaultyRows::write(const QByteArray &text, QIODevice::OpenMode mode) const
{
    QFile file(m_folder->filePath("a.csv"));
    QVERIFY(file.open(mode));
    QCOMPARE(file.write(text), text.size());
}

void tst_FaultyRows::open(const QByteArray &text, const FormatRequest &request)
{
    m_folder = std::make_unique<QTemporaryDir>();
    write(text);
    m_window = std::make_unique<FileWindow>(m_folder->filePath("a.csv"), request, &m_statistics);
    m_table = m_window->table();
    m_window->resize(700, 400);
    m_window->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_window.get()));
    QTRY_COMPARE(m_window->model()->activity(), TextFileModel::Activity::Following);
    QTRY_VERIFY(faults().isComplete());
    m_window->setFollowing(false);
}

void tst_FaultyRows::countsByKind()
{
    open(s_faulty);
    QCOMPARE(m_window->rows(), 7);
    QTRY_VERIFY(button()->isVisible());
    QCOMPARE(button()->text(), QString("Malformed: 4"));
    for (const char *line : {"Quotes that nothing closes: 1", "Text after a closing quote: 1",
                             "Fewer fields than the header: 1", "More fields than the header: 1"})
        QVERIFY2(button()->toolTip().contains(line), line);
    QCOMPARE(faults().rows(), QList<int>({1, 3, 4, 6}));
}

//! Each line of the file is in the table as it stands.
void tst_FaultyRows::nothingIsDropped()
{
    open(s_faulty);
    const auto texts = [this](int row) {
        QStringList texts;
        for (int column = 0; column < m_table->model()->columnCount(); ++column)
            texts.append(m_table->model()->index(row, column).data().toString());
        while (!texts.isEmpty() && texts.constLast().isEmpty())
            texts.removeLast();
        return texts;
    };
    QCOMPARE(texts(1), QStringList({"pears", "2", "now"}));
    QCOMPARE(texts(3), QStringList({"fig", "4"}));
    QCOMPARE(texts(4).join(u','), QString("apple,5,now,then"));
    QCOMPARE(texts(6).join(u',').left(12), QString("cherry,6,now"));
}

void tst_FaultyRows::goodFilesAreQuiet_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::newRow("commas") << QByteArray("a,b\n1,2\n\"x\ny\",\"\"\"\"\n");
    QTest::newRow("no header") << QByteArray("1,2\n3,4\n5,6\n7,8\n9,10\n1,2\n3,4\n5,6\n7,8\n9\n");
    QTest::newRow("lines of another system") << QByteArray("a;b\r\n1;2\r\n\"3\";\"4\"\r\n");
    QTest::newRow("no end") << QByteArray("a\tb\n1\t2\n3\t4");
}

void tst_FaultyRows::goodFilesAreQuiet()
{
    QFETCH(QByteArray, text);
    open(text, {});
    QVERIFY(!button()->isVisible());
    QCOMPARE(faults().count(), 0);
    press();
    QCOMPARE(current(), -1);
}

void tst_FaultyRows::keysLeadToThem()
{
    open(s_faulty);
    QTRY_VERIFY(button()->isVisible());
    for (const int row : {1, 3, 4, 6, 1}) {
        press();
        QCOMPARE(current(), row);
    }
    press(Qt::ShiftModifier);
    QCOMPARE(current(), 6);
    press(Qt::ShiftModifier);
    QCOMPARE(current(), 4);
    QTest::mouseClick(button(), Qt::LeftButton);
    QCOMPARE(current(), 6);
}

void tst_FaultyRows::goesToThoseThatAreShown()
{
    open(s_faulty);
    QTRY_VERIFY(button()->isVisible());
    auto *panel = m_window->findChild<FindPanel *>();
    m_window->openFindWith("now");
    panel->filter();
    panel->close();
    m_table->setFocus();
    QTRY_VERIFY(m_window->rows() > 0);
    const auto first = [this] {
        return m_table->currentIndex().siblingAtColumn(0).data().toString();
    };
    QStringList visited;
    for (int i = 0; i < 4; ++i) {
        press();
        visited.append(first());
    }
    QVERIFY(visited.contains("pears"));
    QVERIFY(visited.contains("apple"));
}

void tst_FaultyRows::marksThem_data()
{
    QTest::addColumn<bool>("isRightToLeft");
    QTest::newRow("left to right") << false;
    QTest::newRow("right to left") << true;
}

void tst_FaultyRows::marksThem()
{
    QFETCH(bool, isRightToLeft);
    open(s_faulty);
    m_window->setLayoutDirection(isRightToLeft ? Qt::RightToLeft : Qt::LeftToRight);
    m_table->clearSelection();
    const QColor base = m_table->palette().color(QPalette::Base);
    const QColor warning = readable(levelColor(LogLevel::Warning), base, visibleContrast);
    const auto colorAt = [&](int row, int place) {
        const QImage image = m_table->viewport()->grab().toImage();
        const int x = isRightToLeft ? m_table->viewport()->width() - 1 - place : place;
        const double ratio = image.devicePixelRatio();
        const int y = m_table->rowViewportPosition(row) + m_table->rowHeight() / 2;
        return image.pixelColor(int((x + 0.5) * ratio), int(y * ratio));
    };
    for (const int row : {1, 3, 4, 6})
        QCOMPARE(colorAt(row, 1), warning);
    for (const int row : {0, 2, 5})
        QVERIFY(colorAt(row, 1) != warning);
    // A mark of the user's is beside it.
    m_window->showLine(4);
    m_window->findChild<MarksMenu *>()->markAction()->trigger();
    QCOMPARE(colorAt(3, 1), rowMarkColor(base));
    QCOMPARE(colorAt(3, 5), warning);
}

void tst_FaultyRows::tellsWhatIsWrong()
{
    open(s_faulty);
    const auto tipOf = [this](int row) {
        const QPoint place = m_table->visualRect(m_table->model()->index(row, 0)).center();
        QHelpEvent help(QEvent::ToolTip, place, m_table->viewport()->mapToGlobal(place));
        QApplication::sendEvent(m_table->viewport(), &help);
        return QToolTip::text();
    };
    QCOMPARE(tipOf(1), QString("Malformed record: There is text after a closing quote."));
    QCOMPARE(tipOf(3), QString("Malformed record: It has fewer fields than the header."));
    QCOMPARE(tipOf(4), QString("Malformed record: It has more fields than the header."));
    QCOMPARE(tipOf(6), QString("Malformed record: Nothing closes its quote."));
    QVERIFY(!m_table->model()->index(0, 0).data(Qt::ToolTipRole).isValid());
    QToolTip::hideText();
}

void tst_FaultyRows::followsTheFile()
{
    open("name,size\nplum,1\nfig");
    QTRY_COMPARE(faults().rows(), QList<int>({1}));
    write(",2\n", QIODevice::Append);
    QTRY_COMPARE(faults().count(), 0);
    QTRY_VERIFY(!button()->isVisible());
    write("\"pear\"s,3\nx\n\"apple,4\n", QIODevice::Append);
    QTRY_COMPARE(faults().rows(), QList<int>({2, 3, 4}));
    QTRY_COMPARE(button()->text(), QString("Malformed: 3"));
    write("more\",5\n", QIODevice::Append); // closes it
    QTRY_COMPARE(faults().rows(), QList<int>({2, 3}));
    QCOMPARE(faults().count(RecordFault::OpenQuote), 0);
    write("name,size\nplum,1\nfig,2,3\n");
    QTRY_COMPARE(faults().rows(), QList<int>({1}));
    QCOMPARE(faults().count(RecordFault::TooManyFields), 1);
    QCOMPARE(faults().count(RecordFault::TooFewFields), 0);
}

void tst_FaultyRows::looksAtOtherEncodings()
{
    QByteArray wide("\xff\xfe");
    for (const char character : s_faulty)
        wide.append(character).append('\0');
    open(wide);
    QTRY_COMPARE(faults().rows(), QList<int>({1, 3, 4, 6}));
}

//! What is shown cut off may have its other fields, and its closing quote, in what is left out.
void tst_FaultyRows::longRecordsAreNotBlamed()
{
    const QByteArray longText(TextFileModel::maximumLineBytes + 10, 'x');
    open("name,size\nplum,1\n" + longText + ",2\n\"" + longText + "\",3\nfig\n");
    QTRY_COMPARE(faults().rows(), QList<int>({3}));
    QVERIFY(!m_window->model()->faultsOf(1));
    QVERIFY(!m_window->model()->faultsOf(2));
    QVERIFY(m_window->model()->faultsOf(3));
}

void tst_FaultyRows::otherFormatsHaveNone()
{
    open("just \"text\nand more\n");
    QCOMPARE(faults().count(), 0);
    QVERIFY(!m_window->model()->faultsOf(0));
    open(s_faulty, {.delimiter = QChar(), .hasHeader = {}});
    QCOMPARE(faults().count(), 0);
}

QTEST_MAIN(tst_FaultyRows)

#include "tst_faultyrows.moc"
