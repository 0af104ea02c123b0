// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef NEWESTFILEWATCH_H
#define NEWESTFILEWATCH_H

#include <QObject>
#include <QThread>
#include <QTimer>

/*!
 * \brief Looks for the newest file of a pattern again and again.
 *
 * It does so in a thread of its own: a folder may be large, or on a machine far away.
 */
class NewestFileWatch : public QObject
{
    Q_OBJECT

public:
    NewestFileWatch();
    //! Waits for a look that is not over.
    ~NewestFileWatch() override;

    //! Begins to look for files of \a pattern. Called once at most.
    void start(const QString &pattern);

Q_SIGNALS:
    //! \a path is the newest file, as newestFile() tells it; told after each look that found
    //! one.
    void found(const QString &path);

private:
    void look();
    void tell(const QString &newest);

    QString m_pattern; //!< see start()
    QTimer m_pause;    //!< between two looks
    QThread m_thread;  //!< looks
    QObject m_looker;  //!< lives in m_thread
};

#endif // NEWESTFILEWATCH_H
