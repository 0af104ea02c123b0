// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "datathread.h"

DataThread::DataThread()
    : m_worker(new QObject)
{
    m_worker->moveToThread(&m_thread);
    m_thread.setObjectName(QStringLiteral("data"));
    m_thread.start();
}

DataThread::~DataThread()
{
    QMetaObject::invokeMethod(m_worker, [this] { m_connection.close(); });
    m_connection.cancel();
    m_worker->deleteLater();
    m_thread.quit();
    // A query may have begun just after the one that was ended.
    while (!m_thread.wait(50))
        m_connection.cancel();
}
