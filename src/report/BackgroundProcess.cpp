// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "report/BackgroundProcess.h"

#include <cerrno>
#include <csignal>
#include <exception>

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace burnwick {

namespace {

void emptyStandardStreams() {
    const int null = ::open("/dev/null", O_RDWR);
    for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        if (null < 0 || ::dup2(null, stream) < 0)
            ::close(stream);
    }
}

} // namespace

bool runInBackground(std::chrono::seconds atMost, const std::function<void()> &work) {
    const pid_t child = ::fork();
    if (child < 0)
        return false;
    if (child > 0) {
        int status = 0;
        while (::waitpid(child, &status, 0) < 0 && errno == EINTR) {
        }
        return status == 0;
    }
    // The second fork leaves no child to the command that this process may execute next.
    ::setsid();
    const pid_t worker = ::fork();
    if (worker != 0)
        ::_exit(worker < 0 ? 1 : 0);
    emptyStandardStreams();
    // The reader of its pipe may have ended.
    std::signal(SIGPIPE, SIG_IGN);
    ::alarm(static_cast<unsigned>(atMost.count()));
    try {
        work();
    } catch (const std::exception &) {
        ::_exit(1);
    }
    ::_exit(0);
}

} // namespace burnwick
