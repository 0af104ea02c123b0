// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "changingfile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

ChangingFile::ChangingFile(const QString &path, QRandomGenerator *random)
    : m_path(path)
    , m_random(random)
{
    write(someLines(20), false);
}

QByteArray ChangingFile::content() const
{
    QFile file(m_path);
    return isFile() && file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

bool ChangingFile::isFile() const
{
    return QFileInfo(m_path).isFile();
}

void ChangingFile::settle()
{
    if (isFile())
        return;
    remove();
    write(someLines(30), false);
}

void ChangingFile::remove()
{
    if (QFileInfo(m_path).isDir())
        QDir(m_path).removeRecursively();
    else
        QFile::remove(m_path);
}

QString ChangingFile::write(const QByteArray &bytes, bool append)
{
    QFile file(m_path);
    if (file.open(append ? QIODevice::Append : QIODevice::WriteOnly))
        file.write(bytes);
    return append ? QStringLiteral("append %1 bytes").arg(bytes.size())
                  : QStringLiteral("write %1 bytes").arg(bytes.size());
}

QByteArray ChangingFile::someLines(int count)
{
    QByteArray lines;
    for (int i = 0; i < count; ++i)
        lines += line();
    return lines;
}

//! Mostly what logs have, seldom what they should not have.
QByteArray ChangingFile::line()
{
    const int number = m_random->bounded(100000);
    const QByteArray digits = QByteArray::number(number);
    switch (m_random->bounded(24)) {
    case 0:
        return "\n";
    case 1:
        return QByteArray(m_random->bounded(60000), 'x') + digits + '\n';
    case 2:
        return "caf\xc3\xa9 \xe2\x82\xac \xf0\x9f\x99\x82 \xd7\xa9\xd7\x9c\xd7\x95\xd7\x9d "
            + digits + '\n';
    case 3: {
        QByteArray bytes;
        for (int i = m_random->bounded(80); i > 0; --i)
            bytes += char(m_random->bounded(256));
        return bytes + '\n';
    }
    case 4:
        return "with \x1b[31mcolour\x1b[0m and\ttabs " + digits + "\r\n";
    case 5:
        return "\"quoted, " + digits + "\",b,\"c\n\"\n";
    case 6:
        return "{\"key\": " + digits + ", \"text\": \"a\"}\n";
    case 7:
        return "2026-11-22T10:00:" + digits.right(2).rightJustified(2, '0') + "Z ERROR failed\n";
    default:
        return "2026-11-22 10:00:00 INFO request " + digits + " served\n";
    }
}

QString ChangingFile::change()
{
    if (!isFile()) {
        settle();
        return QStringLiteral("make the file");
    }
    switch (m_random->bounded(22)) {
    case 0:
        return write({}, false);
    case 1:
        return write(someLines(m_random->bounded(200)), false);
    case 2:
        QFile::resize(m_path, QFileInfo(m_path).size() / 2);
        return QStringLiteral("cut in half");
    case 3:
        QFile::remove(m_path + QLatin1String(".1"));
        QFile::rename(m_path, m_path + QLatin1String(".1"));
        return QStringLiteral("rotate, ") + write(someLines(m_random->bounded(20)), false);
    case 4:
        remove();
        return QStringLiteral("remove");
    case 5:
        remove();
        QDir().mkpath(m_path + QLatin1String("/within"));
        return QStringLiteral("replace by a folder");
    case 6:
        QFile::resize(m_path, QFileInfo(m_path).size() + m_random->bounded(20'000'000));
        return QStringLiteral("fill with a hole");
    case 7:
        return write("no end yet", true);
    case 8:
        return write(someLines(m_random->bounded(20000)), true);
    default:
        return write(someLines(1 + m_random->bounded(40)), true);
    }
}
