// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef ODBCDRIVERS_H
#define ODBCDRIVERS_H

#include <QDir>
#include <QFile>
#include <QLibrary>
#include <QSqlDatabase>
#include <QString>
#include <QTemporaryDir>

//! The drivers and sources of ODBC that a test has, whatever the machine is set up for.
class OdbcDrivers
{
public:
    //! Names the driver in \a library, a file's name, \a driver, and has nothing else known.
    //! Returns why that cannot be, or nothing.
    QString set(const QString &driver, const QString &library)
    {
        if (!QSqlDatabase::isDriverAvailable(QStringLiteral("QODBC")))
            return QStringLiteral("Qt's driver for ODBC is not installed.");
        const QString path = pathOf(library);
        if (path.isEmpty())
            return library + QStringLiteral(" is not installed.");
        keep(path);
        keep(QStringLiteral("libodbc.so.2"));
        keep(QStringLiteral("libodbcinst.so.2"));
        write(QStringLiteral("odbcinst.ini"),
              u'[' + driver + QStringLiteral("]\nDriver=") + path
                  + QStringLiteral("\n[Gone]\nDriver=/nowhere/driver.so\n"));
        qputenv("ODBCSYSINI", QFile::encodeName(m_folder.path()));
        qputenv("ODBCINI", QFile::encodeName(m_folder.filePath(QStringLiteral("odbc.ini"))));
        return {};
    }
    //! Makes \a source known, whose entries are \a lines.
    void setSource(const QString &source, const QString &lines)
    {
        write(QStringLiteral("odbc.ini"), u'[' + source + QStringLiteral("]\n") + lines + u'\n');
    }

private:
    //! What it never gives back could not be told from other leaks once it is unloaded.
    static void keep(const QString &path)
    {
        QLibrary library(path);
        library.setLoadHints(QLibrary::PreventUnloadHint);
        library.load();
    }
    static QString pathOf(const QString &library)
    {
        QStringList folders {QStringLiteral("/usr/lib/odbc"), QStringLiteral("/usr/lib64"),
                             QStringLiteral("/usr/local/lib"), QStringLiteral("/usr/lib")};
        const QDir all(QStringLiteral("/usr/lib"));
        const QStringList machines = all.entryList(QDir::Dirs | QDir::NoDotAndDotDot);
        for (const QString &machine : machines)
            folders << all.filePath(machine + QStringLiteral("/odbc"));
        for (const QString &folder : std::as_const(folders)) {
            if (QFile::exists(folder + u'/' + library))
                return folder + u'/' + library;
        }
        return {};
    }
    void write(const QString &name, const QString &text)
    {
        QFile file(m_folder.filePath(name));
        if (!file.open(QIODevice::WriteOnly) || file.write(text.toUtf8()) < 0)
            qFatal("%s cannot be written.", qPrintable(file.fileName()));
    }

    QTemporaryDir m_folder;
};

#endif // ODBCDRIVERS_H
