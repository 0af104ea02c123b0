// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef EVENTPUMP_P_H
#define EVENTPUMP_P_H

#include <QCoreApplication>
#include <QElapsedTimer>

/*!
 * \brief Lets events through every 40 ms of a loop that would keep them waiting.
 *
 * They may do anything: who loops asks afterwards whether it can go on.
 */
class EventPump
{
public:
    //! Begins now.
    EventPump() { m_since.start(); }
    //! Goes on from the last pump(), at \a since; never due if that is invalid.
    explicit EventPump(const QElapsedTimer &since)
        : m_since(since)
    {
    }

    bool isDue() const { return m_since.isValid() && m_since.elapsed() >= 40; }
    void pump()
    {
        QCoreApplication::processEvents();
        m_since.restart();
    }
    QElapsedTimer since() const { return m_since; }

private:
    QElapsedTimer m_since; //!< since events were let through
};

#endif // EVENTPUMP_P_H
