// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef DATATHREAD_H
#define DATATHREAD_H

#include "dataconnection.h"

#include <QDeadlineTimer>
#include <QMutex>
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
    //! Gives up what is running, and waits for its end. What does not end within two seconds, as
    //! its engine cannot be told, is left to itself: it goes when it is done, and nobody hears of
    //! it.
    ~DataThread();

    //! Has \a work done, and then \a done in the thread of \a context.
    template<typename Work, typename Done> void run(QObject *context, Work work, Done done)
    {
        QMetaObject::invokeMethod(m_running->worker, [running = m_running, context, work, done] {
            auto result = work(running->connection);
            const QMutexLocker lock(&running->mutex);
            if (running->isLeft)
                return;
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
        QMetaObject::invokeMethod(m_running->worker, [running = m_running, outcome, work] {
            outcome->result = work(running->connection);
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
    void cancel() { m_running->connection.cancel(); }

private:
    Q_DISABLE_COPY(DataThread)

    //! May stay behind.
    struct Running
    {
        QThread thread;
        QObject *worker = nullptr; //!< lives in the thread, and goes with it
        DataConnection connection; //!< used in the thread only, but for cancel()
        QMutex mutex;
        bool isLeft = false; //!< whom results are for may be gone
    };

    Running *m_running; //!< owned, until it is left
};

#endif // DATATHREAD_H
