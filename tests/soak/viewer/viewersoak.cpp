// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

// Does anything to the viewer, at random, while its files grow, rotate and vanish, and holds
// what it shows against them again and again.

#include "user.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QElapsedTimer>
#include <QSettings>
#include <QTextStream>

#include <cstdlib>

namespace {

constexpr int s_stepsBetweenChecks = 60;
constexpr int s_toldSteps = 80; // before a failure

QtMessageHandler s_formerHandler = nullptr; // of Qt's messages

//! Nobody shall ask a model for what it does not have. Ends the run there and then, so that a
//! debugger or the address sanitizer tells who did.
void watchMessages(QtMsgType type, const QMessageLogContext &context, const QString &message)
{
    s_formerHandler(type, context, message);
    if (qstrcmp(context.category, "qt.core.qabstractitemmodel.checkindex") == 0)
        std::abort();
}

} // namespace

int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    QCommandLineParser parser;
    parser.addOptions({
        {QStringLiteral("seed"), QStringLiteral("First seed"), QStringLiteral("n"),
         QStringLiteral("1")},
        {QStringLiteral("steps"), QStringLiteral("Steps of a seed"), QStringLiteral("n"),
         QStringLiteral("1000")},
        {QStringLiteral("seconds"), QStringLiteral("Go on with other seeds for as long"),
         QStringLiteral("n"), QStringLiteral("0")},
    });
    parser.addHelpOption();
    parser.process(application);
    const QTemporaryDir settings;
    QSettings::setDefaultFormat(QSettings::IniFormat);
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, settings.path());

    s_formerHandler = qInstallMessageHandler(watchMessages);
    QTextStream out(stdout);
    QElapsedTimer clock;
    clock.start();
    quint32 seed = parser.value(QStringLiteral("seed")).toUInt();
    const int steps = parser.value(QStringLiteral("steps")).toInt();
    const qint64 milliseconds = parser.value(QStringLiteral("seconds")).toLongLong() * 1000;
    qint64 done = 0;
    do {
        out << "seed " << seed << Qt::endl;
        User user(seed);
        QStringList history;
        for (int step = 1; step <= steps; ++step, ++done) {
            history.append(QStringLiteral("%1: %2").arg(step).arg(user.step()));
            if (qEnvironmentVariableIsSet("VANTIX_SOAK_TELL"))
                out << history.last() << Qt::endl;
            const QString problem =
                step % s_stepsBetweenChecks == 0 || step == steps ? user.check() : QString();
            if (problem.isEmpty())
                continue;
            out << history.mid(history.size() - s_toldSteps).join(u'\n') << Qt::endl
                << "seed " << seed << ": " << problem << Qt::endl;
            return 1;
        }
        ++seed;
    } while (clock.elapsed() < milliseconds);
    out << done << " steps, nothing found" << Qt::endl;
    return 0;
}
