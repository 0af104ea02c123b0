// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef DATATHREAD_H
#define DATATHREAD_H

#include "dataconnection.h"

#include <QDeadlineTimer>
#include <QObject>
#include <QSemaphore>
#include <QThread>

#include <functional>
#include <memory>
#include <optional>
#include <utility>

/*!
 * \brief A connection in a thread of its own, to which work is given.
 *
 * One thing is done after the other. What is to be done with the result runs in the thread of an
 * object, which must outlive this one.
 */
class DataThread
{
public:
    DataThread();
    //! Gives up what is running, and waits for its end.
    ~DataThread();

    //! Has \a work done, and then \a done in the thread of \a context.
    template<typename Work, typename Done> void run(QObject *context, Work work, Done done)
    {
        QMetaObject::invokeMethod(m_worker, [this, context, work, done] {
            auto result = work(m_connection);
            QMetaObject::invokeMethod(
                context, [done, result] { done(result); }, Qt::QueuedConnection);
        });
    }
    //! Has \a work done, and waits for its result. What takes longer than \a limit milliseconds is
    //! ended, as by cancel(), and so is what was to be done before it; nothing comes of it where a
    //! server does not notice for as long again. What \a work uses must be its own.
    template<typename Work>
    auto runNow(int limit, Work work)
        -> std::optional<decltype(work(std::declval<DataConnection &>()))>
    {
        struct Outcome
        {
            decltype(work(std::declval<DataConnection &>())) result;
            QSemaphore done;
        };
        const auto outcome = std::make_shared<Outcome>();
        QMetaObject::invokeMethod(m_worker, [this, outcome, work] {
            outcome->result = work(m_connection);
            outcome->done.release();
        });
        for (const QDeadlineTimer end(2 * limit); !outcome->done.tryAcquire(1, limit);) {
            cancel();
            if (end.hasExpired())
                return {};
        }
        return outcome->result;
    }
    //! Ends the query that runs, if one does.
    void cancel() { m_connection.cancel(); }

private:
    Q_DISABLE_COPY(DataThread)

    QThread m_thread;
    QObject *m_worker;           //!< lives in m_thread, and goes with it
    DataConnection m_connection; //!< used in m_thread only, but for cancel()
};

#endif // DATATHREAD_H
