// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "files/textfilemodel.h"
#include "overview/rowsurvey.h"
#include "qtablefastview.h"
#include "search/tablefilter.h"

#include <QFile>
#include <QScrollBar>
#include <QSignalSpy>
#include <QStringEncoder>
#include <QStringListModel>
#include <QTemporaryDir>
#include <QTest>

namespace {

//! Line \a i has "hit" if it is a multiple of 10, is an error if of 7, else a warning if of 5.
QByteArray line(int i)
{
    return QByteArray(i % 7 == 0       ? "ERROR"
                          : i % 5 == 0 ? "WARN"
                                       : "INFO")
        + (i % 10 == 0 ? " hit " : " no ") + QByteArray::number(i);
}

QByteArray lines(int first, int end)
{
    QByteArray text;
    for (int i = first; i < end; ++i)
        text += line(i) + '\n';
    return text;
}

QStringList texts(int count)
{
    QStringList list;
    for (int i = 0; i < count; ++i)
        list << line(i);
    return list;
}

} // namespace

class tst_OverviewSurvey : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void surveysAnyModel();
    void surveysAFile_data();
    void surveysAFile();
    void viewsRowsOfAFile();
    void surveysOtherEncodings_data();
    void surveysOtherEncodings();
    void looksByTheRules_data();
    void looksByTheRules();
    void surveysWhatAFilterShows();
    void addsRowsAtTheEnd();
    void judgesALineThatGrowsAgain();
    void beginsAnew_data();
    void beginsAnew();
    void tellsTimes();
    void tellsTimesOfALineThatGrows();
    void beginsWithWhatIsSeen();
    void letsEventsThrough();
    void looksForNothing();
    void outlivesItsModel();

private:
    void write(const QByteArray &text, QIODevice::OpenMode mode = QIODevice::Append);
    void open(const QByteArray &text);
    void seek(const QString &text);
    QList<int> hitRows() const;

    std::unique_ptr<QTemporaryDir> m_directory;
    std::unique_ptr<QTableFastView> m_table;
    TableFilter *m_find = nullptr;
    RowSurvey *m_survey = nullptr;
    std::unique_ptr<TextFileModel> m_model;
};

void tst_OverviewSurvey::init()
{
    m_directory = std::make_unique<QTemporaryDir>();
    m_table = std::make_unique<QTableFastView>();
    m_find = new TableFilter(m_table.get());
    m_survey = new RowSurvey(m_find, m_table.get(), m_table.get());
}

void tst_OverviewSurvey::cleanup()
{
    m_find->setSource(nullptr);
    m_table.reset();
    m_model.reset();
}

void tst_OverviewSurvey::write(const QByteArray &text, QIODevice::OpenMode mode)
{
    QFile file(m_directory->filePath("file.log"));
    QVERIFY(file.open(mode | QIODevice::Unbuffered));
    QCOMPARE(file.write(text), text.size());
}

void tst_OverviewSurvey::open(const QByteArray &text)
{
    write(text);
    m_model = std::make_unique<TextFileModel>(m_directory->filePath("file.log"));
    m_find->setSource(m_model.get());
    m_model->start();
    QTRY_COMPARE(m_model->indexedBytes(), quint64(text.size()));
}

void tst_OverviewSurvey::seek(const QString &text)
{
    m_survey->setSought(m_find->matcherFor(text), m_find->columns());
}

QList<int> tst_OverviewSurvey::hitRows() const
{
    QList<int> rows;
    for (int row = 0; row < m_survey->rows(); ++row) {
        if (m_survey->hits().between(row, row + 1) > 0)
            rows << row;
    }
    return rows;
}

void tst_OverviewSurvey::surveysAnyModel()
{
    QStringListModel model(texts(50));
    m_find->setSource(&model);
    QVERIFY(m_survey->isComplete());
    m_survey->setLevelsWanted(this, true);
    seek("hit");
    QVERIFY(!m_survey->isComplete());
    QVERIFY(m_survey->isSeeking());
    QTRY_VERIFY(m_survey->isComplete());
    QCOMPARE(hitRows(), QList<int>({0, 10, 20, 30, 40}));
    QCOMPARE(m_survey->errors().total(), 8);
    QCOMPARE(m_survey->warnings().total(), 8);
    QCOMPARE(m_survey->errors().between(42, 43), 1);
    QCOMPARE(m_survey->warnings().between(45, 46), 1);
    QCOMPARE(m_survey->warnings().between(35, 36), 0);
    m_find->setSource(nullptr);
}

void tst_OverviewSurvey::surveysAFile_data()
{
    QTest::addColumn<int>("count");
    QTest::newRow("none") << 0;
    QTest::newRow("one") << 1;
    QTest::newRow("some") << 1000;
    QTest::newRow("several blocks") << 280000;
}

void tst_OverviewSurvey::surveysAFile()
{
    QFETCH(int, count);
    open(lines(0, count));
    m_survey->setLevelsWanted(this, true);
    seek("HIT");
    QTRY_VERIFY_WITH_TIMEOUT(m_survey->isComplete(), 60000);
    const auto multiples = [=](int of) { return (count + of - 1) / of; };
    QCOMPARE(m_survey->rows(), count);
    QCOMPARE(m_survey->hits().total(), multiples(10));
    QCOMPARE(m_survey->errors().total(), multiples(7));
    QCOMPARE(m_survey->warnings().total(), multiples(5) - multiples(35));
}

void tst_OverviewSurvey::viewsRowsOfAFile()
{
    QByteArray text;
    for (int i = 0; i < 20000; ++i)
        text += QByteArray(i % 700, char('a' + i % 26)) + '\n';
    open(text);
    const int rows = m_survey->rows();
    QCOMPARE(rows, 20000);
    for (const int row : {0, 1, 699, 700, 12000, 12001, 11999, 19999, 5})
        QCOMPARE(m_model->rowView(row, 1000).toByteArray(), m_model->rowBytes(row, 1000));
    QCOMPARE(m_model->rowView(699, 5).toByteArray(), m_model->rowBytes(699, 5));
    for (const int row : {-1, rows})
        QVERIFY(m_model->rowView(row, 10).isEmpty());
    QVERIFY(m_model->rowView(5, 0).isEmpty());
}

void tst_OverviewSurvey::surveysOtherEncodings_data()
{
    QTest::addColumn<QByteArray>("text");
    const QString text = QStringLiteral("ERROR \u00e4 hit\nWARN\u2014no\n\u2014error\u2014\n");
    QTest::newRow("UTF-8") << text.toUtf8();
    QStringEncoder encoder(QStringEncoder::Utf16LE);
    QTest::newRow("UTF-16") << QByteArray("\xff\xfe") + QByteArray(encoder(text));
}

void tst_OverviewSurvey::surveysOtherEncodings()
{
    QFETCH(QByteArray, text);
    open(text);
    m_survey->setLevelsWanted(this, true);
    seek("hit");
    QTRY_VERIFY(m_survey->isComplete());
    QCOMPARE(m_survey->rows(), 3);
    QCOMPARE(hitRows(), QList<int>({0}));
    QCOMPARE(m_survey->errors().total(), 2);
    QCOMPARE(m_survey->warnings().total(), 1);
}

void tst_OverviewSurvey::looksByTheRules_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("matchesCase");
    QTest::addColumn<bool>("wholeWords");
    QTest::addColumn<bool>("isExpression");
    QTest::addColumn<QList<int>>("expected");
    QTest::newRow("as it is") << "a.b" << false << false << false << QList<int> {0, 1};
    QTest::newRow("case") << "a.b" << true << false << false << QList<int> {0};
    QTest::newRow("words") << "axb" << false << true << false << QList<int> {2};
    QTest::newRow("expression") << "^a.b$" << false << false << true << QList<int> {0, 1, 2};
    QTest::newRow("not ASCII") << QString(u'\u00e4') << false << false << false << QList<int> {4};
    QTest::newRow("numbers of lines") << "3" << false << false << false << QList<int> {};
}

void tst_OverviewSurvey::looksByTheRules()
{
    QFETCH(QString, text);
    QFETCH(bool, matchesCase);
    QFETCH(bool, wholeWords);
    QFETCH(bool, isExpression);
    open("a.b\nA.B\naxb\naxbc\n\u00c4\n");
    m_find->setCaseSensitivity(matchesCase ? Qt::CaseSensitive : Qt::CaseInsensitive);
    m_find->setWholeWords(wholeWords);
    m_find->setExpressions(isExpression);
    seek(text);
    QTRY_VERIFY(m_survey->isComplete());
    QTEST(hitRows(), "expected");
}

void tst_OverviewSurvey::surveysWhatAFilterShows()
{
    open(lines(0, 1000));
    m_survey->setLevelsWanted(this, true);
    seek("hit");
    m_find->dofilter("ERROR");
    QCOMPARE(m_find->shownRows(), 143);
    QTRY_VERIFY(m_survey->isComplete());
    QCOMPARE(m_survey->rows(), 143);
    QCOMPARE(m_survey->errors().total(), 143);
    QCOMPARE(m_survey->hits().total(), 15);
    QCOMPARE(hitRows().mid(0, 3), QList<int>({0, 10, 20}));
    m_find->dofilter(QString());
    QTRY_VERIFY(m_survey->isComplete());
    QCOMPARE(m_survey->rows(), 1000);
    QCOMPARE(m_survey->hits().total(), 100);
}

void tst_OverviewSurvey::addsRowsAtTheEnd()
{
    open(lines(0, 100));
    m_survey->setLevelsWanted(this, true);
    seek("hit");
    QTRY_VERIFY(m_survey->isComplete());
    write(lines(100, 250));
    QTRY_COMPARE(m_survey->rows(), 250);
    QTRY_VERIFY(m_survey->isComplete());
    QCOMPARE(m_survey->hits().total(), 25);
    QCOMPARE(m_survey->errors().total(), 36);
    QCOMPARE(hitRows().constLast(), 240);
}

void tst_OverviewSurvey::judgesALineThatGrowsAgain()
{
    open("one\nERR");
    m_survey->setLevelsWanted(this, true);
    seek("hit");
    QTRY_VERIFY(m_survey->isComplete());
    QCOMPARE(m_survey->errors().total(), 1);
    QCOMPARE(m_survey->hits().total(), 0);
    write("S hit");
    QTRY_COMPARE(m_model->indexedBytes(), quint64(12));
    QTRY_VERIFY(m_survey->isComplete());
    QCOMPARE(m_survey->errors().total(), 0);
    QCOMPARE(m_survey->hits().total(), 1);
    write(" hit\nmore hit");
    QTRY_COMPARE(m_survey->rows(), 3);
    QTRY_VERIFY(m_survey->isComplete());
    QCOMPARE(hitRows(), QList<int>({1, 2}));
    QCOMPARE(m_survey->hits().total(), 2);
}

void tst_OverviewSurvey::beginsAnew_data()
{
    QTest::addColumn<QString>("change");
    QTest::addColumn<QList<int>>("expected");
    QTest::newRow("rows on top") << "insert" << QList<int> {2, 5};
    QTest::newRow("rows go") << "remove" << QList<int> {2};
    QTest::newRow("all rows") << "reset" << QList<int> {1};
    QTest::newRow("another text") << "text" << QList<int> {1, 2};
    QTest::newRow("a row changes") << "change" << QList<int> {0, 1, 3};
}

void tst_OverviewSurvey::beginsAnew()
{
    QFETCH(QString, change);
    QStringListModel model({"hit", "x", "x", "hit"});
    m_find->setSource(&model);
    seek("hit");
    QTRY_VERIFY(m_survey->isComplete());
    QCOMPARE(hitRows(), QList<int>({0, 3}));
    if (change == "insert")
        model.insertRows(0, 2);
    else if (change == "remove")
        model.removeRows(0, 1);
    else if (change == "reset")
        model.setStringList({"x", "hit"});
    else if (change == "text")
        seek("x");
    else
        model.setData(model.index(1, 0), "hit");
    QTRY_VERIFY(m_survey->isComplete());
    QTEST(hitRows(), "expected");
    m_find->setSource(nullptr);
}

//! A row each second; every third has no time of its own.
void tst_OverviewSurvey::tellsTimes()
{
    QByteArray text("before all\n");
    const QTime midnight(0, 0);
    for (int i = 0; i < 300; ++i) {
        text += i % 3 == 2
            ? QByteArray("  more")
            : "2026-11-22 " + midnight.addSecs(i).toString("HH:mm:ss").toLatin1() + ' ' + line(i);
        text += '\n';
    }
    open(text);
    QVERIFY(m_survey->times().isEmpty());
    m_table->resize(300, 300);
    m_table->show();
    m_table->verticalScrollBar()->setValue(100); // where rows without a time are first
    m_survey->setTimesWanted(true);
    QTRY_VERIFY(m_survey->isComplete());
    QVERIFY(m_survey->haveTimesDates());
    TimeBins bins = m_survey->times();
    QCOMPARE(bins.width(), 500);
    bins.shrinkTo(60);
    QCOMPARE(bins.width(), 5000);
    QCOMPARE(bins.count(), 60);
    QCOMPARE(bins.at(0).rows(), 6); // one has the time of the row above
    int rows = 0;
    int errors = 0;
    for (int i = 0; i < bins.count(); ++i) {
        rows += bins.at(i).rows();
        errors += bins.at(i).errors;
    }
    QCOMPARE(rows, 300);
    QCOMPARE(errors, 29); // every seventh that has a text
    m_survey->setTimesWanted(false);
    QVERIFY(m_survey->times().isEmpty());
}

void tst_OverviewSurvey::tellsTimesOfALineThatGrows()
{
    open("10:00:00 a\n10:00:01 ERR");
    m_survey->setTimesWanted(true);
    QTRY_VERIFY(m_survey->isComplete());
    QVERIFY(!m_survey->haveTimesDates());
    QCOMPARE(m_survey->times().at(m_survey->times().count() - 1).errors, 1);
    write("S b\n10:00:01 ERROR");
    QTRY_COMPARE(m_survey->rows(), 3);
    QTRY_VERIFY(m_survey->isComplete());
    const TimeBins::Counts last = m_survey->times().at(m_survey->times().count() - 1);
    QCOMPARE(last.errors, 1);
    QCOMPARE(last.others, 1);
}

void tst_OverviewSurvey::beginsWithWhatIsSeen()
{
    QStringListModel model(texts(400000));
    m_find->setSource(&model);
    m_table->resize(300, 300);
    m_table->show();
    m_table->verticalScrollBar()->setValue(300000);
    QCOMPARE(m_table->rowAt(0), 300000);
    seek("hit");
    int slices = 0;
    for (; m_survey->hits().between(300000, 400000) < 9000 && !m_survey->isComplete(); ++slices) {
        QCOMPARE(m_survey->hits().between(0, 290000), 0);
        QCoreApplication::processEvents();
    }
    QVERIFY(slices > 0);
    QTRY_VERIFY_WITH_TIMEOUT(m_survey->isComplete(), 60000);
    QCOMPARE(m_survey->hits().total(), 40000);
    m_find->setSource(nullptr);
}

void tst_OverviewSurvey::letsEventsThrough()
{
    QStringListModel model(texts(200000));
    m_find->setSource(&model);
    seek("hit");
    bool isComplete = true;
    QMetaObject::invokeMethod(
        this, [&] { isComplete = m_survey->isComplete(); }, Qt::QueuedConnection);
    QTRY_VERIFY(m_survey->isComplete());
    QVERIFY(!isComplete);
    m_find->setSource(nullptr);
}

void tst_OverviewSurvey::looksForNothing()
{
    QStringListModel model(texts(20));
    m_find->setSource(&model);
    QVERIFY(m_survey->isComplete());
    seek("hit");
    QTRY_VERIFY(m_survey->isComplete());
    QCOMPARE(m_survey->hits().total(), 2);
    m_survey->setSought(TextMatcher(), {});
    QVERIFY(!m_survey->isSeeking());
    QVERIFY(m_survey->isComplete());
    QCOMPARE(m_survey->hits().total(), 0);
    m_survey->setLevelsWanted(this, true);
    QTRY_VERIFY(m_survey->isComplete());
    QCOMPARE(m_survey->errors().total(), 3);
    m_survey->setLevelsWanted(this, false);
    QCOMPARE(m_survey->errors().total(), 0);
    m_find->setSource(nullptr);
}

void tst_OverviewSurvey::outlivesItsModel()
{
    auto model = std::make_unique<QStringListModel>(texts(100000));
    m_find->setSource(model.get());
    seek("hit");
    model.reset();
    QVERIFY(m_survey->isComplete());
    QCOMPARE(m_survey->rows(), 0);
    QSignalSpy changes(m_survey, &RowSurvey::changed);
    QVERIFY(changes.wait());
}

QTEST_MAIN(tst_OverviewSurvey)
#include "tst_overviewsurvey.moc"
