// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#include "basics/endsignals.h"

#include <QSocketNotifier>

#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <unistd.h>

namespace {

constexpr std::array s_signals {SIGTERM, SIGINT, SIGHUP};
volatile std::sig_atomic_t s_writtenTo = -1; // the end of the pipe for the handler

void setHandler(void (*handler)(int))
{
    struct sigaction action = {};
    action.sa_handler = handler;
    action.sa_flags = SA_RESTART;
    for (const int number : s_signals) {
        // A parent, as nohup is, may have said that one does not matter.
        struct sigaction present = {};
        if (::sigaction(number, nullptr, &present) == 0 && present.sa_handler != SIG_IGN)
            ::sigaction(number, &action, nullptr);
    }
}

// Only functions that may be called in the middle of any other.
void handle(int number)
{
    const int error = errno;
    const char byte = 0;
    [[maybe_unused]] const ssize_t written = ::write(int(s_writtenTo), &byte, 1);
    struct sigaction byDefault = {};
    byDefault.sa_handler = SIG_DFL;
    ::sigaction(number, &byDefault, nullptr);
    errno = error;
}

} // namespace

EndSignals::EndSignals()
{
    if (::pipe(m_pipe.data()) != 0)
        return;
    for (const int end : m_pipe)
        ::fcntl(end, F_SETFD, FD_CLOEXEC);
    m_notifier = new QSocketNotifier(m_pipe[0], QSocketNotifier::Read, this);
    connect(m_notifier, &QSocketNotifier::activated, this, &EndSignals::takeOne);
    s_writtenTo = m_pipe[1];
    setHandler(handle);
}

EndSignals::~EndSignals()
{
    if (!m_notifier)
        return;
    setHandler(SIG_DFL);
    s_writtenTo = -1;
    delete m_notifier;
    for (const int end : m_pipe)
        ::close(end);
}

void EndSignals::takeOne()
{
    char byte = 0;
    if (::read(m_pipe[0], &byte, 1) == 1)
        Q_EMIT received();
}
