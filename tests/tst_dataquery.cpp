// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "data/datacell.h"
#include "data/dataquery.h"

#include <QTest>

namespace {

DataTable table(DataEngine engine, const QStringList &key, const QStringList &keyTypes)
{
    DataTable table;
    table.dialect = DataDialect::of(engine);
    table.name = "t";
    table.relation = "\"t\"";
    DataColumn id {"id", engine == DataEngine::Sqlite ? "INTEGER" : "bigint"};
    id.isNumeric = true;
    id.isNullable = false;
    DataColumn price {"pr\"ice", engine == DataEngine::Sqlite ? "REAL" : "numeric"};
    price.isNumeric = true;
    table.columns = {id, price,
                     DataColumn {"note", engine == DataEngine::Sqlite ? "TEXT" : "text"}};
    table.key = key;
    table.keyTypes = keyTypes;
    return table;
}

DataTable sqlite()
{
    return table(DataEngine::Sqlite, {"rowid"}, {"INTEGER"});
}

DataTable server()
{
    return table(DataEngine::PostgreSql, {"\"id\""}, {"bigint"});
}

//! What nobody knows more of than that ODBC leads there; its columns are those of the others.
DataTable odbc()
{
    DataTable known = table(DataEngine::Odbc, {"\"id\""}, {});
    known.columns[0].isWhole = true;
    known.columns[0].isReadAsText = true;
    known.columns[1].isReadAsText = true;
    return known;
}

QString tail(const QString &text)
{
    return text.mid(text.indexOf(" FROM \"t\""));
}

} // namespace

class tst_DataQuery : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void pagesByKey();
    void pagesBackward();
    void pagesByColumnWithNulls();
    void endsAtNulls();
    void turnsDescendingRangesRound();
    void comparesKeysOfSeveralColumns();
    void castsParametersOfServers();
    void comparesInWordsThatAllEnginesKnow();
    void limitsRowsAsTheEngineDoes_data();
    void limitsRowsAsTheEngineDoes();
    void readsWhatWouldLoseDigitsAsText();
    void numbersRowsWithNullInItsPlace();
    void looksForTextsWithPatterns();
    void neverPastesText();
    void filtersByText_data();
    void filtersByText();
    void filtersByConditions();
    void closesTheWhere();
    void tellsSingleConditions_data();
    void tellsSingleConditions();
    void readsCells_data();
    void readsCells();
};

void tst_DataQuery::pagesByKey()
{
    const DataQuery query(sqlite(), {}, {});
    RowRange range;
    const DataPage first = query.page(range, false, 10);
    QCOMPARE(first.parts.size(), 1);
    QCOMPARE(tail(first.parts.first().text), QString(" FROM \"t\" ORDER BY rowid ASC LIMIT 10"));
    range.after = {qlonglong(7)};
    range.before = {qlonglong(90)};
    const DataPage page = query.page(range, false, 10, 5);
    QCOMPARE(tail(page.parts.first().text),
             QString(" FROM \"t\" WHERE rowid > ? AND rowid < ? ORDER BY rowid ASC LIMIT 10 "
                     "OFFSET 5"));
    QCOMPARE(page.parts.first().values, (QVariantList {qlonglong(7), qlonglong(90)}));
    QCOMPARE(query.keySize(), 1);
    range.from = {qlonglong(50)}; // the nearer bound is what is sought by
    QVERIFY(query.page(range, false, 10).parts.first().text.contains("rowid >= ? AND rowid > ?"));
}

void tst_DataQuery::pagesBackward()
{
    RowRange range;
    range.upTo = {qlonglong(90)};
    const DataPage page = DataQuery(sqlite(), {}, {}).page(range, true, 10);
    QCOMPARE(tail(page.parts.first().text),
             QString(" FROM \"t\" WHERE rowid <= ? ORDER BY rowid DESC LIMIT 10"));
}

void tst_DataQuery::pagesByColumnWithNulls()
{
    const DataQuery query(sqlite(), {1, false}, {});
    QCOMPARE(query.keySize(), 2);
    RowRange range;
    range.after = {QVariant(), qlonglong(7)};
    const DataPage page = query.page(range, false, 10);
    QCOMPARE(page.parts.size(), 2);
    QCOMPARE(tail(page.parts.at(0).text),
             QString(" FROM \"t\" WHERE `pr\"ice` IS NULL AND rowid > ? ORDER BY "
                     "`pr\"ice` ASC, rowid ASC LIMIT 10"));
    QCOMPARE(page.parts.at(0).values, QVariantList {qlonglong(7)});
    QCOMPARE(tail(page.parts.at(1).text),
             QString(" FROM \"t\" WHERE `pr\"ice` IS NOT NULL ORDER BY `pr\"ice` ASC, "
                     "rowid ASC LIMIT 10"));
}

void tst_DataQuery::endsAtNulls()
{
    RowRange range;
    range.after = {1.5, qlonglong(7)};
    const DataPage page = DataQuery(sqlite(), {1, false}, {}).page(range, false, 10);
    QCOMPARE(page.parts.size(), 1); // those with NULL are before it
    QCOMPARE(tail(page.parts.at(0).text),
             QString(" FROM \"t\" WHERE `pr\"ice` IS NOT NULL AND (`pr\"ice`, rowid) > (?, "
                     "?) ORDER BY `pr\"ice` ASC, rowid ASC LIMIT 10"));
    // A server's come behind all others.
    DataTable other = server();
    range.after = {"1.5", "7"};
    const DataPage last = DataQuery(other, {1, false}, {}).page(range, false, 10);
    QCOMPARE(last.parts.size(), 2);
    QVERIFY(last.parts.at(1).text.contains("IS NULL"));
}

void tst_DataQuery::turnsDescendingRangesRound()
{
    RowRange range;
    range.after = {"x", qlonglong(7)};
    const DataPage page = DataQuery(sqlite(), {2, true}, {}).page(range, false, 10);
    QCOMPARE(page.parts.size(), 2);
    QCOMPARE(tail(page.parts.at(0).text),
             QString(" FROM \"t\" WHERE `note` IS NOT NULL AND (`note`, rowid) < (?, ?) ORDER "
                     "BY `note` DESC, rowid DESC LIMIT 10"));
    QVERIFY(page.parts.at(1).text.contains("`note` IS NULL ORDER BY"));
}

void tst_DataQuery::comparesKeysOfSeveralColumns()
{
    const DataQuery query(table(DataEngine::Sqlite, {"`a`", "`b`"}, {"TEXT", "INTEGER"}), {}, {});
    RowRange range;
    range.from = {"x", qlonglong(1)};
    QCOMPARE(tail(query.page(range, false, 3).parts.first().text),
             QString(" FROM \"t\" WHERE (`a`, `b`) >= (?, ?) ORDER BY `a` ASC, `b` ASC "
                     "LIMIT 3"));
}

void tst_DataQuery::castsParametersOfServers()
{
    const DataQuery query(server(), {1, false}, {});
    RowRange range;
    range.after = {"1.5", "7"};
    const SqlText text = query.page(range, false, 3).parts.first();
    QVERIFY(
        text.text.contains("(\"pr\"\"ice\", \"id\") > (CAST(? AS numeric), CAST(? AS bigint))"));
    QVERIFY(text.text.startsWith("SELECT CAST(\"pr\"\"ice\" AS TEXT) AS "));
    QCOMPARE(text.values, (QVariantList {"1.5", "7"}));
}

void tst_DataQuery::comparesInWordsThatAllEnginesKnow()
{
    RowRange range;
    range.after = {"1.5", qlonglong(7)};
    const DataPage page = DataQuery(odbc(), {1, false}, {}).page(range, false, 3);
    QCOMPARE(page.parts.size(), 1); // those with NULL come first
    QCOMPARE(tail(page.parts.first().text),
             QString(" FROM \"t\" WHERE \"pr\"\"ice\" IS NOT NULL AND \"pr\"\"ice\" >= ? AND "
                     "(\"pr\"\"ice\" > ? OR (\"pr\"\"ice\" = ? AND \"id\" > ?)) ORDER BY "
                     "\"pr\"\"ice\" ASC, \"id\" ASC"));
    QCOMPARE(page.parts.first().values, (QVariantList {"1.5", "1.5", "1.5", qlonglong(7)}));
    const DataTable wide = table(DataEngine::Odbc, {"a", "b", "c"}, {});
    range = {};
    range.upTo = {"x", "y", "z"};
    const SqlText three = DataQuery(wide, {}, {}).count(range).first();
    QCOMPARE(tail(three.text),
             QString(" FROM \"t\" WHERE a <= ? AND (a < ? OR (a = ? AND (b < ? OR (b = ? AND c <= "
                     "?))))"));
    QCOMPARE(three.values, (QVariantList {"x", "x", "x", "y", "y", "z"}));
}

void tst_DataQuery::limitsRowsAsTheEngineDoes_data()
{
    using Limit = DataDialect::Limit;
    QTest::addColumn<int>("limit");
    QTest::addColumn<QString>("begin");
    QTest::addColumn<QString>("end");
    QTest::newRow("LIMIT") << int(Limit::AtEnd) << "SELECT CAST"
                           << " ASC LIMIT 15";
    QTest::newRow("FETCH") << int(Limit::Fetch) << "SELECT CAST"
                           << " ASC FETCH FIRST 15 ROWS ONLY";
    QTest::newRow("TOP") << int(Limit::Top) << "SELECT TOP 15 CAST"
                         << " ASC";
    QTest::newRow("none") << int(Limit::None) << "SELECT CAST"
                          << " ASC";
}

void tst_DataQuery::limitsRowsAsTheEngineDoes()
{
    QFETCH(int, limit);
    QFETCH(QString, begin);
    QFETCH(QString, end);
    DataTable known = odbc();
    known.dialect.limit = DataDialect::Limit(limit);
    const DataPage page = DataQuery(known, {}, {}).page({}, false, 10, 5);
    const QString text = page.parts.first().text;
    QVERIFY2(text.startsWith(begin) && text.endsWith(end), qPrintable(text));
    QCOMPARE(page.skipped, 5); // OFFSET is not asked for
    QCOMPARE(page.limit, 10);
}

void tst_DataQuery::readsWhatWouldLoseDigitsAsText()
{
    const DataQuery query(odbc(), {1, false}, {});
    QCOMPARE(query.page({}, false, 3).parts.last().text.section(" FROM ", 0, 0),
             QString("SELECT CAST(\"pr\"\"ice\" AS VARCHAR(4000)) AS \"vantix key 0\", CAST(\"id\" "
                     "AS VARCHAR(4000)) AS \"vantix key 1\", CAST(\"id\" AS VARCHAR(4000)) AS "
                     "vantix_cell_0, CAST(\"pr\"\"ice\" AS VARCHAR(4000)) AS vantix_cell_1, "
                     "\"note\""));
    QCOMPARE(query.keyValue(0, "1.50"), QVariant("1.50"));
    QCOMPARE(query.keyValue(1, "5000000001"), QVariant(qlonglong(5000000001)));
    QVERIFY(query.readsNumbers(1));
    QVERIFY(!DataQuery(server(), {}, {}).readsNumbers(1));
    QCOMPARE(
        query.values(1).text,
        QString("SELECT CAST(\"pr\"\"ice\" AS VARCHAR(4000)) FROM \"t\" WHERE \"pr\"\"ice\" IS "
                "NOT NULL"));
    QCOMPARE(DataCell::written(0.1, true), QString("n0.1"));
    QCOMPARE(DataCell::written(QByteArray("\x00\xff", 2), false), QString("b2:00ff"));
    QCOMPARE(DataCell::written("x", false), QString("tx"));
}

void tst_DataQuery::numbersRowsWithNullInItsPlace()
{
    DataTable known = odbc();
    QVERIFY(DataQuery(known, {1, true}, {}).survey(100).text.isEmpty());
    known.dialect.numbersRows = true;
    QVERIFY(DataQuery(known, {1, true}, {})
                .survey(100)
                .text.contains("OVER (ORDER BY CASE WHEN \"pr\"\"ice\" IS NULL THEN 0 ELSE 1 END "
                               "DESC, \"pr\"\"ice\" DESC, \"id\" DESC)"));
    QVERIFY(!DataQuery(known, {}, {}).survey(100).text.contains("CASE"));
    QVERIFY(!DataQuery(sqlite(), {1, true}, {}).survey(100).text.contains("CASE WHEN"));
}

void tst_DataQuery::looksForTextsWithPatterns()
{
    DataFilter filter;
    filter.text = {"50%_!", {2}};
    const SqlText count = DataQuery(odbc(), {}, filter).count({}).first();
    QCOMPARE(tail(count.text),
             QString(" FROM \"t\" WHERE (LOWER(CAST(\"note\" AS VARCHAR(4000))) LIKE LOWER(?) "
                     "ESCAPE '!')"));
    QCOMPARE(count.values, QVariantList {"%50!%!_!!%"});
}

void tst_DataQuery::neverPastesText()
{
    const QString evil = "x'); DROP TABLE t; --";
    for (const DataTable &each : {sqlite(), server(), odbc()}) {
        DataFilter filter;
        filter.text = {evil, {0, 2}};
        filter.conditions = {{2, DataCondition::Is::Equal, evil, false}};
        const DataQuery query(each, {2, false}, filter);
        RowRange range;
        range.after = {evil, "1"};
        QList<SqlText> texts = query.page(range, false, 10).parts + query.count(range)
            + query.find(range, false, {evil, {2}});
        texts << query.survey(100) << query.sums(1) << query.values(1);
        for (const SqlText &text : std::as_const(texts)) {
            QVERIFY(!text.text.contains("DROP"));
            QCOMPARE(text.text.count(u'?'), text.values.size());
        }
    }
}

void tst_DataQuery::filtersByText_data()
{
    QTest::addColumn<bool>("matchesCase");
    QTest::addColumn<bool>("wholeWords");
    QTest::addColumn<bool>("isExpression");
    QTest::addColumn<QString>("sqlite");
    QTest::addColumn<QString>("server");
    QTest::addColumn<QString>("sqliteValue");
    QTest::newRow("any case") << false << false << false
                              << "(instr(lower(CAST(`note` AS TEXT)), lower(?)) > 0)"
                              << "(strpos(lower(CAST(\"note\" AS TEXT)), lower(?)) > 0)"
                              << "a.b";
    QTest::newRow("case") << true << false << false << "(instr(CAST(`note` AS TEXT), ?) > 0)"
                          << "(strpos(CAST(\"note\" AS TEXT), ?) > 0)"
                          << "a.b";
    QTest::newRow("words") << true << true << false << "(CAST(`note` AS TEXT) REGEXP ?)"
                           << "(CAST(\"note\" AS TEXT) ~ ?)"
                           << "\\b(?:a\\.b)\\b";
    QTest::newRow("expression") << false << false << true << "(CAST(`note` AS TEXT) REGEXP ?)"
                                << "(CAST(\"note\" AS TEXT) ~* ?)"
                                << "(?i)a.b";
}

void tst_DataQuery::filtersByText()
{
    QFETCH(bool, matchesCase);
    QFETCH(bool, wholeWords);
    QFETCH(bool, isExpression);
    QFETCH(QString, sqliteValue);
    DataFilter filter;
    filter.text = {"a.b", {2}, matchesCase, wholeWords, isExpression};
    const auto where = [&](const DataTable &table) {
        return DataQuery(table, {}, filter).count({}).first();
    };
    QTEST(tail(where(::sqlite()).text).mid(16), "sqlite");
    QTEST(tail(where(::server()).text).mid(16), "server");
    QCOMPARE(where(::sqlite()).values, QVariantList {sqliteValue});
}

void tst_DataQuery::filtersByConditions()
{
    using Is = DataCondition::Is;
    DataFilter filter;
    filter.conditions = {{0, Is::AtLeast, "5", true},
                         {1, Is::Equal, "0.1", true},
                         {2, Is::NotEqual, "x", false},
                         {2, Is::NotNull, {}, false}};
    const SqlText count = DataQuery(sqlite(), {}, filter).count({}).first();
    QCOMPARE(tail(count.text),
             QString(" FROM \"t\" WHERE `id` >= ? AND CAST(`pr\"ice` AS TEXT) = ? AND "
                     "(`note` <> ? OR `note` IS NULL) AND `note` IS NOT NULL"));
    QCOMPARE(count.values, (QVariantList {qlonglong(5), "0.1", "x"}));
    const SqlText other = DataQuery(server(), {}, filter).count({}).first();
    QVERIFY(other.text.contains("\"pr\"\"ice\" = CAST(? AS numeric)"));
}

void tst_DataQuery::closesTheWhere()
{
    DataFilter filter;
    filter.where = "id > 5 -- all";
    filter.text = {"a", {}};
    const SqlText count = DataQuery(sqlite(), {}, filter).count({}).first();
    QCOMPARE(tail(count.text), QString(" FROM \"t\" WHERE 1 = 0 AND (id > 5 -- all\n)"));
}

void tst_DataQuery::tellsSingleConditions_data()
{
    QTest::addColumn<QString>("where");
    QTest::addColumn<bool>("isSingle");
    QTest::newRow("nothing") << "" << true;
    QTest::newRow("one") << "a = 1" << true;
    QTest::newRow("semicolon in a text") << "a = 'x;y'" << true;
    QTest::newRow("quote in a text") << "a = 'it''s; fine'" << true;
    QTest::newRow("semicolon in a comment") << "a = 1 -- ;" << true;
    QTest::newRow("semicolon in a name") << "\"a;b\" = 1" << true;
    QTest::newRow("two statements") << "a = 1; DELETE FROM t" << false;
    QTest::newRow("bracket too many") << "a = 1) OR (b = 2" << false;
    QTest::newRow("bracket left open") << "(a = 1" << false;
    QTest::newRow("text left open") << "a = 'x" << false;
    QTest::newRow("comment left open") << "a = 1 /* x" << false;
    QTest::newRow("escaped quote") << "a = E'\\' ' ; DELETE FROM t --'" << false;
    QTest::newRow("dollars") << "a = $x$ ' $x$ ; DELETE FROM t --'" << false;
    QTest::newRow("backslash alone") << "a ~ '\\d+'" << true;
}

void tst_DataQuery::tellsSingleConditions()
{
    QFETCH(QString, where);
    QTEST(isSingleCondition(where), "isSingle");
}

void tst_DataQuery::readsCells_data()
{
    QTest::addColumn<QString>("written");
    QTest::addColumn<int>("kind");
    QTest::addColumn<QString>("text");
    using Kind = DataCell::Kind;
    QTest::newRow("null") << QString() << int(Kind::Null) << "NULL";
    QTest::newRow("empty") << "t" << int(Kind::Text) << "";
    QTest::newRow("text") << "tnull" << int(Kind::Text) << "null";
    QTest::newRow("number") << "n-1.50" << int(Kind::Number) << "-1.50";
}

void tst_DataQuery::readsCells()
{
    QFETCH(QString, written);
    const DataCell cell(written);
    QTEST(int(cell.kind()), "kind");
    QTEST(cell.shown(), "text");
    const DataCell bytes("b3:00FF10");
    QCOMPARE(bytes.kind(), DataCell::Kind::Bytes);
    QVERIFY(bytes.shown().endsWith(": 00 ff 10"));
    QVERIFY(bytes.shown().startsWith(u'3'));
    QVERIFY(DataCell("b1000:" + QString(64, u'0')).shown().endsWith(QChar(0x2026)));
    QVERIFY(bytes.text().isEmpty());
    QCOMPARE(DataCell("b1:").shown(), QString("1 byte"));
}

QTEST_GUILESS_MAIN(tst_DataQuery)
#include "tst_dataquery.moc"
