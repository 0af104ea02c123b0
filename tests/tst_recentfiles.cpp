// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "basics/recentfiles.h"

#include <QFile>
#include <QSettings>
#include <QTemporaryDir>
#include <QTest>

#include <sys/stat.h>

class tst_RecentFiles : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void beginsEmpty();
    void newestIsFirst();
    void forgetsTheOldest();
    void remembersFilesOnly();
    void keepsWhatIsGone();

private:
    QString file(const QString &name) const;

    QTemporaryDir m_directory; //!< settings and files
};

void tst_RecentFiles::initTestCase()
{
    QCoreApplication::setApplicationName(QStringLiteral("recent"));
    QSettings::setDefaultFormat(QSettings::IniFormat);
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, m_directory.path());
}

void tst_RecentFiles::init()
{
    RecentFiles::clear();
}

//! The path of a file that exists.
QString tst_RecentFiles::file(const QString &name) const
{
    QFile made(m_directory.filePath(name));
    if (!made.open(QIODevice::WriteOnly))
        return {};
    return made.fileName();
}

void tst_RecentFiles::beginsEmpty()
{
    QCOMPARE(RecentFiles::paths(), QStringList());
}

void tst_RecentFiles::newestIsFirst()
{
    const QString a = file("a");
    const QString b = file("b");
    RecentFiles::add(a);
    RecentFiles::add(b);
    QCOMPARE(RecentFiles::paths(), QStringList({b, a}));
    RecentFiles::add(a);
    QCOMPARE(RecentFiles::paths(), QStringList({a, b}));
    const QString former = QDir::currentPath();
    QVERIFY(QDir::setCurrent(m_directory.path()));
    RecentFiles::add("b");
    QDir::setCurrent(former);
    QCOMPARE(RecentFiles::paths(), QStringList({b, a}));
}

void tst_RecentFiles::forgetsTheOldest()
{
    for (int i = 0; i <= RecentFiles::most; ++i)
        RecentFiles::add(file(QString::number(i)));
    const QStringList paths = RecentFiles::paths();
    QCOMPARE(paths.size(), RecentFiles::most);
    QCOMPARE(paths.last(), m_directory.filePath("1"));
}

void tst_RecentFiles::remembersFilesOnly()
{
    QCOMPARE(::mkfifo(QFile::encodeName(m_directory.filePath("pipe")), 0600), 0);
    for (const QString &path : {QStringLiteral("-"), m_directory.path(),
                                m_directory.filePath("missing"), m_directory.filePath("pipe")}) {
        RecentFiles::add(path);
    }
    QCOMPARE(RecentFiles::paths(), QStringList());
}

void tst_RecentFiles::keepsWhatIsGone()
{
    const QString path = file("gone");
    RecentFiles::add(path);
    QVERIFY(QFile::remove(path));
    QCOMPARE(RecentFiles::paths(), QStringList {path});
}

QTEST_GUILESS_MAIN(tst_RecentFiles)

#include "tst_recentfiles.moc"
