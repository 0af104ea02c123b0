// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "datathread.h"

#include <QCoreApplication>

namespace {

constexpr int s_longestGoodbye = 2000; // ms

} // namespace

DataThread::DataThread()
    : m_running(new Running)
{
    m_running->worker = new QObject;
    m_running->worker->moveToThread(&m_running->thread);
    m_running->thread.setObjectName(QStringLiteral("data"));
    m_running->thread.start();
}

DataThread::~DataThread()
{
    Running *running = m_running;
    QMetaObject::invokeMethod(running->worker, [running] { running->connection.close(); });
    cancel();
    running->worker->deleteLater();
    running->thread.quit();
    // A query may have begun just after the one that was ended.
    for (const QDeadlineTimer end(s_longestGoodbye); !running->thread.wait(50);) {
        cancel();
        if (!end.hasExpired())
            continue;
        const QMutexLocker lock(&running->mutex);
        running->isLeft = true;
        QObject::connect(&running->thread, &QThread::finished, qApp, [running] {
            running->thread.wait();
            delete running;
        });
        return;
    }
    delete running;
}
