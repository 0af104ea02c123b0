// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

// Does anything to a view, at random, and holds what its window shows against a plain
// full repaint after every step. Prints and shrinks the history of a failure.

#include "reference.h"
#include "soakmodel.h"
#include "world.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QElapsedTimer>
#include <QTextStream>

namespace {

struct Failure
{
    qsizetype at = -1; //!< position in the list of steps
    QString reason;
    QStringList history;
};

//! The library's delegates instead of coloured rectangles.
bool hasCells = false;

//! Runs the given steps of a seed; stops at the first failure.
Failure run(const Combination &combination, quint64 seed, const QList<int> &steps)
{
    World world(combination, seed, hasCells);
    Failure failure;
    for (qsizetype i = 0; i < steps.size(); ++i) {
        failure.reason = world.step(steps.at(i));
        failure.history.append(QStringLiteral("step %1: %2").arg(steps.at(i)).arg(world.said()));
        if (!failure.reason.isEmpty()) {
            failure.at = i;
            return failure;
        }
    }
    return failure;
}

//! Leaves out steps as long as what remains fails still.
QList<int> shrink(const Combination &combination, quint64 seed, QList<int> steps)
{
    for (qsizetype chunk = steps.size() / 2; chunk > 0; chunk /= 2) {
        for (qsizetype from = 0; from < steps.size() - 1;) {
            QList<int> fewer = steps;
            fewer.remove(from, std::min(chunk, steps.size() - 1 - from));
            const Failure failure = run(combination, seed, fewer);
            if (failure.at >= 0)
                steps = fewer.mid(0, failure.at + 1);
            else
                from += chunk;
        }
    }
    return steps;
}

void report(const Combination &combination, quint64 seed, const QList<int> &steps)
{
    QTextStream out(stderr);
    const Failure failure = run(combination, seed, steps);
    out << "FAIL " << combination.name() << ", seed " << seed << ": " << failure.reason << '\n';
    for (const QString &line : failure.history)
        out << "  " << line << '\n';
}

QByteArray argument(int argc, char *argv[], const char *name)
{
    for (int i = 1; i + 1 < argc; ++i) {
        if (qstrcmp(argv[i], name) == 0)
            return argv[i + 1];
    }
    return {};
}

} // namespace

int main(int argc, char *argv[])
{
    // Both before there is an application.
    const QByteArray scale = argument(argc, argv, "--scale");
    const QByteArray style = argument(argc, argv, "--style");
    qputenv("QT_SCALE_FACTOR", scale.isEmpty() ? "1" : scale);
    qputenv("QT_STYLE_OVERRIDE", style.isEmpty() ? "fusion" : style);
    QApplication app(argc, argv);
    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("Does anything to a table view and checks its picture after every step."));
    parser.addHelpOption();
    const QCommandLineOption seedOption(QStringLiteral("seed"), QStringLiteral("First seed."),
                                        QStringLiteral("N"), QStringLiteral("1"));
    const QCommandLineOption stepsOption(QStringLiteral("steps"),
                                         QStringLiteral("Steps for each combination."),
                                         QStringLiteral("N"), QStringLiteral("2000"));
    const QCommandLineOption roundsOption(QStringLiteral("rounds"),
                                          QStringLiteral("Rounds, each with the next seed."),
                                          QStringLiteral("N"), QStringLiteral("1"));
    const QCommandLineOption onlyOption(QStringLiteral("only"),
                                        QStringLiteral("One combination, as printed."),
                                        QStringLiteral("NAME"));
    const QCommandLineOption delegateOption(
        QStringLiteral("delegate"),
        QStringLiteral("What paints: color (rectangles) or cells (Vantix::ItemDelegate)."),
        QStringLiteral("NAME"), QStringLiteral("color"));
    const QCommandLineOption scaleOption(QStringLiteral("scale"),
                                         QStringLiteral("Device pixels for each logical one."),
                                         QStringLiteral("N"), QStringLiteral("1"));
    const QCommandLineOption styleOption(QStringLiteral("style"),
                                         QStringLiteral("Name of the style."),
                                         QStringLiteral("NAME"), QStringLiteral("fusion"));
    parser.addOptions({seedOption, stepsOption, roundsOption, onlyOption, delegateOption,
                       scaleOption, styleOption});
    parser.process(app);
    hasCells = parser.value(delegateOption) == QStringLiteral("cells");

    QTextStream out(stdout);
    const quint64 firstSeed = parser.value(seedOption).toULongLong();
    const int stepCount = parser.value(stepsOption).toInt();
    QList<int> steps;
    for (int i = 0; i < stepCount; ++i)
        steps.append(i);

    QElapsedTimer timer;
    timer.start();
    int passed = 0;
    int failed = 0;
    for (int round = 0; round < parser.value(roundsOption).toInt(); ++round) {
        const quint64 seed = firstSeed + quint64(round);
        for (const Combination &combination : Combination::all()) {
            if (parser.isSet(onlyOption) && parser.value(onlyOption) != combination.name())
                continue;
            const Failure failure = run(combination, seed, steps);
            out << (failure.at < 0 ? "ok   " : "FAIL ") << combination.name() << ", seed " << seed
                << ", " << (failure.at < 0 ? stepCount : int(failure.at)) << " steps" << Qt::endl;
            ++(failure.at < 0 ? passed : failed);
            if (failure.at >= 0)
                report(combination, seed, shrink(combination, seed, steps.mid(0, failure.at + 1)));
        }
    }
    out << passed << " combinations passed, " << failed << " failed, " << timer.elapsed() / 1000
        << " s" << Qt::endl;
    return failed == 0 && passed > 0 ? 0 : 1;
}
