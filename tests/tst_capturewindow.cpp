// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "capture/capturemodel.h"
#include "capture/capturewindow.h"
#include "captures.h"
#include "overview/histogram.h"
#include "search/findpanel.h"
#include "session.h"
#include "windows/detailpane.h"
#include "windows/filewindow.h"
#include "windows/framestatistics.h"
#include "windows/viewertable.h"

#include <QAction>
#include <QApplication>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QSettings>
#include <QSignalSpy>
#include <QStatusBar>
#include <QTemporaryDir>
#include <QTest>

namespace {

using Activity = CaptureModel::Activity;

QByteArray query(const QByteArray &name)
{
    return ethernet(0x800, ipv4(17, udp(40000, 53, dnsQuery(name))));
}

QByteArray syn()
{
    return ethernet(0x800, ipv4(6, tcp(50000, 443, 2)));
}

} // namespace

class tst_CaptureWindow : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void showsPackets();
    void followsThem();
    void filtersThem();
    void showsThePacketInThePane();
    void showsWhenTheyWere();
    void tellsDamage();
    void tellsFailure();
    void tellsRewriting();
    void reloads();
    void sessionOpensThem();
    void sessionOpensWhatIsCalledOne();

private:
    void write(const QByteArray &bytes, QIODevice::OpenMode mode = QIODevice::WriteOnly);
    std::unique_ptr<CaptureWindow> open();
    static bool tells(const QWidget &window, const QString &text);

    std::unique_ptr<QTemporaryDir> m_folder;
    QString m_path;
    FrameStatistics m_statistics;
    const CaptureWriter m_writer;
};

void tst_CaptureWindow::initTestCase()
{
#ifndef VIEWER_HAS_PCAP
    QSKIP("This build reads no captures.");
#endif
    QCoreApplication::setApplicationName(QStringLiteral("capturewindow"));
    QSettings::setDefaultFormat(QSettings::IniFormat);
}

void tst_CaptureWindow::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    QVERIFY(m_folder->isValid());
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, m_folder->filePath("settings"));
    m_path = m_folder->filePath("packets");
}

void tst_CaptureWindow::write(const QByteArray &bytes, QIODevice::OpenMode mode)
{
    QFile file(m_path);
    QVERIFY(file.open(mode));
    QCOMPARE(file.write(bytes), bytes.size());
}

std::unique_ptr<CaptureWindow> tst_CaptureWindow::open()
{
    auto window = std::make_unique<CaptureWindow>(m_path, &m_statistics);
    window->resize(900, 500);
    window->show();
    return window;
}

//! Whether one of its labels has that text.
bool tst_CaptureWindow::tells(const QWidget &window, const QString &text)
{
    const auto labels = window.findChildren<QLabel *>();
    return std::any_of(labels.begin(), labels.end(),
                       [&](const QLabel *label) { return label->text() == text; });
}

void tst_CaptureWindow::showsPackets()
{
    write(m_writer.header() + m_writer.record(1, 2, syn()).repeated(100));
    const auto window = open();
    QSignalSpy settled(window.get(), &ViewerWindow::settled);
    QTRY_VERIFY(window->isSettled());
    QCOMPARE(settled.size(), 1);
    QTRY_COMPARE(window->rows(), 100);
    QCOMPARE(window->windowFilePath(), m_path);
    QVERIFY(window->windowTitle().startsWith("packets — "));
    QTRY_VERIFY(window->isPainted());
    QTRY_VERIFY(tells(*window, "100 rows"));
    write(m_writer.record(1, 2, syn()), QIODevice::Append);
    QTRY_VERIFY(tells(*window, "101 rows"));
    QTRY_VERIFY(tells(*window, "Ethernet"));
}

void tst_CaptureWindow::followsThem()
{
    write(m_writer.header() + m_writer.record(1, 2, syn()).repeated(100));
    const auto window = open();
    QTRY_COMPARE(window->rows(), 100);
    QTRY_VERIFY(tells(*window, "Following"));
    write(m_writer.record(1, 2, syn()).repeated(100), QIODevice::Append);
    QTRY_COMPARE(window->rows(), 200);
    QTRY_VERIFY(window->table()->firstSeenRow() > 100);
    window->setFollowing(false);
    QVERIFY(tells(*window, "Indexed"));
    const int first = window->table()->firstSeenRow();
    write(m_writer.record(1, 2, syn()).repeated(100) + m_writer.record(1, 2, syn()).first(20),
          QIODevice::Append);
    QTRY_COMPARE(window->rows(), 300);
    QCOMPARE(window->table()->firstSeenRow(), first);
    QTRY_VERIFY(tells(*window, "The last packet is not complete yet"));
}

void tst_CaptureWindow::filtersThem()
{
    QByteArray bytes = m_writer.header();
    for (int i = 0; i < 50; ++i)
        bytes += m_writer.record(1, 2, syn()) + m_writer.record(1, 2, query("example.com"));
    write(bytes);
    const auto window = open();
    QTRY_COMPARE(window->rows(), 100);
    window->openFindWith("example");
    auto *panel = window->findChild<FindPanel *>();
    QVERIFY(panel);
    panel->toggleFilter();
    QTRY_COMPARE(window->rows(), 50);
    QTRY_VERIFY(tells(*window, "50 of 100 rows"));
    write(m_writer.record(1, 2, query("other.example")) + m_writer.record(1, 2, syn()),
          QIODevice::Append);
    QTRY_COMPARE(window->rows(), 51);
}

void tst_CaptureWindow::showsThePacketInThePane()
{
    write(m_writer.header() + m_writer.record(1, 2, syn())
          + m_writer.record(1, 2, query("example.com")));
    const auto window = open();
    QTRY_COMPARE(window->rows(), 2);
    window->rowPane()->show();
    window->table()->setCurrentIndex(window->table()->model()->index(1, 0));
    QTRY_VERIFY(window->rowPane()->text()->toPlainText().contains(
        "\nDNS: Query 0x1a2b A example.com\n\n00000000  02 00"));
    QCOMPARE(window->rowPane()->text()->lineWrapMode(), QPlainTextEdit::NoWrap);
}

//! The times of packets are what the histogram counts.
void tst_CaptureWindow::showsWhenTheyWere()
{
    QByteArray bytes = m_writer.header();
    for (quint32 i = 0; i < 600; ++i)
        bytes += m_writer.record(1'700'000'000 + i, 0, syn());
    write(bytes);
    const auto window = open();
    QTRY_COMPARE(window->rows(), 600);
    auto *histogram = window->findChild<Histogram *>();
    QVERIFY(histogram);
    histogram->show();
    QTRY_VERIFY(histogram->columns().areTimes());
    QVERIFY(histogram->columns().haveDates());
}

void tst_CaptureWindow::tellsDamage()
{
    write(m_writer.header() + m_writer.record(1, 2, syn()) + QByteArray(100, '\xff'));
    const auto window = open();
    QTRY_VERIFY(tells(*window, "Damaged at byte 94; the packets before are shown"));
    QCOMPARE(window->rows(), 1);
    QVERIFY(!window->hasFailed());
}

void tst_CaptureWindow::tellsFailure()
{
    const auto window = open(); // of what is not there
    QTRY_VERIFY(window->hasFailed());
    QVERIFY(window->isSettled());
    QVERIFY(!window->table()->isVisible());
}

void tst_CaptureWindow::tellsRewriting()
{
    write(m_writer.header() + m_writer.record(1, 2, syn()).repeated(9));
    const auto window = open();
    QTRY_COMPARE(window->rows(), 9);
    QVERIFY(window->statusBar()->currentMessage().isEmpty());
    write(m_writer.header() + m_writer.record(1, 2, syn()));
    QTRY_COMPARE(window->rows(), 1);
    QCOMPARE(window->statusBar()->currentMessage(), "The file was written anew.");
}

void tst_CaptureWindow::reloads()
{
    write(m_writer.header() + m_writer.record(1, 2, syn()).repeated(90));
    const auto window = open();
    QTRY_COMPARE(window->rows(), 90);
    window->setFollowing(false);
    window->showLine(40);
    const CaptureModel *before = window->model();
    for (QAction *action : window->findChildren<QAction *>()) {
        if (action->shortcut() == QKeySequence(Qt::Key_F5))
            action->trigger();
    }
    QTRY_COMPARE(window->rows(), 90);
    QVERIFY(window->model() != before);
    QTRY_COMPARE(window->table()->currentIndex().row(), 39);
}

void tst_CaptureWindow::sessionOpensThem()
{
    write(m_writer.header() + m_writer.record(1, 2, syn()).repeated(9));
    const QString text = m_folder->filePath("text");
    QFile file(text);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write("line\n"), 5);
    file.close();
    SessionOptions options;
    options.files = QStringList {m_path, text};
    options.seconds = 0;
    Session session(options);
    QTimer::singleShot(0, &session, [] {
        int captures = 0;
        int files = 0;
        for (const QWidget *widget : QApplication::allWidgets()) {
            captures += qobject_cast<const CaptureWindow *>(widget) ? 1 : 0;
            files += qobject_cast<const FileWindow *>(widget) ? 1 : 0;
        }
        QCOMPARE(captures, 1);
        QCOMPARE(files, 1);
    });
    QCOMPARE(session.run(), 0);
}

//! As from a pipe, which cannot be looked at before.
void tst_CaptureWindow::sessionOpensWhatIsCalledOne()
{
    write({});
    SessionOptions options;
    options.files = QStringList {m_path};
    options.hasCaptures = true;
    options.seconds = 0;
    Session session(options);
    bool isOne = false;
    QTimer::singleShot(0, &session, [&] {
        const QWidgetList widgets = QApplication::allWidgets();
        isOne = std::any_of(widgets.begin(), widgets.end(), [](const QWidget *widget) {
            return qobject_cast<const CaptureWindow *>(widget);
        });
    });
    QCOMPARE(session.run(), 0);
    QVERIFY(isOne);
}

QTEST_MAIN(tst_CaptureWindow)
#include "tst_capturewindow.moc"
