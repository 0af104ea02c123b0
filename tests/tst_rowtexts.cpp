// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "windows/rowtexts.h"

#include <QStandardItemModel>
#include <QTest>

class tst_RowTexts : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void writesRows_data();
    void writesRows();
    void quotes_data();
    void quotes();
    void leavesOutWhatIsTooMuch();

private:
    QItemSelection rows(int first, int last, int column = -1) const;

    QStandardItemModel m_model {5, 3}; //!< cells a0 to c4
};

void tst_RowTexts::initTestCase()
{
    for (int row = 0; row < 5; ++row) {
        for (int column = 0; column < 3; ++column)
            m_model.setData(m_model.index(row, column), QChar('a' + column) + QString::number(row));
    }
    m_model.setHorizontalHeaderLabels({"A", "B,b", "C"});
}

//! All columns, or one.
QItemSelection tst_RowTexts::rows(int first, int last, int column) const
{
    return {m_model.index(first, qMax(column, 0)), m_model.index(last, column < 0 ? 2 : column)};
}

void tst_RowTexts::writesRows_data()
{
    QTest::addColumn<QItemSelection>("selection");
    QTest::addColumn<QList<int>>("columns");
    QTest::addColumn<RowFormat>("format");
    QTest::addColumn<QString>("text");

    const QList<int> all {0, 1, 2};
    QTest::newRow("nothing") << QItemSelection() << all << RowFormat::Tabs << QString();
    QTest::newRow("nothing as CSV") << QItemSelection() << all << RowFormat::Csv << QString();
    QTest::newRow("a row") << rows(1, 1) << all << RowFormat::Tabs << "a1\tb1\tc1";
    QTest::newRow("a row as CSV") << rows(1, 1) << all << RowFormat::Csv << "A,\"B,b\",C\na1,b1,c1";
    QTest::newRow("other columns")
        << rows(1, 1) << QList<int> {2, 0} << RowFormat::Csv << "C,A\nc1,a1";
    QItemSelection two = rows(3, 4);
    two.append(rows(0, 0));
    QTest::newRow("in the model's order")
        << two << QList<int> {0} << RowFormat::Tabs << "a0\na3\na4";
    QItemSelection overlapping = rows(0, 2, 0);
    overlapping.append(rows(1, 3, 1));
    QTest::newRow("each once") << overlapping << QList<int> {0} << RowFormat::Tabs
                               << "a0\na1\na2\na3";
}

void tst_RowTexts::writesRows()
{
    QFETCH(QItemSelection, selection);
    QFETCH(QList<int>, columns);
    QFETCH(RowFormat, format);
    bool isCut = false;
    QTEST(RowTexts(&m_model, columns, format).rows(selection, 10, &isCut), "text");
    QVERIFY(!isCut);
}

void tst_RowTexts::quotes_data()
{
    QTest::addColumn<QString>("field");
    QTest::addColumn<QString>("written");
    QTest::newRow("plain") << "a b"
                           << "a b";
    QTest::newRow("empty") << ""
                           << "";
    QTest::newRow("comma") << "a,b"
                           << "\"a,b\"";
    QTest::newRow("quotes") << "say \"a\""
                            << "\"say \"\"a\"\"\"";
    QTest::newRow("line feed") << "a\nb"
                               << "\"a\nb\"";
    QTest::newRow("carriage return") << "a\rb"
                                     << "\"a\rb\"";
    QTest::newRow("tab") << "a\tb"
                         << "a\tb";
}

void tst_RowTexts::quotes()
{
    QFETCH(QString, field);
    QStandardItemModel model(1, 1);
    model.setData(model.index(0, 0), field);
    QTEST(RowTexts(&model, {0}, RowFormat::Csv).row(0), "written");
    QCOMPARE(RowTexts(&model, {0}, RowFormat::Tabs).row(0), field);
}

void tst_RowTexts::leavesOutWhatIsTooMuch()
{
    const RowTexts texts(&m_model, {0}, RowFormat::Tabs);
    bool isCut = false;
    QCOMPARE(texts.rows(rows(0, 4), 5, &isCut).count(u'\n'), 4);
    QVERIFY(!isCut);
    QCOMPARE(texts.rows(rows(0, 4), 4, &isCut), "a0\na1\na2\na3");
    QVERIFY(isCut);
}

QTEST_MAIN(tst_RowTexts)

#include "tst_rowtexts.moc"
