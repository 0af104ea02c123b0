// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "savedsession.h"

#include <QSettings>
#include <QTemporaryDir>
#include <QTest>

class tst_SavedSession : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void beginsEmpty();
    void givesBackWhatItGot();
    void survivesOtherTexts_data();
    void survivesOtherTexts();
    void leavesOutPagesWithoutPath();

private:
    QTemporaryDir m_directory; //!< settings
};

void tst_SavedSession::initTestCase()
{
    QCoreApplication::setApplicationName(QStringLiteral("saved"));
    QSettings::setDefaultFormat(QSettings::IniFormat);
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, m_directory.path());
}

void tst_SavedSession::init()
{
    QSettings().clear();
}

void tst_SavedSession::beginsEmpty()
{
    QVERIFY(SavedSession::load().isEmpty());
}

void tst_SavedSession::givesBackWhatItGot()
{
    PageState page;
    page.path = QString::fromUtf8("/tmp/ä “quoted”, a=b;c\n.log");
    page.isFollowing = false;
    page.line = 2'000'000'000;
    page.columnCount = 3;
    page.columns = QByteArray("\0\xff,;\"", 5);
    page.grouped = {0, 2};
    page.format = {QChar(u'\0'), false, Encoding::named("windows-1252"), {}};
    PageState other;
    other.path = QStringLiteral("/b");
    other.format = {{}, {}, {}, LogFormat::Kind::Syslog};
    other.format.hasOlderFiles = true;
    other.sortColumn = 2;
    other.sortOrder = Qt::DescendingOrder;
    other.filter = QString::fromUtf8("[ä\"] ");
    other.filterRules = {true, false, true};
    other.own = QString::fromUtf8("{\"table\": \"ä\"}");
    const QList<SavedWindow> windows {{QByteArray("\1\0\2", 3), {page, other}, 1},
                                      {QByteArray(), {}, 0}};
    SavedSession::save(windows);
    QCOMPARE(SavedSession::load(), windows);
    SavedSession::save({});
    QVERIFY(SavedSession::load().isEmpty());
}

void tst_SavedSession::survivesOtherTexts_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<qsizetype>("windows");
    QTest::newRow("nothing") << "" << qsizetype(0);
    QTest::newRow("no JSON") << "[{" << qsizetype(0);
    QTest::newRow("an object") << "{}" << qsizetype(0);
    QTest::newRow("numbers") << "[1, 2]" << qsizetype(2);
    QTest::newRow("strange parts")
        << R"([{"geometry": 1, "pages": {"path": 2}, "current": "x"}])" << qsizetype(1);
    QTest::newRow("strange page")
        << R"([{"pages": [{"path": 1}, [], {"path": "/a", "line": -5, "following": "x"}]}])"
        << qsizetype(1);
    QTest::newRow("strange format")
        << R"([{"pages": [{"path": "/a", "format": {"delimiter": 70000, "header": 1, )"
           R"("encoding": "none", "log": 99}}, {"path": "/b", "format": "x"}]}])"
        << qsizetype(1);
    QTest::newRow("strange order and filter")
        << R"([{"pages": [{"path": "/a", "sortColumn": -7, "filter": 3, "wholeWords": []}]}])"
        << qsizetype(1);
    QTest::newRow("current too high")
        << R"([{"pages": [{"path": "/a"}], "current": 9}])" << qsizetype(1);
}

void tst_SavedSession::survivesOtherTexts()
{
    QFETCH(QString, text);
    QFETCH(qsizetype, windows);
    QSettings().setValue(QStringLiteral("session"), text);
    const QList<SavedWindow> loaded = SavedSession::load();
    QCOMPARE(loaded.size(), windows);
    for (const SavedWindow &window : loaded) {
        QVERIFY(window.current >= 0);
        QVERIFY(window.current <= qMax(0, int(window.pages.size()) - 1));
        for (const PageState &page : window.pages) {
            QVERIFY(page.line >= 0 && page.isFollowing && page.format == FormatRequest());
            QVERIFY(page.sortColumn == -1 && page.filter.isEmpty());
        }
    }
}

void tst_SavedSession::leavesOutPagesWithoutPath()
{
    SavedSession::save({{QByteArray(), {PageState(), PageState()}, 1}});
    const QList<SavedWindow> loaded = SavedSession::load();
    QCOMPARE(loaded.size(), 1);
    QVERIFY(loaded.first().pages.isEmpty());
    QCOMPARE(loaded.first().current, 0);
}

QTEST_GUILESS_MAIN(tst_SavedSession)

#include "tst_savedsession.moc"
