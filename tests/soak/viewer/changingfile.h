// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef CHANGINGFILE_H
#define CHANGINGFILE_H

#include <QByteArray>
#include <QRandomGenerator>
#include <QString>

//! A file to which everything happens that happens to logs.
class ChangingFile
{
public:
    //! Is at \a path, where nothing is yet, and changes as \a random wants, which must outlive it.
    ChangingFile(const QString &path, QRandomGenerator *random);

    QString path() const { return m_path; }
    //! Does something to the file. Returns what, for people.
    QString change();
    //! Makes the file a plain one again, if it is none.
    void settle();
    //! What is in it now; nothing if there is no plain file.
    QByteArray content() const;

private:
    QByteArray someLines(int count);
    QByteArray line();
    QString write(const QByteArray &bytes, bool append);
    bool isFile() const;
    void remove();

    const QString m_path;
    QRandomGenerator *m_random; //!< not owned
};

#endif // CHANGINGFILE_H
