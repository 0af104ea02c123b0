// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef ENDSIGNALS_H
#define ENDSIGNALS_H

#include <QObject>

#include <array>

class QSocketNotifier;

/*!
 * \brief Turns the signals by which a process is asked to end, SIGTERM, SIGINT and SIGHUP,
 * into one of an object's.
 *
 * The system's default is to end at once, and what is to be kept would be lost. A second
 * such signal does that still. One object at a time.
 */
class EndSignals : public QObject
{
    Q_OBJECT

public:
    EndSignals();
    ~EndSignals() override;

Q_SIGNALS:
    //! The process has been asked to end.
    void received();

private:
    void takeOne();

    std::array<int, 2> m_pipe {-1, -1};    //!< read from and written to
    QSocketNotifier *m_notifier = nullptr; //!< of what can be read
};

#endif // ENDSIGNALS_H
