// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "files/logformat.h"

#include <QTest>

using Kind = LogFormat::Kind;

class tst_LogFormat : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void recognises_data();
    void recognises();
    void namesColumns_data();
    void namesColumns();
    void splits_data();
    void splits();
    void asksForAKind();
    void survivesAnyLine();
};

void tst_LogFormat::recognises_data()
{
    QTest::addColumn<QStringList>("lines");
    QTest::addColumn<Kind>("kind");
    const auto row = [](const char *what, const QStringList &lines, Kind kind) {
        QTest::newRow(what) << lines << kind;
    };
    const QString json = R"({"a": 1, "b": "x"})";
    const QString access = R"(10.0.0.1 - bob [22/Nov/2026:11:25:45 +0000] "GET / HTTP/1.1" 200 12)";
    const QString combined = access + R"( "http://a/" "Browser \"x\" 1")";
    const QString syslog = "Nov 22 11:25:45 host sshd[123]: Accepted key";
    const QString logfmt = R"(level=info msg="it works" n=3)";
    row("nothing", {}, Kind::None);
    row("text", {"hello", "world"}, Kind::None);
    row("JSON lines", {json, json}, Kind::JsonLines);
    row("one object", {json}, Kind::JsonLines);
    row("an empty object", {"{}", json}, Kind::JsonLines);
    row("JSON, last line cut off", {json, R"({"a": 1, "b)"}, Kind::JsonLines);
    row("an object that is cut off", {R"({"a": 1, "b)"}, Kind::None);
    row("JSON, empty lines", {json, "", json, ""}, Kind::JsonLines);
    row("journal", {R"({"MESSAGE": "a", "__REALTIME_TIMESTAMP": "1"})"}, Kind::Journal);
    row("no journal", {R"({"MESSAGE": "__REALTIME_TIMESTAMP"})"}, Kind::JsonLines);
    row("arrays", {"[1, 2]", "[3]"}, Kind::None);
    row("JSON, much else", {json, "x", "y", json}, Kind::None);
    row("common log", {access, access}, Kind::AccessLog);
    row("combined log", {combined, combined}, Kind::AccessLog);
    row("syslog", {syslog, syslog}, Kind::Syslog);
    row("syslog of days below ten", {"Nov  2 11:25:45 host kernel: up"}, Kind::Syslog);
    row("syslog with priority", {"<34>" + syslog}, Kind::Syslog);
    row("syslog with zone", {"2026-11-22T11:25:45.123456+01:00 host systemd[1]: Started a: b"},
        Kind::Syslog);
    row("logfmt", {logfmt, logfmt}, Kind::Logfmt);
    row("one value is no log", {"a=1", "b=2"}, Kind::None);
    row("words with values", {"started a=1 b=2", "stopped a=1 b=2"}, Kind::None);
    row("time and level", {"2026-11-22 11:25:45 INFO server: hello"}, Kind::None);
}

void tst_LogFormat::recognises()
{
    QFETCH(QStringList, lines);
    QTEST(LogFormat::of(lines).kind, "kind");
    QCOMPARE(LogFormat::of(lines).names.isEmpty(), LogFormat::of(lines).kind == Kind::None);
}

void tst_LogFormat::namesColumns_data()
{
    QTest::addColumn<Kind>("kind");
    QTest::addColumn<QStringList>("lines");
    QTest::addColumn<QStringList>("names");
    QTest::newRow("order of appearance")
        << Kind::JsonLines << QStringList {R"({"z": 1, "a": 2})", R"({"m": 1, "z": 2})", "no"}
        << QStringList {"z", "a", "m", "More"};
    QTest::newRow("escaped names") << Kind::JsonLines << QStringList {R"({"\u00e4 \"b\"": 1})"}
                                   << QStringList {QString::fromUtf8("ä \"b\""), "More"};
    QTest::newRow("nested") << Kind::JsonLines
                            << QStringList {R"({"a": {"b": 1}, "c": [{"d": 2}]})"}
                            << QStringList {"a", "c", "More"};
    QTest::newRow("logfmt") << Kind::Logfmt << QStringList {"b=1 a=2", "c=3 word b=4"}
                            << QStringList {"b", "a", "c", "More"};
    QTest::newRow("syslog") << Kind::Syslog << QStringList()
                            << QStringList {"Time", "Host", "Program", "Process", "Message"};
    QTest::newRow("none") << Kind::None << QStringList {"a"} << QStringList();
}

void tst_LogFormat::namesColumns()
{
    QFETCH(Kind, kind);
    QFETCH(QStringList, lines);
    QTEST(LogFormat::ofKind(kind, lines).names, "names");
}

void tst_LogFormat::splits_data()
{
    QTest::addColumn<Kind>("kind");
    QTest::addColumn<QStringList>("names");
    QTest::addColumn<QString>("line");
    QTest::addColumn<QStringList>("fields");
    const auto json = [](const char *what, const QString &line, const QStringList &fields) {
        QTest::newRow(what) << Kind::JsonLines << QStringList {"a", "b", "More"} << line << fields;
    };
    json("members", R"({"a": 1, "b": "x"})", {"1", "x", ""});
    json("other order", R"({"b": "x", "a": 1})", {"1", "x", ""});
    json("missing", R"({"b": null})", {"", "null", ""});
    json("no member", "{}", {"", "", ""});
    json("blanks", " { \"a\" : true , \"b\" : [1, {\"c\": \"}\"}] } ",
         {"true", R"([1, {"c": "}"}])", ""});
    json("all digits stay", R"({"a":12345678901234567890.10,"b":-0e5})",
         {"12345678901234567890.10", "-0e5", ""});
    json("escapes", R"({"a": "x\n\t\"\\\/\u20ac\ud83d\ude42", "b": ""})",
         {QString::fromUtf8("x\n\t\"\\/€🙂"), "", ""});
    json("others", R"({"c": 1, "a": 2, "d": "e"})", {"2", "", R"("c": 1, "d": "e")"});
    json("twice", R"({"a": 1, "a": 2})", {"1", "", R"("a": 2)"});
    json("empty first", R"({"a": "", "a": 2})", {"", "", R"("a": 2)"});
    json("no JSON", "at main.cpp:3", {"", "", "at main.cpp:3"});
    json("cut off", R"({"a": 1, "b": "x)", {"", "", R"({"a": 1, "b": "x)"});
    json("behind it", R"({"a": 1} x)", {"", "", R"({"a": 1} x)"});
    json("nothing", "", {"", "", ""});
    const auto logfmt = [](const char *what, const QString &line, const QStringList &fields) {
        QTest::newRow(what) << Kind::Logfmt << QStringList {"a", "b", "More"} << line << fields;
    };
    logfmt("logfmt", "a=1 b=x", {"1", "x", ""});
    logfmt("logfmt in quotes", R"(b="x \"y\" = z" a=)", {"", "x \"y\" = z", ""});
    logfmt("logfmt, words", "start a=1 of 3 c=4", {"1", "", "start, of 3, c=4"});
    logfmt("logfmt, words only", "panic: \"a\"  in  main", {"", "", "panic: \"a\"  in  main"});
    logfmt("logfmt, words at the end", "a=1 and  so on ", {"1", "", "and  so on"});
    logfmt("logfmt, quote without end", R"(a=1 b="x)", {"", "", R"(a=1 b="x)"});
    logfmt("logfmt, a URL", "a=http://x/?q=1&r=2", {"http://x/?q=1&r=2", "", ""});
    const QStringList accessNames = LogFormat::ofKind(Kind::AccessLog, {}).names;
    QTest::newRow("common log")
        << Kind::AccessLog << accessNames
        << R"(::1 - bob [22/Nov/2026:11:25:45 +0000] "GET /a b HTTP/1.1" 404 -)"
        << QStringList {
               "::1", "-", "bob", "22/Nov/2026:11:25:45 +0000", "GET /a b HTTP/1.1", "404", "-",
               "",    "",  ""};
    QTest::newRow("combined log")
        << Kind::AccessLog << accessNames
        << R"_(h - - [t] "\"x\"" 200 5 "http://r/" "Agent (1; \"2\")" 0.003 up)_"
        << QStringList {"h",       "-",         "-",
                        "t",       R"(\"x\")",  "200",
                        "5",       "http://r/", R"_(Agent (1; \"2\"))_",
                        "0.003 up"};
    QTest::newRow("no access") << Kind::AccessLog << accessNames << "hello"
                               << QStringList {"", "", "", "", "", "", "", "", "", "hello"};
    const QStringList syslogNames = LogFormat::ofKind(Kind::Syslog, {}).names;
    QTest::newRow("syslog") << Kind::Syslog << syslogNames
                            << "Nov 22 11:25:45 host a/b[12]: c: d [e]"
                            << QStringList {"Nov 22 11:25:45", "host", "a/b", "12", "c: d [e]"};
    QTest::newRow("syslog without process")
        << Kind::Syslog << syslogNames << "Nov 22 11:25:45 host kernel: [ 1.0] up"
        << QStringList {"Nov 22 11:25:45", "host", "kernel", "", "[ 1.0] up"};
    QTest::newRow("syslog with priority")
        << Kind::Syslog << syslogNames << "<34>Nov 22 11:25:45 host su: failed"
        << QStringList {"<34>Nov 22 11:25:45", "host", "su", "", "failed"};
    QTest::newRow("syslog, repeated")
        << Kind::Syslog << syslogNames << "last message repeated 3 times"
        << QStringList {"", "", "", "", "last message repeated 3 times"};
    QTest::newRow("none") << Kind::None << QStringList() << "a=1" << QStringList {"a=1"};
}

void tst_LogFormat::splits()
{
    QFETCH(Kind, kind);
    QFETCH(QStringList, names);
    QFETCH(QString, line);
    QFETCH(QStringList, fields);
    QCOMPARE((LogFormat {kind, names}.split(line)), fields);
}

//! What is asked for holds, whatever the lines are.
void tst_LogFormat::asksForAKind()
{
    const LogFormat format = LogFormat::ofKind(Kind::JsonLines, {"no JSON", ""});
    QCOMPARE(format.kind, Kind::JsonLines);
    QCOMPARE(format.names, QStringList {"More"});
    QCOMPARE(format.split("no JSON"), QStringList {"no JSON"});
}

void tst_LogFormat::survivesAnyLine()
{
    const QString characters = QString::fromUtf8("{}[]\",:\\ =ab1u\t<>.-ä");
    quint32 state = 1;
    for (int i = 0; i < 20000; ++i) {
        QString line;
        const int length = int((state >> 3) % 24);
        for (int at = 0; at < length; ++at) {
            state = state * 1664525U + 1013904223U;
            line += characters[qsizetype((state >> 8) % quint32(characters.size()))];
        }
        state = state * 1664525U + 1013904223U;
        for (const Kind kind :
             {Kind::JsonLines, Kind::Logfmt, Kind::AccessLog, Kind::Syslog, Kind::Journal}) {
            const LogFormat format = LogFormat::ofKind(kind, {line});
            QCOMPARE(format.split(line).size(), format.names.size());
        }
    }
}

QTEST_GUILESS_MAIN(tst_LogFormat)

#include "tst_logformat.moc"
