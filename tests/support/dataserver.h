// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef DATASERVER_H
#define DATASERVER_H

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QSqlDatabase>
#include <QStandardPaths>
#include <QTemporaryDir>

#include <unistd.h>

//! A PostgreSQL server of a test's own, in a temporary folder, which only its socket leads to.
class DataServer
{
public:
    ~DataServer() { stop(); }

    //! Sets it up and starts it. Returns why that cannot be, or nothing.
    QString start()
    {
        if (!QSqlDatabase::isDriverAvailable(QStringLiteral("QPSQL")))
            return QStringLiteral("Qt's driver for PostgreSQL is not installed.");
        m_programs = programs();
        if (m_programs.isEmpty())
            return QStringLiteral("A PostgreSQL server is not installed.");
        if (geteuid() == 0 && QStandardPaths::findExecutable(QStringLiteral("runuser")).isEmpty())
            return QStringLiteral("The server does not run as root, and there is no runuser.");
        // As somebody else, who comes into a folder of root's only if all do.
        if (geteuid() == 0) {
            QFile::setPermissions(m_folder.path(),
                                  QFile::permissions(m_folder.path()) | QFile::ReadOther
                                      | QFile::ExeOther | QFile::WriteOther);
        }
        QString said;
        if (!run(QStringLiteral("initdb"),
                 {QStringLiteral("-D"), data(), QStringLiteral("-A"), QStringLiteral("trust"),
                  QStringLiteral("-U"), QStringLiteral("tester"), QStringLiteral("-E"),
                  QStringLiteral("UTF8"), QStringLiteral("--locale=C.UTF-8"),
                  QStringLiteral("--no-sync")},
                 &said))
            return said;
        return restart(&said) ? QString() : said;
    }
    //! Starts it again after stop().
    bool restart(QString *said)
    {
        const QString options =
            QStringLiteral("-F -k %1 -c listen_addresses= -c max_connections=20").arg(folder());
        return run(QStringLiteral("pg_ctl"),
                   {QStringLiteral("-D"), data(), QStringLiteral("-l"),
                    m_folder.filePath(QStringLiteral("data/log")), QStringLiteral("-w"),
                    QStringLiteral("-o"), options, QStringLiteral("start")},
                   said);
    }
    //! Ends it at once, as if it had crashed.
    void stop()
    {
        QString said;
        if (!m_programs.isEmpty() && QFile::exists(data()))
            run(QStringLiteral("pg_ctl"),
                {QStringLiteral("-D"), data(), QStringLiteral("-m"), QStringLiteral("immediate"),
                 QStringLiteral("-w"), QStringLiteral("stop")},
                &said);
    }
    //! The folder of its socket.
    QString folder() const { return m_folder.path(); }
    //! Where its programs are.
    QString programFolder() const { return m_programs; }

private:
    static QString programs()
    {
        const QString known = QStandardPaths::findExecutable(QStringLiteral("initdb"));
        if (!known.isEmpty())
            return QFileInfo(known).path();
        const QDir all(QStringLiteral("/usr/lib/postgresql"));
        const QStringList versions =
            all.entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name | QDir::Reversed);
        for (const QString &version : versions) {
            const QString folder = all.filePath(version) + QStringLiteral("/bin");
            if (QFile::exists(folder + QStringLiteral("/initdb")))
                return folder;
        }
        return {};
    }
    QString data() const { return m_folder.filePath(QStringLiteral("data")); }

    bool run(const QString &program, QStringList arguments, QString *said)
    {
        QString started = m_programs + u'/' + program;
        if (geteuid() == 0) {
            arguments = QStringList {QStringLiteral("-u"), QStringLiteral("postgres"),
                                     QStringLiteral("--"), started}
                + arguments;
            started = QStringLiteral("runuser");
        }
        QProcess process;
        process.setProcessChannelMode(QProcess::MergedChannels);
        process.setWorkingDirectory(QDir::rootPath());
        // What it starts would keep a pipe open.
        const QString output = m_output.filePath(QStringLiteral("output"));
        process.setStandardOutputFile(output);
        process.start(started, arguments);
        const bool isDone = process.waitForFinished(120000) && process.exitCode() == 0;
        QFile file(output);
        if (file.open(QIODevice::ReadOnly))
            *said = QString::fromLocal8Bit(file.readAll());
        return isDone;
    }

    QTemporaryDir m_folder {QStringLiteral("/tmp/vantix-pg-XXXXXX")}; // sockets have short paths
    QTemporaryDir m_output;
    QString m_programs;
};

#endif // DATASERVER_H
