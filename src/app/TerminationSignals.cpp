// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "app/TerminationSignals.h"

#include <QSocketNotifier>

#include <array>
#include <cerrno>
#include <csignal>

#include <fcntl.h>
#include <unistd.h>

namespace burnwick {

namespace {

/// A signal handler may call little more than write().
std::array<int, 2> wakePipe{-1, -1};

extern "C" void writeToPipe(int) {
    // The interrupted code may be about to read it.
    const int error = errno;
    const char byte = 0;
    // A full pipe has woken the event loop already.
    [[maybe_unused]] const ssize_t written = ::write(wakePipe[1], &byte, 1);
    errno = error;
}

/// nohup ignores SIGHUP, for example, so that the program outlives its terminal.
bool isIgnored(int number) {
    struct sigaction action {};
    return ::sigaction(number, nullptr, &action) == 0 && action.sa_handler == SIG_IGN;
}

} // namespace

TerminationSignals::TerminationSignals(QObject *parent)
    : QObject(parent) {
    if (::pipe(wakePipe.data()) != 0)
        return;
    for (const int end : wakePipe) {
        ::fcntl(end, F_SETFD, FD_CLOEXEC);
        ::fcntl(end, F_SETFL, O_NONBLOCK);
    }
    m_notifier = new QSocketNotifier(wakePipe[0], QSocketNotifier::Read, this);
    connect(m_notifier, &QSocketNotifier::activated, this, [this] {
        m_notifier->setEnabled(false);
        Q_EMIT received();
    });
    for (const int number : {SIGTERM, SIGINT, SIGHUP}) {
        if (isIgnored(number))
            continue;
        struct sigaction action {};
        action.sa_handler = writeToPipe;
        action.sa_flags = SA_RESTART;
        // A closing terminal may send SIGHUP more than once.
        if (number != SIGHUP)
            action.sa_flags |= static_cast<int>(SA_RESETHAND);
        ::sigaction(number, &action, nullptr);
    }
}

} // namespace burnwick
