// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "basics/icons.h"
#include "basics/language.h"
#include "data/datasource.h"
#include "session.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QPixmapCache>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <utility>

namespace {

const QString s_header = QStringLiteral("header");
const QString s_noHeader = QStringLiteral("no-header");
const QString s_format = QStringLiteral("format");
const QString s_capture = QStringLiteral("capture");
const QString s_noFollow = QStringLiteral("no-follow");
const QString s_delimiter = QStringLiteral("delimiter");
const QString s_encoding = QStringLiteral("encoding");
const QString s_rotated = QStringLiteral("rotated");
const QString s_feed = QStringLiteral("feed");
const QString s_rate = QStringLiteral("rate");
const QString s_newRows = QStringLiteral("new-rows");
const QString s_seconds = QStringLiteral("seconds");
const QString s_screenshot = QStringLiteral("screenshot");
const QString s_stats = QStringLiteral("stats");
const QString s_table = QStringLiteral("table");
const QString s_sql = QStringLiteral("sql");
const QString s_key = QStringLiteral("key");

QtMessageHandler s_formerHandler = nullptr; // of Qt's messages

//! Terminals are told things in English, as the manual tells them.
QString english(const char *text)
{
    return QString::fromUtf8(text);
}

void describe(QCommandLineParser *parser)
{
    parser->setApplicationDescription(
        english("Opens text files of any size, each behind a tab, and follows them as they grow.\n"
                "Without a file it opens what was open last time."));
    parser->addPositionalArgument(english("file"),
                                  english("Text file, pipe, - for standard input, database of "
                                          "SQLite, postgresql://user@host/database?table=name, or "
                                          "odbc:DSN=source?table=name."),
                                  english("[file...]"));
    parser->addOptions({
        {s_delimiter,
         english("Columns are separated by <separator>: tab, comma, semicolon, pipe, space, one "
                 "character, or none for no columns. Recognised by default."),
         english("separator")},
        {s_format,
         english(
             "Lines are those of <format>: text, json, logfmt, access, syslog or journal; or the "
             "files are those of <format> capture, packets of a network. Recognised by "
             "default."),
         english("format")},
        {s_header, english("The first line names the columns. Recognised by default.")},
        {s_noHeader, english("The first line is a row like any other.")},
        {s_noFollow, english("Begin at the first row, and do not follow.")},
        {s_encoding,
         english(
             "The text is in the encoding <name>: utf-8, utf-16le, utf-16be, utf-32le, utf-32be, "
             "latin-1, cp1252 or another one of a byte per character. Recognised by default."),
         english("name")},
        {s_rotated, english("Show the files that were rotated away before a file, too.")},
        {s_feed, english("Show a simulated market feed if no file is named.")},
        {s_rate, english("New rows per second of the feed, 0 to 50000."), english("rows"),
         QStringLiteral("1000")},
        {s_newRows, english("New rows of the feed appear at the top or at the end."),
         english("top|end"), QStringLiteral("top")},
        {s_table, english("Show <table> of a database, perhaps with its schema before a point."),
         english("table")},
        {s_sql, english("Show what <query> gives of a database."), english("query")},
        {s_key,
         english("Columns that tell the rows of a view or query apart, with commas between them."),
         english("columns")},
        {s_seconds, english("End after <n> seconds."), english("n")},
        {s_screenshot,
         english(
             "Save a picture of the first window to <png> at the end; ends after a second unless "
             "--seconds is given."),
         english("png")},
        {s_stats, english("Print figures about the run to stdout at the end, as a JSON object.")},
    });
    parser->addHelpOption();
    parser->addVersionOption();
}

// Fills in what the command line says. Returns what is wrong with it, or nothing.
QString readNumbers(const QCommandLineParser &parser, SessionOptions *options)
{
    bool isNumber = true;
    options->rate = parser.value(s_rate).toInt(&isNumber);
    if (!isNumber || options->rate < 0 || options->rate > FeedModel::maximumRate)
        return english("--rate wants a number from 0 to 50000.");
    if (!parser.isSet(s_seconds))
        return {};
    options->seconds = parser.value(s_seconds).toDouble(&isNumber);
    if (!isNumber || !(*options->seconds >= 0 && *options->seconds <= 1000000))
        return english("--seconds wants a number from 0 to 1000000.");
    return {};
}

// Passwords and databases that cannot be shown are refused before there is a window.
QString readDatabases(const QCommandLineParser &parser, SessionOptions *options)
{
    options->data = {parser.value(s_table), parser.value(s_sql),
                     parser.value(s_key).split(u',', Qt::SkipEmptyParts)};
    if (!options->data.table.isEmpty() && !options->data.sql.isEmpty())
        return english("--table and --sql exclude each other.");
    QString problem;
    bool hasDatabase = false;
    for (const QString &file : std::as_const(options->files)) {
        hasDatabase = DataSource::fromText(file, &problem) || hasDatabase;
        if (!problem.isEmpty())
            return problem;
    }
    if (hasDatabase && !canOpenData())
        return english("This program was built without databases: Qt's SQL module was missing.");
    if (!options->data.isEmpty() && !hasDatabase)
        return english("--table, --sql and --key want a database.");
    return {};
}

QString readOptions(const QCommandLineParser &parser, SessionOptions *options)
{
    options->files = parser.positionalArguments();
    options->follow = !parser.isSet(s_noFollow);
    options->stats = parser.isSet(s_stats);
    options->screenshot = parser.value(s_screenshot);
    options->format.hasOlderFiles = parser.isSet(s_rotated);
    if (parser.isSet(s_header) && parser.isSet(s_noHeader))
        return english("--header and --no-header exclude each other.");
    if (parser.isSet(s_header) || parser.isSet(s_noHeader))
        options->format.hasHeader = !parser.isSet(s_noHeader);
    if (parser.isSet(s_format)) {
        options->hasCaptures = parser.value(s_format) == s_capture;
        options->format.log = LogFormat::kindNamed(parser.value(s_format));
        if (!options->format.log && !options->hasCaptures)
            return english(
                "--format wants text, json, logfmt, access, syslog, journal or capture.");
        if (parser.isSet(s_delimiter))
            return english("--format and --delimiter exclude each other.");
    }
    if (parser.isSet(s_delimiter)) {
        options->format.delimiter = delimiterFromName(parser.value(s_delimiter));
        if (!options->format.delimiter)
            return english("--delimiter wants tab, comma, semicolon, pipe, space, none or one "
                           "character.");
    }
    if (parser.isSet(s_encoding)) {
        options->format.encoding = Encoding::named(parser.value(s_encoding));
        if (!options->format.encoding)
            return english(
                "--encoding wants utf-8, utf-16le, utf-16be, utf-32le, utf-32be, latin-1, "
                "cp1252 or another encoding of a byte per character that is known here.");
    }
    const QString newRows = parser.value(s_newRows);
    if (newRows != QLatin1String("top") && newRows != QLatin1String("end"))
        return english("--new-rows wants top or end.");
    if (newRows == QLatin1String("end"))
        options->newRows = FeedModel::NewRows::AtEnd;
    options->hasFeed = parser.isSet(s_feed) || parser.isSet(s_rate) || parser.isSet(s_newRows);
    QString problem = readNumbers(parser, options);
    if (problem.isEmpty())
        problem = readDatabases(parser, options);
    if (!options->screenshot.isEmpty() && !options->seconds)
        options->seconds = 1;
    return problem;
}

// Whether one of the arguments is an option of that name.
template<std::size_t count> bool hasOption(int argc, char **argv, const char *const (&names)[count])
{
    for (int i = 1; i < argc && std::strcmp(argv[i], "--") != 0; ++i) {
        for (const char *name : names) {
            const std::size_t length = std::strlen(name);
            if (std::strncmp(argv[i], name, length) == 0
                && (argv[i][length] == '\0' || argv[i][length] == '='))
                return true;
        }
    }
    return false;
}

// A run that ends by itself needs nobody who looks at it.
void doWithoutDisplay(int argc, char **argv)
{
#if defined(Q_OS_UNIX) && !defined(Q_OS_DARWIN)
    const bool hasDisplay =
        qEnvironmentVariableIsSet("DISPLAY") || qEnvironmentVariableIsSet("WAYLAND_DISPLAY");
    if (hasDisplay || qEnvironmentVariableIsSet("QT_QPA_PLATFORM")
        || hasOption(argc, argv, {"-platform", "--platform"}))
        return;
    if (hasOption(argc, argv, {"--seconds", "--screenshot"}))
        qputenv("QT_QPA_PLATFORM", "offscreen");
#endif
}

int runProgram(const QApplication &application)
{
    QCommandLineParser parser;
    describe(&parser);
    parser.process(application);
    SessionOptions options;
    const QString problem = readOptions(parser, &options);
    if (!problem.isEmpty()) {
        std::fprintf(stderr, "vantix-viewer: %s\n", qUtf8Printable(problem));
        return 1;
    }
    Language::install(); // not before: what Qt says of the command line is English, too
    Session session(options);
    return session.run();
}

// Qt ends a program that finds no display by abort(): somebody who wanted to see a file
// gets a sentence instead, and no core dump.
void explainMissingDisplay(QtMsgType type, const QMessageLogContext &context,
                           const QString &message)
{
    if (type != QtFatalMsg) {
        s_formerHandler(type, context, message);
        return;
    }
    std::fprintf(stderr, "vantix-viewer: %s\n%s\n", qPrintable(message.trimmed()),
                 "There is no display to open a window on. With --screenshot or --seconds, or "
                 "with\nQT_QPA_PLATFORM=offscreen in the environment, none is needed.");
    std::_Exit(1);
}

// Help and version are for terminals without a display too.
int printHelp(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    QCommandLineParser parser;
    describe(&parser);
    parser.process(application);
    return 0;
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication::setApplicationName(QStringLiteral("vantix-viewer"));
    QCoreApplication::setOrganizationName(QStringLiteral("vantix")); // where settings are kept
    QCoreApplication::setApplicationVersion(QStringLiteral(VIEWER_VERSION));
    if (hasOption(argc, argv, {"--help", "-h", "--help-all", "--version", "-v"}))
        return printHelp(argc, argv);
    doWithoutDisplay(argc, argv);
    s_formerHandler = qInstallMessageHandler(explainMissingDisplay);
    const QApplication application(argc, argv);
    QApplication::setWindowIcon(Icons::program());
    QGuiApplication::setDesktopFileName(QStringLiteral("vantix-viewer"));
    qInstallMessageHandler(s_formerHandler);
    QPixmapCache::setCacheLimit(32 * 1024); // KiB: a big screen of cells at a ratio of 2
    return runProgram(application);
}
