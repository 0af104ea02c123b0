// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "newestfilewatch.h"

#include "newestfile.h"

namespace {

constexpr int s_pause = 1000; // ms

} // namespace

NewestFileWatch::NewestFileWatch()
{
    m_pause.setSingleShot(true);
    m_pause.setInterval(s_pause);
    connect(&m_pause, &QTimer::timeout, this, &NewestFileWatch::look);
    m_looker.moveToThread(&m_thread);
}

NewestFileWatch::~NewestFileWatch()
{
    m_thread.quit();
    m_thread.wait();
}

void NewestFileWatch::start(const QString &pattern)
{
    m_pattern = pattern;
    m_thread.start(QThread::LowPriority);
    m_pause.start();
}

void NewestFileWatch::look()
{
    QMetaObject::invokeMethod(&m_looker, [this, pattern = m_pattern] {
        const QString newest = newestFile(pattern);
        QMetaObject::invokeMethod(this, [this, newest] { tell(newest); });
    });
}

void NewestFileWatch::tell(const QString &newest)
{
    m_pause.start();
    if (!newest.isEmpty())
        Q_EMIT found(newest);
}
